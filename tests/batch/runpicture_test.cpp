// The picture of a run, from tables written by hand.
#include "batch/runpicture.h"
#include "core/fault.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace vael;

namespace {

const std::string HEAD =
    "number,time,file,status,temperature_C,a,a_error,b,b_error,c,c_error,V_V0,V_V0_error,GPa,"
    "GPa_error\r\n";

std::string Row(const std::string& number, const std::string& time, double a, double c, double p,
                double error = 0.01) {
    const auto text = [](double value) { return std::to_string(value); };
    return number + "," + time + ",f,ok,25," + text(a) + ",0.001," + text(a) + ",0.001," + text(c) +
           ",0.001,0.99,0.001," + text(p) + "," + text(error) + "\r\n";
}

std::string Failed(const std::string& number, const std::string& time = "") {
    return number + "," + time + ",f,unreadable,,,,,,,,,,,\r\n";
}

std::string Picture(const std::string& rows, RunAxis axis = RunAxis::Number) {
    std::istringstream table(HEAD + rows);
    return RunPicture(table, axis, "a run");
}

int Count(const std::string& text, const std::string& piece) {
    int count = 0;
    for (auto at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 1))
        ++count;
    return count;
}

constexpr const char* SHADE = "fill=\"#f0eee6\"";  // one stands in the legend
constexpr const char* CROSS = "stroke=\"#d55e00\"";

}  // namespace

TEST(RunPicture, APanelForEachColumnThatHoldsNumbers) {
    const std::string svg = Picture(Row("1", "", 4.0, 4.0, 1.0) + Row("2", "", 4.1, 4.1, 2.0));
    for (const char* title : {">P / GPa<", ">T / °C<", ">V/V0<", ">a / Å<"})
        EXPECT_EQ(Count(svg, title), 1) << title;
    EXPECT_EQ(Count(svg, ">b / Å<"), 0);
    EXPECT_EQ(Count(svg, ">c / Å<"), 0) << "c is a";
    EXPECT_EQ(Count(Picture(Row("1", "", 4.0, 6.0, 1.0)), ">c / Å<"), 1);
    EXPECT_NE(svg.find("2 files, 0 without a result"), std::string::npos);
}

TEST(RunPicture, NumbersWithoutAFileAreShadedFromBesideTheLastToBesideTheNext) {
    const std::string whole = Picture(Row("1", "", 4, 4, 1) + Row("2", "", 4, 4, 1));
    EXPECT_EQ(Count(whole, SHADE), 1);
    const std::string gaps = Picture(Row("1", "", 4, 4, 1) + Row("2", "", 4, 4, 1) +
                                     Row("5", "", 4, 4, 1) + Row("9", "", 4, 4, 1));
    EXPECT_EQ(Count(gaps, SHADE), 3) << "3 to 4 and 6 to 8";
    // 0.5 to 9.5 stands across 710 points from 96: the second gap goes from 5.5 to 8.5, in
    // twentieths of a point.
    const double a_number = 710.0 / 9.0 * 20.0;
    std::ostringstream width;
    width << "width=\"" << static_cast<long>(3.0 * a_number);
    EXPECT_NE(gaps.find(width.str()), std::string::npos) << width.str();
}

TEST(RunPicture, AFileWithoutAResultIsNoGapAndHasACross) {
    const std::string svg = Picture(Row("1", "", 4, 4, 1) + Failed("2") + Row("3", "", 4, 4, 1));
    EXPECT_EQ(Count(svg, SHADE), 1);
    EXPECT_EQ(Count(svg, CROSS), 1);
    EXPECT_NE(svg.find("3 files, 1 without a result"), std::string::npos);
}

TEST(RunPicture, ThePointsStandWhereTheirNumbersSay) {
    // One row: its error bar is the only stroke of its colour and width in each panel with errors.
    const std::string one = Picture(Row("7", "", 4, 4, 1, 0.25));
    // The middle of the panels, 96 + 710 / 2 = 451 points, half a cell aside: 9022.5 twentieths.
    EXPECT_NE(one.find("M902"), std::string::npos);
}

TEST(RunPicture, OnTheAxisOfTimeALongSpaceIsShadedAndRowsWithoutADateAreCounted) {
    std::string rows;
    for (int minute = 10; minute < 30; ++minute)
        rows += Row("1", "2018-10-10 09:" + std::to_string(minute) + ":00", 4, 4, minute);
    EXPECT_EQ(Count(Picture(rows, RunAxis::Time), SHADE), 1);
    const std::string svg = Picture(
        rows + Row("2", "2018-10-10 11:00:00", 4, 4, 3) + Row("3", "", 4, 4, 3), RunAxis::Time);
    EXPECT_EQ(Count(svg, SHADE), 2);
    EXPECT_NE(svg.find("22 files, 0 without a result; 1 without a date are not shown"),
              std::string::npos);
    EXPECT_EQ(Count(svg, ">2018-10-10<"), 1);
    EXPECT_GE(Count(svg, ">10:00<"), 1);
}

TEST(RunPicture, ItsSizeDoesNotGrowWithTheRows) {
    const auto many = [](int rows) {
        std::string text;
        for (int i = 0; i < rows; ++i)
            text += Row(std::to_string(i), "", 4.0 + 0.1 * (i % 7), 4.0, i % 11);
        return Picture(text).size();
    };
    const std::size_t full = many(20000);
    EXPECT_LT(many(60000), full + full / 5);
}

TEST(RunPicture, AnEmptyTableAndOneRowAndAWildErrorDraw) {
    EXPECT_NE(Picture("").find("no results yet"), std::string::npos);
    EXPECT_NE(Picture(Failed("3")).find("no results yet"), std::string::npos);
    EXPECT_NE(Picture(Row("3", "", 4, 4, 1e300, 1e308)).find("</svg>"), std::string::npos);
    EXPECT_NE(Picture(Row("-3", "", 4, 4, 0, 0)).find("</svg>"), std::string::npos);
}

TEST(RunPicture, ATableWithoutTheColumnsOfARunIsAFault) {
    std::istringstream none("");
    EXPECT_THROW((void)RunPicture(none, RunAxis::Number, ""), Fault);
    std::istringstream other("a,b\r\n");
    EXPECT_THROW((void)RunPicture(other, RunAxis::Number, ""), Fault);
}
