// The running log of the lattice calculation: its lines, and the file that one program at a time
// holds.
#include "lattice/latticelog.h"

#include "core/cp932.h"
#include "core/text.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace vael {
namespace {

constexpr const char* FINE = "#0.000000";
constexpr const char* FINE_ANGLE = "#00.000000";

std::string Fine(double value) { return FormatNumber(value, FINE); }

std::string Optional(const std::optional<double>& value) { return value ? Fine(*value) : ""; }

/// The number of a row's peak; rows left out of the fit bear a star.
std::string PeakNumber(const LatticeRow& row) {
    return (row.Used ? "" : "*") + FormatNumber(row.Index + 1, "#0");
}

void SeedTable(QuotedText& out, const LatticeReport& report) {
    out.Line({"************  Seed Infomation       ************************"});
    std::vector<QuotedField> seeds{SystemCode(report.System)};
    for (const double seed : report.Seed) seeds.emplace_back(Fine(seed));
    out.Line(seeds);
    out.Line({"************  Compare to Seed Caluclate   ******************"});
    out.Line({"PK#", "HKL", "CH", "E(KEV)", "D(OBS)", "D(CAL)", "DEV"});
    for (const LatticeRow& row : report.Rows)
        out.Line({PeakNumber(row), row.Hkl(), Fine(row.Ch), Fine(row.KeV), Fine(row.DObs),
                  Fine(row.DSeed), Fine(row.Deviation())});
}

void CalculatedTable(QuotedText& out, const LatticeReport& report) {
    out.Line({"************  Compare to Caluclate      ********************"});
    out.Line({SystemCode(report.System)});
    out.Line({"PK#", "HKL", "CH", "E(KEV)", "DO", "DC", "DR"});
    for (const LatticeRow& row : report.Rows)
        out.Line({PeakNumber(row), row.Hkl(), Fine(row.Ch), Fine(row.KeV), Fine(row.DObs),
                  Optional(row.DCalc), Optional(row.Relative())});
}

void ComparedRows(QuotedText& out, const LatticeReport& report) {
    out.Line({"*********Compare to Caluclate   **********************"});
    out.Line({"PK#", "HKL", "CH", "E(KEV)", "2Theta", "DOBS", "DCAL", "DR", "DDEF to Initial",
              "FIT TYPE"});
    for (const LatticeRow& row : report.Rows) {
        if (!row.Used) continue;
        out.Line({PeakNumber(row), row.Hkl(), Fine(row.Ch), Fine(row.KeV),
                  FormatNumber(row.TwoTheta, FINE_ANGLE), Fine(row.DObs), Optional(row.DCalc),
                  Optional(row.Relative()), Fine(row.Deviation()), row.Type});
    }
}

void BoxLine(QuotedText& out, const char* label, std::string_view box) {
    const ValueAndError pieces = SplitAtError(box);
    if (pieces.HasError)
        out.Line({label, pieces.Value, "+-", pieces.Error});
    else
        out.Line({label, pieces.Value});
}

void Result(QuotedText& out, const LatticeReport& report) {
    out.Line({"************Caluclate Result   *****************************"});
    out.Line({"LATTICE CONSTANTS"});
    out.Line({SystemLogName(report.System)});
    constexpr std::array<const char*, 6> LABELS{
        "A    =", "B    =", "C    =", "ALPHA=", "BETA =", "GAMMA="};
    for (std::size_t i = 0; i < LABELS.size(); ++i)
        BoxLine(out, LABELS[i], report.LatticeLength[i]);
    BoxLine(out, "V    =", report.Vol);
    BoxLine(out, "V/V0 =", report.VolPerVol0);
    out.Line({"2θ = ", FormatNumber(report.TwoTheta, "#0.00000")});
}

void Pressure(QuotedText& out, const LatticeReport& report) {
    const std::string key = MarkerKey(Trim(report.Crystal));
    const std::string words = LogScaleWords(key);
    if (!words.empty()) {
        const bool early = words.find("DECKER") != std::string::npos ||
                           words.find("JAMIESON") != std::string::npos;
        out.Line({early ? "************Caluclate Puressure   **************************"
                        : "************Caluclate Puressure   *****************************"});
        out.Line({words + TemperatureWords(report)});
    }
    BoxLine(out, "P(GPA)= ", report.Pressure);
}

}  // namespace

std::string LogStart(std::string_view fileName) {
    return QuotedText()
        .Line({"*******************" + Trim(fileName) +
               "LatticeFitting Log Start**************************"})
        .Empty(2)
        .Text;
}

void AddPropertyLines(QuotedText& out, const ParamRecord& param, const char* angleFormat) {
    out.Line({"2θ", FormatNumber(param.TwoTheta, angleFormat)});
    out.Line({"EV(0)", Fine(param.EgcCoef[0])});
    out.Line({"EV(1)", Fine(param.EgcCoef[1])});
    out.Line({"EV(2)", Fine(param.EgcCoef[2])});
    out.Line({"LOAD", FormatNumber(param.PressLoad, "#0.00")});
    out.Line({"TEMP", FormatNumber(param.Temperature, "#0.00")});
}

std::string LogProperty(const ParamRecord& param) {
    QuotedText out;
    out.Line({"********** Property      ********************"});
    AddPropertyLines(out, param, "#0.00000");
    return out.Empty(2).Text;
}

std::string LogPeaks(const std::vector<LatticePeak>& peaks) {
    QuotedText out;
    out.Line({"**************PEAKS CURVE FITED LIST**********************"});
    out.Line({"Number=", static_cast<int>(peaks.size())});
    out.Line({"Peak No.", "Ch", "Energy", "DValue", "Intensity", "Amp", "FWHM(Ch)", "FWHM(KeV)",
              "2Theta", "Fit Type"});
    int number = 0;
    for (const LatticePeak& peak : peaks)
        out.Line({FormatNumber(++number, "#0"), FormatNumber(peak.Ch, "#0.00"),
                  FormatNumber(peak.KeV, "#0.0000"), FormatNumber(peak.D, "#0.0000"),
                  FormatNumber(peak.Intensity, "####0"), FormatNumber(peak.Amplitude, "####0"),
                  FormatNumber(peak.FwhmCh, "#0.00"), FormatNumber(peak.FwhmKeV, "#0.0000"),
                  FormatNumber(peak.TwoTheta, "#0.0000"), peak.Type});
    return out.Empty().Text;
}

std::string LogEnd(std::string_view fileName) {
    return QuotedText()
        .Line(
            {"*************" + Trim(fileName) + "LatticeFitting Log Ende************************"})
        .Text;
}

std::string LogChanged(LogChange what) {
    const char* line = "";
    switch (what) {
        case LogChange::TwoTheta: line = "********************* 2θChanged!! **********"; break;
        case LogChange::LatticeType:
            line = "********************* Lattice Type Changed!! **********";
            break;
        case LogChange::Mode:
            line = "********************* Lattice Fit Mode Changed!! **********";
            break;
        case LogChange::Seed: line = "************ New Seed Inputed!!!!!! **************"; break;
        case LogChange::Use: line = "********************* UseFlag Changed!! **********"; break;
    }
    return QuotedText().Line({line}).Text;
}

std::string LogElement(const CrystalRecord& crystal) {
    QuotedText out;
    out.Line({"********************* Element Changed!! **********"});
    out.Line({"*********** Element Reference Information *************"});
    out.Line({SystemCode(crystal.System)});
    constexpr std::array<const char*, 6> LABELS{
        "A     =", "B     =", "C     =", "Alpha =", "Beta  =", "Gamma ="};
    const Cell cell = crystal.ReferenceCell();
    for (std::size_t i = 0; i < LABELS.size(); ++i) out.Line({LABELS[i], Fine(cell[i])});
    return out.Text;
}

std::string LogCalculation(const LatticeReport& report) {
    QuotedText out;
    SeedTable(out, report);
    CalculatedTable(out, report);
    ComparedRows(out, report);
    if (!report.HasBoxes) return out.Text;
    Result(out, report);
    if (report.Mode == MODE_MARKER) Pressure(out, report);
    return out.Text;
}

std::string LogScaleWords(std::string_view key) {
    const auto isOne = [&](std::initializer_list<std::string_view> spellings) {
        for (const std::string_view spelling : spellings)
            if (key == spelling) return true;
        return false;
    };
    if (isOne({"NACL", "NaCl", "nacl"})) return "******** DECKER PRESSURE AT T=";
    if (isOne({"MgO", "MGO", "PT", "Pt", "pt"})) return "******** JAMIESON SCALE AT T=";
    if (isOne({"AU", "Au", "au"})) return "******** ANDERSON SCALE AT T=";
    if (isOne({"PT_B", "Pt_B", "pt_b", "hBN", "HBN"})) return "******** Burch_m SCALE AT T=";
    return {};
}

ValueAndError SplitAtError(std::string_view text) {
    const std::size_t plus = text.find('+');
    if (plus == std::string_view::npos) return {.Value = std::string(text), .Error = {}};
    const std::size_t from = text.substr(plus).starts_with("+-") ? plus + 2 : plus + 1;
    return {.Value = std::string(text.substr(0, plus)),
            .Error = std::string(text.substr(from)),
            .HasError = true};
}

std::string TemperatureWords(const LatticeReport& report) {
    return report.Temperature + (report.Unit == TEMPERATURE_CELSIUS ? "℃ ***" : "Ｋ ***");
}

bool LatticeLog::Open(const std::string& folder) {
    Close();
    Trouble.clear();
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (OpenOne(folder + "/" + LatticeLogName(LogAlternate))) return true;
        LogAlternate = static_cast<std::int16_t>(1 - LogAlternate);
    }
    return false;
}

bool LatticeLog::OpenOne(const std::string& path) {
    const auto refuse = [&](const char* why) {
        Trouble += (Trouble.empty() ? "" : " ") + path + ": " + why + ".";
        return false;
    };
    // Not emptied before it is ours: what another one holds stays as it is.
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0644);
    if (file < 0) return refuse(std::strerror(errno));
    if (::flock(file, LOCK_EX | LOCK_NB) != 0) {
        const bool held = errno == EWOULDBLOCK;
        ::close(file);
        return refuse(held ? "another one holds it" : std::strerror(errno));
    }
    struct stat about {};
    if (::fstat(file, &about) == 0 && S_ISREG(about.st_mode) && ::ftruncate(file, 0) != 0) {
        const int why = errno;
        ::close(file);
        return refuse(std::strerror(why));
    }
    LogChannel = file;
    LogClosed = FALSE_WORD;
    path_ = path;
    return true;
}

bool LatticeLog::Write(std::string_view utf8) {
    if (!IsOpen()) return true;
    const std::string bytes = ToCp932(utf8);
    std::string_view rest = bytes;
    while (!rest.empty()) {
        const ssize_t written = ::write(LogChannel, rest.data(), rest.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) {
            Trouble = path_ + ": " + std::strerror(written < 0 ? errno : ENOSPC) + ".";
            Close();
            return false;
        }
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

void LatticeLog::Close() {
    if (LogChannel >= 0) ::close(LogChannel);  // and with it the lock goes
    LogChannel = -1;
    LogClosed = TRUE_WORD;
}

std::string LatticeLogName(std::int16_t alternate) {
    return alternate == 0 ? "crystalfit.csv" : "crystalfit2.csv";
}

std::string ResultName(std::string_view graphName) {
    for (const char* derived : {NAME_SMOOTH, NAME_FIT, NAME_REMOVED, NAME_BACKGROUND})
        if (graphName == derived) return "Result.csv";
    return std::string(graphName.substr(0, graphName.find('.'))) + "_Result.csv";
}

}  // namespace vael
