// The settings dialog: smoothing, background, peak search, the two fitters and the pick-up range.
#pragma once

#include "toolkit/controls.h"

namespace vael {

/// frmSetting, shown modally. It moves values between its controls and `settings`, and has no logic
/// of its own beyond that. `FitMode` decides which of the peak items are there.
struct SettingView : View {
    SettingView();

    Label lblSmooth{*this, "lblSmooth", "Smoothing Point"};
    ListBox cboSmooth{*this, "cboSmooth", {"5 Point", "7 Point", "9 Point", "11 Point"}, 0};
    CheckBox chkSmoothingOn{*this, "chkSmoothingOn", "Smoothing (ON/OFF)"};
    Label lblBackInterval{*this, "lblBackInterval", "BackInterval"};
    TextBox txtBackInterval{*this, "txtBackInterval", "20"};
    Label lblBackTimes{*this, "lblBackTimes", "BackTimes"};
    TextBox txtBackTimes{*this, "txtBackTimes", "5"};

    Frame fraPeakFitting{*this, "fraPeakFitting", "Peak Fitting"};
    Label lblEACPS{*this, "lblEACPS", "BG Coefficient "};
    TextBox txtEACPS{*this, "txtEACPS", "5"};
    Label lblISPPK{*this, "lblISPPK", "Peak Width(Ch)"};
    TextBox txtISPPK{*this, "txtISPPK", "5"};
    Label lblThres{*this, "lblThres", "Peak threshold"};
    TextBox txtThres{*this, "txtThres"};
    Label lblThresHint{*this, "lblThresHint", "  1<------>20"};
    Label lblFuncType{*this, "lblFuncType", "Function type"};
    ListBox cboFuncType{*this, "cboFuncType", {"Gauss", "Lorentz", "Mix"}};
    Label lblLambda{*this, "lblLambda", "Lambda(for DAC）"};
    TextBox txtLambda{*this, "txtLambda", "5"};
    CheckBox chkFitFunc{*this, "chkFitFunc", "Tilt"};

    Frame fraLatticeFitting{*this, "fraLatticeFitting", "Lattice Fitting"};
    Label lblJudgeRange{*this, "lblJudgeRange", "Pickup range"};
    TextBox txtJudgeRange{*this, "txtJudgeRange", "0.03"};
    Label lblJudgeUnit{*this, "lblJudgeUnit", "(dA)"};

    Button cmdDefault{*this, "cmdDefault", "Set Default"};
    Button cmdOk{*this, "cmdOk", "OK"};
    Button cmdCansel{*this, "cmdCansel", "Cancel"};
};

inline SettingView frmSetting;

/// Fills the dialog from `settings`, shows it and waits until it is hidden.
void ShowSetting();

}  // namespace vael
