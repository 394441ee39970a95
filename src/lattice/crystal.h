// The crystal table: reference cells with their reflections, read from crystal.dat.
#pragma once

#include <array>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

namespace vael {

inline constexpr int CRYSTAL_MAX = 31;      // records, 0 to 30
inline constexpr int REFLECTION_MAX = 101;  // triples of one crystal, the terminator not counted

/// a, b, c in angstrom, then alpha, beta, gamma in degrees.
using Cell = std::array<double, 6>;

/// Crystal systems as the file and the list of the lattice view number them.
enum CrystalSystem : std::int16_t {
    SYSTEM_CUB = 0,
    SYSTEM_TET,
    SYSTEM_HEX,
    SYSTEM_ORT,
    SYSTEM_MON,
    SYSTEM_TRI,
    SYSTEM_ANY = 9,  // the view then selects index 0
};

/// Names of a system by its index: "CUB" for the logs, "Cubic" for the list, "CUBIC" for the result
/// block. An index outside 0 to 5 gives "UNK" for the code and empty texts for the names.
[[nodiscard]] std::string SystemCode(int system);
[[nodiscard]] std::string SystemListText(int system);
[[nodiscard]] std::string SystemLogName(int system);

/// One crystal. Reflections in rows 0 to Count - 1.
struct CrystalRecord {
    std::string Name;                             // UTF-8; its first word is the marker key
    double A = 0.0, B = 0.0, C = 0.0;             // angstrom
    double Alpha = 0.0, Beta = 0.0, Gamma = 0.0;  // degrees
    std::int16_t System = 0;
    std::int16_t Count = 0;
    std::array<std::int16_t, REFLECTION_MAX> Hs{}, Ks{}, Ls{};
    std::array<double, REFLECTION_MAX> D{};               // angstrom, filled by CalcDSpacings
    std::array<std::int16_t, REFLECTION_MAX> Flag{};      // working columns: cleared, and read by
    std::array<double, REFLECTION_MAX> Work1{}, Work2{};  // nothing

    [[nodiscard]] Cell ReferenceCell() const { return {A, B, C, Alpha, Beta, Gamma}; }
};

struct CrystalTable {
    std::int16_t CrystalCount = 0;
    std::array<CrystalRecord, CRYSTAL_MAX> Crystals;
};

/// Reads the text form: ten lines of comment, the number of crystals, then for each crystal name,
/// system, a, b, c, alpha, beta, gamma and triples h k l up to 0 0 0. A field ends at a comma, a
/// blank or the line's end; quotes keep blanks and commas; an unquoted name runs to the comma when
/// one follows on its line. Text is code page 932. Nothing is taken over of a file that is refused.
/// Faults: FileContent naming `name`, the line and what was expected there: too few lines, a count
/// that is no number, negative, above 31 or not that of the file, a text where a number belongs, a
/// triple or a terminator that is missing, more than 101 triples. Overflow is told the same way.
[[nodiscard]] CrystalTable ReadCrystalFile(std::istream& in, std::string_view name);

/// The same of a file. Faults: also FileMissing, and FileAccess for a folder or a file that cannot
/// be read.
[[nodiscard]] CrystalTable ReadCrystalFile(const std::string& path);

/// Index of the first crystal whose key, whose full name behind the key, or whose whole text of
/// both is `wanted`, to the letter; -1 when there is none.
[[nodiscard]] int FindCrystal(const CrystalTable& table, std::string_view wanted);

/// The name up to its first blank, or all of it.
[[nodiscard]] std::string MarkerKey(std::string_view name);

}  // namespace vael
