// Measured and simulated spectra through the lattice view's own commands.
#include "support/latticeworld.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>

using namespace vael;
using test::LatticeWorld;

namespace {

PeakCalView& v = frmPeakCal;

TEST(Explore, All) {
    for (const auto& [file, crystal, temp, sample] : {std::tuple{"AuWire.npd", "Au", "25", false},
                                                      {"MgO_0019_d0.npd", "MgO", "537", false},
                                                      {"MgO_0043_d0.npd", "MgO", "845", false},
                                                      {"Al2O3_d0.npd", "Al2O3", "25", true},
                                                      {"CeO2H.npd", "CeO2", "25", true},
                                                      {"TiCH.npd", "TiC", "25", true}}) {
        LatticeWorld w;
        w.Open({Measured(file)});
        Click(frmVaelAna.cmdAutoFit);
        std::cout << "=== " << file << " current " << GraphNo() << " "
                  << store.GraphList[static_cast<std::size_t>(GraphNo())].Name << " peaks";
        for (int row = 0; row < store.GraphTotal; ++row)
            std::cout << " " << row << ":" << store.GraphList[static_cast<std::size_t>(row)].Name
                      << "=" << w.Peaks(GetGraphDataNo(row)).PeakNum;
        std::cout << "\n";
        w.OpenView();
        if (sample) w.Sample();
        w.Choose(crystal);
        Type(v.txtTemp, temp);
        w.Execute();
        std::cout << v.lblTold.Caption << " | c " << v.txtLatticeLength[2].Text << "\n";
        for (int row = 1; row <= v.sprPeakInf4.Rows(); ++row) {
            for (int c = 0; c <= 10; ++c) std::cout << v.sprPeakInf4.At(c, row).Text << "  ";
            std::cout
                << " net "
                << w.Peaks(v.Slot)
                       .Peak[static_cast<std::size_t>(std::stoi(v.sprPeakInf4.At(0, row).Text) - 1)]
                       .Intensity
                << "\n";
        }
        w.Desk.CancelSave();
        Click(v.cmdExit);
    }
}

}  // namespace
