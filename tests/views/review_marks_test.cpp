// What a reviewer found in marks, rows and reports: each of these tests says what should be seen.
#include "analysis/expresscommands.h"
#include "analysis/frmmanualfit.h"
#include "analysis/frmpeakreport.h"
#include "analysis/frmroireport.h"
#include "analysis/peak.h"
#include "analysis/peaktext.h"
#include "analysis/roi.h"
#include "analysis/roicommands.h"
#include "core/areamarks.h"
#include "core/cp932.h"
#include "core/cursors.h"
#include "core/expand.h"
#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/operations.h"
#include "core/regionmarks.h"
#include "core/units.h"
#include "support/plotted.h"
#include "support/recordingcanvas.h"
#include "toolkit/hand.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace vael {
namespace {

VaelAnaView& V() { return frmVaelAna; }

PeakTable& Table(int slot) { return Item(store.PeakTables, slot); }

Colour StrokeAt(int slot, int channel) {
    return Item(Item(Engine().Target(0).Graph, slot).PlotColor, channel);
}

int FitRows() {
    return static_cast<int>(std::count_if(
        store.GraphList.begin(), store.GraphList.end(),
        [](const GraphEntry& row) { return row.State != 0 && row.Name == NAME_FIT; }));
}

struct Review : Plotted {
    test::RecordingSurface Upper;
    ~Review() { V().picGraph[0].PutOn(nullptr); }
    static void Mark(int from, int to) {
        CsrX_Change(from);
        Click(V().mnuRoiStart);
        CsrX_Change(to);
        Click(V().mnuRoiEnd);
    }
    /// Numbers that a redraw writes on the upper plot.
    [[nodiscard]] std::vector<std::string> Numbers() {
        V().picGraph[0].PutOn(&Upper);
        Upper.Strokes.clear();
        RedrawBoth();
        std::vector<std::string> out;
        for (const auto& stroke : Upper.Strokes)
            if (stroke.What == test::Drawn::Kind::Text) out.push_back(stroke.Words);
        return out;
    }
    /// a.npd stays in window 0, b.npd goes to window 1 and is chosen there; window 0 is active.
    int TwoWindows() {
        Open({Spectrum("a.npd"), Spectrum("b.npd", 4096, {{2000.0, 4000, 12}})});
        Tick(V().chkGrp[11], 1);
        Pick(V().cboGrphSel[1], 1);
        const int b = DataNo();
        Pick(V().cboGrphSel[0], 0);
        return b;
    }
    static int ChosenIn(std::size_t win) {
        return GetGraphDataNo(std::max(0, V().cboGrphSel[win].Index));
    }
};

// --- an empty row -----------

TEST(ReviewEmptyRow, DeletingInTheAreaLeavesThePeaksOfOtherRowsAlone) {
    Review w;
    w.Open({w.Spectrum("a.npd")});
    w.AddPeakAt(DataNo(), 1000.0);
    const int slot = DataNo();
    Pick(V().cboGrphSel[0], 5);
    Click(V().cmdOperation[7]);
    Click(V().cmdOperation[4]);  // asks nothing: there is nothing to delete
    EXPECT_EQ(Table(slot).PeakNum, 1) << V().lblStatus.Caption;
}

// --- the second window -----------

TEST(ReviewSecondWindow, AFitInTheFirstLeavesItsChosenSpectrumChosen) {
    Review w;
    const int b = w.TwoWindows();
    Click(V().mnuExpressFit);
    Click(V().cmdOperation[2]);
    ASSERT_EQ(FitRows(), 1);
    EXPECT_EQ(w.ChosenIn(1), b) << "row " << V().cboGrphSel[1].Index;
}

TEST(ReviewSecondWindow, AnExpressFitThereFitsTheSpectrumThatWasChosenThere) {
    Review w;
    const int b = w.TwoWindows();
    Click(V().mnuExpressFit);
    Click(V().cmdOperation[2]);
    MouseDown(w.Plot(1), MouseButton::Left, 10, 10);
    MouseUp(w.Plot(1), MouseButton::Left, 10, 10);
    Click(V().cmdOperation[2]);
    EXPECT_EQ(Table(b).PeakNum, 1) << "its one line; instead slot " << DataNo() << " was fitted";
}

TEST(ReviewSecondWindow, AManualFitStaysInTheWindowOfItsSpectrum) {
    Review w;
    w.TwoWindows();
    const int a = DataNo();
    Click(V().cmdManualFitting);
    Pick(V().cboGrphSel[1], 1);  // to compare; the window of b is the active one now
    const auto put = [](TextBox& box, const std::string& text) {
        Type(box, text);
        Leave(box);
    };
    put(frmManualFit.txtStartCh, "960");
    put(frmManualFit.txtEndCh, "1042");
    put(frmManualFit.txtCenterCh[0], "1001");
    put(frmManualFit.txtMaxCount[0], "4500");
    put(frmManualFit.txtWidth[0], "9");
    Click(frmManualFit.cmdExecute);
    ASSERT_EQ(Table(a).PeakNum, 1);
    const int row = RowOfName(NAME_FIT);
    ASSERT_GE(row, 0);
    EXPECT_EQ(Item(store.GraphList, row).WinNo, 0) << "the curve belongs on its spectrum";
}

// --- what a cleared region leaves on the plot -----------

TEST(ReviewMarks, TakingTheAreaOffTakesTheColourOfTheRegionsItEmptiedOff) {
    Review w;
    w.Open({w.Spectrum("a.npd")});
    w.Mark(990, 1010);
    ASSERT_EQ(StrokeAt(DataNo(), 1000), RoiColor());
    Click(V().cmdOperation[7]);
    Click(V().cmdOperation[7]);
    ASSERT_EQ(store.Rois.RoiNum, 0);
    EXPECT_EQ(StrokeAt(DataNo(), 1000), 0);
}

TEST(ReviewMarks, TheManualFitOfExpressFittingTakesThemOffToo) {
    Review w;
    w.Open({w.Spectrum("a.npd")});
    w.Mark(990, 1010);
    Click(V().mnuExpressFit);
    V().cmdOperation[1].Enabled = true;  // as after a NAX run
    Click(V().cmdOperation[1]);
    ASSERT_EQ(store.Rois.RoiNum, 0);
    EXPECT_EQ(StrokeAt(DataNo(), 1000), 0);
}

TEST(ReviewMarks, EveryRegionHasItsNumberThoughTheOrderBroke) {
    Review w;
    w.Open({w.Spectrum("a.npd")});
    w.Mark(500, 600);
    w.Mark(1500, 1600);
    Click(V().mnuRoiReport);
    Edit(frmRoiReport.sprRoiInf, RoiReportView::END_CH, 1, "3001");
    Edit(frmRoiReport.sprRoiInf, RoiReportView::START_CH, 1, "2901");
    ASSERT_EQ(store.Rois.RoiTable[0].StartCh, 2900);
    EXPECT_EQ(w.Numbers().size(), 2U);
}

TEST(ReviewMarks, RegionsOnTwoGraphsInOnePlaceHaveBothNumbers) {
    Review w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd", 4096, {{1000.0, 300, 10}})});
    Pick(V().cboGrphSel[0], 0);
    w.Mark(990, 1010);
    Pick(V().cboGrphSel[0], 1);
    w.Mark(990, 1010);
    ASSERT_EQ(store.Rois.RoiNum, 2);
    EXPECT_EQ(w.Numbers().size(), 2U);
}

// --- the report -----------

TEST(ReviewPeakReport, ACentreThatASplitThrewFarAwayIsNoFaultOnAPress) {
    Review w;
    w.Open({w.Spectrum("a.npd")});
    w.AddPeakAt(DataNo(), -40000.0);
    Click(V().mnuPeakReport);
    Press(frmPeakReport.sprPeakInf, PeakReportView::CHANNEL, 1);
    EXPECT_TRUE(w.Desk.Faults.empty()) << w.Desk.Faults.front();
}

TEST(ReviewPeakReport, TheMemoOfAWidePeakFarAwayIsNoFault) {
    Review w;
    w.Open({w.Spectrum("a.npd")});
    w.AddPeakAt(DataNo(), -40000.0, 50000.0);
    DoubleClick(w.Plot(0), w.PixelOf(0, 1000), 50);
    EXPECT_TRUE(w.Desk.Faults.empty()) << w.Desk.Faults.front();
}

TEST(ReviewPeakReport, APointInTheNameOfTheMeasurementIsNoExtension) {
    Review w;
    w.Open({w.Spectrum("a.npd")});
    Item(store.PropertyRecords, DataNo()).FileName.SetBytes("MgO 1.5GPa");
    Click(V().mnuPeakReport);
    w.Desk.CancelSave();
    Click(frmPeakReport.cmdSave);
    ASSERT_EQ(w.Desk.SaveDialogs.size(), 1U);
    EXPECT_NE(w.Desk.SaveDialogs[0].Name, "MgO 1_Raw_FitParam.csv");
}

TEST(ReviewPeakReport, EveryUnitCanBeWrittenInTheFile) {
    for (int unit = UNIT_CH; unit <= UNIT_2THETA; ++unit)
        EXPECT_EQ(ToCp932(UnitAbbrev(unit)).find('?'), std::string::npos) << unit;
}

TEST(ReviewPeakReport, SetSaysWhenItDrewNothing) {
    Review w;
    w.Open({w.Spectrum("a.npd")});
    CsrX_Change(990);
    Click(V().mnuPeakIns);
    ASSERT_GT(Table(DataNo()).PeakNum, 0);
    Click(V().mnuPeakReport);
    Click(frmPeakReport.cmdPkSet);
    const auto& curve = Item(store.SpectrumDatas, GetGraphDataNo(RowOfName(NAME_FIT))).Count;
    const bool drawn = std::any_of(curve.begin(), curve.end(), [](int n) { return n != 0; });
    EXPECT_TRUE(drawn || V().lblStatus.Caption.find("is drawn") == std::string::npos)
        << V().lblStatus.Caption;
}

// --- Express -----------

TEST(ReviewExpress, ASplitThatWasRefusedIsNotToldAsDone) {
    Review w;
    w.Open({w.Spectrum("long.npd", 8192)});
    w.AddPeakAt(DataNo(), 1000.5);
    V().chkArea.Value = 1;
    SetArea(1, 4097);
    w.Desk.ExpectQuestion("too large region");
    Click(V().mnuPeakSep);
    EXPECT_EQ(V().lblStatus.Caption.find("Split channels"), std::string::npos)
        << V().lblStatus.Caption;
}

TEST(ReviewExpress, TheSameMeasurementInTwoRowsHasTwoFitGraphs) {
    Review w;
    const auto file = [&w](const std::string& name, double centre) {
        return w.Folder.Write(name, NpdText(GaussCounts(4096, 10, {{centre, 5000.0, 10.0}})));
    };
    w.Open({file("first.npd", 1000.0), file("second.npd", 2000.0)});
    Click(V().mnuExpressFit);
    Pick(V().cboGrphSel[0], 0);
    Click(V().cmdOperation[2]);
    Pick(V().cboGrphSel[0], 2);
    Click(V().cmdOperation[2]);
    EXPECT_EQ(FitRows(), 2) << "the first curve was written over";
}

// --- an angle axis -----------

TEST(ReviewAngleAxis, APeakWhoseFootIsAtAngleZeroDoesNotEndTheReport) {
    Review w;
    w.Open({w.Spectrum("a.npd")});
    Item(store.PropertyRecords, DataNo()).SourceType = SOURCE_DAC;
    store.DacOffset = 0.0;
    store.DacSlope = 0.02;
    w.AddPeakAt(DataNo(), 5.0, 5.0);
    w.AddPeakAt(DataNo(), 1000.0);
    CsrX_Change(1000);
    Pick(V().cboUnitX, UNIT_2THETA);
    Click(V().mnuPeakReport);
    EXPECT_TRUE(w.Desk.Faults.empty()) << w.Desk.Faults.front();
    EXPECT_EQ(std::as_const(frmPeakReport.sprPeakInf).At(PeakReportView::CHANNEL, 2).Text,
              "1001.0000");
}

TEST(ReviewAngleAxis, TheCursorOnTheFirstChannelAtAngleZeroIsNoFault) {
    Review w;
    w.Open({w.Spectrum("a.npd")});
    Item(store.PropertyRecords, DataNo()).SourceType = SOURCE_DAC;
    store.DacOffset = 0.0;
    store.DacSlope = 0.02;
    w.Press(KeyPress::Name::Right);
    w.Press(KeyPress::Name::Left);
    EXPECT_TRUE(w.Desk.Faults.empty()) << w.Desk.Faults.front();
}

// --- the close box, and cancel after another graph went -----------

TEST(ReviewPeakReport, TheCloseBoxLosesNoEdit) {
    Review w;
    w.Open({w.Spectrum("a.npd")});
    w.AddPeakAt(DataNo(), 1000.0);
    Click(V().mnuPeakReport);
    Edit(frmPeakReport.sprPeakInf, PeakReportView::AMPLITUDE, 1, "10");
    Close(frmPeakReport);
    EXPECT_EQ(Table(DataNo()).Peak[0].Amplitude, 10.0);
}

TEST(ReviewPeakReport, CancelMakesNoRowThatWasClosedInBetween) {
    Review w;
    w.Open({w.Spectrum("a.npd")});
    w.AddPeakAt(DataNo(), 1000.0);
    const int slot = DataNo();
    Click(V().mnuPeakReport);
    Edit(frmPeakReport.sprPeakInf, PeakReportView::AMPLITUDE, 1, "10");
    Click(frmPeakReport.cmdPkSet);
    ASSERT_EQ(FitRows(), 1);
    DeleteGraph(RowOfName(NAME_FIT));
    ASSERT_EQ(FitRows(), 0);
    Click(frmPeakReport.cmdCancel);
    EXPECT_EQ(Table(slot).Peak[0].Amplitude, 4000.0);
    EXPECT_EQ(FitRows(), 0);
}

TEST(ReviewPeakReport, CancelPutsTheTableBackWhereSetHadNoRoom) {
    Review w;
    std::vector<std::string> names;
    for (int i = 0; i < 10; ++i) names.push_back(w.Spectrum("s" + std::to_string(i) + ".npd"));
    w.Open(names);
    Pick(V().cboGrphSel[0], 3);
    const int slot = DataNo();
    w.AddPeakAt(slot, 1000.0);
    Click(V().mnuPeakReport);
    Edit(frmPeakReport.sprPeakInf, PeakReportView::AMPLITUDE, 1, "10");
    w.Desk.ExpectQuestion("ShiftGraph: List Over!");
    Click(frmPeakReport.cmdPkSet);
    Click(frmPeakReport.cmdCancel);
    EXPECT_EQ(Table(slot).Peak[0].Amplitude, 4000.0);
}

// --- regions of a graph that was closed -----------

TEST(ReviewRoi, ARegionOfAClosedGraphIsNotOnTheOneThatGetsItsSlot) {
    Review w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    Pick(V().cboGrphSel[0], 0);
    w.Mark(990, 1010);
    Click(V().mnuCloseGraph);
    Click(V().mnuSmooth);  // b's smoothed copy gets the slot
    EXPECT_EQ(StrokeAt(DataNo(), 1000), 0);
    CsrX_Change(1000);
    EXPECT_EQ(V().itxtNoRoi.Text, "");
}

TEST(ReviewRoi, TheJumpGoesToTheHighestChannelOfWhatIsThereNow) {
    Review w;
    w.Open({w.Spectrum("a.npd")});
    w.Mark(980, 1030);
    w.Open({w.Spectrum("b.npd", 4096, {{1020.0, 5000.0, 10.0}})});
    CsrX_Change(100);
    Click(V().mnuRoiJumpN);
    EXPECT_EQ(CursorCh(), store.Rois.RoiNum == 0 ? 100 : 1020);
}

// --- styles -----------

TEST(ReviewStyles, InAPileAFitGoesToThePlotAndItsSpectrumStaysChosen) {
    Review w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd", 4096, {{2000.0, 4000, 12}})});
    Tick(V().chkWinStyle, 1);
    Pick(V().cboGrphSel[0], 1);
    const int b = DataNo();
    Click(V().mnuExpressFit);
    Click(V().cmdOperation[2]);
    EXPECT_EQ(DataNo(), b);
    EXPECT_EQ(Table(b).PeakNum, 1);
    EXPECT_FALSE(WindowShown(1));
}

TEST(ReviewStyles, InExpandAFitKeepsTheMagnifiedPart) {
    Review w;
    w.Open({w.Spectrum("a.npd")});
    Tick(V().ckbExpand, 1);
    SetExpandArea(900, 200);
    Click(V().mnuExpressFit);
    Click(V().cmdOperation[2]);
    EXPECT_EQ(Table(DataNo()).PeakNum, 1);
    EXPECT_EQ(V().Windows[1].Start, 900);
    EXPECT_EQ(V().Windows[1].Span, 200);
    EXPECT_EQ(V().Windows[0].Span, 4096);
    Click(V().cmdManualFitting);
    EXPECT_EQ(frmManualFit.StartCh, 1);
    EXPECT_EQ(frmManualFit.EndCh, 4096);
}

// --- the manual fit -----------

TEST(ReviewManualFit, AMarkDraggedToTheFirstChannelIsTheFirstChannel) {
    Review w;
    w.Open({w.Spectrum("a.npd")});
    Click(V().cmdManualFitting);
    V().chkArea.Value = 1;
    SetArea(0, 200);
    EXPECT_EQ(frmManualFit.txtStartCh.Text, "1");
    EXPECT_EQ(frmManualFit.txtEndCh.Text, "201");
}

TEST(ReviewManualFit, InputAtAPlaceBehindAShortSpectrumFillsNothing) {
    Review w;
    w.Open({w.Spectrum("long.npd", 8192), w.Spectrum("short.npd", 512, {{200.0, 900, 8}})});
    Pick(V().cboGrphSel[0], 1);
    Click(V().cmdManualFitting);
    CsrX_Change(6000);
    Click(frmManualFit.cmdGetValue[0]);
    EXPECT_EQ(frmManualFit.txtCenterCh[0].Text, "");
    Click(V().mnuExpressFit);
    Click(V().cmdOperation[2]);
    EXPECT_EQ(Table(DataNo()).PeakNum, 1);
    EXPECT_TRUE(w.Desk.Faults.empty());
}

}  // namespace
}  // namespace vael
