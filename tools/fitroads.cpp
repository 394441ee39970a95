// The roads of a spectrum into the two fitters, as the commands of the main view take them.
#include "fitroads.h"

#include "analysis/backgraund.h"
#include "analysis/calc.h"
#include "analysis/calwavesprit.h"
#include "analysis/peak.h"
#include "core/fault.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>

namespace vael::tools {

SpectrumData AboveBackground(const SpectrumData& raw) {
    SpectrumData data = raw;
    SmoothingData(0, data.Count, data.DataNo);
    SpectrumData background = data;
    BackGraund(20, 5, background.Count, background.DataNo, Talk{});
    for (std::size_t i = 0; i < static_cast<std::size_t>(data.DataNo); ++i)
        data.Count[i] = std::max(0, data.Count[i] - background.Count[i]);
    return data;
}

ExpressResult ExpressFitAll(const SpectrumData& data, int type, int thres) {
    ExpressResult result;
    const Marks marks;
    Talk talk;
    talk.say = [&result](std::string_view, std::string_view) { result.TooMany = true; };
    // 1. The search over the whole axis; overlapping regions part at the valley.
    std::vector<PeakRecord> found;
    if (PeakSearch(data, 0, data.DataNo, thres, static_cast<std::int16_t>(type), found, talk) != 1)
        return result;
    const auto table = std::make_unique<PeakTable>();
    for (const PeakRecord& record : found)
        static_cast<void>(AddPeak(0, 0, 0, record, *table, marks));
    AdjustRegions(0, 0, 0, table->PeakNum - 1, data, *table, marks);
    result.Searched = table->PeakNum;
    // 2. One fit a peak, with a constant background always and a slope never.
    std::array<std::uint16_t, MAX_PEAKS> stands{};
    for (int k = 0; k < table->PeakNum; ++k) {
        const PeakRecord searched = Item(table->Peak, k);
        FitOutcome outcome =
            FitOnePeak(data, *table, k, type, type == SHAPE_MIX ? 5 : 4, stands, Talk{});
        const auto at = static_cast<std::size_t>(k);
        // 3. What cannot stand goes.
        if (stands[at] != 0)
            result.Peaks.push_back({.Record = table->Peak[at], .Outcome = std::move(outcome)});
        else
            result.Refused.push_back(searched);
    }
    return result;
}

}  // namespace vael::tools
