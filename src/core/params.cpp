// What the program keeps between runs, how it starts and how it ends.
#include "core/params.h"

#include "analysis/frmmanualfit.h"
#include "analysis/frmroireport.h"
#include "analysis/roicommands.h"
#include "calibration/frmdialogcalibc.h"
#include "core/expand.h"
#include "core/fault.h"
#include "core/frmlog.h"
#include "core/frmselgraph.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/operations.h"
#include "core/scales.h"
#include "core/text.h"
#include "core/units.h"
#include "core/wholefile.h"
#include "core/windows.h"
#include "display/colourtable.h"
#include "files/filevael.h"
#include "lattice/frmatom.h"
#include "lattice/frmpeakcal.h"
#include "lattice/reflectionmarkcommands.h"
#include "toolkit/hand.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

namespace vael {
namespace {

/// Everything of the parameter file, so that a damaged file changes nothing.
struct SystemFile {
    ParamRecord Param{};
    std::array<Colour, COLOUR_COUNT> Colours{};
    decltype(Store::DisplayBlock) Display{};
    std::array<std::int16_t, 5> Words{};
    ParamRecord Second{};
};

constexpr const char* INI_FILE = "/VaelAna.ini";

std::string SystemFilePath() { return store.ProgramFolder + PATH_SEPARATOR + SYSTEM_FILE; }

void IniDefaults() {
    SetDefault();
    store.FilterIndex = 0;
}

/// Lines of a text file without their ends.
std::vector<std::string> LinesOf(std::istream& in) {
    std::vector<std::string> lines;
    for (std::string line; lines.size() < 6 && std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

/// The current directory with a separator behind it.
std::string CurrentFolder() {
    std::error_code none;
    std::string folder = std::filesystem::current_path(none).string();
    if (folder.empty() || folder.back() != PATH_SEPARATOR) folder += PATH_SEPARATOR;
    return folder;
}

/// Makes a folder the current one; where it is not there, the process stays where it is.
void ChangeFolder(const std::string& folder) {
    std::error_code none;
    std::filesystem::current_path(folder, none);
}

/// The folder that dialogs start in after the second entry: below the program's own, made when it
/// is missing. Where it cannot be made or entered the process stays where it is.
std::string UserDataPlace() {
    const std::string place = store.ProgramFolder + PATH_SEPARATOR + "UserData";
    std::error_code none;
    std::filesystem::create_directory(place, none);
    return place;
}

/// Steps 2 to 14 of start-up. Dialogs start in the folder that is current then: `enter`, where it
/// can be entered. `userFolder` is what the store says of it.
void LoadSteps(const std::string& userFolder, const std::string& enter) {
    VaelAnaView& v = frmVaelAna;
    for (std::size_t row = 0; row < GRAPH_COUNT; ++row) {
        store.SlotUsed[row] = FALSE_WORD;
        store.GraphList[row] = GraphEntry{};
    }
    ClearProperty(-1);
    ClearSpectrum(-1);
    store.PeakTables = {};
    store.HandPeaks = {};
    store.Rois = {};
    store.FitSource = {};
    frmAtom.InitAtom();
    ClearReflectionMarks();

    store.UserDataFolder = userFolder;
    ChangeFolder(enter);
    const PathPieces folder = SplitFilePath(CurrentFolder() + "*.*");
    store.DataDrive = folder.Drive;
    store.DataFolder = folder.Folder;

    if (ReadSystemPara(SystemFilePath(), store.DefaultParam) == TRUE_WORD) SetDefaultEgc(0);

    store.SpanCh = DEFAULT_CHANNELS;
    v.ActiveWin = 0;
    v.UnitX = UNIT_CH;
    v.Cursor = 0;
    v.inumCursorCh.Value = 1.0;
    v.Drag = {};
    v.timCursor.Enabled = false;
    StyleAtStart();
    for (auto& box : v.chkFilePile) {
        box.Enabled = false;
        box.Value = 0;
    }
    WindowSetup();
    v.mnuMcaStop.Enabled = false;
    ForgetRoiStart();
    for (auto& memo : v.fraMemo) memo.Visible = false;
    constexpr std::array<int, 5> SHOWN{UNIT_CH, UNIT_KEV, UNIT_D, UNIT_Q, UNIT_2THETA};
    for (std::size_t k = 0; k < SHOWN.size(); ++k) {
        v.lblDispUnit[k].Caption = UnitAbbrev(SHOWN[k]);
        v.inumCursorDisp[k].Format = UnitFormat(SHOWN[k]);
    }
    store.GraphTotal = 0;
    store.AreaFitDone = 0;
    Add_cboGraphSel();
    v.cboUnitX.Index = UNIT_CH;
    for (int win = 0; win < WINDOW_COUNT; ++win) Change_cboGrphSel(win, 0);
    v.ActiveWin = 0;
    RefreshRows();
    cmdOperationInit();
    SetScaleMode(ScaleMode::Auto);  // the three boxes are one choice; draws both windows
    TellStatus({});
    ChangeActiveWin(0);
    v.chkCsrType.Value = 1;
    ResetManualFit();
}

}  // namespace

std::int16_t ReadSystemPara(const std::string& path, ParamRecord& param) {
    try {
        std::ifstream in = OpenToRead(path);
        PackedReader reader(in);
        SystemFile file;
        file.Param.Tail = param.Tail;
        std::array<std::uint8_t, 2> header{};
        reader.Bytes(header);
        ReadParamBlock(reader, file.Param);
        for (Colour& colour : file.Colours) reader.Field(colour);
        reader.Bytes(file.Display);
        for (std::int16_t& word : file.Words) reader.Field(word);
        if (store.FixedDefault == 0) ReadParamBlock(reader, file.Second);
        if (reader.Short()) return FALSE_WORD;
        param = file.Param;
        store.ColorTable = file.Colours;
        store.DisplayBlock = file.Display;
        settings.FuncType = file.Words[0];
        settings.SmoothIndex = file.Words[1];
        settings.PeakThres = file.Words[2];
        settings.BackInterval = file.Words[3];
        settings.BackTimes = file.Words[4];
        return TRUE_WORD;
    } catch (const Fault&) {
        return FALSE_WORD;
    }
}

std::int16_t WriteSystemPara(const std::string& path, const ParamRecord& param) {
    try {
        std::ostringstream out;
        PackedWriter writer(out);
        writer.Text("00");
        WriteParamBlock(writer, param);
        for (const Colour colour : store.ColorTable) writer.Field(colour);
        writer.Bytes(store.DisplayBlock);
        for (const std::int16_t word : {settings.FuncType, settings.SmoothIndex, settings.PeakThres,
                                        settings.BackInterval, settings.BackTimes})
            writer.Field(word);
        if (store.FixedDefault == 0) WriteParamBlock(writer, param);
        ReplaceFile(path, out.view());
        return TRUE_WORD;
    } catch (const Fault&) {
        return FALSE_WORD;
    }
}

void ReadIni(const std::string& path) {
    IniDefaults();
    if (!FileExists(path)) return;
    std::vector<std::string> lines;
    try {
        std::ifstream in = OpenToRead(path);
        lines = LinesOf(in);
    } catch (const Fault&) {
        return;
    }
    if (lines.size() < 6) return;
    const auto take = [](const std::string& text, double& value) {
        if (const auto number = ParseNumber(text))
            value = *number;
        else
            SetDefault();
    };
    const auto word = [](const std::string& text) -> std::optional<std::int16_t> {
        const auto number = ParseNumber(text);
        if (!number || *number < -32768 || *number > 32767) return std::nullopt;
        return Whole16(*number);
    };
    take(lines[0], settings.EACPS);
    take(lines[1], settings.ISPPK);
    take(lines[2], settings.Lambda);
    store.FilterIndex = word(lines[3]).value_or(0);
    take(lines[4], settings.JudgeRange);
    if (const auto on = word(lines[5]))
        settings.SmoothingOn = *on;
    else
        SetDefault();
}

std::int16_t WriteIni(const std::string& path) {
    constexpr const char* END = "\r\n";
    std::ostringstream out;
    out << FormatNumber(settings.EACPS, "#0.00") << END << FormatNumber(settings.ISPPK, "#0.00")
        << END << FormatNumber(settings.Lambda, "#0.000000") << END << store.FilterIndex << END
        << FormatNumber(settings.JudgeRange, "#0.0000") << END << settings.SmoothingOn << END;
    try {
        ReplaceFile(path, out.view());
        return TRUE_WORD;
    } catch (const Fault&) {
        return FALSE_WORD;
    }
}

void SetDefault() {
    settings.EACPS = 0.2;
    settings.ISPPK = 20.0;
    settings.Lambda = 0.49576;
    settings.JudgeRange = 0.03;
    settings.SmoothingOn = 1;
}

std::int16_t CheckNoSave() {
    for (std::size_t row = 0; row < GRAPH_COUNT; ++row) {
        if (store.GraphList[row].State != 2) continue;
        if (!AskYesNo("File No Save.  Grp=" + std::to_string(row + 1) + " (Do you Cansel?)"))
            return TRUE_WORD;
    }
    return FALSE_WORD;
}

void StartProgram(const std::string& programFolder, const std::vector<std::string>& files) {
    OnFault([](View&, const std::string& sentence) { TellStatus(sentence, true); });
    RunEvent(frmVaelAna, [&] { Form_Load(programFolder); });
    RunEvent(frmVaelAna, [&] { OpenNamed(files); });
}

void Form_Load(const std::string& programFolder) {
    store.ProgramFolder = programFolder;
    store.FixedDefault = 1;  // set before the file is read: its second record is not there
    frmLog.Visible = false;
    frmAtom.Visible = false;
    frmRoiReport.Visible = false;
    store.ColorTable = FirstColours();
    LoadSteps(CurrentFolder(), CurrentFolder());
    ReadIni(store.ProgramFolder + INI_FILE);
    RefreshRoiReport();
    frmVaelAna.Visible = true;
}

void Form_Load_Proc() { LoadSteps("\\UserData\\", UserDataPlace()); }

void ExitProc() {
    if (CheckNoSave() == TRUE_WORD || !CalibrationMayGo()) return;
    EndPeakCal();  // its log is ended and may be kept
    Unload(frmAtom);
    Unload(frmRoiReport);
    Unload(frmLog);
    Unload(frmSelGraph);
    WriteSystemPara(SystemFilePath(), store.DefaultParam);
    WriteIni(store.ProgramFolder + INI_FILE);
    TheDesk().Quit();
}

}  // namespace vael
