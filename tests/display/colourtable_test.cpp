// The colour table: order, readable first colours, swatches, and marks that stay visible.
#include "display/colourtable.h"

#include "support/colourvision.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace vael {
namespace {

using test::Apart;
using test::Eye;

const std::vector<Eye> EYES{Eye::Normal, Eye::Protanope, Eye::Deuteranope};

Colour First(int entry) { return FirstColours().at(static_cast<std::size_t>(entry)); }

/// Entries of what takes the colour of a curve or of a part of one.
std::vector<int> CurveEntries() {
    std::vector<int> entries;
    for (int slot = 0; slot < GRAPH_COUNT; ++slot) entries.push_back(slot);
    entries.push_back(ENTRY_PEAK_CURVE);
    entries.push_back(ENTRY_ROI_LINE);
    return entries;
}

TEST(ColourVision, TheMeasuresAreThoseOfThePublishedValues) {
    EXPECT_NEAR(Contrast(Rgb(0, 0, 0), Rgb(255, 255, 255)), 21.0, 1e-9);
    // The grey that text on white is measured by: #767676 passes 4.5 : 1, #777777 does not.
    EXPECT_NEAR(Contrast(Rgb(0x76, 0x76, 0x76), Rgb(255, 255, 255)), 4.54, 0.005);
    EXPECT_NEAR(Contrast(Rgb(255, 255, 255), Rgb(0x77, 0x77, 0x77)), 4.48, 0.005);
    EXPECT_NEAR(Luminance(Rgb(0, 255, 0)), 0.7152, 1e-9);
    // CIELAB of the three primaries of sRGB, as colour tables give them.
    const test::Triple primaries[] = {
        {53.24, 80.09, 67.20}, {87.73, -86.18, 83.18}, {32.30, 79.19, -107.86}};
    const Colour of[] = {Rgb(255, 0, 0), Rgb(0, 255, 0), Rgb(0, 0, 255)};
    for (std::size_t k = 0; k < 3; ++k)
        for (std::size_t part = 0; part < 3; ++part)
            EXPECT_NEAR(test::LabOf(of[k])[part], primaries[k][part], 0.02) << k << " " << part;
}

TEST(ColourVision, TheColourBlindSeeGreysAndConfuseRedWithGreen) {
    for (const Eye eye : EYES)
        for (const int grey : {0, 60, 128, 255}) {
            const test::Triple lab = test::LabOf(Rgb(grey, grey, grey), eye);
            EXPECT_NEAR(lab[1], 0.0, 0.05);
            EXPECT_NEAR(lab[2], 0.0, 0.05);
        }
    const Colour red = Rgb(205, 92, 60);
    const Colour green = Rgb(120, 140, 60);
    EXPECT_GT(Apart(red, green), 60.0);
    EXPECT_LT(Apart(red, green, Eye::Deuteranope), 20.0);
    EXPECT_LT(Apart(red, green, Eye::Protanope), 20.0);
}

TEST(FirstColours, StandInTheDocumentedOrder) {
    const std::vector<std::pair<int, std::string>> ORDER{
        {0, "Graph1"},       {1, "Graph2"},        {2, "Graph3"},        {3, "Graph4"},
        {4, "Graph5"},       {5, "Graph6"},        {6, "Graph7"},        {7, "Graph8"},
        {8, "Graph9"},       {9, "Graph10"},       {14, "Peak Curve"},   {15, "Fit Curve"},
        {16, "Zansa"},       {17, "Peak Mark"},    {18, "Element Mark"}, {19, "ROI Line "},
        {20, "ROI No Text"}, {21, "Window1 Back"}, {22, "Window2 Back"}, {23, "Base Form"},
        {24, "Expand Area"}};
    ASSERT_EQ(ORDER.size(), ColourRoles().size());
    for (std::size_t k = 0; k < ORDER.size(); ++k) {
        EXPECT_EQ(ColourRoles()[k].Entry, ORDER[k].first) << k;
        EXPECT_EQ(ColourRoles()[k].Name, ORDER[k].second);
    }
}

TEST(FirstColours, AreReadOnTheGroundsOfBothPlots) {
    std::vector<int> entries = CurveEntries();
    for (const int entry : {ENTRY_FIT_CURVE, ENTRY_ZANSA, ENTRY_PEAK_MARK, ENTRY_ELEMENT_MARK,
                            ENTRY_ROI_TEXT, ENTRY_BASE_FORM, ENTRY_EXPAND_AREA})
        entries.push_back(entry);
    for (const int entry : entries)
        for (const int back : {ENTRY_WINDOW1_BACK, ENTRY_WINDOW2_BACK})
            EXPECT_GE(Contrast(First(entry), First(back)), 4.5) << entry;
    // The frame stands between the plot and the window, which is light or dark.
    for (const Colour window : {Rgb(239, 240, 241), Rgb(45, 48, 52)})
        EXPECT_GE(Contrast(First(ENTRY_BASE_FORM), window), 2.5);
}

TEST(FirstColours, StayApartForNormalEyesAndForTheColourBlind) {
    const std::vector<int> entries = CurveEntries();
    for (const Eye eye : EYES)
        for (std::size_t i = 0; i < entries.size(); ++i)
            for (std::size_t j = 0; j < i; ++j)
                EXPECT_GE(Apart(First(entries[i]), First(entries[j]), eye), 20.0)
                    << entries[i] << " and " << entries[j] << ", eye " << static_cast<int>(eye);
}

TEST(Swatches, AreFortyEightColoursWithThoseOfTheFirstTableAmongThem) {
    const auto& all = Swatches();
    EXPECT_EQ(std::set<Colour>(all.begin(), all.end()).size(), 48U);
    for (const ColourRole& role : ColourRoles())
        EXPECT_NE(std::find(all.begin(), all.end(), First(role.Entry)), all.end()) << role.Name;
    for (std::size_t k = 1; k < SWATCH_COLUMNS; ++k)
        EXPECT_LT(Luminance(all[k]), Luminance(all[k - 1])) << "the greys go down";
    for (std::size_t k = 2 * SWATCH_COLUMNS; k < all.size(); ++k)
        EXPECT_LT(Luminance(all[k]), Luminance(all[k - SWATCH_COLUMNS])) << "each hue goes down";
}

/// Grounds all over the cube of colours.
std::vector<Colour> Grounds() {
    std::vector<Colour> grounds;
    for (int red = 0; red < 256; red += 17)
        for (int green = 0; green < 256; green += 17)
            for (int blue = 0; blue < 256; blue += 17) grounds.push_back(Rgb(red, green, blue));
    for (int grey = 120; grey < 137; ++grey) grounds.push_back(Rgb(grey, grey, grey));
    return grounds;
}

TEST(PlainInk, AMarkOfExclusiveOrIsSeenOnEveryGround) {
    for (const Colour ink : {Rgb(255, 255, 255), Rgb(255, 100, 100)})
        for (const Colour ground : Grounds()) {
            const Colour used = PlainInk(ground, ink, MARK_CONTRAST);
            EXPECT_GE(Contrast(ground, ground ^ used), MARK_CONTRAST) << std::hex << ground;
        }
}

TEST(PlainInk, IsTheGivenOneWhereThatIsSeen) {
    const Colour dark = First(ENTRY_WINDOW1_BACK);
    EXPECT_EQ(PlainInk(dark, Rgb(255, 255, 255), MARK_CONTRAST), Rgb(255, 255, 255));
    EXPECT_EQ(PlainInk(dark, Rgb(255, 100, 100), MARK_CONTRAST), Rgb(255, 100, 100));
    // White turned over on a middle grey is that grey again; black is plainer there.
    EXPECT_EQ(PlainInk(Rgb(128, 128, 128), Rgb(255, 255, 255), MARK_CONTRAST), Rgb(128, 128, 128));
    EXPECT_EQ(PlainestOn(Rgb(128, 128, 128)), Rgb(0, 0, 0));
    EXPECT_EQ(PlainestOn(dark), Rgb(255, 255, 255));
}

TEST(PlainInk, ShowsAChosenColourOnItsGround) {
    const Colour ground = Rgb(240, 240, 230);
    const Colour chosen = Rgb(30, 90, 160);
    EXPECT_EQ(ground ^ InkToShow(ground, chosen), chosen);
    EXPECT_EQ(PlainInk(ground, InkToShow(ground, chosen), 1.2), InkToShow(ground, chosen));
    EXPECT_EQ(ground ^ PlainInk(ground, InkToShow(ground, ground), 1.2), Rgb(0, 0, 0));
}

}  // namespace
}  // namespace vael
