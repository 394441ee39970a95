// Code page 932 and strings of a fixed size.
#include "core/cp932.h"

#include <gtest/gtest.h>

using namespace vael;

TEST(Cp932, JapaneseTextGoesBothWays) {
    const std::string utf8 = "金の線 ｶﾞ 25℃";
    const std::string bytes = ToCp932(utf8);
    EXPECT_EQ(bytes.substr(0, 2), "\x8b\xe0");  // the character for gold, JIS X 0208 row 22 cell 66
    EXPECT_EQ(FromCp932(bytes), utf8);
}

TEST(Cp932, WhatTheCodePageDoesNotHoldBecomesAQuestionMark) { EXPECT_EQ(ToCp932("a😀b"), "a?b"); }

TEST(Cp932, ABrokenCharacterIsShownAsSuchAndWhatFollowsStays) {
    EXPECT_EQ(FromCp932("a\x81"), "a\xef\xbf\xbd") << "a lead byte at the end";
    EXPECT_NE(FromCp932("\xff\x41").find('A'), std::string::npos);
}

TEST(FixedText, CutsBetweenCharactersAndPads) {
    FixedText<5> text;
    text = "ab";
    EXPECT_EQ(std::string(text.View()), "ab   ");
    text = "金金金";  // six bytes: the third character would be cut in two
    EXPECT_EQ(std::string(text.View()), "\x8b\xe0\x8b\xe0 ");
    EXPECT_EQ(text.Trimmed(), "金金");
    EXPECT_EQ(text.Text(), "金金 ");
}

TEST(FixedText, ARecordClearedToZeroShowsAsBlank) {
    FixedText<4> text{};
    EXPECT_EQ(text.Text(), "    ");
    EXPECT_EQ(text.Trimmed(), "");
}

TEST(Cp932, ColumnsCountCharactersNotBytes) {
    const std::string bytes = ToCp932("金a");
    EXPECT_EQ(CountCp932(bytes), 2u);
    EXPECT_EQ(FitCp932(bytes, 4), bytes + "  ");
    EXPECT_EQ(FitCp932(bytes, 1), "\x8b\xe0");
}
