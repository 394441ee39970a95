// What everything drawn on a page shares: inks, sizes, rectangles, the writing of texts.
#pragma once

#include "display/canvas.h"

#include <string>
#include <string_view>

namespace vael::paper {

inline constexpr Colour PAPER = Rgb(255, 255, 255);
inline constexpr Colour INK = Rgb(34, 34, 34);
inline constexpr Colour QUIET = Rgb(110, 110, 110);
inline constexpr Colour FAINT = Rgb(170, 170, 170);
inline constexpr Colour GRID = Rgb(232, 232, 232);
// Blue, vermilion (lightened: it lies broad under the counts) and bluish green of the palette of
// M. Okabe and K. Ito (2008), which stay apart for the colour blind.
inline constexpr Colour DATA_COLOUR = Rgb(60, 60, 60);
inline constexpr Colour FIT_COLOUR = Rgb(245, 160, 90);
inline constexpr Colour BACK_COLOUR = Rgb(0, 114, 178);
inline constexpr Colour REST_COLOUR = Rgb(0, 128, 96);

inline constexpr double MARGIN = 36.0;  // points; printers reach that far
inline constexpr double LINE_STEP = 10.5;

/// Points from the top left corner of the page.
struct Rect {
    double Left = 0.0, Top = 0.0, Right = 0.0, Bottom = 0.0;
    [[nodiscard]] double Width() const { return Right - Left; }
    [[nodiscard]] double Height() const { return Bottom - Top; }
};

/// A colour of the screen as it can be read on white: one that is nearly grey becomes the ink of
/// texts, any other is darkened, keeping its hue, to a contrast of at least 4.5 : 1 (luminance and
/// contrast as the Web Content Accessibility Guidelines 2.1 define them).
[[nodiscard]] Colour OnWhite(Colour colour);

/// Writes with the text's top left corner at (x, y); `size` in points.
void Write(Canvas& canvas, double x, double y, std::string_view utf8, Colour ink, double size,
           bool bold = false);
/// The same with its right end at `right`.
void WriteRight(Canvas& canvas, double right, double y, std::string_view utf8, Colour ink,
                double size, bool bold = false);
/// The text, or as much of its beginning as `width` takes, with an ellipsis behind it. Set the font
/// first.
[[nodiscard]] std::string Fitted(const Canvas& canvas, std::string_view utf8, double width);

}  // namespace vael::paper
