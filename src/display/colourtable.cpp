// The colour table: its order, its colours at the first start, and what keeps a colour readable.
#include "display/colourtable.h"

#include <algorithm>
#include <cmath>

namespace vael {
namespace {

constexpr Colour BLACK = Rgb(0, 0, 0);
constexpr Colour WHITE = Rgb(255, 255, 255);
constexpr Colour GROUND = Rgb(18, 22, 28);  // of the plots

/// A component of a colour, 0 to 255 from bit `shift`, as a share of light.
double Light(Colour colour, unsigned shift) {
    const auto bits = static_cast<unsigned>(colour);
    const double share = ((bits >> shift) & 255U) / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

}  // namespace

const std::array<ColourRole, ROLE_COUNT>& ColourRoles() {
    constexpr const char* GRAPH = "The curve of a graph in this slot, its row's box and swatch";
    constexpr const char* KEPT = "Kept in the table; nothing that is drawn has this colour";
    static constexpr std::array<ColourRole, ROLE_COUNT> ROLES{{
        {0, "Graph1", GRAPH},
        {1, "Graph2", GRAPH},
        {2, "Graph3", GRAPH},
        {3, "Graph4", GRAPH},
        {4, "Graph5", GRAPH},
        {5, "Graph6", GRAPH},
        {6, "Graph7", GRAPH},
        {7, "Graph8", GRAPH},
        {8, "Graph9", GRAPH},
        {9, "Graph10", GRAPH},
        {ENTRY_PEAK_CURVE, "Peak Curve", "The part of a curve that belongs to a peak"},
        {ENTRY_FIT_CURVE, "Fit Curve", KEPT},
        {ENTRY_ZANSA, "Zansa", KEPT},
        {ENTRY_PEAK_MARK, "Peak Mark", "The marks and numbers of peaks (\"Peak Parameter\")"},
        {ENTRY_ELEMENT_MARK, "Element Mark", "The lines of elements, with their names"},
        {ENTRY_ROI_LINE, "ROI Line ", "The part of a curve that a region of interest takes"},
        {ENTRY_ROI_TEXT, "ROI No Text", "The numbers of the regions of interest"},
        {ENTRY_WINDOW1_BACK, "Window1 Back", "The ground of the upper plot"},
        {ENTRY_WINDOW2_BACK, "Window2 Back", "The ground of the lower plot"},
        {ENTRY_BASE_FORM, "Base Form", "The frames round the plots"},
        {ENTRY_EXPAND_AREA, "Expand Area", "The band of the part that Expand magnifies"},
    }};
    return ROLES;
}

ColourTable FirstColours() {
    // Curves, parts of curves that belong to peaks and to regions: found by a search for the
    // greatest least distance in CIELAB as seen by normal eyes and without red or green cones; the
    // first five, which a fit fills, are the farthest apart.
    constexpr std::array<Colour, GRAPH_COUNT> CURVES{
        Rgb(255, 214, 79),  Rgb(58, 221, 254), Rgb(199, 254, 155), Rgb(226, 71, 139),
        Rgb(103, 118, 252), Rgb(30, 230, 187), Rgb(251, 138, 137), Rgb(144, 130, 66),
        Rgb(186, 94, 192),  Rgb(79, 176, 255)};
    constexpr Colour SPARE = Rgb(193, 193, 193);  // slots never handed out, entries that are free
    ColourTable table;
    table.fill(SPARE);
    std::copy(CURVES.begin(), CURVES.end(), table.begin());
    const auto set = [&table](int entry, Colour colour) {
        table[static_cast<std::size_t>(entry)] = colour;
    };
    set(ENTRY_PEAK_CURVE, WHITE);
    set(ENTRY_FIT_CURVE, Rgb(254, 171, 168));
    set(ENTRY_ZANSA, Rgb(160, 160, 160));
    set(ENTRY_PEAK_MARK, WHITE);
    set(ENTRY_ELEMENT_MARK, Rgb(199, 231, 255));
    set(ENTRY_ROI_LINE, Rgb(223, 113, 23));
    set(ENTRY_ROI_TEXT, Rgb(255, 223, 152));
    set(ENTRY_WINDOW1_BACK, GROUND);
    set(ENTRY_WINDOW2_BACK, GROUND);
    set(ENTRY_BASE_FORM, Rgb(128, 134, 140));  // a quiet line in a light and in a dark window
    set(ENTRY_EXPAND_AREA, Rgb(197, 184, 254));
    return table;
}

/// Rows of equal lightness and columns of one hue, as far as the screen has such a colour; every
/// colour of the first table is among them.
const std::array<Colour, SWATCH_COUNT>& Swatches() {
    static constexpr std::array<Colour, SWATCH_COUNT> SWATCHES{
        // greys, down to the ground of the plots
        Rgb(255, 255, 255), Rgb(226, 226, 226), Rgb(193, 193, 193), Rgb(160, 160, 160),
        Rgb(128, 134, 140), Rgb(99, 99, 99), Rgb(66, 66, 66), Rgb(18, 22, 28),
        // pale
        Rgb(253, 218, 216), Rgb(254, 220, 202), Rgb(255, 223, 152), Rgb(199, 254, 155),
        Rgb(124, 255, 219), Rgb(199, 231, 255), Rgb(230, 222, 254), Rgb(254, 216, 235),
        // light
        Rgb(254, 171, 168), Rgb(254, 175, 130), Rgb(255, 214, 79), Rgb(96, 217, 98),
        Rgb(30, 230, 187), Rgb(58, 221, 254), Rgb(197, 184, 254), Rgb(254, 166, 213),
        // clear
        Rgb(251, 138, 137), Rgb(255, 132, 46), Rgb(194, 156, 5), Rgb(11, 186, 50),
        Rgb(10, 181, 147), Rgb(79, 176, 255), Rgb(161, 146, 254), Rgb(226, 71, 139),
        // full
        Rgb(232, 52, 74), Rgb(223, 113, 23), Rgb(144, 130, 66), Rgb(1, 138, 34), Rgb(3, 135, 109),
        Rgb(3, 125, 188), Rgb(103, 118, 252), Rgb(186, 94, 192),
        // dark
        Rgb(153, 8, 39), Rgb(127, 53, 2), Rgb(93, 73, 2), Rgb(1, 88, 18), Rgb(6, 86, 69),
        Rgb(9, 80, 120), Rgb(65, 62, 158), Rgb(145, 5, 101)};
    return SWATCHES;
}

double Luminance(Colour colour) {
    return 0.2126 * Light(colour, 0) + 0.7152 * Light(colour, 8) + 0.0722 * Light(colour, 16);
}

double Contrast(Colour one, Colour other) {
    const double a = Luminance(one) + 0.05;
    const double b = Luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

Colour PlainestOn(Colour ground) {
    return Contrast(ground, WHITE) >= Contrast(ground, BLACK) ? WHITE : BLACK;
}

Colour PlainInk(Colour ground, Colour ink, double least) {
    if (Contrast(ground, InkToShow(ground, ink)) >= least) return ink;
    return InkToShow(ground, PlainestOn(ground));
}

}  // namespace vael
