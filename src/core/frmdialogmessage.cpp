// The program's own message box.
#include "core/frmdialogmessage.h"

#include "toolkit/hand.h"

namespace vael {
namespace {

void Answered(int value) {
    frmDialogMessage.BtnValue = value;
    frmDialogMessage.Visible = false;
}

}  // namespace

DialogMessageView::DialogMessageView() : View("frmDialogMessage", "Message") {
    Modal = true;
    itxtMessage.MultiLine = true;
    itxtMessage.ReadOnly = true;
    cmdYes.Click = [] { Answered(0); };
    cmdNo.Click = [] { Answered(1); };
    // The close box says what the one button says, or "Cancel" where there are two.
    Closing = [] { Answered(frmDialogMessage.cmdNo.Visible ? 1 : 0); };
}

void DialogMessageView::Kind(int n) {
    cmdYes.Visible = n != 1;
    cmdNo.Visible = n == 0 || n == 1;
    OkInCancelPlace = n != 0 && n != 1;
}

void DialogMessageView::Message(const std::string& text) { itxtMessage.Text = text; }

int ShowMessage(int kind, const std::string& text, const std::string& title) {
    frmDialogMessage.Caption = title;
    frmDialogMessage.Kind(kind);
    frmDialogMessage.Message(text);
    ShowModal(frmDialogMessage);
    return frmDialogMessage.BtnValue;
}

}  // namespace vael
