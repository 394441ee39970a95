// The table of regions of interest: insertion, removal, statistics, search and jumps.
#pragma once

#include "analysis/marks.h"
#include "core/records.h"

#include <cstdint>
#include <optional>
#include <span>

namespace vael {

/// A region as `GetRoi` gives it; `Graph` is 65535 when there is none.
struct RoiRegion {
    std::uint16_t Graph = ALL_BITS;
    std::int16_t StartCh = 0;
    std::int16_t EndCh = 0;
    Colour Color = 0;
};

/// How many rows a search met, and the first of them (65535: none).
struct RegionCount {
    std::int16_t Count = 0;
    std::uint16_t First = ALL_BITS;
};

/// Where a jump leads: the row, its region, and the channel that the cursor takes.
struct RoiJump {
    int Index = 0;
    std::int16_t StartCh = 0;
    std::int16_t EndCh = 0;
    std::int16_t Channel = 0;
};

/// Draws the mark and inserts a region before the first one that starts later, so that regions of
/// the same start keep the order of their coming. `spectra` are the slots. Result: its index, or
/// -1, with nothing drawn, when the table is full. Faults: Subscript (slot or channels).
int AddRoi(RoiList& rois, std::span<const SpectrumData> spectra, int window, int graph,
           std::int16_t start, std::int16_t end, Colour colour, const Marks& marks);

/// Rewrites a region where it stands, even if the order of the table breaks. Result: the index, or
/// -1 when there is no such row. Faults: Subscript.
int SetRoi(RoiList& rois, std::span<const SpectrumData> spectra, int window, int index,
           std::int16_t start, std::int16_t end, Colour colour, const Marks& marks);

[[nodiscard]] RoiRegion GetRoi(const RoiList& rois, int index);

/// Erases the mark and removes the row; an index outside the table changes nothing.
void DeleteRoi(RoiList& rois, int window, int index, const Marks& marks);

/// First region with StartCh < channel < EndCh on the graph (65535: on any), or -1.
[[nodiscard]] int FindRoiAt(const RoiList& rois, std::uint16_t graph, int channel);

/// Regions that lie wholly within start to end, ends included.
[[nodiscard]] RegionCount CountRoiInRegion(const RoiList& rois, std::uint16_t graph, int start,
                                           int end);

/// Takes MaxCount, MaxCh (the lowest channel wins; 0 when no count is above 0) and TotalCount anew.
/// Faults: Subscript.
void UpdateRoi(RoiList& rois, std::span<const SpectrumData> spectra, int index);

/// The neighbour of `channel` by its MaxCh; direction 1 is the next, any other the previous. None
/// when the table ends there.
[[nodiscard]] std::optional<RoiJump> JumpRoi(const RoiList& rois, int channel, int direction);

}  // namespace vael
