// The graph arithmetic view: (G1 op1 k1) op2 (G2 op3 k2), shown at once.
#include "core/frmgrpcalc.h"

#include "analysis/grapharith.h"
#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/store.h"
#include "core/windows.h"
#include "toolkit/hand.h"

#include <array>
#include <memory>

namespace vael {
namespace {

using V = GrpCalcView;

constexpr int NO_SECOND_TERM = 4;  // the blank item of the middle list

std::vector<std::string> RowItems() {
    std::vector<std::string> items;
    for (int row = 1; row <= GRAPH_COUNT; ++row) items.push_back("G" + std::to_string(row));
    return items;
}

/// The row that an item names: the digits behind its first character, less 1.
int RowOf(const ListBox& list) {
    const std::string text = list.Text();
    return text.size() < 2 ? -1 : std::stoi(text.substr(1)) - 1;
}

bool IsFilled(int row) { return row >= 0 && Item(store.GraphList, row).State != 0; }

/// The counts of the chosen row; an empty one has no channels.
const SpectrumData& Chosen(std::size_t term) {
    static const SpectrumData none{};
    const int row = RowOf(frmGrpCalc.cmbGraph[term]);
    return IsFilled(row) ? Item(store.SpectrumDatas, GetGraphDataNo(row)) : none;
}

bool HasSecondTerm() { return frmGrpCalc.cmbOpe2.Index != NO_SECOND_TERM; }

void ShowTerms() {
    V& v = frmGrpCalc;
    v.fra2nd.Visible = HasSecondTerm();
    for (std::size_t term = 0; term < 2; ++term) {
        const int row = RowOf(v.cmbGraph[term]);
        v.lblName[term].Caption = IsFilled(row) ? Item(store.GraphList, row).Name : "empty";
    }
}

void cmbOpe2_Click() { ShowTerms(); }

void TellResult() {
    const SpectrumData& result = Item(store.SpectrumDatas, 0);
    const int row = RowOfSlot(0);
    if (result.DataNo <= 0)
        TellStatus("The result has no channels: the first graph is empty.");
    else if (row < 0)
        TellStatus("The result is drawn; it has no row of its own.");
    else
        TellStatus("The result is drawn in place of row " + std::to_string(row + 1) +
                   "; its file is as it was.");
}

/// The result always lands in slot 0, replacing what it held. It gets no new row, no name and no
/// change of state: it is a view of the moment, and so it is kept.
void cmdCalc_Click() {
    const V& v = frmGrpCalc;
    SpectrumData& result = Item(store.SpectrumDatas, 0);
    if (HasSecondTerm()) {
        const auto buffers = std::make_unique<std::array<SpectrumData, 2>>();
        ApplyConstant(v.cmbOpe1.Index, Chosen(0), v.ImNumber1.Value, (*buffers)[0]);
        ApplyConstant(v.cmbOpe3.Index, Chosen(1), v.ImNumber2.Value, (*buffers)[1]);
        CombineGraphs(v.cmbOpe2.Index, (*buffers)[0], (*buffers)[1], result);
    } else {
        ApplyConstant(v.cmbOpe1.Index, Chosen(0), v.ImNumber1.Value, result);
    }
    const int window = frmVaelAna.ActiveWin;
    if (result.DataNo > 0)
        Engine().RegisterGraph(window, 0, result.Count, result.DataNo, Item(store.ColorTable, 0));
    else
        Engine().WithdrawGraph(window, 0);
    RedrawWindow(window);
    TellResult();
}

void cmdOK_Click() { frmGrpCalc.Visible = false; }

}  // namespace

GrpCalcView::GrpCalcView()
    : View("frmGrpCalc", "Graph Calucration"),
      cmbGraph(*this, "cmbGraph", RowItems(), 0),
      lblName(*this, "lblName", std::string()) {
    cmbOpe2.Click = cmbOpe2_Click;
    for (ListBox& list : cmbGraph) list.Click = ShowTerms;
    cmdCalc.Click = cmdCalc_Click;
    cmdOK.Click = cmdOK_Click;
    cmdCalc.Tip = "Calculates and draws the result (Enter)";
    cmdOK.Tip = "Closes this view (Esc)";
    fra2nd.Visible = false;
    KeyPreview = EnterEscape(cmdCalc_Click, cmdOK_Click);
}

void ShowGrpCalc() {
    V& v = frmGrpCalc;
    if (!v.Visible && GraphNo() >= 0) v.cmbGraph[0].Index = GraphNo();
    v.Visible = true;
    ShowTerms();
}

void RefreshGrpCalc() {
    if (frmGrpCalc.Visible) ShowTerms();
}

}  // namespace vael
