// Screenshots of the window for a person to look at: light, dark, at single and double density.
#include "shots.h"

#include "core/frmdialogload.h"

#include <QDir>

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

TEST_F(Shots, TheFileDialog) {
    for (const bool dark : {false, true}) {
        if (dark) Dark();
        DeskWorld world;
        for (const char* name : {"AuWire.npd", "NaCl 2 GPa.npd", "試料.npd"})
            world.Write(name, test::FIVE_LINES);
        QDir(world.Folder.path()).mkdir(QStringLiteral("former runs"));
        DialogLoadView& v = frmDialogLoad;
        v.SetExt("npd,xbm,000");
        v.Directory(world.Folder.path().toStdString());
        v.DefExt("npd");
        v.VisibleWin(true);
        v.MaxGrp(10);
        v.drvDrive.Items = {"/"};
        v.drvDrive.Index = 0;
        v.FileName("AuWire.npd");
        v.filFiles.Index = 0;
        v.Visible = true;
        world.Desk.Show();
        DeskWorld::Settle();
        Shoot(*world.Desk.FormOfView(v), dark ? "files_dark" : "files");
        v.Visible = false;
        world.Desk.Show();
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

/// The small views, each as it stands when it is opened.
void ShootSmallViews(DeskWorld& world, const std::string& end) {
    const auto shoot = [&](const View& view, const std::string& name) {
        Shoot(*world.Desk.FormOfView(view), name + end);
    };
    const auto shootSetting = [&](const std::string& name) {
        world.WhileModal(frmSetting, [&, name] {
            shoot(frmSetting, name);
            world.ClickOn(frmSetting.cmdCansel);
        });
        world.ClickOn(frmVaelAna.mnuSetCons);
    };
    store.DefaultParam.EgcCoef = {-0.0515, 0.031733, 1.2e-9};
    store.DefaultParam.TwoTheta = 15.01459;
    store.DefaultParam.RealTime = 600.0;
    store.DefaultParam.LiveTime = 588.5;
    store.DefaultParam.Temperature = 27.0;
    shootSetting("setting");
    store.FitMode = 1;
    shootSetting("setting_express");
    world.ClickOn(frmVaelAna.Command1);
    shoot(frmDispPara, "disppara");
    world.ClickOn(frmDispPara.cmdCansel);
    world.ClickOn(frmVaelAna.mnuCalcSpect);
    world.StepList(frmGrpCalc.cmbOpe2, -3);
    shoot(frmGrpCalc, "grpcalc");
    world.ClickOn(frmGrpCalc.cmdOK);
    world.ClickOn(frmVaelAna.mnuExpandSetting);
    shoot(frmExpandSetting, "expandsetting");
    world.ClickOn(frmExpandSetting.cmdClose);
    world.WhileModal(frmInput, [&] {
        frmInput.txtInput.Text = "2026-11-21";
        world.Desk.Show();
        shoot(frmInput, "input");
        world.ClickOn(frmInput.cmdCan);
    });
    RunEvent(frmVaelAna, [] { (void)AskLine("New Dir"); });
}

TEST_F(Shots, TheSmallViews) {
    DeskWorld world;
    ShootSmallViews(world, "");
}

TEST_F(Shots, TheSmallViewsInTheDark) {
    Dark();
    DeskWorld world;
    ShootSmallViews(world, "_dark");
}

}  // namespace
}  // namespace vael
