// The abstract canvas on which every picture and page is drawn, and the surface below it.
#include "display/canvas.h"

#include <cmath>

namespace vael {

Extent Canvas::PixelUnit() const {
    const Extent size = surface_->Size();
    return {size.Width > 0 ? std::fabs(frame_.Right - frame_.Left) / size.Width : 0.0,
            size.Height > 0 ? std::fabs(frame_.Bottom - frame_.Top) / size.Height : 0.0};
}

double Canvas::TextWidth(std::string_view utf8) const {
    return surface_->Measure(utf8, MakeBrush(0)).Width * PixelUnit().Width;
}

double Canvas::TextHeight(std::string_view utf8) const {
    return surface_->Measure(utf8, MakeBrush(0)).Height * PixelUnit().Height;
}

Spot ToPixels(Spot point, const Frame4& scale, Extent size) {
    const double wide = scale.Right - scale.Left;
    const double high = scale.Bottom - scale.Top;
    return {wide == 0.0 ? 0.0 : (point.X - scale.Left) / wide * size.Width,
            high == 0.0 ? 0.0 : (point.Y - scale.Top) / high * size.Height};
}

}  // namespace vael
