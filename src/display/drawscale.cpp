// The axes of a plot: divisions and labels of the count axis, the lower axis, the full scales.
#include "display/drawscale.h"

#include "core/fault.h"
#include "core/text.h"
#include "core/units.h"

#include <algorithm>
#include <cmath>

namespace vael {
namespace {

constexpr double LABEL_SIZE = 9.0;  // points
constexpr std::int32_t LOG_FULL_SCALE = 10000000;
constexpr int LOG_DIVISIONS = 7;

/// The full scales: those first digits whose divisions are round numbers, in six decades, and the
/// top of the log axis as the largest.
constexpr std::array<std::int32_t, 7> LEADING{1, 2, 3, 4, 5, 6, 8};
constexpr std::size_t DECADES = 6;
using ScaleList = std::array<std::int32_t, LEADING.size() * DECADES + 1>;

constexpr ScaleList MakeFullScales() {
    ScaleList list{};
    std::size_t n = 0;
    std::int32_t power = 10;
    for (std::size_t decade = 0; decade < DECADES; ++decade, power *= 10)
        for (const std::int32_t digit : LEADING) list[n++] = digit * power;
    list[n] = LOG_FULL_SCALE;
    return list;
}
constexpr ScaleList FULL_SCALES = MakeFullScales();

/// log10 whose powers of ten are exact, truncated: the decade of a label.
int LabelDecade(double value) {
    if (!(value > 0.0)) return 0;
    return static_cast<int>(Trunc(std::log10(value)));
}

void DrawCountLabels(Canvas& canvas, std::int32_t fullScale, AxisScale& axis, Colour ink,
                     bool right) {
    const bool plain = canvas.ScaleTop() == 0.0;
    if (plain) canvas.Scale(0.0, 100.0, 100.0, 0.0);

    axis.YFullScale = fullScale;
    const std::string digits = std::to_string(fullScale);
    const auto digit = static_cast<std::size_t>(std::max(0, digits.front() - '0'));
    const auto scaleDiv = InitScaleDiv();
    int divisions = Item(scaleDiv, digit);
    double top = fullScale;
    const bool log = fullScale < 10;
    if (log) {
        divisions = LOG_DIVISIONS;
        top = LOG_FULL_SCALE;
    }

    const double kept = canvas.FontSize;
    canvas.FontSize = LABEL_SIZE;
    axis.TickNum = divisions + 1;
    for (int i = 0; i <= divisions; ++i) {
        const double value = log ? std::pow(10.0, i) : top / divisions * i;
        Item(axis.ScaleValues, i) = log ? i : value;
        const std::string label = " " + FormatScaleLabel(value);
        const Frame4& frame = canvas.ScaleNow();
        canvas.CurrentX = right ? frame.Left : frame.Right - canvas.TextWidth(label);
        canvas.CurrentY = 100.0 / divisions * i + canvas.TextHeight("A") / 2.0;
        canvas.Print(label, ink);
    }
    canvas.FontSize = kept;
    if (plain) canvas.ScaleReset();
}

}  // namespace

std::array<std::int16_t, 11> InitScaleDiv() {
    std::array<std::int16_t, 11> scaleDiv{};
    for (std::size_t i = 0; i < scaleDiv.size(); ++i) scaleDiv[i] = static_cast<std::int16_t>(i);
    scaleDiv[1] = 5;
    scaleDiv[2] = 4;
    scaleDiv[3] = 3;
    scaleDiv[4] = 4;
    scaleDiv[5] = 5;
    scaleDiv[6] = 3;
    scaleDiv[8] = 4;
    return scaleDiv;
}

void YScaleDraw(Canvas& canvas, std::int32_t fullScale, AxisScale& axis, Colour ink) {
    DrawCountLabels(canvas, fullScale, axis, ink, false);
}

void YScaleDrawRight(Canvas& canvas, std::int32_t fullScale, AxisScale& axis, Colour ink) {
    DrawCountLabels(canvas, fullScale, axis, ink, true);
}

void XScaleDraw(Canvas& canvas, const XAxis& what, const ParamRecord& inForce, const DacAxis& dac,
                AxisScale& axis, Colour ink) {
    // 1. The plain strip or the caller's own coordinates, and the unit that is possible. That the
    //    wavelength, not d, asks for a 2 theta is how this axis has always been.
    const bool plain = canvas.ScaleTop() == 0.0;
    int unit = std::max(what.Unit, 0);
    if (unit == UNIT_A && what.OwnTwoTheta == 0.0) unit = UNIT_CH;

    // 2. and 3. Channels, values and texts of the ticks.
    if (what.Ticks == 0) static_cast<void>(Quot(what.Span, 0.0));
    static_cast<void>(Item(axis.ScaleValues, what.Ticks));
    std::array<std::string, 21> labels;
    axis.TickNum = what.Ticks + 1;
    for (int i = 0; i <= what.Ticks; ++i) {
        double channel = i * what.Span / what.Ticks + what.Start;
        if (plain && i == what.Ticks) channel -= 1.0;
        const double value = ChToUnit(unit, channel, inForce, dac);
        Item(labels, i) = FormatAxisValue(value, unit);
        Item(axis.ScaleValues, i) = unit >= UNIT_D ? channel : value;
        Item(axis.TickChannels, i) = channel;
    }
    if (unit == UNIT_CH && axis.TickChannels[0] == -1.0) {
        labels[0] = "0";
        axis.TickChannels[0] = 0.0;
    }

    // 4. Scale and axis line.
    const double keptSize = canvas.FontSize;
    const int keptMode = canvas.DrawMode;
    canvas.FontSize = LABEL_SIZE;
    canvas.DrawMode = DRAW_COPY;
    if (plain) {
        canvas.Scale(what.Start, 100.0, what.Start + what.Span - 1.0, 0.0);
        canvas.Line(what.Start, 100.0, what.Start + what.Span - 1.0, 100.0, ink);
    }

    // 5. and 6. Ticks hang from the axis, labels from the ticks.
    const double tick = 0.6 * canvas.TextHeight("A");
    const Frame4 frame = canvas.ScaleNow();
    for (int i = 0; i <= what.Ticks; ++i) {
        const double x = Item(axis.TickChannels, i);
        canvas.Line(x, 100.0, x, 100.0 - tick, ink);
        const std::string& label = Item(labels, i);
        const double width = canvas.TextWidth(label);
        double left = x - width / 2.0;
        if (i == 0) left = std::max(left, frame.Left);
        if (plain && i == what.Ticks) left = frame.Right - width;
        canvas.CurrentX = left;
        canvas.CurrentY = 100.0 - tick;
        canvas.Print(label, ink);
    }

    // 7. As it was.
    canvas.FontSize = keptSize;
    canvas.DrawMode = keptMode;
}

std::string FormatScaleLabel(double value) {
    const int k = LabelDecade(value);
    if (k >= 0 && k <= 2) return FormatNumber(value, "##0");
    if (k >= 3 && k <= 5) {
        const bool round = std::fmod(Trunc(value), 1000.0) < 11.0;
        return FormatNumber(value / 1000.0, round ? "##0K" : "##0.0K");
    }
    if (k >= 6 && k <= 8) return FormatNumber(value / 1000000.0, "##0M");
    return {};
}

std::string FormatAxisValue(double value, int unit) {
    switch (unit) {
        case UNIT_CH: return FormatNumber(value, "####");
        case UNIT_KEV:
        case UNIT_EV:
            // The figures in front of the point and the one behind it.
            return FormatNumber(RoundSignificant(value, Log10Floor(value) + 2, 0), "##0.0");
        case UNIT_D:
        case UNIT_A:
        case UNIT_Q:
        case UNIT_2THETA: return FormatNumber(value, "0.0000");
        default: return FormatNumber(value, "#####");
    }
}

std::span<const std::int32_t> FullScales() { return FULL_SCALES; }

std::int32_t AutoFullScale(std::int64_t maxCount) {
    const auto fits = [maxCount](std::int32_t scale) {
        return static_cast<double>(scale) >= 1.05 * static_cast<double>(maxCount);
    };
    const auto found = std::find_if(FULL_SCALES.begin(), FULL_SCALES.end(), fits);
    return found == FULL_SCALES.end() ? FULL_SCALES.back() : *found;
}

std::int32_t StepFullScale(std::int32_t fullScale, int notches) {
    const auto lower = std::lower_bound(FULL_SCALES.begin(), FULL_SCALES.end(), fullScale);
    auto at = lower - FULL_SCALES.begin();
    const bool between = lower == FULL_SCALES.end() || *lower != fullScale;
    if (between && notches > 0) --at;  // the entry below it is one notch away from the one above
    const auto last = static_cast<std::ptrdiff_t>(FULL_SCALES.size()) - 1;
    at = std::clamp<std::ptrdiff_t>(at + notches, 0, last);
    return FULL_SCALES[static_cast<std::size_t>(at)];
}

}  // namespace vael
