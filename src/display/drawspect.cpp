// The spectrum drawing engine: plotting, drawing of the registered texts, symbols, lines and marks.
#include "display/drawspect.h"

#include "core/fault.h"

#include <algorithm>
#include <cmath>

namespace vael {
namespace {

constexpr Colour BLACK = Rgb(0, 0, 0);
constexpr int POINTS_ACROSS = 512;  // the step caps the strokes of a graph at about this many

/// Restores what a drawing routine changes of a canvas.
class PenKeeper {
public:
    explicit PenKeeper(Canvas& canvas)
        : canvas_(canvas),
          width_(canvas.DrawWidth),
          mode_(canvas.DrawMode),
          size_(canvas.FontSize),
          angle_(canvas.TextAngle),
          bold_(canvas.FontBold) {}
    ~PenKeeper() {
        canvas_.DrawWidth = width_;
        canvas_.DrawMode = mode_;
        canvas_.FontSize = size_;
        canvas_.TextAngle = angle_;
        canvas_.FontBold = bold_;
    }
    PenKeeper(const PenKeeper&) = delete;
    PenKeeper& operator=(const PenKeeper&) = delete;

private:
    Canvas& canvas_;
    double width_;
    int mode_;
    double size_, angle_;
    bool bold_;
};

bool IsGraph(int graph) { return graph >= 0 && graph < SLOT_COUNT; }

/// The y of a channel as it goes to the canvas: counts, or decades on the log axis.
class YRule {
public:
    YRule(const DrawTarget& target, const DrawGraph& graph)
        : t_(target),
          g_(graph),
          log_(target.LogScale == 1),
          clear_(target.Printing || target.LogScale == 1) {}

    [[nodiscard]] double At(int channel) const {
        // In front of the first channel a picture starts from the top.
        const std::int32_t stored =
            channel < 0 ? Int32(t_.YTop) : Int32(t_.YTop) - Int32(Item(g_.PlotY, channel));
        double y = stored;
        // On the linear screen negative counts are drawn as they are stored.
        if (clear_ && y < 0.0) y = 0.0;
        if (log_ && y != 0.0) y = std::min(std::log10(y), static_cast<double>(t_.YTop));
        return y;
    }
    /// Both ends at the top of the log axis: such a stroke would only thicken the edge.
    [[nodiscard]] bool AlongTop(double p, double q) const {
        return log_ && p == t_.YTop && q == t_.YTop;
    }

private:
    const DrawTarget& t_;
    const DrawGraph& g_;
    bool log_, clear_;
};

/// What the two plot routines share.
struct Plot {
    Plot(const DrawTarget& t, int graph)
        : G(Item(t.Graph, graph)),
          Y(t, G),
          Ink(t.Printing ? BLACK : G.GraphColor),
          Shown(t.XEnd - t.XStart + 1),
          Step(PlotStep(Shown)),
          First(t.XStart + 1),
          Last(t.XEnd) {}
    [[nodiscard]] Colour InkAt(int channel) const {
        const Colour own = Item(G.PlotColor, channel);
        return own != 0 ? own : Ink;
    }
    const DrawGraph& G;
    YRule Y;
    Colour Ink;
    int Shown;
    int Step;
    int First, Last;
};

std::string_view TextOf(const TextRecord& row) {
    const auto end = std::find(row.Text.begin(), row.Text.end(), '\0');
    return {row.Text.data(), static_cast<std::size_t>(end - row.Text.begin())};
}

/// Stores a UTF-8 text, cut so that no character is torn.
void PutText(TextRecord& row, std::string_view utf8) {
    std::size_t size = std::min(utf8.size(), row.Text.size());
    while (size > 0 && size < utf8.size() &&
           (static_cast<unsigned char>(utf8[size]) & 0xC0U) == 0x80U)
        --size;
    row.Text.fill('\0');
    std::copy_n(utf8.begin(), size, row.Text.begin());
}

TextRecord MakeRow(double x, double y, double x2, double y2, Colour colour, int size) {
    TextRecord row{};
    row.X = static_cast<float>(x);
    row.Y = static_cast<float>(y);
    row.X2 = static_cast<float>(x2);
    row.Y2 = static_cast<float>(y2);
    row.Color = colour;
    row.Size = Whole16(size);
    return row;
}

void DrawSymbol(Canvas& canvas, const TextRecord& row) {
    const Extent pixel = canvas.PixelUnit();
    const double half = row.Size / 2.0;
    const double x = row.X;
    const double y = row.Y;
    const double dx = half * pixel.Width;
    const double dy = half * pixel.Height;
    const Colour ink = row.Color;
    switch (static_cast<SymbolShape>(row.Kind)) {
        case SymbolShape::Plus:
            canvas.Line(x - dx, y, x + dx, y, ink);
            canvas.Line(x, y - dy, x, y + dy, ink);
            break;
        case SymbolShape::Cross:
            canvas.Line(x - dx, y - dy, x + dx, y + dy, ink);
            canvas.Line(x - dx, y + dy, x + dx, y - dy, ink);
            break;
        case SymbolShape::Square: canvas.Box(x - dx, y + dy, x + dx, y - dy, ink, false); break;
        case SymbolShape::Diamond:
            canvas.Line(x - dx, y, x, y + dy, ink);
            canvas.Line(x, y + dy, x + dx, y, ink);
            canvas.Line(x + dx, y, x, y - dy, ink);
            canvas.Line(x, y - dy, x - dx, y, ink);
            break;
        case SymbolShape::Up:
            canvas.Line(x - dx, y - dy, x, y + dy, ink);
            canvas.Line(x, y + dy, x + dx, y - dy, ink);
            canvas.Line(x + dx, y - dy, x - dx, y - dy, ink);
            break;
        case SymbolShape::Down:
            canvas.Line(x - dx, y + dy, x, y - dy, ink);
            canvas.Line(x, y - dy, x + dx, y + dy, ink);
            canvas.Line(x + dx, y + dy, x - dx, y + dy, ink);
            break;
        case SymbolShape::Bar: canvas.Line(x, y - dy, x, y + dy, ink); break;
    }
}

void DrawMark(Canvas& canvas, const TextRecord& row) {
    const PenKeeper keep(canvas);
    canvas.DrawMode = DRAW_XOR;
    canvas.DrawWidth = row.Size;
    canvas.Line(row.X, row.Y, row.X2, row.Y2, row.Color);
}

/// Zeroes what belongs to the measurement, and keeps what belongs to the view.
void ClearRows(DrawTarget& t) {
    t.Text.fill({});
    t.Symbol.fill({});
    t.VLine.fill({});
    t.Mark.fill({});
    t.TextNum = t.SymbolNum = t.VLineNum = t.MarkNum = 0;
}

}  // namespace

std::int16_t PlotStep(int channels) {
    if (channels <= POINTS_ACROSS) return 1;
    return Whole16(static_cast<double>(channels) / POINTS_ACROSS + 0.1);
}

DrawEngine::DrawEngine() : targets_(std::make_unique<std::array<DrawTarget, TARGET_COUNT>>()) {
    ClearAll();
}

DrawEngine::DrawEngine(Talk voice) : DrawEngine() { Voice = std::move(voice); }

DrawTarget& DrawEngine::At(int target) const { return Item(*targets_, target); }
DrawTarget& DrawEngine::Target(int target) { return At(target); }
const DrawTarget& DrawEngine::Target(int target) const { return At(target); }

void DrawEngine::Say(std::string_view text) const { Voice.say(text, "グラフ表示"); }

void DrawEngine::ClearAll() {
    for (int target = 0; target < TARGET_COUNT; ++target) ClearTarget(target);
}

void DrawEngine::ClearTarget(int target) {
    DrawTarget& t = At(target);
    t.XStart = t.XEnd = 0;
    t.YTop = 0;
    t.LogScale = 0;
    t.DrawKind = DRAW_LINE;
    t.Printing = false;
    for (DrawGraph& graph : t.Graph) {
        graph.GraphColor = 0;
        graph.GraphInUse = 0;
        graph.PlotY.fill(0);
        graph.PlotColor.fill(0);
    }
    t.ActiveGraph.fill(0);
    ClearRows(t);
}

void DrawEngine::ClearRegistrations() {
    for (int target = 0; target < TARGET_COUNT; ++target) ClearRegistrations(target);
}

void DrawEngine::ClearRegistrations(int target) { ClearRows(At(target)); }

void DrawEngine::RegisterGraph(int target, int graph, std::span<const std::int32_t> data, int count,
                               Colour colour) {
    DrawTarget& t = At(target);
    if (!IsGraph(graph)) {
        Say("グラフ番号が有効ではありません。");
        return;
    }
    DrawGraph& g = Item(t.Graph, graph);
    if (count > 0) {
        static_cast<void>(Item(data, count - 1));
        static_cast<void>(Item(g.PlotY, count - 1));
    }
    const auto used = static_cast<std::size_t>(std::max(count, 0));
    const Int32 top(t.YTop);
    // The lowest count is the one that may leave 32 bits; asking it first leaves nothing half done.
    if (used > 0)
        static_cast<void>(top - Int32(*std::min_element(data.begin(), data.begin() + count)));
    for (std::size_t i = 0; i < used; ++i) g.PlotY[i] = t.YTop - data[i];
    std::fill(g.PlotY.begin() + std::max(count, 0), g.PlotY.end(), t.YTop);
    g.PlotColor.fill(0);
    g.GraphColor = colour;
    g.GraphInUse = TRUE_WORD;
    const auto bit = static_cast<std::uint16_t>(1U << static_cast<unsigned>(graph));
    for (std::size_t i = 0; i < t.ActiveGraph.size(); ++i) {
        const unsigned word = t.ActiveGraph[i];
        t.ActiveGraph[i] = static_cast<std::uint16_t>(i < used ? word | bit : word & ~bit);
    }
}

int DrawEngine::RegisterFreeGraph(int target, std::span<const std::int32_t> data, int count,
                                  Colour colour) {
    const DrawTarget& t = At(target);
    for (int graph = 0; graph < SLOT_COUNT; ++graph) {
        if (Item(t.Graph, graph).GraphInUse != 0) continue;
        RegisterGraph(target, graph, data, count, colour);
        return graph;
    }
    Say("グラフ領域が満杯です。");
    return -1;
}

void DrawEngine::WithdrawGraph(int target, int graph) {
    DrawTarget& t = At(target);
    if (!IsGraph(graph)) {
        Say("グラフ番号が有効ではありません。");
        return;
    }
    Item(t.Graph, graph).GraphInUse = 0;
    const unsigned bit = 1U << static_cast<unsigned>(graph);
    for (std::uint16_t& word : t.ActiveGraph) word = static_cast<std::uint16_t>(word & ~bit);
}

void DrawEngine::SetGraphColor(int target, int graph, Colour colour) {
    Item(At(target).Graph, graph).GraphColor = colour;
}

void DrawEngine::SetPlotColor(int target, int graph, int start, int end, Colour colour) {
    DrawGraph& g = Item(At(target).Graph, graph);
    for (int i = start; i <= end; ++i) Item(g.PlotColor, i) = colour;
}

void DrawEngine::SetChannelRange(int target, int start, int end) {
    DrawTarget& t = At(target);
    if (start < 1) {
        Say("開始位置指定は1からです。");
        return;
    }
    if (end - start + 1 > MAX_CHANNELS) {
        Say("チャンネル数オーバー");
        t.XEnd = MAX_CHANNELS - 1;
        return;
    }
    if (end - 1 >= MAX_CHANNELS) {
        Say("Ｃｈ軸最終位置計算値オーバー");
        return;
    }
    t.XStart = Whole16(start - 1);
    t.XEnd = Whole16(end - 1);
}

void DrawEngine::SetFullScale(int target, std::int32_t fullScale, bool log) {
    DrawTarget& t = At(target);
    const std::int32_t top = log ? LOG_DECADES : fullScale;
    const std::int32_t move = Int32(top) - Int32(t.YTop);
    if (move != 0) {
        // Whether any count would leave its 32 bits is asked before the first one moves.
        for (const DrawGraph& g : t.Graph) {
            if (g.GraphInUse == 0) continue;
            const auto [low, high] = std::minmax_element(g.PlotY.begin(), g.PlotY.end());
            static_cast<void>(Int32(move < 0 ? *low : *high) + Int32(move));
        }
        for (DrawGraph& g : t.Graph)
            if (g.GraphInUse != 0)
                for (std::int32_t& y : g.PlotY) y += move;
    }
    t.YTop = top;
    t.LogScale = log ? 1 : 0;
}

void DrawEngine::ScaleCanvas(int target) {
    const DrawTarget& t = At(target);
    if (t.Canvas == nullptr) return;
    t.Canvas->Scale(t.XStart, t.YTop, t.XEnd, 0.0);
}

void DrawEngine::Erase(int target) {
    const DrawTarget& t = At(target);
    if (t.Canvas != nullptr) t.Canvas->Clear(t.BackColor);
}

void DrawEngine::PlotAll(int target) {
    DrawTarget& t = At(target);
    if (t.Canvas == nullptr) return;
    for (int graph = 0; graph < SLOT_COUNT; ++graph) {
        if (Item(t.Graph, graph).GraphInUse == 0) continue;
        if (t.DrawKind == DRAW_PAINT)
            PlotGraphPaint(target, graph);
        else
            PlotGraph(target, graph);
    }
    ScaleCanvas(target);
    DrawRegistrations(t);
}

void DrawEngine::Replot(int target) {
    DrawTarget& t = At(target);
    if (t.Canvas == nullptr) return;
    Erase(target);
    PlotAll(target);
    if (t.Printing) return;
    for (int i = 0; i < t.MarkNum; ++i) DrawMark(*t.Canvas, Item(t.Mark, i));
}

void DrawEngine::PlotGraph(int target, int graph) {
    const DrawTarget& t = At(target);
    if (!IsGraph(graph)) {
        Say("グラフNoｶﾞ規定範囲外です｡:" + std::to_string(graph));
        return;
    }
    if (t.Canvas == nullptr) return;
    ScaleCanvas(target);
    Canvas& canvas = *t.Canvas;
    const Plot plot(t, graph);
    if (t.DrawKind == DRAW_LINE) {
        double p = plot.Y.At(t.XStart);
        for (int i = plot.First; i <= plot.Last; i += plot.Step) {
            const double q = plot.Y.At(i);
            if (!plot.Y.AlongTop(p, q)) canvas.Line(i - plot.Step, p, i, q, plot.InkAt(i));
            p = q;
        }
    } else if (t.DrawKind == DRAW_DOT) {
        const double kept = canvas.DrawWidth;
        canvas.DrawWidth = t.Printing ? t.PrintWidth : plot.Shown < 2049 ? 2.0 : 1.0;
        for (int i = plot.First; i <= plot.Last; i += plot.Step)
            canvas.PSet(i, plot.Y.At(i), plot.InkAt(i));
        canvas.DrawWidth = kept;
    }
}

void DrawEngine::PlotGraphPaint(int target, int graph) {
    const DrawTarget& t = At(target);
    if (!IsGraph(graph)) {
        Say("グラフNoが規定範囲外です｡:" + std::to_string(graph));
        return;
    }
    if (t.Canvas == nullptr) return;
    ScaleCanvas(target);
    const Plot plot(t, graph);
    for (int i = plot.First; i <= plot.Last; i += plot.Step)
        t.Canvas->Line(i, 0.0, i, plot.Y.At(i), plot.InkAt(i));
}

void DrawEngine::DrawPeakMarks(int target, std::span<const PeakTable> peakTables, Colour ink) {
    const DrawTarget& t = At(target);
    if (t.Canvas == nullptr) return;
    ScaleCanvas(target);
    const double top = t.YTop;
    for (int graph = 0; graph < SLOT_COUNT; ++graph) {
        if (Item(t.Graph, graph).GraphInUse == 0) continue;
        if (std::cmp_greater_equal(graph, peakTables.size())) break;
        const PeakTable& table = Item(peakTables, graph);
        for (int i = 0; i < table.PeakNum; ++i) {
            const double x = Item(table.Peak, i).Position;
            if (x >= t.XStart && x <= t.XEnd) t.Canvas->Line(x, top, x, top - top / 20.0, ink);
        }
    }
}

bool DrawEngine::RegisterText(int target, double x, double y, std::string_view utf8,
                              TextStyle style) {
    DrawTarget& t = At(target);
    if (t.TextNum >= TEXT_LIMIT) {
        Say("テキスト登録数オーバー");
        return false;
    }
    TextRecord row = MakeRow(x, y, x, y, style.Color, style.Size);
    row.Angle = style.Angle;
    row.Bold = style.Bold ? TRUE_WORD : FALSE_WORD;
    PutText(row, utf8);
    Item(t.Text, t.TextNum++) = row;
    return true;
}

bool DrawEngine::RegisterSymbol(int target, double x, double y, SymbolShape shape, Colour colour,
                                int sizePixels) {
    DrawTarget& t = At(target);
    if (t.SymbolNum >= SYMBOL_LIMIT) {
        Say("シンボル登録数オーバー");
        return false;
    }
    TextRecord row = MakeRow(x, y, x, y, colour, sizePixels);
    row.Kind = static_cast<std::int16_t>(shape);
    Item(t.Symbol, t.SymbolNum++) = row;
    return true;
}

bool DrawEngine::RegisterVLine(int target, double x, double y1, double y2, Colour colour,
                               std::string_view utf8) {
    DrawTarget& t = At(target);
    if (t.VLineNum >= VLINE_LIMIT) {
        Say("縦線登録数オーバー");
        return false;
    }
    TextRecord row = MakeRow(x, y1, x, y2, colour, 1);
    PutText(row, utf8);
    Item(t.VLine, t.VLineNum++) = row;
    return true;
}

bool DrawEngine::RegisterMark(int target, int group, Spot from, Spot to, Colour colour, int width) {
    DrawTarget& t = At(target);
    if (t.MarkNum >= MARK_LIMIT) return false;
    TextRecord row = MakeRow(from.X, from.Y, to.X, to.Y, colour, width);
    row.Kind = Whole16(group);
    Item(t.Mark, t.MarkNum++) = row;
    if (t.Canvas != nullptr && !t.Printing) {
        ScaleCanvas(target);
        DrawMark(*t.Canvas, row);
    }
    return true;
}

void DrawEngine::RemoveMarks(int target, int group) {
    DrawTarget& t = At(target);
    if (t.Canvas != nullptr) ScaleCanvas(target);
    int kept = 0;
    for (int i = 0; i < t.MarkNum; ++i) {
        const TextRecord row = Item(t.Mark, i);
        if (row.Kind != group) {
            Item(t.Mark, kept++) = row;
        } else if (t.Canvas != nullptr && !t.Printing) {
            DrawMark(*t.Canvas, row);
        }
    }
    t.MarkNum = kept;
}

void DrawEngine::DropMarks(int target) { At(target).MarkNum = 0; }

void DrawEngine::DrawRegistrations(DrawTarget& t) const {
    Canvas& canvas = *t.Canvas;
    const PenKeeper keep(canvas);
    canvas.DrawMode = DRAW_COPY;
    const Extent pixel = canvas.PixelUnit();
    for (int i = 0; i < t.VLineNum; ++i) {
        const TextRecord& row = Item(t.VLine, i);
        canvas.DrawWidth = row.Size;
        canvas.Line(row.X, row.Y, row.X, row.Y2, row.Color);
        const std::string_view text = TextOf(row);
        if (text.empty()) continue;
        canvas.CurrentX = row.X + 2.0 * pixel.Width;
        canvas.CurrentY = std::max(row.Y, row.Y2);
        canvas.Print(text, row.Color);
    }
    for (int i = 0; i < t.TextNum; ++i) {
        const TextRecord& row = Item(t.Text, i);
        canvas.FontSize = row.Size;
        canvas.TextAngle = row.Angle;
        canvas.FontBold = row.Bold != 0;
        canvas.CurrentX = row.X;
        canvas.CurrentY = row.Y;
        canvas.Print(TextOf(row), row.Color);
    }
    canvas.DrawWidth = 1.0;
    for (int i = 0; i < t.SymbolNum; ++i) DrawSymbol(canvas, Item(t.Symbol, i));
}

}  // namespace vael
