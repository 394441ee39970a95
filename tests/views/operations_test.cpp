// The operation panel through the user's hand: derived rows and their contents.
#include "support/spectra.h"
#include "support/world.h"

#include "analysis/naxcommands.h"
#include "core/cursors.h"
#include "core/fault.h"
#include "core/graphs.h"
#include "core/operations.h"

#include <gtest/gtest.h>

using namespace vael;

namespace {

struct Panel : World {
    void Open(int channels = 1000, double background = 50,
              const std::vector<GaussLine>& lines = {{300.4, 2000, 9}, {600.7, 1500, 11}}) {
        Desk.ChooseFiles(
            {Folder.Write("s.npd", NpdText(GaussCounts(channels, background, lines)))});
        Click(frmVaelAna.mnuLoad);
    }
    /// Rows "r0.npd", "r1.npd", ... of six channels each.
    void OpenRows(int count) {
        std::vector<std::string> paths;
        for (int n = 0; n < count; ++n)
            paths.push_back(
                Folder.Write("r" + std::to_string(n) + ".npd", NpdText({1, 2, 3, 4, 5, 6})));
        Desk.ChooseFiles(paths);
        Click(frmVaelAna.mnuLoad);
    }
};

std::string Names() {
    std::string out;
    for (const GraphEntry& entry : store.GraphList)
        if (entry.State > 0) out += (out.empty() ? "" : " ") + entry.Name;
    return out;
}

std::int32_t CountAt(const std::string& name, int channel) {
    const int row = RowOfName(name);
    return Item(Item(store.SpectrumDatas, GetGraphDataNo(row)).Count, channel);
}

}  // namespace

TEST(Smooth, MakesARowAtTheTopAndTheSourceMovesDown) {
    Panel w;
    w.Open();
    Click(frmVaelAna.mnuSmooth);
    EXPECT_EQ(Names(), "Smooth s.npd");
    EXPECT_EQ(GraphNo(), 0);
    EXPECT_EQ(frmVaelAna.Caption, "Vael (Data Analyze) --- Smooth");
    // 1-4-6-4-1 over 16 by hand, from the counts of the source
    const auto& raw = store.SpectrumDatas[0].Count;
    const double by_hand =
        (raw[298] + 4.0 * raw[299] + 6.0 * raw[300] + 4.0 * raw[301] + raw[302]) / 16.0;
    EXPECT_NEAR(CountAt("Smooth", 300), by_hand, 0.5);
    EXPECT_EQ(store.PropertyRecords[1].Param.DerivedFlags, DERIVED_SMOOTH);
    EXPECT_EQ(store.PropertyRecords[0].Param.DerivedFlags, 0);
    EXPECT_EQ(store.PropertyRecords[1].Param.TwoTheta, 10.0) << "the property is copied";
}

TEST(Smooth, ASmoothRowIsSmoothedInPlaceAndKeepsItsRow) {
    Panel w;
    w.Open();
    Click(frmVaelAna.cmdOperation[3]);
    const auto once = CountAt("Smooth", 300);
    Pick(frmVaelAna.cboGrphSel[0], 0);
    Click(frmVaelAna.cmdOperation[3]);
    EXPECT_EQ(Names(), "Smooth s.npd");
    EXPECT_LT(CountAt("Smooth", 300), once) << "smoothed a second time";
}

TEST(Smooth, WithSmoothingOffTheRowEqualsItsSource) {
    Panel w;
    w.Open();
    settings.SmoothingOn = 0;
    Click(frmVaelAna.mnuSmooth);
    EXPECT_EQ(Names(), "Smooth s.npd");
    EXPECT_EQ(store.SpectrumDatas[1].Count, store.SpectrumDatas[0].Count);
}

TEST(Smooth, WithTenRowsTakenTheMessageIsShownAndTheSourceStays) {
    Panel w;
    w.OpenRows(10);
    Pick(frmVaelAna.cboGrphSel[0], 4);
    w.Desk.ExpectQuestion("ShiftGraph: List Over!");
    Click(frmVaelAna.mnuSmooth);
    EXPECT_EQ(Names(), "r0.npd r1.npd r2.npd r3.npd r4.npd r5.npd r6.npd r7.npd r8.npd r9.npd");
    EXPECT_EQ(GraphNo(), 4);
}

TEST(Smooth, WithNineRowsTakenItWorks) {
    Panel w;
    w.OpenRows(9);
    Click(frmVaelAna.mnuSmooth);
    EXPECT_EQ(store.GraphList[0].Name, "Smooth");
    EXPECT_EQ(store.GraphList[9].Name, "r8.npd");
}

TEST(Smooth, InPlaceItKeepsTheRowThatHoldsTheSlotAndTakesTheFilterOfTheSettings) {
    Panel w;
    w.Open();
    Click(frmVaelAna.mnuSmooth);
    Click(frmVaelAna.mnuBackGround);
    ASSERT_EQ(Names(), "BackRemv BackGraund Smooth s.npd");
    Pick(frmVaelAna.cboGrphSel[0], 2);
    const SpectrumData once = store.SpectrumDatas[1];
    settings.SmoothIndex = 1;
    Click(frmVaelAna.mnuSmooth);
    EXPECT_EQ(Names(), "BackRemv BackGraund Smooth s.npd");
    EXPECT_EQ(GraphNo(), 2);
    // -2 3 6 7 6 3 -2 over 21, by hand.
    const auto c = [&](std::size_t i) { return static_cast<double>(once.Count[i]); };
    const double by_hand =
        (-2 * (c(297) + c(303)) + 3 * (c(298) + c(302)) + 6 * (c(299) + c(301)) + 7 * c(300)) /
        21.0;
    EXPECT_NEAR(CountAt("Smooth", 300), by_hand, 0.5);
}

TEST(Smooth, EachFilterOfTheSettingsAnswersASingleChannelWithItsWeights) {
    struct Filter {
        std::int32_t Divisor;
        std::vector<std::int32_t> Weights;
    };
    const std::array<Filter, 4> filters{{{16, {1, 4, 6, 4, 1}},
                                         {21, {-2, 3, 6, 7, 6, 3, -2}},
                                         {231, {-21, 14, 39, 54, 59, 54, 39, 14, -21}},
                                         {429, {-36, 9, 44, 69, 84, 89, 84, 69, 44, 9, -36}}}};
    for (std::size_t k = 0; k < filters.size(); ++k) {
        Panel w;
        std::vector<std::int32_t> counts(40, 1000);
        counts[20] += filters[k].Divisor;
        w.Desk.ChooseFiles({w.Folder.Write("t.npd", NpdText(counts))});
        Click(frmVaelAna.mnuLoad);
        settings.SmoothIndex = static_cast<std::int16_t>(k);
        Click(frmVaelAna.mnuSmooth);
        const int half = static_cast<int>(filters[k].Weights.size()) / 2;
        for (int i = 0; i < 40; ++i) {
            const int at = i - 20 + half;
            const bool inside = at >= 0 && at <= 2 * half;
            EXPECT_EQ(CountAt("Smooth", i),
                      1000 + (inside ? filters[k].Weights[static_cast<std::size_t>(at)] : 0))
                << "filter " << k << ", channel " << i;
        }
    }
}

TEST(Smooth, AFilterThatIsNotThereLeavesTheRowsAsTheyAre) {
    Panel w;
    w.Open();
    settings.SmoothIndex = 4;
    Click(frmVaelAna.mnuSmooth);
    EXPECT_EQ(w.Desk.Faults.size(), 1u);
    EXPECT_EQ(store.GraphTotal, 1);
    EXPECT_EQ(store.GraphList[0].Name, "s.npd");
    EXPECT_EQ(store.GraphList[0].State, 1);
    EXPECT_EQ(store.SlotUsed[1], 0);
}

TEST(Background, TakesIntervalAndPassesOfTheSettingsAndTheSourcesProperty) {
    Panel w;
    w.Desk.ChooseFiles({w.Folder.Write("t.npd", NpdText({8, 20, 40, 20, 8, 20}))});
    Click(frmVaelAna.mnuLoad);
    settings.BackInterval = 2;
    settings.BackTimes = 1;
    store.SpectrumDatas[1].Count[7] = 99;  // beyond the spectrum: what a slot held stays
    store.SpectrumDatas[2].Count[7] = 99;
    Click(frmVaelAna.mnuBackGround);
    // Anchors 8, 40, 8 and channel 6, which holds 0: the first pass lowers 40 to 8, then 8 to 4.
    // Chords one channel to the right: from 8 to 8; from 8 to 4, a slope of -2: 10, 8; from 4 to 0:
    // 6, 4.
    const std::array<std::int32_t, 6> back{8, 8, 10, 8, 6, 4};
    const std::array<std::int32_t, 6> above{0, 12, 30, 12, 2, 16};
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(CountAt("BackGraund", i), back[static_cast<std::size_t>(i)]) << i;
        EXPECT_EQ(CountAt("BackRemv", i), above[static_cast<std::size_t>(i)]) << i;
    }
    EXPECT_EQ(CountAt("BackRemv", 7), 99);
    for (const char* name : {"BackGraund", "BackRemv"}) {
        const int slot = GetGraphDataNo(RowOfName(name));
        EXPECT_EQ(Item(store.SpectrumDatas, slot).DataNo, 6);
        EXPECT_EQ(Item(store.PropertyRecords, slot).Param.TwoTheta, 10.0);
    }
}

TEST(Background, ASecondPassWorksOnTheAnchorsOfTheFirst) {
    Panel w;
    w.Desk.ChooseFiles({w.Folder.Write("t.npd", NpdText({8, 20, 40, 20, 8, 20}))});
    Click(frmVaelAna.mnuLoad);
    settings.BackInterval = 2;
    settings.BackTimes = 2;
    Click(frmVaelAna.mnuBackGround);
    // Anchors 8 40 8 0, then 8 8 4 0, then 8 6 3 0; slopes -1, -1.5, -1.5, one channel to the
    // right.
    EXPECT_EQ(CountAt("BackGraund", 0), 9);
    EXPECT_EQ(CountAt("BackGraund", 1), 8);
    EXPECT_EQ(CountAt("BackGraund", 3), 6);
    EXPECT_EQ(CountAt("BackGraund", 5), 3);
    EXPECT_EQ(CountAt("BackRemv", 0), 0) << "nothing stands below 0";
}

TEST(Background, AnAnchorAtTheCapacityEndsTheCommandAndLeavesTheRowsAsTheyAre) {
    Panel w;
    w.Open(8192, 50, {});
    settings.BackInterval = 32;  // 256 intervals: the last anchor would be channel 8192
    Click(frmVaelAna.mnuBackGround);
    EXPECT_EQ(w.Desk.Faults.size(), 1u);
    EXPECT_EQ(store.GraphTotal, 1);
    EXPECT_EQ(Names(), "s.npd");
    EXPECT_EQ(store.GraphList[0].Name, "s.npd");
    EXPECT_EQ(GraphNo(), 0);
}

TEST(Background, LeavesTheRemovedCountsOnTopAndCurrentWithTheBackgroundBelow) {
    Panel w;
    w.Open();
    Click(frmVaelAna.mnuBackGround);
    EXPECT_EQ(Names(), "BackRemv BackGraund s.npd");
    EXPECT_EQ(GraphNo(), 0);
    EXPECT_NEAR(CountAt("BackGraund", 100), 50, 1);
    for (const int channel : {100, 300, 600})
        EXPECT_EQ(CountAt("BackRemv", channel),
                  std::max(0, store.SpectrumDatas[0].Count[static_cast<std::size_t>(channel)] -
                                  CountAt("BackGraund", channel)));
    EXPECT_EQ(store.PropertyRecords[1].Param.DerivedFlags, DERIVED_BACKGROUND);
    EXPECT_EQ(store.PropertyRecords[2].Param.DerivedFlags, DERIVED_REMOVED);
}

TEST(Background, ARemovedRowIsReusedInPlace) {
    Panel w;
    w.Open();
    Click(frmVaelAna.mnuBackGround);
    Click(frmVaelAna.mnuBackGround);
    EXPECT_EQ(Names(), "BackGraund BackRemv BackGraund s.npd")
        << "the removed row serves in place, its background is new";
}

TEST(Background, WithNineRowsTakenNothingIsHalfMade) {
    Panel w;
    w.OpenRows(9);
    w.Desk.ExpectQuestion("ShiftGraph: List Over!");
    Click(frmVaelAna.mnuBackGround);
    EXPECT_EQ(Names(), "r0.npd r1.npd r2.npd r3.npd r4.npd r5.npd r6.npd r7.npd r8.npd");
    EXPECT_EQ(store.GraphTotal, 9);
}

TEST(Background, AnIntervalOfZeroIsRefusedInItsWords) {
    Panel w;
    w.Open();
    settings.BackInterval = 0;
    w.Desk.ExpectQuestion("BackGrand Interval <= 0 !");
    Click(frmVaelAna.mnuBackGround);
    EXPECT_EQ(CountAt("BackGraund", 300), CountAt("s.npd", 300)) << "the data stay untouched";
}

TEST(Fit, ButtonTwoFitsTheRowAndEndsOnIt) {
    Panel w;
    w.Open();
    Click(frmVaelAna.cmdOperation[2]);
    EXPECT_EQ(Names(), "Fit BackRemv BackGraund s.npd");
    EXPECT_EQ(GraphNo(), 3) << "the source's row";
    EXPECT_EQ(store.AreaFitDone, -1);
    const PeakTable& peaks = store.PeakTables[0];
    ASSERT_EQ(peaks.PeakNum, 2);
    EXPECT_NEAR(peaks.Peak[0].Position, 300.4, 0.05);
    EXPECT_NEAR(peaks.Peak[1].Position, 600.7, 0.05);
    EXPECT_NEAR(peaks.Peak[0].Width * 2, 9, 0.2);
    EXPECT_NEAR(peaks.Peak[0].Amplitude, 2000, 30);
    EXPECT_EQ(peaks.Peak[0].FitState, 65535);
    EXPECT_EQ(peaks.Peak[0].GaussRatio, 1.0);
    const int fit = GetGraphDataNo(0);
    EXPECT_EQ(Item(store.PeakTables, fit).PeakNum, 2) << "the fit graph takes over the peaks";
    EXPECT_EQ(Item(store.PropertyRecords, fit).Param.DerivedFlags & DERIVED_FIT, DERIVED_FIT);
    EXPECT_EQ(store.PropertyRecords[0].Param.DerivedFlags & DERIVED_FIT, 0)
        << "and on no other slot, so that no fit overwrites counts";
    EXPECT_EQ(w.Desk.BusyTurns, 1);
    EXPECT_EQ(w.Desk.BusyDepth, 0);
}

TEST(Fit, ButtonZeroTwiceReplacesTheRowsAndMakesNone) {
    Panel w;
    w.Open();
    Click(frmVaelAna.cmdOperation[0]);
    EXPECT_EQ(Names(), "Fit BackRemv BackGraund Smooth s.npd");
    EXPECT_FALSE(frmVaelAna.cmdOperation[0].Enabled);
    EXPECT_FALSE(frmVaelAna.cmdOperation[2].Enabled);
    EXPECT_TRUE(frmVaelAna.cmdOperation[1].Enabled);
    EXPECT_TRUE(frmVaelAna.cmdOperation[4].Enabled);
    EXPECT_TRUE(Click(frmVaelAna.cmdOperation[1]));
    EXPECT_TRUE(frmManualFit.Visible) << "the smoothed row may be fitted by hand now";
    Click(frmManualFit.cmdCancel);
    EXPECT_EQ(store.GraphList[static_cast<std::size_t>(GraphNo())].Name, "Smooth");
    EXPECT_FALSE(Click(frmVaelAna.cmdOperation[0])) << "its own disabling forbids it by hand";
    cmdOperation_Click(0);
    EXPECT_EQ(Names(), "Fit BackRemv BackGraund Smooth s.npd");
    EXPECT_EQ(store.PeakTables[1].PeakNum, 2) << "the slot's table was emptied first";
}

TEST(Fit, TheNaxBackgroundIsStoredWhereItIsNotZeroAndTakenOff) {
    Panel w;
    w.Open();
    Click(frmVaelAna.cmdOperation[2]);
    EXPECT_NEAR(CountAt("BackGraund", 300), 50, 5);
    EXPECT_NEAR(CountAt("BackRemv", 300), CountAt("s.npd", 300) - CountAt("BackGraund", 300), 0);
    EXPECT_EQ(CountAt("BackGraund", 450), 0) << "no group reaches here";
    EXPECT_EQ(CountAt("BackRemv", 450), 0);
}

TEST(Fit, ALongSpectrumKeepsItsUpperHalfInTheBackgroundRowAndZeroInTheRemovedOne) {
    Panel w;
    w.Open(8192, 50, {{300.4, 2000, 9}, {6000.0, 2000, 9}});
    Click(frmVaelAna.mnuBackGround);
    Pick(frmVaelAna.cboGrphSel[0], 2);
    const auto before = CountAt("BackGraund", 6000);
    const auto slot = GetGraphDataNo(RowOfName("BackRemv"));
    Item(store.SpectrumDatas, slot).Count.fill(0);
    Click(frmVaelAna.cmdOperation[2]);
    EXPECT_EQ(CountAt("BackGraund", 6000), before) << "channels from 4096 on stay unchanged";
    EXPECT_EQ(CountAt("BackRemv", 6000), 0);
}

TEST(Fit, NoPeaksSayTheirWordsAndFitFailed) {
    Panel w;
    w.Open(1000, 50, {});
    w.Desk.ExpectQuestion("NO PEAKS ARE FOUND");
    w.Desk.ExpectQuestion("Fit Failed");
    Click(frmVaelAna.cmdOperation[2]);
    EXPECT_EQ(RowOfName("Fit"), -1);
    EXPECT_EQ(store.AreaFitDone, 0);
}

TEST(Fit, ARunTimeErrorInTheFitShowsItsAdvice) {
    Panel w;
    w.Open();
    store.GraphList[0].DataNo = 99;  // a slot that does not exist: the run ends in a fault
    w.Desk.ExpectQuestion(
        "Fitting was failed. Please change fit parameters(Change BG Coefficient to 5.0) and retry");
    try {
        cmdOperation_Click(2);
    } catch (const Fault&) {
        FAIL() << "the error was not caught";
    }
    EXPECT_EQ(w.Desk.BusyDepth, 0) << "the busy cursor is given back";
    store.GraphList[0].DataNo = 0;
}

TEST(Fit, ARunTimeErrorInsideTheFitEndsOnTheRowThatWasToBeFitted) {
    Panel w;
    w.Open();
    w.Desk.OnBreathe = [] { throw Fault(FaultNumber::Division, "Division by zero."); };
    w.Desk.ExpectQuestion(
        "Fitting was failed. Please change fit parameters(Change BG Coefficient to 5.0) and retry");
    Click(frmVaelAna.cmdOperation[2]);
    EXPECT_EQ(Names(), "BackRemv BackGraund s.npd");
    EXPECT_EQ(GraphNo(), 2) << "the rows moved under the selection";
    EXPECT_EQ(frmVaelAna.Caption, "Vael (Data Analyze) --- s.npd");
    EXPECT_EQ(w.Desk.BusyDepth, 0);
}

TEST(Fit, TheRemovedCountsOfANaxRunMayBeNegativeAndAreNoughtWithoutABackground) {
    Panel w;
    w.Desk.ChooseFiles({w.Folder.Write("a.npd", NpdText({10, 20, 30})),
                        w.Folder.Write("b.npd", NpdText({1, 2, 3})),
                        w.Folder.Write("c.npd", NpdText({7, 7, 7}))});
    Click(frmVaelAna.mnuLoad);
    store.BackGroundBuf.fill(0);
    store.BackGroundBuf[0] = 25;
    store.BackGroundBuf[2] = -4;
    store.BackGroundBuf[4095] = 6;
    store.BackGroundBuf[4096] = 6;
    StoreNaxBackground(1);
    const auto& back = store.SpectrumDatas[1].Count;
    EXPECT_EQ(back[0], 25);
    EXPECT_EQ(back[1], 2) << "where the fit has none the row keeps its own";
    EXPECT_EQ(back[2], -4);
    EXPECT_EQ(back[4095], 6);
    EXPECT_EQ(back[4096], 0) << "the length is fixed";
    StoreBackRemoved(0, 1, 2);
    const auto& removed = store.SpectrumDatas[2].Count;
    EXPECT_EQ(removed[0], -15);
    EXPECT_EQ(removed[1], 18);
    EXPECT_EQ(removed[2], 0) << "a background that is not above 0 removes all";
    EXPECT_EQ(removed[4095], -6);
    store.SpectrumDatas[0].Count[0] = -2147483647;
    EXPECT_THROW(StoreBackRemoved(0, 1, 2), Fault);
}

TEST(Fit, TheBackRowsOfANaxRunCarryTheSourcesPropertyAndTheirBits) {
    Panel w;
    w.Open(1000);
    EXPECT_EQ(MakeBackRows(0), 2) << "the source's new row";
    const auto of = [](const char* name) -> const PropertyRecord& {
        return Item(store.PropertyRecords, GetGraphDataNo(RowOfName(name)));
    };
    EXPECT_EQ(Names(), "BackRemv BackGraund s.npd");
    EXPECT_EQ(of("BackGraund").Param.DerivedFlags, DERIVED_BACKGROUND);
    EXPECT_EQ(of("BackRemv").Param.DerivedFlags, DERIVED_REMOVED);
    EXPECT_EQ(of("BackGraund").Param.TwoTheta, 10.0);
    EXPECT_EQ(of("BackRemv").Param.TwoTheta, 10.0);
    for (const char* name : {"BackGraund", "BackRemv"}) {
        EXPECT_EQ(Item(store.SpectrumDatas, GetGraphDataNo(RowOfName(name))).DataNo, 1000);
        EXPECT_EQ(CountAt(name, 300), 0) << "their curves are empty";
    }
}

TEST(Fit, TheSettingsAndTheGraphsAngleReachTheRun) {
    Panel w;
    w.Open();
    settings.EACPS = 0.75;
    settings.ISPPK = 31.0;
    settings.FuncType = SHAPE_MIX;
    store.PropertyRecords[0].Param.TwoTheta = -6.5;
    const NaxSettings run = NaxSettingsFor(0);
    EXPECT_EQ(run.EACPS, 0.75);
    EXPECT_EQ(run.ISPPK, 31.0);
    EXPECT_EQ(run.FuncType, SHAPE_MIX);
    EXPECT_EQ(run.TwoTheta, 6.5);
    settings.EACPS = 1e6;  // no curvature is as strong
    w.Desk.ExpectQuestion("NO PEAKS ARE FOUND");
    w.Desk.ExpectQuestion("Fit Failed");
    Click(frmVaelAna.cmdOperation[2]);
    EXPECT_EQ(GraphNo(), 2) << "the source's row, which two empty ones moved down";
}

TEST(Fit, TheFitGraphHasThePropertyOfItsSource) {
    Panel w;
    w.Open();
    Click(frmVaelAna.cmdOperation[2]);
    const PropertyRecord& prop = Item(store.PropertyRecords, GetGraphDataNo(RowOfName("Fit")));
    EXPECT_EQ(prop.Param.TwoTheta, 10.0);
    EXPECT_EQ(prop.Param.EgcCoef[1], 0.03);
    EXPECT_EQ(prop.SampleName.Trimmed(), "Au");
}

TEST(Fit, ARowThatIsAFitGraphTakesItsFitItself) {
    Panel w;
    w.Open();
    store.PropertyRecords[0].Param.DerivedFlags = DERIVED_FIT;
    Click(frmVaelAna.cmdOperation[2]);
    EXPECT_EQ(Names(), "BackRemv BackGraund Fit");
    EXPECT_EQ(GetGraphDataNo(RowOfName("Fit")), 0);
    EXPECT_EQ(CountAt("Fit", 450), 0) << "the curve of its peaks stands in place of its counts";
    EXPECT_NEAR(CountAt("Fit", 300), 2000, 60);
}

TEST(AutoFitting, SmoothsRemovesTheBackgroundAndFitsTheRest) {
    Panel w;
    w.Open();
    Click(frmVaelAna.cmdAutoFit);
    EXPECT_EQ(Names(), "Fit BackRemv BackGraund Smooth s.npd");
    ASSERT_EQ(store.PeakTables[3].PeakNum, 2) << "the peaks of the row BackRemv";
    EXPECT_NEAR(store.PeakTables[3].Peak[0].Position, 300.4, 0.1);
    for (std::size_t k = 1; k <= 4; ++k) EXPECT_FALSE(frmVaelAna.cmdOperation[k].Enabled) << k;
    EXPECT_EQ(frmVaelAna.Caption, "Vael (Data Analyze) --- Fit");
    EXPECT_NE(frmLog.txtMessage.Text.find("CONV"), std::string::npos);

    w.Open();
    EXPECT_TRUE(frmVaelAna.cmdOperation[3].Enabled) << "the next spectrum can be smoothed";
}

TEST(AutoFitting, WithTwoGraphsLoadedItDoesNothing) {
    Panel w;
    const std::string a = w.Folder.Write("a.npd", NpdText(GaussCounts(500, 20, {{200, 900, 8}})));
    w.Desk.ChooseFiles({a, a});
    Click(frmVaelAna.mnuLoad);
    Click(frmVaelAna.cmdAutoFit);
    EXPECT_EQ(Names(), "a.npd a.npd");
}

TEST(AutoFitting, WithNoSpectrumTheRowsSaySoAndNothingHappens) {
    Panel w;
    Click(frmVaelAna.cmdAutoFit);
    for (int n = 0; n < 4; ++n) w.Desk.ExpectQuestion("ShiftGraph: Data Notting!");
    Click(frmVaelAna.mnuSmooth);
    Click(frmVaelAna.mnuBackGround);
    Click(frmVaelAna.cmdOperation[0]);
    Click(frmVaelAna.cmdOperation[2]);
    EXPECT_EQ(Names(), "");
    EXPECT_EQ(store.GraphTotal, 0);
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(ClearAllData, EmptiesRowsAndPeaks) {
    Panel w;
    w.Open();
    Click(frmVaelAna.cmdOperation[2]);
    ClearAllData();
    EXPECT_EQ(Names(), "");
    EXPECT_EQ(store.GraphTotal, 0);
    EXPECT_EQ(store.PeakTables[0].PeakNum, 0);
}

TEST(ManualFit, PutsItsPeaksIntoTheTableAndAFitRow) {
    Panel w;
    w.Open();
    NaxManualInput input;
    input.StartCh = 260;
    input.EndCh = 350;
    input.Peaks = {{.CenterCh = 300, .MaxCount = 1800, .Width = 8}};
    EXPECT_EQ(NaxManualFit(0, 0, input), 0);
    EXPECT_EQ(Names(), "Fit s.npd");
    ASSERT_EQ(store.PeakTables[0].PeakNum, 1);
    EXPECT_NEAR(store.PeakTables[0].Peak[0].Position, 300.4, 0.01)
        << "0-based, one below the 1-based fit";
}

TEST(JumpPeak, MovesTheCursorAndLeavesTheUnroundedPosition) {
    Panel w;
    w.Open();
    Click(frmVaelAna.cmdOperation[2]);
    JumpPeak(0, 0, 1);
    EXPECT_NEAR(frmVaelAna.inumCursorCh.Value, 300.4, 0.05);
    JumpPeak(0, 300, 1);
    EXPECT_NEAR(frmVaelAna.inumCursorCh.Value, 600.7, 0.05);
    JumpPeak(0, 601, 1);
    EXPECT_NEAR(frmVaelAna.inumCursorCh.Value, 600.7, 0.05) << "from the last peak nothing moves";
}
