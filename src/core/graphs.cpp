// Graph rows and slots: moving spectra in and out of the store, and keeping the selectors in step.
#include "core/graphs.h"

#include "analysis/frmmanualfit.h"
#include "analysis/roi.h"
#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/expand.h"
#include "core/fault.h"
#include "core/frmlog.h"
#include "core/frmselgraph.h"
#include "core/frmvaelana.h"
#include "core/operations.h"
#include "core/params.h"
#include "core/saving.h"
#include "core/scales.h"
#include "core/store.h"
#include "core/text.h"
#include "core/windows.h"
#include "files/extensions.h"
#include "files/frmproperty.h"
#include "lattice/frmatom.h"
#include "lattice/frmpeakcal.h"
#include "toolkit/hand.h"

#include <algorithm>
#include <limits>

namespace vael {
namespace {

constexpr const char* TITLE = "Vael (Data Analyze) --- ";

constexpr const char* OPEN_FILTER =
    "Nippon high Pressure Data File (*.npd)|*.npd|Gennie File (*.cnf;*.rpt)|*.cnf;*.rpt|"
    "Express File (*.xbm)|*.xbm|DAC File (*.raw)|*.raw";

GraphEntry& RowEntry(int row) { return Item(store.GraphList, row); }

std::size_t Box(int win, int row) { return static_cast<std::size_t>(win * GRAPH_COUNT + row); }

/// The spectrum's own polynomial and 2 theta, whichever calibration is in force.
void ShowOwnCalibration(int slot) {
    const ParamRecord& param = Item(store.PropertyRecords, slot).Param;
    SetEGCParam(param.EgcCoef);
    ShowAngle(param.TwoTheta);
}

/// Whether every count can be taken off the largest full scale in 32 bits, as the engine does.
bool CanBeDrawn(const SpectrumData& data) {
    constexpr std::int32_t LOWEST = std::numeric_limits<std::int32_t>::min() + 10000001;
    const auto end = data.Count.begin() + std::clamp<int>(data.DataNo, 0, MAX_CHANNELS);
    return std::none_of(data.Count.begin(), end, [](std::int32_t count) { return count < LOWEST; });
}

/// The graph that stood in a row goes off the windows when another slot takes the row: nothing else
/// would ever take it away. Its slot stays allocated.
void WithdrawReplaced(const GraphEntry& entry, int slot) {
    if (entry.State > 0 && entry.DataNo != slot) WithdrawSlot(entry.DataNo);
}

/// The chosen files into window 0 and the rows from 0 on; at most ten.
void LoadChosen(const FileChoice& chosen) {
    store.FilterIndex = static_cast<std::int16_t>(chosen.FilterIndex);
    const PathPieces first = SplitFilePath(chosen.Paths.front());
    store.DataDrive = first.Drive;
    store.DataFolder = first.Folder;

    const std::int64_t linesBefore = frmLog.LinesEver;
    int read = 0;
    std::string refused;
    const auto count = std::min<std::size_t>(chosen.Paths.size(), GRAPH_COUNT);
    for (std::size_t i = 0; i < count; ++i) {
        std::int16_t ok = FALSE_WORD;
        ReadGraph(0, static_cast<int>(i), chosen.Paths[i], ok);
        if (ok == TRUE_WORD)
            ++read;
        else
            refused += (refused.empty() ? "" : ", ") + SplitFilePath(chosen.Paths[i]).Base();
    }
    const std::size_t more = chosen.Paths.size() - count;
    const std::string left =
        more == 0 ? "" : " The list is full: files left: " + std::to_string(more) + ".";
    if (!refused.empty())
        TellStatus("Not read: " + refused + " (the reason stands in the log)." + left, true);
    else
        TellStatus("Opened " + std::to_string(read) + (read == 1 ? " spectrum." : " spectra.") +
                   (frmLog.LinesEver > linesBefore ? " The log has remarks." : "") + left);
}

/// The open dialog and its files; false when it was cancelled. The desk hands over any number of
/// whole paths, so names with blanks or commas are no lists, and each file keeps its own folder.
bool AskAndLoad() {
    const auto chosen = TheDesk().OpenFiles({.Title = "Open",
                                             .Filter = OPEN_FILTER,
                                             .FilterIndex = FilterIndexFor(OPEN_FILTER),
                                             .Folder = store.DataDrive + store.DataFolder,
                                             .Name = "",
                                             .Multiple = true});
    if (!chosen) return false;
    if (CheckNoSave() == FALSE_WORD) LoadChosen(*chosen);
    return true;
}

/// The first row of a graph that is not derived, or -1.
int FirstRawRow() {
    for (int row = 0; row < GRAPH_COUNT; ++row)
        if (RowEntry(row).State > 0 && !IsDerivedName(RowEntry(row).Name)) return row;
    return -1;
}

/// Which of the show switches a new graph frees.
void WindowStyleRule(int win) {
    VaelAnaView& v = frmVaelAna;
    if (v.ckbExpand.Value != 0) {
        FreeShowSwitch(0);
    } else if (v.chkWinStyle.Value != 0 || win != 0) {
        FreeShowSwitch(0);
        FreeShowSwitch(1);
        v.ckbExpand.Enabled = false;
        v.mnuExpandOn.Enabled = false;
    } else {
        v.chkFilePile[1].Value = 0;
        v.chkFilePile[1].Enabled = false;
    }
    // What is opened is seen, also in a window that was put away.
    const int place = PiledUp() ? 0 : win;
    if (!WindowShown(place)) Item(v.chkFilePile, place).Value = 1;
    ArrangeWindows();
}

/// A closed graph takes its regions of interest along; the graph that gets its slot next has
/// nothing to do with them. Files opened in place of others keep the regions: a run of spectra is
/// looked at in the same ones.
void DropRegionsOf(int slot) {
    for (int i = store.Rois.RoiNum - 1; i >= 0; --i)
        if (Item(store.Rois.RoiTable, i).DataNo == slot) DeleteRoi(store.Rois, 0, i, Marks{});
}

}  // namespace

void RemoveAllRows() {
    const int total = store.GraphTotal;
    for (int n = 0; n < total; ++n) {
        DeleteGraph(0);
        Add_cboGraphSel();
        Item(store.PeakTables, n) = PeakTable{};
    }
    EraseWindows();
    store.GraphTotal = 0;
    Add_cboGraphSel();
    FreeStyleControls();
    // Slots of files that could not be read have no row to go with.
    const auto taken = [](const GraphEntry& entry) { return entry.State != 0; };
    if (std::none_of(store.GraphList.begin(), store.GraphList.end(), taken))
        store.SlotUsed.fill(FALSE_WORD);
}

void LoadNew() {
    RemoveAllRows();
    store.AreaFitDone = FALSE_WORD;
    cmdOperationInit();
    if (!AskAndLoad()) TellStatus("The rows were emptied; no file was chosen.");
}

void FileLoad() { (void)AskAndLoad(); }

void OpenNamed(const std::vector<std::string>& paths) {
    if (paths.empty()) return;
    LoadChosen({.Paths = paths, .FilterIndex = FilterIndexFor(OPEN_FILTER)});
}

void ReadGraph(int win, int row, const std::string& path, std::int16_t& ok) {
    ok = FALSE_WORD;
    const PathPieces pieces = SplitFilePath(path);
    frmVaelAna.Caption = TITLE + pieces.Base();
    const int slot = GetGraphSpace(-1);
    SpectrumData& data =
        Item(store.SpectrumDatas, slot);  // with no free slot the command ends here
    Item(store.PeakTables, slot) = PeakTable{};
    // What the slot held before is gone; a form that carries no such bits brings none.
    Item(store.PropertyRecords, slot).Param.DerivedFlags = 0;

    const std::int16_t done =
        ReadByExtension(path,
                        {data, Item(store.PropertyRecords, slot), store.LastSourceType,
                         &store.DacOffset, &store.DacSlope},
                        Item(store.PeakTables, slot), DeskFileTalk());
    if (done != TRUE_WORD) return;

    if (!CanBeDrawn(data)) {
        PutLog(path + ": a count is too far below zero to be drawn.");
        return;
    }
    SetGraph(win, row, slot, pieces.Base());
    ShowOwnCalibration(slot);
    AutoScaleBoth();  // also the magnifier, and the pile when the other window is the active one
    Change_cboGrphSel(win, row);
    ChangeActiveWin(win);
    RedrawBoth();
    ok = TRUE_WORD;
}

void SetGraph(int win, int row, int slot, const std::string& name) {
    GraphEntry& entry = RowEntry(row);
    WithdrawReplaced(entry, slot);
    entry.DataNo = static_cast<std::int16_t>(slot);
    entry.State = 1;
    entry.Visible = TRUE_WORD;
    entry.WinNo = static_cast<std::int16_t>(win);
    entry.Color = Item(store.ColorTable, slot);
    if (!name.empty()) entry.Name = name;
    Add_cboGraphSel();
    const std::int16_t channels = Item(store.SpectrumDatas, slot).DataNo;
    if (channels > store.SpanCh) {
        store.SpanCh = channels;
        WindowSpan();
    }
    RegisterRow(row);
    WindowStyleRule(win);
    RefreshRows();
}

int InsertGraph() {
    std::int16_t ok = FALSE_WORD;
    const int from = DataNo();
    ShiftGraph(0, 1, ok);
    if (ok != TRUE_WORD) return -1;
    const int slot = GetGraphSpace(-1);
    if (slot >= 0) CopyElementMarks(from, slot);  // what is made from a graph has its lines
    return slot;
}

int GetGraphSpace(int mark) {
    for (int n = 0; n < GRAPH_COUNT; ++n) {
        std::int16_t& used = Item(store.SlotUsed, n);
        if (used != FALSE_WORD) continue;
        if (mark == -1) {
            used = TRUE_WORD;
            ++store.GraphTotal;
            // What the slot held and what was fitted to it are no matter of its new spectrum.
            Item(store.FitSource, n) = 0;
            ClearElementMarks(n);
            Item(store.HandPeaks, n) = PeakTable{};
            std::replace(store.FitSource.begin(), store.FitSource.end(), Int16(n + 1), Int16(0));
        }
        return n;
    }
    Say("GetGraphSpace: Notting Space!");
    return -1;
}

void ShiftGraph(int start, int direction, std::int16_t& ok) {
    const int last = store.GraphTotal - 1;
    const Selections selected = SelectedSlots();
    ok = FALSE_WORD;
    if (last < 0) {
        Say("ShiftGraph: Data Notting!");
        return;
    }
    if (direction > 0) {
        if (last >= GRAPH_COUNT - 1) {
            Say("ShiftGraph: List Over!");
            return;
        }
        for (int row = last; row >= start; --row) RowEntry(row + 1) = RowEntry(row);
        RowEntry(start).State = 0;
    } else {
        if (start <= 0) {
            Say("ShiftGraph: List Under!");
            return;
        }
        for (int row = start; row <= last; ++row) RowEntry(row - 1) = RowEntry(row);
        RowEntry(last).State = 0;
    }
    ok = TRUE_WORD;
    // What a window has chosen goes along with its row, also in the window that nobody works in.
    for (std::size_t win = 0; win < WINDOW_COUNT; ++win) {
        const int row = selected[win] < 0 ? -1 : RowOfSlot(selected[win]);
        if (row >= 0) frmVaelAna.cboGrphSel[win].Index = row;
    }
    RefreshRows();
}

void DeleteGraph(int row) {
    const int last = store.GraphTotal - 1;
    if (last < 0) return;
    const Selections selected = SelectedSlots();
    if (RowEntry(row).State != 0) {
        std::int16_t ok = TRUE_WORD;
        const int slot = RowEntry(row).DataNo;
        ClearGrp(row, ok);
        if (ok != FALSE_WORD) return;
        DropRegionsOf(slot);
    }
    for (int from = row + 1; from <= last; ++from) RowEntry(from - 1) = RowEntry(from);
    if (row <= last) RowEntry(last) = GraphEntry{};
    Add_cboGraphSel();
    RefreshRows();
    AdjustSelections(selected);
    FreeStyleControls();
    AutoScaleBoth();
    RedrawBoth();
}

void ClearGrp(int row, std::int16_t& ok) {
    ok = TRUE_WORD;
    if (store.GraphTotal == 0) return;
    if (CheckNoSave() == TRUE_WORD) return;
    GraphEntry& entry = RowEntry(row);
    Item(store.SpectrumDatas, entry.DataNo).Count.fill(0);
    WithdrawSlot(entry.DataNo);
    GraphSel_Delete(row);
    entry.State = 0;
    --store.GraphTotal;
    Item(store.SlotUsed, entry.DataNo) = FALSE_WORD;
    Add_cboGraphSel();
    RedrawBoth();
    ok = FALSE_WORD;
}

void ClearAllGrp(std::int16_t& ok) {
    ok = FALSE_WORD;
    for (int row = 0; row < GRAPH_COUNT && ok == FALSE_WORD; ++row)
        if (RowEntry(row).State != 0) ClearGrp(row, ok);
    RefreshRows();
    RedrawBoth();
}

int GetGraphDataNo(int grp) { return RowEntry(grp < 0 ? GraphNo() : grp).DataNo; }

int RowOfSlot(int slot) {
    for (int row = 0; row < GRAPH_COUNT; ++row)
        if (RowEntry(row).State > 0 && RowEntry(row).DataNo == slot) return row;
    return -1;
}

const GraphEntry* SelectedRow(int win) {
    const GraphEntry& entry = RowEntry(std::max(0, Item(frmVaelAna.cboGrphSel, win).Index));
    return entry.State > 0 ? &entry : nullptr;
}

int RowOfName(const std::string& name) {
    for (int row = 0; row < GRAPH_COUNT; ++row)
        if (RowEntry(row).State > 0 && RowEntry(row).Name == name) return row;
    return -1;
}

bool IsDerivedName(const std::string& name) {
    return name == NAME_SMOOTH || name == NAME_BACKGROUND || name == NAME_REMOVED ||
           name == NAME_FIT;
}

int GetRealWinNo() { return frmVaelAna.ckbExpand.Value != 0 ? 0 : frmVaelAna.ActiveWin; }

int WindowOfRow(int row) { return Expanded() ? 0 : RowEntry(row).WinNo; }

int GetGrpNo() {
    return std::max(0, frmVaelAna.cboGrphSel[static_cast<std::size_t>(GetRealWinNo())].Index);
}

int GetGrpNo2() {
    const auto used = std::count_if(store.SlotUsed.begin(), store.SlotUsed.end(),
                                    [](std::int16_t word) { return word != FALSE_WORD; });
    return static_cast<int>(used) +
           frmVaelAna.cboGrphSel[static_cast<std::size_t>(GetRealWinNo())].Index;
}

void ShowCurrentRow() {
    const int row = GraphNo();
    const GraphEntry& entry = RowEntry(row);
    ShowCursorValues();
    for (int each = 0; each < WINDOW_COUNT; ++each) ChgAllCaption_chkGrp(each, row);
    frmVaelAna.itxtGraphName.Text = entry.State > 0 ? entry.Name : "";
    if (entry.State > 0) ShowOwnCalibration(entry.DataNo);
    ChangeCurChek(row);
}

void ChangeActiveWin(int win) {
    VaelAnaView& v = frmVaelAna;
    if (v.ckbExpand.Value == 0) {
        v.fraGraph[static_cast<std::size_t>(win)].Raised = true;
        v.fraGraph[static_cast<std::size_t>(1 - win)].Raised = false;
    }
    if (v.chkArea.Value != 0 && win != v.ActiveWin) RemoveAreaMarks(v.ActiveWin);
    v.ActiveWin = win;
    RefreshAreaMarks();
    ShowScale();
    ShowDrawKind();
    ShowCurrentRow();
    const GraphEntry& entry = RowEntry(GraphNo());
    if (entry.State == 0) {
        v.mnuCloseGraph.Caption = "Close Graph";
        return;
    }
    XScaleDraw();
    v.Caption = TITLE + entry.Name;
    v.mnuCloseGraph.Caption = "Close Graph(" + entry.Name + ")";
}

void Change_cboGrphSel(int win, int row) {
    if (row < 0 || row >= GRAPH_COUNT) return;  // row 10 stands for "there is none"
    Select(frmVaelAna.cboGrphSel[static_cast<std::size_t>(win)], row);
}

void cboGrphSel_Click(int win) {
    VaelAnaView& v = frmVaelAna;
    ChangeActiveWin(win);
    HidePeakMemo();
    RefreshCursorMarks();
    XScaleDraw();
    if (RowEntry(GraphNo()).State == 0) v.Caption = TITLE;  // not the name of a graph that is gone
}

Selections SelectedSlots() {
    Selections slots{-1, -1};
    for (std::size_t win = 0; win < WINDOW_COUNT; ++win) {
        const GraphEntry& entry = RowEntry(std::max(0, frmVaelAna.cboGrphSel[win].Index));
        if (entry.State > 0) slots[win] = entry.DataNo;
    }
    return slots;
}

void AdjustSelections(const Selections& slots) {
    const int last = std::max(0, store.GraphTotal - 1);
    for (std::size_t win = 0; win < WINDOW_COUNT; ++win) {
        auto& list = frmVaelAna.cboGrphSel[win];
        const int row = slots[win] < 0 ? -1 : RowOfSlot(slots[win]);
        list.Index = row >= 0 ? row : std::min(list.Index, last);
    }
    const int win = frmVaelAna.ActiveWin;
    Change_cboGrphSel(win, std::max(0, frmVaelAna.cboGrphSel[static_cast<std::size_t>(win)].Index));
}

void Add_cboGraphSel() {
    std::vector<std::string> items;
    for (int row = 0; row < GRAPH_COUNT; ++row)
        items.push_back(std::to_string(row + 1) + " " +
                        (RowEntry(row).State > 0 ? RowEntry(row).Name : ""));
    for (auto& list : frmVaelAna.cboGrphSel) list.Items = items;
    frmVaelAna.lblRows.Caption = "rows " + std::to_string(store.GraphTotal) + "/10";
}

void ChgValue_chkGrp(int win, int row, int value, bool show) {
    CheckBox& box = frmVaelAna.chkGrp[Box(win, row)];
    if (show)
        Set(box, value);
    else
        box.Value = value;
}

void ChgStrColor_chkGrp(int win, int row, const std::string& caption, Colour color) {
    CheckBox& box = frmVaelAna.chkGrp[Box(win, row)];
    box.Caption = caption;
    box.Ink = color;
}

void ChgAllCaption_chkGrp(int win, int row) {
    for (int n = 0; n < GRAPH_COUNT; ++n) {
        const GraphEntry& entry = RowEntry(n);
        ChgStrColor_chkGrp(win, n, std::to_string(n + 1), entry.State > 0 ? entry.Color : 0);
        frmVaelAna.chkGrp[Box(win, n)].Tip =
            entry.State > 0 ? entry.Name + (n == row ? " (current)" : "") : "empty row";
    }
}

void RefreshRows() {
    for (int win = 0; win < WINDOW_COUNT; ++win) {
        for (int row = 0; row < GRAPH_COUNT; ++row) {
            const GraphEntry& entry = RowEntry(row);
            const bool drawn = entry.Visible != 0 && entry.State > 0 && DrawnWindow(entry) == win;
            ChgValue_chkGrp(win, row, drawn ? 1 : 0, false);
            frmVaelAna.chkGrp[Box(win, row)].Filled = entry.State > 0;
        }
        ChgAllCaption_chkGrp(win, GetGrpNo());
    }
    GraphSel_Repl();
    RowsToManualFit();
    RefreshProperty();
    RefreshPeakCal();
}

void mnuCloseGraph_Click() {
    const GraphEntry& entry = RowEntry(GraphNo());
    if (entry.State == 0) {
        TellStatus("There is no graph in this row.");
        return;
    }
    const std::string name = entry.Name;
    const int total = store.GraphTotal;
    DeleteGraph(GraphNo());
    if (store.GraphTotal < total) TellStatus("Closed " + name + ".");
}

void mnuGraphKind_Click(const std::string& name) {
    const int row = name.empty() ? FirstRawRow() : RowOfName(name);
    Change_cboGrphSel(GetRealWinNo(), row < 0 ? GRAPH_COUNT : row);
    if (row >= 0)
        TellStatus(RowEntry(row).Name + " is the current graph.");
    else
        TellStatus(name.empty() ? "There is no graph of a file."
                                : "There is no graph " + name + ".");
}

void chkGrp_Click(int win, int row) {
    CheckBox& box = frmVaelAna.chkGrp[Box(win, row)];
    GraphEntry& entry = RowEntry(row);
    const bool magnifier = frmVaelAna.ckbExpand.Value != 0 && win == 1;
    if (magnifier || entry.State == 0) {
        box.Value = 0;
        return;
    }
    const bool wanted = box.Value != 0;
    const bool drawnHere = entry.Visible != FALSE_WORD && DrawnWindow(entry) == win;
    if (wanted != drawnHere) {
        entry.Visible = wanted ? TRUE_WORD : FALSE_WORD;
        if (wanted) {
            // It leaves the other window; in the one plot of a pile every row keeps its own.
            if (!PiledUp()) entry.WinNo = static_cast<std::int16_t>(win);
            RegisterRow(row);
        } else {
            WithdrawSlot(entry.DataNo);
        }
        FreeStyleControls();
        AutoScaleBoth();
        RedrawBoth();
    }
    RefreshRows();
    SetEGCParam(Item(store.PropertyRecords, entry.DataNo).Param.EgcCoef);
}

}  // namespace vael
