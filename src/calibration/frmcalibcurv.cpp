// The calibration curve: polynomial and points of the calibration's table, on screen and on paper.
#include "calibration/frmcalibcurv.h"

#include "core/fault.h"
#include "core/frmvaelana.h"
#include "display/frmprint.h"

namespace vael {
namespace {

using DrawScale = void (*)(Canvas&, const CalibPicture&, Colour);

/// A strip takes the colours of the window that it stands in, like those of the main view.
void PaintStrip(Picture& strip, DrawScale draw) {
    strip.Paper().ScaleReset();
    strip.Paper().Clear(frmVaelAna.StripBack);
    draw(strip.Paper(), frmCalibCurv.Shown, frmVaelAna.StripInk);
    ++strip.Painted;
}

void Paint() {
    CalibCurvView& v = frmCalibCurv;
    DrawCalibPlot(v.picCalib.Paper(), v.Shown);
    ++v.picCalib.Painted;
    PaintStrip(v.picCalibX, DrawCalibChannels);
    PaintStrip(v.picCalibY, DrawCalibEnergies);
}

void cmdPrint_Click() {
    PrintWithDialog({.Title = frmCalibCurv.lblTitle.Caption,
                     .Name = "CalibrationCurve",
                     .Draw = [](Canvas& canvas, double, const NextPage&) {
                         DrawCalibPage(canvas, frmCalibCurv.Shown);
                         return true;
                     }});
}

void cmdOK_Click() { frmCalibCurv.Visible = false; }

std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += (text.empty() ? "" : "\r\n") + line;
    return text;
}

}  // namespace

CalibCurvView::CalibCurvView() : View("frmCalibCurv", "Calibration Curve") {
    txtMemo.ReadOnly = true;
    txtMemo.MultiLine = true;
    txtMemo.Tip = "The curve, with the channel as Ch";
    cmdPrint.Tip = "Prints the curve on one page";
    cmdPrint.Shortcut = "Ctrl+P";
    cmdOK.Tip = "Closes the curve";
    cmdPrint.Click = cmdPrint_Click;
    cmdOK.Click = cmdOK_Click;
    Resized = Paint;
    KeyPreview = EnterEscape(cmdOK_Click, cmdOK_Click);
}

void CalibCurvView::DrawGraph(int n, std::span<const double> x, std::span<const double> y,
                              double maxCh, double maxE, const std::array<double, 3>& constants,
                              const std::vector<std::string>& lines) {
    CalibPicture picture;
    for (int i = 0; i < n; ++i) {
        picture.X.push_back(Item(x, i));
        picture.Y.push_back(Item(y, i));
    }
    picture.MaxCh = maxCh;
    picture.MaxE = maxE;
    picture.Constants = constants;
    picture.Lines = lines;
    Shown = std::move(picture);
    txtMemo.Text = Joined(lines);
    Visible = true;
    Paint();
}

}  // namespace vael
