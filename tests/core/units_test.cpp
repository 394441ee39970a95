// Conversions between channels and axis units.
#include "core/units.h"

#include "core/fault.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace vael;

namespace {

const DacAxis NO_DAC{};

ParamRecord Calibrated() {
    ParamRecord p{};
    p.EgcCoef = {0.5, 0.03, 0.0};
    p.TwoTheta = 15.0;
    return p;
}

}  // namespace

TEST(Units, TheTablesColumns) {
    EXPECT_EQ(UnitAbbrev(3), "d:A");
    EXPECT_EQ(UnitName(1), "Enargy");
    EXPECT_EQ(UnitName(5), "");
    EXPECT_EQ(UnitFormat(0), "####");
    EXPECT_EQ(UnitFormat(7), "#####");
    EXPECT_EQ(UnitAbbrev(-1), "");
}

TEST(Units, ThePolynomialIsDefinedOnOneBasedChannels) {
    const ParamRecord p = Calibrated();
    EXPECT_DOUBLE_EQ(ChToEnergy(100.0, p.EgcCoef), 3.5);
    EXPECT_DOUBLE_EQ(ChToUnit(UNIT_KEV, 99.0, p, NO_DAC), 3.5);
    EXPECT_DOUBLE_EQ(ChToUnit(UNIT_EV, 99.0, p, NO_DAC), 3500.0);
    EXPECT_DOUBLE_EQ(ChToUnit(UNIT_CH, 99.0, p, NO_DAC), 100.0);
    EXPECT_DOUBLE_EQ(UnitToCh(UNIT_KEV, 3.5, p), 99.0);
    EXPECT_DOUBLE_EQ(UnitToCh(UNIT_EV, 3500.0, p), 99.0);
}

TEST(Units, TheInverseOfAParabola) {
    ParamRecord p = Calibrated();
    p.EgcCoef[2] = 1e-5;
    for (double ch : {0.0, 17.0, 4095.0})
        EXPECT_NEAR(UnitToCh(UNIT_KEV, ChToUnit(UNIT_KEV, ch, p, NO_DAC), p), ch, 1e-9);
    p.EgcCoef = {0.0, 0.0, 1.0};  // E = x^2 has no root for a negative energy
    EXPECT_EQ(EnergyToCh(-1.0, p.EgcCoef), -1.0);
}

TEST(Units, NoCalibrationShowsZeroAndReturnsMinusOne) {
    const ParamRecord p{};
    EXPECT_EQ(ChToUnit(UNIT_KEV, 500.0, p, NO_DAC), 0.0);
    EXPECT_EQ(UnitToCh(UNIT_KEV, 10.0, p), -1.0);
    EXPECT_EQ(ChToUnit(UNIT_A, 500.0, p, NO_DAC), 0.0);
    EXPECT_EQ(ChToUnit(UNIT_Q, 500.0, p, NO_DAC), 0.0);
}

TEST(Units, DNeedsAnAngle) {
    ParamRecord p = Calibrated();
    const double d = ChToUnit(UNIT_D, 999.0, p, NO_DAC);
    EXPECT_NEAR(d, 12.3981 / (2.0 * 30.5 * std::sin(7.5 * M_PI / 180.0)), 1e-12);
    p.TwoTheta = 0.0;
    EXPECT_EQ(ChToUnit(UNIT_D, 999.0, p, NO_DAC), 0.0);
    EXPECT_EQ(ChToUnit(UNIT_Q, 999.0, p, NO_DAC), 0.0);
}

TEST(Units, QHasItsOwnConstant) {
    const ParamRecord p = Calibrated();
    EXPECT_NEAR(ChToUnit(UNIT_Q, 999.0, p, NO_DAC),
                30.5 * 12.56637061435916 * std::sin(7.5 * M_PI / 180.0) / 12.399, 1e-12);
}

TEST(Units, DAndItsInverseAreUnlikeOnPurpose) {
    const ParamRecord p = Calibrated();
    const double d = ChToUnit(UNIT_D, 999.0, p, NO_DAC);
    EXPECT_NEAR(UnitToCh(UNIT_D, d, p), EnergyToCh(12.3981 / (2.0 * d * std::sin(7.5)), p.EgcCoef),
                1e-9);
    EXPECT_GT(std::fabs(UnitToCh(UNIT_D, d, p) - 999.0), 1.0);
    EXPECT_EQ(UnitToCh(UNIT_Q, 3.0, p), 0.0);
    EXPECT_EQ(UnitToCh(9, 3.0, p), 0.0);
}

TEST(Units, Widths) {
    const ParamRecord p = Calibrated();
    EXPECT_DOUBLE_EQ(WidthToUnit(UNIT_CH, 8.0, p), 8.0);
    EXPECT_NEAR(WidthToUnit(UNIT_KEV, 8.0, p), 0.24, 1e-12);
    EXPECT_NEAR(WidthToUnit(UNIT_EV, 8.0, p), 240.0, 1e-9);
    EXPECT_EQ(WidthToUnit(UNIT_D, 8.0, p), 1.0);
    EXPECT_EQ(WidthToUnit(UNIT_A, 8.0, p), 0.0);
    EXPECT_EQ(WidthToUnit(UNIT_Q, 8.0, p), 1.0);
    EXPECT_EQ(WidthToUnit(11, 8.0, p), 1.0);
    EXPECT_NEAR(UnitWidthToCh(UNIT_KEV, 0.24, p), 7.0, 1e-9);  // the inverse is one channel short
    EXPECT_EQ(UnitWidthToCh(UNIT_D, 0.24, p), 0.0);
}

TEST(Units, EveryColumnOfTheTable) {
    const char* const abbrev[] = {"Ch", "keV", "eV", "d:A", "A", "QA", "2q"};
    const char* const name[] = {"Channel", "Enargy", "Enargy", "d Value", "Wavelength", "", ""};
    const char* const format[] = {"####",   "##0.000", "##0.000", "0.0000",
                                  "0.0000", "0.0000",  "0.0000"};
    for (int unit = 0; unit < 7; ++unit) {
        EXPECT_EQ(UnitAbbrev(unit), abbrev[unit]);
        EXPECT_EQ(UnitName(unit), name[unit]);
        EXPECT_EQ(UnitFormat(unit), format[unit]);
    }
    EXPECT_EQ(UnitName(-1) + UnitName(7) + UnitAbbrev(7), "");
    EXPECT_EQ(UnitFormat(-1), "#####");
}

TEST(Units, TheWavelengthBothWaysAndItsGuards) {
    const ParamRecord p = Calibrated();
    EXPECT_NEAR(ChToUnit(UNIT_A, 999.0, p, NO_DAC), 12.3981 / 30.5, 1e-15);
    EXPECT_NEAR(UnitToCh(UNIT_A, 12.3981 / 30.5, p), 999.0, 1e-9);
    EXPECT_EQ(UnitToCh(UNIT_A, 0.0, p), 0.0);
    EXPECT_EQ(UnitToCh(UNIT_A, -1.0, p), 0.0);
    EXPECT_EQ(UnitToCh(UNIT_D, 0.0, p), 0.0);
    ParamRecord flat = p;
    flat.TwoTheta = 0.0;
    EXPECT_EQ(UnitToCh(UNIT_D, 2.0, flat), 0.0);
    EXPECT_EQ(UnitToCh(UNIT_CH, 100.0, p), 99.0);
    EXPECT_EQ(UnitToCh(UNIT_2THETA, 100.0, p), 0.0);
}

TEST(Units, WidthsBackInChannelsAndElectronVolts) {
    const ParamRecord p = Calibrated();
    EXPECT_EQ(UnitWidthToCh(UNIT_CH, 8.0, p), 8.0);
    // (0.5 keV + 240) / 1000 = 0.2405 keV is 8.65 channels below the first one's energy of 0.5.
    EXPECT_NEAR(UnitWidthToCh(UNIT_EV, 240.0, p), (0.2405 - 0.5) / 0.03 - 1.0, 1e-9);
    EXPECT_EQ(UnitWidthToCh(UNIT_A, 8.0, p), 0.0);
    EXPECT_EQ(UnitWidthToCh(-1, 8.0, p), 0.0);
    EXPECT_EQ(WidthToUnit(UNIT_2THETA, 8.0, p), 1.0);
}

TEST(Units, AnEnergyBelowNoughtHasNoLengthNoQAndNoAngle) {
    ParamRecord p = Calibrated();
    p.EgcCoef = {-100.0, 0.03, 0.0};
    for (const int unit : {UNIT_D, UNIT_A, UNIT_Q})
        EXPECT_EQ(ChToUnit(unit, 999.0, p, NO_DAC), 0.0) << unit;
    EXPECT_EQ(ChTo2ThetaRef(999.0, 15.0, p, NO_DAC), 0.0);
}

TEST(Units, ReferenceAngleAt15418) {
    const ParamRecord p = Calibrated();
    const double d = ChToUnit(UNIT_D, 999.0, p, NO_DAC);
    EXPECT_NEAR(ChTo2ThetaRef(999.0, 15.0, p, NO_DAC), std::asin(1.5418 / (2 * d)) * 180.0 / M_PI,
                1e-10);
    EXPECT_EQ(ChTo2ThetaRef(999.0, 0.0, p, NO_DAC), 0.0);
    ParamRecord far = p;
    far.TwoTheta = 120.0;  // d far below 0.7709: no real angle
    EXPECT_EQ(ChTo2ThetaRef(3999.0, 120.0, far, NO_DAC), 0.0);
}

TEST(Units, ADacChannelIsAnAngle) {
    const DacAxis dac{.Offset = 2.0, .Slope = 0.01, .Lambda = 0.5};
    EXPECT_NEAR(DacChannelToD(800.0, dac), 0.5 / (2.0 * std::sin(5.0 * M_PI / 180.0)), 1e-12);
    EXPECT_NEAR(ChToUnit(UNIT_2THETA, 800.0, ParamRecord{}, dac), DacChannelToD(800.0, dac), 1e-9);
    EXPECT_THROW((void)DacChannelToD(0.0, DacAxis{}), Fault);
    EXPECT_EQ(ChToUnit(UNIT_2THETA, 0.0, ParamRecord{}, DacAxis{}), 0.0)
        << "an axis that begins at the angle 0 can be drawn";
}

TEST(Units, RoundingAtAPowerOfTen) {
    EXPECT_NEAR(RoundDigit(123.456, -1, 0), 123.5, 1e-9);
    EXPECT_NEAR(RoundDigit(123.45, -1, -1), 123.4, 1e-9);
    EXPECT_NEAR(RoundDigit(123.41, -1, 1), 123.5, 1e-9);
    EXPECT_NEAR(RoundSignificant(12345.0, 2, 0), 12000.0, 1e-9);
    EXPECT_NEAR(RoundSignificant(12945.0, 2, -1), 12000.0, 1e-9);
    EXPECT_NEAR(RoundSignificant(12045.0, 2, 1), 13000.0, 1e-9);
    EXPECT_NEAR(RoundDigit(2.0 - 1e-9, 0, -1), 2.0, 1e-12) << "a hair below counts as whole";
    EXPECT_NEAR(RoundStep(4096.0, 4), 2000.0, 1e-9);
    EXPECT_NEAR(RoundStep(1000.0, 5), 200.0, 1e-9);
    EXPECT_THROW((void)RoundStep(10.0, 0), Fault);
}

TEST(Units, DecadesKeepPowersOfTen) {
    EXPECT_EQ(Log10Floor(1000.0), 3);
    EXPECT_EQ(Log10Floor(999.0), 2);
    EXPECT_EQ(Log10Floor(1.0), 0);
    EXPECT_EQ(Log10Floor(0.1), -1);
    EXPECT_EQ(Log10Floor(0.05), -2);
}

TEST(Units, ValueTextsHaveFormatsOfTheirOwn) {
    EXPECT_EQ(FormatValue(123.456, UNIT_KEV), "123.5");
    EXPECT_EQ(UnitFormat(UNIT_KEV), "##0.000");
    EXPECT_EQ(FormatValue(2.03914, UNIT_D), "2.0391");
    EXPECT_EQ(FormatValue(17.0, UNIT_CH), "17");
    EXPECT_EQ(FormatValue(17.6, 8), "18");
    EXPECT_EQ(FormatValue(123456.78, UNIT_EV), "123456.8");
    EXPECT_EQ(FormatValue(0.37652, UNIT_A), "0.3765");
    EXPECT_EQ(FormatValue(4.35734, UNIT_Q), "4.3573");
    EXPECT_EQ(FormatValue(15.01459, UNIT_2THETA), "15.0146");
    EXPECT_EQ(FormatValue(17.46, UNIT_CH), "18") << "to 17.5 first, then to the whole number";
}
