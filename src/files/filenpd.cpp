// FileNPD: the text form that the dialogs call "Nippon high Pressure Data File (*.npd)".
#include "files/filenpd.h"

#include "core/fault.h"
#include "core/text.h"
#include "core/units.h"
#include "core/wholefile.h"

#include <algorithm>
#include <sstream>

// Layout: lines "key,value" that end in CR LF, read by position and not by key, code page 932.
//   1 Record length   2 Sample name (the record's FileName)   3 Operator   4 Profile number (its
//   SampleName)   5 Time   6 Measurement mode   7-9 EGC0-2   10 2Theta   11 Live time   12 Real
//   time
//   13 Dead time   14 Temperature in kelvin   15 Press load   16 Ring status   17 Beam intensity
//   18 Counting rate   19 Press   20 Incident slit   21 Receiving slit   22 Heating   23 Comment
//   then, behind the counted header lines: Ram Stroke, Data length N, Counting sec, and N lines
//   "channel,energy,count".
// The writer counts 27 header lines, the stroke among them, and the reader looks for the stroke
// behind the counted ones: this mismatch is the settled behaviour of both, so a file of this writer
// reads back with N in RamStroke, the counting seconds as its length and its first channel dropped.
// Files that carry a record length of 23 read correctly.

namespace vael {
namespace {

constexpr double KELVIN = 273.15;
constexpr int HEADER_READ = 23;

class Lines {
public:
    explicit Lines(std::istream& in) : in_(in) {}
    /// The next line without its end. Faults: FileContent when there is none.
    std::string Next(const char* expected) {
        ++number_;
        std::string line;
        if (!std::getline(in_, line))
            Fail(std::string("the file ends, ") + expected + " was expected");
        if (!line.empty() && line.back() == '\r') line.pop_back();
        return line;
    }
    [[nodiscard]] int Number() const { return number_; }
    [[noreturn]] void Fail(const std::string& what) const {
        throw Fault(FaultNumber::FileContent, "line " + std::to_string(number_) + ": " + what);
    }
    double Value(const std::string& text, const char* expected) const {
        const auto value = ParseNumber(text);
        if (!value)
            Fail(std::string(expected) + " was expected, not \"" + FromCp932(text.substr(0, 40)) +
                 "\"");
        return *value;
    }

private:
    std::istream& in_;
    int number_ = 0;
};

/// Behind the first comma, trimmed; a line without one is the value as a whole.
std::string Behind(const std::string& line, char mark = ',') {
    const auto at = line.find(mark);
    return Trim(at == std::string::npos ? line : line.substr(at + 1));
}

/// The numbers of a line " X(mm)=1.000 Y(mm)=2.000": each from behind a "=" to the next blank, the
/// last to the end of the line.
void Labelled(const Lines& lines, const std::string& line, std::initializer_list<double*> values) {
    std::size_t at = 0;
    std::size_t left = values.size();
    for (double* value : values) {
        --left;
        const auto equals = line.find('=', at);
        if (equals == std::string::npos) lines.Fail("a \"=\" with a number behind it was expected");
        const auto blank = left == 0 ? std::string::npos : line.find(' ', equals + 1);
        const std::string text = line.substr(
            equals + 1, blank == std::string::npos ? std::string::npos : blank - equals - 1);
        *value = lines.Value(Trim(text), "a number behind \"=\"");
        at = blank == std::string::npos ? line.size() : blank;
    }
}

std::string SixDigits(const std::string& time) {
    std::string digits;
    std::istringstream parts(time);
    for (std::string part; std::getline(parts, part, ':');)
        digits += part.size() == 1 ? "0" + part : part;
    return digits;
}

std::int16_t Whole(const Lines& lines, const std::string& text, const char* expected) {
    try {
        return Whole16(lines.Value(text, expected));
    } catch (const Fault& fault) {
        if (fault.Number() == FaultNumber::FileContent) throw;
        lines.Fail(std::string(expected) + " was expected, not \"" + FromCp932(text) + "\"");
    }
}

void ReadHeader(Lines& lines, PropertyRecord& prop) {
    ParamRecord& param = prop.Param;
    const auto value = [&](const char* expected) {
        const std::string line = lines.Next(expected);
        return lines.Value(Behind(line), expected);
    };
    prop.FileName.SetBytes(Behind(lines.Next("the sample name")));
    prop.OpName.SetBytes(Behind(lines.Next("the operator name")));
    prop.SampleName.SetBytes(Behind(lines.Next("the profile number")));
    const std::string moment = Behind(lines.Next("the time"));
    const auto piece = [&](std::size_t from, std::size_t size) {
        return from < moment.size() ? moment.substr(from, size) : std::string();
    };
    prop.OpDate.SetBytes(piece(0, 4) + piece(5, 2) + piece(8, 2));
    prop.OpTime.SetBytes(SixDigits(Trim(piece(10, std::string::npos))));
    const std::string mode = Behind(lines.Next("the measurement mode"));
    if (mode == "Real") param.MeasureType = 2;
    if (mode == "Live") param.MeasureType = 1;
    if (mode == "Separate") param.MeasureType = 4;
    for (double& coef : param.EgcCoef) coef = value("a coefficient of the energy");
    param.TwoTheta = value("2 theta in degrees");
    param.LiveTime = value("the live time");
    param.RealTime = value("the real time");
    param.DeadTime = value("the dead time");
    param.Temperature = value("the temperature in kelvin") - KELVIN;
    param.PressLoad = value("the press load");
    param.RingCurrent =
        lines.Value(Behind(lines.Next("the ring current"), '='), "the ring current");
    param.RingStatus = param.RingCurrent;
    param.IonChamber = value("the beam intensity");
    param.CountRate = value("the counting rate");
    Labelled(lines, lines.Next("the press conditions"),
             {&param.PressX, &param.PressY, &param.PressZ, &param.PressTZ});
    Labelled(lines, lines.Next("the incident slit"), {&param.InSlitV, &param.InSlitH});
    Labelled(lines, lines.Next("the receiving slit"),
             {&param.ReSlitV, &param.ReSlitH, &param.CollimatorSize});
    Labelled(lines, lines.Next("the heating conditions"),
             {&param.Volt, &param.Current2, &param.Power, &param.Resistance});
    prop.Memo.SetBytes(Behind(lines.Next("the comment")));
}

/// Behind the second comma, trimmed; a line without one is the value as a whole.
std::string CountText(const std::string& line) {
    const auto first = line.find(',');
    const auto second = first == std::string::npos ? first : line.find(',', first + 1);
    return Trim(second == std::string::npos ? line : line.substr(second + 1));
}

void ReadCounts(Lines& lines, SpectrumData& data, int count) {
    for (int i = 0; i < count; ++i) {
        const std::string line = lines.Next("a line \"channel,energy,count\"");
        if (i >= MAX_CHANNELS) lines.Fail("at most 8192 channels were expected");
        const auto value = ParseNumber(CountText(line));
        if (!value) continue;
        try {
            data.Count[static_cast<std::size_t>(i)] = Whole32(*value);
        } catch (const Fault&) {
            lines.Fail("a count of at most 32 bits was expected");
        }
    }
}

/// Text of a record in a line of its own: without the padding, line breaks as blanks.
std::string OneLine(std::string_view bytes, bool trimmed = true) {
    std::string text(bytes);
    for (char& c : text)
        if (c == '\r' || c == '\n' || c == '\0') c = ' ';
    return trimmed ? Trim(text) : text;
}

std::string TwoDigitField(std::string_view text) {
    const auto value = ParseNumber(text);
    return value ? FormatNumber(*value, "00") : std::string(text);
}

}  // namespace

void ReadNpdText(std::istream& in, ReadTarget target) {
    const PropertyRecord aside = target.Prop;
    target.Data = SpectrumData{};
    target.Prop.SourceType = SOURCE_NPD;
    target.LastSourceType = SOURCE_NPD;
    Lines lines(in);
    try {
        const std::string first = lines.Next("the record length");
        const std::int16_t header = Whole(lines, Behind(first), "the number of header lines");
        ReadHeader(lines, target.Prop);
        for (int skip = header - HEADER_READ; skip > 0; --skip)
            (void)lines.Next("a further header line");
        target.Prop.Param.RamStroke =
            ParseNumber(Behind(lines.Next("the ram stroke"))).value_or(0.0);
        const std::string length = Behind(lines.Next("the data length"));
        const std::int16_t count = Whole(lines, length, "the number of channels");
        (void)lines.Next("the counting seconds");
        ReadCounts(lines, target.Data, count);
        target.Data.DataNo = count;
    } catch (...) {
        target.Prop = aside;
        throw;
    }
}

void WriteNpdText(std::ostream& out, const SpectrumData& data, const PropertyRecord& prop) {
    constexpr const char* END = "\r\n";
    const ParamRecord& p = prop.Param;
    const bool live = p.MeasureType == 1 || p.MeasureType == 3;
    const std::string date = OneLine(prop.OpDate.View(), false);
    const std::string time = OneLine(prop.OpTime.View(), false);
    const auto three = [](double value) { return FormatNumber(value, "#0.000"); };
    const auto two = [](double value) { return FormatNumber(value, "#0.00"); };

    out << "Record length,27" << END;
    out << "Sample name," << OneLine(prop.FileName.View()) << END;
    out << "Operator name," << OneLine(prop.OpName.View()) << END;
    out << "Profile number," << OneLine(prop.SampleName.View()) << END;
    out << "Time," << date.substr(0, 4) << '-' << date.substr(4, 2) << '-' << date.substr(6, 2)
        << ' ' << TwoDigitField(time.substr(0, 2)) << ':' << time.substr(2, 2) << ':'
        << time.substr(4, 2) << END;
    out << "Measurement mode," << (live ? "Live" : p.MeasureType == 4 ? "Separate" : "Real") << END;
    for (std::size_t k = 0; k < 3; ++k)
        out << "EGC" << k << ',' << FormatNumber(p.EgcCoef[k], "0.00000E+000") << END;
    out << "2Theta(deg)," << FormatNumber(p.TwoTheta, "#0.0000") << END;
    out << "Live time(sec)," << two(p.LiveTime) << END;
    out << "Real time(sec)," << two(p.RealTime) << END;
    out << "Dead time(%)," << FormatNumber(p.DeadTime, "#0.00000") << END;
    out << "Temperature(K)," << two(p.Temperature + KELVIN) << END;
    out << "Press load(ton)," << two(p.PressLoad) << END;
    out << "Ring status,current(mA)=" << two(p.RingCurrent) << END;
    out << "Beam intensity," << two(p.IonChamber) << END;
    out << "Counting rate," << two(p.CountRate) << END;
    out << "Press conditions, X(mm)=" << three(p.PressX) << " Y(mm)=" << three(p.PressY)
        << " Z(mm)=" << three(p.PressZ) << " PHI(deg)=" << three(p.PressTZ) << END;
    out << "Incident slit conditions, V(mm)=" << three(p.InSlitV) << " H(mm)=" << three(p.InSlitH)
        << END;
    out << "Receiving slit conditions, V(mm)=" << three(p.ReSlitV) << " H(mm)=" << three(p.ReSlitH)
        << " Collimator(mm)=" << three(p.CollimatorSize) << END;
    out << "Heating conditions, V(V)=" << two(p.Volt) << " C(A)=" << two(p.Current2)
        << " P(W)=" << two(p.Power) << " R(OHM)=" << three(p.Resistance) << END;
    out << "Comment," << OneLine(prop.Memo.View(), false) << END;
    out << "Ram Stroke," << two(p.RamStroke) << END;
    out << ',' << END << ',' << END << ',' << END;
    out << "Data length, " << data.DataNo << END;
    out << "Counting sec, " << three(live ? p.LiveTime : p.RealTime) << END;
    for (int i = 0; i < data.DataNo; ++i)
        out << i + 1 << ',' << FormatNumber(ChToEnergy(i + 1.0, p.EgcCoef), "0.0000") << ','
            << Item(data.Count, i) << END;
}

std::int16_t SaveNpd(const std::string& path, const SpectrumData& data, const PropertyRecord& prop,
                     const FileTalk& talk) {
    if (FileExists(path) && !talk.ask("File already exist. Replace?(NPD)")) return FALSE_WORD;
    try {
        std::ostringstream text;
        WriteNpdText(text, data, prop);
        ReplaceFile(path, text.view());
        return TRUE_WORD;
    } catch (const Fault& fault) {
        talk.log(fault.what());
        return FALSE_WORD;
    }
}

std::int16_t LoadNpd(const std::string& path, ReadTarget target, const FileTalk& talk) {
    try {
        std::ifstream in = OpenToRead(path);
        ReadNpdText(in, target);
        return TRUE_WORD;
    } catch (const Fault& fault) {
        const std::string what = fault.what();
        talk.log(what.starts_with(path) ? what : path + ": " + what + ".");
        return FALSE_WORD;
    }
}

}  // namespace vael
