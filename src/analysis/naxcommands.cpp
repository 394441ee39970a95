// The NAX commands on graph rows: where a fit's peaks, curve and background go.
#include "analysis/naxcommands.h"

#include "analysis/handpeakcommands.h"
#include "analysis/naxwalk.h"
#include "analysis/peak.h"
#include "core/fault.h"
#include "core/fitgraph.h"
#include "core/frmlog.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/regionmarks.h"
#include "core/store.h"
#include "core/windows.h"
#include "toolkit/hand.h"

#include <cmath>
#include <memory>

namespace vael {
namespace {

/// The voice of a running fit. The status line counts the groups that the walk has fitted.
Talk FitTalk() {
    Talk talk;
    TellStatus("Fitting ...");
    talk.log = [groups = 0](std::string_view line) mutable {
        PutLog(std::string(line));
        if (!line.starts_with(NAX_GROUP_LINE)) return;
        ++groups;
        TellStatus("Fitting: " + std::to_string(groups) + (groups == 1 ? " group" : " groups") +
                   " so far.");
    };
    talk.say = [](std::string_view text, std::string_view title) {
        Say(std::string(text), std::string(title));
    };
    talk.breathe = [] { TheDesk().Breathe(); };
    return talk;
}

NaxTarget TargetFor(int window, int slot) {
    return {.Window = window,
            .Slot = slot,
            .Spectrum = Item(store.SpectrumDatas, slot),
            .Peaks = Item(store.PeakTables, slot),
            .Background = store.BackGroundBuf};
}

/// The fit graph of `source` with the run's peaks, which becomes the current row.
void ShowFit(int window, int source) {
    const int row = PutFitGraph(window, source, FitRow::Named);
    if (row < 0) return;
    AutoScaleBoth();
    Change_cboGrphSel(window, row);
    RedrawBoth();
}

/// A line that was in the table and is fitted again is not in it twice.
void DropSameLines(int window, int slot, const NaxResult& result) {
    constexpr double SAME = 0.25;  // of the half width: nearer centres are one line
    PeakTable& peaks = Item(store.PeakTables, slot);
    for (const NaxPeakRow& row : result.Peaks)
        for (int i = peaks.PeakNum - 1; i >= 0; --i)
            if (std::fabs(Item(peaks.Peak, i).Position - (row.Position - 1.0)) <
                SAME * row.Fwhm / 2.0)
                DeletePeak(window, slot, i, peaks, RegionMarks());
}

std::string PeaksText(int count) {
    return std::to_string(count) + (count == 1 ? " peak" : " peaks");
}

}  // namespace

NaxSettings NaxSettingsFor(int slot) {
    return {.EACPS = settings.EACPS,
            .ISPPK = settings.ISPPK,
            .FuncType = settings.FuncType,
            .FirstCh = 1,
            .LastCh = 0,
            .TwoTheta = std::fabs(Item(store.PropertyRecords, slot).Param.TwoTheta)};
}

void NaxAllFit(int window, int graph) {
    const int slot = GetGraphDataNo(graph);
    Item(store.PeakTables, slot) = PeakTable{};
    const auto state = std::make_unique<NaxState>();
    const NaxSettings run = NaxSettingsFor(slot);
    const NaxResult result = NaxFitAll(Item(store.SpectrumDatas, slot), run, *state, FitTalk());
    if (result.Peaks.empty()) {
        TellStatus("Fit: no peaks were found.");
        return;
    }
    NaxStoreAll(result, run.FuncType, TargetFor(window, slot), RegionMarks());
    ShowFit(window, slot);
    const int count = Item(store.PeakTables, slot).PeakNum;
    TellStatus("Fit: " + PeaksText(count) + " in " + std::to_string(result.Groups.size()) +
               " groups; the log tells each.");
}

int NaxManualFit(int window, int graph, const NaxManualInput& input) {
    const int slot = GetGraphDataNo(graph);
    const auto state = std::make_unique<NaxState>();
    const NaxSettings run = NaxSettingsFor(slot);
    const NaxResult result =
        NaxFitManual(input, Item(store.SpectrumDatas, slot), run, *state, FitTalk());
    if (result.Result != 0) {
        TellStatus("Manual fit: no result; the log tells the last numbers.");
        return -1;
    }
    PeakTable& peaks = Item(store.PeakTables, slot);
    const PeakTable before = peaks;
    DropSameLines(window, slot, result);
    const int kept = peaks.PeakNum;
    try {
        NaxStoreManual(result, run.FuncType, TargetFor(window, slot), RegionMarks());
    } catch (const Fault&) {  // a centre that left the spectrum: none of the peaks is kept
        peaks = before;
        RedrawBoth();
        Say("Can not fit");
        return -1;
    }
    NoteHandPeaks(slot, before);
    ShowFitGraph(window, slot);
    RedrawBoth();
    const int fitted = static_cast<int>(result.Peaks.size());
    const int added = peaks.PeakNum - kept;
    TellStatus(added == fitted ? "Manual fit: " + PeaksText(fitted) + "; the log tells them."
                               : "Manual fit: the list is full, " + PeaksText(fitted - added) +
                                     " of " + std::to_string(fitted) + " found no place.");
    return 0;
}

}  // namespace vael
