// A desk for work that goes on without asking: questions get their default, what boxes say is kept.
#include "core/quietdesk.h"

#include "core/frmdialogmessage.h"
#include "toolkit/hand.h"

namespace vael {

void AnswerModal(View& view, std::vector<std::string>& said) {
    if (&view == &frmDialogMessage) {
        said.push_back(frmDialogMessage.itxtMessage.Text);
        Click(frmDialogMessage.cmdYes.Visible ? frmDialogMessage.cmdYes : frmDialogMessage.cmdNo);
    }
    view.Visible = false;
}

}  // namespace vael
