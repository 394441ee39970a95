// Surfaces of the canvas on Qt: an image that a picture shows, and a page of a printer.
#include "desktop/qtcanvas.h"

#include <QPrinter>

#include <algorithm>
#include <cmath>

namespace vael {

QColor ToQt(Colour colour) {
    return QColor(colour & 255, (colour >> 8) & 255, (colour >> 16) & 255);
}

void PainterSurface::SetSize(Extent size, double ratio, double pointPixels, double inset) {
    size_ = size;
    ratio_ = ratio;
    pointPixels_ = pointPixels;
    inset_ = inset;
    faces_.clear();
    if (lines_.capacity() == 0) lines_.reserve(1024);
}

bool PainterSurface::Begin() {
    if (painter_.isActive()) return true;
    QPaintDevice* device = Device();
    return device != nullptr && painter_.begin(device);
}

void PainterSurface::Finish() {
    Flush();
    if (painter_.isActive()) painter_.end();
}

// The first and the last coordinate fall on the first and the last pixel, so that a line along an
// edge is seen.
QPointF PainterSurface::Map(Spot at, const Frame4& frame) const {
    const double wide = frame.Right - frame.Left;
    const double high = frame.Bottom - frame.Top;
    const double x = wide == 0.0 ? 0.0 : (at.X - frame.Left) / wide * (size_.Width * ratio_ - 1.0);
    const double y = high == 0.0 ? 0.0 : (at.Y - frame.Top) / high * (size_.Height * ratio_ - 1.0);
    // Far outside the device the rasteriser loses precision.
    constexpr double far = 1e6;
    return {std::clamp(x, -far, far) + 0.5, std::clamp(y, -far, far) + 0.5 + inset_ * ratio_};
}

void PainterSurface::SetMode(int mode, bool smooth) {
    const bool exclusive = mode == DRAW_XOR;
    painter_.setCompositionMode(exclusive ? QPainter::RasterOp_SourceXorDestination
                                          : QPainter::CompositionMode_SourceOver);
    painter_.setRenderHint(QPainter::Antialiasing, smooth && !exclusive);
}

void PainterSurface::Flush() {
    if (lines_.empty()) return;
    if (Begin()) {
        SetMode(pen_.Mode, true);
        QPen pen(ToQt(pen_.Ink), std::max(1.0, pen_.Width * ratio_));
        // Square ends overlap where strokes join, so that a curve has no faint seams; exclusive-or
        // strokes end where they end.
        pen.setCapStyle(pen_.Mode == DRAW_XOR ? Qt::FlatCap : Qt::SquareCap);
        painter_.setPen(pen);
        painter_.drawLines(lines_.data(), static_cast<int>(lines_.size()));
    }
    lines_.clear();
}

void PainterSurface::Stroke(Spot from, Spot to, const Brush& brush) {
    if (brush.Ink != pen_.Ink || brush.Width != pen_.Width || brush.Mode != pen_.Mode) {
        Flush();
        pen_ = brush;
    }
    QPointF a = Map(from, brush.Scale);
    QPointF b = Map(to, brush.Scale);
    // Upright and level lines sit on whole pixels, where antialiasing leaves them sharp.
    const auto snap = [](double value) { return std::floor(value) + 0.5; };
    if (from.X == to.X) {
        a.setX(snap(a.x()));
        b.setX(a.x());
    } else if (from.Y == to.Y) {
        a.setY(snap(a.y()));
        b.setY(a.y());
    }
    if (a == b) b.rx() += 0.01;  // a line of no length still leaves its pixel
    lines_.emplace_back(a, b);
    if (lines_.size() >= 1024) Flush();
}

void PainterSurface::Box(Spot corner, Spot opposite, bool filled, const Brush& brush) {
    Flush();
    if (!Begin()) return;
    SetMode(brush.Mode, false);
    const QRectF box = QRectF(Map(corner, brush.Scale), Map(opposite, brush.Scale)).normalized();
    if (filled) {
        painter_.fillRect(box, ToQt(brush.Ink));
    } else {
        painter_.setPen(QPen(ToQt(brush.Ink), std::max(1.0, brush.Width * ratio_)));
        painter_.setBrush(Qt::NoBrush);
        painter_.drawRect(box);
    }
}

void PainterSurface::Dot(Spot at, const Brush& brush) {
    Flush();
    if (!Begin()) return;
    SetMode(brush.Mode, false);
    const QPointF middle = Map(at, brush.Scale);
    const double side = std::max(1.0, std::round(brush.Width * ratio_));
    painter_.fillRect(QRectF(std::floor(middle.x() - (side - 1.0) / 2.0),
                             std::floor(middle.y() - (side - 1.0) / 2.0), side, side),
                      ToQt(brush.Ink));
}

const PainterSurface::Face& PainterSurface::FaceOf(const Brush& brush) const {
    const std::pair<double, bool> key{brush.FontSize, brush.Bold};
    auto found = faces_.find(key);
    if (found == faces_.end()) {
        QFont font;
        font.setPixelSize(
            std::max(1, static_cast<int>(std::lround(brush.FontSize * pointPixels_ * ratio_))));
        font.setBold(brush.Bold);
        found = faces_.emplace(key, Face{font, QFontMetricsF(font)}).first;
    }
    return found->second;
}

void PainterSurface::Write(Spot at, std::string_view utf8, const Brush& brush) {
    Flush();
    if (!Begin()) return;
    SetMode(brush.Mode, true);
    const Face& face = FaceOf(brush);
    painter_.setFont(face.Font);
    painter_.setPen(ToQt(brush.Ink));
    const QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    painter_.save();
    painter_.translate(Map(at, brush.Scale));
    painter_.rotate(-brush.Angle);
    painter_.drawText(QPointF(0.0, face.Metrics.ascent()), text);
    painter_.restore();
}

Extent PainterSurface::Measure(std::string_view utf8, const Brush& brush) const {
    const Face& face = FaceOf(brush);
    const QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    return {face.Metrics.horizontalAdvance(text) / ratio_, face.Metrics.height() / ratio_};
}

void ImageSurface::Clear(Colour background) {
    Finish();
    if (!image_.isNull()) image_.fill(ToQt(background));
}

void ImageSurface::Resize(int width, int height, double ratio, int inset) {
    Finish();
    const QSize device(std::max(1, static_cast<int>(std::lround(width * ratio))),
                       std::max(1, static_cast<int>(std::lround(height * ratio))));
    SetSize({static_cast<double>(std::max(1, width)),
             static_cast<double>(std::max(1, height - 2 * inset))},
            ratio, 96.0 / 72.0, inset);
    if (image_.isNull()) {
        image_ = QImage(device, QImage::Format_RGB32);
        image_.fill(Qt::black);
    } else if (image_.size() != device) {
        image_.setDevicePixelRatio(1.0);
        image_ = image_.scaled(device).convertToFormat(QImage::Format_RGB32);
    }
    // The painter works in device pixels; only who shows the image needs the ratio.
    image_.setDevicePixelRatio(1.0);
}

PrinterSurface::PrinterSurface(QPrinter& printer) : printer_(printer) {
    const QRectF page = printer.paperRect(QPrinter::Point);
    SetSize({page.width(), page.height()}, printer.resolution() / 72.0, 1.0, 0.0);
}

QPaintDevice* PrinterSurface::Device() { return &printer_; }

bool PrinterSurface::NextPage() {
    Flush();
    return printer_.newPage();
}

}  // namespace vael
