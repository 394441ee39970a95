// Axis units: conversions between channels and the physical units of an energy-dispersive axis.
#include "core/units.h"

#include "core/fault.h"
#include "core/text.h"

#include <cmath>

namespace vael {
namespace {

struct UnitRow {
    const char* Abbrev;
    const char* Name;
    const char* Format;
};
constexpr std::array<UnitRow, 7> UNITS{{{"Ch", "Channel", "####"},
                                        {"keV", "Enargy", "##0.000"},
                                        {"eV", "Enargy", "##0.000"},
                                        {"d:A", "d Value", "0.0000"},
                                        {"A", "Wavelength", "0.0000"},
                                        {"QA", "", "0.0000"},
                                        {"2q", "", "0.0000"}}};

bool IsUnit(int unit) { return unit >= UNIT_CH && unit <= UNIT_2THETA; }

double Radians(double degrees) { return degrees * PI_DEGREES / 180.0; }

/// Common logarithm of the scale helpers: an argument of 0 or less counts as 1.
double DecadeLog(double x) { return x <= 0.0 ? 0.0 : std::log(x) / std::log(10.0); }

}  // namespace

std::string UnitAbbrev(int unit) {
    return IsUnit(unit) ? UNITS[static_cast<std::size_t>(unit)].Abbrev : "";
}

std::string UnitName(int unit) {
    return IsUnit(unit) ? UNITS[static_cast<std::size_t>(unit)].Name : "";
}

std::string UnitFormat(int unit) {
    return IsUnit(unit) ? UNITS[static_cast<std::size_t>(unit)].Format : "#####";
}

double ChToEnergy(double x, std::span<const double, 3> coef) {
    return coef[0] + coef[1] * x + coef[2] * x * x;
}

double EnergyToCh(double energy, std::span<const double, 3> coef) {
    const double a = coef[0];
    const double b = coef[1];
    const double c = coef[2];
    double root = 0.0;
    if (c == 0.0) {
        root = b == 0.0 ? 0.0 : (energy - a) / b;
    } else {
        const double d = b * b - (a - energy) * (4.0 * c);
        root = d < 0.0 ? 0.0 : (-b + std::sqrt(d)) / (c + c);
    }
    return root - 1.0;
}

double ChToUnit(int unit, double ch, const ParamRecord& param, const DacAxis& dac) {
    const double x = ch + 1.0;
    const double energy = ChToEnergy(x, param.EgcCoef);
    switch (unit) {
        case UNIT_CH: return x;
        case UNIT_KEV: return energy;
        case UNIT_EV: return energy * 1000.0;
        case UNIT_D:
            if (!(param.TwoTheta > 0.0 && energy > 0.0)) return 0.0;
            return Quot(HC_KEV_A, 2.0 * energy * std::sin(Radians(param.TwoTheta / 2.0)));
        case UNIT_A: return energy > 0.0 ? HC_KEV_A / energy : 0.0;
        case UNIT_Q:
            if (!(energy > 0.0)) return 0.0;
            return energy * FOUR_PI_Q * std::sin((param.TwoTheta / 180.0 * PI_DEGREES) / 2.0) /
                   HC_Q;
        case UNIT_2THETA:
            // Channels may begin at the angle 0, which has no d: axis and boxes go on with 0 there.
            return dac.Offset + dac.Slope * (x - 1.0) == 0.0 ? 0.0 : DacChannelToD(x - 1.0, dac);
        default: return 0.0;
    }
}

double UnitToCh(int unit, double value, const ParamRecord& param) {
    switch (unit) {
        case UNIT_CH: return value - 1.0;
        case UNIT_KEV: return EnergyToCh(value, param.EgcCoef);
        case UNIT_EV: return EnergyToCh(value / 1000.0, param.EgcCoef);
        case UNIT_D:
            if (!(value > 0.0 && param.TwoTheta > 0.0)) return 0.0;
            // The angle goes into the sine as it stands, with no conversion from degrees.
            return EnergyToCh(Quot(HC_KEV_A, 2.0 * value * std::sin(param.TwoTheta / 2.0)),
                              param.EgcCoef);
        case UNIT_A: return value > 0.0 ? EnergyToCh(HC_KEV_A / value, param.EgcCoef) : 0.0;
        default: return 0.0;
    }
}

double WidthToUnit(int unit, double width, const ParamRecord& param) {
    const auto& coef = param.EgcCoef;
    switch (unit) {
        case UNIT_CH: return width;
        case UNIT_KEV: return ChToEnergy(width, coef) - ChToEnergy(0.0, coef);
        case UNIT_EV: return (ChToEnergy(width, coef) - ChToEnergy(0.0, coef)) * 1000.0;
        case UNIT_A: return 0.0;
        default: return unit >= UNIT_D ? 1.0 : 0.0;
    }
}

double UnitWidthToCh(int unit, double width, const ParamRecord& param) {
    const auto& coef = param.EgcCoef;
    switch (unit) {
        case UNIT_CH: return width;
        case UNIT_KEV: return EnergyToCh(ChToEnergy(0.0, coef) + width, coef);
        case UNIT_EV: return EnergyToCh((ChToEnergy(0.0, coef) + width) / 1000.0, coef);
        default: return 0.0;
    }
}

double ChTo2ThetaRef(double ch, double twoTheta, const ParamRecord& param, const DacAxis& dac) {
    if (!(twoTheta > 0.0 && ChToEnergy(ch, param.EgcCoef) > 0.0)) return 0.0;
    const double d = ChToUnit(UNIT_D, ch, param, dac);
    if (d == 0.0) return 0.0;
    const double s = LAMBDA_REFERENCE / (2.0 * d);
    const double rest = 1.0 - s * s;
    if (!(rest > 0.0)) return 0.0;
    return std::atan(s / std::sqrt(rest)) * 180.0 / PI_DEGREES;
}

double DacChannelToD(double x, const DacAxis& dac) {
    const double theta = (dac.Offset + dac.Slope * x) / 2.0 * PI_DEGREES / 180.0;
    return Quot(dac.Lambda, 2.0 * std::sin(theta));
}

double RoundDigit(double value, int digit, int mode) {
    const double power = std::pow(10.0, digit);
    double t = value / power;
    t += mode < 0 ? 1e-8 : mode == 0 ? 0.5 : 0.999999999;
    return std::floor(t) * power;
}

double RoundSignificant(double value, int figures, int mode) {
    return RoundDigit(value, Log10Floor(value) - figures + 1, mode);
}

double RoundStep(double value, int n) { return RoundSignificant(Quot(value, n), 1, 1); }

int Log10Floor(double x) {
    if (x < 1.0) return static_cast<int>(-std::floor(-DecadeLog(x + 1e-9) + 0.999999999));
    return static_cast<int>(std::floor(DecadeLog(x) + 1e-10));
}

std::string FormatValue(double value, int unit) {
    switch (unit) {
        case UNIT_CH: return FormatNumber(RoundDigit(value, -1, 0), "####");
        case UNIT_KEV:
        case UNIT_EV: return FormatNumber(RoundDigit(value, -1, 0), "##0.0");
        case UNIT_D:
        case UNIT_A:
        case UNIT_Q:
        case UNIT_2THETA: return FormatNumber(RoundDigit(value, -4, 0), "0.0000");
        default: return FormatNumber(value, "#####");
    }
}

}  // namespace vael
