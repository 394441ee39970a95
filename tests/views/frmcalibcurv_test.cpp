// The calibration curve: what it shows, its picture, and the printed page.
#include "support/calibworld.h"
#include "support/printer.h"

#include "display/frmprint.h"

#include <gtest/gtest.h>

#include <memory>

using namespace vael;
using namespace vael::test::calib;
using test::RecordingSurface;

namespace {

CalibCurvView& curve = frmCalibCurv;

struct Curved : Calibrated {
    Curved() {
        Row(1, "101", "3");
        Row(2, "1101", "33");
        Click(v.cmdCalEng);
        Click(v.cmdCurve);
    }
    /// Presses "Print", and "O K" in the dialog that follows.
    void Print() {
        Desk.OnModal([](View& view) {
            EXPECT_EQ(&view, &frmPrint);
            Click(frmPrint.optOrientation[1]);
            Type(frmPrint.txtFileName, "");
            Click(frmPrint.cmdOk);
        });
        EXPECT_TRUE(Click(curve.cmdPrint));
    }
    test::PrinterLog Log;
};

}  // namespace

TEST(CalibrationCurveView, StandsWithItsWords) {
    Curved w;
    EXPECT_TRUE(curve.Visible);
    EXPECT_FALSE(curve.Modal);
    EXPECT_EQ(curve.Caption, "Calibration Curve");
    EXPECT_EQ(curve.lblTitle.Caption, "Energy Calibration Curve");
    EXPECT_EQ(curve.lblChannel.Caption, "Channel");
    EXPECT_EQ(curve.lblEnergy.Caption, "keV");
    EXPECT_EQ(curve.cmdOK.Caption, "O K");
    EXPECT_EQ(curve.cmdPrint.Caption, "Print");
    EXPECT_TRUE(curve.txtMemo.ReadOnly);
}

TEST(CalibrationCurveView, JoinsTheLinesOfItsLabel) {
    World w;
    curve.DrawGraph(0, {}, {}, 4096.0, 50.0, {0.0, 0.01, 0.0}, {"one", "two"});
    EXPECT_EQ(curve.txtMemo.Text, "one\r\ntwo");
    EXPECT_TRUE(curve.Visible);
    EXPECT_TRUE(curve.Shown.X.empty());
}

TEST(CalibrationCurveView, IsDrawnAnewForEachSizeOfItsPicture) {
    Curved w;
    RecordingSurface plot(400.0, 200.0);
    RecordingSurface across(400.0, 20.0);
    RecordingSurface up(56.0, 200.0);
    curve.picCalib.PutOn(&plot);
    curve.picCalibX.PutOn(&across);
    curve.picCalibY.PutOn(&up);
    const auto painted = curve.picCalib.Painted;
    EXPECT_TRUE(Resize(curve));
    EXPECT_GT(curve.picCalib.Painted, painted);
    EXPECT_EQ(plot.Only(test::Drawn::Kind::FilledBox).size(), 2U) << "the two points";
    EXPECT_EQ(across.Words(), (std::vector<std::string>{"0", "1000", "2000", "3000", "4000"}));
    EXPECT_EQ(up.Words(), (std::vector<std::string>{"0", "50", "100", "150", "200"}));
    curve.picCalib.PutOn(nullptr);
    curve.picCalibX.PutOn(nullptr);
    curve.picCalibY.PutOn(nullptr);
}

TEST(CalibrationCurveView, PrintsWhatItShows) {
    Curved w;
    w.Desk.Printer = test::PrinterInto(w.Log);
    w.Print();
    ASSERT_EQ(w.Log.Pages.size(), 1U);
    EXPECT_EQ(w.Log.Orders[0].Title, "Energy Calibration Curve");
    EXPECT_EQ(w.Log.Sizes[0].Width, 595.0);
    for (const std::string& told : {std::string("Energy Calibration Curve"), std::string("Channel"),
                                    std::string("           keV"), curve.txtMemo.Text})
        EXPECT_TRUE(w.Log.Has(0, told)) << told;
    EXPECT_EQ(w.Status(), "Printed 1 page on the printer.");
}

TEST(CalibrationCurveView, WithoutAPrinterItSaysSo) {
    Curved w;
    w.Desk.ExpectQuestion("Printer not ready");
    w.Print();
    EXPECT_EQ(w.Status(), "Not printed: there is no printer.");
    EXPECT_TRUE(curve.Visible);
}

TEST(CalibrationCurveView, APrinterThatFailsIsTold) {
    Curved w;
    w.Desk.Printer = test::PrinterInto(w.Log);
    w.Log.FailAtEnd = true;
    w.Desk.ExpectQuestion("Printer error: the printer failed on page 1. The job was ended.");
    w.Print();
    EXPECT_EQ(w.Status(), "Not printed: the printer failed on page 1; the job was ended.");
}

TEST(CalibrationCurveView, OKEnterAndEscapeCloseIt) {
    Curved w;
    Click(curve.cmdOK);
    EXPECT_FALSE(curve.Visible);
    for (const auto key : {KeyPress::Name::Enter, KeyPress::Name::Escape}) {
        Click(v.cmdCurve);
        EXPECT_TRUE(curve.Visible);
        EXPECT_TRUE(Key(curve, {.Key = key}));
        EXPECT_FALSE(curve.Visible);
    }
    EXPECT_TRUE(v.Visible) << "the calibration stays";
}
