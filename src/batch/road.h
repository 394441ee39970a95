// The road of one spectrum through the window's own commands: file, peaks, cell, pressure.
#pragma once

#include "batch/options.h"
#include "lattice/outliers.h"

#include <optional>
#include <string>
#include <vector>

namespace vael {

/// One fitted peak as results show it.
struct RoadPeak {
    double Ch = 0.0;  // 1-based
    double KeV = 0.0;
    double D = 0.0;  // angstrom
    double FwhmCh = 0.0;
    double Amplitude = 0.0;
    double Net = 0.0;
    std::optional<Hkl> Index;
    std::optional<double> DCalc;
    bool Matched = false;
    bool Used = false;
};

/// What came of one file.
struct RoadResult {
    std::string File;
    std::string Status = "ok";  // or unreadable, no-peaks, few-lines, singular, fault
    std::string Message;
    std::int16_t Channels = 0;
    std::optional<double> TemperatureC;
    std::optional<double> TwoTheta;
    std::string Time;       // start of the measurement, "2018-10-10 09:05:41"; empty where not told
    bool Remarked = false;  // the reader had something to say of the file
    std::vector<RoadPeak> Peaks;
    std::optional<LatticeValues> Cell;  // calculated, with something to show
    int System = 0;
    std::string Crystal;  // its full name
};

/// Everything a worker process holds: the store with its views is the process's own.
class Road {
public:
    /// Reads crystal.dat when a crystal is asked for. Faults: as ReadCrystalFile; Argument when
    /// there is no such crystal.
    Road(BatchOptions options, std::string dataFolder);
    [[nodiscard]] RoadResult Go(const std::string& file);
    /// The pages of the file gone last, as SVG; at least one.
    [[nodiscard]] std::vector<std::string> Pages(const RoadResult& result) const;

private:
    void Settle(int slot) const;
    void Calculate(int slot, RoadResult& result);
    void FillPeaks(int slot, RoadResult& result) const;
    BatchOptions options_;
    std::string folder_;
    CrystalTable crystals_;
    std::int16_t crystal_ = -1;
};

}  // namespace vael
