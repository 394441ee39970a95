// Printing of the main view and of the peak report: the dialog, what stands on the pages, the
// preview, and printers that fail.
#include "support/plotted.h"
#include "support/printer.h"

#include "analysis/frmpeakreport.h"
#include "analysis/roi.h"
#include "core/regionmarks.h"
#include "display/frmpreview.h"
#include "display/frmprint.h"
#include "display/paper.h"
#include "lattice/frmpeakcal.h"
#include "lattice/reflectionmarkcommands.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace vael;
using test::Drawn;

namespace {

PrintView& v = frmPrint;

struct Printing : Plotted {
    test::PrinterLog Log;
    Printing() { Desk.Printer = test::PrinterInto(Log); }
    /// A spectrum of one line with its peak, and 2 theta so that there is d.
    void OpenOne() {
        Open({Spectrum("gold.npd")});
        store.PropertyRecords[0].Param.TwoTheta = 10.0;
        store.PropertyRecords[0].SampleName = "金線";
        AddPeakAt(0, 1000.0);
    }
    /// The dialog's answer to the next print command.
    void Answer(std::function<void()> acts) {
        Desk.OnModal([acts](View& view) {
            EXPECT_EQ(&view, &frmPrint);
            acts();
        });
    }
    void Print() {
        Answer([] { Click(v.cmdOk); });
        Click(frmVaelAna.mnuPrint);
    }
    [[nodiscard]] static std::string Status() { return frmVaelAna.lblStatus.Caption; }
    [[nodiscard]] const Drawn& Word(const std::string& text) const {
        const auto& page = Log.Pages.front();
        const auto found = std::find_if(page.begin(), page.end(),
                                        [&](const Drawn& each) { return each.Words == text; });
        if (found == page.end()) throw std::runtime_error("not on the page: " + text);
        return *found;
    }
};

}  // namespace

TEST(PrintDialog, StandsWithItsWords) {
    Printing w;
    EXPECT_EQ(v.fraDirection.Caption, "Paper Direction");
    EXPECT_EQ(v.optOrientation[0].Caption, "Horizontal");
    EXPECT_EQ(v.optOrientation[1].Caption, "Vertical");
    EXPECT_EQ(v.lblFileName.Caption, "FileName");
    EXPECT_EQ(v.cmdPreview.Caption, "Preview");
    EXPECT_EQ(v.cmdOk.Caption, "O K");
    EXPECT_EQ(v.cmdCan.Caption, "Cancel");
    EXPECT_EQ(v.GetPrintMode(), 0);
    EXPECT_EQ(v.GetOrientation(), 0);
}

TEST(PrintDialog, OKTakesWidthDirectionAndMode) {
    Printing w;
    w.OpenOne();
    store.PeakTables[0].PeakNum = 0;
    w.Answer([] {
        EXPECT_EQ(v.txtFileName.Text, "") << "there is a printer";
        Click(v.optOrientation[1]);
        Type(v.ImnDrawWidth, "1.5");
        Click(v.cmdOk);
    });
    Click(frmVaelAna.cmdFiles[2]);
    EXPECT_TRUE(v.OkPb);
    EXPECT_FALSE(v.PreViewPb);
    EXPECT_EQ(v.GetPrintMode(), 2);
    EXPECT_EQ(v.GetDrawWidth(), 1.5);
    EXPECT_EQ(v.GetOrientation(), 1);
    ASSERT_EQ(w.Log.Sizes.size(), 1U);
    EXPECT_EQ(w.Log.Sizes[0].Height, 842.0);
    EXPECT_FALSE(w.Log.Orders[0].Landscape);
    const auto strokes =
        std::count_if(w.Log.Pages[0].begin(), w.Log.Pages[0].end(), [](const Drawn& each) {
            return each.What == Drawn::Kind::Line && each.Pen.Width == 1.5 && each.Pen.Ink == 0;
        });
    EXPECT_EQ(strokes, 4095 + 1) << "each channel of the curve, black, and the legend's sample";
    EXPECT_EQ(w.Status(), "Printed 1 page on the printer.");
}

TEST(PrintDialog, KeepsWidthAndDirectionForTheNextTime) {
    Printing w;
    w.OpenOne();
    w.Answer([] {
        Click(v.optOrientation[1]);
        Type(v.ImnDrawWidth, "2.0");
        Leave(v.ImnDrawWidth);
        Click(v.cmdCan);
    });
    Click(frmVaelAna.mnuPrint);
    EXPECT_EQ(w.Status(), "Nothing was printed.");
    EXPECT_TRUE(w.Log.Orders.empty());
    w.Answer([] {
        EXPECT_TRUE(v.optOrientation[1].Value);
        EXPECT_EQ(v.ImnDrawWidth.Value, 2.0);
        EXPECT_TRUE(Key(v, {.Key = KeyPress::Name::Escape}));
    });
    Click(frmVaelAna.mnuPrint);
    EXPECT_TRUE(w.Log.Orders.empty());
}

TEST(PrintedPage, HasThePlotTheMeasurementAndThePeaks) {
    Printing w;
    w.OpenOne();
    w.Print();
    EXPECT_EQ(w.Log.Ended, 1);
    EXPECT_TRUE(w.Log.Orders[0].Landscape);
    EXPECT_EQ(w.Log.Orders[0].Title, "gold.npd");
    for (const char* text : {"gold.npd", "Measurement Name ", "Sample Name      ", "金線",
                             "Ring Current (mA)     ", "Temperature(℃)  ", "Counts", "Peak(Ch)",
                             "Intensity", "Type", "1001.0000", "12345.67", "N"})
        EXPECT_TRUE(w.Log.Has(text)) << text;
    EXPECT_EQ(w.Word("Counts").Pen.Angle, 90.0);
}

TEST(PrintedPage, DerivedRowsHaveInksOfTheirOwnAndTheFileIsBlack) {
    Printing w;
    w.OpenOne();
    Click(frmVaelAna.mnuBackGround);
    w.Print();
    std::set<Colour> inks;
    for (const Drawn& each : w.Log.Pages[0])
        if (each.What == Drawn::Kind::Line && each.Pen.Width > 0.55 && each.Pen.Width < 0.9)
            inks.insert(each.Pen.Ink);
    EXPECT_TRUE(inks.contains(0));
    EXPECT_TRUE(inks.contains(paper::BACK_COLOUR));
    EXPECT_TRUE(inks.contains(paper::REST_COLOUR));
    EXPECT_TRUE(w.Log.Has(0, "BackGraund"));
    EXPECT_TRUE(w.Log.Has(0, "BackRemv"));
}

TEST(PrintedPage, ShowsTheRangeTheUnitAndTheLogAxisOfTheScreen) {
    Printing w;
    w.OpenOne();
    Pick(frmVaelAna.cboUnitX, 0);
    Type(frmVaelAna.imnSpanCh, "1001");
    PressEnter(frmVaelAna.imnSpanCh);
    Tick(frmVaelAna.ckbLogScale);
    w.Print();
    EXPECT_TRUE(w.Log.Has(0, "1001"));
    EXPECT_FALSE(w.Log.Has(0, "4096"));
    EXPECT_TRUE(w.Log.Has(0, " 10M"));
    EXPECT_FALSE(w.Log.Has(0, "keV"));
}

TEST(PrintedPage, TwoWindowsAreTwoPlotsAndAWindowThatIsPutAwayIsNone) {
    Printing w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    Tick(frmVaelAna.chkGrp[GRAPH_COUNT + 1]);  // the second row goes to the lower window
    w.Print();
    const auto words = w.Log.WordsOf(0);
    EXPECT_EQ(std::count(words.begin(), words.end(), "Counts"), 2);
    FreeShowSwitch(1);
    EXPECT_TRUE(Tick(frmVaelAna.chkFilePile[1], 0));
    w.Print();
    const auto less = w.Log.WordsOf(1);
    EXPECT_EQ(std::count(less.begin(), less.end(), "Counts"), 1);
}

TEST(PrintedPage, SeveralFilesInOnePlotHaveTheirColoursAsOnWhite) {
    Printing w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    w.Print();
    std::set<Colour> inks;
    for (const Drawn& each : w.Log.Pages[0])
        if (each.What == Drawn::Kind::Line && each.Pen.Width == 0.6) inks.insert(each.Pen.Ink);
    EXPECT_TRUE(inks.contains(paper::OnWhite(store.GraphList[0].Color)));
    EXPECT_TRUE(inks.contains(paper::OnWhite(store.GraphList[1].Color)));
}

TEST(PrintedPage, MarksOfReflectionsRegionsAndPeaksStandUprightAboveThePlot) {
    Printing w;
    w.OpenOne();
    frmPeakCal.Slot = 0;
    latticeState.FitData = {};
    latticeState.FitData.Name = "Au";
    auto& row = latticeState.FitData.Match[0];
    row.Matched = TRUE_WORD;
    row.Excluded = FALSE_WORD;
    row.Ch = 1000.0;
    row.H = 2;
    row.DObs = 2.0391;
    ASSERT_EQ(MarkReflections(Rgb(255, 255, 0)), 1);
    (void)AddRoi(store.Rois, store.SpectrumDatas, 0, 0, 990, 1010, RoiColor(), RegionMarks());
    Tick(frmVaelAna.chkPeakParameter);
    RedrawBoth();
    const std::string words = ReflectionMarksOn(0).at(0).Words;
    w.Print();
    ClearReflectionMarks();
    const Drawn& mark = w.Word(words);
    EXPECT_EQ(mark.Pen.Angle, 90.0);
    EXPECT_EQ(mark.Pen.Ink, paper::OnWhite(Rgb(255, 255, 0))) << "yellow is not seen on paper";
    EXPECT_EQ(w.Word("ROI 1").Pen.Angle, 90.0);
    const auto& texts = w.Log.Pages[0];
    EXPECT_EQ(std::count_if(
                  texts.begin(), texts.end(),
                  [](const Drawn& each) { return each.Words == "1" && each.Pen.Angle == 90.0; }),
              1)
        << "the peak's number";
    const auto strokes = w.Log.Pages[0];
    EXPECT_GT(std::count_if(strokes.begin(), strokes.end(),
                            [](const Drawn& each) {
                                return each.Pen.Width == 0.6 &&
                                       each.Pen.Ink == paper::OnWhite(RoiColor());
                            }),
              15)
        << "the region of 21 channels";
}

TEST(PrintedPage, WithoutAnyRowThereIsNothingToPrint) {
    Printing w;
    Click(frmVaelAna.mnuPrint);
    EXPECT_EQ(w.Status(), "There is nothing to print: no row is drawn.");
    EXPECT_TRUE(w.Log.Orders.empty());
}

TEST(PrintedPages, APeakTableLongerThanAPageGoesOnToTheNext) {
    Printing w;
    w.Open({w.Spectrum("gold.npd")});
    for (int k = 0; k < MAX_PEAKS; ++k) w.AddPeakAt(0, 40.0 * (k + 1));
    w.Print();
    ASSERT_GT(w.Log.Pages.size(), 1U);
    std::set<std::string> rows;
    for (std::size_t page = 0; page < w.Log.Pages.size(); ++page) {
        EXPECT_TRUE(page == 0 || w.Log.Has(page, "Peak(Ch)"));
        for (int k = 0; k < MAX_PEAKS; ++k) {
            const std::string place = std::to_string(40 * (k + 1) + 1) + ".0000";
            if (!w.Log.Has(page, place)) continue;
            EXPECT_TRUE(rows.insert(place).second) << place;
        }
    }
    EXPECT_EQ(rows.size(), 100U);
    EXPECT_EQ(w.Status(),
              "Printed " + std::to_string(w.Log.Pages.size()) + " pages on the printer.");
}

TEST(PrinterTrouble, NoPrinterIsTold) {
    Printing w;
    w.OpenOne();
    w.Desk.Printer = nullptr;
    w.Desk.ExpectQuestion("Printer not ready");
    w.Answer([] {
        EXPECT_EQ(v.txtFileName.Text, "gold.pdf") << "what can be printed without a printer";
        Type(v.txtFileName, "");
        Click(v.cmdOk);
    });
    Click(frmVaelAna.mnuPrint);
    EXPECT_EQ(w.Status(), "Not printed: there is no printer.");
}

TEST(PrinterTrouble, APrinterThatFailsOnTheSecondPageEndsTheJob) {
    Printing w;
    w.Open({w.Spectrum("gold.npd")});
    for (int k = 0; k < MAX_PEAKS; ++k) w.AddPeakAt(0, 40.0 * (k + 1));
    w.Log.FailOn = 2;
    w.Desk.ExpectQuestion("Printer error: the printer failed on page 2. The job was ended.");
    w.Print();
    EXPECT_EQ(w.Log.Ended, 0);
    EXPECT_EQ(w.Log.Pages.size(), 1U);
    EXPECT_EQ(w.Status(), "Not printed: the printer failed on page 2; the job was ended.");
    EXPECT_TRUE(frmVaelAna.StatusFault);
}

TEST(PrinterTrouble, APrinterThatFailsAtTheEndIsTold) {
    Printing w;
    w.Open({w.Spectrum("gold.npd")});
    w.Log.FailAtEnd = true;
    w.Desk.ExpectQuestion("Printer error: the printer failed on page 1. The job was ended.");
    w.Print();
    EXPECT_EQ(w.Desk.BusyDepth, 0);
}

TEST(PrintToFile, ANameGoesBesideTheSpectraAndGetsItsKind) {
    Printing w;
    w.Open({w.Spectrum("gold.npd")});
    w.Answer([] {
        Type(v.txtFileName, "page one");
        Click(v.cmdOk);
    });
    Click(frmVaelAna.mnuPrint);
    const std::string path = store.DataFolder + "page one.pdf";
    EXPECT_EQ(w.Log.Orders.at(0).File, path);
    EXPECT_EQ(w.Status(), "Printed 1 page on " + path + ".");
}

TEST(PrintToFile, OneThatIsThereIsAskedAbout) {
    Printing w;
    w.OpenOne();
    const std::string path = w.Folder.Write("page.pdf", "old");
    w.Desk.ExpectQuestion(path + " is there already. Replace it?", Answer::No);
    w.Answer([&] {
        Type(v.txtFileName, path);
        Click(v.cmdOk);
    });
    w.Answer([&] {
        EXPECT_EQ(v.txtFileName.Text, path) << "the dialog comes back as it was";
        Click(v.cmdOk);
    });
    w.Desk.ExpectQuestion(path + " is there already. Replace it?", Answer::Yes);
    Click(frmVaelAna.mnuPrint);
    EXPECT_EQ(w.Log.Orders.size(), 1U);
}

TEST(PrintToFile, OneThatCannotBeMadeIsNamed) {
    Printing w;
    w.OpenOne();
    w.Desk.Printer = nullptr;
    w.Desk.ExpectQuestion("/nowhere/page.pdf cannot be written.");
    w.Answer([] {
        Type(v.txtFileName, "/nowhere/page.pdf");
        Click(v.cmdOk);
    });
    Click(frmVaelAna.mnuPrint);
    EXPECT_EQ(w.Status(), "Not printed: /nowhere/page.pdf cannot be written.");
}

TEST(PreView, ShowsEachPageAndGoesBackToTheDialog) {
    Printing w;
    w.Open({w.Spectrum("gold.npd")});
    for (int k = 0; k < MAX_PEAKS; ++k) w.AddPeakAt(0, 40.0 * (k + 1));
    w.Answer([] { Click(v.cmdPreview); });
    w.Desk.OnModal([](View& view) {
        EXPECT_EQ(&view, &frmPreView);
        EXPECT_TRUE(v.PreViewPb);
        EXPECT_EQ(v.GetPrintMode(), 2);
        ASSERT_GT(frmPreView.Pages, 1);
        const std::string of = " of " + std::to_string(frmPreView.Pages);
        EXPECT_EQ(frmPreView.lblPage.Caption, "Page 1" + of);
        EXPECT_FALSE(Click(frmPreView.cmdPrevious));
        EXPECT_TRUE(Click(frmPreView.cmdNext));
        EXPECT_EQ(frmPreView.lblPage.Caption, "Page 2" + of);
        EXPECT_TRUE(Key(frmPreView, {.Key = KeyPress::Name::PageUp}));
        EXPECT_EQ(frmPreView.lblPage.Caption, "Page 1" + of);
        EXPECT_TRUE(Key(frmPreView, {.Key = KeyPress::Name::PageDown}));
        EXPECT_TRUE(Click(frmPreView.cmdPrevious));
        EXPECT_TRUE(Click(frmPreView.cmdOK));
    });
    w.Answer([] { Click(v.cmdCan); });
    Click(frmVaelAna.mnuPrint);
    EXPECT_TRUE(w.Log.Orders.empty());
}

TEST(PreView, ShowsWhatThePaperShows) {
    Printing w;
    w.OpenOne();
    // A picture on which a point is a pixel, so that the recorded texts have the same metrics.
    test::RecordingSurface picture(842.0 + 24.0, 595.0 + 24.0);
    frmPreView.picPage.PutOn(&picture);
    w.Answer([] { Click(v.cmdPreview); });
    std::vector<std::string> seen;
    w.Desk.OnModal([&](View&) {
        seen = picture.Words();
        EXPECT_TRUE(Resize(frmPreView)) << "a window that changes its size draws its page anew";
        EXPECT_EQ(picture.Words(), seen);
        Click(frmPreView.cmdOK);
    });
    w.Answer([] { Click(v.cmdOk); });
    Click(frmVaelAna.mnuPrint);
    frmPreView.picPage.PutOn(nullptr);
    EXPECT_EQ(seen, w.Log.WordsOf(0));
    EXPECT_GT(seen.size(), 40U);
}

TEST(PrintedPeakReport, HasTheReportsColumnsUnderItsTitle) {
    Printing w;
    w.OpenOne();
    ShowPeakReport();
    w.Answer([] {
        Click(v.optOrientation[1]);
        Click(v.cmdOk);
    });
    EXPECT_TRUE(Click(frmPeakReport.cmdPrint));
    ASSERT_EQ(w.Log.Pages.size(), 1U);
    EXPECT_EQ(w.Log.Orders[0].Title, "Peak Report");
    for (const char* text : {"Peak Report", "  Measurement Name : gold", "#", "Peak(Ch)",
                             "Intensity", "FWHM(Ch)", "Amplitude", "Gauss(%)", "Type", "1",
                             "1001.0000", "12345.67", "10.00", "4000.00", "100.0", "N"})
        EXPECT_TRUE(w.Log.Has(0, text)) << text;
    EXPECT_FALSE(w.Log.Has(0, "FWHM(d)")) << "the list has no column for it";
    EXPECT_FALSE(w.Log.Has(0, "Counts"));
}

TEST(PrintedPeakReport, OneHundredPeaksGoOnWithTheHeading) {
    Printing w;
    w.Open({w.Spectrum("gold.npd")});
    for (int k = 0; k < MAX_PEAKS; ++k) w.AddPeakAt(0, 40.0 * (k + 1));
    ShowPeakReport();
    w.Answer([] { Click(v.cmdOk); });
    Click(frmPeakReport.cmdPrint);
    ASSERT_GT(w.Log.Pages.size(), 1U);
    EXPECT_TRUE(w.Log.Has(w.Log.Pages.size() - 1, "Gauss(%)"));
    EXPECT_TRUE(w.Log.Has(w.Log.Pages.size() - 1, "100"));
}
