// The user's hand and the program's hand: the only ways in which a control's handler runs.
#include "toolkit/hand.h"

#include "core/fault.h"
#include "core/text.h"

#include <algorithm>
#include <exception>
#include <utility>
#include <vector>

namespace vael {
namespace {

struct ModalEntry {
    View* Shown;
    int Depth;  // how many commands ran when it was opened
};

struct Hands {
    int Running = 0;
    std::vector<ModalEntry> Modals;
    Control* Typed = nullptr;
    std::string TypedText;  // of a number box: not in the record yet
    std::vector<View*> PendingClose;
    std::vector<View*> PendingResize;
    std::vector<std::function<void()>> Later;
    FaultSink Sink = [](View&, const std::string&) {};
    bool Settling = false;
};

Hands hands;

void Carry(View& view) {
    if (view.Closing)
        RunEvent(view, view.Closing);
    else
        RunEvent(view, [&view] { view.Visible = false; });
}

void Once(std::vector<View*>& list, View& view) {
    if (std::find(list.begin(), list.end(), &view) == list.end()) list.push_back(&view);
}

/// After the outermost event: rebuilt views, resizes and close boxes that had to wait.
void Settle() {
    if (hands.Running > 0 || hands.Settling) return;
    hands.Settling = true;
    for (bool more = true; more;) {
        more = false;
        if (!hands.Later.empty()) {
            auto later = std::exchange(hands.Later, {});
            for (auto& action : later) action();
            more = true;
        } else if (!hands.PendingResize.empty()) {
            View* view = hands.PendingResize.front();
            hands.PendingResize.erase(hands.PendingResize.begin());
            if (view->Resized) RunEvent(*view, view->Resized);
            more = true;
        } else if (!hands.PendingClose.empty()) {
            View* view = hands.PendingClose.front();
            hands.PendingClose.erase(hands.PendingClose.begin());
            Carry(*view);
            more = true;
        }
    }
    hands.Settling = false;
    TheDesk().Show();
}

/// Takes what was typed into a number box into its record; text that is no number is dropped.
bool TakeNumber(NumberBox& box, const std::string& text) {
    const auto value = ParseNumber(text);
    if (!value) return true;
    const double held = std::clamp(*value, box.Least, box.Most);
    if (held == box.Value) return true;
    box.Value = held;
    return !box.Change || RunEvent(box.Owner, box.Change);
}

bool LeaveTyped() {
    Control* control = std::exchange(hands.Typed, nullptr);
    if (control == nullptr) return true;
    if (control->Kind == ControlKind::NumberBox)
        return TakeNumber(static_cast<NumberBox&>(*control), std::exchange(hands.TypedText, {}));
    auto& box = static_cast<TextBox&>(*control);
    if (!box.Leave) return true;
    bool leaves = true;
    RunEvent(box.Owner, [&] { leaves = box.Leave(); });
    if (!leaves) hands.Typed = control;
    return leaves;
}

/// The way of every act: is the control usable, may its view act, does the typed box let go.
template <class Act>
bool Deliver(Control& control, Act act) {
    if (!control.Usable() || !MayAct(control.Owner)) return false;
    if (hands.Typed != nullptr && hands.Typed != &control &&
        &hands.Typed->Owner == &control.Owner && !LeaveTyped())
        return false;
    if (!control.Usable()) return false;  // the box that was left may have changed it
    RunEvent(control.Owner, act);
    return true;
}

void RunIf(const Handler& handler) {
    if (handler) handler();
}

void ClearGroup(Option& option) {
    for (Control* other : option.Owner.Controls())
        if (other->Kind == ControlKind::Option && other != &option)
            if (auto& sibling = static_cast<Option&>(*other); sibling.Group == option.Group)
                sibling.Value = false;
}

}  // namespace

bool CommandRunning() { return hands.Running > 0; }

bool MayAct(const View& view) {
    if (view.StaysLive) return true;
    if (!hands.Modals.empty())
        return hands.Modals.back().Shown == &view && hands.Modals.back().Depth == hands.Running;
    return hands.Running == 0;
}

bool RunEvent(View& view, const std::function<void()>& command) {
    bool fine = true;
    ++hands.Running;
    try {
        command();
    } catch (const std::exception& trouble) {
        fine = false;
        hands.Sink(view, trouble.what());
    }
    --hands.Running;
    if (hands.Running == 0)
        Settle();
    else
        TheDesk().Show();
    return fine;
}

void ShowModal(View& view) {
    view.Visible = true;
    hands.Modals.push_back({&view, hands.Running});
    const auto mark = hands.Modals.size();
    try {
        TheDesk().RunModal(view);
    } catch (...) {
        hands.Modals.resize(mark - 1);
        view.Visible = false;
        throw;
    }
    hands.Modals.resize(mark - 1);
}

void OnFault(FaultSink sink) { hands.Sink = std::move(sink); }

void Afterwards(std::function<void()> action) {
    hands.Later.push_back(std::move(action));
    Settle();
}

void ResetHands() {
    FaultSink sink = std::move(hands.Sink);
    hands = Hands{};
    hands.Sink = std::move(sink);
}

const Control* TypedBox() { return hands.Typed; }

bool Click(Button& button) {
    return Deliver(button, [&] { RunIf(button.Click); });
}

bool Click(Menu& item) {
    return Deliver(item, [&] { RunIf(item.Click); });
}

bool Click(Option& option) {
    return Deliver(option, [&] {
        ClearGroup(option);
        option.Value = true;
        RunIf(option.Click);
    });
}

bool Tick(CheckBox& box) { return Tick(box, box.Value == 0 ? 1 : 0); }

bool Tick(CheckBox& box, int value) {
    return Deliver(box, [&] {
        if (box.Value == value) return;
        box.Value = value;
        RunIf(box.Click);
    });
}

bool Type(TextBox& box, const std::string& text) {
    if (box.ReadOnly) return false;
    return Deliver(box, [&] {
        hands.Typed = &box;
        if (box.Text == text) return;
        box.Text = text;
        RunIf(box.Change);
    });
}

bool Type(NumberBox& box, const std::string& text) {
    if (box.ReadOnly) return false;
    return Deliver(box, [&] {
        hands.Typed = &box;
        hands.TypedText = text;
    });
}

bool Leave(Control& box) {
    if (hands.Typed != &box || !MayAct(box.Owner)) return false;
    return LeaveTyped();
}

bool PressEnter(Control& box) {
    if (!box.Usable() || !MayAct(box.Owner)) return false;
    if (box.Kind == ControlKind::NumberBox) {
        auto& number = static_cast<NumberBox&>(box);
        if (hands.Typed == &box) LeaveTyped();
        return !number.Enter || RunEvent(box.Owner, number.Enter);
    }
    auto& text = static_cast<TextBox&>(box);
    return !text.Enter || RunEvent(box.Owner, text.Enter);
}

bool Pick(ListBox& list, int index) {
    if (index < -1 || index >= static_cast<int>(list.Items.size())) return false;
    return Deliver(list, [&] {
        list.Index = index;
        RunIf(list.Click);
    });
}

bool Pick(Tabs& tabs, int index) {
    if (index < 0 || index >= static_cast<int>(tabs.Captions.size())) return false;
    return Deliver(tabs, [&] {
        tabs.Index = index;
        RunIf(tabs.Click);
    });
}

bool Scroll(ScrollBar& bar, int value) {
    return Deliver(bar, [&] {
        const int held = std::clamp(value, bar.Least, std::max(bar.Least, bar.Most));
        if (held == bar.Value) return;
        bar.Value = held;
        RunIf(bar.Change);
    });
}

bool Edit(Grid& grid, int column, int row, const std::string& text) {
    return Deliver(grid, [&] {
        grid.At(column, row).Text = text;
        grid.Col = column;
        grid.Row = row;
        if (grid.CellEdit) grid.CellEdit(column, row);
    });
}

bool Tick(Grid& grid, int column, int row) {
    return Deliver(grid, [&] {
        auto& cell = grid.At(column, row);
        cell.Ticked = !cell.Ticked;
        grid.Col = column;
        grid.Row = row;
        if (grid.CellEdit) grid.CellEdit(column, row);
    });
}

bool Press(Grid& grid, int column, int row) {
    return Deliver(grid, [&] {
        grid.Col = column;
        grid.Row = row;
        if (grid.CellClick) grid.CellClick(column, row);
    });
}

bool Key(View& view, const KeyPress& key) {
    if (!view.KeyPreview || !MayAct(view)) return false;
    bool taken = false;
    RunEvent(view, [&] { taken = view.KeyPreview(key); });
    return taken;
}

bool MouseDown(Picture& picture, MouseButton button, double x, double y) {
    if (!picture.MouseDown) return false;
    return Deliver(picture, [&] { picture.MouseDown(button, x, y); });
}

bool MouseMove(Picture& picture, MouseButton button, double x, double y) {
    if (!picture.MouseMove || !picture.Usable() || !MayAct(picture.Owner)) return false;
    return RunEvent(picture.Owner, [&] { picture.MouseMove(button, x, y); });
}

bool MouseUp(Picture& picture, MouseButton button, double x, double y) {
    if (!picture.MouseUp || !picture.Usable() || !MayAct(picture.Owner)) return false;
    return RunEvent(picture.Owner, [&] { picture.MouseUp(button, x, y); });
}

bool DoubleClick(Picture& picture, double x, double y) {
    if (!picture.DoubleClick) return false;
    return Deliver(picture, [&] { picture.DoubleClick(x, y); });
}

bool Elapse(Timer& timer) {
    if (!timer.Enabled || CommandRunning() || !timer.Tick) return false;
    return RunEvent(timer.Owner, timer.Tick);
}

bool Close(View& view) {
    if (!MayAct(view)) {
        // A close box during a command waits; behind a modal view it does nothing.
        if (hands.Modals.empty()) Once(hands.PendingClose, view);
        return false;
    }
    if (hands.Typed != nullptr && &hands.Typed->Owner == &view) hands.Typed = nullptr;
    Carry(view);
    return true;
}

bool Resize(View& view) {
    if (!view.Resized) return false;
    if (CommandRunning()) {
        Once(hands.PendingResize, view);
        return false;
    }
    return RunEvent(view, view.Resized);
}

void Select(ListBox& list, int index) {
    list.Index = index;
    RunIf(list.Click);
}

void Set(CheckBox& box, int value) {
    if (box.Value == value) return;
    box.Value = value;
    RunIf(box.Click);
}

void Set(Option& option) {
    if (option.Value) return;
    ClearGroup(option);
    option.Value = true;
    RunIf(option.Click);
}

void Set(ScrollBar& bar, int value) {
    if (bar.Value == value) return;
    bar.Value = value;
    RunIf(bar.Change);
}

void Set(Tabs& tabs, int index) {
    if (tabs.Index == index) return;
    tabs.Index = index;
    RunIf(tabs.Click);
}

void Put(TextBox& box, const std::string& text) {
    if (box.Text == text) return;
    box.Text = text;
    RunIf(box.Change);
}

void Put(NumberBox& box, double value) {
    if (box.Value == value) return;
    box.Value = value;
    RunIf(box.Change);
}

}  // namespace vael
