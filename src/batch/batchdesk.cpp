// A desk without anybody at it: answers questions with their default and keeps what boxes say.
#include "batch/batchdesk.h"

#include "core/frmdialogmessage.h"
#include "toolkit/hand.h"

namespace vael {

Answer BatchDesk::Ask(const Question& question) {
    Said.push_back(question.Text);
    return question.Default();
}

std::optional<FileChoice> BatchDesk::OpenFiles(const FileDialog& dialog) {
    if (NextFile.empty()) return std::nullopt;
    return FileChoice{.Paths = {NextFile}, .FilterIndex = dialog.FilterIndex};
}

void BatchDesk::RunModal(View& view) {
    if (&view == &frmDialogMessage) {
        Said.push_back(frmDialogMessage.itxtMessage.Text);
        Click(frmDialogMessage.cmdYes.Visible ? frmDialogMessage.cmdYes : frmDialogMessage.cmdNo);
    }
    view.Visible = false;
}

}  // namespace vael
