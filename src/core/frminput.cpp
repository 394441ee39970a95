// A one-line input box of the program's own.
#include "core/frminput.h"

#include "toolkit/hand.h"

namespace vael {
namespace {

void cmdOk_Click() { frmInput.Visible = false; }

void cmdCan_Click() {
    frmInput.txtInput.Text.clear();
    frmInput.Visible = false;
}

}  // namespace

InputView::InputView() : View("frmInput", "Input") {
    Modal = true;
    cmdOk.Click = cmdOk_Click;
    cmdCan.Click = cmdCan_Click;
    Closing = cmdCan_Click;
    KeyPreview = EnterEscape(cmdOk_Click, cmdCan_Click);
}

void InputView::CapName(const std::string& text) {
    lblInputName.Caption = text;
    txtInput.Text.clear();
}

std::string AskLine(const std::string& name) {
    frmInput.CapName(name);
    ShowModal(frmInput);
    return frmInput.StrValue();
}

}  // namespace vael
