// The parameter sheet: the default calibration and the measurement values that go with it.
#pragma once

#include "toolkit/controls.h"

namespace vael {

/// frmDispPara, a sheet beside the main view. It shows and stores `DefaultParam`.
struct DispParaView : View {
    DispParaView();

    Frame fraMode{*this, "fraMode", "Mode"};
    /// The counting mode by its number: 0 and 2 real time, 1 and 3 live time, 4 separate.
    ControlArray<Option, 5> optMode{
        *this, "optMode", {"Continue", "Live", "Real", "Live (3)", "Separate"}};
    Label lblRealTime{*this, "lblRealTime", "Real Time"};
    NumberBox imnRealTime{*this, "imnRealTime", "#######0.00"};
    Label lblRealUnit{*this, "lblRealUnit", "s"};
    Label lblLiveTime{*this, "lblLiveTime", "Live Time"};
    NumberBox imnLiveTime{*this, "imnLiveTime", "#######0.00"};
    Label lblLiveUnit{*this, "lblLiveUnit", "s"};
    Label lblRoiCnt{*this, "lblRoiCnt", "ROI Count"};
    NumberBox imnRoiCnt{*this, "imnRoiCnt", "#0"};

    Frame fraEnergy{*this, "fraEnergy", "Enargy"};
    ControlArray<Option, 2> chkCnst{*this, "chkCnst", {"E=A+Bx+Cx2", "E=A+Bx"}};
    ControlArray<Label, 3> lblConst{*this, "lblConst", {"A", "B", "C"}};
    ControlArray<NumberBox, 3> ImConst{*this, "ImConst"};

    Frame fraCondition{*this, "fraCondition", "Condition"};
    Label lblAngle{*this, "lblAngle", "2Theta"};
    NumberBox imnAngle{*this, "imnAngle", "##0.00000"};
    Label lblAngleUnit{*this, "lblAngleUnit", "deg"};
    Label lblPress{*this, "lblPress", "Pressure"};
    NumberBox ImnPress{*this, "ImnPress", "###0.000"};
    Label lblPressUnit{*this, "lblPressUnit", "GPa"};
    Label lblTemp{*this, "lblTemp", "Temperature"};
    NumberBox ImnTemp{*this, "ImnTemp", "###0.0"};
    Label lblTempUnit{*this, "lblTempUnit", "°C"};

    Button cmdOk{*this, "cmdOk", "O K"};
    Button cmdCansel{*this, "cmdCansel", "Cancel"};
};

inline DispParaView frmDispPara;

/// Shows the sheet. A hidden one is filled anew, so that what "Cancel" left in its boxes never
/// comes back; one that stands open keeps what is being typed.
void ShowDispPara();

}  // namespace vael
