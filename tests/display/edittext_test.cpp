// Tests of the page's texts: measurement lines, the peak table, rotated text.
#include "display/edittext.h"

#include "core/units.h"
#include "display/lotatefont.h"
#include "support/recordingcanvas.h"

#include <gtest/gtest.h>

namespace vael {
namespace {

PropertyRecord Measured() {
    PropertyRecord record{};
    record.FileName = "AuWire.npd";
    record.SampleName = "金線";
    record.OpDate = "20181010";
    record.OpTime = "090541";
    record.OpName = "Operator";
    record.Memo = "";
    record.Param.RealTime = 300.005;
    record.Param.LiveTime = 290.0;
    record.Param.TwoTheta = 15.014594;
    record.Param.Pressure = 0.0004;
    record.Param.Temperature = 26.85;
    record.Param.IonChamber = 12.0;
    record.Param.RingCurrent = 99.5;
    record.Param.CountRate = 1234567.0;
    return record;
}

PeakRecord Peak(double position, double width, double amplitude, double intensity) {
    PeakRecord peak{};
    peak.FuncType = SHAPE_GAUSS;
    peak.Position = position;
    peak.Width = width;
    peak.Amplitude = amplitude;
    peak.Intensity = intensity;
    peak.GaussRatio = 1.0;
    return peak;
}

TEST(PropertyText, HasFifteenRowsInTheirOrder) {
    const auto rows = MakePropertyText(Measured());
    const std::vector<std::pair<std::string, std::string>> told{
        {"Measurement Name ", "AuWire.npd"},
        {"Sample Name      ", "金線"},
        {"Operation Date   ", "2018/10/10"},
        {"Start Time       ", "09:05.41"},
        {"Operater Name    ", "Operator"},
        {"Comment          ", ""},
        {"", ""},
        {"Real Time (Sec)  ", "300.01"},
        {"Live Time (Sec)  ", "290.00"},
        {"2θ (Deg)        ", "15.01459"},
        {"Pressure(GPa) ", "0.000"},
        {"Temperature(℃)  ", "26.850"},
        {"Ion Chamber (mV) ", "12.00"},
        {"Ring Current (mA)     ", "99.50"},
        {"Count Rate (cps) ", "1234567.00"}};
    EXPECT_EQ(rows, told);
}

TEST(PropertyText, ADateThatIsNotKnownHasNoValue) {
    const auto rows = MakePropertyText(PropertyRecord{});
    EXPECT_EQ(rows[2].second, "");
    EXPECT_EQ(rows[3].second, "");
    EXPECT_EQ(rows[9].second, "0.00000");
}

TEST(PeakText, EachValueStandsBelowItsOwnWord) {
    PeakTable peaks{};
    peaks.PeakNum = 2;
    peaks.Peak[0] = Peak(99.0, 2.5, 1000.0, 5321.5);
    peaks.Peak[1] = Peak(199.0, 5.0, 50.25, 535.0);
    peaks.Peak[1].Fitted = 1;
    peaks.Peak[1].GaussRatio = 0.75;
    ParamRecord param{};
    param.EgcCoef = {0.0, 0.1, 0.0};  // keV a channel counted from 1
    param.TwoTheta = 60.0;            // d = 12.3984 / (2 E sin 30) = 12.3984 / E
    const auto lines = MakePeakText(peaks, UNIT_KEV, param, DacAxis{});
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0],
              "Peak(Ch),Peak(keV),Intensity,FWHM(Ch),FWHM(keV),FWHM(d),Amplitude,Gauss(%),Type");
    // FWHM in d: 12.3984 / 9.75 - 12.3984 / 10.25 = 0.0620.
    EXPECT_EQ(lines[1], "100.0000,10.0000,5321.50,5.00,0.500,0.0620,1000.00,100.0,N");
    // 12.3984 / 19.5 - 12.3984 / 20.5 = 0.0310.
    EXPECT_EQ(lines[2], "200.0000,20.0000,535.00,10.00,1.000,0.0310,50.25,75.0,E");
}

TEST(PeakText, AnEmptyTableIsItsHeading) {
    EXPECT_EQ(MakePeakText(PeakTable{}, UNIT_CH, ParamRecord{}, DacAxis{}).size(), 1U);
}

TEST(LotateText, WritesAtTheCurrentPointInItsOwnHeightAndLeavesTheFontAlone) {
    test::RecordingSurface surface(100.0, 100.0);
    Canvas canvas(surface);
    canvas.FontSize = 7.0;
    canvas.CurrentX = 20.0;
    canvas.CurrentY = 30.0;
    LotateText(canvas, "縦 up", true, 90.0, Rgb(1, 2, 3));
    ASSERT_EQ(surface.Strokes.size(), 1U);
    EXPECT_EQ(surface.Strokes[0].Line(), "text 20 30 #010203 s9.75 a90 bold: 縦 up");
    LotateText(canvas, "down", false, -45.0);
    EXPECT_EQ(surface.Strokes[1].Line(), "text 20 30 #000000 s9.75 a-45: down");
    EXPECT_EQ(canvas.FontSize, 7.0);
    EXPECT_EQ(canvas.TextAngle, 0.0);
    EXPECT_FALSE(canvas.FontBold);
    EXPECT_EQ(canvas.CurrentX, 20.0);
}

}  // namespace
}  // namespace vael
