// The log ring and the message box.
#include "support/world.h"

#include <gtest/gtest.h>

using namespace vael;

TEST(Log, After205LinesTheViewShowsTheLast200InTheOrderOfTheirArrival) {
    World world;
    for (int n = 1; n <= 205; ++n) PutLog("line " + std::to_string(n));
    std::string expected;
    for (int n = 6; n <= 205; ++n) expected += "line " + std::to_string(n) + "\r\n";
    EXPECT_EQ(frmLog.txtMessage.Text, expected);
    EXPECT_EQ(frmLog.LineCount, 200);
}

TEST(Log, ClearEmptiesItAndHideHidesIt) {
    World world;
    PutLog("a");
    Click(frmVaelAna.mnuLogText);
    EXPECT_TRUE(frmLog.Visible);
    Click(frmLog.cmdClear);
    EXPECT_EQ(frmLog.txtMessage.Text, "");
    PutLog("b");
    EXPECT_EQ(frmLog.txtMessage.Text, "b\r\n");
    Click(frmLog.cmdHide);
    EXPECT_FALSE(frmLog.Visible);
}

TEST(Log, ClearStartsTheRingAnewAlsoAfterItHasWrapped) {
    World world;
    for (int n = 1; n <= 205; ++n) PutLog("line " + std::to_string(n));
    Click(frmVaelAna.mnuLogText);
    Click(frmLog.cmdClear);
    EXPECT_EQ(frmLog.txtMessage.Text, "");
    PutLog("a");
    PutLog("b");
    EXPECT_EQ(frmLog.txtMessage.Text, "a\r\nb\r\n");
    EXPECT_EQ(frmLog.OldestIndex, 0);
}

TEST(MessageBox, KindsShowTheirButtons) {
    World world;
    frmDialogMessage.Kind(0);
    EXPECT_TRUE(frmDialogMessage.cmdYes.Visible && frmDialogMessage.cmdNo.Visible);
    EXPECT_FALSE(frmDialogMessage.OkInCancelPlace);
    frmDialogMessage.Kind(1);
    EXPECT_FALSE(frmDialogMessage.cmdYes.Visible);
    EXPECT_TRUE(frmDialogMessage.cmdNo.Visible);
    frmDialogMessage.Kind(7);
    EXPECT_TRUE(frmDialogMessage.cmdYes.Visible);
    EXPECT_FALSE(frmDialogMessage.cmdNo.Visible);
    EXPECT_TRUE(frmDialogMessage.OkInCancelPlace);
    EXPECT_EQ(frmDialogMessage.cmdYes.Caption, "O K");
    EXPECT_EQ(frmDialogMessage.cmdNo.Caption, "Cancel");
}

TEST(MessageBox, BtnValueReadsTheResult) {
    World world;
    world.Desk.OnModal([](View&) { Click(frmDialogMessage.cmdNo); });
    EXPECT_EQ(ShowMessage(0, "Sure?"), 1);
    world.Desk.OnModal([](View&) { Click(frmDialogMessage.cmdYes); });
    EXPECT_EQ(ShowMessage(0, "Sure?"), 0);
    EXPECT_EQ(frmDialogMessage.itxtMessage.Text, "Sure?");
    world.Desk.OnModal([](View& view) { Close(view); });
    EXPECT_EQ(ShowMessage(0, "Sure?"), 1) << "the close box of two buttons is Cancel";
}
