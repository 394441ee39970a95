// The main view: two graph windows, the button panel, the menus, and the public accessors.
#include "core/frmvaelana.h"

#include "analysis/frmsetting.h"
#include "core/cursors.h"
#include "core/frmdisppara.h"
#include "core/frmlog.h"
#include "core/graphs.h"
#include "core/operations.h"
#include "core/params.h"
#include "core/store.h"
#include "core/units.h"
#include "core/windows.h"
#include "toolkit/hand.h"

namespace vael {
namespace {

void optEGC_Click(int index) {
    store.UseFileEgc = static_cast<std::int16_t>(index);
    ShowCursorValues();
    XScaleDraw();
    TellStatus(index == 1 ? "Each spectrum's own calibration is in force."
                          : "The default calibration is in force.");
}

void cboUnitX_Click() {
    frmVaelAna.UnitX = frmVaelAna.cboUnitX.Index;
    XScaleDraw();
}

void mnuNaxFit_Click() {
    store.FitMode = 0;
    frmVaelAna.mnuNaxFit.Checked = true;
    frmVaelAna.mnuExpressFit.Checked = false;
    frmVaelAna.lblFitter.Caption = "NaxFitting";
    TellStatus("NaxFitting is chosen.");
}

void mnuLogText_Click() { frmLog.Visible = true; }

void Resized() {
    RedrawBoth();
    XScaleDraw();
}

/// Commands that come in a later release: their controls stand in their place and never work.
void Withhold(VaelAnaView& v) {
    constexpr const char* LATER = "comes in a later release";
    for (Control* control :
         std::initializer_list<Control*>{&v.mnuSave,          &v.mnuProperty,
                                         &v.mnuPrint,         &v.mnuBatchPrint,
                                         &v.mnuCloseGraph,    &v.mnuCloseWin,
                                         &v.mnuGraphRaw,      &v.mnuGraphSmt,
                                         &v.mnuGraphBack,     &v.mnuGraphBackRemoved,
                                         &v.mnuGraphFit,      &v.mnuDot,
                                         &v.mnuLine,          &v.mnuPaint,
                                         &v.mnuColor,         &v.mnuCalcSpect,
                                         &v.mnuPeakIns,       &v.mnuPeakAllIns,
                                         &v.mnuPeakDelete,    &v.mnuPeakAllDelete,
                                         &v.mnuPeakJumpB,     &v.mnuPeakJumpN,
                                         &v.mnuRoiStart,      &v.mnuRoiEnd,
                                         &v.mnuPeakColor,     &v.mnuPeakReport,
                                         &v.mnuFitting,       &v.mnuFittingAll,
                                         &v.mnuPeakSep,       &v.mnuExpressFit,
                                         &v.mnuTaller,
                                         &v.mnuShoter,        &v.mnuLogarithmic,
                                         &v.mnuAutomatic,     &v.mnuNorScale,
                                         &v.mnuExpandOn,      &v.mnuExpandOff,
                                         &v.mnuExpandSetting, &v.mnuCons,
                                         &v.mnuAtom,          &v.mnuEditCrystalFile,
                                         &v.mnuMcaStart,      &v.mnuMcaStop,
                                         &v.mnuMcaClear,      &v.mnuMcaPreset,
                                         &v.mnuNonInter,      &v.mnuSchedule,
                                         &v.mnuHelp,          &v.mnuVersion,
                                         &v.cmdManualFitting, &v.cmdFitCancel,
                                         &v.cmdShowReport,    &v.cmdMnSelGrp,
                                         &v.cmdWider,
                                         &v.cmdNarrower,      &v.chkCsrType,
                                         &v.chkArea,          &v.chkPeakParameter,
                                         &v.ckbVtAuto,        &v.ckbLogScale,
                                         &v.ckbNorScale,      &v.itxtScaleY,
                                         &v.hsbWidthY,        &v.ckbExpand,
                                         &v.chkWinStyle,      &v.txt2Theta,
                                         &v.hsbStartX,        &v.inumScaleX,
                                         &v.imnSpanCh,        &v.inumCursorCh,
                                         &v.itxtNoRoi,        &v.itxtNoPeak,
                                         &v.itxtGraphName}) {
        control->Withheld = true;
        control->Tip = LATER;
    }
    const auto hold = [&](auto& array, std::initializer_list<std::size_t> which) {
        for (const std::size_t k : which) {
            array[k].Withheld = true;
            array[k].Tip = array[k].Tip.empty() ? LATER : array[k].Tip + " - " + LATER;
        }
    };
    hold(v.cmdFiles, {1, 2, 3});
    hold(v.cmdEnergy, {0, 1});
    hold(v.cmdDisplay, {0});
    hold(v.cmdOperation, {1, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    hold(v.mnuWinType, {0, 1});
    hold(v.chkFilePile, {0, 1});
    hold(v.inumCursorCnt, {0, 1});
    hold(v.inumCursorDisp, {0, 1, 2, 3, 4});
    hold(v.spnCursor, {0, 1});
}

void Tips(VaelAnaView& v) {
    constexpr std::array<const char*, 13> OPERATIONS{
        "Smooth the current row and fit all its peaks",
        "Fit by hand",
        "Fit all peaks of the current row",
        "Smooth the current row",
        "Delete the peaks in the range of the area cursor",
        "Clear all data",
        "Go to the previous peak",
        "Area cursor on or off",
        "Go to the next peak",
        "Lattice Fitting",
        "Peak report",
        "Cursor one channel down",
        "Cursor one channel up"};
    for (std::size_t k = 0; k < OPERATIONS.size(); ++k) v.cmdOperation[k].Tip = OPERATIONS[k];
    constexpr std::array<const char*, 4> FILES{"Open spectra (Ctrl+O)", "Save", "Print",
                                               "Property sheet"};
    for (std::size_t k = 0; k < FILES.size(); ++k) v.cmdFiles[k].Tip = FILES[k];
    v.cmdEnergy[0].Tip = "Energy calibration";
    v.cmdEnergy[1].Tip = "Elements";
    v.cmdDisplay[0].Tip = "Expand";
    v.cmdAutoFit.Tip = "Smooth, remove the background and fit a single spectrum";
    v.cboUnitX.Tip = "Unit of the lower axis";
    v.optEGC[0].Tip = "Calibrate with the default polynomial";
    v.optEGC[1].Tip = "Calibrate with each file's own polynomial";
}

}  // namespace

VaelAnaView::VaelAnaView() : View("frmVaelAna", "Vael (Data Analyze) --- ") {
    Tips(*this);
    Withhold(*this);
    for (int unit = UNIT_CH; unit <= UNIT_2THETA; ++unit)
        cboUnitX.Items.push_back(UnitAbbrev(unit));
    mnuWinType[0].Caption = "Line Up Graaph";
    mnuWinType[1].Caption = "Pile Up Graph";
    mnuLoad.Shortcut = "Ctrl+O";
    mnuExit.Shortcut = "Ctrl+Q";
    mnuExit.SeparatorBefore = true;
    mnuNaxFit.Checkable = true;
    mnuNaxFit.Checked = true;
    mnuNaxFit.SeparatorBefore = true;
    mnuExpressFit.Checkable = true;
    lblFitter.Caption = "NaxFitting";
    fraWinHeight.Share = 0.64;  // the upper window holds what is worked on
    optEGC[1].Value = true;     // a spectrum shows its own energies at once
    for (auto& box : inumCursorCnt) box.ReadOnly = true;
    for (auto& box : inumCursorDisp) box.ReadOnly = true;
    inumCursorCh.Value = 1.0;

    Closing = ExitProc;
    vael::View& view = *this;
    view.Resized = vael::Resized;
    mnuLoad.Click = LoadNew;
    mnuExit.Click = ExitProc;
    mnuSmooth.Click = vael::mnuSmooth;
    mnuBackGround.Click = vael::mnuBackGround;
    mnuNaxFit.Click = mnuNaxFit_Click;
    mnuLogText.Click = mnuLogText_Click;
    mnuSetCons.Click = ShowSetting;
    Command1.Click = ShowDispPara;
    cmdFiles[0].Click = LoadNew;
    cmdAutoFit.Click = vael::cmdAutoFit;
    for (std::size_t k = 0; k < cmdOperation.size(); ++k)
        cmdOperation[k].Click = [k] { cmdOperation_Click(static_cast<int>(k)); };
    cboUnitX.Click = cboUnitX_Click;
    for (int win = 0; win < WINDOW_COUNT; ++win) {
        cboGrphSel[static_cast<std::size_t>(win)].Click = [win] { cboGrphSel_Click(win); };
        optEGC[static_cast<std::size_t>(win)].Click = [win] { optEGC_Click(win); };
        for (int row = 0; row < GRAPH_COUNT; ++row)
            chkGrp[static_cast<std::size_t>(win * GRAPH_COUNT + row)].Click = [win, row] {
                chkGrp_Click(win, row);
            };
    }
}

int GraphNo() { return GetGrpNo(); }

int DataNo() { return store.GraphList[static_cast<std::size_t>(GraphNo())].DataNo; }

void TellStatus(const std::string& sentence, bool fault) {
    frmVaelAna.lblStatus.Caption = sentence;
    frmVaelAna.StatusFault = fault;
    if (fault) PutLog(sentence);
}

}  // namespace vael
