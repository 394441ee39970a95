// The element table: 107 elements with their K line energies, read from and written to atomic.dat.
#pragma once

#include <array>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace vael {

inline constexpr int ELEMENT_MAX = 107;  // atomic numbers 1 to 107
inline constexpr int ELEMENT_COLUMNS = 12;

/// Columns of the table in the order of the file. Energies are in keV.
enum ElementColumn : int {
    ELEMENT_NUM = 0,
    ELEMENT_SYMBOL,
    ELEMENT_SHORT,
    ELEMENT_NAME,
    ELEMENT_KA2,
    ELEMENT_KA1,
    ELEMENT_KB3,
    ELEMENT_KB1,
    ELEMENT_KB2,
    ELEMENT_EDGE,
    ELEMENT_GAMMA,
    ELEMENT_KAVE,
};

/// Line kinds in the order of the selection of the periodic table.
enum LineKind : int {
    LINE_KA1 = 0,
    LINE_KAVE,
    LINE_KA2,
    LINE_KB2,
    LINE_KB3,
    LINE_KB1,
    LINE_GAMMA,
    LINE_EDGE,
};
inline constexpr int LINE_KINDS = 8;

/// "Ka1", "KAve", "Ka2", "Kb2", "Kb3", "Kb1", "Gamma", "Edg"; empty for a kind outside 0 to 7.
[[nodiscard]] std::string LineKindText(int kind);
/// The column that holds a kind's energy. Faults: Subscript.
[[nodiscard]] int ColumnOfKind(int kind);

/// Symbol of an element by its atomic number, as buttons show it before a table was read; empty
/// outside 1 to 107.
[[nodiscard]] std::string ElementSymbol(int number);

/// Rows of cells. A cell is the text between two commas, kept to the byte (code page 932, blanks
/// and quotes included), so that a file comes back as it was; any cell may be empty.
struct ElementTable {
    int Rows = 0;  // 0 before a file was read, then 107
    std::array<std::string, ELEMENT_COLUMNS> Names;
    std::array<std::array<std::string, ELEMENT_COLUMNS>, ELEMENT_MAX> Cells;
    std::array<std::string, ELEMENT_MAX> Ends;  // what ended each line
    std::string Tail;                           // blank lines behind the last one
    bool operator==(const ElementTable&) const = default;
};

// Elements below are named by atomic number, from 1.

/// A cell as UTF-8, without the blanks and the quotes around it. Faults: Subscript outside the
/// table.
[[nodiscard]] std::string CellText(const ElementTable& table, int number, int column);
/// The number of a cell; no value where it is empty. Faults: Subscript.
[[nodiscard]] std::optional<double> CellNumber(const ElementTable& table, int number, int column);
/// Takes a UTF-8 text into a cell. Faults: Argument for a text with a comma, a quote or a control
/// character, which would be another cell or line when the file is read; Subscript.
void PutCell(ElementTable& table, int number, int column, std::string_view utf8);

/// Energy of a line in keV; no value where the element has none. Faults: Subscript.
[[nodiscard]] std::optional<double> LineEnergy(const ElementTable& table, int number, int kind);

/// Sets the column names and reads 107 lines of 12 cells, each followed by a comma; what stands
/// behind the last comma is dropped. Quotes around a cell may hold commas. Line ends are CR LF or
/// LF. Faults: FileContent naming `name`, the line and what was expected there, for fewer or more
/// lines, fewer or more cells, an atomic number out of its order, and an energy that is no number
/// of 0 to 100000. Nothing is taken over of a file that is refused.
[[nodiscard]] ElementTable ReadElementFile(std::istream& in, std::string_view name);
/// The same of a file. Faults: also FileMissing and FileAccess.
[[nodiscard]] ElementTable ReadElementFile(const std::string& path);

/// The file's bytes.
[[nodiscard]] std::string ElementFileText(const ElementTable& table);
/// Writes them, whole or not at all. Faults: FileAccess; Argument for a table that holds nothing.
void WriteElementFile(const std::string& path, const ElementTable& table);

}  // namespace vael
