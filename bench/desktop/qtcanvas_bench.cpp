// Benchmarks of the Qt surface: a plot of ten graphs of 8192 channels on an image, and what it
// costs to show that nothing has changed.
#include "core/frmvaelana.h"
#include "core/params.h"
#include "desktop/qtcanvas.h"
#include "desktop/qtdesk.h"
#include "desktop/start.h"
#include "display/drawspect.h"
#include "toolkit/hand.h"

#include <QApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cmath>

namespace vael {
namespace {

void PlotAllOnAnImage(benchmark::State& state) {
    ImageSurface surface;
    surface.Resize(1600, 500, static_cast<double>(state.range(1)), 0);
    Canvas canvas(surface);
    DrawEngine engine;
    std::vector<std::int32_t> counts;
    for (int i = 0; i < 8192; ++i) {
        const double z = (i % 512 - 256) / 8.0;
        counts.push_back(100 + static_cast<std::int32_t>(5000.0 * std::exp(-z * z)));
    }
    DrawTarget& t = engine.Target(0);
    t.Canvas = &canvas;
    t.DrawKind = static_cast<std::int16_t>(state.range(0));
    engine.SetFullScale(0, 10000, false);
    engine.SetChannelRange(0, 1, 8192);
    for (int graph = 0; graph < 10; ++graph)
        engine.RegisterGraph(0, graph, counts, 8192, Rgb(255, 20 * graph, 100));
    for (auto _ : state) {
        engine.Replot(0);
        benchmark::DoNotOptimize(surface.Image().constBits());
    }
}
BENCHMARK(PlotAllOnAnImage)
    ->ArgNames({"kind", "density"})
    ->ArgsProduct({{DRAW_LINE, DRAW_PAINT, DRAW_DOT}, {1, 2}})
    ->Unit(benchmark::kMillisecond);

void ShowNothingNew(benchmark::State& state) {
    const QTemporaryDir folder;
    QtDesk desk;
    RunEvent(frmVaelAna, [&] { Form_Load(folder.path().toStdString()); });
    desk.Show();
    for (auto _ : state) desk.Show();
}
BENCHMARK(ShowNothingNew)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vael

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    vael::SetLook(application);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
