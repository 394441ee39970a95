// Drawing on the window's image: ten graphs of 8192 channels on 1600 x 500 pixels.
#include "desktop/qtcanvas.h"
#include "display/drawspect.h"

#include <benchmark/benchmark.h>

#include <QGuiApplication>

#include <cmath>
#include <vector>

namespace {

using namespace vael;

void PlotAllOfTenGraphsOnAnImage(benchmark::State& state) {
    ImageSurface surface;
    surface.Resize(1600, 500, 1.0, 0);
    Canvas canvas(surface);
    DrawEngine engine;
    std::vector<std::int32_t> counts;
    for (int i = 0; i < 8192; ++i) {
        const double z = (i % 512 - 256) / 8.0;
        counts.push_back(100 + static_cast<std::int32_t>(5000.0 * std::exp(-z * z)));
    }
    engine.Target(0).Canvas = &canvas;
    engine.SetFullScale(0, 10000, false);
    engine.Target(0).DrawKind = static_cast<std::int16_t>(state.range(0));
    engine.SetChannelRange(0, 1, 8192);
    for (int graph = 0; graph < 10; ++graph)
        engine.RegisterGraph(0, graph, counts, 8192, Rgb(20 * graph, 255 - 20 * graph, 90));
    for (auto _ : state) {
        engine.Replot(0);
        benchmark::DoNotOptimize(surface.Image().constBits());
    }
}
BENCHMARK(PlotAllOfTenGraphsOnAnImage)
    ->ArgName("kind")
    ->Arg(DRAW_LINE)
    ->Arg(DRAW_PAINT)
    ->Arg(DRAW_DOT)
    ->Unit(benchmark::kMillisecond);

}  // namespace

int main(int count, char** words) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(count, words);
    benchmark::Initialize(&count, words);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
