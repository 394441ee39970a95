// The mouse and the keys on the plots: cursor, area edges, the band of the magnifier, scrolling.
#include "core/pointing.h"

#include "analysis/peak.h"
#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/expand.h"
#include "core/fault.h"
#include "core/graphs.h"
#include "core/scales.h"
#include "core/store.h"
#include "core/windows.h"
#include "display/colourtable.h"
#include "toolkit/hand.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace vael {
namespace {

constexpr int GRAB_PIXELS = 4;      // how near a mark the pointer takes it
constexpr int SCROLL_STEP = 10;     // channels a tick
constexpr double END_ROOM = 10.0;   // nearer to its end the scroll goes all the way
constexpr int MEMO_EDGE = 24;       // of a dragged memo so much stays in sight, pixels
constexpr double LEAST_BAND = 1.2;  // contrast from which on the chosen colour is seen at all

using Held = Dragging::What;

Dragging& Drag() { return frmVaelAna.Drag; }

WindowState& State(int win) { return Item(frmVaelAna.Windows, win); }

/// Channels that lie under the pixels in which a mark is taken.
int Reach(int win) {
    const double width = std::max(1, Item(frmVaelAna.picGraph, win).Width);
    return std::max(1, static_cast<int>(std::ceil(GRAB_PIXELS * State(win).Span / width)));
}

bool OnCursor(int win, double x) { return std::abs(CsrChannel(win, x) - CursorCh()) <= Reach(win); }

bool AreaIsSet() {
    std::int16_t start = 0;
    std::int16_t end = 0;
    return GetRegions(start, end) == TRUE_WORD;
}

void ShapePointer(int win, double x) {
    Pointer shape = Pointer::Arrow;
    if (AreaMarkAt(CsrChannel(win, x), Reach(win)) >= 0)
        shape = Pointer::Width;
    else if (OnCursor(win, x))
        shape = Pointer::Finger;
    Item(frmVaelAna.picGraph, win).Shape = shape;
}

/// The ink that shows the chosen colour on the ground of window 0.
Colour BandInk() {
    const Colour ground = WindowBack(0);
    const Colour ink = InkToShow(ground, Item(store.ColorTable, ENTRY_EXPAND_AREA));
    return PlainInk(ground, ink, LEAST_BAND);
}

/// The edges of a part of window 0, with exclusive or.
void PutBand(int from, int to) {
    Engine().RemoveMarks(0, MARK_BAND);
    const Colour ink = BandInk();
    const double top = PlotTop(0);
    for (const int edge : {from, to})
        Engine().RegisterMark(0, MARK_BAND, {double(edge), 0.0}, {double(edge), top}, ink, 1);
    for (const double level : {0.0, top})
        Engine().RegisterMark(0, MARK_BAND, {double(from), level}, {double(to), level}, ink, 3);
    ++frmVaelAna.picGraph[0].Painted;
}

/// What the drag holds goes to the channel under the pointer.
void DragTo(int win, double x) {
    const int channel = CsrChannel(win, x);
    switch (Drag().Held) {
        case Held::Cursor: spnCursor_SpinUpDown(std::to_string(channel)); break;
        // An edge that is dragged across the other one becomes the other one.
        case Held::Edge: SetArea(Drag().From, channel); break;
        case Held::Band: PutBand(Drag().From, channel); break;
        case Held::Nothing: break;
    }
}

/// The end of an area that stays while the other one is dragged.
void TakeEdge(int win, int edge) {
    Drag().Held = Held::Edge;
    Drag().From = Item(State(AreaWindow()).Area, 1 - edge).Channel;
    if (Drag().From < 0) Drag().From = CsrChannel(win, Drag().PointerX);
}

/// Left or Right with Ctrl: the cursor's channel is one end of an area, the other end follows the
/// cursor. A cursor that stands on an end of the area takes that end along.
void StepArea(const std::string& step) {
    const int before = CursorCh();
    std::int16_t start = 0;
    std::int16_t end = 0;
    int fixed = before;
    if (frmVaelAna.chkArea.Value != 0 && GetRegions(start, end) == TRUE_WORD)
        fixed = before == start ? end : before == end ? start : before;
    spnCursor_SpinUpDown(step);
    frmVaelAna.chkArea.Value = 1;
    SetArea(fixed, CursorCh());
    if (GetRegions(start, end) == TRUE_WORD)
        TellStatus("Area from channel " + std::to_string(start + 1) + " to " +
                   std::to_string(end + 1) + ".");
}

void EndDrag() {
    Drag() = {};
    frmVaelAna.timCursor.Enabled = false;
}

bool StepKey(const KeyPress& key, const char* sign) {
    if (key.Alt) return false;  // the peak jump of the menu
    const std::string step = sign + std::string(key.Shift ? "20" : "1");
    if (key.Ctrl)
        StepArea(step);
    else
        spnCursor_SpinUpDown(step);
    return true;
}

}  // namespace

void PlotMouseDown(int win, MouseButton button, double x, double) {
    if (button != MouseButton::Left) return;
    VaelAnaView& v = frmVaelAna;
    if (v.ActiveWin != win) ChangeActiveWin(win);
    Drag() = {.Held = Held::Cursor, .Window = win, .PointerX = x};
    const int channel = CsrChannel(win, x);
    const int edge = AreaMarkAt(channel, Reach(win));
    if (edge >= 0) {
        TakeEdge(win, edge);
    } else if (v.chkArea.Value != 0 && !AreaIsSet()) {
        TakeEdge(win, 1);
    } else if (Expanded() && win == 0) {
        Drag().Held = Held::Band;
        Drag().From = channel;
    }
    if (Drag().Held == Held::Cursor && !OnCursor(win, x)) DragTo(win, x);
    v.timCursor.Enabled = true;
    ShapePointer(win, x);
}

void PlotMouseMove(int win, MouseButton button, double x, double) {
    // A release that a dialog or a running command swallowed: the drag is over all the same.
    if (button == MouseButton::None) EndDrag();
    if (button == MouseButton::Left && Drag().Held != Held::Nothing && Drag().Window == win) {
        Drag().PointerX = x;
        DragTo(win, x);
    }
    ShowCursorValues();
    ShapePointer(win, x);
}

void PlotMouseUp(int win, MouseButton button, double x, double) {
    if (button != MouseButton::Left || Drag().Held == Held::Nothing) return;
    const Dragging done = Drag();
    EndDrag();
    if (done.Held == Held::Band) {
        const int channel = CsrChannel(win, x);
        const int start = std::min(done.From, channel);
        const int width = std::abs(channel - done.From) + 1;
        if (width <= Reach(win) + 1) {
            spnCursor_SpinUpDown(std::to_string(channel));  // a click, not a band
            RefreshBand();
        } else {
            SetExpandArea(start, width);
            RefreshBand();  // also where the band was too narrow to change anything
        }
    } else if (done.Held == Held::Edge) {
        if (!AreaIsSet()) ClearArea();  // a click marks nothing
        chkArea_Click();
    }
    spnCursor_SpinUpDown("+0");
    ShapePointer(win, x);
}

void PlotDoubleClick(int win, double x, double) {
    HidePeakMemo();
    if (frmVaelAna.ActiveWin != win) ChangeActiveWin(win);
    const int channel = CsrChannel(win, x);
    const PeakTable& peaks = Item(store.PeakTables, DataNo());
    // A line of a few channels is narrower than a finger: the pointer may miss it by its reach.
    int peak = FindPeakAt(peaks, channel);
    for (int off = 1; peak < 0 && off <= Reach(win); ++off) {
        peak = FindPeakAt(peaks, channel - off);
        if (peak < 0) peak = FindPeakAt(peaks, channel + off);
    }
    if (peak < 0 || Item(store.GraphList, GraphNo()).State == 0) return;
    CsrX_Change(ChannelOf(Item(peaks.Peak, peak).Position));
    ShowPeakMemo(win, DataNo(), peak);
}

void PlotWheel(int win, double notches, double x, bool shift) {
    if (notches == 0.0) return;
    const WindowState& window = State(RangeWindow());
    if (shift) {
        const double step = std::max(1.0, window.Span / 10.0) * std::fabs(notches);
        MoveRange(window.Start + (notches > 0 ? -1 : 1) * std::max(1, static_cast<int>(step)),
                  window.Span);
        return;
    }
    const double factor = std::pow(0.8, std::clamp(notches, -10.0, 10.0));
    ZoomAbout(CsrChannel(win, x), factor);
}

void MemoMouseDown(int, MouseButton button, double x, double y) {
    if (button == MouseButton::Left) frmVaelAna.MemoGrasp = {x, y};
}

void MemoMouseMove(int win, MouseButton button, double x, double y) {
    if (button != MouseButton::Left) return;
    const Picture& plot = Item(frmVaelAna.picGraph, win);
    Frame& frame = Item(frmVaelAna.fraMemo, win);
    frame.Left = std::clamp(frame.Left + static_cast<int>(x - frmVaelAna.MemoGrasp.X), 0,
                            std::max(0, plot.Width - MEMO_EDGE));
    frame.Top = std::clamp(frame.Top + static_cast<int>(y - frmVaelAna.MemoGrasp.Y), 0,
                           std::max(0, plot.Height - MEMO_EDGE));
}

void timCursor_Tick() {
    if (Drag().Held == Held::Nothing || (Expanded() && Drag().Window == 0)) return;
    const int win = Drag().Window;
    const double width = Item(frmVaelAna.picGraph, win).Width;
    if (Drag().PointerX >= 0.0 && Drag().PointerX <= width) return;
    const int direction = Drag().PointerX < 0.0 ? -1 : 1;
    const WindowState& window = State(RangeWindow());
    int start = window.Start + direction * SCROLL_STEP;
    const int most = store.SpanCh - window.Span;
    if (start < END_ROOM) start = direction < 0 ? 0 : start;
    if (most - start < END_ROOM) start = direction > 0 ? most : start;
    if (start != window.Start) MoveRange(start, window.Span);
    DragTo(win, Drag().PointerX);
}

bool MainKeys(const KeyPress& key) {
    using K = KeyPress::Name;
    switch (key.Key) {
        case K::Left: return StepKey(key, "-");
        case K::Right: return StepKey(key, "+");
        default: break;
    }
    if (key.Alt || key.Ctrl) return false;
    switch (key.Key) {
        case K::Up: StepScale(1); return true;
        case K::Down: StepScale(-1); return true;
        case K::Add: cmdWider_Click(); return true;
        case K::Subtract: cmdNarrower_Click(); return true;
        case K::Decimal:
            frmVaelAna.ckbLogScale.Value = 1 - frmVaelAna.ckbLogScale.Value;
            ckbScale_Click(ScaleMode::Log);
            return true;
        case K::PageUp: PageRange(-1); return true;
        case K::PageDown: PageRange(1); return true;
        case K::Home: RangeToEnd(-1); return true;
        case K::End: RangeToEnd(1); return true;
        case K::Escape: HidePeakMemo(); return true;
        default: return false;
    }
}

void RefreshBand() {
    Engine().RemoveMarks(0, MARK_BAND);
    if (!Expanded()) return;
    PutBand(State(1).Start, State(1).Start + State(1).Span - 1);
}

}  // namespace vael
