// The walk of an automatic NAX run: collecting channels, finding candidates, forming groups.
#include "analysis/naxwalk.h"

#include "analysis/naxgroup.h"
#include "core/fault.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vael {
namespace {

/// A candidate while windows keep passing: the window of strongest curvature stands for it.
struct OpenCandidate {
    bool Open = false;
    int Windows = 0;
    double Centre = 0.0;
    double Spacing = 1.0;
    std::array<double, 3> C{};
    double LargestCount = 0.0;
};

constexpr double EVEN_SPACING = 0.0001;  // channels further apart than this are not evenly spaced

class Walk {
public:
    Walk(const SpectrumData& spectrum, const NaxSettings& settings, NaxState& state,
         NaxResult& result, const Talk& talk)
        : tables_(MakeTables(settings, spectrum)),
          state_(state),
          result_(result),
          talk_(talk),
          half_(tables_.NaxIntParam[3]),
          window_(2 * half_ + 1),
          next_(tables_.NaxIntParam[9] - 1) {
        pending_.reserve(MAX_PEAKS);
        result_.Peaks.reserve(MAX_PEAKS);
        result_.Groups.reserve(MAX_PEAKS);
    }

    void Run() {
        while (NaxCollect()) {
            NaxDetect();
            FitFinished();
        }
        CloseCandidate();  // one that is open at the last channel ends there
        while (!pending_.empty()) FitFirstGroup();
    }

private:
    /// Takes the next channel into the list; false at the end of the channels.
    bool NaxCollect() {
        if (next_ + 1 > tables_.NaxIntParam[10]) return false;
        ++next_;
        if (count_ == NAX_POINTS) MakeRoom();
        Item(state_.X, count_) = static_cast<double>(next_);
        Item(state_.Y, count_) = static_cast<double>(Item(state_.Spectrum, next_));
        ++count_;
        return true;
    }

    /// The list is full: what nobody needs any more is dropped. Where candidates still hold all of
    /// it, their groups are fitted with the channels at hand.
    void MakeRoom() {
        DropBefore(OldestNeeded());
        if (count_ < NAX_POINTS) return;
        // The last window's channels may hold a peak that no window has seen whole.
        searched_ = static_cast<int>(Newest(window_));
        while (!pending_.empty()) FitFirstGroup();
        searched_ = std::numeric_limits<int>::max();
        DropBefore(OldestNeeded());
        if (count_ == NAX_POINTS) DropBefore(Newest(window_));
    }

    /// The first channel that the next window, or the region of a group to come, may want.
    [[nodiscard]] double OldestNeeded() const {
        double centre = Newest(half_);
        if (open_.Open) centre = open_.Centre;
        if (!pending_.empty()) centre = pending_.front().Position;
        return centre - static_cast<double>(Reach() + 1);
    }

    /// A parabola through the window that ends at the newest channel. It shows a peak when its
    /// curvature is negative beyond its error and the BG coefficient.
    void NaxDetect() {
        if (count_ < window_) return;
        talk_.breathe();
        const double h = Newest(0) - Newest(1);
        NaxSolver& solver = state_.Search;
        FillWindow(h);
        if (!NaxLsq(3, window_, tables_.NaxRealParam[4], solver, mode_)) return;
        const double curvature = solver.Solution[2];
        const double test = curvature + tables_.NaxRealParam[2] * solver.Errors[2] +
                            tables_.NaxRealParam[6] / (h * h);
        if (!(test < 0.0)) {
            CloseCandidate();
            return;
        }
        if (!open_.Open || curvature < open_.C[2]) {
            open_.Centre = Newest(half_);
            open_.Spacing = h;
            std::copy_n(solver.Solution.begin(), 3, open_.C.begin());
            const double* y = &state_.Y[static_cast<std::size_t>(count_ - 1 - half_)];
            open_.LargestCount = MaxOf(5, y[-2], y[-1], y[0], y[1], y[2]);
        }
        open_.Open = true;
        ++open_.Windows;
    }

    /// Counts of the window, and its design: 1, t, t t with t the distance from its centre, unless
    /// the channels are evenly spaced and the last design serves again.
    void FillWindow(double h) {
        NaxSolver& solver = state_.Search;
        const std::size_t first = static_cast<std::size_t>(count_ - window_);
        const auto size = static_cast<std::size_t>(window_);
        std::copy_n(state_.Y.begin() + static_cast<std::ptrdiff_t>(first), size, solver.Y.begin());
        const double* x = &state_.X[first];
        bool even = h == designSpacing_;
        for (std::size_t i = 1; even && i < size; ++i)
            even = std::fabs(x[i] - x[i - 1] - h) <= EVEN_SPACING;
        mode_ = even ? NAX_LSQ_SAME : NAX_LSQ_NEW;
        if (even) return;
        const double centre = Newest(half_);
        for (std::size_t i = 0; i < size; ++i) {
            const double t = x[i] - centre;
            double* row = solver.Design.Row(static_cast<int>(i));
            row[0] = 1.0;
            row[1] = t;
            row[2] = t * t;
            solver.Weight[i] = 1.0;
        }
        designSpacing_ = h;
    }

    void CloseCandidate() {
        if (!open_.Open) return;
        const OpenCandidate kept = open_;
        open_ = OpenCandidate{};
        ++result_.Candidates;
        if (result_.Candidates > MAX_PEAKS) {  // the list is full: it only bounds the last group
            if (notKept_ == 0.0) notKept_ = kept.Centre;
            return;
        }
        const double h = kept.Spacing;
        double t0 = -0.5 * kept.C[1] / kept.C[2];
        if (std::fabs(t0) > h) t0 = 0.0;
        pending_.push_back(
            {.Position = t0 + kept.Centre,
             .Height = MaxOf(2, kept.C[0] + 0.5 * kept.C[1] * t0, kept.LargestCount),
             .Width = tables_.NaxRealParam[3] * 0.5 * static_cast<double>(kept.Windows) * h});
    }

    /// Fits the groups that no further candidate can join or come near.
    void FitFinished() {
        while (!pending_.empty()) {
            const double last = pending_[GroupSize() - 1].Position;
            if (GroupSize() == pending_.size()) {
                const double open = open_.Open ? open_.Centre : Newest(half_);
                if (open - last <= static_cast<double>(Reach() + tables_.NaxIntParam[5])) return;
            }
            FitFirstGroup();
        }
    }

    /// How many of the first candidates stand no further apart than the reach.
    [[nodiscard]] std::size_t GroupSize() const {
        std::size_t size = 1;
        while (size < pending_.size() && size < NAX_GROUP_PEAKS &&
               pending_[size].Position - pending_[size - 1].Position <=
                   static_cast<double>(Reach()))
            ++size;
        return size;
    }

    /// The region reaches beyond the outer candidates, and half way to a neighbour that is nearer.
    /// Settings without sense can put a candidate beyond all whole numbers: an overflow.
    void FitFirstGroup() {
        const std::size_t size = GroupSize();
        const std::span<const NaxCandidate> group{pending_.data(), size};
        NaxRegion region;
        region.From = Int32(Whole32(std::ceil(group.front().Position))) - Int32(Reach());
        region.To = Int32(Whole32(std::floor(group.back().Position))) + Int32(Reach());
        region.LeftNeighbour = leftNeighbour_;
        region.RightNeighbour = size < pending_.size() ? pending_[size].Position
                                : notKept_ > 0.0       ? notKept_
                                : open_.Open           ? open_.Centre
                                                       : 0.0;
        const auto middle = [](double one, double other) { return (one + other) / 2.0; };
        if (region.LeftNeighbour > 0.0)
            region.From = std::max<int>(
                region.From, Whole32(std::ceil(middle(leftNeighbour_, group.front().Position))));
        if (region.RightNeighbour > 0.0)
            region.To = std::min<int>(
                region.To,
                Whole32(std::floor(middle(region.RightNeighbour, group.back().Position))));
        region.To = std::min(region.To, searched_);
        const std::size_t count = static_cast<std::size_t>(count_);
        NaxGroupFit(group, region, {{state_.X.data(), count}, {state_.Y.data(), count}}, tables_,
                    state_, result_, talk_);
        leftNeighbour_ = group.back().Position;
        pending_.erase(pending_.begin(), pending_.begin() + static_cast<std::ptrdiff_t>(size));
    }

    void DropBefore(double channel) {
        int first = 0;
        while (first < count_ && Item(state_.X, first) < channel) ++first;
        std::copy(state_.X.begin() + first, state_.X.begin() + count_, state_.X.begin());
        std::copy(state_.Y.begin() + first, state_.Y.begin() + count_, state_.Y.begin());
        count_ -= first;
    }

    [[nodiscard]] double Newest(int back) const { return Item(state_.X, count_ - 1 - back); }
    [[nodiscard]] int Reach() const { return tables_.NaxIntParam[6]; }

    NaxTables tables_;
    NaxState& state_;
    NaxResult& result_;
    const Talk& talk_;
    int half_;
    int window_;
    int next_;
    int count_ = 0;
    int mode_ = NAX_LSQ_NEW;
    int searched_ = std::numeric_limits<int>::max();  // no region reaches beyond it
    double designSpacing_ = 0.0;  // of the design that the search's solver holds
    OpenCandidate open_;
    std::vector<NaxCandidate> pending_;
    double leftNeighbour_ = 0.0;
    double notKept_ = 0.0;  // the first candidate beyond the hundred
};

}  // namespace

NaxTables MakeTables(const NaxSettings& settings, const SpectrumData& spectrum) {
    NaxTables tables;
    auto& whole = tables.NaxIntParam;
    whole[2] = 3;   // read by nothing
    whole[3] = 10;  // half width of the parabola window
    whole[4] = 4;   // added to the peak width
    whole[5] = Whole16(settings.ISPPK + static_cast<double>(whole[4]));  // no background nearer
    whole[6] = 50;  // reach of a region beyond its outer candidates, and of a group's gaps
    whole[7] = 20;  // passes, and restarts, of a group
    whole[8] = std::min(2 + 1, 3);  // terms of a group's background
    whole[9] = std::max<int>(settings.FirstCh, 1);
    whole[10] = std::min<int>(spectrum.DataNo, NAX_CHANNELS);
    if (settings.LastCh > 0) whole[10] = std::min<int>(whole[10], settings.LastCh);
    auto& real = tables.NaxRealParam;
    real[1] = 100.0;   // read by nothing
    real[2] = 0.5;     // multiplier of the curvature's error
    real[3] = 1.0;     // scale of a candidate's width
    real[4] = 1e-6;    // solver tolerance; smallest height and width
    real[5] = 0.0005;  // the largest relative step of a converged fit
    real[6] = settings.EACPS;
    real[7] = 1.0 / (0.5 * 0.5) - 1.0 / (2.0 * 2.0);  // read by nothing
    real[8] = 1.0 / (2.0 * 2.0);  // least change of a width parameter in a pass; 1 / it is the most
    real[9] = 2.0 * 0.5;          // read by nothing
    real[12] = 0.01;              // read by nothing
    real[13] = std::fabs(settings.TwoTheta);
    real[14] = 200.0;  // read by nothing
    tables.Filled = settings.Filled;
    return tables;
}

NaxResult NaxFitAll(const SpectrumData& spectrum, const NaxSettings& settings, NaxState& state,
                    const Talk& talk) {
    state = NaxState{};
    NaxResult result;
    NaxSetupGraph(spectrum, settings.TwoTheta, state);
    Walk(spectrum, settings, state, result, talk).Run();
    if (result.Peaks.empty()) {
        result.Result = -1;
        talk.say("NO PEAKS ARE FOUND", "");
    }
    return result;
}

double AutoBgCoefficient(const SpectrumData& spectrum) {
    const int channels = std::clamp<int>(spectrum.DataNo, 0, NAX_CHANNELS);
    std::vector<std::int32_t> counts(spectrum.Count.begin(), spectrum.Count.begin() + channels);
    double median = 0.0;
    if (!counts.empty()) {
        const auto middle = counts.begin() + static_cast<std::ptrdiff_t>(counts.size() / 2);
        std::nth_element(counts.begin(), middle, counts.end());
        median = static_cast<double>(*middle);
    }
    return std::max(0.2, 0.02 * std::sqrt(std::max(median, 0.0)));
}

}  // namespace vael
