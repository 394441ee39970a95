// Peaks for the Express mode: the search in a stretch of spectrum, and the split of a region.
#include "analysis/calwavesprit.h"

#include "analysis/backgraund.h"
#include "analysis/calc.h"
#include "core/fault.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

namespace vael {
namespace {

constexpr double LN2 = 0.69314718055994530942;
constexpr std::size_t LEAST_CHANNELS = 9;
constexpr std::size_t MOST_RECORDS = 2048;
constexpr double HEIGHT_SHARE = 15.0;  // the limit of a first find is the largest s over this
constexpr double NO_SLOPE = 0.01;      // stands for a slope of 0, so that signs are defined
constexpr double WIDTH_SHARE = 4.0;    // half width of a find: distance of its feet over this
constexpr int NARROWED_FROM = 500;     // channels of a stretch whose one region is narrowed

constexpr int SMOOTH_HALF = 2;
constexpr std::array<double, 3> SMOOTH_WEIGHT{17.0, 12.0, -3.0};
constexpr double SMOOTH_NORM = 35.0;
constexpr int CURVE_HALF = 4;
constexpr std::array<double, 5> CURVE_WEIGHT{-20.0, -17.0, -8.0, 7.0, 28.0};  // 3 i i - 20

/// Local channels count from 1; entry 0 is not used.
using Local = std::vector<double>;

/// A sign change of the slope of the second derivative, between the channels At and At + 1.
struct Record {
    std::size_t At;
    bool Peak;  // a minimum of the second derivative; else a maximum, a foot
};

Local Counts(std::span<const std::int32_t> y) {
    Local counts(1, 0.0);
    for (const std::int32_t count : y) counts.push_back(static_cast<double>(count));
    return counts;
}

template <std::size_t N>
double Weighted(const Local& y, std::size_t i, const std::array<double, N>& weight) {
    double sum = weight[0] * y[i];
    for (std::size_t j = 1; j < N; ++j) sum += weight[j] * (y[i - j] + y[i + j]);
    return sum;
}

/// Smoothed counts where the window is full, the counts elsewhere.
Local Smoothed(const Local& y, double& noise) {
    const std::size_t n = y.size() - 1;
    Local s = y;
    noise = 0.0;
    for (std::size_t i = SMOOTH_HALF + 1; i + SMOOTH_HALF <= n; ++i) {
        s[i] = Weighted(y, i, SMOOTH_WEIGHT) / SMOOTH_NORM;
        noise += (y[i] - s[i]) * (y[i] - s[i]);
    }
    // Six channels are taken off where four were not smoothed; so it stays.
    noise = noise * static_cast<double>(n) / static_cast<double>(n - 3 * SMOOTH_HALF);
    return s;
}

/// Sign changes of the slope, over the channels where all that it is made of has full windows.
std::vector<Record> SignChanges(const Local& y) {
    const std::size_t n = y.size() - 1;
    Local curve(n + 1, 0.0);
    for (std::size_t i = CURVE_HALF + 1; i + CURVE_HALF <= n; ++i)
        curve[i] = Weighted(y, i, CURVE_WEIGHT);
    const auto slope = [&curve](std::size_t i) {
        double sum = 0.0;
        for (std::size_t j = 1; j <= CURVE_HALF; ++j)
            sum += (curve[i + j] - curve[i - j]) * static_cast<double>(j);
        return sum == 0.0 ? NO_SLOPE : sum;
    };
    std::vector<Record> records;
    for (std::size_t i = 2 * CURVE_HALF + 1; i + 1 + 2 * CURVE_HALF <= n; ++i) {
        const double here = slope(i);
        if (records.size() < MOST_RECORDS && here * slope(i + 1) < 0.0)
            records.push_back({.At = i, .Peak = here < 0.0});
    }
    return records;
}

double Apart(const Record& a, const Record& b) {
    return static_cast<double>(b.At) - static_cast<double>(a.At);
}

PeakRecord SearchedRecord(double height, double position, double width, std::int16_t funcType) {
    PeakRecord peak{};
    peak.FuncType = funcType;
    peak.Amplitude = height;
    peak.GaussRatio = 1.0;
    peak.Width = width;
    peak.Position = position;
    return peak;
}

/// A channel of a region: to the nearest, ties to the even one, then not beyond first and last.
std::int16_t Limited(double channel, double first, double last) {
    return Whole16(std::clamp(RoundEven(channel), first, last));
}

/// The one record of a stretch without a find.
PeakRecord HighestChannel(std::span<const std::int32_t> y, int start, std::int16_t funcType) {
    const int n = static_cast<int>(y.size());
    const auto highest = std::max_element(y.begin(), y.end());  // the first of equals
    const int position = start + static_cast<int>(highest - y.begin());
    PeakRecord peak = SearchedRecord(static_cast<double>(*highest), static_cast<double>(position),
                                     static_cast<double>(n) / 6.0, funcType);
    int first = start;
    int last = start + n - 1;
    if (n >= NARROWED_FROM) {
        const int distance = std::min(position - first, last - position);
        first = position - distance;
        last = position + distance;
        peak.Width = static_cast<double>(distance) / 3.0;
    }
    peak.StartCh = Int16(first);
    peak.EndCh = Int16(last);
    return peak;
}

}  // namespace

double PeakThreshold(int thres) {
    const double setting = static_cast<double>(thres);
    const double threshold = thres >= 10 ? (21.0 - setting) * 4.0 : (20.0 - setting) * 100.0;
    return threshold <= 0.0 ? 40.0 : threshold;
}

std::vector<FoundPeak> FindPeaks(std::span<const std::int32_t> y, int thres, double& noise) {
    std::vector<FoundPeak> list;
    noise = 0.0;
    if (y.size() < LEAST_CHANNELS) return list;
    // 1. Smoothed counts, and the limits of a find.
    const Local counts = Counts(y);
    const Local s = Smoothed(counts, noise);
    const double least = PeakThreshold(thres);
    const double leastFirst = *std::max_element(s.begin() + 1, s.end()) / HEIGHT_SHARE;
    const double widest = static_cast<double>(y.size()) / 4.0;
    // 2. A minimum of the second derivative between two maxima. A first one has no left foot: it
    // needs its height alone.
    const std::vector<Record> records = SignChanges(counts);
    for (std::size_t k = 0; k + 1 < records.size(); ++k) {
        if (!records[k].Peak) continue;
        const double height = s[records[k].At];
        double apart = Apart(records[k], records[k + 1]);
        if (k > 0) apart = MaxValue(apart, Apart(records[k - 1], records[k]));
        const double width = apart / WIDTH_SHARE;
        const bool high =
            k > 0 ? (height - s[records[k - 1].At]) * width >= least : height >= leastFirst;
        if (high && width < widest)
            list.push_back({height, static_cast<double>(records[k].At), width});
    }
    return list;
}

int PeakSearch(const SpectrumData& spectrum, int start, int n, int thres, std::int16_t funcType,
               std::vector<PeakRecord>& peaks, const Talk& talk) {
    peaks.clear();
    if (n < 1 || n > MAX_CHANNELS) return 0;
    static_cast<void>(Item(spectrum.Count, start));
    static_cast<void>(Item(spectrum.Count, start + n - 1));
    const auto y = std::span(spectrum.Count)
                       .subspan(static_cast<std::size_t>(start), static_cast<std::size_t>(n));
    double noise = 0.0;
    std::vector<FoundPeak> list = FindPeaks(y, thres, noise);
    if (list.size() > MAX_PEAKS) {
        talk.say("No of Peak > 100 !", "");
        list.resize(MAX_PEAKS);
    }
    const double first = static_cast<double>(start);
    const double last = static_cast<double>(start + n - 1);
    for (const FoundPeak& found : list) {
        const double position = first + found.Position - 1.0;
        PeakRecord peak = SearchedRecord(found.Height, position, found.Width, funcType);
        peak.StartCh = Limited(position - 2.0 * found.Width, first, last);
        peak.EndCh = Limited(position + 2.0 * found.Width, first, last);
        peaks.push_back(peak);
    }
    if (peaks.empty()) peaks.push_back(HighestChannel(y, start, funcType));
    return 1;
}

namespace {

double Finite(double value) {
    if (!std::isfinite(value)) throw Fault(FaultNumber::Overflow, "Overflow of a floating number.");
    return value;
}

/// The normal equations of one pass: the upper triangle, row after row, and the right side.
struct Normal {
    std::size_t M;
    std::vector<double> A;
    std::vector<double> G;
    double Chi = 0.0;

    explicit Normal(std::size_t m) : M(m), A(m * m), G(m) {}
    double& At(std::size_t r, std::size_t c) { return A[r * M + c]; }

    /// Adds local channel i: three columns a Gaussian.
    void Add(double i, double count, std::span<const double> p, std::vector<double>& column) {
        double model = 0.0;
        for (std::size_t k = 0; k < M; k += 3) {
            const double d = i - p[k + 1];
            const double v = Quot(1.0, p[k + 2]);
            const double e = std::exp(-LN2 * v * v * d * d);
            column[k] = Finite(e);
            column[k + 1] = Finite(2.0 * LN2 * p[k] * v * v * d * e);
            column[k + 2] = Finite(d * v * column[k + 1]);
            model += e * p[k];
        }
        const double rest = count - model;
        Chi += rest * rest;
        for (std::size_t a = 0; a < M; ++a) {
            G[a] += rest * column[a];
            if (column[a] == 0.0) continue;  // adds nothing: a far peak
            for (std::size_t b = a; b < M; ++b) At(a, b) += column[a] * column[b];
        }
    }

    /// Elimination without pivoting. Only the upper triangle is kept up to date, so the factor of a
    /// row is that of its mirror image.
    std::vector<double> Solve() {
        for (std::size_t s = 0; s < M; ++s) {
            for (std::size_t r = s + 1; r < M; ++r) {
                const double f = At(s, r) == 0.0 ? 0.0 : Quot(At(s, r), At(s, s));
                for (std::size_t c = r; c < M; ++c) At(r, c) -= f * At(s, c);
                G[r] -= f * G[s];
            }
        }
        std::vector<double> delta(M);
        for (std::size_t r = M; r-- > 0;) {
            double sum = G[r];
            for (std::size_t c = r + 1; c < M; ++c) sum -= delta[c] * At(r, c);
            delta[r] = Finite(Quot(sum, At(r, r)));
        }
        return delta;
    }
};

int Passes(std::span<const double> y, std::span<double> p, double limit) {
    std::vector<double> column(p.size());
    for (int pass = 1;; ++pass) {
        Normal normal(p.size());
        for (std::size_t i = 0; i < y.size(); ++i)
            normal.Add(static_cast<double>(i + 1), y[i], p, column);
        if (pass > SPLIT_PASSES) return -1;
        if (limit > Finite(normal.Chi)) return 0;
        const std::vector<double> delta = normal.Solve();
        for (std::size_t k = 0; k < p.size(); ++k) p[k] = Finite(p[k] + delta[k]);
    }
}

}  // namespace

int WaveSolve(std::span<const double> y, std::span<double> p, double limit, const Talk& talk) {
    try {
        return Passes(y, p.first(p.size() - p.size() % 3), limit);
    } catch (const Fault& fault) {
        const int code = static_cast<int>(fault.Number());
        talk.log("CalWaveSprit : (Error)  code=" + std::to_string(code));
        talk.say("計算限界超えました。処理を終了します。", "");
        return code;
    }
}

int WaveSprit(const SpectrumData& spectrum, int start, int n, std::span<PeakRecord> peaks,
              const Talk& talk) {
    if (n <= 0) return SPLIT_REFUSED;
    if (n > SPLIT_CHANNELS) {
        talk.say("too large region", "");
        return SPLIT_REFUSED;
    }
    // 1. Counts above the line through both ends, which stands one channel to the right.
    const double first = static_cast<double>(start);
    const int end = start + n - 1;
    const std::array<double, 2> x{first, static_cast<double>(end)};
    const std::array<double, 2> ends{static_cast<double>(Item(spectrum.Count, start)),
                                     static_cast<double>(Item(spectrum.Count, end))};
    std::array<double, 2> c{};
    FitLine(x, ends, 2, c);
    std::vector<double> work;
    for (int channel = start; channel <= end; ++channel) {
        const double above = static_cast<double>(Item(spectrum.Count, channel)) -
                             LineValue(static_cast<double>(channel), c);
        work.push_back(above < 0.0 ? 0.0 : above);
    }
    // 2. The peaks in local channels, refined together.
    std::vector<double> triples;
    for (const PeakRecord& peak : peaks)
        triples.insert(triples.end(), {peak.Amplitude, peak.Position - first + 1.0, peak.Width});
    const int result = WaveSolve(work, triples, SPLIT_LIMIT, talk);
    // 3. Back into the records, but for those at the region's last channel and beyond.
    for (std::size_t k = 0; k < peaks.size(); ++k) {
        if (!(triples[3 * k + 1] < static_cast<double>(n))) continue;
        PeakRecord& peak = peaks[k];
        peak.Amplitude = triples[3 * k];
        peak.Position = first + triples[3 * k + 1] - 1.0;
        peak.Width = triples[3 * k + 2];
        peak.FitState = ALL_BITS;
        peak.BackConst = 0.0;
        peak.BackSlope = 0.0;
        peak.GaussRatio = 1.0;
        peak.FuncType = SHAPE_GAUSS;
    }
    return result;
}

}  // namespace vael
