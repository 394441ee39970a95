// What the energy calibration does with the main view's rows: prepare, fit in the area, take away.
#include "calibration/calibcommands.h"

#include "analysis/expresscommands.h"
#include "analysis/peak.h"
#include "calibration/frmdialogcalibc.h"
#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/operations.h"
#include "core/store.h"
#include "core/windows.h"
#include "toolkit/desk.h"

#include <algorithm>

namespace vael {
namespace {

PeakTable& Peaks(int slot) { return Item(store.PeakTables, slot); }

/// Index of the highest peak of a slot between two channels, or -1.
int HighestPeak(int slot, int from, int to) {
    const PeakTable& peaks = Peaks(slot);
    int best = -1;
    for (int i = 0; i < peaks.PeakNum; ++i) {
        const PeakRecord& peak = Item(peaks.Peak, i);
        if (peak.Position < from || peak.Position > to) continue;
        if (best < 0 || peak.Amplitude > Item(peaks.Peak, best).Amplitude) best = i;
    }
    return best;
}

void SelectSlot(int win, int slot) {
    const int row = RowOfSlot(slot);
    if (row >= 0 && row != GraphNo()) Change_cboGrphSel(win, row);
}

/// The area cursor off for as long as it lives; its marks stay.
struct AreaCursorOff {
    AreaCursorOff() { frmVaelAna.chkArea.Value = 0; }
    ~AreaCursorOff() { frmVaelAna.chkArea.Value = 1; }
    AreaCursorOff(const AreaCursorOff&) = delete;
    AreaCursorOff& operator=(const AreaCursorOff&) = delete;
};

/// Fits the highest peak of the current row in the area, searched where there is none yet. The
/// command of the menu takes the peak below the cursor while the area cursor is off: so the peaks
/// of other lines, and the regions, stay as they are.
void FitAlone(int win, int from, int to) {
    const int slot = DataNo();
    if (HighestPeak(slot, from, to) < 0) InsertPeaks(win, GraphNo(), from, to);
    const int peak = HighestPeak(slot, from, to);
    if (peak < 0) return;
    CsrX_Change(ChannelOf(Item(Peaks(slot).Peak, peak).Position));
    const AreaCursorOff off;
    mnuFitting();
}

}  // namespace

void Calib_SmothBk() {
    if (NothingThere()) return;
    {
        const BusyCursor busy;
        mnuSmooth();
        mnuBackGround();
    }
    if (!Expanded()) ChangeActiveWin(frmVaelAna.ActiveWin);
}

void Calib_FitDel() {
    int gone = 0;
    const auto clear = [&gone](int slot) {
        gone += Peaks(slot).PeakNum;
        Peaks(slot) = PeakTable{};
    };
    for (int row = RowOfName(NAME_FIT); row >= 0; row = RowOfName(NAME_FIT)) {
        const int slot = GetGraphDataNo(row);
        const int source = Item(store.FitSource, slot) - 1;
        if (source >= 0) clear(source);
        Peaks(slot) = PeakTable{};
        const int total = store.GraphTotal;
        DeleteGraph(row);
        if (store.GraphTotal == total) return;  // the user keeps what is not saved
    }
    if (Item(store.GraphList, GraphNo()).State != 0) clear(DataNo());
    HidePeakMemo();
    ChangeActiveWin(frmVaelAna.ActiveWin);
    AutoScaleBoth();
    RedrawBoth();
    TellStatus(gone == 0 ? "There is no fit." : "The fit was removed.");
}

void Calib_Auto(bool peakSplit) {
    if (NothingThere()) return;
    const int win = GetRealWinNo();
    const int former = DataNo();
    std::int16_t start = 0;
    std::int16_t end = 0;
    if (GetRegions(start, end) != TRUE_WORD) {
        Say("Plz Set ROI");
        return;
    }
    const int from = std::min(start, end);
    const int to = std::max(start, end);
    if (const int row = RowOfName(NAME_REMOVED); row >= 0) Change_cboGrphSel(win, row);
    const int fitted = DataNo();
    frmVaelAna.chkArea.Value = 1;  // an area that is not shown counts too, and is shown from now on
    if (peakSplit)
        PeakSep();
    else
        FitAlone(win, from, to);

    const int peak = HighestPeak(fitted, from, to);
    if (peak >= 0) CsrX_Change(ChannelOf(Item(Peaks(fitted).Peak, peak).Position));
    SelectSlot(win, former);
    SetArea(from, to);
    RedrawBoth();
    if (peak < 0)
        TellStatus("There is no peak in the area.");
    else
        EnterChannel({Item(Peaks(fitted).Peak, peak).Position + 1.0, true});
}

void Calib_Empty() {
    for (GraphEntry& entry : store.GraphList) entry.State = std::min<std::int16_t>(entry.State, 1);
    RemoveAllRows();
    store.AreaFitDone = FALSE_WORD;
}

CalibCentre CentreAtCursor() {
    const auto in = [](int row) -> const PeakRecord* {
        if (row < 0 || Item(store.GraphList, row).State == 0) return nullptr;
        const PeakTable& peaks = Peaks(GetGraphDataNo(row));
        const int index = FindPeakAt(peaks, CursorCh());
        return index < 0 ? nullptr : &Item(peaks.Peak, index);
    };
    const PeakRecord* peak = in(GraphNo());
    if (peak == nullptr) peak = in(RowOfName(NAME_REMOVED));
    if (peak == nullptr) return {CursorCh() + 1.0, false};
    return {peak->Position + 1.0, true};
}

}  // namespace vael
