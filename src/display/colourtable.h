// The colour table: its order, its colours at the first start, and what keeps a colour readable.
#pragma once

#include "core/records.h"

#include <array>

namespace vael {

using ColourTable = std::array<Colour, COLOUR_COUNT>;

/// Entries of the colour table from the fixed roles on; below them entry n is the colour of slot n.
/// The order is that of the parameter file and is never changed; entries
/// from 25 on are free.
inline constexpr int ENTRY_PEAK_CURVE = 14;
inline constexpr int ENTRY_FIT_CURVE = 15;
inline constexpr int ENTRY_ZANSA = 16;  // the residual curve
inline constexpr int ENTRY_PEAK_MARK = 17;
inline constexpr int ENTRY_ELEMENT_MARK = 18;
inline constexpr int ENTRY_ROI_LINE = 19;
inline constexpr int ENTRY_ROI_TEXT = 20;
inline constexpr int ENTRY_WINDOW1_BACK = 21;
inline constexpr int ENTRY_WINDOW2_BACK = 22;
inline constexpr int ENTRY_BASE_FORM = 23;
inline constexpr int ENTRY_EXPAND_AREA = 24;

/// A colour that the user may choose: its place in the table, its name, and what it colours.
struct ColourRole {
    int Entry;
    const char* Name;
    const char* Colours;
};

/// The roles in the order of the colour view.
inline constexpr int ROLE_COUNT = 21;
[[nodiscard]] const std::array<ColourRole, ROLE_COUNT>& ColourRoles();

/// The table of a first start. What is drawn on the plots has a contrast of 4.5 : 1 or more against
/// their grounds, and the colours that curves take stay apart for the colour blind.
[[nodiscard]] ColourTable FirstColours();

/// The 48 colours to choose from, in six rows of eight: greys, then five shades of eight hues.
inline constexpr int SWATCH_COLUMNS = 8;
inline constexpr int SWATCH_COUNT = 48;
[[nodiscard]] const std::array<Colour, SWATCH_COUNT>& Swatches();

/// Relative luminance, 0 for black to 1 for white, and the contrast of two colours, 1 to 21: W3C,
/// Web Content Accessibility Guidelines 2.2 (2023), with the transfer function of IEC 61966-2-1.
[[nodiscard]] double Luminance(Colour colour);
[[nodiscard]] double Contrast(Colour one, Colour other);

/// The ink that an exclusive-or stroke needs to show `seen` on a ground.
[[nodiscard]] constexpr Colour InkToShow(Colour ground, Colour seen) {
    return (ground ^ seen) & Rgb(255, 255, 255);
}

/// Black or white, whichever is plainer on a ground.
[[nodiscard]] Colour PlainestOn(Colour ground);

/// An exclusive-or ink that is seen on a ground: the given one, unless what it shows there has less
/// than the contrast asked for; then the one that shows black or white, whichever is plainer.
[[nodiscard]] Colour PlainInk(Colour ground, Colour ink, double least);

/// Contrast below which a mark counts as not seen: the guidelines' 3 : 1 for graphic objects.
inline constexpr double MARK_CONTRAST = 3.0;

}  // namespace vael
