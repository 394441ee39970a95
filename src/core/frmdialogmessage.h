// The program's own message box.
#pragma once

#include "toolkit/controls.h"

#include <string>

namespace vael {

/// frmDialogMessage, shown modally.
struct DialogMessageView : View {
    DialogMessageView();
    TextBox itxtMessage{*this, "itxtMessage"};
    Button cmdYes{*this, "cmdYes", "O K"};
    Button cmdNo{*this, "cmdNo", "Cancel"};

    /// 0 shows both buttons, "O K" on the left at its usual place; 1 only "Cancel"; any other value
    /// only "O K", in the place of the "Cancel" button.
    void Kind(int n);
    void Message(const std::string& text);
    /// Result of the last box: 0 for "O K", 1 for "Cancel".
    int BtnValue = 0;
    bool OkInCancelPlace = false;
};

inline DialogMessageView frmDialogMessage;

/// Shows the box and gives `BtnValue`.
int ShowMessage(int kind, const std::string& text, const std::string& title = "Message");

}  // namespace vael
