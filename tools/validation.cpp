// How far the answers can be trusted: the spectra, the road, the sums and the document.
#include "validation.h"

#include "simulation.h"

#include "batch/pool.h"
#include "batch/report.h"
#include "batch/road.h"
#include "core/text.h"
#include "lattice/geometry.h"
#include "lattice/pressure.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <numeric>

namespace vael::tools {
namespace {

struct Condition {
    const char* Marker;
    double Pressure;     // GPa
    double Temperature;  // K
    double Height;       // counts of the strongest line
};

// Each marker cold and lightly pressed, in the middle, and hot and far. Strong lines throughout, as
// of a spectrum that a user would take a pressure from.
constexpr Condition CONDITIONS[] = {
    {"NACL", 0.5, 300, 12000}, {"NACL", 3, 700, 12000}, {"NACL", 8, 1100, 12000},
    {"Au", 1, 300, 20000},     {"Au", 10, 1000, 20000}, {"Au", 20, 1800, 20000},
    {"Pt", 2, 300, 16000},     {"Pt", 12, 1000, 16000}, {"Pt", 22, 1700, 16000},
    {"MgO", 1, 300, 16000},    {"MgO", 8, 1000, 16000}, {"MgO", 20, 1600, 16000},
    {"hBN", 0.3, 300, 25000},  {"hBN", 1, 900, 25000},  {"hBN", 2, 1300, 25000}};

SampleRecipe RecipeOf(const Condition& c, std::uint64_t seed) {
    SampleRecipe recipe;
    recipe.File = "validation";
    recipe.Marker = c.Marker;
    recipe.Pressure = c.Pressure;
    recipe.Temperature = c.Temperature;
    recipe.TwoTheta = 7.0;
    recipe.Height = c.Height;
    recipe.BackLow = 40.0;
    recipe.BackHigh = 180.0;
    recipe.Seed = seed;
    return recipe;
}

/// What came of one spectrum, against its truth; pulls are differences over the stated errors.
struct Answer {
    bool There = false;
    double CellPull = 0.0;  // of a; of c for hBN, whose scale asks for it
    double PressurePull = 0.0;
    double PressureOff = 0.0;  // GPa
    double PressureError = 0.0;
};

std::string AnswerBytes(const Answer& answer) {
    std::vector<std::string> texts{answer.There ? "1" : ""};
    for (const double value :
         {answer.CellPull, answer.PressurePull, answer.PressureOff, answer.PressureError})
        texts.push_back(NumberText(value));
    return Pack(texts);
}

Answer AnswerOf(const std::string& bytes) {
    const std::vector<std::string> texts = Unpack(bytes);
    return {.There = !texts.at(0).empty(),
            .CellPull = Number(texts.at(1)),
            .PressurePull = Number(texts.at(2)),
            .PressureOff = Number(texts.at(3)),
            .PressureError = Number(texts.at(4))};
}

/// A folder for spectra on their way to the road's reader, gone with the object.
class Scratch {
public:
    Scratch()
        : path_(std::filesystem::temp_directory_path() /
                ("vael-validate-" +
                 std::to_string(std::filesystem::hash_value(std::filesystem::current_path())))) {
        std::filesystem::create_directories(path_);
    }
    ~Scratch() {
        std::error_code none;
        std::filesystem::remove_all(path_, none);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    [[nodiscard]] std::string Path(const std::string& name) const {
        return (path_ / name).string();
    }

private:
    std::filesystem::path path_;
};

Answer Reduced(const Condition& condition, std::uint64_t seed, bool express,
               const std::string& dataFolder, const std::string& file) {
    const SimulatedSpectrum truth = Simulate(RecipeOf(condition, seed));
    std::ofstream(file, std::ios::binary) << NpdText(truth);
    BatchOptions options;
    options.Crystal = condition.Marker;
    options.Express = express;
    options.Pickup = truth.Pickup;
    Road road(options, dataFolder);
    const RoadResult result = road.Go(file);
    std::filesystem::remove(file);
    Answer answer;
    if (result.Status != "ok" || !result.Cell || !result.Cell->Pressure) return answer;
    const std::size_t axis = std::string_view(condition.Marker) == "hBN" ? 2 : 0;
    const LatticeValues& v = *result.Cell;
    if (!(v.CellError[axis] > 0.0) || v.Pressure->Error == 0.0) return answer;
    answer.There = true;
    answer.CellPull = (v.CellNow[axis] - truth.MarkerCell[axis]) / v.CellError[axis];
    answer.PressureOff = v.Pressure->P - condition.Pressure;
    answer.PressureError = std::fabs(v.Pressure->Error);
    answer.PressurePull = answer.PressureOff / answer.PressureError;
    return answer;
}

std::string Fixed(double value, int decimals) {
    std::string format = "0";
    if (decimals > 0) format += "." + std::string(static_cast<std::size_t>(decimals), '0');
    return FormatNumber(value, format);
}

std::string WithError(double value, double error, int decimals) {
    return Fixed(value, decimals) + " ± " + Fixed(error, decimals);
}

std::string Row(const std::vector<std::string>& cells) {
    std::string out = "|";
    for (const std::string& cell : cells) out += " " + cell + " |";
    return out + "\n";
}

double MedianOf(std::vector<double> values) {
    if (values.empty()) return 0.0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// One line of the table of simulated spectra.
std::string SimulatedRow(const Condition& c, const char* fitter,
                         const std::vector<Answer>& answers) {
    std::vector<double> cell;
    std::vector<double> pressure;
    std::vector<double> off;
    std::vector<double> error;
    for (const Answer& answer : answers) {
        if (!answer.There) continue;
        cell.push_back(answer.CellPull);
        pressure.push_back(answer.PressurePull);
        off.push_back(answer.PressureOff);
        error.push_back(answer.PressureError);
    }
    const Pulls cells = PullsOf(cell);
    const Pulls pressures = PullsOf(pressure);
    const Pulls gpa = PullsOf(off);
    return Row(
        {c.Marker, Fixed(c.Pressure, 1), Fixed(c.Temperature, 0), fitter,
         std::to_string(cells.Count) + " of " + std::to_string(answers.size()),
         WithError(cells.Mean, cells.MeanError, 2), WithError(cells.Width, cells.WidthError, 2),
         WithError(pressures.Mean, pressures.MeanError, 2),
         WithError(pressures.Width, pressures.WidthError, 2), std::to_string(pressures.BeyondThree),
         WithError(gpa.Mean, gpa.MeanError, 3), Fixed(MedianOf(error), 3)});
}

std::string SimulatedTable(const ValidationOptions& options) {
    const Scratch scratch;
    const int conditions = static_cast<int>(std::size(CONDITIONS));
    const int each = 2 * options.Spectra;  // both fitters
    std::vector<std::vector<Answer>> answers(static_cast<std::size_t>(2 * conditions));
    const auto job = [&](int index) {
        const Condition& condition = CONDITIONS[index / each];
        const int which = index % each;
        const auto seed = options.Seed + static_cast<std::uint64_t>(which / 2) +
                          1000ULL * static_cast<std::uint64_t>(index / each);
        return AnswerBytes(Reduced(condition, seed, which % 2 == 1, options.DataFolder,
                                   scratch.Path(std::to_string(index) + ".npd")));
    };
    const auto take = [&](int index, const std::string& bytes, const std::string& lost) {
        const auto at = static_cast<std::size_t>(2 * (index / each) + index % 2);
        answers[at].push_back(lost.empty() ? AnswerOf(bytes) : Answer{});
    };
    constexpr int JOBS_A_WORKER = 500;
    (void)RunPool(options.Workers, conditions * each, JOBS_A_WORKER, job, take);

    std::string out =
        Row({"Marker", "P / GPa", "T / K", "Fitter", "Results", "Cell: mean", "width",
             "Pressure: mean", "width", "beyond 3", "P - true / GPa", "stated error / GPa"});
    out += "|---|---|---|---|---|---|---|---|---|---|---|---|\n";
    for (int k = 0; k < conditions; ++k)
        for (int fitter = 0; fitter < 2; ++fitter)
            out += SimulatedRow(CONDITIONS[k], fitter == 0 ? "NAX" : "Express",
                                answers[static_cast<std::size_t>(2 * k + fitter)]);
    return out;
}

/// A measured spectrum, and what is known of it.
struct KnownAnswer {
    const char* File;
    const char* Crystal;
    const char* Reflections;  // empty: all
    const char* What;
    std::size_t Axis;  // of the cell; 6: the pressure
    double Value;
    double Within;
};

constexpr const char* CERIA_LINES = "1 1 1,2 0 0,2 2 0,3 1 1,2 2 2,4 0 0,3 3 1,4 2 0,4 2 2,5 1 1";
constexpr const char* CORUNDUM_LINES = "0 1 2,1 0 4,1 1 3,0 2 4,1 1 6,3 0 0";
constexpr KnownAnswer KNOWN[] = {
    {"AuWire.npd", "Au", "", "a / Å", 0, 4.0786, 0.0004},
    {"AuWire.npd", "Au", "", "P / GPa", 6, 0.0, 0.1},
    {"CeO2H.npd", "CeO2", CERIA_LINES, "a / Å", 0, 5.4115, 0.0003},
    {"TiCH.npd", "TiC", "", "a / Å", 0, 4.3172, 0.0008},
    {"Al2O3_d0.npd", "Al2O3", CORUNDUM_LINES, "a / Å", 0, 4.7610, 0.0015},
    {"Al2O3_d0.npd", "Al2O3", CORUNDUM_LINES, "c / Å", 2, 12.996, 0.004},
    {"MgO_0019_d0.npd", "MgO", "2 0 0,2 2 0", "a / Å", 0, 4.162, 0.002},
    {"MgO_0043_d0.npd", "MgO", "2 0 0,2 2 0", "a / Å", 0, 4.185, 0.002},
    {"T0345MgO.npd", "MgO", "2 0 0,2 2 0", "a / Å", 0, 4.211, 0.003},
    {"T0345MgO.npd", "Fe", "1 1 0,2 0 0,2 1 1", "a / Å", 0, 2.864, 0.002}};

std::string MeasuredTable(const ValidationOptions& options) {
    std::string out = Row({"File", "Crystal", "What", "Fitter", "Found", "Known", "Off"});
    out += "|---|---|---|---|---|---|---|\n";
    for (const KnownAnswer& known : KNOWN) {
        for (const bool express : {false, true}) {
            BatchOptions call;
            call.Crystal = known.Crystal;
            call.Express = express;
            if (*known.Reflections != '\0')
                call.Rules.Reflections = ParseReflections(known.Reflections);
            Road road(call, options.DataFolder);
            const RoadResult result = road.Go(options.Measured + "/" + known.File);
            const bool pressure = known.Axis == 6;
            std::string found = result.Status;
            std::string off;
            const int decimals = pressure ? 2 : 4;
            if (result.Cell && (!pressure || result.Cell->Pressure)) {
                const double value =
                    pressure ? result.Cell->Pressure->P : result.Cell->CellNow[known.Axis];
                const double error =
                    pressure ? result.Cell->Pressure->Error : result.Cell->CellError[known.Axis];
                found = WithError(value, std::fabs(error), decimals);
                off = Fixed(value - known.Value, decimals);
            }
            out += Row({known.File, known.Crystal, known.What, express ? "Express" : "NAX", found,
                        WithError(known.Value, known.Within, decimals), off});
        }
    }
    return out;
}

/// A published point of a scale.
struct PublishedPoint {
    const char* Scale;
    double (*Pressure)(double x, double kelvin);
    double X, Kelvin, GPa;
};

double PtVinetByVolume(double x, double kelvin) {
    return PressurePtVinet(std::cbrt(x), kelvin - 273.0);  // whose 300 K is 27 C
}

constexpr PublishedPoint PUBLISHED[] = {
    {"NaCl, Decker 1971", PressureNaClDecker, 0.8096, 298.15, 8.393},
    {"NaCl, Decker 1971", PressureNaClDecker, 0.7050, 298.15, 19.412},
    {"Pt, Jamieson et al. 1982", PressurePtJamieson, 0.90, 300, 37.65},
    {"Pt, Jamieson et al. 1982", PressurePtJamieson, 0.90, 1000, 42.21},
    {"Pt, Jamieson et al. 1982", PressurePtJamieson, 0.90, 1500, 45.49},
    {"Pt, Jamieson et al. 1982", PressurePtJamieson, 0.85, 300, 67.54},
    {"Pt, Jamieson et al. 1982", PressurePtJamieson, 0.85, 1000, 72.09},
    {"Pt, Jamieson et al. 1982", PressurePtJamieson, 0.85, 1500, 75.37},
    {"Au, Anderson et al. 1989", PressureAuAnderson, 0.90, 300, 23.44},
    {"Au, Anderson et al. 1989", PressureAuAnderson, 0.90, 1000, 27.59},
    {"Au, Anderson et al. 1989", PressureAuAnderson, 0.90, 2000, 33.51},
    {"Au, Anderson et al. 1989", PressureAuAnderson, 0.80, 300, 68.53},
    {"Au, Anderson et al. 1989", PressureAuAnderson, 0.80, 1000, 71.73},
    {"Au, Anderson et al. 1989", PressureAuAnderson, 0.80, 2000, 76.30},
    {"Pt, Holmes et al. 1989 (Vinet)", PtVinetByVolume, 0.90, 300, 37.907},
    {"MgO, Jamieson et al. 1982", PressureMgOTable, 0.90, 300, 20.67},
    {"MgO, Jamieson et al. 1982", PressureMgOTable, 0.90, 1000, 24.31},
    {"MgO, Jamieson et al. 1982", PressureMgOTable, 0.90, 1500, 27.17},
    {"MgO, Jamieson et al. 1982", PressureMgOTable, 0.80, 300, 57.22},
    {"MgO, Jamieson et al. 1982", PressureMgOTable, 0.80, 1000, 60.75},
    {"MgO, Jamieson et al. 1982", PressureMgOTable, 0.80, 1500, 63.58}};

std::string PublishedTable() {
    std::string out = Row({"Scale", "V/V0", "T / K", "Published / GPa", "Here / GPa", "Off"});
    out += "|---|---|---|---|---|---|\n";
    for (const PublishedPoint& point : PUBLISHED) {
        const double here = point.Pressure(point.X, point.Kelvin);
        out += Row({point.Scale, Fixed(point.X, 4), Fixed(point.Kelvin, 0), Fixed(point.GPa, 3),
                    Fixed(here, 3), Fixed(here - point.GPa, 3)});
    }
    return out;
}

}  // namespace

Pulls PullsOf(const std::vector<double>& values) {
    Pulls out;
    out.Count = static_cast<int>(values.size());
    if (values.empty()) return out;
    const auto n = static_cast<double>(values.size());
    out.Mean = std::accumulate(values.begin(), values.end(), 0.0) / n;
    for (const double value : values) out.BeyondThree += std::fabs(value) > 3.0 ? 1 : 0;
    if (values.size() < 2) return out;
    double squares = 0.0;
    for (const double value : values) squares += (value - out.Mean) * (value - out.Mean);
    out.Width = std::sqrt(squares / (n - 1.0));
    out.MeanError = out.Width / std::sqrt(n);
    out.WidthError = out.Width / std::sqrt(2.0 * (n - 1.0));
    return out;
}

std::string ValidationText(const ValidationOptions& options) {
    std::string out =
        "# How far the answers can be trusted\n\n"
        "    cmake --preset release && cmake --build --preset release --target vael-validate\n"
        "    build/release/bin/vael-validate --data data --measured ../shared/data > "
        "docs/validation.md\n\n"
        "Made by that command; the text between the tables stands in tools/validation.cpp.\n\n"
        "## Simulated spectra\n\n"
        "For each marker three conditions, " +
        std::to_string(options.Spectra) + " spectra of 4096 channels each, seeds from " +
        std::to_string(options.Seed) +
        ": lines as\nwide as a germanium detector makes them, 2theta 7 degrees, a background of 40 "
        "to 180 counts\nwith a hump, Poisson counts, nothing beside the marker. The cell at "
        "pressure and temperature\nis found by inverting the marker's own scale. Each spectrum "
        "goes the road of `vael-batch` with\nthe pick-up range that holds all lines of the marker "
        "and outliers dropped by the rule.\n\n"
        "A *pull* is recovered minus true over the stated error: mean 0 and width 1 is a stated "
        "error that\ntells the truth. Cell is a, for hBN c, whose scale asks for it. *Beyond 3*: "
        "pressures more than\nthree stated errors off. The last column is the median.\n\n";
    out += SimulatedTable(options);
    out +=
        "\nWhat limits them: the refinement does not weigh its rows, and in 1/d² the lines of the "
        "largest\nindices pull most, which are the weakest; the stated error knows only the "
        "scatter of the rows,\nso with few rows it is itself uncertain, and what all rows share "
        "(a line that is always drawn\naside by its neighbour, smoothing, a foreign peak on a "
        "reflection) it cannot know. Widths above 1\nare that. The errors in GPa are what counts "
        "for a pressure; compare them with the spread between\ntwo scales, which is larger than "
        "any of them.\n\n"
        "## Measured spectra\n\n";
    if (!options.Measured.empty() && std::filesystem::exists(options.Measured)) {
        out += MeasuredTable(options);
        out +=
            "\n*Known*: single Gaussians on straight backgrounds, and what those who measured "
            "them tell. The lines\nof ceria, corundum and magnesia that others cover are left out "
            "(`--reflections`), as a user unticks\nthem. What limits them: tails of the "
            "detector's lines, of which the Express regions take only the\ntop; drift with the "
            "dead time (T0345MgO, 26 %); two lines alone (MgO_*).\n\n";
    } else {
        out += "They were not there when this was made.\n\n";
    }
    out += "## Scales against published points\n\n";
    out += PublishedTable();
    out +=
        "\nThe scales' coefficients are their authors'; what is off is the rounding of the "
        "published tables and,\nfor NaCl, the stepping of the Debye integral (a part in ten "
        "thousand).\n";
    return out;
}

}  // namespace vael::tools
