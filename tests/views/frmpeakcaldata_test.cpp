// Measured and simulated spectra through the lattice view's own commands: opened, fitted, executed,
// foreign and doubled rows unticked, executed again.
#include "lattice/outliers.h"
#include "simulation.h"
#include "support/latticeworld.h"

#include "core/graphs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

using namespace vael;
using test::LatticeWorld;

namespace {

PeakCalView& v = frmPeakCal;

/// A row of the list: its indices, and about where its peak stands (channel from 1).
struct NamedRow {
    const char* Hkl;
    double Ch;
};

struct Fitted : LatticeWorld {
    /// Opens a file, fits it, and opens the view on the row "Fit".
    explicit Fitted(const std::string& path) {
        Open({path});
        Click(frmVaelAna.cmdAutoFit);
        EXPECT_EQ(store.GraphList[static_cast<std::size_t>(GraphNo())].Name, "Fit");
        OpenView();
    }
    void Calculate(const std::string& crystal, const std::string& celsius, bool sample) {
        if (sample) Sample();
        Choose(crystal);
        Type(v.txtTemp, celsius);
        Execute();
        EXPECT_NE(v.txtLatticeLength[0].Text, "");
    }
    static void Untick(const std::vector<NamedRow>& rows) {
        for (const NamedRow& row : rows) {
            int found = 0;
            for (int line = 1; line <= v.sprPeakInf2.Rows(); ++line) {
                if (Cell(v.sprPeakInf2, PeakCalView::HKL, line) != row.Hkl) continue;
                if (std::fabs(Number(Cell(v.sprPeakInf2, PeakCalView::CH, line)) - row.Ch) > 2.0)
                    continue;
                EXPECT_TRUE(Tick(v.sprPeakInf2, PeakCalView::USE, line));
                ++found;
            }
            EXPECT_EQ(found, 1) << row.Hkl << " at " << row.Ch;
        }
    }
};

}  // namespace

#define MEASURED_OR_SKIP(path, name)         \
    const std::string path = Measured(name); \
    if (path.empty()) GTEST_SKIP() << "the measured spectra are not here"

TEST(MeasuredLattice, AGoldWireInAirHasNoPressure) {
    MEASURED_OR_SKIP(path, "AuWire.npd");
    Fitted w(path);
    w.Calculate("Au", "25", false);
    // Fluorescence and escape lines that fell on a reflection.
    w.Untick({{"(4 4 0)", 2116.1}, {"(6 2 2)", 2460.0}, {"(6 2 2)", 2532.9}});
    w.Execute();
    EXPECT_NEAR(w.Value(v.txtLatticeLength[0]), 4.0786, 0.0006);
    EXPECT_NEAR(w.Value(v.txtPressure), 0.0, 0.15);
}

TEST(MeasuredLattice, MagnesiaInAPressAtItsTemperatures) {
    {
        MEASURED_OR_SKIP(path, "MgO_0019_d0.npd");
        Fitted w(path);
        EXPECT_NE(v.txtTemp.Tip.find("537"), std::string::npos) << "the file says it";
        w.Calculate("MgO", "537", false);
        w.Untick({{"(1 1 1)", 697.1}});
        w.Execute();
        EXPECT_NEAR(w.Value(v.txtLatticeLength[0]), 4.162, 0.006);
        EXPECT_NEAR(w.Value(v.txtPressure), 8.5, 0.8);
    }
    MEASURED_OR_SKIP(path, "MgO_0043_d0.npd");
    Fitted w(path);
    w.Calculate("MgO", "845", false);
    w.Untick({{"(1 1 1)", 691.7}, {"(4 0 0)", 1602.9}});
    w.Execute();
    EXPECT_NEAR(w.Value(v.txtLatticeLength[0]), 4.185, 0.006);
    EXPECT_NEAR(w.Value(v.txtPressure), 7.4, 0.8);
}

TEST(MeasuredLattice, CorundumHasItsTwoEdges) {
    MEASURED_OR_SKIP(path, "Al2O3_d0.npd");
    Fitted w(path);
    w.Calculate("Al2O3", "25", true);
    w.Untick({{"(1 1 0)", 708.3},
              {"(2 1 4)", 1200.1},
              {"(2 0 8)", 1307.6},
              {"(1 0 10)", 1362.2},
              {"(2 2 6)", 1617.2},
              {"(4 1 0)", 1881.1}});
    w.Execute();
    EXPECT_NEAR(w.Value(v.txtLatticeLength[0]), 4.761, 0.002);
    EXPECT_NEAR(w.Value(v.txtLatticeLength[2]), 12.996, 0.006);
}

TEST(MeasuredLattice, TitaniumCarbideHasItsCell) {
    MEASURED_OR_SKIP(path, "TiCH.npd");
    Fitted w(path);
    w.Calculate("TiC", "25", true);
    EXPECT_NEAR(w.Value(v.txtLatticeLength[0]), 4.3177, 0.0012);
}

TEST(MeasuredLattice, CeriaHasItsCellAndCorrectsTheAngle) {
    MEASURED_OR_SKIP(path, "CeO2H.npd");
    Fitted w(path);
    w.Calculate("CeO2", "25", true);
    w.Untick({{"(4 4 0)", 1986.1},
              {"(5 3 1)", 2076.9},
              {"(6 0 0)", 2106.3},
              {"(6 2 0)", 2219.9},
              {"(5 3 3)", 2301.9},
              {"(6 2 2)", 2328.5}});
    w.Execute();
    EXPECT_NEAR(w.Value(v.txtLatticeLength[0]), 5.4115, 0.0007);
    EXPECT_EQ(v.txtSeedConstant[0].Text, "5.411650");
    Click(v.cmd2ThetaCalib);
    EXPECT_NEAR(Number(v.txtExpected2theta.Text), 4.9915, 0.0005);
}

/// The rows that the batch's rules leave out: what a user at the view would untick by eye.
std::vector<int> RowsLeftOutByRule() {
    auto state = std::make_unique<LatticeState>();
    state->Table = latticeState.Table;
    const auto crystal = Item(v.CrystalOf, v.cmbElement.Index);
    const MatchSource source{.GraphNo = v.GrpNo,
                             .DataNo = static_cast<std::int16_t>(v.Slot),
                             .Peaks = Item(store.PeakTables, v.Slot),
                             .Property = Item(store.PropertyRecords, v.Slot),
                             .Dac = DacNow(),
                             .PickupRange = settings.PickupRange()};
    const RuledValues ruled = CalcByRules(
        *state, RequestFor(*state, crystal, MODE_MARKER, Number(v.txtTemp.Text), v.cmbUnit.Index),
        source, {}, {});
    std::vector<int> rows;
    for (const UntickedRow& row : ruled.Unticked) rows.push_back(row.Row);
    return rows;
}

TEST(SimulatedLattice, SamplesGiveTheirCellAndPressureWithinTheirStatedErrors) {
    for (const tools::SampleRecipe& recipe : tools::SampleRecipes()) {
        SCOPED_TRACE(recipe.File);
        const tools::SimulatedSpectrum truth = tools::Simulate(recipe);
        Fitted w(std::string(VAEL_SOURCE_DIR) + "/data/samples/" + recipe.File + ".npd");
        w.TypeAndLeave(v.txtPickupRange, FormatNumber(truth.Pickup, "0.0000"));
        Pick(v.cmbUnit, 1);
        w.Calculate(recipe.Marker, FormatNumber(recipe.Temperature, "0.00"), false);
        const std::vector<int> foreign = RowsLeftOutByRule();
        for (int line = 1; line <= v.sprPeakInf2.Rows(); ++line) {
            const int row = std::stoi(w.Cell(v.sprPeakInf2, 0, line)) - 1;
            if (std::find(foreign.begin(), foreign.end(), row) == foreign.end()) continue;
            EXPECT_TRUE(Tick(v.sprPeakInf2, PeakCalView::USE, line));
        }
        w.Execute();
        EXPECT_GE(v.Values->UsedRows, 4);
        // Three stated errors; four for the one sample that has the weakest high lines: the fit
        // does not weigh its rows, and in 1/d^2 just those count most, so that their noise is more
        // than the error tells.
        const double times = recipe.File == "NaCl_3GPa_900K_Fe" ? 4.0 : 3.0;
        const auto within = [&](const TextBox& box, double expected) {
            const double off = w.Value(box) - expected;
            EXPECT_LT(std::fabs(off), times * w.Error(box)) << box.Name << " " << box.Text;
        };
        within(v.txtLatticeLength[0], truth.MarkerCell[0]);
        within(v.txtLatticeLength[2], truth.MarkerCell[2]);
        within(v.txtPressure, recipe.Pressure);
    }
}
