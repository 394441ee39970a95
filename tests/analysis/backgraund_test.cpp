// The background by lowered anchors, against values worked out by hand.
#include "analysis/backgraund.h"

#include "analysis/calc.h"
#include "core/fault.h"
#include "core/records.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

using namespace vael;

namespace {

std::vector<std::int32_t> Blank() { return std::vector<std::int32_t>(MAX_CHANNELS, 0); }

struct Said {
    std::vector<std::string> Words;
    Talk talk{.say = [this](std::string_view text, std::string_view) { Words.emplace_back(text); }};
};

}  // namespace

TEST(FitLine, HandsBackTheLineMovedOneToTheRight) {
    const std::array<double, 3> x{0.0, 1.0, 2.0};
    const std::array<double, 3> y{5.0, 7.0, 9.0};
    std::array<double, 2> c{};
    EXPECT_EQ(FitLine(x, y, 3, c), 0);
    EXPECT_DOUBLE_EQ(c[1], 2.0);
    EXPECT_DOUBLE_EQ(c[0], 3.0);
    EXPECT_DOUBLE_EQ(LineValue(2.0, c), 7.0);  // the line's value at 1
}

TEST(FitLine, EqualAbscissasAreDegenerate) {
    const std::array<double, 2> x{4.0, 4.0};
    const std::array<double, 2> y{5.0, 7.0};
    std::array<double, 2> c{1.0, 1.0};
    EXPECT_EQ(FitLine(x, y, 2, c), 1);
    EXPECT_EQ(c[0], 0.0);
    EXPECT_EQ(c[1], 0.0);
}

TEST(BackGraund, AnIntervalOrCountBelowOneIsSaidAndTheDataStay) {
    auto data = Blank();
    data[20] = 50;
    const auto before = data;
    Said said;
    BackGraund(0, 0, data, 100, said.talk);
    BackGraund(-3, 5, data, 100, said.talk);
    BackGraund(20, 0, data, 100, said.talk);
    EXPECT_EQ(said.Words,
              (std::vector<std::string>{"BackGrand Interval <= 0 !", "BackGrand Interval <= 0 !",
                                        "BackGrand Times <= 0 !"}));
    EXPECT_EQ(data, before);
}

TEST(BackGraund, ALoweredAnchorAlreadyCountsForItsRightNeighbour) {
    auto data = Blank();
    data[10] = 100;
    data[20] = 100;
    BackGraund(10, 1, data, 40, Talk{});
    // Pass: 100 -> (0 + 100) / 2 = 50; 100 -> (50 + 0) / 2 = 25; 0 stays below 12.
    // Chords, moved by one: at 10 the chord from 0 to 50 ends at 45, the next starts at 52.5.
    EXPECT_EQ(data[9], 40);
    EXPECT_EQ(data[10], 52);  // 52.5 to the even neighbour
    EXPECT_EQ(data[11], 50);
    EXPECT_EQ(data[20], 28);  // 25 + 2.5 = 27.5
    EXPECT_EQ(data[21], 25);
    EXPECT_EQ(data[30], 0);
    EXPECT_EQ(data[39], 0);
}

TEST(BackGraund, TheMidpointOfTwoCountsGoesToTheEvenNeighbour) {
    for (const auto& [left, expected] : {std::pair{5, 2}, std::pair{7, 4}}) {
        auto data = Blank();
        data[0] = left;  // mean with 0: 2.5 and 3.5
        data[10] = 100;
        BackGraund(10, 1, data, 20, Talk{});
        EXPECT_EQ(data[11], expected);  // the anchor's own value stands one channel to the right
    }
}

TEST(BackGraund, LessThanTwoIntervalsAreFilledButNotStripped) {
    auto data = Blank();
    data[0] = 100;
    data[20] = 140;
    data[25] = 7;
    BackGraund(20, 5, data, 30, Talk{});
    EXPECT_EQ(data[0], 98);  // slope 2, moved by one channel
    EXPECT_EQ(data[1], 100);
    EXPECT_EQ(data[19], 136);
    EXPECT_EQ(data[20], 140);
    EXPECT_EQ(data[25], 7);
}

TEST(BackGraund, LessThanOneIntervalStaysRaw) {
    auto data = Blank();
    data[3] = 9;
    const auto before = data;
    BackGraund(20, 5, data, 19, Talk{});
    EXPECT_EQ(data, before);
}

TEST(BackGraund, AWholeNumberOfIntervalsReachesChannelN) {
    auto data = Blank();
    data[0] = 100;
    data[20] = 100;
    data[40] = 20;  // beyond the spectrum, and read
    BackGraund(20, 1, data, 40, Talk{});
    // 20 is lowered to 60; the second chord falls by 2 a channel towards channel 40.
    EXPECT_EQ(data[21], 60);
    EXPECT_EQ(data[39], 24);
    EXPECT_EQ(data[40], 20);
}

TEST(BackGraund, WithAnIntervalOfOneEveryChannelIsTheChordOneChannelAway) {
    auto data = Blank();
    for (int i = 0; i <= 5; ++i) data[static_cast<std::size_t>(i)] = i * i;
    BackGraund(1, 1, data, 5, Talk{});  // convex: nothing is lowered; value = 2 d(i) - d(i + 1)
    EXPECT_EQ(std::vector<std::int32_t>(data.begin(), data.begin() + 6),
              (std::vector<std::int32_t>{-1, -2, -1, 2, 7, 25}));
}

TEST(BackGraund, ExactHalvesOfAChordGoToTheEvenNeighbour) {
    auto data = Blank();
    data[20] = 10;  // slope 0.5
    BackGraund(20, 1, data, 39, Talk{});
    EXPECT_EQ(data[0], 0);   // -0.5
    EXPECT_EQ(data[2], 0);   // 0.5
    EXPECT_EQ(data[4], 2);   // 1.5
    EXPECT_EQ(data[6], 2);   // 2.5
    EXPECT_EQ(data[18], 8);  // 8.5
}

TEST(BackGraund, AnAnchorAtTheCapacityIsAFault) {
    auto data = Blank();
    EXPECT_THROW(BackGraund(16, 1, data, 8192, Talk{}), Fault);
    EXPECT_NO_THROW(BackGraund(20, 5, data, 8192, Talk{}));
}

TEST(BackGraund, ASumBeyondThirtyTwoBitsIsAFault) {
    auto data = Blank();
    data[0] = 2000000000;
    data[40] = 2000000000;
    EXPECT_THROW(BackGraund(20, 1, data, 60, Talk{}), Fault);
}
