// Text at an angle.
#include "display/lotatefont.h"

namespace vael {

void LotateText(Canvas& canvas, std::string_view utf8, bool bold, double angle, Colour ink) {
    const double size = canvas.FontSize;
    const double before = canvas.TextAngle;
    const bool heavy = canvas.FontBold;
    canvas.FontSize = LOTATE_POINTS;
    canvas.TextAngle = angle;
    canvas.FontBold = bold;
    canvas.Print(utf8, ink);
    canvas.FontSize = size;
    canvas.TextAngle = before;
    canvas.FontBold = heavy;
}

}  // namespace vael
