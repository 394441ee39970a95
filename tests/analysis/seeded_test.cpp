// The automatic NAX run on seeded spectra of known truth.
#include "seeded.h"

#include "analysis/naxwalk.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

using namespace vael;

namespace {

constexpr int SPECTRA = 50;

struct Course {
    seeded::Score Score;
    int Left = 0;  // fitted peaks that are no true ones
    int Told = 0;  // lines of refused peaks and groups

    template <class Make, class Coefficient>
    Course(std::uint64_t first, bool autoFitting, const Make& make,
           const Coefficient& coefficient) {
        auto state = std::make_unique<NaxState>();
        const Talk talk{.log = [this](std::string_view) { ++Told; }};
        for (std::uint64_t seed = first; seed < first + SPECTRA; ++seed) {
            seeded::Generator random(seed);
            const seeded::Spectrum spectrum = make(random);
            NaxSettings settings;
            settings.EACPS = coefficient(spectrum);
            const SpectrumData data = autoFitting ? seeded::Removed(spectrum.Data) : spectrum.Data;
            Score.Add(spectrum.Peaks, NaxFitAll(data, settings, *state, talk).Peaks);
        }
    }
};

double ByBackground(const seeded::Spectrum& spectrum) {
    return std::max(0.2, 0.02 * std::sqrt(spectrum.Background));
}
double ByMedian(const seeded::Spectrum& spectrum) { return AutoBgCoefficient(spectrum.Data); }
double Default(const seeded::Spectrum&) { return NaxSettings{}.EACPS; }

seeded::Spectrum SeparatedToAll(seeded::Generator& r) { return seeded::Separated(r, 20.0, 3000.0); }
seeded::Spectrum SeparatedToHundred(seeded::Generator& r) {
    return seeded::Separated(r, 20.0, 100.0);
}
seeded::Spectrum CrowdedToAll(seeded::Generator& r) { return seeded::Crowded(r, 20.0, 3000.0); }

}  // namespace

TEST(Seeded, TheGeneratorIsTheOneOfItsReference) {
    // The first numbers of SplitMix64 for the seed 1234567, as published with it.
    seeded::Generator random(1234567);
    EXPECT_EQ(random.Next(), 6457827717110365317ull);
    EXPECT_EQ(random.Next(), 3203168211198807973ull);
    EXPECT_EQ(random.Next(), 9817491932198370423ull);
}

TEST(Seeded, ItsCountsHaveTheMeanAndVarianceOfPoisson) {
    seeded::Generator random(9);
    for (const double mean : {3.0, 40.0, 60.0, 2000.0}) {
        const int n = 20000;
        double sum = 0.0;
        double squares = 0.0;
        for (int i = 0; i < n; ++i) {
            const double k = random.Poisson(mean);
            sum += k;
            squares += k * k;
        }
        const double average = sum / n;
        const double variance = squares / n - average * average;
        EXPECT_NEAR(average, mean, 5.0 * std::sqrt(mean / n));
        EXPECT_NEAR(variance / mean, 1.0, 5.0 * std::sqrt(2.5 / n));
    }
}

TEST(Seeded, SeparatedPeaksAreFoundWithHardlyAFalseOne) {
    for (const bool autoFitting : {false, true}) {
        const Course course(1001, autoFitting, SeparatedToAll, ByBackground);
        EXPECT_GE(course.Score.FoundShare(), 0.99) << autoFitting;
        EXPECT_LE(course.Score.MostFalse, 1) << autoFitting;
        EXPECT_LE(course.Score.False, SPECTRA / 10) << autoFitting;
        EXPECT_LT(course.Score.RmsOff(), 0.25) << autoFitting;
        EXPECT_EQ(course.Score.WrongHeight, 0) << autoFitting;
    }
}

TEST(Seeded, TheCoefficientByTheMedianCountDoesAsWell) {
    const Course course(1001, false, SeparatedToAll, ByMedian);
    EXPECT_GE(course.Score.FoundShare(), 0.99);
    EXPECT_LE(course.Score.MostFalse, 1);
}

TEST(Seeded, TheDefaultCoefficientHoldsUpToAHundredCounts) {
    const Course course(2001, false, SeparatedToHundred, Default);
    EXPECT_GE(course.Score.FoundShare(), 0.99);
    EXPECT_LE(course.Score.MostFalse, 1);
}

TEST(Seeded, AutoFittingFindsNineOfTenInACrowdAndTellsWhatItRefuses) {
    const Course course(3001, true, CrowdedToAll, ByMedian);
    EXPECT_GE(course.Score.FoundShare(), 0.9);
    EXPECT_LE(course.Score.MostFalse, 2);
    EXPECT_GT(course.Told, 0);
    const Course plain(3001, true, CrowdedToAll, Default);
    EXPECT_GE(plain.Score.FoundShare(), 0.9);
}

TEST(Seeded, AWeakNeighbourDoesNotSpoilAStrongPeak) {
    const Course course(
        4001, true, [](seeded::Generator& r) { return seeded::Companions(r, 20.0, 3000.0); },
        ByMedian);
    EXPECT_GE(course.Score.FoundShare(), 0.99);
    EXPECT_LT(course.Score.RmsOff(), 0.1);
    EXPECT_EQ(course.Score.WrongHeight, 0);
}
