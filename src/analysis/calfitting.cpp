// The Express fitter: one peak shape with its background in one region, by Poisson likelihood.
#include "analysis/calfitting.h"

#include "analysis/calc.h"
#include "analysis/peak.h"
#include "core/fault.h"
#include "core/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <vector>

namespace vael {
namespace {

constexpr double LN2 = 0.69314718055994530942;
constexpr double EXPONENT_LIMIT = 400.0;
constexpr double LEAST_HALF_WIDTH = 1e-150;

constexpr double EPS = 1e-10;          // a step this small beside its coefficient is none
constexpr double TOL = 1e-7;           // of the likelihood, relative
constexpr double EPS_OF_ERROR = 1e-6;  // a step this small beside the error is none
constexpr double STIRLING_ABOVE = 50.0;
constexpr double PI_STIRLING = 3.14159265358979;
constexpr int MOST_REFUSED = 100;  // trials with a model that is not positive
constexpr int MOST_INNER = 500;    // trials that lost likelihood
constexpr int MOST_OUTER = 100;
constexpr int SHAPE_FAULT = 5;  // the first status that is the number of a fault

constexpr const char* MANY_DATA = "(error) CFDQR2 : Many Data!";
constexpr const char* START_FAULT = "(error) CFDQR2 :初期fGaussのエラー";
constexpr const char* START_REFUSED = "(error) CFDQR2: 係数の初期値が不適切。";
constexpr const char* DETERMINANT_ZERO =
    "(error) CFDQR2: 行列式の値が０になった。データ入力ミス、または係数が多い。";
constexpr const char* TRIAL_FAULT = "(error) CFDQR2 :係数アウト！";
constexpr const char* INNER_REFUSED = "(warning) CFDQR2: 内側ループが100回を超えた。計算中止。";
// The limit behind these words is 500; the words stay.
constexpr const char* INNER_LOST = "(warning) CFDQR2: 内側ループが100回を超えた。計算中止";
constexpr const char* OUTER_LIMIT = "(warning) CFDQR2: 外側ループが100回を超えた。計算打ち切り";

/// Clears d and names the fault when a half width cannot divide or a value left the finite range.
bool Fails(double halfWidth, double value, std::span<double> d, int& status) {
    if (std::fabs(halfWidth) >= LEAST_HALF_WIDTH && std::isfinite(value)) return false;
    std::fill(d.begin(), d.end(), 0.0);
    status = static_cast<int>(halfWidth == 0.0 ? FaultNumber::Division : FaultNumber::Overflow);
    return true;
}

void BackgroundDeriv(double x, std::span<double> d, int m) {
    if (m >= 4) Item(d, 3) = 1.0;
    if (m == 5) Item(d, 4) = x;
}

double ShapeValue(int type, double x, std::span<const double> a, int m, int& status) {
    switch (type) {
        case SHAPE_GAUSS: return GaussValue(x, a, m, status);
        case SHAPE_LORENTZ: return LorentzValue(x, a, m, status);
        case SHAPE_MIX: return MixValue(x, a, m, status);
        default: status = static_cast<int>(FaultNumber::Argument); return 0.0;
    }
}

void ShapeDeriv(int type, double x, std::span<const double> a, std::span<double> d, int m,
                int& status) {
    switch (type) {
        case SHAPE_GAUSS: return GaussDeriv(x, a, d, m, status);
        case SHAPE_LORENTZ: return LorentzDeriv(x, a, d, m, status);
        case SHAPE_MIX: return MixDeriv(x, a, d, m, status);
        default: status = static_cast<int>(FaultNumber::Argument);
    }
}

/// One run of `CFDQR2`: its arguments, and the work arrays that would crowd a thread's stack.
class Run {
public:
    Run(std::span<const double> x, std::span<const double> y, int type, int m, FitVector& a,
        FitOutcome& outcome, const Talk& talk)
        : x_(x), y_(y), n_(y.size()), type_(type), m_(m), a_(a), outcome_(outcome), talk_(talk) {}

    void Go();

private:
    enum class Next { Inner, Outer, End };

    [[nodiscard]] std::size_t Count() const { return static_cast<std::size_t>(m_); }
    void End(int status, const char* message);
    bool Evaluate(const FitVector& at, const char* message);
    bool Design();
    bool DampingScale();
    void Step();
    Next Inner();
    Next Refused();
    bool Errors();
    [[nodiscard]] bool Converged(double gain, double trial) const;
    Next Judge(double gain, double trial);

    std::span<const double> x_, y_;
    std::size_t n_;
    int type_, m_;
    FitVector& a_;
    FitOutcome& outcome_;
    const Talk& talk_;

    FitVector t_{};      // trial coefficients; those outside the rank keep their last trial value
    FitVector delta_{};  // the step
    FitVector scale_{};
    double lambda_ = 0.0;      // damping
    double lambda_c_ = 0.0;    // its least value that is not 0
    double likelihood_ = 0.0;  // at a
    double factorials_ = 0.0;  // c0
    double predicted_ = 0.0;   // predicted gain of a step
    int outer_ = 0, inner_ = 0;
    std::array<double, FIT_CHANNELS> f_;
    std::array<double, FIT_CHANNELS> residual_;
    FitColumns design_;
    FitColumns work_;  // the columns of a step, later the derivatives over f
};

void Run::End(int status, const char* message) {
    outcome_.Status = status;
    outcome_.Message = message;
}

/// The model at every channel into f; false, with the outcome, where a shape fails.
bool Run::Evaluate(const FitVector& at, const char* message) {
    int status = 0;
    for (std::size_t i = 0; i < n_; ++i) {
        f_[i] = ShapeValue(type_, x_[i], at, m_, status);
        if (status < SHAPE_FAULT) continue;
        End(status, message);
        return false;
    }
    return true;
}

/// Weighted residuals and scaled derivatives at a; false, with the outcome, where they fail.
bool Run::Design() {
    FitVector d{};
    int status = 0;
    scale_.fill(0.0);
    for (std::size_t i = 0; i < n_; ++i) {
        ShapeDeriv(type_, x_[i], a_, d, m_, status);
        if (status >= SHAPE_FAULT) {
            outcome_.Status = status;
            return false;
        }
        const double w = 1.0 / std::sqrt(f_[i]);
        residual_[i] = (y_[i] - f_[i]) * w;
        for (std::size_t k = 0; k < Count(); ++k) {
            design_[k][i] = w * d[k];
            scale_[k] += design_[k][i] * design_[k][i];
        }
    }
    for (std::size_t k = 0; k < Count(); ++k) {
        scale_[k] = 1.0 / std::sqrt(scale_[k]);
        if (!(scale_[k] > 0.0) || !std::isfinite(scale_[k])) {
            End(FIT_ERROR, DETERMINANT_ZERO);
            return false;
        }
        for (std::size_t i = 0; i < n_; ++i) design_[k][i] *= scale_[k];
    }
    return true;
}

/// The least damping is one over the trace of the inverse of the scaled normal matrix; false, with
/// the outcome, where there is none.
bool Run::DampingScale() {
    FitMatrix normal{};
    for (std::size_t k = 0; k < Count(); ++k) {
        for (std::size_t j = 0; j <= k; ++j) {
            double sum = 0.0;
            for (std::size_t i = 0; i < n_; ++i) sum += design_[k][i] * design_[j][i];
            normal[k][j] = normal[j][k] = sum;
        }
    }
    double det = 0.0;
    InvertMatrix(normal, Count(), det);
    double trace = 0.0;
    for (std::size_t k = 0; k < Count(); ++k) trace += normal[k][k];
    if (det == 0.0 || !std::isfinite(det) || !std::isfinite(trace)) {
        End(FIT_ERROR, DETERMINANT_ZERO);
        return false;
    }
    if (trace == 0.0) {
        talk_.say("trace value =Zero", "");
        return false;
    }
    lambda_c_ = 1.0 / trace;
    return true;
}

/// The damped step from a, by orthogonal columns and back substitution; the trial point and the
/// predicted gain.
void Run::Step() {
    delta_.fill(0.0);
    const double damping = std::sqrt(std::fabs(lambda_));
    for (std::size_t k = 0; k < Count(); ++k) {
        std::copy_n(design_[k].begin(), n_, work_[k].begin());
        for (std::size_t j = 0; j < Count(); ++j) work_[k][n_ + j] = k == j ? damping : 0.0;
    }
    const QRResult qr = QRDecomp(work_, n_ + Count(), Count());
    FitVector g{};
    for (std::size_t u = qr.Rank; u-- > 0;) {
        const std::size_t p = qr.Pivot[u];
        // The residuals of the damping rows are 0.
        for (std::size_t i = 0; i < n_; ++i) g[p] += work_[p][i] * residual_[i];
        double h = g[p];
        for (std::size_t v = u + 1; v < qr.Rank; ++v) {
            const std::size_t q = qr.Pivot[v];
            h -= qr.R[q][u] * delta_[q];
        }
        delta_[p] = h / qr.R[p][u];
    }
    predicted_ = 0.0;
    for (std::size_t u = 0; u < qr.Rank; ++u) {
        const std::size_t p = qr.Pivot[u];
        predicted_ += g[p] * g[p];
        delta_[p] *= scale_[p];
        t_[p] = delta_[p] + a_[p];
    }
}

/// Standard errors at the trial point from the observed information; false, with the outcome,
/// where it cannot be inverted or a derivative fails.
bool Run::Errors() {
    FitMatrix information{};
    FitVector d{};
    int status = 0;
    for (std::size_t i = 0; i < n_; ++i) {
        const double v = 1.0 / f_[i];
        ShapeDeriv(type_, x_[i], t_, d, m_, status);
        if (status >= SHAPE_FAULT) {
            outcome_.Status = status;
            return false;
        }
        for (std::size_t k = 0; k < Count(); ++k) {
            work_[k][i] = v * d[k];
            for (std::size_t j = 0; j <= k; ++j) information[k][j] -= v * v * y_[i] * d[k] * d[j];
        }
    }
    for (std::size_t k = 0; k < Count(); ++k)
        for (std::size_t j = 0; j < k; ++j) information[j][k] = information[k][j];
    double det = 0.0;
    InvertMatrix(information, Count(), det);
    outcome_.Err.fill(0.0);
    bool good = det != 0.0 && std::isfinite(det);
    for (std::size_t k = 0; good && k < Count(); ++k) {
        double sum = 0.0;
        for (std::size_t i = 0; i < n_; ++i) {
            double share = 0.0;
            for (std::size_t j = 0; j < Count(); ++j) share += -work_[j][i] * information[k][j];
            sum += f_[i] * share * share;
        }
        outcome_.Err[k] = std::sqrt(sum);
        good = std::isfinite(sum);
    }
    if (!good) {
        outcome_.Err.fill(0.0);
        End(FIT_ERROR, DETERMINANT_ZERO);
    }
    return good;
}

bool Run::Converged(double gain, double trial) const {
    if (!(std::fabs(gain) <= std::fabs(trial - factorials_) * TOL)) return false;
    for (std::size_t k = 0; k < Count(); ++k) {
        const double still = MaxValue(outcome_.Err[k] * EPS_OF_ERROR, std::fabs(t_[k]) * EPS);
        if (!(std::fabs(delta_[k]) <= still)) return false;
    }
    return true;
}

/// A trial whose model is not positive somewhere: more damping from the same a.
Run::Next Run::Refused() {
    lambda_ = MaxValue(2.0 * lambda_, lambda_c_);
    if (inner_ <= MOST_REFUSED) return Next::Inner;
    End(FIT_STOPPED, INNER_REFUSED);
    return Next::End;
}

/// The damping after a trial, by the ratio of the gain to the predicted one.
Run::Next Run::Judge(double gain, double trial) {
    const double ratio = gain / predicted_;
    if (!std::isfinite(ratio)) {
        End(FIT_ERROR, DETERMINANT_ZERO);
        return Next::End;
    }
    if (ratio < 0.0) {
        const double v = MaxValue(MinValue(2.0 - ratio, 10.0), 2.0);
        lambda_ = v * lambda_;
        if (lambda_ == 0.0) lambda_ = v * lambda_c_ * 0.5;
        if (inner_ <= MOST_INNER) return Next::Inner;
        End(FIT_STOPPED, INNER_LOST);
        return Next::End;
    }
    if (ratio >= 0.75) {
        lambda_ *= 0.5;
        if (lambda_ < lambda_c_) lambda_ = 0.0;
    }
    if (ratio < 0.25) lambda_ = MaxValue(2.0 * lambda_, lambda_c_);
    a_ = t_;
    likelihood_ = trial;
    if (outer_ <= MOST_OUTER) return Next::Outer;
    End(FIT_STOPPED, OUTER_LIMIT);
    return Next::End;
}

/// One trial.
Run::Next Run::Inner() {
    ++inner_;
    Step();
    if (!Evaluate(t_, TRIAL_FAULT)) return Next::End;
    int status = 0;
    const double trial = LogLikelihood(y_, std::span(f_).first(n_), status);
    if (status != 0) return Refused();
    if (!Errors()) return Next::End;
    const double gain = trial - likelihood_;
    if (!std::isfinite(gain)) {
        End(FIT_ERROR, DETERMINANT_ZERO);
        return Next::End;
    }
    if (!Converged(gain, trial)) return Judge(gain, trial);
    a_ = t_;
    return Next::End;
}

void Run::Go() {
    // 1. The start: its model, which must be positive, and its likelihood.
    t_ = a_;
    factorials_ = SumOfFactorials(y_);
    if (!Evaluate(a_, START_FAULT)) return;
    int status = 0;
    likelihood_ = LogLikelihood(y_, std::span(f_).first(n_), status);
    if (status != 0) return End(FIT_ERROR, START_REFUSED);
    if (!std::isfinite(likelihood_) || !std::isfinite(factorials_))
        return End(FIT_ERROR, DETERMINANT_ZERO);
    // 2. One design serves all trials from the same a.
    Next next = Next::Outer;
    while (next != Next::End) {
        if (next == Next::Outer) {
            inner_ = 0;
            ++outer_;
            if (!Design() || !DampingScale()) return;
        }
        next = Inner();
    }
}

}  // namespace

void GaussDeriv(double x, std::span<const double> a, std::span<double> d, int m, int& status) {
    static_cast<void>(Item(d, m - 1));
    const double off = x - Item(a, 1);
    const double w = 1.0 / Item(a, 2);
    const double t = -LN2 * w * w * off * off;
    if (Fails(Item(a, 2), t, d, status)) return;
    d[0] = d[1] = d[2] = 0.0;
    if (std::fabs(t) < EXPONENT_LIMIT) {
        const double e = std::exp(t);
        d[0] = e;
        d[1] = 2.0 * Item(a, 0) * LN2 * w * w * off * e;
        d[2] = off * w * d[1];
    }
    BackgroundDeriv(x, d, m);
    Fails(Item(a, 2), d[1] + d[2], d, status);
}

void LorentzDeriv(double x, std::span<const double> a, std::span<double> d, int m, int& status) {
    static_cast<void>(Item(d, m - 1));
    const double half = Item(a, 2);
    const double u = (x - Item(a, 1)) / half;
    if (Fails(half, u * u, d, status)) return;
    const double l = 1.0 / (u * u + 1.0);
    d[0] = l;
    d[1] = u * (2.0 * Item(a, 0) / half) * l * l;
    d[2] = u * d[1];
    BackgroundDeriv(x, d, m);
    Fails(half, d[1] + d[2], d, status);
}

void MixDeriv(double x, std::span<const double> a, std::span<double> d, int m, int& status) {
    static_cast<void>(Item(d, m - 1));
    std::fill(d.begin(), d.begin() + m, 0.0);
    int failed = 0;
    const std::array<double, 3> gauss{Item(a, 0), Item(a, 1), Item(a, 2)};
    std::array<double, 5> g{};
    GaussDeriv(x, gauss, g, m - 1, failed);
    const std::array<double, 3> lorentz{Item(a, 3), Item(a, 1), Item(a, 2)};
    std::array<double, 3> l{};
    if (failed == 0) LorentzDeriv(x, lorentz, l, 3, failed);
    if (failed != 0) {
        status = failed;
        return;
    }
    d[0] = g[0];
    d[1] = g[1] + l[1];
    d[2] = g[2] + l[2];
    d[3] = l[0];
    if (m >= 5) d[4] = g[3];
    if (m >= 6) d[5] = g[4];
}

double SumOfFactorials(std::span<const double> y) {
    double sum = 0.0;
    for (const double count : y) {
        if (!(count > 1.0)) continue;
        if (count > STIRLING_ABOVE) {
            sum += (count + 0.5) * std::log(count) + 0.5 * std::log(2.0 * PI_STIRLING) - count +
                   1.0 / (12.0 * count);
        } else {
            for (double v = count; v > 1.0; v -= 1.0) sum += std::log(v);
        }
    }
    return sum;
}

double LogLikelihood(std::span<const double> y, std::span<const double> f, int& status) {
    double sum = 0.0;
    for (std::size_t i = 0; i < y.size(); ++i) {
        const double model = Item(f, i);
        if (model <= 0.0) {
            status = 1;
            return 0.0;
        }
        sum += y[i] * std::log(model) - model;
    }
    return sum;
}

FitOutcome CFDQR2(std::span<const double> x, std::span<const double> y, int type, FitVector& a,
                  int m, const Talk& talk) {
    FitOutcome outcome;
    if (y.size() > FIT_CHANNELS) {
        outcome.Status = FIT_ERROR;
        outcome.Message = MANY_DATA;
        return outcome;
    }
    std::make_unique<Run>(x.first(y.size()), y, type, m, a, outcome, talk)->Go();
    return outcome;
}

FitOutcome FitData(std::span<const double> x, std::span<const double> y, int type, int m,
                   FitVector& a, const Talk& talk) {
    const double n = static_cast<double>(y.size());
    // 1. The highest channel, the first of equals; local channels count from 1.
    double best = 0.0;
    double at = RoundEven(n / 2.0);
    for (std::size_t i = 0; i < y.size(); ++i) {
        if (!(y[i] > best)) continue;
        best = y[i];
        at = static_cast<double>(i + 1);
    }
    // 2. A start where the caller gave none; that of a Mix is one place off its own order.
    const double first = y.empty() ? 0.0 : y[0];
    if (a[0] <= 0.0) {
        const FitVector plain{best, at, 10.0, first, 0.0};
        const FitVector mix{best, best / 10.0, at, 10.0, first, 0.0};
        const std::size_t given = type == SHAPE_MIX ? 6 : 5;
        std::copy_n((type == SHAPE_MIX ? mix : plain).begin(), given, a.begin());
    }
    // 3. to 4. No negative half width; the fit.
    if (a[2] < 0.0) a[2] = 10.0;
    FitOutcome outcome = CFDQR2(x, y, type, a, m, talk);
    // 5. A centre outside the region goes to its middle; of a Mix it is the half width that counts.
    double& centre = type == SHAPE_MIX ? a[2] : a[1];
    if (centre < 1.0 || centre > n) centre = n / 2.0;
    return outcome;
}

namespace {

/// Height of the start: above the region's first count, else above its last, else the whole.
double StartHeight(const SpectrumData& spectrum, const PeakRecord& peak) {
    double height = peak.Amplitude - static_cast<double>(Item(spectrum.Count, peak.StartCh));
    if (height < 0.0)
        height = peak.Amplitude - static_cast<double>(Item(spectrum.Count, peak.EndCh));
    return height < 0.0 ? peak.Amplitude : height;
}

void WriteFit(const FitVector& a, int type, PeakRecord& peak) {
    peak.FitState = ALL_BITS;
    peak.Width = a[2];
    peak.Position = static_cast<double>(peak.StartCh) + a[1] - 1.0;
    peak.FuncType = static_cast<std::int16_t>(type);
    peak.Fitted = 1;
    if (type == SHAPE_MIX) {
        peak.Amplitude = a[0] + a[3];
        // Two heights that cancel have no share; the record stays whole.
        peak.GaussRatio = peak.Amplitude == 0.0 ? 0.0 : a[0] / peak.Amplitude;
        peak.BackConst = a[4];
        peak.BackSlope = a[5];
    } else {
        peak.Amplitude = a[0];
        peak.GaussRatio = type == SHAPE_GAUSS ? 1.0 : 0.0;
        peak.BackConst = a[3];
        peak.BackSlope = a[4];
    }
}

}  // namespace

FitOutcome FitOnePeak(const SpectrumData& spectrum, PeakTable& peaks, int k, int type, int m,
                      std::span<std::uint16_t> results, const Talk& talk) {
    // 1. and 2. What can be fitted.
    if (type < SHAPE_GAUSS || type > SHAPE_MIX) {
        talk.say("Bad Function Type!", "");
        return {};
    }
    if (GetPeakRegion(peaks, k).StartCh == ALL_BITS) return {};
    PeakRecord& peak = Item(peaks.Peak, k);
    // 3. The counts over local channels from 1.
    std::vector<double> x;
    std::vector<double> y;
    for (int channel = peak.StartCh; channel <= peak.EndCh; ++channel) {
        x.push_back(static_cast<double>(channel - peak.StartCh + 1));
        y.push_back(static_cast<double>(Item(spectrum.Count, channel)));
    }
    // 4. to 6. The start from the record; without a height `FitData` finds one.
    FitVector a{};
    if (const double height = StartHeight(spectrum, peak); height > 0.0) {
        a[0] = height;
        a[1] = peak.Position - static_cast<double>(peak.StartCh) + 1.0;
        a[2] = peak.Width;
    }
    if (type == SHAPE_MIX) {
        a[3] = a[0] * 0.2;
        a[0] *= 0.8;
    }
    const double start = a[0];
    // 7. and 8. The fit; its errors are the message of one that converged.
    FitOutcome outcome = FitData(x, y, type, m, a, talk);
    if (outcome.Status == FIT_CONVERGED)
        outcome.Message = " 係数誤差=" + FormatNumber(outcome.Err[0], "#0.00000 ") +
                          FormatNumber(outcome.Err[1], "#0.00000 ") +
                          FormatNumber(outcome.Err[2], "#0.00000 ") +
                          FormatNumber(outcome.Err[3], "#0.00000");
    // 9. and 10. Whether it can stand, and the record in both cases.
    const bool stands = a[0] > 0.0 && a[2] > 0.0 && a[0] < 3.0 * start;
    Item(results, k) = stands ? ALL_BITS : std::uint16_t{0};
    WriteFit(a, type, peak);
    return outcome;
}

}  // namespace vael
