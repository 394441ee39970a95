// vael-batch: reduces many spectra to peaks, cell and pressure with no window.
#include "batch/convert.h"
#include "batch/options.h"
#include "batch/pool.h"
#include "batch/report.h"
#include "batch/road.h"
#include "core/fault.h"
#include "core/text.h"
#include "core/wholefile.h"

#include <unistd.h>  // is standard error a terminal
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <set>
#include <thread>

namespace {

using namespace vael;

constexpr int JOBS_A_WORKER = 500;

/// Names of the files in the output folder, one for each spectrum, all different.
std::vector<std::string> OutNames(const BatchOptions& options) {
    std::vector<std::string> names;
    std::set<std::string> taken;
    for (const std::string& file : options.Files) {
        const std::string base = SplitFilePath(file).Base();
        std::string name = base;
        for (int n = 2; !taken.insert(name).second; ++n) name = base + "-" + std::to_string(n);
        names.push_back(name);
    }
    return names;
}

/// What a worker hands over: status, JSON object, CSV row, then the cells of the table.
std::string Packed(const RoadResult& result) {
    std::vector<std::string> texts{result.Status, JsonObject(result), CsvRow(result)};
    for (std::string& cell : TableCells(result)) texts.push_back(std::move(cell));
    return Pack(texts);
}

/// Results on standard output, in the order of the files.
class Printer {
public:
    Printer(const BatchOptions& options) : options_(options) {
        if (options_.Format == BatchFormat::Json) std::cout << "[";
        if (options_.Format == BatchFormat::Csv) std::cout << CsvHead();
    }
    void Take(int index, const std::string& bytes, const std::string& lost) {
        std::vector<std::string> texts = Unpack(lost.empty() ? bytes : Lost(index, lost));
        allFine_ = allFine_ && texts[0] == "ok";
        if (texts[0] != "ok" && options_.Format != BatchFormat::Table)
            std::cerr << options_.Files[static_cast<std::size_t>(index)] << ": " << texts[0] << ": "
                      << texts.back() << "\n";
        switch (options_.Format) {
            case BatchFormat::Json: std::cout << (index == 0 ? "\n" : ",\n") << texts[1]; break;
            case BatchFormat::Csv: std::cout << texts[2]; break;
            case BatchFormat::Table: rows_.emplace_back(texts.begin() + 3, texts.end()); break;
        }
    }
    int Finish() {
        if (options_.Format == BatchFormat::Json) std::cout << "\n]\n";
        if (options_.Format == BatchFormat::Table) std::cout << TableText(rows_);
        std::cout.flush();
        if (!std::cout) {
            std::cerr << "vael-batch: standard output cannot be written.\n";
            return 1;
        }
        return allFine_ ? 0 : 1;
    }

private:
    std::string Lost(int index, const std::string& reason) const {
        RoadResult result;
        result.File = options_.Files[static_cast<std::size_t>(index)];
        result.Status = "fault";
        result.Message = reason;
        return Packed(result);
    }
    const BatchOptions& options_;
    std::vector<std::vector<std::string>> rows_;
    bool allFine_ = true;
};

class Progress {
public:
    explicit Progress(std::size_t total) : total_(total), on_(::isatty(STDERR_FILENO) == 1) {}
    void Tell(int done) const {
        if (on_) std::cerr << "\r" << done << " of " << total_ << " spectra" << std::flush;
    }
    void End() const {
        if (on_) std::cerr << "\r\x1b[K" << std::flush;
    }

private:
    std::size_t total_;
    bool on_;
};

/// The first page as STEM.svg, the next ones as STEM.2.svg and so on.
void WritePages(const std::string& stem, const std::vector<std::string>& pages) {
    for (std::size_t k = 0; k < pages.size(); ++k)
        ReplaceFile(stem + (k == 0 ? "" : "." + std::to_string(k + 1)) + ".svg", pages[k]);
}

std::string RunOne(const BatchOptions& options, const std::string& folder,
                   const std::vector<std::string>& names, int index) {
    static std::optional<Road> road;  // of this worker process
    if (!road) road.emplace(options, folder);
    const auto at = static_cast<std::size_t>(index);
    RoadResult result = road->Go(options.Files[at]);
    if (!options.OutFolder.empty() && result.Status != "unreadable") {
        try {
            const std::string stem = options.OutFolder + "/" + names[at];
            ReplaceFile(stem + ".peaks.csv", PeakCsv(result));
            WritePages(stem, road->Pages(result));
        } catch (const Fault& fault) {
            result.Status = "fault";
            result.Message += (result.Message.empty() ? "" : "; ") + std::string(fault.what());
        }
    }
    return Packed(result);
}

int Reduce(const BatchOptions& options, const std::string& program) {
    const std::string folder = FindDataFolder(options.DataFolder, program);
    if (!options.Crystal.empty()) {
        if (folder.empty()) {
            std::cerr << "vael-batch: there is no crystal.dat; name its folder with --data.\n";
            return 2;
        }
        const Road trial(options, folder);  // a wrong crystal is told once, not for each file
    }
    if (!options.OutFolder.empty()) std::filesystem::create_directories(options.OutFolder);
    const int count = static_cast<int>(options.Files.size());
    const int jobs = options.Jobs > 0
                         ? options.Jobs
                         : static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
    const std::vector<std::string> names = OutNames(options);
    Printer printer(options);
    const Progress progress(options.Files.size());
    std::cout.flush();
    RunPool(
        jobs, count, JOBS_A_WORKER,
        [&](int index) { return RunOne(options, folder, names, index); },
        [&](int index, const std::string& bytes, const std::string& lost) {
            printer.Take(index, bytes, lost);
        },
        [&](int done) { progress.Tell(done); });
    progress.End();
    return printer.Finish();
}

int RunConvert(int count, char** words) {
    const ConvertCall call = ReadConvertCall(count, words);
    if (call.Options) return Convert(*call.Options, std::cout, std::cerr);
    (call.Status == 0 ? std::cout : std::cerr) << call.Text;
    return call.Status;
}

}  // namespace

int main(int count, char** words) {
    if (count > 1 && words[1] == std::string_view("convert")) {
        try {
            return RunConvert(count, words);
        } catch (const std::exception& trouble) {
            std::cerr << "vael-batch: " << trouble.what() << "\n";
            return 2;
        }
    }
    const BatchCall call = ReadCall(count, words);
    if (!call.Options) {
        (call.Status == 0 ? std::cout : std::cerr) << call.Text;
        return call.Status;
    }
    try {
        return Reduce(*call.Options, "/proc/self/exe");
    } catch (const std::exception& trouble) {
        std::cerr << "vael-batch: " << trouble.what() << "\n";
        return 2;
    }
}
