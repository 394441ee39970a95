// A view: a record of controls, known by name.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vael {

class View;

enum class ControlKind {
    Button,
    CheckBox,
    Option,
    TextBox,
    NumberBox,
    ListBox,
    Label,
    Frame,
    Grid,
    Tabs,
    ScrollBar,
    Picture,
    Timer,
    Menu
};

/// What every control has. Assignment to its members only assigns: handlers run through the hands
/// of toolkit/hand.h alone.
struct Control {
    Control(View& owner, ControlKind kind, std::string name);
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    View& Owner;
    const ControlKind Kind;
    const std::string Name;
    bool Enabled = true;
    bool Visible = true;
    /// Set where the command behind the control is in no release yet: the control never works,
    /// whatever `Enabled` says, and its tip tells so.
    bool Withheld = false;
    std::string Tip;

    [[nodiscard]] bool Usable() const { return Enabled && Visible && !Withheld; }
};

/// A key as a view's preview sees it.
struct KeyPress {
    enum class Name {
        Other,
        Left,
        Right,
        Up,
        Down,
        PageUp,
        PageDown,
        Home,
        End,
        Add,  // "+", "-" and "." of the number pad
        Subtract,
        Decimal,
        Enter,
        Escape,
        Space,
        Delete,
        F1,
        F2,
        F3,
        F4,
        F5,
        F6,
        F7,
        F8,
        F9,
        F10,
        F11,
        F12
    } Key = Name::Other;
    bool Shift = false;
    bool Ctrl = false;
    bool Alt = false;
};

/// A window of the program. One of each stands for the life of the process; unloading a view is
/// destroying it and constructing it in place, so that its form defaults return and addresses stay.
class View {
public:
    View(std::string name, std::string caption);
    virtual ~View();
    View(const View&) = delete;
    View& operator=(const View&) = delete;

    const std::string Name;
    std::string Caption;
    bool Visible = false;
    bool OnTop = false;      // stays above the other windows
    bool Modal = false;      // shown modally by its callers
    bool StaysLive = false;  // works while a command of another view runs (the log view)

    std::function<void()> Closing;  // the close box; hides the view when empty
    std::function<void()> Resized;
    std::function<bool(const KeyPress&)> KeyPreview;  // true when it took the key

    [[nodiscard]] const std::vector<Control*>& Controls() const { return controls_; }
    /// nullptr when there is none of that name.
    [[nodiscard]] Control* Find(const std::string& name) const;

private:
    friend struct Control;
    std::vector<Control*> controls_;
};

/// A preview of two keys, as a dialog with two ways out has them: Enter and Escape.
[[nodiscard]] std::function<bool(const KeyPress&)> EnterEscape(std::function<void()> enter,
                                                               std::function<void()> escape);

/// All views of the program, in the order of their construction.
[[nodiscard]] const std::vector<View*>& AllViews();

}  // namespace vael
