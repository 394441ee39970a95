// The fit graph: where the curve of a slot's peaks goes.
#pragma once

namespace vael {

/// Which row takes the curve of a source that is no fit graph itself.
enum class FitRow {
    Named,  // the row "Fit", whoever filled it, else a new row 0
    Own  // the fit graph that the same spectrum got before, which is superseded; else a new row 0
};

/// Row of the fit graph that the spectrum of slot `source` got before, or -1.
[[nodiscard]] int OwnFitRow(int source);

/// Curve (all peaks, without background), property and peaks of slot `source` into a fit graph: the
/// source itself when it is one, else the row that `which` says; "Fit" in the list. The row that it
/// stands in, or -1 when there was no room (told by the row's insertion). The current row is not
/// changed, but rows move. Bit 16 goes to that slot and to no other, so that no fit overwrites
/// counts. Faults: Overflow (peaks that sum up beyond 32 bits); nothing is changed then.
int PutFitGraph(int window, int source, FitRow which);

/// `PutFitGraph` into the spectrum's own fit graph, scaled, not yet drawn. The source becomes the
/// current row of `window`, ready for its next peak.
void ShowFitGraph(int window, int source);

}  // namespace vael
