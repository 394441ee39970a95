// One page of a result: the plot of a spectrum with its fit, both scales, the peaks with their
// labels, and what was found, laid out on any canvas whose pixels are points.
#pragma once

#include "core/records.h"
#include "display/canvas.h"
#include "display/drawspect.h"

#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace vael {

/// A peak to be marked. `Ch` counts from 0; `Label` stands upright above the plot, such as
/// "2 0 0  2.0391".
struct PagePeak {
    double Ch = 0.0;
    std::string Label;
    bool Used = true;  // a peak that takes no part in the cell is drawn faint
};

/// Lines of a heading and a value under a title.
struct PageBlock {
    std::string Title;
    std::vector<std::pair<std::string, std::string>> Lines;
};

/// A small table; rows shorter than the head end in empty cells.
struct PageTable {
    std::vector<std::string> Head;
    std::vector<std::vector<std::string>> Rows;
};

struct PageData {
    std::string Title;
    std::string Subtitle;
    std::string Footer;
    std::span<const std::int32_t> Counts;      // channels from 0
    std::span<const std::int32_t> Background;  // empty, or as long; 0 where there is none
    std::span<const std::int32_t> Fit;         // peaks without background: empty, or as long
    ParamRecord Param{};                       // calibration in force
    DacAxis Dac{};
    int Unit = 1;  // unit of the lower axis; the channels stand below it
    bool Log = false;
    std::int32_t FullScale = 0;  // 0: chosen from what is shown
    int First = 0;               // first and last channel shown, 0-based; a last one below the
    int Last = -1;               // first means the last of the spectrum
    std::vector<PagePeak> Peaks;
    std::vector<PageBlock> Blocks;
    PageTable Table;
};

/// Draws the page; `engine` lends its print target, which is cleared first. Every channel is drawn,
/// in pieces of at most 512 channels, since a longer piece would be thinned out. Faults: those of
/// `XScaleDraw`.
void DrawPage(Canvas& canvas, DrawEngine& engine, const PageData& page);

/// Places for labels that want to stand at `wanted` (ascending) but `gap` apart, within low to
/// high: those that collide share the middle of their wishes. A gap that does not fit is narrowed.
[[nodiscard]] std::vector<double> SpreadLabels(std::span<const double> wanted, double gap,
                                               double low, double high);

}  // namespace vael
