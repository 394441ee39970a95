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
    std::string TypedFrom;  // of an editable list: what it showed before
    int TypedIndex = -1;
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

/// The end of typing into a list: a text that was changed and changed back leaves it as it was.
bool TakeTyped(ListBox& list) {
    if (list.Typed == hands.TypedFrom) {
        list.Index = hands.TypedIndex;
        return true;
    }
    return !list.Enter || RunEvent(list.Owner, list.Enter);
}

bool LeaveTyped() {
    Control* control = std::exchange(hands.Typed, nullptr);
    if (control == nullptr) return true;
    if (control->Kind == ControlKind::NumberBox) {
        auto& box = static_cast<NumberBox&>(*control);
        const bool taken = TakeNumber(box, std::exchange(hands.TypedText, {}));
        return taken && (!box.Leave || RunEvent(box.Owner, box.Leave));
    }
    if (control->Kind == ControlKind::ListBox) return TakeTyped(static_cast<ListBox&>(*control));
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

/// A button that runs the very command of the close box is the view's way out: like that it does
/// not ask the box that is being typed in, so that a text which no box takes holds nobody captive.
bool IsWayOut(const Button& button) {
    using Command = void (*)();
    const Command* click = button.Click.target<Command>();
    const Command* closing = button.Owner.Closing.target<Command>();
    return click != nullptr && closing != nullptr && *click == *closing;
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
    if (IsWayOut(button)) {
        if (!button.Usable() || !MayAct(button.Owner)) return false;
        ForgetTyping(button.Owner);
        RunEvent(button.Owner, button.Click);
        return true;
    }
    return Deliver(button, [&] { RunIf(button.Click); });
}

bool RightClick(Button& button) {
    if (!button.RightClick) return false;
    return Deliver(button, [&] { button.RightClick(); });
}

bool Hover(Button& button) {
    if (!button.Hover || !button.Usable() || !MayAct(button.Owner)) return false;
    return RunEvent(button.Owner, button.Hover);
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

bool DoubleClick(Option& option) {
    if (!option.DoubleClick) return false;
    return Deliver(option, [&] { option.DoubleClick(); });
}

bool DoubleClick(TextBox& box) {
    if (!box.DoubleClick) return false;
    return Deliver(box, [&] { box.DoubleClick(); });
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

bool Type(ListBox& list, const std::string& text) {
    if (!list.Editable) return false;
    return Deliver(list, [&] {
        if (hands.Typed != &list) {
            hands.TypedFrom = list.Text();
            hands.TypedIndex = list.Index;
        }
        hands.Typed = &list;
        list.Typed = text;
        list.Index = -1;
    });
}

bool Leave(Control& box) {
    if (!MayAct(box.Owner)) return false;
    if (hands.Typed == &box) return LeaveTyped();
    if (box.Kind != ControlKind::NumberBox || !box.Usable() || !box.Owner.Visible) return false;
    const auto& number = static_cast<const NumberBox&>(box);
    return number.Leave && RunEvent(box.Owner, number.Leave);
}

void ForgetTyping(const View& view) {
    if (hands.Typed == nullptr || &hands.Typed->Owner != &view) return;
    hands.Typed = nullptr;
    hands.TypedText.clear();
}

namespace {

/// The box's own handler of Enter; nullptr for none.
const Handler* EnterOf(const Control& box) {
    const Handler* handler = nullptr;
    if (box.Kind == ControlKind::NumberBox) handler = &static_cast<const NumberBox&>(box).Enter;
    if (box.Kind == ControlKind::TextBox) handler = &static_cast<const TextBox&>(box).Enter;
    if (box.Kind == ControlKind::ListBox) handler = &static_cast<const ListBox&>(box).Enter;
    return handler != nullptr && *handler ? handler : nullptr;
}

}  // namespace

bool PressEnter(Control& box) {
    if (!box.Usable() || !MayAct(box.Owner)) return false;
    const Handler* enter = EnterOf(box);
    const bool takesText = box.Kind == ControlKind::ListBox || enter != nullptr;
    if (hands.Typed == &box && takesText && box.Kind != ControlKind::NumberBox)
        hands.Typed = nullptr;  // Enter took what was typed: leaving does not take it again
    else if (hands.Typed == &box && !LeaveTyped())
        return false;
    if (enter != nullptr) return RunEvent(box.Owner, *enter);
    (void)Key(box.Owner, {.Key = KeyPress::Name::Enter});
    return true;
}

bool Pick(ListBox& list, int index) {
    if (index < -1 || index >= static_cast<int>(list.Items.size())) return false;
    return Deliver(list, [&] {
        if (hands.Typed == &list) hands.Typed = nullptr;  // an item in place of what was typed
        list.Index = index;
        if (list.Multiple) list.Picked.assign(index >= 0 ? 1 : 0, index);
        RunIf(list.Click);
    });
}

bool PickMany(ListBox& list, std::vector<int> indexes) {
    std::sort(indexes.begin(), indexes.end());
    const int count = static_cast<int>(list.Items.size());
    if (!list.Multiple || (!indexes.empty() && (indexes.front() < 0 || indexes.back() >= count)))
        return false;
    return Deliver(list, [&] {
        list.Index = indexes.empty() ? -1 : indexes.back();
        list.Picked = std::move(indexes);
        RunIf(list.Click);
    });
}

bool DoubleClick(ListBox& list, int index) {
    if (index < 0 || index >= static_cast<int>(list.Items.size())) return false;
    return Deliver(list, [&] {
        list.Index = index;
        if (list.Multiple) list.Picked = {index};
        RunIf(list.DoubleClick);
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

namespace {

/// The cell, head included; nullptr outside the grid.
const Grid::Cell* CellOf(const Grid& grid, int column, int row) {
    if (column < 0 || row < 0 || column > grid.Columns() || row > grid.Rows()) return nullptr;
    return &grid.At(column, row);
}

void GoTo(Grid& grid, int column, int row) {
    grid.Col = column;
    grid.Row = row;
}

}  // namespace

bool Edit(Grid& grid, int column, int row, const std::string& text) {
    const Grid::Cell* cell = CellOf(grid, column, row);
    if (cell == nullptr || cell->Kind != Grid::CellKind::Text || !cell->Editable) return false;
    return Deliver(grid, [&] {
        grid.At(column, row).Text = text;
        GoTo(grid, column, row);
        if (grid.CellEdit) grid.CellEdit(column, row);
    });
}

bool Tick(Grid& grid, int column, int row) {
    const Grid::Cell* cell = CellOf(grid, column, row);
    if (cell == nullptr || cell->Kind != Grid::CellKind::Tick) return false;
    return Deliver(grid, [&] {
        auto& ticked = grid.At(column, row).Ticked;
        ticked = !ticked;
        GoTo(grid, column, row);
        if (grid.CellEdit) grid.CellEdit(column, row);
    });
}

bool Press(Grid& grid, int column, int row) {
    if (CellOf(grid, column, row) == nullptr) return false;
    return Deliver(grid, [&] {
        GoTo(grid, column, row);
        if (grid.CellClick) grid.CellClick(column, row);
    });
}

bool Key(View& view, const KeyPress& key) {
    if (!view.KeyPreview || !MayAct(view)) return false;
    bool taken = false;
    RunEvent(view, [&] { taken = view.KeyPreview(key); });
    return taken;
}

namespace {

/// The press is an act of its own; a move or a release belongs to it and asks no box again.
template <class C>
bool Grasp(C& control, MouseButton button, double x, double y) {
    if (!control.MouseDown) return false;
    return Deliver(control, [&] { control.MouseDown(button, x, y); });
}

template <class C>
bool Follow(C& control, const std::function<void(MouseButton, double, double)>& handler,
            MouseButton button, double x, double y) {
    if (!handler || !control.Usable() || !MayAct(control.Owner)) return false;
    return RunEvent(control.Owner, [&] { handler(button, x, y); });
}

}  // namespace

bool MouseDown(Picture& picture, MouseButton button, double x, double y) {
    return Grasp(picture, button, x, y);
}

bool MouseMove(Picture& picture, MouseButton button, double x, double y) {
    return Follow(picture, picture.MouseMove, button, x, y);
}

bool MouseUp(Picture& picture, MouseButton button, double x, double y) {
    return Follow(picture, picture.MouseUp, button, x, y);
}

bool MouseDown(Label& label, MouseButton button, double x, double y) {
    return Grasp(label, button, x, y);
}

bool MouseMove(Label& label, MouseButton button, double x, double y) {
    return Follow(label, label.MouseMove, button, x, y);
}

bool MouseUp(Label& label, MouseButton button, double x, double y) {
    return Follow(label, label.MouseUp, button, x, y);
}

bool MouseDown(Frame& frame, MouseButton button, double x, double y) {
    return Grasp(frame, button, x, y);
}

bool MouseMove(Frame& frame, MouseButton button, double x, double y) {
    return Follow(frame, frame.MouseMove, button, x, y);
}

bool MouseUp(Frame& frame, MouseButton button, double x, double y) {
    return Follow(frame, frame.MouseUp, button, x, y);
}

bool Wheel(Picture& picture, double notches, double x, bool sideways) {
    if (!picture.Wheel || notches == 0.0) return false;
    return Deliver(picture, [&] { picture.Wheel(notches, x, sideways); });
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
    ForgetTyping(view);
    Carry(view);
    return true;
}

bool Resize(View& view) {
    if (!view.Resized) return false;
    if (!MayAct(view)) {  // the modal view that a command waits for is drawn in its new size
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
