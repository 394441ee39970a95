// The manual NAX run: reading its input, its words, its report and what it stores.
#include "analysis/naxwalk.h"

#include "seeded.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using namespace vael;

namespace {

struct Ears {
    std::vector<std::string> Said;
    std::vector<std::string> Log;
    Talk talk{.log = [this](std::string_view line) { Log.emplace_back(line); },
              .say = [this](std::string_view text, std::string_view) { Said.emplace_back(text); }};
};

/// Two Gaussians at the 0-based channels 200 and 230 on 100 counts.
SpectrumData TwoPeaks() {
    SpectrumData data{};
    data.DataNo = 1000;
    seeded::Generator random(11);
    for (int i = 0; i < 1000; ++i)
        data.Count[static_cast<std::size_t>(i)] =
            random.Poisson(100.0 + seeded::GaussAt({200.0, 2000.0, 10.0}, i) +
                           seeded::GaussAt({230.0, 1000.0, 10.0}, i));
    return data;
}

const NaxManualInput INPUT{.StartCh = 150,
                           .EndCh = 290,
                           .Peaks = {{201.5, 1800.0, 9.0}, {230.0, 900.0, 11.0}},
                           .Constraints = {}};

int Cond(const NaxManualInput& input) {
    NaxState state;
    NaxSetupGraph(TwoPeaks(), 0.0, state);
    return COND(input, state);
}

NaxManualInput Constrained(std::vector<NaxConstraint> rows) {
    NaxManualInput input = INPUT;
    input.Constraints = std::move(rows);
    return input;
}

}  // namespace

TEST(Cond, TheStartValuesStandInTheParameterList) {
    NaxState state;
    NaxSetupGraph(TwoPeaks(), 0.0, state);
    ASSERT_EQ(COND(INPUT, state), 0);
    EXPECT_EQ(state.NaxPeakNum, 2);
    EXPECT_EQ(state.NaxParamNum, 6);
    EXPECT_EQ(state.Param[0].Value, 1800.0);
    EXPECT_EQ(state.Param[1].Value, 201.5);
    EXPECT_DOUBLE_EQ(state.Param[2].Value, 9.0 / 1.6651092);
    EXPECT_TRUE(state.Param[5].Free);
    NaxManualInput none = INPUT;
    none.Peaks.clear();
    ASSERT_EQ(COND(none, state), 0);
    EXPECT_EQ(state.NaxParamNum, 3);
}

TEST(Cond, ARegionOfFiveHundredChannelsIsTheLargest) {
    NaxManualInput input = INPUT;
    input.StartCh = 101;
    input.EndCh = 600;
    EXPECT_EQ(Cond(input), 0);
    input.EndCh = 601;
    EXPECT_EQ(Cond(input), 1);
}

TEST(Cond, TheRegionLiesInsideTheSpectrum) {
    NaxManualInput input = INPUT;
    input.StartCh = 900;
    input.EndCh = 1000;
    EXPECT_EQ(Cond(input), 0);
    input.EndCh = 1001;
    EXPECT_EQ(Cond(input), 1);
    input.StartCh = 0;
    input.EndCh = 100;
    EXPECT_EQ(Cond(input), 1);
    input.StartCh = 101;
    EXPECT_EQ(Cond(input), 1);  // upside down
}

TEST(Cond, LettersInEitherCaseChooseTheParameter) {
    for (const char* letters : {"APW", "apw"}) {
        NaxState state;
        NaxSetupGraph(TwoPeaks(), 0.0, state);
        ASSERT_EQ(COND(Constrained({{.Peak = 1, .Letter = letters[0]},
                                    {.Peak = 2, .Letter = letters[1]},
                                    {.Peak = 2,
                                     .Letter = letters[2],
                                     .Link = letters[0] == 'A' ? 'C' : 'c',
                                     .Master = 1,
                                     .Type = NAX_LINK_RATIO,
                                     .Value = 1.0}}),
                       state),
                  0);
        EXPECT_FALSE(state.Param[0].Free);
        EXPECT_TRUE(state.Param[1].Free);
        EXPECT_FALSE(state.Param[4].Free);
        EXPECT_EQ(state.Param[4].Link, NAX_LINK_NONE);
        EXPECT_EQ(state.Param[5].Link, NAX_LINK_RATIO);
        EXPECT_EQ(state.Param[5].Master, 2);
    }
}

TEST(Cond, ConstraintsOnWhatIsNotThereAreRefused) {
    EXPECT_EQ(Cond(Constrained({{.Peak = 3, .Letter = 'A'}})), 1);
    EXPECT_EQ(Cond(Constrained({{.Peak = 0, .Letter = 'A'}})), 1);
    EXPECT_EQ(Cond(Constrained({{.Peak = 1, .Letter = 'X'}})), 1);
    EXPECT_EQ(Cond(Constrained({{.Peak = 1,
                                 .Letter = 'W',
                                 .Link = 'C',
                                 .Master = 3,
                                 .Type = NAX_LINK_RATIO,
                                 .Value = 1.0}})),
              1);
    EXPECT_EQ(Cond(Constrained({{.Peak = 1, .Letter = 'W', .Link = 'C', .Master = 2}})), 1);
}

TEST(Cond, LinksThatGoInACircleAreRefused) {
    const NaxConstraint there{
        .Peak = 1, .Letter = 'W', .Link = 'C', .Master = 2, .Type = NAX_LINK_RATIO, .Value = 1.0};
    NaxConstraint back = there;
    back.Peak = 2;
    back.Master = 1;
    EXPECT_EQ(Cond(Constrained({there})), 0);
    EXPECT_EQ(Cond(Constrained({there, back})), 1);
    NaxConstraint self = there;
    self.Master = 1;
    EXPECT_EQ(Cond(Constrained({self})), 1);
}

TEST(Cond, MoreFreeParametersThanTheSolverHoldsAreRefused) {
    NaxManualInput input = INPUT;
    input.Peaks.assign(9, {200.0, 10.0, 5.0});
    EXPECT_EQ(Cond(input), 0);
    input.Peaks.assign(10, {200.0, 10.0, 5.0});
    EXPECT_EQ(Cond(input), 1);  // 30 and the background's 3
    for (int k = 1; k <= 10; ++k) input.Constraints.push_back({.Peak = k, .Letter = 'W'});
    EXPECT_EQ(Cond(input), 0);
    input.Peaks.assign(11, {200.0, 10.0, 5.0});
    EXPECT_EQ(Cond(input), 1);
}

TEST(NaxManual, TwoPeaksAreFittedReportedAndCountFromOne) {
    Ears ears;
    NaxState state;
    const NaxResult result = NaxFitManual(INPUT, TwoPeaks(), NaxSettings{}, state, ears.talk);
    EXPECT_EQ(result.Result, 0);
    EXPECT_TRUE(ears.Said.empty());
    EXPECT_EQ(result.Outcome.Flag, 1);
    ASSERT_EQ(result.Peaks.size(), 2u);
    EXPECT_NEAR(result.Peaks[0].Position, 201.0, 5.0 * result.Peaks[0].PositionError);
    EXPECT_NEAR(result.Peaks[0].Height, 2000.0, 5.0 * result.Peaks[0].HeightError);
    EXPECT_NEAR(result.Peaks[1].Fwhm, 10.0, 5.0 * result.Peaks[1].FwhmError);
    EXPECT_LT(result.Peaks[0].PositionError, 0.2);
    EXPECT_NEAR(state.NaxBackground[199], 100, 10);
    EXPECT_EQ(state.NaxBackground[140], 0);
    int amplitudes = 0;
    for (const auto& line : ears.Log) {
        amplitudes += line.starts_with("AMPLITUDE");
        if (line.starts_with("AMPLITUDE") || line.starts_with("POSITION") ||
            line.starts_with("WIDTH")) {
            EXPECT_TRUE(line.ends_with("       M")) << line;
        }
    }
    EXPECT_EQ(amplitudes, 2);
}

TEST(NaxManual, AFixedParameterStaysAndIsReportedAsFixed) {
    Ears ears;
    NaxState state;
    const NaxResult result = NaxFitManual(Constrained({{.Peak = 1, .Letter = 'P'}}), TwoPeaks(),
                                          NaxSettings{}, state, ears.talk);
    ASSERT_EQ(result.Result, 0);
    EXPECT_EQ(result.Peaks[0].Position, 201.5);
    EXPECT_EQ(result.Peaks[0].PositionError, 0.0);
    int fixed = 0;
    for (const auto& line : ears.Log)
        if (line.ends_with(" FIXED M")) {
            ++fixed;
            EXPECT_TRUE(line.starts_with("POSITION 1 201.5000 0.0000")) << line;
        }
    EXPECT_EQ(fixed, 1);
}

TEST(NaxManual, ABadRegionIsAnErrorInFunctionCond) {
    Ears ears;
    NaxState state;
    NaxManualInput input = INPUT;
    input.EndCh = static_cast<std::int16_t>(input.StartCh + 500);  // 501 channels
    const NaxResult result = NaxFitManual(input, TwoPeaks(), NaxSettings{}, state, ears.talk);
    EXPECT_EQ(result.Result, -1);
    EXPECT_EQ(ears.Said, std::vector<std::string>{"Error in Function COND"});
}

TEST(NaxManual, AFitThatDoesNotConvergeFailed) {
    Ears ears;
    NaxState state;
    NaxManualInput input = INPUT;
    input.Peaks[1] = input.Peaks[0];  // the same columns twice
    const NaxResult result = NaxFitManual(input, TwoPeaks(), NaxSettings{}, state, ears.talk);
    EXPECT_EQ(result.Result, -1);
    EXPECT_TRUE(result.Peaks.empty());
    EXPECT_EQ(ears.Said, std::vector<std::string>{"Failed to fit"});
}

TEST(NaxManual, ARunTimeErrorInsideSaysCanNotFit) {
    Ears ears;
    NaxState state;
    NaxManualInput input = INPUT;
    input.StartCh = 195;
    input.EndCh = 203;  // nine channels, nine unknowns
    const NaxResult result = NaxFitManual(input, TwoPeaks(), NaxSettings{}, state, ears.talk);
    EXPECT_EQ(result.Result, -1);
    EXPECT_EQ(ears.Said, std::vector<std::string>{"Can not fit"});
    EXPECT_TRUE(result.Peaks.empty());
}

TEST(NaxManual, ItsPeaksJoinTheTable) {
    const SpectrumData data = TwoPeaks();
    NaxState state;
    const NaxResult result = NaxFitManual(INPUT, data, NaxSettings{}, state, Talk{});
    ASSERT_EQ(result.Result, 0);
    PeakTable peaks{};
    peaks.PeakNum = 1;
    peaks.Peak[0].Position = 50.0;
    std::vector<std::int32_t> background(MAX_CHANNELS, 77);
    const NaxTarget target{.Spectrum = data, .Peaks = peaks, .Background = background};
    NaxStoreManual(result, SHAPE_LORENTZ, target, Marks{});
    ASSERT_EQ(peaks.PeakNum, 3);
    EXPECT_EQ(peaks.Peak[0].Position, 50.0);
    EXPECT_EQ(peaks.Peak[1].Position, result.Peaks[0].Position - 1.0);
    EXPECT_EQ(peaks.Peak[1].Width, result.Peaks[0].Fwhm / 2.0);
    EXPECT_EQ(peaks.Peak[1].FuncType, SHAPE_LORENTZ);
    EXPECT_EQ(peaks.Peak[1].GaussRatio, 1.0);
    EXPECT_EQ(background[148], 0);
    EXPECT_NE(background[149], 0);  // the 1-based channel 150
    EXPECT_NE(background[289], 0);
    EXPECT_EQ(background[290], 0);
}
