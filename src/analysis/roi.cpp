// The table of regions of interest: insertion, removal, statistics, search and jumps.
#include "analysis/roi.h"

#include "analysis/jump.h"
#include "core/fault.h"

namespace vael {
namespace {

bool IsRow(const RoiList& rois, int index) { return index >= 0 && index < rois.RoiNum; }

bool OnGraph(const RoiRecord& roi, std::uint16_t graph) {
    return graph == ALL_BITS || roi.DataNo == graph;
}

}  // namespace

int AddRoi(RoiList& rois, std::span<const SpectrumData> spectra, int window, int graph,
           std::int16_t start, std::int16_t end, Colour colour, const Marks& marks) {
    if (rois.RoiNum >= MAX_ROIS) return -1;
    marks.draw(window, graph, start, end, colour);
    int at = 0;
    while (at < rois.RoiNum && !(start < Item(rois.RoiTable, at).StartCh)) ++at;
    for (int i = rois.RoiNum; i > at; --i) Item(rois.RoiTable, i) = Item(rois.RoiTable, i - 1);
    RoiRecord& roi = Item(rois.RoiTable, at);
    roi = RoiRecord{};
    roi.DataNo = static_cast<std::uint16_t>(graph);
    roi.StartCh = start;
    roi.EndCh = end;
    roi.Color = colour;
    ++rois.RoiNum;
    UpdateRoi(rois, spectra, at);
    return at;
}

int SetRoi(RoiList& rois, std::span<const SpectrumData> spectra, int window, int index,
           std::int16_t start, std::int16_t end, Colour colour, const Marks& marks) {
    if (!IsRow(rois, index)) return -1;
    const RoiRegion old = GetRoi(rois, index);
    marks.erase(window, old.Graph, old.StartCh, old.EndCh, old.Color);
    RoiRecord& roi = Item(rois.RoiTable, index);
    roi.StartCh = start;
    roi.EndCh = end;
    roi.Color = colour;
    UpdateRoi(rois, spectra, index);
    marks.draw(window, roi.DataNo, start, end, colour);
    return index;
}

RoiRegion GetRoi(const RoiList& rois, int index) {
    if (!IsRow(rois, index)) return {};
    const RoiRecord& roi = Item(rois.RoiTable, index);
    return {.Graph = roi.DataNo, .StartCh = roi.StartCh, .EndCh = roi.EndCh, .Color = roi.Color};
}

void DeleteRoi(RoiList& rois, int window, int index, const Marks& marks) {
    if (!IsRow(rois, index)) return;
    const RoiRegion old = GetRoi(rois, index);
    marks.erase(window, old.Graph, old.StartCh, old.EndCh, old.Color);
    for (int i = index; i + 1 < rois.RoiNum; ++i)
        Item(rois.RoiTable, i) = Item(rois.RoiTable, i + 1);
    --rois.RoiNum;
}

int FindRoiAt(const RoiList& rois, std::uint16_t graph, int channel) {
    for (int i = 0; i < rois.RoiNum; ++i) {
        const RoiRecord& roi = Item(rois.RoiTable, i);
        if (OnGraph(roi, graph) && roi.StartCh < channel && channel < roi.EndCh) return i;
    }
    return -1;
}

RegionCount CountRoiInRegion(const RoiList& rois, std::uint16_t graph, int start, int end) {
    RegionCount found;
    for (int i = 0; i < rois.RoiNum; ++i) {
        const RoiRecord& roi = Item(rois.RoiTable, i);
        if (!OnGraph(roi, graph) || roi.StartCh < start || roi.EndCh > end) continue;
        if (found.Count == 0) found.First = static_cast<std::uint16_t>(i);
        ++found.Count;
    }
    return found;
}

void UpdateRoi(RoiList& rois, std::span<const SpectrumData> spectra, int index) {
    if (!IsRow(rois, index)) return;
    RoiRecord& roi = Item(rois.RoiTable, index);
    const SpectrumData& spectrum = Item(spectra, roi.DataNo);
    roi.MaxCount = 0.0;
    roi.TotalCount = 0.0;
    roi.MaxCh = 0.0;
    for (int channel = roi.StartCh; channel <= roi.EndCh; ++channel) {
        const double count = static_cast<double>(Item(spectrum.Count, channel));
        roi.TotalCount += count;
        if (count > roi.MaxCount) {
            roi.MaxCount = count;
            roi.MaxCh = static_cast<double>(channel);
        }
    }
}

std::optional<RoiJump> JumpRoi(const RoiList& rois, int channel, int direction) {
    const auto key = [&rois](int i) { return Whole16(Item(rois.RoiTable, i).MaxCh); };
    const int index = NeighbourOf(rois.RoiNum, channel, direction, key);
    if (!IsRow(rois, index)) return std::nullopt;
    const RoiRecord& roi = Item(rois.RoiTable, index);
    return RoiJump{
        .Index = index, .StartCh = roi.StartCh, .EndCh = roi.EndCh, .Channel = key(index)};
}

}  // namespace vael
