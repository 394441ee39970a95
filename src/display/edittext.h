// The texts of a printed page: the block of measurement lines and the table of peaks.
#pragma once

#include "core/records.h"

#include <string>
#include <utility>
#include <vector>

namespace vael {

/// The date of a measurement as "2018/10/10", and its time as "09:05.41": the second separator is a
/// point, as it was settled.
[[nodiscard]] std::string DateOf(const PropertyRecord& property);
[[nodiscard]] std::string TimeOf(const PropertyRecord& property);

/// Fifteen rows of a heading and a value; the seventh is empty. A date or time that is not known
/// has no value.
[[nodiscard]] std::vector<std::pair<std::string, std::string>> MakePropertyText(
    const PropertyRecord& property);

/// The heading of the peak table with its unit, and a row a peak, fields separated by commas; each
/// value stands below its own word. `param` is the calibration in force. Faults: Division (unit 6
/// at an angle of 0).
[[nodiscard]] std::vector<std::string> MakePeakText(const PeakTable& peaks, int unit,
                                                    const ParamRecord& param, const DacAxis& dac);

}  // namespace vael
