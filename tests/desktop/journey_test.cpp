// Journeys through the real window by mouse and keyboard, and the list of controls nobody pressed.
#include "deskworld.h"

#include "panelpresses.h"
#include "rowspresses.h"

#include "core/windows.h"
#include "desktop/start.h"
#include "display/frmbatchprint.h"
#include "display/frmprint.h"

#include <QLabel>
#include <QSplitter>

namespace vael {
namespace {

using test::DeskWorld;
using test::FIVE_LINES;
using test::PixelsOf;

std::vector<std::string> RowNames() {
    std::vector<std::string> names;
    for (const GraphEntry& entry : store.GraphList)
        if (entry.State > 0) names.push_back(entry.Name);
    return names;
}

using Names = std::vector<std::string>;

TEST(Journey, TheMainWindowOpensEmpty) {
    DeskWorld world;
    EXPECT_TRUE(world.Main().isVisible());
    EXPECT_TRUE(world.Main().windowTitle().startsWith(QStringLiteral("Vael (Data Analyze)")));
    EXPECT_EQ(frmVaelAna.lblRows.Caption, "rows 0/10");
    EXPECT_TRUE(world.Faults.empty());
}

TEST(Journey, OpenSmoothBackgroundAndTheCaptionFollows) {
    DeskWorld world;
    world.Open({world.Write("first.npd", FIVE_LINES)});
    EXPECT_EQ(RowNames(), (Names{"first.npd"}));
    EXPECT_TRUE(world.Main().windowTitle().contains(QStringLiteral("first.npd")));
    EXPECT_GT(PixelsOf(test::PaperOf(world, frmVaelAna.picGraph[0]), store.GraphList[0].Color),
              200);
    EXPECT_EQ(PixelsOf(test::PaperOf(world, frmVaelAna.picGraph[1]), store.GraphList[0].Color), 0);

    world.ClickOn(frmVaelAna.cmdOperation[3]);
    EXPECT_EQ(RowNames(), (Names{"Smooth", "first.npd"}));
    EXPECT_EQ(frmVaelAna.cboGrphSel[0].Index, 0);
    world.ClickOn(frmVaelAna.mnuBackGround);
    EXPECT_EQ(RowNames(), (Names{"BackRemv", "BackGraund", "Smooth", "first.npd"}));
    EXPECT_TRUE(world.Main().windowTitle().contains(QStringLiteral("BackRemv")));
    EXPECT_TRUE(world.Faults.empty());
}

TEST(Journey, TheFitButtonsPlaceThePeaksOfTheSpectrum) {
    DeskWorld world;
    world.Open({world.Write("first.npd", FIVE_LINES)});
    world.ClickOn(frmVaelAna.cmdOperation[0]);
    const int row = [] {
        for (int n = 0; n < GRAPH_COUNT; ++n)
            if (store.GraphList[static_cast<std::size_t>(n)].Name == NAME_FIT) return n;
        return -1;
    }();
    ASSERT_GE(row, 0);
    const auto slot =
        static_cast<std::size_t>(store.GraphList[static_cast<std::size_t>(row)].DataNo);
    const PeakTable& peaks = store.PeakTables[slot];
    ASSERT_EQ(peaks.PeakNum, static_cast<int>(FIVE_LINES.size()));
    for (std::size_t k = 0; k < FIVE_LINES.size(); ++k)
        EXPECT_NEAR(peaks.Peak[k].Position, FIVE_LINES[k].Center, 0.1);
    EXPECT_FALSE(frmVaelAna.cmdOperation[0].Enabled);
    EXPECT_FALSE(world.Widget(frmVaelAna, "cmdOperation_0").isEnabled());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(Journey, AutoFittingOfGoldPlacesItsTenReflections) {
    const std::string path = test::MeasuredFile("AuWire.npd");
    if (path.empty()) GTEST_SKIP() << "the measured spectra are not there";
    DeskWorld world;
    world.Open({path});
    world.ClickOn(frmVaelAna.cmdAutoFit);
    EXPECT_EQ(RowNames(), (Names{"Fit", "BackRemv", "BackGraund", "Smooth", "AuWire.npd"}));
    const PeakTable& peaks = store.PeakTables[static_cast<std::size_t>(store.GraphList[0].DataNo)];
    // Centres of 200 to 620 in channels from 0, from the notes beside the measured spectra: one
    // Gaussian on a straight background each.
    for (const double centre : {733.05, 1037.57, 1217.15, 1271.08, 1468.26, 1600.27, 1641.85,
                                1798.64, 1908.25, 2323.25}) {
        double nearest = 1e9;
        for (int k = 0; k < peaks.PeakNum; ++k)
            nearest = std::min(
                nearest, std::fabs(peaks.Peak[static_cast<std::size_t>(k)].Position - centre));
        EXPECT_LT(nearest, 0.2) << centre;
    }
    EXPECT_TRUE(world.Faults.empty());
}

TEST(Journey, ACancelledDialogEndsSilently) {
    DeskWorld world;
    world.Open({});
    EXPECT_TRUE(RowNames().empty());
    EXPECT_TRUE(world.Desk.Asked.empty());
}

TEST(Journey, AFileThatCannotBeReadIsToldInTheStatusLine) {
    DeskWorld world;
    const std::string path = (world.Folder.path() + QStringLiteral("/bad.npd")).toStdString();
    std::ofstream(path) << "this is no spectrum";
    world.Open({path});
    EXPECT_TRUE(RowNames().empty());
    EXPECT_TRUE(frmVaelAna.StatusFault);
    EXPECT_TRUE(world.Widget<QLabel>(frmVaelAna, "markStatus").isVisible());
    EXPECT_NE(frmVaelAna.lblStatus.Caption.find("bad.npd"), std::string::npos);
}

TEST(Journey, ARowIsHiddenAndShownByItsChip) {
    DeskWorld world;
    world.Open({world.Write("first.npd", FIVE_LINES)});
    const Colour colour = store.GraphList[0].Color;
    world.ClickOn(frmVaelAna.chkGrp[0]);
    EXPECT_EQ(store.GraphList[0].Visible, 0);
    EXPECT_EQ(PixelsOf(test::PaperOf(world, frmVaelAna.picGraph[0]), colour), 0);
    world.ClickOn(frmVaelAna.chkGrp[10]);  // and into the other window
    EXPECT_GT(PixelsOf(test::PaperOf(world, frmVaelAna.picGraph[1]), colour), 200);
    world.ClickOn(frmVaelAna.chkGrp[5]);  // an empty row stays empty
    EXPECT_EQ(frmVaelAna.chkGrp[5].Value, 0);
    EXPECT_FALSE(world.Widget<QCheckBox>(frmVaelAna, "chkGrp_5").isChecked());
}

TEST(Journey, TheShortcutOpens) {
    DeskWorld world;
    world.Desk.Files.push_back({world.Write("first.npd", FIVE_LINES)});
    world.Main().activateWindow();
    DeskWorld::Settle();
    QTest::keyClick(&world.Main(), Qt::Key_O, Qt::ControlModifier);
    DeskWorld::Settle();
    EXPECT_EQ(RowNames(), (Names{"first.npd"}));
}

TEST(Journey, ResizingRedrawsThePicturesAtTheirNewSize) {
    DeskWorld world;
    world.Open({world.Write("first.npd", FIVE_LINES)});
    world.Main().resize(1000, 720);
    DeskWorld::Settle();
    const auto& widget = world.Widget<PictureWidget>(frmVaelAna, "picGraph_0");
    EXPECT_EQ(frmVaelAna.picGraph[0].Width, widget.width());
    EXPECT_EQ(frmVaelAna.picGraph[0].Height, widget.height());
    EXPECT_EQ(Engine().Target(0).Canvas, &frmVaelAna.picGraph[0].Paper());
    // Drawn anew, not stretched: drawing it once more changes no pixel.
    const QImage resized = test::PaperOf(world, frmVaelAna.picGraph[0]).copy();
    RedrawBoth();
    EXPECT_EQ(test::PaperOf(world, frmVaelAna.picGraph[0]), resized);
    EXPECT_GT(PixelsOf(resized, store.GraphList[0].Color), 100);
}

TEST(Journey, TheBarBetweenTheWindowsMovesTheirShare) {
    DeskWorld world;
    auto& splitter = world.Widget<QSplitter>(frmVaelAna, "fraWinHeight");
    const int before = splitter.sizes()[0];
    QSplitterHandle* handle = splitter.handle(1);
    const QPoint middle = handle->rect().center();
    QTest::mousePress(handle, Qt::LeftButton, {}, middle);
    QTest::mouseMove(handle, middle - QPoint(0, 60));
    QTest::mouseRelease(handle, Qt::LeftButton, {}, middle - QPoint(0, 60));
    DeskWorld::Settle();
    EXPECT_LT(splitter.sizes()[0], before);
    const int all = splitter.sizes()[0] + splitter.sizes()[1];
    EXPECT_NEAR(frmVaelAna.fraWinHeight.Share * all, splitter.sizes()[0], 1.0);
    EXPECT_EQ(frmVaelAna.picGraph[0].Height, world.Widget(frmVaelAna, "picGraph_0").height());
}

TEST(Journey, ThePlotTakesTwoThirdsOfTheWidth) {
    DeskWorld world;
    EXPECT_GE(world.Widget(frmVaelAna, "picGraph_0").width() * 3, world.Main().width() * 2);
}

TEST(Journey, TheAxisStandsExactlyBelowThePlot) {
    DeskWorld world;
    auto& plot = world.Widget(frmVaelAna, "picGraph_0");
    auto& axis = world.Widget(frmVaelAna, "picSubScale");
    EXPECT_EQ(plot.mapTo(&world.Main(), QPoint(0, 0)).x(),
              axis.mapTo(&world.Main(), QPoint(0, 0)).x());
    EXPECT_EQ(plot.width(), axis.width());
    auto& strip = world.Widget(frmVaelAna, "picScaleY_0");
    EXPECT_EQ(strip.height(), plot.height() + 16);
    EXPECT_EQ(strip.mapTo(&world.Main(), QPoint(0, 8)).y(),
              plot.mapTo(&world.Main(), QPoint(0, 0)).y());
}

TEST(Journey, LeavingGoesThroughTheProgramsOwnCommand) {
    DeskWorld world;
    world.Main().close();
    DeskWorld::Settle();
    EXPECT_TRUE(world.Desk.HasQuit);
    EXPECT_TRUE(std::filesystem::exists(
        (world.Folder.path() + QStringLiteral("/VaelAna.ini")).toStdString()));
}

TEST(Journey, TheDataFolderIsFilledOnceAndNotOverwritten) {
    const QTemporaryDir from;
    const QTemporaryDir to;
    const auto at = [](const QTemporaryDir& folder) {
        return folder.filePath(QStringLiteral("crystal.dat")).toStdString();
    };
    std::ofstream(at(from)) << "installed";
    FillFolder(to.path().toStdString(), from.path().toStdString());
    EXPECT_TRUE(std::filesystem::exists(at(to)));
    std::ofstream(at(to)) << "the user's own";
    FillFolder(to.path().toStdString(), from.path().toStdString());
    std::ifstream in(at(to));
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), "the user's own");
}

TEST(Journey, EveryEnabledControlIsPressed) {
    DeskWorld world;
    VaelAnaView& v = frmVaelAna;
    std::set<std::string> usable;
    const auto press = [&](const auto& control) {
        test::CollectUsable(usable);
        world.ClickOn(control);
        test::CollectUsable(usable);
    };
    const std::string first = world.Write("first.npd", FIVE_LINES);
    const std::string second = world.Write("second.npd", {{800.0, 5000.0, 9.0}});

    world.Desk.Files.push_back({first, second});
    press(v.mnuLoad);
    EXPECT_EQ(RowNames(), (Names{"first.npd", "second.npd"}));
    for (auto& chip : v.chkGrp) press(chip);
    for (auto& chip : v.chkGrp) press(chip);
    for (auto& list : v.cboGrphSel) {
        const int before = list.Index;
        world.StepList(list, 1);
        EXPECT_EQ(list.Index, before + 1);
        world.StepList(list, -1);
        EXPECT_EQ(list.Index, before);
    }
    world.StepList(v.cboUnitX, 1);
    EXPECT_EQ(v.UnitX, 1);
    press(v.optEGC[0]);
    EXPECT_EQ(store.UseFileEgc, 0);
    press(v.optEGC[1]);
    EXPECT_EQ(store.UseFileEgc, 1);
    press(v.cmdOperation[3]);
    press(v.mnuSmooth);
    press(v.mnuBackGround);
    press(v.mnuNaxFit);
    EXPECT_TRUE(v.mnuNaxFit.Checked);
    world.WhileModal(frmSetting, [&] { world.ClickOn(frmSetting.cmdCansel); });
    press(v.mnuSetCons);
    world.WhileModal(frmSetColor, [&] { world.ClickOn(frmSetColor.cmdCansel); });
    world.ClickOn(v.mnuColor);  // the colour view has a census of its own
    world.ClickOn(v.Command1);  // its sheet has a census of its own
    world.ClickOn(frmDispPara.cmdCansel);
    world.ClickOn(v.mnuExpandSetting);
    world.ClickOn(frmExpandSetting.cmdClose);
    world.ClickOn(v.mnuCalcSpect);
    EXPECT_TRUE(world.Desk.FormOfView(frmGrpCalc)->isVisible());
    world.ClickOn(frmGrpCalc.cmdOK);
    for (int way = 0; way < 2; ++way) {  // the property sheet has a census of its own
        way == 0 ? world.ClickOn(v.mnuProperty) : world.ClickOn(v.cmdFiles[3]);
        EXPECT_TRUE(world.Desk.FormOfView(frmProperty)->isVisible());
        world.ClickOn(frmProperty.cmdCan);
    }
    for (int way = 0; way < 2; ++way) {  // and printing
        world.WhileModal(frmPrint, [&] { world.ClickOn(frmPrint.cmdCan); });
        way == 0 ? world.ClickOn(v.mnuPrint) : world.ClickOn(v.cmdFiles[2]);
    }
    world.ClickOn(v.mnuBatchPrint);
    world.ClickOn(frmBatchPrint.cmdClose);
    test::CopyElementTable(world);
    world.ClickOn(v.cmdEnergy[1]);  // and so has the periodic table
    EXPECT_TRUE(world.Desk.FormOfView(frmAtom)->isVisible());
    world.ClickOn(frmAtom.cmdCancel);
    for (int way = 0; way < 2; ++way) {  // the calibration has a census of its own
        way == 0 ? world.ClickOn(v.mnuCons) : world.ClickOn(v.cmdEnergy[0]);
        EXPECT_TRUE(world.Desk.FormOfView(frmDialogCalibC)->isVisible());
        world.ClickOn(frmDialogCalibC.cmdCalbCan);
    }
    press(v.mnuLogText);
    EXPECT_TRUE(world.Desk.FormOfView(frmLog)->isVisible());
    press(frmLog.cmdClear);
    press(frmLog.cmdHide);

    world.Desk.Files.push_back({first});
    press(v.cmdFiles[0]);
    press(v.cmdOperation[0]);
    for (const Button* button : {&v.cmdOperation[1], &v.cmdManualFitting}) {
        world.ClickOn(*button);  // the manual fit has a census of its own
        EXPECT_TRUE(world.Desk.FormOfView(frmManualFit)->isVisible());
        world.ClickOn(frmManualFit.cmdCancel);
    }
    world.Desk.Files.push_back({first});
    press(v.cmdFiles[0]);
    press(v.cmdOperation[2]);
    world.ClickOn(v.cmdOperation[10]);
    world.ClickOn(frmPeakReport.cmdCancel);  // the reports have censuses of their own
    world.ClickOn(v.mnuPeakReport);
    world.ClickOn(frmPeakReport.cmdRepEnd);
    world.ClickOn(v.mnuRoiReport);
    world.ClickOn(frmRoiReport.cmdOk);
    std::ofstream(world.Folder.path().toStdString() + "/crystal.dat")
        << std::string(10, '\n') << "0\n";
    for (const Button* button : {&v.cmdOperation[9], &v.cmdShowReport}) {
        world.ClickOn(*button);  // the lattice view has a census of its own
        EXPECT_TRUE(world.Desk.FormOfView(frmPeakCal)->isVisible());
        world.Desk.Saves.push_back("");
        world.ClickOn(frmPeakCal.cmdExit);
    }
    world.Desk.Files.push_back({first});
    press(v.cmdFiles[0]);
    press(v.cmdAutoFit);
    EXPECT_EQ(RowNames().front(), "Fit");

    test::PressSavingAndRows(world, press);
    test::PressPlots(world, press);

    frmDialogMessage.Kind(0);
    frmDialogMessage.Visible = true;
    world.Desk.Show();
    press(frmDialogMessage.cmdYes);
    frmDialogMessage.Visible = true;
    world.Desk.Show();
    press(frmDialogMessage.cmdNo);

    press(v.mnuExit);
    EXPECT_TRUE(world.Desk.HasQuit);

    EXPECT_TRUE(world.Faults.empty()) << world.Faults.front();
    for (const std::string& name : usable)
        EXPECT_TRUE(world.Pressed.contains(name)) << name << " works and no test presses it";
    EXPECT_GT(usable.size(), 30U);
}

}  // namespace
}  // namespace vael
