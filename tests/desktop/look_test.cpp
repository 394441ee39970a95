// The layout of the main window: the side panel, the splitter's share, boxes that keep their width,
// tips, and what stands in line with what.
#include "deskworld.h"

#include "core/cursors.h"
#include "core/windows.h"
#include "desktop/form.h"

#include <QFontMetricsF>
#include <QLabel>
#include <QSplitter>
#include <QToolButton>

#include <cctype>
#include <memory>

namespace vael {
namespace {

using test::DeskWorld;
using test::FIVE_LINES;

QRect PlaceOf(DeskWorld& world, const std::string& name) {
    QWidget& widget = world.Widget(frmVaelAna, name);
    return {widget.mapTo(&world.Main(), QPoint(0, 0)), widget.size()};
}

double ShareOf(const QSplitter& splitter) {
    const QList<int> sizes = splitter.sizes();
    return static_cast<double>(sizes[0]) / (sizes[0] + sizes[1]);
}

// --- the side panel -----------

TEST(SidePanel, ItsHandleHidesItAndThePlotsTakeItsRoom) {
    DeskWorld world;
    world.Open({world.Write("first.npd", FIVE_LINES)});
    const int narrow = PlaceOf(world, "picGraph_0").width();
    world.ClickOn(frmVaelAna.cmdSidePanel);
    EXPECT_FALSE(world.Widget(frmVaelAna, "panelSide").isVisible());
    EXPECT_FALSE(frmVaelAna.mnuSidePanel.Checked);
    EXPECT_EQ(PlaceOf(world, "picGraph_0").width(), narrow + 224);
    EXPECT_EQ(frmVaelAna.picGraph[0].Width, narrow + 224) << "and is drawn anew at that width";
    EXPECT_TRUE(world.Widget(frmVaelAna, "cmdSidePanel").isVisible());
    world.ClickOn(frmVaelAna.cmdSidePanel);
    EXPECT_TRUE(world.Widget(frmVaelAna, "panelSide").isVisible());
    EXPECT_EQ(PlaceOf(world, "picGraph_0").width(), narrow);
}

TEST(SidePanel, TheKeyF9DoesTheSame) {
    DeskWorld world;
    world.KeyOn(Qt::Key_F9);
    EXPECT_FALSE(world.Widget(frmVaelAna, "panelSide").isVisible());
    EXPECT_EQ(frmVaelAna.lblStatus.Caption, "The side panel is hidden; F9 shows it.");
    world.KeyOn(Qt::Key_F9);
    EXPECT_TRUE(world.Widget(frmVaelAna, "panelSide").isVisible());
    EXPECT_TRUE(frmVaelAna.mnuSidePanel.Checked);
}

TEST(SidePanel, ABoxThatIsTypedInIsLeftBeforeItGoes) {
    DeskWorld world;
    world.Open({world.Write("first.npd", FIVE_LINES)});
    auto& box = world.Widget<QLineEdit>(frmVaelAna, "inumCursorCh");
    QTest::mouseClick(&box, Qt::LeftButton);
    QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&box, QStringLiteral("500"));
    QTest::keyClick(&box, Qt::Key_F9);
    DeskWorld::Settle();
    EXPECT_EQ(CursorCh(), 499);
    EXPECT_FALSE(world.Widget(frmVaelAna, "panelSide").isVisible());
}

TEST(SidePanel, ItsWidthIsTheSameInEverySizeOfTheWindow) {
    DeskWorld world;
    for (const QSize size : {QSize(1100, 700), QSize(1264, 760), QSize(1920, 1080)}) {
        world.Main().resize(size);
        DeskWorld::Settle();
        EXPECT_EQ(PlaceOf(world, "panelSide").width(), 224);
    }
}

// --- the splitter -----------

TEST(Splitter, TheShareStaysWhenTheWindowChangesItsSize) {
    DeskWorld world;
    auto& splitter = world.Widget<QSplitter>(frmVaelAna, "fraWinHeight");
    QSplitterHandle* handle = splitter.handle(1);
    const QPoint middle = handle->rect().center();
    QTest::mousePress(handle, Qt::LeftButton, {}, middle);
    QTest::mouseMove(handle, middle - QPoint(0, 100));
    QTest::mouseRelease(handle, Qt::LeftButton, {}, middle - QPoint(0, 100));
    DeskWorld::Settle();
    const double share = ShareOf(splitter);
    EXPECT_LT(share, 0.55) << "the bar was dragged up";
    for (const QSize size : {QSize(1400, 1000), QSize(1100, 800), QSize(1920, 1080)}) {
        world.Main().resize(size);
        DeskWorld::Settle();
        EXPECT_NEAR(ShareOf(splitter), share, 0.004) << size.height();
        EXPECT_NEAR(frmVaelAna.fraWinHeight.Share, share, 0.004);
    }
}

TEST(Splitter, TheShareStaysWhenAWindowWasAwayAndComesBack) {
    DeskWorld world;
    auto& splitter = world.Widget<QSplitter>(frmVaelAna, "fraWinHeight");
    const double share = ShareOf(splitter);
    EXPECT_NEAR(share, 0.64, 0.004);
    world.Open({world.Write("first.npd", FIVE_LINES)});
    world.ClickOn(frmVaelAna.chkWinStyle);  // a pile has one window
    EXPECT_FALSE(world.Widget(frmVaelAna, "fraGraph_1").isVisible());
    world.Main().resize(1500, 1000);
    DeskWorld::Settle();
    world.ClickOn(frmVaelAna.chkWinStyle);
    EXPECT_TRUE(world.Widget(frmVaelAna, "fraGraph_1").isVisible());
    EXPECT_NEAR(ShareOf(splitter), share, 0.004);
    EXPECT_EQ(frmVaelAna.picGraph[1].Height, world.Widget(frmVaelAna, "picGraph_1").height());
}

// --- boxes of numbers -----------

TEST(CursorBoxes, TheirDigitsAreOfOneWidthAndOneSizeLarger) {
    DeskWorld world;
    for (const NumberBox& box : frmVaelAna.inumCursorDisp) {
        const QLineEdit& widget = world.Widget<QLineEdit>(frmVaelAna, box.Name);
        const QFontMetricsF metrics(widget.font());
        for (char digit = '1'; digit <= '9'; ++digit)
            EXPECT_NEAR(metrics.horizontalAdvance(QLatin1Char(digit)),
                        metrics.horizontalAdvance(QLatin1Char('0')), 0.01);
        EXPECT_NEAR(widget.font().pointSizeF(), QApplication::font().pointSizeF() + 1.0, 0.01);
        EXPECT_TRUE(widget.alignment().testFlag(Qt::AlignRight));
    }
}

TEST(CursorBoxes, TheyNeverChangeTheirPlaceOrWidth) {
    DeskWorld world;
    std::vector<std::string> names{"inumCursorCh", "inumCursorCnt_0", "itxtNoPeak", "grpReadout",
                                   "picGraph_0"};
    for (const NumberBox& box : frmVaelAna.inumCursorDisp) names.push_back(box.Name);
    std::vector<QRect> before;
    for (const std::string& name : names) before.push_back(PlaceOf(world, name));
    world.Open({world.Write("a name that is far longer than any box has room for.npd",
                            {{2000.0, 9000000.0, 30.0}})});
    for (const int channel : {0, 9, 99, 999, 2000, 4095}) {
        CsrX_Change(channel);
        frmVaelAna.itxtNoPeak.Text = "100";
        for (NumberBox& box : frmVaelAna.inumCursorDisp) box.Value = channel * 123456.789;
        world.Desk.Show();
        DeskWorld::Settle();
        for (std::size_t k = 0; k < names.size(); ++k)
            EXPECT_EQ(PlaceOf(world, names[k]), before[k]) << names[k] << " at " << channel;
    }
}

TEST(CursorBoxes, EachUnitStandsAtTheLeftOfItsBoxInOneColumn) {
    DeskWorld world;
    for (int k = 0; k < 5; ++k) {
        const QRect unit = PlaceOf(world, "lblDispUnit_" + std::to_string(k));
        const QRect box = PlaceOf(world, "inumCursorDisp_" + std::to_string(k));
        EXPECT_LT(unit.right(), box.left());
        EXPECT_NEAR(unit.center().y(), box.center().y(), 1);
        EXPECT_EQ(unit.left(), PlaceOf(world, "lblDispUnit_0").left());
        EXPECT_EQ(box.width(), PlaceOf(world, "inumCursorDisp_0").width());
    }
}

// --- tips -----------

TEST(Tips, LongOnesAreInLinesOfAtMostSixtyLetters) {
    DeskWorld world;
    int wrapped = 0;
    for (const Control* control : frmVaelAna.Controls()) {
        auto* object = world.Main().findChild<QObject*>(QString::fromStdString(control->Name));
        const auto* widget = qobject_cast<QWidget*>(object);
        if (widget == nullptr) continue;
        const QStringList lines = widget->toolTip().split(QLatin1Char('\n'));
        for (const QString& line : lines) EXPECT_LE(line.size(), 60) << control->Name;
        EXPECT_EQ(lines.join(QLatin1Char(' ')).toStdString(), control->Tip) << "no word is lost";
        wrapped += lines.size() > 1 ? 1 : 0;
    }
    EXPECT_GT(wrapped, 5);
}

TEST(Tips, EveryButtonSaysWhatItDoesAndWithWhichKey) {
    DeskWorld world;
    for (const Control* control : frmVaelAna.Controls()) {
        if (control->Kind != ControlKind::Button) continue;
        const auto& button = static_cast<const Button&>(*control);
        EXPECT_GE(button.Tip.size(), 10U) << button.Name;
        if (!button.Shortcut.empty())
            EXPECT_NE(button.Tip.find(button.Shortcut), std::string::npos) << button.Name;
        if (button.Withheld)
            EXPECT_NE(button.Tip.find(" - "), std::string::npos)
                << button.Name << " does not say why it is withheld";
        const auto& widget = world.Widget<QAbstractButton>(frmVaelAna, button.Name);
        EXPECT_FALSE(widget.text().isEmpty() && widget.accessibleName().isEmpty()) << button.Name;
    }
}

// --- pictures on the buttons -----------

/// The drawing of a button as a grey picture, for comparing shapes.
QImage GreyOf(const QAbstractButton& button, QIcon::Mode mode) {
    return button.icon()
        .pixmap(QSize(24, 24), mode)
        .toImage()
        .convertToFormat(QImage::Format_Alpha8);
}

TEST(Icons, OfTheOperationsAreTwentyFourPixelsAndToldApartInGrey) {
    DeskWorld world;
    std::vector<QImage> seen;
    for (const Button& button : frmVaelAna.cmdOperation) {
        const auto& widget = world.Widget<QAbstractButton>(frmVaelAna, button.Name);
        EXPECT_EQ(widget.iconSize(), QSize(24, 24));
        const QImage shape = GreyOf(widget, QIcon::Normal);
        ASSERT_FALSE(shape.isNull()) << button.Name;
        for (const QImage& other : seen) {
            int differing = 0;
            for (int y = 0; y < shape.height(); ++y)
                for (int x = 0; x < shape.width(); ++x)
                    differing +=
                        std::abs(int{shape.constScanLine(y)[x]} - other.constScanLine(y)[x]) > 96;
            EXPECT_GT(differing, 24) << button.Name << " looks like another one";
        }
        seen.push_back(shape);
    }
}

// --- the window as a whole -----------

TEST(Window, ItsPanelsStandInLine) {
    DeskWorld world;
    world.Open({world.Write("first.npd", FIVE_LINES)});
    const QRect upper = PlaceOf(world, "picGraph_0");
    const QRect lower = PlaceOf(world, "picGraph_1");
    EXPECT_EQ(upper.left() % 8, 0);
    EXPECT_EQ(upper.left(), lower.left());
    EXPECT_EQ(upper.width(), lower.width());
    EXPECT_EQ(PlaceOf(world, "hsbStartX").left(), upper.left());
    EXPECT_EQ(PlaceOf(world, "inumScaleX").right(), upper.right());
    EXPECT_EQ(PlaceOf(world, "cmdAutoFit").right(), PlaceOf(world, "panelSide").right());
    for (const char* name : {"grpCursor", "grpScale", "grpCalibration", "grpFit"})
        EXPECT_EQ(PlaceOf(world, name).left(), PlaceOf(world, "panelSide").left()) << name;
    for (const char* name : {"cmdFiles_0", "cmdOperation_0", "cmdOperation_12"}) {
        EXPECT_EQ(PlaceOf(world, name).size(), QSize(32, 32)) << name;
        EXPECT_EQ(PlaceOf(world, name).left() % 8, 0) << name;
    }
}

TEST(Window, NothingIsCutAtItsSmallestSize) {
    DeskWorld world;
    world.Open({world.Write("first.npd", FIVE_LINES)});
    world.Main().resize(1100, 700);
    DeskWorld::Settle();
    ASSERT_EQ(world.Main().size(), QSize(1100, 700));
    for (const Control* control : frmVaelAna.Controls()) {
        const auto* widget =
            world.Main().findChild<QWidget*>(QString::fromStdString(control->Name));
        if (widget == nullptr || !widget->isVisible()) continue;
        const QRect place = PlaceOf(world, control->Name);
        EXPECT_TRUE(world.Main().rect().contains(place)) << control->Name;
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        if (button == nullptr) continue;
        const int words = button->fontMetrics().horizontalAdvance(button->text());
        const bool slim = qobject_cast<const QToolButton*>(widget) != nullptr;
        EXPECT_GE(place.width(), slim ? words + 4 : widget->minimumSizeHint().width())
            << control->Name;
    }
}

TEST(Window, NothingMovesWhenTheStatusLineHasALotToSay) {
    DeskWorld world;
    world.Open({world.Write("first.npd", FIVE_LINES)});
    const QSize size = world.Main().size();
    const QSize least = world.Main().minimumSizeHint();
    const QRect plot = PlaceOf(world, "picGraph_1");
    for (const bool fault : {false, true}) {
        TellStatus("Not read: " + std::string(600, 'x'), fault);
        world.Desk.Show();
        DeskWorld::Settle();
        EXPECT_EQ(world.Main().size(), size);
        EXPECT_EQ(world.Main().minimumSizeHint(), least);
        EXPECT_EQ(PlaceOf(world, "picGraph_1"), plot) << (fault ? "with its mark" : "");
    }
}

TEST(Window, APolynomialOfTwoLinesMovesNothingBelowIt) {
    DeskWorld world;
    const QRect below = PlaceOf(world, "grpFit");
    frmVaelAna.lblEGC.Caption = "-0.123456Ch^2+-123456.031639Ch+-12345.000000";
    world.Desk.Show();
    DeskWorld::Settle();
    EXPECT_EQ(PlaceOf(world, "grpFit"), below);
}

TEST(Window, TheEdgeOfTheActiveOneIsTheAccent) {
    DeskWorld world;
    world.Open({world.Write("first.npd", FIVE_LINES)});
    const auto edgeOf = [&](const char* name) {
        QWidget& frame = world.Widget(frmVaelAna, name);
        return frame.grab().toImage().pixelColor(0, frame.height() / 2);
    };
    const QColor accent = QApplication::palette().color(QPalette::Highlight);
    EXPECT_EQ(edgeOf("fraGraph_0"), accent);
    EXPECT_NE(edgeOf("fraGraph_1"), accent);
    QTest::mouseClick(&world.Plot(1), Qt::LeftButton, {}, QPoint(50, 50));
    DeskWorld::Settle();
    EXPECT_EQ(edgeOf("fraGraph_1"), accent);
    EXPECT_NE(edgeOf("fraGraph_0"), accent);
}

}  // namespace
}  // namespace vael
