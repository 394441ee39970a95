// Lattice geometry: d of reflections, cell volumes, and the assignment of reflections to peaks.
#include "lattice/geometry.h"

#include "core/units.h"
#include "lattice/checkedmath.h"

#include <cmath>

namespace vael {
namespace {

constexpr double DAC_ENERGY = 1.111;  // stands where a DAC graph has no energy
constexpr double NO_DISTANCE = 99999.0;

double Radians(double degrees) { return degrees * PI_DEGREES / 180.0; }

double Squared(double x) { return x * x; }

/// 1 - cos^2 alpha - cos^2 beta - cos^2 gamma + 2 cos alpha cos beta cos gamma: the square of the
/// volume of a cell with edges of length 1.
double AngleFactor(const Cell& cell) {
    const double ca = std::cos(Radians(cell[3]));
    const double cb = std::cos(Radians(cell[4]));
    const double cg = std::cos(Radians(cell[5]));
    return 1.0 - ca * ca - cb * cb - cg * cg + 2.0 * ca * cb * cg;
}

double TriclinicD(const Cell& cell, double h, double k, double l) {
    const auto [a, b, c, alpha, beta, gamma] = cell;
    const double ca = std::cos(Radians(alpha));
    const double cb = std::cos(Radians(beta));
    const double cg = std::cos(Radians(gamma));
    const double v = Root(AngleFactor(cell)) * a * b * c;
    const double s11 = b * b * c * c * Squared(std::sin(Radians(alpha)));
    const double s22 = a * a * c * c * Squared(std::sin(Radians(beta)));
    const double s33 = a * a * b * b * Squared(std::sin(Radians(gamma)));
    const double s12 = a * b * c * c * (ca * cb - cg);
    const double s23 = a * a * b * c * (cb * cg - ca);
    const double s13 = a * b * b * c * (cg * ca - cb);
    const double q = s11 * h * h + s22 * k * k + s33 * l * l + 2.0 * s12 * h * k +
                     2.0 * s23 * k * l + 2.0 * s13 * h * l;
    return Quot(1.0, Root(Quot(q, v * v)));
}

double MonoclinicD(const Cell& cell, double h, double k, double l) {
    const auto [a, b, c, alpha, beta, gamma] = cell;
    const double angle = Radians(beta);
    const double q = Quot(h * h, a * a) + Quot(k * k * (1.0 - std::cos(2.0 * angle)) / 2.0, b * b) +
                     Quot(l * l, c * c) - Quot(Quot(2.0 * h * l * std::cos(angle), a), c);
    return Quot(std::sin(angle), Root(q));
}

/// d of one reflection by the formula of its system; nothing for an unknown one.
bool SpacingOf(int system, const Cell& cell, double h, double k, double l, double& d) {
    const double a = cell[0];
    const double b = cell[1];
    const double c = cell[2];
    switch (system) {
        case SYSTEM_CUB: d = Root(Quot(a * a, h * h + k * k + l * l)); return true;
        case SYSTEM_TET:
            d = Root(Quot(a * a, h * h + k * k + l * l * Squared(Quot(a, c))));
            return true;
        case SYSTEM_HEX:
            d = Quot(a, Root(4.0 / 3.0 * (h * h + h * k + k * k) + l * l * Squared(Quot(a, c))));
            return true;
        case SYSTEM_ORT:
            d = Quot(1.0, Root(Quot(h * h, a * a) + Quot(k * k, b * b) + Quot(l * l, c * c)));
            return true;
        case SYSTEM_MON: d = MonoclinicD(cell, h, k, l); return true;
        case SYSTEM_TRI: d = TriclinicD(cell, h, k, l); return true;
        default: return false;
    }
}

/// What the match stores of one peak.
struct PeakPlace {
    double D;
    double Energy;
    double Theta;
};

PeakPlace PlaceOf(double position, const MatchSource& source) {
    const ParamRecord& param = source.Property.Param;
    PeakPlace place{};
    if (source.Property.SourceType == SOURCE_DAC) {
        place.D = DacChannelToD(position, source.Dac);
        place.Energy = DAC_ENERGY;
    } else {
        place.D = ChToUnit(UNIT_D, position, param, source.Dac);
        place.Energy = ChToEnergy(position + 1.0, param.EgcCoef);
    }
    place.Theta = ThetaCu(place.D, place.Energy);
    return place;
}

/// Index of the reflection nearest to `d` strictly inside the window; -1 when there is none.
int NearestReflection(const CrystalRecord& crystal, double d, double range) {
    double best = NO_DISTANCE;
    int bestIndex = -1;
    for (int j = 0; j < crystal.Count; ++j) {
        const double dj = Item(crystal.D, j);
        const double distance = std::fabs(d - dj);
        if (d - range < dj && d + range > dj && distance < best) {
            best = distance;
            bestIndex = j;
        }
    }
    return bestIndex;
}

}  // namespace

void CalcDSpacings(CrystalRecord& crystal, const Cell& cell) {
    for (int i = 0; i < crystal.Count; ++i)
        SpacingOf(crystal.System, cell, Item(crystal.Hs, i), Item(crystal.Ks, i),
                  Item(crystal.Ls, i), Item(crystal.D, i));
}

double CalcDOne(int system, std::int16_t h, std::int16_t k, std::int16_t l, float a, float b,
                float c, float alpha, float beta, float gamma) {
    double d = 0.0;
    SpacingOf(system, {a, b, c, alpha, beta, gamma}, h, k, l, d);
    return d;
}

double CellVolume(const Cell& cell, int system) {
    const auto [a, b, c, alpha, beta, gamma] = cell;
    double v = 0.0;
    switch (system) {
        case SYSTEM_CUB: v = a * a * a; break;
        case SYSTEM_TET: v = a * a * c; break;
        case SYSTEM_HEX: v = a * a * HEXAGONAL_FACTOR * c; break;
        case SYSTEM_ORT: v = a * b * c; break;
        case SYSTEM_MON: v = a * b * c * std::sin(Radians(beta)); break;
        case SYSTEM_TRI: v = a * b * c * Root(AngleFactor(cell)); break;
        default: break;
    }
    return static_cast<double>(Single(v));
}

double ThetaCu(double d, double energy) {
    if (!(d > 0.0 && energy > 0.0)) return 0.0;
    const double s = LAMBDA_REFERENCE / (2.0 * d);
    const double rest = 1.0 - s * s;
    if (!(rest > 0.0)) return 0.0;
    return std::atan(s / std::sqrt(rest)) * (180.0 / PI_DEGREES);
}

void MatchPeaks(LatticeState& state, const CrystalRecord& crystal, const Cell& cell,
                const MatchSource& source) {
    if (source.GraphNo < 0 || source.GraphNo >= GRAPH_COUNT) return;
    LatticeFitData& data = state.FitData;
    data.DataNo = source.DataNo;
    data.Name = crystal.Name;
    data.Seed = cell;
    std::int16_t matched = 0;
    for (int i = 0; i < source.Peaks.PeakNum; ++i) {
        const double position = Item(source.Peaks.Peak, i).Position;
        const PeakPlace place = PlaceOf(position, source);
        const int best = NearestReflection(crystal, place.D, source.PickupRange);
        if (best < 0) continue;
        ReflectionMatch& row = Item(data.Match, i);
        row.Matched = TRUE_WORD;
        row.DCal = Item(crystal.D, best);
        row.DObs = place.D;
        row.ThetaCu = place.Theta;
        row.Ch = position;
        row.Energy = place.Energy;
        row.H = Item(crystal.Hs, best);
        row.K = Item(crystal.Ks, best);
        row.L = Item(crystal.Ls, best);
        ++matched;
    }
    data.MatchNum = matched;
}

void CarryUseList(LatticeState& state) {
    if (state.UseListValid == FALSE_WORD) {
        state.SavedUseList = {};
        state.SavedUseNum = 0;
        for (const ReflectionMatch& row : state.FitData.Match)
            if (row.Matched == TRUE_WORD && row.Excluded == FALSE_WORD)
                Item(state.SavedUseList, state.SavedUseNum++) = {row.H, row.K, row.L, row.Ch};
        return;
    }
    for (ReflectionMatch& row : state.FitData.Match) {
        if (row.Matched != TRUE_WORD) continue;
        row.Excluded = TRUE_WORD;
        for (int i = 0; i < state.SavedUseNum; ++i) {
            const SavedUse& saved = Item(state.SavedUseList, i);
            if (saved.H == row.H && saved.K == row.K && saved.L == row.L && saved.Ch == row.Ch)
                row.Excluded = FALSE_WORD;  // the channel has to agree to the last digit
        }
    }
    state.UseListValid = FALSE_WORD;
}

void ClearMatchTable(LatticeState& state, std::int16_t mode) {
    for (CrystalRecord& crystal : state.Table.Crystals) {
        crystal.D.fill(0.0);
        crystal.Flag.fill(0);
        crystal.Work1.fill(0.0);
        crystal.Work2.fill(0.0);
    }
    state.MatchCounter.fill(0);
    if (mode == 0) state.FitData = {};
    if (mode == 1) state.FitData.Seed = {};
}

}  // namespace vael
