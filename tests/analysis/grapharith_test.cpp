// Graph arithmetic, channel by channel.
#include "analysis/grapharith.h"

#include "core/fault.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <vector>

using namespace vael;

namespace {

constexpr std::int32_t MOST = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t LEAST = std::numeric_limits<std::int32_t>::min();

std::unique_ptr<SpectrumData> Curve(const std::vector<std::int32_t>& counts) {
    auto data = std::make_unique<SpectrumData>();
    data->DataNo = static_cast<std::int16_t>(counts.size());
    std::copy(counts.begin(), counts.end(), data->Count.begin());
    return data;
}

std::vector<std::int32_t> CountsOf(const SpectrumData& data) {
    return {data.Count.begin(), data.Count.begin() + data.DataNo};
}

std::vector<std::int32_t> Applied(int op, const std::vector<std::int32_t>& counts, double k) {
    const auto result = Curve({});
    ApplyConstant(op, *Curve(counts), k, *result);
    return CountsOf(*result);
}

std::vector<std::int32_t> Combined(int op, const std::vector<std::int32_t>& first,
                                   const std::vector<std::int32_t>& second) {
    const auto result = Curve({});
    CombineGraphs(op, *Curve(first), *Curve(second), *result);
    return CountsOf(*result);
}

using Counts = std::vector<std::int32_t>;

}  // namespace

TEST(GraphArithmetic, AConstantIsAppliedInFloatsAndRoundedToTheEvenNeighbour) {
    EXPECT_EQ(Applied(OP_ADD, {10, 11, -3}, 0.5), (Counts{10, 12, -2}));
    EXPECT_EQ(Applied(OP_SUBTRACT, {10, 11, -3}, 0.5), (Counts{10, 10, -4}));
    EXPECT_EQ(Applied(OP_MULTIPLY, {3, 5, -7}, 0.5), (Counts{2, 2, -4}));
    EXPECT_EQ(Applied(OP_DIVIDE, {3, 5, 7}, 2.0), (Counts{2, 2, 4}));
}

TEST(GraphArithmetic, ADivisionByZeroGivesAFlatZero) {
    EXPECT_EQ(Applied(OP_DIVIDE, {3, -5, 0}, 0.0), (Counts{0, 0, 0}));
    EXPECT_EQ(Combined(OP_DIVIDE, {3, -5, 0}, {0, 0, 0}), (Counts{0, 0, 0}));
}

TEST(GraphArithmetic, TwoCurvesCombineInWholeNumbers) {
    EXPECT_EQ(Combined(OP_ADD, {1, 2, 3}, {10, 20, 30}), (Counts{11, 22, 33}));
    EXPECT_EQ(Combined(OP_SUBTRACT, {1, 2, 3}, {10, 20, 3}), (Counts{-9, -18, 0}));
    EXPECT_EQ(Combined(OP_MULTIPLY, {1, -2, 3}, {10, 20, 30}), (Counts{10, -40, 90}));
    EXPECT_EQ(Combined(OP_DIVIDE, {1, 3, 5, -5}, {2, 2, 2, 2}), (Counts{0, 2, 2, -2}));
}

TEST(GraphArithmetic, ACurveLessItselfIsAFlatZero) {
    EXPECT_EQ(Combined(OP_SUBTRACT, {MOST, LEAST, 5}, {MOST, LEAST, 5}), (Counts{0, 0, 0}));
}

TEST(GraphArithmetic, AnyOtherOperationGivesZero) {
    for (const int op : {-1, 4, 99}) {
        EXPECT_EQ(Applied(op, {3, 5}, 2.0), (Counts{0, 0}));
        EXPECT_EQ(Combined(op, {3, 5}, {1, 1}), (Counts{0, 0}));
    }
}

TEST(GraphArithmetic, TheChannelsOfTheFirstDecide) {
    EXPECT_EQ(Combined(OP_ADD, {1, 2}, {10, 20, 30}), (Counts{11, 22}));
    EXPECT_EQ(Combined(OP_ADD, {1, 2, 3}, {10}), (Counts{11, 2, 3}));
    EXPECT_EQ(Applied(OP_ADD, {}, 5.0), Counts{});
    const auto result = Curve({7, 7, 7});
    ApplyConstant(OP_ADD, *Curve({1}), 1.0, *result);
    EXPECT_EQ(result->Count[2], 7) << "what is behind them stays";
}

TEST(GraphArithmetic, SourceAndResultMayBeTheSame) {
    const auto data = Curve({1, 2, 3});
    ApplyConstant(OP_MULTIPLY, *data, 3.0, *data);
    CombineGraphs(OP_ADD, *data, *data, *data);
    EXPECT_EQ(CountsOf(*data), (Counts{6, 12, 18}));
}

TEST(GraphArithmetic, AnOverflowIsAFaultAndTheChannelsBeforeItAreComputed) {
    const auto overflows = [](int op, std::int32_t first, std::int32_t second) {
        const auto result = Curve({99, 99});
        try {
            CombineGraphs(op, *Curve({1, first}), *Curve({1, second}), *result);
        } catch (const Fault& fault) {
            EXPECT_EQ(fault.Number(), FaultNumber::Overflow);
            EXPECT_NE(result->Count[0], 99);
            EXPECT_EQ(result->Count[1], 99);
            return true;
        }
        return false;
    };
    EXPECT_TRUE(overflows(OP_ADD, MOST, 1));
    EXPECT_TRUE(overflows(OP_SUBTRACT, LEAST, 1));
    EXPECT_TRUE(overflows(OP_MULTIPLY, 65536, 65536));
    EXPECT_TRUE(overflows(OP_DIVIDE, LEAST, -1));
    EXPECT_FALSE(overflows(OP_ADD, MOST - 1, 1));
    EXPECT_THROW((void)Applied(OP_MULTIPLY, {MOST}, 2.0), Fault);
    EXPECT_THROW((void)Applied(OP_ADD, {MOST}, 0.5), Fault) << "rounds to 2147483648";
}
