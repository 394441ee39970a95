// What the energy calibration does with the main view's rows: prepare, fit in the area, take away.
#pragma once

namespace vael {

// The commands work on the current row of the real window.

/// Smooths the current row and removes its background, as the two menu items do; the row with the
/// counts above the background is the current one afterwards.
void Calib_SmothBk();

/// Takes the fit away: the rows "Fit", the peaks that they were drawn from, and those of the
/// current row; then the windows are scaled anew.
void Calib_FitDel();

/// Fits in the area, in the row "BackRemv" where there is one: all that stands there together with
/// `peakSplit`, else its highest peak alone. Enters the centre of the highest peak there in the
/// calibration's table, and goes back to the row that was current. The area stays. Message "Plz Set
/// ROI" without an area.
void Calib_Auto(bool peakSplit);

/// Empties the rows without a prompt.
void Calib_Empty();

/// A centre, counted from 1, for the table: that of the peak at the cursor in the current row or,
/// where it has none there, in the row "BackRemv", else the channel of the cursor. `Fitted` tells
/// which.
struct CalibCentre {
    double Channel = 0.0;
    bool Fitted = false;
};
[[nodiscard]] CalibCentre CentreAtCursor();

}  // namespace vael
