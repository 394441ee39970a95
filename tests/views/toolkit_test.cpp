// The hands: what runs a handler, what is swallowed, and what waits.
#include "support/scripteddesk.h"

#include "core/fault.h"
#include "core/text.h"
#include "toolkit/hand.h"

#include <gtest/gtest.h>

using namespace vael;

namespace {

struct Probe : View {
    Probe() : View("probe", "Probe") {}
    Button go{*this, "go"};
    CheckBox tick{*this, "tick"};
    Option first{*this, "first", "First", "g"};
    Option second{*this, "second", "Second", "g"};
    TextBox text{*this, "text"};
    NumberBox number{*this, "number", "0.00"};
    ListBox list{*this, "list", {"a", "b"}};
    ScrollBar bar{*this, "bar"};
    Grid grid{*this, "grid", 3, 2};
    Picture picture{*this, "picture"};
    Timer timer{*this, "timer", 10};
    ControlArray<Button, 3> many{*this, "many", {"x", "y", "z"}};
};

struct Other : View {
    Other() : View("other", "Other") {}
    Button done{*this, "done"};
};

class Hands : public testing::Test {
protected:
    ScriptedDesk desk;
    Probe probe;
    Other other;
    int runs = 0;
};

}  // namespace

TEST_F(Hands, AssignmentOnlyAssignsAndTheUsersClickRunsTheHandler) {
    probe.tick.Click = [&] { ++runs; };
    probe.tick.Value = 1;
    EXPECT_EQ(runs, 0);
    EXPECT_TRUE(Tick(probe.tick));
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(probe.tick.Value, 0);
    EXPECT_TRUE(Tick(probe.tick, 0));
    EXPECT_EQ(runs, 1) << "it had that value already";
}

TEST_F(Hands, ADisabledHiddenOrWithheldControlIgnoresTheUser) {
    probe.go.Click = [&] { ++runs; };
    probe.go.Enabled = false;
    EXPECT_FALSE(Click(probe.go));
    probe.go.Enabled = true;
    probe.go.Visible = false;
    EXPECT_FALSE(Click(probe.go));
    probe.go.Visible = true;
    probe.go.Withheld = true;
    EXPECT_FALSE(Click(probe.go));
    EXPECT_EQ(runs, 0);
    probe.go.Withheld = false;
    EXPECT_TRUE(Click(probe.go));
    EXPECT_EQ(runs, 1);
}

TEST_F(Hands, ControlArraysNameTheirMembers) {
    EXPECT_EQ(probe.many[2].Name, "many_2");
    EXPECT_EQ(probe.many[1].Caption, "y");
    EXPECT_EQ(probe.Find("many_0"), &probe.many[0]);
    EXPECT_EQ(probe.Find("nobody"), nullptr);
}

TEST_F(Hands, OptionsOfAGroupExcludeEachOther) {
    Click(probe.first);
    Click(probe.second);
    EXPECT_FALSE(probe.first.Value);
    EXPECT_TRUE(probe.second.Value);
}

TEST_F(Hands, AFaultEndsTheCommandAndReachesTheSink) {
    probe.go.Click = [&] {
        ++runs;
        (void)Quot(1.0, 0.0);
        ++runs;
    };
    EXPECT_TRUE(Click(probe.go));
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(desk.Faults, std::vector<std::string>{"Division by zero."});
    EXPECT_FALSE(CommandRunning());
}

TEST_F(Hands, ActsDuringACommandAreSwallowedAndACloseBoxWaits) {
    int closes = 0;
    other.Closing = [&] { ++closes; };
    probe.tick.Click = [&] { ++runs; };
    probe.go.Click = [&] {
        desk.OnBreathe = [&] {
            EXPECT_FALSE(Tick(probe.tick));
            EXPECT_FALSE(Close(other));
            EXPECT_EQ(closes, 0);
        };
        TheDesk().Breathe();
    };
    Click(probe.go);
    EXPECT_EQ(runs, 0);
    EXPECT_EQ(probe.tick.Value, 0);
    EXPECT_EQ(closes, 1) << "carried out afterwards";
}

TEST_F(Hands, AViewThatStaysLiveWorksDuringACommand) {
    other.StaysLive = true;
    other.done.Click = [&] { ++runs; };
    probe.go.Click = [&] { EXPECT_TRUE(Click(other.done)); };
    Click(probe.go);
    EXPECT_EQ(runs, 1);
}

TEST_F(Hands, AModalViewTakesActsWhileItsCommandWaitsAndNobodyElseDoes) {
    other.done.Click = [&] {
        ++runs;
        other.Visible = false;
    };
    desk.OnModal([&](View&) {
        EXPECT_FALSE(Tick(probe.tick));
        EXPECT_TRUE(Click(other.done));
    });
    bool after = false;
    probe.go.Click = [&] {
        ShowModal(other);
        after = true;
    };
    Click(probe.go);
    EXPECT_EQ(runs, 1);
    EXPECT_TRUE(after);
}

TEST_F(Hands, AFaultInAModalViewDoesNotUnwindTheCommandBelow) {
    other.done.Click = [] { (void)Number("x"); };
    desk.OnModal([&](View& view) {
        Click(other.done);
        view.Visible = false;
    });
    bool after = false;
    probe.go.Click = [&] {
        ShowModal(other);
        after = true;
    };
    Click(probe.go);
    EXPECT_TRUE(after);
    EXPECT_EQ(desk.Faults.size(), 1u);
}

TEST_F(Hands, LeavingABoxRunsItsHandlerBeforeTheNextActAndMayKeepTheFocus) {
    bool lets = false;
    probe.text.Leave = [&] { return lets; };
    probe.go.Click = [&] { ++runs; };
    Type(probe.text, "abc");
    EXPECT_EQ(TypedBox(), &probe.text);
    EXPECT_FALSE(Click(probe.go)) << "the box keeps the focus and the act is dropped";
    EXPECT_EQ(runs, 0);
    lets = true;
    EXPECT_TRUE(Click(probe.go));
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(TypedBox(), nullptr);
}

TEST_F(Hands, TheCloseBoxHoldsNobodyCaptive) {
    probe.text.Leave = [] { return false; };
    Type(probe.text, "abc");
    probe.Visible = true;
    EXPECT_TRUE(Close(probe));
    EXPECT_FALSE(probe.Visible);
}

TEST_F(Hands, HalfTypedNumbersNeverReachTheRecord) {
    probe.number.Most = 10.0;
    probe.number.Change = [&] { ++runs; };
    Type(probe.number, "1.");
    Type(probe.number, "-");
    EXPECT_EQ(probe.number.Value, 0.0);
    Leave(probe.number);
    EXPECT_EQ(probe.number.Value, 0.0) << "no number: the box keeps its value";
    Type(probe.number, "25");
    PressEnter(probe.number);
    EXPECT_EQ(probe.number.Value, 10.0) << "held within its limits";
    EXPECT_EQ(probe.number.Text(), "10.00");
    EXPECT_EQ(runs, 1);
}

TEST_F(Hands, TheProgramsHandRunsTheHandlerByItsThreeVerbs) {
    probe.list.Click = probe.tick.Click = probe.text.Change = [&] { ++runs; };
    Select(probe.list, 1);
    Select(probe.list, 1);
    EXPECT_EQ(runs, 2) << "Select runs also for the same index";
    Set(probe.tick, 1);
    Set(probe.tick, 1);
    EXPECT_EQ(runs, 3) << "Set runs when the value differs";
    Put(probe.text, "t");
    Put(probe.text, "t");
    EXPECT_EQ(runs, 4) << "Put runs when the text differs";
}

TEST_F(Hands, GridsCheckTheirBounds) {
    int column = 0;
    probe.grid.CellClick = [&](int c, int) { column = c; };
    Press(probe.grid, 3, 2);
    EXPECT_EQ(column, 3);
    EXPECT_THROW((void)probe.grid.At(4, 1), Fault);
    EXPECT_THROW((void)probe.grid.At(1, 3), Fault);
    probe.grid.At(2, 1).Text = "kept";
    probe.grid.SetSize(4, 5);
    EXPECT_EQ(probe.grid.At(2, 1).Text, "kept");
}

TEST_F(Hands, ATimerRunsOnlyWhileItIsEnabledAndNoCommandRuns) {
    probe.timer.Tick = [&] { ++runs; };
    EXPECT_FALSE(Elapse(probe.timer));
    probe.timer.Enabled = true;
    EXPECT_TRUE(Elapse(probe.timer));
    probe.go.Click = [&] { EXPECT_FALSE(Elapse(probe.timer)); };
    Click(probe.go);
    EXPECT_EQ(runs, 1);
}

TEST_F(Hands, ScrollBarsHoldTheirRange) {
    probe.bar.Most = 50;
    Scroll(probe.bar, 90);
    EXPECT_EQ(probe.bar.Value, 50);
}

TEST_F(Hands, AViewUnloadedByItsOwnHandlerIsRebuiltAfterwards) {
    static Probe kept;
    kept.text.Text = "changed";
    kept.go.Click = [] {
        Unload(kept);
        EXPECT_EQ(kept.text.Text, "changed") << "it stands until the handler has returned";
    };
    Click(kept.go);
    EXPECT_EQ(kept.text.Text, "");
    EXPECT_FALSE(kept.go.Click);
}
