// The running log of the lattice calculation: its lines, and the file that one program at a time
// holds.
#pragma once

#include "core/records.h"
#include "lattice/crystal.h"
#include "lattice/latticerows.h"
#include "lattice/quotedtext.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vael {

// --- the lines, UTF-8, as a view writes them at the moment that each is named after -------------

[[nodiscard]] std::string LogStart(std::string_view fileName);
[[nodiscard]] std::string LogProperty(const ParamRecord& param);
/// The six lines of angle, calibration, load and temperature in it.
void AddPropertyLines(QuotedText& out, const ParamRecord& param, const char* angleFormat);
[[nodiscard]] std::string LogPeaks(const std::vector<LatticePeak>& peaks);
[[nodiscard]] std::string LogEnd(std::string_view fileName);

enum class LogChange { TwoTheta, LatticeType, Mode, Seed, Use };
[[nodiscard]] std::string LogChanged(LogChange what);
/// The element changed: its reference cell.
[[nodiscard]] std::string LogElement(const CrystalRecord& crystal);

/// What one calculation is told from: texts as the boxes show them, and the rows.
struct LatticeReport {
    std::string Crystal;  // its whole name
    std::int16_t System = 0;
    std::int16_t Mode = MODE_MARKER;
    Cell Seed{};
    std::vector<LatticeRow> Rows;
    std::array<std::string, 6> LatticeLength;  // "value+-error" or a literal
    std::string Vol;
    std::string VolPerVol0;
    std::string Pressure;
    bool HasBoxes = false;    // the calculation has shown a result in the boxes
    double TwoTheta = 0.0;    // degrees
    std::string Temperature;  // as typed
    int Unit = TEMPERATURE_CELSIUS;
};

/// Everything that stands in the log after a calculation: seed table, calculated table, the rows in
/// use compared, the result, and in marker mode the pressure. Result and pressure only where the
/// calculation has shown them in the boxes.
[[nodiscard]] std::string LogCalculation(const LatticeReport& report);

/// The beginning of the line that names the scale in the log, by the marker key; the log knows more
/// spellings than the scales do, and none of the Vinet form. Empty for other keys.
[[nodiscard]] std::string LogScaleWords(std::string_view key);

/// A box text at its "+-": the value, and the error, which is empty where there is none.
struct ValueAndError {
    std::string Value;
    std::string Error;
    bool HasError = false;
};
[[nodiscard]] ValueAndError SplitAtError(std::string_view text);

/// The temperature as the scale lines have it: text and unit.
[[nodiscard]] std::string TemperatureWords(const LatticeReport& report);

// --- the file ------------------------------------------------------------------------------------

/// The log file of one open view. While it is open nobody else gets it: it bears an exclusive
/// advisory lock, and one that another holds, or that cannot be opened, sends us to the other name.
class LatticeLog {
public:
    LatticeLog() = default;
    ~LatticeLog() { Close(); }
    LatticeLog(const LatticeLog&) = delete;
    LatticeLog& operator=(const LatticeLog&) = delete;

    /// Opens a log in the folder, empty; the first name, and where that is held the second. False
    /// when both are: `Trouble` then says why.
    bool Open(const std::string& folder);
    /// Writes a text in code page 932; nothing when the log is closed. False when it could not be
    /// written: the log is closed then, and `Trouble` says why.
    bool Write(std::string_view utf8);
    void Close();

    [[nodiscard]] bool IsOpen() const { return LogClosed == FALSE_WORD; }
    [[nodiscard]] const std::string& Path() const { return path_; }  // of the last one opened

    int LogChannel = -1;                 // the file's descriptor
    std::int16_t LogClosed = TRUE_WORD;  // 0 while the log is open
    std::int16_t LogAlternate = 0;       // 0 the first name, 1 the second
    std::string Trouble;

private:
    bool OpenOne(const std::string& path);
    std::string path_;
};

/// The names of the log by LogAlternate.
[[nodiscard]] std::string LatticeLogName(std::int16_t alternate);

/// The name that a result is saved under: the graph's name up to its first point, and "_Result.csv"
/// behind it; a derived graph's is "Result.csv".
[[nodiscard]] std::string ResultName(std::string_view graphName);

}  // namespace vael
