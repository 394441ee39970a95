// The simulated samples: the files are what the tool makes, and hold the truth that they tell.
#include "simulation.h"

#include "structure.h"

#include "core/fault.h"
#include "lattice/outliers.h"
#include "lattice/pressure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

using namespace vael;
using namespace vael::tools;

namespace {

const std::string FOLDER = std::string(VAEL_SOURCE_DIR) + "/data/samples";

std::string ReadAll(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    EXPECT_TRUE(in) << path;
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

/// Centre of a Gaussian by a parabola through the logarithms about `channel`, weighted by the
/// counts, on a level taken from both sides. A fit of its own: it knows nothing of how the file was
/// made but where to look.
double CentreNear(const std::vector<std::int32_t>& counts, double channel, double fwhm) {
    const auto at = [&](double x) { return counts[static_cast<std::size_t>(std::lround(x))]; };
    double level = 0.0;
    for (int i = 0; i < 8; ++i)
        level += at(channel - 2.2 * fwhm - i) + at(channel + 2.2 * fwhm + i);
    level /= 16.0;
    double s[5] = {}, t[3] = {};
    for (int i = static_cast<int>(channel - 0.7 * fwhm); i <= channel + 0.7 * fwhm; ++i) {
        const double y = counts[static_cast<std::size_t>(i)] - level;
        if (y <= 0.0) continue;
        const double w = y * y / counts[static_cast<std::size_t>(i)];
        const double x = i - channel;
        for (int p = 0; p < 5; ++p) s[p] += w * std::pow(x, p);
        for (int p = 0; p < 3; ++p) t[p] += w * std::pow(x, p) * std::log(y);
    }
    // c1 and c2 of c0 + c1 x + c2 x^2 by Cramer's rule.
    const double d1 = s[0] * (t[1] * s[4] - s[3] * t[2]) - t[0] * (s[1] * s[4] - s[3] * s[2]) +
                      s[2] * (s[1] * t[2] - t[1] * s[2]);
    const double d2 = s[0] * (s[2] * t[2] - t[1] * s[3]) - s[1] * (s[1] * t[2] - t[1] * s[2]) +
                      t[0] * (s[1] * s[3] - s[2] * s[2]);
    return channel - d1 / (2.0 * d2);
}

/// Whether no other line of some strength stands within three widths.
bool StandsAlone(const SimulatedSpectrum& spectrum, const TrueLine& line) {
    for (const TrueLine& other : spectrum.Lines)
        if (&other != &line && std::fabs(other.Channel - line.Channel) < 3.5 * line.Fwhm &&
            other.Height > 0.01 * line.Height)
            return false;
    return true;
}

}  // namespace

TEST(Samples, AreByteForByteWhatTheToolMakes) {
    for (const SampleRecipe& recipe : SampleRecipes())
        EXPECT_TRUE(ReadAll(FOLDER + "/" + recipe.File + ".npd") == NpdText(Simulate(recipe)))
            << recipe.File << ": run vael-simulate data/samples";
}

TEST(Samples, TheReadmeHoldsTheTruthThatTheToolPrints) {
    std::vector<SimulatedSpectrum> all;
    for (const SampleRecipe& recipe : SampleRecipes()) all.push_back(Simulate(recipe));
    const std::string readme = ReadAll(FOLDER + "/README.md");
    EXPECT_NE(readme.find(TruthText(all)), std::string::npos);
}

TEST(Samples, AreFewAndSmallAndSayThatTheyAreSimulated) {
    std::uintmax_t bytes = 0;
    for (const SampleRecipe& recipe : SampleRecipes()) {
        const std::string path = FOLDER + "/" + recipe.File + ".npd";
        bytes += std::filesystem::file_size(path);
        EXPECT_NE(ReadAll(path).find("Comment,SIMULATED, not measured: "), std::string::npos);
    }
    EXPECT_LT(bytes, 1500000u);
}

TEST(Samples, EachHasFiveLinesOfItsMarkerOrMoreAndALowBackground) {
    for (const SampleRecipe& recipe : SampleRecipes()) {
        const SimulatedSpectrum spectrum = Simulate(recipe);
        EXPECT_EQ(spectrum.Counts.size(), 4096u);
        int visible = 0;
        for (const TrueLine& line : spectrum.Lines)
            if (line.Key == recipe.Marker && line.D > 0.0 && line.Height > 100.0 &&
                line.Energy > 20.0 && line.Energy < 120.0)
                ++visible;
        EXPECT_GE(visible, 5) << recipe.File;
        EXPECT_GE(recipe.BackLow, 30.0);
        EXPECT_LE(recipe.BackHigh, 300.0);
    }
}

TEST(Samples, TheCellOfTheTruthHasThePressureOfItsScale) {
    for (const SampleRecipe& recipe : SampleRecipes()) {
        double ratio = 0.0;
        const Cell cell = MarkerCellAt(recipe.Marker, recipe.Pressure, recipe.Temperature, ratio);
        MarkerArguments m;
        m.X = std::pow(cell[0] / FindStructure(recipe.Marker).Constants[0], 3);
        m.c = static_cast<float>(cell[2]);
        m.TK = recipe.Temperature;
        m.TC = recipe.Temperature - 273.15;
        EXPECT_NEAR(MarkerPressure(recipe.Marker, m)->P, recipe.Pressure, 2e-5) << recipe.File;
    }
    double ratio = 0.0;
    EXPECT_THROW((void)MarkerCellAt("Pt", 500.0, 300.0, ratio), Fault);
    EXPECT_THROW((void)MarkerCellAt("Fe", 1.0, 300.0, ratio), Fault);
}

TEST(Samples, FittedPeakByPeakTheyGiveTheirCellAndPressureBack) {
    const CrystalTable table = ReadCrystalFile(std::string(VAEL_SOURCE_DIR) + "/data/crystal.dat");
    for (const SampleRecipe& recipe : SampleRecipes()) {
        const SimulatedSpectrum spectrum = Simulate(recipe);
        auto peaks = std::make_unique<PeakTable>();
        auto property = std::make_unique<PropertyRecord>();
        property->Param.EgcCoef = spectrum.EgcCoef;
        property->Param.TwoTheta = recipe.TwoTheta;
        for (const TrueLine& line : spectrum.Lines) {
            if (line.Key != recipe.Marker || line.D == 0.0 || line.Height < 120.0) continue;
            if (!StandsAlone(spectrum, line)) continue;
            const double centre = CentreNear(spectrum.Counts, line.Channel, line.Fwhm);
            EXPECT_NEAR(centre, line.Channel, 8.0 * line.Fwhm / std::sqrt(line.Height * 8.0))
                << recipe.File << " " << line.Hkl[0] << line.Hkl[1] << line.Hkl[2];
            peaks->Peak[static_cast<std::size_t>(peaks->PeakNum++)].Position = centre;
        }
        auto state = std::make_unique<LatticeState>();
        state->Table = table;
        const auto index = static_cast<std::int16_t>(FindCrystal(table, recipe.Marker));
        const LatticeValues values = CalcLattice(
            *state, RequestFor(*state, index, MODE_MARKER, recipe.Temperature, TEMPERATURE_KELVIN),
            {0, 0, *peaks, *property, {}, spectrum.Pickup}, {});
        ASSERT_EQ(values.Status, CalcStatus::Ok) << recipe.File;
        EXPECT_EQ(values.UsedRows, peaks->PeakNum) << recipe.File;
        EXPECT_NEAR(values.CellNow[0], spectrum.MarkerCell[0], 4e-4 * spectrum.MarkerCell[0])
            << recipe.File;
        EXPECT_NEAR(values.CellNow[2], spectrum.MarkerCell[2], 4e-4 * spectrum.MarkerCell[2])
            << recipe.File;
        ASSERT_TRUE(values.Pressure) << recipe.File;
        EXPECT_NEAR(values.Pressure->P, recipe.Pressure, 0.2) << recipe.File;
    }
}

TEST(Samples, WithEveryLineInTheTableTheRulesFindTheMarker) {
    // What a peak search would hand over: every line above the noise, of the marker, of the sample
    // and fluorescence, those closer than half a width as one.
    const CrystalTable table = ReadCrystalFile(std::string(VAEL_SOURCE_DIR) + "/data/crystal.dat");
    for (const SampleRecipe& recipe : SampleRecipes()) {
        SimulatedSpectrum spectrum = Simulate(recipe);
        std::sort(spectrum.Lines.begin(), spectrum.Lines.end(),
                  [](const TrueLine& a, const TrueLine& b) { return a.Channel < b.Channel; });
        auto peaks = std::make_unique<PeakTable>();
        auto property = std::make_unique<PropertyRecord>();
        property->Param.EgcCoef = spectrum.EgcCoef;
        property->Param.TwoTheta = recipe.TwoTheta;
        for (const TrueLine& line : spectrum.Lines) {
            if (line.Height < 80.0) continue;
            const double net = line.Height * line.Fwhm * 1.0645;
            PeakRecord* last = peaks->PeakNum > 0
                                   ? &peaks->Peak[static_cast<std::size_t>(peaks->PeakNum - 1)]
                                   : nullptr;
            if (last != nullptr && line.Channel - last->Position < 0.5 * line.Fwhm) {
                last->Position = (last->Position * last->Intensity + line.Channel * net) /
                                 (last->Intensity + net);
                last->Intensity += net;
                continue;
            }
            PeakRecord& peak = peaks->Peak[static_cast<std::size_t>(peaks->PeakNum++)];
            peak.Position = line.Channel;
            peak.Intensity = net;
        }
        auto state = std::make_unique<LatticeState>();
        state->Table = table;
        const auto index = static_cast<std::int16_t>(FindCrystal(table, recipe.Marker));
        const RuledValues ruled = CalcByRules(
            *state, RequestFor(*state, index, MODE_MARKER, recipe.Temperature, TEMPERATURE_KELVIN),
            {0, 0, *peaks, *property, {}, spectrum.Pickup}, {}, {});
        ASSERT_EQ(ruled.Values.Status, CalcStatus::Ok) << recipe.File;
        ASSERT_TRUE(ruled.Values.Pressure) << recipe.File;
        EXPECT_NEAR(ruled.Values.Pressure->P, recipe.Pressure, 0.1) << recipe.File;
    }
}

TEST(Random, PoissonNumbersHaveTheirMeanAndVariance) {
    Random random(42);
    for (const double mean : {0.3, 5.0, 40.0, 700.0}) {
        double sum = 0.0, squares = 0.0;
        const int n = 20000;
        for (int i = 0; i < n; ++i) {
            const double x = random.Poisson(mean);
            sum += x;
            squares += x * x;
        }
        const double average = sum / n;
        EXPECT_NEAR(average, mean, 5.0 * std::sqrt(mean / n));
        EXPECT_NEAR((squares / n - average * average) / mean, 1.0, 0.06);
    }
    EXPECT_EQ(random.Poisson(0.0), 0);
}

TEST(Random, TheSameSeedGivesTheSameNumbers) {
    Random a(7), b(7), c(8);
    for (int i = 0; i < 10; ++i) {
        const auto x = a.Next();
        EXPECT_EQ(x, b.Next());
        EXPECT_NE(x, c.Next());
    }
}

TEST(DetectorWidth, GrowsFrom150To450ElectronVolts) {
    EXPECT_NEAR(DetectorWidth(6.0), 0.150, 1e-4);
    EXPECT_NEAR(DetectorWidth(120.0), 0.450, 1e-4);
}
