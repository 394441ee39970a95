// The single-peak fit on seeded regions of every shape, against an independent maximiser.
#include "analysis/likelihood.h"

#include "analysis/calfitting.h"
#include "analysis/seeded.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

using namespace vael;

namespace {

using judge::Taylor;
using judge::Unknowns;

Taylor Gauss(double x, const Taylor& height, const Taylor& centre, const Taylor& half) {
    const Taylor u = (Taylor(x) - centre) * judge::Inverse(half);
    return height * judge::Exp(Taylor(-std::log(2.0)) * u * u);
}

Taylor Lorentz(double x, const Taylor& height, const Taylor& centre, const Taylor& half) {
    const Taylor u = (Taylor(x) - centre) * judge::Inverse(half);
    return height * judge::Inverse(Taylor(1.0) + u * u);
}

judge::Model ModelOf(int type) {
    return [type](double x, const Unknowns& a) {
        if (type == SHAPE_GAUSS) return Gauss(x, a[0], a[1], a[2]) + a[3];
        if (type == SHAPE_LORENTZ) return Lorentz(x, a[0], a[1], a[2]) + a[3];
        return Gauss(x, a[0], a[1], a[2]) + Lorentz(x, a[3], a[1], a[2]) + a[4];
    };
}

/// How far a region reaches to each side, in half widths, and whether the start has a constant. The
/// record of a searched peak gives none: its fit starts with 0.
struct Kind {
    double Least = 2.0;
    double Most = 3.0;
    bool Constant = false;
};

/// A region with one peak: what was put in, the counts, and the start that a search would give.
struct Region {
    judge::Row Truth{};
    std::vector<double> X, Y;
    FitVector Start{};
    int M = 4;
};

Region Seeded(seeded::Generator& random, int type, const Kind& kind) {
    Region region;
    const double n = std::floor(random.Between(30.0, 121.0));
    const double height = random.LogBetween(30.0, 30000.0);
    const double background = random.LogBetween(5.0, 500.0);
    const double centre = random.Between(0.35 * n, 0.65 * n);
    const double half = n / 2.0 / random.Between(kind.Least, kind.Most);
    if (type == SHAPE_MIX) {
        const double share = random.Between(0.3, 0.7);
        region.Truth = {share * height, centre, half, (1.0 - share) * height, background, 0.0};
        region.M = 5;
    } else {
        region.Truth = {height, centre, half, background, 0.0, 0.0};
    }
    const judge::Model model = ModelOf(type);
    double most = -1.0;
    double at = 0.0;
    for (double x = 1.0; x <= n; x += 1.0) {
        const double mean = model(x, judge::At(region.Truth, 0)).V;
        region.X.push_back(x);
        region.Y.push_back(static_cast<double>(random.Poisson(mean)));
        if (region.Y.back() <= most) continue;
        most = region.Y.back();
        at = x;
    }
    region.Start = {most - region.Y.front(), at, half * random.LogBetween(0.6, 1.6)};
    if (type == SHAPE_MIX) {
        region.Start[3] = 0.2 * region.Start[0];
        region.Start[0] *= 0.8;
    }
    if (kind.Constant)
        region.Start[type == SHAPE_MIX ? 4 : 3] = std::min(region.Y.front(), region.Y.back());
    return region;
}

judge::Row RowOf(const FitVector& a) { return {a[0], a[1], a[2], a[3], a[4], a[5]}; }

/// Errors by the propagation of the counts' own scatter through the observed information.
judge::Row Scatter(const judge::Model& model, const Region& region, const judge::Row& a) {
    const auto m = static_cast<std::size_t>(region.M);
    judge::Square information{};
    std::vector<Taylor> f;
    for (std::size_t i = 0; i < region.Y.size(); ++i) {
        f.push_back(model(region.X[i], judge::At(a, m)));
        for (std::size_t k = 0; k < m; ++k)
            for (std::size_t j = 0; j < m; ++j)
                information[k][j] +=
                    region.Y[i] * f.back().G[k] * f.back().G[j] / (f.back().V * f.back().V);
    }
    judge::Row errors{};
    for (std::size_t i = 0; i < f.size(); ++i) {
        const auto lever = judge::SolvePositive(information, f[i].G, m);
        if (!lever) return {};
        for (std::size_t k = 0; k < m; ++k) errors[k] += (*lever)[k] * (*lever)[k] / f[i].V;
    }
    for (std::size_t k = 0; k < m; ++k) errors[k] = std::sqrt(errors[k]);
    return errors;
}

/// What became of the fits of a number of regions.
struct Tally {
    int Same = 0;         // the maximum that the judge reaches from the truth
    int Other = 0;        // another maximum: the judge stays there
    int Told = 0;         // no maximum, and the error of the centre says so: above half a channel
    int Wrong = 0;        // no maximum, with an error that does not tell
    int Stopped = 0;      // status 2
    int Refused = 0;      // status 4 and above
    double Centre = 0.0;  // worst distance of a maximum, channels
    double Likelihood = 0.0;  // the same, relative
    double Error = 0.0;       // worst error of a coefficient against the scatter's, relative
};

/// Whether a fit agrees with a maximum to 1e-4 channels and 1e-7 of the likelihood.
bool Agrees(const judge::Model& model, const Region& region, const FitVector& a,
            const judge::Maximum& best, Tally& tally) {
    const double value = judge::LogProbability(model, region.Y, RowOf(a), 0).V;
    const double centre = std::fabs(a[1] - best.At[1]);
    const double likelihood = std::fabs((value - best.Value) / best.Value);
    if (!best.Reached || !(centre < 1e-4) || !(likelihood < 1e-7)) return false;
    tally.Centre = std::max(tally.Centre, centre);
    tally.Likelihood = std::max(tally.Likelihood, likelihood);
    return true;
}

Tally Judge(int type, const Kind& kind, int regions = 200) {
    seeded::Generator random(static_cast<std::uint64_t>(30 + type));
    const judge::Model model = ModelOf(type);
    Tally tally;
    for (int i = 0; i < regions; ++i) {
        const Region region = Seeded(random, type, kind);
        const auto m = static_cast<std::size_t>(region.M);
        FitVector a = region.Start;
        const FitOutcome outcome = CFDQR2(region.X, region.Y, type, a, region.M, Talk{});
        if (outcome.Status != FIT_CONVERGED) {
            ++(outcome.Status == FIT_STOPPED ? tally.Stopped : tally.Refused);
            continue;
        }
        if (Agrees(model, region, a, judge::Maximise(model, region.Y, region.Truth, m), tally)) {
            ++tally.Same;
        } else if (Agrees(model, region, a, judge::Maximise(model, region.Y, RowOf(a), m), tally)) {
            ++tally.Other;
        } else {
            ++(outcome.Err[1] > 0.5 ? tally.Told : tally.Wrong);
            continue;
        }
        const judge::Row errors = Scatter(model, region, RowOf(a));
        for (std::size_t k = 0; k < m; ++k)
            tally.Error = std::max(tally.Error, std::fabs(outcome.Err[k] / errors[k] - 1.0));
    }
    std::printf(
        "shape %d, reach %g to %g, %s, %d regions: same %d, other %d, told %d, wrong %d, status 2 "
        "%d, "
        "4 %d; worst centre %.1e, likelihood %.1e, error %.1e\n",
        type, kind.Least, kind.Most, kind.Constant ? "constant" : "no constant", regions,
        tally.Same, tally.Other, tally.Told, tally.Wrong, tally.Stopped, tally.Refused,
        tally.Centre, tally.Likelihood, tally.Error);
    return tally;
}

constexpr Kind SEARCHED{.Least = 2.0, .Most = 3.0, .Constant = false};
constexpr Kind WITH_CONSTANT{.Least = 2.0, .Most = 6.0, .Constant = true};

}  // namespace

TEST(Likelihood, SeededGaussiansAndLorentziansAreWhereTheIndependentMaximumIs) {
    for (const int type : {SHAPE_GAUSS, SHAPE_LORENTZ}) {
        const Tally searched = Judge(type, SEARCHED);
        EXPECT_EQ(searched.Same, 200);
        EXPECT_LT(searched.Error, 1e-4);
        // One Gaussian of these runs away; its error of the centre tells.
        const Tally wider = Judge(type, WITH_CONSTANT);
        EXPECT_EQ(wider.Same + wider.Told, 200);
        EXPECT_LE(wider.Told, 1);
        EXPECT_LT(wider.Error, 1e-4);
    }
}

// A weak Mix in a narrow region has more than one maximum; every fit must be at one of them.
TEST(Likelihood, SeededMixesAreAtAnIndependentMaximum) {
    for (const Kind& kind : {SEARCHED, WITH_CONSTANT}) {
        const Tally tally = Judge(SHAPE_MIX, kind);
        EXPECT_GE(tally.Same, 175);
        EXPECT_EQ(tally.Told + tally.Wrong, 0);
        EXPECT_GE(tally.Same + tally.Other, 198);
        EXPECT_LT(tally.Error, 1e-3);
    }
}

// Regions that are too narrow or too wide for a start without a constant: a Gaussian's foot is then
// next to 0, the weights there are next to infinite, and a fit may be refused or run away. One
// that runs away with status 0 has an error of the centre that tells.
TEST(Likelihood, AFitThatRunsAwayIsRefusedOrHasAnErrorThatTells) {
    for (const int type : {SHAPE_GAUSS, SHAPE_LORENTZ, SHAPE_MIX}) {
        for (const double reach : {1.0, 6.0, 12.0}) {
            const Tally tally = Judge(type, {reach, 2.0 * reach, false}, 50);
            EXPECT_EQ(tally.Wrong, 0);
        }
    }
}
