// What a fit by hand is asked for: refusals, the order of the rows, the way of the rules to the
// fit, and start values read off the counts.
#include "analysis/manualinput.h"

#include "core/fault.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace vael;

namespace {

const std::vector<NaxManualPeak> TWO{{201.0, 1000.0, 10.0}, {231.0, 500.0, 12.0}};

ManualRule Rule(int peak, NaxKind param, HeldBy how, int master = 0, double value = 0.0) {
    return {.Peak = peak, .Param = param, .How = how, .Master = master, .Value = value};
}

/// round(foot + slope i + height exp(-4 ln 2 (i - centre)^2 / width^2)).
SpectrumData Line(double centre, double height, double width, double foot, double slope) {
    SpectrumData data{};
    data.DataNo = 600;
    for (int i = 0; i < 600; ++i) {
        const double t = (i - centre) / width;
        data.Count[static_cast<std::size_t>(i)] =
            Whole32(foot + slope * i + height * std::exp(-4.0 * std::log(2.0) * t * t));
    }
    return data;
}

}  // namespace

TEST(ManualRules, AreReadAsTheyHold) {
    EXPECT_EQ(RuleReads(Rule(1, NAX_AMPLITUDE, HeldBy::Fixed)), "A1 stays");
    EXPECT_EQ(RuleReads(Rule(2, NAX_POSITION, HeldBy::Offset, 1, 30.0)), "P2 = P1 + 30");
    EXPECT_EQ(RuleReads(Rule(2, NAX_POSITION, HeldBy::Offset, 3, -0.5)), "P2 = P3 - 0.5");
    EXPECT_EQ(RuleReads(Rule(3, NAX_WIDTH, HeldBy::Ratio, 1, 1.25)), "W3 = 1.25 * W1");
}

TEST(ManualRules, RowsWantThreeNumbersAboveZero) {
    EXPECT_EQ(RefusalOf(TWO, {}), "");
    auto rows = TWO;
    rows[1].CenterCh = 0.0;
    EXPECT_EQ(RefusalOf(rows, {}), "Peak 2 wants a CENTER CH above 0.");
    rows = TWO;
    rows[0].MaxCount = -1.0;
    EXPECT_EQ(RefusalOf(rows, {}), "Peak 1 wants a MAX COUNT above 0.");
    rows = TWO;
    rows[0].Width = std::nan("");
    EXPECT_EQ(RefusalOf(rows, {}), "Peak 1 wants a WIDTH above 0.");
}

TEST(ManualRules, ALinkToItselfOrToAMissingPeakIsRefused) {
    EXPECT_EQ(RefusalOf(TWO, {Rule(2, NAX_WIDTH, HeldBy::Ratio, 1, 1.0)}), "");
    EXPECT_EQ(RefusalOf(TWO, {Rule(2, NAX_WIDTH, HeldBy::Ratio, 2, 1.0)}),
              "Constraint \"W2 = 1 * W2\": a peak cannot follow itself.");
    EXPECT_EQ(RefusalOf(TWO, {Rule(2, NAX_WIDTH, HeldBy::Offset, 3, 1.0)}),
              "Constraint \"W2 = W3 + 1\": no peak 3, there are 2 peaks.");
    EXPECT_EQ(RefusalOf({TWO[0]}, {Rule(2, NAX_WIDTH, HeldBy::Fixed)}),
              "Constraint \"W2 stays\": no peak 2, there is 1 peak.");
}

TEST(ManualRules, EachTakesOneOfTheThreeParametersOfAPeak) {
    EXPECT_EQ(FreeParameters(1, {}), 3);
    EXPECT_EQ(FreeParameters(5, {}), 15);
    const std::vector<ManualRule> rules{Rule(1, NAX_WIDTH, HeldBy::Fixed),
                                        Rule(3, NAX_WIDTH, HeldBy::Ratio, 1, 1.0)};
    EXPECT_EQ(FreeParameters(3, rules), 7);
    EXPECT_EQ(FreeParameters(2, rules), 5);  // the rule of a peak that is not there holds nothing
}

TEST(ManualRules, FollowTheirPeaksWhenTheRowsAreSorted) {
    const std::vector<NaxManualPeak> rows{{300.0, 1.0, 1.0}, {100.0, 1.0, 1.0}, {200.0, 1.0, 1.0}};
    const auto order = OrderByCentre(rows);
    EXPECT_EQ(order, (std::vector<std::size_t>{1, 2, 0}));
    const auto rules =
        Renumbered({Rule(1, NAX_WIDTH, HeldBy::Ratio, 3, 2.0), Rule(2, NAX_POSITION, HeldBy::Fixed),
                    Rule(3, NAX_POSITION, HeldBy::Offset, 2, 100.0)},
                   order);
    EXPECT_EQ(RuleReads(rules[0]), "W3 = 2 * W2");
    EXPECT_EQ(RuleReads(rules[1]), "P1 stays");
    EXPECT_EQ(RuleReads(rules[2]), "P2 = P1 + 100");
}

TEST(ManualRules, RowsOfOneCentreKeepTheirOrder) {
    EXPECT_EQ(OrderByCentre({{5.0, 1.0, 1.0}, {5.0, 2.0, 1.0}, {4.0, 3.0, 1.0}}),
              (std::vector<std::size_t>{2, 0, 1}));
}

TEST(ManualRules, ReachTheFitAsConstraintRows) {
    const NaxManualInput input = ManualInputOf(
        150, 290, TWO,
        {Rule(1, NAX_AMPLITUDE, HeldBy::Fixed), Rule(2, NAX_POSITION, HeldBy::Offset, 1, 30.0),
         Rule(2, NAX_WIDTH, HeldBy::Offset, 1, 2.0),
         Rule(2, NAX_AMPLITUDE, HeldBy::Ratio, 1, 0.5)});
    EXPECT_EQ(input.StartCh, 150);
    EXPECT_EQ(input.EndCh, 290);
    ASSERT_EQ(input.Constraints.size(), 4u);
    EXPECT_EQ(input.Constraints[0].Letter, 'A');
    EXPECT_NE(input.Constraints[0].Link, 'C');
    EXPECT_EQ(input.Constraints[1].Link, 'C');
    EXPECT_EQ(input.Constraints[1].Type, NAX_LINK_OFFSET);
    EXPECT_EQ(input.Constraints[1].Master, 1);
    EXPECT_EQ(input.Constraints[1].Value, -30.0);  // value = master - Value
    // Two channels of full width are 2 / (2 sqrt(ln 2)) channels of 1/e half width.
    EXPECT_NEAR(input.Constraints[2].Value, -2.0 / (2.0 * std::sqrt(std::log(2.0))), 1e-6);
    EXPECT_EQ(input.Constraints[3].Type, NAX_LINK_RATIO);
    EXPECT_EQ(input.Constraints[3].Value, 0.5);
}

TEST(PeakGuess, ReadsHeightAndWidthAboveTheLineThroughTheEndsOfTheArea) {
    const SpectrumData data = Line(300.0, 5000.0, 16.0, 2000.0, 1.5);
    const PeakGuess guess = GuessPeak(data, 300, 250, 350, 20.0);
    EXPECT_NEAR(guess.Height, 5000.0, 1.0);
    EXPECT_NEAR(guess.Fwhm, 16.0, 0.2);
    const PeakGuess turned = GuessPeak(data, 300, 350, 250, 20.0);
    EXPECT_EQ(turned.Height, guess.Height);
    EXPECT_EQ(turned.Fwhm, guess.Fwhm);
}

TEST(PeakGuess, TakesThePlainCountWithoutAnAreaAboutTheCursor) {
    const SpectrumData data = Line(300.0, 5000.0, 16.0, 100.0, 0.0);
    EXPECT_EQ(GuessPeak(data, 300, -1, -1, 20.0).Height, 5100.0);
    EXPECT_EQ(GuessPeak(data, 300, 100, 200, 20.0).Height, 5100.0);
    EXPECT_EQ(GuessPeak(data, 300, 250, 700, 20.0).Height, 5100.0);  // no channel 700
    EXPECT_NEAR(GuessPeak(data, 300, -1, -1, 20.0).Fwhm, 16.2, 0.4);
}

TEST(PeakGuess, ASideThatDoesNotComeDownIsLikeTheOther) {
    SpectrumData data = Line(300.0, 5000.0, 16.0, 0.0, 0.0);
    for (std::size_t i = 300; i < 600; ++i) data.Count[i] = 5000;  // a step at its right
    EXPECT_NEAR(GuessPeak(data, 300, -1, -1, 20.0).Fwhm, 16.0, 0.5);
}

TEST(PeakGuess, WithoutAnySlopeTheFallBackIsTheWidth) {
    SpectrumData flat{};
    flat.DataNo = 600;
    for (std::size_t i = 0; i < 600; ++i) flat.Count[i] = 70;
    EXPECT_EQ(GuessPeak(flat, 300, -1, -1, 20.0).Fwhm, 20.0);
}

TEST(PeakGuess, ASingleChannelIsAPeakOfOneAndAHalf) {
    SpectrumData data{};
    data.DataNo = 600;
    data.Count[300] = 900;
    // To either side the mean of three falls from 900 to 300: half way down after 450 / 600.
    EXPECT_DOUBLE_EQ(GuessPeak(data, 300, -1, -1, 20.0).Fwhm, 1.5);
}

TEST(PeakGuess, TellsWhereNothingStandsAboveTheLine) {
    const SpectrumData data = Line(300.0, 5000.0, 16.0, 100.0, 0.0);
    EXPECT_LE(GuessPeak(data, 330, 300, 360, 20.0).Height, 0.0);
    EXPECT_THROW((void)GuessPeak(data, 600, -1, -1, 20.0), Fault);
    EXPECT_THROW((void)GuessPeak(data, -1, -1, -1, 20.0), Fault);
}
