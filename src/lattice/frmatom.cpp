// The periodic table: presses on its elements mark their lines on the graphs.
#include "lattice/frmatom.h"

#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/store.h"
#include "core/text.h"
#include "core/units.h"
#include "core/windows.h"
#include "display/colourtable.h"
#include "lattice/frmelement.h"
#include "toolkit/desk.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace vael {
namespace {

constexpr Colour MARKED = 0xFFC0C0;  // ground of what is marked or chosen
constexpr int LINES_MOST = std::min(VLINE_LIMIT, TEXT_LIMIT);
constexpr std::int16_t LABEL_POINTS = 8;
constexpr double LABEL_SHARE = 0.6;  // of the height, from the top: below it labels are left out
constexpr double LABEL_GAP = 2.0;    // pixels between a line and its label
constexpr const char* ENERGY_FORMAT = "##0.000";

constexpr unsigned Bit(int kind) { return 1U << static_cast<unsigned>(kind); }
std::optional<Colour> MarkedIf(bool marked) {
    return marked ? std::optional<Colour>(MARKED) : std::nullopt;
}
constexpr unsigned FIRST_CHOICE = Bit(LINE_KA1) | Bit(LINE_KA2) | Bit(LINE_KB1) | Bit(LINE_KB2);

AtomView::ElementFlags& FlagsOf(int win, int slot) { return Item(Item(frmAtom.Flags, win), slot); }

AtomView::ElementFlags& CurrentFlags() { return FlagsOf(frmAtom.WinNo, frmAtom.GrpNo); }

/// The window whose selected graph is marked in a window: the magnifier and the pile have one.
int GraphWindow(int win) { return Expanded() || PiledUp() ? 0 : win; }

/// The presses go to the graph that is current now.
void Follow() {
    const int win = GraphWindow(frmVaelAna.ActiveWin);
    const GraphEntry* entry = SelectedRow(win);
    frmAtom.SetObjct(win, entry != nullptr ? entry->DataNo : 0);
}

bool GraphThere() { return SelectedRow(frmAtom.WinNo) != nullptr; }

/// The line kinds of an element that have an energy, out of some.
unsigned KindsWithEnergy(int number, unsigned kinds) {
    unsigned there = 0;
    for (int kind = 0; kind < LINE_KINDS; ++kind)
        if ((kinds & Bit(kind)) != 0 && LineEnergy(frmElement.Table, number, kind))
            there |= Bit(kind);
    return there;
}

/// Channel of an energy on a slot's axis, 0-based; below 0 where there is none. A DAC spectrum has
/// no energies.
double ChannelOf(double energy, int slot) {
    if (Item(store.PropertyRecords, slot).SourceType == SOURCE_DAC) return -1.0;
    return EnergyToCh(energy, ParamInForce(slot).EgcCoef);
}

/// What a window shows: the marks of its graph that lie in its range, from the left.
std::vector<ElementMark> MarksOf(int win) {
    std::vector<ElementMark> marks;
    const GraphEntry* entry = SelectedRow(GraphWindow(win));
    if (entry == nullptr || frmElement.Table.Rows == 0 || (PiledUp() && win != 0)) return marks;
    const AtomView::ElementFlags& flags = FlagsOf(GraphWindow(win), entry->DataNo);
    const WindowState& window = Item(frmVaelAna.Windows, win);
    for (int number = 1; number <= ELEMENT_MAX; ++number) {
        for (int kind = 0; kind < LINE_KINDS; ++kind) {
            if ((Item(flags, number - 1) & Bit(kind)) == 0) continue;
            const double energy = frmAtom.Energy(number, kind);
            const double channel = energy > 0.0 ? ChannelOf(energy, entry->DataNo) : -1.0;
            // The negation also leaves out what a wild polynomial gives that is no number.
            if (!(channel >= window.Start && channel <= window.Start + window.Span - 1)) continue;
            marks.push_back({channel, frmAtom.ElementName(number) + " " + LineKindText(kind) + " " +
                                          FormatNumber(energy, ENERGY_FORMAT)});
        }
    }
    std::stable_sort(marks.begin(), marks.end(), [](const ElementMark& a, const ElementMark& b) {
        return a.Channel < b.Channel;
    });
    return marks;
}

/// Rows of labels from the top of a plot down, each known by where its last label ends.
class LabelRows {
public:
    explicit LabelRows(int most) : most_(most) {}
    /// The row, from 0, of a label from `left` to `right` whose line stands at its left: one below
    /// all that reach over it, so that its line crosses none; else the highest that is free; -1 for
    /// none.
    int Take(double left, double right) {
        int row = static_cast<int>(ends_.size());
        while (row > 0 && Item(ends_, row - 1) <= left) --row;
        for (int free = 0; row >= most_ && free < most_; ++free)
            if (Item(ends_, free) <= left) row = free;
        if (row >= most_) return -1;
        if (row == static_cast<int>(ends_.size())) ends_.push_back(right);
        Item(ends_, row) = right;
        return row;
    }

private:
    int most_;
    std::vector<double> ends_;
};

/// Registers the lines with their labels at the right of them. A line ends at the top of its label;
/// one whose label finds no room, below the lowest row.
void RegisterMarks(int win, const std::vector<ElementMark>& marks, Colour colour) {
    Canvas& canvas = *Engine().Target(win).Canvas;
    Engine().ScaleCanvas(win);
    const double kept = canvas.FontSize;
    canvas.FontSize = LABEL_POINTS;
    const double tall = canvas.TextHeight("A");
    const double gap = canvas.PixelUnit().Width * LABEL_GAP;
    const double top = PlotTop(win);
    const WindowState& window = Item(frmVaelAna.Windows, win);
    const int most = tall > 0.0 ? static_cast<int>(std::min(100.0, top * LABEL_SHARE / tall)) : 0;
    LabelRows rows(most);
    for (const ElementMark& mark : marks) {
        const double width = canvas.TextWidth(mark.Label);
        double left = mark.Channel + gap;
        if (left + width > window.Start + window.Span - 1) left = mark.Channel - gap - width;
        const int row = rows.Take(left, left + width + gap);
        const double height = top - (row < 0 ? most : row) * tall;
        Engine().RegisterVLine(win, mark.Channel, 0.0, height, colour);
        if (row >= 0)
            Engine().RegisterText(win, left, height, mark.Label,
                                  {.Color = colour, .Size = LABEL_POINTS});
    }
    canvas.FontSize = kept;
}

/// The marks of the current graph on the buttons, and whose line kinds are shown.
void ShowFlags() {
    AtomView& v = frmAtom;
    const AtomView::ElementFlags& flags = CurrentFlags();
    const bool there = GraphThere();
    for (std::size_t n = 0; n < ELEMENT_MAX; ++n)
        v.cmdAtom[n].Fill = MarkedIf(there && flags[n] != 0);
    const bool edit = v.optEdit.Value;
    unsigned kinds = v.Chosen;
    if (edit) kinds = v.Edited > 0 && there ? Item(flags, v.Edited - 1) : 0U;
    for (int kind = 0; kind < LINE_KINDS; ++kind)
        Item(v.cmdPkDisp, kind).Fill = MarkedIf((kinds & Bit(kind)) != 0);
    v.fraLines.Caption = edit && v.Edited > 0 ? "Lines of " + v.ElementName(v.Edited) : "Lines";
}

void ShowSymbols() {
    for (int number = 1; number <= ELEMENT_MAX; ++number) {
        std::string symbol = ElementSymbol(number);
        if (frmElement.Table.Rows > 0) {
            const std::string own = frmElement.GetSymbol(number);
            if (!own.empty()) symbol = own;
            Item(frmAtom.cmdAtom, number - 1).Tip =
                std::to_string(number) + " " + frmAtom.ElementName(number);
        }
        Item(frmAtom.cmdAtom, number - 1).Caption = symbol;
    }
}

/// The element below the pointer, with its lines.
void ShowCharacter(int number) {
    AtomView& v = frmAtom;
    if (frmElement.Table.Rows == 0) return;
    v.fraCharacter.Caption = "Character " + v.ElementName(number);
    v.lblCharacter.Caption = std::to_string(number) + "  " + frmElement.GetSymbol(number);
    for (int kind = 0; kind < LINE_KINDS; ++kind) {
        const double energy = v.Energy(number, kind);
        Item(v.lblLine, kind).Caption =
            energy > 0.0 ? LineKindText(kind) + "  " + FormatNumber(energy, ENERGY_FORMAT) : "";
    }
}

/// The lines' energies go to the calibration that is open, the lowest first.
void EnterEnergies(int number, unsigned kinds) {
    if (!frmAtom.EntEnargy) return;
    std::vector<double> energies;
    for (int kind = 0; kind < LINE_KINDS; ++kind)
        if ((kinds & Bit(kind)) != 0) energies.push_back(frmAtom.Energy(number, kind));
    std::sort(energies.begin(), energies.end());
    for (const double energy : energies) frmAtom.EntEnargy(energy);
}

/// Why marks that are set are not seen, as a second sentence; empty when they are.
std::string WhyUnseen() {
    const bool axis =
        ChannelOf(1.0, frmAtom.GrpNo) >= 0.0 || ChannelOf(100.0, frmAtom.GrpNo) >= 0.0;
    return axis ? "" : " This graph has no energy calibration, so they have no place on it yet.";
}

void TellTooMany() {
    TellStatus("At most " + std::to_string(LINES_MOST) + " lines are marked on a graph.");
}

/// Marks lines of an element on the current graph and enters their energies into a calibration.
void MarkLines(int number, unsigned kinds) {
    AtomView& v = frmAtom;
    const std::string name = v.ElementName(number);
    const unsigned there = KindsWithEnergy(number, kinds);
    if (there == 0)
        return TellStatus(kinds == 0 ? "No kind of line is chosen."
                                     : name + " has none of these lines.");
    if (!GraphThere()) {
        if (!v.EntEnargy) return TellStatus("There is no graph to mark lines on.");
    } else {
        if (!v.EditMarkDispFlag(number, there, true)) return TellTooMany();
        v.MakeMiracle();
        TellStatus("The lines of " + name + " are marked." + WhyUnseen());
    }
    EnterEnergies(number, there);
}

void Unmark(int number) {
    if (!GraphThere() || Item(CurrentFlags(), number - 1) == 0)
        return TellStatus("There is no mark of " + frmAtom.ElementName(number) + " here.");
    (void)frmAtom.EditMarkDispFlag(number, ~0U, false);
    frmAtom.MakeMiracle();
    TellStatus("The marks of " + frmAtom.ElementName(number) + " are gone.");
}

/// "Edit": the line kinds are this element's, and its sheet stands above this view.
void EditElement(int number) {
    frmAtom.Edited = number;
    ShowElement(Whole16(number));
    TopMost(frmElement);
    ShowFlags();
}

void cmdAtom_Click(int number) {
    Follow();
    ShowCharacter(number);
    if (frmAtom.optEdit.Value)
        EditElement(number);
    else if (GraphThere() && Item(CurrentFlags(), number - 1) != 0)
        Unmark(number);
    else
        MarkLines(number, frmAtom.Chosen);
}

void cmdAtom_RightClick(int number) {
    Follow();
    Unmark(number);
}

/// "Mark": chosen or not from now on, and so are those lines of the elements that are marked. The
/// last kind of an element goes with its marks.
void ChooseKind(int kind) {
    AtomView& v = frmAtom;
    const bool on = (v.Chosen & Bit(kind)) == 0;
    const AtomView::ElementFlags before = CurrentFlags();
    for (int number = 1; number <= ELEMENT_MAX && GraphThere(); ++number) {
        if (Item(before, number - 1) == 0) continue;
        const unsigned there = KindsWithEnergy(number, Bit(kind));
        if (there == 0 || v.EditMarkDispFlag(number, there, on)) continue;
        CurrentFlags() = before;
        return TellTooMany();
    }
    v.Chosen ^= Bit(kind);
    v.MakeMiracle();
    TellStatus(LineKindText(kind) + (on ? " is marked." : " is not marked any more."));
}

/// "Edit": a line of the element that was pressed last.
void EditKind(int kind) {
    AtomView& v = frmAtom;
    if (v.Edited == 0) return TellStatus("Press the element first whose lines are edited.");
    const bool on = (Item(CurrentFlags(), v.Edited - 1) & Bit(kind)) != 0 && GraphThere();
    if (!on) return MarkLines(v.Edited, Bit(kind));
    (void)v.EditMarkDispFlag(v.Edited, Bit(kind), false);
    v.MakeMiracle();
    TellStatus(LineKindText(kind) + " of " + v.ElementName(v.Edited) + " is not marked any more.");
}

void cmdPkDisp_Click(int kind) {
    Follow();
    if (frmAtom.optEdit.Value)
        EditKind(kind);
    else
        ChooseKind(kind);
}

void ModeChosen() {
    frmAtom.Edited = 0;
    ShowFlags();
}

void cmdClear_Click() {
    Follow();
    if (!GraphThere()) return TellStatus("There is no graph with marks.");
    CurrentFlags().fill(0);
    frmAtom.MakeMiracle();
    TellStatus("The marks of this graph are gone.");
}

void cmdCancel_Click() { frmAtom.Visible = false; }

}  // namespace

AtomView::AtomView() : View("frmAtom", "Atom elements periodic Table"), Chosen(FIRST_CHOICE) {
    for (int number = 1; number <= ELEMENT_MAX; ++number) {
        Button& button = Item(cmdAtom, number - 1);
        button.Caption = ElementSymbol(number);
        button.Click = [number] { cmdAtom_Click(number); };
        button.RightClick = [number] { cmdAtom_RightClick(number); };
        button.Hover = [number] { ShowCharacter(number); };
    }
    for (int kind = 0; kind < LINE_KINDS; ++kind) {
        Button& button = Item(cmdPkDisp, kind);
        button.Caption = LineKindText(kind);
        button.Fill = MarkedIf((Chosen & Bit(kind)) != 0);
        button.Click = [kind] { cmdPkDisp_Click(kind); };
    }
    optMark.Value = true;
    optMark.Tip =
        "A press marks the element's lines of the chosen kinds on the current graph, or "
        "takes them off; the right button takes them off";
    optEdit.Tip = "A press opens the element's sheet; the kinds of lines are then its own";
    cmdClear.Tip = "Takes all element marks off the current graph";
    cmdCancel.Tip = "Closes the table; the marks stay";
    optMark.Click = ModeChosen;
    optEdit.Click = ModeChosen;
    cmdClear.Click = cmdClear_Click;
    cmdCancel.Click = cmdCancel_Click;
    KeyPreview = EnterEscape(cmdCancel_Click, cmdCancel_Click);
}

void AtomView::InitAtom() {
    Flags = {};
    Edited = 0;
    WinNo = 0;
    GrpNo = 0;
    Shown = {};
    ShowFlags();
}

void AtomView::ShowTop() {
    NeedElementTable();
    Follow();
    ShowSymbols();
    ShowFlags();
    Visible = true;
    TopMost(*this);
}

void AtomView::SetObjct(int win, int slot) {
    WinNo = win;
    GrpNo = slot;
}

bool AtomView::EditMarkDispFlag(int number, unsigned kinds, bool on) {
    ElementFlags changed = CurrentFlags();
    std::uint8_t& flags = Item(changed, number - 1);
    const unsigned now = on ? flags | kinds : flags & ~kinds;
    flags = static_cast<std::uint8_t>(now & 0xffU);
    int lines = 0;
    for (const std::uint8_t each : changed) lines += std::popcount(each);
    if (on && lines > LINES_MOST) return false;
    CurrentFlags() = changed;
    return true;
}

void AtomView::MakeMiracle() {
    DispMode = static_cast<std::int16_t>(frmVaelAna.WinStyle);
    if (Expanded())
        for (int win = 0; win < WINDOW_COUNT; ++win) RedrawWindow(win);
    else
        RedrawWindow(WinNo);
    ShowFlags();
}

double AtomView::Energy(int number, int kind) const { return frmElement.Energy(number, kind); }

std::string AtomView::ElementName(int number) const { return frmElement.ElementName(number); }

void PutElementMarks(int win) {
    auto& shown = Item(frmAtom.Shown, win);
    auto marks = MarksOf(win);
    // The tables are large: a plot without marks, as most are, does not wait for their clearing.
    if (!shown.empty() || !marks.empty()) Engine().ClearRegistrations(win);
    shown = std::move(marks);
    if (shown.empty() || Engine().Target(win).Canvas == nullptr) return;
    RegisterMarks(win, shown, Item(store.ColorTable, ENTRY_ELEMENT_MARK));
}

void RefreshElementMarks() {
    for (int win = 0; win < WINDOW_COUNT; ++win)
        if (MarksOf(win) != Item(frmAtom.Shown, win)) RedrawWindow(win);
    if (!frmAtom.Visible) return;
    Follow();
    ShowFlags();
}

void ClearElementMarks(int slot) {
    for (auto& window : frmAtom.Flags) Item(window, slot).fill(0);
}

void CopyElementMarks(int from, int to) {
    for (auto& window : frmAtom.Flags) Item(window, to) = Item(window, from);
}

}  // namespace vael
