// The peak and the ROI report in their windows, by mouse and key, and their pictures.
#include "gridworld.h"
#include "shots.h"

#include "analysis/roi.h"
#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/fault.h"
#include "core/graphs.h"
#include "core/regionmarks.h"
#include "display/frmprint.h"

#include <QLabel>

namespace vael {
namespace {

using test::DeskWorld;
using test::FIVE_LINES;
using test::Shoot;

PeakReportView& P() { return frmPeakReport; }
RoiReportView& R() { return frmRoiReport; }

/// A fitted spectrum of five peaks, with the report's grid under the hand.
struct Reported : test::GridWorld {
    Reported() {
        Open({Write("gold.npd", FIVE_LINES)});
        ClickOn(frmVaelAna.cmdOperation[2]);
        EXPECT_EQ(Peaks().PeakNum, 5);
    }
    static PeakTable& Peaks() { return Item(store.PeakTables, DataNo()); }
    static int AddRegion(int start, int end) {
        return AddRoi(store.Rois, store.SpectrumDatas, 0, DataNo(),
                      static_cast<std::int16_t>(start), static_cast<std::int16_t>(end), RoiColor(),
                      RegionMarks());
    }
};

TEST(PeakReportOnScreen, EveryControlIsPressedAndTheCurveFollows) {
    Reported world;
    std::set<std::string> usable;
    world.ClickOn(frmVaelAna.mnuPeakReport);
    test::CollectUsable(usable);
    ASSERT_TRUE(world.Desk.FormOfView(P())->isVisible());
    EXPECT_TRUE(world.Widget(P(), "cmdPrint").isEnabled());
    ASSERT_EQ(world.Table(P().sprPeakInf).model()->rowCount(), 5);

    world.ClickCell(P().sprPeakInf, PeakReportView::INTENSITY, 2);
    EXPECT_EQ(CursorCh(), 1100);
    world.TypeCell(P().sprPeakInf, PeakReportView::AMPLITUDE, 2, "2000");
    EXPECT_EQ(world.Peaks().Peak[1].Amplitude, 2000.0);
    world.ClickOn(P().cmdPkSet);
    const int fit = GetGraphDataNo(RowOfName(NAME_FIT));
    EXPECT_NEAR(Item(Item(store.SpectrumDatas, fit).Count, 1100), 2000, 20);
    EXPECT_EQ(world.Peaks().PeakNum, 5) << "the same row is current";

    QTest::keyClick(&world.Table(P().sprPeakInf), Qt::Key_Delete);
    DeskWorld::Settle();
    EXPECT_EQ(world.Peaks().PeakNum, 4);
    EXPECT_EQ(world.Table(P().sprPeakInf).model()->rowCount(), 4);

    const std::string path = world.Folder.filePath(QStringLiteral("out.csv")).toStdString();
    world.Desk.Saves.push_back(path);
    world.ClickOn(P().cmdSave);
    EXPECT_TRUE(std::filesystem::exists(path));
    world.ClickOn(P().cmdCancel);
    EXPECT_FALSE(world.Desk.FormOfView(P())->isVisible());
    ASSERT_EQ(world.Peaks().PeakNum, 5);
    EXPECT_NEAR(Item(Item(store.SpectrumDatas, fit).Count, 1100), 9000, 100);

    world.KeyOn(Qt::Key_R, Qt::ControlModifier);
    ASSERT_TRUE(P().Visible);
    world.WhileModal(frmPrint, [&] { world.ClickOn(frmPrint.cmdCan); });
    world.ClickOn(P().cmdPrint);
    world.TypeCell(P().sprPeakInf, PeakReportView::GAUSS, 1, "50");
    world.ClickOn(P().cmdRepEnd);
    EXPECT_FALSE(P().Visible);
    EXPECT_EQ(world.Peaks().Peak[0].GaussRatio, 0.5);
    world.ExpectAllPressed(usable, "frmPeakReport");
    EXPECT_TRUE(world.Faults.empty());
}

TEST(PeakReportOnScreen, EscapeTakesTheTypingBackFirstAndThenTheReport) {
    Reported world;
    world.ClickOn(frmVaelAna.cmdOperation[10]);
    const PeakTable before = world.Peaks();
    world.TypeCell(P().sprPeakInf, PeakReportView::CHANNEL, 1, "620");
    QLineEdit& editor = world.TypeInCell(P().sprPeakInf, PeakReportView::WIDTH_CH, 1, "3");
    QTest::keyClick(&editor, Qt::Key_Escape);
    DeskWorld::Settle();
    EXPECT_TRUE(P().Visible);
    EXPECT_EQ(world.Peaks().Peak[0].Position, 619.0);
    EXPECT_EQ(world.Peaks().Peak[0].Width, before.Peak[0].Width);
    QTest::keyClick(&world.Table(P().sprPeakInf), Qt::Key_Escape);
    DeskWorld::Settle();
    EXPECT_FALSE(P().Visible);
    EXPECT_TRUE(world.Peaks() == before);
}

TEST(PeakReportOnScreen, AButtonTakesWhatIsBeingTypedFirst) {
    Reported world;
    world.ClickOn(frmVaelAna.mnuPeakReport);
    world.Desk.FormOfView(P())->activateWindow();
    DeskWorld::Settle();
    world.TypeInCell(P().sprPeakInf, PeakReportView::AMPLITUDE, 5, "777");
    world.ClickOn(P().cmdRepEnd);
    EXPECT_EQ(world.Peaks().Peak[4].Amplitude, 777.0);
}

TEST(PeakReportOnScreen, EnterOnAButtonClicksItAndInTheListClosesNothing) {
    Reported world;
    world.ClickOn(frmVaelAna.mnuPeakReport);
    world.TypeCell(P().sprPeakInf, PeakReportView::AMPLITUDE, 5, "777");
    EXPECT_TRUE(P().Visible);
    QTest::keyClick(&world.Table(P().sprPeakInf), Qt::Key_Return);
    EXPECT_TRUE(P().Visible);
    QTest::keyClick(&world.Widget(P(), "cmdCancel"), Qt::Key_Return);
    EXPECT_FALSE(P().Visible);
    EXPECT_NE(world.Peaks().Peak[4].Amplitude, 777.0);
}

TEST(PeakReportOnScreen, ATextThatIsNoNumberSpringsBackOnTheScreen) {
    Reported world;
    world.ClickOn(frmVaelAna.mnuPeakReport);
    const QString before = world.Shown(P().sprPeakInf, PeakReportView::CHANNEL, 3);
    world.TypeCell(P().sprPeakInf, PeakReportView::CHANNEL, 3, "wide");
    EXPECT_EQ(world.Shown(P().sprPeakInf, PeakReportView::CHANNEL, 3), before);
    EXPECT_EQ(world.Widget<QLabel>(frmVaelAna, "lblStatus").text(),
              QStringLiteral("\"wide\" is no number: the peak stays as it was."));
}

TEST(PeakReportOnScreen, AllColumnsAreSeenWhereItOpens) {
    Reported world;
    world.ClickOn(frmVaelAna.mnuPeakReport);
    const GridWidget& table = world.Table(P().sprPeakInf);
    EXPECT_GT(world.Widget<GridWidget>(P(), "sprPeakInf").MiddleOf(9, 1).x(), 0);
    EXPECT_FALSE(table.horizontalScrollBar()->isVisible());
}

TEST(RoiReportOnScreen, EveryControlIsPressedAndARowJumps) {
    Reported world;
    world.AddRegion(590, 610);
    world.AddRegion(1090, 1110);
    CsrX_Change(1100);
    world.Desk.Show();
    std::set<std::string> usable;
    QTest::mouseDClick(&world.Widget(frmVaelAna, "itxtNoRoi"), Qt::LeftButton);
    DeskWorld::Settle();
    test::CollectUsable(usable);
    ASSERT_TRUE(world.Desk.FormOfView(R())->isVisible());
    EXPECT_EQ(world.Widget<QLabel>(R(), "lblMaxRoi").text(), QStringLiteral("Max ROI = 10"));
    EXPECT_EQ(world.Shown(R().sprRoiInf, RoiReportView::START_CH, 2), QStringLiteral("1091"));
    world.ClickCell(R().sprRoiInf, RoiReportView::AREA, 1);
    EXPECT_EQ(CursorCh(), 600);
    std::int16_t start = 0;
    std::int16_t end = 0;
    EXPECT_EQ(GetRegions(start, end), TRUE_WORD);
    EXPECT_EQ(end, 610);
    world.TypeCell(R().sprRoiInf, RoiReportView::END_CH, 1, "701");
    EXPECT_EQ(store.Rois.RoiTable[0].EndCh, 700);
    world.TypeCell(R().sprRoiInf, RoiReportView::START_CH, 1, "800");
    EXPECT_EQ(world.Shown(R().sprRoiInf, RoiReportView::START_CH, 1), QStringLiteral("591"));
    QTest::keyClick(&world.Table(R().sprRoiInf), Qt::Key_Delete);
    DeskWorld::Settle();
    EXPECT_EQ(store.Rois.RoiNum, 1);
    EXPECT_EQ(world.Shown(R().sprRoiInf, RoiReportView::START_CH, 1), QStringLiteral("1091"));
    world.ClickOn(R().cmdOk);
    EXPECT_FALSE(world.Desk.FormOfView(R())->isVisible());
    world.ClickOn(frmVaelAna.mnuRoiReport);
    EXPECT_TRUE(R().Visible);
    world.ExpectAllPressed(usable, "frmRoiReport");
    EXPECT_TRUE(world.Faults.empty());
}

class ReportShots : public test::ShotTest {};

TEST_F(ReportShots, TheReports) {
    for (const bool dark : {false, true}) {
        if (dark) Dark();
        const std::string end = dark ? "_dark" : "";
        DeskWorld world;
        OpenSpectrum(world);
        world.ClickOn(frmVaelAna.cmdAutoFit);
        world.StepList(frmVaelAna.cboUnitX, 1);
        world.ClickOn(frmVaelAna.mnuPeakReport);
        auto& table = world.Widget<GridWidget>(P(), "sprPeakInf");
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {},
                          table.MiddleOf(PeakReportView::CHANNEL, 3));
        DeskWorld::Settle();
        Shoot(*world.Desk.FormOfView(P()), "peakreport" + end);
        world.ClickOn(P().cmdRepEnd);
        for (const auto& [from, to] : {std::pair{715, 752}, {1012, 1064}, {1195, 1240}})
            Reported::AddRegion(from, to);
        world.ClickOn(frmVaelAna.mnuRoiReport);
        Shoot(*world.Desk.FormOfView(R()), "roireport" + end);
    }
}

}  // namespace
}  // namespace vael
