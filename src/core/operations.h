// The operation panel: smoothing, background and fitting of the current row, and their rows.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace vael {

/// Whether the current row is empty, so that there is nothing to work on; the status line tells it.
/// With no row at all the shift of the rows says so.
[[nodiscard]] bool NothingThere();

// The commands below work on the current row and hold its slot while rows move.

/// Smooths into a new row "Smooth" at row 0, or in place when the row is a smoothed copy already.
void mnuSmooth();
/// The same with the smoothing always done, whatever the settings say.
void Smooting_Calib();
/// Background and removed counts into the rows "BackGraund" (row 1) and "BackRemv" (row 0, which is
/// current afterwards).
void mnuBackGround();
/// Smooths, removes the background and fits the rest without help; only when there is exactly one
/// row.
void cmdAutoFit();
/// Fits a row by NAX and fills the rows "BackGraund", "BackRemv" and "Fit"; ends on its source's
/// row. Messages: "Fit Failed".
void NaxAreaFit(int win, int row);

/// Two empty rows "BackGraund" and "BackRemv" with the property of the row; the source's new row,
/// or -1 when there is no room.
[[nodiscard]] int MakeBackRows(int row);
/// The NAX background into the row's slot: channels 0 to 4095 where it is not 0.
void StoreNaxBackground(int row);
/// removed = source - background where the background is above 0, else 0; channels 0 to 4095. A
/// negative difference stays, unlike in mnuBackGround.
void StoreBackRemoved(int src, int back, int removed);

/// All rows away, both windows empty.
void ClearAllData();
/// Start state of the operation buttons; they stay locked while a calibration is open.
void cmdOperationInit();
/// The energy calibration begins: open, save, both energy buttons and all operation buttons are
/// locked; and ends: all of them are free.
void EneCalStart();
void EneCalEnd();
/// The calibration's text: each coefficient in array order, so that the constant term stands where
/// the label says square; it is kept as it stands.
void SetEGCParam(const std::array<double, 3>& coef);

/// Handler of operation button 0 to 12.
void cmdOperation_Click(int index);
/// To the previous (0) or next (1) peak of the current row.
void GoToPeak(int direction);
/// How the current window draws its graphs (DRAW_LINE, DRAW_PAINT, DRAW_DOT), and the check marks
/// that tell it.
void SetDrawKind(int kind);
void ShowDrawKind();
/// Opens a text file of the program's folder in the system's own editor. Message where none starts:
/// "crystal file open error", for both files, as it stands.
void EditProgramFile(const std::string& name);

}  // namespace vael
