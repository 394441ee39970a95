// The two graph windows: what they show, at which scale, and their redrawing.
#pragma once

#include "core/frmvaelana.h"
#include "display/colourtable.h"
#include "display/drawspect.h"

namespace vael {

/// The one drawing engine of the process.
[[nodiscard]] DrawEngine& Engine();

/// Start state of both windows: bound to their pictures, empty, the whole span shown.
void WindowSetup();
/// All windows take `SpanCh` as their span, and the scroll bar its range.
void WindowSpan();

[[nodiscard]] bool Expanded();  // window 1 magnifies a part of window 0
[[nodiscard]] bool PiledUp();
/// Whether a window has a place: not when its show switch is free and off.
[[nodiscard]] bool WindowShown(int win);
/// Frees a window's show switch. A window whose switch is not free is shown, so it is on then.
void FreeShowSwitch(int win);
/// Shows and hides the frames as the show switches say.
void ArrangeWindows();
/// The window that the scroll bar, the span box and the zoom move: the magnifier in Expand style,
/// else 0, and the other one goes with it.
[[nodiscard]] int RangeWindow();
/// Shows `span` channels from the 0-based channel `start` on; both are held within SpanCh. Nothing
/// is drawn.
void ShowRange(int start, int span);

/// The window in which a row is drawn: its own, or the one plot of a pile.
[[nodiscard]] int DrawnWindow(const GraphEntry& entry);
/// Whether a window draws a row that is there and visible.
[[nodiscard]] bool Draws(int win, const GraphEntry& entry);
/// Hands a row's spectrum to the engine in the row's window and colour.
void RegisterRow(int row);
void RegisterAllRows();
/// Takes a slot's graph off both windows.
void WithdrawSlot(int slot);

/// Full scale of a window from the highest count that it shows, while the automatic scale is on.
void AutoScale(int win);
void AutoScaleBoth();
[[nodiscard]] std::int32_t YFullScale(int win);
/// The same scale by hand: held within the list of full scales; nothing is drawn.
void SetYFullScale(int win, std::int32_t scale);
/// Hands a window's scale and mode to the engine.
void ApplyScale(int win);
/// Height of a slot's count in the coordinates of a window: counts, on the log axis decades, with
/// the lift of a pile, held between 0 and the top.
[[nodiscard]] double PlotHeight(int win, int slot, int channel);
/// The top of a window's coordinates: counts or decades.
[[nodiscard]] double PlotTop(int win);

/// The ground of a window's plot.
[[nodiscard]] Colour WindowBack(int win);
/// Puts a colour table in force: graphs, regions, marks, grounds and frames of both windows, the
/// row boxes and the list of rows.
void TakeColours(const ColourTable& table);

void RedrawWindow(int win);  // plot, marks and count axis
void RedrawBoth();           // and the reports that are open
/// Brings the two reports, the property sheet and the lattice view up to date where they are shown.
void RefreshReports();
void EraseWindows();  // takes all graphs off and clears both pictures

/// The unit of `cboUnitX`; channels instead of an angle that only spectra of the DAC form have.
[[nodiscard]] int AxisUnit();  // for the current row
[[nodiscard]] int AxisUnit(int slot);
/// The lower axis in the unit of `cboUnitX`, with the current graph's calibration in force.
void XScaleDraw();

}  // namespace vael
