// How far two colours are apart for an eye: CIELAB of sRGB, with the eye's own loss of cones.
#pragma once

#include "core/records.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace vael::test {

using Triple = std::array<double, 3>;
using Matrix = std::array<Triple, 3>;

/// What an eye makes of linear red, green and blue.
enum class Eye { Normal, Protanope, Deuteranope };

/// Complete protanopia and deuteranopia: G. M. Machado, M. M. Oliveira, L. A. F. Fernandes, "A
/// Physiologically-based Model for Simulation of Color Vision Deficiency", IEEE Transactions on
/// Visualization and Computer Graphics 15 (2009) 1291, severity 1.0, for linear sRGB.
inline const Matrix& SightOf(Eye eye) {
    static constexpr Matrix NORMAL{{{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}}};
    static constexpr Matrix PROTANOPE{{{0.152286, 1.052583, -0.204868},
                                       {0.114503, 0.786281, 0.099216},
                                       {-0.003882, -0.048116, 1.051998}}};
    static constexpr Matrix DEUTERANOPE{{{0.367322, 0.860646, -0.227968},
                                         {0.280085, 0.672501, 0.047413},
                                         {-0.011820, 0.042940, 0.968881}}};
    return eye == Eye::Normal ? NORMAL : eye == Eye::Protanope ? PROTANOPE : DEUTERANOPE;
}

inline Triple Times(const Matrix& matrix, const Triple& v) {
    Triple out{};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t k = 0; k < 3; ++k) out[row] += matrix[row][k] * v[k];
    return out;
}

/// Linear red, green and blue of a colour, 0 to 1: IEC 61966-2-1.
inline Triple LinearOf(Colour colour) {
    Triple out{};
    for (std::size_t k = 0; k < 3; ++k) {
        const double share = ((colour >> (8 * k)) & 255) / 255.0;
        out[k] = share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    }
    return out;
}

/// L*, a*, b* of what an eye makes of a colour: CIE 15:2004, white D65.
inline Triple LabOf(Colour colour, Eye eye = Eye::Normal) {
    static constexpr Matrix TO_XYZ{{{0.4124564, 0.3575761, 0.1804375},
                                    {0.2126729, 0.7151522, 0.0721750},
                                    {0.0193339, 0.1191920, 0.9503041}}};
    static constexpr Triple WHITE{0.95047, 1.0, 1.08883};
    Triple seen = Times(SightOf(eye), LinearOf(colour));
    for (double& part : seen) part = std::clamp(part, 0.0, 1.0);
    const Triple xyz = Times(TO_XYZ, seen);
    Triple f{};
    for (std::size_t k = 0; k < 3; ++k) {
        const double t = xyz[k] / WHITE[k];
        f[k] = t > 216.0 / 24389.0 ? std::cbrt(t) : (24389.0 / 27.0 * t + 16.0) / 116.0;
    }
    return {116.0 * f[1] - 16.0, 500.0 * (f[0] - f[1]), 200.0 * (f[1] - f[2])};
}

/// The CIE 1976 colour difference as an eye sees it; about 2.3 is the least that is noticed.
inline double Apart(Colour one, Colour other, Eye eye = Eye::Normal) {
    const Triple a = LabOf(one, eye);
    const Triple b = LabOf(other, eye);
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

}  // namespace vael::test
