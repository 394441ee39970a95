// A world with the user's hand in grids: clicks on cells, typing over them, what they show.
#pragma once

#include "deskworld.h"

#include "desktop/griditems.h"

namespace vael::test {

struct GridWorld : DeskWorld {
    GridWidget& Table(const Grid& grid) { return Widget<GridWidget>(grid.Owner, grid.Name); }
    void ClickCell(const Grid& grid, int column, int row) {
        GridWidget& table = Table(grid);
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, table.MiddleOf(column, row));
        Pressed.insert(grid.Owner.Name + "." + grid.Name);
        Settle();
    }
    /// A click on a cell, then letters: the first one opens it. No key ends the typing yet.
    QLineEdit& TypeInCell(const Grid& grid, int column, int row, const char* text) {
        ClickCell(grid, column, row);
        QTest::keyClick(&Table(grid), Qt::Key_F2);
        auto* editor = Table(grid).viewport()->findChild<QLineEdit*>();
        if (editor == nullptr) throw std::runtime_error("the cell does not open");
        editor->selectAll();
        QTest::keyClicks(editor, QString::fromUtf8(text));
        return *editor;
    }
    void TypeCell(const Grid& grid, int column, int row, const char* text) {
        QTest::keyClick(&TypeInCell(grid, column, row, text), Qt::Key_Return);
        Settle();
    }
    QString Shown(const Grid& grid, int column, int row) {
        return Table(grid).model()->index(row - 1, column - 1).data().toString();
    }
    void ExpectAllPressed(const std::set<std::string>& usable, const std::string& view) {
        int controls = 0;
        for (const std::string& name : usable) {
            if (!name.starts_with(view + ".")) continue;
            ++controls;
            EXPECT_TRUE(Pressed.contains(name)) << name << " works and no test presses it";
        }
        EXPECT_GT(controls, 1) << view;
    }
};

}  // namespace vael::test
