// Marks of regions and peaks on the plots: the coloured part of a curve, and the numbers above it.
#include "core/regionmarks.h"

#include "analysis/peak.h"
#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/store.h"
#include "core/windows.h"
#include "display/colourtable.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace vael {
namespace {

constexpr double NUMBER_POINTS = 8.0;

/// A stroke's colour 0 means the graph's own, so black is drawn as the darkest grey.
Colour StrokeColour(Colour colour) { return colour == 0 ? Rgb(1, 1, 1) : colour; }

bool DrawnIn(int win, int slot) { return Item(Engine().Target(win).Graph, slot).GraphInUse != 0; }

/// Colours the strokes of a slot in both windows; what lies outside the channels is left out.
void Stroke(int slot, int start, int end, Colour colour) {
    if (slot < 0 || slot >= SLOT_COUNT) return;
    const int from = std::max(start, 0);
    const int to = std::min(end, MAX_CHANNELS - 1);
    for (int win = 0; win < WINDOW_COUNT; ++win)
        if (DrawnIn(win, slot)) Engine().SetPlotColor(win, slot, from, to, colour);
}

/// A number that wants a place on a plot: above `Height` at a channel.
struct Number {
    double Channel = 0.0;
    double Height = 0.0;
    int Value = 0;
};

/// What becomes of a number that would lie on another one.
enum class Crowded { LeftOut, Raised };

/// Writes numbers on a plot, the highest first.
class NumberWriter {
public:
    explicit NumberWriter(int win) : win_(win), canvas_(*Engine().Target(win).Canvas) {
        Engine().ScaleCanvas(win);
        points_ = canvas_.FontSize;
        canvas_.FontSize = NUMBER_POINTS;
    }
    ~NumberWriter() { canvas_.FontSize = points_; }
    NumberWriter(const NumberWriter&) = delete;
    NumberWriter& operator=(const NumberWriter&) = delete;

    /// Keeps the places of numbers that are written by somebody else.
    void Keep(std::vector<Number> numbers) {
        Place(std::move(numbers), Crowded::Raised, [](const auto&...) {});
    }
    void Write(std::vector<Number> numbers, Crowded crowded, Colour colour) {
        Place(std::move(numbers), crowded, [&](const Box& box, const std::string& text) {
            canvas_.CurrentX = box.Left;
            canvas_.CurrentY = box.Top;
            canvas_.Print(text, colour);
        });
    }

private:
    struct Box {
        double Left, Top, Width, Tall;
        [[nodiscard]] bool Meets(const Box& other) const {
            return Left < other.Left + other.Width && other.Left < Left + Width &&
                   Top > other.Top - other.Tall && other.Top > Top - Tall;
        }
    };

    template <class Put>
    void Place(std::vector<Number> numbers, Crowded crowded, const Put& put) {
        std::stable_sort(numbers.begin(), numbers.end(),
                         [](const Number& a, const Number& b) { return a.Height > b.Height; });
        const WindowState& window = Item(frmVaelAna.Windows, win_);
        for (const Number& number : numbers) {
            if (number.Channel < window.Start || number.Channel > window.Start + window.Span - 1)
                continue;
            const std::string text = std::to_string(number.Value);
            const double width = canvas_.TextWidth(text) + canvas_.PixelUnit().Width * 2.0;
            const double tall = canvas_.TextHeight(text);
            Box box{number.Channel - width / 2.0,
                    std::min(number.Height + tall * GAP, PlotTop(win_)), width, tall};
            const auto taken = [&] {
                return std::any_of(taken_.begin(), taken_.end(),
                                   [&](const Box& other) { return box.Meets(other); });
            };
            while (crowded == Crowded::Raised && taken() && box.Top < PlotTop(win_))
                box.Top += tall;
            if (crowded == Crowded::LeftOut && taken()) continue;
            taken_.push_back(box);
            put(box, text);
        }
    }

    static constexpr double GAP = 1.3;  // of its height: from the curve to the number's top
    int win_;
    Canvas& canvas_;
    double points_ = 0.0;
    std::vector<Box> taken_;
};

/// The numbers of the regions that a window draws, above the curve where each begins.
std::vector<Number> RoiNumbers(int win) {
    std::vector<Number> numbers;
    for (int i = 0; i < store.Rois.RoiNum; ++i) {
        const RoiRecord& roi = Item(store.Rois.RoiTable, i);
        if (roi.DataNo >= SLOT_COUNT || !DrawnIn(win, roi.DataNo)) continue;
        numbers.push_back(
            {static_cast<double>(roi.StartCh), PlotHeight(win, roi.DataNo, roi.StartCh), i + 1});
    }
    return numbers;
}

bool CanWrite(int win) { return Engine().Target(win).Canvas != nullptr && PlotTop(win) > 0.0; }

}  // namespace

Colour PeakColor() { return Item(store.ColorTable, ENTRY_PEAK_CURVE); }

Colour RoiColor() { return Item(store.ColorTable, ENTRY_ROI_LINE); }

Marks RegionMarks() {
    Marks marks;
    marks.draw = [](int, int slot, int start, int end, Colour colour) {
        Stroke(slot, start, end, StrokeColour(colour));
    };
    marks.erase = [](int, int slot, int start, int end, Colour) { Stroke(slot, start, end, 0); };
    marks.PeakColor = PeakColor();
    return marks;
}

void ColourRegions(int slot) {
    Stroke(slot, 0, MAX_CHANNELS - 1, 0);
    const PeakTable& peaks = Item(store.PeakTables, slot);
    const bool fit = (Item(store.PropertyRecords, slot).Param.DerivedFlags & DERIVED_FIT) != 0;
    for (int i = 0; i < peaks.PeakNum && !fit; ++i) {
        const PeakRecord& peak = Item(peaks.Peak, i);
        Stroke(slot, peak.StartCh, peak.EndCh, StrokeColour(PeakColor()));
    }
    for (int i = 0; i < store.Rois.RoiNum; ++i) {
        const RoiRecord& roi = Item(store.Rois.RoiTable, i);
        if (roi.DataNo == slot) Stroke(slot, roi.StartCh, roi.EndCh, StrokeColour(roi.Color));
    }
}

void DrawRoiLabels(int win) {
    if (!CanWrite(win) || store.Rois.RoiNum == 0) return;
    NumberWriter(win).Write(RoiNumbers(win), Crowded::Raised,
                            Item(store.ColorTable, ENTRY_ROI_TEXT));
}

void DrawPeakNumbers(int win) {
    const int slot = DataNo();
    if (!CanWrite(win) || Item(store.GraphList, GraphNo()).State == 0 || !DrawnIn(win, slot))
        return;
    const PeakTable& peaks = Item(store.PeakTables, slot);
    std::vector<Number> numbers;
    for (int i = 0; i < peaks.PeakNum; ++i) {
        const double position = Item(peaks.Peak, i).Position;
        const int ch = static_cast<int>(std::clamp(std::round(position), 0.0, MAX_CHANNELS - 1.0));
        numbers.push_back({position, PlotHeight(win, slot, ch), i + 1});
    }
    if (numbers.empty()) return;
    NumberWriter writer(win);
    writer.Keep(RoiNumbers(win));
    writer.Write(std::move(numbers), Crowded::LeftOut, Item(store.ColorTable, ENTRY_PEAK_MARK));
}

}  // namespace vael
