// The property sheet in its window: every box pressed, by keyboard alone, the label, its pictures.
#include "shots.h"

#include "core/fault.h"
#include "core/graphs.h"

#include <QLabel>
#include <QPushButton>

namespace vael {
namespace {

using test::DeskWorld;
using test::FIVE_LINES;
using test::Shoot;

PropertyView& v = frmProperty;

/// Two spectra; the second, in slot 1, is the current one.
struct Sheet : DeskWorld {
    Sheet() {
        Open({Write("first.npd", FIVE_LINES), Write("second.npd", FIVE_LINES)});
        EXPECT_EQ(vael::DataNo(), 1);
    }
    static PropertyRecord& Record() { return store.PropertyRecords[1]; }
    Form& Window() { return *Desk.FormOfView(v); }
    QLineEdit& Line(const Control& box) { return Widget<QLineEdit>(v, box.Name); }
    void ShowByKey() {
        KeyOn(Qt::Key_Y, Qt::ControlModifier);
        ASSERT_TRUE(Window().isVisible());
        Window().activateWindow();
        Settle();
    }
};

/// Boxes and buttons that the user can use, in the order of the records.
std::vector<std::string> UsableInOrder() {
    std::vector<std::string> names;
    for (const Control* control : v.Controls()) {
        bool acts = control->Usable() && control->Kind == ControlKind::Button;
        if (control->Kind == ControlKind::TextBox)
            acts = !static_cast<const TextBox*>(control)->ReadOnly;
        if (control->Kind == ControlKind::NumberBox)
            acts = !static_cast<const NumberBox*>(control)->ReadOnly;
        if (acts) names.push_back(control->Name);
    }
    return names;
}

std::string Focused() { return QApplication::focusWidget()->objectName().toStdString(); }

TEST(PropertyOnScreen, EveryControlIsPressedAndItsResultSeenInTheStore) {
    Sheet world;
    std::set<std::string> usable;
    world.ClickOn(frmVaelAna.mnuProperty);
    ASSERT_TRUE(world.Window().isVisible());
    test::CollectUsable(usable);

    world.TypeInto(v.txtMsuName, "ABC000999");
    world.ClickOn(v.cmdIndent);
    world.TypeInto(v.txtSampName, "gold wire");
    world.TypeInto(v.txtOpName, "somebody");
    world.TypeInto(v.txtMemo, "after heating");
    int value = 10;
    std::vector<std::pair<const NumberBox*, double>> typed;
    for (Control* control : v.Controls()) {
        if (control->Kind != ControlKind::NumberBox) continue;
        const auto& box = static_cast<const NumberBox&>(*control);
        if (box.ReadOnly) continue;
        world.TypeInto(box, std::to_string(++value).c_str());
        typed.emplace_back(&box, value);
    }
    EXPECT_EQ(typed.size(), 37U);
    for (const auto& [box, number] : typed) EXPECT_EQ(box->Value, number) << box->Name;
    world.Desk.Answers.push_back(Answer::No);
    world.ClickOn(v.cmdOk);
    EXPECT_FALSE(world.Window().isVisible());
    const PropertyRecord& record = Sheet::Record();
    EXPECT_EQ(record.FileName.Trimmed(), "ABC001000");
    EXPECT_EQ(record.SampleName.Trimmed(), "gold wire");
    EXPECT_EQ(record.OpName.Trimmed(), "somebody");
    EXPECT_EQ(record.Memo.Trimmed(), "after heating");
    EXPECT_EQ(record.Param.RingCurrent, 11.0) << "the first box";
    EXPECT_EQ(record.Param.EgcCoef[2], value) << "and the last";

    world.ClickOn(frmVaelAna.cmdFiles[3]);
    world.Desk.Answers.push_back(Answer::Ok);
    world.ClickOn(v.cmdLabelPrint);
    EXPECT_EQ(world.Desk.Asked.back(), "Label Print error") << "there is no label program here";
    world.ClickOn(v.cmdCan);
    EXPECT_FALSE(v.Visible);
    int controls = 0;
    for (const std::string& name : usable) {
        if (!name.starts_with("frmProperty.")) continue;
        ++controls;
        EXPECT_TRUE(world.Pressed.contains(name)) << name << " works and no test presses it";
    }
    EXPECT_EQ(controls, 37 + 4 + 4);
    EXPECT_TRUE(world.Faults.empty());
}

TEST(PropertyOnScreen, TabGoesThroughItInTheOrderOfReading) {
    Sheet world;
    world.ShowByKey();
    const std::vector<std::string> order = UsableInOrder();
    world.Line(v.txtMsuName).setFocus(Qt::TabFocusReason);
    for (const std::string& name : order) {
        EXPECT_EQ(Focused(), name);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(Focused(), order.front()) << "and round again";
}

TEST(PropertyOnScreen, ADayAtTheHeaterByKeyboardAlone) {
    Sheet world;
    world.ShowByKey();
    const auto tabTo = [](const Control& control) {
        for (int i = 0; i < 60 && Focused() != control.Name; ++i)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        ASSERT_EQ(Focused(), control.Name);
    };
    world.Line(v.txtMsuName).setFocus(Qt::TabFocusReason);
    tabTo(v.ImnTemp);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("1000"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    DeskWorld::Settle();
    EXPECT_TRUE(v.Visible) << "Enter ends the number alone";
    EXPECT_EQ(world.Line(v.imnTempK).text(), QStringLiteral("1273.15"));
    tabTo(v.imnVolt);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("3"));
    tabTo(v.imnCurrent2);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("6"));
    tabTo(v.imnPower);
    EXPECT_EQ(world.Line(v.imnRegistance).text(), QStringLiteral("500.000"));
    const std::string path = world.Folder.filePath(QStringLiteral("hot.xbm")).toStdString();
    world.Desk.Answers.push_back(Answer::Yes);
    world.Desk.Saves.push_back(path);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_S, Qt::ControlModifier);
    DeskWorld::Settle();
    EXPECT_FALSE(world.Window().isVisible());
    EXPECT_TRUE(std::filesystem::exists(path));
    EXPECT_EQ(Sheet::Record().Param.Resistance, 500.0);
    EXPECT_EQ(Sheet::Record().Param.Temperature, 1000.0);

    world.ShowByKey();
    world.Line(v.ImnPress).setFocus(Qt::TabFocusReason);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("77"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    DeskWorld::Settle();
    EXPECT_FALSE(world.Window().isVisible());
    EXPECT_NE(Sheet::Record().Param.Pressure, 77.0);
    world.ShowByKey();
    EXPECT_NE(v.ImnPress.Value, 77.0);
    EXPECT_FALSE(v.Changed);
    EXPECT_TRUE(world.Faults.empty());
}

TEST(PropertyOnScreen, TabOutOfTheVoltageComputesAlsoWhereNothingWasTyped) {
    Sheet world;
    Sheet::Record().Param.Resistance = 12.0;
    Sheet::Record().Param.Volt = 2.0;
    Sheet::Record().Param.Current2 = 4.0;
    world.ShowByKey();
    EXPECT_EQ(world.Line(v.imnRegistance).text(), QStringLiteral("12.000"));
    world.Line(v.imnVolt).setFocus(Qt::TabFocusReason);
    frmVaelAna.Visible = true;
    world.Main().activateWindow();  // another window is no leaving
    DeskWorld::Settle();
    world.Window().activateWindow();
    DeskWorld::Settle();
    EXPECT_EQ(world.Line(v.imnRegistance).text(), QStringLiteral("12.000"));
    QTest::keyClick(&world.Line(v.imnVolt), Qt::Key_Tab);
    DeskWorld::Settle();
    EXPECT_EQ(world.Line(v.imnRegistance).text(), QStringLiteral("500.000"));
}

TEST(PropertyOnScreen, LockedBoxesAreSeenToBeLockedAndTabPassesThem) {
    Sheet world;
    world.StepList(frmVaelAna.cboGrphSel[0], -1);
    world.ShowByKey();
    ASSERT_EQ(v.Slot, 0);
    for (const Control* box :
         {static_cast<const Control*>(&v.txtMsuName), static_cast<const Control*>(&v.imnCurrent)}) {
        EXPECT_TRUE(world.Line(*box).isReadOnly());
        EXPECT_EQ(world.Line(*box).focusPolicy(), Qt::ClickFocus);
        EXPECT_TRUE(world.Line(*box).toolTip().startsWith(QStringLiteral("Locked")));
    }
    EXPECT_FALSE(world.Widget<QPushButton>(v, "cmdIndent").isEnabled());
    EXPECT_EQ(UsableInOrder().front(), "imnInV");
}

TEST(PropertyOnScreen, TheLabelProgramIsStarted) {
    Sheet world;
    const std::string program =
        world.Folder.filePath(QStringLiteral("VaelLabelPrint.exe")).toStdString();
    const std::string mark = world.Folder.filePath(QStringLiteral("started")).toStdString();
    std::ofstream(program) << "#!/bin/sh\ntouch '" << mark << "'\n";
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    world.ShowByKey();
    world.ClickOn(v.cmdLabelPrint);
    EXPECT_TRUE(QTest::qWaitFor([&] { return std::filesystem::exists(mark); }, 20000));
    EXPECT_TRUE(std::filesystem::exists(
        world.Folder.filePath(QStringLiteral("LBL_TEMP/Label_Temp.xbm")).toStdString()));
    EXPECT_TRUE(world.Desk.Asked.empty());
}

TEST(PropertyOnScreen, AllOfItIsSeenOnASmallScreenAndNoWordIsCut) {
    Sheet world;
    world.ShowByKey();
    EXPECT_LE(world.Window().width(), 1280);
    EXPECT_LE(world.Window().height(), 760) << "with a title above it and a bar below";
    for (const Control* control : v.Controls()) {
        QWidget& widget = world.Widget(v, control->Name);
        const QRect place(widget.mapTo(&world.Window(), QPoint(0, 0)), widget.size());
        EXPECT_TRUE(world.Window().rect().contains(place)) << control->Name;
        if (const auto* label = qobject_cast<const QLabel*>(&widget))
            EXPECT_GE(label->width(), label->fontMetrics().horizontalAdvance(label->text()))
                << control->Name;
    }
    // Numbers of the widest kind are seen whole.
    for (NumberBox* box : {&v.imnInV, &v.imnPressZ, &v.imnVGonioX}) box->Value = -123.456;
    v.imnEneCalC.Value = -1.23456e-8;
    v.imnEneCalB.Value = 0.031733;
    v.imnRealTime.Value = 1234567.89;
    v.imnHGonioDAngle.Value = 179.99999;
    world.Desk.Show();
    for (Control* control : v.Controls()) {
        if (control->Kind != ControlKind::NumberBox) continue;
        QLineEdit& line = world.Line(*control);
        EXPECT_GE(line.width() - 8, line.fontMetrics().horizontalAdvance(line.text()))
            << control->Name << " " << line.text().toStdString();
    }
}

class PropertyShots : public test::ShotTest {};

TEST_F(PropertyShots, TheSheet) {
    for (const bool dark : {false, true}) {
        if (dark) Dark();
        const std::string end = dark ? "_dark" : "";
        DeskWorld world;
        OpenSpectrum(world);
        // A second row has the first place of the memory behind it, and nothing locked.
        const std::string measured = test::MeasuredFile("AuWire.npd");
        const std::string made = world.Write("made.npd", FIVE_LINES);
        world.Open({made, measured.empty() ? made : measured});
        ParamRecord& param = Item(store.PropertyRecords, 1).Param;
        param.EgcCoef[2] = 1.2e-9;
        param.VGonioX = -12.5;
        param.VGonioAngle = 90.0;
        world.ClickOn(frmVaelAna.mnuProperty);
        auto& window = *world.Desk.FormOfView(v);
        world.Widget<QLineEdit>(v, "txtMsuName").setFocus();
        DeskWorld::Settle();
        Shoot(window, "property" + end);
        world.ClickOn(v.cmdCan);
        world.ClickOn(frmVaelAna.optEGC[0]);
        world.StepList(frmVaelAna.cboGrphSel[0], -1);
        world.ClickOn(frmVaelAna.mnuProperty);
        Shoot(window, "property_default" + end);
    }
}

}  // namespace
}  // namespace vael
