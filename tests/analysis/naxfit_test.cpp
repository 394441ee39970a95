// The core of the NAX fitter: solver, model, damped loop.
#include "analysis/naxfit.h"

#include "core/fault.h"
#include "minimiser.h"
#include "seeded.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

using namespace vael;

namespace {

/// A state with the region and peaks (height, position, W; channels from 1) of a fit.
std::unique_ptr<NaxState> Prepared(const SpectrumData& data, int start, int end,
                                   const std::vector<std::array<double, 3>>& peaks) {
    auto state = std::make_unique<NaxState>();
    NaxSetupGraph(data, 0.0, *state);
    state->NaxStartCh = static_cast<std::int16_t>(start);
    state->NaxEndCh = static_cast<std::int16_t>(end);
    state->NaxPeakNum = static_cast<std::int16_t>(peaks.size());
    state->NaxParamNum = static_cast<std::int16_t>(peaks.empty() ? 3 : 3 * peaks.size());
    for (const auto& peak : peaks)
        for (const double value : peak) state->Param.push_back({.Value = value});
    return state;
}

SpectrumData Flat(std::int32_t count) {
    SpectrumData data{};
    data.DataNo = 4096;
    data.Count.fill(count);
    return data;
}

struct Log {
    std::vector<std::string> Lines;
    int Turns = 0;
    Talk talk{.log = [this](std::string_view line) { Lines.emplace_back(line); },
              .breathe = [this] { ++Turns; }};
    [[nodiscard]] int Count(std::string_view part) const {
        int found = 0;
        for (const auto& line : Lines) found += line.find(part) != std::string::npos;
        return found;
    }
};

/// A seeded group of one to three Gaussians on a sloping parabola.
struct SeededGroup {
    SpectrumData Data{};
    int Start = 0;
    int End = 0;
    std::vector<std::array<double, 3>> Begin;  // start values, W

    explicit SeededGroup(std::uint64_t seed) {
        seeded::Generator random(seed);
        const int peaks = 1 + static_cast<int>(random.Uniform() * 3.0);
        const double background = random.LogBetween(20.0, 2000.0);
        const double fwhm = random.Between(6.0, 14.0);
        std::vector<seeded::Peak> truth;
        double position = 60.0;
        for (int k = 0; k < peaks; ++k) {
            truth.push_back({position, std::sqrt(background) * random.LogBetween(15.0, 150.0),
                             fwhm * random.Between(0.9, 1.1)});
            Begin.push_back({truth.back().Height * random.Between(0.8, 1.2),
                             position + 1.0 + random.Between(-2.0, 2.0),
                             truth.back().Fwhm / FWHM_PER_W * random.Between(0.8, 1.25)});
            position += fwhm * random.Between(1.3, 2.5);
        }
        Start = 15;
        End = static_cast<int>(position) + 50;
        const double slope = random.Between(-0.003, 0.003);
        Data.DataNo = 400;
        for (int i = 0; i < 400; ++i) {
            const double d = static_cast<double>(i) - 80.0;
            double mean = background * (1.0 + slope * d + 0.000005 * d * d);
            for (const auto& peak : truth) mean += seeded::GaussAt(peak, i);
            Data.Count[static_cast<std::size_t>(i)] = random.Poisson(mean);
        }
    }

    /// The same chi by the formula: residuals over the root of the count, at least 1. `p` is a
    /// triple a peak and the three of the background.
    [[nodiscard]] judge::Residuals Residuals() const {
        return [this](const judge::Vector& p) {
            judge::Vector r;
            const double middle = (Start + End) / 2.0;
            for (int x = Start; x <= End; ++x) {
                const double y = Data.Count[static_cast<std::size_t>(x - 1)];
                const double d = x - middle;
                const std::size_t b = p.size() - 3;
                double f = p[b] + p[b + 1] * d + p[b + 2] * d * d;
                for (std::size_t k = 0; k < b; k += 3)
                    f += p[k] * std::exp(-std::pow((p[k + 1] - x) / p[k + 2], 2.0));
                r.push_back((y - f) / (y < 1.0 ? 1.0 : std::sqrt(y)));
            }
            return r;
        };
    }
};

}  // namespace

TEST(NaxHelpers, TheExponentialHasItsEdges) {
    EXPECT_EQ(SafeExp(-20.0), 0.0);
    EXPECT_EQ(SafeExp(-19.99), std::exp(-19.99));
    EXPECT_GT(SafeExp(-19.99), 0.0);
    EXPECT_EQ(SafeExp(1e-6), 1.0 + 1e-6);
    EXPECT_EQ(SafeExp(-1e-6), 1.0 - 1e-6);
    EXPECT_EQ(SafeExp(1.0), std::exp(1.0));
    EXPECT_EQ(SafeExp(-1000.0), 0.0);
}

TEST(NaxHelpers, LargestAndSmallestOfTheFirstN) {
    EXPECT_EQ(MaxOf(2, 1.0, 3.0, 9.0), 3.0);
    EXPECT_EQ(MaxOf(5, 1.0, 3.0, 9.0, -4.0, 9.5), 9.5);
    EXPECT_EQ(MinOf(3, 1.0, 3.0, -2.0, -9.0), -2.0);
    EXPECT_EQ(MinOf(5, 1.0, 3.0, -2.0, -9.0, -10.0), -10.0);
    EXPECT_THROW((void)MaxOf(1, 1.0, 2.0), Fault);
    EXPECT_THROW((void)MinOf(6, 1.0, 2.0), Fault);
}

TEST(NaxInvert, InverseAndDeterminantOfAMatrixThatNeedsPivots) {
    NaxMatrix a(3, 3);
    const double values[3][3] = {{0, 2, 1}, {4, 1, -3}, {2, 0, 5}};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) a.At(i, j) = values[i][j];
    // By the first row: -2 (20 + 6) + 1 (0 - 2) = -54.
    EXPECT_NEAR(NaxInvert(a, 3), -54.0, 1e-12);
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            double sum = 0.0;
            for (int k = 0; k < 3; ++k) sum += values[i][k] * a.At(k, j);
            EXPECT_NEAR(sum, i == j ? 1.0 : 0.0, 1e-14);
        }
}

TEST(NaxInvert, ASingularMatrixHasADeterminantOfZero) {
    NaxMatrix a(2, 2);
    a.At(0, 0) = 1.0;
    a.At(0, 1) = 2.0;
    a.At(1, 0) = 2.0;
    a.At(1, 1) = 4.0;
    EXPECT_EQ(NaxInvert(a, 2), 0.0);
}

TEST(NaxLsq, AWeightedLineByHand) {
    // Points (0, 1), (1, 3), (2, 4) with weights 1, 2, 1: sums 4, 4, 6 and right sides 11, 14, so
    // the slope is (4 * 14 - 4 * 11) / 8 = 1.5 and the constant (11 - 6) / 4 = 1.25.
    NaxSolver solver;
    const double y[3] = {1, 3, 4};
    const double w[3] = {1, 2, 1};
    for (int i = 0; i < 3; ++i) {
        solver.Design.At(i, 0) = 1.0;
        solver.Design.At(i, 1) = i;
        solver.Y[static_cast<std::size_t>(i)] = y[i];
        solver.Weight[static_cast<std::size_t>(i)] = w[i];
    }
    ASSERT_TRUE(NaxLsq(2, 3, 1e-6, solver));
    EXPECT_NEAR(solver.Solution[0], 1.25, 1e-14);
    EXPECT_NEAR(solver.Solution[1], 1.5, 1e-14);
    // Residuals -0.25, 0.25, -0.25: the variance is (1 + 2 + 1) / 16 on one degree of freedom; the
    // inverse has 6/8 and 4/8 on its diagonal.
    EXPECT_NEAR(solver.Errors[0], std::sqrt(0.25 * 0.75), 1e-14);
    EXPECT_NEAR(solver.Errors[1], std::sqrt(0.25 * 0.5), 1e-14);

    // The kept inverse serves new counts: y = 2 x.
    for (int i = 0; i < 3; ++i) solver.Y[static_cast<std::size_t>(i)] = 2.0 * i;
    ASSERT_TRUE(NaxLsq(2, 3, 1e-6, solver, NAX_LSQ_SAME));
    EXPECT_NEAR(solver.Solution[0], 0.0, 1e-14);
    EXPECT_NEAR(solver.Solution[1], 2.0, 1e-14);
}

TEST(NaxLsq, WithoutADegreeOfFreedomTheErrorsAreThoseOfUnitVariance) {
    NaxSolver solver;
    for (int i = 0; i < 2; ++i) {
        solver.Design.At(i, 0) = 1.0;
        solver.Design.At(i, 1) = i == 0 ? -1.0 : 1.0;
        solver.Y[static_cast<std::size_t>(i)] = 5.0 * i;
        solver.Weight[static_cast<std::size_t>(i)] = 1.0;
    }
    ASSERT_TRUE(NaxLsq(2, 2, 1e-6, solver));
    EXPECT_NEAR(solver.Errors[0], std::sqrt(0.5), 1e-14);
}

TEST(NaxLsq, AZeroColumnAndASmallDeterminantFail) {
    NaxSolver solver;
    for (int i = 0; i < 4; ++i) {
        solver.Design.At(i, 0) = 1.0;
        solver.Design.At(i, 1) = 0.0;
        solver.Y[static_cast<std::size_t>(i)] = 1.0;
        solver.Weight[static_cast<std::size_t>(i)] = 1.0;
    }
    EXPECT_FALSE(NaxLsq(2, 4, 1e-6, solver));
    for (int i = 0; i < 4; ++i) solver.Design.At(i, 1) = 1.0 + 1e-5 * i;
    EXPECT_FALSE(NaxLsq(2, 4, 1e-6, solver));  // scaled determinant 4 * 5e-10
    EXPECT_TRUE(NaxLsq(2, 4, 1e-12, solver));
}

TEST(NaxPeak, DerivativesAgreeWithCentralDifferences) {
    const std::array<double, 3> p{250.0, 101.3, 4.7};
    const std::array<double, 3> one{1.0, 1.0, 1.0};
    const std::array<double, 3> factors{2.0, 0.5, -3.0};
    std::array<double, 3> d{};
    std::array<double, 3> times{};
    std::array<double, 3> unused{};
    for (double x = 88.0; x < 115.0; x += 0.7) {
        EXPECT_NEAR(NaxPeakValue(x, p, one, d), 250.0 * std::exp(-std::pow((x - 101.3) / 4.7, 2.0)),
                    1e-10);
        (void)NaxPeakValue(x, p, factors, times);
        for (std::size_t k = 0; k < 3; ++k) {
            const double h = 1e-4;
            auto up = p;
            auto down = p;
            up[k] += h;
            down[k] -= h;
            const double slope =
                (NaxPeakValue(x, up, one, unused) - NaxPeakValue(x, down, one, unused)) / (2.0 * h);
            EXPECT_NEAR(d[k], slope, 1e-6 * (1.0 + std::fabs(slope))) << x << " " << k;
            EXPECT_DOUBLE_EQ(times[k], factors[k] * d[k]);
        }
    }
}

TEST(NaxPeak, AWidthOfZeroIsAFault) {
    std::array<double, 3> d{};
    EXPECT_THROW((void)NaxPeakValue(3.0, {1.0, 2.0, 0.0}, {1.0, 1.0, 1.0}, d), Fault);
}

TEST(NaxConstraints, FreeLinkedAndFixedParameters) {
    NaxState state;
    state.NaxPeakNum = 3;
    for (int k = 0; k < 9; ++k) state.Param.push_back({.Value = 10.0 * (k + 1)});
    state.Background = {1.0, 2.0, 3.0};
    state.Param[4] = {
        .Value = 50.0, .Free = false, .Link = NAX_LINK_OFFSET, .Master = 1, .Term = 7.0};
    state.Param[5] = {
        .Value = 60.0, .Free = false, .Link = NAX_LINK_RATIO, .Master = 2, .Term = 2.0};
    state.Param[8] = {.Value = 90.0,
                      .Free = false,
                      .Link = NAX_LINK_RATIO,
                      .Master = 5,
                      .Term = 1.5};  // a chain: twice and then one and a half times
    state.Param[7] = {.Value = 80.0, .Free = false};
    NaxApplyConstraints(1, state);
    EXPECT_EQ(state.FreeNum, 5);
    EXPECT_EQ(state.Working[0], 10.0);
    EXPECT_EQ(state.Working[3], 40.0);
    EXPECT_EQ(state.Working[4], 70.0);
    EXPECT_EQ(state.Working[5], 1.0);  // the background follows the free ones
    state.Working[1] = 25.0;
    state.Working[2] = 4.0;
    state.Working[7] = -1.0;
    NaxApplyConstraints(2, state);
    EXPECT_EQ(state.Param[1].Value, 25.0);
    EXPECT_EQ(state.Param[4].Value, 18.0);
    EXPECT_EQ(state.Param[5].Value, 8.0);
    EXPECT_EQ(state.Param[8].Value, 12.0);
    EXPECT_EQ(state.Param[7].Value, 80.0);
    EXPECT_EQ(state.Background[2], -1.0);
}

TEST(NaxIterate, SeededGroupsAgreeWithAnIndependentMinimiser) {
    for (std::uint64_t seed = 1; seed <= 60; ++seed) {
        const SeededGroup group(seed);
        auto state = Prepared(group.Data, group.Start, group.End, group.Begin);
        const NaxOutcome outcome = NaxIterate(*state, Talk{});
        ASSERT_EQ(outcome.Flag, 1) << "seed " << seed;
        EXPECT_EQ(outcome.Status, ALL_BITS);

        judge::Vector start;
        for (const auto& peak : group.Begin) start.insert(start.end(), peak.begin(), peak.end());
        const double level = group.Data.Count[static_cast<std::size_t>(group.End - 1)];
        start.insert(start.end(), {level, 0.0, 0.0});
        const judge::Minimum second = judge::Minimise(group.Residuals(), start);
        const double freedom =
            static_cast<double>(group.End - group.Start + 1) - static_cast<double>(start.size());
        EXPECT_NEAR(outcome.Chi, second.Squares / freedom, 1e-5 * outcome.Chi) << "seed " << seed;
        for (std::size_t k = 0; k < state->Param.size(); ++k) {
            EXPECT_NEAR(state->Param[k].Value, second.At[k], 0.01 * second.Errors[k])
                << "seed " << seed << " parameter " << k;
            EXPECT_NEAR(state->Param[k].Error, second.Errors[k], 0.01 * second.Errors[k])
                << "seed " << seed << " parameter " << k;
        }
        for (std::size_t k = 0; k < 3; ++k)
            EXPECT_NEAR(state->Background[k], second.At[state->Param.size() + k],
                        0.01 * second.Errors[state->Param.size() + k]);
    }
}

// The loop ends where a step is below a thousandth of its error or a millionth of its value. It
// does not take that step, so that a centre may stay as far from the minimum, and a little farther
// where the steps shrink slowly; with narrower limits it gets to the minimum itself.
TEST(NaxIterate, CentresOfTwoHundredGroupsAreThoseOfTheIndependentMinimiser) {
    int groups = 0;
    int converged = 0;
    double worst = 0.0;        // distance of a centre in full widths, with the limits of a run
    double worstStep = 0.0;    // the same in largest steps that are still taken for none
    double worstNarrow = 0.0;  // in full widths, with narrow limits
    for (std::uint64_t seed = 1000; groups < 200; ++seed) {
        const SeededGroup group(seed);
        if (group.Begin.size() < 2) continue;
        ++groups;
        judge::Vector start;
        for (const auto& peak : group.Begin) start.insert(start.end(), peak.begin(), peak.end());
        start.insert(
            start.end(),
            {static_cast<double>(group.Data.Count[static_cast<std::size_t>(group.End)]), 0.0, 0.0});
        const judge::Minimum minimum = judge::Minimise(group.Residuals(), start);
        for (const bool narrow : {false, true}) {
            auto state = Prepared(group.Data, group.Start, group.End, group.Begin);
            if (narrow) {
                state->Limits.EpsErr = 1e-8;
                state->Limits.EpsPar = 1e-12;
            }
            if (NaxIterate(*state, Talk{}).Flag != 1) continue;
            converged += narrow ? 0 : 1;
            for (std::size_t k = 1; k < state->Param.size(); k += 3) {
                const double off = std::fabs(state->Param[k].Value - minimum.At[k]);
                const double widths = off / (FWHM_PER_W * minimum.At[k + 1]);
                (narrow ? worstNarrow : worst) = std::max(narrow ? worstNarrow : worst, widths);
                const double step = std::max(1e-3 * minimum.Errors[k], 1e-6 * minimum.At[k]);
                if (!narrow) worstStep = std::max(worstStep, off / step);
            }
        }
    }
    std::printf(
        "%d of 200 groups converged; worst centre %.1e full widths, %.2f steps; %.1e full "
        "widths with narrow limits\n",
        converged, worst, worstStep, worstNarrow);
    EXPECT_GE(converged, 198);
    EXPECT_LT(worstStep, 2.0);
    EXPECT_LT(worstNarrow, 1e-6);
}

TEST(NaxIterate, ALinkedGroupAgreesWithAMinimiserOfTheReducedModel) {
    const SeededGroup group(5);
    ASSERT_GE(group.Begin.size(), 2u);
    auto state = Prepared(group.Data, group.Start, group.End, {group.Begin[0], group.Begin[1]});
    const double apart = group.Begin[1][1] - group.Begin[0][1];
    state->Param[4] = {.Free = false, .Link = NAX_LINK_OFFSET, .Master = 1, .Term = -apart};
    state->Param[5] = {.Free = false, .Link = NAX_LINK_RATIO, .Master = 2, .Term = 1.1};
    state->Param[0].Free = false;
    const double height = state->Param[0].Value;
    const NaxOutcome outcome = NaxIterate(*state, Talk{});
    ASSERT_EQ(outcome.Flag, 1);

    const judge::Residuals full = group.Residuals();
    const auto reduced =
        [&](const judge::Vector& p) {  // position, width, second height, background
            return full({height, p[0], p[1], p[2], p[0] + apart, 1.1 * p[1], p[3], p[4], p[5]});
        };
    const judge::Minimum second = judge::Minimise(
        reduced,
        {group.Begin[0][1], group.Begin[0][2], group.Begin[1][0],
         static_cast<double>(group.Data.Count[static_cast<std::size_t>(group.End)]), 0.0, 0.0});
    EXPECT_NEAR(state->Param[1].Value, second.At[0], 0.01 * second.Errors[0]);
    EXPECT_NEAR(state->Param[2].Value, second.At[1], 0.01 * second.Errors[1]);
    EXPECT_NEAR(state->Param[3].Value, second.At[2], 0.01 * second.Errors[2]);
    EXPECT_DOUBLE_EQ(state->Param[4].Value, state->Param[1].Value + apart);
    EXPECT_DOUBLE_EQ(state->Param[5].Value, 1.1 * state->Param[2].Value);
    EXPECT_EQ(state->Param[0].Value, height);
    EXPECT_EQ(state->Param[0].Error, 0.0);  // fixed
    EXPECT_NEAR(state->Param[1].Error, second.Errors[0], 0.01 * second.Errors[0]);
    EXPECT_NEAR(state->Param[5].Error, 1.1 * second.Errors[1], 0.01 * second.Errors[1]);
    EXPECT_NEAR(outcome.Chi, second.Squares / static_cast<double>(group.End - group.Start + 1 - 6),
                1e-5 * outcome.Chi);
}

TEST(NaxIterate, AConvergedRunSaysSoAndGivesTheInterfaceItsTurns) {
    const SeededGroup group(3);
    auto state = Prepared(group.Data, group.Start, group.End, group.Begin);
    Log log;
    const NaxOutcome outcome = NaxIterate(*state, log.talk);
    EXPECT_EQ(log.Count("ALL DISTANCE R(I) SMALL ENOUGH CONV"), 1);
    EXPECT_GE(log.Turns, outcome.Iterations);
}

TEST(NaxIterate, NoPeaksOnAFlatSpectrumStopsOnAChiSquareOfZero) {
    auto state = Prepared(Flat(100), 50, 149, {});
    Log log;
    const NaxOutcome outcome = NaxIterate(*state, log.talk);
    EXPECT_EQ(outcome.Flag, 1);
    EXPECT_EQ(log.Count("CHI-SQ LESS THAAN 1.00000E-006 CONV"), 1);
    EXPECT_NEAR(state->Background[0], 100.0, 1e-9);
    EXPECT_NEAR(state->Background[2], 0.0, 1e-12);
}

TEST(NaxIterate, AFailingBackgroundEndsTheRunWithStatusZero) {
    auto state = Prepared(Flat(100), 50, 149, {{10.0, 100.0, 5.0}});
    state->Limits.EpsDet = 1e9;
    Log log;
    const NaxOutcome outcome = NaxIterate(*state, log.talk);
    EXPECT_EQ(outcome.Status, 0);
    EXPECT_EQ(outcome.Flag, 0);
    EXPECT_EQ(log.Count("LSQ FOR BACK GROUND FAILED"), 1);
}

TEST(NaxIterate, AFailingSolverEndsTheRunWithStatusZeroAndTheParametersAsTheyStand) {
    // Two peaks in the same place: their columns are the same.
    auto state = Prepared(Flat(100), 50, 149, {{10.0, 100.0, 5.0}, {10.0, 100.0, 5.0}});
    const NaxOutcome outcome = NaxIterate(*state, Talk{});
    EXPECT_EQ(outcome.Status, 0);
    EXPECT_EQ(outcome.Flag, 0);
    EXPECT_EQ(state->Param[1].Value, 100.0);
}

TEST(NaxIterate, ThirtyOneIterationsEndTheRunWithoutConv) {
    const SeededGroup group(3);
    auto state = Prepared(group.Data, group.Start, group.End, group.Begin);
    state->Limits.EpsErr = 0.0;  // no step is ever small enough
    state->Limits.EpsPar = 0.0;
    Log log;
    const NaxOutcome outcome = NaxIterate(*state, log.talk);
    EXPECT_EQ(outcome.Iterations, 31);
    EXPECT_EQ(outcome.Flag, 0);
    EXPECT_EQ(log.Count("CONV"), 0);
    // At the minimum a step raises chi-square by a rounding error: it is kept, and told.
    EXPECT_GE(log.Count("CHI-SQ SLIGHTLY INCREASED WITHIN ACCEPTABLE ERROR"), 1);
}

TEST(NaxIterate, TwentyStepsWithoutADecreaseGiveUpTheDamping) {
    const SeededGroup group(3);
    auto state = Prepared(group.Data, group.Start, group.End, group.Begin);
    const NaxOutcome first = NaxIterate(*state, Talk{});
    ASSERT_EQ(first.Flag, 1);
    state->Limits.EpsErr = 0.0;
    state->Limits.EpsPar = 0.0;
    state->Limits.EpsChi = -0.5;  // only a step that halves chi-square is good enough
    state->Limits.IterationLimit = 1000.0;
    const std::vector<NaxParam> before = state->Param;
    Log log;
    const NaxOutcome outcome = NaxIterate(*state, log.talk);
    EXPECT_EQ(outcome.Flag, ALL_BITS);
    EXPECT_EQ(log.Count("ITERATION OF DAMP OVER"), 1);
    EXPECT_EQ(log.Count("RESIDUAL NOT DECREASE CONTINUE"), 19);
    for (std::size_t k = 0; k < before.size(); ++k)
        EXPECT_NEAR(state->Param[k].Value, before[k].Value, 0.01 * before[k].Error);
}

TEST(NaxIterate, AsManyChannelsAsUnknownsDivideByZero) {
    const SeededGroup group(3);
    const int unknowns = 6;
    auto state = Prepared(group.Data, 56, 56 + unknowns - 1, {group.Begin[0]});
    try {
        (void)NaxIterate(*state, Talk{});
        FAIL() << "no fault";
    } catch (const Fault& fault) {
        EXPECT_EQ(fault.Number(), FaultNumber::Division);
    }
}

TEST(NaxIterate, InARegionBelowTenChannelsTheBlocksOverlap) {
    // 7 channels, 100 to 106: the blocks are 100 to 109 and 97 to 106. Counts of 40 + (x - 103)
    // lie on one line in both, so the background starts and stays there.
    SpectrumData data = Flat(0);
    for (int x = 90; x < 120; ++x) data.Count[static_cast<std::size_t>(x - 1)] = 40 + (x - 103);
    auto state = Prepared(data, 100, 106, {});
    const NaxOutcome outcome = NaxIterate(*state, Talk{});
    EXPECT_EQ(outcome.Flag, 1);
    EXPECT_NEAR(state->Background[0], 40.0, 1e-9);
    EXPECT_NEAR(state->Background[1], 1.0, 1e-9);
}

TEST(NaxIterate, ABlockThatLeavesTheSpectrumIsAFault) {
    auto low = Prepared(Flat(10), 1, 9, {});  // the second block would begin at 0
    EXPECT_THROW((void)NaxIterate(*low, Talk{}), Fault);
    auto high = Prepared(Flat(10), 4090, 4096, {});  // the first would end at 4099
    EXPECT_THROW((void)NaxIterate(*high, Talk{}), Fault);
}

TEST(NaxSetup, CountsMoveUpByOneAndStopAtChannel4096) {
    auto data = std::make_unique<SpectrumData>();
    data->DataNo = 8192;
    data->Count.fill(3);
    data->Count[0] = 7;
    data->Count[4095] = 9;
    NaxState state;
    NaxSetupGraph(*data, -6.0, state);
    EXPECT_EQ(state.ChannelNum, 4096);
    EXPECT_EQ(state.Spectrum[1], 7);
    EXPECT_EQ(state.Spectrum[4096], 9);
    EXPECT_DOUBLE_EQ(state.EnergyTimesD, 6.19927 / std::sin(6.0 * 0.008726645));
    EXPECT_NEAR(state.EnergyTimesD, 6.19927 / std::sin(3.0 * M_PI / 180.0), 3e-5);
    NaxSetupGraph(*data, 0.0, state);
    EXPECT_EQ(state.EnergyTimesD, 0.0);
}

TEST(NaxSetup, TheBackgroundImageIsRoundedAndSkippedForAConstantOfZero) {
    std::vector<std::int32_t> image(20, 4);
    NaxStoreBackground(10.0, 0.5, 0.25, 6.0, 5, 8, image);
    EXPECT_EQ(image[3], 4);
    EXPECT_EQ(image[4], 10);  // channel 5: 10 - 0.5 + 0.25 = 9.75
    EXPECT_EQ(image[5], 10);
    EXPECT_EQ(image[6], 11);  // 10.75
    EXPECT_EQ(image[7], 12);  // 12.0
    EXPECT_EQ(image[8], 4);
    NaxStoreBackground(0.0, 5.0, 5.0, 6.0, 1, 20, image);
    EXPECT_EQ(image[5], 10);
    EXPECT_THROW(NaxStoreBackground(1.0, 0.0, 0.0, 6.0, 20, 21, image), Fault);
}
