// The ROI report: the table of regions of interest with what is counted in them.
#pragma once

#include "toolkit/controls.h"

namespace vael {

/// frmRoiReport, a list beside the main view, loaded with the program. What fires a handler when
/// the program sets it: nothing.
struct RoiReportView : View {
    RoiReportView();

    /// Columns of the grid; its row is that of the table of regions, counted from 1, and stands in
    /// column 0. Channels are shown counted from 1, `DataNo` is the slot.
    enum Column { DATA_NO = 1, MAX_CH, START_CH, END_CH, AREA, PEAK_COUNT };

    int WinNo = 0;   // window that the marks are drawn in
    int RoiNo = -1;  // region that was jumped to last

    Grid sprRoiInf{*this, "sprRoiInf", PEAK_COUNT, 0};
    Label lblMaxRoi{*this, "lblMaxRoi", "Max ROI = 10"};
    Button cmdOk{*this, "cmdOk", "O K"};
};

inline RoiReportView frmRoiReport;

/// Counts every region anew and lists them. Faults: Subscript.
void RefreshRoiReport();

/// Refreshes the list and shows it.
void ShowRoiReport();

}  // namespace vael
