// The settings dialog: smoothing, background, peak search, the two fitters and the pick-up range.
#include "analysis/frmsetting.h"

#include "core/cursors.h"
#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/params.h"
#include "core/store.h"
#include "core/text.h"
#include "core/windows.h"
#include "toolkit/hand.h"

#include <algorithm>

namespace vael {
namespace {

constexpr const char* BG_FORMAT = "#0.00";
constexpr const char* WIDTH_FORMAT = "#0.00";
constexpr const char* LAMBDA_FORMAT = "#0.000000";
constexpr const char* RANGE_FORMAT = "#0.0000";

/// A value of the parameter file for which there is no entry selects none.
int IndexWithin(const ListBox& list, int index) {
    return index >= 0 && index < static_cast<int>(list.Items.size()) ? index : -1;
}

void ShowForMode() {
    SettingView& v = frmSetting;
    const bool express = store.FitMode == 1;
    for (Control* control : std::initializer_list<Control*>{
             &v.lblThres, &v.txtThres, &v.lblThresHint, &v.lblFuncType, &v.cboFuncType})
        control->Visible = control->Enabled = express;
    for (Control* control :
         std::initializer_list<Control*>{&v.lblEACPS, &v.txtEACPS, &v.lblISPPK, &v.txtISPPK})
        control->Visible = control->Enabled = !express;
}

void Fill() {
    SettingView& v = frmSetting;
    v.txtThres.Text = std::to_string(settings.PeakThres);
    v.cboFuncType.Index = IndexWithin(v.cboFuncType, settings.FuncType - 1);
    v.cboSmooth.Index = IndexWithin(v.cboSmooth, settings.SmoothIndex);
    v.txtBackInterval.Text = std::to_string(settings.BackInterval);
    v.txtBackTimes.Text = std::to_string(settings.BackTimes);
    if (store.FitMode == 0) {
        v.txtEACPS.Text = FormatNumber(settings.EACPS, BG_FORMAT);
        v.txtISPPK.Text = FormatNumber(settings.ISPPK, WIDTH_FORMAT);
    }
    v.txtLambda.Text = FormatNumber(settings.Lambda, LAMBDA_FORMAT);
    v.txtJudgeRange.Text = FormatNumber(settings.JudgeRange, RANGE_FORMAT);
    v.chkSmoothingOn.Value = settings.SmoothingOn;
}

/// A text that is no number leaves the value as it was.
void StoreIfNumeric(const TextBox& box, double& value) {
    if (const auto number = ParseNumber(Trim(box.Text))) value = *number;
}

/// What shows a DAC spectrum's d goes by lambda.
void ShowByLambda() {
    ShowCursorValues();
    XScaleDraw();
}

/// Where a step ends in a fault, what the steps before it stored stays, and the dialog stays open.
void cmdOk_Click() {
    const SettingView& v = frmSetting;
    // 1. The threshold, without the range that its Enter key holds it to.
    const auto threshold = ParseNumber(v.txtThres.Text);
    settings.PeakThres = threshold ? Whole16(*threshold) : std::int16_t{1};
    // 2. and 3. The lists.
    settings.FuncType = Whole16(v.cboFuncType.Index + 1);
    settings.SmoothIndex = Whole16(v.cboSmooth.Index);
    // 4. The background, unchecked: values of 0 and below are refused by the estimator.
    settings.BackInterval = Whole16(Number(v.txtBackInterval.Text));
    settings.BackTimes = Whole16(Number(v.txtBackTimes.Text));
    // 5. The NAX items, both or neither.
    if (store.FitMode == 0 && IsNumeric(Trim(v.txtEACPS.Text)) &&
        IsNumeric(Trim(v.txtISPPK.Text))) {
        StoreIfNumeric(v.txtEACPS, settings.EACPS);
        StoreIfNumeric(v.txtISPPK, settings.ISPPK);
    }
    // 6. and 7.
    StoreIfNumeric(v.txtLambda, settings.Lambda);
    StoreIfNumeric(v.txtJudgeRange, settings.JudgeRange);
    // 8. and 9.
    settings.SmoothingOn = Whole16(v.chkSmoothingOn.Value);
    ShowByLambda();
    frmSetting.Visible = false;
    TellStatus("The settings were taken over.");
}

void cmdCansel_Click() { frmSetting.Visible = false; }

/// The default values are in force at once, and "Cancel" does not take them back. The box of the
/// smoothing is not among those that show them.
void cmdDefault_Click() {
    SettingView& v = frmSetting;
    SetDefault();
    ShowByLambda();
    v.txtEACPS.Text = FormatNumber(settings.EACPS, BG_FORMAT);
    v.txtISPPK.Text = FormatNumber(settings.ISPPK, WIDTH_FORMAT);
    v.txtLambda.Text = FormatNumber(settings.Lambda, LAMBDA_FORMAT);
    v.txtJudgeRange.Text = FormatNumber(settings.JudgeRange, RANGE_FORMAT);
}

/// The Enter key holds the threshold within 1 and 20. "OK" does not.
void txtThres_Enter() {
    TextBox& box = frmSetting.txtThres;
    const double whole = RoundEven(ParseNumber(box.Text).value_or(0.0));
    box.Text = std::to_string(static_cast<int>(std::clamp(whole, 1.0, 20.0)));
}

}  // namespace

SettingView::SettingView() : View("frmSetting", "Settings") {
    Modal = true;
    chkFitFunc.Enabled = false;
    chkFitFunc.Tip = "This box has no action";
    txtThres.Tip = "Enter holds the value within 1 and 20";
    cmdDefault.Tip = "Puts the default values in force at once";
    txtThres.Enter = txtThres_Enter;
    cmdOk.Click = cmdOk_Click;
    cmdCansel.Click = cmdCansel_Click;
    cmdDefault.Click = cmdDefault_Click;
    KeyPreview = EnterEscape(cmdOk_Click, cmdCansel_Click);
}

void ShowSetting() {
    ShowForMode();
    Fill();
    ShowModal(frmSetting);
}

}  // namespace vael
