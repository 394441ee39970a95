// The numbers of one peak that is added to the list without a fit.
#pragma once

#include "toolkit/controls.h"

#include <array>
#include <string>

namespace vael {

/// frmInputFitParameter, shown modally. Its channels count from 1; the width is a full width at
/// half maximum. What fires a handler when the program sets it: nothing.
struct InputFitParameterView : View {
    InputFitParameterView();

    int Slot = -1;                        // whose list gets the peak
    std::array<std::string, 3> Filled{};  // what the boxes go back to: centre, height, width

    Label lblCenterCh{*this, "lblCenterCh", "CENTER CH"};
    TextBox txtCenterCh{*this, "txtCenterCh"};
    Label lblMaxCount{*this, "lblMaxCount", "MAX COUNT"};
    TextBox txtMaxCount{*this, "txtMaxCount"};
    Label lblWidth{*this, "lblWidth", "WIDTH"};
    TextBox txtWidth{*this, "txtWidth"};
    Label lblTold{*this, "lblTold"};
    Button cmdOK{*this, "cmdOK", "Add to List"};
    Button cmdCancel{*this, "cmdCancel", "Cancel"};
};

inline InputFitParameterView frmInputFitParameter;

/// Fills the boxes from the slot's spectrum at the cursor, shows the view and waits until it is
/// hidden.
void ShowInputFitParameter(int slot);

}  // namespace vael
