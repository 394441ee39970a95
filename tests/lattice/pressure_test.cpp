// The pressure scales against published points, by hand, and at every edge that they have.
#include "lattice/pressure.h"

#include "core/fault.h"
#include "lattice/pressuretables.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <vector>

using namespace vael;

namespace {

constexpr double PUBLISHED = 0.03;  // GPa

/// D(x) by Simpson's rule on the integral itself.
double DebyeByIntegral(double x) {
    const auto f = [](double t) { return t == 0.0 ? 0.0 : t * t * t / std::expm1(t); };
    const int n = 20000;
    double sum = f(0) + f(x);
    for (int i = 1; i < n; ++i) sum += f(x * i / n) * (i % 2 ? 4.0 : 2.0);
    return 3.0 / (x * x * x) * sum * x / n / 3.0;
}

/// Checksums of one column: plain, weighted by the row number from 1, and of the squares. What they
/// have to be was added up from the printed table in exact fractions, outside of this program.
template <std::size_t Rows, std::size_t Columns>
void ExpectSums(const std::array<std::array<double, Columns>, Rows>& table, std::size_t column,
                double plain, double weighted, double squares) {
    double sum = 0, rows = 0, square = 0;
    for (std::size_t i = 0; i < Rows; ++i) {
        const double value = table[i][column];
        sum += value;
        rows += static_cast<double>(i + 1) * value;
        square += value * value;
    }
    EXPECT_NEAR(sum, plain, 1e-9) << column;
    EXPECT_NEAR(rows, weighted, 1e-7) << column;
    EXPECT_NEAR(square, squares, 1e-8) << column;
}

MarkerArguments Marker(double x, double dX, double tk) {
    MarkerArguments m;
    m.X = x;
    m.dX = dX;
    m.TK = tk;
    m.TC = tk - 273.15;
    return m;
}

}  // namespace

TEST(PressureTables, ThePlatinumTableHasItsSums) {
    ExpectSums(PT_TABLE, 0, 1189.0662995, 50207.1377674, 73387.7965350915);
    ExpectSums(PT_TABLE, 1, 314.484262, 7835.954048, 2018.4680314801);
    ExpectSums(PT_TABLE, 2, 332.562514, 9247.764161, 2412.6067160451);
}

TEST(PressureTables, TheMagnesiaTableHasItsSums) {
    ExpectSums(MGO_TABLE, 0, 1668.489837, 105806.6997006, 102323.6504129002);
    ExpectSums(MGO_TABLE, 1, 97.12392993, 2092.2338355, 199.9800513861);
    ExpectSums(MGO_TABLE, 2, 441.77068177, 18426.04502263, 2815.0614088373);
    ExpectSums(MGO_TABLE, 3, -274.28338438, -11545.47185220, 1098.2628858005);
    ExpectSums(MGO_TABLE, 4, 639.16007741, 27115.22165679, 6033.7551185934);
}

TEST(PressureTables, RowThirtySevenOfMagnesiaKeepsItsDigits) {
    EXPECT_EQ(MGO_TABLE[36][4], 8.731078);
    EXPECT_EQ(MGO_TABLE[36][0], 14.73504);
}

TEST(DebyeFunction, HasThreeBranches) {
    EXPECT_EQ(DebyeFunction(0.0), 1.0);
    EXPECT_EQ(DebyeFunction(-3.0), 1.0);
    EXPECT_EQ(DebyeFunction(0.07), 1.0 - 0.07 * (0.375 - 0.05 * 0.07));
    EXPECT_EQ(DebyeFunction(11.0001), 19.481818 / (11.0001 * 11.0001 * 11.0001));
    EXPECT_NEAR(DebyeFunction(11.0), DebyeByIntegral(11.0), 2e-4 * DebyeByIntegral(11.0));
    EXPECT_NE(DebyeFunction(11.0), 19.481818 / 1331.0);  // 1100 steps, not the tail
}

TEST(DebyeFunction, IsGoodToAPartInTenThousand) {
    EXPECT_NEAR(DebyeFunction(1.0), 0.67440, 5e-6);  // the exact value is 0.67442
    EXPECT_NEAR(DebyeByIntegral(1.0), 0.67442, 5e-6);
    for (const double x : {0.0701, 0.1, 0.5, 1.0, 2.0, 3.5, 5.0, 8.0})
        EXPECT_NEAR(DebyeFunction(x), DebyeByIntegral(x), 3e-4 * DebyeByIntegral(x)) << x;
}

TEST(PressureNaClDecker, HasItsOwnPointsAndThePublishedOnes) {
    EXPECT_NEAR(PressureNaClDecker(1.0, 298.0), 0.00167, 5e-6);
    EXPECT_NEAR(PressureNaClDecker(0.8, 298.0), 9.128, 5e-4);
    EXPECT_NEAR(PressureNaClDecker(0.8096, 298.15), 8.393, PUBLISHED);
    EXPECT_NEAR(PressureNaClDecker(0.7050, 298.15), 19.412, PUBLISHED);
}

TEST(PressurePtJamieson, HasItsOwnPointsAndThePublishedOnes) {
    EXPECT_NEAR(PressurePtJamieson(1.0, 300.0), 0.04919, 5e-6);
    EXPECT_NEAR(PressurePtJamieson(0.9, 300.0), 37.656, 5e-4);
    const struct {
        double X, T, P;
    } published[] = {{0.90, 300, 37.65}, {0.90, 1000, 42.21}, {0.90, 1500, 45.49},
                     {0.85, 300, 67.54}, {0.85, 1000, 72.09}, {0.85, 1500, 75.37}};
    for (const auto& point : published)
        EXPECT_NEAR(PressurePtJamieson(point.X, point.T), point.P, PUBLISHED) << point.X << point.T;
}

TEST(PressurePtJamieson, IsZeroOutsideItsOpenInterval) {
    EXPECT_EQ(PressurePtJamieson(1.061, 300.0), 0.0);
    EXPECT_EQ(PressurePtJamieson(0.819, 300.0), 0.0);
    EXPECT_EQ(PressurePtJamieson(1.2, 300.0), 0.0);
    EXPECT_NE(PressurePtJamieson(1.0609, 300.0), 0.0);
    EXPECT_GT(PressurePtJamieson(0.8191, 300.0), 80.0);
}

TEST(PressureMgOTable, HasItsOwnPointsAndThePublishedOnes) {
    EXPECT_NEAR(PressureMgOTable(1.0, 300.0), 0.04558, 5e-6);
    EXPECT_NEAR(PressureMgOTable(0.9, 300.0), 20.681, 5e-4);
    const struct {
        double X, T, P;
    } published[] = {{0.90, 300, 20.67}, {0.90, 1000, 24.31}, {0.90, 1500, 27.17},
                     {0.80, 300, 57.22}, {0.80, 1000, 60.75}, {0.80, 1500, 63.58}};
    for (const auto& point : published)
        EXPECT_NEAR(PressureMgOTable(point.X, point.T), point.P, PUBLISHED) << point.X << point.T;
}

TEST(PressureMgOTable, ExtrapolatesBeyondItsGrid) {
    // The cubic through rows 70 to 73 at compression 0.3, by hand: their A columns at T = 0 are
    // 81.9321, 85.22527, 88.61705, 92.13864 at 0.245 to 0.26, third difference over s = 11.
    const double p0 = 81.9321, p1 = 85.22527, p2 = 88.61705, p3 = 92.13864;
    const double s = (0.3 - 0.245) / 0.005;
    const double d1 = p1 - p0, d2 = p2 - 2 * p1 + p0, d3 = p3 - 3 * p2 + 3 * p1 - p0;
    const double newton = p0 + s * d1 + s * (s - 1) / 2 * d2 + s * (s - 1) * (s - 2) / 6 * d3;
    EXPECT_NEAR(PressureMgOTable(0.7, 0.0), newton, 1e-6);
    EXPECT_GT(PressureMgOTable(0.7, 300.0), 92.0);
    EXPECT_LT(PressureMgOTable(1.2, 300.0), -12.0);
}

TEST(PressureTables, AGridPointGivesItsRow) {
    for (const int row : {1, 2, 3, 4, 20, 48, 49})  // the interval is open beyond rows 1 and 49
        EXPECT_NEAR(PressurePtJamieson(1.0 - (PT_FIRST + 0.005 * (row - 1)), 0.0),
                    PT_TABLE[static_cast<std::size_t>(row - 1)][0], 1e-9)
            << row;
    for (const int row : {1, 2, 3, 4, 37, 72, 73})
        EXPECT_NEAR(PressureMgOTable(1.0 - (MGO_FIRST + 0.005 * (row - 1)), 0.0),
                    MGO_TABLE[static_cast<std::size_t>(row - 1)][0], 1e-9)
            << row;
}

TEST(PressureAuAnderson, HasItsOwnPointsAndThePublishedOnes) {
    EXPECT_EQ(PressureAuAnderson(1.0, 300.0), 0.0);
    EXPECT_NEAR(PressureAuAnderson(0.9, 300.0), 23.435, 5e-4);
    const struct {
        double X, T, P;
    } published[] = {{0.90, 300, 23.44}, {0.90, 1000, 27.59}, {0.90, 2000, 33.51},
                     {0.80, 300, 68.53}, {0.80, 1000, 71.73}, {0.80, 2000, 76.30}};
    for (const auto& point : published)
        EXPECT_NEAR(PressureAuAnderson(point.X, point.T), point.P, PUBLISHED) << point.X << point.T;
}

TEST(PressurePtBirch, HasItsOwnPoints) {
    EXPECT_EQ(PressurePtBirch(60.3793, 60.3793, 300.0), 0.0);
    EXPECT_NEAR(PressurePtBirch(54.34, 60.3793, 300.0), 37.651, 5e-4);
}

TEST(PressurePtVinet, HasItsOwnPointsAndThePublishedOne) {
    EXPECT_EQ(PressurePtVinet(1.0, 27.0), 0.0);
    EXPECT_NEAR(PressurePtVinet(std::cbrt(0.9), 27.0), 37.907, PUBLISHED);
    EXPECT_NEAR(PressurePtVinet(1.0, 1027.0), 6.9426, 1e-10);  // 0.261e-4 * 266 * 1000
}

TEST(PressureHbnAxis, HasItsOwnPoints) {
    EXPECT_EQ(PressureHbnAxis(6.6562, 26.85), 0.0);
    EXPECT_NEAR(PressureHbnAxis(6.0, 26.85), 5.226, 5e-4);
}

// The values below were worked out from the formulas apart from this program, with the Debye
// function by its integral.
TEST(PressureScales, TheirThermalTermsAgreeWithASecondCalculation) {
    EXPECT_NEAR(PressurePtBirch(54.34, 60.3793, 1000.0), 42.23501, 1e-4);
    EXPECT_NEAR(PressurePtBirch(57.0, 60.3793, 1800.0), 27.95668, 1e-4);
    EXPECT_NEAR(PressureHbnAxis(6.0, 1000.0), 6.61330, 1e-4);
    EXPECT_NEAR(PressureHbnAxis(6.5, 500.0), 1.34606, 1e-4);
    EXPECT_NEAR(PressureNaClDecker(0.95, 100.0), 0.87467, 1e-3);
    EXPECT_NEAR(PressureNaClDecker(0.9, 1000.0), 5.27574, 1e-3);
    EXPECT_NEAR(PressureNaClDecker(0.75, 1500.0), 17.29390, 1e-3);
}

TEST(PressureScales, ArgumentsOutsideAFormulaAreFaults) {
    EXPECT_THROW((void)PressureNaClDecker(0.0, 300.0), Fault);
    EXPECT_THROW((void)PressureNaClDecker(0.9, 0.0), Fault);
    EXPECT_THROW((void)PressureNaClDecker(-0.5, 300.0), Fault);
    EXPECT_THROW((void)PressureAuAnderson(0.0, 300.0), Fault);
    EXPECT_THROW((void)PressureAuAnderson(-1.0, 300.0), Fault);
    EXPECT_THROW((void)PressurePtBirch(0.0, 60.0, 300.0), Fault);
    EXPECT_THROW((void)PressurePtBirch(60.0, 60.0, 0.0), Fault);
    EXPECT_THROW((void)PressurePtVinet(0.0, 27.0), Fault);
    EXPECT_THROW((void)PressureHbnAxis(0.0, 27.0), Fault);
}

TEST(PressureSimulation, HasNoInfluenceOfItsFirstArgument) {
    EXPECT_EQ(PressureSimulation(1.0, 60.3793, 473.0), PressureSimulation(99.0, 60.3793, 473.0));
    // At 298 K: 1.5 * 27.6 * (w^(7/3) - w^(5/3)) (1 + 4.875 (w^(2/3) - 1)) with w = 60.3793.
    const double third = std::cbrt(60.3793);
    const double w2 = third * third, w5 = w2 * 60.3793, w7 = w5 * w2;
    EXPECT_NEAR(PressureSimulation(0.0, 60.3793, 298.0),
                1.5 * 27.6 * (w7 - w5) * (1 + 4.875 * (w2 - 1)), 1e-3);
}

TEST(SimulationTable, Has191LinesWithTheSameFourPressures) {
    std::ostringstream out;
    WriteSimulationTable(out);
    std::istringstream in(out.str());
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        ASSERT_EQ(line.back(), '\r');
        lines.push_back(line.substr(0, line.size() - 1));
    }
    ASSERT_EQ(lines.size(), 192u);
    EXPECT_EQ(lines[0], "v/v0, v0/v, p(298k), p(473k), p(873k), p(1273k)");
    EXPECT_EQ(lines[1].substr(0, 17), "1.040000,0.961538");
    EXPECT_EQ(lines[41].substr(0, 17), "1.000000,1.000000");
    EXPECT_EQ(lines[191].substr(0, 17), "0.850000,1.176471");
    for (std::size_t i = 1; i < lines.size(); ++i)
        EXPECT_EQ(lines[i].substr(17), lines[1].substr(17));
    std::size_t commas = 0;
    for (const char c : lines[1]) commas += c == ',' ? 1 : 0;
    EXPECT_EQ(commas, 5u);
}

TEST(Dispatch, KeysAreComparedByteForByte) {
    const struct {
        const char* Key;
        PressureScale Scale;
    } known[] = {{"NACL", PressureScale::NaClDecker}, {"Pt", PressureScale::PtJamieson},
                 {"PT", PressureScale::PtJamieson},   {"Au", PressureScale::AuAnderson},
                 {"AU", PressureScale::AuAnderson},   {"MgO", PressureScale::MgOTable},
                 {"MGO", PressureScale::MgOTable},    {"PT_B", PressureScale::PtBirch},
                 {"pt_B", PressureScale::PtBirch},    {"Pt_B", PressureScale::PtBirch},
                 {"PT_H", PressureScale::PtVinet},    {"pt_H", PressureScale::PtVinet},
                 {"Pt_H", PressureScale::PtVinet},    {"pt_h", PressureScale::PtVinet},
                 {"hBN", PressureScale::HbnAxis}};
    for (const auto& entry : known) {
        ASSERT_TRUE(FindScale(entry.Key)) << entry.Key;
        EXPECT_EQ(*FindScale(entry.Key), entry.Scale) << entry.Key;
    }
    for (const char* other : {"NaCl", "nacl", "pt", "au", "pt_b", "HBN", "", "Fe", "NACL "})
        EXPECT_FALSE(FindScale(other)) << other;
}

TEST(MarkerPressure, SymmetricErrorsAreHalfTheDifference) {
    for (const char* key : {"NACL", "Pt", "Au", "MgO"}) {
        const auto value = MarkerPressure(key, Marker(0.95, 0.001, 500.0));
        ASSERT_TRUE(value);
        const auto at = [&](double x) { return MarkerPressure(key, Marker(x, 0.0, 500.0))->P; };
        EXPECT_EQ(value->P, at(0.95));
        EXPECT_NEAR(value->Error, (at(0.949) - at(0.951)) / 2.0, 1e-12) << key;
        EXPECT_GT(value->Error, 0.0);
    }
}

TEST(MarkerPressure, TheOneSidedErrorsHaveTheirSigns) {
    MarkerArguments m = Marker(0.9, 0.001, 300.0);
    m.Vol = 54.34;
    m.dVol = 0.06;
    m.Vol0 = 60.3793;
    m.a = 3.8;
    m.da = 0.001F;
    m.c = 6.0F;
    m.dc = 0.01F;
    const auto birch = MarkerPressure("Pt_B", m);
    EXPECT_NEAR(birch->P, 37.651, 5e-4);
    EXPECT_NEAR(birch->Error, birch->P - PressurePtBirch(54.40, 60.3793, 300.0), 1e-9);
    EXPECT_GT(birch->Error, 0.0);
    const auto vinet = MarkerPressure("PT_H", m);
    EXPECT_EQ(vinet->P, PressurePtVinet(3.8 / 3.9231, m.TC));
    EXPECT_NEAR(vinet->Error, vinet->P - PressurePtVinet(3.801 / 3.9231, m.TC), 1e-6);
    const auto axis = MarkerPressure("hBN", m);
    EXPECT_EQ(axis->P, PressureHbnAxis(6.0, m.TC));
    EXPECT_NEAR(axis->Error, axis->P - PressureHbnAxis(6.01, m.TC), 1e-5);
    m.dVol = -0.06;
    m.dc = -0.01F;
    EXPECT_LT(MarkerPressure("Pt_B", m)->Error, 0.0);
    EXPECT_GT(MarkerPressure("hBN", m)->Error, 0.0);
    EXPECT_FALSE(MarkerPressure("NaCl", m));
}

TEST(MarkerPressure, PlatinumBeyondItsTableIsZeroWithNoError) {
    const auto value = MarkerPressure("Pt", Marker(1.2, 0.001, 300.0));
    ASSERT_TRUE(value);
    EXPECT_EQ(value->P, 0.0);
    EXPECT_EQ(value->Error, 0.0);
}

TEST(Temperature, TheOffsetOfTheViewIs27315) {
    EXPECT_EQ(ToKelvin(27.0, TEMPERATURE_CELSIUS), 300.15);
    EXPECT_EQ(ToKelvin(300.0, TEMPERATURE_KELVIN), 300.0);
    EXPECT_EQ(ToCelsius(27.0, TEMPERATURE_CELSIUS), 27.0);
    EXPECT_NEAR(ToCelsius(300.15, TEMPERATURE_KELVIN), 27.0, 1e-12);
}
