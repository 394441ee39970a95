// Marks of regions and peaks on the plots: the coloured part of a curve, and the numbers above it.
#pragma once

#include "analysis/marks.h"
#include "core/records.h"

namespace vael {

/// Colour of the regions of peaks ("Peak Curve") and of new regions of interest ("ROI Line").
[[nodiscard]] Colour PeakColor();
[[nodiscard]] Colour RoiColor();

/// What the table operations call to draw and erase a mark: the strokes of the slot's curve over
/// the region take the colour, or go back to the graph's own. On the screen with the next redraw.
[[nodiscard]] Marks RegionMarks();

/// Colours a slot's curve anew in every window that draws it: the regions of its peaks in
/// `PeakColor`, over them the regions of interest in their own. A fit graph has the peaks of its
/// source and nothing but peaks, so its curve keeps one colour.
void ColourRegions(int slot);

/// Draws the number of each region of interest, from 1, at the beginning of its mark on the graphs
/// of the window. A number that would lie on a higher one stands above that.
void DrawRoiLabels(int win);
/// The numbers of the current row's peaks above their lines, where the window draws that row, but
/// for those that would lie on a higher one or on a region's.
void DrawPeakNumbers(int win);

}  // namespace vael
