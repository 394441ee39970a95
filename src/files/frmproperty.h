// The property sheet: who measured a spectrum, when, and under which conditions, read and edited.
#pragma once

#include "core/records.h"
#include "toolkit/controls.h"

namespace vael {

/// frmProperty, a sheet beside the main view. Its boxes stand in the order in which they are read
/// and tabbed through. What fires a handler when the program sets it (Put): txtMsuName by "Count
/// Up", imnRegistance by leaving the voltage or the current.
struct PropertyView : View {
    PropertyView();

    /// The slot that the sheet works on, 0 to 13. Faults: Subscript.
    void SetDataNo(int slot);
    /// Fills the boxes from the slot's record, whose four texts are written back trimmed, and
    /// clears the changed flag. Faults: Subscript before any SetDataNo.
    void SetValue();

    int Slot = -1;
    bool Changed = false;        // something was typed since the boxes were filled
    bool ShowsDefaults = false;  // the calibration in the boxes is the default one
    bool BackupMade = false;     // `Backup` holds what slot 0 had when this sheet first showed it
    ParamRecord Backup{};

    Label lblGraph{*this, "lblGraph"};
    Label lblNote{*this, "lblNote"};

    Frame fraSample{*this, "fraSample", "1. Sample Infomation"};
    Label lblMsuName{*this, "lblMsuName", "File Name"};
    TextBox txtMsuName{*this, "txtMsuName"};
    Button cmdIndent{*this, "cmdIndent", "Count Up"};
    Label lblSampName{*this, "lblSampName", "Sample Name"};
    TextBox txtSampName{*this, "txtSampName"};
    Label lblOpDate{*this, "lblOpDate", "Date"};
    TextBox txtOpDate{*this, "txtOpDate"};
    Label lblOpTime{*this, "lblOpTime", "Start Time"};
    TextBox txtOpTime{*this, "txtOpTime"};
    Label lblOpName{*this, "lblOpName", "Operater"};
    TextBox txtOpName{*this, "txtOpName"};
    Label lblMemo{*this, "lblMemo", "Comment"};
    TextBox txtMemo{*this, "txtMemo"};
    Label lblCurrent{*this, "lblCurrent", "Ring Current (mA)"};
    NumberBox imnCurrent{*this, "imnCurrent", "##0.00"};

    Frame fraSlit{*this, "fraSlit", "2. Slit condition"};
    ControlArray<Label, 5> lblSlitHead{*this, "lblSlitHead", {"V", "H", "X", "Z", "TY"}};
    Label lblInSlit{*this, "lblInSlit", "Incident slit"};
    NumberBox imnInV{*this, "imnInV", "##0.000"};
    NumberBox imnInH{*this, "imnInH", "##0.000"};
    NumberBox imnInX{*this, "imnInX", "##0.000"};
    NumberBox imnInZ{*this, "imnInZ", "##0.000"};
    Label lblInUnit{*this, "lblInUnit", "mm"};
    NumberBox imnInTY{*this, "imnInTY", "##0.000"};
    Label lblReSlit{*this, "lblReSlit", "Receiving slit"};
    NumberBox imnReV{*this, "imnReV", "##0.000"};
    NumberBox imnReH{*this, "imnReH", "##0.000"};
    NumberBox imnReX{*this, "imnReX", "##0.000"};
    NumberBox imnReZ{*this, "imnReZ", "##0.000"};
    Label lblReUnit{*this, "lblReUnit", "mm"};
    NumberBox imnReTY{*this, "imnReTY", "##0.000"};
    Label lblCollimeter{*this, "lblCollimeter", "Collimator"};
    NumberBox imnCollimeterSize{*this, "imnCollimeterSize", "##0.000"};
    Label lblCollimeterUnit{*this, "lblCollimeterUnit", "mm"};

    Frame fraGonio{*this, "fraGonio", "3. Goniometer condition"};
    Label lblGonioHead{*this, "lblGonioHead", "Position(mm)"};
    ControlArray<Label, 4> lblGonioAxis{*this, "lblGonioAxis", {"X", "Y", "Z", "Angle"}};
    Label lblHGonio{*this, "lblHGonio", "Horizontal Goniometer"};
    NumberBox imnHGonioX{*this, "imnHGonioX", "##0.000"};
    NumberBox imnHGonioY{*this, "imnHGonioY", "##0.000"};
    NumberBox imnHGonioZ{*this, "imnHGonioZ", "##0.000"};
    NumberBox imnHGonioDAngle{*this, "imnHGonioDAngle", "##0.00000"};
    Label lblHGonioUnit{*this, "lblHGonioUnit", "deg (2Theta)"};
    Label lblVGonio{*this, "lblVGonio", "Vertical Gonio position"};
    NumberBox imnVGonioX{*this, "imnVGonioX", "##0.000"};
    NumberBox imnVGonioY{*this, "imnVGonioY", "##0.000"};
    NumberBox imnVGonioZ{*this, "imnVGonioZ", "##0.000"};
    NumberBox imnVGonioDAngle{*this, "imnVGonioDAngle", "##0.00000"};
    Label lblVGonioUnit{*this, "lblVGonioUnit", "deg"};

    Frame fraPress{*this, "fraPress", "4. Press condition"};
    Label lblPress{*this, "lblPress", "Pressure"};
    NumberBox ImnPress{*this, "ImnPress", "###0.000"};
    Label lblPressUnit{*this, "lblPressUnit", "GPa"};
    Label lblLoad{*this, "lblLoad", "Press Load"};
    NumberBox imnLoad{*this, "imnLoad", "####0.00"};
    Label lblLoadUnit{*this, "lblLoadUnit", "ton"};
    Label lblTemp{*this, "lblTemp", "Temperature"};
    NumberBox ImnTemp{*this, "ImnTemp", "###0.00"};
    Label lblTempUnit{*this, "lblTempUnit", "°C"};
    Label lblTempK{*this, "lblTempK", "In kelvin"};
    NumberBox imnTempK{*this, "imnTempK", "###0.00"};
    Label lblTempKUnit{*this, "lblTempKUnit", "K"};
    Label lblRamStroke{*this, "lblRamStroke", "Ram Stroke"};
    NumberBox imnRamStroke{*this, "imnRamStroke", "##0.000"};
    Label lblPressPos{*this, "lblPressPos", "Press position"};
    ControlArray<Label, 4> lblPressAxis{*this, "lblPressAxis", {"X", "Y", "Z", "PHI"}};
    NumberBox imnPressX{*this, "imnPressX", "##0.000"};
    NumberBox imnPressY{*this, "imnPressY", "##0.000"};
    NumberBox imnPressZ{*this, "imnPressZ", "##0.000"};
    Label lblPressPosUnit{*this, "lblPressPosUnit", "mm"};
    NumberBox imnPressTZ{*this, "imnPressTZ", "##0.000"};
    Label lblPressTZUnit{*this, "lblPressTZUnit", "deg"};
    Label lblVolt{*this, "lblVolt", "Volt"};
    NumberBox imnVolt{*this, "imnVolt", "###0.000"};
    Label lblVoltUnit{*this, "lblVoltUnit", "V"};
    Label lblCurrent2{*this, "lblCurrent2", "Current"};
    NumberBox imnCurrent2{*this, "imnCurrent2", "###0.000"};
    Label lblCurrent2Unit{*this, "lblCurrent2Unit", "A"};
    Label lblPower{*this, "lblPower", "Power"};
    NumberBox imnPower{*this, "imnPower", "####0.00"};
    Label lblPowerUnit{*this, "lblPowerUnit", "W"};
    Label lblRegistance{*this, "lblRegistance", "Registance(mΩ)"};
    NumberBox imnRegistance{*this, "imnRegistance", "####0.000"};

    Frame fraMeasure{*this, "fraMeasure", "5. Measurement"};
    Label lblRealTime{*this, "lblRealTime", "Real Time"};
    NumberBox imnRealTime{*this, "imnRealTime", "#######0.00"};
    Label lblRealUnit{*this, "lblRealUnit", "s"};
    Label lblLiveTime{*this, "lblLiveTime", "Live Time"};
    NumberBox imnLiveTime{*this, "imnLiveTime", "#######0.00"};
    Label lblLiveUnit{*this, "lblLiveUnit", "s"};
    Label lblDeadTime{*this, "lblDeadTime", "Dead Time"};
    NumberBox imnDeadTime{*this, "imnDeadTime", "##0.00"};
    Label lblDeadUnit{*this, "lblDeadUnit", "%"};
    Label lblCntRate{*this, "lblCntRate", "Count Rate"};
    NumberBox imnCntRate{*this, "imnCntRate", "#######0.00"};
    Label lblCntRateUnit{*this, "lblCntRateUnit", "cps"};
    Label lblMiriVolt{*this, "lblMiriVolt", "Ion Chamber"};
    NumberBox imnMiriVolt{*this, "imnMiriVolt", "#####0.000"};
    Label lblMiriVoltUnit{*this, "lblMiriVoltUnit", "mV"};
    Label lblEneCal{*this, "lblEneCal", "Energy Calibration Coefficents"};
    Label lblEneLine{*this, "lblEneLine", "Energy(keV)=a + bX + cX * cX   (X=Channel)"};
    ControlArray<Label, 3> lblEneCoef{*this, "lblEneCoef", {"a", "b", "c"}};
    NumberBox imnEneCalA{*this, "imnEneCalA", "###0.000000"};
    NumberBox imnEneCalB{*this, "imnEneCalB", "##0.00000000"};
    NumberBox imnEneCalC{*this, "imnEneCalC", "0.00000E+000"};

    Button cmdLabelPrint{*this, "cmdLabelPrint", "LabelPrint"};
    Button cmdOk{*this, "cmdOk", "SAVE"};
    Button cmdCan{*this, "cmdCan", "EXIT"};
};

inline PropertyView frmProperty;

/// Opens the sheet for the current row. One that stands open for another row takes this one, unless
/// something in it was changed: then it stays, and the status line says so.
void ShowProperty();

/// While the sheet is shown: follows its slot's row, closes when the slot has none any more, and is
/// filled anew where nothing in it was changed.
void RefreshProperty();

}  // namespace vael
