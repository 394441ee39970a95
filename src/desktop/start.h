// Start of the desktop program: its look, its folder, its main window.
#pragma once

#include <string>

class QApplication;

namespace vael {

/// Style, names and icon of the program.
void SetLook(QApplication& application);

/// The folder that the program keeps its files in: its own when it can be written, otherwise the
/// user's application data folder, filled from the installed data on the first use. Without a
/// closing separator.
[[nodiscard]] std::string ProgramFolder();

/// Copies what `to` lacks of crystal.dat and its like from the first of the folders that has it.
void FillFolder(const std::string& to, const std::string& from);

/// Runs the program until it is left; the exit status.
int RunDesktop(QApplication& application);

}  // namespace vael
