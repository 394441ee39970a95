// The peak table of a slot: ordered insertion, removal, search, jumps, areas, regions, fit curves.
#pragma once

#include "analysis/marks.h"
#include "analysis/roi.h"
#include "core/records.h"

#include <cstdint>
#include <optional>

namespace vael {

/// Region of a peak; `StartCh` is 65535 when there is no such peak.
struct PeakRegion {
    std::uint16_t StartCh = ALL_BITS;
    std::int16_t EndCh = 0;
};

/// Where a jump leads: the row, the channel that the cursor takes, and the unrounded centre
/// (0-based) that the channel display then shows.
struct PeakJump {
    int Index = 0;
    std::int16_t Channel = 0;
    double Position = 0.0;
};

/// Draws the mark of the record's region in the peak colour and inserts the record before the first
/// one whose Position is greater. `channel` is refused when negative. Result: its index, or -1 when
/// the table is full, the Position is exactly 0 (the mark of an empty record) or the channel
/// negative.
int AddPeak(int channel, int window, int slot, const PeakRecord& record, PeakTable& peaks,
            const Marks& marks);

/// The whole channel of a centre, ties to even. A split that went astray can leave a centre far
/// outside; it is held one channel beyond the ends of a spectrum's room, so that nothing faults and
/// the other peaks can be reached.
[[nodiscard]] std::int16_t ChannelOf(double position);

[[nodiscard]] PeakRegion GetPeakRegion(const PeakTable& peaks, int index);

/// Erases the mark and removes the row; an index outside the table changes nothing.
void DeletePeak(int window, int slot, int index, PeakTable& peaks, const Marks& marks);

/// First peak with Position - Width < channel < Position + Width, or -1.
[[nodiscard]] int FindPeakAt(const PeakTable& peaks, double channel);

/// Peaks with start <= Position <= end.
[[nodiscard]] RegionCount CountPeakInRegion(const PeakTable& peaks, int start, int end);

/// The neighbour of `channel` by its rounded Position; direction 1 is the next, any other the
/// previous.
[[nodiscard]] std::optional<PeakJump> JumpPeak(const PeakTable& peaks, int channel, int direction);

/// Writes Intensity of a peak: the sum of its shape, without background, over every channel of the
/// spectrum. An index outside the table changes nothing.
void CalcIntensity(const SpectrumData& spectrum, PeakTable& peaks, int index);

/// Parts the overlapping regions of the neighbours among the peaks `first` to `last` at the lowest
/// count between their centres. A boundary b is judged by the count of channel b - 1. Faults:
/// Subscript.
void AdjustRegions(int window, int slot, int first, int last, const SpectrumData& spectrum,
                   PeakTable& peaks, const Marks& marks);

/// Adds the curves of fitted peaks to `target`, `count` coefficients to a shape (4: no background).
/// Index 65535 takes every peak and starts from zeros with the source's channel count; a single
/// index adds to what the target holds. Faults: Overflow (a sum beyond 32 bits).
void MakeFitGraph(const SpectrumData& source, const PeakTable& peaks, SpectrumData& target,
                  std::uint16_t index, int count);

}  // namespace vael
