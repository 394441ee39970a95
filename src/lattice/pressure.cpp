// Pressure scales of the markers: equations of state as plain functions, in GPa.
#include "lattice/pressure.h"

#include "core/fault.h"
#include "core/text.h"
#include "lattice/checkedmath.h"
#include "lattice/pressuretables.h"

#include <array>
#include <cmath>
#include <ostream>
#include <span>

namespace vael {
namespace {

constexpr double KELVIN_OFFSET = 273.15;
constexpr double PT_EDGE = 3.9231;  // angstrom, fixed in the Vinet scale

/// x^(7/3) - x^(5/3), the strain term of the Birch-Murnaghan form.
double BirchTerm(double x) { return Power(x, 7.0 / 3.0) - Power(x, 5.0 / 3.0); }

/// Value at compression `c` of a column of pressures on the grid first + step * row: the cubic
/// through four neighbouring rows, the end ones where c lies outside.
double FourPointValue(std::span<const double> column, double first, double c) {
    const int n = static_cast<int>(column.size());
    const auto x = [first](int i) { return (i - 1) * TABLE_STEP + first; };
    int i = 1;
    while (i < n && x(i) < c) ++i;
    if (i == n) i = n - 1;
    if (i < 4) i = 3;
    double sum = 0.0;
    for (int j = i - 2; j <= i + 1; ++j) {
        double term = Item(column, j - 1);
        for (int k = i - 2; k <= i + 1; ++k)
            if (k != j) term *= (c - x(k)) / (x(j) - x(k));
        sum += term;
    }
    return sum;
}

/// One pass of the Debye scheme: D at t from D and E at t - h.
struct DebyeStep {
    double D;
    double E;
};

DebyeStep NextDebye(const DebyeStep& now, double t, double h, double g) {
    const double m = t - g;
    const double a = 3.0 * (Log((std::exp(t) - 1.0) / t) - t);
    const double b = 3.0 / (std::exp(m) - 1.0);
    const double c = Log(t / (m - g));
    const double f = m * c - g;
    const double r = m / g;
    const double gg = (1.0 - r * c) * (r * 0.5);
    const double hh = (2.0 * gg + c) * m / 3.0;
    const double j = (f + hh) / h;
    const double k = (a + 1.0) / 3.0 + now.E;
    const double d = (c + k - b * hh - (j - gg) * now.D) / (0.333333333 - gg - j);
    return {d, d / 3.0 + now.E - k};
}

}  // namespace

double ToKelvin(double value, int unit) {
    return unit == TEMPERATURE_CELSIUS ? value + KELVIN_OFFSET : value;
}

double ToCelsius(double value, int unit) {
    return unit == TEMPERATURE_CELSIUS ? value : value - KELVIN_OFFSET;
}

double DebyeFunction(double x) {
    if (x <= 0.0) return 1.0;
    if (x <= 0.07) return 1.0 - x * (0.375 - 0.05 * x);
    if (x > 11.0) return 19.481818 / (x * x * x);
    const std::int16_t passes = Trunc16(x / 0.01 + 0.5);
    const double h = x / passes;
    const double g = h * 0.5;
    DebyeStep step{1.0 - (0.375 - h * 0.05) * h, (0.375 - h * 0.025) * h};
    for (std::int16_t i = 2; i <= passes; ++i) step = NextDebye(step, i * h, h, g);
    return step.D;
}

double PressureNaClDecker(double x, double tk) {
    const double root2 = 1.4142136;
    const double r = 2.82 * Power(x, 0.33333333333);  // nearest neighbours, angstrom
    const double rho = 1.0 / 3.2038;
    const double rho1 = (2.0 * rho) * 1.2 / 2.8200000000000003;
    const double rho2 = (2.0 * rho) * 1.62 / 2.8200000000000003;
    const double e1 = Exp(-r / rho);
    const double e2 = Exp((r * -root2) / rho1);
    const double e3 = Exp((r * -root2) / rho2);
    double s = Quot(-40.313716478799996, r * r) -
               100.0 * (Quot(8.399999999999999, std::pow(r, 7)) + Quot(14.4, std::pow(r, 9)));
    s += 6000.0 *
         ((13.336044 * root2 / rho1) * e2 + (2.1068 / rho) * e1 + (1.137672 * root2 / rho2) * e3);
    const double p0 = Quot(s, 6.0 * r * r);
    const double grueneisen = 1.59 * Power(x, 0.93);
    const double debye = 279.0 * Exp((1.59 - grueneisen) / 0.93);  // kelvin
    const double d = DebyeFunction(Quot(debye, tk));
    const double u = 0.00013806620000000002 * (6.0 * tk * d + 2.25 * debye);
    return 100.0 * (p0 + Quot(grueneisen * u, 2.0 * r * r * r));
}

double PressurePtJamieson(double x, double tk) {
    if (x >= 1.061 || x <= 0.819) return 0.0;
    std::array<double, PT_ROWS> column;
    for (std::size_t i = 0; i < column.size(); ++i) {
        const auto& [a, b, c] = PT_TABLE[i];
        column[i] = a + 1e-3 * b * tk + 1e-8 * c * tk * tk;
    }
    return FourPointValue(column, PT_FIRST, 1.0 - x);
}

double PressureMgOTable(double x, double tk) {
    std::array<double, MGO_ROWS> column;
    for (std::size_t i = 0; i < column.size(); ++i) {
        const auto& [a, b, c, e, f] = MGO_TABLE[i];
        column[i] = a + 1e-3 * b * tk + 1e-6 * c * tk * tk + 1e-9 * e * tk * tk * tk +
                    1e-13 * f * tk * tk * tk * tk;
    }
    return FourPointValue(column, MGO_FIRST, 1.0 - x);
}

// Bulk modulus 166.65 GPa, its derivative 4 + 1.4823, Grueneisen term 0.00714 GPa/K with the volume
// dependence of alpha K: Anderson, Isaak and Yamamoto 1989.
double PressureAuAnderson(double x, double tk) {
    const double y = Quot(1.0, x);
    const double cold = 3.0 / 2.0 * 166.65 * BirchTerm(y) *
                        (1.0 - (Power(y, 2.0 / 3.0) - 1.0) * (3.0 / 4.0) * -1.4823000000000004);
    return (0.00714 - 0.0115 * Log(y)) * (tk - 300.0) + cold;
}

double PressurePtBirch(double vol, double vol0, double tk) {
    const double a1 = 2.4e-5;
    const double a2 = 0.284e-8;
    const double a3 = 0.097;
    const double expansion = (a2 * tk * tk / 2.0 + a1 * tk + Quot(a3, tk)) -
                             (a2 * 300.0 * 300.0 / 2.0 + a1 * 300.0 + a3 / 300.0);
    const double volT = vol0 * Exp(expansion);
    const double ratio = Quot(vol0, volT);
    const double modulus = 270.28 * Power(ratio, 5.301);
    const double derivative = Quot(5.29, ratio);
    const double x = Quot(volT, vol);
    return modulus * (3.0 / 2.0) * BirchTerm(x) *
           (1.0 - (Power(x, 2.0 / 3.0) - 1.0) * (4.0 - derivative) * (3.0 / 4.0));
}

double PressurePtVinet(double x, double tc) {
    return Quot(798.31 * (1.0 - x), x * x) * Exp(7.2119 * (1.0 - x)) +
           1e-4 * 0.261 * 266.0 * (tc - 27.0);
}

double PressureHbnAxis(double c, double tc) {
    const double modulus = 27.0852 - 0.00701 * (tc - 26.85);
    const double c0 = 6.6562 + 0.000274 * (tc - 26.85);
    const double x = Quot(c0, c);
    return 3.0 / 2.0 * modulus * BirchTerm(x) *
           (1.0 + 3.0 / 4.0 * 9.4984 * (Power(x, 2.0 / 3.0) - 1.0));
}

double PressureSimulation([[maybe_unused]] double v, double v0, double tk) {
    const double modulus = 27.6 - 0.0081 * (tk - 298.0);
    const double w = v0 * Exp(3.68e-5 * (tk + 298.0) * (tk - 298.0) / 2.0);
    return 3.0 / 2.0 * modulus * BirchTerm(w) *
           (1.0 + 3.0 / 4.0 * 6.5 * (Power(w, 2.0 / 3.0) - 1.0));
}

void WriteSimulationTable(std::ostream& out) {
    constexpr double volume = 60.3793;  // 3.9231^3
    out << "v/v0, v0/v, p(298k), p(473k), p(873k), p(1273k)\r\n";
    for (int i = 0; i <= 190; ++i) {
        const double r = 1.04 - 0.001 * i;
        out << FormatNumber(r, "##0.000000") << ',' << FormatNumber(1.0 / r, "##0.000000");
        for (const double tk : {298.0, 473.0, 873.0, 1273.0})
            out << ',' << FormatNumber(PressureSimulation(r * volume, volume, tk), "##0.0000");
        out << "\r\n";
    }
}

std::optional<PressureScale> FindScale(std::string_view key) {
    struct Entry {
        std::string_view Key;
        PressureScale Scale;
    };
    // Capitals count: "NaCl" or "pt" select nothing here, though the log knows them.
    static constexpr std::array<Entry, 15> entries{{{"NACL", PressureScale::NaClDecker},
                                                    {"Pt", PressureScale::PtJamieson},
                                                    {"PT", PressureScale::PtJamieson},
                                                    {"Au", PressureScale::AuAnderson},
                                                    {"AU", PressureScale::AuAnderson},
                                                    {"MgO", PressureScale::MgOTable},
                                                    {"MGO", PressureScale::MgOTable},
                                                    {"PT_B", PressureScale::PtBirch},
                                                    {"pt_B", PressureScale::PtBirch},
                                                    {"Pt_B", PressureScale::PtBirch},
                                                    {"PT_H", PressureScale::PtVinet},
                                                    {"pt_H", PressureScale::PtVinet},
                                                    {"Pt_H", PressureScale::PtVinet},
                                                    {"pt_h", PressureScale::PtVinet},
                                                    {"hBN", PressureScale::HbnAxis}}};
    for (const Entry& entry : entries)
        if (entry.Key == key) return entry.Scale;
    return std::nullopt;
}

std::string ScaleName(PressureScale scale) {
    switch (scale) {
        case PressureScale::NaClDecker: return "NaCl, Decker 1971";
        case PressureScale::PtJamieson: return "Pt, Jamieson et al. 1982";
        case PressureScale::AuAnderson: return "Au, Anderson et al. 1989";
        case PressureScale::MgOTable: return "MgO, Jamieson et al. 1982";
        case PressureScale::PtBirch: return "Pt, Birch-Murnaghan";
        case PressureScale::PtVinet: return "Pt, Holmes et al. 1989 (Vinet)";
        case PressureScale::HbnAxis: return "hBN, c axis";
    }
    return "";
}

std::optional<PressureValue> MarkerPressure(std::string_view key, const MarkerArguments& m) {
    const auto scale = FindScale(key);
    if (!scale) return std::nullopt;
    PressureValue out;
    out.Scale = *scale;
    // The value, and half the difference over the error on both sides.
    const auto symmetric = [&](auto pressure) {
        out.P = pressure(m.X);
        out.Error = (pressure(m.X - m.dX) - pressure(m.X + m.dX)) / 2.0;
    };
    switch (*scale) {
        case PressureScale::NaClDecker: {
            out.P = PressureNaClDecker(m.X, m.TK);
            const double above = PressureNaClDecker(m.X + m.dX, m.TK);
            const double below = PressureNaClDecker(m.X - m.dX, m.TK);
            out.Error = ((out.P - above) + (below - out.P)) / 2.0;
            break;
        }
        case PressureScale::PtJamieson:
            symmetric([&](double x) { return PressurePtJamieson(x, m.TK); });
            break;
        case PressureScale::AuAnderson:
            symmetric([&](double x) { return PressureAuAnderson(x, m.TK); });
            break;
        case PressureScale::MgOTable:
            symmetric([&](double x) { return PressureMgOTable(x, m.TK); });
            break;
        case PressureScale::PtBirch:  // one side only, with its sign
            out.P = PressurePtBirch(m.Vol, m.Vol0, m.TK);
            out.Error = out.P - PressurePtBirch(m.Vol + m.dVol, m.Vol0, m.TK);
            break;
        case PressureScale::PtVinet:
            out.P = PressurePtVinet(m.a / PT_EDGE, m.TC);
            out.Error = out.P - PressurePtVinet((m.a + static_cast<double>(m.da)) / PT_EDGE, m.TC);
            break;
        case PressureScale::HbnAxis: {
            const double sum = static_cast<double>(m.c) + static_cast<double>(m.dc);
            out.P = PressureHbnAxis(static_cast<double>(m.c), m.TC);
            out.Error = std::fabs(out.P - PressureHbnAxis(sum, m.TC));
            break;
        }
    }
    return out;
}

}  // namespace vael
