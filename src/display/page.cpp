// One page of a result: layout, the plot in pieces, labels, blocks of lines and the table of peaks.
#include "display/page.h"

#include "core/text.h"
#include "core/units.h"
#include "display/drawscale.h"
#include "display/viewport.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vael {
namespace {

constexpr Colour PAPER = Rgb(255, 255, 255);
constexpr Colour INK = Rgb(34, 34, 34);
constexpr Colour QUIET = Rgb(110, 110, 110);
constexpr Colour FAINT = Rgb(170, 170, 170);
constexpr Colour GRID = Rgb(232, 232, 232);
// Blue, vermilion (lightened: it lies broad under the counts) and bluish green of the palette of
// M. Okabe and K. Ito (2008), which stay apart for the colour blind.
constexpr Colour DATA_COLOUR = Rgb(60, 60, 60);
constexpr Colour FIT_COLOUR = Rgb(245, 160, 90);
constexpr Colour BACK_COLOUR = Rgb(0, 114, 178);
constexpr Colour REST_COLOUR = Rgb(0, 128, 96);

constexpr int PIECE = 512;  // channels of a piece of the plot: every channel is drawn
constexpr int TICKS = 8;    // divisions of the lower axes
constexpr double MARGIN = 36.0;
constexpr double LINE_STEP = 10.5;
constexpr double LABEL_SIZE = 7.5;
constexpr double LABEL_GAP = 8.5;

struct Rect {
    double Left, Top, Right, Bottom;
    [[nodiscard]] double Width() const { return Right - Left; }
    [[nodiscard]] double Height() const { return Bottom - Top; }
};

/// Where everything stands, in points from the top left corner.
struct Layout {
    Rect Plot, Rest, Blocks;
    double LabelBase;  // lower end of the upright labels
};

Layout MakeLayout(Extent size, bool labels, bool rest) {
    Layout at{};
    const double left = MARGIN + 34.0;
    const double right = size.Width - MARGIN;
    const double top = 64.0 + (labels ? 66.0 : 8.0);
    const double blocks = size.Height - 28.0 - 12.0 * LINE_STEP;
    const double axes = blocks - 54.0;
    const double restHigh = rest ? 44.0 : 0.0;
    at.Plot = {left, top, right, axes - restHigh};
    at.Rest = {left, axes - restHigh + (rest ? 4.0 : 0.0), right, axes};
    at.Blocks = {MARGIN, blocks, right, size.Height - 28.0};
    at.LabelBase = top - 10.0;
    return at;
}

/// The drawing of one page: what its steps share.
class PageDrawer {
public:
    PageDrawer(Canvas& canvas, DrawEngine& engine, const PageData& page)
        : canvas_(canvas),
          engine_(engine),
          page_(page),
          first_(std::max(page.First, 0)),
          last_(page.Last < page.First ? Channels(page) - 1
                                       : std::min(page.Last, Channels(page) - 1)),
          at_(MakeLayout(canvas.PixelSize(), !page.Peaks.empty(), HasFit())) {}

    void Draw();

private:
    static int Channels(const PageData& page) {
        return std::min(static_cast<int>(page.Counts.size()), MAX_CHANNELS);
    }
    [[nodiscard]] bool HasFit() const {
        return !page_.Fit.empty() && page_.Fit.size() == page_.Counts.size();
    }
    [[nodiscard]] bool HasBack() const {
        return !page_.Background.empty() && page_.Background.size() == page_.Counts.size();
    }
    [[nodiscard]] double XOf(double channel) const {
        const double wide = std::max(last_ - first_, 1);
        return at_.Plot.Left + (channel - first_) / wide * at_.Plot.Width();
    }
    [[nodiscard]] double YOf(double count) const;
    void Write(double x, double y, std::string_view text, Colour ink, double size,
               bool bold = false);
    void WriteRight(double right, double y, std::string_view text, Colour ink, double size);
    void DrawHead();
    void ChooseScale();
    void DrawGrid();
    void DrawCurves();
    void DrawCurve(std::span<const std::int32_t> data, Colour colour, const Rect& where,
                   bool whereBack);
    void DrawPiece(int from, int to, const Rect& where, int graph);
    void DrawRest();
    void DrawAxes();
    void DrawLegend();
    void DrawPeaks();
    double DrawBlocks();
    void DrawTable(double left);

    Canvas& canvas_;
    DrawEngine& engine_;
    const PageData& page_;
    int first_, last_;
    Layout at_;
    std::int32_t fullScale_ = 0;
    std::vector<std::int32_t> sum_;  // fit and background together
};

void PageDrawer::Draw() {
    canvas_.Clear(PAPER);
    canvas_.ScaleReset();
    DrawHead();
    const Rect& plot = at_.Plot;
    if (last_ > first_) {
        ChooseScale();
        DrawGrid();
        DrawCurves();
        if (HasFit()) DrawRest();
        DrawAxes();
        DrawPeaks();
        DrawLegend();
    } else {
        Write(plot.Left + 8.0, plot.Top + 8.0, "no counts", QUIET, 9.0);
    }
    canvas_.Box(plot.Left, plot.Top, plot.Right, plot.Bottom, QUIET, false);
    DrawTable(DrawBlocks());
    if (!page_.Footer.empty())
        Write(MARGIN, canvas_.PixelSize().Height - 20.0, page_.Footer, FAINT, 6.5);
}

double PageDrawer::YOf(double count) const {
    const Rect& plot = at_.Plot;
    double part = 0.0;
    if (page_.Log)
        part = count < 1.0 ? 0.0 : std::log10(count) / LOG_DECADES;
    else
        part = count / fullScale_;
    return plot.Bottom - std::clamp(part, 0.0, 1.0) * plot.Height();
}

void PageDrawer::Write(double x, double y, std::string_view text, Colour ink, double size,
                       bool bold) {
    canvas_.FontSize = size;
    canvas_.FontBold = bold;
    canvas_.CurrentX = x;
    canvas_.CurrentY = y;
    canvas_.Print(text, ink);
    canvas_.FontBold = false;
}

void PageDrawer::WriteRight(double right, double y, std::string_view text, Colour ink,
                            double size) {
    canvas_.FontSize = size;
    Write(right - canvas_.TextWidth(text), y, text, ink, size);
}

void PageDrawer::DrawHead() {
    Write(MARGIN, 26.0, page_.Title, INK, 14.0, true);
    Write(MARGIN, 45.0, page_.Subtitle, QUIET, 8.5);
    canvas_.Line(MARGIN, 60.0, canvas_.PixelSize().Width - MARGIN, 60.0, FAINT);
}

void PageDrawer::ChooseScale() {
    const auto shown = page_.Counts.subspan(static_cast<std::size_t>(first_),
                                            static_cast<std::size_t>(last_ - first_ + 1));
    fullScale_ = page_.FullScale > 0 ? page_.FullScale
                                     : AutoFullScale(*std::max_element(shown.begin(), shown.end()));
    if (!HasFit()) return;
    sum_.assign(page_.Fit.begin(), page_.Fit.end());
    if (!HasBack()) return;
    for (std::size_t i = 0; i < sum_.size(); ++i) {
        const std::int64_t both = std::int64_t{page_.Fit[i]} + page_.Background[i];
        sum_[i] = static_cast<std::int32_t>(
            std::min<std::int64_t>(both, std::numeric_limits<std::int32_t>::max()));
    }
}

void PageDrawer::DrawGrid() {
    const Rect& plot = at_.Plot;
    const auto scaleDiv = InitScaleDiv();
    const auto digit = static_cast<std::size_t>(std::to_string(fullScale_).front() - '0');
    const int across = page_.Log ? LOG_DECADES : scaleDiv[digit];
    for (int i = 1; i < across; ++i) {
        const double y = plot.Bottom - plot.Height() * i / across;
        canvas_.Line(plot.Left, y, plot.Right, y, GRID);
    }
    for (int i = 1; i < TICKS; ++i) {
        const double x = XOf(first_ + (last_ - first_ + 1.0) * i / TICKS);
        canvas_.Line(x, plot.Top, x, plot.Bottom, GRID);
    }
}

void PageDrawer::DrawCurves() {
    canvas_.DrawWidth = 2.2;
    if (HasFit()) DrawCurve(sum_, FIT_COLOUR, at_.Plot, HasBack());
    canvas_.DrawWidth = 0.8;
    if (HasBack()) DrawCurve(page_.Background, BACK_COLOUR, at_.Plot, true);
    canvas_.DrawWidth = 0.6;
    DrawCurve(page_.Counts, DATA_COLOUR, at_.Plot, false);
    canvas_.DrawWidth = 1.0;
}

/// One curve on the print target, where graphs are black but for strokes of a colour of their own.
/// `whereBack`: only where there is a background, since 0 means that the fit did not reach there.
void PageDrawer::DrawCurve(std::span<const std::int32_t> data, Colour colour, const Rect& where,
                           bool whereBack) {
    engine_.ClearTarget(TARGET_PRINT);
    DrawTarget& t = engine_.Target(TARGET_PRINT);
    t.Printing = true;
    engine_.SetFullScale(TARGET_PRINT, fullScale_, page_.Log);
    const int graph = engine_.RegisterFreeGraph(TARGET_PRINT, data, Channels(page_), colour);
    engine_.SetPlotColor(TARGET_PRINT, graph, 0, Channels(page_) - 1, colour);
    const auto drawn = [&](int i) {
        return !whereBack || page_.Background[static_cast<std::size_t>(i)] != 0;
    };
    for (int from = first_; from < last_;) {
        if (!drawn(from)) {
            ++from;
            continue;
        }
        int to = from;
        while (to < last_ && to - from < PIECE - 1 && drawn(to + 1)) ++to;
        if (to > from) DrawPiece(from, to, where, graph);
        from = to > from ? to : from + 1;
    }
}

/// The channels from and to and all between them; the next piece begins with `to`.
void PageDrawer::DrawPiece(int from, int to, const Rect& where, int graph) {
    const double left = XOf(from);
    Viewport part(canvas_.Below(), left, where.Top, XOf(to) - left, where.Height());
    Canvas canvas(part);
    canvas.DrawWidth = canvas_.DrawWidth;
    DrawTarget& t = engine_.Target(TARGET_PRINT);
    t.Canvas = &canvas;
    engine_.SetChannelRange(TARGET_PRINT, from + 1, to + 1);
    engine_.PlotGraph(TARGET_PRINT, graph);
    t.Canvas = nullptr;
}

/// What the fit leaves over, in units of the square root of the counts, from -5 to 5.
void PageDrawer::DrawRest() {
    constexpr double reach = 5.0;
    const Rect& rest = at_.Rest;
    Viewport part(canvas_.Below(), rest.Left, rest.Top, rest.Width(), rest.Height());
    Canvas canvas(part);
    canvas.Scale(first_, reach, last_, -reach);
    canvas.Line(first_, 0.0, last_, 0.0, FAINT);
    canvas.DrawWidth = 0.5;
    bool open = false;
    double before = 0.0;
    for (int i = first_; i <= last_; ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (HasBack() && page_.Background[at] == 0) {
            open = false;
            continue;
        }
        const double count = page_.Counts[at];
        const double now =
            std::clamp((count - sum_[at]) / std::sqrt(std::max(count, 1.0)), -reach, reach);
        if (open) canvas.Line(i - 1, before, i, now, REST_COLOUR);
        before = now;
        open = true;
    }
    canvas_.Box(rest.Left, rest.Top, rest.Right, rest.Bottom, FAINT, false);
    WriteRight(rest.Left - 4.0, rest.Top - 1.0, "+5", QUIET, 6.5);
    WriteRight(rest.Left - 4.0, (rest.Top + rest.Bottom) / 2.0 - 4.0, "Δ/σ", QUIET, 6.5);
    WriteRight(rest.Left - 4.0, rest.Bottom - 6.5, "-5", QUIET, 6.5);
}

void PageDrawer::DrawAxes() {
    // 1. Counts: a strip taller than the plot, so that the labels at its ends are whole.
    const Rect& plot = at_.Plot;
    constexpr double over = 8.0;
    Viewport left(canvas_.Below(), 0.0, plot.Top - over, plot.Left - 4.0, plot.Height() + 2 * over);
    Canvas counts(left);
    const double beyond = 100.0 * over / plot.Height();
    counts.Scale(0.0, 100.0 + beyond, 100.0, -beyond);
    AxisScale axis;
    YScaleDraw(counts, page_.Log ? LOG_DECADES : fullScale_, axis, INK);

    // 2. The unit, and below it the channels.
    const double low = at_.Rest.Bottom;
    XAxis what{page_.Unit, TICKS, static_cast<double>(last_ - first_ + 1),
               static_cast<double>(first_), page_.Param.TwoTheta};
    if (what.Unit == UNIT_D && !(page_.Param.TwoTheta > 0.0)) what.Unit = UNIT_CH;
    const auto strip = [&](double top, Colour ink) {
        Viewport below(canvas_.Below(), plot.Left, top, plot.Width(), 20.0);
        Canvas canvas(below);
        XScaleDraw(canvas, what, page_.Param, page_.Dac, axis, ink);
        WriteRight(plot.Left - 6.0, top + 5.0, UnitAbbrev(what.Unit), ink, 8.0);
    };
    strip(low + 2.0, INK);
    if (what.Unit == UNIT_CH) return;
    what.Unit = UNIT_CH;
    strip(low + 22.0, QUIET);
}

void PageDrawer::DrawLegend() {
    struct Entry {
        const char* Name;
        Colour Ink;
        double Width;
        bool There;
    };
    const Entry entries[] = {{"counts", DATA_COLOUR, 0.8, true},
                             {"fit on background", FIT_COLOUR, 2.2, HasFit() && HasBack()},
                             {"fit", FIT_COLOUR, 2.2, HasFit() && !HasBack()},
                             {"background", BACK_COLOUR, 0.8, HasBack()}};
    const auto lines = std::count_if(std::begin(entries), std::end(entries),
                                     [](const Entry& entry) { return entry.There; });
    const double left = at_.Plot.Right - 112.0;
    double y = at_.Plot.Top + 6.0;
    canvas_.Box(left - 5.0, y - 2.0, at_.Plot.Right - 5.0,
                y + 10.0 * static_cast<double>(lines) + 2.0, PAPER, true);
    for (const Entry& entry : entries) {
        if (!entry.There) continue;
        canvas_.DrawWidth = entry.Width;
        canvas_.Line(left, y + 4.5, left + 18.0, y + 4.5, entry.Ink);
        canvas_.DrawWidth = 1.0;
        Write(left + 23.0, y, entry.Name, INK, 7.5);
        y += 10.0;
    }
}

void PageDrawer::DrawPeaks() {
    // 1. The peaks in view, from left to right.
    std::vector<const PagePeak*> peaks;
    for (const PagePeak& peak : page_.Peaks)
        if (peak.Ch >= first_ && peak.Ch <= last_) peaks.push_back(&peak);
    std::sort(peaks.begin(), peaks.end(),
              [](const PagePeak* a, const PagePeak* b) { return a->Ch < b->Ch; });
    std::vector<double> wanted;
    for (const PagePeak* peak : peaks) wanted.push_back(XOf(peak->Ch));
    const std::vector<double> places =
        SpreadLabels(wanted, LABEL_GAP, at_.Plot.Left + 4.0, at_.Plot.Right - 4.0);

    // 2. A leader from each label to its peak, and the label upright above the plot.
    const double crowd =
        places.size() < 2 ? LABEL_GAP : at_.Plot.Width() / static_cast<double>(places.size());
    const double size = LABEL_SIZE * std::min(1.0, crowd / LABEL_GAP);
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        const auto channel = static_cast<std::size_t>(
            std::clamp(std::lround(peaks[i]->Ch), 0L, static_cast<long>(last_)));
        const double tip = YOf(page_.Counts[channel]) - 3.0;
        const double knee = at_.Plot.Top - 2.0;
        const Colour ink = peaks[i]->Used ? INK : FAINT;
        canvas_.DrawWidth = 0.4;
        canvas_.Line(places[i], at_.LabelBase + 1.0, wanted[i], knee, FAINT);
        if (tip > knee) canvas_.Line(wanted[i], knee, wanted[i], tip, FAINT);
        canvas_.DrawWidth = 1.0;
        canvas_.FontSize = size;
        canvas_.TextAngle = 90.0;
        const double high = canvas_.TextHeight("A");
        Write(places[i] - high / 2.0, at_.LabelBase, peaks[i]->Label, ink, size);
        canvas_.TextAngle = 0.0;
    }
}

/// The blocks side by side; the abscissa where the next thing may stand.
double PageDrawer::DrawBlocks() {
    constexpr double size = 8.0;
    double left = at_.Blocks.Left;
    for (const PageBlock& block : page_.Blocks) {
        canvas_.FontSize = size;
        double heading = 0.0;
        double value = 0.0;
        for (const auto& [name, text] : block.Lines) {
            heading = std::max(heading, canvas_.TextWidth(name));
            value = std::max(value, canvas_.TextWidth(text));
        }
        double y = at_.Blocks.Top;
        Write(left, y, block.Title, QUIET, size, true);
        const double title = canvas_.TextWidth(block.Title) * 1.1;
        for (const auto& [name, text] : block.Lines) {
            y += LINE_STEP;
            if (y + LINE_STEP > at_.Blocks.Bottom + 1.0) break;
            Write(left, y, name, QUIET, size);
            Write(left + heading + 8.0, y, text, INK, size);
        }
        left += std::max(heading + 8.0 + value, title) + 26.0;
    }
    return left;
}

/// Columns right-aligned, in as many runs side by side as there is room for; the rest is counted.
void PageDrawer::DrawTable(double left) {
    if (page_.Table.Head.empty()) return;
    constexpr double size = 7.5;
    constexpr double between = 9.0;
    canvas_.FontSize = size;
    const std::size_t columns = page_.Table.Head.size();
    std::vector<double> widths(columns);
    double wide = 0.0;
    for (std::size_t c = 0; c < columns; ++c) {
        widths[c] = canvas_.TextWidth(page_.Table.Head[c]) * 1.08;
        for (const auto& row : page_.Table.Rows)
            if (c < row.size()) widths[c] = std::max(widths[c], canvas_.TextWidth(row[c]));
        wide += widths[c] + between;
    }
    const auto rows = static_cast<std::size_t>(at_.Blocks.Height() / LINE_STEP) - 1;
    std::size_t next = 0;
    do {
        if (left + wide > at_.Blocks.Right + between + 1.0) break;
        double x = left;
        for (std::size_t c = 0; c < columns; ++c) {
            x += widths[c];
            canvas_.FontSize = size;
            canvas_.FontBold = true;
            const double head = canvas_.TextWidth(page_.Table.Head[c]);
            Write(x - head, at_.Blocks.Top, page_.Table.Head[c], QUIET, size, true);
            double y = at_.Blocks.Top + LINE_STEP;
            for (std::size_t r = next; r < std::min(next + rows, page_.Table.Rows.size()); ++r) {
                const auto& row = page_.Table.Rows[r];
                if (c < row.size()) WriteRight(x, y, row[c], INK, size);
                y += LINE_STEP;
            }
            x += between;
        }
        next = std::min(next + rows, page_.Table.Rows.size());
        left += wide + 16.0;
    } while (next < page_.Table.Rows.size());
    if (next < page_.Table.Rows.size())
        WriteRight(at_.Blocks.Right, at_.Blocks.Bottom + 8.0,
                   "and " + std::to_string(page_.Table.Rows.size() - next) + " more", QUIET, 7.0);
}

}  // namespace

std::vector<double> SpreadLabels(std::span<const double> wanted, double gap, double low,
                                 double high) {
    // Neighbours that are too near form a group, which stands at the mean of its members' wishes;
    // groups that then collide become one (the pooling of monotone regression).
    struct Group {
        double Sum;  // of the wishes, each less its offset within the group
        std::size_t Size;
    };
    if (wanted.empty()) return {};
    if (wanted.size() > 1)
        gap = std::min(gap, (high - low) / static_cast<double>(wanted.size() - 1));
    const auto span = [&](const Group& group) { return gap * static_cast<double>(group.Size - 1); };
    const auto start = [&](const Group& group) {
        const double mean = group.Sum / static_cast<double>(group.Size);
        return std::clamp(mean, low, std::max(low, high - span(group)));
    };
    std::vector<Group> groups;
    for (const double place : wanted) {
        groups.push_back({place, 1});
        while (groups.size() > 1) {
            const Group& last = groups.back();
            Group& before = groups[groups.size() - 2];
            if (start(before) + span(before) + gap <= start(last)) break;
            const double offset = gap * static_cast<double>(before.Size);
            before.Sum += last.Sum - offset * static_cast<double>(last.Size);
            before.Size += last.Size;
            groups.pop_back();
        }
    }
    std::vector<double> places;
    for (const Group& group : groups)
        for (std::size_t i = 0; i < group.Size; ++i)
            places.push_back(start(group) + gap * static_cast<double>(i));
    return places;
}

void DrawPage(Canvas& canvas, DrawEngine& engine, const PageData& page) {
    PageDrawer(canvas, engine, page).Draw();
}

}  // namespace vael
