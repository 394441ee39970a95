// The control records: what a program asks of a desktop, as plain data with its handlers.
#pragma once

#include "core/records.h"
#include "display/canvas.h"
#include "toolkit/view.h"

#include <array>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vael {

using Handler = std::function<void()>;

/// Push button.
struct Button : Control {
    Button(View& view, std::string name, std::string caption = {})
        : Control(view, ControlKind::Button, std::move(name)), Caption(std::move(caption)) {}
    std::string Caption;
    /// "Ctrl+S", empty for none. A plain key is not taken while a box is typed in. A key that a
    /// menu item has already is not given to a button as well.
    std::string Shortcut;
    std::optional<Colour> Fill;  // its ground; none leaves it to the desktop
    Handler Click;
    Handler RightClick;  // the right mouse button, released on it
    Handler Hover;       // the pointer came over it, or the focus to it
};

/// Check box; `Value` is 0 or 1.
struct CheckBox : Control {
    CheckBox(View& view, std::string name, std::string caption = {}, int value = 0)
        : Control(view, ControlKind::CheckBox, std::move(name)),
          Caption(std::move(caption)),
          Value(value) {}
    std::string Caption;
    int Value;
    Colour Ink = 0;       // colour of the caption
    bool Filled = false;  // what the box stands for is drawn
    Handler Click;
};

/// One of a group of options: setting one clears the others of the same `Group` in the view.
struct Option : Control {
    Option(View& view, std::string name, std::string caption = {}, std::string group = {})
        : Control(view, ControlKind::Option, std::move(name)),
          Caption(std::move(caption)),
          Group(std::move(group)) {}
    std::string Caption;
    std::string Group;
    bool Value = false;
    Handler Click;
    Handler DoubleClick;
};

/// Text box. `Leave` returns false to keep the focus.
struct TextBox : Control {
    TextBox(View& view, std::string name, std::string text = {})
        : Control(view, ControlKind::TextBox, std::move(name)), Text(std::move(text)) {}
    std::string Text;
    bool ReadOnly = false;
    bool MultiLine = false;
    Handler Change;
    Handler Enter;  // the Enter key
    Handler DoubleClick;
    std::function<bool()> Leave;
};

/// Box for a number in a format (as FormatNumber takes it), held within its limits. Half-typed text
/// never reaches the record.
struct NumberBox : Control {
    NumberBox(View& view, std::string name, std::string format = "0", double value = 0.0)
        : Control(view, ControlKind::NumberBox, std::move(name)),
          Format(std::move(format)),
          Value(value) {}
    std::string Format;
    double Value;
    double Least = -1e15;
    double Most = 1e15;
    bool ReadOnly = false;
    Handler Change;
    Handler Enter;
    Handler Leave;  // the focus goes away from the box, typed in or not
    /// What the box shows.
    [[nodiscard]] std::string Text() const;
};

/// List, drop-down list, or list of drives, folders or files. `Index` -1 is no selection.
///
/// An `Editable` one also takes a typed text: it stands in `Typed` while `Index` is -1, and `Enter`
/// runs on the Enter key, and on leaving when the text was changed. A `Multiple` one keeps the
/// selected items in `Picked`, ascending; `Index` is then the last of them.
struct ListBox : Control {
    ListBox(View& view, std::string name, std::vector<std::string> items = {}, int index = -1)
        : Control(view, ControlKind::ListBox, std::move(name)),
          Items(std::move(items)),
          Index(index) {}
    std::vector<std::string> Items;
    int Index;
    bool Editable = false;
    std::string Typed;
    bool Multiple = false;
    std::vector<int> Picked;
    Handler Click;
    Handler DoubleClick;
    Handler Enter;
    /// What it shows.
    [[nodiscard]] std::string Text() const;
};

enum class MouseButton { None, Left, Right };

/// What a control that takes the mouse does with it. Positions are in the control's own pixels;
/// while a button is down they go on outside it.
struct MouseTaker {
    std::function<void(MouseButton, double x, double y)> MouseDown;
    std::function<void(MouseButton, double x, double y)> MouseMove;
    std::function<void(MouseButton, double x, double y)> MouseUp;
};

/// A label takes the mouse where a handler is set.
struct Label : Control, MouseTaker {
    Label(View& view, std::string name, std::string caption = {})
        : Control(view, ControlKind::Label, std::move(name)), Caption(std::move(caption)) {}
    std::string Caption;
};

/// Frame round other controls, or a splitter bar. `Share` is the part of the height above it.
///
/// A floating frame stands at `Left`, `Top` in the pixels of what it floats on, and takes the mouse
/// where a handler is set. It follows the pointer without drift when each move adds the distance
/// from where it was grasped: `Left += x - x0`, since the next position counts from its new place.
struct Frame : Control, MouseTaker {
    Frame(View& view, std::string name, std::string caption = {})
        : Control(view, ControlKind::Frame, std::move(name)), Caption(std::move(caption)) {}
    std::string Caption;
    int Left = 0;
    int Top = 0;
    int Width = 0;  // pixels, kept by the desktop
    int Height = 0;
    double Share = 0.5;
    bool Raised = false;         // highlighted: the active one of its kind
    std::optional<Colour> Edge;  // of the line round it; none leaves it to the desktop
};

/// Grid with rows and columns from 1; row or column 0 is the head, and a head without any text is
/// not shown.
struct Grid : Control {
    enum class CellKind { Text, Tick, Swatch, Picture, Button };
    struct Cell {
        std::string Text;  // of a picture the name of its drawing
        CellKind Kind = CellKind::Text;
        bool Ticked = false;
        Colour Fill = 0;        // of a swatch
        bool Editable = false;  // of a text: the user may type over it
        bool Dimmed = false;    // paler than the others
        double Bar = 0.0;       // of a text: a faint bar from the middle, -1 to 1 of half a width
        bool operator==(const Cell&) const = default;
    };
    Grid(View& view, std::string name, int columns, int rows);
    void SetSize(int columns, int rows);  // keeps what fits
    [[nodiscard]] int Columns() const { return columns_; }
    [[nodiscard]] int Rows() const { return rows_; }
    /// A cell to write to, for the moment: the desktop looks at the cells again after each call.
    /// Faults: Subscript outside the grid.
    [[nodiscard]] Cell& At(int column, int row);
    [[nodiscard]] const Cell& At(int column, int row) const;
    int Row = 0;  // the current cell
    int Col = 0;
    std::vector<int> Widths;  // in characters, by column from 0
    std::function<void(int column, int row)> CellClick;
    std::function<void(int column, int row)> CellEdit;  // a text was typed, or a tick changed
    /// Another one after each chance to change a cell, unlike that of any other grid.
    [[nodiscard]] std::uint64_t Version() const { return version_; }

private:
    [[nodiscard]] int Place(int column, int row) const;
    std::uint64_t version_ = 0;
    int columns_ = 0;
    int rows_ = 0;
    std::vector<Cell> cells_;
};

struct Tabs : Control {
    Tabs(View& view, std::string name, std::vector<std::string> captions)
        : Control(view, ControlKind::Tabs, std::move(name)), Captions(std::move(captions)) {}
    std::vector<std::string> Captions;
    int Index = 0;
    Handler Click;
};

struct ScrollBar : Control {
    ScrollBar(View& view, std::string name)
        : Control(view, ControlKind::ScrollBar, std::move(name)) {}
    int Least = 0;
    int Most = 0;
    int Value = 0;
    int Small = 1;
    int Large = 10;
    Handler Change;
};

/// Shape of the pointer over a picture. The finger is what the system calls picFingerIco, the width
/// picWidthIcon.
enum class Pointer { Arrow, Finger, Width, Cross };

/// A picture to draw on. Without a desktop it stands on a blank surface of its size, so that every
/// drawing command runs headless too.
struct Picture : Control, MouseTaker {
    Picture(View& view, std::string name, int width = 640, int height = 240);
    ~Picture();
    /// The surface that the desktop gives it (nullptr: back to the blank one).
    void PutOn(Surface* surface);
    [[nodiscard]] Canvas& Paper() { return *canvas_; }
    int Width;  // device pixels, kept by the desktop
    int Height;
    Pointer Shape = Pointer::Arrow;
    std::string Drawing;        // name of a drawing of the desktop, shown in place of the surface
    std::uint64_t Painted = 0;  // raised by whoever drew on it, so that the desktop repaints
    std::function<void(double x, double y)> DoubleClick;
    /// The wheel, in notches (a fine wheel gives fractions), above 0 away from the user or to the
    /// left; x is where the pointer stands; `sideways` with Shift, or for a wheel that rolls
    /// sideways.
    std::function<void(double notches, double x, bool sideways)> Wheel;

private:
    std::unique_ptr<Surface> blank_;
    std::unique_ptr<Canvas> canvas_;
};

struct Timer : Control {
    Timer(View& view, std::string name, int interval)
        : Control(view, ControlKind::Timer, std::move(name)), Interval(interval) {
        Enabled = false;
    }
    int Interval;  // milliseconds
    Handler Tick;
};

/// Menu item, or a menu where others name it as `Parent` (by control name).
struct Menu : Control {
    Menu(View& view, std::string name, std::string caption, std::string parent = {})
        : Control(view, ControlKind::Menu, std::move(name)),
          Caption(std::move(caption)),
          Parent(std::move(parent)) {}
    std::string Caption;
    std::string Parent;
    std::string Shortcut;  // "Ctrl+O", empty for none
    bool Checkable = false;
    bool Checked = false;
    bool SeparatorBefore = false;
    Handler Click;
};

/// N controls of one kind under one name: `cmdOperation[3]` is called "cmdOperation_3".
template <class T, std::size_t N>
class ControlArray {
public:
    template <class... Rest>
    ControlArray(View& view, const std::string& name, const Rest&... rest)
        : ControlArray(std::make_index_sequence<N>(), view, name, rest...) {}
    ControlArray(View& view, const std::string& name, std::initializer_list<const char*> captions)
        : ControlArray(std::make_index_sequence<N>(), view, name, captions) {}

    [[nodiscard]] T& operator[](std::size_t i) { return items_.at(i); }
    [[nodiscard]] const T& operator[](std::size_t i) const { return items_.at(i); }
    [[nodiscard]] auto begin() { return items_.begin(); }
    [[nodiscard]] auto end() { return items_.end(); }
    [[nodiscard]] static constexpr std::size_t size() { return N; }

private:
    template <std::size_t... I, class... Rest>
    ControlArray(std::index_sequence<I...>, View& view, const std::string& name,
                 const Rest&... rest)
        : items_{{T(view, name + "_" + std::to_string(I), rest...)...}} {}
    template <std::size_t... I>
    ControlArray(std::index_sequence<I...>, View& view, const std::string& name,
                 std::initializer_list<const char*> captions)
        : items_{{T(view, name + "_" + std::to_string(I),
                    std::string(I < captions.size() ? captions.begin()[I] : ""))...}} {}
    std::array<T, N> items_;
};

}  // namespace vael
