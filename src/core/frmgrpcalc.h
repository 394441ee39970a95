// The graph arithmetic view: (G1 op1 k1) op2 (G2 op3 k2), shown at once.
#pragma once

#include "toolkit/controls.h"

#include <string>
#include <vector>

namespace vael {

/// frmGrpCalc, beside the main view.
struct GrpCalcView : View {
    GrpCalcView();
    Frame fra1st{*this, "fra1st", "1st"};
    Frame fra2nd{*this, "fra2nd", "2nd"};  // away while there is no second term
    ControlArray<ListBox, 2> cmbGraph;     // "G1" to "G10", the rows
    ListBox cmbOpe1{*this, "cmbOpe1", {"＋", "－", "×", "÷"}, 0};
    ListBox cmbOpe2{*this, "cmbOpe2", {"＋", "－", "×", "÷", "   "}, 4};
    ListBox cmbOpe3{*this, "cmbOpe3", {"＋", "－", "×", "÷"}, 0};
    NumberBox ImNumber1{*this, "ImNumber1", "#########0.######"};
    NumberBox ImNumber2{*this, "ImNumber2", "#########0.######"};
    ControlArray<Label, 2> lblName;  // what the chosen rows hold
    Button cmdCalc{*this, "cmdCalc", "Calc"};
    Button cmdOK{*this, "cmdOK", "O K"};
};

inline GrpCalcView frmGrpCalc;

/// Shows the view, the current row as the first graph.
void ShowGrpCalc();

/// While the view is shown: what stands in the chosen rows now.
void RefreshGrpCalc();

}  // namespace vael
