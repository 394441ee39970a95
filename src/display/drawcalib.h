// The picture of an energy calibration: its curve, the points it was found from, both axes, a page.
#pragma once

#include "display/canvas.h"

#include <array>
#include <string>
#include <vector>

namespace vael {

/// What the picture shows. Channels and constants count from the same base.
struct CalibPicture {
    std::vector<double> X;              // channels of the points
    std::vector<double> Y;              // their energies, keV; as long as X
    double MaxCh = 0.0;                 // channels there are
    double MaxE = 0.0;                  // the largest energy, keV
    std::array<double, 3> Constants{};  // E = A + B x + C x^2, keV
    std::vector<std::string> Lines;     // the label of the curve
};

/// The upper end of the energy axis, keV: the whole hundreds that reach maxE - 1, and at least 100.
[[nodiscard]] double EnergyLimit(double maxE);
/// The upper end of the channel axis: maxCh - 1; never below 1, so that there is an axis.
[[nodiscard]] double ChannelLimit(double maxCh);

/// The distance of ticks on an axis from 0 to `limit`: 1, 2 or 5 times a power of ten, so that at
/// most `most` (1 at least) fit.
[[nodiscard]] double CalibTickStep(double limit, int most);
/// Text of an energy at a tick, with as many decimals as the distance of the ticks needs, up to
/// five, and of a channel. A point with nothing behind it does not print.
[[nodiscard]] std::string EnergyTickLabel(double value, double step);
[[nodiscard]] std::string ChannelTickLabel(double value);

/// Grid, curve and points over the whole canvas, on white.
void DrawCalibPlot(Canvas& canvas, const CalibPicture& picture);
/// The channels below a plot of the same width, and the energies left of one of the same height.
/// The energies at the ends stand outside the canvas by half their height. Nothing is cleared.
void DrawCalibChannels(Canvas& canvas, const CalibPicture& picture, Colour ink);
void DrawCalibEnergies(Canvas& canvas, const CalibPicture& picture, Colour ink);

/// The same as one page whose pixels are points: title, plot, both axes with their titles, label.
void DrawCalibPage(Canvas& canvas, const CalibPicture& picture);

}  // namespace vael
