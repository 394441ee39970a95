// The control records: what a program asks of a desktop, as plain data with its handlers.
#include "toolkit/controls.h"

#include "core/fault.h"
#include "core/text.h"

#include <algorithm>

namespace vael {
namespace {

/// A picture without a desktop: takes everything, shows nothing, and measures in a fixed pitch.
class BlankSurface : public Surface {
public:
    explicit BlankSurface(const Picture& picture) : picture_(picture) {}
    Extent Size() const override {
        return {static_cast<double>(picture_.Width), static_cast<double>(picture_.Height)};
    }
    void Clear(Colour) override {}
    void Stroke(Spot, Spot, const Brush&) override {}
    void Box(Spot, Spot, bool, const Brush&) override {}
    void Dot(Spot, const Brush&) override {}
    void Write(Spot, std::string_view, const Brush&) override {}
    Extent Measure(std::string_view utf8, const Brush& brush) const override {
        return {static_cast<double>(utf8.size()) * brush.FontSize * 0.6, brush.FontSize * 1.2};
    }

private:
    const Picture& picture_;
};

/// One count for all grids, so that a view made anew never shows a version that was shown before.
std::uint64_t NextVersion() {
    static std::uint64_t last = 0;
    return ++last;
}

}  // namespace

std::string NumberBox::Text() const { return FormatNumber(Value, Format); }

std::string ListBox::Text() const {
    return Index >= 0 && Index < static_cast<int>(Items.size())
               ? Items[static_cast<std::size_t>(Index)]
           : Editable ? Typed
                      : std::string();
}

Grid::Grid(View& view, std::string name, int columns, int rows)
    : Control(view, ControlKind::Grid, std::move(name)) {
    SetSize(columns, rows);
}

void Grid::SetSize(int columns, int rows) {
    std::vector<Cell> cells(static_cast<std::size_t>((columns + 1) * (rows + 1)));
    for (int row = 0; row <= std::min(rows, rows_); ++row)
        for (int column = 0; column <= std::min(columns, columns_) && !cells_.empty(); ++column)
            cells[static_cast<std::size_t>(row * (columns + 1) + column)] =
                cells_[static_cast<std::size_t>(Place(column, row))];
    columns_ = columns;
    rows_ = rows;
    cells_ = std::move(cells);
    Widths.resize(static_cast<std::size_t>(columns + 1), 10);
    Row = std::min(Row, rows);
    Col = std::min(Col, columns);
    version_ = NextVersion();
}

int Grid::Place(int column, int row) const {
    if (column < 0 || column > columns_) RaiseSubscript(column, static_cast<std::size_t>(columns_));
    if (row < 0 || row > rows_) RaiseSubscript(row, static_cast<std::size_t>(rows_));
    return row * (columns_ + 1) + column;
}

Grid::Cell& Grid::At(int column, int row) {
    const int place = Place(column, row);
    version_ = NextVersion();
    return Item(cells_, place);
}

const Grid::Cell& Grid::At(int column, int row) const { return Item(cells_, Place(column, row)); }

Picture::Picture(View& view, std::string name, int width, int height)
    : Control(view, ControlKind::Picture, std::move(name)), Width(width), Height(height) {
    PutOn(nullptr);
}

Picture::~Picture() = default;

void Picture::PutOn(Surface* surface) {
    if (surface == nullptr && !blank_) blank_ = std::make_unique<BlankSurface>(*this);
    canvas_ = std::make_unique<Canvas>(surface != nullptr ? *surface : *blank_);
}

}  // namespace vael
