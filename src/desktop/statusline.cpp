// A label of one line that never asks for room: what does not fit is cut, and shown as its tip.
#include "desktop/statusline.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace vael {

bool StatusLine::Fits() const { return fontMetrics().horizontalAdvance(text()) <= width(); }

QSize StatusLine::minimumSizeHint() const { return {0, fontMetrics().height()}; }

void StatusLine::paintEvent(QPaintEvent* event) {
    if (Fits()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(text(), Qt::ElideRight, width()));
}

bool StatusLine::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || Fits()) return QLabel::event(event);
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
    return true;
}

}  // namespace vael
