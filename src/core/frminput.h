// A one-line input box of the program's own.
#pragma once

#include "toolkit/controls.h"

#include <string>

namespace vael {

/// frmInput, shown modally.
struct InputView : View {
    InputView();
    Label lblInputName{*this, "lblInputName"};
    TextBox txtInput{*this, "txtInput"};
    Button cmdOk{*this, "cmdOk", "OK"};
    Button cmdCan{*this, "cmdCan", "Cancel"};

    /// The text of the label; setting it also empties the input.
    void CapName(const std::string& text);
    /// What was typed; empty after "Cancel", which callers take for no input.
    [[nodiscard]] const std::string& StrValue() const { return txtInput.Text; }
};

inline InputView frmInput;

/// Asks for one line; empty for no input.
[[nodiscard]] std::string AskLine(const std::string& name);

}  // namespace vael
