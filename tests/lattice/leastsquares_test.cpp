// The cell refinement of all systems against an 8-byte one, its conversion, and its refusals.
#include "lattice/leastsquares.h"

#include "core/fault.h"
#include "refine8.h"
#include "structure.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

using namespace vael;
using testing8::Row;

namespace {

struct Bench {
    std::unique_ptr<LatticeState> State = std::make_unique<LatticeState>();
    Talk Voice;
    std::vector<std::string> Said;
    LatticeSolution Solution;

    Bench() {
        Voice.say = [this](std::string_view text, std::string_view title) {
            EXPECT_EQ(title, "");
            Said.emplace_back(text);
        };
    }
    void Add(int h, int k, int l, double d, bool excluded = false) {
        std::size_t i = 0;
        while (State->FitData.Match[i].Matched != FALSE_WORD) ++i;
        ReflectionMatch& row = State->FitData.Match[i];
        row.H = static_cast<std::int16_t>(h);
        row.K = static_cast<std::int16_t>(k);
        row.L = static_cast<std::int16_t>(l);
        row.DObs = d;
        row.ThetaCu = ThetaCu(d, 50.0);
        row.Matched = TRUE_WORD;
        row.Excluded = excluded ? TRUE_WORD : FALSE_WORD;
    }
    int Refine(int system) {
        LoadFitArrays(*State, static_cast<std::int16_t>(system));
        return CellRefine(*State, Voice, Solution);
    }
};

/// Observations of a known structure, each d off by a little that is fixed by its number.
std::vector<Row> Observed(const tools::Structure& structure, double dMin, std::size_t most) {
    std::vector<Row> rows;
    for (const auto& line : tools::PowderLines(structure, structure.Constants, dMin)) {
        if (rows.size() == most) break;
        const double off = 2e-4 * std::sin(1.7 * static_cast<double>(rows.size()) + 0.4);
        rows.push_back({line.Hkl[0], line.Hkl[1], line.Hkl[2], line.D * (1.0 + off)});
    }
    return rows;
}

void CompareWithEightBytes(const std::string& key, double dMin, double tolerance) {
    const tools::Structure& structure = tools::FindStructure(key);
    const auto rows = Observed(structure, dMin, 100);
    Bench bench;
    for (const Row& row : rows) bench.Add(row.H, row.K, row.L, row.D);
    ASSERT_EQ(bench.Refine(structure.System), REFINE_OK) << key;
    const auto expected = testing8::Refine(structure.System, rows);
    ASSERT_EQ(bench.Solution.ParamNum, static_cast<int>(expected.Param.size())) << key;
    for (int i = 1; i <= CELL_COUNT; ++i) {
        const auto at = static_cast<std::size_t>(i - 1);
        const double size = i > 3 && i < 7 ? 1.0 : expected.Cell[at];
        EXPECT_NEAR(bench.Solution.CellOut(i), expected.Cell[at], tolerance * size) << key << i;
        EXPECT_NEAR(bench.Solution.CellErr(i), expected.Error[at], 0.02 * expected.Error[at] + 1e-6)
            << key << i;
    }
    for (int i = 1; i <= bench.Solution.ParamNum; ++i) {
        const double p = expected.Param[static_cast<std::size_t>(i - 1)];
        EXPECT_NEAR(bench.Solution.Param(i), p, tolerance * (std::fabs(p) + 0.01)) << key << i;
    }
    EXPECT_TRUE(bench.Said.empty());
}

}  // namespace

TEST(CellRefine, AgreesWithAnEightByteRefinementInAllSystems) {
    CompareWithEightBytes("Au", 0.78, 1e-6);
    CompareWithEightBytes("Stishovite", 0.78, 1e-6);
    CompareWithEightBytes("Al2O3", 0.78, 1e-6);
    CompareWithEightBytes("Forsterite", 1.2, 3e-6);
    CompareWithEightBytes("Coesite", 1.4, 3e-6);
    CompareWithEightBytes("Diopside", 1.3, 3e-6);
    CompareWithEightBytes("Kyanite", 1.8, 1e-5);
}

TEST(CellRefine, OneReflectionIsEnoughForACubicCellAndHasNoError) {
    Bench bench;
    bench.Add(2, 0, 0, 2.0);
    ASSERT_EQ(bench.Refine(SYSTEM_CUB), REFINE_OK);
    for (int i = 1; i <= 3; ++i) EXPECT_FLOAT_EQ(bench.Solution.CellOut(i), 4.0F);
    EXPECT_FLOAT_EQ(bench.Solution.CellOut(7), 64.0F);
    for (int i = 1; i <= 7; ++i) EXPECT_EQ(bench.Solution.CellErr(i), 0.0F);
    EXPECT_EQ(bench.Solution.ParamErr(1), 0.0F);
}

TEST(CellRefine, TwoReflectionsForACubicCellLeaveOneDegreeOfFreedom) {
    // y = 0.25 and 0.51 with x = 4 and 8: p = (4 * 0.25 + 8 * 0.51) / 80 = 0.0635, residuals
    // -0.004 and 0.002, so s = sqrt(2e-5 / 1 / 80) = 5e-4.
    Bench bench;
    bench.Add(2, 0, 0, 2.0);
    bench.Add(2, 2, 0, 1.0 / std::sqrt(0.51));
    ASSERT_EQ(bench.Refine(SYSTEM_CUB), REFINE_OK);
    EXPECT_NEAR(bench.Solution.Param(1), 0.0635, 1e-8);
    EXPECT_NEAR(bench.Solution.ParamErr(1), 5e-4, 1e-8);
    const double a = 1.0 / std::sqrt(0.0635);
    EXPECT_NEAR(bench.Solution.CellErr(1), 0.5 * a * a * a * 5e-4, 1e-6);
    EXPECT_NEAR(bench.Solution.CellErr(7), 3.0 * a * a * bench.Solution.CellErr(1), 1e-4);
}

TEST(CellRefine, TheLeastCountsOfReflectionsAreThoseOfTheFreeParameters) {
    struct Case {
        int System;
        const char* Key;
        std::size_t Least;
    };
    for (const Case& c : {Case{SYSTEM_CUB, "Au", 1}, Case{SYSTEM_TET, "Zircon", 2},
                          Case{SYSTEM_HEX, "Al2O3", 2}, Case{SYSTEM_ORT, "Forsterite", 3},
                          Case{SYSTEM_MON, "Coesite", 4}, Case{SYSTEM_TRI, "Kyanite", 6}}) {
        const auto rows = Observed(tools::FindStructure(c.Key), 1.0, c.Least - 1);
        Bench bench;
        for (const Row& row : rows) bench.Add(row.H, row.K, row.L, row.D);
        EXPECT_EQ(bench.Refine(c.System), REFINE_TOO_FEW);
        ASSERT_EQ(bench.Said.size(), 1u);
        EXPECT_EQ(bench.Said[0], "計算するための回折線の数が少なすぎます。");
    }
    Bench exact;  // as many as parameters: solved, with no error
    for (const auto& [h, k, l] : {std::array{2, 0, 0}, {0, 2, 0}, {0, 0, 2}})
        exact.Add(h, k, l, h ? 2.0 : k ? 2.5 : 3.0);
    ASSERT_EQ(exact.Refine(SYSTEM_ORT), REFINE_OK);
    EXPECT_NEAR(exact.Solution.CellOut(1), 4.0, 1e-5);
    EXPECT_NEAR(exact.Solution.CellOut(2), 5.0, 1e-5);
    EXPECT_NEAR(exact.Solution.CellOut(3), 6.0, 1e-5);
    EXPECT_EQ(exact.Solution.CellErr(2), 0.0F);
}

TEST(CellRefine, AnOrthorhombicCellHasCosinesOfZero) {
    Bench bench;
    for (const Row& row : Observed(tools::FindStructure("Forsterite"), 1.2, 20))
        bench.Add(row.H, row.K, row.L, row.D);
    ASSERT_EQ(bench.Refine(SYSTEM_ORT), REFINE_OK);
    for (int i = 4; i <= 6; ++i) EXPECT_EQ(bench.Solution.CellOut(i), 0.0F);
}

TEST(CellRefine, AHexagonalMapTiesThreeParametersToOne) {
    Bench bench;
    bench.Add(1, 0, 0, 2.0);
    bench.Add(0, 0, 2, 3.0);
    bench.Add(1, 1, 0, 1.1547);
    ASSERT_EQ(bench.Refine(SYSTEM_HEX), REFINE_OK);
    const std::array<int, 6> map{1, -1, 2, 0, 0, -1};
    for (int i = 1; i <= 6; ++i)
        EXPECT_EQ(bench.State->Fit.Map(i), map[static_cast<std::size_t>(i - 1)]);
    EXPECT_EQ(bench.State->Fit.DesignRow(3)(1), 3.0F);  // h^2 + k^2 + h k
    EXPECT_EQ(bench.State->Fit.DesignRow(2)(2), 4.0F);
    EXPECT_NEAR(bench.Solution.CellOut(6), -0.5, 1e-6);  // cosine of 120 degrees
    EXPECT_NEAR(bench.Solution.CellOut(1), 4.0 / std::sqrt(3.0), 1e-4);
    EXPECT_NEAR(bench.Solution.CellOut(3), 6.0, 1e-5);
}

TEST(CellRefine, MapsOfTheOtherSystems) {
    const auto mapOf = [](int system) {
        Bench bench;
        for (int i = 1; i <= 7; ++i) bench.Add(i, i % 3, i % 2, 2.0 + 0.1 * i);
        (void)bench.Refine(system);
        std::array<int, 6> map;
        for (int i = 1; i <= 6; ++i) map[static_cast<std::size_t>(i - 1)] = bench.State->Fit.Map(i);
        return map;
    };
    EXPECT_EQ(mapOf(SYSTEM_CUB), (std::array<int, 6>{1, -1, -1, 0, 0, 0}));
    EXPECT_EQ(mapOf(SYSTEM_TET), (std::array<int, 6>{1, -1, 2, 0, 0, 0}));
    EXPECT_EQ(mapOf(SYSTEM_ORT), (std::array<int, 6>{1, 2, 3, 0, 0, 0}));
    EXPECT_EQ(mapOf(SYSTEM_MON), (std::array<int, 6>{1, 2, 3, 0, 4, 0}));
    EXPECT_EQ(mapOf(SYSTEM_TRI), (std::array<int, 6>{1, 2, 3, 4, 5, 6}));
}

TEST(CellRefine, AHexagonalFitOfHk0AloneIsRefused) {
    Bench bench;
    bench.Add(1, 0, 0, 2.0);
    bench.Add(1, 1, 0, 1.1547);
    bench.Add(2, 0, 0, 1.0);
    EXPECT_EQ(bench.Refine(SYSTEM_HEX), REFINE_SINGULAR);
    EXPECT_EQ(bench.State->FitFailed, 1);
    ASSERT_EQ(bench.Said.size(), 1u);
    EXPECT_EQ(bench.Said[0], "最小二乗が計算できません");
    EXPECT_EQ(bench.Solution.ParamNum, 0);  // nothing is written
}

TEST(CellRefine, ARowWithoutAnAngleIsNoObservation) {
    Bench bench;
    bench.Add(2, 0, 0, 2.0);
    bench.Add(6, 2, 0, 0.7);  // d below 0.7709
    ASSERT_EQ(bench.Refine(SYSTEM_CUB), REFINE_OK);
    EXPECT_EQ(bench.State->Fit.FitFlag(1), 1);
    EXPECT_EQ(bench.State->Fit.FitFlag(2), 2);
    EXPECT_EQ(bench.State->Fit.FitWeight(2), 0.0F);
    EXPECT_FLOAT_EQ(bench.Solution.CellOut(1), 4.0F);
    EXPECT_NEAR(bench.State->Fit.FitDCal(2), 4.0 / std::sqrt(40.0), 1e-6);  // told all the same

    Bench alone;
    alone.Add(6, 2, 0, 0.7);
    EXPECT_EQ(alone.Refine(SYSTEM_CUB), REFINE_TOO_FEW);
}

TEST(CellRefine, RowsLeftOutAreNotLoaded) {
    Bench bench;
    bench.Add(1, 1, 1, 2.5, true);
    bench.Add(2, 0, 0, 2.0);
    ASSERT_EQ(bench.Refine(SYSTEM_CUB), REFINE_OK);
    EXPECT_EQ(bench.State->Fit.FitHkl(1), (std::array<std::int16_t, 3>{2, 0, 0}));
    EXPECT_EQ(bench.State->Fit.FitHkl(2), (std::array<std::int16_t, 3>{0, 0, 0}));
    EXPECT_FLOAT_EQ(bench.Solution.CellOut(1), 4.0F);
}

TEST(CellRefine, TellsDAndDeviationOfEachRowAndNoAngle) {
    Bench bench;
    bench.Add(2, 0, 0, 2.0);
    bench.Add(2, 2, 0, 1.0 / std::sqrt(0.51));
    ASSERT_EQ(bench.Refine(SYSTEM_CUB), REFINE_OK);
    const double dCal = 1.0 / std::sqrt(4 * 0.0635);
    EXPECT_NEAR(bench.State->Fit.FitDCal(1), dCal, 1e-6);
    EXPECT_NEAR(bench.State->Fit.FitDelta(1), 2.0 / dCal - 1.0, 1e-6);
    EXPECT_EQ(bench.State->Fit.Fit2Theta(1), 0.0F);
}

TEST(CellRefine, AWeightThatIsNotPositiveCountsAsOne) {
    Bench bench;
    bench.Add(2, 0, 0, 2.0);
    bench.Add(2, 2, 0, 1.0 / std::sqrt(0.51));
    LoadFitArrays(*bench.State, SYSTEM_CUB);
    bench.State->Fit.FitWeight(1) = 0.0F;
    bench.State->Fit.FitWeight(2) = -3.0F;
    bench.State->Fit.Map(4) = 5;  // of a former run
    ASSERT_EQ(CellRefine(*bench.State, bench.Voice, bench.Solution), REFINE_OK);
    EXPECT_EQ(bench.State->Fit.FitWeight(1), 1.0F);
    EXPECT_EQ(bench.State->Fit.FitWeight(2), 1.0F);
    EXPECT_EQ(bench.State->Fit.Map(4), 0);
    EXPECT_NEAR(bench.Solution.Param(1), 0.0635, 1e-8);  // as with the weights of 1
}

TEST(CellRefine, ARowWithoutADHasNoDeviation) {
    Bench bench;
    bench.Add(2, 0, 0, 2.0);
    bench.Add(2, 2, 0, 0.0);  // its angle is 0, so it is no observation; its deviation would be -1
    ASSERT_EQ(bench.Refine(SYSTEM_CUB), REFINE_OK);
    EXPECT_EQ(bench.State->Fit.FitDelta(2), 0.0F);
    EXPECT_FLOAT_EQ(bench.Solution.CellOut(1), 4.0F);
}

TEST(CellRefine, ACellThatCannotBeConvertedFailsWithoutAWord) {
    Bench bench;  // 1/d^2 falls along c: c*^2 comes out negative
    bench.Add(2, 0, 0, 2.0);
    bench.Add(2, 0, 2, 2.2);
    EXPECT_EQ(bench.Refine(SYSTEM_TET), REFINE_CONVERSION);
    EXPECT_EQ(bench.State->FitFailed, 2);
    EXPECT_TRUE(bench.Said.empty());
}

TEST(CellRefine, AHundredRowsFillTheArrays) {
    Bench bench;
    for (int i = 0; i < 100; ++i) {
        ReflectionMatch& row = bench.State->FitData.Match[static_cast<std::size_t>(i)];
        row = {2, 0, 0, 0, 0, 0, 2.0, 30.0, TRUE_WORD, FALSE_WORD};
    }
    ASSERT_EQ(bench.Refine(SYSTEM_CUB), REFINE_OK);
    EXPECT_NEAR(bench.Solution.CellOut(1), 4.0, 1e-5);
}

TEST(CellRefine, AnIndexWhoseSquareLeavesSixteenBitsIsAFault) {
    Bench bench;
    bench.Add(181, 0, 0, 2.0);
    EXPECT_EQ(bench.Refine(SYSTEM_CUB), REFINE_OK);
    bench.Add(182, 0, 0, 2.0);
    EXPECT_THROW((void)bench.Refine(SYSTEM_CUB), Fault);
}

TEST(SolveLeastSquares, APivotAtTheToleranceIsRefused) {
    DesignTable x;
    Table1<float, MAX_PEAKS> y;
    x(1)(1) = 1.0F;
    x(2)(2) = 0.01F;
    y(1) = 2.0F;
    y(2) = 0.03F;
    const float pivot = x(2)(2) * x(2)(2);  // the second one, on the diagonal already
    const auto solve = [&](float tolerance, int& m, Table1<float, METRIC_COUNT>& b) {
        Table1<float, METRIC_COUNT> s;
        std::int16_t failed = 0;
        m = 2;
        SolveLeastSquares(tolerance, 2, m, y, x, b, s, failed, {});
        return failed;
    };
    int m = 0;
    Table1<float, METRIC_COUNT> b;
    EXPECT_EQ(solve(pivot, m, b), 1);
    EXPECT_EQ(m, 0);
    EXPECT_EQ(solve(std::nextafter(pivot, 0.0F), m, b), 0);
    EXPECT_EQ(m, 2);
    EXPECT_NEAR(b(2), 3.0, 1e-5);
}

TEST(SolveLeastSquares, RowsAreSwappedForTheLargestPivot) {
    // Normal matrix (0.000049 0.035 / 0.035 26): the first entry is below the tolerance, the one
    // below it is not, and what is left for the last pivot, 0.0014, is not either.
    DesignTable x;
    Table1<float, MAX_PEAKS> y;
    const float columns[2][2] = {{0.007F, 5}, {0, 1}};
    for (int j = 1; j <= 2; ++j) {
        x(j)(1) = columns[j - 1][0];
        x(j)(2) = columns[j - 1][1];
        y(j) = 3.0F * x(j)(1) - 2.0F * x(j)(2);
    }
    Table1<float, METRIC_COUNT> b, s;
    std::int16_t failed = 0;
    int m = 2;
    SolveLeastSquares(0.0001F, 2, m, y, x, b, s, failed, {});
    ASSERT_EQ(failed, 0);
    EXPECT_NEAR(b(1), 3.0, 0.5);  // little is left of four bytes after that cancellation
    EXPECT_NEAR(b(2), -2.0, 1e-3);
}

TEST(ConvertCell, ErrorsAreThePartialDerivativesByCentralDifferences) {
    // A triclinic metric: with an error of 1 in one parameter alone, the errors of the outputs are
    // the sizes of the derivatives by it.
    const std::vector<double> p{0.021, 0.018, 0.034, -0.004, 0.009, 0.012};
    Table1<std::int16_t, METRIC_COUNT> map;
    Table1<float, METRIC_COUNT> p4;
    for (int i = 1; i <= 6; ++i) {
        map(i) = static_cast<std::int16_t>(i);
        p4(i) = static_cast<float>(p[static_cast<std::size_t>(i - 1)]);
    }
    const auto expectedCell = testing8::CellOf(testing8::MetricOf(5, p));
    for (int j = 1; j <= 6; ++j) {
        Table1<float, METRIC_COUNT> e;
        e(j) = 1.0F;
        Table1<float, CELL_COUNT> cell, cellErr;
        ASSERT_TRUE(ConvertCell(p4, e, cell, cellErr, map, 6));
        for (int row = 1; row <= 7; ++row) {
            const auto at = static_cast<std::size_t>(row - 1);
            EXPECT_NEAR(cell(row), expectedCell[at], 2e-6 * (std::fabs(expectedCell[at]) + 1));
            const double slope =
                std::fabs(testing8::Slope(5, p, at, static_cast<std::size_t>(j - 1)));
            EXPECT_NEAR(cellErr(row), slope, 2e-4 * slope + 2e-4) << row << " by " << j;
        }
    }
}

TEST(ConvertCell, CoupledParametersCountOnce) {
    // Cubic: all three axes hang on one parameter, V = p^-1.5, dV = 1.5 p^-2.5 e.
    Table1<std::int16_t, METRIC_COUNT> map;
    map(1) = 1;
    map(2) = map(3) = -1;
    Table1<float, METRIC_COUNT> p, e;
    p(1) = p(2) = p(3) = 0.0625F;
    e(1) = 0.001F;
    Table1<float, CELL_COUNT> cell, cellErr;
    ASSERT_TRUE(ConvertCell(p, e, cell, cellErr, map, 1));
    EXPECT_FLOAT_EQ(cell(7), 64.0F);
    EXPECT_NEAR(cellErr(7), 1.5 * 64.0 / 0.0625 * 0.001, 1e-4);
    EXPECT_NEAR(cellErr(1), 0.5 * 4.0 / 0.0625 * 0.001, 1e-6);
}

TEST(ConvertCell, RefusesWhatIsNoCell) {
    Table1<std::int16_t, METRIC_COUNT> map;
    Table1<float, METRIC_COUNT> p, e;
    Table1<float, CELL_COUNT> cell, cellErr;
    p(1) = p(2) = 0.0625F;
    EXPECT_FALSE(ConvertCell(p, e, cell, cellErr, map, 6));  // c*^2 is 0
    p(3) = 0.0625F;
    p(6) = 0.125F;
    EXPECT_FALSE(ConvertCell(p, e, cell, cellErr, map, 6));  // a cosine of 1: its sine is 0
    p(6) = 0.2F;
    EXPECT_FALSE(ConvertCell(p, e, cell, cellErr, map, 6));  // a root of a negative number
    p(4) = p(5) = 0.1F;
    p(6) = -0.1F;
    EXPECT_FALSE(ConvertCell(p, e, cell, cellErr, map, 6));  // angles that close no cell
}

TEST(LatticeSolve, MatchesAndRefinesAndStoresTheSystem) {
    Bench bench;
    CrystalRecord& crystal = bench.State->Table.Crystals[30];
    crystal.System = SYSTEM_ANY;
    crystal.Count = 2;
    crystal.Hs = {2, 2};
    crystal.Ks = {0, 2};
    auto peaks = std::make_unique<PeakTable>();
    auto property = std::make_unique<PropertyRecord>();
    property->Param.EgcCoef = {0.0, 0.03, 0.0};
    property->Param.TwoTheta = 10.0;
    const double sine = std::sin(5.0 * 3.14159265358979 / 180.0);
    for (const double d : {4.02 / 2.0, 4.02 / std::sqrt(8.0)}) {
        peaks->Peak[static_cast<std::size_t>(peaks->PeakNum++)].Position =
            12.3981 / (2.0 * d * sine) / 0.03 - 1.0;
    }
    int refined = 7;
    const MatchSource source{0, 0, *peaks, *property};
    ASSERT_EQ(LatticeSolve(*bench.State, SYSTEM_CUB, 30, {4, 4, 4, 90, 90, 90}, source, bench.Voice,
                           bench.Solution, &refined),
              0);
    EXPECT_EQ(refined, REFINE_OK);
    EXPECT_EQ(crystal.System, SYSTEM_CUB);
    EXPECT_NEAR(bench.Solution.CellOut(1), 4.02, 1e-5);
    EXPECT_EQ(bench.State->SavedUseNum, 2);
    peaks->PeakNum = 0;
    ClearMatchTable(*bench.State, 0);
    EXPECT_EQ(LatticeSolve(*bench.State, SYSTEM_CUB, 30, {4, 4, 4, 90, 90, 90}, source, bench.Voice,
                           bench.Solution, &refined),
              -1);
    EXPECT_EQ(refined, REFINE_TOO_FEW);
    EXPECT_THROW(
        (void)LatticeSolve(*bench.State, SYSTEM_CUB, 31, {}, source, bench.Voice, bench.Solution),
        Fault);
}
