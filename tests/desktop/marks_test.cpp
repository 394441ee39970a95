// Cursor, area marks and band on the window's image: drawn by exclusive or, they leave no trace.
#include "support/plotted.h"

#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/pointing.h"
#include "core/scales.h"
#include "desktop/qtcanvas.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <tuple>

namespace vael {
namespace {

constexpr int WIDE = 900;  // logical pixels of a plot
constexpr int HIGH = 300;

/// Two spectra in two windows on images of a given density, in a way of drawing and on an axis.
class Marks : public ::testing::TestWithParam<std::tuple<int, std::int16_t, bool>> {
protected:
    Marks() {
        const auto [ratio, kind, log] = GetParam();
        for (int win = 0; win < WINDOW_COUNT; ++win) {
            Papers[At(win)].Resize(WIDE, HIGH, ratio, 0);
            Picture& plot = frmVaelAna.picGraph[At(win)];
            plot.PutOn(&Papers[At(win)]);
            plot.Width = WIDE;
            plot.Height = HIGH;
        }
        const std::vector<GaussLine> lines{
            {700.0, 3000.0, 40.0}, {1500.0, 9000.0, 60.0}, {3000.0, 5000.0, 50.0}};
        W.Open({W.Spectrum("a.npd", 4096, lines), W.Spectrum("b.npd", 4096, lines)});
        Tick(frmVaelAna.chkGrp[11], 1);  // the second one into the lower window
        for (int win : {1, 0}) {
            MouseDown(Plot(win), MouseButton::Left, 5, 5);
            MouseUp(Plot(win), MouseButton::Left, 5, 5);
            Click(kind == DRAW_LINE    ? frmVaelAna.mnuLine
                  : kind == DRAW_PAINT ? frmVaelAna.mnuPaint
                                       : frmVaelAna.mnuDot);
        }
        if (log) Tick(frmVaelAna.ckbLogScale, 1);
        CsrX_Change(1500);
    }
    ~Marks() override {
        EXPECT_TRUE(W.Desk.Faults.empty()) << W.Desk.Faults.front();
        for (Picture& plot : frmVaelAna.picGraph) plot.PutOn(nullptr);
    }

    static std::size_t At(int win) { return static_cast<std::size_t>(win); }
    static Picture& Plot(int win) { return frmVaelAna.picGraph[At(win)]; }
    QImage Now(int win) { return Papers[At(win)].Image().copy(); }

    /// The plot alone, drawn anew with no mark on it.
    QImage Bare(int win) {
        Engine().DropMarks(win);
        Engine().Replot(win);
        const QImage bare = Now(win);
        RedrawWindow(win);  // and with its marks again
        return bare;
    }
    void TakeOff(int win) {
        for (const int group : {MARK_CURSOR, MARK_AREA_LEFT, MARK_AREA_RIGHT, MARK_BAND})
            Engine().RemoveMarks(win, group);
    }
    /// What stands on a picture is what a redraw makes of the same state, and without its marks it
    /// is the plot alone.
    void ExpectNoTrace(const char* after) {
        for (int win = 0; win < WINDOW_COUNT; ++win) {
            const QImage stands = Now(win);
            RedrawWindow(win);
            EXPECT_EQ(Now(win), stands) << "window " << win << " after " << after;
            const QImage bare = Bare(win);
            TakeOff(win);
            EXPECT_EQ(Now(win), bare) << "window " << win << " without its marks after " << after;
            RedrawWindow(win);
        }
    }
    /// A drag of the left button in twenty steps from one channel to another.
    static void Drag(int win, int from, int to, bool release = true) {
        const double a = Plotted::PixelOf(win, from);
        const double b = Plotted::PixelOf(win, to);
        MouseDown(Plot(win), MouseButton::Left, a, 50);
        for (int i = 1; i <= 20; ++i)
            MouseMove(Plot(win), MouseButton::Left, a + (b - a) * i / 20.0, 50);
        if (release) MouseUp(Plot(win), MouseButton::Left, b, 50);
    }

    Plotted W;
    std::array<ImageSurface, 2> Papers;
};

int Differing(const QImage& a, const QImage& b) {
    int n = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) n += a.pixel(x, y) != b.pixel(x, y) ? 1 : 0;
    return n;
}

TEST_P(Marks, ACursorOfEitherStyleIsSeenAndGoesWithoutATrace) {
    const int ratio = std::get<0>(GetParam());
    for (const int style : {1, 0}) {
        Tick(frmVaelAna.chkCsrType, style);
        const QImage bare = Bare(0);
        // The full line is one pixel wide and crosses the whole plot; the short one is a tenth of
        // it, two pixels wide.
        const int least = style == 1 ? HIGH * ratio * ratio - 4 : HIGH / 10 * 2 * ratio * ratio / 2;
        EXPECT_GE(Differing(Now(0), bare), least) << "style " << style;
        TakeOff(0);
        EXPECT_EQ(Now(0), bare) << "style " << style;
        PutCursorMark(0);
        EXPECT_NE(Now(0), bare);
        ExpectNoTrace("a change of the style");
    }
}

TEST_P(Marks, ADraggedCursorLeavesNoTrace) {
    for (const int style : {0, 1}) {
        Tick(frmVaelAna.chkCsrType, style);
        Drag(0, 400, 2600);
        EXPECT_NEAR(CursorCh(), 2600, 1);
        ExpectNoTrace("a drag over the lines");
        Drag(0, 2600, 650);
        ExpectNoTrace("a drag back");
    }
}

TEST_P(Marks, FlagsOfThreeStrokesThreePixelsWideLeaveNoTrace) {
    const QImage bare = Bare(0);
    Click(frmVaelAna.cmdOperation[7]);  // the whole axis: flags that hang over both ends
    EXPECT_GT(Differing(Now(0), bare), 40);
    ExpectNoTrace("an area over the whole axis");
    Click(frmVaelAna.cmdOperation[7]);
    ExpectNoTrace("no area");

    Tick(frmVaelAna.chkArea, 1);
    Drag(0, 600, 1480, false);
    const QImage held = Now(0);
    EXPECT_GT(Differing(held, bare), 100) << "two flags are seen while they are dragged";
    ExpectNoTrace("twenty steps, the button still down");
    MouseUp(Plot(0), MouseButton::Left, Plotted::PixelOf(0, 1480), 50);
    ExpectNoTrace("an area that was dragged open");
    Drag(0, 1480, 2900);
    ExpectNoTrace("its right edge dragged on");
    Drag(0, 600, 3300);  // across the other edge
    ExpectNoTrace("its edges dragged across each other");
    Tick(frmVaelAna.chkArea, 0);
    ExpectNoTrace("the area switched off");
}

TEST_P(Marks, OverlappingMarksLeaveNoTrace) {
    Tick(frmVaelAna.chkCsrType, 1);
    Tick(frmVaelAna.chkArea, 1);
    SetArea(1500, 1501);  // flags on flags, and the cursor through them
    CsrX_Change(1500);
    const QImage before = Now(0);
    CsrX_Change(1501);
    CsrX_Change(1500);
    EXPECT_EQ(Now(0), before) << "away and back";
    ExpectNoTrace("a cursor on an area mark");
    for (int step = 0; step < 20; ++step) Plotted::Press(KeyPress::Name::Right, false, true);
    ExpectNoTrace("an area opened by keys with the cursor on its edge");
}

TEST_P(Marks, TheBandOfTheMagnifierLeavesNoTrace) {
    Tick(frmVaelAna.chkGrp[1], 1);  // the magnifier takes graphs of the upper window alone
    const std::int16_t kind = std::get<1>(GetParam());
    ASSERT_TRUE(Tick(frmVaelAna.ckbExpand, 1));
    EXPECT_EQ(Engine().Target(0).DrawKind, kind);
    const QImage bare = Bare(0);
    Drag(0, 800, 2000, false);
    EXPECT_GT(Differing(Now(0), bare), HIGH);
    MouseMove(Plot(0), MouseButton::Left, Plotted::PixelOf(0, 300), 50);
    MouseUp(Plot(0), MouseButton::Left, Plotted::PixelOf(0, 300), 50);
    EXPECT_EQ(frmVaelAna.WinStyle, WindowStyle::Expand);
    EXPECT_LT(frmVaelAna.Windows[1].Span, 1000);
    ExpectNoTrace("a band drawn one way and let go the other way");
    Drag(0, 1000, 1004);  // too narrow to change anything
    ExpectNoTrace("a band of a few channels");
    Tick(frmVaelAna.ckbExpand, 0);
    ExpectNoTrace("the magnifier switched off");
}

std::string NameOf(const ::testing::TestParamInfo<Marks::ParamType>& info) {
    const auto [ratio, kind, log] = info.param;
    constexpr std::array<const char*, 3> KINDS{"Lines", "Paint", "Dots"};
    return std::string(KINDS[static_cast<std::size_t>(kind)]) + (log ? "Log" : "Linear") +
           (ratio == 1 ? "Single" : "Double");
}

INSTANTIATE_TEST_SUITE_P(OnEachPicture, Marks,
                         ::testing::Combine(::testing::Values(1, 2),
                                            ::testing::Values(DRAW_LINE, DRAW_PAINT, DRAW_DOT),
                                            ::testing::Bool()),
                         NameOf);

}  // namespace
}  // namespace vael
