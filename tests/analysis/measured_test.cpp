// Both fitters on measured spectra whose answers are known.
#include "measured.h"

#include "analysis/naxwalk.h"
#include "fitroads.h"
#include "minimiser.h"
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

void ExpectCentres(const NaxResult& result, const std::vector<Line>& lines, double within) {
    for (const Line& line : lines)
        EXPECT_NEAR(Nearest(result, line.Centre) - 1.0, line.Centre, within) << line.Centre;
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
    ExpectCentres(Result, GOLD, 0.15);
    EXPECT_NEAR(CubicCell(*Spectrum, Result, GOLD), 4.0786, 0.0006);
}

TEST_P(Measured, Ceria) {
    OPEN_OR_SKIP("CeO2H");
    ExpectCentres(Result, CERIA, 0.15);
    EXPECT_NEAR(CubicCell(*Spectrum, Result, CERIA), 5.4115, 0.0007);
}

TEST_P(Measured, TitaniumCarbide) {
    OPEN_OR_SKIP("TiCH");
    ExpectCentres(Result, CARBIDE, 0.15);
    EXPECT_NEAR(CubicCell(*Spectrum, Result, CARBIDE), 4.3177, 0.0012);
}

TEST_P(Measured, Corundum) {
    OPEN_OR_SKIP("Al2O3_d0");
    ExpectCentres(Result, CORUNDUM, 0.2);
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
        ExpectCentres(Result, {lines[0]}, 0.2);  // 220 stands in a crowd with lead's fluorescence
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

namespace {

/// The Express fit by Gaussians on AutoFitting's road, with the threshold that leaves the lines and
/// hardly a bump: from 10 on, the default, the same lines come with as many bumps again and more.
constexpr int EXPRESS_THRESHOLD = 9;

struct ExpressRun {
    SpectrumData Data{};
    tools::ExpressResult Result;

    explicit ExpressRun(const measured::Spectrum& spectrum)
        : Data(tools::AboveBackground(spectrum.Data)),
          Result(tools::ExpressFitAll(Data, SHAPE_GAUSS, EXPRESS_THRESHOLD)) {}

    /// The peak within three channels of a centre, or none.
    [[nodiscard]] const PeakRecord* At(double centre) const {
        for (const tools::ExpressPeak& peak : Result.Peaks)
            if (std::fabs(peak.Record.Position - centre) < 3.0) return &peak.Record;
        return nullptr;
    }

    /// Centre of a Gaussian on a constant in the record's region, by least squares of the counts
    /// with weights 1/count and by the independent minimiser.
    [[nodiscard]] double SecondCentre(const PeakRecord& peak) const {
        const auto residuals = [this, &peak](const judge::Vector& p) {
            judge::Vector r;
            for (int i = peak.StartCh; i <= peak.EndCh; ++i) {
                const double y = Data.Count[static_cast<std::size_t>(i)];
                const double u = (i - p[1]) / p[2];
                r.push_back((y - p[0] * std::exp2(-u * u) - p[3]) / std::sqrt(std::max(1.0, y)));
            }
            return r;
        };
        const double foot = Data.Count[static_cast<std::size_t>(peak.StartCh)];
        const double top = Data.Count[static_cast<std::size_t>(std::lround(peak.Position))];
        return judge::Minimise(residuals, {top, peak.Position, 4.0, 0.5 * foot}).At[1];
    }
};

/// A line that the Express fit puts farther off than it ought to, with the measured distance.
struct Exception {
    double Centre;
    double Off;
};

/// Every line within its limit, but for the exceptions: those are where they were measured, and
/// where a second fit of the same channels puts them, so that it is the region that is at fault.
void ExpectExpress(const ExpressRun& run, const std::vector<Line>& lines,
                   const std::vector<double>& limits, const std::vector<Exception>& exceptions) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const double centre = lines[i].Centre;
        const PeakRecord* peak = run.At(centre);
        ASSERT_NE(peak, nullptr) << centre;
        EXPECT_NEAR(peak->Position, run.SecondCentre(*peak), 0.005) << centre;
        const auto known = std::find_if(exceptions.begin(), exceptions.end(),
                                        [&](const Exception& e) { return e.Centre == centre; });
        if (known == exceptions.end()) {
            EXPECT_NEAR(peak->Position, centre, limits[i]) << centre;
        } else {
            EXPECT_NEAR(peak->Position - centre, known->Off, 0.01) << centre;
            EXPECT_GT(std::fabs(known->Off), limits[i]) << "no exception: " << centre;
        }
    }
}

std::vector<double> Limits(std::size_t lines) { return std::vector<double>(lines, 0.15); }

}  // namespace

// Gold's 200 and the lines below 2000 counts (222, 422, 620) may be 0.4 off. 422, 1231 counts high,
// is a known exception: it is not placed at all, see the next test.
TEST(MeasuredExpress, GoldIsPlacedButFor422) {
    const auto spectrum = measured::Read("AuWire");
    if (!spectrum) GTEST_SKIP() << "no measured data";
    const ExpressRun run(*spectrum);
    std::vector<Line> lines = GOLD;
    lines.erase(lines.begin() + 7);
    ExpectExpress(run, lines, {0.4, 0.15, 0.15, 0.4, 0.15, 0.15, 0.15, 0.15, 0.4}, {});
}

// Its region ends 0.8 half widths from the top, where more than half of the height is still left.
// What stands above that foot is the start of the fit, a third to a half of the height; the fit
// finds more than three times as much, and such a fit is taken away, with its centre right.
TEST(MeasuredExpress, Gold422IsRefusedForItsHeightAlone) {
    const auto spectrum = measured::Read("AuWire");
    if (!spectrum) GTEST_SKIP() << "no measured data";
    const ExpressRun run(*spectrum);
    EXPECT_EQ(run.At(1798.64), nullptr);
    const auto found = std::find_if(
        run.Result.Refused.begin(), run.Result.Refused.end(),
        [](const PeakRecord& peak) { return std::fabs(peak.Position - 1798.64) < 3.0; });
    ASSERT_NE(found, run.Result.Refused.end());
    PeakTable table{};
    table.PeakNum = 1;
    table.Peak[0] = *found;
    std::array<std::uint16_t, 1> stands{7};
    const FitOutcome outcome = FitOnePeak(run.Data, table, 0, SHAPE_GAUSS, 4, stands, Talk{});
    EXPECT_EQ(outcome.Status, FIT_CONVERGED);
    EXPECT_EQ(stands[0], 0);
    EXPECT_NEAR(table.Peak[0].Position, 1798.64, 0.4);
    const double foot = run.Data.Count[static_cast<std::size_t>(found->StartCh)];
    EXPECT_GT(table.Peak[0].Amplitude, 3.0 * (found->Amplitude - foot));
}

// The lines of this detector have a tail to low energy: the narrower the stretch about the top that
// is fitted, the higher the centre. The regions of the search show the fit the top of a line alone,
// six to ten channels; the known centres are those of whole lines. The distance grows with the
// energy, and every line above 100 keV is a known exception.
TEST(MeasuredExpress, CeriaIsPlacedUpTo222AndAboveIt400To511AreTooHigh) {
    const auto spectrum = measured::Read("CeO2H");
    if (!spectrum) GTEST_SKIP() << "no measured data";
    ExpectExpress(
        ExpressRun(*spectrum), CERIA, Limits(CERIA.size()),
        {{1403.58, 0.19}, {1529.58, 0.18}, {1569.31, 0.18}, {1719.08, 0.25}, {1823.29, 0.31}});
}

TEST(MeasuredExpress, TitaniumCarbideIsPlacedUpTo220AndAboveIt311And222AreTooHigh) {
    const auto spectrum = measured::Read("TiCH");
    if (!spectrum) GTEST_SKIP() << "no measured data";
    ExpectExpress(ExpressRun(*spectrum), CARBIDE, Limits(CARBIDE.size()),
                  {{1447.27, 0.18}, {1511.64, 0.24}});
}
