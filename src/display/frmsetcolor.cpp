// The colour view: what each role of the colour table colours, and its colour.
#include "display/frmsetcolor.h"

#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/store.h"
#include "core/windows.h"
#include "display/frmdialogcolor.h"
#include "toolkit/hand.h"

namespace vael {
namespace {

using V = SetColorView;

Colour& ColourOf(std::size_t role) {
    return Item(frmSetColor.Edited, ColourRoles().at(role).Entry);
}

void PaintSwatch(std::size_t role) { frmSetColor.cmdColor[role].Fill = ColourOf(role); }

void cmdColor_Click(std::size_t role) {
    const auto picked = AskColour(ColourOf(role));
    if (!picked) return;
    ColourOf(role) = *picked;
    PaintSwatch(role);
}

void cmdOk_Click() {
    frmSetColor.Kept = frmSetColor.Edited;
    frmSetColor.Visible = false;
}

void cmdCansel_Click() { frmSetColor.Visible = false; }

}  // namespace

SetColorView::SetColorView() : View("frmSetColor", "Color Stetting") {
    Modal = true;
    for (std::size_t role = 0; role < ROLE_COUNT; ++role) {
        lblColor[role].Caption = ColourRoles()[role].Name;
        lblColor[role].Tip = cmdColor[role].Tip = ColourRoles()[role].Colours;
        cmdColor[role].Click = [role] { cmdColor_Click(role); };
    }
    cmdOk.Tip = "Puts the colours in force in all windows (Enter)";
    cmdOk.Click = cmdOk_Click;
    cmdCansel.Tip = "Leaves all colours as they were (Esc)";
    cmdCansel.Click = cmdCansel_Click;
    KeyPreview = EnterEscape(cmdOk_Click, cmdCansel_Click);
}

void SetColorView::SetTbl(const ColourTable& table) {
    Edited = Kept = table;
    for (std::size_t role = 0; role < ROLE_COUNT; ++role) PaintSwatch(role);
}

void ShowSetColor() {
    V& v = frmSetColor;
    v.SetTbl(store.ColorTable);
    ShowModal(v);
    ColourTable table{};
    v.GetTbl(table);
    if (table == store.ColorTable) return;
    TakeColours(table);
    TellStatus("The colours were taken over.");
}

}  // namespace vael
