// The peak search and the split of a region, against impulses worked out by hand and an independent
// least-squares minimiser.
#include "analysis/calwavesprit.h"

#include "analysis/minimiser.h"
#include "analysis/seeded.h"
#include "core/fault.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

using namespace vael;

namespace {

using Counts = std::vector<std::int32_t>;

/// n channels of 0 with one impulse of 35 k counts at the local channel `at` (from 1). By hand: the
/// smoothed counts are 17 k at the impulse, 12 k beside it and -3 k two channels off; with the
/// curvature's weights 28, 7, -8, -17, -20, -17, -8, 7, 28 the slope at the offsets 1 to 8 is 140,
/// 203, 198, 140, 50, -45, -112, -112 times 35 k, the negative of it on the other side, and 0 (then
/// 0.01) at the impulse. So the feet are at the offsets -6 and 5, the find is at -1: 12 k high, 0
/// at its left foot, with a half width of 6 / 4.
Counts Impulse(int n, int at, std::int32_t k) {
    Counts y(static_cast<std::size_t>(n), 0);
    y[static_cast<std::size_t>(at - 1)] = 35 * k;
    return y;
}

std::vector<FoundPeak> Find(const Counts& y, int thres) {
    double noise = 0.0;
    return FindPeaks(y, thres, noise);
}

struct Heard {
    std::vector<std::string> Said, Logged;
    Talk Voice() {
        Talk talk;
        talk.say = [this](std::string_view text, std::string_view) { Said.emplace_back(text); };
        talk.log = [this](std::string_view line) { Logged.emplace_back(line); };
        return talk;
    }
};

std::unique_ptr<SpectrumData> SpectrumOf(const Counts& y, int start = 0) {
    auto spectrum = std::make_unique<SpectrumData>();
    spectrum->DataNo = static_cast<std::int16_t>(start + static_cast<int>(y.size()));
    std::copy(y.begin(), y.end(), spectrum->Count.begin() + start);
    return spectrum;
}

double GaussSum(double x, const std::vector<double>& p) {
    double sum = 0.0;
    for (std::size_t k = 0; k < p.size(); k += 3) {
        const double u = (x - p[k + 1]) / p[k + 2];
        sum += p[k] * std::exp2(-u * u);
    }
    return sum;
}

PeakRecord Peak(double height, double position, double width) {
    PeakRecord peak{};
    peak.Amplitude = height;
    peak.Position = position;
    peak.Width = width;
    peak.BackConst = 7.0;
    peak.BackSlope = 8.0;
    peak.GaussRatio = 0.5;
    peak.FuncType = SHAPE_LORENTZ;
    return peak;
}

}  // namespace

TEST(PeakThresholdOf, FollowsTheSettingWithItsJumpBetweenNineAndTen) {
    EXPECT_EQ(PeakThreshold(20), 4.0);
    EXPECT_EQ(PeakThreshold(10), 44.0);
    EXPECT_EQ(PeakThreshold(9), 1100.0);
    EXPECT_EQ(PeakThreshold(1), 1900.0);
    EXPECT_EQ(PeakThreshold(21), 40.0);  // what is not above 0
    EXPECT_EQ(PeakThreshold(30), 40.0);
}

TEST(FindPeaksIn, AnImpulseIsFoundWhereTheHandSaysIt) {
    const auto list = Find(Impulse(100, 50, 100), 20);
    ASSERT_EQ(list.size(), 1u);
    EXPECT_EQ(list[0].Position, 49.0);
    EXPECT_NEAR(list[0].Height, 1200.0, 1e-9);
    EXPECT_EQ(list[0].Width, 1.5);
}

TEST(FindPeaksIn, HeightAboveTheLeftFootTimesWidthMustReachTheThreshold) {
    // 12 k * 1.5 = 18 k against 4, 44, 1100, 1900.
    EXPECT_EQ(Find(Impulse(100, 50, 1), 20).size(), 1u);
    EXPECT_EQ(Find(Impulse(100, 50, 2), 10).size(), 0u);
    EXPECT_EQ(Find(Impulse(100, 50, 3), 10).size(), 1u);
    EXPECT_EQ(Find(Impulse(100, 50, 61), 9).size(), 0u);
    EXPECT_EQ(Find(Impulse(100, 50, 62), 9).size(), 1u);
    EXPECT_EQ(Find(Impulse(100, 50, 105), 1).size(), 0u);
    EXPECT_EQ(Find(Impulse(100, 50, 106), 1).size(), 1u);
}

TEST(FindPeaksIn, TheNoiseIsWhatSmoothingTookAway) {
    double noise = 0.0;
    static_cast<void>(FindPeaks(Impulse(100, 50, 1), 20, noise));
    // Residuals 18, twice -12, twice 3; six channels are counted as not smoothed.
    EXPECT_NEAR(noise, (324.0 + 288.0 + 18.0) * 100.0 / 94.0, 1e-9);
}

TEST(FindPeaksIn, EightChannelsHaveNothingAndNineArePassed) {
    double noise = -1.0;
    EXPECT_TRUE(FindPeaks(Impulse(8, 4, 1), 20, noise).empty());
    EXPECT_EQ(noise, 0.0);
    EXPECT_TRUE(FindPeaks(Impulse(9, 5, 1), 20, noise).empty());
    EXPECT_NEAR(noise, 630.0 * 9.0 / 3.0, 1e-9);  // they are looked at, but have no slope yet
}

TEST(FindPeaksIn, AFirstFindWithoutALeftFootNeedsAFifteenthOfTheLargestHeight) {
    // The slopes begin at channel 9. The impulse at 10 is found there, 12 k high, with only its
    // right foot at 15; the largest smoothed count is 17 k of the other impulse.
    const auto with = [](std::int32_t other) {
        Counts y = Impulse(200, 10, 10);
        y[149] = 35 * other;
        return Find(y, 1);
    };
    const auto kept = with(105);  // 17 * 105 / 15 = 119 against 120; 18 * 105 is below 1900
    ASSERT_EQ(kept.size(), 1u);
    EXPECT_EQ(kept[0].Position, 9.0);
    EXPECT_EQ(kept[0].Width, 1.5);
    const auto low = with(106);  // 120.1
    ASSERT_EQ(low.size(), 1u);
    EXPECT_EQ(low[0].Position, 149.0);
}

TEST(FindPeaksIn, AFindWithoutARightFootIsNone) {
    // Slopes end at n - 8: with the impulse at n - 9 its right foot is not seen.
    EXPECT_TRUE(Find(Impulse(100, 91, 1000), 20).empty());
    EXPECT_TRUE(Find(Impulse(20, 10, 1000), 20).empty());
    EXPECT_EQ(Find(Impulse(100, 86, 1000), 20).size(), 1u);
}

TEST(FindPeaksIn, AWidthOfAQuarterOfTheStretchIsTooWide) {
    // A broad Gaussian: its feet are wider apart than any impulse's, and the stretch is short.
    const auto broad = [](int n) {
        Counts y;
        for (int i = 1; i <= n; ++i) {
            const double u = (i - n / 2.0) / (n / 9.0);
            y.push_back(static_cast<std::int32_t>(std::lround(1e6 * std::exp(-u * u))));
        }
        return y;
    };
    const auto list = Find(broad(180), 20);
    ASSERT_EQ(list.size(), 1u);
    EXPECT_NEAR(list[0].Position, 90.0, 1.0);
    EXPECT_LT(list[0].Width, 45.0);
    // Its feet are where the fourth derivative's sign makes the curvature largest: sqrt(1.5) of the
    // 1/e half width of 20, a quarter of it the half width of the find.
    EXPECT_NEAR(list[0].Width, std::sqrt(1.5) * 20.0 / 4.0, 0.75);
}

TEST(FindPeaksIn, MoreThanAHundredMayBeFound) {
    Counts y(4000, 0);
    for (std::size_t i = 40; i < 3960; i += 28) y[i] = 3500;
    EXPECT_EQ(Find(y, 20).size(), 140u);
}

TEST(PeakSearchIn, ARecordHasTheFindAndARegionOfTwiceItsWidth) {
    const auto spectrum = SpectrumOf(Impulse(100, 50, 100), 1000);
    std::vector<PeakRecord> peaks;
    EXPECT_EQ(PeakSearch(*spectrum, 1000, 100, 20, SHAPE_MIX, peaks, Talk{}), 1);
    ASSERT_EQ(peaks.size(), 1u);
    EXPECT_EQ(peaks[0].FitState, 0);
    EXPECT_NEAR(peaks[0].Amplitude, 1200.0, 1e-9);
    EXPECT_EQ(peaks[0].Position, 1048.0);
    EXPECT_EQ(peaks[0].Width, 1.5);
    EXPECT_EQ(peaks[0].GaussRatio, 1.0);
    EXPECT_EQ(peaks[0].Intensity, 0.0);
    EXPECT_EQ(peaks[0].BackConst, 0.0);
    EXPECT_EQ(peaks[0].BackSlope, 0.0);
    EXPECT_EQ(peaks[0].FuncType, SHAPE_MIX);
    EXPECT_EQ(peaks[0].StartCh, 1045);
    EXPECT_EQ(peaks[0].EndCh, 1051);
    EXPECT_EQ(peaks[0].Fitted, 0);
}

TEST(PeakSearchIn, MoreThanAHundredAreSaidAndTheFirstHundredKept) {
    Counts y(4000, 0);
    for (std::size_t i = 40; i < 3960; i += 28) y[i] = 3500;
    std::vector<PeakRecord> peaks;
    Heard heard;
    EXPECT_EQ(PeakSearch(*SpectrumOf(y), 0, 4000, 20, SHAPE_GAUSS, peaks, heard.Voice()), 1);
    EXPECT_EQ(heard.Said, std::vector<std::string>{"No of Peak > 100 !"});
    ASSERT_EQ(peaks.size(), 100u);
    EXPECT_EQ(peaks[99].Position, 40.0 + 99.0 * 28.0 - 1.0);
}

TEST(PeakSearchIn, AnImpossibleLengthIsRefusedWithoutRecords) {
    const auto spectrum = std::make_unique<SpectrumData>();
    for (const int n : {0, -3, 8193}) {
        std::vector<PeakRecord> peaks(3);
        EXPECT_EQ(PeakSearch(*spectrum, 0, n, 20, SHAPE_GAUSS, peaks, Talk{}), 0) << n;
        EXPECT_TRUE(peaks.empty());
    }
    std::vector<PeakRecord> peaks;
    EXPECT_EQ(PeakSearch(*spectrum, 0, 8192, 20, SHAPE_GAUSS, peaks, Talk{}), 1);
    EXPECT_THROW(
        static_cast<void>(PeakSearch(*spectrum, 8000, 200, 20, SHAPE_GAUSS, peaks, Talk{})), Fault);
    EXPECT_THROW(static_cast<void>(PeakSearch(*spectrum, -1, 200, 20, SHAPE_GAUSS, peaks, Talk{})),
                 Fault);
}

TEST(PeakSearchIn, WithoutAFindTheHighestChannelOfTheWholeStretchIsTheRecord) {
    Counts y(12, 3);
    y[4] = y[7] = 90;
    std::vector<PeakRecord> peaks;
    EXPECT_EQ(PeakSearch(*SpectrumOf(y, 20), 20, 12, 20, SHAPE_GAUSS, peaks, Talk{}), 1);
    ASSERT_EQ(peaks.size(), 1u);
    EXPECT_EQ(peaks[0].Amplitude, 90.0);
    EXPECT_EQ(peaks[0].Position, 24.0);
    EXPECT_EQ(peaks[0].Width, 2.0);
    EXPECT_EQ(peaks[0].StartCh, 20);
    EXPECT_EQ(peaks[0].EndCh, 31);
    EXPECT_EQ(peaks[0].GaussRatio, 1.0);
}

TEST(PeakSearchIn, FromFiveHundredChannelsOnTheOneRegionReachesToTheNearerEnd) {
    // A parabola's curvature has no slope: nothing is found in it.
    for (const int n : {499, 500}) {
        Counts y;
        for (int i = 0; i < n; ++i) y.push_back(1000000 - (i - 90) * (i - 90));
        std::vector<PeakRecord> peaks;
        ASSERT_EQ(PeakSearch(*SpectrumOf(y, 10), 10, n, 20, SHAPE_GAUSS, peaks, Talk{}), 1);
        ASSERT_EQ(peaks.size(), 1u);
        EXPECT_EQ(peaks[0].Amplitude, 1000000.0);
        EXPECT_EQ(peaks[0].Position, 100.0);
        EXPECT_EQ(peaks[0].StartCh, 10);
        EXPECT_EQ(peaks[0].EndCh, n == 500 ? 190 : 508);
        EXPECT_EQ(peaks[0].Width, n == 500 ? 30.0 : 499.0 / 6.0);
    }
}

TEST(WaveSolveOn, AnExactSumOfGaussiansIsFound) {
    const std::vector<double> truth{5000.0, 30.0, 4.0, 8000.0, 38.5, 5.0};
    std::vector<double> y;
    for (int i = 1; i <= 70; ++i) y.push_back(GaussSum(i, truth));
    std::vector<double> p{4500.0, 29.5, 4.4, 8300.0, 39.0, 4.7};
    EXPECT_EQ(WaveSolve(y, p, 1e-12, Talk{}), 0);
    for (std::size_t k = 0; k < p.size(); ++k) EXPECT_NEAR(p[k], truth[k], 1e-9 * truth[k]);
}

TEST(WaveSolveOn, ASumOfSquaresBelowTheLimitEndsItBeforeAnyStep) {
    const std::vector<double> y(20, 10.0);  // 20 * 100 with a height of 0
    std::vector<double> p{0.0, 10.0, 3.0};
    EXPECT_EQ(WaveSolve(y, p, 2000.5, Talk{}), 0);
    EXPECT_EQ(p, (std::vector<double>{0.0, 10.0, 3.0}));
}

TEST(WaveSolveOn, TwentyPassesEndItWithMinusOne) {
    std::vector<double> y;
    for (int i = 1; i <= 40; ++i) y.push_back(GaussSum(i, {900.0, 20.0, 4.0}) + (i % 2) * 20.0);
    std::vector<double> p{800.0, 20.5, 4.5};
    EXPECT_EQ(WaveSolve(y, p, 1.0, Talk{}), -1);
    EXPECT_NEAR(p[1], 20.0, 0.1);
}

TEST(WaveSolveOn, AFaultIsLoggedAndSaidAndThePeaksStayAsTheyStand) {
    const std::vector<double> y(20, 1000.0);
    std::vector<double> flat{500.0, 10.0, 0.0};  // no half width
    Heard heard;
    EXPECT_EQ(WaveSolve(y, flat, 1.0, heard.Voice()), 11);
    EXPECT_EQ(heard.Logged, std::vector<std::string>{"CalWaveSprit : (Error)  code=11"});
    EXPECT_EQ(heard.Said, std::vector<std::string>{"計算限界超えました。処理を終了します。"});
    EXPECT_EQ(flat, (std::vector<double>{500.0, 10.0, 0.0}));
    std::vector<double> none{0.0, 10.0, 3.0};  // no height: a pivot of 0
    EXPECT_EQ(WaveSolve(y, none, 1.0, heard.Voice()), 11);
    EXPECT_EQ(none, (std::vector<double>{0.0, 10.0, 3.0}));
    std::vector<double> endless{std::numeric_limits<double>::max(), 10.0, 3.0};
    EXPECT_EQ(WaveSolve(y, endless, 1.0, heard.Voice()), 6);
}

TEST(WaveSolveOn, SeededGroupsAgreeWithAnIndependentMinimiser) {
    int converged = 0;
    double worst = 0.0;  // distance of a centre in half widths
    for (std::uint64_t seed = 1; seed <= 200; ++seed) {
        seeded::Generator random(seed);
        const int count = seed % 2 == 0 ? 2 : 3;
        std::vector<double> truth;
        std::vector<double> start;
        double centre = 12.0;
        for (int k = 0; k < count; ++k) {
            const double half = random.Between(3.0, 7.0);
            const double height = random.LogBetween(300.0, 30000.0);
            centre += half * random.Between(1.6, 3.0);
            truth.insert(truth.end(), {height, centre, half});
            start.insert(start.end(), {height * random.Between(0.8, 1.2),
                                       centre + half * random.Between(-0.2, 0.2),
                                       half * random.Between(0.8, 1.2)});
        }
        const int n = static_cast<int>(centre) + 20;
        std::vector<double> y;
        for (int i = 1; i <= n; ++i)
            y.push_back(static_cast<double>(random.Poisson(GaussSum(i, truth) + 1.0)));
        std::vector<double> p = start;
        if (WaveSolve(y, p, 0.0, Talk{}) != -1) continue;
        // It has converged where its centres are in the region and twenty passes more do not move
        // them; undamped as it is, about one start in six runs away.
        std::vector<double> still = p;
        WaveSolve(y, still, 0.0, Talk{});
        bool moved = false;
        for (std::size_t k = 1; k < p.size(); k += 3)
            moved = moved || !(std::fabs(still[k] - p[k]) < 1e-9 * std::fabs(p[k + 1])) ||
                    !(p[k] >= 1.0 && p[k] <= static_cast<double>(n));
        if (moved) continue;
        const auto residuals = [&y](const judge::Vector& at) {
            judge::Vector r;
            for (std::size_t i = 0; i < y.size(); ++i)
                r.push_back(y[i] - GaussSum(static_cast<double>(i + 1), at));
            return r;
        };
        const judge::Minimum minimum = judge::Minimise(residuals, start);
        ++converged;
        for (std::size_t k = 1; k < p.size(); k += 3) {
            const double off = std::fabs(p[k] - minimum.At[k]) / std::fabs(minimum.At[k + 1]);
            if (off > 1e-6) std::printf("seed %d: centre off %g half widths\n", int(seed), off);
            worst = std::max(worst, off);
        }
    }
    std::printf("%d of 200 groups converged, worst centre %.1e half widths\n", converged, worst);
    EXPECT_GE(converged, 150);
    EXPECT_LT(worst, 1e-6);
}

TEST(WaveSpritOf, TwoPeaksOnASlopeAreSplitAndWrittenBack) {
    // The line through the ends stands one channel to the right: with a slope of -2 it is 2 too
    // high, which the peaks of 60000 hardly feel.
    Counts y;
    for (int i = 0; i < 100; ++i)
        y.push_back(static_cast<std::int32_t>(
            std::lround(900.0 - 2.0 * i + GaussSum(i, {60000.0, 42.0, 6.0, 40000.0, 54.0, 5.0}))));
    const auto spectrum = SpectrumOf(y, 300);
    std::vector<PeakRecord> peaks{Peak(50000.0, 341.0, 7.0), Peak(45000.0, 355.0, 4.0)};
    Heard heard;
    WaveSprit(*spectrum, 300, 100, peaks, heard.Voice());
    EXPECT_TRUE(heard.Said.empty());
    EXPECT_NEAR(peaks[0].Position, 342.0, 0.02);
    EXPECT_NEAR(peaks[1].Position, 354.0, 0.02);
    EXPECT_NEAR(peaks[0].Amplitude, 60000.0, 200.0);
    EXPECT_NEAR(peaks[1].Amplitude, 40000.0, 200.0);
    EXPECT_NEAR(peaks[0].Width, 6.0, 0.05);
    for (const PeakRecord& peak : peaks) {
        EXPECT_EQ(peak.FitState, ALL_BITS);
        EXPECT_EQ(peak.BackConst, 0.0);
        EXPECT_EQ(peak.BackSlope, 0.0);
        EXPECT_EQ(peak.GaussRatio, 1.0);
        EXPECT_EQ(peak.FuncType, SHAPE_GAUSS);
    }
}

TEST(WaveSpritOf, TheLineOneChannelToTheRightAndZerosBelowItLeaveASlopeAlone) {
    // Counts 1000, 900, ... 0: the line's value at a channel is 100 more than its count, so that
    // all work values are 0, and a peak of 400 has its own squares only: below the limit.
    Counts y;
    for (int i = 0; i <= 10; ++i) y.push_back(1000 - 100 * i);
    std::vector<PeakRecord> peaks{Peak(100.0, 5.0, 0.4)};
    WaveSprit(*SpectrumOf(y), 0, 11, peaks, Talk{});
    EXPECT_EQ(peaks[0].Amplitude, 100.0);
    EXPECT_EQ(peaks[0].FitState, ALL_BITS);
    // Rising, each work value is 100: with a height of 0 the sum is 11 * 10000, below 200000 too.
    // Rising by 200 it is 440000: a pass begins, and the missing height is a pivot of 0.
    for (const std::int32_t step : {100, 200}) {
        Counts rising;
        for (int i = 0; i <= 10; ++i) rising.push_back(step * i);
        std::vector<PeakRecord> none{Peak(0.0, 5.0, 2.0)};
        Heard heard;
        WaveSprit(*SpectrumOf(rising), 0, 11, none, heard.Voice());
        EXPECT_EQ(heard.Said.size(), step == 200 ? 1u : 0u);
        EXPECT_EQ(none[0].FitState, ALL_BITS);
    }
}

TEST(WaveSpritOf, APeakAtTheLastChannelOrBeyondKeepsItsRecord) {
    const Counts y(30, 5);
    // Local positions 29, 30 and 41 of 30 channels.
    std::vector<PeakRecord> peaks{Peak(4.0, 128.0, 2.0), Peak(4.0, 129.0, 2.0),
                                  Peak(4.0, 140.0, 2.0)};
    WaveSprit(*SpectrumOf(y, 100), 100, 30, peaks, Talk{});
    EXPECT_EQ(peaks[0].FitState, ALL_BITS);
    EXPECT_EQ(peaks[1].FitState, 0);
    EXPECT_EQ(peaks[1].FuncType, SHAPE_LORENTZ);
    EXPECT_EQ(peaks[2].FitState, 0);
}

TEST(WaveSpritOf, MoreThan4096ChannelsAreTooLarge) {
    const auto spectrum = std::make_unique<SpectrumData>();
    std::vector<PeakRecord> peaks{Peak(4.0, 128.0, 2.0)};
    Heard heard;
    WaveSprit(*spectrum, 0, 4097, peaks, heard.Voice());
    EXPECT_EQ(heard.Said, std::vector<std::string>{"too large region"});
    EXPECT_EQ(peaks[0].FitState, 0);
    WaveSprit(*spectrum, 0, 0, peaks, heard.Voice());
    EXPECT_EQ(peaks[0].FitState, 0);
    WaveSprit(*spectrum, 0, 4096, peaks, heard.Voice());
    EXPECT_EQ(peaks[0].FitState, ALL_BITS);
    EXPECT_EQ(heard.Said.size(), 1u);
    EXPECT_THROW(WaveSprit(*spectrum, 8000, 193, peaks, heard.Voice()), Fault);
}
