// The energy calibration by the user's hand: table, curve, and the ways out.
#include "core/fault.h"
#include "core/operations.h"
#include "core/text.h"
#include "core/wholefile.h"
#include "support/calibworld.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace vael;
using namespace vael::test::calib;

namespace {

using C = DialogCalibCView;

}  // namespace

// --- opening and locking -----------

TEST(Calibration, OpensWithItsWords) {
    Calibrated w;
    EXPECT_TRUE(v.Visible);
    EXPECT_FALSE(v.Modal) << "the main window is alive beside it";
    EXPECT_EQ(v.Caption, "Energy Constans Value");
    EXPECT_EQ(v.cmdFileOpen.Caption, "File Open");
    EXPECT_EQ(v.mnuFileOpen.Caption, "File Open");
    EXPECT_EQ(v.cmdDelFile.Caption, "File Delete");
    EXPECT_EQ(v.mnuFileCancel.Caption, "File Cancel");
    EXPECT_EQ(v.cmdSmothBk.Caption, "Smoth&BkRemove");
    EXPECT_EQ(v.cmdAuto[0].Caption, "Split Fit");
    EXPECT_EQ(v.cmdAuto[1].Caption, "MonoFit");
    EXPECT_EQ(v.cmdFitDel.Caption, "Del Fit");
    EXPECT_EQ(v.cmdCsrSet.Caption, "Input Fit Center Value");
    EXPECT_EQ(v.mnuCsrVal.Caption, "Cursor Value");
    EXPECT_EQ(v.cmdEnergyInp.Caption, "Element Table");
    EXPECT_EQ(v.mnuElmTable.Caption, "Element Table");
    EXPECT_EQ(v.cmdDelTable.Caption, "Delete Current Line");
    EXPECT_EQ(v.mnuDelPoint.Caption, "Delete Point");
    EXPECT_EQ(v.cmdCalEng.Caption, "Calculate");
    EXPECT_EQ(v.mnuCalc.Caption, "Calculate");
    EXPECT_EQ(v.cmdCurve.Caption, "Show");
    EXPECT_EQ(v.mnuShow.Caption, "Show Curve");
    EXPECT_EQ(v.cmdCalbOK.Caption, "Update");
    EXPECT_EQ(v.mnuUpdate.Caption, "Exit(Update)");
    EXPECT_EQ(v.cmdCalbCan.Caption, "Exit");
    EXPECT_EQ(v.mnuCancel.Caption, "Exit(Cancel)");
    EXPECT_EQ(v.optCnst[0].Caption, "E=A+Bx+Cx^2");
    EXPECT_EQ(v.optCnst[1].Caption, "E=A+Bx");
    EXPECT_EQ(w.Cell(C::CHANNEL, 0), "Ch");
    EXPECT_EQ(w.Cell(C::ENERGY, 0), "keV");
}

TEST(Calibration, BothWaysOfTheMainViewLeadToIt) {
    Calibrated w(false);
    EXPECT_EQ(frmVaelAna.mnuCons.Caption, "&Caliblate...");
    EXPECT_TRUE(Click(frmVaelAna.cmdEnergy[0]));
    EXPECT_TRUE(v.Visible);
    EXPECT_TRUE(Click(v.cmdCalbCan));
    EXPECT_FALSE(v.Visible);
    EXPECT_TRUE(Click(frmVaelAna.mnuCons));
    EXPECT_TRUE(v.Visible);
}

TEST(Calibration, LocksButtonsOfTheMainViewWhileItIsOpen) {
    Calibrated w(false);
    w.Open({w.Source("a.npd")});
    Click(frmVaelAna.mnuCons);
    const auto locked = [] {
        EXPECT_FALSE(frmVaelAna.cmdFiles[0].Enabled);
        EXPECT_FALSE(frmVaelAna.cmdFiles[1].Enabled);
        EXPECT_TRUE(frmVaelAna.cmdFiles[3].Enabled);
        for (const Button& button : frmVaelAna.cmdEnergy) EXPECT_FALSE(button.Enabled);
        for (const Button& button : frmVaelAna.cmdOperation) EXPECT_FALSE(button.Enabled);
    };
    locked();
    w.Open({w.Source("b.npd")});  // the menu works on, and leaves the buttons as they are
    EXPECT_EQ(store.GraphTotal, 1);
    locked();
    Click(v.cmdCalbCan);
    EXPECT_TRUE(frmVaelAna.cmdFiles[0].Enabled);
    EXPECT_TRUE(frmVaelAna.cmdFiles[1].Enabled);
    EXPECT_TRUE(frmVaelAna.cmdEnergy[0].Usable());
    EXPECT_TRUE(frmVaelAna.cmdOperation[0].Enabled) << "the start state again";
    EXPECT_FALSE(frmVaelAna.cmdOperation[1].Enabled);
    EXPECT_TRUE(frmVaelAna.cmdOperation[12].Enabled);
}

TEST(Calibration, StartAndEndAreEachOthersOpposite) {
    World w;
    frmVaelAna.cmdOperation[7].Enabled = false;
    EneCalStart();
    EXPECT_FALSE(frmVaelAna.cmdOperation[3].Enabled);
    EneCalEnd();
    for (const Button& button : frmVaelAna.cmdOperation) EXPECT_TRUE(button.Enabled);
}

TEST(Calibration, ShowsTheConstantsInForceAndTheirKindOfCurve) {
    Calibrated w(false);
    store.DefaultParam.EgcCoef = {0.1, 0.03, 2e-9};
    Click(frmVaelAna.mnuCons);
    EXPECT_EQ(w.Shown(), (CalibConstants{0.1, 0.03, 2e-9}));
    EXPECT_TRUE(v.optCnst[0].Value);
    Click(v.cmdCalbCan);
    store.DefaultParam.EgcCoef[2] = 0.0;
    Click(frmVaelAna.mnuCons);
    EXPECT_TRUE(v.optCnst[1].Value);
    EXPECT_FALSE(v.optCnst[0].Value);
}

// --- the table -----------

TEST(CalibrationTable, TakesTheCentreAtTheCursorElseTheCursor) {
    Calibrated w;
    w.OpenFiles({w.Source("Ag.npd")});
    w.AddPeakAt(DataNo(), 600.25);
    CsrX_Change(602);
    Click(v.cmdCsrSet);
    EXPECT_EQ(w.Cell(C::CHANNEL, 1), "601.2500");
    CsrX_Change(900);
    Click(v.mnuCsrVal);
    EXPECT_EQ(w.Cell(C::CHANNEL, 2), "901");
    EXPECT_EQ(v.vaSpread1.Row, 3);
    EXPECT_EQ(w.Status(), "Cursor at channel 901 in row 2.");
}

TEST(CalibrationTable, AsksBeforeItWritesOverAChannel) {
    Calibrated w;
    w.Row(1, "500", "15");
    CsrX_Change(600);
    v.vaSpread1.Row = 1;
    w.Desk.ExpectQuestion("Over write?", Answer::No);
    Click(v.cmdCsrSet);
    EXPECT_EQ(w.Cell(C::CHANNEL, 1), "500");
    EXPECT_EQ(v.vaSpread1.Row, 1);
    w.Desk.ExpectQuestion("Over write?", Answer::Yes);
    Click(v.cmdCsrSet);
    EXPECT_EQ(w.Cell(C::CHANNEL, 1), "601");
    EXPECT_EQ(w.Cell(C::ENERGY, 1), "15");
    EXPECT_EQ(v.vaSpread1.Row, 2);
    EXPECT_EQ(w.Desk.Asked.back().Choice, Question::Buttons::YesNo);
}

TEST(CalibrationTable, AnElementsEnergyGoesIntoTheCurrentRowAndOn) {
    Calibrated w;
    w.Row(1, "700", "");
    v.vaSpread1.Row = 1;
    EntEnargy(22.16292);
    EXPECT_EQ(w.Cell(C::ENERGY, 1), "22.16292");
    EXPECT_EQ(v.vaSpread1.Row, 2);
    EntEnargy(74.9694);
    EXPECT_EQ(w.Cell(C::ENERGY, 2), "74.9694");
    v.vaSpread1.Row = 2;
    w.Desk.ExpectQuestion("Over write?", Answer::No);
    EntEnargy(1.0);
    EXPECT_EQ(w.Cell(C::ENERGY, 2), "74.9694");
    w.ExpectReport();
    Click(v.cmdCalbCan);
    EntEnargy(5.0);
    Click(frmVaelAna.mnuCons);
    EXPECT_EQ(w.Cell(C::ENERGY, 3), "") << "nothing is entered while it is closed";
}

TEST(CalibrationTable, WhatIsNoNumberSpringsBack) {
    Calibrated w;
    w.Row(1, "500", "15");
    Edit(v.vaSpread1, C::CHANNEL, 1, "abc");
    EXPECT_EQ(w.Cell(C::CHANNEL, 1), "500");
    EXPECT_EQ(w.Status(), "\"abc\" is no number. Row 1 stays as it was.");
    Edit(v.vaSpread1, C::ENERGY, 1, "-1");
    EXPECT_EQ(w.Cell(C::ENERGY, 1), "15");
    Edit(v.vaSpread1, C::CHANNEL, 1, "8193");
    EXPECT_EQ(w.Status(), "Channels are 1 to 8192. Row 1 stays as it was.");
    Edit(v.vaSpread1, C::CHANNEL, 1, "0");
    EXPECT_EQ(w.Cell(C::CHANNEL, 1), "500");
    Edit(v.vaSpread1, C::CHANNEL, 1, "  501.5  ");
    EXPECT_EQ(w.Cell(C::CHANNEL, 1), "501.5");
    Edit(v.vaSpread1, C::CHANNEL, 1, "   ");
    EXPECT_EQ(w.Cell(C::CHANNEL, 1), "") << "blanks are an empty cell";
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(CalibrationTable, ATypedEnergyLeadsToTheNextRow) {
    Calibrated w;
    Edit(v.vaSpread1, C::CHANNEL, 1, "500");
    EXPECT_EQ(v.vaSpread1.Row, 1);
    Edit(v.vaSpread1, C::CHANNEL, 2, "600");
    Edit(v.vaSpread1, C::ENERGY, 1, "15");
    EXPECT_EQ(v.vaSpread1.Row, 2);
    EXPECT_EQ(v.vaSpread1.Col, C::ENERGY) << "a channel waits there";
    Edit(v.vaSpread1, C::ENERGY, 2, "18");
    EXPECT_EQ(v.vaSpread1.Row, 3);
    EXPECT_EQ(v.vaSpread1.Col, C::CHANNEL);
}

TEST(CalibrationTable, TellsARepeatedChannel) {
    Calibrated w;
    w.Row(1, "500", "15");
    Edit(v.vaSpread1, C::CHANNEL, 3, "500.0");
    EXPECT_EQ(w.Cell(C::CHANNEL, 3), "500.0");
    EXPECT_EQ(w.Status(), "500.0 in row 3, the same channel as in row 1.");
}

TEST(CalibrationTable, DeletingALineMovesLaterOnesUp) {
    Calibrated w;
    w.Row(1, "100", "1");
    w.Row(2, "200", "2");
    w.Row(3, "300", "3");
    v.vaSpread1.Row = 2;
    Click(v.cmdDelTable);
    EXPECT_EQ(w.Cell(C::CHANNEL, 2), "300");
    EXPECT_EQ(w.Cell(C::ENERGY, 2), "3");
    EXPECT_EQ(w.Cell(C::CHANNEL, 3), "");
    v.vaSpread1.Row = 1;
    Click(v.mnuDelPoint);
    EXPECT_EQ(w.Cell(C::CHANNEL, 1), "300");
    v.vaSpread1.Row = 9;
    Click(v.mnuDelPoint);
    EXPECT_EQ(w.Status(), "There is nothing in this line.");
}

TEST(CalibrationTable, GrowsAsFarAsItIsNeeded) {
    Calibrated w;
    v.vaSpread1.Row = 1;
    for (int n = 1; n <= 30; ++n) EntEnargy(n);
    EXPECT_EQ(w.Cell(C::ENERGY, 30), "30");
    EXPECT_GE(v.vaSpread1.Rows(), 31);
}

// --- "Calculate" -----------

TEST(CalibrationCurve, ALineGoesThroughTheTable) {
    Calibrated w;
    w.Row(1, "101", "3");
    w.Row(3, "1101", "33");
    Edit(v.vaSpread1, C::CHANNEL, 5, "2000");  // a channel alone is skipped
    Edit(v.vaSpread1, C::ENERGY, 6, "99");     // and so is an energy alone
    v.ImConst[2].Value = 5.0;
    Click(v.optCnst[1]);
    Click(v.cmdCalEng);
    EXPECT_NEAR(CalibEnergy(w.Shown(), 101.0), 3.0, 1e-12);
    EXPECT_NEAR(CalibEnergy(w.Shown(), 1101.0), 33.0, 1e-12);
    EXPECT_EQ(w.Shown()[2], 0.0);
    EXPECT_EQ(v.lblFit.Caption, "n = 2, rms 0.0 eV; 2 rows incomplete");
}

TEST(CalibrationCurve, AParabolaStandsOnTheChannelLessOne) {
    Calibrated w;
    w.Row(1, "101", "3");
    w.Row(2, "1101", "33");
    w.Row(3, "2101", "64");
    Click(v.optCnst[0]);
    Click(v.mnuCalc);
    EXPECT_NEAR(CalibEnergy(w.Shown(), 100.0), 3.0, 1e-9);
    EXPECT_NEAR(CalibEnergy(w.Shown(), 1100.0), 33.0, 1e-9);
    EXPECT_NEAR(CalibEnergy(w.Shown(), 2100.0), 64.0, 1e-9);
}

TEST(CalibrationCurve, TellsAMistypedRow) {
    Calibrated w;
    // E = 0.03 Ch, and row 4 typed 9 for 6: the line's least squares by hand below.
    w.Row(1, "1000", "30");
    w.Row(2, "2000", "60");
    w.Row(3, "3000", "90");
    w.Row(4, "4000", "150");
    Click(v.cmdCalEng);
    // Offsets 0, 0, 0, 30 from the true line: slope 0.009, mean 7.5, so residuals 6, -3, -12, 9.
    EXPECT_EQ(v.lblFit.Caption.substr(0, v.lblFit.Caption.find(", worst")),
              "n = 4, rms 8215.8 eV");  // sqrt((36 + 9 + 144 + 81) / 4) keV
    EXPECT_NE(v.lblFit.Caption.find("worst row 3: -12000.0 eV"), std::string::npos);
    Edit(v.vaSpread1, C::ENERGY, 4, "120");
    EXPECT_EQ(v.lblFit.Caption, "Changed since \"Calculate\".");
    Click(v.cmdCalEng);
    EXPECT_EQ(v.lblFit.Caption, "n = 4, rms 0.0 eV");
    Click(v.optCnst[0]);
    EXPECT_EQ(v.lblFit.Caption, "Changed since \"Calculate\".");
}

TEST(CalibrationCurve, AnEmptyTableDoesNothing) {
    Calibrated w;
    DispKeisu({1.0, 2.0, 3.0});
    Edit(v.vaSpread1, C::CHANNEL, 1, "100");
    Click(v.cmdCalEng);
    EXPECT_EQ(w.Shown(), (CalibConstants{1.0, 2.0, 3.0}));
    EXPECT_EQ(w.Status(), "There is no row with a channel and an energy.");
    EXPECT_EQ(v.lblFit.Caption, "");
}

TEST(CalibrationCurve, WhatFixesNoCurveIsToldAndCannotBeUpdated) {
    Calibrated w(false);
    store.DefaultParam.EgcCoef = {0.05, 0.03, 1e-9};
    Click(frmVaelAna.mnuCons);
    w.Row(1, "100", "3");
    Click(v.optCnst[1]);
    Click(v.cmdCalEng);
    EXPECT_EQ(w.Shown(), CalibConstants{}) << "one row: a line of nothing";
    EXPECT_EQ(v.lblFit.Caption, "n = 1: no line; it needs two different channels");
    w.Desk.ExpectQuestion("\"Calculate\" found no curve: the constants in force stay.");
    Click(v.cmdCalbOK);
    EXPECT_TRUE(v.Visible);
    EXPECT_EQ(store.DefaultParam.EgcCoef, (CalibConstants{0.05, 0.03, 1e-9}));

    w.Row(2, "100", "3");
    w.Row(3, "100", "3");
    DispKeisu({0.05, 0.03, 1e-9});
    Click(v.optCnst[0]);
    Click(v.cmdCalEng);
    EXPECT_EQ(w.Shown(), (CalibConstants{0.05, 0.03, 0.0})) << "A and B stay, C shows 0";
    EXPECT_EQ(v.lblFit.Caption, "n = 3: no parabola; it needs three different channels");
    w.Desk.ExpectQuestion("\"Calculate\" found no curve: the constants in force stay.");
    Click(v.mnuUpdate);
    EXPECT_EQ(store.DefaultParam.EgcCoef[2], 1e-9);
    w.ExpectReport();
    Click(v.cmdCalbCan);
}

TEST(CalibrationCurve, ShowGivesTheCurveItsPointsAndItsLabel) {
    Calibrated w;
    w.Row(1, "101", "3");
    w.Row(2, "1101", "33");
    Click(v.optCnst[1]);
    Click(v.cmdCalEng);
    Click(v.cmdCurve);
    EXPECT_TRUE(frmCalibCurv.Visible);
    EXPECT_EQ(frmCalibCurv.txtMemo.Text, "Energy(keV) = (-3.e-002) + (3.e-002)*Ch");
    EXPECT_EQ(frmCalibCurv.Shown.X, (std::vector<double>{101.0, 1101.0}));
    EXPECT_EQ(frmCalibCurv.Shown.MaxCh, 4096.0);
    EXPECT_NEAR(frmCalibCurv.Shown.MaxE, 0.03 * 4095 - 0.03, 1e-9);
    w.Row(3, "2101", "64");
    Click(v.optCnst[0]);
    Click(v.cmdCalEng);
    Click(v.mnuShow);
    EXPECT_EQ(frmCalibCurv.Shown.X, (std::vector<double>{100.0, 1100.0, 2100.0}));
    EXPECT_NE(frmCalibCurv.txtMemo.Text.find(")*Ch^2"), std::string::npos);
    w.ExpectReport();
    Click(v.cmdCalbCan);
    EXPECT_FALSE(frmCalibCurv.Visible) << "it goes with the calibration";
}

// --- the ways out -----------

TEST(CalibrationEnd, UpdateTakesTheConstantsOverAndEmptiesTheRows) {
    Calibrated w;
    w.OpenFiles({w.Source("Ag.npd")});
    Click(frmVaelAna.optEGC[0]);
    w.Row(1, "101", "3.08");
    w.Row(2, "1101", "33.08");
    Click(v.cmdCalEng);
    w.ExpectReport();
    settings.BackTimes = 7;
    Click(v.cmdCalbOK);
    EXPECT_FALSE(v.Visible);
    EXPECT_NEAR(store.DefaultParam.EgcCoef[0], 0.05, 1e-12);
    EXPECT_NEAR(store.DefaultParam.EgcCoef[1], 0.03, 1e-15);
    EXPECT_EQ(frmVaelAna.lblEGC.Caption, "0.050000Ch^2+0.030000Ch+0.000000");
    EXPECT_EQ(store.GraphTotal, 0);
    EXPECT_EQ(store.UserDataFolder, "\\UserData\\");
    EXPECT_EQ(std::filesystem::current_path(),
              std::filesystem::canonical(w.Folder.Path("UserData")));
    EXPECT_EQ(w.Status(), "The calibration was updated.");
    const std::string told = "Ag.npd,  " + w.Folder.Path() + "/\r\n \r\nE = A + Bx\r\n \r\n";
    EXPECT_EQ(w.Report(), told + NumberText(store.DefaultParam.EgcCoef[0]) + "\r\n" +
                              NumberText(store.DefaultParam.EgcCoef[1]) + "\r\n");
    ParamRecord written{};
    settings.BackTimes = 0;
    ASSERT_EQ(ReadSystemPara(w.Folder.Path("syspara_a.xpr"), written), TRUE_WORD);
    EXPECT_NEAR(written.EgcCoef[1], 0.03, 1e-15);
    EXPECT_EQ(settings.BackTimes, 7);
}

TEST(CalibrationEnd, ExitLeavesTheConstantsAndWhatWasSetInThisRun) {
    Calibrated w(false);
    store.DefaultParam.EgcCoef = {1.0, 2.0, 0.0};
    ASSERT_EQ(WriteSystemPara(w.Folder.Path("syspara_a.xpr"), store.DefaultParam), TRUE_WORD);
    const std::string before = BytesOf(w.Folder.Path("syspara_a.xpr"));
    store.DefaultParam.EgcCoef = {0.5, 0.04, 0.0};  // by the parameter sheet, in no file yet
    settings.BackTimes = 9;
    Click(frmVaelAna.mnuCons);
    w.OpenFiles({w.Source("Ag.npd")});
    w.Row(1, "101", "3");
    w.Row(2, "1101", "33");
    Click(v.cmdCalEng);
    w.ExpectReport();
    Click(v.cmdCalbCan);
    EXPECT_EQ(store.DefaultParam.EgcCoef, (CalibConstants{0.5, 0.04, 0.0}));
    EXPECT_EQ(settings.BackTimes, 9);
    EXPECT_EQ(BytesOf(w.Folder.Path("syspara_a.xpr")), before);
    EXPECT_EQ(store.GraphTotal, 0);
    Click(frmVaelAna.mnuCons);
    EXPECT_EQ(w.Shown(), (CalibConstants{0.5, 0.04, 0.0})) << "the boxes are as they were";
    EXPECT_EQ(w.Cell(C::ENERGY, 2), "33") << "and the table was not lost";
    EXPECT_EQ(v.sprdFileName.Rows(), 1);
}

TEST(CalibrationEnd, AnEmptyTableWritesNoReport) {
    Calibrated w;
    Edit(v.vaSpread1, C::CHANNEL, 1, "100");  // half a row is no row
    Click(v.cmdCalbOK);
    EXPECT_FALSE(v.Visible);
    EXPECT_EQ(w.Report(), "");
    EXPECT_TRUE(w.Desk.Asked.empty());
}

TEST(CalibrationEnd, AReportReplacesAnEarlierOne) {
    Calibrated w;
    w.Folder.Write(CALIB_REPORT, std::string(5000, 'x'));
    w.Row(1, "100", "3");
    w.ExpectReport();
    Close(v);
    EXPECT_FALSE(v.Visible) << "the close box is \"Exit\"";
    EXPECT_EQ(w.Report(), " \r\nE = A + Bx\r\n \r\n0\r\n0\r\n");
}

TEST(CalibrationEnd, AProgramFolderThatTakesNoFileKeepsTheConstantsInForce) {
    Calibrated w(false);
    store.DefaultParam.EgcCoef = {0.5, 0.04, 0.0};
    Click(frmVaelAna.mnuCons);
    w.Row(1, "101", "3");
    w.Row(2, "1101", "33");
    Click(v.cmdCalEng);
    // A folder in the file's place cannot be replaced by anybody.
    std::filesystem::create_directories(w.Folder.Path("syspara_a.xpr/in the way"));
    w.Desk.ExpectQuestion(
        "syspara_a.xpr cannot be written in the program's folder: the constants in force stay.");
    Click(v.cmdCalbOK);
    EXPECT_TRUE(v.Visible);
    EXPECT_FALSE(frmVaelAna.cmdFiles[0].Enabled) << "the calibration goes on";
    EXPECT_EQ(store.DefaultParam.EgcCoef, (CalibConstants{0.5, 0.04, 0.0}));
    EXPECT_EQ(w.Cell(C::ENERGY, 2), "33");
    EXPECT_EQ(w.Report(), "");
    std::filesystem::remove_all(w.Folder.Path("syspara_a.xpr"));

    std::filesystem::create_directories(w.Folder.Path("Calib_Data.txt/in the way"));
    const std::size_t asked = w.Desk.Asked.size();
    w.Desk.ExpectQuestion("Calib_Data.txt was not written. " + [&] {
        try {
            ReplaceFile(w.Folder.Path(CALIB_REPORT), "");
        } catch (const Fault& trouble) {
            return std::string(trouble.what());
        }
        return std::string();
    }());
    Click(v.cmdCalbOK);
    EXPECT_EQ(w.Desk.Asked.size(), asked + 1);
    EXPECT_FALSE(v.Visible);
    EXPECT_NEAR(store.DefaultParam.EgcCoef[1], 0.03, 1e-12) << "the constants are in their file";
}

TEST(CalibrationEnd, AUserFolderThatCannotBeMadeLeavesTheCurrentOne) {
    Calibrated w;
    w.Folder.Write("UserData", "a file");
    const auto here = std::filesystem::current_path();
    Click(v.cmdCalbCan);
    EXPECT_EQ(std::filesystem::current_path(), here);
    EXPECT_EQ(store.DataFolder, here.string() + "/");
}

TEST(CalibrationEnd, LeavingTheProgramAsksForATypedTable) {
    Calibrated w;
    w.Row(1, "100", "3");
    w.Desk.ExpectQuestion("The table of the energy calibration is lost. Do you leave?", Answer::No);
    Close(frmVaelAna);
    EXPECT_FALSE(w.Desk.HasQuit);
    EXPECT_TRUE(v.Visible);
    w.Desk.ExpectQuestion("The table of the energy calibration is lost. Do you leave?",
                          Answer::Yes);
    Click(frmVaelAna.mnuExit);
    EXPECT_TRUE(w.Desk.HasQuit);
}

TEST(CalibrationEnd, AnEmptyCalibrationDoesNotAsk) {
    Calibrated w;
    Click(frmVaelAna.mnuExit);
    EXPECT_TRUE(w.Desk.HasQuit);
}

// --- the whole road -----------

TEST(CalibrationRoad, KnownLinesGiveTheirCalibrationBack) {
    Calibrated w;
    w.OpenFiles({w.Source("source.npd")});
    Click(v.cmdSmothBk);
    w.FitLines(KNOWN, 30);
    Click(v.optCnst[1]);
    Click(v.cmdCalEng);
    w.ExpectReport();
    Click(v.cmdCalbOK);
    EXPECT_NEAR(store.DefaultParam.EgcCoef[0], 0.05, 0.002);
    EXPECT_NEAR(store.DefaultParam.EgcCoef[1], 0.03, 1e-6);
}

/// Ag, Pb, Cd-109 and Co-57 of one detector; energies and channels as they are told with the data,
/// the channels by one Gaussian on a straight background each.
TEST(CalibrationRoad, MeasuredSourcesCalibrateTheirDetector) {
    const std::string path = Measured("ECal16BM.npd");
    const std::string gold = Measured("AuWire.npd");
    if (path.empty() || gold.empty()) GTEST_SKIP() << "no measured spectra here";
    const std::vector<KnownLine> lines{{22.104, 696.41, true}, {24.942, 785.53},
                                       {72.794, 2298.58},      {74.956, 2367.14},
                                       {88.035, 2780.45},      {122.061, 3856.55}};
    Calibrated w;
    w.OpenFiles({path});
    Click(v.cmdSmothBk);
    w.FitLines(lines, 22);
    Click(v.optCnst[1]);
    Click(v.cmdCalEng);
    const CalibConstants found = w.Shown();
    EXPECT_NEAR(found[1], 0.03162861, 0.03162861 / 5000.0);
    for (const KnownLine& line : lines)
        EXPECT_NEAR(CalibEnergy(found, line.Channel + 1.0), line.Energy, 0.015) << line.Energy;
    w.ExpectReport();
    Click(v.cmdCalbOK);

    // The calibration found so reads the reflections of gold wire: a = 4.0786 at its own angle.
    w.Open({gold});
    Click(frmVaelAna.optEGC[0]);
    store.DefaultParam.TwoTheta = Item(store.PropertyRecords, DataNo()).Param.TwoTheta;
    const std::vector<std::pair<double, int>> reflections{
        {733.05, 4},   {1037.57, 8},  {1217.15, 11}, {1271.08, 12}, {1468.26, 16},
        {1600.27, 19}, {1641.85, 20}, {1798.64, 24}, {1908.25, 27}, {2323.25, 40}};
    double mean = 0.0;
    for (const auto& [channel, squares] : reflections) {
        CsrX_Change(static_cast<int>(std::lround(channel)));
        const double d = frmVaelAna.inumCursorDisp[2].Value;  // of the whole channel
        const double exact = d * (std::round(channel) + 1.0 + found[0] / found[1]) /
                             (channel + 1.0 + found[0] / found[1]);
        mean += exact * std::sqrt(squares) / static_cast<double>(reflections.size());
    }
    EXPECT_NEAR(mean, 4.0786, 0.002);
}
