// Speed of the spectrum processing: smoothing, background, and the runs of both fitters.
#include "../tests/analysis/seeded.h"
#include "fitroads.h"

#include "analysis/backgraund.h"
#include "analysis/calc.h"
#include "analysis/calfitting.h"
#include "analysis/calwavesprit.h"
#include "analysis/naxwalk.h"
#include "analysis/peak.h"

#include <benchmark/benchmark.h>

#include <cmath>
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

/// One fit of a seeded region of 60 channels: a peak of 3000 on 100 counts, half width 8, from a
/// start that is a third off. The argument is the shape.
void CfdqrRegion(benchmark::State& state) {
    const int type = static_cast<int>(state.range(0));
    seeded::Generator random(7);
    std::vector<double> x;
    std::vector<double> y;
    for (int i = 1; i <= 60; ++i) {
        const double u = (i - 30.4) / 8.0;
        const double gauss = std::exp2(-u * u);
        const double lorentz = 1.0 / (1.0 + u * u);
        const double share = type == SHAPE_GAUSS ? 1.0 : type == SHAPE_LORENTZ ? 0.0 : 0.7;
        x.push_back(i);
        y.push_back(random.Poisson(100.0 + 3000.0 * (share * gauss + (1.0 - share) * lorentz)));
    }
    const FitVector start = type == SHAPE_MIX ? FitVector{1600.0, 31.5, 6.0, 400.0, 80.0}
                                              : FitVector{2000.0, 31.5, 6.0, 80.0};
    const Talk talk;
    int status = 0;
    for (auto _ : state) {
        FitVector a = start;
        status = CFDQR2(x, y, type, a, type == SHAPE_MIX ? 5 : 4, talk).Status;
        benchmark::DoNotOptimize(a[1]);
    }
    state.counters["status"] = status;
}
BENCHMARK(CfdqrRegion)->Arg(1)->Arg(2)->Arg(3)->Unit(benchmark::kMicrosecond);

/// Nine peaks in 4096 channels by the Express road: search, regions parted, nine fits.
void ExpressNine(benchmark::State& state) {
    seeded::Generator random(42);
    seeded::Spectrum sample;
    sample.Background = 300.0;
    for (int k = 0; k < 9; ++k)
        sample.Peaks.push_back(
            {300.0 + 430.0 * k, 5000.0, seeded::DetectorFwhm(300.0 + 430.0 * k)});
    seeded::Count(sample, random);
    const SpectrumData data = seeded::Removed(sample.Data);
    std::size_t peaks = 0;
    for (auto _ : state) peaks = tools::ExpressFitAll(data, SHAPE_GAUSS, 9).Peaks.size();
    state.counters["peaks"] = static_cast<double>(peaks);
}
BENCHMARK(ExpressNine)->Unit(benchmark::kMicrosecond);

/// Three overlapping Gaussians in 90 channels; the limit of 0 takes all twenty passes.
void WaveSolveThree(benchmark::State& state) {
    const std::vector<double> truth{9000.0, 30.0, 6.0, 14000.0, 42.0, 6.0, 5000.0, 53.0, 6.0};
    seeded::Generator random(3);
    std::vector<double> y;
    for (int i = 1; i <= 90; ++i) {
        double mean = 1.0;
        for (std::size_t k = 0; k < truth.size(); k += 3)
            mean += truth[k] * std::exp2(-std::pow((i - truth[k + 1]) / truth[k + 2], 2.0));
        y.push_back(random.Poisson(mean));
    }
    const std::vector<double> start{8000.0, 30.8, 5.5, 15000.0, 41.5, 6.4, 5500.0, 53.4, 5.6};
    const Talk talk;
    std::vector<double> p;
    for (auto _ : state) {
        p = start;
        benchmark::DoNotOptimize(WaveSolve(y, p, 0.0, talk));
    }
    state.counters["centre"] = p[4];
}
BENCHMARK(WaveSolveThree)->Unit(benchmark::kMicrosecond);

}  // namespace
