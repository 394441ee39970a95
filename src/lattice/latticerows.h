// The peaks and match rows of a lattice calculation as grids, logs and reports list them.
#pragma once

#include "lattice/latticecalc.h"

#include <optional>
#include <string>
#include <vector>

namespace vael {

/// One peak of the graph.
struct LatticePeak {
    double Ch = 0.0;         // counted from 1
    double KeV = 0.0;        // 0 for a DAC graph, which has no energy
    double D = 0.0;          // angstrom
    double Intensity = 0.0;  // counts
    double Amplitude = 0.0;  // counts
    double FwhmCh = 0.0;     // channels
    double FwhmKeV = 0.0;
    double TwoTheta = 0.0;  // degrees: the reference angle of its d at 1.5418 angstrom
    std::string Type;       // "M" by hand, "A" by a search or a fit of all
};

/// The peaks of a graph by its own calibration. `byHand` are those that a manual fit wrote or that
/// were added by their numbers.
[[nodiscard]] std::vector<LatticePeak> LatticePeaks(const MatchSource& source,
                                                    const PeakTable& byHand);

/// One matched row.
struct LatticeRow {
    int Index = 0;  // of match row and peak, from 0
    std::int16_t H = 0, K = 0, L = 0;
    double Ch = 0.0;              // counted from 1
    double KeV = 0.0;             // 1.111 for a DAC graph
    double TwoTheta = 0.0;        // degrees, as LatticePeak has it
    double DObs = 0.0;            // angstrom
    double DSeed = 0.0;           // of the seed cell
    std::optional<double> DCalc;  // of the calculated cell, where there is one
    std::string Type;
    bool Used = false;

    [[nodiscard]] double Deviation() const { return DObs - DSeed; }
    /// (DObs - DCalc) / DObs. Nothing without a DCalc or a DObs.
    [[nodiscard]] std::optional<double> Relative() const;
    /// "(2 0 0)".
    [[nodiscard]] std::string Hkl() const;
};

/// The matched rows in order; `values` is the last calculation, nullptr for none. d of the
/// calculated cell is CalcDOne of the cell as the fit gives it: for MON and TRI the cosines go in
/// where angles belong, which is kept, and a row for which that has no d shows none.
[[nodiscard]] std::vector<LatticeRow> LatticeRows(const LatticeState& state,
                                                  const MatchSource& source,
                                                  const PeakTable& byHand,
                                                  const LatticeValues* values, int system);

/// "0.00123" or so: dX, and the pressures at the error on either side (the higher one first), by
/// "0.00000". The two pressures are empty without a scale.
[[nodiscard]] std::array<std::string, 3> ErrorBarTexts(const LatticeValues& values,
                                                       std::string_view key);

/// An angle of the calculated cell in degrees with its error, as its box has only the cosine;
/// `index` 3 to 5. Empty where the box has degrees itself.
[[nodiscard]] std::string AngleTip(const LatticeValues& values, int system, int index);

}  // namespace vael
