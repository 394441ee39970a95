// The main view: two graph windows, the button panel, the menus, and the public accessors.
#pragma once

#include "display/drawscale.h"
#include "toolkit/controls.h"

#include <array>
#include <string>

namespace vael {

/// One end of an area. A channel of 65535, read as a 16-bit word -1, means that it is not set.
struct AreaMark {
    std::int16_t Channel = -1;
    double Height = 0.0;  // where its flag stands: counts, on the log axis decades
};

/// What one graph window shows.
struct WindowState {
    int Start = 0;                      // first channel shown, 0-based
    int Span = DEFAULT_CHANNELS;        // channels shown
    std::int32_t FullScale = 10000000;  // counts; kept while the log axis is on
    std::array<AreaMark, 2> Area;       // left, right
    AxisScale CountAxis;                // what its count axis shows
};

/// How a window's height is found. The three boxes and the three menu items are one choice.
enum class ScaleMode { Auto, Log, Normal };

/// `WinStyle`: each window has its own graphs; window 1 magnifies a part of window 0; one plot with
/// the graphs one above the other.
enum class WindowStyle : std::int16_t { LineUp = 0, Expand = 1, PileUp = 2 };

/// What the mouse holds between its press and its release.
struct Dragging {
    enum class What { Nothing, Cursor, Edge, Band } Held = What::Nothing;
    int Window = 0;
    int From = 0;         // channel where a band began, or of the edge that stays
    double PointerX = 0;  // where the pointer is, also outside the picture
};

/// frmVaelAna. What fires a handler when the program sets it (Select, Set, Put): cboGrphSel,
/// chkGrp, chkArea, ckbExpand, chkWinStyle, ckbVtAuto.
struct VaelAnaView : View {
    VaelAnaView();

    // State of the view, read from outside by the accessors below.
    int ActiveWin = 0;  // window 0 or 1 that has the focus of the commands
    int UnitX = 0;      // axis unit of the cursor boxes
    int Cursor = 0;     // its channel, 0-based; the box shows it from 1
    WindowStyle WinStyle = WindowStyle::LineUp;
    ScaleMode LastScale = ScaleMode::Auto;  // what "Log" goes back to
    std::array<WindowState, 2> Windows;
    Dragging Drag;
    bool Calibrating = false;  // the energy calibration is open
    int RoiStart = 0;          // kept by "ROI Start", 0-based, while "ROI End" is enabled
    std::string AngleShown;    // what stood in txt2Theta before the user typed
    Spot MemoGrasp;            // where the memo's text is held
    AxisScale LowerAxis;
    bool StatusFault = false;           // the status line tells why a command ended
    Colour StripInk = Rgb(50, 54, 60);  // of the axis strips: the desktop follows its palette
    Colour StripBack = Rgb(239, 240, 241);

    // --- menus
    Menu mnuFile{*this, "mnuFile", "&File"};
    Menu mnuLoad{*this, "mnuLoad", "Open...", "mnuFile"};
    Menu mnuSave{*this, "mnuSave", "Save...", "mnuFile"};
    Menu mnuProperty{*this, "mnuProperty", "Property...", "mnuFile"};
    Menu mnuPrint{*this, "mnuPrint", "Print...", "mnuFile"};
    Menu mnuBatchPrint{*this, "mnuBatchPrint", "Batch Print", "mnuFile"};
    Menu mnuCloseGraph{*this, "mnuCloseGraph", "Close Graph", "mnuFile"};
    Menu mnuCloseWin{*this, "mnuCloseWin", "Close Window", "mnuFile"};
    Menu mnuExit{*this, "mnuExit", "E&xit", "mnuFile"};

    Menu mnuGraph{*this, "mnuGraph", "&Graph"};
    Menu mnuGraphRaw{*this, "mnuGraphRaw", "Raw", "mnuGraph"};
    Menu mnuGraphSmt{*this, "mnuGraphSmt", "Smooth", "mnuGraph"};
    Menu mnuGraphBack{*this, "mnuGraphBack", "BackGraund", "mnuGraph"};
    Menu mnuGraphBackRemoved{*this, "mnuGraphBackRemoved", "BackRemv", "mnuGraph"};
    Menu mnuGraphFit{*this, "mnuGraphFit", "Fit", "mnuGraph"};
    Menu mnuDot{*this, "mnuDot", "Dot", "mnuGraph"};
    Menu mnuLine{*this, "mnuLine", "Line", "mnuGraph"};
    Menu mnuPaint{*this, "mnuPaint", "Paint", "mnuGraph"};
    Menu mnuColor{*this, "mnuColor", "Color...", "mnuGraph"};
    Menu mnuCalcSpect{*this, "mnuCalcSpect", "CalcSpect", "mnuGraph"};

    Menu mnuPeak{*this, "mnuPeak", "&Peak"};
    Menu mnuPeakIns{*this, "mnuPeakIns", "Insert", "mnuPeak"};
    Menu mnuPeakAllIns{*this, "mnuPeakAllIns", "Insert All", "mnuPeak"};
    Menu mnuPeakDelete{*this, "mnuPeakDelete", "Delete", "mnuPeak"};
    Menu mnuPeakAllDelete{*this, "mnuPeakAllDelete", "Delete All", "mnuPeak"};
    Menu mnuPeakJumpB{*this, "mnuPeakJumpB", "Jump Prev.  Alt+ ←", "mnuPeak"};
    Menu mnuPeakJumpN{*this, "mnuPeakJumpN", "Jump Next  Alt+ →", "mnuPeak"};
    Menu mnuRoiJumpB{*this, "mnuRoiJumpB", "Jump Prev. ROI", "mnuPeak"};
    Menu mnuRoiJumpN{*this, "mnuRoiJumpN", "Jump Next ROI", "mnuPeak"};
    Menu mnuRoiStart{*this, "mnuRoiStart", "ROI Start", "mnuPeak"};
    Menu mnuRoiEnd{*this, "mnuRoiEnd", "ROI End", "mnuPeak"};
    Menu mnuPeakColor{*this, "mnuPeakColor", "Peak Color", "mnuPeak"};
    Menu mnuPeakReport{*this, "mnuPeakReport", "Peak Report...", "mnuPeak"};
    Menu mnuRoiReport{*this, "mnuRoiReport", "ROI Report...", "mnuPeak"};

    Menu mnuFit{*this, "mnuFit", "F&it"};
    Menu mnuSmooth{*this, "mnuSmooth", "Smooth", "mnuFit"};
    Menu mnuBackGround{*this, "mnuBackGround", "BackGround", "mnuFit"};
    Menu mnuFitting{*this, "mnuFitting", "Fitting", "mnuFit"};
    Menu mnuFittingAll{*this, "mnuFittingAll", "Fiiting All", "mnuFit"};
    Menu mnuPeakSep{*this, "mnuPeakSep", "Peak Split", "mnuFit"};
    Menu mnuNaxFit{*this, "mnuNaxFit", "NaxFitting", "mnuFit"};
    Menu mnuExpressFit{*this, "mnuExpressFit", "ExpressFitting", "mnuFit"};
    Menu mnuSetCons{*this, "mnuSetCons", "Setting...", "mnuFit"};

    Menu mnuView{*this, "mnuView", "&View"};
    Menu mnuTaller{*this, "mnuTaller", "Taller", "mnuView"};
    Menu mnuShoter{*this, "mnuShoter", "Shoter", "mnuView"};
    Menu mnuLogarithmic{*this, "mnuLogarithmic", "Logarithmic", "mnuView"};
    Menu mnuAutomatic{*this, "mnuAutomatic", "Automatic", "mnuView"};
    Menu mnuNorScale{*this, "mnuNorScale", "Normal Scale", "mnuView"};
    ControlArray<Menu, 2> mnuWinType{*this, "mnuWinType", std::string(), std::string("mnuView")};
    Menu mnuExpandOn{*this, "mnuExpandOn", "Expand On", "mnuView"};
    Menu mnuExpandOff{*this, "mnuExpandOff", "Expand Off", "mnuView"};
    Menu mnuExpandSetting{*this, "mnuExpandSetting", "Expand Setting...", "mnuView"};
    Menu mnuLogText{*this, "mnuLogText", "LogText", "mnuView"};
    Menu mnuSidePanel{*this, "mnuSidePanel", "Side Panel", "mnuView"};

    Menu mnuCalibration{*this, "mnuCalibration", "&Calibration"};
    Menu mnuCons{*this, "mnuCons", "&Caliblate...", "mnuCalibration"};
    Menu mnuAtom{*this, "mnuAtom", "Atom", "mnuCalibration"};

    Menu mnuTool{*this, "mnuTool", "&Tool"};
    Menu mnuEditCrystalFile{*this, "mnuEditCrystalFile", "Edit crystal file", "mnuTool"};

    Menu mnuMca{*this, "mnuMca", "&MCA"};
    Menu mnuMcaStart{*this, "mnuMcaStart", "Start", "mnuMca"};
    Menu mnuMcaStop{*this, "mnuMcaStop", "Stop", "mnuMca"};
    Menu mnuMcaClear{*this, "mnuMcaClear", "Clear", "mnuMca"};
    Menu mnuMcaPreset{*this, "mnuMcaPreset", "Preset...", "mnuMca"};
    Menu mnuNonInter{*this, "mnuNonInter", "Non Interval", "mnuMca"};
    Menu mnuSchedule{*this, "mnuSchedule", "Schedule...", "mnuMca"};

    Menu mnuHelpTop{*this, "mnuHelpTop", "&Help"};
    Menu mnuHelp{*this, "mnuHelp", "&Help", "mnuHelpTop"};
    Menu mnuVersion{*this, "mnuVersion", "VaelAnalysis Ver 1.2007.09.05", "mnuHelpTop"};

    // --- button panel
    ControlArray<Button, 4> cmdFiles{*this, "cmdFiles"};    // open, save, print, property
    ControlArray<Button, 2> cmdEnergy{*this, "cmdEnergy"};  // calibration, elements
    ControlArray<Button, 1> cmdDisplay{*this, "cmdDisplay"};
    ControlArray<Button, 13> cmdOperation{*this, "cmdOperation"};
    Button cmdAutoFit{*this, "cmdAutoFit", "AutoFitting"};
    Button cmdManualFitting{*this, "cmdManualFitting", "NAX MANUAL FIT"};
    Button cmdFitCancel{*this, "cmdFitCancel", "Fitting Stop"};
    Button cmdShowReport{*this, "cmdShowReport", "Lattice Fitting"};
    Button cmdMnSelGrp{*this, "cmdMnSelGrp", "Graph Select"};
    Button Command1{*this, "Command1", "Parameter"};

    // --- the two graph windows
    ControlArray<Frame, 2> fraGraph{*this, "fraGraph"};
    ControlArray<ListBox, 2> cboGrphSel{*this, "cboGrphSel"};
    ControlArray<CheckBox, 20> chkGrp{*this, "chkGrp"};  // window * 10 + row
    ControlArray<Label, 2> lblCursorCnt{*this, "lblCursorCnt", {"count", "count"}};
    ControlArray<NumberBox, 2> inumCursorCnt{*this, "inumCursorCnt", std::string("0")};
    ControlArray<CheckBox, 2> chkFilePile{*this, "chkFilePile", {"Show", "Show"}};
    ControlArray<Picture, 2> picGraph{*this, "picGraph"};
    ControlArray<Picture, 2> picScaleY{*this, "picScaleY", 56, 240};
    ControlArray<Frame, 2> fraMemo{*this, "fraMemo"};
    ControlArray<Label, 2> lblMemo{*this, "lblMemo"};
    Frame fraWinHeight{*this, "fraWinHeight"};

    // --- the shared strip below them
    Frame fraSubScale{*this, "fraSubScale"};
    Picture picSubScale{*this, "picSubScale", 640, 32};
    ScrollBar hsbStartX{*this, "hsbStartX"};
    ListBox cboUnitX{*this, "cboUnitX"};
    NumberBox inumScaleX{*this, "inumScaleX", "####0.000"};
    NumberBox imnSpanCh{*this, "imnSpanCh", "####0"};
    Button cmdWider{*this, "cmdWider", "＋"};
    Button cmdNarrower{*this, "cmdNarrower", "－"};

    // --- side panel, and the handle beside it that hides it
    Frame panelSide{*this, "panelSide"};
    Button cmdSidePanel{*this, "cmdSidePanel", "›"};

    // --- side panel: cursor
    NumberBox inumCursorCh{*this, "inumCursorCh", "####0"};
    ControlArray<NumberBox, 5> inumCursorDisp{*this, "inumCursorDisp", std::string("####")};
    ControlArray<Label, 5> lblDispUnit{*this, "lblDispUnit"};
    ControlArray<Button, 2> spnCursor{*this, "spnCursor", {"-", "+"}};
    TextBox itxtNoRoi{*this, "itxtNoRoi"};
    TextBox itxtNoPeak{*this, "itxtNoPeak"};
    TextBox itxtGraphName{*this, "itxtGraphName"};
    Label Label3{*this, "Label3", "ROI"};
    Label lblMI{*this, "lblMI", "Peak"};
    CheckBox chkCsrType{*this, "chkCsrType", "Cursor"};
    CheckBox chkArea{*this, "chkArea", "AREA SET"};
    CheckBox chkPeakParameter{*this, "chkPeakParameter", "Peak Parameter"};

    // --- side panel: scale and style
    CheckBox ckbVtAuto{*this, "ckbVtAuto", "Auto"};
    CheckBox ckbLogScale{*this, "ckbLogScale", "Log"};
    CheckBox ckbNorScale{*this, "ckbNorScale", "Normal"};
    ListBox itxtScaleY{*this, "itxtScaleY"};
    ScrollBar hsbWidthY{*this, "hsbWidthY"};
    CheckBox ckbExpand{*this, "ckbExpand", "Expand"};
    CheckBox chkWinStyle{*this, "chkWinStyle", "PileUp"};

    // --- side panel: calibration in force
    ControlArray<Option, 2> optEGC{*this, "optEGC", {"Default", "This File"}};
    Label lbl2Theta{*this, "lbl2Theta", "2Theta (deg)"};
    TextBox txt2Theta{*this, "txt2Theta"};
    Label lblEGC{*this, "lblEGC"};

    // --- status line
    Label lblStatus{*this, "lblStatus"};
    Label lblRows{*this, "lblRows"};
    Label lblFitter{*this, "lblFitter"};

    Timer timCursor{*this, "timCursor", 50};
};

inline VaelAnaView frmVaelAna;

/// Row of the current graph of the active window, and the slot of that row.
[[nodiscard]] int GraphNo();
[[nodiscard]] int DataNo();

/// Puts an angle into `txt2Theta`, degrees.
void ShowAngle(double degrees);

/// A sentence in the status line, past tense. A fault carries a mark and stays until the next
/// command.
void TellStatus(const std::string& sentence, bool fault = false);

}  // namespace vael
