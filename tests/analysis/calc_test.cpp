// Numeric helpers, peak shapes and the smoothing filter, against values worked out by hand.
#include "analysis/calc.h"

#include "core/fault.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numeric>
#include <vector>

using namespace vael;

TEST(Calc, LargerAndSmallerOfTwo) {
    EXPECT_EQ(MaxValue(2.0, 3.0), 3.0);
    EXPECT_EQ(MaxValue(3.0, 2.0), 3.0);
    EXPECT_EQ(MinValue(2.0, 3.0), 2.0);
    EXPECT_EQ(MinValue(3.0, 2.0), 2.0);
}

TEST(Calc, DegreesToRadiansWithFifteenDigitsOfPi) {
    EXPECT_EQ(DegToRad(180.0), 3.14159265358979);
    EXPECT_EQ(DegToRad(0.0), 0.0);
}

TEST(Calc, TheLogarithmOfZeroIsZeroAndLeavesOneInTheCallersVariable) {
    double x = 0.0;
    EXPECT_EQ(Log10Value(x), 0.0);
    EXPECT_EQ(x, 1.0);
    x = -7.0;
    EXPECT_EQ(Log10Value(x), 0.0);
    EXPECT_EQ(x, 1.0);
    x = 1000.0;
    EXPECT_NEAR(Log10Value(x), 3.0, 1e-14);
    EXPECT_EQ(x, 1000.0);
}

TEST(Calc, ALineCountsItsCoefficientsFromZero) {
    const std::array<double, 2> c{3.0, -0.5};
    EXPECT_EQ(LineValue(4.0, c), 1.0);
}

TEST(Calc, GaussianAtItsCentreAndAtItsHalfWidth) {
    const std::array<double, 5> a{8.0, 10.0, 4.0, 1.0, 0.5};
    int status = 0;
    EXPECT_DOUBLE_EQ(GaussValue(10.0, a, 3, status), 8.0);
    EXPECT_NEAR(GaussValue(14.0, a, 3, status), 4.0, 1e-14);
    EXPECT_NEAR(GaussValue(14.0, a, 4, status), 5.0, 1e-14);
    EXPECT_NEAR(GaussValue(14.0, a, 5, status), 12.0, 1e-14);
    EXPECT_EQ(status, 0);
}

TEST(Calc, FarFromItsCentreAGaussianIsItsConstantWithoutTheSlope) {
    const std::array<double, 5> a{8.0, 0.0, 1.0, 3.0, 0.5};
    int status = 0;  // ln 2 * 24.1^2 = 402.6, ln 2 * 23.9^2 = 395.9
    EXPECT_EQ(GaussValue(24.1, a, 5, status), 3.0);
    EXPECT_NEAR(GaussValue(23.9, a, 5, status), 3.0 + 11.95, 1e-12);
    EXPECT_EQ(GaussValue(24.1, a, 3, status), 0.0);
}

TEST(Calc, LorentzianHasNoCutOff) {
    const std::array<double, 5> a{8.0, 10.0, 4.0, 1.0, 0.5};
    int status = 0;
    EXPECT_EQ(LorentzValue(14.0, a, 3, status), 4.0);
    EXPECT_EQ(LorentzValue(14.0, a, 5, status), 12.0);
    EXPECT_NEAR(LorentzValue(4010.0, a, 3, status), 8.0 / 1000001.0, 1e-18);
}

TEST(Calc, OnlyTheGaussianTermOfAMixCarriesTheBackground) {
    const std::array<double, 6> a{2.0, 10.0, 4.0, 3.0, 1.0, 0.5};
    int status = 0;
    EXPECT_NEAR(MixValue(14.0, a, 4, status), 1.0 + 1.5, 1e-14);
    EXPECT_NEAR(MixValue(14.0, a, 5, status), 2.0 + 1.5, 1e-14);
    EXPECT_NEAR(MixValue(14.0, a, 6, status), 9.0 + 1.5, 1e-14);
    EXPECT_EQ(status, 0);
}

TEST(Calc, AFailureInAShapeWritesItsNumberAndDoesNotUnwind) {
    const std::array<double, 4> flat{2.0, 10.0, 0.0, 1.0};
    int status = 0;
    EXPECT_EQ(GaussValue(14.0, flat, 3, status), 0.0);
    EXPECT_EQ(status, 11);
    status = 0;
    EXPECT_EQ(LorentzValue(14.0, flat, 3, status), 0.0);
    EXPECT_EQ(status, 11);
    const std::array<double, 4> huge{1e308, 10.0, 4.0, 1e308};
    status = 0;
    EXPECT_EQ(GaussValue(10.0, huge, 4, status), 0.0);
    EXPECT_EQ(status, 6);
}

TEST(Calc, AHalfWidthThatCannotBeSquaredIsAFailureAndNotAFarChannel) {
    for (const double half : {1e-151, -1e-151, 1e-200, 5e-324}) {
        const std::array<double, 4> needle{2.0, 10.0, half, 1.0};
        for (const double x : {10.0, 14.0}) {
            int status = 0;
            EXPECT_EQ(GaussValue(x, needle, 4, status), 0.0) << half;
            EXPECT_EQ(status, 6) << half;
            status = 0;
            EXPECT_EQ(LorentzValue(x, needle, 4, status), 0.0) << half;
            EXPECT_EQ(status, 6) << half;
        }
    }
    const std::array<double, 4> narrow{2.0, 10.0, 1e-140, 1.0};
    int status = 0;
    EXPECT_EQ(GaussValue(14.0, narrow, 4, status), 1.0);
    EXPECT_EQ(status, 0);
}

TEST(Calc, ACentreBeyondAllNumbersIsAnOverflowInsideTheShape) {
    const std::array<double, 4> away{2.0, 1e200, 4.0, 1.0};
    int status = 0;
    EXPECT_EQ(GaussValue(10.0, away, 4, status), 0.0);
    EXPECT_EQ(status, 6);
    status = 0;
    EXPECT_EQ(LorentzValue(10.0, away, 4, status), 0.0);
    EXPECT_EQ(status, 6);
}

TEST(Smoothing, AFlatSpectrumStaysFlatWithEachRow) {
    for (int index = 0; index < 4; ++index) {
        std::vector<std::int32_t> data(50, 137);
        SmoothingData(index, data, 50);
        EXPECT_EQ(data, std::vector<std::int32_t>(50, 137)) << index;
    }
}

TEST(Smoothing, ElevenPointsOnTenChannelsCopiesThem) {
    std::vector<std::int32_t> data(10);
    std::iota(data.begin(), data.end(), -3);
    const auto before = data;
    SmoothingData(3, data, 10);
    EXPECT_EQ(data, before);
}

TEST(Smoothing, FewerChannelsThanTheHalfWidthStay) {
    std::vector<std::int32_t> data{5, 1};
    SmoothingData(3, data, 2);
    EXPECT_EQ(data, (std::vector<std::int32_t>{5, 1}));
    SmoothingData(0, data, 0);
    EXPECT_EQ(data, (std::vector<std::int32_t>{5, 1}));
}

TEST(Smoothing, AnIsolatedChannelUnderSevenPointsIsClippedThreeChannelsAway) {
    std::vector<std::int32_t> data(21, 0);
    data[10] = 210;
    SmoothingData(1, data, 21);
    EXPECT_EQ(data[10], 70);
    EXPECT_EQ(data[9], 60);
    EXPECT_EQ(data[12], 30);  // the weight 3 of 21: still positive
    EXPECT_EQ(data[13], 0);   // the weight -2: the sum of -20 is clipped
    EXPECT_EQ(data[7], 0);
    EXPECT_EQ(data[14], 0);
}

TEST(Smoothing, AWideNegativeLobeIsClippedToo) {
    std::vector<std::int32_t> data(31, 0);
    data[15] = 2310;
    SmoothingData(2, data, 31);
    EXPECT_EQ(data[15], 590);
    EXPECT_EQ(data[18], 140);
    EXPECT_EQ(data[19], 0);
}

TEST(Smoothing, HalvesGoToTheEvenNeighbour) {
    std::vector<std::int32_t> data(40, 0);
    data[10] = 10;  // 4 * 10 / 16 = 2.5
    data[25] = 14;  // 4 * 14 / 16 = 3.5
    SmoothingData(0, data, 40);
    EXPECT_EQ(data[11], 2);
    EXPECT_EQ(data[26], 4);
}

TEST(Smoothing, TheEdgesStayRaw) {
    std::vector<std::int32_t> data{9, 0, 9, 0, 9, 0, 9};
    SmoothingData(0, data, 7);
    EXPECT_EQ(data[0], 9);
    EXPECT_EQ(data[1], 0);
    EXPECT_EQ(data[5], 0);
    EXPECT_EQ(data[6], 9);
    EXPECT_EQ(data[2], 4);  // (9 + 54 + 9) / 16 = 4.5
}

TEST(Smoothing, SumsBeyondTheLargestCountAreClipped) {
    std::vector<std::int32_t> data(9, 20000000);
    SmoothingData(0, data, 9);
    EXPECT_EQ(data[4], 9999999);
    EXPECT_EQ(data[0], 20000000);
    std::vector<std::int32_t> largest(9, 9999999);
    SmoothingData(0, largest, 9);
    EXPECT_EQ(largest[4], 9999999);
}

TEST(Smoothing, AnIndexOutsideTheTableIsAFault) {
    std::vector<std::int32_t> data(40, 1);
    EXPECT_THROW(SmoothingData(4, data, 40), Fault);
    EXPECT_THROW(SmoothingData(-1, data, 40), Fault);
    EXPECT_THROW(SmoothingData(0, data, 41), Fault);
}
