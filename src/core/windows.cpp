// The two graph windows: what they show, at which scale, and their redrawing.
#include "core/windows.h"

#include "core/fault.h"
#include "core/frmdialogmessage.h"
#include "core/frmlog.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/store.h"
#include "core/text.h"
#include "core/units.h"

#include <algorithm>

namespace vael {
namespace {

constexpr std::int32_t START_SCALE = 10000000;
constexpr int ROLE_WINDOW_BACK = SLOT_COUNT + 7;  // "Window1 Back", "Window2 Back" of the colours
constexpr int X_TICKS = 4;                        // the lower axis has four divisions

std::array<std::int32_t, WINDOW_COUNT> fullScale{START_SCALE, START_SCALE};
std::array<AxisScale, WINDOW_COUNT> countAxis;
AxisScale lowerAxis;
int rangeStart = 0;

Talk EngineTalk() {
    Talk talk;
    talk.log = [](std::string_view line) { PutLog(std::string(line)); };
    talk.say = [](std::string_view text, std::string_view title) {
        ShowMessage(2, std::string(text), std::string(title));
    };
    return talk;
}

std::size_t Index(int win) { return static_cast<std::size_t>(win); }

void DrawCountAxis(int win) {
    Picture& strip = frmVaelAna.picScaleY[Index(win)];
    strip.Paper().ScaleReset();
    strip.Paper().Clear(frmVaelAna.StripBack);
    YScaleDraw(strip.Paper(), fullScale[Index(win)], countAxis[Index(win)], frmVaelAna.StripInk);
    ++strip.Painted;
}

}  // namespace

DrawEngine& Engine() {
    static DrawEngine engine{EngineTalk()};
    return engine;
}

void WindowSetup() {
    Engine().ClearAll();
    for (int win = 0; win < WINDOW_COUNT; ++win) {
        DrawTarget& target = Engine().Target(win);
        target.Canvas = &frmVaelAna.picGraph[Index(win)].Paper();
        target.BackColor = Item(store.ColorTable, ROLE_WINDOW_BACK + win);
        fullScale[Index(win)] = START_SCALE;
        Engine().SetFullScale(win, START_SCALE, false);
    }
    frmVaelAna.itxtScaleY.Items = {"LOG", std::to_string(START_SCALE)};
    for (const std::int32_t scale : FullScales())
        if (scale != START_SCALE) frmVaelAna.itxtScaleY.Items.push_back(std::to_string(scale));
    frmVaelAna.itxtScaleY.Index = 1;
    WindowSpan();
}

void WindowSpan() { ShowRange(0, store.SpanCh); }

void ShowRange(int start, int span) {
    VaelAnaView& v = frmVaelAna;
    span = std::clamp<int>(span, 2, store.SpanCh);
    rangeStart = std::clamp<int>(start, 0, store.SpanCh - span);
    v.hsbStartX.Least = 0;
    v.hsbStartX.Most = store.SpanCh - span;
    v.hsbStartX.Large = std::max(1, span / 2);
    v.hsbStartX.Value = rangeStart;
    v.imnSpanCh.Value = span;
    v.inumScaleX.Value = v.UnitX == UNIT_CH || GraphNo() < 0
                             ? span
                             : WidthToUnit(v.UnitX, span, ParamInForce(DataNo()));
    for (int win = 0; win < WINDOW_COUNT; ++win)
        Engine().SetChannelRange(win, rangeStart + 1, rangeStart + span);
}

void RegisterRow(int row) {
    const GraphEntry& entry = Item(store.GraphList, row);
    WithdrawSlot(entry.DataNo);
    if (entry.State == 0 || entry.Visible == 0) return;
    const SpectrumData& data = Item(store.SpectrumDatas, entry.DataNo);
    Engine().RegisterGraph(entry.WinNo, entry.DataNo, data.Count, std::max<int>(0, data.DataNo),
                           entry.Color);
}

void WithdrawSlot(int slot) {
    for (int win = 0; win < WINDOW_COUNT; ++win) Engine().WithdrawGraph(win, slot);
}

void AutoScale(int win) {
    if (frmVaelAna.ckbVtAuto.Value == 0) return;
    std::int32_t highest = 0;
    for (const GraphEntry& entry : store.GraphList) {
        if (entry.State == 0 || entry.Visible == 0 || entry.WinNo != win) continue;
        const SpectrumData& data = Item(store.SpectrumDatas, entry.DataNo);
        for (int i = 0; i < data.DataNo; ++i) highest = std::max(highest, Item(data.Count, i));
    }
    if (highest == 0) return;
    fullScale[Index(win)] = AutoFullScale(highest);
    Engine().SetFullScale(win, fullScale[Index(win)], false);
    auto& list = frmVaelAna.itxtScaleY;
    const auto text = std::to_string(fullScale[Index(win)]);
    const auto found = std::find(list.Items.begin(), list.Items.end(), text);
    if (found != list.Items.end()) list.Index = static_cast<int>(found - list.Items.begin());
}

std::int32_t YFullScale(int win) { return Item(fullScale, win); }

void RedrawWindow(int win) {
    Picture& plot = frmVaelAna.picGraph[Index(win)];
    Engine().Target(win).Canvas = &plot.Paper();
    Engine().Target(win).BackColor = Item(store.ColorTable, ROLE_WINDOW_BACK + win);
    Engine().Replot(win);
    ++plot.Painted;
    DrawCountAxis(win);
}

void RedrawBoth() {
    for (int win = 0; win < WINDOW_COUNT; ++win) RedrawWindow(win);
}

void EraseWindows() {
    for (int slot = 0; slot < SLOT_COUNT; ++slot) WithdrawSlot(slot);
    Engine().ClearRegistrations();
    for (int win = 0; win < WINDOW_COUNT; ++win) {
        Engine().Erase(win);
        ++frmVaelAna.picGraph[Index(win)].Painted;
    }
}

void XScaleDraw() {
    VaelAnaView& v = frmVaelAna;
    Picture& strip = v.picSubScale;
    const int slot = DataNo();
    const PropertyRecord& prop = Item(store.PropertyRecords, slot);
    const ParamRecord& inForce = ParamInForce(slot);
    int unit = v.cboUnitX.Index;
    // Only a spectrum of the DAC form has an angle axis.
    if (unit == UNIT_2THETA && prop.SourceType != SOURCE_DAC) unit = UNIT_CH;
    strip.Paper().ScaleReset();
    strip.Paper().Clear(v.StripBack);
    XScaleDraw(strip.Paper(),
               {.Unit = unit,
                .Ticks = X_TICKS,
                .Span = v.imnSpanCh.Value,
                .Start = static_cast<double>(rangeStart),
                .OwnTwoTheta = prop.Param.TwoTheta},
               inForce, DacNow(), lowerAxis, v.StripInk);
    v.inumScaleX.Value = WidthToUnit(std::max(0, unit), v.imnSpanCh.Value, inForce);
    ++strip.Painted;
}

}  // namespace vael
