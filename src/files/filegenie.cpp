// FileGenie: the two forms that the dialogs call "Gennie File": .rpt, and .cnf that is only read.
#include "files/filegenie.h"

#include "core/cp932.h"
#include "core/fault.h"
#include "core/text.h"
#include "core/wholefile.h"
#include "files/textfile.h"
#include "files/trip.h"

#include <algorithm>
#include <memory>
#include <sstream>

// Layout of .rpt: lines that end in CR LF (a bare LF is read too), code page 932, columns in
// characters.
//   1      channel count N, right-aligned in 5 columns
//   block  N counts, eight a line, right-aligned in 7 columns with nothing between them; N of 0 has
//          no block and no line for it. Read as N numbers between blanks in any layout.
//   A      1-20 SampleName, 21-60 FileName, 61-68 date YY/MM/DD, 70-77 time HH:MM:SS, 78-80 blank
//   B      Pressure "," Temperature, in 30 columns; RealTime, right-aligned in 7
//   C      TwoTheta ",0," PressX "," PressY "," PressZ "," PressTZ, in 65 columns
//   D, E   "0,0,0", in 65 columns
//   F      EgcCoef[0] "," EgcCoef[1], in 65 columns
// A record whose year is no number has no date, and its time then stands 8 columns further left.
// What the reader makes of it is settled: eight characters of the file name, and the written real
// time as live time.
//
// Layout of .cnf, little-endian, offsets in bytes, of which only this is taken. The byte at 11
// chooses the base B: 164 gives 0, 182 and 190 give 4608, any other leaves 0.
//   B + 16944   64  title, the record's FileName
//   B + 17008   16  sample id, its SampleName
//   B + 17622   24  number list: PressLoad, Temperature
//   B + 17774   24  number list: TwoTheta
//   B + 17838  128  not used
//   B + 17966   64  number list: EgcCoef[0], EgcCoef[1]
//   C + 25600  4 x 4097  counts, signed; C is B, and 2048 more where the byte at 11 is 190. Files
//                        end with their 4096th, and no channel needs the last one.

namespace vael {
namespace {

// ---- .rpt, reading

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

/// Takes the next text between blanks off the front of `rest`; empty where there is none.
std::string_view TakeToken(std::string_view& rest) {
    std::size_t from = 0;
    while (from < rest.size() && IsBlank(rest[from])) ++from;
    std::size_t to = from;
    while (to < rest.size() && !IsBlank(rest[to])) ++to;
    const std::string_view token = rest.substr(from, to - from);
    rest.remove_prefix(to);
    return token;
}

/// A whole number at the right edge of its columns, written as a writer does: no zero leads it.
bool IsRightAligned(std::string_view cell) {
    std::size_t at = 0;
    while (at < cell.size() && cell[at] == ' ') ++at;
    if (at < cell.size() && cell[at] == '-') ++at;
    const std::string_view digits = cell.substr(at);
    return IsAllDigits(digits) && (digits.front() != '0' || digits.size() == 1);
}

/// How many right-aligned counts of 7 columns a line is made of; 0 where it is not. A count of
/// seven characters touches its neighbour there, and only the columns tell them apart.
int CellsOf(std::string_view line) {
    if (line.size() % COUNT_COLUMNS != 0) return 0;
    for (std::size_t at = 0; at < line.size(); at += COUNT_COLUMNS)
        if (!IsRightAligned(line.substr(at, COUNT_COLUMNS))) return 0;
    return static_cast<int>(line.size() / COUNT_COLUMNS);
}

/// The counts of one line into the channels from `at` on, at most to channel `count`.
class CountLine {
public:
    CountLine(const TextLines& lines, SpectrumData& data, int count)
        : lines_(lines), data_(data), count_(count) {}

    /// Gives the channel behind the last one and leaves in `line` what was not taken.
    int Take(std::string_view& line, int at) const {
        const std::string_view whole = line;
        const int due = std::min(COUNTS_A_LINE, count_ - at);
        int channel = at;
        while (channel < count_) {
            const std::string_view token = TakeToken(line);
            if (token.empty()) break;
            const auto value = CountIn(token);
            // Two counts that touch may look like one that fits: where the line is one of the
            // writer's, its columns decide.
            if (value && (token.size() <= COUNT_COLUMNS || CellsOf(whole) != due)) {
                Put(channel++, *value);
                continue;
            }
            if (CellsOf(whole) == 0)
                lines_.Fail("a count of 32 bits was expected, not " + Quoted(token));
            line = whole;
            return TakeCells(line, at);
        }
        return channel;
    }

private:
    void Put(int channel, std::int32_t value) const { Item(data_.Count, channel) = value; }
    int TakeCells(std::string_view& line, int at) const {
        for (; at < count_ && !line.empty(); line.remove_prefix(COUNT_COLUMNS))
            Put(at++, CountIn(line.substr(0, COUNT_COLUMNS)).value_or(0));
        return at;
    }
    const TextLines& lines_;
    SpectrumData& data_;
    int count_;
};

/// Line 1 and the count block; gives N and line A.
std::int16_t ReadBlock(TextLines& lines, SpectrumData& data, std::string& lineA) {
    std::string_view rest;
    std::string_view token;
    while (token.empty()) {
        rest = lines.Next("the number of channels");
        token = TakeToken(rest);
    }
    const auto count = CountIn(token);
    if (!count || *count < 0 || *count > MAX_CHANNELS)
        lines.Fail("0 to 8192 channels were expected, not " + Quoted(token));
    const CountLine counts(lines, data, *count);
    for (int at = counts.Take(rest, 0); at < *count; at = counts.Take(rest, at))
        rest = lines.Next("a line of counts");
    // The end of the last count's line goes with it; anything else on that line is the next one.
    if (std::all_of(rest.begin(), rest.end(), IsBlank))
        lineA = lines.Next("the line of the names");
    else
        lineA = rest.substr(IsBlank(rest.front()) ? 1 : 0);
    return static_cast<std::int16_t>(*count);
}

/// `count` characters from character `from` (counted from 1), blanks where the line has ended.
std::string Columns(const std::string& line, std::size_t from, std::size_t count) {
    const std::string before = FitCp932(line, from - 1);
    return FitCp932(std::string_view(line).substr(std::min(before.size(), line.size())), count);
}

/// One number list; a number behind its end is 0.
class NumberList {
public:
    explicit NumberList(std::string_view text) : values_(SplitNumbers(text)) {}
    [[nodiscard]] double At(std::size_t place) const {
        return place <= values_.size() ? values_[place - 1] : 0.0;
    }

private:
    std::vector<double> values_;
};

void ReadNames(const std::string& line, PropertyRecord& prop) {
    prop.SampleName.SetBytes(Trim(Columns(line, 1, 20)));
    prop.FileName.SetBytes(Trim(Columns(line, 21, 8)));
    prop.Memo.SetBytes("");
    prop.OpName.SetBytes("");
    prop.OpDate.SetBytes(DateToStore(Columns(line, 61, 8)));
    std::string time = Columns(line, 70, 8);
    std::erase(time, ':');
    prop.OpTime.SetBytes(time);
}

// ---- .cnf

constexpr std::size_t OFFSET_SELECTOR = 11;
constexpr std::size_t OFFSET_COUNTS = 25600;
constexpr std::size_t SIZE_COUNTS = 4 * std::size_t{DEFAULT_CHANNELS};
constexpr std::size_t BASE_LATER = 4608;
constexpr std::size_t COUNTS_LATER = 2048;
constexpr std::size_t LARGEST = BASE_LATER + COUNTS_LATER + OFFSET_COUNTS + SIZE_COUNTS;

[[noreturn]] void EndsEarly(std::size_t size, const std::string& expected) {
    throw Fault(FaultNumber::FileContent,
                "offset " + std::to_string(size) + ": the file ends, " + expected);
}

std::int32_t CountAt(const char* bytes) {
    const auto byte = [&](std::size_t k) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[k])) << (8 * k);
    };
    return static_cast<std::int32_t>(byte(0) | byte(1) | byte(2) | byte(3));
}

}  // namespace

void ReadRptText(std::istream& in, ReadTarget target) {
    target.LastSourceType = SOURCE_REPORT;
    PropertyRecord prop = target.Prop;  // becomes the slot's once the file was read whole
    ParamRecord& param = prop.Param;
    prop.SourceType = SOURCE_REPORT;

    TextLines lines(in);
    std::string lineA;
    const std::int16_t count = ReadBlock(lines, target.Data, lineA);
    ReadNames(lineA, prop);
    const NumberList b(lines.Next("the line of pressure and temperature"));
    param.Pressure = b.At(1);
    param.Temperature = b.At(2);
    param.LiveTime = b.At(3);  // written from RealTime: this crossing is kept
    const NumberList c(lines.Next("the line of 2 theta and the press"));
    param.TwoTheta = c.At(1);
    param.PressX = c.At(3);
    param.PressY = c.At(4);
    param.PressZ = c.At(5);
    param.PressTZ = c.At(6);
    (void)lines.Next("the first line of zeros");
    (void)lines.Next("the second line of zeros");
    const NumberList f(lines.Next("the line of the coefficients"));
    param.EgcCoef = {f.At(1), f.At(2), 0.0};
    param.MeasureType = 1;

    target.Prop = prop;
    target.Data.DataNo = count;
}

void WriteRptText(std::ostream& out, const SpectrumData& data, const PropertyRecord& prop) {
    constexpr const char* END = "\r\n";
    constexpr std::size_t COLUMNS = 65;
    const ParamRecord& p = prop.Param;
    const auto press = [](double value) { return FormatNumber(value, "##0.000"); };
    const std::string number = "     " + FormatNumber(data.DataNo, "####0");

    out << number.substr(number.size() - 5) << END << CountBlock(data);
    out << ReportNames(prop) << END;
    out << FitCp932(FormatNumber(p.Pressure, "###0.0") + "," + FormatNumber(p.Temperature, "#0.0"),
                    30)
        << RightAligned(FormatNumber(p.RealTime, "##0.0"), 7) << END;
    out << FitCp932(FormatNumber(p.TwoTheta, "##0.00000") + ",0," + press(p.PressX) + "," +
                        press(p.PressY) + "," + press(p.PressZ) + "," + press(p.PressTZ),
                    COLUMNS)
        << END;
    out << FitCp932("0,0,0", COLUMNS) << END << FitCp932("0,0,0", COLUMNS) << END;
    out << FitCp932(FormatNumber(p.EgcCoef[0], "###0.000") + "," +
                        FormatNumber(p.EgcCoef[1], "##0.000000"),
                    COLUMNS)
        << END;
}

void ReadCnfBody(std::istream& in, ReadTarget target) {
    // 1. All that is taken lies within the first bytes: one read, and nothing is stored before the
    //    file is known to be long enough.
    const auto image = std::make_unique_for_overwrite<char[]>(LARGEST);
    in.read(image.get(), LARGEST);
    const auto size = static_cast<std::size_t>(in.gcount());
    if (size <= OFFSET_SELECTOR) EndsEarly(size, "the byte at offset 11 was expected");
    const auto selector = static_cast<unsigned char>(image[OFFSET_SELECTOR]);
    const std::size_t base = selector == 182 || selector == 190 ? BASE_LATER : 0;
    const std::size_t counts = OFFSET_COUNTS + base + (selector == 190 ? COUNTS_LATER : 0);
    if (size < counts + SIZE_COUNTS)
        EndsEarly(size, "4096 counts up to offset " + std::to_string(counts + SIZE_COUNTS) +
                            " were expected");

    // 2. Texts and number lists.
    const auto field = [&](std::size_t offset, std::size_t length) {
        return std::string_view(image.get() + base + offset, length);
    };
    PropertyRecord& prop = target.Prop;
    prop.FileName.SetBytes(field(16944, 64));
    prop.SampleName.SetBytes(field(17008, 16));
    prop.OpName.SetBytes("");
    const NumberList press(field(17622, 24));
    prop.Param.PressLoad = press.At(1);
    prop.Param.Temperature = press.At(2);
    prop.Param.TwoTheta = NumberList(field(17774, 24)).At(1);
    const NumberList coefficients(field(17966, 64));
    prop.Param.EgcCoef = {coefficients.At(1), coefficients.At(2), 0.0};

    // 3. The first value of the block is overwritten by the second, the 4096 that follow it go to
    //    channels 1 to 4096 and are then moved up by one. So the second value stands in channels 1
    //    and 2, and the last two are lost; that is how this form has always been read.
    auto& channel = target.Data.Count;
    const char* const values = image.get() + counts;
    channel[0] = CountAt(values + 4);
    for (std::size_t i = 1; i < std::size_t{DEFAULT_CHANNELS}; ++i)
        channel[i] = CountAt(values + 4 * i);
    target.Data.DataNo = DEFAULT_CHANNELS;
}

std::int16_t SaveRpt(const std::string& path, const SpectrumData& data, const PropertyRecord& prop,
                     const FileTalk& talk) {
    if (FileExists(path) && !talk.ask("File already exist. Replace?(RPT)")) return FALSE_WORD;
    TellTouchingCounts(path, data, talk);
    return Writing(path, talk, false, [&](std::ostream& out) { WriteRptText(out, data, prop); });
}

std::int16_t LoadRpt(const std::string& path, ReadTarget target, const FileTalk& talk) {
    return Reading(path, talk, [&](std::string&) {
        std::ifstream in = OpenToRead(path);
        ReadRptText(in, target);
    });
}

std::int16_t LoadCnf(const std::string& path, ReadTarget target, const FileTalk& talk) {
    try {
        std::ifstream in = OpenToRead(path);
        ReadCnfBody(in, target);
        return TRUE_WORD;
    } catch (const Fault& fault) {
        talk.say(fault.Number() == FaultNumber::FileMissing ? "Fine NotFound" : "File Error");
        LogFault(path, fault, talk);
        return FALSE_WORD;
    }
}

}  // namespace vael
