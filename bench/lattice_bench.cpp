// Benchmarks of the lattice road: matching, refining, and each pressure scale.
#include "lattice/latticecalc.h"
#include "lattice/outliers.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <numbers>

using namespace vael;

namespace {

/// A crystal with as many reflections as fit and a graph with a peak on each of the first ones.
struct Scene {
    std::unique_ptr<LatticeState> State = std::make_unique<LatticeState>();
    std::unique_ptr<PropertyRecord> Property = std::make_unique<PropertyRecord>();
    std::unique_ptr<PeakTable> Peaks = std::make_unique<PeakTable>();
    CalcRequest Request;

    Scene(int system, const Cell& cell, int peaks) {
        CrystalRecord& crystal = State->Table.Crystals[0];
        State->Table.CrystalCount = 1;
        crystal.Name = "Au Gold";
        crystal.System = static_cast<std::int16_t>(system);
        crystal.A = cell[0];
        crystal.B = cell[1];
        crystal.C = cell[2];
        crystal.Alpha = cell[3];
        crystal.Beta = cell[4];
        crystal.Gamma = cell[5];
        for (int h = 0; h <= 4; ++h)
            for (int k = 0; k <= 4; ++k)
                for (int l = 0; l <= 4 && crystal.Count < REFLECTION_MAX; ++l) {
                    if (h + k + l == 0) continue;
                    const auto row = static_cast<std::size_t>(crystal.Count++);
                    crystal.Hs[row] = static_cast<std::int16_t>(h);
                    crystal.Ks[row] = static_cast<std::int16_t>(k);
                    crystal.Ls[row] = static_cast<std::int16_t>(l);
                }
        CalcDSpacings(crystal, cell);
        Property->Param.EgcCoef = {0.05, 0.03, 0.0};
        Property->Param.TwoTheta = 10.0;
        const double sine = std::sin(5.0 * std::numbers::pi / 180.0);
        for (int i = 0; i < crystal.Count && Peaks->PeakNum < peaks; ++i) {
            const double d = crystal.D[static_cast<std::size_t>(i)];
            PeakRecord& peak = Peaks->Peak[static_cast<std::size_t>(Peaks->PeakNum++)];
            peak.Position = (12.3981 / (2.0 * d * sine) - 0.05) / 0.03 - 1.0 + 0.1 * (i % 3 - 1);
            peak.Intensity = 1000.0 + i;
        }
        Request = RequestFor(*State, 0, MODE_SAMPLE, 27.0, TEMPERATURE_CELSIUS);
    }
    MatchSource Source() const { return {0, 0, *Peaks, *Property}; }
};

const Cell GOLD{4.0786, 4.0786, 4.0786, 90, 90, 90};
const Cell TRICLINIC{7.1262, 7.852, 5.5724, 89.99, 101.11, 106.03};

void MatchFifteenPeaks(benchmark::State& state) {
    Scene scene(SYSTEM_CUB, GOLD, 15);
    const MatchSource source = scene.Source();
    for (auto _ : state) {
        MatchPeaks(*scene.State, scene.State->Table.Crystals[0], GOLD, source);
        benchmark::DoNotOptimize(scene.State->FitData.MatchNum);
    }
}
BENCHMARK(MatchFifteenPeaks);

void MatchAHundredPeaks(benchmark::State& state) {
    Scene scene(SYSTEM_TRI, TRICLINIC, 100);
    const MatchSource source = scene.Source();
    for (auto _ : state) {
        MatchPeaks(*scene.State, scene.State->Table.Crystals[0], TRICLINIC, source);
        benchmark::DoNotOptimize(scene.State->FitData.MatchNum);
    }
}
BENCHMARK(MatchAHundredPeaks);

void MatchAndRefine(benchmark::State& state, int system, const Cell& cell, int peaks) {
    Scene scene(system, cell, peaks);
    const MatchSource source = scene.Source();
    for (auto _ : state)
        benchmark::DoNotOptimize(CalcLattice(*scene.State, scene.Request, source, {}));
}
BENCHMARK_CAPTURE(MatchAndRefine, cubic_15, SYSTEM_CUB, GOLD, 15);
BENCHMARK_CAPTURE(MatchAndRefine, triclinic_100, SYSTEM_TRI, TRICLINIC, 100);

void CalculateByRules(benchmark::State& state) {
    Scene scene(SYSTEM_CUB, GOLD, 15);
    const MatchSource source = scene.Source();
    for (auto _ : state)
        benchmark::DoNotOptimize(CalcByRules(*scene.State, scene.Request, source, {}, {}));
}
BENCHMARK(CalculateByRules);

template <class Scale>
void RunScale(benchmark::State& state, Scale scale, double first, double second) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(first);
        benchmark::DoNotOptimize(scale(first, second));
    }
}
BENCHMARK_CAPTURE(RunScale, NaClDecker, PressureNaClDecker, 0.9, 300.0);
BENCHMARK_CAPTURE(RunScale, PtJamieson, PressurePtJamieson, 0.9, 1000.0);
BENCHMARK_CAPTURE(RunScale, AuAnderson, PressureAuAnderson, 0.9, 1000.0);
BENCHMARK_CAPTURE(RunScale, MgOTable, PressureMgOTable, 0.9, 1000.0);
BENCHMARK_CAPTURE(
    RunScale, PtBirch, [](double v, double t) { return PressurePtBirch(v, 60.3793, t); }, 54.34,
    1000.0);
BENCHMARK_CAPTURE(RunScale, PtVinet, PressurePtVinet, 0.97, 700.0);
BENCHMARK_CAPTURE(RunScale, HbnAxis, PressureHbnAxis, 6.3, 700.0);

}  // namespace
