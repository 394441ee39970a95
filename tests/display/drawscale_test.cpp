// Tests of the axes: divisions, labels, both strips, full scales.
#include "display/drawscale.h"

#include "core/fault.h"
#include "support/recordingcanvas.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vael {
namespace {

using test::Drawn;
using test::RecordingSurface;
using Strings = std::vector<std::string>;
constexpr Colour INK = Rgb(0, 0, 0);

class DrawScale : public ::testing::Test {
protected:
    Strings Labels(std::int32_t fullScale) {
        surface.Strokes.clear();
        YScaleDraw(canvas, fullScale, axis, INK);
        return surface.Words();
    }
    Strings Lines() const {
        Strings out;
        for (const Drawn& drawn : surface.Strokes) out.push_back(drawn.Line());
        return out;
    }
    Strings XLabels(int unit, double span = 4096, double start = 0) {
        surface.Strokes.clear();
        canvas.ScaleReset();
        XScaleDraw(canvas, {unit, 4, span, start, param.TwoTheta}, param, dac, axis, INK);
        return surface.Words();
    }
    RecordingSurface surface{100.0, 200.0};
    Canvas canvas{surface};
    AxisScale axis;
    ParamRecord param{};
    DacAxis dac;
};

TEST_F(DrawScale, DivisionsFollowTheFirstDigit) {
    const std::array<std::int16_t, 11> expected{0, 5, 4, 3, 4, 5, 3, 7, 4, 9, 10};
    EXPECT_EQ(InitScaleDiv(), expected);
}

TEST_F(DrawScale, AFullScaleOf300HasThreeDivisions) {
    EXPECT_EQ(Labels(300), (Strings{" 0", " 100", " 200", " 300"}));
    EXPECT_EQ(axis.TickNum, 4);
    EXPECT_EQ(axis.ScaleValues[3], 300.0);
    EXPECT_EQ(axis.YFullScale, 300);
}

TEST_F(DrawScale, FullScalesOfEachFirstDigit) {
    EXPECT_EQ(Labels(10000), (Strings{" 0", " 2K", " 4K", " 6K", " 8K", " 10K"}));
    EXPECT_EQ(Labels(20), (Strings{" 0", " 5", " 10", " 15", " 20"}));
    EXPECT_EQ(Labels(40000000), (Strings{" 0", " 10M", " 20M", " 30M", " 40M"}));
    EXPECT_EQ(Labels(6000), (Strings{" 0", " 2K", " 4K", " 6K"}));
    EXPECT_EQ(Labels(70).size(), 8U);
    EXPECT_EQ(Labels(90).size(), 10U);
    EXPECT_EQ(Labels(2000), (Strings{" 0", " 500", " 1K", " 1.5K", " 2K"}));
}

TEST_F(DrawScale, BelowTenItIsTheLogAxisOfSevenDecades) {
    const Strings decades{" 1", " 10", " 100", " 1K", " 10K", " 100K", " 1M", " 10M"};
    EXPECT_EQ(Labels(7), decades);
    EXPECT_EQ(axis.TickNum, 8);
    for (int i = 0; i <= 7; ++i) EXPECT_EQ(axis.ScaleValues[static_cast<std::size_t>(i)], i);
    EXPECT_EQ(axis.YFullScale, 7);
    EXPECT_EQ(Labels(0), decades);
    EXPECT_EQ(Labels(-3), decades);
    EXPECT_EQ(Labels(9), decades);
    EXPECT_NE(Labels(10), decades);
}

TEST_F(DrawScale, LabelsEndAtTheAxisAndAreCentredOnTheirTick) {
    Labels(300);
    // 100 x 200 pixels are 100 x 100: " 300" is 24 wide, half of 10 pixels of height is 2.5.
    EXPECT_EQ(Lines(),
              (Strings{"text 88 2.5 #000000 s9:  0", "text 76 35.8333 #000000 s9:  100",
                       "text 76 69.1667 #000000 s9:  200", "text 76 102.5 #000000 s9:  300"}));
}

TEST_F(DrawScale, ThePlainStripIsGivenBackInPixels) {
    canvas.FontSize = 12.0;
    Labels(300);
    EXPECT_EQ(canvas.ScaleNow().Top, 0.0);
    EXPECT_EQ(canvas.ScaleNow().Bottom, 200.0);
    EXPECT_EQ(canvas.FontSize, 12.0);
}

TEST_F(DrawScale, ACanvasWithATopOfItsOwnKeepsItsCoordinates) {
    canvas.Scale(0.0, 110.0, 100.0, -10.0);
    Labels(300);
    EXPECT_EQ(canvas.ScaleNow().Top, 110.0);
    EXPECT_EQ(Lines()[3], "text 76 103 #000000 s9:  300");  // half of 10 pixels is now 3
}

TEST_F(DrawScale, TheSecondCountAxisStartsAtItsLeftEdge) {
    YScaleDrawRight(canvas, 300, axis, INK);
    EXPECT_EQ(Lines()[3], "text 0 102.5 #000000 s9:  300");
    EXPECT_EQ(axis.TickNum, 4);
}

TEST_F(DrawScale, CountLabelsAreShortenedByThousandsAndMillions) {
    EXPECT_EQ(FormatScaleLabel(0), "0");
    EXPECT_EQ(FormatScaleLabel(3), "3");
    EXPECT_EQ(FormatScaleLabel(998), "998");
    EXPECT_EQ(FormatScaleLabel(1000), "1K");
    EXPECT_EQ(FormatScaleLabel(1010), "1K");
    EXPECT_EQ(FormatScaleLabel(1011), "1.0K");
    EXPECT_EQ(FormatScaleLabel(1500), "1.5K");
    EXPECT_EQ(FormatScaleLabel(250000), "250K");
    EXPECT_EQ(FormatScaleLabel(999999), "1000.0K");
    EXPECT_EQ(FormatScaleLabel(1000000), "1M");
    EXPECT_EQ(FormatScaleLabel(2500000), "3M");  // half away from zero
    EXPECT_EQ(FormatScaleLabel(999999999), "1000M");
    EXPECT_EQ(FormatScaleLabel(1000000000), "");
}

TEST_F(DrawScale, LowerAxisTextsFollowTheUnit) {
    EXPECT_EQ(FormatAxisValue(1025, 0), "1025");
    EXPECT_EQ(FormatAxisValue(0, 0), "");
    EXPECT_EQ(FormatAxisValue(32.95, 1), "33.0");
    EXPECT_EQ(FormatAxisValue(123456.78, 2), "123456.8");
    EXPECT_EQ(FormatAxisValue(0, 1), "0.0");
    EXPECT_EQ(FormatAxisValue(2.03905, 3), "2.0391");
    EXPECT_EQ(FormatAxisValue(0.37652, 4), "0.3765");
    EXPECT_EQ(FormatAxisValue(4.35734, 5), "4.3573");
    EXPECT_EQ(FormatAxisValue(15.01459, 6), "15.0146");
    EXPECT_EQ(FormatAxisValue(12.7, 7), "13");
}

TEST_F(DrawScale, ThePlainStripHasAnAxisFiveTicksAndLabels) {
    surface = RecordingSurface(4095.0, 100.0);  // a pixel is a channel, and one of the 100 up
    EXPECT_EQ(XLabels(0), (Strings{"1", "1025", "2049", "3073", "4096"}));
    EXPECT_EQ(Lines(), (Strings{"line 0 100 4095 100 #000000",       //
                                "line 0 100 0 94 #000000",           // a tick is 0.6 x 10
                                "text 0 94 #000000 s9: 1",           // would start at -3
                                "line 1024 100 1024 94 #000000",     //
                                "text 1012 94 #000000 s9: 1025",     //
                                "line 2048 100 2048 94 #000000",     //
                                "text 2036 94 #000000 s9: 2049",     //
                                "line 3072 100 3072 94 #000000",     //
                                "text 3060 94 #000000 s9: 3073",     //
                                "line 4095 100 4095 94 #000000",     // on the last shown channel
                                "text 4071 94 #000000 s9: 4096"}));  // ends at the right edge
    EXPECT_EQ(axis.TickNum, 5);
    EXPECT_EQ(axis.ScaleValues[1], 1025.0);
    EXPECT_EQ(axis.TickChannels[4], 4095.0);
}

TEST_F(DrawScale, TheFontAndTheDrawModeComeBack) {
    canvas.FontSize = 14.0;
    canvas.DrawMode = DRAW_XOR;
    XLabels(0);
    EXPECT_EQ(canvas.FontSize, 14.0);
    EXPECT_EQ(canvas.DrawMode, DRAW_XOR);
    for (const Drawn& drawn : surface.Strokes) EXPECT_EQ(drawn.Pen.Mode, DRAW_COPY);
}

TEST_F(DrawScale, EnergiesAreShownWithOneDecimal) {
    param.EgcCoef = {1.0, 0.03, 0.0};
    // Channels 1, 1025, 2049, 3073, 4096 of 1 + 0.03 x.
    EXPECT_EQ(XLabels(1), (Strings{"1.0", "31.8", "62.5", "93.2", "123.9"}));
    EXPECT_DOUBLE_EQ(axis.ScaleValues[2], 62.47);
    EXPECT_EQ(XLabels(2)[1], "31750.0");
    EXPECT_EQ(XLabels(-1)[1], "1025");  // a negative unit is channels
}

TEST_F(DrawScale, FromUnit3OnTheReadOutKeepsChannels) {
    param.EgcCoef = {0.0, 0.03, 0.0};
    param.TwoTheta = 10.0;
    const Strings labels = XLabels(3);
    // d of channel 1025, by hand: 12.3981 / (2 x 30.75 keV x sin 5 degrees).
    const double d = 12.3981 / (2.0 * 30.75 * std::sin(5.0 * std::acos(-1.0) / 180.0));
    char text[16];
    std::snprintf(text, sizeof text, "%.4f", d);
    EXPECT_EQ(labels[1], text);
    EXPECT_EQ(axis.ScaleValues[1], 1024.0);
    EXPECT_EQ(axis.TickChannels[1], 1024.0);
}

TEST_F(DrawScale, WavelengthNeedsATwoThetaOfTheSlotElseItIsChannels) {
    param.EgcCoef = {0.0, 0.03, 0.0};
    EXPECT_EQ(XLabels(4)[1], "1025");
    EXPECT_EQ(axis.ScaleValues[1], 1025.0);
    param.TwoTheta = 10.0;
    EXPECT_EQ(XLabels(4)[1], "0.4032");  // 12.3981 / 30.75
}

TEST_F(DrawScale, AnAxisThatStartsBeforeTheFirstChannelSaysNought) {
    EXPECT_EQ(XLabels(0, 401, -1)[0], "0");
    EXPECT_EQ(axis.TickChannels[0], 0.0);
    EXPECT_EQ(Lines()[1].substr(0, 11), "line 0 100 ");
}

TEST_F(DrawScale, OnCoordinatesOfTheCallerNoAxisIsDrawnAndTheLastTickIsWhole) {
    canvas.Scale(0.0, 120.0, 4096.0, 20.0);
    XScaleDraw(canvas, {0, 4, 4096, 0, 0.0}, param, dac, axis, INK);
    EXPECT_EQ(surface.Only(Drawn::Kind::Line).size(), 5U);
    EXPECT_EQ(surface.Words()[4], "4097");
    EXPECT_EQ(axis.TickChannels[4], 4096.0);
    EXPECT_EQ(canvas.ScaleNow().Top, 120.0);
    const Drawn last = surface.Strokes.back();  // centred, not moved to the edge
    EXPECT_NEAR(last.From.X, 4096.0 - 12.0 * 4096.0 / 100.0, 1e-9);
}

TEST_F(DrawScale, ADacAxisShowsNoughtAtTheAngleThatHasNoD) {
    dac.Offset = 0.0;
    dac.Slope = 0.01;
    EXPECT_EQ(XLabels(6)[0], "0.0000");
    EXPECT_NE(XLabels(6)[1], "0.0000");
}

TEST_F(DrawScale, MoreTicksThanTheTableHoldsAreAFault) {
    EXPECT_THROW(XScaleDraw(canvas, {0, 21, 4096, 0, 0.0}, param, dac, axis, INK), Fault);
    EXPECT_THROW(XScaleDraw(canvas, {0, 0, 4096, 0, 0.0}, param, dac, axis, INK), Fault);
    EXPECT_NO_THROW(XScaleDraw(canvas, {0, 20, 4096, 0, 0.0}, param, dac, axis, INK));
}

TEST_F(DrawScale, FullScalesRiseFromTenToTenMillion) {
    const auto scales = FullScales();
    EXPECT_EQ(scales.front(), 10);
    EXPECT_EQ(scales.back(), 10000000);
    for (std::size_t i = 1; i < scales.size(); ++i) EXPECT_LT(scales[i - 1], scales[i]);
    for (const std::int32_t scale : {10, 20, 50, 100, 200, 500, 1000, 5000000})
        EXPECT_NE(std::find(scales.begin(), scales.end(), scale), scales.end()) << scale;
}

TEST_F(DrawScale, EveryFullScaleHasWholeTicks) {
    for (const std::int32_t scale : FullScales()) {
        const int divisions =
            InitScaleDiv()[static_cast<std::size_t>(std::to_string(scale).front() - '0')];
        EXPECT_EQ(scale % divisions, 0) << scale;
    }
}

TEST_F(DrawScale, TheAutomaticFullScaleLeavesATwentieth) {
    EXPECT_EQ(AutoFullScale(0), 10);
    EXPECT_EQ(AutoFullScale(-50), 10);
    EXPECT_EQ(AutoFullScale(9), 10);
    EXPECT_EQ(AutoFullScale(10), 20);
    EXPECT_EQ(AutoFullScale(33257), 40000);
    EXPECT_EQ(AutoFullScale(39000), 50000);
    EXPECT_EQ(AutoFullScale(2000000000), 10000000);
}

TEST_F(DrawScale, SteppingGoesThroughTheListAndStopsAtItsEnds) {
    EXPECT_EQ(StepFullScale(100, 1), 200);
    EXPECT_EQ(StepFullScale(100, -1), 80);
    EXPECT_EQ(StepFullScale(10, -1), 10);
    EXPECT_EQ(StepFullScale(10000000, 1), 10000000);
    EXPECT_EQ(StepFullScale(70, 1), 80);  // typed between two entries
    EXPECT_EQ(StepFullScale(70, -1), 60);
    EXPECT_EQ(StepFullScale(50000000, -1), 10000000);
    EXPECT_EQ(StepFullScale(3, 1), 10);
    EXPECT_EQ(StepFullScale(100, 3), 400);
}

}  // namespace
}  // namespace vael
