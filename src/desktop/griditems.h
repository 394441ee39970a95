// The widget of a grid: a table that shows the cells of its record and carries the user's hand.
#pragma once

#include "toolkit/controls.h"

#include <QTableView>

#include <functional>
#include <memory>

class QLabel;

namespace vael {

class GridModel;

/// Row 0 and column 0 of the record are the heads. A click on a cell with a tick changes the tick,
/// a click on any other presses the cell; the keys of the arrows move the current cell and press
/// it, Space does what a click does, and an editable text is typed over. The table never changes by
/// itself: what the hand did comes back from the record.
class GridWidget : public QTableView {
    Q_OBJECT
public:
    explicit GridWidget(QWidget* parent = nullptr);
    ~GridWidget() override;
    /// `again` shows the record after an act of the user.
    void Bind(Grid& record, std::function<void()> again);
    /// Shows the record: cells that differ, sizes, widths, the current cell.
    void Show(const Grid& record);
    /// The middle of a cell, columns and rows from 1, in the pixels of `viewport()`.
    [[nodiscard]] QPoint MiddleOf(int column, int row) const;

protected:
    void updateGeometries() override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    /// A click, or Space, on the cell.
    void Act(const QModelIndex& cell);
    void ShowWidths(const Grid& record);
    Grid* record_ = nullptr;
    std::function<void()> again_;
    std::unique_ptr<GridModel> model_;
    std::vector<int> widths_;
    QLabel* corner_;  // the head over the heads of the rows, which a table has no words for
    QPersistentModelIndex pressed_;
};

}  // namespace vael
