// Reduces the files of a call: jobs for the workers, what is printed, and the run's table.
#include "batch/reduce.h"

#include "batch/pool.h"
#include "batch/report.h"
#include "batch/road.h"
#include "batch/runtable.h"
#include "batch/runwatch.h"
#include "core/fault.h"
#include "core/text.h"
#include "core/wholefile.h"

#include <unistd.h>  // is standard error a terminal
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <set>
#include <thread>

namespace vael {
namespace {

constexpr int JOBS_A_WORKER = 500;
constexpr auto LOOK_AGAIN = std::chrono::milliseconds(200);

volatile std::sig_atomic_t interrupted = 0;

/// Names of the files in the output folder, one for each spectrum, all different.
std::vector<std::string> OutNames(const std::vector<std::string>& files) {
    std::vector<std::string> names;
    std::set<std::string> taken;
    for (const std::string& file : files) {
        const std::string base = SplitFilePath(file).Base();
        std::string name = base;
        for (int n = 2; !taken.insert(name).second; ++n) name = base + "-" + std::to_string(n);
        names.push_back(name);
    }
    return names;
}

/// What a worker hands over of one file.
struct Outcome {
    std::string Status, Json, Csv, Time;
    bool Remarked = false;  // its reader had something to say
    std::vector<std::string> Cells;

    [[nodiscard]] static Outcome Of(const RoadResult& result) {
        return {.Status = result.Status,
                .Json = JsonObject(result),
                .Csv = CsvRow(result),
                .Time = result.Time,
                .Remarked = result.Remarked,
                .Cells = TableCells(result)};
    }
    [[nodiscard]] static Outcome Lost(const std::string& file, const std::string& reason) {
        RoadResult result;
        result.File = file;
        result.Status = "fault";
        result.Message = reason;
        return Of(result);
    }
    [[nodiscard]] std::string Bytes() const {
        std::vector<std::string> texts{Status, Json, Csv, Time, Remarked ? "1" : ""};
        texts.insert(texts.end(), Cells.begin(), Cells.end());
        return Pack(texts);
    }
    [[nodiscard]] static Outcome From(const std::string& bytes) {
        const std::vector<std::string> t = Unpack(bytes);
        return {.Status = t.at(0),
                .Json = t.at(1),
                .Csv = t.at(2),
                .Time = t.at(3),
                .Remarked = !t.at(4).empty(),
                .Cells = {t.begin() + 5, t.end()}};
    }
};

/// Results on standard output, in the order of the files; those that are none on standard error.
class Printer {
public:
    explicit Printer(BatchFormat format) : format_(format) {
        if (format_ == BatchFormat::Json) std::cout << "[";
        if (format_ == BatchFormat::Csv) std::cout << CsvHead();
    }
    void Take(const std::string& file, const Outcome& outcome) {
        allFine_ = allFine_ && outcome.Status == "ok";
        if (outcome.Status != "ok" && format_ != BatchFormat::Table)
            std::cerr << file << ": " << outcome.Status << ": " << outcome.Cells.back() << "\n";
        switch (format_) {
            case BatchFormat::Json: std::cout << (first_ ? "\n" : ",\n") << outcome.Json; break;
            case BatchFormat::Csv: std::cout << outcome.Csv; break;
            case BatchFormat::Table: rows_.push_back(outcome.Cells); break;
            case BatchFormat::None: break;
        }
        first_ = false;
    }
    int Finish() {
        if (format_ == BatchFormat::Json) std::cout << "\n]\n";
        if (format_ == BatchFormat::Table) std::cout << TableText(rows_);
        std::cout.flush();
        if (!std::cout) {
            std::cerr << "vael-batch: standard output cannot be written.\n";
            return 1;
        }
        return allFine_ ? 0 : 1;
    }

private:
    BatchFormat format_;
    std::vector<std::vector<std::string>> rows_;
    bool allFine_ = true;
    bool first_ = true;
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

/// An interrupt or a request to end is noted, and acted on between two files.
class InterruptNoted {
public:
    InterruptNoted() {
        struct sigaction noted {};
        noted.sa_handler = [](int) { interrupted = 1; };
        ::sigaction(SIGINT, &noted, &before_[0]);
        ::sigaction(SIGTERM, &noted, &before_[1]);
    }
    ~InterruptNoted() {
        ::sigaction(SIGINT, &before_[0], nullptr);
        ::sigaction(SIGTERM, &before_[1], nullptr);
    }
    InterruptNoted(const InterruptNoted&) = delete;
    InterruptNoted& operator=(const InterruptNoted&) = delete;

private:
    struct sigaction before_[2]{};
};

/// The first page as STEM.svg, the next ones as STEM.2.svg and so on.
void WritePages(const std::string& stem, const std::vector<std::string>& pages) {
    for (std::size_t k = 0; k < pages.size(); ++k)
        ReplaceFile(stem + (k == 0 ? "" : "." + std::to_string(k + 1)) + ".svg", pages[k]);
}

std::string RunOne(const BatchOptions& options, const std::string& folder, const std::string& file,
                   const std::string& name) {
    static std::optional<Road> road;  // of this worker process
    if (!road) road.emplace(options, folder);
    RoadResult result = road->Go(file);
    if (!options.OutFolder.empty() && result.Status != "unreadable") {
        try {
            const std::string stem = options.OutFolder + "/" + name;
            ReplaceFile(stem + ".peaks.csv", PeakCsv(result));
            WritePages(stem, road->Pages(result));
        } catch (const Fault& fault) {
            result.Status = "fault";
            result.Message += (result.Message.empty() ? "" : "; ") + std::string(fault.what());
        }
    }
    return Outcome::Of(result).Bytes();
}

int Workers(const BatchOptions& options) {
    return options.Jobs > 0 ? options.Jobs
                            : static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
}

/// Reduces the files side by side and hands over what came of each, in their order. How many were
/// reduced: fewer than there are where an interrupt was noted.
int ReduceFiles(const BatchOptions& options, const std::string& folder,
                const std::vector<std::string>& files,
                const std::function<void(const std::string&, const Outcome&)>& take) {
    const std::vector<std::string> names = OutNames(files);
    const auto at = [](const auto& list, int index) -> const std::string& {
        return list[static_cast<std::size_t>(index)];
    };
    const Progress progress(files.size());
    std::cout.flush();
    const int done = RunPool(
        Workers(options), static_cast<int>(files.size()), JOBS_A_WORKER,
        [&](int index) { return RunOne(options, folder, at(files, index), at(names, index)); },
        [&](int index, const std::string& bytes, const std::string& lost) {
            const std::string& file = at(files, index);
            take(file, lost.empty() ? Outcome::From(bytes) : Outcome::Lost(file, lost));
        },
        [&](int count) { progress.Tell(count); }, [] { return interrupted != 0; });
    progress.End();
    return done;
}

/// The table of a run, and its picture beside it.
class Run {
public:
    explicit Run(const BatchOptions& options)
        : options_(options),
          table_(options.Run + ".csv",
                 options.Force            ? OldTable::Replace
                 : !options.Watch.empty() ? OldTable::GoOn
                                          : OldTable::Refuse,
                 [](const std::string& line) { std::cerr << "vael-batch: " << line << "\n"; }) {}
    void Add(const std::string& file, const Outcome& outcome) {
        table_.Add(file, RunRow(FileNumber(file, table_.Rows() + 1), outcome.Time, outcome.Csv));
    }
    void Draw() const {
        std::ifstream in(table_.Path(), std::ios::binary);
        ReplaceFile(options_.Run + ".svg",
                    RunPicture(in, options_.Against, SplitFilePath(options_.Run).Base()));
    }
    [[nodiscard]] bool Has(const std::string& file) const { return table_.Has(file); }

private:
    const BatchOptions& options_;
    RunTable table_;
};

int ReduceRun(const BatchOptions& options, const std::string& folder) {
    const InterruptNoted noted;
    Run run(options);
    Printer printer(options.Format);
    const int done =
        ReduceFiles(options, folder, options.Files, [&](const auto& file, const Outcome& outcome) {
            printer.Take(file, outcome);
            run.Add(file, outcome);
        });
    run.Draw();
    const int status = printer.Finish();
    const auto left = options.Files.size() - static_cast<std::size_t>(done);
    if (left == 0) return status;
    std::cerr << "vael-batch: interrupted; spectra not reduced: " << left << ".\n";
    return 1;
}

double SecondsNow() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

int ReduceArrivals(const BatchOptions& options, const std::string& folder) {
    const InterruptNoted noted;
    Run run(options);
    run.Draw();
    Printer printer(options.Format);
    Arrivals arrivals(options.Watch, options.Settle);
    while (interrupted == 0) {
        const std::vector<std::string> files =
            arrivals.Next(SecondsNow(), [&](const std::string& file) { return run.Has(file); });
        if (files.empty()) {
            std::this_thread::sleep_for(LOOK_AGAIN);
            continue;
        }
        ReduceFiles(options, folder, files, [&](const std::string& file, const Outcome& outcome) {
            const bool whole = outcome.Status != "unreadable" && !outcome.Remarked;
            if (!whole && arrivals.HoldBack(file)) {
                std::cerr << file << ": " << outcome.Cells.back() << " (looked at again)\n";
                return;
            }
            printer.Take(file, outcome);
            run.Add(file, outcome);
        });
        run.Draw();
    }
    if (arrivals.Waiting())
        std::cerr << "vael-batch: interrupted; files were there that had not settled.\n";
    return printer.Finish();
}

}  // namespace

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
    if (!options.Watch.empty()) return ReduceArrivals(options, folder);
    if (!options.Run.empty()) return ReduceRun(options, folder);
    Printer printer(options.Format);
    ReduceFiles(options, folder, options.Files,
                [&](const auto& file, const Outcome& outcome) { printer.Take(file, outcome); });
    return printer.Finish();
}

}  // namespace vael
