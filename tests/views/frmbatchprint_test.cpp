// Batch printing: the choice of files, the run, its stop, files and printers that fail.
#include "support/plotted.h"
#include "support/printer.h"

#include "core/cp932.h"
#include "core/fault.h"
#include "display/batchprintcommands.h"
#include "display/frmbatchprint.h"
#include "display/frmprint.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace vael;

namespace {

BatchPrintView& v = frmBatchPrint;

struct Batch : Plotted {
    test::PrinterLog Log;
    Batch() { Desk.Printer = test::PrinterInto(Log); }
    /// Opens the view on the test's folder.
    void Show() {
        store.DataFolder = Folder.Path() + "/";
        Click(frmVaelAna.mnuBatchPrint);
    }
    /// "Print Start", with "O K" in the print dialog.
    void Start() {
        Desk.OnModal([](View& view) {
            EXPECT_EQ(&view, &frmPrint);
            EXPECT_FALSE(frmPrint.cmdPreview.Enabled) << "there is nothing to show yet";
            Click(frmPrint.cmdOk);
        });
        EXPECT_TRUE(Click(v.cmdPrintStart));
    }
    void PickAll() {
        std::vector<int> all;
        for (int i = 0; i < static_cast<int>(v.filFiles.Items.size()); ++i) all.push_back(i);
        PickMany(v.filFiles, all);
    }
    [[nodiscard]] static std::string Status() { return frmVaelAna.lblStatus.Caption; }
    std::string Numbered(int number) {
        return Spectrum("au" + std::string(number < 10 ? "0" : "") + std::to_string(number) +
                        ".npd");
    }
};

}  // namespace

TEST(BatchPrintView, ListsTheSpectraOfTheFolderByAPattern) {
    Batch w;
    w.Numbered(1);
    w.Numbered(2);
    w.Folder.Write("other.xbm", "");
    w.Show();
    EXPECT_TRUE(v.Visible);
    EXPECT_EQ(v.Caption, "Batch Print");
    EXPECT_EQ(v.filFiles.Items, (std::vector<std::string>{"au01.npd", "au02.npd"}));
    PickMany(v.filFiles, {0, 1});
    EXPECT_EQ(v.txtSelFile.Text, "au01.npd;au02.npd");
    Type(v.txtPattern, "*.xbm");
    PressEnter(v.txtPattern);
    EXPECT_EQ(v.filFiles.Items, (std::vector<std::string>{"other.xbm"}));
    EXPECT_EQ(v.txtSelFile.Text, "");
    Click(v.cmdClose);
    EXPECT_FALSE(v.Visible);
}

TEST(BatchPrintView, ADoubleClickOpensAFolderAndTheTickTakesTheListInstead) {
    Batch w;
    std::filesystem::create_directory(w.Folder.Path() + "/inner");
    w.Folder.Write("inner/x.npd", "");
    w.Show();
    const auto& folders = v.dirDirectory.Items;
    const auto at = std::find(folders.begin(), folders.end(), "inner") - folders.begin();
    DoubleClick(v.dirDirectory, static_cast<int>(at));
    EXPECT_EQ(v.filFiles.Items, (std::vector<std::string>{"x.npd"}));
    DoubleClick(v.dirDirectory, 0);
    EXPECT_TRUE(v.filFiles.Items.empty());
    Tick(v.chkXli);
    EXPECT_TRUE(v.txtXliName.Enabled);
    EXPECT_FALSE(v.filFiles.Enabled);
    Tick(v.chkXli);
    EXPECT_FALSE(v.txtXliName.Enabled);
    EXPECT_TRUE(v.filFiles.Enabled);
}

TEST(BatchPrint, WithoutANameItAsksForOne) {
    Batch w;
    w.Show();
    w.Desk.ExpectQuestion("Please input file name");
    Click(v.cmdPrintStart);
    Tick(v.chkXli);
    w.Desk.ExpectQuestion("Please input file name");
    Click(v.cmdPrintStart);
}

TEST(BatchPrint, TwentyFilesAreOneJobAndThoseThatFailAreNamed) {
    Batch w;
    for (int n = 1; n <= 20; ++n)
        if (n == 7)
            w.Folder.Write("au07.npd", "no spectrum");
        else
            w.Numbered(n);
    w.Show();
    w.PickAll();
    std::vector<std::string> progress;
    w.Desk.OnBreathe = [&] {
        if (progress.empty() || progress.back() != v.lblProgress.Caption)
            progress.push_back(v.lblProgress.Caption);
        EXPECT_FALSE(Click(frmVaelAna.mnuSmooth)) << "nothing else runs meanwhile";
        EXPECT_FALSE(Click(v.cmdPrintStart));
        EXPECT_FALSE(Click(v.cmdClose));
    };
    std::string told;
    w.Desk.ExpectAny([&](const std::string& text) { told = text; });
    w.Start();
    w.Desk.OnBreathe = [] {};
    EXPECT_EQ(progress.front(), "1 of 20  au01.npd");
    EXPECT_EQ(progress.back(), "20 of 20  au20.npd");
    EXPECT_EQ(progress.size(), 20U);
    EXPECT_EQ(w.Log.Orders.size(), 1U) << "one job";
    EXPECT_EQ(w.Log.Ended, 1);
    ASSERT_EQ(w.Log.Pages.size(), 19U);
    EXPECT_TRUE(w.Log.Has(6, "au08.npd"));
    EXPECT_EQ(told.rfind("19 of 20 files printed on the printer.\nau07.npd: ", 0), 0U) << told;
    EXPECT_NE(v.txtResult.Text.find("au20.npd: printed"), std::string::npos);
    EXPECT_EQ(w.Status(), "Batch print: 19 of 20 files printed on the printer.");
    EXPECT_EQ(store.GraphList[0].Name, "au20.npd");
    EXPECT_FALSE(v.StaysLive);
    EXPECT_TRUE(v.cmdPrintStart.Enabled);
    EXPECT_FALSE(v.cmdStop.Enabled);
}

TEST(BatchPrint, StopEndsTheRunBetweenTwoFiles) {
    Batch w;
    for (int n = 1; n <= 6; ++n) w.Numbered(n);
    w.Show();
    w.PickAll();
    w.Desk.OnBreathe = [] {
        if (v.lblProgress.Caption.starts_with("3 of")) (void)Click(v.cmdStop);
    };
    w.Start();
    w.Desk.OnBreathe = [] {};
    EXPECT_EQ(w.Log.Pages.size(), 2U);
    EXPECT_EQ(w.Log.Ended, 1) << "what was printed comes out";
    EXPECT_EQ(w.Status(), "Batch print: 2 of 6 files printed on the printer; the run was stopped.");
}

TEST(BatchPrint, TheCloseBoxOfARunStopsIt) {
    Batch w;
    for (int n = 1; n <= 3; ++n) w.Numbered(n);
    w.Show();
    w.PickAll();
    w.Desk.OnBreathe = [] {
        if (v.lblProgress.Caption.starts_with("2 of")) (void)Close(v);
    };
    w.Start();
    w.Desk.OnBreathe = [] {};
    EXPECT_EQ(w.Log.Pages.size(), 1U);
    EXPECT_TRUE(v.Visible) << "it tells what was printed";
    EXPECT_TRUE(Close(v));
    EXPECT_FALSE(v.Visible);
}

TEST(BatchPrint, AfterANaxRunEachFileIsFittedBeforeItsPage) {
    Batch w;
    w.Numbered(1);
    w.Numbered(2);
    w.Folder.Write("flat.npd", NpdText(GaussCounts(4096, 10, {}), "flat.npd"));
    w.Show();
    EXPECT_EQ(v.lblFit.Caption.rfind("Each file is printed as it is read.", 0), 0U);
    w.PickAll();
    store.AreaFitDone = TRUE_WORD;
    std::string told;
    w.Desk.ExpectAny([&](const std::string& text) { told = text; });
    w.Start();
    for (std::size_t page = 0; page < w.Log.Pages.size(); ++page) {
        const bool flat = w.Log.Has(page, "flat.npd");
        if (!w.Log.Has(page, "Counts")) continue;  // the table of the page before
        EXPECT_EQ(w.Log.Has(page, "Fit"), !flat) << "the flat one is printed as it is read";
    }
    EXPECT_TRUE(w.Log.Has("Peak(Ch)"));
    EXPECT_TRUE(w.Log.Has("flat.npd"));
    EXPECT_NE(told.find("flat.npd: printed without a fit: NO PEAKS ARE FOUND"), std::string::npos)
        << told;
}

TEST(BatchPrint, OtherwiseAFileIsPrintedAsItIsRead) {
    Batch w;
    w.Numbered(1);
    w.Show();
    w.PickAll();
    w.Start();
    ASSERT_EQ(w.Log.Pages.size(), 1U);
    EXPECT_FALSE(w.Log.Has(0, "Fit"));
    EXPECT_EQ(w.Status(), "Batch print: 1 of 1 file printed on the printer.");
}

TEST(BatchPrint, APrinterThatFailsOnTheSecondPageEndsTheRun) {
    Batch w;
    for (int n = 1; n <= 3; ++n) w.Numbered(n);
    w.Show();
    w.PickAll();
    w.Log.FailOn = 2;
    w.Desk.ExpectQuestion(
        "1 of 3 files printed on the printer; the printer failed on page 2 and the job was ended.");
    w.Start();
    EXPECT_EQ(w.Log.Ended, 0);
    EXPECT_EQ(store.GraphList[0].Name, "au02.npd") << "the third was not begun";
    EXPECT_TRUE(v.cmdPrintStart.Enabled);
}

TEST(BatchPrint, NoPrinterIsToldAndNothingIsRead) {
    Batch w;
    w.Numbered(1);
    w.Show();
    w.PickAll();
    w.Desk.Printer = nullptr;
    w.Desk.ExpectQuestion("Printer not ready");
    w.Desk.OnModal([](View&) {
        EXPECT_EQ(frmPrint.txtFileName.Text, "au01_batch.pdf");
        Type(frmPrint.txtFileName, "");
        Click(frmPrint.cmdOk);
    });
    Click(v.cmdPrintStart);
    EXPECT_EQ(store.GraphTotal, 0);
    EXPECT_TRUE(v.cmdPrintStart.Enabled);
}

TEST(BatchPrint, CancelInTheDialogPrintsNothing) {
    Batch w;
    w.Numbered(1);
    w.Show();
    w.PickAll();
    w.Desk.OnModal([](View&) { Click(frmPrint.cmdCan); });
    Click(v.cmdPrintStart);
    EXPECT_TRUE(w.Log.Orders.empty());
    EXPECT_EQ(w.Status(), "Nothing was printed.");
}

TEST(BatchPrintList, TakesNamesWithBlanksBlankLinesMissingFilesAndJapaneseNames) {
    Batch w;
    w.Numbered(1);
    w.Spectrum("two words.npd");
    w.Spectrum("高圧.npd");
    w.Folder.Write("run.xli", "au01.npd\r\n\r\n   \r\ntwo words.npd\r\nlost.npd\r\n高圧.npd");
    w.Show();
    Tick(v.chkXli);
    Type(v.txtXliName, "run.xli");
    std::string told;
    w.Desk.ExpectAny([&](const std::string& text) { told = text; });
    w.Start();
    EXPECT_EQ(w.Log.Pages.size(), 3U);
    EXPECT_TRUE(w.Log.Has(2, "高圧.npd"));
    EXPECT_EQ(told.rfind("3 of 4 files printed on the printer.\nlost.npd: ", 0), 0U) << told;
}

TEST(BatchPrintList, OneInCodePage932AndFoldersWithBackslashes) {
    Batch w;
    w.Folder.Write("old.xli", ToCp932("sub\\高圧.npd\n/far/away.npd\n"));
    const std::string folder = w.Folder.Path();
    EXPECT_EQ(FilesOfList(folder + "/old.xli"),
              (std::vector<std::string>{folder + "/sub/高圧.npd", "/far/away.npd"}));
    w.Folder.Write("mark.xli",
                   "\xEF\xBB\xBF"
                   "a.npd");
    EXPECT_EQ(FilesOfList(folder + "/mark.xli"), (std::vector<std::string>{folder + "/a.npd"}));
}

TEST(BatchPrintList, AListThatIsNotThereOrHasNoNameIsTold) {
    Batch w;
    w.Folder.Write("empty.xli", "\n\n");
    w.Show();
    Tick(v.chkXli);
    Type(v.txtXliName, "none.xli");
    std::string told;
    w.Desk.ExpectAny([&](const std::string& text) { told = text; });
    Click(v.cmdPrintStart);
    EXPECT_NE(told.find("none.xli"), std::string::npos) << told;
    Type(v.txtXliName, "empty.xli");
    w.Desk.ExpectQuestion("There is no name in empty.xli.");
    Click(v.cmdPrintStart);
    EXPECT_TRUE(w.Log.Orders.empty());
}
