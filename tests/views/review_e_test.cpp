// The energy calibration and the element table held against their description once more: what the
// ways out give back, what a deleted fit does to the scale, and what stays on a failure.
#include "core/operations.h"
#include "core/params.h"
#include "core/windows.h"
#include "support/calibworld.h"
#include "support/elementworld.h"

#include <gtest/gtest.h>

using namespace vael;
using namespace vael::test::calib;

namespace {

using C = DialogCalibCView;

}  // namespace

TEST(CalibrationReview, UpdateFreesTheButtonsOfTheMainView) {
    Calibrated w;
    w.Row(1, "101", "3.08");
    w.Row(2, "1101", "33.08");
    Click(v.cmdCalEng);
    w.ExpectReport();
    Click(v.mnuUpdate);
    EXPECT_FALSE(v.Visible);
    EXPECT_TRUE(frmVaelAna.cmdFiles[0].Enabled);
    EXPECT_TRUE(frmVaelAna.cmdFiles[1].Enabled);
    for (const Button& button : frmVaelAna.cmdEnergy) EXPECT_TRUE(button.Enabled);
    for (const std::size_t k : {0U, 2U, 3U, 5U, 12U})
        EXPECT_TRUE(frmVaelAna.cmdOperation[k].Enabled) << k;
}

TEST(CalibrationReview, ExitKeepsTheColoursOfThisRunAndUpdateWritesThem) {
    Calibrated w;
    ASSERT_EQ(WriteSystemPara(w.Folder.Path("syspara_a.xpr"), store.DefaultParam), TRUE_WORD);
    store.ColorTable[3] = 0x123456;  // in no file yet
    Click(v.cmdCalbCan);
    EXPECT_FALSE(v.Visible);
    EXPECT_EQ(store.ColorTable[3], 0x123456);
    Click(frmVaelAna.mnuCons);
    Click(v.cmdCalbOK);
    EXPECT_FALSE(v.Visible);
    store.ColorTable[3] = 0;
    ParamRecord read{};
    ASSERT_EQ(ReadSystemPara(w.Folder.Path("syspara_a.xpr"), read), TRUE_WORD);
    EXPECT_EQ(store.ColorTable[3], 0x123456);
}

TEST(CalibrationReview, DelFitScalesThePlotAnew) {
    Calibrated w;
    w.OpenFiles({w.Source("Ag.npd")});
    AutoScaleBoth();
    const auto whole = YFullScale(0);
    SetYFullScale(0, 100 * whole);
    ASSERT_NE(YFullScale(0), whole);
    Click(v.cmdFitDel);
    EXPECT_EQ(YFullScale(0), whole);
}

TEST(CalibrationReview, TellsTheWindowAndTheRowThatItWorksOn) {
    Calibrated w(false);
    w.Open({w.Source("a.npd"), w.Source("b.npd")});
    Change_cboGrphSel(0, 1);
    Click(frmVaelAna.mnuCons);
    EXPECT_EQ(v.WinNo(), 0);
    EXPECT_EQ(v.GrpNo(), 1);
    Change_cboGrphSel(0, 0);
    EXPECT_EQ(v.GrpNo(), 0) << "it works on the current row, wherever that goes";
    Change_cboGrphSel(0, 1);
    w.OpenFiles({w.Source("c.npd")});
    EXPECT_EQ(v.GrpNo(), 0);
}

TEST(CalibrationReview, AFailedLineIsNotTakenOverUntilACurveIsFound) {
    Calibrated w(false);
    store.DefaultParam.EgcCoef = {0.05, 0.03, 0.0};
    Click(frmVaelAna.mnuCons);
    w.Row(1, "100", "3");
    Click(v.optCnst[1]);
    Click(v.cmdCalEng);
    w.Desk.ExpectQuestion("\"Calculate\" found no curve: the constants in force stay.");
    Click(v.mnuUpdate);
    EXPECT_EQ(store.DefaultParam.EgcCoef, (CalibConstants{0.05, 0.03, 0.0}));
    w.Row(2, "200", "6");
    Click(v.cmdCalEng);
    EXPECT_FALSE(v.FitFailed);
    w.ExpectReport();
    Click(v.mnuUpdate);
    EXPECT_NEAR(store.DefaultParam.EgcCoef[1], 0.03, 1e-12) << "a curve that is found frees it";
}
