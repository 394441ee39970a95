// The input box: what it gives for each way out.
#include "support/world.h"

#include <gtest/gtest.h>

using namespace vael;

TEST(Input, OkLeavesTheText) {
    World world;
    world.Desk.OnModal([](View& view) {
        EXPECT_EQ(&view, &frmInput);
        EXPECT_EQ(frmInput.lblInputName.Caption, "New Dir");
        Type(frmInput.txtInput, "run 7");
        Click(frmInput.cmdOk);
    });
    EXPECT_EQ(AskLine("New Dir"), "run 7");
    EXPECT_EQ(frmInput.StrValue(), "run 7");
    EXPECT_EQ(frmInput.Caption, "Input");
    EXPECT_EQ(frmInput.cmdOk.Caption, "OK");
    EXPECT_EQ(frmInput.cmdCan.Caption, "Cancel");
}

TEST(Input, CancelEscapeAndTheCloseBoxGiveNoInput) {
    World world;
    for (int way = 0; way < 3; ++way) {
        world.Desk.OnModal([way](View& view) {
            Type(frmInput.txtInput, "typed");
            if (way == 0) Click(frmInput.cmdCan);
            if (way == 1) Key(view, {.Key = KeyPress::Name::Escape});
            if (way == 2) Close(view);
        });
        EXPECT_EQ(AskLine("Name"), "") << way;
    }
}

TEST(Input, EnterIsOk) {
    World world;
    world.Desk.OnModal([](View&) {
        Type(frmInput.txtInput, "by key");
        PressEnter(frmInput.txtInput);
    });
    EXPECT_EQ(AskLine("Name"), "by key");
}

TEST(Input, SettingTheNameEmptiesTheInput) {
    World world;
    frmInput.txtInput.Text = "left over";
    frmInput.CapName("Name");
    EXPECT_EQ(frmInput.StrValue(), "");
}
