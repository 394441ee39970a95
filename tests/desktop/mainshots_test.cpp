// Screenshots of the main window in each of its states and sizes, for a person to look at.
#include "shots.h"

#include "core/cursors.h"

namespace vael {
namespace {

using test::DeskWorld;
using test::FIVE_LINES;
using test::Shoot;

class MainShots : public test::ShotTest {
protected:
    /// Fitted, so that peaks, a memo and several rows are there.
    static void OpenAndFit(DeskWorld& world) {
        OpenSpectrum(world);
        world.ClickOn(frmVaelAna.cmdAutoFit);
    }
    static void SizeTo(DeskWorld& world, int width, int height) {
        world.Main().resize(width, height);
        DeskWorld::Settle();
    }
    static void OpenFive(DeskWorld& world) {
        std::vector<std::string> paths;
        for (int i = 0; i < 5; ++i) {
            auto lines = FIVE_LINES;
            for (auto& line : lines) line.Center += 40.0 * i;
            paths.push_back(world.Write("run" + std::to_string(i + 1) + ".npd", lines));
        }
        world.Open(paths);
    }
};

TEST_F(MainShots, EachSizeOfTheWindow) {
    for (const bool dark : {false, true}) {
        if (dark) Dark();
        DeskWorld world;
        OpenAndFit(world);
        for (const auto& [width, height] : {std::pair{1100, 700}, {1264, 760}, {1920, 1080}}) {
            SizeTo(world, width, height);
            EXPECT_EQ(world.Main().width(), width) << "the window does not go that narrow";
            EXPECT_EQ(world.Main().height(), height) << "the window does not go that low";
            Shoot(world.Main(), "size_" + std::to_string(width) + (dark ? "_dark" : ""));
        }
    }
}

TEST_F(MainShots, TheMagnifierWithItsBand) {
    for (const bool dark : {false, true}) {
        if (dark) Dark();
        DeskWorld world;
        OpenSpectrum(world);
        world.ClickOn(frmVaelAna.ckbExpand);
        world.DragOn(0, world.PlaceOf(0, 900), world.PlaceOf(0, 1600));
        Shoot(world.Main(), dark ? "expand_dark" : "expand");
    }
}

TEST_F(MainShots, APileOfFive) {
    DeskWorld world;
    OpenFive(world);
    world.ClickOn(frmVaelAna.chkWinStyle);
    Shoot(world.Main(), "pileup");
}

TEST_F(MainShots, TheLogAxisAndTheShortCursor) {
    for (const bool dark : {false, true}) {
        if (dark) Dark();
        DeskWorld world;
        OpenSpectrum(world);
        CsrX_Change(1034);
        world.ClickOn(frmVaelAna.chkCsrType);
        Shoot(world.Main(), dark ? "cursor_line_dark" : "cursor_line");
        world.ClickOn(frmVaelAna.chkCsrType);
        world.ClickOn(frmVaelAna.ckbLogScale);
        Shoot(world.Main(), dark ? "logaxis_dark" : "logaxis");
    }
}

TEST_F(MainShots, AnAreaAndThePeakMarks) {
    for (const bool dark : {false, true}) {
        if (dark) Dark();
        DeskWorld world;
        OpenAndFit(world);
        world.ClickOn(frmVaelAna.chkArea);
        world.DragOn(0, world.PlaceOf(0, 800), world.PlaceOf(0, 1500));
        world.ClickOn(frmVaelAna.chkPeakParameter);
        Shoot(world.Main(), dark ? "area_dark" : "area");
    }
}

TEST_F(MainShots, RegionsAndTheNumbersOfPeaksAfterAnExpressFit) {
    for (const bool dark : {false, true}) {
        if (dark) Dark();
        DeskWorld world;
        OpenSpectrum(world);
        world.ClickOn(frmVaelAna.mnuExpressFit);
        world.Desk.Answers.push_back(Answer::Ok);  // peaks were cut
        world.ClickOn(frmVaelAna.cmdOperation[2]);
        for (const auto& [from, to] : {std::pair{"720", "750"}, {"1020", "1060"}}) {
            world.TypeInto(frmVaelAna.inumCursorCh, from, Qt::Key_Return);
            world.ClickOn(frmVaelAna.mnuRoiStart);
            world.TypeInto(frmVaelAna.inumCursorCh, to, Qt::Key_Return);
            world.ClickOn(frmVaelAna.mnuRoiEnd);
        }
        world.TypeInto(frmVaelAna.imnSpanCh, "900", Qt::Key_Return);
        world.ClickOn(frmVaelAna.chkPeakParameter);
        Shoot(world.Main(), dark ? "regions_dark" : "regions");
    }
}

TEST_F(MainShots, APeakMemo) {
    for (const bool dark : {false, true}) {
        if (dark) Dark();
        DeskWorld world;
        OpenAndFit(world);
        world.ClickOn(frmVaelAna.cmdOperation[8]);
        world.ClickOn(frmVaelAna.cmdOperation[8]);
        QTest::mouseDClick(&world.Plot(0), Qt::LeftButton, {}, world.PlaceOf(0, CursorCh()));
        DeskWorld::Settle();
        EXPECT_TRUE(frmVaelAna.fraMemo[0].Visible);
        Shoot(world.Main(), dark ? "memo_dark" : "memo");
    }
}

TEST_F(MainShots, WithoutTheSidePanel) {
    DeskWorld world;
    OpenAndFit(world);
    world.KeyOn(Qt::Key_F9);
    Shoot(world.Main(), "nopanel");
}

TEST_F(MainShots, AFaultInTheStatusLine) {
    for (const bool dark : {false, true}) {
        if (dark) Dark();
        DeskWorld world;
        OpenSpectrum(world);
        TellStatus("The result does not fit into 16 bits.", true);
        world.Desk.Show();
        DeskWorld::Settle();
        Shoot(world.Main(), dark ? "fault_dark" : "fault");
    }
}

}  // namespace
}  // namespace vael
