// Rows and files in the real window: the list of rows, the chips of both windows, the save dialog.
#include "deskworld.h"

#include "core/frmdialogload.h"
#include "core/frminput.h"
#include "core/frmselgraph.h"
#include "core/graphs.h"
#include "desktop/griditems.h"

#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QTimer>

#include <functional>

namespace vael {
namespace {

using test::DeskWorld;
using test::FIVE_LINES;

int PixelsOf(DeskWorld& world, int win, Colour colour) {
    const Picture& plot = frmVaelAna.picGraph[static_cast<std::size_t>(win)];
    return test::PixelsOf(test::PaperOf(world, plot), colour);
}

struct ListWorld : DeskWorld {
    ListWorld() {
        Open({Write("first.npd", FIVE_LINES), Write("second.npd", {{800.0, 5000.0, 9.0}})});
        ClickOn(frmVaelAna.cmdMnSelGrp);
    }
    void ClickCell(int column, int row) {
        auto& table = Widget<GridWidget>(frmSelGraph, "sprGraphSel");
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, table.MiddleOf(column, row));
        Settle();
    }
    QString Shown(int column, int row) {
        const auto* model = Widget<GridWidget>(frmSelGraph, "sprGraphSel").model();
        return model->index(row - 1, column - 1).data().toString();
    }
};

TEST(RowList, ShowsNamesAndFollowsTheMainWindow) {
    ListWorld world;
    EXPECT_EQ(world.Shown(SelGraphView::NAME, 1), QStringLiteral("first.npd"));
    EXPECT_EQ(world.Shown(SelGraphView::NAME, 2), QStringLiteral("second.npd"));
    EXPECT_EQ(world.Shown(SelGraphView::SAMPLE, 1), QStringLiteral("Au"));
    world.ClickOn(frmVaelAna.cmdOperation[3]);
    EXPECT_EQ(world.Shown(SelGraphView::NAME, 1), QStringLiteral("Smooth"));
    EXPECT_EQ(world.Shown(SelGraphView::NAME, 3), QStringLiteral("second.npd"));
}

TEST(RowList, AClickOnANameSelectsAndAClickOnATickHides) {
    ListWorld world;
    world.ClickCell(SelGraphView::NAME, 1);
    EXPECT_EQ(GraphNo(), 0);
    EXPECT_TRUE(world.Main().windowTitle().contains(QStringLiteral("first.npd")));
    const Colour colour = store.GraphList[1].Color;
    EXPECT_GT(PixelsOf(world, 0, colour), 50);
    world.ClickCell(SelGraphView::SHOWN, 2);
    EXPECT_EQ(store.GraphList[1].Visible, 0);
    EXPECT_EQ(PixelsOf(world, 0, colour), 0);
    EXPECT_FALSE(world.Widget<QCheckBox>(frmVaelAna, "chkGrp_1").isChecked());
    EXPECT_EQ(GraphNo(), 0);
}

TEST(RowList, CutTakesTheRowThatWasClicked) {
    ListWorld world;
    world.ClickCell(SelGraphView::NAME, 1);
    world.ClickOn(frmSelGraph.cmdCut);
    EXPECT_EQ(world.Shown(SelGraphView::NAME, 1), QStringLiteral("second.npd"));
    EXPECT_EQ(world.Shown(SelGraphView::NAME, 2), QString());
    EXPECT_EQ(store.GraphTotal, 1);
    EXPECT_TRUE(world.Faults.empty());
}

TEST(RowList, ThePinChangesItsDrawing) {
    ListWorld world;
    auto& pin = world.Widget<PictureWidget>(frmSelGraph, "picPin");
    const QImage loose = pin.grab().toImage();
    world.ClickOn(frmSelGraph.chkFix);
    EXPECT_TRUE(frmSelGraph.OnTop);
    EXPECT_NE(pin.grab().toImage(), loose);
    world.ClickOn(frmSelGraph.chkFix);
    EXPECT_EQ(pin.grab().toImage(), loose);
}

TEST(RowList, TheCloseBoxHidesItAndTheMainWindowGoesOn) {
    ListWorld world;
    world.Desk.FormOfView(frmSelGraph)->close();
    DeskWorld::Settle();
    EXPECT_FALSE(frmSelGraph.Visible);
    EXPECT_TRUE(world.Main().isVisible());
    EXPECT_FALSE(world.Desk.HasQuit);
}

TEST(Rows, AChipOfTheOtherWindowMovesTheGraphThere) {
    DeskWorld world;
    world.Open({world.Write("first.npd", FIVE_LINES), world.Write("second.npd", FIVE_LINES)});
    const Colour colour = store.GraphList[0].Color;
    world.ClickOn(frmVaelAna.chkGrp[10]);
    EXPECT_EQ(store.GraphList[0].WinNo, 1);
    EXPECT_FALSE(world.Widget<QCheckBox>(frmVaelAna, "chkGrp_0").isChecked());
    EXPECT_TRUE(world.Widget<QCheckBox>(frmVaelAna, "chkGrp_10").isChecked());
    EXPECT_EQ(PixelsOf(world, 0, colour), 0);
    EXPECT_GT(PixelsOf(world, 1, colour), 50);
}

TEST(Rows, TheKeysSaveAndClose) {
    DeskWorld world;
    world.Open({world.Write("first.npd", FIVE_LINES)});
    world.Desk.Saves.push_back(world.Folder.filePath(QStringLiteral("a.xbm")).toStdString());
    world.Main().activateWindow();
    DeskWorld::Settle();
    QTest::keyClick(&world.Main(), Qt::Key_S, Qt::ControlModifier);
    DeskWorld::Settle();
    EXPECT_TRUE(QFileInfo::exists(world.Folder.filePath(QStringLiteral("a.xbm"))));
    QTest::keyClick(&world.Main(), Qt::Key_W, Qt::ControlModifier);
    DeskWorld::Settle();
    EXPECT_EQ(store.GraphTotal, 0);
    EXPECT_EQ(world.Main().windowTitle(), QStringLiteral("Vael (Data Analyze) --- "));
}

TEST(Rows, TheSaveDialogStandsWithItsProposalAndSavesInTheChosenForm) {
    DeskWorld world;
    world.Open({world.Write("試料 a,b.npd", FIVE_LINES)});
    const FileDialog proposed = [&] {
        world.Desk.Saves.push_back({});
        world.ClickOn(frmVaelAna.cmdFiles[1]);
        return world.Desk.SaveDialogs.back();
    }();
    EXPECT_EQ(proposed.Name, "試料 a,b_RAW");
    QString title;
    QString name;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        title = box->windowTitle();
        auto* line = box->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        name = line->text();
        box->selectNameFilter(box->nameFilters().value(2));
        QTest::keyClick(line, Qt::Key_Return);
    });
    const auto chosen = world.Desk.QtDesk::SaveFile(proposed);
    ASSERT_TRUE(chosen);
    EXPECT_EQ(title, QStringLiteral("Save"));
    EXPECT_EQ(name, QString::fromUtf8("試料 a,b_RAW"));
    EXPECT_EQ(chosen->FilterIndex, 3);
    EXPECT_EQ(chosen->Paths.front(), world.Folder.path().toStdString() + "/試料 a,b_RAW.xbm");
}

// --- the program's own file dialog, which no button opens yet -----------

/// Opens it as a command would, with the user's acts while it stands.
bool RunDialog(DeskWorld&, const std::function<void()>& act) {
    QTimer::singleShot(0, [&] { act(); });
    bool chosen = false;
    RunEvent(frmVaelAna, [&] { chosen = OpenDialogLoad(); });
    DeskWorld::Settle();
    return chosen;
}

TEST(FileDialogue, IsWorkedByMouseAndKeys) {
    DeskWorld world;
    world.Write("one.npd", FIVE_LINES);
    world.Write("two words.npd", FIVE_LINES);
    QDir(world.Folder.path()).mkdir(QStringLiteral("inner"));
    DialogLoadView& v = frmDialogLoad;
    v.SetExt("npd,xbm");
    v.Directory(world.Folder.path().toStdString());
    v.DefExt("npd");
    v.MultiSelect(true);
    v.VisibleWin(true);
    v.MaxGrp(10);
    const bool chosen = RunDialog(world, [&] {
        ASSERT_TRUE(world.Desk.FormOfView(v)->isVisible());
        auto& files = world.Widget<QListWidget>(v, "filFiles");
        ASSERT_EQ(files.count(), 2);
        const auto click = [&](int row, Qt::KeyboardModifiers keys) {
            QTest::mouseClick(files.viewport(), Qt::LeftButton, keys,
                              files.visualItemRect(files.item(row)).center());
            DeskWorld::Settle();
        };
        click(0, {});
        click(1, Qt::ControlModifier);
        EXPECT_EQ(world.Widget<QLineEdit>(v, "txtSelFile").text(),
                  QStringLiteral("one.npd;two words.npd"));
        world.ClickOn(v.optGSel[1]);
        world.ClickOn(v.optGSel[0]);
        world.StepList(v.cboGSel, 2);
        world.StepList(v.cmbExtName, 1);
        EXPECT_EQ(files.count(), 0);
        world.StepList(v.cmbExtName, -1);
        world.StepList(v.drvDrive, -1);
        v.Directory(world.Folder.path().toStdString());
        world.Desk.Show();
        auto& folders = world.Widget<QListWidget>(v, "dirDirectory");
        ASSERT_EQ(folders.count(), 2);
        folders.setFocus();
        folders.setCurrentRow(1);
        QTest::keyClick(&folders, Qt::Key_Return);
        DeskWorld::Settle();
        EXPECT_EQ(v.Directory(), world.Folder.filePath(QStringLiteral("inner")).toStdString());
        v.Directory(world.Folder.path().toStdString());
        world.Desk.Show();
        click(1, {});
        world.Desk.Answers.push_back(Answer::Ok);
        world.ClickOn(v.cmdDetails);
        EXPECT_TRUE(QString::fromStdString(world.Desk.Asked.back())
                        .startsWith(QStringLiteral("two words.npd: ")));
        world.ClickOn(v.cmdSet);
    });
    EXPECT_TRUE(chosen);
    EXPECT_EQ(v.Paths(),
              (std::vector<std::string>{
                  world.Folder.filePath(QStringLiteral("two words.npd")).toStdString()}));
    EXPECT_EQ(v.GraphNo(), 2);
    EXPECT_EQ(v.ModeSelect(), 0);
    EXPECT_TRUE(world.Faults.empty());
}

TEST(FileDialogue, MakesAFolderAndEscapeCancels) {
    DeskWorld world;
    DialogLoadView& v = frmDialogLoad;
    v.Directory(world.Folder.path().toStdString());
    const bool chosen = RunDialog(world, [&] {
        QTimer::singleShot(0, [&] {
            auto& line = world.Widget<QLineEdit>(frmInput, "txtInput");
            QTest::keyClicks(&line, QStringLiteral("made here"));
            QTest::keyClick(&line, Qt::Key_Return);
        });
        world.ClickOn(v.cmdMkDir);
        EXPECT_TRUE(QFileInfo(world.Folder.filePath(QStringLiteral("made here"))).isDir());
        EXPECT_EQ(v.dirDirectory.Items.back(), "made here");
        QTest::keyClick(world.Desk.FormOfView(v), Qt::Key_Escape);
    });
    EXPECT_FALSE(chosen);
    EXPECT_FALSE(world.Desk.FormOfView(v)->isVisible());
}

TEST(FileDialogue, ItsCancelButtonCancels) {
    DeskWorld world;
    EXPECT_FALSE(RunDialog(world, [&] { world.ClickOn(frmDialogLoad.cmdCan); }));
}

}  // namespace
}  // namespace vael
