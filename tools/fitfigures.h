// How well both fitters do on simulated spectra of known truth: peaks, centres, time.
#pragma once

#include "core/records.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace vael::tools {

/// What is simulated and how it is fitted.
struct FigureOptions {
    int Spectra = 1000;
    std::uint64_t Seed = 1;
    int Threshold = 10;  // `PeakThres` of the Express search
    int Threads = 0;     // 0: as many as the machine has; the figures do not depend on it
};

/// One peak as it was put in; the centre counts channels from 0.
struct TruePeak {
    double Centre = 0.0;
    double Height = 0.0;      // counts
    double Fwhm = 0.0;        // channels
    double Background = 0.0;  // counts a channel at its centre
    bool Alone = true;        // no neighbour nearer than three full widths of the wider one

    [[nodiscard]] double SignalToNoise() const;
};

struct FigureSpectrum {
    SpectrumData Data{};
    std::vector<TruePeak> Peaks;  // by rising centre
};

/// The spectrum `number` (from 0) of a seed: 4096 channels of 0.0306 keV, 8 to 25 Gaussians as wide
/// as a germanium detector makes them, heights of 3 to 3000 times the root of the background at
/// their centre, spread evenly by logarithm, centres at random but not within one full width of
/// another; a background of 20 to 1000 counts in the middle, up to 80 % more or less at its ends;
/// Poisson counts. It depends on nothing but seed and number.
[[nodiscard]] FigureSpectrum SimulateFigure(std::uint64_t seed, int number);

/// Lower bounds of the classes by signal to noise; the last is an upper bound.
inline constexpr std::array<double, 8> SIGNAL_CLASSES{3, 5, 10, 30, 100, 300, 1000, 3000};

/// Sums over the peaks of one class.
struct ClassFigures {
    int There = 0;
    int Found = 0;            // a fitted centre within half a true full width, one to one
    int Undetermined = 0;     // found, with status 0, whose error is 0 or above half a full width
    int Refused = 0;          // missed ones that the search had as near, but whose fit was refused
    std::vector<double> Off;  // fitted less true centre, channels, of the found ones whose fit
    std::vector<double> Error;  // converged with an error; and that error
    [[nodiscard]] int Missed() const { return There - Found; }
};

/// What there is to say of centres: pulls are (fitted - true) / error. The median and half the
/// distance from the 16th to the 84th percentile tell what the bulk does where a few stray fits
/// rule mean and standard deviation.
struct PullFigures {
    int Count = 0;
    double Mean = 0.0, Deviation = 0.0;  // of the pulls
    double Median = 0.0, Spread = 0.0;   // of the pulls, robust
    double Bias = 0.0;  // median distance over median error: means follow the undetermined fits
    double Rms = 0.0;   // of the distances, channels
};
[[nodiscard]] PullFigures PullsOf(const ClassFigures& figures);

/// One fitter on one road over all spectra.
struct RoadFigures {
    std::string Name;
    std::array<ClassFigures, 7> Alone{};    // by signal to noise
    std::array<ClassFigures, 7> Crowded{};  // those with a near neighbour
    int Fitted = 0;                         // peaks that a fit left in the table
    int False = 0;                          // of these, those that belong to no true peak
    int Unconverged = 0;                    // of the fitted ones, those without status 0
    int Refused = 0;                        // searched ones whose fit could not stand
    int TooMany = 0;                        // spectra with more finds than a table holds
    std::vector<double> Seconds;            // CPU time of search and fits, a spectrum
    std::vector<double> SecondsAPeak;       // the same over the fits that were made

    [[nodiscard]] ClassFigures Whole(std::size_t signal) const;
};

/// Both fitters on AutoFitting's road (smoothed, freed of the background) and on the raw counts,
/// with the defaults of the settings but for the threshold; NAX on AutoFitting's road also with the
/// BG coefficient that follows the background, and on the raw counts with that one alone.
[[nodiscard]] std::vector<RoadFigures> MakeFigures(const FigureOptions& options);

[[nodiscard]] double Median(std::vector<double> values);

}  // namespace vael::tools
