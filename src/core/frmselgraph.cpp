// The list of the graph rows: which are shown, which is current, in which colour, of what sample.
#include "core/frmselgraph.h"

#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/store.h"
#include "toolkit/desk.h"

namespace vael {
namespace {

using Kind = Grid::CellKind;

// Names of the drawings.
constexpr const char* MARKED = "picAllow";
constexpr const char* UNMARKED = "picNothing";
constexpr const char* PIN_ON = "picPinOn";
constexpr const char* PIN_OFF = "picPinOff";

Grid::Cell& CellOf(int column, int row) { return frmSelGraph.sprGraphSel.At(column, row + 1); }

/// A click on the tick: the row shows, or not, in the window where it stands.
void TickRow(int row) {
    const GraphEntry& entry = Item(store.GraphList, row);
    if (entry.State == 0) {
        CellOf(SelGraphView::SHOWN, row).Ticked = false;
        return;
    }
    const bool ticked = GraphSel_Check(row);
    const int win = frmVaelAna.ckbExpand.Value != 0 ? 0 : entry.WinNo;
    ChgValue_chkGrp(win, row, ticked ? 1 : 0, true);
    // The tick alone makes no row the current one, so the marker stays with that.
    if (ticked) ChangeCurChek(GetGrpNo());
}

void sprGraphSel_CellEdit(int column, int row) {
    if (column == SelGraphView::SHOWN) TickRow(row - 1);
}

void sprGraphSel_CellClick(int column, int row) {
    if (column < SelGraphView::NAME || Item(store.GraphList, row - 1).State == 0) return;
    Change_cboGrphSel(GetRealWinNo(), row - 1);
}

void cmdCut_Click() {
    const int row = frmSelGraph.sprGraphSel.Row - 1;
    if (row < 0 || Item(store.GraphList, row).State == 0) {
        TellStatus("There is no graph in this row.");
        return;
    }
    const std::string name = Item(store.GraphList, row).Name;
    const int total = store.GraphTotal;
    DeleteGraph(row);
    for (int win = 0; win < WINDOW_COUNT; ++win) ChgAllCaption_chkGrp(win, GetGrpNo());
    if (store.GraphTotal < total) TellStatus("Closed " + name + ".");
}

void cmdOK_Click() { frmSelGraph.Visible = false; }

void chkFix_Click() {
    SelGraphView& v = frmSelGraph;
    const bool fixed = v.chkFix.Value != 0;
    v.picPin.Drawing = fixed ? PIN_ON : PIN_OFF;
    if (fixed)
        TopMost(v);
    else
        NoTopMost(v);
}

}  // namespace

SelGraphView::SelGraphView() : View("frmSelGraph", "Graph Select") {
    const Column heads[] = {SHOWN, MARKER, SWATCH, NAME, SAMPLE};
    const char* const words[] = {"Show", "", "", "Name", "Sample"};
    for (std::size_t k = 0; k < std::size(heads); ++k) sprGraphSel.At(heads[k], 0).Text = words[k];
    sprGraphSel.Widths = {4, 5, 3, 4, 20, 24};
    sprGraphSel.CellEdit = sprGraphSel_CellEdit;
    sprGraphSel.CellClick = sprGraphSel_CellClick;
    chkFix.Tip = "Hold this window above the others";
    chkFix.Click = chkFix_Click;
    picPin.Drawing = PIN_OFF;
    cmdOpen.Tip = "Open spectra into the rows from 1 on";
    cmdOpen.Click = FileLoad;
    cmdCut.Tip = "Close the graph of the chosen row";
    cmdCut.Click = cmdCut_Click;
    cmdOK.Click = cmdOK_Click;
    for (int row = 1; row <= sprGraphSel.Rows(); ++row) {
        sprGraphSel.At(0, row).Text = std::to_string(row);
        sprGraphSel.At(MARKER, row).Kind = Kind::Picture;
        sprGraphSel.At(MARKER, row).Text = UNMARKED;
    }
}

void GraphSel_Repl() {
    for (int row = 0; row < GRAPH_COUNT; ++row) GraphSel_Delete(row);
    for (int row = 0; row < GRAPH_COUNT; ++row)
        if (Item(store.GraphList, row).State > 0) GraphSel_Insert(row);
    ChangeCurChek(GetGrpNo());
}

void GraphSel_Delete(int row) {
    for (const auto column :
         {SelGraphView::SHOWN, SelGraphView::SWATCH, SelGraphView::NAME, SelGraphView::SAMPLE})
        CellOf(column, row) = Grid::Cell{};
    CellOf(SelGraphView::MARKER, row).Text = UNMARKED;
}

void GraphSel_Insert(int row) {
    const GraphEntry& entry = Item(store.GraphList, row);
    CellOf(SelGraphView::SHOWN, row) = {
        .Text = "", .Kind = Kind::Tick, .Ticked = entry.Visible != FALSE_WORD};
    CellOf(SelGraphView::SWATCH, row) = {.Text = "", .Kind = Kind::Swatch, .Fill = entry.Color};
    CellOf(SelGraphView::NAME, row).Text = entry.Name;
    CellOf(SelGraphView::SAMPLE, row).Text =
        Item(store.PropertyRecords, entry.DataNo).SampleName.Trimmed();
}

bool GraphSel_Check(int row) {
    return std::as_const(frmSelGraph.sprGraphSel).At(SelGraphView::SHOWN, row + 1).Ticked;
}

void ChangeCurChek(int row) {
    for (int n = 0; n < GRAPH_COUNT; ++n) {
        const bool current = n == row && Item(store.GraphList, n).State > 0;
        CellOf(SelGraphView::MARKER, n).Text = current ? MARKED : UNMARKED;
    }
}

void cmdMnSelGrp_Click() {
    GraphSel_Repl();
    frmSelGraph.sprGraphSel.Row = GetGrpNo() + 1;
    frmSelGraph.sprGraphSel.Col = SelGraphView::NAME;
    frmSelGraph.Visible = true;
}

}  // namespace vael
