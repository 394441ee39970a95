// The main view: two graph windows, the button panel, the menus, and the public accessors.
#pragma once

#include "toolkit/controls.h"

#include <string>

namespace vael {

/// frmVaelAna. What fires a handler when the program sets it (Select, Set, Put): cboGrphSel,
/// cboUnitX, chkGrp, ckbVtAuto, chkCsrType, optEGC.
struct VaelAnaView : View {
    VaelAnaView();

    // State of the view, read from outside by the accessors below.
    int ActiveWin = 0;                  // window 0 or 1 that has the focus of the commands
    int UnitX = 0;                      // axis unit of the cursor boxes
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
    Menu mnuRoiStart{*this, "mnuRoiStart", "ROI Start", "mnuPeak"};
    Menu mnuRoiEnd{*this, "mnuRoiEnd", "ROI End", "mnuPeak"};
    Menu mnuPeakColor{*this, "mnuPeakColor", "Peak Color", "mnuPeak"};
    Menu mnuPeakReport{*this, "mnuPeakReport", "Peak Report...", "mnuPeak"};

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

/// A sentence in the status line, past tense. A fault carries a mark and stays until the next
/// command.
void TellStatus(const std::string& sentence, bool fault = false);

}  // namespace vael
