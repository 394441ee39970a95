// One peak added by its numbers: what it leaves in the list, and what is refused.
#include "support/world.h"

#include "support/spectra.h"

#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/fault.h"
#include "core/graphs.h"
#include "core/text.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace vael;

namespace {

InputFitParameterView& v = frmInputFitParameter;

struct InputWorld : World {
    InputWorld() {
        Desk.ChooseFiles(
            {Folder.Write("one.npd", NpdText(GaussCounts(4096, 60.0, {{200.0, 8000.0, 10.0}})))});
        Click(frmVaelAna.mnuLoad);
        Click(frmVaelAna.cmdManualFitting);
    }
    /// Opens the view by "FitSet" and acts in it.
    void In(const std::function<void()>& acts) {
        bool acted = false;
        Desk.OnModal([&](View& view) {
            EXPECT_EQ(&view, &v);
            acts();
            acted = true;
        });
        EXPECT_TRUE(Click(frmManualFit.cmdInputFit));
        EXPECT_TRUE(acted);
    }
    /// The same with three numbers and "Add to List"; what refused them, empty for nothing.
    std::string Add(const std::string& centre, const std::string& height,
                    const std::string& width) {
        std::string told;
        In([&] {
            Type(v.txtCenterCh, centre);
            Type(v.txtMaxCount, height);
            Type(v.txtWidth, width);
            Click(v.cmdOK);
            if (!v.Visible) return;
            told = v.lblTold.Caption;
            Click(v.cmdCancel);
        });
        return told;
    }
    PeakTable& Peaks() { return Item(store.PeakTables, Slot); }
    int Slot = 0;
};

}  // namespace

TEST(InputFitParameter, OpensWithItsWordsAndTheCursorsNumbers) {
    InputWorld world;
    CsrX_Change(200);
    world.In([] {
        EXPECT_TRUE(v.Modal);
        EXPECT_EQ(v.Caption, "Input Fit Parameter");
        EXPECT_EQ(v.cmdOK.Caption, "Add to List");
        EXPECT_EQ(v.cmdCancel.Caption, "Cancel");
        EXPECT_EQ(v.txtCenterCh.Text, "201");
        EXPECT_EQ(v.txtMaxCount.Text,
                  std::to_string(store.SpectrumDatas[0].Count[200]));  // no area: the plain count
        EXPECT_NEAR(*ParseNumber(v.txtWidth.Text), 10.0, 0.7);
        Click(v.cmdCancel);
    });
    EXPECT_EQ(world.Peaks().PeakNum, 0);
}

TEST(InputFitParameter, AddsTheRecordAsItStands) {
    InputWorld world;
    settings.FuncType = SHAPE_LORENTZ;
    EXPECT_EQ(world.Add("201.5", "7500.25", "11"), "");
    ASSERT_EQ(world.Peaks().PeakNum, 1);
    const PeakRecord& peak = world.Peaks().Peak[0];
    EXPECT_EQ(peak.Position, 200.5);
    EXPECT_EQ(peak.Amplitude, 7500.25);
    EXPECT_EQ(peak.Width, 5.5);
    EXPECT_EQ(peak.GaussRatio, 1.0);
    EXPECT_EQ(peak.FuncType, SHAPE_LORENTZ);
    // A Gaussian of that height and full width has the area h w sqrt(pi / (4 ln 2)).
    EXPECT_NEAR(peak.Intensity, 7500.25 * 11.0 * std::sqrt(std::acos(-1.0) / (4 * std::log(2.0))),
                1.0);
    EXPECT_EQ(peak.StartCh, 190);  // 189.5, ties to even
    EXPECT_EQ(peak.EndCh, 212);
    EXPECT_TRUE(world.Desk.Faults.empty());
}

TEST(InputFitParameter, TheCurveIsInAFitGraphAndTheSpectrumStaysCurrent) {
    InputWorld world;
    EXPECT_EQ(world.Add("201", "7500", "10"), "");
    ASSERT_EQ(store.GraphTotal, 2);
    EXPECT_EQ(store.GraphList[0].Name, "Fit");
    EXPECT_EQ(DataNo(), world.Slot);
    const SpectrumData& fit = Item(store.SpectrumDatas, GetGraphDataNo(0));
    EXPECT_EQ(fit.Count[200], 7500);
    EXPECT_EQ(fit.Count[205], 3750);
    EXPECT_EQ(world.Add("301", "100", "10"), "");
    EXPECT_EQ(store.GraphTotal, 2) << "the same fit graph";
    EXPECT_EQ(Item(store.SpectrumDatas, GetGraphDataNo(0)).Count[300], 100);
    EXPECT_EQ(frmVaelAna.lblStatus.Caption, "Added peak 2 of 2 by hand.");
    EXPECT_TRUE(frmVaelAna.fraMemo[0].Visible);
    EXPECT_EQ(CursorCh(), 300);
}

TEST(InputFitParameter, TheAreaIsItsRegion) {
    InputWorld world;
    SetArea(180, 240);
    EXPECT_EQ(world.Add("201", "7500", "10"), "");
    EXPECT_EQ(world.Peaks().Peak[0].StartCh, 180);
    EXPECT_EQ(world.Peaks().Peak[0].EndCh, 240);
}

TEST(InputFitParameter, NeighboursDoNotOverlap) {
    InputWorld world;
    EXPECT_EQ(world.Add("231", "500", "20"), "");
    EXPECT_EQ(world.Add("201", "7500", "20"), "");
    EXPECT_EQ(world.Add("216", "700", "20"), "");
    ASSERT_EQ(world.Peaks().PeakNum, 3);
    EXPECT_EQ(world.Peaks().Peak[0].Position, 200.0);
    EXPECT_EQ(world.Peaks().Peak[1].Position, 215.0);
    EXPECT_LE(world.Peaks().Peak[0].EndCh, world.Peaks().Peak[1].StartCh);
    EXPECT_LE(world.Peaks().Peak[1].EndCh, world.Peaks().Peak[2].StartCh);
}

TEST(InputFitParameter, AtAnEndOfTheSpectrumItsRegionIsClipped) {
    InputWorld world;
    EXPECT_EQ(world.Add("4", "7500", "10"), "");
    EXPECT_EQ(world.Peaks().Peak[0].StartCh, 0);
    EXPECT_EQ(world.Add("4096", "7500", "10"), "");
    EXPECT_EQ(world.Peaks().Peak[1].EndCh, 4095);
}

TEST(InputFitParameter, WhatIsNoPeakIsRefusedInASentence) {
    InputWorld world;
    EXPECT_EQ(world.Add("4097", "100", "10"), "The centre lies outside channels 1 to 4096.");
    EXPECT_EQ(world.Add("0", "100", "10"), "The centre lies outside channels 1 to 4096.");
    EXPECT_EQ(world.Add("201", "0", "10"), "A peak's height is above 0.");
    EXPECT_EQ(world.Add("201", "100", "-3"), "A peak's width is above 0.");
    EXPECT_EQ(world.Add("201", "many", "10"), "MAX COUNT: \"many\" is no number.");
    EXPECT_EQ(world.Add("", "100", "10"), "CENTER CH: \"\" is no number.");
    EXPECT_EQ(world.Add("1", "100", "10"), "A peak whose centre is channel 1 cannot be listed.");
    EXPECT_EQ(world.Peaks().PeakNum, 0);
    EXPECT_EQ(store.GraphTotal, 1);
    world.Peaks().PeakNum = MAX_PEAKS;
    EXPECT_EQ(world.Add("201", "100", "10"), "The list is full: it holds 100 peaks.");
    EXPECT_EQ(world.Peaks().PeakNum, MAX_PEAKS);
    EXPECT_TRUE(world.Desk.Faults.empty());
}

TEST(InputFitParameter, LettersSpringBack) {
    InputWorld world;
    CsrX_Change(200);
    world.In([] {
        const std::string width = v.txtWidth.Text;
        Type(v.txtWidth, "wide");
        PressEnter(v.txtWidth);
        EXPECT_TRUE(v.Visible);
        EXPECT_EQ(v.txtWidth.Text, width);
        Key(v, {.Key = KeyPress::Name::Escape});
    });
    EXPECT_EQ(world.Peaks().PeakNum, 0);
}

TEST(InputFitParameter, EnterAdds) {
    InputWorld world;
    CsrX_Change(200);
    world.In([] { Key(v, {.Key = KeyPress::Name::Enter}); });
    EXPECT_EQ(world.Peaks().PeakNum, 1);
}
