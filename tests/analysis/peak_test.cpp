// The peak table of a slot.
#include "analysis/peak.h"

#include "core/fault.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

using namespace vael;

namespace {

PeakRecord Peak(double position, double width = 3.0, double height = 100.0) {
    PeakRecord peak{};
    peak.FitState = ALL_BITS;
    peak.FuncType = SHAPE_GAUSS;
    peak.Amplitude = height;
    peak.GaussRatio = 1.0;
    peak.Width = width;
    peak.Position = position;
    peak.StartCh = static_cast<std::int16_t>(position - 2.0 * width);
    peak.EndCh = static_cast<std::int16_t>(position + 2.0 * width);
    return peak;
}

struct Bench {
    PeakTable Peaks{};
    std::unique_ptr<SpectrumData> Spectrum = std::make_unique<SpectrumData>();
    std::unique_ptr<SpectrumData> Target = std::make_unique<SpectrumData>();
    std::vector<std::string> Calls;
    Marks marks;

    Bench() {
        Spectrum->DataNo = 200;
        marks.PeakColor = 5;
        marks.draw = [this](int, int slot, int start, int end, Colour colour) {
            Calls.push_back("draw " + std::to_string(slot) + " " + std::to_string(start) + "-" +
                            std::to_string(end) + " " + std::to_string(colour));
        };
        marks.erase = [this](int, int, int start, int end, Colour) {
            Calls.push_back("erase " + std::to_string(start) + "-" + std::to_string(end));
        };
    }
    int Add(const PeakRecord& peak) { return AddPeak(0, 0, 3, peak, Peaks, marks); }
};

}  // namespace

TEST(Peak, PeaksStandByTheirPosition) {
    Bench bench;
    EXPECT_EQ(bench.Add(Peak(50.0)), 0);
    EXPECT_EQ(bench.Add(Peak(30.0)), 0);
    EXPECT_EQ(bench.Add(Peak(50.0, 9.0)), 2);  // behind one of the same position
    EXPECT_EQ(bench.Peaks.Peak[2].Width, 9.0);
    EXPECT_EQ(bench.Peaks.PeakNum, 3);
    EXPECT_EQ(bench.Calls.front(), "draw 3 44-56 5");
}

TEST(Peak, APositionOfExactlyZeroIsRefused) {
    Bench bench;
    EXPECT_EQ(bench.Add(Peak(0.0)), -1);
    EXPECT_EQ(AddPeak(-1, 0, 3, Peak(10.0), bench.Peaks, bench.marks), -1);
    EXPECT_TRUE(bench.Calls.empty());
    EXPECT_EQ(bench.Peaks.PeakNum, 0);
}

TEST(Peak, TheHundredAndFirstPeakIsRefused) {
    Bench bench;
    for (int i = 0; i < 100; ++i) EXPECT_EQ(bench.Add(Peak(100.0 + i)), i);
    EXPECT_EQ(bench.Add(Peak(50.0)), -1);
    EXPECT_EQ(bench.Calls.size(), 100u);
}

TEST(Peak, DeletingErasesAndMovesTheRestDown) {
    Bench bench;
    bench.Add(Peak(30.0));
    bench.Add(Peak(60.0));
    bench.Calls.clear();
    DeletePeak(0, 3, 0, bench.Peaks, bench.marks);
    EXPECT_EQ(bench.Peaks.PeakNum, 1);
    EXPECT_EQ(bench.Peaks.Peak[0].Position, 60.0);
    EXPECT_EQ(bench.Calls, (std::vector<std::string>{"erase 24-36"}));
    DeletePeak(0, 3, 1, bench.Peaks, bench.marks);
    EXPECT_EQ(bench.Peaks.PeakNum, 1);
    EXPECT_EQ(GetPeakRegion(bench.Peaks, 0).EndCh, 66);
    EXPECT_EQ(GetPeakRegion(bench.Peaks, 1).StartCh, 65535);
}

TEST(Peak, TheEndsOfAPeaksWidthAreOutside) {
    Bench bench;
    EXPECT_EQ(FindPeakAt(bench.Peaks, 30.0), -1);
    bench.Add(Peak(30.0));
    EXPECT_EQ(FindPeakAt(bench.Peaks, 27.0), -1);
    EXPECT_EQ(FindPeakAt(bench.Peaks, 28.0), 0);
    EXPECT_EQ(FindPeakAt(bench.Peaks, 33.0), -1);
}

TEST(Peak, CountingTakesBothEnds) {
    Bench bench;
    bench.Add(Peak(30.0));
    bench.Add(Peak(60.0));
    bench.Add(Peak(60.5));
    const auto found = CountPeakInRegion(bench.Peaks, 31, 60);
    EXPECT_EQ(found.Count, 1);
    EXPECT_EQ(found.First, 1);
    EXPECT_EQ(CountPeakInRegion(bench.Peaks, 30, 61).Count, 3);
    EXPECT_EQ(CountPeakInRegion(bench.Peaks, 61, 99).First, 65535);
}

TEST(Peak, AJumpFromExactlyOnAPeakGoesToTheNextOne) {
    Bench bench;
    bench.Add(Peak(30.4));
    bench.Add(Peak(60.5));  // key 60, the even neighbour
    bench.Add(Peak(90.6));  // key 91
    EXPECT_EQ(JumpPeak(bench.Peaks, 30, 1)->Channel, 60);
    EXPECT_EQ(JumpPeak(bench.Peaks, 60, 1)->Position, 90.6);
    EXPECT_EQ(JumpPeak(bench.Peaks, 60, 0)->Index, 0);
    EXPECT_EQ(JumpPeak(bench.Peaks, 75, 0)->Channel, 60);
    EXPECT_FALSE(JumpPeak(bench.Peaks, 91, 1));  // from the last one forward nothing moves
    EXPECT_FALSE(JumpPeak(bench.Peaks, 30, 0));
}

TEST(Peak, IntensityIsTheSumOfTheShapeOverTheWholeSpectrum) {
    Bench bench;
    bench.Add(Peak(100.3, 3.0, 50.0));
    CalcIntensity(*bench.Spectrum, bench.Peaks, 0);
    // Far from the ends the sum over channels is the area: h w sqrt(pi / ln 2).
    EXPECT_NEAR(bench.Peaks.Peak[0].Intensity, 50.0 * 3.0 * std::sqrt(M_PI / std::log(2.0)), 1e-6);
    bench.Peaks.Peak[0].GaussRatio = 0.25;
    CalcIntensity(*bench.Spectrum, bench.Peaks, 0);
    double sum = 0.0;
    for (int i = 0; i < 200; ++i) {
        const double u = (i - 100.3) / 3.0;
        sum += 12.5 * std::exp2(-u * u) + 37.5 / (1.0 + u * u);
    }
    EXPECT_NEAR(bench.Peaks.Peak[0].Intensity, sum, 1e-9);
    CalcIntensity(*bench.Spectrum, bench.Peaks, 1);  // no such peak
    EXPECT_EQ(bench.Peaks.Peak[1].Intensity, 0.0);
}

TEST(Peak, RegionsThatTouchStayAsTheyAre) {
    Bench bench;
    bench.Add(Peak(50.0));
    bench.Add(Peak(60.0));
    bench.Peaks.Peak[0].EndCh = 55;
    bench.Peaks.Peak[1].StartCh = 55;
    bench.Calls.clear();
    AdjustRegions(0, 3, 0, 1, *bench.Spectrum, bench.Peaks, bench.marks);
    EXPECT_EQ(bench.Peaks.Peak[0].EndCh, 55);
    EXPECT_EQ(bench.Peaks.Peak[1].StartCh, 55);
    EXPECT_EQ(bench.Calls, (std::vector<std::string>{"erase 44-55", "erase 55-66"}));
}

TEST(Peak, OverlappingRegionsPartAtTheValley) {
    Bench bench;
    for (std::size_t i = 0; i < 200; ++i) bench.Spectrum->Count[i] = 100;
    bench.Spectrum->Count[54] = 10;
    bench.Spectrum->Count[57] = 10;  // the first lowest wins
    bench.Add(Peak(50.0));
    bench.Add(Peak(60.0));
    AdjustRegions(0, 3, 0, 1, *bench.Spectrum, bench.Peaks, bench.marks);
    EXPECT_EQ(bench.Peaks.Peak[0].EndCh, 54);  // the boundary 55 is judged by channel 54
    EXPECT_EQ(bench.Peaks.Peak[1].StartCh, 55);
}

TEST(Peak, WithoutAValleyTheBoundaryIsTheEndOfTheLeftRegion) {
    Bench bench;
    bench.Add(Peak(50.0));
    bench.Add(Peak(60.0));
    for (std::size_t i = 0; i < 200; ++i) bench.Spectrum->Count[i] = 100;
    AdjustRegions(0, 3, 0, 1, *bench.Spectrum, bench.Peaks, bench.marks);
    EXPECT_EQ(bench.Peaks.Peak[0].EndCh, 55);
    EXPECT_EQ(bench.Peaks.Peak[1].StartCh, 56);
}

TEST(Peak, AFirstPeakAtTheEdgeIsPartedToo) {
    Bench bench;
    bench.Add(Peak(0.4));
    bench.Add(Peak(6.0));
    bench.Peaks.Peak[0].EndCh = 8;
    bench.Peaks.Peak[1].StartCh = 0;
    bench.Spectrum->Count[6] = 9;
    bench.Spectrum->Count[0] = 4;
    bench.Spectrum->Count[1] = 3;
    for (std::size_t i = 2; i < 6; ++i) bench.Spectrum->Count[i] = 5;
    AdjustRegions(0, 3, 0, 1, *bench.Spectrum, bench.Peaks, bench.marks);
    EXPECT_EQ(bench.Peaks.Peak[0].EndCh, 1);
    EXPECT_EQ(bench.Peaks.Peak[1].StartCh, 2);
}

TEST(Peak, AFitGraphOfAllPeaksStartsFromZeros) {
    Bench bench;
    bench.Add(Peak(50.0, 3.0, 100.0));
    bench.Add(Peak(56.0, 3.0, 40.0));
    bench.Target->Count.fill(9);
    MakeFitGraph(*bench.Spectrum, bench.Peaks, *bench.Target, ALL_BITS, 4);
    EXPECT_EQ(bench.Target->DataNo, 200);
    EXPECT_EQ(bench.Target->Count[53], 70);  // half of each
    EXPECT_EQ(bench.Target->Count[47], 50);
    EXPECT_EQ(bench.Target->Count[100], 0);
    MakeFitGraph(*bench.Spectrum, bench.Peaks, *bench.Target, 0, 4);
    EXPECT_EQ(bench.Target->Count[53], 120);  // a single peak adds to what is there
    EXPECT_EQ(bench.Target->Count[47], 100);
}

TEST(Peak, OnlyFittedPeaksWithAWidthAndAShapeAreDrawn) {
    Bench bench;
    bench.Add(Peak(30.0));
    bench.Add(Peak(60.0));
    bench.Add(Peak(90.0));
    bench.Add(Peak(120.0, 3.0, -50.0));
    bench.Add(Peak(150.0, 3.0, 3e7));
    bench.Peaks.Peak[0].FitState = 0;
    bench.Peaks.Peak[1].Width = 0.0;
    bench.Peaks.Peak[2].FuncType = 0;
    MakeFitGraph(*bench.Spectrum, bench.Peaks, *bench.Target, ALL_BITS, 4);
    for (const std::size_t channel : {30u, 60u, 90u, 120u})
        EXPECT_EQ(bench.Target->Count[channel], 0) << channel;
    EXPECT_EQ(bench.Target->Count[150], 10000000);
}
