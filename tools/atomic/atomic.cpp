// vael-atomic: writes atomic.dat from the line table of the packaged library xraylib.
//
// K lines, K edges and the radiative rates that weight the averages are those of xraylib 4.0 (T.
// Schoonjans et al., Spectrochimica Acta B 66 (2011) 776). Gamma lines: M.-M. Be et al., Table of
// Radionuclides, Monographie BIPM-5. Names and spellings: IUPAC.
#include "lattice/elements.h"

#include "core/fault.h"
#include "core/text.h"

#include <xraylib/xraylib.h>

#include <array>
#include <cmath>
#include <iostream>
#include <string>
#include <utility>

namespace {

constexpr std::array<const char*, vael::ELEMENT_MAX> NAMES{
    "Hydrogen",     "Helium",        "Lithium",     "Beryllium",  "Boron",        "Carbon",
    "Nitrogen",     "Oxygen",        "Fluorine",    "Neon",       "Sodium",       "Magnesium",
    "Aluminium",    "Silicon",       "Phosphorus",  "Sulfur",     "Chlorine",     "Argon",
    "Potassium",    "Calcium",       "Scandium",    "Titanium",   "Vanadium",     "Chromium",
    "Manganese",    "Iron",          "Cobalt",      "Nickel",     "Copper",       "Zinc",
    "Gallium",      "Germanium",     "Arsenic",     "Selenium",   "Bromine",      "Krypton",
    "Rubidium",     "Strontium",     "Yttrium",     "Zirconium",  "Niobium",      "Molybdenum",
    "Technetium",   "Ruthenium",     "Rhodium",     "Palladium",  "Silver",       "Cadmium",
    "Indium",       "Tin",           "Antimony",    "Tellurium",  "Iodine",       "Xenon",
    "Caesium",      "Barium",        "Lanthanum",   "Cerium",     "Praseodymium", "Neodymium",
    "Promethium",   "Samarium",      "Europium",    "Gadolinium", "Terbium",      "Dysprosium",
    "Holmium",      "Erbium",        "Thulium",     "Ytterbium",  "Lutetium",     "Hafnium",
    "Tantalum",     "Tungsten",      "Rhenium",     "Osmium",     "Iridium",      "Platinum",
    "Gold",         "Mercury",       "Thallium",    "Lead",       "Bismuth",      "Polonium",
    "Astatine",     "Radon",         "Francium",    "Radium",     "Actinium",     "Thorium",
    "Protactinium", "Uranium",       "Neptunium",   "Plutonium",  "Americium",    "Curium",
    "Berkelium",    "Californium",   "Einsteinium", "Fermium",    "Mendelevium",  "Nobelium",
    "Lawrencium",   "Rutherfordium", "Dubnium",     "Seaborgium", "Bohrium"};

/// The gamma line that the usual calibration source of an element is used for, keV.
struct Gamma {
    int Number;
    double Energy;
};
constexpr std::array<Gamma, 8> GAMMAS{{{27, 122.06065},  // Co-57
                                       {48, 88.0336},    // Cd-109
                                       {53, 35.4925},    // I-125
                                       {55, 661.657},    // Cs-137
                                       {56, 80.9979},    // Ba-133
                                       {63, 121.7817},   // Eu-152
                                       {64, 97.431},     // Gd-153
                                       {95, 59.5409}}};  // Am-241

/// Energies to 0.1 eV, as the source gives them; nothing where there is no line.
std::string EnergyText(double energy) {
    if (!(energy > 0.0)) return {};
    std::string text = vael::FormatNumber(energy, "0.0000");
    while (text.back() == '0') text.pop_back();
    if (text.back() == '.') text.pop_back();
    return text;
}

/// A line with its weight, photons per vacancy; 0 where the source has none.
std::pair<double, double> Line(int number, int line) {
    return {LineEnergy(number, line, nullptr), RadRate(number, line, nullptr)};
}

/// The mean of two lines weighted by their rates; without rates the second one.
double Mean(std::pair<double, double> a, std::pair<double, double> b) {
    if (!(a.first > 0.0) || !(b.first > 0.0)) return 0.0;
    const double weight = a.second + b.second;
    return weight > 0.0 ? (a.first * a.second + b.first * b.second) / weight : b.first;
}

std::string GammaText(int number) {
    for (const Gamma& gamma : GAMMAS)
        if (gamma.Number == number) return EnergyText(gamma.Energy);
    return {};
}

vael::ElementTable MakeTable() {
    vael::ElementTable table;
    table.Rows = vael::ELEMENT_MAX;
    for (int number = 1; number <= vael::ELEMENT_MAX; ++number) {
        const auto put = [&](int column, const std::string& text) {
            vael::PutCell(table, number, column, text);
        };
        const auto ka1 = Line(number, KL3_LINE);
        const auto ka2 = Line(number, KL2_LINE);
        const std::string name = vael::Item(NAMES, number - 1);
        put(vael::ELEMENT_NUM, std::to_string(number));
        put(vael::ELEMENT_SYMBOL, vael::ElementSymbol(number));
        put(vael::ELEMENT_SHORT, name);
        put(vael::ELEMENT_NAME, name);
        put(vael::ELEMENT_KA2, EnergyText(ka2.first));
        put(vael::ELEMENT_KA1, EnergyText(ka1.first));
        put(vael::ELEMENT_KB3, EnergyText(Line(number, KM2_LINE).first));
        put(vael::ELEMENT_KB1, EnergyText(Line(number, KM3_LINE).first));
        // No detector of this field parts K-N2 from K-N3; their mean is what is measured.
        put(vael::ELEMENT_KB2, EnergyText(Mean(Line(number, KN2_LINE), Line(number, KN3_LINE))));
        put(vael::ELEMENT_EDGE, EnergyText(EdgeEnergy(number, K_SHELL, nullptr)));
        put(vael::ELEMENT_GAMMA, GammaText(number));
        put(vael::ELEMENT_KAVE, EnergyText(Mean(ka2, ka1)));
        vael::Item(table.Ends, number - 1) = "\r\n";
    }
    return table;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: vael-atomic FILE   writes atomic.dat\n";
        return 2;
    }
    try {
        vael::WriteElementFile(argv[1], MakeTable());
    } catch (const vael::Fault& fault) {
        std::cerr << fault.what() << "\n";
        return 1;
    }
    return 0;
}
