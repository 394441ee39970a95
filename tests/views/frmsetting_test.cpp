// The settings dialog: what it fills in, what each step of "OK" stores, and what stays.
#include "support/world.h"

#include <gtest/gtest.h>

using namespace vael;

namespace {

SettingView& v = frmSetting;

/// Opens the dialog by its menu item; `act` is the user while it stands.
void Open(World& world, const std::function<void()>& act) {
    world.Desk.OnModal([act](View& view) {
        ASSERT_EQ(&view, &frmSetting);
        act();
        view.Visible = false;
    });
    EXPECT_TRUE(Click(frmVaelAna.mnuSetCons));
}

void Press(KeyPress::Name name) { Key(v, {.Key = name}); }

}  // namespace

TEST(Setting, HasItsWordsAndFormDefaults) {
    World world;
    EXPECT_EQ(v.Caption, "Settings");
    EXPECT_EQ(v.cboSmooth.Items,
              (std::vector<std::string>{"5 Point", "7 Point", "9 Point", "11 Point"}));
    EXPECT_EQ(v.cboFuncType.Items, (std::vector<std::string>{"Gauss", "Lorentz", "Mix"}));
    EXPECT_EQ(v.cboSmooth.Text(), "5 Point");
    EXPECT_EQ(v.txtBackInterval.Text, "20");
    EXPECT_EQ(v.txtBackTimes.Text, "5");
    EXPECT_EQ(v.txtEACPS.Text, "5");
    EXPECT_EQ(v.txtISPPK.Text, "5");
    EXPECT_EQ(v.txtLambda.Text, "5");
    EXPECT_EQ(v.txtJudgeRange.Text, "0.03");
    EXPECT_EQ(v.lblSmooth.Caption, "Smoothing Point");
    EXPECT_EQ(v.chkSmoothingOn.Caption, "Smoothing (ON/OFF)");
    EXPECT_EQ(v.lblEACPS.Caption, "BG Coefficient ");
    EXPECT_EQ(v.lblISPPK.Caption, "Peak Width(Ch)");
    EXPECT_EQ(v.lblLambda.Caption, "Lambda(for DAC）");
    EXPECT_EQ(v.lblThresHint.Caption, "  1<------>20");
    EXPECT_EQ(v.lblJudgeRange.Caption + v.lblJudgeUnit.Caption, "Pickup range(dA)");
    EXPECT_EQ(v.fraPeakFitting.Caption, "Peak Fitting");
    EXPECT_EQ(v.fraLatticeFitting.Caption, "Lattice Fitting");
    EXPECT_EQ(v.cmdOk.Caption + v.cmdCansel.Caption + v.cmdDefault.Caption, "OKCancelSet Default");
}

TEST(Setting, OpensModallyFilledFromTheSettings) {
    World world;
    settings = {.FuncType = SHAPE_MIX,
                .SmoothIndex = 2,
                .PeakThres = 7,
                .BackInterval = 33,
                .BackTimes = 4,
                .EACPS = 1.256,
                .ISPPK = 12.5,
                .Lambda = 0.4141,
                .JudgeRange = 0.025,
                .SmoothingOn = 0};
    Open(world, [] {
        EXPECT_TRUE(v.Modal);
        EXPECT_EQ(v.txtThres.Text, "7");
        EXPECT_EQ(v.cboFuncType.Text(), "Mix");
        EXPECT_EQ(v.cboSmooth.Text(), "9 Point");
        EXPECT_EQ(v.txtBackInterval.Text, "33");
        EXPECT_EQ(v.txtBackTimes.Text, "4");
        EXPECT_EQ(v.txtEACPS.Text, "1.26");
        EXPECT_EQ(v.txtISPPK.Text, "12.50");
        EXPECT_EQ(v.txtLambda.Text, "0.414100");
        EXPECT_EQ(v.txtJudgeRange.Text, "0.0250");
        EXPECT_EQ(v.chkSmoothingOn.Value, 0);
    });
}

TEST(Setting, NaxFittingShowsItsOwnPeakItems) {
    World world;
    Open(world, [] {
        for (const Control* c : std::initializer_list<const Control*>{&v.txtEACPS, &v.lblEACPS,
                                                                      &v.txtISPPK, &v.lblISPPK})
            EXPECT_TRUE(c->Visible && c->Enabled) << c->Name;
        for (const Control* c : std::initializer_list<const Control*>{
                 &v.txtThres, &v.lblThres, &v.lblThresHint, &v.cboFuncType, &v.lblFuncType})
            EXPECT_FALSE(c->Visible) << c->Name;
    });
}

TEST(Setting, ExpressFittingShowsItsOwnPeakItemsAndFillsNoOther) {
    World world;
    store.FitMode = 1;
    Open(world, [] {
        for (const Control* c : std::initializer_list<const Control*>{
                 &v.txtThres, &v.lblThres, &v.lblThresHint, &v.cboFuncType, &v.lblFuncType})
            EXPECT_TRUE(c->Visible && c->Enabled) << c->Name;
        for (const Control* c : std::initializer_list<const Control*>{&v.txtEACPS, &v.lblEACPS,
                                                                      &v.txtISPPK, &v.lblISPPK})
            EXPECT_FALSE(c->Visible) << c->Name;
        EXPECT_EQ(v.txtEACPS.Text, "5") << "its form default";
        EXPECT_EQ(v.txtThres.Text, "10");
    });
}

TEST(Setting, OkStoresEveryValueAndHides) {
    World world;
    Open(world, [] {
        Pick(v.cboSmooth, 3);
        Tick(v.chkSmoothingOn, 0);
        Type(v.txtBackInterval, "25");
        Type(v.txtBackTimes, " 6 ");
        Type(v.txtEACPS, " 0.5 ");
        Type(v.txtISPPK, "18");
        Type(v.txtLambda, "0.7");
        Type(v.txtJudgeRange, "0.05");
        EXPECT_TRUE(Click(v.cmdOk));
        EXPECT_FALSE(v.Visible);
    });
    EXPECT_EQ(settings.SmoothIndex, 3);
    EXPECT_EQ(settings.SmoothingOn, 0);
    EXPECT_EQ(settings.BackInterval, 25);
    EXPECT_EQ(settings.BackTimes, 6);
    EXPECT_EQ(settings.EACPS, 0.5);
    EXPECT_EQ(settings.ISPPK, 18.0);
    EXPECT_EQ(settings.Lambda, 0.7);
    EXPECT_EQ(settings.JudgeRange, 0.05);
    EXPECT_TRUE(world.Desk.Faults.empty());
}

TEST(Setting, OkStoresThresholdAndFunctionOfExpressFitting) {
    World world;
    store.FitMode = 1;
    Open(world, [] {
        Type(v.txtThres, "30");
        Pick(v.cboFuncType, 1);
        Click(v.cmdOk);
    });
    EXPECT_EQ(settings.PeakThres, 30) << "only the Enter key holds the range";
    EXPECT_EQ(settings.FuncType, SHAPE_LORENTZ);
}

TEST(Setting, AnEmptyThresholdBecomesOne) {
    World world;
    store.FitMode = 1;
    Open(world, [] {
        Type(v.txtThres, "");
        Click(v.cmdOk);
    });
    EXPECT_EQ(settings.PeakThres, 1);
}

TEST(Setting, AThresholdBeyondItsWidthEndsBeforeAnythingIsStored) {
    World world;
    store.FitMode = 1;
    Open(world, [] {
        Type(v.txtThres, "40000");
        Pick(v.cboSmooth, 3);
        Click(v.cmdOk);
        EXPECT_TRUE(v.Visible);
    });
    EXPECT_EQ(settings.PeakThres, 10);
    EXPECT_EQ(settings.SmoothIndex, 0);
    EXPECT_EQ(world.Desk.Faults.size(), 1u);
}

TEST(Setting, ABackIntervalThatIsNoNumberEndsTheCommandWithTheEarlierStepsStored) {
    World world;
    store.FitMode = 1;
    Open(world, [] {
        Type(v.txtThres, "12");
        Pick(v.cboFuncType, 2);
        Pick(v.cboSmooth, 1);
        Type(v.txtBackInterval, "wide");
        Type(v.txtBackTimes, "9");
        Type(v.txtLambda, "0.9");
        Tick(v.chkSmoothingOn, 0);
        Click(v.cmdOk);
        EXPECT_TRUE(v.Visible) << "the dialog stays open";
    });
    EXPECT_EQ(world.Desk.Faults.size(), 1u);
    EXPECT_EQ(settings.PeakThres, 12);
    EXPECT_EQ(settings.FuncType, SHAPE_MIX);
    EXPECT_EQ(settings.SmoothIndex, 1);
    EXPECT_EQ(settings.BackInterval, 20);
    EXPECT_EQ(settings.BackTimes, 5);
    EXPECT_EQ(settings.Lambda, 0.49576);
    EXPECT_EQ(settings.SmoothingOn, 1);
}

TEST(Setting, BackTimesThatAreNoNumberKeepTheBackIntervalStored) {
    World world;
    Open(world, [] {
        Type(v.txtBackInterval, "44");
        Type(v.txtBackTimes, "");
        Click(v.cmdOk);
    });
    EXPECT_EQ(world.Desk.Faults.size(), 1u);
    EXPECT_EQ(settings.BackInterval, 44);
    EXPECT_EQ(settings.BackTimes, 5);
}

TEST(Setting, BackgroundValuesOfZeroAndBelowPass) {
    World world;
    Open(world, [] {
        Type(v.txtBackInterval, "0");
        Type(v.txtBackTimes, "-3");
        Click(v.cmdOk);
    });
    EXPECT_EQ(settings.BackInterval, 0);
    EXPECT_EQ(settings.BackTimes, -3);
    EXPECT_TRUE(world.Desk.Faults.empty());
}

TEST(Setting, TheNaxItemsAreStoredBothOrNeither) {
    World world;
    Open(world, [] {
        Type(v.txtEACPS, "0.9");
        Type(v.txtISPPK, "broad");
        Click(v.cmdOk);
    });
    EXPECT_EQ(settings.EACPS, 0.2);
    EXPECT_EQ(settings.ISPPK, 20.0);
    EXPECT_TRUE(world.Desk.Faults.empty());
}

TEST(Setting, InExpressFittingAChangedBackgroundCoefficientIsNotStored) {
    World world;
    store.FitMode = 1;
    Open(world, [] {
        EXPECT_FALSE(Type(v.txtEACPS, "0.9")) << "it is hidden";
        v.txtEACPS.Text = "0.9";
        Click(v.cmdOk);
    });
    EXPECT_EQ(settings.EACPS, 0.2);
}

TEST(Setting, LambdaAndPickUpRangeThatAreNoNumbersStaySilently) {
    World world;
    Open(world, [] {
        Type(v.txtLambda, "none");
        Type(v.txtJudgeRange, "0.04");
        Click(v.cmdOk);
        EXPECT_FALSE(v.Visible);
    });
    EXPECT_EQ(settings.Lambda, 0.49576);
    EXPECT_EQ(settings.JudgeRange, 0.04);
    EXPECT_TRUE(world.Desk.Faults.empty());
}

TEST(Setting, SetDefaultWorksAtOnceAndCancelDoesNotUndoIt) {
    World world;
    settings.EACPS = 9.0;
    settings.ISPPK = 9.0;
    settings.Lambda = 9.0;
    settings.JudgeRange = 9.0;
    settings.SmoothingOn = 0;
    settings.SmoothIndex = 3;
    settings.BackInterval = 77;
    Open(world, [] {
        Click(v.cmdDefault);
        EXPECT_EQ(v.txtEACPS.Text, "0.20");
        EXPECT_EQ(v.txtISPPK.Text, "20.00");
        EXPECT_EQ(v.txtLambda.Text, "0.495760");
        EXPECT_EQ(v.txtJudgeRange.Text, "0.0300");
        EXPECT_EQ(v.chkSmoothingOn.Value, 0) << "the box is not among those that follow";
        Click(v.cmdCansel);
        EXPECT_FALSE(v.Visible);
    });
    EXPECT_EQ(settings.EACPS, 0.2);
    EXPECT_EQ(settings.ISPPK, 20.0);
    EXPECT_EQ(settings.Lambda, 0.49576);
    EXPECT_EQ(settings.JudgeRange, 0.03);
    EXPECT_EQ(settings.SmoothingOn, 1);
    EXPECT_EQ(settings.SmoothIndex, 3);
    EXPECT_EQ(settings.BackInterval, 77);
}

TEST(Setting, CancelEscapeAndTheCloseBoxStoreNothing) {
    World world;
    const std::vector<std::function<void()>> ways{
        [] { Click(v.cmdCansel); }, [] { Press(KeyPress::Name::Escape); }, [] { Close(v); }};
    for (const auto& way : ways) {
        Open(world, [&] {
            Type(v.txtBackInterval, "99");
            Pick(v.cboSmooth, 2);
            way();
            EXPECT_FALSE(v.Visible);
        });
        EXPECT_EQ(settings.BackInterval, 20);
        EXPECT_EQ(settings.SmoothIndex, 0);
    }
}

TEST(Setting, EnterInABoxIsOkButInTheThresholdItHoldsTheRange) {
    World world;
    store.FitMode = 1;
    const auto held = [](const std::string& typed) {
        Type(v.txtThres, typed);
        PressEnter(v.txtThres);
        return v.txtThres.Text;
    };
    Open(world, [&] {
        EXPECT_EQ(held("0"), "1");
        EXPECT_EQ(held("-4"), "1");
        EXPECT_EQ(held("abc"), "1");
        EXPECT_EQ(held(""), "1");
        EXPECT_EQ(held("21"), "20");
        EXPECT_EQ(held("1e9"), "20");
        EXPECT_EQ(held("7.6"), "8");
        EXPECT_EQ(held("2.5"), "2") << "ties to the even neighbour";
        EXPECT_TRUE(v.Visible);
        EXPECT_EQ(settings.PeakThres, 10) << "the box alone is changed";
        Type(v.txtBackInterval, "31");
        PressEnter(v.txtBackInterval);
        EXPECT_FALSE(v.Visible);
    });
    EXPECT_EQ(settings.BackInterval, 31);
    EXPECT_EQ(settings.PeakThres, 2);
    EXPECT_TRUE(world.Desk.Faults.empty());
}

TEST(Setting, TiltIsShownAndDoesNothing) {
    World world;
    Open(world, [] {
        EXPECT_EQ(v.chkFitFunc.Caption, "Tilt");
        EXPECT_TRUE(v.chkFitFunc.Visible);
        EXPECT_FALSE(Tick(v.chkFitFunc));
        EXPECT_FALSE(v.chkFitFunc.Tip.empty());
    });
}

TEST(Setting, AValueForWhichThereIsNoEntrySelectsNone) {
    World world;
    settings.FuncType = 9;
    settings.SmoothIndex = -2;
    Open(world, [] {
        EXPECT_EQ(v.cboFuncType.Index, -1);
        EXPECT_EQ(v.cboSmooth.Index, -1);
    });
}
