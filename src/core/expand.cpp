// The shown range and the window styles: zoom, scroll, the magnifier, and the pile.
#include "core/expand.h"

#include "core/cursors.h"
#include "core/fault.h"
#include "core/graphs.h"
#include "core/pointing.h"
#include "core/store.h"
#include "core/units.h"
#include "core/windows.h"
#include "toolkit/hand.h"

#include <algorithm>
#include <cmath>

namespace vael {
namespace {

constexpr int LEAST_SPAN = 16;  // channels

WindowState& Shown() { return Item(frmVaelAna.Windows, RangeWindow()); }

/// After a change of the range: plots, axis, marks; the magnifier alone in Expand style, with the
/// marks of its part in window 0.
void DrawRange() {
    HidePeakMemo();
    if (Expanded()) {
        AutoScale(1);
        RedrawWindow(1);
        RefreshBand();
    } else {
        RedrawBoth();
    }
    XScaleDraw();
}

/// Both windows' rows anew in the style that is in force.
void RedrawInStyle() {
    RegisterAllRows();
    AutoScaleBoth();
    ArrangeWindows();
    RefreshRows();
    RedrawBoth();
    RefreshBand();
    XScaleDraw();
    ShowCursorValues();
}

bool AnyRowIn(int win) {
    return std::any_of(store.GraphList.begin(), store.GraphList.end(),
                       [win](const GraphEntry& e) { return e.State > 0 && e.WinNo == win; });
}

void CheckStyleItems() {
    VaelAnaView& v = frmVaelAna;
    v.mnuWinType[0].Checked = v.WinStyle == WindowStyle::LineUp;
    v.mnuWinType[1].Checked = v.WinStyle == WindowStyle::PileUp;
    v.mnuExpandOn.Checked = v.WinStyle == WindowStyle::Expand;
    v.mnuExpandOff.Checked = v.WinStyle != WindowStyle::Expand;
}

}  // namespace

void SetExpandArea(int startCh, int width) {
    if (width < LEAST_SPAN) return;
    const int centre = Whole16(startCh + width / 2.0);
    // The part stands first, so that the cursor's marks are drawn in it.
    ShowRange(startCh, width);
    CsrX_Change(centre);
    CsrX_ChangeRight(CursorCh(), -1);
    DrawRange();
    TellStatus("Channels " + std::to_string(Shown().Start + 1) + " to " +
               std::to_string(Shown().Start + Shown().Span) + " are shown.");
}

void MoveRange(int start, int span) {
    ShowRange(start, span);
    DrawRange();
}

void ZoomAbout(int channel, double factor) {
    const WindowState now = Shown();
    const int span = std::clamp<int>(Whole32(now.Span * factor), LEAST_SPAN, store.SpanCh);
    if (span == now.Span) return;
    const double part = (channel - now.Start) / static_cast<double>(now.Span);
    MoveRange(Whole32(channel - std::clamp(part, 0.0, 1.0) * span), span);
}

void PageRange(int direction) {
    MoveRange(Shown().Start + direction * (Shown().Span / 2), Shown().Span);
}

void RangeToEnd(int direction) {
    MoveRange(direction < 0 ? 0 : store.SpanCh - Shown().Span, Shown().Span);
}

void StyleAtStart() {
    VaelAnaView& v = frmVaelAna;
    v.WinStyle = WindowStyle::LineUp;
    v.ckbExpand.Value = 0;
    v.chkWinStyle.Value = 0;
    v.chkWinStyle.Enabled = true;
    for (Menu& item : v.mnuWinType) item.Enabled = true;
    CheckStyleItems();
    FreeStyleControls();
}

void FreeStyleControls() {
    VaelAnaView& v = frmVaelAna;
    if (Expanded()) return;
    const bool may = v.chkWinStyle.Value == 0 && !AnyRowIn(1);
    v.ckbExpand.Enabled = may;
    v.mnuExpandOn.Enabled = may;
}

void cmdWider_Click() { ZoomAbout(CursorCh(), 2.0); }

void cmdNarrower_Click() { ZoomAbout(CursorCh(), 0.5); }

void hsbStartX_Change() { MoveRange(frmVaelAna.hsbStartX.Value, Shown().Span); }

void imnSpanCh_Change() {
    const double wanted = frmVaelAna.imnSpanCh.Value;
    frmVaelAna.imnSpanCh.Value = Shown().Span;
    ZoomAbout(CursorCh(), std::clamp<double>(wanted, LEAST_SPAN, store.SpanCh) / Shown().Span);
}

void ckbExpand_Click() {
    VaelAnaView& v = frmVaelAna;
    const bool on = v.ckbExpand.Value != 0;
    const auto width = static_cast<int>(v.imnSpanCh.Value);
    const int start = v.hsbStartX.Value;
    v.WinStyle = on ? WindowStyle::Expand : WindowStyle::LineUp;
    for (Control* control :
         {static_cast<Control*>(&v.chkFilePile[0]), static_cast<Control*>(&v.chkFilePile[1])})
        control->Enabled = false;
    v.chkWinStyle.Enabled = !on;
    for (Menu& item : v.mnuWinType) item.Enabled = !on;
    if (on) {
        // Window 0 shows the whole axis; the part must begin inside the spectrum of row 0.
        v.Windows[0].Start = 0;
        v.Windows[0].Span = store.SpanCh;
        Engine().SetChannelRange(0, 1, store.SpanCh);
        const int channels = Item(store.SpectrumDatas, store.GraphList[0].DataNo).DataNo;
        ShowRange(channels > 0 ? std::min(start, std::max(0, channels - width)) : start, width);
    } else {
        WindowSpan();
        for (int win = 0; win < WINDOW_COUNT; ++win) FreeShowSwitch(win);
    }
    CheckStyleItems();
    FreeStyleControls();
    v.fraGraph[0].Raised = on || v.ActiveWin == 0;
    v.fraGraph[1].Raised = !on && v.ActiveWin == 1;
    HidePeakMemo();
    ChangeActiveWin(v.ActiveWin);  // the current row may be another one now
    RedrawInStyle();
    TellStatus(on ? "The lower window magnifies the part that is dragged in the upper one."
                  : "Each window has its own graphs.");
}

void chkWinStyle_Click() {
    VaelAnaView& v = frmVaelAna;
    const bool on = v.chkWinStyle.Value != 0;
    v.WinStyle = on ? WindowStyle::PileUp : WindowStyle::LineUp;
    v.ckbExpand.Enabled = !on;
    v.mnuExpandOn.Enabled = !on;
    for (int win = 0; win < WINDOW_COUNT; ++win) {
        CheckBox& show = Item(v.chkFilePile, win);
        show.Enabled = on || AnyRowIn(1);
        show.Value = on ? 1 - win : show.Enabled ? 1 : 0;  // a pile leaves the second one out
    }
    if (on) {
        for (int row = 1; row < GRAPH_COUNT; ++row)
            if (Item(store.GraphList, row).State > 0) {
                v.cboGrphSel[1].Index = row;
                break;
            }
        if (v.ActiveWin != 0) ChangeActiveWin(0);
    }
    CheckStyleItems();
    FreeStyleControls();
    RedrawInStyle();
    TellStatus(on ? "One plot with the graphs one above the other."
                  : "Each window has its own graphs.");
}

void mnuWinType_Click(int index) {
    Set(frmVaelAna.chkWinStyle, index);
    CheckStyleItems();
}

void mnuExpand_Click(int on) {
    Set(frmVaelAna.ckbExpand, on);
    CheckStyleItems();
}

void chkFilePile_Click(int win) {
    VaelAnaView& v = frmVaelAna;
    if (!WindowShown(0) && !WindowShown(1)) {
        Item(v.chkFilePile, win).Value = 1;
        TellStatus("One window has to be shown.");
        return;
    }
    ArrangeWindows();
    if (!WindowShown(v.ActiveWin)) ChangeActiveWin(1 - v.ActiveWin);
}

}  // namespace vael
