// The presses of the commands about saving, closing and listing rows, for the list of controls that
// nobody pressed.
#pragma once

#include "deskworld.h"

#include "core/frmselgraph.h"
#include "desktop/griditems.h"

namespace vael::test {

/// Goes from any rows to the row "Smooth" alone.
template <class Press>
void PressSavingAndRows(DeskWorld& world, Press press) {
    VaelAnaView& v = frmVaelAna;
    const std::string first = world.Write("first row.npd", FIVE_LINES);
    world.Desk.Files.push_back({first});
    press(v.mnuLoad);
    press(v.mnuSmooth);
    press(v.mnuBackGround);
    press(v.mnuGraphRaw);
    EXPECT_EQ(GraphNo(), 3);
    press(v.mnuGraphBack);
    EXPECT_EQ(GraphNo(), 1);
    press(v.mnuGraphBackRemoved);
    EXPECT_EQ(GraphNo(), 0);
    press(v.mnuGraphFit);
    EXPECT_EQ(GraphNo(), 0) << "there is none";
    press(v.mnuGraphSmt);
    EXPECT_EQ(GraphNo(), 2);

    const std::string folder = world.Folder.path().toStdString() + "/";
    world.Desk.Saves.push_back(folder + "one.xbm");
    press(v.mnuSave);
    EXPECT_EQ(world.Desk.SaveDialogs.back().Name, "first row_SMT");
    world.Desk.Saves.push_back(folder + "two.xba");
    press(v.cmdFiles[1]);
    EXPECT_TRUE(std::filesystem::exists(folder + "one.xbm"));
    EXPECT_TRUE(std::filesystem::exists(folder + "two.xba"));

    press(v.mnuGraphRaw);
    press(v.mnuCloseGraph);
    EXPECT_EQ(store.GraphTotal, 3);

    press(v.cmdMnSelGrp);
    EXPECT_TRUE(world.Desk.FormOfView(frmSelGraph)->isVisible());
    press(frmSelGraph.chkFix);
    EXPECT_TRUE(frmSelGraph.OnTop);
    press(frmSelGraph.chkFix);
    const auto pressLine = [&](int row) {
        auto& table = world.Widget<GridWidget>(frmSelGraph, "sprGraphSel");
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {},
                          table.MiddleOf(SelGraphView::NAME, row));
        world.Pressed.insert("frmSelGraph.sprGraphSel");
        DeskWorld::Settle();
        EXPECT_EQ(GraphNo(), row - 1);
    };
    pressLine(2);
    press(frmSelGraph.cmdCut);
    pressLine(1);
    press(frmSelGraph.cmdCut);
    EXPECT_EQ(store.GraphTotal, 1);
    EXPECT_EQ(store.GraphList[0].Name, "Smooth");
    world.Desk.Files.push_back({});
    press(frmSelGraph.cmdOpen);
    press(frmSelGraph.cmdOK);
    EXPECT_FALSE(world.Desk.FormOfView(frmSelGraph)->isVisible());
}

}  // namespace vael::test
