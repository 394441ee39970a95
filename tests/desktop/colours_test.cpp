// The colour view and its picker in their windows, by mouse and key, and the colours on the screen.
#include "deskworld.h"
#include "shots.h"

#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/windows.h"
#include "display/frmdialogcolor.h"
#include "display/frmsetcolor.h"

#include <QColorDialog>
#include <QPushButton>
#include <QStyleOptionSlider>

namespace vael {
namespace {

using test::DeskWorld;
using test::FIVE_LINES;
using test::PixelsOf;

const Colour NEW = Rgb(12, 200, 34);
constexpr std::size_t WINDOW1_BACK = 17;  // places in the colour view
constexpr std::size_t BASE_FORM = 19;

/// The user's acts in the colour view, opened by its menu item or by its key.
void InView(DeskWorld& world, const std::function<void()>& acts, bool byKey = false) {
    bool acted = false;
    world.WhileModal(frmSetColor, [&] {
        ASSERT_TRUE(world.Desk.FormOfView(frmSetColor)->isVisible());
        acts();
        acted = true;
    });
    if (byKey)
        world.KeyOn(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    else
        world.ClickOn(frmVaelAna.mnuColor);
    EXPECT_TRUE(acted);
    EXPECT_FALSE(world.Desk.FormOfView(frmSetColor)->isVisible());
}

/// The user's acts in the picker, opened by the swatch of a role.
void Picking(DeskWorld& world, std::size_t role, const std::function<void()>& acts) {
    bool acted = false;
    world.WhileModal(frmDialogColor, [&] {
        ASSERT_TRUE(world.Desk.FormOfView(frmDialogColor)->isVisible());
        acts();
        acted = true;
    });
    world.ClickOn(frmSetColor.cmdColor[role]);
    EXPECT_TRUE(acted);
}

void TypeColour(DeskWorld& world, Colour colour) {
    const DialogColorView& v = frmDialogColor;
    world.TypeInto(v.inumRed, std::to_string(colour & 255).c_str());
    world.TypeInto(v.inumGreen, std::to_string((colour >> 8) & 255).c_str());
    world.TypeInto(v.inumBlue, std::to_string((colour >> 16) & 255).c_str());
}

void Give(DeskWorld& world, const std::vector<std::pair<std::size_t, Colour>>& roles) {
    InView(world, [&] {
        for (const auto& [role, colour] : roles)
            Picking(world, role, [&world, colour = colour] {
                TypeColour(world, colour);
                world.ClickOn(frmDialogColor.cmdSet);
            });
        world.ClickOn(frmSetColor.cmdOk);
    });
}

QColor MiddleOf(QWidget& widget) {
    const QImage image = widget.grab().toImage();
    return image.pixelColor(image.width() / 2, image.height() / 2);
}

TEST(ColoursOnScreen, EveryControlIsPressedAndOkPutsTheTableInForce) {
    DeskWorld world;
    world.Open({world.Write("first.npd", FIVE_LINES)});
    world.Desk.OwnDialogs = true;
    std::set<std::string> usable;
    const DialogColorView& v = frmDialogColor;
    InView(world, [&] {
        test::CollectUsable(usable);
        for (std::size_t role = 1; role < ROLE_COUNT; ++role)
            Picking(world, role, [&] { world.ClickOn(v.cmdCansel); });
        Picking(world, 0, [&] {
            test::CollectUsable(usable);
            EXPECT_EQ(MiddleOf(world.Widget(v, "picSampl")), QColor(255, 214, 79));
            world.ClickOn(v.picColor[44]);
            EXPECT_EQ(MiddleOf(world.Widget(v, "picSampl")), QColor(6, 86, 69));
            EXPECT_EQ(MiddleOf(world.Widget(v, "shpSetColor")), QColor(255, 214, 79));
            EXPECT_EQ(world.Widget<QLineEdit>(v, "inumGreen").text(), QStringLiteral("86"));
            world.ScrollOn(v.vsbRed, 1);
            EXPECT_EQ(v.SelColor(), Rgb(7, 86, 69));
            world.ScrollOn(v.vsbGreen, -1);
            EXPECT_EQ(v.SelColor(), Rgb(7, 85, 69));
            world.ScrollOn(v.vsbBlue, -1);
            EXPECT_EQ(v.SelColor(), Rgb(7, 85, 68));
            TypeColour(world, Rgb(1, 2, 3));
            EXPECT_EQ(v.SelColor(), Rgb(1, 2, 3));
            test::OnDialog<QColorDialog>([](QColorDialog& box) {
                EXPECT_EQ(box.currentColor(), QColor(1, 2, 3));
                box.setCurrentColor(ToQt(NEW));
                box.accept();
            });
            world.ClickOn(v.cmdOther);
            EXPECT_EQ(v.SelColor(), NEW);
            world.ClickOn(v.cmdSet);
        });
        EXPECT_EQ(MiddleOf(world.Widget(frmSetColor, "cmdColor_0")), ToQt(NEW));
        EXPECT_EQ(store.ColorTable, FirstColours()) << "nothing is in force yet";
        world.ClickOn(frmSetColor.cmdOk);
    });
    EXPECT_EQ(store.ColorTable[0], NEW);
    EXPECT_GT(PixelsOf(test::PaperOf(world, frmVaelAna.picGraph[0]), NEW), 50);
    world.Widget(frmVaelAna, "chkGrp_0").repaint();
    EXPECT_GT(PixelsOf(world.Widget(frmVaelAna, "chkGrp_0").grab().toImage(), NEW), 50);

    InView(world, [&] {
        Picking(world, 3, [&] {
            TypeColour(world, NEW);
            world.ClickOn(v.cmdSet);
        });
        world.ClickOn(frmSetColor.cmdCansel);
    });
    EXPECT_EQ(store.ColorTable[3], FirstColours()[3]) << "\"Cancel\" changes nothing";
    int controls = 0;
    for (const std::string& name : usable)
        if (name.starts_with("frmSetColor.") || name.starts_with("frmDialogColor.")) {
            EXPECT_TRUE(world.Pressed.contains(name)) << name << " works and no test presses it";
            ++controls;
        }
    EXPECT_EQ(controls, 21 + 2 + 3 + 3 + 3);
    EXPECT_TRUE(world.Faults.empty());
}

TEST(ColoursOnScreen, ByKeysAlone) {
    DeskWorld world;
    InView(
        world,
        [&] {
            auto& first = world.Widget<QPushButton>(frmSetColor, "cmdColor_0");
            EXPECT_EQ(QApplication::focusWidget(), &first);
            QTest::keyClick(&first, Qt::Key_Tab);
            auto* second = QApplication::focusWidget();
            EXPECT_EQ(second->objectName(), QStringLiteral("cmdColor_1"));
            bool picked = false;
            world.WhileModal(frmDialogColor, [&] {
                EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("picColor_0"));
                EXPECT_EQ(frmDialogColor.Swatch, 21);
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
                EXPECT_EQ(frmDialogColor.Swatch, 12);
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
                picked = true;
            });
            QTest::keyClick(second, Qt::Key_Space);
            EXPECT_TRUE(picked);
            // Enter on a swatch of the view opens it again, as on any button.
            world.WhileModal(frmDialogColor,
                             [&] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape); });
            QTest::keyClick(second, Qt::Key_Return);
            EXPECT_TRUE(frmSetColor.Visible);
            auto& ok = world.Widget<QPushButton>(frmSetColor, "cmdOk");
            ok.setFocus();
            QTest::keyClick(&ok, Qt::Key_Return);
        },
        true);
    EXPECT_EQ(store.ColorTable[1], Swatches()[12]);
}

TEST(ColoursOnScreen, ABarIsDraggedAndTheSampleFollows) {
    DeskWorld world;
    InView(world, [&] {
        Picking(world, 0, [&] {
            auto& bar = world.Widget<QScrollBar>(frmDialogColor, "vsbBlue");
            const int before = bar.value();
            QStyleOptionSlider option;
            option.initFrom(&bar);
            option.orientation = Qt::Vertical;
            option.maximum = bar.maximum();
            option.pageStep = bar.pageStep();
            option.sliderPosition = option.sliderValue = before;
            const QPoint from = bar.style()
                                    ->subControlRect(QStyle::CC_ScrollBar, &option,
                                                     QStyle::SC_ScrollBarSlider, &bar)
                                    .center();
            QTest::mousePress(&bar, Qt::LeftButton, {}, from);
            DeskWorld::MoveOn(bar, from + QPoint(0, 20), Qt::LeftButton);
            QTest::mouseRelease(&bar, Qt::LeftButton, {}, from + QPoint(0, 20));
            DeskWorld::Settle();
            EXPECT_GT(bar.value(), before) << "down is more";
            EXPECT_EQ(frmDialogColor.SelColor(), Rgb(255, 214, bar.value()));
            EXPECT_EQ(MiddleOf(world.Widget(frmDialogColor, "picSampl")),
                      QColor(255, 214, bar.value()));
            world.ClickOn(frmDialogColor.cmdCansel);
        });
        world.ClickOn(frmSetColor.cmdCansel);
    });
}

TEST(ColoursOnScreen, GroundsAndFramesOfBothWindows) {
    DeskWorld world;
    world.Open({world.Write("first.npd", FIVE_LINES)});
    Give(world,
         {{WINDOW1_BACK, Rgb(250, 251, 252)}, {WINDOW1_BACK + 1, Rgb(0, 0, 0)}, {BASE_FORM, NEW}});
    const QImage upper = test::PaperOf(world, frmVaelAna.picGraph[0]);
    const QImage lower = test::PaperOf(world, frmVaelAna.picGraph[1]);
    EXPECT_EQ(upper.pixelColor(5, 5), QColor(250, 251, 252));
    EXPECT_EQ(lower.pixelColor(5, 5), QColor(0, 0, 0));
    // The active window has its line inside the accent, the other one has it alone.
    for (const int win : {0, 1}) {
        QWidget& frame = world.Widget(frmVaelAna, frmVaelAna.fraGraph[win].Name);
        const QImage image = frame.grab().toImage();
        const int in = win == 0 ? 2 : 0;
        const int scale = static_cast<int>(frame.devicePixelRatioF());
        EXPECT_EQ(image.pixelColor(in * scale, image.height() / 2), ToQt(NEW)) << win;
    }
}

TEST(ColoursOnScreen, ABlackSwatchIsBlack) {
    DeskWorld world;
    store.ColorTable[2] = 0;
    InView(world, [&] {
        EXPECT_EQ(MiddleOf(world.Widget(frmSetColor, "cmdColor_2")), QColor(0, 0, 0));
        world.ClickOn(frmSetColor.cmdCansel);
    });
}

TEST(ColoursOnScreen, MarksAreSeenOnAMiddleGreyAndLeaveNoTrace) {
    DeskWorld world;
    const Colour grey = Rgb(128, 128, 128);
    Give(world, {{WINDOW1_BACK, grey}});
    world.Open({world.Write("first.npd", {{2000.0, 9000.0, 10.0}})});
    CsrX_Change(500);
    const auto at = [&](int channel) {
        const QImage image = test::PaperOf(world, frmVaelAna.picGraph[0]);
        const double x = (image.width() - 1.0) * channel / 4095.0;
        return image.pixelColor(static_cast<int>(std::lround(x)), image.height() / 4);
    };
    world.Desk.Show();
    EXPECT_EQ(at(500), QColor(0, 0, 0)) << "a white ink would leave the grey as it is";
    CsrX_Change(900);
    world.Desk.Show();
    EXPECT_EQ(at(500), ToQt(grey));
}

TEST(ColoursOnScreen, SurviveARestart) {
    DeskWorld world;
    world.Open({world.Write("first.npd", FIVE_LINES)});
    Give(world, {{0, NEW}, {WINDOW1_BACK, Rgb(250, 251, 252)}, {20, Rgb(9, 8, 7)}});
    const ColourTable chosen = store.ColorTable;
    world.ClickOn(frmVaelAna.mnuExit);
    ASSERT_TRUE(world.Desk.HasQuit);
    store = Store{};
    settings = Settings{};
    FreshViews();
    RunEvent(frmVaelAna, [&] { Form_Load(world.Folder.path().toStdString()); });
    world.Desk.Show();
    EXPECT_EQ(store.ColorTable, chosen);
    world.Open({world.Write("second.npd", FIVE_LINES)});
    const QImage plot = test::PaperOf(world, frmVaelAna.picGraph[0]);
    EXPECT_EQ(plot.pixelColor(5, 5), QColor(250, 251, 252));
    EXPECT_GT(PixelsOf(plot, NEW), 50);
    InView(world, [&] {
        EXPECT_EQ(MiddleOf(world.Widget(frmSetColor, "cmdColor_20")), QColor(9, 8, 7));
        world.ClickOn(frmSetColor.cmdCansel);
    });
}

// --- pictures to look at -----------

class ColourShots : public test::ShotTest {};

TEST_F(ColourShots, TheViewAndThePicker) {
    for (const bool dark : {false, true}) {
        if (dark) Dark();
        DeskWorld world;
        const std::string end = dark ? "_dark" : "";
        InView(world, [&] {
            test::Shoot(*world.Desk.FormOfView(frmSetColor), "setcolor" + end);
            Picking(world, 0, [&] {
                test::Shoot(*world.Desk.FormOfView(frmDialogColor), "dialogcolor" + end);
                world.ClickOn(frmDialogColor.cmdCansel);
            });
            world.ClickOn(frmSetColor.cmdCansel);
        });
    }
}

/// Dark curves on white plots: a fit with regions, marks and the area.
TEST_F(ColourShots, AWhitePlot) {
    DeskWorld world;
    OpenSpectrum(world);
    world.ClickOn(frmVaelAna.cmdAutoFit);
    std::vector<std::pair<std::size_t, Colour>> roles{{0, Swatches()[47]},
                                                      {1, Swatches()[46]},
                                                      {2, Swatches()[43]},
                                                      {3, Swatches()[40]},
                                                      {4, Swatches()[37]},
                                                      {10, Rgb(0, 0, 0)},
                                                      {13, Rgb(0, 0, 0)},
                                                      {WINDOW1_BACK, Rgb(255, 255, 255)},
                                                      {WINDOW1_BACK + 1, Rgb(255, 255, 255)}};
    Give(world, roles);
    world.ClickOn(frmVaelAna.chkPeakParameter);
    CsrX_Change(1034);
    frmVaelAna.chkArea.Value = 1;
    SetArea(1500, 1900);
    world.Desk.Show();
    DeskWorld::Settle();
    test::Shoot(world.Main(), "whiteplot");
}

/// Ten graphs in the colours of a first start.
TEST_F(ColourShots, TenGraphsInTheFirstColours) {
    DeskWorld world;
    std::vector<std::string> paths;
    for (int i = 0; i < GRAPH_COUNT; ++i) {
        auto lines = FIVE_LINES;
        for (auto& line : lines) line.Center += 40.0 * i;
        paths.push_back(world.Write("run" + std::to_string(i + 1) + ".npd", lines));
    }
    world.Open(paths);
    world.ClickOn(frmVaelAna.chkWinStyle);
    test::Shoot(world.Main(), "tengraphs");
}

}  // namespace
}  // namespace vael
