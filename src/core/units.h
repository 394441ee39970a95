// Axis units: conversions between channels and the physical units of an energy-dispersive axis.
#pragma once

#include "core/records.h"

#include <span>
#include <string>

namespace vael {

/// Axis units by index; positions in memory are 0-based channels, shown ones 1-based.
enum AxisUnit : int { UNIT_CH = 0, UNIT_KEV, UNIT_EV, UNIT_D, UNIT_A, UNIT_Q, UNIT_2THETA };

/// hc in keV angstrom for wavelength and d, and the other one that the Q formula has; the two are
/// different on purpose.
inline constexpr double HC_KEV_A = 12.3981;
inline constexpr double HC_Q = 12.399;
inline constexpr double FOUR_PI_Q = 12.56637061435916;
inline constexpr double PI_DEGREES = 3.14159265358979;
inline constexpr double LAMBDA_REFERENCE = 1.5418;  // angstrom, of the reference Bragg angle

/// Abbreviation ("keV"), long name ("Enargy") and number format of a unit. An index outside 0 to 6
/// gives the empty text and the format "#####"; units 5 and 6 have no long name.
[[nodiscard]] std::string UnitAbbrev(int unit);
[[nodiscard]] std::string UnitName(int unit);
[[nodiscard]] std::string UnitFormat(int unit);

/// E in keV of the channel x as it stands: E = a + b x + c x x. Callers that start from a 0-based
/// channel pass channel + 1.
[[nodiscard]] double ChToEnergy(double x, std::span<const double, 3> coef);

/// The inverse, a 0-based channel; -1 where there is none (no calibration, negative root).
[[nodiscard]] double EnergyToCh(double energy, std::span<const double, 3> coef);

/// A 0-based channel in the unit. d and wavelength in angstrom, Q in 1/angstrom; 0 where the energy
/// or 2 theta does not allow it. Unit 6 is `DacChannelToD`, and 0 at the angle 0.
[[nodiscard]] double ChToUnit(int unit, double ch, const ParamRecord& param, const DacAxis& dac);

/// The unit value as a 0-based channel; units 0 to 4, others give 0. For d the half angle goes into
/// the sine in degrees as it stands, unlike the other direction: the two are no inverses of each
/// other, and stay so.
[[nodiscard]] double UnitToCh(int unit, double value, const ParamRecord& param);

/// A width in channels as a width in the unit, and back (back for units 0 to 2, others give 0).
[[nodiscard]] double WidthToUnit(int unit, double width, const ParamRecord& param);
[[nodiscard]] double UnitWidthToCh(int unit, double width, const ParamRecord& param);

/// Bragg angle theta in degrees that the d of channel `ch` has at 1.5418 angstrom; `twoTheta` only
/// guards, d comes from the record. 0 where the guard fails or the root is negative.
[[nodiscard]] double ChTo2ThetaRef(double ch, double twoTheta, const ParamRecord& param,
                                   const DacAxis& dac);

/// d in angstrom of a channel of a DAC spectrum: Lambda / (2 sin(theta)), 2 theta = Offset + Slope
/// x in degrees. Faults: Division.
[[nodiscard]] double DacChannelToD(double x, const DacAxis& dac);

/// Rounding at a power of ten: mode negative down (raised by 1e-8), 0 to nearest, positive up
/// (raised by 0.999999999).
[[nodiscard]] double RoundDigit(double value, int digit, int mode);
[[nodiscard]] double RoundSignificant(double value, int figures, int mode);
/// Spacing of n ticks over `value`, raised to one significant figure. Faults: Division for n = 0.
[[nodiscard]] double RoundStep(double value, int n);

/// Decade of a positive number; the small terms keep 1000 in decade 3.
[[nodiscard]] int Log10Floor(double x);

/// Text of an axis value in the unit's style; not the formats of `UnitFormat`.
[[nodiscard]] std::string FormatValue(double value, int unit);

}  // namespace vael
