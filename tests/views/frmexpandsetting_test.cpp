// The expand setting: the range it sets, what is no range, and its place above the others.
#include "support/world.h"

#include "core/cursors.h"

#include <gtest/gtest.h>

using namespace vael;

namespace {

ExpandSettingView& v = frmExpandSetting;

void Set(const std::string& start, const std::string& width) {
    Type(v.txtStartCh, start);
    Type(v.txtChWidth, width);
    EXPECT_TRUE(Click(v.cmdSet));
}

}  // namespace

TEST(ExpandSetting, OpensBesideTheMainViewWithItsWords) {
    World world;
    EXPECT_TRUE(Click(frmVaelAna.mnuExpandSetting));
    EXPECT_TRUE(v.Visible);
    EXPECT_FALSE(v.Modal);
    EXPECT_EQ(v.Caption, "Expand Setting");
    EXPECT_EQ(v.txtChWidth.Text, "1000");
    EXPECT_EQ(v.cmdSet.Caption, "Set");
    EXPECT_EQ(v.cmdClose.Caption, "Close");
    EXPECT_EQ(v.cmdChangeWindowMode.Caption, "change window mode");
    EXPECT_EQ(v.lblMaxCount.Caption, "of 4096");
    Click(v.cmdClose);
    EXPECT_FALSE(v.Visible);
}

TEST(ExpandSetting, SetShowsTheRangeWithTheCursorInItsMiddle) {
    World world;
    Click(frmVaelAna.mnuExpandSetting);
    Set("101", "16");  // channels 100 to 115, counted from 0
    EXPECT_EQ(CursorCh(), 108);
    EXPECT_EQ(frmVaelAna.imnSpanCh.Value, 16.0);
    EXPECT_TRUE(v.Visible);
    EXPECT_TRUE(world.Desk.Faults.empty());
}

TEST(ExpandSetting, AWidthUnderSixteenChangesNothingAndIsTold) {
    World world;
    Click(frmVaelAna.mnuExpandSetting);
    CsrX_Change(50);
    const double span = frmVaelAna.imnSpanCh.Value;
    Set("101", "15");
    EXPECT_EQ(CursorCh(), 50);
    EXPECT_EQ(frmVaelAna.imnSpanCh.Value, span);
    EXPECT_NE(frmVaelAna.lblStatus.Caption.find("16"), std::string::npos);
}

TEST(ExpandSetting, TextThatIsNoNumberAndNumbersBeyondTheirWidthAreFaults) {
    World world;
    Click(frmVaelAna.mnuExpandSetting);
    CsrX_Change(50);
    Set("first", "100");
    Set("1", "");
    Set("-2147483648", "100");
    Set("9e9", "100");
    EXPECT_EQ(world.Desk.Faults.size(), 4u);
    EXPECT_EQ(CursorCh(), 50);
}

TEST(ExpandSetting, TheWindowModeFlipsBetweenOnTopAndNot) {
    World world;
    Click(frmVaelAna.mnuExpandSetting);
    Click(v.cmdChangeWindowMode);
    EXPECT_TRUE(v.OnTop);
    Click(v.cmdChangeWindowMode);
    EXPECT_FALSE(v.OnTop);
}

TEST(ExpandSetting, EscapeClosesAndEnterSets) {
    World world;
    Click(frmVaelAna.mnuExpandSetting);
    Type(v.txtStartCh, "201");
    Type(v.txtChWidth, "100");
    PressEnter(v.txtChWidth);
    EXPECT_EQ(CursorCh(), 250);
    EXPECT_TRUE(v.Visible);
    Key(v, {.Key = KeyPress::Name::Escape});
    EXPECT_FALSE(v.Visible);
}
