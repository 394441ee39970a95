// Numeric helpers, the three peak shapes and the smoothing filter.
#pragma once

#include <cstdint>
#include <span>

namespace vael {

/// b if a <= b, otherwise a; and the other way round.
[[nodiscard]] double MaxValue(double a, double b);
[[nodiscard]] double MinValue(double a, double b);

/// Degrees to radians, with the system's fifteen digits of pi.
[[nodiscard]] double DegToRad(double degrees);

/// Common logarithm. An argument of 0 or less is first overwritten with 1 in the caller's variable:
/// the result is then 0.
[[nodiscard]] double Log10Value(double& x);

/// c[0] + c[1] x.
[[nodiscard]] double LineValue(double x, std::span<const double> c);

/// Shapes of a peak at the channel x. The coefficients stand in `a` from index 0, of which the
/// first n (3 to 5, Mix 4 to 6) are live:
///   Gauss, Lorentz: height, centre, half width at half maximum, constant, slope
///   Mix: Gaussian height, centre, half width, Lorentzian height, constant, slope
/// The constant counts from n = 4 on (Mix 5), the slope at n = 5 (Mix 6). Far from its centre
/// (exponent of 400) a Gaussian is its constant alone, without the slope. A floating failure does
/// not end the caller: the evaluation gives 0 and writes the fault's number (11 for a half width of
/// 0, 6 for one below 1e-150 and for an overflow, also inside the exponent) into `status`, which is
/// left alone otherwise.
[[nodiscard]] double GaussValue(double x, std::span<const double> a, int n, int& status);
[[nodiscard]] double LorentzValue(double x, std::span<const double> a, int n, int& status);
[[nodiscard]] double MixValue(double x, std::span<const double> a, int n, int& status);

/// Smooths the first n channels of `data` in place. `index` is that of the settings: 0 five points
/// to 3 eleven points; sums below 0 or above 9999999 are clipped, halves go to the even neighbour.
/// As many channels at each end as the filter's half width stay raw; with fewer channels than the
/// half width the data stay. Faults: Subscript (index outside 0 to 3, n beyond the data).
void SmoothingData(int index, std::span<std::int32_t> data, std::int16_t n);

}  // namespace vael
