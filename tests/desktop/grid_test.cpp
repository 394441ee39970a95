// A grid on its widget, by mouse and key.
#include "kindsworld.h"

namespace vael {
namespace {

using namespace vael::test;

TEST(GridOnScreen, ShowsHeadsCellsAndWidths) {
    KindsWorld w;
    auto* model = w.Table().model();
    EXPECT_EQ(model->rowCount(), 3);
    EXPECT_EQ(model->columnCount(), 4);
    EXPECT_EQ(model->headerData(2, Qt::Horizontal).toString(), QStringLiteral("head3"));
    EXPECT_EQ(w.CellText(3, 2), QStringLiteral("name2"));
    EXPECT_FALSE(w.Table().verticalHeader()->isVisible()) << "column 0 holds no text";
    const int digit = w.Table().fontMetrics().horizontalAdvance(QLatin1Char('0'));
    EXPECT_EQ(w.Table().columnWidth(2) - w.Table().columnWidth(0), 4 * digit);
    w.V.sprTable.At(0, 1).Text = "1";
    w.V.sprTable.At(3, 2).Text = "other";
    w.Bring();
    EXPECT_TRUE(w.Table().verticalHeader()->isVisible());
    EXPECT_EQ(w.CellText(3, 2), QStringLiteral("other"));
}

TEST(GridOnScreen, OnlyTheCellsThatDifferAreShownAnew) {
    KindsWorld w;
    std::vector<QModelIndex> changed;
    QObject::connect(w.Table().model(), &QAbstractItemModel::dataChanged, &w.Kinds,
                     [&](const QModelIndex& at) { changed.push_back(at); });
    w.V.sprTable.At(3, 1).Text = "name1";  // the same again
    w.V.sprTable.At(3, 3).Text = "third";
    w.Bring();
    ASSERT_EQ(changed.size(), 1U);
    EXPECT_EQ(changed[0].row(), 2);
    EXPECT_EQ(changed[0].column(), 2);
}

TEST(GridOnScreen, AClickPressesACellOrChangesItsTick) {
    KindsWorld w;
    w.ClickCell(3, 2);
    w.ClickCell(1, 2);
    w.ClickCell(2, 3);
    EXPECT_EQ(w.V.Done, (Texts{"press 3,2", "edit 1,2", "press 2,3"}));
    EXPECT_TRUE(w.V.sprTable.At(1, 2).Ticked);
    const auto tick = w.Table().model()->index(1, 0).data(Qt::CheckStateRole).toInt();
    EXPECT_EQ(tick, static_cast<int>(Qt::Checked));
    EXPECT_EQ(w.V.sprTable.Col, 2);
    EXPECT_EQ(w.V.sprTable.Row, 3);
}

TEST(GridOnScreen, ATickThatTheViewTakesBackIsShownAsItIs) {
    KindsWorld w;
    w.V.sprTable.CellEdit = [&](int c, int r) { w.V.sprTable.At(c, r).Ticked = false; };
    w.ClickCell(1, 1);
    EXPECT_EQ(w.Table().model()->index(0, 0).data(Qt::CheckStateRole).toInt(),
              static_cast<int>(Qt::Unchecked));
}

TEST(GridOnScreen, AClickThatIsDraggedAwayPressesNothing) {
    KindsWorld w;
    auto* area = w.Table().viewport();
    QTest::mousePress(area, Qt::LeftButton, {}, w.Table().MiddleOf(3, 1));
    QTest::mouseRelease(area, Qt::LeftButton, {}, w.Table().MiddleOf(3, 3));
    EXPECT_TRUE(w.V.Done.empty());
    EXPECT_EQ(w.V.sprTable.Row, 0);
}

TEST(GridOnScreen, ArrowsMoveTheCurrentCellAndSpaceTicks) {
    KindsWorld w;
    w.ClickCell(3, 1);
    w.V.Done.clear();
    QTest::keyClick(&w.Table(), Qt::Key_Down);
    QTest::keyClick(&w.Table(), Qt::Key_Left);
    QTest::keyClick(&w.Table(), Qt::Key_Left);
    QTest::keyClick(&w.Table(), Qt::Key_Left);  // there is nothing further left
    QTest::keyClick(&w.Table(), Qt::Key_Space);
    EXPECT_EQ(w.V.Done, (Texts{"press 3,2", "press 2,2", "press 1,2", "edit 1,2"}));
    EXPECT_TRUE(w.V.sprTable.At(1, 2).Ticked);
}

TEST(GridOnScreen, AnEditableTextIsTypedOverAndAnotherIsNot) {
    KindsWorld w;
    w.ClickCell(4, 2);
    w.V.Done.clear();
    QTest::keyClick(&w.Table(), Qt::Key_F2);
    auto* editor = w.Table().findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    QTest::keyClicks(editor, QStringLiteral("2.75"));
    QTest::keyClick(editor, Qt::Key_Return);
    w.Bring();
    EXPECT_EQ(w.V.sprTable.At(4, 2).Text, "2.75");
    EXPECT_EQ(w.V.Done, Texts{"edit 4,2"});
    w.ClickCell(3, 2);
    QTest::keyClicks(&w.Table(), QStringLiteral("x"));
    w.Bring();
    EXPECT_EQ(w.V.sprTable.At(3, 2).Text, "name2");
}

TEST(GridOnScreen, EscapeInACellTakesTheTypingBackAndIsNoKeyOfTheView) {
    KindsWorld w;
    std::vector<KeyPress::Name> seen;
    w.V.KeyPreview = [&](const KeyPress& key) {
        seen.push_back(key.Key);
        return true;
    };
    w.ClickCell(4, 2);
    QTest::keyClick(&w.Table(), Qt::Key_7);  // a letter opens the cell
    auto* editor = w.Table().findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    QTest::keyClick(editor, Qt::Key_Delete);
    QTest::keyClick(editor, Qt::Key_Escape);
    w.Bring();
    EXPECT_EQ(w.V.sprTable.At(4, 2).Text, "1.5");
    EXPECT_EQ(w.CellText(4, 2), QStringLiteral("1.5"));
    const auto got = [&](KeyPress::Name name) {
        return std::count(seen.begin(), seen.end(), name) > 0;
    };
    EXPECT_FALSE(got(KeyPress::Name::Escape));
    EXPECT_FALSE(got(KeyPress::Name::Delete)) << "it deleted a letter";
    QTest::keyClick(&w.Table(), Qt::Key_Delete);
    EXPECT_TRUE(got(KeyPress::Name::Delete)) << "a row's key while no cell is typed over";
    QTest::keyClick(&w.Table(), Qt::Key_Escape);
    EXPECT_TRUE(got(KeyPress::Name::Escape));
}

TEST(GridOnScreen, TabInACellGoesOnToTheNextOneWithTheRecord) {
    KindsWorld w;
    w.V.sprTable.At(3, 2).Editable = true;
    w.Bring();
    w.ClickCell(3, 2);
    QTest::keyClick(&w.Table(), Qt::Key_F2);
    auto* editor = w.Table().findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, QStringLiteral("left"));
    QTest::keyClick(editor, Qt::Key_Tab);
    w.Bring();
    EXPECT_EQ(w.V.sprTable.At(3, 2).Text, "left");
    EXPECT_EQ(w.V.sprTable.Col, 4);
    EXPECT_EQ(w.Table().currentIndex().column(), 3);
    editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(editor, nullptr) << "the next cell is open";
    QTest::keyClicks(editor, QStringLiteral("9"));
    QTest::keyClick(editor, Qt::Key_Return);
    w.Bring();
    EXPECT_EQ(w.V.sprTable.At(4, 2).Text, "9");
}

TEST(GridOnScreen, HeadsStandAboveTheirNumbersAndWords) {
    KindsWorld w;
    const auto head = [&](int column) {
        return w.Table()
            .model()
            ->headerData(column - 1, Qt::Horizontal, Qt::TextAlignmentRole)
            .toInt();
    };
    EXPECT_TRUE(head(4) & Qt::AlignRight);
    EXPECT_TRUE(head(3) & Qt::AlignLeft);
}

TEST(GridOnScreen, TheCurrentCellFollowsTheRecordAndDoesNotComeBack) {
    KindsWorld w;
    w.V.sprTable.Row = 3;
    w.V.sprTable.Col = 3;
    w.Bring();
    EXPECT_EQ(w.Table().currentIndex().row(), 2);
    w.V.sprTable.SetSize(4, 2);
    w.Bring();
    EXPECT_EQ(w.Table().model()->rowCount(), 2);
    EXPECT_TRUE(w.V.Done.empty());
}

TEST(GridOnScreen, SwatchesPicturesAndButtonsAreDrawn) {
    KindsWorld w;
    const QImage image = w.Table().viewport()->grab().toImage();
    const double ratio = w.Table().devicePixelRatioF();
    const auto at = [&](QPoint p) { return image.pixelColor((QPointF(p) * ratio).toPoint()); };
    EXPECT_EQ(at(w.Table().MiddleOf(2, 1)), QColor(200, 30, 40));
    const auto inkOf = [&](int column, int row) {
        const QPoint middle = w.Table().MiddleOf(column, row);
        int n = 0;
        for (int x = -9; x <= 9; ++x)
            for (int y = -9; y <= 9; ++y) n += at(middle + QPoint(x, y)).lightness() < 128 ? 1 : 0;
        return n;
    };
    EXPECT_GT(inkOf(2, 2), 20) << "the drawing of the name";
    EXPECT_GT(inkOf(2, 3), 10) << "the words of the button";
}

}  // namespace
}  // namespace vael
