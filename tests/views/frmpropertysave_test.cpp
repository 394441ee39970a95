// The property sheet's ways out, slot 0 and its backup, the sheet beside a working main view, and
// what a label is made from.
#include "support/propertysheet.h"

#include "files/filevael.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace vael;

namespace {

using Sheet = PropertySheet;
PropertyView& v = frmProperty;

}  // namespace

// --- SAVE and EXIT -----------

TEST(Property, SavingWithoutAChangeAsksNothing) {
    Sheet sheet;
    Sheet::Show(1);
    Click(v.cmdOk);
    EXPECT_FALSE(v.Visible);
    EXPECT_TRUE(sheet.Desk.Asked.empty());
}

TEST(Property, TheQuestionIsPlainWithYesAndNo) {
    Sheet sheet;
    Sheet::Show(1);
    Type(v.txtMemo, "changed");
    sheet.Desk.ExpectQuestion(SAVE_QUESTION, Answer::No);
    Click(v.cmdOk);
    EXPECT_FALSE(v.Visible);
    EXPECT_EQ(Sheet::Record(1).Memo.Trimmed(), "changed");
    ASSERT_EQ(sheet.Desk.Asked.size(), 1u);
    EXPECT_EQ(sheet.Desk.Asked[0].Choice, Question::Buttons::YesNo);
    EXPECT_EQ(sheet.Desk.Asked[0].Icon, Question::Sign::None);
    EXPECT_TRUE(sheet.Desk.SaveDialogs.empty());
}

TEST(Property, YesSavesTheSheetsOwnRowWhicheverIsCurrent) {
    Sheet sheet;
    Sheet::Show(1);
    Sheet::Put(v.ImnPress, "4.25");
    Change_cboGrphSel(0, 0);
    ASSERT_EQ(DataNo(), 0);
    const std::string path = sheet.Folder.Path("out.xbm");
    sheet.Desk.ExpectQuestion(SAVE_QUESTION, Answer::Yes);
    sheet.Desk.SaveAs(path);
    Click(v.cmdOk);
    EXPECT_FALSE(v.Visible);
    EXPECT_EQ(DataNo(), 1);
    SpectrumData data{};
    PropertyRecord prop{};
    std::int16_t source = 0;
    ASSERT_EQ(LoadXbm(path, {data, prop, source}), TRUE_WORD);
    EXPECT_EQ(prop.Param.Pressure, 4.25);
    EXPECT_EQ(prop.SampleName.Trimmed(), "second");
    EXPECT_EQ(prop.FileName.Trimmed(), "out");
}

TEST(Property, ACancelledSaveDialogClosesTheSheetAllTheSame) {
    Sheet sheet;
    Sheet::Show(1);
    Sheet::Put(v.ImnPress, "4.25");
    sheet.Desk.ExpectQuestion(SAVE_QUESTION, Answer::Yes);
    sheet.Desk.CancelSave();
    Click(v.cmdOk);
    EXPECT_FALSE(v.Visible);
    EXPECT_EQ(Sheet::Record(1).Param.Pressure, 4.25);
}

TEST(Property, ExitEscapeAndTheCloseBoxStoreNothingAndShowTheAngle) {
    Sheet sheet;
    Sheet::Record(1).Param.TwoTheta = 6.125;
    for (int way = 0; way < 3; ++way) {
        Sheet::Show(1);
        EXPECT_EQ(v.imnVolt.Value, 1.5) << way;
        EXPECT_EQ(v.txtMemo.Text, "a comment, with a comma") << way;
        Type(v.txtMemo, "thrown away");
        Sheet::Put(v.imnHGonioDAngle, "9");
        Type(v.imnVolt, "99");  // not left yet
        frmVaelAna.txt2Theta.Text = "";
        if (way == 0) Click(v.cmdCan);
        if (way == 1) Key(v, {.Key = KeyPress::Name::Escape});
        if (way == 2) Close(v);
        EXPECT_FALSE(v.Visible);
        EXPECT_EQ(TypedBox(), nullptr);
        EXPECT_EQ(frmVaelAna.txt2Theta.Text, "6.12500");
        EXPECT_EQ(Sheet::Record(1).Param.TwoTheta, 6.125);
    }
    EXPECT_TRUE(sheet.Desk.Asked.empty());
}

TEST(Property, EnterTakesTheNumberAndClosesNothing) {
    Sheet sheet;
    Sheet::Show(1);
    Type(v.ImnPress, "8");
    PressEnter(v.ImnPress);
    EXPECT_TRUE(v.Visible);
    EXPECT_EQ(v.ImnPress.Value, 8.0);
    EXPECT_NE(Sheet::Record(1).Param.Pressure, 8.0);
}

TEST(Property, AxisAndCursorBoxesFollowWhatWasSaved) {
    Sheet sheet;
    Sheet::Show(1);
    Sheet::Put(v.imnEneCalA, "0");
    Sheet::Put(v.imnEneCalB, "2");
    Sheet::Put(v.imnEneCalC, "0");
    sheet.Desk.ExpectQuestion(SAVE_QUESTION, Answer::No);
    Click(v.cmdOk);
    // keV is the second cursor box: 2 keV a channel, and the cursor stands at channel 1.
    EXPECT_EQ(frmVaelAna.inumCursorCh.Value, 1.0);
    EXPECT_EQ(frmVaelAna.inumCursorDisp[1].Value, 2.0);
}

// --- slot 0 -----------

TEST(Property, InSlot0TheFieldsOfGroup1AreLockedAndSayWhy) {
    Sheet sheet;
    Sheet::Show(0);
    for (TextBox* box : {&v.txtMsuName, &v.txtSampName, &v.txtOpName, &v.txtMemo}) {
        EXPECT_FALSE(Type(*box, "x")) << box->Name;
        EXPECT_EQ(box->Tip.rfind("Locked: ", 0), 0u) << box->Name;
    }
    EXPECT_FALSE(Type(v.imnCurrent, "1"));
    EXPECT_FALSE(Click(v.cmdIndent));
    EXPECT_TRUE(Type(v.imnInV, "1")) << "the other groups are not";
    Click(v.cmdCan);
    Sheet::Show(1);
    EXPECT_TRUE(Type(v.txtMemo, "x"));
    EXPECT_TRUE(Type(v.imnCurrent, "1"));
    EXPECT_TRUE(Click(v.cmdIndent));
    EXPECT_NE(v.txtMemo.Tip.rfind("Locked: ", 0), 0u);
}

TEST(Property, UnderDefaultEditsOfSlot0GoToTheDefaultsAndNotToTheSpectrum) {
    Sheet sheet;
    ParamRecord& own = Sheet::Record(0).Param;
    own.EgcCoef = {1.0, 2.0, 3.0};
    own.TwoTheta = 5.0;
    own.Pressure = 1.25;
    Sheet::Default();
    Sheet::Show(0);
    Sheet::Put(v.imnEneCalA, "0.5");
    Sheet::Put(v.imnEneCalB, "0.25");
    Sheet::Put(v.imnEneCalC, "0.125");
    Sheet::Put(v.imnHGonioDAngle, "20");
    Sheet::Put(v.ImnPress, "9");
    sheet.Desk.ExpectQuestion(SAVE_QUESTION, Answer::No);
    Click(v.cmdOk);
    EXPECT_EQ(store.DefaultParam.EgcCoef, (std::array<double, 3>{0.5, 0.25, 0.125}));
    EXPECT_EQ(store.DefaultParam.TwoTheta, 20.0);
    EXPECT_NE(store.DefaultParam.Pressure, 9.0) << "the defaults take the calibration alone";
    EXPECT_EQ(own.EgcCoef, (std::array<double, 3>{1.0, 2.0, 3.0}));
    EXPECT_EQ(own.TwoTheta, 5.0);
    EXPECT_EQ(own.Pressure, 1.25);
}

TEST(Property, WithTheFilesOwnCalibrationSlot0IsStoredAndTheDefaultsStay) {
    Sheet sheet;
    store.DefaultParam.TwoTheta = 33.0;
    Sheet::Show(0);
    Sheet::Put(v.imnHGonioDAngle, "20");
    Sheet::Put(v.ImnPress, "9");
    sheet.Desk.ExpectQuestion(SAVE_QUESTION, Answer::No);
    Click(v.cmdOk);
    EXPECT_EQ(Sheet::Record(0).Param.TwoTheta, 20.0);
    EXPECT_EQ(Sheet::Record(0).Param.Pressure, 9.0);
    EXPECT_EQ(store.DefaultParam.TwoTheta, 33.0);
}

TEST(Property, UnderDefaultAnotherSlotIsStoredAndTheDefaultsStay) {
    Sheet sheet;
    store.DefaultParam.TwoTheta = 33.0;
    Sheet::Default();
    Sheet::Show(1);
    Sheet::Put(v.imnHGonioDAngle, "20");
    sheet.Desk.ExpectQuestion(SAVE_QUESTION, Answer::No);
    Click(v.cmdOk);
    EXPECT_EQ(Sheet::Record(1).Param.TwoTheta, 20.0);
    EXPECT_EQ(store.DefaultParam.TwoTheta, 33.0);
}

TEST(Property, AChangedSheetSavesTheCalibrationToWhereItTookItFrom) {
    for (const bool defaults : {true, false}) {
        Sheet sheet;
        ParamRecord& own = Sheet::Record(0).Param;
        own.EgcCoef = {1.0, 2.0, 3.0};
        own.TwoTheta = 5.0;
        own.Pressure = 1.25;
        store.DefaultParam.EgcCoef = {7.0, 8.0, 9.0};
        store.DefaultParam.TwoTheta = 33.0;
        EXPECT_TRUE(Click(frmVaelAna.optEGC[defaults ? 0 : 1]));
        Sheet::Show(0);
        Sheet::Put(v.imnEneCalA, "0.5");
        Sheet::Put(v.ImnPress, "9");
        EXPECT_TRUE(Click(frmVaelAna.optEGC[defaults ? 1 : 0]));  // the typing stays in the sheet
        EXPECT_EQ(v.imnEneCalB.Value, defaults ? 8.0 : 2.0);
        EXPECT_EQ(v.lblNote.Caption.empty(), !defaults) << "the note goes with what is shown";
        sheet.Desk.ExpectQuestion(SAVE_QUESTION, Answer::No);
        Click(v.cmdOk);
        EXPECT_EQ(own.EgcCoef, (std::array<double, 3>{defaults ? 1.0 : 0.5, 2.0, 3.0}));
        EXPECT_EQ(own.TwoTheta, 5.0);
        EXPECT_EQ(own.Pressure, defaults ? 1.25 : 9.0);
        EXPECT_EQ(store.DefaultParam.EgcCoef,
                  (std::array<double, 3>{defaults ? 0.5 : 7.0, 8.0, 9.0}));
        EXPECT_EQ(store.DefaultParam.TwoTheta, 33.0);
    }
}

TEST(Property, TheBackupIsThatOfTheFirstFillAndOfThisSheetAlone) {
    Sheet sheet;
    ParamRecord& own = Sheet::Record(0).Param;
    own.Power = 100.0;
    Sheet::Default();
    Sheet::Show(0);
    own.Power = 200.0;
    v.SetValue();
    Click(v.cmdOk);
    EXPECT_EQ(own.Power, 100.0) << "what another command changed goes back too";
    own.Power = 300.0;
    Sheet::Show(0);
    Click(v.cmdOk);
    EXPECT_EQ(own.Power, 300.0) << "an older sheet's backup does not come back";
}

TEST(Property, WithoutABackupNothingIsPutBack) {
    Sheet sheet;
    Sheet::Show(0);  // under "This File" there is none
    Sheet::Put(v.ImnPress, "9");
    store.UseFileEgc = 0;
    sheet.Desk.ExpectQuestion(SAVE_QUESTION, Answer::No);
    Click(v.cmdOk);
    EXPECT_EQ(Sheet::Record(0).Param.Pressure, 9.0);
}

// --- a sheet beside a main view that goes on working -----------

TEST(Property, GoesWithItsSlotWhenRowsMoveAndClosesWhenTheSlotIsFreed) {
    Sheet sheet;
    Sheet::Show(1);
    Type(v.txtMemo, "kept");
    Click(frmVaelAna.mnuSmooth);
    EXPECT_EQ(v.lblGraph.Caption, "Row 3   b.npd");
    EXPECT_EQ(v.txtMemo.Text, "kept");
    Change_cboGrphSel(0, 0);
    Click(frmVaelAna.mnuCloseGraph);
    EXPECT_EQ(v.lblGraph.Caption, "Row 2   b.npd");
    Change_cboGrphSel(0, 1);
    Click(frmVaelAna.mnuCloseGraph);
    EXPECT_FALSE(v.Visible);
    EXPECT_EQ(v.Slot, -1);
}

TEST(Property, ClosesWhenOtherFilesTakeTheRows) {
    Sheet sheet;
    Sheet::Show(1);
    sheet.Open({sheet.Spectrum("c.npd"), sheet.Spectrum("d.npd")});
    EXPECT_FALSE(v.Visible) << "slot 1 is another spectrum now";
}

TEST(Property, OpenedForAnotherRowItTakesThatOneUnlessSomethingWasChanged) {
    Sheet sheet;
    Sheet::Show(1);
    Sheet::Show(0);
    EXPECT_EQ(v.txtSampName.Text, "first");
    Sheet::Put(v.imnInV, "1");
    Change_cboGrphSel(0, 1);
    Click(frmVaelAna.mnuProperty);
    EXPECT_EQ(v.Slot, 0);
    EXPECT_EQ(v.imnInV.Value, 1.0);
    EXPECT_NE(frmVaelAna.lblStatus.Caption.find("a.npd"), std::string::npos);
    Change_cboGrphSel(0, 0);
    Click(frmVaelAna.mnuProperty);
    EXPECT_EQ(v.imnInV.Value, 1.0) << "opening an open sheet keeps what was typed";
}

TEST(Property, AnUnchangedSheetFollowsTheRecord) {
    Sheet sheet;
    Sheet::Show(1);
    Type(frmVaelAna.txt2Theta, "12.5");
    PressEnter(frmVaelAna.txt2Theta);
    EXPECT_EQ(v.imnHGonioDAngle.Value, 12.5);
    const std::string path = sheet.Folder.Path("renamed.xbm");
    sheet.Desk.SaveAs(path);
    Click(frmVaelAna.mnuSave);
    EXPECT_EQ(v.txtMsuName.Text, "renamed");
    Sheet::Put(v.ImnPress, "3");
    Type(frmVaelAna.txt2Theta, "13.5");
    PressEnter(frmVaelAna.txt2Theta);
    EXPECT_EQ(v.imnHGonioDAngle.Value, 12.5) << "what the user works on is left alone";
    EXPECT_EQ(v.ImnPress.Value, 3.0);
}

// --- "LabelPrint" -----------

TEST(Property, WithoutTheLabelProgramNothingElseIsLost) {
    Sheet sheet;
    Sheet::Show(1);
    Sheet::Put(v.ImnPress, "3");
    sheet.Desk.ExpectQuestion("Label Print error");
    Click(v.cmdLabelPrint);
    EXPECT_EQ(sheet.Desk.Launched,
              (std::vector<std::string>{sheet.Folder.Path("VaelLabelPrint.exe")}));
    EXPECT_FALSE(std::filesystem::exists(sheet.Folder.Path("LBL_TEMP/Label_Temp.xbm")));
    EXPECT_TRUE(v.Visible);
    EXPECT_TRUE(v.Changed) << "SAVE still asks";
    EXPECT_EQ(v.ImnPress.Value, 3.0);
    EXPECT_EQ(Sheet::Record(1).Param.Pressure, 3.0) << "the first step was done";
    EXPECT_TRUE(frmVaelAna.StatusFault);
}

TEST(Property, TheLabelProgramIsStartedBeforeItsFileIsThere) {
    Sheet sheet;
    Sheet::Show(1);
    Sheet::Put(v.ImnPress, "3");
    const std::string path = sheet.Folder.Path("LBL_TEMP/Label_Temp.xbm");
    bool there = true;
    sheet.Desk.ProgramStarts = true;
    sheet.Desk.OnLaunch = [&] { there = std::filesystem::exists(path); };
    Click(v.cmdLabelPrint);
    EXPECT_FALSE(there);
    SpectrumData data{};
    PropertyRecord prop{};
    std::int16_t source = 0;
    ASSERT_EQ(LoadXbm(path, {data, prop, source}), TRUE_WORD);
    EXPECT_EQ(prop.Param.Pressure, 3.0);
    EXPECT_EQ(data.DataNo, 4096);
    EXPECT_TRUE(sheet.Desk.Asked.empty());
}

TEST(Property, AnOlderLabelFileGoesWithoutAQuestionAndLeavesNoTail) {
    Sheet sheet;
    Sheet::Show(1);
    std::filesystem::create_directory(sheet.Folder.Path("LBL_TEMP"));
    const std::string path =
        sheet.Folder.Write("LBL_TEMP/Label_Temp.xbm", std::string(100000, 'x'));
    sheet.Desk.ProgramStarts = true;
    Click(v.cmdLabelPrint);
    // Header and property record of 1988 bytes, the count of channels, 4096 counts of 4 bytes.
    EXPECT_EQ(std::filesystem::file_size(path), 1988u + 2u + 4u * 4096u);
    EXPECT_TRUE(sheet.Desk.Asked.empty());
}

TEST(Property, ALabelFileThatCannotBeWrittenIsTold) {
    Sheet sheet;
    Sheet::Show(1);
    sheet.Folder.Write("LBL_TEMP", "a file where the folder should be");
    sheet.Desk.ProgramStarts = true;
    sheet.Desk.ExpectQuestion("Failed Create Label File!");
    Click(v.cmdLabelPrint);
    EXPECT_TRUE(v.Visible);
    EXPECT_TRUE(sheet.Desk.Faults.empty());
}

TEST(Property, AnOldLabelFileThatCannotBeDeletedIsALabelPrintError) {
    Sheet sheet;
    Sheet::Show(1);
    std::filesystem::create_directories(sheet.Folder.Path("LBL_TEMP/Label_Temp.xbm/inner"));
    sheet.Desk.ProgramStarts = true;
    sheet.Desk.ExpectQuestion("Label Print error");
    Click(v.cmdLabelPrint);
    EXPECT_TRUE(v.Visible);
}

TEST(Property, UnderDefaultALabelOfSlot0CarriesTheShownCalibrationUntilSavePutsItBack) {
    Sheet sheet;
    ParamRecord& own = Sheet::Record(0).Param;
    own.TwoTheta = 5.0;
    Sheet::Default();
    Sheet::Show(0);
    Sheet::Put(v.imnHGonioDAngle, "20");
    sheet.Desk.ProgramStarts = true;
    Click(v.cmdLabelPrint);
    EXPECT_EQ(store.DefaultParam.TwoTheta, 20.0);
    EXPECT_EQ(own.TwoTheta, 20.0);
    sheet.Desk.ExpectQuestion(SAVE_QUESTION, Answer::No);
    Click(v.cmdOk);
    EXPECT_EQ(own.TwoTheta, 5.0);
    EXPECT_EQ(store.DefaultParam.TwoTheta, 20.0);
}
