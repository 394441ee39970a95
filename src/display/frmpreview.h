// The preview: a printed page as it will be, on the screen.
#pragma once

#include "display/printing.h"
#include "toolkit/controls.h"

namespace vael {

/// frmPreView, shown modally by ShowPreView. What fires a handler when the program sets it:
/// nothing.
struct PreViewView : View {
    PreViewView();

    Printable Shown;
    bool Landscape = true;
    double DrawWidth = 0.6;
    int Page = 1;   // the page that is shown
    int Pages = 1;  // that there are

    Picture picPage{*this, "picPage", 900, 640};
    Button cmdPrevious{*this, "cmdPrevious", "Previous"};
    Label lblPage{*this, "lblPage"};
    Button cmdNext{*this, "cmdNext", "Next"};
    Button cmdOK{*this, "cmdOK", "O K"};
};

inline PreViewView frmPreView;

/// Shows the pages until the preview is closed.
void ShowPreView(const Printable& what, bool landscape, double width);

}  // namespace vael
