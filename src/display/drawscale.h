// The axes of a plot: divisions and labels of the count axis, the lower axis in every unit, and the
// full scales that the main view steps through.
#pragma once

#include "core/records.h"
#include "display/canvas.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>

namespace vael {

/// What a drawn axis leaves for the cursor read-out.
struct AxisScale {
    std::int32_t YFullScale = 0;            // as given to `YScaleDraw`
    int TickNum = 0;                        // ticks drawn, at most 21
    std::array<double, 21> ScaleValues{};   // count axis: tick values, on the log axis their
                                            // exponents; lower axis: values in the unit, from unit
                                            // 3 on the channels instead
    std::array<double, 21> TickChannels{};  // lower axis: 0-based channel of each tick
};

/// Number of divisions of a full scale, by its first digit (0 to 10).
[[nodiscard]] std::array<std::int16_t, 11> InitScaleDiv();

/// Draws the labels of the count axis, right-aligned to the right edge. A canvas whose top
/// coordinate is not 0 keeps its coordinates, in which the axis runs from 0 up to 100; else the
/// strip is scaled to 100 by 100 and given back in pixels. A full scale below 10 is the log axis
/// of seven decades.
void YScaleDraw(Canvas& canvas, std::int32_t fullScale, AxisScale& axis, Colour ink);

/// The second count axis: as `YScaleDraw`, on the right of a plot, labels left-aligned.
void YScaleDrawRight(Canvas& canvas, std::int32_t fullScale, AxisScale& axis, Colour ink);

/// What the lower axis shows. The slot's own 2 theta decides whether unit 4 is possible; values
/// come from the calibration in force.
struct XAxis {
    int Unit = 0;        // axis unit; negative counts as 0
    int Ticks = 4;       // divisions, 1 to 20; the main view has four, that is five labels
    double Span = 0.0;   // channels shown
    double Start = 0.0;  // first channel shown, 0-based
    double OwnTwoTheta = 0.0;
};

/// Draws the lower axis: ticks and labels. A canvas whose top coordinate is not 0 keeps its
/// coordinates (channels across, the axis at 100, text below it); else (the plain strip) it is
/// scaled to the channels across and 0 to 100 up, the axis line is drawn, and the last tick stands
/// on the last shown channel. Faults: Subscript for more than 20 divisions, Division for none.
void XScaleDraw(Canvas& canvas, const XAxis& what, const ParamRecord& inForce, const DacAxis& dac,
                AxisScale& axis, Colour ink);

/// Text of a count label: "300", "1K", "1.5K", "2M"; empty from 10^9 on.
[[nodiscard]] std::string FormatScaleLabel(double value);

/// Text of a lower-axis label in the unit.
[[nodiscard]] std::string FormatAxisValue(double value, int unit);

/// The full scales of the vertical scale, ascending from 10 to 10000000.
[[nodiscard]] std::span<const std::int32_t> FullScales();

/// The smallest full scale that leaves a twentieth free above `maxCount`; the largest if none does.
[[nodiscard]] std::int32_t AutoFullScale(std::int64_t maxCount);

/// `notches` steps up (positive: a larger full scale, a shorter picture) or down the list; a typed
/// full scale between two entries steps to its neighbour.
[[nodiscard]] std::int32_t StepFullScale(std::int32_t fullScale, int notches);

}  // namespace vael
