// Simulated white-beam spectra of pressure markers with known truth.
#pragma once

#include "core/records.h"
#include "lattice/crystal.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vael::tools {

/// Random numbers that are the same on every machine: xoshiro256** (Blackman and Vigna 2018),
/// seeded by splitmix64.
class Random {
public:
    explicit Random(std::uint64_t seed);
    [[nodiscard]] std::uint64_t Next();
    /// Uniform in (0, 1).
    [[nodiscard]] double Uniform();
    /// A count of the given mean by products of uniform numbers, in portions of a mean of 16 at
    /// most, so that it is exact for every mean.
    [[nodiscard]] std::int32_t Poisson(double mean);

private:
    std::uint64_t state_[4];
};

/// A substance beside the marker: its strongest line's height, and how its cell follows pressure
/// and temperature (Murnaghan, and one expansion coefficient).
struct Companion {
    std::string Key;
    double Height = 0.0;  // counts
    double K0 = 0.0;      // GPa
    double KPrime = 4.0;
    double Expansion = 0.0;  // of the volume, 1/K
};

/// One spectrum to make.
struct SampleRecipe {
    std::string File;           // without extension
    std::string Marker;         // its key in crystal.dat
    double Pressure = 0.0;      // GPa
    double Temperature = 0.0;   // K
    double TwoTheta = 0.0;      // degrees
    double Height = 0.0;        // counts of the marker's strongest line
    double Fluorescence = 0.0;  // counts of the marker's K alpha 1 line
    double BackLow = 30.0;      // counts a channel, far from and at the hump of the background
    double BackHigh = 120.0;
    std::vector<Companion> Others;
    std::uint64_t Seed = 1;
    bool Curved = false;  // a calibration with a quadratic term
};

/// One line as it was put in.
struct TrueLine {
    std::string Key;
    std::array<std::int16_t, 3> Hkl{};  // 0 0 0 for a fluorescence line
    double Energy = 0.0;                // keV
    double D = 0.0;                     // angstrom; 0 for fluorescence
    double Channel = 0.0;               // from 0
    double Height = 0.0;                // counts
    double Fwhm = 0.0;                  // channels
};

struct SimulatedSpectrum {
    SampleRecipe Recipe;
    std::array<double, 3> EgcCoef{};
    Cell MarkerCell{};   // at pressure and temperature
    double Ratio = 0.0;  // V/V0 of the marker (c/c0 for hBN)
    std::vector<Cell> OtherCells;
    std::vector<TrueLine> Lines;
    std::vector<std::int32_t> Counts;  // 4096
    double Pickup = 0.03;  // pick-up range that holds every line of the marker, angstrom
};

[[nodiscard]] const std::vector<SampleRecipe>& SampleRecipes();

/// The marker's cell at pressure and temperature, by inverting its own pressure scale (bisection).
/// `ratio` receives V/V0, or c/c0 for hBN. Faults: Argument when the scale does not reach it.
[[nodiscard]] Cell MarkerCellAt(const std::string& key, double pressure, double kelvin,
                                double& ratio);

/// Full width at half maximum in keV of a germanium detector: 150 eV at 6 keV, 450 eV at 120 keV,
/// its square linear in energy (Fano statistics and a constant noise).
[[nodiscard]] double DetectorWidth(double energy);

[[nodiscard]] SimulatedSpectrum Simulate(const SampleRecipe& recipe);

/// The spectrum as an .npd text, and the table of truth of all as Markdown.
[[nodiscard]] std::string NpdText(const SimulatedSpectrum& spectrum);
[[nodiscard]] std::string TruthText(const std::vector<SimulatedSpectrum>& spectra);

}  // namespace vael::tools
