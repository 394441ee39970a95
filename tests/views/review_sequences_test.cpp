// Odd sequences at the main view: what each act leaves behind in boxes, marks, pointer and drag.
#include "support/plotted.h"
#include "support/recordingcanvas.h"

#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/expand.h"
#include "core/fault.h"
#include "core/pointing.h"
#include "core/scales.h"

#include <gtest/gtest.h>

using namespace vael;
using K = KeyPress::Name;

namespace {

VaelAnaView& V() { return frmVaelAna; }

struct Sequence : Plotted {
    /// a.npd in the upper window; b.npd (angle 8, 0.02 keV a channel) alone in the lower one.
    void OpenOneInEach() {
        const std::string b = Folder.Write(
            "b.npd", NpdText(GaussCounts(4096, 10, {{2000.0, 700.0, 10.0}}), "b", 0.0, 0.02, 8.0));
        Open({Spectrum("a.npd"), b});
        Tick(V().chkGrp[11]);
        Pick(V().cboGrphSel[1], 1);
        Pick(V().cboGrphSel[0], 0);
    }
    static void Press(int win) {
        MouseDown(Plot(win), MouseButton::Left, 300, 40);
        MouseUp(Plot(win), MouseButton::Left, 300, 40);
    }
    using Plotted::Press;
};

}  // namespace

// --- the other window becomes the active one -----------

TEST(OtherWindow, ItsPressBringsTheBoxesOfItsRow) {
    Sequence w;
    w.OpenOneInEach();
    ASSERT_EQ(V().txt2Theta.Text, "10.00000");
    w.Press(1);
    ASSERT_EQ(DataNo(), 1);
    EXPECT_EQ(V().itxtGraphName.Text, "b.npd");
    EXPECT_EQ(V().txt2Theta.Text, "8.00000");
    EXPECT_EQ(V().lblEGC.Caption, "0.000000Ch^2+0.020000Ch+0.000000");
    EXPECT_EQ(V().chkGrp[1].Tip, "b.npd (current)");
    EXPECT_EQ(V().chkGrp[0].Tip, "a.npd");
    using Grid = SelGraphView;
    EXPECT_EQ(frmSelGraph.sprGraphSel.At(Grid::MARKER, 1).Text,
              frmSelGraph.sprGraphSel.At(Grid::MARKER, 3).Text)
        << "the marker of the list has left the first row";
}

TEST(OtherWindow, EnterOnAnAngleThatNobodyTypedStoresNothing) {
    Sequence w;
    w.OpenOneInEach();
    w.Press(1);
    PressEnter(V().txt2Theta);
    EXPECT_EQ(store.PropertyRecords[1].Param.TwoTheta, 8.0);
    // With the default in force the box still shows the spectrum's own angle.
    Click(V().optEGC[0]);
    store.DefaultParam.TwoTheta = 5.0;
    PressEnter(V().txt2Theta);
    EXPECT_EQ(store.DefaultParam.TwoTheta, 5.0);
}

// --- Expand -----------

TEST(ExpandSequence, CommandsAfterADragInTheMagnifierWorkOnTheUpperWindow) {
    Sequence w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    ASSERT_EQ(GraphNo(), 1);
    Tick(V().ckbExpand);
    w.Press(1);
    Click(V().mnuSmooth);
    EXPECT_EQ(store.GraphList[0].Name, "Smooth");
    EXPECT_EQ(store.GraphList[0].WinNo, 0) << "the magnifier owns no graphs";
    EXPECT_EQ(GraphNo(), 0) << "the new row is the current one";
    EXPECT_EQ(V().chkGrp[0].Value, 1);
    Click(V().mnuGraphRaw);
    EXPECT_EQ(GraphNo(), 1);
    Click(V().mnuBackGround);
    EXPECT_EQ(store.GraphList[1].Name, "BackGraund");
    EXPECT_EQ(store.GraphList[0].WinNo, 0);
    EXPECT_EQ(store.GraphList[1].WinNo, 0);
    EXPECT_EQ(GraphNo(), 0);
}

TEST(ExpandSequence, AFitAfterADragInTheMagnifierStaysInTheUpperWindow) {
    Sequence w;
    w.Open({w.Spectrum("a.npd", 1000, {{300.4, 2000, 9}, {600.7, 1500, 11}})});
    Tick(V().ckbExpand);
    w.Press(1);
    Click(V().cmdOperation[2]);
    ASSERT_EQ(store.GraphTotal, 4);
    for (int row = 0; row < 4; ++row)
        EXPECT_EQ(store.GraphList[static_cast<std::size_t>(row)].WinNo, 0) << row;
    EXPECT_EQ(GraphNo(), 3) << "the source's row";
}

TEST(ExpandSequence, TheTitleTellsOfTheRowThatCommandsWorkOn) {
    Sequence w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    Pick(V().cboGrphSel[0], 0);
    Pick(V().cboGrphSel[1], 1);
    ASSERT_EQ(V().mnuCloseGraph.Caption, "Close Graph(b.npd)");
    Tick(V().ckbExpand);
    ASSERT_EQ(GraphNo(), 0);
    EXPECT_EQ(V().mnuCloseGraph.Caption, "Close Graph(a.npd)");
    EXPECT_EQ(V().Caption, "Vael (Data Analyze) --- a.npd");
    EXPECT_EQ(V().itxtGraphName.Text, "a.npd");
    Tick(V().ckbExpand);
    ASSERT_EQ(GraphNo(), 1);
    EXPECT_EQ(V().mnuCloseGraph.Caption, "Close Graph(b.npd)");
    EXPECT_EQ(V().itxtGraphName.Text, "b.npd");
}

TEST(ExpandSequence, OffEnablesTheShowSwitchesAgain) {
    Sequence w;
    w.Open({w.Spectrum("a.npd")});
    Tick(V().ckbExpand);
    ASSERT_FALSE(V().chkFilePile[1].Enabled);
    Tick(V().ckbExpand);
    for (const CheckBox& show : V().chkFilePile) {
        EXPECT_TRUE(show.Enabled);
        EXPECT_EQ(show.Value, 1);
    }
    EXPECT_TRUE(V().fraGraph[0].Visible);
    EXPECT_TRUE(V().fraGraph[1].Visible);
}

TEST(ExpandSequence, AFileOpenedInItScalesTheMagnifierToo) {
    Sequence w;
    w.Open({w.Spectrum("low.npd", 4096, {{1000.0, 300.0, 10.0}})});
    Tick(V().ckbExpand);
    ASSERT_EQ(YFullScale(1), 400);
    w.Open({w.Spectrum("high.npd", 4096, {{1000.0, 50000.0, 10.0}})});
    EXPECT_EQ(YFullScale(0), 60000);
    EXPECT_EQ(YFullScale(1), 60000);
}

TEST(ExpandSequence, TheRightEdgeOfThePartIsSetAlone) {
    Sequence w;
    w.Open({w.Spectrum("a.npd")});
    Tick(V().ckbExpand);
    SetExpandArea(1000, 200);
    CsrX_ChangeRight(1499, 0);
    EXPECT_EQ(V().Windows[1].Start, 1000);
    EXPECT_EQ(V().Windows[1].Span, 500) << "it ends at the channel";
    CsrX_ChangeRight(1600, -1);
    EXPECT_EQ(V().Windows[1].Start, 1101) << "the part keeps its width";
    EXPECT_EQ(V().Windows[1].Span, 500);
    CsrX_ChangeRight(700, -1);
    EXPECT_EQ(V().Windows[1].Start, 700);
}

TEST(ExpandSequence, ACursorOutsideThePartLeavesThePart) {
    Sequence w;
    w.Open({w.Spectrum("a.npd")});
    Tick(V().ckbExpand);
    SetExpandArea(1000, 200);
    spnCursor_SpinUpDown("3000");
    EXPECT_EQ(CursorCh(), 3000);
    EXPECT_EQ(V().hsbStartX.Value, 1000);
    EXPECT_EQ(w.MarksOf(0, MARK_CURSOR), 1);
    EXPECT_EQ(w.MarksOf(1, MARK_CURSOR), 0);
}

// --- stale numbers -----------

TEST(Stale, TheRegionsNumberGoesWithTheRegions) {
    Sequence w;
    w.Open({w.Spectrum("a.npd")});
    store.Rois.RoiNum = 1;
    store.Rois.RoiTable[0].StartCh = 290;
    store.Rois.RoiTable[0].EndCh = 310;
    CsrX_Change(300);
    ASSERT_EQ(V().itxtNoRoi.Text, "1");
    std::int16_t ok = 0;
    ResetRoiAll(ok);
    EXPECT_EQ(ok, -1);
    EXPECT_EQ(V().itxtNoRoi.Text, "");
}

TEST(Stale, TheMemoGoesWithItsPeakAndItsCalibration) {
    Sequence w;
    w.Open({w.Spectrum("a.npd")});
    w.AddPeakAt(0, 1000.0);
    const auto show = [&w] {
        DoubleClick(w.Plot(0), w.PixelOf(0, 1000), 40);
        ASSERT_TRUE(V().fraMemo[0].Visible);
    };
    show();
    Click(V().optEGC[0]);
    EXPECT_FALSE(V().fraMemo[0].Visible) << "its numbers are those of another calibration";
    show();
    Type(V().txt2Theta, "11");
    PressEnter(V().txt2Theta);
    EXPECT_FALSE(V().fraMemo[0].Visible);
    show();
    Click(V().Command1);
    Click(frmDispPara.cmdOk);
    EXPECT_FALSE(V().fraMemo[0].Visible);
    Click(V().cmdOperation[7]);
    show();
    w.Desk.ExpectQuestion("It will deletes peaks in the range of the area cursor", Answer::Yes);
    Click(V().cmdOperation[4]);
    ASSERT_EQ(store.PeakTables[0].PeakNum, 0);
    EXPECT_FALSE(V().fraMemo[0].Visible) << "the peak is gone";
}

TEST(Stale, TheSecondEntryOfStartUpHasOneScaleMode) {
    Sequence w;
    Tick(V().ckbLogScale);
    Form_Load_Proc();
    EXPECT_EQ(V().ckbVtAuto.Value, 1);
    EXPECT_EQ(V().ckbLogScale.Value, 0);
    EXPECT_TRUE(V().mnuAutomatic.Checked);
    EXPECT_FALSE(V().mnuLogarithmic.Checked);
    EXPECT_EQ(V().itxtScaleY.Text(), "10000000");
}

TEST(Stale, AChoiceOfCalibrationRedrawsTheAxis) {
    Sequence w;
    w.Open({w.Spectrum("a.npd")});
    store.DefaultParam.EgcCoef = {1.0, 2.0, 0.0};
    Pick(V().cboUnitX, 1);
    // The first tick is channel 1: 0.05 + 0.03 keV, or 1 + 2 keV.
    EXPECT_NEAR(V().LowerAxis.ScaleValues[0], 0.08, 1e-12);
    EXPECT_NEAR(V().inumScaleX.Value, 4096 * 0.03, 1e-9);
    Click(V().optEGC[0]);
    EXPECT_NEAR(V().LowerAxis.ScaleValues[0], 3.0, 1e-12);
    EXPECT_NEAR(V().inumScaleX.Value, 4096 * 2.0, 1e-9);
    Click(V().optEGC[1]);
    EXPECT_NEAR(V().LowerAxis.ScaleValues[0], 0.08, 1e-12);
}

// --- the drag -----------

TEST(DragSequence, ARightPressAndReleaseInsideItLeaveIt) {
    Sequence w;
    w.Open({w.Spectrum("a.npd")});
    MouseDown(w.Plot(0), MouseButton::Left, w.PixelOf(0, 1000), 40);
    MouseDown(w.Plot(0), MouseButton::Right, w.PixelOf(0, 1000), 40);
    MouseUp(w.Plot(0), MouseButton::Right, w.PixelOf(0, 1000), 40);
    EXPECT_TRUE(V().timCursor.Enabled);
    MouseMove(w.Plot(0), MouseButton::Left, w.PixelOf(0, 1200), 40);
    EXPECT_EQ(CursorCh(), 1200);
    MouseUp(w.Plot(0), MouseButton::Left, w.PixelOf(0, 1200), 40);
    EXPECT_FALSE(V().timCursor.Enabled);
}

TEST(DragSequence, AReleaseThatNobodySawEndsItWithTheNextMove) {
    Sequence w;
    w.Open({w.Spectrum("a.npd")});
    MouseDown(w.Plot(0), MouseButton::Left, w.PixelOf(0, 1000), 40);
    MouseMove(w.Plot(0), MouseButton::None, w.PixelOf(0, 1300), 40);
    EXPECT_EQ(CursorCh(), 1000);
    EXPECT_FALSE(V().timCursor.Enabled);
    MouseMove(w.Plot(0), MouseButton::Left, w.PixelOf(0, 1500), 40);
    EXPECT_EQ(CursorCh(), 1000) << "a drag begins with a press";
}

TEST(DragSequence, ClosingTheRowUnderItLeavesACursorOverAnEmptyPlot) {
    Sequence w;
    w.Open({w.Spectrum("a.npd")});
    MouseDown(w.Plot(0), MouseButton::Left, w.PixelOf(0, 1000), 40);
    Click(V().mnuCloseGraph);
    MouseMove(w.Plot(0), MouseButton::Left, w.PixelOf(0, 1500), 40);
    EXPECT_EQ(CursorCh(), 1500);
    EXPECT_EQ(V().inumCursorCnt[0].Value, 0);
    EXPECT_EQ(w.MarksOf(0, MARK_CURSOR), 0);
    MouseUp(w.Plot(0), MouseButton::Left, w.PixelOf(0, 1500), 40);
    EXPECT_FALSE(V().timCursor.Enabled);
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(DragSequence, TheWindowResizedUnderItKeepsItAndDrawsItsMarksOnce) {
    Sequence w;
    w.Open({w.Spectrum("a.npd")});
    MouseDown(w.Plot(0), MouseButton::Left, w.PixelOf(0, 1000), 40);
    w.Plot(0).Width = 1280;
    Resize(V());
    EXPECT_EQ(w.MarksOf(0, MARK_CURSOR), 1);
    MouseMove(w.Plot(0), MouseButton::Left, w.PixelOf(0, 2000), 40);
    EXPECT_EQ(CursorCh(), 2000);
    EXPECT_EQ(w.MarksOf(0, MARK_CURSOR), 1);
    MouseUp(w.Plot(0), MouseButton::Left, w.PixelOf(0, 2000), 40);
}

TEST(DragSequence, ANewAreaHasThePointerOfItsEdge) {
    Sequence w;
    w.Open({w.Spectrum("a.npd")});
    Tick(V().chkArea);
    MouseDown(w.Plot(0), MouseButton::Left, w.PixelOf(0, 1000), 40);
    MouseMove(w.Plot(0), MouseButton::Left, w.PixelOf(0, 1500), 40);
    EXPECT_EQ(w.Plot(0).Shape, Pointer::Width);
    MouseUp(w.Plot(0), MouseButton::Left, w.PixelOf(0, 1500), 40);
}

TEST(DragSequence, TheBandOfADragIsWhatIsDraggedAndItsReleaseThePart) {
    Sequence w;
    w.Open({w.Spectrum("a.npd")});
    Tick(V().ckbExpand);
    SetExpandArea(1000, 200);
    MouseDown(w.Plot(0), MouseButton::Left, w.PixelOf(0, 2000), 40);
    MouseMove(w.Plot(0), MouseButton::Left, w.PixelOf(0, 2600), 40);
    const auto edges = [] {
        std::vector<float> at;
        const DrawTarget& t = Engine().Target(0);
        for (int i = 0; i < t.MarkNum; ++i) {
            const TextRecord& row = t.Mark[static_cast<std::size_t>(i)];
            if (row.Kind == MARK_BAND && row.X == row.X2) at.push_back(row.X);
        }
        return at;
    };
    EXPECT_EQ(edges(), (std::vector<float>{2000.0F, 2600.0F}));
    EXPECT_EQ(V().hsbStartX.Value, 1000) << "nothing is magnified before the release";
    MouseUp(w.Plot(0), MouseButton::Left, w.PixelOf(0, 2600), 40);
    EXPECT_EQ(V().hsbStartX.Value, 2000);
    EXPECT_EQ(V().imnSpanCh.Value, 601);
    EXPECT_EQ(edges(), (std::vector<float>{2000.0F, 2600.0F}));
    MouseDown(w.Plot(0), MouseButton::Left, w.PixelOf(0, 3000), 40);
    MouseMove(w.Plot(0), MouseButton::Left, w.PixelOf(0, 3013), 40);
    MouseUp(w.Plot(0), MouseButton::Left, w.PixelOf(0, 3013), 40);
    EXPECT_EQ(V().imnSpanCh.Value, 601) << "a band under 16 channels changes nothing";
    EXPECT_EQ(edges(), (std::vector<float>{2000.0F, 2600.0F})) << "and leaves no trace";
}

// --- the panel -----------

TEST(PanelSequence, AutoFittingOnAnEmptyRowFitsNoOtherRow) {
    Sequence w;
    w.Open({w.Spectrum("a.npd")});
    Pick(V().cboGrphSel[0], 5);
    Click(V().cmdAutoFit);
    EXPECT_EQ(store.GraphTotal, 1);
    EXPECT_EQ(store.PeakTables[0].PeakNum, 0);
    EXPECT_EQ(V().lblStatus.Caption, "There is no spectrum in this row.");
    EXPECT_TRUE(V().cmdOperation[3].Enabled);
}

TEST(PanelSequence, ARunTimeErrorOfButtonZeroShowsItsAdviceWithoutTheBusyCursor) {
    Sequence w;
    w.Open({w.Spectrum("a.npd", 1000, {{300.4, 2000, 9}})});
    struct : ScriptedDesk {
        int BusyUnderQuestion = 0;
        Answer Ask(const Question& question) override {
            BusyUnderQuestion = BusyDepth;
            return ScriptedDesk::Ask(question);
        }
    } desk;
    desk.OnBreathe = [] { throw Fault(FaultNumber::Division, "Division by zero."); };
    desk.ExpectQuestion(
        "Fitting was failed. Please change fit parameters(Change BG Coefficient to 5.0) and retry");
    Click(V().cmdOperation[0]);
    EXPECT_EQ(store.GraphList[static_cast<std::size_t>(GraphNo())].Name, "Smooth");
    EXPECT_EQ(desk.BusyTurns, 1);
    EXPECT_EQ(desk.BusyUnderQuestion, 0);
}

TEST(PanelSequence, ThePeakMarksStandOnBothPicturesWhileTheBoxIsTicked) {
    Sequence w;
    test::RecordingSurface upper;
    test::RecordingSurface lower;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    Tick(V().chkGrp[11]);
    w.AddPeakAt(0, 1000.0);
    w.AddPeakAt(1, 3000.0);
    V().picGraph[0].PutOn(&upper);
    V().picGraph[1].PutOn(&lower);
    const auto marks = [](const test::RecordingSurface& surface) {
        std::vector<double> at;
        for (const auto& stroke : surface.Strokes)
            if (stroke.Pen.Ink == Rgb(255, 255, 255) && stroke.Pen.Mode != DRAW_XOR &&
                stroke.From.X == stroke.To.X)  // the curve in the peak's region runs on
                at.push_back(stroke.From.X);
        return at;
    };
    Tick(V().chkPeakParameter);
    EXPECT_EQ(marks(upper), (std::vector<double>{1000.0}));
    EXPECT_EQ(marks(lower), (std::vector<double>{3000.0}));
    upper.Strokes.clear();
    lower.Strokes.clear();
    Tick(V().chkPeakParameter);
    EXPECT_TRUE(marks(upper).empty());
    EXPECT_TRUE(marks(lower).empty());
    V().picGraph[0].PutOn(nullptr);
    V().picGraph[1].PutOn(nullptr);
}

TEST(PanelSequence, AllGraphsOfAPileAreLiftedAnewWhereverTheNewOneCameFrom) {
    Sequence w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    Tick(V().chkWinStyle);
    Tick(V().chkFilePile[1]);
    w.Press(1);
    ASSERT_EQ(V().ActiveWin, 1);
    Click(V().mnuSmooth);
    ASSERT_EQ(store.GraphTotal, 3);
    const int top = YFullScale(0);
    EXPECT_EQ(top, AutoFullScale(3 * 5010));
    for (int row = 0; row < 3; ++row) {
        const auto slot =
            static_cast<std::size_t>(store.GraphList[static_cast<std::size_t>(row)].DataNo);
        // Far from the line each graph lies ten counts above its lane.
        EXPECT_EQ(top - Engine().Target(0).Graph[slot].PlotY[3000], 10 + top * row / 3) << row;
    }
}
