// The road of one spectrum through the window's own commands: file, peaks, cell, pressure.
#include "batch/road.h"

#include "analysis/naxwalk.h"
#include "batch/batchdesk.h"
#include "batch/runtable.h"
#include "core/fault.h"
#include "core/frmlog.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/params.h"
#include "core/store.h"
#include "core/text.h"
#include "core/units.h"
#include "core/windows.h"
#include "display/page.h"
#include "display/paper.h"
#include "display/printing.h"
#include "display/svgcanvas.h"
#include "lattice/geometry.h"
#include "toolkit/hand.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace vael {
namespace {

/// The message of a file: what boxes said, joined.
std::string Joined(const std::vector<std::string>& texts) {
    std::string out;
    for (const std::string& text : texts) out += (out.empty() ? "" : "; ") + text;
    return out;
}

/// Rows that were left out, one text for each reason.
std::vector<std::string> UntickedTexts(const std::vector<UntickedRow>& rows,
                                       const std::vector<RoadPeak>& peaks) {
    std::vector<std::pair<std::string, std::string>> byReason;
    for (const UntickedRow& row : rows) {
        const std::string text = std::to_string(row.Index[0]) + " " + std::to_string(row.Index[1]) +
                                 " " + std::to_string(row.Index[2]) + " at " +
                                 FormatNumber(Item(peaks, row.Row).Ch, "0.00");
        if (byReason.empty() || byReason.back().first != row.Reason)
            byReason.emplace_back(row.Reason, text);
        else
            byReason.back().second += ", " + text;
    }
    std::vector<std::string> out;
    for (const auto& [reason, text] : byReason)
        out.push_back("not used: " + text + " (" + reason + ")");
    return out;
}

std::unique_ptr<LatticeState> FreshLattice(const CrystalTable& crystals) {
    auto state = std::make_unique<LatticeState>();
    state->Table = crystals;
    return state;
}

}  // namespace

Road::Road(BatchOptions options, std::string dataFolder)
    : options_(std::move(options)), folder_(std::move(dataFolder)) {
    if (options_.Crystal.empty()) return;
    crystals_ = ReadCrystalFile(folder_ + "/crystal.dat");
    crystal_ = static_cast<std::int16_t>(FindCrystal(crystals_, options_.Crystal));
    if (crystal_ < 0)
        throw Fault(FaultNumber::Argument, folder_ + "/crystal.dat: there is no crystal \"" +
                                               options_.Crystal + "\" in it.");
    if (!options_.Mode) {
        const auto key = MarkerKey(Item(crystals_.Crystals, crystal_).Name);
        options_.Mode = FindScale(key) ? MODE_MARKER : MODE_SAMPLE;
    }
}

RoadResult Road::Go(const std::string& file) {
    RoadResult result;
    result.File = file;
    BatchDesk desk;
    desk.NextFile = file;
    std::vector<std::string> faults;
    std::vector<std::string> logged;
    const auto finish = [&](const char* status) {
        result.Status = status;
        if (result.Message.empty()) result.Message = Joined(faults.empty() ? desk.Said : faults);
        UseDesk(nullptr);
        OnLogLine({});
        return result;
    };
    UseDesk(&desk);
    ResetHands();
    OnFault([&](View&, const std::string& sentence) { faults.push_back(sentence); });
    OnLogLine([&](const std::string& line) { logged.push_back(line); });
    try {
        store = Store{};
        settings = Settings{};
        Form_Load(folder_);
        if (options_.DefaultCalibration) Click(frmVaelAna.optEGC[0]);

        Click(options_.Express ? frmVaelAna.mnuExpressFit : frmVaelAna.mnuNaxFit);

        Click(frmVaelAna.mnuLoad);
        result.Remarked = !logged.empty();
        if (Item(store.GraphList, 0).State == 0) {
            result.Message = logged.empty() ? Joined(faults) : logged.front();
            return finish("unreadable");
        }
        const int slot = GetGraphDataNo(0);
        result.Channels = Item(store.SpectrumDatas, slot).DataNo;
        if (result.Channels <= 0) {
            result.Message =
                logged.empty() ? file + ": the spectrum has no channels." : logged.front();
            return finish("unreadable");
        }
        Settle(slot);
        const ParamRecord& param = Item(store.PropertyRecords, slot).Param;
        result.TemperatureC = param.Temperature;
        result.TwoTheta = param.TwoTheta;
        const PropertyRecord& about = Item(store.PropertyRecords, slot);
        result.Time = Moment(about.OpDate.View(), about.OpTime.View());
        if (!logged.empty()) result.Message = logged.front();  // a file cut off in its counts

        Click(frmVaelAna.cmdAutoFit);
        if (!faults.empty()) return finish("fault");
        const int fitRow = RowOfName(NAME_FIT);
        if (fitRow < 0) return finish("no-peaks");
        FillPeaks(GetGraphDataNo(fitRow), result);
        if (result.Peaks.empty()) return finish("no-peaks");
        if (crystal_ >= 0) Calculate(GetGraphDataNo(fitRow), result);
        return finish(result.Status.c_str());
    } catch (const std::exception& trouble) {
        result.Message = trouble.what();
        return finish("fault");
    }
}

void Road::Settle(int slot) const {
    if (options_.DefaultCalibration) SetDefaultEgc(slot);
    if (options_.TwoTheta) Item(store.PropertyRecords, slot).Param.TwoTheta = *options_.TwoTheta;
    if (options_.Pickup) settings.PickupRange() = *options_.Pickup;
    if (options_.Threshold) settings.PeakThres = *options_.Threshold;
    if (options_.Shape) settings.FuncType = *options_.Shape;
    if (options_.PeakWidth) settings.ISPPK = *options_.PeakWidth;
    if (options_.BgCoefficient) settings.EACPS = *options_.BgCoefficient;
    if (options_.AutoBg) settings.EACPS = AutoBgCoefficient(Item(store.SpectrumDatas, slot));
    if (options_.Smooth) {
        settings.SmoothingOn = *options_.Smooth < 0 ? 0 : 1;
        if (*options_.Smooth >= 0)
            settings.SmoothIndex = static_cast<std::int16_t>(*options_.Smooth);
    }
}

void Road::FillPeaks(int slot, RoadResult& result) const {
    const PeakTable& peaks = Item(store.PeakTables, slot);
    const ParamRecord& param = Item(store.PropertyRecords, slot).Param;
    for (int i = 0; i < peaks.PeakNum; ++i) {
        const PeakRecord& peak = Item(peaks.Peak, i);
        result.Peaks.push_back({.Ch = peak.Position + 1.0,
                                .KeV = ChToUnit(UNIT_KEV, peak.Position, param, DacNow()),
                                .D = ChToUnit(UNIT_D, peak.Position, param, DacNow()),
                                .FwhmCh = peak.Width + peak.Width,
                                .Amplitude = peak.Amplitude,
                                .Net = peak.Intensity,
                                .Index = std::nullopt,
                                .DCalc = std::nullopt,
                                .Matched = false,
                                .Used = false});
    }
}

void Road::Calculate(int slot, RoadResult& result) {
    const auto state = FreshLattice(crystals_);
    const PropertyRecord& property = Item(store.PropertyRecords, slot);
    const MatchSource source{.GraphNo = static_cast<std::int16_t>(RowOfSlot(slot)),
                             .DataNo = static_cast<std::int16_t>(slot),
                             .Peaks = Item(store.PeakTables, slot),
                             .Property = property,
                             .Dac = DacNow(),
                             .PickupRange = settings.PickupRange()};
    const double temperature = options_.Temperature.value_or(property.Param.Temperature);
    const int unit = options_.Temperature ? options_.Unit : TEMPERATURE_CELSIUS;
    result.TemperatureC = ToCelsius(temperature, unit);
    const CrystalRecord& crystal = Item(crystals_.Crystals, crystal_);
    result.Crystal = crystal.Name;
    std::vector<std::string> said;
    Talk talk;
    talk.say = [&](std::string_view text, std::string_view) { said.emplace_back(text); };

    RuledValues ruled =
        CalcByRules(*state, RequestFor(*state, crystal_, *options_.Mode, temperature, unit), source,
                    options_.Rules, talk);
    result.System = Item(state->Table.Crystals, crystal_).System;
    const LatticeValues& values = ruled.Values;
    for (std::size_t i = 0; i < result.Peaks.size(); ++i) {
        const ReflectionMatch& row = state->FitData.Match[i];
        if (row.Matched == FALSE_WORD) continue;
        RoadPeak& peak = result.Peaks[i];
        peak.Index = Hkl{row.H, row.K, row.L};
        peak.Matched = true;
        peak.Used = row.Excluded == FALSE_WORD;
        peak.DCalc =
            values.Status == CalcStatus::Ok ? CalculatedD(values, result.System, row) : row.DCal;
    }
    for (std::string& text : UntickedTexts(ruled.Unticked, result.Peaks))
        said.push_back(std::move(text));
    if (!said.empty()) result.Message += (result.Message.empty() ? "" : "; ") + Joined(said);
    switch (values.Status) {
        case CalcStatus::Ok: break;
        case CalcStatus::TooFewLines: result.Status = "few-lines"; return;
        case CalcStatus::Singular: result.Status = "singular"; return;
        case CalcStatus::NoCell:
            result.Status = "singular";
            result.Message += result.Message.empty() ? "the solved parameters are no cell"
                                                     : "; the solved parameters are no cell";
            return;
        case CalcStatus::LatticeType: result.Status = "fault"; return;
    }
    if (values.HasBoxes) {
        result.Cell = values;
    } else {
        result.Message += std::string(result.Message.empty() ? "" : "; ") +
                          "a marker must be cubic or hexagonal: no cell is shown in this mode";
    }
}

namespace {

std::string WithError(double value, double error, const char* format) {
    return FormatNumber(value, format) + " +- " + FormatNumber(error, format);
}

std::string HklText(const Hkl& index) {
    return std::to_string(index[0]) + " " + std::to_string(index[1]) + " " +
           std::to_string(index[2]);
}

/// Whether the k-th constant of the cell is a system's own, not set by another one.
bool IsOwn(int system, std::size_t k) {
    constexpr std::array<std::array<bool, 6>, 6> OWN{{{true},
                                                      {true, false, true},
                                                      {true, false, true},
                                                      {true, true, true},
                                                      {true, true, true, false, true},
                                                      {true, true, true, true, true, true}}};
    return Item(OWN, system)[k];
}

/// What fits on one line of a page.
std::string OneLine(const std::string& text) {
    constexpr std::size_t FITS = 170;
    return text.size() <= FITS ? text : text.substr(0, text.rfind(' ', FITS)) + " ...";
}

/// Cell, volume and pressure as lines of a page.
PageBlock CellBlock(const RoadResult& result) {
    const LatticeValues& v = *result.Cell;
    PageBlock block{.Title = result.Crystal, .Lines = {{"System", SystemListText(result.System)}}};
    if (result.TemperatureC)  // the one calculated with, which the call may have set
        block.Lines.emplace_back("T / C", FormatNumber(*result.TemperatureC, "0.0"));
    constexpr std::array<const char*, 6> NAMES{"a / A", "b / A", "c / A", "alpha", "beta", "gamma"};
    for (std::size_t k = 0; k < NAMES.size(); ++k)
        if (IsOwn(result.System, k))
            block.Lines.emplace_back(NAMES[k], WithError(v.CellNow[k], v.CellError[k], "0.00000"));
    block.Lines.emplace_back("V / A3", WithError(v.V, v.dV, "0.0000"));
    block.Lines.emplace_back("V/V0", WithError(v.X, v.dX, "0.000000"));
    if (v.Pressure) {
        block.Lines.emplace_back("P / GPa", WithError(v.Pressure->P, v.Pressure->Error, "0.000"));
        block.Lines.emplace_back("Scale", ScaleName(v.Pressure->Scale));
    }
    return block;
}

PageTable PeakPageTable(const RoadResult& result) {
    PageTable table{.Head = {"ch", "keV", "d / A", "fwhm", "net", "h k l", "d calc", "used"},
                    .Rows = {}};
    for (const RoadPeak& p : result.Peaks) {
        if (result.Cell && !p.Matched) continue;  // the peak list has them all
        table.Rows.push_back({FormatNumber(p.Ch, "0.00"), FormatNumber(p.KeV, "0.000"),
                              FormatNumber(p.D, "0.0000"), FormatNumber(p.FwhmCh, "0.00"),
                              FormatNumber(p.Net, "0"), p.Index ? HklText(*p.Index) : "",
                              p.DCalc ? FormatNumber(*p.DCalc, "0.0000") : "",
                              p.Used ? "yes" : ""});
    }
    return table;
}

}  // namespace

std::vector<std::string> Road::Pages(const RoadResult& result) const {
    const int slot = 0;  // the file's own: the road starts in an empty store
    const PropertyRecord& property = Item(store.PropertyRecords, slot);
    const auto counts = [&](int which) {
        const auto& all = Item(store.SpectrumDatas, which).Count;
        return std::vector<std::int32_t>(all.begin(),
                                         all.begin() + std::max<int>(0, result.Channels));
    };
    PagePlot plot;
    std::vector<std::int32_t> back;
    if (const int row = RowOfName(NAME_BACKGROUND); row >= 0) back = counts(GetGraphDataNo(row));
    if (const int row = RowOfName(NAME_FIT); row >= 0) {
        std::vector<std::int32_t> fit = counts(GetGraphDataNo(row));
        if (!back.empty()) fit = SumOf(fit, back);
        plot.Curves.push_back({.Name = back.empty() ? "fit" : "fit on background",
                               .Counts = fit,
                               .Where = back,
                               .Stretches = {},
                               .Ink = paper::FIT_COLOUR,
                               .Width = 2.2});
        plot.Rest = {.Counts = counts(slot), .Model = std::move(fit), .Where = back};
    }
    if (!back.empty())
        plot.Curves.push_back({.Name = "background",
                               .Counts = back,
                               .Where = back,
                               .Stretches = {},
                               .Ink = paper::BACK_COLOUR,
                               .Width = 0.8});
    plot.Curves.push_back({.Name = "counts", .Counts = counts(slot), .Where = {}, .Stretches = {}});
    plot.Param = property.Param;
    plot.Dac = DacNow();
    for (const RoadPeak& p : result.Peaks) {
        const int at = std::clamp(static_cast<int>(std::lround(p.Ch - 1.0)), 0, MAX_CHANNELS - 1);
        plot.Peaks.push_back(
            {.Ch = p.Ch - 1.0,
             .Count = static_cast<double>(Item(Item(store.SpectrumDatas, slot).Count, at)),
             .Label = p.Index ? HklText(*p.Index) + "  " + FormatNumber(p.D, "0.0000")
                              : FormatNumber(p.KeV, "0.00") + " keV",
             .Ink = p.Used || crystal_ < 0 ? paper::INK : paper::FAINT});
    }
    PageData page;
    page.Title = SplitFilePath(result.File).Base();
    page.Subtitle = std::to_string(result.Channels) + " channels, " +
                    std::to_string(result.Peaks.size()) + " peaks: " + result.Status;
    page.Plots.push_back(std::move(plot));
    page.Blocks = PropertyBlocks(property);
    if (result.Cell) page.Blocks.push_back(CellBlock(result));
    page.Table = PeakPageTable(result);
    page.Footer = OneLine(result.Message);

    SvgSurface paper;
    paper.SetTitle(page.Title);
    Canvas canvas(paper);
    std::vector<std::string> pages;
    (void)DrawPages(canvas, Engine(), page, [&] {
        pages.push_back(paper.Text());
        return true;
    });
    pages.push_back(paper.Text());
    return pages;
}

}  // namespace vael
