// A surface that is a sheet of paper on a picture: one page of several, in the picture's size.
#include "display/pagepicture.h"

#include "display/paper.h"

#include <algorithm>
#include <utility>

namespace vael {
namespace {

constexpr Colour GROUND = Rgb(128, 132, 138);
constexpr double EDGE = 12.0;                    // pixels round the sheet
constexpr double PIXELS_OF_POINT = 96.0 / 72.0;  // of the picture's fonts

}  // namespace

PagePicture::PagePicture(Surface& picture, bool landscape, int page)
    : picture_(&picture), size_(SHEET), page_(page) {
    if (landscape) std::swap(size_.Width, size_.Height);
    const Extent room = picture.Size();
    scale_ = std::max(0.05, std::min((room.Width - 2.0 * EDGE) / size_.Width,
                                     (room.Height - 2.0 * EDGE) / size_.Height));
    left_ = (room.Width - size_.Width * scale_) / 2.0;
    top_ = (room.Height - size_.Height * scale_) / 2.0;
}

void PagePicture::DrawSheet() {
    picture_->Clear(GROUND);
    Brush brush;
    brush.Scale = {0.0, 0.0, size_.Width, size_.Height};
    brush.Ink = paper::PAPER;
    picture_->Box({0.0, 0.0}, {size_.Width, size_.Height}, true, Outer(brush));
}

/// The same in the picture's pixels: scale, line width, and a font size whose pixels are the
/// scaled points.
Brush PagePicture::Outer(const Brush& brush) const {
    const Frame4& f = brush.Scale;
    const double wide = (f.Right - f.Left) / (size_.Width * scale_);
    const double high = (f.Bottom - f.Top) / (size_.Height * scale_);
    const Extent room = picture_->Size();
    Brush outer = brush;
    outer.Scale = {f.Left - left_ * wide, f.Top - top_ * high, f.Left + (room.Width - left_) * wide,
                   f.Top + (room.Height - top_) * high};
    outer.Width = brush.Width * scale_;
    outer.FontSize = brush.FontSize * scale_ / PIXELS_OF_POINT;
    return outer;
}

void PagePicture::Stroke(Spot from, Spot to, const Brush& brush) {
    if (Seen(brush)) picture_->Stroke(from, to, Outer(brush));
}

void PagePicture::Box(Spot corner, Spot opposite, bool filled, const Brush& brush) {
    if (Seen(brush)) picture_->Box(corner, opposite, filled, Outer(brush));
}

void PagePicture::Dot(Spot at, const Brush& brush) {
    if (Seen(brush)) picture_->Dot(at, Outer(brush));
}

void PagePicture::Write(Spot at, std::string_view utf8, const Brush& brush) {
    if (Seen(brush)) picture_->Write(at, utf8, Outer(brush));
}

Extent PagePicture::Measure(std::string_view utf8, const Brush& brush) const {
    const Extent size = picture_->Measure(utf8, Outer(brush));
    return {size.Width / scale_, size.Height / scale_};
}

}  // namespace vael
