// Numeric helpers, the three peak shapes and the smoothing filter.
#include "analysis/calc.h"

#include "core/fault.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace vael {
namespace {

constexpr double PI_CALC = 3.14159265358979;
constexpr double LN2 = 0.69314718055994530942;
constexpr double EXPONENT_LIMIT = 400.0;
constexpr double LEAST_HALF_WIDTH = 1e-150;  // its square is still a number that divides
constexpr double LARGEST_COUNT = 9999999.0;

struct SmoothingRow {
    std::int16_t Half;  // half width: the filter spans 2 Half + 1 channels
    std::array<double, 11> Weight;
    double Divisor;
};

/// Rows 1 to 3 are the quadratic least-squares smoothing weights (A. Savitzky, M. J. E. Golay,
/// Anal. Chem. 36, 1627 (1964)); row 0 is the binomial filter on purpose, not their five-point row.
constexpr std::array<SmoothingRow, 4> SMOOTHING{{
    {2, {1, 4, 6, 4, 1}, 16},
    {3, {-2, 3, 6, 7, 6, 3, -2}, 21},
    {4, {-21, 14, 39, 54, 59, 54, 39, 14, -21}, 231},
    {5, {-36, 9, 44, 69, 84, 89, 84, 69, 44, 9, -36}, 429},
}};

/// True, with the fault's number, for a half width that cannot divide or a value on the way that
/// left the finite range.
bool Fails(double halfWidth, double value, int& status) {
    if (halfWidth == 0.0) {
        status = static_cast<int>(FaultNumber::Division);
        return true;
    }
    if (std::fabs(halfWidth) < LEAST_HALF_WIDTH || !std::isfinite(value)) {
        status = static_cast<int>(FaultNumber::Overflow);
        return true;
    }
    return false;
}

}  // namespace

double MaxValue(double a, double b) { return a <= b ? b : a; }
double MinValue(double a, double b) { return a >= b ? b : a; }

double DegToRad(double degrees) { return degrees * PI_CALC / 180.0; }

double Log10Value(double& x) {
    if (x <= 0.0) x = 1.0;
    return std::log(x) / std::log(10.0);
}

double LineValue(double x, std::span<const double> c) { return Item(c, 0) + Item(c, 1) * x; }

double GaussValue(double x, std::span<const double> a, int n, int& status) {
    const double d = x - Item(a, 1);
    const double half = Item(a, 2);
    const double t = -LN2 * (d * d) / (half * half);
    if (Fails(half, t, status)) return 0.0;
    if (std::fabs(t) >= EXPONENT_LIMIT) return n >= 4 ? Item(a, 3) : 0.0;
    double value = Item(a, 0) * std::exp(t);
    if (n >= 4) value += Item(a, 3);
    if (n == 5) value += Item(a, 4) * x;
    return Fails(half, value, status) ? 0.0 : value;
}

double LorentzValue(double x, std::span<const double> a, int n, int& status) {
    const double half = Item(a, 2);
    const double u = (x - Item(a, 1)) / half;
    if (Fails(half, u * u, status)) return 0.0;
    double value = Item(a, 0) / (1.0 + u * u);
    if (n >= 4) value += Item(a, 3);
    if (n == 5) value += Item(a, 4) * x;
    return Fails(half, value, status) ? 0.0 : value;
}

double MixValue(double x, std::span<const double> a, int n, int& status) {
    // The background belongs to the Gaussian term alone.
    const std::array<double, 5> gauss{Item(a, 0), Item(a, 1), Item(a, 2), n >= 5 ? Item(a, 4) : 0.0,
                                      n >= 6 ? Item(a, 5) : 0.0};
    const std::array<double, 3> lorentz{Item(a, 3), Item(a, 1), Item(a, 2)};
    const double value = GaussValue(x, gauss, n - 1, status);
    return value + LorentzValue(x, lorentz, 3, status);
}

void SmoothingData(int index, std::span<std::int32_t> data, std::int16_t n) {
    const SmoothingRow& row = Item(SMOOTHING, index);
    const int half = row.Half;
    if (n <= 2 * half) return;  // no channel has a full window: all stay raw
    static_cast<void>(Item(data, n - 1));
    std::vector<std::int32_t> work(data.begin(), data.begin() + n);
    for (int i = half; i <= n - half - 1; ++i) {
        double sum = 0.0;
        for (int j = i - half; j <= i + half; ++j)
            sum += row.Weight[static_cast<std::size_t>(j - i + half)] *
                   static_cast<double>(data[static_cast<std::size_t>(j)]);
        sum /= row.Divisor;
        if (sum < 0.0) sum = 0.0;
        if (sum > LARGEST_COUNT) sum = LARGEST_COUNT;
        work[static_cast<std::size_t>(i)] = Whole32(sum);
    }
    std::copy(work.begin(), work.end(), data.begin());
}

}  // namespace vael
