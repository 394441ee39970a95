// ExpressFitting by the hand of a user: rows, tables, words.
#include "support/expressworld.h"

#include "analysis/expresscommands.h"
#include "analysis/frmsetting.h"
#include "core/cursors.h"
#include "core/fault.h"
#include "core/frmlog.h"
#include "core/operations.h"

#include <gtest/gtest.h>

namespace vael {
namespace {

using namespace test::express;

TEST(Express, TheTwoFittersAreOneChoice) {
    const Express w;
    EXPECT_EQ(store.FitMode, 1);
    EXPECT_TRUE(V().mnuExpressFit.Checked);
    EXPECT_FALSE(V().mnuNaxFit.Checked);
    EXPECT_EQ(V().lblFitter.Caption, "ExpressFitting");
    Click(V().mnuNaxFit);
    EXPECT_EQ(store.FitMode, 0);
    EXPECT_FALSE(V().mnuExpressFit.Checked);
    EXPECT_TRUE(V().mnuNaxFit.Checked);
}

TEST(Express, TheSettingsShowThresholdAndFunctionInThisMode) {
    Express w;
    w.Desk.OnModal([](View&) {
        EXPECT_TRUE(frmSetting.txtThres.Visible);
        EXPECT_TRUE(frmSetting.cboFuncType.Visible);
        EXPECT_FALSE(frmSetting.txtEACPS.Visible);
        Type(frmSetting.txtThres, "15");
        Pick(frmSetting.cboFuncType, 2);
        Click(frmSetting.cmdOk);
    });
    Click(V().mnuSetCons);
    EXPECT_EQ(settings.PeakThres, 15);
    EXPECT_EQ(settings.FuncType, SHAPE_MIX);
}

TEST(Express, TheFirstButtonSmoothsAndFitsTheWholeAxis) {
    Express w;
    w.OpenLines();
    Click(V().cmdOperation[0]);
    EXPECT_EQ(NameOf(GraphNo()), "Smooth");
    EXPECT_EQ(w.NamedRows("Fit"), 1);
    EXPECT_EQ(V().chkArea.Value, 1);
    std::int16_t start = 0;
    std::int16_t end = 0;
    ASSERT_EQ(GetRegions(start, end), TRUE_WORD);
    EXPECT_EQ(start, 0);
    EXPECT_EQ(end, store.SpanCh - 1);
    const int fit = GetGraphDataNo(RowOfName(NAME_FIT));
    ASSERT_EQ(Table(fit).PeakNum, Table(DataNo()).PeakNum);
    for (const GaussLine& line : w.Lines) {
        EXPECT_LT(w.Off(DataNo(), line.Center), 0.02) << line.Center;
        EXPECT_LT(w.Off(fit, line.Center), 0.02) << line.Center;
    }
    EXPECT_EQ(PeakOf(DataNo(), 0).Fitted, 1);
    EXPECT_EQ(PeakOf(DataNo(), 0).FitState, ALL_BITS);
    EXPECT_TRUE(V().cmdOperation[0].Enabled) << "the buttons change with NaxFitting only";
}

TEST(Express, TheThirdButtonFitsWithoutSmoothing) {
    Express w;
    const int slot = w.OpenLines();
    Click(V().cmdOperation[2]);
    EXPECT_EQ(w.NamedRows("Smooth"), 0);
    EXPECT_EQ(w.NamedRows("Fit"), 1);
    EXPECT_EQ(DataNo(), slot);
    EXPECT_LT(w.Off(slot, 1500.0), 0.001);
}

TEST(Express, AutoFittingRemovesTheBackgroundAndForgetsTheArea) {
    Express w;
    w.OpenLines();
    Click(V().cmdAutoFit);
    for (const char* name : {"Smooth", "BackGraund", "BackRemv", "Fit"})
        EXPECT_EQ(w.NamedRows(name), 1) << name;
    std::int16_t start = 0;
    std::int16_t end = 0;
    EXPECT_EQ(GetRegions(start, end), FALSE_WORD);
    for (std::size_t k = 1; k <= 4; ++k) EXPECT_FALSE(V().cmdOperation[k].Enabled) << k;
    const int fit = GetGraphDataNo(RowOfName(NAME_FIT));
    for (const GaussLine& line : w.Lines) EXPECT_LT(w.Off(fit, line.Center), 0.05) << line.Center;
}

TEST(Express, WithTheAreaOffOnlyThePeakBelowTheCursorIsFitted) {
    Express w;
    const int slot = w.OpenLines();
    Click(V().mnuPeakAllIns);
    const int found = Table(slot).PeakNum;
    ASSERT_GE(found, 3);
    CsrX_Change(1500);
    Click(V().mnuFitting);
    int fitted = 0;
    for (int i = 0; i < found; ++i) fitted += PeakOf(slot, i).Fitted;
    EXPECT_EQ(fitted, 1);
    const int row = FindPeakAt(Table(slot), 1500);
    ASSERT_GE(row, 0);
    EXPECT_EQ(PeakOf(slot, row).Fitted, 1);
    EXPECT_NEAR(PeakOf(slot, row).Position, 1500.0, 0.001);
    EXPECT_NEAR(PeakOf(slot, row).Amplitude, 9000.0, 90.0);
}

TEST(Express, WithoutAPeakBelowTheCursorNothingHappens) {
    Express w;
    w.OpenLines();
    CsrX_Change(3500);
    Click(V().mnuFitting);
    EXPECT_EQ(store.GraphTotal, 1);
    EXPECT_EQ(V().lblStatus.Caption, "There is no peak below the cursor.");
}

TEST(Express, FittingWithTheAreaOnTakesTheWholeAxisAndFittingAllTheAreaAsItIs) {
    Express w;
    const int slot = w.OpenLines();
    w.Area(1400, 1600);
    Click(V().mnuFittingAll);
    EXPECT_GT(w.Off(slot, 600.3), 100.0) << "outside the area";
    EXPECT_LT(w.Off(slot, 1500.0), 0.001);
    std::int16_t start = 0;
    std::int16_t end = 0;
    EXPECT_EQ(GetRegions(start, end), FALSE_WORD) << "Fitting All forgets the area";
    Table(slot) = PeakTable{};
    w.Area(1400, 1600);
    Click(V().mnuFitting);
    ASSERT_EQ(GetRegions(start, end), TRUE_WORD);
    EXPECT_EQ(start, 0);
    EXPECT_EQ(end, store.SpanCh - 1);
    EXPECT_LT(w.Off(slot, 600.3), 0.001);
}

TEST(Express, PeaksThatAreThereAreFittedWithoutANewSearch) {
    Express w;
    const int slot = w.OpenLines();
    w.Put(slot, {1502.0, 9000.0, 6.0}, {1480, 1520});
    w.Area(0, 4095);
    Click(V().mnuFittingAll);
    ASSERT_EQ(Table(slot).PeakNum, 1);
    EXPECT_NEAR(PeakOf(slot, 0).Position, 1500.0, 0.001);
    EXPECT_NEAR(PeakOf(slot, 0).Width, 6.0, 0.01);
}

TEST(Express, PeaksWhoseFitCannotStandAreCutAndCounted) {
    Express w;
    const int slot = w.OpenLines();
    for (const int at : {600, 1500}) {
        // A height of 4000 is more than three times that of the start.
        const double height = at < 1000 ? 900.0 : 9000.0;
        w.Put(slot, {1.0 * at, height, 6.0}, {at - 20, at + 20});
    }
    w.Area(0, 4095);
    w.Desk.ExpectQuestion("1 Peaks Cuted");
    Click(V().mnuFittingAll);
    ASSERT_EQ(Table(slot).PeakNum, 1);
    EXPECT_NEAR(PeakOf(slot, 0).Position, 1500.0, 0.01);
}

TEST(Express, AFunctionOutOfRangeIsTheGaussian) {
    Express w;
    const int slot = w.OpenLines();
    settings.FuncType = 7;
    w.Area(1400, 1600);
    Click(V().mnuFittingAll);
    EXPECT_EQ(settings.FuncType, SHAPE_GAUSS);
    EXPECT_EQ(PeakOf(slot, 0).FuncType, SHAPE_GAUSS);
}

TEST(Express, TheMixHasAGaussianShareOfOneForAGaussianLine) {
    Express w;
    const int slot = w.OpenLines();
    settings.FuncType = SHAPE_MIX;
    w.Put(slot, {1500.4, 9000.0, 5.5}, {1470, 1530}, SHAPE_MIX);
    w.Area(1400, 1600);
    Click(V().mnuFittingAll);
    ASSERT_EQ(Table(slot).PeakNum, 1);
    EXPECT_NEAR(PeakOf(slot, 0).GaussRatio, 1.0, 0.01);
    EXPECT_NEAR(PeakOf(slot, 0).Position, 1500.0, 0.001);
}

TEST(Express, TheFitGraphOfTheSameSpectrumIsWrittenAnewAndTheSourceStaysCurrent) {
    Express w;
    const int slot = w.OpenLines();
    w.Area(1400, 1600);
    Click(V().mnuFittingAll);
    EXPECT_EQ(DataNo(), slot);
    EXPECT_EQ(store.GraphTotal, 2);
    w.Area(500, 700);
    Click(V().mnuFittingAll);
    EXPECT_EQ(DataNo(), slot);
    EXPECT_EQ(store.GraphTotal, 2);
    const auto& curve =
        store.SpectrumDatas[static_cast<std::size_t>(GetGraphDataNo(RowOfName(NAME_FIT)))];
    EXPECT_NEAR(curve.Count[1500], 9000, 90) << "all peaks of the source are in it";
    EXPECT_NEAR(curve.Count[600], 3960, 90);
}

TEST(Express, TwoSpectraHaveTwoFitGraphs) {
    Express w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    for (const char* name : {"a.npd", "b.npd"}) {
        Change_cboGrphSel(0, RowOfName(name));
        w.Area(900, 1100);
        Click(V().mnuFittingAll);
        EXPECT_EQ(NameOf(GraphNo()), name);
    }
    EXPECT_EQ(w.NamedRows("Fit"), 2);
}

TEST(Express, AFitGraphIsNotTakenForThatOfALaterSpectrumInItsSlot) {
    Express w;
    const std::string file = w.Spectrum("a.npd");
    w.Open({file, w.Spectrum("b.npd")});
    w.Area(900, 1100);
    Click(V().mnuFittingAll);
    const int slot = DataNo();
    Change_cboGrphSel(0, RowOfName("b.npd"));
    Click(V().mnuSmooth);  // the row that the next file replaces
    DeleteGraph(RowOfSlot(slot));
    ASSERT_EQ(RowOfName("Fit"), 1);
    const int kept = GetGraphDataNo(1);
    w.Desk.ChooseFiles({file});  // the same one, so that no record tells them apart
    FileLoad();
    ASSERT_EQ(DataNo(), slot);
    w.Area(900, 1100);
    Click(V().mnuFittingAll);
    EXPECT_EQ(w.NamedRows("Fit"), 2);
    EXPECT_EQ(Item(store.FitSource, kept), 0);
}

TEST(Express, AFitGraphIsFittedInPlace) {
    Express w;
    w.OpenLines();
    w.Area(1400, 1600);
    Click(V().mnuFittingAll);
    Click(V().mnuGraphFit);
    w.Area(1400, 1600);
    Click(V().mnuFittingAll);
    EXPECT_EQ(store.GraphTotal, 2);
    EXPECT_EQ(NameOf(GraphNo()), "Fit");
    EXPECT_NEAR(PeakOf(DataNo(), 0).Position, 1500.0, 0.01);
}

TEST(Express, WithoutRoomForTheFitGraphThePeaksAreFittedAllTheSame) {
    Express w;
    std::vector<std::string> files;
    for (int i = 0; i < 10; ++i) files.push_back(w.Spectrum("f" + std::to_string(i) + ".npd"));
    w.Open(files);
    Change_cboGrphSel(0, 3);
    const int slot = DataNo();
    w.Area(900, 1100);
    w.Desk.ExpectQuestion("ShiftGraph: List Over!");
    Click(V().mnuFittingAll);
    EXPECT_EQ(DataNo(), slot);
    EXPECT_EQ(PeakOf(slot, 0).Fitted, 1);
    EXPECT_EQ(w.NamedRows("Fit"), 0);
}

TEST(Express, TheAreaOfALongerAxisIsHeldWithinTheSpectrum) {
    Express w;
    w.Open({w.Spectrum("long.npd", 8192), w.Spectrum("short.npd", 2048)});
    Change_cboGrphSel(0, RowOfName("short.npd"));
    Click(V().cmdOperation[2]);
    const PeakTable& peaks = Table(DataNo());
    ASSERT_GT(peaks.PeakNum, 0);
    for (int i = 0; i < peaks.PeakNum; ++i) EXPECT_LE(PeakOf(DataNo(), i).EndCh, 2047);
    const int before = peaks.PeakNum;
    w.Area(3000, 4000);
    Click(V().mnuFittingAll);
    EXPECT_EQ(V().lblStatus.Caption, "There is no peak in the area.");
    EXPECT_EQ(peaks.PeakNum, before);
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(Express, ASpectrumOfZerosHasNoPlaceForItsOnlyRecord) {
    Express w;
    w.Open({w.Folder.Write("zero.npd", NpdText(std::vector<std::int32_t>(4096)))});
    w.Desk.ExpectQuestion("intPeakNo=-1");  // its centre would be channel 0, the empty record
    Click(V().cmdOperation[2]);
    EXPECT_EQ(Table(DataNo()).PeakNum, 0);
    EXPECT_EQ(store.GraphTotal, 1);
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(Express, ANegativeCountInTheRegionBreaksNothing) {
    Express w;
    const int slot = w.OpenLines();
    for (int ch = 1400; ch < 1600; ch += 3)
        store.SpectrumDatas[static_cast<std::size_t>(slot)].Count[static_cast<std::size_t>(ch)] =
            -50;
    w.Area(1400, 1600);
    Click(V().mnuPeakAllIns);
    EXPECT_TRUE(w.Desk.Faults.empty());
    EXPECT_GE(Table(slot).PeakNum, 1);
}

TEST(Express, ARegionOf501ChannelsIsToldInTheLogAndTheRecordIsStillWritten) {
    Express w;
    const int slot = w.OpenLines();
    w.Put(slot, {1500.0, 9000.0, 6.0}, {1250, 1750});
    w.Area(1400, 1600);
    Click(V().mnuFittingAll);
    EXPECT_EQ(PeakOf(slot, 0).Fitted, 1);
    EXPECT_EQ(PeakOf(slot, 0).Width, 6.0) << "the start values";
    EXPECT_NE(frmLog.txtMessage.Text.find("Peak 1: (error) CFDQR2 : Many Data!"),
              std::string::npos);
}

TEST(Express, AFaultInAFitLeavesTheTableAsItWas) {
    Express w;
    const int slot = w.OpenLines();
    for (const double at : {1000.0, 1500.0}) {
        w.Put(slot, {at, 9000.0, 5.0}, {1480, 1520});
    }
    PeakOf(slot, 1).EndCh = 9000;  // no spectrum has it
    w.Area(0, 4095);
    Click(V().mnuFittingAll);
    EXPECT_EQ(w.Desk.Faults.size(), 1U);
    EXPECT_EQ(PeakOf(slot, 0).Fitted, 0);
    EXPECT_EQ(PeakOf(slot, 1).Width, 5.0);
    EXPECT_EQ(w.NamedRows("Fit"), 0);
}

TEST(Express, TheAreaOfAFittedPeakIsThatOfItsNewShape) {
    Express w;
    const int slot = w.OpenLines();
    Click(V().mnuPeakAllIns);
    CsrX_Change(1500);
    Click(V().mnuFitting);
    const PeakRecord& peak = PeakOf(slot, FindPeakAt(Table(slot), 1500));
    // Height times half width times sqrt(pi / ln 2) is the area of a Gaussian.
    EXPECT_NEAR(peak.Intensity, peak.Amplitude * peak.Width * 2.1289340388624525,
                1e-6 * peak.Intensity);
}

TEST(Express, FittingOfTheWholeAxisForgetsTheRegionsOfInterest) {
    Express w;
    w.OpenLines();
    CsrX_Change(100);
    Click(V().mnuRoiStart);
    CsrX_Change(200);
    Click(V().mnuRoiEnd);
    ASSERT_EQ(store.Rois.RoiNum, 1);
    w.Area(1400, 1600);
    Click(V().mnuFitting);
    EXPECT_EQ(store.Rois.RoiNum, 0);
}

TEST(Express, OnAnEmptyRowNoFitTakesTheRegionsAway) {
    Express w;
    w.OpenLines();
    CsrX_Change(100);
    Click(V().mnuRoiStart);
    CsrX_Change(200);
    Click(V().mnuRoiEnd);
    w.Area(1400, 1600);
    Pick(V().cboGrphSel[0], 5);
    Click(V().mnuFitting);
    Click(V().mnuFittingAll);
    EXPECT_EQ(store.Rois.RoiNum, 1);
}

}  // namespace
}  // namespace vael
