// The energy calibration in its windows: a whole calibration by mouse and keys, every control
// pressed, and their pictures.
#include "gridworld.h"
#include "pdf.h"
#include "shots.h"

#include "calibration/calibreport.h"
#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/fault.h"
#include "core/graphs.h"
#include "display/frmprint.h"

#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>

namespace vael {
namespace {

using test::DeskWorld;
using test::Shoot;

using C = DialogCalibCView;

DialogCalibCView& v = frmDialogCalibC;
CalibCurvView& curve = frmCalibCurv;

/// Lines on E = 0.05 + 0.03 X at the 0-based channels 600, 1500 and 2700.
const std::vector<GaussLine> LINES{{600.0, 8000.0, 9.0}, {1500.0, 9000.0, 9.0}, {2700.0, 7000, 9}};
constexpr std::array<const char*, 3> ENERGIES{"18.08", "45.08", "81.08"};

struct Calibrating : test::GridWorld {
    Calibrating() {
        KeyOn(Qt::Key_K, Qt::ControlModifier);
        EXPECT_TRUE(Window().isVisible());
    }
    Form& Window() { return *Desk.FormOfView(v); }
    /// The program's file dialog takes these names of the world's folder by mouse and keys.
    void ChooseFiles(const std::vector<QString>& names, const std::function<void()>& open) {
        WhileModal(frmDialogLoad, [&] {
            frmDialogLoad.Directory(Folder.path().toStdString());
            Desk.Show();
            auto& files = Widget<QListWidget>(frmDialogLoad, "filFiles");
            for (const QString& name : names) {
                const auto found = files.findItems(name, Qt::MatchExactly);
                ASSERT_EQ(found.size(), 1) << name.toStdString();
                QTest::mouseClick(files.viewport(), Qt::LeftButton, Qt::ControlModifier,
                                  files.visualItemRect(found.front()).center());
                Settle();
            }
            ClickOn(frmDialogLoad.cmdSet);
        });
        open();
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        Window().activateWindow();
        Settle();
        QTest::keyClick(&Window(), key, modifiers);
        Settle();
    }
    /// An area by a drag across the upper plot.
    void MarkArea(int from, int to) {
        if (frmVaelAna.chkArea.Value == 0) ClickOn(frmVaelAna.chkArea);
        SetArea(from, to);
        Desk.Show();
    }
};

TEST(CalibrationOnScreen, OpenFitEnterCalculateShowPrintUpdate) {
    Calibrating world;
    world.Write("Ag.npd", LINES);
    world.Write("Co 57.npd", LINES);
    world.ChooseFiles({QStringLiteral("Ag.npd"), QStringLiteral("Co 57.npd")},
                      [&] { world.Key(Qt::Key_O, Qt::ControlModifier); });
    EXPECT_EQ(world.Shown(v.sprdFileName, C::NAME, 2), QStringLiteral("Co 57.npd"));
    world.ClickCell(v.sprdFileName, C::NAME, 1);
    EXPECT_EQ(store.GraphList[0].Name, "Ag.npd");
    world.Key(Qt::Key_F4);
    ASSERT_EQ(store.GraphTotal, 4);

    // A line by dragging the area about it in the plot, the others by their marks.
    world.ClickOn(frmVaelAna.chkArea);
    world.DragOn(0, world.PlaceOf(0, 570), world.PlaceOf(0, 630));
    world.Key(Qt::Key_F6);
    world.MarkArea(1470, 1530);
    world.ClickOn(v.cmdAuto[1]);
    world.MarkArea(2670, 2730);
    world.Key(Qt::Key_F5);
    for (int row = 1; row <= 3; ++row)
        world.TypeCell(v.vaSpread1, C::ENERGY, row, Item(ENERGIES, row - 1));
    EXPECT_NEAR(world.Shown(v.vaSpread1, C::CHANNEL, 3).toDouble(), 2701.0, 0.1);

    world.Key(Qt::Key_F7);
    EXPECT_TRUE(world.Widget<QLabel>(v, "lblFit").text().startsWith(QStringLiteral("n = 3, rms ")));
    world.Key(Qt::Key_F8);
    ASSERT_TRUE(world.Desk.FormOfView(curve)->isVisible());
    EXPECT_TRUE(world.Widget<QPlainTextEdit>(curve, "txtMemo")
                    .toPlainText()
                    .startsWith(QStringLiteral("Energy(keV) = (")));
    const std::string page = world.Folder.filePath(QStringLiteral("curve.pdf")).toStdString();
    world.WhileModal(frmPrint, [&] {
        world.TypeInto(frmPrint.txtFileName, page.c_str());
        world.ClickOn(frmPrint.cmdOk);
    });
    world.ClickOn(curve.cmdPrint);
    EXPECT_TRUE(test::Pdf(page).Has("Energy Calibration Curve"));
    EXPECT_EQ(test::Pdf(page).Pictures(), 0);
    world.ClickOn(curve.cmdOK);
    EXPECT_FALSE(world.Desk.FormOfView(curve)->isVisible());

    world.Desk.Answers.push_back(Answer::Ok);
    world.Key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(world.Window().isVisible());
    EXPECT_TRUE(world.Desk.Asked.back().starts_with("Parameter saved as "));
    EXPECT_NEAR(store.DefaultParam.EgcCoef[1], 0.03, 2e-6);
    EXPECT_TRUE(QFileInfo::exists(world.Folder.filePath(QString::fromUtf8(CALIB_REPORT))));
    EXPECT_TRUE(QFileInfo::exists(world.Folder.filePath(QStringLiteral("syspara_a.xpr"))));
    EXPECT_EQ(store.GraphTotal, 0);
    EXPECT_TRUE(world.Widget(frmVaelAna, "cmdFiles_0").isEnabled());
    EXPECT_TRUE(world.Faults.empty());
}

TEST(CalibrationOnScreen, EveryControlIsPressedAndItsResultSeen) {
    Calibrating world;
    std::set<std::string> usable;
    world.Write("a.npd", LINES);
    world.Write("b.npd", LINES);
    EXPECT_FALSE(world.Widget(frmVaelAna, "cmdFiles_0").isEnabled());
    EXPECT_FALSE(world.Widget(frmVaelAna, "cmdOperation_12").isEnabled());
    world.ChooseFiles({QStringLiteral("a.npd")}, [&] { world.ClickOn(v.cmdFileOpen); });
    world.ChooseFiles({QStringLiteral("b.npd")}, [&] { world.ClickOn(v.mnuFileOpen); });
    ASSERT_EQ(v.Files.size(), 2U);
    test::CollectUsable(usable);

    world.ClickCell(v.sprdFileName, C::NAME, 2);
    world.ClickOn(v.mnuFileCancel);
    EXPECT_EQ(v.Files.size(), 1U);
    world.ClickCell(v.sprdFileName, C::FOLDER, 1);
    EXPECT_EQ(store.GraphList[0].Name, "a.npd");
    world.ClickOn(v.cmdSmothBk);
    EXPECT_EQ(store.GraphTotal, 4);
    world.MarkArea(570, 630);
    world.ClickOn(v.cmdAuto[1]);
    EXPECT_NEAR(world.Shown(v.vaSpread1, C::CHANNEL, 1).toDouble(), 601.0, 0.1);
    world.ClickOn(v.cmdFitDel);
    EXPECT_EQ(RowOfName(NAME_FIT), -1);
    world.ClickOn(v.cmdAuto[0]);
    EXPECT_NEAR(world.Shown(v.vaSpread1, C::CHANNEL, 2).toDouble(), 601.0, 0.1);
    CsrX_Change(3000);
    world.ClickOn(v.cmdCsrSet);
    EXPECT_EQ(world.Shown(v.vaSpread1, C::CHANNEL, 3), QStringLiteral("3001"));
    CsrX_Change(3100);
    world.ClickOn(v.mnuCsrVal);
    EXPECT_EQ(world.Shown(v.vaSpread1, C::CHANNEL, 4), QStringLiteral("3101"));
    world.TypeCell(v.vaSpread1, C::CHANNEL, 4, "words");
    EXPECT_EQ(world.Shown(v.vaSpread1, C::CHANNEL, 4), QStringLiteral("3101"));
    world.ClickCell(v.vaSpread1, C::CHANNEL, 3);
    world.ClickOn(v.cmdDelTable);
    EXPECT_EQ(world.Shown(v.vaSpread1, C::CHANNEL, 3), QStringLiteral("3101"));
    world.ClickCell(v.vaSpread1, C::CHANNEL, 2);
    world.ClickOn(v.mnuDelPoint);
    EXPECT_EQ(v.Pairs.size(), 2U);
    test::CopyElementTable(world);
    for (int way = 0; way < 2; ++way) {
        way == 0 ? world.ClickOn(v.cmdEnergyInp) : world.ClickOn(v.mnuElmTable);
        EXPECT_TRUE(world.Desk.FormOfView(frmElement)->isVisible());
        world.ClickOn(frmElement.cmdOk);
    }
    world.TypeCell(v.vaSpread1, C::ENERGY, 1, "18.08");
    world.TypeCell(v.vaSpread1, C::ENERGY, 2, "93.08");
    world.ClickOn(v.optCnst[0]);
    world.ClickOn(v.mnuCalc);
    EXPECT_TRUE(v.FitFailed) << "two rows are no parabola";
    world.ClickOn(v.optCnst[1]);
    world.ClickOn(v.cmdCalEng);
    EXPECT_FALSE(v.FitFailed);
    EXPECT_TRUE(world.Widget<QLineEdit>(v, "ImConst_1").text().startsWith(QStringLiteral("0.0")));
    world.ClickOn(v.mnuShow);
    test::CollectUsable(usable);
    EXPECT_TRUE(curve.Visible);
    world.ClickOn(curve.cmdOK);
    world.ClickOn(v.cmdCurve);
    EXPECT_TRUE(curve.Visible);
    world.WhileModal(frmPrint, [&] { world.ClickOn(frmPrint.cmdCan); });
    world.ClickOn(curve.cmdPrint);
    world.ClickCell(v.sprdFileName, C::NAME, 1);
    world.ClickOn(v.cmdDelFile);
    EXPECT_EQ(store.GraphTotal, 0);

    const auto leave = [&](const auto& way) {
        world.Desk.Answers.push_back(Answer::Ok);
        world.ClickOn(way);
        EXPECT_FALSE(world.Window().isVisible());
    };
    const CalibConstants before = store.DefaultParam.EgcCoef;
    leave(v.mnuCancel);
    EXPECT_EQ(store.DefaultParam.EgcCoef, before);
    world.ClickOn(frmVaelAna.mnuCons);
    leave(v.cmdCalbCan);
    EXPECT_EQ(store.DefaultParam.EgcCoef, before);
    world.ClickOn(frmVaelAna.cmdEnergy[0]);
    world.ClickOn(v.mnuCalc);
    leave(v.mnuUpdate);
    EXPECT_NEAR(store.DefaultParam.EgcCoef[1], 0.03, 2e-6);
    store.DefaultParam.EgcCoef = {};
    world.ClickOn(frmVaelAna.mnuCons);
    world.ClickOn(v.cmdCalEng);
    leave(v.cmdCalbOK);
    EXPECT_NEAR(store.DefaultParam.EgcCoef[1], 0.03, 2e-6);
    world.ExpectAllPressed(usable, "frmDialogCalibC");
    world.ExpectAllPressed(usable, "frmCalibCurv");
    EXPECT_TRUE(world.Faults.empty());
}

TEST(CalibrationOnScreen, TheElementSheetFillsTheRowsWithEnergies) {
    Calibrating world;
    test::CopyElementTable(world);
    world.ClickCell(v.vaSpread1, C::ENERGY, 1);
    world.Key(Qt::Key_E, Qt::ControlModifier);
    ASSERT_TRUE(world.Desk.FormOfView(frmElement)->isVisible());
    world.TypeInto(frmElement.ImNumber5, "47", Qt::Key_Return);
    QTest::mouseDClick(&world.Widget(frmElement, "ImNumber2"), Qt::LeftButton);
    DeskWorld::Settle();
    world.TypeInto(frmElement.ImNumber3, "24.9424", Qt::Key_Return);
    EXPECT_EQ(world.Shown(v.vaSpread1, C::ENERGY, 1), QStringLiteral("22.1629"));
    EXPECT_EQ(world.Shown(v.vaSpread1, C::ENERGY, 2), QStringLiteral("24.9424"));
    EXPECT_EQ(v.vaSpread1.Row, 3);
    EXPECT_TRUE(world.Faults.empty());
}

TEST(CalibrationOnScreen, EscapeLeavesTheRowsAlone) {
    Calibrating world;
    world.Write("a.npd", LINES);
    world.ChooseFiles({QStringLiteral("a.npd")}, [&] { world.ClickOn(v.cmdFileOpen); });
    world.Key(Qt::Key_Escape);
    EXPECT_TRUE(v.Visible);
    EXPECT_EQ(store.GraphTotal, 1);
}

TEST(CalibrationOnScreen, TheCurveGrowsWithItsWindow) {
    Calibrating world;
    curve.DrawGraph(0, {}, {}, 4096.0, 90.0, {0.0, 0.02, 0.0}, {"one", "two"});
    world.Desk.Show();
    Form& window = *world.Desk.FormOfView(curve);
    window.resize(900, 700);
    DeskWorld::Settle();
    const QImage image = test::PaperOf(world, curve.picCalib);
    EXPECT_GT(image.width(), 700 * window.devicePixelRatio());
    const auto red = [&](double share) {
        const int x = static_cast<int>(share * (image.width() - 1));
        for (int y = 0; y < image.height(); ++y) {
            const QColor colour = image.pixelColor(x, y);
            if (colour.red() > 200 && colour.green() < 120 && colour.blue() < 120)
                return static_cast<double>(y) / (image.height() - 1);
        }
        return -1.0;
    };
    // E = 0.02 ch on 0 to 100 keV: at half of 4095 channels 40.95 keV.
    EXPECT_NEAR(red(0.5), 1.0 - 0.4095, 0.01);
    EXPECT_NEAR(red(0.9), 1.0 - 0.02 * 4095 * 0.9 / 100.0, 0.01);
}

TEST(CalibrationOnScreen, AllOfItIsSeenOnASmallScreen) {
    Calibrating world;
    EXPECT_LE(world.Window().width(), 1280);
    EXPECT_LE(world.Window().height(), 760);
    for (const Control* control : v.Controls()) {
        if (control->Kind == ControlKind::Menu) continue;
        QWidget& widget = world.Widget(v, control->Name);
        const QRect place(widget.mapTo(&world.Window(), QPoint(0, 0)), widget.size());
        EXPECT_TRUE(world.Window().rect().contains(place)) << control->Name;
    }
}

class CalibrationShots : public test::ShotTest {};

TEST_F(CalibrationShots, TheCalibrationAndItsCurve) {
    for (const bool dark : {false, true}) {
        if (dark) Dark();
        const std::string end = dark ? "_dark" : "";
        Calibrating world;
        const std::string measured = test::MeasuredFile("ECal16BM.npd");
        const QString name = QStringLiteral("ECal16BM.npd");
        if (measured.empty())
            world.Write(name.toStdString(), LINES);
        else
            std::filesystem::copy_file(measured, world.Folder.filePath(name).toStdString());
        world.Write("Ag 2026-11-20.npd", LINES);
        world.ChooseFiles({QStringLiteral("Ag 2026-11-20.npd"), name},
                          [&] { world.ClickOn(v.cmdFileOpen); });
        const std::vector<std::array<const char*, 2>> pairs{
            {"697.3921", "22.104"},  {"786.5517", "24.942"},  {"2299.6034", "72.794"},
            {"2368.1210", "74.956"}, {"2781.4402", "88.035"}, {"3857.5513", "122.061"}};
        int row = 0;
        for (const auto& [channel, energy] : pairs) {
            ++row;
            Edit(v.vaSpread1, C::CHANNEL, row, channel);
            Edit(v.vaSpread1, C::ENERGY, row, energy);
        }
        world.ClickOn(v.cmdCalEng);
        world.ClickCell(v.vaSpread1, C::CHANNEL, 7);
        Shoot(world.Window(), "calibration" + end);
        world.ClickOn(v.cmdCurve);
        DeskWorld::Settle();
        Shoot(*world.Desk.FormOfView(curve), "calibcurve" + end);
        Shoot(world.Main(), "calibrating_main" + end);
    }
}

}  // namespace
}  // namespace vael
