// The two graph windows: what they show, at which scale, and their redrawing.
#pragma once

#include "display/drawscale.h"
#include "display/drawspect.h"

namespace vael {

/// The one drawing engine of the process.
[[nodiscard]] DrawEngine& Engine();

/// Start state of both windows: bound to their pictures, empty, the whole span shown.
void WindowSetup();
/// All windows take `SpanCh` as their span, and the scroll bar its range.
void WindowSpan();
/// Shows `span` channels from the 0-based channel `start` on; both are held within SpanCh.
void ShowRange(int start, int span);

/// Hands a row's spectrum to the engine in the row's window and colour.
void RegisterRow(int row);
/// Takes a slot's graph off both windows.
void WithdrawSlot(int slot);

/// Full scale of a window from the highest count that it shows.
void AutoScale(int win);
[[nodiscard]] std::int32_t YFullScale(int win);

void RedrawWindow(int win);  // plot and count axis
void RedrawBoth();
void EraseWindows();  // takes all graphs off and clears both pictures

/// The lower axis in the unit of `cboUnitX`, with the current graph's calibration in force.
void XScaleDraw();

}  // namespace vael
