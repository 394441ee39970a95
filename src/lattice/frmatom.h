// The periodic table: presses on its elements mark their lines on the graphs.
#pragma once

#include "core/records.h"
#include "lattice/elements.h"
#include "toolkit/controls.h"

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vael {

/// A line of an element on a plot.
struct ElementMark {
    double Channel = 0.0;  // 0-based, by the calibration in force
    std::string Label;     // name, line kind and energy in keV
    bool operator==(const ElementMark&) const = default;
};

/// frmAtom, a view that stays above the others, loaded with the program. What fires a handler when
/// the program sets it: nothing.
///
/// The marks belong to a graph in a window; a graph made from another one begins with its marks.
/// - "Mark": the left button on an element marks its lines of the chosen kinds on the current
///   graph, and takes them off again. A line kind that is pressed is chosen or not from then on,
///   and so are those lines of all elements that are marked on the current graph.
/// - "Edit": the left button on an element opens its sheet, and the line kinds are those of this
///   element alone.
/// - The right button takes all marks of an element off, in both.
struct AtomView : View {
    AtomView();

    /// No marks on any graph.
    void InitAtom();
    /// Shows the view above the others, for the current graph. Messages and faults: those of
    /// reading the element table, when it was not read yet.
    void ShowTop();
    /// The window and the slot of the graph that presses mark.
    void SetObjct(int win, int slot);
    /// Sets or clears an element's line kinds (bit n for kind n) on that graph; false, with nothing
    /// changed, where a window would get more lines than it has places for. Faults: Subscript.
    bool EditMarkDispFlag(int number, unsigned kinds, bool on);
    /// Makes the marks of that graph anew from the flags and redraws: in Expand style both windows,
    /// else the one of `WinNo`.
    void MakeMiracle();
    /// What the sheet of the elements has: energy in keV of a line kind (0: none), long name.
    [[nodiscard]] double Energy(int number, int kind) const;
    [[nodiscard]] std::string ElementName(int number) const;

    /// Takes the energy of each line that is marked by a press, in keV, into the calibration's
    /// table. Empty while no calibration is open: the one who opens it sets it, and clears it.
    std::function<void(double)> EntEnargy;

    int WinNo = 0;              // window whose graph is marked, 0 in Expand and PileUp style
    int GrpNo = 0;              // slot of that graph
    std::int16_t DispMode = 0;  // style of the main view when the marks were made

    using ElementFlags = std::array<std::uint8_t, ELEMENT_MAX>;  // bit n: line kind n
    std::array<std::array<ElementFlags, SLOT_COUNT>, WINDOW_COUNT> Flags{};
    unsigned Chosen = 0;  // line kinds that a press marks
    int Edited = 0;       // atomic number that the line kinds belong to in "Edit", 0 for none
    std::array<std::vector<ElementMark>, WINDOW_COUNT> Shown;  // what stands on the plots

    ControlArray<Button, ELEMENT_MAX> cmdAtom{*this, "cmdAtom"};  // atomic number less 1
    ControlArray<Label, 2> lblSeries{*this, "lblSeries", {"57–71", "89–103"}};
    Frame fraCharacter{*this, "fraCharacter", "Character"};
    Label lblCharacter{*this, "lblCharacter"};
    ControlArray<Label, LINE_KINDS> lblLine{*this, "lblLine"};
    Frame fraLines{*this, "fraLines", "Lines"};
    ControlArray<Button, LINE_KINDS> cmdPkDisp{*this, "cmdPkDisp"};
    Frame frmMode{*this, "frmMode", "Mode"};
    Option optMark{*this, "optMark", "Mark", "mode"};
    Option optEdit{*this, "optEdit", "Edit", "mode"};
    Button cmdClear{*this, "cmdClear", "Clear"};
    Button cmdCancel{*this, "cmdCancel", "OK"};
};

inline AtomView frmAtom;

/// Registers a window's element marks with the drawing engine, in place of what is registered: a
/// line each from the axis up to its label, which stands where there is room.
void PutElementMarks(int win);
/// After a change of row, calibration, range or table: redraws the windows whose marks stand
/// elsewhere now, and shows the current graph's in the view.
void RefreshElementMarks();
/// A slot's graph has no marks any more; or those of another one.
void ClearElementMarks(int slot);
void CopyElementMarks(int from, int to);

}  // namespace vael
