// The picture of an energy calibration: its curve, the points it was found from, both axes, a page.
#include "display/drawcalib.h"

#include "core/text.h"
#include "display/viewport.h"

#include <algorithm>
#include <cmath>

namespace vael {
namespace {

constexpr Colour PAPER = Rgb(255, 255, 255);
constexpr Colour INK = Rgb(34, 34, 34);
constexpr Colour GRID = Rgb(200, 200, 200);
constexpr Colour CURVE = Rgb(255, 0, 0);
constexpr Colour POINT = Rgb(0, 0, 255);

constexpr double DEFAULT_LIMIT = 100.0;  // keV
constexpr double LABEL_SIZE = 9.0;       // points
constexpr int CURVE_PIECES = 256;

/// How many ticks an axis of a length takes, each with the room of a label about it.
int TicksOn(double length, double room) {
    return std::clamp(static_cast<int>(length / std::max(room, 1.0)), 1, 12);
}

/// Distance of the ticks of both axes; they depend on the size of the canvas, so that labels never
/// run into each other, and the plot's grid meets them since both strips are as long as the plot.
double ChannelStep(const Canvas& canvas, const CalibPicture& picture) {
    constexpr double room = 60.0;  // pixels a label
    return CalibTickStep(ChannelLimit(picture.MaxCh), TicksOn(canvas.PixelSize().Width, room));
}
double EnergyStep(const Canvas& canvas, const CalibPicture& picture) {
    constexpr double room = 36.0;
    return CalibTickStep(EnergyLimit(picture.MaxE), TicksOn(canvas.PixelSize().Height, room));
}

/// Calls `at` with each tick from 0 to the limit.
template <class At>
void EachTick(double limit, double step, At at) {
    const int last = static_cast<int>(std::floor(limit / step + 1e-9));
    for (int i = 0; i <= last; ++i) at(i * step);
}

double EnergyAt(const CalibPicture& picture, double channel) {
    const auto& [a, b, c] = picture.Constants;
    return a + (b + c * channel) * channel;
}

/// The coordinates of a plot: channels across, energies up.
void PlotScale(Canvas& canvas, const CalibPicture& picture) {
    canvas.Scale(0.0, EnergyLimit(picture.MaxE), ChannelLimit(picture.MaxCh), 0.0);
}

void DrawGrid(Canvas& canvas, const CalibPicture& picture) {
    const double right = ChannelLimit(picture.MaxCh);
    const double top = EnergyLimit(picture.MaxE);
    EachTick(right, ChannelStep(canvas, picture),
             [&](double x) { canvas.Line(x, 0.0, x, top, GRID); });
    EachTick(top, EnergyStep(canvas, picture),
             [&](double y) { canvas.Line(0.0, y, right, y, GRID); });
}

/// In pieces that a bent curve needs; what leaves the plot is cut at its edge.
void DrawCurve(Canvas& canvas, const CalibPicture& picture) {
    const double right = ChannelLimit(picture.MaxCh);
    const bool straight = picture.Constants[2] == 0.0;
    const int pieces = straight ? 1 : CURVE_PIECES;
    canvas.DrawWidth = 2.0;  // stands out from the grid
    for (int i = 0; i < pieces; ++i) {
        Spot from{right * i / pieces, 0.0};
        Spot to{right * (i + 1) / pieces, 0.0};
        from.Y = EnergyAt(picture, from.X);
        to.Y = EnergyAt(picture, to.X);
        if (ClipLine(from, to, canvas.ScaleNow())) canvas.Line(from.X, from.Y, to.X, to.Y, CURVE);
    }
    canvas.DrawWidth = 1.0;
}

/// A square about each point that lies in the plot, as large as a small letter.
void DrawPoints(Canvas& canvas, const CalibPicture& picture) {
    const double high = canvas.TextHeight("0") / 5.0;
    const double wide = high / canvas.PixelUnit().Height * canvas.PixelUnit().Width;
    const Frame4& frame = canvas.ScaleNow();
    for (std::size_t i = 0; i < std::min(picture.X.size(), picture.Y.size()); ++i) {
        const double x = picture.X[i];
        const double y = picture.Y[i];
        if (x < 0.0 || x > frame.Right || y < 0.0 || y > frame.Top) continue;
        canvas.Box(x - wide, y - high, x + wide, y + high, POINT, true);
    }
}

void Write(Canvas& canvas, double x, double y, const std::string& text) {
    canvas.CurrentX = x;
    canvas.CurrentY = y;
    canvas.Print(text, INK);
}

}  // namespace

double EnergyLimit(double maxE) {
    const double limit = (std::floor((maxE - 1.0) / 100.0) + 1.0) * 100.0;
    return limit > 0.0 ? limit : DEFAULT_LIMIT;
}

double ChannelLimit(double maxCh) { return std::max(1.0, maxCh - 1.0); }

double CalibTickStep(double limit, int most) {
    const double least = limit / std::max(most, 1);
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double digit : {1.0, 2.0, 5.0})
        if (digit * power >= least * (1.0 - 1e-9)) return digit * power;
    return 10.0 * power;
}

std::string EnergyTickLabel(double value, double step) {
    constexpr std::array<const char*, 6> FORMATS{"#####0", "###0.0", "##0.00",
                                                 "#0.000", "0.0000", ".00000"};
    const int decimals = static_cast<int>(std::ceil(-std::log10(step) - 1e-9));
    const auto at = static_cast<std::size_t>(std::clamp(decimals, 0, 5));
    std::string text = FormatNumber(value, FORMATS[at]);
    if (!text.empty() && text.back() == '.') text.pop_back();
    return text;
}

std::string ChannelTickLabel(double value) { return FormatNumber(value, "###0"); }

void DrawCalibPlot(Canvas& canvas, const CalibPicture& picture) {
    canvas.Clear(PAPER);
    canvas.FontSize = LABEL_SIZE;
    PlotScale(canvas, picture);
    DrawGrid(canvas, picture);
    canvas.Box(0.0, 0.0, canvas.ScaleNow().Right, canvas.ScaleNow().Top, GRID, false);
    DrawCurve(canvas, picture);
    DrawPoints(canvas, picture);
    canvas.ScaleReset();
}

void DrawCalibChannels(Canvas& canvas, const CalibPicture& picture, Colour ink) {
    constexpr double gap = 4.0;  // pixels between plot and label
    canvas.FontSize = LABEL_SIZE;
    canvas.ScaleReset();
    const double wide = canvas.PixelSize().Width - 1.0;
    const double limit = ChannelLimit(picture.MaxCh);
    EachTick(limit, ChannelStep(canvas, picture), [&](double channel) {
        const std::string label = ChannelTickLabel(channel);
        const double width = canvas.TextWidth(label);
        const double left = wide * channel / limit - width / 2.0;
        canvas.CurrentX = std::clamp(left, 0.0, std::max(0.0, wide - width));
        canvas.CurrentY = gap;
        canvas.Print(label, ink);
    });
}

void DrawCalibEnergies(Canvas& canvas, const CalibPicture& picture, Colour ink) {
    constexpr double gap = 6.0;
    canvas.FontSize = LABEL_SIZE;
    canvas.ScaleReset();
    const Extent size = canvas.PixelSize();
    const double limit = EnergyLimit(picture.MaxE);
    const double step = EnergyStep(canvas, picture);
    EachTick(limit, step, [&](double energy) {
        const std::string label = EnergyTickLabel(energy, step);
        canvas.CurrentX = size.Width - gap - canvas.TextWidth(label);
        canvas.CurrentY =
            (size.Height - 1.0) * (1.0 - energy / limit) - canvas.TextHeight(label) / 2.0;
        canvas.Print(label, ink);
    });
}

void DrawCalibPage(Canvas& canvas, const CalibPicture& picture) {
    // 1. Where everything stands, in points; the plot has the shape of the page.
    constexpr double margin = 48.0;
    constexpr double strip = 56.0;
    constexpr double line = 14.0;
    canvas.Clear(PAPER);
    canvas.ScaleReset();
    const Extent page = canvas.PixelSize();
    const double left = margin + strip;
    const double top = margin + 48.0;
    const double wide = page.Width - margin - left;
    const double label = line * static_cast<double>(picture.Lines.size());
    const double high = std::min(wide * 0.75, page.Height - top - 2.0 * margin - label);

    // 2. Plot and scales, each on its part of the page.
    Viewport plot(canvas.Below(), left, top, wide, high);
    Canvas plotCanvas(plot);
    DrawCalibPlot(plotCanvas, picture);
    Viewport below(canvas.Below(), left, top + high, wide, 24.0);
    Canvas belowCanvas(below);
    DrawCalibChannels(belowCanvas, picture, INK);
    Viewport beside(canvas.Below(), left - strip, top, strip, high);
    Canvas besideCanvas(beside);
    DrawCalibEnergies(besideCanvas, picture, INK);

    // 3. The titles and the label.
    canvas.FontSize = 14.0;
    canvas.FontBold = true;
    Write(canvas, margin, margin - 12.0, "Energy Calibration Curve");
    canvas.FontBold = false;
    canvas.FontSize = LABEL_SIZE;
    const std::string energy = "           keV";
    Write(canvas, left - canvas.TextWidth(energy), top - 24.0, energy);
    const std::string channel = "Channel";
    Write(canvas, left + (wide - canvas.TextWidth(channel)) / 2.0, top + high + 24.0, channel);
    double y = top + high + 48.0;
    for (const std::string& each : picture.Lines) {
        Write(canvas, left, y, each);
        y += line;
    }
}

}  // namespace vael
