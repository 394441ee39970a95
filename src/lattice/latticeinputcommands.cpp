// What the user sets in the lattice view: mode, crystal, system, seeds, pick-up range, angle.
#include "lattice/latticeinputcommands.h"

#include "core/cursors.h"
#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/store.h"
#include "core/text.h"
#include "core/windows.h"
#include "lattice/frmpeakcal.h"
#include "lattice/latticelistcommands.h"
#include "toolkit/hand.h"

#include <algorithm>

namespace vael {
namespace {

using V = PeakCalView;

constexpr int FIRST_NAMES = 10;  // crystals in the list when the view opens
constexpr int MARKERS = 7;       // lines from this one on are no markers
constexpr const char* CELL_FORMAT = "#0.000000";

/// The crystal's cell as its system has it: what the system ties or fixes comes from that.
Cell CellOfSystem(const CrystalRecord& crystal, int system) {
    const Cell cell = crystal.ReferenceCell();
    switch (system) {
        case SYSTEM_CUB: return {cell[0], cell[0], cell[0], 90.0, 90.0, 90.0};
        case SYSTEM_TET: return {cell[0], cell[0], cell[2], 90.0, 90.0, 90.0};
        case SYSTEM_HEX: return {cell[0], cell[0], cell[2], 90.0, 90.0, 120.0};
        case SYSTEM_ORT: return {cell[0], cell[1], cell[2], 90.0, 90.0, 90.0};
        case SYSTEM_MON: return {cell[0], cell[1], cell[2], 90.0, cell[4], 90.0};
        default: return cell;
    }
}

bool IsSystem(int system) { return system >= SYSTEM_CUB && system <= SYSTEM_TRI; }

const CrystalRecord& Crystal() { return Item(latticeState.Table.Crystals, SelectedCrystal()); }

/// The cell into the boxes of the crystal and of the seeds.
void FillCells(int system) {
    V& v = frmPeakCal;
    const Cell cell = CellOfSystem(Crystal(), system);
    for (std::size_t i = 0; i < cell.size(); ++i) {
        const std::string text = FormatNumber(cell[i], CELL_FORMAT);
        v.txtLatticeConstans[i].Text = text;
        v.txtSeedConstant[i].Text = text;
        v.SeedCell[i] = Number(text);
        latticeState.FitData.CurrentSeed[i] = v.SeedCell[i];
    }
}

/// Every crystal has a line, that of its number.
void FillAllNames() {
    V& v = frmPeakCal;
    const CrystalTable& table = latticeState.Table;
    v.cmbElement.Items.clear();
    v.CrystalOf.clear();
    for (std::int16_t i = 0; i < table.CrystalCount; ++i) {
        v.cmbElement.Items.push_back(Item(table.Crystals, i).Name);
        v.CrystalOf.push_back(i);
    }
}

void SelectLine(int line) {
    V& v = frmPeakCal;
    if (line < static_cast<int>(v.cmbElement.Items.size())) Select(v.cmbElement, line);
}

/// What a mode lets choose.
void ApplyMode(int index) {
    V& v = frmPeakCal;
    if (index == MODE_SAMPLE) {
        v.cmbElement.Enabled = true;
        v.cmbLatticeType.Enabled = true;
        v.txtPressure.Enabled = false;
        for (const std::size_t i : {std::size_t{1}, std::size_t{2}})
            v.txtSeedConstant[i].Enabled = v.lblSeed[i].Enabled = true;
        for (std::size_t i = 1; i < 6; ++i)
            v.txtSeedConstant[i].Visible = v.txtLatticeLength[i].Visible = true;
        FillAllNames();
        SelectLine(0);
        return;
    }
    v.cmbLatticeType.Enabled = false;
    v.cmbElement.Enabled = true;
    v.txtPressure.Enabled = true;
    for (std::size_t i = MARKERS; i < v.cmbElement.Items.size(); ++i) v.cmbElement.Items[i].clear();
    SelectLine(1);
}

/// The first handler of the list of crystals. False where the selection was not accepted.
bool TakeCrystal() {
    V& v = frmPeakCal;
    const int line = v.cmbElement.Index;
    if (v.optSelectMode[MODE_MARKER].Value) {
        if (line >= MARKERS) {
            v.cmbElement.Index = v.SelElement;
            TellLattice("In the mode Pressure Marker the first seven crystals can be chosen.");
            return false;
        }
        // The first crystal is a sample: the first marker stands behind it.
        if (line == 0 && v.SelElement < 0 && v.cmbElement.Items.size() > 1) {
            Select(v.cmbElement, 1);
            return false;  // that selection has done it all
        }
    }
    if (SelectedCrystal() < 0) return false;
    const int system = Crystal().System == SYSTEM_ANY ? int{SYSTEM_CUB} : int{Crystal().System};
    v.Loading = 1;
    Select(v.cmbLatticeType, IsSystem(system) ? system : -1);
    v.Loading = 0;
    v.SelLattice = Int16(v.cmbLatticeType.Index);
    if (!IsSystem(system)) {
        TellLattice("The system " + std::to_string(system) +
                    " of this crystal is none: choose one in the mode Sample.");
        return true;
    }
    FillCells(system);
    return true;
}

/// Slots whose angle the box sets: the view's own, and the current graph of the other window.
std::vector<int> SlotsOfAngle() {
    const V& v = frmPeakCal;
    std::vector<int> slots{v.Slot};
    const int other = 1 - v.WinNo;
    const int row = std::max(0, Item(frmVaelAna.cboGrphSel, other).Index);
    const GraphEntry& entry = Item(store.GraphList, row);
    if (!Expanded() && entry.State > 0 && entry.WinNo == other && entry.DataNo != v.Slot)
        slots.push_back(entry.DataNo);
    return slots;
}

void ShowNewAngle() {
    HidePeakMemo();
    if (Item(store.GraphList, GraphNo()).State > 0)
        ShowAngle(Item(store.PropertyRecords, DataNo()).Param.TwoTheta);
    ShowCursorValues();
    XScaleDraw();
}

}  // namespace

void FillCrystalList() {
    V& v = frmPeakCal;
    const CrystalTable& table = latticeState.Table;
    v.cmbElement.Items.clear();
    v.CrystalOf.clear();
    for (std::int16_t i = 0; i < std::min<int>(table.CrystalCount, FIRST_NAMES); ++i) {
        const std::string& name = Item(table.Crystals, i).Name;
        if (Trim(name).empty()) continue;
        v.cmbElement.Items.push_back(name);
        v.CrystalOf.push_back(i);
    }
    v.cmbElement.Index = -1;
}

std::int16_t SelectedCrystal() {
    const V& v = frmPeakCal;
    const int line = v.cmbElement.Index;
    if (line < 0 || line >= static_cast<int>(v.CrystalOf.size())) return -1;
    return Item(v.CrystalOf, line);
}

void optSelectMode_Click(int index) {
    V& v = frmPeakCal;
    if (v.Loading == 1 || index == v.SelMode) return;  // a click on what is chosen is none
    ApplyMode(index);
    v.SelMode = Int16(index);
    ClearLatticeMatch();
    WriteLatticeLog(LogChanged(LogChange::Mode));
    TellLattice(index == MODE_SAMPLE ? "Sample: any crystal, no pressure."
                                     : "Pressure Marker: the cell gives a pressure.");
}

void cmbElement_Click() {
    V& v = frmPeakCal;
    if (v.Loading == 1) return;
    if (!TakeCrystal() || v.cmbElement.Index == v.SelElement) return;
    v.SelElement = Int16(v.cmbElement.Index);
    ClearLatticeMatch();
    WriteLatticeLog(LogElement(Crystal()));
    if (v.SelLattice >= 0) TellLattice(Crystal().Name + " is chosen.");
}

void cmbLatticeType_Click() {
    V& v = frmPeakCal;
    if (v.Loading == 1 || v.cmbLatticeType.Index == v.SelLattice) return;
    v.SelLattice = Int16(v.cmbLatticeType.Index);
    ClearLatticeMatch();
    WriteLatticeLog(LogChanged(LogChange::LatticeType));
    if (!IsSystem(v.SelLattice) || SelectedCrystal() < 0) return;
    FillCells(v.SelLattice);
    TellLattice("The system is " + SystemListText(v.SelLattice) + ".");
}

bool txtSeedConstant_Leave(int index) {
    V& v = frmPeakCal;
    TextBox& box = Item(v.txtSeedConstant, index);
    const auto value = ParseNumber(box.Text);
    if (!value) {
        TellLattice("\"" + box.Text + "\" is no number: a seed is one.");
        return false;
    }
    box.Text = FormatNumber(*value, CELL_FORMAT);
    if (*value == Item(v.SeedCell, index)) return true;  // the match stays
    Item(v.SeedCell, index) = *value;
    WriteLatticeLog(LogChanged(LogChange::Seed));
    ClearLatticeMatch();
    Item(latticeState.FitData.CurrentSeed, index) = *value;
    TellLattice("The seed " + Item(v.lblSeed, index).Caption + " is " + box.Text + ".");
    return true;
}

bool txtPickupRange_Leave() {
    V& v = frmPeakCal;
    const auto value = ParseNumber(Trim(v.txtPickupRange.Text));
    if (!value) {
        TellLattice("\"" + v.txtPickupRange.Text + "\" is no number: the pick-up range is one.");
        return false;
    }
    // Rows that are matched already stay so, whatever the range is now: only a new match by
    // another crystal, seed, mode or angle lets them go.
    settings.PickupRange() = *value;
    v.PickupSeen = *value;
    return true;
}

bool txt2Theta_Leave() {
    V& v = frmPeakCal;
    const auto value = ParseNumber(v.txt2Theta.Text);
    if (!value) {
        TellLattice("\"" + v.txt2Theta.Text + "\" is no number: 2 theta is one.");
        return false;
    }
    v.txt2Theta.Text = FormatNumber(*value, "#0.00000");
    if (*value == v.Cur2Theta) return true;
    ClearLatticeMatch();
    v.Cur2Theta = *value;
    const std::vector<int> slots = SlotsOfAngle();
    for (const int slot : slots) Item(store.PropertyRecords, slot).Param.TwoTheta = *value;
    WriteLatticeLog(LogChanged(LogChange::TwoTheta));
    ShowNewAngle();
    CopyPeakInfo();
    TellLattice("2 theta is " + v.txt2Theta.Text + " degrees" +
                (slots.size() > 1
                     ? ", also for row " + std::to_string(RowOfSlot(slots.back()) + 1) + "."
                     : std::string(".")));
    return true;
}

}  // namespace vael
