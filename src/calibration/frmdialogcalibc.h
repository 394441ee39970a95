// The energy calibration: spectra of known lines, the table of channels and energies, the curve.
#pragma once

#include "calibration/calibcommands.h"
#include "calibration/calibfit.h"
#include "toolkit/controls.h"

#include <array>
#include <string>
#include <vector>

namespace vael {

inline constexpr int CALIB_FILES = 20;  // spectra in the list at most

/// frmDialogCalibC, beside the main view. What fires a handler when the program sets it: nothing.
/// The list of spectra and the table outlive the dialog for as long as the program runs.
struct DialogCalibCView : View {
    DialogCalibCView();

    enum FileColumn { NAME = 1, FOLDER };
    enum PairColumn { CHANNEL = 1, ENERGY };

    /// Window and row that it works on: those that are current.
    [[nodiscard]] int WinNo() const;
    [[nodiscard]] int GrpNo() const;

    std::vector<std::string> Files;                 // paths, in the order of the list
    int ShownFile = -1;                             // index of the one in the rows
    int ShownSlot = -1;                             // and its slot
    std::vector<std::array<std::string, 2>> Pairs;  // texts of the table: channel from 1, keV
    bool FitFailed = false;                         // the last "Calculate" found no curve
    std::string Kind = "npd";                       // of the files that the dialog lists

    Menu mnuFile{*this, "mnuFile", "&File"};
    Menu mnuFileOpen{*this, "mnuFileOpen", "File Open", "mnuFile"};
    Menu mnuFileCancel{*this, "mnuFileCancel", "File Cancel", "mnuFile"};
    Menu mnuUpdate{*this, "mnuUpdate", "Exit(Update)", "mnuFile"};
    Menu mnuCancel{*this, "mnuCancel", "Exit(Cancel)", "mnuFile"};
    Menu mnuTable{*this, "mnuTable", "&Table"};
    Menu mnuCsrVal{*this, "mnuCsrVal", "Cursor Value", "mnuTable"};
    Menu mnuElmTable{*this, "mnuElmTable", "Element Table", "mnuTable"};
    Menu mnuDelPoint{*this, "mnuDelPoint", "Delete Point", "mnuTable"};
    Menu mnuCurve{*this, "mnuCurve", "&Curve"};
    Menu mnuCalc{*this, "mnuCalc", "Calculate", "mnuCurve"};
    Menu mnuShow{*this, "mnuShow", "Show Curve", "mnuCurve"};

    Grid sprdFileName{*this, "sprdFileName", FOLDER, 0};
    Button cmdFileOpen{*this, "cmdFileOpen", "File Open"};
    Button cmdDelFile{*this, "cmdDelFile", "File Delete"};
    Button cmdSmothBk{*this, "cmdSmothBk", "Smoth&BkRemove"};
    ControlArray<Button, 2> cmdAuto{*this, "cmdAuto", {"Split Fit", "MonoFit"}};
    Button cmdFitDel{*this, "cmdFitDel", "Del Fit"};

    Grid vaSpread1{*this, "vaSpread1", ENERGY, 0};
    Button cmdCsrSet{*this, "cmdCsrSet", "Input Fit Center Value"};
    Button cmdEnergyInp{*this, "cmdEnergyInp", "Element Table"};
    Button cmdDelTable{*this, "cmdDelTable", "Delete Current Line"};

    ControlArray<Option, 2> optCnst{*this, "optCnst", {"E=A+Bx+Cx^2", "E=A+Bx"}};
    ControlArray<Label, 3> lblConst{*this, "lblConst", {"A", "B", "C"}};
    ControlArray<NumberBox, 3> ImConst{*this, "ImConst"};
    ControlArray<Label, 3> lblConstUnit{*this, "lblConstUnit", {"keV", "keV/Ch", "keV/Ch²"}};
    Button cmdCalEng{*this, "cmdCalEng", "Calculate"};
    Button cmdCurve{*this, "cmdCurve", "Show"};
    Label lblFit{*this, "lblFit"};

    Button cmdCalbOK{*this, "cmdCalbOK", "Update"};
    Button cmdCalbCan{*this, "cmdCalbCan", "Exit"};
};

inline DialogCalibCView frmDialogCalibC;

/// Opens the calibration with the constants in force; one that is open stays as it is.
void ShowDialogCalibC();

/// Shows constants in the three boxes.
void DispKeisu(const CalibConstants& constants);

/// Enters a channel, counted from 1, in the current row of the table and goes to the next one;
/// over a channel that stands there after the question "Over write?".
void EnterChannel(const CalibCentre& centre);

/// Enters an energy, keV, in the current row and goes to the next one, over another one after the
/// same question. Nothing happens while the calibration is closed.
void EntEnargy(double energy);

/// Whether the program may end: asks while the calibration is open with something in its table.
[[nodiscard]] bool CalibrationMayGo();

}  // namespace vael
