// The commands of the regions of interest: marking one between two cursor places, and jumps.
#pragma once

#include <cstdint>

namespace vael {

/// Keeps the cursor's channel as one end of a region and frees "ROI End".
void mnuRoiStart();
/// The region from the kept channel to the cursor, in order, on the current row's slot, in the
/// colour of regions; then it waits for the next start. "Max ROI = 10" in the status line where the
/// table is full.
void mnuRoiEnd();
/// Forgets a kept start.
void ForgetRoiStart();

/// The area cursor and the channel cursor to the neighbouring region of all graphs, by the channel
/// of its highest count: direction 1 the next, any other the previous. Outside the table nothing
/// moves; -1 then, else the region's index from 0.
int JumpRoi(int channel, int direction);
/// The same from the cursor, told in the status line.
void GoToRoi(int direction);

}  // namespace vael
