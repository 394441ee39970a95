// The commands of ExpressFitting and of single peaks: insertion, fit, split and removal.
#pragma once

#include <cstdint>

namespace vael {

// The commands work on the current row and hold its slot while rows move. Peaks of a slot count
// from 0, as the user sees them from 1; channels from 0.

/// The channels that a command searched or fitted; -1 where there are none.
struct ChannelRange {
    int Start = -1;
    int End = -1;
};

/// Searches peaks in the channels `start` to `end` of a row, held within its spectrum, in place of
/// those whose centres lie there. Without a region (`start` -1) it searches the 20 channels from
/// the cursor and takes nothing away. Answers the searched channels. Messages: those of
/// `PeakSearch`; "intPeakNo=-1" for each peak that the table refuses.
ChannelRange InsertPeaks(int win, int row, int start, int end);

/// Fits the peaks in the area of the area cursor, each in its region (where there is none, after a
/// search), or with the area cursor off the peak below the channel cursor; then the fit graph.
/// Peaks whose fit cannot stand go: their number and " Peaks Cuted". A fault leaves the table as it
/// was.
void FitPeak();

/// Splits the area into its peaks together, or refines the peak below the cursor in its region;
/// then the fit graph. A run that its solver gave up leaves the peaks as far as they came.
void PeakSep();

/// Handlers of the main view's menu.
void mnuExpressFit_Click();
void mnuFitting();
void mnuFittingAll();
void mnuPeakIns();
void mnuPeakAllIns();
void mnuPeakDelete();
void mnuPeakAllDelete();

}  // namespace vael
