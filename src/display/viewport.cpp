// A surface that is a rectangle of another one.
#include "display/viewport.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vael {
namespace {

struct Range {
    double Low, High;
};
Range Across(const Frame4& f) { return {std::min(f.Left, f.Right), std::max(f.Left, f.Right)}; }
Range Upward(const Frame4& f) { return {std::min(f.Top, f.Bottom), std::max(f.Top, f.Bottom)}; }

Spot Inside(Spot at, const Frame4& f) {
    return {std::clamp(at.X, Across(f).Low, Across(f).High),
            std::clamp(at.Y, Upward(f).Low, Upward(f).High)};
}

}  // namespace

// The line as from + t (to - from): each edge cuts the range of t (Y.-D. Liang and B. A. Barsky,
// ACM Transactions on Graphics 3, 1984).
bool ClipLine(Spot& from, Spot& to, const Frame4& frame) {
    const Range x = Across(frame);
    const Range y = Upward(frame);
    const double dx = to.X - from.X;
    const double dy = to.Y - from.Y;
    double first = 0.0;
    double last = 1.0;
    const std::array<std::pair<double, double>, 4> edges{{{-dx, from.X - x.Low},
                                                          {dx, x.High - from.X},
                                                          {-dy, from.Y - y.Low},
                                                          {dy, y.High - from.Y}}};
    for (const auto& [toward, room] : edges) {
        if (toward == 0.0) {
            if (room < 0.0) return false;
        } else if (toward < 0.0) {
            first = std::max(first, room / toward);
        } else {
            last = std::min(last, room / toward);
        }
    }
    if (first > last) return false;
    const Spot start = from;
    if (first > 0.0) from = {start.X + first * dx, start.Y + first * dy};
    if (last < 1.0) to = {start.X + last * dx, start.Y + last * dy};
    return true;
}

Brush Viewport::Outer(const Brush& brush) const {
    const Frame4& f = brush.Scale;
    const Extent whole = parent_->Size();
    const double wide = size_.Width > 0.0 ? (f.Right - f.Left) / size_.Width : 0.0;
    const double high = size_.Height > 0.0 ? (f.Bottom - f.Top) / size_.Height : 0.0;
    Brush outer = brush;
    outer.Scale.Left = f.Left - left_ * wide;
    outer.Scale.Right = outer.Scale.Left + whole.Width * wide;
    outer.Scale.Top = f.Top - top_ * high;
    outer.Scale.Bottom = outer.Scale.Top + whole.Height * high;
    return outer;
}

void Viewport::Clear(Colour background) {
    Brush brush;
    brush.Scale = {0.0, 0.0, 1.0, 1.0};
    brush.Ink = background;
    parent_->Box({0.0, 0.0}, {1.0, 1.0}, true, Outer(brush));
}

void Viewport::Stroke(Spot from, Spot to, const Brush& brush) {
    if (ClipLine(from, to, brush.Scale)) parent_->Stroke(from, to, Outer(brush));
}

void Viewport::Box(Spot corner, Spot opposite, bool filled, const Brush& brush) {
    const Spot a = Inside(corner, brush.Scale);
    const Spot b = Inside(opposite, brush.Scale);
    if (a.X != b.X || a.Y != b.Y) parent_->Box(a, b, filled, Outer(brush));
}

void Viewport::Dot(Spot at, const Brush& brush) {
    const Spot inside = Inside(at, brush.Scale);
    if (inside.X == at.X && inside.Y == at.Y) parent_->Dot(at, Outer(brush));
}

void Viewport::Write(Spot at, std::string_view utf8, const Brush& brush) {
    parent_->Write(at, utf8, Outer(brush));
}

}  // namespace vael
