// The automatic NAX run with its default settings on measured spectra whose answers are known.
#include "measured.h"

#include "analysis/naxwalk.h"
#include "seeded.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

using namespace vael;

namespace {

struct Line {
    std::array<int, 3> Hkl;
    double Centre;  // 0-based channel, one Gaussian on a straight background each
};

/// AutoFitting's own road, or the smoothed counts alone, as the fit over an area takes them.
NaxResult FitOf(const measured::Spectrum& spectrum, bool removed) {
    NaxSettings settings;
    settings.TwoTheta = spectrum.TwoTheta;
    SpectrumData data = spectrum.Data;
    if (removed) {
        data = seeded::Removed(data);
    } else {
        SmoothingData(0, data.Count, data.DataNo);
    }
    NaxState state;
    return NaxFitAll(data, settings, state, Talk{});
}

/// 1-based centre nearest to a 0-based one.
double Nearest(const NaxResult& result, double centre) {
    double best = 1e9;
    for (const NaxPeakRow& peak : result.Peaks)
        if (std::fabs(peak.Position - 1.0 - centre) < std::fabs(best - 1.0 - centre))
            best = peak.Position;
    return best;
}

/// a of a cubic cell by least squares of 1/d^2 = (h h + k k + l l) / a^2.
double CubicCell(const measured::Spectrum& spectrum, const NaxResult& result,
                 const std::vector<Line>& lines) {
    double top = 0.0;
    double bottom = 0.0;
    for (const Line& line : lines) {
        const auto& [h, k, l] = line.Hkl;
        const double n = h * h + k * k + l * l;
        const double d = spectrum.Spacing(Nearest(result, line.Centre));
        top += n / (d * d);
        bottom += n * n;
    }
    return 1.0 / std::sqrt(top / bottom);
}

void ExpectCentres(const NaxResult& result, const std::vector<Line>& lines) {
    for (const Line& line : lines)
        EXPECT_NEAR(Nearest(result, line.Centre) - 1.0, line.Centre, 0.2) << line.Centre;
}

class Measured : public testing::TestWithParam<bool> {
protected:
    /// Nothing: the folder is absent and the test is skipped.
    std::unique_ptr<measured::Spectrum> Spectrum;
    NaxResult Result;
    bool Open(const char* name) {
        Spectrum = measured::Read(name);
        if (Spectrum) Result = FitOf(*Spectrum, GetParam());
        return Spectrum != nullptr;
    }
};

#define OPEN_OR_SKIP(name) \
    if (!Open(name)) GTEST_SKIP() << "no measured data"

const std::vector<Line> GOLD{{{2, 0, 0}, 733.05},  {{2, 2, 0}, 1037.57}, {{3, 1, 1}, 1217.15},
                             {{2, 2, 2}, 1271.08}, {{4, 0, 0}, 1468.26}, {{3, 3, 1}, 1600.27},
                             {{4, 2, 0}, 1641.85}, {{4, 2, 2}, 1798.64}, {{3, 3, 3}, 1908.25},
                             {{6, 2, 0}, 2323.25}};
const std::vector<Line> CERIA{{{1, 1, 1}, 607.47},  {{2, 0, 0}, 701.52},  {{2, 2, 0}, 992.33},
                              {{3, 1, 1}, 1163.72}, {{2, 2, 2}, 1215.53}, {{4, 0, 0}, 1403.58},
                              {{3, 3, 1}, 1529.58}, {{4, 2, 0}, 1569.31}, {{4, 2, 2}, 1719.08},
                              {{5, 1, 1}, 1823.29}};
const std::vector<Line> CARBIDE{{{1, 1, 1}, 755.63},
                                {{2, 0, 0}, 872.71},
                                {{2, 2, 0}, 1233.98},
                                {{3, 1, 1}, 1447.27},
                                {{2, 2, 2}, 1511.64}};
const std::vector<Line> CORUNDUM{{{0, 1, 2}, 483.40}, {{1, 0, 4}, 659.70},  {{1, 1, 3}, 807.13},
                                 {{0, 2, 4}, 967.59}, {{1, 1, 6}, 1051.52}, {{3, 0, 0}, 1225.97}};

}  // namespace

TEST_P(Measured, Gold) {
    OPEN_OR_SKIP("AuWire");
    ExpectCentres(Result, GOLD);
    EXPECT_NEAR(CubicCell(*Spectrum, Result, GOLD), 4.0786, 0.0006);
}

TEST_P(Measured, Ceria) {
    OPEN_OR_SKIP("CeO2H");
    ExpectCentres(Result, CERIA);
    EXPECT_NEAR(CubicCell(*Spectrum, Result, CERIA), 5.4115, 0.0007);
}

TEST_P(Measured, TitaniumCarbide) {
    OPEN_OR_SKIP("TiCH");
    ExpectCentres(Result, CARBIDE);
    EXPECT_NEAR(CubicCell(*Spectrum, Result, CARBIDE), 4.3177, 0.0012);
}

TEST_P(Measured, Corundum) {
    OPEN_OR_SKIP("Al2O3_d0");
    ExpectCentres(Result, CORUNDUM);
    // 1/d^2 = p (h h + h k + k k) + q l l, with p = 4 / (3 a a) and q = 1 / (c c).
    double uu = 0, uv = 0, vv = 0, ur = 0, vr = 0;
    for (const Line& line : CORUNDUM) {
        const auto& [h, k, l] = line.Hkl;
        const double u = h * h + h * k + k * k;
        const double v = l * l;
        const double d = Spectrum->Spacing(Nearest(Result, line.Centre));
        uu += u * u;
        uv += u * v;
        vv += v * v;
        ur += u / (d * d);
        vr += v / (d * d);
    }
    const double det = uu * vv - uv * uv;
    EXPECT_NEAR(std::sqrt(4.0 / 3.0 / ((ur * vv - vr * uv) / det)), 4.761, 0.002);
    EXPECT_NEAR(1.0 / std::sqrt((vr * uu - ur * uv) / det), 12.996, 0.006);
}

TEST_P(Measured, MagnesiaUnderLoad) {
    const struct {
        const char* Name;
        double Centre200, Centre220, A;
    } files[] = {{"MgO_0019_d0", 809.09, 1145.0, 4.162}, {"MgO_0043_d0", 804.89, 1138.39, 4.185}};
    for (const auto& file : files) {
        OPEN_OR_SKIP(file.Name);
        const std::vector<Line> lines{{{2, 0, 0}, file.Centre200}, {{2, 2, 0}, file.Centre220}};
        ExpectCentres(Result, {lines[0]});  // 220 stands in a crowd with lead's fluorescence
        EXPECT_NEAR(CubicCell(*Spectrum, Result, lines), file.A, 0.006) << file.Name;
    }
}

TEST_P(Measured, MoltenIronHasOneStrongLineAndNextToNothingElse) {
    OPEN_OR_SKIP("FeMelt025");
    const auto strongest =
        std::max_element(Result.Peaks.begin(), Result.Peaks.end(),
                         [](const auto& a, const auto& b) { return a.Height < b.Height; });
    ASSERT_NE(strongest, Result.Peaks.end());
    EXPECT_NEAR(Spectrum->Energy(strongest->Position), 80.30, 0.02);
    EXPECT_LE(Result.Peaks.size(), 25u);
    for (auto peak = Result.Peaks.begin(); peak != Result.Peaks.end(); ++peak) {
        if (peak == strongest) continue;
        EXPECT_LT(peak->Height, 0.03 * strongest->Height) << peak->Position;
    }
}

INSTANTIATE_TEST_SUITE_P(, Measured, testing::Values(true, false),
                         [](const auto& p) { return p.param ? "Removed" : "SmoothedOnly"; });
