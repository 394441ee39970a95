// The commands of ExpressFitting and of single peaks: insertion, fit, split and removal.
#include "analysis/expresscommands.h"

#include "analysis/calfitting.h"
#include "analysis/calwavesprit.h"
#include "analysis/peak.h"
#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/fault.h"
#include "core/fitgraph.h"
#include "core/frmlog.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/operations.h"
#include "core/regionmarks.h"
#include "core/store.h"
#include "core/windows.h"
#include "toolkit/desk.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace vael {
namespace {

constexpr int CURSOR_SPAN = 20;  // channels that a search at the cursor looks at

Talk CommandTalk() {
    Talk talk;
    talk.log = [](std::string_view line) { PutLog(std::string(line)); };
    talk.say = [](std::string_view text, std::string_view title) {
        Say(std::string(text), std::string(title));
    };
    return talk;
}

PeakTable& Peaks(int slot) { return Item(store.PeakTables, slot); }
SpectrumData& Spectrum(int slot) { return Item(store.SpectrumDatas, slot); }

std::string Counted(int number, const std::string& noun) {
    return std::to_string(number) + " " + noun + (number == 1 ? "" : "s");
}

std::string Told(ChannelRange range) {
    return "channels " + std::to_string(range.Start + 1) + " to " + std::to_string(range.End + 1);
}

/// What a command shows when it has changed peaks of the current row.
void ShowPeaks() {
    HidePeakMemo();
    ShowCursorValues();
    RedrawBoth();
}

/// The part of a region that a slot's spectrum has; none where it begins behind the last channel.
ChannelRange Within(ChannelRange range, int slot) {
    range.Start = std::max(range.Start, 0);
    range.End = std::min<int>(range.End, Spectrum(slot).DataNo - 1);
    return range.Start > range.End ? ChannelRange{} : range;
}

/// The area of the area cursor; none where a mark is missing.
ChannelRange AreaRange() {
    std::int16_t start = 0;
    std::int16_t end = 0;
    if (GetRegions(start, end) != TRUE_WORD) return {};
    return {std::min(start, end), std::max(start, end)};
}

/// Rows of the peaks whose centres lie in a region. A fit may have moved one past its neighbour,
/// and the order of the table stays, so that they need not be neighbours.
std::vector<int> PeaksIn(int slot, ChannelRange range) {
    std::vector<int> rows;
    const PeakTable& peaks = Peaks(slot);
    if (CountPeakInRegion(peaks, range.Start, range.End).Count == 0) return rows;
    for (int i = 0; i < peaks.PeakNum; ++i) {
        const double position = Item(peaks.Peak, i).Position;
        if (position >= range.Start && position <= range.End) rows.push_back(i);
    }
    return rows;
}

void DeletePeaks(int win, int slot, const std::vector<int>& rows) {
    const Marks marks = RegionMarks();
    for (auto row = rows.rbegin(); row != rows.rend(); ++row)
        DeletePeak(win, slot, *row, Peaks(slot), marks);
}

/// What a fit or a split works on, and where: rows of the current slot's table, ascending.
struct Work {
    std::vector<int> Rows;
    ChannelRange Range;
};

/// With the area cursor on the peaks of its region, searched where there are none; with it off the
/// peak below the channel cursor.
Work PeaksToWorkOn() {
    const int slot = DataNo();
    if (frmVaelAna.chkArea.Value == 0) {
        const int row = FindPeakAt(Peaks(slot), CursorCh());
        if (row < 0) return {};
        const PeakRecord& peak = Item(Peaks(slot).Peak, row);
        return {.Rows = {row}, .Range = {peak.StartCh, peak.EndCh}};
    }
    ChannelRange range = AreaRange();
    if (range.Start >= 0) range = Within(range, slot);
    std::vector<int> rows = PeaksIn(slot, range);
    if (rows.empty()) {
        if (range.Start < 0 && AreaRange().Start >= 0) return {};  // behind the last channel
        range = InsertPeaks(GetRealWinNo(), GraphNo(), range.Start, range.End);
        rows = PeaksIn(slot, range);
    }
    return {.Rows = std::move(rows), .Range = range};
}

void TellNoPeak() {
    TellStatus(frmVaelAna.chkArea.Value == 0 ? "There is no peak below the cursor."
                                             : "There is no peak in the area.");
}

/// The fit graph of the current row's slot; that row stays the current one.
void ShowFitOf(int slot) {
    ShowFitGraph(GetRealWinNo(), slot);
    ShowPeaks();
}

/// Fits the rows on a copy of the table, which replaces it when all are done. Answers how many did
/// not converge; `stands` has 65535 for each row whose fit can stand.
int FitRows(int slot, const std::vector<int>& rows, std::array<std::uint16_t, MAX_PEAKS>& stands) {
    const int type = settings.FuncType;
    const int coefficients = type == SHAPE_MIX ? 5 : 4;
    PeakTable table = Peaks(slot);
    int open = 0;
    for (const int row : rows) {
        const FitOutcome outcome =
            FitOnePeak(Spectrum(slot), table, row, type, coefficients, stands, CommandTalk());
        CalcIntensity(Spectrum(slot), table, row);
        if (outcome.Status == FIT_CONVERGED) continue;
        ++open;
        PutLog("Peak " + std::to_string(row + 1) + ": " + outcome.Message);
    }
    Peaks(slot) = table;
    return open;
}

/// Adds the searched records to a slot's table and parts their regions.
int AddSearched(int win, int slot, const std::vector<PeakRecord>& found) {
    const Marks marks = RegionMarks();
    PeakTable& peaks = Peaks(slot);
    std::vector<int> rows;
    for (const PeakRecord& record : found) {
        const int row = AddPeak(Whole16(record.Position), win, slot, record, peaks, marks);
        if (row < 0) {
            Say("intPeakNo=-1");
            continue;
        }
        for (int& before : rows) before += before >= row ? 1 : 0;
        rows.push_back(row);
    }
    if (rows.empty()) return 0;
    const auto [first, last] = std::minmax_element(rows.begin(), rows.end());
    AdjustRegions(win, slot, *first, *last, Spectrum(slot), peaks, marks);
    for (const int row : rows) CalcIntensity(Spectrum(slot), peaks, row);
    return static_cast<int>(rows.size());
}

}  // namespace

ChannelRange InsertPeaks(int win, int row, int start, int end) {
    const int slot = GetGraphDataNo(row);
    const bool given = start >= 0;
    const ChannelRange range = Within(
        given ? ChannelRange{start, end} : ChannelRange{CursorCh(), CursorCh() + CURSOR_SPAN - 1},
        slot);
    if (range.Start < 0) {
        TellStatus("There are no channels of this spectrum.");
        return range;
    }
    std::vector<PeakRecord> found;
    if (PeakSearch(Spectrum(slot), range.Start, range.End - range.Start + 1, settings.PeakThres,
                   settings.FuncType, found, CommandTalk()) != 1) {
        TellStatus("The region is too large to be searched.");
        return {};
    }
    if (given) DeletePeaks(win, slot, PeaksIn(slot, range));
    const int added = AddSearched(win, slot, found);
    ShowPeaks();
    TellStatus("Inserted " + Counted(added, "peak") + " in " + Told(range) + ".");
    return range;
}

void FitPeak() {
    if (NothingThere()) return;
    if (settings.FuncType < SHAPE_GAUSS || settings.FuncType > SHAPE_MIX)
        settings.FuncType = SHAPE_GAUSS;
    const int slot = DataNo();
    const Work work = PeaksToWorkOn();
    if (work.Rows.empty()) {
        TellNoPeak();
        return;
    }
    std::array<std::uint16_t, MAX_PEAKS> stands{};
    const int open = FitRows(slot, work.Rows, stands);
    std::vector<int> cut;
    for (const int row : work.Rows)
        if (Item(stands, row) == 0) cut.push_back(row);
    DeletePeaks(GetRealWinNo(), slot, cut);
    const int count = static_cast<int>(cut.size());
    if (count > 0) Say(std::to_string(count) + " Peaks Cuted");
    ShowFitOf(slot);
    TellStatus(
        "Fit: " + Counted(static_cast<int>(work.Rows.size()) - count, "peak") + " in " +
        Told(work.Range) + (count > 0 ? ", " + std::to_string(count) + " cut" : "") +
        (open > 0 ? "; " + std::to_string(open) + " without convergence, see the log." : "."));
}

void PeakSep() {
    if (NothingThere()) return;
    const int slot = DataNo();
    const Work work = PeaksToWorkOn();
    if (work.Rows.empty()) {
        TellNoPeak();
        return;
    }
    if (work.Range.Start <= 0) {
        TellStatus("A region that begins at the first channel is not split.");
        return;
    }
    PeakTable& peaks = Peaks(slot);
    std::vector<PeakRecord> records;
    for (const int row : work.Rows) records.push_back(Item(peaks.Peak, row));
    const int result = WaveSprit(Spectrum(slot), work.Range.Start,
                                 work.Range.End - work.Range.Start + 1, records, CommandTalk());
    for (std::size_t k = 0; k < records.size(); ++k) {
        Item(peaks.Peak, work.Rows[k]) = records[k];
        CalcIntensity(Spectrum(slot), peaks, work.Rows[k]);
    }
    ShowFitOf(slot);
    if (result == SPLIT_REFUSED)
        TellStatus("Not split: " + Told(work.Range) + " are more than " +
                   std::to_string(SPLIT_CHANNELS) + ".");
    else
        TellStatus("Split " + Told(work.Range) + " into " +
                   Counted(static_cast<int>(records.size()), "peak") +
                   (result == 0 ? "." : "; the squares are still above the limit."));
}

void mnuExpressFit_Click() {
    store.FitMode = 1;
    frmVaelAna.mnuNaxFit.Checked = false;
    frmVaelAna.mnuExpressFit.Checked = true;
    frmVaelAna.lblFitter.Caption = frmVaelAna.mnuExpressFit.Caption;
    TellStatus("ExpressFitting is chosen.");
}

void mnuFitting() {
    if (NothingThere()) return;
    if (frmVaelAna.chkArea.Value != 0) {
        std::int16_t ok = FALSE_WORD;
        ResetRoiAll(ok);
        AreaToWholeAxis();
    }
    FitPeak();
}

void mnuFittingAll() {
    if (NothingThere()) return;
    FitPeak();
    std::int16_t ok = FALSE_WORD;
    ResetRoiAll(ok);
    RedrawBoth();
}

void mnuPeakIns() {
    if (NothingThere()) return;
    InsertPeaks(GetRealWinNo(), GraphNo(), -1, -1);
}

void mnuPeakAllIns() {
    if (NothingThere()) return;
    ChannelRange range{0, store.SpanCh - 1};
    if (frmVaelAna.chkArea.Value != 0 && AreaRange().Start >= 0) range = AreaRange();
    InsertPeaks(GetRealWinNo(), GraphNo(), range.Start, range.End);
}

void mnuPeakDelete() {
    if (NothingThere()) return;
    const int slot = DataNo();
    const int row = FindPeakAt(Peaks(slot), CursorCh());
    if (row < 0) {
        TellStatus("There is no peak below the cursor.");
        return;
    }
    DeletePeaks(GetRealWinNo(), slot, {row});
    ShowPeaks();
    TellStatus("Deleted peak " + std::to_string(row + 1) + ".");
}

void mnuPeakAllDelete() {
    if (NothingThere()) return;
    const int slot = DataNo();
    const int count = Peaks(slot).PeakNum;
    if (count == 0) {
        TellStatus("There are no peaks in this row.");
        return;
    }
    if (!AskYesNo("It will deletes peaks in the range of the area cursor")) return;
    Peaks(slot) = PeakTable{};
    ShowPeaks();
    TellStatus("Deleted " + Counted(count, "peak") + ".");
}

}  // namespace vael
