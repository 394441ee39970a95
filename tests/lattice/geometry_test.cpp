// d of reflections in all systems, cell volumes, matching, and the use list over a re-match.
#include "lattice/geometry.h"

#include "core/fault.h"
#include "core/units.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <memory>
#include <numbers>
#include <vector>

using namespace vael;

namespace {

CrystalRecord CrystalOf(int system, std::vector<std::array<int, 3>> hkl) {
    CrystalRecord crystal;
    crystal.System = static_cast<std::int16_t>(system);
    for (const auto& [h, k, l] : hkl) {
        const auto row = static_cast<std::size_t>(crystal.Count++);
        crystal.Hs[row] = static_cast<std::int16_t>(h);
        crystal.Ks[row] = static_cast<std::int16_t>(k);
        crystal.Ls[row] = static_cast<std::int16_t>(l);
    }
    return crystal;
}

double DOf(int system, const Cell& cell, int h, int k, int l) {
    CrystalRecord crystal = CrystalOf(system, {{h, k, l}});
    CalcDSpacings(crystal, cell);
    return crystal.D[0];
}

/// A second way to d: the length of h a* + k b* + l c* with vectors from Cartesian edges.
double DByVectors(const Cell& cell, int h, int k, int l) {
    const double rad = std::numbers::pi / 180.0;
    const double ca = std::cos(cell[3] * rad), cb = std::cos(cell[4] * rad);
    const double cg = std::cos(cell[5] * rad), sg = std::sin(cell[5] * rad);
    using V = std::array<double, 3>;
    const V a{cell[0], 0, 0};
    const V b{cell[1] * cg, cell[1] * sg, 0};
    const double y = (ca - cb * cg) / sg;
    const V c{cell[2] * cb, cell[2] * y, cell[2] * std::sqrt(1 - cb * cb - y * y)};
    const auto cross = [](const V& p, const V& q) {
        return V{p[1] * q[2] - p[2] * q[1], p[2] * q[0] - p[0] * q[2], p[0] * q[1] - p[1] * q[0]};
    };
    const V bc = cross(b, c), ca2 = cross(c, a), ab = cross(a, b);
    const double v = a[0] * bc[0];
    double sum = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        const double g = (h * bc[i] + k * ca2[i] + l * ab[i]) / v;
        sum += g * g;
    }
    return 1.0 / std::sqrt(sum);
}

/// A graph of peaks with E = 0.03 x and 2 theta 10 degrees.
struct Graph {
    std::unique_ptr<PropertyRecord> Property = std::make_unique<PropertyRecord>();
    std::unique_ptr<PeakTable> Peaks = std::make_unique<PeakTable>();
    DacAxis Dac{};
    double Pickup = 0.03;

    Graph() {
        Property->Param.EgcCoef = {0.0, 0.03, 0.0};
        Property->Param.TwoTheta = 10.0;
    }
    double ChannelOf(double d) const {
        return 12.3981 / (2.0 * d * std::sin(5.0 * std::numbers::pi / 180.0)) / 0.03 - 1.0;
    }
    void AddD(double d) { AddChannel(ChannelOf(d)); }
    void AddChannel(double channel) {
        Peaks->Peak[static_cast<std::size_t>(Peaks->PeakNum++)].Position = channel;
    }
    MatchSource Source(std::int16_t graphNo = 0) const {
        return {graphNo, 3, *Peaks, *Property, Dac, Pickup};
    }
};

std::unique_ptr<LatticeState> NewState() { return std::make_unique<LatticeState>(); }

}  // namespace

TEST(CalcDSpacings, CubicTwoZeroZeroOfFourIsTwo) {
    EXPECT_EQ(DOf(SYSTEM_CUB, {4, 9, 9, 1, 2, 3}, 2, 0, 0), 2.0);
}

TEST(CalcDSpacings, HexagonalOneZeroZeroIsAOverRootFourThirds) {
    EXPECT_NEAR(DOf(SYSTEM_HEX, {1, 7, 1, 0, 0, 0}, 1, 0, 0), std::sqrt(0.75), 1e-15);
}

TEST(CalcDSpacings, EachSystemAgreesWithReciprocalVectors) {
    struct Case {
        int System;
        Cell Constants;
    };
    for (const Case& c : {Case{SYSTEM_CUB, {5.2, 5.2, 5.2, 90, 90, 90}},
                          Case{SYSTEM_TET, {4.18, 4.18, 2.667, 90, 90, 90}},
                          Case{SYSTEM_HEX, {4.913, 4.913, 5.405, 90, 90, 120}},
                          Case{SYSTEM_ORT, {4.7535, 10.1943, 5.9807, 90, 90, 90}},
                          Case{SYSTEM_MON, {7.1356, 12.3692, 7.1736, 90, 120.34, 90}},
                          Case{SYSTEM_TRI, {7.1262, 7.852, 5.5724, 89.99, 101.11, 106.03}}})
        for (const auto& [h, k, l] : {std::array<int, 3>{1, 0, 0},
                                      {0, 1, 0},
                                      {0, 0, 1},
                                      {1, 2, 3},
                                      {-2, 1, 1},
                                      {3, -1, 2},
                                      {-1, -1, 2}})
            EXPECT_NEAR(DOf(c.System, c.Constants, h, k, l), DByVectors(c.Constants, h, k, l),
                        1e-12)
                << c.System << " " << h << k << l;
}

TEST(CalcDSpacings, OnlyTheFreeConstantsAreRead) {
    EXPECT_EQ(DOf(SYSTEM_TET, {4, 0, 3, 0, 0, 0}, 1, 1, 2),
              DOf(SYSTEM_TET, {4, 4, 3, 90, 90, 90}, 1, 1, 2));
    EXPECT_EQ(DOf(SYSTEM_HEX, {4, 0, 3, 0, 0, 0}, 1, 1, 2),
              DOf(SYSTEM_HEX, {4, 4, 3, 90, 90, 120}, 1, 1, 2));
    EXPECT_EQ(DOf(SYSTEM_MON, {4, 5, 3, 0, 100, 0}, 1, 1, 2),
              DOf(SYSTEM_MON, {4, 5, 3, 90, 100, 90}, 1, 1, 2));
}

TEST(CalcDSpacings, AZeroConstantInADenominatorIsAFault) {
    EXPECT_THROW((void)DOf(SYSTEM_TET, {4, 4, 0, 90, 90, 90}, 0, 0, 1), Fault);
    EXPECT_THROW((void)DOf(SYSTEM_ORT, {4, 0, 3, 90, 90, 90}, 0, 1, 0), Fault);
    EXPECT_THROW((void)DOf(SYSTEM_TRI, {4, 5, 6, 90, 170, 20}, 1, 0, 0), Fault);  // no such cell
}

TEST(CalcDSpacings, AnUnknownSystemLeavesTheColumn) {
    CrystalRecord crystal = CrystalOf(7, {{1, 1, 1}});
    crystal.D[0] = 42.0;
    CalcDSpacings(crystal, {4, 4, 4, 90, 90, 90});
    EXPECT_EQ(crystal.D[0], 42.0);
}

TEST(CalcDOne, AgreesWithTheTableOnCellsThatFourBytesHold) {
    const Cell cell{7.125, 7.875, 5.5, 89.5, 101.25, 106.0};
    for (int system = 0; system < 6; ++system)
        EXPECT_EQ(CalcDOne(system, 1, -2, 3, 7.125F, 7.875F, 5.5F, 89.5F, 101.25F, 106.0F),
                  DOf(system, cell, 1, -2, 3));
    EXPECT_EQ(CalcDOne(6, 1, 1, 1, 4, 4, 4, 90, 90, 90), 0.0);
}

TEST(CellVolume, IsRoundedToFourBytes) {
    const double v = CellVolume({3.9231, 0, 0, 0, 0, 0}, SYSTEM_CUB);
    EXPECT_NEAR(v, 60.3793, 0.00005);
    EXPECT_EQ(v, static_cast<double>(static_cast<float>(v)));
    EXPECT_NE(v, 3.9231 * 3.9231 * 3.9231);
}

TEST(CellVolume, EachSystemHasItsForm) {
    const Cell cell{4, 5, 6, 80, 100, 110};
    EXPECT_EQ(CellVolume(cell, SYSTEM_CUB), 64.0);
    EXPECT_EQ(CellVolume(cell, SYSTEM_TET), 96.0);
    EXPECT_EQ(CellVolume(cell, SYSTEM_HEX), static_cast<double>(static_cast<float>(83.1384)));
    EXPECT_EQ(CellVolume(cell, SYSTEM_ORT), 120.0);
    EXPECT_NEAR(CellVolume(cell, SYSTEM_MON), 120.0 * 0.984807753012208, 1e-5);
    // W = 1 - 0.030153690 - 0.030153690 - 0.116977778 + 2 (0.17364818 * -0.17364818 * -0.34202014)
    EXPECT_NEAR(CellVolume(cell, SYSTEM_TRI), 120.0 * std::sqrt(0.843341), 1e-4);
    EXPECT_EQ(CellVolume(cell, 6), 0.0);
    EXPECT_EQ(CellVolume(cell, 9), 0.0);
}

TEST(ThetaCu, IsTheAngleAtTheReferenceWavelength) {
    EXPECT_NEAR(ThetaCu(1.5418, 50.0), 30.0, 1e-10);
    EXPECT_EQ(ThetaCu(0.0, 50.0), 0.0);
    EXPECT_EQ(ThetaCu(-1.0, 50.0), 0.0);
    EXPECT_EQ(ThetaCu(1.5418, 0.0), 0.0);
    EXPECT_EQ(ThetaCu(0.7708, 50.0), 0.0);
    EXPECT_EQ(ThetaCu(0.7709, 50.0), 0.0);  // the root is zero there
    EXPECT_GT(ThetaCu(0.7710, 50.0), 88.0);
}

TEST(MatchPeaks, FillsTheRowOfAPeakAndItsIndicesAndAngles) {
    auto state = NewState();
    Graph graph;
    graph.AddD(3.1);  // nothing there
    graph.AddD(2.01);
    CrystalRecord crystal = CrystalOf(SYSTEM_CUB, {{1, 1, 1}, {2, 0, 0}, {2, 2, 0}});
    crystal.Name = "X ray";
    const Cell cell{4, 4, 4, 90, 90, 90};
    CalcDSpacings(crystal, cell);
    MatchPeaks(*state, crystal, cell, graph.Source());
    EXPECT_EQ(state->FitData.Name, "X ray");
    EXPECT_EQ(state->FitData.Seed, cell);
    EXPECT_EQ(state->FitData.DataNo, 3);
    EXPECT_EQ(state->FitData.MatchNum, 1);
    EXPECT_EQ(state->FitData.Match[0].Matched, FALSE_WORD);
    const ReflectionMatch& row = state->FitData.Match[1];
    EXPECT_EQ(row.Matched, TRUE_WORD);
    EXPECT_EQ(row.Excluded, FALSE_WORD);
    EXPECT_EQ(row.H, 2);
    EXPECT_EQ(row.K, 0);
    EXPECT_EQ(row.DCal, 2.0);
    EXPECT_NEAR(row.DObs, 2.01, 1e-12);
    EXPECT_EQ(row.Ch, graph.Peaks->Peak[1].Position);
    EXPECT_NEAR(row.Energy, 0.03 * (row.Ch + 1.0), 1e-12);
    EXPECT_NEAR(std::sin(row.ThetaCu * std::numbers::pi / 180.0), 1.5418 / 4.02, 1e-12);
}

TEST(MatchPeaks, AReflectionExactlyAtThePickupRangeIsNotTaken) {
    auto state = NewState();
    Graph graph;
    graph.AddD(2.0);
    CrystalRecord crystal = CrystalOf(SYSTEM_CUB, {{1, 0, 0}});
    const double d = ChToUnit(UNIT_D, graph.Peaks->Peak[0].Position, graph.Property->Param, {});
    // The range is made of the numbers compared, so that nothing rounds in between.
    crystal.D[0] = d + 0.03125;
    graph.Pickup = crystal.D[0] - d;
    ASSERT_EQ(d + graph.Pickup, crystal.D[0]);
    MatchPeaks(*state, crystal, {}, graph.Source());
    EXPECT_EQ(state->FitData.MatchNum, 0);
    graph.Pickup = std::nextafter(graph.Pickup, 1.0) + 1e-12;
    MatchPeaks(*state, crystal, {}, graph.Source());
    EXPECT_EQ(state->FitData.MatchNum, 1);
}

TEST(MatchPeaks, NorIsOneExactlyAtThePickupRangeBelow) {
    auto state = NewState();
    Graph graph;
    graph.AddD(2.0);
    CrystalRecord crystal = CrystalOf(SYSTEM_CUB, {{1, 0, 0}});
    const double d = ChToUnit(UNIT_D, graph.Peaks->Peak[0].Position, graph.Property->Param, {});
    crystal.D[0] = d - 0.03125;
    graph.Pickup = d - crystal.D[0];
    ASSERT_EQ(d - graph.Pickup, crystal.D[0]);
    MatchPeaks(*state, crystal, {}, graph.Source());
    EXPECT_EQ(state->FitData.MatchNum, 0);
    graph.Pickup += 1e-12;
    MatchPeaks(*state, crystal, {}, graph.Source());
    EXPECT_EQ(state->FitData.MatchNum, 1);
}

TEST(MatchPeaks, OnEqualDistancesTheEarlierReflectionStays) {
    auto state = NewState();
    Graph graph;
    graph.AddD(2.0);
    const double d = ChToUnit(UNIT_D, graph.Peaks->Peak[0].Position, graph.Property->Param, {});
    CrystalRecord crystal = CrystalOf(SYSTEM_CUB, {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    crystal.D[0] = d + 0.0156250;
    crystal.D[1] = d - (crystal.D[0] - d);
    crystal.D[2] = crystal.D[0];
    ASSERT_EQ(std::fabs(d - crystal.D[0]), std::fabs(d - crystal.D[1]));
    MatchPeaks(*state, crystal, {}, graph.Source());
    EXPECT_EQ(state->FitData.Match[0].H, 1);
}

TEST(MatchPeaks, WithAPickupRangeOfZeroNothingMatches) {
    auto state = NewState();
    Graph graph;
    graph.AddD(2.0);
    graph.Pickup = 0.0;
    CrystalRecord crystal = CrystalOf(SYSTEM_CUB, {{2, 0, 0}});
    crystal.D[0] = ChToUnit(UNIT_D, graph.Peaks->Peak[0].Position, graph.Property->Param, {});
    MatchPeaks(*state, crystal, {}, graph.Source());
    EXPECT_EQ(state->FitData.MatchNum, 0);
}

TEST(MatchPeaks, AnEmptyReflectionListNeverMatches) {
    auto state = NewState();
    Graph graph;
    graph.AddD(2.0);
    MatchPeaks(*state, CrystalOf(SYSTEM_CUB, {}), {4, 4, 4, 90, 90, 90}, graph.Source());
    EXPECT_EQ(state->FitData.MatchNum, 0);
}

TEST(MatchPeaks, AGraphOutsideZeroToNineChangesNothing) {
    auto state = NewState();
    state->FitData.MatchNum = 7;
    state->FitData.DataNo = 9;
    Graph graph;
    for (const int number : {-1, 10, 65})
        MatchPeaks(*state, CrystalOf(SYSTEM_CUB, {}), {},
                   graph.Source(static_cast<std::int16_t>(number)));
    EXPECT_EQ(state->FitData.MatchNum, 7);
    EXPECT_EQ(state->FitData.DataNo, 9);
}

TEST(MatchPeaks, AnEmptyPeakTableMatchesNoneAndKeepsOldRows) {
    auto state = NewState();
    state->FitData.MatchNum = 7;
    state->FitData.Match[2].Matched = TRUE_WORD;
    Graph graph;
    MatchPeaks(*state, CrystalOf(SYSTEM_CUB, {{1, 1, 1}}), {}, graph.Source());
    EXPECT_EQ(state->FitData.MatchNum, 0);
    EXPECT_EQ(state->FitData.Match[2].Matched, TRUE_WORD);
}

TEST(MatchPeaks, NeitherOldRowsNorExcludedAreTouched) {
    auto state = NewState();
    state->FitData.Match[0].Excluded = TRUE_WORD;
    state->FitData.Match[1].Matched = TRUE_WORD;  // of a former match; its peak now has none
    state->FitData.Match[1].H = 5;
    Graph graph;
    graph.AddD(2.01);
    graph.AddD(3.0);
    CrystalRecord crystal = CrystalOf(SYSTEM_CUB, {{2, 0, 0}});
    CalcDSpacings(crystal, {4, 4, 4, 90, 90, 90});
    MatchPeaks(*state, crystal, {}, graph.Source());
    EXPECT_EQ(state->FitData.Match[0].Matched, TRUE_WORD);
    EXPECT_EQ(state->FitData.Match[0].Excluded, TRUE_WORD);
    EXPECT_EQ(state->FitData.Match[1].Matched, TRUE_WORD);
    EXPECT_EQ(state->FitData.Match[1].H, 5);
    EXPECT_EQ(state->FitData.MatchNum, 1);
}

TEST(MatchPeaks, TwoPeaksMayHaveOneReflectionAndAHundredPeaksFit) {
    auto state = NewState();
    Graph graph;
    for (int i = 0; i < 100; ++i) graph.AddD(2.0 + 0.0001 * i);
    CrystalRecord crystal = CrystalOf(SYSTEM_CUB, {{2, 0, 0}});
    CalcDSpacings(crystal, {4, 4, 4, 90, 90, 90});
    MatchPeaks(*state, crystal, {}, graph.Source());
    EXPECT_EQ(state->FitData.MatchNum, 100);
    EXPECT_EQ(state->FitData.Match[99].H, 2);
}

TEST(MatchPeaks, ADacGraphTakesItsAxisAndHasAConstantForItsEnergy) {
    auto state = NewState();
    Graph graph;
    graph.Property->SourceType = SOURCE_DAC;
    graph.Dac = {10.0, 0.01, 0.5};
    graph.AddChannel(500.0);  // 2 theta 15
    const double d = 0.5 / (2.0 * std::sin(7.5 * std::numbers::pi / 180.0));
    CrystalRecord crystal = CrystalOf(SYSTEM_CUB, {{2, 0, 0}});
    crystal.D[0] = d + 0.001;
    MatchPeaks(*state, crystal, {}, graph.Source());
    const ReflectionMatch& row = state->FitData.Match[0];
    ASSERT_EQ(row.Matched, TRUE_WORD);
    EXPECT_NEAR(row.DObs, d, 1e-9);
    EXPECT_EQ(row.Energy, 1.111);
    EXPECT_NEAR(std::sin(row.ThetaCu * std::numbers::pi / 180.0), 1.5418 / (2.0 * d), 1e-9);
}

TEST(UseList, WhatIsInUseIsSavedInRowOrder) {
    auto state = NewState();
    auto& rows = state->FitData.Match;
    rows[1] = {1, 1, 1, 10.5, 0, 0, 0, 0, TRUE_WORD, FALSE_WORD};
    rows[2] = {2, 0, 0, 20.5, 0, 0, 0, 0, TRUE_WORD, TRUE_WORD};
    rows[4] = {2, 2, 0, 30.5, 0, 0, 0, 0, TRUE_WORD, FALSE_WORD};
    state->SavedUseList[5].Ch = 99.0;
    CarryUseList(*state);
    EXPECT_EQ(state->SavedUseNum, 2);
    EXPECT_EQ(state->SavedUseList[0].Ch, 10.5);
    EXPECT_EQ(state->SavedUseList[1].K, 2);
    EXPECT_EQ(state->SavedUseList[5].Ch, 0.0);
    EXPECT_EQ(rows[2].Excluded, TRUE_WORD);
}

TEST(UseList, AfterACorrectionOnlyWhatWasSavedComesBack) {
    auto state = NewState();
    auto& rows = state->FitData.Match;
    rows[0] = {1, 1, 1, 10.5, 0, 0, 0, 0, TRUE_WORD, FALSE_WORD};
    rows[1] = {2, 0, 0, 20.5, 0, 0, 0, 0, TRUE_WORD, FALSE_WORD};
    CarryUseList(*state);
    rows[1].Ch = std::nextafter(20.5, 21.0);  // the last digit is enough to lose it
    rows[2] = {2, 2, 0, 30.5, 0, 0, 0, 0, TRUE_WORD, FALSE_WORD};  // newly brought in
    rows[3].Ch = 40.5;                                             // matched by nothing
    state->UseListValid = TRUE_WORD;
    CarryUseList(*state);
    EXPECT_EQ(rows[3].Excluded, FALSE_WORD);
    EXPECT_EQ(rows[0].Excluded, FALSE_WORD);
    EXPECT_EQ(rows[1].Excluded, TRUE_WORD);
    EXPECT_EQ(rows[2].Excluded, TRUE_WORD);
    EXPECT_EQ(state->UseListValid, FALSE_WORD);
    EXPECT_EQ(state->SavedUseNum, 2);
}

TEST(ClearMatchTable, ClearsWorkingColumnsButNeverTheReflections) {
    auto state = NewState();
    CrystalRecord& crystal = state->Table.Crystals[30];
    crystal.Count = 3;
    crystal.Hs[2] = 4;
    crystal.D.fill(1.0);
    crystal.Flag.fill(1);
    crystal.Work1.fill(1.0);
    crystal.Work2.fill(1.0);
    state->MatchCounter.fill(5);
    state->FitData.MatchNum = 3;
    state->FitData.Seed[0] = 4.0;
    state->FitData.CurrentSeed[0] = 4.1;
    ClearMatchTable(*state, 1);
    EXPECT_EQ(crystal.D[100], 0.0);
    EXPECT_EQ(crystal.Flag[100], 0);
    EXPECT_EQ(crystal.Work1[0] + crystal.Work2[100], 0.0);
    EXPECT_EQ(crystal.Count, 3);
    EXPECT_EQ(crystal.Hs[2], 4);
    EXPECT_EQ(state->MatchCounter[30], 0);
    EXPECT_EQ(state->FitData.MatchNum, 3);
    EXPECT_EQ(state->FitData.Seed[0], 0.0);
    EXPECT_EQ(state->FitData.CurrentSeed[0], 4.1);
    ClearMatchTable(*state, 0);
    EXPECT_EQ(state->FitData.MatchNum, 0);
    EXPECT_EQ(state->FitData.CurrentSeed[0], 0.0);
}
