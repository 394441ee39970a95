// The element table: 107 elements with their K line energies, read from and written to atomic.dat.
#include "lattice/elements.h"

#include "core/cp932.h"
#include "core/fault.h"
#include "core/text.h"
#include "core/wholefile.h"

#include <algorithm>
#include <fstream>
#include <istream>
#include <vector>

namespace vael {
namespace {

constexpr std::size_t LINE_MAX_BYTES = 4096;  // a longer line is no line of ours
constexpr double ENERGY_MAX = 100000.0;       // keV: above any line of any element
constexpr char END_OF_TEXT = '\x1a';          // some editors close a text with it

constexpr std::array<const char*, ELEMENT_COLUMNS> COLUMN_NAMES{
    "Num", "Symbol", "Element", "Element Name", "Ka2",   "Ka1",
    "Kb3", "Kb1",    "Kb2",     "AbsEdge",      "Gamma", "KAve"};

constexpr std::array<const char*, ELEMENT_MAX> SYMBOLS{
    "H",  "He", "Li", "Be", "B",  "C",  "N",  "O",  "F",  "Ne", "Na", "Mg", "Al", "Si", "P",  "S",
    "Cl", "Ar", "K",  "Ca", "Sc", "Ti", "V",  "Cr", "Mn", "Fe", "Co", "Ni", "Cu", "Zn", "Ga", "Ge",
    "As", "Se", "Br", "Kr", "Rb", "Sr", "Y",  "Zr", "Nb", "Mo", "Tc", "Ru", "Rh", "Pd", "Ag", "Cd",
    "In", "Sn", "Sb", "Te", "I",  "Xe", "Cs", "Ba", "La", "Ce", "Pr", "Nd", "Pm", "Sm", "Eu", "Gd",
    "Tb", "Dy", "Ho", "Er", "Tm", "Yb", "Lu", "Hf", "Ta", "W",  "Re", "Os", "Ir", "Pt", "Au", "Hg",
    "Tl", "Pb", "Bi", "Po", "At", "Rn", "Fr", "Ra", "Ac", "Th", "Pa", "U",  "Np", "Pu", "Am", "Cm",
    "Bk", "Cf", "Es", "Fm", "Md", "No", "Lr", "Rf", "Db", "Sg", "Bh"};

struct KindColumn {
    const char* Text;
    int Column;
};
constexpr std::array<KindColumn, LINE_KINDS> KINDS{{{"Ka1", ELEMENT_KA1},
                                                    {"KAve", ELEMENT_KAVE},
                                                    {"Ka2", ELEMENT_KA2},
                                                    {"Kb2", ELEMENT_KB2},
                                                    {"Kb3", ELEMENT_KB3},
                                                    {"Kb1", ELEMENT_KB1},
                                                    {"Gamma", ELEMENT_GAMMA},
                                                    {"Edg", ELEMENT_EDGE}}};

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

/// A cell's bytes without the blanks around it and without the quotes around those.
std::string_view Bare(std::string_view cell) {
    const auto trim = [](std::string_view text) {
        while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
        while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
        return text;
    };
    cell = trim(cell);
    if (cell.size() >= 2 && cell.front() == '"' && cell.back() == '"')
        cell = trim(cell.substr(1, cell.size() - 2));
    return cell;
}

/// Lines of a stream with what ended them, counted from 1.
class LineReader {
public:
    LineReader(std::istream& in, std::string_view name) : in_(in), name_(name) {}

    [[noreturn]] void Refuse(const std::string& expected) const {
        throw Fault(FaultNumber::FileContent,
                    name_ + ", line " + std::to_string(line_) + ": " + expected);
    }
    /// False at the end of the file.
    bool Next() {
        Text.clear();
        End.clear();
        ++line_;
        std::streambuf* buffer = in_.rdbuf();
        constexpr int eof = std::char_traits<char>::eof();
        int c = buffer->sbumpc();
        const bool there = c != eof;
        for (; c != eof && c != '\n'; c = buffer->sbumpc()) {
            if (Text.size() == LINE_MAX_BYTES)
                Refuse("a line of the element table was expected; it is too long.");
            Text += static_cast<char>(c);
        }
        if (c == '\n') End = "\n";
        if (c == '\n' && !Text.empty() && Text.back() == '\r') {
            Text.pop_back();
            End = "\r\n";
        }
        return there;
    }
    std::string Text;
    std::string End;

private:
    std::istream& in_;
    std::string name_;
    int line_ = 0;
};

/// The texts between the commas of a line; a comma in quotes is none.
std::vector<std::string> SplitCells(const LineReader& in) {
    std::vector<std::string> cells(1);
    bool quoted = false;
    for (const char c : in.Text) {
        if (c == '"' && (quoted || Bare(cells.back()).empty())) quoted = !quoted;
        if (c == ',' && !quoted)
            cells.emplace_back();
        else
            cells.back() += c;
    }
    if (quoted) in.Refuse("a closing quote was expected.");
    return cells;
}

void ReadRow(const LineReader& in, ElementTable& table, int number) {
    const std::vector<std::string> cells = SplitCells(in);
    if (cells.size() != ELEMENT_COLUMNS + 1)
        in.Refuse("12 cells with a comma behind each were expected, not " +
                  std::to_string(cells.size() - 1) + " commas.");
    auto& row = Item(table.Cells, number - 1);
    for (int column = 0; column < ELEMENT_COLUMNS; ++column) {
        const std::string& cell = Item(cells, column);
        const std::string_view bare = Bare(cell);
        const bool text = column >= ELEMENT_SYMBOL && column <= ELEMENT_NAME;
        const auto value = ParseNumber(bare);
        const std::string what = std::string("\"") + Item(COLUMN_NAMES, column) + "\"";
        if (!text && !bare.empty() && (!value || !(*value >= 0.0) || *value > ENERGY_MAX))
            in.Refuse("a number was expected in " + what + ", not \"" +
                      FromCp932(CutCp932(bare, 40)) + "\".");
        if (column == ELEMENT_NUM && value && *value != number)
            in.Refuse("the atomic number " + std::to_string(number) + " was expected in " + what +
                      ", not " + std::string(bare) + ".");
        Item(row, column) = cell;
    }
    Item(table.Ends, number - 1) = in.End;
}

std::string& CellOf(ElementTable& table, int number, int column) {
    if (number > table.Rows) RaiseSubscript(number, static_cast<std::size_t>(table.Rows));
    return Item(Item(table.Cells, number - 1), column);
}

const std::string& CellOf(const ElementTable& table, int number, int column) {
    if (number > table.Rows) RaiseSubscript(number, static_cast<std::size_t>(table.Rows));
    return Item(Item(table.Cells, number - 1), column);
}

}  // namespace

std::string LineKindText(int kind) {
    return kind >= 0 && kind < LINE_KINDS ? Item(KINDS, kind).Text : "";
}

int ColumnOfKind(int kind) { return Item(KINDS, kind).Column; }

std::string ElementSymbol(int number) {
    return number >= 1 && number <= ELEMENT_MAX ? Item(SYMBOLS, number - 1) : "";
}

std::string CellText(const ElementTable& table, int number, int column) {
    return FromCp932(Bare(CellOf(table, number, column)));
}

std::optional<double> CellNumber(const ElementTable& table, int number, int column) {
    return ParseNumber(Bare(CellOf(table, number, column)));
}

void PutCell(ElementTable& table, int number, int column, std::string_view utf8) {
    std::string& cell = CellOf(table, number, column);
    const bool plain = std::none_of(utf8.begin(), utf8.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return c == ',' || c == '"' || byte < 0x20 || byte == 0x7f;
    });
    if (!plain)
        throw Fault(
            FaultNumber::Argument,
            "\"" + std::string(utf8) +
                "\" has a comma or a quote, which a cell of the element table cannot hold.");
    cell = ToCp932(utf8);
}

std::optional<double> LineEnergy(const ElementTable& table, int number, int kind) {
    const auto energy = CellNumber(table, number, ColumnOfKind(kind));
    return energy && *energy > 0.0 ? energy : std::nullopt;
}

ElementTable ReadElementFile(std::istream& in, std::string_view name) {
    LineReader lines(in, name);
    ElementTable table;
    std::copy(COLUMN_NAMES.begin(), COLUMN_NAMES.end(), table.Names.begin());
    for (int number = 1; number <= ELEMENT_MAX; ++number) {
        if (!lines.Next())
            lines.Refuse("element " + std::to_string(number) +
                         " was expected; the file ends before its 107 elements.");
        ReadRow(lines, table, number);
    }
    while (lines.Next()) {
        const bool blank = std::all_of(lines.Text.begin(), lines.Text.end(),
                                       [](char c) { return IsBlank(c) || c == END_OF_TEXT; });
        if (!blank) lines.Refuse("the end of the file was expected behind element 107.");
        table.Tail += lines.Text + lines.End;
    }
    table.Rows = ELEMENT_MAX;
    return table;
}

ElementTable ReadElementFile(const std::string& path) {
    std::ifstream in = OpenToRead(path);
    return ReadElementFile(in, path);
}

std::string ElementFileText(const ElementTable& table) {
    std::string text;
    for (int row = 0; row < table.Rows; ++row) {
        for (const std::string& cell : Item(table.Cells, row)) text += cell + ",";
        text += Item(table.Ends, row);
    }
    return text + table.Tail;
}

void WriteElementFile(const std::string& path, const ElementTable& table) {
    if (table.Rows == 0) throw Fault(FaultNumber::Argument, "There is no element table to write.");
    ReplaceFile(path, ElementFileText(table));
}

}  // namespace vael
