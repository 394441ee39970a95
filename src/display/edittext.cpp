// The texts of a printed page: the block of measurement lines and the table of peaks.
#include "display/edittext.h"

#include "analysis/peaktext.h"
#include "core/text.h"

namespace vael {
namespace {

/// The text, or nothing where the record has no digit of it.
std::string Known(const std::string& text) {
    return text.find_first_of("0123456789") == std::string::npos ? std::string() : text;
}

}  // namespace

std::string DateOf(const PropertyRecord& property) {
    const std::string_view date = property.OpDate.View();
    return FromCp932(date.substr(0, 4)) + "/" + FromCp932(date.substr(4, 2)) + "/" +
           FromCp932(date.substr(6, 2));
}

std::string TimeOf(const PropertyRecord& property) {
    const std::string_view time = property.OpTime.View();
    return FromCp932(time.substr(0, 2)) + ":" + FromCp932(time.substr(2, 2)) + "." +
           FromCp932(time.substr(4, 2));
}

std::vector<std::pair<std::string, std::string>> MakePropertyText(const PropertyRecord& property) {
    constexpr const char* COUNTS = "#####0.00";
    constexpr const char* ANGLE = "#0.00000";
    constexpr const char* STATE = "####0.000";
    const ParamRecord& param = property.Param;
    return {{"Measurement Name ", property.FileName.Trimmed()},
            {"Sample Name      ", property.SampleName.Trimmed()},
            {"Operation Date   ", Known(DateOf(property))},
            {"Start Time       ", Known(TimeOf(property))},
            {"Operater Name    ", property.OpName.Trimmed()},
            {"Comment          ", property.Memo.Trimmed()},
            {"", ""},
            {"Real Time (Sec)  ", FormatNumber(param.RealTime, COUNTS)},
            {"Live Time (Sec)  ", FormatNumber(param.LiveTime, COUNTS)},
            {"2θ (Deg)        ", FormatNumber(param.TwoTheta, ANGLE)},
            {"Pressure(GPa) ", FormatNumber(param.Pressure, STATE)},
            {"Temperature(℃)  ", FormatNumber(param.Temperature, STATE)},
            {"Ion Chamber (mV) ", FormatNumber(param.IonChamber, COUNTS)},
            {"Ring Current (mA)     ", FormatNumber(param.RingCurrent, COUNTS)},
            {"Count Rate (cps) ", FormatNumber(param.CountRate, COUNTS)}};
}

std::vector<std::string> MakePeakText(const PeakTable& peaks, int unit, const ParamRecord& param,
                                      const DacAxis& dac) {
    return PeakCsvLines(peaks, unit, param, dac, PeakFields::BelowTheirWords);
}

}  // namespace vael
