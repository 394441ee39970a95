// The area cursor: a left and a right mark in each window, and what the regions of a command are.
#pragma once

#include <cstdint>

namespace vael {

/// The channel of a mark that is not set, as a 16-bit word.
inline constexpr std::int16_t AREA_UNSET = -1;

/// The window whose marks count: the real one.
[[nodiscard]] int AreaWindow();
/// Sets both marks of the real window to 0-based channels, in order and held within SpanCh, and
/// draws them. Their flags stand at the current graph's counts.
void SetArea(int oneEnd, int otherEnd);
/// Sets one mark of the real window (0 left, 1 right) to a 0-based channel held below SpanCh, or
/// takes it away with AREA_UNSET, and draws them. The two are not put in order: who types an end
/// before the start gets it so.
void SetAreaMark(int index, int channel);
/// Takes both marks of the real window away.
void ClearArea();
/// "Area to the whole axis": marks at 0 and SpanCh - 1; ticks `chkArea` without its click.
void AreaToWholeAxis();
/// The two marks of the active window: -1 when both are set and differ, in the order left mark,
/// right mark; else 0, and both results are -1.
[[nodiscard]] std::int16_t GetRegions(std::int16_t& start, std::int16_t& end);
/// Empties the table of regions and the area marks of both windows. `ok` is -1.
void ResetRoiAll(std::int16_t& ok);

/// Draws a mark with exclusive or as a flag of three strokes, so that drawing it a second time
/// removes it; pen and mode are as they were afterwards.
void DrawAreaMark(int win, int index, int channel);
/// Takes a window's marks off its picture, and puts those on that it shows.
void RemoveAreaMarks(int win);
void PutAreaMarks(int win);
/// Off and on again in both windows; an open manual fit takes what has moved.
void RefreshAreaMarks();
/// Which mark of the real window stands within `reach` channels: 0 left, 1 right, -1 none.
[[nodiscard]] int AreaMarkAt(int channel, int reach);

/// Handler of "AREA SET".
void chkArea_Click();

}  // namespace vael
