// Tests of the spectrum drawing engine: steps, kinds, log axis, printing, registrations, messages.
#include "display/drawspect.h"

#include "core/fault.h"
#include "support/recordingcanvas.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>
#include <utility>
#include <vector>

namespace vael {
namespace {

using test::Drawn;
using test::RecordingSurface;
using Kind = Drawn::Kind;

constexpr Colour GREEN = Rgb(0, 255, 0);
constexpr Colour RED = Rgb(255, 0, 0);

struct Said {
    std::string Text, Title;
};

/// An engine with a recorder as window 0, of a full scale of 100 counts.
class DrawSpect : public ::testing::Test {
protected:
    DrawSpect() {
        engine.Voice.say = [this](std::string_view text, std::string_view title) {
            said.push_back({std::string(text), std::string(title)});
        };
        engine.Target(0).Canvas = &canvas;
        engine.SetFullScale(0, 100, false);
    }
    void Show(std::vector<std::int32_t> counts, int graph = 0) {
        data = std::move(counts);
        engine.RegisterGraph(0, graph, data, static_cast<int>(data.size()), GREEN);
        engine.SetChannelRange(0, 1, static_cast<int>(data.size()));
    }
    std::vector<std::string> Lines() const {
        std::vector<std::string> out;
        for (const Drawn& drawn : surface.Strokes) out.push_back(drawn.Line());
        return out;
    }
    void ExpectOneMessage(const std::string& text) {
        ASSERT_EQ(said.size(), 1U);
        EXPECT_EQ(said[0].Text, text);
        EXPECT_EQ(said[0].Title, "グラフ表示");
        said.clear();
    }
    RecordingSurface surface;
    Canvas canvas{surface};
    DrawEngine engine;
    std::vector<std::int32_t> data;
    std::vector<Said> said;
};

using Strings = std::vector<std::string>;

TEST_F(DrawSpect, AStepIsOneUpTo716Channels) {
    EXPECT_EQ(PlotStep(1), 1);
    EXPECT_EQ(PlotStep(512), 1);
    EXPECT_EQ(PlotStep(513), 1);   // 1.102
    EXPECT_EQ(PlotStep(716), 1);   // 1.498
    EXPECT_EQ(PlotStep(717), 2);   // 1.5004
    EXPECT_EQ(PlotStep(768), 2);   // 1.6
    EXPECT_EQ(PlotStep(4096), 8);  // 8.1
    EXPECT_EQ(PlotStep(8192), 16);
}

TEST_F(DrawSpect, ALineJoinsTheCountsFromTheFirstShownChannelOn) {
    Show({5, 7, 0, 50});
    engine.PlotGraph(0, 0);
    EXPECT_EQ(Lines(),
              (Strings{"line 0 5 1 7 #00ff00", "line 1 7 2 0 #00ff00", "line 2 0 3 50 #00ff00"}));
}

TEST_F(DrawSpect, ThePictureRunsFromTheFirstToTheLastChannelAndUpToTheFullScale) {
    Show({1, 2, 3, 4, 5});
    engine.SetChannelRange(0, 2, 4);
    engine.PlotGraph(0, 0);
    const Frame4& frame = canvas.ScaleNow();
    EXPECT_EQ(frame.Left, 1.0);
    EXPECT_EQ(frame.Right, 3.0);
    EXPECT_EQ(frame.Top, 100.0);
    EXPECT_EQ(frame.Bottom, 0.0);
    EXPECT_EQ(Lines(), (Strings{"line 1 2 2 3 #00ff00", "line 2 3 3 4 #00ff00"}));
}

TEST_F(DrawSpect, EverySecondChannelCountsFromTheOneBehindTheFirst) {
    std::vector<std::int32_t> ramp(768);
    std::iota(ramp.begin(), ramp.end(), 0);
    Show(ramp);
    engine.PlotGraph(0, 0);
    ASSERT_EQ(surface.Strokes.size(), 384U);  // 1, 3, ... 767
    EXPECT_EQ(Lines()[0], "line -1 0 1 1 #00ff00");
    EXPECT_EQ(Lines()[1], "line 1 1 3 3 #00ff00");
    EXPECT_EQ(Lines()[383], "line 765 765 767 767 #00ff00");
}

TEST_F(DrawSpect, AGraphHasAboutFiveHundredStrokesWhateverTheZoom) {
    Show(std::vector<std::int32_t>(8192, 3));
    engine.PlotGraph(0, 0);
    EXPECT_EQ(surface.Strokes.size(), 512U);
}

TEST_F(DrawSpect, AStartOneBelowTheFirstChannelStartsFromTheTop) {
    Show({5, 7});
    engine.Target(0).XStart = -1;
    engine.PlotGraph(0, 0);
    EXPECT_EQ(Lines(), (Strings{"line -1 100 0 5 #00ff00", "line 0 5 1 7 #00ff00"}));
}

TEST_F(DrawSpect, NegativeCountsStayOnTheLinearScreen) {
    Show({-5, -7});
    engine.PlotGraph(0, 0);
    EXPECT_EQ(Lines(), Strings{"line 0 -5 1 -7 #00ff00"});
}

TEST_F(DrawSpect, NegativeCountsAreClearedOnTheLogAxis) {
    engine.SetFullScale(0, 0, true);
    Show({-5, 100});
    engine.PlotGraph(0, 0);
    EXPECT_EQ(Lines(), Strings{"line 0 0 1 2 #00ff00"});
}

TEST_F(DrawSpect, NegativeCountsAreClearedOnPaper) {
    Show({-5, 4});
    engine.Target(0).Printing = true;
    engine.PlotGraph(0, 0);
    EXPECT_EQ(Lines(), Strings{"line 0 0 1 4 #000000"});
}

TEST_F(DrawSpect, PaperIsBlackButForStrokesWithAColourOfTheirOwn) {
    Show({1, 2, 3});
    engine.SetPlotColor(0, 0, 2, 2, RED);
    engine.Target(0).Printing = true;
    engine.PlotGraph(0, 0);
    EXPECT_EQ(Lines(), (Strings{"line 0 1 1 2 #000000", "line 1 2 2 3 #ff0000"}));
}

TEST_F(DrawSpect, AStrokeTakesTheColourOfTheChannelItEndsAt) {
    Show({1, 2, 3, 4});
    engine.SetPlotColor(0, 0, 1, 2, RED);
    engine.SetPlotColor(0, 0, 2, 2, 0);  // 0 gives it back to the graph's colour
    engine.PlotGraph(0, 0);
    EXPECT_EQ(Lines(),
              (Strings{"line 0 1 1 2 #ff0000", "line 1 2 2 3 #00ff00", "line 2 3 3 4 #00ff00"}));
}

TEST_F(DrawSpect, TheLogAxisCountsDecadesAndLeavesNoughtAtTheBottom) {
    engine.SetFullScale(0, 5000, true);
    EXPECT_EQ(engine.Target(0).YTop, 7);
    EXPECT_EQ(engine.Target(0).LogScale, 1);
    Show({0, 1, 1000});
    engine.PlotGraph(0, 0);
    EXPECT_EQ(Lines(), (Strings{"line 0 0 1 0 #00ff00", "line 1 0 2 3 #00ff00"}));
}

TEST_F(DrawSpect, TheLogAxisCutsAtItsTopAndSkipsStrokesAlongIt) {
    engine.SetFullScale(0, 0, true);
    Show({100, 20000000, 30000000, 100});
    engine.PlotGraph(0, 0);
    EXPECT_EQ(Lines(), (Strings{"line 0 2 1 7 #00ff00", "line 2 7 3 2 #00ff00"}));
}

TEST_F(DrawSpect, CountsAboveALinearFullScaleAreNotCut) {
    Show({150, 150});
    engine.PlotGraph(0, 0);
    EXPECT_EQ(Lines(), Strings{"line 0 150 1 150 #00ff00"});
}

TEST_F(DrawSpect, DotsAreTwoWideBelow2049ChannelsAndGiveTheWidthBack) {
    canvas.DrawWidth = 5.0;
    engine.Target(0).DrawKind = DRAW_DOT;
    Show({5, 7, 9});
    engine.PlotGraph(0, 0);
    EXPECT_EQ(Lines(), (Strings{"dot 1 7 #00ff00 w2", "dot 2 9 #00ff00 w2"}));
    EXPECT_EQ(canvas.DrawWidth, 5.0);
}

TEST_F(DrawSpect, DotsOf2049ChannelsAreOneWideAndOf2048AreTwo) {
    engine.Target(0).DrawKind = DRAW_DOT;
    Show(std::vector<std::int32_t>(2049, 1));
    engine.PlotGraph(0, 0);
    EXPECT_EQ(surface.Strokes.back().Pen.Width, 1.0);
    engine.SetChannelRange(0, 1, 2048);
    engine.PlotGraph(0, 0);
    EXPECT_EQ(surface.Strokes.back().Pen.Width, 2.0);
}

TEST_F(DrawSpect, DotsOnPaperHaveThePrintWidth) {
    engine.Target(0).DrawKind = DRAW_DOT;
    engine.Target(0).Printing = true;
    engine.Target(0).PrintWidth = 3.0;
    Show({5, 7});
    engine.PlotGraph(0, 0);
    EXPECT_EQ(Lines(), Strings{"dot 1 7 #000000 w3"});
}

TEST_F(DrawSpect, PaintStandsOnTheAxis) {
    engine.Target(0).DrawKind = DRAW_PAINT;
    Show({5, 7, 9});
    engine.PlotAll(0);
    EXPECT_EQ(Lines(), (Strings{"line 1 0 1 7 #00ff00", "line 2 0 2 9 #00ff00"}));
}

TEST_F(DrawSpect, PaintKeepsTheRulesOfTheLogAxisAndOfPaper) {
    engine.SetFullScale(0, 0, true);
    Show({1, -3, 1000, 90000000});
    engine.Target(0).Printing = true;
    engine.PlotGraphPaint(0, 0);
    EXPECT_EQ(Lines(),
              (Strings{"line 1 0 1 0 #000000", "line 2 0 2 3 #000000", "line 3 0 3 7 #000000"}));
}

TEST_F(DrawSpect, PlotGraphAloneDrawsNoPaint) {
    engine.Target(0).DrawKind = DRAW_PAINT;
    Show({5, 7, 9});
    engine.PlotGraph(0, 0);
    EXPECT_TRUE(surface.Strokes.empty());
}

TEST_F(DrawSpect, AGraphNumberOutside0To13IsToldAndNothingDrawn) {
    Show({5, 7});
    engine.PlotGraph(0, 14);
    ExpectOneMessage("グラフNoｶﾞ規定範囲外です｡:14");
    engine.PlotGraph(0, -1);
    ExpectOneMessage("グラフNoｶﾞ規定範囲外です｡:-1");
    engine.PlotGraphPaint(0, 14);
    ExpectOneMessage("グラフNoが規定範囲外です｡:14");
    EXPECT_TRUE(surface.Strokes.empty());
    engine.PlotGraph(0, 13);
    EXPECT_TRUE(said.empty());
}

TEST_F(DrawSpect, RegisteringAGraphOutside0To13IsToldAndChangesNothing) {
    Show({5, 7}, 3);
    engine.RegisterGraph(0, 14, data, 2, RED);
    ExpectOneMessage("グラフ番号が有効ではありません。");
    engine.RegisterGraph(0, -1, data, 2, RED);
    ExpectOneMessage("グラフ番号が有効ではありません。");
    for (int g = 0; g < SLOT_COUNT; ++g)
        EXPECT_EQ(engine.Target(0).Graph[static_cast<std::size_t>(g)].GraphInUse, g == 3 ? -1 : 0);
}

TEST_F(DrawSpect, AFifteenthGraphFindsNoRoom) {
    data = {1, 2};
    for (int g = 0; g < 14; ++g) EXPECT_EQ(engine.RegisterFreeGraph(0, data, 2, RED), g);
    EXPECT_TRUE(said.empty());
    EXPECT_EQ(engine.RegisterFreeGraph(0, data, 2, RED), -1);
    ExpectOneMessage("グラフ領域が満杯です。");
    engine.WithdrawGraph(0, 5);
    EXPECT_EQ(engine.RegisterFreeGraph(0, data, 2, RED), 5);
}

TEST_F(DrawSpect, StoredValuesAreTheFullScaleLessTheCount) {
    Show({30, -5});
    const DrawGraph& graph = engine.Target(0).Graph[0];
    EXPECT_EQ(graph.PlotY[0], 70);
    EXPECT_EQ(graph.PlotY[1], 105);
    EXPECT_EQ(graph.PlotY[2], 100);  // no data: no counts
    EXPECT_EQ(graph.PlotY[8192], 100);
}

TEST_F(DrawSpect, RegisteredGraphsFollowANewFullScale) {
    Show({30, 60});
    engine.SetFullScale(0, 5000, false);
    EXPECT_EQ(engine.Target(0).Graph[0].PlotY[0], 4970);
    engine.PlotGraph(0, 0);
    EXPECT_EQ(Lines(), Strings{"line 0 30 1 60 #00ff00"});
}

TEST_F(DrawSpect, AFullScaleThatACountCannotFollowIsAFaultAndMovesNothing) {
    Show({10, std::numeric_limits<std::int32_t>::min() + 200});
    const std::int32_t before = engine.Target(0).Graph[0].PlotY[0];
    EXPECT_THROW(engine.SetFullScale(0, 10000000, false), Fault);
    EXPECT_EQ(engine.Target(0).Graph[0].PlotY[0], before);
    EXPECT_EQ(engine.Target(0).YTop, 100);
}

TEST_F(DrawSpect, ACountThatLeaves32BitsIsAFaultAndRegistersNothing) {
    data = {1, std::numeric_limits<std::int32_t>::min()};
    EXPECT_THROW(engine.RegisterGraph(0, 0, data, 2, RED), Fault);
    EXPECT_EQ(engine.Target(0).Graph[0].GraphInUse, 0);
}

TEST_F(DrawSpect, MoreCountsThanDataOrThanATableHoldsAreAFault) {
    data.assign(9000, 1);
    EXPECT_THROW(engine.RegisterGraph(0, 0, data, 9001, RED), Fault);
    EXPECT_THROW(engine.RegisterGraph(0, 0, data, 8194, RED), Fault);
    EXPECT_NO_THROW(engine.RegisterGraph(0, 0, data, 8193, RED));
    EXPECT_NO_THROW(engine.RegisterGraph(0, 0, data, 0, RED));
}

TEST_F(DrawSpect, ThereIsNoFourthTarget) {
    EXPECT_THROW(engine.PlotAll(3), Fault);
    EXPECT_THROW(engine.PlotAll(-1), Fault);
}

TEST_F(DrawSpect, AStartBelow1IsToldAndLeavesTheRange) {
    engine.SetChannelRange(0, 11, 20);
    engine.SetChannelRange(0, 0, 5);
    ExpectOneMessage("開始位置指定は1からです。");
    EXPECT_EQ(engine.Target(0).XStart, 10);
    EXPECT_EQ(engine.Target(0).XEnd, 19);
    engine.SetChannelRange(0, 1, 5);
    EXPECT_TRUE(said.empty());
    EXPECT_EQ(engine.Target(0).XStart, 0);
    EXPECT_EQ(engine.Target(0).XEnd, 4);
}

TEST_F(DrawSpect, AnEndBeyondTheLastChannelIsToldAndLeavesTheRange) {
    engine.SetChannelRange(0, 11, 20);
    engine.SetChannelRange(0, 2, 8193);  // as many as there may be, but one too far
    ExpectOneMessage("Ｃｈ軸最終位置計算値オーバー");
    EXPECT_EQ(engine.Target(0).XStart, 10);
    EXPECT_EQ(engine.Target(0).XEnd, 19);
    engine.SetChannelRange(0, 2, 8192);
    EXPECT_TRUE(said.empty());
    EXPECT_EQ(engine.Target(0).XEnd, 8191);
}

TEST_F(DrawSpect, TooManyChannelsAreToldAndTheEndIsCut) {
    engine.SetChannelRange(0, 1, 8193);
    ExpectOneMessage("チャンネル数オーバー");
    EXPECT_EQ(engine.Target(0).XStart, 0);
    EXPECT_EQ(engine.Target(0).XEnd, 8191);
}

TEST_F(DrawSpect, PlotAllDrawsGraphsInUseThenLinesTextsAndSymbols) {
    Show({5, 7}, 0);
    engine.RegisterGraph(0, 5, data, 2, RED);
    engine.RegisterGraph(0, 9, data, 2, RED);
    engine.WithdrawGraph(0, 9);
    engine.RegisterSymbol(0, 1.0, 40.0, SymbolShape::Square, RED, 10);
    engine.RegisterText(0, 1.0, 60.0, "二 0",
                        {.Color = GREEN, .Size = 8, .Angle = 90, .Bold = true});
    engine.RegisterVLine(0, 1.0, 0.0, 100.0, RED, "Au");
    engine.PlotAll(0);
    // 600 x 200 pixels show 1 channel x 100 counts: a pixel is 1/600 channel and 0.5 counts.
    EXPECT_EQ(Lines(),
              (Strings{"line 0 5 1 7 #00ff00", "line 0 5 1 7 #ff0000", "line 1 0 1 100 #ff0000",
                       "text 1.0033 100 #ff0000 s9: Au", "text 1 60 #00ff00 s8 a90 bold: 二 0",
                       "box 0.9917 42.5 1.0083 37.5 #ff0000"}));
    EXPECT_EQ(canvas.FontSize, 9.0);
    EXPECT_EQ(canvas.TextAngle, 0.0);
    EXPECT_FALSE(canvas.FontBold);
}

TEST_F(DrawSpect, APlotDoesNotConsumeRegistrations) {
    Show({5, 7});
    engine.RegisterText(0, 1.0, 60.0, "once");
    engine.PlotAll(0);
    const std::string first = surface.Text();
    engine.Replot(0);
    EXPECT_EQ(surface.Text(), "clear #000000\n" + first);
}

TEST_F(DrawSpect, ClearingRegistrationsLeavesTheGraphs) {
    Show({5, 7});
    engine.RegisterText(0, 1.0, 60.0, "gone");
    engine.RegisterVLine(1, 1.0, 0.0, 1.0, RED);
    engine.ClearRegistrations();
    engine.PlotAll(0);
    EXPECT_EQ(Lines(), Strings{"line 0 5 1 7 #00ff00"});
    EXPECT_EQ(engine.Target(1).VLineNum, 0);
}

TEST_F(DrawSpect, TextNumber100IsTakenAnd101IsToldOnce) {
    for (int i = 0; i < 100; ++i) ASSERT_TRUE(engine.RegisterText(0, i, 1.0, "t"));
    EXPECT_TRUE(said.empty());
    EXPECT_FALSE(engine.RegisterText(0, 100, 1.0, "t"));
    ExpectOneMessage("テキスト登録数オーバー");
    EXPECT_EQ(engine.Target(0).TextNum, 100);
    EXPECT_TRUE(engine.RegisterText(1, 0, 1.0, "another target has a table of its own"));
}

TEST_F(DrawSpect, Symbol24575IsTakenAndTheNextIsTold) {
    for (int i = 0; i < 24575; ++i)
        ASSERT_TRUE(engine.RegisterSymbol(0, i, 1.0, SymbolShape::Plus, RED));
    EXPECT_TRUE(said.empty());
    EXPECT_FALSE(engine.RegisterSymbol(0, 1.0, 1.0, SymbolShape::Plus, RED));
    ExpectOneMessage("シンボル登録数オーバー");
}

TEST_F(DrawSpect, VerticalLine101IsTakenAndTheNextIsTold) {
    for (int i = 0; i < 101; ++i) ASSERT_TRUE(engine.RegisterVLine(0, i, 0.0, 1.0, RED));
    EXPECT_TRUE(said.empty());
    EXPECT_FALSE(engine.RegisterVLine(0, 1.0, 0.0, 1.0, RED));
    ExpectOneMessage("縦線登録数オーバー");
}

TEST_F(DrawSpect, Mark101IsTakenAndTheNextRefusedWithoutAWord) {
    engine.Target(0).Canvas = nullptr;
    for (int i = 0; i < 101; ++i) ASSERT_TRUE(engine.RegisterMark(0, 1, {0, 0}, {0, 1}, RED));
    EXPECT_FALSE(engine.RegisterMark(0, 1, {0, 0}, {0, 1}, RED));
    EXPECT_TRUE(said.empty());
}

TEST_F(DrawSpect, ALongTextIsCutBetweenCharacters) {
    const std::string wide = "圧力圧力圧力圧力圧力圧力圧力圧力";  // 16 characters of 3 bytes fit
    engine.RegisterText(0, 0, 0, wide + "標");
    engine.RegisterText(0, 0, 0, "a" + wide);
    engine.PlotAll(0);
    EXPECT_EQ(surface.Words()[0], wide);
    EXPECT_EQ(surface.Words()[1], "a" + wide.substr(0, 45));
}

TEST_F(DrawSpect, MarksDrawnTwiceAreGoneAndReplottingDrawsThemOnce) {
    Show({5, 7});
    engine.RegisterMark(0, 1, {0.5, 0}, {0.5, 100}, RED, 3);
    engine.RegisterMark(0, 2, {0.7, 0}, {0.7, 100}, RED);
    engine.Replot(0);
    EXPECT_EQ(Lines(),
              (Strings{"clear #000000", "line 0 5 1 7 #00ff00", "line 0.5 0 0.5 100 #ff0000 w3 xor",
                       "line 0.7 0 0.7 100 #ff0000 xor"}));
    engine.RemoveMarks(0, 1);
    EXPECT_EQ(Lines(),
              (Strings{"clear #000000", "line 0 5 1 7 #00ff00", "line 0.7 0 0.7 100 #ff0000 xor"}));
    EXPECT_EQ(canvas.DrawMode, DRAW_COPY);
    EXPECT_EQ(canvas.DrawWidth, 1.0);
    engine.Replot(0);
    EXPECT_EQ(Lines().back(), "line 0.7 0 0.7 100 #ff0000 xor");
}

TEST_F(DrawSpect, MarksDoNotPrint) {
    engine.Target(0).Printing = true;
    engine.RegisterMark(0, 1, {0.5, 0}, {0.5, 100}, RED);
    engine.Replot(0);
    engine.RemoveMarks(0, 1);
    EXPECT_EQ(Lines(), Strings{"clear #000000"});
}

TEST_F(DrawSpect, PeakMarksAreWhiteAndATwentiethHigh) {
    Show(std::vector<std::int32_t>(50, 1), 2);
    std::vector<PeakTable> tables(3);
    tables[0].PeakNum = 1;  // graph 0 is not registered
    tables[0].Peak[0].Position = 10.0;
    tables[2].PeakNum = 3;
    tables[2].Peak[0].Position = 12.5;
    tables[2].Peak[1].Position = 49.0;
    tables[2].Peak[2].Position = 49.5;  // beyond what is shown
    engine.DrawPeakMarks(0, tables);
    EXPECT_EQ(Lines(), (Strings{"line 12.5 100 12.5 95 #ffffff", "line 49 100 49 95 #ffffff"}));
}

TEST_F(DrawSpect, PeakMarksOnTheLogAxisAreATwentiethOfItToo) {
    engine.SetFullScale(0, 0, true);
    Show(std::vector<std::int32_t>(50, 1), 0);
    std::vector<PeakTable> tables(1);
    tables[0].PeakNum = 1;
    tables[0].Peak[0].Position = 3.0;
    engine.DrawPeakMarks(0, tables);
    EXPECT_EQ(Lines(), Strings{"line 3 7 3 6.65 #ffffff"});
}

TEST_F(DrawSpect, TheActiveGraphTableTellsWhichGraphsHoldAChannel) {
    Show({5, 7, 9}, 0);
    engine.RegisterGraph(0, 13, data, 2, RED);
    const auto& active = engine.Target(0).ActiveGraph;
    EXPECT_EQ(active[1], 1U | 1U << 13U);
    EXPECT_EQ(active[2], 1U);
    EXPECT_EQ(active[3], 0U);
    engine.WithdrawGraph(0, 0);
    EXPECT_EQ(active[1], 1U << 13U);
}

TEST_F(DrawSpect, ClearTargetZeroesOneTargetAndClearAllThemAll) {
    Show({5, 7});
    engine.SetFullScale(1, 50, false);
    engine.RegisterGraph(1, 4, data, 2, RED);
    engine.RegisterText(1, 0, 0, "one");
    engine.Target(0).DrawKind = DRAW_DOT;
    engine.ClearTarget(0);
    const DrawTarget& t = engine.Target(0);
    EXPECT_EQ(t.XEnd, 0);
    EXPECT_EQ(t.YTop, 0);
    EXPECT_EQ(t.DrawKind, DRAW_LINE);
    EXPECT_EQ(t.Graph[0].GraphInUse, 0);
    EXPECT_EQ(t.Graph[0].PlotY[0], 0);
    EXPECT_EQ(t.ActiveGraph[0], 0);
    EXPECT_EQ(t.Canvas, &canvas);
    EXPECT_EQ(engine.Target(1).Graph[4].PlotY[0], 45);
    EXPECT_EQ(engine.Target(1).TextNum, 1);
    engine.ClearAll();
    EXPECT_EQ(engine.Target(1).Graph[4].GraphInUse, 0);
    EXPECT_EQ(engine.Target(1).TextNum, 0);
    EXPECT_EQ(engine.Target(1).YTop, 0);
}

TEST_F(DrawSpect, EachSymbolShapeStaysInItsSquare) {
    Show({0, 0});
    surface = RecordingSurface(100.0, 100.0);
    engine.SetChannelRange(0, 1, 101);
    for (const auto shape :
         {SymbolShape::Plus, SymbolShape::Cross, SymbolShape::Square, SymbolShape::Diamond,
          SymbolShape::Up, SymbolShape::Down, SymbolShape::Bar}) {
        engine.ClearRegistrations();
        engine.WithdrawGraph(0, 0);
        engine.RegisterSymbol(0, 50.0, 50.0, shape, RED, 8);
        surface.Strokes.clear();
        engine.PlotAll(0);
        ASSERT_FALSE(surface.Strokes.empty());
        for (const Drawn& drawn : surface.Strokes)
            for (const Spot spot : {drawn.From, drawn.To}) {
                EXPECT_LE(std::fabs(spot.X - 50.0), 4.0 + 1e-9);
                EXPECT_LE(std::fabs(spot.Y - 50.0), 4.0 + 1e-9);
            }
    }
}

TEST_F(DrawSpect, WithoutACanvasNothingIsDrawnAndNothingFails) {
    Show({1, 2});
    engine.Target(0).Canvas = nullptr;
    engine.Replot(0);
    engine.PlotGraph(0, 0);
    engine.DrawPeakMarks(0, {});
    EXPECT_TRUE(surface.Strokes.empty());
}

}  // namespace
}  // namespace vael
