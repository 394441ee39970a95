// Batch printing: the choice of the files, and how far a run is.
#pragma once

#include "toolkit/controls.h"

#include <string>

namespace vael {

/// frmBatchPrint, beside the main view. While a run goes on it stays live, so that "Stop" and the
/// close box work; everything else in it is locked then. What fires a handler when the program sets
/// it: drvDrive.
struct BatchPrintView : View {
    BatchPrintView();

    Label lblDrive{*this, "lblDrive", "Drive"};
    ListBox drvDrive{*this, "drvDrive"};
    Label lblDirectory{*this, "lblDirectory"};  // the folder that is shown
    ListBox dirDirectory{*this, "dirDirectory"};
    Label lblPattern{*this, "lblPattern", "Pattern"};
    TextBox txtPattern{*this, "txtPattern", "*.npd"};
    ListBox filFiles{*this, "filFiles"};
    Label lblSelFile{*this, "lblSelFile", "File Name"};
    TextBox txtSelFile{*this, "txtSelFile"};
    CheckBox chkXli{*this, "chkXli", "List File"};
    TextBox txtXliName{*this, "txtXliName"};
    Label lblFit{*this, "lblFit"};          // whether a run fits
    TextBox txtResult{*this, "txtResult"};  // what became of each file
    Label lblProgress{*this, "lblProgress"};
    Button cmdPrintStart{*this, "cmdPrintStart", "Print Start"};
    Button cmdStop{*this, "cmdStop", "Stop"};
    Button cmdClose{*this, "cmdClose", "Close"};

    std::string Folder;  // what is shown; empty before the view was first opened
    bool Stopping = false;

    /// Shows a folder, where it opens.
    void Directory(const std::string& path);
    /// Locks what must not change during a run, or gives it back.
    void Running(bool on);
    /// Whether the next run fits each file before its page.
    void ShowFit();
};

inline BatchPrintView frmBatchPrint;

/// The "Batch Print" command.
void ShowBatchPrint();

}  // namespace vael
