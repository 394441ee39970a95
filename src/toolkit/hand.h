// The user's hand and the program's hand: the only ways in which a control's handler runs.
#pragma once

#include "toolkit/controls.h"
#include "toolkit/desk.h"

#include <functional>
#include <new>
#include <string>
#include <vector>

namespace vael {

// --- The user's hand, for a desktop and for tests alike -----------------------------------------
// Each writes the record, runs the handler as one command (a Fault or any standard exception ends
// the command and goes to the fault sink), then lets the desk show what changed. The result tells
// whether the act was taken: a disabled, hidden or withheld control ignores it, and so does every
// view but the ones named below while a command runs. The hand remembers the box last typed in: an
// act elsewhere in that view first runs the box's Leave, and is dropped when that returns false.
bool Click(Button& button);
bool RightClick(Button& button);
bool Hover(Button& button);  // no act of its own: it asks no box that is being typed in
bool Click(Menu& item);
bool Click(Option& option);
bool DoubleClick(Option& option);
bool DoubleClick(TextBox& box);       // also of a box that only shows
bool Tick(CheckBox& box);             // toggles
bool Tick(CheckBox& box, int value);  // nothing happens when it has that value
bool Type(TextBox& box, const std::string& text);
bool Type(NumberBox& box, const std::string& text);
bool Type(ListBox& list, const std::string& text);  // into an editable list
bool Leave(Control& box);                           // the focus goes away from a box
/// Enter in a text or number box or an editable list takes what was typed: leaving the box does not
/// take it again. Where the box has no use for it the key goes on to the view, after the box was
/// left.
bool PressEnter(Control& box);
bool Pick(ListBox& list, int index);
bool PickMany(ListBox& list, std::vector<int> indexes);  // of a list with `Multiple`
bool DoubleClick(ListBox& list, int index);
bool Pick(Tabs& tabs, int index);
bool Scroll(ScrollBar& bar, int value);
bool Edit(Grid& grid, int column, int row, const std::string& text);  // of an editable text
bool Tick(Grid& grid, int column, int row);                           // of a cell with a tick
bool Press(Grid& grid, int column, int row);
bool Key(View& view, const KeyPress& key);
/// Mouse on a picture, a label or a frame, in its own pixels, also outside it during a drag.
bool MouseDown(Picture& picture, MouseButton button, double x, double y);
bool MouseMove(Picture& picture, MouseButton button, double x, double y);
bool MouseUp(Picture& picture, MouseButton button, double x, double y);
bool MouseDown(Label& label, MouseButton button, double x, double y);
bool MouseMove(Label& label, MouseButton button, double x, double y);
bool MouseUp(Label& label, MouseButton button, double x, double y);
bool MouseDown(Frame& frame, MouseButton button, double x, double y);
bool MouseMove(Frame& frame, MouseButton button, double x, double y);
bool MouseUp(Frame& frame, MouseButton button, double x, double y);
bool DoubleClick(Picture& picture, double x, double y);
bool Wheel(Picture& picture, double notches, double x, bool sideways);
bool Elapse(Timer& timer);
/// The close box. While a command runs it is remembered and carried out afterwards. It does not ask
/// the box that is being typed in, so nobody is held captive.
bool Close(View& view);
/// A change of size, carried out after the running command.
bool Resize(View& view);

/// The box that is being typed in, nullptr for none.
[[nodiscard]] const Control* TypedBox();

// --- The program's hand, where setting a value must run the control's own handler ---------------
void Select(ListBox& list, int index);            // always, also for the same index
void Set(CheckBox& box, int value);               // when the value differs
void Set(Option& option);                         // when it is not set
void Set(ScrollBar& bar, int value);              // when the value differs
void Set(Tabs& tabs, int index);                  // when it differs
void Put(TextBox& box, const std::string& text);  // runs Change when the text differs
void Put(NumberBox& box, double value);           // runs Change when the value differs

// --- Commands -----------------------------------------------------------------------------------
/// True while a command runs.
[[nodiscard]] bool CommandRunning();

/// Whether an act on this view would be taken now: no command runs; or the view is the modal one
/// that the running command opened and waits for; or it is one that stays live.
[[nodiscard]] bool MayAct(const View& view);

/// Runs `command` as an event of `view`: faults are trapped here, per delivered event, so that a
/// fault in a modal view does not unwind the command below it. False when it ended in a fault.
bool RunEvent(View& view, const std::function<void()>& command);

/// Shows a view modally and waits until it hides itself.
void ShowModal(View& view);

/// Gets the sentence of every fault that ended a command, with the view it ran in.
using FaultSink = std::function<void(View& view, const std::string& sentence)>;
void OnFault(FaultSink sink);

/// Runs after the outermost event has ended, at once when none runs.
void Afterwards(std::function<void()> action);

/// Forgets typing, pending acts and modal views: for tests, and for a world made anew.
void ResetHands();

/// What is being typed in a view is not taken any more.
void ForgetTyping(const View& view);

/// Destroys and constructs a view in place; its form defaults return. A view unloaded by its own
/// handler is rebuilt after that handler has returned.
template <class V>
void Unload(V& view) {
    view.Visible = false;
    Afterwards([&view] {
        ForgetTyping(view);
        view.~V();
        new (&view) V();
    });
}

}  // namespace vael
