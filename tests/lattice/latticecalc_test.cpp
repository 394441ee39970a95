// The calculation in both modes: numbers, the texts of the boxes, pressures, and its refusals.
#include "lattice/latticecalc.h"

#include "core/fault.h"
#include "core/text.h"
#include "graph8.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

using namespace vael;
using testing8::DGraph;
using testing8::SetCell;
using testing8::SetReflections;

namespace {

struct Bench {
    std::unique_ptr<LatticeState> State = std::make_unique<LatticeState>();
    DGraph Graph;
    Talk Voice;
    std::vector<std::string> Said;

    Bench() {
        State->Table.CrystalCount = 1;
        Voice.say = [this](std::string_view text, std::string_view) { Said.emplace_back(text); };
    }
    CrystalRecord& Crystal() { return State->Table.Crystals[0]; }
    LatticeValues Calc(std::int16_t mode, double temperature = 27.0,
                       int unit = TEMPERATURE_CELSIUS) {
        return CalcLattice(*State, RequestFor(*State, 0, mode, temperature, unit), Graph.Source(),
                           Voice);
    }
    /// Peaks at the d of every reflection of the crystal from another cell.
    void AddPeaksOf(const Cell& cell) {
        CrystalRecord copy = Crystal();
        CalcDSpacings(copy, cell);
        for (int i = 0; i < copy.Count; ++i) Graph.AddD(copy.D[static_cast<std::size_t>(i)]);
    }
};

void MakeCubic(Bench& bench, const std::string& name, double a0) {
    SetCell(bench.Crystal(), name, SYSTEM_CUB, {a0, a0, a0, 90, 90, 90});
    SetReflections(bench.Crystal(), {{1, 1, 1}, {2, 0, 0}, {2, 2, 0}, {3, 1, 1}, {2, 2, 2}});
}

void MakeHexagonal(Bench& bench, const std::string& name, double a0, double c0) {
    SetCell(bench.Crystal(), name, SYSTEM_HEX, {a0, a0, c0, 90, 90, 120});
    SetReflections(bench.Crystal(), {{0, 0, 2}, {1, 0, 0}, {1, 0, 1}, {1, 0, 2}, {1, 1, 0}});
}

}  // namespace

TEST(CalcLattice, ACubicSampleShowsThreeEdgesAndLiteralAngles) {
    Bench bench;
    MakeCubic(bench, "Fe2 Something", 4.0);
    bench.Graph.AddD(2.01);  // 2 0 0 of a = 4.02
    const LatticeValues values = bench.Calc(MODE_SAMPLE);
    ASSERT_EQ(values.Status, CalcStatus::Ok);
    ASSERT_TRUE(values.HasBoxes);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(values.LatticeLength[i], "4.020000+-0.000000");
    for (std::size_t i = 3; i < 6; ++i) EXPECT_EQ(values.LatticeLength[i], "90.000000");
    EXPECT_NEAR(values.V, 64.964808, 2e-5);  // 4.02^3
    EXPECT_EQ(values.Vol.substr(0, 6), "64.964");
    EXPECT_EQ(values.VolPerVol0, "1.015075+-0.000000");  // 1.005^3
    EXPECT_EQ(values.V0, 64.0);
    EXPECT_FALSE(values.Pressure);
    EXPECT_EQ(values.PressureText, "");
    EXPECT_EQ(values.UsedRows, 1);
    EXPECT_EQ(bench.State->FitData.CurrentSeed[0], 4.0);
}

TEST(CalcLattice, ASampleIsWrittenInTheSampleFormatBelowOne) {
    Bench bench;
    MakeCubic(bench, "X", 4.0);
    bench.Graph.AddD(1.99);
    EXPECT_EQ(bench.Calc(MODE_SAMPLE).VolPerVol0, "0.985075+-0.000000");  // 0.995^3 = 0.985074875
    EXPECT_EQ(bench.Calc(MODE_MARKER).VolPerVol0, ".985075+-.000000");    // and the marker's
}

TEST(CalcLattice, EachSampleSystemHasItsLiterals) {
    Bench hex;
    MakeHexagonal(hex, "H", 4.0, 6.5);
    hex.AddPeaksOf({4.01, 4.01, 6.52, 90, 90, 120});
    const LatticeValues h = hex.Calc(MODE_SAMPLE);
    EXPECT_EQ(h.LatticeLength[1].substr(0, 8), "4.010000");
    EXPECT_EQ(h.LatticeLength[2].substr(0, 6), "6.5200");
    EXPECT_EQ(h.LatticeLength[3], "90.000000");
    EXPECT_EQ(h.LatticeLength[5], "120.000000");
    EXPECT_EQ(h.V0, static_cast<double>(static_cast<float>(16.0 * 0.866025 * 6.5)));
    EXPECT_EQ(h.CellNow[5], 120.0);

    Bench mon;
    const Cell monoclinic{5.0, 6.0, 7.0, 90, 100, 90};
    SetCell(mon.Crystal(), "M", SYSTEM_MON, monoclinic);
    SetReflections(mon.Crystal(),
                   {{1, 0, 0}, {0, 2, 0}, {0, 0, 1}, {1, 1, 1}, {-1, 1, 1}, {2, 1, 0}});
    mon.AddPeaksOf(monoclinic);
    const LatticeValues m = mon.Calc(MODE_SAMPLE);
    ASSERT_EQ(m.Status, CalcStatus::Ok);
    EXPECT_EQ(m.LatticeLength[3], "90.00000");
    EXPECT_EQ(m.LatticeLength[5], "90.00000");
    // The middle angle shows as its cosine, cos 100 = -0.173648.
    EXPECT_NEAR(Number(m.LatticeLength[4].substr(0, m.LatticeLength[4].find("+-"))), -0.173648,
                5e-6);
    EXPECT_NEAR(m.CellNow[4], 100.0, 1e-3);
    EXPECT_EQ(m.CellNow[3], 90.0);
    EXPECT_EQ(m.CellError[3], 0.0);

    Bench tri;
    const Cell triclinic{5.0, 6.0, 7.0, 85, 100, 95};
    SetCell(tri.Crystal(), "T", SYSTEM_TRI, triclinic);
    SetReflections(tri.Crystal(), {{1, 0, 0},
                                   {0, 1, 0},
                                   {0, 0, 1},
                                   {1, 1, 0},
                                   {1, 0, 1},
                                   {0, 1, 1},
                                   {-1, 1, 1},
                                   {1, -1, 1},
                                   {2, 1, 1}});
    tri.Graph.Pickup = 0.001;
    tri.AddPeaksOf(triclinic);
    const LatticeValues t = tri.Calc(MODE_SAMPLE);
    ASSERT_EQ(t.Status, CalcStatus::Ok);
    for (std::size_t i = 3; i < 6; ++i) EXPECT_NE(t.LatticeLength[i].find("+-"), std::string::npos);
    EXPECT_NEAR(t.CellNow[3], 85.0, 2e-3);
    EXPECT_NEAR(t.CellNow[4], 100.0, 2e-3);
    EXPECT_NEAR(t.CellNow[5], 95.0, 2e-3);

    Bench ort;
    SetCell(ort.Crystal(), "O", SYSTEM_ORT, {4, 5, 6, 90, 90, 90});
    SetReflections(ort.Crystal(), {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    ort.AddPeaksOf({4.01, 5.01, 6.01, 90, 90, 90});
    const LatticeValues o = ort.Calc(MODE_SAMPLE);
    EXPECT_EQ(o.LatticeLength[1], "5.010000+-0.000000");
    EXPECT_EQ(o.LatticeLength[4], "90.000000");
}

TEST(CalcLattice, ACubicMarkerGivesVolumeErrorsAndPressure) {
    Bench bench;
    MakeCubic(bench, "Au Gold", 4.0786);
    for (const auto& [h, k, l] : {std::array{1, 1, 1}, {2, 0, 0}, {2, 2, 0}, {3, 1, 1}})
        bench.Graph.AddD((4.05 + 0.002 * (h - l)) / std::sqrt(h * h + k * k + l * l));
    const LatticeValues values = bench.Calc(MODE_MARKER, 1000.0, TEMPERATURE_KELVIN);
    ASSERT_EQ(values.Status, CalcStatus::Ok);
    const double a = values.Solution.CellOut(1);
    EXPECT_EQ(values.V, a * a * a);
    EXPECT_EQ(values.V0, 4.0786 * 4.0786 * 4.0786);
    const double da = static_cast<float>(0.5 * values.Solution.ParamErr(1) * a * a * a);
    EXPECT_GT(da, 0.0);
    EXPECT_EQ(values.dV, 3.0 * da * a * a);
    EXPECT_EQ(values.X, values.V / values.V0);
    ASSERT_TRUE(values.Pressure);
    EXPECT_EQ(values.Pressure->Scale, PressureScale::AuAnderson);
    EXPECT_EQ(values.Pressure->P, PressureAuAnderson(values.X, 1000.0));
    EXPECT_EQ(values.PressureText, FormatNumber(values.Pressure->P, "0.00000") + "+-" +
                                       FormatNumber(values.Pressure->Error, "0.00000"));
    EXPECT_EQ(values.LatticeLength[0], values.LatticeLength[2]);
    EXPECT_EQ(values.LatticeLength[0], FormatNumber(a, "0.000000") + "+-" +
                                           FormatNumber(values.Solution.CellErr(1), "#0.000000"));
    for (std::size_t i = 3; i < 6; ++i) EXPECT_EQ(values.LatticeLength[i], "90.00000");
    EXPECT_EQ(values.Vol,
              FormatNumber(values.V, "0.000000") + "+-" + FormatNumber(values.dV, "0.000000"));
}

TEST(CalcLattice, TheTemperatureGoesInByItsUnit) {
    Bench bench;
    MakeCubic(bench, "Au Gold", 4.0786);
    bench.Graph.AddD(2.0393);
    const auto celsius = bench.Calc(MODE_MARKER, 726.85, TEMPERATURE_CELSIUS);
    const auto kelvin = bench.Calc(MODE_MARKER, 1000.0, TEMPERATURE_KELVIN);
    EXPECT_NEAR(celsius.Pressure->P, kelvin.Pressure->P, 1e-9);
    EXPECT_NEAR(kelvin.Pressure->P, 0.00714 * 700.0, 2e-3);  // V/V0 = 1: thermal pressure alone
}

TEST(CalcLattice, AHexagonalMarkerMultipliesItsErrorsByTheCubes) {
    Bench bench;
    MakeHexagonal(bench, "hBN Boron nitride", 2.5044, 6.6562);
    bench.AddPeaksOf({2.50, 2.50, 6.62, 90, 90, 120});
    for (int i = 0; i < 5; ++i)  // a little off, so that there are errors
        bench.Graph.Peaks->Peak[static_cast<std::size_t>(i)].Position += 0.2 * (i % 3 - 1);
    const LatticeValues values = bench.Calc(MODE_MARKER, 26.85);
    ASSERT_EQ(values.Status, CalcStatus::Ok);
    const double a = values.Solution.CellOut(1), c = values.Solution.CellOut(3);
    const double da = static_cast<float>(0.5 * values.Solution.CellErr(1) * a * a * a);
    const double dc = static_cast<float>(0.5 * values.Solution.CellErr(3) * c * c * c);
    EXPECT_GT(dc, 0.0);
    EXPECT_NEAR(values.V, a * a * c * 0.866025, 1e-12);
    EXPECT_NEAR(values.dV, (a * dc + 2.0 * c * da) * a * 0.866025, 1e-12);
    EXPECT_NEAR(values.V0, 2.5044 * 2.5044 * 6.6562 * 0.866025, 1e-12);
    ASSERT_TRUE(values.Pressure);
    EXPECT_EQ(values.Pressure->P, PressureHbnAxis(c, 26.85));
    EXPECT_NEAR(values.Pressure->Error,
                std::fabs(PressureHbnAxis(c, 26.85) - PressureHbnAxis(c + dc, 26.85)), 1e-12);
    EXPECT_EQ(values.LatticeLength[2].substr(0, 8), FormatNumber(c, "0.000000"));
    EXPECT_EQ(values.LatticeLength[5], "120.00000");
    EXPECT_EQ(values.LatticeLength[4], "90.00000");
}

TEST(CalcLattice, SeedsChooseTheReflectionsAndTheFilesCellIsTheReference) {
    Bench bench;
    MakeCubic(bench, "Au Gold", 4.0);
    bench.Graph.AddD(2.1);  // 2 0 0 of a = 4.2: far from the file's cell
    for (const std::int16_t mode : {MODE_SAMPLE, MODE_MARKER}) {
        CalcRequest request = RequestFor(*bench.State, 0, mode, 27.0, 0);
        EXPECT_EQ(CalcLattice(*bench.State, request, bench.Graph.Source(), bench.Voice).Status,
                  CalcStatus::TooFewLines);
        request.Seed = {4.19, 4.19, 4.19, 90, 90, 90};
        const LatticeValues values =
            CalcLattice(*bench.State, request, bench.Graph.Source(), bench.Voice);
        ASSERT_EQ(values.Status, CalcStatus::Ok);
        EXPECT_EQ(values.V0, 64.0);
        EXPECT_NEAR(values.X, 1.157625, 1e-6);  // 1.05^3
        EXPECT_EQ(bench.State->FitData.CurrentSeed[0], 4.19);
        ClearMatchTable(*bench.State, 0);
    }
}

TEST(CalcLattice, AKeyWithoutAScaleGivesBoxesAndNoPressure) {
    Bench bench;
    MakeCubic(bench, "NaCl Sodium chloride", 5.6402);
    bench.Graph.AddD(2.8201);
    const LatticeValues values = bench.Calc(MODE_MARKER);
    EXPECT_TRUE(values.HasBoxes);
    EXPECT_FALSE(values.Pressure);
    bench.Crystal().Name = "NACL Sodium chloride";
    EXPECT_TRUE(bench.Calc(MODE_MARKER).Pressure);
}

TEST(CalcLattice, AnOrthorhombicMarkerIsCalculatedAndShowsNothing) {
    Bench bench;
    SetCell(bench.Crystal(), "Au O", SYSTEM_ORT, {4, 5, 6, 90, 90, 90});
    SetReflections(bench.Crystal(), {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    bench.AddPeaksOf({4.01, 5.01, 6.01, 90, 90, 90});
    const LatticeValues values = bench.Calc(MODE_MARKER);
    EXPECT_EQ(values.Status, CalcStatus::Ok);
    EXPECT_NEAR(values.Solution.CellOut(2), 5.01, 1e-5);
    EXPECT_FALSE(values.HasBoxes);
    EXPECT_FALSE(values.Pressure);
}

TEST(CalcLattice, AnEmptyPeakTableEndsInTooFewLines) {
    Bench bench;
    MakeCubic(bench, "Au Gold", 4.0786);
    const LatticeValues values = bench.Calc(MODE_MARKER);
    EXPECT_EQ(values.Status, CalcStatus::TooFewLines);
    EXPECT_FALSE(values.HasBoxes);
    ASSERT_EQ(bench.Said.size(), 1u);
    EXPECT_EQ(bench.Said[0], "計算するための回折線の数が少なすぎます。");
}

TEST(CalcLattice, AHexagonalMarkerWithOneLineSaysTheSame) {
    Bench bench;
    MakeHexagonal(bench, "hBN", 2.5044, 6.6562);
    bench.Graph.AddD(3.3281);
    const LatticeValues values = bench.Calc(MODE_MARKER);
    EXPECT_EQ(values.Status, CalcStatus::TooFewLines);
    EXPECT_FALSE(values.Pressure);
    ASSERT_EQ(bench.Said.size(), 1u);
    EXPECT_EQ(bench.Said[0], "計算するための回折線の数が少なすぎます。");
}

TEST(CalcLattice, HexagonalLinesWithoutLAreSingular) {
    Bench bench;
    MakeHexagonal(bench, "hBN", 2.5044, 6.6562);
    bench.Graph.AddD(2.1689);
    bench.Graph.AddD(1.2522);
    EXPECT_EQ(bench.Calc(MODE_MARKER).Status, CalcStatus::Singular);
    ASSERT_EQ(bench.Said.size(), 1u);
    EXPECT_EQ(bench.Said[0], "最小二乗が計算できません");
    // The failure is not remembered by the next calculation.
    bench.Graph.AddD(3.3281);
    EXPECT_EQ(bench.Calc(MODE_MARKER).Status, CalcStatus::Ok);
}

TEST(CalcLattice, AnUnknownSystemIsALatticeTypeError) {
    Bench bench;
    MakeCubic(bench, "Au Gold", 4.0786);
    CalcRequest request = RequestFor(*bench.State, 0, MODE_SAMPLE, 27.0, 0);
    request.System = 6;
    const LatticeValues values =
        CalcLattice(*bench.State, request, bench.Graph.Source(), bench.Voice);
    EXPECT_EQ(values.Status, CalcStatus::LatticeType);
    ASSERT_EQ(bench.Said.size(), 1u);
    EXPECT_EQ(bench.Said[0], "Lattice Type Error");
}

TEST(CalcLattice, SystemNineSelectsCubic) {
    Bench bench;
    MakeCubic(bench, "Au Gold", 4.0786);
    bench.Crystal().System = SYSTEM_ANY;
    EXPECT_EQ(RequestFor(*bench.State, 0, MODE_MARKER, 27.0, 0).System, SYSTEM_CUB);
}

TEST(CalcLattice, AZeroTemperatureIsAFaultWhereItDivides) {
    Bench bench;
    MakeCubic(bench, "NACL Sodium chloride", 5.6402);
    bench.Graph.AddD(2.8201);
    EXPECT_THROW((void)bench.Calc(MODE_MARKER, 0.0, TEMPERATURE_KELVIN), Fault);
}

TEST(CalcLattice, AnUntickedReflectionStaysOutOverTheNextCalculation) {
    Bench bench;
    MakeCubic(bench, "Au Gold", 4.0786);
    bench.Graph.AddD(2.0393);
    bench.Graph.AddD(1.445);
    ASSERT_EQ(bench.Calc(MODE_SAMPLE).UsedRows, 2);
    bench.State->FitData.Match[1].Excluded = TRUE_WORD;
    const LatticeValues values = bench.Calc(MODE_SAMPLE);
    EXPECT_EQ(values.UsedRows, 1);
    EXPECT_EQ(values.LatticeLength[0], "4.078600+-0.000000");
    bench.State->UseListValid = TRUE_WORD;  // as after a 2 theta correction
    EXPECT_EQ(bench.Calc(MODE_SAMPLE).UsedRows, 1);
    EXPECT_EQ(bench.State->FitData.Match[1].Excluded, TRUE_WORD);
}

TEST(CalculatedD, ComesFromTheCalculatedCellWithItsAnglesInDegrees) {
    Bench bench;
    const Cell cell{5.0, 6.0, 7.0, 90, 100, 90};
    SetCell(bench.Crystal(), "M", SYSTEM_MON, cell);
    SetReflections(bench.Crystal(), {{1, 0, 0}, {0, 2, 0}, {0, 0, 1}, {1, 1, 1}, {-1, 1, 1}});
    bench.AddPeaksOf(cell);
    const LatticeValues values = bench.Calc(MODE_SAMPLE);
    for (int i = 0; i < 5; ++i) {
        const ReflectionMatch& row = bench.State->FitData.Match[static_cast<std::size_t>(i)];
        EXPECT_NEAR(CalculatedD(values, SYSTEM_MON, row), row.DCal, 2e-5);
    }
}
