// Prints the seeded figures behind the constants of the NAX walk, as docs/numerics.md has them.
#include "seeded.h"

#include <cstdio>
#include <functional>
#include <memory>

using namespace vael;

namespace {

struct Kind {
    const char* Name;
    seeded::Spectrum (*Make)(seeded::Generator&);
    bool Auto;  // smoothed and freed of its background first
};
constexpr double LEAST = 20.0;  // counts a channel of the background
constexpr double MOST = 3000.0;
const Kind KINDS[] = {
    {"separated", [](seeded::Generator& r) { return seeded::Separated(r, LEAST, MOST); }, false},
    {"separated", [](seeded::Generator& r) { return seeded::Separated(r, LEAST, MOST); }, true},
    {"crowded", [](seeded::Generator& r) { return seeded::Crowded(r, LEAST, MOST); }, true},
    {"companions", [](seeded::Generator& r) { return seeded::Companions(r, LEAST, MOST); }, true}};

void Line(const char* label, const NaxFilledIn& filled) {
    static auto state = std::make_unique<NaxState>();
    std::printf("%-20s", label);
    for (const Kind& kind : KINDS) {
        seeded::Score score;
        for (std::uint64_t seed = 1; seed <= 150; ++seed) {
            seeded::Generator random(seed);
            const seeded::Spectrum spectrum = kind.Make(random);
            NaxSettings settings;
            settings.EACPS = std::max(0.2, 0.02 * std::sqrt(spectrum.Background));
            settings.Filled = filled;
            const SpectrumData data = kind.Auto ? seeded::Removed(spectrum.Data) : spectrum.Data;
            score.Add(spectrum.Peaks, NaxFitAll(data, settings, *state, Talk{}).Peaks);
        }
        std::printf(" | %6.2f %4d %2d %.3f %+.3f", 100.0 * score.FoundShare(), score.False,
                    score.MostFalse, score.RmsOff(), score.HeightOff / score.Found);
    }
    std::printf("\n");
}

template <class Value>
void Vary(const char* name, Value NaxFilledIn::*field, std::initializer_list<Value> values) {
    for (const Value value : values) {
        NaxFilledIn filled;
        filled.*field = value;
        char label[64];
        std::snprintf(label, sizeof label, "%s = %g%s", name, static_cast<double>(value),
                      value == NaxFilledIn{}.*field ? " *" : "");
        Line(label, filled);
    }
}

/// Counts without noise: Gaussians on fifty counts a channel.
SpectrumData Drawn(const std::vector<seeded::Peak>& peaks) {
    SpectrumData data{};
    data.DataNo = 4096;
    for (int i = 0; i < 4096; ++i) {
        double value = 50.0;
        for (const seeded::Peak& peak : peaks) value += seeded::GaussAt(peak, i);
        data.Count[static_cast<std::size_t>(i)] = static_cast<std::int32_t>(std::lround(value));
    }
    return data;
}

void WidthsByRounds() {
    std::printf("\nfitted full width of one line without noise, by its true one\n");
    for (const int rounds : {1, 2, 3, 5}) {
        std::printf("Rounds = %d", rounds);
        for (const double fwhm : {10.0, 16.0, 20.0, 25.0, 30.0}) {
            NaxSettings settings;
            settings.Filled.Rounds = rounds;
            NaxState state;
            const NaxResult result =
                NaxFitAll(Drawn({{1000.0, 3000.0, fwhm}}), settings, state, Talk{});
            std::printf(" | %2.0f: %5.2f", fwhm, result.Peaks.empty() ? 0.0 : result.Peaks[0].Fwhm);
        }
        std::printf("\n");
    }
}

void CombBySpan() {
    std::printf("\n50 combs of 20 lines of full width 10, 45 channels apart: found in %%\n");
    for (const double span : {0.0, 0.25, 0.5, 0.75}) {
        NaxSettings settings;
        settings.Filled.LeastSpan = span;
        NaxState state;
        seeded::Score score;
        for (std::uint64_t seed = 1; seed <= 50; ++seed) {
            seeded::Generator random(seed);
            seeded::Spectrum comb;
            comb.Background = 50.0;
            for (int k = 0; k < 20; ++k) comb.Peaks.push_back({300.0 + 45.0 * k, 200.0, 10.0});
            seeded::Count(comb, random);
            score.Add(comb.Peaks, NaxFitAll(comb.Data, settings, state, Talk{}).Peaks);
        }
        std::printf("LeastSpan = %.2f | %.2f\n", span, 100.0 * score.FoundShare());
    }
}

}  // namespace

int main() {
    std::printf(
        "150 spectra a column: found in %%, false, most of them in one spectrum, rms of the "
        "centres in channels,\nmean relative error of the heights; + after smoothing and "
        "background removal\n%-20s",
        "");
    for (const Kind& kind : KINDS) std::printf(" | %s%-26s", kind.Name, kind.Auto ? " +" : "");
    std::printf("\n");
    Vary("Rounds", &NaxFilledIn::Rounds, {1, 2, 3, 5});
    Vary("Halvings", &NaxFilledIn::Halvings, {0, 2, 5, 10});
    Vary("LeastHeight", &NaxFilledIn::LeastHeight, {0.0, 4.0, 5.0, 6.0, 7.0, 9.0});
    Vary("Lags", &NaxFilledIn::Lags, {0, 2, 4, 8});
    Vary("LeastFwhm", &NaxFilledIn::LeastFwhm, {0.5, 2.0, 4.0});
    Vary("LeastApart", &NaxFilledIn::LeastApart, {0.0, 0.25, 0.5, 0.75, 1.0});
    Vary("LeastDistance", &NaxFilledIn::LeastDistance, {2.0, 4.0, 8.0});
    WidthsByRounds();
    CombBySpan();
    return 0;
}
