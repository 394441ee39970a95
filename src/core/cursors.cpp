// The channel cursor, its mark in the windows, and the boxes that read it out.
#include "core/cursors.h"

#include "analysis/peak.h"
#include "analysis/roi.h"
#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/store.h"
#include "core/text.h"
#include "core/units.h"
#include "core/windows.h"
#include "display/colourtable.h"

#include <algorithm>
#include <cmath>

namespace vael {
namespace {

constexpr Colour CURSOR_INK = Rgb(255, 255, 255);  // turns what it crosses into its opposite
constexpr int MEMO_WIDTH = 168;                    // of the frame, pixels
constexpr int MEMO_HEIGHT = 84;
constexpr int MEMO_GAP = 8;
constexpr double SHORT_MARK = 1.0 / 10.0;  // of the height; it ends a sixtieth above the count
constexpr double SHORT_GAP = 1.0 / 60.0;   // and stays in sight on a line that reaches the top

constexpr const char* WHOLE_FORMAT = "####0";
constexpr const char* FINE_FORMAT = "####0.00";

int Held(double ch) { return static_cast<int>(std::clamp<double>(ch, 0, store.SpanCh - 1)); }

bool DrawsAny(int win) {
    return std::any_of(store.GraphList.begin(), store.GraphList.end(),
                       [win](const GraphEntry& entry) { return Draws(win, entry); });
}

/// Outside Expand style the shown range moves by what the cursor is beyond it.
void FollowCursor() {
    if (Expanded()) return;
    const WindowState& window = frmVaelAna.Windows[0];
    const int last = window.Start + window.Span - 1;
    int start = window.Start;
    if (frmVaelAna.Cursor < window.Start) start = frmVaelAna.Cursor;
    if (frmVaelAna.Cursor > last) start += frmVaelAna.Cursor - last;
    if (start == window.Start) return;
    ShowRange(start, window.Span);
    HidePeakMemo();
    RedrawBoth();
    XScaleDraw();
}

/// A cursor box of a spectrum against the energy: it has no angle.
double EnergyBox(int unit, int ch, int slot) {
    return unit == UNIT_2THETA ? 0.0 : ChToUnit(unit, ch, ParamInForce(slot), DacNow());
}

/// The view of a DAC spectrum: it has no energy, whatever its record or the default calibration
/// hold, so keV and Q are 0, and its d comes from the angle through Lambda, also in the box of d.
double AngleBox(int unit, int ch, int slot) {
    if (unit == UNIT_KEV || unit == UNIT_Q) return 0.0;
    return ChToUnit(unit == UNIT_D ? int{UNIT_2THETA} : unit, ch, ParamInForce(slot), DacNow());
}

void MoveCursor(double ch) {
    VaelAnaView& v = frmVaelAna;
    v.Cursor = Held(ch);
    v.inumCursorCh.Format = WHOLE_FORMAT;
    v.inumCursorCh.Value = v.Cursor + 1;
    ShowCursorValues();
    RefreshCursorMarks();
    FollowCursor();
}

}  // namespace

int CursorCh() { return Held(frmVaelAna.Cursor); }

void CsrX_Change(int ch) { MoveCursor(ch); }

void CsrX_ChangeRight(int ch, int keep) {
    const WindowState& window = Item(frmVaelAna.Windows, RangeWindow());
    if (Expanded() && keep == 0) {
        ShowRange(window.Start, ch - window.Start + 1);
        return;
    }
    int start = window.Start;
    if (ch < start) start = ch;
    if (ch >= start + window.Span) start = ch - window.Span + 1;
    ShowRange(start, window.Span);
}

void spnCursor_SpinUpDown(const std::string& step) {
    const int now = CursorCh();
    if (step == "+" || step == "-")
        MoveCursor(step == "+" ? now + 1 : now - 1);
    else if (!step.empty() && (step.front() == '+' || step.front() == '-'))
        MoveCursor(RoundEven(now + Number(step)));
    else
        MoveCursor(RoundEven(Number(step)));
}

int CsrChannel(int win, double x) {
    const WindowState& window = Item(frmVaelAna.Windows, win);
    const double width = std::max(1, Item(frmVaelAna.picGraph, win).Width - 1);
    const double part = std::clamp(x / width, 0.0, 1.0);
    return Held(RoundEven(window.Start + part * (window.Span - 1)));
}

void ShowCursorValues() {
    VaelAnaView& v = frmVaelAna;
    const int ch = CursorCh();
    const int slot = DataNo();
    const bool angle = Item(store.PropertyRecords, slot).SourceType == SOURCE_DAC;
    constexpr std::array<int, 5> SHOWN{UNIT_CH, UNIT_KEV, UNIT_D, UNIT_Q, UNIT_2THETA};
    for (std::size_t k = 0; k < SHOWN.size(); ++k)
        v.inumCursorDisp[k].Value =
            angle ? AngleBox(SHOWN[k], ch, slot) : EnergyBox(SHOWN[k], ch, slot);
    for (int win = 0; win < WINDOW_COUNT; ++win) {
        const GraphEntry* entry = SelectedRow(win);
        const bool inside =
            entry != nullptr && ch < Item(store.SpectrumDatas, entry->DataNo).DataNo;
        Item(v.inumCursorCnt, win).Value =
            inside ? Item(Item(store.SpectrumDatas, entry->DataNo).Count, ch) : 0;
    }
    const bool there = SelectedRow(GetRealWinNo()) != nullptr;
    const int roi = there ? FindRoiAt(store.Rois, static_cast<std::uint16_t>(slot), ch) : -1;
    const int peak = there ? FindPeakAt(Item(store.PeakTables, slot), ch) : -1;
    v.itxtNoRoi.Text = roi < 0 ? "" : std::to_string(roi + 1);
    v.itxtNoPeak.Text = peak < 0 ? "" : std::to_string(peak + 1);
}

void PutCursorMark(int win) {
    const WindowState& window = Item(frmVaelAna.Windows, win);
    const int ch = CursorCh();
    if (!DrawsAny(win) || ch < window.Start || ch >= window.Start + window.Span) return;
    const double top = PlotTop(win);
    const Colour ink = PlainInk(WindowBack(win), CURSOR_INK, MARK_CONTRAST);
    if (frmVaelAna.chkCsrType.Value != 0) {
        Engine().RegisterMark(win, MARK_CURSOR, {double(ch), 0.0}, {double(ch), top}, ink, 1);
        return;
    }
    const GraphEntry* entry = SelectedRow(win == 1 && Expanded() ? 0 : win);
    const double foot = entry == nullptr
                            ? 0.0
                            : std::min(PlotHeight(win, entry->DataNo, ch) + top * SHORT_GAP,
                                       top * (1.0 - SHORT_MARK));
    Engine().RegisterMark(win, MARK_CURSOR, {double(ch), foot},
                          {double(ch), foot + top * SHORT_MARK}, ink, 2);
}

void RefreshCursorMarks() {
    for (int win = 0; win < WINDOW_COUNT; ++win) {
        Engine().RemoveMarks(win, MARK_CURSOR);
        PutCursorMark(win);
        ++Item(frmVaelAna.picGraph, win).Painted;
    }
}

void JumpPeak(int slot, int channel, int direction) {
    const auto jump = JumpPeak(Item(store.PeakTables, slot), channel, direction);
    if (!jump) return;
    CsrX_Change(jump->Channel);
    // The box takes the centre as the table has it, unrounded and counted from 0.
    frmVaelAna.inumCursorCh.Format = FINE_FORMAT;
    frmVaelAna.inumCursorCh.Value = jump->Position;
}

void ShowPeakMemo(int win, int slot, int peak) {
    VaelAnaView& v = frmVaelAna;
    const PeakRecord& record = Item(Item(store.PeakTables, slot).Peak, peak);
    const ParamRecord& param = ParamInForce(slot);
    const int unit = AxisUnit();
    // 1. and 2. Position and full width in the unit.
    const double p = ChToUnit(unit, record.Position, param, DacNow());
    const double f = WidthToUnit(unit, record.Width + record.Width, param);
    Item(v.lblMemo, win).Caption = UnitName(unit) + "=" + FormatNumber(p, "####0.000") +
                                   UnitAbbrev(unit) + "\rFWHM=" + FormatNumber(f, "##0.000") +
                                   UnitAbbrev(unit) +
                                   "\rVal=" + FormatNumber(record.Amplitude, "#######0.0") +
                                   "\rNet=" + FormatNumber(record.Intensity, "#########0.0");
    // 3. At the cursor, above the peak on the scale in force.
    const WindowState& window = Item(v.Windows, win);
    const Picture& plot = Item(v.picGraph, win);
    const double across =
        (CursorCh() - window.Start) / std::max(1.0, window.Span - 1.0) * plot.Width;
    const double height = std::clamp(
        v.ckbLogScale.Value != 0 ? std::log10(std::max(1.0, record.Amplitude)) : record.Amplitude,
        0.0, PlotTop(win));
    const double down = (1.0 - height / std::max(1.0, PlotTop(win))) * plot.Height;
    Frame& frame = Item(v.fraMemo, win);
    frame.Left =
        std::clamp(static_cast<int>(across) + MEMO_GAP, 0, std::max(0, plot.Width - MEMO_WIDTH));
    frame.Top = std::clamp(static_cast<int>(down) - MEMO_HEIGHT - MEMO_GAP, 0,
                           std::max(0, plot.Height - MEMO_HEIGHT));
    frame.Visible = true;
}

void HidePeakMemo() {
    for (Frame& memo : frmVaelAna.fraMemo) memo.Visible = false;
}

void inumCursorCh_Change() { MoveCursor(RoundEven(frmVaelAna.inumCursorCh.Value) - 1); }

}  // namespace vael
