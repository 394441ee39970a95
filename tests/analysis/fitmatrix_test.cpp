// Inversion and orthogonal columns of the single-peak fit, against products worked out again.
#include "analysis/fitmatrix.h"

#include "analysis/seeded.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace vael;

namespace {

FitMatrix SeededMatrix(seeded::Generator& random, std::size_t m) {
    FitMatrix a{};
    for (std::size_t i = 0; i < m; ++i)
        for (std::size_t j = 0; j < m; ++j) a[i][j] = random.Between(-1.0, 1.0);
    return a;
}

/// Determinant by minors along the first row.
double ByMinors(const FitMatrix& a, std::size_t m) {
    if (m == 1) return a[0][0];
    double sum = 0.0;
    for (std::size_t c = 0; c < m; ++c) {
        FitMatrix minor{};
        for (std::size_t i = 1; i < m; ++i)
            for (std::size_t j = 0, to = 0; j < m; ++j)
                if (j != c) minor[i - 1][to++] = a[i][j];
        sum += (c % 2 == 0 ? 1.0 : -1.0) * a[0][c] * ByMinors(minor, m - 1);
    }
    return sum;
}

}  // namespace

TEST(InvertMatrix, TimesTheMatrixItIsTheUnitMatrix) {
    seeded::Generator random(1);
    for (std::size_t m = 1; m <= 6; ++m) {
        for (int repeat = 0; repeat < 20; ++repeat) {
            const FitMatrix a = SeededMatrix(random, m);
            FitMatrix inverse = a;
            double det = 0.0;
            InvertMatrix(inverse, m, det);
            const double truth = ByMinors(a, m);
            EXPECT_NEAR(det, truth, 1e-12 * std::max(1.0, std::fabs(truth)));
            double largest = 1.0;
            for (std::size_t i = 0; i < m; ++i)
                for (std::size_t j = 0; j < m; ++j)
                    largest = std::max(largest, std::fabs(inverse[i][j]));
            for (std::size_t i = 0; i < m; ++i) {
                for (std::size_t j = 0; j < m; ++j) {
                    double sum = 0.0;
                    for (std::size_t k = 0; k < m; ++k) sum += a[i][k] * inverse[k][j];
                    EXPECT_NEAR(sum, i == j ? 1.0 : 0.0, 1e-13 * largest);
                }
            }
        }
    }
}

TEST(InvertMatrix, AMatrixOfTwoByHand) {
    FitMatrix a{};
    a[0] = {1.0, 2.0};
    a[1] = {3.0, 4.0};
    double det = 0.0;
    InvertMatrix(a, 2, det);
    EXPECT_NEAR(det, -2.0, 1e-15);
    EXPECT_NEAR(a[0][0], -2.0, 1e-15);
    EXPECT_NEAR(a[0][1], 1.0, 1e-15);
    EXPECT_NEAR(a[1][0], 1.5, 1e-15);
    EXPECT_NEAR(a[1][1], -0.5, 1e-15);
}

TEST(InvertMatrix, ASingularMatrixHasDeterminantZero) {
    FitMatrix a{};
    a[0] = {1.0, 2.0, 0.0};
    a[1] = {2.0, 4.0, 0.0};
    a[2] = {0.0, 0.0, 8.0};
    double det = 1.0;
    InvertMatrix(a, 3, det);
    EXPECT_EQ(det, 0.0);
    FitMatrix zero{};
    InvertMatrix(zero, 1, det);
    EXPECT_EQ(det, 0.0);
}

TEST(QRDecomp, ColumnsComeOutOrthonormalAndTheirProductIsTheMatrix) {
    seeded::Generator random(2);
    FitColumns columns{};
    for (std::size_t c = 0; c < 4; ++c)
        for (std::size_t i = 0; i < 12; ++i) columns[c][i] = random.Between(-1.0, 1.0);
    FitColumns q = columns;
    const QRResult qr = QRDecomp(q, 12, 4);
    ASSERT_EQ(qr.Rank, 4u);
    for (std::size_t a = 0; a < 4; ++a) {
        for (std::size_t b = 0; b < 4; ++b) {
            double inner = 0.0;
            for (std::size_t i = 0; i < 12; ++i) inner += q[a][i] * q[b][i];
            EXPECT_NEAR(inner, a == b ? 1.0 : 0.0, 1e-14);
        }
        for (std::size_t i = 0; i < 12; ++i) {
            double sum = 0.0;
            for (std::size_t s = 0; s < 4; ++s) sum += qr.R[a][s] * q[qr.Pivot[s]][i];
            EXPECT_NEAR(sum, columns[a][i], 1e-14);
        }
    }
}

TEST(QRDecomp, TheLongestColumnIsFirstAndTheEarliestOfEqualsWins) {
    FitColumns b{};
    b[0] = {2.0, 0.0, 0.0};
    b[1] = {0.0, 3.0, 0.0};
    b[2] = {0.0, 0.0, 3.0};
    const QRResult qr = QRDecomp(b, 3, 3);
    EXPECT_EQ(qr.Pivot[0], 1u);
    // All that is left of the others is whole: the first in the order of the pivots, which the swap
    // changed, is column 0.
    EXPECT_EQ(qr.Pivot[1], 0u);
    EXPECT_EQ(qr.Pivot[2], 2u);
    EXPECT_EQ(qr.R[1][0], 3.0);
    EXPECT_EQ(qr.R[0][1], 2.0);
}

TEST(QRDecomp, ADependentColumnIsDropped) {
    FitColumns b{};
    b[0] = {1.0, 2.0, 2.0, 0.0};
    b[1] = {2.0, 4.0, 4.0, 0.0};
    b[2] = {0.0, 0.0, 0.0, 5.0};
    const QRResult qr = QRDecomp(b, 4, 3);
    EXPECT_EQ(qr.Rank, 2u);
    EXPECT_EQ(qr.Pivot[0], 1u);  // of length 6
    EXPECT_EQ(qr.Pivot[1], 2u);
    EXPECT_EQ(qr.Pivot[2], 0u);
    EXPECT_EQ(qr.R[0][2], 0.0);
}

TEST(QRDecomp, AColumnOfZerosHasNothingLeft) {
    FitColumns b{};
    b[1] = {3.0, 4.0};
    const QRResult qr = QRDecomp(b, 2, 2);
    EXPECT_EQ(qr.Rank, 1u);
    EXPECT_EQ(qr.Pivot[0], 1u);
    EXPECT_EQ(qr.R[1][0], 5.0);
}

TEST(QRDecomp, TheShareOfItsFirstLengthDecidesAfterTheFirstStep) {
    // Column 0 is longest; column 1 keeps 1e-11 of its length beside it, column 2 all of its own.
    FitColumns b{};
    b[0] = {10.0, 0.0, 0.0};
    b[1] = {5.0, 5e-11, 0.0};
    b[2] = {0.0, 0.0, 1e-3};
    const QRResult qr = QRDecomp(b, 3, 3);
    EXPECT_EQ(qr.Rank, 2u);
    EXPECT_EQ(qr.Pivot[1], 2u);
}
