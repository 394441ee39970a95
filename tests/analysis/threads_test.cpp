// Pure modules side by side: the same fit on eight threads gives the same numbers as on one.
#include "analysis/backgraund.h"
#include "analysis/calc.h"
#include "analysis/naxwalk.h"
#include "support/spectra.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <vector>

using namespace vael;

namespace {

std::vector<NaxPeakRow> FitOne() {
    const auto data = std::make_unique<SpectrumData>();
    const auto counts =
        GaussCounts(2000, 80, {{400.3, 3000, 9}, {900.6, 2000, 11}, {1500.2, 4000, 13}});
    data->DataNo = 2000;
    std::copy(counts.begin(), counts.end(), data->Count.begin());
    SmoothingData(0, data->Count, data->DataNo);
    const auto back = std::make_unique<SpectrumData>(*data);
    BackGraund(20, 5, back->Count, back->DataNo, Talk{});
    for (std::size_t i = 0; i < 2000; ++i)
        data->Count[i] = std::max(0, data->Count[i] - back->Count[i]);
    const auto state = std::make_unique<NaxState>();
    return NaxFitAll(*data, NaxSettings{}, *state, Talk{}).Peaks;
}

}  // namespace

TEST(Threads, EightFitsAtOnceGiveTheNumbersOfOne) {
    const std::vector<NaxPeakRow> alone = FitOne();
    ASSERT_EQ(alone.size(), 3u);
    std::vector<std::vector<NaxPeakRow>> together(8);
    {
        std::vector<std::jthread> threads;
        for (auto& result : together) threads.emplace_back([&result] { result = FitOne(); });
    }
    for (const auto& result : together) {
        ASSERT_EQ(result.size(), alone.size());
        for (std::size_t k = 0; k < alone.size(); ++k) {
            EXPECT_EQ(result[k].Position, alone[k].Position);
            EXPECT_EQ(result[k].Height, alone[k].Height);
            EXPECT_EQ(result[k].Fwhm, alone[k].Fwhm);
        }
    }
}
