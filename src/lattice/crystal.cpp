// The crystal table: reference cells with their reflections, read from crystal.dat.
#include "lattice/crystal.h"

#include "core/cp932.h"
#include "core/fault.h"
#include "core/text.h"
#include "core/wholefile.h"

#include <cmath>
#include <fstream>
#include <istream>

namespace vael {
namespace {

constexpr int COMMENT_LINES = 10;
constexpr std::size_t LINE_MAX_BYTES = 65536;  // a longer line is no text of ours

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

/// Hands out the fields of a text, one after another over the ends of lines, and knows its line.
class FieldReader {
public:
    FieldReader(std::istream& in, std::string_view name) : in_(in), name_(name) {}

    [[noreturn]] void Refuse(const std::string& expected) const {
        throw Fault(FaultNumber::FileContent,
                    name_ + ", line " + std::to_string(line_) + ": " + expected);
    }

    /// The next whole line; false at the end of the text.
    bool NextLine() {
        text_.clear();
        at_ = 0;
        std::streambuf* buffer = in_.rdbuf();
        int c = buffer->sbumpc();
        if (c == std::char_traits<char>::eof()) return false;
        ++line_;
        for (; c != std::char_traits<char>::eof() && c != '\n'; c = buffer->sbumpc()) {
            if (text_.size() == LINE_MAX_BYTES)
                Refuse("a line of text was expected; it is too long.");
            text_ += static_cast<char>(c);
        }
        return true;
    }

    /// The next field without its quotes, and whether it stood in quotes. Blank lines are passed
    /// over. `isName`: an unquoted field runs to the comma when one follows on its line.
    std::string Field(const std::string& expected, bool isName = false) {
        if (!SkipToField()) Refuse("the file ends where " + expected + " was expected.");
        if (text_[at_] == '"') return Quoted();
        std::size_t end = text_.find(',', at_);
        if (!isName || end == std::string::npos) {
            end = at_;
            while (end < text_.size() && text_[end] != ',' && !IsBlank(text_[end])) ++end;
        }
        std::string field = text_.substr(at_, end - at_);
        while (!field.empty() && IsBlank(field.back())) field.pop_back();
        at_ = end;
        PassSeparator();
        return field;
    }

    double RealField(const std::string& expected) {
        const std::string field = Field(expected);
        const auto value = ParseNumber(field);
        if (!value) Refuse(expected + " was expected, not " + Shown(field) + ".");
        return *value;
    }

    std::int16_t WholeField(const std::string& expected) {
        const double value = RealField(expected);
        if (value != std::floor(value) || std::fabs(value) > 32767.0)
            Refuse(expected + " was expected, a whole number of 16 bits.");
        return static_cast<std::int16_t>(value);
    }

    /// True when nothing but blanks is left.
    bool AtEnd() { return !SkipToField(); }

    static std::string Shown(std::string_view field) {
        std::string text(1, '"');
        text += FromCp932(CutCp932(field, 40));
        text += '"';
        return text;
    }

private:
    /// Moves to the first character of the next field; false at the end of the text.
    bool SkipToField() {
        for (;;) {
            while (at_ < text_.size() && IsBlank(text_[at_])) ++at_;
            if (at_ < text_.size()) return true;
            if (!NextLine()) return false;
        }
    }

    std::string Quoted() {
        const std::size_t end = text_.find('"', at_ + 1);
        if (end == std::string::npos) Refuse("a closing quote was expected.");
        std::string field = text_.substr(at_ + 1, end - at_ - 1);
        at_ = end + 1;
        PassSeparator();
        return field;
    }

    /// Blanks, and one comma behind them, belong to the field before.
    void PassSeparator() {
        while (at_ < text_.size() && IsBlank(text_[at_])) ++at_;
        if (at_ < text_.size() && text_[at_] == ',') ++at_;
    }

    std::istream& in_;
    std::string name_;
    std::string text_;
    std::size_t at_ = 0;
    int line_ = 0;
};

CrystalRecord ReadCrystal(FieldReader& in, int number) {
    const std::string which = " of crystal " + std::to_string(number + 1);
    CrystalRecord crystal;
    crystal.Name = FromCp932(in.Field("the name" + which, true));
    crystal.System = in.WholeField("the crystal system" + which);
    crystal.A = in.RealField("a" + which);
    crystal.B = in.RealField("b" + which);
    crystal.C = in.RealField("c" + which);
    crystal.Alpha = in.RealField("alpha" + which);
    crystal.Beta = in.RealField("beta" + which);
    crystal.Gamma = in.RealField("gamma" + which);
    for (;;) {
        const std::string what = " of reflection " + std::to_string(crystal.Count + 1) + which +
                                 " (or 0 0 0 behind the last one)";
        const std::int16_t h = in.WholeField("h" + what);
        const std::int16_t k = in.WholeField("k" + what);
        const std::int16_t l = in.WholeField("l" + what);
        if (h == 0 && k == 0 && l == 0) return crystal;
        if (crystal.Count == REFLECTION_MAX)
            in.Refuse("0 0 0 was expected behind reflection 101" + which +
                      ", which has more than fit.");
        const auto row = static_cast<std::size_t>(crystal.Count);
        crystal.Hs[row] = h;
        crystal.Ks[row] = k;
        crystal.Ls[row] = l;
        ++crystal.Count;
    }
}

}  // namespace

std::string SystemCode(int system) {
    constexpr std::array<const char*, 6> codes{"CUB", "TET", "HEX", "ORT", "MON", "TRI"};
    return system >= 0 && system < 6 ? codes[static_cast<std::size_t>(system)] : "UNK";
}

std::string SystemListText(int system) {
    constexpr std::array<const char*, 6> names{"Cubic",        "Tetragonal", "Hexagonal",
                                               "Orthorhombic", "Monoclinic", "Triclinic"};
    return system >= 0 && system < 6 ? names[static_cast<std::size_t>(system)] : "";
}

std::string SystemLogName(int system) {
    constexpr std::array<const char*, 6> names{"CUBIC",        "TETRAGONAL", "HEXAGONAL",
                                               "ORTHORHOMBIC", "MONOCLINIC", "TRICLINIC"};
    return system >= 0 && system < 6 ? names[static_cast<std::size_t>(system)] : "";
}

CrystalTable ReadCrystalFile(std::istream& in, std::string_view name) {
    FieldReader reader(in, name);
    for (int i = 0; i < COMMENT_LINES; ++i)
        if (!reader.NextLine()) reader.Refuse("the file ends in its ten lines of comment.");
    const std::string expected = "the number of crystals, 0 to 31,";
    // The comments are whole lines: the count starts on a new one.
    if (!reader.NextLine()) reader.Refuse("the file ends where " + expected + " was expected.");
    const std::int16_t count = reader.WholeField(expected);
    if (count < 0 || count > CRYSTAL_MAX)
        reader.Refuse(expected + " was expected, not " + std::to_string(count) + ".");

    CrystalTable table;
    table.CrystalCount = count;
    for (int i = 0; i < count; ++i) Item(table.Crystals, i) = ReadCrystal(reader, i);
    // A count of 0 switches the list off; any other one has to be that of the file.
    if (count > 0 && !reader.AtEnd())
        reader.Refuse("the end of the file was expected behind crystal " + std::to_string(count) +
                      ", the last one by the count.");
    return table;
}

CrystalTable ReadCrystalFile(const std::string& path) {
    std::ifstream in = OpenToRead(path);
    return ReadCrystalFile(in, path);
}

std::string MarkerKey(std::string_view name) { return std::string(name.substr(0, name.find(' '))); }

int FindCrystal(const CrystalTable& table, std::string_view wanted) {
    if (wanted.empty()) return -1;
    for (int i = 0; i < table.CrystalCount; ++i) {
        const std::string& name = Item(table.Crystals, i).Name;
        const std::string key = MarkerKey(name);
        if (key == wanted || name == wanted ||
            Trim(std::string_view(name).substr(key.size())) == wanted)
            return i;
    }
    return -1;
}

}  // namespace vael
