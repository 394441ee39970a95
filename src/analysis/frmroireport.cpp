// The ROI report: the table of regions of interest with what is counted in them.
#include "analysis/frmroireport.h"

#include "analysis/roi.h"
#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/regionmarks.h"
#include "core/store.h"
#include "core/text.h"
#include "core/windows.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vael {
namespace {

using V = RoiReportView;

constexpr const char* COUNT_FORMAT = "#########0";

void FillLine(int index) {
    Grid& grid = frmRoiReport.sprRoiInf;
    const RoiRecord& roi = Item(store.Rois.RoiTable, index);
    const std::array<std::string, V::PEAK_COUNT + 1> texts{
        std::to_string(index + 1),
        std::to_string(roi.DataNo),
        FormatNumber(roi.MaxCh + 1.0, COUNT_FORMAT),
        std::to_string(roi.StartCh + 1),
        std::to_string(roi.EndCh + 1),
        FormatNumber(roi.TotalCount, COUNT_FORMAT),
        FormatNumber(roi.MaxCount, COUNT_FORMAT)};
    for (int column = 0; column <= V::PEAK_COUNT; ++column) {
        Grid::Cell& cell = grid.At(column, index + 1);
        cell.Text = Item(texts, column);
        cell.Editable = column == V::START_CH || column == V::END_CH;
    }
}

/// What stands on the plots and in the boxes follows the table; a list that is shown with them.
void ShowChange() {
    ShowCursorValues();
    RedrawBoth();
}

/// A start or an end that was typed: a whole channel of the spectrum, the start not behind the end.
void sprRoiInf_CellEdit(int column, int row) {
    const int index = row - 1;
    const RoiRegion old = GetRoi(store.Rois, index);
    const std::string typed = frmRoiReport.sprRoiInf.At(column, row).Text;
    const auto refuse = [&](const std::string& why) {
        FillLine(index);
        TellStatus(why + " The region stays as it was.");
    };
    const auto value = ParseNumber(typed);
    if (!value) return refuse("\"" + typed + "\" is no number.");
    const int channels = Item(store.SpectrumDatas, old.Graph).DataNo;
    if (*value != std::trunc(*value) || *value < 1.0 || *value > channels)
        return refuse("A region begins and ends at a whole channel from 1 to " +
                      std::to_string(channels) + ".");
    const std::int16_t channel = Whole16(*value - 1.0);
    const std::int16_t start = column == V::START_CH ? channel : old.StartCh;
    const std::int16_t end = column == V::END_CH ? channel : old.EndCh;
    if (start > end) return refuse("A region cannot end before it begins.");
    SetRoi(store.Rois, store.SpectrumDatas, frmRoiReport.WinNo, index, start, end, old.Color,
           RegionMarks());
    ShowChange();
    TellStatus("Region " + std::to_string(row) + " goes from channel " + std::to_string(start + 1) +
               " to " + std::to_string(end + 1) + ".");
}

/// The area marks go to the ends of the region, where they are seen, and the cursor to its highest
/// channel.
void sprRoiInf_CellClick(int, int row) {
    if (row < 1) return;
    const RoiRecord roi = Item(store.Rois.RoiTable, row - 1);
    frmRoiReport.RoiNo = row - 1;
    frmVaelAna.chkArea.Value = 1;
    SetArea(roi.StartCh, roi.EndCh);
    CsrX_Change(Whole16(roi.MaxCh));
}

/// The Delete key.
void RemoveCurrentRoi() {
    const int row = frmRoiReport.sprRoiInf.Row;
    if (row < 1 || row > store.Rois.RoiNum) {
        TellStatus("There is no region to remove.");
        return;
    }
    DeleteRoi(store.Rois, frmRoiReport.WinNo, row - 1, RegionMarks());
    ShowChange();
    TellStatus("Region " + std::to_string(row) + " was removed.");
}

void cmdOk_Click() { frmRoiReport.Visible = false; }

/// Enter does what the focused control says, so it is no key of the view.
bool ReportKeys(const KeyPress& key) {
    if (key.Alt || key.Ctrl || key.Shift) return false;
    if (key.Key == KeyPress::Name::Escape)
        cmdOk_Click();
    else if (key.Key == KeyPress::Name::Delete)
        RemoveCurrentRoi();
    else
        return false;
    return true;
}

}  // namespace

RoiReportView::RoiReportView() : View("frmRoiReport", "ROI Report") {
    constexpr std::array<const char*, PEAK_COUNT> HEADS{"DataNo", "MaxCh", "StartCh",
                                                        "EndCh",  "Area",  "PeakCount"};
    for (int column = DATA_NO; column <= PEAK_COUNT; ++column)
        sprRoiInf.At(column, 0).Text = Item(HEADS, column - DATA_NO);
    sprRoiInf.Widths = {3, 8, 8, 8, 8, 12, 11};
    sprRoiInf.Tip =
        "A click sets area and cursor to the region. StartCh and EndCh can be typed over; Delete "
        "removes the region";
    sprRoiInf.CellEdit = sprRoiInf_CellEdit;
    sprRoiInf.CellClick = sprRoiInf_CellClick;
    cmdOk.Tip = "Closes the list";
    cmdOk.Click = cmdOk_Click;
    KeyPreview = ReportKeys;
}

void RefreshRoiReport() {
    Grid& grid = frmRoiReport.sprRoiInf;
    const int regions = store.Rois.RoiNum;
    grid.SetSize(V::PEAK_COUNT, regions);
    for (int index = 0; index < regions; ++index) {
        UpdateRoi(store.Rois, store.SpectrumDatas, index);
        FillLine(index);
    }
    grid.Row = std::min(grid.Row, regions);
    if (grid.Row == 0) grid.Col = 0;
}

void ShowRoiReport() {
    frmRoiReport.WinNo = GetRealWinNo();
    RefreshRoiReport();
    frmRoiReport.Visible = true;
}

}  // namespace vael
