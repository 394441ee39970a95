// Graph rows and slots through the commands of the main view.
#include "support/spectra.h"
#include "support/world.h"

#include "core/cursors.h"
#include "core/fault.h"
#include "core/graphs.h"
#include "core/operations.h"
#include "core/windows.h"
#include "files/filevael.h"

#include <gtest/gtest.h>

using namespace vael;

namespace {

struct Rows : World {
    std::string Spectrum(const std::string& name, int channels = 200, int height = 100) {
        return Folder.Write(
            name, NpdText(GaussCounts(channels, 10, {{channels / 2.0, double(height), 8}})));
    }
    void Open(std::vector<std::string> paths) {
        Desk.ChooseFiles(std::move(paths));
        Click(frmVaelAna.mnuLoad);
    }
};

std::string Names() {
    std::string out;
    for (const GraphEntry& entry : store.GraphList)
        out += entry.State > 0 ? entry.Name + "(" + std::to_string(entry.DataNo) + ") " : "- ";
    return out.substr(0, out.find_last_not_of("- ") + 1);
}

}  // namespace

TEST(Open, ThreeFilesGiveRowsOneToThreeInWindowOneAndTheLastIsCurrent) {
    Rows w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd"), w.Spectrum("c.npd")});
    EXPECT_EQ(Names(), "a.npd(0) b.npd(1) c.npd(2)");
    EXPECT_EQ(GraphNo(), 2);
    EXPECT_EQ(DataNo(), 2);
    EXPECT_EQ(frmVaelAna.Caption, "Vael (Data Analyze) --- c.npd");
    EXPECT_EQ(frmVaelAna.mnuCloseGraph.Caption, "Close Graph(c.npd)");
    EXPECT_EQ(frmVaelAna.cboGrphSel[0].Items[1], "2 b.npd");
    EXPECT_EQ(frmVaelAna.cboGrphSel[0].Items[9], "10 ");
    EXPECT_EQ(frmVaelAna.itxtGraphName.Text, "c.npd");
    EXPECT_EQ(store.GraphTotal, 3);
    EXPECT_EQ(frmVaelAna.chkGrp[1].Value, 1);
    EXPECT_EQ(frmVaelAna.chkGrp[3].Value, 0);
    EXPECT_EQ(frmVaelAna.chkGrp[11].Value, 0) << "nothing stands in window 2";
    EXPECT_EQ(frmVaelAna.chkGrp[2].Caption, "3");
    EXPECT_EQ(frmVaelAna.chkGrp[2].Ink, store.ColorTable[2]);
    EXPECT_EQ(store.GraphList[1].Color, store.ColorTable[1]) << "the colour goes by the slot";
    EXPECT_EQ(Engine().Target(0).Graph[1].GraphInUse, -1);
    EXPECT_EQ(store.LastSourceType, SOURCE_NPD);
    EXPECT_EQ(frmVaelAna.txt2Theta.Text, "10.00000");
    EXPECT_EQ(frmVaelAna.lblEGC.Caption, "0.050000Ch^2+0.030000Ch+0.000000");
}

TEST(Open, TheDialogHasItsFilterAndStartsWhereTheLastOneEnded) {
    Rows w;
    w.Open({w.Spectrum("a.npd")});
    w.Desk.CancelOpen();
    Click(frmVaelAna.cmdFiles[0]);
    const FileDialog& dialog = w.Desk.OpenDialogs.back();
    EXPECT_EQ(dialog.Filter,
              "Nippon high Pressure Data File (*.npd)|*.npd|Gennie File (*.cnf;*.rpt)|*.cnf;*.rpt|"
              "Express File (*.xbm)|*.xbm|DAC File (*.raw)|*.raw");
    EXPECT_TRUE(dialog.Multiple);
    EXPECT_EQ(dialog.Folder, w.Folder.Path() + "/");
    EXPECT_EQ(store.GraphTotal, 0) << "the rows were emptied before the dialog, as told";
}

TEST(Open, AReaderThatFailsMakesNoRowKeepsItsSlotAndTellsTheReason) {
    Rows w;
    const std::string bad = w.Folder.Write("bad.npd", "Record length,23\r\n");
    w.Open({bad, w.Spectrum("b.npd")});
    EXPECT_EQ(store.GraphList[0].State, 0);
    EXPECT_EQ(Names(), "- b.npd(1)");
    EXPECT_EQ(store.GraphTotal, 2) << "the slot of the failed one stays allocated";
    EXPECT_NE(frmLog.txtMessage.Text.find("bad.npd: line 2: the file ends"), std::string::npos);
    EXPECT_TRUE(frmVaelAna.StatusFault);
    EXPECT_NE(frmVaelAna.lblStatus.Caption.find("bad.npd"), std::string::npos);
}

TEST(Open, ARowBehindAFailedOneGoesWithTheNextOpen) {
    Rows w;
    const std::string bad = w.Folder.Write("bad.npd", "Record length,23\r\n");
    w.Open({bad, bad, w.Spectrum("b.npd"), w.Spectrum("c.npd")});
    EXPECT_EQ(Names(), "- - b.npd(2) c.npd(3)");
    w.Open({w.Spectrum("d.npd")});
    EXPECT_EQ(Names(), "d.npd(0)");
    EXPECT_EQ(store.GraphTotal, 1);
    EXPECT_EQ(Engine().Target(0).Graph[2].GraphInUse, 0);
    EXPECT_EQ(store.SpectrumDatas[2].Count[100], 0);
}

TEST(Open, FilesThatCannotBeReadDoNotUseUpTheSlotsForGood) {
    Rows w;
    const std::string bad = w.Folder.Write("bad.npd", "Record length,23\r\n");
    for (int n = 0; n < 12; ++n) w.Open({bad});
    w.Open({w.Spectrum("b.npd")});
    EXPECT_EQ(Names(), "b.npd(0)");
}

TEST(Open, EmptiesPeaksButtonsAndTheMarkOfAFinishedFit) {
    Rows w;
    w.Open({w.Spectrum("a.npd")});
    store.PeakTables[0].PeakNum = 3;
    store.AreaFitDone = TRUE_WORD;
    for (const std::size_t k : {0u, 2u}) frmVaelAna.cmdOperation[k].Enabled = false;
    for (const std::size_t k : {1u, 4u}) frmVaelAna.cmdOperation[k].Enabled = true;
    w.Desk.CancelOpen();
    Click(frmVaelAna.mnuLoad);
    EXPECT_EQ(store.PeakTables[0].PeakNum, 0);
    EXPECT_EQ(store.AreaFitDone, 0);
    EXPECT_TRUE(frmVaelAna.cmdOperation[0].Enabled);
    EXPECT_TRUE(frmVaelAna.cmdOperation[2].Enabled);
    EXPECT_FALSE(frmVaelAna.cmdOperation[1].Enabled);
    EXPECT_FALSE(frmVaelAna.cmdOperation[4].Enabled);
    EXPECT_EQ(store.SlotUsed[0], 0);
}

TEST(Open, ASlotThatHeldADerivedRowHoldsAPlainSpectrumAfterwards) {
    Rows w;
    w.Open({w.Spectrum("a.npd")});
    Click(frmVaelAna.mnuSmooth);  // slot 1 now is a smoothed copy
    w.Open({w.Spectrum("b.npd"), w.Spectrum("c.npd")});
    ASSERT_EQ(DataNo(), 1);
    EXPECT_EQ(store.PropertyRecords[1].Param.DerivedFlags, 0);
    Click(frmVaelAna.mnuSmooth);
    EXPECT_EQ(Names(), "Smooth(2) b.npd(0) c.npd(1)") << "its source is not smoothed in place";
}

TEST(Open, TheUsersNoAboutUnsavedDataStopsBehindTheDialog) {
    Rows w;
    w.Open({w.Spectrum("a.npd")});
    const std::string folder = store.DataFolder;
    store.GraphList[0].State = 2;
    std::filesystem::create_directory(w.Folder.Path("other"));
    w.Desk.ChooseFiles({w.Spectrum("other/b.npd")});
    w.Desk.ExpectQuestion("File No Save.  Grp=1 (Do you Cansel?)", Answer::No);
    FileLoad();
    EXPECT_EQ(Names(), "a.npd(0)");
    EXPECT_EQ(store.DataFolder, folder);
    store.GraphList[0].State = 1;
}

TEST(Open, DigitsAloneAndCapitalsNameTheirKindsAndAnXbaBringsItsPeaks) {
    Rows w;
    SpectrumData data{};
    data.DataNo = 3;
    data.Count[2] = 77;
    PropertyRecord prop = BlankProperty();
    prop.RecordValid = 1;
    prop.SourceType = SOURCE_NPD;  // what it was read from before it was saved
    PeakTable peaks{};
    peaks.PeakNum = 1;
    peaks.Peak[0].Position = 1.5;
    ASSERT_EQ(SaveXbm(w.Folder.Path("run.003"), data, prop), -1);
    ASSERT_EQ(SaveXba(w.Folder.Path("p.XBA"), data, prop, peaks), -1);
    store.PeakTables[0].PeakNum = 9;  // of an older graph in that slot
    w.Open({w.Folder.Path("run.003"), w.Folder.Path("p.XBA"), w.Spectrum("a.NPD")});
    EXPECT_EQ(Names(), "run.003(0) p.XBA(1) a.NPD(2)");
    EXPECT_EQ(store.SpectrumDatas[0].Count[2], 77);
    EXPECT_EQ(store.PropertyRecords[0].SourceType, SOURCE_NATIVE);
    EXPECT_EQ(store.PeakTables[0].PeakNum, 0) << "emptied before reading";
    ASSERT_EQ(store.PeakTables[1].PeakNum, 1);
    EXPECT_EQ(store.PeakTables[1].Peak[0].Position, 1.5);
}

TEST(Open, TheVerticalScaleFollowsTheHighestCountOfItsWindow) {
    Rows w;
    w.Open({w.Spectrum("a.npd", 200, 700)});  // 710 with the background; 5 % free: 800
    EXPECT_EQ(YFullScale(0), 800);
    EXPECT_EQ(YFullScale(1), 10000000);
    EXPECT_EQ(Engine().Target(0).YTop, 800);
}

TEST(Open, AGraphOfTheOtherWindowOrAHiddenOneDoesNotSetTheScale) {
    Rows w;
    w.Open({w.Spectrum("a.npd", 200, 700), w.Spectrum("b.npd", 200, 30000)});
    EXPECT_EQ(YFullScale(0), 40000);
    SetGraph(1, 1, 1, "");
    AutoScale(0);
    EXPECT_EQ(YFullScale(0), 800);
    AutoScale(1);
    EXPECT_EQ(YFullScale(1), 40000);
    store.GraphList[1].WinNo = 0;
    store.GraphList[1].Visible = FALSE_WORD;
    AutoScale(0);
    EXPECT_EQ(YFullScale(0), 800);
    frmVaelAna.ckbVtAuto.Value = 0;
    store.GraphList[1].Visible = TRUE_WORD;
    AutoScale(0);
    EXPECT_EQ(YFullScale(0), 800) << "only while the automatic scale is on";
}

TEST(Rows, TheShowSwitchesFollowTheStyleAndTheWindow) {
    Rows w;
    VaelAnaView& v = frmVaelAna;
    w.Open({w.Spectrum("a.npd")});
    EXPECT_FALSE(v.chkFilePile[0].Enabled);
    EXPECT_FALSE(v.chkFilePile[1].Enabled);
    EXPECT_TRUE(v.ckbExpand.Enabled);
    v.chkFilePile[1].Value = 1;
    v.chkFilePile[1].Enabled = true;
    SetGraph(0, 0, 0, "");
    EXPECT_EQ(v.chkFilePile[1].Value, 0) << "window 1, lined up: the second switch is cleared";
    EXPECT_FALSE(v.chkFilePile[1].Enabled);
    EXPECT_EQ(store.GraphList[0].Name, "a.npd") << "an empty name leaves the row's";
    v.ckbExpand.Value = 1;
    SetGraph(0, 0, 0, "");
    EXPECT_TRUE(v.chkFilePile[0].Enabled);
    EXPECT_FALSE(v.chkFilePile[1].Enabled);
    v.ckbExpand.Value = 0;
    SetGraph(1, 0, 0, "");
    EXPECT_TRUE(v.chkFilePile[0].Enabled);
    EXPECT_TRUE(v.chkFilePile[1].Enabled);
    EXPECT_FALSE(v.ckbExpand.Enabled);
    EXPECT_FALSE(v.mnuExpandOn.Enabled);
    EXPECT_EQ(store.GraphList[0].WinNo, 1);
    EXPECT_EQ(v.chkGrp[10].Value, 1);
}

TEST(Open, TheFilterIsRememberedForTheNextDialog) {
    Rows w;
    store.FilterIndex = 3;
    w.Open({w.Spectrum("a.npd")});
    EXPECT_EQ(w.Desk.OpenDialogs.back().FilterIndex, 3);
    EXPECT_EQ(store.FilterIndex, 1) << "as the user left the dialog";
    store.FilterIndex = 3;
    w.Desk.CancelOpen();
    Click(frmVaelAna.mnuLoad);
    EXPECT_EQ(store.FilterIndex, 3);
}

TEST(Rows, InExpandStyleTheSecondPanelOwnsNoGraphAndTheHighlightStays) {
    Rows w;
    w.Open({w.Spectrum("a.npd")});
    frmVaelAna.ckbExpand.Value = 1;
    frmVaelAna.ckbExpand.Enabled = true;
    Tick(frmVaelAna.chkGrp[10]);
    EXPECT_EQ(frmVaelAna.chkGrp[10].Value, 0);
    EXPECT_EQ(store.GraphList[0].WinNo, 0);
    EXPECT_EQ(store.GraphList[0].Visible, TRUE_WORD);
    ChangeActiveWin(1);
    EXPECT_TRUE(frmVaelAna.fraGraph[0].Raised);
    EXPECT_FALSE(frmVaelAna.fraGraph[1].Raised);
}

TEST(Rows, ATickShowsTheCalibrationOfItsRow) {
    Rows w;
    w.Open({w.Folder.Write("a.npd", NpdText({1, 2, 3}, "a", 0.5, 0.25)),
            w.Folder.Write("b.npd", NpdText({1, 2, 3}, "b", 0.125, 0.5))});
    ASSERT_EQ(frmVaelAna.lblEGC.Caption, "0.125000Ch^2+0.500000Ch+0.000000");
    Tick(frmVaelAna.chkGrp[0]);
    EXPECT_EQ(frmVaelAna.lblEGC.Caption, "0.500000Ch^2+0.250000Ch+0.000000");
}

TEST(Rows, CommandsWorkOnTheRealWindowAndANegativeIndexIsRowOne) {
    Rows w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    frmVaelAna.cboGrphSel[0].Index = 1;
    frmVaelAna.cboGrphSel[1].Index = -1;
    ChangeActiveWin(1);
    EXPECT_EQ(GetRealWinNo(), 1);
    EXPECT_EQ(GetGrpNo(), 0);
    frmVaelAna.ckbExpand.Value = 1;  // the second panel only magnifies the first
    EXPECT_EQ(GetRealWinNo(), 0);
    EXPECT_EQ(GetGrpNo(), 1);
    EXPECT_EQ(DataNo(), 1);
}

TEST(Open, AnUnknownExtensionReadsNothingWithoutABox) {
    Rows w;
    w.Open({w.Folder.Write("x.foo", "hello")});
    EXPECT_EQ(Names(), "");
    EXPECT_NE(frmLog.txtMessage.Text.find("x.foo: an extension that can be read"),
              std::string::npos);
}

TEST(Open, ALongerFileRaisesTheSpanAndAShorterOneLeavesIt) {
    Rows w;
    w.Open({w.Spectrum("long.npd", 5000)});
    EXPECT_EQ(store.SpanCh, 5000);
    EXPECT_EQ(frmVaelAna.imnSpanCh.Value, 5000);
    EXPECT_EQ(Engine().Target(1).XEnd, 4999) << "all windows take the new span";
    w.Open({w.Spectrum("short.npd", 300)});
    EXPECT_EQ(store.SpanCh, 5000);
}

TEST(Open, FilesNamedByACallOpenAsThoseOfTheDialogWithoutAQuestion) {
    Rows w;
    OpenNamed({});
    EXPECT_EQ(store.GraphTotal, 0);
    OpenNamed({w.Spectrum("a.npd", 64), w.Folder.Path("none.npd"), w.Spectrum("b.npd", 64)});
    EXPECT_EQ(store.GraphList[0].Name, "a.npd");
    EXPECT_EQ(store.GraphList[2].Name, "b.npd");
    EXPECT_EQ(frmVaelAna.lblStatus.Caption,
              "Not read: none.npd (the reason stands in the log).");
    EXPECT_TRUE(w.Desk.Asked.empty());
}

TEST(Open, ElevenFilesStopAtTheTenth) {
    Rows w;
    std::vector<std::string> paths;
    for (int n = 0; n < 11; ++n) paths.push_back(w.Spectrum("f" + std::to_string(n) + ".npd", 64));
    w.Open(paths);
    EXPECT_EQ(store.GraphTotal, 10);
    EXPECT_EQ(store.GraphList[9].Name, "f9.npd");
    EXPECT_EQ(frmVaelAna.lblStatus.Caption,
              "Opened 10 spectra. The list is full: files left: 1.");
}

TEST(Slots, WithNoneFreeReadingEndsAtTheSlotBoundWithItsMessage) {
    Rows w;
    store.SlotUsed.fill(TRUE_WORD);
    w.Desk.ExpectQuestion("GetGraphSpace: Notting Space!");
    std::int16_t ok = TRUE_WORD;
    EXPECT_THROW(ReadGraph(0, 0, w.Spectrum("a.npd"), ok), Fault);
    EXPECT_EQ(ok, FALSE_WORD);
}

TEST(Slots, FileLoadWithoutEmptyingTheRowsLeavesTheirSlotsMarked) {
    Rows w;
    w.Open({w.Spectrum("a.npd", 64)});
    for (int n = 0; n < 9; ++n) {
        w.Desk.ChooseFiles({w.Spectrum("b.npd", 64)});
        FileLoad();
    }
    EXPECT_EQ(Names(), "b.npd(9)");
    EXPECT_EQ(store.GraphTotal, 10);
    w.Desk.ChooseFiles({w.Spectrum("c.npd", 64)});
    w.Desk.ExpectQuestion("GetGraphSpace: Notting Space!");
    EXPECT_THROW(FileLoad(), Fault);
}

TEST(Slots, GetGraphSpaceOnlyLooksUnlessItIsMarked) {
    Rows w;
    EXPECT_EQ(GetGraphSpace(0), 0);
    EXPECT_EQ(store.GraphTotal, 0);
    EXPECT_EQ(GetGraphSpace(-1), 0);
    EXPECT_EQ(GetGraphSpace(-1), 1);
    EXPECT_EQ(store.GraphTotal, 2);
    EXPECT_EQ(GetGrpNo2(), 2);
}

TEST(Rows, DeletingTheThirdOfFiveMovesTheRestUpAndSlotsStay) {
    Rows w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd"), w.Spectrum("c.npd"), w.Spectrum("d.npd"),
            w.Spectrum("e.npd")});
    DeleteGraph(2);
    EXPECT_EQ(Names(), "a.npd(0) b.npd(1) d.npd(3) e.npd(4)");
    EXPECT_EQ(store.SlotUsed[2], 0);
    EXPECT_EQ(store.GraphList[4].Name, "");
    EXPECT_EQ(store.SpectrumDatas[2].Count[100], 0) << "its counts are gone";
    EXPECT_EQ(store.PropertyRecords[2].FileName.Trimmed(), "made") << "its record is not";
    EXPECT_EQ(GraphNo(), 3) << "the selection goes to the last row";
    EXPECT_EQ(DataNo(), 4);
    EXPECT_EQ(frmVaelAna.chkGrp[4].Value, 0);
    EXPECT_EQ(Engine().Target(0).Graph[2].GraphInUse, 0);
}

TEST(Rows, AnEmptyRowIsNotDeleted) {
    Rows w;
    w.Open({w.Spectrum("a.npd")});
    DeleteGraph(5);
    EXPECT_EQ(Names(), "a.npd(0)");
    EXPECT_EQ(store.SpectrumDatas[0].Count[100], 110);
}

TEST(Rows, ShiftingHasItsThreeMessages) {
    Rows w;
    std::int16_t ok = TRUE_WORD;
    w.Desk.ExpectQuestion("ShiftGraph: Data Notting!");
    ShiftGraph(0, 1, ok);
    EXPECT_EQ(ok, 0);
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    w.Desk.ExpectQuestion("ShiftGraph: List Under!");
    ShiftGraph(0, -1, ok);
    EXPECT_EQ(ok, 0);
    ShiftGraph(0, 1, ok);
    EXPECT_EQ(ok, -1);
    EXPECT_EQ(store.GraphList[0].State, 0);
    EXPECT_EQ(store.GraphList[2].Name, "b.npd");
    store.GraphTotal = 10;
    w.Desk.ExpectQuestion("ShiftGraph: List Over!");
    ShiftGraph(0, 1, ok);
    EXPECT_EQ(ok, 0);
    store.GraphTotal = 2;
}

TEST(Rows, ShiftingUpTakesTheRowsOfTheLaterOnes) {
    Rows w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd"), w.Spectrum("c.npd")});
    std::int16_t ok = FALSE_WORD;
    ShiftGraph(1, -1, ok);
    EXPECT_EQ(ok, -1);
    EXPECT_EQ(store.GraphList[0].Name, "b.npd");
    EXPECT_EQ(store.GraphList[1].Name, "c.npd");
    EXPECT_EQ(store.GraphList[2].State, 0);
}

TEST(Rows, ThePromptAboutUnsavedDataStopsTheClearing) {
    Rows w;
    w.Open({w.Spectrum("a.npd")});
    store.GraphList[0].State = 2;
    w.Desk.ExpectQuestion("File No Save.  Grp=1 (Do you Cansel?)", Answer::No);
    std::int16_t ok = 0;
    ClearGrp(0, ok);
    EXPECT_EQ(ok, -1);
    EXPECT_EQ(store.SpectrumDatas[0].Count[100], 110);
    w.Desk.ExpectQuestion("File No Save.  Grp=1 (Do you Cansel?)", Answer::Yes);
    ClearGrp(0, ok);
    EXPECT_EQ(ok, 0);
    EXPECT_EQ(store.GraphTotal, 0);
    EXPECT_EQ(store.SpectrumDatas[0].Count[100], 0);
    ClearGrp(0, ok);
    EXPECT_EQ(ok, -1) << "with no graph nothing happens";
}

TEST(Rows, ClearAllStopsAtTheFirstRowThatIsKept) {
    Rows w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd"), w.Spectrum("c.npd")});
    store.GraphList[1].State = 2;
    w.Desk.ExpectQuestion("File No Save.  Grp=2 (Do you Cansel?)", Answer::No);
    std::int16_t ok = 0;
    ClearAllGrp(ok);
    EXPECT_EQ(ok, -1);
    EXPECT_EQ(store.GraphTotal, 3) << "the prompt looks at all rows before the first is cleared";
    store.GraphList[1].State = 1;
    ClearAllGrp(ok);
    EXPECT_EQ(ok, 0);
    EXPECT_EQ(store.GraphTotal, 0);
}

TEST(Rows, TheTickHidesAndShowsAGraph) {
    Rows w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    EXPECT_TRUE(Tick(frmVaelAna.chkGrp[0]));
    EXPECT_EQ(store.GraphList[0].Visible, 0);
    EXPECT_EQ(Engine().Target(0).Graph[0].GraphInUse, 0);
    Tick(frmVaelAna.chkGrp[0]);
    EXPECT_EQ(store.GraphList[0].Visible, -1);
    EXPECT_EQ(Engine().Target(0).Graph[0].GraphInUse, -1);
    Tick(frmVaelAna.chkGrp[7]);
    EXPECT_EQ(frmVaelAna.chkGrp[7].Value, 0) << "the box of an empty row is cleared again";
}

TEST(Rows, TheSelectorChangesTheCurrentRowTheTitleAndTheActiveWindow) {
    Rows w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    Pick(frmVaelAna.cboGrphSel[0], 0);
    EXPECT_EQ(GraphNo(), 0);
    EXPECT_EQ(frmVaelAna.Caption, "Vael (Data Analyze) --- a.npd");
    EXPECT_TRUE(frmVaelAna.fraGraph[0].Raised);
    Pick(frmVaelAna.cboGrphSel[1], 1);
    EXPECT_EQ(frmVaelAna.ActiveWin, 1);
    EXPECT_TRUE(frmVaelAna.fraGraph[1].Raised);
    EXPECT_FALSE(frmVaelAna.fraGraph[0].Raised);
    EXPECT_EQ(GraphNo(), 1);
    EXPECT_EQ(GetGraphDataNo(-1), 1);
    EXPECT_EQ(GetGraphDataNo(0), 0);
}

TEST(Rows, ASelectionKeepsItsIndexWhenTheItemsAreRebuilt) {
    Rows w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    Pick(frmVaelAna.cboGrphSel[0], 1);
    Add_cboGraphSel();
    EXPECT_EQ(frmVaelAna.cboGrphSel[0].Index, 1);
}

TEST(Calibration, TheOptionsChooseTheFilesOrTheDefaultPolynomial) {
    Rows w;
    store.DefaultParam.EgcCoef = {1.0, 2.0, 0.0};
    w.Open({w.Spectrum("a.npd")});
    CsrX_Change(99);
    EXPECT_NEAR(frmVaelAna.inumCursorDisp[1].Value, 0.05 + 0.03 * 100, 1e-12);
    Click(frmVaelAna.optEGC[0]);
    EXPECT_EQ(store.UseFileEgc, 0);
    EXPECT_NEAR(frmVaelAna.inumCursorDisp[1].Value, 201.0, 1e-12);
    EXPECT_EQ(frmVaelAna.lblEGC.Caption, "0.050000Ch^2+0.030000Ch+0.000000")
        << "the text is the spectrum's own";
    const auto axis = frmVaelAna.picSubScale.Painted;
    Click(frmVaelAna.optEGC[1]);
    EXPECT_EQ(store.UseFileEgc, 1);
    EXPECT_GT(frmVaelAna.picSubScale.Painted, axis) << "either redraws the axis";
    EXPECT_NEAR(frmVaelAna.inumCursorDisp[1].Value, 0.05 + 0.03 * 100, 1e-12);
}

TEST(Cursor, TheBoxesShowFiveUnitsAtOnceAndTheCount) {
    Rows w;
    w.Open({w.Spectrum("a.npd")});
    CsrX_Change(100);
    EXPECT_EQ(frmVaelAna.inumCursorCh.Value, 101) << "shown from 1";
    EXPECT_EQ(frmVaelAna.inumCursorDisp[0].Text(), "101");
    EXPECT_EQ(frmVaelAna.inumCursorDisp[1].Text(), "3.080");
    EXPECT_EQ(frmVaelAna.inumCursorDisp[4].Text(), "0.0000") << "no angle but for a DAC spectrum";
    EXPECT_EQ(frmVaelAna.inumCursorCnt[0].Value, 110);
    CsrX_Change(-5);
    EXPECT_EQ(CursorCh(), 0);
    CsrX_Change(99999);
    EXPECT_EQ(CursorCh(), 4095);
}

TEST(Axis, TheUnitListRedrawsTheLowerAxis) {
    Rows w;
    w.Open({w.Spectrum("a.npd")});
    const auto before = frmVaelAna.picSubScale.Painted;
    Pick(frmVaelAna.cboUnitX, 1);
    EXPECT_EQ(frmVaelAna.UnitX, 1);
    EXPECT_GT(frmVaelAna.picSubScale.Painted, before);
    EXPECT_NEAR(frmVaelAna.inumScaleX.Value, 4096 * 0.03, 1e-9);
}

TEST(Open, CountsTooFarBelowZeroToBeDrawnMakeNoRow) {
    Rows w;
    w.Open({w.Folder.Write("low.npd", NpdText({5, -2147483647, 5}))});
    EXPECT_EQ(Names(), "");
    EXPECT_NE(frmLog.txtMessage.Text.find("low.npd: a count is too far below zero"),
              std::string::npos);
    w.Open({w.Folder.Write("low.npd", NpdText({5, -2137483647, 5}))});
    EXPECT_EQ(Names(), "low.npd(0)");
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(Measured, AnXbmAndItsNpdOpenToTheSameCounts) {
    const std::string npd = Measured("AuWire.npd");
    const std::string xbm = Measured("AuWire.xbm");
    if (npd.empty()) GTEST_SKIP() << "the measured spectra are not here";
    Rows w;
    w.Open({npd, xbm});
    ASSERT_EQ(Names(), "AuWire.npd(0) AuWire.xbm(1)");
    EXPECT_EQ(store.SpectrumDatas[0].DataNo, 4000);
    EXPECT_EQ(store.SpectrumDatas[0].Count, store.SpectrumDatas[1].Count);
    EXPECT_EQ(store.LastSourceType, SOURCE_NATIVE);
}

TEST(Measured, TheForeignTextIsRefusedWithAReason) {
    const std::string path = Measured("foreign_text.001");
    if (path.empty()) GTEST_SKIP() << "the measured spectra are not here";
    Rows w;
    w.Open({path});
    EXPECT_EQ(Names(), "");
    EXPECT_NE(frmLog.txtMessage.Text.find("offset 1988: at most 8192 channels"), std::string::npos);
}
