// The grammar that the readers of .npd and .gsa share: lines "key,value" read by their position.
#pragma once

#include "files/filevael.h"

#include <istream>
#include <string>
#include <string_view>

namespace vael {

/// Header lines that both forms share: "Record length," to "Heating conditions,".
inline constexpr int NPD_SHARED_LINES = 22;

/// 0 degrees Celsius in kelvin, the unit of the temperature in both forms.
inline constexpr double NPD_KELVIN = 273.15;

/// A text's lines one after the other. Holds a piece of the input at a time, not all of it.
class NpdLines {
public:
    explicit NpdLines(std::istream& in) : in_(&in) {}
    /// The next line without its end (CR LF or LF); it stands until the next call. Faults:
    /// FileContent when there is none, saying that `expected` was.
    std::string_view Next(const char* expected);
    [[noreturn]] void Fail(const std::string& what) const;
    /// Faults: FileContent for a text that is no number.
    [[nodiscard]] double Value(std::string_view text, const char* expected) const;
    /// The same as a whole number of 16 bits.
    [[nodiscard]] std::int16_t Whole(std::string_view text, const char* expected) const;

private:
    bool More();
    std::istream* in_;
    std::string held_;
    std::size_t at_ = 0;
    int number_ = 0;
};

/// Behind the first `mark`, trimmed; a line without one is the value as a whole.
[[nodiscard]] std::string_view NpdValue(std::string_view line, char mark = ',');

/// Lines 1 to 22 into the record; the number of header lines that line 1 tells. Faults:
/// FileContent naming the line.
std::int16_t ReadNpdShared(NpdLines& lines, PropertyRecord& prop);

/// Skips `skip` lines (none below 0).
void SkipNpdLines(NpdLines& lines, int skip);

/// The data length (from 1 line), the line behind it, and that many lines "channel,energy,count".
/// Faults: FileContent naming the line; what came before stands in `data`, its length unset.
void ReadNpdCounts(NpdLines& lines, std::string_view lengthLine, SpectrumData& data);

/// "YYYY-MM-DD hh:mm:ss" of a record as both writers print it.
[[nodiscard]] std::string NpdMoment(const PropertyRecord& prop);

/// A record's text within a line: line breaks and NUL bytes as blanks.
[[nodiscard]] std::string OneLine(std::string_view bytes);

/// `read(lines)` with the spectrum cleared and the kind of file set to 4, as both readers begin. A
/// fault puts the record back as it was.
template <class Read>
void ReadNpdForm(std::istream& in, ReadTarget target, Read read) {
    const PropertyRecord aside = target.Prop;
    target.Data = SpectrumData{};
    target.Prop.SourceType = SOURCE_NPD;
    target.LastSourceType = SOURCE_NPD;
    NpdLines lines(in);
    try {
        read(lines);
    } catch (...) {
        target.Prop = aside;
        throw;
    }
}

}  // namespace vael
