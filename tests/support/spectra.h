// Spectra made in a test: counts by hand, Gaussians on a flat background.
#pragma once

#include "core/records.h"

#include <cmath>
#include <memory>
#include <string>
#include <vector>

namespace vael {

/// A zeroed property record with blank texts, as a reader meets it.
inline PropertyRecord BlankProperty() {
    PropertyRecord prop{};
    prop.FileName.SetBytes("");
    prop.SampleName.SetBytes("");
    prop.OpDate.SetBytes("");
    prop.OpTime.SetBytes("");
    prop.TimeSpare.SetBytes("");
    prop.OpName.SetBytes("");
    prop.Memo.SetBytes("");
    for (auto& text : prop.SpareText) text.SetBytes("");
    return prop;
}

struct GaussLine {
    double Center;  // 0-based channel
    double Height;
    double Fwhm;  // channels
};

inline std::vector<std::int32_t> GaussCounts(int channels, double background,
                                             const std::vector<GaussLine>& lines) {
    std::vector<std::int32_t> counts(static_cast<std::size_t>(channels));
    for (int i = 0; i < channels; ++i) {
        double value = background;
        for (const GaussLine& line : lines) {
            const double t = (i - line.Center) / line.Fwhm;
            value += line.Height * std::exp(-4.0 * std::log(2.0) * t * t);
        }
        counts[static_cast<std::size_t>(i)] = static_cast<std::int32_t>(std::lround(value));
    }
    return counts;
}

/// An .npd text as the measured spectra have it, with a record length of 23.
inline std::string NpdText(const std::vector<std::int32_t>& counts,
                           const std::string& name = "made", double egc0 = 0.05, double egc1 = 0.03,
                           double twoTheta = 10.0) {
    const std::string end = "\r\n";
    std::string out =
        "Record length,23" + end + "Sample name," + name + end + "Operator name,nobody" + end +
        "Profile number,Au" + end + "Time,2018-10-10 9:5:41" + end + "Measurement mode,Live" + end +
        "EGC0," + std::to_string(egc0) + end + "EGC1," + std::to_string(egc1) + end +
        "EGC2,0.00000E+000" + end + "2Theta(deg)," + std::to_string(twoTheta) + end +
        "Live time(sec),200.00" + end + "Real time(sec),256.97" + end + "Dead time(%),22.16990" +
        end + "Temperature(K),298.15" + end + "Press load(ton),1.50" + end +
        "Ring status,current(mA)=99.5" + end + "Beam intensity,3.25" + end +
        "Counting rate,15967.96" + end +
        "Press conditions, X(mm)=1.000 Y(mm)=-2.500 Z(mm)=3.000 PHI(deg)=4.125" + end +
        "Incident slit conditions, V(mm)=0.100 H(mm)=0.200" + end +
        "Receiving slit conditions, V(mm)=0.300 H(mm)=0.400 Collimator(mm)=0.050" + end +
        "Heating conditions, V(V)=1.50 C(A)=2.50 P(W)=3.75 R(OHM)=0.600" + end +
        "Comment,a comment, with a comma   " + end + "Ram Stroke,7.25" + end + "Data length, " +
        std::to_string(counts.size()) + end + "Counting sec, 200.000" + end;
    for (std::size_t i = 0; i < counts.size(); ++i)
        out += std::to_string(i + 1) + ",0.0000," + std::to_string(counts[i]) + end;
    return out;
}

}  // namespace vael
