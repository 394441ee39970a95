// The vertical scale of the graph windows: automatic, logarithmic or fixed, typed or stepped.
#include "core/scales.h"

#include "core/fault.h"
#include "core/store.h"
#include "core/text.h"
#include "core/windows.h"

#include <algorithm>
#include <cctype>

namespace vael {
namespace {

constexpr const char* LOG_TEXT = "LOG";
constexpr const char* AUTO_TEXT = "AUTO";

int ActiveWindow() { return frmVaelAna.ActiveWin; }

/// Place of a full scale in the list, or of the next one above it.
int PlaceOf(std::int32_t scale) {
    const auto scales = FullScales();
    const auto found = std::lower_bound(scales.begin(), scales.end(), scale);
    const auto last = static_cast<std::ptrdiff_t>(scales.size()) - 1;
    return static_cast<int>(std::min<std::ptrdiff_t>(found - scales.begin(), last));
}

void ShowModes(ScaleMode mode) {
    VaelAnaView& v = frmVaelAna;
    v.ckbVtAuto.Value = mode == ScaleMode::Auto ? 1 : 0;
    v.ckbLogScale.Value = mode == ScaleMode::Log ? 1 : 0;
    v.ckbNorScale.Value = mode == ScaleMode::Normal ? 1 : 0;
    v.mnuAutomatic.Checked = mode == ScaleMode::Auto;
    v.mnuLogarithmic.Checked = mode == ScaleMode::Log;
    v.mnuNorScale.Checked = mode == ScaleMode::Normal;
}

/// A fixed full scale for the active window.
void FixScale(std::int32_t scale) {
    if (ScaleModeNow() != ScaleMode::Normal) SetScaleMode(ScaleMode::Normal);
    SetYFullScale(ActiveWindow(), scale);
    RedrawWindow(ActiveWindow());
    TellStatus("Full scale " + std::to_string(YFullScale(ActiveWindow())) + " counts.");
}

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

}  // namespace

ScaleMode ScaleModeNow() {
    if (frmVaelAna.ckbLogScale.Value != 0) return ScaleMode::Log;
    return frmVaelAna.ckbVtAuto.Value != 0 ? ScaleMode::Auto : ScaleMode::Normal;
}

void SetScaleMode(ScaleMode mode) {
    if (mode == ScaleMode::Log && ScaleModeNow() != ScaleMode::Log)
        frmVaelAna.LastScale = ScaleModeNow();
    ShowModes(mode);
    AutoScaleBoth();
    RedrawBoth();
    TellStatus(mode == ScaleMode::Auto  ? "The vertical scale follows the counts."
               : mode == ScaleMode::Log ? "The vertical axis is logarithmic."
                                        : "The vertical scale is fixed.");
}

void StepScale(int taller) {
    if (ScaleModeNow() == ScaleMode::Log) {
        TellStatus("The logarithmic axis always shows seven decades.");
        return;
    }
    FixScale(StepFullScale(YFullScale(ActiveWindow()), -taller));
}

bool TakeTypedScale(const std::string& text) {
    std::string word = Lower(text);
    word.erase(0, word.find_first_not_of(' '));
    word.erase(word.find_last_not_of(' ') + 1);
    if (word == "log") {
        SetScaleMode(ScaleMode::Log);
        return true;
    }
    if (word == "auto") {
        SetScaleMode(ScaleMode::Auto);
        return true;
    }
    double factor = 1.0;
    if (!word.empty() && (word.back() == 'k' || word.back() == 'm')) {
        factor = word.back() == 'k' ? 1000.0 : 1000000.0;
        word.pop_back();
    }
    const auto number = ParseNumber(word);
    if (!number) return false;
    const double held = std::clamp(*number * factor, static_cast<double>(FullScales().front()),
                                   static_cast<double>(FullScales().back()));
    FixScale(Whole32(held));
    return true;
}

void FillScaleList() {
    auto& items = frmVaelAna.itxtScaleY.Items;
    const auto scales = FullScales();
    items = {LOG_TEXT};
    for (auto scale = scales.rbegin(); scale != scales.rend(); ++scale)
        items.push_back(std::to_string(*scale));
    items.emplace_back(AUTO_TEXT);
    frmVaelAna.hsbWidthY.Least = 0;
    frmVaelAna.hsbWidthY.Most = static_cast<int>(scales.size()) - 1;
    frmVaelAna.hsbWidthY.Large = 3;
    ShowScale();
}

void ShowScale() {
    auto& list = frmVaelAna.itxtScaleY;
    const std::int32_t scale = YFullScale(ActiveWindow());
    const std::string text = ScaleModeNow() == ScaleMode::Log ? LOG_TEXT : std::to_string(scale);
    const auto found = std::find(list.Items.begin(), list.Items.end(), text);
    list.Index = found == list.Items.end() ? -1 : static_cast<int>(found - list.Items.begin());
    list.Typed = text;
    frmVaelAna.hsbWidthY.Value = PlaceOf(scale);
}

void ckbScale_Click(ScaleMode mode) {
    VaelAnaView& v = frmVaelAna;
    const CheckBox& box = mode == ScaleMode::Auto  ? v.ckbVtAuto
                          : mode == ScaleMode::Log ? v.ckbLogScale
                                                   : v.ckbNorScale;
    if (box.Value != 0) {
        // The box alone is ticked already: what stood before is in the other two.
        if (mode == ScaleMode::Log)
            v.LastScale = v.ckbVtAuto.Value != 0 ? ScaleMode::Auto : ScaleMode::Normal;
        SetScaleMode(mode);
    } else {
        SetScaleMode(mode == ScaleMode::Log    ? v.LastScale
                     : mode == ScaleMode::Auto ? ScaleMode::Normal
                                               : ScaleMode::Auto);
    }
}

void itxtScaleY_Click() {
    if (!TakeTypedScale(frmVaelAna.itxtScaleY.Text())) ShowScale();
}

void itxtScaleY_Enter() {
    const std::string typed = frmVaelAna.itxtScaleY.Typed;
    if (TakeTypedScale(typed)) return;
    ShowScale();
    TellStatus("\"" + typed + "\" is no full scale: a number, with k or m, or log, or auto.");
}

void hsbWidthY_Change() {
    if (ScaleModeNow() == ScaleMode::Log) {
        StepScale(0);
        ShowScale();
        return;
    }
    const auto scales = FullScales();
    FixScale(Item(scales, frmVaelAna.hsbWidthY.Value));
}

}  // namespace vael
