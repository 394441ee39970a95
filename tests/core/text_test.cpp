// Number formats, path pieces, dates and fields.
#include "core/text.h"

#include "core/fault.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

using namespace vael;

TEST(FormatNumber, RoundsFifteenDigitsHalfAwayFromZero) {
    EXPECT_EQ(FormatNumber(1.005, "#0.00"), "1.01");
    EXPECT_EQ(FormatNumber(0.125, "#0.00"), "0.13");
    EXPECT_EQ(FormatNumber(-0.125, "#0.00"), "-0.13");
    EXPECT_EQ(FormatNumber(2.5, "0"), "3");
    EXPECT_EQ(FormatNumber(999.9996, "##0.000"), "1000.000");
}

TEST(FormatNumber, ANegativeNumberThatRoundsToZeroPrintsNoSign) {
    EXPECT_EQ(FormatNumber(-0.004, "#0.00"), "0.00");
    EXPECT_EQ(FormatNumber(-0.0, "0.0"), "0.0");
}

TEST(FormatNumber, HashOnlyPrintsNothingForZero) {
    EXPECT_EQ(FormatNumber(0.0, "####"), "");
    EXPECT_EQ(FormatNumber(0.4, "####"), "");
    EXPECT_EQ(FormatNumber(7.0, "####"), "7");
    EXPECT_EQ(FormatNumber(123456.0, "####"), "123456");
}

TEST(FormatNumber, APointAlwaysPrints) {
    EXPECT_EQ(FormatNumber(0.998, "#.000000"), ".998000");
    EXPECT_EQ(FormatNumber(3.0, "#."), "3.");
    EXPECT_EQ(FormatNumber(1.5, "0.##"), "1.5");
    EXPECT_EQ(FormatNumber(1.0, "0.##"), "1.");
}

TEST(FormatNumber, IntegerDigitsPrintInFullAndZerosPad) {
    EXPECT_EQ(FormatNumber(12345.678, "#0.0"), "12345.7");
    EXPECT_EQ(FormatNumber(3.0, "000"), "003");
    EXPECT_EQ(FormatNumber(1e15, "0"), "1000000000000000");
    EXPECT_EQ(FormatNumber(1e20, "0"), "100000000000000000000");
}

TEST(NumberText, GivesTheDigitsThatTheNumberNeeds) {
    EXPECT_EQ(NumberText(0.03162861), "0.03162861");
    EXPECT_EQ(NumberText(-1.2e-9), "-1.2E-09");
    EXPECT_EQ(NumberText(0.1 + 0.2), "0.3");
    EXPECT_EQ(NumberText(0.0), "0");
    EXPECT_EQ(NumberText(100.0), "100");
    EXPECT_EQ(NumberText(1.0 / 3.0), "0.333333333333333");
}

TEST(FormatNumber, ScientificFormLeavesOutDigitsThatItDoesNotNeedAndKeepsItsPoint) {
    EXPECT_EQ(FormatNumber(0.03162861, "0.####e+000"), "3.1629e-002");
    EXPECT_EQ(FormatNumber(0.03, "0.####e+000"), "3.e-002");
    EXPECT_EQ(FormatNumber(-0.052, "0.####e+000"), "-5.2e-002");
    EXPECT_EQ(FormatNumber(0.0, "0.####e+000"), "0.e+000");
    EXPECT_EQ(FormatNumber(1.20003e12, "0.####e+000"), "1.2e+012");
    EXPECT_EQ(FormatNumber(10.204, "0.0###e+000"), "1.0204e+001");
    EXPECT_EQ(FormatNumber(10.0, "0.0###e+000"), "1.0e+001");
}

TEST(FormatNumber, ScientificFormHasThreeExponentDigits) {
    EXPECT_EQ(FormatNumber(0.0316385, "0.00000E+000"), "3.16385E-002");
    EXPECT_EQ(FormatNumber(0.0, "0.00000E+000"), "0.00000E+000");
    EXPECT_EQ(FormatNumber(-999999.6, "0.00000E+000"), "-1.00000E+006");
    EXPECT_EQ(FormatNumber(1.2718128e-8, "0.00000E+000"), "1.27181E-008");
}

TEST(FormatNumber, LettersBehindTheDigitsStandAsTheyAre) {
    EXPECT_EQ(FormatNumber(1.011, "##0.0K"), "1.0K");
    EXPECT_EQ(FormatNumber(0.0, "##0K"), "0K");
    EXPECT_EQ(FormatNumber(1000.0, "##0M"), "1000M");
}

TEST(FormatNumber, TinyNumbersRoundToZeroOrUp) {
    EXPECT_EQ(FormatNumber(0.0000004, "0.000000"), "0.000000");
    EXPECT_EQ(FormatNumber(0.0000005, "0.000000"), "0.000001");
    EXPECT_EQ(FormatNumber(5e-20, "0.00"), "0.00");
}

TEST(FormatAligned, KeepsThePointsInLine) {
    EXPECT_EQ(FormatAligned(1.5, "##0.###"), "1.5  ");
    EXPECT_EQ(FormatAligned(12.0, "##0.###"), "12.   ");
    EXPECT_EQ(FormatAligned(12.0, "######0"), "12");
    EXPECT_EQ(FormatAligned(0.0, "####"), "");
}

TEST(Text, RoundHalfAwayWorksOnDecimalDigits) {
    EXPECT_EQ(RoundHalfAway(1.005, 2), 1.01);
    EXPECT_EQ(RoundHalfAway(-2.5, 0), -3.0);
    EXPECT_EQ(RoundHalfAway(0.004, 2), 0.0);
}

namespace {

/// The same rounding by a second road: the fifteen digits as the C library prints them, rounded by
/// hand on paper's rules.
std::string ByHand(double value, int decimals) {
    char digits[40];
    std::snprintf(digits, sizeof digits, "%.14e", std::fabs(value));
    const std::string text = digits;
    const int exponent = std::stoi(text.substr(text.find('e') + 1));
    std::string all = text.substr(0, 1) + text.substr(2, 14);
    int point = exponent + 1;  // digits before the point
    while (point < 1) all.insert(0, "0"), ++point;
    while (static_cast<int>(all.size()) < point + decimals + 1) all += '0';
    const auto keep = static_cast<std::size_t>(point + decimals);
    const bool up = all[keep] >= '5';
    all.resize(keep);
    for (std::size_t at = keep; up && at-- > 0;) {
        if (all[at] != '9') {
            ++all[at];
            break;
        }
        all[at] = '0';
        if (at == 0) all.insert(0, "1"), ++point;
    }
    const bool zero = all.find_first_not_of('0') == std::string::npos;
    if (decimals > 0) all.insert(static_cast<std::size_t>(point), ".");
    return (value < 0 && !zero ? "-" : "") + all;
}

}  // namespace

TEST(Text, FormatsAgreeWithARoundingByHandOverManyNumbers) {
    const std::array<const char*, 4> formats{"###0", "#0.0", "##0.000", "#####0.000000"};
    const std::array<int, 4> decimals{0, 1, 3, 6};
    std::mt19937_64 random(7);
    for (int n = 0; n < 40000; ++n) {
        const double size = std::pow(10.0, static_cast<double>(random() % 16) - 6.0);
        double value = (static_cast<double>(random() % 2000001) - 1e6) / 1e6 * size;
        if (n % 3 == 0) value = std::round(value * 1e4) / 1e4;  // near the halves of a format
        if (n % 7 == 0) value = std::round(value * 2.0) / 2.0;
        for (std::size_t k = 0; k < formats.size(); ++k)
            ASSERT_EQ(FormatNumber(value, formats[k]), ByHand(value, decimals[k]))
                << value << " by " << formats[k];
    }
}

TEST(Text, WholeNumbersStandRightAlignedOrInFull) {
    std::string line = "x";
    AddRight(line, 5, 4);
    AddRight(line, -123, 4);
    AddRight(line, 12345, 4);
    AddRight(line, std::numeric_limits<std::int64_t>::min(), 4);
    EXPECT_EQ(line, "x   5-12312345-9223372036854775808");
}

TEST(Text, NumbersAreReadWithoutTheLocale) {
    EXPECT_EQ(ParseNumber("  -12.5e1 "), -125.0);
    EXPECT_EQ(ParseNumber("+3"), 3.0);
    EXPECT_EQ(ParseNumber(".5"), 0.5);
    EXPECT_EQ(ParseNumber("5."), 5.0);
    EXPECT_EQ(ParseNumber("1.5D+03"), 1500.0);
    EXPECT_EQ(ParseNumber("-2d-1"), -0.2);
    EXPECT_EQ(ParseNumber("7E2"), 700.0);
    for (const char* bad : {"", " ", "abc", "1,5", "1 2", "+-3", "inf", "nan", "-", "e5", "0x10",
                            "1D", "D3", "1D2D3", "1.2.3", ".", "1e+", "--1", "-+1"})
        EXPECT_FALSE(IsNumeric(bad)) << bad;
    EXPECT_THROW((void)Number("x"), Fault);
}

TEST(SplitFilePath, PiecesJoinToTheSamePath) {
    for (const char* path :
         {"/data/run1/AuWire.npd", "AuWire.npd", "../a/b.c.xbm", "/x/y", "a\\b.c", "/a.b/c"}) {
        const PathPieces p = SplitFilePath(path);
        EXPECT_EQ(p.Drive + p.Folder + p.Base(), path);
    }
    const PathPieces p = SplitFilePath("c:\\run\\x.y.npd", true);
    EXPECT_EQ(p.Drive, "c:");
    EXPECT_EQ(p.Folder, "\\run\\");
    EXPECT_EQ(p.Name, "x.y");
    EXPECT_EQ(p.Ext, "npd");
}

TEST(SplitFilePath, AFirstPointIsNoExtensionAndAColonIsNoDriveHere) {
    EXPECT_EQ(SplitFilePath(".profile").Name, ".profile");
    EXPECT_EQ(SplitFilePath(".profile").Ext, "");
    EXPECT_EQ(SplitFilePath("/d/10:30.npd").Drive, "");
    EXPECT_EQ(SplitFilePath("/d/10:30.npd").Name, "10:30");
    EXPECT_EQ(SplitFilePath("").Folder, "");
}

TEST(SplitFilePath, AFolderAloneIsPassedWithStarDotStar) {
    const PathPieces p = SplitFilePath("/home/u/*.*");
    EXPECT_EQ(p.Folder, "/home/u/");
    EXPECT_EQ(p.Name, "*");
    EXPECT_EQ(p.Ext, "*");
}

TEST(SplitLocalPath, AServerNameStandsForTheDrive) {
    bool noDrive = false;
    const PathPieces p = SplitLocalPath("\\\\server\\share\\f.npd", &noDrive);
    EXPECT_EQ(p.Drive, "\\\\server");
    EXPECT_EQ(p.Folder, "\\share\\");
    EXPECT_EQ(p.Base(), "f.npd");
    EXPECT_TRUE(noDrive);
    (void)SplitLocalPath("c:\\f.npd", &noDrive, true);
    EXPECT_FALSE(noDrive);
}

TEST(SplitFileList, CommasSemicolonsAndBlanksSeparate) {
    EXPECT_EQ(SplitFileList("a.npd,b.npd;c.npd   d.npd"),
              (std::vector<std::string>{"a.npd", "b.npd", "c.npd", "d.npd"}));
    EXPECT_TRUE(SplitFileList(" ,; ").empty());
}

TEST(SplitNumbers, CommasAndBlanksEndAField) {
    EXPECT_EQ(SplitNumbers("1.5,2 3"), (std::vector<double>{1.5, 2, 3}));
    EXPECT_EQ(SplitNumbers("1, 2"), (std::vector<double>{1, 2}));
    EXPECT_EQ(SplitNumbers("1,,2"), (std::vector<double>{1, 0, 2}));
    EXPECT_EQ(SplitNumbers("x 4"), (std::vector<double>{0, 4}));
    EXPECT_EQ(SplitNumbers("1 ,2"), (std::vector<double>{1, 0, 2}));
    EXPECT_EQ(SplitNumbers("7,  "), (std::vector<double>{7}));
    EXPECT_EQ(SplitNumbers("7,"), (std::vector<double>{7}));
}

TEST(SplitNumbers, LeadingBlanksEndAnEmptyFirstField) {
    EXPECT_EQ(SplitNumbers("  7 8"), (std::vector<double>{0, 7, 8}));
    EXPECT_TRUE(SplitNumbers("    ").empty());
    EXPECT_EQ(SplitNumbers("7   "), (std::vector<double>{7}));
    EXPECT_TRUE(SplitNumbers("").empty());
}

TEST(SplitNumbers, StopsAtElevenFieldsAndNinetyNineCharacters) {
    EXPECT_EQ(SplitNumbers("1 2 3 4 5 6 7 8 9 10 11 12 13").size(), 11u);
    EXPECT_EQ(SplitNumbers(std::string(98, '0') + "12"), (std::vector<double>{1}));
}

TEST(Dates, BothWays) {
    EXPECT_EQ(DateToStore("07/03/21"), "20070321");
    EXPECT_EQ(DateToStore("99-03-21"), "19990321");
    EXPECT_EQ(DateToStore("29/01/02"), "20290102");
    EXPECT_EQ(DateToStore("30/01/02"), "19300102");
    EXPECT_EQ(DateToStore(""), "");
    EXPECT_EQ(DateToShow("20070321"), "07/03/21");
    EXPECT_EQ(DateToShow("19990321"), "99/03/21");
    EXPECT_EQ(DateToShow("abcd0321"), "");
    EXPECT_EQ(DateShort("07/03/21"), "070321");
    EXPECT_EQ(TimeToShow("091530"), "09:15:30");
}

TEST(Text, WholeNumbersCarryABlankForTheirSign) {
    EXPECT_EQ(WholeText(7), " 7");
    EXPECT_EQ(WholeText(-7), "-7");
}
