// The area cursor: a left and a right mark in each window, and what the regions of a command are.
#include "core/areamarks.h"

#include "analysis/frmmanualfit.h"
#include "core/cursors.h"
#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/store.h"
#include "core/windows.h"
#include "display/colourtable.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace vael {
namespace {

constexpr Colour AREA_INK = Rgb(255, 100, 100);
constexpr int AREA_WIDTH = 3;  // pixels
/// A flag is a tenth and a hundred and twentieth of the range high: 0.108; so much of the height
/// is left below it.
constexpr double FLAG_ROOM = 0.88;

AreaMark& Mark(int win, int index) { return Item(Item(frmVaelAna.Windows, win).Area, index); }

int GroupOf(int index) { return index == 0 ? MARK_AREA_LEFT : MARK_AREA_RIGHT; }

/// The marks stand in the active window; in Expand style both panels show those of window 0.
bool ShowsArea(int win) {
    return frmVaelAna.chkArea.Value != 0 && (Expanded() || win == frmVaelAna.ActiveWin);
}

}  // namespace

int AreaWindow() { return GetRealWinNo(); }

void SetArea(int oneEnd, int otherEnd) {
    const int most = store.SpanCh - 1;
    Mark(AreaWindow(), 0).Channel = Whole16(std::clamp(std::min(oneEnd, otherEnd), 0, most));
    Mark(AreaWindow(), 1).Channel = Whole16(std::clamp(std::max(oneEnd, otherEnd), 0, most));
    RefreshAreaMarks();
}

void SetAreaMark(int index, int channel) {
    const bool set = channel >= 0;
    Mark(AreaWindow(), index).Channel =
        set ? Int16(std::min(channel, store.SpanCh - 1)) : Int16(AREA_UNSET);
    if (set) frmVaelAna.chkArea.Value = 1;  // a mark that is typed is seen
    RefreshAreaMarks();
}

void ClearArea() {
    Item(frmVaelAna.Windows, AreaWindow()).Area.fill(AreaMark{});
    RefreshAreaMarks();
}

void AreaToWholeAxis() {
    frmVaelAna.chkArea.Value = 1;
    SetArea(0, store.SpanCh - 1);
}

std::int16_t GetRegions(std::int16_t& start, std::int16_t& end) {
    const std::int16_t left = Mark(AreaWindow(), 0).Channel;
    const std::int16_t right = Mark(AreaWindow(), 1).Channel;
    const bool both = left >= 0 && right >= 0 && left != right;
    start = both ? left : AREA_UNSET;
    end = both ? right : AREA_UNSET;
    return both ? TRUE_WORD : FALSE_WORD;
}

void ResetRoiAll(std::int16_t& ok) {
    const bool drawn = store.Rois.RoiNum > 0;
    store.Rois = RoiList{};
    for (WindowState& window : frmVaelAna.Windows) window.Area.fill(AreaMark{});
    RefreshAreaMarks();
    ShowCursorValues();
    if (drawn) RedrawBoth();  // their colours and numbers go with them
    RefreshReports();
    ok = TRUE_WORD;
}

void DrawAreaMark(int win, int index, int channel) {
    const DrawTarget& target = Engine().Target(win);
    const double range = PlotTop(win);
    if (range <= 0.0) return;
    const double shown = Item(frmVaelAna.Windows, win).Span / 100.0;
    const double s = index == 0 ? -shown : shown;
    double h = range / 10.0;
    if (target.LogScale != 0) h = -std::log(h) / std::log(10.0);
    const int group = GroupOf(index);
    const Colour ink = PlainInk(WindowBack(win), AREA_INK, MARK_CONTRAST);
    const double x = channel;
    const double y = Mark(win, index).Height;
    const auto stroke = [&](Spot from, Spot to) {
        Engine().RegisterMark(win, group, from, to, ink, AREA_WIDTH);
    };
    const double top = y + h + range / 120.0;
    const double low = y + h - range / 100.0;
    stroke({x, y}, {x, y + h});
    stroke({x + s, top}, {x, top});
    stroke({x + s, low}, {x + s / 4.0, low});
}

void RemoveAreaMarks(int win) {
    Engine().RemoveMarks(win, MARK_AREA_LEFT);
    Engine().RemoveMarks(win, MARK_AREA_RIGHT);
    ++Item(frmVaelAna.picGraph, win).Painted;
}

void PutAreaMarks(int win) {
    if (!ShowsArea(win)) return;
    const int slot = DataNo();
    for (int index = 0; index < 2; ++index) {
        const int channel = Mark(AreaWindow(), index).Channel;
        if (channel < 0) continue;
        // On a line that reaches the top the flag stands at the side of the line, not above the
        // picture.
        const double room = PlotTop(win) * FLAG_ROOM;
        Mark(win, index).Height = std::min(PlotHeight(win, slot, channel), room);
        DrawAreaMark(win, index, channel);
    }
    ++Item(frmVaelAna.picGraph, win).Painted;
}

void RefreshAreaMarks() {
    for (int win = 0; win < WINDOW_COUNT; ++win) {
        RemoveAreaMarks(win);
        PutAreaMarks(win);
    }
    AreaToManualFit();
}

int AreaMarkAt(int channel, int reach) {
    if (frmVaelAna.chkArea.Value == 0) return -1;
    int nearest = -1;
    int distance = reach + 1;
    for (int index = 0; index < 2; ++index) {
        const int at = Mark(AreaWindow(), index).Channel;
        if (at < 0 || std::abs(at - channel) >= distance) continue;
        nearest = index;
        distance = std::abs(at - channel);
    }
    return nearest;
}

void chkArea_Click() {
    RefreshAreaMarks();
    std::int16_t start = 0;
    std::int16_t end = 0;
    if (frmVaelAna.chkArea.Value == 0)
        TellStatus("The area cursor is off.");
    else if (GetRegions(start, end) == TRUE_WORD)
        TellStatus("Area from channel " + std::to_string(start + 1) + " to " +
                   std::to_string(end + 1) + ".");
    else
        TellStatus("Drag across the plot to mark an area.");
}

}  // namespace vael
