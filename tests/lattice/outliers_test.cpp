// The rules that leave rows out of a refinement: listed reflections, doubles, outliers.
#include "lattice/outliers.h"

#include "core/fault.h"
#include "graph8.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

using namespace vael;
using testing8::DGraph;
using testing8::SetCell;
using testing8::SetReflections;

namespace {

struct Bench {
    std::unique_ptr<LatticeState> State = std::make_unique<LatticeState>();
    DGraph Graph;
    RowRules Rules;

    Bench() {
        State->Table.CrystalCount = 1;
        SetCell(State->Table.Crystals[0], "Au Gold", SYSTEM_CUB, {4, 4, 4, 90, 90, 90});
        SetReflections(
            State->Table.Crystals[0],
            {{1, 1, 1}, {2, 0, 0}, {2, 2, 0}, {3, 1, 1}, {2, 2, 2}, {4, 0, 0}, {5, 1, 1}});
    }
    void Add(int h, int k, int l, double a, double net = 1000.0) {
        Graph.AddD(a / std::sqrt(h * h + k * k + l * l), net);
    }
    RuledValues Calc() {
        return CalcByRules(*State, RequestFor(*State, 0, MODE_SAMPLE, 27.0, 0), Graph.Source(),
                           Rules, {});
    }
};

}  // namespace

TEST(ParseReflections, ReadsTriplesBetweenCommas) {
    const auto list = ParseReflections(" 2 0 0, 2 2 0;-1  1 2 ");
    ASSERT_EQ(list.size(), 3u);
    EXPECT_EQ(list[0], (Hkl{2, 0, 0}));
    EXPECT_EQ(list[2], (Hkl{-1, 1, 2}));
    EXPECT_TRUE(ParseReflections("").empty());
    for (const char* bad : {"2 0", "2 0 0 0", "2 0 x", "2 0 0,1.5 0 0", "0 0 0", "200", "9999 0 0"})
        EXPECT_THROW((void)ParseReflections(bad), Fault) << bad;
}

TEST(KeepListed, OnlyListedReflectionsTakePart) {
    Bench bench;
    bench.Add(1, 1, 1, 4.02);
    bench.Add(2, 0, 0, 4.00);
    bench.Add(2, 2, 0, 4.00);
    bench.Add(5, 1, 1, 4.00);
    bench.Rules.Reflections = {{0, 0, 2}, {3, 3, 3}, {2, 2, 0}};  // equivalents and equal d count
    const RuledValues ruled = bench.Calc();
    ASSERT_EQ(ruled.Unticked.size(), 1u);
    EXPECT_EQ(ruled.Unticked[0].Row, 0);
    EXPECT_EQ(ruled.Unticked[0].Index, (Hkl{1, 1, 1}));
    EXPECT_EQ(ruled.Unticked[0].Reason, "not among the listed reflections");
    EXPECT_EQ(ruled.Values.UsedRows, 3);
    EXPECT_NEAR(ruled.Values.CellNow[0], 4.0, 1e-6);
    bench.Rules.Reflections = {{3, 1, 1}};
    EXPECT_EQ(bench.Calc().Values.Status, CalcStatus::TooFewLines);
}

TEST(KeepLargest, OfSeveralPeaksOnAReflectionTheLargestNetCountStays) {
    Bench bench;
    bench.Add(2, 0, 0, 3.99, 500.0);
    bench.Add(2, 0, 0, 4.00, 900.0);
    bench.Add(2, 0, 0, 4.01, 900.0);
    bench.Add(2, 2, 0, 4.00, 10.0);
    const RuledValues ruled = bench.Calc();
    ASSERT_EQ(ruled.Unticked.size(), 2u);
    EXPECT_EQ(ruled.Unticked[0].Row, 0);
    EXPECT_EQ(ruled.Unticked[0].Reason, "peak 2 on the same reflection has the larger net count");
    EXPECT_EQ(ruled.Unticked[1].Row, 2);  // on a tie the earlier one stays
    EXPECT_NEAR(ruled.Values.CellNow[0], 4.0, 1e-6);
}

TEST(CalcByRules, KeepsEverythingWhenToldTo) {
    Bench bench;
    bench.Rules.DropOutliers = false;
    bench.Add(2, 0, 0, 3.99, 500.0);
    bench.Add(2, 0, 0, 4.00, 900.0);
    const RuledValues ruled = bench.Calc();
    EXPECT_TRUE(ruled.Unticked.empty());
    EXPECT_EQ(ruled.Values.UsedRows, 2);
}

TEST(CalcByRules, DropsOutliersWorstFirstAndRefinesAgain) {
    Bench bench;
    const double a = 4.004;
    bench.Add(1, 1, 1, a * 1.00002);
    bench.Add(2, 0, 0, a * 0.99998);
    bench.Add(2, 2, 0, a * 1.006);  // the second worst: 1 - 1/1.006 = 0.596 %
    bench.Add(3, 1, 1, a * 1.00001);
    bench.Add(2, 2, 2, a * 0.99);  // the worst
    bench.Add(4, 0, 0, a);
    const RuledValues ruled = bench.Calc();
    ASSERT_EQ(ruled.Unticked.size(), 2u);
    EXPECT_EQ(ruled.Unticked[0].Index, (Hkl{2, 2, 2}));
    EXPECT_EQ(ruled.Unticked[1].Index, (Hkl{2, 2, 0}));
    EXPECT_NE(ruled.Unticked[0].Reason.find("d is off by -"), std::string::npos);
    EXPECT_NE(ruled.Unticked[1].Reason.find("d is off by 0.59"), std::string::npos);
    EXPECT_NEAR(ruled.Values.CellNow[0], a, 1e-4);
    EXPECT_EQ(ruled.Values.UsedRows, 4);
}

TEST(CalcByRules, ADeviationBelowTheLeastSpreadIsNoOutlier) {
    Bench bench;  // 4 times 1e-4 is the least limit, however well the others agree
    for (const auto& [h, k, l] : {std::array{1, 1, 1}, {2, 0, 0}, {3, 1, 1}, {2, 2, 2}})
        bench.Add(h, k, l, 4.0);
    bench.Add(2, 2, 0, 4.0 * 1.00038);
    EXPECT_TRUE(bench.Calc().Unticked.empty());
    bench.Graph.Peaks->PeakNum = 4;
    bench.Add(2, 2, 0, 4.0 * 1.0006);
    EXPECT_EQ(bench.Calc().Unticked.size(), 1u);
}

TEST(CalcByRules, StopsAtTheParametersPlusOne) {
    Bench bench;  // two rows of a cubic crystal: nothing more is dropped, however bad
    bench.Add(1, 1, 1, 4.0);
    bench.Add(2, 0, 0, 4.02);
    EXPECT_TRUE(bench.Calc().Unticked.empty());
    bench.Add(2, 2, 0, 4.0);
    const RuledValues ruled = bench.Calc();  // three: one may go
    ASSERT_EQ(ruled.Unticked.size(), 1u);
    EXPECT_EQ(ruled.Unticked[0].Index, (Hkl{2, 0, 0}));
}

TEST(CalcByRules, StopsAtThreeRowsOfAHexagonalCrystal) {
    Bench bench;
    CrystalRecord& crystal = bench.State->Table.Crystals[0];
    SetCell(crystal, "hex", SYSTEM_HEX, {4, 4, 6.5, 90, 90, 120});
    SetReflections(crystal, {{1, 0, 0}, {0, 0, 2}, {2, 0, 0}});
    bench.Graph.AddD(4.0 * std::sqrt(0.75) * 1.005);  // would be an outlier among more rows
    bench.Graph.AddD(3.25);
    bench.Graph.AddD(2.0 * std::sqrt(0.75));
    const RuledValues ruled = bench.Calc();
    ASSERT_EQ(ruled.Values.Status, CalcStatus::Ok);
    EXPECT_TRUE(ruled.Unticked.empty());
}

TEST(CalcByRules, ARowWhoseLossMakesTheFitFailIsTakenBack) {
    // a is 4 by three rows. 002 says c* squared is 1/5.8^2/4 = 0.0074, 102 says -0.0004, both with
    // the same weight: together 0.0035. So 002 lies 45 % off and 102 11 %; but without 002 there is
    // no cell.
    Bench bench;
    CrystalRecord& crystal = bench.State->Table.Crystals[0];
    SetCell(crystal, "tet", SYSTEM_TET, {4, 4, 12, 90, 90, 90});
    SetReflections(crystal, {{0, 0, 2}, {1, 0, 2}, {2, 0, 0}, {2, 2, 0}, {4, 0, 0}});
    bench.Graph.Pickup = 1.0;
    bench.Graph.AddD(5.8);
    bench.Graph.AddD(4.05);
    bench.Graph.AddD(2.0);
    bench.Graph.AddD(std::sqrt(2.0));
    bench.Graph.AddD(1.0);
    const RuledValues ruled = bench.Calc();
    ASSERT_EQ(ruled.Values.Status, CalcStatus::Ok);
    EXPECT_TRUE(ruled.Unticked.empty());
    EXPECT_EQ(ruled.Values.UsedRows, 5);
    EXPECT_EQ(bench.State->FitData.Match[0].Excluded, FALSE_WORD);
    bench.State->FitData.Match[0].Excluded = TRUE_WORD;
    EXPECT_EQ(CalcLattice(*bench.State, RequestFor(*bench.State, 0, MODE_SAMPLE, 27.0, 0),
                          bench.Graph.Source(), {})
                  .Status,
              CalcStatus::NoCell);
}

TEST(CalcByRules, StartsFromAClearedTableAndSaysWhyItFails) {
    Bench bench;
    bench.State->FitData.Match[0].Matched = TRUE_WORD;  // of another file
    bench.State->FitData.Match[0].H = 2;
    bench.State->FitData.Match[0].DObs = 2.0;
    bench.State->FitData.Match[0].ThetaCu = 30.0;
    EXPECT_EQ(bench.Calc().Values.Status, CalcStatus::TooFewLines);
}

TEST(ParameterCount, IsThatOfTheSystem) {
    const int counts[] = {1, 2, 2, 3, 4, 6};
    for (int system = 0; system < 6; ++system) EXPECT_EQ(ParameterCount(system), counts[system]);
    EXPECT_THROW((void)ParameterCount(6), Fault);
}
