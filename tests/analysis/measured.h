// The measured spectra with known answers: a small reader of their text form, and the folder.
#pragma once

#include "core/records.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>

namespace measured {

struct Spectrum {
    vael::SpectrumData Data{};
    std::array<double, 3> Egc{};
    double TwoTheta = 0.0;

    /// keV of a 1-based channel.
    [[nodiscard]] double Energy(double x) const { return Egc[0] + Egc[1] * x + Egc[2] * x * x; }
    /// d in angstrom of a 1-based channel.
    [[nodiscard]] double Spacing(double x) const {
        return 12.3981 / (2.0 * Energy(x) * std::sin(TwoTheta * M_PI / 360.0));
    }
};

/// The text behind the n-th comma of a line.
inline double Field(const std::string& line, int comma) {
    std::size_t at = 0;
    for (int k = 0; k < comma; ++k) at = line.find(',', at) + 1;
    return std::strtod(line.c_str() + at, nullptr);
}

/// Header of 23 lines, stroke, count, seconds, then "channel,energy,count" lines. Nothing when the
/// folder is absent.
inline std::unique_ptr<Spectrum> Read(const std::string& name) {
    std::ifstream file(std::filesystem::path(VAEL_MEASURED_DATA) / (name + ".npd"));
    if (!file) return nullptr;
    auto spectrum = std::make_unique<Spectrum>();
    std::string line;
    for (int number = 1; std::getline(file, line); ++number) {
        if (number >= 7 && number <= 9)
            spectrum->Egc[static_cast<std::size_t>(number - 7)] = Field(line, 1);
        if (number == 10) spectrum->TwoTheta = Field(line, 1);
        if (number == 25) spectrum->Data.DataNo = static_cast<std::int16_t>(Field(line, 1));
        if (number >= 27 && number - 27 < spectrum->Data.DataNo)
            spectrum->Data.Count[static_cast<std::size_t>(number - 27)] =
                static_cast<std::int32_t>(Field(line, 2));
    }
    return spectrum;
}

}  // namespace measured
