// Start-up, the two files kept between runs, and the orderly end.
#include "support/world.h"

#include "core/fault.h"
#include "core/graphs.h"
#include "core/windows.h"
#include "files/packed.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace vael;

namespace {

/// The parameter file written by hand: header, 584 bytes of parameters, 41 colours, the display
/// block, five words.
std::string SystemFile(double a, double b, double c, double twoTheta) {
    std::string param(584, '\0');
    const double values[4] = {a, b, c, twoTheta};
    std::memcpy(param.data() + (1434 - 1404), values, sizeof values);
    std::string file = "zz" + param;
    for (int n = 0; n < 41; ++n) file += std::string({static_cast<char>(n), 1, 2, 0});
    file += std::string(64, 'd');
    const std::int16_t words[5] = {3, 2, 15, 40, 7};
    file += std::string(reinterpret_cast<const char*>(words), sizeof words);
    return file;
}

}  // namespace

TEST(Start, FirstRunWithoutFilesHasTheDialogsSettingsAndWritesBothAtExit) {
    World world;
    EXPECT_EQ(settings.FuncType, 1);
    EXPECT_EQ(settings.SmoothIndex, 0);
    EXPECT_EQ(settings.PeakThres, 10);
    EXPECT_EQ(settings.BackInterval, 20);
    EXPECT_EQ(settings.BackTimes, 5);
    EXPECT_EQ(settings.EACPS, 0.2);
    EXPECT_EQ(store.DefaultParam.EgcCoef[1], 0.0) << "the calibration stays zero";
    EXPECT_NE(store.ColorTable[0], 0);
    EXPECT_EQ(store.UseFileEgc, 1);
    EXPECT_TRUE(frmVaelAna.optEGC[1].Value);
    EXPECT_EQ(store.SpanCh, 4096);
    EXPECT_FALSE(frmVaelAna.mnuMcaStop.Enabled);
    EXPECT_FALSE(frmVaelAna.mnuRoiEnd.Enabled);
    EXPECT_FALSE(frmVaelAna.fraMemo[0].Visible);
    EXPECT_EQ(frmVaelAna.lblDispUnit[2].Caption, "d:A");
    EXPECT_EQ(frmVaelAna.inumCursorDisp[1].Format, "##0.000");
    EXPECT_EQ(frmVaelAna.cboGrphSel[0].Items.size(), 10u);
    EXPECT_EQ(frmVaelAna.ckbVtAuto.Value, 1);
    EXPECT_EQ(frmVaelAna.chkCsrType.Value, 1);
    EXPECT_EQ(frmVaelAna.itxtScaleY.Items[0], "LOG");
    EXPECT_EQ(frmVaelAna.itxtScaleY.Items[1], "10000000");

    Click(frmVaelAna.mnuExit);
    EXPECT_TRUE(world.Desk.HasQuit);
    EXPECT_EQ(BytesOf(world.Folder.Path("VaelAna.ini")),
              "0.20\r\n20.00\r\n0.495760\r\n0\r\n0.0300\r\n1\r\n");
    EXPECT_EQ(BytesOf(world.Folder.Path("syspara_a.xpr")).size(), 2u + 584 + 164 + 64 + 10);
}

TEST(Start, BothWindowsShowTheWholeSpanAtTheLargestScale) {
    World world;
    const VaelAnaView& v = frmVaelAna;
    EXPECT_EQ(v.ActiveWin, 0);
    EXPECT_EQ(v.UnitX, 0);
    EXPECT_EQ(v.cboUnitX.Index, 0);
    EXPECT_EQ(v.imnSpanCh.Value, 4096);
    EXPECT_EQ(v.inumScaleX.Value, 4096);
    EXPECT_EQ(v.hsbStartX.Value, 0);
    EXPECT_EQ(v.hsbStartX.Most, 0);
    EXPECT_EQ(v.itxtScaleY.Index, 1) << "its second value is shown";
    for (int win = 0; win < WINDOW_COUNT; ++win) {
        EXPECT_EQ(YFullScale(win), 10000000);
        EXPECT_EQ(Engine().Target(win).YTop, 10000000);
        EXPECT_EQ(Engine().Target(win).XStart, 0);
        EXPECT_EQ(Engine().Target(win).XEnd, 4095);
        EXPECT_EQ(Engine().Target(win).BackColor,
                  store.ColorTable[static_cast<std::size_t>(21 + win)]);
        EXPECT_EQ(v.cboGrphSel[static_cast<std::size_t>(win)].Index, 0);
        EXPECT_FALSE(v.chkFilePile[static_cast<std::size_t>(win)].Enabled);
    }
    EXPECT_TRUE(v.fraGraph[0].Raised);
    const char* const units[] = {"Ch", "keV", "d:A", "QA", "2q"};
    const char* const formats[] = {"####", "##0.000", "0.0000", "0.0000", "0.0000"};
    for (std::size_t k = 0; k < 5; ++k) {
        EXPECT_EQ(v.lblDispUnit[k].Caption, units[k]);
        EXPECT_EQ(v.inumCursorDisp[k].Format, formats[k]);
    }
}

TEST(Start, ReadsBothFilesOfTheFormerRun) {
    World world;
    world.Folder.Write("syspara_a.xpr", SystemFile(0.5, 0.03, 1e-8, 15.25));
    world.Folder.Write("VaelAna.ini", "0.5\r\n30\r\n0.4\r\n3\r\n0.05\r\n0\r\n");
    store.FixedDefault = 0;  // start-up sets it before it reads
    Form_Load(world.Folder.Path());
    EXPECT_EQ(store.DefaultParam.EgcCoef[1], 0.03);
    EXPECT_EQ(store.PropertyRecords[0].Param.EgcCoef[1], 0.03) << "the first slot takes it";
    EXPECT_EQ(store.PropertyRecords[0].Param.TwoTheta, 15.25);
    EXPECT_EQ(store.PropertyRecords[1].Param.TwoTheta, 0.0) << "and no other";
    EXPECT_EQ(store.ColorTable[5], Rgb(5, 1, 2)) << "a table that is there is taken as it is";
    EXPECT_EQ(settings.BackInterval, 40);
    EXPECT_EQ(settings.EACPS, 0.5);
    EXPECT_EQ(settings.SmoothingOn, 0);
    EXPECT_EQ(store.FilterIndex, 3);
    EXPECT_EQ(store.FixedDefault, 1);
    EXPECT_EQ(store.DataFolder, std::filesystem::current_path().string() + "/");
}

TEST(Exit, UnloadsTheLogAndWritesTheSettingsInForce) {
    World world;
    PutLog("a line");
    settings.EACPS = 0.4;
    settings.BackTimes = 9;
    store.DefaultParam.TwoTheta = 6.5;
    store.FilterIndex = 2;
    Close(frmVaelAna);
    EXPECT_TRUE(world.Desk.HasQuit);
    EXPECT_EQ(frmLog.LineCount, 0);
    EXPECT_EQ(frmLog.txtMessage.Text, "");
    EXPECT_EQ(BytesOf(world.Folder.Path("VaelAna.ini")).substr(0, 6), "0.40\r\n");
    ParamRecord param{};
    settings.BackTimes = 1;
    store.FilterIndex = 0;
    ReadIni(world.Folder.Path("VaelAna.ini"));
    EXPECT_EQ(store.FilterIndex, 2);
    ASSERT_EQ(ReadSystemPara(world.Folder.Path("syspara_a.xpr"), param), -1);
    EXPECT_EQ(param.TwoTheta, 6.5);
    EXPECT_EQ(settings.BackTimes, 9);
}

TEST(SystemPara, ReadsABinaryFileWrittenByHandAndWritesItBackByteForByte) {
    World world;
    const std::string bytes = SystemFile(0.5, 0.03, 1e-8, 15.25);
    const std::string path = world.Folder.Write("syspara_a.xpr", bytes);
    ParamRecord param{};
    EXPECT_EQ(ReadSystemPara(path, param), -1);
    EXPECT_EQ(param.EgcCoef[0], 0.5);
    EXPECT_EQ(param.EgcCoef[1], 0.03);
    EXPECT_EQ(param.EgcCoef[2], 1e-8);
    EXPECT_EQ(param.TwoTheta, 15.25);
    EXPECT_EQ(store.ColorTable[5], Rgb(5, 1, 2));
    EXPECT_EQ(settings.FuncType, 3);
    EXPECT_EQ(settings.SmoothIndex, 2);
    EXPECT_EQ(settings.PeakThres, 15);
    EXPECT_EQ(settings.BackInterval, 40);
    EXPECT_EQ(settings.BackTimes, 7);
    EXPECT_EQ(WriteSystemPara(path, param), -1);
    EXPECT_EQ(BytesOf(path), "00" + bytes.substr(2))
        << "the header is not tested and written as 00";
}

TEST(SystemPara, ADamagedFileChangesNothing) {
    World world;
    ParamRecord param{};
    param.TwoTheta = 3.0;
    const auto colours = store.ColorTable;
    const std::string whole = SystemFile(1, 1, 1, 1);
    for (const std::size_t size :
         {std::size_t{0}, std::size_t{1}, std::size_t{300}, whole.size() - 1}) {
        const std::string path = world.Folder.Write("s", whole.substr(0, size));
        EXPECT_EQ(ReadSystemPara(path, param), 0) << size;
    }
    EXPECT_EQ(ReadSystemPara(world.Folder.Path("absent"), param), 0);
    EXPECT_EQ(ReadSystemPara(world.Folder.Path(), param), 0) << "a folder";
    EXPECT_EQ(param.TwoTheta, 3.0);
    EXPECT_EQ(store.ColorTable, colours);
    EXPECT_EQ(settings.FuncType, 1);
}

TEST(SystemPara, ASecondRecordIsThereOnlyWhenFixedDefaultIsZero) {
    World world;
    const std::string path = world.Folder.Path("s");
    store.FixedDefault = 0;
    ParamRecord param{};
    EXPECT_EQ(WriteSystemPara(path, param), -1);
    EXPECT_EQ(BytesOf(path).size(), 2u + 584 + 164 + 64 + 10 + 584);
    EXPECT_EQ(ReadSystemPara(path, param), -1);
    const std::string shorter = world.Folder.Write("t", SystemFile(1, 1, 1, 1));
    EXPECT_EQ(ReadSystemPara(shorter, param), 0);
    store.FixedDefault = 1;
    EXPECT_EQ(ReadSystemPara(shorter, param), -1);
    EXPECT_EQ(ReadSystemPara(path, param), -1) << "bytes behind are not looked at";
}

TEST(Ini, LinesCountAndABadValueResetsTheFiveSettings) {
    World world;
    const auto read = [&](const std::string& text) {
        settings = Settings{};
        settings.EACPS = 9;
        store.FilterIndex = 9;
        ReadIni(world.Folder.Write("i", text));
    };
    read("0.5\r\n30\r\n0.4\r\n3\r\n0.05\r\n0\r\n");
    EXPECT_EQ(settings.EACPS, 0.5);
    EXPECT_EQ(settings.ISPPK, 30);
    EXPECT_EQ(settings.Lambda, 0.4);
    EXPECT_EQ(store.FilterIndex, 3);
    EXPECT_EQ(settings.JudgeRange, 0.05);
    EXPECT_EQ(settings.SmoothingOn, 0);

    read("0.5\r\nx\r\n0.4\r\n3\r\n0.05\r\n0\r\n");
    EXPECT_EQ(settings.EACPS, 0.2) << "a bad line resets what came before";
    EXPECT_EQ(settings.ISPPK, 20.0);
    EXPECT_EQ(settings.Lambda, 0.4) << "later lines still override";
    EXPECT_EQ(settings.JudgeRange, 0.05);

    read("0.5\r\n30\r\n0.4\r\n3\r\n?\r\n0\r\n");
    EXPECT_EQ(settings.EACPS, 0.2);
    EXPECT_EQ(store.FilterIndex, 3) << "a bad line 5 does not reset the filter index";
    EXPECT_EQ(settings.SmoothingOn, 0);

    read("0.5\r\n30\r\n0.4\r\nabc\r\n0.05\r\nno\r\n");
    EXPECT_EQ(store.FilterIndex, 0) << "0 where line 4 is no number";
    EXPECT_EQ(settings.JudgeRange, 0.03);
    EXPECT_EQ(settings.SmoothingOn, 1);

    read("0.5\n30\n0.4\n3\n0.05\n");
    EXPECT_EQ(settings.EACPS, 0.2) << "too few lines give all defaults";
    EXPECT_EQ(store.FilterIndex, 0);
}

TEST(Ini, AnAbsentFileGivesTheDefaults) {
    World world;
    settings.EACPS = 3;
    ReadIni(world.Folder.Path("absent"));
    EXPECT_EQ(settings.EACPS, 0.2);
}

TEST(Ini, ValuesComeBackWithTheRoundingOfTheirFormats) {
    World world;
    settings.EACPS = 0.125;
    settings.ISPPK = 17.005;
    settings.Lambda = 0.1234564;
    settings.JudgeRange = 0.03125;
    const std::string path = world.Folder.Path("i");
    EXPECT_EQ(WriteIni(path), -1);
    ReadIni(path);
    EXPECT_EQ(settings.EACPS, 0.13);
    EXPECT_EQ(settings.ISPPK, 17.01);
    EXPECT_EQ(settings.Lambda, 0.123456);
    EXPECT_EQ(settings.JudgeRange, 0.0313);
}

TEST(Exit, CancelAtTheSecondOfTwoUnsavedGraphsLeavesEverything) {
    World world;
    for (std::size_t row : {1u, 3u}) {
        store.GraphList[row].State = 2;
        store.GraphList[row].Name = "x";
    }
    world.Desk.ExpectQuestion("File No Save.  Grp=2 (Do you Cansel?)", Answer::Yes);
    world.Desk.ExpectQuestion("File No Save.  Grp=4 (Do you Cansel?)", Answer::No);
    Close(frmVaelAna);
    EXPECT_FALSE(world.Desk.HasQuit);
    EXPECT_TRUE(frmVaelAna.Visible);
    EXPECT_EQ(store.GraphList[1].State, 2);
    EXPECT_FALSE(std::filesystem::exists(world.Folder.Path("VaelAna.ini")));
    const Question& asked = world.Desk.Asked.front();
    EXPECT_EQ(asked.Choice, Question::Buttons::YesNo);
    EXPECT_EQ(asked.Icon, Question::Sign::Exclamation);
    EXPECT_EQ(asked.DefaultButton, 2);
    store.GraphList[1].State = store.GraphList[3].State = 0;
}

TEST(Start, TheSecondEntryEmptiesEverythingWithoutAPrompt) {
    World world;
    store.GraphList[0] = {
        .State = 2, .WinNo = 0, .DataNo = 3, .Visible = -1, .Name = "a", .Color = 1};
    store.SlotUsed[3] = -1;
    store.GraphTotal = 1;
    store.SpectrumDatas[3].Count[5] = 7;
    settings.EACPS = 0.7;
    Form_Load_Proc();
    EXPECT_EQ(store.GraphList[0].State, 0);
    EXPECT_EQ(store.SlotUsed[3], 0);
    EXPECT_EQ(store.SpectrumDatas[3].Count[5], 0);
    EXPECT_EQ(store.UserDataFolder, "\\UserData\\");
    EXPECT_EQ(store.DataFolder, std::filesystem::current_path().string() + "/")
        << "dialogs start in a folder that is there";
    EXPECT_EQ(settings.EACPS, 0.7) << "it does not read the ini file";
}

TEST(Store, ClearHelpersTakeOneSlotOrAll) {
    World world;
    for (int slot : {0, 13}) {
        store.SpectrumDatas[static_cast<std::size_t>(slot)].DataNo = 5;
        store.PropertyRecords[static_cast<std::size_t>(slot)].Memo = "note";
    }
    ClearSpectrum(0);
    ClearProperty(0);
    EXPECT_EQ(store.SpectrumDatas[0].DataNo, 0);
    EXPECT_EQ(store.SpectrumDatas[13].DataNo, 5)
        << "slots 10 to 13 are valid, though never handed out";
    EXPECT_EQ(store.PropertyRecords[13].Memo.Trimmed(), "note");
    ClearSpectrum(-1);
    ClearProperty(-1);
    EXPECT_EQ(store.SpectrumDatas[13].DataNo, 0);
    EXPECT_EQ(store.PropertyRecords[13].Memo.View(), std::string(100, ' '));
    EXPECT_THROW(ClearSpectrum(14), Fault);
    store.DefaultParam.EgcCoef = {1, 2, 3};
    store.DefaultParam.TwoTheta = 4;
    SetDefaultEgc(13);
    EXPECT_EQ(store.PropertyRecords[13].Param.EgcCoef[2], 3);
    EXPECT_EQ(store.PropertyRecords[13].Param.TwoTheta, 4);
    EXPECT_EQ(store.PropertyRecords[12].Param.TwoTheta, 0);
}
