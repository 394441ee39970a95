// The widget of a grid: a table that shows the cells of its record and carries the user's hand.
#include "desktop/griditems.h"

#include "core/fault.h"
#include "desktop/icons.h"
#include "desktop/qtcanvas.h"
#include "toolkit/hand.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>
#include <utility>

namespace vael {

using CellKind = Grid::CellKind;

/// The cells as they were brought last. Model rows and columns count from 0, those of the record
/// from 1.
class GridModel : public QAbstractTableModel {
public:
    void SetRecord(Grid& record, std::function<void()> again) {
        record_ = &record;
        again_ = std::move(again);
    }

    /// Takes over what differs.
    void Take(const Grid& record) {
        if (record.Columns() != columns_ || record.Rows() != rows_) {
            beginResetModel();
            columns_ = record.Columns();
            rows_ = record.Rows();
            cells_.clear();
            for (int row = 0; row <= rows_; ++row)
                for (int column = 0; column <= columns_; ++column)
                    cells_.push_back(record.At(column, row));
            endResetModel();
            return;
        }
        for (int row = 0; row <= rows_; ++row)
            for (int column = 0; column <= columns_; ++column) TakeCell(record, column, row);
    }

    [[nodiscard]] const Grid::Cell& At(int column, int row) const {
        return cells_[static_cast<std::size_t>(row * (columns_ + 1) + column)];
    }
    [[nodiscard]] const Grid::Cell& At(const QModelIndex& index) const {
        return At(index.column() + 1, index.row() + 1);
    }
    [[nodiscard]] bool HasHead(Qt::Orientation orientation) const {
        const bool top = orientation == Qt::Horizontal;
        for (int i = 1; i <= (top ? columns_ : rows_); ++i)
            if (!(top ? At(i, 0) : At(0, i)).Text.empty()) return true;
        return false;
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : rows_;
    }
    [[nodiscard]] int columnCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : columns_;
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        const Grid::Cell& cell = At(index);
        if (role == Qt::CheckStateRole && cell.Kind == CellKind::Tick)
            return static_cast<int>(cell.Ticked ? Qt::Checked : Qt::Unchecked);
        if (role == Qt::DisplayRole || role == Qt::EditRole || role == Qt::AccessibleTextRole)
            return QString::fromStdString(cell.Text);
        if (role == Qt::TextAlignmentRole) {
            bool number = false;
            QString::fromStdString(cell.Text).toDouble(&number);
            return static_cast<int>((number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
        }
        return {};
    }
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override {
        const bool top = orientation == Qt::Horizontal;
        if (role == Qt::DisplayRole)
            return QString::fromStdString((top ? At(section + 1, 0) : At(0, section + 1)).Text);
        if (role == Qt::TextAlignmentRole) {
            if (top && rows_ > 0)  // the words stand above their column as its first cell does
                return data(index(0, section), role);
            return static_cast<int>((top ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
        }
        return {};
    }
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override {
        const Grid::Cell& cell = At(index);
        const Qt::ItemFlags all = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
        return cell.Editable && cell.Kind == CellKind::Text ? all | Qt::ItemIsEditable : all;
    }
    /// The end of typing into a cell; the text comes back from the record.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override {
        if (role != Qt::EditRole || record_ == nullptr) return false;
        const std::string text = value.toString().toStdString();
        if (text == At(index).Text) return true;
        moved_ = false;
        const bool taken = Edit(*record_, index.column() + 1, index.row() + 1, text);
        moved_ = record_->Row != index.row() + 1 || record_->Col != index.column() + 1;
        again_();
        return taken;
    }

    /// Whether the last typing has moved the current cell by itself; told once.
    [[nodiscard]] bool TakeMoved() { return std::exchange(moved_, false); }

private:
    void TakeCell(const Grid& record, int column, int row) {
        Grid::Cell& here = cells_[static_cast<std::size_t>(row * (columns_ + 1) + column)];
        const Grid::Cell& there = record.At(column, row);
        if (here == there) return;
        here = there;
        if (row == 0 && column > 0)
            Q_EMIT headerDataChanged(Qt::Horizontal, column - 1, column - 1);
        else if (column == 0 && row > 0)
            Q_EMIT headerDataChanged(Qt::Vertical, row - 1, row - 1);
        else if (row > 0)
            Q_EMIT dataChanged(index(row - 1, column - 1), index(row - 1, column - 1));
    }

    Grid* record_ = nullptr;
    std::function<void()> again_;
    bool moved_ = false;
    int columns_ = 0;
    int rows_ = 0;
    std::vector<Grid::Cell> cells_{1};
};

namespace {

/// Draws the kinds of cell.
class GridDelegate : public QStyledItemDelegate {
public:
    GridDelegate(const GridModel& model, QObject* parent)
        : QStyledItemDelegate(parent), model_(model) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const Grid::Cell& cell = model_.At(index);
        if (cell.Kind == CellKind::Text) {
            QStyleOptionViewItem words = option;
            if (cell.Dimmed) DimInk(words.palette);
            QStyledItemDelegate::paint(painter, words, index);
            if (cell.Bar != 0.0) PaintBar(*painter, option, cell);
            return;
        }
        QStyleOptionViewItem ground = option;  // ground, selection and focus as of any cell
        initStyleOption(&ground, index);
        ground.text.clear();
        ground.features &= ~QStyleOptionViewItem::HasCheckIndicator;
        Style(option)->drawControl(QStyle::CE_ItemViewItem, &ground, painter, option.widget);
        painter->save();
        switch (cell.Kind) {
            case CellKind::Tick: PaintTick(*painter, option, cell); break;
            case CellKind::Swatch: PaintSwatch(*painter, option, cell); break;
            case CellKind::Picture: PaintPicture(*painter, option, cell); break;
            case CellKind::Button: PaintButton(*painter, option, cell); break;
            case CellKind::Text: break;
        }
        painter->restore();
    }

private:
    static QStyle* Style(const QStyleOptionViewItem& option) {
        return option.widget != nullptr ? option.widget->style() : QApplication::style();
    }
    /// Paler words, as of what is left out; still readable on either ground.
    static void DimInk(QPalette& palette) {
        for (const auto role : {QPalette::Text, QPalette::HighlightedText}) {
            QColor ink = palette.color(QPalette::Active, role);
            ink.setAlphaF(0.45F);
            palette.setColor(QPalette::All, role, ink);
        }
    }
    /// A faint bar from the middle of the cell, so that a column is scanned without reading it.
    static void PaintBar(QPainter& painter, const QStyleOptionViewItem& option,
                         const Grid::Cell& cell) {
        const QRectF room = QRectF(option.rect).adjusted(2.0, 3.0, -2.0, -3.0);
        const double length = std::clamp(cell.Bar, -1.0, 1.0) * room.width() / 2.0;
        QRectF bar(room.center().x(), room.top(), length, room.height());
        QColor ink = option.palette.color(QPalette::Highlight);
        ink.setAlphaF(cell.Dimmed ? 0.12F : 0.30F);
        painter.fillRect(bar.normalized(), ink);
    }
    static void PaintTick(QPainter& painter, const QStyleOptionViewItem& option,
                          const Grid::Cell& cell) {
        QStyleOptionButton mark;
        mark.state = QStyle::State_Enabled | (cell.Ticked ? QStyle::State_On : QStyle::State_Off);
        if (!option.state.testFlag(QStyle::State_Enabled)) mark.state &= ~QStyle::State_Enabled;
        mark.palette = option.palette;
        const int side = Style(option)->pixelMetric(QStyle::PM_IndicatorWidth);
        mark.rect = QRect(0, 0, side, side);
        mark.rect.moveCenter(option.rect.center());
        Style(option)->drawPrimitive(QStyle::PE_IndicatorCheckBox, &mark, &painter, option.widget);
    }
    static void PaintSwatch(QPainter& painter, const QStyleOptionViewItem& option,
                            const Grid::Cell& cell) {
        QColor edge = option.palette.color(QPalette::Text);
        edge.setAlphaF(0.4F);
        painter.setPen(edge);
        painter.setBrush(ToQt(cell.Fill));
        painter.drawRect(option.rect.adjusted(4, 4, -5, -5));
    }
    static void PaintPicture(QPainter& painter, const QStyleOptionViewItem& option,
                             const Grid::Cell& cell) {
        QPalette palette = option.palette;  // on a selected cell in the ink of the selection
        if (option.state.testFlag(QStyle::State_Selected))
            palette.setColor(QPalette::Active, QPalette::ButtonText,
                             palette.color(QPalette::HighlightedText));
        const QIcon icon = SymbolIcon(QString::fromStdString(cell.Text), palette);
        const int side = std::min(20, option.rect.height() - 4);
        QRect place(0, 0, side, side);
        place.moveCenter(option.rect.center());
        icon.paint(&painter, place, Qt::AlignCenter,
                   option.state.testFlag(QStyle::State_Enabled) ? QIcon::Normal : QIcon::Disabled);
    }
    static void PaintButton(QPainter& painter, const QStyleOptionViewItem& option,
                            const Grid::Cell& cell) {
        QStyleOptionButton button;
        button.state = option.state & QStyle::State_Enabled
                           ? QStyle::State_Enabled | QStyle::State_Raised
                           : QStyle::State_Raised;
        button.palette = option.palette;
        button.rect = option.rect.adjusted(2, 1, -2, -1);
        button.text = QString::fromStdString(cell.Text);
        Style(option)->drawControl(QStyle::CE_PushButton, &button, &painter, option.widget);
    }

    const GridModel& model_;
};

}  // namespace

GridWidget::GridWidget(QWidget* parent)
    : QTableView(parent), model_(std::make_unique<GridModel>()), corner_(new QLabel(this)) {
    corner_->setAttribute(Qt::WA_TransparentForMouseEvents);
    corner_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    corner_->setTextFormat(Qt::PlainText);
    corner_->hide();
    setModel(model_.get());
    setItemDelegate(new GridDelegate(*model_, this));
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                    QAbstractItemView::AnyKeyPressed);
    setTabKeyNavigation(false);  // Tab goes on to the next control
    setWordWrap(false);
    verticalHeader()->setDefaultSectionSize(24);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    verticalHeader()->setHighlightSections(false);
}

GridWidget::~GridWidget() { setModel(nullptr); }

void GridWidget::Bind(Grid& record, std::function<void()> again) {
    record_ = &record;
    again_ = again;
    model_->SetRecord(record, std::move(again));
}

void GridWidget::Show(const Grid& record) {
    model_->Take(record);
    horizontalHeader()->setVisible(model_->HasHead(Qt::Horizontal));
    verticalHeader()->setVisible(model_->HasHead(Qt::Vertical));
    if (widths_ != record.Widths) ShowWidths(record);
    const QString corner = QString::fromStdString(record.At(0, 0).Text);
    if (corner != corner_->text()) {
        corner_->setText(corner);
        updateGeometries();
    }
    const QModelIndex current = record.Row > 0 && record.Col > 0
                                    ? model_->index(record.Row - 1, record.Col - 1)
                                    : QModelIndex();
    if (current != currentIndex()) setCurrentIndex(current);
}

void GridWidget::updateGeometries() {
    QTableView::updateGeometries();
    constexpr int gap = 4;  // as the heads of the rows keep from their edge
    const QRect rows = verticalHeader()->geometry();
    const QRect columns = horizontalHeader()->geometry();
    corner_->setGeometry(rows.left(), columns.top(), rows.width() - gap, columns.height());
    corner_->setVisible(!corner_->text().isEmpty() && !verticalHeader()->isHidden() &&
                        !horizontalHeader()->isHidden());
    corner_->raise();
}

void GridWidget::ShowWidths(const Grid& record) {
    widths_ = record.Widths;
    constexpr int margins = 12;
    const int digit = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    for (int column = 1; column <= record.Columns(); ++column)
        setColumnWidth(column - 1, Item(widths_, column) * digit + margins);
    verticalHeader()->setFixedWidth(Item(widths_, 0) * digit + margins);
}

QPoint GridWidget::MiddleOf(int column, int row) const {
    return visualRect(model_->index(row - 1, column - 1)).center();
}

void GridWidget::Act(const QModelIndex& cell) {
    if (record_ == nullptr) return;
    if (model_->At(cell).Kind == CellKind::Tick)
        Tick(*record_, cell.column() + 1, cell.row() + 1);
    else
        Press(*record_, cell.column() + 1, cell.row() + 1);
    again_();
}

void GridWidget::mousePressEvent(QMouseEvent* event) {
    QTableView::mousePressEvent(event);
    pressed_ =
        event->button() == Qt::LeftButton ? indexAt(event->position().toPoint()) : QModelIndex();
}

void GridWidget::mouseReleaseEvent(QMouseEvent* event) {
    QTableView::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton) return;
    const QModelIndex released = indexAt(event->position().toPoint());
    if (released.isValid() && pressed_ == released)
        Act(released);
    else if (again_)
        again_();  // dragged away: the current cell is where the record says
    pressed_ = QModelIndex();
}

/// Tab in a cell that is typed over goes on to the next cell, and with it the current one of the
/// record; where the record has moved the current cell itself, it stays there.
void GridWidget::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    bool onward = hint == QAbstractItemDelegate::EditNextItem ||
                  hint == QAbstractItemDelegate::EditPreviousItem;
    if (onward && model_->TakeMoved()) {
        hint = QAbstractItemDelegate::NoHint;
        onward = false;
    }
    QTableView::closeEditor(editor, hint);
    const QModelIndex now = currentIndex();
    if (!onward || record_ == nullptr || !now.isValid()) return;
    if (record_->Row == now.row() + 1 && record_->Col == now.column() + 1) return;
    Press(*record_, now.column() + 1, now.row() + 1);
    again_();
}

void GridWidget::keyPressEvent(QKeyEvent* event) {
    const QModelIndex before = currentIndex();
    if (event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier && before.isValid() &&
        !model_->flags(before).testFlag(Qt::ItemIsEditable)) {
        Act(before);
        return;
    }
    QTableView::keyPressEvent(event);
    const QModelIndex now = currentIndex();
    if (now == before || !now.isValid() || record_ == nullptr) return;
    Press(*record_, now.column() + 1, now.row() + 1);
    again_();
}

}  // namespace vael
