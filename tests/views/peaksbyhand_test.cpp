// Peaks by the hand of a user: inserted, deleted, split.
#include "support/expressworld.h"

#include "analysis/calwavesprit.h"
#include "analysis/expresscommands.h"
#include "core/cursors.h"
#include "core/frmlog.h"

#include <gtest/gtest.h>

namespace vael {
namespace {

using namespace test::express;

TEST(InsertingPeaks, NeighboursWhoseRegionsOverlapAreParted) {
    Express w;
    // A line on the skirt of a broad one: the search gives them regions that reach into each other.
    w.Open(
        {w.Spectrum("skirt.npd", 4096, {{1147, 6470, 18}, {1173, 11214, 6}, {1133, 14201, 32}})});
    const int slot = DataNo();
    std::vector<PeakRecord> raw;
    ASSERT_EQ(PeakSearch(store.SpectrumDatas[static_cast<std::size_t>(slot)], 1000, 300,
                         settings.PeakThres, SHAPE_GAUSS, raw, Talk{}),
              1);
    ASSERT_EQ(raw.size(), 3U);
    ASSERT_GT(raw[0].EndCh, raw[1].StartCh);
    w.Area(1000, 1299);
    Click(V().mnuPeakAllIns);
    ASSERT_EQ(Table(slot).PeakNum, 3);
    EXPECT_EQ(PeakOf(slot, 0).EndCh + 1, PeakOf(slot, 1).StartCh);
}

TEST(InsertingPeaks, AllOverTheAxisWithoutAnArea) {
    Express w;
    const int slot = w.OpenLines();
    Click(V().mnuPeakAllIns);
    for (const GaussLine& line : w.Lines) EXPECT_LT(w.Off(slot, line.Center), 1.5) << line.Center;
    EXPECT_EQ(PeakOf(slot, 0).FitState, 0);
    EXPECT_EQ(PeakOf(slot, 0).Fitted, 0);
    EXPECT_GT(PeakOf(slot, 0).Intensity, 0.0);
    const int found = Table(slot).PeakNum;
    Click(V().mnuPeakAllIns);
    EXPECT_EQ(Table(slot).PeakNum, found) << "in place of those that were there";
}

TEST(InsertingPeaks, TheAreaLosesItsPeaksAndOthersStay) {
    Express w;
    const int slot = w.OpenLines();
    w.AddPeakAt(slot, 1450.0);
    w.AddPeakAt(slot, 3000.0);
    w.Area(1400, 1600);
    Click(V().mnuPeakAllIns);
    EXPECT_GT(w.Off(slot, 1450.0), 5.0);
    EXPECT_LT(w.Off(slot, 1500.0), 1.5);
    EXPECT_EQ(w.Off(slot, 3000.0), 0.0);
}

TEST(InsertingPeaks, AtTheCursorTwentyChannelsAreSearchedAndNothingGoes) {
    Express w;
    const int slot = w.OpenLines();
    w.AddPeakAt(slot, 1495.0);
    CsrX_Change(1490);
    Click(V().mnuPeakIns);
    EXPECT_EQ(w.Off(slot, 1495.0), 0.0);
    ASSERT_EQ(Table(slot).PeakNum, 2);
    EXPECT_NEAR(PeakOf(slot, 1).Position, 1500.0, 1.5);
    EXPECT_GE(PeakOf(slot, 1).StartCh, 1490);
    EXPECT_LE(PeakOf(slot, 1).EndCh, 1509);
}

TEST(InsertingPeaks, AFullTableSaysSoForEachRefusedPeak) {
    Express w;
    const int slot = w.OpenLines();
    w.Full(slot);
    CsrX_Change(1490);
    w.Desk.ExpectQuestion("intPeakNo=-1");
    Click(V().mnuPeakIns);
    EXPECT_EQ(Table(slot).PeakNum, MAX_PEAKS);
}

TEST(InsertingPeaks, MoreThanAHundredAreSaidAndAHundredKept) {
    Express w;
    std::vector<GaussLine> comb;
    for (int i = 0; i < 130; ++i) comb.push_back({40.0 + 30.0 * i, 9000.0, 6.0});
    w.Open({w.Spectrum("comb.npd", 4096, comb)});
    settings.PeakThres = 20;
    w.Desk.ExpectQuestion("No of Peak > 100 !");
    Click(V().mnuPeakAllIns);
    EXPECT_EQ(Table(DataNo()).PeakNum, MAX_PEAKS);
}

TEST(InsertingPeaks, EachFindsItsPlaceInATableThatAFitLeftOutOfOrder) {
    Express w;
    const int slot = w.OpenLines();
    w.AddPeakAt(slot, 2000.0);
    w.AddPeakAt(slot, 1000.0);  // moved past its neighbour
    w.Area(2600, 2800);
    Click(V().mnuPeakAllIns);
    ASSERT_GE(Table(slot).PeakNum, 3);
    EXPECT_EQ(PeakOf(slot, 0).Position, 2000.0);
    EXPECT_EQ(PeakOf(slot, 1).Position, 1000.0);
    EXPECT_LT(w.Off(slot, 2700.6), 1.5);
}

TEST(DeletingPeaks, TheOneBelowTheCursorGoes) {
    Express w;
    const int slot = w.OpenLines();
    w.AddPeakAt(slot, 1000.0);
    w.AddPeakAt(slot, 1500.0);
    CsrX_Change(1200);
    Click(V().mnuPeakDelete);
    EXPECT_EQ(Table(slot).PeakNum, 2);
    EXPECT_EQ(V().lblStatus.Caption, "There is no peak below the cursor.");
    CsrX_Change(1000);
    Click(V().mnuPeakDelete);
    ASSERT_EQ(Table(slot).PeakNum, 1);
    EXPECT_EQ(PeakOf(slot, 0).Position, 1500.0);
}

TEST(DeletingPeaks, AllOfTheRowGoAfterAQuestion) {
    Express w;
    const int slot = w.OpenLines();
    w.AddPeakAt(slot, 1000.0);
    w.AddPeakAt(slot, 1500.0);
    w.Desk.ExpectQuestion("It will deletes peaks in the range of the area cursor", Answer::No);
    Click(V().mnuPeakAllDelete);
    EXPECT_EQ(Table(slot).PeakNum, 2);
    w.Desk.ExpectQuestion("It will deletes peaks in the range of the area cursor", Answer::Yes);
    Click(V().mnuPeakAllDelete);
    EXPECT_EQ(Table(slot).PeakNum, 0);
    EXPECT_EQ(V().itxtNoPeak.Text, "");
}

TEST(PeakSplit, TwoThatOverlapAreFoundTogether) {
    Express w;
    w.Open({w.Spectrum("two.npd", 4096, {{1000.0, 5000, 12}, {1011.0, 3000, 12}})});
    const int slot = DataNo();
    w.AddPeakAt(slot, 999.0, 6.0, 5000.0);
    w.AddPeakAt(slot, 1012.0, 6.0, 3000.0);
    w.Area(960, 1050);
    Click(V().mnuPeakSep);
    ASSERT_EQ(Table(slot).PeakNum, 2);
    EXPECT_NEAR(PeakOf(slot, 0).Position, 1000.0, 0.3);
    EXPECT_NEAR(PeakOf(slot, 1).Position, 1011.0, 0.3);
    EXPECT_EQ(PeakOf(slot, 0).FuncType, SHAPE_GAUSS);
    EXPECT_EQ(PeakOf(slot, 0).FitState, ALL_BITS);
    EXPECT_NE(PeakOf(slot, 0).Intensity, 12345.67);
    EXPECT_EQ(w.NamedRows("Fit"), 1);
    EXPECT_EQ(DataNo(), slot);
}

TEST(PeakSplit, ARegionThatBeginsAtTheFirstChannelIsNotSplit) {
    Express w;
    const int slot = w.OpenLines();
    w.AddPeakAt(slot, 1500.0);
    w.Area(0, 4095);
    Click(V().mnuPeakSep);
    EXPECT_EQ(store.GraphTotal, 1);
    EXPECT_EQ(PeakOf(slot, 0).Intensity, 12345.67);
}

TEST(PeakSplit, MoreThan4096ChannelsAreToldAndThePeaksStay) {
    Express w;
    w.Open({w.Spectrum("long.npd", 8192)});
    const int slot = DataNo();
    w.AddPeakAt(slot, 1000.5);
    w.Area(1, 4097);
    w.Desk.ExpectQuestion("too large region");
    Click(V().mnuPeakSep);
    EXPECT_EQ(PeakOf(slot, 0).Position, 1000.5);
}

TEST(PeakSplit, ThePeakBelowTheCursorIsRefinedInItsRegion) {
    Express w;
    const int slot = w.OpenLines();
    w.AddPeakAt(slot, 1501.0, 6.0, 8000.0);
    PeakOf(slot, 0).StartCh = 1475;
    PeakOf(slot, 0).EndCh = 1525;
    CsrX_Change(1501);
    Click(V().mnuPeakSep);
    EXPECT_NEAR(PeakOf(slot, 0).Position, 1500.0, 0.2);
}

TEST(PeakSplit, ASolverThatGivesUpSaysSoAndThePeaksComeBackAsFarAsTheyCame) {
    Express w;
    const int slot = w.OpenLines();
    w.AddPeakAt(slot, 1500.0, 6.0, 9000.0);
    PeakOf(slot, 0).Width = 0.0;  // its shape divides by it
    PeakOf(slot, 0).StartCh = 1475;
    PeakOf(slot, 0).EndCh = 1525;
    w.Area(1475, 1525);
    w.Desk.ExpectQuestion("計算限界超えました。処理を終了します。");
    Click(V().mnuPeakSep);
    EXPECT_EQ(PeakOf(slot, 0).Position, 1500.0);
    EXPECT_NE(frmLog.txtMessage.Text.find("CalWaveSprit : (Error)  code=11"), std::string::npos);
    EXPECT_EQ(PeakOf(slot, 0).Intensity, 0.0) << "a width of 0 has no area";
}

TEST(ExpressCommands, WithoutASpectrumNothingIsDone) {
    Express w;
    for (Menu* item :
         {&V().mnuFitting, &V().mnuFittingAll, &V().mnuPeakSep, &V().mnuPeakIns, &V().mnuPeakAllIns,
          &V().mnuPeakDelete, &V().mnuPeakAllDelete, &V().mnuRoiStart}) {
        w.Desk.ExpectQuestion("ShiftGraph: Data Notting!");
        Click(*item);
    }
    EXPECT_EQ(store.GraphTotal, 0);
}

}  // namespace
}  // namespace vael
