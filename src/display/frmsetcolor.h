// The colour view: what each role of the colour table colours, and its colour.
#pragma once

#include "display/colourtable.h"
#include "toolkit/controls.h"

namespace vael {

/// frmSetColor, shown modally. It works on a copy of the table, which its callers put in and take
/// out again.
struct SetColorView : View {
    SetColorView();

    /// Copies a table in, and out with the changes that "O K" kept.
    void SetTbl(const ColourTable& table);
    void GetTbl(ColourTable& table) const { table = Kept; }

    ColourTable Edited{};
    ColourTable Kept{};

    Frame fraGraphs{*this, "fraGraphs", "Graphs"};
    Frame fraCurves{*this, "fraCurves", "Curves"};
    Frame fraMarks{*this, "fraMarks", "Marks"};
    Frame fraWindows{*this, "fraWindows", "Windows"};
    /// In the order of `ColourRoles`.
    ControlArray<Label, ROLE_COUNT> lblColor{*this, "lblColor"};
    ControlArray<Button, ROLE_COUNT> cmdColor{*this, "cmdColor"};
    Button cmdOk{*this, "cmdOk", "O K"};
    Button cmdCansel{*this, "cmdCansel", "Cancel"};
};

inline SetColorView frmSetColor;

/// Shows the table in force and waits; with "O K" the changed table is in force in all views.
void ShowSetColor();

}  // namespace vael
