// The lists of the lattice view: peaks, reflections against the seed and the calculated cell.
#pragma once

#include "lattice/latticelog.h"
#include "toolkit/controls.h"

namespace vael {

/// The view's graph with its peaks, its own calibration, and the pick-up range.
[[nodiscard]] MatchSource LatticeSource();
/// Peaks of the view's slot that were fitted or added by hand, also where it is a fit graph.
[[nodiscard]] PeakTable HandMadePeaks();
/// What the log and the report tell of the last calculation.
[[nodiscard]] LatticeReport ReportNow();

/// Fills the list of the peaks.
void CopyPeakInfo();
/// Empties the match, and with it the lists of reflections and what they knew of a calculation.
/// The result boxes keep their texts.
void ClearLatticeMatch();
/// Fills the three lists of reflections from the match and the last calculation.
void FillReflections();

/// Handlers: a tick of the column "use"; a click on a line, which moves the cursor of both windows
/// to its peak; the tabs.
void UseColumn_Edit(const Grid& grid, int row);
void PeakLine_Click(const Grid& grid, int row);
void tabLatticeFit_Click();

}  // namespace vael
