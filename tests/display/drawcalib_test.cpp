// The picture of a calibration: limits, ticks, labels, what is drawn where, and the printed page.
#include "display/drawcalib.h"
#include "support/golden.h"
#include "support/recordingcanvas.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace vael;
using test::Drawn;
using test::RecordingSurface;

namespace {

CalibPicture SomePicture() {
    return {.X = {700.0, 2300.0, 3857.0},
            .Y = {22.0, 73.0, 122.0},
            .MaxCh = 4096.0,
            .MaxE = 129.6,
            .Constants = {0.057, 0.0316, 0.0},
            .Lines = {"Energy(keV) = (5.7e-002) + (3.16e-002)*Ch"}};
}

std::vector<Drawn> InColour(const RecordingSurface& surface, Drawn::Kind kind, Colour ink) {
    std::vector<Drawn> out;
    for (const Drawn& drawn : surface.Only(kind))
        if (drawn.Pen.Ink == ink) out.push_back(drawn);
    return out;
}

std::string LinesOf(const RecordingSurface& surface) {
    std::string text;
    for (const Drawn& drawn : surface.Strokes) text += drawn.Line() + "\n";
    return text;
}

}  // namespace

TEST(CalibAxes, TheEnergyLimitIsTheNextHundred) {
    EXPECT_EQ(EnergyLimit(129.6), 200.0);
    EXPECT_EQ(EnergyLimit(100.0), 100.0) << "exactly 100 keeps the axis at 100";
    EXPECT_EQ(EnergyLimit(101.0), 200.0);
    EXPECT_EQ(EnergyLimit(100.9), 100.0) << "the hundreds that reach a keV less";
    EXPECT_EQ(EnergyLimit(1.0), 100.0);
    EXPECT_EQ(EnergyLimit(0.5), 100.0) << "the default";
    EXPECT_EQ(EnergyLimit(-350.0), 100.0);
}

TEST(CalibAxes, TheChannelLimitIsTheLastChannelCountedFromZero) {
    EXPECT_EQ(ChannelLimit(4096.0), 4095.0);
    EXPECT_EQ(ChannelLimit(0.0), 1.0);
}

TEST(CalibAxes, TicksAreOneTwoOrFive) {
    EXPECT_EQ(CalibTickStep(100.0, 10), 10.0);
    EXPECT_EQ(CalibTickStep(100.0, 8), 20.0);
    EXPECT_EQ(CalibTickStep(200.0, 5), 50.0);
    EXPECT_EQ(CalibTickStep(4095.0, 9), 500.0);
    EXPECT_EQ(CalibTickStep(8191.0, 9), 1000.0);
    EXPECT_EQ(CalibTickStep(100.0, 0), 100.0);
}

TEST(CalibAxes, EnergyLabelsHaveTheDecimalsOfTheirStep) {
    EXPECT_EQ(EnergyTickLabel(50.0, 50.0), "50");
    EXPECT_EQ(EnergyTickLabel(0.0, 1.0), "0");
    EXPECT_EQ(EnergyTickLabel(123456.0, 1000.0), "123456");
    EXPECT_EQ(EnergyTickLabel(1.5, 0.5), "1.5");
    EXPECT_EQ(EnergyTickLabel(0.1, 0.1), "0.1");
    EXPECT_EQ(EnergyTickLabel(0.25, 0.05), "0.25");
    EXPECT_EQ(EnergyTickLabel(0.002, 0.001), "0.002");
    EXPECT_EQ(EnergyTickLabel(0.0002, 0.0002), "0.0002");
    EXPECT_EQ(EnergyTickLabel(0.00002, 0.00001), ".00002");
    EXPECT_EQ(EnergyTickLabel(0.00003, 0.000001), ".00003") << "five decimals at most";
}

TEST(CalibAxes, ChannelLabelsAreWhole) {
    EXPECT_EQ(ChannelTickLabel(0.0), "0");
    EXPECT_EQ(ChannelTickLabel(3500.0), "3500");
}

TEST(CalibPlot, GridGreyCurveRedPointsBlue) {
    RecordingSurface surface(600.0, 300.0);
    Canvas canvas(surface);
    DrawCalibPlot(canvas, SomePicture());
    const auto curve = InColour(surface, Drawn::Kind::Line, Rgb(255, 0, 0));
    ASSERT_EQ(curve.size(), 1U) << "a line is one stroke";
    EXPECT_EQ(curve[0].From.X, 0.0);
    EXPECT_NEAR(curve[0].From.Y, 0.057, 1e-12);
    EXPECT_EQ(curve[0].To.X, 4095.0);
    EXPECT_NEAR(curve[0].To.Y, 0.057 + 0.0316 * 4095.0, 1e-9);
    EXPECT_EQ(curve[0].Pen.Scale.Top, 200.0);
    const auto points = InColour(surface, Drawn::Kind::FilledBox, Rgb(0, 0, 255));
    ASSERT_EQ(points.size(), 3U);
    EXPECT_NEAR((points[1].From.X + points[1].To.X) / 2.0, 2300.0, 1e-9);
    EXPECT_NEAR((points[1].From.Y + points[1].To.Y) / 2.0, 73.0, 1e-9);
    EXPECT_GT(InColour(surface, Drawn::Kind::Line, Rgb(200, 200, 200)).size(), 10U);
}

TEST(CalibPlot, WithoutPointsOnlyTheCurve) {
    CalibPicture picture = SomePicture();
    picture.X.clear();
    picture.Y.clear();
    RecordingSurface surface(600.0, 300.0);
    Canvas canvas(surface);
    DrawCalibPlot(canvas, picture);
    EXPECT_EQ(InColour(surface, Drawn::Kind::Line, Rgb(255, 0, 0)).size(), 1U);
    EXPECT_TRUE(surface.Only(Drawn::Kind::FilledBox).empty());
}

TEST(CalibPlot, AParabolaIsBentAndEndsAtTheEdges) {
    CalibPicture picture = SomePicture();
    picture.Constants = {-20.0, 0.0, 2e-5};  // leaves the plot below and above
    RecordingSurface surface(600.0, 300.0);
    Canvas canvas(surface);
    DrawCalibPlot(canvas, picture);
    const auto curve = InColour(surface, Drawn::Kind::Line, Rgb(255, 0, 0));
    ASSERT_GT(curve.size(), 50U);
    EXPECT_NEAR(curve.front().From.X, 1000.0, 1.0) << "2e-5 x^2 = 20";
    EXPECT_NEAR(curve.front().From.Y, 0.0, 1e-9);
    EXPECT_NEAR(curve.back().To.X, std::sqrt(220.0 / 2e-5), 1.0);
    EXPECT_NEAR(curve.back().To.Y, 200.0, 1e-9);
}

TEST(CalibPlot, PointsOutsideTheAxesAreNotDrawn) {
    CalibPicture picture = SomePicture();
    picture.X[0] = 5000.0;
    RecordingSurface surface(600.0, 300.0);
    Canvas canvas(surface);
    DrawCalibPlot(canvas, picture);
    EXPECT_EQ(surface.Only(Drawn::Kind::FilledBox).size(), 2U);
}

TEST(CalibPlot, ThePageIsAsItWasApproved) {
    RecordingSurface surface(595.0, 842.0);
    Canvas canvas(surface);
    DrawCalibPage(canvas, SomePicture());
    const auto words = surface.Words();
    for (const char* told : {"Energy Calibration Curve", "Channel", "           keV"})
        EXPECT_NE(std::find(words.begin(), words.end(), told), words.end()) << told;
    EXPECT_NE(std::find(words.begin(), words.end(), SomePicture().Lines[0]), words.end());
    test::ExpectGolden("calib_page.txt", LinesOf(surface));
}
