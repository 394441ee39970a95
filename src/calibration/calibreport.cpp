// The calibration's report file: the spectra, the formula and its constants as lines of text.
#include "calibration/calibreport.h"

#include "core/text.h"

namespace vael {
namespace {

constexpr const char* END = "\r\n";

}  // namespace

std::string CalibFormula(CalibCurveKind kind) {
    return kind == CalibCurveKind::Line ? "E = A + Bx" : "E = A + Bx + Cx^2";
}

std::string CalibReport(std::span<const std::string> paths, CalibCurveKind kind,
                        const CalibConstants& constants) {
    std::string text;
    for (const std::string& path : paths) {
        const PathPieces pieces = SplitFilePath(path);
        text += pieces.Base() + ",  " + pieces.Drive + pieces.Folder + END;
    }
    text += std::string(" ") + END + CalibFormula(kind) + END + " " + END;
    const std::size_t numbers = kind == CalibCurveKind::Line ? 2 : 3;
    for (std::size_t k = 0; k < numbers; ++k) text += NumberText(constants[k]) + END;
    return text;
}

std::string CalibLabel(CalibCurveKind kind, const CalibConstants& constants) {
    const auto number = [&](std::size_t k) { return FormatNumber(constants[k], "0.####e+000"); };
    const std::string start = "Energy(keV) = (" + number(0) + ") + (" + number(1);
    if (kind == CalibCurveKind::Line) return start + ")*Ch";
    return start + ")*Ch + (" + number(2) + ")*Ch^2";
}

}  // namespace vael
