// The lattice view in its window: a calculation from the fit to the kept result, by mouse and by
// keys, and its pictures.
#include "shots.h"

#include "core/cursors.h"
#include "core/fault.h"
#include "core/graphs.h"
#include "core/text.h"
#include "desktop/griditems.h"
#include "lattice/reflectionmarkcommands.h"

#include <QLabel>
#include <QTabBar>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vael {
namespace {

using test::DeskWorld;
using test::Shoot;
using V = PeakCalView;

V& v = frmPeakCal;

/// A gold spectrum at 10 degrees, its lines where a cell of 4.07 angstrom has them.
struct GoldWorld : DeskWorld {
    GoldWorld() {
        std::filesystem::copy_file(VAEL_SOURCE_DIR "/data/crystal.dat", At("crystal.dat"));
    }
    std::string At(const std::string& name) const {
        return (Folder.path() + QLatin1Char('/')).toStdString() + name;
    }
    void OpenGold() {
        const std::array<std::array<double, 2>, 7> lines{
            {{3, 4000}, {4, 2000}, {8, 1500}, {11, 1600}, {12, 700}, {19, 900}, {20, 800}}};
        std::vector<GaussLine> gauss;
        for (const auto& [squares, height] : lines) {
            const double d = 4.07 / std::sqrt(squares);
            const double energy = 12.3981 / 2 / d / std::sin(5 * std::numbers::pi / 180);
            gauss.push_back({(energy - 0.05) / 0.03 - 1.0, height, 10.0});
        }
        Open({Write("gold.npd", gauss)});
        ClickOn(frmVaelAna.cmdOperation[2]);
        EXPECT_EQ(Item(store.PeakTables, DataNo()).PeakNum, 7);
    }
    GridWidget& Table(const Grid& grid) { return Widget<GridWidget>(v, grid.Name); }
    void ClickCell(const Grid& grid, int column, int row) {
        GridWidget& table = Table(grid);
        table.scrollTo(table.model()->index(row - 1, column - 1));
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, table.MiddleOf(column, row));
        Pressed.insert("frmPeakCal." + grid.Name);
        Settle();
    }
    void ClickTab(int index) {
        auto& bar = Widget<QTabBar>(v, "tabLatticeFit");
        QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.tabRect(index).center());
        Pressed.insert("frmPeakCal.tabLatticeFit");
        Settle();
    }
    /// Goes down the list of crystals until it stands on gold.
    void ChooseGold() {
        for (int i = 0; i < 9 && v.cmbElement.Text() != "Au Gold"; ++i) StepList(v.cmbElement, 1);
        EXPECT_EQ(v.cmbElement.Text(), "Au Gold");
    }
    QString Shown(const Control& box) { return Widget<QLineEdit>(box.Owner, box.Name).text(); }
    double ShownValue(const Control& box) {
        const std::string text = Shown(box).toStdString();
        return Number(text.substr(0, text.find("+-")));
    }
};

TEST(LatticeOnScreen, EveryControlIsPressedOnTheWayToAResult) {
    GoldWorld world;
    world.OpenGold();
    std::set<std::string> usable;
    const auto press = [&](const auto& control) {
        test::CollectUsable(usable);
        world.ClickOn(control);
        test::CollectUsable(usable);
    };
    world.ClickOn(frmVaelAna.cmdOperation[9]);
    ASSERT_TRUE(world.Desk.FormOfView(v)->isVisible());
    EXPECT_FALSE(world.Widget(v, "cmdCal2").isEnabled());
    EXPECT_EQ(world.Table(v.sprPeakInf).model()->rowCount(), 7);
    // The head over the numbers of the peaks is seen, in the corner and whole.
    const GridWidget& list = world.Table(v.sprPeakInf);
    const auto labels = list.findChildren<QLabel*>();
    const auto head = std::find_if(labels.begin(), labels.end(), [](const QLabel* label) {
        return label->text() == QStringLiteral("Peak No.");
    });
    ASSERT_NE(head, labels.end());
    EXPECT_TRUE((*head)->isVisible());
    EXPECT_TRUE(list.rect().contains((*head)->geometry()));
    EXPECT_LE((*head)->sizeHint().width(), (*head)->width());
    EXPECT_LT((*head)->geometry().bottom(), list.viewport()->geometry().top());

    // The marker: crystal, seed, range, temperature, calculation.
    world.ChooseGold();
    EXPECT_EQ(world.Shown(v.txtSeedConstant[0]), QStringLiteral("4.078600"));
    for (std::size_t i = 0; i < 6; ++i) {
        world.TypeInto(v.txtSeedConstant[i], i < 3 ? "4.08" : "90");
        EXPECT_EQ(v.SeedCell[i], i < 3 ? 4.08 : 90.0) << i;
    }
    world.TypeInto(v.txtPickupRange, "0.02");
    EXPECT_EQ(settings.PickupRange(), 0.02);
    world.TypeInto(v.txtTemp, "300");
    world.StepList(v.cmbUnit, 1);
    press(v.cmdCal);
    EXPECT_NEAR(world.ShownValue(v.txtLatticeLength[0]), 4.07, 2e-4);
    EXPECT_NEAR(world.ShownValue(v.txtPressure), 1.08, 0.1);
    EXPECT_EQ(world.Table(v.sprPeakInf2).model()->rowCount(), 7);

    // A row of each list goes to its peak; one is unticked on either tab.
    world.ClickCell(v.sprPeakInf2, V::CH, 2);
    EXPECT_NEAR(CursorCh(), Item(store.PeakTables, v.Slot).Peak[1].Position, 0.6);
    world.ClickCell(v.sprPeakInf, 1, 1);
    EXPECT_NEAR(CursorCh(), Item(store.PeakTables, v.Slot).Peak[0].Position, 0.6);
    world.ClickCell(v.sprPeakInf2, V::USE, 2);
    EXPECT_EQ(latticeState.FitData.Match[1].Excluded, TRUE_WORD);
    world.ClickTab(1);
    EXPECT_FALSE(world.Table(v.sprPeakInf2).isVisible());
    EXPECT_TRUE(world.Table(v.sprPeakInf4).isVisible());
    test::CollectUsable(usable);
    world.ClickCell(v.sprPeakInf4, V::USE, 7);
    press(v.cmdCal);
    EXPECT_EQ(v.Values->UsedRows, 5);
    EXPECT_EQ(world.Table(v.sprPeakInf3).model()->rowCount(), 5);
    world.ClickCell(v.sprPeakInf3, V::CALC_D, 1);
    EXPECT_NEAR(CursorCh(), Item(store.PeakTables, v.Slot).Peak[0].Position, 0.6);
    world.ClickTab(0);

    // Marks, the angle, the files.
    world.StepList(v.cmbColor, 2);
    press(v.cmdMI[0]);
    EXPECT_EQ(ReflectionMarksOn(0).size(), 5U);
    press(v.cmdMI[1]);
    EXPECT_TRUE(ReflectionMarksOn(0).empty());
    world.TypeInto(v.txtSeedConstant[0], "4.0786");
    press(v.cmd2ThetaCalib);
    EXPECT_NEAR(world.ShownValue(v.txtExpected2theta), 9.979, 2e-3);
    world.TypeInto(v.txt2Theta, "9.979");
    EXPECT_EQ(Item(store.PropertyRecords, v.Slot).Param.TwoTheta, 9.979);
    press(v.cmdCal);
    EXPECT_NEAR(world.ShownValue(v.txtLatticeLength[0]), 4.0786, 2e-4);
    EXPECT_EQ(v.Values->UsedRows, 5) << "what was unticked stays so";
    press(v.cmdDataSave);
    EXPECT_TRUE(std::filesystem::exists(world.At("CORVINE/LatticeFit.csv")));
    press(v.Command1);
    EXPECT_TRUE(std::filesystem::exists(world.At("sim298_1273k2.dat")));
    press(v.cmdChangeWindowMode);
    EXPECT_FALSE(v.OnTop);

    // A sample: every system can be chosen.
    press(v.optSelectMode[0]);
    world.StepList(v.cmbLatticeType, 1);
    EXPECT_EQ(v.cmbLatticeType.Index, 1);
    press(v.optSelectMode[1]);
    EXPECT_EQ(v.cmbElement.Index, 1);

    world.Desk.Saves.push_back(world.At("kept.csv"));
    press(v.cmdExit);
    EXPECT_FALSE(world.Desk.FormOfView(v)->isVisible());
    EXPECT_TRUE(std::filesystem::exists(world.At("kept.csv")));
    EXPECT_EQ(world.Desk.SaveDialogs.back().Name, "gold_Result.csv");
    EXPECT_TRUE(world.Faults.empty());

    world.ClickOn(frmVaelAna.cmdShowReport);
    EXPECT_TRUE(v.Visible);
    EXPECT_EQ(v.txtTemp.Text, "27.0") << "a view opened again has its form defaults";
    world.Desk.Saves.push_back("");
    world.Desk.FormOfView(v)->close();
    DeskWorld::Settle();
    EXPECT_FALSE(v.Visible);

    int controls = 0;
    for (const std::string& name : usable) {
        if (!name.starts_with("frmPeakCal.")) continue;
        ++controls;
        EXPECT_TRUE(world.Pressed.contains(name)) << name << " works and no test presses it";
    }
    EXPECT_GT(controls, 25);
}

TEST(LatticeOnScreen, GoesByTheKeyboardAlone) {
    GoldWorld world;
    world.OpenGold();
    world.KeyOn(Qt::Key_H, Qt::ControlModifier);
    ASSERT_TRUE(world.Desk.FormOfView(v)->isVisible());
    Form& form = *world.Desk.FormOfView(v);
    form.activateWindow();
    world.Widget(v, "cmbElement").setFocus();
    DeskWorld::Settle();
    const auto keyOnFocus = [](Qt::Key key, Qt::KeyboardModifiers with = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, with);
        DeskWorld::Settle();
    };
    const auto tabTo = [&](const std::string& name) {
        for (int i = 0; i < 60; ++i) {
            if (QApplication::focusWidget()->objectName().toStdString() == name) return;
            keyOnFocus(Qt::Key_Tab);
        }
        FAIL() << "Tab does not come to " << name;
    };
    for (int i = 0; i < 9 && v.cmbElement.Text() != "Au Gold"; ++i) keyOnFocus(Qt::Key_Down);
    EXPECT_EQ(v.cmbElement.Text(), "Au Gold");
    // The boxes come one after the other, as they are read.
    for (const char* name : {"txtSeedConstant_0", "txtSeedConstant_5", "txtPickupRange",
                             "txt2Theta", "txtTemp", "cmbUnit", "cmd2ThetaCalib", "cmdCal"})
        tabTo(name);
    keyOnFocus(Qt::Key_Space);
    EXPECT_NEAR(world.ShownValue(v.txtLatticeLength[0]), 4.07, 2e-4);
    tabTo("tabLatticeFit");
    keyOnFocus(Qt::Key_Right);
    EXPECT_EQ(v.tabLatticeFit.Index, 1);
    keyOnFocus(Qt::Key_Left);
    tabTo("sprPeakInf2");
    keyOnFocus(Qt::Key_Down);
    for (int i = 1; i < V::USE; ++i) keyOnFocus(Qt::Key_Right);
    const int row = v.sprPeakInf2.Row;
    ASSERT_GT(row, 0);
    ASSERT_EQ(v.sprPeakInf2.Col, static_cast<int>(V::USE));
    keyOnFocus(Qt::Key_Space);
    EXPECT_FALSE(std::as_const(v.sprPeakInf2).At(V::USE, row).Ticked);
    tabTo("txtTemp");
    keyOnFocus(Qt::Key_Return);  // leaves the box and executes
    EXPECT_EQ(v.Values->UsedRows, 6);
    keyOnFocus(Qt::Key_T, Qt::ControlModifier);
    EXPECT_NE(v.txtExpected2theta.Text, "5.0000");
    keyOnFocus(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(std::filesystem::exists(world.At("CORVINE/LatticeFit.csv")));
    world.Desk.Saves.push_back(world.At("kept.csv"));
    keyOnFocus(Qt::Key_Escape);
    EXPECT_FALSE(v.Visible);
    EXPECT_TRUE(std::filesystem::exists(world.At("kept.csv")));
}

TEST(LatticeOnScreen, ASeedThatIsNoNumberKeepsTheFocus) {
    GoldWorld world;
    world.OpenGold();
    world.ClickOn(frmVaelAna.cmdShowReport);
    world.ChooseGold();
    auto& box = world.Widget<QLineEdit>(v, "txtSeedConstant_0");
    QTest::mouseClick(&box, Qt::LeftButton);
    QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&box, QStringLiteral("wide"));
    world.ClickOn(v.cmdCal);
    EXPECT_EQ(v.txtLatticeLength[0].Text, "");
    EXPECT_EQ(box.text(), QStringLiteral("wide"));
    EXPECT_NE(world.Widget<QLabel>(v, "lblTold").text().indexOf(QStringLiteral("\"wide\"")), -1);
    world.Desk.Saves.push_back("");
    world.ClickOn(v.cmdExit);
    EXPECT_FALSE(v.Visible) << "it holds nobody captive";
}

class LatticeShots : public test::ShotTest {};

void ShootLattice(const std::string& end) {
    GoldWorld world;
    const std::string measured = test::MeasuredFile("AuWire.npd");
    if (measured.empty()) {
        world.OpenGold();
    } else {
        world.Open({measured});
        world.ClickOn(frmVaelAna.cmdAutoFit);
    }
    world.ClickOn(frmVaelAna.cmdShowReport);
    Shoot(*world.Desk.FormOfView(v), "lattice_start" + end);
    world.ChooseGold();
    world.ClickOn(v.cmdCal);
    if (!measured.empty()) {
        world.ClickCell(v.sprPeakInf2, V::USE, 1);
        for (const int row : {12, 16, 17}) world.ClickCell(v.sprPeakInf2, V::USE, row);
        world.ClickOn(v.cmdCal);
        world.ClickCell(v.sprPeakInf2, V::CH, 3);
    }
    Shoot(*world.Desk.FormOfView(v), "lattice" + end);
    world.ClickTab(1);
    Shoot(*world.Desk.FormOfView(v), "lattice_use" + end);
    world.ClickOn(v.cmdMI[0]);
    Shoot(world.Main(), "lattice_marks" + end);
    world.Desk.Saves.push_back("");
    world.ClickOn(v.cmdExit);
}

TEST_F(LatticeShots, TheLatticeView) { ShootLattice(""); }

TEST_F(LatticeShots, TheLatticeViewInTheDark) {
    Dark();
    ShootLattice("_dark");
}

}  // namespace
}  // namespace vael
