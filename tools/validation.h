// How far the answers can be trusted: simulated spectra of known truth through the whole road, the
// measured ones with known answers, and the published points of the scales, as Markdown.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vael::tools {

struct ValidationOptions {
    int Spectra = 40;        // of each condition
    std::uint64_t Seed = 1;  // of the first; the others follow
    int Workers = 2;         // processes
    std::string DataFolder;  // of crystal.dat
    std::string Measured;    // folder of the measured spectra; empty or absent: left out
};

/// Mean and width of the differences between what was found and what is true.
struct Pulls {
    int Count = 0;
    double Mean = 0.0, MeanError = 0.0;    // standard deviation over the root of the number
    double Width = 0.0, WidthError = 0.0;  // standard deviation, and it over the root of 2(n - 1)
    int BeyondThree = 0;
};
/// Of one or no value all errors and the width are 0.
[[nodiscard]] Pulls PullsOf(const std::vector<double>& values);

/// The whole document. Faults: those of the road and of the files.
[[nodiscard]] std::string ValidationText(const ValidationOptions& options);

}  // namespace vael::tools
