// Printing in the real windows, by mouse and key: PDFs and what stands in them, the preview, batch
// printing, and pictures of the views and pages.
#include "gridworld.h"
#include "pdf.h"
#include "shots.h"

#include "core/graphs.h"
#include "display/frmbatchprint.h"
#include "display/frmpreview.h"
#include "display/frmprint.h"
#include "lattice/frmpeakcal.h"

#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>

namespace vael {
namespace {

using test::DeskWorld;
using test::ExpectPageLike;
using test::FIVE_LINES;
using test::MeasuredFile;
using test::Pdf;
using test::Shoot;

PrintView& P() { return frmPrint; }
PreViewView& S() { return frmPreView; }
BatchPrintView& B() { return frmBatchPrint; }

struct Paper : test::GridWorld {
    [[nodiscard]] std::string Path(const char* name) const {
        return Folder.filePath(QString::fromUtf8(name)).toStdString();
    }
    /// Opens and fits a made spectrum with a name in Japanese.
    void Fitted() {
        Open({Write("gold.npd", FIVE_LINES)});
        Item(store.PropertyRecords, DataNo()).SampleName = "金線 高圧";
        ClickOn(frmVaelAna.cmdOperation[2]);
    }
    /// Fills the print dialog by hand and ends it with "O K".
    void Order(const std::string& file, bool upright) {
        ClickOn(P().optOrientation[upright ? 1 : 0]);
        TypeInto(P().txtFileName, file.empty() ? " " : file.c_str());
        ClickOn(P().cmdOk);
    }
    /// Prints what a command opens the dialog for.
    template <class Control>
    Pdf Print(const Control& command, const char* name, bool upright = false) {
        WhileModal(P(), [this, name, upright] { Order(Path(name), upright); });
        ClickOn(command);
        return Pdf(Path(name));
    }
    [[nodiscard]] std::string Status() {
        return Widget<QLabel>(frmVaelAna, "lblStatus").text().toStdString();
    }
    QListWidget& List(const ListBox& list) { return Widget<QListWidget>(list.Owner, list.Name); }
    /// Clicks an item of a list, with a key held.
    void ClickItem(const ListBox& list, int row, Qt::KeyboardModifiers keys = {}) {
        QListWidget& widget = List(list);
        widget.scrollToItem(widget.item(row));
        QTest::mouseClick(widget.viewport(), Qt::LeftButton, keys,
                          widget.visualItemRect(widget.item(row)).center());
        Pressed.insert(list.Owner.Name + "." + list.Name);
        Settle();
    }
};

TEST(PrintOnScreen, ThePageIsTextAndStrokesInBothDirections) {
    Paper world;
    world.Fitted();
    for (const bool upright : {false, true}) {
        const char* name = upright ? "upright.pdf" : "level.pdf";
        const Pdf pdf = world.Print(frmVaelAna.mnuPrint, name, upright);
        ASSERT_TRUE(std::filesystem::exists(world.Path(name)));
        EXPECT_EQ(world.Status(), "Printed 1 page on " + world.Path(name) + ".");
        for (const char* text : {"gold.npd", "金線 高圧", "Measurement Name", "Real Time (Sec)",
                                 "256.97", "2θ (Deg)", "10.00000", "Temperature(℃)", "Peak(Ch)",
                                 "FWHM(d)", "Gauss(%)", "601.0", "BackGraund", "Fit"})
            EXPECT_TRUE(pdf.Has(text)) << text;
        EXPECT_EQ(pdf.Pages(), 1);
        EXPECT_EQ(pdf.Pictures(), 0) << "no picture of the screen";
        ExpectPageLike(pdf, 1, upright ? "print_upright.png" : "print_level.png");
    }
    EXPECT_FALSE(std::filesystem::exists(world.Path("level.pdf.part")));
    EXPECT_TRUE(world.Faults.empty());
}

TEST(PrintOnScreen, EveryControlIsPressedAndThePreviewTurnsItsPages) {
    Paper world;
    world.Fitted();
    PeakTable& peaks = Item(store.PeakTables, DataNo());
    const PeakRecord one = peaks.Peak[0];
    for (peaks.PeakNum = 0; peaks.PeakNum < MAX_PEAKS; ++peaks.PeakNum) {
        auto& peak = Item(peaks.Peak, peaks.PeakNum);
        peak = one;
        peak.Position = 40.0 * (peaks.PeakNum + 1);
    }
    std::set<std::string> usable;
    int pages = 0;
    const auto shows = [&](const std::string& text) {
        return world.Widget<QLabel>(S(), "lblPage").text().toStdString() ==
               text + std::to_string(pages);
    };
    world.WhileModal(P(), [&] {
        test::CollectUsable(usable);
        world.ClickOn(P().optOrientation[1]);
        EXPECT_TRUE(P().optOrientation[1].Value);
        world.ClickOn(P().optOrientation[0]);
        world.TypeInto(P().ImnDrawWidth, "1.2");
        EXPECT_EQ(P().ImnDrawWidth.Value, 1.2);
        world.TypeInto(P().txtFileName, world.Path("pages.pdf").c_str());
        world.WhileModal(S(), [&] {
            pages = S().Pages;
            ASSERT_GE(pages, 3);
            EXPECT_TRUE(shows("Page 1 of "));
            test::CollectUsable(usable);
            world.ClickOn(S().cmdNext);
            EXPECT_TRUE(shows("Page 2 of "));
            test::CollectUsable(usable);
            for (int page = 2; page < pages; ++page)
                QTest::keyClick(world.Desk.FormOfView(S()), Qt::Key_PageDown);
            DeskWorld::Settle();
            EXPECT_TRUE(shows("Page " + std::to_string(pages) + " of "));
            EXPECT_FALSE(world.Widget(S(), "cmdNext").isEnabled());
            world.ClickOn(S().cmdPrevious);
            // The dialog comes back behind the preview, and is told to print.
            world.WhileModal(P(), [&] {
                EXPECT_EQ(P().txtFileName.Text, world.Path("pages.pdf"));
                world.ClickOn(P().cmdOk);
            });
            world.ClickOn(S().cmdOK);
        });
        world.ClickOn(P().cmdPreview);
    });
    world.KeyOn(Qt::Key_P, Qt::ControlModifier);
    const Pdf pdf(world.Path("pages.pdf"));
    EXPECT_EQ(pdf.Pages(), pages);
    const std::string last = std::to_string(pages);
    EXPECT_TRUE(pdf.Has(("page " + last + " of " + last).c_str(), pages));
    EXPECT_TRUE(pdf.Has("Peak(Ch)", pages));
    EXPECT_TRUE(pdf.Has("4001.0000", pages));
    EXPECT_EQ(pdf.Text().count(QStringLiteral("4001.0000")), 2) << "in channels and in the unit";

    world.WhileModal(P(), [&] { world.ClickOn(P().cmdCan); });
    world.ClickOn(frmVaelAna.cmdFiles[2]);
    EXPECT_EQ(world.Status(), "Nothing was printed.");
    world.ExpectAllPressed(usable, "frmPrint");
    world.ExpectAllPressed(usable, "frmPreView");
    EXPECT_TRUE(world.Faults.empty());
}

TEST(PrintOnScreen, ThePreviewShowsThePageUnstretched) {
    Paper world;
    world.Fitted();
    QImage shown;
    world.WhileModal(P(), [&] {
        world.WhileModal(S(), [&] {
            world.Desk.FormOfView(S())->resize(700, 640);
            DeskWorld::Settle();
            shown = test::PaperOf(world, S().picPage);
            world.WhileModal(P(), [&] { world.ClickOn(P().cmdCan); });
            world.ClickOn(S().cmdOK);
        });
        world.ClickOn(P().cmdPreview);
    });
    world.ClickOn(frmVaelAna.mnuPrint);
    // The sheet's white corner pixels: as wide to its height as A4 lying.
    const auto white = [&](int x, int y) { return shown.pixel(x, y) == qRgb(255, 255, 255); };
    int left = 0;
    while (left < shown.width() && !white(left, shown.height() / 2)) ++left;
    int top = 0;
    while (top < shown.height() && !white(shown.width() / 2, top)) ++top;
    const double wide = shown.width() - 2.0 * left;
    const double high = shown.height() - 2.0 * top;
    EXPECT_NEAR(wide / high, 842.0 / 595.0, 0.02);
    EXPECT_GT(wide, shown.width() * 0.8);
}

TEST(PrintOnScreen, AFileThatCannotBeMadeIsToldAndNoPrinterToo) {
    Paper world;
    world.Fitted();
    world.Desk.Answers.push_back(Answer::Ok);
    world.WhileModal(P(), [&] { world.Order("/no/such/folder/page.pdf", false); });
    world.ClickOn(frmVaelAna.mnuPrint);
    EXPECT_EQ(world.Desk.Asked.back(), "/no/such/folder/page.pdf cannot be written.");
    if (world.Desk.HasPrinter()) GTEST_SKIP() << "there is a printer";
    world.Desk.Answers.push_back(Answer::Ok);
    world.WhileModal(P(), [&] {
        EXPECT_EQ(P().txtFileName.Text, "gold.pdf");
        world.Order("", false);
    });
    world.ClickOn(frmVaelAna.mnuPrint);
    EXPECT_EQ(world.Desk.Asked.back(), "Printer not ready");
}

TEST(PrintOnScreen, AFileThatIsThereIsAskedAboutAndReplacedWhole) {
    Paper world;
    world.Fitted();
    std::ofstream(world.Path("page.pdf")) << "not a page";
    world.Desk.Answers.push_back(Answer::Yes);
    const Pdf pdf = world.Print(frmVaelAna.mnuPrint, "page.pdf");
    EXPECT_TRUE(pdf.Has("gold.npd"));
}

TEST(PeakReportOnScreen, PrintsItsList) {
    Paper world;
    world.Fitted();
    world.ClickOn(frmVaelAna.mnuPeakReport);
    const Pdf pdf = world.Print(frmPeakReport.cmdPrint, "list.pdf", true);
    for (const char* text : {"Peak Report", "Measurement Name : gold", "Gauss(%)", "601.0", "N"})
        EXPECT_TRUE(pdf.Has(text)) << text;
    EXPECT_EQ(pdf.Pictures(), 0);
    ExpectPageLike(pdf, 1, "print_report.png");
}

TEST(BatchPrintOnScreen, TwentyFilesWithAFailingOneGoIntoOnePdf) {
    Paper world;
    for (int n = 1; n <= 20; ++n) {
        const std::string name = "au" + std::to_string(100 + n) + ".npd";
        if (n == 7)
            std::ofstream(world.Path(name.c_str())) << "no spectrum";
        else
            world.Write(name, FIVE_LINES);
    }
    store.DataFolder = world.Folder.path().toStdString() + "/";
    std::set<std::string> usable;
    world.ClickOn(frmVaelAna.mnuBatchPrint);
    ASSERT_TRUE(world.Desk.FormOfView(B())->isVisible());
    test::CollectUsable(usable);
    ASSERT_EQ(world.List(B().filFiles).count(), 20);
    world.ClickItem(B().filFiles, 0);
    world.ClickItem(B().filFiles, 19, Qt::ShiftModifier);
    EXPECT_EQ(B().filFiles.Picked.size(), 20U);
    EXPECT_TRUE(world.Widget<QLineEdit>(B(), "txtSelFile")
                    .text()
                    .startsWith(QStringLiteral("au101.npd;au102.npd;")));
    std::set<std::string> progress;
    world.Desk.OnBreathe = [&] {
        if (!B().StaysLive) return;
        progress.insert(world.Widget<QLabel>(B(), "lblProgress").text().toStdString());
        EXPECT_TRUE(world.Widget(B(), "cmdStop").isEnabled());
        EXPECT_FALSE(world.Widget(B(), "cmdPrintStart").isEnabled());
    };
    world.Desk.Answers.push_back(Answer::Ok);
    world.WhileModal(P(), [&] { world.Order(world.Path("all.pdf"), false); });
    world.ClickOn(B().cmdPrintStart);
    world.Desk.OnBreathe = {};
    EXPECT_TRUE(progress.contains("20 of 20  au120.npd"));
    EXPECT_EQ(progress.size(), 20U);
    EXPECT_TRUE(world.Desk.Asked.back().starts_with("19 of 20 files printed on "));
    EXPECT_NE(world.Desk.Asked.back().find("\nau107.npd: "), std::string::npos);
    EXPECT_TRUE(world.Widget<QPlainTextEdit>(B(), "txtResult")
                    .toPlainText()
                    .contains(QStringLiteral("au120.npd: printed")));
    const Pdf pdf(world.Path("all.pdf"));
    EXPECT_EQ(pdf.Pages(), 19);
    EXPECT_TRUE(pdf.Has("au108.npd", 7));

    // Stop by the mouse, between two files.
    std::filesystem::remove(world.Path("all.pdf"));
    world.Desk.OnBreathe = [&] {
        if (B().lblProgress.Caption.starts_with("4 of")) world.ClickOn(B().cmdStop);
    };
    world.WhileModal(P(), [&] { world.Order(world.Path("all.pdf"), false); });
    world.ClickOn(B().cmdPrintStart);
    world.Desk.OnBreathe = {};
    EXPECT_EQ(pdf.Pages(), 3);
    EXPECT_TRUE(world.Status().ends_with("; the run was stopped."));

    // The rest of the view: pattern, folders, list file, close.
    std::ofstream(world.Path("run.xli")) << "au102.npd\n\nau101.npd\n";
    world.TypeInto(B().txtPattern, "*10?.npd");
    EXPECT_EQ(world.List(B().filFiles).count(), 9);
    world.ClickItem(B().dirDirectory, 0);
    world.TypeInto(B().txtSelFile, "au101.npd");
    world.StepList(B().drvDrive, 0);
    world.Pressed.insert("frmBatchPrint.txtSelFile");
    B().Directory(store.DataFolder);
    world.Desk.Show();
    world.ClickOn(B().chkXli);
    test::CollectUsable(usable);
    world.TypeInto(B().txtXliName, "run.xli");
    world.WhileModal(P(), [&] { world.Order(world.Path("list.pdf"), true); });
    world.ClickOn(B().cmdPrintStart);
    const Pdf list(world.Path("list.pdf"));
    EXPECT_EQ(list.Pages(), 2);
    EXPECT_TRUE(list.Has("au102.npd", 1));
    world.ClickOn(B().cmdClose);
    EXPECT_FALSE(world.Desk.FormOfView(B())->isVisible());
    world.ExpectAllPressed(usable, "frmBatchPrint");
    EXPECT_TRUE(world.Faults.empty());
}

class PaperShots : public test::ShotTest {};

TEST_F(PaperShots, TheViewsOfPrinting) {
    for (const bool dark : {false, true}) {
        if (dark) Dark();
        const std::string end = dark ? "_dark" : "";
        Paper world;
        OpenSpectrum(world);
        world.ClickOn(frmVaelAna.cmdOperation[2]);
        world.WhileModal(P(), [&] {
            Shoot(*world.Desk.FormOfView(P()), "print" + end);
            world.WhileModal(S(), [&] {
                Shoot(*world.Desk.FormOfView(S()), "preview" + end);
                world.WhileModal(P(), [&] { world.ClickOn(P().cmdCan); });
                world.ClickOn(S().cmdOK);
            });
            world.ClickOn(P().cmdPreview);
        });
        world.ClickOn(frmVaelAna.mnuPrint);
        for (const char* name : {"au101.npd", "au102.npd", "金線.npd"})
            world.Write(name, FIVE_LINES);
        store.DataFolder = world.Folder.path().toStdString() + "/";
        world.ClickOn(frmVaelAna.mnuBatchPrint);
        world.ClickItem(B().filFiles, 0);
        world.ClickItem(B().filFiles, 2, Qt::ShiftModifier);
        Shoot(*world.Desk.FormOfView(B()), "batchprint" + end);
        world.ClickOn(B().cmdClose);
    }
}

/// The pages of the manual: a gold wire, fitted, its reflections marked, in both directions.
TEST_F(PaperShots, ThePagesOfAFittedGoldWire) {
    const std::string measured = MeasuredFile("AuWire.npd");
    if (measured.empty()) GTEST_SKIP() << "the measured spectra are not here";
    Paper world;
    std::filesystem::copy_file(std::filesystem::path(VAEL_SOURCE_DIR) / "data/crystal.dat",
                               world.Path("crystal.dat"));
    world.Open({measured});
    world.ClickOn(frmVaelAna.cmdAutoFit);
    world.StepList(frmVaelAna.cboUnitX, 1);
    world.ClickOn(frmVaelAna.cmdShowReport);
    for (int i = 0; i < 9 && frmPeakCal.cmbElement.Text() != "Au Gold"; ++i)
        world.StepList(frmPeakCal.cmbElement, 1);
    world.ClickOn(frmPeakCal.cmdCal);
    world.ClickOn(frmPeakCal.cmdMI[0]);
    world.Desk.Saves.push_back("");
    world.ClickOn(frmPeakCal.cmdExit);
    for (const bool upright : {false, true}) {
        const char* name = upright ? "page_vertical" : "page_horizontal";
        const Pdf pdf = world.Print(frmVaelAna.mnuPrint, name, upright);
        Pdf printed(world.Path(name) + ".pdf");
        EXPECT_TRUE(printed.Has("AuWire"));
        EXPECT_TRUE(printed.Has("Au( 1 1 1) d=2.3")) << "a reflection's mark, upright";
        const std::filesystem::path shots = std::filesystem::path(VAEL_BUILD_DIR) / "shots";
        std::filesystem::create_directories(shots);
        const QImage page = printed.Picture(1, 110);
        ASSERT_FALSE(page.isNull());
        ASSERT_TRUE(
            page.save(QString::fromStdString((shots / (std::string(name) + ".png")).string())));
        if (!qEnvironmentVariableIsSet("VAEL_APPROVE")) continue;
        const auto manual = std::filesystem::path(VAEL_SOURCE_DIR) / "docs/images";
        ASSERT_TRUE(
            page.save(QString::fromStdString((manual / (std::string(name) + ".png")).string())));
    }
}

}  // namespace
}  // namespace vael
