// Tests of the page: its strokes against an approved picture, its size, labels that keep apart.
#include "display/page.h"

#include "display/paper.h"
#include "display/svgcanvas.h"
#include "support/golden.h"
#include "support/recordingcanvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>

namespace vael {
namespace {

/// A made-up spectrum: a falling background, peaks with a little pseudo-random noise.
struct Example {
    std::vector<std::int32_t> Counts, Background, Fit;
    PageData Page;

    explicit Example(int channels, int peaks) {
        std::uint32_t seed = 12345;
        for (int i = 0; i < channels; ++i) {
            const double x = static_cast<double>(i) / channels;
            const double back = 40.0 + 400.0 * std::exp(-3.0 * x);
            double peak = 0.0;
            for (int k = 0; k < peaks; ++k) {
                const double centre = channels * (0.12 + 0.76 * k / std::max(peaks, 1));
                const double wide = 4.0 + 0.3 * k;
                const double z = (i - centre) / wide;
                peak += 9000.0 / (1.0 + 0.8 * k) * std::exp(-0.6931 * z * z);
            }
            seed = seed * 1664525U + 1013904223U;
            const double noise = (static_cast<double>(seed >> 16U) / 65536.0 - 0.5) * 3.4;
            const double sum = back + peak;
            Counts.push_back(static_cast<std::int32_t>(std::lround(sum + noise * std::sqrt(sum))));
            Background.push_back(static_cast<std::int32_t>(std::lround(back)));
            Fit.push_back(static_cast<std::int32_t>(std::lround(peak)));
        }
        Page.Title = "Gold <wire> & foil";
        Page.Subtitle = "made-up spectrum, 4096 channels, 300 s live";
        Page.Footer = "drawn by a test";
        PagePlot plot;
        const std::vector<std::int32_t> sum = SumOf(Fit, Background);
        plot.Curves.push_back({.Name = "fit on background",
                               .Counts = sum,
                               .Where = Background,
                               .Stretches = {},
                               .Ink = paper::FIT_COLOUR,
                               .Width = 2.2});
        plot.Curves.push_back({.Name = "counts", .Counts = Counts, .Where = {}, .Stretches = {}});
        plot.Rest = {.Counts = Counts, .Model = sum, .Where = Background};
        plot.Param.EgcCoef = {0.2, 0.03, 0.0};
        plot.Param.TwoTheta = 12.0;
        for (int k = 0; k < peaks; ++k) {
            const double centre = channels * (0.12 + 0.76 * k / peaks);
            plot.Peaks.push_back({.Ch = centre,
                                  .Count = 9000.0 / (1.0 + 0.8 * k),
                                  .Label = "2 2 " + std::to_string(k) + "  1.4420",
                                  .Ink = k % 4 == 3 ? paper::FAINT : paper::INK});
            Page.Table.Rows.push_back({std::to_string(k + 1), std::to_string(std::lround(centre)),
                                       "2.0391", "2.0393", "-0.0002", "2 2 " + std::to_string(k)});
        }
        Page.Plots.push_back(std::move(plot));
        Page.Table.Head = {"#", "Ch", "d obs", "d cal", "dev", "h k l"};
        Page.Blocks = {{"Cell", {{"a", "4.0786 ± 0.0006 Å"}, {"V", "67.85 ± 0.03 Å³"}}},
                       {"Pressure", {{"P", "0.01 ± 0.15 GPa"}, {"scale", "Au"}}}};
    }
    [[nodiscard]] PagePlot& Plot() { return Page.Plots.front(); }
    /// Without fit, background and what they leave.
    void CountsAlone() {
        Plot().Curves.erase(Plot().Curves.begin());
        Plot().Rest = {};
    }
    /// The pages as SVG texts.
    [[nodiscard]] std::vector<std::string> Pages(double width = 842.0,
                                                 double height = 595.0) const {
        SvgSurface svg(width, height);
        Canvas canvas(svg);
        DrawEngine engine;
        std::vector<std::string> pages;
        EXPECT_TRUE(DrawPages(canvas, engine, Page, [&] {
            pages.push_back(svg.Text());
            return true;
        }));
        pages.push_back(svg.Text());
        return pages;
    }
    [[nodiscard]] std::string Svg() const { return Pages().front(); }
    /// The strokes of the first page, on a page that is wider than tall or upright.
    [[nodiscard]] std::vector<test::Drawn> Strokes(double width = 842.0,
                                                   double height = 595.0) const {
        test::RecordingSurface surface(width, height);
        Canvas canvas(surface);
        DrawEngine engine;
        (void)DrawPages(canvas, engine, Page, [] { return false; });
        return surface.Strokes;
    }
};

void Keep(const std::string& name, const std::string& text) {
    const std::filesystem::path folder = std::filesystem::path(VAEL_BUILD_DIR) / "shots";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / name) << text;
}

bool Has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

/// How many rows of the table stand on a page, by their last column.
int RowsOn(const std::string& page, const Example& example) {
    int rows = 0;
    for (const auto& row : example.Page.Table.Rows) rows += Has(page, ">" + row[5] + "<") ? 1 : 0;
    return rows;
}

TEST(Page, ASmallPageHasTheApprovedStrokes) {
    Example example(48, 2);
    test::RecordingSurface surface(842.0, 595.0);
    Canvas canvas(surface);
    DrawEngine engine;
    EXPECT_TRUE(DrawPages(canvas, engine, example.Page, {}));
    Keep("page_small.svg", example.Svg());  // to be looked at before the strokes are approved
    test::ExpectGolden("page_small.txt", surface.Text());
}

TEST(Page, AnUprightSmallPageHasTheApprovedStrokes) {
    Example example(48, 2);
    test::RecordingSurface surface(595.0, 842.0);
    Canvas canvas(surface);
    DrawEngine engine;
    EXPECT_TRUE(DrawPages(canvas, engine, example.Page, {}));
    Keep("page_upright.svg", example.Pages(595.0, 842.0).front());
    test::ExpectGolden("page_upright.txt", surface.Text());
}

TEST(Page, APageOf4096ChannelsIsBelow150000Bytes) {
    const Example example(4096, 15);
    const std::string svg = example.Svg();
    Keep("page_4096.svg", svg);
    EXPECT_LT(svg.size(), 150000U);
    EXPECT_GT(svg.size(), 20000U);
}

TEST(Page, EveryChannelIsDrawn) {
    Example example(1200, 0);
    example.CountsAlone();
    example.Plot().Unit = 0;
    std::size_t strokes = 0;
    for (const test::Drawn& drawn : example.Strokes())
        if (drawn.What == test::Drawn::Kind::Line && drawn.Pen.Width == 0.6) ++strokes;
    EXPECT_EQ(strokes, 1199U);
}

TEST(Page, ACurveWithoutAnInkIsBlackAndItsStretchesAreNot) {
    Example example(100, 0);
    example.CountsAlone();
    example.Plot().Curves.front().Stretches = {{.Start = 10, .End = 19, .Ink = Rgb(200, 0, 0)}};
    int black = 0;
    int red = 0;
    for (const test::Drawn& drawn : example.Strokes()) {
        if (drawn.What != test::Drawn::Kind::Line || drawn.Pen.Width != 0.6) continue;
        black += drawn.Pen.Ink == 0 ? 1 : 0;
        red += drawn.Pen.Ink == Rgb(200, 0, 0) ? 1 : 0;
    }
    EXPECT_EQ(red, 10);
    EXPECT_EQ(black, 99 - 10);
}

TEST(Page, DotsTakeTheWidthOfTheCurveAndPaintedCurvesRiseFromTheAxis) {
    Example example(60, 0);
    example.CountsAlone();
    PageCurve& curve = example.Plot().Curves.front();
    curve.Kind = DRAW_DOT;
    curve.Width = 3.5;
    int dots = 0;
    for (const test::Drawn& drawn : example.Strokes())
        if (drawn.What == test::Drawn::Kind::Dot && drawn.Pen.Width == 3.5) ++dots;
    EXPECT_EQ(dots, 59);
    curve.Kind = DRAW_PAINT;
    int upright = 0;
    for (const test::Drawn& drawn : example.Strokes())
        if (drawn.What == test::Drawn::Kind::Line && drawn.Pen.Width == 3.5 && drawn.From.Y == 0.0)
            ++upright;
    EXPECT_EQ(upright, 59);
}

TEST(Page, ALogPageAndAPartOfTheChannels) {
    Example example(4096, 40);
    example.Plot().Log = true;
    example.Plot().First = 400;
    example.Plot().Last = 2400;
    example.Plot().Unit = 3;
    const std::string svg = example.Svg();
    Keep("page_log.svg", svg);
    EXPECT_TRUE(Has(svg, "> 100K<"));
    EXPECT_TRUE(Has(svg, ">d:A<"));
    EXPECT_TRUE(Has(svg, ">401<"));
    EXPECT_TRUE(Has(svg, ">2401<"));
}

TEST(Page, TheCountAxisHasItsWordUpright) {
    const auto strokes = Example(48, 1).Strokes();
    const auto word = std::find_if(strokes.begin(), strokes.end(),
                                   [](const test::Drawn& each) { return each.Words == "Counts"; });
    ASSERT_NE(word, strokes.end());
    EXPECT_EQ(word->Pen.Angle, 90.0);
    EXPECT_EQ(word->Pen.FontSize, 9.75);
}

TEST(Page, AnEmptySpectrumSaysSo) { EXPECT_TRUE(Has(Example(0, 0).Svg(), ">no counts<")); }

TEST(Page, TwoPlotsOfOneRangeShareTheirLowerAxis) {
    Example example(400, 0);
    example.Plot().Unit = 0;
    example.Page.Plots.push_back(example.Plot());
    const auto axes = [&] {
        int labels = 0;
        for (const test::Drawn& drawn : example.Strokes()) labels += drawn.Words == "201" ? 1 : 0;
        return labels;
    };
    EXPECT_EQ(axes(), 1);
    example.Page.Plots.back().Last = 299;
    example.Page.Plots.back().First = 100;
    EXPECT_EQ(axes(), 2);
}

TEST(Page, ATableLongerThanAPageGoesOnWithItsHeading) {
    const Example example(4096, 90);
    for (const bool upright : {false, true}) {
        const auto pages = upright ? example.Pages(595.0, 842.0) : example.Pages();
        ASSERT_EQ(pages.size(), 2U);
        Keep(upright ? "page_crowded_upright.svg" : "page_crowded.svg", pages.front());
        Keep(upright ? "page_crowded_upright2.svg" : "page_crowded2.svg", pages.back());
        EXPECT_EQ(RowsOn(pages[0], example) + RowsOn(pages[1], example), 90);
        EXPECT_GT(RowsOn(pages[0], example), 0);
        for (std::size_t k = 0; k < pages.size(); ++k) {
            EXPECT_TRUE(Has(pages[k], ">h k l<"));
            EXPECT_TRUE(Has(pages[k], "Gold &lt;wire&gt; &amp; foil"));
            EXPECT_TRUE(Has(pages[k], ">page " + std::to_string(k + 1) + " of 2<"));
        }
    }
}

TEST(Page, APageThatNeverComesEndsTheDrawing) {
    const Example example(100, 90);
    SvgSurface svg;
    Canvas canvas(svg);
    DrawEngine engine;
    int asked = 0;
    EXPECT_FALSE(DrawPages(canvas, engine, example.Page, [&] {
        ++asked;
        return false;
    }));
    EXPECT_EQ(asked, 1);
}

TEST(Page, ATableAloneFillsWholePages) {
    Example example(48, 70);
    example.Page.Plots.clear();
    example.Page.Blocks.clear();
    const auto pages = example.Pages(595.0, 842.0);
    ASSERT_EQ(pages.size(), 1U) << "two runs side by side";
    EXPECT_EQ(RowsOn(pages[0], example), 70);
    EXPECT_FALSE(Has(pages[0], ">page 1"));
}

TEST(Page, AWordThatIsTooLongIsCutWithAnEllipsis) {
    Example example(48, 1);
    std::string comment;
    for (int i = 0; i < 50; ++i) comment += "高圧";
    example.Page.Blocks.front().Lines.emplace_back("Comment", comment);
    const std::string svg = example.Svg();
    EXPECT_FALSE(Has(svg, comment));
    EXPECT_TRUE(Has(svg, "高圧高圧高圧"));
    EXPECT_TRUE(Has(svg, "…<"));
}

TEST(Page, TextsAreEscaped) {
    EXPECT_TRUE(Has(Example(48, 1).Svg(), "Gold &lt;wire&gt; &amp; foil"));
}

TEST(Page, AnAxisOfDWithoutATwoThetaIsChannels) {
    Example example(48, 0);
    example.Plot().Unit = 3;
    example.Plot().Param.TwoTheta = 0.0;
    EXPECT_FALSE(Has(example.Svg(), ">d:A<"));
}

TEST(SumOf, AddsWithin32Bits) {
    constexpr std::int32_t MOST = std::numeric_limits<std::int32_t>::max();
    const std::vector<std::int32_t> a{1, MOST, -5, 9};
    const std::vector<std::int32_t> b{2, 7, -6};
    EXPECT_EQ(SumOf(a, b), (std::vector<std::int32_t>{3, MOST, -11}));
}

TEST(OnWhite, ColoursOfADarkScreenCanBeReadOnPaper) {
    EXPECT_EQ(paper::OnWhite(Rgb(255, 255, 255)), paper::INK);
    EXPECT_EQ(paper::OnWhite(Rgb(200, 205, 190)), paper::INK) << "nearly grey";
    EXPECT_EQ(paper::OnWhite(Rgb(200, 0, 0)), Rgb(200, 0, 0)) << "5.9 : 1 as it is";
    const Colour yellow = paper::OnWhite(Rgb(255, 255, 0));
    EXPECT_EQ(yellow & 255, (yellow >> 8) & 255) << "still yellow";
    EXPECT_LT(yellow & 255, 128);
    EXPECT_EQ(yellow >> 16, 0);
}

TEST(SpreadLabels, LabelsWithRoomStayWhereTheyWantToStand) {
    const std::vector<double> wanted{10.0, 30.0, 50.0};
    EXPECT_EQ(SpreadLabels(wanted, 8.0, 0.0, 100.0), wanted);
}

TEST(SpreadLabels, LabelsThatCollideShareTheMiddleOfTheirWishes) {
    const std::vector<double> wanted{50.0, 52.0, 54.0};
    EXPECT_EQ(SpreadLabels(wanted, 10.0, 0.0, 100.0), (std::vector<double>{42.0, 52.0, 62.0}));
}

TEST(SpreadLabels, TheyStayWithinTheEdges) {
    const std::vector<double> wanted{1.0, 2.0};
    EXPECT_EQ(SpreadLabels(wanted, 10.0, 0.0, 100.0), (std::vector<double>{0.0, 10.0}));
    const std::vector<double> right{98.0, 99.0};
    EXPECT_EQ(SpreadLabels(right, 10.0, 0.0, 100.0), (std::vector<double>{90.0, 100.0}));
}

TEST(SpreadLabels, AGroupPushedFromAnEdgeMovesItsNeighbour) {
    const std::vector<double> wanted{0.0, 0.0, 15.0};
    const auto places = SpreadLabels(wanted, 10.0, 0.0, 100.0);
    EXPECT_EQ(places[0], 0.0);
    EXPECT_EQ(places[1], 10.0);
    EXPECT_EQ(places[2], 20.0);
}

TEST(SpreadLabels, MoreLabelsThanRoomShareItEvenly) {
    const std::vector<double> wanted(11, 50.0);
    const auto places = SpreadLabels(wanted, 50.0, 0.0, 100.0);
    EXPECT_EQ(places.front(), 0.0);
    EXPECT_EQ(places.back(), 100.0);
    EXPECT_NEAR(places[1] - places[0], 10.0, 1e-12);
    EXPECT_TRUE(SpreadLabels({}, 5.0, 0.0, 1.0).empty());
}

}  // namespace
}  // namespace vael
