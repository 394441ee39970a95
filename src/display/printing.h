// What the main view prints: its plots as they stand, the measurement, the current row's peaks.
#pragma once

#include "display/page.h"

#include <functional>
#include <string>

namespace vael {

/// Something that can be printed. `Draw` draws it on a canvas whose pixels are the points of a
/// sheet, with lines of `width` points, and asks for each page after the first; false when one did
/// not come.
struct Printable {
    std::string Title;
    std::string Name;  // proposed for a file, without folder and extension
    std::function<bool(Canvas& canvas, double width, const NextPage& next)> Draw;
};

/// The pages of the main view: each window that has a place and draws a row is a plot with the
/// range, the scale, the axis unit, the coloured regions and the marks that it has on the screen;
/// then the measurement and the peaks of the current row. Curves of files are black, unless there
/// are several in a plot; derived ones have inks of their own. Faults: those of `MakePeakText`.
[[nodiscard]] PageData MainPage(double width);

/// Whether a window has anything to print.
[[nodiscard]] bool AnythingDrawn();

/// Lays out and draws the pages of the main view.
bool PrintDataH(Canvas& canvas, double width, const NextPage& next);

/// The measurement's lines in two blocks, who and what and under which conditions.
[[nodiscard]] std::vector<PageBlock> PropertyBlocks(const PropertyRecord& property);

/// A table of lines whose first one is the heading, fields separated by `separator` (a blank: by
/// runs of blanks).
[[nodiscard]] PageTable TableOf(const std::vector<std::string>& lines, char separator);

}  // namespace vael
