// The calibration's list of spectra: which files stand in it, and which one fills the rows.
#include "calibration/calibfilecommands.h"

#include "calibration/frmdialogcalibc.h"
#include "core/fault.h"
#include "core/frmdialogload.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/saving.h"
#include "core/store.h"
#include "core/text.h"
#include "files/extensions.h"
#include "toolkit/desk.h"

#include <algorithm>
#include <memory>

namespace vael {
namespace {

using V = DialogCalibCView;

constexpr const char* KINDS = "npd,xbm,xba,000,chn,cnf,rpt,raw,gsa";  // forms that are read

/// Whether a reader takes the file, tried aside so that nothing is lost by one that it refuses.
bool CanBeRead(const std::string& path) {
    const auto data = std::make_unique<SpectrumData>();
    const auto prop = std::make_unique<PropertyRecord>();
    const auto peaks = std::make_unique<PeakTable>();
    std::int16_t source = 0;
    double offset = 0.0;
    double slope = 0.0;
    return ReadByExtension(path, {*data, *prop, source, &offset, &slope}, *peaks, DeskFileTalk()) ==
           TRUE_WORD;
}

void TellNotRead(const std::string& names) {
    TellStatus("Not read: " + names + " (the reason stands in the log).", true);
}

/// The rows are emptied without a prompt and hold this spectrum alone: so any number of files fits
/// into the rows.
void ReadFile(int index) {
    V& v = frmDialogCalibC;
    const std::string path = Item(v.Files, index);
    const std::string name = SplitFilePath(path).Base();
    const BusyCursor busy;
    if (!CanBeRead(path)) {
        TellNotRead(name);
        return;
    }
    Calib_Empty();
    v.ShownFile = v.ShownSlot = -1;
    std::int16_t ok = FALSE_WORD;
    ReadGraph(0, 0, path, ok);
    if (ok != TRUE_WORD) {
        TellNotRead(name);
        return;
    }
    v.ShownFile = index;
    v.ShownSlot = GetGraphDataNo(0);
    TellStatus("Opened " + name + ".");
}

/// Adds a file to the list, or finds it there; its index, or -1 for one that is refused.
int ListFile(const std::string& path) {
    auto& files = frmDialogCalibC.Files;
    const auto found = std::find(files.begin(), files.end(), path);
    if (found != files.end()) return static_cast<int>(found - files.begin());
    if (!CanBeRead(path)) return -1;
    files.push_back(path);
    return static_cast<int>(files.size()) - 1;
}

void AddFiles(const std::vector<std::string>& paths) {
    V& v = frmDialogCalibC;
    int last = -1;
    std::string refused;
    bool full = false;
    {
        const BusyCursor busy;
        for (const std::string& path : paths) {
            const bool known = std::find(v.Files.begin(), v.Files.end(), path) != v.Files.end();
            full = !known && v.Files.size() >= CALIB_FILES;
            if (full) break;
            const int index = ListFile(path);
            if (index >= 0)
                last = index;
            else
                refused += (refused.empty() ? "" : ", ") + SplitFilePath(path).Base();
        }
    }
    FillCalibFiles();
    if (last >= 0) {
        v.sprdFileName.Row = last + 1;
        v.sprdFileName.Col = V::NAME;
        ReadFile(last);
    }
    if (!refused.empty()) TellNotRead(refused);
    if (full) Say("Can not open more file (Max=20)");
}

/// The rows of a spectrum that goes: its own and those that were derived from it.
void CloseShown() {
    const auto belongs = [](const GraphEntry& entry) {
        return entry.State > 0 &&
               (entry.DataNo == frmDialogCalibC.ShownSlot || IsDerivedName(entry.Name));
    };
    for (GraphEntry& entry : store.GraphList) entry.State = std::min<std::int16_t>(entry.State, 1);
    for (int row = GRAPH_COUNT - 1; row >= 0; --row)
        if (belongs(Item(store.GraphList, row))) DeleteGraph(row);
}

}  // namespace

void FillCalibFiles() {
    Grid& grid = frmDialogCalibC.sprdFileName;
    const auto& files = frmDialogCalibC.Files;
    grid.SetSize(V::FOLDER, static_cast<int>(files.size()));
    for (int row = 1; row <= grid.Rows(); ++row) {
        const PathPieces pieces = SplitFilePath(Item(files, row - 1));
        grid.At(0, row).Text = std::to_string(row);
        grid.At(V::NAME, row).Text = pieces.Base();
        grid.At(V::FOLDER, row).Text = pieces.Drive + pieces.Folder;
    }
    grid.Row = std::min(grid.Row, grid.Rows());
    grid.Col = grid.Row > 0 ? V::NAME : 0;
}

void ReadCalibFile(int row) {
    if (row >= 1) ReadFile(row - 1);
}

void OpenCalibFiles() {
    V& v = frmDialogCalibC;
    DialogLoadView& dialog = frmDialogLoad;
    dialog.VisibleWin(false);
    dialog.VisibleMkDir(false);
    dialog.MultiSelect(true);
    dialog.SetExt(KINDS);
    dialog.Directory(store.DataDrive + store.DataFolder);
    dialog.DefExt(v.Kind);
    dialog.FileName({});
    if (!OpenDialogLoad()) return;
    v.Kind = dialog.cmbExtName.Text();
    const std::vector<std::string> paths = dialog.Paths();
    const PathPieces pieces = SplitFilePath(paths.back());
    store.DataDrive = pieces.Drive;
    store.DataFolder = pieces.Folder;
    AddFiles(paths);
}

void DeleteCalibFile() {
    V& v = frmDialogCalibC;
    const int index = v.sprdFileName.Row - 1;
    if (index < 0) {
        TellStatus("Choose the spectrum that is to go from the list.");
        return;
    }
    const std::string name = SplitFilePath(Item(v.Files, index)).Base();
    if (index == v.ShownFile) {
        // Rows that "Open..." has filled since then are no matter of this list.
        const int row = RowOfSlot(v.ShownSlot);
        if (row >= 0 && Item(store.GraphList, row).Name == name) CloseShown();
        v.ShownFile = v.ShownSlot = -1;
    } else if (index < v.ShownFile) {
        --v.ShownFile;
    }
    v.Files.erase(v.Files.begin() + index);
    v.sprdFileName.Row = 0;
    FillCalibFiles();
    TellStatus("Removed " + name + " from the list.");
}

}  // namespace vael
