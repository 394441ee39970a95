// The lists of the lattice view: peaks, reflections against the seed and the calculated cell.
#include "lattice/latticelistcommands.h"

#include "analysis/handpeakcommands.h"
#include "analysis/peak.h"
#include "core/cursors.h"
#include "core/fault.h"
#include "core/store.h"
#include "core/text.h"
#include "lattice/frmpeakcal.h"

#include <algorithm>
#include <cmath>

namespace vael {
namespace {

using V = PeakCalView;

constexpr const char* D_FORMAT = "#0.00000";
constexpr const char* RELATIVE_FORMAT = "#0.000000";
constexpr const char* RELATIVE_HEAD = "dd/d";

std::vector<LatticeRow> RowsNow() {
    const V& v = frmPeakCal;
    return LatticeRows(latticeState, LatticeSource(), HandMadePeaks(),
                       v.Values ? &*v.Values : nullptr, v.SelLattice);
}

/// The largest size of what a column shows: its bar takes half of the cell.
template <class Value>
double LargestOf(const std::vector<LatticeRow>& rows, Value value) {
    double largest = 0.0;
    for (const LatticeRow& row : rows) largest = std::max(largest, std::fabs(value(row)));
    return largest;
}

double RelativeOf(const LatticeRow& row) { return row.Relative().value_or(0.0); }

/// A deviation as a part of the largest one; rows left out may reach beyond, and are cut.
double BarOf(double value, double largest) {
    return largest > 0.0 ? std::clamp(value / largest, -1.0, 1.0) : 0.0;
}

/// The columns that both lists against the seed begin with.
void FillSeedColumns(Grid& grid, int line, const LatticeRow& row, double largest) {
    grid.At(0, line).Text = std::to_string(row.Index + 1);
    grid.At(V::CH, line).Text = FormatNumber(row.Ch, "#0.00");
    grid.At(V::KEV, line).Text = FormatNumber(row.KeV, "#0.0000");
    grid.At(V::D_OBS, line).Text = FormatNumber(row.DObs, D_FORMAT);
    grid.At(V::D_SEED, line).Text = FormatNumber(row.DSeed, D_FORMAT);
    grid.At(V::DEVIATION, line).Text = FormatNumber(row.Deviation(), D_FORMAT);
    grid.At(V::DEVIATION, line).Bar = BarOf(row.Deviation(), largest);
    grid.At(V::HKL, line).Text = row.Hkl();
    grid.At(V::USE, line).Kind = Grid::CellKind::Tick;
    grid.At(V::USE, line).Ticked = row.Used;
    grid.At(V::TYPE, line).Text = row.Type;
}

void Dim(Grid& grid, int line, bool dimmed) {
    for (int column = 1; column <= grid.Columns(); ++column) grid.At(column, line).Dimmed = dimmed;
}

/// As many lines as there are rows, all of them blank, the current line where it was.
void Resize(Grid& grid, std::size_t rows) {
    const int columns = grid.Columns();
    const int row = grid.Row;
    const int column = grid.Col;
    grid.SetSize(columns, 0);
    grid.SetSize(columns, static_cast<int>(rows));
    grid.Row = std::min(row, grid.Rows());
    grid.Col = grid.Row == 0 ? 0 : column;
}

void FillCalculated(const std::vector<LatticeRow>& rows) {
    Grid& grid = frmPeakCal.sprPeakInf3;
    std::vector<LatticeRow> used;
    for (const LatticeRow& row : rows)
        if (row.Used && frmPeakCal.Values) used.push_back(row);
    const double largest = LargestOf(used, RelativeOf);
    Resize(grid, used.size());
    int line = 0;
    for (const LatticeRow& row : used) {
        ++line;
        grid.At(0, line).Text = std::to_string(row.Index + 1);
        grid.At(V::CALC_CH, line).Text = FormatNumber(row.Ch, "#0.00");
        grid.At(V::CALC_KEV, line).Text = FormatNumber(row.KeV, "#0.0000");
        grid.At(V::CALC_D_OBS, line).Text = FormatNumber(row.DObs, D_FORMAT);
        grid.At(V::CALC_HKL, line).Text = row.Hkl();
        grid.At(V::CALC_TYPE, line).Text = row.Type;
        if (!row.DCalc) continue;
        grid.At(V::CALC_D, line).Text = FormatNumber(*row.DCalc, D_FORMAT);
        grid.At(V::CALC_RELATIVE, line).Text = FormatNumber(RelativeOf(row), RELATIVE_FORMAT);
        grid.At(V::CALC_RELATIVE, line).Bar = BarOf(RelativeOf(row), largest);
    }
}

/// The peak that a line names in its head, from 0.
int PeakOfLine(const Grid& grid, int row) { return std::stoi(grid.At(0, row).Text) - 1; }

}  // namespace

MatchSource LatticeSource() {
    const V& v = frmPeakCal;
    return {.GraphNo = v.GrpNo,
            .DataNo = Int16(v.Slot),
            .Peaks = Item(store.PeakTables, v.Slot),
            .Property = Item(store.PropertyRecords, v.Slot),
            .Dac = DacNow(),
            .PickupRange = settings.PickupRange()};
}

PeakTable HandMadePeaks() { return HandPeaksOf(frmPeakCal.Slot); }

LatticeReport ReportNow() {
    const V& v = frmPeakCal;
    const LatticeFitData& data = latticeState.FitData;
    LatticeReport report{.Crystal = data.Name,
                         .System = v.SelLattice,
                         .Mode = v.SelMode,
                         .Seed = data.Seed,
                         .Rows = RowsNow(),
                         .LatticeLength = {},
                         .Vol = v.txtVol.Text,
                         .VolPerVol0 = v.txtVolPerVol0.Text,
                         .Pressure = v.txtPressure.Text,
                         .HasBoxes = v.Values && v.Values->HasBoxes,
                         .TwoTheta = Item(store.PropertyRecords, v.Slot).Param.TwoTheta,
                         .Temperature = v.txtTemp.Text,
                         .Unit = v.cmbUnit.Index};
    for (std::size_t i = 0; i < report.LatticeLength.size(); ++i)
        report.LatticeLength[i] = v.txtLatticeLength[i].Text;
    return report;
}

void CopyPeakInfo() {
    Grid& grid = frmPeakCal.sprPeakInf;
    const auto peaks = LatticePeaks(LatticeSource(), HandMadePeaks());
    Resize(grid, peaks.size());
    int line = 0;
    for (const LatticePeak& peak : peaks) {
        ++line;
        grid.At(0, line).Text = std::to_string(line);
        const std::array<std::string, 9> texts{FormatNumber(peak.Ch, "#0.00"),
                                               FormatNumber(peak.KeV, "#0.0000"),
                                               FormatNumber(peak.D, D_FORMAT),
                                               FormatNumber(peak.Intensity, "####0"),
                                               FormatNumber(peak.Amplitude, "####0"),
                                               FormatNumber(peak.FwhmCh, "#0.00"),
                                               FormatNumber(peak.FwhmKeV, "#0.0000"),
                                               FormatNumber(peak.TwoTheta, "#0.0000"),
                                               peak.Type};
        for (std::size_t i = 0; i < texts.size(); ++i)
            grid.At(static_cast<int>(i) + 1, line).Text = texts[i];
    }
}

void ClearLatticeMatch() {
    V& v = frmPeakCal;
    ClearMatchTable(latticeState, 0);
    v.Values.reset();
    for (Grid* grid : {&v.sprPeakInf2, &v.sprPeakInf3, &v.sprPeakInf4}) Resize(*grid, 0);
}

void FillReflections() {
    V& v = frmPeakCal;
    const std::vector<LatticeRow> rows = RowsNow();
    const double largest =
        LargestOf(rows, [](const LatticeRow& row) { return row.Used ? row.Deviation() : 0.0; });
    const double largestRelative =
        LargestOf(rows, [](const LatticeRow& row) { return row.Used ? RelativeOf(row) : 0.0; });
    Resize(v.sprPeakInf2, rows.size());
    Resize(v.sprPeakInf4, rows.size());
    int line = 0;
    for (const LatticeRow& row : rows) {
        ++line;
        FillSeedColumns(v.sprPeakInf2, line, row, largest);
        FillSeedColumns(v.sprPeakInf4, line, row, largest);
        if (row.DCalc && row.Used) {
            v.sprPeakInf4.At(V::D_CALC, line).Text = FormatNumber(*row.DCalc, D_FORMAT);
            Grid::Cell& relative = v.sprPeakInf4.At(V::RELATIVE, line);
            relative.Text = FormatNumber(RelativeOf(row), RELATIVE_FORMAT);
            relative.Bar = BarOf(RelativeOf(row), largestRelative);
        }
        Dim(v.sprPeakInf2, line, !row.Used);
        Dim(v.sprPeakInf4, line, !row.Used);
    }
    FillCalculated(rows);
}

void UseColumn_Edit(const Grid& grid, int row) {
    const int peak = PeakOfLine(grid, row);
    const bool used = grid.At(V::USE, row).Ticked;
    Item(latticeState.FitData.Match, peak).Excluded = used ? FALSE_WORD : TRUE_WORD;
    V& v = frmPeakCal;
    for (Grid* each : {&v.sprPeakInf2, &v.sprPeakInf4}) {  // both lists tell the same
        each->At(V::USE, row).Ticked = used;
        Dim(*each, row, !used);
    }
    WriteLatticeLog(LogChanged(LogChange::Use));
    TellLattice(
        "Peak " + std::to_string(peak + 1) +
        (used ? " takes part in the next calculation." : " is left out of the next calculation."));
}

void PeakLine_Click(const Grid& grid, int row) {
    if (row < 1) return;
    const int peak = PeakOfLine(grid, row);
    const PeakTable& peaks = Item(store.PeakTables, frmPeakCal.Slot);
    if (peak < peaks.PeakNum) CsrX_Change(ChannelOf(Item(peaks.Peak, peak).Position));
}

void tabLatticeFit_Click() {
    V& v = frmPeakCal;
    const bool data = v.tabLatticeFit.Index == 0;
    v.sprPeakInf.Visible = v.sprPeakInf2.Visible = data;
    v.sprPeakInf3.Visible = v.sprPeakInf4.Visible = !data;
}

}  // namespace vael
