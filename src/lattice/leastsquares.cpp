// Lattice least squares: the cell of any crystal system from the matched reflections.
#include "lattice/leastsquares.h"

#include "core/fault.h"
#include "lattice/checkedmath.h"

#include <cmath>
#include <cstdlib>

namespace vael {
namespace {

constexpr float PIVOT_TOLERANCE = 0.0001F;
constexpr float HALF_DEGREE = 0.008726646F;  // radians: an angle over it is twice that angle

using Matrix = Table1<Table1<float, METRIC_COUNT>, METRIC_COUNT>;

int CountRows(const FitArrays& fit) {
    int rows = 0;
    while (rows < MAX_PEAKS && fit.FitHkl(rows + 1) != std::array<std::int16_t, 3>{}) ++rows;
    return rows;
}

/// Index i (1 to 3) of a row as a checked 16-bit number.
Int16 IndexOf(const FitArrays& fit, int row, int i) { return Item(fit.FitHkl(row), i - 1); }

float Product(Int16 a, Int16 b) { return static_cast<float>(static_cast<std::int16_t>(a * b)); }

/// The multipliers of the solved parameters, and how the six metric parameters hang on them.
/// Returns the number of solved parameters.
int BuildDesign(FitArrays& fit, int rows) {
    const int system = fit.SystemNumber;
    auto& map = fit.Map;
    for (int row = 1; row <= rows; ++row)
        for (int i = 1; i <= 3; ++i) fit.DesignRow(row)(i) = 0.0F;
    int np = 0;
    for (int i = 1; i <= 3; ++i) {
        if (map(i) < 1) {
            map(i) = static_cast<std::int16_t>(-np);  // follows the last free axis
        } else {
            map(i) = static_cast<std::int16_t>(++np);
        }
        for (int row = 1; row <= rows; ++row) {
            const Int16 index = IndexOf(fit, row, i);
            fit.DesignRow(row)(np) += Product(index, index);
        }
    }
    if (system == 3) {
        map(6) = -1;
        for (int row = 1; row <= rows; ++row)
            fit.DesignRow(row)(1) += Product(IndexOf(fit, row, 1), IndexOf(fit, row, 2));
    }
    if (system == 5 || system == 6) {
        np += system == 6 ? 2 : 1;
        map(5) = static_cast<std::int16_t>(np);
        for (int row = 1; row <= rows; ++row)
            fit.DesignRow(row)(np) = Product(IndexOf(fit, row, 1), IndexOf(fit, row, 3));
    }
    if (system == 6) {
        ++np;
        map(4) = 4;
        map(6) = 6;
        for (int row = 1; row <= rows; ++row) {
            fit.DesignRow(row)(4) = Product(IndexOf(fit, row, 2), IndexOf(fit, row, 3));
            fit.DesignRow(row)(6) = Product(IndexOf(fit, row, 1), IndexOf(fit, row, 2));
        }
    }
    return np;
}

void CalculateRows(FitArrays& fit, int rows, int np, const Table1<float, METRIC_COUNT>& param) {
    for (int row = 1; row <= rows; ++row) {
        float s = 0.0F;
        for (int j = 1; j <= np; ++j) s += fit.DesignRow(row)(j) * param(j);
        if (!(s > 0.0F))
            throw Fault(FaultNumber::Argument, "The solved cell has no d for a reflection.");
        const float dCal = 1.0F / std::sqrt(s);
        fit.FitDCal(row) = dCal;
        const float f = fit.FitWavelength / 2.0F / dCal;
        const float rest = 1.0F - f * f;
        if (rest > 0.0F) fit.Fit2Theta(row) = std::atan(f / std::sqrt(rest)) / HALF_DEGREE;
        float delta = fit.FitDObs(row) / dCal - 1.0F;
        if (delta == -1.0F) delta = 0.0F;
        fit.FitDelta(row) = delta;
    }
}

/// Lower triangle by sums, upper one copied.
Matrix NormalMatrix(int n, int m, const DesignTable& x) {
    Matrix normal;
    for (int r = 1; r <= n; ++r)
        for (int c = 1; c <= r; ++c) {
            float sum = 0.0F;
            for (int j = 1; j <= m; ++j) sum += x(j)(r) * x(j)(c);
            normal(r)(c) = sum;
            normal(c)(r) = sum;
        }
    return normal;
}

/// Inverse of `normal` in `inverse` (the identity at the start) by elimination with row pivots and
/// back substitution. False when a pivot is at or below the tolerance.
bool Invert(int n, float tolerance, Matrix& normal, Matrix& inverse) {
    for (int c = 1; c < n; ++c) {
        int pivot = c;
        for (int r = c + 1; r <= n; ++r)
            if (std::fabs(normal(r)(c)) > std::fabs(normal(pivot)(c))) pivot = r;
        if (!(std::fabs(normal(pivot)(c)) > tolerance)) return false;
        if (pivot != c) {
            std::swap(normal(pivot), normal(c));
            std::swap(inverse(pivot), inverse(c));
        }
        for (int r = c + 1; r <= n; ++r) {
            const float factor = normal(r)(c) / normal(c)(c);
            for (int j = c; j <= n; ++j) normal(r)(j) -= factor * normal(c)(j);
            for (int j = 1; j <= n; ++j) inverse(r)(j) -= factor * inverse(c)(j);
        }
    }
    if (!(std::fabs(normal(n)(n)) > tolerance)) return false;
    for (int column = 1; column <= n; ++column)
        for (int r = n; r >= 1; --r) {
            float value = inverse(r)(column);
            for (int j = r + 1; j <= n; ++j) value -= normal(r)(j) * inverse(j)(column);
            inverse(r)(column) = value / normal(r)(r);
        }
    return true;
}

/// Partners of axis or angle i = 1 to 3, in cyclic order: 2 3, 3 1, 1 2.
int NextOf(int i) { return i % 3 + 1; }

}  // namespace

void LoadFitArrays(LatticeState& state, std::int16_t system) {
    FitArrays& fit = state.Fit;
    fit = {};
    fit.SystemNumber = static_cast<std::int16_t>(Int16(system) + Int16(1));
    int row = 0;
    for (const ReflectionMatch& match : state.FitData.Match) {
        if (match.Matched != TRUE_WORD || match.Excluded != FALSE_WORD) continue;
        ++row;
        fit.FitHkl(row) = {match.H, match.K, match.L};
        fit.FitDObs(row) = Single(match.DObs);
        fit.FitTheta(row) = Single(match.ThetaCu);
        fit.FitWeight(row) = 1.0F;
    }
}

int CellRefine(LatticeState& state, const Talk& talk, LatticeSolution& solution) {
    FitArrays& fit = state.Fit;
    // 1. Rows, weights and flags.
    const int rows = CountRows(fit);
    fit.Map = {};
    fit.Map(1) = 1;
    for (int row = 1; row <= rows; ++row) {
        if (fit.FitWeight(row) <= 0.0F) fit.FitWeight(row) = 1.0F;
        fit.FitFlag(row) = 1;
        if (!(fit.FitTheta(row) > 0.0F)) {
            fit.FitFlag(row) = 2;
            fit.FitWeight(row) = 0.0F;
        }
    }
    // 2. Free axes, and the design of all rows.
    if (fit.SystemNumber > 1) fit.Map(3) = 1;
    if (fit.SystemNumber > 3) fit.Map(2) = 1;
    const int np = BuildDesign(fit, rows);
    // 3. Observations.
    int m = 0;
    Table1<float, MAX_PEAKS> y;
    DesignTable x;
    for (int row = 1; row <= rows; ++row) {
        if (fit.FitFlag(row) == 2) continue;
        ++m;
        const float w = fit.FitWeight(row);
        y(m) = Single(Quot(Quot(w, fit.FitDObs(row)), fit.FitDObs(row)));
        for (int j = 1; j <= np; ++j) x(m)(j) = fit.DesignRow(row)(j) * w;
    }
    if (m < np) {
        talk.say("計算するための回折線の数が少なすぎます。", "");
        return REFINE_TOO_FEW;
    }
    // 4. The solution, and its cell.
    LatticeSolution found;
    found.ParamNum = np;
    SolveLeastSquares(PIVOT_TOLERANCE, np, m, y, x, found.Param, found.ParamErr, state.FitFailed,
                      talk);
    if (state.FitFailed == 1) return REFINE_SINGULAR;
    Table1<float, METRIC_COUNT> p;
    for (int j = 1; j <= METRIC_COUNT; ++j)
        if (fit.Map(j) != 0) p(j) = found.Param(std::abs(fit.Map(j)));
    if (!ConvertCell(p, found.ParamErr, found.CellOut, found.CellErr, fit.Map, np))
        state.FitFailed = 2;
    if (state.FitFailed == 2) return REFINE_CONVERSION;
    // 5. What the solved cell says of each row.
    CalculateRows(fit, rows, np, found.Param);
    solution = found;
    return REFINE_OK;
}

void SolveLeastSquares(float tolerance, int n, int& m, const Table1<float, MAX_PEAKS>& y,
                       const DesignTable& x, Table1<float, METRIC_COUNT>& b,
                       Table1<float, METRIC_COUNT>& s, std::int16_t& failed, const Talk& talk) {
    Table1<float, METRIC_COUNT> g;
    for (int i = 1; i <= n; ++i)
        for (int j = 1; j <= m; ++j) g(i) += y(j) * x(j)(i);
    Matrix normal = NormalMatrix(n, m, x);
    Matrix q;
    for (int i = 1; i <= n; ++i) q(i)(i) = 1.0F;
    if (n == 1) {
        q(1)(1) = Single(Quot(1.0, normal(1)(1)));
    } else if (!Invert(n, tolerance, normal, q)) {
        talk.say("最小二乗が計算できません", "");
        m = 0;
        failed = 1;
        return;
    }
    for (int i = 1; i <= n; ++i) {
        b(i) = 0.0F;
        for (int j = 1; j <= n; ++j) b(i) += q(i)(j) * g(j);
        s(i) = 0.0F;
    }
    if (m <= n) return;
    float residual = 0.0F;
    for (int j = 1; j <= m; ++j) {
        float rest = y(j);
        for (int i = 1; i <= n; ++i) rest -= x(j)(i) * b(i);
        residual += rest * rest;
    }
    residual /= static_cast<float>(m - n);
    for (int i = 1; i <= n; ++i) s(i) = std::sqrt(std::fabs(residual * q(i)(i)));
}

bool ConvertCell(const Table1<float, METRIC_COUNT>& p, const Table1<float, METRIC_COUNT>& e,
                 Table1<float, CELL_COUNT>& cell, Table1<float, CELL_COUNT>& cellErr,
                 const Table1<std::int16_t, METRIC_COUNT>& map, int paramNum) {
    // 1. The reciprocal cell: edges r, cosines u and sines of its angles.
    Table1<float, 3> r, u, sine;
    for (int i = 1; i <= 3; ++i) {
        if (!(p(i) > 0.0F)) return false;
        r(i) = std::sqrt(p(i));
    }
    float square = 1.0F;
    for (int i = 1; i <= 3; ++i) {
        const float divisor = r(NextOf(i)) * r(NextOf(NextOf(i)));
        if (divisor == 0.0F) return false;
        u(i) = p(i + 3) * 0.5F / divisor;
        const float rest = 1.0F - u(i) * u(i);
        if (!(rest > 0.0F)) return false;  // its sine divides below
        sine(i) = std::sqrt(rest);
        square -= u(i) * u(i);
    }
    square += 2.0F * u(1) * u(2) * u(3);
    if (!(square > 0.0F)) return false;
    const float v = std::sqrt(square);
    // 2. The direct cell.
    for (int i = 1; i <= 3; ++i) {
        const int j = NextOf(i);
        const int k = NextOf(j);
        cell(i) = sine(i) / (v * r(i));
        cell(i + 3) = (u(j) * u(k) - u(i)) / (sine(j) * sine(k));
    }
    const float reciprocal = r(1) * r(2) * r(3) * v;
    if (reciprocal == 0.0F) return false;
    cell(7) = 1.0F / reciprocal;
    // 3. Derivatives of the outputs by r(1..3), u(1..3).
    Table1<Table1<float, METRIC_COUNT>, CELL_COUNT> byCell;
    for (int n = 1; n <= 3; ++n) {
        const int j = NextOf(n);
        const int k = NextOf(j);
        const float dv = (u(j) * u(k) - u(n)) / v;  // of v by u(n)
        byCell(n)(n) = -cell(n) / r(n);
        byCell(7)(n) = -cell(7) / r(n);
        byCell(7)(n + 3) = -cell(7) / v * dv;
        for (int i = 1; i <= 3; ++i) byCell(i)(n + 3) = -cell(i) / v * dv;
        byCell(n)(n + 3) -= u(n) / sine(n) / (v * r(n));
        byCell(n + 3)(n + 3) = -1.0F / (sine(j) * sine(k));
        byCell(n + 3)(j + 3) =
            u(k) / (sine(j) * sine(k)) + cell(n + 3) * u(j) / (sine(j) * sine(j));
        byCell(n + 3)(k + 3) =
            u(j) / (sine(j) * sine(k)) + cell(n + 3) * u(k) / (sine(k) * sine(k));
    }
    // 4. Derivatives of r and u by p.
    Table1<Table1<float, METRIC_COUNT>, METRIC_COUNT> byParam;
    for (int i = 1; i <= 3; ++i) {
        const int j = NextOf(i);
        const int k = NextOf(j);
        byParam(i)(i) = 0.5F / r(i);
        byParam(i + 3)(i + 3) = 0.5F / (r(j) * r(k));
        byParam(i + 3)(j) = -0.5F * u(i) / p(j);
        byParam(i + 3)(k) = -0.5F * u(i) / p(k);
    }
    // 5. Chained, with the parameters that hang together in one column.
    for (int row = 1; row <= CELL_COUNT; ++row) {
        Table1<float, METRIC_COUNT> bySolved;
        for (int j = 1; j <= METRIC_COUNT; ++j) {
            if (map(j) == 0) continue;
            float sum = 0.0F;
            for (int i = 1; i <= METRIC_COUNT; ++i) sum += byCell(row)(i) * byParam(i)(j);
            bySolved(std::abs(map(j))) += sum;
        }
        float sum = 0.0F;
        for (int n = 1; n <= paramNum; ++n) {
            const float term = bySolved(n) * e(n);
            sum += term * term;
        }
        cellErr(row) = std::sqrt(sum);
    }
    return true;
}

int LatticeSolve(LatticeState& state, std::int16_t system, std::int16_t crystalIndex,
                 const Cell& cell, const MatchSource& source, const Talk& talk,
                 LatticeSolution& solution, int* refined) {
    CrystalRecord& crystal = Item(state.Table.Crystals, crystalIndex);
    crystal.System = system;
    CalcDSpacings(crystal, cell);
    MatchPeaks(state, crystal, cell, source);
    CarryUseList(state);
    LoadFitArrays(state, system);
    const int result = CellRefine(state, talk, solution);
    if (refined != nullptr) *refined = result;
    return result == REFINE_OK ? 0 : -1;
}

}  // namespace vael
