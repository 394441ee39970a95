// The lattice view held against its description once more: words, public operations, the scales
// that no other test reaches through the view, the simulation table, what outlives a calculation.
#include "core/cursors.h"
#include "core/fault.h"
#include "lattice/latticecalccommands.h"
#include "lattice/latticelistcommands.h"
#include "lattice/refine8.h"
#include "lattice/reflectionmarkcommands.h"
#include "support/latticeworld.h"

#include <gtest/gtest.h>

#include <functional>

using namespace vael;
using test::CrystalFile;
using test::GOLD;
using test::LatticeWorld;

namespace {

PeakCalView& v = frmPeakCal;

/// A crystal of fifteen cubic reflections, as the file has it.
std::string Cubic(const std::string& name, double a) {
    std::string text = "\"" + name + "\",0";
    for (int i = 0; i < 3; ++i) text += "," + std::to_string(a);
    text += ",90,90,90\n";
    for (const auto& hkl : test::GOLD_LINES)
        text += std::to_string(hkl[0]) + "," + std::to_string(hkl[1]) + "," +
                std::to_string(hkl[2]) + "\n";
    return text + "0,0,0";
}

/// A marker of that key whose lines lie where a cell of 3.85 angstrom has them, with a scatter; the
/// file's own cell is 3.9.
struct Marker : LatticeWorld {
    explicit Marker(const std::string& key)
        : LatticeWorld(CrystalFile({Cubic("Fe", 2.9), Cubic(key + " of a test", 3.9)})) {
        AddCubic(3.85, 8, 2e-4);
        OpenView();
        Choose(key);
        TypeAndLeave(v.txtPickupRange, "0.04");
    }
    /// The cell of the rows in use by the second refinement.
    static testing8::Refined Second() {
        std::vector<testing8::Row> rows;
        for (const ReflectionMatch& row : latticeState.FitData.Match)
            if (row.Matched == TRUE_WORD && row.Excluded == FALSE_WORD)
                rows.push_back({row.H, row.K, row.L, row.DObs});
        EXPECT_EQ(rows.size(), 8U);
        return testing8::Refine(SYSTEM_CUB, rows);
    }
    /// Asserts pressure, one-sided error and error bars against a scale written out by the test,
    /// which takes the edge.
    void Expect(const std::function<double(double)>& scale, double ofError,
                const testing8::Refined& fit) {
        const double a = fit.Cell[0];
        const double da = 0.5 * fit.ParamErr[0] * a * a * a;
        EXPECT_NEAR(Value(v.txtPressure), scale(a), 2e-3);
        EXPECT_NEAR(Error(v.txtPressure), ofError, 0.02 * ofError);
        EXPECT_GT(Error(v.txtPressure), 0.0);
        EXPECT_GT(Number(v.txtErrorBar[1].Text), Value(v.txtPressure));
        EXPECT_NEAR(Number(v.txtErrorBar[1].Text), scale(a - da), 4e-3);
        EXPECT_NEAR(Number(v.txtErrorBar[2].Text), scale(a + da), 4e-3);
    }
};

}  // namespace

// --- words and operations -----------

TEST(LatticeReview, EveryWordOfTheViewStandsToTheLetter) {
    LatticeWorld w;
    w.OpenView();
    EXPECT_EQ(v.fraCrystalData.Caption, "Crystal Data");
    EXPECT_EQ(v.fraInitialValue.Caption, "Initial Value");
    EXPECT_EQ(v.lblInitial.Caption, "Initial");
    EXPECT_EQ(v.lblCalculated.Caption, "Calculated");
    EXPECT_EQ(v.fraResults.Caption, "Results");
    EXPECT_EQ(v.fra2Theta.Caption, "2Theta Calibration for Cubic Type");
    EXPECT_EQ(v.lblVolUnit.Caption, "A");
    EXPECT_EQ(v.lblPressureUnit.Caption, "GPa");
    EXPECT_EQ(v.lblPickupRange.Caption, "Pickup range+-");
    EXPECT_EQ(v.lblPickupUnit.Caption, "(dA)");
    EXPECT_EQ(v.lbl2Theta.Caption, "2Theta");
    EXPECT_EQ(v.lbl2ThetaUnit.Caption, "deg");
    EXPECT_EQ(v.lblTemp.Caption, "Temperature");
    EXPECT_EQ(v.lblTempUnit.Caption, "(C)");
    EXPECT_EQ(v.lblExpected2theta.Caption, "Expected 2Theta");
    EXPECT_EQ(v.lblErrorBar[0].Caption, "Error Bar");
    EXPECT_EQ(v.lblErrorBar[1].Caption, "＋");
    EXPECT_EQ(v.lblErrorBar[2].Caption, "－");
    EXPECT_EQ(v.cmdMI[0].Caption, "add MI");
    EXPECT_EQ(v.cmdMI[1].Caption, "Clear MI");
    EXPECT_EQ(v.cmdCal2.Caption, "Calculate");
    EXPECT_EQ(v.cmdReCal.Caption, "ReCal");
    EXPECT_EQ(v.cmdPrint.Caption, "Print");
    EXPECT_EQ(v.cmdDataSave.Caption, "Data Save");
    EXPECT_EQ(v.cmdChangeWindowMode.Caption, "change window mode");
    EXPECT_EQ(v.cmdExit.Caption, "Exit");
    EXPECT_EQ(v.Command1.Caption, "Command1");
    EXPECT_EQ(v.cmbLatticeType.Items,
              (std::vector<std::string>{"Cubic", "Tetragonal", "Hexagonal", "Orthorhombic",
                                        "Monoclinic", "Triclinic"}));
}

TEST(LatticeReview, TheUnitBesideTheTemperatureStandsWhileItIsTrue) {
    LatticeWorld w;
    w.OpenView();
    EXPECT_TRUE(v.lblTempUnit.Visible);
    Pick(v.cmbUnit, 1);
    EXPECT_FALSE(v.lblTempUnit.Visible) << "(C) beside Ｋ would be a lie";
    Pick(v.cmbUnit, 0);
    EXPECT_TRUE(v.lblTempUnit.Visible);
}

TEST(LatticeReview, ItsOperationsSetItUpAndTellItsWindowAndRow) {
    LatticeWorld w;
    w.AddCubic(GOLD, 3);
    EXPECT_EQ(v.GetGrpNo(), -1);
    w.Open({w.Spectrum("one.npd"), w.Spectrum("two.npd")});
    Tick(frmVaelAna.chkGrp[11]);  // two.npd goes to the lower window
    ChangeActiveWin(1);
    Pick(frmVaelAna.cboGrphSel[1], 1);
    RunEvent(frmVaelAna, InitForm);
    EXPECT_TRUE(v.Visible);
    EXPECT_EQ(v.GetWinNo(), 1);
    EXPECT_EQ(v.GetGrpNo(), 1);
    EXPECT_EQ(v.lblGraph.Caption.substr(0, 10), "2  two.npd");
    EXPECT_EQ(v.sprPeakInf.Rows(), 0);
    w.AddD(2.0, v.Slot);
    CopyPeakInfo();
    EXPECT_EQ(v.sprPeakInf.Rows(), 1);
    DataSave();
    EXPECT_TRUE(std::filesystem::exists(w.Folder.Path("CORVINE/LatticeFit.csv")));
}

TEST(LatticeReview, EachSystemHasItsNameInTheLog) {
    LatticeReport report;
    report.HasBoxes = true;
    report.Mode = MODE_SAMPLE;
    const std::pair<const char*, const char*> names[] = {
        {"CUB", "CUBIC"},        {"TET", "TETRAGONAL"}, {"HEX", "HEXAGONAL"},
        {"ORT", "ORTHORHOMBIC"}, {"MON", "MONOCLINIC"}, {"TRI", "TRICLINIC"}};
    for (const auto& [code, name] : names) {
        const std::string text = LogCalculation(report);
        EXPECT_NE(text.find("LATTICE CONSTANTS\"\r\n\"" + std::string(name) + "\"\r\n"),
                  std::string::npos)
            << name;
        EXPECT_EQ(LatticeWorld::Count(text, "\"" + std::string(code) + "\""), 2U) << code;
        ++report.System;
    }
    EXPECT_EQ(LatticeWorld::Count(LogCalculation(report), "\"UNK\""), 2U);
}

// --- scales of the edge and of the volume -----------

TEST(LatticeReview, AVinetMarkerGoesByItsEdgeAndADegreeOfItsTemperature) {
    Marker w("PT_H");
    Type(v.txtTemp, "627");
    w.Execute();
    const testing8::Refined fit = Marker::Second();
    // The reference edge is that of the scale, not of the file (3.9).
    const auto vinet = [](double a) {
        const double x = a / 3.9231;
        return 798.31 * (1 - x) / (x * x) * std::exp(7.2119 * (1 - x)) +
               1e-4 * 0.261 * 266 * (627.0 - 27.0);
    };
    const double a = fit.Cell[0], da = 0.5 * fit.ParamErr[0] * a * a * a;
    w.Expect(vinet, vinet(a) - vinet(a + da), fit);
    const double celsius = w.Value(v.txtPressure);
    Pick(v.cmbUnit, 1);
    Type(v.txtTemp, "900.15");
    w.Execute();
    EXPECT_NEAR(w.Value(v.txtPressure), celsius, 2e-5);
    EXPECT_EQ(w.LogText().find("Puressure"), std::string::npos) << "no banner for this key";
    EXPECT_NE(w.LogText().find("\"P(GPA)= \",\""), std::string::npos);
}

TEST(LatticeReview, ABirchMarkerGoesByItsVolumeAndThatOfTheFile) {
    Marker w("Pt_B");
    Pick(v.cmbUnit, 1);
    Type(v.txtTemp, "900");
    w.Execute();
    const testing8::Refined fit = Marker::Second();
    const auto birch = [](double volume) {
        const double v0 = 3.9 * 3.9 * 3.9, t = 900.0;
        const double growth = std::exp((0.284e-8 * t * t / 2 + 2.4e-5 * t + 0.097 / t) -
                                       (0.284e-8 * 300 * 300 / 2 + 2.4e-5 * 300 + 0.097 / 300));
        const double x = v0 * growth / volume;
        return 270.28 * std::pow(1 / growth, 5.301) * 1.5 *
               (std::pow(x, 7.0 / 3) - std::pow(x, 5.0 / 3)) *
               (1 - (std::pow(x, 2.0 / 3) - 1) * (4 - 5.29 * growth) * 0.75);
    };
    const double a = fit.Cell[0], da = 0.5 * fit.ParamErr[0] * a * a * a;
    const double volume = a * a * a, dv = 3 * da * a * a;
    // The error bars stand at the volume and its error, which is not the cube of the edge's.
    EXPECT_NEAR(w.Value(v.txtPressure), birch(volume), 2e-3);
    EXPECT_NEAR(w.Error(v.txtPressure), birch(volume) - birch(volume + dv),
                0.02 * (birch(volume) - birch(volume + dv)));
    EXPECT_NEAR(Number(v.txtErrorBar[1].Text), birch(volume - dv), 2e-3);
    EXPECT_NEAR(Number(v.txtErrorBar[2].Text), birch(volume + dv), 2e-3);
    EXPECT_NE(w.LogText().find("\"******** Burch_m SCALE AT T=900Ｋ ***\""), std::string::npos);
}

// --- the simulation table -----------

TEST(LatticeReview, Command1WritesEachColumnOfItsTemperature) {
    LatticeWorld w;
    w.OpenView();
    w.Folder.Write("sim298_1273k2.dat", std::string(100000, 'x'));
    Click(v.Command1);
    const std::string table = BytesOf(w.Folder.Path("sim298_1273k2.dat"));
    EXPECT_EQ(table.find('x'), std::string::npos) << "an old content is lost";
    EXPECT_EQ(LatticeWorld::Count(table, "\r\n"), 192U);
    std::size_t at = table.find("\r\n") + 2;
    for (int i = 0; i <= 190; ++i) {
        const std::size_t end = table.find("\r\n", at);
        std::vector<std::string> fields(1);
        for (const char c : table.substr(at, end - at))
            c == ',' ? fields.emplace_back() : fields.back() += c;
        at = end + 2;
        ASSERT_EQ(fields.size(), 6U) << i;
        const double r = 1.04 - 0.001 * i;
        EXPECT_EQ(fields[0], FormatNumber(r, "##0.000000"));
        EXPECT_EQ(fields[1], FormatNumber(1.0 / r, "##0.000000"));
        const double kelvin[] = {298, 473, 873, 1273};
        for (std::size_t k = 0; k < 4; ++k) {
            // The volume is that of the reference cell grown by the expansion, by no quotient.
            const double t = kelvin[k];
            const double grown = 60.3793 * std::exp(3.68e-5 * (t + 298) * (t - 298) / 2);
            const double third = std::cbrt(grown);
            const double expected = 1.5 * (27.6 - 0.0081 * (t - 298)) *
                                    (std::pow(third, 7) - std::pow(third, 5)) *
                                    (1 + 0.75 * 6.5 * (third * third - 1));
            const std::string& text = fields[k + 2];
            EXPECT_NEAR(Number(text) / expected, 1.0, 1e-9) << text;
            EXPECT_EQ(text.size() - text.find('.'), 5U) << "four decimals";
        }
    }
}

TEST(LatticeReview, ATableThatCannotBeWrittenIsToldWithItsName) {
    LatticeWorld w;
    w.OpenView();
    std::filesystem::create_directories(w.Folder.Path("sim298_1273k2.dat/in the way"));
    Click(v.Command1);
    ASSERT_EQ(w.Desk.Faults.size(), 1U);
    EXPECT_NE(w.Desk.Faults[0].find("sim298_1273k2.dat"), std::string::npos) << w.Desk.Faults[0];
    EXPECT_TRUE(v.Visible);
}

// --- what outlives a calculation, and what does not -----------

TEST(LatticeReview, ACorrectionEndsWithItsView) {
    LatticeWorld w;
    w.AddCubic(GOLD, 6);
    w.OpenView();
    w.Choose("Au");
    w.Execute();
    Tick(v.sprPeakInf2, PeakCalView::USE, 3);
    w.Execute();
    Click(v.cmd2ThetaCalib);
    w.Desk.CancelSave();
    Click(v.cmdExit);
    w.OpenView();
    w.Choose("Au");
    w.Execute();
    for (int row = 1; row <= 6; ++row)
        EXPECT_TRUE(std::as_const(v.sprPeakInf2).At(PeakCalView::USE, row).Ticked) << row;
}

TEST(LatticeReview, AClickOnALineScrollsToAPeakThatIsNotShown) {
    LatticeWorld w;
    w.AddCubic(GOLD, 6);
    w.OpenView();
    CsrX_Change(0);
    for (int halvings = 0; halvings < 5; ++halvings) Click(frmVaelAna.cmdNarrower);
    ASSERT_EQ(frmVaelAna.Windows[0].Span, 128);
    for (const int row : {6, 1}) {
        EXPECT_TRUE(Press(v.sprPeakInf, 1, row));
        const double at = w.Peaks().Peak[static_cast<std::size_t>(row - 1)].Position;
        EXPECT_EQ(CursorCh(), std::lround(at));
        for (const WindowState& window : frmVaelAna.Windows) {
            EXPECT_LE(window.Start, at);
            EXPECT_GE(window.Start + window.Span - 1, at);
        }
    }
}

TEST(LatticeReview, MarksStandInBothWindowsOfTheExpandStyle) {
    LatticeWorld w;
    w.AddCubic(GOLD);
    w.OpenView();
    w.Choose("Au");
    w.Execute();
    Tick(frmVaelAna.ckbExpand);
    const std::array before{frmVaelAna.picGraph[0].Painted, frmVaelAna.picGraph[1].Painted};
    Click(v.cmdMI[0]);
    for (int win = 0; win < 2; ++win) {
        EXPECT_EQ(ReflectionMarksOn(win).size(), 5U) << win;
        EXPECT_GT(Item(frmVaelAna.picGraph, win).Painted, Item(before, win)) << win;
    }
    Click(v.cmdMI[1]);
    for (int win = 0; win < 2; ++win) EXPECT_TRUE(ReflectionMarksOn(win).empty()) << win;
}

TEST(LatticeReview, ATemperatureThatIsNotAboveZeroKelvinIsRefusedInEveryScale) {
    LatticeWorld w;
    w.AddCubic(4.06, 6);
    w.OpenView();
    w.Choose("Au");
    w.Execute();
    const std::string pressure = v.txtPressure.Text;
    const std::string log = w.LogText();
    ASSERT_NE(pressure, "");
    const std::pair<const char*, int> cold[] = {{"0", 1}, {"-10", 1}, {"-273.15", 0}, {"-300", 0}};
    for (const auto& [text, unit] : cold) {
        Pick(v.cmbUnit, unit);
        Type(v.txtTemp, text);
        w.Desk.ExpectQuestion("Temp Error");
        w.Execute();
        EXPECT_EQ(v.txtPressure.Text, pressure) << text;
        EXPECT_EQ(w.LogText(), log) << text;
        EXPECT_NE(w.Told().find("above 0 K"), std::string::npos) << w.Told();
        EXPECT_EQ(v.sprPeakInf3.Rows(), 6) << "the last calculation stands";
    }
    w.Sample();  // where no scale asks for it
    w.Choose("Au");
    w.Execute();
    EXPECT_NEAR(w.Value(v.txtLatticeLength[0]), 4.06, 1e-4);
}

TEST(LatticeReview, ASavedReportHasNoResultOfAnotherCrystal) {
    LatticeWorld w;
    w.AddCubic(GOLD, 4);
    w.OpenView();
    w.Choose("Au");
    w.Execute();
    const std::string a = v.txtLatticeLength[0].Text.substr(0, 8);
    const std::string p = v.txtPressure.Text;
    const auto saved = [&] {
        Click(v.cmdDataSave);
        return FromCp932(BytesOf(w.Folder.Path("CORVINE/LatticeFit.csv")));
    };
    EXPECT_NE(saved().find(a), std::string::npos);
    w.Choose("Pt ");
    EXPECT_EQ(v.txtLatticeLength[0].Text.substr(0, 8), a) << "the boxes keep what they showed";
    const std::string text = saved();
    EXPECT_NE(text.find("\"Pt Platinum\",\"CUB\""), std::string::npos);
    EXPECT_EQ(text.find(a), std::string::npos) << "gold's cell is none of platinum's";
    EXPECT_EQ(text.find(p), std::string::npos);
    EXPECT_NE(text.find("\"A    =\",\"\",\"+-\",\"\"\r\n"), std::string::npos);
    EXPECT_EQ(text.find("P(GPA)"), std::string::npos);
    EXPECT_NE(w.Told().find("no calculation"), std::string::npos) << w.Told();
}

TEST(LatticeReview, ANewAngleIsSeenOnTheLowerAxis) {
    LatticeWorld w;
    w.AddCubic(GOLD, 3);
    w.OpenView();
    const auto painted = frmVaelAna.picSubScale.Painted;
    w.TypeAndLeave(v.txt2Theta, "10.000");
    EXPECT_EQ(frmVaelAna.picSubScale.Painted, painted) << "the same angle changes nothing";
    w.TypeAndLeave(v.txt2Theta, "10.5");
    EXPECT_GT(frmVaelAna.picSubScale.Painted, painted);
}
