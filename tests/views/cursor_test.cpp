// The channel cursor, its keys, the area cursor, the mouse and the memo of the main view.
#include "support/plotted.h"

#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/fault.h"
#include "core/pointing.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace vael;
using K = KeyPress::Name;

namespace {

VaelAnaView& V() { return frmVaelAna; }

std::pair<int, int> Area() {
    std::int16_t start = 0;
    std::int16_t end = 0;
    (void)GetRegions(start, end);
    return {start, end};
}
using Ends = std::pair<int, int>;

}  // namespace

// --- the text step -----------

TEST(CursorStep, OneDownAtTheFirstChannelStaysThere) {
    Plotted w;
    spnCursor_SpinUpDown("-1");
    EXPECT_EQ(CursorCh(), 0);
    spnCursor_SpinUpDown("-");
    EXPECT_EQ(CursorCh(), 0);
}

TEST(CursorStep, TwentyUpNearTheEndStopsAtTheLastChannel) {
    Plotted w;
    CsrX_Change(4090);
    spnCursor_SpinUpDown("+20");
    EXPECT_EQ(CursorCh(), 4095);
    spnCursor_SpinUpDown("+");
    EXPECT_EQ(CursorCh(), 4095);
}

TEST(CursorStep, ASignMovesByOneASignedNumberByItAndAPlainNumberThere) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    CsrX_Change(100);
    spnCursor_SpinUpDown("+");
    EXPECT_EQ(CursorCh(), 101);
    spnCursor_SpinUpDown("-20");
    EXPECT_EQ(CursorCh(), 81);
    spnCursor_SpinUpDown("+0");
    EXPECT_EQ(CursorCh(), 81);
    spnCursor_SpinUpDown("1000");
    EXPECT_EQ(CursorCh(), 1000);
    EXPECT_EQ(V().inumCursorCh.Value, 1001) << "shown from 1";
    EXPECT_EQ(V().inumCursorCnt[0].Value, 5010);
    spnCursor_SpinUpDown("99999");
    EXPECT_EQ(CursorCh(), 4095) << "clipped like a signed one";
}

TEST(CursorStep, ATextThatIsNoNumberIsAFaultAndMovesNothing) {
    Plotted w;
    CsrX_Change(7);
    EXPECT_THROW(spnCursor_SpinUpDown("here"), Fault);
    EXPECT_EQ(CursorCh(), 7);
}

TEST(CursorStep, TheRangeFollowsByTheOverrun) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    ShowRange(1000, 100);
    CsrX_Change(1099);
    EXPECT_EQ(V().hsbStartX.Value, 1000);
    spnCursor_SpinUpDown("+20");
    EXPECT_EQ(V().hsbStartX.Value, 1020);
    EXPECT_EQ(CursorCh(), 1119);
    CsrX_Change(900);
    EXPECT_EQ(V().hsbStartX.Value, 900);
    EXPECT_EQ(Engine().Target(0).XStart, 900);
    EXPECT_EQ(Engine().Target(1).XEnd, 999);
}

TEST(CursorStep, ThePanelsButtonsStepByOne) {
    Plotted w;
    CsrX_Change(50);
    Click(V().spnCursor[1]);
    Click(V().cmdOperation[12]);
    EXPECT_EQ(CursorCh(), 52);
    Click(V().cmdOperation[11]);
    Click(V().spnCursor[0]);
    EXPECT_EQ(CursorCh(), 50);
}

TEST(CursorBox, ATypedChannelIsCountedFromOne) {
    Plotted w;
    Type(V().inumCursorCh, "200");
    PressEnter(V().inumCursorCh);
    EXPECT_EQ(CursorCh(), 199);
    EXPECT_EQ(V().inumCursorDisp[0].Text(), "200");
    Type(V().inumCursorCh, "99999");
    Click(V().spnCursor[0]);  // an act elsewhere leaves the box
    EXPECT_EQ(CursorCh(), 4094);
}

// --- keys -----------

TEST(CursorKeys, LeftAndRightStepByOneWithShiftByTwentyWithAltNot) {
    Plotted w;
    CsrX_Change(500);
    EXPECT_TRUE(w.Press(K::Left));
    EXPECT_EQ(CursorCh(), 499);
    EXPECT_TRUE(w.Press(K::Left, true));
    EXPECT_EQ(CursorCh(), 479);
    EXPECT_TRUE(w.Press(K::Right));
    EXPECT_TRUE(w.Press(K::Right, true));
    EXPECT_EQ(CursorCh(), 500);
    EXPECT_FALSE(w.Press(K::Left, false, false, true)) << "that is the jump of the menu";
    EXPECT_FALSE(w.Press(K::Right, false, false, true));
    EXPECT_EQ(CursorCh(), 500);
}

TEST(CursorKeys, WithControlTheCursorIsOneEndOfAnAreaAndTheOtherFollows) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    CsrX_Change(500);
    w.Press(K::Right, false, true);
    EXPECT_EQ(V().chkArea.Value, 1);
    EXPECT_EQ(Area(), (Ends{500, 501}));
    w.Press(K::Right, true, true);
    EXPECT_EQ(Area(), (Ends{500, 521}));
    EXPECT_EQ(CursorCh(), 521);
    for (int i = 0; i < 30; ++i) w.Press(K::Left, false, true);
    EXPECT_EQ(Area(), (Ends{491, 500})) << "across the first end it becomes the left one";
    CsrX_Change(800);
    w.Press(K::Left, true, true);
    EXPECT_EQ(Area(), (Ends{780, 800})) << "elsewhere a new area begins";
}

TEST(CursorKeys, PagesAndEndsMoveTheRange) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    ShowRange(1000, 500);
    w.Press(K::PageDown);
    EXPECT_EQ(V().hsbStartX.Value, 1250);
    w.Press(K::PageUp);
    w.Press(K::PageUp);
    EXPECT_EQ(V().hsbStartX.Value, 750);
    w.Press(K::End);
    EXPECT_EQ(V().hsbStartX.Value, 4096 - 500);
    w.Press(K::Home);
    EXPECT_EQ(V().hsbStartX.Value, 0);
    EXPECT_EQ(V().imnSpanCh.Value, 500);
}

TEST(CursorKeys, WhatIsNotAKeyOfTheViewIsLeftToTheWidget) {
    Plotted w;
    EXPECT_FALSE(w.Press(K::Enter));
    EXPECT_FALSE(w.Press(K::Up, false, false, true));
    EXPECT_FALSE(w.Press(K::Add, false, true));
}

// --- marks -----------

TEST(CursorMark, StandsInEachWindowThatDrawsAGraph) {
    Plotted w;
    CsrX_Change(100);
    EXPECT_EQ(w.MarksOf(0, MARK_CURSOR), 0) << "nothing is drawn yet";
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    CsrX_Change(100);
    EXPECT_EQ(w.MarksOf(0, MARK_CURSOR), 1);
    EXPECT_EQ(w.MarksOf(1, MARK_CURSOR), 0);
    Tick(V().chkGrp[11]);  // b into the lower window
    CsrX_Change(120);
    EXPECT_EQ(w.MarksOf(1, MARK_CURSOR), 1);
    EXPECT_EQ(Engine().Target(1).Mark[0].X, 120.0F);
    EXPECT_EQ(Engine().Target(1).MarkNum, 1) << "the old mark is gone";
}

TEST(CursorMark, ChangesItsStyleAtOnce) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    CsrX_Change(300);
    ASSERT_EQ(Engine().Target(0).MarkNum, 1);
    EXPECT_EQ(V().chkCsrType.Value, 1);
    EXPECT_EQ(Engine().Target(0).Mark[0].Y2 - Engine().Target(0).Mark[0].Y,
              static_cast<float>(YFullScale(0)))
        << "a line of the full height";
    Tick(V().chkCsrType);
    ASSERT_EQ(Engine().Target(0).MarkNum, 1);
    EXPECT_FLOAT_EQ(Engine().Target(0).Mark[0].Y2 - Engine().Target(0).Mark[0].Y,
                    static_cast<float>(YFullScale(0)) / 10.0F)
        << "a short one";
    EXPECT_GT(Engine().Target(0).Mark[0].Y, 10.0F) << "above the count";
}

// --- peaks -----------

TEST(PeakKeys, TheJumpGoesFromPeakToPeakAndStopsAtTheEnds) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    w.AddPeakAt(0, 300.4);
    w.AddPeakAt(0, 600.7);
    Click(V().mnuPeakJumpN);
    EXPECT_EQ(CursorCh(), 300);
    EXPECT_NEAR(V().inumCursorCh.Value, 300.4, 1e-9) << "the unrounded centre";
    EXPECT_EQ(V().inumCursorCh.Text(), "300.40");
    EXPECT_EQ(V().itxtNoPeak.Text, "1");
    Click(V().cmdOperation[8]);
    EXPECT_EQ(CursorCh(), 601);
    EXPECT_EQ(V().itxtNoPeak.Text, "2");
    Click(V().mnuPeakJumpN);
    EXPECT_EQ(CursorCh(), 601);
    EXPECT_EQ(V().lblStatus.Caption, "This is the last peak.");
    Click(V().cmdOperation[6]);
    EXPECT_EQ(CursorCh(), 300);
    Click(V().mnuPeakJumpB);
    EXPECT_EQ(CursorCh(), 300);
    EXPECT_EQ(V().lblStatus.Caption, "This is the first peak.");
    Click(V().spnCursor[1]);
    EXPECT_EQ(V().inumCursorCh.Text(), "302") << "a step shows whole channels again";
}

TEST(PeakKeys, ARowWithoutPeaksSaysSo) {
    Plotted w;
    Click(V().cmdOperation[8]);
    EXPECT_EQ(V().lblStatus.Caption, "There are no peaks in this row.");
}

TEST(CursorNumbers, RegionAndPeakUnderTheCursorAreNumberedFromOne) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    w.AddPeakAt(0, 300.0, 5.0);
    store.Rois.RoiNum = 2;
    store.Rois.RoiTable[0].StartCh = 100;
    store.Rois.RoiTable[0].EndCh = 120;
    store.Rois.RoiTable[1].StartCh = 290;
    store.Rois.RoiTable[1].EndCh = 310;
    CsrX_Change(304);
    EXPECT_EQ(V().itxtNoPeak.Text, "1");
    EXPECT_EQ(V().itxtNoRoi.Text, "2");
    CsrX_Change(305);
    EXPECT_EQ(V().itxtNoPeak.Text, "") << "the boundary is outside";
    CsrX_Change(310);
    EXPECT_EQ(V().itxtNoRoi.Text, "") << "the boundary is outside";
}

// --- the area cursor -----------

TEST(AreaCursor, TheButtonTakesTheWholeAxisAndTicksTheBoxAndTakesItBack) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    store.Rois.RoiNum = 1;
    Click(V().cmdOperation[7]);
    EXPECT_EQ(V().chkArea.Value, 1);
    EXPECT_EQ(Area(), (Ends{0, 4095}));
    EXPECT_TRUE(V().cmdOperation[4].Enabled) << "what deletes in the area goes with it";
    EXPECT_EQ(w.MarksOf(0, MARK_AREA_LEFT), 3) << "a flag of three strokes";
    EXPECT_EQ(w.MarksOf(0, MARK_AREA_RIGHT), 3);
    EXPECT_EQ(store.Rois.RoiNum, 1);
    Click(V().cmdOperation[7]);
    EXPECT_EQ(V().chkArea.Value, 0);
    EXPECT_EQ(Area(), (Ends{-1, -1}));
    EXPECT_EQ(store.Rois.RoiNum, 0);
    EXPECT_FALSE(V().cmdOperation[4].Enabled);
    EXPECT_EQ(w.MarksOf(0, MARK_AREA_LEFT), 0);
    EXPECT_EQ(w.MarksOf(0, MARK_AREA_RIGHT), 0);
}

TEST(AreaCursor, TheFlagHasTheToldStrokes) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    SetYFullScale(0, 6000);
    ShowRange(0, 1000);
    V().chkArea.Value = 1;
    SetArea(200, 400);
    const DrawTarget& t = Engine().Target(0);
    std::vector<TextRecord> left;
    std::vector<TextRecord> right;
    for (int i = 0; i < t.MarkNum; ++i) {
        const TextRecord& row = t.Mark[static_cast<std::size_t>(i)];
        if (row.Kind == MARK_AREA_LEFT) left.push_back(row);
        if (row.Kind == MARK_AREA_RIGHT) right.push_back(row);
    }
    ASSERT_EQ(left.size(), 3U);
    ASSERT_EQ(right.size(), 3U);
    // Span 1000: s = 10; range 6000: h = 600, 6000 / 120 = 50, 6000 / 100 = 60; the count is 10.
    const auto is = [](const TextRecord& row, float x, float y, float x2, float y2) {
        EXPECT_FLOAT_EQ(row.X, x);
        EXPECT_FLOAT_EQ(row.Y, y);
        EXPECT_FLOAT_EQ(row.X2, x2);
        EXPECT_FLOAT_EQ(row.Y2, y2);
        EXPECT_EQ(row.Size, 3);
        EXPECT_EQ(row.Color, Rgb(255, 100, 100));
    };
    is(left[0], 200, 10, 200, 610);
    is(left[1], 190, 660, 200, 660);
    is(left[2], 190, 550, 197.5F, 550);
    is(right[0], 400, 10, 400, 610);
    is(right[1], 410, 660, 400, 660);
    is(right[2], 410, 550, 402.5F, 550);
    EXPECT_EQ(t.Canvas->DrawMode, DRAW_COPY) << "the pen is as it was";
    EXPECT_EQ(t.Canvas->DrawWidth, 1.0);
}

TEST(AreaCursor, OnTheLogAxisTheFlagIsAsHighAsTold) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    Tick(V().ckbLogScale);
    V().chkArea.Value = 1;
    SetArea(200, 400);
    const DrawTarget& t = Engine().Target(0);
    for (int i = 0; i < t.MarkNum; ++i) {
        const TextRecord& row = t.Mark[static_cast<std::size_t>(i)];
        if (row.Kind != MARK_AREA_LEFT || row.X != row.X2) continue;
        EXPECT_FLOAT_EQ(row.Y, 1.0F) << "a count of 10";
        // -log10(7 / 10)
        EXPECT_NEAR(row.Y2 - row.Y, 0.154902, 1e-5);
        return;
    }
    FAIL() << "no upright stroke";
}

TEST(AreaCursor, TheRegionsAreThoseOfTheActiveWindowAndDifferingEnds) {
    Plotted w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    Tick(V().chkGrp[11]);
    Tick(V().chkArea);
    EXPECT_EQ(V().lblStatus.Caption, "Drag across the plot to mark an area.");
    SetArea(100, 300);
    std::int16_t start = 0;
    std::int16_t end = 0;
    EXPECT_EQ(GetRegions(start, end), -1);
    EXPECT_EQ(w.MarksOf(0, MARK_AREA_LEFT), 3);
    ChangeActiveWin(1);
    EXPECT_EQ(w.MarksOf(0, MARK_AREA_LEFT), 0) << "the old window's marks go";
    EXPECT_EQ(GetRegions(start, end), 0) << "each window has its own";
    EXPECT_EQ(start, -1);
    EXPECT_EQ(end, -1);
    SetArea(50, 50);
    EXPECT_EQ(GetRegions(start, end), 0) << "an area of one channel is none";
    ChangeActiveWin(0);
    EXPECT_EQ(Area(), (Ends{100, 300}));
    EXPECT_EQ(w.MarksOf(0, MARK_AREA_LEFT), 3);
}

TEST(AreaCursor, AMarkThatIsNotSetReadsAsAWordOf65535) {
    Plotted w;
    EXPECT_EQ(static_cast<std::uint16_t>(V().Windows[0].Area[0].Channel), 65535);
}

TEST(AreaCursor, PeaksInItAreDeletedAfterTheQuestion) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    for (const double at : {300.0, 400.0, 500.0, 600.0}) w.AddPeakAt(0, at);
    Click(V().cmdOperation[7]);
    SetArea(350, 500);
    w.Desk.ExpectQuestion("It will deletes peaks in the range of the area cursor", Answer::No);
    Click(V().cmdOperation[4]);
    EXPECT_EQ(store.PeakTables[0].PeakNum, 4);
    EXPECT_EQ(Area(), (Ends{350, 500}));
    w.Desk.ExpectQuestion("It will deletes peaks in the range of the area cursor", Answer::Yes);
    Click(V().cmdOperation[4]);
    ASSERT_EQ(store.PeakTables[0].PeakNum, 2) << "both ends belong to the area";
    EXPECT_EQ(store.PeakTables[0].Peak[0].Position, 300.0);
    EXPECT_EQ(store.PeakTables[0].Peak[1].Position, 600.0);
    EXPECT_EQ(Area(), (Ends{-1, -1})) << "the marks go with it";
}

// --- the mouse -----------

TEST(Mouse, APressTakesTheCursorAndAMoveDragsIt) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    MouseDown(w.Plot(0), MouseButton::Left, w.PixelOf(0, 2000), 40);
    EXPECT_EQ(CursorCh(), 2000);
    EXPECT_TRUE(V().timCursor.Enabled) << "live during a drag";
    MouseMove(w.Plot(0), MouseButton::Left, w.PixelOf(0, 2500), 40);
    EXPECT_EQ(CursorCh(), 2500);
    EXPECT_EQ(V().inumCursorCnt[0].Value, 10);
    MouseUp(w.Plot(0), MouseButton::Left, w.PixelOf(0, 2500), 40);
    EXPECT_FALSE(V().timCursor.Enabled);
    MouseMove(w.Plot(0), MouseButton::None, 5, 40);
    EXPECT_EQ(CursorCh(), 2500) << "no button, no drag";
}

TEST(Mouse, TheRightButtonDragsNothing) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    MouseDown(w.Plot(1), MouseButton::Right, 300, 40);
    MouseMove(w.Plot(1), MouseButton::Right, 400, 40);
    EXPECT_EQ(CursorCh(), 0);
    EXPECT_EQ(V().ActiveWin, 0);
}

TEST(Mouse, APressInAWindowMakesItTheActiveOne) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    MouseDown(w.Plot(1), MouseButton::Left, 300, 40);
    MouseUp(w.Plot(1), MouseButton::Left, 300, 40);
    EXPECT_EQ(V().ActiveWin, 1);
    EXPECT_TRUE(V().fraGraph[1].Raised);
    EXPECT_FALSE(V().fraGraph[0].Raised);
}

TEST(Mouse, ADragMarksAnAreaAndAnEdgeIsTakenAndDragged) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    Tick(V().chkArea);
    w.Drag(0, w.PixelOf(0, 1500), w.PixelOf(0, 1000));
    EXPECT_EQ(Area(), (Ends{1000, 1500}));
    EXPECT_EQ(CursorCh(), 0) << "the cursor stays";
    MouseMove(w.Plot(0), MouseButton::None, w.PixelOf(0, 1500), 40);
    EXPECT_EQ(w.Plot(0).Shape, Pointer::Width);
    w.Drag(0, w.PixelOf(0, 1500), w.PixelOf(0, 1800));
    EXPECT_EQ(Area(), (Ends{1000, 1800}));
    w.Drag(0, w.PixelOf(0, 1000), w.PixelOf(0, 2000));
    EXPECT_EQ(Area(), (Ends{1800, 2000})) << "an edge dragged across the other";
    w.Drag(0, w.PixelOf(0, 500), w.PixelOf(0, 600));
    EXPECT_EQ(CursorCh(), 600) << "elsewhere it is the cursor that is dragged";
    EXPECT_EQ(Area(), (Ends{1800, 2000}));
}

TEST(Mouse, ThePointerIsAFingerOnTheCursor) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    CsrX_Change(2000);
    MouseMove(w.Plot(0), MouseButton::None, w.PixelOf(0, 2000) + 2, 40);
    EXPECT_EQ(w.Plot(0).Shape, Pointer::Finger);
    MouseMove(w.Plot(0), MouseButton::None, w.PixelOf(0, 2200), 40);
    EXPECT_EQ(w.Plot(0).Shape, Pointer::Arrow);
}

TEST(Mouse, OutsideThePlotTheTimerScrollsTheRangeByTen) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    ShowRange(1000, 200);
    MouseDown(w.Plot(0), MouseButton::Left, w.PixelOf(0, 1100), 40);
    Elapse(V().timCursor);
    EXPECT_EQ(V().hsbStartX.Value, 1000) << "inside it rests";
    MouseMove(w.Plot(0), MouseButton::Left, 700, 40);  // right of its 640 pixels
    EXPECT_EQ(CursorCh(), 1199);
    Elapse(V().timCursor);
    EXPECT_EQ(V().hsbStartX.Value, 1010);
    EXPECT_EQ(CursorCh(), 1209) << "the cursor goes along";
    MouseMove(w.Plot(0), MouseButton::Left, -20, 40);
    Elapse(V().timCursor);
    EXPECT_EQ(V().hsbStartX.Value, 1000);
    EXPECT_EQ(CursorCh(), 1000);
    ShowRange(18, 200);
    Elapse(V().timCursor);
    EXPECT_EQ(V().hsbStartX.Value, 0) << "nearer than 10 to its end it goes all the way";
    ShowRange(4096 - 200 - 15, 200);
    MouseMove(w.Plot(0), MouseButton::Left, 900, 40);
    Elapse(V().timCursor);
    EXPECT_EQ(V().hsbStartX.Value, 4096 - 200);
    EXPECT_EQ(CursorCh(), 4095);
    MouseUp(w.Plot(0), MouseButton::Left, 900, 40);
    EXPECT_FALSE(Elapse(V().timCursor)) << "it rests after the drag";
}

TEST(Mouse, TheWheelZoomsAboutThePointerAndWithShiftScrolls) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    const double at = w.PixelOf(0, 2048);
    Wheel(w.Plot(0), 1.0, at, false);
    EXPECT_EQ(V().imnSpanCh.Value, 3277) << "4096 * 0.8";
    EXPECT_EQ(CsrChannel(0, at), 2048) << "what is under the pointer stays";
    Wheel(w.Plot(0), -1.0, at, false);
    EXPECT_EQ(V().imnSpanCh.Value, 4096);
    ShowRange(1000, 500);
    Wheel(w.Plot(0), 1.0, at, true);
    EXPECT_EQ(V().hsbStartX.Value, 950) << "a tenth of the span to the left";
    Wheel(w.Plot(0), -2.0, at, true);
    EXPECT_EQ(V().hsbStartX.Value, 1050);
}

// --- the memo -----------

TEST(PeakMemo, ADoubleClickShowsPositionWidthHeightAndArea) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    w.AddPeakAt(0, 1000.25, 5.5, 4321.0);
    DoubleClick(w.Plot(0), w.PixelOf(0, 1001), 40);
    EXPECT_TRUE(V().fraMemo[0].Visible);
    EXPECT_FALSE(V().fraMemo[1].Visible);
    EXPECT_EQ(CursorCh(), 1000);
    // 0-based 1000.25 is channel 1001.25; the width is a half width.
    EXPECT_EQ(V().lblMemo[0].Caption, "Channel=1001.250Ch\rFWHM=11.000Ch\rVal=4321.0\rNet=12345.7");
    Pick(V().cboUnitX, 1);
    EXPECT_FALSE(V().fraMemo[0].Visible);
    DoubleClick(w.Plot(0), w.PixelOf(0, 1001), 40);
    // 0.05 + 0.03 * 1001.25 = 30.0875; 11 channels of 0.03 keV.
    EXPECT_EQ(V().lblMemo[0].Caption, "Enargy=30.088keV\rFWHM=0.330keV\rVal=4321.0\rNet=12345.7");
    DoubleClick(w.Plot(0), w.PixelOf(0, 3000), 40);
    EXPECT_FALSE(V().fraMemo[0].Visible) << "where there is no peak there is no memo";
}

TEST(PeakMemo, InDWithAnAngleOfZeroThePositionIsZero) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    store.PropertyRecords[0].Param.TwoTheta = 0.0;
    w.AddPeakAt(0, 1000.0);
    Pick(V().cboUnitX, 3);
    DoubleClick(w.Plot(0), w.PixelOf(0, 1000), 40);
    EXPECT_TRUE(V().lblMemo[0].Caption.starts_with("d=0.000d:A\r") ||
                V().lblMemo[0].Caption.find("=0.000") != std::string::npos)
        << V().lblMemo[0].Caption;
}

TEST(PeakMemo, StandsAboveThePeakOnTheScaleInForceAndFollowsItsText) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    w.AddPeakAt(0, 1000.0, 5.0, 1000.0);
    SetYFullScale(0, 2000);
    ShowPeakMemo(0, 0, 0);
    const int linear = V().fraMemo[0].Top;
    EXPECT_LT(linear, 120) << "half way up of 240 pixels";
    Tick(V().ckbLogScale);
    ShowPeakMemo(0, 0, 0);
    // log10(1000) = 3 of 7 decades: lower than half way.
    EXPECT_GT(V().fraMemo[0].Top, linear);
    const int left = V().fraMemo[0].Left;
    const int top = V().fraMemo[0].Top;
    MouseDown(V().lblMemo[0], MouseButton::Left, 10, 10);
    MouseMove(V().lblMemo[0], MouseButton::Left, 30, 25);
    EXPECT_EQ(V().fraMemo[0].Left, left + 20);
    EXPECT_EQ(V().fraMemo[0].Top, top + 15);
    MouseMove(V().lblMemo[0], MouseButton::None, 90, 90);
    EXPECT_EQ(V().fraMemo[0].Left, left + 20) << "only while the button is down";
    w.Press(K::Escape);
    EXPECT_FALSE(V().fraMemo[0].Visible);
}
