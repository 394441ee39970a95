// The run-time error of the workbench, and the checked arithmetic that raises it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <utility>

namespace vael {

/// Numbers of the run-time errors, as the log and the status line name them.
enum class FaultNumber : int {
    Argument = 5,   // a value that an operation cannot work with
    Overflow = 6,   // a whole number left its 16 or 32 bits
    Subscript = 9,  // an index outside its table
    Division = 11,  // a division by zero that no guard protects
    Type = 13,      // a text that is no number
    FileMissing = 53,
    FileAccess = 75,
    FileContent = 321,  // a file that is not in the form its reader expects
};

/// Ends the running command; the event loop goes on. `what()` is a sentence for the user.
class Fault : public std::exception {
public:
    Fault(FaultNumber number, std::string word) : number_(number), word_(std::move(word)) {}
    [[nodiscard]] FaultNumber Number() const noexcept { return number_; }
    [[nodiscard]] const char* what() const noexcept override { return word_.c_str(); }

private:
    FaultNumber number_;
    std::string word_;
};

/// Nearest whole number, ties to the even neighbour: the rule of every assignment of a floating
/// value to a whole one.
[[nodiscard]] double RoundEven(double value);

/// The integer part, towards zero.
[[nodiscard]] double Trunc(double value);

/// `RoundEven` into 16 or 32 bits. Faults: Overflow beyond the range and for not-a-number.
[[nodiscard]] std::int16_t Whole16(double value);
[[nodiscard]] std::int32_t Whole32(double value);

/// `Trunc` into 16 bits. Faults: Overflow.
[[nodiscard]] std::int16_t Trunc16(double value);

/// a / b where nothing guards the divisor. Faults: Division when b is 0.
[[nodiscard]] double Quot(double a, double b);

/// Raises Overflow with the sentence of that fault.
[[noreturn]] void RaiseOverflow(std::int64_t value, int bits);

/// Raises Subscript, naming the index and the size of the table.
[[noreturn]] void RaiseSubscript(std::ptrdiff_t index, std::size_t size);

/// array[i] with its bounds checked, i from 0. Faults: Subscript.
template <class Array, class Index>
[[nodiscard]] constexpr auto& Item(Array& array, Index index) {
    if (std::cmp_less(index, 0) || std::cmp_greater_equal(index, std::size(array)))
        RaiseSubscript(static_cast<std::ptrdiff_t>(index), std::size(array));
    return array[static_cast<std::size_t>(index)];
}

/// A whole number of fixed width whose arithmetic is checked: a result outside the width ends the
/// command instead of wrapping. For locals; records hold the plain integers.
template <class T>
class Checked {
public:
    constexpr Checked() = default;
    template <class Other>
    requires std::is_integral_v<Other>
    constexpr Checked(Other value) : value_(Fit(static_cast<std::int64_t>(value))) {}  // NOLINT
    constexpr operator T() const { return value_; }  // NOLINT: reads as the plain integer

    friend constexpr Checked operator+(Checked a, Checked b) { return Wide(a) + Wide(b); }
    friend constexpr Checked operator-(Checked a, Checked b) { return Wide(a) - Wide(b); }
    friend constexpr Checked operator*(Checked a, Checked b) { return Wide(a) * Wide(b); }
    constexpr Checked& operator+=(Checked b) { return *this = *this + b; }
    constexpr Checked& operator-=(Checked b) { return *this = *this - b; }
    constexpr Checked& operator++() { return *this += Checked(1); }

private:
    static constexpr std::int64_t Wide(Checked a) { return a.value_; }
    static constexpr T Fit(std::int64_t value) {
        const T narrow = static_cast<T>(value);
        if (narrow != value) RaiseOverflow(value, static_cast<int>(8 * sizeof(T)));
        return narrow;
    }
    T value_ = 0;
};
using Int16 = Checked<std::int16_t>;
using Int32 = Checked<std::int32_t>;

}  // namespace vael
