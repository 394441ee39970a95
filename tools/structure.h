// Crystal structures by symmetry and atoms: which reflections there are, and how strong they are.
#pragma once

#include "lattice/crystal.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace vael::tools {

/// A symmetry operation on fractional coordinates: rotation and translation in 24ths of a cell.
struct SymmetryOp {
    std::array<std::array<int, 3>, 3> R{};
    std::array<int, 3> T{};
    friend bool operator==(const SymmetryOp&, const SymmetryOp&) = default;
};

/// Reads "x-y,-y+1/2,z+2/3". Faults: Argument.
[[nodiscard]] SymmetryOp ParseOp(std::string_view text);

/// All operations of the group that the generators, separated by blanks, make.
[[nodiscard]] std::vector<SymmetryOp> MakeGroup(std::string_view generators);

/// One atom of the asymmetric unit.
struct Atom {
    int Z = 0;  // atomic number, which is the number of its electrons
    double X = 0.0, Y = 0.0, ZFrac = 0.0;
};

/// One crystal as the tools know it.
struct Structure {
    std::string Name;  // key, blank, full name
    int System = SYSTEM_CUB;
    Cell Constants{};   // angstrom and degrees
    std::string Group;  // symbol of the space group, for people
    std::string Generators;
    std::vector<Atom> Atoms;  // empty: all that the symmetry allows is listed
    double DMin = 0.6;        // smallest d to list, angstrom
    std::string Source;       // of the cell
};

/// One line of the powder pattern: all reflections of one d.
struct PowderLine {
    std::array<std::int16_t, 3> Hkl{};  // the representative
    double D = 0.0;                     // angstrom
    int Multiplicity = 0;               // reflections on this line that are not extinct
    double SumF2 = 0.0;                 // sum of |F|^2 over them, electrons^2
};

/// Whether symmetry alone extinguishes a reflection: an operation leaves it in place and shifts its
/// phase.
[[nodiscard]] bool IsExtinct(const std::vector<SymmetryOp>& group, int h, int k, int l);

/// Electrons that scatter in phase at s = sin(theta)/lambda = 1/(2d), after the picture of Thomas
/// and Fermi: Z / (1 + (s / s0)^2), s0 = 0.27 Z^(1/3) 1/angstrom. Good for a simulation only.
[[nodiscard]] double ScatteringFactor(int z, double s);

/// The lines of a structure with d at `dMin` or above, in order of falling d. Reflections of one d
/// are one line, named by the one with the fewest negative indices, then by the largest h, k, l;
/// those that symmetry or the atoms' places extinguish do not appear. d comes from the reciprocal
/// metric tensor of the cell.
[[nodiscard]] std::vector<PowderLine> PowderLines(const Structure& structure, const Cell& cell,
                                                  double dMin);

/// The table behind crystal.dat: index 0 a sample, 1 to 6 the markers of the pressure scales.
[[nodiscard]] const std::vector<Structure>& Structures();

/// The structure of a key. Faults: Argument.
[[nodiscard]] const Structure& FindStructure(std::string_view key);

/// The text of crystal.dat, lines ending in CR LF.
[[nodiscard]] std::string CrystalFileText();

}  // namespace vael::tools
