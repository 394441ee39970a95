// What the lattice calculation remembers between commands: crystals, match rows, fit arrays.
#pragma once

#include "core/fault.h"
#include "core/records.h"
#include "lattice/crystal.h"

#include <array>
#include <cstdint>
#include <string>

namespace vael {

inline constexpr int SAVED_USE_MAX = 101;
inline constexpr int METRIC_COUNT = 6;  // metric parameters of a cell
inline constexpr int CELL_COUNT = 7;    // a, b, c, three angles as cosines, V

/// A table of N entries that are counted from 1, as the formulas of the fit count them.
/// Faults: Subscript.
template <class T, int N>
struct Table1 {
    std::array<T, N> Values{};

    [[nodiscard]] T& operator()(int i) { return Item(Values, i - 1); }
    [[nodiscard]] const T& operator()(int i) const { return Item(Values, i - 1); }
    friend bool operator==(const Table1&, const Table1&) = default;
};

/// One row per peak; a row's index, from 0, is the peak's index in its table.
struct ReflectionMatch {
    std::int16_t H = 0, K = 0, L = 0;
    double Ch = 0.0;       // peak centre, 0-based channels
    double Energy = 0.0;   // keV at the time of matching; 1.111 for a DAC graph
    double DCal = 0.0;     // d of the reflection from the seed cell, angstrom
    double DObs = 0.0;     // d of the peak, angstrom
    double ThetaCu = 0.0;  // Bragg angle in degrees of DObs at 1.5418 angstrom, or 0
    std::int16_t Matched = FALSE_WORD;
    std::int16_t Excluded = FALSE_WORD;  // -1: the user or a re-match left the row out of the fit
};

/// The working record of the lattice calculation.
struct LatticeFitData {
    std::string Name;           // of the crystal
    Cell Seed{};                // the cell of the last match
    std::int16_t DataNo = 0;    // slot of the graph
    std::int16_t MatchNum = 0;  // number of matched rows
    std::array<ReflectionMatch, MAX_PEAKS> Match{};
    Cell CurrentSeed{};  // the seeds as typed
};

/// What was in use before a 2 theta correction.
struct SavedUse {
    std::int16_t H = 0, K = 0, L = 0;
    double Ch = 0.0;
};

/// Work arrays of the cell refinement, all in 4-byte floats: that precision is part of the result.
struct FitArrays {
    std::int16_t SystemNumber = 0;  // 1 to 6: the index of the system plus 1
    Table1<std::array<std::int16_t, 3>, MAX_PEAKS> FitHkl;  // an all-zero row ends the list
    Table1<float, MAX_PEAKS> FitDObs;
    Table1<float, MAX_PEAKS> FitTheta;
    Table1<float, MAX_PEAKS> FitWeight;
    Table1<std::int16_t, MAX_PEAKS> FitFlag;  // 1 used, 2 refused for an angle that is not positive
    Table1<float, MAX_PEAKS> FitDCal;
    Table1<float, MAX_PEAKS> Fit2Theta;  // stays 0, since nothing sets FitWavelength
    Table1<float, MAX_PEAKS> FitDelta;   // FitDObs / FitDCal - 1
    float FitWavelength = 0.0F;
    Table1<Table1<float, METRIC_COUNT>, MAX_PEAKS> DesignRow;
    Table1<std::int16_t, METRIC_COUNT> Map;  // n: solved parameter n; -n: follows it; 0: zero
};

/// What a refinement gives back. Entries above ParamNum are 0.
struct LatticeSolution {
    int ParamNum = 0;
    Table1<float, METRIC_COUNT> Param, ParamErr;  // solved metric parameters, 1/angstrom^2
    Table1<float, CELL_COUNT> CellOut, CellErr;   // a, b, c, cosines of the three angles, V
};

/// All that lives as long as the process.
struct LatticeState {
    CrystalTable Table;
    std::array<std::int16_t, CRYSTAL_MAX> MatchCounter{};  // cleared, and read by nothing
    LatticeFitData FitData;
    std::array<SavedUse, SAVED_USE_MAX> SavedUseList{};
    std::int16_t SavedUseNum = 0;
    std::int16_t UseListValid = FALSE_WORD;  // -1 after a 2 theta correction
    std::int16_t FitFailed = 0;              // 1 singular, 2 a cell that cannot be converted
    FitArrays Fit;
};

}  // namespace vael
