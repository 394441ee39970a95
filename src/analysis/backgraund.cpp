// The background of a spectrum by lowering anchors that stand above their neighbours' mean.
#include "analysis/backgraund.h"

#include "analysis/calc.h"
#include "core/fault.h"

#include <array>
#include <cmath>

namespace vael {
namespace {

/// One pass over the anchors, in place: a lowered anchor already counts for its right neighbour.
void StripOnce(Int16 interval, std::span<std::int32_t> data, std::int16_t n) {
    const double last = std::floor(static_cast<double>(n) / static_cast<double>(interval) - 2.0);
    for (Int16 j = 0; static_cast<double>(j) <= last; ++j) {
        const Int16 left = j * interval;
        const Int16 middle = (j + Int16(1)) * interval;
        const Int16 right = (j + Int16(2)) * interval;
        const Int32 sum =
            Int32(Item(data, std::int16_t{left})) + Int32(Item(data, std::int16_t{right}));
        const std::int32_t mean = Whole32(static_cast<double>(std::int32_t{sum}) / 2.0);
        std::int32_t& anchor = Item(data, std::int16_t{middle});
        if (anchor > mean) anchor = mean;
    }
}

/// The chords between the anchors.
void FillIn(Int16 interval, std::span<std::int32_t> data, std::int16_t n) {
    const double last = std::floor(static_cast<double>(n) / static_cast<double>(interval) - 1.0);
    for (Int16 j = 0; static_cast<double>(j) <= last; ++j) {
        const std::int16_t from = j * interval;
        const std::int16_t to = (j + Int16(1)) * interval;
        const std::array<double, 2> x{static_cast<double>(from), static_cast<double>(to)};
        const std::array<double, 2> y{static_cast<double>(Item(data, from)),
                                      static_cast<double>(Item(data, to))};
        std::array<double, 2> c{};
        FitLine(x, y, 2, c);
        for (std::int16_t channel = from; channel < to; ++channel)
            Item(data, channel) = Whole32(LineValue(static_cast<double>(channel), c));
    }
}

}  // namespace

int FitLine(std::span<const double> x, std::span<const double> y, int n, std::span<double, 2> c) {
    c[0] = 0.0;
    c[1] = 0.0;
    double count = 0.0;
    double sx = 0.0;
    double sy = 0.0;
    double sxy = 0.0;
    double sxx = 0.0;
    for (int i = 0; i < n; ++i) {
        const double xi = Item(x, i);
        const double yi = Item(y, i);
        count += 1.0;
        sx += xi;
        sy += yi;
        sxy += xi * yi;
        sxx += xi * xi;
    }
    const double determinant = count * sxx - sx * sx;
    if (determinant == 0.0) return 1;
    // The order of these operations decides ties in the rounding of a filled channel.
    const double inverse = 1.0 / determinant;
    c[0] = (sy * sxx - sx * sxy) * inverse;
    c[1] = (count * sxy - sx * sy) * inverse;
    c[0] = c[0] - c[1];
    return 0;
}

void BackGraund(std::int16_t interval, std::int16_t times, std::span<std::int32_t> data,
                std::int16_t n, const Talk& talk) {
    if (interval <= 0) {
        talk.say("BackGrand Interval <= 0 !", "");
        return;
    }
    if (times <= 0) {
        talk.say("BackGrand Times <= 0 !", "");
        return;
    }
    for (std::int16_t pass = 0; pass < times; ++pass) StripOnce(interval, data, n);
    FillIn(interval, data, n);
}

}  // namespace vael
