// The peak report: the peaks of one row as a list that is edited, saved, and drawn as a curve.
#include "analysis/frmpeakreport.h"

#include "analysis/peak.h"
#include "analysis/peaktext.h"
#include "core/cursors.h"
#include "core/fault.h"
#include "core/fitgraph.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/regionmarks.h"
#include "core/store.h"
#include "core/text.h"
#include "core/wholefile.h"
#include "core/windows.h"
#include "display/frmprint.h"
#include "files/extensions.h"
#include "toolkit/desk.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vael {
namespace {

using V = PeakReportView;

PeakTable& Table() { return Item(store.PeakTables, frmPeakReport.Slot); }

bool Editable(int column) {
    return column == V::CHANNEL || column == V::WIDTH_CH || column == V::AMPLITUDE ||
           column == V::GAUSS;
}

std::string CountOf(int peaks) { return std::to_string(peaks) + (peaks == 1 ? " peak" : " peaks"); }

PeakLine LineOf(int index) {
    const V& v = frmPeakReport;
    return PeakLineOf(Item(Table().Peak, index), v.DispUnit, ParamInForce(v.Slot), DacNow());
}

void FillLine(int index) {
    Grid& grid = frmPeakReport.sprPeakInf;
    const PeakTexts texts = TextsOf(LineOf(index));
    grid.At(0, index + 1).Text = std::to_string(index + 1);
    for (int column = V::CHANNEL; column <= V::TYPE; ++column) {
        Grid::Cell& cell = grid.At(column, index + 1);
        cell.Text = Item(texts, column - V::CHANNEL);
        cell.Editable = Editable(column);
    }
}

void Fill() {
    V& v = frmPeakReport;
    Grid& grid = v.sprPeakInf;
    const int peaks = Table().PeakNum;
    const PeakTexts heads = PeakHeads(v.DispUnit);
    for (int column = V::CHANNEL; column <= V::TYPE; ++column)
        grid.At(column, 0).Text = Item(heads, column - V::CHANNEL);
    grid.SetSize(V::TYPE, peaks);
    for (int index = 0; index < peaks; ++index) FillLine(index);
    grid.Row = std::min(grid.Row, peaks);
    grid.Col = grid.Row == 0 ? 0 : std::max<int>(grid.Col, V::CHANNEL);
    v.lblGraph.Caption = std::to_string(v.GrpNo + 1) + "  " + Item(store.GraphList, v.GrpNo).Name +
                         ", " + CountOf(peaks);
}

/// Where the slot's row stands now; false when it has none.
bool FollowSlot() {
    V& v = frmPeakReport;
    v.GrpNo = v.Slot < 0 ? -1 : RowOfSlot(v.Slot);
    if (v.GrpNo < 0) return false;
    v.WinNo = WindowOfRow(v.GrpNo);
    v.DispUnit = AxisUnit(v.Slot);
    return true;
}

/// What stands on the plots and in the boxes follows the table, and with them this list.
void ShowChange() {
    frmPeakReport.AsLeft = Table();
    HidePeakMemo();
    ShowCursorValues();
    RedrawBoth();
}

// --- editing -----------

/// The record with a value typed into a column, or the reason why it cannot be.
struct Edited {
    PeakRecord Record{};
    std::string Refusal;
};

Edited WithValue(PeakRecord record, int column, double value, int channels) {
    const auto refuse = [&record](const std::string& why) { return Edited{record, why}; };
    switch (column) {
        case V::CHANNEL:
            if (value < 1.0 || value > channels)
                return refuse("The spectrum has the channels 1 to " + std::to_string(channels) +
                              ".");
            if (value - 1.0 == 0.0)
                return refuse(
                    "A peak cannot stand exactly at channel 1: that marks an empty line.");
            record.Position = value - 1.0;
            break;
        case V::WIDTH_CH:
            if (value <= 0.0 || value > channels)
                return refuse("A width lies above 0 and within the " + std::to_string(channels) +
                              " channels of the spectrum.");
            record.Width = value / 2.0;
            break;
        case V::AMPLITUDE:
            if (std::fabs(value) > std::numeric_limits<std::int32_t>::max())
                return refuse("An amplitude is a count of 32 bits.");
            record.Amplitude = value;
            break;
        case V::GAUSS:
            if (value < 0.0 || value > 100.0)
                return refuse("The Gaussian share lies between 0 and 100 percent.");
            record.GaussRatio = value / 100.0;
            break;
        default: break;
    }
    return {record, {}};
}

/// The order of the table stays as it is, whatever channel was typed.
void sprPeakInf_CellEdit(int column, int row) {
    const Grid& grid = frmPeakReport.sprPeakInf;
    const int index = row - 1;
    const std::string typed = grid.At(column, row).Text;
    // What a cell shows has fewer digits than the record: a text that nobody changed is not taken.
    const PeakTexts shown = TextsOf(LineOf(index));
    if (Trim(typed) == Item(shown, column - V::CHANNEL)) return FillLine(index);
    const auto value = ParseNumber(typed);
    if (!value) {
        FillLine(index);
        TellStatus("\"" + typed + "\" is no number: the peak stays as it was.");
        return;
    }
    const SpectrumData& spectrum = Item(store.SpectrumDatas, frmPeakReport.Slot);
    const Edited edited = WithValue(Item(Table().Peak, index), column, *value, spectrum.DataNo);
    if (!edited.Refusal.empty()) {
        FillLine(index);
        TellStatus(edited.Refusal + " The peak stays as it was.");
        return;
    }
    Item(Table().Peak, index) = edited.Record;
    CalcIntensity(spectrum, Table(), index);  // the area is that of the shape as it now is
    ShowChange();
    TellStatus("Peak " + std::to_string(row) + " was changed; \"SET\" draws its curve anew.");
}

void sprPeakInf_CellClick(int, int row) {
    if (row < 1) return;
    CsrX_Change(ChannelOf(Item(Table().Peak, row - 1).Position));
}

/// The Delete key.
void RemoveCurrentPeak() {
    const V& v = frmPeakReport;
    const int row = v.sprPeakInf.Row;
    if (row < 1 || row > Table().PeakNum) {
        TellStatus("There is no peak to remove.");
        return;
    }
    DeletePeak(v.WinNo, v.Slot, row - 1, Table(), RegionMarks());
    ShowChange();
    TellStatus("Peak " + std::to_string(row) + " was removed; \"SET\" draws the curve without it.");
}

// --- buttons -----------

/// The curve of the table as it stands; the row that it is in, or -1 when there was no room.
int DrawCurve() {
    const int row = PutFitGraph(frmPeakReport.WinNo, frmPeakReport.Slot, FitRow::Own);
    if (row < 0) return -1;
    AutoScaleBoth();
    ShowChange();
    return row;
}

void cmdPkSet_Click() {
    const int row = DrawCurve();
    if (row < 0) {
        TellStatus("The curve was not drawn: there is no room for another row.");
        return;
    }
    frmPeakReport.CurveDrawn = true;
    const PeakTable& peaks = Table();
    const bool drawn =
        std::any_of(peaks.Peak.begin(), peaks.Peak.begin() + peaks.PeakNum,
                    [](const PeakRecord& peak) { return peak.FitState == ALL_BITS; });
    if (!drawn && peaks.PeakNum > 0) {
        TellStatus("The curve in row " + std::to_string(row + 1) +
                   " is empty: no peak of the list was fitted.");
        return;
    }
    TellStatus("The curve of " + CountOf(Table().PeakNum) + " is drawn in row " +
               std::to_string(row + 1) + ".");
}

void cmdRepEnd_Click() { frmPeakReport.Visible = false; }

/// The table goes back to what it was when the report was opened, and with it a curve that "SET"
/// drew in between.
void cmdCancel_Click() {
    V& v = frmPeakReport;
    v.Visible = false;
    if (RowOfSlot(v.Slot) < 0 || !(Table() == v.AsLeft)) return;
    if (Table() == v.AsOpened && !v.CurveDrawn) return;
    Table() = v.AsOpened;
    // A curve that was closed in between is not made again.
    const bool curve = v.CurveDrawn && OwnFitRow(v.Slot) >= 0;
    if (!curve || DrawCurve() < 0) ShowChange();
    TellStatus("The peaks are as they were when the report was opened.");
}

/// The name of the spectrum's file without the extension of a form that is read or written (a point
/// in a measurement's name is none); where the record has no name, that of the first row of a file.
std::string SpectrumName() {
    std::string name = Item(store.PropertyRecords, frmPeakReport.Slot).FileName.Trimmed();
    std::replace(name.begin(), name.end(), '/', '_');  // a name is no folder
    std::replace(name.begin(), name.end(), '\\', '_');
    if (KindOf(name) != nullptr) name = SplitFilePath(name).Name;
    if (!name.empty()) return name;
    for (const GraphEntry& entry : store.GraphList)
        if (entry.State > 0 && !IsDerivedName(entry.Name)) return SplitFilePath(entry.Name).Name;
    return {};
}

void cmdSave_Click() {
    const V& v = frmPeakReport;
    const auto chosen = TheDesk().SaveFile(
        {.Title = "Save as",
         .Filter = "Result File (*.csv)|*.csv",
         .FilterIndex = 1,
         .Folder = store.DataDrive + store.DataFolder,
         .Name = FitParamName(SpectrumName(), Item(store.GraphList, v.GrpNo).Name)});
    if (!chosen) return;
    const std::string& path = chosen->Paths.front();
    try {
        ReplaceFile(path,
                    ToCp932(FitParamCsv(Table(), v.DispUnit, ParamInForce(v.Slot), DacNow())));
    } catch (const Fault& trouble) {
        TellStatus(std::string("Not saved: ") + trouble.what(), true);  // in the log too
        Say("File Write Error");
        return;
    }
    TellStatus("Saved " + CountOf(Table().PeakNum) + " as " + path + ".");
}

/// The list's lines as a page: its title, the measurement, and a table that has no room for the
/// width in d.
PageData ListPage() {
    const V& v = frmPeakReport;
    std::vector<std::string> lines =
        PeakReportLines(SpectrumName(), Table(), v.DispUnit, ParamInForce(v.Slot), DacNow());
    PageData page;
    page.Title = Item(lines, 0);
    page.Subtitle = Item(lines, 1);
    lines.erase(lines.begin(), lines.begin() + 2);
    page.Table = TableOf(lines, ' ');
    return page;
}

void cmdPrint_Click() {
    const std::string name = SpectrumName();
    PrintWithDialog({.Title = frmPeakReport.Caption,
                     .Name = (name.empty() ? "" : name + "_") + "PeakReport",
                     .Draw = [](Canvas& canvas, double, const NextPage& next) {
                         return DrawPages(canvas, Engine(), ListPage(), next);
                     }});
}

/// Enter does what the focused control says, so it is no key of the view.
bool ReportKeys(const KeyPress& key) {
    if (key.Alt || key.Ctrl || key.Shift) return false;
    if (key.Key == KeyPress::Name::Escape)
        cmdCancel_Click();
    else if (key.Key == KeyPress::Name::Delete)
        RemoveCurrentPeak();
    else
        return false;
    return true;
}

}  // namespace

PeakReportView::PeakReportView() : View("frmPeakReport", "Peak Report") {
    sprPeakInf.Widths = {3, 10, 11, 12, 9, 10, 9, 11, 8, 5};
    sprPeakInf.Tip =
        "A click moves the cursor to the peak. Channel, width in channels, amplitude and Gauss(%) "
        "can be typed over; Delete removes the peak";
    sprPeakInf.CellEdit = sprPeakInf_CellEdit;
    sprPeakInf.CellClick = sprPeakInf_CellClick;
    cmdPrint.Tip = "Prints the list (Ctrl+P)";
    cmdPrint.Shortcut = "Ctrl+P";
    cmdPrint.Click = cmdPrint_Click;
    cmdSave.Tip = "Saves the list as a text with commas";
    cmdPkSet.Tip = "Draws the curve of the peaks as they stand in the list";
    cmdRepEnd.Tip = "Closes the list; what was changed stays";
    cmdCancel.Tip = "Closes the list; the peaks are again as when it was opened";
    cmdSave.Click = cmdSave_Click;
    cmdPkSet.Click = cmdPkSet_Click;
    cmdRepEnd.Click = cmdRepEnd_Click;
    cmdCancel.Click = cmdCancel_Click;
    KeyPreview = ReportKeys;
}

void ShowPeakReport() {
    V& v = frmPeakReport;
    const GraphEntry& entry = Item(store.GraphList, GraphNo());
    if (entry.State == 0) {
        TellStatus("There is no spectrum in this row.");
        return;
    }
    if (!v.Visible || v.Slot != entry.DataNo) {
        v.Slot = entry.DataNo;
        v.AsOpened = v.AsLeft = Table();
        v.CurveDrawn = false;
    }
    v.Visible = true;
    v.sprPeakInf.Row = FindPeakAt(Table(), CursorCh()) + 1;
    v.sprPeakInf.Col = v.sprPeakInf.Row > 0 ? V::CHANNEL : 0;
    RefreshPeakReport();
}

void RefreshPeakReport() {
    V& v = frmPeakReport;
    if (!v.Visible) return;
    if (!FollowSlot()) {
        v.Visible = false;
        return;
    }
    if (!(Table() == v.AsLeft)) {
        v.AsOpened = v.AsLeft = Table();
        v.CurveDrawn = false;
    }
    Fill();
}

}  // namespace vael
