// The manual NAX run: its input, its report, and what both runs write into the tables.
#include "analysis/naxwalk.h"

#include "analysis/peak.h"
#include "core/fault.h"
#include "core/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace vael {
namespace {

constexpr int BACKGROUND_TERMS = 3;
constexpr std::array<const char*, 3> PARAM_NAMES{"AMPLITUDE", "POSITION", "WIDTH"};

std::optional<NaxKind> KindOf(char letter) {
    switch (letter) {
        case 'A':
        case 'a': return NAX_AMPLITUDE;
        case 'P':
        case 'p': return NAX_POSITION;
        case 'W':
        case 'w': return NAX_WIDTH;
        default: return std::nullopt;
    }
}

bool IsLink(char letter) { return letter == 'C' || letter == 'c'; }

/// One constraint row into the list; false when it names what is not there.
bool Constrain(const NaxConstraint& row, NaxState& state) {
    const std::optional<NaxKind> kind = KindOf(row.Letter);
    if (!kind || row.Peak < 1 || row.Peak > state.NaxPeakNum) return false;
    NaxParam& param = Item(state.Param, 3 * (row.Peak - 1) + *kind);
    param.Free = false;
    if (!IsLink(row.Link)) {
        param.Link = NAX_LINK_NONE;
        return true;
    }
    if (row.Master < 1 || row.Master > state.NaxPeakNum || row.Type == NAX_LINK_NONE) return false;
    param.Link = row.Type;
    param.Master = 3 * (row.Master - 1) + *kind;
    param.Term = row.Value;
    return true;
}

/// Whether every chain of links ends at a parameter that is free or fixed.
bool ChainsEnd(const NaxState& state) {
    for (const NaxParam& start : state.Param) {
        const NaxParam* param = &start;
        for (std::size_t hop = 0; param->Link != NAX_LINK_NONE; ++hop) {
            if (hop > state.Param.size()) return false;
            param = &Item(state.Param, param->Master);
        }
    }
    return true;
}

void Report(const NaxState& state, const Talk& talk) {
    for (std::size_t k = 0; k < state.Param.size(); ++k) {
        const NaxParam& param = state.Param[k];
        const bool fixed = !param.Free && param.Link == NAX_LINK_NONE;
        talk.log(std::string(PARAM_NAMES[k % 3]) + WholeText(static_cast<long long>(k / 3 + 1)) +
                 " " + FormatAligned(param.Value, "#0.0000") + " " +
                 FormatAligned(param.Error, "#0.0000") + " " + (fixed ? "FIXED" : "     ") + " M");
    }
}

/// The converged parameters as rows and one group.
void TakeRows(const NaxState& state, NaxResult& result) {
    result.Groups.push_back(
        {.From = state.NaxStartCh,
         .To = state.NaxEndCh,
         .A = state.Background[0],
         .B = state.Background[1],
         .C = state.Background[2],
         .P = (static_cast<double>(state.NaxStartCh) + static_cast<double>(state.NaxEndCh)) / 2.0,
         .Status = "CONV",
         .Passes = result.Outcome.Iterations,
         .Candidates = state.NaxPeakNum,
         .Peaks = state.NaxPeakNum});
    for (std::size_t k = 0; k < state.Param.size(); k += 3) {
        const NaxParam* param = &state.Param[k];
        const double fwhm = std::fabs(param[NAX_WIDTH].Value) * FWHM_PER_W;
        result.Peaks.push_back({.Position = param[NAX_POSITION].Value,
                                .Height = param[NAX_AMPLITUDE].Value,
                                .Fwhm = fwhm,
                                .OwnWidth = fwhm,
                                .PositionError = param[NAX_POSITION].Error,
                                .HeightError = param[NAX_AMPLITUDE].Error,
                                .FwhmError = param[NAX_WIDTH].Error * FWHM_PER_W});
    }
    std::stable_sort(
        result.Peaks.begin(), result.Peaks.end(),
        [](const NaxPeakRow& a, const NaxPeakRow& b) { return a.Position < b.Position; });
}

PeakRecord RecordOf(const NaxPeakRow& row, std::int16_t funcType, const SpectrumData& spectrum) {
    PeakRecord peak{};
    peak.FitState = ALL_BITS;
    peak.FuncType = funcType;  // told as it is set; the shape is Gaussian all the same
    peak.Amplitude = row.Height;
    peak.GaussRatio = 1.0;
    peak.Width = row.Fwhm / 2.0;
    peak.Position = row.Position - 1.0;
    const double last = static_cast<double>(std::max<int>(spectrum.DataNo - 1, 0));
    peak.StartCh = Whole16(std::clamp(peak.Position - 2.0 * peak.Width, 0.0, last));
    peak.EndCh = Whole16(std::clamp(peak.Position + 2.0 * peak.Width, 0.0, last));
    return peak;
}

void Store(const NaxResult& result, std::int16_t funcType, const NaxTarget& target,
           const Marks& marks) {
    std::fill(target.Background.begin(), target.Background.end(), 0);
    int first = -1;
    int last = -1;
    for (const NaxPeakRow& row : result.Peaks) {
        if (row.Height == 0.0) break;  // the end of the rows
        const PeakRecord peak = RecordOf(row, funcType, target.Spectrum);
        const int at = AddPeak(0, target.Window, target.Slot, peak, target.Peaks, marks);
        CalcIntensity(target.Spectrum, target.Peaks, at);
        if (at >= 0 && first < 0) first = at;
        last = std::max(last, at);
        const NaxGroup& group = Item(result.Groups, row.Group);
        NaxStoreBackground(group.A, group.B, group.C, group.P, group.From, group.To,
                           target.Background);
    }
    if (first >= 0)
        AdjustRegions(target.Window, target.Slot, first, last, target.Spectrum, target.Peaks,
                      marks);
}

}  // namespace

int COND(const NaxManualInput& input, NaxState& state) {
    // 1. The region.
    state.Limits = NaxLimits{};
    state.NaxStartCh = input.StartCh;
    state.NaxEndCh = input.EndCh;
    const int channels = input.EndCh - input.StartCh + 1;
    if (channels < 1 || channels > NAX_POINTS) return 1;
    if (input.StartCh < 1 || input.EndCh > state.ChannelNum) return 1;
    // 2. The peaks, every parameter free at its start value.
    if (3 * input.Peaks.size() > NAX_PARAMS) return 1;
    state.NaxPeakNum = static_cast<std::int16_t>(input.Peaks.size());
    state.NaxParamNum = static_cast<std::int16_t>(state.NaxPeakNum == 0 ? 3 : 3 * state.NaxPeakNum);
    state.Param.clear();
    for (const NaxManualPeak& peak : input.Peaks) {
        state.Param.push_back({.Value = peak.MaxCount});
        state.Param.push_back({.Value = peak.CenterCh});
        state.Param.push_back({.Value = peak.Width / FWHM_PER_W});
    }
    // 3. The constraints.
    for (const NaxConstraint& row : input.Constraints)
        if (!Constrain(row, state)) return 1;
    if (!ChainsEnd(state)) return 1;
    const auto free = std::count_if(state.Param.begin(), state.Param.end(),
                                    [](const NaxParam& param) { return param.Free; });
    return free + BACKGROUND_TERMS > NAX_PARAMS ? 1 : 0;
}

NaxResult NaxFitManual(const NaxManualInput& input, const SpectrumData& spectrum,
                       const NaxSettings& settings, NaxState& state, const Talk& talk) {
    NaxResult result;
    result.Result = -1;
    try {
        state = NaxState{};
        NaxSetupGraph(spectrum, settings.TwoTheta, state);
        if (COND(input, state) != 0) {
            talk.say("Error in Function COND", "");
            return result;
        }
        result.Outcome = NaxIterate(state, talk);
        Report(state, talk);
        if (result.Outcome.Flag == 0 || result.Outcome.Flag == ALL_BITS) {
            talk.say("Failed to fit", "");
            return result;
        }
        TakeRows(state, result);
        const NaxGroup& group = result.Groups.front();
        NaxStoreBackground(group.A, group.B, group.C, group.P, group.From, group.To,
                           state.NaxBackground);
        result.Candidates = state.NaxPeakNum;
        result.Result = 0;
    } catch (const Fault&) {
        talk.say("Can not fit", "");
        result.Peaks.clear();
        result.Groups.clear();
    }
    return result;
}

void NaxStoreAll(const NaxResult& result, std::int16_t funcType, const NaxTarget& target,
                 const Marks& marks) {
    Store(result, funcType, target, marks);
}

void NaxStoreManual(const NaxResult& result, std::int16_t funcType, const NaxTarget& target,
                    const Marks& marks) {
    Store(result, funcType, target, marks);
}

}  // namespace vael
