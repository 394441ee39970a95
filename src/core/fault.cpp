// The run-time error of the workbench, and the checked arithmetic that raises it.
#include "core/fault.h"

#include <cmath>
#include <limits>

namespace vael {

double RoundEven(double value) {
    const double below = std::floor(value);
    const double rest = value - below;
    if (rest < 0.5) return below;
    if (rest > 0.5) return below + 1.0;
    return std::fmod(below, 2.0) == 0.0 ? below : below + 1.0;
}

double Trunc(double value) { return std::trunc(value); }

namespace {

template <class T>
T Narrow(double whole) {
    constexpr double least = std::numeric_limits<T>::min();
    constexpr double most = std::numeric_limits<T>::max();
    if (!(whole >= least && whole <= most))
        throw Fault(FaultNumber::Overflow, "Overflow: the value does not fit into a " +
                                               std::to_string(8 * sizeof(T)) +
                                               "-bit whole number.");
    return static_cast<T>(whole);
}

}  // namespace

std::int16_t Whole16(double value) { return Narrow<std::int16_t>(RoundEven(value)); }
std::int32_t Whole32(double value) { return Narrow<std::int32_t>(RoundEven(value)); }
std::int16_t Trunc16(double value) { return Narrow<std::int16_t>(std::trunc(value)); }

double Quot(double a, double b) {
    if (b == 0.0) throw Fault(FaultNumber::Division, "Division by zero.");
    return a / b;
}

void RaiseOverflow(std::int64_t value, int bits) {
    throw Fault(FaultNumber::Overflow, "Overflow: " + std::to_string(value) +
                                           " does not fit into a " + std::to_string(bits) +
                                           "-bit whole number.");
}

void RaiseSubscript(std::ptrdiff_t index, std::size_t size) {
    throw Fault(FaultNumber::Subscript, "Subscript out of range: " + std::to_string(index) +
                                            " in a table of " + std::to_string(size) + ".");
}

}  // namespace vael
