// The periodic table and the element sheet in their windows, by mouse and key, and their pictures.
#include "gridworld.h"
#include "shots.h"

#include "core/graphs.h"
#include "core/windows.h"

#include <QEnterEvent>
#include <QLabel>
#include <QPushButton>
#include <QWindow>

namespace vael {
namespace {

using test::DeskWorld;
using test::Shoot;

AtomView& v = frmAtom;
ElementView& sheet = frmElement;

const Button& Atom(int number) { return v.cmdAtom[static_cast<std::size_t>(number - 1)]; }
const Button& Kind(int kind) { return v.cmdPkDisp[static_cast<std::size_t>(kind)]; }

void OpenTable(DeskWorld& world, const std::string& spectrum) {
    test::CopyElementTable(world);
    world.Open({spectrum});
    world.ClickOn(frmVaelAna.cmdEnergy[1]);
    ASSERT_TRUE(world.Desk.FormOfView(v)->isVisible());
}

void OpenTable(DeskWorld& world) { OpenTable(world, world.Write("first.npd", test::FIVE_LINES)); }

void RightPress(DeskWorld& world, const Button& button) {
    QTest::mouseClick(&world.Widget(v, button.Name), Qt::RightButton);
    DeskWorld::Settle();
}

TEST(AtomOnScreen, EveryControlIsPressedAndItsResultSeen) {
    test::GridWorld world;
    OpenTable(world);
    std::set<std::string> usable;
    test::CollectUsable(usable);
    const auto marks = [] { return Engine().Target(0).VLineNum; };
    for (int kind = 0; kind < LINE_KINDS; ++kind) {
        const bool chosen = Kind(kind).Fill.has_value();
        world.ClickOn(Kind(kind));
        EXPECT_EQ(Kind(kind).Fill.has_value(), !chosen) << kind;
    }
    for (const int kind : {LINE_KAVE, LINE_KB3, LINE_GAMMA, LINE_EDGE}) world.ClickOn(Kind(kind));
    world.ClickOn(Kind(LINE_KA1));  // that one alone
    for (int number = 1; number <= ELEMENT_MAX; ++number) {
        world.ClickOn(Atom(number));
        EXPECT_EQ(Atom(number).Fill.has_value(), number >= 5 && number <= 104) << number;
    }
    // Boron to rutherfordium have a Ka1 line; that of mendelevium and those above it lie
    // beyond the axis, which ends at 122.9 keV.
    EXPECT_EQ(marks(), 96);
    RightPress(world, Atom(58));
    EXPECT_FALSE(Atom(58).Fill.has_value());
    EXPECT_EQ(marks(), 95);
    world.ClickOn(Atom(47));
    EXPECT_FALSE(Atom(47).Fill.has_value());
    EXPECT_EQ(marks(), 94);
    world.ClickOn(v.cmdClear);
    EXPECT_EQ(marks(), 0);
    world.ClickOn(v.optEdit);
    world.ClickOn(Atom(58));
    EXPECT_TRUE(world.Desk.FormOfView(sheet)->isVisible());
    EXPECT_EQ(world.Widget<QLineEdit>(sheet, "ImNumber2").text(), QStringLiteral("34.7196"));
    world.ClickOn(Kind(LINE_KB1));
    EXPECT_EQ(marks(), 1);
    world.ClickOn(v.optMark);
    EXPECT_TRUE(v.optMark.Value);
    world.ClickOn(v.cmdCancel);
    EXPECT_FALSE(world.Desk.FormOfView(v)->isVisible());
    EXPECT_EQ(marks(), 1) << "the marks stay";
    world.ExpectAllPressed(usable, "frmAtom");
    EXPECT_TRUE(world.Faults.empty());
}

TEST(AtomOnScreen, StaysOnTopAndItsKeyOpensIt) {
    DeskWorld world;
    test::CopyElementTable(world);
    world.Open({world.Write("first.npd", test::FIVE_LINES)});
    world.KeyOn(Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
    Form& form = *world.Desk.FormOfView(v);
    ASSERT_TRUE(form.isVisible());
    EXPECT_TRUE(form.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
    QTest::keyClick(&form, Qt::Key_Escape);
    DeskWorld::Settle();
    EXPECT_FALSE(form.isVisible());
}

TEST(AtomOnScreen, ThePointerAndTheFocusShowAnElement) {
    DeskWorld world;
    OpenTable(world);
    auto& silver = world.Widget(v, Atom(47).Name);
    QEnterEvent enter(QPointF(4, 4), QPointF(4, 4), QPointF(4, 4));
    QApplication::sendEvent(&silver, &enter);
    EXPECT_EQ(v.fraCharacter.Caption, "Character Silver");
    EXPECT_EQ(world.Widget<QLabel>(v, "lblCharacter").text(), QStringLiteral("47  Ag"));
    EXPECT_EQ(silver.toolTip(), QStringLiteral("47 Silver"));
    world.Widget(v, Atom(58).Name).setFocus(Qt::TabFocusReason);
    DeskWorld::Settle();
    EXPECT_EQ(v.fraCharacter.Caption, "Character Cerium");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    DeskWorld::Settle();
    EXPECT_TRUE(Atom(58).Fill.has_value()) << "by keys alone";
}

class ElementShots : public test::ShotTest {};

TEST_F(ElementShots, AMarkedButtonIsReadInLightAndDark) {
    for (const bool dark : {false, true}) {
        if (dark) Dark();
        DeskWorld world;
        OpenTable(world);
        world.ClickOn(Atom(58));
        auto& button = world.Widget(v, Atom(58).Name);
        EXPECT_EQ(button.palette().color(QPalette::Button), ToQt(0xFFC0C0));
        EXPECT_EQ(button.palette().color(QPalette::ButtonText), QColor(Qt::black));
        EXPECT_EQ(button.grab().toImage().pixelColor(3, 3), ToQt(0xFFC0C0));
        world.ClickOn(Atom(58));
        EXPECT_EQ(button.palette().color(QPalette::Button),
                  QApplication::palette().color(QPalette::Button));
        EXPECT_EQ(button.palette().color(QPalette::ButtonText),
                  QApplication::palette().color(QPalette::ButtonText));
    }
}

TEST_F(ElementShots, TheTableTheSheetAndTheMarks) {
    for (const bool dark : {false, true}) {
        if (dark) Dark();
        const std::string end = dark ? "_dark" : "";
        DeskWorld world;
        const std::string measured = test::MeasuredFile("CeO2H.npd");
        OpenTable(world, measured.empty() ? world.Write("first.npd", test::FIVE_LINES) : measured);
        world.ClickOn(Kind(LINE_KB3));
        for (const int number : {47, 58, 82}) world.ClickOn(Atom(number));
        Shoot(*world.Desk.FormOfView(v), "atom" + end);
        Shoot(world.Main(), "elementmarks" + end);
        world.ClickOn(v.optEdit);
        world.ClickOn(Atom(58));
        Shoot(*world.Desk.FormOfView(sheet), "element" + end);
        Shoot(*world.Desk.FormOfView(v), "atom_edit" + end);
        sheet.EntEnargy = [](double) {};
        RunEvent(sheet, [] { ShowElement(); });
        DeskWorld::Settle();
        Shoot(*world.Desk.FormOfView(sheet), "element_calibration" + end);
        sheet.EntEnargy = nullptr;
    }
}

TEST(ElementOnScreen, EveryControlIsPressedAndOkWritesIt) {
    test::GridWorld world;
    test::CopyElementTable(world);
    RunEvent(frmVaelAna, [] { ShowElement(57); });
    DeskWorld::Settle();
    std::set<std::string> usable;
    test::CollectUsable(usable);
    world.ClickOn(sheet.cmdFor);
    EXPECT_EQ(sheet.ElemNo(), 58);
    world.ClickOn(sheet.cmdBack);
    EXPECT_EQ(sheet.ElemNo(), 57);
    world.TypeInto(sheet.ImNumber5, "107", Qt::Key_Return);
    EXPECT_EQ(world.Widget<QLineEdit>(sheet, "txtSymbol").text(), QStringLiteral("Bh"));
    world.TypeInto(sheet.txtSymbol, "Xx");
    world.TypeInto(sheet.Text1, "Short");
    world.TypeInto(sheet.Text2, "Long");
    const std::vector<TextBox*> lines{&sheet.ImNumber1, &sheet.ImNumber2, &sheet.ImNumber7,
                                      &sheet.ImNumber3, &sheet.ImNumber4, &sheet.ImNumber6,
                                      &sheet.ImNumber8, &sheet.ImNumber9};
    for (std::size_t k = 0; k < lines.size(); ++k)
        world.TypeInto(*lines[k], std::to_string(k + 1).c_str());
    world.ClickOn(sheet.cmdOk);
    EXPECT_FALSE(world.Desk.FormOfView(sheet)->isVisible());
    std::ifstream in(world.Folder.path().toStdString() + "/atomic.dat");
    std::string line;
    while (std::getline(in, line))
        if (line.starts_with("107,")) break;
    EXPECT_EQ(line, "107,Xx,Short,Long,1,2,3,4,5,6,7,8,\r");
    world.ExpectAllPressed(usable, "frmElement");
    EXPECT_TRUE(world.Faults.empty());
}

TEST(ElementOnScreen, ADoubleClickAndEnterGiveTheEnergyAndAltWithTheArrowsTurns) {
    DeskWorld world;
    test::CopyElementTable(world);
    RunEvent(frmVaelAna, [] { ShowElement(47); });
    std::vector<double> entered;
    sheet.EntEnargy = [&](double energy) { entered.push_back(energy); };
    DeskWorld::Settle();
    auto& box = world.Widget<QLineEdit>(sheet, "ImNumber2");
    QTest::mouseDClick(&box, Qt::LeftButton);
    DeskWorld::Settle();
    QTest::keyClick(&box, Qt::Key_Return);
    DeskWorld::Settle();
    EXPECT_EQ(entered, (std::vector<double>{22.1629, 22.1629}));
    QTest::keyClick(&box, Qt::Key_Right, Qt::AltModifier);
    DeskWorld::Settle();
    EXPECT_EQ(sheet.ElemNo(), 48);
    QTest::keyClick(&box, Qt::Key_Left, Qt::AltModifier);
    DeskWorld::Settle();
    EXPECT_EQ(sheet.ElemNo(), 47);
    QTest::keyClick(&box, Qt::Key_Escape);
    DeskWorld::Settle();
    EXPECT_FALSE(world.Desk.FormOfView(sheet)->isVisible());
    sheet.EntEnargy = nullptr;
}

TEST(ElementOnScreen, TabGoesThroughTheBoxesInTheOrderOfReading) {
    DeskWorld world;
    test::CopyElementTable(world);
    RunEvent(frmVaelAna, [] { ShowElement(47); });
    DeskWorld::Settle();
    world.Desk.FormOfView(sheet)->activateWindow();
    world.Widget(sheet, "cmdBack").setFocus();
    std::vector<std::string> order;
    for (int i = 0; i < 15; ++i) {
        order.push_back(QApplication::focusWidget()->objectName().toStdString());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(order, (std::vector<std::string>{"cmdBack", "ImNumber5", "cmdFor", "txtSymbol",
                                               "Text1", "Text2", "ImNumber1", "ImNumber2",
                                               "ImNumber7", "ImNumber3", "ImNumber4", "ImNumber6",
                                               "ImNumber8", "ImNumber9", "cmdOk"}));
}

}  // namespace
}  // namespace vael
