// The spectrum drawing engine: registered copies of graphs in drawing coordinates, replotted onto
// three targets (the two graph windows and the print target) with their lines, texts and symbols.
#pragma once

#include "core/records.h"
#include "core/talk.h"
#include "display/canvas.h"

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace vael {

inline constexpr int TARGET_COUNT = 3;
inline constexpr int TARGET_PRINT = 2;    // 0 and 1 are the graph windows
inline constexpr int PLOT_POINTS = 8193;  // entries of a drawing table, 0 to 8192

inline constexpr std::int16_t DRAW_LINE = 0;
inline constexpr std::int16_t DRAW_PAINT = 1;
inline constexpr std::int16_t DRAW_DOT = 2;

/// `YTop` of the logarithmic axis: it counts decades there, so the picture runs from 1 to 10^7
/// counts, and a graph is cut at the top. The scale strip knows the log axis by a full scale
/// below 10.
inline constexpr std::int32_t LOG_DECADES = 7;

/// Rows of the registration tables and how many of them are handed out.
inline constexpr int TEXT_ROWS = 101, TEXT_LIMIT = 100;
inline constexpr int SYMBOL_ROWS = 24577, SYMBOL_LIMIT = 24575;
inline constexpr int VLINE_ROWS = 101, VLINE_LIMIT = 101;
inline constexpr int MARK_ROWS = 101, MARK_LIMIT = 101;

/// Shapes of a symbol, each inside a square of `Size` pixels around its point.
enum class SymbolShape : std::int16_t { Plus, Cross, Square, Diamond, Up, Down, Bar };

/// One row of a registration table. Positions are in the coordinates of the plot: 0-based channels
/// across, counts (or decades) upward.
struct TextRecord {
    float X, Y;    // text: top left corner; symbol: its middle; line and mark: one end
    float X2, Y2;  // line and mark: the other end
    Colour Color;
    std::int16_t Size;   // text: points; symbol: pixels; line and mark: line width in pixels
    std::int16_t Angle;  // degrees counter-clockwise
    std::int16_t Bold;
    std::int16_t Kind;          // symbol: SymbolShape; mark: the group it belongs to
    std::array<char, 48> Text;  // UTF-8, filled up with NUL; cut between characters
};
static_assert(sizeof(TextRecord) == 76);

/// How a text is registered; `Size` in points, `Angle` in degrees counter-clockwise.
struct TextStyle {
    Colour Color = 0;
    std::int16_t Size = 9;
    std::int16_t Angle = 0;
    bool Bold = false;
};

/// One graph of a target.
struct DrawGraph {
    Colour GraphColor;
    std::int32_t GraphInUse;                      // -1 when registered
    std::array<std::int32_t, PLOT_POINTS> PlotY;  // YTop less the count, per channel
    std::array<Colour, PLOT_POINTS> PlotColor;    // 0: GraphColor; else this stroke's colour
};

/// One drawing target. Read it freely; `YTop` and `LogScale` change through `SetFullScale`.
struct DrawTarget {
    vael::Canvas* Canvas = nullptr;  // where to draw; without one nothing is drawn
    std::int16_t XStart = 0;         // first and last channel shown, 0-based; XStart may be -1
    std::int16_t XEnd = 0;
    std::int32_t YTop = 0;      // full scale in counts; on the log axis in decades
    std::int16_t LogScale = 0;  // 1 for logarithmic y
    std::int16_t DrawKind = DRAW_LINE;
    bool Printing = false;    // graphs in black, negative counts cleared
    double PrintWidth = 1.0;  // width of dots while printing, pixels
    Colour BackColor = 0;     // what `Erase` leaves

    std::array<DrawGraph, SLOT_COUNT> Graph;
    std::array<std::uint16_t, PLOT_POINTS> ActiveGraph;  // bit g: graph g holds this channel
    std::array<TextRecord, TEXT_ROWS> Text;
    std::array<TextRecord, SYMBOL_ROWS> Symbol;
    std::array<TextRecord, VLINE_ROWS> VLine;
    std::array<TextRecord, MARK_ROWS> Mark;  // exclusive-or strokes that stand on the picture
    std::int32_t TextNum = 0, SymbolNum = 0, VLineNum = 0, MarkNum = 0;
};

/// The engine. Its tables are taken once, when it is made; no operation allocates afterwards, but
/// for the words of a message. Target and graph numbers count from 0. Faults: Subscript for a
/// target outside 0 to 2; graph numbers are checked with a message instead.
///
/// The picture of a target runs from `XStart` to `XEnd` across and from 0 to `YTop` upward: each
/// plot sets that scale on the canvas and leaves it there, so that a caller can draw in channels
/// and counts (log axis: decades) afterwards.
class DrawEngine {
public:
    DrawEngine();
    explicit DrawEngine(Talk voice);

    /// Messages go here, each with the title "グラフ表示".
    Talk Voice;

    [[nodiscard]] DrawTarget& Target(int target);
    [[nodiscard]] const DrawTarget& Target(int target) const;

    /// Zeroes graphs, ranges, scales, kinds and registrations of every target, or of one. Canvas,
    /// background and print width stay: they belong to the view.
    void ClearAll();
    void ClearTarget(int target);
    /// Empties the text, symbol, line and mark tables of every target, or of one.
    void ClearRegistrations();
    void ClearRegistrations(int target);

    /// Stores the first `count` values of `data` as graph `graph`; channels behind them count 0.
    /// The choice of piling graphs up is the caller's: what it adds to the counts is drawn. Says
    /// "グラフ番号が有効ではありません。" for a graph outside 0 to 13. Faults: Subscript for a
    /// count above the data or 8193, Overflow where YTop less a count leaves 32 bits.
    void RegisterGraph(int target, int graph, std::span<const std::int32_t> data, int count,
                       Colour colour);
    /// The same in the first graph that is free; -1 and "グラフ領域が満杯です。" when none is.
    int RegisterFreeGraph(int target, std::span<const std::int32_t> data, int count, Colour colour);
    /// Takes a graph off the target (not off its picture); the others stay.
    void WithdrawGraph(int target, int graph);
    void SetGraphColor(int target, int graph, Colour colour);
    /// Colours the strokes that end at the channels start to end (0-based, both included); colour 0
    /// gives them back to the graph's own.
    void SetPlotColor(int target, int graph, int start, int end, Colour colour);

    /// The channels shown, numbered from 1 as the user sees them: XStart = start - 1 and XEnd =
    /// end - 1. Refused with a message: a start below 1; an XEnd of 8192 or more. More than 8192
    /// channels are told too: then XEnd is cut to 8191 and XStart stays.
    void SetChannelRange(int target, int start, int end);
    /// The full scale. Graphs that are registered follow it. `log`: YTop becomes LOG_DECADES,
    /// whatever `fullScale` says.
    void SetFullScale(int target, std::int32_t fullScale, bool log);

    /// Sets the canvas to the target's coordinates.
    void ScaleCanvas(int target);
    /// Clears the picture to `BackColor`; registrations stay.
    void Erase(int target);
    /// Draws all registered graphs, then vertical lines, texts and symbols, on what is there.
    void PlotAll(int target);
    /// `Erase`, `PlotAll`, and the marks that are on.
    void Replot(int target);
    /// One graph as line or dots. `DrawKind` 1 draws nothing here: it is `PlotGraphPaint`'s.
    void PlotGraph(int target, int graph);
    /// One graph as vertical lines from the axis up to the value.
    void PlotGraphPaint(int target, int graph);
    /// A short line at each peak of each registered graph, from YTop down by a twentieth.
    /// `peakTables` by graph number, shorter than 14 when there are fewer.
    void DrawPeakMarks(int target, std::span<const PeakTable> peakTables,
                       Colour ink = Rgb(255, 255, 255));

    /// Add a row to a table; false and a message (none for marks) when it is full.
    bool RegisterText(int target, double x, double y, std::string_view utf8, TextStyle style = {});
    bool RegisterSymbol(int target, double x, double y, SymbolShape shape, Colour colour,
                        int sizePixels = 7);
    /// A line at channel x from y1 to y2, with a text beside its upper end when there is one.
    bool RegisterVLine(int target, double x, double y1, double y2, Colour colour,
                       std::string_view utf8 = {});
    /// An exclusive-or stroke: draws it and keeps it in the list of those that stand on the
    /// picture. Nothing on paper.
    bool RegisterMark(int target, int group, Spot from, Spot to, Colour colour, int width = 1);
    /// Draws the marks of a group a second time, so that they are gone, and drops them.
    void RemoveMarks(int target, int group);
    /// Forgets all marks without drawing: the picture they stood on is drawn anew.
    void DropMarks(int target);

private:
    [[nodiscard]] DrawTarget& At(int target) const;
    void Say(std::string_view text) const;
    void DrawRegistrations(DrawTarget& t) const;
    std::unique_ptr<std::array<DrawTarget, TARGET_COUNT>> targets_;
};

/// Every how many channels a plot takes one when `channels` are shown: 1 up to 512 channels, else
/// channels / 512 + 0.1 rounded to the nearest, ties to even. Faults: Overflow.
[[nodiscard]] std::int16_t PlotStep(int channels);

}  // namespace vael
