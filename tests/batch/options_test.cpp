// The batch program's command line.
#include "batch/options.h"
#include "lattice/latticecalc.h"

#include <gtest/gtest.h>

using namespace vael;

namespace {

BatchCall Call(std::vector<const char*> words) {
    words.insert(words.begin(), "vael-batch");
    return ReadCall(static_cast<int>(words.size()), words.data());
}

}  // namespace

TEST(Options, DefaultsAreThoseOfTheWindow) {
    const BatchCall call = Call({"a.npd", "b.npd"});
    ASSERT_TRUE(call.Options);
    EXPECT_EQ(call.Options->Files, (std::vector<std::string>{"a.npd", "b.npd"}));
    EXPECT_FALSE(call.Options->Mode);
    EXPECT_TRUE(call.Options->Rules.DropOutliers);
    EXPECT_FALSE(call.Options->Temperature);
    EXPECT_FALSE(call.Options->DefaultCalibration);
    EXPECT_EQ(call.Options->Format, BatchFormat::Table);
}

TEST(Options, EachOptionIsRead) {
    const BatchCall call = Call(
        {"--crystal",     "Au",      "--mode",        "sample", "--reflections",    "2 0 0,2 2 0",
         "--outliers",    "keep",    "--temperature", "300K",   "--two-theta",      "15.02",
         "--calibration", "default", "--pickup",      "0.05",   "--bg-coefficient", "auto",
         "--peak-width",  "30",      "--smooth",      "9",      "--format",         "json",
         "--jobs",        "3",       "x.npd"});
    ASSERT_TRUE(call.Options) << call.Text;
    const BatchOptions& o = *call.Options;
    EXPECT_EQ(o.Mode, MODE_SAMPLE);
    EXPECT_EQ(o.Rules.Reflections, (std::vector<Hkl>{{2, 0, 0}, {2, 2, 0}}));
    EXPECT_FALSE(o.Rules.DropOutliers);
    EXPECT_EQ(o.Temperature, 300.0);
    EXPECT_EQ(o.Unit, TEMPERATURE_KELVIN);
    EXPECT_EQ(o.TwoTheta, 15.02);
    EXPECT_TRUE(o.DefaultCalibration);
    EXPECT_EQ(o.Pickup, 0.05);
    EXPECT_TRUE(o.AutoBg);
    EXPECT_EQ(o.PeakWidth, 30.0);
    EXPECT_EQ(o.Smooth, 2);
    EXPECT_EQ(o.Format, BatchFormat::Json);
    EXPECT_EQ(o.Jobs, 3);
    EXPECT_EQ(Call({"--smooth", "off", "x"}).Options->Smooth, -1);
    EXPECT_EQ(Call({"--temperature", "-5 C", "x"}).Options->Temperature, -5.0);
    EXPECT_EQ(Call({"--bg-coefficient", "0.4", "x"}).Options->BgCoefficient, 0.4);
}

TEST(Options, TheExpressFitterHasOptionsOfItsOwn) {
    const BatchCall plain = Call({"x"});
    EXPECT_FALSE(plain.Options->Express);
    const BatchCall call =
        Call({"--fit", "express", "--threshold", "15", "--shape", "lorentz", "x"});
    ASSERT_TRUE(call.Options) << call.Text;
    EXPECT_TRUE(call.Options->Express);
    EXPECT_EQ(call.Options->Threshold, 15);
    EXPECT_EQ(call.Options->Shape, SHAPE_LORENTZ);
    EXPECT_EQ(Call({"--fit", "express", "x"}).Options->Shape, std::nullopt);
}

TEST(Options, AWrongCallEndsWithTwoAndSaysWhatWasExpected) {
    const std::vector<std::vector<const char*>> wrong{
        {},
        {"--nonsense", "x"},
        {"--mode", "both", "--crystal", "Au", "x"},
        {"--crystal", "Au", "--reflections", "2 0", "x"},
        {"--temperature", "warm", "x"},
        {"--pickup", "-1", "x"},
        {"--two-theta", "0", "x"},
        {"--jobs", "0", "x"},
        {"--format", "xml", "x"},
        {"--mode", "marker", "x"},
        {"--fit", "simplex", "x"},
        {"--fit", "express", "--threshold", "0", "x"},
        {"--fit", "express", "--threshold", "21", "x"},
        {"--fit", "express", "--shape", "box", "x"},
        {"--fit", "express", "--bg-coefficient", "0.4", "x"},
        {"--fit", "express", "--peak-width", "20", "x"},
        {"--threshold", "10", "x"},
        {"--shape", "mix", "x"},
        {"--data", "/no/such/folder", "x"}};
    for (const auto& words : wrong) {
        const BatchCall call = Call(words);
        EXPECT_FALSE(call.Options);
        EXPECT_EQ(call.Status, 2) << (words.empty() ? "" : words[0]);
        EXPECT_FALSE(call.Text.empty());
    }
}

TEST(Options, HelpIsNoError) {
    const BatchCall call = Call({"--help"});
    EXPECT_EQ(call.Status, 0);
    EXPECT_NE(call.Text.find("--crystal"), std::string::npos);
    EXPECT_NE(call.Text.find("Exit status"), std::string::npos);
}
