// The shown range and the window styles: zoom, scroll, the magnifier, and the pile.
#pragma once

namespace vael {

/// Magnifies `width` channels from the 0-based channel `startCh` on: in Expand style in window 1,
/// else in both windows. A width under 16 changes nothing. The cursor goes to the middle, start +
/// width / 2, rounded once with ties to even.
void SetExpandArea(int startCh, int width);

/// Shows `span` channels from `start` on and draws what follows from it.
void MoveRange(int start, int span);
/// Doubles (`wider`) or halves the shown span about a 0-based channel that keeps its place; within
/// 16 channels and the whole axis.
void ZoomAbout(int channel, double factor);
/// Half a span to the right (1) or left (-1); to the ends of the axis.
void PageRange(int direction);
void RangeToEnd(int direction);

/// Start state: each window its own graphs, "Expand" and "PileUp" off and free.
void StyleAtStart();
/// "Expand" and "PileUp" may each be chosen only where the other allows; called when rows came or
/// went.
void FreeStyleControls();

/// Handlers, wired by the main view.
void cmdWider_Click();
void cmdNarrower_Click();
void hsbStartX_Change();
void imnSpanCh_Change();
void ckbExpand_Click();
void chkWinStyle_Click();
void mnuWinType_Click(int index);
void mnuExpand_Click(int on);
void chkFilePile_Click(int win);

}  // namespace vael
