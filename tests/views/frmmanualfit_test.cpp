// The manual fit by the user's hand: rows, rules, refusals, what a fit leaves.
#include "support/manualworld.h"

#include "analysis/naxwalk.h"
#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/text.h"

using namespace vael;
using namespace vael::test::manual;

TEST(ManualFit, OpensBesideTheMainViewWithItsWords) {
    ManualWorld world;
    EXPECT_TRUE(v.Visible);
    EXPECT_FALSE(v.Modal);
    EXPECT_EQ(v.Caption, "Manual Fitting");
    EXPECT_EQ(v.lblStartCh.Caption, "START CH");
    EXPECT_EQ(v.lblEndCh.Caption, "END CH");
    EXPECT_EQ(v.lblPeakNum.Caption, "# of PEAK");
    EXPECT_EQ(v.lblParamNum.Caption, "# of PARAMETER");
    EXPECT_EQ(v.lblCenterCh.Caption, "CENTER CH");
    EXPECT_EQ(v.lblMaxCount.Caption, "MAX COUNT");
    EXPECT_EQ(v.lblWidth.Caption, "WIDTH");
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(v.lblRow[i].Caption, std::to_string(i + 1));
        EXPECT_EQ(v.cmdGetValue[i].Caption, "Input");
    }
    EXPECT_EQ(v.cmdExecute.Caption, "Execute");
    EXPECT_EQ(v.cmdInputFit.Caption, "FitSet");
    EXPECT_EQ(v.cmdCancel.Caption, "Cancel");
    EXPECT_EQ(v.lblGraph.Caption, "Row 1   pair.npd");
    EXPECT_EQ(v.cboRuleParam.Items,
              (std::vector<std::string>{"A  AMPLITUDE", "P  POSITION", "W  WIDTH"}));
    EXPECT_FALSE(Type(v.txtParamNum, "4"));
    EXPECT_TRUE(Click(v.cmdCancel));
    EXPECT_FALSE(v.Visible);
}

TEST(ManualFit, DoesNotOpenWithoutASpectrum) {
    World world;
    EXPECT_TRUE(Click(frmVaelAna.cmdManualFitting));
    EXPECT_FALSE(v.Visible);
    EXPECT_EQ(frmVaelAna.lblStatus.Caption, "There is no spectrum in this row.");
}

TEST(ManualFit, TheOperationButtonOpensItAfterAFitAndResetsTheAreaInExpressFitting) {
    ManualWorld world;
    Click(v.cmdCancel);
    EXPECT_FALSE(Click(frmVaelAna.cmdOperation[1])) << "switched off at the start";
    Click(frmVaelAna.cmdOperation[0]);
    AreaToWholeAxis();
    EXPECT_TRUE(Click(frmVaelAna.cmdOperation[1]));
    EXPECT_TRUE(v.Visible);
    EXPECT_EQ(v.StartCh, 1);
    EXPECT_EQ(v.EndCh, 4096);
    store.FitMode = 1;
    store.Rois.RoiNum = 1;
    EXPECT_TRUE(Click(frmVaelAna.cmdOperation[1]));
    EXPECT_EQ(store.Rois.RoiNum, 0);
    std::int16_t start = 0;
    std::int16_t end = 0;
    EXPECT_EQ(GetRegions(start, end), 0);
    EXPECT_EQ(v.txtStartCh.Text, "");
    EXPECT_EQ(v.txtEndCh.Text, "");
}

TEST(ManualFit, OneToFivePeaksShowAsManyRows) {
    ManualWorld world;
    for (int peaks : {1, 5, 3, 2, 4}) {
        EXPECT_TRUE(Type(v.txtPeakNum, std::to_string(peaks)));
        for (int i = 0; i < 5; ++i) {
            const auto row = static_cast<std::size_t>(i);
            for (const Control* control : std::initializer_list<const Control*>{
                     &v.lblRow[row], &v.txtCenterCh[row], &v.txtMaxCount[row], &v.txtWidth[row],
                     &v.cmdGetValue[row]})
                EXPECT_EQ(control->Visible, i < peaks) << control->Name;
        }
        EXPECT_EQ(v.txtParamNum.Text, std::to_string(3 * peaks));
        EXPECT_EQ(v.cboRulePeak.Items.size(), static_cast<std::size_t>(peaks));
    }
    for (const char* text : {"6", "0", "2.5", "two", ""}) {
        EXPECT_TRUE(Type(v.txtPeakNum, text));
        EXPECT_EQ(v.PeakNum, 4);
        EXPECT_TRUE(Leave(v.txtPeakNum));
        EXPECT_EQ(v.txtPeakNum.Text, "4") << text;
        EXPECT_NE(v.lblTold.Caption.find("1 to 5"), std::string::npos);
    }
}

TEST(ManualFit, InputTakesTheCursor) {
    ManualWorld world;
    Region("171", "261");
    CsrX_Change(200);
    EXPECT_TRUE(Click(v.cmdGetValue[0]));
    EXPECT_EQ(v.txtCenterCh[0].Text, "201");
    // The line through channels 170 and 260 stands on the 60 counts of the background.
    const SpectrumData& data = store.SpectrumDatas[static_cast<std::size_t>(DataNo())];
    const double line = data.Count[170] + (data.Count[260] - data.Count[170]) * 30.0 / 90.0;
    EXPECT_NEAR(v.MaxCount[0], data.Count[200] - line, 0.06);
    EXPECT_NEAR(v.ChWidth[0], 10.0, 0.7);
    EXPECT_EQ(v.ChWidth[0], ParseNumber(v.txtWidth[0].Text));
    CsrX_Change(170);  // on the line itself
    EXPECT_TRUE(Click(v.cmdGetValue[0]));
    EXPECT_EQ(v.txtCenterCh[0].Text, "201") << "nothing is half taken";
    EXPECT_NE(v.lblTold.Caption.find("channel 171"), std::string::npos);
}

TEST(ManualFit, LettersSpringBackAndNothingRunsOnWhatTheyReplaced) {
    ManualWorld world;
    TypePair();
    Type(v.txtCenterCh[0], "abc");
    EXPECT_TRUE(Click(v.cmdExecute));
    EXPECT_EQ(v.txtCenterCh[0].Text, "202");
    EXPECT_TRUE(v.Visible);
    EXPECT_EQ(Peaks(0).PeakNum, 0);
    EXPECT_EQ(v.lblTold.Caption, "CENTER CH 1: \"abc\" is no number here; it is 202 again.");
    EXPECT_EQ(frmVaelAna.lblStatus.Caption, v.lblTold.Caption);
    // Told once: now it is known that 202 stands there.
    EXPECT_TRUE(Click(v.cmdExecute));
    EXPECT_FALSE(v.Visible);
    EXPECT_EQ(Peaks(1).PeakNum, 2);
}

TEST(ManualFit, LettersInTheOtherBoxesSpringBackToo) {
    ManualWorld world;
    TypePair();
    std::int16_t start = 0;
    std::int16_t end = 0;
    for (const char* text : {"x", "1e9", "nan"}) {
        TypeAndLeave(v.txtStartCh, text);
        EXPECT_EQ(v.txtStartCh.Text, "160") << text;
        EXPECT_NE(v.lblTold.Caption.find("START CH"), std::string::npos);
        EXPECT_EQ(GetRegions(start, end), -1);
        EXPECT_EQ(start, 159);
    }
    TypeAndLeave(v.txtWidth[1], "wide");
    EXPECT_EQ(v.txtWidth[1].Text, "11");
    TypeAndLeave(v.txtMaxCount[1], "3500.5");
    EXPECT_TRUE(v.lblTold.Caption.empty()) << "a number that is one takes the sentence away";
    EXPECT_EQ(v.MaxCount[1], 3500.5);
    Type(v.txtMaxCount[1], "--");
    EXPECT_TRUE(PressEnter(v.txtMaxCount[1])) << "Enter is \"Execute\", which tells it";
    EXPECT_TRUE(v.Visible);
    EXPECT_EQ(v.txtMaxCount[1].Text, "3500.5");
}

TEST(ManualFit, ARowWithoutItsNumbersIsToldBeforeAnythingRuns) {
    ManualWorld world;
    Region("160", "280");
    EXPECT_TRUE(Click(v.cmdExecute));
    EXPECT_EQ(v.lblTold.Caption, "Peak 1 wants a CENTER CH above 0.");
    EXPECT_TRUE(v.Visible);
    EXPECT_TRUE(world.Desk.Asked.empty());
}

TEST(ManualFit, TheFittedPeaksJoinTheTableInOrderAndTheLogTellsThem) {
    ManualWorld world;
    const int slot = DataNo();
    PeakRecord far{};
    far.Position = 3000.0;
    far.StartCh = 2990;
    far.EndCh = 3010;
    Item(store.PeakTables, slot).Peak[0] = far;
    Item(store.PeakTables, slot).PeakNum = 1;
    TypePair();
    EXPECT_TRUE(Click(v.cmdExecute));
    EXPECT_FALSE(v.Visible);
    EXPECT_TRUE(v.OK);
    EXPECT_EQ(DataNo(), slot) << "the fitted spectrum is current";
    EXPECT_EQ(GraphNo(), 1);
    EXPECT_EQ(store.GraphList[0].Name, "Fit");
    const PeakTable& peaks = Item(store.PeakTables, slot);
    ASSERT_EQ(peaks.PeakNum, 3);
    EXPECT_NEAR(peaks.Peak[0].Position, 200.0, 0.1);
    EXPECT_NEAR(peaks.Peak[0].Width, 5.0, 0.1);
    EXPECT_NEAR(peaks.Peak[0].Amplitude, 8000.0, 200.0);
    EXPECT_NEAR(peaks.Peak[1].Position, 230.0, 0.2);
    EXPECT_EQ(peaks.Peak[2].Position, 3000.0);
    EXPECT_EQ(peaks.Peak[0].GaussRatio, 1.0);
    EXPECT_EQ(peaks.Peak[0].FitState, ALL_BITS);
    EXPECT_GT(peaks.Peak[0].Intensity, 0.0);
    EXPECT_LE(peaks.Peak[0].EndCh, peaks.Peak[1].StartCh);
    EXPECT_NEAR(store.SpectrumDatas[static_cast<std::size_t>(GetGraphDataNo(0))].Count[200], 8000,
                200);
    for (const char* name : {"AMPLITUDE 1 ", "POSITION 1 ", "WIDTH 1 ", "AMPLITUDE 2 "})
        EXPECT_TRUE(LogHas(name)) << name;
    EXPECT_TRUE(LogHas("       M"));
    EXPECT_EQ(frmVaelAna.lblStatus.Caption, "Manual fit: 2 peaks; the log tells them.");
    EXPECT_TRUE(world.Desk.Faults.empty());
}

TEST(ManualFit, TheRulesHoldInTheResult) {
    ManualWorld world;
    TypePair();
    Rule(1, NAX_WIDTH, HeldBy::Fixed);
    Rule(2, NAX_POSITION, HeldBy::Offset, 1, "30.25");
    Rule(2, NAX_WIDTH, HeldBy::Ratio, 1, "1.2");
    ASSERT_EQ(v.grdConstraint.Rows(), 3);
    EXPECT_EQ(v.grdConstraint.At(ManualFitView::PARAMETER, 1).Text, "W");
    EXPECT_EQ(v.grdConstraint.At(ManualFitView::RULE, 1).Text, "FIXED");
    EXPECT_EQ(v.grdConstraint.At(ManualFitView::RULE, 2).Text, "C  offset +");
    EXPECT_EQ(v.grdConstraint.At(ManualFitView::MASTER, 2).Text, "1");
    EXPECT_EQ(v.grdConstraint.At(ManualFitView::VALUE, 2).Text, "30.25");
    EXPECT_EQ(v.grdConstraint.At(ManualFitView::READS, 3).Text, "W2 = 1.2 * W1");
    EXPECT_EQ(v.txtParamNum.Text, "3");
    EXPECT_TRUE(Click(v.cmdExecute));
    const PeakTable& peaks = Peaks(1);
    ASSERT_EQ(peaks.PeakNum, 2);
    EXPECT_NEAR(2.0 * peaks.Peak[0].Width, 9.0, 1e-9);
    EXPECT_NEAR(2.0 * peaks.Peak[1].Width, 1.2 * 9.0, 1e-9);
    EXPECT_NEAR(peaks.Peak[1].Position - peaks.Peak[0].Position, 30.25, 1e-9);
    EXPECT_NE(peaks.Peak[0].Position, 201.0);
    EXPECT_TRUE(LogHas("FIXED M"));
}

TEST(ManualFit, AnOffsetOfAWidthIsInFullWidth) {
    ManualWorld world;
    TypePair();
    Rule(2, NAX_WIDTH, HeldBy::Offset, 1, "2.5");
    EXPECT_TRUE(Click(v.cmdExecute));
    const PeakTable& peaks = Peaks(1);
    ASSERT_EQ(peaks.PeakNum, 2);
    EXPECT_NEAR(2.0 * (peaks.Peak[1].Width - peaks.Peak[0].Width), 2.5, 1e-9);
}

TEST(ManualFit, RowsOutOfOrderAreSortedWithTheirRules) {
    ManualWorld world;
    Region("160", "280");
    TypeAndLeave(v.txtPeakNum, "2");
    Row(0, "230.50", "3500", "11");
    Row(1, "202", "7000", "9");
    Rule(1, NAX_POSITION, HeldBy::Offset, 2, "30");
    Rule(2, NAX_WIDTH, HeldBy::Fixed);
    EXPECT_TRUE(Click(v.cmdExecute));
    EXPECT_EQ(v.txtCenterCh[0].Text, "202");
    EXPECT_EQ(v.txtCenterCh[1].Text, "230.50") << "as it was typed";
    EXPECT_EQ(v.CenterCh[1], 230.5);
    EXPECT_EQ(v.txtMaxCount[0].Text, "7000");
    EXPECT_EQ(v.txtWidth[1].Text, "11");
    EXPECT_EQ(v.grdConstraint.At(ManualFitView::READS, 1).Text, "P2 = P1 + 30");
    EXPECT_EQ(v.grdConstraint.At(ManualFitView::READS, 2).Text, "W1 stays");
    const PeakTable& peaks = Peaks(1);
    ASSERT_EQ(peaks.PeakNum, 2);
    EXPECT_NEAR(peaks.Peak[1].Position - peaks.Peak[0].Position, 30.0, 1e-9);
    EXPECT_NEAR(2.0 * peaks.Peak[0].Width, 9.0, 1e-9);
}

TEST(ManualFit, ALinkToItselfIsRefusedAndAddsNothing) {
    ManualWorld world;
    TypePair();
    Rule(2, NAX_WIDTH, HeldBy::Ratio, 2, "1");
    EXPECT_EQ(v.lblTold.Caption, "Peak 2 cannot follow itself.");
    EXPECT_EQ(v.grdConstraint.Rows(), 0);
    Rule(2, NAX_WIDTH, HeldBy::Ratio, 1, "one");
    EXPECT_NE(v.lblTold.Caption.find("\"one\""), std::string::npos);
    EXPECT_EQ(v.grdConstraint.Rows(), 0);
}

TEST(ManualFit, ALinkToAPeakThatIsNotThereIsRefusedBeforeAnythingRuns) {
    ManualWorld world;
    TypePair();
    TypeAndLeave(v.txtPeakNum, "3");
    Rule(1, NAX_WIDTH, HeldBy::Ratio, 3, "1");
    TypeAndLeave(v.txtPeakNum, "2");
    EXPECT_TRUE(Click(v.cmdExecute));
    EXPECT_TRUE(v.Visible);
    EXPECT_EQ(v.lblTold.Caption, "Constraint \"W1 = 1 * W3\": no peak 3, there are 2 peaks.");
    EXPECT_EQ(Peaks(0).PeakNum, 0);
    EXPECT_TRUE(Click(v.cmdRuleRemove));
    EXPECT_EQ(v.grdConstraint.Rows(), 0);
    EXPECT_FALSE(v.cmdRuleRemove.Enabled);
    EXPECT_TRUE(Click(v.cmdExecute));
    EXPECT_EQ(Peaks(1).PeakNum, 2);
}

TEST(ManualFit, LinksInACircleAreAnErrorInFunctionCond) {
    ManualWorld world;
    TypePair();
    Rule(1, NAX_WIDTH, HeldBy::Ratio, 2, "1");
    Rule(2, NAX_WIDTH, HeldBy::Ratio, 1, "1");
    world.Desk.ExpectQuestion("Error in Function COND");
    EXPECT_TRUE(Click(v.cmdExecute));
    EXPECT_EQ(Peaks(0).PeakNum, 0);
}

TEST(ManualFit, ARuleIsReplacedAndAChosenLineStandsAboveTheGrid) {
    ManualWorld world;
    TypePair();
    Rule(2, NAX_WIDTH, HeldBy::Fixed);
    EXPECT_EQ(v.txtParamNum.Text, "5");
    Rule(2, NAX_WIDTH, HeldBy::Ratio, 1, "1.5");
    EXPECT_EQ(v.grdConstraint.Rows(), 1);
    EXPECT_EQ(v.txtParamNum.Text, "5");
    Rule(1, NAX_POSITION, HeldBy::Fixed);
    EXPECT_FALSE(v.txtRuleValue.Enabled);
    EXPECT_TRUE(Press(v.grdConstraint, ManualFitView::PEAK, 1));
    EXPECT_EQ(v.cboRulePeak.Index, 1);
    EXPECT_EQ(v.cboRuleParam.Index, NAX_WIDTH);
    EXPECT_EQ(v.cboRuleHow.Index, 2);
    EXPECT_EQ(v.txtRuleValue.Text, "1.5");
    EXPECT_TRUE(v.txtRuleValue.Enabled);
    Type(v.txtRuleValue, "1.75");
    PressEnter(v.txtRuleValue);  // Enter there is "Add"
    EXPECT_TRUE(v.Visible);
    EXPECT_EQ(v.grdConstraint.At(ManualFitView::READS, 1).Text, "W2 = 1.75 * W1");
}

TEST(ManualFit, AStartChannelAbove4096IsTheChannelError) {
    for (const int channels : {4096, 8192}) {
        ManualWorld world(PAIR, channels);
        TypePair();
        Region("5000", "5100");
        EXPECT_EQ(v.txtStartCh.Text, "5000");
        world.Desk.ExpectQuestion("StartChannel or EndChannel Error");
        EXPECT_TRUE(Click(v.cmdExecute));
        EXPECT_TRUE(v.Visible) << "no fit was run";
        EXPECT_EQ(v.txtStartCh.Text, "5000");
        EXPECT_EQ(Peaks(0).PeakNum, 0);
    }
}

TEST(ManualFit, WithoutARegionItIsTheChannelErrorToo) {
    ManualWorld world;
    TypePair();
    Region("", "280");
    world.Desk.ExpectQuestion("StartChannel or EndChannel Error");
    EXPECT_TRUE(Click(v.cmdExecute));
    Region("0", "280");
    world.Desk.ExpectQuestion("StartChannel or EndChannel Error");
    EXPECT_TRUE(Click(v.cmdExecute));
}

TEST(ManualFit, FiveHundredAndOneChannelsAreTheCondError) {
    ManualWorld world;
    TypePair();
    Region("100", "600");
    world.Desk.ExpectQuestion("Error in Function COND");
    EXPECT_TRUE(Click(v.cmdExecute));
    EXPECT_EQ(Peaks(0).PeakNum, 0);
    EXPECT_FALSE(v.Visible);
    EXPECT_TRUE(Click(frmVaelAna.cmdManualFitting));
    EXPECT_EQ(v.txtEndCh.Text, "600") << "all is there to be changed";
    EXPECT_EQ(v.txtWidth[1].Text, "11");
    Region("100", "599");
    EXPECT_TRUE(Click(v.cmdExecute));
    EXPECT_EQ(Peaks(1).PeakNum, 2);
}

TEST(ManualFit, AnEndBeforeTheStartIsTheCondError) {
    ManualWorld world;
    TypePair();
    Region("280", "160");
    std::int16_t start = 0;
    std::int16_t end = 0;
    EXPECT_EQ(GetRegions(start, end), -1);
    EXPECT_EQ(start, 279);
    EXPECT_EQ(end, 159);
    world.Desk.ExpectQuestion("Error in Function COND");
    EXPECT_TRUE(Click(v.cmdExecute));
    EXPECT_EQ(Peaks(0).PeakNum, 0);
}

TEST(ManualFit, AsManyChannelsAsUnknownsCanNotBeFitted) {
    ManualWorld world;
    TypePair();
    Region("201", "209");  // nine channels: two peaks of three and a background of three
    world.Desk.ExpectQuestion("Can not fit");
    EXPECT_TRUE(Click(v.cmdExecute));
    EXPECT_EQ(Peaks(0).PeakNum, 0);
    EXPECT_EQ(store.GraphTotal, 1) << "and no fit graph is made";
}

TEST(ManualFit, ThatDoesNotConvergeFailed) {
    ManualWorld world;
    TypePair();
    Row(1, "202", "7000", "9");  // the same columns twice
    world.Desk.ExpectQuestion("Failed to fit");
    EXPECT_TRUE(Click(v.cmdExecute));
    EXPECT_FALSE(v.Visible) << "the fit was run";
    EXPECT_EQ(Peaks(0).PeakNum, 0);
}
