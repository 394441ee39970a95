// The matrices of the single-peak fit: inversion with full pivoting, and orthogonal columns.
#include "analysis/fitmatrix.h"

#include <cmath>
#include <utility>

namespace vael {
namespace {

constexpr double LEAST_REMAINDER = 1e-10;

using Swaps = std::array<std::size_t, FIT_COEFFICIENTS>;

/// Row s takes the row `other`, which takes row s negated.
void SwapRows(FitMatrix& a, std::size_t m, std::size_t s, std::size_t other) {
    if (s == other) return;
    for (std::size_t j = 0; j < m; ++j) {
        const double kept = a[s][j];
        a[s][j] = a[other][j];
        a[other][j] = -kept;
    }
}

void SwapColumns(FitMatrix& a, std::size_t m, std::size_t s, std::size_t other) {
    if (s == other) return;
    for (std::size_t i = 0; i < m; ++i) {
        const double kept = a[i][s];
        a[i][s] = a[i][other];
        a[i][other] = -kept;
    }
}

void Eliminate(FitMatrix& a, std::size_t m, std::size_t s) {
    const double pivot = a[s][s];
    for (std::size_t i = 0; i < m; ++i)
        if (i != s) a[i][s] /= -pivot;
    for (std::size_t i = 0; i < m; ++i)
        for (std::size_t j = 0; j < m; ++j)
            if (i != s && j != s) a[i][j] += a[i][s] * a[s][j];
    for (std::size_t j = 0; j < m; ++j)
        if (j != s) a[s][j] /= pivot;
    a[s][s] = 1.0 / pivot;
}

double Length(const std::array<double, FIT_ROWS>& column, std::size_t rows) {
    double sum = 0.0;
    for (std::size_t i = 0; i < rows; ++i) sum += column[i] * column[i];
    return std::sqrt(sum);
}

/// The candidate for a step: its place among the pivots, its length, and what is left of it.
struct Candidate {
    std::size_t Place;
    double Length = 0.0;
    double Left = 0.0;
};

Candidate BestColumn(const FitColumns& b, std::size_t rows, std::size_t m, std::size_t step,
                     const QRResult& found, FitVector& first) {
    Candidate best{.Place = step};
    for (std::size_t t = step; t < m; ++t) {
        const std::size_t c = found.Pivot[t];
        const double length = Length(b[c], rows);
        // A column of zeros has nothing left at any step.
        const double left = first[c] > 0.0 ? length / first[c] : 0.0;
        if (step == 0) first[c] = length;
        if (step + 1 < m && !(left > best.Left)) continue;
        best = {.Place = t, .Length = length, .Left = left};
    }
    return best;
}

}  // namespace

void InvertMatrix(FitMatrix& a, std::size_t m, double& det) {
    // 1. Nothing is swapped yet.
    Swaps rows{};
    Swaps columns{};
    det = 1.0;
    for (std::size_t s = 0; s < m; ++s) {
        // 2. The largest element of what is left, the first of equals.
        double best = 0.0;
        for (std::size_t i = s; i < m; ++i) {
            for (std::size_t j = s; j < m; ++j) {
                if (!(std::fabs(a[i][j]) - best > 0.0)) continue;
                best = std::fabs(a[i][j]);
                rows[s] = i;
                columns[s] = j;
            }
        }
        // 3. None: singular.
        if (best == 0.0) {
            det = 0.0;
            return;
        }
        // 4. and 5. It comes to the diagonal, and its lines are eliminated.
        SwapRows(a, m, s, rows[s]);
        SwapColumns(a, m, s, columns[s]);
        det *= a[s][s];
        Eliminate(a, m, s);
    }
    // 6. The inverse of a matrix with swapped rows has swapped columns, and the other way round.
    for (std::size_t s = m; s-- > 0;) {
        SwapColumns(a, m, rows[s], s);
        SwapRows(a, m, columns[s], s);
    }
}

QRResult QRDecomp(FitColumns& b, std::size_t rows, std::size_t m) {
    QRResult found;
    FitVector first;
    first.fill(1.0);
    for (std::size_t c = 0; c < m; ++c) found.Pivot[c] = c;
    for (std::size_t s = 0; s < m; ++s) {
        const Candidate best = BestColumn(b, rows, m, s, found, first);
        std::swap(found.Pivot[s], found.Pivot[best.Place]);
        const std::size_t p = found.Pivot[s];
        if (!(best.Left > LEAST_REMAINDER)) {
            for (std::size_t t = s; t < m; ++t)
                for (std::size_t u = s; u < m; ++u) found.R[found.Pivot[t]][u] = 0.0;
            return found;
        }
        found.R[p][s] = best.Length;
        ++found.Rank;
        for (std::size_t i = 0; i < rows; ++i) b[p][i] /= best.Length;
        for (std::size_t t = s + 1; t < m; ++t) {
            const std::size_t c = found.Pivot[t];
            double inner = 0.0;
            for (std::size_t i = 0; i < rows; ++i) inner += b[c][i] * b[p][i];
            found.R[c][s] = inner;
            for (std::size_t i = 0; i < rows; ++i) b[c][i] -= inner * b[p][i];
        }
    }
    return found;
}

}  // namespace vael
