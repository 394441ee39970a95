// Draws the program's icon in the sizes that desktops ask for: vael-icons ICON.svg FOLDER SIZE...
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char** argv) {
    if (argc < 4) {
        std::fputs("vael-icons ICON.svg FOLDER SIZE...\n", stderr);
        return 2;
    }
    QSvgRenderer icon(QString::fromLocal8Bit(argv[1]));
    if (!icon.isValid()) {
        std::fprintf(stderr, "%s: an SVG picture was expected.\n", argv[1]);
        return 1;
    }
    for (int k = 3; k < argc; ++k) {
        const QString size = QString::fromLocal8Bit(argv[k]);
        QImage picture(size.toInt(), size.toInt(), QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        icon.render(&painter);
        painter.end();
        const QString path =
            QString::fromLocal8Bit(argv[2]) + QStringLiteral("/") + size + QStringLiteral(".png");
        if (!picture.save(path)) {
            std::fprintf(stderr, "%s cannot be written.\n", qPrintable(path));
            return 1;
        }
    }
    return 0;
}
