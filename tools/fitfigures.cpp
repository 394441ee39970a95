// How well both fitters do on simulated spectra of known truth: peaks, centres, time.
#include "fitfigures.h"

#include "fitroads.h"
#include "simulation.h"

#include "analysis/naxwalk.h"
#include "core/fault.h"

#include <ctime>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <functional>
#include <memory>
#include <numbers>
#include <thread>

namespace vael::tools {
namespace {

constexpr int CHANNELS = 4096;
constexpr double KEV_A_CHANNEL = 0.030625;
constexpr double KEV_AT_0 = 0.0385;
constexpr double FIRST = 100.0;  // centres
constexpr double LAST = 4000.0;
constexpr double ALONE = 3.0;  // full widths to the nearest neighbour

double LogBetween(Random& random, double low, double high) {
    return low * std::pow(high / low, random.Uniform());
}

double Between(Random& random, double low, double high) {
    return low + (high - low) * random.Uniform();
}

/// One fitted centre.
struct FittedPeak {
    double Centre = 0.0;  // from 0
    double Error = 0.0;   // 0 where there is none
    bool Converged = false;
};

struct FittedSpectrum {
    std::vector<FittedPeak> Peaks;
    int Fits = 0;
    std::vector<double> Refused;  // centres of the search whose fit was refused
    bool TooMany = false;
    double Seconds = 0.0;
};

/// CPU time of this thread, so that the figures hold on a machine that others use as well.
double ThreadSeconds() {
    std::timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

FittedSpectrum FitNax(const SpectrumData& data, double coefficient) {
    NaxSettings settings;
    settings.EACPS = coefficient;
    const auto state = std::make_unique<NaxState>();
    FittedSpectrum out;
    const double before = ThreadSeconds();
    const NaxResult result = NaxFitAll(data, settings, *state, Talk{});
    out.Seconds = ThreadSeconds() - before;
    for (const NaxPeakRow& row : result.Peaks)
        out.Peaks.push_back({.Centre = row.Position - 1.0,
                             .Error = row.PositionError,
                             .Converged = Item(result.Groups, row.Group).Status == "CONV"});
    out.Fits = static_cast<int>(out.Peaks.size());
    return out;
}

FittedSpectrum FitExpress(const SpectrumData& data, int thres) {
    FittedSpectrum out;
    const double before = ThreadSeconds();
    const ExpressResult result = ExpressFitAll(data, SHAPE_GAUSS, thres);
    out.Seconds = ThreadSeconds() - before;
    for (const ExpressPeak& peak : result.Peaks)
        out.Peaks.push_back({.Centre = peak.Record.Position,
                             .Error = peak.Outcome.Err[1],
                             .Converged = peak.Outcome.Status == FIT_CONVERGED});
    out.Fits = result.Searched;
    for (const PeakRecord& peak : result.Refused) out.Refused.push_back(peak.Position);
    out.TooMany = result.TooMany;
    return out;
}

/// Which fitted peak each true one has, or none (-1): pairs within half a full width, the nearest
/// pair first, each peak once.
std::vector<int> Matched(const std::vector<TruePeak>& truth,
                         const std::vector<FittedPeak>& fitted) {
    struct Pair {
        double Off;
        std::size_t True;
        std::size_t Fitted;
    };
    std::vector<Pair> pairs;
    for (std::size_t t = 0; t < truth.size(); ++t)
        for (std::size_t f = 0; f < fitted.size(); ++f)
            if (const double off = std::fabs(fitted[f].Centre - truth[t].Centre);
                off <= 0.5 * truth[t].Fwhm)
                pairs.push_back({off, t, f});
    std::stable_sort(pairs.begin(), pairs.end(),
                     [](const Pair& a, const Pair& b) { return a.Off < b.Off; });
    std::vector<int> match(truth.size(), -1);
    std::vector<bool> taken(fitted.size(), false);
    for (const Pair& pair : pairs) {
        if (match[pair.True] >= 0 || taken[pair.Fitted]) continue;
        match[pair.True] = static_cast<int>(pair.Fitted);
        taken[pair.Fitted] = true;
    }
    return match;
}

std::size_t ClassOf(const TruePeak& peak) {
    std::size_t k = 0;
    while (k + 2 < SIGNAL_CLASSES.size() && peak.SignalToNoise() >= SIGNAL_CLASSES[k + 1]) ++k;
    return k;
}

void Add(const FittedSpectrum& fitted, const std::vector<TruePeak>& truth, RoadFigures& road) {
    const std::vector<int> match = Matched(truth, fitted.Peaks);
    int found = 0;
    for (std::size_t t = 0; t < truth.size(); ++t) {
        ClassFigures& figures = (truth[t].Alone ? road.Alone : road.Crowded)[ClassOf(truth[t])];
        ++figures.There;
        if (match[t] < 0) {
            figures.Refused += std::any_of(
                fitted.Refused.begin(), fitted.Refused.end(), [&peak = truth[t]](double centre) {
                    return std::fabs(centre - peak.Centre) <= 0.5 * peak.Fwhm;
                });
            continue;
        }
        ++figures.Found;
        ++found;
        const FittedPeak& peak = Item(fitted.Peaks, match[t]);
        if (!peak.Converged) continue;
        if (!(peak.Error > 0.0 && peak.Error <= 0.5 * truth[t].Fwhm)) ++figures.Undetermined;
        if (!(peak.Error > 0.0)) continue;
        figures.Off.push_back(peak.Centre - truth[t].Centre);
        figures.Error.push_back(peak.Error);
    }
    road.Fitted += static_cast<int>(fitted.Peaks.size());
    road.False += static_cast<int>(fitted.Peaks.size()) - found;
    for (const FittedPeak& peak : fitted.Peaks) road.Unconverged += peak.Converged ? 0 : 1;
    road.Refused += static_cast<int>(fitted.Refused.size());
    road.TooMany += fitted.TooMany ? 1 : 0;
    road.Seconds.push_back(fitted.Seconds);
    if (fitted.Fits > 0)
        road.SecondsAPeak.push_back(fitted.Seconds / static_cast<double>(fitted.Fits));
}

/// Counts above their background, and the counts themselves.
struct Prepared {
    SpectrumData Above;
    SpectrumData Raw;
};

struct Road {
    const char* Name;
    FittedSpectrum (*Fit)(const Prepared&, const FigureOptions&);
};

constexpr double DEFAULT_EACPS = 0.2;

const Road ROADS[] = {
    {"NAX, smoothed and background removed (AutoFitting)",
     [](const Prepared& p, const FigureOptions&) { return FitNax(p.Above, DEFAULT_EACPS); }},
    {"NAX, the same, BG coefficient by the median raw count",
     [](const Prepared& p, const FigureOptions&) {
         return FitNax(p.Above, AutoBgCoefficient(p.Raw));
     }},
    {"NAX, raw counts, BG coefficient by the median count",
     [](const Prepared& p, const FigureOptions&) {
         return FitNax(p.Raw, AutoBgCoefficient(p.Raw));
     }},
    {"Express Gauss, smoothed and background removed (AutoFitting)",
     [](const Prepared& p, const FigureOptions& o) { return FitExpress(p.Above, o.Threshold); }},
    {"Express Gauss, raw counts",
     [](const Prepared& p, const FigureOptions& o) { return FitExpress(p.Raw, o.Threshold); }}};

constexpr std::size_t ROAD_COUNT = std::size(ROADS);

struct Done {
    std::vector<TruePeak> Truth;
    std::array<FittedSpectrum, ROAD_COUNT> Fitted;
};

Done One(const FigureOptions& options, int number) {
    FigureSpectrum spectrum = SimulateFigure(options.Seed, number);
    const auto prepared = std::make_unique<Prepared>(
        Prepared{.Above = AboveBackground(spectrum.Data), .Raw = spectrum.Data});
    Done done{.Truth = std::move(spectrum.Peaks), .Fitted = {}};
    for (std::size_t k = 0; k < ROAD_COUNT; ++k) done.Fitted[k] = ROADS[k].Fit(*prepared, options);
    return done;
}

double Share(const std::vector<double>& sorted, double share) {
    const double at = share * static_cast<double>(sorted.size() - 1);
    const auto low = static_cast<std::size_t>(at);
    const std::size_t high = std::min(low + 1, sorted.size() - 1);
    return std::lerp(sorted[low], sorted[high], at - static_cast<double>(low));
}

}  // namespace

double TruePeak::SignalToNoise() const { return Height / std::sqrt(Background); }

double Median(std::vector<double> values) {
    if (values.empty()) return 0.0;
    std::sort(values.begin(), values.end());
    return Share(values, 0.5);
}

FigureSpectrum SimulateFigure(std::uint64_t seed, int number) {
    // 1. Neighbouring numbers must not give neighbouring streams: the seeder scrambles the sum.
    Random random(Random(seed).Next() + static_cast<std::uint64_t>(number));
    FigureSpectrum out;
    out.Data.DataNo = CHANNELS;
    // 2. A straight background.
    const double middle = LogBetween(random, 20.0, 1000.0);
    const double lean = Between(random, -0.8, 0.8);
    const auto background = [&](double x) {
        return middle * (1.0 + lean * (x - CHANNELS / 2.0) / (CHANNELS / 2.0));
    };
    // 3. Peaks.
    const int peaks = 8 + static_cast<int>(random.Uniform() * 18.0);
    while (static_cast<int>(out.Peaks.size()) < peaks) {
        const double centre = Between(random, FIRST, LAST);
        TruePeak peak{.Centre = centre,
                      .Fwhm = DetectorWidth(KEV_AT_0 + KEV_A_CHANNEL * centre) / KEV_A_CHANNEL,
                      .Background = background(centre)};
        peak.Height = std::sqrt(peak.Background) *
                      LogBetween(random, SIGNAL_CLASSES.front(), SIGNAL_CLASSES.back());
        if (std::all_of(out.Peaks.begin(), out.Peaks.end(), [&](const TruePeak& other) {
                return std::fabs(other.Centre - centre) > std::max(peak.Fwhm, other.Fwhm);
            }))
            out.Peaks.push_back(peak);
    }
    std::sort(out.Peaks.begin(), out.Peaks.end(),
              [](const TruePeak& a, const TruePeak& b) { return a.Centre < b.Centre; });
    for (std::size_t k = 1; k < out.Peaks.size(); ++k) {
        TruePeak& left = out.Peaks[k - 1];
        TruePeak& right = out.Peaks[k];
        if (right.Centre - left.Centre > ALONE * std::max(left.Fwhm, right.Fwhm)) continue;
        left.Alone = right.Alone = false;
    }
    // 4. Counts.
    for (int i = 0; i < CHANNELS; ++i) {
        double mean = background(i);
        for (const TruePeak& peak : out.Peaks) {
            const double z = (i - peak.Centre) / peak.Fwhm;
            if (std::fabs(z) < 5.0)
                mean += peak.Height * std::exp(-4.0 * std::numbers::ln2 * z * z);
        }
        Item(out.Data.Count, i) = random.Poisson(mean);
    }
    return out;
}

PullFigures PullsOf(const ClassFigures& figures) {
    PullFigures out;
    out.Count = static_cast<int>(figures.Off.size());
    if (out.Count == 0) return out;
    const double n = static_cast<double>(out.Count);
    std::vector<double> pulls;
    for (std::size_t i = 0; i < figures.Off.size(); ++i) {
        pulls.push_back(figures.Off[i] / figures.Error[i]);
        out.Mean += pulls.back() / n;
        out.Rms += figures.Off[i] * figures.Off[i] / n;
    }
    out.Rms = std::sqrt(out.Rms);
    out.Bias = Median(figures.Off) / Median(figures.Error);
    for (const double pull : pulls) out.Deviation += (pull - out.Mean) * (pull - out.Mean);
    out.Deviation = out.Count > 1 ? std::sqrt(out.Deviation / (n - 1.0)) : 0.0;
    std::sort(pulls.begin(), pulls.end());
    out.Median = Share(pulls, 0.5);
    out.Spread = (Share(pulls, 0.841345) - Share(pulls, 0.158655)) / 2.0;
    return out;
}

ClassFigures RoadFigures::Whole(std::size_t signal) const {
    ClassFigures sum = Item(Alone, signal);
    const ClassFigures& other = Item(Crowded, signal);
    sum.There += other.There;
    sum.Found += other.Found;
    sum.Refused += other.Refused;
    sum.Undetermined += other.Undetermined;
    sum.Off.insert(sum.Off.end(), other.Off.begin(), other.Off.end());
    sum.Error.insert(sum.Error.end(), other.Error.begin(), other.Error.end());
    return sum;
}

std::vector<RoadFigures> MakeFigures(const FigureOptions& options) {
    // 1. Each thread takes the next spectrum; where it goes depends on its number alone.
    std::vector<Done> done(static_cast<std::size_t>(std::max(options.Spectra, 0)));
    std::atomic<int> next = 0;
    const auto work = [&] {
        for (int i = next++; i < options.Spectra; i = next++) Item(done, i) = One(options, i);
    };
    const unsigned machine = std::max(1u, std::thread::hardware_concurrency());
    const unsigned count = options.Threads > 0 ? static_cast<unsigned>(options.Threads) : machine;
    {
        std::vector<std::jthread> threads;
        for (unsigned i = 0; i < count; ++i) threads.emplace_back(work);
    }
    // 2. Sums in the order of the spectra.
    std::vector<RoadFigures> roads(ROAD_COUNT);
    for (std::size_t k = 0; k < ROAD_COUNT; ++k) {
        roads[k].Name = ROADS[k].Name;
        for (const Done& one : done) Add(one.Fitted[k], one.Truth, roads[k]);
    }
    return roads;
}

}  // namespace vael::tools
