// Which peaks were fitted or added by hand in this run: kept beside the peak tables.
#pragma once

#include "core/records.h"

namespace vael {

/// Notes the peaks of a slot that were not in `before`, known again by their exact centre: a fit
/// that moves one makes it an automatic one. When a hundred are noted the oldest goes.
void NoteHandPeaks(int slot, const PeakTable& before);

/// The noted peaks of a slot; of a fit graph also those of the spectrum that it was fitted to.
[[nodiscard]] PeakTable HandPeaksOf(int slot);

}  // namespace vael
