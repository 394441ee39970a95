// Roots, powers and logarithms that end the command where they have no real value.
#pragma once

#include "core/fault.h"

#include <cmath>
#include <limits>

namespace vael {

/// `value` when it is finite. Faults: Overflow.
[[nodiscard]] inline double Finite(double value) {
    if (!std::isfinite(value)) throw Fault(FaultNumber::Overflow, "Overflow of a floating number.");
    return value;
}

/// Rounded to 4 bytes. Faults: Overflow.
[[nodiscard]] inline float Single(double value) {
    if (!(std::fabs(value) <= static_cast<double>(std::numeric_limits<float>::max())))
        throw Fault(FaultNumber::Overflow, "Overflow of a floating number.");
    return static_cast<float>(value);
}

/// Square root. Faults: Argument for a negative number.
[[nodiscard]] inline double Root(double x) {
    if (!(x >= 0.0)) throw Fault(FaultNumber::Argument, "The root of a negative number.");
    return std::sqrt(x);
}

/// Natural logarithm. Faults: Argument for 0 and below.
[[nodiscard]] inline double Log(double x) {
    if (!(x > 0.0)) throw Fault(FaultNumber::Argument, "The logarithm of a number not above 0.");
    return std::log(x);
}

/// e^x. Faults: Overflow.
[[nodiscard]] inline double Exp(double x) { return Finite(std::exp(x)); }

/// x^y for an exponent that is no whole number. Faults: Argument for a negative x, Division for 0
/// to a negative power, Overflow.
[[nodiscard]] inline double Power(double x, double y) {
    if (!(x >= 0.0)) throw Fault(FaultNumber::Argument, "A power of a negative number.");
    if (x == 0.0 && y < 0.0) throw Fault(FaultNumber::Division, "Division by zero.");
    return Finite(std::pow(x, y));
}

}  // namespace vael
