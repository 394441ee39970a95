// The manual fit: a region, up to five peaks with their start values, and the rules between them.
#include "analysis/frmmanualfit.h"

#include "analysis/frminputfitparameter.h"
#include "analysis/naxcommands.h"
#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/store.h"
#include "core/text.h"
#include "core/windows.h"
#include "toolkit/hand.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace vael {
namespace {

using Numbers = std::array<double, MANUAL_PEAKS>;

/// A sentence here and in the status line: this view may stand before that one.
void Tell(const std::string& sentence) {
    frmManualFit.lblTold.Caption = sentence;
    if (!sentence.empty()) TellStatus(sentence);
}

/// What a number is shown as; 0 stands for none.
std::string Shown(double value) { return value == 0.0 ? "" : ShortNumber(value); }

/// The number of a text, 0 for an empty one.
std::optional<double> TypedNumber(const std::string& text) {
    if (Trim(text).empty()) return 0.0;
    const auto number = ParseNumber(Trim(text));
    return number && std::isfinite(*number) ? number : std::nullopt;
}

/// A text that says the number stays: it may have more digits than are shown.
void ShowNumber(TextBox& box, double value) {
    if (TypedNumber(box.Text) != value) box.Text = Shown(value);
}

/// The box goes back to its number, and the next press of "Execute" tells why before it fits.
void Refuse(TextBox& box, const std::string& name, const std::string& goesBackTo) {
    frmManualFit.Refused = name + ": \"" + box.Text + "\" is no number here; " +
                           (goesBackTo.empty() ? "the box is empty" : "it is " + goesBackTo) +
                           " again.";
    box.Text = goesBackTo;
    Tell(frmManualFit.Refused);
}

/// An act in the view that is no "Execute": what was refused before it is known by now.
void Fresh() {
    frmManualFit.Refused.clear();
    frmManualFit.lblTold.Caption.clear();
}

const AreaMark& MarkAt(std::size_t index) {
    return Item(frmVaelAna.Windows, AreaWindow()).Area[index];
}

/// Channel of an area mark counted from 1; 0 where it is not set.
std::int16_t MarkedChannel(std::size_t index) { return Int16(MarkAt(index).Channel) + Int16(1); }

std::int16_t& RegionEnd(std::size_t index) {
    return index == 0 ? frmManualFit.StartCh : frmManualFit.EndCh;
}

TextBox& RegionBox(std::size_t index) {
    return index == 0 ? frmManualFit.txtStartCh : frmManualFit.txtEndCh;
}

/// Puts an area mark where a box says; a channel that the axis does not have leaves it unset.
void RegionToMark(std::size_t index) {
    const std::int16_t channel = RegionEnd(index);
    const bool there = channel >= 1 && channel <= store.SpanCh;
    frmManualFit.MarksSeen[index] = there ? channel : std::int16_t{0};
    SetAreaMark(static_cast<int>(index), there ? channel - 1 : AREA_UNSET);
}

/// The typed end of the region goes to its area mark.
void TakeRegion(std::size_t index) {
    TextBox& box = RegionBox(index);
    const auto typed = TypedNumber(box.Text);
    if (!typed || std::fabs(*typed) > MAX_CHANNELS) {
        const std::int16_t now = RegionEnd(index);
        Refuse(box, index == 0 ? "START CH" : "END CH", now == 0 ? "" : std::to_string(now));
        return;
    }
    Fresh();
    const std::int16_t channel = Whole16(*typed);
    if (channel == RegionEnd(index)) {
        frmManualFit.SetValue();
        return;
    }
    RegionEnd(index) = channel;
    frmManualFit.SetValue();
    RegionToMark(index);
}

/// A typed number of a row.
void TakeRowNumber(TextBox& box, double& number, const std::string& name) {
    const auto typed = TypedNumber(box.Text);
    if (!typed) {
        Refuse(box, name, Shown(number));
        return;
    }
    Fresh();
    number = *typed;
}

/// As many rows and peaks to choose from as there are peaks.
void ShowRows() {
    ManualFitView& v = frmManualFit;
    std::vector<std::string> peaks;
    for (std::size_t i = 0; i < MANUAL_PEAKS; ++i) {
        const bool shown = static_cast<int>(i) < v.PeakNum;
        for (Control* control :
             std::initializer_list<Control*>{&v.lblRow[i], &v.txtCenterCh[i], &v.txtMaxCount[i],
                                             &v.txtWidth[i], &v.cmdGetValue[i]})
            control->Visible = shown;
        if (shown) peaks.push_back(std::to_string(i + 1));
    }
    for (ListBox* list : {&v.cboRulePeak, &v.cboRuleMaster}) {
        list->Items = peaks;
        list->Index = std::clamp(list->Index, 0, v.PeakNum - 1);
    }
    v.txtParamNum.Text = std::to_string(FreeParameters(v.PeakNum, v.Rules));
}

/// The number that is typed shows its rows at once; what is no such number springs back when the
/// box is left.
void txtPeakNum_Change() {
    const auto typed = ParseNumber(Trim(frmManualFit.txtPeakNum.Text));
    for (int peaks = 1; peaks <= MANUAL_PEAKS; ++peaks)
        if (typed == static_cast<double>(peaks)) {
            Fresh();
            frmManualFit.PeakNum = Int16(peaks);
            ShowRows();
        }
}

void txtPeakNum_Take() {
    TextBox& box = frmManualFit.txtPeakNum;
    const std::string now = std::to_string(frmManualFit.PeakNum);
    if (ParseNumber(Trim(box.Text)) == static_cast<double>(frmManualFit.PeakNum))
        box.Text = now;
    else
        Refuse(box, "# of PEAK takes 1 to 5", now);
}

/// The region as 0-based channels for the estimate of a peak; -1 and -1 without an area.
std::pair<int, int> AreaNow() {
    std::int16_t start = AREA_UNSET;
    std::int16_t end = AREA_UNSET;
    (void)GetRegions(start, end);
    return {start, end};
}

void cmdGetValue_Click(std::size_t i) {
    ManualFitView& v = frmManualFit;
    Fresh();
    const SpectrumData& spectrum = Item(store.SpectrumDatas, v.Slot);
    const int channel = CursorCh();
    const std::string where = "At channel " + std::to_string(channel + 1);
    if (channel >= spectrum.DataNo) {
        Tell(where + " the spectrum has no counts.");
        return;
    }
    const auto [start, end] = AreaNow();
    const PeakGuess guess = GuessPeak(spectrum, channel, start, end, settings.ISPPK);
    if (!(guess.Height > 0.0)) {
        Tell(where + " nothing stands above the line through the ends of the area.");
        return;
    }
    v.CenterCh[i] = channel + 1;
    v.MaxCount[i] = RoundHalfAway(guess.Height, 1);
    v.ChWidth[i] = RoundHalfAway(guess.Fwhm, 1);
    v.SetValue();
    Tell("Peak " + std::to_string(i + 1) + " begins at the cursor.");
}

// --- rules -----------

std::string HowText(HeldBy how) {
    return Item(frmManualFit.cboRuleHow.Items, static_cast<int>(how));
}

void ShowRules() {
    ManualFitView& v = frmManualFit;
    Grid& grid = v.grdConstraint;
    const int rows = static_cast<int>(v.Rules.size());
    grid.SetSize(ManualFitView::READS, rows);
    grid.Row = std::clamp(grid.Row, rows > 0 ? 1 : 0, rows);
    grid.Col = rows > 0 ? ManualFitView::READS : 0;
    for (int row = 1; row <= rows; ++row) {
        const ManualRule& rule = Item(v.Rules, row - 1);
        const bool link = rule.How != HeldBy::Fixed;
        const auto write = [&grid, row](int column, const std::string& text) {
            grid.At(column, row).Text = text;
        };
        write(ManualFitView::PEAK, std::to_string(rule.Peak));
        write(ManualFitView::PARAMETER, std::string(1, LetterOf(rule.Param)));
        write(ManualFitView::RULE, HowText(rule.How));
        write(ManualFitView::MASTER, link ? std::to_string(rule.Master) : "");
        write(ManualFitView::VALUE, link ? ShortNumber(rule.Value) : "");
        write(ManualFitView::READS, RuleReads(rule));
    }
    v.cmdRuleRemove.Enabled = rows > 0;
    v.txtParamNum.Text = std::to_string(FreeParameters(v.PeakNum, v.Rules));
}

/// A fixed parameter stays at the number of its row; a link has a master and a value.
void cboRuleHow_Click() {
    ManualFitView& v = frmManualFit;
    const bool link = v.cboRuleHow.Index > 0;
    v.cboRuleMaster.Enabled = link;
    v.txtRuleValue.Enabled = link;
    if (!link) v.txtRuleValue.Text.clear();
}

/// A second rule for the same parameter takes the place of the first.
void cmdRuleAdd_Click() {
    ManualFitView& v = frmManualFit;
    Fresh();
    ManualRule rule{.Peak = v.cboRulePeak.Index + 1,
                    .Param = static_cast<NaxKind>(v.cboRuleParam.Index),
                    .How = static_cast<HeldBy>(v.cboRuleHow.Index)};
    if (rule.How != HeldBy::Fixed) {
        rule.Master = v.cboRuleMaster.Index + 1;
        const auto value = ParseNumber(Trim(v.txtRuleValue.Text));
        if (rule.Master == rule.Peak) {
            Tell("Peak " + std::to_string(rule.Peak) + " cannot follow itself.");
            return;
        }
        if (!value || !std::isfinite(*value)) {
            Tell("The link wants a number in \"Value\"; \"" + v.txtRuleValue.Text + "\" is none.");
            v.txtRuleValue.Text.clear();
            return;
        }
        rule.Value = *value;
    }
    const auto same =
        std::find_if(v.Rules.begin(), v.Rules.end(), [&rule](const ManualRule& other) {
            return other.Peak == rule.Peak && other.Param == rule.Param;
        });
    const auto at = same - v.Rules.begin();
    if (same == v.Rules.end())
        v.Rules.push_back(rule);
    else
        *same = rule;
    v.grdConstraint.Row = static_cast<int>(at) + 1;
    ShowRules();
    Tell("Constraint: " + RuleReads(rule) + ".");
}

void cmdRuleRemove_Click() {
    ManualFitView& v = frmManualFit;
    Fresh();
    const int row = v.grdConstraint.Row - 1;
    if (row < 0 || row >= static_cast<int>(v.Rules.size())) return;
    Tell("Constraint removed: " + RuleReads(Item(v.Rules, row)) + ".");
    v.Rules.erase(v.Rules.begin() + row);
    ShowRules();
}

/// A line that is chosen stands above the grid, to be changed.
void grdConstraint_CellClick(int, int row) {
    ManualFitView& v = frmManualFit;
    if (row < 1 || row > static_cast<int>(v.Rules.size())) return;
    const ManualRule& rule = Item(v.Rules, row - 1);
    v.cboRulePeak.Index = std::min(rule.Peak, int{v.PeakNum}) - 1;
    v.cboRuleParam.Index = rule.Param;
    v.cboRuleHow.Index = static_cast<int>(rule.How);
    cboRuleHow_Click();
    if (rule.How == HeldBy::Fixed) return;
    v.cboRuleMaster.Index = std::min(rule.Master, int{v.PeakNum}) - 1;
    v.txtRuleValue.Text = v.grdConstraint.At(ManualFitView::VALUE, row).Text;
}

// --- the fit -----------

std::vector<NaxManualPeak> RowsNow() {
    const ManualFitView& v = frmManualFit;
    std::vector<NaxManualPeak> rows;
    for (std::size_t i = 0; i < static_cast<std::size_t>(v.PeakNum); ++i)
        rows.push_back(
            {.CenterCh = v.CenterCh[i], .MaxCount = v.MaxCount[i], .Width = v.ChWidth[i]});
    return rows;
}

/// Rows by rising centre, with their texts and the rules that name them.
void SortRows() {
    ManualFitView& v = frmManualFit;
    const std::vector<std::size_t> order = OrderByCentre(RowsNow());
    const auto sort = [&order](Numbers& numbers, ControlArray<TextBox, MANUAL_PEAKS>& boxes) {
        const Numbers before = numbers;
        std::array<std::string, MANUAL_PEAKS> texts;
        for (std::size_t i = 0; i < MANUAL_PEAKS; ++i) texts[i] = boxes[i].Text;
        for (std::size_t i = 0; i < order.size(); ++i) {
            numbers[i] = before[order[i]];
            boxes[i].Text = texts[order[i]];
        }
    };
    sort(v.CenterCh, v.txtCenterCh);
    sort(v.MaxCount, v.txtMaxCount);
    sort(v.ChWidth, v.txtWidth);
    v.Rules = Renumbered(v.Rules, order);
    ShowRules();
}

/// The manual entry of the fit. False where there is no region that it could be asked for.
bool FitManually() {
    ManualFitView& v = frmManualFit;
    std::int16_t start = 0;
    std::int16_t end = 0;
    (void)GetRegions(start, end);
    const int from = start + 1;  // the marks count from 0
    const int to = end + 1;
    const auto fine = [](int channel) { return channel > 0 && channel <= NAX_CHANNELS; };
    if (!fine(from) || !fine(to)) {
        Say("StartChannel or EndChannel Error");
        return false;
    }
    (void)NaxManualFit(WindowOfRow(v.GrpNo), v.GrpNo, ManualInputOf(from, to, RowsNow(), v.Rules));
    return true;
}

void cmdExecute_Click() {
    ManualFitView& v = frmManualFit;
    // A number that was not taken is told before anything runs on the one that stands in its place.
    const std::string why =
        v.Refused.empty() ? RefusalOf(RowsNow(), v.Rules) : std::exchange(v.Refused, {});
    Tell(why);
    if (!why.empty()) return;
    SortRows();
    if (!FitManually()) return;
    // Also after a fit that failed: its numbers are there when the view is opened again.
    v.OK = true;
    v.Visible = false;
    RedrawBoth();
}

void cmdCancel_Click() {
    frmManualFit.OK = false;
    frmManualFit.Visible = false;
}

void cmdInputFit_Click() {
    Fresh();
    ShowInputFitParameter(frmManualFit.Slot);
}

/// Where a box has a use of its own for Enter it is the same as leaving it.
void TakeOnLeave(TextBox& box, const std::function<void()>& take) {
    box.Leave = [take] {
        take();
        return true;  // the text sprang back, so the box holds nobody
    };
}

void WireRows(ManualFitView& v) {
    struct Part {
        ControlArray<TextBox, MANUAL_PEAKS>& Boxes;
        Numbers ManualFitView::*Values;
        const char* Name;
    };
    for (const Part& part : {Part{v.txtCenterCh, &ManualFitView::CenterCh, "CENTER CH"},
                             Part{v.txtMaxCount, &ManualFitView::MaxCount, "MAX COUNT"},
                             Part{v.txtWidth, &ManualFitView::ChWidth, "WIDTH"}})
        for (std::size_t i = 0; i < MANUAL_PEAKS; ++i) {
            const auto values = part.Values;
            const std::string name = std::string(part.Name) + " " + std::to_string(i + 1);
            TextBox& box = part.Boxes[i];
            TakeOnLeave(box, [&box, values, i, name] {
                TakeRowNumber(box, (frmManualFit.*values)[i], name);
            });
        }
    for (std::size_t i = 0; i < MANUAL_PEAKS; ++i) {
        v.txtCenterCh[i].Tip = "Channel of the centre, from 1";
        v.txtMaxCount[i].Tip = "Height above the background, counts";
        v.txtWidth[i].Tip = "Full width at half maximum, channels";
        v.cmdGetValue[i].Tip = "Takes centre, height and width from the spectrum at the cursor";
        v.cmdGetValue[i].Click = [i] { cmdGetValue_Click(i); };
    }
}

void WireRules(ManualFitView& v) {
    const char* const heads[] = {"Peak", "Parameter", "Rule", "To peak", "Value", "Reads"};
    for (int column = ManualFitView::PEAK; column <= ManualFitView::READS; ++column)
        v.grdConstraint.At(column, 0).Text = heads[column - 1];
    v.grdConstraint.Widths = {0, 5, 10, 12, 7, 9, 20};
    v.grdConstraint.CellClick = grdConstraint_CellClick;
    v.cboRuleHow.Click = cboRuleHow_Click;
    v.cboRuleMaster.Enabled = false;
    v.txtRuleValue.Enabled = false;
    v.txtRuleValue.Enter = cmdRuleAdd_Click;
    v.txtRuleValue.Tip =
        "Added to the other peak's parameter, or times it. Positions and widths in channels";
    v.cboRuleHow.Tip =
        "FIXED stays at the number of its row; a link (C) follows another peak's parameter";
    v.cmdRuleAdd.Tip = "Holds the parameter so; another rule for it is replaced";
    v.cmdRuleAdd.Click = cmdRuleAdd_Click;
    v.cmdRuleRemove.Tip = "Frees the parameter of the chosen line";
    v.cmdRuleRemove.Click = cmdRuleRemove_Click;
    v.cmdRuleRemove.Enabled = false;
}

}  // namespace

ManualFitView::ManualFitView() : View("frmManualFit", "Manual Fitting") {
    txtParamNum.ReadOnly = true;
    txtParamNum.Tip = "Free parameters: three to a peak, less one to each constraint";
    txtStartCh.Tip = "First channel of the region, from 1: the left area mark";
    txtEndCh.Tip = "Last channel of the region, from 1: the right area mark; at most 500 channels";
    txtPeakNum.Tip = "1 to 5";
    for (std::size_t index = 0; index < 2; ++index) {
        TextBox& box = index == 0 ? txtStartCh : txtEndCh;
        box.Enter = [index] { TakeRegion(index); };
        TakeOnLeave(box, [index] { TakeRegion(index); });
    }
    txtPeakNum.Change = txtPeakNum_Change;
    txtPeakNum.Enter = txtPeakNum_Take;
    TakeOnLeave(txtPeakNum, txtPeakNum_Take);
    WireRows(*this);
    WireRules(*this);
    for (std::size_t i = 1; i < MANUAL_PEAKS; ++i)
        for (Control* control : std::initializer_list<Control*>{
                 &lblRow[i], &txtCenterCh[i], &txtMaxCount[i], &txtWidth[i], &cmdGetValue[i]})
            control->Visible = false;
    cmdInputFit.Tip = "Adds one peak to the list by its numbers, without a fit";
    cmdExecute.Tip = "Fits the peaks on a parabola over the region";
    cmdInputFit.Click = cmdInputFit_Click;
    cmdExecute.Click = cmdExecute_Click;
    cmdCancel.Click = cmdCancel_Click;
    Closing = cmdCancel_Click;
    KeyPreview = EnterEscape(cmdExecute_Click, cmdCancel_Click);
}

void ManualFitView::SetValue() {
    ShowNumber(txtStartCh, StartCh);
    ShowNumber(txtEndCh, EndCh);
    for (std::size_t i = 0; i < MANUAL_PEAKS; ++i) {
        ShowNumber(txtCenterCh[i], CenterCh[i]);
        ShowNumber(txtMaxCount[i], MaxCount[i]);
        ShowNumber(txtWidth[i], ChWidth[i]);
    }
}

void ResetManualFit() {
    ManualFitView& v = frmManualFit;
    v.Visible = false;
    v.StartCh = v.EndCh = 0;
    v.CenterCh = v.MaxCount = v.ChWidth = {};
    v.PeakNum = 1;
    v.txtPeakNum.Text = "1";
    v.GrpNo = 0;
    v.Slot = -1;
    v.OK = false;
    v.Rules.clear();
    v.MarksSeen = {0, 0};
    v.cboRulePeak.Index = v.cboRuleMaster.Index = v.cboRuleHow.Index = 0;
    cboRuleHow_Click();
    Fresh();
    v.SetValue();
    ShowRows();
    ShowRules();
}

void SetUpManualFit() {
    ManualFitView& v = frmManualFit;
    v.GrpNo = Int16(GraphNo());
    v.Slot = DataNo();
    v.OK = false;
    Fresh();
    v.lblGraph.Caption =
        "Row " + std::to_string(v.GrpNo + 1) + "   " + Item(store.GraphList, v.GrpNo).Name;
    std::int16_t start = 0;
    std::int16_t end = 0;
    if (GetRegions(start, end) == TRUE_WORD) {
        v.StartCh = MarkedChannel(0);
        v.EndCh = MarkedChannel(1);
        v.MarksSeen = {v.StartCh, v.EndCh};
    } else {
        for (const std::size_t index : {std::size_t{0}, std::size_t{1}}) {
            if (RegionEnd(index) != 0)
                RegionToMark(index);
            else
                RegionEnd(index) = v.MarksSeen[index] = MarkedChannel(index);
        }
    }
    v.SetValue();
}

void ShowManualFit() {
    if (Item(store.GraphList, GraphNo()).State == 0) {
        TellStatus("There is no spectrum in this row.");
        return;
    }
    SetUpManualFit();
    frmManualFit.Visible = true;
}

void AreaToManualFit() {
    ManualFitView& v = frmManualFit;
    if (!v.Visible) return;
    for (const std::size_t index : {std::size_t{0}, std::size_t{1}}) {
        const std::int16_t channel = MarkedChannel(index);
        if (channel == v.MarksSeen[index]) continue;
        v.MarksSeen[index] = channel;
        RegionEnd(index) = channel;
    }
    v.SetValue();
}

void RowsToManualFit() {
    ManualFitView& v = frmManualFit;
    if (!v.Visible) return;
    const int row = RowOfSlot(v.Slot);
    if (row < 0) {
        v.Visible = false;
        return;
    }
    v.GrpNo = Int16(row);
    v.lblGraph.Caption = "Row " + std::to_string(row + 1) + "   " + Item(store.GraphList, row).Name;
}

}  // namespace vael
