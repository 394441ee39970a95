// The peak table as text: the values of a row in an axis unit, the "FitParam" file, the printed
// list.
#include "analysis/peaktext.h"

#include "core/fault.h"
#include "core/text.h"
#include "core/units.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vael {
namespace {

// Columns as they stand in the report.
constexpr std::size_t INTENSITY = 2;
constexpr std::size_t WIDTH_D = 5;  // has no word in the printed heading, and is not printed
constexpr std::size_t AMPLITUDE = 6;

double WidthIn(int unit, const PeakRecord& peak, const ParamRecord& param, const DacAxis& dac) {
    const double width = ChToUnit(unit, peak.Position + peak.Width, param, dac) -
                         ChToUnit(unit, peak.Position - peak.Width, param, dac);
    const bool falls = unit == UNIT_D || unit == UNIT_A || unit == UNIT_2THETA;
    return falls ? std::fabs(width) : width;
}

std::string InBrackets(int unit) { return "(" + UnitAbbrev(unit) + ")"; }

std::vector<PeakTexts> RowsOf(const PeakTable& peaks, int unit, const ParamRecord& param,
                              const DacAxis& dac) {
    std::vector<PeakTexts> rows;
    for (int i = 0; i < peaks.PeakNum; ++i)
        rows.push_back(TextsOf(PeakLineOf(Item(peaks.Peak, i), unit, param, dac)));
    return rows;
}

/// Writes `text` so that it ends in column `end`; a text that is too long moves on, one blank
/// behind the one before.
void EndAt(std::string& line, std::size_t end, const std::string& text) {
    const std::size_t least = line.empty() ? 0 : line.size() + 1;
    const std::size_t start = text.size() < end ? end - text.size() : 0;
    line.resize(std::max(start, least), ' ');
    line += text;
}

}  // namespace

PeakLine PeakLineOf(const PeakRecord& peak, int unit, const ParamRecord& param,
                    const DacAxis& dac) {
    return {.Channel = ChToUnit(UNIT_CH, peak.Position, param, dac),
            .Position = ChToUnit(unit, peak.Position, param, dac),
            .Intensity = peak.Intensity,
            .WidthCh = 2.0 * peak.Width,
            .Width = WidthIn(unit, peak, param, dac),
            .WidthD = WidthIn(UNIT_D, peak, param, dac),
            .Amplitude = peak.Amplitude,
            .Gauss = peak.GaussRatio * 100.0,
            .OnePeakFit = peak.Fitted != 0};
}

PeakTexts TextsOf(const PeakLine& line) {
    return {FormatNumber(line.Channel, "###0.0000"),
            FormatNumber(line.Position, "###0.0000"),
            FormatNumber(line.Intensity, "######0.00"),
            FormatNumber(line.WidthCh, "###0.00"),
            FormatNumber(line.Width, "###0.000"),
            FormatNumber(line.WidthD, "###0.0000"),
            FormatNumber(line.Amplitude, "######0.00"),
            FormatNumber(line.Gauss, "###0.0"),
            line.OnePeakFit ? "E" : "N"};
}

PeakTexts PeakHeads(int unit) {
    return {"Peak(Ch)",
            "Peak" + InBrackets(unit),
            "Intensity",
            "FWHM(Ch)",
            "FWHM" + InBrackets(unit),
            "FWHM(d)",
            "Amplitude",
            "Gauss(%)",
            "Type"};
}

std::vector<std::string> PeakCsvLines(const PeakTable& peaks, int unit, const ParamRecord& param,
                                      const DacAxis& dac, PeakFields fields) {
    std::vector<PeakTexts> rows{PeakHeads(unit)};
    for (PeakTexts& row : RowsOf(peaks, unit, param, dac)) {
        // The file has the amplitude below "Intensity" and the intensity below "Amplitude". Who
        // reads it goes by the place of a field, so it stays.
        if (fields == PeakFields::AsInTheFile) std::swap(row[INTENSITY], row[AMPLITUDE]);
        rows.push_back(std::move(row));
    }
    std::vector<std::string> lines;
    for (const PeakTexts& row : rows) {
        std::string line;
        for (const std::string& field : row) line += (&field == &row.front() ? "" : ",") + field;
        lines.push_back(std::move(line));
    }
    return lines;
}

std::string FitParamCsv(const PeakTable& peaks, int unit, const ParamRecord& param,
                        const DacAxis& dac) {
    std::string out;
    for (const std::string& line : PeakCsvLines(peaks, unit, param, dac, PeakFields::AsInTheFile))
        out += line + "\r\n";
    return out;
}

std::string FitParamName(const std::string& fileName, const std::string& rowName) {
    const bool derived = rowName == NAME_SMOOTH || rowName == NAME_BACKGROUND ||
                         rowName == NAME_REMOVED || rowName == NAME_FIT;
    return fileName + "_" + (derived ? rowName : "Raw") + "_FitParam.csv";
}

std::vector<std::string> PeakReportLines(const std::string& name, const PeakTable& peaks, int unit,
                                         const ParamRecord& param, const DacAxis& dac) {
    // 1. The heading in its pieces, and the columns in which its words end.
    const std::string heading = "  #   Peak(Ch) Peak" + InBrackets(unit) +
                                "    Intensity  FWHM(Ch)  FWHM" + InBrackets(unit) +
                                "  Amplitude  Gauss(%) Type";
    std::vector<std::size_t> ends;
    for (std::size_t i = 0; i < heading.size(); ++i)
        if (heading[i] != ' ' && (i + 1 == heading.size() || heading[i + 1] == ' '))
            ends.push_back(i + 1);
    // 2. The lines.
    std::vector<std::string> lines{"Peak Report", "  Measurement Name : " + name, heading};
    int number = 0;
    for (const PeakTexts& row : RowsOf(peaks, unit, param, dac)) {
        std::string line;
        EndAt(line, ends.front(), std::to_string(++number));
        std::size_t word = 0;
        for (std::size_t k = 0; k < row.size(); ++k)
            if (k != WIDTH_D) EndAt(line, Item(ends, ++word), row[k]);
        lines.push_back(line);
    }
    return lines;
}

}  // namespace vael
