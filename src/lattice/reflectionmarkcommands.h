// The marks of matched reflections on the plots.
#pragma once

#include "core/records.h"

namespace vael {

/// Puts a mark on every row in use of the lattice view's graph, with key, indices and d. They stand
/// on the graph wherever it is drawn, and go with it. The number of marks put.
int MarkReflections(Colour colour);
/// Takes the marks off both windows.
void ClearReflectionMarks();
/// Draws the marks of the graphs that a window draws, onto its finished plot.
void DrawReflectionMarks(int win);

/// Handler of "add MI" (0) and "Clear MI" (1).
void cmdMI_Click(int index);

}  // namespace vael
