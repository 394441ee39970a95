// The manual fit and the peak by numbers in their windows, by mouse and key.
#include "shots.h"

#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/graphs.h"
#include "desktop/griditems.h"

#include <QLabel>
#include <QPushButton>

namespace vael {
namespace {

using test::DeskWorld;
using test::Shoot;

ManualFitView& v = frmManualFit;

// Lines of full width 10 and 12 at the 0-based channels 200 and 230.
const std::vector<GaussLine> PAIR{{200.0, 8000.0, 10.0}, {230.0, 4000.0, 12.0}};

void OpenPair(DeskWorld& world) {
    world.Open({world.Write("pair.npd", PAIR)});
    world.ClickOn(frmVaelAna.cmdManualFitting);
    ASSERT_TRUE(world.Desk.FormOfView(v)->isVisible());
}

const PeakTable& PeaksOf(int row) {
    return store.PeakTables[static_cast<std::size_t>(GetGraphDataNo(row))];
}

QString Text(DeskWorld& world, const Control& box) {
    return world.Widget<QLineEdit>(box.Owner, box.Name).text();
}

/// Types the pair as one would read it off the plot.
void TypePair(DeskWorld& world) {
    world.TypeInto(v.txtStartCh, "160");
    world.TypeInto(v.txtEndCh, "280");
    world.TypeInto(v.txtPeakNum, "2");
    world.TypeInto(v.txtCenterCh[0], "202");
    world.TypeInto(v.txtMaxCount[0], "7000");
    world.TypeInto(v.txtWidth[0], "9");
    world.TypeInto(v.txtCenterCh[1], "230");
    world.TypeInto(v.txtMaxCount[1], "3500");
    world.TypeInto(v.txtWidth[1], "11");
}

void PressLine(DeskWorld& world, int row) {
    auto& table = world.Widget<GridWidget>(v, "grdConstraint");
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {},
                      table.MiddleOf(ManualFitView::READS, row));
    world.Pressed.insert("frmManualFit.grdConstraint");
    DeskWorld::Settle();
}

/// Presses the keys on whatever has the focus.
void Keys(const QString& text) { QTest::keyClicks(QApplication::focusWidget(), text); }
void KeyOnFocus(Qt::Key key) {
    QTest::keyClick(QApplication::focusWidget(), key);
    DeskWorld::Settle();
}
void TabTo(const std::string& name) {
    for (int i = 0; i < 40; ++i) {
        if (QApplication::focusWidget()->objectName().toStdString() == name) return;
        KeyOnFocus(Qt::Key_Tab);
    }
    FAIL() << "Tab does not come to " << name;
}

TEST(ManualFitOnScreen, EveryControlIsPressedAndItsResultSeen) {
    DeskWorld world;
    OpenPair(world);
    std::set<std::string> usable;
    TypePair(world);
    std::int16_t start = 0;
    std::int16_t end = 0;
    EXPECT_EQ(GetRegions(start, end), -1);
    EXPECT_EQ(start, 159);
    EXPECT_EQ(end, 279);
    EXPECT_EQ(v.txtParamNum.Text, "6");
    world.TypeInto(v.txtPeakNum, "5");
    test::CollectUsable(usable);
    for (std::size_t i = 2; i < 5; ++i) {
        world.TypeInto(v.txtCenterCh[i], "300");
        world.TypeInto(v.txtMaxCount[i], "50");
        world.TypeInto(v.txtWidth[i], "4");
        EXPECT_EQ(v.CenterCh[i], 300.0);
        EXPECT_EQ(v.MaxCount[i], 50.0);
        EXPECT_EQ(v.ChWidth[i], 4.0);
    }
    CsrX_Change(230);
    for (std::size_t i = 0; i < 5; ++i) {
        world.ClickOn(v.cmdGetValue[i]);
        EXPECT_EQ(v.CenterCh[i], 231.0) << i;
        EXPECT_EQ(Text(world, v.txtCenterCh[i]), QStringLiteral("231"));
    }
    world.TypeInto(v.txtPeakNum, "2");
    EXPECT_FALSE(world.Widget(v, "txtCenterCh_2").isVisible());
    TypePair(world);

    // A rule of each kind; one is taken away again.
    world.ClickOn(v.cmdRuleAdd);
    EXPECT_EQ(RuleReads(v.Rules.at(0)), "W1 stays");
    world.StepList(v.cboRulePeak, 1);
    world.StepList(v.cboRuleHow, 2);
    test::CollectUsable(usable);
    world.TypeInto(v.txtRuleValue, "1.2", Qt::Key_Return);
    EXPECT_EQ(RuleReads(v.Rules.at(1)), "W2 = 1.2 * W1");
    world.StepList(v.cboRuleMaster, 1);
    world.StepList(v.cboRuleMaster, -1);
    world.StepList(v.cboRuleParam, -1);
    world.StepList(v.cboRuleHow, -1);
    world.TypeInto(v.txtRuleValue, "30.25");
    world.ClickOn(v.cmdRuleAdd);
    EXPECT_EQ(RuleReads(v.Rules.at(2)), "P2 = P1 + 30.25");
    test::CollectUsable(usable);
    PressLine(world, 1);
    world.ClickOn(v.cmdRuleRemove);
    ASSERT_EQ(v.Rules.size(), 2U);
    EXPECT_EQ(RuleReads(v.Rules[0]), "W2 = 1.2 * W1");

    world.ClickOn(v.cmdExecute);
    EXPECT_FALSE(world.Desk.FormOfView(v)->isVisible());
    ASSERT_EQ(PeaksOf(1).PeakNum, 2);
    EXPECT_NEAR(PeaksOf(1).Peak[1].Position - PeaksOf(1).Peak[0].Position, 30.25, 1e-9);
    EXPECT_NEAR(PeaksOf(1).Peak[1].Width, 1.2 * PeaksOf(1).Peak[0].Width, 1e-9);

    world.ClickOn(frmVaelAna.cmdManualFitting);
    InputFitParameterView& input = frmInputFitParameter;
    world.WhileModal(input, [&] {
        test::CollectUsable(usable);
        world.TypeInto(input.txtCenterCh, "401");
        world.TypeInto(input.txtMaxCount, "500");
        world.TypeInto(input.txtWidth, "-1");
        world.ClickOn(input.cmdOK);
        EXPECT_EQ(world.Widget<QLabel>(input, "lblTold").text(),
                  QStringLiteral("A peak's width is above 0."));
        world.TypeInto(input.txtWidth, "12");
        world.ClickOn(input.cmdOK);
    });
    world.ClickOn(v.cmdInputFit);
    EXPECT_EQ(PeaksOf(1).PeakNum, 3);
    EXPECT_EQ(PeaksOf(1).Peak[2].Width, 6.0);
    world.WhileModal(input, [&] { world.ClickOn(input.cmdCancel); });
    world.ClickOn(v.cmdInputFit);
    EXPECT_EQ(PeaksOf(1).PeakNum, 3);
    world.ClickOn(v.cmdCancel);
    EXPECT_FALSE(world.Desk.FormOfView(v)->isVisible());
    EXPECT_TRUE(world.Faults.empty());

    int controls = 0;
    for (const std::string& name : usable) {
        if (!name.starts_with("frmManualFit.") && !name.starts_with("frmInputFit")) continue;
        ++controls;
        EXPECT_TRUE(world.Pressed.contains(name)) << name << " works and no test presses it";
    }
    EXPECT_GT(controls, 35);
}

TEST(ManualFitOnScreen, GoesByTheKeyboardAlone) {
    DeskWorld world;
    world.Open({world.Write("pair.npd", PAIR)});
    world.KeyOn(Qt::Key_M, Qt::ControlModifier);
    ASSERT_TRUE(world.Desk.FormOfView(v)->isVisible());
    world.Desk.FormOfView(v)->activateWindow();
    world.Widget(v, "txtStartCh").setFocus();
    DeskWorld::Settle();
    const auto type = [](const std::string& name, const QString& text) {
        TabTo(name);
        Keys(text);
    };
    type("txtStartCh", QStringLiteral("160"));
    KeyOnFocus(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("txtEndCh"));
    type("txtEndCh", QStringLiteral("280"));
    TabTo("txtPeakNum");
    KeyOnFocus(Qt::Key_Delete);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
    Keys(QStringLiteral("2"));
    type("txtCenterCh_0", QStringLiteral("202"));
    type("txtMaxCount_0", QStringLiteral("7000"));
    type("txtWidth_0", QStringLiteral("9"));
    type("txtCenterCh_1", QStringLiteral("230"));
    type("txtMaxCount_1", QStringLiteral("3500"));
    type("txtWidth_1", QStringLiteral("11"));
    TabTo("cboRulePeak");
    KeyOnFocus(Qt::Key_Down);
    TabTo("cboRuleHow");
    KeyOnFocus(Qt::Key_End);
    type("txtRuleValue", QStringLiteral("1.2"));
    KeyOnFocus(Qt::Key_Return);
    ASSERT_EQ(v.Rules.size(), 1U);
    EXPECT_EQ(RuleReads(v.Rules[0]), "W2 = 1.2 * W1");
    TabTo("cmdExecute");
    KeyOnFocus(Qt::Key_Space);
    EXPECT_FALSE(v.Visible);
    ASSERT_EQ(PeaksOf(1).PeakNum, 2);
    EXPECT_NEAR(PeaksOf(1).Peak[1].Width, 1.2 * PeaksOf(1).Peak[0].Width, 1e-9);
}

TEST(ManualFitOnScreen, LettersSpringBackAndTheFitWaitsOnce) {
    DeskWorld world;
    OpenPair(world);
    TypePair(world);
    auto& box = world.Widget<QLineEdit>(v, "txtCenterCh_0");
    QTest::mouseClick(&box, Qt::LeftButton);
    QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&box, QStringLiteral("abc"));
    world.Widget(v, "cmdExecute").setFocus(Qt::MouseFocusReason);
    world.ClickOn(v.cmdExecute);
    EXPECT_EQ(box.text(), QStringLiteral("202"));
    EXPECT_TRUE(v.Visible);
    EXPECT_NE(world.Widget<QLabel>(v, "lblTold").text().indexOf(QStringLiteral("\"abc\"")), -1);
    EXPECT_EQ(PeaksOf(0).PeakNum, 0);
    world.ClickOn(v.cmdExecute);
    EXPECT_FALSE(v.Visible);
}

TEST(ManualFitOnScreen, ADragInThePlotGoesToTheRegion) {
    DeskWorld world;
    OpenPair(world);
    world.ClickOn(frmVaelAna.chkArea);
    world.DragOn(0, world.PlaceOf(0, 500), world.PlaceOf(0, 900));
    std::int16_t start = 0;
    std::int16_t end = 0;
    ASSERT_EQ(GetRegions(start, end), -1);
    EXPECT_EQ(Text(world, v.txtStartCh), QString::number(start + 1));
    EXPECT_EQ(Text(world, v.txtEndCh), QString::number(end + 1));
    world.ClickOn(frmVaelAna.mnuCloseGraph);
    EXPECT_FALSE(world.Desk.FormOfView(v)->isVisible());
}

class ManualShots : public test::ShotTest {};

void ShootBoth(DeskWorld& world, const std::string& end) {
    OpenPair(world);
    Shoot(*world.Desk.FormOfView(v), "manualfit_start" + end);
    TypePair(world);
    world.TypeInto(v.txtPeakNum, "3");
    world.TypeInto(v.txtCenterCh[2], "262.5");
    world.TypeInto(v.txtMaxCount[2], "450");
    world.TypeInto(v.txtWidth[2], "12");
    const auto add = [&](int peak, NaxKind param, HeldBy how, const char* value) {
        Pick(v.cboRulePeak, peak - 1);
        Pick(v.cboRuleParam, param);
        Pick(v.cboRuleHow, static_cast<int>(how));
        if (how != HeldBy::Fixed) Type(v.txtRuleValue, value);
        Click(v.cmdRuleAdd);
    };
    add(1, NAX_POSITION, HeldBy::Fixed, "");
    add(2, NAX_POSITION, HeldBy::Offset, "30.25");
    add(3, NAX_WIDTH, HeldBy::Ratio, "1.2");
    world.Desk.Show();
    DeskWorld::Settle();
    Shoot(*world.Desk.FormOfView(v), "manualfit" + end);
    world.TypeInto(v.txtPeakNum, "5");
    world.TypeInto(v.txtWidth[4], "wide");
    Shoot(*world.Desk.FormOfView(v), "manualfit_told" + end);
    CsrX_Change(230);
    world.WhileModal(frmInputFitParameter, [&] {
        Shoot(*world.Desk.FormOfView(frmInputFitParameter), "inputfit" + end);
        world.TypeInto(frmInputFitParameter.txtWidth, "-1");
        world.ClickOn(frmInputFitParameter.cmdOK);
        Shoot(*world.Desk.FormOfView(frmInputFitParameter), "inputfit_told" + end);
        world.ClickOn(frmInputFitParameter.cmdCancel);
    });
    world.ClickOn(v.cmdInputFit);
}

TEST_F(ManualShots, TheManualFit) {
    DeskWorld world;
    ShootBoth(world, "");
}

TEST_F(ManualShots, TheManualFitInTheDark) {
    Dark();
    DeskWorld world;
    ShootBoth(world, "_dark");
}

}  // namespace
}  // namespace vael
