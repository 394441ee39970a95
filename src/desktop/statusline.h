// A label of one line that never asks for room: what does not fit is cut, and shown as its tip.
#pragma once

#include <QLabel>

namespace vael {

class StatusLine : public QLabel {
    Q_OBJECT
public:
    explicit StatusLine(QWidget* parent = nullptr) : QLabel(parent) {}
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    [[nodiscard]] bool Fits() const;
};

}  // namespace vael
