// A file dialog of the program's own: drives, folders, the files of a kind, and a graph to load to.
#pragma once

#include "toolkit/controls.h"

#include <string>
#include <vector>

namespace vael {

/// frmDialogLoad, shown modally by OpenDialogLoad. What fires a handler when the program sets it:
/// drvDrive, cmbExtName.
struct DialogLoadView : View {
    DialogLoadView();

    Label lblDrive{*this, "lblDrive", "Drive"};
    ListBox drvDrive{*this, "drvDrive"};
    Label lblDirectory{*this, "lblDirectory"};  // the folder that is shown
    ListBox dirDirectory{*this, "dirDirectory"};
    ListBox filFiles{*this, "filFiles"};
    Label lblSelFile{*this, "lblSelFile", "File Name"};
    TextBox txtSelFile{*this, "txtSelFile"};
    Label lblExtName{*this, "lblExtName", "Kind"};
    ListBox cmbExtName{*this, "cmbExtName"};
    Button cmdMkDir{*this, "cmdMkDir", "New Dir"};
    Button cmdDetails{*this, "cmdDetails", "Info."};
    Frame frmSelWin{*this, "frmSelWin", "Window"};
    ControlArray<Option, 2> optGSel{*this, "optGSel", {"PileUp", "LineUp"}};
    ListBox cboGSel{*this, "cboGSel"};
    Button cmdSet{*this, "cmdSet", "O K"};
    Button cmdCan{*this, "cmdCan", "Cancel"};

    // Set before the dialog is shown.
    void DialogCaption(const std::string& text) { Caption = text; }
    void VisibleMkDir(bool on) { cmdMkDir.Visible = on; }
    void VisibleWin(bool on);
    void MultiSelect(bool on);
    void MaxGrp(int count);                   // "1Graph" up to the number
    void DefGraph(int row);                   // the graph that is chosen at first, from 0
    void SetExt(const std::string& kinds);    // the kinds of the combo, separated by ","
    void DefExt(const std::string& kind);     // the kind that is chosen at first
    void drive(const std::string& name);      // one of the list, else as a drive that fails
    void Directory(const std::string& path);  // shows the folder, where it opens
    void mask(const std::string& masks);      // "*.npd;*.xbm": which files are listed
    void FileName(const std::string& name) { txtSelFile.Text = name; }

    // Read after it.
    [[nodiscard]] std::string drive() const { return drvDrive.Text(); }
    [[nodiscard]] std::string Directory() const { return Folder; }  // ends in a separator after O K
    [[nodiscard]] std::string mask() const { return Masks; }
    /// The name, or names separated by ";"; empty after a cancel.
    [[nodiscard]] std::string FileName() const { return Result; }
    [[nodiscard]] int SelectFileNo() const { return static_cast<int>(Paths().size()); }
    [[nodiscard]] int GraphNo() const { return cboGSel.Index; }  // from 0
    [[nodiscard]] int ModeSelect() const { return optGSel[1].Value ? 1 : 0; }
    /// The chosen files with their folder, right also where a name holds blanks or commas.
    [[nodiscard]] std::vector<std::string> Paths() const;

    // State.
    std::string Folder = "/";
    std::string Masks = "*";
    std::string Result;
    std::vector<std::string> ResultNames;
};

inline DialogLoadView frmDialogLoad;

/// Reads drives, folders and files anew and shows the dialog; true when it ended with "O K".
bool OpenDialogLoad();

/// The mask of a kind: "000" stands for numbered files, any other for its extension.
[[nodiscard]] std::string MaskOfKind(const std::string& kind);

}  // namespace vael
