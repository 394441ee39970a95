// Line and parabola of the calibration against exact points and against a second solver.
#include "calibration/calibfit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

using namespace vael;

namespace {

using Numbers = std::vector<double>;

constexpr auto LINE = CalibCurveKind::Line;
constexpr auto PARABOLA = CalibCurveKind::Parabola;

int Count(const Numbers& x) { return static_cast<int>(x.size()); }

/// The parabola by an orthogonal basis on centred channels in extended precision: no normal
/// equations and no elimination.
CalibConstants SecondParabola(const Numbers& x, const Numbers& y) {
    const auto n = static_cast<long double>(x.size());
    long double mean = 0;
    for (const double each : x) mean += each / n;
    long double s2 = 0;
    long double s3 = 0;
    for (const double each : x) {
        const long double t = each - mean;
        s2 += t * t;
        s3 += t * t * t;
    }
    // Bases 1, t, t^2 - u t - v, orthogonal over the points.
    const long double u = s3 / s2;
    const long double v = s2 / n;
    long double c0 = 0;
    long double c1 = 0;
    long double c2 = 0;
    long double norm = 0;
    for (std::size_t i = 0; i < x.size(); ++i) {
        const long double t = x[i] - mean;
        const long double square = t * t - u * t - v;
        c0 += y[i] / n;
        c1 += y[i] * t / s2;
        c2 += y[i] * square;
        norm += square * square;
    }
    c2 /= norm;
    const long double linear = c1 - c2 * u;
    return {static_cast<double>(c0 - c2 * v - linear * mean + c2 * mean * mean),
            static_cast<double>(linear - 2 * c2 * mean), static_cast<double>(c2)};
}

}  // namespace

TEST(FitQuadratic, GoesThroughThreePoints) {
    // E = 1 + 0.03 x + 2e-7 x^2 at 100, 1000 and 3000.
    const Numbers x{100.0, 1000.0, 3000.0};
    const Numbers y{4.002, 31.2, 92.8};
    CalibConstants c{};
    EXPECT_EQ(FitQuadratic(x, y, 3, c), 0);
    EXPECT_NEAR(c[0], 1.0, 1e-9);
    EXPECT_NEAR(c[1], 0.03, 1e-12);
    EXPECT_NEAR(c[2], 2e-7, 1e-15);
}

TEST(FitQuadratic, AgreesWithASecondMethodOnScatteredPoints) {
    std::mt19937_64 random(20260101);
    std::uniform_real_distribution<double> channel(50.0, 8000.0);
    std::normal_distribution<double> scatter(0.0, 0.01);
    for (int run = 0; run < 200; ++run) {
        Numbers x;
        Numbers y;
        for (int i = 0; i < 4 + run % 17; ++i) {
            x.push_back(channel(random));
            y.push_back(0.05 + 0.0316 * x.back() + 3e-8 * x.back() * x.back() + scatter(random));
        }
        CalibConstants c{};
        ASSERT_EQ(FitQuadratic(x, y, Count(x), c), 0);
        const CalibConstants second = SecondParabola(x, y);
        for (const double at : {0.0, 1000.0, 4095.0, 8191.0})
            EXPECT_NEAR(CalibEnergy(c, at), CalibEnergy(second, at), 1e-6) << "run " << run;
    }
}

TEST(FitQuadratic, RefusesWhatFixesNoParabolaAndLeavesTheConstants) {
    const CalibConstants before{7.0, 8.0, 9.0};
    const auto refused = [&](const Numbers& x, const Numbers& y, int n) {
        CalibConstants c = before;
        const int result = FitQuadratic(x, y, n, c);
        EXPECT_EQ(c, before);
        return result;
    };
    EXPECT_EQ(refused({}, {}, 0), 1);
    EXPECT_EQ(refused({100.0}, {3.0}, -1), 1);
    EXPECT_EQ(refused({100.0}, {3.0}, 1), 1);
    EXPECT_EQ(refused({100.0, 200.0}, {3.0, 6.0}, 2), 1);
    EXPECT_EQ(refused({696.41, 696.41, 696.41}, {22.1, 22.1, 22.1}, 3), 1) << "three equal rows";
    EXPECT_EQ(refused({696.41, 2298.58, 696.41, 2298.58}, {22.1, 72.8, 22.0, 72.7}, 4), 1)
        << "two channels twice: rounding leaves a pivot that is not quite zero";
}

TEST(FitQuadratic, RefusesAZeroScaleAZeroPivotAndSumsBeyondANumber) {
    CalibConstants c{};
    EXPECT_EQ(FitQuadratic(Numbers{1e-200, 2e-200, 3e-200}, Numbers{1, 2, 3}, 3, c), 1)
        << "squares that vanish leave a row of zeros";
    EXPECT_EQ(FitQuadratic(Numbers{0, 1, 0, 1}, Numbers{1, 2, 1, 2}, 4, c), 1)
        << "sums that are exact leave a pivot of zero";
    EXPECT_EQ(FitQuadratic(Numbers{1e90, 2e90, 3e90}, Numbers{1, 2, 3}, 3, c), 2);
    EXPECT_EQ(FitQuadratic(Numbers{1, 2, 3}, Numbers{1e308, 1e308, 1e308}, 3, c), 2);
    EXPECT_EQ(c, CalibConstants{});
}

TEST(FitCalibration, TheLineStandsOnChannelsFromOne) {
    // Table channels 101 and 1101 at 3 and 33 keV: E = 0.03 * channel - 0.03.
    const Numbers x{100.0, 1100.0};
    const Numbers y{3.0, 33.0};
    CalibConstants c{0.0, 0.0, 5.0};
    EXPECT_EQ(FitCalibration(LINE, x, y, 2, c), 0);
    EXPECT_NEAR(CalibEnergy(c, 101.0), 3.0, 1e-12);
    EXPECT_NEAR(CalibEnergy(c, 1101.0), 33.0, 1e-12);
    EXPECT_NEAR(c[0], -0.03, 1e-12);
    EXPECT_EQ(c[2], 0.0);
}

TEST(FitCalibration, TheParabolaStandsOnChannelsFromZero) {
    const Numbers x{100.0, 1100.0, 2100.0};
    const Numbers y{3.0, 33.0, 64.0};
    CalibConstants c{};
    EXPECT_EQ(FitCalibration(PARABOLA, x, y, 3, c), 0);
    for (std::size_t i = 0; i < x.size(); ++i) EXPECT_NEAR(CalibEnergy(c, x[i]), y[i], 1e-9);
    EXPECT_GT(std::fabs(CalibEnergy(c, 101.0) - 3.0), 0.02) << "one channel apart from the line";
    EXPECT_EQ(ChannelBase(LINE), 1.0);
    EXPECT_EQ(ChannelBase(PARABOLA), 0.0);
}

TEST(FitCalibration, AFailedLineGivesZerosAndAFailedParabolaLeavesAAndB) {
    CalibConstants c{1.0, 2.0, 3.0};
    EXPECT_EQ(FitCalibration(PARABOLA, Numbers{5.0, 6.0}, Numbers{1.0, 2.0}, 2, c), 1);
    EXPECT_EQ(c, (CalibConstants{1.0, 2.0, 0.0}));
    EXPECT_EQ(FitCalibration(LINE, Numbers{5.0}, Numbers{1.0}, 1, c), 1);
    EXPECT_EQ(c, (CalibConstants{0.0, 0.0, 0.0}));
    c = {1.0, 2.0, 3.0};
    EXPECT_EQ(FitCalibration(LINE, Numbers{0.1, 0.1, 0.1}, Numbers{1.0, 1.0, 2.0}, 3, c), 1)
        << "equal channels whose sums are not exact";
    EXPECT_EQ(c, (CalibConstants{0.0, 0.0, 0.0}));
    c = {1.0, 2.0, 3.0};
    EXPECT_EQ(FitCalibration(LINE, Numbers{}, Numbers{}, 0, c), 1);
    EXPECT_EQ(c, (CalibConstants{0.0, 0.0, 0.0}));
}

TEST(Residuals, TellTheRootMeanSquareAndTheWorstPoint) {
    // On the line E = 0.01 * channel the points lie 0, +3 and -4 eV off.
    const CalibConstants c{0.0, 0.01, 0.0};
    const Numbers x{99.0, 199.0, 299.0};
    const Numbers y{1.0, 2.003, 2.996};
    const CalibResiduals off = ResidualsOf(LINE, c, x, y, 3);
    EXPECT_NEAR(off.Rms, 5.0 / std::sqrt(3.0), 1e-9);
    EXPECT_EQ(off.Worst, 2);
    EXPECT_NEAR(off.WorstBy, -4.0, 1e-9);
    EXPECT_NEAR(ResidualsOf(PARABOLA, c, x, y, 1).WorstBy, 10.0, 1e-9) << "from channel 99";
    EXPECT_EQ(ResidualsOf(LINE, c, x, y, 0).Worst, -1);
    EXPECT_EQ(ResidualsOf(LINE, c, x, y, 0).Rms, 0.0);
}
