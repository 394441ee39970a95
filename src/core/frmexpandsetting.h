// The expand setting: a range of channels to be magnified, by number.
#pragma once

#include "toolkit/controls.h"

namespace vael {

/// frmExpandSetting, beside the main view. Its channels count from 1, like all that the user sees.
struct ExpandSettingView : View {
    ExpandSettingView();
    Label lblStartCh{*this, "lblStartCh", "Start Ch"};
    TextBox txtStartCh{*this, "txtStartCh"};
    Label lblChWidth{*this, "lblChWidth", "Width Ch"};
    TextBox txtChWidth{*this, "txtChWidth", "1000"};
    Label lblMaxCount{*this, "lblMaxCount"};
    Button cmdChangeWindowMode{*this, "cmdChangeWindowMode", "change window mode"};
    Button cmdSet{*this, "cmdSet", "Set"};
    Button cmdClose{*this, "cmdClose", "Close"};
};

inline ExpandSettingView frmExpandSetting;

/// Shows the view, with the number of channels that there are.
void ShowExpandSetting();

}  // namespace vael
