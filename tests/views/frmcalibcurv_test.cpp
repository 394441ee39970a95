// The calibration curve: what it shows, its picture, and the printed page.
#include "support/calibworld.h"
#include "support/recordingcanvas.h"

#include <gtest/gtest.h>

#include <memory>

using namespace vael;
using namespace vael::test::calib;
using test::RecordingSurface;

namespace {

CalibCurvView& curve = frmCalibCurv;

/// A job on a recorded page that ends well or fails.
class RecordedJob : public PrintJob {
public:
    RecordedJob(RecordingSurface& page, bool fine) : page_(page), fine_(fine) {}
    Surface& Page() override { return page_; }
    bool NextPage() override { return fine_; }
    bool End() override { return fine_; }

private:
    RecordingSurface& page_;
    bool fine_;
};

struct Curved : Calibrated {
    Curved() {
        Row(1, "101", "3");
        Row(2, "1101", "33");
        Click(v.cmdCalEng);
        Click(v.cmdCurve);
    }
    /// A printer whose jobs draw on `page`.
    void PrinterOn(RecordingSurface& page, bool fine) {
        Desk.Printer = [&page, fine, this](const std::string& title) {
            Titles.push_back(title);
            return std::make_unique<RecordedJob>(page, fine);
        };
    }
    std::vector<std::string> Titles;
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
    RecordingSurface page(595.0, 842.0);
    w.PrinterOn(page, true);
    EXPECT_TRUE(Click(curve.cmdPrint));
    EXPECT_EQ(w.Titles, (std::vector<std::string>{"Energy Calibration Curve"}));
    const auto words = page.Words();
    for (const std::string& told : {std::string("Energy Calibration Curve"), std::string("Channel"),
                                    std::string("           keV"), curve.txtMemo.Text})
        EXPECT_NE(std::find(words.begin(), words.end(), told), words.end()) << told;
    EXPECT_EQ(w.Status(), "The calibration curve was printed.");
}

TEST(CalibrationCurveView, WithoutAPrinterItSaysSo) {
    Curved w;
    w.Desk.ExpectQuestion("Printer not ready");
    Click(curve.cmdPrint);
    EXPECT_EQ(w.Status(), "Not printed: there is no printer.");
    EXPECT_TRUE(curve.Visible);
}

TEST(CalibrationCurveView, APrinterThatFailsIsTold) {
    Curved w;
    RecordingSurface page(595.0, 842.0);
    w.PrinterOn(page, false);
    w.Desk.ExpectQuestion("Printer not ready");
    Click(curve.cmdPrint);
    EXPECT_EQ(w.Status(), "Not printed: the printer failed.");
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
