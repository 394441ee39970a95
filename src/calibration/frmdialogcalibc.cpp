// The energy calibration: spectra of known lines, the table of channels and energies, the curve.
#include "calibration/frmdialogcalibc.h"

#include "calibration/calibfilecommands.h"
#include "calibration/calibreport.h"
#include "calibration/frmcalibcurv.h"
#include "core/cursors.h"
#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/operations.h"
#include "core/params.h"
#include "core/store.h"
#include "core/text.h"
#include "core/wholefile.h"
#include "lattice/frmatom.h"
#include "lattice/frmelement.h"
#include "toolkit/desk.h"

#include <algorithm>

namespace vael {
namespace {

using V = DialogCalibCView;

constexpr int LEAST_ROWS = 20;       // that the table shows
constexpr double MOST_ENERGY = 1e6;  // keV

std::string Counted(std::size_t number, const std::string& noun) {
    return std::to_string(number) + " " + noun + (number == 1 ? "" : "s");
}

// --- the table -----------

std::string& PairText(int column, int row) {
    auto& pairs = frmDialogCalibC.Pairs;
    if (static_cast<int>(pairs.size()) < row) pairs.resize(static_cast<std::size_t>(row));
    return Item(Item(pairs, row - 1), column - 1);
}

bool Empty(const std::array<std::string, 2>& pair) { return pair[0].empty() && pair[1].empty(); }

void FillPairs() {
    V& v = frmDialogCalibC;
    Grid& grid = v.vaSpread1;
    while (!v.Pairs.empty() && Empty(v.Pairs.back())) v.Pairs.pop_back();
    const int filled = static_cast<int>(v.Pairs.size());
    grid.SetSize(V::ENERGY, std::max({LEAST_ROWS, filled + 1, grid.Row}));
    for (int row = 1; row <= grid.Rows(); ++row) {
        grid.At(0, row).Text = std::to_string(row);
        for (int column = V::CHANNEL; column <= V::ENERGY; ++column) {
            Grid::Cell& cell = grid.At(column, row);
            cell.Editable = true;
            cell.Text = row <= filled ? Item(Item(v.Pairs, row - 1), column - 1) : "";
        }
    }
}

/// After a change of the table or of the kind of curve what stands under them is no more true.
void Outdate() {
    V& v = frmDialogCalibC;
    if (!v.lblFit.Caption.empty()) v.lblFit.Caption = "Changed since \"Calculate\".";
}

void GoTo(int row) {
    Grid& grid = frmDialogCalibC.vaSpread1;
    grid.Row = std::max(row, 1);
    grid.Col = std::clamp<int>(grid.Col, V::CHANNEL, V::ENERGY);
    FillPairs();
}

bool HasChannel(int row) {
    const auto& pairs = frmDialogCalibC.Pairs;
    return row <= static_cast<int>(pairs.size()) && !Item(pairs, row - 1)[0].empty();
}

/// The row of the table with the same channel as another one, or 0.
int RowOfSameChannel(int row) {
    const auto& pairs = frmDialogCalibC.Pairs;
    const auto number = ParseNumber(Item(pairs, row - 1)[0]);
    for (int other = 1; number && other <= static_cast<int>(pairs.size()); ++other)
        if (other != row && ParseNumber(Item(pairs, other - 1)[0]) == number) return other;
    return 0;
}

/// Why a text cannot stand in a column; empty where it can.
std::string Refusal(int column, const std::string& text) {
    if (text.empty()) return {};
    const auto number = ParseNumber(text);
    if (!number) return "\"" + text + "\" is no number.";
    if (column == V::CHANNEL && (*number <= 0.0 || *number > MAX_CHANNELS))
        return "Channels are 1 to " + std::to_string(MAX_CHANNELS) + ".";
    if (column == V::ENERGY && (*number < 0.0 || *number > MOST_ENERGY))
        return "An energy in keV is 0 or more, and at most 1000000.";
    return {};
}

/// The told words about a row that took a text.
std::string Taken(int column, int row, const std::string& what) {
    const int same = column == V::CHANNEL ? RowOfSameChannel(row) : 0;
    return what + " in row " + std::to_string(row) +
           (same > 0 ? ", the same channel as in row " + std::to_string(same) + "." : ".");
}

void vaSpread1_CellEdit(int column, int row) {
    const std::string typed = Trim(std::as_const(frmDialogCalibC.vaSpread1).At(column, row).Text);
    const std::string refusal = Refusal(column, typed);
    if (!refusal.empty()) {
        FillPairs();
        TellStatus(refusal + " Row " + std::to_string(row) + " stays as it was.");
        return;
    }
    std::string& text = PairText(column, row);
    if (text != typed) Outdate();
    text = typed;
    if (column == V::ENERGY && !typed.empty()) {
        // A complete row leads on: to the energy of the next one, or to its channel where it has
        // none, so that typing and fitting can take turns.
        frmDialogCalibC.vaSpread1.Col = HasChannel(row + 1) ? V::ENERGY : V::CHANNEL;
        GoTo(row + 1);
    }
    TellStatus(typed.empty() ? "A cell of row " + std::to_string(row) + " was emptied."
                             : Taken(column, row, typed + (column == V::ENERGY ? " keV" : "")));
    FillPairs();
}

/// Writes a text into the current row and goes to the next one; false where the user keeps what is
/// there.
bool Enter(int column, const std::string& text, const std::string& what) {
    const int row = std::max(frmDialogCalibC.vaSpread1.Row, 1);
    if (!PairText(column, row).empty() && !AskYesNo("Over write?")) {
        FillPairs();
        return false;
    }
    PairText(column, row) = text;
    Outdate();
    TellStatus(Taken(column, row, what));
    GoTo(row + 1);
    return true;
}

void cmdCsrSet_Click() { EnterChannel(CentreAtCursor()); }

void cmdDelTable_Click() {
    V& v = frmDialogCalibC;
    const int row = v.vaSpread1.Row;
    if (row < 1 || row > static_cast<int>(v.Pairs.size())) {
        TellStatus("There is nothing in this line.");
        return;
    }
    v.Pairs.erase(v.Pairs.begin() + (row - 1));
    Outdate();
    FillPairs();
    TellStatus("Line " + std::to_string(row) + " was deleted.");
}

/// The rows that count: channels from 0, energies, and where each stands in the table.
struct Points {
    std::vector<double> X, Y;
    std::vector<int> Row;
    int Half = 0;  // rows with one cell of the two
    [[nodiscard]] int Count() const { return static_cast<int>(X.size()); }
};

Points TablePoints() {
    Points out;
    int row = 0;
    for (const auto& pair : frmDialogCalibC.Pairs) {
        ++row;
        const auto channel = ParseNumber(pair[0]);
        const auto energy = ParseNumber(pair[1]);
        if (channel.has_value() != energy.has_value()) ++out.Half;
        if (!channel || !energy) continue;
        out.X.push_back(*channel - 1.0);
        out.Y.push_back(*energy);
        out.Row.push_back(row);
    }
    return out;
}

// --- the curve -----------

constexpr std::size_t SQUARE = 0;
constexpr std::size_t LINEAR = 1;

CalibCurveKind KindOfCurve() {
    return frmDialogCalibC.optCnst[LINEAR].Value ? CalibCurveKind::Line : CalibCurveKind::Parabola;
}

CalibConstants Displayed() {
    CalibConstants constants{};
    for (std::size_t k = 0; k < constants.size(); ++k)
        constants[k] = frmDialogCalibC.ImConst[k].Value;
    return constants;
}

std::string Halves(const Points& points) {
    if (points.Half == 0) return {};
    return "; " + Counted(static_cast<std::size_t>(points.Half), "row") + " incomplete";
}

/// How well the curve goes through its points, for the line under the table.
std::string Quality(const Points& points, CalibCurveKind kind, const CalibConstants& constants) {
    const CalibResiduals off = ResidualsOf(kind, constants, points.X, points.Y, points.Count());
    const double worst = RoundHalfAway(off.WorstBy, 1);
    std::string text =
        "n = " + std::to_string(points.Count()) + ", rms " + FormatNumber(off.Rms, "0.0") + " eV";
    if (worst != 0.0)
        text += ", worst row " + std::to_string(Item(points.Row, off.Worst)) + ": " +
                (worst > 0.0 ? "+" : "") + FormatNumber(worst, "0.0") + " eV";
    return text + Halves(points);
}

void cmdCalEng_Click() {
    V& v = frmDialogCalibC;
    const Points points = TablePoints();
    if (points.Count() == 0) {
        TellStatus("There is no row with a channel and an energy.");
        return;
    }
    const CalibCurveKind kind = KindOfCurve();
    const bool line = kind == CalibCurveKind::Line;
    CalibConstants constants = Displayed();
    v.FitFailed = FitCalibration(kind, points.X, points.Y, points.Count(), constants) != 0;
    DispKeisu(constants);
    if (v.FitFailed) {
        v.lblFit.Caption = "n = " + std::to_string(points.Count()) + ": no " +
                           (line ? "line; it needs two" : "parabola; it needs three") +
                           " different channels" + Halves(points);
        TellStatus(std::string("No ") + (line ? "line" : "parabola") +
                   " goes through these rows: the constants in force stay.");
        return;
    }
    v.lblFit.Caption = Quality(points, kind, constants);
    TellStatus("Calculated from " + Counted(points.X.size(), "row") + ".");
}

void cmdCurve_Click() {
    const CalibCurveKind kind = KindOfCurve();
    const CalibConstants constants = Displayed();
    Points points = TablePoints();
    // Points and curve stand on the channels of the constants: those of a line count from 1.
    double highest = CalibEnergy(constants, store.SpanCh - 1.0);
    for (int i = 0; i < points.Count(); ++i) {
        Item(points.X, i) += ChannelBase(kind);
        highest = std::max(highest, Item(points.Y, i));
    }
    frmCalibCurv.DrawGraph(points.Count(), points.X, points.Y, store.SpanCh, highest, constants,
                           {CalibLabel(kind, constants)});
    TellStatus("The curve is shown with " + Counted(points.X.size(), "point") + ".");
}

// --- the ways out -----------

/// The report, where the table has a row. Message with its place, or why there is none.
void WriteReport() {
    if (TablePoints().Count() == 0) return;
    const std::string path = store.ProgramFolder + PATH_SEPARATOR + CALIB_REPORT;
    try {
        ReplaceFile(path, ToCp932(CalibReport(frmDialogCalibC.Files, KindOfCurve(), Displayed())));
    } catch (const Fault& trouble) {
        TellStatus(std::string("Not saved: ") + trouble.what(), true);
        Say(std::string(CALIB_REPORT) + " was not written. " + trouble.what());
        return;
    }
    Say("Parameter saved as " + path);
}

/// Closes the calibration and goes back to an empty program. What was set in this run and stands in
/// no file yet stays in force: only the rows go.
void Leave() {
    V& v = frmDialogCalibC;
    v.Visible = false;
    frmCalibCurv.Visible = false;
    frmElement.EntEnargy = frmAtom.EntEnargy = nullptr;
    frmElement.lblTold.Caption.clear();
    v.ShownFile = v.ShownSlot = -1;
    v.sprdFileName.Row = v.sprdFileName.Col = 0;
    const ParamRecord param = store.DefaultParam;
    const auto colours = store.ColorTable;
    const Settings kept = settings;
    Form_Load_Proc();
    store.DefaultParam = param;
    store.ColorTable = colours;
    settings = kept;
}

void cmdCalbOK_Click() {
    const V& v = frmDialogCalibC;
    if (v.FitFailed) {
        Say("\"Calculate\" found no curve: the constants in force stay.");
        return;
    }
    // The file comes first: where it cannot be written nothing changes.
    ParamRecord param = store.DefaultParam;
    param.EgcCoef = Displayed();
    const std::string path = store.ProgramFolder + PATH_SEPARATOR + SYSTEM_FILE;
    if (WriteSystemPara(path, param) != TRUE_WORD) {
        TellStatus("Not updated: " + path + " cannot be written.", true);
        Say(std::string(SYSTEM_FILE) +
            " cannot be written in the program's folder: the constants in force stay.");
        return;
    }
    EneCalEnd();
    store.DefaultParam = param;
    SetEGCParam(param.EgcCoef);
    ShowCursorValues();
    WriteReport();
    Leave();
    TellStatus("The calibration was updated.");
}

/// Also the close box. The boxes go back to what is in force; the table and the list stay for the
/// next time.
void cmdCalbCan_Click() {
    EneCalEnd();
    WriteReport();
    Leave();
    TellStatus("The calibration was left; the constants in force stay.");
}

void Tips(V& v) {
    v.sprdFileName.Tip = "A click reads that spectrum anew, in place of the rows";
    v.cmdFileOpen.Tip = "Opens up to 20 spectra of known lines (Ctrl+O)";
    v.cmdDelFile.Tip = "Removes the chosen spectrum and its rows (Ctrl+W)";
    v.cmdSmothBk.Tip = "Smooths the current row and takes its background away (F4)";
    v.cmdAuto[0].Tip =
        "Fits all that stands in the area together, and enters the centre of the highest peak (F5)";
    v.cmdAuto[1].Tip = "Fits the peak in the area, and enters its centre (F6)";
    v.cmdFitDel.Tip = "Takes the fit and its peaks away (Ctrl+D)";
    v.vaSpread1.Tip = "Centres as channels from 1, and the energies of the lines";
    v.cmdCsrSet.Tip =
        "Enters the centre of the peak at the cursor, or the cursor's channel (Ctrl+I)";
    v.cmdEnergyInp.Tip = "Enters energies from the table of the elements (Ctrl+E)";
    v.cmdDelTable.Tip = "Deletes the current line of the table (Ctrl+Delete)";
    v.optCnst[SQUARE].Tip = "A parabola, on channels counted from 0";
    v.optCnst[LINEAR].Tip = "A straight line, on channels counted from 1";
    v.cmdCalEng.Tip = "Finds A, B and C from the rows that have both numbers (F7)";
    v.cmdCurve.Tip = "Shows the curve with the points of the table (F8)";
    v.cmdCalbOK.Tip = "Takes A, B and C over, saves them, and empties the rows (Ctrl+S)";
    v.cmdCalbCan.Tip = "Leaves the constants in force, and empties the rows (Ctrl+Q)";
}

void Keys(V& v) {
    v.mnuFileOpen.Shortcut = "Ctrl+O";
    v.mnuFileCancel.Shortcut = "Ctrl+W";
    v.mnuUpdate.Shortcut = "Ctrl+S";
    v.mnuCancel.Shortcut = "Ctrl+Q";
    v.mnuCsrVal.Shortcut = "Ctrl+I";
    v.mnuElmTable.Shortcut = "Ctrl+E";
    v.mnuDelPoint.Shortcut = "Ctrl+Del";
    v.mnuCalc.Shortcut = "F7";
    v.mnuShow.Shortcut = "F8";
    v.cmdSmothBk.Shortcut = "F4";
    v.cmdAuto[0].Shortcut = "F5";
    v.cmdAuto[1].Shortcut = "F6";
    v.cmdFitDel.Shortcut = "Ctrl+D";
}

void Wire(V& v) {
    v.sprdFileName.CellClick = [](int, int row) { ReadCalibFile(row); };
    v.vaSpread1.CellEdit = vaSpread1_CellEdit;
    v.cmdFileOpen.Click = v.mnuFileOpen.Click = OpenCalibFiles;
    v.cmdDelFile.Click = v.mnuFileCancel.Click = DeleteCalibFile;
    v.cmdSmothBk.Click = Calib_SmothBk;
    v.cmdAuto[0].Click = [] { Calib_Auto(true); };
    v.cmdAuto[1].Click = [] { Calib_Auto(false); };
    v.cmdFitDel.Click = Calib_FitDel;
    v.cmdCsrSet.Click = v.mnuCsrVal.Click = cmdCsrSet_Click;
    v.cmdEnergyInp.Click = v.mnuElmTable.Click = [] { ShowElement(); };
    v.cmdDelTable.Click = v.mnuDelPoint.Click = cmdDelTable_Click;
    v.cmdCalEng.Click = v.mnuCalc.Click = cmdCalEng_Click;
    v.cmdCurve.Click = v.mnuShow.Click = cmdCurve_Click;
    v.cmdCalbOK.Click = v.mnuUpdate.Click = cmdCalbOK_Click;
    v.cmdCalbCan.Click = v.mnuCancel.Click = v.Closing = cmdCalbCan_Click;
}

}  // namespace

DialogCalibCView::DialogCalibCView() : View("frmDialogCalibC", "Energy Constans Value") {
    Tips(*this);
    Keys(*this);
    mnuUpdate.SeparatorBefore = true;
    for (Option& option : optCnst) {
        option.Group = "Curve";
        option.Click = Outdate;
    }
    optCnst[LINEAR].Value = true;
    ImConst[0].Format = "###0.000000";
    ImConst[1].Format = "##0.00000000";
    ImConst[2].Format = "0.00000E+000";
    for (NumberBox& box : ImConst) box.ReadOnly = true;
    sprdFileName.At(NAME, 0).Text = "Name";
    sprdFileName.At(FOLDER, 0).Text = "Folder";
    sprdFileName.Widths = {2, 20, 27};
    vaSpread1.At(CHANNEL, 0).Text = "Ch";
    vaSpread1.At(ENERGY, 0).Text = "keV";
    vaSpread1.Widths = {3, 12, 12};
    vaSpread1.Row = vaSpread1.Col = 1;
    Wire(*this);
}

int DialogCalibCView::WinNo() const { return GetRealWinNo(); }

int DialogCalibCView::GrpNo() const { return GraphNo(); }

void ShowDialogCalibC() {
    V& v = frmDialogCalibC;
    if (v.Visible) return;
    EneCalStart();
    frmElement.EntEnargy = frmAtom.EntEnargy = EntEnargy;  // their energies go into the table here
    const CalibConstants& inForce = store.DefaultParam.EgcCoef;
    DispKeisu(inForce);
    v.optCnst[SQUARE].Value = inForce[2] != 0.0;
    v.optCnst[LINEAR].Value = !v.optCnst[SQUARE].Value;
    v.FitFailed = false;
    v.lblFit.Caption.clear();
    FillCalibFiles();
    GoTo(v.vaSpread1.Row);
    v.Visible = true;
    TellStatus("The energy calibration is open.");
}

void DispKeisu(const CalibConstants& constants) {
    for (std::size_t k = 0; k < constants.size(); ++k)
        frmDialogCalibC.ImConst[k].Value = constants[k];
}

void EnterChannel(const CalibCentre& centre) {
    const std::string text = FormatNumber(centre.Channel, centre.Fitted ? "###0.0000" : "###0");
    Enter(V::CHANNEL, text, (centre.Fitted ? "Peak at channel " : "Cursor at channel ") + text);
}

void EntEnargy(double energy) {
    if (!frmDialogCalibC.Visible) return;
    const std::string text = NumberText(energy);
    const std::string refusal = Refusal(V::ENERGY, text);
    if (refusal.empty())
        Enter(V::ENERGY, text, text + " keV");
    else
        TellStatus(refusal);
}

bool CalibrationMayGo() {
    const V& v = frmDialogCalibC;
    if (!v.Visible || v.Pairs.empty()) return true;
    return AskYesNo("The table of the energy calibration is lost. Do you leave?");
}

}  // namespace vael
