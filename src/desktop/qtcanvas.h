// Surfaces of the canvas on Qt: an image that a picture shows, and a page of a printer.
#pragma once

#include "display/canvas.h"

#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QLineF>
#include <QPainter>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class QPrinter;

namespace vael {

/// Draws with a QPainter. Sizes are in logical pixels: `ratio` device pixels stand for one. Strokes
/// of one pen are gathered and drawn at once; exclusive-or strokes are drawn without antialiasing,
/// so that a second drawing restores every pixel.
class PainterSurface : public Surface {
public:
    [[nodiscard]] Extent Size() const override { return size_; }
    void Stroke(Spot from, Spot to, const Brush& brush) override;
    void Box(Spot corner, Spot opposite, bool filled, const Brush& brush) override;
    void Dot(Spot at, const Brush& brush) override;
    void Write(Spot at, std::string_view utf8, const Brush& brush) override;
    [[nodiscard]] Extent Measure(std::string_view utf8, const Brush& brush) const override;

    /// Draws what is gathered and lets go of the device.
    void Finish();

protected:
    /// The device to draw on; nullptr when there is none.
    [[nodiscard]] virtual QPaintDevice* Device() = 0;
    void SetSize(Extent size, double ratio, double pointPixels, double inset);
    bool Begin();
    void Flush();
    QPainter painter_;
    double ratio_ = 1.0;

private:
    struct Face {
        QFont Font;
        QFontMetricsF Metrics;
    };
    [[nodiscard]] const Face& FaceOf(const Brush& brush) const;
    [[nodiscard]] QPointF Map(Spot at, const Frame4& frame) const;
    void SetMode(int mode, bool smooth);
    Extent size_{1.0, 1.0};
    double pointPixels_ = 96.0 / 72.0;  // logical pixels of a point
    double inset_ = 0.0;  // logical pixels above the drawing, for texts that hang over
    std::vector<QLineF> lines_;
    Brush pen_;
    mutable std::map<std::pair<double, bool>, Face> faces_;
};

/// The image of a picture. The picture may be taller than what is drawn: `inset` logical pixels
/// above and below belong to labels that are centred on the edge.
class ImageSurface : public PainterSurface {
public:
    ~ImageSurface() override { Finish(); }
    void Clear(Colour background) override;
    /// A new size; what was drawn is stretched until it is drawn anew.
    void Resize(int width, int height, double ratio, int inset);
    [[nodiscard]] double Ratio() const { return ratio_; }
    /// The image as it stands now.
    [[nodiscard]] const QImage& Image() {
        Finish();
        return image_;
    }

protected:
    QPaintDevice* Device() override { return image_.isNull() ? nullptr : &image_; }

private:
    QImage image_;
};

/// A page of a printer, in points.
class PrinterSurface : public PainterSurface {
public:
    explicit PrinterSurface(QPrinter& printer);
    ~PrinterSurface() override { Finish(); }
    void Clear(Colour) override {}  // paper is clean
    bool NextPage();
    /// False when the printer could not be opened.
    bool Start() { return Begin(); }

protected:
    QPaintDevice* Device() override;

private:
    QPrinter& printer_;
};

/// A colour of the records.
[[nodiscard]] QColor ToQt(Colour colour);

}  // namespace vael
