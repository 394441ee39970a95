// The main view: two graph windows, the button panel, the menus, and the public accessors.
#include "core/frmvaelana.h"

#include "analysis/expresscommands.h"
#include "analysis/frmmanualfit.h"
#include "analysis/frmpeakreport.h"
#include "analysis/frmroireport.h"
#include "analysis/frmsetting.h"
#include "analysis/roicommands.h"
#include "calibration/frmdialogcalibc.h"
#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/expand.h"
#include "core/fault.h"
#include "core/frmdisppara.h"
#include "core/frmexpandsetting.h"
#include "core/frmgrpcalc.h"
#include "core/frmlog.h"
#include "core/frmselgraph.h"
#include "core/graphs.h"
#include "core/operations.h"
#include "core/params.h"
#include "core/pointing.h"
#include "core/saving.h"
#include "core/scales.h"
#include "core/store.h"
#include "core/text.h"
#include "core/units.h"
#include "core/windows.h"
#include "display/frmbatchprint.h"
#include "display/frmprint.h"
#include "display/frmsetcolor.h"
#include "files/frmproperty.h"
#include "lattice/frmatom.h"
#include "lattice/frmpeakcal.h"
#include "toolkit/hand.h"

namespace vael {
namespace {

void optEGC_Click(int index) {
    store.UseFileEgc = static_cast<std::int16_t>(index);
    HidePeakMemo();
    ShowCursorValues();
    XScaleDraw();
    TellStatus(index == 1 ? "Each spectrum's own calibration is in force."
                          : "The default calibration is in force.");
}

/// A double click shows what is in force; a single one leaves the texts as they are.
void optEGC_DoubleClick() {
    const ParamRecord& param = ParamInForce(DataNo());
    SetEGCParam(param.EgcCoef);
    ShowAngle(param.TwoTheta);
    TellStatus("The calibration in force is shown.");
}

/// The record that a typed 2 theta goes to: that of the choice in force.
ParamRecord& TypedParam() {
    return store.UseFileEgc != 0 ? Item(store.PropertyRecords, DataNo()).Param : store.DefaultParam;
}

void txt2Theta_Take() {
    ParamRecord& param = TypedParam();
    const std::string typed = frmVaelAna.txt2Theta.Text;
    // What the box shows has fewer digits than the record, and may be the spectrum's own angle
    // while the default is in force: a text that nobody changed is not taken.
    if (typed == frmVaelAna.AngleShown) return;
    const auto angle = ParseNumber(typed);
    ShowAngle(angle.value_or(param.TwoTheta));
    if (!angle) {
        TellStatus("\"" + typed + "\" is no angle.");
        return;
    }
    if (*angle == param.TwoTheta) return;
    param.TwoTheta = *angle;
    HidePeakMemo();
    ShowCursorValues();
    XScaleDraw();
    TellStatus("2 theta is " + frmVaelAna.txt2Theta.Text + " degrees.");
}

void cboUnitX_Click() {
    frmVaelAna.UnitX = frmVaelAna.cboUnitX.Index;
    HidePeakMemo();
    XScaleDraw();
}

void mnuNaxFit_Click() {
    store.FitMode = 0;
    frmVaelAna.mnuNaxFit.Checked = true;
    frmVaelAna.mnuExpressFit.Checked = false;
    frmVaelAna.lblFitter.Caption = "NaxFitting";
    TellStatus("NaxFitting is chosen.");
}

void chkCsrType_Click() { RefreshCursorMarks(); }

void chkPeakParameter_Click() { RedrawBoth(); }

void mnuLogText_Click() { frmLog.Visible = true; }

/// The plots take the room of the side panel while it is away.
void ToggleSidePanel() {
    VaelAnaView& v = frmVaelAna;
    const bool shown = !v.panelSide.Visible;
    v.panelSide.Visible = shown;
    v.mnuSidePanel.Checked = shown;
    v.cmdSidePanel.Caption = shown ? "›" : "‹";
    TellStatus(shown ? "The side panel is shown." : "The side panel is hidden; F9 shows it.");
}

void Resized() {
    HidePeakMemo();
    RedrawBoth();
    XScaleDraw();
}

void Hold(std::initializer_list<Control*> controls, const char* why) {
    for (Control* control : controls) {
        control->Withheld = true;
        control->Tip = control->Tip.empty() ? why : control->Tip + " - " + why;
    }
}

/// Controls that stand in their place and never work: those without any action.
void Withhold(VaelAnaView& v) {
    Hold(
        {&v.mnuCloseWin, &v.mnuAtom, &v.mnuPeakColor, &v.mnuMcaStart, &v.mnuMcaStop, &v.mnuMcaClear,
         &v.mnuMcaPreset, &v.mnuNonInter, &v.mnuSchedule, &v.mnuVersion, &v.cmdFitCancel},
        "has no action");
}

void Tips(VaelAnaView& v) {
    constexpr std::array<const char*, 13> OPERATIONS{
        "Smooths the current row into the row \"Smooth\" and fits all its peaks (F5)",
        "Fits single peaks of the current row by hand",
        "Fits all peaks of the current row as it is (F6)",
        "Smooths the current row into the row \"Smooth\" (F4)",
        "Deletes the peaks of the current row that lie in the area, after a question (Ctrl+Delete)",
        "Closes all rows, after a question",
        "Moves the cursor to the previous peak of the current row (Alt+Left)",
        "Spreads the area over the whole axis, or takes it off (F8)",
        "Moves the cursor to the next peak of the current row (Alt+Right)",
        "Matches the peaks of the current row to a crystal and refines its cell (Ctrl+H)",
        "Lists the peaks of the current row (Ctrl+R)",
        "Moves the cursor one channel down (Left; with Shift 20 channels, with Ctrl it marks an "
        "area)",
        "Moves the cursor one channel up (Right; with Shift 20 channels, with Ctrl it marks an "
        "area)"};
    for (std::size_t k = 0; k < OPERATIONS.size(); ++k) v.cmdOperation[k].Tip = OPERATIONS[k];
    constexpr std::array<const char*, 4> FILES{
        "Opens spectra in place of the rows that are there (Ctrl+O)",
        "Saves the current row in a file (Ctrl+S)",
        "Prints the plots with the measurement and the peaks of the current row (Ctrl+P)",
        "Shows how the current spectrum was measured, and edits it (Ctrl+Y)"};
    for (std::size_t k = 0; k < FILES.size(); ++k) v.cmdFiles[k].Tip = FILES[k];
    v.cmdEnergy[0].Tip = "Finds the energy calibration from known lines (Ctrl+K)";
    v.cmdEnergy[1].Tip = "Marks the lines of an element on the current spectrum (Ctrl+Shift+E)";
    v.cmdDisplay[0].Tip = "Magnifies a part of the upper window in the lower one (Ctrl+E)";
    v.cmdAutoFit.Tip =
        "Smooths a single spectrum, takes its background away and fits all its peaks (F7)";
    v.cmdManualFitting.Tip = "Fits single peaks of the current row by hand (Ctrl+M)";
    v.cmdFitCancel.Tip = "Stops a fit";
    v.cmdShowReport.Tip =
        "Matches the peaks of the current row to a crystal and refines its cell (Ctrl+H)";
    v.cmdMnSelGrp.Tip =
        "Lists the ten rows: which are shown, in which colour, of what sample (Ctrl+G)";
    v.Command1.Tip = "Edits the default calibration, angle, pressure and temperature";
    v.cmdSidePanel.Tip = "Hides the side panel, or shows it again (F9)";
    v.cboUnitX.Tip = "Unit of the lower axis";
    v.optEGC[0].Tip = "Calibrates with the default polynomial; a double click shows it";
    v.optEGC[1].Tip = "Calibrates with each file's own polynomial; a double click shows it";
    v.itxtNoRoi.Tip = "Number of the region at the cursor; a double click lists the regions";
    v.txt2Theta.Tip = "Angle of the calibration in force; Enter stores it";
    v.spnCursor[0].Tip = "Moves the cursor one channel down (Left)";
    v.spnCursor[1].Tip = "Moves the cursor one channel up (Right)";
    v.inumCursorCh.Tip = "Channel of the cursor; a number and Enter move it";
    v.chkCsrType.Tip = "The cursor is a line of the full height, or a short mark above the count";
    v.chkArea.Tip = "Two marks for an area; drag them, or drag across the plot";
    v.chkPeakParameter.Tip = "Marks above the fitted peaks of both windows";
    v.ckbVtAuto.Tip = "The vertical scale follows the counts (Ctrl+2)";
    v.ckbLogScale.Tip = "Logarithmic axis of seven decades (Ctrl+1, or \".\" of the number pad)";
    v.ckbNorScale.Tip = "The vertical scale stays as it is (Ctrl+3)";
    v.itxtScaleY.Tip = "Full scale of the active window: a number, with k or m, or log, or auto";
    v.hsbWidthY.Tip = "Full scale of the active window (Up: taller, Down: shorter)";
    v.ckbExpand.Tip = "The lower window magnifies a part of the upper one (Ctrl+E)";
    v.chkWinStyle.Tip = "One plot with the graphs one above the other (Ctrl+U)";
    v.cmdWider.Tip = "Twice the span about the cursor (\"+\" of the number pad)";
    v.cmdNarrower.Tip = "Half the span about the cursor (\"-\" of the number pad)";
    v.imnSpanCh.Tip = "Channels shown; a number and Enter change it";
    v.inumScaleX.Tip = "The shown span in the unit of the axis";
    v.hsbStartX.Tip = "First channel shown (Page Up, Page Down, Home, End; Shift and wheel)";
    for (CheckBox& show : v.chkFilePile) show.Tip = "Whether this window has a place";
    for (NumberBox& count : v.inumCursorCnt)
        count.Tip = "Count of the selected row below the cursor";
}

void Keys(VaelAnaView& v) {
    v.mnuLoad.Shortcut = "Ctrl+O";
    v.mnuSave.Shortcut = "Ctrl+S";
    v.mnuProperty.Shortcut = "Ctrl+Y";
    v.mnuPrint.Shortcut = "Ctrl+P";
    v.mnuBatchPrint.Shortcut = "Ctrl+Shift+P";
    v.mnuCloseGraph.Shortcut = "Ctrl+W";
    v.mnuExit.Shortcut = "Ctrl+Q";
    v.mnuColor.Shortcut = "Ctrl+Shift+C";
    v.mnuSmooth.Shortcut = "F4";
    v.mnuBackGround.Shortcut = "Ctrl+B";
    v.mnuPeakIns.Shortcut = "Ins";
    v.mnuPeakAllIns.Shortcut = "Ctrl+Ins";
    v.mnuPeakDelete.Shortcut = "Del";
    v.mnuPeakAllDelete.Shortcut = "Ctrl+Shift+Del";
    v.mnuPeakJumpB.Shortcut = "Alt+Left";
    v.mnuPeakJumpN.Shortcut = "Alt+Right";
    v.mnuPeakReport.Shortcut = "Ctrl+R";
    v.mnuRoiJumpB.Shortcut = "Alt+Shift+Left";
    v.mnuRoiJumpN.Shortcut = "Alt+Shift+Right";
    v.mnuRoiStart.Shortcut = "Ctrl+[";
    v.mnuRoiEnd.Shortcut = "Ctrl+]";
    v.mnuFitting.Shortcut = "Ctrl+F";
    v.mnuFittingAll.Shortcut = "Ctrl+Shift+F";
    v.mnuPeakSep.Shortcut = "Ctrl+T";
    v.mnuLogText.Shortcut = "Ctrl+L";
    v.mnuCons.Shortcut = "Ctrl+K";
    v.mnuWinType[0].Shortcut = "Ctrl+I";
    v.mnuWinType[1].Shortcut = "Ctrl+U";
    v.mnuLogarithmic.Shortcut = "Ctrl+1";
    v.mnuAutomatic.Shortcut = "Ctrl+2";
    v.mnuNorScale.Shortcut = "Ctrl+3";
    v.mnuSidePanel.Shortcut = "F9";
    v.cmdOperation[0].Shortcut = "F5";
    v.cmdOperation[2].Shortcut = "F6";
    v.cmdOperation[4].Shortcut = "Ctrl+Delete";
    v.cmdOperation[7].Shortcut = "F8";
    v.cmdAutoFit.Shortcut = "F7";
    v.cmdManualFitting.Shortcut = "Ctrl+M";
    v.cmdShowReport.Shortcut = "Ctrl+H";
    v.cmdDisplay[0].Shortcut = "Ctrl+E";
    v.cmdEnergy[1].Shortcut = "Ctrl+Shift+E";
    v.cmdMnSelGrp.Shortcut = "Ctrl+G";
}

void CheckableItems(VaelAnaView& v) {
    for (Menu* item : {&v.mnuNaxFit, &v.mnuExpressFit, &v.mnuDot, &v.mnuLine, &v.mnuPaint,
                       &v.mnuLogarithmic, &v.mnuAutomatic, &v.mnuNorScale, &v.mnuWinType[0],
                       &v.mnuWinType[1], &v.mnuExpandOn, &v.mnuExpandOff, &v.mnuSidePanel})
        item->Checkable = true;
    for (Menu* item : {&v.mnuNaxFit, &v.mnuLine, &v.mnuAutomatic, &v.mnuWinType[0], &v.mnuExpandOff,
                       &v.mnuSidePanel})
        item->Checked = true;
    for (Menu* item : {&v.mnuExit, &v.mnuNaxFit, &v.mnuDot, &v.mnuColor, &v.mnuPeakJumpB,
                       &v.mnuRoiJumpB, &v.mnuPeakReport, &v.mnuSetCons, &v.mnuLogarithmic,
                       &v.mnuWinType[0], &v.mnuExpandOn, &v.mnuLogText})
        item->SeparatorBefore = true;
}

void WirePlots(VaelAnaView& v) {
    for (int win = 0; win < WINDOW_COUNT; ++win) {
        Picture& plot = v.picGraph[static_cast<std::size_t>(win)];
        plot.MouseDown = [win](MouseButton button, double x, double y) {
            PlotMouseDown(win, button, x, y);
        };
        plot.MouseMove = [win](MouseButton button, double x, double y) {
            PlotMouseMove(win, button, x, y);
        };
        plot.MouseUp = [win](MouseButton button, double x, double y) {
            PlotMouseUp(win, button, x, y);
        };
        plot.DoubleClick = [win](double x, double y) { PlotDoubleClick(win, x, y); };
        plot.Wheel = [win](double notches, double x, bool sideways) {
            PlotWheel(win, notches, x, sideways);
        };
        // The memo is dragged by its text.
        Label& text = v.lblMemo[static_cast<std::size_t>(win)];
        text.MouseDown = [win](MouseButton button, double x, double y) {
            MemoMouseDown(win, button, x, y);
        };
        text.MouseMove = [win](MouseButton button, double x, double y) {
            MemoMouseMove(win, button, x, y);
        };
        v.cboGrphSel[static_cast<std::size_t>(win)].Click = [win] { cboGrphSel_Click(win); };
        v.chkFilePile[static_cast<std::size_t>(win)].Click = [win] { chkFilePile_Click(win); };
        for (int row = 0; row < GRAPH_COUNT; ++row)
            v.chkGrp[static_cast<std::size_t>(win * GRAPH_COUNT + row)].Click = [win, row] {
                chkGrp_Click(win, row);
            };
    }
    v.timCursor.Tick = timCursor_Tick;
    v.hsbStartX.Change = hsbStartX_Change;
    v.imnSpanCh.Change = imnSpanCh_Change;
    v.cmdWider.Click = cmdWider_Click;
    v.cmdNarrower.Click = cmdNarrower_Click;
    v.cboUnitX.Click = cboUnitX_Click;
}

void WireMenus(VaelAnaView& v) {
    v.mnuLoad.Click = LoadNew;
    v.mnuSave.Click = FileSave;
    v.mnuProperty.Click = ShowProperty;
    v.mnuPrint.Click = mnuPrint_Click;
    v.mnuBatchPrint.Click = ShowBatchPrint;
    v.mnuCloseGraph.Click = mnuCloseGraph_Click;
    v.mnuGraphRaw.Click = [] { mnuGraphKind_Click(""); };
    v.mnuGraphSmt.Click = [] { mnuGraphKind_Click(NAME_SMOOTH); };
    v.mnuGraphBack.Click = [] { mnuGraphKind_Click(NAME_BACKGROUND); };
    v.mnuGraphBackRemoved.Click = [] { mnuGraphKind_Click(NAME_REMOVED); };
    v.mnuGraphFit.Click = [] { mnuGraphKind_Click(NAME_FIT); };
    v.mnuExit.Click = ExitProc;
    v.mnuSmooth.Click = vael::mnuSmooth;
    v.mnuBackGround.Click = vael::mnuBackGround;
    v.mnuFitting.Click = vael::mnuFitting;
    v.mnuFittingAll.Click = vael::mnuFittingAll;
    v.mnuPeakSep.Click = PeakSep;
    v.mnuNaxFit.Click = mnuNaxFit_Click;
    v.mnuExpressFit.Click = mnuExpressFit_Click;
    v.mnuLogText.Click = mnuLogText_Click;
    v.mnuSetCons.Click = ShowSetting;
    v.mnuCons.Click = ShowDialogCalibC;
    v.Command1.Click = ShowDispPara;
    v.mnuPeakReport.Click = ShowPeakReport;
    v.mnuRoiReport.Click = ShowRoiReport;
    v.mnuExpandSetting.Click = ShowExpandSetting;
    v.mnuCalcSpect.Click = ShowGrpCalc;
    v.mnuColor.Click = ShowSetColor;
    v.mnuDot.Click = [] { SetDrawKind(DRAW_DOT); };
    v.mnuLine.Click = [] { SetDrawKind(DRAW_LINE); };
    v.mnuPaint.Click = [] { SetDrawKind(DRAW_PAINT); };
    v.mnuPeakIns.Click = vael::mnuPeakIns;
    v.mnuPeakAllIns.Click = vael::mnuPeakAllIns;
    v.mnuPeakDelete.Click = vael::mnuPeakDelete;
    v.mnuPeakAllDelete.Click = vael::mnuPeakAllDelete;
    v.mnuRoiStart.Click = vael::mnuRoiStart;
    v.mnuRoiEnd.Click = vael::mnuRoiEnd;
    v.mnuRoiJumpB.Click = [] { GoToRoi(0); };
    v.mnuRoiJumpN.Click = [] { GoToRoi(1); };
    v.mnuPeakJumpB.Click = [] { GoToPeak(0); };
    v.mnuPeakJumpN.Click = [] { GoToPeak(1); };
    v.mnuTaller.Click = [] { StepScale(1); };
    v.mnuShoter.Click = [] { StepScale(-1); };
    v.mnuLogarithmic.Click = [] { SetScaleMode(ScaleMode::Log); };
    v.mnuAutomatic.Click = [] { SetScaleMode(ScaleMode::Auto); };
    v.mnuNorScale.Click = [] { SetScaleMode(ScaleMode::Normal); };
    v.mnuWinType[0].Click = [] { mnuWinType_Click(0); };
    v.mnuWinType[1].Click = [] { mnuWinType_Click(1); };
    v.mnuExpandOn.Click = [] { mnuExpand_Click(1); };
    v.mnuExpandOff.Click = [] { mnuExpand_Click(0); };
    v.mnuSidePanel.Click = ToggleSidePanel;
    v.mnuEditCrystalFile.Click = [] { EditProgramFile("crystal.dat"); };
    v.mnuHelp.Click = [] { EditProgramFile("History.txt"); };
}

void WirePanel(VaelAnaView& v) {
    v.cmdFiles[0].Click = LoadNew;
    v.cmdFiles[1].Click = FileSave;
    v.cmdFiles[2].Click = mnuPrint_Click;
    v.cmdFiles[3].Click = ShowProperty;
    v.cmdEnergy[0].Click = ShowDialogCalibC;
    v.cmdEnergy[1].Click = [] { frmAtom.ShowTop(); };
    v.cmdMnSelGrp.Click = cmdMnSelGrp_Click;
    v.cmdAutoFit.Click = vael::cmdAutoFit;
    v.cmdManualFitting.Click = ShowManualFit;
    v.cmdShowReport.Click = ShowPeakCal;
    v.cmdSidePanel.Click = ToggleSidePanel;
    v.cmdDisplay[0].Click = [] {
        if (frmVaelAna.ckbExpand.Usable())
            Set(frmVaelAna.ckbExpand, 1 - frmVaelAna.ckbExpand.Value);
        else
            TellStatus("Expand works on graphs in the upper window alone, without PileUp.");
    };
    for (std::size_t k = 0; k < v.cmdOperation.size(); ++k)
        v.cmdOperation[k].Click = [k] { cmdOperation_Click(static_cast<int>(k)); };
    v.spnCursor[0].Click = [] { spnCursor_SpinUpDown("-"); };
    v.spnCursor[1].Click = [] { spnCursor_SpinUpDown("+"); };
    v.inumCursorCh.Change = inumCursorCh_Change;
    v.chkCsrType.Click = chkCsrType_Click;
    v.chkArea.Click = chkArea_Click;
    v.chkPeakParameter.Click = chkPeakParameter_Click;
    v.ckbVtAuto.Click = [] { ckbScale_Click(ScaleMode::Auto); };
    v.ckbLogScale.Click = [] { ckbScale_Click(ScaleMode::Log); };
    v.ckbNorScale.Click = [] { ckbScale_Click(ScaleMode::Normal); };
    v.itxtScaleY.Click = itxtScaleY_Click;
    v.itxtScaleY.Enter = itxtScaleY_Enter;
    v.hsbWidthY.Change = hsbWidthY_Change;
    v.ckbExpand.Click = ckbExpand_Click;
    v.chkWinStyle.Click = chkWinStyle_Click;
    for (int index = 0; index < 2; ++index)
        v.optEGC[static_cast<std::size_t>(index)].Click = [index] { optEGC_Click(index); };
    for (Option& choice : v.optEGC) choice.DoubleClick = optEGC_DoubleClick;
    v.itxtNoRoi.DoubleClick = ShowRoiReport;
    v.txt2Theta.Enter = txt2Theta_Take;
    v.txt2Theta.Leave = [] {
        txt2Theta_Take();
        return true;
    };
}

}  // namespace

VaelAnaView::VaelAnaView() : View("frmVaelAna", "Vael (Data Analyze) --- ") {
    Tips(*this);
    Withhold(*this);
    Keys(*this);
    for (int unit = UNIT_CH; unit <= UNIT_2THETA; ++unit)
        cboUnitX.Items.push_back(UnitAbbrev(unit));
    mnuWinType[0].Caption = "Line Up Graaph";
    mnuWinType[1].Caption = "Pile Up Graph";
    CheckableItems(*this);
    lblFitter.Caption = "NaxFitting";
    fraWinHeight.Share = 0.64;  // the upper window holds what is worked on
    optEGC[1].Value = true;     // a spectrum shows its own energies at once
    for (auto& box : inumCursorCnt) box.ReadOnly = true;
    for (auto& box : inumCursorDisp) box.ReadOnly = true;
    for (TextBox* box : {&itxtNoRoi, &itxtNoPeak, &itxtGraphName}) box->ReadOnly = true;
    inumScaleX.ReadOnly = true;
    inumCursorCh.Value = 1.0;
    inumCursorCh.Least = 1.0;
    imnSpanCh.Least = 1.0;
    itxtScaleY.Editable = true;

    Closing = ExitProc;
    KeyPreview = MainKeys;
    vael::View& view = *this;
    view.Resized = vael::Resized;
    WireMenus(*this);
    WirePanel(*this);
    WirePlots(*this);
}

int GraphNo() { return GetGrpNo(); }

int DataNo() { return store.GraphList[static_cast<std::size_t>(GraphNo())].DataNo; }

void ShowAngle(double degrees) {
    frmVaelAna.AngleShown = FormatNumber(degrees, "0.00000");
    frmVaelAna.txt2Theta.Text = frmVaelAna.AngleShown;
}

void TellStatus(const std::string& sentence, bool fault) {
    frmVaelAna.lblStatus.Caption = sentence;
    frmVaelAna.StatusFault = fault;
    if (fault) PutLog(sentence);
}

}  // namespace vael
