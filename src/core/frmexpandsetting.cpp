// The expand setting: a range of channels to be magnified, by number.
#include "core/frmexpandsetting.h"

#include "core/expand.h"
#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/store.h"
#include "core/text.h"
#include "toolkit/desk.h"

namespace vael {
namespace {

/// Text that is no number is a fault.
void cmdSet_Click() {
    const ExpandSettingView& v = frmExpandSetting;
    const Int32 start = Int32(Whole32(Number(v.txtStartCh.Text))) - Int32(1);
    const int width = Whole32(Number(v.txtChWidth.Text));
    constexpr int least = 16;
    if (width < least) TellStatus("A width under 16 channels changes nothing.");
    SetExpandArea(start, width);
}

void cmdClose_Click() { frmExpandSetting.Visible = false; }

void ShowMode() {
    frmExpandSetting.cmdChangeWindowMode.Tip =
        frmExpandSetting.OnTop ? "This view stays on top of the others; click to let it go"
                               : "Click to keep this view on top of the others";
}

void cmdChangeWindowMode_Click() {
    if (frmExpandSetting.OnTop)
        NoTopMost(frmExpandSetting);
    else
        TopMost(frmExpandSetting);
    ShowMode();
}

}  // namespace

ExpandSettingView::ExpandSettingView() : View("frmExpandSetting", "Expand Setting") {
    cmdSet.Click = cmdSet_Click;
    cmdClose.Click = cmdClose_Click;
    cmdChangeWindowMode.Click = cmdChangeWindowMode_Click;
    cmdChangeWindowMode.Tip = "Click to keep this view on top of the others";
    KeyPreview = EnterEscape(cmdSet_Click, cmdClose_Click);
}

void ShowExpandSetting() {
    ExpandSettingView& v = frmExpandSetting;
    v.lblMaxCount.Caption = "of " + std::to_string(store.SpanCh);
    if (v.txtStartCh.Text.empty()) v.txtStartCh.Text = "1";
    v.Visible = true;
}

}  // namespace vael
