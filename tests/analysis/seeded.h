// Seeded spectra of known truth: an own generator, Poisson counts, and the score of a peak search.
#pragma once

#include "analysis/backgraund.h"
#include "analysis/calc.h"
#include "analysis/naxwalk.h"
#include "core/records.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace seeded {

/// SplitMix64 (S. Vigna, 2015), so that the numbers are the same with every library.
class Generator {
public:
    explicit Generator(std::uint64_t seed) : state_(seed) {}
    std::uint64_t Next() {
        state_ += 0x9E3779B97F4A7C15ull;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    /// Uniform, 0 < u < 1.
    double Uniform() { return (static_cast<double>(Next() >> 11) + 0.5) / 9007199254740992.0; }
    double Between(double low, double high) { return low + (high - low) * Uniform(); }
    double LogBetween(double low, double high) {
        return low * std::exp(Uniform() * std::log(high / low));
    }
    /// Poisson counts: products of uniforms below 50, above it the transformed rejection with
    /// squeeze (W. Hoermann, Insurance: Mathematics and Economics 12, 39 (1993)).
    std::int32_t Poisson(double mean) {
        if (mean < 50.0) {
            const double limit = std::exp(-mean);
            std::int32_t k = -1;
            for (double product = 1.0; product > limit; ++k) product *= Uniform();
            return k;
        }
        const double b = 0.931 + 2.53 * std::sqrt(mean);
        const double a = -0.059 + 0.02483 * b;
        const double squeeze = 0.9277 - 3.6224 / (b - 2.0);
        const double inverse = 1.1239 + 1.1328 / (b - 3.4);
        for (;;) {
            const double u = Uniform() - 0.5;
            const double v = Uniform();
            const double us = 0.5 - std::fabs(u);
            const double k = std::floor((2.0 * a / us + b) * u + mean + 0.43);
            if (us >= 0.07 && v <= squeeze) return static_cast<std::int32_t>(k);
            if (k < 0.0 || (us < 0.013 && v > us)) continue;
            if (std::log(v) + std::log(inverse) - std::log(a / (us * us) + b) <=
                k * std::log(mean) - mean - std::lgamma(k + 1.0))
                return static_cast<std::int32_t>(k);
        }
    }

private:
    std::uint64_t state_;
};

struct Peak {
    double Position;  // 0-based channel
    double Height;
    double Fwhm;
};

struct Spectrum {
    vael::SpectrumData Data{};
    double Background = 0.0;
    std::vector<Peak> Peaks;
};

/// Full width of a solid-state detector over 4096 channels.
inline double DetectorFwhm(double channel) { return 6.0 + 9.0 * channel / 4096.0; }

inline double GaussAt(const Peak& peak, double x) {
    const double u = (x - peak.Position) / peak.Fwhm;
    return peak.Height * std::exp(-4.0 * std::log(2.0) * u * u);
}

/// Counts of 4096 channels. `skirt` is the share of a peak's height in what real lines have beside
/// their Gaussian: a tail to low energy that dies away over three full widths, as incomplete charge
/// collection makes it, a foot three times as wide as the peak, and a shelf of half that share that
/// ends five full widths below the centre.
inline void Count(Spectrum& spectrum, Generator& random, double skirt = 0.0) {
    spectrum.Data.DataNo = 4096;
    for (int i = 0; i < 4096; ++i) {
        const double x = static_cast<double>(i);
        double mean = spectrum.Background;
        for (const Peak& peak : spectrum.Peaks) {
            mean += GaussAt(peak, x);
            if (skirt <= 0.0) continue;
            const double below = (peak.Position - x) / peak.Fwhm;
            if (below > 0.0) mean += skirt * peak.Height * std::exp(-below / 3.0);
            if (below > 0.0 && below < 5.0) mean += 0.5 * skirt * peak.Height;
            mean += GaussAt({peak.Position, skirt * peak.Height, 3.0 * peak.Fwhm}, x);
        }
        spectrum.Data.Count[static_cast<std::size_t>(i)] = random.Poisson(mean);
    }
}

/// `peaks` centres at least `apart(new, old)` channels from one another, 80 channels off the ends.
template <class Apart, class Height>
std::vector<Peak> Place(Generator& random, int peaks, const Apart& apart, const Height& height) {
    std::vector<Peak> placed;
    while (static_cast<int>(placed.size()) < peaks) {
        const double position = random.Between(80.0, 4016.0);
        const Peak peak{position, height(), DetectorFwhm(position)};
        if (std::all_of(placed.begin(), placed.end(), [&](const Peak& other) {
                return std::fabs(other.Position - position) >= apart(peak, other);
            }))
            placed.push_back(peak);
    }
    std::sort(placed.begin(), placed.end(),
              [](const Peak& a, const Peak& b) { return a.Position < b.Position; });
    return placed;
}

/// Fifteen Gaussians of 20 times the background's noise, at least 120 channels apart.
inline Spectrum Separated(Generator& random, double least, double most) {
    Spectrum spectrum;
    spectrum.Background = random.LogBetween(least, most);
    const double height = 20.0 * std::sqrt(spectrum.Background);
    spectrum.Peaks = Place(
        random, 15, [](const Peak&, const Peak&) { return 120.0; }, [&] { return height; });
    Count(spectrum, random);
    return spectrum;
}

/// Eight to 25 Gaussians of 10 to 300 times the noise, at least one and a half full widths apart.
inline Spectrum Crowded(Generator& random, double least, double most) {
    Spectrum spectrum;
    spectrum.Background = random.LogBetween(least, most);
    const double noise = std::sqrt(spectrum.Background);
    const int peaks = 8 + static_cast<int>(random.Uniform() * 18.0);
    spectrum.Peaks = Place(
        random, peaks, [](const Peak& a, const Peak& b) { return 1.5 * std::max(a.Fwhm, b.Fwhm); },
        [&] { return noise * random.LogBetween(10.0, 300.0); });
    Count(spectrum, random);
    return spectrum;
}

/// Eight peaks of 300 to 6000 times the noise with skirts, each with a weak and broad companion
/// (0.1 to 3 % of its height, up to three times its width) one and a half to five full widths away.
/// The truth is the strong ones: a weak neighbour must not spoil them.
inline Spectrum Companions(Generator& random, double least, double most) {
    Spectrum spectrum;
    spectrum.Background = random.LogBetween(least, most);
    const double noise = std::sqrt(spectrum.Background);
    const std::vector<Peak> strong = Place(
        random, 8, [](const Peak&, const Peak&) { return 200.0; },
        [&] { return noise * random.LogBetween(300.0, 6000.0); });
    spectrum.Peaks = strong;
    for (const Peak& peak : strong) {
        const double side = random.Uniform() < 0.5 ? -1.0 : 1.0;
        spectrum.Peaks.push_back({peak.Position + side * peak.Fwhm * random.Between(1.5, 5.0),
                                  peak.Height * random.LogBetween(0.001, 0.03),
                                  peak.Fwhm * random.Between(0.7, 3.0)});
    }
    Count(spectrum, random, 0.01);
    spectrum.Peaks = strong;
    return spectrum;
}

/// What AutoFitting fits: the smoothed counts less their background, negative ones 0.
inline vael::SpectrumData Removed(vael::SpectrumData data) {
    vael::SmoothingData(0, data.Count, data.DataNo);
    vael::SpectrumData background = data;
    vael::BackGraund(20, 5, background.Count, background.DataNo, vael::Talk{});
    for (std::size_t i = 0; i < static_cast<std::size_t>(data.DataNo); ++i)
        data.Count[i] = std::max(0, data.Count[i] - background.Count[i]);
    return data;
}

/// True peaks with a fitted one within a third of their full width, and the fitted ones left over.
struct Score {
    int True = 0;
    int Found = 0;
    int False = 0;
    int MostFalse = 0;  // in one spectrum
    double SquaredOff = 0.0;
    double HeightOff = 0.0;  // sum of the heights' relative errors
    int WrongHeight = 0;     // off by more than three in ten

    void Add(const std::vector<Peak>& truth, const std::vector<vael::NaxPeakRow>& rows) {
        std::vector<bool> taken(rows.size(), false);
        for (const Peak& peak : truth) {
            ++True;
            double nearest = peak.Fwhm / 3.0;
            std::size_t at = rows.size();
            for (std::size_t i = 0; i < rows.size(); ++i) {
                const double off = std::fabs(rows[i].Position - 1.0 - peak.Position);
                if (taken[i] || off >= nearest) continue;
                nearest = off;
                at = i;
            }
            if (at == rows.size()) continue;
            taken[at] = true;
            ++Found;
            SquaredOff += nearest * nearest;
            HeightOff += rows[at].Height / peak.Height - 1.0;
            if (std::fabs(rows[at].Height / peak.Height - 1.0) > 0.3) ++WrongHeight;
        }
        const int left = static_cast<int>(std::count(taken.begin(), taken.end(), false));
        False += left;
        MostFalse = std::max(MostFalse, left);
    }
    [[nodiscard]] double FoundShare() const {
        return static_cast<double>(Found) / static_cast<double>(True);
    }
    [[nodiscard]] double RmsOff() const {
        return std::sqrt(SquaredOff / static_cast<double>(Found));
    }
};

}  // namespace seeded
