// The figures of both fitters: their spectra, their sums, and that threads do not change them.
#include "fitfigures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numeric>

using namespace vael;
using namespace vael::tools;

namespace {

int Sum(const std::array<ClassFigures, 7>& classes, int ClassFigures::*field) {
    return std::accumulate(classes.begin(), classes.end(), 0,
                           [&](int sum, const ClassFigures& one) { return sum + one.*field; });
}

}  // namespace

TEST(FitFigures, ASpectrumIsTheSameForItsSeedAndNumberAndAnotherForOthers) {
    const auto one = std::make_unique<FigureSpectrum>(SimulateFigure(5, 3));
    const auto same = std::make_unique<FigureSpectrum>(SimulateFigure(5, 3));
    const auto next = std::make_unique<FigureSpectrum>(SimulateFigure(5, 4));
    const auto other = std::make_unique<FigureSpectrum>(SimulateFigure(6, 3));
    EXPECT_EQ(one->Data.Count, same->Data.Count);
    EXPECT_NE(one->Data.Count, next->Data.Count);
    EXPECT_NE(one->Data.Count, other->Data.Count);
}

TEST(FitFigures, SpectraAreWithinWhatTheyPromise) {
    bool near = false;
    for (int number = 0; number < 40; ++number) {
        const auto one = std::make_unique<FigureSpectrum>(SimulateFigure(1, number));
        ASSERT_GE(one->Peaks.size(), 8u);
        ASSERT_LE(one->Peaks.size(), 25u);
        EXPECT_EQ(one->Data.DataNo, 4096);
        for (std::size_t k = 0; k < one->Peaks.size(); ++k) {
            const TruePeak& peak = one->Peaks[k];
            EXPECT_GE(peak.SignalToNoise(), 2.9999);
            EXPECT_LE(peak.SignalToNoise(), 3000.1);
            // 150 eV at 6 keV and 450 eV at 120 keV, in channels of 30.6 eV.
            EXPECT_GT(peak.Fwhm, 4.0);
            EXPECT_LT(peak.Fwhm, 15.0);
            double nearest = 1e9;
            double widest = 0.0;
            for (std::size_t j = 0; j < one->Peaks.size(); ++j) {
                if (j == k) continue;
                const TruePeak& mate = one->Peaks[j];
                const double wide = std::max(peak.Fwhm, mate.Fwhm);
                if (std::fabs(mate.Centre - peak.Centre) / wide < nearest) {
                    nearest = std::fabs(mate.Centre - peak.Centre) / wide;
                    widest = wide;
                }
            }
            EXPECT_GT(widest, 0.0);
            EXPECT_GT(nearest, 1.0);
            EXPECT_EQ(peak.Alone, nearest > 3.0) << number << " " << peak.Centre;
            near = near || !peak.Alone;
        }
    }
    EXPECT_TRUE(near);
}

TEST(FitFigures, PullsByHand) {
    ClassFigures figures;
    EXPECT_EQ(PullsOf(figures).Count, 0);
    figures.Off = {0.1, -0.2, 0.9};
    figures.Error = {0.1, 0.1, 0.3};  // pulls 1, -2, 3
    const PullFigures pulls = PullsOf(figures);
    EXPECT_EQ(pulls.Count, 3);
    EXPECT_NEAR(pulls.Mean, 2.0 / 3.0, 1e-14);
    // Squares about the mean: 1/9 + 64/9 + 49/9 = 114/9, over 2.
    EXPECT_NEAR(pulls.Deviation, std::sqrt(114.0 / 18.0), 1e-14);
    EXPECT_NEAR(pulls.Median, 1.0, 1e-14);
    // The 16th and the 84th of a hundred lie at 0.31731 and 1.68269 of the places 0, 1, 2.
    EXPECT_NEAR(pulls.Spread, ((1.0 + 0.68269 * 2.0) - (-2.0 + 0.31731 * 3.0)) / 2.0, 1e-6);
    EXPECT_NEAR(pulls.Bias, 0.1 / 0.1, 1e-14);
    EXPECT_NEAR(pulls.Rms, std::sqrt((0.01 + 0.04 + 0.81) / 3.0), 1e-14);
    EXPECT_EQ(Median({4.0, 1.0}), 2.5);
    EXPECT_EQ(Median({}), 0.0);
}

TEST(FitFigures, ThreadsDoNotChangeThemAndEveryPeakIsCountedOnce) {
    FigureOptions options{.Spectra = 6, .Seed = 2, .Threads = 1};
    const auto one = MakeFigures(options);
    options.Threads = 3;
    const auto three = MakeFigures(options);
    int there = 0;
    for (int number = 0; number < 6; ++number)
        there += static_cast<int>(SimulateFigure(2, number).Peaks.size());
    ASSERT_EQ(one.size(), three.size());
    for (std::size_t r = 0; r < one.size(); ++r) {
        EXPECT_EQ(
            Sum(one[r].Alone, &ClassFigures::There) + Sum(one[r].Crowded, &ClassFigures::There),
            there);
        const int found =
            Sum(one[r].Alone, &ClassFigures::Found) + Sum(one[r].Crowded, &ClassFigures::Found);
        EXPECT_GT(found, there / 3);
        EXPECT_EQ(one[r].Fitted - one[r].False, found);
        EXPECT_EQ(one[r].Seconds.size(), 6u);
        EXPECT_EQ(one[r].False, three[r].False);
        EXPECT_EQ(one[r].Refused, three[r].Refused);
        for (std::size_t k = 0; k < 7; ++k) {
            const ClassFigures a = one[r].Whole(k);
            const ClassFigures b = three[r].Whole(k);
            EXPECT_EQ(a.There, b.There);
            EXPECT_EQ(a.Found, b.Found);
            EXPECT_EQ(a.Refused, b.Refused);
            EXPECT_LE(a.Refused, a.Missed());
            EXPECT_EQ(a.Off, b.Off);
            EXPECT_EQ(a.Error, b.Error);
        }
    }
}
