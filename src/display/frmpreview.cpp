// The preview: a printed page as it will be, on the screen.
#include "display/frmpreview.h"

#include "core/frmvaelana.h"
#include "display/pagepicture.h"
#include "toolkit/hand.h"

namespace vael {
namespace {

/// Draws the page that is shown, and counts them all on the way.
void Paint() {
    PreViewView& v = frmPreView;
    if (!v.Shown.Draw) return;
    v.picPage.Paper().ScaleReset();
    PagePicture sheet(v.picPage.Paper().Below(), v.Landscape, v.Page);
    sheet.DrawSheet();
    Canvas canvas(sheet);
    (void)v.Shown.Draw(canvas, v.DrawWidth, [&] {
        sheet.NextPage();
        return true;
    });
    v.Pages = sheet.Pages();
    v.cmdPrevious.Enabled = v.Page > 1;
    v.cmdNext.Enabled = v.Page < v.Pages;
    v.lblPage.Caption = "Page " + std::to_string(v.Page) + " of " + std::to_string(v.Pages);
    ++v.picPage.Painted;
}

void Turn(int pages) {
    PreViewView& v = frmPreView;
    const int page = v.Page + pages;
    if (page < 1 || page > v.Pages) return;
    v.Page = page;
    Paint();
}

void cmdOK_Click() { frmPreView.Visible = false; }

bool PreViewKeys(const KeyPress& key) {
    if (key.Alt || key.Ctrl || key.Shift) return false;
    switch (key.Key) {
        case KeyPress::Name::PageUp: Turn(-1); return true;
        case KeyPress::Name::PageDown: Turn(1); return true;
        case KeyPress::Name::Enter:
        case KeyPress::Name::Escape: cmdOK_Click(); return true;
        default: return false;
    }
}

}  // namespace

PreViewView::PreViewView() : View("frmPreView", "PreView") {
    Modal = true;
    cmdPrevious.Tip = "The page before (Page Up)";
    cmdNext.Tip = "The next page (Page Down)";
    cmdOK.Tip = "Closes the preview (Enter)";
    cmdPrevious.Click = [] { Turn(-1); };
    cmdNext.Click = [] { Turn(1); };
    cmdOK.Click = cmdOK_Click;
    Closing = cmdOK_Click;
    Resized = Paint;
    KeyPreview = PreViewKeys;
}

void ShowPreView(const Printable& what, bool landscape, double width) {
    PreViewView& v = frmPreView;
    v.Shown = what;
    v.Landscape = landscape;
    v.DrawWidth = width;
    v.Page = 1;
    Paint();
    ShowModal(v);
    v.Shown = {};
}

}  // namespace vael
