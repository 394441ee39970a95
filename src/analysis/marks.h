// How the marks of regions and peaks are asked for: two callables, silent by default.
#pragma once

#include "core/records.h"

#include <functional>

namespace vael {

/// Draws or erases the mark of the channels start to end (0-based) of a slot in a window.
using MarkCall = std::function<void(int window, int slot, int start, int end, Colour colour)>;

/// What the table operations call, and the colour a peak's mark has. The operations only say when.
struct Marks {
    MarkCall draw = [](int, int, int, int, Colour) {};
    MarkCall erase = [](int, int, int, int, Colour) {};
    Colour PeakColor = 0;
};

}  // namespace vael
