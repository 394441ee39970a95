// The parameter sheet: the default calibration and the measurement values that go with it.
#include "core/frmdisppara.h"

#include "core/cursors.h"
#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/store.h"
#include "core/windows.h"

namespace vael {
namespace {

constexpr std::size_t SQUARE = 0;  // of the pair: the polynomial with its square term
constexpr std::size_t LINEAR = 1;

/// With "E=A+Bx" C stays 0 and its box is disabled.
void chkCnst_Click() {
    DispParaView& v = frmDispPara;
    v.ImConst[2].Enabled = v.chkCnst[SQUARE].Value;
    if (v.chkCnst[LINEAR].Value) v.ImConst[2].Value = 0.0;
}

void Fill() {
    DispParaView& v = frmDispPara;
    const ParamRecord& param = store.DefaultParam;
    for (std::size_t mode = 0; mode < v.optMode.size(); ++mode)
        v.optMode[mode].Value = param.MeasureType == static_cast<int>(mode);
    v.imnRealTime.Value = param.RealTime;
    v.imnLiveTime.Value = param.LiveTime;
    v.imnRoiCnt.Value = store.Rois.RoiNum;
    for (std::size_t k = 0; k < v.ImConst.size(); ++k) v.ImConst[k].Value = param.EgcCoef[k];
    v.chkCnst[LINEAR].Value = param.EgcCoef[2] == 0.0;
    v.chkCnst[SQUARE].Value = !v.chkCnst[LINEAR].Value;
    chkCnst_Click();
    v.imnAngle.Value = param.TwoTheta;
    v.ImnPress.Value = param.Pressure;
    v.ImnTemp.Value = param.Temperature;
}

void cmdOk_Click() {
    DispParaView& v = frmDispPara;
    ParamRecord& param = store.DefaultParam;
    for (std::size_t k = 0; k < v.ImConst.size(); ++k) param.EgcCoef[k] = v.ImConst[k].Value;
    param.TwoTheta = v.imnAngle.Value;
    param.Pressure = v.ImnPress.Value;
    param.Temperature = v.ImnTemp.Value;
    param.RealTime = v.imnRealTime.Value;
    param.LiveTime = v.imnLiveTime.Value;
    for (std::size_t mode = 0; mode < v.optMode.size(); ++mode)
        if (v.optMode[mode].Value) param.MeasureType = Whole16(static_cast<double>(mode));
    v.Visible = false;
    // Where the default calibration is in force the axis and the cursor boxes follow it.
    HidePeakMemo();
    ShowCursorValues();
    XScaleDraw();
    TellStatus("The default parameters were taken over.");
}

void cmdCansel_Click() { frmDispPara.Visible = false; }

}  // namespace

DispParaView::DispParaView() : View("frmDispPara", "Parameter Value") {
    constexpr std::array<const char*, 5> MODES{
        "Counting mode 0: real time", "Counting mode 1: live time", "Counting mode 2: real time",
        "Counting mode 3: live time", "Counting mode 4: separate"};
    for (std::size_t mode = 0; mode < optMode.size(); ++mode) {
        optMode[mode].Group = "Mode";
        optMode[mode].Tip = MODES[mode];
    }
    for (auto& option : chkCnst) {
        option.Group = "Constants";
        option.Click = chkCnst_Click;
    }
    ImConst[0].Format = "###0.000000";  // keV
    ImConst[1].Format = "##0.00000000";
    ImConst[2].Format = "0.00000E+000";
    imnRoiCnt.ReadOnly = true;
    imnRoiCnt.Tip = "Number of the regions that are set";
    imnRealTime.Least = imnLiveTime.Least = imnAngle.Least = 0.0;
    imnAngle.Most = 180.0;
    ImnTemp.Least = -273.15;
    cmdOk.Click = cmdOk_Click;
    cmdCansel.Click = cmdCansel_Click;
    KeyPreview = EnterEscape(cmdOk_Click, cmdCansel_Click);
}

void ShowDispPara() {
    if (!frmDispPara.Visible) Fill();
    frmDispPara.Visible = true;
}

}  // namespace vael
