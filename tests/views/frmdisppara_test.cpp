// The parameter sheet: what it shows, what it stores, and what opening it anew does.
#include "support/world.h"

#include "core/cursors.h"

#include <gtest/gtest.h>

using namespace vael;

namespace {

DispParaView& v = frmDispPara;

struct Sheet : World {
    Sheet() {
        ParamRecord& param = store.DefaultParam;
        param.MeasureType = 2;
        param.EgcCoef = {0.1, 0.03, 4.5e-8};
        param.TwoTheta = 6.0;
        param.Pressure = 1.5;
        param.Temperature = 27.0;
        param.RealTime = 600.0;
        param.LiveTime = 588.5;
        store.Rois.RoiNum = 3;
    }
    static void Open() { EXPECT_TRUE(Click(frmVaelAna.Command1)); }
};

}  // namespace

TEST(DispPara, IsFilledFromTheDefaultParameters) {
    Sheet sheet;
    Sheet::Open();
    EXPECT_TRUE(v.Visible);
    EXPECT_FALSE(v.Modal);
    EXPECT_EQ(v.Caption, "Parameter Value");
    for (std::size_t mode = 0; mode < 5; ++mode) EXPECT_EQ(v.optMode[mode].Value, mode == 2);
    EXPECT_EQ(v.imnRealTime.Text(), "600.00");
    EXPECT_EQ(v.imnLiveTime.Text(), "588.50");
    EXPECT_EQ(v.imnRoiCnt.Text(), "3");
    EXPECT_EQ(v.ImConst[0].Text(), "0.100000");
    EXPECT_EQ(v.ImConst[1].Text(), "0.03000000");
    EXPECT_EQ(v.ImConst[2].Text(), "4.50000E-008");
    EXPECT_EQ(v.imnAngle.Text(), "6.00000");
    EXPECT_EQ(v.ImnPress.Text(), "1.500");
    EXPECT_EQ(v.ImnTemp.Text(), "27.0");
    EXPECT_TRUE(v.chkCnst[0].Value && v.ImConst[2].Enabled);
}

TEST(DispPara, HasItsWords) {
    Sheet sheet;
    EXPECT_EQ(v.fraMode.Caption, "Mode");
    EXPECT_EQ(v.optMode[0].Caption, "Continue");
    EXPECT_EQ(v.fraEnergy.Caption, "Enargy");
    EXPECT_EQ(v.chkCnst[0].Caption, "E=A+Bx+Cx2");
    EXPECT_EQ(v.chkCnst[1].Caption, "E=A+Bx");
    EXPECT_EQ(v.cmdOk.Caption, "O K");
    EXPECT_EQ(v.cmdCansel.Caption, "Cancel");
    EXPECT_EQ(frmVaelAna.Command1.Caption, "Parameter");
}

TEST(DispPara, OkStoresThemAllAndHides) {
    Sheet sheet;
    Sheet::Open();
    const auto type = [](NumberBox& box, const std::string& text) {
        EXPECT_TRUE(Type(box, text)) << box.Name;
    };
    Click(v.optMode[4]);
    type(v.imnRealTime, "700");
    type(v.imnLiveTime, "690.25");
    type(v.ImConst[0], "-0.05");
    type(v.ImConst[1], "0.031");
    type(v.ImConst[2], "-1.25E-9");
    type(v.imnAngle, "15.01459");
    type(v.ImnPress, "8.25");
    type(v.ImnTemp, "1000");
    Click(v.cmdOk);
    EXPECT_FALSE(v.Visible);
    const ParamRecord& param = store.DefaultParam;
    EXPECT_EQ(param.MeasureType, 4);
    EXPECT_EQ(param.RealTime, 700.0);
    EXPECT_EQ(param.LiveTime, 690.25);
    EXPECT_EQ(param.EgcCoef, (std::array<double, 3>{-0.05, 0.031, -1.25e-9}));
    EXPECT_EQ(param.TwoTheta, 15.01459);
    EXPECT_EQ(param.Pressure, 8.25);
    EXPECT_EQ(param.Temperature, 1000.0);
    EXPECT_TRUE(sheet.Desk.Faults.empty());
}

TEST(DispPara, OkWithoutAChangeKeepsEveryDigit) {
    Sheet sheet;
    store.DefaultParam.EgcCoef = {0.123456789, 0.0312345678912, 1.23456789e-8};
    store.DefaultParam.TwoTheta = 15.0145912345;
    Sheet::Open();
    Click(v.cmdOk);
    EXPECT_EQ(store.DefaultParam.EgcCoef,
              (std::array<double, 3>{0.123456789, 0.0312345678912, 1.23456789e-8}));
    EXPECT_EQ(store.DefaultParam.TwoTheta, 15.0145912345);
    EXPECT_EQ(store.DefaultParam.MeasureType, 2);
}

TEST(DispPara, TheLinearFormHoldsCAtZero) {
    Sheet sheet;
    Sheet::Open();
    Click(v.chkCnst[1]);
    EXPECT_FALSE(v.chkCnst[0].Value);
    EXPECT_EQ(v.ImConst[2].Value, 0.0);
    EXPECT_FALSE(Type(v.ImConst[2], "1")) << "its box is disabled";
    Click(v.cmdOk);
    EXPECT_EQ(store.DefaultParam.EgcCoef, (std::array<double, 3>{0.1, 0.03, 0.0}));
    Sheet::Open();
    EXPECT_TRUE(v.chkCnst[1].Value) << "a polynomial without a square term opens as such";
    EXPECT_FALSE(v.ImConst[2].Enabled);
    Click(v.chkCnst[0]);
    EXPECT_TRUE(v.ImConst[2].Enabled);
}

TEST(DispPara, CancelEscapeAndTheCloseBoxStoreNothingAndTheNextOpeningIsFresh) {
    Sheet sheet;
    for (int way = 0; way < 3; ++way) {
        Sheet::Open();
        EXPECT_EQ(v.imnAngle.Value, 6.0) << way;
        Type(v.imnAngle, "9");
        if (way == 0) Click(v.cmdCansel);
        if (way == 1) Key(v, {.Key = KeyPress::Name::Escape});
        if (way == 2) Close(v);
        EXPECT_FALSE(v.Visible);
        EXPECT_EQ(store.DefaultParam.TwoTheta, 6.0) << way;
    }
}

TEST(DispPara, OpeningAnOpenSheetKeepsWhatWasTyped) {
    Sheet sheet;
    Sheet::Open();
    Type(v.imnAngle, "9");
    Leave(v.imnAngle);
    Sheet::Open();
    EXPECT_EQ(v.imnAngle.Value, 9.0);
}

TEST(DispPara, EnterIsOkWithTheLastTypedNumber) {
    Sheet sheet;
    Sheet::Open();
    Type(v.ImnTemp, "80");
    PressEnter(v.ImnTemp);
    EXPECT_FALSE(v.Visible);
    EXPECT_EQ(store.DefaultParam.Temperature, 80.0);
}

TEST(DispPara, TheCursorBoxesFollowTheDefaultCalibrationInForce) {
    Sheet sheet;
    store.UseFileEgc = 0;
    CsrX_Change(999);  // the thousandth channel
    Sheet::Open();
    Click(v.chkCnst[1]);
    Type(v.ImConst[0], "0");
    Type(v.ImConst[1], "0.05");
    Click(v.cmdOk);
    EXPECT_NEAR(frmVaelAna.inumCursorDisp[1].Value, 50.0, 1e-9) << "0.05 keV a channel";
}
