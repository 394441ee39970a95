// Benchmarks of drawing: ten graphs of 8192 channels on a surface that only counts, and a page.
#include "display/drawspect.h"
#include "display/page.h"
#include "display/svgcanvas.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

namespace vael {
namespace {

/// Takes every primitive, as the recorder of the tests does, without writing it down.
class CountingSurface : public Surface {
public:
    [[nodiscard]] Extent Size() const override { return {1600.0, 500.0}; }
    void Clear(Colour) override {}
    void Stroke(Spot from, Spot to, const Brush& brush) override {
        const Spot a = ToPixels(from, brush.Scale, Size());
        const Spot b = ToPixels(to, brush.Scale, Size());
        Sum += a.X + a.Y + b.X + b.Y;
        ++Strokes;
    }
    void Box(Spot, Spot, bool, const Brush&) override {}
    void Dot(Spot at, const Brush& brush) override {
        Sum += ToPixels(at, brush.Scale, Size()).Y;
        ++Strokes;
    }
    void Write(Spot, std::string_view, const Brush&) override {}
    [[nodiscard]] Extent Measure(std::string_view text, const Brush&) const override {
        return {6.0 * static_cast<double>(text.size()), 10.0};
    }
    long Strokes = 0;
    double Sum = 0.0;
};

std::vector<std::int32_t> Spectrum(int channels) {
    std::vector<std::int32_t> counts;
    for (int i = 0; i < channels; ++i) {
        const double z = (i % 512 - 256) / 8.0;
        counts.push_back(100 + static_cast<std::int32_t>(5000.0 * std::exp(-z * z)));
    }
    return counts;
}

void PlotAllOfTenGraphs(benchmark::State& state) {
    CountingSurface surface;
    Canvas canvas(surface);
    DrawEngine engine;
    const auto counts = Spectrum(8192);
    DrawTarget& t = engine.Target(0);
    t.Canvas = &canvas;
    engine.SetFullScale(0, 10000, state.range(0) == 1);
    t.DrawKind = static_cast<std::int16_t>(state.range(1));
    engine.SetChannelRange(0, 1, 8192);
    for (int graph = 0; graph < 10; ++graph) engine.RegisterGraph(0, graph, counts, 8192, graph);
    for (auto _ : state) engine.PlotAll(0);
    benchmark::DoNotOptimize(surface.Sum);
    state.counters["strokes"] = benchmark::Counter(static_cast<double>(surface.Strokes),
                                                   benchmark::Counter::kAvgIterations);
}
BENCHMARK(PlotAllOfTenGraphs)
    ->ArgNames({"log", "kind"})
    ->ArgsProduct({{0, 1}, {DRAW_LINE, DRAW_PAINT, DRAW_DOT}})
    ->Unit(benchmark::kMicrosecond);

void RegisterOneGraph(benchmark::State& state) {
    DrawEngine engine;
    const auto counts = Spectrum(8192);
    engine.SetFullScale(0, 10000, false);
    for (auto _ : state) engine.RegisterGraph(0, 0, counts, 8192, 0);
}
BENCHMARK(RegisterOneGraph)->Unit(benchmark::kMicrosecond);

void PageOf4096ChannelsAsSvg(benchmark::State& state) {
    const auto counts = Spectrum(4096);
    const std::vector<std::int32_t> back(4096, 100);
    std::vector<std::int32_t> fit;
    for (const std::int32_t count : counts) fit.push_back(count - 100);
    PageData page;
    page.Counts = counts;
    page.Background = back;
    page.Fit = fit;
    page.Param.EgcCoef = {0.2, 0.03, 0.0};
    for (int i = 0; i < 8; ++i) page.Peaks.push_back({256.0 + 512.0 * i, "2 2 0  1.4420", true});
    DrawEngine engine;
    std::size_t bytes = 0;
    for (auto _ : state) {
        SvgSurface svg;
        Canvas canvas(svg);
        DrawPage(canvas, engine, page);
        bytes = svg.Text().size();
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(PageOf4096ChannelsAsSvg)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vael
