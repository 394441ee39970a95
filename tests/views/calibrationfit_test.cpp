// The calibration's spectra and their fits by the user's hand.
#include "core/operations.h"
#include "core/text.h"
#include "support/calibworld.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

using namespace vael;
using namespace vael::test::calib;

namespace {

using C = DialogCalibCView;

}  // namespace

// --- the list of spectra -----------

TEST(CalibrationFiles, AreListedAndTheLastOneIsShown) {
    Calibrated w;
    w.OpenFiles({w.Source("Ag.npd"), w.Source("Co 57.npd")});
    ASSERT_EQ(v.sprdFileName.Rows(), 1) << "names with blanks are two names when they are typed";
    w.OpenFiles({w.Source("Pb.npd"), w.Source("Cd.npd")});
    ASSERT_EQ(v.sprdFileName.Rows(), 3);
    EXPECT_EQ(std::as_const(v.sprdFileName).At(C::NAME, 3).Text, "Cd.npd");
    EXPECT_EQ(std::as_const(v.sprdFileName).At(C::FOLDER, 3).Text, w.Folder.Path() + "/");
    EXPECT_EQ(v.sprdFileName.Row, 3);
    EXPECT_EQ(store.GraphTotal, 1);
    EXPECT_EQ(store.GraphList[0].Name, "Cd.npd");
    EXPECT_EQ(store.DataFolder, w.Folder.Path() + "/") << "the next dialog begins there";
}

TEST(CalibrationFiles, APickedNameMayHoldBlanks) {
    Calibrated w;
    w.Source("Co 57.npd");
    w.Desk.OnModal([&w](View&) {
        frmDialogLoad.Directory(w.Folder.Path());
        ASSERT_EQ(frmDialogLoad.filFiles.Items, (std::vector<std::string>{"Co 57.npd"}));
        PickMany(frmDialogLoad.filFiles, {0});
        Click(frmDialogLoad.cmdSet);
    });
    Click(v.mnuFileOpen);
    EXPECT_EQ(v.Files, (std::vector<std::string>{w.Folder.Path("Co 57.npd")}));
}

TEST(CalibrationFiles, ChoosingALineReadsThatFileAnewWithoutAPrompt) {
    Calibrated w;
    w.OpenFiles({w.Source("Ag.npd"), w.Source("Pb.npd")});
    Click(v.cmdSmothBk);
    ASSERT_EQ(store.GraphTotal, 4);
    store.GraphList[2].State = 2;
    EXPECT_TRUE(Press(v.sprdFileName, C::NAME, 1));
    EXPECT_EQ(store.GraphTotal, 1);
    EXPECT_EQ(store.GraphList[0].Name, "Ag.npd");
    for (int n = 0; n < 25; ++n) Press(v.sprdFileName, C::NAME, 1 + n % 2);
    EXPECT_EQ(store.GraphTotal, 1) << "so that twenty fit into ten rows";
    EXPECT_TRUE(w.Desk.Faults.empty());
    Press(v.sprdFileName, C::NAME, 0);
    EXPECT_EQ(store.GraphTotal, 1) << "the head is no spectrum";
}

TEST(CalibrationFiles, TwentyAtMost) {
    Calibrated w;
    std::vector<std::string> paths;
    for (int n = 1; n <= 21; ++n)
        paths.push_back(w.Spectrum("f" + std::to_string(n) + ".npd", 64, {}));
    w.Desk.ExpectQuestion("Can not open more file (Max=20)");
    w.OpenFiles(paths);
    ASSERT_EQ(v.sprdFileName.Rows(), 20);
    EXPECT_EQ(store.GraphList[0].Name, "f20.npd");
    w.Desk.ExpectQuestion("Can not open more file (Max=20)");
    w.OpenFiles({paths.back()});
    EXPECT_EQ(v.sprdFileName.Rows(), 20);
    w.OpenFiles({paths[4]});
    EXPECT_EQ(v.sprdFileName.Row, 5) << "one that is listed is shown, not listed again";
    EXPECT_EQ(store.GraphList[0].Name, "f5.npd");
}

TEST(CalibrationFiles, OneThatCannotBeReadIsToldAndChangesNothing) {
    Calibrated w;
    w.OpenFiles({w.Source("Ag.npd")});
    w.Folder.Write("bad.npd", "this is no spectrum");
    w.OpenFiles({w.Folder.Path("bad.npd"), w.Folder.Path("absent.npd")});
    EXPECT_EQ(v.sprdFileName.Rows(), 1);
    EXPECT_EQ(store.GraphList[0].Name, "Ag.npd");
    EXPECT_EQ(w.Status(), "Not read: bad.npd, absent.npd (the reason stands in the log).");
    std::filesystem::remove(w.Folder.Path("Ag.npd"));
    Press(v.sprdFileName, C::NAME, 1);
    EXPECT_EQ(store.GraphTotal, 1) << "the rows stay when the file is gone";
    EXPECT_EQ(w.Status(), "Not read: Ag.npd (the reason stands in the log).");
}

TEST(CalibrationFiles, ACancelledDialogChangesNothing) {
    Calibrated w;
    w.OpenFiles({w.Source("Ag.npd")});
    w.Desk.OnModal([](View&) { Click(frmDialogLoad.cmdCan); });
    Click(v.cmdFileOpen);
    EXPECT_EQ(v.sprdFileName.Rows(), 1);
    EXPECT_EQ(store.GraphTotal, 1);
}

TEST(CalibrationFiles, DeletingALineRemovesItsRow) {
    Calibrated w;
    w.OpenFiles({w.Source("Ag.npd"), w.Source("Pb.npd"), w.Source("Cd.npd")});
    Click(v.cmdSmothBk);
    Click(v.cmdDelFile);
    EXPECT_EQ(v.sprdFileName.Rows(), 2);
    EXPECT_EQ(store.GraphTotal, 0) << "with what was derived from it";
    EXPECT_EQ(w.Status(), "Removed Cd.npd from the list.");
    Click(v.mnuFileCancel);
    EXPECT_EQ(v.sprdFileName.Rows(), 2);
    EXPECT_EQ(w.Status(), "Choose the spectrum that is to go from the list.");
    Press(v.sprdFileName, C::NAME, 2);
    v.sprdFileName.Row = 1;  // a line that is not shown
    Click(v.mnuFileCancel);
    EXPECT_EQ(v.Files, (std::vector<std::string>{w.Folder.Path("Pb.npd")}));
    EXPECT_EQ(store.GraphList[0].Name, "Pb.npd") << "the one that is shown stays";
    Press(v.sprdFileName, C::NAME, 1);
    w.Open({w.Source("mine.npd")});
    v.sprdFileName.Row = 1;
    Click(v.cmdDelFile);
    EXPECT_EQ(store.GraphList[0].Name, "mine.npd") << "what was opened elsewhere stays";
    EXPECT_EQ(v.sprdFileName.Rows(), 0);
}

// --- preparing and fitting -----------

TEST(CalibrationFit, SmoothsAndRemovesTheBackground) {
    Calibrated w;
    w.Desk.ExpectQuestion("ShiftGraph: Data Notting!");
    Click(v.cmdSmothBk);  // nothing there
    EXPECT_EQ(store.GraphTotal, 0);
    w.OpenFiles({w.Source("Ag.npd")});
    const int busy = w.Desk.BusyTurns;
    Click(v.cmdSmothBk);
    EXPECT_EQ(store.GraphList[0].Name, NAME_REMOVED);
    EXPECT_EQ(store.GraphList[2].Name, NAME_SMOOTH);
    EXPECT_EQ(GraphNo(), 0);
    EXPECT_GT(w.Desk.BusyTurns, busy);
    EXPECT_EQ(w.Desk.BusyDepth, 0);
}

TEST(CalibrationFit, SmoothingForTheCalibrationIsAlwaysDone) {
    Calibrated w;
    w.OpenFiles({w.Spectrum("spike.npd", 100, {{50.0, 1600.0, 0.5}})});
    settings.SmoothingOn = 0;
    const auto highest = [] {
        const auto& count = store.SpectrumDatas[static_cast<std::size_t>(DataNo())].Count;
        return *std::max_element(count.begin(), count.end());
    };
    const int raw = highest();
    Smooting_Calib();
    EXPECT_EQ(store.GraphList[0].Name, NAME_SMOOTH);
    EXPECT_LT(highest(), raw / 2);
    Press(v.sprdFileName, C::NAME, 1);
    mnuSmooth();
    EXPECT_EQ(highest(), raw) << "the menu's follows the settings";
}

TEST(CalibrationFit, NeedsAnArea) {
    Calibrated w;
    w.OpenFiles({w.Source("Ag.npd")});
    for (Button& button : v.cmdAuto) {
        w.Desk.ExpectQuestion("Plz Set ROI");
        Click(button);
    }
    EXPECT_EQ(w.Cell(C::CHANNEL, 1), "");
}

TEST(CalibrationFit, MonoFitEntersTheCentreOfThePeakInTheArea) {
    Calibrated w;
    w.OpenFiles({w.Source("Ag.npd")});
    Click(v.cmdSmothBk);
    Change_cboGrphSel(0, 3);  // the spectrum itself
    const int former = DataNo();
    w.Area(1470, 1530);
    Click(v.cmdAuto[1]);
    EXPECT_NEAR(ParseNumber(w.Cell(C::CHANNEL, 1)).value_or(0.0), 1501.1, 0.05);
    EXPECT_EQ(v.vaSpread1.Row, 2);
    EXPECT_EQ(DataNo(), former) << "back at the graph that was current";
    EXPECT_EQ(CursorCh(), 1500);
    std::int16_t start = 0;
    std::int16_t end = 0;
    EXPECT_EQ(GetRegions(start, end), TRUE_WORD);
    EXPECT_EQ(start, 1470) << "the area stays";
    EXPECT_EQ(end, 1530);
    const int removed = GetGraphDataNo(RowOfName(NAME_REMOVED));
    EXPECT_EQ(store.PeakTables[static_cast<std::size_t>(removed)].PeakNum, 1)
        << "the fit is on the row without background, in the area alone";
    w.Area(2670, 2730);
    Click(v.cmdAuto[1]);
    EXPECT_NEAR(ParseNumber(w.Cell(C::CHANNEL, 2)).value_or(0.0), 2702.0, 0.05);
}

TEST(CalibrationFit, SplitFitEntersTheHighestOfItsPeaks) {
    Calibrated w;
    w.OpenFiles({w.Spectrum("pair.npd", 4096, {{1000.0, 5000.0, 9.0}, {1020.0, 9000.0, 9.0}})});
    w.Area(960, 1060);
    Click(v.cmdAuto[0]);
    EXPECT_NEAR(ParseNumber(w.Cell(C::CHANNEL, 1)).value_or(0.0), 1021.0, 0.1);
    EXPECT_EQ(store.PeakTables[static_cast<std::size_t>(DataNo())].PeakNum, 2)
        << "without a row \"BackRemv\" it works on the current one";
}

TEST(CalibrationFit, AnAreaWithoutAPeakEntersNothing) {
    Calibrated w;
    w.OpenFiles({w.Source("Ag.npd")});
    w.Area(3200, 3260);
    w.Desk.ExpectQuestion("1 Peaks Cuted");  // the search takes a ripple for one
    Click(v.cmdAuto[1]);
    EXPECT_EQ(w.Status(), "There is no peak in the area.");
    EXPECT_EQ(w.Cell(C::CHANNEL, 1), "");
}

TEST(CalibrationFit, DelFitTakesTheFitAndItsPeaksAway) {
    Calibrated w;
    w.OpenFiles({w.Source("Ag.npd")});
    Click(v.cmdSmothBk);
    w.Area(1470, 1530);
    Click(v.cmdAuto[1]);
    ASSERT_GE(RowOfName(NAME_FIT), 0);
    Click(v.cmdFitDel);
    EXPECT_EQ(RowOfName(NAME_FIT), -1);
    EXPECT_EQ(store.GraphTotal, 4);
    for (const PeakTable& peaks : store.PeakTables) EXPECT_EQ(peaks.PeakNum, 0);
    EXPECT_EQ(w.Status(), "The fit was removed.");
    Click(v.cmdFitDel);
    EXPECT_EQ(w.Status(), "There is no fit.");
    EXPECT_NE(w.Cell(C::CHANNEL, 1), "") << "the table keeps what was entered";
}
