// Pages of a result: plots of spectra with their scales, the marked peaks with their labels, blocks
// of lines and the table of peaks, laid out on any canvas whose pixels are points.
#pragma once

#include "core/records.h"
#include "display/canvas.h"
#include "display/drawspect.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace vael {

/// Channels of a curve, both included, that have an ink of their own.
struct PageStretch {
    int Start = 0;
    int End = 0;
    Colour Ink = 0;
};

/// One curve of a plot, channels counted from 0.
struct PageCurve {
    std::string Name;  // in the legend; empty for none
    std::vector<std::int32_t> Counts;
    std::vector<std::int32_t> Where;  // not empty: the curve is drawn only where this is not 0
    std::vector<PageStretch> Stretches;
    Colour Ink = 0;                 // 0: black, as the print target has it
    double Width = 0.6;             // points; also of dots
    std::int16_t Kind = DRAW_LINE;  // DRAW_LINE, DRAW_PAINT or DRAW_DOT
};

/// A peak or line to be marked. `Label` stands upright above the plot, such as "2 0 0  2.0391", and
/// a leader goes from it down to `Count` at channel `Ch` (from 0).
struct PagePeak {
    double Ch = 0.0;
    double Count = 0.0;
    std::string Label;
    Colour Ink = Rgb(34, 34, 34);
};

/// What a fit leaves over: drawn in its own strip below the plot in units of the square root of the
/// counts. All three are as long as each other, or empty for no strip; where `Where` is 0 the fit
/// did not reach.
struct PageRest {
    std::vector<std::int32_t> Counts;
    std::vector<std::int32_t> Model;
    std::vector<std::int32_t> Where;
};

/// One plot with its axes.
struct PagePlot {
    std::vector<PageCurve> Curves;  // the first one lies undermost
    PageRest Rest;
    std::vector<PagePeak> Peaks;
    ParamRecord Param{};  // calibration in force
    DacAxis Dac{};
    int Unit = 1;  // unit of the lower axis; the channels stand below it
    bool Log = false;
    std::int32_t FullScale = 0;  // 0: chosen from what is shown
    int First = 0;               // first and last channel shown, 0-based; a last one below the
    int Last = -1;               // first means the last of the longest curve
    double Share = 1.0;          // of the height, beside other plots
};

/// Lines of a heading and a value under a title.
struct PageBlock {
    std::string Title;
    std::vector<std::pair<std::string, std::string>> Lines;
};

/// A table; rows shorter than the head end in empty cells.
struct PageTable {
    std::vector<std::string> Head;
    std::vector<std::vector<std::string>> Rows;
};

struct PageData {
    std::string Title;
    std::string Subtitle;
    std::string Footer;
    std::vector<PagePlot> Plots;  // one above the other
    std::vector<PageBlock> Blocks;
    PageTable Table;
};

/// Brings the next page on the canvas; false when there is none, and the drawing ends.
using NextPage = std::function<bool()>;

/// Draws the pages: plots, blocks and as much of the table as has room on the first, the rest of
/// the table on the next ones, each with its heading. A canvas that is wider than tall has the
/// table beside the blocks, else it stands below them. `engine` lends its print target, which is
/// cleared first. Every channel is drawn, in pieces of at most 512 channels, since a longer piece
/// would be thinned out. False when `next` gave no page. Faults: those of `XScaleDraw`.
bool DrawPages(Canvas& canvas, DrawEngine& engine, const PageData& page, const NextPage& next);

/// Two curves of counts together, as long as the shorter one, held within 32 bits.
[[nodiscard]] std::vector<std::int32_t> SumOf(std::span<const std::int32_t> a,
                                              std::span<const std::int32_t> b);

/// Places for labels that want to stand at `wanted` (ascending) but `gap` apart, within low to
/// high: those that collide share the middle of their wishes. A gap that does not fit is narrowed.
[[nodiscard]] std::vector<double> SpreadLabels(std::span<const double> wanted, double gap,
                                               double low, double high);

}  // namespace vael
