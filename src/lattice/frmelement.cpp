// The element sheet: one element of the table with its line energies, browsed and edited.
#include "lattice/frmelement.h"

#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/store.h"
#include "core/text.h"
#include "core/windows.h"
#include "toolkit/desk.h"
#include "toolkit/hand.h"

#include <algorithm>
#include <array>

namespace vael {
namespace {

constexpr double ENERGY_MOST = 100000.0;  // keV, as the reader takes them
constexpr int LAST_BY_BUTTON = 106;       // ">" stops before the last element, which has its number

struct BoxOfColumn {
    TextBox& Box;
    int Column;
};

/// The boxes and what they show, without that of the atomic number.
std::array<BoxOfColumn, 11> Boxes(ElementView& v) {
    return {{{v.txtSymbol, ELEMENT_SYMBOL},
             {v.Text1, ELEMENT_SHORT},
             {v.Text2, ELEMENT_NAME},
             {v.ImNumber1, ELEMENT_KA2},
             {v.ImNumber2, ELEMENT_KA1},
             {v.ImNumber7, ELEMENT_KB3},
             {v.ImNumber3, ELEMENT_KB1},
             {v.ImNumber4, ELEMENT_KB2},
             {v.ImNumber6, ELEMENT_EDGE},
             {v.ImNumber8, ELEMENT_GAMMA},
             {v.ImNumber9, ELEMENT_KAVE}}};
}

std::string FilePath() { return store.ProgramFolder + "/atomic.dat"; }

ElementTable ReadTable() {
    try {
        return ReadElementFile(FilePath());
    } catch (const Fault&) {
        Say("Atomic.dat File Read (Open Error)");
        throw;
    }
}

/// A sentence here and in the status line: this view may stand before that one.
void Tell(const std::string& sentence) {
    frmElement.lblTold.Caption = sentence;
    if (!sentence.empty()) TellStatus(sentence);
}

void ShowHint() {
    if (frmElement.EntEnargy)
        frmElement.lblTold.Caption =
            "Enter, or a double click, in a line's box puts it into the calibration.";
    else
        frmElement.lblTold.Caption.clear();
}

/// Whether an element may be asked for; says why not.
bool Known(int number) {
    if (number < 1 || number > ELEMENT_MAX) {
        Say("AtomIndex out of range");
        return false;
    }
    NeedElementTable();
    if (number <= frmElement.Table.Rows) return true;
    Say("Num = " + std::to_string(number) + " records index error");
    return false;
}

/// Brings the element to the boxes.
void SetValue() {
    ElementView& v = frmElement;
    v.ImNumber5.Text = std::to_string(v.Number);
    for (const auto& [box, column] : Boxes(v))
        box.Text = v.Number <= v.Table.Rows ? CellText(v.Table, v.Number, column) : "";
    ShowHint();
}

/// Takes a box into its cell; a text that does not fit goes back to what the cell has. The cell of
/// a box that nobody changed keeps its bytes. False for a text that was refused.
bool TakeBox(TextBox& box, int column) {
    ElementView& v = frmElement;
    const std::string now = CellText(v.Table, v.Number, column);
    const std::string typed = Trim(box.Text);
    if (typed == now) {
        box.Text = now;
        return true;
    }
    const std::string name = Item(v.Table.Names, column);
    const auto refuse = [&](const std::string& why) {
        box.Text = now;
        Tell(name + ": " + why + " It is " + (now.empty() ? "empty" : now) + " again.");
        return false;
    };
    if (column > ELEMENT_NAME && !typed.empty()) {
        const auto energy = ParseNumber(typed);
        if (!energy || !(*energy > 0.0) || *energy > ENERGY_MOST)
            return refuse("\"" + typed + "\" is no energy in keV.");
    }
    try {
        PutCell(v.Table, v.Number, column, typed);
    } catch (const Fault& fault) {
        return refuse(fault.what());
    }
    box.Text = CellText(v.Table, v.Number, column);
    RefreshReports();  // marks of this line stand elsewhere now
    Tell(name + " of " + CellText(v.Table, v.Number, ELEMENT_NAME) + " is " +
         (typed.empty() ? "empty" : box.Text) + "; OK writes it.");
    return true;
}

/// The energy of a line's box goes to the calibration that is open.
void EnterEnergy(TextBox& box, int column) {
    if (!TakeBox(box, column) || !frmElement.EntEnargy) return;
    const auto energy = ParseNumber(box.Text);
    const std::string name = Item(frmElement.Table.Names, column);
    if (!energy) {
        Tell(name + " is empty here: there is nothing to enter.");
        return;
    }
    frmElement.EntEnargy(*energy);
    Tell(frmElement.txtSymbol.Text + " " + name + ", " + box.Text +
         " keV, was entered into the calibration.");
}

void GoTo(int number) {
    if (!Known(number)) {
        frmElement.ImNumber5.Text = std::to_string(frmElement.Number);
        return;
    }
    frmElement.Number = Whole16(number);
    SetValue();
}

void cmdBack_Click() { GoTo(std::max(1, frmElement.Number - 1)); }

void cmdFor_Click() {
    if (frmElement.Number < LAST_BY_BUTTON) GoTo(frmElement.Number + 1);
}

void ImNumber5_Enter() {
    const auto typed = ParseNumber(frmElement.ImNumber5.Text);
    if (!typed) {
        Tell("Num: \"" + frmElement.ImNumber5.Text + "\" is no number.");
        frmElement.ImNumber5.Text = std::to_string(frmElement.Number);
        return;
    }
    GoTo(static_cast<int>(RoundEven(std::clamp(*typed, -1.0, 1000.0))));
}

void Hide() { frmElement.Visible = false; }

/// "OK": writes the file. Where it cannot be written the sheet stays with what was typed.
void cmdOk_Click() {
    try {
        WriteElementFile(FilePath(), frmElement.Table);
    } catch (const Fault& fault) {
        Say("Atomic.dat File Write (Write Error)");
        TellStatus(fault.what(), true);
        return;
    }
    frmElement.Opened = frmElement.Table;
    Hide();
    TellStatus("The element table was written to atomic.dat.");
}

/// Escape and the close box: what was typed and not written goes.
void CloseSheet() {
    const bool changed = frmElement.Table != frmElement.Opened;
    frmElement.Table = frmElement.Opened;
    ForgetTyping(frmElement);
    Hide();
    if (!changed) return;
    RefreshReports();
    TellStatus("The element table is as it was; nothing was written.");
}

}  // namespace

ElementView::ElementView() : View("frmElement", "Atom") {
    cmdBack.Tip = "The element before (Alt+Left)";
    cmdFor.Tip = "The element behind, up to 106 (Alt+Right)";
    ImNumber5.Tip = "Atomic number; a number of 1 to 107 and Enter go to that element";
    cmdOk.Tip = "Writes atomic.dat and closes; Escape closes and leaves the table as it was";
    cmdBack.Shortcut = "Alt+Left";
    cmdFor.Shortcut = "Alt+Right";
    cmdBack.Click = cmdBack_Click;
    cmdFor.Click = cmdFor_Click;
    cmdOk.Click = cmdOk_Click;
    ImNumber5.Enter = ImNumber5_Enter;
    ImNumber5.Leave = [] {
        frmElement.ImNumber5.Text = std::to_string(frmElement.Number);
        return true;
    };
    constexpr std::array<const char*, 8> WHAT{
        "K-L2",
        "K-L3",
        "K-M2",
        "K-M3",
        "K-N2,3",
        "Absorption edge of the K shell",
        "A gamma line of the usual calibration source of this element",
        "Average of Ka1 and Ka2, weighted by their intensities"};
    for (const auto& each : Boxes(*this)) {
        TextBox* box = &each.Box;
        const int column = each.Column;
        const bool line = column >= ELEMENT_KA2;
        if (line) box->Tip = Item(WHAT, column - ELEMENT_KA2);
        box->Leave = [box, column] {
            (void)TakeBox(*box, column);
            return true;
        };
        box->Enter = [box, column, line] {
            if (line)
                EnterEnergy(*box, column);
            else
                (void)TakeBox(*box, column);
        };
        if (line) box->DoubleClick = box->Enter;
    }
    Closing = CloseSheet;
    // Enter in a box has a use of its own there, so it is no key of the view.
    KeyPreview = EnterEscape([] {}, CloseSheet);
}

void ElementView::ElemNo(std::int16_t number) { GoTo(number); }

std::string ElementView::ElementName(int number) const {
    return Known(number) ? CellText(Table, number, ELEMENT_NAME) : "";
}

std::string ElementView::GetSymbol(int number) const {
    return Known(number) ? CellText(Table, number, ELEMENT_SYMBOL) : "";
}

double ElementView::Energy(int number, int kind) const {
    return Known(number) ? LineEnergy(Table, number, kind).value_or(0.0) : 0.0;
}

void NeedElementTable() {
    if (frmElement.Table.Rows == 0) frmElement.Table = ReadTable();
}

void ShowElement() {
    ElementView& v = frmElement;
    if (!v.Visible) {
        v.Table = ReadTable();
        v.Opened = v.Table;
        RefreshReports();
        SetValue();
    }
    ShowHint();
    v.Visible = true;
}

void ShowElement(std::int16_t number) {
    ShowElement();
    frmElement.ElemNo(number);
}

}  // namespace vael
