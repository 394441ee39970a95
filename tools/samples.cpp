// The list of simulated samples, and the texts that go into data/samples.
#include "simulation.h"

#include "structure.h"

#include "core/text.h"
#include "core/units.h"
#include "lattice/pressure.h"

namespace vael::tools {
namespace {

const Companion IRON{"Fe", 4000.0, 165.0, 5.3, 4.0e-5};
const Companion RINGWOODITE{"Ringwoodite", 3500.0, 184.0, 4.2, 2.7e-5};
const Companion STISHOVITE{"Stishovite", 3000.0, 305.0, 4.8, 1.8e-5};
const Companion CORUNDUM{"Al2O3", 2500.0, 253.0, 4.3, 2.3e-5};

Companion Scaled(Companion other, double height) {
    other.Height = height;
    return other;
}

std::string Fixed(double value, const char* format) { return FormatNumber(value, format); }

std::string CellOf(const Cell& cell, int system) {
    std::string text = "a " + Fixed(cell[0], "0.00000");
    if (system == SYSTEM_ORT) text += ", b " + Fixed(cell[1], "0.00000");
    if (system != SYSTEM_CUB) text += ", c " + Fixed(cell[2], "0.00000");
    return text;
}

/// The words that say what the file is, in every file and in the table.
std::string Comment(const SampleRecipe& recipe) {
    return "SIMULATED, not measured: " + recipe.Marker + " at " + Fixed(recipe.Pressure, "0.0") +
           " GPa, " + Fixed(recipe.Temperature, "0") + " K by its scale; truth in README.md";
}

}  // namespace

const std::vector<SampleRecipe>& SampleRecipes() {
    static const std::vector<SampleRecipe> recipes{
        {"NaCl_0GPa_300K", "NACL", 0.0, 300.0, 6.0, 9000.0, 0.0, 30.0, 90.0, {}, 101, false},
        {"NaCl_2GPa_800K", "NACL", 2.0, 800.0, 6.0, 12000.0, 0.0, 40.0, 160.0, {}, 102, true},
        {"NaCl_3GPa_900K_Fe",
         "NACL",
         3.0,
         900.0,
         6.5,
         9000.0,
         0.0,
         40.0,
         200.0,
         {IRON},
         103,
         false},
        {"Au_2GPa_500K", "Au", 2.0, 500.0, 8.0, 25000.0, 4000.0, 60.0, 240.0, {}, 104, false},
        {"Au_10GPa_1000K", "Au", 10.0, 1000.0, 8.0, 15000.0, 2500.0, 60.0, 200.0, {}, 105, true},
        {"Au_18GPa_1800K_Ringwoodite",
         "Au",
         18.0,
         1800.0,
         7.0,
         12000.0,
         1500.0,
         60.0,
         260.0,
         {RINGWOODITE},
         106,
         false},
        {"Pt_8GPa_700K", "Pt", 8.0, 700.0, 7.0, 18000.0, 2500.0, 50.0, 200.0, {}, 107, true},
        {"Pt_20GPa_1600K_Stishovite",
         "Pt",
         20.0,
         1600.0,
         7.0,
         14000.0,
         2000.0,
         60.0,
         220.0,
         {STISHOVITE},
         108,
         false},
        {"MgO_5GPa_800K", "MgO", 5.0, 800.0, 7.0, 20000.0, 0.0, 40.0, 180.0, {}, 109, false},
        {"MgO_10GPa_1273K_Ringwoodite",
         "MgO",
         10.0,
         1273.0,
         6.0,
         16000.0,
         0.0,
         60.0,
         300.0,
         {Scaled(RINGWOODITE, 5000.0)},
         110,
         true},
        {"hBN_1GPa_900K", "hBN", 1.0, 900.0, 7.0, 30000.0, 0.0, 50.0, 220.0, {}, 111, false},
        {"hBN_1GPa_1200K_Al2O3",
         "hBN",
         1.0,
         1200.0,
         7.0,
         28000.0,
         0.0,
         50.0,
         220.0,
         {CORUNDUM},
         112,
         true},
    };
    return recipes;
}

std::string NpdText(const SimulatedSpectrum& spectrum) {
    const SampleRecipe& recipe = spectrum.Recipe;
    std::string comment = Comment(recipe);
    comment.resize(100, ' ');
    std::string text;
    const auto line = [&](const std::string& words) { text += words + "\r\n"; };
    line("Record length,23");
    line("Sample name," + recipe.File);
    line("Operator name,vael-simulate");
    line("Profile number,simulated, seed " + std::to_string(recipe.Seed));
    line("Time,2000-01-01 00:00:00");
    line("Measurement mode,Live");
    for (std::size_t i = 0; i < 3; ++i)
        line("EGC" + std::to_string(i) + "," + Fixed(spectrum.EgcCoef[i], "0.00000E+000"));
    line("2Theta(deg)," + Fixed(recipe.TwoTheta, "#0.0000"));
    line("Live time(sec),300.00");
    line("Real time(sec),330.00");
    line("Dead time(%),9.09091");
    line("Temperature(K)," + Fixed(recipe.Temperature, "#0.00"));
    line("Press load(ton),0.00");
    line("Ring status,current(mA)=0.00");
    line("Beam intensity,0.00");
    line("Counting rate,0.00");
    line("Press conditions, X(mm)=0.000 Y(mm)=0.000 Z(mm)=0.000 PHI(deg)=0.000");
    line("Incident slit conditions, V(mm)=0.000 H(mm)=0.000");
    line("Receiving slit conditions, V(mm)=0.000 H(mm)=0.000 Collimator(mm)=0.000");
    line("Heating conditions, V(V)=0.00 C(A)=0.00 P(W)=0.00 R(OHM)=0.000");
    line("Comment," + comment);
    line("Ram Stroke,0.00");
    line("Data length, " + std::to_string(spectrum.Counts.size()));
    line("Counting sec, 300.000");
    int channel = 0;
    for (const std::int32_t count : spectrum.Counts) {
        ++channel;
        line(std::to_string(channel) + "," +
             Fixed(ChToEnergy(channel, spectrum.EgcCoef), "0.0000") + "," + std::to_string(count));
    }
    return text;
}

std::string TruthText(const std::vector<SimulatedSpectrum>& spectra) {
    std::string text =
        "| File | Scale | P (GPa) | T (K) | V/V0 | Cell of the marker | 2theta | Pick-up | "
        "With it |\n|---|---|---|---|---|---|---|---|---|\n";
    for (const SimulatedSpectrum& spectrum : spectra) {
        const SampleRecipe& recipe = spectrum.Recipe;
        std::string others;
        for (std::size_t i = 0; i < recipe.Others.size(); ++i)
            others += (i ? "; " : "") + recipe.Others[i].Key + " " +
                      CellOf(spectrum.OtherCells[i], FindStructure(recipe.Others[i].Key).System);
        if (recipe.Fluorescence > 0.0)
            others += (others.empty() ? "" : "; ") + recipe.Marker + " K lines";
        const bool axis = recipe.Marker == "hBN";
        text += "| " + recipe.File + ".npd | " + ScaleName(*FindScale(recipe.Marker)) + " | " +
                Fixed(recipe.Pressure, "0.0") + " | " + Fixed(recipe.Temperature, "0") + " | " +
                (axis ? "c/c0 " : "") + Fixed(spectrum.Ratio, "0.000000") + " | " +
                CellOf(spectrum.MarkerCell, FindStructure(recipe.Marker).System) + " | " +
                Fixed(recipe.TwoTheta, "0.0000") + " | " + Fixed(spectrum.Pickup, "0.00") + " | " +
                (others.empty() ? "nothing" : others) + " |\n";
    }
    return text;
}

}  // namespace vael::tools
