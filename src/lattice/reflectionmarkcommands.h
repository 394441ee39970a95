// The marks of matched reflections on the plots.
#pragma once

#include "core/records.h"

#include <string>
#include <vector>

namespace vael {

/// A mark: where it stands on which graph, and what it says.
struct ReflectionMark {
    int Slot = 0;
    double Ch = 0.0;  // 0-based
    std::string Words;
    Colour Ink = 0;
};

/// Puts a mark on every row in use of the lattice view's graph, with key, indices and d. They stand
/// on the graph wherever it is drawn, and go with it. The number of marks put.
int MarkReflections(Colour colour);
/// Takes the marks off both windows.
void ClearReflectionMarks();
/// The marks on the graphs that a window draws.
[[nodiscard]] std::vector<ReflectionMark> ReflectionMarksOn(int win);
/// Draws the marks of the graphs that a window draws, onto its finished plot.
void DrawReflectionMarks(int win);

/// Handler of "add MI" (0) and "Clear MI" (1).
void cmdMI_Click(int index);

}  // namespace vael
