// The peak table as text: values in each unit, the file letter by letter, the printed list.
#include "analysis/peaktext.h"

#include "core/units.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace vael;

namespace {

const DacAxis NO_DAC{};

/// E = 0.5 + 0.03 x; at 60 degrees d = 12.3981 / E, as the wavelength.
ParamRecord Calibrated() {
    ParamRecord p{};
    p.EgcCoef = {0.5, 0.03, 0.0};
    p.TwoTheta = 60.0;
    return p;
}

/// Shown at channel 100: 3.5 keV; its half heights are at 3.35 and 3.65 keV.
PeakRecord Line() {
    PeakRecord peak{};
    peak.Position = 99.0;
    peak.Width = 5.0;
    peak.Amplitude = 1234.5;
    peak.Intensity = 13141.239;
    peak.GaussRatio = 0.625;
    return peak;
}

PeakTable TableOf(const std::vector<PeakRecord>& peaks) {
    PeakTable table{};
    for (const PeakRecord& peak : peaks)
        table.Peak[static_cast<std::size_t>(table.PeakNum++)] = peak;
    return table;
}

std::string Csv(const std::vector<PeakRecord>& peaks, int unit = UNIT_KEV) {
    return FitParamCsv(TableOf(peaks), unit, Calibrated(), NO_DAC);
}

const std::string KEV_HEAD =
    "Peak(Ch),Peak(keV),Intensity,FWHM(Ch),FWHM(keV),FWHM(d),Amplitude,Gauss(%),Type\r\n";

/// Position and width in a unit as the report shows them.
std::string InUnit(int unit) {
    const PeakTexts texts = TextsOf(PeakLineOf(Line(), unit, Calibrated(), NO_DAC));
    return texts[1] + " " + texts[4];
}

}  // namespace

TEST(PeakText, AnEmptyTableWritesOnlyTheHeader) { EXPECT_EQ(Csv({}), KEV_HEAD); }

TEST(PeakText, AnyUnitStandsInTheHeader) {
    EXPECT_EQ(
        Csv({}, UNIT_D),
        "Peak(Ch),Peak(d:A),Intensity,FWHM(Ch),FWHM(d:A),FWHM(d),Amplitude,Gauss(%),Type\r\n");
    EXPECT_EQ(Csv({}, UNIT_CH),
              "Peak(Ch),Peak(Ch),Intensity,FWHM(Ch),FWHM(Ch),FWHM(d),Amplitude,Gauss(%),Type\r\n");
}

TEST(PeakText, ALineHoldsTheAmplitudeBelowIntensityAndTheReverse) {
    // 12.3981 / 3.35 - 12.3981 / 3.65 = 0.30419
    EXPECT_EQ(Csv({Line()}),
              KEV_HEAD + "100.0000,3.5000,1234.50,10.00,0.300,0.3042,13141.24,62.5,N\r\n");
}

TEST(PeakText, TheReportItselfHasEachValueBelowItsOwnWord) {
    const PeakTexts heads = PeakHeads(UNIT_KEV);
    const PeakTexts texts = TextsOf(PeakLineOf(Line(), UNIT_KEV, Calibrated(), NO_DAC));
    ASSERT_EQ(heads[2], "Intensity");
    EXPECT_EQ(texts[2], "13141.24");
    ASSERT_EQ(heads[6], "Amplitude");
    EXPECT_EQ(texts[6], "1234.50");
}

TEST(PeakText, ASinglePeakFitIsE) {
    PeakRecord peak = Line();
    peak.Fitted = 1;
    EXPECT_TRUE(Csv({peak}).ends_with(",62.5,E\r\n"));
    peak.Fitted = -1;  // any value but 0
    EXPECT_TRUE(Csv({peak}).ends_with(",62.5,E\r\n"));
}

TEST(PeakText, PositionsAndWidthsInEachUnit) {
    EXPECT_EQ(InUnit(UNIT_CH), "100.0000 10.000");
    EXPECT_EQ(InUnit(UNIT_KEV), "3.5000 0.300");
    EXPECT_EQ(InUnit(UNIT_EV), "3500.0000 300.000");
    // d and wavelength fall with the channel: their width is a magnitude.
    EXPECT_EQ(InUnit(UNIT_D), "3.5423 0.304");
    EXPECT_EQ(InUnit(UNIT_A), "3.5423 0.304");
    // Q = E 4 pi sin(30 degrees) / 12.399: 1.77363 and 0.15203
    EXPECT_EQ(InUnit(UNIT_Q), "1.7736 0.152");
}

TEST(PeakText, ByTheAngleThePositionIsADAndItsWidthAMagnitude) {
    // 2 theta = 0.1 x degrees: 2 sin(30 degrees) is 1 at x = 600, so d is lambda there.
    const DacAxis dac{.Offset = 0.0, .Slope = 0.1, .Lambda = 0.5};
    PeakRecord peak = Line();
    peak.Position = 600.0;
    const PeakLine line = PeakLineOf(peak, UNIT_2THETA, Calibrated(), dac);
    EXPECT_NEAR(line.Position, 0.5, 1e-12);
    // d' = -lambda cot(theta) / (2 sin(theta)) a radian of theta, and 0.05 degrees a channel.
    EXPECT_NEAR(line.Width, 10.0 * 0.5 * 1.7320508 * 0.05 * 3.14159265358979 / 180.0, 1e-5);
}

TEST(PeakText, NegativeAndHugeNumbersStandInFull) {
    PeakRecord peak = Line();
    peak.Amplitude = -3.456;
    peak.Intensity = 1e12;
    peak.GaussRatio = 12.34567;
    peak.Position = -1.5;
    EXPECT_EQ(Csv({peak}, UNIT_CH).substr(Csv({}, UNIT_CH).size(), 35),
              "-0.5000,-0.5000,-3.46,10.00,10.000,");
    EXPECT_TRUE(Csv({peak}).ends_with(",1000000000000.00,1234.6,N\r\n"));
    peak.Amplitude = -0.001;
    EXPECT_NE(Csv({peak}).find(",0.00,10.00,"), std::string::npos) << "no sign before a zero";
}

TEST(PeakText, RoundsHalvesAwayFromZero) {
    PeakRecord peak = Line();
    peak.Amplitude = 0.125;
    peak.Width = 0.0625;
    const PeakTexts texts = TextsOf(PeakLineOf(peak, UNIT_CH, Calibrated(), NO_DAC));
    EXPECT_EQ(texts[6], "0.13");
    EXPECT_EQ(texts[3], "0.13");
    EXPECT_EQ(texts[4], "0.125");
}

TEST(PeakText, WithoutAnAngleThereIsNoWidthInD) {
    ParamRecord param = Calibrated();
    param.TwoTheta = 0.0;
    const PeakTexts texts = TextsOf(PeakLineOf(Line(), UNIT_KEV, param, NO_DAC));
    EXPECT_EQ(texts[5], "0.0000");
}

TEST(PeakText, LinesStandInTheOrderOfTheTable) {
    PeakRecord second = Line();
    second.Position = 49.0;
    const std::string csv = Csv({Line(), second});
    EXPECT_LT(csv.find("\r\n100.0000,"), csv.find("\r\n50.0000,"));
}

TEST(PeakText, TheNameSaysWhatTheRowIs) {
    EXPECT_EQ(FitParamName("AuWire", "Smooth"), "AuWire_Smooth_FitParam.csv");
    EXPECT_EQ(FitParamName("AuWire", "Fit"), "AuWire_Fit_FitParam.csv");
    EXPECT_EQ(FitParamName("AuWire", "BackRemv"), "AuWire_BackRemv_FitParam.csv");
    EXPECT_EQ(FitParamName("AuWire", "BackGraund"), "AuWire_BackGraund_FitParam.csv");
    EXPECT_EQ(FitParamName("AuWire", "AuWire.npd"), "AuWire_Raw_FitParam.csv");
    EXPECT_EQ(FitParamName("AuWire", "fit"), "AuWire_Raw_FitParam.csv") << "exact names only";
    EXPECT_EQ(FitParamName("試料 1.5GPa", "Fit"), "試料 1.5GPa_Fit_FitParam.csv");
}

TEST(PeakText, ThePrintedListHasItsWordsAndItsValuesBelowThem) {
    PeakRecord second = Line();
    second.Position = 1038.25;
    second.Fitted = 1;
    const auto lines =
        PeakReportLines("AuWire", TableOf({Line(), second}), UNIT_KEV, Calibrated(), NO_DAC);
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines[0], "Peak Report");
    EXPECT_EQ(lines[1], "  Measurement Name : AuWire");
    const std::string& heading = lines[2];
    EXPECT_EQ(
        heading,
        "  #   Peak(Ch) Peak(keV)    Intensity  FWHM(Ch)  FWHM(keV)  Amplitude  Gauss(%) Type");
    const auto below = [&](const std::string& line, const std::string& word,
                           const std::string& value) {
        const std::size_t end = heading.find(word) + word.size();
        ASSERT_GE(end, value.size()) << word;
        EXPECT_EQ(line.substr(end - value.size(), value.size()), value) << word;
        EXPECT_TRUE(end == line.size() || line[end] == ' ') << word;
    };
    below(lines[3], "#", "  1");
    below(lines[3], "Peak(Ch)", " 100.0000");
    below(lines[3], "Peak(keV)", " 3.5000");
    below(lines[3], "Intensity", " 13141.24");
    below(lines[3], "FWHM(Ch)", " 10.00");
    below(lines[3], "FWHM(keV)", " 0.300");
    below(lines[3], "Amplitude", " 1234.50");
    below(lines[3], "Gauss(%)", " 62.5");
    below(lines[3], "Type", " N");
    below(lines[4], "#", "  2");
    below(lines[4], "Peak(Ch)", " 1039.2500");
    below(lines[4], "Type", " E");
    EXPECT_EQ(lines[3].size(), heading.size());
}

TEST(PeakText, AValueTooWideForItsColumnMovesOnBehindABlank) {
    PeakRecord peak = Line();
    peak.Intensity = 1e15;
    const auto lines = PeakReportLines("x", TableOf({peak}), UNIT_KEV, Calibrated(), NO_DAC);
    EXPECT_NE(lines[3].find(" 3.5000 1000000000000000.00 10.00 "), std::string::npos) << lines[3];
}

TEST(PeakText, AnEmptyTablePrintsItsHeading) {
    EXPECT_EQ(PeakReportLines("x", PeakTable{}, UNIT_KEV, Calibrated(), NO_DAC).size(), 3U);
}
