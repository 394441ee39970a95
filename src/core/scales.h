// The vertical scale of the graph windows: automatic, logarithmic or fixed, typed or stepped.
#pragma once

#include "core/frmvaelana.h"

#include <string>

namespace vael {

/// The choice in force, and its change for both windows: boxes and menu items follow, and both are
/// drawn anew. A window keeps its full scale when "Normal" is chosen.
[[nodiscard]] ScaleMode ScaleModeNow();
void SetScaleMode(ScaleMode mode);

/// One notch along the list of full scales for the active window: 1 makes the picture taller (a
/// smaller full scale), -1 shorter. An automatic scale becomes a fixed one; the log axis has no
/// notches and says so.
void StepScale(int taller);

/// Takes a typed full scale: "log" and "auto" choose a mode, the suffix "k" means thousands and "m"
/// millions; held between the ends of the list. False, with nothing changed, for any other text.
bool TakeTypedScale(const std::string& text);

/// The list of `itxtScaleY`, and the boxes of the active window's scale.
void FillScaleList();
void ShowScale();

/// Handlers, wired by the main view.
void ckbScale_Click(ScaleMode mode);
void itxtScaleY_Click();
void itxtScaleY_Enter();
void hsbWidthY_Change();

}  // namespace vael
