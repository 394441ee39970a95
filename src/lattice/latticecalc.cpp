// The lattice calculation: from a graph's peaks to the cell, the volume and the pressure.
#include "lattice/latticecalc.h"

#include "core/text.h"
#include "core/units.h"
#include "lattice/checkedmath.h"

#include <cmath>

namespace vael {
namespace {

std::string WithError(double value, double error, std::string_view format,
                      std::string_view errorFormat) {
    return FormatNumber(value, format) + "+-" + FormatNumber(error, errorFormat);
}

std::string WithError(double value, double error, std::string_view format) {
    return WithError(value, error, format, format);
}

double Out(const LatticeValues& values, int i) {
    return static_cast<double>(values.Solution.CellOut(i));
}

double Err(const LatticeValues& values, int i) {
    return static_cast<double>(values.Solution.CellErr(i));
}

/// The cell with its angles in degrees, and what the system fixes without an error.
void FillCell(LatticeValues& values, int system) {
    for (std::size_t i = 0; i < 3; ++i) {
        values.CellNow[i] = Out(values, static_cast<int>(i) + 1);
        values.CellError[i] = Err(values, static_cast<int>(i) + 1);
        values.CellNow[i + 3] = 90.0;
    }
    if (system == SYSTEM_HEX) values.CellNow[5] = 120.0;
    for (std::size_t i = 3; i < 6; ++i) {
        if (system != SYSTEM_TRI && !(system == SYSTEM_MON && i == 4)) continue;
        const double cosine = Out(values, static_cast<int>(i) + 1);
        const double sine = Root(1.0 - cosine * cosine);
        values.CellNow[i] = std::acos(cosine) * 180.0 / PI_DEGREES;
        values.CellError[i] = Quot(Err(values, static_cast<int>(i) + 1), sine) * 180.0 / PI_DEGREES;
    }
}

/// Sample mode: free constants with their errors, fixed angles as literals. The angles of a
/// monoclinic or triclinic cell show as cosines, as the fit has them.
void ShowSample(LatticeValues& values, const CrystalRecord& crystal, int system) {
    values.V0 = CellVolume(crystal.ReferenceCell(), system);
    values.V = Out(values, 7);
    values.dV = Err(values, 7);
    values.X = Quot(values.V, values.V0);
    values.dX = Quot(values.dV, values.V0);

    auto& boxes = values.LatticeLength;
    const auto result = [&](int i) {
        return WithError(Out(values, i), Err(values, i), "#0.000000");
    };
    for (int i = 1; i <= 3; ++i) Item(boxes, i - 1) = result(i);
    switch (system) {
        case SYSTEM_HEX: boxes[3] = boxes[4] = "90.000000", boxes[5] = "120.000000"; break;
        case SYSTEM_MON: boxes[3] = boxes[5] = "90.00000", boxes[4] = result(5); break;
        case SYSTEM_TRI:
            for (int i = 4; i <= 6; ++i) Item(boxes, i - 1) = result(i);
            break;
        default: boxes[3] = boxes[4] = boxes[5] = "90.000000"; break;
    }
    values.Vol = WithError(values.V, values.dV, "0.000000");
    values.VolPerVol0 = WithError(values.X, values.dX, "#0.000000");
    values.HasBoxes = true;
}

/// Marker mode: the volume and its error from the edges, for cubic and hexagonal markers only.
MarkerArguments ShowMarker(LatticeValues& values, const CrystalRecord& crystal, int system) {
    MarkerArguments marker;
    const double a = Out(values, 1);
    marker.a = a;
    if (system == SYSTEM_CUB) {
        // The error of a from that of 1/a^2.
        marker.da = Single(0.5 * static_cast<double>(values.Solution.ParamErr(1)) * a * a * a);
        const double da = static_cast<double>(marker.da);
        values.V = a * a * a;
        values.dV = 3.0 * da * a * a;
        values.V0 = crystal.A * crystal.A * crystal.A;
    } else {
        // The direct errors are multiplied by the cubes, unlike the cubic branch; kept so.
        const double c = Out(values, 3);
        marker.da = Single(0.5 * Err(values, 1) * a * a * a);
        marker.c = values.Solution.CellOut(3);
        marker.dc = Single(0.5 * Err(values, 3) * c * c * c);
        const double da = static_cast<double>(marker.da);
        const double dc = static_cast<double>(marker.dc);
        values.V = a * a * c * HEXAGONAL_FACTOR;
        values.dV = (a * dc + 2.0 * c * da) * a * HEXAGONAL_FACTOR;
        values.V0 = crystal.A * crystal.A * crystal.C * HEXAGONAL_FACTOR;
    }
    values.X = Quot(values.V, values.V0);
    values.dX = Quot(values.dV, values.V0);
    marker.X = values.X;
    marker.dX = values.dX;
    marker.Vol = values.V;
    marker.dVol = values.dV;
    marker.Vol0 = values.V0;

    auto& boxes = values.LatticeLength;
    const auto result = [&](int i) {
        return WithError(Out(values, i), Err(values, i), "0.000000", "#0.000000");
    };
    boxes[0] = boxes[1] = result(1);
    boxes[2] = result(system == SYSTEM_HEX ? 3 : 1);
    boxes[3] = boxes[4] = "90.00000";
    boxes[5] = system == SYSTEM_HEX ? "120.00000" : "90.00000";
    values.Vol = WithError(values.V, values.dV, "0.000000");
    values.VolPerVol0 = WithError(values.X, values.dX, "#.000000");
    values.HasBoxes = true;
    return marker;
}

CalcStatus StatusOf(int refined) {
    switch (refined) {
        case REFINE_TOO_FEW: return CalcStatus::TooFewLines;
        case REFINE_SINGULAR: return CalcStatus::Singular;
        case REFINE_CONVERSION: return CalcStatus::NoCell;
        default: return CalcStatus::Ok;
    }
}

}  // namespace

LatticeValues CalcLattice(LatticeState& state, const CalcRequest& request,
                          const MatchSource& source, const Talk& talk) {
    LatticeValues values;
    state.FitFailed = 0;
    const int system = request.System;
    const bool known = system >= SYSTEM_CUB && system <= SYSTEM_TRI;
    if (!known && request.Mode == MODE_SAMPLE) {
        talk.say("Lattice Type Error", "");
        values.Status = CalcStatus::LatticeType;
        return values;
    }
    state.FitData.CurrentSeed = request.Seed;
    int refined = REFINE_OK;
    const int result = LatticeSolve(state, request.System, request.CrystalIndex, request.Seed,
                                    source, talk, values.Solution, &refined);
    for (const ReflectionMatch& row : state.FitData.Match)
        if (row.Matched == TRUE_WORD && row.Excluded == FALSE_WORD) ++values.UsedRows;
    values.Status = StatusOf(refined);
    if (result != 0 || !known) return values;

    const CrystalRecord& crystal = Item(state.Table.Crystals, request.CrystalIndex);
    FillCell(values, system);
    if (request.Mode == MODE_SAMPLE) {
        ShowSample(values, crystal, system);
    } else if (system == SYSTEM_CUB || system == SYSTEM_HEX) {
        MarkerArguments& marker = values.Marker = ShowMarker(values, crystal, system);
        marker.TK = ToKelvin(request.Temperature, request.Unit);
        marker.TC = ToCelsius(request.Temperature, request.Unit);
        values.Pressure = MarkerPressure(MarkerKey(crystal.Name), marker);
        if (values.Pressure)
            values.PressureText = WithError(values.Pressure->P, values.Pressure->Error, "0.00000");
    }
    return values;
}

CalcRequest RequestFor(const LatticeState& state, std::int16_t crystalIndex, std::int16_t mode,
                       double temperature, int unit) {
    const CrystalRecord& crystal = Item(state.Table.Crystals, crystalIndex);
    CalcRequest request;
    request.CrystalIndex = crystalIndex;
    request.System = crystal.System == SYSTEM_ANY ? std::int16_t{SYSTEM_CUB} : crystal.System;
    request.Seed = crystal.ReferenceCell();
    request.Mode = mode;
    request.Temperature = temperature;
    request.Unit = unit;
    return request;
}

double CalculatedD(const LatticeValues& values, int system, const ReflectionMatch& row) {
    const auto edge = [&](std::size_t i) { return Single(values.CellNow[i]); };
    return CalcDOne(system, row.H, row.K, row.L, edge(0), edge(1), edge(2), edge(3), edge(4),
                    edge(5));
}

}  // namespace vael
