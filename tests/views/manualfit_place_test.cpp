// The manual fit beside the main view: its area, its row, its fit graph, its keys.
#include "support/manualworld.h"

#include "core/areamarks.h"
#include "core/cursors.h"

using namespace vael;
using namespace vael::test::manual;

TEST(ManualFit, TheSecondFitOfASpectrumTakesItsOwnFitGraph) {
    ManualWorld world;
    TypePair();
    Click(v.cmdExecute);
    ASSERT_EQ(store.GraphTotal, 2);
    Click(frmVaelAna.cmdManualFitting);
    EXPECT_EQ(v.GrpNo, 1);
    TypeAndLeave(v.txtPeakNum, "1");
    EXPECT_TRUE(Click(v.cmdExecute));
    EXPECT_EQ(store.GraphTotal, 2);
    // The line that was fitted again is in the table once.
    EXPECT_EQ(Peaks(1).PeakNum, 2);
    EXPECT_EQ(Peaks(0).PeakNum, 2);
}

TEST(ManualFit, EachSpectrumHasAFitGraphOfItsOwn) {
    ManualWorld world;
    world.Desk.ChooseFiles(
        {world.Folder.Write("one.npd", NpdText(GaussCounts(4096, 60.0, PAIR), "gold")),
         world.Folder.Write("two.npd", NpdText(GaussCounts(4096, 60.0, PAIR), "salt"))});
    Click(frmVaelAna.mnuLoad);
    const auto fit = [](int row) {
        Change_cboGrphSel(0, row);
        Click(frmVaelAna.cmdManualFitting);
        TypePair();
        EXPECT_TRUE(Click(v.cmdExecute));
    };
    fit(0);
    EXPECT_EQ(store.GraphTotal, 3);
    fit(2);
    ASSERT_EQ(store.GraphTotal, 4);
    EXPECT_EQ(store.GraphList[0].Name, "Fit");
    EXPECT_EQ(store.GraphList[1].Name, "Fit");
    EXPECT_EQ(store.GraphList[2].Name, "one.npd");
    fit(2);  // the first again: its own is the older one, in row 1
    EXPECT_EQ(store.GraphTotal, 4);
    EXPECT_EQ(Peaks(1).PeakNum, 2);
    EXPECT_EQ(Peaks(0).PeakNum, 2);
}

TEST(ManualFit, PeaksThatFindNoPlaceAreTold) {
    ManualWorld world;
    PeakTable& peaks = Item(store.PeakTables, DataNo());
    peaks.PeakNum = MAX_PEAKS - 1;
    for (int i = 0; i < peaks.PeakNum; ++i) {
        PeakRecord& peak = Item(peaks.Peak, i);
        peak.Position = 1000.0 + 10.0 * i;
        peak.StartCh = peak.EndCh = Whole16(peak.Position);
    }
    TypePair();
    EXPECT_TRUE(Click(v.cmdExecute));
    EXPECT_EQ(peaks.PeakNum, MAX_PEAKS);
    EXPECT_EQ(frmVaelAna.lblStatus.Caption,
              "Manual fit: the list is full, 1 peak of 2 found no place.");
}

TEST(ManualFit, AreaMarksAndBoxesAgreeBothWays) {
    ManualWorld world;
    std::int16_t start = 0;
    std::int16_t end = 0;
    Region("160", "280");
    EXPECT_EQ(frmVaelAna.chkArea.Value, 1);
    EXPECT_EQ(GetRegions(start, end), -1);
    EXPECT_EQ(start, 159);
    EXPECT_EQ(end, 279);
    SetArea(99, 149);
    EXPECT_EQ(v.txtStartCh.Text, "100");
    EXPECT_EQ(v.txtEndCh.Text, "150");
    EXPECT_EQ(v.StartCh, 100);
    EXPECT_EQ(v.EndCh, 150);
    Click(frmVaelAna.cmdOperation[7]);  // the area off
    EXPECT_EQ(v.txtStartCh.Text, "");
    EXPECT_EQ(v.EndCh, 0);
    Click(frmVaelAna.cmdOperation[7]);  // over the whole axis
    EXPECT_EQ(v.txtStartCh.Text, "1");
    EXPECT_EQ(v.txtEndCh.Text, "4096");
    Click(v.cmdCancel);
    SetArea(9, 19);
    EXPECT_EQ(v.StartCh, 1) << "not while it is closed";
    Click(frmVaelAna.cmdManualFitting);
    EXPECT_EQ(v.txtStartCh.Text, "10");
    EXPECT_EQ(v.txtEndCh.Text, "20");
}

TEST(ManualFit, OpenedWithoutAnAreaItPutsItsOwn) {
    ManualWorld world;
    TypePair();
    Click(v.cmdCancel);
    ClearArea();
    Click(frmVaelAna.cmdManualFitting);
    std::int16_t start = 0;
    std::int16_t end = 0;
    EXPECT_EQ(GetRegions(start, end), -1);
    EXPECT_EQ(start, 159);
    EXPECT_EQ(v.txtStartCh.Text, "160");
}

TEST(ManualFit, FollowsItsRowAndClosesWithIt) {
    ManualWorld world;
    world.Open({"one.npd", "two.npd", "three.npd"}, PAIR);
    EXPECT_FALSE(v.Visible) << "the rows it stood on were emptied";
    Change_cboGrphSel(0, 1);
    Click(frmVaelAna.cmdManualFitting);
    const int slot = v.Slot;
    EXPECT_EQ(v.GrpNo, 1);
    Change_cboGrphSel(0, 0);
    Click(frmVaelAna.mnuCloseGraph);
    EXPECT_TRUE(v.Visible);
    EXPECT_EQ(v.GrpNo, 0);
    EXPECT_EQ(v.Slot, slot);
    EXPECT_EQ(v.lblGraph.Caption, "Row 1   two.npd");
    Change_cboGrphSel(0, 1);
    Click(frmVaelAna.mnuSmooth);  // a new row 0
    EXPECT_EQ(v.GrpNo, 1);
    TypePair();
    EXPECT_TRUE(Click(v.cmdExecute));
    EXPECT_EQ(Item(store.PeakTables, slot).PeakNum, 2) << "its own spectrum, not the current one";
    EXPECT_EQ(DataNo(), slot);
    Click(frmVaelAna.cmdManualFitting);
    ASSERT_TRUE(v.Visible);
    Click(frmVaelAna.mnuCloseGraph);
    EXPECT_FALSE(v.Visible);
}

TEST(ManualFit, GoesByTheKeyboardAlone) {
    ManualWorld world;
    TypePair();
    PressEnter(v.txtWidth[1]);
    EXPECT_FALSE(v.Visible) << "Enter is \"Execute\"";
    EXPECT_EQ(Peaks(1).PeakNum, 2);
    Click(frmVaelAna.cmdManualFitting);
    Type(v.txtPeakNum, "1");
    PressEnter(v.txtPeakNum);
    EXPECT_TRUE(v.Visible) << "Enter there takes the number";
    Type(v.txtEndCh, "281");
    PressEnter(v.txtEndCh);
    EXPECT_TRUE(v.Visible);
    EXPECT_EQ(v.EndCh, 281);
    Key(v, {.Key = KeyPress::Name::Escape});
    EXPECT_FALSE(v.Visible);
    EXPECT_FALSE(v.OK);
}

TEST(ManualFit, TheSecondStartLeavesNothingOfIt) {
    ManualWorld world;
    TypePair();
    Rule(2, NAX_WIDTH, HeldBy::Fixed);
    Form_Load(world.Folder.Path());
    EXPECT_FALSE(v.Visible);
    EXPECT_EQ(v.txtStartCh.Text, "");
    EXPECT_EQ(v.txtCenterCh[1].Text, "");
    EXPECT_EQ(v.txtPeakNum.Text, "1");
    EXPECT_EQ(v.txtParamNum.Text, "3");
    EXPECT_EQ(v.grdConstraint.Rows(), 0);
}
