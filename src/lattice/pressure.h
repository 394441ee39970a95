// Pressure scales of the markers: equations of state as plain functions, in GPa.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace vael {

/// List index of the temperature's unit.
enum TemperatureUnit : int { TEMPERATURE_CELSIUS = 0, TEMPERATURE_KELVIN = 1 };

/// The offset of the view, 273.15; the scales have reference points of their own that do not agree
/// with each other (298, 300, 27 and 26.85) and are kept so.
[[nodiscard]] double ToKelvin(double value, int unit);
[[nodiscard]] double ToCelsius(double value, int unit);

/// Debye energy function D(x) = 3/x^3 times the integral of t^3/(e^t - 1) from 0 to x, by a
/// stepping scheme good to about 1 part in 10^4, which is part of the NaCl scale. 1 for x <= 0.
[[nodiscard]] double DebyeFunction(double x);

// X is V/V0, TK kelvin, TC degrees Celsius, volumes in cubic angstrom. Faults of all: Division,
// Argument and Overflow where an argument leaves the formula's range.

/// NaCl: Born-Mayer lattice energy with a Debye thermal pressure (Decker 1971).
[[nodiscard]] double PressureNaClDecker(double x, double tk);
/// Pt: table in compression, quadratic in T (Jamieson, Fritz and Manghnani 1982). 0 at X >= 1.061
/// and X <= 0.819.
[[nodiscard]] double PressurePtJamieson(double x, double tk);
/// Au: Birch-Murnaghan of third order with a thermal pressure (Anderson, Isaak and Yamamoto 1989).
[[nodiscard]] double PressureAuAnderson(double x, double tk);
/// MgO: table in compression, quartic in T (Jamieson, Fritz and Manghnani 1982). The end rows
/// extrapolate.
[[nodiscard]] double PressureMgOTable(double x, double tk);
/// Pt: Birch-Murnaghan of third order with a modulus and a volume that depend on temperature.
[[nodiscard]] double PressurePtBirch(double vol, double vol0, double tk);
/// Pt: Vinet form with a linear thermal pressure (Holmes et al. 1989); x is a / 3.9231.
[[nodiscard]] double PressurePtVinet(double x, double tc);
/// hBN: Birch-Murnaghan form of third order on the c axis alone, as if it were a volume.
[[nodiscard]] double PressureHbnAxis(double c, double tc);

/// Pressure of the simulation table. The volume V0 at temperature goes into the formula undivided
/// by V, so `v` has no influence; kept so.
[[nodiscard]] double PressureSimulation(double v, double v0, double tk);

/// The simulation table: a header line and 191 lines of V/V0 from 1.04 to 0.85 with pressures at
/// four temperatures, lines ending in CR LF. Its usual file name:
inline constexpr const char* SIMULATION_FILE = "sim298_1273k2.dat";
void WriteSimulationTable(std::ostream& out);

enum class PressureScale {
    NaClDecker,
    PtJamieson,
    AuAnderson,
    MgOTable,
    PtBirch,
    PtVinet,
    HbnAxis
};

/// The scale that a marker key selects, byte for byte; none for any other key.
[[nodiscard]] std::optional<PressureScale> FindScale(std::string_view key);

/// A scale's name for people and for results ("NaCl, Decker 1971").
[[nodiscard]] std::string ScaleName(PressureScale scale);

/// What the scales may ask of a refined marker.
struct MarkerArguments {
    double X = 0.0, dX = 0.0;      // V/V0 and its error
    double Vol = 0.0, dVol = 0.0;  // cubic angstrom
    double Vol0 = 0.0;             // of the crystal's reference cell
    double a = 0.0;                // cubic edge, angstrom
    float da = 0.0F;
    float c = 0.0F, dc = 0.0F;  // hexagonal c axis, angstrom
    double TK = 0.0;
    double TC = 0.0;
};

struct PressureValue {
    PressureScale Scale = PressureScale::NaClDecker;
    double P = 0.0;      // GPa
    double Error = 0.0;  // GPa; signed for the platinum scales in volume and edge
};

/// Pressure with its error by the scale of the key; nothing for a key without one.
[[nodiscard]] std::optional<PressureValue> MarkerPressure(std::string_view key,
                                                          const MarkerArguments& marker);

}  // namespace vael
