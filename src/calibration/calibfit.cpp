// The curves of the energy calibration: a line or a parabola through pairs of channel and energy.
#include "calibration/calibfit.h"

#include "analysis/backgraund.h"
#include "core/fault.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace vael {
namespace {

constexpr std::size_t UNKNOWNS = 3;
constexpr double EV_PER_KEV = 1000.0;

/// The matrix row by row, the right side behind it.
using Row = std::array<double, UNKNOWNS + 1>;
using Matrix = std::array<Row, UNKNOWNS>;

/// Sums of the normal equations in the order of the unknowns C, B, A.
Matrix NormalMatrix(std::span<const double> x, std::span<const double> y, int n) {
    double sx = 0.0;
    double sx2 = 0.0;
    double sx3 = 0.0;
    double sx4 = 0.0;
    double sy = 0.0;
    double sxy = 0.0;
    double sx2y = 0.0;
    for (int i = 0; i < n; ++i) {
        const double xi = Item(x, i);
        const double yi = Item(y, i);
        sx += xi;
        sx2 += xi * xi;
        sx3 += xi * xi * xi;
        sx4 += xi * xi * xi * xi;
        sy += yi;
        sxy += xi * yi;
        sx2y += xi * xi * yi;
    }
    return {{{sx4, sx3, sx2, sx2y}, {sx3, sx2, sx, sxy}, {sx2, sx, static_cast<double>(n), sy}}};
}

/// The solution of a system of three equations; result 1 with a zero scale or pivot, 2 where it is
/// no number.
int Solve(Matrix m, std::array<double, UNKNOWNS>& out) {
    std::array<double, UNKNOWNS> scale{};
    for (std::size_t row = 0; row < UNKNOWNS; ++row) {
        for (std::size_t k = 0; k < UNKNOWNS; ++k)
            scale[row] = std::max(scale[row], std::fabs(m[row][k]));
        if (scale[row] == 0.0) return 1;
        if (!std::isfinite(scale[row])) return 2;
    }
    for (std::size_t k = 0; k < UNKNOWNS; ++k) {
        std::size_t pivot = k;
        for (std::size_t row = k + 1; row < UNKNOWNS; ++row)
            if (std::fabs(m[row][k]) / scale[row] > std::fabs(m[pivot][k]) / scale[pivot])
                pivot = row;
        if (m[pivot][k] == 0.0) return 1;
        std::swap(m[pivot], m[k]);
        std::swap(scale[pivot], scale[k]);
        for (std::size_t row = k + 1; row < UNKNOWNS; ++row) {
            const double factor = m[row][k] / m[k][k];
            for (std::size_t j = k; j <= UNKNOWNS; ++j) m[row][j] -= factor * m[k][j];
        }
    }
    for (std::size_t k = UNKNOWNS; k-- > 0;) {
        double sum = m[k][UNKNOWNS];
        for (std::size_t j = k + 1; j < UNKNOWNS; ++j) sum -= m[k][j] * out[j];
        out[k] = sum / m[k][k];
        if (!std::isfinite(out[k])) return 2;
    }
    return 0;
}

/// Different values among the first n. The determinant of the normal equations is 0 exactly where
/// there are fewer of them than unknowns; the rounding of its sums would hide that.
std::size_t DifferentOf(std::span<const double> x, int n) {
    std::set<double> seen;
    for (int i = 0; i < n; ++i) seen.insert(Item(x, i));
    return seen.size();
}

}  // namespace

int FitQuadratic(std::span<const double> x, std::span<const double> y, int n,
                 std::span<double, 3> c) {
    if (n < 1 || DifferentOf(x, n) < UNKNOWNS) return 1;
    std::array<double, UNKNOWNS> found{};  // C, B, A
    const int result = Solve(NormalMatrix(x, y, n), found);
    if (result != 0) return result;
    if (found[0] != 0.0) {
        // The vertex is held against one limit from both sides, so that it never refuses a curve;
        // it stays as such.
        constexpr double limit = 0.1;  // channels
        const double vertex = -found[1] / (2.0 * found[0]);
        if (vertex > limit && vertex < limit) return 1;
    }
    c[2] = found[0];
    c[1] = found[1];
    c[0] = found[2];
    return 0;
}

int FitCalibration(CalibCurveKind kind, std::span<const double> x, std::span<const double> y, int n,
                   CalibConstants& constants) {
    constants[2] = 0.0;
    if (kind == CalibCurveKind::Parabola) return FitQuadratic(x, y, n, constants);
    std::array<double, 2> line{};
    const int result = DifferentOf(x, n) < 2 ? 1 : FitLine(x, y, n, line);
    constants[0] = line[0];
    constants[1] = line[1];
    return result;
}

double ChannelBase(CalibCurveKind kind) { return kind == CalibCurveKind::Line ? 1.0 : 0.0; }

double CalibEnergy(const CalibConstants& constants, double channel) {
    return constants[0] + (constants[1] + constants[2] * channel) * channel;
}

CalibResiduals ResidualsOf(CalibCurveKind kind, const CalibConstants& constants,
                           std::span<const double> x, std::span<const double> y, int n) {
    CalibResiduals out;
    double squares = 0.0;
    for (int i = 0; i < n; ++i) {
        const double off =
            (Item(y, i) - CalibEnergy(constants, Item(x, i) + ChannelBase(kind))) * EV_PER_KEV;
        squares += off * off;
        if (out.Worst >= 0 && std::fabs(off) <= std::fabs(out.WorstBy)) continue;
        out.Worst = i;
        out.WorstBy = off;
    }
    if (n > 0) out.Rms = std::sqrt(squares / n);
    return out;
}

}  // namespace vael
