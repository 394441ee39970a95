// The vertical scale, the shown range, Expand and PileUp of the main view.
#include "support/monkey.h"
#include "support/plotted.h"

#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/expand.h"
#include "core/operations.h"
#include "core/scales.h"

#include <gtest/gtest.h>

using namespace vael;
using K = KeyPress::Name;

namespace {

VaelAnaView& V() { return frmVaelAna; }

/// Which of auto, log and normal are ticked: boxes, then menu items.
std::string Modes() {
    std::string out;
    for (const CheckBox* box : {&V().ckbVtAuto, &V().ckbLogScale, &V().ckbNorScale})
        out += box->Value != 0 ? 'x' : '-';
    for (const Menu* item : {&V().mnuAutomatic, &V().mnuLogarithmic, &V().mnuNorScale})
        out += item->Checked ? 'x' : '-';
    return out;
}

void TypeScale(const std::string& text) {
    Type(V().itxtScaleY, text);
    PressEnter(V().itxtScaleY);
}

bool UsedIn(int win, int slot) {
    return Engine().Target(win).Graph[static_cast<std::size_t>(slot)].GraphInUse != 0;
}

}  // namespace

// --- the vertical scale -----------

TEST(Scale, TheThreeModesExcludeEachOtherInBoxesAndMenu) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    EXPECT_EQ(Modes(), "x--x--");
    Tick(V().ckbLogScale);
    EXPECT_EQ(Modes(), "-x--x-");
    EXPECT_EQ(Engine().Target(0).LogScale, 1);
    EXPECT_EQ(Engine().Target(1).LogScale, 1);
    EXPECT_EQ(V().Windows[0].CountAxis.YFullScale, 7) << "the axis of seven decades";
    EXPECT_EQ(V().itxtScaleY.Text(), "LOG");
    Tick(V().ckbNorScale);
    EXPECT_EQ(Modes(), "--x--x");
    EXPECT_EQ(Engine().Target(0).LogScale, 0);
    EXPECT_EQ(YFullScale(0), 6000) << "the full scale that was";
    Click(V().mnuLogarithmic);
    EXPECT_EQ(Modes(), "-x--x-");
    Click(V().mnuNorScale);
    EXPECT_EQ(Modes(), "--x--x");
    Click(V().mnuAutomatic);
    EXPECT_EQ(Modes(), "x--x--");
}

TEST(Scale, TheKeyOfTheNumberPadTogglesTheLogAxis) {
    Plotted w;
    w.Press(K::Decimal);
    EXPECT_EQ(Modes(), "-x--x-");
    w.Press(K::Decimal);
    EXPECT_EQ(Modes(), "x--x--") << "back to what was";
    Tick(V().ckbNorScale);
    w.Press(K::Decimal);
    w.Press(K::Decimal);
    EXPECT_EQ(Modes(), "--x--x");
}

TEST(Scale, ABoxThatIsTickedOffLeavesAnotherMode) {
    Plotted w;
    Tick(V().ckbVtAuto);
    EXPECT_EQ(Modes(), "--x--x");
    Tick(V().ckbNorScale);
    EXPECT_EQ(Modes(), "x--x--");
}

TEST(Scale, UpIsTallerAndDownShorterByOneNotchOfTheActiveWindow) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});  // 5010 counts: 6000
    ASSERT_EQ(YFullScale(0), 6000);
    w.Press(K::Up);
    EXPECT_EQ(YFullScale(0), StepFullScale(6000, -1));
    EXPECT_LT(YFullScale(0), 6000);
    EXPECT_EQ(Modes(), "--x--x") << "a stepped scale is a fixed one";
    Click(V().mnuShoter);
    EXPECT_EQ(YFullScale(0), 6000);
    w.Press(K::Down);
    EXPECT_EQ(YFullScale(0), StepFullScale(6000, 1));
    Click(V().mnuTaller);
    EXPECT_EQ(YFullScale(0), 6000);
    EXPECT_EQ(YFullScale(1), 10000000) << "the other window keeps its own";
    EXPECT_EQ(Engine().Target(0).YTop, 6000);
    EXPECT_EQ(V().itxtScaleY.Text(), "6000");
}

TEST(Scale, TheLogAxisHasNoNotches) {
    Plotted w;
    Tick(V().ckbLogScale);
    w.Press(K::Up);
    EXPECT_EQ(Modes(), "-x--x-");
    Scroll(V().hsbWidthY, 3);
    EXPECT_EQ(Modes(), "-x--x-");
    EXPECT_EQ(YFullScale(0), 10000000);
}

TEST(Scale, TheScrollBarStepsThroughTheList) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    const auto scales = FullScales();
    EXPECT_EQ(V().hsbWidthY.Most, static_cast<int>(scales.size()) - 1);
    EXPECT_EQ(scales[static_cast<std::size_t>(V().hsbWidthY.Value)], 6000);
    Scroll(V().hsbWidthY, 0);
    EXPECT_EQ(YFullScale(0), 10);
    Scroll(V().hsbWidthY, V().hsbWidthY.Most);
    EXPECT_EQ(YFullScale(0), 10000000);
}

TEST(Scale, ATypedFullScaleTakesKAndMAndTheWordsOfTheModes) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    TypeScale("2500");
    EXPECT_EQ(YFullScale(0), 2500);
    EXPECT_EQ(V().itxtScaleY.Text(), "2500") << "also one that is in no list";
    EXPECT_EQ(Modes(), "--x--x");
    TypeScale("12k");
    EXPECT_EQ(YFullScale(0), 12000);
    TypeScale("3M");
    EXPECT_EQ(YFullScale(0), 3000000);
    TypeScale("log");
    EXPECT_EQ(Modes(), "-x--x-");
    TypeScale("Auto");
    EXPECT_EQ(Modes(), "x--x--");
    EXPECT_EQ(YFullScale(0), 6000);
    TypeScale("1");
    EXPECT_EQ(YFullScale(0), 10) << "held at the ends of the list";
    TypeScale("99m");
    EXPECT_EQ(YFullScale(0), 10000000);
    TypeScale("many");
    EXPECT_EQ(YFullScale(0), 10000000);
    EXPECT_EQ(V().itxtScaleY.Text(), "10000000") << "other text comes back as it was";
    EXPECT_NE(V().lblStatus.Caption.find("no full scale"), std::string::npos);
}

TEST(Scale, TheListPicksAModeOrAFullScale) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    EXPECT_EQ(V().itxtScaleY.Items[0], "LOG");
    EXPECT_EQ(V().itxtScaleY.Items[1], "10000000");
    Pick(V().itxtScaleY, 0);
    EXPECT_EQ(Modes(), "-x--x-");
    Pick(V().itxtScaleY, 1);
    EXPECT_EQ(Modes(), "--x--x");
    EXPECT_EQ(YFullScale(0), 10000000);
    Pick(V().itxtScaleY, static_cast<int>(V().itxtScaleY.Items.size()) - 1);
    EXPECT_EQ(Modes(), "x--x--");
}

TEST(PeakParameter, MarksAreDrawnInBothWindowsAndTakenBack) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    w.AddPeakAt(0, 1000.0);
    const auto before = V().picGraph[0].Painted;
    Tick(V().chkPeakParameter);
    EXPECT_GT(V().picGraph[0].Painted, before);
    EXPECT_GT(V().picGraph[1].Painted, 0U);
}

TEST(DrawKind, TheMenuSetsItForTheActiveWindow) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    EXPECT_TRUE(V().mnuLine.Checked);
    Click(V().mnuPaint);
    EXPECT_EQ(Engine().Target(0).DrawKind, DRAW_PAINT);
    EXPECT_EQ(Engine().Target(1).DrawKind, DRAW_LINE);
    EXPECT_TRUE(V().mnuPaint.Checked);
    EXPECT_FALSE(V().mnuLine.Checked);
    ChangeActiveWin(1);
    EXPECT_TRUE(V().mnuLine.Checked) << "the marks tell of the active window";
    Click(V().mnuDot);
    EXPECT_EQ(Engine().Target(1).DrawKind, DRAW_DOT);
    EXPECT_EQ(Engine().Target(0).DrawKind, DRAW_PAINT);
    Click(V().mnuLine);
    EXPECT_EQ(Engine().Target(1).DrawKind, DRAW_LINE);
}

// --- the shown range -----------

TEST(Range, WiderAndNarrowerDoubleAndHalveAboutTheCursor) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    CsrX_Change(1024);
    Click(V().cmdNarrower);
    EXPECT_EQ(V().imnSpanCh.Value, 2048);
    EXPECT_EQ(V().hsbStartX.Value, 512) << "the cursor keeps its place: a quarter of the way";
    EXPECT_EQ(V().hsbStartX.Most, 4096 - 2048);
    w.Press(K::Subtract);
    EXPECT_EQ(V().imnSpanCh.Value, 1024);
    EXPECT_EQ(V().hsbStartX.Value, 768);
    for (int i = 0; i < 20; ++i) Click(V().cmdNarrower);
    EXPECT_EQ(V().imnSpanCh.Value, 16);
    for (int i = 0; i < 20; ++i) w.Press(K::Add);
    EXPECT_EQ(V().imnSpanCh.Value, 4096);
    EXPECT_EQ(V().hsbStartX.Value, 0);
    Click(V().cmdWider);
    EXPECT_EQ(V().imnSpanCh.Value, 4096);
}

TEST(Range, TheSpanBoxTakesATypedSpanAndTheUnitBoxFollows) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    CsrX_Change(2000);
    Type(V().imnSpanCh, "100");
    PressEnter(V().imnSpanCh);
    EXPECT_EQ(V().imnSpanCh.Value, 100);
    EXPECT_LE(V().hsbStartX.Value, 2000);
    EXPECT_GT(V().hsbStartX.Value + 100, 2000);
    Pick(V().cboUnitX, 1);
    EXPECT_NEAR(V().inumScaleX.Value, 3.0, 1e-9) << "100 channels of 0.03 keV";
    Type(V().imnSpanCh, "3");
    PressEnter(V().imnSpanCh);
    EXPECT_EQ(V().imnSpanCh.Value, 16) << "16 channels at least";
    Type(V().imnSpanCh, "50000");
    PressEnter(V().imnSpanCh);
    EXPECT_EQ(V().imnSpanCh.Value, 4096);
}

TEST(Range, TheScrollBarMovesBothWindows) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    ShowRange(0, 1000);
    Scroll(V().hsbStartX, 1234);
    EXPECT_EQ(Engine().Target(0).XStart, 1234);
    EXPECT_EQ(Engine().Target(1).XStart, 1234);
    EXPECT_EQ(Engine().Target(1).XEnd, 2233);
    EXPECT_EQ(V().LowerAxis.TickChannels[0], 1234.0);
}

// --- Expand -----------

TEST(Expand, AWidthUnderSixteenChangesNothing) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    SetExpandArea(100, 15);
    EXPECT_EQ(V().imnSpanCh.Value, 4096);
    EXPECT_EQ(CursorCh(), 0);
}

TEST(Expand, AnAreaOfSixteenFromAHundredCentresAtAHundredAndEight) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    SetExpandArea(100, 16);
    EXPECT_EQ(CursorCh(), 108);
    EXPECT_EQ(V().imnSpanCh.Value, 16);
    EXPECT_EQ(V().hsbStartX.Value, 100);
}

TEST(Expand, TheMiddleIsRoundedOnceTiesToEven) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    SetExpandArea(100, 17);
    EXPECT_EQ(CursorCh(), 108) << "108.5";
    SetExpandArea(101, 17);
    EXPECT_EQ(CursorCh(), 110) << "109.5";
}

TEST(Expand, OnTheLowerWindowMagnifiesAPartOfTheUpperOne) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    ShowRange(500, 1000);
    Tick(V().ckbExpand);
    EXPECT_EQ(V().WinStyle, WindowStyle::Expand);
    EXPECT_EQ(Engine().Target(0).XStart, 0) << "window 1 is scaled to the whole axis";
    EXPECT_EQ(Engine().Target(0).XEnd, 4095);
    EXPECT_EQ(Engine().Target(1).XStart, 500);
    EXPECT_EQ(Engine().Target(1).XEnd, 1499);
    EXPECT_TRUE(UsedIn(1, 0)) << "bound to the magnified part";
    EXPECT_FALSE(V().chkWinStyle.Enabled);
    EXPECT_FALSE(V().chkFilePile[0].Enabled);
    EXPECT_FALSE(V().mnuWinType[0].Enabled);
    EXPECT_TRUE(V().mnuExpandOn.Checked);
    EXPECT_FALSE(V().mnuExpandOff.Checked);
    EXPECT_EQ(w.MarksOf(0, MARK_BAND), 4) << "the part is shown in the upper window";
    EXPECT_EQ(GetRealWinNo(), 0);
    Tick(V().ckbExpand);
    EXPECT_EQ(V().WinStyle, WindowStyle::LineUp);
    EXPECT_FALSE(UsedIn(1, 0));
    EXPECT_EQ(V().imnSpanCh.Value, 4096);
    EXPECT_EQ(V().inumScaleX.Value, 4096);
    EXPECT_TRUE(V().chkWinStyle.Enabled);
    EXPECT_TRUE(V().mnuWinType[1].Enabled);
    EXPECT_TRUE(V().mnuExpandOff.Checked);
    EXPECT_EQ(w.MarksOf(0, MARK_BAND), 0);
}

TEST(Expand, ThePartBeginsInsideTheSpectrumOfTheFirstRow) {
    Plotted w;
    w.Open({w.Spectrum("short.npd", 800, {{400.0, 500.0, 8.0}})});
    ShowRange(2000, 500);
    Tick(V().ckbExpand);
    EXPECT_EQ(Engine().Target(1).XStart, 300) << "800 - 500";
}

TEST(Expand, ABandDraggedInTheUpperWindowIsMagnified) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    Tick(V().ckbExpand);
    w.Drag(0, w.PixelOf(0, 3000), w.PixelOf(0, 2000));
    EXPECT_EQ(V().imnSpanCh.Value, 1001);
    EXPECT_EQ(V().hsbStartX.Value, 2000);
    EXPECT_EQ(Engine().Target(1).XEnd, 3000);
    EXPECT_EQ(Engine().Target(0).XEnd, 4095);
    EXPECT_EQ(CursorCh(), 2500);
    EXPECT_EQ(YFullScale(1), AutoFullScale(10)) << "scaled to what it shows";
    w.Drag(1, Plotted::PixelOf(1, 2100), Plotted::PixelOf(1, 2200));
    EXPECT_EQ(CursorCh(), 2200) << "in the magnifier a drag moves the cursor";
    w.Drag(0, w.PixelOf(0, 1000), w.PixelOf(0, 1000));
    EXPECT_EQ(CursorCh(), 1000) << "a click is no band";
    EXPECT_EQ(V().hsbStartX.Value, 2000);
    Scroll(V().hsbStartX, 600);
    EXPECT_EQ(Engine().Target(1).XStart, 600);
    EXPECT_EQ(Engine().Target(0).XStart, 0);
    EXPECT_EQ(w.MarksOf(0, MARK_BAND), 4);
}

TEST(Expand, TheButtonAndTheMenuSwitchIt) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    Click(V().cmdDisplay[0]);
    EXPECT_EQ(V().ckbExpand.Value, 1);
    Click(V().cmdDisplay[0]);
    EXPECT_EQ(V().ckbExpand.Value, 0);
    Click(V().mnuExpandOn);
    EXPECT_EQ(V().ckbExpand.Value, 1);
    Click(V().mnuExpandOn);
    EXPECT_EQ(V().ckbExpand.Value, 1);
    EXPECT_TRUE(V().mnuExpandOn.Checked);
    Click(V().mnuExpandOff);
    EXPECT_EQ(V().ckbExpand.Value, 0);
}

TEST(Expand, IsOnlyForGraphsOfTheUpperWindowWithoutPileUp) {
    Plotted w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    EXPECT_TRUE(V().ckbExpand.Enabled);
    Click(V().mnuWinType[1]);
    EXPECT_FALSE(V().ckbExpand.Enabled);
    EXPECT_FALSE(V().mnuExpandOn.Enabled);
    Click(V().mnuWinType[0]);
    EXPECT_TRUE(V().ckbExpand.Enabled);
}

// --- PileUp -----------

TEST(PileUp, OnePlotWithTheGraphsOneAboveTheOther) {
    Plotted w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd"), w.Spectrum("c.npd")});
    Tick(V().chkWinStyle);
    EXPECT_EQ(V().WinStyle, WindowStyle::PileUp);
    EXPECT_TRUE(V().mnuWinType[1].Checked);
    EXPECT_FALSE(V().mnuWinType[0].Checked);
    EXPECT_TRUE(V().fraGraph[0].Visible);
    EXPECT_FALSE(V().fraGraph[1].Visible) << "the second window is not used";
    EXPECT_EQ(V().cboGrphSel[1].Index, 1) << "the first row that is there from row 2 on";
    // Three times 5010 counts: the scale holds all three, each lifted by a third of it.
    EXPECT_EQ(YFullScale(0), AutoFullScale(3 * 5010));
    const int top = YFullScale(0);
    const auto heightAt = [top](int slot) {
        return top - Engine().Target(0).Graph[static_cast<std::size_t>(slot)].PlotY[1000];
    };
    EXPECT_EQ(heightAt(0), 5010);
    EXPECT_EQ(heightAt(1), 5010 + top / 3);
    EXPECT_EQ(heightAt(2), 5010 + 2 * top / 3);
    EXPECT_EQ(PlotHeight(0, 1, 1000), 5010.0 + top / 3);
    for (int slot = 0; slot < 3; ++slot) EXPECT_TRUE(UsedIn(0, slot)) << slot;
    Tick(V().chkWinStyle);
    EXPECT_TRUE(V().fraGraph[1].Visible);
    EXPECT_EQ(YFullScale(0), 6000);
    EXPECT_EQ(YFullScale(0) - Engine().Target(0).Graph[2].PlotY[1000], 5010);
}

TEST(PileUp, OnTheLogAxisTheGraphsLieOnEachOther) {
    Plotted w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    Tick(V().chkWinStyle);
    Tick(V().ckbLogScale);
    const DrawTarget& t = Engine().Target(0);
    EXPECT_EQ(t.Graph[0].PlotY[1000], t.Graph[1].PlotY[1000]);
}

TEST(PileUp, ARowThatIsTakenOffAndPutBackKeepsItsWindow) {
    Plotted w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    Tick(V().chkGrp[11]);
    Tick(V().chkWinStyle);
    Tick(V().chkGrp[1]);
    EXPECT_FALSE(UsedIn(0, 1));
    Tick(V().chkGrp[1]);
    EXPECT_TRUE(UsedIn(0, 1));
    EXPECT_EQ(store.GraphList[1].WinNo, 1);
    Tick(V().chkWinStyle);
    EXPECT_TRUE(UsedIn(1, 1)) << "back in the lower window";
}

TEST(ShowSwitches, WhatIsOpenedIsSeen) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    Tick(V().chkWinStyle);
    Tick(V().chkFilePile[1]);
    Tick(V().chkFilePile[0]);
    ASSERT_FALSE(V().fraGraph[0].Visible);
    w.Open({w.Spectrum("b.npd")});
    EXPECT_TRUE(V().fraGraph[0].Visible);
}

TEST(ShowSwitches, OneWindowAtLeastIsShown) {
    Plotted w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    EXPECT_FALSE(V().chkFilePile[0].Enabled);
    Tick(V().chkWinStyle);
    EXPECT_TRUE(V().chkFilePile[0].Enabled);
    Tick(V().chkFilePile[1]);
    EXPECT_TRUE(V().fraGraph[1].Visible);
    Tick(V().chkFilePile[0]);
    EXPECT_FALSE(V().fraGraph[0].Visible);
    EXPECT_EQ(V().ActiveWin, 1) << "a window that is gone is not the active one";
    Tick(V().chkFilePile[1]);
    EXPECT_EQ(V().chkFilePile[1].Value, 1);
    EXPECT_TRUE(V().fraGraph[1].Visible);
}

TEST(SecondStart, LeavesNoStyleCursorOrDragOfTheFormerWork) {
    for (const bool expand : {true, false}) {
        Plotted w;
        w.Open({w.Spectrum("long.npd", 8192)});
        Tick(expand ? V().ckbExpand : V().chkWinStyle);
        CsrX_Change(8000);
        MouseDown(w.Plot(0), MouseButton::Left, 300, 50);
        Form_Load_Proc();
        EXPECT_EQ(V().WinStyle, WindowStyle::LineUp);
        EXPECT_EQ(V().ckbExpand.Value + V().chkWinStyle.Value, 0);
        EXPECT_TRUE(V().ckbExpand.Enabled && V().chkWinStyle.Enabled);
        EXPECT_TRUE(V().mnuWinType[0].Enabled && V().mnuWinType[0].Checked);
        EXPECT_TRUE(V().mnuExpandOff.Checked);
        EXPECT_TRUE(V().fraGraph[0].Visible && V().fraGraph[1].Visible);
        EXPECT_EQ(CursorCh(), 0);
        EXPECT_EQ(V().inumCursorCh.Value, 1.0);
        EXPECT_FALSE(V().timCursor.Enabled);
        EXPECT_EQ(test::Breaches(), std::vector<std::string>{});
    }
}

// --- what else the panel does -----------

TEST(Panel, ClearAllDataAsksAndEmptiesTheRows) {
    Plotted w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    V().cmdOperation[0].Enabled = false;
    w.Desk.ExpectQuestion("Clear All Data", Answer::No);
    Click(V().cmdOperation[5]);
    EXPECT_EQ(store.GraphTotal, 2);
    w.Desk.ExpectQuestion("Clear All Data", Answer::Yes);
    Click(V().cmdOperation[5]);
    EXPECT_EQ(w.Desk.Asked.back().Title, "VaelAna");
    EXPECT_EQ(store.GraphTotal, 0);
    EXPECT_TRUE(V().cmdOperation[0].Enabled) << "the buttons are in their start state";
    EXPECT_FALSE(V().cmdOperation[4].Enabled);
}

TEST(Panel, TheTextFilesOpenInTheSystemsEditorAndFailureIsTold) {
    Plotted w;
    Click(V().mnuEditCrystalFile);
    Click(V().mnuHelp);
    ASSERT_EQ(w.Desk.OpenedTexts.size(), 2U);
    EXPECT_EQ(w.Desk.OpenedTexts[0], w.Folder.Path("crystal.dat"));
    EXPECT_EQ(w.Desk.OpenedTexts[1], w.Folder.Path("History.txt"));
    w.Desk.EditorStarts = false;
    w.Desk.ExpectQuestion("crystal file open error");
    Click(V().mnuEditCrystalFile);
    w.Desk.ExpectQuestion("crystal file open error");
    Click(V().mnuHelp);
}

TEST(Panel, ADoubleClickShowsTheCalibrationInForce) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    store.DefaultParam.EgcCoef = {1.0, 2.0, 3.0};
    store.DefaultParam.TwoTheta = 8.25;
    Click(V().optEGC[0]);
    EXPECT_EQ(V().lblEGC.Caption, "0.050000Ch^2+0.030000Ch+0.000000") << "a click leaves it";
    DoubleClick(V().optEGC[0]);
    EXPECT_EQ(V().lblEGC.Caption, "1.000000Ch^2+2.000000Ch+3.000000");
    EXPECT_EQ(V().txt2Theta.Text, "8.25000");
    Click(V().optEGC[1]);
    DoubleClick(V().optEGC[1]);
    EXPECT_EQ(V().lblEGC.Caption, "0.050000Ch^2+0.030000Ch+0.000000");
    EXPECT_EQ(V().txt2Theta.Text, "10.00000");
}

TEST(Panel, ATypedAngleGoesToTheCalibrationInForce) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    const auto axis = V().picSubScale.Painted;
    Type(V().txt2Theta, "12.5");
    PressEnter(V().txt2Theta);
    EXPECT_EQ(store.PropertyRecords[0].Param.TwoTheta, 12.5);
    EXPECT_EQ(V().txt2Theta.Text, "12.50000");
    EXPECT_GT(V().picSubScale.Painted, axis);
    Type(V().txt2Theta, "12.1234567");
    PressEnter(V().txt2Theta);
    EXPECT_EQ(V().txt2Theta.Text, "12.12346");
    Leave(V().txt2Theta);
    EXPECT_EQ(store.PropertyRecords[0].Param.TwoTheta, 12.1234567) << "not what the box rounds";
    Type(V().txt2Theta, "12.5");
    PressEnter(V().txt2Theta);
    Type(V().txt2Theta, "steep");
    Click(V().optEGC[0]);
    EXPECT_EQ(V().txt2Theta.Text, "12.50000") << "other text comes back as it was";
    EXPECT_EQ(store.PropertyRecords[0].Param.TwoTheta, 12.5);
    Type(V().txt2Theta, "7");
    PressEnter(V().txt2Theta);
    EXPECT_EQ(store.DefaultParam.TwoTheta, 7.0);
    EXPECT_EQ(store.PropertyRecords[0].Param.TwoTheta, 12.5);
}
