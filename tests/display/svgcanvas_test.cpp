// Tests of the SVG surface and of the viewport: path merging, escaping, clipping.
#include "display/svgcanvas.h"

#include "display/viewport.h"
#include "support/recordingcanvas.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vael {
namespace {

constexpr Colour RED = Rgb(255, 0, 0);

std::size_t CountOf(const std::string& text, const std::string& word) {
    std::size_t n = 0;
    for (auto at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) ++n;
    return n;
}

TEST(SvgSurface, StrokesOfOnePenThatJoinAreOnePath) {
    SvgSurface svg(100.0, 100.0);
    Canvas canvas(svg);
    canvas.Line(1, 1, 2, 3, RED);
    canvas.Line(2, 3, 3, 2, RED);
    canvas.Line(3, 2, 5, 2, RED);
    canvas.Line(10, 10, 10, 20, RED);
    const std::string text = svg.Text();
    EXPECT_EQ(CountOf(text, "<path"), 1U);
    // In twentieths of a point: 1,1 then +20,+40, +20,-20, right 40; a move by 100,160, down 200.
    EXPECT_NE(text.find("d=\"M20 20l20 40 20-20h40m100 160v200\""), std::string::npos) << text;
}

TEST(SvgSurface, AnotherPenIsAnotherPath) {
    SvgSurface svg(100.0, 100.0);
    Canvas canvas(svg);
    canvas.Line(1, 1, 2, 3, RED);
    canvas.Line(2, 3, 3, 2, 0);
    canvas.DrawWidth = 2.0;
    canvas.Line(3, 2, 4, 4, 0);
    EXPECT_EQ(CountOf(svg.Text(), "<path"), 3U);
}

TEST(SvgSurface, AMoveFollowedByLinesStaysRelative) {
    SvgSurface svg(100.0, 100.0);
    Canvas canvas(svg);
    canvas.Line(0, 0, 1, 1, RED);
    canvas.Line(5, 5, 6, 7, RED);
    EXPECT_NE(svg.Text().find("d=\"M0 0l20 20m80 80 20 40\""), std::string::npos) << svg.Text();
}

TEST(SvgSurface, TextIsEscapedAndUtf8) {
    SvgSurface svg;
    Canvas canvas(svg);
    canvas.Print("a<b & \"圧力\"", RED);
    EXPECT_NE(svg.Text().find(">a&lt;b &amp; &quot;圧力&quot;</text>"), std::string::npos);
    EXPECT_EQ(XmlEscape(std::string("x\x01\ny", 4)), "x  y");
}

TEST(SvgSurface, RotatedTextTurnsAboutItsCorner) {
    SvgSurface svg;
    Canvas canvas(svg);
    canvas.CurrentX = 10.0;
    canvas.CurrentY = 20.0;
    canvas.TextAngle = 90.0;
    canvas.Print("up", RED);
    const std::string turn = "transform=\"rotate(-90 200 400)\"";
    EXPECT_NE(svg.Text().find(turn), std::string::npos) << svg.Text();
}

TEST(SvgSurface, ExclusiveOrDoesNotPrint) {
    SvgSurface svg;
    Canvas canvas(svg);
    canvas.DrawMode = DRAW_XOR;
    canvas.Line(0, 0, 5, 5, RED);
    canvas.PSet(1, 1, RED);
    canvas.Box(0, 0, 5, 5, RED, true);
    canvas.Print("x", RED);
    EXPECT_EQ(svg.Text().find("<path"), std::string::npos);
    EXPECT_EQ(svg.Text().find("<rect"), std::string::npos);
    EXPECT_EQ(svg.Text().find("<text"), std::string::npos);
}

TEST(SvgSurface, ClearingDropsWhatWasDrawn) {
    SvgSurface svg;
    Canvas canvas(svg);
    canvas.Line(0, 0, 5, 5, RED);
    svg.Clear(Rgb(255, 255, 255));
    EXPECT_EQ(CountOf(svg.Text(), "<path"), 0U);
    EXPECT_NE(svg.Text().find("fill=\"#ffffff\""), std::string::npos);
}

TEST(SvgSurface, WidthsAreThoseOfTheFace) {
    const SvgSurface svg;
    Brush brush;
    brush.FontSize = 10.0;
    EXPECT_DOUBLE_EQ(svg.Measure("A1", brush).Width, 6.67 + 5.56);
    EXPECT_DOUBLE_EQ(svg.Measure("圧力", brush).Width, 20.0);
    EXPECT_DOUBLE_EQ(svg.Measure("", brush).Width, 0.0);
    EXPECT_DOUBLE_EQ(svg.Measure("A", brush).Height, 11.17);
    brush.Bold = true;
    EXPECT_GT(svg.Measure("A", brush).Width, 6.67);
}

TEST(ClipLine, CutsAtEachEdgeAndDropsWhatIsOutside) {
    const Frame4 frame{0.0, 10.0, 10.0, 0.0};  // counts run upward
    Spot a{-5.0, 5.0};
    Spot b{15.0, 5.0};
    ASSERT_TRUE(ClipLine(a, b, frame));
    EXPECT_EQ(a.X, 0.0);
    EXPECT_EQ(b.X, 10.0);
    a = {5.0, 20.0};
    b = {5.0, -20.0};
    ASSERT_TRUE(ClipLine(a, b, frame));
    EXPECT_EQ(a.Y, 10.0);
    EXPECT_EQ(b.Y, 0.0);
    a = {-5.0, 8.0};
    b = {5.0, 18.0};  // passes the corner outside
    EXPECT_FALSE(ClipLine(a, b, frame));
    a = {2.0, 12.0};
    b = {8.0, 12.0};
    EXPECT_FALSE(ClipLine(a, b, frame));
}

TEST(Viewport, DrawsInItsOwnCoordinatesOnItsPartOfTheWhole) {
    test::RecordingSurface whole(100.0, 100.0);
    Viewport part(whole, 20.0, 40.0, 50.0, 10.0);
    Canvas canvas(part);
    canvas.Scale(0.0, 7.0, 500.0, 0.0);
    canvas.Line(0.0, 0.0, 500.0, 7.0, RED);
    ASSERT_EQ(whole.Strokes.size(), 1U);
    const test::Drawn& line = whole.Strokes[0];
    const Spot low = ToPixels(line.From, line.Pen.Scale, whole.Size());
    const Spot high = ToPixels(line.To, line.Pen.Scale, whole.Size());
    EXPECT_NEAR(low.X, 20.0, 1e-9);
    EXPECT_NEAR(low.Y, 50.0, 1e-9);
    EXPECT_NEAR(high.X, 70.0, 1e-9);
    EXPECT_NEAR(high.Y, 40.0, 1e-9);
    EXPECT_EQ(canvas.PixelUnit().Width, 10.0);
}

TEST(Viewport, DropsDotsAndCutsBoxesOutside) {
    test::RecordingSurface whole(100.0, 100.0);
    Viewport part(whole, 0.0, 0.0, 50.0, 50.0);
    Canvas canvas(part);
    canvas.PSet(60.0, 10.0, RED);
    canvas.Box(40.0, 40.0, 60.0, 60.0, RED, true);
    canvas.Box(60.0, 60.0, 70.0, 70.0, RED, true);
    ASSERT_EQ(whole.Strokes.size(), 1U);
    EXPECT_EQ(whole.Strokes[0].Line(), "filled 40 40 50 50 #ff0000");
    part.Clear(0);
    EXPECT_EQ(whole.Strokes[1].Line(), "filled 0 0 1 1 #000000");
}

}  // namespace
}  // namespace vael
