// Icons of our own: line drawings in one stroke width, in the ink of the palette.
#include "desktop/icons.h"

#include <QFile>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

// The drawings lie in a static library, which a program must ask for by name outside any namespace.
static void TakeDrawings() { Q_INIT_RESOURCE(desktop); }

namespace vael {
namespace {

constexpr int SIDE = 24;  // logical pixels

QPixmap Drawn(const QByteArray& svg, int ratio) {
    QSvgRenderer renderer(svg);
    QPixmap pixmap(SIDE * ratio, SIDE * ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    renderer.render(&painter, QRectF(0, 0, SIDE * ratio, SIDE * ratio));
    painter.end();
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

/// The drawing with its black ink replaced.
QByteArray Inked(QByteArray svg, const QColor& ink) {
    return svg.replace("#000000", ink.name(QColor::HexRgb).toLatin1());
}

QByteArray FileOf(const QString& name) {
    TakeDrawings();
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

QIcon SymbolIcon(const QString& name, const QPalette& palette) {
    const QByteArray svg = FileOf(name);
    QIcon icon;
    if (svg.isEmpty()) return icon;
    const QByteArray normal = Inked(svg, palette.color(QPalette::Active, QPalette::ButtonText));
    const QByteArray grey = Inked(svg, palette.color(QPalette::Disabled, QPalette::ButtonText));
    for (const int ratio : {1, 2, 3}) {
        icon.addPixmap(Drawn(normal, ratio), QIcon::Normal);
        icon.addPixmap(Drawn(grey, ratio), QIcon::Disabled);
    }
    return icon;
}

QIcon FaultIcon() {
    const QByteArray svg = FileOf(QStringLiteral("fault"));
    QIcon icon;
    for (const int ratio : {1, 2, 3}) icon.addPixmap(Drawn(svg, ratio));
    return icon;
}

QIcon ProgramIcon() {
    const QByteArray svg = FileOf(QStringLiteral("vael"));
    QIcon icon;
    for (const int ratio : {1, 2, 4, 10}) {
        QPixmap pixmap = Drawn(svg, ratio);
        pixmap.setDevicePixelRatio(1.0);
        icon.addPixmap(pixmap);
    }
    return icon;
}

}  // namespace vael
