// Text at an angle.
#pragma once

#include "display/canvas.h"

#include <string_view>

namespace vael {

/// Height of rotated text: 13 pixels of a screen of 96 to the inch, in points.
inline constexpr double LOTATE_POINTS = 13.0 * 72.0 / 96.0;

/// Writes a text with its top left corner at the canvas's current point, turned about that point by
/// `angle` degrees counter-clockwise, in its own height, heavy when `bold`. The canvas keeps its
/// font and its current point.
void LotateText(Canvas& canvas, std::string_view utf8, bool bold, double angle, Colour ink = 0);

}  // namespace vael
