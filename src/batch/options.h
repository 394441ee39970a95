// What the batch program is asked to do: its command line as a record.
#pragma once

#include "batch/runpicture.h"
#include "lattice/outliers.h"

#include <optional>
#include <string>
#include <vector>

namespace vael {

enum class BatchFormat { None, Table, Csv, Json };

struct BatchOptions {
    std::vector<std::string> Files;
    std::string Crystal;               // key, full name or both; empty: peaks only
    std::optional<std::int16_t> Mode;  // MODE_SAMPLE or MODE_MARKER; none: by the key
    RowRules Rules;
    std::optional<double> Temperature;  // in Unit; none: each spectrum's own, in Celsius
    int Unit = 0;
    std::optional<double> TwoTheta;  // degrees; none: each spectrum's own
    bool DefaultCalibration = false;
    std::optional<double> Pickup;           // angstrom
    bool Express = false;                   // the fitter; else NAX
    std::optional<std::int16_t> Threshold;  // of the Express search, 1 to 20
    std::optional<std::int16_t> Shape;      // of the Express fit, SHAPE_GAUSS to SHAPE_MIX
    std::optional<double> BgCoefficient;
    bool AutoBg = false;
    std::optional<double> PeakWidth;  // channels
    std::optional<int> Smooth;        // list index 0 to 3; -1 off
    std::string DataFolder;           // crystal.dat and the parameter files
    std::string OutFolder;            // empty: no peak lists, no pages
    BatchFormat Format = BatchFormat::Table;
    std::string Run;                    // STEM of the run's table and picture; empty: none
    RunAxis Against = RunAxis::Number;  // across the picture
    std::string Watch;                  // folder whose files are reduced as they arrive
    double Settle = 2.0;                // seconds that a file must have stood unchanged
    bool Force = false;                 // a table that is there is replaced
    int Jobs = 0;                       // 0: all cores
};

/// What came of reading a command line: options, or a text to print and the status to end with.
struct BatchCall {
    std::optional<BatchOptions> Options;
    std::string Text;
    int Status = 0;
};

[[nodiscard]] BatchCall ReadCall(int count, const char* const* words);

/// The folder of crystal.dat: as asked for; else beside the program, in the installed data, or in
/// the tree it was built from. Empty when there is none.
[[nodiscard]] std::string FindDataFolder(const std::string& asked, const std::string& program);

}  // namespace vael
