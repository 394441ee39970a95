// vael-figures: how well both fitters do on simulated spectra, as a table or as JSON.
#include "fitfigures.h"

#include "core/fault.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <string_view>

using namespace vael;
using namespace vael::tools;

namespace {

constexpr const char* USAGE =
    "usage: vael-figures [--spectra N] [--seed N] [--threshold 1..20] [--threads N] [--json]\n"
    "simulates N spectra (1000) of 4096 channels, fits them by both fitters, and prints what was\n"
    "found, missed and false, how far the centres are off, and the time. The threshold is that of\n"
    "the Express search (10). The figures depend on seed and threshold, the times on the "
    "machine.\n";

/// The whole number behind an option; false where it is none, or below `least`.
template <class Number>
bool Read(int argc, char** argv, int& at, Number least, Number& value) {
    if (++at >= argc) return false;
    const std::string_view text = argv[at];
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    return read.ec == std::errc{} && read.ptr == text.data() + text.size() && value >= least;
}

bool ReadOptions(int argc, char** argv, FigureOptions& options, bool& json) {
    for (int at = 1; at < argc; ++at) {
        const std::string_view name = argv[at];
        bool good = true;
        if (name == "--spectra")
            good = Read(argc, argv, at, 1, options.Spectra);
        else if (name == "--seed")
            good = Read(argc, argv, at, std::uint64_t{0}, options.Seed);
        else if (name == "--threshold")
            good = Read(argc, argv, at, 1, options.Threshold) && options.Threshold <= 20;
        else if (name == "--threads")
            good = Read(argc, argv, at, 1, options.Threads) && options.Threads <= 1024;
        else if (name == "--json")
            json = true;
        else
            good = false;
        if (!good) return false;
    }
    return true;
}

double Percent(int part, int whole) { return whole > 0 ? 100.0 * part / whole : 0.0; }

void PrintClasses(const char* title, const RoadFigures& road,
                  ClassFigures (*of)(const RoadFigures&, std::size_t)) {
    std::printf(
        "%-12s  there  found     %%  missed refused | centres  undet   pull    sd  median spread   "
        "bias"
        "    rms\n",
        title);
    for (std::size_t k = 0; k + 1 < SIGNAL_CLASSES.size(); ++k) {
        const ClassFigures figures = of(road, k);
        const PullFigures pulls = PullsOf(figures);
        std::printf(
            "%5g -%5g  %6d %6d %5.1f  %6d  %6d | %7d %6d %6.2f %5.2f  %6.2f %6.2f %6.2f %6.3f\n",
            SIGNAL_CLASSES[k], SIGNAL_CLASSES[k + 1], figures.There, figures.Found,
            Percent(figures.Found, figures.There), figures.Missed(), figures.Refused, pulls.Count,
            figures.Undetermined, pulls.Mean, pulls.Deviation, pulls.Median, pulls.Spread,
            pulls.Bias, pulls.Rms);
    }
}

void PrintTable(const FigureOptions& options, const std::vector<RoadFigures>& roads) {
    std::printf("%d spectra, seed %llu, threshold of the Express search %d\n", options.Spectra,
                static_cast<unsigned long long>(options.Seed), options.Threshold);
    for (const RoadFigures& road : roads) {
        std::printf("\n%s\n", road.Name.c_str());
        PrintClasses("all", road, [](const RoadFigures& r, std::size_t k) { return r.Whole(k); });
        PrintClasses("alone", road, [](const RoadFigures& r, std::size_t k) { return r.Alone[k]; });
        PrintClasses("neighbour", road,
                     [](const RoadFigures& r, std::size_t k) { return r.Crowded[k]; });
        std::printf(
            "fitted %d, of these false %d (%.2f a spectrum), without status 0 %d; searched "
            "but refused %d; more than 100 finds in %d spectra\n",
            road.Fitted, road.False,
            static_cast<double>(road.False) / static_cast<double>(options.Spectra),
            road.Unconverged, road.Refused, road.TooMany);
        std::printf("time, median: %.3f ms a spectrum, %.1f us a fitted peak\n",
                    1e3 * Median(road.Seconds), 1e6 * Median(road.SecondsAPeak));
    }
}

void PrintClassJson(const ClassFigures& figures, std::size_t k, const char* kind, bool last) {
    const PullFigures pulls = PullsOf(figures);
    std::printf(
        "      {\"kind\": \"%s\", \"from\": %g, \"to\": %g, \"there\": %d, \"found\": %d, "
        "\"missed\": %d, \"refused\": %d, \"centres\": %d, \"undetermined\": %d, "
        "\"pull_mean\": %.6g, \"pull_sd\": %.6g, "
        "\"pull_median\": %.6g, \"pull_spread\": %.6g, \"bias\": %.6g, \"rms\": %.6g}%s\n",
        kind, SIGNAL_CLASSES[k], SIGNAL_CLASSES[k + 1], figures.There, figures.Found,
        figures.Missed(), figures.Refused, pulls.Count, figures.Undetermined, pulls.Mean,
        pulls.Deviation, pulls.Median, pulls.Spread, pulls.Bias, pulls.Rms, last ? "" : ",");
}

/// The words in it hold nothing that JSON would escape.
void PrintJson(const FigureOptions& options, const std::vector<RoadFigures>& roads) {
    std::printf("{\n  \"spectra\": %d, \"seed\": %llu, \"threshold\": %d,\n  \"roads\": [\n",
                options.Spectra, static_cast<unsigned long long>(options.Seed), options.Threshold);
    for (std::size_t r = 0; r < roads.size(); ++r) {
        const RoadFigures& road = roads[r];
        std::printf("    {\"name\": \"%s\", \"classes\": [\n", road.Name.c_str());
        const std::size_t classes = SIGNAL_CLASSES.size() - 1;
        for (std::size_t k = 0; k < classes; ++k) {
            PrintClassJson(road.Whole(k), k, "all", false);
            PrintClassJson(road.Alone[k], k, "alone", false);
            PrintClassJson(road.Crowded[k], k, "neighbour", k + 1 == classes);
        }
        std::printf(
            "     ], \"fitted\": %d, \"false\": %d, \"without_status_0\": %d, "
            "\"refused\": %d, \"too_many\": %d,\n     \"ms_a_spectrum\": %.4f, "
            "\"us_a_peak\": %.3f}%s\n",
            road.Fitted, road.False, road.Unconverged, road.Refused, road.TooMany,
            1e3 * Median(road.Seconds), 1e6 * Median(road.SecondsAPeak),
            r + 1 == roads.size() ? "" : ",");
    }
    std::printf("  ]\n}\n");
}

}  // namespace

int main(int argc, char** argv) {
    FigureOptions options;
    bool json = false;
    if (!ReadOptions(argc, argv, options, json)) {
        std::cerr << USAGE;
        return 2;
    }
    try {
        const std::vector<RoadFigures> roads = MakeFigures(options);
        json ? PrintJson(options, roads) : PrintTable(options, roads);
    } catch (const std::exception& trouble) {
        std::cerr << trouble.what() << "\n";
        return 1;
    }
    return 0;
}
