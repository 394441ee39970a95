// What the main view prints: its plots as they stand, the measurement, the current row's peaks.
#include "display/printing.h"

#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/store.h"
#include "core/text.h"
#include "core/units.h"
#include "core/windows.h"
#include "display/colourtable.h"
#include "display/edittext.h"
#include "display/paper.h"
#include "lattice/frmatom.h"
#include "lattice/reflectionmarkcommands.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace vael {
namespace {

using paper::OnWhite;

/// How a row of a name lies on paper: those of a lower rank undermost.
struct RowLook {
    const char* Name;
    int Rank;
    Colour Ink;
    double Wider;  // times the width of lines
};
constexpr std::array<RowLook, 4> LOOKS{{{NAME_FIT, 0, paper::FIT_COLOUR, 3.5},
                                        {NAME_BACKGROUND, 1, paper::BACK_COLOUR, 1.3},
                                        {NAME_REMOVED, 2, paper::REST_COLOUR, 1.0},
                                        {NAME_SMOOTH, 3, paper::QUIET, 1.0}}};
constexpr RowLook FILE_LOOK{"", 4, 0, 1.0};

const RowLook& LookOf(const std::string& name) {
    const auto found = std::find_if(LOOKS.begin(), LOOKS.end(),
                                    [&](const RowLook& look) { return name == look.Name; });
    return found == LOOKS.end() ? FILE_LOOK : *found;
}

bool DrawnIn(int win, const GraphEntry& entry) {
    return Draws(win, entry) && Item(Engine().Target(win).Graph, entry.DataNo).GraphInUse != 0;
}

/// The rows that a window draws, the undermost first.
std::vector<const GraphEntry*> RowsOf(int win) {
    std::vector<const GraphEntry*> rows;
    if (!WindowShown(win)) return rows;
    for (const GraphEntry& entry : store.GraphList)
        if (DrawnIn(win, entry)) rows.push_back(&entry);
    std::stable_sort(rows.begin(), rows.end(), [](const GraphEntry* a, const GraphEntry* b) {
        return LookOf(a->Name).Rank < LookOf(b->Name).Rank;
    });
    return rows;
}

/// The counts as they are drawn in a window, lifted in a pile.
std::vector<std::int32_t> CountsIn(int win, int slot) {
    const DrawTarget& target = Engine().Target(win);
    const DrawGraph& graph = Item(target.Graph, slot);
    const int channels = std::clamp<int>(Item(store.SpectrumDatas, slot).DataNo, 0, MAX_CHANNELS);
    std::vector<std::int32_t> counts;
    for (int i = 0; i < channels; ++i) counts.push_back(target.YTop - Item(graph.PlotY, i));
    return counts;
}

double CountAt(int win, int slot, double channel) {
    const DrawTarget& target = Engine().Target(win);
    const int at = static_cast<int>(std::clamp(std::round(channel), 0.0, MAX_CHANNELS - 1.0));
    return target.YTop - Item(Item(target.Graph, slot).PlotY, at);
}

/// The parts of a curve that are coloured on the screen, but for those that would be black as well.
std::vector<PageStretch> StretchesOf(int win, int slot, int channels) {
    const DrawGraph& graph = Item(Engine().Target(win).Graph, slot);
    std::vector<PageStretch> parts;
    for (int i = 0; i < channels; ++i) {
        const Colour colour = Item(graph.PlotColor, i);
        if (colour == 0 || OnWhite(colour) == paper::INK) continue;
        const Colour ink = OnWhite(colour);
        if (!parts.empty() && parts.back().End == i - 1 && parts.back().Ink == ink)
            parts.back().End = i;
        else
            parts.push_back({i, i, ink});
    }
    return parts;
}

PageCurve CurveOf(int win, const GraphEntry& entry, bool several, double width) {
    const RowLook& look = LookOf(entry.Name);
    PageCurve curve;
    curve.Name = entry.Name;
    curve.Counts = CountsIn(win, entry.DataNo);
    curve.Ink = look.Rank == FILE_LOOK.Rank && several ? OnWhite(entry.Color) : look.Ink;
    curve.Width = width * look.Wider;
    curve.Kind = Engine().Target(win).DrawKind;
    if (look.Rank != LOOKS.front().Rank)  // a fit keeps one colour
        curve.Stretches = StretchesOf(win, entry.DataNo, static_cast<int>(curve.Counts.size()));
    return curve;
}

/// Everything that marks a place on a window's plot.
std::vector<PagePeak> MarksOf(int win) {
    std::vector<PagePeak> marks;
    for (const ReflectionMark& mark : ReflectionMarksOn(win))
        marks.push_back({mark.Ch, CountAt(win, mark.Slot, mark.Ch), mark.Words, OnWhite(mark.Ink)});
    const Colour element = OnWhite(Item(store.ColorTable, ENTRY_ELEMENT_MARK));
    for (const ElementMark& mark : Item(frmAtom.Shown, win))
        marks.push_back({mark.Channel, 0.0, mark.Label, element});
    const Colour region = OnWhite(Item(store.ColorTable, ENTRY_ROI_TEXT));
    for (int i = 0; i < store.Rois.RoiNum; ++i) {
        const RoiRecord& roi = Item(store.Rois.RoiTable, i);
        const int row = roi.DataNo < SLOT_COUNT ? RowOfSlot(roi.DataNo) : -1;
        if (row >= 0 && DrawnIn(win, Item(store.GraphList, row)))
            marks.push_back({static_cast<double>(roi.StartCh),
                             CountAt(win, roi.DataNo, roi.StartCh), "ROI " + std::to_string(i + 1),
                             region});
    }
    if (frmVaelAna.chkPeakParameter.Value == 0 || !DrawnIn(win, Item(store.GraphList, GraphNo())))
        return marks;
    const PeakTable& peaks = Item(store.PeakTables, DataNo());
    for (int i = 0; i < peaks.PeakNum; ++i) {
        const double at = Item(peaks.Peak, i).Position;
        marks.push_back({at, CountAt(win, DataNo(), at), std::to_string(i + 1), paper::INK});
    }
    return marks;
}

PagePlot PlotOf(int win, const std::vector<const GraphEntry*>& rows, double width) {
    const DrawTarget& target = Engine().Target(win);
    const WindowState& window = Item(frmVaelAna.Windows, win);
    const GraphEntry* chosen = SelectedRow(win);
    const int slot = chosen != nullptr ? chosen->DataNo : rows.front()->DataNo;
    const bool several = std::count_if(rows.begin(), rows.end(), [](const GraphEntry* row) {
                             return LookOf(row->Name).Rank == FILE_LOOK.Rank;
                         }) > 1;
    PagePlot plot;
    for (const GraphEntry* row : rows) plot.Curves.push_back(CurveOf(win, *row, several, width));
    plot.Peaks = MarksOf(win);
    plot.Param = ParamInForce(slot);
    plot.Dac = DacNow();
    plot.Unit = AxisUnit(slot);
    plot.Log = target.LogScale != 0;
    plot.FullScale = YFullScale(win);
    plot.First = window.Start;
    plot.Last = window.Start + window.Span - 1;
    return plot;
}

std::string CalibrationText(const ParamRecord& param) {
    const auto& [a, b, c] = param.EgcCoef;
    return std::string(store.UseFileEgc != 0 ? "Calibration of this file" : "Default calibration") +
           ": E (keV) = " + NumberText(a) + " + " + NumberText(b) + " Ch + " + NumberText(c) +
           " Ch^2,  2theta = " + FormatNumber(param.TwoTheta, "0.00000");
}

/// The name of a row; of a derived one that of its spectrum with what it is.
std::string TitleOf(const GraphEntry& entry) {
    if (!IsDerivedName(entry.Name)) return entry.Name;
    const std::string file = Item(store.PropertyRecords, entry.DataNo).FileName.Trimmed();
    return file.empty() ? entry.Name : file + "  (" + entry.Name + ")";
}

}  // namespace

bool AnythingDrawn() {
    for (int win = 0; win < WINDOW_COUNT; ++win)
        if (!RowsOf(win).empty()) return true;
    return false;
}

PageData MainPage(double width) {
    PageData page;
    const GraphEntry& entry = Item(store.GraphList, GraphNo());
    const int slot = DataNo();
    const ParamRecord& param = ParamInForce(slot);
    page.Title = entry.State > 0 ? TitleOf(entry) : std::string();
    page.Subtitle = CalibrationText(param);
    page.Footer = frmVaelAna.mnuVersion.Caption;
    for (int win = 0; win < WINDOW_COUNT; ++win) {
        const auto rows = RowsOf(win);
        if (rows.empty()) continue;
        page.Plots.push_back(PlotOf(win, rows, width));
        const double share = frmVaelAna.fraWinHeight.Share;
        page.Plots.back().Share = std::clamp(win == 0 ? share : 1.0 - share, 0.2, 0.8);
    }
    if (entry.State == 0) return page;
    page.Blocks = PropertyBlocks(Item(store.PropertyRecords, slot));
    const PeakTable& peaks = Item(store.PeakTables, slot);
    if (peaks.PeakNum > 0) {
        page.Table = TableOf(MakePeakText(peaks, AxisUnit(slot), param, DacNow()), ',');
        page.Table.Head.insert(page.Table.Head.begin(), "#");
        for (std::size_t i = 0; i < page.Table.Rows.size(); ++i)
            page.Table.Rows[i].insert(page.Table.Rows[i].begin(), std::to_string(i + 1));
    }
    return page;
}

std::vector<PageBlock> PropertyBlocks(const PropertyRecord& property) {
    std::vector<PageBlock> blocks{{"Measurement", {}}, {"Conditions", {}}};
    std::size_t at = 0;
    for (auto& line : MakePropertyText(property)) {
        if (line.first.empty())
            ++at;
        else
            Item(blocks, static_cast<int>(at)).Lines.push_back(std::move(line));
    }
    return blocks;
}

bool PrintDataH(Canvas& canvas, double width, const NextPage& next) {
    return DrawPages(canvas, Engine(), MainPage(width), next);
}

PageTable TableOf(const std::vector<std::string>& lines, char separator) {
    PageTable table;
    for (const std::string& line : lines) {
        std::vector<std::string> fields;
        for (std::size_t from = 0; from <= line.size();) {
            const std::size_t to = std::min(line.find(separator, from), line.size());
            if (separator != ' ' || to > from) fields.push_back(line.substr(from, to - from));
            from = to + 1;
        }
        if (&line == &lines.front())
            table.Head = std::move(fields);
        else
            table.Rows.push_back(std::move(fields));
    }
    return table;
}

}  // namespace vael
