// Rounding, checked whole numbers and guarded divisions.
#include "core/fault.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace vael;

TEST(Fault, RoundEvenTakesTheEvenNeighbourOnATie) {
    EXPECT_EQ(RoundEven(2.5), 2.0);
    EXPECT_EQ(RoundEven(3.5), 4.0);
    EXPECT_EQ(RoundEven(-2.5), -2.0);
    EXPECT_EQ(RoundEven(-3.5), -4.0);
    EXPECT_EQ(RoundEven(2.4999999), 2.0);
    EXPECT_EQ(RoundEven(-0.5), 0.0);
    EXPECT_EQ(RoundEven(0.5), 0.0);
    EXPECT_EQ(RoundEven(4503599627370497.5), 4503599627370498.0);
}

TEST(Fault, ANumberBeyond16BitsEndsTheCommand) {
    EXPECT_EQ(Whole16(32767.4), 32767);
    EXPECT_THROW((void)Whole16(32767.5), Fault);
    EXPECT_EQ(Whole16(-32768.5), -32768);  // the tie goes to the even neighbour, which fits
    EXPECT_THROW((void)Whole16(-32769.0), Fault);
    EXPECT_THROW((void)Whole32(std::nan("")), Fault);
    EXPECT_EQ(Trunc16(-3.9), -3);
}

TEST(Fault, CheckedIntegersDoNotWrap) {
    Int16 a = 200;
    EXPECT_EQ(static_cast<std::int16_t>(a * Int16(100)), 20000);
    EXPECT_THROW((void)(a * Int16(200)), Fault);
    Int32 big = 2147483647;
    EXPECT_THROW(++big, Fault);
    EXPECT_EQ(static_cast<std::int32_t>(big), 2147483647);  // kept as it was
    EXPECT_THROW((void)(Int32(-2147483647) - Int32(2)), Fault);
}

TEST(Fault, ItemChecksBothEnds) {
    std::vector<int> table{1, 2, 3};
    EXPECT_EQ(Item(table, 2), 3);
    EXPECT_THROW((void)Item(table, 3), Fault);
    EXPECT_THROW((void)Item(table, -1), Fault);
}

TEST(Fault, ADivisionByZeroIsAFaultWithASentence) {
    EXPECT_EQ(Quot(6.0, 3.0), 2.0);
    try {
        (void)Quot(1.0, 0.0);
        FAIL();
    } catch (const Fault& fault) {
        EXPECT_EQ(fault.Number(), FaultNumber::Division);
        EXPECT_STREQ(fault.what(), "Division by zero.");
    }
}
