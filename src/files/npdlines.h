// The grammar that the readers of .npd and .gsa share: lines "key,value" read by their position.
#pragma once

#include "files/filevael.h"
#include "files/textfile.h"

#include <istream>
#include <string>
#include <string_view>

namespace vael {

/// Header lines that both forms share: "Record length," to "Heating conditions,".
inline constexpr int NPD_SHARED_LINES = 22;

/// 0 degrees Celsius in kelvin, the unit of the temperature in both forms.
inline constexpr double NPD_KELVIN = 273.15;

/// Behind the first `mark`, trimmed; a line without one is the value as a whole.
[[nodiscard]] std::string_view NpdValue(std::string_view line, char mark = ',');

/// Lines 1 to 22 into the record; the number of header lines that line 1 tells. Faults:
/// FileContent naming the line.
std::int16_t ReadNpdShared(TextLines& lines, PropertyRecord& prop);

/// Skips `skip` lines (none below 0).
void SkipNpdLines(TextLines& lines, int skip);

/// The data length (from 1 line), the line behind it, and that many lines "channel,energy,count".
/// Faults: FileContent naming the line; what came before stands in `data`, its length unset.
void ReadNpdCounts(TextLines& lines, std::string_view lengthLine, SpectrumData& data);

/// "YYYY-MM-DD hh:mm:ss" of a record as both writers print it.
[[nodiscard]] std::string NpdMoment(const PropertyRecord& prop);

/// `read(lines)` with the spectrum cleared and the kind of file set to 4, as both readers begin. A
/// fault puts the record back as it was.
template <class Read>
void ReadNpdForm(std::istream& in, ReadTarget target, Read read) {
    const PropertyRecord aside = target.Prop;
    target.Data = SpectrumData{};
    target.Prop.SourceType = SOURCE_NPD;
    target.LastSourceType = SOURCE_NPD;
    TextLines lines(in);
    try {
        read(lines);
    } catch (...) {
        target.Prop = aside;
        throw;
    }
}

}  // namespace vael
