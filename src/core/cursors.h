// The channel cursor and the boxes that read it out.
#pragma once

namespace vael {

/// Sets the cursor to the 0-based channel `ch`, clipped to 0 and SpanCh - 1, and refreshes the
/// boxes. The channel box shows it counted from 1.
void CsrX_Change(int ch);
/// The 0-based channel of the cursor.
[[nodiscard]] int CursorCh();
/// The position of the cursor in units 0, 1, 3, 5 and 6 at once, and the count below it in each
/// window.
void ShowCursorValues();

/// Moves the cursor to the neighbouring peak of a slot: direction 1 the next, else the previous.
/// The channel box then holds the unrounded position. Outside the table nothing moves.
void JumpPeak(int slot, int channel, int direction);

}  // namespace vael
