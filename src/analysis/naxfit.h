// The core of the NAX fitter: Gaussians on a parabola by damped, weighted least squares.
#pragma once

#include "core/records.h"
#include "core/talk.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace vael {

inline constexpr int NAX_POINTS = 500;           // data points of one fit
inline constexpr int NAX_PARAMS = 30;            // unknowns of one fit; a 31st row holds the scales
inline constexpr int NAX_CHANNELS = 4096;        // channels of the working spectrum
inline constexpr double FWHM_PER_W = 1.6651092;  // 2 sqrt(ln 2): full width F = 1.6651092 W

/// 0 if x <= -20, 1 + x if |x| <= 1e-6, otherwise exp(x): every exponential of the model.
[[nodiscard]] double SafeExp(double x);

/// Largest and smallest of the first n values. Faults: Argument (n outside 2 to 5).
[[nodiscard]] double MaxOf(int n, double a, double b, double c = 0.0, double d = 0.0,
                           double e = 0.0);
[[nodiscard]] double MinOf(int n, double a, double b, double c = 0.0, double d = 0.0,
                           double e = 0.0);

/// A matrix of fixed size whose rows follow one another.
class NaxMatrix {
public:
    NaxMatrix(int rows, int columns)
        : columns_(static_cast<std::size_t>(columns)),
          cells_(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns)) {}
    [[nodiscard]] double& At(int row, int column) { return cells_[Place(row, column)]; }
    [[nodiscard]] double At(int row, int column) const { return cells_[Place(row, column)]; }
    [[nodiscard]] double* Row(int row) { return &cells_[Place(row, 0)]; }
    [[nodiscard]] const double* Row(int row) const { return &cells_[Place(row, 0)]; }

private:
    [[nodiscard]] std::size_t Place(int row, int column) const {
        return static_cast<std::size_t>(row) * columns_ + static_cast<std::size_t>(column);
    }
    std::size_t columns_;
    std::vector<double> cells_;
};

/// Work space of the linear least squares; everything counts from 0.
struct NaxSolver {
    NaxMatrix Design{NAX_POINTS, NAX_PARAMS};
    std::vector<double> Y = std::vector<double>(NAX_POINTS);
    std::vector<double> Weight = std::vector<double>(NAX_POINTS);
    NaxMatrix Covariance{NAX_PARAMS + 1, NAX_PARAMS};  // the inverse; row 30: scale of each column
    std::array<double, NAX_PARAMS> Solution{};
    std::array<double, NAX_PARAMS> Errors{};
};

/// Inverts the leading n by n block of `a` in place by Gauss-Jordan with full pivoting; the result
/// is the determinant, 0 when the matrix is singular (`a` is then of no use).
[[nodiscard]] double NaxInvert(NaxMatrix& a, int n);

/// Weighted linear least squares with m unknowns and n rows over Y, Weight and Design; columns are
/// scaled by their largest weighted entry. Errors are the standard errors, scaled by the variance
/// of the fit; with n - m <= 0 there is no variance and they are those of unit variance. False when
/// a column is zero or the determinant of the scaled matrix is not above eps.
/// Mode 2 says that design and weights are those of the last solution: its inverse serves again.
inline constexpr int NAX_LSQ_NEW = 1;
inline constexpr int NAX_LSQ_SAME = 2;
[[nodiscard]] bool NaxLsq(int m, int n, double eps, NaxSolver& solver, int mode = NAX_LSQ_NEW);

/// Constants of a fit.
struct NaxLimits {
    double IterationLimit = 30.0;  // outer steps
    double RetryLimit = 20.0;      // steps without a decrease
    double DampExponent = 11.0;    // smallest damping factor is 2 to the power -11
    double EpsChi = 0.0001;        // relative change of chi-square
    double EpsErr = 0.001;         // step in units of the standard error
    double EpsPar = 0.000001;      // step relative to the parameter; floor of chi-square
    double EpsDet = 0.000001;      // singularity of the solver
};

/// The three parameters of a peak, in the order of the list.
enum NaxKind : int { NAX_AMPLITUDE = 0, NAX_POSITION = 1, NAX_WIDTH = 2 };

/// How a parameter follows its master, the parameter of the same kind of another peak.
enum NaxLink : int { NAX_LINK_NONE = 0, NAX_LINK_OFFSET = 1, NAX_LINK_RATIO = 2 };

/// One parameter of the full list. Position in 1-based channels, width W as 1/e half width.
struct NaxParam {
    double Value = 0.0;
    double Error = 0.0;
    bool Free = true;  // neither fixed nor linked
    NaxLink Link = NAX_LINK_NONE;
    int Master = -1;    // index in the full list
    double Term = 0.0;  // value = master - Term (offset), master * Term (ratio)
};

/// State of one run: all arrays are allocated here and none inside the iteration. Working channels
/// count from 1: Spectrum[i + 1] is channel i of the graph.
struct NaxState {
    NaxState();

    std::vector<std::int32_t> Spectrum;  // 1 to 4096
    std::int16_t ChannelNum = 0;         // channels in it
    std::int16_t NaxStartCh = 0;         // region of the fit, 1-based, inclusive
    std::int16_t NaxEndCh = 0;
    std::int16_t NaxPeakNum = 0;
    std::int16_t NaxParamNum = 0;  // 3 * peaks, or 3 with no peak
    NaxLimits Limits;
    std::vector<NaxParam> Param;         // full list, three to a peak
    std::array<double, 3> Background{};  // b1 + b2 d + b3 d d, d = x - (start + end) / 2
    std::array<double, 3> BackgroundError{};
    std::vector<double> X;  // channels and counts of the region
    std::vector<double> Y;
    NaxSolver Solver;
    NaxSolver Search;                          // of the search, whose design hardly ever changes
    std::array<double, NAX_PARAMS> Working{};  // free parameters, then the background
    int FreeNum = 0;
    std::vector<std::int32_t> NaxBackground;  // image of the background, 0-based channels
    double EnergyTimesD = 0.0;                // 6.19927 / sin(theta), 0 without an angle
};

/// Copies the counts, up to channel 4096, and forms energy times d (keV angstrom) from the graph's
/// |2 theta| in degrees.
void NaxSetupGraph(const SpectrumData& spectrum, double twoTheta, NaxState& state);

/// Value of a peak at x from its parameters p (height, position, W) with the derivatives d, each
/// times its chain factor c. Faults: Division (W of 0).
[[nodiscard]] double NaxPeakValue(double x, const std::array<double, 3>& p,
                                  const std::array<double, 3>& c, std::array<double, 3>& d);

/// Mode 1 takes the free parameters out of the full list into the working list; mode 2 writes them
/// back and lets the linked ones follow.
void NaxApplyConstraints(int mode, NaxState& state);

/// The design at the current parameters, the reduced chi-square and the next step, with its errors
/// in the solver. False when the solver fails. Faults: Division (no degree of freedom, W of 0).
[[nodiscard]] bool NaxChiSquare(NaxState& state, double& chi);

/// Outcome of the damped loop: Flag 1 converged, 2 stopped on a small chi-square, 65535 damping
/// given up, 0 otherwise; Status 0 when the solver failed, else 65535.
struct NaxOutcome {
    std::uint16_t Status = ALL_BITS;
    std::uint16_t Flag = 0;
    int Iterations = 0;
    double Chi = 0.0;
};

/// The damped loop over the region and the start values that stand in the state. The log gets its
/// messages. Faults: as `NaxChiSquare`; Subscript (a region that leaves channels 1 to 4096).
NaxOutcome NaxIterate(NaxState& state, const Talk& talk);

/// Writes round(a + b d + c d d), d = channel - p, for the 1-based channels from to to into the
/// image (index channel - 1), unless a is exactly 0. Faults: Overflow.
void NaxStoreBackground(double a, double b, double c, double p, int from, int to,
                        std::span<std::int32_t> image);

}  // namespace vael
