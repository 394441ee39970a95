// The NAX commands on graph rows: where a fit's peaks, curve and background go.
#pragma once

#include "analysis/naxwalk.h"

namespace vael {

/// The automatic run on a graph row: the peaks go to the slot's own table (emptied first) and with
/// the fit curve to a fit graph: the row itself when it is one, else the row named "Fit", else a
/// new row 0. Says "NO PEAKS ARE FOUND" where there are none; no graph is made then.
void NaxAllFit(int window, int graph);

/// The manual run on a graph row with what the dialog states: 0, or -1 when the fit failed. Its
/// peaks join the row's own; their curve goes to the fit graph that this spectrum got before, or to
/// a new row 0, and the fitted row is the current one.
int NaxManualFit(int window, int graph, const NaxManualInput& input);

/// The settings of a run on a slot.
[[nodiscard]] NaxSettings NaxSettingsFor(int slot);

}  // namespace vael
