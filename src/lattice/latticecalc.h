// The lattice calculation: from a graph's peaks to the cell, the volume and the pressure.
#pragma once

#include "lattice/leastsquares.h"
#include "lattice/pressure.h"

#include <array>
#include <optional>
#include <string>

namespace vael {

inline constexpr std::int16_t MODE_SAMPLE = 0;
inline constexpr std::int16_t MODE_MARKER = 1;

/// What one calculation asks for, besides the state and the graph.
struct CalcRequest {
    std::int16_t CrystalIndex = 0;  // 0 to 30
    std::int16_t System = 0;        // as chosen in the list of systems
    Cell Seed{};                    // angstrom and degrees
    std::int16_t Mode = MODE_MARKER;
    double Temperature = 27.0;
    int Unit = TEMPERATURE_CELSIUS;
};

enum class CalcStatus {
    Ok,           // calculated; see HasBoxes for whether anything is shown
    TooFewLines,  // the message has been said
    Singular,     // the message has been said
    NoCell,       // the solved parameters are no cell; nothing is said
    LatticeType,  // "Lattice Type Error" has been said
};

/// What a calculation gives: the numbers, and the texts to the letter that the boxes show.
struct LatticeValues {
    CalcStatus Status = CalcStatus::Ok;
    LatticeSolution Solution;
    std::int16_t UsedRows = 0;  // rows matched and not left out

    /// The cell for people: lengths in angstrom, angles in degrees (the solution has cosines), with
    /// standard errors; 0 for what the system fixes.
    Cell CellNow{}, CellError{};

    double V = 0.0, dV = 0.0;  // cubic angstrom
    double V0 = 0.0;           // of the crystal's reference cell
    double X = 0.0, dX = 0.0;  // V/V0

    bool HasBoxes = false;                     // false: the boxes keep their old texts
    std::array<std::string, 6> LatticeLength;  // a, b, c, alpha, beta, gamma
    std::string Vol;
    std::string VolPerVol0;

    MarkerArguments Marker;                 // marker mode: what the scale was asked
    std::optional<PressureValue> Pressure;  // marker mode with a key that has a scale
    std::string PressureText;               // of the box, when there is a pressure
};

/// The calculation: solves the cell from the request's seeds, and forms
/// what the mode shows. Sample mode shows every system; marker mode shows cubic and hexagonal ones,
/// with the pressure. Clears state.FitFailed and stores the seeds. Faults: those of the geometry,
/// the fit and the scales; they end the calculation.
[[nodiscard]] LatticeValues CalcLattice(LatticeState& state, const CalcRequest& request,
                                        const MatchSource& source, const Talk& talk);

/// Seeds as the view takes them from the crystal: its reference cell.
[[nodiscard]] CalcRequest RequestFor(const LatticeState& state, std::int16_t crystalIndex,
                                     std::int16_t mode, double temperature, int unit);

/// d of a reflection from the calculated cell, angstrom. Faults: those of CalcDOne.
[[nodiscard]] double CalculatedD(const LatticeValues& values, int system,
                                 const ReflectionMatch& row);

}  // namespace vael
