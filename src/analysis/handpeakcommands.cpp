// Which peaks were fitted or added by hand in this run: kept beside the peak tables.
#include "analysis/handpeakcommands.h"

#include "analysis/handpeaks.h"
#include "core/fault.h"
#include "core/store.h"

#include <algorithm>

namespace vael {
namespace {

void Append(PeakTable& table, const PeakRecord& peak) {
    if (table.PeakNum == MAX_PEAKS) {
        std::rotate(table.Peak.begin(), table.Peak.begin() + 1, table.Peak.end());
        --table.PeakNum;
    }
    Item(table.Peak, table.PeakNum++) = peak;
}

}  // namespace

void NoteHandPeaks(int slot, const PeakTable& before) {
    const PeakTable& now = Item(store.PeakTables, slot);
    PeakTable& noted = Item(store.HandPeaks, slot);
    for (int i = 0; i < now.PeakNum; ++i) {
        const PeakRecord& peak = Item(now.Peak, i);
        if (!HoldsPeak(before, peak) && !HoldsPeak(noted, peak)) Append(noted, peak);
    }
}

PeakTable HandPeaksOf(int slot) {
    PeakTable noted = Item(store.HandPeaks, slot);
    const int source = Item(store.FitSource, slot) - 1;
    if (source < 0) return noted;
    const PeakTable& more = Item(store.HandPeaks, source);
    for (int i = 0; i < more.PeakNum; ++i)
        if (!HoldsPeak(noted, Item(more.Peak, i))) Append(noted, Item(more.Peak, i));
    return noted;
}

}  // namespace vael
