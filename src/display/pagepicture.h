// A surface that is a sheet of paper on a picture: one page of several, in the picture's size.
#pragma once

#include "display/canvas.h"

namespace vael {

/// A4, the sheet of files and previews, in points.
inline constexpr Extent SHEET{595.0, 842.0};

/// Draws what is drawn on it on another surface, as large as it fits there with an edge round it.
/// Of several pages only `page` (from 1) is seen; `NextPage` turns over.
class PagePicture : public Surface {
public:
    PagePicture(Surface& picture, bool landscape, int page);
    /// The sheet on a grey ground.
    void DrawSheet();
    void NextPage() { ++now_; }
    [[nodiscard]] int Pages() const { return now_; }

    [[nodiscard]] Extent Size() const override { return size_; }
    void Clear(Colour) override {}  // paper is clean
    void Stroke(Spot from, Spot to, const Brush& brush) override;
    void Box(Spot corner, Spot opposite, bool filled, const Brush& brush) override;
    void Dot(Spot at, const Brush& brush) override;
    void Write(Spot at, std::string_view utf8, const Brush& brush) override;
    [[nodiscard]] Extent Measure(std::string_view utf8, const Brush& brush) const override;

private:
    [[nodiscard]] bool Seen(const Brush& brush) const {
        return now_ == page_ && brush.Mode != DRAW_XOR;
    }
    [[nodiscard]] Brush Outer(const Brush& brush) const;
    Surface* picture_;
    Extent size_;         // of the sheet, points
    double scale_ = 1.0;  // pixels of the picture to a point
    double left_ = 0.0, top_ = 0.0;
    int page_;
    int now_ = 1;
};

}  // namespace vael
