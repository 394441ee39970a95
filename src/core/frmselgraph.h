// The list of the graph rows: which are shown, which is current, in which colour, of what sample.
#pragma once

#include "toolkit/controls.h"

namespace vael {

/// frmSelGraph. What fires a handler when the program sets it: nothing.
struct SelGraphView : View {
    SelGraphView();

    /// Columns of the grid; its row is the graph row, counted from 1.
    enum Column { SHOWN = 1, MARKER, SWATCH, NAME, SAMPLE };

    Grid sprGraphSel{*this, "sprGraphSel", SAMPLE, 10};
    CheckBox chkFix{*this, "chkFix"};
    Picture picPin{*this, "picPin", 24, 24};
    Button cmdOpen{*this, "cmdOpen", "Open"};
    Button cmdCut{*this, "cmdCut", "Cut"};
    Button cmdOK{*this, "cmdOK", "OK"};
};

inline SelGraphView frmSelGraph;

// Rows count from 0 to 9.

/// Empties the grid and fills it from the graph rows; the marker goes to the current row.
void GraphSel_Repl();
/// Empties a row's line.
void GraphSel_Delete(int row);
/// Fills a row's line: tick, colour, name and the sample's name.
void GraphSel_Insert(int row);
/// The tick of a row's line.
[[nodiscard]] bool GraphSel_Check(int row);
/// The marker of the current row goes to this one.
void ChangeCurChek(int row);

/// Shows the list (the button of the main view).
void cmdMnSelGrp_Click();

}  // namespace vael
