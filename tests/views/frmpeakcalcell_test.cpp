// The calculation of the lattice view: cells, errors and pressures, the rows in use, the correction
// of the angle, and what is refused.
#include "lattice/refine8.h"
#include "support/latticeworld.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace vael;
using test::CrystalFile;
using test::GOLD;
using test::LatticeWorld;

namespace {

PeakCalView& v = frmPeakCal;

constexpr const char* TOO_FEW = "計算するための回折線の数が少なすぎます。";
constexpr const char* SINGULAR = "最小二乗が計算できません";

/// Gold, compressed, with a scatter that gives errors, executed.
struct Gold : LatticeWorld {
    explicit Gold(double a = 4.0, std::size_t lines = 8) {
        AddCubic(a, lines, 2e-4);
        OpenView();
        Choose("Au");
        TypeAndLeave(v.txtPickupRange, "0.05");
        Execute();
    }
    static std::string Boxes() {
        std::string all;
        for (const TextBox& box : v.txtLatticeLength) all += box.Text + "|";
        return all + v.txtVol.Text + "|" + v.txtVolPerVol0.Text + "|" + v.txtPressure.Text;
    }
    /// Asserts that Execute is refused with this box, changes no result and logs nothing.
    void Refuses(const std::string& box, const std::string& told) {
        const std::string boxes = Boxes();
        const std::string log = LogText();
        if (!box.empty()) Desk.ExpectQuestion(box);
        Execute();
        EXPECT_EQ(Boxes(), boxes) << told;
        EXPECT_EQ(LogText(), log) << told;
        EXPECT_NE(Told().find(told), std::string::npos) << Told();
        EXPECT_EQ(v.lblTold.Caption, Told());
        EXPECT_TRUE(Desk.Faults.empty());
    }
};

/// The rows in use as the second refinement takes them.
std::vector<testing8::Row> RowsInUse() {
    std::vector<testing8::Row> rows;
    for (const ReflectionMatch& row : latticeState.FitData.Match)
        if (row.Matched == TRUE_WORD && row.Excluded == FALSE_WORD)
            rows.push_back({row.H, row.K, row.L, row.DObs});
    return rows;
}

}  // namespace

// --- marker -----------

TEST(LatticeCell, AGoldMarkerShowsCellVolumeAndPressure) {
    Gold w;
    const auto fit = testing8::Refine(SYSTEM_CUB, RowsInUse());
    ASSERT_EQ(RowsInUse().size(), 8U);
    const double a = fit.Cell[0];
    // The error of a from that of 1/a^2; Anderson's scale written out once more.
    const double da = 0.5 * fit.ParamErr[0] * a * a * a;
    const double x = a * a * a / (GOLD * GOLD * GOLD);
    const double dx = 3 * da * a * a / (GOLD * GOLD * GOLD);
    const auto anderson = [](double ratio) {
        const double y = 1 / ratio;
        return 1.5 * 166.65 * (std::pow(y, 7.0 / 3) - std::pow(y, 5.0 / 3)) *
                   (1 + (std::pow(y, 2.0 / 3) - 1) * 0.75 * 1.4823) +
               (0.00714 - 0.0115 * std::log(y)) * 0.15;
    };
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(w.Value(Item(v.txtLatticeLength, i)), a, 2e-6);
        EXPECT_NEAR(w.Error(Item(v.txtLatticeLength, i)), fit.Error[0], 2e-6);
        EXPECT_EQ(Item(v.txtLatticeLength, i + 3).Text, "90.00000");
    }
    EXPECT_NEAR(w.Value(v.txtVol), a * a * a, 1e-4);
    EXPECT_NEAR(w.Error(v.txtVol), 3 * da * a * a, 2e-5);
    EXPECT_NEAR(w.Value(v.txtVolPerVol0), x, 2e-6);
    EXPECT_EQ(v.txtVolPerVol0.Text.front(), '.');
    EXPECT_NEAR(w.Value(v.txtPressure), anderson(x), 5e-4);
    EXPECT_NEAR(w.Error(v.txtPressure), (anderson(x - dx) - anderson(x + dx)) / 2, 5e-5);
    EXPECT_NEAR(Number(v.txtErrorBar[0].Text), dx, 1e-5);
    EXPECT_NEAR(Number(v.txtErrorBar[1].Text), anderson(x - dx), 5e-4);
    EXPECT_NEAR(Number(v.txtErrorBar[2].Text), anderson(x + dx), 5e-4);
    EXPECT_GT(w.Value(v.txtPressure), 6.0);
    EXPECT_NE(w.Told().find("from 8 reflections, P = "), std::string::npos);
}

TEST(LatticeCell, TheTemperatureGoesInByItsUnit) {
    Gold w;
    const double cold = w.Value(v.txtPressure);
    Type(v.txtTemp, "1000");
    w.Execute();
    const double celsius = w.Value(v.txtPressure);
    Pick(v.cmbUnit, 1);
    w.Execute();
    EXPECT_GT(celsius, w.Value(v.txtPressure));
    EXPECT_GT(w.Value(v.txtPressure), cold);
    Type(v.txtTemp, "1273.15");
    w.Execute();
    EXPECT_NEAR(w.Value(v.txtPressure), celsius, 1e-5);
}

TEST(LatticeCell, AHexagonalMarkerShowsItsFitAndMultipliesErrorsByCubes) {
    LatticeWorld w;
    for (const auto& [h, k, l] :
         {std::array{0, 0, 2}, {1, 0, 0}, {1, 0, 1}, {1, 0, 2}, {0, 0, 4}, {1, 1, 0}, {1, 1, 2}}) {
        const double d =
            CalcDOne(SYSTEM_HEX, Int16(h), Int16(k), Int16(l), 2.49F, 2.49F, 6.45F, 90, 90, 120);
        w.AddD(d * (1 + 3e-4 * std::sin(h + 2.0 * l)));
    }
    w.OpenView();
    w.Choose("hBN");
    w.TypeAndLeave(v.txtPickupRange, "0.12");
    w.TypeAndLeave(v.txtSeedConstant[2], "6.5");
    w.Execute();
    const auto fit = testing8::Refine(SYSTEM_HEX, RowsInUse());
    ASSERT_EQ(RowsInUse().size(), 7U);
    EXPECT_NEAR(w.Value(v.txtLatticeLength[0]), fit.Cell[0], 5e-6);
    EXPECT_NEAR(w.Value(v.txtLatticeLength[2]), fit.Cell[2], 2e-5);
    EXPECT_NEAR(w.Error(v.txtLatticeLength[2]), fit.Error[2], 0.02 * fit.Error[2]);
    EXPECT_EQ(v.txtLatticeLength[1].Text, v.txtLatticeLength[0].Text);
    EXPECT_EQ(v.txtLatticeLength[5].Text, "120.00000");
    const double a = fit.Cell[0], c = fit.Cell[2];
    const double da = 0.5 * fit.Error[0] * a * a * a, dc = 0.5 * fit.Error[2] * c * c * c;
    EXPECT_NEAR(w.Value(v.txtVol), a * a * c * 0.866025, 5e-4);
    EXPECT_NEAR(w.Error(v.txtVol), (a * dc + 2 * c * da) * a * 0.866025,
                0.03 * (a * dc + 2 * c * da) * a);
    const auto hbn = [](double length) {
        const double k = 27.0852 - 0.00701 * 0.15, x = (6.6562 + 0.000274 * 0.15) / length;
        return 1.5 * k * (std::pow(x, 7.0 / 3) - std::pow(x, 5.0 / 3)) *
               (1 + 0.75 * 9.4984 * (std::pow(x, 2.0 / 3) - 1));
    };
    EXPECT_NEAR(w.Value(v.txtPressure), hbn(c), 2e-3);
    EXPECT_NEAR(w.Error(v.txtPressure), std::fabs(hbn(c) - hbn(c + dc)), 2e-3);
    EXPECT_GT(Number(v.txtErrorBar[1].Text), Number(v.txtErrorBar[2].Text));
}

TEST(LatticeCell, AnOrthorhombicMarkerIsCalculatedAndShowsNothing) {
    LatticeWorld w(
        CrystalFile({"\"Fe\",0,2.8665,2.8665,2.8665,90,90,90\n1,1,0\n0,0,0",
                     "\"Au odd\",3,4.0,4.1,4.2,90,90,90\n1,1,1\n2,0,0\n0,2,0\n0,0,2\n0,0,0"}));
    for (const auto& hkl : {std::array{1, 1, 1}, {0, 0, 2}, {0, 2, 0}, {2, 0, 0}})
        w.AddD(CalcDOne(SYSTEM_ORT, Int16(hkl[0]), Int16(hkl[1]), Int16(hkl[2]), 4.0F, 4.1F, 4.2F,
                        90, 90, 90));
    w.OpenView();
    Pick(v.cmbElement, 1);
    w.Execute();
    EXPECT_EQ(v.txtLatticeLength[0].Text, "");
    EXPECT_EQ(v.txtPressure.Text, "");
    EXPECT_EQ(v.sprPeakInf2.Rows(), 4);
    EXPECT_EQ(v.sprPeakInf3.Rows(), 4);
    EXPECT_NE(w.Told().find("cubic or hexagonal"), std::string::npos);
    EXPECT_EQ(w.LogText().find("P(GPA)"), std::string::npos);
    EXPECT_NE(w.LogText().find("Compare to Seed"), std::string::npos);
}

TEST(LatticeCell, AKeyWithoutAScaleLeavesThePressureAndTheLogFollows) {
    LatticeWorld w(CrystalFile(
        {"\"Au Gold\",0,4.0786,4.0786,4.0786,90,90,90\n1,1,1\n2,0,0\n2,2,0\n0,0,0",
         "\"NaCl small letters\",0,4.0786,4.0786,4.0786,90,90,90\n1,1,1\n2,0,0\n2,2,0\n0,0,0"}));
    w.AddCubic(4.06, 3);
    w.OpenView();
    w.Choose("NaCl");
    w.Execute();
    EXPECT_EQ(v.txtPressure.Text, "");
    EXPECT_NE(w.LogText().find("******** DECKER PRESSURE AT T=27.0℃ ***"), std::string::npos);
    EXPECT_TRUE(w.LogText().ends_with("\"P(GPA)= \",\"\"\r\n"));
    EXPECT_EQ(v.txtErrorBar[1].Text, "");
    w.Choose("Au");
    w.Execute();
    const std::string gold = v.txtPressure.Text;
    EXPECT_NE(gold, "");
    w.Choose("NaCl");
    w.Execute();
    EXPECT_EQ(v.txtPressure.Text, gold);
    const auto cut = gold.find('+');
    EXPECT_TRUE(w.LogText().ends_with("\"P(GPA)= \",\"" + gold.substr(0, cut) + "\",\"+-\",\"" +
                                      gold.substr(cut + 2) + "\"\r\n"));
}

// --- sample: all six systems against a refinement in 8-byte floats -----------

struct SystemCase {
    const char* Crystal;
    Cell True;
    int System;
    std::size_t Lines;
    double Tolerance;  // relative; the fit has 4-byte floats
};

class LatticeSystems : public ::testing::TestWithParam<SystemCase> {};

TEST_P(LatticeSystems, AgreeWithASecondRefinementToTheFifthDigit) {
    const SystemCase& one = GetParam();
    LatticeWorld w;
    w.OpenView();
    w.Sample();
    w.Choose(one.Crystal);
    ASSERT_EQ(v.cmbLatticeType.Index, one.System);
    // Lines of the true cell that stand apart, each a little off.
    const CrystalRecord& crystal =
        Item(latticeState.Table.Crystals, Item(v.CrystalOf, v.cmbElement.Index));
    CrystalRecord lines = crystal;
    CalcDSpacings(lines, one.True);
    std::vector<double> put;
    for (int i = 0; i < lines.Count && put.size() < one.Lines; ++i) {
        const double d = Item(lines.D, i);
        const bool apart = std::all_of(put.begin(), put.end(),
                                       [&](double other) { return std::fabs(other - d) > 0.012; });
        if (d < 0.9 || !apart) continue;
        put.push_back(d);
        w.AddD(d * (1 + 2e-4 * std::sin(1.7 * static_cast<double>(put.size()))));
    }
    w.TypeAndLeave(v.txtPickupRange, "0.02");
    const char* names[] = {"a", "b", "c", "alpha", "beta", "gamma"};
    for (std::size_t i = 0; i < 6; ++i)
        if (v.txtSeedConstant[i].Usable())
            w.TypeAndLeave(v.txtSeedConstant[i], std::to_string(one.True[i]));
    w.Execute();
    const auto rows = RowsInUse();
    ASSERT_GE(rows.size(), one.Lines - 2);
    const auto fit = testing8::Refine(one.System, rows);
    for (std::size_t i = 0; i < 3; ++i) {
        const TextBox& box = v.txtLatticeLength[i];
        EXPECT_NEAR(w.Value(box), fit.Cell[i], one.Tolerance * fit.Cell[i]) << names[i];
        EXPECT_NEAR(w.Error(box), fit.Error[i], 0.02 * fit.Error[i] + 2e-6) << names[i];
    }
    const bool tri = one.System == SYSTEM_TRI, mon = one.System == SYSTEM_MON;
    for (std::size_t i = 3; i < 6; ++i) {
        const TextBox& box = v.txtLatticeLength[i];
        if (tri || (mon && i == 4)) {  // the cosine, and in its tip the angle
            EXPECT_NEAR(w.Value(box), fit.Cell[i], one.Tolerance) << names[i];
            EXPECT_NEAR(w.Error(box), fit.Error[i], 0.02 * fit.Error[i] + 2e-6) << names[i];
            const double angle = std::acos(fit.Cell[i]) * 180 / std::numbers::pi;
            EXPECT_NEAR(Number(box.Tip.substr(0, box.Tip.find(' '))), angle, 2e-3) << names[i];
            EXPECT_NE(box.Tip.find("degrees"), std::string::npos);
        } else {
            const char* fixed = mon ? "90.00000" : "90.000000";
            EXPECT_EQ(box.Text, one.System == SYSTEM_HEX && i == 5 ? "120.000000" : fixed);
            EXPECT_EQ(box.Tip, "");
        }
    }
    EXPECT_NEAR(w.Value(v.txtVol), fit.Cell[6], 3 * one.Tolerance * fit.Cell[6]);
    EXPECT_NEAR(w.Error(v.txtVol), fit.Error[6], 0.02 * fit.Error[6] + 1e-5);
    const double v0 = CellVolume(crystal.ReferenceCell(), one.System);
    EXPECT_NEAR(w.Value(v.txtVolPerVol0), fit.Cell[6] / v0, 3 * one.Tolerance);
    EXPECT_NEAR(w.Error(v.txtVolPerVol0), fit.Error[6] / v0, 0.02 * fit.Error[6] / v0 + 2e-6);
    EXPECT_EQ(v.txtErrorBar[1].Text + v.txtErrorBar[2].Text, "");
    EXPECT_NEAR(Number(v.txtErrorBar[0].Text), fit.Error[6] / v0, 2e-5);
    EXPECT_EQ(w.LogText().find("P(GPA)"), std::string::npos);
    EXPECT_TRUE(w.Desk.Faults.empty());
}

INSTANTIATE_TEST_SUITE_P(
    All, LatticeSystems,
    ::testing::Values(
        SystemCase{"Si ", {5.40, 5.40, 5.40, 90, 90, 90}, SYSTEM_CUB, 8, 2e-6},
        SystemCase{"Zircon", {6.58, 6.58, 5.95, 90, 90, 90}, SYSTEM_TET, 12, 5e-6},
        SystemCase{"Al2O3", {4.74, 4.74, 12.95, 90, 90, 120}, SYSTEM_HEX, 12, 5e-6},
        SystemCase{"Forsterite", {4.73, 10.15, 5.96, 90, 90, 90}, SYSTEM_ORT, 16, 5e-6},
        SystemCase{"Diopside", {9.72, 8.87, 5.23, 90, 105.8, 90}, SYSTEM_MON, 18, 1e-5},
        SystemCase{"Kyanite", {7.11, 7.83, 5.56, 90.1, 101.0, 105.9}, SYSTEM_TRI, 24, 2e-5}),
    [](const auto& one) { return SystemCode(one.param.System); });

// --- rows in use, lists -----------

TEST(LatticeRows, AnUntickedReflectionIsLeftOutAndComesBackTicked) {
    Gold w(4.06, 6);
    const std::string all = v.txtLatticeLength[0].Text;
    EXPECT_EQ(v.sprPeakInf3.Rows(), 6);
    Tick(v.sprPeakInf2, PeakCalView::USE, 2);
    EXPECT_EQ(latticeState.FitData.Match[1].Excluded, TRUE_WORD);
    EXPECT_FALSE(std::as_const(v.sprPeakInf4).At(PeakCalView::USE, 2).Ticked);
    EXPECT_TRUE(std::as_const(v.sprPeakInf2).At(PeakCalView::D_OBS, 2).Dimmed);
    EXPECT_TRUE(std::as_const(v.sprPeakInf4).At(PeakCalView::D_OBS, 2).Dimmed);
    EXPECT_FALSE(std::as_const(v.sprPeakInf2).At(PeakCalView::D_OBS, 1).Dimmed);
    EXPECT_EQ(LatticeWorld::Count(w.LogText(), "UseFlag Changed!!"), 1U);
    EXPECT_EQ(v.txtLatticeLength[0].Text, all) << "until the next calculation";
    w.Execute();
    EXPECT_NE(v.txtLatticeLength[0].Text, all);
    EXPECT_EQ(v.sprPeakInf2.Rows(), 6);
    EXPECT_EQ(v.sprPeakInf3.Rows(), 5);
    EXPECT_NEAR(w.Value(v.txtLatticeLength[0]), testing8::Refine(SYSTEM_CUB, RowsInUse()).Cell[0],
                2e-6);
    EXPECT_NE(w.LogText().find("\"*2\",\"(2 0 0)\""), std::string::npos);
    Pick(v.tabLatticeFit, 1);
    Tick(v.sprPeakInf4, PeakCalView::USE, 2);
    w.Execute();
    EXPECT_EQ(v.txtLatticeLength[0].Text, all);
}

TEST(LatticeRows, ShowObservedSeedAndCalculatedDWithTheirDeviations) {
    Gold w(4.06, 4);
    const double d = LatticeWorld::CubicD(4.06, {2, 0, 0}) * (1 + 2e-4 * std::sin(1.7 + 0.4));
    const double seed = GOLD / 2, a = w.Value(v.txtLatticeLength[0]);
    EXPECT_EQ(w.Cell(v.sprPeakInf2, 0, 2), "2");
    EXPECT_EQ(w.Cell(v.sprPeakInf2, PeakCalView::HKL, 2), "(2 0 0)");
    EXPECT_EQ(w.Cell(v.sprPeakInf2, PeakCalView::TYPE, 2), "A");
    EXPECT_NEAR(Number(w.Cell(v.sprPeakInf2, PeakCalView::CH, 2)), w.ChannelOfD(d) + 1, 6e-3);
    for (const Grid* grid : {&v.sprPeakInf2, &v.sprPeakInf4}) {
        EXPECT_NEAR(Number(w.Cell(*grid, PeakCalView::D_OBS, 2)), d, 6e-6);
        EXPECT_NEAR(Number(w.Cell(*grid, PeakCalView::D_SEED, 2)), seed, 6e-6);
        EXPECT_NEAR(Number(w.Cell(*grid, PeakCalView::DEVIATION, 2)), d - seed, 6e-6);
    }
    EXPECT_NEAR(Number(w.Cell(v.sprPeakInf4, PeakCalView::D_CALC, 2)), a / 2, 6e-6);
    EXPECT_NEAR(Number(w.Cell(v.sprPeakInf4, PeakCalView::RELATIVE, 2)), (d - a / 2) / d, 1e-6);
    EXPECT_NEAR(Number(w.Cell(v.sprPeakInf3, PeakCalView::CALC_RELATIVE, 2)), (d - a / 2) / d,
                1e-6);
    EXPECT_EQ(w.Cell(v.sprPeakInf3, PeakCalView::CALC_HKL, 2), "(2 0 0)");
    // The bars: the largest deviation fills its half.
    double largest = 0.0;
    for (int row = 1; row <= 4; ++row)
        largest = std::max(
            largest, std::fabs(std::as_const(v.sprPeakInf4).At(PeakCalView::RELATIVE, row).Bar));
    EXPECT_EQ(largest, 1.0);
}

TEST(LatticeRows, ARowWhoseCosinesGiveNoDShowsNoneAndTheResultsStay) {
    // The fit's cosines go in where the angles belong: with cosines as degrees this cell closes
    // nowhere, or has a d that means nothing; either way boxes and log are those of the fit.
    LatticeWorld w;
    w.OpenView();
    w.Sample();
    w.Choose("Kyanite");
    CrystalRecord lines = Item(latticeState.Table.Crystals, Item(v.CrystalOf, v.cmbElement.Index));
    CalcDSpacings(lines, lines.ReferenceCell());
    double last = 99.0;
    for (int i = 0, put = 0; i < lines.Count && put < 14; ++i) {
        if (last - Item(lines.D, i) < 0.012) continue;
        w.AddD(last = Item(lines.D, i));
        ++put;
    }
    w.TypeAndLeave(v.txtPickupRange, "0.01");
    w.Execute();
    EXPECT_NEAR(w.Value(v.txtLatticeLength[0]), 7.1262, 1e-3);
    ASSERT_GT(v.sprPeakInf3.Rows(), 6);
    const auto& out = v.Values->Solution.CellOut;
    for (int row = 1; row <= v.sprPeakInf3.Rows(); ++row) {
        const ReflectionMatch& match =
            Item(latticeState.FitData.Match, std::stoi(w.Cell(v.sprPeakInf3, 0, row)) - 1);
        std::string expected;
        try {
            expected = FormatNumber(CalcDOne(SYSTEM_TRI, match.H, match.K, match.L, out(1), out(2),
                                             out(3), out(4), out(5), out(6)),
                                    "#0.00000");
        } catch (const Fault&) {
        }
        EXPECT_EQ(w.Cell(v.sprPeakInf3, PeakCalView::CALC_D, row), expected) << row;
    }
    EXPECT_NE(w.LogText().find("TRICLINIC"), std::string::npos);
}

// --- the correction of the angle -----------

TEST(TwoThetaCorrection, BeforeAnyCalculationThereIsNoLatticeConstant) {
    LatticeWorld w;
    w.OpenView();
    w.Desk.ExpectQuestion("LatticeConstance Error");
    Click(v.cmd2ThetaCalib);
    v.txtLatticeLength[0].Text = "wide+-0.1";
    w.Desk.ExpectQuestion("LatticeConstance Error");
    Click(v.cmd2ThetaCalib);
    v.txtLatticeLength[0].Text = "4.08";  // without a "+" it is taken whole
    v.txt2Theta.Text = " ";
    w.Desk.ExpectQuestion("2θ Error");
    Click(v.cmd2ThetaCalib);
    v.txt2Theta.Text = "10";
    w.Desk.ExpectQuestion("Initial Constans Error");
    Click(v.cmd2ThetaCalib);
    v.txtSeedConstant[0].Text = "4.08";
    Click(v.cmd2ThetaCalib);
    EXPECT_EQ(v.txtExpected2theta.Text, "10.00000") << "with a equal to a0 the angle is right";
    EXPECT_EQ(latticeState.UseListValid, TRUE_WORD);
}

TEST(TwoThetaCorrection, GivesTheAngleAtWhichTheCellIsItsSeed) {
    LatticeWorld w;
    w.AddCubic(GOLD, 6);
    // The spectrum was taken at 10 degrees; the record says 10.05.
    w.Record().Param.TwoTheta = 10.05;
    w.OpenView();
    w.Choose("Au");
    w.Execute();
    EXPECT_LT(w.Value(v.txtLatticeLength[0]), 4.07);
    Click(v.cmd2ThetaCalib);
    EXPECT_NEAR(Number(v.txtExpected2theta.Text), 10.0, 2e-5);
    w.TypeAndLeave(v.txt2Theta, v.txtExpected2theta.Text);
    w.Execute();
    EXPECT_NEAR(w.Value(v.txtLatticeLength[0]), GOLD, 1e-5);
}

TEST(TwoThetaCorrection, WhatWasUntickedStaysSoOverTheNextMatch) {
    LatticeWorld w;
    w.AddCubic(GOLD, 6);
    w.OpenView();
    w.Choose("Au");
    w.Execute();
    Tick(v.sprPeakInf2, PeakCalView::USE, 3);
    w.Execute();
    Tick(v.sprPeakInf2, PeakCalView::USE, 5);  // not executed any more: comes back
    Click(v.cmd2ThetaCalib);
    w.TypeAndLeave(v.txt2Theta, "10.001");
    w.Execute();
    ASSERT_EQ(v.sprPeakInf2.Rows(), 6);
    for (int row = 1; row <= 6; ++row)
        EXPECT_EQ(std::as_const(v.sprPeakInf2).At(PeakCalView::USE, row).Ticked, row != 3) << row;
    // Without a correction a new match begins with all of them.
    w.TypeAndLeave(v.txt2Theta, "10.002");
    w.Execute();
    EXPECT_TRUE(std::as_const(v.sprPeakInf2).At(PeakCalView::USE, 3).Ticked);
}

TEST(TwoThetaCorrection, ACellThatNoAngleGivesIsARunTimeError) {
    LatticeWorld w;
    w.OpenView();
    v.txtLatticeLength[0].Text = "100+-1";
    v.txtSeedConstant[0].Text = "4";
    Click(v.cmd2ThetaCalib);
    EXPECT_EQ(w.Desk.Faults.size(), 1U);
    EXPECT_EQ(v.txtExpected2theta.Text, "5.0000");
    v.txtSeedConstant[0].Text = "0";
    Click(v.cmd2ThetaCalib);
    EXPECT_EQ(w.Desk.Faults.size(), 2U);
}

// --- what is refused: old results stay, nothing is logged -----------

TEST(LatticeRefusal, SeedsThatAreNoCell) {
    Gold w;
    for (const char* seed : {"", "wide", "4,08"}) {
        v.txtSeedConstant[0].Text = seed;
        w.Refuses("Seed Error", "the seed of a is no number");
    }
    for (const char* seed : {"0", "-4.0786"}) {
        v.txtSeedConstant[0].Text = seed;
        w.Refuses("Seed Error", "must lie above 0");
    }
    v.txtSeedConstant[0].Text = "4.0786";
    v.txtSeedConstant[3].Text = "ninety";
    w.Refuses("", "Not calculated: ");
    EXPECT_NE(w.Told().find("ninety"), std::string::npos);
}

TEST(LatticeRefusal, WithoutACrystalThereIsNoSeed) {
    LatticeWorld w;
    w.AddCubic(GOLD);
    w.OpenView();
    w.Desk.ExpectQuestion("Seed Error");
    w.Execute();
    EXPECT_NE(w.Told().find("choose a crystal first"), std::string::npos);
    v.txtSeedConstant[0].Text = "4.08";
    w.Desk.ExpectQuestion("Lattice Type Error");
    w.Execute();
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(LatticeRefusal, ATemperatureThatIsNoNumber) {
    Gold w;
    v.txtTemp.Text = "warm";
    w.Refuses("Temp Error", "the temperature is no number");
}

TEST(LatticeRefusal, ZeroKelvinIsNoTemperatureOfAScale) {
    LatticeWorld w;
    w.AddCubic(5.6, 6);
    w.OpenView();
    w.Choose("NACL");
    w.TypeAndLeave(v.txtPickupRange, "0.1");
    w.Execute();
    const std::string before = v.txtPressure.Text;
    EXPECT_NE(before, "");
    const std::string log = w.LogText();
    Pick(v.cmbUnit, 1);
    Type(v.txtTemp, "0");
    w.Desk.ExpectQuestion("Temp Error");
    w.Execute();
    EXPECT_EQ(v.txtPressure.Text, before);
    EXPECT_EQ(w.LogText(), log);
    EXPECT_NE(w.Told().find("the temperature must lie above 0 K."), std::string::npos);
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(LatticeRefusal, NoPeaksOnePeakAndAllUnticked) {
    LatticeWorld none;
    none.OpenView();
    none.Choose("Au");
    none.Desk.ExpectQuestion(TOO_FEW);
    none.Execute();
    EXPECT_EQ(none.LogText().find("Compare"), std::string::npos);
    EXPECT_EQ(v.sprPeakInf2.Rows(), 0);

    Gold w(GOLD, 3);
    for (int row = 1; row <= 3; ++row) Tick(v.sprPeakInf2, PeakCalView::USE, row);
    w.Refuses(TOO_FEW, "too few reflections");
    ASSERT_EQ(v.sprPeakInf2.Rows(), 3) << "they can be ticked again";
    Tick(v.sprPeakInf2, PeakCalView::USE, 1);
    w.Execute();
    EXPECT_TRUE(v.txtLatticeLength[0].Text.ends_with("+-0.000000")) << "one line has no error";
}

TEST(LatticeRefusal, AHexagonalMarkerNeedsTwoReflections) {
    LatticeWorld w;
    w.AddD(6.6562 / 2);
    w.OpenView();
    w.Choose("hBN");
    w.Desk.ExpectQuestion(TOO_FEW);
    w.Execute();
    EXPECT_EQ(v.txtPressure.Text, "");
    EXPECT_EQ(w.LogText().find("P(GPA)"), std::string::npos);
}

TEST(LatticeRefusal, HexagonalLinesWithoutLAreSingular) {
    LatticeWorld w;
    const double edge = 2.5044 * std::sqrt(3.0) / 2;
    w.AddD(edge);
    w.AddD(edge / std::sqrt(3.0));
    w.OpenView();
    w.Choose("hBN");
    w.TypeAndLeave(v.txtPickupRange, "0.001");
    w.Desk.ExpectQuestion(SINGULAR);
    w.Execute();
    EXPECT_NE(w.Told().find("do not determine the cell"), std::string::npos);
}

TEST(LatticeRefusal, ACrystalWithoutReflectionsMatchesNothing) {
    LatticeWorld w(CrystalFile({"\"Fe\",0,2.8665,2.8665,2.8665,90,90,90\n0,0,0",
                                "\"Au none\",0,4.0786,4.0786,4.0786,90,90,90\n0,0,0"}));
    w.AddCubic(GOLD);
    w.OpenView();
    Pick(v.cmbElement, 1);
    w.Desk.ExpectQuestion(TOO_FEW);
    w.Execute();
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(LatticeRefusal, AnAngleOfZeroMatchesNothing) {
    Gold w;
    w.TypeAndLeave(v.txt2Theta, "0");
    w.Refuses(TOO_FEW, "too few reflections");
    EXPECT_EQ(v.sprPeakInf2.Rows(), 0);
}

TEST(LatticeRefusal, APickUpRangeOfZeroMatchesNothing) {
    LatticeWorld w;
    w.AddCubic(GOLD);
    w.OpenView();
    w.Choose("Au");
    w.TypeAndLeave(v.txtPickupRange, "0");
    w.Desk.ExpectQuestion(TOO_FEW);
    w.Execute();
    // Rows that are matched stay so under a narrower range.
    w.TypeAndLeave(v.txtPickupRange, "0.03");
    w.Execute();
    w.TypeAndLeave(v.txtPickupRange, "0");
    w.Execute();
    EXPECT_EQ(v.sprPeakInf2.Rows(), 5);
}
