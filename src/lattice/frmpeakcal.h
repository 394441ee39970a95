// The lattice view: from the fitted peaks of one graph to its cell and, for a marker, a pressure.
#pragma once

#include "core/records.h"
#include "lattice/latticecalc.h"
#include "lattice/latticelog.h"
#include "toolkit/controls.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace vael {

/// The working record of the lattice calculation: crystals, match rows, fit arrays.
inline LatticeState latticeState;

/// frmPeakCal, beside the main view and on top of it. Its boxes stand in the order in which they
/// are read and tabbed through. What fires a handler when the program sets it (Select):
/// cmbElement, cmbLatticeType; both return at once while `Loading` is 1.
struct PeakCalView : View {
    PeakCalView();

    /// Window and row that it works on; -1 for the row while it is not open.
    [[nodiscard]] std::int16_t GetWinNo() const { return WinNo; }
    [[nodiscard]] std::int16_t GetGrpNo() const { return GrpNo; }

    /// Columns of the two lists against the seed; the number of the peak stands in column 0. The
    /// second of them goes on with the calculated cell.
    enum Column { CH = 1, KEV, D_OBS, D_SEED, DEVIATION, HKL, USE, TYPE, D_CALC, RELATIVE };
    /// Columns of the list against the calculated cell.
    enum CalcColumn {
        CALC_CH = 1,
        CALC_KEV,
        CALC_D_OBS,
        CALC_D,
        CALC_RELATIVE,
        CALC_HKL,
        CALC_TYPE
    };

    // What it works on: a slot, so that it follows the graph when rows move.
    int Slot = -1;
    std::int16_t WinNo = 0;
    std::int16_t GrpNo = -1;
    std::string GraphName;  // kept for the end, when the graph may be gone
    std::string FileName;
    // The graph as this view saw it last: another one ends the match.
    PeakTable PeaksSeen{};
    std::array<double, 3> EgcSeen{};
    DacAxis DacSeen{};

    std::int16_t SelMode = MODE_MARKER;
    std::int16_t SelElement = -1;  // list indexes of the last accepted selection
    std::int16_t SelLattice = -1;
    std::array<double, 7> SeedCell{};  // the seeds as typed; the seventh is never set
    double Cur2Theta = 0.0;            // degrees
    double CurTemp = 0.0;              // of the last calculation, in the unit of cmbUnit
    double PickupSeen = 0.0;
    std::int16_t Loading = 0;
    std::int16_t WindowMode = 0;          // 1: on top of the others
    std::vector<std::int16_t> CrystalOf;  // crystal of each line of cmbElement
    std::optional<LatticeValues> Values;  // of the last calculation, gone with its match
    LatticeLog Log;

    Label lblGraph{*this, "lblGraph"};
    ControlArray<Option, 2> optSelectMode{*this, "optSelectMode", {"Sample", "Pressure Marker"}};
    Label lblElement{*this, "lblElement", "Crystal"};
    ListBox cmbElement{*this, "cmbElement"};
    Label lblLatticeType{*this, "lblLatticeType", "System"};
    ListBox cmbLatticeType{*this, "cmbLatticeType"};

    Frame fraCrystalData{*this, "fraCrystalData", "Crystal Data"};
    Frame fraInitialValue{*this, "fraInitialValue", "Initial Value"};
    Label lblInitial{*this, "lblInitial", "Initial"};
    Label lblCalculated{*this, "lblCalculated", "Calculated"};
    ControlArray<Label, 6> lblSeed{*this, "lblSeed", {"a", "b", "c", "alpha", "beta", "gamma"}};
    ControlArray<TextBox, 6> txtLatticeConstans{*this, "txtLatticeConstans"};
    ControlArray<TextBox, 6> txtSeedConstant{*this, "txtSeedConstant"};
    ControlArray<TextBox, 6> txtLatticeLength{*this, "txtLatticeLength"};
    ControlArray<Label, 6> lblCellUnit{*this, "lblCellUnit", {"Å", "Å", "Å", "deg", "deg", "deg"}};

    Frame fraCondition{*this, "fraCondition", "Conditions"};
    Label lblPickupRange{*this, "lblPickupRange", "Pickup range+-"};
    TextBox txtPickupRange{*this, "txtPickupRange", "0.0300"};
    Label lblPickupUnit{*this, "lblPickupUnit", "(dA)"};
    Label lbl2Theta{*this, "lbl2Theta", "2Theta"};
    TextBox txt2Theta{*this, "txt2Theta", "5.0000"};
    Label lbl2ThetaUnit{*this, "lbl2ThetaUnit", "deg"};
    Label lblTemp{*this, "lblTemp", "Temperature"};
    TextBox txtTemp{*this, "txtTemp", "27.0"};
    ListBox cmbUnit{*this, "cmbUnit", {"℃", "Ｋ"}};
    Label lblTempUnit{*this, "lblTempUnit", "(C)"};  // stands while the list says the same

    Frame fra2Theta{*this, "fra2Theta", "2Theta Calibration for Cubic Type"};
    Label lblExpected2theta{*this, "lblExpected2theta", "Expected 2Theta"};
    TextBox txtExpected2theta{*this, "txtExpected2theta", "5.0000"};
    Label lblExpectedUnit{*this, "lblExpectedUnit", "deg"};
    Button cmd2ThetaCalib{*this, "cmd2ThetaCalib", "Correct"};

    Frame fraResults{*this, "fraResults", "Results"};
    Label lblVol{*this, "lblVol", "V"};
    TextBox txtVol{*this, "txtVol"};
    Label lblVolUnit{*this, "lblVolUnit", "A"};
    Label lblVolPerVol0{*this, "lblVolPerVol0", "V/V0"};
    TextBox txtVolPerVol0{*this, "txtVolPerVol0"};
    Label lblPressure{*this, "lblPressure", "P"};
    TextBox txtPressure{*this, "txtPressure"};
    Label lblPressureUnit{*this, "lblPressureUnit", "GPa"};
    ControlArray<Label, 3> lblErrorBar{*this, "lblErrorBar", {"Error Bar", "＋", "－"}};
    ControlArray<TextBox, 3> txtErrorBar{*this, "txtErrorBar"};
    Button cmdCal{*this, "cmdCal", "Execute"};
    Button cmdCal2{*this, "cmdCal2", "Calculate"};
    Button cmdReCal{*this, "cmdReCal", "ReCal"};

    Label lblTold{*this, "lblTold"};

    Tabs tabLatticeFit{*this, "tabLatticeFit", {"PeakData", "UsePeak"}};
    Grid sprPeakInf2{*this, "sprPeakInf2", TYPE, 0};
    Grid sprPeakInf{*this, "sprPeakInf", 9, 0};
    Grid sprPeakInf4{*this, "sprPeakInf4", RELATIVE, 0};
    Grid sprPeakInf3{*this, "sprPeakInf3", CALC_TYPE, 0};

    Label lblColor{*this, "lblColor", "Marks"};
    ListBox cmbColor{*this, "cmbColor", {"White", "Magenta", "Cyan", "Yellow", "Green"}, 0};
    ControlArray<Button, 2> cmdMI{*this, "cmdMI", {"add MI", "Clear MI"}};
    Button Command1{*this, "Command1", "Command1"};
    Button cmdChangeWindowMode{*this, "cmdChangeWindowMode", "change window mode"};
    Button cmdPrint{*this, "cmdPrint", "Print"};
    Button cmdDataSave{*this, "cmdDataSave", "Data Save"};
    Button cmdExit{*this, "cmdExit", "Exit"};
};

inline PeakCalView frmPeakCal;

/// Sets a view that is not open up for the current row, which holds a graph, and shows it on top:
/// lists, peaks, a log that begins. Faults: those of the crystal file; nothing is opened then.
void InitForm();

/// Opens the view on the current row: reads crystal.dat of the program's folder, begins a log. One
/// that stands open on another row is ended first, as its "Exit" does. Faults: as InitForm.
void ShowPeakCal();

/// While the view is shown: follows its slot's row, and ends when that has none any more. Peaks or
/// a calibration that another command has changed end the match, as typing an angle does.
void RefreshPeakCal();

/// Ends an open view as its "Exit" does: end of the log, and the question where to keep it.
void EndPeakCal();

/// A sentence in the view and in the main view's status line.
void TellLattice(const std::string& sentence, bool fault = false);

/// Writes to the open log. A log that cannot be written any more is told once, and is closed.
void WriteLatticeLog(const std::string& utf8);

}  // namespace vael
