// The mouse and the keys on the plots: cursor, area edges, the band of the magnifier, scrolling.
#pragma once

#include "core/frmvaelana.h"

namespace vael {

/// Handlers of a plot, wired by the main view; places in the picture's pixels, also outside it.
void PlotMouseDown(int win, MouseButton button, double x, double y);
void PlotMouseMove(int win, MouseButton button, double x, double y);
void PlotMouseUp(int win, MouseButton button, double x, double y);
void PlotDoubleClick(int win, double x, double y);
void PlotWheel(int win, double notches, double x, bool shift);

/// The memo frame follows the pointer while the left button is down on its text.
void MemoMouseDown(int win, MouseButton button, double x, double y);
void MemoMouseMove(int win, MouseButton button, double x, double y);

/// While a drag has left the plot: the range scrolls by 10 channels towards the pointer.
void timCursor_Tick();

/// The keys of the main view; true when it took the key.
bool MainKeys(const KeyPress& key);

/// In Expand style the two edges of the magnified part in window 0.
void RefreshBand();

}  // namespace vael
