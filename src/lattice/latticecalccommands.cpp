// The calculations of the lattice view: the cell, the expected angle, the reports that are saved.
#include "lattice/latticecalccommands.h"

#include "core/cp932.h"
#include "core/fault.h"
#include "core/store.h"
#include "core/text.h"
#include "core/units.h"
#include "core/wholefile.h"
#include "lattice/checkedmath.h"
#include "lattice/frmpeakcal.h"
#include "lattice/latticeinputcommands.h"
#include "lattice/latticelistcommands.h"
#include "lattice/latticereport.h"
#include "toolkit/desk.h"

#include <cmath>
#include <sstream>

namespace vael {
namespace {

using V = PeakCalView;

/// A message box, and the same told in the view.
void Refuse(const std::string& text, const std::string& why) {
    TellLattice("Not calculated: " + why);
    Say(text);
}

/// The edges of the seed that a system reads: 0 for a, 1 for b, 2 for c.
std::vector<std::size_t> EdgesOf(int system) {
    switch (system) {
        case SYSTEM_CUB: return {0};
        case SYSTEM_TET:
        case SYSTEM_HEX: return {0, 2};
        default: return {0, 1, 2};
    }
}

/// The seeds and the reference cell from their boxes. Faults: Type for a text that is no number.
void ReadCells(CalcRequest& request) {
    V& v = frmPeakCal;
    Cell reference{};
    for (std::size_t i = 0; i < reference.size(); ++i) {
        request.Seed[i] = Number(v.txtSeedConstant[i].Text);
        // The reference of volume and pressure is the file's own cell: this one is read, and a text
        // that is no number ends the calculation, but nothing is computed from it.
        reference[i] = Number(v.txtLatticeConstans[i].Text);
    }
    for (std::size_t i = 0; i < reference.size(); ++i) v.SeedCell[i] = request.Seed[i];
}

/// What was asked for, or nothing when a message has refused it.
std::optional<CalcRequest> RequestNow() {
    V& v = frmPeakCal;
    v.SelMode = v.optSelectMode[0].Value ? MODE_SAMPLE : MODE_MARKER;
    v.SelElement = Int16(v.cmbElement.Index);
    v.SelLattice = Int16(v.cmbLatticeType.Index);
    latticeState.FitFailed = 0;
    if (!IsNumeric(v.txtSeedConstant[0].Text)) {
        Refuse("Seed Error",
               SelectedCrystal() < 0 ? "choose a crystal first." : "the seed of a is no number.");
        return std::nullopt;
    }
    const auto temperature = ParseNumber(v.txtTemp.Text);
    if (!temperature) {
        Refuse("Temp Error", "the temperature is no number.");
        return std::nullopt;
    }
    if (v.SelMode == MODE_MARKER && ToKelvin(*temperature, v.cmbUnit.Index) <= 0.0) {
        Refuse("Temp Error", "the temperature must lie above 0 K.");
        return std::nullopt;
    }
    v.CurTemp = *temperature;
    if (v.SelLattice < SYSTEM_CUB || v.SelLattice > SYSTEM_TRI || SelectedCrystal() < 0) {
        Refuse("Lattice Type Error", "there is no crystal with a known system.");
        return std::nullopt;
    }
    CalcRequest request{.CrystalIndex = SelectedCrystal(),
                        .System = v.SelLattice,
                        .Mode = v.SelMode,
                        .Temperature = *temperature,
                        .Unit = v.cmbUnit.Index};
    ReadCells(request);
    for (const std::size_t i : EdgesOf(v.SelLattice)) {
        if (request.Seed[i] > 0.0) continue;
        Refuse("Seed Error", "the seed of " + v.lblSeed[i].Caption + " must lie above 0.");
        return std::nullopt;
    }
    return request;
}

Talk BoxTalk() {
    Talk talk;
    talk.say = [](std::string_view text, std::string_view title) {
        Say(std::string(text), std::string(title));
    };
    return talk;
}

void ShowResults() {
    V& v = frmPeakCal;
    const LatticeValues& values = *v.Values;
    for (std::size_t i = 0; i < values.LatticeLength.size(); ++i) {
        v.txtLatticeLength[i].Text = values.LatticeLength[i];
        v.txtLatticeLength[i].Tip = AngleTip(values, v.SelLattice, static_cast<int>(i));
    }
    v.txtVol.Text = values.Vol;
    v.txtVolPerVol0.Text = values.VolPerVol0;
    const CrystalRecord& crystal = Item(latticeState.Table.Crystals, SelectedCrystal());
    const std::string key = MarkerKey(crystal.Name);
    if (values.Pressure) {  // a key without a scale leaves the box as it was
        v.txtPressure.Text = values.PressureText;
        v.txtPressure.Tip = "Scale: " + ScaleName(values.Pressure->Scale);
    }
    const auto bars = ErrorBarTexts(values, key);
    for (std::size_t i = 0; i < bars.size(); ++i) v.txtErrorBar[i].Text = bars[i];
}

/// "5 reflections", and those in use whose d is too small to count as an observation.
std::string RowsText() {
    int counted = 0;
    int small = 0;
    for (const ReflectionMatch& row : latticeState.FitData.Match)
        if (row.Matched == TRUE_WORD && row.Excluded == FALSE_WORD)
            ++(row.ThetaCu > 0.0 ? counted : small);
    std::string text = std::to_string(counted) + (counted == 1 ? " reflection" : " reflections");
    if (small > 0) text += " (" + std::to_string(small) + " of d below 0.771 do not count)";
    return text;
}

std::string SuccessText() {
    const V& v = frmPeakCal;
    const LatticeValues& values = *v.Values;
    if (!values.HasBoxes)
        return "Calculated from " + RowsText() +
               "; a marker is cubic or hexagonal, so nothing of this crystal is shown.";
    std::string text =
        latticeState.FitData.Name + ": a = " + v.txtLatticeLength[0].Text + " from " + RowsText();
    if (values.Pressure) return text + ", P = " + values.PressureText + " GPa.";
    return text + (v.SelMode == MODE_MARKER ? "; its name selects no pressure scale." : ".");
}

std::string FailureText(CalcStatus status) {
    switch (status) {
        case CalcStatus::TooFewLines:
            return "Not calculated: too few reflections are matched and in use.";
        case CalcStatus::Singular:
            return "Not calculated: the reflections in use do not determine the cell.";
        case CalcStatus::NoCell: return "Not calculated: what the fit gave is no cell.";
        default: return "Not calculated.";
    }
}

/// The number in front of the first "+" of a result; a text without one counts whole.
std::optional<double> CalculatedA() {
    return ParseNumber(SplitAtError(Trim(frmPeakCal.txtLatticeLength[0].Text)).Value);
}

}  // namespace

void cmdCal_Click() {
    V& v = frmPeakCal;
    // A run-time error anywhere below ends the calculation and leaves boxes and log as they are.
    try {
        const auto request = RequestNow();
        if (!request) return;
        v.Values.reset();
        LatticeValues values = CalcLattice(latticeState, *request, LatticeSource(), BoxTalk());
        if (values.Status != CalcStatus::Ok) {
            FillReflections();
            TellLattice(FailureText(values.Status));
            return;
        }
        v.Values = std::move(values);
    } catch (const std::exception& trouble) {
        v.Values.reset();
        FillReflections();
        TellLattice(std::string("Not calculated: ") + trouble.what(), true);
        return;
    }
    if (v.Values->HasBoxes) ShowResults();
    FillReflections();
    WriteLatticeLog(LogCalculation(ReportNow()));
    TellLattice(SuccessText());
}

void cmd2ThetaCalib_Click() {
    V& v = frmPeakCal;
    const auto a = CalculatedA();
    if (!a) return Refuse("LatticeConstance Error", "there is no calculated a yet.");
    const auto angle = ParseNumber(Trim(v.txt2Theta.Text));
    if (!angle) return Refuse("2θ Error", "2 theta is no number.");
    const auto seed = ParseNumber(Trim(v.txtSeedConstant[0].Text));
    if (!seed) return Refuse("Initial Constans Error", "the seed of a is no number.");
    const double s = Quot(std::sin(*angle / 2.0 / 180.0 * PI_DEGREES) * *a, *seed);
    const double theta = std::atan(Quot(s, Root(1.0 - s * s))) * (180.0 / PI_DEGREES);
    v.txtExpected2theta.Text = FormatNumber(2.0 * theta, "#0.00000");
    latticeState.UseListValid = TRUE_WORD;  // what is not in use stays so over the next match
    TellLattice("The seed would be the cell at a 2 theta of " + v.txtExpected2theta.Text +
                " degrees: type that into the box 2Theta.");
}

void DataSave() {
    const MatchSource source = LatticeSource();
    LatticeReport report = ReportNow();
    if (report.Crystal.empty() && SelectedCrystal() >= 0)  // no match yet
        report.Crystal = Item(latticeState.Table.Crystals, SelectedCrystal()).Name;
    const std::string path = store.ProgramFolder + "/" + LATTICE_REPORT_FILE;
    TheDesk().MakeFolder(store.ProgramFolder + "/" + LATTICE_REPORT_FOLDER);
    try {
        ReplaceFile(path, ToCp932(LatticeReportText(
                              source.Property, LatticePeaks(source, HandMadePeaks()), report)));
    } catch (const Fault& trouble) {
        TellLattice(std::string("Not saved: ") + trouble.what(), true);
        Say("LatticeFit Temp File Open Error");
        return;
    }
    TellLattice(report.HasBoxes ? "Saved the calculation as " + path + "."
                                : "Saved the peaks as " + path + "; there is no calculation.");
}

void Command1_Click() {
    std::ostringstream table;
    WriteSimulationTable(table);
    const std::string path = store.ProgramFolder + "/" + SIMULATION_FILE;
    ReplaceFile(path, table.view());
    TellLattice("Wrote the table of simulated pressures to " + path + ".");
}

}  // namespace vael
