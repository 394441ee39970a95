// The peak table as text: the values of a row in an axis unit, the "FitParam" file, the printed
// list.
#pragma once

#include "core/records.h"

#include <array>
#include <string>
#include <vector>

namespace vael {

/// One row of the peak report.
struct PeakLine {
    double Channel = 0.0;     // of the centre, counted from 1
    double Position = 0.0;    // of the centre, in the unit
    double Intensity = 0.0;   // area, counts
    double WidthCh = 0.0;     // full width at half maximum, channels
    double Width = 0.0;       // the same in the unit
    double WidthD = 0.0;      // the same in d, angstrom
    double Amplitude = 0.0;   // counts
    double Gauss = 0.0;       // percent
    bool OnePeakFit = false;  // "E": written by the fit of a single peak; else "N"
};

/// Columns of a row, in the order of the report.
inline constexpr int PEAK_COLUMNS = 9;
using PeakTexts = std::array<std::string, PEAK_COLUMNS>;

/// The values of a record. `param` is the calibration in force and `dac` the axis of spectra
/// recorded against the angle. A width in the unit is the difference of the conversions of Position
/// + Width and Position - Width; where the unit falls with the channel (d, wavelength, and d by the
/// angle) its magnitude. Faults: Division (unit 6 at an angle of 0).
[[nodiscard]] PeakLine PeakLineOf(const PeakRecord& peak, int unit, const ParamRecord& param,
                                  const DacAxis& dac);

/// The values as the report shows them, and the words above them.
[[nodiscard]] PeakTexts TextsOf(const PeakLine& line);
[[nodiscard]] PeakTexts PeakHeads(int unit);

/// Where the amplitude and the intensity of a record stand: each below its own word, or as the file
/// has them.
enum class PeakFields { BelowTheirWords, AsInTheFile };

/// The heading and a record a peak, their fields joined by commas. An empty table gives the heading
/// alone. Faults: as PeakLineOf.
[[nodiscard]] std::vector<std::string> PeakCsvLines(const PeakTable& peaks, int unit,
                                                    const ParamRecord& param, const DacAxis& dac,
                                                    PeakFields fields);

/// The whole "FitParam" file: the heading and a record a peak, each closed by carriage return and
/// line feed. An empty table gives the heading alone. Faults: as PeakLineOf.
[[nodiscard]] std::string FitParamCsv(const PeakTable& peaks, int unit, const ParamRecord& param,
                                      const DacAxis& dac);

/// The name proposed for that file: the spectrum's file name, which comes without folder and
/// extension, what the row is, "FitParam". `rowName` is that of the row; one that is none of the
/// four derived names stands for "Raw".
[[nodiscard]] std::string FitParamName(const std::string& fileName, const std::string& rowName);

/// The lines of the printed list: title, name of the measurement, heading, a line a peak whose
/// values end below the ends of their words. Unlike in the file each value stands below its own
/// word. Faults: as PeakLineOf.
[[nodiscard]] std::vector<std::string> PeakReportLines(const std::string& name,
                                                       const PeakTable& peaks, int unit,
                                                       const ParamRecord& param,
                                                       const DacAxis& dac);

}  // namespace vael
