// What everything drawn on a page shares: inks, sizes, rectangles, the writing of texts.
#include "display/paper.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vael::paper {
namespace {

using Channels = std::array<double, 3>;  // red, green, blue, 0 to 255

Channels ChannelsOf(Colour colour) {
    return {static_cast<double>(colour & 255), static_cast<double>((colour >> 8) & 255),
            static_cast<double>((colour >> 16) & 255)};
}

double Luminance(const Channels& c) {
    constexpr Channels PARTS{0.2126, 0.7152, 0.0722};
    double sum = 0.0;
    for (std::size_t i = 0; i < c.size(); ++i) {
        const double part = c[i] / 255.0;
        sum += PARTS[i] * (part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4));
    }
    return sum;
}

}  // namespace

Colour OnWhite(Colour colour) {
    constexpr double NEARLY_GREY = 30.0;
    constexpr double CONTRAST = 4.5;
    Channels c = ChannelsOf(colour);
    const auto [low, high] = std::minmax_element(c.begin(), c.end());
    if (*high - *low < NEARLY_GREY) return INK;
    while (1.05 / (Luminance(c) + 0.05) < CONTRAST)
        for (double& part : c) part *= 0.96;
    return Rgb(static_cast<int>(c[0]), static_cast<int>(c[1]), static_cast<int>(c[2]));
}

void Write(Canvas& canvas, double x, double y, std::string_view utf8, Colour ink, double size,
           bool bold) {
    canvas.FontSize = size;
    canvas.FontBold = bold;
    canvas.CurrentX = x;
    canvas.CurrentY = y;
    canvas.Print(utf8, ink);
    canvas.FontBold = false;
}

void WriteRight(Canvas& canvas, double right, double y, std::string_view utf8, Colour ink,
                double size, bool bold) {
    canvas.FontSize = size;
    canvas.FontBold = bold;
    Write(canvas, right - canvas.TextWidth(utf8), y, utf8, ink, size, bold);
}

std::string Fitted(const Canvas& canvas, std::string_view utf8, double width) {
    if (canvas.TextWidth(utf8) <= width) return std::string(utf8);
    std::string text(utf8);
    const auto inside = [&text] {  // the last byte belongs to a character that goes on before it
        return !text.empty() && (static_cast<unsigned char>(text.back()) & 0xC0U) == 0x80U;
    };
    do {
        while (inside()) text.pop_back();
        if (!text.empty()) text.pop_back();
    } while (!text.empty() && canvas.TextWidth(text + "…") > width);
    return text + "…";
}

}  // namespace vael::paper
