// The element sheet: browsing, its limits and messages, editing, writing, and the way out.
#include "calibration/frmdialogcalibc.h"
#include "support/elementworld.h"

#include <gtest/gtest.h>

using namespace vael;
using test::ElementWorld;

namespace {

ElementView& v = frmElement;

struct Sheet : ElementWorld {
    explicit Sheet(std::int16_t number = 58) {
        ShowElement(number);
        EXPECT_TRUE(v.Visible);
        EXPECT_EQ(v.ElemNo(), number);
    }
    static void GoTo(const std::string& number) {
        Type(v.ImNumber5, number);
        PressEnter(v.ImNumber5);
    }
    [[nodiscard]] std::string Line(int number) const {
        std::istringstream in(File());
        std::string line;
        for (int n = 0; n < number; ++n) std::getline(in, line);
        return line;
    }
};

}  // namespace

TEST(Element, ShowsTheElementWithItsWords) {
    Sheet sheet;
    EXPECT_EQ(v.Caption, "Atom");
    EXPECT_EQ(v.cmdBack.Caption, "<");
    EXPECT_EQ(v.cmdFor.Caption, ">");
    EXPECT_EQ(v.cmdOk.Caption, "OK");
    EXPECT_EQ(v.ImNumber5.Text, "58");
    EXPECT_EQ(v.txtSymbol.Text, "Ce");
    EXPECT_EQ(v.Text1.Text, "Cerium");
    EXPECT_EQ(v.Text2.Text, "Cerium");
    EXPECT_EQ(v.ImNumber1.Text, "34.2788") << "Ka2";
    EXPECT_EQ(v.ImNumber2.Text, "34.7196") << "Ka1";
    EXPECT_EQ(v.ImNumber7.Text, "39.1702") << "Kb3";
    EXPECT_EQ(v.ImNumber3.Text, "39.2576") << "Kb1";
    EXPECT_EQ(v.ImNumber6.Text, "40.443") << "AbsEdge";
    EXPECT_EQ(v.ImNumber8.Text, "") << "Gamma";
    EXPECT_NEAR(std::stod(v.ImNumber4.Text), 40.23, 0.01) << "Kb2";
    EXPECT_NEAR(std::stod(v.ImNumber9.Text), 34.563, 0.002) << "KAve";
    for (const Label& unit : v.lblUnit) EXPECT_EQ(unit.Caption, "keV");
    EXPECT_TRUE(sheet.Desk.Faults.empty());
}

TEST(Element, TheButtonsStopAtOneAndAt106) {
    Sheet sheet(2);
    Click(v.cmdBack);
    EXPECT_EQ(v.txtSymbol.Text, "H");
    Click(v.cmdBack);
    EXPECT_EQ(v.ElemNo(), 1);
    Sheet::GoTo("105");
    Click(v.cmdFor);
    EXPECT_EQ(v.ElemNo(), 106);
    Click(v.cmdFor);
    EXPECT_EQ(v.ElemNo(), 106) << "the last element is reached by its number";
    Sheet::GoTo("107");
    EXPECT_EQ(v.txtSymbol.Text, "Bh");
    Click(v.cmdFor);
    EXPECT_EQ(v.ElemNo(), 107);
    Click(v.cmdBack);
    EXPECT_EQ(v.ElemNo(), 106);
}

TEST(Element, ANumberOutsideTheTableIsToldAndChangesNothing) {
    Sheet sheet;
    for (const char* number : {"0", "108", "-5", "1e9", "-1e300"}) {
        sheet.Desk.ExpectQuestion("AtomIndex out of range");
        Sheet::GoTo(number);
        EXPECT_EQ(v.ElemNo(), 58) << number;
        EXPECT_EQ(v.ImNumber5.Text, "58") << number;
    }
    for (const char* text : {"", "Ce", "nan"}) {
        Sheet::GoTo(text);
        EXPECT_EQ(v.ImNumber5.Text, "58") << text;
        EXPECT_NE(v.lblTold.Caption.find("is no number"), std::string::npos);
    }
    sheet.Desk.ExpectQuestion("AtomIndex out of range");
    EXPECT_EQ(v.Energy(108, LINE_KA1), 0.0);
    sheet.Desk.ExpectQuestion("AtomIndex out of range");
    EXPECT_EQ(v.ElementName(0), "");
    EXPECT_TRUE(sheet.Desk.Faults.empty());
}

TEST(Element, OnlyEnterGoesToTheNumber) {
    Sheet sheet;
    Type(v.ImNumber5, "47");
    Leave(v.ImNumber5);
    EXPECT_EQ(v.ElemNo(), 58);
    EXPECT_EQ(v.ImNumber5.Text, "58");
    Sheet::GoTo("47");
    EXPECT_EQ(v.txtSymbol.Text, "Ag");
}

TEST(Element, AnElementWithoutARowIsToldByItsNumber) {
    Sheet sheet;
    v.Table.Rows = 57;
    sheet.Desk.ExpectQuestion("Num = 58 records index error");
    EXPECT_EQ(v.GetSymbol(58), "");
    EXPECT_EQ(v.GetSymbol(57), "La");
}

TEST(Element, AnswersByNumberAndLineKind) {
    Sheet sheet;
    EXPECT_EQ(v.GetSymbol(82), "Pb");
    EXPECT_EQ(v.ElementName(82), "Lead");
    EXPECT_EQ(v.Energy(82, LINE_KA1), 74.9693);
    EXPECT_EQ(v.Energy(27, LINE_GAMMA), 122.0607);
    EXPECT_EQ(v.Energy(82, LINE_GAMMA), 0.0);
}

TEST(Element, OkWritesTheEditedCellsAndNothingElse) {
    Sheet sheet;
    const std::string before = sheet.File();
    Type(v.ImNumber2, " 34.71970 ");
    Click(v.cmdFor);  // leaves the box
    EXPECT_EQ(v.ElemNo(), 59);
    Click(v.cmdBack);
    EXPECT_EQ(v.ImNumber2.Text, "34.71970") << "digits as they were typed";
    Type(v.Text2, "セリウム");
    Type(v.ImNumber1, "");
    EXPECT_EQ(sheet.File(), before) << "nothing is written before OK";
    Click(v.cmdOk);
    EXPECT_FALSE(v.Visible);
    std::string line = "58,Ce,Cerium,\x83\x5a\x83\x8a\x83\x45\x83\x80,,34.71970,39.1702,39.2576,";
    EXPECT_EQ(sheet.Line(58).substr(0, line.size()), line);
    for (const int other : {1, 57, 59, 107}) {
        std::istringstream in(before);
        std::string old;
        for (int n = 0; n < other; ++n) std::getline(in, old);
        EXPECT_EQ(sheet.Line(other), old);
    }
    EXPECT_EQ(v.Energy(58, LINE_KA1), 34.7197);
    EXPECT_EQ(v.Energy(58, LINE_KA2), 0.0);
}

TEST(Element, OkWithoutAnEditLeavesTheFileToTheByte) {
    Sheet sheet;
    const std::string odd = [&] {
        std::string text = ElementWorld::Ours();
        text.replace(text.find("34.7196"), 7, " 34.719600 ");
        return text;
    }();
    Click(v.cmdOk);
    EXPECT_EQ(sheet.File(), ElementWorld::Ours());
    sheet.Folder.Write("atomic.dat", odd);
    ShowElement(58);
    EXPECT_EQ(v.ImNumber2.Text, "34.719600");
    Type(v.ImNumber2, "34.719600");
    PressEnter(v.ImNumber2);
    Click(v.cmdOk);
    EXPECT_EQ(sheet.File(), odd);
}

TEST(Element, ATextThatIsNoEnergySpringsBackAndSaysWhy) {
    Sheet sheet;
    for (const char* bad : {"high", "-1", "0", "1e9", "3,4", "nan"}) {
        Type(v.ImNumber2, bad);
        Leave(v.ImNumber2);
        EXPECT_EQ(v.ImNumber2.Text, "34.7196") << bad;
        EXPECT_NE(v.lblTold.Caption.find(bad), std::string::npos) << v.lblTold.Caption;
    }
    Type(v.Text2, "Cerium, 58");
    Leave(v.Text2);
    EXPECT_EQ(v.Text2.Text, "Cerium") << "a comma would be another cell";
    EXPECT_NE(v.lblTold.Caption.find("comma"), std::string::npos) << v.lblTold.Caption;
    Click(v.cmdOk);
    EXPECT_EQ(sheet.File(), ElementWorld::Ours());
}

TEST(Element, EscapeAndTheCloseBoxPutTheTableBack) {
    Sheet sheet;
    for (const bool box : {false, true}) {
        ShowElement(58);
        Type(v.ImNumber2, "35");
        PressEnter(v.ImNumber2);
        EXPECT_EQ(v.Energy(58, LINE_KA1), 35.0) << "in force while the sheet is open";
        box ? Close(v) : Key(v, {.Key = KeyPress::Name::Escape});
        EXPECT_FALSE(v.Visible);
        EXPECT_EQ(v.Energy(58, LINE_KA1), 34.7196);
        EXPECT_EQ(sheet.File(), ElementWorld::Ours());
    }
}

TEST(Element, OpeningAnOpenSheetKeepsWhatWasTyped) {
    Sheet sheet;
    Type(v.ImNumber2, "35");
    PressEnter(v.ImNumber2);
    ShowElement(58);
    EXPECT_EQ(v.ImNumber2.Text, "35");
}

TEST(Element, AMissingFileIsToldAndTheSheetDoesNotOpen) {
    World world;
    world.Desk.ExpectQuestion("Atomic.dat File Read (Open Error)");
    RunEvent(frmVaelAna, [] { ShowElement(); });
    EXPECT_FALSE(v.Visible);
    ASSERT_EQ(world.Desk.Faults.size(), 1u);
    EXPECT_NE(world.Desk.Faults[0].find("atomic.dat"), std::string::npos);
}

TEST(Element, ADamagedFileLeavesTheTableInForce) {
    Sheet sheet;
    Click(v.cmdOk);
    sheet.Folder.Write("atomic.dat", "1,H,\n");
    sheet.Desk.ExpectQuestion("Atomic.dat File Read (Open Error)");
    RunEvent(frmVaelAna, [] { ShowElement(); });
    EXPECT_FALSE(v.Visible);
    EXPECT_NE(sheet.Desk.Faults.at(0).find("line 1"), std::string::npos) << sheet.Desk.Faults[0];
    EXPECT_EQ(v.Energy(58, LINE_KA1), 34.7196);
    EXPECT_EQ(sheet.File(), "1,H,\n");
}

TEST(Element, AFileThatCannotBeWrittenIsToldAndTheSheetStays) {
    Sheet sheet;
    Type(v.ImNumber2, "35");
    std::filesystem::remove(sheet.Folder.Path("atomic.dat"));
    std::filesystem::create_directory(sheet.Folder.Path("atomic.dat"));
    sheet.Desk.ExpectQuestion("Atomic.dat File Write (Write Error)");
    Click(v.cmdOk);
    EXPECT_TRUE(v.Visible);
    EXPECT_EQ(v.ImNumber2.Text, "35");
    EXPECT_TRUE(frmVaelAna.StatusFault);
    EXPECT_NE(frmVaelAna.lblStatus.Caption.find("atomic.dat"), std::string::npos);
}

TEST(Element, EnterAndADoubleClickGiveALinesEnergyToTheCalibration) {
    Sheet sheet;
    std::vector<double> entered;
    PressEnter(v.ImNumber2);  // no calibration is open: Enter only takes the number
    v.EntEnargy = [&](double energy) { entered.push_back(energy); };
    ShowElement();
    EXPECT_NE(v.lblTold.Caption.find("calibration"), std::string::npos);
    PressEnter(v.ImNumber2);
    EXPECT_TRUE(DoubleClick(v.ImNumber3));
    Type(v.ImNumber1, "34.5");
    PressEnter(v.ImNumber1);
    EXPECT_EQ(entered, (std::vector<double>{34.7196, 39.2576, 34.5}));
    PressEnter(v.ImNumber8);  // empty
    Type(v.ImNumber1, "high");
    PressEnter(v.ImNumber1);
    PressEnter(v.Text2);
    PressEnter(v.ImNumber5);
    EXPECT_EQ(entered.size(), 3u) << "what is no line enters nothing";
    v.EntEnargy = nullptr;
    PressEnter(v.ImNumber2);
    EXPECT_EQ(entered.size(), 3u);
}

TEST(Element, TheCalibrationsButtonOpensItAndItsLinesFillTheTableThere) {
    ElementWorld world;
    DialogCalibCView& calibration = frmDialogCalibC;
    world.OpenOne();
    world.ShowTable();
    Click(frmVaelAna.mnuCons);
    ASSERT_TRUE(calibration.Visible);
    EXPECT_FALSE(v.Visible);
    EXPECT_TRUE(Click(calibration.cmdEnergyInp));
    ASSERT_TRUE(v.Visible);
    EXPECT_NE(v.lblTold.Caption.find("calibration"), std::string::npos);
    Sheet::GoTo("47");
    PressEnter(v.ImNumber2);
    DoubleClick(v.ImNumber3);
    Click(ElementWorld::Kind(LINE_KA2));
    Click(ElementWorld::Kind(LINE_KB1));
    Click(ElementWorld::Kind(LINE_KB2));
    Click(ElementWorld::Atom(82));  // its Ka1 alone
    const auto energy = [&](std::size_t row) {
        return row < calibration.Pairs.size() ? calibration.Pairs[row][DialogCalibCView::ENERGY - 1]
                                              : std::string("none");
    };
    EXPECT_EQ(energy(0), "22.1629");
    EXPECT_EQ(energy(1), "24.9426");
    EXPECT_EQ(energy(2), "74.9693");
    EXPECT_EQ(calibration.vaSpread1.Row, 4) << "goes on to the next row";
    world.Desk.ExpectQuestion("The table of the energy calibration is lost. Do you leave?",
                              Answer::No);
    Click(frmVaelAna.mnuExit);
    Click(calibration.cmdCalbCan);  // no row has a channel yet, so there is no report

    EXPECT_FALSE(v.EntEnargy);
    EXPECT_FALSE(frmAtom.EntEnargy);
    PressEnter(v.ImNumber2);
    EXPECT_EQ(energy(3), "none");
}
