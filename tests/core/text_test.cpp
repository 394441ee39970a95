// Number formats, path pieces, dates and fields.
#include "core/text.h"

#include "core/fault.h"

#include <gtest/gtest.h>

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

TEST(Text, NumbersAreReadWithoutTheLocale) {
    EXPECT_EQ(ParseNumber("  -12.5e1 "), -125.0);
    EXPECT_EQ(ParseNumber("+3"), 3.0);
    EXPECT_EQ(ParseNumber(".5"), 0.5);
    EXPECT_EQ(ParseNumber("5."), 5.0);
    for (const char* bad : {"", " ", "abc", "1,5", "1 2", "+-3", "inf", "nan", "-", "e5", "0x10"})
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
