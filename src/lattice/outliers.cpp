// Choosing the rows of a refinement by rule, where no user unticks them by hand.
#include "lattice/outliers.h"

#include "core/fault.h"
#include "core/text.h"
#include "lattice/checkedmath.h"

#include <algorithm>
#include <cmath>

namespace vael {
namespace {

constexpr double SAME_D = 1e-7;           // relative; closer than any two lines of one pattern
constexpr double NORMAL_FACTOR = 1.4826;  // standard deviation over median absolute deviation
constexpr double LEAST_DEVIATION = 1e-4;
constexpr double OUTLIER_LIMIT = 4.0;

bool InUse(const ReflectionMatch& row) {
    return row.Matched == TRUE_WORD && row.Excluded == FALSE_WORD;
}

double DOf(int system, const Cell& cell, const Hkl& index) {
    const auto edge = [&](std::size_t i) { return Single(cell[i]); };
    return CalcDOne(system, index[0], index[1], index[2], edge(0), edge(1), edge(2), edge(3),
                    edge(4), edge(5));
}

UntickedRow Untick(LatticeState& state, int row, std::string reason) {
    ReflectionMatch& match = Item(state.FitData.Match, row);
    match.Excluded = TRUE_WORD;
    return {row, {match.H, match.K, match.L}, std::move(reason)};
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t n = values.size();
    return n % 2 == 1 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2.0;
}

/// Rows that the fit sees: a row in use whose angle is 0 is no observation.
bool IsObservation(const ReflectionMatch& row) { return InUse(row) && row.ThetaCu > 0.0; }

/// The row in use whose deviation lies farthest off the median, when that is beyond the limit. The
/// median and the spread are those of the observations.
struct Worst {
    int Row = -1;
    double Deviation = 0.0;  // relative, less the median
    double Limit = 0.0;
};

Worst FindWorst(const LatticeState& state, const LatticeValues& values, int system) {
    std::array<double, MAX_PEAKS> deviation{};
    std::vector<double> observed;
    for (int i = 0; i < MAX_PEAKS; ++i) {
        const ReflectionMatch& row = Item(state.FitData.Match, i);
        if (!InUse(row)) continue;
        Item(deviation, i) = Quot(row.DObs - CalculatedD(values, system, row), row.DObs);
        if (IsObservation(row)) observed.push_back(Item(deviation, i));
    }
    Worst worst;
    if (observed.empty()) return worst;
    const double middle = Median(observed);
    for (double& value : observed) value = std::fabs(value - middle);
    worst.Limit = OUTLIER_LIMIT * std::max(NORMAL_FACTOR * Median(observed), LEAST_DEVIATION);
    for (int i = 0; i < MAX_PEAKS; ++i) {
        const double off = Item(deviation, i) - middle;
        if (!InUse(Item(state.FitData.Match, i)) || std::fabs(off) <= worst.Limit) continue;
        if (worst.Row >= 0 && std::fabs(off) <= std::fabs(worst.Deviation)) continue;
        worst.Row = i;
        worst.Deviation = off;
    }
    return worst;
}

int CountObservations(const LatticeState& state) {
    return static_cast<int>(
        std::count_if(state.FitData.Match.begin(), state.FitData.Match.end(), IsObservation));
}

void Append(std::vector<UntickedRow>& all, std::vector<UntickedRow> more) {
    all.insert(all.end(), std::make_move_iterator(more.begin()),
               std::make_move_iterator(more.end()));
}

}  // namespace

int ParameterCount(int system) {
    constexpr std::array<int, 6> counts{1, 2, 2, 3, 4, 6};
    return Item(counts, system);
}

std::vector<Hkl> ParseReflections(std::string_view text) {
    std::vector<Hkl> list;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(",;"), text.size());
        const std::string piece = Trim(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (piece.empty()) continue;
        std::vector<double> numbers;
        for (const std::string& name : SplitFileList(piece)) {
            const auto value = ParseNumber(name);
            if (value && *value == std::trunc(*value) && std::fabs(*value) <= 999.0)
                numbers.push_back(*value);
            else
                numbers.assign(4, 0.0);  // no triple any more
        }
        if (numbers.size() != 3 || (numbers[0] == 0.0 && numbers[1] == 0.0 && numbers[2] == 0.0))
            throw Fault(FaultNumber::Type, "Three whole numbers h k l were expected, not \"" +
                                               piece.substr(0, 40) + "\".");
        list.push_back({Whole16(numbers[0]), Whole16(numbers[1]), Whole16(numbers[2])});
    }
    return list;
}

std::vector<UntickedRow> KeepListed(LatticeState& state, int system, const Cell& cell,
                                    std::span<const Hkl> listed) {
    std::vector<UntickedRow> unticked;
    for (int i = 0; i < MAX_PEAKS; ++i) {
        const ReflectionMatch& row = Item(state.FitData.Match, i);
        if (!InUse(row)) continue;
        const double d = DOf(system, cell, {row.H, row.K, row.L});
        const bool wanted = std::any_of(listed.begin(), listed.end(), [&](const Hkl& index) {
            return std::fabs(DOf(system, cell, index) - d) <= SAME_D * d;
        });
        if (!wanted) unticked.push_back(Untick(state, i, "not among the listed reflections"));
    }
    return unticked;
}

std::vector<UntickedRow> KeepLargest(LatticeState& state, const PeakTable& peaks) {
    std::vector<UntickedRow> unticked;
    const auto net = [&](int row) { return Item(peaks.Peak, row).Intensity; };
    for (int i = 0; i < MAX_PEAKS; ++i) {
        const ReflectionMatch& row = Item(state.FitData.Match, i);
        if (!InUse(row)) continue;
        for (int j = 0; j < MAX_PEAKS; ++j) {
            const ReflectionMatch& other = Item(state.FitData.Match, j);
            if (j == i || !InUse(other)) continue;
            if (other.H != row.H || other.K != row.K || other.L != row.L) continue;
            if (net(j) > net(i) || (net(j) == net(i) && j < i)) {
                unticked.push_back(Untick(state, i,
                                          "peak " + std::to_string(j + 1) +
                                              " on the same reflection has the larger net count"));
                break;
            }
        }
    }
    return unticked;
}

RuledValues CalcByRules(LatticeState& state, const CalcRequest& request, const MatchSource& source,
                        const RowRules& rules, const Talk& talk) {
    RuledValues out;
    ClearMatchTable(state, 0);
    const bool known = request.System >= SYSTEM_CUB && request.System <= SYSTEM_TRI;
    if (known) {
        // 1. The match alone, so that there are rows to choose from.
        CrystalRecord& crystal = Item(state.Table.Crystals, request.CrystalIndex);
        crystal.System = request.System;
        CalcDSpacings(crystal, request.Seed);
        MatchPeaks(state, crystal, request.Seed, source);
        // 2. What was asked for, and one peak a reflection.
        if (!rules.Reflections.empty())
            Append(out.Unticked,
                   KeepListed(state, request.System, request.Seed, rules.Reflections));
        if (rules.DropOutliers) Append(out.Unticked, KeepLargest(state, source.Peaks));
    }
    // 3. The cell, and its outliers, worst first.
    out.Values = CalcLattice(state, request, source, talk);
    if (!known || !rules.DropOutliers || out.Values.Status != CalcStatus::Ok) return out;
    const Talk silent;
    while (CountObservations(state) > ParameterCount(request.System) + 1) {
        const Worst worst = FindWorst(state, out.Values, request.System);
        if (worst.Row < 0) break;
        UntickedRow dropped =
            Untick(state, worst.Row,
                   "d is off by " + FormatNumber(100.0 * worst.Deviation, "0.000") +
                       " %, more than " + FormatNumber(100.0 * worst.Limit, "0.000") + " %");
        LatticeValues next = CalcLattice(state, request, source, silent);
        if (next.Status != CalcStatus::Ok) {
            Item(state.FitData.Match, worst.Row).Excluded = FALSE_WORD;
            out.Values = CalcLattice(state, request, source, silent);
            break;
        }
        out.Values = std::move(next);
        out.Unticked.push_back(std::move(dropped));
    }
    return out;
}

}  // namespace vael
