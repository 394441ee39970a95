// The few widgets of our own: picture, row chip, edge of a graph window, titled group, splitter,
// memo card, hairline.
#pragma once

#include "desktop/qtcanvas.h"
#include "toolkit/controls.h"

#include <QCheckBox>
#include <QFrame>
#include <QSplitter>

#include <functional>

namespace vael {

/// The button of an event, and the one that is held during a move; the left one comes first.
[[nodiscard]] MouseButton ButtonOf(Qt::MouseButton button);
[[nodiscard]] MouseButton ButtonsOf(Qt::MouseButtons buttons);

/// After Enter in a box the keys go back to the window, where its form asks for it (the dynamic
/// property "enterEndsTyping"): the keys of the main window are those of its plots.
void EndTyping(QWidget& box);

/// Shows the image that a Picture record is drawn on, and carries the mouse to the record. It never
/// draws by itself: only a change of size asks for a redraw. The dynamic property "overhang" is the
/// room above and below the drawing for labels centred on its edge.
class PictureWidget : public QWidget {
    Q_OBJECT
public:
    explicit PictureWidget(QWidget* parent = nullptr);
    /// The record that draws here. `refitted` is called when the size has changed.
    void Bind(Picture& record, std::function<void()> refitted);
    [[nodiscard]] ImageSurface& Paper() { return surface_; }
    [[nodiscard]] const ImageSurface& Paper() const { return surface_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void Refit();
    [[nodiscard]] int Overhang() const;
    [[nodiscard]] QPointF OnPaper(const QMouseEvent& event) const;
    ImageSurface surface_;
    Picture* record_ = nullptr;
    std::function<void()> refitted_;
};

/// A row's box as a numbered chip: filled in the row's colour when the row is drawn, hollow when it
/// is not, grey when the row is empty.
class RowChip : public QCheckBox {
    Q_OBJECT
public:
    explicit RowChip(QWidget* parent = nullptr);
    void SetRow(const QColor& colour, bool loaded);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] bool hitButton(const QPoint& at) const override { return rect().contains(at); }

private:
    QColor colour_;
    bool loaded_ = false;
};

/// A frame with a hairline round it. The active one of its kind has an edge of two pixels in the
/// accent colour, and the hairline inside that when the hairline has a colour of its own.
class EdgeFrame : public QFrame {
    Q_OBJECT
public:
    explicit EdgeFrame(QWidget* parent = nullptr) : QFrame(parent) {}
    /// `line` is the colour of the hairline; an invalid one leaves it to the palette.
    void SetEdge(bool raised, const QColor& line);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool raised_ = false;
    QColor line_;
};

/// Two windows one above the other that keep their share of the height: when the whole changes its
/// size, and when one of them was away and comes back.
class ShareSplitter : public QSplitter {
    Q_OBJECT
public:
    explicit ShareSplitter(QWidget* parent = nullptr);
    /// The part of the height that the upper window has, 0 to 1.
    void SetShare(double share);

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    void Apply();
    double share_ = 0.5;
};

/// A card that floats on a plot.
class MemoCard : public QFrame {
    Q_OBJECT
public:
    explicit MemoCard(QWidget* parent = nullptr) : QFrame(parent) {}

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// An upright hairline between groups of buttons.
class ThinLine : public QFrame {
    Q_OBJECT
public:
    explicit ThinLine(QWidget* parent = nullptr) : QFrame(parent) { setFixedWidth(16); }

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// A group of controls with a small title and a hairline above it.
class TitledGroup : public QFrame {
    Q_OBJECT
    Q_PROPERTY(QString title READ title WRITE setTitle)
public:
    explicit TitledGroup(QWidget* parent = nullptr) : QFrame(parent) {}
    [[nodiscard]] QString title() const { return title_; }
    void setTitle(const QString& title);  // named as the form compiler expects

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QFont TitleFont() const;
    QString title_;
};

}  // namespace vael
