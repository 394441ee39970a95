// The Express fitter: derivatives, outcomes to the letter, and what a fit writes into a record.
#include "analysis/calfitting.h"

#include "analysis/calc.h"
#include "analysis/seeded.h"
#include "core/fault.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

using namespace vael;

namespace {

constexpr const char* DETERMINANT =
    "(error) CFDQR2: 行列式の値が０になった。データ入力ミス、または係数が多い。";
constexpr const char* START_REFUSED = "(error) CFDQR2: 係数の初期値が不適切。";

std::vector<double> Channels(std::size_t n) {
    std::vector<double> x(n);
    std::iota(x.begin(), x.end(), 1.0);
    return x;
}

double Value(int type, double x, const FitVector& a, int m) {
    int status = 0;
    const double value = type == SHAPE_GAUSS     ? GaussValue(x, a, m, status)
                         : type == SHAPE_LORENTZ ? LorentzValue(x, a, m, status)
                                                 : MixValue(x, a, m, status);
    EXPECT_EQ(status, 0);
    return value;
}

FitVector Deriv(int type, double x, const FitVector& a, int m) {
    FitVector d{};
    int status = 0;
    if (type == SHAPE_GAUSS) GaussDeriv(x, a, d, m, status);
    if (type == SHAPE_LORENTZ) LorentzDeriv(x, a, d, m, status);
    if (type == SHAPE_MIX) MixDeriv(x, a, d, m, status);
    EXPECT_EQ(status, 0);
    return d;
}

std::vector<double> Curve(int type, std::size_t n, const FitVector& a, int m) {
    std::vector<double> y;
    for (const double x : Channels(n)) y.push_back(Value(type, x, a, m));
    return y;
}

FitOutcome Fit(const std::vector<double>& y, int type, int m, FitVector& a) {
    return FitData(Channels(y.size()), y, type, m, a, Talk{});
}

/// A spectrum of 200 channels with a Gaussian of 1000 at channel 100, half width 5, on 50.
struct OnePeak {
    std::unique_ptr<SpectrumData> Spectrum = std::make_unique<SpectrumData>();
    PeakTable Peaks{};
    std::array<std::uint16_t, MAX_PEAKS> Results{};
    std::vector<std::string> Said;

    OnePeak() {
        Spectrum->DataNo = 200;
        for (int i = 0; i < 200; ++i) {
            const double u = (i - 100.0) / 5.0;
            Spectrum->Count[static_cast<std::size_t>(i)] =
                static_cast<std::int32_t>(std::lround(50.0 + 1000.0 * std::exp2(-u * u)));
        }
        Peaks.PeakNum = 1;
        PeakRecord& peak = Peaks.Peak[0];
        peak.Amplitude = 1050.0;
        peak.Position = 100.4;
        peak.Width = 4.0;
        peak.StartCh = 88;
        peak.EndCh = 112;
        Results.fill(7);
    }
    FitOutcome Run(int type, int m, int k = 0) {
        Talk talk;
        talk.say = [this](std::string_view text, std::string_view) { Said.emplace_back(text); };
        return FitOnePeak(*Spectrum, Peaks, k, type, m, Results, talk);
    }
};

}  // namespace

TEST(Deriv, AgreesWithCentralDifferencesForEveryShapeAndCount) {
    seeded::Generator random(5);
    for (const int type : {SHAPE_GAUSS, SHAPE_LORENTZ, SHAPE_MIX}) {
        const int least = type == SHAPE_MIX ? 4 : 3;
        for (int m = least; m <= least + 2; ++m) {
            for (int repeat = 0; repeat < 50; ++repeat) {
                FitVector a{random.Between(10.0, 1000.0), random.Between(20.0, 40.0),
                            random.Between(3.0, 12.0)};
                std::size_t next = 3;
                if (type == SHAPE_MIX) a[next++] = random.Between(10.0, 1000.0);
                a[next] = random.Between(0.0, 100.0);
                a[next + 1] = random.Between(-1.0, 1.0);
                const double x = random.Between(1.0, 60.0);
                const FitVector d = Deriv(type, x, a, m);
                for (std::size_t k = 0; k < static_cast<std::size_t>(m); ++k) {
                    const double h = 1e-5 * std::max(1.0, std::fabs(a[k]));
                    FitVector up = a;
                    FitVector down = a;
                    up[k] += h;
                    down[k] -= h;
                    const double slope =
                        (Value(type, x, up, m) - Value(type, x, down, m)) / (2.0 * h);
                    EXPECT_NEAR(d[k], slope, 1e-6 * std::max(1.0, std::fabs(slope)))
                        << "shape " << type << " m " << m << " coefficient " << k;
                }
                for (std::size_t k = static_cast<std::size_t>(m); k < d.size(); ++k)
                    EXPECT_EQ(d[k], 0.0);
            }
        }
    }
}

TEST(Deriv, BehindTheCutOffOnlyTheBackgroundOfAGaussianIsLeft) {
    const FitVector a{8.0, 0.0, 1.0, 3.0, 0.5};  // ln 2 * 24.1^2 = 402.6
    EXPECT_EQ(Deriv(SHAPE_GAUSS, 24.1, a, 5), (FitVector{0.0, 0.0, 0.0, 1.0, 24.1}));
}

TEST(Deriv, AFailureWritesItsNumber) {
    FitVector d{};
    int status = 0;
    GaussDeriv(3.0, FitVector{1.0, 2.0, 0.0}, d, 4, status);
    EXPECT_EQ(status, 11);
    status = 0;
    LorentzDeriv(3.0, FitVector{1.0, 2.0, 1e-160}, d, 4, status);
    EXPECT_EQ(status, 6);
    status = 0;
    MixDeriv(3.0, FitVector{1.0, 1e200, 1.0, 1.0}, d, 5, status);
    EXPECT_EQ(status, 6);
    EXPECT_EQ(d, FitVector{});
}

TEST(LogLikelihoodOf, IsTheSumOfYLnFLessF) {
    int status = 0;
    const std::vector<double> y{2.0, 0.0, -1.0};
    const std::vector<double> f{1.0, 3.0, std::exp(2.0)};
    // 2 * 0 - 1, 0 - 3, -1 * 2 - e^2
    EXPECT_NEAR(LogLikelihood(y, f, status), -6.0 - std::exp(2.0), 1e-14);
    EXPECT_EQ(status, 0);
}

TEST(LogLikelihoodOf, AModelThatIsNotPositiveIsStatusOneAndZero) {
    int status = 0;
    EXPECT_EQ(LogLikelihood(std::vector<double>{5.0, 5.0}, std::vector<double>{9.0, 0.0}, status),
              0.0);
    EXPECT_EQ(status, 1);
}

TEST(SumOfFactorialsOf, AProductUpToFiftyAndStirlingsSeriesAbove) {
    // ln(50!) to sixteen figures: Stirling's series to that term is 2.2e-8 above it.
    EXPECT_NEAR(SumOfFactorials(std::vector<double>{50.0}), 148.4777669517730, 1e-11);
    // At 50.5 the series stands for the gamma function; the product would leave out ln of 0.5!,
    // which is 0.12.
    EXPECT_NEAR(SumOfFactorials(std::vector<double>{50.5}), std::lgamma(51.5), 3e-8);
    EXPECT_GT(std::fabs(SumOfFactorials(std::vector<double>{50.5}) - std::lgamma(51.5)), 1e-8);
    // 4! and 2.5 * 1.5; what is not above 1 adds nothing.
    EXPECT_NEAR(SumOfFactorials(std::vector<double>{4.0, 2.5, 1.0, 0.0, -7.0}),
                std::log(24.0) + std::log(3.75), 1e-14);
}

TEST(Cfdqr2, AnExactCurveGivesItsOwnCoefficientsBack) {
    const FitVector gauss{900.0, 30.25, 4.5, 20.0};
    const FitVector mix{600.0, 30.25, 4.5, 300.0, 20.0};
    for (const int type : {SHAPE_GAUSS, SHAPE_LORENTZ, SHAPE_MIX}) {
        const FitVector& truth = type == SHAPE_MIX ? mix : gauss;
        const int m = type == SHAPE_MIX ? 5 : 4;
        FitVector a = truth;
        a[0] *= 0.8;
        a[1] += 0.7;
        a[2] *= 1.3;
        const auto y = Curve(type, 60, truth, m);
        const FitOutcome outcome = CFDQR2(Channels(60), y, type, a, m, Talk{});
        EXPECT_EQ(outcome.Status, FIT_CONVERGED);
        EXPECT_EQ(outcome.Message, "");
        for (std::size_t k = 0; k < static_cast<std::size_t>(m); ++k)
            EXPECT_NEAR(a[k], truth[k], 1e-5 * outcome.Err[k]) << type << " " << k;
    }
}

TEST(Cfdqr2, ASlopeIsFittedWhereItIsLive) {
    const FitVector truth{900.0, 30.25, 4.5, 120.0, -1.5};
    FitVector a{700.0, 31.0, 6.0, 100.0, 0.0};
    const auto y = Curve(SHAPE_GAUSS, 60, truth, 5);
    EXPECT_EQ(CFDQR2(Channels(60), y, SHAPE_GAUSS, a, 5, Talk{}).Status, FIT_CONVERGED);
    EXPECT_NEAR(a[4], -1.5, 1e-6);
}

TEST(Cfdqr2, TheErrorOfTheHeightOfABareGaussianIsThatOfItsCounts) {
    // With the centre by symmetry free of the height, height and width have the closed errors of a
    // Gaussian of N counts: sigma by sigma / sqrt(2 N), the area by sqrt(N), independent of each
    // other; the height N / (sigma sqrt(2 pi)) then by h sqrt(1 / N + 1 / (2 N)).
    const double half = 6.0;
    const double sigma = half / std::sqrt(2.0 * std::log(2.0));
    const FitVector truth{4000.0, 40.5, half};
    const double counts = 4000.0 * sigma * std::sqrt(2.0 * std::acos(-1.0));
    FitVector a{3500.0, 40.0, 6.5};
    const auto y = Curve(SHAPE_GAUSS, 80, truth, 3);
    const FitOutcome outcome = CFDQR2(Channels(80), y, SHAPE_GAUSS, a, 3, Talk{});
    ASSERT_EQ(outcome.Status, FIT_CONVERGED);
    EXPECT_NEAR(outcome.Err[0] / (4000.0 * std::sqrt(1.5 / counts)), 1.0, 1e-4);
    EXPECT_NEAR(outcome.Err[1] / (sigma / std::sqrt(counts)), 1.0, 1e-4);
    EXPECT_NEAR(outcome.Err[2] / (half / std::sqrt(2.0 * counts)), 1.0, 1e-4);
}

TEST(Cfdqr2, FiveHundredChannelsAreTakenAndOneMoreIsTooMany) {
    const FitVector truth{900.0, 250.0, 30.0, 20.0};
    FitVector a{800.0, 251.0, 35.0, 20.0};
    EXPECT_EQ(
        CFDQR2(Channels(500), Curve(SHAPE_GAUSS, 500, truth, 4), SHAPE_GAUSS, a, 4, Talk{}).Status,
        FIT_CONVERGED);
    for (const std::size_t n : {501u, 4097u}) {
        FitVector b{800.0, 251.0, 35.0, 20.0};
        const FitVector before = b;
        const FitOutcome outcome =
            CFDQR2(Channels(n), std::vector<double>(n, 9.0), SHAPE_GAUSS, b, 4, Talk{});
        EXPECT_EQ(outcome.Status, FIT_ERROR);
        EXPECT_EQ(outcome.Message, "(error) CFDQR2 : Many Data!");
        EXPECT_EQ(b, before);
    }
}

TEST(Cfdqr2, AStartThatCannotBeEvaluatedKeepsTheCallersCoefficients) {
    for (const double half : {0.0, 1e-151}) {
        FitVector a{800.0, 5.0, half, 20.0};
        const FitVector before = a;
        const FitOutcome outcome =
            CFDQR2(Channels(20), std::vector<double>(20, 9.0), SHAPE_GAUSS, a, 4, Talk{});
        EXPECT_GE(outcome.Status, 5);
        EXPECT_EQ(outcome.Message, "(error) CFDQR2 :初期fGaussのエラー");
        EXPECT_EQ(a, before);
    }
}

TEST(Cfdqr2, AStartThatIsNotPositiveKeepsTheCallersCoefficients) {
    FitVector a{800.0, 5.0, 2.0, -30.0};
    const FitVector before = a;
    const FitOutcome outcome =
        CFDQR2(Channels(20), std::vector<double>(20, 9.0), SHAPE_GAUSS, a, 4, Talk{});
    EXPECT_EQ(outcome.Status, FIT_ERROR);
    EXPECT_EQ(outcome.Message, START_REFUSED);
    EXPECT_EQ(a, before);
}

TEST(Cfdqr2, NoChannelsAndACoefficientWithoutAnyEffectEndWithTheDeterminant) {
    FitVector a{800.0, 5.0, 2.0, 30.0};
    FitOutcome outcome = CFDQR2({}, {}, SHAPE_GAUSS, a, 4, Talk{});
    EXPECT_EQ(outcome.Status, FIT_ERROR);
    EXPECT_EQ(outcome.Message, DETERMINANT);
    FitVector away{800.0, 9000.0, 2.0, 30.0};  // the peak is behind the cut-off everywhere
    outcome = CFDQR2(Channels(20), std::vector<double>(20, 9.0), SHAPE_GAUSS, away, 4, Talk{});
    EXPECT_EQ(outcome.Status, FIT_ERROR);
    EXPECT_EQ(outcome.Message, DETERMINANT);
    EXPECT_EQ(away, (FitVector{800.0, 9000.0, 2.0, 30.0}));
}

TEST(Cfdqr2, CountsBeyondTheFiniteRangeEndWithTheDeterminant) {
    FitVector a{800.0, 10.0, 4.0, 30.0};
    const double most = std::numeric_limits<double>::max();
    const FitOutcome outcome =
        CFDQR2(Channels(20), std::vector<double>(20, most), SHAPE_GAUSS, a, 4, Talk{});
    EXPECT_EQ(outcome.Status, FIT_ERROR);
    EXPECT_EQ(outcome.Message, DETERMINANT);
}

TEST(Cfdqr2, AnUnknownShapeCannotBeEvaluated) {
    FitVector a{800.0, 10.0, 4.0, 30.0};
    const FitOutcome outcome = CFDQR2(Channels(20), std::vector<double>(20, 9.0), 4, a, 4, Talk{});
    EXPECT_EQ(outcome.Status, 5);
}

TEST(Cfdqr2, ZerosAloneHaveNoInformationAndKeepTheLastAcceptedCoefficients) {
    FitVector a{10.0, 5.0, 2.0, 1.0};
    const FitOutcome outcome =
        CFDQR2(Channels(12), std::vector<double>(12, 0.0), SHAPE_LORENTZ, a, 4, Talk{});
    EXPECT_EQ(outcome.Status, FIT_ERROR);
    EXPECT_EQ(outcome.Message, DETERMINANT);
    EXPECT_EQ(a, (FitVector{10.0, 5.0, 2.0, 1.0}));
}

// Inputs that no one would fit, one for each way a fit is stopped: the coefficients that come back
// are accepted ones, with a model that is positive and no less likely than the start's.
TEST(Cfdqr2, EachIterationLimitHasItsWordsAndGivesTheLastAcceptedCoefficients) {
    struct Case {
        std::vector<double> Y;
        int Type;
        int M;
        FitVector Start;
        int Status;
        const char* Message;
    };
    const std::vector<Case> cases{
        {{32, -21, 69, 12, 85, 16, 11, 48, 12, 10},
         SHAPE_MIX,
         5,
         {46.1, -2.4, 2.0, 163.0, 2.03e-08},
         FIT_STOPPED,
         "(warning) CFDQR2: 外側ループが100回を超えた。計算打ち切り"},
        {{0, 0, 0, 0, 0, 4, 0, 1, 0, 15, 0, 0},
         SHAPE_MIX,
         4,
         {19.1, 13.0, 127.0, 0.79},
         FIT_STOPPED,
         "(warning) CFDQR2: 内側ループが100回を超えた。計算中止。"},
        {{-1, 46, -45, -26, 52, 71, -45, -11, -37, 2, 70, 8, 81, 9, -39, 38, -16, -13, 7},
         SHAPE_GAUSS,
         5,
         {7.1e+04, 9.54, 0.395},
         FIT_STOPPED,
         "(warning) CFDQR2: 内側ループが100回を超えた。計算中止"},
        // A height next to nothing: the centre steps so far that its square is no number.
        {{5e8, 1e8, 3e8, 9e8, 2e8, 7e8, 1e8, 4e8},
         SHAPE_GAUSS,
         4,
         {1e-150, 4.3, 2.0, 5.0},
         6,
         "(error) CFDQR2 :係数アウト！"},
    };
    for (const Case& one : cases) {
        const auto likelihood = [&one](const FitVector& a, int& status) {
            return LogLikelihood(one.Y, Curve(one.Type, one.Y.size(), a, one.M), status);
        };
        FitVector a = one.Start;
        const FitOutcome outcome =
            CFDQR2(Channels(one.Y.size()), one.Y, one.Type, a, one.M, Talk{});
        EXPECT_EQ(outcome.Status, one.Status) << one.Message;
        EXPECT_EQ(outcome.Message, one.Message);
        int status = 0;
        EXPECT_GE(likelihood(a, status), likelihood(one.Start, status));
        EXPECT_EQ(status, 0);
    }
}

// A Lorentzian two thousand million channels away is as good as straight over three channels: its
// columns are the same but for the last digit, and so is what the inverse is made of. The start has
// only powers of two and small numbers, so that no function of a library takes part. Fits that run
// away end here too, with a status of 0 at which nothing has converged.
TEST(Cfdqr2, AnInverseWithoutATraceIsSaidAndChangesNothing) {
    std::vector<std::string> said;
    Talk talk;
    talk.say = [&said](std::string_view text, std::string_view) { said.emplace_back(text); };
    const FitVector start{14.0, std::exp2(31.0), 3.0 * std::exp2(34.0)};
    FitVector a = start;
    const FitOutcome outcome =
        CFDQR2(Channels(3), std::vector<double>{0.0, 15.0, 13.0}, SHAPE_LORENTZ, a, 3, talk);
    EXPECT_EQ(said, std::vector<std::string>{"trace value =Zero"});
    EXPECT_EQ(outcome.Status, FIT_CONVERGED);
    EXPECT_EQ(outcome.Message, "");
    EXPECT_EQ(outcome.Err, FitVector{});
    EXPECT_EQ(a, start);
}

TEST(Cfdqr2, NegativeCountsReturnWithATextOrAFit) {
    seeded::Generator random(9);
    for (int repeat = 0; repeat < 100; ++repeat) {
        std::vector<double> y;
        for (int i = 0; i < 40; ++i) y.push_back(std::floor(random.Between(-200.0, 200.0)));
        for (const int type : {SHAPE_GAUSS, SHAPE_LORENTZ, SHAPE_MIX}) {
            FitVector a{};
            const FitOutcome outcome = Fit(y, type, type == SHAPE_MIX ? 5 : 4, a);
            for (const double value : a) EXPECT_TRUE(std::isfinite(value));
            for (const double error : outcome.Err) EXPECT_TRUE(std::isfinite(error));
            EXPECT_EQ(outcome.Message.empty(), outcome.Status == FIT_CONVERGED);
        }
    }
}

TEST(FitDataOf, ARegionOfZerosIsRefusedAtItsStart) {
    for (const int type : {SHAPE_GAUSS, SHAPE_LORENTZ}) {
        FitVector a{};
        const FitOutcome outcome = Fit(std::vector<double>(30, 0.0), type, 4, a);
        EXPECT_EQ(outcome.Status, FIT_ERROR);
        EXPECT_EQ(outcome.Message, START_REFUSED);
        EXPECT_EQ(a[0], 0.0);
        EXPECT_EQ(a[1], 15.0);
    }
}

TEST(FitDataOf, ARegionOfZerosEndsAMixWithTheDeterminant) {
    FitVector a{};
    const FitOutcome outcome = Fit(std::vector<double>(30, 0.0), SHAPE_MIX, 5, a);
    EXPECT_EQ(outcome.Status, FIT_ERROR);
    EXPECT_EQ(outcome.Message, DETERMINANT);
    EXPECT_EQ(a[2], 15.0);  // the place of the centre in that start: n / 2
}

TEST(FitDataOf, TheStartOfItsOwnFindsAPeak) {
    const FitVector truth{900.0, 30.25, 8.0, 20.0};
    for (const int type : {SHAPE_GAUSS, SHAPE_LORENTZ}) {
        FitVector a{};
        EXPECT_EQ(Fit(Curve(type, 60, truth, 4), type, 4, a).Status, FIT_CONVERGED);
        EXPECT_NEAR(a[1], 30.25, 1e-5);
        EXPECT_NEAR(a[2], 8.0, 1e-5);
    }
}

TEST(FitDataOf, ANegativeHalfWidthStartsAtTen) {
    const FitVector truth{900.0, 30.25, 8.0, 20.0};
    FitVector negative{800.0, 30.0, -3.0, 20.0};
    FitVector ten{800.0, 30.0, 10.0, 20.0};
    const auto y = Curve(SHAPE_GAUSS, 60, truth, 4);
    EXPECT_EQ(Fit(y, SHAPE_GAUSS, 4, negative).Status, FIT_CONVERGED);
    EXPECT_EQ(Fit(y, SHAPE_GAUSS, 4, ten).Status, FIT_CONVERGED);
    EXPECT_EQ(negative, ten);
}

TEST(FitDataOf, ACentreOutsideTheRegionGoesToItsMiddleUnrounded) {
    for (const double centre : {-4.0, 90.0}) {
        FitVector a{800.0, centre, 0.0, 20.0};  // a half width of 0: nothing moves in the fit
        EXPECT_EQ(Fit(std::vector<double>(25, 9.0), SHAPE_GAUSS, 4, a).Status, 11);
        EXPECT_EQ(a[1], 12.5);
    }
}

TEST(FitDataOf, OfAMixTheHalfWidthIsTestedInPlaceOfTheCentre) {
    FitVector a{800.0, 90.0, 0.0, 100.0, 20.0};
    EXPECT_GE(Fit(std::vector<double>(25, 9.0), SHAPE_MIX, 5, a).Status, 5);
    EXPECT_EQ(a[1], 90.0);
    EXPECT_EQ(a[2], 12.5);
}

TEST(FitDataOf, FewerPointsThanCoefficientsReturn) {
    seeded::Generator random(11);
    for (std::size_t n = 0; n <= 5; ++n) {
        for (int repeat = 0; repeat < 20; ++repeat) {
            std::vector<double> y(n);
            for (double& count : y) count = std::floor(random.Between(0.0, 300.0));
            for (const int type : {SHAPE_GAUSS, SHAPE_LORENTZ, SHAPE_MIX}) {
                FitVector a{};
                const FitOutcome outcome = Fit(y, type, type == SHAPE_MIX ? 5 : 4, a);
                EXPECT_TRUE(n > 0 || outcome.Status == FIT_ERROR);
                for (const double value : a) EXPECT_TRUE(std::isfinite(value));
            }
        }
    }
}

TEST(FitOnePeakOf, WritesTheRecordOfAGaussian) {
    OnePeak one;
    const FitOutcome outcome = one.Run(SHAPE_GAUSS, 4);
    EXPECT_EQ(outcome.Status, FIT_CONVERGED);
    const PeakRecord& peak = one.Peaks.Peak[0];
    EXPECT_EQ(one.Results[0], ALL_BITS);
    EXPECT_EQ(peak.FitState, ALL_BITS);
    EXPECT_EQ(peak.Fitted, 1);
    EXPECT_EQ(peak.FuncType, SHAPE_GAUSS);
    EXPECT_EQ(peak.GaussRatio, 1.0);
    EXPECT_NEAR(peak.Position, 100.0, 0.01);  // counts are rounded
    EXPECT_NEAR(peak.Width, 5.0, 0.02);
    EXPECT_NEAR(peak.Amplitude, 1000.0, 2.0);
    EXPECT_NEAR(peak.BackConst, 50.0, 1.0);
    EXPECT_EQ(peak.BackSlope, 0.0);
    EXPECT_EQ(peak.StartCh, 88);
    EXPECT_EQ(peak.EndCh, 112);
}

TEST(FitOnePeakOf, TheMessageOfAFitThatConvergedListsFourErrors) {
    OnePeak one;
    const FitOutcome outcome = one.Run(SHAPE_GAUSS, 4);
    ASSERT_EQ(outcome.Status, FIT_CONVERGED);
    char text[200];
    std::snprintf(text, sizeof text, " 係数誤差=%.5f %.5f %.5f %.5f", outcome.Err[0],
                  outcome.Err[1], outcome.Err[2], outcome.Err[3]);
    EXPECT_EQ(outcome.Message, text);
}

TEST(FitOnePeakOf, ALorentzianHasNoGaussianShare) {
    OnePeak one;
    one.Run(SHAPE_LORENTZ, 4);
    EXPECT_EQ(one.Peaks.Peak[0].GaussRatio, 0.0);
    EXPECT_EQ(one.Peaks.Peak[0].FuncType, SHAPE_LORENTZ);
}

TEST(FitOnePeakOf, AMixHasTheWholeHeightAndTheShareOfItsGaussian) {
    OnePeak one;
    for (int i = 0; i < 200; ++i) {
        const double u = (i - 100.0) / 5.0;
        one.Spectrum->Count[static_cast<std::size_t>(i)] = static_cast<std::int32_t>(
            std::lround(500.0 + 70000.0 * std::exp2(-u * u) + 30000.0 / (1.0 + u * u)));
    }
    one.Peaks.Peak[0].Amplitude = 100500.0;
    EXPECT_EQ(one.Run(SHAPE_MIX, 5).Status, FIT_CONVERGED);
    EXPECT_EQ(one.Results[0], ALL_BITS);
    EXPECT_NEAR(one.Peaks.Peak[0].Amplitude, 100000.0, 50.0);
    EXPECT_NEAR(one.Peaks.Peak[0].GaussRatio, 0.7, 0.001);
    EXPECT_NEAR(one.Peaks.Peak[0].BackConst, 500.0, 50.0);
}

TEST(FitOnePeakOf, AShapeOutsideTheListIsSaidAndNothingIsWritten) {
    for (const int type : {0, 4}) {
        OnePeak one;
        one.Run(type, 4);
        EXPECT_EQ(one.Said, std::vector<std::string>{"Bad Function Type!"});
        EXPECT_EQ(one.Results[0], 7);
        EXPECT_EQ(one.Peaks.Peak[0].Fitted, 0);
    }
}

TEST(FitOnePeakOf, ARowThatIsNotThereStaysSilent) {
    OnePeak one;
    one.Run(SHAPE_GAUSS, 4, 1);
    one.Run(SHAPE_GAUSS, 4, -1);
    EXPECT_TRUE(one.Said.empty());
    EXPECT_EQ(one.Results[1], 7);
}

TEST(FitOnePeakOf, AHeightOfThreeTimesItsStartFails) {
    OnePeak one;
    one.Peaks.Peak[0].Amplitude = 380.0;  // 312 above the first count of 68; the fit finds 1000
    one.Run(SHAPE_GAUSS, 4);
    EXPECT_GT(one.Peaks.Peak[0].Amplitude, 900.0);
    EXPECT_EQ(one.Results[0], 0);
    EXPECT_EQ(one.Peaks.Peak[0].Fitted, 1);
    OnePeak just;
    just.Peaks.Peak[0].Amplitude = 420.0;  // 352: three times that is 1056
    just.Run(SHAPE_GAUSS, 4);
    EXPECT_EQ(just.Results[0], ALL_BITS);
}

TEST(FitOnePeakOf, TheStartIsAboveTheFirstCountElseTheLastElseTheWhole) {
    // A region of 501 channels is not fitted: the record keeps its start.
    const auto start = [](std::int32_t first, std::int32_t last) {
        OnePeak one;
        one.Spectrum->DataNo = 600;
        one.Peaks.Peak[0].Amplitude = 100.0;
        one.Peaks.Peak[0].StartCh = 10;
        one.Peaks.Peak[0].EndCh = 510;
        one.Spectrum->Count[10] = first;
        one.Spectrum->Count[510] = last;
        EXPECT_EQ(one.Run(SHAPE_GAUSS, 4).Message, "(error) CFDQR2 : Many Data!");
        EXPECT_EQ(one.Peaks.Peak[0].Position, 100.4);
        EXPECT_EQ(one.Peaks.Peak[0].Width, 4.0);
        return one.Peaks.Peak[0].Amplitude;
    };
    EXPECT_EQ(start(30, 60), 70.0);
    EXPECT_EQ(start(101, 60), 40.0);
    EXPECT_EQ(start(101, 102), 100.0);
}

TEST(FitOnePeakOf, AMixStartsWithFourFifthsAndOneFifth) {
    OnePeak one;
    one.Spectrum->DataNo = 600;
    one.Spectrum->Count.fill(0);
    one.Peaks.Peak[0].StartCh = 10;
    one.Peaks.Peak[0].EndCh = 510;
    one.Run(SHAPE_MIX, 5);
    EXPECT_NEAR(one.Peaks.Peak[0].Amplitude, 1050.0, 1e-9);
    EXPECT_NEAR(one.Peaks.Peak[0].GaussRatio, 0.8, 1e-12);
}

TEST(FitOnePeakOf, ARegionPastTheChannelsEndsTheCommandAndKeepsTheRecord) {
    OnePeak one;
    one.Peaks.Peak[0].StartCh = 8000;
    one.Peaks.Peak[0].EndCh = 8192;
    EXPECT_THROW(one.Run(SHAPE_GAUSS, 4), Fault);
    EXPECT_EQ(one.Peaks.Peak[0].Fitted, 0);
    EXPECT_EQ(one.Peaks.Peak[0].Position, 100.4);
}
