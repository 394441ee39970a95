// The matrices of the single-peak fit: inversion with full pivoting, and orthogonal columns.
#pragma once

#include <array>
#include <cstddef>

namespace vael {

inline constexpr std::size_t FIT_CHANNELS = 500;     // points of one fit at most
inline constexpr std::size_t FIT_COEFFICIENTS = 10;  // room of every coefficient vector

/// Rows of the design below the data: one for each coefficient, which hold the damping.
inline constexpr std::size_t FIT_ROWS = FIT_CHANNELS + FIT_COEFFICIENTS;

using FitVector = std::array<double, FIT_COEFFICIENTS>;
using FitMatrix = std::array<FitVector, FIT_COEFFICIENTS>;
using FitColumns = std::array<std::array<double, FIT_ROWS>, FIT_COEFFICIENTS>;

/// Replaces the leading m by m block of `a` by its inverse: Gauss and Jordan's elimination with
/// full pivoting, the first of equal pivots in the order of rows, then columns. Swaps negate one of
/// the two lines, so that `det` keeps its sign. `det` is 0, and `a` of no use, when a pivot is 0.
void InvertMatrix(FitMatrix& a, std::size_t m, double& det);

/// What `QRDecomp` finds. Columns are counted from 0; a step's column is Pivot[step].
struct QRResult {
    FitMatrix R{};  // R[column][step]
    std::array<std::size_t, FIT_COEFFICIENTS> Pivot{};
    std::size_t Rank = 0;
};

/// Turns the first m columns of `b`, `rows` long, into orthonormal ones: modified Gram and
/// Schmidt's method with pivoting by what is left of a column, as a share of its first length (on
/// the first step by the length itself); the earliest of equals wins. It ends at the first column
/// of which 1e-10 or less is left: that one and those after it depend on the others, and `Rank` is
/// the number before it.
[[nodiscard]] QRResult QRDecomp(FitColumns& b, std::size_t rows, std::size_t m);

}  // namespace vael
