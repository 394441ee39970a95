// A surface that is a rectangle of another one: strokes are clipped to it, and its size is its own,
// so that a plot or a scale strip draws on a part of a page as it draws on a picture of its own.
#pragma once

#include "display/canvas.h"

namespace vael {

class Viewport : public Surface {
public:
    /// The rectangle in device pixels of `parent`, its origin at the top left.
    Viewport(Surface& parent, double left, double top, double width, double height)
        : parent_(&parent), left_(left), top_(top), size_{width, height} {}

    [[nodiscard]] Extent Size() const override { return size_; }
    void Clear(Colour background) override;
    void Stroke(Spot from, Spot to, const Brush& brush) override;
    void Box(Spot corner, Spot opposite, bool filled, const Brush& brush) override;
    void Dot(Spot at, const Brush& brush) override;
    /// Texts are not clipped: a label may hang over the edge.
    void Write(Spot at, std::string_view utf8, const Brush& brush) override;
    [[nodiscard]] Extent Measure(std::string_view utf8, const Brush& brush) const override {
        return parent_->Measure(utf8, brush);
    }

private:
    [[nodiscard]] Brush Outer(const Brush& brush) const;
    Surface* parent_;
    double left_, top_;
    Extent size_;
};

/// Clips a line to the coordinates of a frame; false when nothing of it lies inside.
[[nodiscard]] bool ClipLine(Spot& from, Spot& to, const Frame4& frame);

}  // namespace vael
