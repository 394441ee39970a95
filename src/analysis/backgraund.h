// The background of a spectrum by lowering anchors that stand above their neighbours' mean.
#pragma once

#include "core/talk.h"

#include <cstdint>
#include <span>

namespace vael {

/// Straight line through n points by least squares; the pair in c describes the fitted line moved
/// one unit to the right, so that `LineValue(x, c)` is the line's value at x - 1. That is its
/// contract with every caller. Result 0, or 1 with c = (0, 0) when all x are the same. Faults:
/// Subscript.
int FitLine(std::span<const double> x, std::span<const double> y, int n, std::span<double, 2> c);

/// Replaces the first n channels of `data` by their background: `times` passes from left to right
/// lower each anchor (a multiple of `interval`) to the mean of its two neighbours, then chords,
/// moved one channel to the right, fill the channels between; a tail of less than one interval
/// stays raw. `data` is the whole channel array: an anchor may lie at channel n and beyond its own
/// spectrum. An interval or a count of passes below 1 is said, and the data stay. Faults: Subscript
/// (an anchor at the capacity), Overflow (indices in 16, sums of two counts in 32 bits).
void BackGraund(std::int16_t interval, std::int16_t times, std::span<std::int32_t> data,
                std::int16_t n, const Talk& talk);

}  // namespace vael
