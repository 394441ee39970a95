// The peak report: the peaks of one row as a list that is edited, saved, and drawn as a curve.
#pragma once

#include "core/records.h"
#include "toolkit/controls.h"

namespace vael {

/// frmPeakReport, a list beside the main view. What fires a handler when the program sets it:
/// nothing.
struct PeakReportView : View {
    PeakReportView();

    /// Columns of the grid; its row is that of the peak table, counted from 1, and stands in column
    /// 0.
    enum Column {
        CHANNEL = 1,
        POSITION,
        INTENSITY,
        WIDTH_CH,
        WIDTH,
        WIDTH_D,
        AMPLITUDE,
        GAUSS,
        TYPE
    };

    // It reports on a slot: window, row and unit are taken anew whenever something is drawn.
    int Slot = -1;
    int WinNo = 0;
    int GrpNo = -1;
    int DispUnit = 0;
    PeakTable AsOpened{};     // what "Cancel" puts back
    PeakTable AsLeft{};       // as this view left it: another content is another command's work
    bool CurveDrawn = false;  // "SET" drew the curve from an edited table

    Label lblGraph{*this, "lblGraph"};
    Grid sprPeakInf{*this, "sprPeakInf", TYPE, 0};
    Button cmdPrint{*this, "cmdPrint", "Print"};
    Button cmdSave{*this, "cmdSave", "Save as.."};
    Button cmdPkSet{*this, "cmdPkSet", "SET"};
    Button cmdRepEnd{*this, "cmdRepEnd", "OK"};
    Button cmdCancel{*this, "cmdCancel", "Cancel"};
};

inline PeakReportView frmPeakReport;

/// Opens the report for the current row, with the peak at the cursor as its current line.
void ShowPeakReport();

/// While the report is shown: takes the peaks of its slot anew, and closes it when the slot has no
/// row any more. Where another command has changed the table, "Cancel" goes back to what that
/// command left. Faults: Division (a width in unit 6 at an angle of 0).
void RefreshPeakReport();

}  // namespace vael
