// The lattice view: from the fitted peaks of one graph to its cell and, for a marker, a pressure.
#include "lattice/frmpeakcal.h"

#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/operations.h"
#include "core/store.h"
#include "core/text.h"
#include "core/wholefile.h"
#include "lattice/latticecalccommands.h"
#include "lattice/latticeinputcommands.h"
#include "lattice/latticelistcommands.h"
#include "lattice/reflectionmarkcommands.h"
#include "toolkit/hand.h"

#include <algorithm>
#include <iterator>

namespace vael {
namespace {

using V = PeakCalView;

/// `Loading` is in force for as long as it lives, also where the opening faults.
class WhileLoading {
public:
    WhileLoading() { frmPeakCal.Loading = 1; }
    ~WhileLoading() { frmPeakCal.Loading = 0; }
    WhileLoading(const WhileLoading&) = delete;
    WhileLoading& operator=(const WhileLoading&) = delete;
};

PropertyRecord& Property() { return Item(store.PropertyRecords, frmPeakCal.Slot); }

bool IsDac() { return Property().SourceType == SOURCE_DAC; }

/// Where the slot's row stands now; false when it has none.
bool FollowSlot() {
    V& v = frmPeakCal;
    const int row = v.Slot < 0 ? -1 : RowOfSlot(v.Slot);
    if (row < 0) return false;
    v.GrpNo = Int16(row);
    v.WinNo = Int16(WindowOfRow(row));
    v.GraphName = Item(store.GraphList, row).Name;
    v.lblGraph.Caption = std::to_string(row + 1) + "  " + v.GraphName + ", " +
                         std::to_string(v.PeaksSeen.PeakNum) +
                         (v.PeaksSeen.PeakNum == 1 ? " peak" : " peaks");
    return true;
}

bool SameAxis(const DacAxis& a, const DacAxis& b) {
    return a.Offset == b.Offset && a.Slope == b.Slope && a.Lambda == b.Lambda;
}

/// Takes peaks and calibration as they are now; true when they are not those seen before.
bool LookAtGraph() {
    V& v = frmPeakCal;
    const PeakTable& peaks = Item(store.PeakTables, v.Slot);
    const ParamRecord& param = Property().Param;
    const bool angle = v.Cur2Theta != param.TwoTheta;
    const bool same = peaks == v.PeaksSeen && v.EgcSeen == param.EgcCoef && !angle &&
                      (!IsDac() || SameAxis(v.DacSeen, DacNow()));
    v.PeaksSeen = peaks;
    v.EgcSeen = param.EgcCoef;
    v.DacSeen = DacNow();
    if (angle) {
        v.Cur2Theta = param.TwoTheta;
        v.txt2Theta.Text = FormatNumber(param.TwoTheta, "#0.00000");
    }
    return !same;
}

void ShowPickup() {
    V& v = frmPeakCal;
    v.PickupSeen = settings.PickupRange();
    v.txtPickupRange.Text = FormatNumber(v.PickupSeen, "#0.0000");
}

void BeginLog() {
    V& v = frmPeakCal;
    if (!v.Log.Open(store.ProgramFolder)) {
        TellLattice("Without a log: " + v.Log.Trouble, true);
        Say("The lattice log cannot be written: " + v.Log.Trouble);
        return;
    }
    WriteLatticeLog(LogStart(v.FileName));
    WriteLatticeLog(LogProperty(Property().Param));
    WriteLatticeLog(LogPeaks(LatticePeaks(LatticeSource(), HandMadePeaks())));
}

/// The log goes where the user says, under the graph's name.
void KeepResult(const std::string& log) {
    const V& v = frmPeakCal;
    const auto chosen = TheDesk().SaveFile({.Title = "Result",
                                            .Filter = "Result File (*.csv)|*.csv",
                                            .FilterIndex = 1,
                                            .Folder = store.DataDrive + store.DataFolder,
                                            .Name = ResultName(v.GraphName)});
    if (!chosen) {
        TellStatus("The lattice log stays in " + log + " until the view is opened again.");
        return;
    }
    try {
        std::ifstream in = OpenToRead(log);
        const std::string bytes{std::istreambuf_iterator<char>(in), {}};
        ReplaceFile(chosen->Paths.front(), bytes);
        TellStatus("Saved the lattice result as " + chosen->Paths.front() + ".");
    } catch (const Fault& trouble) {
        TellStatus(std::string("The lattice result was not saved: ") + trouble.what(), true);
        Say("File Write Error");
    }
}

void cmdChangeWindowMode_Click() {
    V& v = frmPeakCal;
    v.WindowMode = v.WindowMode == 1 ? std::int16_t{0} : std::int16_t{1};
    if (v.WindowMode == 1)
        TopMost(v);
    else
        NoTopMost(v);
    TellLattice(v.WindowMode == 1 ? "This view stays on top of the others."
                                  : "This view goes behind the one that is clicked.");
}

void Tips(V& v) {
    v.optSelectMode[0].Tip = "Any crystal of the file, in any system; no pressure";
    v.optSelectMode[1].Tip = "The first seven crystals; the cell gives a pressure";
    v.cmbElement.Tip = "Crystal of crystal.dat whose reflections are looked for";
    v.cmbLatticeType.Tip = "System that the cell is refined in";
    for (TextBox& box : v.txtSeedConstant)
        box.Tip = "Cell that the reflections are looked for with: Å and degrees";
    for (TextBox& box : v.txtLatticeConstans) box.Tip = "Cell of the crystal file";
    v.txtPickupRange.Tip =
        "How far a peak may lie from a reflection, in Å of d. Rows that are "
        "matched stay so until the match is cleared";
    v.txt2Theta.Tip = "2 theta of this spectrum; a new one clears the match";
    v.cmbUnit.Tip = "Unit of the temperature";
    v.cmd2ThetaCalib.Tip =
        "Shows the 2 theta at which the calculated cubic cell would be the seed (Ctrl+T)";
    v.txtErrorBar[0].Tip = "Error of V/V0";
    v.txtErrorBar[1].Tip = "Pressure at V/V0 less its error";
    v.txtErrorBar[2].Tip = "Pressure at V/V0 and its error";
    v.cmdCal.Tip = "Matches the peaks and refines the cell (Enter)";
    v.tabLatticeFit.Tip = "Lists against the seed, or against the calculated cell";
    for (Grid* grid : {&v.sprPeakInf2, &v.sprPeakInf4})
        grid->Tip = "A click moves the cursor to the peak; the tick says whether it takes part";
    for (Grid* grid : {&v.sprPeakInf, &v.sprPeakInf3})
        grid->Tip = "A click moves the cursor to the peak";
    v.cmbColor.Tip = "Colour of the marks of reflections";
    v.cmdMI[0].Tip = "Marks the reflections in use on the plot (Ctrl+M)";
    v.cmdMI[1].Tip = "Takes the marks off both plots";
    v.Command1.Tip = "Writes a table of simulated pressures: an aid for work on the scales";
    v.cmdChangeWindowMode.Tip = "Keeps this view on top of the others, or lets it go";
    v.cmdDataSave.Tip = "Writes the calculation to CORVINE/LatticeFit.csv (Ctrl+S)";
    v.cmdExit.Tip = "Ends the log, asks where to keep it, and closes (Escape)";
    for (Button* dead : {&v.cmdCal2, &v.cmdReCal, &v.cmdPrint}) {
        dead->Withheld = true;
        dead->Tip = "has no action";
    }
}

void Heads(V& v) {
    const auto put = [](Grid& grid, std::initializer_list<const char*> heads) {
        int column = 0;
        for (const char* head : heads) grid.At(column++, 0).Text = head;
    };
    put(v.sprPeakInf, {"Peak No.", "Ch", "Energy", "DValue", "Intensity", "Amp", "FWHM(Ch)",
                       "FWHM(KeV)", "2Theta", "Fit Type"});
    put(v.sprPeakInf2, {"", "Ch", "keV", "d obs", "d seed", "dev", "(h k l)", "use", "type"});
    put(v.sprPeakInf4,
        {"", "Ch", "keV", "d obs", "d seed", "dev", "(h k l)", "use", "type", "d calc", "dd/d"});
    put(v.sprPeakInf3, {"", "Ch", "keV", "d obs", "d calc", "dd/d", "(h k l)", "type"});
    v.sprPeakInf.Widths = {8, 9, 9, 9, 10, 9, 9, 10, 9, 8};
    v.sprPeakInf2.Widths = {8, 9, 9, 9, 9, 12, 11, 5, 6};
    v.sprPeakInf4.Widths = {8, 9, 9, 9, 9, 12, 11, 5, 6, 9, 12};
    v.sprPeakInf3.Widths = {8, 9, 9, 9, 9, 12, 11, 6};
}

void Wire(V& v) {
    for (int index = 0; index < 2; ++index) {
        const auto i = static_cast<std::size_t>(index);
        v.optSelectMode[i].Click = [index] { optSelectMode_Click(index); };
        v.cmdMI[i].Click = [index] { cmdMI_Click(index); };
    }
    v.cmbElement.Click = cmbElement_Click;
    v.cmbLatticeType.Click = cmbLatticeType_Click;
    for (int index = 0; index < 6; ++index)
        Item(v.txtSeedConstant, index).Leave = [index] { return txtSeedConstant_Leave(index); };
    v.txtPickupRange.Leave = txtPickupRange_Leave;
    v.txt2Theta.Leave = txt2Theta_Leave;
    v.tabLatticeFit.Click = tabLatticeFit_Click;
    v.cmbUnit.Click = [] {
        frmPeakCal.lblTempUnit.Visible = frmPeakCal.cmbUnit.Index == TEMPERATURE_CELSIUS;
    };
    for (Grid* grid : {&v.sprPeakInf, &v.sprPeakInf2, &v.sprPeakInf3, &v.sprPeakInf4})
        grid->CellClick = [grid](int, int row) { PeakLine_Click(*grid, row); };
    for (Grid* grid : {&v.sprPeakInf2, &v.sprPeakInf4})
        grid->CellEdit = [grid](int column, int row) {
            if (column == V::USE) UseColumn_Edit(*grid, row);
        };
    v.cmdCal.Click = cmdCal_Click;
    v.cmd2ThetaCalib.Click = cmd2ThetaCalib_Click;
    v.cmdDataSave.Click = DataSave;
    v.Command1.Click = Command1_Click;
    v.cmdChangeWindowMode.Click = cmdChangeWindowMode_Click;
    v.cmdExit.Click = EndPeakCal;
    v.Closing = EndPeakCal;
    v.KeyPreview = EnterEscape(cmdCal_Click, EndPeakCal);
    v.cmdDataSave.Shortcut = "Ctrl+S";
    v.cmd2ThetaCalib.Shortcut = "Ctrl+T";
    v.cmdMI[0].Shortcut = "Ctrl+M";
}

}  // namespace

PeakCalView::PeakCalView() : View("frmPeakCal", "Lattice Caluculate") {
    for (int system = SYSTEM_CUB; system <= SYSTEM_TRI; ++system)
        cmbLatticeType.Items.push_back(SystemListText(system));
    cmbLatticeType.Enabled = false;  // a marker has its own system
    for (auto* boxes : {&txtLatticeConstans, &txtLatticeLength})
        for (TextBox& box : *boxes) box.ReadOnly = true;
    for (TextBox& box : txtErrorBar) box.ReadOnly = true;
    for (TextBox* box : {&txtVol, &txtVolPerVol0, &txtPressure, &txtExpected2theta})
        box->ReadOnly = true;
    Tips(*this);
    Heads(*this);
    vael::Wire(*this);
}

void TellLattice(const std::string& sentence, bool fault) {
    frmPeakCal.lblTold.Caption = sentence;
    TellStatus(sentence, fault);
}

void WriteLatticeLog(const std::string& utf8) {
    LatticeLog& log = frmPeakCal.Log;
    if (log.Write(utf8)) return;
    TellLattice("The log ended: " + log.Trouble, true);
    Say("The lattice log cannot be written: " + log.Trouble);
}

void InitForm() {
    V& v = frmPeakCal;
    const WhileLoading loading;
    const int row = GraphNo();
    const GraphEntry& entry = Item(store.GraphList, row);
    // Until the crystals are read nothing is seen of it.
    CrystalTable crystals = ReadCrystalFile(store.ProgramFolder + "/crystal.dat");
    // 1. Tabs, unit, mode.
    v.tabLatticeFit.Index = 0;
    tabLatticeFit_Click();
    v.cmbUnit.Index = TEMPERATURE_CELSIUS;
    Set(v.optSelectMode[MODE_MARKER]);
    // 2. The graph.
    v.Slot = entry.DataNo;
    v.FileName = Property().FileName.Trimmed();
    v.txt2Theta.Enabled = v.cmd2ThetaCalib.Enabled = !IsDac();
    // 3. Its peaks, the crystals, the range.
    ClearLatticeMatch();
    latticeState.UseListValid = FALSE_WORD;
    (void)LookAtGraph();
    (void)FollowSlot();
    v.Cur2Theta = Property().Param.TwoTheta;
    v.txt2Theta.Text = FormatNumber(v.Cur2Theta, "#0.00000");
    v.txtTemp.Tip = "Temperature of the sample; the file says " +
                    FormatNumber(Property().Param.Temperature, "0.0") + " ℃";
    CopyPeakInfo();
    latticeState.Table = std::move(crystals);
    FillCrystalList();
    ShowPickup();
    // 4. The log, and the window.
    v.Visible = true;
    v.WindowMode = 1;
    TopMost(v);
    TellLattice("The lattice view is open on row " + std::to_string(row + 1) +
                ": choose a crystal, then execute.");
    BeginLog();
}

void ShowPeakCal() {
    V& v = frmPeakCal;
    if (NothingThere()) return;
    if (!v.Visible) {
        InitForm();
        return;
    }
    if (v.Slot == DataNo()) {
        TellLattice("The lattice view is open on this row already.");
        return;
    }
    EndPeakCal();
    // The view is made anew once this command has returned, and opens then.
    Afterwards([] { RunEvent(frmVaelAna, InitForm); });
}

void RefreshPeakCal() {
    V& v = frmPeakCal;
    if (!v.Visible || v.Loading == 1) return;
    if (!FollowSlot()) {
        v.Visible = false;
        // The running command comes first: this one asks a question.
        Afterwards([] { RunEvent(frmPeakCal, EndPeakCal); });
        return;
    }
    if (v.PickupSeen != settings.PickupRange()) ShowPickup();
    const double angle = v.Cur2Theta;
    if (!LookAtGraph()) return;
    (void)FollowSlot();
    ClearLatticeMatch();
    CopyPeakInfo();
    if (angle != v.Cur2Theta) WriteLatticeLog(LogChanged(LogChange::TwoTheta));
}

void EndPeakCal() {
    V& v = frmPeakCal;
    if (v.Slot < 0) return;
    const bool logged = v.Log.IsOpen();
    const std::string log = v.Log.Path();
    NoTopMost(v);
    WriteLatticeLog(LogEnd(v.FileName));
    v.Log.Close();
    if (logged) KeepResult(log);
    v.Slot = -1;
    Unload(v);
}

}  // namespace vael
