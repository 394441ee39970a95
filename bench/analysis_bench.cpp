// Speed of the spectrum processing: smoothing, background, the automatic and the manual NAX run.
#include "../tests/analysis/seeded.h"

#include "analysis/backgraund.h"
#include "analysis/calc.h"
#include "analysis/naxwalk.h"
#include "analysis/peak.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

using namespace vael;

namespace {

/// A seeded spectrum of 4096 channels, fifteen peaks and some 300 counts a channel.
seeded::Spectrum Sample() {
    seeded::Generator random(42);
    return seeded::Separated(random, 300.0, 301.0);
}

void Smoothing(benchmark::State& state) {
    const SpectrumData source = Sample().Data;
    SpectrumData data = source;
    for (auto _ : state) {
        data.Count = source.Count;
        SmoothingData(static_cast<int>(state.range(0)), data.Count, data.DataNo);
        benchmark::DoNotOptimize(data.Count[2000]);
    }
}
BENCHMARK(Smoothing)->Arg(0)->Arg(3)->Unit(benchmark::kMicrosecond);

void Background(benchmark::State& state) {
    const SpectrumData source = Sample().Data;
    SpectrumData data = source;
    const Talk talk;
    for (auto _ : state) {
        data.Count = source.Count;
        BackGraund(20, 5, data.Count, data.DataNo, talk);
        benchmark::DoNotOptimize(data.Count[2000]);
    }
}
BENCHMARK(Background)->Unit(benchmark::kMicrosecond);

/// Argument 1: the smoothed counts less their background, as AutoFitting has them.
void NaxAll(benchmark::State& state) {
    const SpectrumData raw = Sample().Data;
    const SpectrumData data = state.range(0) == 1 ? seeded::Removed(raw) : raw;
    NaxSettings settings;
    settings.EACPS = AutoBgCoefficient(raw);
    NaxState nax;
    const Talk talk;
    std::size_t peaks = 0;
    for (auto _ : state) peaks = NaxFitAll(data, settings, nax, talk).Peaks.size();
    state.counters["peaks"] = static_cast<double>(peaks);
}
BENCHMARK(NaxAll)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

/// The same with all that follows: records, areas, regions, background buffer, fit curve.
void NaxAllStored(benchmark::State& state) {
    const SpectrumData data = Sample().Data;
    NaxSettings settings;
    settings.EACPS = AutoBgCoefficient(data);
    NaxState nax;
    const Talk talk;
    auto peaks = std::make_unique<PeakTable>();
    auto fit = std::make_unique<SpectrumData>();
    std::vector<std::int32_t> background(MAX_CHANNELS);
    for (auto _ : state) {
        *peaks = PeakTable{};
        const NaxResult result = NaxFitAll(data, settings, nax, talk);
        NaxStoreAll(result, SHAPE_GAUSS,
                    {.Spectrum = data, .Peaks = *peaks, .Background = background}, Marks{});
        MakeFitGraph(data, *peaks, *fit, ALL_BITS, 4);
        benchmark::DoNotOptimize(fit->Count[2000]);
    }
    state.counters["peaks"] = static_cast<double>(peaks->PeakNum);
}
BENCHMARK(NaxAllStored)->Unit(benchmark::kMillisecond);

void NaxManual(benchmark::State& state) {
    const seeded::Spectrum sample = Sample();
    const seeded::Peak& peak = sample.Peaks[7];
    const double centre = peak.Position + 1.0;
    const NaxManualInput input{.StartCh = static_cast<std::int16_t>(centre - 50.0),
                               .EndCh = static_cast<std::int16_t>(centre + 50.0),
                               .Peaks = {{centre + 1.0, 0.8 * peak.Height, 1.2 * peak.Fwhm}},
                               .Constraints = {}};
    NaxState nax;
    const Talk talk;
    for (auto _ : state)
        benchmark::DoNotOptimize(
            NaxFitManual(input, sample.Data, NaxSettings{}, nax, talk).Peaks.size());
}
BENCHMARK(NaxManual)->Unit(benchmark::kMicrosecond);

}  // namespace
