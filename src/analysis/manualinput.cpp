// What a fit by hand is asked for: its rows, the rules that hold parameters, and their way to the
// fit.
#include "analysis/manualinput.h"

#include "core/fault.h"
#include "core/text.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>

namespace vael {
namespace {

constexpr int REACH = NAX_POINTS / 2;  // channels: a wider line is in no fit whole

std::string Name(NaxKind param, int peak) { return LetterOf(param) + std::to_string(peak); }

std::string HowMany(std::size_t peaks) {
    return peaks == 1 ? "there is 1 peak." : "there are " + std::to_string(peaks) + " peaks.";
}

bool IsThere(int peak, std::size_t peaks) {
    return peak >= 1 && static_cast<std::size_t>(peak) <= peaks;
}

/// Counts above a straight line.
class Levels {
public:
    Levels(const SpectrumData& spectrum, int channel, int start, int end)
        : spectrum_(spectrum), from_(0), to_(spectrum.DataNo - 1) {
        if (start > end) std::swap(start, end);
        if (start < 0 || end >= spectrum.DataNo || start == end || channel < start || channel > end)
            return;
        from_ = start;
        to_ = end;
        foot_ = Count(start);
        slope_ = Quot(Count(end) - Count(start), static_cast<double>(end - start));
    }
    [[nodiscard]] double At(int channel) const {
        return Count(channel) - foot_ - slope_ * static_cast<double>(channel - from_);
    }
    /// Distance from the channel to where the level is half of `height`; none within reach.
    [[nodiscard]] std::optional<double> HalfWay(int channel, int direction, double height) const {
        const double half = height / 2.0;
        double before = height;
        for (int step = 1; step <= REACH; ++step) {
            const int at = channel + direction * step;
            if (at < from_ || at > to_) return std::nullopt;
            const double here = Mean(at);
            if (here < half) return step - 1 + Quot(before - half, before - here);
            before = here;
        }
        return std::nullopt;
    }

private:
    [[nodiscard]] double Count(int channel) const {
        return static_cast<double>(Item(spectrum_.Count, channel));
    }
    [[nodiscard]] double Mean(int channel) const {
        double sum = 0.0;
        int channels = 0;
        for (int at = std::max(channel - 1, from_); at <= std::min(channel + 1, to_); ++at) {
            sum += At(at);
            ++channels;
        }
        return sum / static_cast<double>(channels);
    }
    const SpectrumData& spectrum_;
    int from_;
    int to_;
    double foot_ = 0.0;
    double slope_ = 0.0;
};

}  // namespace

std::string ShortNumber(double value) {
    std::string text = FormatNumber(value, "0.######");
    if (text.ends_with('.')) text.pop_back();
    return text;
}

char LetterOf(NaxKind param) {
    switch (param) {
        case NAX_AMPLITUDE: return 'A';
        case NAX_POSITION: return 'P';
        case NAX_WIDTH: return 'W';
    }
    return '?';
}

std::string RuleReads(const ManualRule& rule) {
    const std::string name = Name(rule.Param, rule.Peak);
    if (rule.How == HeldBy::Fixed) return name + " stays";
    const std::string master = Name(rule.Param, rule.Master);
    if (rule.How == HeldBy::Ratio) return name + " = " + ShortNumber(rule.Value) + " * " + master;
    return name + " = " + master + (rule.Value < 0.0 ? " - " : " + ") +
           ShortNumber(std::fabs(rule.Value));
}

std::string RefusalOf(const std::vector<NaxManualPeak>& rows,
                      const std::vector<ManualRule>& rules) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const NaxManualPeak& row = rows[i];
        const char* lacks = !(row.CenterCh > 0.0)   ? "CENTER CH"
                            : !(row.MaxCount > 0.0) ? "MAX COUNT"
                            : !(row.Width > 0.0)    ? "WIDTH"
                                                    : nullptr;
        if (lacks != nullptr)
            return "Peak " + std::to_string(i + 1) + " wants a " + lacks + " above 0.";
    }
    for (const ManualRule& rule : rules) {
        const std::string which = "Constraint \"" + RuleReads(rule) + "\": ";
        if (!IsThere(rule.Peak, rows.size()))
            return which + "no peak " + std::to_string(rule.Peak) + ", " + HowMany(rows.size());
        if (rule.How == HeldBy::Fixed) continue;
        if (rule.Master == rule.Peak) return which + "a peak cannot follow itself.";
        if (!IsThere(rule.Master, rows.size()))
            return which + "no peak " + std::to_string(rule.Master) + ", " + HowMany(rows.size());
    }
    return {};
}

int FreeParameters(int peaks, const std::vector<ManualRule>& rules) {
    const auto held = std::count_if(rules.begin(), rules.end(),
                                    [peaks](const ManualRule& rule) { return rule.Peak <= peaks; });
    return 3 * peaks - static_cast<int>(held);
}

std::vector<std::size_t> OrderByCentre(const std::vector<NaxManualPeak>& rows) {
    std::vector<std::size_t> order(rows.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&rows](std::size_t a, std::size_t b) {
        return rows[a].CenterCh < rows[b].CenterCh;
    });
    return order;
}

std::vector<ManualRule> Renumbered(const std::vector<ManualRule>& rules,
                                   const std::vector<std::size_t>& order) {
    const auto now = [&order](int peak) {
        const auto at = std::find(order.begin(), order.end(), static_cast<std::size_t>(peak - 1));
        return at == order.end() ? peak : static_cast<int>(at - order.begin()) + 1;
    };
    std::vector<ManualRule> out = rules;
    for (ManualRule& rule : out) {
        rule.Peak = now(rule.Peak);
        if (rule.How != HeldBy::Fixed) rule.Master = now(rule.Master);
    }
    return out;
}

NaxManualInput ManualInputOf(int startCh, int endCh, const std::vector<NaxManualPeak>& rows,
                             const std::vector<ManualRule>& rules) {
    NaxManualInput input{
        .StartCh = Int16(startCh), .EndCh = Int16(endCh), .Peaks = rows, .Constraints = {}};
    for (const ManualRule& rule : rules) {
        NaxConstraint row{.Peak = rule.Peak, .Letter = LetterOf(rule.Param)};
        if (rule.How != HeldBy::Fixed) {
            row.Link = 'C';
            row.Master = rule.Master;
            row.Type = rule.How == HeldBy::Ratio ? NAX_LINK_RATIO : NAX_LINK_OFFSET;
            row.Value = rule.Value;
            if (rule.How == HeldBy::Offset) row.Value = -rule.Value;
            if (rule.How == HeldBy::Offset && rule.Param == NAX_WIDTH) row.Value /= FWHM_PER_W;
        }
        input.Constraints.push_back(row);
    }
    return input;
}

PeakGuess GuessPeak(const SpectrumData& spectrum, int channel, int start, int end,
                    double fallback) {
    if (channel < 0 || channel >= spectrum.DataNo)
        RaiseSubscript(channel, static_cast<std::size_t>(std::max<int>(spectrum.DataNo, 0)));
    const Levels levels(spectrum, channel, start, end);
    PeakGuess guess{.Height = levels.At(channel), .Fwhm = fallback};
    if (!(guess.Height > 0.0)) return guess;
    const auto left = levels.HalfWay(channel, -1, guess.Height);
    const auto right = levels.HalfWay(channel, 1, guess.Height);
    if (left && right)
        guess.Fwhm = *left + *right;
    else if (left || right)
        guess.Fwhm = 2.0 * (left ? *left : *right);
    return guess;
}

}  // namespace vael
