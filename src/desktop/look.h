// The look of the program: a plain style whose boxes to tick are seen on dark ground too.
#pragma once

#include <QProxyStyle>

namespace vael {

class Look : public QProxyStyle {
    Q_OBJECT
public:
    Look();
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

}  // namespace vael
