// The manual fit: a region, up to five peaks with their start values, and the rules between them.
#pragma once

#include "analysis/manualinput.h"
#include "toolkit/controls.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace vael {

inline constexpr int MANUAL_PEAKS = 5;

/// frmManualFit, beside the main view. Channels count from 1, like all that the user sees; a width
/// is a full width at half maximum; 0 is a number that was not given, and shows as an empty box.
/// What fires a handler when the program sets it: nothing.
struct ManualFitView : View {
    ManualFitView();

    // What the boxes say, as numbers.
    std::int16_t StartCh = 0;  // the left area mark
    std::int16_t EndCh = 0;    // the right one; before StartCh when it was typed so
    std::array<double, MANUAL_PEAKS> CenterCh{};
    std::array<double, MANUAL_PEAKS> MaxCount{};
    std::array<double, MANUAL_PEAKS> ChWidth{};
    std::int16_t PeakNum = 1;
    std::int16_t GrpNo = 0;  // graph row that is fitted, from 0
    bool OK = false;         // left by "Execute", not by "Cancel"
    /// Brings the numbers to the boxes. A text that says its number already stays as it was typed.
    void SetValue();

    int Slot = -1;                                // slot of that row: rows move
    std::vector<ManualRule> Rules;                // at most one to a parameter
    std::array<std::int16_t, 2> MarksSeen{0, 0};  // area marks that the boxes agree with, from 1
    std::string Refused;  // why the last number was not taken, until the next act knows it

    Label lblGraph{*this, "lblGraph"};
    Label lblStartCh{*this, "lblStartCh", "START CH"};
    TextBox txtStartCh{*this, "txtStartCh"};
    Label lblEndCh{*this, "lblEndCh", "END CH"};
    TextBox txtEndCh{*this, "txtEndCh"};
    Label lblPeakNum{*this, "lblPeakNum", "# of PEAK"};
    TextBox txtPeakNum{*this, "txtPeakNum", "1"};
    Label lblParamNum{*this, "lblParamNum", "# of PARAMETER"};
    TextBox txtParamNum{*this, "txtParamNum", "3"};

    Label lblCenterCh{*this, "lblCenterCh", "CENTER CH"};
    Label lblMaxCount{*this, "lblMaxCount", "MAX COUNT"};
    Label lblWidth{*this, "lblWidth", "WIDTH"};
    ControlArray<Label, MANUAL_PEAKS> lblRow{*this, "lblRow", {"1", "2", "3", "4", "5"}};
    ControlArray<TextBox, MANUAL_PEAKS> txtCenterCh{*this, "txtCenterCh"};
    ControlArray<TextBox, MANUAL_PEAKS> txtMaxCount{*this, "txtMaxCount"};
    ControlArray<TextBox, MANUAL_PEAKS> txtWidth{*this, "txtWidth"};
    ControlArray<Button, MANUAL_PEAKS> cmdGetValue{*this, "cmdGetValue", std::string("Input")};

    /// Columns of the grid; its rows are the rules.
    enum Column { PEAK = 1, PARAMETER, RULE, MASTER, VALUE, READS };
    Frame fraConstraint{*this, "fraConstraint", "CONSTRAINTS"};
    Label lblRulePeak{*this, "lblRulePeak", "Peak"};
    ListBox cboRulePeak{*this, "cboRulePeak", {"1"}, 0};
    Label lblRuleParam{*this, "lblRuleParam", "Parameter"};
    ListBox cboRuleParam{
        *this, "cboRuleParam", {"A  AMPLITUDE", "P  POSITION", "W  WIDTH"}, NAX_WIDTH};
    Label lblRuleHow{*this, "lblRuleHow", "Rule"};
    ListBox cboRuleHow{*this, "cboRuleHow", {"FIXED", "C  offset +", "C  ratio *"}, 0};
    Label lblRuleMaster{*this, "lblRuleMaster", "To peak"};
    ListBox cboRuleMaster{*this, "cboRuleMaster", {"1"}, 0};
    Label lblRuleValue{*this, "lblRuleValue", "Value"};
    TextBox txtRuleValue{*this, "txtRuleValue"};
    Button cmdRuleAdd{*this, "cmdRuleAdd", "Add"};
    Grid grdConstraint{*this, "grdConstraint", READS, 0};
    Button cmdRuleRemove{*this, "cmdRuleRemove", "Remove"};

    Label lblTold{*this, "lblTold"};
    Button cmdInputFit{*this, "cmdInputFit", "FitSet"};
    Button cmdExecute{*this, "cmdExecute", "Execute"};
    Button cmdCancel{*this, "cmdCancel", "Cancel"};
};

inline ManualFitView frmManualFit;

/// The start state: hidden, one peak, no numbers and no rules.
void ResetManualFit();
/// Sets the view up for the current row. Region, peaks and rules of its last use are there again;
/// the area marks that stand now take the place of the region, and where none stands the region
/// sets them.
void SetUpManualFit();
/// Sets it up and shows it; without a spectrum in the current row the status line says so.
void ShowManualFit();

/// While the view is open: an area mark that was moved goes to START CH or END CH, one that was
/// taken away empties it.
void AreaToManualFit();
/// While the view is open: follows its slot when rows move, and closes when no row has it.
void RowsToManualFit();

}  // namespace vael
