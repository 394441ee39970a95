// The peak table of a slot: ordered insertion, removal, search, jumps, areas, regions, fit curves.
#include "analysis/peak.h"

#include "analysis/calc.h"
#include "analysis/jump.h"
#include "core/fault.h"

#include <algorithm>
#include <array>

namespace vael {
namespace {

constexpr double LARGEST_FIT_COUNT = 10000000.0;

bool IsRow(const PeakTable& peaks, int index) { return index >= 0 && index < peaks.PeakNum; }

/// Coefficients of the Mix shape of a record: Gaussian height, centre, half width, the rest of the
/// height.
std::array<double, 4> ShapeOf(const PeakRecord& peak, double lorentzHeight) {
    return {peak.Amplitude * peak.GaussRatio, peak.Position, peak.Width, lorentzHeight};
}

void EraseMark(int window, int slot, int index, const PeakTable& peaks, const Marks& marks) {
    const PeakRegion region = GetPeakRegion(peaks, index);
    marks.erase(window, slot, region.StartCh, region.EndCh, marks.PeakColor);
}

void AddCurve(const PeakRecord& peak, SpectrumData& target, int count) {
    if (peak.FitState != ALL_BITS || !(peak.Width > 0.0) || peak.FuncType <= 0) return;
    const double gauss = peak.Amplitude * peak.GaussRatio;
    const std::array<double, 4> shape = ShapeOf(peak, peak.Amplitude - gauss);
    int status = 0;
    for (int channel = 0; channel < target.DataNo; ++channel) {
        double value = MixValue(static_cast<double>(channel), shape, count, status);
        if (value <= 0.0) continue;
        if (value > LARGEST_FIT_COUNT) value = LARGEST_FIT_COUNT;
        std::int32_t& sum = Item(target.Count, channel);
        sum = Int32(sum) + Int32(Whole32(value));
    }
}

}  // namespace

std::int16_t ChannelOf(double position) {
    return Whole16(std::clamp(position, -1.0, static_cast<double>(MAX_CHANNELS)));
}

int AddPeak(int channel, int window, int slot, const PeakRecord& record, PeakTable& peaks,
            const Marks& marks) {
    if (peaks.PeakNum >= MAX_PEAKS || record.Position == 0.0 || channel < 0) return -1;
    marks.draw(window, slot, record.StartCh, record.EndCh, marks.PeakColor);
    int at = 0;
    while (at < peaks.PeakNum && !(Item(peaks.Peak, at).Position > record.Position)) ++at;
    for (int i = peaks.PeakNum; i > at; --i) Item(peaks.Peak, i) = Item(peaks.Peak, i - 1);
    Item(peaks.Peak, at) = record;
    ++peaks.PeakNum;
    return at;
}

PeakRegion GetPeakRegion(const PeakTable& peaks, int index) {
    if (!IsRow(peaks, index)) return {};
    const PeakRecord& peak = Item(peaks.Peak, index);
    return {.StartCh = static_cast<std::uint16_t>(peak.StartCh), .EndCh = peak.EndCh};
}

void DeletePeak(int window, int slot, int index, PeakTable& peaks, const Marks& marks) {
    if (!IsRow(peaks, index)) return;
    EraseMark(window, slot, index, peaks, marks);
    for (int i = index; i + 1 < peaks.PeakNum; ++i) Item(peaks.Peak, i) = Item(peaks.Peak, i + 1);
    --peaks.PeakNum;
}

int FindPeakAt(const PeakTable& peaks, double channel) {
    for (int i = 0; i < peaks.PeakNum; ++i) {
        const PeakRecord& peak = Item(peaks.Peak, i);
        if (peak.Position - peak.Width < channel && channel < peak.Position + peak.Width) return i;
    }
    return -1;
}

RegionCount CountPeakInRegion(const PeakTable& peaks, int start, int end) {
    RegionCount found;
    for (int i = 0; i < peaks.PeakNum; ++i) {
        const double position = Item(peaks.Peak, i).Position;
        if (!(static_cast<double>(start) <= position && position <= static_cast<double>(end)))
            continue;
        if (found.Count == 0) found.First = static_cast<std::uint16_t>(i);
        ++found.Count;
    }
    return found;
}

std::optional<PeakJump> JumpPeak(const PeakTable& peaks, int channel, int direction) {
    const auto key = [&peaks](int i) { return ChannelOf(Item(peaks.Peak, i).Position); };
    const int index = NeighbourOf(peaks.PeakNum, channel, direction, key);
    if (!IsRow(peaks, index)) return std::nullopt;
    return PeakJump{
        .Index = index, .Channel = key(index), .Position = Item(peaks.Peak, index).Position};
}

void CalcIntensity(const SpectrumData& spectrum, PeakTable& peaks, int index) {
    if (!IsRow(peaks, index)) return;
    PeakRecord& peak = Item(peaks.Peak, index);
    const std::array<double, 4> shape = ShapeOf(peak, (1.0 - peak.GaussRatio) * peak.Amplitude);
    double sum = 0.0;
    int status = 0;
    for (int channel = 0; channel < spectrum.DataNo; ++channel)
        sum += MixValue(static_cast<double>(channel), shape, 4, status);
    peak.Intensity = sum;
}

void AdjustRegions(int window, int slot, int first, int last, const SpectrumData& spectrum,
                   PeakTable& peaks, const Marks& marks) {
    for (int k = first; k < last; ++k) {
        EraseMark(window, slot, k, peaks, marks);
        EraseMark(window, slot, k + 1, peaks, marks);
        PeakRecord& left = Item(peaks.Peak, k);
        PeakRecord& right = Item(peaks.Peak, k + 1);
        if (left.EndCh <= right.StartCh) continue;
        const std::int16_t from = ChannelOf(left.Position);
        const std::int16_t to = ChannelOf(right.Position);
        if (to < 0 || to >= MAX_CHANNELS) continue;  // no count stands there to part them by
        std::int16_t best = left.EndCh;
        std::int32_t lowest = Item(spectrum.Count, to);
        for (std::int16_t b = std::max<std::int16_t>(from, 1); b <= to; ++b) {
            // The boundary b is judged by the count one channel to its left; so it stays. Channel 0
            // has none to its left and is no boundary.
            const std::int32_t count = Item(spectrum.Count, b - 1);
            if (count >= lowest) continue;
            lowest = count;
            best = b;
        }
        left.EndCh = Int16(best) - Int16(1);
        right.StartCh = best;
    }
}

void MakeFitGraph(const SpectrumData& source, const PeakTable& peaks, SpectrumData& target,
                  std::uint16_t index, int count) {
    if (index != ALL_BITS) {
        if (IsRow(peaks, index)) AddCurve(Item(peaks.Peak, index), target, count);
        return;
    }
    target.DataNo = source.DataNo;
    target.Count.fill(0);
    for (int i = 0; i < peaks.PeakNum; ++i) AddCurve(Item(peaks.Peak, i), target, count);
}

}  // namespace vael
