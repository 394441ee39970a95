// The binder: Wire and Bring, two small functions a kind of control, and the joining by name.
#include "desktop/binder.h"

#include "desktop/griditems.h"
#include "desktop/listitems.h"
#include "desktop/widgets.h"
#include "toolkit/hand.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTabBar>
#include <QTimer>
#include <QToolButton>

#include <algorithm>
#include <map>
#include <optional>
#include <tuple>

namespace vael {
namespace {

QString Words(const std::string& utf8) { return QString::fromStdString(utf8); }
std::string FromQt(const QString& text) { return text.toStdString(); }

/// Called after each act of the user, so that a widget which changed itself shows its record again.
using Again = std::function<void()>;

// --- what of a record a widget shows -----------

auto Common(const Control& c) { return std::tie(c.Enabled, c.Visible, c.Withheld, c.Tip); }
auto Fields(const Button& c) {
    return std::tuple_cat(Common(c), std::tie(c.Caption, c.Shortcut, c.Fill));
}
auto Fields(const CheckBox& c) {
    return std::tuple_cat(Common(c), std::tie(c.Caption, c.Value, c.Ink, c.Filled));
}
auto Fields(const Option& c) { return std::tuple_cat(Common(c), std::tie(c.Caption, c.Value)); }
auto Fields(const TextBox& c) { return std::tuple_cat(Common(c), std::tie(c.Text, c.ReadOnly)); }
auto Fields(const NumberBox& c) {
    return std::tuple_cat(Common(c), std::tie(c.Value, c.Format, c.ReadOnly));
}
auto Fields(const ListBox& c) {
    return std::tuple_cat(Common(c), std::tie(c.Items, c.Index, c.Typed, c.Picked, c.Multiple));
}
auto Fields(const Tabs& c) { return std::tuple_cat(Common(c), std::tie(c.Captions, c.Index)); }
auto Fields(const Grid& c) {
    return std::tuple_cat(Common(c), std::make_tuple(c.Version()),
                          std::tie(c.Row, c.Col, c.Widths));
}
auto Fields(const Label& c) { return std::tuple_cat(Common(c), std::tie(c.Caption)); }
auto Fields(const Frame& c) {
    return std::tuple_cat(Common(c), std::tie(c.Caption, c.Left, c.Top, c.Share, c.Raised, c.Edge));
}
auto Fields(const ScrollBar& c) {
    return std::tuple_cat(Common(c), std::tie(c.Least, c.Most, c.Value, c.Small, c.Large));
}
auto Fields(const Picture& c) {
    return std::tuple_cat(Common(c), std::tie(c.Painted, c.Shape, c.Drawing));
}
auto Fields(const Timer& c) { return std::tie(c.Enabled, c.Interval); }
auto Fields(const Menu& c) {
    return std::tuple_cat(Common(c), std::tie(c.Caption, c.Checked, c.Checkable, c.Shortcut));
}

template <class... T>
std::tuple<std::decay_t<T>...> Kept(const std::tuple<T...>& seen) {
    return std::tuple<std::decay_t<T>...>(seen);
}

// --- buttons, boxes, options -----------

/// Carries the right mouse button, and the pointer or the focus that comes, to a button's record.
class ButtonWatch : public QObject {
public:
    ButtonWatch(Button& record, QAbstractButton& widget) : QObject(&widget), record_(record) {
        widget.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        const auto type = event->type();
        if (type == QEvent::Enter || type == QEvent::FocusIn) Hover(record_);
        if (type != QEvent::MouseButtonRelease) return false;
        const auto& mouse = *static_cast<QMouseEvent*>(event);
        const auto& widget = *static_cast<QWidget*>(watched);
        if (mouse.button() == Qt::RightButton && widget.rect().contains(mouse.pos()))
            RightClick(record_);
        return false;
    }

private:
    Button& record_;
};

void Wire(Button& record, QAbstractButton& widget, const Again& again) {
    if (record.RightClick || record.Hover) new ButtonWatch(record, widget);  // goes with the widget
    QObject::connect(&widget, &QAbstractButton::clicked, &widget, [&record, again] {
        Click(record);
        again();
    });
}

/// The button's key, which goes through the user's hand like a click; it works in the button's own
/// window while the button is usable.
void BringShortcut(const Button& record, QAbstractButton& widget) {
    auto* shortcut = widget.findChild<QShortcut*>();
    if (shortcut == nullptr) {
        if (record.Shortcut.empty()) return;
        shortcut = new QShortcut(&widget);
        QObject::connect(shortcut, &QShortcut::activated, &widget, [&widget] { widget.click(); });
    }
    shortcut->setKey(QKeySequence(Words(record.Shortcut)));
    shortcut->setEnabled(record.Usable() && !record.Shortcut.empty());
}

/// A ground of the record's, with letters that are read on it in any palette.
void BringFill(const Button& record, QAbstractButton& widget) {
    constexpr const char* mark = "filled";
    const bool filled = record.Fill.has_value();
    if (!filled && !widget.property(mark).toBool()) return;
    widget.setProperty(mark, filled);
    QPalette palette = QApplication::palette();
    if (filled) {
        const QColor ground = vael::ToQt(*record.Fill);
        palette.setColor(QPalette::Button, ground);
        palette.setColor(QPalette::ButtonText, qGray(ground.rgb()) > 128 ? Qt::black : Qt::white);
    }
    widget.setPalette(palette);
    // The style would shade the ground, up to a light one that nobody tells from the others.
    widget.setAutoFillBackground(filled);
    if (auto* push = qobject_cast<QPushButton*>(&widget)) push->setFlat(filled);
}

void Bring(const Button& record, QAbstractButton& widget) {
    widget.setText(Words(record.Caption));
    BringFill(record, widget);
    BringShortcut(record, widget);
    // A button of an icon or a sign has no words of its own for a reader that cannot see it.
    const QString words = widget.text();
    const bool says = std::any_of(words.begin(), words.end(),
                                  [](QChar letter) { return letter.isLetterOrNumber(); });
    if (!says) widget.setAccessibleName(Words(record.Tip));
}

void Wire(CheckBox& record, QCheckBox& widget, const Again& again) {
    QObject::connect(&widget, &QCheckBox::clicked, &widget, [&record, again](bool on) {
        Tick(record, on ? 1 : 0);
        again();
    });
}

void Bring(const CheckBox& record, QCheckBox& widget) {
    widget.setText(Words(record.Caption));
    widget.setChecked(record.Value != 0);
    if (auto* chip = qobject_cast<RowChip*>(&widget))
        chip->SetRow(vael::ToQt(record.Ink), record.Filled);
}

/// Carries a double click of the mouse to the record; the click that comes with it stays.
template <class Record>
class DoubleClickWatch : public QObject {
public:
    DoubleClickWatch(Record& record, QWidget& widget) : QObject(&widget), record_(record) {
        widget.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonDblClick) DoubleClick(record_);
        return false;
    }

private:
    Record& record_;
};

void Wire(Option& record, QRadioButton& widget, const Again& again) {
    new DoubleClickWatch(record, widget);  // goes with the widget
    widget.setAutoExclusive(false);        // the records know the groups
    QObject::connect(&widget, &QRadioButton::clicked, &widget, [&record, again] {
        Click(record);
        again();
    });
}

void Bring(const Option& record, QRadioButton& widget) {
    widget.setText(Words(record.Caption));
    widget.setChecked(record.Value);
}

// --- text and numbers -----------

template <class Box>
void WireLine(Box& record, QLineEdit& widget, const Again& again) {
    QObject::connect(&widget, &QLineEdit::textEdited, &widget,
                     [&record, again](const QString& text) {
                         if (!Type(record, FromQt(text))) again();
                     });
    QObject::connect(&widget, &QLineEdit::returnPressed, &widget, [&record, &widget, again] {
        PressEnter(record);
        again();
        EndTyping(widget);
    });
    QObject::connect(&widget, &QLineEdit::editingFinished, &widget, [&record, &widget, again] {
        if (TypedBox() != &record) return;
        if (!Leave(record)) widget.setFocus();
        again();
    });
}

void Wire(TextBox& record, QLineEdit& widget, const Again& again) {
    new DoubleClickWatch(record, widget);  // goes with the widget
    WireLine(record, widget, again);
}

/// A box that only shows stays readable, on the ground of the window, and out of the way of Tab.
void ShowReadOnly(QLineEdit& widget, bool readOnly) {
    widget.setReadOnly(readOnly);
    widget.setFocusPolicy(readOnly ? Qt::ClickFocus : Qt::StrongFocus);
    QPalette palette = QApplication::palette();
    if (readOnly) palette.setColor(QPalette::Base, palette.color(QPalette::Window));
    widget.setPalette(palette);
}

void Bring(const TextBox& record, QLineEdit& widget) {
    widget.setText(Words(record.Text));
    ShowReadOnly(widget, record.ReadOnly || record.Withheld);
}

/// Tells a number box that computes on leaving when the focus goes elsewhere in its window, also
/// where nothing was typed.
class LeaveWatch : public QObject {
public:
    LeaveWatch(NumberBox& record, QWidget& widget) : QObject(&widget), record_(record) {
        widget.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::FocusOut || !record_.Leave) return false;
        const auto reason = static_cast<const QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) Leave(record_);
        return false;
    }

private:
    NumberBox& record_;
};

void Wire(NumberBox& record, QLineEdit& widget, const Again& again) {
    new LeaveWatch(record, widget);  // goes with the widget
    widget.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    WireLine(record, widget, again);
}

void Bring(const NumberBox& record, QLineEdit& widget) {
    widget.setText(Words(record.Text()));
    ShowReadOnly(widget, record.ReadOnly || record.Withheld);
}

void Wire(TextBox& record, QPlainTextEdit& widget, const Again&) {
    QObject::connect(&widget, &QPlainTextEdit::textChanged, &widget,
                     [&record, &widget] { Type(record, FromQt(widget.toPlainText())); });
}

void Bring(const TextBox& record, QPlainTextEdit& widget) {
    widget.setReadOnly(record.ReadOnly);
    QScrollBar* bar = widget.verticalScrollBar();
    const bool atEnd = bar->value() >= bar->maximum();
    widget.setPlainText(Words(record.Text).remove(QLatin1Char('\r')));
    if (atEnd) bar->setValue(bar->maximum());  // a log that grows is followed to its end
}

// --- bars, labels, frames, grids -----------

void Wire(ScrollBar& record, QScrollBar& widget, const Again& again) {
    QObject::connect(&widget, &QScrollBar::valueChanged, &widget, [&record, again](int value) {
        Scroll(record, value);
        again();
    });
}

void Bring(const ScrollBar& record, QScrollBar& widget) {
    widget.setRange(record.Least, record.Most);
    widget.setSingleStep(record.Small);
    widget.setPageStep(record.Large);
    widget.setValue(record.Value);
}

void Wire(Label& record, QLabel& widget, const Again&) { CarryMouse(record, widget); }

/// Lines of a record end in a carriage return or in a line feed.
void Bring(const Label& record, QLabel& widget) {
    widget.setText(Words(record.Caption).replace(QLatin1Char('\r'), QLatin1Char('\n')));
}

void Wire(Frame& record, QFrame& widget, const Again&) {
    CarryMouse(record, widget);
    if (!widget.property("floating").toBool()) return;
    widget.raise();
    if (widget.layout() != nullptr) widget.layout()->setSizeConstraint(QLayout::SetFixedSize);
}

void Bring(const Frame& record, QFrame& widget) {
    if (widget.property("floating").toBool()) widget.move(record.Left, record.Top);
    if (auto* edge = qobject_cast<EdgeFrame*>(&widget))
        edge->SetEdge(record.Raised, record.Edge ? vael::ToQt(*record.Edge) : QColor());
    if (auto* group = qobject_cast<TitledGroup*>(&widget); group && !record.Caption.empty())
        group->setTitle(Words(record.Caption));
}

/// The drag bar between two windows is the handle of a splitter: the part above it is the share.
void Wire(Frame& record, ShareSplitter& widget, const Again&) {
    QObject::connect(&widget, &QSplitter::splitterMoved, &widget, [&record, &widget] {
        const QList<int> sizes = widget.sizes();
        const int all = sizes.value(0) + sizes.value(1);
        if (all > 0 && !CommandRunning()) record.Share = static_cast<double>(sizes[0]) / all;
    });
}

void Bring(const Frame& record, ShareSplitter& widget) { widget.SetShare(record.Share); }

void Wire(Grid& record, GridWidget& widget, const Again& again) { widget.Bind(record, again); }

void Bring(const Grid& record, GridWidget& widget) { widget.Show(record); }

// --- pictures, timers, menus -----------

void Bring(const Picture& record, PictureWidget& widget) {
    switch (record.Shape) {
        case Pointer::Finger: widget.setCursor(Qt::PointingHandCursor); break;
        case Pointer::Width: widget.setCursor(Qt::SizeHorCursor); break;
        case Pointer::Cross: widget.setCursor(Qt::CrossCursor); break;
        case Pointer::Arrow: widget.unsetCursor(); break;
    }
    widget.update();
}

void Wire(Timer& record, QTimer& widget, const Again& again) {
    QObject::connect(&widget, &QTimer::timeout, &widget, [&record, again] {
        Elapse(record);
        again();
    });
}

void Bring(const Timer& record, QTimer& widget) {
    widget.setInterval(record.Interval);
    if (record.Enabled != widget.isActive()) record.Enabled ? widget.start() : widget.stop();
}

void Wire(Menu& record, QAction& widget, const Again& again) {
    QObject::connect(&widget, &QAction::triggered, &widget, [&record, again] {
        Click(record);
        again();
    });
}

void Bring(const Menu& record, QAction& widget) {
    // A caption that tells its key itself has an empty place for it, so that it is not told twice.
    const bool tells = record.Caption.find("Alt+") != std::string::npos;
    widget.setText(Words(record.Caption) + (tells ? QStringLiteral("\t") : QString()));
    widget.setCheckable(record.Checkable);
    widget.setChecked(record.Checked);
    widget.setShortcut(QKeySequence(Words(record.Shortcut)));
}

// --- what is common to all -----------

/// A tip in lines that are read at a glance.
QString Wrapped(const QString& tip) {
    constexpr qsizetype most = 56;  // letters a line
    QString out;
    qsizetype room = most;
    for (const QString& word : tip.split(QLatin1Char(' '))) {
        const bool first = out.isEmpty();
        const bool fits = word.size() + 1 <= room;
        if (!first) out += fits ? QLatin1Char(' ') : QLatin1Char('\n');
        room = (first || fits ? room : most) - word.size() - 1;
        out += word;
    }
    return out;
}

template <class Widget>
void BringCommon(const Control& record, Widget& widget) {
    if constexpr (!std::is_same_v<Widget, QTimer>) {
        // A withheld box still shows its value; nothing can be typed into it.
        const bool shows = std::is_same_v<Widget, QLineEdit>;
        widget.setEnabled(record.Enabled && (shows || !record.Withheld));
        widget.setToolTip(Wrapped(Words(record.Tip)));
        widget.setVisible(record.Visible);
    }
}

bool BeingTyped(const Control& record) { return TypedBox() == &record; }

/// Found here among all overloads, of this file and of others.
template <class R, class W>
void BringTo(const R& record, W& widget) {
    Bring(record, widget);
}

template <class R, class W>
class Bound final : public Binding {
public:
    Bound(R& record, W& widget) : record_(record), widget_(widget) {}

    void Bring(bool again) override {
        if (BeingTyped(record_)) {
            shown_.reset();
            return;
        }
        if constexpr (std::is_same_v<R, Picture>) {
            // A view that was made anew in its place has a blank picture again.
            if (&record_.Paper().Below() != &widget_.Paper()) {
                record_.PutOn(&widget_.Paper());
                record_.Width = static_cast<int>(widget_.Paper().Size().Width);
                record_.Height = static_cast<int>(widget_.Paper().Size().Height);
            }
        }
        if constexpr (std::is_same_v<R, Frame>) {
            record_.Width = widget_.width();
            record_.Height = widget_.height();
        }
        const auto now = Fields(record_);
        if (!again && shown_ && now == *shown_) return;
        shown_ = Kept(now);
        if constexpr (std::is_same_v<W, QAction> || std::is_same_v<W, QTimer>) {
            Show();  // their signals are what menus and timers live on
        } else {
            const QSignalBlocker quiet(&widget_);
            Show();
        }
    }
    [[nodiscard]] const Control& Record() const override { return record_; }
    [[nodiscard]] QObject* Widget() const override { return &widget_; }

private:
    void Show() {
        BringTo(record_, widget_);
        BringCommon(record_, widget_);
    }
    R& record_;
    W& widget_;
    std::optional<decltype(Kept(Fields(std::declval<const R&>())))> shown_;
};

/// Joins one view. Each step takes one kind of control.
class Joiner {
public:
    Joiner(View& view, QMainWindow& form, const std::function<void()>& refitted)
        : view_(view), form_(form), refitted_(refitted) {}

    Joined Go() {
        for (Control* control : view_.Controls())
            if (control->Kind == ControlKind::Menu) MakeMenu(static_cast<Menu&>(*control));
        for (Control* control : view_.Controls()) One(*control);
        return std::move(out_);
    }

private:
    void One(Control& c) {
        switch (c.Kind) {
            case ControlKind::Button: Pair<QAbstractButton>(static_cast<Button&>(c)); break;
            case ControlKind::CheckBox: Pair<QCheckBox>(static_cast<CheckBox&>(c)); break;
            case ControlKind::Option: Pair<QRadioButton>(static_cast<Option&>(c)); break;
            case ControlKind::NumberBox: Pair<QLineEdit>(static_cast<NumberBox&>(c)); break;
            case ControlKind::Grid: Pair<GridWidget>(static_cast<Grid&>(c)); break;
            case ControlKind::Tabs: Pair<QTabBar>(static_cast<Tabs&>(c)); break;
            case ControlKind::Label: Pair<QLabel>(static_cast<Label&>(c)); break;
            case ControlKind::ScrollBar: Pair<QScrollBar>(static_cast<ScrollBar&>(c)); break;
            case ControlKind::TextBox:
                if (static_cast<TextBox&>(c).MultiLine)
                    Pair<QPlainTextEdit>(static_cast<TextBox&>(c));
                else
                    Pair<QLineEdit>(static_cast<TextBox&>(c));
                break;
            case ControlKind::ListBox:
                if (form_.findChild<QListWidget*>(Words(c.Name)) != nullptr)
                    Pair<QListWidget>(static_cast<ListBox&>(c));
                else
                    Pair<QComboBox>(static_cast<ListBox&>(c));
                break;
            case ControlKind::Frame:
                if (form_.findChild<ShareSplitter*>(Words(c.Name)) != nullptr)
                    Pair<ShareSplitter>(static_cast<Frame&>(c));
                else
                    Pair<QFrame>(static_cast<Frame&>(c));
                break;
            case ControlKind::Picture: OnePicture(static_cast<Picture&>(c)); break;
            case ControlKind::Timer: {
                auto* timer = new QTimer(&form_);
                timer->setObjectName(Words(c.Name));
                Add(static_cast<Timer&>(c), *timer);
                break;
            }
            case ControlKind::Menu: Add(static_cast<Menu&>(c), *actions_.at(c.Name)); break;
        }
    }

    template <class Widget, class Record>
    void Pair(Record& record) {
        if (auto* widget = Find<Widget>(record)) Add(record, *widget);
    }

    template <class Widget>
    Widget* Find(const Control& record) {
        auto* any = form_.findChild<QWidget*>(Words(record.Name));
        auto* widget = qobject_cast<Widget*>(any);
        if (any == nullptr)
            Miss(record, "is not in the form");
        else if (widget == nullptr)
            Miss(record, "is of another class in the form");
        return widget;
    }

    template <class Record, class Widget>
    void Add(Record& record, Widget& widget) {
        auto bound = std::make_unique<Bound<Record, Widget>>(record, widget);
        if constexpr (!std::is_same_v<Record, Picture>) {
            Binding* binding = bound.get();
            Wire(record, widget, [binding] { binding->Bring(true); });
        }
        out_.Bindings.push_back(std::move(bound));
    }

    void OnePicture(Picture& record) {
        auto* widget = Find<PictureWidget>(record);
        if (widget == nullptr) return;
        widget->Bind(record, refitted_);
        Add(record, *widget);
    }

    /// A menu where others name the record as their parent, else an item of its parent.
    void MakeMenu(Menu& record) {
        QMenu* parent = nullptr;
        if (!record.Parent.empty()) {
            const auto found = menus_.find(record.Parent);
            if (found == menus_.end()) {
                Miss(record, "names a menu that does not stand before it");
            } else {
                parent = found->second;
            }
        }
        bool holds = record.Parent.empty();
        for (const Control* other : view_.Controls())
            if (other->Kind == ControlKind::Menu)
                holds = holds || static_cast<const Menu*>(other)->Parent == record.Name;
        QAction* action = nullptr;
        if (parent != nullptr && record.SeparatorBefore) parent->addSeparator();
        if (holds) {
            auto* menu = new QMenu(&form_);
            menu->setToolTipsVisible(true);
            menu->setObjectName(Words(record.Name) + QStringLiteral("_items"));
            menus_[record.Name] = menu;
            action = parent != nullptr ? parent->addMenu(menu) : form_.menuBar()->addMenu(menu);
        } else {
            action = new QAction(&form_);
            if (parent != nullptr) parent->addAction(action);
        }
        action->setObjectName(Words(record.Name));
        actions_[record.Name] = action;
    }

    void Miss(const Control& record, const char* why) {
        out_.Missing.push_back(view_.Name + "." + record.Name + " " + why);
    }

    View& view_;
    QMainWindow& form_;
    std::function<void()> refitted_;
    Joined out_;
    std::map<std::string, QMenu*> menus_;
    std::map<std::string, QAction*> actions_;
};

}  // namespace

Joined Join(View& view, QMainWindow& form, const std::function<void()>& refitted) {
    return Joiner(view, form, refitted).Go();
}

}  // namespace vael
