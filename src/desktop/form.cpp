// A form: the window of one view, its widgets joined to the view's records.
#include "desktop/form.h"

#include "desktop/icons.h"
#include "toolkit/hand.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QWindow>

#include <cmath>
#include <utility>

namespace vael {

/// One size larger than the rest. A font whose digits differ in width would make a running number
/// dance, so the fixed one takes its place.
QFont DigitFont() {
    QFont font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() + 1.0);
    const QFontMetricsF metrics(font);
    for (char digit = '1'; digit <= '9'; ++digit) {
        const auto width = [&](char c) { return metrics.horizontalAdvance(QLatin1Char(c)); };
        if (std::abs(width(digit) - width('0')) < 0.01) continue;
        QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
        fixed.setPointSizeF(font.pointSizeF());
        return fixed;
    }
    return font;
}

Form::Form(View& view, const SetUp& setUp, Extras extras)
    : view_(view), extras_(std::move(extras)) {
    setUp(*this);
    joined_ = Join(view, *this, [this] { Refitted(); });
    Decorate();
    if (extras_.Colours) extras_.Colours(QApplication::palette());
}

/// A window that goes takes the focus out of its boxes: that is no act of the user any more.
Form::~Form() {
    for (QObject* child : findChildren<QObject*>()) child->blockSignals(true);
}

/// What a .ui file cannot say in a way that follows the palette: marked by dynamic properties.
void Form::Decorate() {
    for (QAbstractButton* button : findChildren<QAbstractButton*>()) {
        const QString name = button->property("symbol").toString();
        if (!name.isEmpty()) button->setIcon(SymbolIcon(name, QApplication::palette()));
        if (button->property("primary").toBool()) {
            // Darker than the highlight, since the style lightens a button towards its top.
            QPalette accent = QApplication::palette();
            const QColor ground = accent.color(QPalette::Active, QPalette::Highlight).darker(150);
            for (const auto group : {QPalette::Active, QPalette::Inactive}) {
                accent.setColor(group, QPalette::Button, ground);
                accent.setColor(group, QPalette::ButtonText, Qt::white);
            }
            button->setPalette(accent);
        }
    }
    for (QLineEdit* box : findChildren<QLineEdit*>()) {
        const bool headline = box->property("headline").toBool();
        if (!headline && !box->property("digits").toBool()) continue;
        QFont font = DigitFont();
        if (headline) {  // the number that the view is there for
            font.setPointSizeF(font.pointSizeF() + 4.0);
            font.setBold(true);
        }
        box->setFont(font);
    }
    for (QLabel* label : findChildren<QLabel*>()) {
        if (!label->property("fine").toBool()) continue;
        QFont smaller = QApplication::font();
        smaller.setPointSizeF(smaller.pointSizeF() - 1.5);
        label->setFont(smaller);
    }
    for (QPlainTextEdit* text : findChildren<QPlainTextEdit*>())
        if (text->property("fixedPitch").toBool())
            text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
}

void Form::Bring() {
    const QString caption = QString::fromStdString(view_.Caption);
    if (windowTitle() != caption) setWindowTitle(caption);
    // The pictures of a view that is hidden are drawn on too, so they are kept in step.
    for (const auto& binding : joined_.Bindings)
        if (view_.Visible || binding->Record().Kind == ControlKind::Picture) binding->Bring(false);
    if (view_.Visible && extras_.Brought) extras_.Brought(*this);
    BringVisible();
    BringOnTop();
}

void Form::BringVisible() {
    if (isVisible() == view_.Visible) return;
    if (!view_.Visible) {
        place_ = saveGeometry();
        hide();
        return;
    }
    if (!place_.isEmpty()) restoreGeometry(place_);
    show();
    raise();
    if (view_.Modal) FocusFirst();
}

/// A dialog begins at its first box, with its text marked so that typing replaces it.
void Form::FocusFirst() {
    for (QWidget* next = nextInFocusChain(); next != this; next = next->nextInFocusChain()) {
        const auto* text = qobject_cast<const QPlainTextEdit*>(next);
        if (text != nullptr && text->isReadOnly()) continue;
        if ((next->focusPolicy() & Qt::TabFocus) == 0 || !next->isEnabled() ||
            !next->isVisibleTo(this))
            continue;
        next->setFocus(Qt::TabFocusReason);
        return;
    }
}

void Form::BringOnTop() {
    if (view_.OnTop == onTop_) return;
    onTop_ = view_.OnTop;
    winId();
    // Through the window handle: changing the widget's flags would hide and re-activate it.
    if (QWindow* window = windowHandle()) window->setFlag(Qt::WindowStaysOnTopHint, onTop_);
}

void Form::closeEvent(QCloseEvent* event) {
    event->ignore();  // the record decides whether the window goes
    Close(view_);
}

void Form::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() != QEvent::PaletteChange) return;
    Decorate();
    if (extras_.Colours) extras_.Colours(QApplication::palette());
    for (const auto& binding : joined_.Bindings) binding->Bring(true);
    Refitted();  // the strips are drawn in colours of the palette
}

void Form::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (extras_.Colours) extras_.Colours(QApplication::palette());
    Refitted();
}

/// All pictures that changed in one go are drawn anew by one command, before they are painted.
void Form::Refitted() {
    if (std::exchange(resizePending_, true)) return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            resizePending_ = false;
            if (view_.Visible) Resize(view_);
        },
        Qt::QueuedConnection);
}

Form* FormOf(QObject* target) {
    auto* widget = qobject_cast<QWidget*>(target);
    while (widget != nullptr) {
        QWidget* window = widget->window();
        if (auto* form = qobject_cast<Form*>(window)) return form;
        if (window->windowType() != Qt::Popup) return nullptr;
        widget = window->parentWidget();
    }
    return nullptr;
}

}  // namespace vael
