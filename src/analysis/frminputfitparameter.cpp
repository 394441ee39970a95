// The numbers of one peak that is added to the list without a fit.
#include "analysis/frminputfitparameter.h"

#include "analysis/handpeakcommands.h"
#include "analysis/manualinput.h"
#include "analysis/peak.h"
#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/fault.h"
#include "core/fitgraph.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/regionmarks.h"
#include "core/store.h"
#include "core/text.h"
#include "core/windows.h"
#include "toolkit/hand.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace vael {
namespace {

const SpectrumData& Spectrum() { return Item(store.SpectrumDatas, frmInputFitParameter.Slot); }

PeakTable& Peaks() { return Item(store.PeakTables, frmInputFitParameter.Slot); }

void Tell(const std::string& sentence) {
    frmInputFitParameter.lblTold.Caption = sentence;
    TellStatus(sentence);
}

/// The numbers at the cursor; boxes for which it gives none are empty.
void Fill() {
    InputFitParameterView& v = frmInputFitParameter;
    v.txtCenterCh.Text = std::to_string(CursorCh() + 1);
    v.txtMaxCount.Text.clear();
    v.txtWidth.Text.clear();
    v.lblTold.Caption.clear();
    v.Filled = {v.txtCenterCh.Text, "", ""};
    if (CursorCh() >= Spectrum().DataNo) return;
    std::int16_t start = AREA_UNSET;
    std::int16_t end = AREA_UNSET;
    (void)GetRegions(start, end);
    const PeakGuess guess = GuessPeak(Spectrum(), CursorCh(), start, end, settings.ISPPK);
    if (!(guess.Height > 0.0)) return;
    v.txtMaxCount.Text = ShortNumber(RoundHalfAway(guess.Height, 1));
    v.txtWidth.Text = ShortNumber(RoundHalfAway(guess.Fwhm, 1));
    v.Filled = {v.txtCenterCh.Text, v.txtMaxCount.Text, v.txtWidth.Text};
}

/// The number of a box, told where it is none. The box goes back to what the view was opened with.
std::optional<double> NumberOf(TextBox& box, const std::string& name, std::size_t index) {
    const auto number = ParseNumber(Trim(box.Text));
    if (number && std::isfinite(*number)) return number;
    Tell(name + ": \"" + box.Text + "\" is no number.");
    box.Text = Item(frmInputFitParameter.Filled, index);
    return std::nullopt;
}

/// The record of the three numbers; the sentence that refuses them was told where there is none.
std::optional<PeakRecord> RecordOf() {
    InputFitParameterView& v = frmInputFitParameter;
    const auto centre = NumberOf(v.txtCenterCh, "CENTER CH", 0);
    if (!centre) return std::nullopt;
    const auto height = NumberOf(v.txtMaxCount, "MAX COUNT", 1);
    if (!height) return std::nullopt;
    const auto width = NumberOf(v.txtWidth, "WIDTH", 2);
    if (!width) return std::nullopt;
    const double last = Spectrum().DataNo - 1;
    if (!(*centre >= 1.0 && *centre <= last + 1.0)) {
        Tell("The centre lies outside channels 1 to " + std::to_string(Spectrum().DataNo) + ".");
        return std::nullopt;
    }
    if (!(*height > 0.0) || !(*width > 0.0)) {
        Tell(*height > 0.0 ? "A peak's width is above 0." : "A peak's height is above 0.");
        return std::nullopt;
    }
    PeakRecord peak{};
    peak.FitState = ALL_BITS;  // its curve is drawn like that of a peak that was fitted
    peak.FuncType = settings.FuncType;
    peak.GaussRatio = 1.0;
    peak.Width = *width / 2.0;
    peak.Position = *centre - 1.0;
    peak.Amplitude = *height;
    // The area of the main view; without one, a full width on either side.
    std::int16_t start = 0;
    std::int16_t end = 0;
    const bool area = GetRegions(start, end) == TRUE_WORD;
    const double from = area ? std::min(start, end) : peak.Position - *width;
    const double to = area ? std::max(start, end) : peak.Position + *width;
    peak.StartCh = Whole16(std::clamp(from, 0.0, last));
    peak.EndCh = Whole16(std::clamp(to, 0.0, last));
    return peak;
}

/// Inserts the record, with its area, and parts its region from those of its neighbours; its index,
/// or -1 where the table refuses it. The table stays as it was where a step faults.
int Insert(const PeakRecord& record) {
    const int window = WindowOfRow(RowOfSlot(frmInputFitParameter.Slot));
    const int slot = frmInputFitParameter.Slot;
    const PeakTable before = Peaks();
    try {
        const int at = AddPeak(0, window, slot, record, Peaks(), RegionMarks());
        if (at < 0) return at;
        CalcIntensity(Spectrum(), Peaks(), at);
        AdjustRegions(window, slot, std::max(at - 1, 0), std::min(at + 1, Peaks().PeakNum - 1),
                      Spectrum(), Peaks(), RegionMarks());
        NoteHandPeaks(slot, before);
        return at;
    } catch (const Fault&) {
        Peaks() = before;
        throw;
    }
}

void cmdOK_Click() {
    InputFitParameterView& v = frmInputFitParameter;
    const auto record = RecordOf();
    if (!record) return;
    const int at = Insert(*record);
    if (at < 0) {
        Tell(Peaks().PeakNum >= MAX_PEAKS
                 ? "The list is full: it holds " + std::to_string(MAX_PEAKS) + " peaks."
                 : "A peak whose centre is channel 1 cannot be listed.");
        return;
    }
    v.Visible = false;
    const int window = WindowOfRow(RowOfSlot(frmInputFitParameter.Slot));
    ShowFitGraph(window, v.Slot);
    RedrawBoth();
    CsrX_Change(Whole16(record->Position));
    ShowPeakMemo(window, v.Slot, at);
    TellStatus("Added peak " + std::to_string(at + 1) + " of " + std::to_string(Peaks().PeakNum) +
               " by hand.");
}

void cmdCancel_Click() { frmInputFitParameter.Visible = false; }

}  // namespace

InputFitParameterView::InputFitParameterView()
    : View("frmInputFitParameter", "Input Fit Parameter") {
    Modal = true;
    txtCenterCh.Tip = "Channel of the centre, from 1";
    txtMaxCount.Tip = "Height above the background, counts";
    txtWidth.Tip = "Full width at half maximum, channels";
    cmdOK.Tip = "Adds the peak as it stands, without a fit";
    cmdOK.Click = cmdOK_Click;
    cmdCancel.Click = cmdCancel_Click;
    KeyPreview = EnterEscape(cmdOK_Click, cmdCancel_Click);
}

void ShowInputFitParameter(int slot) {
    frmInputFitParameter.Slot = slot;
    Fill();
    ShowModal(frmInputFitParameter);
}

}  // namespace vael
