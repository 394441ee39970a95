// The curves of the energy calibration: a line or a parabola through pairs of channel and energy.
#pragma once

#include <array>
#include <span>

namespace vael {

/// Constants A, B, C of E = A + B x + C x^2 in keV.
using CalibConstants = std::array<double, 3>;

/// Which curve is looked for.
enum class CalibCurveKind { Parabola, Line };

/// Parabola through n points by least squares, x in channels counted from 0, y in keV, into c[0] A,
/// c[1] B, c[2] C on the same channels. Normal equations by Gaussian elimination with scaled
/// partial pivoting (W. H. Press et al., Numerical Recipes, section 2.3). Result 0; 1 without a
/// point and where the equations are singular, that is with fewer than three different x; 2 where a
/// sum or a constant is no number any more. c changes with result 0 alone. Faults: Subscript.
int FitQuadratic(std::span<const double> x, std::span<const double> y, int n,
                 std::span<double, 3> c);

/// Constants of a curve through n points, x in channels counted from 0, y in keV. Those of a line
/// stand on channels counted from 1, by the shift that `FitLine` makes; those of a parabola on the
/// channels of x. The two differ by one channel, and it is kept. A failed line gives A = B = 0, a
/// failed parabola leaves A and B; C is 0 in both. Result 0, or that of the fit that failed.
int FitCalibration(CalibCurveKind kind, std::span<const double> x, std::span<const double> y, int n,
                   CalibConstants& constants);

/// What has to be added to x, counted from 0, to stand on the channels of a kind's constants.
[[nodiscard]] double ChannelBase(CalibCurveKind kind);

/// The curve at a channel of the constants' own base, keV.
[[nodiscard]] double CalibEnergy(const CalibConstants& constants, double channel);

/// How far the points lie from a curve: energies minus curve, in eV.
struct CalibResiduals {
    double Rms = 0.0;
    int Worst = -1;  // index of the point that lies farthest off, -1 without any
    double WorstBy = 0.0;
};

/// x in channels counted from 0, y in keV. Faults: Subscript.
[[nodiscard]] CalibResiduals ResidualsOf(CalibCurveKind kind, const CalibConstants& constants,
                                         std::span<const double> x, std::span<const double> y,
                                         int n);

}  // namespace vael
