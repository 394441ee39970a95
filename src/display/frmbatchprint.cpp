// Batch printing: the choice of the files, and how far a run is.
#include "display/frmbatchprint.h"

#include "core/folders.h"
#include "core/store.h"
#include "display/batchprintcommands.h"
#include "toolkit/hand.h"

#include <algorithm>

namespace vael {
namespace {

void ReadFolder() {
    BatchPrintView& v = frmBatchPrint;
    ListFolderIn(v.Folder, v.txtPattern.Text, v.dirDirectory, v.filFiles);
    v.lblDirectory.Caption = v.Folder;
    v.txtSelFile.Text.clear();
}

void drvDrive_Click() {
    BatchPrintView& v = frmBatchPrint;
    if (FolderOpens(v.drvDrive.Text())) return v.Directory(v.drvDrive.Text());
    Say("Can not use this drive!");
    v.drvDrive.Index = 0;
    v.Directory(ROOT_DRIVE);
}

void dirDirectory_DoubleClick() {
    BatchPrintView& v = frmBatchPrint;
    const std::string name = v.dirDirectory.Text();
    if (!name.empty()) v.Directory(FolderOfEntry(v.Folder, name));
}

void filFiles_Click() {
    frmBatchPrint.txtSelFile.Text = JoinedNames(PickedNames(frmBatchPrint.filFiles));
}

bool txtPattern_Leave() {
    ReadFolder();
    return true;
}

/// The files come from the one box or from the other.
void chkXli_Click() {
    BatchPrintView& v = frmBatchPrint;
    const bool list = v.chkXli.Value != 0;
    v.txtXliName.Enabled = list;
    v.txtSelFile.Enabled = v.filFiles.Enabled = !list;
}

void cmdStop_Click() {
    frmBatchPrint.Stopping = true;
    frmBatchPrint.lblProgress.Caption = "Stopping after this file";
}

/// During a run the close box stops it; the view stays, and tells what was printed.
void LeaveView() {
    if (frmBatchPrint.StaysLive)
        cmdStop_Click();
    else
        frmBatchPrint.Visible = false;
}

}  // namespace

BatchPrintView::BatchPrintView() : View("frmBatchPrint", "Batch Print") {
    filFiles.Multiple = true;
    txtResult.MultiLine = true;
    txtResult.ReadOnly = true;
    txtXliName.Enabled = false;
    cmdStop.Enabled = false;
    dirDirectory.Tip = "A double click opens the folder";
    txtPattern.Tip = "Which files are listed, such as *.npd or *.xbm;*.xba";
    filFiles.Tip = "With Ctrl or Shift several files";
    txtSelFile.Tip = "The files to print, separated by \";\"";
    chkXli.Tip = "Takes the files from a list instead";
    txtXliName.Tip =
        "A text file with the name of a spectrum on each line, beside the list or "
        "with its folder";
    cmdPrintStart.Tip = "Asks for paper and printer, and prints each file";
    cmdStop.Tip = "Ends the run after the file that is being printed";
    cmdClose.Tip = "Closes this view";
    drvDrive.Click = drvDrive_Click;
    dirDirectory.DoubleClick = dirDirectory_DoubleClick;
    filFiles.Click = filFiles_Click;
    txtPattern.Enter = ReadFolder;
    txtPattern.Leave = txtPattern_Leave;
    chkXli.Click = chkXli_Click;
    cmdPrintStart.Click = cmdPrintStart_Click;
    cmdStop.Click = cmdStop_Click;
    cmdClose.Click = LeaveView;
    Closing = LeaveView;
}

void BatchPrintView::Directory(const std::string& path) {
    if (!FolderOpens(path)) return;
    Folder = path;
    ReadFolder();
}

void BatchPrintView::Running(bool on) {
    StaysLive = on;
    Stopping = false;
    for (Control* control : std::initializer_list<Control*>{&drvDrive, &dirDirectory, &txtPattern,
                                                            &filFiles, &txtSelFile, &chkXli,
                                                            &txtXliName, &cmdPrintStart, &cmdClose})
        control->Enabled = !on;
    cmdStop.Enabled = on;
    if (!on) chkXli_Click();
}

void BatchPrintView::ShowFit() {
    lblFit.Caption =
        store.AreaFitDone == TRUE_WORD
            ? "Each file is fitted before its page, as the row on the plot was."
            : "Each file is printed as it is read. Fit a row first to have them fitted.";
}

void ShowBatchPrint() {
    BatchPrintView& v = frmBatchPrint;
    v.Visible = true;
    v.drvDrive.Items = Drives();
    v.drvDrive.Index = 0;
    const std::string data = store.DataDrive + store.DataFolder;
    if (v.Folder.empty()) v.Folder = FolderOpens(data) ? data : ROOT_DRIVE;
    ReadFolder();
    v.ShowFit();
}

}  // namespace vael
