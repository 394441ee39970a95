// Tests of the page: its strokes against an approved picture, its size, labels that keep apart.
#include "display/page.h"

#include "display/svgcanvas.h"
#include "support/golden.h"
#include "support/recordingcanvas.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>

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
        Page.Counts = Counts;
        Page.Background = Background;
        Page.Fit = Fit;
        Page.Param.EgcCoef = {0.2, 0.03, 0.0};
        Page.Param.TwoTheta = 12.0;
        for (int k = 0; k < peaks; ++k) {
            const double centre = channels * (0.12 + 0.76 * k / peaks);
            Page.Peaks.push_back({centre, "2 2 " + std::to_string(k) + "  1.4420", k % 4 != 3});
            Page.Table.Rows.push_back({std::to_string(k + 1), std::to_string(std::lround(centre)),
                                       "2.0391", "2.0393", "-0.0002", "2 2 " + std::to_string(k)});
        }
        Page.Table.Head = {"#", "Ch", "d obs", "d cal", "dev", "h k l"};
        Page.Blocks = {{"Cell", {{"a", "4.0786 ± 0.0006 Å"}, {"V", "67.85 ± 0.03 Å³"}}},
                       {"Pressure", {{"P", "0.01 ± 0.15 GPa"}, {"scale", "Au"}}}};
    }
    [[nodiscard]] std::string Svg() const {
        SvgSurface svg;
        Canvas canvas(svg);
        DrawEngine engine;
        DrawPage(canvas, engine, Page);
        return svg.Text();
    }
};

void Keep(const std::string& name, const std::string& text) {
    const std::filesystem::path folder = std::filesystem::path(VAEL_BUILD_DIR) / "shots";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / name) << text;
}

TEST(Page, ASmallPageHasTheApprovedStrokes) {
    Example example(48, 2);
    test::RecordingSurface surface(842.0, 595.0);
    Canvas canvas(surface);
    DrawEngine engine;
    DrawPage(canvas, engine, example.Page);
    Keep("page_small.svg", example.Svg());  // to be looked at before the strokes are approved
    test::ExpectGolden("page_small.txt", surface.Text());
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
    example.Page.Fit = {};
    example.Page.Background = {};
    example.Page.Unit = 0;
    test::RecordingSurface surface(842.0, 595.0);
    Canvas canvas(surface);
    DrawEngine engine;
    DrawPage(canvas, engine, example.Page);
    std::size_t strokes = 0;
    for (const test::Drawn& drawn : surface.Strokes)
        if (drawn.What == test::Drawn::Kind::Line && drawn.Pen.Width == 0.6) ++strokes;
    EXPECT_EQ(strokes, 1199U);
}

TEST(Page, ALogPageAndAPartOfTheChannels) {
    Example example(4096, 40);
    example.Page.Log = true;
    example.Page.First = 400;
    example.Page.Last = 2400;
    example.Page.Unit = 3;
    const std::string svg = example.Svg();
    Keep("page_log.svg", svg);
    EXPECT_NE(svg.find("> 100K<"), std::string::npos);
    EXPECT_NE(svg.find(">d:A<"), std::string::npos);
    EXPECT_NE(svg.find(">401<"), std::string::npos);
    EXPECT_NE(svg.find(">2401<"), std::string::npos);
}

TEST(Page, AnEmptySpectrumSaysSo) {
    Example example(0, 0);
    EXPECT_NE(example.Svg().find(">no counts<"), std::string::npos);
}

TEST(Page, AManyPeakTableTellsWhatItLeavesOut) {
    const Example example(4096, 90);
    const std::string svg = example.Svg();
    Keep("page_crowded.svg", svg);
    EXPECT_NE(svg.find("more</text>"), std::string::npos);
}

TEST(Page, TextsAreEscaped) {
    EXPECT_NE(Example(48, 1).Svg().find("Gold &lt;wire&gt; &amp; foil"), std::string::npos);
}

TEST(Page, AnAxisOfDWithoutATwoThetaIsChannels) {
    Example example(48, 0);
    example.Page.Unit = 3;
    example.Page.Param.TwoTheta = 0.0;
    EXPECT_EQ(example.Svg().find(">d:A<"), std::string::npos);
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
