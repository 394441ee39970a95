// The few widgets of our own: picture, row chip, edge of a graph window, titled group, splitter,
// memo card, hairline.
#include "desktop/widgets.h"

#include "desktop/icons.h"

#include "toolkit/hand.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QWheelEvent>

namespace vael {
namespace {

QColor Mixed(const QColor& a, const QColor& b, double part) {
    const auto mix = [part](int x, int y) {
        return static_cast<int>(std::lround(x + (y - x) * part));
    };
    return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

}  // namespace

MouseButton ButtonOf(Qt::MouseButton button) {
    if (button == Qt::LeftButton) return MouseButton::Left;
    return button == Qt::RightButton ? MouseButton::Right : MouseButton::None;
}

MouseButton ButtonsOf(Qt::MouseButtons buttons) {
    if (buttons.testFlag(Qt::LeftButton)) return MouseButton::Left;
    return buttons.testFlag(Qt::RightButton) ? MouseButton::Right : MouseButton::None;
}

void EndTyping(QWidget& box) {
    QWidget* window = box.window();
    if (window->property("enterEndsTyping").toBool()) window->setFocus();
}

// --- picture -----------

PictureWidget::PictureWidget(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(8, 8);
}

void PictureWidget::Bind(Picture& record, std::function<void()> refitted) {
    record_ = &record;
    refitted_ = std::move(refitted);
    Refit();
    record.PutOn(&surface_);
    setMouseTracking(true);
    // A click into it ends the typing in a box; a form may also let Tab come to it.
    if (focusPolicy() == Qt::NoFocus) setFocusPolicy(Qt::ClickFocus);
}

int PictureWidget::Overhang() const { return property("overhang").toInt(); }

void PictureWidget::Refit() {
    surface_.Resize(width(), height(), devicePixelRatioF(), Overhang());
    if (record_ == nullptr) return;
    record_->Width = static_cast<int>(surface_.Size().Width);
    record_->Height = static_cast<int>(surface_.Size().Height);
    if (refitted_) refitted_();
}

void PictureWidget::paintEvent(QPaintEvent*) {
    if (surface_.Ratio() != devicePixelRatioF()) Refit();  // moved to another screen
    QPainter painter(this);
    if (record_ == nullptr || record_->Drawing.empty()) {
        painter.drawImage(QRectF(rect()), surface_.Image());
        return;
    }
    painter.fillRect(rect(), palette().window());
    const QIcon drawing = SymbolIcon(QString::fromStdString(record_->Drawing), palette());
    drawing.paint(&painter, rect(), Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
}

void PictureWidget::resizeEvent(QResizeEvent*) { Refit(); }

QPointF PictureWidget::OnPaper(const QMouseEvent& event) const {
    return event.position() - QPointF(0.0, Overhang());
}

void PictureWidget::mousePressEvent(QMouseEvent* event) {
    const QPointF at = OnPaper(*event);
    if (record_ != nullptr) MouseDown(*record_, ButtonOf(event->button()), at.x(), at.y());
}

void PictureWidget::mouseMoveEvent(QMouseEvent* event) {
    const QPointF at = OnPaper(*event);
    if (record_ != nullptr) MouseMove(*record_, ButtonsOf(event->buttons()), at.x(), at.y());
}

void PictureWidget::mouseReleaseEvent(QMouseEvent* event) {
    const QPointF at = OnPaper(*event);
    if (record_ != nullptr) MouseUp(*record_, ButtonOf(event->button()), at.x(), at.y());
}

void PictureWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    const QPointF at = OnPaper(*event);
    if (record_ != nullptr) DoubleClick(*record_, at.x(), at.y());
}

void PictureWidget::wheelEvent(QWheelEvent* event) {
    constexpr double notch = 120.0;  // as Qt counts one; a fine wheel sends parts of it
    const QPoint turn = event->angleDelta();
    // Some systems turn the wheel sideways themselves while Shift is down.
    const bool sideways = std::abs(turn.x()) > std::abs(turn.y());
    const bool shift = sideways || event->modifiers().testFlag(Qt::ShiftModifier);
    const double notches = (sideways ? turn.x() : turn.y()) / notch;
    event->setAccepted(record_ != nullptr &&
                       Wheel(*record_, notches, event->position().x(), shift));
}

// --- row chip -----------

RowChip::RowChip(QWidget* parent) : QCheckBox(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void RowChip::SetRow(const QColor& colour, bool loaded) {
    colour_ = colour;
    loaded_ = loaded;
    update();
}

QSize RowChip::sizeHint() const { return {28, 20}; }

void RowChip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor ground = palette().color(QPalette::Window);
    const QColor ink = palette().color(QPalette::WindowText);
    const QRectF chip = QRectF(rect()).adjusted(1.0, 1.0, -1.0, -1.0);
    QColor number = Mixed(ink, ground, 0.55);
    if (!loaded_) {
        painter.setPen(QPen(Mixed(ink, ground, 0.82), 1.0));
        painter.setBrush(Qt::NoBrush);
    } else if (isChecked()) {
        painter.setPen(QPen(Mixed(colour_, Qt::black, 0.35), 1.0));
        painter.setBrush(colour_);
        number = qGray(colour_.rgb()) > 128 ? QColor(20, 20, 20) : QColor(250, 250, 250);
    } else {
        painter.setPen(QPen(Mixed(colour_, ink, 0.25), 1.6));
        painter.setBrush(Qt::NoBrush);
        number = ink;
    }
    painter.drawRoundedRect(chip, 4.0, 4.0);
    QFont small = font();
    small.setPixelSize(11);
    small.setBold(loaded_ && isChecked());
    painter.setFont(small);
    painter.setPen(number);
    painter.drawText(rect(), Qt::AlignCenter, text());
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1.0));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4.5, 4.5);
    }
}

// --- edge and group -----------

void EdgeFrame::SetEdge(bool raised, const QColor& line) {
    if (raised == raised_ && line == line_) return;
    raised_ = raised;
    line_ = line;
    update();
}

void EdgeFrame::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    const auto edge = [&](double outside, double width, const QColor& ink) {
        const double in = outside + width / 2.0;
        painter.setPen(QPen(ink, width));
        painter.drawRoundedRect(QRectF(rect()).adjusted(in, in, -in, -in), 4.0, 4.0);
    };
    constexpr double accent = 2.0;
    const QColor hairline =
        Mixed(palette().color(QPalette::WindowText), palette().color(QPalette::Window), 0.75);
    if (raised_) edge(0.0, accent, palette().color(QPalette::Highlight));
    if (!raised_ || line_.isValid())
        edge(raised_ ? accent : 0.0, 1.0, line_.isValid() ? line_ : hairline);
}

// --- splitter and card -----------

ShareSplitter::ShareSplitter(QWidget* parent) : QSplitter(parent) {
    setChildrenCollapsible(false);
    // The hand has moved the bar: where it is now is the share to keep.
    connect(this, &QSplitter::splitterMoved, this, [this] {
        const QList<int> now = sizes();
        const int all = now.value(0) + now.value(1);
        if (all > 0) share_ = static_cast<double>(now[0]) / all;
    });
}

void ShareSplitter::SetShare(double share) {
    share_ = share;
    Apply();
}

void ShareSplitter::Apply() {
    if (count() < 2 || widget(0)->isHidden() || widget(1)->isHidden()) return;
    const int all = height() - handleWidth();
    if (all <= 0) return;
    const int above = static_cast<int>(std::lround(share_ * all));
    if (sizes().value(0) != above) setSizes({above, all - above});
}

void ShareSplitter::resizeEvent(QResizeEvent* event) {
    QSplitter::resizeEvent(event);
    Apply();
}

bool ShareSplitter::event(QEvent* event) {
    const bool done = QSplitter::event(event);
    if (event->type() == QEvent::LayoutRequest) Apply();  // a window went or came back
    return done;
}

void MemoCard::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor ground = palette().color(QPalette::Base);
    const QColor ink = palette().color(QPalette::WindowText);
    painter.setPen(QPen(Mixed(ink, ground, 0.6), 1.0));
    painter.setBrush(ground);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4.0, 4.0);
}

void ThinLine::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(
        Mixed(palette().color(QPalette::WindowText), palette().color(QPalette::Window), 0.75));
    painter.drawLine(width() / 2, 4, width() / 2, height() - 5);
}

void TitledGroup::setTitle(const QString& title) {
    title_ = title;
    update();
}

QFont TitledGroup::TitleFont() const {
    QFont small = font();
    small.setPixelSize(11);
    small.setBold(true);
    small.setLetterSpacing(QFont::AbsoluteSpacing, 0.8);
    return small;
}

void TitledGroup::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor ink = palette().color(QPalette::WindowText);
    const QColor ground = palette().color(QPalette::Window);
    painter.setFont(TitleFont());
    const QString words = title_.toUpper();
    const int end = painter.fontMetrics().horizontalAdvance(words) + 6;
    painter.setPen(Mixed(ink, ground, 0.35));
    painter.drawText(QRect(0, 0, width(), 16), Qt::AlignLeft | Qt::AlignVCenter, words);
    painter.setPen(Mixed(ink, ground, 0.8));
    painter.drawLine(end, 8, width(), 8);
}

}  // namespace vael
