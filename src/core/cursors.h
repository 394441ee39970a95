// The channel cursor, its mark in the windows, and the boxes that read it out.
#pragma once

#include <string>

namespace vael {

/// Groups of the exclusive-or marks that stand on the plots.
inline constexpr int MARK_CURSOR = 1;
inline constexpr int MARK_AREA_LEFT = 2;
inline constexpr int MARK_AREA_RIGHT = 3;
inline constexpr int MARK_BAND = 4;

/// Sets the cursor to the 0-based channel `ch`, clipped to 0 and SpanCh - 1, and refreshes boxes
/// and marks. The channel box shows it counted from 1.
void CsrX_Change(int ch);
/// Moves the shown range so that `ch` is in view. In Expand style the right edge of the magnified
/// part is set: with `keep` (-1) the part keeps its width and only moves as far as it must; without
/// (0) it ends at `ch`.
void CsrX_ChangeRight(int ch, int keep);
/// The 0-based channel of the cursor.
[[nodiscard]] int CursorCh();

/// Moves the cursor by a text step: "+" and "-" by one, a signed number by that many, any other
/// number to that 0-based channel; never beyond 0 and SpanCh - 1. Outside Expand style the shown
/// range follows by the overrun. Faults: Type for a text that is no number.
void spnCursor_SpinUpDown(const std::string& step);
/// The 0-based channel at a place of a plot, in the picture's pixels; held within what it shows.
[[nodiscard]] int CsrChannel(int win, double x);

/// The position of the cursor in units 0, 1, 3, 5 and 6 at once, the count below it in each window,
/// and the numbers of the region and the peak that it stands in.
void ShowCursorValues();
/// The cursor's mark: a line of the full height, or with "Cursor" off a short one above the count.
void PutCursorMark(int win);
void RefreshCursorMarks();

/// Moves the cursor to the neighbouring peak of a slot: direction 1 the next, else the previous.
/// The channel box then holds the unrounded position. Outside the table nothing moves.
void JumpPeak(int slot, int channel, int direction);

/// The frame with a peak's position, width and height in the unit of the axis, above the peak.
void ShowPeakMemo(int win, int slot, int peak);
void HidePeakMemo();

/// Handler of the channel box.
void inumCursorCh_Change();

}  // namespace vael
