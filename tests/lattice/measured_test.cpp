// Measured spectra: from known peak centres to cells and pressures.
#include "lattice/outliers.h"

#include "core/text.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <vector>

using namespace vael;

namespace {

/// Calibration and 2 theta of an .npd header.
bool ReadCalibration(const std::string& name, ParamRecord& param) {
    std::ifstream in(std::string(VAEL_MEASURED_DATA) + "/" + name);
    std::string line;
    for (int number = 1; number <= 10 && std::getline(in, line); ++number) {
        const std::string value = Trim(line.substr(line.find(',') + 1));
        if (number >= 7 && number <= 9)
            param.EgcCoef[static_cast<std::size_t>(number - 7)] = Number(value);
        if (number == 10) param.TwoTheta = Number(value);
    }
    return static_cast<bool>(in);
}

struct Measured {
    std::unique_ptr<LatticeState> State = std::make_unique<LatticeState>();
    std::unique_ptr<PropertyRecord> Property = std::make_unique<PropertyRecord>();
    std::unique_ptr<PeakTable> Peaks = std::make_unique<PeakTable>();

    RuledValues Calc(const std::string& key, const std::vector<double>& channels, double celsius,
                     std::int16_t mode, const std::string& reflections = "") {
        State->Table = ReadCrystalFile(std::string(VAEL_SOURCE_DIR) + "/data/crystal.dat");
        for (const double channel : channels)
            Peaks->Peak[static_cast<std::size_t>(Peaks->PeakNum++)].Position = channel;
        const auto index = static_cast<std::int16_t>(FindCrystal(State->Table, key));
        RowRules rules;
        rules.Reflections = ParseReflections(reflections);
        return CalcByRules(*State, RequestFor(*State, index, mode, celsius, TEMPERATURE_CELSIUS),
                           {0, 0, *Peaks, *Property}, rules, {});
    }
};

}  // namespace

#define LOAD_OR_SKIP(measured, name) \
    if (!ReadCalibration(name, (measured).Property->Param)) GTEST_SKIP() << "no measured spectra"

TEST(Measured, GoldWireInAirHasNoPressure) {
    Measured m;
    LOAD_OR_SKIP(m, "AuWire.npd");
    const auto ruled = m.Calc(
        "Au",
        {733.05, 1037.57, 1217.15, 1271.08, 1468.26, 1600.27, 1641.85, 1798.64, 1908.25, 2323.25},
        25.0, MODE_MARKER);
    ASSERT_EQ(ruled.Values.Status, CalcStatus::Ok);
    EXPECT_NEAR(ruled.Values.CellNow[0], 4.0786, 0.0004);
    ASSERT_TRUE(ruled.Values.Pressure);
    EXPECT_NEAR(ruled.Values.Pressure->P, 0.0, 0.1);
}

TEST(Measured, CeriaHasItsCell) {
    Measured m;
    LOAD_OR_SKIP(m, "CeO2H.npd");
    const auto ruled = m.Calc(
        "CeO2",
        {607.47, 701.52, 992.33, 1163.72, 1215.53, 1403.58, 1529.58, 1569.31, 1719.08, 1823.29},
        25.0, MODE_SAMPLE, "1 1 1,2 0 0,2 2 0,3 1 1,2 2 2,4 0 0,3 3 1,4 2 0,4 2 2,5 1 1");
    EXPECT_TRUE(ruled.Unticked.empty());
    EXPECT_NEAR(ruled.Values.CellNow[0], 5.4115, 0.0003);
}

TEST(Measured, TitaniumCarbideHasItsCell) {
    Measured m;
    LOAD_OR_SKIP(m, "TiCH.npd");
    const auto ruled =
        m.Calc("TiC", {755.63, 872.71, 1233.98, 1447.27, 1511.64}, 25.0, MODE_SAMPLE);
    EXPECT_NEAR(ruled.Values.CellNow[0], 4.3177, 0.0008);
}

TEST(Measured, CorundumHasItsTwoEdges) {
    Measured m;
    LOAD_OR_SKIP(m, "Al2O3_d0.npd");
    const auto ruled = m.Calc("Al2O3", {483.40, 659.70, 807.13, 967.59, 1051.52, 1225.97}, 25.0,
                              MODE_SAMPLE, "0 1 2,1 0 4,1 1 3,0 2 4,1 1 6,3 0 0");
    EXPECT_NEAR(ruled.Values.CellNow[0], 4.7610, 0.0015);
    EXPECT_NEAR(ruled.Values.CellNow[2], 12.996, 0.004);
}

TEST(Measured, MagnesiaInAPressHasItsPressures) {
    Measured hot;
    LOAD_OR_SKIP(hot, "MgO_0019_d0.npd");
    const auto first = hot.Calc("MgO", {809.09, 1145.0}, 537.0, MODE_MARKER);
    EXPECT_NEAR(first.Values.CellNow[0], 4.162, 0.002);
    ASSERT_TRUE(first.Values.Pressure);
    EXPECT_NEAR(first.Values.Pressure->P, 8.5, 0.8);

    Measured hotter;
    LOAD_OR_SKIP(hotter, "MgO_0043_d0.npd");
    const auto second = hotter.Calc("MgO", {804.89, 1138.39}, 845.0, MODE_MARKER);
    EXPECT_NEAR(second.Values.CellNow[0], 4.185, 0.002);
    ASSERT_TRUE(second.Values.Pressure);
    EXPECT_NEAR(second.Values.Pressure->P, 7.4, 0.8);
}
