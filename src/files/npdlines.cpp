// The grammar that the readers of .npd and .gsa share: lines "key,value" read by their position.
#include "files/npdlines.h"

#include "core/fault.h"
#include "core/text.h"

#include <sstream>

namespace vael {
namespace {

/// The numbers of a line " X(mm)=1.000 Y(mm)=2.000": each from behind a "=" to the next blank, the
/// last to the end of the line.
void Labelled(const TextLines& lines, std::string_view line,
              std::initializer_list<double*> values) {
    std::size_t at = 0;
    std::size_t left = values.size();
    for (double* value : values) {
        --left;
        const auto equals = line.find('=', at);
        if (equals == std::string_view::npos)
            lines.Fail("a \"=\" with a number behind it was expected");
        const auto blank = left == 0 ? std::string_view::npos : line.find(' ', equals + 1);
        const std::string_view text =
            line.substr(equals + 1, blank == std::string_view::npos ? std::string_view::npos
                                                                    : blank - equals - 1);
        *value = lines.Value(TrimView(text), "a number behind \"=\"");
        at = blank == std::string_view::npos ? line.size() : blank;
    }
}

std::string SixDigits(const std::string& time) {
    std::string digits;
    std::istringstream parts(time);
    for (std::string part; std::getline(parts, part, ':');)
        digits += part.size() == 1 ? "0" + part : part;
    return digits;
}

/// Date and time at their fixed places of "YYYY-MM-DD hh:mm:ss".
void TakeMoment(std::string_view moment, PropertyRecord& prop) {
    const auto piece = [&](std::size_t from, std::size_t size) {
        return std::string(from < moment.size() ? moment.substr(from, size) : std::string_view());
    };
    prop.OpDate.SetBytes(piece(0, 4) + piece(5, 2) + piece(8, 2));
    prop.OpTime.SetBytes(SixDigits(Trim(piece(10, std::string_view::npos))));
}

/// Behind the second comma, trimmed; a line without one is the value as a whole.
std::string_view CountText(std::string_view line) {
    const auto first = line.find(',');
    const auto second = first == std::string_view::npos ? first : line.find(',', first + 1);
    return TrimView(second == std::string_view::npos ? line : line.substr(second + 1));
}

std::string TwoDigitField(std::string_view text) {
    const auto value = ParseNumber(text);
    return value ? FormatNumber(*value, "00") : std::string(text);
}

}  // namespace

std::string_view NpdValue(std::string_view line, char mark) {
    const auto at = line.find(mark);
    return TrimView(at == std::string_view::npos ? line : line.substr(at + 1));
}

std::int16_t ReadNpdShared(TextLines& lines, PropertyRecord& prop) {
    ParamRecord& param = prop.Param;
    const auto value = [&](const char* expected) {
        const std::string_view line = lines.Next(expected);
        return lines.Value(NpdValue(line), expected);
    };
    const std::int16_t header =
        lines.Whole(NpdValue(lines.Next("the record length")), "the number of header lines");
    prop.FileName.SetBytes(NpdValue(lines.Next("the sample name")));
    prop.OpName.SetBytes(NpdValue(lines.Next("the operator name")));
    prop.SampleName.SetBytes(NpdValue(lines.Next("the profile number")));
    TakeMoment(NpdValue(lines.Next("the time")), prop);
    const std::string_view mode = NpdValue(lines.Next("the measurement mode"));
    if (mode == "Real") param.MeasureType = 2;
    if (mode == "Live") param.MeasureType = 1;
    if (mode == "Separate") param.MeasureType = 4;
    for (double& coef : param.EgcCoef) coef = value("a coefficient of the energy");
    param.TwoTheta = value("2 theta in degrees");
    param.LiveTime = value("the live time");
    param.RealTime = value("the real time");
    param.DeadTime = value("the dead time");
    param.Temperature = value("the temperature in kelvin") - NPD_KELVIN;
    param.PressLoad = value("the press load");
    param.RingCurrent =
        lines.Value(NpdValue(lines.Next("the ring current"), '='), "the ring current");
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
    return header;
}

void SkipNpdLines(TextLines& lines, int skip) {
    for (; skip > 0; --skip) (void)lines.Next("a further header line");
}

void ReadNpdCounts(TextLines& lines, std::string_view lengthLine, SpectrumData& data) {
    const std::int16_t count = lines.Whole(NpdValue(lengthLine), "the number of channels");
    (void)lines.Next("the counting seconds");
    for (int i = 0; i < count; ++i) {
        const std::string_view line = lines.Next("a line \"channel,energy,count\"");
        if (i >= MAX_CHANNELS) lines.Fail("at most 8192 channels were expected");
        const auto value = ParseNumber(CountText(line));
        if (!value) continue;
        try {
            data.Count[static_cast<std::size_t>(i)] = Whole32(*value);
        } catch (const Fault&) {
            lines.Fail("a count of at most 32 bits was expected");
        }
    }
    data.DataNo = count;
}

std::string NpdMoment(const PropertyRecord& prop) {
    const std::string date = OneLine(prop.OpDate.View());
    const std::string time = OneLine(prop.OpTime.View());
    return date.substr(0, 4) + '-' + date.substr(4, 2) + '-' + date.substr(6, 2) + ' ' +
           TwoDigitField(time.substr(0, 2)) + ':' + time.substr(2, 2) + ':' + time.substr(4, 2);
}

}  // namespace vael
