// The list of the graph rows, by the user's hand, and in step with every change of the rows.
#include "support/spectra.h"
#include "support/world.h"

#include "core/graphs.h"
#include "core/windows.h"

#include <gtest/gtest.h>

using namespace vael;

namespace {

using V = SelGraphView;

struct Listed : World {
    std::string Spectrum(const std::string& name, int height = 100) {
        return Folder.Write(
            name, NpdText(GaussCounts(64, 10, {{32.0, double(height), 8}}), "of " + name));
    }
    void Open(std::vector<std::string> paths) {
        Desk.ChooseFiles(std::move(paths));
        Click(frmVaelAna.mnuLoad);
    }
    /// "*a.npd b.npd(hidden)": the names of the lines, the marked one with a star.
    [[nodiscard]] std::string Lines() const {
        const Grid& grid = frmSelGraph.sprGraphSel;
        std::string out;
        for (int row = 1; row <= grid.Rows(); ++row) {
            if (grid.At(V::NAME, row).Text.empty()) {
                EXPECT_FALSE(grid.At(V::SHOWN, row).Ticked);
                EXPECT_EQ(grid.At(V::MARKER, row).Text, "picNothing");
                continue;
            }
            if (!out.empty()) out += " ";
            if (grid.At(V::MARKER, row).Text == "picAllow") out += "*";
            out += grid.At(V::NAME, row).Text;
            if (!grid.At(V::SHOWN, row).Ticked) out += "(hidden)";
        }
        return out;
    }
};

}  // namespace

TEST(GraphSelect, TheButtonShowsTheListWithTheCurrentRowMarked) {
    Listed w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    EXPECT_FALSE(frmSelGraph.Visible);
    Click(frmVaelAna.cmdMnSelGrp);
    EXPECT_TRUE(frmSelGraph.Visible);
    EXPECT_EQ(frmSelGraph.Caption, "Graph Select");
    EXPECT_EQ(w.Lines(), "a.npd *b.npd");
    const Grid& grid = frmSelGraph.sprGraphSel;
    EXPECT_EQ(grid.Rows(), 10);
    EXPECT_EQ(grid.Columns(), 5);
    EXPECT_EQ(grid.Row, 2);
    EXPECT_EQ(grid.At(V::SWATCH, 1).Fill, store.ColorTable[0]);
    EXPECT_EQ(grid.At(V::SWATCH, 1).Kind, Grid::CellKind::Swatch);
    EXPECT_EQ(grid.At(V::MARKER, 1).Kind, Grid::CellKind::Picture);
    EXPECT_EQ(grid.At(V::SHOWN, 1).Kind, Grid::CellKind::Tick);
    EXPECT_EQ(grid.At(V::SAMPLE, 2).Text, store.PropertyRecords[1].SampleName.Trimmed());
    EXPECT_EQ(grid.At(V::SAMPLE, 2).Text, "Au");
    Click(frmSelGraph.cmdOK);
    EXPECT_FALSE(frmSelGraph.Visible);
}

TEST(GraphSelect, StaysInStepWithEveryChangeOfTheRows) {
    Listed w;
    EXPECT_EQ(w.Lines(), "");
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    EXPECT_EQ(w.Lines(), "a.npd *b.npd");
    Click(frmVaelAna.mnuSmooth);
    EXPECT_EQ(w.Lines(), "*Smooth a.npd b.npd");
    Pick(frmVaelAna.cboGrphSel[0], 2);
    EXPECT_EQ(w.Lines(), "Smooth a.npd *b.npd");
    Tick(frmVaelAna.chkGrp[1]);
    EXPECT_EQ(w.Lines(), "Smooth a.npd(hidden) *b.npd");
    DeleteGraph(0);
    EXPECT_EQ(w.Lines(), "a.npd(hidden) *b.npd") << "the marker stays with its graph";
    std::int16_t ok = 0;
    ShiftGraph(0, 1, ok);
    EXPECT_EQ(frmSelGraph.sprGraphSel.At(V::NAME, 1).Text, "");
    EXPECT_EQ(frmSelGraph.sprGraphSel.At(V::NAME, 2).Text, "a.npd");
    store.GraphTotal = 3;  // as with the slot for the row that was made room for
    ShiftGraph(1, -1, ok);
    store.GraphTotal = 2;
    ClearGrp(0, ok);
    EXPECT_EQ(frmSelGraph.sprGraphSel.At(V::NAME, 1).Text, "") << "its line goes with the row";
    EXPECT_EQ(frmSelGraph.sprGraphSel.At(V::NAME, 2).Text, "b.npd");
    Form_Load_Proc();
    EXPECT_EQ(w.Lines(), "");
}

TEST(GraphSelect, ARowBehindAnEmptyOneStandsInItsOwnLine) {
    Listed w;
    w.Open({w.Folder.Write("bad.npd", "x"), w.Spectrum("b.npd")});
    EXPECT_EQ(frmSelGraph.sprGraphSel.At(V::NAME, 1).Text, "");
    EXPECT_EQ(frmSelGraph.sprGraphSel.At(V::NAME, 2).Text, "b.npd");
    EXPECT_TRUE(GraphSel_Check(1));
    EXPECT_FALSE(GraphSel_Check(0));
}

TEST(GraphSelect, AClickOnANameMakesTheRowTheCurrentOne) {
    Listed w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    Click(frmVaelAna.cmdMnSelGrp);
    Press(frmSelGraph.sprGraphSel, V::NAME, 1);
    EXPECT_EQ(GraphNo(), 0);
    EXPECT_EQ(frmVaelAna.Caption, "Vael (Data Analyze) --- a.npd");
    EXPECT_EQ(w.Lines(), "*a.npd b.npd");
    Press(frmSelGraph.sprGraphSel, V::SAMPLE, 2);
    EXPECT_EQ(GraphNo(), 1);
    Press(frmSelGraph.sprGraphSel, V::MARKER, 1);
    Press(frmSelGraph.sprGraphSel, V::NAME, 7);
    EXPECT_EQ(GraphNo(), 1) << "no name, no choice";
}

TEST(GraphSelect, AClickOnTheTickShowsAndHidesTheRow) {
    Listed w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    Click(frmVaelAna.cmdMnSelGrp);
    Tick(frmSelGraph.sprGraphSel, V::SHOWN, 1);
    EXPECT_EQ(store.GraphList[0].Visible, 0);
    EXPECT_EQ(frmVaelAna.chkGrp[0].Value, 0);
    EXPECT_EQ(Engine().Target(0).Graph[0].GraphInUse, 0);
    EXPECT_EQ(w.Lines(), "a.npd(hidden) *b.npd");
    Tick(frmSelGraph.sprGraphSel, V::SHOWN, 1);
    EXPECT_EQ(store.GraphList[0].Visible, -1);
    EXPECT_EQ(frmVaelAna.chkGrp[0].Value, 1);
    EXPECT_EQ(Engine().Target(0).Graph[0].GraphInUse, -1);
    EXPECT_EQ(w.Lines(), "a.npd *b.npd") << "the current row is another's business";
    EXPECT_EQ(GraphNo(), 1);
}

TEST(GraphSelect, TheTickOfARowOfTheOtherWindowWorksThere) {
    Listed w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    Tick(frmVaelAna.chkGrp[10]);
    ASSERT_EQ(store.GraphList[0].WinNo, 1);
    Tick(frmSelGraph.sprGraphSel, V::SHOWN, 1);
    EXPECT_EQ(frmVaelAna.chkGrp[10].Value, 0);
    Tick(frmSelGraph.sprGraphSel, V::SHOWN, 1);
    EXPECT_EQ(frmVaelAna.chkGrp[10].Value, 1);
    EXPECT_EQ(frmVaelAna.chkGrp[0].Value, 0);
}

TEST(GraphSelect, CutClosesTheGridsCurrentRow) {
    Listed w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd"), w.Spectrum("c.npd")});
    Click(frmVaelAna.cmdMnSelGrp);
    Press(frmSelGraph.sprGraphSel, V::SWATCH, 2);  // current in the grid, not in the program
    Click(frmSelGraph.cmdCut);
    EXPECT_EQ(w.Lines(), "a.npd *c.npd");
    EXPECT_EQ(store.GraphTotal, 2);
    EXPECT_EQ(frmVaelAna.lblStatus.Caption, "Closed b.npd.");
    EXPECT_EQ(frmVaelAna.chkGrp[1].Tip, "c.npd (current)");
    Press(frmSelGraph.sprGraphSel, V::SWATCH, 9);
    Click(frmSelGraph.cmdCut);
    EXPECT_EQ(store.GraphTotal, 2) << "an empty line is not cut";
    EXPECT_EQ(frmVaelAna.lblStatus.Caption, "There is no graph in this row.");
}

TEST(GraphSelect, OpenLoadsOverTheRowsFromTheFirstOnAndLeavesNoCurveBehind) {
    Listed w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    Click(frmVaelAna.cmdMnSelGrp);
    w.Desk.ChooseFiles({w.Spectrum("c.npd")});
    Click(frmSelGraph.cmdOpen);
    EXPECT_EQ(w.Lines(), "*c.npd b.npd");
    EXPECT_EQ(store.GraphList[0].DataNo, 2);
    EXPECT_EQ(store.SlotUsed[0], -1) << "the slot of the row that went stays marked";
    EXPECT_EQ(store.GraphTotal, 3);
    EXPECT_EQ(Engine().Target(0).Graph[0].GraphInUse, 0) << "its curve does not";
}

TEST(GraphSelect, ThePinHoldsTheWindowAboveTheOthers) {
    Listed w;
    Click(frmVaelAna.cmdMnSelGrp);
    EXPECT_EQ(frmSelGraph.picPin.Drawing, "picPinOff");
    Tick(frmSelGraph.chkFix);
    EXPECT_TRUE(frmSelGraph.OnTop);
    EXPECT_EQ(frmSelGraph.picPin.Drawing, "picPinOn");
    Tick(frmSelGraph.chkFix);
    EXPECT_FALSE(frmSelGraph.OnTop);
    EXPECT_EQ(frmSelGraph.picPin.Drawing, "picPinOff");
}

TEST(GraphSelect, GoesWithTheProgram) {
    Listed w;
    Click(frmVaelAna.cmdMnSelGrp);
    Tick(frmSelGraph.chkFix);
    Click(frmVaelAna.mnuExit);
    EXPECT_FALSE(frmSelGraph.Visible);
    EXPECT_EQ(frmSelGraph.chkFix.Value, 0) << "unloaded: its form defaults are back";
}
