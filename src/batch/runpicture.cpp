// The picture of a run: one pass over the table for the ranges, one for the marks, then the page.
#include "batch/runpicture.h"

#include "batch/runtable.h"
#include "core/fault.h"
#include "core/text.h"
#include "display/paper.h"
#include "display/svgcanvas.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <functional>
#include <limits>
#include <optional>
#include <vector>

namespace vael {
namespace {

using paper::GRID;
using paper::INK;
using paper::MARGIN;
using paper::QUIET;
using paper::Write;
using paper::WriteRight;

constexpr Colour GAP = Rgb(240, 238, 230);
constexpr Colour MARK = paper::BACK_COLOUR;
// Vermilion of the palette of M. Okabe and K. Ito (2008): apart from the blue for the colour blind.
constexpr Colour FAILED = Rgb(213, 94, 0);

struct Panel {
    const char* Title;
    const char* Value;
    const char* Error;  // empty: the table has none
};
constexpr std::array<Panel, 6> PANELS{{{"P / GPa", "GPa", "GPa_error"},
                                       {"T / °C", "temperature_C", ""},
                                       {"V/V0", "V_V0", "V_V0_error"},
                                       {"a / Å", "a", "a_error"},
                                       {"b / Å", "b", "b_error"},
                                       {"c / Å", "c", "c_error"}}};
constexpr std::size_t PANEL_A = 3;

struct Value {
    double Mean = 0.0;
    double Error = 0.0;
};

struct RunPoint {
    std::optional<double> At;
    bool Fine = false;
    std::array<std::optional<Value>, PANELS.size()> Values;
};

struct Range {
    double Low = std::numeric_limits<double>::infinity();
    double High = -std::numeric_limits<double>::infinity();
    void Take(double value) {
        Low = std::min(Low, value);
        High = std::max(High, value);
    }
    [[nodiscard]] bool Empty() const { return Low > High; }
    [[nodiscard]] double Width() const { return High - Low; }
};

/// Reads the table from its beginning, row by row.
class Reader {
public:
    Reader(std::istream& table, RunAxis axis) : in_(table), axis_(axis) {
        in_.clear();
        in_.seekg(0);
        if (!ReadCsvRecord(in_, fields_)) Refuse();
        at_ = Column(axis == RunAxis::Number ? "number" : "time");
        status_ = Column("status");
        for (std::size_t k = 0; k < PANELS.size(); ++k) {
            value_[k] = Column(PANELS[k].Value);
            if (*PANELS[k].Error != '\0') error_[k] = Column(PANELS[k].Error);
        }
    }
    bool Next(RunPoint& point) {
        if (!ReadCsvRecord(in_, fields_)) return false;
        point = RunPoint{};
        point.At = axis_ == RunAxis::Number ? ParseNumber(Field(at_)) : Seconds(Field(at_));
        point.Fine = Field(status_) == "ok";
        for (std::size_t k = 0; k < PANELS.size(); ++k)
            if (const auto mean = ParseNumber(Field(value_[k])))
                point.Values[k] =
                    Value{*mean, error_[k] ? std::fabs(ParseNumber(Field(*error_[k])).value_or(0.0))
                                           : 0.0};
        return true;
    }

private:
    [[noreturn]] static void Refuse() {
        throw Fault(FaultNumber::FileContent, "line 1: the head of a run's table was expected.");
    }
    [[nodiscard]] std::size_t Column(const char* name) const {
        const auto found = std::find(fields_.begin(), fields_.end(), name);
        if (found == fields_.end()) Refuse();
        return static_cast<std::size_t>(found - fields_.begin());
    }
    [[nodiscard]] std::string Field(std::size_t k) const {
        return k < fields_.size() ? fields_[k] : std::string();
    }
    std::istream& in_;
    RunAxis axis_;
    std::vector<std::string> fields_;
    std::size_t at_ = 0, status_ = 0;
    std::array<std::size_t, PANELS.size()> value_{};
    std::array<std::optional<std::size_t>, PANELS.size()> error_{};
};

/// What the first pass finds.
struct Ranges {
    Range At;
    std::array<Range, PANELS.size()> Values;
    std::array<bool, PANELS.size()> Own{};  // differs from a somewhere
    std::int64_t Rows = 0, Failed = 0, Nowhere = 0;
};

Ranges FirstPass(std::istream& table, RunAxis axis) {
    Ranges out;
    out.Own.fill(true);
    out.Own[PANEL_A + 1] = out.Own[PANEL_A + 2] = false;
    Reader reader(table, axis);
    for (RunPoint point; reader.Next(point);) {
        ++out.Rows;
        if (!point.Fine) ++out.Failed;
        if (!point.At) {
            ++out.Nowhere;
            continue;
        }
        out.At.Take(*point.At);
        for (std::size_t k = 0; k < PANELS.size(); ++k) {
            if (!point.Values[k]) continue;
            out.Values[k].Take(point.Values[k]->Mean);
            if (k > PANEL_A && point.Values[PANEL_A])
                out.Own[k] = out.Own[k] || point.Values[k]->Mean != point.Values[PANEL_A]->Mean;
        }
    }
    return out;
}

/// What stands in one quarter of a point of one panel.
struct Cell {
    Range Values;
    Range Bars;
};

constexpr double LEFT = 96.0;
constexpr double TOP = 74.0;
constexpr double FOOT = 56.0;        // below the lowest panel: crosses, axis, labels
constexpr double BETWEEN = 8.0;      // panels
constexpr double CELLS_A_POINT = 4;  // quarters
constexpr double GAP_FACTOR = 5.0;
constexpr double MARK_SIZE = 3.0;  // a square

/// 1, 2 or 5 times a power of ten, of which at most `most` fit into the width.
double NiceStep(double width, int most) {
    if (!(width > 0.0)) return 1.0;
    const double raw = width / most;
    const double power = std::pow(10.0, std::floor(std::log10(raw)));
    for (const double step : {1.0, 2.0, 5.0})
        if (step * power >= raw * (1.0 - 1e-9)) return step * power;
    return 10.0 * power;
}

std::string TickText(double value, double step) {
    const int decimals = std::clamp(static_cast<int>(-std::floor(std::log10(step) + 1e-9)), 0, 9);
    std::string format = "0";
    if (decimals > 0) format += "." + std::string(static_cast<std::size_t>(decimals), '0');
    return FormatNumber(value, format);
}

class Picture {
public:
    Picture(std::istream& table, RunAxis axis, const std::string& title)
        : axis_(axis), title_(title), ranges_(FirstPass(table, axis)), canvas_(paper_) {
        for (std::size_t k = 0; k < PANELS.size(); ++k)
            if (!ranges_.Values[k].Empty() && ranges_.Own[k]) shown_.push_back(k);
        right_ = canvas_.PixelSize().Width - MARGIN;
        bottom_ = canvas_.PixelSize().Height - FOOT;
        places_ = static_cast<std::size_t>((right_ - LEFT) * CELLS_A_POINT);
        across_ = ranges_.At;
        if (across_.Empty()) across_ = {0.0, 1.0};
        const double pad = axis_ == RunAxis::Number ? 0.5 : std::max(30.0, 0.01 * across_.Width());
        across_ = {across_.Low - pad, across_.High + pad};
        SecondPass(table);
    }
    std::string Draw();

private:
    [[nodiscard]] double XOf(double at) const {
        return LEFT + (at - across_.Low) / across_.Width() * (right_ - LEFT);
    }
    [[nodiscard]] std::size_t Place(double at) const {
        const double part = (at - across_.Low) / across_.Width() * static_cast<double>(places_);
        return std::min(static_cast<std::size_t>(std::max(part, 0.0)), places_ - 1);
    }
    /// The cell of the axis on which gaps are looked for: one a number where there is room.
    [[nodiscard]] std::size_t GapPlace(double at) const {
        const double part =
            (at - across_.Low) / across_.Width() * static_cast<double>(seen_.size());
        return std::min(static_cast<std::size_t>(std::max(part, 0.0)), seen_.size() - 1);
    }
    void SecondPass(std::istream& table);
    void DrawHead();
    void DrawGaps();
    void DrawPanel(std::size_t panel, double top, double high);
    void DrawCrosses();
    void DrawNumbers();
    void DrawTimes();
    void TickAcross(double at, const std::string& text);

    RunAxis axis_;
    std::string title_;
    Ranges ranges_;
    SvgSurface paper_;
    Canvas canvas_;
    std::vector<std::size_t> shown_;
    double right_ = 0.0, bottom_ = 0.0;
    std::size_t places_ = 1;
    Range across_;
    std::vector<std::vector<Cell>> cells_;  // by shown panel
    std::vector<char> failed_;
    std::vector<char> seen_;
};

void Picture::SecondPass(std::istream& table) {
    cells_.assign(shown_.size(), std::vector<Cell>(places_));
    failed_.assign(places_, 0);
    const double numbers = across_.Width();  // on the axis of numbers: how many there are
    const bool each = axis_ == RunAxis::Number && numbers <= static_cast<double>(places_);
    seen_.assign(each ? static_cast<std::size_t>(std::lround(numbers)) : places_, 0);
    Reader reader(table, axis_);
    for (RunPoint point; reader.Next(point);) {
        // A row that came in between the passes may lie outside: the next picture has it.
        if (!point.At || *point.At < across_.Low || *point.At > across_.High) continue;
        const std::size_t place = Place(*point.At);
        seen_[GapPlace(*point.At)] = 1;
        if (!point.Fine) failed_[place] = 1;
        for (std::size_t s = 0; s < shown_.size(); ++s) {
            const auto& value = point.Values[shown_[s]];
            if (!value) continue;
            Cell& cell = cells_[s][place];
            cell.Values.Take(value->Mean);
            cell.Bars.Take(value->Mean - value->Error);
            cell.Bars.Take(value->Mean + value->Error);
        }
    }
}

std::string Picture::Draw() {
    paper_.SetTitle(title_);
    canvas_.Clear(paper::PAPER);
    DrawHead();
    DrawGaps();
    const auto panels = static_cast<double>(std::max<std::size_t>(shown_.size(), 1));
    const double high = (bottom_ - TOP - BETWEEN * (panels - 1.0)) / panels;
    for (std::size_t s = 0; s < shown_.size(); ++s)
        DrawPanel(s, TOP + static_cast<double>(s) * (high + BETWEEN), high);
    if (shown_.empty()) Write(canvas_, LEFT + 8.0, TOP + 8.0, "no results yet", QUIET, 9.0);
    DrawCrosses();
    if (axis_ == RunAxis::Number)
        DrawNumbers();
    else
        DrawTimes();
    return paper_.Text();
}

void Picture::DrawHead() {
    Write(canvas_, MARGIN, 26.0, title_, INK, 14.0, true);
    std::string counts = std::to_string(ranges_.Rows) + " files, " +
                         std::to_string(ranges_.Failed) + " without a result";
    if (ranges_.Nowhere > 0)
        counts += "; " + std::to_string(ranges_.Nowhere) + " without a date are not shown";
    Write(canvas_, MARGIN, 45.0, counts, QUIET, 8.5);
    canvas_.Line(MARGIN, 60.0, right_, 60.0, GRID);
    const double legend = right_ - 190.0;
    canvas_.Box(legend, 46.0, legend + 12.0, 54.0, GAP, true);
    Write(canvas_, legend + 16.0, 45.0, axis_ == RunAxis::Number ? "no file" : "long space", QUIET,
          7.5);
    Write(canvas_, legend + 80.0, 45.0, "x", FAILED, 8.5, true);
    Write(canvas_, legend + 90.0, 45.0, "a file without a result", QUIET, 7.5);
}

void Picture::DrawGaps() {
    const double width = across_.Width() / static_cast<double>(seen_.size());
    const double mean = ranges_.At.Width() / static_cast<double>(std::max<std::int64_t>(
                                                 ranges_.Rows - ranges_.Nowhere - 1, 1));
    const double least = axis_ == RunAxis::Number ? 0.0 : GAP_FACTOR * mean;
    const auto end = seen_.end();
    for (auto from = std::find(seen_.begin(), end, 1); from != end;) {
        from = std::find(from, end, 0);
        const auto to = std::find(from, end, 1);
        if (to == end) break;  // behind the last file there is no gap
        const double low = across_.Low + width * static_cast<double>(from - seen_.begin());
        const double high = across_.Low + width * static_cast<double>(to - seen_.begin());
        if (high - low > least) canvas_.Box(XOf(low), TOP, XOf(high), bottom_, GAP, true);
        from = to;
    }
}

void Picture::DrawPanel(std::size_t panel, double top, double high) {
    const std::size_t which = shown_[panel];
    Range range = ranges_.Values[which];
    double least = std::max(std::fabs(range.High), std::fabs(range.Low)) * 1e-6;
    if (least == 0.0) least = 1.0;
    // Bars widen the range as long as they do not make the points small: a fit that failed can have
    // an error of any size.
    const double reach = std::max(range.Width(), least);
    for (const Cell& cell : cells_[panel]) {
        if (cell.Bars.Empty()) continue;
        range.Take(std::max(cell.Bars.Low, ranges_.Values[which].Low - reach));
        range.Take(std::min(cell.Bars.High, ranges_.Values[which].High + reach));
    }
    const double pad = std::max(range.Width(), least) * 0.06;
    range = {range.Low - pad, range.High + pad};
    const double base = top + high;
    const auto yOf = [&](double value) {
        return base - std::clamp((value - range.Low) / range.Width(), 0.0, 1.0) * high;
    };

    const int most = std::clamp(static_cast<int>(high / 22.0), 2, 8);
    const double step = NiceStep(range.Width(), most);
    for (double tick = std::ceil(range.Low / step) * step; tick <= range.High; tick += step) {
        canvas_.Line(LEFT, yOf(tick), right_, yOf(tick), GRID);
        WriteRight(canvas_, LEFT - 5.0, yOf(tick) - 5.0, TickText(tick, step), INK, 8.0);
    }
    canvas_.TextAngle = 90.0;
    canvas_.FontSize = 9.0;
    Write(canvas_, MARGIN, top + high / 2.0 + canvas_.TextWidth(PANELS[which].Title) / 2.0,
          PANELS[which].Title, INK, 9.0);
    canvas_.TextAngle = 0.0;

    for (std::size_t place = 0; place < places_; ++place) {
        const Cell& cell = cells_[panel][place];
        if (cell.Values.Empty()) continue;
        const double x = LEFT + (static_cast<double>(place) + 0.5) / CELLS_A_POINT;
        canvas_.DrawWidth = 0.6;
        canvas_.Line(x, yOf(cell.Bars.Low), x, yOf(cell.Bars.High), MARK);
        canvas_.DrawWidth = MARK_SIZE;
        if (cell.Values.Width() > 0.0)
            canvas_.Line(x, yOf(cell.Values.Low), x, yOf(cell.Values.High), MARK);
        else
            canvas_.Line(x - MARK_SIZE / 2.0, yOf(cell.Values.Low), x + MARK_SIZE / 2.0,
                         yOf(cell.Values.Low), MARK);
    }
    canvas_.DrawWidth = 1.0;
    canvas_.Box(LEFT, top, right_, base, QUIET, false);
}

void Picture::DrawCrosses() {
    constexpr double reach = 2.2;
    const double y = bottom_ + 7.0;
    for (std::size_t place = 0; place < places_; ++place) {
        if (failed_[place] == 0) continue;
        const double x = LEFT + (static_cast<double>(place) + 0.5) / CELLS_A_POINT;
        canvas_.Line(x - reach, y - reach, x + reach, y + reach, FAILED);
        canvas_.Line(x - reach, y + reach, x + reach, y - reach, FAILED);
    }
}

void Picture::TickAcross(double at, const std::string& text) {
    canvas_.Line(XOf(at), bottom_, XOf(at), bottom_ + 4.0, QUIET);
    canvas_.FontSize = 8.0;
    Write(canvas_, XOf(at) - canvas_.TextWidth(text) / 2.0, bottom_ + 12.0, text, INK, 8.0);
}

void Picture::DrawNumbers() {
    const double step = std::max(1.0, NiceStep(across_.Width(), 12));
    for (double tick = std::ceil(across_.Low / step) * step; tick <= across_.High; tick += step)
        TickAcross(tick, TickText(tick, 1.0));
    WriteRight(canvas_, right_, bottom_ + 26.0, "file number", INK, 9.0);
}

void Picture::DrawTimes() {
    if (ranges_.At.Empty()) return;
    constexpr std::array<double, 19> STEPS{1,     2,     5,     10,    15,    30,   60,
                                           120,   300,   600,   900,   1800,  3600, 7200,
                                           10800, 21600, 43200, 86400, 172800};
    const auto enough = [&](double s) { return across_.Width() / s <= 12.0; };
    const auto found = std::find_if(STEPS.begin(), STEPS.end(), enough);
    const double step = found != STEPS.end()
                            ? *found
                            : 86400.0 * std::max(1.0, NiceStep(across_.Width() / 86400.0, 12));
    std::string before;
    for (double tick = std::ceil(across_.Low / step) * step; tick <= across_.High; tick += step) {
        const std::chrono::sys_seconds moment{
            std::chrono::seconds(static_cast<std::int64_t>(std::llround(tick)))};
        const auto day = std::chrono::floor<std::chrono::days>(moment);
        const std::chrono::year_month_day date{day};
        const std::chrono::hh_mm_ss clock{moment - day};
        const auto two = [](auto value) { return FormatNumber(static_cast<double>(value), "00"); };
        std::string text = two(clock.hours().count()) + ":" + two(clock.minutes().count());
        if (step < 60.0) text += ":" + two(clock.seconds().count());
        const std::string dayText = std::to_string(static_cast<int>(date.year())) + "-" +
                                    two(static_cast<unsigned>(date.month())) + "-" +
                                    two(static_cast<unsigned>(date.day()));
        TickAcross(tick, text);
        if (dayText != before) {
            canvas_.FontSize = 8.0;
            Write(canvas_, XOf(tick) - canvas_.TextWidth(dayText) / 2.0, bottom_ + 23.0, dayText,
                  QUIET, 8.0);
        }
        before = dayText;
    }
}

}  // namespace

std::string RunPicture(std::istream& table, RunAxis axis, const std::string& title) {
    return Picture(table, axis, title).Draw();
}

}  // namespace vael
