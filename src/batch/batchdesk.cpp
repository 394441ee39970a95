// A desk without anybody at it: answers questions with their default and keeps what boxes say.
#include "batch/batchdesk.h"

#include "core/quietdesk.h"

namespace vael {

Answer BatchDesk::Ask(const Question& question) {
    Said.push_back(question.Text);
    return question.Default();
}

std::optional<FileChoice> BatchDesk::OpenFiles(const FileDialog& dialog) {
    if (NextFile.empty()) return std::nullopt;
    return FileChoice{.Paths = {NextFile}, .FilterIndex = dialog.FilterIndex};
}

void BatchDesk::RunModal(View& view) { AnswerModal(view, Said); }

}  // namespace vael
