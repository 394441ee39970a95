// The property sheet: what it shows, computes and stores, and how it counts a name up.
#include "support/propertysheet.h"

#include "core/fault.h"

#include <gtest/gtest.h>

#include <set>

using namespace vael;

namespace {

using Sheet = PropertySheet;
using V = PropertyView;
V& v = frmProperty;

struct Field {
    const char* Name;
    NumberBox V::*Box;
    double ParamRecord::*At;
};

/// Every number that goes from its field to its box and back, but for the calibration.
const std::vector<Field> FIELDS{
    {"ring current", &V::imnCurrent, &ParamRecord::RingCurrent},
    {"incident V", &V::imnInV, &ParamRecord::InSlitV},
    {"incident H", &V::imnInH, &ParamRecord::InSlitH},
    {"incident X", &V::imnInX, &ParamRecord::InSlitX},
    {"incident Z", &V::imnInZ, &ParamRecord::InSlitZ},
    {"incident TY", &V::imnInTY, &ParamRecord::InSlitTY},
    {"receiving V", &V::imnReV, &ParamRecord::ReSlitV},
    {"receiving H", &V::imnReH, &ParamRecord::ReSlitH},
    {"receiving X", &V::imnReX, &ParamRecord::ReSlitX},
    {"receiving Z", &V::imnReZ, &ParamRecord::ReSlitZ},
    {"receiving TY", &V::imnReTY, &ParamRecord::ReSlitTY},
    {"collimator", &V::imnCollimeterSize, &ParamRecord::CollimatorSize},
    {"horizontal X", &V::imnHGonioX, &ParamRecord::HGonioX},
    {"horizontal Y", &V::imnHGonioY, &ParamRecord::HGonioY},
    {"horizontal Z", &V::imnHGonioZ, &ParamRecord::HGonioZ},
    {"2 theta", &V::imnHGonioDAngle, &ParamRecord::TwoTheta},
    {"vertical X", &V::imnVGonioX, &ParamRecord::VGonioX},
    {"vertical Y", &V::imnVGonioY, &ParamRecord::VGonioY},
    {"vertical Z", &V::imnVGonioZ, &ParamRecord::VGonioZ},
    {"vertical angle", &V::imnVGonioDAngle, &ParamRecord::VGonioAngle},
    {"pressure", &V::ImnPress, &ParamRecord::Pressure},
    {"load", &V::imnLoad, &ParamRecord::PressLoad},
    {"temperature", &V::ImnTemp, &ParamRecord::Temperature},
    {"ram stroke", &V::imnRamStroke, &ParamRecord::RamStroke},
    {"press X", &V::imnPressX, &ParamRecord::PressX},
    {"press Y", &V::imnPressY, &ParamRecord::PressY},
    {"press Z", &V::imnPressZ, &ParamRecord::PressZ},
    {"press rotation", &V::imnPressTZ, &ParamRecord::PressTZ},
    {"voltage", &V::imnVolt, &ParamRecord::Volt},
    {"heater current", &V::imnCurrent2, &ParamRecord::Current2},
    {"power", &V::imnPower, &ParamRecord::Power},
    {"resistance", &V::imnRegistance, &ParamRecord::Resistance},
    {"ion chamber", &V::imnMiriVolt, &ParamRecord::IonChamber},
    {"count rate", &V::imnCntRate, &ParamRecord::CountRate},
};

std::string CountedUp(const std::string& name) {
    Sheet sheet;
    Sheet::Show(1);
    Type(v.txtMsuName, name);
    Click(v.cmdIndent);
    return v.txtMsuName.Text;
}

}  // namespace

// --- the sheet -----------

TEST(Property, OpensBesideTheMainViewFromItsMenuAndItsButton) {
    Sheet sheet;
    EXPECT_TRUE(Click(frmVaelAna.mnuProperty));
    EXPECT_TRUE(v.Visible);
    EXPECT_FALSE(v.Modal);
    EXPECT_EQ(v.lblGraph.Caption, "Row 2   b.npd");
    Click(v.cmdCan);
    EXPECT_FALSE(v.Visible);
    EXPECT_TRUE(Click(frmVaelAna.cmdFiles[3]));
    EXPECT_TRUE(v.Visible);
    EXPECT_TRUE(sheet.Desk.Faults.empty());
}

TEST(Property, HasItsWords) {
    World world;
    EXPECT_EQ(v.Caption, "Property");
    EXPECT_EQ(v.fraSample.Caption, "1. Sample Infomation");
    EXPECT_EQ(v.lblMsuName.Caption, "File Name");
    EXPECT_EQ(v.lblSampName.Caption, "Sample Name");
    EXPECT_EQ(v.lblOpDate.Caption, "Date");
    EXPECT_EQ(v.lblOpTime.Caption, "Start Time");
    EXPECT_EQ(v.lblOpName.Caption, "Operater");
    EXPECT_EQ(v.lblMemo.Caption, "Comment");
    EXPECT_EQ(v.lblCurrent.Caption, "Ring Current (mA)");
    EXPECT_EQ(v.cmdIndent.Caption, "Count Up");
    EXPECT_EQ(v.fraSlit.Caption, "2. Slit condition");
    EXPECT_EQ(v.lblInSlit.Caption, "Incident slit");
    EXPECT_EQ(v.lblReSlit.Caption, "Receiving slit");
    EXPECT_EQ(v.fraGonio.Caption, "3. Goniometer condition");
    EXPECT_EQ(v.lblHGonio.Caption, "Horizontal Goniometer");
    EXPECT_EQ(v.lblVGonio.Caption, "Vertical Gonio position");
    EXPECT_EQ(v.lblGonioHead.Caption, "Position(mm)");
    EXPECT_EQ(v.fraPress.Caption, "4. Press condition");
    EXPECT_EQ(v.lblRegistance.Caption, "Registance(mΩ)");
    EXPECT_EQ(v.fraMeasure.Caption, "5. Measurement");
    EXPECT_EQ(v.lblEneCal.Caption, "Energy Calibration Coefficents");
    EXPECT_EQ(v.lblEneLine.Caption, "Energy(keV)=a + bX + cX * cX   (X=Channel)");
    EXPECT_EQ(v.cmdOk.Caption, "SAVE");
    EXPECT_EQ(v.cmdCan.Caption, "EXIT");
    EXPECT_EQ(v.cmdLabelPrint.Caption, "LabelPrint");
}

TEST(Property, AnEmptyRowHasNone) {
    World world;
    Click(frmVaelAna.mnuProperty);
    EXPECT_FALSE(v.Visible);
    EXPECT_EQ(frmVaelAna.lblStatus.Caption, "There is no spectrum in this row.");
}

TEST(Property, ASlotAbove13IsAProgrammingError) {
    World world;
    EXPECT_THROW(v.SetDataNo(14), Fault);
    EXPECT_THROW(v.SetDataNo(-1), Fault);
    v.SetDataNo(13);
    EXPECT_EQ(v.Slot, 13);
}

// --- filling -----------

TEST(Property, EveryNumberGoesFromItsFieldToItsBoxAndBack) {
    Sheet sheet;
    ParamRecord& param = Sheet::Record(1).Param;
    double value = 1.0;
    for (const Field& field : FIELDS) param.*field.At = (value += 1.0);
    param.EgcCoef = {0.125, 0.0625, 0.5};
    Sheet::Show(1);
    value = 1.0;
    std::set<const NumberBox*> boxes;
    for (const Field& field : FIELDS) {
        EXPECT_EQ((v.*field.Box).Value, value += 1.0) << field.Name;
        EXPECT_TRUE(boxes.insert(&(v.*field.Box)).second) << field.Name;
    }
    EXPECT_EQ(boxes.size(), FIELDS.size());
    // Voltage and current first: leaving them computes the resistance, which is typed after them.
    for (const Field& field : FIELDS) Sheet::Put(v.*field.Box, std::to_string(value += 1.0));
    Sheet::Put(v.imnEneCalA, "-0.25");
    Sheet::Put(v.imnEneCalB, "0.03125");
    Sheet::Put(v.imnEneCalC, "1.5E-9");
    sheet.Desk.ExpectQuestion(SAVE_QUESTION, Answer::No);
    Click(v.cmdOk);
    value = 1.0 + static_cast<double>(FIELDS.size());
    for (const Field& field : FIELDS) EXPECT_EQ(param.*field.At, value += 1.0) << field.Name;
    EXPECT_EQ(param.EgcCoef, (std::array<double, 3>{-0.25, 0.03125, 1.5e-9}));
    EXPECT_TRUE(sheet.Desk.Faults.empty());
}

TEST(Property, TheFourTextsGoToTheirFieldsAndBack) {
    Sheet sheet;
    PropertyRecord& record = Sheet::Record(1);
    record.FileName = "AuWire";
    record.SampleName = "金 wire";
    record.OpName = "somebody";
    record.Memo = "after heating";
    Sheet::Show(1);
    EXPECT_EQ(v.txtMsuName.Text, "AuWire");
    EXPECT_EQ(v.txtSampName.Text, "金 wire");
    EXPECT_EQ(v.txtOpName.Text, "somebody");
    EXPECT_EQ(v.txtMemo.Text, "after heating");
    Type(v.txtMsuName, "Pt000001");
    Type(v.txtSampName, "白金");
    Type(v.txtOpName, "another, whose name is far longer than any field");
    Type(v.txtMemo, "");
    sheet.Desk.ExpectQuestion(SAVE_QUESTION, Answer::No);
    Click(v.cmdOk);
    EXPECT_EQ(record.FileName.Text(), "Pt000001" + std::string(56, ' '));
    EXPECT_EQ(record.SampleName.Trimmed(), "白金");
    EXPECT_EQ(record.OpName.Text(), "another, whose name is far lon");
    EXPECT_EQ(record.Memo.Text(), std::string(100, ' '));
}

TEST(Property, TextsAreWrittenBackTrimmedWhenTheyAreShown) {
    Sheet sheet;
    PropertyRecord& record = Sheet::Record(1);
    record.SampleName = "   gold   ";
    record.OpName.Bytes.fill('\0');
    Sheet::Show(1);
    EXPECT_EQ(v.txtSampName.Text, "gold");
    EXPECT_EQ(record.SampleName.Text(), "gold" + std::string(60, ' '));
    EXPECT_EQ(v.txtOpName.Text, "");
    EXPECT_EQ(record.OpName.View(), std::string(30, ' '));
}

TEST(Property, BytesThatAreNoCharacterStayWhereNobodyTypedOverThem) {
    Sheet sheet;
    PropertyRecord& record = Sheet::Record(1);
    record.Memo.SetBytes("ab\xff\xfd");  // neither is a character of the code page
    Sheet::Show(1);
    Click(v.cmdOk);
    EXPECT_EQ(record.Memo.View().substr(0, 5), "ab\xff\xfd ");
}

TEST(Property, DateAndTimeHaveTheirSeparatorsAndAreNotStored) {
    Sheet sheet;
    PropertyRecord& record = Sheet::Record(1);
    record.OpDate = "20181010";
    record.OpTime = "090541";
    Sheet::Show(1);
    EXPECT_EQ(v.txtOpDate.Text, "2018/10/10");
    EXPECT_EQ(v.txtOpTime.Text, "09:05.41");
    EXPECT_FALSE(Type(v.txtOpDate, "2020/01/01")) << "what is not stored is not typed";
    EXPECT_FALSE(Type(v.txtOpTime, "10:00.00"));
    Click(v.cmdOk);
    EXPECT_EQ(record.OpDate.Text(), "20181010");
    EXPECT_EQ(record.OpTime.Text(), "090541");
}

TEST(Property, ATemperatureOfZeroIs273Point15Kelvin) {
    Sheet sheet;
    Sheet::Record(1).Param.Temperature = 0.0;
    Sheet::Show(1);
    EXPECT_EQ(v.imnTempK.Text(), "273.15");
    Sheet::Put(v.ImnTemp, "1000");
    EXPECT_EQ(v.imnTempK.Text(), "1273.15");
    EXPECT_FALSE(Type(v.imnTempK, "300"));
}

TEST(Property, TheDeadTimeIsThatOfTheCountingTimes) {
    Sheet sheet;
    ParamRecord& param = Sheet::Record(1).Param;
    param.RealTime = 200.0;
    param.LiveTime = 150.0;
    param.DeadTime = 99.0;  // carried, and not shown
    Sheet::Show(1);
    EXPECT_EQ(v.imnRealTime.Value, 200.0);
    EXPECT_EQ(v.imnLiveTime.Value, 150.0);
    EXPECT_EQ(v.imnDeadTime.Value, 25.0);
    EXPECT_FALSE(Type(v.imnRealTime, "1") || Type(v.imnLiveTime, "1") || Type(v.imnDeadTime, "1"));
    Click(v.cmdOk);
    EXPECT_EQ(param.DeadTime, 99.0);
    EXPECT_EQ(param.RealTime, 200.0);
    param.RealTime = 0.0;
    Sheet::Show(1);
    EXPECT_EQ(v.imnDeadTime.Value, 0.0);
}

TEST(Property, WhatNobodyTypedKeepsAllItsDigits) {
    Sheet sheet;
    ParamRecord& param = Sheet::Record(1).Param;
    param.EgcCoef = {0.123456789012, 0.0312345678912, 1.23456789e-8};
    param.TwoTheta = 15.0145912345;
    param.Pressure = 1.0 / 3.0;
    const ParamRecord before = param;
    Sheet::Show(1);
    Click(v.cmdOk);
    EXPECT_EQ(param.EgcCoef, before.EgcCoef);
    EXPECT_EQ(param.TwoTheta, before.TwoTheta);
    EXPECT_EQ(param.Pressure, before.Pressure);
}

TEST(Property, OnlySlot0UnderDefaultShowsTheDefaultCalibration) {
    Sheet sheet;
    store.DefaultParam.EgcCoef = {7.0, 8.0, 9.0};
    store.DefaultParam.TwoTheta = 33.0;
    for (const int slot : {0, 1}) {
        Sheet::Record(slot).Param.EgcCoef = {1.0, 2.0, 3.0};
        Sheet::Record(slot).Param.TwoTheta = 5.0;
    }
    for (const int file : {0, 1})
        for (const int slot : {0, 1}) {
            EXPECT_TRUE(Click(frmVaelAna.optEGC[static_cast<std::size_t>(file)]));
            Sheet::Show(slot);
            const bool defaults = file == 0 && slot == 0;
            EXPECT_EQ(v.imnEneCalA.Value, defaults ? 7.0 : 1.0);
            EXPECT_EQ(v.imnEneCalB.Value, defaults ? 8.0 : 2.0);
            EXPECT_EQ(v.imnEneCalC.Value, defaults ? 9.0 : 3.0);
            EXPECT_EQ(v.imnHGonioDAngle.Value, defaults ? 33.0 : 5.0);
            EXPECT_EQ(v.lblNote.Caption.empty(), !defaults);
            Click(v.cmdCan);
        }
}

// --- the changed flag, the numbers, the computed boxes -----------

TEST(Property, EveryBoxThatCanBeTypedInSetsTheChangedFlag) {
    Sheet sheet;
    Sheet::Show(1);
    int boxes = 0;
    for (Control* control : v.Controls()) {
        bool typed = false;
        if (control->Kind == ControlKind::TextBox)
            typed = Type(static_cast<TextBox&>(*control), "another");
        else if (control->Kind == ControlKind::NumberBox)
            typed = Type(static_cast<NumberBox&>(*control), "77.5") && Leave(*control);
        if (!typed) continue;
        ++boxes;
        EXPECT_TRUE(v.Changed) << control->Name;
        v.SetValue();
        EXPECT_FALSE(v.Changed);
    }
    EXPECT_EQ(boxes, 4 + 34 + 3);
}

TEST(Property, NumberBoxesTakeNumbersAlone) {
    Sheet sheet;
    Sheet::Record(1).Param.Pressure = 2.5;
    Sheet::Show(1);
    for (const char* text : {"abc", "", "1,5", "3 GPa", "--1"}) {
        Type(v.ImnPress, text);
        Leave(v.ImnPress);
        EXPECT_EQ(v.ImnPress.Text(), "2.500") << text;
    }
    EXPECT_FALSE(v.Changed);
    Click(v.cmdOk);
    EXPECT_EQ(Sheet::Record(1).Param.Pressure, 2.5);
}

TEST(Property, LeavingVoltageOrCurrentComputesTheResistance) {
    Sheet sheet;
    Sheet::Record(1).Param.Volt = 0.0;
    Sheet::Record(1).Param.Current2 = 4.0;
    Sheet::Record(1).Param.Resistance = 12.0;
    Sheet::Show(1);
    EXPECT_EQ(v.imnRegistance.Value, 12.0) << "showing computes nothing";
    Sheet::Put(v.imnVolt, "3");
    EXPECT_EQ(v.imnRegistance.Value, 750.0);
    Sheet::Put(v.imnCurrent2, "8");
    EXPECT_EQ(v.imnRegistance.Value, 375.0);
    Sheet::Put(v.imnCurrent2, "0");
    EXPECT_EQ(v.imnRegistance.Value, 0.0);
    Sheet::Put(v.imnRegistance, "5");
    EXPECT_TRUE(Leave(v.imnVolt)) << "also where nothing was typed";
    EXPECT_EQ(v.imnRegistance.Value, 0.0);
    EXPECT_TRUE(v.Changed);
    EXPECT_TRUE(sheet.Desk.Faults.empty());
}

TEST(Property, AnotherActTakesTheTypedVoltageFirst) {
    Sheet sheet;
    Sheet::Record(1).Param.Current2 = 2.0;
    Sheet::Show(1);
    Type(v.imnVolt, "6");
    sheet.Desk.ExpectQuestion(SAVE_QUESTION, Answer::No);
    Click(v.cmdOk);
    EXPECT_EQ(Sheet::Record(1).Param.Volt, 6.0);
    EXPECT_EQ(Sheet::Record(1).Param.Resistance, 3000.0);
}

// --- "Count Up" -----------

TEST(Property, CountUpRaisesTheLastSixDigits) {
    EXPECT_EQ(CountedUp("ABC000999"), "ABC001000");
    EXPECT_EQ(CountedUp("1234567"), "1234568") << "a name of seven digits keeps its first";
    EXPECT_EQ(CountedUp("1999998"), "1999999");
    EXPECT_EQ(CountedUp("999999"), "1000000");
    EXPECT_EQ(CountedUp("7999999"), "71000000");
    EXPECT_EQ(CountedUp("金線000009"), "金線000010");
    EXPECT_EQ(CountedUp(" ABC000999  "), "ABC001000");
}

TEST(Property, CountUpLeavesANameWithoutSixDigitsAsItIs) {
    for (const char* name :
         {"AB12", "", "12345", "ABC12X456", "金銀銅12", "  99  ", "金銀銅鉄鉛1     "})
        EXPECT_EQ(CountedUp(name), name);
}

TEST(Property, CountUpIsAChange) {
    Sheet sheet;
    Sheet::Record(1).FileName = "ABC000999";
    Sheet::Show(1);
    Click(v.cmdIndent);
    EXPECT_TRUE(v.Changed);
    sheet.Desk.ExpectQuestion(SAVE_QUESTION, Answer::No);
    Click(v.cmdOk);
    EXPECT_EQ(Sheet::Record(1).FileName.Trimmed(), "ABC001000");
}
