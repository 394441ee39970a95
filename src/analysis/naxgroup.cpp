// The fit of one group of candidates: a background off the peaks, then Gauss-Newton on the peaks.
#include "analysis/naxgroup.h"

#include "core/fault.h"
#include "core/text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace vael {
namespace {

enum class Pass { Converged, UsedUp, Failed, OutOfRange };

struct GroupPeak {
    double Position = 0.0;
    double Height = 0.0;
    double P = 0.0;  // (1.6651092 / F)^2
    double OwnWidth = 0.0;
    double PositionError = 0.0;
    double HeightError = 0.0;
    double PError = 0.0;
};

double FwhmOf(double p) { return FWHM_PER_W / std::sqrt(p); }
double ParameterOf(double fwhm) { return (FWHM_PER_W / fwhm) * (FWHM_PER_W / fwhm); }

double CurveOf(const GroupPeak& peak, double x) {
    const double t = x - peak.Position;
    return peak.Height * SafeExp(-peak.P * t * t);
}

/// One group while it is fitted; nothing is allocated in here.
class Group {
public:
    Group(std::span<const NaxCandidate> candidates, const NaxRegion& region,
          const NaxPoints& points, const NaxTables& tables, NaxState& state, const Talk& talk)
        : candidates_(candidates),
          region_(region),
          tables_(tables),
          filled_(tables.Filled),
          solver_(state.Solver),
          talk_(talk),
          middle_((candidates.front().Position + candidates.back().Position) / 2.0) {
        const auto& all = points.X;
        const auto first =
            std::lower_bound(all.begin(), all.end(), static_cast<double>(region.From));
        const auto last = std::upper_bound(first, all.end(), static_cast<double>(region.To));
        const auto offset = static_cast<std::size_t>(first - all.begin());
        x_ = all.subspan(offset, static_cast<std::size_t>(last - first));
        y_ = points.Y.subspan(offset, x_.size());
        if (!x_.empty()) {
            region_.From = static_cast<int>(x_.front());
            region_.To = static_cast<int>(x_.back());
        }
    }

    /// The whole fit; the group's own record.
    NaxGroup Fit() {
        NaxGroup group{.From = region_.From,
                       .To = region_.To,
                       .P = middle_,
                       .Status = "DIV ",
                       .Candidates = static_cast<int>(candidates_.size())};
        if (FirstBackground()) {
            Start();
            const int restarts = tables_.NaxIntParam[7];
            for (int restart = 0; peakNum_ > 0; ++restart) {
                const Pass outcome = Rounds(group.Passes);
                const int refused = outcome == Pass::Failed ? Lowest() : Refusable();
                if (refused < 0) {
                    group.Status = outcome == Pass::Converged ? "CONV" : "MXST";
                    break;
                }
                Refuse(refused);
                if (restart >= restarts) peakNum_ = 0;
                Restart();
            }
        }
        group.Peaks = peakNum_;
        group.A = background_[0];
        group.B = background_[1];
        group.C = background_[2];
        return group;
    }

    [[nodiscard]] std::span<const GroupPeak> Peaks() const {
        return {peaks_.data(), static_cast<std::size_t>(peakNum_)};
    }

private:
    // --- background ---

    [[nodiscard]] bool NearPeak(double x, double distance) const {
        const auto near = [&](double position) {
            return position > 0.0 && std::fabs(position - x) < distance;
        };
        return near(region_.LeftNeighbour) || near(region_.RightNeighbour) ||
               std::any_of(candidates_.begin(), candidates_.end(),
                           [&](const NaxCandidate& c) { return near(c.Position); });
    }

    void BackgroundRow(int row, double x, double y) {
        const double d = x - middle_;
        double* design = solver_.Design.Row(row);
        design[0] = 1.0;
        design[1] = d;
        design[2] = d * d;
        solver_.Y[static_cast<std::size_t>(row)] = y;
        solver_.Weight[static_cast<std::size_t>(row)] = 1.0;
    }

    [[nodiscard]] bool SolveBackground(int terms, int rows) {
        talk_.breathe();
        if (rows < terms + filled_.SpareChannels) return false;
        if (!NaxLsq(terms, rows, tables_.NaxRealParam[4], solver_)) return false;
        background_ = {};
        std::copy_n(solver_.Solution.begin(), terms, background_.begin());
        return true;
    }

    /// From the channels that keep their distance from every candidate.
    bool FirstBackground() {
        for (terms_ = tables_.NaxIntParam[8]; terms_ > 0; --terms_) {
            double distance = static_cast<double>(tables_.NaxIntParam[5]);
            for (; distance >= filled_.LeastDistance; distance *= filled_.Shrink) {
                int rows = 0;
                double first = 0.0;
                double last = 0.0;
                for (std::size_t i = 0; i < x_.size(); ++i) {
                    if (NearPeak(x_[i], distance)) continue;
                    if (rows == 0) first = x_[i];
                    last = x_[i];
                    BackgroundRow(rows++, x_[i], y_[i]);
                }
                const double wanted = filled_.LeastSpan * static_cast<double>(x_.size());
                if (terms_ > 1 && last - first < wanted) continue;
                if (SolveBackground(terms_, rows)) {
                    firstBackground_ = background_;
                    return true;
                }
            }
        }
        return false;
    }

    /// From all channels, with the peaks taken off.
    bool BackgroundBelowPeaks() {
        int rows = 0;
        for (std::size_t i = 0; i < x_.size(); ++i) {
            double y = y_[i];
            for (const GroupPeak& peak : Peaks()) y -= CurveOf(peak, x_[i]);
            BackgroundRow(rows++, x_[i], y);
        }
        return SolveBackground(terms_, rows);
    }

    /// How much larger an error is for the residuals' correlation from channel to channel, which a
    /// smoothed spectrum has: sqrt(1 + 2 sum of the correlations), at least 1. The residuals stand
    /// in the solver: counts less peaks.
    [[nodiscard]] double ResidualCorrelation() {
        const std::size_t n = x_.size();
        for (std::size_t i = 0; i < n; ++i) solver_.Y[i] -= BackgroundAt(x_[i]);
        const auto product = [&](std::size_t lag) {
            double sum = 0.0;
            for (std::size_t i = 0; i + lag < n; ++i) sum += solver_.Y[i] * solver_.Y[i + lag];
            return sum;
        };
        const double variance = product(0);
        if (!(variance > 0.0)) return 1.0;
        double factor = 1.0;
        for (int lag = 1; lag <= filled_.Lags; ++lag)
            factor += 2.0 * product(static_cast<std::size_t>(lag)) / variance;
        return std::sqrt(std::max(factor, 1.0));
    }

    [[nodiscard]] double BackgroundAt(double x) const {
        const double d = x - middle_;
        return (background_[2] * d + background_[1]) * d + background_[0];
    }

    // --- peaks ---

    void Start() {
        peakNum_ = 0;
        for (const NaxCandidate& candidate : candidates_) {
            const double fwhm = std::max(candidate.Width, filled_.LeastFwhm);
            Item(peaks_, peakNum_++) = {
                .Position = candidate.Position,
                .Height = candidate.Height - BackgroundAt(candidate.Position),
                .P = ParameterOf(fwhm),
                .OwnWidth = candidate.Width};
        }
        start_ = peaks_;
    }

    /// The peaks that are left, again from their start.
    void Restart() {
        peaks_ = start_;
        background_ = firstBackground_;
    }

    Pass Rounds(int& passes) {
        Pass outcome = Pass::Converged;
        for (int round = 0; round < filled_.Rounds; ++round) {
            outcome = GaussNewton(passes);
            if (outcome == Pass::Failed || outcome == Pass::OutOfRange) return outcome;
            if (!BackgroundBelowPeaks()) return Pass::Failed;
        }
        correlation_ = ResidualCorrelation();
        return outcome;
    }

    Pass GaussNewton(int& passes) {
        double best = std::numeric_limits<double>::infinity();
        for (int pass = 0; pass < tables_.NaxIntParam[7]; ++pass) {
            ++passes;
            talk_.breathe();
            double squares = FillDesign();
            for (int cut = 0; squares > best && cut < filled_.Halvings; ++cut) {
                Halve();
                squares = FillDesign();
            }
            best = squares;
            before_ = peaks_;
            if (!NaxLsq(3 * peakNum_, static_cast<int>(x_.size()), tables_.NaxRealParam[4],
                        solver_))
                return Pass::Failed;
            double largest = 0.0;
            for (int k = 0; k < peakNum_; ++k)
                largest = MaxOf(2, largest, Step(Item(peaks_, k), 3 * k));
            if (AnyVanished()) return Pass::OutOfRange;
            if (largest < tables_.NaxRealParam[5]) return Pass::Converged;
        }
        return Pass::UsedUp;
    }

    /// Rows of the design and residuals at the current parameters; the result is the sum of the
    /// squared residuals.
    double FillDesign() {
        double squares = 0.0;
        for (std::size_t i = 0; i < x_.size(); ++i) {
            double* row = solver_.Design.Row(static_cast<int>(i));
            double residual = y_[i] - BackgroundAt(x_[i]);
            for (const GroupPeak& peak : Peaks()) {
                const double t = x_[i] - peak.Position;
                const double e = SafeExp(-peak.P * t * t);
                const double value = peak.Height * e;
                residual -= value;
                *row++ = e;
                *row++ = 2.0 * peak.P * t * value;
                *row++ = -t * t * value;
            }
            solver_.Y[i] = residual;
            solver_.Weight[i] = 1.0;
            squares += residual * residual;
        }
        return squares;
    }

    /// Goes half the way back to where the last step started.
    void Halve() {
        for (int k = 0; k < peakNum_; ++k) {
            GroupPeak& peak = Item(peaks_, k);
            const GroupPeak& before = Item(before_, k);
            peak.Height = 0.5 * (peak.Height + before.Height);
            peak.Position = 0.5 * (peak.Position + before.Position);
            peak.P = 0.5 * (peak.P + before.P);
        }
    }

    /// Takes one step of a peak, limited; the result is the largest relative step.
    double Step(GroupPeak& peak, int column) {
        const auto at = static_cast<std::size_t>(column);
        const auto& step = solver_.Solution;
        const double fwhm = FwhmOf(peak.P);
        const double reach = MinOf(2, static_cast<double>(tables_.NaxIntParam[5]), 0.5 * fwhm);
        const double shift = std::clamp(step[at + 1], -reach, reach);
        const double least = tables_.NaxRealParam[8];  // a quarter; its inverse is the most
        const double p = std::clamp(peak.P + step[at + 2], peak.P * least, peak.P / least);
        const double relative =
            MaxOf(3, std::fabs(shift) / fwhm,
                  std::fabs(step[at]) / MaxOf(2, std::fabs(peak.Height), tables_.NaxRealParam[4]),
                  std::fabs(p - peak.P) / peak.P);
        peak.Height += step[at];
        peak.Position += shift;
        peak.P = p;
        peak.HeightError = solver_.Errors[at];
        peak.PositionError = solver_.Errors[at + 1];
        peak.PError = solver_.Errors[at + 2];
        return relative;
    }

    // --- refusals ---

    [[nodiscard]] bool Vanished(const GroupPeak& peak) const {
        return !(peak.Height > tables_.NaxRealParam[4]) ||
               !(FwhmOf(peak.P) > tables_.NaxRealParam[4]);
    }

    [[nodiscard]] bool AnyVanished() const {
        const auto peaks = Peaks();
        return std::any_of(peaks.begin(), peaks.end(),
                           [this](const GroupPeak& peak) { return Vanished(peak); });
    }

    [[nodiscard]] bool Shadowed(int k) const {
        const GroupPeak& peak = peaks_[static_cast<std::size_t>(k)];
        for (const GroupPeak& other : Peaks()) {
            if (&other == &peak || other.Height < peak.Height) continue;
            const double wide = MaxOf(2, FwhmOf(other.P), FwhmOf(peak.P));
            if (std::fabs(other.Position - peak.Position) < filled_.LeastApart * wide) return true;
        }
        return false;
    }

    /// Why a peak cannot stand, or an empty text.
    [[nodiscard]] std::string WhyNot(int k) const {
        const GroupPeak& peak = peaks_[static_cast<std::size_t>(k)];
        const double fwhm = FwhmOf(peak.P);
        if (Vanished(peak)) return "NO HEIGHT";
        if (peak.Position < static_cast<double>(region_.From) ||
            peak.Position > static_cast<double>(region_.To))
            return "OUT OF REGION";
        if (fwhm < filled_.LeastFwhm) return "TOO NARROW";
        if (fwhm > static_cast<double>(tables_.NaxIntParam[6])) return "TOO WIDE";
        if (Shadowed(k)) return "INSIDE ANOTHER";
        if (peak.Height < filled_.LeastHeight * peak.HeightError * correlation_) return "NOISE";
        return {};
    }

    [[nodiscard]] int Lowest() const {
        const auto at = std::min_element(
            start_.begin(), start_.begin() + peakNum_,
            [](const GroupPeak& a, const GroupPeak& b) { return a.Height < b.Height; });
        return static_cast<int>(at - start_.begin());
    }

    /// The lowest of those out of range, or -1 when all can stand.
    [[nodiscard]] int Refusable() const {
        int worst = -1;
        for (int k = 0; k < peakNum_; ++k) {
            if (WhyNot(k).empty()) continue;
            if (worst < 0 || Item(start_, k).Height < Item(start_, worst).Height) worst = k;
        }
        return worst;
    }

    void Refuse(int k) {
        const GroupPeak& peak = Item(peaks_, k);
        const std::string why = WhyNot(k);
        talk_.log("PEAK REFUSED CH " + FormatNumber(peak.Position, "0.00") + " HEIGHT " +
                  FormatNumber(peak.Height, "0.0") + " WIDTH " +
                  FormatNumber(FwhmOf(peak.P), "0.00") + " " + (why.empty() ? "NOT SOLVED" : why));
        std::copy(start_.begin() + k + 1, start_.begin() + peakNum_, start_.begin() + k);
        --peakNum_;
    }

    std::span<const NaxCandidate> candidates_;
    NaxRegion region_;
    const NaxTables& tables_;
    const NaxFilledIn& filled_;
    NaxSolver& solver_;
    const Talk& talk_;
    double middle_;
    std::span<const double> x_;
    std::span<const double> y_;
    int terms_ = 0;
    std::array<double, 3> background_{};
    std::array<double, 3> firstBackground_{};
    double correlation_ = 1.0;
    int peakNum_ = 0;
    std::array<GroupPeak, NAX_GROUP_PEAKS> peaks_{};
    std::array<GroupPeak, NAX_GROUP_PEAKS> start_{};
    std::array<GroupPeak, NAX_GROUP_PEAKS> before_{};
};

}  // namespace

void NaxGroupFit(std::span<const NaxCandidate> candidates, const NaxRegion& region,
                 const NaxPoints& points, const NaxTables& tables, NaxState& state,
                 NaxResult& result, const Talk& talk) {
    Group group(candidates, region, points, tables, state, talk);
    const NaxGroup record = group.Fit();
    talk.log("CH" + WholeText(record.From) + " TO" + WholeText(record.To) + " PEAKS" +
             WholeText(record.Peaks) + " OF" + WholeText(record.Candidates) + " " + record.Status);
    for (const GroupPeak& peak : group.Peaks()) {
        const double fwhm = FwhmOf(peak.P);
        result.Peaks.push_back({.Position = peak.Position,
                                .Height = peak.Height,
                                .Fwhm = fwhm,
                                .OwnWidth = peak.OwnWidth,
                                .PositionError = peak.PositionError,
                                .HeightError = peak.HeightError,
                                .FwhmError = 0.5 * fwhm / peak.P * peak.PError,
                                .Group = static_cast<int>(result.Groups.size())});
    }
    if (record.Peaks > 0)
        NaxStoreBackground(record.A, record.B, record.C, record.P, record.From, record.To,
                           state.NaxBackground);
    result.Groups.push_back(record);
}

}  // namespace vael
