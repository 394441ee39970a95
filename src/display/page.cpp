// Pages of a result: the layout, the head, blocks of lines, the table and its next pages.
#include "display/page.h"

#include "display/pageplot.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vael {
namespace {

using namespace paper;

constexpr double BLOCK_SIZE = 8.0;  // points, like the sizes below
constexpr double TABLE_SIZE = 7.5;
constexpr double HEAD_END = 60.0;  // where the rule below the title stands
constexpr double FOOT = 28.0;      // from the lower edge: what is below belongs to the footer
constexpr double GAP = 12.0;       // between plots, blocks and table
constexpr double BETWEEN_COLUMNS = 9.0;
constexpr double BETWEEN_RUNS = 16.0;
constexpr double HEADING_TO_VALUE = 8.0;
constexpr double BETWEEN_BLOCKS = 22.0;
constexpr double WIDEST_BESIDE_TABLE = 120.0;  // a value of a block
constexpr double WIDEST_ABOVE_TABLE = 180.0;
constexpr double LEFT = MARGIN + 34.0;  // of the plots: the count axis stands left of it
constexpr double LEAST_PLOTS = 210.0;   // heights of all curves together on an upright page
constexpr double MOST_PLOTS = 330.0;
constexpr std::size_t BAND_ROWS = 12;  // rows below the plots of a page that is wider than tall
constexpr std::size_t TALL_ROWS = 17;  // the same where blocks stand one above the other
constexpr std::size_t FEW = 3;         // rows of a table that are not worth their heading

/// Columns of the table: their widths, and how much of the page one run of them takes.
struct Columns {
    std::vector<double> Widths;
    double Wide = 0.0;
    double Size = TABLE_SIZE;  // smaller where a page is too narrow
};

/// A part of a page for the table, in runs side by side.
struct TableRoom {
    Rect At;
    std::size_t Runs = 0;
    std::size_t RowsOfRun = 0;
    [[nodiscard]] std::size_t Rows() const { return Runs * RowsOfRun; }
};

bool SameAxis(const PagePlot& a, const PagePlot& b) {
    return a.First == b.First && a.Last == b.Last && a.Unit == b.Unit &&
           a.Param.EgcCoef == b.Param.EgcCoef && a.Param.TwoTheta == b.Param.TwoTheta;
}

/// The drawing of one set of pages: what its steps share.
class PageDrawer {
public:
    PageDrawer(Canvas& canvas, DrawEngine& engine, const PageData& page)
        : canvas_(canvas), engine_(engine), page_(page) {
        canvas_.ScaleReset();
        size_ = canvas_.PixelSize();
        columns_ = MeasureColumns();
        ArrangeBlocks();
    }

    bool Draw(const NextPage& next);

private:
    [[nodiscard]] bool Wide() const { return size_.Width > size_.Height; }
    [[nodiscard]] double WidestValue() const {
        return Wide() ? WIDEST_BESIDE_TABLE : WIDEST_ABOVE_TABLE;
    }
    [[nodiscard]] double Bottom() const { return size_.Height - FOOT; }
    [[nodiscard]] double Right() const { return size_.Width - MARGIN; }
    [[nodiscard]] std::size_t TableRows() const { return page_.Table.Rows.size(); }
    [[nodiscard]] bool HasTable() const { return !page_.Table.Head.empty(); }
    [[nodiscard]] Columns MeasureColumns();
    void ArrangeBlocks();
    void PlaceBlocks(std::size_t rows);
    [[nodiscard]] std::pair<double, double> WidthsOf(const PageBlock& block);
    [[nodiscard]] TableRoom RoomIn(const Rect& at) const;
    [[nodiscard]] std::vector<PlotPlace> PlacePlots(double top, double bottom) const;
    [[nodiscard]] double FixedRoom() const;
    double DrawPlots(double top);
    void DrawBlocks(double top);
    void StartPage(int number, int pages);
    std::size_t DrawTable(const TableRoom& room, std::size_t next);

    Canvas& canvas_;
    DrawEngine& engine_;
    const PageData& page_;
    Extent size_;
    Columns columns_;
    std::vector<Spot> places_;  // of the blocks, from the first one's corner down
    double blocksHigh_ = 0.0;
    double blocksRight_ = 0.0;  // where something may stand beside them
};

bool PageDrawer::Draw(const NextPage& next) {
    // 1. What the first page has room for, and how many pages follow.
    const double top = HEAD_END + 4.0;
    canvas_.Clear(PAPER);
    const double below = DrawPlots(top);
    DrawBlocks(below);
    Rect rest{MARGIN, below, Right(), Bottom()};
    if (Wide())
        rest.Left = blocksRight_;
    else
        rest.Top += blocksHigh_ > 0.0 ? blocksHigh_ + GAP : 0.0;
    TableRoom room = RoomIn(rest);
    const bool poor = room.Rows() < std::min(FEW, TableRows()) || room.Rows() == 0;
    if (poor) room.Runs = 0;
    const TableRoom whole = RoomIn({MARGIN, HEAD_END + GAP, Right(), Bottom()});
    const std::size_t later = TableRows() > room.Rows() ? TableRows() - room.Rows() : 0;
    const std::size_t each = std::max<std::size_t>(whole.Rows(), 1);
    const int pages = 1 + static_cast<int>((later + each - 1) / each);

    // 2. The first page and the others.
    StartPage(1, pages);
    std::size_t row = HasTable() && !poor ? DrawTable(room, 0) : 0;
    for (int number = 2; number <= pages; ++number) {
        if (!next || !next()) return false;
        canvas_.Clear(PAPER);
        StartPage(number, pages);
        row = DrawTable(whole, row);
    }
    return true;
}

void PageDrawer::StartPage(int number, int pages) {
    const double width = Right() - MARGIN;
    canvas_.FontSize = 14.0;
    canvas_.FontBold = true;
    const std::string title = Fitted(canvas_, page_.Title, width);
    Write(canvas_, MARGIN, 26.0, title, INK, 14.0, true);
    canvas_.FontSize = 8.5;
    Write(canvas_, MARGIN, 45.0, Fitted(canvas_, page_.Subtitle, width), QUIET, 8.5);
    canvas_.Line(MARGIN, HEAD_END, Right(), HEAD_END, FAINT);
    const double foot = size_.Height - 20.0;
    canvas_.FontSize = 6.5;
    if (!page_.Footer.empty())
        Write(canvas_, MARGIN, foot, Fitted(canvas_, page_.Footer, width - 60.0), QUIET, 6.5);
    if (pages > 1)
        WriteRight(canvas_, Right(), foot,
                   "page " + std::to_string(number) + " of " + std::to_string(pages), QUIET, 6.5);
}

// --- plots -----------

/// What labels, strips and axes of all plots take of the height.
double PageDrawer::FixedRoom() const {
    double sum = 0.0;
    for (std::size_t i = 0; i < page_.Plots.size(); ++i) {
        const PagePlot& plot = page_.Plots[i];
        const bool shared = i + 1 < page_.Plots.size() && SameAxis(plot, page_.Plots[i + 1]);
        sum += LabelRoom(canvas_, plot) + RestRoom(plot) + (shared ? GAP : AxisRoom(plot));
    }
    return sum;
}

std::vector<PlotPlace> PageDrawer::PlacePlots(double top, double bottom) const {
    double shares = 0.0;
    for (const PagePlot& plot : page_.Plots) shares += plot.Share;
    const double high = std::max(0.0, bottom - top - FixedRoom());
    std::vector<PlotPlace> places;
    double y = top;
    for (std::size_t i = 0; i < page_.Plots.size(); ++i) {
        const PagePlot& plot = page_.Plots[i];
        PlotPlace at;
        y += LabelRoom(canvas_, plot);
        at.Plot = {LEFT, y, Right(), y + high * plot.Share / shares};
        const double rest = RestRoom(plot);
        at.Rest = {LEFT, at.Plot.Bottom + (rest > 0.0 ? 4.0 : 0.0), Right(), at.Plot.Bottom + rest};
        at.LowerAxis = i + 1 == page_.Plots.size() || !SameAxis(plot, page_.Plots[i + 1]);
        y = at.Plot.Bottom + rest + (at.LowerAxis ? AxisRoom(plot) : GAP);
        places.push_back(at);
    }
    return places;
}

/// All plots; where the next thing may stand below them.
double PageDrawer::DrawPlots(double top) {
    if (page_.Plots.empty()) return top + GAP;
    const double blocks = blocksHigh_ > 0.0 ? blocksHigh_ + GAP : 0.0;
    double bottom = Bottom();
    if (Wide()) {
        const double band = std::max(blocksHigh_, static_cast<double>(BAND_ROWS) * LINE_STEP);
        if (blocks > 0.0 || HasTable()) bottom -= band;
    } else {
        // The whole table on this page where the plots stay tall enough; else it goes on.
        const double fixed = FixedRoom();
        const TableRoom room = RoomIn({MARGIN, 0.0, Right(), 1.0});
        const double runs = static_cast<double>(std::max<std::size_t>(room.Runs, 1));
        const double rows = std::ceil(static_cast<double>(TableRows()) / runs) + 1.0;
        const double table = HasTable() ? rows * LINE_STEP : 0.0;
        const double left = bottom - top - fixed - blocks - table;
        const double high = left >= LEAST_PLOTS ? std::min(left, MOST_PLOTS) : MOST_PLOTS;
        bottom = top + fixed + high;
    }
    const std::vector<PlotPlace> places = PlacePlots(top, bottom);
    for (std::size_t i = 0; i < places.size(); ++i)
        DrawPagePlot(canvas_, engine_, page_.Plots[i], places[i]);
    return bottom;
}

// --- blocks -----------

/// Widths of a block's headings and of its values.
std::pair<double, double> PageDrawer::WidthsOf(const PageBlock& block) {
    canvas_.FontSize = BLOCK_SIZE;
    double heading = 0.0;
    double value = 0.0;
    for (const auto& [name, text] : block.Lines) {
        heading = std::max(heading, canvas_.TextWidth(name));
        value = std::max(value, std::min(canvas_.TextWidth(text), WidestValue()));
    }
    return {heading, value};
}

/// Side by side; on a page that is wider than tall, where the table would find no room beside them
/// so, one above the other.
void PageDrawer::ArrangeBlocks() {
    PlaceBlocks(0);
    if (Wide() && HasTable() && Right() - blocksRight_ < columns_.Wide) PlaceBlocks(TALL_ROWS);
}

/// Columns of blocks with as many rows as fit in `rows`, and one block at least.
void PageDrawer::PlaceBlocks(std::size_t rows) {
    places_.clear();
    blocksHigh_ = 0.0;
    std::size_t used = 0;
    double left = MARGIN;
    double right = MARGIN;
    for (const PageBlock& block : page_.Blocks) {
        const std::size_t lines = block.Lines.size() + 1;
        if (used > 0 && used + 1 + lines > rows) {
            left = right + BETWEEN_BLOCKS;
            used = 0;
        } else if (used > 0) {
            ++used;  // an empty line between them
        }
        places_.push_back({left, static_cast<double>(used) * LINE_STEP});
        used += lines;
        const auto [heading, value] = WidthsOf(block);
        canvas_.FontBold = true;
        const double title = canvas_.TextWidth(block.Title);
        canvas_.FontBold = false;
        right = std::max(right, left + std::max(heading + HEADING_TO_VALUE + value, title));
        blocksHigh_ = std::max(blocksHigh_, static_cast<double>(used) * LINE_STEP);
    }
    blocksRight_ = page_.Blocks.empty() ? MARGIN : right + BETWEEN_BLOCKS;
}

void PageDrawer::DrawBlocks(double top) {
    for (std::size_t k = 0; k < page_.Blocks.size(); ++k) {
        const PageBlock& block = page_.Blocks[k];
        const double values = places_[k].X + WidthsOf(block).first + HEADING_TO_VALUE;
        double y = top + places_[k].Y;
        Write(canvas_, places_[k].X, y, block.Title, QUIET, BLOCK_SIZE, true);
        for (const auto& [name, text] : block.Lines) {
            y += LINE_STEP;
            Write(canvas_, places_[k].X, y, name, QUIET, BLOCK_SIZE);
            Write(canvas_, values, y, Fitted(canvas_, text, WidestValue()), INK, BLOCK_SIZE);
        }
    }
}

// --- the table -----------

Columns PageDrawer::MeasureColumns() {
    Columns columns;
    const PageTable& table = page_.Table;
    canvas_.FontSize = TABLE_SIZE;
    for (std::size_t c = 0; c < table.Head.size(); ++c) {
        canvas_.FontBold = true;
        double width = canvas_.TextWidth(table.Head[c]);
        canvas_.FontBold = false;
        for (const auto& row : table.Rows)
            if (c < row.size()) width = std::max(width, canvas_.TextWidth(row[c]));
        columns.Widths.push_back(width);
        columns.Wide += width + (c == 0 ? 0.0 : BETWEEN_COLUMNS);
    }
    const double page = Right() - MARGIN;
    if (columns.Wide > page) {
        const double narrower = page / columns.Wide;
        for (double& width : columns.Widths) width *= narrower;
        columns.Size *= narrower;
        columns.Wide = page;
    }
    return columns;
}

TableRoom PageDrawer::RoomIn(const Rect& at) const {
    TableRoom room{at};
    const double rows = std::floor(at.Height() / LINE_STEP) - 1.0;
    if (!HasTable() || at.Width() < columns_.Wide || rows < 0.0) return room;
    room.RowsOfRun = static_cast<std::size_t>(rows);
    room.Runs = static_cast<std::size_t>((at.Width() + BETWEEN_RUNS + 0.01) /
                                         (columns_.Wide + BETWEEN_RUNS));
    room.Runs = std::max<std::size_t>(room.Runs, 1);
    return room;
}

/// Rows from `next` on, columns right-aligned; the first row that found no room.
std::size_t PageDrawer::DrawTable(const TableRoom& room, std::size_t next) {
    const PageTable& table = page_.Table;
    double left = room.At.Left;
    for (std::size_t run = 0; run < room.Runs; ++run) {
        if (run > 0 && next >= table.Rows.size()) break;
        const std::size_t end = std::min(next + room.RowsOfRun, table.Rows.size());
        double x = left;
        for (std::size_t c = 0; c < table.Head.size(); ++c) {
            x += columns_.Widths[c];
            double y = room.At.Top;
            WriteRight(canvas_, x, y, table.Head[c], QUIET, columns_.Size, true);
            for (std::size_t r = next; r < end; ++r) {
                y += LINE_STEP;
                const auto& row = table.Rows[r];
                if (c < row.size()) WriteRight(canvas_, x, y, row[c], INK, columns_.Size);
            }
            x += BETWEEN_COLUMNS;
        }
        left += columns_.Wide + BETWEEN_RUNS;
        next = end;
    }
    return next;
}

}  // namespace

bool DrawPages(Canvas& canvas, DrawEngine& engine, const PageData& page, const NextPage& next) {
    return PageDrawer(canvas, engine, page).Draw(next);
}

std::vector<std::int32_t> SumOf(std::span<const std::int32_t> a, std::span<const std::int32_t> b) {
    std::vector<std::int32_t> sum(std::min(a.size(), b.size()));
    for (std::size_t i = 0; i < sum.size(); ++i) {
        const std::int64_t both = std::int64_t{a[i]} + b[i];
        sum[i] = static_cast<std::int32_t>(
            std::clamp<std::int64_t>(both, std::numeric_limits<std::int32_t>::min(),
                                     std::numeric_limits<std::int32_t>::max()));
    }
    return sum;
}

std::vector<double> SpreadLabels(std::span<const double> wanted, double gap, double low,
                                 double high) {
    // Neighbours that are too near form a group, which stands at the mean of its members' wishes;
    // groups that then collide become one (the pooling of monotone regression).
    struct Group {
        double Sum;  // of the wishes, each less its offset within the group
        std::size_t Size;
    };
    if (wanted.empty()) return {};
    if (wanted.size() > 1)
        gap = std::min(gap, (high - low) / static_cast<double>(wanted.size() - 1));
    const auto span = [&](const Group& group) { return gap * static_cast<double>(group.Size - 1); };
    const auto start = [&](const Group& group) {
        const double mean = group.Sum / static_cast<double>(group.Size);
        return std::clamp(mean, low, std::max(low, high - span(group)));
    };
    std::vector<Group> groups;
    for (const double place : wanted) {
        groups.push_back({place, 1});
        while (groups.size() > 1) {
            const Group& last = groups.back();
            Group& before = groups[groups.size() - 2];
            if (start(before) + span(before) + gap <= start(last)) break;
            const double offset = gap * static_cast<double>(before.Size);
            before.Sum += last.Sum - offset * static_cast<double>(last.Size);
            before.Size += last.Size;
            groups.pop_back();
        }
    }
    std::vector<double> places;
    for (const Group& group : groups)
        for (std::size_t i = 0; i < group.Size; ++i)
            places.push_back(start(group) + gap * static_cast<double>(i));
    return places;
}

}  // namespace vael
