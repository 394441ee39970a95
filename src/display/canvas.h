// The abstract canvas on which every picture and page is drawn, and the surface below it.
#pragma once

#include "core/records.h"

#include <string>
#include <string_view>

namespace vael {

/// Raster operations of `DrawMode`: 13 copies the pen, 7 is exclusive or (drawn twice it is gone).
inline constexpr int DRAW_COPY = 13;
inline constexpr int DRAW_XOR = 7;

struct Spot {
    double X = 0.0;
    double Y = 0.0;
};
struct Extent {
    double Width = 0.0;
    double Height = 0.0;
};

/// The user coordinates of a canvas: where its left, top, right and bottom edges lie.
struct Frame4 {
    double Left = 0.0;
    double Top = 0.0;
    double Right = 1.0;
    double Bottom = 1.0;
};

/// All that a primitive needs besides its points. Font size in points, angle in degrees
/// counter-clockwise, line width in device pixels.
struct Brush {
    Frame4 Scale;
    Colour Ink = 0;
    double Width = 1.0;
    int Mode = DRAW_COPY;
    double FontSize = 9.0;
    double Angle = 0.0;
    bool Bold = false;
};

/// What a picture, a printer page, an SVG file or a recorder implements. Points come in the
/// caller's own coordinates, with the scale that maps them in the brush.
class Surface {
public:
    virtual ~Surface() = default;
    /// Size in device pixels (points of a page).
    [[nodiscard]] virtual Extent Size() const = 0;
    virtual void Clear(Colour background) = 0;
    virtual void Stroke(Spot from, Spot to, const Brush& brush) = 0;
    virtual void Box(Spot corner, Spot opposite, bool filled, const Brush& brush) = 0;
    virtual void Dot(Spot at, const Brush& brush) = 0;
    /// Text with its top left corner at `at`.
    virtual void Write(Spot at, std::string_view utf8, const Brush& brush) = 0;
    /// Size of a text in device pixels, unrotated.
    [[nodiscard]] virtual Extent Measure(std::string_view utf8, const Brush& brush) const = 0;
};

/// A surface with the state that drawing code sets and reads: scale, current point, pen, draw mode
/// and font, as plain members.
class Canvas {
public:
    explicit Canvas(Surface& surface) : surface_(&surface) { ScaleReset(); }

    double CurrentX = 0.0;
    double CurrentY = 0.0;
    double FontSize = 9.0;
    double DrawWidth = 1.0;
    int DrawMode = DRAW_COPY;
    double TextAngle = 0.0;
    bool FontBold = false;

    /// Sets the user coordinates: (left, top) to (right, bottom).
    void Scale(double left, double top, double right, double bottom) {
        frame_ = {left, top, right, bottom};
    }
    /// Back to device pixels with the origin at the top left.
    void ScaleReset() {
        const Extent size = surface_->Size();
        frame_ = {0.0, 0.0, size.Width, size.Height};
    }
    [[nodiscard]] const Frame4& ScaleNow() const { return frame_; }
    [[nodiscard]] double ScaleLeft() const { return frame_.Left; }
    [[nodiscard]] double ScaleTop() const { return frame_.Top; }
    [[nodiscard]] Extent PixelSize() const { return surface_->Size(); }
    /// Width and height of one device pixel in user units, both positive.
    [[nodiscard]] Extent PixelUnit() const;

    void Clear(Colour background) { surface_->Clear(background); }
    void Line(double x1, double y1, double x2, double y2, Colour colour) {
        surface_->Stroke({x1, y1}, {x2, y2}, MakeBrush(colour));
        CurrentX = x2;
        CurrentY = y2;
    }
    void Box(double x1, double y1, double x2, double y2, Colour colour, bool filled) {
        surface_->Box({x1, y1}, {x2, y2}, filled, MakeBrush(colour));
        CurrentX = x2;
        CurrentY = y2;
    }
    void PSet(double x, double y, Colour colour) {
        surface_->Dot({x, y}, MakeBrush(colour));
        CurrentX = x;
        CurrentY = y;
    }
    /// Writes at the current point, which is the text's top left corner.
    void Print(std::string_view utf8, Colour colour) {
        surface_->Write({CurrentX, CurrentY}, utf8, MakeBrush(colour));
    }
    /// Size of a text in user units, both positive.
    [[nodiscard]] double TextWidth(std::string_view utf8) const;
    [[nodiscard]] double TextHeight(std::string_view utf8) const;

    [[nodiscard]] Surface& Below() { return *surface_; }

private:
    [[nodiscard]] Brush MakeBrush(Colour colour) const {
        return {frame_, colour, DrawWidth, DrawMode, FontSize, TextAngle, FontBold};
    }
    Surface* surface_;
    Frame4 frame_;
};

/// A point in device pixels, for surfaces that map themselves.
[[nodiscard]] Spot ToPixels(Spot point, const Frame4& scale, Extent size);

}  // namespace vael
