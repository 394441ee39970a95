// Regions of interest by the user's hand, and the marks of regions and peaks on the plots.
#include "core/regionmarks.h"

#include "analysis/peak.h"
#include "analysis/roi.h"
#include "analysis/roicommands.h"
#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/fitgraph.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/params.h"
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

Colour StrokeAt(int win, int slot, int channel) {
    return Engine()
        .Target(win)
        .Graph[static_cast<std::size_t>(slot)]
        .PlotColor[static_cast<std::size_t>(channel)];
}

struct Regions : Plotted {
    test::RecordingSurface Upper;
    ~Regions() { V().picGraph[0].PutOn(nullptr); }
    void Mark(int from, int to) {
        CsrX_Change(from);
        Click(V().mnuRoiStart);
        CsrX_Change(to);
        Click(V().mnuRoiEnd);
    }
    void Watch() {
        V().picGraph[0].PutOn(&Upper);
        Upper.Strokes.clear();
        RedrawBoth();
    }
    /// Texts on the upper plot, sorted.
    [[nodiscard]] std::vector<std::string> Numbers() const {
        std::vector<std::string> out;
        for (const auto& stroke : Upper.Strokes)
            if (stroke.What == test::Drawn::Kind::Text) out.push_back(stroke.Words);
        std::sort(out.begin(), out.end());
        return out;
    }
};

TEST(RoiByHand, TheEndWaitsForAStartAndTheChannelsComeInOrder) {
    Regions w;
    w.Open({w.Spectrum("a.npd")});
    EXPECT_FALSE(V().mnuRoiEnd.Enabled);
    CsrX_Change(1010);
    Click(V().mnuRoiStart);
    EXPECT_TRUE(V().mnuRoiEnd.Enabled);
    EXPECT_EQ(store.Rois.RoiNum, 0);
    CsrX_Change(990);
    Click(V().mnuRoiEnd);
    EXPECT_FALSE(V().mnuRoiEnd.Enabled);
    ASSERT_EQ(store.Rois.RoiNum, 1);
    const RoiRecord& roi = store.Rois.RoiTable[0];
    EXPECT_EQ(roi.StartCh, 990);
    EXPECT_EQ(roi.EndCh, 1010);
    EXPECT_EQ(roi.DataNo, DataNo());
    EXPECT_EQ(roi.Color, RoiColor());
    EXPECT_EQ(roi.MaxCh, 1000.0);
    EXPECT_EQ(roi.MaxCount, 5010.0);
    CsrX_Change(1000);
    EXPECT_EQ(V().itxtNoRoi.Text, "1");
}

TEST(RoiByHand, TheEleventhIsRefusedInTheStatusLine) {
    Regions w;
    w.Open({w.Spectrum("a.npd")});
    for (int i = 0; i < 10; ++i) w.Mark(100 * i + 10, 100 * i + 50);
    EXPECT_EQ(store.Rois.RoiNum, 10);
    w.Mark(2000, 2100);
    EXPECT_EQ(store.Rois.RoiNum, 10);
    EXPECT_EQ(V().lblStatus.Caption, "Max ROI = 10");
    EXPECT_FALSE(V().mnuRoiEnd.Enabled);
    EXPECT_EQ(StrokeAt(0, DataNo(), 2050), 0) << "and nothing is drawn";
}

TEST(RoiByHand, AnEmptyRowHasNone) {
    Regions w;
    w.Open({w.Spectrum("a.npd")});
    V().cboGrphSel[0].Index = 4;
    Click(V().mnuRoiStart);
    EXPECT_FALSE(V().mnuRoiEnd.Enabled);
}

TEST(RoiByHand, TheSecondStartForgetsAKeptStart) {
    Regions w;
    w.Open({w.Spectrum("a.npd")});
    CsrX_Change(1010);
    Click(V().mnuRoiStart);
    Form_Load_Proc();
    EXPECT_FALSE(V().mnuRoiEnd.Enabled);
}

TEST(RoiJump, MovesBothCursorsToTheNeighbourByItsHighestChannel) {
    Regions w;
    w.Open({w.Spectrum("a.npd", 4096, {{500.0, 900, 8}, {1000.0, 5000, 10}, {3000.0, 800, 8}})});
    w.Mark(490, 520);
    w.Mark(980, 1030);
    w.Mark(2990, 3020);
    CsrX_Change(600);
    Click(V().mnuRoiJumpN);
    EXPECT_EQ(CursorCh(), 1000);
    std::int16_t start = 0;
    std::int16_t end = 0;
    ASSERT_EQ(GetRegions(start, end), TRUE_WORD);
    EXPECT_EQ(start, 980);
    EXPECT_EQ(end, 1030);
    Click(V().mnuRoiJumpN);  // exactly on one: to the next, not to the same
    EXPECT_EQ(CursorCh(), 3000);
    Click(V().mnuRoiJumpN);
    EXPECT_EQ(CursorCh(), 3000);
    EXPECT_EQ(V().lblStatus.Caption, "This is the last region.");
    Click(V().mnuRoiJumpB);
    Click(V().mnuRoiJumpB);
    EXPECT_EQ(CursorCh(), 500);
    Click(V().mnuRoiJumpB);
    EXPECT_EQ(V().lblStatus.Caption, "This is the first region.");
}

TEST(RoiJump, LooksAtTheRegionsOfAllGraphs) {
    Regions w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    Change_cboGrphSel(0, 0);
    w.Mark(990, 1010);
    Change_cboGrphSel(0, 1);
    CsrX_Change(100);
    Click(V().mnuRoiJumpN);
    EXPECT_EQ(CursorCh(), 1000);
}

TEST(RoiJump, ARegionOfZerosIsAKeyAtTheFirstChannel) {
    Regions w;
    w.Open({w.Folder.Write("zero.npd", NpdText(std::vector<std::int32_t>(4096)))});
    w.Mark(2000, 2100);
    CsrX_Change(2500);
    Click(V().mnuRoiJumpB);
    EXPECT_EQ(CursorCh(), 0);
}

TEST(RegionMarks, TheCurveHasTheColourOfItsRegionFromStartToEnd) {
    Regions w;
    w.Open({w.Spectrum("a.npd")});
    w.Mark(990, 1010);
    const int slot = DataNo();
    EXPECT_EQ(StrokeAt(0, slot, 989), 0);
    EXPECT_EQ(StrokeAt(0, slot, 990), RoiColor());
    EXPECT_EQ(StrokeAt(0, slot, 1010), RoiColor());
    EXPECT_EQ(StrokeAt(0, slot, 1011), 0);
    std::int16_t ok = 0;
    ResetRoiAll(ok);
    RedrawBoth();
    EXPECT_EQ(StrokeAt(0, slot, 1000), 0);
}

TEST(RegionMarks, APeakColoursItsRegionUnderThatOfARegionOfInterest) {
    Regions w;
    w.Open({w.Spectrum("a.npd")});
    const int slot = DataNo();
    PeakRecord peak{};
    peak.Position = 1000.0;
    peak.StartCh = 980;
    peak.EndCh = 1020;
    AddPeak(0, 0, slot, peak, store.PeakTables[static_cast<std::size_t>(slot)], RegionMarks());
    EXPECT_EQ(StrokeAt(0, slot, 1000), PeakColor()) << "at once";
    w.Mark(1000, 1100);
    EXPECT_EQ(StrokeAt(0, slot, 999), PeakColor());
    EXPECT_EQ(StrokeAt(0, slot, 1000), RoiColor());
    CsrX_Change(1000);
    store.PeakTables[static_cast<std::size_t>(slot)].Peak[0].Width = 3.0;
    Click(V().mnuPeakDelete);
    EXPECT_EQ(StrokeAt(0, slot, 990), 0);
    EXPECT_EQ(StrokeAt(0, slot, 1000), RoiColor()) << "what the deletion uncovered is drawn";
}

TEST(RegionMarks, TheCurveOfAFitGraphKeepsItsOneColour) {
    Regions w;
    w.Open({w.Spectrum("a.npd")});
    Click(V().cmdAutoFit);
    const int fit = GetGraphDataNo(RowOfName(NAME_FIT));
    ASSERT_GT(store.PeakTables[static_cast<std::size_t>(fit)].PeakNum, 0);
    EXPECT_EQ(StrokeAt(0, fit, 1000), 0);
    const int source = GetGraphDataNo(RowOfName(NAME_REMOVED));
    EXPECT_EQ(StrokeAt(0, source, 1000), PeakColor());
}

TEST(RegionMarks, ARegionThatReachesBeyondTheSpectrumIsDrawnAsFarAsItGoes) {
    Regions w;
    w.Open({w.Spectrum("a.npd")});
    const int slot = DataNo();
    PeakRecord peak{};
    peak.Position = 10.0;
    peak.StartCh = -5;
    peak.EndCh = 9000;
    AddPeak(0, 0, slot, peak, store.PeakTables[static_cast<std::size_t>(slot)], RegionMarks());
    RedrawBoth();
    EXPECT_EQ(StrokeAt(0, slot, 0), PeakColor());
    EXPECT_EQ(StrokeAt(0, slot, 8191), PeakColor());
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(RegionLabels, EachRegionHasItsNumberAtItsMark) {
    Regions w;
    w.Open({w.Spectrum("a.npd")});
    w.Mark(990, 1010);
    w.Mark(200, 300);
    w.Watch();
    EXPECT_EQ(w.Numbers(), (std::vector<std::string>{"1", "2"}));
}

TEST(RegionLabels, ARegionOfAHiddenRowHasNone) {
    Regions w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    Change_cboGrphSel(0, 1);
    w.Mark(990, 1010);
    Tick(V().chkGrp[1]);
    w.Watch();
    EXPECT_TRUE(w.Numbers().empty());
}

TEST(RegionLabels, PeaksHaveTheirNumbersWhileTheirMarksAreOn) {
    Regions w;
    w.Open({w.Spectrum("a.npd")});
    w.AddPeakAt(DataNo(), 1000.0);
    w.AddPeakAt(DataNo(), 1000.3);  // its number would lie on the one before
    w.AddPeakAt(DataNo(), 3000.0);
    w.Watch();
    EXPECT_TRUE(w.Numbers().empty());
    w.Upper.Strokes.clear();
    Tick(V().chkPeakParameter);
    EXPECT_EQ(w.Numbers(), (std::vector<std::string>{"1", "3"}));
}

TEST(RegionLabels, WhereNumbersWouldLieOnEachOtherTheHighestLineKeepsItsOwn) {
    Regions w;
    w.Open({w.Spectrum("a.npd", 4096, {{1000.0, 3000, 10}, {1012.0, 3200, 10}})});
    w.AddPeakAt(DataNo(), 1000.0);
    w.AddPeakAt(DataNo(), 1012.0);
    w.Watch();
    w.Upper.Strokes.clear();
    Tick(V().chkPeakParameter);
    EXPECT_EQ(w.Numbers(), (std::vector<std::string>{"2"}));
}

TEST(RegionLabels, APeakNumberNeverLiesOnThatOfARegion) {
    Regions w;
    w.Open({w.Spectrum("a.npd")});
    w.Mark(3000, 3100);
    w.AddPeakAt(DataNo(), 3001.0);
    w.Watch();
    w.Upper.Strokes.clear();
    Tick(V().chkPeakParameter);
    EXPECT_EQ(w.Numbers(), (std::vector<std::string>{"1"})) << "the region's alone";
}

TEST(FitGraph, AHundredPeaksEachHeldAtTenMillionStayWithin32Bits) {
    Regions w;
    w.Open({w.Spectrum("a.npd")});
    const int slot = DataNo();
    for (int i = 0; i < MAX_PEAKS; ++i) w.AddPeakAt(slot, 1000.0 + i, 5000.0, 1e12);
    EXPECT_EQ(PutFitGraph(0, slot, FitRow::Own), 0);
    EXPECT_EQ(store.SpectrumDatas[static_cast<std::size_t>(GetGraphDataNo(0))].Count[1050],
              1000000000);
}

}  // namespace
}  // namespace vael
