// A file dialog of the program's own: drives, folders, the files of a kind, and a graph to load to.
#include "core/frmdialogload.h"

#include "core/folders.h"
#include "core/frminput.h"
#include "core/text.h"
#include "toolkit/hand.h"

#include <sys/stat.h>  // a medium is a folder on another device than the one above it
#include <algorithm>
#include <filesystem>

namespace vael {
namespace {

namespace fs = std::filesystem;

// --- drives and folders -----------

/// Folders and files of the folder that is shown.
void ReadFolder() {
    DialogLoadView& v = frmDialogLoad;
    ListFolderIn(v.Folder, v.Masks, v.dirDirectory, v.filFiles);
    v.lblDirectory.Caption = v.Folder;
}

void FailDrive() {
    Say("Can not use this drive!");
    frmDialogLoad.drvDrive.Index = 0;
    frmDialogLoad.Directory(ROOT_DRIVE);
}

void drvDrive_Click() {
    const std::string chosen = frmDialogLoad.drvDrive.Text();
    if (FolderOpens(chosen))
        frmDialogLoad.Directory(chosen);
    else
        FailDrive();
}

void dirDirectory_DoubleClick() {
    DialogLoadView& v = frmDialogLoad;
    const std::string name = v.dirDirectory.Text();
    if (!name.empty()) v.Directory(FolderOfEntry(v.Folder, name));
}

// --- the name box -----------

void filFiles_Click() {
    frmDialogLoad.txtSelFile.Text = JoinedNames(PickedNames(frmDialogLoad.filFiles));
}

/// What stands in the name box, as names.
std::vector<std::string> NamesInBox() {
    return NamesIn(frmDialogLoad.txtSelFile.Text, frmDialogLoad.filFiles);
}

void cmdSet_Click() {
    DialogLoadView& v = frmDialogLoad;
    if (Trim(v.txtSelFile.Text).empty()) {
        Say("Please input file name");
        return;
    }
    std::vector<std::string> names = NamesInBox();
    // A whole path that was typed brings its own folder.
    if (names.size() == 1 && fs::path(names.front()).is_absolute()) {
        const PathPieces pieces = SplitFilePath(names.front());
        v.Folder = pieces.Folder;
        names.front() = pieces.Base();
    }
    v.Folder = WithSeparator(v.Folder);
    v.Result = JoinedNames(names);
    v.ResultNames = std::move(names);
    v.Visible = false;
}

void Cancel() {
    frmDialogLoad.Result.clear();
    frmDialogLoad.ResultNames.clear();
    frmDialogLoad.Visible = false;
}

void cmbExtName_Click() { frmDialogLoad.mask(MaskOfKind(frmDialogLoad.cmbExtName.Text())); }

// --- the two small buttons -----------

void cmdMkDir_Click() {
    const std::string name = Trim(AskLine("New Path"));
    if (name.empty()) return;
    const fs::path path = fs::path(frmDialogLoad.Folder) / name;
    std::error_code none;
    if (!fs::exists(path, none) && !TheDesk().MakeFolder(path.string()))
        Say("The folder " + path.string() + " could not be made.");
    ReadFolder();
}

/// Size and date of the files in the name box, a line each.
void cmdDetails_Click() {
    std::string text;
    for (const std::string& name : NamesInBox()) {
        const fs::path path = fs::path(frmDialogLoad.Folder) / name;
        struct stat found {};
        if (name.empty() || ::stat(path.c_str(), &found) != 0) continue;
        tm when{};
        char date[40] = "";
        if (::localtime_r(&found.st_mtime, &when) != nullptr)
            (void)std::strftime(date, sizeof date, "%Y/%m/%d %H:%M", &when);
        text += (text.empty() ? "" : "\n") + name + ": " + std::to_string(found.st_size) +
                " bytes, " + date;
    }
    Say(text.empty() ? "Please input file name" : text, "Info.");
}

}  // namespace

DialogLoadView::DialogLoadView() : View("frmDialogLoad", "Files") {
    Modal = true;
    Closing = Cancel;
    KeyPreview = EnterEscape(cmdSet_Click, Cancel);
    drvDrive.Click = drvDrive_Click;
    dirDirectory.DoubleClick = dirDirectory_DoubleClick;
    filFiles.Click = filFiles_Click;
    filFiles.DoubleClick = cmdSet_Click;
    cmbExtName.Click = cmbExtName_Click;
    cmdMkDir.Click = cmdMkDir_Click;
    cmdDetails.Click = cmdDetails_Click;
    cmdSet.Click = cmdSet_Click;
    cmdCan.Click = Cancel;
    optGSel[0].Value = true;
    dirDirectory.Tip = "A double click opens the folder";
    cmdMkDir.Tip = "Make a folder in the one that is shown";
    cmdDetails.Tip = "Size and date of the chosen files";
    VisibleWin(false);
}

void DialogLoadView::VisibleWin(bool on) {
    frmSelWin.Visible = on;
    cboGSel.Visible = on;
    for (Option& option : optGSel) option.Visible = on;
}

void DialogLoadView::MultiSelect(bool on) { filFiles.Multiple = on; }

void DialogLoadView::MaxGrp(int count) {
    cboGSel.Items.clear();
    for (int n = 1; n <= count; ++n) cboGSel.Items.push_back(std::to_string(n) + "Graph");
    cboGSel.Index = count > 0 ? 0 : -1;
}

void DialogLoadView::DefGraph(int row) {
    if (row >= 0 && row < static_cast<int>(cboGSel.Items.size())) cboGSel.Index = row;
}

void DialogLoadView::SetExt(const std::string& kinds) {
    cmbExtName.Items = SplitFileList(kinds);
    cmbExtName.Index = -1;
}

void DialogLoadView::DefExt(const std::string& kind) {
    const auto& items = cmbExtName.Items;
    const auto found = std::find(items.begin(), items.end(), kind);
    if (found != items.end()) Select(cmbExtName, static_cast<int>(found - items.begin()));
}

void DialogLoadView::drive(const std::string& name) {
    if (drvDrive.Items.empty()) drvDrive.Items = Drives();
    const auto found = std::find(drvDrive.Items.begin(), drvDrive.Items.end(), name);
    if (found != drvDrive.Items.end())
        Select(drvDrive, static_cast<int>(found - drvDrive.Items.begin()));
    else
        FailDrive();
}

void DialogLoadView::Directory(const std::string& path) {
    if (!FolderOpens(path)) return;
    Folder = path;
    ReadFolder();
}

void DialogLoadView::mask(const std::string& masks) {
    Masks = masks;
    ReadFolder();
}

std::vector<std::string> DialogLoadView::Paths() const {
    std::vector<std::string> paths;
    for (const std::string& name : ResultNames) paths.push_back(Folder + name);
    return paths;
}

bool OpenDialogLoad() {
    DialogLoadView& v = frmDialogLoad;
    v.Result.clear();
    v.ResultNames.clear();
    const std::string drive = v.drive();
    v.drvDrive.Items = Drives();
    const auto found = std::find(v.drvDrive.Items.begin(), v.drvDrive.Items.end(), drive);
    v.drvDrive.Index =
        found != v.drvDrive.Items.end() ? static_cast<int>(found - v.drvDrive.Items.begin()) : 0;
    ReadFolder();
    ShowModal(v);
    return !v.ResultNames.empty();
}

std::string MaskOfKind(const std::string& kind) {
    return kind == "000" ? "*.0??;*.1??;*.2??" : "*." + kind;
}

}  // namespace vael
