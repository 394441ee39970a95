// The settings dialog, the parameter sheet and the input box in their windows, by mouse and key.
#include "deskworld.h"

#include "core/cursors.h"

#include <QLabel>
#include <QPushButton>
#include <QWindow>

namespace vael {
namespace {

using test::DeskWorld;

/// Opens the settings by their menu item and acts in them.
void InSettings(DeskWorld& world, const std::function<void()>& acts) {
    bool acted = false;
    world.WhileModal(frmSetting, [&] {
        ASSERT_TRUE(world.Desk.FormOfView(frmSetting)->isVisible());
        acts();
        acted = true;
    });
    world.ClickOn(frmVaelAna.mnuSetCons);
    EXPECT_TRUE(acted);
    EXPECT_FALSE(world.Desk.FormOfView(frmSetting)->isVisible());
}

/// All that can be pressed in the views that stand open is found in `Pressed` at the end.
struct Census {
    std::set<std::string> Usable;
    void Take() { test::CollectUsable(Usable); }
    void ExpectPressed(const DeskWorld& world, const std::string& view) const {
        int controls = 0;
        for (const std::string& name : Usable) {
            if (!name.starts_with(view + ".")) continue;
            ++controls;
            EXPECT_TRUE(world.Pressed.contains(name)) << name << " works and no test presses it";
        }
        EXPECT_GT(controls, 2) << view;
    }
};

TEST(SettingOnScreen, EveryControlIsPressedAndOkStoresIt) {
    DeskWorld world;
    Census census;
    const SettingView& v = frmSetting;
    InSettings(world, [&] {
        census.Take();
        world.StepList(v.cboSmooth, 2);
        world.ClickOn(v.chkSmoothingOn);
        world.TypeInto(v.txtBackInterval, "25");
        world.TypeInto(v.txtBackTimes, "7");
        world.TypeInto(v.txtEACPS, "0.4");
        world.TypeInto(v.txtISPPK, "15");
        world.TypeInto(v.txtLambda, "0.71");
        world.TypeInto(v.txtJudgeRange, "0.02");
        world.ClickOn(v.cmdOk);
    });
    EXPECT_EQ(settings.SmoothIndex, 2);
    EXPECT_EQ(settings.SmoothingOn, 0);
    EXPECT_EQ(settings.BackInterval, 25);
    EXPECT_EQ(settings.BackTimes, 7);
    EXPECT_EQ(settings.EACPS, 0.4);
    EXPECT_EQ(settings.ISPPK, 15.0);
    EXPECT_EQ(settings.Lambda, 0.71);
    EXPECT_EQ(settings.JudgeRange, 0.02);

    InSettings(world, [&] {
        world.ClickOn(v.cmdDefault);
        EXPECT_EQ(world.Widget<QLineEdit>(frmSetting, "txtEACPS").text(), QStringLiteral("0.20"));
        world.ClickOn(v.cmdCansel);
    });
    EXPECT_EQ(settings.EACPS, 0.2);

    store.FitMode = 1;
    InSettings(world, [&] {
        census.Take();
        world.TypeInto(v.txtThres, "25", Qt::Key_Return);
        EXPECT_TRUE(v.Visible) << "Enter in this box only holds its range";
        EXPECT_EQ(world.Widget<QLineEdit>(frmSetting, "txtThres").text(), QStringLiteral("20"));
        world.StepList(v.cboFuncType, 1);
        world.TypeInto(v.txtBackTimes, "6", Qt::Key_Return);  // Enter is "OK"
    });
    EXPECT_EQ(settings.PeakThres, 20);
    EXPECT_EQ(settings.FuncType, SHAPE_LORENTZ);
    EXPECT_EQ(settings.BackTimes, 6);
    census.ExpectPressed(world, "frmSetting");
    EXPECT_TRUE(world.Faults.empty());
}

TEST(SettingOnScreen, TheFitterDecidesWhichItemsAreThere) {
    DeskWorld world;
    InSettings(world, [&] {
        EXPECT_TRUE(world.Widget(frmSetting, "txtEACPS").isVisible());
        EXPECT_FALSE(world.Widget(frmSetting, "txtThres").isVisible());
        EXPECT_FALSE(world.Widget(frmSetting, "lblThresHint").isVisible());
        EXPECT_FALSE(world.Widget(frmSetting, "chkFitFunc").isEnabled());
        EXPECT_FALSE(world.Widget(frmSetting, "chkFitFunc").toolTip().isEmpty());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    });
    store.FitMode = 1;
    InSettings(world, [&] {
        EXPECT_FALSE(world.Widget(frmSetting, "txtISPPK").isVisible());
        EXPECT_TRUE(world.Widget(frmSetting, "cboFuncType").isVisible());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    });
}

TEST(SettingOnScreen, TabGoesThroughTheBoxesInTheOrderOfReading) {
    DeskWorld world;
    std::vector<std::string> order;
    InSettings(world, [&] {
        for (int i = 0; i < 11; ++i) {
            order.push_back(QApplication::focusWidget()->objectName().toStdString());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        world.ClickOn(frmSetting.cmdCansel);
    });
    EXPECT_EQ(order,
              (std::vector<std::string>{"cboSmooth", "chkSmoothingOn", "txtBackInterval",
                                        "txtBackTimes", "txtEACPS", "txtISPPK", "txtLambda",
                                        "txtJudgeRange", "cmdDefault", "cmdOk", "cmdCansel"}));
}

TEST(SettingOnScreen, ATextThatIsNoNumberIsToldAndTheDialogStays) {
    DeskWorld world;
    InSettings(world, [&] {
        world.TypeInto(frmSetting.txtBackInterval, "wide");
        world.ClickOn(frmSetting.cmdOk);
        EXPECT_TRUE(world.Desk.FormOfView(frmSetting)->isVisible());
        world.ClickOn(frmSetting.cmdCansel);
    });
    EXPECT_EQ(world.Faults.size(), 1U);
    EXPECT_TRUE(frmVaelAna.StatusFault);
    EXPECT_NE(frmVaelAna.lblStatus.Caption.find("wide"), std::string::npos);
}

TEST(SettingOnScreen, EnterOnCancelCancels) {
    DeskWorld world;
    InSettings(world, [&] {
        world.TypeInto(frmSetting.txtBackInterval, "31");
        auto& cancel = world.Widget<QPushButton>(frmSetting, "cmdCansel");
        cancel.setFocus();
        QTest::keyClick(&cancel, Qt::Key_Return);
    });
    EXPECT_EQ(settings.BackInterval, 20);
}

TEST(DispParaOnScreen, EveryControlIsPressedAndOkStoresIt) {
    DeskWorld world;
    store.DefaultParam.EgcCoef = {0.1, 0.03, 4.5e-8};
    Census census;
    DispParaView& v = frmDispPara;
    world.ClickOn(frmVaelAna.Command1);
    census.Take();
    for (Option& option : v.optMode) world.ClickOn(option);
    world.TypeInto(v.imnRealTime, "600");
    world.TypeInto(v.imnLiveTime, "590");
    world.ClickOn(v.chkCnst[0]);
    census.Take();
    world.TypeInto(v.ImConst[0], "0.2");
    world.TypeInto(v.ImConst[1], "0.04");
    world.TypeInto(v.ImConst[2], "1E-8");
    world.ClickOn(v.chkCnst[1]);
    EXPECT_FALSE(world.Widget(frmDispPara, "ImConst_2").isEnabled());
    EXPECT_EQ(world.Widget<QLineEdit>(frmDispPara, "ImConst_2").text(),
              QStringLiteral("0.00000E+000"));
    world.TypeInto(v.imnAngle, "6.5");
    world.TypeInto(v.ImnPress, "2");
    world.TypeInto(v.ImnTemp, "800");
    world.ClickOn(v.cmdOk);
    EXPECT_FALSE(world.Desk.FormOfView(frmDispPara)->isVisible());
    EXPECT_EQ(store.DefaultParam.EgcCoef, (std::array<double, 3>{0.2, 0.04, 0.0}));
    EXPECT_EQ(store.DefaultParam.MeasureType, 4);
    EXPECT_EQ(store.DefaultParam.LiveTime, 590.0);
    EXPECT_EQ(store.DefaultParam.TwoTheta, 6.5);

    world.ClickOn(frmVaelAna.Command1);
    world.TypeInto(v.ImnTemp, "900");
    world.ClickOn(frmVaelAna.cboUnitX);  // the main window is alive beside it
    QApplication::activePopupWidget()->close();
    world.ClickOn(v.cmdCansel);
    EXPECT_EQ(store.DefaultParam.Temperature, 800.0);
    census.ExpectPressed(world, "frmDispPara");
    EXPECT_TRUE(world.Faults.empty());
}

TEST(GrpCalcOnScreen, EveryControlIsPressedAndTheResultIsDrawn) {
    DeskWorld world;
    world.Open({world.Write("first.npd", test::FIVE_LINES),
                world.Write("second.npd", {{200.0, 9000.0, 9.0}})});
    const std::int32_t first = store.SpectrumDatas[0].Count[200];
    const std::int32_t second = store.SpectrumDatas[1].Count[200];
    ASSERT_NE(first, second);
    Census census;
    const GrpCalcView& v = frmGrpCalc;
    world.ClickOn(frmVaelAna.mnuCalcSpect);
    census.Take();
    auto& form = *world.Desk.FormOfView(v);
    ASSERT_TRUE(form.isVisible());
    EXPECT_FALSE(world.Widget<QWidget>(v, "fra2nd").isVisible());
    world.StepList(v.cmbOpe2, -3);
    EXPECT_TRUE(world.Widget<QWidget>(v, "fra2nd").isVisible());
    world.StepList(v.cmbGraph[0], -1);
    world.StepList(v.cmbOpe1, 2);
    world.TypeInto(v.ImNumber1, "3");
    world.StepList(v.cmbGraph[1], 1);
    world.StepList(v.cmbOpe3, 3);
    world.TypeInto(v.ImNumber2, "4");
    world.ClickOn(v.cmdCalc);
    EXPECT_EQ(store.SpectrumDatas[0].Count[200], 3 * first - Whole32(second / 4.0));
    EXPECT_EQ(world.Widget<QLabel>(v, "lblName_1").text(), QStringLiteral("second.npd"));
    world.ClickOn(v.cmdOK);
    EXPECT_FALSE(form.isVisible());
    census.ExpectPressed(world, "frmGrpCalc");
    EXPECT_TRUE(world.Faults.empty());
}

TEST(ExpandSettingOnScreen, EveryControlIsPressedAndSetShowsTheRange) {
    DeskWorld world;
    world.Open({world.Write("first.npd", test::FIVE_LINES)});
    Census census;
    const ExpandSettingView& v = frmExpandSetting;
    world.ClickOn(frmVaelAna.mnuExpandSetting);
    census.Take();
    auto& form = *world.Desk.FormOfView(v);
    ASSERT_TRUE(form.isVisible());
    EXPECT_EQ(world.Widget<QLabel>(v, "lblMaxCount").text(), QStringLiteral("of 4096"));
    world.TypeInto(v.txtStartCh, "501");
    world.TypeInto(v.txtChWidth, "400");
    world.ClickOn(v.cmdSet);
    EXPECT_EQ(frmVaelAna.imnSpanCh.Value, 400.0);
    EXPECT_EQ(CursorCh(), 700);
    world.TypeInto(v.txtChWidth, "200", Qt::Key_Return);
    EXPECT_EQ(CursorCh(), 600) << "Enter sets too";
    EXPECT_TRUE(v.Visible);
    world.ClickOn(v.cmdChangeWindowMode);
    EXPECT_TRUE(form.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
    world.ClickOn(v.cmdChangeWindowMode);
    EXPECT_FALSE(form.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(form.isVisible());
    world.ClickOn(v.cmdClose);
    EXPECT_FALSE(form.isVisible());
    census.ExpectPressed(world, "frmExpandSetting");
    EXPECT_TRUE(world.Faults.empty());
}

TEST(Window, KeysGoOnInTheMainWindowWhenAnotherIsHidden) {
    DeskWorld world;
    world.ClickOn(frmVaelAna.mnuLogText);
    world.Desk.FormOfView(frmLog)->activateWindow();
    DeskWorld::Settle();
    ASSERT_EQ(QApplication::activeWindow(), world.Desk.FormOfView(frmLog));
    world.ClickOn(frmLog.cmdHide);
    EXPECT_EQ(QApplication::activeWindow(), &world.Main());
}

TEST(InputOnScreen, BeginsInTheBoxAndGivesTheLine) {
    DeskWorld world;
    std::string given = "nothing";
    const auto ask = [&](const std::function<void()>& acts) {
        world.WhileModal(frmInput, acts);
        RunEvent(frmVaelAna, [&] { given = AskLine("New Dir"); });
    };
    ask([&] {
        auto& box = world.Widget<QLineEdit>(frmInput, "txtInput");
        EXPECT_EQ(QApplication::focusWidget(), &box);
        EXPECT_EQ(world.Widget<QLabel>(frmInput, "lblInputName").text(), QStringLiteral("New Dir"));
        QTest::keyClicks(&box, QStringLiteral("run 7"));
        QTest::keyClick(&box, Qt::Key_Return);
    });
    EXPECT_EQ(given, "run 7");
    ask([&] {
        EXPECT_EQ(world.Widget<QLineEdit>(frmInput, "txtInput").text(), QString());
        world.TypeInto(frmInput.txtInput, "run 8");
        world.ClickOn(frmInput.cmdCan);
    });
    EXPECT_EQ(given, "");
    ask([&] {
        world.TypeInto(frmInput.txtInput, "run 9");
        world.ClickOn(frmInput.cmdOk);
    });
    EXPECT_EQ(given, "run 9");
}

}  // namespace
}  // namespace vael
