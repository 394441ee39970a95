// Start of the desktop program: its look, its folder, its main window.
#pragma once

#include <QStringList>

#include <optional>
#include <string>
#include <vector>

class QApplication;

namespace vael {

/// Style, names and icon of the program.
void SetLook(QApplication& application);

/// The folder that the program keeps its files in: its own when it can be written and holds no
/// installed program, otherwise the user's application data folder, filled from the installed data
/// on the first use. Without a closing separator.
[[nodiscard]] std::string ProgramFolder();

/// Copies what `to` lacks of crystal.dat and its like from the first of the folders that has it.
void FillFolder(const std::string& to, const std::string& from);

/// A call for help or for the version is answered on standard output, with no display; the status
/// to end with. None for any other call.
[[nodiscard]] std::optional<int> AnswerInWords(int argc, char** argv);

/// The files that a call names, as whole paths. The first word is the program.
[[nodiscard]] std::vector<std::string> FilesOfCall(const QStringList& words);

/// Runs the program until it is left, with those files opened; the exit status.
int RunDesktop(QApplication& application, const std::vector<std::string>& files);

}  // namespace vael
