// The operation panel: smoothing, background and fitting of the current row, and their rows.
#include "core/operations.h"

#include "analysis/backgraund.h"
#include "analysis/calc.h"
#include "analysis/expresscommands.h"
#include "analysis/frmmanualfit.h"
#include "analysis/frmpeakreport.h"
#include "analysis/naxcommands.h"
#include "analysis/peak.h"
#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/fault.h"
#include "core/frmlog.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/regionmarks.h"
#include "core/store.h"
#include "core/text.h"
#include "core/windows.h"
#include "lattice/frmpeakcal.h"
#include "toolkit/hand.h"

namespace vael {
namespace {

PropertyRecord& Property(int slot) { return Item(store.PropertyRecords, slot); }
SpectrumData& Spectrum(int slot) { return Item(store.SpectrumDatas, slot); }

bool HasFlag(int slot, std::uint16_t bit) { return (Property(slot).Param.DerivedFlags & bit) != 0; }

void SetFlag(int slot, std::uint16_t bit) { Property(slot).Param.DerivedFlags |= bit; }

/// Gives back a slot that InsertGraph took, and the room at row 0.
void TakeBackInsert(int slot) {
    std::int16_t ok = FALSE_WORD;
    ShiftGraph(1, -1, ok);
    Item(store.SlotUsed, slot) = FALSE_WORD;
    --store.GraphTotal;
    RefreshRows();
}

/// The slots of a background and a removed row; -1 where there was no room.
struct BackSlots {
    int Back = -1;
    int Removed = -1;
    [[nodiscard]] bool Fine() const { return Back >= 0 && Removed >= 0; }
};

BackSlots TakeBackSlots(int source) {
    const bool fit = HasFlag(source, DERIVED_FIT);
    BackSlots out;
    const bool backIsSource = !fit && HasFlag(source, DERIVED_BACKGROUND);
    out.Back = backIsSource ? source : InsertGraph();
    if (out.Back < 0) return out;
    const bool removedIsSource = !fit && HasFlag(source, DERIVED_REMOVED);
    out.Removed = removedIsSource ? source : InsertGraph();
    if (out.Removed < 0 && !backIsSource) TakeBackInsert(out.Back);
    return out;
}

/// A spectrum's background, and what stands above it; nothing below 0.
struct DerivedCounts {
    SpectrumData Back;
    SpectrumData Above;
};

DerivedCounts BackgroundOf(const SpectrumData& counts) {
    DerivedCounts out{.Back = counts, .Above = counts};
    Talk talk;
    talk.say = [](std::string_view text, std::string_view title) {
        Say(std::string(text), std::string(title));
    };
    BackGraund(settings.BackInterval, settings.BackTimes, out.Back.Count, counts.DataNo, talk);
    for (int i = 0; i < counts.DataNo; ++i) {
        const Int32 difference = Int32(Item(counts.Count, i)) - Int32(Item(out.Back.Count, i));
        Item(out.Above.Count, i) = std::max<std::int32_t>(0, difference);
    }
    return out;
}

/// A row for a slot: the one that holds it, or row 0, which an insertion has freed.
int RowFor(int slot) {
    const int row = RowOfSlot(slot);
    return row >= 0 ? row : 0;
}

/// Rows of inserted slots: row 0 is the last inserted one, row 1 the one before. They go to the
/// real window: the magnifier owns no graphs.
void SetDerived(int row, int slot, const char* name) { SetGraph(GetRealWinNo(), row, slot, name); }

/// Button 4: the peaks whose centre lies in the area go, after a question.
void DeletePeaksInArea() {
    if (NothingThere()) return;
    if (!AskYesNo("It will deletes peaks in the range of the area cursor")) return;
    std::int16_t start = 0;
    std::int16_t end = 0;
    int gone = 0;
    if (GetRegions(start, end) == TRUE_WORD) {
        PeakTable& peaks = Item(store.PeakTables, DataNo());
        const int from = std::min(start, end);
        const int to = std::max(start, end);
        for (auto found = CountPeakInRegion(peaks, from, to); found.Count > 0;
             found = CountPeakInRegion(peaks, from, to)) {
            DeletePeak(GetRealWinNo(), DataNo(), found.First, peaks, RegionMarks());
            ++gone;
        }
    }
    std::int16_t ok = FALSE_WORD;
    ResetRoiAll(ok);
    HidePeakMemo();
    RedrawBoth();
    TellStatus("Deleted " + std::to_string(gone) + (gone == 1 ? " peak." : " peaks."));
}

/// Button 5.
void AskAndClear() {
    if (!AskYesNo("Clear All Data", "VaelAna")) return;
    ClearAllData();
    cmdOperationInit();
    TellStatus("All rows are empty.");
}

/// Button 7: the area cursor over the whole axis, or off; the button that deletes in it follows.
void ToggleArea() {
    VaelAnaView& v = frmVaelAna;
    const bool off = v.chkArea.Value != 0;
    if (off) {
        std::int16_t ok = FALSE_WORD;
        ResetRoiAll(ok);
        v.chkArea.Value = 0;
    } else {
        AreaToWholeAxis();
    }
    v.cmdOperation[4].Enabled = !off;
    chkArea_Click();
}

/// What a NAX run leaves in the rows "BackGraund" and "BackRemv" for the row `from`.
void NaxAreaFitBackGroundDataSet(int from) {
    const int back = RowOfName(NAME_BACKGROUND);
    const int removed = RowOfName(NAME_REMOVED);
    StoreNaxBackground(back);
    SetDerived(back, GetGraphDataNo(back), NAME_BACKGROUND);
    if (removed < 0) return;
    StoreBackRemoved(from, back, removed);
    SetDerived(removed, GetGraphDataNo(removed), NAME_REMOVED);
}

void SwitchButtonsForFit() {
    auto& buttons = frmVaelAna.cmdOperation;
    buttons[0].Enabled = false;
    buttons[2].Enabled = false;
    buttons[1].Enabled = true;
    buttons[4].Enabled = true;
}

/// False, with the trouble in the log, when a run-time error ended the fit of the current row.
bool NaxFitsCurrentRow(bool switchButtons) {
    const BusyCursor busy;
    if (switchButtons) SwitchButtonsForFit();
    try {
        NaxAreaFit(GetRealWinNo(), GraphNo());
        return true;
    } catch (const std::exception& trouble) {
        PutLog(trouble.what());
        return false;
    }
}

/// Button 1: in ExpressFitting the area and the regions of interest go first.
void ManualFitButton() {
    if (NothingThere()) return;
    std::int16_t ok = FALSE_WORD;
    if (store.FitMode == 1) ResetRoiAll(ok);
    ShowManualFit();
}

/// Buttons 0 and 2.
void FitButton(bool smoothFirst) {
    if (NothingThere()) return;
    if (smoothFirst) mnuSmooth();
    if (store.FitMode == 1) {
        AreaToWholeAxis();
        mnuFitting();
        return;
    }
    const int source = DataNo();
    if (NaxFitsCurrentRow(smoothFirst)) return;
    // Rows may have moved under the selection: the advice to retry is about this one.
    const int row = RowOfSlot(source);
    if (row >= 0 && row != GraphNo()) Change_cboGrphSel(GetRealWinNo(), row);
    Say("Fitting was failed. Please change fit parameters(Change BG Coefficient to 5.0) and "
        "retry");
}

/// The current row into a row "Smooth", as a copy where `smooth` is off.
void SmoothRow(bool smooth) {
    if (NothingThere()) return;
    const int source = DataNo();
    // The numbers come first: a fault in them leaves the rows as they are.
    SpectrumData smoothed = Spectrum(source);
    if (smooth) SmoothingData(settings.SmoothIndex, smoothed.Count, smoothed.DataNo);
    int slot = source;
    if (!HasFlag(source, DERIVED_SMOOTH)) {
        slot = InsertGraph();
        if (slot < 0) return;
        Property(slot) = Property(source);
        Item(store.PeakTables, slot) = PeakTable{};
    }
    Spectrum(slot) = smoothed;
    SetFlag(slot, DERIVED_SMOOTH);
    const int row = slot == source ? RowFor(slot) : 0;
    SetDerived(row, slot, NAME_SMOOTH);
    Change_cboGrphSel(GetRealWinNo(), row);
    AutoScaleBoth();
    RedrawBoth();
    TellStatus(smooth ? "Smoothed into row " + std::to_string(row + 1) + "."
                      : "Copied into row " + std::to_string(row + 1) +
                            ": smoothing is off in the settings.");
}

/// What the energy calibration locks in the main view.
void EnableForCalibration(bool on) {
    VaelAnaView& v = frmVaelAna;
    v.cmdFiles[0].Enabled = on;
    v.cmdFiles[1].Enabled = on;
    for (Button& button : v.cmdEnergy) button.Enabled = on;
    for (Button& button : v.cmdOperation) button.Enabled = on;
}

}  // namespace

bool NothingThere() {
    if (Item(store.GraphList, GraphNo()).State != 0) return false;
    if (store.GraphTotal == 0) {
        (void)InsertGraph();
        return true;
    }
    TellStatus("There is no spectrum in this row.");
    return true;
}

void mnuSmooth() { SmoothRow(settings.SmoothingOn == 1); }

void Smooting_Calib() { SmoothRow(true); }

void mnuBackGround() {
    if (NothingThere()) return;
    const int source = DataNo();
    const SpectrumData counts = Spectrum(source);
    const DerivedCounts derived = BackgroundOf(counts);  // first: a fault leaves the rows alone
    const BackSlots slots = TakeBackSlots(source);
    if (!slots.Fine()) return;
    const int win = GetRealWinNo();
    const bool backNew = slots.Back != source;
    const bool removedNew = slots.Removed != source;

    if (backNew) {
        Property(slots.Back) = Property(source);
        Item(store.PeakTables, slots.Back) = PeakTable{};
    }
    Spectrum(slots.Back) = derived.Back;
    SetFlag(slots.Back, DERIVED_BACKGROUND);
    const int backRow = backNew ? (removedNew ? 1 : 0) : RowFor(slots.Back);
    SetDerived(backRow, slots.Back, NAME_BACKGROUND);

    if (removedNew) {
        Property(slots.Removed) = Property(source);
        Item(store.PeakTables, slots.Removed) = PeakTable{};
    }
    SpectrumData& removed = Spectrum(slots.Removed);
    removed.DataNo = counts.DataNo;
    for (int i = 0; i < counts.DataNo; ++i) Item(removed.Count, i) = Item(derived.Above.Count, i);
    SetFlag(slots.Removed, DERIVED_REMOVED);
    const int removedRow = removedNew ? 0 : RowFor(slots.Removed);
    SetDerived(removedRow, slots.Removed, NAME_REMOVED);
    Change_cboGrphSel(win, removedRow);
    AutoScaleBoth();
    RedrawBoth();
    TellStatus("Background in row " + std::to_string(backRow + 1) + ", counts above it in row " +
               std::to_string(removedRow + 1) + ".");
}

void cmdAutoFit() {
    if (store.GraphTotal != 1) {
        TellStatus("AutoFitting works on a single spectrum: there are " +
                   std::to_string(store.GraphTotal) + " rows.");
        return;
    }
    if (NothingThere()) return;  // the one spectrum is in another row than the chosen one
    VaelAnaView& v = frmVaelAna;
    mnuSmooth();
    mnuBackGround();
    if (store.FitMode == 1) {
        AreaToWholeAxis();
        mnuFitting();
        std::int16_t ok = FALSE_WORD;
        ResetRoiAll(ok);
        RedrawBoth();
    } else {
        const BusyCursor busy;
        NaxAllFit(GetRealWinNo(), GraphNo());
    }
    for (std::size_t k = 1; k <= 4; ++k) v.cmdOperation[k].Enabled = false;
}

int MakeBackRows(int row) {
    const int source = GetGraphDataNo(row);
    const BackSlots slots = TakeBackSlots(source);
    if (!slots.Fine()) return -1;
    const auto empty = [&](int slot, int at, std::uint16_t bit, const char* name) {
        if (slot != source) {
            Property(slot) = Property(source);
            Spectrum(slot) = SpectrumData{};
            Spectrum(slot).DataNo = Spectrum(source).DataNo;
            Item(store.PeakTables, slot) = PeakTable{};
        }
        SetFlag(slot, bit);
        SetDerived(at, slot, name);
    };
    const bool removedNew = slots.Removed != source;
    if (slots.Back != source)
        empty(slots.Back, removedNew ? 1 : 0, DERIVED_BACKGROUND, NAME_BACKGROUND);
    if (removedNew) empty(slots.Removed, 0, DERIVED_REMOVED, NAME_REMOVED);
    return RowOfSlot(source);
}

void StoreNaxBackground(int row) {
    SpectrumData& target = Spectrum(GetGraphDataNo(row));
    for (std::size_t i = 0; i < DEFAULT_CHANNELS; ++i)
        if (store.BackGroundBuf[i] != 0) target.Count[i] = store.BackGroundBuf[i];
}

void StoreBackRemoved(int src, int back, int removed) {
    const SpectrumData& source = Spectrum(GetGraphDataNo(src));
    const SpectrumData& below = Spectrum(GetGraphDataNo(back));
    SpectrumData& target = Spectrum(GetGraphDataNo(removed));
    // The length of 4096 stands even for longer spectra.
    for (std::size_t i = 0; i < DEFAULT_CHANNELS; ++i)
        target.Count[i] =
            below.Count[i] > 0 ? Int32(source.Count[i]) - Int32(below.Count[i]) : Int32(0);
}

void NaxAreaFit(int win, int row) {
    const int source = GetGraphDataNo(row);
    int from = row;
    if (RowOfName(NAME_BACKGROUND) < 0) {
        from = MakeBackRows(row);
        if (from < 0) return;
    }
    NaxAllFit(win, from);
    if (RowOfName(NAME_FIT) < 0) {
        Say("Fit Failed");
        Change_cboGrphSel(win, RowOfSlot(source));
        return;
    }
    from = RowOfSlot(source);
    NaxAreaFitBackGroundDataSet(from);
    Change_cboGrphSel(win, from);
    store.AreaFitDone = TRUE_WORD;
    AutoScaleBoth();
    RedrawBoth();
}

void ClearAllData() { RemoveAllRows(); }

void cmdOperationInit() {
    auto& buttons = frmVaelAna.cmdOperation;
    buttons[0].Enabled = true;
    buttons[2].Enabled = true;
    buttons[3].Enabled = true;  // "AutoFitting" had switched it off
    buttons[1].Enabled = false;
    buttons[4].Enabled = false;
    if (frmVaelAna.Calibrating) EnableForCalibration(false);
}

void EneCalStart() {
    frmVaelAna.Calibrating = true;
    EnableForCalibration(false);
}

void EneCalEnd() {
    frmVaelAna.Calibrating = false;
    EnableForCalibration(true);
}

void SetEGCParam(const std::array<double, 3>& coef) {
    frmVaelAna.lblEGC.Caption = FormatNumber(coef[0], "0.000000") + "Ch^2+" +
                                FormatNumber(coef[1], "0.000000") + "Ch+" +
                                FormatNumber(coef[2], "0.000000");
}

void GoToPeak(int direction) {
    const PeakTable& peaks = Item(store.PeakTables, DataNo());
    if (Item(store.GraphList, GraphNo()).State == 0 || peaks.PeakNum == 0) {
        TellStatus("There are no peaks in this row.");
        return;
    }
    const int before = CursorCh();
    JumpPeak(DataNo(), before, direction);
    if (CursorCh() == before)
        TellStatus(direction == 1 ? "This is the last peak." : "This is the first peak.");
    else
        TellStatus("Peak " + frmVaelAna.itxtNoPeak.Text + " of " + std::to_string(peaks.PeakNum) +
                   ".");
}

void SetDrawKind(int kind) {
    for (int win = 0; win < WINDOW_COUNT; ++win)
        if (win == frmVaelAna.ActiveWin || Expanded())
            Engine().Target(win).DrawKind = static_cast<std::int16_t>(kind);
    ShowDrawKind();
    RedrawBoth();
}

void ShowDrawKind() {
    const int kind = Engine().Target(frmVaelAna.ActiveWin).DrawKind;
    frmVaelAna.mnuDot.Checked = kind == DRAW_DOT;
    frmVaelAna.mnuLine.Checked = kind == DRAW_LINE;
    frmVaelAna.mnuPaint.Checked = kind == DRAW_PAINT;
}

void EditProgramFile(const std::string& name) {
    if (!TheDesk().OpenText(store.ProgramFolder + "/" + name)) Say("crystal file open error");
}

void cmdOperation_Click(int index) {
    switch (index) {
        case 0: FitButton(true); break;
        case 1: ManualFitButton(); break;
        case 2: FitButton(false); break;
        case 3: mnuSmooth(); break;
        case 4: DeletePeaksInArea(); break;
        case 5: AskAndClear(); break;
        case 6: GoToPeak(0); break;
        case 7: ToggleArea(); break;
        case 8: GoToPeak(1); break;
        case 9: ShowPeakCal(); break;
        case 10: ShowPeakReport(); break;
        case 11: spnCursor_SpinUpDown("-"); break;
        case 12: spnCursor_SpinUpDown("+"); break;
        default: break;
    }
}

}  // namespace vael
