// The calibration's report file: the spectra, the formula and its constants as lines of text.
#pragma once

#include "calibration/calibfit.h"

#include <span>
#include <string>

namespace vael {

/// Name of the report in the program's folder.
inline constexpr const char* CALIB_REPORT = "Calib_Data.txt";

/// The formula of a kind in words.
[[nodiscard]] std::string CalibFormula(CalibCurveKind kind);

/// The lines of the report, in UTF-8 with CR LF: each spectrum's name and its folder, a line
/// of one blank, the formula, another such line, A, B and for a parabola C, a number a line.
[[nodiscard]] std::string CalibReport(std::span<const std::string> paths, CalibCurveKind kind,
                                      const CalibConstants& constants);

/// The curve in words, such as "Energy(keV) = (5.69e-002) + (3.1629e-002)*Ch".
[[nodiscard]] std::string CalibLabel(CalibCurveKind kind, const CalibConstants& constants);

}  // namespace vael
