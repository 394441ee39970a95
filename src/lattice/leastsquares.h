// Lattice least squares: the cell of any crystal system from the matched reflections.
#pragma once

#include "core/talk.h"
#include "lattice/geometry.h"

namespace vael {

/// Results of CellRefine.
inline constexpr int REFINE_OK = 0;
inline constexpr int REFINE_SINGULAR = 1;    // "最小二乗が計算できません" was said
inline constexpr int REFINE_CONVERSION = 2;  // the parameters are no cell; nothing is said
inline constexpr int REFINE_TOO_FEW = -1;  // "計算するための回折線の数が少なすぎます。" was said

/// Matches and refines: stores `system` into the crystal (index 0 to 30), computes its d from
/// `cell`, matches the peaks, carries the use list, loads the fit arrays and refines. 0 on success,
/// -1 on failure; `refined` receives CellRefine's own result. Callers clear state.FitFailed first.
/// Faults: Subscript, and those of the geometry.
[[nodiscard]] int LatticeSolve(LatticeState& state, std::int16_t system, std::int16_t crystalIndex,
                               const Cell& cell, const MatchSource& source, const Talk& talk,
                               LatticeSolution& solution, int* refined = nullptr);

/// Clears the work arrays and fills them from the rows that are matched and in use, in row order.
void LoadFitArrays(LatticeState& state, std::int16_t system);

/// Refines the loaded rows: 1/d^2 is linear in (a*^2, b*^2, c*^2, 2 b*c*cos alpha*, 2 a*c*cos
/// beta*, 2 a*b*cos gamma*), so one pass of unweighted normal equations solves it. `solution` is
/// written on success only. Faults: Overflow for indices above 181, whose squares leave 16 bits.
[[nodiscard]] int CellRefine(LatticeState& state, const Talk& talk, LatticeSolution& solution);

using DesignTable = Table1<Table1<float, METRIC_COUNT>, MAX_PEAKS>;

/// b and its standard errors s from m observations y and n columns of X by normal equations and
/// elimination with row pivots, in 4-byte floats. A pivot at or below `tolerance` sets failed = 1
/// and m = 0 and says so; n = 1 has no such test. s is 0 when m = n.
void SolveLeastSquares(float tolerance, int n, int& m, const Table1<float, MAX_PEAKS>& y,
                       const DesignTable& x, Table1<float, METRIC_COUNT>& b,
                       Table1<float, METRIC_COUNT>& s, std::int16_t& failed, const Talk& talk);

/// Direct cell and volume of six metric parameters `p`, with errors to first order from the errors
/// `e` of the solved ones. Angles are cosines, going in and coming out, and so are their errors.
/// False when a square of an axis is not positive, a root is negative or a divisor is zero.
[[nodiscard]] bool ConvertCell(const Table1<float, METRIC_COUNT>& p,
                               const Table1<float, METRIC_COUNT>& e,
                               Table1<float, CELL_COUNT>& cell, Table1<float, CELL_COUNT>& cellErr,
                               const Table1<std::int16_t, METRIC_COUNT>& map, int paramNum);

}  // namespace vael
