// What the batch program is asked to do: its command line as a record.
#include "batch/options.h"

#include "core/fault.h"
#include "core/text.h"
#include "lattice/latticecalc.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <sstream>

namespace vael {
namespace {

constexpr const char* FOOTER = R"(
Each spectrum goes the road of the window: smoothed, freed of its background, fitted by the NAX fitter
without help, matched to the crystal, refined to a cell, and, with a pressure marker, turned into a
pressure. Spectra: .npd, .xbm, .xba and .xbm under numeric extensions.

Examples:
  vael-batch --crystal Au run/*.npd
  vael-batch --crystal CeO2 --reflections "1 1 1,2 0 0,2 2 0" --format json CeO2H.npd
  vael-batch --crystal MgO --temperature 810.3K --out pages MgO_0019_d0.npd

Exit status: 0 when every file gave a result, 1 when some did not (each is named with its reason), 2 for
a wrong call.)";

/// "25", "25C" or "298.15 K".
void TakeTemperature(const std::string& text, BatchOptions& options) {
    std::string number = Trim(text);
    int unit = TEMPERATURE_CELSIUS;
    if (!number.empty() && (number.back() == 'C' || number.back() == 'K')) {
        unit = number.back() == 'K' ? TEMPERATURE_KELVIN : TEMPERATURE_CELSIUS;
        number.pop_back();
    }
    const auto value = ParseNumber(number);
    if (!value)
        throw CLI::ValidationError("--temperature", "a number with C or K behind it was expected, "
                                                    "not \"" + text + "\"");
    options.Temperature = *value;
    options.Unit = unit;
}

double PositiveNumber(const char* option, const std::string& text) {
    const auto value = ParseNumber(text);
    if (!value || !(*value > 0.0))
        throw CLI::ValidationError(option, "a number above 0 was expected, not \"" + text + "\"");
    return *value;
}

}  // namespace

BatchCall ReadCall(int count, const char* const* words) {
    BatchOptions options;
    CLI::App app{"vael-batch reduces energy-dispersive diffraction spectra to peaks, cell and pressure."};
    app.footer(FOOTER);
    std::string mode;
    std::string reflections;
    std::string outliers = "drop";
    std::string temperature;
    std::string calibration = "file";
    std::string bg;
    std::string width;
    std::string pickup;
    std::string twoTheta;
    std::string smooth;
    std::string format = "table";
    std::string fit = "nax";
    app.add_option("FILE", options.Files, "Spectra to reduce")->required();
    app.add_option("--crystal", options.Crystal,
                   "Crystal of crystal.dat by its key or its full name, the first match; without it "
                   "only the peaks are fitted");
    app.add_option("--mode", mode, "sample or marker (default: marker when the key has a pressure scale)")
        ->check(CLI::IsMember({"sample", "marker"}));
    app.add_option("--reflections", reflections,
                   "Only these reflections take part, such as \"2 0 0,2 2 0\"");
    app.add_option("--outliers", outliers,
                   "drop: leave out doubled and foreign peaks as a careful user does; keep: use all rows")
        ->check(CLI::IsMember({"keep", "drop"}))
        ->capture_default_str();
    app.add_option("--temperature", temperature,
                   "Temperature of the marker with C or K behind it, such as 27C or 300K (default: the "
                   "spectrum's own)");
    app.add_option("--two-theta", twoTheta, "Diffraction angle 2 theta in degrees (default: the spectrum's own)");
    app.add_option("--calibration", calibration,
                   "file: each spectrum's own energy polynomial; default: the one of the parameter file")
        ->check(CLI::IsMember({"file", "default"}))
        ->capture_default_str();
    app.add_option("--pickup", pickup, "Half width in angstrom of d within which a reflection takes a peak (default 0.03)");
    app.add_option("--fit", fit, "Fitter")->check(CLI::IsMember({"nax"}))->capture_default_str();
    app.add_option("--bg-coefficient", bg,
                   "How strong a peak's curvature must be (default 0.2); auto sets it from the spectrum's "
                   "median count");
    app.add_option("--peak-width", width, "Largest peak width in channels (default 20)");
    app.add_option("--smooth", smooth, "Smoothing points, or off")
        ->check(CLI::IsMember({"5", "7", "9", "11", "off"}));
    app.add_option("--data", options.DataFolder, "Folder of crystal.dat and the parameter files")
        ->check(CLI::ExistingDirectory);
    app.add_option("--out", options.OutFolder,
                   "Folder that receives for each file its peak list (CSV) and its page (SVG)");
    app.add_option("--format", format, "Result on standard output: table, csv or json")
        ->check(CLI::IsMember({"table", "csv", "json"}))
        ->capture_default_str();
    app.add_option("--jobs", options.Jobs, "Worker processes (default: all cores); the result does not depend on it")
        ->check(CLI::Range(1, 256));

    try {
        app.parse(count, words);
        if (!mode.empty()) options.Mode = mode == "marker" ? MODE_MARKER : MODE_SAMPLE;
        if (!reflections.empty()) {
            try {
                options.Rules.Reflections = ParseReflections(reflections);
            } catch (const Fault& fault) {
                throw CLI::ValidationError("--reflections", fault.what());
            }
        }
        options.Rules.DropOutliers = outliers == "drop";
        if (!temperature.empty()) TakeTemperature(temperature, options);
        options.DefaultCalibration = calibration == "default";
        if (!twoTheta.empty()) options.TwoTheta = PositiveNumber("--two-theta", twoTheta);
        if (!pickup.empty()) options.Pickup = PositiveNumber("--pickup", pickup);
        options.AutoBg = bg == "auto";
        if (!bg.empty() && !options.AutoBg) options.BgCoefficient = PositiveNumber("--bg-coefficient", bg);
        if (!width.empty()) options.PeakWidth = PositiveNumber("--peak-width", width);
        if (!smooth.empty())
            options.Smooth = smooth == "off" ? -1 : (static_cast<int>(Number(smooth)) - 5) / 2;
        options.Format = format == "json"  ? BatchFormat::Json
                         : format == "csv" ? BatchFormat::Csv
                                           : BatchFormat::Table;
        if (options.Crystal.empty() && (options.Mode || !options.Rules.Reflections.empty()))
            throw CLI::ValidationError("--crystal", "is needed for --mode and --reflections");
    } catch (const CLI::ParseError& error) {
        std::ostringstream out;
        std::ostringstream err;
        const int code = app.exit(error, out, err);
        return {.Options = std::nullopt, .Text = out.str() + err.str(), .Status = code == 0 ? 0 : 2};
    }
    return {.Options = std::move(options), .Text = {}, .Status = 0};
}

std::string FindDataFolder(const std::string& asked, const std::string& program) {
    namespace fs = std::filesystem;
    if (!asked.empty()) return asked;
    std::error_code none;
    const fs::path beside = fs::canonical(program, none).parent_path();
    for (const fs::path& folder : {beside, beside / "data", beside / "../share/vael",
                                   fs::path(VAEL_SHARED_DATA), fs::path(VAEL_TREE_DATA)})
        if (fs::exists(folder / "crystal.dat", none)) return folder.lexically_normal().string();
    return {};
}

}  // namespace vael
