// The periodic table: marks of elements on the plots by the user's hand.
#include "support/elementworld.h"

#include "core/cursors.h"
#include "core/expand.h"
#include "core/operations.h"
#include "core/units.h"
#include "support/recordingcanvas.h"

#include <gtest/gtest.h>

using namespace vael;
using test::ElementWorld;

namespace {

AtomView& v = frmAtom;
using Names = std::vector<std::string>;

// Energies of the table, keV.
const std::vector<double> CE{34.2788, 34.7196, 39.2576, 40.2304};  // Ka2, Ka1, Kb1, Kb2
const std::vector<double> AG{21.9903, 22.1629, 24.9426, 25.4558};

struct Table : ElementWorld {
    Table() {
        OpenOne();
        ShowTable();
    }
    static void Press(int number) { EXPECT_TRUE(Click(Atom(number))) << number; }
    static void PressRight(int number) { EXPECT_TRUE(RightClick(Atom(number))) << number; }
    static std::string Status() { return frmVaelAna.lblStatus.Caption; }
};

std::vector<double> Joined(std::vector<double> a, const std::vector<double>& b) {
    a.insert(a.end(), b.begin(), b.end());
    std::sort(a.begin(), a.end());
    return a;
}

}  // namespace

TEST(AtomTable, IsLoadedHiddenAndUnloadedAtTheEnd) {
    Table table;
    Table::Press(58);
    Click(v.cmdCancel);
    EXPECT_FALSE(v.Visible);
    EXPECT_FALSE(Table::Lines(0).empty()) << "the marks stay";
    Click(frmVaelAna.mnuExit);
    EXPECT_TRUE(table.Desk.HasQuit);
    EXPECT_EQ(v.Flags, (decltype(v.Flags){}));
    Form_Load(table.Folder.Path());
    EXPECT_FALSE(v.Visible);
}

TEST(AtomTable, HasItsWordsAndAButtonForEachElement) {
    Table table;
    EXPECT_EQ(v.Caption, "Atom elements periodic Table");
    EXPECT_EQ(v.cmdAtom.size(), 107u);
    for (int number = 1; number <= 107; ++number)
        EXPECT_EQ(Table::Atom(number).Caption, ElementSymbol(number));
    EXPECT_EQ(Table::Atom(58).Tip, "58 Cerium");
    const Names kinds{"Ka1", "KAve", "Ka2", "Kb2", "Kb3", "Kb1", "Gamma", "Edg"};
    for (int kind = 0; kind < LINE_KINDS; ++kind)
        EXPECT_EQ(Table::Kind(kind).Caption, kinds[static_cast<std::size_t>(kind)]);
    EXPECT_EQ(v.frmMode.Caption, "Mode");
    EXPECT_EQ(v.optMark.Caption, "Mark");
    EXPECT_EQ(v.optEdit.Caption, "Edit");
    EXPECT_EQ(v.cmdCancel.Caption, "OK");
    EXPECT_EQ(v.fraCharacter.Caption, "Character");
    EXPECT_TRUE(v.optMark.Value);
    EXPECT_TRUE(v.OnTop) << "it stays above the others";
    EXPECT_FALSE(v.Modal);
}

TEST(AtomTable, ThePointerShowsTheElementBelowIt) {
    Table table;
    EXPECT_TRUE(Hover(Table::Atom(58)));
    EXPECT_EQ(v.fraCharacter.Caption, "Character Cerium");
    EXPECT_EQ(v.lblCharacter.Caption, "58  Ce");
    EXPECT_EQ(v.lblLine[LINE_KA1].Caption, "Ka1  34.720");
    EXPECT_EQ(v.lblLine[LINE_GAMMA].Caption, "");
    Hover(Table::Atom(48));
    EXPECT_EQ(v.fraCharacter.Caption, "Character Cadmium");
    EXPECT_EQ(v.lblLine[LINE_GAMMA].Caption, "Gamma  88.034");
}

TEST(AtomTable, APressMarksEachChosenLineAtItsChannelAndASecondTakesThemOff) {
    Table table;
    Table::Press(58);
    Table::ExpectLines(0, CE);
    EXPECT_TRUE(Table::Lines(1).empty()) << "the other window has marks of its own";
    EXPECT_EQ(Table::Labels(0), (Names{"Cerium Ka2 34.279", "Cerium Ka1 34.720",
                                       "Cerium Kb1 39.258", "Cerium Kb2 40.230"}));
    EXPECT_TRUE(Table::Marked(58));
    EXPECT_FALSE(Table::Marked(57));
    const TextRecord& line = Engine().Target(0).VLine[0];
    EXPECT_EQ(line.Color, store.ColorTable[SLOT_COUNT + 4]) << "the colour \"Element Mark\"";
    EXPECT_EQ(std::min(line.Y, line.Y2), 0.0F);
    EXPECT_EQ(std::max(line.Y, line.Y2), static_cast<float>(PlotTop(0)));
    Table::Press(47);
    Table::ExpectLines(0, Joined(AG, CE));
    Table::Press(58);
    Table::ExpectLines(0, AG);
    EXPECT_FALSE(Table::Marked(58));
    Table::Press(47);
    EXPECT_TRUE(Table::Lines(0).empty());
    EXPECT_TRUE(Table::Labels(0).empty());
}

TEST(AtomTable, TheMarksAreOnThePictureAndGoneFromItAfterwards) {
    Table table;
    test::RecordingSurface paper;
    frmVaelAna.picGraph[0].PutOn(&paper);
    RedrawBoth();
    const auto standing = [&] {
        std::size_t lines = 0;
        for (const test::Drawn& drawn : paper.Strokes)
            lines += drawn.What == test::Drawn::Kind::Line && drawn.From.X == drawn.To.X &&
                             std::abs(drawn.From.X - Table::ChannelOf(34.7196)) < 0.01
                         ? 1
                         : 0;
        return lines;
    };
    EXPECT_EQ(standing(), 0u);
    Table::Press(58);
    EXPECT_EQ(standing(), 1u);
    Table::Press(58);
    EXPECT_EQ(standing(), 0u);
    frmVaelAna.picGraph[0].PutOn(nullptr);
}

TEST(AtomTable, EachWindowAndGraphHasItsOwnMarks) {
    Table table;
    Change_cboGrphSel(0, 0);
    Tick(frmVaelAna.chkGrp[10]);  // the graph goes to the lower window
    ChangeActiveWin(1);
    Table::Press(58);
    Table::ExpectLines(1, CE);
    EXPECT_TRUE(Table::Lines(0).empty());
    ChangeActiveWin(0);
    EXPECT_FALSE(Table::Marked(58)) << "the buttons are those of the active window";
    Table::Press(47);
    Table::ExpectLines(0, AG);
    Table::ExpectLines(1, CE);
    ChangeActiveWin(1);
    EXPECT_TRUE(Table::Marked(58));
    EXPECT_FALSE(Table::Marked(47));
    Table::Press(58);
    EXPECT_TRUE(Table::Lines(1).empty());
    Table::ExpectLines(0, AG);
}

TEST(AtomTable, InExpandStyleBothWindowsShowTheMarks) {
    Table table;
    Tick(frmVaelAna.ckbExpand);
    SetExpandArea(1000, 400);  // channels 1000 to 1399: Ka and Kb of cerium, not of silver
    Table::Press(58);
    EXPECT_EQ(v.DispMode, static_cast<std::int16_t>(WindowStyle::Expand));
    Table::ExpectLines(0, CE);
    Table::ExpectLines(1, CE);
    Table::Press(47);
    Table::ExpectLines(0, Joined(AG, CE));
    Table::ExpectLines(1, CE);
    Table::Press(58);
    Table::ExpectLines(0, AG);
    EXPECT_TRUE(Table::Lines(1).empty());
}

TEST(AtomTable, InAPileTheOnePlotShowsThem) {
    Table table;
    Tick(frmVaelAna.chkWinStyle);
    Table::Press(58);
    Table::ExpectLines(0, CE);
    EXPECT_TRUE(Table::Lines(1).empty());
    frmVaelAna.ActiveWin = 1;  // its own row is an empty one
    frmVaelAna.cboGrphSel[1].Index = 5;
    Table::Press(47);
    Table::ExpectLines(0, Joined(AG, CE));
}

TEST(AtomTable, MarksFollowTheCalibrationAndTheRow) {
    Table table;
    table.Open({table.Spectrum("a.npd"), table.Spectrum("b.npd")});
    Change_cboGrphSel(0, 0);
    Table::Press(58);
    Change_cboGrphSel(0, 1);
    EXPECT_TRUE(Table::Lines(0).empty());
    EXPECT_FALSE(Table::Marked(58));
    Change_cboGrphSel(0, 0);
    Table::ExpectLines(0, CE);
    EXPECT_TRUE(Table::Marked(58));

    store.DefaultParam.EgcCoef = {0.0, 0.05, 0.0};
    Click(frmVaelAna.optEGC[0]);
    ASSERT_EQ(Table::Lines(0).size(), CE.size());
    EXPECT_NEAR(Table::Lines(0)[1], 34.7196 / 0.05 - 1.0, 0.01);
    Click(frmVaelAna.Command1);  // the default calibration, typed
    Type(frmDispPara.ImConst[1], "0.06");
    Click(frmDispPara.cmdOk);
    EXPECT_NEAR(Table::Lines(0)[1], 34.7196 / 0.06 - 1.0, 0.01);
    Click(frmVaelAna.optEGC[1]);
    Table::ExpectLines(0, CE);
}

TEST(AtomTable, MarksFollowTheShownRangeAndTheScale) {
    Table table;
    Table::Press(58);
    CsrX_Change(1150);
    for (int halvings = 0; halvings < 5; ++halvings) Click(frmVaelAna.cmdNarrower);
    ASSERT_EQ(frmVaelAna.Windows[0].Span, 128);
    Table::ExpectLines(0, {34.2788, 34.7196});  // Kb1 is 151 channels from the cursor
    Tick(frmVaelAna.ckbLogScale);
    EXPECT_EQ(std::max(Engine().Target(0).VLine[0].Y, Engine().Target(0).VLine[0].Y2),
              static_cast<float>(LOG_DECADES));
}

TEST(AtomTable, AGraphMadeFromAnotherBeginsWithItsMarks) {
    Table table;
    Table::Press(58);
    Click(frmVaelAna.mnuSmooth);
    EXPECT_EQ(GraphNo(), 0);
    EXPECT_TRUE(Table::Marked(58));
    Table::ExpectLines(0, CE);
    Table::Press(58);
    EXPECT_TRUE(Table::Lines(0).empty());
    Change_cboGrphSel(0, 1);
    Table::ExpectLines(0, CE);
}

TEST(AtomTable, MarksGoWithTheirGraphAndANewOneInItsSlotHasNone) {
    Table table;
    Table::Press(58);
    Click(frmVaelAna.mnuCloseGraph);
    EXPECT_TRUE(Table::Lines(0).empty());
    EXPECT_FALSE(Table::Marked(58));
    table.OpenOne();
    EXPECT_EQ(DataNo(), 0);
    EXPECT_TRUE(Table::Lines(0).empty());
    EXPECT_FALSE(Table::Marked(58));
}

TEST(AtomTable, TheRightButtonTakesAllMarksOfAnElementOff) {
    Table table;
    Table::Press(58);
    Table::Press(47);
    Table::PressRight(58);
    Table::ExpectLines(0, AG);
    Table::PressRight(58);
    EXPECT_NE(Table::Status().find("no mark of Cerium"), std::string::npos) << Table::Status();
    Table::ExpectLines(0, AG);
}

TEST(AtomTable, ALineKindAppliesToAllThatIsMarkedAndToThePressesThatFollow) {
    Table table;
    EXPECT_TRUE(Table::KindMarked(LINE_KA1));
    EXPECT_FALSE(Table::KindMarked(LINE_EDGE));
    Table::Press(58);
    Click(Table::Kind(LINE_EDGE));
    EXPECT_TRUE(Table::KindMarked(LINE_EDGE));
    Table::ExpectLines(0, Joined(CE, {40.443}));
    for (const int kind : {LINE_KA2, LINE_KB1, LINE_KB2}) Click(Table::Kind(kind));
    EXPECT_FALSE(Table::KindMarked(LINE_KB1));
    Table::ExpectLines(0, {34.7196, 40.443});
    Table::Press(47);
    Table::ExpectLines(0, {22.1629, 25.514, 34.7196, 40.443});
    Click(Table::Kind(LINE_KA1));
    Click(Table::Kind(LINE_EDGE));
    EXPECT_TRUE(Table::Lines(0).empty());
    EXPECT_FALSE(Table::Marked(58)) << "an element without a line is not marked";
    Table::Press(47);
    EXPECT_NE(Table::Status().find("No kind of line"), std::string::npos) << Table::Status();
}

TEST(AtomTable, AllEightKindsAreMarkedWhereTheTableHasThem) {
    Table table;
    for (const int kind : {LINE_KAVE, LINE_KB3, LINE_GAMMA, LINE_EDGE}) Click(Table::Kind(kind));
    Table::Press(48);
    Table::ExpectLines(0, {22.9842, 23.1079, 23.1737, 26.0605, 26.0947, 26.6443, 26.7112, 88.0336});
    Table::Press(1);
    EXPECT_TRUE(Table::Marked(1)) << "hydrogen has an edge";
    Click(Table::Kind(LINE_EDGE));
    EXPECT_FALSE(Table::Marked(1));
}

TEST(AtomTable, AnElementWithoutTheChosenLinesIsNotMarked) {
    Table table;
    Table::Press(107);
    EXPECT_FALSE(Table::Marked(107));
    EXPECT_NE(Table::Status().find("Bohrium has none of these lines"), std::string::npos)
        << Table::Status();
    EXPECT_TRUE(Table::Lines(0).empty());
}

TEST(AtomTable, InEditAPressOpensTheSheetAndTheLineKindsAreThatElementsAlone) {
    Table table;
    Table::Press(58);
    Table::Press(47);
    Click(v.optEdit);
    Click(Table::Kind(LINE_KA1));
    EXPECT_NE(Table::Status().find("Press the element first"), std::string::npos);
    Table::Press(58);
    EXPECT_TRUE(frmElement.Visible);
    EXPECT_TRUE(frmElement.OnTop) << "above the table, which stays on top itself";
    EXPECT_EQ(frmElement.ElemNo(), 58);
    EXPECT_EQ(v.fraLines.Caption, "Lines of Cerium");
    EXPECT_TRUE(Table::Marked(58)) << "a press marks nothing here";
    EXPECT_TRUE(Table::KindMarked(LINE_KA2));
    for (const int kind : {LINE_KA2, LINE_KB1, LINE_KB2, LINE_EDGE}) Click(Table::Kind(kind));
    Table::ExpectLines(0, Joined(AG, {34.7196, 40.443}));
    EXPECT_TRUE(Table::KindMarked(LINE_EDGE));
    EXPECT_FALSE(Table::KindMarked(LINE_KA2));
    Click(v.optMark);
    EXPECT_EQ(v.fraLines.Caption, "Lines");
    EXPECT_TRUE(Table::KindMarked(LINE_KA2)) << "the chosen kinds are as they were";
    EXPECT_FALSE(Table::KindMarked(LINE_EDGE));
}

TEST(AtomTable, AnEnergyThatIsEditedMovesItsMark) {
    Table table;
    Table::Press(58);
    Click(v.optEdit);
    Table::Press(58);
    Type(frmElement.ImNumber1, "33");
    PressEnter(frmElement.ImNumber1);
    Table::ExpectLines(0, {33.0, 34.7196, 39.2576, 40.2304});
    Key(frmElement, {.Key = KeyPress::Name::Escape});
    Table::ExpectLines(0, CE);
}

TEST(AtomTable, ClearTakesEveryMarkOfTheGraphOff) {
    Table table;
    Table::Press(58);
    Table::Press(47);
    Click(v.cmdClear);
    EXPECT_TRUE(Table::Lines(0).empty());
    EXPECT_FALSE(Table::Marked(47));
}

TEST(AtomTable, WithoutAGraphAPressSaysSo) {
    ElementWorld world;
    world.ShowTable();
    Click(ElementWorld::Atom(58));
    EXPECT_EQ(frmVaelAna.lblStatus.Caption, "There is no graph to mark lines on.");
    RightClick(ElementWorld::Atom(58));
    Click(v.cmdClear);
    EXPECT_TRUE(ElementWorld::Lines(0).empty());
    EXPECT_TRUE(world.Desk.Faults.empty());
}

TEST(AtomTable, WithoutACalibrationThereIsNoPlaceAndTheStatusLineSaysSo) {
    Table table;
    Click(frmVaelAna.optEGC[0]);  // the default one is all zero
    Table::Press(58);
    EXPECT_TRUE(Table::Marked(58));
    EXPECT_TRUE(Table::Lines(0).empty());
    EXPECT_NE(Table::Status().find("no energy calibration"), std::string::npos) << Table::Status();
    Click(frmVaelAna.optEGC[1]);
    Table::ExpectLines(0, CE);
    store.PropertyRecords[0].SourceType = SOURCE_DAC;
    RefreshElementMarks();
    EXPECT_TRUE(Table::Lines(0).empty()) << "an angle axis has no energies";
}

TEST(AtomTable, MoreLinesThanThePlotHasPlacesForAreRefused) {
    Table table;
    for (int number = 31; number < 31 + 25; ++number) Table::Press(number);  // four lines each
    EXPECT_EQ(Table::Lines(0).size(), 100u);
    Table::Press(60);
    EXPECT_FALSE(Table::Marked(60));
    EXPECT_NE(Table::Status().find("At most 100"), std::string::npos) << Table::Status();
    Click(Table::Kind(LINE_EDGE));
    EXPECT_FALSE(Table::KindMarked(LINE_EDGE)) << "refused whole";
    EXPECT_EQ(Table::Lines(0).size(), 100u);
    EXPECT_TRUE(table.Desk.Asked.empty());
}

TEST(AtomTable, LabelsDoNotLieOnEachOther) {
    Table table;
    for (const int kind : {LINE_KAVE, LINE_KB3, LINE_EDGE}) Click(Table::Kind(kind));
    for (const int number : {47, 58, 82}) Table::Press(number);
    const DrawTarget& target = Engine().Target(0);
    ASSERT_GT(target.TextNum, 10);
    Canvas& canvas = *target.Canvas;
    Engine().ScaleCanvas(0);
    canvas.FontSize = 8;
    const double tall = canvas.TextHeight("A");
    for (int a = 0; a < target.TextNum; ++a)
        for (int b = a + 1; b < target.TextNum; ++b) {
            const TextRecord& one = target.Text[static_cast<std::size_t>(a)];
            const TextRecord& two = target.Text[static_cast<std::size_t>(b)];
            const bool sameRow = std::abs(one.Y - two.Y) < tall * 0.99;
            const double wide = canvas.TextWidth(one.X < two.X ? one.Text.data() : two.Text.data());
            EXPECT_TRUE(!sameRow || std::abs(one.X - two.X) >= wide)
                << one.Text.data() << " and " << two.Text.data();
            EXPECT_GE(one.X, 0.0F);
        }
}

TEST(AtomTable, ALineEndsAtItsLabelSoThatItCrossesNoOther) {
    Table table;
    for (const int number : {47, 58}) Table::Press(number);
    const DrawTarget& target = Engine().Target(0);
    ASSERT_EQ(target.TextNum, target.VLineNum);
    Canvas& canvas = *target.Canvas;
    Engine().ScaleCanvas(0);
    canvas.FontSize = 8;
    const double tall = canvas.TextHeight("A");
    for (std::size_t n = 0; n < static_cast<std::size_t>(target.VLineNum); ++n) {
        const TextRecord& line = target.VLine[n];
        const double end = std::max(line.Y, line.Y2);
        EXPECT_FLOAT_EQ(static_cast<float>(end), target.Text[n].Y) << target.Text[n].Text.data();
        for (std::size_t other = 0; other < static_cast<std::size_t>(target.TextNum); ++other) {
            const TextRecord& label = target.Text[other];
            const bool across =
                label.X < line.X && line.X < label.X + canvas.TextWidth(label.Text.data());
            EXPECT_FALSE(across && end > label.Y - tall * 0.9) << label.Text.data();
        }
    }
}

TEST(AtomTable, LinesThatAreMarkedGoToTheCalibrationThatIsOpen) {
    Table table;
    std::vector<double> entered;
    v.EntEnargy = [&](double energy) { entered.push_back(energy); };
    Table::Press(58);
    EXPECT_EQ(entered, CE) << "the lowest first";
    Table::Press(58);
    EXPECT_EQ(entered.size(), 4u) << "taking marks off enters nothing";
    entered.clear();
    Click(v.optEdit);
    Table::Press(48);
    Click(Table::Kind(LINE_GAMMA));
    EXPECT_EQ(entered, (std::vector<double>{88.0336}));
    Click(Table::Kind(LINE_GAMMA));
    EXPECT_EQ(entered.size(), 1u);
    v.EntEnargy = nullptr;
}

TEST(AtomTable, WithoutItsFileItSaysSoAndStaysAway) {
    World world;
    world.Desk.ExpectQuestion("Atomic.dat File Read (Open Error)");
    Click(frmVaelAna.cmdEnergy[1]);
    EXPECT_FALSE(v.Visible);
    ASSERT_EQ(world.Desk.Faults.size(), 1u);
    EXPECT_NE(world.Desk.Faults[0].find("atomic.dat"), std::string::npos);
}

TEST(AtomTable, EscapeAndEnterCloseIt) {
    Table table;
    Key(v, {.Key = KeyPress::Name::Escape});
    EXPECT_FALSE(v.Visible);
    table.ShowTable();
    Key(v, {.Key = KeyPress::Name::Enter});
    EXPECT_FALSE(v.Visible);
}

TEST(AtomTable, CeriumsLinesStandUnderItsMarksOnAMeasuredSpectrum) {
    const std::string path = Measured("CeO2H.npd");
    if (path.empty()) GTEST_SKIP() << "the measured spectra are not there";
    ElementWorld world;
    world.Open({path});
    world.ShowTable();
    Click(ElementWorld::Atom(58));
    const auto lines = ElementWorld::Lines(0);
    ASSERT_EQ(lines.size(), 4u);
    const auto& counts = store.SpectrumDatas[static_cast<std::size_t>(DataNo())].Count;
    // Within two channels of each mark there is a channel that is higher than both its neighbours
    // and far above the background left of the lines.
    const auto count = [&](int channel) { return counts[static_cast<std::size_t>(channel)]; };
    const std::int32_t background = count(static_cast<int>(lines[0]) - 40);
    for (const double line : lines) {
        const int nearest = static_cast<int>(std::lround(line));
        int best = nearest;
        for (int i = nearest - 2; i <= nearest + 2; ++i)
            if (count(i) > count(best)) best = i;
        EXPECT_GT(count(best), count(best - 1)) << line;
        EXPECT_GT(count(best), count(best + 1)) << line;
        EXPECT_GT(count(best), 5 * background) << line;
        EXPECT_LE(std::abs(best - line), 1.0) << line;
    }
}
