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
    ListBox typed{*this, "typed", {"1K", "2K"}, 0};
    ListBox files{*this, "files", {"a", "b", "c", "d"}};
    Tabs tabs{*this, "tabs", {"PeakData", "UsePeak"}};
    Label label{*this, "label"};
    Frame frame{*this, "frame"};
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

TEST_F(Hands, ANumberBoxTellsThatItIsLeftTypedInOrNot) {
    std::vector<std::string> told;
    probe.Visible = true;
    probe.number.Change = [&] { told.push_back("change"); };
    probe.number.Leave = [&] { told.push_back("leave at " + probe.number.Text()); };
    Type(probe.number, "5");
    EXPECT_TRUE(told.empty());
    EXPECT_TRUE(Leave(probe.number));
    EXPECT_TRUE(Leave(probe.number)) << "nothing was typed since";
    Type(probe.number, "7");
    Click(probe.go);
    EXPECT_EQ(told, (std::vector<std::string>{"change", "leave at 5.00", "leave at 5.00", "change",
                                              "leave at 7.00"}));
    probe.Visible = false;
    EXPECT_FALSE(Leave(probe.number)) << "a window that goes is no act of the user";
    EXPECT_EQ(told.size(), 5u);
}

TEST_F(Hands, WhatWasTypedInAnUnloadedViewIsForgotten) {
    static Probe kept;
    Type(kept.number, "5");
    Unload(kept);
    EXPECT_EQ(TypedBox(), nullptr);
    Click(kept.go);
    EXPECT_EQ(kept.number.Value, 0.0);
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

TEST_F(Hands, OnlyAnEditableCellIsTypedOverAndOnlyATickIsTicked) {
    probe.grid.CellEdit = [&](int c, int r) { runs += 10 * c + r; };
    EXPECT_FALSE(Edit(probe.grid, 1, 2, "no"));
    EXPECT_EQ(probe.grid.At(1, 2).Text, "");
    probe.grid.At(1, 2).Editable = true;
    EXPECT_TRUE(Edit(probe.grid, 1, 2, "yes"));
    EXPECT_EQ(probe.grid.At(1, 2).Text, "yes");
    EXPECT_EQ(runs, 12);
    EXPECT_FALSE(Tick(probe.grid, 3, 1));
    probe.grid.At(3, 1).Kind = Grid::CellKind::Tick;
    EXPECT_TRUE(Tick(probe.grid, 3, 1));
    EXPECT_TRUE(probe.grid.At(3, 1).Ticked);
    EXPECT_EQ(runs, 12 + 31);
    EXPECT_EQ(probe.grid.Col, 3);
    EXPECT_EQ(probe.grid.Row, 1);
    EXPECT_FALSE(Press(probe.grid, 4, 1)) << "outside the grid there is nothing to press";
    EXPECT_TRUE(desk.Faults.empty());
}

TEST_F(Hands, AGridTellsThatItsCellsMayHaveChanged) {
    const auto before = probe.grid.Version();
    const Grid& seen = probe.grid;
    (void)seen.At(1, 1);
    EXPECT_EQ(probe.grid.Version(), before) << "reading changes nothing";
    probe.grid.At(1, 1).Text = "x";
    EXPECT_NE(probe.grid.Version(), before);
    Probe another;
    EXPECT_NE(another.grid.Version(), probe.grid.Version());
}

TEST_F(Hands, ASmallerGridHoldsItsCurrentCell) {
    Press(probe.grid, 3, 2);
    probe.grid.SetSize(2, 1);
    EXPECT_EQ(probe.grid.Col, 2);
    EXPECT_EQ(probe.grid.Row, 1);
}

TEST_F(Hands, TabsArePickedWithinTheirNumber) {
    probe.tabs.Click = [&] { ++runs; };
    EXPECT_TRUE(Pick(probe.tabs, 1));
    EXPECT_FALSE(Pick(probe.tabs, 2));
    EXPECT_EQ(probe.tabs.Index, 1);
    EXPECT_EQ(runs, 1);
}

TEST_F(Hands, ADoubleClickOnATextBoxRunsItsHandlerAlsoWhereNothingCanBeTyped) {
    EXPECT_FALSE(DoubleClick(probe.text)) << "it has none";
    probe.text.DoubleClick = [&] { ++runs; };
    probe.text.ReadOnly = true;
    EXPECT_TRUE(DoubleClick(probe.text));
    probe.text.Enabled = false;
    EXPECT_FALSE(DoubleClick(probe.text));
    EXPECT_EQ(runs, 1);
}

TEST_F(Hands, ADoubleClickOnAListPicksAndRunsItsOwnHandler) {
    probe.files.Click = [&] { runs += 100; };
    probe.files.DoubleClick = [&] { ++runs; };
    EXPECT_TRUE(DoubleClick(probe.files, 2));
    EXPECT_EQ(probe.files.Index, 2);
    EXPECT_EQ(runs, 1);
    EXPECT_FALSE(DoubleClick(probe.files, 4));
}

TEST_F(Hands, ManyItemsArePickedOnlyInAListOfMany) {
    probe.files.Click = [&] { ++runs; };
    EXPECT_FALSE(PickMany(probe.files, {0, 1}));
    probe.files.Multiple = true;
    EXPECT_TRUE(PickMany(probe.files, {3, 0}));
    EXPECT_EQ(probe.files.Picked, (std::vector<int>{0, 3}));
    EXPECT_EQ(probe.files.Index, 3);
    EXPECT_FALSE(PickMany(probe.files, {0, 4}));
    EXPECT_TRUE(Pick(probe.files, 1));
    EXPECT_EQ(probe.files.Picked, std::vector<int>{1}) << "a plain pick takes the others back";
    EXPECT_TRUE(PickMany(probe.files, {}));
    EXPECT_EQ(probe.files.Index, -1);
    EXPECT_EQ(runs, 3);
}

TEST_F(Hands, AnEditableListTakesATypedTextOnEnter) {
    probe.typed.Editable = true;
    std::vector<std::string> taken;
    probe.typed.Enter = [&] { taken.push_back(probe.typed.Text()); };
    EXPECT_FALSE(Type(probe.list, "x")) << "this list is not editable";
    EXPECT_TRUE(Type(probe.typed, "3"));
    EXPECT_TRUE(Type(probe.typed, "3k"));
    EXPECT_EQ(TypedBox(), &probe.typed);
    EXPECT_TRUE(taken.empty()) << "half typed";
    EXPECT_TRUE(PressEnter(probe.typed));
    EXPECT_EQ(taken, std::vector<std::string>{"3k"});
    EXPECT_EQ(probe.typed.Index, -1);
    EXPECT_TRUE(Click(probe.go));
    EXPECT_EQ(taken.size(), 1u) << "leaving does not take it twice";
}

TEST_F(Hands, AnEditableListTakesATypedTextOnLeavingOnlyWhenItWasChanged) {
    probe.typed.Editable = true;
    probe.typed.Enter = [&] { ++runs; };
    Type(probe.typed, "1");
    Type(probe.typed, "1K");
    EXPECT_TRUE(Leave(probe.typed));
    EXPECT_EQ(runs, 0) << "changed and changed back";
    EXPECT_EQ(probe.typed.Index, 0) << "it shows its item again";
    Type(probe.typed, "auto");
    EXPECT_TRUE(Click(probe.go)) << "an act elsewhere leaves it first";
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(probe.typed.Text(), "auto");
    Type(probe.typed, "log");
    EXPECT_TRUE(Pick(probe.typed, 1));
    EXPECT_EQ(probe.typed.Text(), "2K") << "an item takes the place of what was typed";
    EXPECT_TRUE(Click(probe.go));
    EXPECT_EQ(runs, 1);
}

TEST_F(Hands, EnterThatABoxHasNoUseForGoesOnToTheView) {
    int keys = 0;
    probe.KeyPreview = [&](const KeyPress& key) {
        keys += key.Key == KeyPress::Name::Enter ? 1 : 0;
        return true;
    };
    probe.text.Leave = [&] { return ++runs > 0; };
    Type(probe.text, "x");
    EXPECT_TRUE(PressEnter(probe.text));
    EXPECT_EQ(runs, 1) << "the box was left first";
    EXPECT_EQ(keys, 1);
    probe.number.Enter = [&] { runs += 10; };
    Type(probe.number, "5");
    EXPECT_TRUE(PressEnter(probe.number));
    EXPECT_EQ(probe.number.Value, 5.0);
    EXPECT_EQ(runs, 11);
    EXPECT_EQ(keys, 1) << "a box with a handler of its own keeps it";
    probe.text.Leave = [] { return false; };
    Type(probe.text, "y");
    EXPECT_FALSE(PressEnter(probe.text));
    EXPECT_EQ(keys, 1) << "a box that does not let go keeps the key";
}

TEST_F(Hands, EnterTakesTheTextOfABoxOnce) {
    probe.text.Enter = [&] { ++runs; };
    probe.text.Leave = [&] {
        runs += 10;
        return true;
    };
    Type(probe.text, "12");
    EXPECT_TRUE(PressEnter(probe.text));
    EXPECT_TRUE(Click(probe.go));
    EXPECT_EQ(runs, 1) << "leaving does not take it again";
    Type(probe.text, "13");
    EXPECT_TRUE(Click(probe.go));
    EXPECT_EQ(runs, 11);
}

TEST_F(Hands, TheWheelTellsNotchesPlaceAndDirection) {
    EXPECT_FALSE(Wheel(probe.picture, 1.0, 10.0, false)) << "the picture has no use for it";
    double sum = 0.0;
    probe.picture.Wheel = [&](double notches, double x, bool sideways) {
        sum += sideways ? 1000.0 : notches * x;
    };
    EXPECT_TRUE(Wheel(probe.picture, -0.25, 8.0, false));
    EXPECT_EQ(sum, -2.0);
    EXPECT_TRUE(Wheel(probe.picture, 1.0, 8.0, true));
    EXPECT_EQ(sum, 998.0);
    probe.picture.Enabled = false;
    EXPECT_FALSE(Wheel(probe.picture, 1.0, 8.0, true));
}

TEST_F(Hands, ALabelMovesTheFrameItStandsInWithThePointer) {
    double x0 = 0.0;
    probe.label.MouseDown = [&](MouseButton, double x, double) { x0 = x; };
    probe.label.MouseMove = [&](MouseButton button, double x, double) {
        if (button == MouseButton::Left) probe.frame.Left += static_cast<int>(x - x0);
    };
    EXPECT_FALSE(MouseMove(probe.frame, MouseButton::Left, 1.0, 1.0)) << "it has no handler";
    MouseDown(probe.label, MouseButton::Left, 5.0, 5.0);
    MouseMove(probe.label, MouseButton::Left, 25.0, 5.0);
    MouseMove(probe.label, MouseButton::Left, 8.0, 5.0);  // counted from where it stands now
    EXPECT_EQ(probe.frame.Left, 23);
}

TEST_F(Hands, AViewIsPutOnTopAndBack) {
    TopMost(probe);
    EXPECT_TRUE(probe.OnTop);
    NoTopMost(probe);
    EXPECT_FALSE(probe.OnTop);
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
