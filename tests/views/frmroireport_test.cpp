// The ROI report by the user's hand: what it lists, what may be typed, where a press leads.
#include "support/plotted.h"

#include "analysis/roi.h"
#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/regionmarks.h"

#include <gtest/gtest.h>

using namespace vael;

namespace {

using V = RoiReportView;
using Name = KeyPress::Name;

V& v = frmRoiReport;

/// A spectrum in slot 0 with counts by hand: 5 everywhere, 100 at channel 300, 70 at 900.
struct Regions : Plotted {
    Regions() {
        Open({Spectrum("gold.npd")});
        auto& counts = store.SpectrumDatas[0].Count;
        counts.fill(5);
        counts[300] = 100;
        counts[900] = 70;
        Add(290, 309);
        Add(895, 904);
    }
    static int Add(int start, int end) {
        return AddRoi(store.Rois, store.SpectrumDatas, 0, 0, static_cast<std::int16_t>(start),
                      static_cast<std::int16_t>(end), RoiColor(), RegionMarks());
    }
    /// A line of the list, its number first.
    static std::string Line(int row) {
        std::string out;
        for (int column = 0; column <= V::PEAK_COUNT; ++column)
            out += (column > 0 ? " " : "") + std::as_const(v.sprRoiInf).At(column, row).Text;
        return out;
    }
    static bool TypeCell(int column, int row, const std::string& text) {
        return Edit(v.sprRoiInf, column, row, text);
    }
    static std::string Status() { return frmVaelAna.lblStatus.Caption; }
};

}  // namespace

TEST(RoiReport, IsLoadedWithTheProgramAndHidden) {
    World w;
    EXPECT_FALSE(v.Visible);
    EXPECT_EQ(v.Caption, "ROI Report");
    EXPECT_EQ(v.cmdOk.Caption, "O K");
    EXPECT_EQ(v.lblMaxRoi.Caption, "Max ROI = 10");
    EXPECT_EQ(v.sprRoiInf.Rows(), 0);
}

TEST(RoiReport, ListsWhatIsCountedInEachRegion) {
    Regions w;
    EXPECT_TRUE(Click(frmVaelAna.mnuRoiReport));
    EXPECT_TRUE(v.Visible);
    EXPECT_EQ(w.Line(0), " DataNo MaxCh StartCh EndCh Area PeakCount");
    ASSERT_EQ(v.sprRoiInf.Rows(), 2);
    EXPECT_EQ(w.Line(1), "1 0 301 291 310 195 100");  // 19 * 5 + 100
    EXPECT_EQ(w.Line(2), "2 0 901 896 905 115 70");   // 9 * 5 + 70
    store.SpectrumDatas[0].Count[305] = 200;
    RefreshRoiReport();
    EXPECT_EQ(w.Line(1), "1 0 306 291 310 390 200") << "each region is counted anew";
    Click(v.cmdOk);
    EXPECT_FALSE(v.Visible);
}

TEST(RoiReport, ARegionOfZerosHasItsHighestCountAtTheFirstChannel) {
    Regions w;
    store.SpectrumDatas[0].Count.fill(0);
    Click(frmVaelAna.mnuRoiReport);
    EXPECT_EQ(w.Line(1), "1 0 1 291 310 0 0");
}

TEST(RoiReport, TenRegionsFindTheirPlace) {
    Regions w;
    for (int i = 0; i < 8; ++i) EXPECT_GE(w.Add(1000 + i, 1010 + i), 0);
    EXPECT_EQ(w.Add(2000, 2010), -1);
    Click(frmVaelAna.mnuRoiReport);
    EXPECT_EQ(v.sprRoiInf.Rows(), 10);
}

TEST(RoiReport, ADoubleClickOnTheNumberOfTheRegionOpensIt) {
    Regions w;
    CsrX_Change(900);
    EXPECT_EQ(frmVaelAna.itxtNoRoi.Text, "2");
    EXPECT_TRUE(DoubleClick(frmVaelAna.itxtNoRoi));
    EXPECT_TRUE(v.Visible);
    EXPECT_FALSE(DoubleClick(frmVaelAna.itxtNoPeak)) << "that one has no such use";
}

TEST(RoiReport, AnEndThatIsTypedGoesIntoTheRegion) {
    Regions w;
    Click(frmVaelAna.mnuRoiReport);
    EXPECT_TRUE(w.TypeCell(V::START_CH, 1, "300"));
    EXPECT_EQ(store.Rois.RoiTable[0].StartCh, 299);
    EXPECT_TRUE(w.TypeCell(V::END_CH, 1, "302"));
    EXPECT_EQ(w.Line(1), "1 0 301 300 302 110 100");
    EXPECT_EQ(w.Status(), "Region 1 goes from channel 300 to 302.");
    EXPECT_TRUE(w.TypeCell(V::START_CH, 1, "302")) << "a region of one channel";
    EXPECT_EQ(w.Line(1), "1 0 302 302 302 5 5");
    EXPECT_EQ(store.Rois.RoiTable[0].Color, RoiColor());
}

TEST(RoiReport, TheTableStaysInItsOrder) {
    Regions w;
    Click(frmVaelAna.mnuRoiReport);
    w.TypeCell(V::END_CH, 1, "2010");
    w.TypeCell(V::START_CH, 1, "2001");
    EXPECT_EQ(store.Rois.RoiTable[0].StartCh, 2000);
    EXPECT_EQ(store.Rois.RoiTable[1].StartCh, 895);
}

TEST(RoiReport, SenselessEndsSpringBackWithASentence) {
    Regions w;
    Click(frmVaelAna.mnuRoiReport);
    const std::string before = w.Line(1);
    const auto refused = [&](int column, const char* text) {
        TellStatus({});
        w.TypeCell(column, 1, text);
        EXPECT_EQ(w.Line(1), before) << text;
        EXPECT_EQ(store.Rois.RoiTable[0].StartCh, 290) << text;
        EXPECT_EQ(store.Rois.RoiTable[0].EndCh, 309) << text;
        EXPECT_NE(w.Status(), "") << text;
    };
    for (const char* text : {"0", "-3", "311", "292.5", "4097", "1e12", "left", ""})
        refused(V::START_CH, text);
    for (const char* text : {"0", "290", "4097", "right"}) refused(V::END_CH, text);
    for (const int column : {V::DATA_NO, V::MAX_CH, V::AREA, V::PEAK_COUNT})
        EXPECT_FALSE(w.TypeCell(column, 1, "1"));
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(RoiReport, APressOnARowJumpsThere) {
    Regions w;
    Click(frmVaelAna.mnuRoiReport);
    Press(v.sprRoiInf, V::AREA, 2);
    EXPECT_EQ(CursorCh(), 900);
    std::int16_t start = 0;
    std::int16_t end = 0;
    EXPECT_EQ(GetRegions(start, end), TRUE_WORD);
    EXPECT_EQ(start, 895);
    EXPECT_EQ(end, 904);
    EXPECT_EQ(w.MarksOf(0, MARK_AREA_LEFT), 3) << "the flag is seen";
    EXPECT_EQ(v.RoiNo, 1);
}

TEST(RoiReport, DeleteRemovesTheCurrentRow) {
    Regions w;
    Click(frmVaelAna.mnuRoiReport);
    EXPECT_TRUE(Key(v, {.Key = Name::Delete}));
    EXPECT_EQ(store.Rois.RoiNum, 2) << "no row is current yet";
    Press(v.sprRoiInf, V::AREA, 1);
    EXPECT_TRUE(Key(v, {.Key = Name::Delete}));
    ASSERT_EQ(store.Rois.RoiNum, 1);
    EXPECT_EQ(w.Line(1), "1 0 901 896 905 115 70");
    EXPECT_TRUE(Key(v, {.Key = Name::Delete}));
    EXPECT_TRUE(Key(v, {.Key = Name::Delete}));
    EXPECT_EQ(store.Rois.RoiNum, 0);
    EXPECT_EQ(w.Status(), "There is no region to remove.");
}

TEST(RoiReport, FollowsWhatOtherCommandsDoToTheTable) {
    Regions w;
    Click(frmVaelAna.mnuRoiReport);
    w.Add(2000, 2010);
    RedrawBoth();
    EXPECT_EQ(v.sprRoiInf.Rows(), 3);
    Click(frmVaelAna.cmdOperation[7]);  // on, and off: that empties the table
    Click(frmVaelAna.cmdOperation[7]);
    EXPECT_EQ(store.Rois.RoiNum, 0);
    EXPECT_EQ(v.sprRoiInf.Rows(), 0);
}

TEST(RoiReport, EscapeClosesIt) {
    Regions w;
    Click(frmVaelAna.mnuRoiReport);
    EXPECT_FALSE(Key(v, {.Key = Name::Enter}));
    EXPECT_TRUE(Key(v, {.Key = Name::Escape}));
    EXPECT_FALSE(v.Visible);
}

TEST(RoiReport, GoesWithTheProgram) {
    Regions w;
    Click(frmVaelAna.mnuRoiReport);
    v.RoiNo = 7;
    Click(frmVaelAna.mnuExit);
    EXPECT_FALSE(v.Visible);
    EXPECT_EQ(v.RoiNo, -1) << "unloaded: its form defaults are back";
    EXPECT_EQ(v.sprRoiInf.Rows(), 0);
}
