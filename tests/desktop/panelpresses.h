// The presses of the plots' commands: cursor, area, scales, range, styles, the panel's buttons.
// Each one sees its result in the store or in the records.
#pragma once

#include "deskworld.h"

#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/graphs.h"
#include "core/windows.h"

namespace vael::test {

/// Goes from any rows to three of files.
template <class Press>
void PressPlots(DeskWorld& world, Press press) {
    VaelAnaView& v = frmVaelAna;
    world.Desk.Files.push_back({world.Write("one.npd", FIVE_LINES),
                                world.Write("two.npd", FIVE_LINES),
                                world.Write("three.npd", FIVE_LINES)});
    press(v.mnuLoad);
    ASSERT_EQ(store.GraphTotal, 3);

    // The cursor.
    world.TypeInto(v.inumCursorCh, "1000", Qt::Key_Return);
    EXPECT_EQ(CursorCh(), 999);
    press(v.spnCursor[0]);
    press(v.cmdOperation[11]);
    EXPECT_EQ(CursorCh(), 997);
    press(v.spnCursor[1]);
    press(v.cmdOperation[12]);
    EXPECT_EQ(CursorCh(), 999);
    const float tall = Engine().Target(0).Mark[0].Y2 - Engine().Target(0).Mark[0].Y;
    press(v.chkCsrType);
    EXPECT_LT(Engine().Target(0).Mark[0].Y2 - Engine().Target(0).Mark[0].Y, tall);
    press(v.chkCsrType);

    // Peaks and the area.
    press(v.cmdOperation[2]);
    const int slot = DataNo();
    const PeakTable& peaks = store.PeakTables[static_cast<std::size_t>(slot)];
    ASSERT_EQ(peaks.PeakNum, 5);
    press(v.cmdOperation[8]);
    EXPECT_EQ(CursorCh(), 1100);
    press(v.mnuPeakJumpN);
    EXPECT_EQ(CursorCh(), 1700);
    press(v.cmdOperation[6]);
    EXPECT_EQ(CursorCh(), 1100);
    press(v.mnuPeakJumpB);
    EXPECT_EQ(CursorCh(), 600);
    const auto plain = v.picGraph[0].Painted;
    press(v.chkPeakParameter);
    EXPECT_EQ(v.chkPeakParameter.Value, 1);
    EXPECT_GT(v.picGraph[0].Painted, plain);
    press(v.chkPeakParameter);
    press(v.chkArea);
    EXPECT_EQ(v.chkArea.Value, 1);
    press(v.chkArea);
    press(v.cmdOperation[7]);
    std::int16_t start = 0;
    std::int16_t end = 0;
    EXPECT_EQ(GetRegions(start, end), -1);
    EXPECT_EQ(end, 4095);
    world.Desk.Answers.push_back(Answer::Yes);
    press(v.cmdOperation[4]);
    EXPECT_EQ(peaks.PeakNum, 0);
    press(v.cmdOperation[7]);
    EXPECT_EQ(v.chkArea.Value, 0);

    // Peaks by hand and ExpressFitting, on the first line.
    press(v.mnuExpressFit);
    EXPECT_EQ(store.FitMode, 1);
    press(v.mnuPeakAllIns);
    EXPECT_GE(peaks.PeakNum, 5);
    world.Desk.Answers.push_back(Answer::Yes);
    press(v.mnuPeakAllDelete);
    EXPECT_EQ(peaks.PeakNum, 0);
    world.TypeInto(v.inumCursorCh, "591", Qt::Key_Return);
    press(v.mnuPeakIns);
    ASSERT_EQ(peaks.PeakNum, 1);
    world.TypeInto(v.inumCursorCh, "601", Qt::Key_Return);
    press(v.mnuPeakSep);
    EXPECT_EQ(peaks.Peak[0].FitState, ALL_BITS);
    press(v.mnuFitting);
    EXPECT_EQ(peaks.Peak[0].Fitted, 1);
    press(v.mnuFittingAll);
    EXPECT_EQ(RowOfName(NAME_FIT), 0);
    press(v.mnuPeakDelete);
    EXPECT_EQ(peaks.PeakNum, 0);
    press(v.mnuNaxFit);
    EXPECT_EQ(store.FitMode, 0);

    // Regions of interest.
    world.TypeInto(v.inumCursorCh, "550", Qt::Key_Return);
    press(v.mnuRoiStart);
    world.TypeInto(v.inumCursorCh, "650", Qt::Key_Return);
    press(v.mnuRoiEnd);
    ASSERT_EQ(store.Rois.RoiNum, 1);
    EXPECT_EQ(store.Rois.RoiTable[0].EndCh, 649);
    press(v.mnuRoiJumpB);
    EXPECT_EQ(CursorCh(), 600);
    world.TypeInto(v.inumCursorCh, "100", Qt::Key_Return);
    press(v.mnuRoiJumpN);
    EXPECT_EQ(CursorCh(), 600);
    press(v.chkArea);
    EXPECT_EQ(v.chkArea.Value, 0);

    // The vertical scale.
    press(v.ckbLogScale);
    EXPECT_EQ(Engine().Target(0).LogScale, 1);
    press(v.ckbNorScale);
    EXPECT_EQ(Engine().Target(0).LogScale, 0);
    press(v.ckbVtAuto);
    EXPECT_EQ(v.ckbVtAuto.Value, 1);
    press(v.mnuLogarithmic);
    EXPECT_EQ(v.ckbLogScale.Value, 1);
    press(v.mnuNorScale);
    EXPECT_EQ(v.ckbNorScale.Value, 1);
    press(v.mnuAutomatic);
    EXPECT_EQ(v.ckbVtAuto.Value, 1);
    const std::int32_t scale = YFullScale(0);
    press(v.mnuTaller);
    EXPECT_LT(YFullScale(0), scale);
    press(v.mnuShoter);
    EXPECT_EQ(YFullScale(0), scale);
    world.TypeInto(v.itxtScaleY, "25k", Qt::Key_Return);
    EXPECT_EQ(YFullScale(0), 25000);
    world.StepList(v.itxtScaleY, 1);
    EXPECT_NE(YFullScale(0), 25000);
    const int notch = v.hsbWidthY.Value;
    world.ScrollOn(v.hsbWidthY, notch > 0 ? -1 : 1);
    EXPECT_EQ(v.hsbWidthY.Value, notch > 0 ? notch - 1 : 1);
    press(v.mnuAutomatic);

    // How it is drawn.
    press(v.mnuPaint);
    EXPECT_EQ(Engine().Target(0).DrawKind, DRAW_PAINT);
    press(v.mnuDot);
    EXPECT_EQ(Engine().Target(0).DrawKind, DRAW_DOT);
    press(v.mnuLine);
    EXPECT_EQ(Engine().Target(0).DrawKind, DRAW_LINE);

    // The shown range.
    press(v.cmdNarrower);
    EXPECT_EQ(v.imnSpanCh.Value, 2048);
    press(v.cmdWider);
    EXPECT_EQ(v.imnSpanCh.Value, 4096);
    world.TypeInto(v.imnSpanCh, "500", Qt::Key_Return);
    EXPECT_EQ(v.imnSpanCh.Value, 500);
    const int from = v.hsbStartX.Value;
    world.ScrollOn(v.hsbStartX, 1);
    EXPECT_EQ(v.hsbStartX.Value, from + v.hsbStartX.Small);
    EXPECT_EQ(Engine().Target(0).XStart, v.hsbStartX.Value);

    // The angle in force.
    world.TypeInto(v.txt2Theta, "12.25", Qt::Key_Return);
    EXPECT_EQ(store.PropertyRecords[static_cast<std::size_t>(DataNo())].Param.TwoTheta, 12.25);

    // Styles.
    press(v.ckbExpand);
    EXPECT_EQ(v.WinStyle, WindowStyle::Expand);
    press(v.ckbExpand);
    press(v.cmdDisplay[0]);
    EXPECT_EQ(v.WinStyle, WindowStyle::Expand);
    press(v.mnuExpandOff);
    EXPECT_EQ(v.WinStyle, WindowStyle::LineUp);
    press(v.mnuExpandOn);
    EXPECT_EQ(v.WinStyle, WindowStyle::Expand);
    press(v.mnuExpandOff);
    press(v.chkWinStyle);
    EXPECT_EQ(v.WinStyle, WindowStyle::PileUp);
    EXPECT_FALSE(world.Widget(v, "fraGraph_1").isVisible());
    press(v.chkFilePile[0]);  // the last window stays
    EXPECT_TRUE(world.Widget(v, "fraGraph_0").isVisible());
    press(v.mnuWinType[0]);
    EXPECT_EQ(v.WinStyle, WindowStyle::LineUp);
    EXPECT_TRUE(world.Widget(v, "fraGraph_1").isVisible());
    press(v.mnuWinType[1]);
    EXPECT_EQ(v.WinStyle, WindowStyle::PileUp);
    press(v.mnuWinType[0]);
    press(v.chkGrp[10]);  // a graph in the lower window
    EXPECT_EQ(store.GraphList[0].WinNo, 1);
    QTest::mouseClick(&world.Plot(1), Qt::LeftButton, {}, QPoint(50, 50));
    EXPECT_EQ(v.ActiveWin, 1);
    press(v.mnuSmooth);  // and one made there: its switch is free
    press(v.chkFilePile[1]);
    EXPECT_FALSE(world.Widget(v, "fraGraph_1").isVisible());

    // The side panel.
    press(v.mnuSidePanel);
    EXPECT_FALSE(world.Widget(v, "panelSide").isVisible());
    press(v.cmdSidePanel);
    EXPECT_TRUE(world.Widget(v, "panelSide").isVisible());

    // Files beside the program, and everything away.
    press(v.mnuEditCrystalFile);
    press(v.mnuHelp);
    EXPECT_EQ(world.Desk.OpenedTexts.size(), 2U);
    world.Desk.Answers.push_back(Answer::Yes);
    press(v.cmdOperation[5]);
    EXPECT_EQ(store.GraphTotal, 0);
}

}  // namespace vael::test
