// Lattice geometry: d of reflections, cell volumes, and the assignment of reflections to peaks.
#pragma once

#include "lattice/state.h"

namespace vael {

/// Takes the place of sqrt(3)/2 everywhere; deliberately these six digits.
inline constexpr double HEXAGONAL_FACTOR = 0.866025;

/// What a match reads of its graph. PickupRange is the half width of the window in angstrom.
struct MatchSource {
    std::int16_t GraphNo = 0;  // row of the graph, 0 to 9; others match nothing
    std::int16_t DataNo = 0;   // its slot
    const PeakTable& Peaks;
    const PropertyRecord& Property;  // its calibration counts, whatever is in force elsewhere
    DacAxis Dac{};
    double PickupRange = 0.03;
};

/// Fills the D column of the crystal's reflections from `cell`; the record's System selects the
/// formula, and a system outside 0 to 5 leaves the column as it is. CUB and TET read a (and c),
/// HEX a and c, MON a, b, c and beta. Faults: Division and Argument for a cell that has no d.
void CalcDSpacings(CrystalRecord& crystal, const Cell& cell);

/// d in angstrom of one reflection from a cell of 4-byte floats; 0 for an unknown system.
/// Faults: as CalcDSpacings.
[[nodiscard]] double CalcDOne(int system, std::int16_t h, std::int16_t k, std::int16_t l, float a,
                              float b, float c, float alpha, float beta, float gamma);

/// Volume in cubic angstrom, rounded to a 4-byte float; 0 for an unknown system. A hexagonal cell
/// takes 0.866025 in place of sqrt(3)/2, here and everywhere. Faults: Argument for a triclinic cell
/// whose angles close no cell.
[[nodiscard]] double CellVolume(const Cell& cell, int system);

/// Bragg angle in degrees that `d` has at 1.5418 angstrom; 0 when d or the energy is not positive
/// and where the root has no real value (d below 0.7709).
[[nodiscard]] double ThetaCu(double d, double energy);

/// Assigns to each peak the reflection nearest in d, strictly inside the pick-up window; on equal
/// distances the earlier of the list. A peak with no reflection leaves its row as it is, and no
/// row's Excluded is touched. Faults: Division for a DAC axis at 2 theta 0.
void MatchPeaks(LatticeState& state, const CrystalRecord& crystal, const Cell& cell,
                const MatchSource& source);

/// Keeps the use flags over a re-match: saves what is in use, or, after a 2 theta correction, puts
/// back exactly what was saved and leaves all others out.
void CarryUseList(LatticeState& state);

/// Clears the working columns and counters of all crystals; mode 0 also empties the match data,
/// mode 1 only its seed cell.
void ClearMatchTable(LatticeState& state, std::int16_t mode);

}  // namespace vael
