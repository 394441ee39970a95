// The peak report by the user's hand: what it lists, what may be typed, the curve, the file.
#include "support/plotted.h"

#include "analysis/peaktext.h"
#include "core/cursors.h"
#include "core/fault.h"
#include "core/frmlog.h"
#include "core/operations.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

using namespace vael;

namespace {

using V = PeakReportView;
using Name = KeyPress::Name;

V& v = frmPeakReport;

/// A spectrum in slot 0 with three peaks, calibrated by E = 0.05 + 0.03 x at 10 degrees.
struct Reported : Plotted {
    Reported() {
        Open({Spectrum("gold.npd")});
        for (const double position : {499.25, 999.5, 1999.0}) AddPeakAt(0, position);
    }
    void Report() { EXPECT_TRUE(Click(frmVaelAna.mnuPeakReport)); }
    static PeakTable& Peaks(int slot = 0) { return Item(store.PeakTables, slot); }
    static std::string Cell(int column, int row) {
        return std::as_const(v.sprPeakInf).At(column, row).Text;
    }
    static bool TypeCell(int column, int row, const std::string& text) {
        return Edit(v.sprPeakInf, column, row, text);
    }
    static std::string Status() { return frmVaelAna.lblStatus.Caption; }
    /// Count of the fit graph's curve at a channel.
    static int CurveAt(int channel) {
        const int row = RowOfName(NAME_FIT);
        if (row < 0) return -1;
        return Item(Item(store.SpectrumDatas, GetGraphDataNo(row)).Count, channel);
    }
    static bool DeleteKey() { return Key(v, {.Key = Name::Delete}); }
};

}  // namespace

// --- what it lists -----------

TEST(PeakReport, OpensForTheCurrentRowWithItsWords) {
    Reported w;
    EXPECT_FALSE(v.Visible);
    w.Report();
    EXPECT_TRUE(v.Visible);
    EXPECT_FALSE(v.Modal);
    EXPECT_EQ(v.Caption, "Peak Report");
    EXPECT_EQ(v.lblGraph.Caption, "1  gold.npd, 3 peaks");
    EXPECT_EQ(v.cmdCancel.Caption, "Cancel");
    EXPECT_EQ(v.cmdSave.Caption, "Save as..");
    EXPECT_EQ(v.cmdPrint.Caption, "Print");
    EXPECT_EQ(v.cmdPkSet.Caption, "SET");
    EXPECT_EQ(v.cmdRepEnd.Caption, "OK");
    EXPECT_TRUE(v.cmdPrint.Usable());
    EXPECT_EQ(v.GrpNo, 0);
    EXPECT_EQ(v.WinNo, 0);
    EXPECT_EQ(v.DispUnit, 0);
}

TEST(PeakReport, TheButtonOpensItToo) {
    Reported w;
    EXPECT_TRUE(Click(frmVaelAna.cmdOperation[10]));
    EXPECT_TRUE(v.Visible);
}

TEST(PeakReport, ListsEveryPeakInTheUnitOfTheAxis) {
    Reported w;
    Pick(frmVaelAna.cboUnitX, 1);
    w.Report();
    ASSERT_EQ(v.sprPeakInf.Rows(), 3);
    ASSERT_EQ(v.sprPeakInf.Columns(), 9);
    EXPECT_EQ(w.Cell(0, 2), "2");
    EXPECT_EQ(w.Cell(V::CHANNEL, 0), "Peak(Ch)");
    EXPECT_EQ(w.Cell(V::POSITION, 0), "Peak(keV)");
    EXPECT_EQ(w.Cell(V::WIDTH, 0), "FWHM(keV)");
    EXPECT_EQ(w.Cell(V::GAUSS, 0), "Gauss(%)");
    EXPECT_EQ(w.Cell(V::CHANNEL, 2), "1000.5000");
    EXPECT_EQ(w.Cell(V::POSITION, 2), "30.0650");  // 0.05 + 0.03 * 1000.5
    EXPECT_EQ(w.Cell(V::INTENSITY, 2), "12345.67");
    EXPECT_EQ(w.Cell(V::WIDTH_CH, 2), "10.00");
    EXPECT_EQ(w.Cell(V::WIDTH, 2), "0.300");
    EXPECT_EQ(w.Cell(V::AMPLITUDE, 2), "4000.00");
    EXPECT_EQ(w.Cell(V::GAUSS, 2), "100.0");
    EXPECT_EQ(w.Cell(V::TYPE, 2), "N");
}

TEST(PeakReport, FollowsUnitAndCalibrationWhileItIsOpen) {
    Reported w;
    w.Report();
    EXPECT_EQ(w.Cell(V::POSITION, 1), "500.2500");
    Pick(frmVaelAna.cboUnitX, 1);
    EXPECT_EQ(w.Cell(V::POSITION, 0), "Peak(keV)");
    EXPECT_EQ(w.Cell(V::POSITION, 1), "15.0575");  // 0.05 + 0.03 * 500.25
    store.DefaultParam.EgcCoef = {0.0, 1.0, 0.0};
    Click(frmVaelAna.optEGC[0]);
    EXPECT_EQ(w.Cell(V::POSITION, 1), "500.2500");
    Pick(frmVaelAna.cboUnitX, 6);
    EXPECT_EQ(w.Cell(V::POSITION, 0), "Peak(Ch)") << "this spectrum has no angle axis";
}

TEST(PeakReport, AnEmptyRowHasNone) {
    Plotted w;
    Click(frmVaelAna.mnuPeakReport);
    EXPECT_FALSE(v.Visible);
    EXPECT_EQ(frmVaelAna.lblStatus.Caption, "There is no spectrum in this row.");
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(PeakReport, StandsOnThePeakAtTheCursor) {
    Reported w;
    CsrX_Change(1000);
    w.Report();
    EXPECT_EQ(v.sprPeakInf.Row, 2);
    Click(v.cmdRepEnd);
    CsrX_Change(1500);
    w.Report();
    EXPECT_EQ(v.sprPeakInf.Row, 0);
}

TEST(PeakReport, APressOnARowMovesTheCursorToThatPeak) {
    Reported w;
    w.Report();
    Press(v.sprPeakInf, V::AMPLITUDE, 3);
    EXPECT_EQ(CursorCh(), 1999);
    Press(v.sprPeakInf, V::TYPE, 2);
    EXPECT_EQ(CursorCh(), 1000) << "999.5, to the even neighbour";
    Press(v.sprPeakInf, V::CHANNEL, 0);
    EXPECT_EQ(CursorCh(), 1000) << "the head is no peak";
}

// --- editing -----------

TEST(PeakReport, AnEditedCellGoesIntoTheRecord) {
    Reported w;
    w.Report();
    EXPECT_TRUE(w.TypeCell(V::CHANNEL, 2, "1010.75"));
    EXPECT_EQ(w.Peaks().Peak[1].Position, 1009.75);
    EXPECT_TRUE(w.TypeCell(V::WIDTH_CH, 2, "8"));
    EXPECT_EQ(w.Peaks().Peak[1].Width, 4.0);
    EXPECT_TRUE(w.TypeCell(V::AMPLITUDE, 2, " 2500.5 "));
    EXPECT_EQ(w.Peaks().Peak[1].Amplitude, 2500.5);
    EXPECT_TRUE(w.TypeCell(V::GAUSS, 2, "75"));
    EXPECT_EQ(w.Peaks().Peak[1].GaussRatio, 0.75);
    EXPECT_EQ(w.Cell(V::CHANNEL, 2), "1010.7500");
    EXPECT_EQ(w.Cell(V::WIDTH_CH, 2), "8.00");
    EXPECT_EQ(w.Cell(V::AMPLITUDE, 2), "2500.50");
    EXPECT_EQ(w.Cell(V::GAUSS, 2), "75.0");
    EXPECT_EQ(w.Peaks().Peak[0].Position, 499.25);
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(PeakReport, TheAreaIsThatOfTheEditedShape) {
    Reported w;
    w.Report();
    w.TypeCell(V::AMPLITUDE, 2, "1000");
    // A Gaussian of half width 5: height * 5 * sqrt(pi / ln 2), summed channel by channel.
    EXPECT_NEAR(w.Peaks().Peak[1].Intensity, 1000.0 * 5.0 * std::sqrt(3.14159265 / std::log(2.0)),
                0.01);
}

TEST(PeakReport, TheOtherCellsAreNotTypedOver) {
    Reported w;
    w.Report();
    const PeakTable before = w.Peaks();
    for (const int column : {V::POSITION, V::INTENSITY, V::WIDTH, V::WIDTH_D, V::TYPE})
        EXPECT_FALSE(w.TypeCell(column, 1, "77")) << column;
    EXPECT_TRUE(w.Peaks() == before);
}

TEST(PeakReport, ATextThatIsNoNumberSpringsBack) {
    Reported w;
    w.Report();
    const PeakTable before = w.Peaks();
    w.TypeCell(V::CHANNEL, 1, "wide");
    EXPECT_EQ(w.Cell(V::CHANNEL, 1), "500.2500");
    EXPECT_EQ(w.Status(), "\"wide\" is no number: the peak stays as it was.");
    w.TypeCell(V::AMPLITUDE, 1, "");
    EXPECT_EQ(w.Cell(V::AMPLITUDE, 1), "4000.00");
    EXPECT_TRUE(w.Peaks() == before);
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(PeakReport, SenselessValuesAreRefusedWithASentence) {
    Reported w;
    w.Report();
    const PeakTable before = w.Peaks();
    const auto refused = [&](int column, const char* text) {
        TellStatus({});
        w.TypeCell(column, 1, text);
        EXPECT_TRUE(w.Peaks() == before) << column << " took " << text;
        EXPECT_NE(w.Status(), "") << column << " " << text;
    };
    for (const char* text : {"0.99", "0", "-5", "4096.001", "1e300", "1"})
        refused(V::CHANNEL, text);
    for (const char* text : {"0", "-1", "4097"}) refused(V::WIDTH_CH, text);
    for (const char* text : {"-0.1", "100.1"}) refused(V::GAUSS, text);
    for (const char* text : {"3e9", "-1e300"}) refused(V::AMPLITUDE, text);
    EXPECT_EQ(w.Cell(V::GAUSS, 1), "100.0");
    w.TypeCell(V::CHANNEL, 1, "1");
    EXPECT_EQ(w.Status(),
              "A peak cannot stand exactly at channel 1: that marks an empty line. The peak stays "
              "as it was.");
    // The ends themselves are taken.
    w.TypeCell(V::CHANNEL, 3, "4096");
    EXPECT_EQ(w.Peaks().Peak[2].Position, 4095.0);
    w.TypeCell(V::GAUSS, 1, "0");
    EXPECT_EQ(w.Peaks().Peak[0].GaussRatio, 0.0);
}

TEST(PeakReport, ATextThatNobodyChangedKeepsAllDigitsOfTheRecord) {
    Reported w;
    w.Peaks().Peak[0].Position = 499.250012345;
    w.Report();
    w.TypeCell(V::CHANNEL, 1, "500.2500");
    EXPECT_EQ(w.Peaks().Peak[0].Position, 499.250012345);
}

TEST(PeakReport, TheOrderOfTheRowsStaysAsItIs) {
    Reported w;
    w.Report();
    w.TypeCell(V::CHANNEL, 1, "3000");
    EXPECT_EQ(w.Peaks().Peak[0].Position, 2999.0);
    EXPECT_EQ(w.Peaks().Peak[1].Position, 999.5);
    EXPECT_EQ(w.Cell(V::CHANNEL, 1), "3000.0000");
}

TEST(PeakReport, DeleteRemovesTheCurrentRow) {
    Reported w;
    w.Report();
    Press(v.sprPeakInf, V::CHANNEL, 2);
    EXPECT_TRUE(w.DeleteKey());
    ASSERT_EQ(w.Peaks().PeakNum, 2);
    EXPECT_EQ(w.Peaks().Peak[1].Position, 1999.0);
    EXPECT_EQ(v.sprPeakInf.Rows(), 2);
    EXPECT_EQ(v.lblGraph.Caption, "1  gold.npd, 2 peaks");
    EXPECT_EQ(v.sprPeakInf.Row, 2);
    EXPECT_TRUE(w.DeleteKey());
    EXPECT_EQ(v.sprPeakInf.Row, 1) << "the last one, when there are fewer";
    EXPECT_TRUE(w.DeleteKey());
    EXPECT_TRUE(w.DeleteKey()) << "nothing is left to remove";
    EXPECT_EQ(w.Peaks().PeakNum, 0);
    EXPECT_EQ(v.sprPeakInf.Rows(), 0);
    EXPECT_EQ(w.Status(), "There is no peak to remove.");
    EXPECT_FALSE(Key(v, {.Key = Name::Delete, .Ctrl = true})) << "that key is the main view's";
    EXPECT_TRUE(w.Desk.Faults.empty());
}

// --- the curve -----------

TEST(PeakReport, SetRebuildsTheCurveWithoutTheDeletedPeak) {
    Reported w;
    w.Report();
    Click(v.cmdPkSet);
    EXPECT_EQ(RowOfName(NAME_FIT), 0);
    EXPECT_EQ(w.CurveAt(1999), 4000);
    EXPECT_EQ(w.CurveAt(1500), 0);
    Press(v.sprPeakInf, V::CHANNEL, 3);
    w.DeleteKey();
    EXPECT_EQ(w.CurveAt(1999), 4000) << "not before SET";
    Click(v.cmdPkSet);
    EXPECT_EQ(w.CurveAt(1999), 0);
    EXPECT_GT(w.CurveAt(999), 3900);
    EXPECT_EQ(store.GraphTotal, 2) << "the same fit graph again";
    EXPECT_EQ(w.Status(), "The curve of 2 peaks is drawn in row 1.");
}

TEST(PeakReport, SetKeepsTheCurrentRowCurrentThoughRowsMove) {
    Reported w;
    w.Report();
    Click(v.cmdPkSet);
    EXPECT_EQ(GraphNo(), 1);
    EXPECT_EQ(DataNo(), 0);
    EXPECT_EQ(v.GrpNo, 1) << "the report follows its slot";
    EXPECT_EQ(v.lblGraph.Caption, "2  gold.npd, 3 peaks");
    EXPECT_EQ(frmVaelAna.Caption, "Vael (Data Analyze) --- gold.npd");
    w.TypeCell(V::AMPLITUDE, 1, "1000");
    Click(v.cmdPkSet);
    EXPECT_EQ(DataNo(), 0);
}

TEST(PeakReport, SetOnAFitGraphRewritesItInPlace) {
    Reported w;
    w.Report();
    Click(v.cmdPkSet);
    Click(v.cmdRepEnd);
    Pick(frmVaelAna.cboGrphSel[0], 0);
    const int fit = DataNo();
    ASSERT_NE(fit, 0);
    w.Report();
    EXPECT_EQ(v.Slot, fit);
    w.TypeCell(V::AMPLITUDE, 3, "1500");
    Click(v.cmdPkSet);
    EXPECT_EQ(store.GraphTotal, 2);
    EXPECT_EQ(w.CurveAt(1999), 1500);
    EXPECT_EQ(DataNo(), fit);
    EXPECT_EQ(w.Peaks().Peak[2].Amplitude, 4000.0) << "each slot has its table";
}

TEST(PeakReport, SetTellsWhereThereIsNoRoomForARow) {
    Reported w;
    std::vector<std::string> paths;
    for (int i = 0; i < 10; ++i) paths.push_back(w.Spectrum("s" + std::to_string(i) + ".npd", 64));
    w.Open(paths);
    Pick(frmVaelAna.cboGrphSel[0], 0);
    w.AddPeakAt(DataNo(), 30.0);
    w.Report();
    w.Desk.ExpectQuestion("ShiftGraph: List Over!");
    Click(v.cmdPkSet);
    EXPECT_EQ(w.Status(), "The curve was not drawn: there is no room for another row.");
    EXPECT_EQ(store.GraphTotal, 10);
}

// --- ways out -----------

TEST(PeakReport, CancelPutsTheTableBackAsItWasWhenOpened) {
    Reported w;
    const PeakTable before = w.Peaks();
    w.Report();
    w.TypeCell(V::CHANNEL, 1, "600");
    Press(v.sprPeakInf, V::CHANNEL, 2);
    w.DeleteKey();
    Click(v.cmdCancel);
    EXPECT_FALSE(v.Visible);
    EXPECT_TRUE(w.Peaks() == before);
    EXPECT_EQ(RowOfName(NAME_FIT), -1) << "no curve was drawn, none is";
}

TEST(PeakReport, CancelTakesBackTheCurveThatSetDrew) {
    Reported w;
    const PeakTable before = w.Peaks();
    w.Report();
    w.TypeCell(V::AMPLITUDE, 3, "1500");
    Click(v.cmdPkSet);
    ASSERT_EQ(w.CurveAt(1999), 1500);
    Click(v.cmdCancel);
    EXPECT_TRUE(w.Peaks() == before);
    EXPECT_EQ(w.CurveAt(1999), 4000);
}

TEST(PeakReport, OkKeepsTheEdits) {
    Reported w;
    w.Report();
    w.TypeCell(V::AMPLITUDE, 3, "1500");
    Click(v.cmdRepEnd);
    EXPECT_FALSE(v.Visible);
    EXPECT_EQ(w.Peaks().Peak[2].Amplitude, 1500.0);
    w.Report();
    Click(v.cmdCancel);
    EXPECT_EQ(w.Peaks().Peak[2].Amplitude, 1500.0) << "opened anew: what was kept is kept";
}

TEST(PeakReport, EscapeIsCancelAndEnterIsNoKeyOfTheView) {
    Reported w;
    w.Report();
    w.TypeCell(V::AMPLITUDE, 3, "1500");
    EXPECT_FALSE(Key(v, {.Key = Name::Enter}));
    EXPECT_TRUE(v.Visible);
    EXPECT_TRUE(Key(v, {.Key = Name::Escape}));
    EXPECT_FALSE(v.Visible);
    EXPECT_EQ(w.Peaks().Peak[2].Amplitude, 4000.0);
}

TEST(PeakReport, CancelGoesBackToWhatAnotherCommandLeft) {
    Reported w;
    w.Report();
    w.TypeCell(V::AMPLITUDE, 3, "1500");
    Click(frmVaelAna.cmdOperation[7]);  // the area over the whole axis
    w.Desk.ExpectQuestion("It will deletes peaks in the range of the area cursor", Answer::Yes);
    Click(frmVaelAna.cmdOperation[4]);
    EXPECT_EQ(w.Peaks().PeakNum, 0);
    EXPECT_EQ(v.sprPeakInf.Rows(), 0) << "the list follows";
    Click(v.cmdCancel);
    EXPECT_EQ(w.Peaks().PeakNum, 0) << "that command is not the report's to take back";
}

TEST(PeakReport, ItFollowsItsSlotAndClosesWithIt) {
    Reported w;
    w.Report();
    Click(frmVaelAna.mnuSmooth);  // a row before it, which becomes the current one
    EXPECT_TRUE(v.Visible);
    EXPECT_EQ(v.GrpNo, 1);
    EXPECT_EQ(v.Slot, 0);
    EXPECT_EQ(v.sprPeakInf.Rows(), 3);
    w.TypeCell(V::AMPLITUDE, 1, "900");
    EXPECT_EQ(w.Peaks(0).Peak[0].Amplitude, 900.0);
    DeleteGraph(0);
    EXPECT_TRUE(v.Visible);
    EXPECT_EQ(v.GrpNo, 0);
    DeleteGraph(0);
    EXPECT_FALSE(v.Visible);
}

TEST(PeakReport, OpeningOtherSpectraClosesIt) {
    Reported w;
    w.Report();
    w.Open({w.Spectrum("other.npd")});
    EXPECT_FALSE(v.Visible) << "slot 0 is another spectrum's now";
}

TEST(PeakReport, OpenedForAnotherRowItKeepsTheEditsOfTheFirst) {
    Reported w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    w.AddPeakAt(0, 100.0);
    w.AddPeakAt(1, 200.0);
    Pick(frmVaelAna.cboGrphSel[0], 0);
    w.Report();
    w.TypeCell(V::AMPLITUDE, 1, "700");
    Pick(frmVaelAna.cboGrphSel[0], 1);
    EXPECT_EQ(v.Slot, 0) << "another current row does not take it along";
    w.Report();
    EXPECT_EQ(v.Slot, 1);
    EXPECT_EQ(w.Cell(V::CHANNEL, 1), "201.0000");
    Click(v.cmdCancel);
    EXPECT_EQ(w.Peaks(0).Peak[0].Amplitude, 700.0);
}

// --- the file -----------

TEST(PeakReport, SavesTheListLetterByLetter) {
    Reported w;
    w.Peaks().Peak[1].Fitted = 1;
    w.Peaks().Peak[1].GaussRatio = 0.625;
    store.PropertyRecords[0].Param.TwoTheta = 60.0;  // d = 12.3981 / E
    Pick(frmVaelAna.cboUnitX, 1);
    w.Report();
    const std::string path = w.Folder.Path("out.csv");
    w.Desk.SaveAs(path);
    Click(v.cmdSave);
    // d at half height: E = 0.05 + 0.03 x at x - 5 and x + 5.
    EXPECT_EQ(BytesOf(path),
              "Peak(Ch),Peak(keV),Intensity,FWHM(Ch),FWHM(keV),FWHM(d),Amplitude,Gauss(%),Type\r\n"
              "500.2500,15.0575,4000.00,10.00,0.300,0.0164,12345.67,100.0,N\r\n"
              "1000.5000,30.0650,4000.00,10.00,0.300,0.0041,12345.67,62.5,E\r\n"
              "2000.0000,60.0500,4000.00,10.00,0.300,0.0010,12345.67,100.0,N\r\n");
    ASSERT_EQ(w.Desk.SaveDialogs.size(), 1U);
    EXPECT_EQ(w.Desk.SaveDialogs[0].Filter, "Result File (*.csv)|*.csv");
    EXPECT_EQ(w.Desk.SaveDialogs[0].Name, "gold_Raw_FitParam.csv");
    EXPECT_EQ(w.Status(), "Saved 3 peaks as " + path + ".");
}

TEST(PeakReport, AnEmptyTableSavesOnlyTheHeader) {
    Plotted w;
    w.Open({w.Spectrum("gold.npd")});
    Click(frmVaelAna.mnuPeakReport);
    w.Desk.SaveAs(w.Folder.Path("out.csv"));
    Click(v.cmdSave);
    EXPECT_EQ(BytesOf(w.Folder.Path("out.csv")),
              "Peak(Ch),Peak(Ch),Intensity,FWHM(Ch),FWHM(Ch),FWHM(d),Amplitude,Gauss(%),Type\r\n");
}

TEST(PeakReport, TheProposedNameSaysTheKindOfTheRow) {
    Reported w;
    Click(frmVaelAna.mnuSmooth);
    Click(frmVaelAna.cmdOperation[10]);
    w.Desk.CancelSave();
    Click(v.cmdSave);
    EXPECT_EQ(w.Desk.SaveDialogs[0].Name, "gold_Smooth_FitParam.csv");
    store.PropertyRecords[static_cast<std::size_t>(v.Slot)].FileName = "";
    w.Desk.CancelSave();
    Click(v.cmdSave);
    EXPECT_EQ(w.Desk.SaveDialogs[1].Name, "gold_Smooth_FitParam.csv") << "from the row of the file";
}

TEST(PeakReport, AFileThatCannotBeWrittenIsToldAndNothingIsDamaged) {
    Reported w;
    w.Report();
    w.Desk.SaveAs("/dev/full");
    w.Desk.ExpectQuestion("File Write Error");
    Click(v.cmdSave);
    EXPECT_TRUE(frmVaelAna.StatusFault);
    EXPECT_NE(frmLog.txtMessage.Text.find("/dev/full: "), std::string::npos);
    EXPECT_TRUE(v.Visible);

    std::filesystem::create_directory(w.Folder.Path("taken.csv"));
    w.Desk.SaveAs(w.Folder.Path("taken.csv"));
    w.Desk.ExpectQuestion("File Write Error");
    Click(v.cmdSave);
    EXPECT_TRUE(std::filesystem::is_directory(w.Folder.Path("taken.csv")));
    EXPECT_TRUE(std::filesystem::is_empty(w.Folder.Path("taken.csv")));
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(PeakReport, AFileThatIsThereIsReplacedWhole) {
    Reported w;
    w.Report();
    const std::string path = w.Folder.Write("out.csv", std::string(5000, 'x'));
    w.Desk.SaveAs(path);
    Click(v.cmdSave);
    EXPECT_EQ(BytesOf(path).find('x'), std::string::npos);
    EXPECT_TRUE(BytesOf(path).ends_with(",N\r\n"));
}
