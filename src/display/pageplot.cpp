// One plot of a page with its scales, curves, labels, legend and the strip of what a fit leaves.
#include "display/pageplot.h"

#include "core/units.h"
#include "display/drawscale.h"
#include "display/lotatefont.h"
#include "display/viewport.h"

#include <algorithm>
#include <cmath>

namespace vael {
namespace {

using namespace paper;

constexpr int PIECE = 512;  // channels of a piece of the plot: every channel is drawn
constexpr int TICKS = 8;    // divisions of the lower axes
constexpr double LABEL_SIZE = 7.5;
constexpr double LABEL_GAP = 8.5;
constexpr double LEADER = 12.0;     // least height between a label and its plot
constexpr double AXIS_STEP = 20.0;  // from one lower axis to the next

int ChannelsOf(const PagePlot& plot) {
    std::size_t most = 0;
    for (const PageCurve& curve : plot.Curves) most = std::max(most, curve.Counts.size());
    return std::min(static_cast<int>(most), MAX_CHANNELS);
}

/// The unit that the lower axis can have.
int UnitOf(const PagePlot& plot) {
    return plot.Unit == UNIT_D && !(plot.Param.TwoTheta > 0.0) ? int{UNIT_CH} : plot.Unit;
}

/// The drawing of one plot: what its steps share.
class PlotDrawer {
public:
    PlotDrawer(Canvas& canvas, DrawEngine& engine, const PagePlot& plot, const PlotPlace& at)
        : canvas_(canvas),
          engine_(engine),
          plot_(plot),
          at_(at),
          first_(std::max(plot.First, 0)),
          last_(plot.Last < plot.First ? ChannelsOf(plot) - 1 : plot.Last) {}

    void Draw();

private:
    [[nodiscard]] bool HasRest() const { return at_.Rest.Height() > 0.0; }
    [[nodiscard]] double XOf(double channel) const {
        const double wide = std::max(last_ - first_, 1);
        return at_.Plot.Left + (channel - first_) / wide * at_.Plot.Width();
    }
    [[nodiscard]] double YOf(double count) const;
    void ChooseScale();
    void DrawGrid();
    void DrawCurve(const PageCurve& curve);
    void DrawPiece(int from, int to, int graph, double width);
    void DrawRest();
    void DrawCounts();
    void DrawLowerAxes();
    void DrawLegend();
    void DrawPeaks();

    Canvas& canvas_;
    DrawEngine& engine_;
    const PagePlot& plot_;
    const PlotPlace& at_;
    int first_, last_;
    std::int32_t fullScale_ = 0;
};

void PlotDrawer::Draw() {
    const Rect& plot = at_.Plot;
    if (last_ > first_) {
        ChooseScale();
        DrawGrid();
        for (const PageCurve& curve : plot_.Curves) DrawCurve(curve);
        if (HasRest()) DrawRest();
        DrawCounts();
        if (at_.LowerAxis) DrawLowerAxes();
        DrawPeaks();
        DrawLegend();
    } else {
        Write(canvas_, plot.Left + 8.0, plot.Top + 8.0, "no counts", QUIET, 9.0);
    }
    canvas_.Box(plot.Left, plot.Top, plot.Right, plot.Bottom, QUIET, false);
}

double PlotDrawer::YOf(double count) const {
    const Rect& plot = at_.Plot;
    double part = 0.0;
    if (plot_.Log)
        part = count < 1.0 ? 0.0 : std::log10(count) / LOG_DECADES;
    else
        part = count / fullScale_;
    return plot.Bottom - std::clamp(part, 0.0, 1.0) * plot.Height();
}

void PlotDrawer::ChooseScale() {
    fullScale_ = plot_.FullScale;
    if (fullScale_ > 0) return;
    std::int32_t highest = 0;
    for (const PageCurve& curve : plot_.Curves) {
        const int end = std::min(last_ + 1, static_cast<int>(curve.Counts.size()));
        for (int i = first_; i < end; ++i)
            highest = std::max(highest, curve.Counts[static_cast<std::size_t>(i)]);
    }
    fullScale_ = AutoFullScale(highest);
}

void PlotDrawer::DrawGrid() {
    const Rect& plot = at_.Plot;
    const auto scaleDiv = InitScaleDiv();
    const auto digit = static_cast<std::size_t>(std::to_string(fullScale_).front() - '0');
    const int across = plot_.Log ? LOG_DECADES : scaleDiv[digit];
    for (int i = 1; i < across; ++i) {
        const double y = plot.Bottom - plot.Height() * i / across;
        canvas_.Line(plot.Left, y, plot.Right, y, GRID);
    }
    for (int i = 1; i < TICKS; ++i) {
        const double x = XOf(first_ + (last_ - first_ + 1.0) * i / TICKS);
        canvas_.Line(x, plot.Top, x, plot.Bottom, GRID);
    }
}

/// One curve on the print target, where graphs are black but for strokes of a colour of their own.
void PlotDrawer::DrawCurve(const PageCurve& curve) {
    const int channels = std::min(static_cast<int>(curve.Counts.size()), MAX_CHANNELS);
    const int last = std::min(last_, channels - 1);
    engine_.ClearTarget(TARGET_PRINT);
    DrawTarget& t = engine_.Target(TARGET_PRINT);
    t.Printing = true;
    t.DrawKind = curve.Kind;
    t.PrintWidth = curve.Width;
    engine_.SetFullScale(TARGET_PRINT, fullScale_, plot_.Log);
    const int graph = engine_.RegisterFreeGraph(TARGET_PRINT, curve.Counts, channels, curve.Ink);
    if (curve.Ink != 0) engine_.SetPlotColor(TARGET_PRINT, graph, 0, channels - 1, curve.Ink);
    for (const PageStretch& part : curve.Stretches)
        engine_.SetPlotColor(TARGET_PRINT, graph, part.Start, part.End, part.Ink);
    const auto drawn = [&](int i) {
        return curve.Where.empty() || curve.Where[static_cast<std::size_t>(i)] != 0;
    };
    for (int from = first_; from < last;) {
        if (!drawn(from)) {
            ++from;
            continue;
        }
        int to = from;
        while (to < last && to - from < PIECE - 1 && drawn(to + 1)) ++to;
        if (to > from) DrawPiece(from, to, graph, curve.Width);
        from = to > from ? to : from + 1;
    }
}

/// The channels from and to and all between them; the next piece begins with `to`.
void PlotDrawer::DrawPiece(int from, int to, int graph, double width) {
    const double left = XOf(from);
    Viewport part(canvas_.Below(), left, at_.Plot.Top, XOf(to) - left, at_.Plot.Height());
    Canvas canvas(part);
    canvas.DrawWidth = width;
    DrawTarget& t = engine_.Target(TARGET_PRINT);
    t.Canvas = &canvas;
    engine_.SetChannelRange(TARGET_PRINT, from + 1, to + 1);
    if (t.DrawKind == DRAW_PAINT)
        engine_.PlotGraphPaint(TARGET_PRINT, graph);
    else
        engine_.PlotGraph(TARGET_PRINT, graph);
    t.Canvas = nullptr;
}

/// From -5 to 5 times the square root of the counts.
void PlotDrawer::DrawRest() {
    constexpr double reach = 5.0;
    const Rect& rest = at_.Rest;
    const PageRest& data = plot_.Rest;
    Viewport part(canvas_.Below(), rest.Left, rest.Top, rest.Width(), rest.Height());
    Canvas canvas(part);
    canvas.Scale(first_, reach, last_, -reach);
    canvas.Line(first_, 0.0, last_, 0.0, FAINT);
    canvas.DrawWidth = 0.5;
    bool open = false;
    double before = 0.0;
    for (int i = first_; i <= last_; ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (at >= data.Counts.size() || (!data.Where.empty() && data.Where[at] == 0)) {
            open = false;
            continue;
        }
        const double count = data.Counts[at];
        const double now =
            std::clamp((count - data.Model[at]) / std::sqrt(std::max(count, 1.0)), -reach, reach);
        if (open) canvas.Line(i - 1, before, i, now, REST_COLOUR);
        before = now;
        open = true;
    }
    canvas_.Box(rest.Left, rest.Top, rest.Right, rest.Bottom, FAINT, false);
    WriteRight(canvas_, rest.Left - 4.0, rest.Top - 1.0, "+5", QUIET, 6.5);
    WriteRight(canvas_, rest.Left - 4.0, (rest.Top + rest.Bottom) / 2.0 - 4.0, "Δ/σ", QUIET, 6.5);
    WriteRight(canvas_, rest.Left - 4.0, rest.Bottom - 6.5, "-5", QUIET, 6.5);
}

/// A strip taller than the plot, so that the labels at its ends are whole, and beside it what they
/// count.
void PlotDrawer::DrawCounts() {
    const Rect& plot = at_.Plot;
    constexpr double over = 8.0;
    Viewport left(canvas_.Below(), 0.0, plot.Top - over, plot.Left - 4.0, plot.Height() + 2 * over);
    Canvas counts(left);
    const double beyond = 100.0 * over / plot.Height();
    counts.Scale(0.0, 100.0 + beyond, 100.0, -beyond);
    AxisScale axis;
    YScaleDraw(counts, plot_.Log ? LOG_DECADES : fullScale_, axis, INK);

    constexpr const char* title = "Counts";
    canvas_.FontSize = LOTATE_POINTS;
    canvas_.CurrentX = MARGIN - 8.0;
    canvas_.CurrentY = (plot.Top + plot.Bottom + canvas_.TextWidth(title)) / 2.0;
    LotateText(canvas_, title, false, 90.0, QUIET);
}

/// The unit, and below it the channels.
void PlotDrawer::DrawLowerAxes() {
    const Rect& plot = at_.Plot;
    const double low = std::max(at_.Rest.Bottom, plot.Bottom);
    XAxis what{UnitOf(plot_), TICKS, static_cast<double>(last_ - first_ + 1),
               static_cast<double>(first_), plot_.Param.TwoTheta};
    AxisScale axis;
    const auto strip = [&](double top, Colour ink) {
        Viewport below(canvas_.Below(), plot.Left, top, plot.Width(), AXIS_STEP);
        Canvas canvas(below);
        XScaleDraw(canvas, what, plot_.Param, plot_.Dac, axis, ink);
        WriteRight(canvas_, plot.Left - 6.0, top + 5.0, UnitAbbrev(what.Unit), ink, 8.0);
    };
    strip(low + 2.0, INK);
    if (what.Unit == UNIT_CH) return;
    what.Unit = UNIT_CH;
    strip(low + 2.0 + AXIS_STEP, QUIET);
}

void PlotDrawer::DrawLegend() {
    constexpr double line = 18.0;
    constexpr double size = 7.5;
    constexpr double step = 10.0;
    constexpr double edge = 5.0;
    double wide = 0.0;
    int lines = 0;
    canvas_.FontSize = size;
    for (const PageCurve& curve : plot_.Curves) {
        if (curve.Name.empty()) continue;
        wide = std::max(wide, canvas_.TextWidth(curve.Name));
        ++lines;
    }
    if (lines == 0) return;
    const double left = at_.Plot.Right - 2 * edge - line - edge - wide;
    double y = at_.Plot.Top + 6.0;
    canvas_.Box(left - edge, y - 2.0, at_.Plot.Right - edge, y + step * lines + 2.0, PAPER, true);
    for (const PageCurve& curve : plot_.Curves) {
        if (curve.Name.empty()) continue;
        canvas_.DrawWidth = std::max(curve.Width, 0.8);
        canvas_.Line(left, y + 4.5, left + line, y + 4.5, curve.Ink);
        canvas_.DrawWidth = 1.0;
        Write(canvas_, left + line + edge, y, curve.Name, INK, size);
        y += step;
    }
}

void PlotDrawer::DrawPeaks() {
    // 1. The peaks in view, from left to right.
    std::vector<const PagePeak*> peaks;
    for (const PagePeak& peak : plot_.Peaks)
        if (peak.Ch >= first_ && peak.Ch <= last_) peaks.push_back(&peak);
    std::stable_sort(peaks.begin(), peaks.end(),
                     [](const PagePeak* a, const PagePeak* b) { return a->Ch < b->Ch; });
    std::vector<double> wanted;
    for (const PagePeak* peak : peaks) wanted.push_back(XOf(peak->Ch));
    const std::vector<double> places =
        SpreadLabels(wanted, LABEL_GAP, at_.Plot.Left + 4.0, at_.Plot.Right - 4.0);

    // 2. A leader from each label to its peak, and the label upright above the plot.
    const double crowd =
        places.size() < 2 ? LABEL_GAP : at_.Plot.Width() / static_cast<double>(places.size());
    const double size = LABEL_SIZE * std::min(1.0, crowd / LABEL_GAP);
    const double base = at_.Plot.Top - LEADER + 2.0;
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        const double tip = YOf(peaks[i]->Count) - 3.0;
        const double knee = at_.Plot.Top - 2.0;
        canvas_.DrawWidth = 0.4;
        canvas_.Line(places[i], base + 1.0, wanted[i], knee, FAINT);
        if (tip > knee) canvas_.Line(wanted[i], knee, wanted[i], tip, FAINT);
        canvas_.DrawWidth = 1.0;
        canvas_.FontSize = size;
        canvas_.TextAngle = 90.0;
        const double high = canvas_.TextHeight("A");
        Write(canvas_, places[i] - high / 2.0, base, peaks[i]->Label, peaks[i]->Ink, size);
        canvas_.TextAngle = 0.0;
    }
}

}  // namespace

double LabelRoom(Canvas& canvas, const PagePlot& plot) {
    if (plot.Peaks.empty()) return 8.0;
    canvas.FontSize = LABEL_SIZE;
    double longest = 0.0;
    for (const PagePeak& peak : plot.Peaks)
        longest = std::max(longest, canvas.TextWidth(peak.Label));
    return longest + LEADER + 6.0;
}

double AxisRoom(const PagePlot& plot) {
    return (UnitOf(plot) == UNIT_CH ? 1.0 : 2.0) * AXIS_STEP + 8.0;
}

double RestRoom(const PagePlot& plot) { return plot.Rest.Counts.empty() ? 0.0 : 44.0; }

void DrawPagePlot(Canvas& canvas, DrawEngine& engine, const PagePlot& plot, const PlotPlace& at) {
    PlotDrawer(canvas, engine, plot, at).Draw();
}

}  // namespace vael
