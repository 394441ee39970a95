// A DAC spectrum in the main view: its angle axis, the cursor boxes, the memo, the unit "2q".
#include "support/plotted.h"
#include "support/recordingcanvas.h"

#include "analysis/frmsetting.h"
#include "core/cursors.h"
#include "core/frmlog.h"
#include "core/graphs.h"
#include "core/units.h"
#include "files/filevael.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <numbers>

using namespace vael;

namespace {

VaelAnaView& V() { return frmVaelAna; }

std::string Text(double value, const char* format) {
    char text[40];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

struct Dac : Plotted {
    /// Counts 10, 11, ... at 2 theta = offset + slope * i degrees.
    std::string Raw(const std::string& name, double offset = 2.0, double slope = 0.01,
                    const std::string& end = "\r\n", int pairs = 4096) {
        std::string text;
        for (int i = 0; i < pairs; ++i)
            text += Text(offset + slope * i, "%.6f") + "," + std::to_string(10 + i) + end;
        return Folder.Write(name, text);
    }
    /// d by the law of Bragg at a 2 theta in degrees, in the boxes' four decimals.
    static std::string D(double twoTheta, double lambda = 0.49576) {
        return Text(lambda / (2.0 * std::sin(twoTheta / 360.0 * std::numbers::pi)), "%.4f");
    }
    static std::string Boxes() {
        std::string out;
        for (const auto& box : V().inumCursorDisp) out += box.Text() + " ";
        return out;
    }
};

}  // namespace

TEST(Dac, AFileThatIsOpenedSetsTheAxisAndTheBoxesShowItsView) {
    Dac w;
    store.PropertyRecords[0].Param.EgcCoef = {1.0, 2.0, 0.0};  // of an older graph in the slot
    store.PropertyRecords[0].Param.TwoTheta = 15.0;
    w.Open({w.Raw("a.raw")});
    EXPECT_EQ(store.GraphList[0].Name, "a.raw");
    EXPECT_EQ(store.PropertyRecords[0].SourceType, SOURCE_DAC);
    EXPECT_EQ(store.LastSourceType, SOURCE_DAC);
    EXPECT_EQ(store.DacOffset, 2.0);
    EXPECT_NEAR(store.DacSlope, 0.01, 1e-12);
    EXPECT_EQ(store.SpectrumDatas[0].DataNo, 4096);
    EXPECT_EQ(store.PropertyRecords[0].Param.EgcCoef[1], 2.0) << "the calibration stays";
    CsrX_Change(100);
    EXPECT_EQ(Dac::Boxes(), "101 0.000 " + Dac::D(3.0) + " 0.0000 " + Dac::D(3.0) + " ")
        << "no energy, no Q, and d through the angle";
    EXPECT_EQ(V().inumCursorCnt[0].Value, 110);
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(Dac, TheBoxesFollowTheKindOfTheCurrentRow) {
    Dac w;
    w.Open({w.Raw("a.raw"), w.Spectrum("b.npd")});
    ASSERT_EQ(GraphNo(), 1);
    CsrX_Change(100);
    EXPECT_EQ(V().inumCursorDisp[1].Text(), "3.080") << "0.05 + 0.03 * 101 keV";
    EXPECT_EQ(V().inumCursorDisp[4].Text(), "0.0000") << "no angle";
    Pick(V().cboGrphSel[0], 0);
    EXPECT_EQ(V().inumCursorDisp[1].Text(), "0.000");
    EXPECT_EQ(V().inumCursorDisp[4].Text(), Dac::D(3.0));
    Click(V().mnuSmooth);
    ASSERT_EQ(store.GraphList[0].Name, "Smooth");
    Pick(V().cboGrphSel[0], 0);
    EXPECT_EQ(V().inumCursorDisp[4].Text(), Dac::D(3.0)) << "a derived row is of the same kind";
}

TEST(Dac, TheDefaultCalibrationGivesItNoEnergyEither) {
    Dac w;
    w.Open({w.Raw("a.raw")});
    store.DefaultParam.EgcCoef = {1.0, 2.0, 0.0};
    store.DefaultParam.TwoTheta = 15.0;
    Click(V().optEGC[0]);
    CsrX_Change(100);
    EXPECT_EQ(Dac::Boxes(), "101 0.000 " + Dac::D(3.0) + " 0.0000 " + Dac::D(3.0) + " ");
}

TEST(Dac, TheUnitOfTheAngleIsOnItsAxisAndOnNoOther) {
    Dac w;
    w.Open({w.Spectrum("b.npd"), w.Raw("a.raw")});
    test::RecordingSurface strip;
    V().picSubScale.PutOn(&strip);
    const auto labels = [&] {
        strip.Strokes.clear();
        XScaleDraw();
        std::vector<std::string> out;
        for (const auto& stroke : strip.Strokes)
            if (stroke.What == test::Drawn::Kind::Text) out.push_back(stroke.Words);
        return out;
    };
    Pick(V().cboUnitX, 6);
    EXPECT_EQ(labels(), (std::vector<std::string>{Dac::D(2.0), Dac::D(12.24), Dac::D(22.48),
                                                  Dac::D(32.72), Dac::D(42.95)}));
    EXPECT_EQ(V().inumScaleX.Value, 1.0) << "a width in this unit is 1";
    Pick(V().cboGrphSel[0], 0);
    EXPECT_EQ(labels(), (std::vector<std::string>{"1", "1025", "2049", "3073", "4096"}));
    V().picSubScale.PutOn(nullptr);
}

TEST(Dac, TheMemoTellsItsPositionInTheUnitOfTheAxis) {
    Dac w;
    w.Open({w.Raw("a.raw")});
    w.AddPeakAt(0, 1000.0, 5.5, 4321.0);
    Pick(V().cboUnitX, 6);
    DoubleClick(w.Plot(0), w.PixelOf(0, 1000), 40);
    ASSERT_TRUE(V().fraMemo[0].Visible);
    const double d = 0.49576 / (2.0 * std::sin(6.0 / 180.0 * std::numbers::pi));
    EXPECT_EQ(V().lblMemo[0].Caption,
              "=" + Text(d, "%.3f") + "2q\rFWHM=1.0002q\rVal=4321.0\rNet=12345.7");
}

TEST(Dac, AnAxisThatBeginsAtTheAngleZeroIsDrawnAndReadOut) {
    Dac w;
    w.Open({w.Raw("a.raw", 0.0)});
    CsrX_Change(0);
    EXPECT_EQ(Dac::Boxes(), "1 0.000 0.0000 0.0000 0.0000 ") << "there is no d at this angle";
    const auto painted = V().picSubScale.Painted;
    Pick(V().cboUnitX, 6);
    EXPECT_GT(V().picSubScale.Painted, painted);
    CsrX_Change(100);
    EXPECT_EQ(V().inumCursorDisp[4].Text(), Dac::D(1.0));
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(Dac, ANewLambdaIsSeenAtOnce) {
    Dac w;
    w.Open({w.Raw("a.raw")});
    CsrX_Change(100);
    w.Desk.OnModal([](View& view) {
        ASSERT_EQ(&view, &frmSetting);
        Type(frmSetting.txtLambda, "0.31");
        Click(frmSetting.cmdOk);
    });
    Click(V().mnuSetCons);
    EXPECT_EQ(V().inumCursorDisp[2].Text(), Dac::D(3.0, 0.31));
    EXPECT_EQ(V().inumCursorDisp[4].Text(), Dac::D(3.0, 0.31));
}

TEST(Dac, ALaterFileMovesTheAxisOfAllAndABrokenOneDoesNot) {
    Dac w;
    w.Open({w.Raw("a.raw"), w.Raw("b.raw", 5.0, 0.02)});
    EXPECT_EQ(store.DacOffset, 5.0);
    CsrX_Change(100);
    Pick(V().cboGrphSel[0], 0);
    EXPECT_EQ(V().inumCursorDisp[4].Text(), Dac::D(7.0)) << "there is one axis";
    w.Open({w.Raw("a.raw"), w.Folder.Write("bad.raw", "9,1\r\n9.5,2\r\n10,x\r\n")});
    EXPECT_EQ(store.DacOffset, 2.0);
    EXPECT_NEAR(store.DacSlope, 0.01, 1e-12);
    EXPECT_NE(frmLog.txtMessage.Text.find("bad.raw: line 3: a count of 32 bits was expected"),
              std::string::npos);
    EXPECT_NE(V().lblStatus.Caption.find("Not read: bad.raw"), std::string::npos);
}

TEST(Dac, WithBareLineFeedsTheRowHasTheSlotsCountAndTheLogSaysSo) {
    Dac w;
    w.Open({w.Spectrum("b.npd", 300)});
    w.Open({w.Raw("a.raw", 2.0, 0.01, "\n", 200)});
    EXPECT_EQ(store.SpectrumDatas[0].DataNo, 300) << "of the graph that stood in the slot";
    EXPECT_EQ(store.SpectrumDatas[0].Count[199], 209);
    EXPECT_NE(frmLog.txtMessage.Text.find("the channel count stays 300, as the slot had it"),
              std::string::npos);
}

TEST(Genie, AReportIsSavedAndOpenedFromTheWindow) {
    Dac w;
    w.Open({w.Spectrum("b.npd", 300)});
    const SpectrumData before = store.SpectrumDatas[0];
    w.Desk.SaveAs(w.Folder.Path("b.rpt"), 2);
    Click(V().mnuSave);
    EXPECT_EQ(BytesOf(w.Folder.Path("b.rpt")).substr(0, 7), "  300\r\n");
    w.Open({w.Folder.Path("b.rpt")});
    EXPECT_EQ(store.GraphList[0].Name, "b.rpt");
    EXPECT_EQ(store.PropertyRecords[0].SourceType, SOURCE_REPORT);
    EXPECT_EQ(store.SpectrumDatas[0].DataNo, 300);
    EXPECT_EQ(store.SpectrumDatas[0].Count, before.Count);
    EXPECT_EQ(V().inumCursorDisp[4].Text(), "0.0000");
}

TEST(Genie, ACnfThatCannotBeReadSaysSoInABox) {
    Dac w;
    w.Desk.ExpectQuestion("File Error");
    w.Open({w.Folder.Write("short.cnf", "too short")});
    EXPECT_EQ(store.GraphList[0].State, 0);
    w.Desk.ExpectQuestion("Fine NotFound");
    w.Open({w.Folder.Path("none.cnf")});
    EXPECT_EQ(store.GraphList[0].State, 0);
    EXPECT_NE(frmLog.txtMessage.Text.find("short.cnf: offset 9: the file ends"), std::string::npos);
    EXPECT_NE(frmLog.txtMessage.Text.find("none.cnf: there is no such file"), std::string::npos);
}
