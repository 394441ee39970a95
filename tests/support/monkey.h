// A monkey at the workbench: random acts of the user's hand on every view, and what must hold after
// each of them.
#pragma once

#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/store.h"
#include "core/windows.h"
#include "toolkit/hand.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace vael::test {

class Monkey {
public:
    explicit Monkey(std::uint64_t seed) : random_(seed) {}

    int Below(int n) { return n <= 0 ? 0 : std::uniform_int_distribution<int>(0, n - 1)(random_); }
    bool Chance(int percent) { return Below(100) < percent; }
    template <class T>
    const T& AnyOf(const std::vector<T>& items) {
        return items[static_cast<std::size_t>(Below(static_cast<int>(items.size())))];
    }

    std::string LastAct;  // what it did, for a failure
    int Taken = 0;        // acts that were taken

    /// One act on a view that is visible.
    void Act() {
        std::vector<View*> shown;
        for (View* view : AllViews())
            if (view->Visible) shown.push_back(view);
        if (shown.empty()) return;
        ActOn(Chance(60) ? static_cast<View&>(frmVaelAna) : *AnyOf(shown));
    }

    void ActOn(View& view) {
        const int kind = Below(100);
        if (kind < 12) {
            Note(view.Name + " key", Key(view, AnyKey()));
        } else if (kind < 14) {
            Note(view.Name + " resize", Resize(view));
        } else if (kind < 15 && &view != &frmVaelAna) {
            Note(view.Name + " close", Close(view));
        } else {
            // Mostly what works; now and then what does not, which must ignore it.
            std::vector<Control*> controls;
            const bool any = Chance(5);
            for (Control* control : view.Controls())
                if (any || (control->Usable() && control->Kind != ControlKind::Frame &&
                            control->Kind != ControlKind::Label))
                    controls.push_back(control);
            if (!controls.empty()) ActOn(*AnyOf(controls));
        }
    }

    std::string AnyText() {
        static const std::vector<std::string> texts{
            "",           "0",    "1",   "-1",  "20",    "4096",  "1e9",
            "99999",      "-5.5", "abc", "log", "auto",  "12k",   "3m",
            "2147483648", ".",    "+",   "5.",  "0.5",   " 7 ",   "\xe3\x82\xb0",
            "1000",       "100",  "nan", "inf", "a b;c", "Smooth"};
        return AnyOf(texts);
    }

private:
    void Note(const std::string& what, bool taken) {
        LastAct = what + (taken ? "" : " (not taken)");
        Taken += taken ? 1 : 0;
    }

    KeyPress AnyKey() {
        KeyPress key;
        key.Key = static_cast<KeyPress::Name>(Below(static_cast<int>(KeyPress::Name::Delete) + 1));
        if (Chance(30)) key.Key = Chance(50) ? KeyPress::Name::Left : KeyPress::Name::Right;
        key.Shift = Chance(25);
        key.Ctrl = Chance(15);
        key.Alt = Chance(5);
        return key;
    }

    void ActOn(Control& c) {
        const std::string name = c.Owner.Name + "." + c.Name;
        switch (c.Kind) {
            case ControlKind::Button: OnButton(static_cast<Button&>(c), name); break;
            case ControlKind::Menu: Note(name, Click(static_cast<Menu&>(c))); break;
            case ControlKind::CheckBox: Note(name, Tick(static_cast<CheckBox&>(c))); break;
            case ControlKind::Option:
                Note(name, Chance(20) ? DoubleClick(static_cast<Option&>(c))
                                      : Click(static_cast<Option&>(c)));
                break;
            case ControlKind::TextBox: OnText(static_cast<TextBox&>(c), name); break;
            case ControlKind::NumberBox: OnText(static_cast<NumberBox&>(c), name); break;
            case ControlKind::ListBox: OnList(static_cast<ListBox&>(c), name); break;
            case ControlKind::ScrollBar: {
                auto& bar = static_cast<ScrollBar&>(c);
                const int value = bar.Least - 5 + Below(bar.Most - bar.Least + 11);
                Note(name + " to " + std::to_string(value), Scroll(bar, value));
                break;
            }
            case ControlKind::Grid: OnGrid(static_cast<Grid&>(c), name); break;
            case ControlKind::Tabs: {
                auto& tabs = static_cast<Tabs&>(c);
                Note(name, Pick(tabs, Below(static_cast<int>(tabs.Captions.size()))));
                break;
            }
            case ControlKind::Picture: OnPicture(static_cast<Picture&>(c), name); break;
            case ControlKind::Timer: Note(name, Elapse(static_cast<Timer&>(c))); break;
            case ControlKind::Label:
            case ControlKind::Frame: break;
        }
    }

    void OnButton(Button& button, const std::string& name) {
        if (button.Hover) Hover(button);
        if (button.RightClick && Chance(20)) return Note(name + " right", RightClick(button));
        Note(name, Click(button));
    }

    template <class Box>
    void OnText(Box& box, const std::string& name) {
        if constexpr (std::is_same_v<Box, TextBox>)
            if (Chance(10)) return Note(name + " double", DoubleClick(box));
        const std::string text = AnyText();
        const bool taken = Type(box, text);
        Note(name + " \"" + text + "\"", taken);
        if (!taken) return;
        if (Chance(60))
            PressEnter(box);
        else if (Chance(50))
            Leave(box);
    }

    void OnList(ListBox& list, const std::string& name) {
        const int items = static_cast<int>(list.Items.size());
        if (list.Editable && Chance(40)) {
            const std::string text = AnyText();
            Note(name + " \"" + text + "\"", Type(list, text));
            PressEnter(list);
        } else if (items > 0) {
            const int item = Below(items);
            Note(name + " item " + std::to_string(item),
                 Chance(10) ? DoubleClick(list, item) : Pick(list, item));
        }
    }

    void OnGrid(Grid& grid, const std::string& name) {
        if (grid.Rows() == 0 || grid.Columns() == 0) return;
        const int column = 1 + Below(grid.Columns());
        const int row = 1 + Below(grid.Rows());
        const std::string place = name + " " + std::to_string(column) + "," + std::to_string(row);
        const auto& cell = std::as_const(grid).At(column, row);
        if (cell.Kind == Grid::CellKind::Tick && Chance(50))
            Note(place + " tick", Tick(grid, column, row));
        else if (cell.Editable && Chance(50))
            Note(place + " edit", Edit(grid, column, row, AnyText()));
        else
            Note(place, Press(grid, column, row));
    }

    void OnPicture(Picture& picture, const std::string& name) {
        const double x = Below(picture.Width + 200) - 100;
        const double y = Below(picture.Height + 60) - 30;
        const MouseButton button = Chance(90) ? MouseButton::Left : MouseButton::Right;
        switch (Below(7)) {
            case 0: Note(name + " down", MouseDown(picture, button, x, y)); break;
            case 1: Note(name + " move", MouseMove(picture, button, x, y)); break;
            case 2: Note(name + " up", MouseUp(picture, button, x, y)); break;
            case 3: Note(name + " double", DoubleClick(picture, x, y)); break;
            case 4:
                Note(name + " wheel", Wheel(picture, (Below(81) - 40) / 10.0, x, Chance(30)));
                break;
            case 5: Note(name + " hover", MouseMove(picture, MouseButton::None, x, y)); break;
            default: {
                const double to = Below(picture.Width + 200) - 100;
                Note(name + " drag", MouseDown(picture, button, x, y));
                MouseMove(picture, button, (x + to) / 2, y);
                for (Control* control : picture.Owner.Controls())
                    if (control->Kind == ControlKind::Timer) Elapse(static_cast<Timer&>(*control));
                MouseMove(picture, button, to, y);
                MouseUp(picture, button, to, y);
                break;
            }
        }
    }

    std::mt19937_64 random_;
};

/// What must hold after every act; each breach is one sentence.
inline std::vector<std::string> Breaches() {
    std::vector<std::string> out;
    const auto demand = [&out](bool fine, const std::string& what) {
        if (!fine) out.push_back(what);
    };
    std::array<int, SLOT_COUNT> rowsOfSlot{};
    int used = 0;
    for (const std::int16_t word : store.SlotUsed) used += word != 0 ? 1 : 0;
    demand(store.GraphTotal == used, "GraphTotal is " + std::to_string(store.GraphTotal) + ", " +
                                         std::to_string(used) + " slots are marked");
    for (int row = 0; row < GRAPH_COUNT; ++row) {
        const GraphEntry& entry = store.GraphList[static_cast<std::size_t>(row)];
        if (entry.State <= 0) continue;
        const std::string which = "row " + std::to_string(row);
        if (entry.DataNo < 0 || entry.DataNo >= GRAPH_COUNT) {
            out.push_back(which + " has no slot");
            continue;
        }
        const auto slot = static_cast<std::size_t>(entry.DataNo);
        demand(store.SlotUsed[slot] != 0, which + " points to a slot that is not marked");
        demand(++rowsOfSlot[slot] == 1, which + " shares its slot");
        demand(entry.WinNo == 0 || entry.WinNo == 1, which + " is in no window");
        demand(!entry.Name.empty(), which + " has no name");
    }
    for (std::size_t slot = 0; slot < SLOT_COUNT; ++slot) {
        const std::string which = "slot " + std::to_string(slot);
        const int channels = store.SpectrumDatas[slot].DataNo;
        demand(channels >= 0 && channels <= MAX_CHANNELS, which + ": channels");
        const PeakTable& peaks = store.PeakTables[slot];
        demand(peaks.PeakNum >= 0 && peaks.PeakNum <= MAX_PEAKS, which + ": number of peaks");
        // A fit may move a centre past its neighbour, and the order stays; but it is a number.
        for (int i = 0; i < peaks.PeakNum && i < MAX_PEAKS; ++i)
            demand(std::isfinite(peaks.Peak[static_cast<std::size_t>(i)].Position),
                   which + ": a centre is no number");
    }
    demand(store.Rois.RoiNum >= 0 && store.Rois.RoiNum <= MAX_ROIS, "number of regions");
    demand(store.SpanCh >= DEFAULT_CHANNELS && store.SpanCh <= MAX_CHANNELS, "SpanCh");

    const VaelAnaView& v = frmVaelAna;
    demand(v.ActiveWin == 0 || v.ActiveWin == 1, "active window");
    demand(v.Cursor >= 0 && v.Cursor < store.SpanCh, "cursor");
    for (int win = 0; win < WINDOW_COUNT; ++win) {
        const auto w = static_cast<std::size_t>(win);
        const std::string which = "window " + std::to_string(win);
        const WindowState& state = v.Windows[w];
        demand(state.Start >= 0 && state.Span >= 2 && state.Start + state.Span <= store.SpanCh,
               which + ": range");
        demand(Engine().Target(win).XStart == state.Start &&
                   Engine().Target(win).XEnd == state.Start + state.Span - 1,
               which + ": the engine shows another range");
        demand(state.FullScale >= 10 && state.FullScale <= 10000000, which + ": full scale");
        for (const AreaMark& mark : state.Area)
            demand(mark.Channel >= -1 && mark.Channel < store.SpanCh, which + ": area mark");
        for (const GraphEntry& entry : store.GraphList) {
            // The result of graph arithmetic is drawn from slot 0 in any window, with no row.
            if (entry.State <= 0 || entry.DataNo == 0) continue;
            const auto& graph = Engine().Target(win).Graph[static_cast<std::size_t>(entry.DataNo)];
            demand((graph.GraphInUse != 0) == Draws(win, entry),
                   which + ": the engine draws other rows than it should (" + entry.Name + ")");
        }
    }
    demand(WindowShown(0) || WindowShown(1), "no window is shown");
    demand(v.ckbVtAuto.Value + v.ckbLogScale.Value + v.ckbNorScale.Value == 1, "scale modes");
    demand((v.WinStyle == WindowStyle::Expand) == (v.ckbExpand.Value != 0), "Expand");
    demand((v.WinStyle == WindowStyle::PileUp) == (v.chkWinStyle.Value != 0), "PileUp");
    for (View* view : AllViews())
        for (Control* control : view->Controls()) {
            if (control->Kind == ControlKind::ListBox) {
                const auto& list = static_cast<const ListBox&>(*control);
                demand(list.Index >= -1 && list.Index < static_cast<int>(list.Items.size()),
                       view->Name + "." + list.Name + ": selection");
            }
            if (control->Kind == ControlKind::ScrollBar) {
                const auto& bar = static_cast<const ScrollBar&>(*control);
                demand(bar.Value >= bar.Least && bar.Value <= std::max(bar.Least, bar.Most),
                       view->Name + "." + bar.Name + ": place");
            }
        }
    demand(!CommandRunning(), "a command is still running");
    return out;
}

}  // namespace vael::test
