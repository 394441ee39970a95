// The look of the program: a plain style whose boxes to tick are seen on dark ground too.
#include "desktop/look.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>

namespace vael {
namespace {

/// The edge of the box: between ink and ground, stronger where the keys or the pointer are.
QColor EdgeOf(const QStyleOption& option) {
    const bool usable = option.state.testFlag(QStyle::State_Enabled);
    if (usable && option.state.testFlag(QStyle::State_HasFocus) &&
        option.state.testFlag(QStyle::State_KeyboardFocusChange))
        return option.palette.color(QPalette::Highlight);
    QColor ink = option.palette.color(QPalette::WindowText);
    ink.setAlphaF(!usable ? 0.35F : option.state.testFlag(QStyle::State_MouseOver) ? 0.9F : 0.6F);
    return ink;
}

void DrawBox(const QStyleOption& option, QPainter& painter, bool round) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const double side = std::min(option.rect.width(), option.rect.height()) - 1.0;
    QRectF box(0.0, 0.0, side, side);
    box.moveCenter(QRectF(option.rect).center());
    painter.setPen(QPen(EdgeOf(option), 1.0));
    painter.setBrush(option.palette.color(QPalette::Base));
    if (round)
        painter.drawEllipse(box);
    else
        painter.drawRoundedRect(box, 2.0, 2.0);
    if (option.state.testFlag(QStyle::State_On)) {
        const QColor ink = option.palette.color(QPalette::Text);
        if (round) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(ink);
            painter.drawEllipse(box.center(), side * 0.24, side * 0.24);
        } else {
            QPainterPath tick;
            tick.moveTo(box.left() + side * 0.24, box.top() + side * 0.52);
            tick.lineTo(box.left() + side * 0.43, box.top() + side * 0.72);
            tick.lineTo(box.left() + side * 0.77, box.top() + side * 0.28);
            painter.setPen(QPen(ink, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            painter.setBrush(Qt::NoBrush);
            painter.drawPath(tick);
        }
    }
    painter.restore();
}

}  // namespace

Look::Look() : QProxyStyle(QStringLiteral("Fusion")) {}

void Look::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                         const QWidget* widget) const {
    if (element == PE_IndicatorCheckBox)
        DrawBox(*option, *painter, false);
    else if (element == PE_IndicatorRadioButton)
        DrawBox(*option, *painter, true);
    else
        QProxyStyle::drawPrimitive(element, option, painter, widget);
}

}  // namespace vael
