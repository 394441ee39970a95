// Screenshots of the window for a person to look at: light, dark, at single and double density.
#include "shots.h"

namespace vael {
namespace {

using test::DeskWorld;
using test::Shoot;

class Shots : public test::ShotTest {};

TEST_F(Shots, TheEmptyWindow) {
    DeskWorld world;
    Shoot(world.Main(), "empty");
}

TEST_F(Shots, ASpectrumOpened) {
    DeskWorld world;
    OpenSpectrum(world);
    Shoot(world.Main(), "opened");
}

TEST_F(Shots, ASpectrumFitted) {
    DeskWorld world;
    OpenSpectrum(world);
    world.ClickOn(frmVaelAna.cmdAutoFit);
    Shoot(world.Main(), "fitted");
}

TEST_F(Shots, TheSameInTheDark) {
    Dark();
    DeskWorld world;
    OpenSpectrum(world);
    world.ClickOn(frmVaelAna.cmdAutoFit);
    Shoot(world.Main(), "fitted_dark");
}

TEST_F(Shots, TheListOfRows) {
    for (const bool dark : {false, true}) {
        if (dark) Dark();
        DeskWorld world;
        OpenSpectrum(world);
        world.ClickOn(frmVaelAna.cmdAutoFit);
        world.ClickOn(frmVaelAna.chkGrp[2]);
        world.ClickOn(frmVaelAna.chkGrp[13]);
        world.ClickOn(frmVaelAna.cmdMnSelGrp);
        Shoot(*world.Desk.FormOfView(frmSelGraph), dark ? "rows_dark" : "rows");
        Shoot(world.Main(), dark ? "two_windows_dark" : "two_windows");
    }
}

TEST_F(Shots, ASmallWindow) {
    DeskWorld world;
    OpenSpectrum(world);
    world.Main().resize(world.Main().minimumSizeHint());
    DeskWorld::Settle();
    Shoot(world.Main(), "small");
}

TEST_F(Shots, TheLogAndTheMessage) {
    DeskWorld world;
    OpenSpectrum(world);
    world.ClickOn(frmVaelAna.cmdAutoFit);
    world.ClickOn(frmVaelAna.mnuLogText);
    Shoot(*world.Desk.FormOfView(frmLog), "log");
    frmDialogMessage.Kind(0);
    frmDialogMessage.Message("グラフNoｶﾞ規定範囲外です｡:14");
    frmDialogMessage.Visible = true;
    world.Desk.Show();
    DeskWorld::Settle();
    Shoot(*world.Desk.FormOfView(frmDialogMessage), "message");
    frmDialogMessage.Visible = false;
    world.Desk.Show();
}

}  // namespace
}  // namespace vael
