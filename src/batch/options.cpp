// What the batch program is asked to do: its command line as a record.
#include "batch/options.h"

#include "batch/call.h"
#include "core/fault.h"
#include "core/text.h"
#include "lattice/latticecalc.h"

#include <filesystem>

namespace vael {
namespace {

constexpr const char* FOOTER = R"(
Each spectrum goes the road of the window: smoothed, freed of its background, fitted without
help, matched to the crystal, refined to a cell, and, with a pressure marker, turned
into a pressure. Spectra: .npd, .rpt, .cnf, .xbm, .raw, .xba, .chn, .gsa, and .xbm under
numeric extensions.
"vael-batch convert --help" tells how to write them in another form.

Examples:
  vael-batch --crystal Au run/*.npd
  vael-batch --crystal CeO2 --reflections "1 1 1,2 0 0,2 2 0" --format json CeO2H.npd
  vael-batch --crystal MgO --temperature 810.3K --out pages MgO_0019_d0.npd
  vael-batch --crystal Au --run heating --against time run/*.npd
  vael-batch --crystal NaCl --run night --watch incoming

Exit status: 0 when every file gave a result, 1 when some did not (each is named with its reason),
2 for a wrong call.)";

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
        throw CLI::ValidationError("--temperature",
                                   "a number with C or K behind it was expected, "
                                   "not \"" +
                                       text + "\"");
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

namespace {

/// Options as they are typed, before they are understood.
struct Typed {
    std::string Mode, Reflections, Temperature, Bg, Width, Pickup, TwoTheta, Smooth;
    std::string Outliers = "drop";
    std::string Calibration = "file";
    std::string Format;
    std::string Fit = "nax";
    std::string Shape;
    std::string Against = "number";
    int Threshold = 0;  // 0: the program's own
};

void AddLatticeOptions(CLI::App& app, Typed& typed, BatchOptions& options) {
    app.add_option("--crystal", options.Crystal,
                   "Crystal of crystal.dat by its key or its full name, the first match; without "
                   "it only the peaks are fitted");
    app.add_option("--mode", typed.Mode,
                   "sample or marker (default: marker when the key has a pressure scale)")
        ->check(CLI::IsMember({"sample", "marker"}));
    app.add_option("--reflections", typed.Reflections,
                   "Only these reflections take part, such as \"2 0 0,2 2 0\"");
    app.add_option("--outliers", typed.Outliers,
                   "drop: leave out doubled and foreign peaks as a careful user does; keep: use "
                   "all rows")
        ->check(CLI::IsMember({"keep", "drop"}))
        ->capture_default_str();
    app.add_option("--temperature", typed.Temperature,
                   "Temperature of the marker with C or K behind it, such as 27C or 300K "
                   "(default: the spectrum's own)");
    app.add_option("--two-theta", typed.TwoTheta,
                   "Diffraction angle 2 theta in degrees (default: the spectrum's own)");
    app.add_option("--calibration", typed.Calibration,
                   "file: each spectrum's own energy polynomial; default: the one of the "
                   "parameter file")
        ->check(CLI::IsMember({"file", "default"}))
        ->capture_default_str();
    app.add_option("--pickup", typed.Pickup,
                   "Half width in angstrom of d within which a reflection takes a peak (default "
                   "0.03)");
}

void AddFitOptions(CLI::App& app, Typed& typed) {
    app.add_option("--fit", typed.Fit,
                   "nax: groups of Gaussians by least squares; express: each peak in its own "
                   "region by Poisson likelihood")
        ->check(CLI::IsMember({"nax", "express"}))
        ->capture_default_str();
    app.add_option("--threshold", typed.Threshold,
                   "Express: peak threshold of the search, 1 (few peaks) to 20 (many; default 10)")
        ->check(CLI::Range(1, 20));
    app.add_option("--shape", typed.Shape, "Express: shape of a peak (default gauss)")
        ->check(CLI::IsMember({"gauss", "lorentz", "mix"}));
    app.add_option(
        "--bg-coefficient", typed.Bg,
        "NAX: how strong a peak's curvature must be (default 0.2); auto sets it from the "
        "spectrum's median count");
    app.add_option("--peak-width", typed.Width,
                   "NAX: peak width in channels for the search (default 20)");
    app.add_option("--smooth", typed.Smooth, "Smoothing points, or off (default 5)")
        ->check(CLI::IsMember({"5", "7", "9", "11", "off"}));
}

void AddRunOptions(CLI::App& app, Typed& typed, BatchOptions& options) {
    app.add_option("FILE", options.Files, "Spectra to reduce");
    app.add_option("--data", options.DataFolder, "Folder of crystal.dat and the parameter files")
        ->check(CLI::ExistingDirectory);
    app.add_option("--out", options.OutFolder,
                   "Folder that receives for each file its peak list (CSV) and its page (SVG)");
    app.add_option("--format", typed.Format,
                   "Result on standard output: table, csv or json (default table; with --run none)")
        ->check(CLI::IsMember({"table", "csv", "json"}));
    app.add_option("--jobs", options.Jobs,
                   "Worker processes (default: all cores); the result does not depend on it")
        ->check(CLI::Range(1, 256));
}

void AddTableOptions(CLI::App& app, Typed& typed, BatchOptions& options) {
    app.add_option(
           "--run", options.Run,
           "Writes the table STEM.csv with a row for each spectrum, and the picture STEM.svg "
           "of pressure, temperature, volume and cell")
        ->type_name("STEM");
    app.add_option("--against", typed.Against, "Run: what stands across the picture")
        ->check(CLI::IsMember({"number", "time"}))
        ->capture_default_str();
    app.add_option("--watch", options.Watch,
                   "Run: reduces the spectra of this folder as they arrive, each once, until "
                   "interrupted; a table that is there is gone on with")
        ->check(CLI::ExistingDirectory)
        ->type_name("DIR");
    app.add_option("--settle", options.Settle,
                   "Watch: seconds that a file must have stood unchanged to count as complete")
        ->check(CLI::Range(0.1, 3600.0))
        ->capture_default_str();
    app.add_flag("--force", options.Force, "Run: replaces a table that is there");
}

void TakeReflections(const std::string& text, BatchOptions& options) {
    try {
        options.Rules.Reflections = ParseReflections(text);
    } catch (const Fault& fault) {
        throw CLI::ValidationError("--reflections", fault.what());
    }
}

/// The fitter and its own options; one that the chosen fitter does not read is refused.
void TakeFitter(const Typed& typed, BatchOptions& options) {
    options.Express = typed.Fit == "express";
    if (options.Express && !typed.Bg.empty())
        throw CLI::ValidationError("--bg-coefficient", "is read by --fit nax only");
    if (options.Express && !typed.Width.empty())
        throw CLI::ValidationError("--peak-width", "is read by --fit nax only");
    if (!options.Express && typed.Threshold != 0)
        throw CLI::ValidationError("--threshold", "is read by --fit express only");
    if (!options.Express && !typed.Shape.empty())
        throw CLI::ValidationError("--shape", "is read by --fit express only");
    if (typed.Threshold != 0) options.Threshold = static_cast<std::int16_t>(typed.Threshold);
    if (!typed.Shape.empty())
        options.Shape = typed.Shape == "gauss"     ? SHAPE_GAUSS
                        : typed.Shape == "lorentz" ? SHAPE_LORENTZ
                                                   : SHAPE_MIX;
}

void Understand(const Typed& typed, BatchOptions& options) {
    TakeFitter(typed, options);
    if (!typed.Mode.empty()) options.Mode = typed.Mode == "marker" ? MODE_MARKER : MODE_SAMPLE;
    if (!typed.Reflections.empty()) TakeReflections(typed.Reflections, options);
    options.Rules.DropOutliers = typed.Outliers == "drop";
    if (!typed.Temperature.empty()) TakeTemperature(typed.Temperature, options);
    options.DefaultCalibration = typed.Calibration == "default";
    if (!typed.TwoTheta.empty()) options.TwoTheta = PositiveNumber("--two-theta", typed.TwoTheta);
    if (!typed.Pickup.empty()) options.Pickup = PositiveNumber("--pickup", typed.Pickup);
    options.AutoBg = typed.Bg == "auto";
    if (!typed.Bg.empty() && !options.AutoBg)
        options.BgCoefficient = PositiveNumber("--bg-coefficient", typed.Bg);
    if (!typed.Width.empty()) options.PeakWidth = PositiveNumber("--peak-width", typed.Width);
    if (typed.Smooth == "off")
        options.Smooth = -1;
    else if (!typed.Smooth.empty())
        options.Smooth = (static_cast<int>(Number(typed.Smooth)) - 5) / 2;  // 5, 7, 9, 11 points
    options.Format = typed.Format == "json"                         ? BatchFormat::Json
                     : typed.Format == "csv"                        ? BatchFormat::Csv
                     : typed.Format.empty() && !options.Run.empty() ? BatchFormat::None
                                                                    : BatchFormat::Table;
    options.Against = typed.Against == "time" ? RunAxis::Time : RunAxis::Number;
    if (options.Run.empty() && !options.Watch.empty())
        throw CLI::ValidationError("--watch", "needs --run, the table to write");
    if (options.Run.empty() && options.Force)
        throw CLI::ValidationError("--force", "needs --run, the table to replace");
    if (!options.Watch.empty() && !options.Files.empty())
        throw CLI::ValidationError("--watch", "takes the files of its folder, not FILE");
    if (options.Watch.empty() && options.Files.empty()) throw CLI::RequiredError("FILE");
    if (options.Crystal.empty() && (options.Mode || !options.Rules.Reflections.empty()))
        throw CLI::ValidationError("--crystal", "is needed for --mode and --reflections");
}

}  // namespace

BatchCall ReadCall(int count, const char* const* words) {
    BatchOptions options;
    Typed typed;
    CLI::App app{
        "vael-batch reduces energy-dispersive diffraction spectra to peaks, cell and pressure."};
    app.footer(FOOTER);
    app.set_version_flag("--version", "vael-batch " VAEL_VERSION);
    AddLatticeOptions(app, typed, options);
    AddFitOptions(app, typed);
    AddRunOptions(app, typed, options);
    AddTableOptions(app, typed, options);
    return CallOf<BatchCall>(app, options, [&] {
        app.parse(count, words);
        Understand(typed, options);
    });
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
