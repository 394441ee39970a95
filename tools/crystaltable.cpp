// The table behind crystal.dat: cells from the literature, symmetry, and the places of the atoms.
#include "structure.h"

#include "core/cp932.h"
#include "core/fault.h"
#include "core/text.h"

#include <algorithm>

namespace vael::tools {
namespace {

// Generators of the space groups (International Tables for Crystallography, vol. A), with the
// centring translations. Inversion stands last where there is one.
const std::string F_CENTRE = "x,y+1/2,z+1/2 x+1/2,y,z+1/2 ";
const std::string I_CENTRE = "x+1/2,y+1/2,z+1/2 ";
const std::string CUBIC = "-x,-y,z -x,y,-z z,x,y y,x,-z -x,-y,-z";
const std::string FM3M = F_CENTRE + CUBIC;
const std::string IM3M = I_CENTRE + CUBIC;
const std::string& PM3M = CUBIC;
const std::string FD3M =  // origin at -3m
    F_CENTRE + "-x+3/4,-y+1/4,z+1/2 -x+1/4,y+1/2,-z+3/4 z,x,y y+3/4,x+1/4,-z+1/2 -x,-y,-z";
const std::string P63MMC = "-y,x-y,z -x,-y,z+1/2 y,x,-z -x,-y,-z";
const std::string P6M2 = "-y,x-y,z x,y,-z -y,-x,z";
const std::string R3C = "x+2/3,y+1/3,z+1/3 -y,x-y,z y,x,-z+1/2 -x,-y,-z";
const std::string P3221 = "-y,x-y,z+2/3 y,x,-z";
const std::string P42MNM = "-x,-y,z -y+1/2,x+1/2,z+1/2 -x+1/2,y+1/2,-z+1/2 -x,-y,-z";
const std::string I41AMD =  // origin at 2/m
    I_CENTRE + "-x+1/2,-y,z+1/2 -y+1/4,x+3/4,z+1/4 -x+1/2,y,-z+1/2 -x,-y,-z";
const std::string PBNM = "-x,-y,z+1/2 x+1/2,-y+1/2,-z -x,-y,-z";
const std::string C2C = "x+1/2,y+1/2,z -x,y,-z+1/2 -x,-y,-z";
const std::string P1BAR = "-x,-y,-z";

Cell Cube(double a) { return {a, a, a, 90.0, 90.0, 90.0}; }
Cell Hexagon(double a, double c) { return {a, a, c, 90.0, 90.0, 120.0}; }
Cell Box(double a, double b, double c) { return {a, b, c, 90.0, 90.0, 90.0}; }

Structure Fcc(std::string name, double a, int z, std::string source) {
    return {std::move(name), SYSTEM_CUB, Cube(a),          "Fm-3m", FM3M,
            {{z, 0, 0, 0}},  0.6,        std::move(source)};
}

Structure Bcc(std::string name, double a, int z, std::string source) {
    return {std::move(name), SYSTEM_CUB, Cube(a),          "Im-3m", IM3M,
            {{z, 0, 0, 0}},  0.6,        std::move(source)};
}

Structure RockSalt(std::string name, double a, int cation, int anion, std::string source) {
    return {std::move(name),
            SYSTEM_CUB,
            Cube(a),
            "Fm-3m",
            FM3M,
            {{cation, 0, 0, 0}, {anion, 0.5, 0.5, 0.5}},
            0.6,
            std::move(source)};
}

Structure DiamondType(std::string name, double a, int z, std::string source) {
    return {std::move(name),  SYSTEM_CUB, Cube(a), "Fd-3m", FD3M, {{z, 0.125, 0.125, 0.125}}, 0.6,
            std::move(source)};
}

std::vector<Structure> Markers() {
    return {
        Bcc("Fe Iron (bcc)", 2.8665, 26, "reference cell; Swanson et al. 1955 give 2.8664"),
        RockSalt("NACL Sodium chloride (B1)", 5.6402, 11, 17, "Swanson and Fuyat 1953"),
        Fcc("Pt Platinum", 3.9231, 78, "Swanson and Tatge 1953"),
        Fcc("Au Gold", 4.0786, 79, "Swanson and Tatge 1953"),
        RockSalt("MgO Periclase", 4.2112, 12, 8, "powder diffraction file 45-946"),
        {"hBN Boron nitride (hexagonal)",
         SYSTEM_HEX,
         Hexagon(2.5044, 6.6562),
         "P63/mmc",
         P63MMC,
         {{5, 1.0 / 3, 2.0 / 3, 0.25}, {7, 1.0 / 3, 2.0 / 3, 0.75}},
         0.7,
         "powder diffraction file 34-421"},
        Fcc("Pt_B Platinum (Birch scale)", 3.9231, 78, "Swanson and Tatge 1953"),
    };
}

std::vector<Structure> Standards() {
    return {
        {"CeO2 Cerium oxide",
         SYSTEM_CUB,
         Cube(5.41165),
         "Fm-3m",
         FM3M,
         {{58, 0, 0, 0}, {8, 0.25, 0.25, 0.25}},
         0.6,
         "NIST SRM 674b"},
        RockSalt("TiC Titanium carbide", 4.316, 22, 6,
                 "reference cell; stoichiometric TiC has 4.327"),
        {"Al2O3 Corundum",
         SYSTEM_HEX,
         Hexagon(4.7592, 12.992),
         "R-3c",
         R3C,
         {{13, 0, 0, 0.3522}, {8, 0.3063, 0, 0.25}},
         0.75,
         "NIST SRM 676"},
        DiamondType("Si Silicon", 5.43102, 14, "CODATA, in vacuum at 22.5 C"),
        Fcc("Cu Copper", 3.6150, 29, "Swanson and Tatge 1953"),
        Fcc("Al Aluminium", 4.0494, 13, "Swanson and Tatge 1953"),
        Bcc("W Tungsten", 3.1648, 74, "Swanson and Tatge 1953"),
        Bcc("Mo Molybdenum", 3.1472, 42, "Swanson and Tatge 1953"),
        {"Re Rhenium",
         SYSTEM_HEX,
         Hexagon(2.760, 4.458),
         "P63/mmc",
         P63MMC,
         {{75, 1.0 / 3, 2.0 / 3, 0.25}},
         0.6,
         "Swanson and Fuyat 1953"},
        DiamondType("Diamond Carbon (A4)", 3.5667, 6, "Swanson and Fuyat 1953"),
        {"WC Tungsten carbide",
         SYSTEM_HEX,
         Hexagon(2.9062, 2.8378),
         "P-6m2",
         P6M2,
         {{74, 0, 0, 0}, {6, 1.0 / 3, 2.0 / 3, 0.5}},
         0.6,
         "powder diffraction file 25-1047"},
        {"LaB6 Lanthanum hexaboride",
         SYSTEM_CUB,
         Cube(4.15692),
         "Pm-3m",
         PM3M,
         {{57, 0, 0, 0}, {5, 0.1996, 0.5, 0.5}},
         0.6,
         "NIST SRM 660a"},
    };
}

std::vector<Structure> Minerals() {
    return {
        {"Quartz SiO2 (low)",
         SYSTEM_HEX,
         Hexagon(4.9134, 5.4052),
         "P3221",
         P3221,
         {},
         0.8,
         "powder diffraction file 46-1045"},
        {"Stishovite SiO2",
         SYSTEM_TET,
         Box(4.1801, 4.1801, 2.6678),
         "P42/mnm",
         P42MNM,
         {{14, 0, 0, 0}, {8, 0.3062, 0.3062, 0}},
         0.7,
         "Hill, Newton and Gibbs 1983"},
        {"Zircon ZrSiO4",
         SYSTEM_TET,
         Box(6.607, 6.607, 5.982),
         "I41/amd",
         I41AMD,
         {{40, 0, 0.75, 0.125}, {14, 0, 0.25, 0.375}, {8, 0, 0.0661, 0.1953}},
         0.8,
         "Robinson, Gibbs and Ribbe 1971"},
        {"Forsterite Mg2SiO4",
         SYSTEM_ORT,
         Box(4.7535, 10.1943, 5.9807),
         "Pbnm",
         PBNM,
         {},
         1.0,
         "Fujino et al. 1981"},
        {"Bridgmanite MgSiO3",
         SYSTEM_ORT,
         Box(4.7754, 4.9292, 6.8969),
         "Pbnm",
         PBNM,
         {},
         0.8,
         "Horiuchi, Ito and Weidner 1987"},
        {"Ringwoodite Mg2SiO4",
         SYSTEM_CUB,
         Cube(8.0649),
         "Fd-3m",
         FD3M,
         {{14, 0.125, 0.125, 0.125}, {12, 0.5, 0.5, 0.5}, {8, 0.2441, 0.2441, 0.2441}},
         0.8,
         "Sasaki et al. 1982"},
        {"Coesite SiO2",
         SYSTEM_MON,
         {7.1356, 12.3692, 7.1736, 90.0, 120.34, 90.0},
         "C2/c",
         C2C,
         {},
         1.0,
         "Levien and Prewitt 1981"},
        {"Diopside CaMgSi2O6",
         SYSTEM_MON,
         {9.746, 8.899, 5.251, 90.0, 105.63, 90.0},
         "C2/c",
         C2C,
         {},
         1.0,
         "Cameron et al. 1973"},
        {"Kyanite Al2SiO5",
         SYSTEM_TRI,
         {7.1262, 7.8520, 5.5724, 89.99, 101.11, 106.03},
         "P-1",
         P1BAR,
         {},
         1.0,
         "Winter and Ghose 1979"},
    };
}

std::string CellText(double value) {
    std::string text = FormatNumber(value, "0.00000");
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text += '0';
    return text;
}

}  // namespace

const std::vector<Structure>& Structures() {
    static const std::vector<Structure> all = [] {
        std::vector<Structure> list = Markers();
        for (auto part : {Standards(), Minerals()})
            list.insert(list.end(), part.begin(), part.end());
        return list;
    }();
    return all;
}

const Structure& FindStructure(std::string_view key) {
    const auto& all = Structures();
    const auto found = std::find_if(all.begin(), all.end(), [&](const Structure& structure) {
        return MarkerKey(structure.Name) == key;
    });
    if (found == all.end())
        throw Fault(FaultNumber::Argument, "no structure of the key " + std::string(key));
    return *found;
}

std::string CrystalFileText() {
    const auto& all = Structures();
    std::string text =
        "Crystals for matching and refining: reference cells and their reflections.\r\n"
        "Made by the tool vael-crystals; cells and their sources stand in docs/crystals.md.\r\n"
        "Ten lines of comment, the number of crystals, then for each crystal one line\r\n"
        "\"name\",system,a,b,c,alpha,beta,gamma and the reflections h,k,l up to 0,0,0.\r\n"
        "System: 0 cubic, 1 tetragonal, 2 hexagonal, 3 orthorhombic, 4 monoclinic, 5 triclinic.\r\n"
        "Lengths in angstrom, angles in degrees, at room temperature and pressure.\r\n"
        "Crystal 1 is a sample, 2 to 7 are the pressure markers; a scale is chosen by the\r\n"
        "first word of the name: NACL, Pt, Au, MgO, hBN, Pt_B (or PT_H for the Vinet form).\r\n"
        "Reflections stand in order of falling d, those of the same d once, 101 at most.\r\n"
        "Edit it freely: at most 31 crystals; the last one, too, ends in 0,0,0.\r\n";
    text += std::to_string(all.size()) + "\r\n";
    for (const Structure& structure : all) {
        text += "\"" + structure.Name + "\"," + std::to_string(structure.System);
        for (const double value : structure.Constants) text += "," + CellText(value);
        text += "\r\n";
        std::vector<PowderLine> lines = PowderLines(structure, structure.Constants, structure.DMin);
        if (lines.size() > REFLECTION_MAX) lines.resize(REFLECTION_MAX);
        for (const PowderLine& line : lines)
            text += std::to_string(line.Hkl[0]) + "," + std::to_string(line.Hkl[1]) + "," +
                    std::to_string(line.Hkl[2]) + "\r\n";
        text += "0,0,0\r\n";
    }
    return ToCp932(text);
}

}  // namespace vael::tools
