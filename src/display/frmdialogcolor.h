// The colour picker: 48 colours, a bar each for red, green and blue, and the system's own dialog.
#pragma once

#include "display/colourtable.h"
#include "toolkit/controls.h"

#include <optional>

namespace vael {

/// frmDialogColor, shown modally by the colour view for one colour.
struct DialogColorView : View {
    DialogColorView();

    /// The colour that is chosen so far, without what stands in its topmost byte. Setting it shows
    /// it in the bars, the boxes and the sample.
    [[nodiscard]] Colour SelColor() const { return Selected; }
    void SelColor(Colour colour);

    Colour Selected = 0;
    Colour Former = 0;      // what the picker was opened with
    int Swatch = -1;        // the swatch that has the keys; -1 for none
    bool EndedSet = false;  // "O K" ended the picker

    Frame fraRegistration{*this, "fraRegistration", "Registration Color"};
    ControlArray<Picture, SWATCH_COUNT> picColor{*this, "picColor", 32, 24};

    Frame fraSelect{*this, "fraSelect", "Select Color"};
    Label lblRed{*this, "lblRed", "Red"};
    Label lblGreen{*this, "lblGreen", "Green"};
    Label lblBlue{*this, "lblBlue", "Blue"};
    ScrollBar vsbRed{*this, "vsbRed"};
    ScrollBar vsbGreen{*this, "vsbGreen"};
    ScrollBar vsbBlue{*this, "vsbBlue"};
    Picture shpColorR{*this, "shpColorR", 24, 128};
    Picture shpColorG{*this, "shpColorG", 24, 128};
    Picture shpColorB{*this, "shpColorB", 24, 128};
    NumberBox inumRed{*this, "inumRed", "0"};
    NumberBox inumGreen{*this, "inumGreen", "0"};
    NumberBox inumBlue{*this, "inumBlue", "0"};
    Label lblSampl{*this, "lblSampl", "New"};
    Picture picSampl{*this, "picSampl", 96, 48};
    Label lblSetColor{*this, "lblSetColor", "As set"};
    Picture shpSetColor{*this, "shpSetColor", 96, 48};

    Button cmdOther{*this, "cmdOther", "Others..."};
    Button cmdSet{*this, "cmdSet", "O K"};
    Button cmdCansel{*this, "cmdCansel", "Cancel"};
};

inline DialogColorView frmDialogColor;

/// Shows the picker for a colour; the one that "O K" took, or none.
[[nodiscard]] std::optional<Colour> AskColour(Colour now);

}  // namespace vael
