// The table of regions of interest.
#include "analysis/roi.h"

#include "core/fault.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using namespace vael;

namespace {

struct Desk {
    std::vector<SpectrumData> Spectra = std::vector<SpectrumData>(SLOT_COUNT);
    RoiList Rois{};
    std::vector<std::string> Calls;
    Marks marks;

    Desk() {
        marks.draw = Note("draw");
        marks.erase = Note("erase");
        for (auto& spectrum : Spectra) spectrum.DataNo = 4096;
    }
    MarkCall Note(const char* verb) {
        return [this, verb](int window, int slot, int start, int end, Colour colour) {
            Calls.push_back(std::string(verb) + " " + std::to_string(window) + " " +
                            std::to_string(slot) + " " + std::to_string(start) + "-" +
                            std::to_string(end) + " " + std::to_string(colour));
        };
    }
    int Add(int start, int end, int slot = 0, Colour colour = 7) {
        return AddRoi(Rois, Spectra, 0, slot, static_cast<std::int16_t>(start),
                      static_cast<std::int16_t>(end), colour, marks);
    }
};

}  // namespace

TEST(Roi, RegionsStandByTheirStart) {
    Desk desk;
    EXPECT_EQ(desk.Add(300, 400), 0);
    EXPECT_EQ(desk.Add(100, 200), 0);
    EXPECT_EQ(desk.Add(200, 250), 1);
    EXPECT_EQ(desk.Rois.RoiNum, 3);
    EXPECT_EQ(desk.Rois.RoiTable[0].StartCh, 100);
    EXPECT_EQ(desk.Rois.RoiTable[2].StartCh, 300);
    EXPECT_EQ(desk.Calls.front(), "draw 0 0 300-400 7");
}

TEST(Roi, EqualStartsKeepTheOrderOfTheirComing) {
    Desk desk;
    desk.Add(100, 200);
    EXPECT_EQ(desk.Add(100, 150), 1);
    EXPECT_EQ(desk.Rois.RoiTable[0].EndCh, 200);
    EXPECT_EQ(desk.Rois.RoiTable[1].EndCh, 150);
}

TEST(Roi, AnEleventhRegionIsRefusedAndNothingIsDrawn) {
    Desk desk;
    for (int i = 0; i < 10; ++i) EXPECT_EQ(desk.Add(10 * i, 10 * i + 5), i);
    const auto drawn = desk.Calls.size();
    EXPECT_EQ(desk.Add(500, 510), -1);
    EXPECT_EQ(desk.Calls.size(), drawn);
    EXPECT_EQ(desk.Rois.RoiNum, 10);
}

TEST(Roi, TheLowestChannelWinsATie) {
    Desk desk;
    auto& counts = desk.Spectra[2].Count;
    counts[102] = 9;
    counts[105] = 9;
    counts[107] = 4;
    desk.Add(100, 107, 2);
    EXPECT_EQ(desk.Rois.RoiTable[0].MaxCount, 9.0);
    EXPECT_EQ(desk.Rois.RoiTable[0].MaxCh, 102.0);
    EXPECT_EQ(desk.Rois.RoiTable[0].TotalCount, 22.0);
}

TEST(Roi, ARegionOfZerosHasItsHighestChannelAtZeroAndJumpsThere) {
    Desk desk;
    desk.Add(100, 200);
    EXPECT_EQ(desk.Rois.RoiTable[0].MaxCh, 0.0);
    EXPECT_FALSE(JumpRoi(desk.Rois, 150, 1));
    const auto jump = JumpRoi(desk.Rois, 150, 0);
    ASSERT_TRUE(jump);
    EXPECT_EQ(jump->Channel, 0);
    EXPECT_EQ(jump->StartCh, 100);
    EXPECT_EQ(jump->EndCh, 200);
}

TEST(Roi, SettingKeepsTheRowInItsPlaceAndRedrawsIt) {
    Desk desk;
    desk.Spectra[0].Count[500] = 3;
    desk.Add(100, 150);
    desk.Add(200, 250);
    desk.Calls.clear();
    EXPECT_EQ(SetRoi(desk.Rois, desk.Spectra, 1, 0, 499, 501, 9, desk.marks), 0);
    EXPECT_EQ(desk.Rois.RoiTable[0].StartCh, 499);
    EXPECT_EQ(desk.Rois.RoiTable[1].StartCh, 200);
    EXPECT_EQ(desk.Rois.RoiTable[0].MaxCh, 500.0);
    EXPECT_EQ(desk.Calls, (std::vector<std::string>{"erase 1 0 100-150 7", "draw 1 0 499-501 9"}));
    EXPECT_EQ(SetRoi(desk.Rois, desk.Spectra, 1, 2, 1, 2, 9, desk.marks), -1);
    EXPECT_EQ(SetRoi(desk.Rois, desk.Spectra, 1, -1, 1, 2, 9, desk.marks), -1);
}

TEST(Roi, ReadingOutsideTheTableGivesNoGraph) {
    Desk desk;
    desk.Add(100, 150, 3);
    EXPECT_EQ(GetRoi(desk.Rois, 0).Graph, 3);
    EXPECT_EQ(GetRoi(desk.Rois, 0).EndCh, 150);
    EXPECT_EQ(GetRoi(desk.Rois, 1).Graph, 65535);
    EXPECT_EQ(GetRoi(desk.Rois, -1).Graph, 65535);
}

TEST(Roi, DeletingErasesAndMovesTheRestDown) {
    Desk desk;
    desk.Add(100, 150);
    desk.Add(200, 250);
    desk.Add(300, 350);
    desk.Calls.clear();
    DeleteRoi(desk.Rois, 0, 1, desk.marks);
    EXPECT_EQ(desk.Rois.RoiNum, 2);
    EXPECT_EQ(desk.Rois.RoiTable[1].StartCh, 300);
    EXPECT_EQ(desk.Calls, (std::vector<std::string>{"erase 0 0 200-250 7"}));
    DeleteRoi(desk.Rois, 0, 2, desk.marks);
    EXPECT_EQ(desk.Rois.RoiNum, 2);
}

TEST(Roi, ACursorOnABoundaryIsOutside) {
    Desk desk;
    desk.Add(100, 200, 4);
    EXPECT_EQ(FindRoiAt(desk.Rois, 4, 100), -1);
    EXPECT_EQ(FindRoiAt(desk.Rois, 4, 101), 0);
    EXPECT_EQ(FindRoiAt(desk.Rois, 4, 199), 0);
    EXPECT_EQ(FindRoiAt(desk.Rois, 4, 200), -1);
    EXPECT_EQ(FindRoiAt(desk.Rois, 5, 150), -1);
    EXPECT_EQ(FindRoiAt(desk.Rois, ALL_BITS, 150), 0);
}

TEST(Roi, OnlyRegionsWhollyInsideAreCounted) {
    Desk desk;
    desk.Add(100, 200, 1);
    desk.Add(250, 300, 2);
    desk.Add(260, 290, 1);
    const auto any = CountRoiInRegion(desk.Rois, ALL_BITS, 101, 300);
    EXPECT_EQ(any.Count, 2);
    EXPECT_EQ(any.First, 1);
    EXPECT_EQ(CountRoiInRegion(desk.Rois, 1, 100, 300).Count, 2);
    EXPECT_EQ(CountRoiInRegion(desk.Rois, 2, 251, 300).First, 65535);
}

TEST(Roi, JumpsStepOnFromTheRegionTheyStandOn) {
    Desk desk;
    for (const int channel : {110, 210, 310}) {
        desk.Spectra[0].Count[static_cast<std::size_t>(channel)] = 5;
        desk.Add(channel - 10, channel + 10);
    }
    EXPECT_EQ(JumpRoi(desk.Rois, 150, 1)->Channel, 210);
    EXPECT_EQ(JumpRoi(desk.Rois, 210, 1)->Channel, 310);
    EXPECT_EQ(JumpRoi(desk.Rois, 210, 0)->Channel, 110);
    EXPECT_EQ(JumpRoi(desk.Rois, 150, 0)->Channel, 110);
    EXPECT_FALSE(JumpRoi(desk.Rois, 310, 1));
    EXPECT_FALSE(JumpRoi(desk.Rois, 110, 0));
    EXPECT_FALSE(JumpRoi(desk.Rois, 311, 1));
    EXPECT_FALSE(JumpRoi(RoiList{}, 5, 1));
}

TEST(Roi, ChannelsBeyondTheSpectrumAreAFault) {
    Desk desk;
    EXPECT_THROW(desk.Add(8190, 8192), Fault);
}
