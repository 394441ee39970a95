// The commands of the regions of interest: marking one between two cursor places, and jumps.
#include "analysis/roicommands.h"

#include "analysis/roi.h"
#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/operations.h"
#include "core/regionmarks.h"
#include "core/store.h"
#include "core/windows.h"

#include <algorithm>
#include <string>

namespace vael {

void mnuRoiStart() {
    if (NothingThere()) return;
    frmVaelAna.RoiStart = CursorCh();
    frmVaelAna.mnuRoiEnd.Enabled = true;
    TellStatus("The region starts at channel " + std::to_string(CursorCh() + 1) +
               "; ROI End at another cursor place ends it.");
}

void mnuRoiEnd() {
    if (NothingThere()) return;
    const int start = std::min(frmVaelAna.RoiStart, CursorCh());
    const int end = std::max(frmVaelAna.RoiStart, CursorCh());
    ForgetRoiStart();
    const int index = AddRoi(store.Rois, store.SpectrumDatas, GetRealWinNo(), DataNo(),
                             Whole16(start), Whole16(end), RoiColor(), RegionMarks());
    if (index < 0) {
        TellStatus("Max ROI = 10");
        return;
    }
    ShowCursorValues();
    RedrawBoth();
    TellStatus("ROI " + std::to_string(index + 1) + " from channel " + std::to_string(start + 1) +
               " to " + std::to_string(end + 1) + ".");
}

void ForgetRoiStart() {
    frmVaelAna.RoiStart = 0;
    frmVaelAna.mnuRoiEnd.Enabled = false;
}

int JumpRoi(int channel, int direction) {
    // Another spectrum may stand in the slot than when the regions were marked.
    for (int i = 0; i < store.Rois.RoiNum; ++i) UpdateRoi(store.Rois, store.SpectrumDatas, i);
    const auto jump = JumpRoi(store.Rois, channel, direction);
    if (!jump) return -1;
    frmVaelAna.chkArea.Value = 1;
    SetArea(jump->StartCh, jump->EndCh);
    CsrX_Change(jump->Channel);
    return jump->Index;
}

void GoToRoi(int direction) {
    if (store.Rois.RoiNum == 0) {
        TellStatus("There are no regions of interest.");
        return;
    }
    const int index = JumpRoi(CursorCh(), direction);
    if (index < 0)
        TellStatus(direction == 1 ? "This is the last region." : "This is the first region.");
    else
        TellStatus("ROI " + std::to_string(index + 1) + " of " + std::to_string(store.Rois.RoiNum) +
                   ".");
}

}  // namespace vael
