// A graph made of d values, for the tests of the lattice calculation.
#pragma once

#include "lattice/geometry.h"

#include <cmath>
#include <memory>
#include <numbers>

namespace vael::testing8 {

/// E = 0.03 x, 2 theta 10 degrees unless told otherwise.
struct DGraph {
    std::unique_ptr<PropertyRecord> Property = std::make_unique<PropertyRecord>();
    std::unique_ptr<PeakTable> Peaks = std::make_unique<PeakTable>();
    double Pickup = 0.03;

    DGraph() {
        Property->Param.EgcCoef = {0.0, 0.03, 0.0};
        Property->Param.TwoTheta = 10.0;
    }
    void AddChannel(double channel, double net = 1000.0) {
        PeakRecord& peak = Peaks->Peak[static_cast<std::size_t>(Peaks->PeakNum++)];
        peak.Position = channel;
        peak.Intensity = net;
    }
    void AddD(double d, double net = 1000.0) {
        const double sine = std::sin(5.0 * std::numbers::pi / 180.0);
        AddChannel(12.3981 / (2.0 * d * sine) / 0.03 - 1.0, net);
    }
    MatchSource Source() const { return {0, 0, *Peaks, *Property, {}, Pickup}; }
};

inline void SetReflections(CrystalRecord& crystal, std::initializer_list<std::array<int, 3>> list) {
    crystal.Count = 0;
    for (const auto& [h, k, l] : list) {
        const auto row = static_cast<std::size_t>(crystal.Count++);
        crystal.Hs[row] = static_cast<std::int16_t>(h);
        crystal.Ks[row] = static_cast<std::int16_t>(k);
        crystal.Ls[row] = static_cast<std::int16_t>(l);
    }
}

inline void SetCell(CrystalRecord& crystal, std::string name, int system, const Cell& cell) {
    crystal.Name = std::move(name);
    crystal.System = static_cast<std::int16_t>(system);
    crystal.A = cell[0];
    crystal.B = cell[1];
    crystal.C = cell[2];
    crystal.Alpha = cell[3];
    crystal.Beta = cell[4];
    crystal.Gamma = cell[5];
}

}  // namespace vael::testing8
