// Saving the current graph: the proposal of a name, the dialog, and the writer by the extension.
#pragma once

#include "core/talk.h"

#include <string>
#include <string_view>

namespace vael {

/// The save dialog and the writer for the current graph ("Save...", Ctrl+S). Messages: "No Data".
/// After a failed write the old file and the row's state stand as they were; the log and the status
/// line say why.
void FileSave();

/// The name proposed for a row: the first graph's that is not a derived one, up to its first point,
/// then "_" and what the row holds ("abc_SMT"). Empty where that first row is empty.
[[nodiscard]] std::string ProposeName(int row);

/// The remembered filter of the file dialogs, counted from 1, held within a filter list. Opening
/// and saving share one number, though their lists differ.
[[nodiscard]] int FilterIndexFor(std::string_view filter);

/// The voice of readers and writers on the desk: questions, boxes, and lines of the log.
[[nodiscard]] FileTalk DeskFileTalk();

}  // namespace vael
