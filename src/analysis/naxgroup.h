// The settings of a NAX run as tables, the candidates of its search, and the fit of one group.
#pragma once

#include "analysis/naxfit.h"
#include "analysis/naxwalk.h"
#include "core/talk.h"

#include <array>
#include <span>
#include <vector>

namespace vael {

inline constexpr int NAX_GROUP_PEAKS = 10;  // peaks of one group: three unknowns each

/// Settings of a run by their entry, as the search and the fit read them.
struct NaxTables {
    std::array<int, 11> NaxIntParam{};
    std::array<double, 15> NaxRealParam{};
    NaxFilledIn Filled;
};
[[nodiscard]] NaxTables MakeTables(const NaxSettings& settings, const SpectrumData& spectrum);

/// What the search found: 1-based position, height of the counts there, full width.
struct NaxCandidate {
    double Position = 0.0;
    double Height = 0.0;
    double Width = 0.0;
};

/// The points at hand: consecutive channels and their counts.
struct NaxPoints {
    std::span<const double> X;
    std::span<const double> Y;
};

/// The channels that a group may use: its region, and positions of the candidates next to it on
/// either side (0 where there is none), near which no background is taken.
struct NaxRegion {
    int From = 0;
    int To = 0;
    double LeftNeighbour = 0.0;
    double RightNeighbour = 0.0;
};

/// Fits the candidates (by rising position, at most 10) over the region and appends their rows, if
/// any is left, and the group to the result; the group's background goes into the state's image.
void NaxGroupFit(std::span<const NaxCandidate> candidates, const NaxRegion& region,
                 const NaxPoints& points, const NaxTables& tables, NaxState& state,
                 NaxResult& result, const Talk& talk);

}  // namespace vael
