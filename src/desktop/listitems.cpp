// Lists and tabs on their widgets, and the pointer on labels and frames: Wire and Bring for them.
#include "desktop/listitems.h"

#include "desktop/widgets.h"
#include "toolkit/hand.h"

#include <QComboBox>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QTabBar>

#include <algorithm>

namespace vael {
namespace {

QString Words(const std::string& utf8) { return QString::fromStdString(utf8); }

QStringList Words(const std::vector<std::string>& texts) {
    QStringList words;
    for (const std::string& text : texts) words << Words(text);
    return words;
}

// --- lists -----------

void WireTyping(ListBox& record, QComboBox& widget, const std::function<void()>& again) {
    QLineEdit* line = widget.lineEdit();
    // The list would exchange a typed text for a like item, and pick that.
    QObject::disconnect(line, SIGNAL(editingFinished()), &widget, nullptr);
    QObject::disconnect(line, SIGNAL(returnPressed()), &widget, nullptr);
    QObject::connect(line, &QLineEdit::textEdited, line, [&record, again](const QString& text) {
        if (!Type(record, text.toStdString())) again();
    });
    QObject::connect(line, &QLineEdit::returnPressed, line, [&record, line, again] {
        PressEnter(record);
        again();
        EndTyping(*line);
    });
    QObject::connect(line, &QLineEdit::editingFinished, line, [&record, &widget, again] {
        if (TypedBox() != &record) return;
        if (!Leave(record)) widget.setFocus();
        again();
    });
}

/// Tells keys from clicks on a list: a click picks also what is picked already, a key only what it
/// moved to.
class ListHand : public QObject {
public:
    ListHand(ListBox& record, QListWidget& widget, std::function<void()> again)
        : QObject(&widget), record_(record), widget_(widget), again_(std::move(again)) {
        widget.viewport()->installEventFilter(this);
        widget.installEventFilter(this);
        connect(&widget, &QListWidget::itemSelectionChanged, this, [this] { Moved(); });
        connect(&widget, &QListWidget::itemClicked, this, [this] { Clicked(); });
        connect(&widget, &QListWidget::itemDoubleClicked, this,
                [this](QListWidgetItem* item) { Twice(widget_.row(item)); });
    }

    bool eventFilter(QObject* target, QEvent* event) override {
        if (target == widget_.viewport() && event->type() == QEvent::MouseButtonPress)
            picked_ = false;
        if (target != &widget_ || event->type() != QEvent::KeyPress) return false;
        const int key = static_cast<QKeyEvent*>(event)->key();
        if ((key != Qt::Key_Return && key != Qt::Key_Enter) || widget_.currentRow() < 0)
            return false;
        Twice(widget_.currentRow());
        return true;
    }

private:
    void Moved() {
        picked_ = true;
        if (record_.Multiple)
            PickMany(record_, Selected());
        else
            Pick(record_, widget_.currentRow());
        again_();
    }
    void Clicked() {
        if (!picked_) Moved();
    }
    void Twice(int row) {
        DoubleClick(record_, row);
        again_();
    }
    [[nodiscard]] std::vector<int> Selected() const {
        std::vector<int> rows;
        for (const QListWidgetItem* item : widget_.selectedItems())
            rows.push_back(widget_.row(item));
        return rows;
    }
    ListBox& record_;
    QListWidget& widget_;
    std::function<void()> again_;
    bool picked_ = false;
};

}  // namespace

void Wire(ListBox& record, QComboBox& widget, const std::function<void()>& again) {
    if (record.Editable) {
        widget.setEditable(true);
        widget.setCompleter(nullptr);
        widget.setInsertPolicy(QComboBox::NoInsert);
        WireTyping(record, widget, again);
    }
    QObject::connect(&widget, &QComboBox::activated, &widget, [&record, again](int index) {
        Pick(record, index);
        again();
    });
}

void Bring(const ListBox& record, QComboBox& widget) {
    const QStringList items = Words(record.Items);
    bool same = items.size() == widget.count();
    for (int i = 0; same && i < widget.count(); ++i) same = widget.itemText(i) == items[i];
    if (!same) {
        widget.clear();
        widget.addItems(items);
    }
    widget.setCurrentIndex(record.Index);
    if (widget.isEditable()) widget.setEditText(Words(record.Text()));
}

void Wire(ListBox& record, QListWidget& widget, const std::function<void()>& again) {
    new ListHand(record, widget, again);  // goes with the widget
}

void Bring(const ListBox& record, QListWidget& widget) {
    widget.setSelectionMode(record.Multiple ? QAbstractItemView::ExtendedSelection
                                            : QAbstractItemView::SingleSelection);
    const QStringList items = Words(record.Items);
    bool same = items.size() == widget.count();
    for (int i = 0; same && i < widget.count(); ++i) same = widget.item(i)->text() == items[i];
    if (!same) {
        widget.clear();
        widget.addItems(items);
    }
    const auto picked = [&](int row) {
        if (!record.Multiple) return row == record.Index;
        return std::find(record.Picked.begin(), record.Picked.end(), row) != record.Picked.end();
    };
    // The row that the keys go on from; in a list of many it stays where the user left it.
    if (!record.Multiple || !same || widget.currentRow() < 0)
        widget.setCurrentRow(record.Index, QItemSelectionModel::NoUpdate);
    for (int row = 0; row < widget.count(); ++row) widget.item(row)->setSelected(picked(row));
}

// --- tabs -----------

void Wire(Tabs& record, QTabBar& widget, const std::function<void()>& again) {
    widget.setExpanding(false);
    QObject::connect(&widget, &QTabBar::currentChanged, &widget, [&record, again](int index) {
        Pick(record, index);
        again();
    });
}

void Bring(const Tabs& record, QTabBar& widget) {
    while (widget.count() > static_cast<int>(record.Captions.size()))
        widget.removeTab(widget.count() - 1);
    for (int i = 0; i < static_cast<int>(record.Captions.size()); ++i) {
        const QString caption = Words(record.Captions[static_cast<std::size_t>(i)]);
        if (i >= widget.count())
            widget.addTab(caption);
        else if (widget.tabText(i) != caption)
            widget.setTabText(i, caption);
    }
    widget.setCurrentIndex(record.Index);
}

// --- the pointer on labels and frames -----------

namespace {

template <class Record>
class MouseCarrier : public QObject {
public:
    MouseCarrier(Record& record, QWidget& widget) : QObject(&widget), record_(record) {
        widget.installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        const auto type = event->type();
        if constexpr (std::is_same_v<Record, Frame>) {
            if (type == QEvent::Resize) {
                record_.Width = static_cast<QResizeEvent*>(event)->size().width();
                record_.Height = static_cast<QResizeEvent*>(event)->size().height();
            }
        }
        if (type != QEvent::MouseButtonPress && type != QEvent::MouseButtonDblClick &&
            type != QEvent::MouseMove && type != QEvent::MouseButtonRelease)
            return false;
        const auto& mouse = *static_cast<QMouseEvent*>(event);
        const QPointF at = mouse.position();
        if (type == QEvent::MouseMove)
            return MouseMove(record_, ButtonsOf(mouse.buttons()), at.x(), at.y());
        if (type == QEvent::MouseButtonRelease)
            return MouseUp(record_, ButtonOf(mouse.button()), at.x(), at.y());
        return MouseDown(record_, ButtonOf(mouse.button()), at.x(), at.y());
    }

private:
    Record& record_;
};

}  // namespace

void CarryMouse(Label& record, QLabel& widget) { new MouseCarrier<Label>(record, widget); }

void CarryMouse(Frame& record, QFrame& widget) { new MouseCarrier<Frame>(record, widget); }

}  // namespace vael
