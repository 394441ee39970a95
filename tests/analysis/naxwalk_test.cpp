// The automatic NAX run: search, groups, refusals, and what is stored.
#include "analysis/naxwalk.h"

#include "analysis/naxgroup.h"
#include "core/fault.h"
#include "seeded.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

using namespace vael;

namespace {

struct Walked {
    std::vector<std::string> Said;
    std::vector<std::string> Log;
    int Turns = 0;
    std::unique_ptr<NaxState> State = std::make_unique<NaxState>();
    NaxResult Result;

    explicit Walked(const SpectrumData& data, const NaxSettings& settings = {}) {
        const Talk talk{
            .log = [this](std::string_view line) { Log.emplace_back(line); },
            .say = [this](std::string_view text, std::string_view) { Said.emplace_back(text); },
            .breathe = [this] { ++Turns; }};
        Result = NaxFitAll(data, settings, *State, talk);
    }
    [[nodiscard]] int Lines(std::string_view part) const {
        int found = 0;
        for (const auto& line : Log) found += line.find(part) != std::string::npos;
        return found;
    }
};

/// Gaussians on a flat background, without noise.
SpectrumData Drawn(const std::vector<seeded::Peak>& peaks, double background = 50.0,
                   int channels = 4096) {
    SpectrumData data{};
    data.DataNo = static_cast<std::int16_t>(channels);
    for (int i = 0; i < channels; ++i) {
        double value = background;
        for (const auto& peak : peaks) value += seeded::GaussAt(peak, i);
        data.Count[static_cast<std::size_t>(i)] = static_cast<std::int32_t>(std::lround(value));
    }
    return data;
}

std::vector<seeded::Peak> Comb(int first, int step, int count) {
    std::vector<seeded::Peak> peaks;
    for (int k = 0; k < count; ++k)
        peaks.push_back({static_cast<double>(first + k * step), 1000.0, 10.0});
    return peaks;
}

}  // namespace

TEST(NaxWalk, AFlatSpectrumHasNoPeaks) {
    for (const std::int32_t level : {0, 1, 500}) {
        const Walked run(Drawn({}, level));
        EXPECT_EQ(run.Said, std::vector<std::string>{"NO PEAKS ARE FOUND"});
        EXPECT_EQ(run.Result.Result, -1);
        EXPECT_TRUE(run.Result.Peaks.empty());
    }
}

TEST(NaxWalk, SettingsWithoutSenseEndInAResultOrInAFaultAndInNothingElse) {
    const SpectrumData data = Drawn(Comb(600, 400, 6));
    int ended = 0;
    for (const double coefficient : {-1e9, -5.0, 0.0, 1e-9, 0.5, 1e9, 1e300})
        for (const double width : {-1e9, -12.5, 0.0, 1e-3, 1.0, 300.0, 40000.0, 1e300}) {
            try {
                const Walked run(data, {.EACPS = coefficient, .ISPPK = width});
                for (const NaxPeakRow& peak : run.Result.Peaks)
                    EXPECT_TRUE(std::isfinite(peak.Position)) << coefficient << " " << width;
            } catch (const Fault&) {
            }
            ++ended;
        }
    EXPECT_EQ(ended, 7 * 8);
}

TEST(NaxWalk, AnEmptyAndAShortSpectrumHaveNoPeaks) {
    EXPECT_EQ(Walked(Drawn({}, 0.0, 0)).Result.Result, -1);
    EXPECT_EQ(Walked(Drawn({{5.0, 1000.0, 4.0}}, 0.0, 12)).Result.Result, -1);
    EXPECT_EQ(Walked(Drawn({{10.0, 1000.0, 4.0}}, 0.0, 21)).Result.Candidates, 1);
}

TEST(NaxWalk, ACleanPeakComesBack) {
    const Walked run(Drawn({{700.3, 2000.0, 9.0}}));
    ASSERT_EQ(run.Result.Peaks.size(), 1u);
    const NaxPeakRow& peak = run.Result.Peaks[0];
    EXPECT_NEAR(peak.Position, 701.3, 0.005);  // channels from 1
    EXPECT_NEAR(peak.Height, 2000.0, 2.0);
    EXPECT_NEAR(peak.Fwhm, 9.0, 0.02);
    EXPECT_TRUE(run.Said.empty());
    ASSERT_EQ(run.Result.Groups.size(), 1u);
    EXPECT_EQ(run.Result.Groups[0].Status, "CONV");
    EXPECT_EQ(run.Result.Groups[0].From, 652);  // 50 channels beyond 701.3 on either side
    EXPECT_EQ(run.Result.Groups[0].To, 751);
    EXPECT_EQ(run.Lines("CH 652 TO 751 PEAKS 1 OF 1 CONV"), 1);
    EXPECT_GE(run.Turns, 4000);  // the interface has its turn at each solve
}

TEST(NaxWalk, RaisingTheCoefficientRemovesWeakPeaks) {
    const SpectrumData data = Drawn({{500.0, 60.0, 9.0}, {1500.0, 2000.0, 9.0}});
    NaxSettings settings;
    EXPECT_EQ(Walked(data, settings).Result.Peaks.size(), 2u);
    settings.EACPS = 1.0;  // the weak peak's curvature is about 0.0085 of its height
    const Walked run(data, settings);
    ASSERT_EQ(run.Result.Peaks.size(), 1u);
    EXPECT_NEAR(run.Result.Peaks[0].Position, 1501.0, 0.01);
    settings.EACPS = 100.0;
    EXPECT_EQ(Walked(data, settings).Said, std::vector<std::string>{"NO PEAKS ARE FOUND"});
}

TEST(NaxWalk, TwoPeaksCloserThanTheWindowGiveOneCandidate) {
    EXPECT_EQ(Walked(Drawn({{500.0, 900.0, 9.0}, {508.0, 900.0, 9.0}})).Result.Candidates, 1);
    EXPECT_EQ(Walked(Drawn({{500.0, 900.0, 9.0}, {540.0, 900.0, 9.0}})).Result.Candidates, 2);
}

TEST(NaxWalk, NeighboursWithinTheReachFormAGroupAndOthersDoNot) {
    const Walked together(Drawn({{500.0, 900.0, 9.0}, {549.0, 900.0, 9.0}}));
    EXPECT_EQ(together.Result.Groups.size(), 1u);
    EXPECT_EQ(together.Result.Groups[0].Peaks, 2);
    const Walked apart(Drawn({{500.0, 900.0, 9.0}, {552.0, 900.0, 9.0}}));
    ASSERT_EQ(apart.Result.Groups.size(), 2u);
    EXPECT_LE(apart.Result.Groups[0].To, 527);  // half way between the two
    EXPECT_GE(apart.Result.Groups[1].From, 527);
    ASSERT_EQ(apart.Result.Peaks.size(), 2u);
    EXPECT_NEAR(apart.Result.Peaks[1].Position, 553.0, 0.02);
}

TEST(NaxWalk, AnEmptyStretchOfMoreThanFiveHundredChannelsDoesNotEndTheWalk) {
    const Walked run(Drawn({{100.0, 900.0, 9.0}, {3900.0, 900.0, 12.0}}));
    ASSERT_EQ(run.Result.Peaks.size(), 2u);
    EXPECT_NEAR(run.Result.Peaks[1].Position, 3901.0, 0.01);
}

TEST(NaxWalk, GroupsThatFillTheListAreFittedWithWhatIsThere) {
    // A comb without a gap: ten candidates to a group, and the 500 points are never enough for all.
    const Walked run(Drawn(Comb(100, 45, 60)));
    EXPECT_EQ(run.Result.Candidates, 60);
    ASSERT_EQ(run.Result.Peaks.size(), 60u);
    for (std::size_t k = 0; k < 60; ++k)
        EXPECT_NEAR(run.Result.Peaks[k].Position, 101.0 + 45.0 * static_cast<double>(k), 0.1) << k;
    for (const NaxGroup& group : run.Result.Groups) EXPECT_LE(group.Peaks, 10);
}

TEST(NaxWalk, MoreThanAHundredCandidatesAreCountedButNotKept) {
    const Walked run(Drawn(Comb(50, 36, 110)));
    EXPECT_EQ(run.Result.Candidates, 110);
    EXPECT_EQ(run.Result.Peaks.size(), 100u);
    EXPECT_NEAR(run.Result.Peaks.back().Position, 51.0 + 36.0 * 99.0, 0.2);
}

TEST(NaxWalk, ACandidateOpenAtTheLastChannelIsClosedThere) {
    const Walked run(Drawn({{985.0, 3000.0, 12.0}}, 50.0, 1000));
    ASSERT_EQ(run.Result.Peaks.size(), 1u);
    EXPECT_NEAR(run.Result.Peaks[0].Position, 986.0, 0.05);
}

TEST(NaxWalk, ASpectrumOf8192ChannelsIsHandledUpTo4096) {
    auto data = std::make_unique<SpectrumData>(
        Drawn({{4000.0, 900.0, 9.0}, {6000.0, 900.0, 9.0}}, 50.0, 8192));
    const Walked run(*data);
    ASSERT_EQ(run.Result.Peaks.size(), 1u);
    EXPECT_NEAR(run.Result.Peaks[0].Position, 4001.0, 0.02);
}

TEST(NaxWalk, TheWalkKeepsToItsFirstAndLastChannel) {
    const SpectrumData data =
        Drawn({{500.0, 900.0, 9.0}, {900.0, 900.0, 9.0}, {1500.0, 900.0, 9.0}});
    NaxSettings settings;
    settings.FirstCh = 700;
    settings.LastCh = 1200;
    const Walked run(data, settings);
    ASSERT_EQ(run.Result.Peaks.size(), 1u);
    EXPECT_NEAR(run.Result.Peaks[0].Position, 901.0, 0.01);
}

TEST(NaxWalk, EveryRefusedPeakIsToldAndAGroupThatLosesAllOfThemIsSkipped) {
    // A coefficient far below the noise lets noise through the search.
    SpectrumData data = Drawn({{700.0, 900.0, 9.0}});
    seeded::Generator random(4);
    for (std::size_t i = 0; i < 4096; ++i) data.Count[i] = random.Poisson(data.Count[i]);
    NaxSettings settings;
    settings.EACPS = 0.05;
    settings.LastCh = 1400;
    const Walked run(data, settings);
    int found = 0;
    for (const auto& peak : run.Result.Peaks) found += std::fabs(peak.Position - 701.0) < 0.5;
    EXPECT_EQ(found, 1);
    EXPECT_GT(run.Result.Candidates, 10);
    EXPECT_LT(run.Result.Candidates, 100);
    EXPECT_EQ(run.Lines("PEAK REFUSED CH"),
              run.Result.Candidates - static_cast<int>(run.Result.Peaks.size()));
    EXPECT_GT(run.Lines(" NOISE"), 0);
    EXPECT_GT(run.Lines(" PEAKS 0 OF "), 1);
    for (const NaxGroup& group : run.Result.Groups) {
        EXPECT_EQ(group.Status == "DIV ", group.Peaks == 0);
        // Where all peaks were refused there is no background of the spectrum either.
        const auto middle = static_cast<std::size_t>((group.From + group.To) / 2);
        if (group.Peaks == 0) {
            EXPECT_EQ(run.State->NaxBackground[middle], 0);
        }
    }
    EXPECT_NEAR(run.State->NaxBackground[700], 50, 5);
}

TEST(NaxWalk, ASingleHotChannelIsNoPeak) {
    SpectrumData data = Drawn({{2000.0, 900.0, 9.0}});
    data.Count[1000] = 5000;
    const Walked run(data);
    EXPECT_EQ(run.Result.Candidates, 2);
    ASSERT_EQ(run.Result.Peaks.size(), 1u);
    EXPECT_EQ(run.Lines("TOO NARROW"), 1);
}

TEST(NaxWalk, StatesDoNotCarryOverFromRunToRun) {
    const SpectrumData first = Drawn(Comb(100, 45, 60));
    const SpectrumData second = Drawn({{700.3, 2000.0, 9.0}});
    const Walked fresh(second);
    NaxState used;
    (void)NaxFitAll(first, NaxSettings{}, used, Talk{});
    const NaxResult again = NaxFitAll(second, NaxSettings{}, used, Talk{});
    ASSERT_EQ(again.Peaks.size(), fresh.Result.Peaks.size());
    EXPECT_EQ(again.Peaks[0].Position, fresh.Result.Peaks[0].Position);
    EXPECT_EQ(used.NaxBackground, fresh.State->NaxBackground);
}

TEST(NaxWalk, TheTablesOfARun) {
    NaxSettings settings;
    settings.ISPPK = 7.5;
    settings.EACPS = 0.4;
    settings.TwoTheta = -5.0;
    const NaxTables tables = MakeTables(settings, Drawn({}, 0.0, 2000));
    EXPECT_EQ(tables.NaxIntParam[3], 10);
    EXPECT_EQ(tables.NaxIntParam[5], 12);  // 11.5 to the even neighbour
    EXPECT_EQ(tables.NaxIntParam[6], 50);
    EXPECT_EQ(tables.NaxIntParam[7], 20);
    EXPECT_EQ(tables.NaxIntParam[8], 3);
    EXPECT_EQ(tables.NaxIntParam[9], 1);
    EXPECT_EQ(tables.NaxIntParam[10], 2000);
    EXPECT_EQ(tables.NaxRealParam[6], 0.4);
    EXPECT_EQ(tables.NaxRealParam[7], 3.75);
    EXPECT_EQ(tables.NaxRealParam[8], 0.25);
    EXPECT_EQ(tables.NaxRealParam[13], 5.0);
}

namespace {

/// One group over a region of the test's own making.
struct Fitted {
    std::vector<std::string> Log;
    NaxResult Result;

    Fitted(const SpectrumData& data, const std::vector<NaxCandidate>& candidates, int from,
           int to) {
        NaxState state;
        std::vector<double> x;
        std::vector<double> y;
        for (int channel = from; channel <= to; ++channel) {
            x.push_back(channel);
            y.push_back(data.Count[static_cast<std::size_t>(channel - 1)]);
        }
        const Talk talk{.log = [this](std::string_view line) { Log.emplace_back(line); }};
        const NaxTables tables = MakeTables(NaxSettings{}, data);
        NaxGroupFit(candidates, {.From = from, .To = to}, {x, y}, tables, state, Result, talk);
    }
};

}  // namespace

TEST(NaxGroup, WhatIsAsWideAsTheReachIsBackground) {
    const Fitted fit(Drawn({{1000.0, 3000.0, 90.0}}), {{1001.0, 3000.0, 10.0}}, 801, 1201);
    EXPECT_TRUE(fit.Result.Peaks.empty());
    ASSERT_EQ(fit.Log.size(), 2u);
    EXPECT_TRUE(fit.Log[0].ends_with("TOO WIDE")) << fit.Log[0];
    EXPECT_EQ(fit.Log[1], "CH 801 TO 1201 PEAKS 0 OF 1 DIV ");
}

TEST(NaxGroup, APeakThatLeavesTheRegionIsRefused) {
    const Fitted fit(Drawn({{1021.5, 3000.0, 10.0}}), {{1019.0, 2500.0, 9.0}}, 951, 1021);
    EXPECT_TRUE(fit.Result.Peaks.empty());
    EXPECT_TRUE(fit.Log[0].ends_with("OUT OF REGION")) << fit.Log[0];
}

TEST(NaxGroup, OfTwoCandidatesOnOnePeakTheLowerIsRefused) {
    const Fitted fit(Drawn({{1000.0, 3000.0, 10.0}}), {{997.0, 2000.0, 8.0}, {1003.0, 2500.0, 8.0}},
                     951, 1051);
    ASSERT_EQ(fit.Result.Peaks.size(), 1u);
    EXPECT_NEAR(fit.Result.Peaks[0].Position, 1001.0, 0.01);
    EXPECT_NEAR(fit.Result.Peaks[0].Height, 3000.0, 5.0);
    ASSERT_EQ(fit.Log.size(), 2u);
    EXPECT_TRUE(fit.Log[0].starts_with("PEAK REFUSED CH ")) << fit.Log[0];
}

TEST(NaxGroup, WhenTheSolverFailsTheLowestGoesAndTheOthersAreFitted) {
    // The same place and width twice: the columns are the same.
    const Fitted fit(Drawn({{1000.0, 3000.0, 10.0}}),
                     {{1001.0, 2500.0, 8.0}, {1001.0, 2600.0, 8.0}}, 951, 1051);
    ASSERT_EQ(fit.Result.Peaks.size(), 1u);
    EXPECT_NEAR(fit.Result.Peaks[0].Position, 1001.0, 0.01);
    EXPECT_NE(fit.Log[0].find("PEAK REFUSED"), std::string::npos);
}

TEST(NaxGroup, TooFewChannelsForABackgroundSkipTheGroup) {
    const Fitted fit(Drawn({{1000.0, 3000.0, 10.0}}), {{1001.0, 3000.0, 8.0}}, 1000, 1003);
    EXPECT_TRUE(fit.Result.Peaks.empty());
    EXPECT_EQ(fit.Result.Groups[0].Status, "DIV ");
}

TEST(NaxGroup, ErrorsAreThoseOfTheScatter) {
    // Two hundred noisy copies of one peak: the centres scatter as their error says, within the
    // fifth that 200 values allow (the error of a scatter is 1/sqrt(400) of it).
    double sum = 0.0;
    double squares = 0.0;
    double told = 0.0;
    const int copies = 200;
    for (int seed = 1; seed <= copies; ++seed) {
        SpectrumData data = Drawn({{1000.0, 300.0, 10.0}}, 1000.0);
        seeded::Generator random(static_cast<std::uint64_t>(seed));
        for (std::size_t i = 900; i < 1100; ++i) data.Count[i] = random.Poisson(data.Count[i]);
        const Fitted fit(data, {{1001.0, 1300.0, 8.0}}, 951, 1051);
        ASSERT_EQ(fit.Result.Peaks.size(), 1u);
        const double off = fit.Result.Peaks[0].Position - 1001.0;
        sum += off;
        squares += off * off;
        told += fit.Result.Peaks[0].PositionError;
    }
    const double scatter = std::sqrt(squares / copies - sum * sum / copies / copies);
    EXPECT_NEAR(scatter, told / copies, 0.2 * scatter);
    EXPECT_LT(std::fabs(sum / copies), 4.0 * scatter / std::sqrt(copies));
}

TEST(NaxStore, PeaksCountFromZeroWithTheirHalfWidthsAndRegions) {
    const SpectrumData data = Drawn({{700.3, 2000.0, 9.0}, {730.0, 1000.0, 10.0}});
    const Walked run(data);
    ASSERT_EQ(run.Result.Peaks.size(), 2u);
    PeakTable peaks{};
    std::vector<std::int32_t> background(MAX_CHANNELS, 77);
    std::vector<std::string> drawn;
    Marks marks;
    marks.draw = [&](int window, int slot, int start, int end, Colour) {
        drawn.push_back(std::to_string(window) + " " + std::to_string(slot) + " " +
                        std::to_string(start) + "-" + std::to_string(end));
    };
    const NaxTarget target{
        .Window = 1, .Slot = 4, .Spectrum = data, .Peaks = peaks, .Background = background};
    NaxStoreAll(run.Result, SHAPE_MIX, target, marks);
    ASSERT_EQ(peaks.PeakNum, 2);
    const PeakRecord& peak = peaks.Peak[0];
    EXPECT_EQ(peak.FitState, 65535);
    EXPECT_EQ(peak.FuncType, SHAPE_MIX);
    EXPECT_EQ(peak.GaussRatio, 1.0);
    EXPECT_EQ(peak.Position, run.Result.Peaks[0].Position - 1.0);
    EXPECT_EQ(peak.Width, run.Result.Peaks[0].Fwhm / 2.0);
    EXPECT_EQ(peak.StartCh, 691);  // 700.3 -+ 9
    EXPECT_EQ(peak.EndCh, 709);
    EXPECT_EQ(peaks.Peak[1].StartCh, 720);
    EXPECT_EQ(peak.BackConst, 0.0);
    EXPECT_EQ(peak.BackSlope, 0.0);
    EXPECT_EQ(peak.Fitted, 0);
    // The area: height times half width times sqrt(pi / ln 2).
    EXPECT_NEAR(peak.Intensity, 2000.0 * 4.5 * std::sqrt(M_PI / std::log(2.0)), 60.0);
    EXPECT_EQ(drawn, (std::vector<std::string>{"1 4 691-709", "1 4 720-740"}));
    EXPECT_NEAR(background[700], 50, 2);
    EXPECT_EQ(background[100], 0);
    EXPECT_EQ(background[5000], 0);
    for (std::size_t i = 0; i < 4096; ++i)
        EXPECT_EQ(background[i], run.State->NaxBackground[i]) << i;
}

TEST(NaxStore, RegionsStayWithinTheSpectrumAndARowOfHeightZeroEndsTheRows) {
    const SpectrumData data = Drawn({}, 10.0, 300);
    NaxResult result;
    result.Groups.push_back({.From = 1, .To = 300, .A = 10.0, .P = 150.0});
    result.Peaks.push_back({.Position = 4.0, .Height = 50.0, .Fwhm = 8.0});
    result.Peaks.push_back({.Position = 298.0, .Height = 50.0, .Fwhm = 8.0});
    result.Peaks.push_back({.Position = 150.0, .Height = 0.0, .Fwhm = 8.0});
    result.Peaks.push_back({.Position = 160.0, .Height = 50.0, .Fwhm = 8.0});
    PeakTable peaks{};
    std::vector<std::int32_t> background(MAX_CHANNELS);
    NaxStoreAll(result, SHAPE_GAUSS, {.Spectrum = data, .Peaks = peaks, .Background = background},
                Marks{});
    ASSERT_EQ(peaks.PeakNum, 2);
    EXPECT_EQ(peaks.Peak[0].StartCh, 0);
    EXPECT_EQ(peaks.Peak[0].EndCh, 11);
    EXPECT_EQ(peaks.Peak[1].StartCh, 289);
    EXPECT_EQ(peaks.Peak[1].EndCh, 299);
}

TEST(NaxStore, OverlappingRegionsArePartedAtTheValley) {
    const SpectrumData data = Drawn({{700.0, 2000.0, 10.0}, {716.0, 2000.0, 10.0}});
    NaxResult result;
    result.Groups.push_back({.From = 650, .To = 760, .A = 50.0, .P = 705.0});
    result.Peaks.push_back({.Position = 701.0, .Height = 2000.0, .Fwhm = 10.0});
    result.Peaks.push_back({.Position = 717.0, .Height = 2000.0, .Fwhm = 10.0});
    PeakTable peaks{};
    std::vector<std::int32_t> background(MAX_CHANNELS);
    NaxStoreAll(result, SHAPE_GAUSS, {.Spectrum = data, .Peaks = peaks, .Background = background},
                Marks{});
    EXPECT_EQ(peaks.Peak[0].EndCh, 708);  // the valley is at 708, judged one channel late
    EXPECT_EQ(peaks.Peak[1].StartCh, 709);
}

TEST(NaxCoefficient, ItIsTwoHundredthsOfTheMedianCountsRootAndAtLeastTheDefault) {
    EXPECT_DOUBLE_EQ(AutoBgCoefficient(Drawn({}, 900.0)), 0.6);
    EXPECT_DOUBLE_EQ(AutoBgCoefficient(Drawn({}, 100.0)), 0.2);
    EXPECT_DOUBLE_EQ(AutoBgCoefficient(Drawn({}, 4.0)), 0.2);
    EXPECT_DOUBLE_EQ(AutoBgCoefficient(Drawn({}, 0.0, 0)), 0.2);
    // Peaks on a tenth of the channels do not move the median.
    EXPECT_DOUBLE_EQ(AutoBgCoefficient(Drawn(Comb(200, 400, 10), 900.0)), 0.6);
}
