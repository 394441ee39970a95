// The two graph windows: what they show, at which scale, and their redrawing.
#include "core/windows.h"

#include "analysis/frmpeakreport.h"
#include "analysis/frmroireport.h"
#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/fault.h"
#include "core/frmdialogmessage.h"
#include "core/frmgrpcalc.h"
#include "core/frmlog.h"
#include "core/graphs.h"
#include "core/pointing.h"
#include "core/regionmarks.h"
#include "core/scales.h"
#include "core/store.h"
#include "core/text.h"
#include "core/units.h"
#include "files/frmproperty.h"
#include "lattice/frmatom.h"
#include "lattice/frmpeakcal.h"
#include "lattice/reflectionmarkcommands.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace vael {
namespace {

constexpr std::int32_t START_SCALE = 10000000;
constexpr int X_TICKS = 4;  // the lower axis has four divisions

Talk EngineTalk() {
    Talk talk;
    talk.log = [](std::string_view line) { PutLog(std::string(line)); };
    talk.say = [](std::string_view text, std::string_view title) {
        ShowMessage(2, std::string(text), std::string(title));
    };
    return talk;
}

WindowState& State(int win) { return Item(frmVaelAna.Windows, win); }

std::size_t Index(int win) { return static_cast<std::size_t>(win); }

bool Logarithmic() { return frmVaelAna.ckbLogScale.Value != 0; }

void DrawCountAxis(int win) {
    Picture& strip = frmVaelAna.picScaleY[Index(win)];
    strip.Paper().ScaleReset();
    strip.Paper().Clear(frmVaelAna.StripBack);
    // A full scale below 10 is how the axis knows that it is logarithmic.
    const std::int32_t scale = Logarithmic() ? LOG_DECADES : State(win).FullScale;
    YScaleDraw(strip.Paper(), scale, State(win).CountAxis, frmVaelAna.StripInk);
    ++strip.Painted;
}

void SetChannels(int win) {
    Engine().SetChannelRange(win, State(win).Start + 1, State(win).Start + State(win).Span);
}

/// How many rows a pile has, and the place of one of them from below (-1: it is not drawn).
struct Lane {
    int Count = 0;
    int At = -1;
};

Lane LaneOf(int slot) {
    Lane lane;
    for (const GraphEntry& entry : store.GraphList) {
        if (entry.State == 0 || entry.Visible == 0) continue;
        if (entry.DataNo == slot) lane.At = lane.Count;
        ++lane.Count;
    }
    return lane;
}

/// Counts by which a slot's graph is lifted in a pile. On the log axis, where a sum of counts means
/// nothing, the graphs lie on each other.
std::int32_t Lift(int slot) {
    if (!PiledUp() || Logarithmic()) return 0;
    const Lane lane = LaneOf(slot);
    if (lane.At <= 0) return 0;
    return static_cast<std::int32_t>(std::int64_t{State(0).FullScale} * lane.At / lane.Count);
}

/// The highest count of a window's graphs; in the magnifier only of the part that it shows.
std::int32_t HighestCount(int win) {
    const bool part = Expanded() && win == 1;
    std::int32_t highest = 0;
    for (const GraphEntry& entry : store.GraphList) {
        if (!Draws(win, entry)) continue;
        const SpectrumData& data = Item(store.SpectrumDatas, entry.DataNo);
        const int from = part ? State(win).Start : 0;
        const int to = part ? std::min<int>(data.DataNo, State(win).Start + State(win).Span)
                            : std::max<int>(0, data.DataNo);
        for (int i = from; i < to; ++i) highest = std::max(highest, Item(data.Count, i));
    }
    return highest;
}

}  // namespace

Colour WindowBack(int win) { return Item(store.ColorTable, ENTRY_WINDOW1_BACK + win); }

DrawEngine& Engine() {
    static DrawEngine engine{EngineTalk()};
    return engine;
}

bool Expanded() { return frmVaelAna.ckbExpand.Value != 0; }

bool PiledUp() { return frmVaelAna.WinStyle == WindowStyle::PileUp; }

bool WindowShown(int win) {
    const CheckBox& show = frmVaelAna.chkFilePile[Index(win)];
    return !show.Enabled || show.Value != 0;
}

void FreeShowSwitch(int win) {
    CheckBox& show = frmVaelAna.chkFilePile[Index(win)];
    if (!show.Enabled) show.Value = 1;
    show.Enabled = true;
}

void ArrangeWindows() {
    for (int win = 0; win < WINDOW_COUNT; ++win)
        frmVaelAna.fraGraph[Index(win)].Visible = WindowShown(win);
}

int RangeWindow() { return Expanded() ? 1 : 0; }

void WindowSetup() {
    Engine().ClearAll();
    for (int win = 0; win < WINDOW_COUNT; ++win) {
        DrawTarget& target = Engine().Target(win);
        target.Canvas = &frmVaelAna.picGraph[Index(win)].Paper();
        target.BackColor = WindowBack(win);
        State(win) = WindowState{};
        Engine().SetFullScale(win, START_SCALE, false);
    }
    FillScaleList();
    WindowSpan();
    ArrangeWindows();
}

void WindowSpan() {
    for (int win = 0; win < WINDOW_COUNT; ++win) {
        State(win).Start = 0;
        State(win).Span = store.SpanCh;
        SetChannels(win);
    }
    ShowRange(0, store.SpanCh);
}

void ShowRange(int start, int span) {
    VaelAnaView& v = frmVaelAna;
    span = std::clamp<int>(span, 2, store.SpanCh);
    start = std::clamp<int>(start, 0, store.SpanCh - span);
    v.hsbStartX.Least = 0;
    v.hsbStartX.Most = store.SpanCh - span;
    v.hsbStartX.Small = std::max(1, span / 50);
    v.hsbStartX.Large = std::max(1, span / 2);
    v.hsbStartX.Value = start;
    v.imnSpanCh.Value = span;
    v.inumScaleX.Value = WidthToUnit(AxisUnit(), span, ParamInForce(DataNo()));
    for (int win = RangeWindow(); win < WINDOW_COUNT; ++win) {
        State(win).Start = start;
        State(win).Span = span;
        SetChannels(win);
    }
}

int DrawnWindow(const GraphEntry& entry) { return PiledUp() ? 0 : entry.WinNo; }

bool Draws(int win, const GraphEntry& entry) {
    if (entry.State == 0 || entry.Visible == 0) return false;
    return DrawnWindow(entry) == win || (Expanded() && DrawnWindow(entry) == 0);
}

void RegisterRow(int row) {
    const GraphEntry& entry = Item(store.GraphList, row);
    if (entry.State == 0) return;  // its slot number says nothing
    WithdrawSlot(entry.DataNo);
    if (entry.Visible == 0) return;
    const SpectrumData& data = Item(store.SpectrumDatas, entry.DataNo);
    const std::int32_t lift = Lift(entry.DataNo);
    std::vector<std::int32_t> lifted;
    std::span<const std::int32_t> counts = data.Count;
    if (lift != 0) {
        constexpr std::int32_t MOST = std::numeric_limits<std::int32_t>::max();
        lifted.reserve(counts.size());
        for (const std::int32_t count : counts)
            lifted.push_back(count > MOST - lift ? MOST : count + lift);
        counts = lifted;
    }
    for (int win = 0; win < WINDOW_COUNT; ++win)
        if (Draws(win, entry))
            Engine().RegisterGraph(win, entry.DataNo, counts, std::max<int>(0, data.DataNo),
                                   entry.Color);
}

void RegisterAllRows() {
    for (int slot = 0; slot < SLOT_COUNT; ++slot) WithdrawSlot(slot);
    for (int row = 0; row < GRAPH_COUNT; ++row) RegisterRow(row);
}

void WithdrawSlot(int slot) {
    for (int win = 0; win < WINDOW_COUNT; ++win) Engine().WithdrawGraph(win, slot);
}

void AutoScale(int win) {
    if (frmVaelAna.ckbVtAuto.Value != 0) {
        const std::int64_t highest = HighestCount(win);
        const int lanes = PiledUp() && win == 0 ? std::max(1, LaneOf(-1).Count) : 1;
        if (highest > 0) State(win).FullScale = AutoFullScale(highest * lanes);
    }
    ApplyScale(win);
}

void AutoScaleBoth() {
    for (int win = 0; win < WINDOW_COUNT; ++win) AutoScale(win);
}

std::int32_t YFullScale(int win) { return State(win).FullScale; }

void SetYFullScale(int win, std::int32_t scale) {
    State(win).FullScale = std::clamp(scale, FullScales().front(), FullScales().back());
    ApplyScale(win);
}

void ApplyScale(int win) {
    Engine().SetFullScale(win, State(win).FullScale, Logarithmic());
    HidePeakMemo();                                // it stands above a peak of the former height
    if (PiledUp() && win == 0) RegisterAllRows();  // the lifts are parts of the height
    ShowScale();
}

void TakeColours(const ColourTable& table) {
    store.ColorTable = table;
    for (GraphEntry& entry : store.GraphList)
        if (entry.State != 0) entry.Color = Item(table, entry.DataNo);
    for (int i = 0; i < store.Rois.RoiNum; ++i) Item(store.Rois.RoiTable, i).Color = RoiColor();
    // A graph of the arithmetic is drawn without having a row, so all slots are asked.
    for (int win = 0; win < WINDOW_COUNT; ++win)
        for (int slot = 0; slot < SLOT_COUNT; ++slot)
            Engine().SetGraphColor(win, slot, Item(table, slot));
    RefreshRows();
    RedrawBoth();
}

double PlotTop(int win) { return Engine().Target(win).YTop; }

double PlotHeight(int win, int slot, int channel) {
    const SpectrumData& data = Item(store.SpectrumDatas, slot);
    if (channel < 0 || channel >= data.DataNo) return 0.0;
    double height = Item(data.Count, channel);
    if (Logarithmic())
        height = height > 1.0 ? std::log10(height) : 0.0;
    else
        height += Lift(slot);
    return std::clamp(height, 0.0, PlotTop(win));
}

void RedrawWindow(int win) {
    Picture& plot = frmVaelAna.picGraph[Index(win)];
    Engine().Target(win).Canvas = &plot.Paper();
    Engine().Target(win).BackColor = WindowBack(win);
    frmVaelAna.fraGraph[Index(win)].Edge = Item(store.ColorTable, ENTRY_BASE_FORM);
    Engine().DropMarks(win);  // the new picture has none
    PutElementMarks(win);
    for (const GraphEntry& entry : store.GraphList)
        if (Draws(win, entry)) ColourRegions(entry.DataNo);
    Engine().Replot(win);
    DrawRoiLabels(win);
    DrawReflectionMarks(win);
    if (frmVaelAna.chkPeakParameter.Value != 0) {
        Engine().DrawPeakMarks(win, store.PeakTables, Item(store.ColorTable, ENTRY_PEAK_MARK));
        DrawPeakNumbers(win);
    }
    PutCursorMark(win);
    PutAreaMarks(win);
    if (win == 0) RefreshBand();
    ++plot.Painted;
    DrawCountAxis(win);
}

void RedrawBoth() {
    for (int win = 0; win < WINDOW_COUNT; ++win) RedrawWindow(win);
    RefreshReports();
}

void RefreshReports() {
    RefreshPeakReport();
    RefreshProperty();
    RefreshElementMarks();
    RefreshPeakCal();
    RefreshGrpCalc();
    if (frmRoiReport.Visible) RefreshRoiReport();
}

void EraseWindows() {
    for (int slot = 0; slot < SLOT_COUNT; ++slot) WithdrawSlot(slot);
    Engine().ClearRegistrations();
    for (int win = 0; win < WINDOW_COUNT; ++win) {
        Engine().Erase(win);
        ++frmVaelAna.picGraph[Index(win)].Painted;
    }
}

int AxisUnit() { return AxisUnit(DataNo()); }

int AxisUnit(int slot) {
    const int unit = std::max(0, frmVaelAna.cboUnitX.Index);
    const bool angle = Item(store.PropertyRecords, slot).SourceType == SOURCE_DAC;
    return unit == UNIT_2THETA && !angle ? int{UNIT_CH} : unit;
}

void XScaleDraw() {
    VaelAnaView& v = frmVaelAna;
    Picture& strip = v.picSubScale;
    const int slot = DataNo();
    const PropertyRecord& prop = Item(store.PropertyRecords, slot);
    const ParamRecord& inForce = ParamInForce(slot);
    strip.Paper().ScaleReset();
    strip.Paper().Clear(v.StripBack);
    XScaleDraw(strip.Paper(),
               {.Unit = AxisUnit(),
                .Ticks = X_TICKS,
                .Span = v.imnSpanCh.Value,
                .Start = static_cast<double>(v.hsbStartX.Value),
                .OwnTwoTheta = prop.Param.TwoTheta},
               inForce, DacNow(), v.LowerAxis, v.StripInk);
    v.inumScaleX.Value = WidthToUnit(AxisUnit(), v.imnSpanCh.Value, inForce);
    ++strip.Painted;
    RefreshReports();  // unit and calibration are those of the axis
}

}  // namespace vael
