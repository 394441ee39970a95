// Graph rows and slots: moving spectra in and out of the store, and keeping the selectors in step.
#pragma once

#include "core/records.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace vael {

// Rows count from 0 to 9, slots from 0 to 13, windows from 0 to 1; a row points to a slot, and row
// 3 may live in slot 7.

/// All rows away with their peaks, both windows empty, every slot free again.
void RemoveAllRows();
/// The "Open..." command: empties the rows, then asks for files.
void LoadNew();
/// Open dialog and a loop over the chosen files; rows always start at 0, and the slots of rows that
/// it overwrites stay marked as used.
void FileLoad();
/// Reads files by their paths as the open dialog does: into window 0 and the rows from 0 on, ten at
/// most. What was read, and what was not, is told in the status line.
void OpenNamed(const std::vector<std::string>& paths);
/// Reads one file into a new slot and makes it a row of a window. `ok` is -1 on success, else 0: no
/// row is made then, and the slot stays allocated. The reason of a failure goes to the log. Faults:
/// Subscript when no slot is free.
void ReadGraph(int win, int row, const std::string& path, std::int16_t& ok);

/// Fills a row and shows it.
void SetGraph(int win, int row, int slot, const std::string& name);
/// Makes room at row 0 and allocates a slot; the slot, or -1.
[[nodiscard]] int InsertGraph();
/// The first free slot, or -1 with a message; with mark -1 it is allocated.
[[nodiscard]] int GetGraphSpace(int mark);
/// Moves rows one down (direction above 0) or up from `start`; ok -1 on success, 0 with a message.
void ShiftGraph(int start, int direction, std::int16_t& ok);
/// Removes a row, closing the gap. An empty row between others only goes; behind them it stays.
void DeleteGraph(int row);
/// Empties one row, or all; ok 0 when the row was cleared, -1 when the prompt stopped it.
void ClearGrp(int row, std::int16_t& ok);
void ClearAllGrp(std::int16_t& ok);

/// The slot of a row; below 0 the current row.
[[nodiscard]] int GetGraphDataNo(int grp);
/// Row 0 to 9 of the slot, or -1.
[[nodiscard]] int RowOfSlot(int slot);
/// The row that a window has selected; nullptr when it is empty.
[[nodiscard]] const GraphEntry* SelectedRow(int win);
/// Row 0 to 9 of that name, or -1.
[[nodiscard]] int RowOfName(const std::string& name);
/// Whether it is one of the four names of derived graphs.
[[nodiscard]] bool IsDerivedName(const std::string& name);
/// The window that commands work on: 0 in Expand style, else the active one.
[[nodiscard]] int GetRealWinNo();
/// The window in which a row's graph stands: 0 in Expand style.
[[nodiscard]] int WindowOfRow(int row);
/// Current row of the real window.
[[nodiscard]] int GetGrpNo();
/// Count of allocated slots plus the window's list index.
[[nodiscard]] int GetGrpNo2();

/// The boxes that tell of the current row: cursor values, its name and calibration, the tips of the
/// rows and the marker in their list.
void ShowCurrentRow();
void ChangeActiveWin(int win);
/// Selects a row in a window and runs the selector's handler; a row that is none is refused.
void Change_cboGrphSel(int win, int row);
/// Slot of each window's selected row, or -1.
using Selections = std::array<int, WINDOW_COUNT>;
[[nodiscard]] Selections SelectedSlots();
/// After rows have moved: each selector stays with its graph where that one is still there; else it
/// keeps its place in the list, and goes to the last row when there are fewer.
void AdjustSelections(const Selections& slots);
/// Rebuilds both selectors' items and keeps their indexes.
void Add_cboGraphSel();
/// Sets a row's tick in a window; with `show` its handler runs.
void ChgValue_chkGrp(int win, int row, int value, bool show);
void ChgStrColor_chkGrp(int win, int row, const std::string& caption, Colour color);
/// Captions and colours of all boxes of a window, the current row marked.
void ChgAllCaption_chkGrp(int win, int row);
/// Ticks, captions and colours of all boxes as the rows say.
void RefreshRows();

/// Handlers of the selectors, boxes and menu items, wired by the main view. A row shows in one
/// window: ticking it in the other moves it there. An empty kind is that of graphs from files.
void cboGrphSel_Click(int win);
void chkGrp_Click(int win, int row);
void mnuCloseGraph_Click();
void mnuGraphKind_Click(const std::string& name);

}  // namespace vael
