// The window's speed: plots on its image, and one event each of the user's hand on the main view
// with ten graphs of 8192 channels, from the act to the painted pixels.
#include "core/cursors.h"
#include "core/frmvaelana.h"
#include "core/params.h"
#include "core/store.h"
#include "core/windows.h"
#include "desktop/qtcanvas.h"
#include "desktop/qtdesk.h"
#include "desktop/start.h"
#include "display/drawspect.h"
#include "support/spectra.h"
#include "toolkit/hand.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QTemporaryDir>

#include <cmath>
#include <fstream>
#include <memory>
#include <stdexcept>
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

// --- the main view -----------

constexpr int WIDE = 1600;  // pixels of the two plots together
constexpr int HIGH = 900;
constexpr int CHANNELS = 8192;

/// The desk of the program, whose open dialog chooses what the benchmark wrote.
class BenchDesk : public QtDesk {
public:
    std::vector<std::string> Files;
    std::optional<FileChoice> OpenFiles(const FileDialog&) override {
        return FileChoice{.Paths = Files, .FilterIndex = 1};
    }
    Answer Ask(const Question&) override { throw std::runtime_error("nobody expected a question"); }
};

/// The program with ten spectra in the upper window, drawn in one of the ways.
class Bench {
public:
    Bench(int kind, bool log) {
        OnFault([](View&, const std::string& why) { throw std::runtime_error(why); });
        StartProgram(Folder.path().toStdString());
        OnFault([](View&, const std::string& why) { throw std::runtime_error(why); });
        Desk.Show();
        for (int i = 0; i < 10; ++i) Desk.Files.push_back(Write(i));
        Click(frmVaelAna.mnuLoad);
        if (store.GraphTotal != 10 || store.SpanCh != CHANNELS)
            throw std::runtime_error("the spectra were not opened");
        FitPlots();
        Click(kind == DRAW_LINE    ? frmVaelAna.mnuLine
              : kind == DRAW_PAINT ? frmVaelAna.mnuPaint
                                   : frmVaelAna.mnuDot);
        if (log) Tick(frmVaelAna.ckbLogScale, 1);
        Painted();
    }
    ~Bench() {
        OnFault([](View&, const std::string&) {});
        ResetHands();
        store = Store{};
        settings = Settings{};
        Unload(frmVaelAna);
    }
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    /// What the user sees: the records are brought, the widgets are painted.
    static void Painted() { QCoreApplication::processEvents(); }
    static Picture& Plot(int win) { return frmVaelAna.picGraph[static_cast<std::size_t>(win)]; }
    static double PixelOf(int channel) {
        const WindowState& window = frmVaelAna.Windows[0];
        return (Plot(0).Width - 1.0) * (channel - window.Start) / (window.Span - 1.0);
    }

private:
    std::string Write(int number) {
        std::vector<GaussLine> lines;
        for (int k = 0; k < 15; ++k)
            lines.push_back({400.0 + 500.0 * k + 30.0 * number, 500.0 + 300.0 * k, 12.0});
        const std::string name = "run" + std::to_string(number) + ".npd";
        const std::string path = Folder.filePath(QString::fromStdString(name)).toStdString();
        std::ofstream(path, std::ios::binary) << NpdText(GaussCounts(CHANNELS, 80.0, lines), name);
        return path;
    }
    /// Sizes the window until the plots are as large as the benchmark says.
    void FitPlots() {
        Form& form = *Desk.FormOfView(frmVaelAna);
        for (int attempt = 0; attempt < 3; ++attempt) {
            Painted();
            const int wide = Plot(0).Width;
            const int high = Plot(0).Height + Plot(1).Height;
            form.resize(form.width() + WIDE - wide, form.height() + HIGH - high);
        }
        Painted();
        if (Plot(0).Width != WIDE || Plot(0).Height + Plot(1).Height != HIGH)
            throw std::runtime_error("the plots did not get their size");
    }

    QTemporaryDir Folder;
    BenchDesk Desk;
};

void CursorDrag(benchmark::State& state) {
    const Bench bench(static_cast<int>(state.range(0)), state.range(1) != 0);
    MouseDown(Bench::Plot(0), MouseButton::Left, 100, 50);
    int step = 0;
    for (auto _ : state) {
        step = (step + 7) % 1400;
        MouseMove(Bench::Plot(0), MouseButton::Left, 100.0 + step, 50);
        Bench::Painted();
    }
    MouseUp(Bench::Plot(0), MouseButton::Left, 100, 50);
}

void AreaEdgeDrag(benchmark::State& state) {
    const Bench bench(static_cast<int>(state.range(0)), state.range(1) != 0);
    Tick(frmVaelAna.chkArea, 1);
    MouseDown(Bench::Plot(0), MouseButton::Left, 100, 50);
    int step = 0;
    for (auto _ : state) {
        step = (step + 7) % 1400;
        MouseMove(Bench::Plot(0), MouseButton::Left, 110.0 + step, 50);
        Bench::Painted();
    }
    MouseUp(Bench::Plot(0), MouseButton::Left, 900, 50);
}

void RubberBand(benchmark::State& state) {
    const Bench bench(static_cast<int>(state.range(0)), state.range(1) != 0);
    Tick(frmVaelAna.ckbExpand, 1);
    MouseDown(Bench::Plot(0), MouseButton::Left, 400, 50);
    int step = 0;
    for (auto _ : state) {
        step = (step + 7) % 1000;
        MouseMove(Bench::Plot(0), MouseButton::Left, 410.0 + step, 50);
        Bench::Painted();
    }
    MouseUp(Bench::Plot(0), MouseButton::Left, 900, 50);
}

/// The pointer is held beyond the edge of the plot: each tick moves the range and replots both.
void TimerScroll(benchmark::State& state) {
    const Bench bench(static_cast<int>(state.range(0)), state.range(1) != 0);
    frmVaelAna.imnSpanCh.Value = 2000;
    ShowRange(0, 2000);
    RedrawBoth();
    MouseDown(Bench::Plot(0), MouseButton::Left, 800, 50);
    MouseMove(Bench::Plot(0), MouseButton::Left, WIDE + 40.0, 50);
    double pointer = WIDE + 40.0;
    for (auto _ : state) {
        const int before = frmVaelAna.hsbStartX.Value;
        Elapse(frmVaelAna.timCursor);
        Bench::Painted();
        if (frmVaelAna.hsbStartX.Value != before) continue;
        state.PauseTiming();  // at the end it goes back
        pointer = WIDE - pointer;
        MouseMove(Bench::Plot(0), MouseButton::Left, pointer, 50);
        state.ResumeTiming();
    }
    MouseUp(Bench::Plot(0), MouseButton::Left, 800, 50);
}

void RedrawTenGraphs(benchmark::State& state) {
    const Bench bench(static_cast<int>(state.range(0)), state.range(1) != 0);
    for (auto _ : state) {
        Resize(frmVaelAna);  // what a change of size runs: both windows and the axes
        Bench::Painted();
    }
}

void WheelZoom(benchmark::State& state) {
    const Bench bench(static_cast<int>(state.range(0)), state.range(1) != 0);
    int step = 0;
    for (auto _ : state) {
        const double notches = step++ % 8 < 4 ? 1.0 : -1.0;
        Wheel(Bench::Plot(0), notches, 700, false);
        Bench::Painted();
    }
}

/// In the magnifier's style the lower window has the same ten graphs.
void WheelZoomOfTheMagnifier(benchmark::State& state) {
    const Bench bench(static_cast<int>(state.range(0)), state.range(1) != 0);
    Tick(frmVaelAna.ckbExpand, 1);
    int step = 0;
    for (auto _ : state) {
        const double notches = step++ % 8 < 4 ? 1.0 : -1.0;
        Wheel(Bench::Plot(1), notches, 700, false);
        Bench::Painted();
    }
}

void EachWay(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"kind", "log"})->Unit(benchmark::kMillisecond);
    for (const int kind : {DRAW_LINE, DRAW_PAINT, DRAW_DOT}) bench->Args({kind, 0});
    bench->Args({DRAW_LINE, 1});
}
BENCHMARK(CursorDrag)->Apply(EachWay);
BENCHMARK(AreaEdgeDrag)->Apply(EachWay);
BENCHMARK(RubberBand)->Apply(EachWay);
BENCHMARK(TimerScroll)->Apply(EachWay);
BENCHMARK(RedrawTenGraphs)->Apply(EachWay);
BENCHMARK(WheelZoom)->Apply(EachWay);
BENCHMARK(WheelZoomOfTheMagnifier)->Apply(EachWay);

}  // namespace

int main(int count, char** words) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, words);
    SetLook(application);
    benchmark::Initialize(&count, words);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
