// Rows by the user's hand: choosing a kind, closing, the two windows, files and their folders.
#include "support/spectra.h"
#include "support/world.h"

#include "core/cursors.h"
#include "core/graphs.h"
#include "core/windows.h"

#include <gtest/gtest.h>

using namespace vael;

namespace {

struct Hand : World {
    std::string Spectrum(const std::string& name, int height = 100, int channels = 64) {
        return Folder.Write(
            name, NpdText(GaussCounts(channels, 10, {{channels / 2.0, double(height), 8}})));
    }
    void Open(std::vector<std::string> paths) {
        Desk.ChooseFiles(std::move(paths));
        Click(frmVaelAna.mnuLoad);
    }
    [[nodiscard]] static const GraphEntry& Row(int row) {
        return store.GraphList[static_cast<std::size_t>(row)];
    }
};

int Drawn(int win, int slot) {
    return Engine().Target(win).Graph[static_cast<std::size_t>(slot)].GraphInUse;
}

constexpr const char* TITLE = "Vael (Data Analyze) --- ";

}  // namespace

TEST(Kinds, EachMenuItemSelectsTheFirstRowOfItsName) {
    Hand w;
    w.Open({w.Spectrum("a.npd", 100, 4096), w.Spectrum("b.npd", 100, 4096)});
    Click(frmVaelAna.mnuSmooth);
    Click(frmVaelAna.mnuBackGround);
    ASSERT_EQ(w.Row(0).Name, "BackRemv");
    ASSERT_EQ(w.Row(1).Name, "BackGraund");
    ASSERT_EQ(w.Row(2).Name, "Smooth");
    Click(frmVaelAna.mnuGraphRaw);
    EXPECT_EQ(GraphNo(), 3) << "the first of the two files";
    EXPECT_EQ(frmVaelAna.lblStatus.Caption, "a.npd is the current graph.");
    Click(frmVaelAna.mnuGraphSmt);
    EXPECT_EQ(GraphNo(), 2);
    Click(frmVaelAna.mnuGraphBack);
    EXPECT_EQ(GraphNo(), 1);
    Click(frmVaelAna.mnuGraphBackRemoved);
    EXPECT_EQ(GraphNo(), 0);
    EXPECT_EQ(frmVaelAna.Caption, std::string(TITLE) + "BackRemv");
    store.GraphList[4].Name = "Fit";
    Click(frmVaelAna.mnuGraphFit);
    EXPECT_EQ(GraphNo(), 4);
}

TEST(Kinds, WhereThereIsNoneTheSelectionIsRefused) {
    Hand w;
    w.Open({w.Spectrum("a.npd")});
    Click(frmVaelAna.mnuGraphFit);
    EXPECT_EQ(GraphNo(), 0);
    EXPECT_EQ(frmVaelAna.cboGrphSel[0].Index, 0);
    EXPECT_EQ(frmVaelAna.lblStatus.Caption, "There is no graph Fit.");
    Change_cboGrphSel(0, 10);
    Change_cboGrphSel(0, -1);
    EXPECT_EQ(frmVaelAna.cboGrphSel[0].Index, 0);
    store.GraphList[0].Name = "Fit";  // no file's graph is left
    Click(frmVaelAna.mnuGraphRaw);
    EXPECT_EQ(frmVaelAna.lblStatus.Caption, "There is no graph of a file.");
}

TEST(Kinds, TheSelectionIsMadeInTheActiveWindow) {
    Hand w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    Pick(frmVaelAna.cboGrphSel[1], 1);
    Click(frmVaelAna.mnuGraphRaw);
    EXPECT_EQ(frmVaelAna.cboGrphSel[1].Index, 0);
    EXPECT_EQ(frmVaelAna.cboGrphSel[0].Index, 1) << "the other window's stays";
    EXPECT_EQ(frmVaelAna.ActiveWin, 1);
}

TEST(CloseGraph, TakesTheCurrentRowAndTheNextOneIsCurrent) {
    Hand w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd"), w.Spectrum("c.npd")});
    Pick(frmVaelAna.cboGrphSel[0], 1);
    Click(frmVaelAna.mnuCloseGraph);
    EXPECT_EQ(store.GraphTotal, 2);
    EXPECT_EQ(w.Row(1).Name, "c.npd");
    EXPECT_EQ(GraphNo(), 1);
    EXPECT_EQ(frmVaelAna.Caption, std::string(TITLE) + "c.npd");
    EXPECT_EQ(frmVaelAna.itxtGraphName.Text, "c.npd");
    EXPECT_EQ(frmVaelAna.mnuCloseGraph.Caption, "Close Graph(c.npd)");
    EXPECT_EQ(frmVaelAna.lblStatus.Caption, "Closed b.npd.");
    EXPECT_EQ(Drawn(0, 1), 0);
}

TEST(CloseGraph, OfTheLastRowLeavesAnEmptyWindowWithoutItsName) {
    Hand w;
    w.Open({w.Spectrum("a.npd")});
    Click(frmVaelAna.mnuCloseGraph);
    EXPECT_EQ(store.GraphTotal, 0);
    EXPECT_EQ(frmVaelAna.Caption, TITLE);
    EXPECT_EQ(frmVaelAna.itxtGraphName.Text, "");
    EXPECT_EQ(frmVaelAna.mnuCloseGraph.Caption, "Close Graph");
    EXPECT_EQ(frmVaelAna.cboGrphSel[0].Items[0], "1 ");
    Click(frmVaelAna.mnuCloseGraph);
    EXPECT_EQ(frmVaelAna.lblStatus.Caption, "There is no graph in this row.");
}

TEST(CloseGraph, TheUsersNoKeepsTheRow) {
    Hand w;
    w.Open({w.Spectrum("a.npd")});
    store.GraphList[0].State = 2;
    w.Desk.ExpectQuestion("File No Save.  Grp=1 (Do you Cansel?)", Answer::No);
    Click(frmVaelAna.mnuCloseGraph);
    EXPECT_EQ(store.GraphTotal, 1);
    EXPECT_EQ(store.SpectrumDatas[0].Count[32], 110);
    store.GraphList[0].State = 1;
}

TEST(CloseGraph, EverySelectorStaysWithItsGraph) {
    Hand w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd"), w.Spectrum("c.npd")});
    Pick(frmVaelAna.cboGrphSel[1], 1);
    Pick(frmVaelAna.cboGrphSel[0], 2);
    DeleteGraph(0);
    EXPECT_EQ(frmVaelAna.cboGrphSel[0].Text(), "2 c.npd");
    EXPECT_EQ(frmVaelAna.cboGrphSel[1].Text(), "1 b.npd");
    EXPECT_EQ(DataNo(), 2);
    EXPECT_EQ(frmVaelAna.ActiveWin, 0);
}

TEST(CloseGraph, TheScaleFollowsWhatIsLeft) {
    Hand w;
    w.Open({w.Spectrum("a.npd", 700), w.Spectrum("b.npd", 30000)});
    ASSERT_EQ(YFullScale(0), 40000);
    Click(frmVaelAna.mnuCloseGraph);
    EXPECT_EQ(YFullScale(0), 800);
}

TEST(Windows, ATickInTheOtherWindowMovesTheGraphThere) {
    Hand w;
    w.Open({w.Spectrum("a.npd", 30000), w.Spectrum("b.npd", 700)});
    ASSERT_EQ(YFullScale(0), 40000);
    const auto upper = frmVaelAna.picGraph[0].Painted;
    const auto lower = frmVaelAna.picGraph[1].Painted;
    Tick(frmVaelAna.chkGrp[10]);
    EXPECT_EQ(w.Row(0).WinNo, 1);
    EXPECT_EQ(w.Row(0).Visible, -1);
    EXPECT_EQ(frmVaelAna.chkGrp[0].Value, 0) << "it shows in one window";
    EXPECT_EQ(frmVaelAna.chkGrp[10].Value, 1);
    EXPECT_EQ(Drawn(0, 0), 0);
    EXPECT_EQ(Drawn(1, 0), -1);
    EXPECT_EQ(YFullScale(0), 800) << "both windows are scaled anew";
    EXPECT_EQ(YFullScale(1), 40000);
    EXPECT_GT(frmVaelAna.picGraph[0].Painted, upper);
    EXPECT_GT(frmVaelAna.picGraph[1].Painted, lower);
    Tick(frmVaelAna.chkGrp[10]);
    EXPECT_EQ(w.Row(0).Visible, 0);
    EXPECT_EQ(Drawn(1, 0), 0);
    Tick(frmVaelAna.chkGrp[0]);  // and back
    EXPECT_EQ(w.Row(0).WinNo, 0);
    EXPECT_EQ(Drawn(0, 0), -1);
    EXPECT_EQ(Drawn(1, 0), 0);
}

TEST(Windows, ActivatingAnEmptyRowKeepsTheTitleAndTakesTheNameFromTheMenu) {
    Hand w;
    w.Open({w.Spectrum("a.npd")});
    frmVaelAna.cboGrphSel[1].Index = 4;
    ChangeActiveWin(1);
    EXPECT_EQ(frmVaelAna.ActiveWin, 1);
    EXPECT_EQ(frmVaelAna.Caption, std::string(TITLE) + "a.npd");
    EXPECT_EQ(frmVaelAna.mnuCloseGraph.Caption, "Close Graph");
    EXPECT_TRUE(frmVaelAna.fraGraph[1].Raised);
    EXPECT_FALSE(frmVaelAna.fraGraph[0].Raised);
}

TEST(Windows, TheSelectorRedrawsTheAxisAndTheNumbersOfTheCursor) {
    Hand w;
    w.Open({w.Spectrum("a.npd", 100), w.Spectrum("b.npd", 700)});
    const auto axis = frmVaelAna.picSubScale.Painted;
    CsrX_Change(32);
    Pick(frmVaelAna.cboGrphSel[0], 0);
    EXPECT_EQ(frmVaelAna.inumCursorCnt[0].Value, 110);
    Pick(frmVaelAna.cboGrphSel[0], 1);
    EXPECT_EQ(frmVaelAna.inumCursorCnt[0].Value, 710);
    EXPECT_GT(frmVaelAna.picSubScale.Painted, axis);
}

TEST(Files, EachKeepsItsOwnFolderAndNamesMayHoldBlanksCommasAndJapanese) {
    Hand w;
    std::filesystem::create_directories(w.Folder.Path("run 1, a"));
    std::filesystem::create_directories(w.Folder.Path("run;2"));
    w.Open({w.Spectrum("run 1, a/gold, hot  5.npd", 300), w.Spectrum("run;2/金 試料.npd", 500)});
    ASSERT_EQ(store.GraphTotal, 2);
    EXPECT_EQ(w.Row(0).Name, "gold, hot  5.npd");
    EXPECT_EQ(w.Row(1).Name, "金 試料.npd");
    EXPECT_EQ(store.SpectrumDatas[0].Count[32], 310);
    EXPECT_EQ(store.SpectrumDatas[1].Count[32], 510);
    EXPECT_EQ(store.DataFolder, w.Folder.Path("run 1, a") + "/") << "that of the first";
    EXPECT_EQ(store.DataDrive, "");
}

TEST(Files, TheDialogHasATitleAndNoName) {
    Hand w;
    w.Desk.CancelOpen();
    Click(frmVaelAna.mnuLoad);
    EXPECT_EQ(w.Desk.OpenDialogs.back().Title, "Open");
    EXPECT_EQ(w.Desk.OpenDialogs.back().Name, "");
    EXPECT_EQ(frmVaelAna.lblStatus.Caption, "The rows were emptied; no file was chosen.");
}

TEST(Files, TheTitleNamesAFileBeforeItIsRead) {
    Hand w;
    w.Open({w.Folder.Write("bad.npd", "x")});
    EXPECT_EQ(frmVaelAna.Caption, std::string(TITLE) + "bad.npd");
}

TEST(Files, TheUnsavedRowsAreAskedForWithEachRowThatGoes) {
    Hand w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    store.GraphList[1].State = 2;
    w.Desk.ExpectQuestion("File No Save.  Grp=2 (Do you Cansel?)", Answer::Yes);  // row 1 goes
    w.Desk.ExpectQuestion("File No Save.  Grp=1 (Do you Cansel?)", Answer::Yes);  // it is row 1 now
    w.Open({w.Spectrum("c.npd")});
    EXPECT_EQ(store.GraphTotal, 1);
    EXPECT_EQ(w.Row(0).Name, "c.npd");
}

TEST(DerivedRows, WithNineRowsTakenOneMoreIsMadeAndWithTenTheSourceStays) {
    Hand w;
    std::vector<std::string> paths;
    for (int n = 0; n < 9; ++n) paths.push_back(w.Spectrum("f" + std::to_string(n) + ".npd"));
    w.Open(paths);
    Click(frmVaelAna.mnuSmooth);
    ASSERT_EQ(store.GraphTotal, 10);
    EXPECT_EQ(w.Row(0).Name, "Smooth");
    EXPECT_EQ(w.Row(9).Name, "f8.npd");
    Pick(frmVaelAna.cboGrphSel[0], 9);
    w.Desk.ExpectQuestion("ShiftGraph: List Over!");
    Click(frmVaelAna.mnuSmooth);
    EXPECT_EQ(store.GraphTotal, 10);
    EXPECT_EQ(w.Row(9).Name, "f8.npd");
    EXPECT_EQ(GraphNo(), 9);
    EXPECT_EQ(store.SpectrumDatas[8].Count[32], 110);
}

TEST(DerivedRows, ClearingAllEmptiesBothWindows) {
    Hand w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    Tick(frmVaelAna.chkGrp[10]);
    const auto upper = frmVaelAna.picGraph[0].Painted;
    std::int16_t ok = TRUE_WORD;
    ClearAllGrp(ok);
    EXPECT_EQ(ok, 0);
    for (int slot = 0; slot < 2; ++slot)
        for (int win = 0; win < WINDOW_COUNT; ++win) EXPECT_EQ(Drawn(win, slot), 0);
    EXPECT_EQ(frmVaelAna.chkGrp[10].Value, 0);
    EXPECT_GT(frmVaelAna.picGraph[0].Painted, upper);
    EXPECT_EQ(store.SlotUsed[0], 0);
    EXPECT_EQ(store.SlotUsed[1], 0);
}
