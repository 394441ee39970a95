// Simulated white-beam spectra of pressure markers with known truth.
#include "simulation.h"

#include "structure.h"

#include "core/fault.h"
#include "core/units.h"
#include "lattice/geometry.h"
#include "lattice/pressure.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>

namespace vael::tools {
namespace {

constexpr int CHANNELS = 4096;
constexpr double ROOM_KELVIN = 300.0;
constexpr double DEBYE_WALLER_B = 0.6;  // square angstrom at room temperature, growing with T
constexpr double LEAST_HEIGHT = 3.0;    // counts; fainter lines are left out

double Bragg(double d, double twoTheta) {
    return HC_KEV_A / (2.0 * d * std::sin(twoTheta / 2.0 * std::numbers::pi / 180.0));
}

/// The beam behind its windows: a bending magnet's tail above, absorption below. Relative.
double BeamAt(double energy) {
    return std::exp(-energy / 32.0) * std::exp(-std::pow(22.0 / energy, 3.0));
}

/// Background: scattered beam, a broad hump about 42 keV on a level.
double BackgroundAt(const SampleRecipe& recipe, double energy) {
    const double z = (energy - 42.0) / (energy < 42.0 ? 16.0 : 38.0);
    return recipe.BackLow + (recipe.BackHigh - recipe.BackLow) * std::exp(-z * z);
}

/// The argument between `low` and `high` at which a falling function is 0.
double Bisect(const std::function<double(double)>& value, double low, double high) {
    if (!(value(low) >= 0.0 && value(high) <= 0.0))
        throw Fault(FaultNumber::Argument, "the scale does not reach this pressure");
    for (int i = 0; i < 200; ++i) {
        const double middle = (low + high) / 2.0;
        (value(middle) >= 0.0 ? low : high) = middle;
    }
    return (low + high) / 2.0;
}

struct EmissionLine {
    double Energy;    // keV
    double Strength;  // relative to K alpha 1
};

/// K lines of the heavy markers: energies of Bearden 1967, strengths rounded.
std::vector<EmissionLine> EmissionOf(const std::string& key) {
    if (key == "Au")
        return {{66.990, 0.59}, {68.804, 1.0}, {77.580, 0.12}, {77.984, 0.23}, {80.15, 0.08}};
    if (key == "Pt")
        return {{65.122, 0.59}, {66.832, 1.0}, {75.368, 0.12}, {75.748, 0.23}, {77.85, 0.08}};
    return {};
}

void PlaceLine(SimulatedSpectrum& out, TrueLine line) {
    line.Channel = EnergyToCh(line.Energy, out.EgcCoef);
    if (line.Height < LEAST_HEIGHT || line.Channel < 100.0 || line.Channel > CHANNELS - 30) return;
    const double slope = out.EgcCoef[1] + 2.0 * out.EgcCoef[2] * (line.Channel + 1.0);
    line.Fwhm = DetectorWidth(line.Energy) / slope;
    out.Lines.push_back(std::move(line));
}

/// All lines of one substance, the strongest one in range `height` counts high. Intensities by the
/// energy-dispersive powder formula: beam times d^2 times the sum of |F|^2, with a Debye-Waller
/// factor; heights are these over the detector's width.
void PlaceSubstance(SimulatedSpectrum& out, const std::string& key, const Cell& cell,
                    double height) {
    const SampleRecipe& recipe = out.Recipe;
    const Structure& structure = FindStructure(key);
    std::vector<TrueLine> lines;
    double strongest = 0.0;
    for (const PowderLine& line : PowderLines(structure, cell, 0.62)) {
        TrueLine put{key, line.Hkl, Bragg(line.D, recipe.TwoTheta), line.D, 0.0, 0.0, 0.0};
        if (put.Energy < 15.0 || put.Energy > 130.0) continue;
        const double b = DEBYE_WALLER_B * recipe.Temperature / ROOM_KELVIN;
        put.Height = BeamAt(put.Energy) * line.D * line.D * line.SumF2 *
                     std::exp(-2.0 * b / (4.0 * line.D * line.D)) / DetectorWidth(put.Energy);
        strongest = std::max(strongest, put.Height);
        lines.push_back(std::move(put));
    }
    for (TrueLine& line : lines) {
        line.Height *= height / strongest;
        PlaceLine(out, std::move(line));
    }
}

Cell CompanionCell(const Companion& other, double pressure, double kelvin) {
    const double volume = std::pow(1.0 + other.KPrime * pressure / other.K0, -1.0 / other.KPrime) *
                          std::exp(other.Expansion * (kelvin - ROOM_KELVIN));
    Cell cell = FindStructure(other.Key).Constants;
    for (std::size_t i = 0; i < 3; ++i) cell[i] *= std::cbrt(volume);
    return cell;
}

void DrawCounts(SimulatedSpectrum& out) {
    Random random(out.Recipe.Seed);
    out.Counts.resize(CHANNELS);
    for (int i = 0; i < CHANNELS; ++i) {
        const double energy = ChToEnergy(i + 1.0, out.EgcCoef);
        double mean = BackgroundAt(out.Recipe, energy);
        for (const TrueLine& line : out.Lines) {
            const double z = (i - line.Channel) / line.Fwhm;
            if (std::fabs(z) < 5.0)
                mean += line.Height * std::exp(-4.0 * std::numbers::ln2 * z * z);
        }
        Item(out.Counts, i) = random.Poisson(mean);
    }
}

/// The pick-up range that reaches from the reference cell to every line of the marker.
double PickupFor(const SimulatedSpectrum& spectrum) {
    const Structure& structure = FindStructure(spectrum.Recipe.Marker);
    CrystalRecord record;
    record.System = static_cast<std::int16_t>(structure.System);
    record.Count = 1;
    double most = 0.0;
    for (const TrueLine& line : spectrum.Lines) {
        if (line.Key != spectrum.Recipe.Marker || line.D == 0.0) continue;
        record.Hs[0] = line.Hkl[0];
        record.Ks[0] = line.Hkl[1];
        record.Ls[0] = line.Hkl[2];
        CalcDSpacings(record, structure.Constants);
        most = std::max(most, std::fabs(record.D[0] - line.D));
    }
    return most < 0.028 ? 0.03 : std::ceil((most + 0.004) * 100.0) / 100.0;
}

std::uint64_t Rotated(std::uint64_t x, int by) { return (x << by) | (x >> (64 - by)); }

}  // namespace

Random::Random(std::uint64_t seed) {
    for (std::uint64_t& word : state_) {
        seed += 0x9e3779b97f4a7c15ULL;
        std::uint64_t z = seed;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
        word = z ^ (z >> 31);
    }
}

std::uint64_t Random::Next() {
    const std::uint64_t result = Rotated(state_[1] * 5, 7) * 9;
    const std::uint64_t t = state_[1] << 17;
    state_[2] ^= state_[0];
    state_[3] ^= state_[1];
    state_[1] ^= state_[2];
    state_[0] ^= state_[3];
    state_[2] ^= t;
    state_[3] = Rotated(state_[3], 45);
    return result;
}

double Random::Uniform() { return (static_cast<double>(Next() >> 11) + 0.5) * 0x1.0p-53; }

std::int32_t Random::Poisson(double mean) {
    std::int32_t count = 0;
    while (mean > 0.0) {
        const double part = std::min(mean, 16.0);
        mean -= part;
        const double limit = std::exp(-part);
        for (double product = Uniform(); product > limit; product *= Uniform()) ++count;
    }
    return count;
}

double DetectorWidth(double energy) { return std::sqrt(0.0130263 + 0.00157895 * energy); }

Cell MarkerCellAt(const std::string& key, double pressure, double kelvin, double& ratio) {
    const Structure& structure = FindStructure(key);
    Cell cell = structure.Constants;
    const auto scale = FindScale(key);
    if (!scale) throw Fault(FaultNumber::Argument, "no scale of the key " + key);
    const auto invert = [&](auto scaled, double low, double high) {
        return Bisect([&](double x) { return scaled(x, kelvin) - pressure; }, low, high);
    };
    switch (*scale) {
        case PressureScale::NaClDecker: ratio = invert(PressureNaClDecker, 0.65, 1.15); break;
        case PressureScale::PtJamieson: ratio = invert(PressurePtJamieson, 0.82, 1.06); break;
        case PressureScale::AuAnderson: ratio = invert(PressureAuAnderson, 0.65, 1.10); break;
        case PressureScale::MgOTable: ratio = invert(PressureMgOTable, 0.74, 1.10); break;
        case PressureScale::HbnAxis: {
            // The scale knows the c axis alone; a hardly moves: 1/1200 a GPa, and 2.7e-6 a kelvin
            // less.
            const double c = Bisect(
                [&](double x) { return PressureHbnAxis(x, kelvin - 273.15) - pressure; }, 5.0, 7.2);
            ratio = c / cell[2];
            cell[0] *= (1.0 - pressure / 1200.0) * (1.0 - 2.7e-6 * (kelvin - ROOM_KELVIN));
            cell[1] = cell[0];
            cell[2] = c;
            return cell;
        }
        default: throw Fault(FaultNumber::Argument, "the scale of " + key + " is not inverted");
    }
    for (std::size_t i = 0; i < 3; ++i) cell[i] *= std::cbrt(ratio);
    return cell;
}

SimulatedSpectrum Simulate(const SampleRecipe& recipe) {
    SimulatedSpectrum out;
    out.Recipe = recipe;
    out.EgcCoef = recipe.Curved ? std::array<double, 3>{0.0421, 0.030480, 1.5e-8}
                                : std::array<double, 3>{0.0385, 0.030625, 0.0};
    out.MarkerCell = MarkerCellAt(recipe.Marker, recipe.Pressure, recipe.Temperature, out.Ratio);
    PlaceSubstance(out, recipe.Marker, out.MarkerCell, recipe.Height);
    for (const EmissionLine& line : EmissionOf(recipe.Marker))
        PlaceLine(
            out,
            {recipe.Marker, {}, line.Energy, 0.0, 0.0, recipe.Fluorescence * line.Strength, 0.0});
    for (const Companion& other : recipe.Others) {
        out.OtherCells.push_back(CompanionCell(other, recipe.Pressure, recipe.Temperature));
        PlaceSubstance(out, other.Key, out.OtherCells.back(), other.Height);
    }
    out.Pickup = PickupFor(out);
    DrawCounts(out);
    return out;
}

}  // namespace vael::tools
