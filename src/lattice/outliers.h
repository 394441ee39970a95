// Choosing the rows of a refinement by rule, where no user unticks them by hand.
#pragma once

#include "lattice/latticecalc.h"

#include <array>
#include <span>
#include <string>
#include <vector>

namespace vael {

/// h, k, l of one reflection.
using Hkl = std::array<std::int16_t, 3>;

/// A row that the rules left out of the fit.
struct UntickedRow {
    int Row = 0;  // index of match row and peak, from 0
    Hkl Index{};
    std::string Reason;  // a sentence without its stop
};

/// What takes part. With no list every reflection of the crystal may.
struct RowRules {
    std::vector<Hkl> Reflections;
    bool DropOutliers = true;
};

/// "2 0 0,2 2 0" as a list: triples of whole numbers between commas (or semicolons). Faults: Type,
/// naming the piece that is no triple.
[[nodiscard]] std::vector<Hkl> ParseReflections(std::string_view text);

/// Leaves out matched rows whose reflection has not the d, in `cell`, of a listed one. So a listed
/// 0 0 2 stands for 2 0 0 in a cubic crystal, and 3 3 3 for 5 1 1.
std::vector<UntickedRow> KeepListed(LatticeState& state, int system, const Cell& cell,
                                    std::span<const Hkl> listed);

/// Of several rows in use on one reflection, leaves out all but the one of largest net count
/// (PeakRecord::Intensity; the earlier one on a tie).
std::vector<UntickedRow> KeepLargest(LatticeState& state, const PeakTable& peaks);

/// What CalcByRules gives: the values of the last good refinement, and what it left out, in order.
struct RuledValues {
    LatticeValues Values;
    std::vector<UntickedRow> Unticked;
};

/// Calculates by rule. 1. Clears the match table and matches the peaks. 2. Keeps the listed
/// reflections. 3. With DropOutliers: keeps the largest of several peaks on a reflection; then,
/// worst first, leaves out a row whose (d obs - d calc) / d obs lies more than 4 robust standard
/// deviations (1.4826 times the median absolute deviation, at least 1e-4) off the median, and
/// refines again, until there is none or as few observations remain as the system has parameters,
/// plus one. Median and spread are those of the observations (rows with an angle at 1.5418
/// angstrom); other rows in use are measured against them. A row whose loss makes the fit fail is
/// taken back, and ends the search. Faults: as CalcLattice.
[[nodiscard]] RuledValues CalcByRules(LatticeState& state, const CalcRequest& request,
                                      const MatchSource& source, const RowRules& rules,
                                      const Talk& talk);

/// Solved parameters of a system: 1, 2, 2, 3, 4, 6.
[[nodiscard]] int ParameterCount(int system);

}  // namespace vael
