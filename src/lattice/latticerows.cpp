// The peaks and match rows of a lattice calculation as grids, logs and reports list them.
#include "lattice/latticerows.h"

#include "analysis/handpeaks.h"
#include "core/text.h"
#include "core/units.h"

namespace vael {
namespace {

std::string TypeOf(const PeakTable& byHand, const PeakRecord& peak) {
    return HoldsPeak(byHand, peak) ? "M" : "A";
}

std::optional<double> DOfCellAsItStands(const LatticeValues& values, int system,
                                        const ReflectionMatch& row) {
    const auto& cell = values.Solution.CellOut;
    try {
        return CalcDOne(system, row.H, row.K, row.L, cell(1), cell(2), cell(3), cell(4), cell(5),
                        cell(6));
    } catch (const Fault&) {
        return std::nullopt;  // the row shows no d; boxes and results stay
    }
}

}  // namespace

std::vector<LatticePeak> LatticePeaks(const MatchSource& source, const PeakTable& byHand) {
    const ParamRecord& param = source.Property.Param;
    const bool dac = source.Property.SourceType == SOURCE_DAC;
    std::vector<LatticePeak> out;
    for (int i = 0; i < source.Peaks.PeakNum; ++i) {
        const PeakRecord& peak = Item(source.Peaks.Peak, i);
        const double ch = peak.Position;
        LatticePeak line{.Ch = ch + 1.0,
                         .Intensity = peak.Intensity,
                         .Amplitude = peak.Amplitude,
                         .FwhmCh = peak.Width + peak.Width,
                         .Type = TypeOf(byHand, peak)};
        if (dac) {
            line.D = ChToUnit(UNIT_2THETA, ch, param, source.Dac);  // 0 at the angle 0
            line.TwoTheta = ThetaCu(line.D, 1.0);
        } else {
            line.KeV = ChToUnit(UNIT_KEV, ch, param, source.Dac);
            line.D = ChToUnit(UNIT_D, ch, param, source.Dac);
            line.FwhmKeV = WidthToUnit(UNIT_KEV, line.FwhmCh, param);
            line.TwoTheta = ChTo2ThetaRef(ch, param.TwoTheta, param, source.Dac);
        }
        out.push_back(std::move(line));
    }
    return out;
}

std::optional<double> LatticeRow::Relative() const {
    if (!DCalc || DObs == 0.0) return std::nullopt;
    return (DObs - *DCalc) / DObs;
}

std::string LatticeRow::Hkl() const {
    return "(" + std::to_string(H) + " " + std::to_string(K) + " " + std::to_string(L) + ")";
}

std::vector<LatticeRow> LatticeRows(const LatticeState& state, const MatchSource& source,
                                    const PeakTable& byHand, const LatticeValues* values,
                                    int system) {
    std::vector<LatticeRow> out;
    for (int i = 0; i < MAX_PEAKS; ++i) {
        const ReflectionMatch& match = Item(state.FitData.Match, i);
        if (match.Matched != TRUE_WORD) continue;
        LatticeRow row{.Index = i,
                       .H = match.H,
                       .K = match.K,
                       .L = match.L,
                       .Ch = match.Ch + 1.0,
                       .KeV = match.Energy,
                       .TwoTheta = match.ThetaCu,
                       .DObs = match.DObs,
                       .DSeed = match.DCal,
                       .DCalc = std::nullopt,
                       .Type = TypeOf(byHand, Item(source.Peaks.Peak, i)),
                       .Used = match.Excluded == FALSE_WORD};
        if (values != nullptr) row.DCalc = DOfCellAsItStands(*values, system, match);
        out.push_back(std::move(row));
    }
    return out;
}

std::array<std::string, 3> ErrorBarTexts(const LatticeValues& values, std::string_view key) {
    constexpr const char* FORMAT = "0.00000";
    std::array<std::string, 3> texts{FormatNumber(values.dX, FORMAT), "", ""};
    if (!values.Pressure) return texts;
    for (const int side : {-1, 1}) {
        MarkerArguments m = values.Marker;
        m.X += side * m.dX;
        m.Vol += side * m.dVol;
        m.a += side * static_cast<double>(m.da);
        m.c += static_cast<float>(side) * m.dc;
        m.dX = m.dVol = 0.0;
        m.da = m.dc = 0.0F;
        try {
            Item(texts, side < 0 ? 1 : 2) = FormatNumber(MarkerPressure(key, m)->P, FORMAT);
        } catch (const Fault&) {
            // an error larger than the value itself has no pressure on that side
        }
    }
    return texts;
}

std::string AngleTip(const LatticeValues& values, int system, int index) {
    if (system != SYSTEM_TRI && !(system == SYSTEM_MON && index == 4)) return {};
    return FormatNumber(Item(values.CellNow, index), "0.0000") + " +- " +
           FormatNumber(Item(values.CellError, index), "0.0000") +
           " degrees; the box has the cosine";
}

}  // namespace vael
