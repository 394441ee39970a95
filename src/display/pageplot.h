// One plot of a page with its scales, curves, labels, legend and the strip of what a fit leaves.
#pragma once

#include "display/page.h"
#include "display/paper.h"

namespace vael {

/// Where a plot stands.
struct PlotPlace {
    paper::Rect Plot;  // the curves
    paper::Rect Rest;  // the strip below them; of no height for none
    bool LowerAxis = true;
};

/// Room in points that the labels above a plot, and the axes below it, need.
[[nodiscard]] double LabelRoom(Canvas& canvas, const PagePlot& plot);
[[nodiscard]] double AxisRoom(const PagePlot& plot);
/// Height of the strip of what a fit leaves; 0 for none.
[[nodiscard]] double RestRoom(const PagePlot& plot);

/// Draws it on the print target that `engine` lends. Faults: those of `XScaleDraw`.
void DrawPagePlot(Canvas& canvas, DrawEngine& engine, const PagePlot& plot, const PlotPlace& at);

}  // namespace vael
