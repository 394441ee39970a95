// The core of the NAX fitter: Gaussians on a parabola by damped, weighted least squares.
#include "analysis/naxfit.h"

#include "core/fault.h"
#include "core/text.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vael {
namespace {

constexpr int BACKGROUND_TERMS = 3;
constexpr int BACKGROUND_BLOCK = 10;         // channels of each of the two blocks at the ends
constexpr double HC_OVER_2 = 6.19927;        // keV angstrom: E d = 6.19927 / sin(theta)
constexpr double HALF_DEGREE = 0.008726645;  // pi / 360: half of 2 theta in radians

double Middle(const NaxState& state) {
    return (static_cast<double>(state.NaxStartCh) + static_cast<double>(state.NaxEndCh)) / 2.0;
}

int PointNum(const NaxState& state) { return state.NaxEndCh - state.NaxStartCh + 1; }

/// Where a parameter's derivative goes: the column of the free parameter at the head of its chain
/// of links (-1: that one is fixed) and the product of the ratios on the way.
struct Column {
    int Index = -1;
    double Factor = 1.0;
};

using Columns = std::array<Column, NAX_PARAMS>;

Columns ColumnsOf(const NaxState& state) {
    std::array<int, NAX_PARAMS> own{};
    int free = 0;
    for (std::size_t k = 0; k < state.Param.size(); ++k)
        Item(own, k) = state.Param[k].Free ? free++ : -1;
    Columns columns;
    for (std::size_t k = 0; k < state.Param.size(); ++k) {
        Column& column = columns[k];
        std::size_t head = k;
        for (int hop = 0; hop < NAX_PARAMS && state.Param[head].Link != NAX_LINK_NONE; ++hop) {
            if (state.Param[head].Link == NAX_LINK_RATIO) column.Factor *= state.Param[head].Term;
            head = static_cast<std::size_t>(state.Param[head].Master);
        }
        column.Index = own[head];
    }
    return columns;
}

/// Value of a linked parameter through its chain; a chain has an end, `COND` sees to that.
double Followed(const NaxState& state, std::size_t k, int hop) {
    const NaxParam& param = Item(state.Param, k);
    if (param.Link == NAX_LINK_NONE || hop >= NAX_PARAMS) return param.Value;
    const double master = Followed(state, static_cast<std::size_t>(param.Master), hop + 1);
    return param.Link == NAX_LINK_OFFSET ? master - param.Term : master * param.Term;
}

/// Fills the design row and the residual of point i; the result is the squared weighted residual.
double FillRow(NaxState& state, const Columns& columns, int i, double middle) {
    NaxSolver& solver = state.Solver;
    const double x = state.X[static_cast<std::size_t>(i)];
    const double y = state.Y[static_cast<std::size_t>(i)];
    const double d = x - middle;
    const double sigma = y < 1.0 ? 1.0 : std::sqrt(y);
    double* row = solver.Design.Row(i);
    std::fill(row, row + state.FreeNum, 0.0);

    const auto& b = state.Background;
    double f = (b[2] * d + b[1]) * d + b[0];
    for (int k = 0; k < state.NaxPeakNum; ++k) {
        const auto first = static_cast<std::size_t>(3 * k);
        const NaxParam* param = &state.Param[first];
        std::array<double, 3> derivative{};
        f += NaxPeakValue(
            x, {param[0].Value, param[1].Value, param[2].Value},
            {columns[first].Factor, columns[first + 1].Factor, columns[first + 2].Factor},
            derivative);
        for (std::size_t kind = 0; kind < 3; ++kind)
            if (const int at = columns[first + kind].Index; at >= 0) row[at] += derivative[kind];
    }
    double* background = row + state.FreeNum;
    background[0] = 1.0;
    background[1] = d;
    background[2] = d * d;
    for (int r = 0; r < state.FreeNum + BACKGROUND_TERMS; ++r) row[r] /= sigma;
    const double residual = (y - f) / sigma;
    solver.Y[static_cast<std::size_t>(i)] = residual;
    solver.Weight[static_cast<std::size_t>(i)] = 1.0;
    return residual * residual;
}

/// The parabola through the ten channels at each end of the region.
bool StartBackground(NaxState& state) {
    NaxSolver& solver = state.Solver;
    int row = 0;
    for (const int from : {int{state.NaxStartCh}, state.NaxEndCh - (BACKGROUND_BLOCK - 1)}) {
        for (int x = from; x < from + BACKGROUND_BLOCK; ++x, ++row) {
            if (x < 1) RaiseSubscript(x, state.Spectrum.size());
            const double d = static_cast<double>(x) - Middle(state);
            double* design = solver.Design.Row(row);
            design[0] = 1.0;
            design[1] = d;
            design[2] = d * d;
            Item(solver.Y, row) = static_cast<double>(Item(state.Spectrum, x));
            Item(solver.Weight, row) = 1.0;
        }
    }
    if (!NaxLsq(BACKGROUND_TERMS, row, state.Limits.EpsDet, solver)) return false;
    std::copy_n(solver.Solution.begin(), BACKGROUND_TERMS, state.Background.begin());
    return true;
}

void FillRegion(NaxState& state) {
    for (int i = 0; i < PointNum(state); ++i) {
        const int x = state.NaxStartCh + i;
        if (x < 1) RaiseSubscript(x, state.Spectrum.size());
        Item(state.X, i) = static_cast<double>(x);
        Item(state.Y, i) = static_cast<double>(Item(state.Spectrum, x));
    }
}

std::string Scientific(double value) { return FormatNumber(value, "0.00000E+000"); }

/// The damped loop between its set-up and its leaving.
class Damping {
public:
    Damping(NaxState& state, const Talk& talk, NaxOutcome& outcome)
        : state_(state),
          talk_(talk),
          outcome_(outcome),
          unknowns_(state.FreeNum + 3),
          crit_(MaxOf(2, state.Limits.EpsChi, std::sqrt(state.Limits.EpsPar))),
          floor_(std::pow(2.0, -state.Limits.DampExponent)) {}

    void Run() {
        for (;;) {
            // Head of a step: its direction and the errors are kept, since each trial solves anew.
            ++outcome_.Iterations;
            if (static_cast<double>(outcome_.Iterations) > state_.Limits.IterationLimit) return;
            errors_ = state_.Solver.Errors;
            step_ = state_.Solver.Solution;
            start_ = state_.Working;
            old_ = outcome_.Chi;
            damp_ = MinOf(2, 2.0 * damp_, 1.0);
            const Trial trial = TryStep();
            if (trial == Trial::Failed) return;
            if (trial == Trial::Accepted ? Converged() : GivenUp()) return;
        }
    }

private:
    enum class Trial { Accepted, Exhausted, Failed };

    bool Solve() {
        talk_.breathe();
        if (NaxChiSquare(state_, outcome_.Chi)) return true;
        outcome_.Status = 0;
        outcome_.Flag = 0;
        return false;
    }

    void Place(double share) {
        for (std::size_t k = 0; k < static_cast<std::size_t>(unknowns_); ++k)
            state_.Working[k] = start_[k] + step_[k] * share;
        NaxApplyConstraints(2, state_);
    }

    Trial TryStep() {
        for (;;) {
            Place(damp_);
            if (!Solve()) return Trial::Failed;
            if (outcome_.Chi < old_) return Trial::Accepted;
            if (outcome_.Chi <= (crit_ + 1.0) * old_) {
                talk_.log("CHI-SQ SLIGHTLY INCREASED WITHIN ACCEPTABLE ERROR");
                return Trial::Accepted;
            }
            state_.Working = start_;
            if (damp_ <= floor_) return Trial::Exhausted;
            damp_ *= 0.5;
            talk_.breathe();
        }
    }

    bool Converged() {
        outcome_.Flag = 0;
        const NaxLimits& limits = state_.Limits;
        const double chi = outcome_.Chi;
        if (chi <= limits.EpsPar) {
            talk_.log("CHI-SQ LESS THAAN " + Scientific(limits.EpsPar) + " CONV");
            outcome_.Flag = 1;
            return true;
        }
        if (old_ - chi > (chi + 1.0) * crit_) return false;
        for (std::size_t k = 0; k < static_cast<std::size_t>(unknowns_); ++k) {
            const double limit = MaxOf(2, state_.Solver.Errors[k] * limits.EpsErr,
                                       std::fabs(state_.Working[k]) * limits.EpsPar);
            if (std::fabs(state_.Solver.Solution[k]) > limit) return false;
        }
        talk_.log("ALL DISTANCE R(I) SMALL ENOUGH CONV");
        outcome_.Flag = 1;
        return true;
    }

    bool GivenUp() {
        outcome_.Chi = old_;
        ++failures_;
        NaxApplyConstraints(2, state_);
        state_.Solver.Errors = errors_;
        if (static_cast<double>(failures_) >= state_.Limits.RetryLimit) {
            outcome_.Flag = ALL_BITS;
            talk_.log("ITERATION OF DAMP OVER");
            return true;
        }
        talk_.log("RESIDUAL NOT DECREASE CONTINUE");
        if (outcome_.Chi < state_.Limits.EpsPar) {
            outcome_.Flag = 2;
            talk_.log("CHI-SQ LESS THAN " + Scientific(state_.Limits.EpsPar) + " STOP");
            return true;
        }
        outcome_.Flag = 0;
        return !Solve();
    }

    NaxState& state_;
    const Talk& talk_;
    NaxOutcome& outcome_;
    int unknowns_;
    double crit_;
    double floor_;
    double damp_ = 1.0;
    double old_ = 0.0;
    int failures_ = 0;
    std::array<double, NAX_PARAMS> errors_{};
    std::array<double, NAX_PARAMS> step_{};
    std::array<double, NAX_PARAMS> start_{};
};

/// Errors of the last solve into the full list: of the free ones their own, of the linked ones
/// their master's times the ratio, of the fixed ones 0.
void TakeErrors(NaxState& state) {
    const Columns columns = ColumnsOf(state);
    const auto& errors = state.Solver.Errors;
    for (std::size_t k = 0; k < state.Param.size(); ++k) {
        const Column& column = columns[k];
        state.Param[k].Error =
            column.Index < 0 ? 0.0 : std::fabs(column.Factor) * Item(errors, column.Index);
    }
    for (std::size_t k = 0; k < BACKGROUND_TERMS; ++k)
        state.BackgroundError[k] = Item(errors, state.FreeNum + static_cast<int>(k));
}

/// The inverse of the scaled normal matrix into the covariance, the scales into its last row.
bool InvertNormal(int m, int n, double eps, NaxSolver& solver) {
    NaxMatrix& inverse = solver.Covariance;
    double* const scale = inverse.Row(NAX_PARAMS);
    std::fill(scale, scale + m, 0.0);
    for (int i = 0; i < n; ++i) {
        const double* row = solver.Design.Row(i);
        const double weight = solver.Weight[static_cast<std::size_t>(i)];
        for (int r = 0; r < m; ++r) scale[r] = std::max(scale[r], std::fabs(row[r]) * weight);
    }
    if (std::any_of(scale, scale + m, [](double s) { return !(s > 0.0); })) return false;
    for (int r = 0; r < m; ++r) std::fill(inverse.Row(r), inverse.Row(r) + m, 0.0);
    for (int i = 0; i < n; ++i) {
        const double* row = solver.Design.Row(i);
        const double weight = solver.Weight[static_cast<std::size_t>(i)];
        for (int r = 0; r < m; ++r) {
            if (row[r] == 0.0) continue;
            const double weighted = weight * row[r];
            double* into = inverse.Row(r);
            for (int c = r; c < m; ++c) into[c] += weighted * row[c];
        }
    }
    for (int r = 0; r < m; ++r)
        for (int c = r; c < m; ++c) {
            inverse.At(r, c) /= scale[r] * scale[c];
            inverse.At(c, r) = inverse.At(r, c);
        }
    // A determinant that is no number is singular too.
    const double determinant = NaxInvert(inverse, m);
    return std::fabs(determinant) - eps > 0.0;
}

}  // namespace

double SafeExp(double x) {
    if (x <= -20.0) return 0.0;
    if (std::fabs(x) <= 1e-6) return 1.0 + x;
    return std::exp(x);
}

double MaxOf(int n, double a, double b, double c, double d, double e) {
    if (n < 2 || n > 5) throw Fault(FaultNumber::Argument, "MaxOf compares two to five values.");
    const std::array<double, 5> values{a, b, c, d, e};
    return *std::max_element(values.begin(), values.begin() + n);
}

double MinOf(int n, double a, double b, double c, double d, double e) {
    if (n < 2 || n > 5) throw Fault(FaultNumber::Argument, "MinOf compares two to five values.");
    const std::array<double, 5> values{a, b, c, d, e};
    return *std::min_element(values.begin(), values.begin() + n);
}

double NaxInvert(NaxMatrix& a, int n) {
    std::array<int, NAX_PARAMS> rowSwap{};
    std::array<int, NAX_PARAMS> columnSwap{};
    double determinant = 1.0;
    for (int s = 0; s < n; ++s) {
        // 1. The largest element of what is left is the pivot.
        int row = s;
        int column = s;
        for (int i = s; i < n; ++i)
            for (int j = s; j < n; ++j)
                if (std::fabs(a.At(i, j)) > std::fabs(a.At(row, column))) {
                    row = i;
                    column = j;
                }
        const double pivot = a.At(row, column);
        if (pivot == 0.0) return 0.0;
        Item(rowSwap, s) = row;
        Item(columnSwap, s) = column;
        if (row != s) {
            std::swap_ranges(a.Row(row), a.Row(row) + n, a.Row(s));
            determinant = -determinant;
        }
        if (column != s) {
            for (int i = 0; i < n; ++i) std::swap(a.At(i, column), a.At(i, s));
            determinant = -determinant;
        }
        // 2. One step of Gauss-Jordan, the inverse growing in place of the matrix.
        determinant *= pivot;
        double* const own = a.Row(s);
        own[s] = 1.0;
        for (int j = 0; j < n; ++j) own[j] /= pivot;
        for (int i = 0; i < n; ++i) {
            if (i == s) continue;
            double* const other = a.Row(i);
            const double factor = other[s];
            if (factor == 0.0) continue;
            other[s] = 0.0;
            for (int j = 0; j < n; ++j) other[j] -= factor * own[j];
        }
    }
    // 3. The swaps are undone, rows of the matrix being columns of its inverse.
    for (int s = n - 1; s >= 0; --s) {
        if (const int row = Item(rowSwap, s); row != s)
            for (int i = 0; i < n; ++i) std::swap(a.At(i, row), a.At(i, s));
        if (const int column = Item(columnSwap, s); column != s)
            std::swap_ranges(a.Row(column), a.Row(column) + n, a.Row(s));
    }
    return determinant;
}

bool NaxLsq(int m, int n, double eps, NaxSolver& solver, int mode) {
    if (mode == NAX_LSQ_NEW && !InvertNormal(m, n, eps, solver)) return false;
    const NaxMatrix& inverse = solver.Covariance;
    const double* const scale = inverse.Row(NAX_PARAMS);
    // 1. The right-hand side, scaled.
    std::array<double, NAX_PARAMS> right{};
    for (int i = 0; i < n; ++i) {
        const double* row = solver.Design.Row(i);
        const double weighted =
            solver.Weight[static_cast<std::size_t>(i)] * solver.Y[static_cast<std::size_t>(i)];
        for (int r = 0; r < m; ++r) right[static_cast<std::size_t>(r)] += weighted * row[r];
    }
    for (int r = 0; r < m; ++r) right[static_cast<std::size_t>(r)] /= scale[r];
    // 2. The solution in the units of the columns.
    for (int r = 0; r < m; ++r) {
        double sum = 0.0;
        for (int c = 0; c < m; ++c) sum += inverse.At(r, c) * right[static_cast<std::size_t>(c)];
        Item(solver.Solution, r) = sum / scale[r];
    }
    // 3. The variance of the fit and the errors.
    double variance = 1.0;
    if (n - m > 0) {
        variance = 0.0;
        for (int i = 0; i < n; ++i) {
            const double* row = solver.Design.Row(i);
            double residual = solver.Y[static_cast<std::size_t>(i)];
            for (int r = 0; r < m; ++r) residual -= row[r] * Item(solver.Solution, r);
            variance += solver.Weight[static_cast<std::size_t>(i)] * residual * residual;
        }
        variance /= static_cast<double>(n - m);
    }
    for (int r = 0; r < m; ++r)
        Item(solver.Errors, r) = std::sqrt(variance * std::fabs(inverse.At(r, r))) / scale[r];
    return true;
}

NaxState::NaxState()
    : Spectrum(NAX_CHANNELS + 1), X(NAX_POINTS), Y(NAX_POINTS), NaxBackground(NAX_CHANNELS) {
    Param.reserve(NAX_PARAMS);
}

void NaxSetupGraph(const SpectrumData& spectrum, double twoTheta, NaxState& state) {
    const int channels = std::clamp<int>(spectrum.DataNo, 0, NAX_CHANNELS);
    state.ChannelNum = static_cast<std::int16_t>(channels);
    std::fill(state.Spectrum.begin(), state.Spectrum.end(), 0);
    std::copy_n(spectrum.Count.begin(), channels, state.Spectrum.begin() + 1);
    const double angle = std::fabs(twoTheta);
    state.EnergyTimesD = angle == 0.0 ? 0.0 : Quot(HC_OVER_2, std::sin(angle * HALF_DEGREE));
}

double NaxPeakValue(double x, const std::array<double, 3>& p, const std::array<double, 3>& c,
                    std::array<double, 3>& d) {
    const double t = p[NAX_POSITION] - x;
    const double v = Quot(t, p[NAX_WIDTH] * p[NAX_WIDTH]);
    const double e = SafeExp(-v * t);
    const double value = p[NAX_AMPLITUDE] * e;
    d[NAX_AMPLITUDE] = c[NAX_AMPLITUDE] * e;
    d[NAX_POSITION] = c[NAX_POSITION] * -2.0 * v * value;
    d[NAX_WIDTH] = c[NAX_WIDTH] * 2.0 * t * v * value / p[NAX_WIDTH];
    return value;
}

void NaxApplyConstraints(int mode, NaxState& state) {
    if (mode == 1) {
        state.FreeNum = 0;
        for (const NaxParam& param : state.Param)
            if (param.Free) Item(state.Working, state.FreeNum++) = param.Value;
        for (int k = 0; k < BACKGROUND_TERMS; ++k)
            Item(state.Working, state.FreeNum + k) = Item(state.Background, k);
        return;
    }
    int free = 0;
    for (NaxParam& param : state.Param)
        if (param.Free) param.Value = Item(state.Working, free++);
    for (int k = 0; k < BACKGROUND_TERMS; ++k)
        Item(state.Background, k) = Item(state.Working, free + k);
    for (std::size_t k = 0; k < state.Param.size(); ++k)
        if (state.Param[k].Link != NAX_LINK_NONE) state.Param[k].Value = Followed(state, k, 0);
}

bool NaxChiSquare(NaxState& state, double& chi) {
    const int points = PointNum(state);
    const int unknowns = state.FreeNum + BACKGROUND_TERMS;
    const Columns columns = ColumnsOf(state);
    const double middle = Middle(state);
    double sum = 0.0;
    for (int i = 0; i < points; ++i) sum += FillRow(state, columns, i, middle);
    chi = Quot(sum, static_cast<double>(points - unknowns));
    NaxSolver& solver = state.Solver;
    if (!NaxLsq(unknowns, points, state.Limits.EpsDet, solver)) return false;
    // The rows carry the counts' own errors: the diagonal gives the standard errors as it is.
    for (int k = 0; k < unknowns; ++k)
        Item(solver.Errors, k) =
            std::sqrt(std::fabs(solver.Covariance.At(k, k))) / solver.Covariance.At(NAX_PARAMS, k);
    return true;
}

NaxOutcome NaxIterate(NaxState& state, const Talk& talk) {
    NaxOutcome outcome;
    if (PointNum(state) > NAX_POINTS) RaiseSubscript(PointNum(state), NAX_POINTS);
    talk.breathe();
    if (!StartBackground(state)) {
        talk.log("LSQ FOR BACK GROUND FAILED");
        outcome.Status = 0;
        return outcome;
    }
    FillRegion(state);
    NaxApplyConstraints(1, state);
    NaxApplyConstraints(2,
                        state);  // linked start values follow their masters from the first row on
    talk.breathe();
    if (!NaxChiSquare(state, outcome.Chi)) {
        outcome.Status = 0;
        return outcome;
    }
    Damping(state, talk, outcome).Run();
    NaxApplyConstraints(2, state);
    TakeErrors(state);
    return outcome;
}

void NaxStoreBackground(double a, double b, double c, double p, int from, int to,
                        std::span<std::int32_t> image) {
    if (a == 0.0) return;
    for (int channel = from; channel <= to; ++channel) {
        const double d = static_cast<double>(channel) - p;
        Item(image, channel - 1) = Whole32(a + b * d + c * d * d);
    }
}

}  // namespace vael
