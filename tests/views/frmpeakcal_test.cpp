// The lattice view by the user's hand: how it opens, its lists, seeds, range, angle and marks.
#include "support/latticeworld.h"

#include "core/cursors.h"
#include "core/frmlog.h"
#include "lattice/reflectionmarkcommands.h"

#include <gtest/gtest.h>

using namespace vael;
using test::CrystalFile;
using test::GOLD;
using test::LatticeWorld;

namespace {

PeakCalView& v = frmPeakCal;

constexpr const char* TWO_CUBIC =
    "\"Au Gold\",0,4.0786,4.0786,4.0786,90,90,90\n1,1,1\n2,0,0\n0,0,0";

}  // namespace

// --- opening -----------

TEST(PeakCal, OpensOnTheCurrentRowWithItsWords) {
    LatticeWorld w;
    w.AddCubic(GOLD);
    EXPECT_FALSE(v.Visible);
    EXPECT_TRUE(Click(frmVaelAna.cmdOperation[9]));
    ASSERT_TRUE(v.Visible);
    EXPECT_FALSE(v.Modal);
    EXPECT_EQ(v.Caption, "Lattice Caluculate");
    EXPECT_EQ(v.lblGraph.Caption, "1  gold.npd, 5 peaks");
    EXPECT_EQ(v.tabLatticeFit.Captions, (std::vector<std::string>{"PeakData", "UsePeak"}));
    EXPECT_EQ(v.optSelectMode[0].Caption, "Sample");
    EXPECT_EQ(v.optSelectMode[1].Caption, "Pressure Marker");
    EXPECT_TRUE(v.optSelectMode[1].Value);
    EXPECT_EQ(v.cmbUnit.Items, (std::vector<std::string>{"℃", "Ｋ"}));
    EXPECT_EQ(v.cmbUnit.Index, 0);
    EXPECT_EQ(v.txtPickupRange.Text, "0.0300");
    EXPECT_EQ(v.txtTemp.Text, "27.0");
    EXPECT_EQ(v.txt2Theta.Text, "10.00000");
    EXPECT_EQ(v.txtExpected2theta.Text, "5.0000");
    EXPECT_EQ(v.cmbLatticeType.Items.at(5), "Triclinic");
    EXPECT_EQ(v.cmbColor.Items,
              (std::vector<std::string>{"White", "Magenta", "Cyan", "Yellow", "Green"}));
    EXPECT_EQ(v.cmdCal.Caption, "Execute");
    EXPECT_EQ(v.cmd2ThetaCalib.Caption, "Correct");
    EXPECT_EQ(v.fra2Theta.Caption, "2Theta Calibration for Cubic Type");
    EXPECT_EQ(v.WindowMode, 1);
    EXPECT_TRUE(v.OnTop);
    EXPECT_EQ(v.Loading, 0);
    EXPECT_EQ(v.cmbElement.Index, -1);
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(PeakCal, AnEmptyRowOpensNothing) {
    LatticeWorld w;
    w.Desk.CancelOpen();
    Click(frmVaelAna.mnuLoad);
    w.Desk.ExpectQuestion("ShiftGraph: Data Notting!");
    Click(frmVaelAna.cmdShowReport);
    EXPECT_FALSE(v.Visible);
}

TEST(PeakCal, ButtonsWithoutActionNeverWork) {
    LatticeWorld w;
    w.OpenView();
    for (const Button* button : {&v.cmdCal2, &v.cmdReCal, &v.cmdPrint})
        EXPECT_FALSE(button->Usable()) << button->Name;
}

TEST(PeakCal, ListsThePeaksWithTheirValues) {
    LatticeWorld w;
    w.AddPeakAt(0, 999.5, 5.0, 4000.0);
    w.OpenView();
    // E = 0.05 + 0.03 * 1000.5; d = 12.3981 / (2 E sin 5 deg); the angle of that d at 1.5418 A.
    ASSERT_EQ(v.sprPeakInf.Rows(), 1);
    const char* expected[] = {"1",    "1000.50", "30.0650", "2.36574", "12346",
                              "4000", "10.00",   "0.3000",  "19.0183", "A"};
    const double d = 12.3981 / (2 * 30.065 * std::sin(5 * std::numbers::pi / 180));
    EXPECT_NEAR(Number(w.Cell(v.sprPeakInf, 3, 1)), d, 6e-6);
    EXPECT_NEAR(Number(w.Cell(v.sprPeakInf, 8, 1)),
                std::asin(1.5418 / 2 / d) * 180 / std::numbers::pi, 6e-5);
    for (const int column : {0, 1, 2, 4, 5, 6, 7, 9})
        EXPECT_EQ(w.Cell(v.sprPeakInf, column, 1), expected[column]) << column;
}

TEST(PeakCal, APeakAddedByHandIsM) {
    LatticeWorld w;
    w.AddCubic(GOLD, 2);
    w.Desk.OnModal([](View&) {
        Type(frmInputFitParameter.txtCenterCh, "2001");
        Type(frmInputFitParameter.txtMaxCount, "500");
        Type(frmInputFitParameter.txtWidth, "10");
        Click(frmInputFitParameter.cmdOK);
    });
    Click(frmVaelAna.cmdManualFitting);
    Click(frmManualFit.cmdInputFit);
    ASSERT_EQ(w.Peaks().PeakNum, 3);
    w.OpenView();
    for (int row = 1; row <= 3; ++row)
        EXPECT_EQ(w.Cell(v.sprPeakInf, 9, row),
                  w.Cell(v.sprPeakInf, 1, row) == "2001.00" ? "M" : "A")
            << row;
    EXPECT_EQ(w.LogText().find("\"M\""), w.LogText().rfind("\"M\""));
    EXPECT_NE(w.LogText().find("\"M\""), std::string::npos);
}

TEST(PeakCal, TheListHoldsTheFirstTenCrystalsAndInSampleModeAll) {
    LatticeWorld w;
    w.OpenView();
    EXPECT_EQ(v.cmbElement.Items.size(), 10U);
    EXPECT_EQ(v.cmbElement.Items.front(), "Fe Iron (bcc)");
    w.Sample();
    EXPECT_EQ(v.cmbElement.Items.size(), 28U);
    EXPECT_EQ(v.cmbElement.Index, 0);
    Click(v.optSelectMode[1]);
    EXPECT_EQ(v.cmbElement.Index, 1);
    EXPECT_EQ(v.cmbElement.Items.size(), 28U);
    EXPECT_EQ(v.cmbElement.Items.at(6), "Pt_B Platinum (Birch scale)");
    for (std::size_t i = 7; i < 28; ++i) EXPECT_EQ(v.cmbElement.Items[i], "") << i;
}

TEST(PeakCal, BlankNamesAreLeftOutAndTheOthersKeepTheirCrystal) {
    LatticeWorld w(
        CrystalFile({"\"  \",0,3,3,3,90,90,90\n1,1,1\n0,0,0",
                     "\"Pt Platinum\",0,3.9231,3.9231,3.9231,90,90,90\n1,1,1\n0,0,0", TWO_CUBIC}));
    w.OpenView();
    EXPECT_EQ(v.cmbElement.Items, (std::vector<std::string>{"Pt Platinum", "Au Gold"}));
    Pick(v.cmbElement, 1);
    EXPECT_EQ(v.txtSeedConstant[0].Text, "4.078600");
}

TEST(PeakCal, ACountOfZeroGivesAnEmptyListAndTheViewOpens) {
    LatticeWorld w(CrystalFile({}));
    w.OpenView();
    EXPECT_TRUE(v.cmbElement.Items.empty());
    w.Sample();
    Click(v.optSelectMode[1]);
    w.Desk.ExpectQuestion("Seed Error");
    w.Execute();
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(PeakCal, WithoutACrystalFileTheReasonIsToldAndNothingOpens) {
    LatticeWorld w;
    std::filesystem::remove(w.Folder.Path("crystal.dat"));
    Click(frmVaelAna.cmdShowReport);
    EXPECT_FALSE(v.Visible);
    EXPECT_EQ(v.Loading, 0);
    ASSERT_EQ(w.Desk.Faults.size(), 1U);
    EXPECT_NE(w.Desk.Faults[0].find("crystal.dat"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(w.Folder.Path("crystalfit.csv")));
}

TEST(PeakCal, AFileChangedOnDiskCountsAtTheNextOpening) {
    LatticeWorld w;
    w.OpenView();
    w.Folder.Write("crystal.dat", CrystalFile({TWO_CUBIC, TWO_CUBIC}));
    EXPECT_EQ(v.cmbElement.Items.size(), 10U);
    w.Desk.CancelSave();
    Click(v.cmdExit);
    w.OpenView();
    EXPECT_EQ(v.cmbElement.Items.size(), 2U);
    EXPECT_EQ(v.cmbElement.Items.front(), "Au Gold");
}

// --- mode, crystal, system -----------

TEST(PeakCal, TheFirstPickOfTheFirstLineGoesOnToTheFirstMarker) {
    LatticeWorld w;
    w.OpenView();
    Pick(v.cmbElement, 0);
    EXPECT_EQ(v.cmbElement.Index, 1);
    EXPECT_EQ(v.txtSeedConstant[0].Text, "5.640200");
    EXPECT_EQ(LatticeWorld::Count(w.LogText(), "Element Changed!!"), 1U);
    Pick(v.cmbElement, 0);
    EXPECT_EQ(v.cmbElement.Index, 0) << "with a former selection it stays";
}

TEST(PeakCal, InMarkerModeLinesFromTheEighthAreIgnored) {
    LatticeWorld w;
    w.OpenView();
    w.Choose("Au");
    const std::string log = w.LogText();
    Pick(v.cmbElement, 8);
    EXPECT_EQ(v.cmbElement.Items[static_cast<std::size_t>(v.cmbElement.Index)], "Au Gold");
    EXPECT_EQ(v.txtSeedConstant[0].Text, "4.078600");
    EXPECT_EQ(w.LogText(), log);
}

TEST(PeakCal, ACrystalSelectsItsSystemAndFillsTheBoxes) {
    LatticeWorld w;
    w.OpenView();
    w.Choose("hBN");
    EXPECT_EQ(v.cmbLatticeType.Index, 2);
    const char* cell[] = {"2.504400",  "2.504400",  "6.656200",
                          "90.000000", "90.000000", "120.000000"};
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(v.txtLatticeConstans[i].Text, cell[i]);
        EXPECT_EQ(v.txtSeedConstant[i].Text, cell[i]);
    }
    EXPECT_EQ(LatticeWorld::Count(w.LogText(), "Lattice Type Changed"), 0U);
    EXPECT_FALSE(v.cmbLatticeType.Usable());
    w.Sample();
    EXPECT_TRUE(v.cmbLatticeType.Usable());
    EXPECT_FALSE(v.txtPressure.Enabled);
}

TEST(PeakCal, ASystemOfNineSelectsCubic) {
    LatticeWorld w(CrystalFile({TWO_CUBIC, "\"Any\",9,4.1,4.2,4.3,91,92,93\n1,1,1\n0,0,0"}));
    w.OpenView();
    Pick(v.cmbElement, 1);
    EXPECT_EQ(v.cmbLatticeType.Index, 0);
    EXPECT_EQ(v.txtSeedConstant[0].Text, "4.100000");
    w.AddCubic(4.1, 1);
    w.Execute();
    EXPECT_EQ(v.txtLatticeLength[0].Text.substr(0, 6), "4.1000");
}

TEST(PeakCal, AnUnknownSystemIsALatticeTypeError) {
    LatticeWorld w(
        CrystalFile({TWO_CUBIC, TWO_CUBIC, "\"Odd\",7,4.1,4.2,4.3,91,92,93\n1,1,1\n0,0,0"}));
    w.OpenView();
    Pick(v.cmbElement, 1);
    Pick(v.cmbElement, 2);
    EXPECT_EQ(v.cmbLatticeType.Index, -1);
    for (const bool sample : {false, true}) {
        if (sample) {
            w.Sample();
            w.Choose("Odd");
        }
        w.Desk.ExpectQuestion("Lattice Type Error");
        w.Execute();
    }
    EXPECT_EQ(v.txtLatticeLength[0].Text, "");
}

TEST(PeakCal, AnotherSystemRewritesTheBoxesFromTheCrystal) {
    LatticeWorld w;
    w.OpenView();
    w.Sample();
    w.Choose("Forsterite");
    EXPECT_EQ(v.txtSeedConstant[1].Text, "10.194300");
    w.TypeAndLeave(v.txtSeedConstant[0], "5");
    Pick(v.cmbLatticeType, 1);
    const char* tetragonal[] = {"4.753500", "4.753500", "5.980700"};
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(v.txtSeedConstant[i].Text, tetragonal[i]);
    EXPECT_EQ(LatticeWorld::Count(w.LogText(), "Lattice Type Changed!!"), 1U);
    Pick(v.cmbLatticeType, 1);
    EXPECT_EQ(LatticeWorld::Count(w.LogText(), "Lattice Type Changed!!"), 1U);
}

TEST(PeakCal, AClickOnTheModeThatIsChosenChangesNothing) {
    LatticeWorld w;
    w.OpenView();
    w.Choose("Au");
    Click(v.optSelectMode[1]);
    EXPECT_EQ(v.cmbElement.Text(), "Au Gold");
    EXPECT_EQ(LatticeWorld::Count(w.LogText(), "Mode Changed"), 0U);
    w.Sample();
    EXPECT_EQ(LatticeWorld::Count(w.LogText(), "Lattice Fit Mode Changed!!"), 1U);
}

// --- seeds, range, angle -----------

TEST(PeakCal, TheSameSeedAgainChangesNothingAndAnotherClearsTheMatch) {
    LatticeWorld w;
    w.AddCubic(GOLD);
    w.OpenView();
    w.Choose("Au");
    w.Execute();
    ASSERT_EQ(v.sprPeakInf2.Rows(), 5);
    EXPECT_TRUE(w.TypeAndLeave(v.txtSeedConstant[0], "4.0786"));
    EXPECT_EQ(v.txtSeedConstant[0].Text, "4.078600");
    EXPECT_EQ(v.sprPeakInf2.Rows(), 5);
    EXPECT_EQ(LatticeWorld::Count(w.LogText(), "New Seed Inputed"), 0U);
    const std::string a = v.txtLatticeLength[0].Text;
    EXPECT_TRUE(w.TypeAndLeave(v.txtSeedConstant[0], "4.08"));
    EXPECT_EQ(v.txtSeedConstant[0].Text, "4.080000");
    EXPECT_EQ(v.sprPeakInf2.Rows(), 0);
    EXPECT_EQ(v.sprPeakInf4.Rows(), 0);
    EXPECT_EQ(v.txtLatticeLength[0].Text, a) << "results stay";
    EXPECT_EQ(LatticeWorld::Count(w.LogText(), "New Seed Inputed"), 1U);
    EXPECT_EQ(latticeState.FitData.CurrentSeed[0], 4.08);
    EXPECT_EQ(v.SeedCell[0], 4.08);
}

TEST(PeakCal, ATextThatIsNoNumberKeepsTheFocus) {
    LatticeWorld w;
    w.OpenView();
    w.Choose("Au");
    for (TextBox* box : {&v.txtSeedConstant[0], &v.txtPickupRange, &v.txt2Theta}) {
        const std::string before = box->Text;
        Type(*box, "wide");
        EXPECT_FALSE(Click(v.cmdCal)) << box->Name;
        EXPECT_EQ(box->Text, "wide");
        EXPECT_NE(w.Told().find("\"wide\" is no number"), std::string::npos) << box->Name;
        EXPECT_TRUE(w.TypeAndLeave(*box, before));
    }
}

TEST(PeakCal, ThePickupRangeGoesToTheSettingsAndComesFromThem) {
    LatticeWorld w;
    settings.PickupRange() = 0.05;
    w.OpenView();
    EXPECT_EQ(v.txtPickupRange.Text, "0.0500");
    w.TypeAndLeave(v.txtPickupRange, " 0.01 ");
    EXPECT_EQ(settings.PickupRange(), 0.01);
    settings.PickupRange() = 0.02;
    Click(frmVaelAna.mnuPeakReport);
    frmVaelAna.cboUnitX.Click();
    EXPECT_EQ(v.txtPickupRange.Text, "0.0200");
}

TEST(PeakCal, ANewAngleGoesToTheGraphsOfBothWindowsAndClearsTheMatch) {
    LatticeWorld w;
    w.Open({w.Spectrum("gold.npd"), w.Spectrum("other.npd"), w.Spectrum("third.npd")});
    Tick(frmVaelAna.chkGrp[11]);  // other.npd goes to the lower window
    Pick(frmVaelAna.cboGrphSel[1], 1);
    Pick(frmVaelAna.cboGrphSel[0], 0);
    w.AddCubic(GOLD);
    w.OpenView();
    w.Choose("Au");
    w.Execute();
    ASSERT_EQ(v.sprPeakInf2.Rows(), 5);
    const std::string d = w.Cell(v.sprPeakInf, 3, 1);
    w.TypeAndLeave(v.txt2Theta, "10.5");
    EXPECT_EQ(v.txt2Theta.Text, "10.50000");
    EXPECT_EQ(w.Record(0).Param.TwoTheta, 10.5);
    EXPECT_EQ(w.Record(1).Param.TwoTheta, 10.5);
    EXPECT_EQ(w.Record(2).Param.TwoTheta, 10.0);
    EXPECT_EQ(v.sprPeakInf2.Rows(), 0);
    EXPECT_NE(w.Cell(v.sprPeakInf, 3, 1), d);
    EXPECT_EQ(frmVaelAna.txt2Theta.Text, "10.50000");
    EXPECT_EQ(LatticeWorld::Count(w.LogText(), "2θChanged!!"), 1U);
    EXPECT_NE(w.Told().find("also for row 2"), std::string::npos);
    w.TypeAndLeave(v.txt2Theta, "10.500");
    EXPECT_EQ(LatticeWorld::Count(w.LogText(), "2θChanged!!"), 1U);
}

TEST(PeakCal, AnAngleChangedElsewhereClearsTheMatchToo) {
    LatticeWorld w;
    w.AddCubic(GOLD);
    w.OpenView();
    w.Choose("Au");
    w.Execute();
    Type(frmVaelAna.txt2Theta, "11");
    PressEnter(frmVaelAna.txt2Theta);
    EXPECT_EQ(v.txt2Theta.Text, "11.00000");
    EXPECT_EQ(v.sprPeakInf2.Rows(), 0);
    EXPECT_EQ(LatticeWorld::Count(w.LogText(), "2θChanged!!"), 1U);
}

TEST(PeakCal, ADacGraphHasNoAngleToTypeOrToCorrect) {
    LatticeWorld w;
    w.Record().SourceType = SOURCE_DAC;
    store.DacOffset = 5.0;
    store.DacSlope = 0.005;
    w.AddPeakAt(0, 1500.0);
    w.OpenView();
    EXPECT_FALSE(v.txt2Theta.Usable());
    EXPECT_FALSE(v.cmd2ThetaCalib.Usable());
    const double angle = 5.0 + 0.005 * 1500.0;
    EXPECT_NEAR(Number(w.Cell(v.sprPeakInf, 3, 1)),
                settings.Lambda / 2 / std::sin(angle / 2 * std::numbers::pi / 180), 6e-6);
}

// --- rows, lists, marks -----------

TEST(PeakCal, AClickOnALineMovesTheCursorOfBothWindows) {
    LatticeWorld w;
    w.AddCubic(GOLD);
    w.OpenView();
    w.Choose("Au");
    w.Execute();
    for (Grid* grid : {&v.sprPeakInf, &v.sprPeakInf2}) {
        EXPECT_TRUE(Press(*grid, 1, 3));
        EXPECT_EQ(CursorCh(), std::lround(w.Peaks().Peak[2].Position)) << grid->Name;
        CsrX_Change(0);
    }
    Pick(v.tabLatticeFit, 1);
    EXPECT_FALSE(v.sprPeakInf.Visible);
    EXPECT_FALSE(v.sprPeakInf2.Visible);
    for (Grid* grid : {&v.sprPeakInf3, &v.sprPeakInf4}) {
        EXPECT_TRUE(Press(*grid, 1, 2));
        EXPECT_EQ(CursorCh(), std::lround(w.Peaks().Peak[1].Position)) << grid->Name;
        CsrX_Change(0);
    }
    Pick(v.tabLatticeFit, 0);
    EXPECT_TRUE(v.sprPeakInf.Visible);
    EXPECT_FALSE(v.sprPeakInf4.Visible);
}

TEST(PeakCal, ARowOfTheMainWindowIsFollowedAndItsClosingEndsTheView) {
    LatticeWorld w;
    w.AddCubic(GOLD);
    w.OpenView();
    Click(frmVaelAna.mnuSmooth);  // a row above
    EXPECT_EQ(v.GrpNo, 1);
    EXPECT_EQ(v.lblGraph.Caption, "2  gold.npd, 5 peaks");
    Change_cboGrphSel(0, 1);
    w.Desk.SaveAs(w.Folder.Path("kept.csv"));
    Click(frmVaelAna.mnuCloseGraph);
    EXPECT_FALSE(v.Visible);
    EXPECT_EQ(v.Slot, -1);
    EXPECT_EQ(w.Desk.SaveDialogs.back().Name, "gold_Result.csv");
    EXPECT_NE(FromCp932(BytesOf(w.Folder.Path("kept.csv"))).find("Log Ende"), std::string::npos);
}

TEST(PeakCal, PeaksThatAnotherCommandChangesEndTheMatch) {
    LatticeWorld w;
    w.AddCubic(GOLD);
    w.OpenView();
    w.Choose("Au");
    w.Execute();
    ASSERT_EQ(v.sprPeakInf2.Rows(), 5);
    Click(frmVaelAna.mnuPeakReport);
    frmPeakReport.sprPeakInf.Row = 5;
    Key(frmPeakReport, {.Key = KeyPress::Name::Delete});
    EXPECT_EQ(v.sprPeakInf.Rows(), 4);
    EXPECT_EQ(v.sprPeakInf2.Rows(), 0);
    EXPECT_EQ(v.lblGraph.Caption, "1  gold.npd, 4 peaks");
    w.Execute();
    EXPECT_EQ(v.sprPeakInf2.Rows(), 4);
}

TEST(PeakCal, OpenedForAnotherRowItEndsTheFirstLogAndBeginsAnother) {
    LatticeWorld w;
    w.Open({w.Spectrum("one.npd"), w.Spectrum("two.npd")});
    Change_cboGrphSel(0, 0);
    w.OpenView();
    EXPECT_TRUE(Click(frmVaelAna.cmdShowReport)) << "the same row: it stays";
    EXPECT_EQ(v.Slot, 0);
    Change_cboGrphSel(0, 1);
    w.Desk.CancelSave();
    w.OpenView();
    EXPECT_EQ(v.Slot, 1);
    EXPECT_NE(w.LogText().find("two.npdLatticeFitting Log Start"), std::string::npos);
    EXPECT_EQ(w.LogText().find("one.npd"), std::string::npos);
}

TEST(PeakCal, LeavingTheProgramEndsTheLogAndOffersIt) {
    LatticeWorld w;
    w.OpenView();
    w.Desk.SaveAs(w.Folder.Path("at the end.csv"));
    Click(frmVaelAna.mnuExit);
    EXPECT_TRUE(w.Desk.HasQuit);
    EXPECT_NE(BytesOf(w.Folder.Path("at the end.csv")).find("Log Ende"), std::string::npos);
}

TEST(PeakCal, MarksStandOnTheRowsInUseUntilTheyAreCleared) {
    LatticeWorld w;
    w.AddCubic(GOLD);
    w.OpenView();
    Click(v.cmdMI[0]);
    EXPECT_NE(w.Told().find("no reflection to mark"), std::string::npos);
    w.Choose("Au");
    w.Execute();
    Tick(v.sprPeakInf2, PeakCalView::USE, 2);
    const auto painted = frmVaelAna.picGraph[0].Painted;
    Pick(v.cmbColor, 3);
    Click(v.cmdMI[0]);
    EXPECT_GT(frmVaelAna.picGraph[0].Painted, painted);
    EXPECT_EQ(w.Told(), "4 reflections are marked on the plot.");
    const auto marks = ReflectionMarksOn(0);
    ASSERT_EQ(marks.size(), 4U);
    EXPECT_EQ(marks[0].Words.substr(0, 16), "Au( 1  1  1) d=2");
    EXPECT_EQ(marks[1].Words.substr(0, 12), "Au( 2  2  0)");
    EXPECT_EQ(marks[0].Ink, Rgb(255, 255, 0));
    Click(v.cmdMI[1]);
    EXPECT_TRUE(ReflectionMarksOn(0).empty());
}

TEST(PeakCal, MarksGoWithTheirGraph) {
    LatticeWorld w;
    w.AddCubic(GOLD);
    w.OpenView();
    w.Choose("Au");
    w.Execute();
    Click(v.cmdMI[0]);
    EXPECT_EQ(ReflectionMarksOn(0).size(), 5U);
    w.Desk.CancelSave();
    Click(v.cmdExit);
    EXPECT_EQ(ReflectionMarksOn(0).size(), 5U) << "they stay without the view";
    w.Open({w.Spectrum("other.npd")});
    EXPECT_TRUE(ReflectionMarksOn(0).empty());
}

TEST(PeakCal, ChangeWindowModeLetsItGoAndTakesItBack) {
    LatticeWorld w;
    w.OpenView();
    Click(v.cmdChangeWindowMode);
    EXPECT_FALSE(v.OnTop);
    EXPECT_EQ(v.WindowMode, 0);
    Click(v.cmdChangeWindowMode);
    EXPECT_TRUE(v.OnTop);
}

TEST(PeakCal, EnterExecutesAndEscapeExits) {
    LatticeWorld w;
    w.AddCubic(GOLD);
    w.OpenView();
    w.Choose("Au");
    Key(v, {.Key = KeyPress::Name::Enter});
    EXPECT_NE(v.txtLatticeLength[0].Text, "");
    w.Desk.CancelSave();
    Key(v, {.Key = KeyPress::Name::Escape});
    EXPECT_FALSE(v.Visible);
}

TEST(PeakCal, TheEditorOpensTheCrystalFile) {
    LatticeWorld w;
    Click(frmVaelAna.mnuEditCrystalFile);
    ASSERT_EQ(w.Desk.OpenedTexts.size(), 1U);
    EXPECT_EQ(w.Desk.OpenedTexts[0], w.Folder.Path("crystal.dat"));
    w.Desk.EditorStarts = false;
    w.Desk.ExpectQuestion("crystal file open error");
    Click(frmVaelAna.mnuEditCrystalFile);
}

TEST(PeakCal, Command1WritesTheTableOfSimulatedPressures) {
    LatticeWorld w;
    w.OpenView();
    Click(v.Command1);
    const std::string table = BytesOf(w.Folder.Path("sim298_1273k2.dat"));
    EXPECT_EQ(LatticeWorld::Count(table, "\r\n"), 192U);
    EXPECT_EQ(table.substr(0, 48), "v/v0, v0/v, p(298k), p(473k), p(873k), p(1273k)\r");
}
