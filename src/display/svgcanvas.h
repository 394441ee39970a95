// A surface that writes a page as SVG, with text metrics of its own: a page needs no desktop.
#pragma once

#include "display/canvas.h"

#include <string>
#include <string_view>

namespace vael {

/// One page. A device pixel is a point (1/72 inch). Strokes of one pen that follow each other
/// become one path, so that a plot of some thousand channels stays small. Exclusive-or strokes do
/// not print.
class SvgSurface : public Surface {
public:
    explicit SvgSurface(double width = 842.0, double height = 595.0);  // A4 across

    [[nodiscard]] Extent Size() const override { return size_; }
    void Clear(Colour background) override;
    void Stroke(Spot from, Spot to, const Brush& brush) override;
    void Box(Spot corner, Spot opposite, bool filled, const Brush& brush) override;
    void Dot(Spot at, const Brush& brush) override;
    void Write(Spot at, std::string_view utf8, const Brush& brush) override;
    /// By the advance widths of a common sans-serif face; a wide character counts a whole em.
    [[nodiscard]] Extent Measure(std::string_view utf8, const Brush& brush) const override;

    /// What the page is, for readers that cannot see it.
    void SetTitle(std::string_view utf8) { title_ = utf8; }
    /// The whole document, UTF-8.
    [[nodiscard]] std::string Text() const;

private:
    enum class Path { None, Lines, Dots };
    void Open(Path kind, const Brush& brush);
    void Close();
    void MoveTo(Spot at);
    void LineTo(Spot at);
    void Pair(long x, long y);
    Extent size_;
    std::string title_;
    std::string body_;
    std::string path_;  // data of the path being built
    Path kind_ = Path::None;
    Colour ink_ = 0;
    double width_ = 0.0;
    long penX_ = 0, penY_ = 0;  // where the path stands, in twentieths of a point
    char last_ = ' ';           // last command letter of the path
};

/// Text fit for the inside of an element or of an attribute; control characters become blanks.
[[nodiscard]] std::string XmlEscape(std::string_view utf8);

}  // namespace vael
