// The roads of a spectrum into the two fitters, as the commands of the main view take them.
#pragma once

#include "analysis/calfitting.h"
#include "core/records.h"

#include <vector>

namespace vael::tools {

/// What AutoFitting fits: the counts smoothed by five points, less their background (20 channels, 5
/// times), nothing below 0; all of it by the defaults of the settings.
[[nodiscard]] SpectrumData AboveBackground(const SpectrumData& raw);

/// One peak of the Express road that stood, with what its fit said. `Position` counts from 0.
struct ExpressPeak {
    PeakRecord Record;
    FitOutcome Outcome;
};

struct ExpressResult {
    std::vector<ExpressPeak> Peaks;  // by the order of the search
    int Searched = 0;  // peaks that the search put into the table, each of them fitted
    std::vector<PeakRecord> Refused;  // of these, those whose fit could not stand, as searched
    bool TooMany = false;             // the search found more than a table holds
};

/// The Express fit of every peak with the area cursor over the whole axis: search, regions parted,
/// one fit a peak, those that cannot stand taken away. `thres` is the setting `PeakThres` (1 to
/// 20), `type` the shape. The areas, which no fit looks at, are left out. Faults: those of the
/// search and the fits.
[[nodiscard]] ExpressResult ExpressFitAll(const SpectrumData& data, int type, int thres);

}  // namespace vael::tools
