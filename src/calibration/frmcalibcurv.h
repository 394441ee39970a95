// The calibration curve: polynomial and points of the calibration's table, on screen and on paper.
#pragma once

#include "display/drawcalib.h"
#include "toolkit/controls.h"

#include <span>
#include <string>

namespace vael {

/// frmCalibCurv, beside the main view. It shows what `DrawGraph` was given last.
struct CalibCurvView : View {
    CalibCurvView();

    /// Shows the view with n points (channels x and energies y in keV), axes up to `maxCh` - 1 and
    /// to the hundred above `maxE`, the curve of the constants, and the lines of its label.
    /// Channels and constants count from the same base. Faults: Subscript.
    void DrawGraph(int n, std::span<const double> x, std::span<const double> y, double maxCh,
                   double maxE, const std::array<double, 3>& constants,
                   const std::vector<std::string>& lines);

    CalibPicture Shown;

    Label lblTitle{*this, "lblTitle", "Energy Calibration Curve"};
    Label lblEnergy{*this, "lblEnergy", "keV"};
    Picture picCalibY{*this, "picCalibY", 56, 240};
    Picture picCalib{*this, "picCalib"};
    Picture picCalibX{*this, "picCalibX", 640, 24};
    Label lblChannel{*this, "lblChannel", "Channel"};
    TextBox txtMemo{*this, "txtMemo"};
    Button cmdPrint{*this, "cmdPrint", "Print"};
    Button cmdOK{*this, "cmdOK", "O K"};
};

inline CalibCurvView frmCalibCurv;

}  // namespace vael
