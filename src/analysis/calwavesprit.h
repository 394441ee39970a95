// Peaks for the Express mode: the search in a stretch of spectrum, and the split of a region.
#pragma once

#include "core/records.h"
#include "core/talk.h"

#include <cstdint>
#include <span>
#include <vector>

namespace vael {

inline constexpr int SPLIT_CHANNELS = 4096;      // of a region that is split, at most
inline constexpr double SPLIT_LIMIT = 200000.0;  // sum of squares below which a split is good
inline constexpr int SPLIT_PASSES = 20;
inline constexpr int SPLIT_REFUSED = -2;  // no region, or one that is too large

/// One find: height in smoothed counts, position in the local channels from 1, half width.
struct FoundPeak {
    double Height = 0.0;
    double Position = 0.0;
    double Width = 0.0;
};

/// What a candidate must have of height above its left foot times half width, for the setting's 1
/// (few peaks) to 20 (many). The jump between 9 and 10 is meant.
[[nodiscard]] double PeakThreshold(int thres);

/// Minima of the second derivative of the counts y that stand between two maxima; fewer than 9
/// channels have none. Counts are smoothed over five channels by the quadratic least-squares
/// weights of A. Savitzky and M. J. E. Golay, Anal. Chem. 36, 1627 (1964), the second derivative
/// over nine by theirs. `noise` becomes the sum of squares that the smoothing took away. There may
/// be more than the 100 that a table holds.
[[nodiscard]] std::vector<FoundPeak> FindPeaks(std::span<const std::int32_t> y, int thres,
                                               double& noise);

/// Fills records for the peaks found in the n channels from `start` (0-based), at most 100 (more
/// are said), each with a region of twice its half width to both sides; where there is none, one
/// record of the highest channel. Result 1, or 0 with no records for an n outside 1 to 8192.
/// Faults: Subscript (channels outside the spectrum's capacity).
[[nodiscard]] int PeakSearch(const SpectrumData& spectrum, int start, int n, int thres,
                             std::int16_t funcType, std::vector<PeakRecord>& peaks,
                             const Talk& talk);

/// Gauss and Newton's method on a sum of Gaussians over the local channels 1 to the size of y; p
/// holds height, centre and half width of each in turn and comes back refined. Undamped. Result 0
/// when the sum of squares went below `limit`, -1 after 20 passes, the number of a fault that ended
/// it (logged and said; p as it stands).
int WaveSolve(std::span<const double> y, std::span<double> p, double limit, const Talk& talk);

/// Splits the n channels from `start` (0-based) into the peaks, as Gaussians above the line through
/// the region's two ends, and writes back those whose centre is below the region's last channel.
/// More than 4096 channels are said, and the peaks stay. Result: that of `WaveSolve`, or
/// SPLIT_REFUSED. Faults: Subscript (channels outside the spectrum's capacity).
int WaveSprit(const SpectrumData& spectrum, int start, int n, std::span<PeakRecord> peaks,
              const Talk& talk);

}  // namespace vael
