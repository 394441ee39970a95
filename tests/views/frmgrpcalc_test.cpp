// Graph arithmetic on the rows: terms, the result's place, what cannot be calculated.
#include "support/plotted.h"

#include "core/frmgrpcalc.h"
#include "core/windows.h"

#include <gtest/gtest.h>

using namespace vael;

namespace {

GrpCalcView& v = frmGrpCalc;

struct Calc : Plotted {
    explicit Calc(int files = 2) {
        std::vector<std::string> paths;
        for (int n = 0; n < files; ++n)
            paths.push_back(Folder.Write("g" + std::to_string(n + 1) + ".npd",
                                         NpdText(std::vector<std::int32_t>(1024, 100 * (n + 1)))));
        Open(paths);
        EXPECT_TRUE(Click(frmVaelAna.mnuCalcSpect));
        Choose(1, 2);
    }
    static void Choose(int first, int second) {
        Pick(v.cmbGraph[0], first - 1);
        Pick(v.cmbGraph[1], second - 1);
    }
    static void Term(ListBox& list, int op, NumberBox& box, const std::string& constant) {
        Pick(list, op);
        Type(box, constant);
        Leave(box);
    }
    static const SpectrumData& Result() { return store.SpectrumDatas[0]; }
    static bool Drawn(int win) { return Engine().Target(win).Graph[0].GraphInUse != 0; }
};

constexpr int PLUS = 0, MINUS = 1, TIMES = 2, OVER = 3, NOTHING = 4;

}  // namespace

TEST(GrpCalc, OpensWithTheCurrentRowAndItsWords) {
    Calc w;
    EXPECT_TRUE(v.Visible);
    EXPECT_EQ(v.Caption, "Graph Calucration");
    EXPECT_EQ(v.cmbGraph[0].Items.front(), "G1");
    EXPECT_EQ(v.cmbGraph[1].Items.back(), "G10");
    EXPECT_EQ(v.cmbOpe1.Items, (std::vector<std::string>{"＋", "－", "×", "÷"}));
    EXPECT_EQ(v.cmbOpe2.Items, (std::vector<std::string>{"＋", "－", "×", "÷", "   "}));
    EXPECT_EQ(v.lblName[0].Caption, "g1.npd");
    Click(v.cmdOK);
    EXPECT_FALSE(v.Visible);
    Change_cboGrphSel(0, 1);
    Click(frmVaelAna.mnuCalcSpect);
    EXPECT_EQ(v.cmbGraph[0].Text(), "G2");
}

TEST(GrpCalc, TheSecondTermShowsUnlessTheBlankIsChosen) {
    Calc w;
    EXPECT_FALSE(v.fra2nd.Visible);
    for (const int op : {PLUS, MINUS, TIMES, OVER}) {
        Pick(v.cmbOpe2, op);
        EXPECT_TRUE(v.fra2nd.Visible);
    }
    Pick(v.cmbOpe2, NOTHING);
    EXPECT_FALSE(v.fra2nd.Visible);
}

TEST(GrpCalc, OneTermGoesToSlotZeroAndIsDrawnInItsColour) {
    Calc w;
    w.Choose(2, 1);
    w.Term(v.cmbOpe1, TIMES, v.ImNumber1, "1.5");
    EXPECT_TRUE(Click(v.cmdCalc));
    EXPECT_EQ(Calc::Result().DataNo, 1024);
    EXPECT_EQ(Calc::Result().Count[7], 300);
    EXPECT_EQ(store.SpectrumDatas[1].Count[7], 200) << "the source stays";
    const DrawTarget& target = Engine().Target(0);
    EXPECT_EQ(target.Graph[0].GraphColor, store.ColorTable[0]);
    EXPECT_EQ(target.YTop - target.Graph[0].PlotY[7], 300);
    EXPECT_NE(frmVaelAna.lblStatus.Caption.find("row 1"), std::string::npos);
}

TEST(GrpCalc, TwoTermsAreCombined) {
    Calc w;
    w.Term(v.cmbOpe1, PLUS, v.ImNumber1, "5");
    w.Term(v.cmbOpe3, OVER, v.ImNumber2, "4");
    Pick(v.cmbOpe2, TIMES);
    Click(v.cmdCalc);
    EXPECT_EQ(Calc::Result().Count[1000], 105 * 50);
}

TEST(GrpCalc, TheResultIsAViewOfTheMomentWithoutRowNameOrState) {
    Calc w;
    const auto rows = store.GraphList;
    Pick(v.cmbOpe2, MINUS);
    Click(v.cmdCalc);
    EXPECT_EQ(Calc::Result().Count[5], -100) << "counts may be negative and stay so";
    for (std::size_t row = 0; row < rows.size(); ++row) {
        EXPECT_EQ(store.GraphList[row].Name, rows[row].Name);
        EXPECT_EQ(store.GraphList[row].State, rows[row].State);
    }
    EXPECT_EQ(store.GraphTotal, 2);
}

TEST(GrpCalc, AGraphLessItselfAndAGraphOverZeroAreFlat) {
    Calc w;
    w.Choose(2, 2);
    Pick(v.cmbOpe2, MINUS);
    Click(v.cmdCalc);
    EXPECT_EQ(Calc::Result().Count[5], 0);
    Pick(v.cmbOpe2, NOTHING);
    w.Term(v.cmbOpe1, OVER, v.ImNumber1, "0");
    Click(v.cmdCalc);
    EXPECT_EQ(Calc::Result().Count[5], 0);
    EXPECT_EQ(Calc::Result().DataNo, 1024);
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(GrpCalc, AnEmptyRowGivesNoChannelsAndNothingIsDrawn) {
    Calc w;
    w.Choose(9, 1);
    EXPECT_EQ(v.lblName[0].Caption, "empty");
    Click(v.cmdCalc);
    EXPECT_EQ(Calc::Result().DataNo, 0);
    EXPECT_FALSE(Calc::Drawn(0));
    EXPECT_NE(frmVaelAna.lblStatus.Caption.find("no channels"), std::string::npos);
}

TEST(GrpCalc, AnEmptySecondGraphCountsAsZero) {
    Calc w;
    w.Choose(2, 9);
    Pick(v.cmbOpe2, PLUS);
    Click(v.cmdCalc);
    EXPECT_EQ(Calc::Result().Count[5], 200);
}

TEST(GrpCalc, AnOverflowEndsTheCommandWithItsFault) {
    Calc w;
    w.Term(v.cmbOpe1, TIMES, v.ImNumber1, "10000000");
    w.Term(v.cmbOpe3, PLUS, v.ImNumber2, "0");
    Pick(v.cmbOpe2, TIMES);
    Click(v.cmdCalc);
    ASSERT_EQ(w.Desk.Faults.size(), 1U);
    EXPECT_TRUE(v.Visible);
}

TEST(GrpCalc, TheResultIsDrawnInTheActiveWindow) {
    Calc w;
    ChgValue_chkGrp(1, 1, 1, true);  // row 2 goes to the lower window
    ChangeActiveWin(1);
    w.Choose(2, 1);
    Click(v.cmdCalc);
    EXPECT_TRUE(Calc::Drawn(1));
}

TEST(GrpCalc, EnterCalculatesAndEscapeCloses) {
    Calc w;
    w.Term(v.cmbOpe1, PLUS, v.ImNumber1, "1");
    Key(v, {.Key = KeyPress::Name::Enter});
    EXPECT_EQ(Calc::Result().Count[5], 101);
    Key(v, {.Key = KeyPress::Name::Escape});
    EXPECT_FALSE(v.Visible);
}

TEST(GrpCalc, FollowsTheRowsWhileItIsOpen) {
    Calc w;
    w.Choose(2, 1);
    DeleteGraph(1);
    EXPECT_EQ(v.lblName[0].Caption, "empty");
}
