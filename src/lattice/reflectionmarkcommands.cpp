// The marks of matched reflections on the plots.
#include "lattice/reflectionmarkcommands.h"

#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/store.h"
#include "core/text.h"
#include "core/windows.h"
#include "lattice/frmpeakcal.h"

#include <algorithm>
#include <string>
#include <vector>

namespace vael {
namespace {

std::vector<ReflectionMark> marks;

constexpr double POINTS = 8.0;
constexpr double GAP = 0.02;    // of the height: from the curve to the stroke
constexpr double LEAST = 0.04;  // of the height: the stroke below the words

std::string WordsOf(const std::string& name, const ReflectionMatch& row) {
    return MarkerKey(name) + "(" + WholeText(row.H) + " " + WholeText(row.K) + " " +
           WholeText(row.L) + ") d=" + FormatNumber(row.DObs, "#0.00000");
}

/// One mark: a stroke from above the curve, and the words upright on top of it.
void DrawMark(int win, const ReflectionMark& mark, Canvas& canvas) {
    const double top = PlotTop(win);
    const int ch = static_cast<int>(std::clamp(mark.Ch + 0.5, 0.0, MAX_CHANNELS - 1.0));
    const double curve = PlotHeight(win, mark.Slot, ch);
    // Upright words are as tall as they are wide, in the plot's two scales.
    const double tall =
        canvas.TextWidth(mark.Words) / canvas.PixelUnit().Width * canvas.PixelUnit().Height;
    const double from = std::min(curve + top * GAP, top);
    const double words = std::max(0.0, std::min(from + top * LEAST, top - tall));
    const double thick =
        canvas.TextHeight(mark.Words) / canvas.PixelUnit().Height * canvas.PixelUnit().Width;
    const bool room = words > from;  // else they stand beside the line
    if (room) canvas.Line(mark.Ch, from, mark.Ch, words, mark.Ink);
    canvas.TextAngle = 90;
    canvas.CurrentX = room ? mark.Ch - thick / 2.0 : mark.Ch + thick / 4.0;
    canvas.CurrentY = words;
    canvas.Print(mark.Words, mark.Ink);
    canvas.TextAngle = 0;
}

}  // namespace

int MarkReflections(Colour colour) {
    const LatticeFitData& data = latticeState.FitData;
    int put = 0;
    for (const ReflectionMatch& row : data.Match) {
        if (row.Matched != TRUE_WORD || row.Excluded != FALSE_WORD) continue;
        const ReflectionMark mark{
            .Slot = frmPeakCal.Slot, .Ch = row.Ch, .Words = WordsOf(data.Name, row), .Ink = colour};
        // The same mark again takes the new colour.
        std::erase_if(marks, [&](const ReflectionMark& each) {
            return each.Slot == mark.Slot && each.Ch == mark.Ch && each.Words == mark.Words;
        });
        marks.push_back(mark);
        ++put;
    }
    return put;
}

void ClearReflectionMarks() { marks.clear(); }

std::vector<ReflectionMark> ReflectionMarksOn(int win) {
    std::vector<ReflectionMark> on;
    for (const ReflectionMark& mark : marks)
        if (RowOfSlot(mark.Slot) >= 0 &&
            Item(Engine().Target(win).Graph, mark.Slot).GraphInUse != 0)
            on.push_back(mark);
    return on;
}

void DrawReflectionMarks(int win) {
    // A graph that is gone takes its marks along: its slot may get another one.
    std::erase_if(marks, [](const ReflectionMark& mark) { return RowOfSlot(mark.Slot) < 0; });
    const DrawTarget& target = Engine().Target(win);
    if (target.Canvas == nullptr || PlotTop(win) <= 0.0) return;
    const std::vector<ReflectionMark> on = ReflectionMarksOn(win);
    if (on.empty()) return;
    Canvas& canvas = *target.Canvas;
    Engine().ScaleCanvas(win);
    const double points = canvas.FontSize;
    canvas.FontSize = POINTS;
    const WindowState& window = Item(frmVaelAna.Windows, win);
    for (const ReflectionMark& mark : on)
        if (mark.Ch >= window.Start && mark.Ch <= window.Start + window.Span - 1)
            DrawMark(win, mark, canvas);
    canvas.FontSize = points;
}

void cmdMI_Click(int index) {
    constexpr std::array<Colour, 5> COLOURS{Rgb(255, 255, 255), Rgb(255, 0, 255), Rgb(0, 255, 255),
                                            Rgb(255, 255, 0), Rgb(0, 255, 0)};
    if (index == 0) {
        const int put = MarkReflections(Item(COLOURS, std::max(0, frmPeakCal.cmbColor.Index)));
        TellLattice(put == 0
                        ? "There is no reflection to mark: execute first."
                        : std::to_string(put) + (put == 1 ? " reflection is" : " reflections are") +
                              " marked on the plot.");
    } else {
        ClearReflectionMarks();
        TellLattice("The marks of reflections are off the plots.");
    }
    RedrawBoth();
}

}  // namespace vael
