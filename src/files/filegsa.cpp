// FileGSA: the powder data file that the dialogs call "GSAS File (*.gsa)".
#include "files/filegsa.h"

#include "core/fault.h"
#include "core/text.h"
#include "files/npdlines.h"
#include "files/trip.h"

#include <algorithm>

// Layout as written, lines that end in CR LF, code page 932:
//   1  " File: " and the file name, 27 columns; "Date: " and the time, to column 65; "2theta = ";
//      80 columns in all, which cut the last digit of an angle from 10 degrees on
//   2  "BANK 1 ", N in 6 columns, records in 4, "EDS ", the energy of channel 1, the slope and the
//      curvature in 13 columns each, a zero, " STD"; 80 columns
//   then ten counts a line, each right-aligned in 8 columns; what is wider stands in full
// The records are told as N div 10 plus 1, also where N mod 10 is 0 and a line fewer follows. The
// last line is filled up to ten values with "0".
// A count of 10000000 or more would not fit: then all are divided by 10, towards zero. On that road
// the values of an unfilled last line are all taken from one channel, ten behind the first that is
// left (the first of all where no full line was written): so it was settled, and so it is kept.
//
// Layout as read: not this form, but that of .npd without comment and stroke: behind line 22 and
// the further header lines that line 1 tells, the data length, one line that is dropped, and N
// lines "channel,energy,count". A .npd file of a record length of 27 is read whole by it.

namespace vael {
namespace {

constexpr const char* END = "\r\n";
constexpr int A_LINE = 10;                     // values
constexpr std::size_t CELL = 8;                // columns of a value
constexpr std::int32_t TOO_WIDE = 10'000'000;  // eight digits: no blank before it

std::string FileLine(const PropertyRecord& prop) {
    const std::string file = FitCp932(" File: " + OneLine(prop.FileName.View()), 27);
    const std::string dated = FitCp932(file + "Date: " + NpdMoment(prop), 65);
    return FitCp932(dated + "2theta = " + FormatNumber(prop.Param.TwoTheta, "#0.0000"), 80);
}

std::string BankLine(int channels, const ParamRecord& param) {
    const auto number = [](double value) {
        return RightAligned(FormatNumber(value, "0.00000E+00"), 13);
    };
    return FitCp932("BANK 1 " + FitCp932(std::to_string(channels), 6) +
                        FitCp932(std::to_string(channels / A_LINE + 1), 4) + "EDS " +
                        number(param.EgcCoef[0] + param.EgcCoef[1]) + number(param.EgcCoef[1]) +
                        number(param.EgcCoef[2]) + "  0.00000E+00" + " STD",
                    80);
}

}  // namespace

void WriteGsaText(std::ostream& out, const SpectrumData& data, const PropertyRecord& prop) {
    const int channels = std::max<int>(data.DataNo, 0);
    out << FileLine(prop) << END << BankLine(channels, prop.Param) << END;

    bool divided = false;
    for (int i = 0; i < channels; ++i) divided = divided || Item(data.Count, i) >= TOO_WIDE;
    const int full = channels / A_LINE;
    const int left = channels % A_LINE;
    const auto value = [&](int i) { return Item(data.Count, i) / (divided ? 10 : 1); };
    std::string line;
    for (int row = 0; row < full; ++row) {
        line.clear();
        for (int k = 0; k < A_LINE; ++k) AddRight(line, value(row * A_LINE + k), CELL);
        out << line << END;
    }
    if (left == 0) return;
    line.clear();
    const int stuck = full > 0 ? full * A_LINE + A_LINE : 0;
    for (int k = 0; k < left; ++k) AddRight(line, value(divided ? stuck : full * A_LINE + k), CELL);
    for (int k = left; k < A_LINE; ++k) AddRight(line, 0, CELL);
    out << line << END;
}

void ReadGsaText(std::istream& in, ReadTarget target) {
    ReadNpdForm(in, target, [&](TextLines& lines) {
        const std::int16_t header = ReadNpdShared(lines, target.Prop);
        SkipNpdLines(lines, header - NPD_SHARED_LINES);
        ReadNpdCounts(lines, lines.Next("the data length"), target.Data);
    });
}

std::int16_t SaveGsa(const std::string& path, const SpectrumData& data, const PropertyRecord& prop,
                     const FileTalk& talk) {
    if (FileExists(path) && !talk.ask("File already exist. Replace?(GSA)")) return FALSE_WORD;
    return Writing(path, talk, false, [&](std::ostream& out) { WriteGsaText(out, data, prop); });
}

std::int16_t LoadGsa(const std::string& path, ReadTarget target, const FileTalk& talk) {
    return Reading(path, talk, [&](std::string&) {
        std::ifstream in = OpenToRead(path);
        ReadGsaText(in, target);
    });
}

}  // namespace vael
