// Tests of the Qt surfaces: exclusive-or restores, edges are seen, densities, filters of dialogs.
#include "desktop/qtcanvas.h"

#include "desktop/qtdesk.h"
#include "display/drawspect.h"

#include <QPrinter>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>

namespace vael {
namespace {

constexpr Colour BACK = Rgb(18, 22, 28);
constexpr Colour INK = Rgb(255, 100, 100);

/// A surface of 200 x 100 logical pixels with something on it.
struct Sheet {
    explicit Sheet(double ratio = 1.0, int inset = 0) {
        Paper.Resize(200, 100 + 2 * inset, ratio, inset);
        Paper.Clear(BACK);
        Pen.Scale(0.0, 100.0, 200.0, 0.0);
    }
    [[nodiscard]] QColor At(int x, int y) { return Paper.Image().pixelColor(x, y); }
    ImageSurface Paper;
    Canvas Pen{Paper};
};

class AtDensity : public ::testing::TestWithParam<double> {};

TEST_P(AtDensity, ExclusiveOrDrawnTwiceRestoresEveryPixel) {
    Sheet sheet(GetParam());
    for (int i = 0; i < 200; ++i) sheet.Pen.Line(i, 0, i + 1, 50 + 40 * std::sin(i / 9.0), INK);
    const QImage before = sheet.Paper.Image().copy();
    const auto flag = [&] {
        sheet.Pen.DrawMode = DRAW_XOR;
        for (const double width : {1.0, 2.0, 3.0}) {
            sheet.Pen.DrawWidth = width;
            sheet.Pen.Line(50.3, 10.0, 50.3, 60.0, INK);
            sheet.Pen.Line(50.3, 60.0, 52.3, 60.8, INK);  // joined, and aslant
            sheet.Pen.Line(10.0, 5.0, 190.0, 95.0, INK);
            sheet.Pen.Line(50.3, 10.0, 50.3, 60.0, Rgb(255, 255, 255));
        }
        sheet.Pen.DrawMode = DRAW_COPY;
    };
    flag();
    EXPECT_NE(sheet.Paper.Image(), before);
    flag();
    EXPECT_EQ(sheet.Paper.Image(), before);
}

TEST_P(AtDensity, LinesAlongTheEdgesAreSeen) {
    const int ratio = static_cast<int>(GetParam());
    Sheet sheet(GetParam());
    sheet.Pen.Line(0, 0, 200, 0, INK);
    EXPECT_EQ(sheet.At(100 * ratio, 100 * ratio - 1), QColor(255, 100, 100));
    sheet.Pen.Line(0, 100, 200, 100, INK);
    EXPECT_EQ(sheet.At(100 * ratio, 0), QColor(255, 100, 100));
    sheet.Pen.Line(200, 0, 200, 100, INK);
    EXPECT_EQ(sheet.At(200 * ratio - 1, 50 * ratio), QColor(255, 100, 100));
    EXPECT_EQ(sheet.At(100 * ratio, 50 * ratio), QColor(18, 22, 28));
}

TEST_P(AtDensity, SizesAreInLogicalPixels) {
    Sheet sheet(GetParam());
    EXPECT_EQ(sheet.Paper.Size().Width, 200.0);
    EXPECT_EQ(sheet.Paper.Size().Height, 100.0);
    EXPECT_EQ(sheet.Paper.Image().width(), static_cast<int>(200 * GetParam()));
    Brush brush;
    brush.FontSize = 9.0;
    const Extent one = sheet.Paper.Measure("40K", brush);
    EXPECT_NEAR(one.Height, 14.0, 3.0);  // 9 points are 12 pixels
    EXPECT_GT(one.Width, 12.0);
    EXPECT_LT(one.Width, 40.0);
}

INSTANTIATE_TEST_SUITE_P(QtCanvas, AtDensity, ::testing::Values(1.0, 2.0));

TEST(QtCanvas, TheRoomForLabelsIsAboveAndBelowTheDrawing) {
    Sheet sheet(1.0, 8);
    EXPECT_EQ(sheet.Paper.Size().Height, 100.0);
    EXPECT_EQ(sheet.Paper.Image().height(), 116);
    sheet.Pen.Line(0, 100, 200, 100, INK);
    EXPECT_EQ(sheet.At(100, 8), QColor(255, 100, 100));
}

TEST(QtCanvas, ADotIsAsBroadAsItsPen) {
    Sheet sheet;
    sheet.Pen.DrawWidth = 2.0;
    sheet.Pen.PSet(100.0, 50.0, INK);
    int inked = 0;
    for (int x = 0; x < 200; ++x)
        for (int y = 0; y < 100; ++y) inked += sheet.At(x, y) == QColor(255, 100, 100) ? 1 : 0;
    EXPECT_EQ(inked, 4);
}

TEST(QtCanvas, TextStandsBelowAndRightOfItsCornerAndUprightTextAbove) {
    const auto inked = [](Sheet& sheet, QRect where) {
        int n = 0;
        for (int x = where.left(); x <= where.right(); ++x)
            for (int y = where.top(); y <= where.bottom(); ++y)
                n += sheet.At(x, y) != QColor(18, 22, 28) ? 1 : 0;
        return n;
    };
    Sheet level;
    level.Pen.CurrentX = 100.0;
    level.Pen.CurrentY = 50.0;
    level.Pen.Print("HHHH", INK);
    EXPECT_GT(inked(level, QRect(100, 50, 60, 20)), 40);
    EXPECT_EQ(inked(level, QRect(0, 0, 100, 100)) + inked(level, QRect(0, 0, 200, 50)), 0);
    Sheet upright;
    upright.Pen.CurrentX = 100.0;
    upright.Pen.CurrentY = 50.0;
    upright.Pen.TextAngle = 90.0;
    upright.Pen.Print("HHHH", INK);
    EXPECT_GT(inked(upright, QRect(100, 0, 20, 50)), 40);
    EXPECT_EQ(inked(upright, QRect(0, 52, 200, 48)), 0);
}

TEST(QtCanvas, ANewSizeKeepsWhatWasDrawnUntilItIsDrawnAnew) {
    Sheet sheet;
    sheet.Pen.Box(0, 0, 200, 100, INK, true);
    sheet.Paper.Resize(300, 150, 1.0, 0);
    EXPECT_EQ(sheet.Paper.Image().size(), QSize(300, 150));
    EXPECT_EQ(sheet.At(250, 120), QColor(255, 100, 100));
}

TEST(QtCanvas, TheCurveOfTheEngineFallsOnTheRightPixels) {
    Sheet sheet;
    DrawEngine engine;
    engine.Target(0).Canvas = &sheet.Pen;
    engine.SetFullScale(0, 100, false);
    const std::vector<std::int32_t> counts(200, 25);
    engine.RegisterGraph(0, 0, counts, 200, INK);
    engine.SetChannelRange(0, 1, 200);
    engine.PlotAll(0);
    // A quarter of the way up: row 0.75 x 99 = 74.25.
    EXPECT_EQ(sheet.At(100, 74), QColor(255, 100, 100));
    EXPECT_EQ(sheet.At(100, 73), QColor(18, 22, 28));
    EXPECT_EQ(sheet.At(100, 75), QColor(18, 22, 28));
}

TEST(QtCanvas, APrinterPageIsMeasuredInPointsAndHoldsWhatIsDrawn) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("page.pdf"));
    {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(path);
        printer.setPageSize(QPageSize(QPageSize::A4));
        printer.setFullPage(true);
        PrinterSurface page(printer);
        ASSERT_TRUE(page.Start());
        EXPECT_NEAR(page.Size().Width, 595.0, 2.0);
        Canvas canvas(page);
        canvas.Line(10, 10, 500, 700, INK);
        canvas.Print("page one", 0);
        EXPECT_TRUE(page.NextPage());
        canvas.Print("page two", 0);
        page.Finish();
    }
    EXPECT_GT(QFileInfo(path).size(), 1000);
}

TEST(QtDesk, FiltersOfADialogAreRewrittenForQt) {
    EXPECT_EQ(QtFilters("Gennie File (*.cnf;*.rpt)|*.cnf;*.rpt|DAC File (*.raw)|*.raw"),
              (QStringList{QStringLiteral("Gennie File (*.cnf *.rpt)"),
                           QStringLiteral("DAC File (*.raw)")}));
    EXPECT_TRUE(QtFilters("").isEmpty());
}

}  // namespace
}  // namespace vael
