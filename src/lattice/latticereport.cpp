// The report of a lattice calculation that "Data Save" writes.
#include "lattice/latticereport.h"

#include "core/text.h"

namespace vael {
namespace {

constexpr const char* FINE = "#0.000000";

std::string Fine(double value) { return FormatNumber(value, FINE); }

std::string ReportCode(int system) {
    const bool told = system == SYSTEM_CUB || system == SYSTEM_HEX || system == SYSTEM_TRI;
    return told ? SystemCode(system) : "";
}

/// A whole number; nothing for 0.
std::string Index(int value) { return FormatNumber(value, "#####"); }

void BoxLine(QuotedText& out, const char* label, std::string_view box) {
    const ValueAndError pieces = SplitAtError(box);
    out.Line({label, pieces.Value, "+-", pieces.Error});
}

}  // namespace

std::string LatticeReportText(const PropertyRecord& property, const std::vector<LatticePeak>& peaks,
                              const LatticeReport& report) {
    QuotedText out;
    // 1. What was measured.
    out.Line({property.FileName.Text() + "LatticeFitting Log"}).Empty();
    AddPropertyLines(out, property.Param, "#0.0000");
    out.Empty();
    // 2. Its peaks.
    out.Line({" ", "PEAKS CURVE FITED"});
    out.Line({"Peak No.", "Ch", "Energy", "DValue", "Amp", "Width"});
    int number = 0;
    for (const LatticePeak& peak : peaks)
        out.Line({FormatNumber(++number, "#0"), FormatNumber(peak.Ch, "#0.0000"),
                  FormatNumber(peak.KeV, "#0.000"), FormatNumber(peak.D, "#0.0000"),
                  FormatNumber(peak.Amplitude, "#0"), FormatNumber(peak.FwhmCh, "#0.00")});
    // 3. The rows against the seeds.
    std::vector<QuotedField> crystal{report.Crystal, ReportCode(report.System)};
    for (const double seed : report.Seed) crystal.emplace_back(Fine(seed));
    out.Line(crystal);
    out.Line({"PK#", "H", "K", "L", "CH", "D(OBS)", "D(CAL)", "DEV"});
    for (const LatticeRow& row : report.Rows)
        out.Line({Index(row.Index + 1), Index(row.H), Index(row.K), Index(row.L), Fine(row.Ch),
                  Fine(row.DObs), Fine(row.DSeed), Fine(row.Deviation())});
    // 4. The result, and the rows in use against it.
    out.Line({"LATTICE CONSTANTS"});
    // Boxes keep what an earlier calculation has shown, maybe of another crystal: no result then.
    const bool shown = report.HasBoxes;
    BoxLine(out, "A    =", shown ? report.LatticeLength[0] : "");
    BoxLine(out, "V    =", shown ? report.Vol : "");
    BoxLine(out, "V/V0 =", shown ? report.VolPerVol0 : "");
    out.Line({"NO", "H", "K", "L", "CH", "E", "DO", "DC", "DR"});
    for (const LatticeRow& row : report.Rows) {
        if (!row.Used || !row.DCalc) continue;
        const auto relative = row.Relative();
        out.Line({Index(row.Index + 1), Index(row.H), Index(row.K), Index(row.L), Fine(row.Ch),
                  Fine(row.KeV), Fine(row.DObs), Fine(*row.DCalc),
                  relative ? Fine(*relative) : ""});
    }
    // 5. The pressure.
    if (shown && report.Mode == MODE_MARKER && FindScale(MarkerKey(report.Crystal))) {
        out.Line({"*** JAMIESON SCALE AT T=" + TemperatureWords(report)});
        out.Line({"P(GPA)= ", report.Pressure});
    }
    return out.Text;
}

}  // namespace vael
