// How a peak that came by hand is known again.
#pragma once

#include "core/records.h"

#include <algorithm>

namespace vael {

/// Whether a table holds a peak of this very centre.
[[nodiscard]] inline bool HoldsPeak(const PeakTable& table, const PeakRecord& peak) {
    const auto end = table.Peak.begin() + std::clamp<int>(table.PeakNum, 0, MAX_PEAKS);
    return std::any_of(table.Peak.begin(), end,
                       [&](const PeakRecord& each) { return each.Position == peak.Position; });
}

}  // namespace vael
