// vael-batch convert: spectra from any form that is read into one that is written.
#include "batch/convert.h"

#include "batch/call.h"
#include "batch/pool.h"
#include "batch/report.h"
#include "core/fault.h"
#include "core/store.h"
#include "core/text.h"
#include "core/wholefile.h"
#include "files/extensions.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <thread>

namespace vael {
namespace {

constexpr const char* FOOTER = R"(
A file is read by its extension and written under its own name with the new one; an extension of
digits stays in the name, so that run.003 becomes run.003.npd. What each form keeps of a record
is told in docs/files.md.

Examples:
  vael-batch convert --to npd --out text run/*.chn
  vael-batch convert --to gsa --out . --force AuWire.xbm

Exit status: 0 when every file was converted, 1 when some were not (each is named with its reason),
2 for a wrong call, or for two inputs that would be written under one name (nothing is written).)";

constexpr int JOBS_A_WORKER = 500;  // the .xba reader keeps its files open

/// Two inputs of one output, each with its name; none when all differ.
std::optional<std::string> Clash(const ConvertOptions& options) {
    std::map<std::string, std::string> taken;
    for (const std::string& file : options.Files) {
        const std::string name = ConvertedName(file, options.To);
        const auto [other, fresh] = taken.emplace(name, file);
        if (!fresh)
            return other->second + " and " + file + " would both be written as " + name +
                   ": nothing was written.";
    }
    return std::nullopt;
}

/// The lines that a reader and a writer log on one file.
class Lines {
public:
    explicit Lines(bool replace) : replace_(replace) {}
    [[nodiscard]] FileTalk Talk() {
        return {.ask = [this](std::string_view) { return replace_; },
                .say = [this](std::string_view text) { said_ = text; },
                .log = [this](std::string_view line) { logged_.emplace_back(line); }};
    }
    /// Why a file was refused, naming it.
    [[nodiscard]] std::string Reason(const std::string& file) const {
        if (!logged_.empty()) return logged_.back();
        return file + ": " + (said_.empty() ? "it was refused without a reason." : said_);
    }
    [[nodiscard]] const std::vector<std::string>& Logged() const { return logged_; }

private:
    bool replace_;
    std::string said_;
    std::vector<std::string> logged_;
};

/// What came of one file: why it was refused, or nothing, and remarks on the way.
struct Came {
    std::string Trouble;
    std::string Remarks;
};

/// One file goes the road of opening and saving in slot 0, as in the window: the record takes the
/// new file's name and is valid.
Came ConvertOne(const ConvertOptions& options, const std::string& file, const std::string& path) {
    // Its own form may keep less than the file holds, and the spectrum is nowhere else.
    if (std::error_code none; std::filesystem::equivalent(file, path, none))
        return {file + ": it would be written over itself; --out takes another folder.", {}};
    if (!options.Force && FileExists(path))
        return {file + ": " + path + " exists; --force replaces it.", {}};
    constexpr int SLOT = 0;
    ClearProperty(SLOT);
    ClearSpectrum(SLOT);
    SpectrumData& data = Item(store.SpectrumDatas, SLOT);
    PropertyRecord& prop = Item(store.PropertyRecords, SLOT);
    PeakTable& peaks = Item(store.PeakTables, SLOT) = PeakTable{};

    Lines lines(options.Force);
    const FileTalk talk = lines.Talk();
    if (ReadByExtension(file, {data, prop, store.LastSourceType}, peaks, talk) != TRUE_WORD)
        return {lines.Reason(file), {}};
    if (data.DataNo <= 0)
        return {
            lines.Logged().empty() ? file + ": the spectrum has no channels." : lines.Reason(file),
            {}};
    prop.FileName = SplitFilePath(path).Name;
    prop.RecordValid = 1;
    if (KindOf(path)->Write(path, {data, prop, peaks}, talk) != TRUE_WORD)
        return {file + ": " + lines.Reason(path), {}};
    Came came;
    for (const std::string& line : lines.Logged()) came.Remarks += line + "\n";
    return came;
}

}  // namespace

ConvertCall ReadConvertCall(int count, const char* const* words) {
    ConvertOptions options;
    CLI::App app{"vael-batch convert writes spectra in another form."};
    app.name("vael-batch convert");
    app.footer(FOOTER);
    app.add_option("--to", options.To, "Form to write: npd, xbm, rpt, csv or gsa")
        ->required()
        ->check(CLI::IsMember({"npd", "xbm", "rpt", "csv", "gsa"}));
    app.add_option("--out", options.OutFolder, "Folder that receives the files")->required();
    app.add_flag("--force", options.Force, "Replace files that exist");
    app.add_option("FILE", options.Files, "Spectra to convert")->required();
    return CallOf<ConvertCall>(app, options, [&] {
        app.parse(count - 1, words + 1);
        const FileKind* kind = KindOf("x." + options.To);
        if (kind == nullptr || kind->Write == nullptr)
            throw CLI::ValidationError("--to", "\"" + options.To + "\" is not written");
    });
}

std::string ConvertedName(const std::string& file, const std::string& to) {
    const PathPieces pieces = SplitFilePath(file);
    return (IsAllDigits(pieces.Ext) ? pieces.Base() : pieces.Name) + "." + to;
}

int Convert(const ConvertOptions& options, std::ostream& out, std::ostream& err) {
    if (const auto clash = Clash(options)) {
        err << "vael-batch: " << *clash << "\n";
        return 2;
    }
    std::error_code failed;
    std::filesystem::create_directories(options.OutFolder, failed);
    if (!std::filesystem::is_directory(options.OutFolder)) {
        err << "vael-batch: " << options.OutFolder << ": "
            << (failed ? failed.message() : "it is no folder") << ".\n";
        return 2;
    }
    const auto path = [&](int index) {
        const std::string name = ConvertedName(Item(options.Files, index), options.To);
        return (std::filesystem::path(options.OutFolder) / name).string();
    };
    bool all = true;
    out.flush();
    err.flush();  // workers begin with empty buffers
    RunPool(
        static_cast<int>(std::max(1U, std::thread::hardware_concurrency())),
        static_cast<int>(options.Files.size()), JOBS_A_WORKER,
        [&](int index) {
            const Came came = ConvertOne(options, Item(options.Files, index), path(index));
            return Pack({came.Trouble, came.Remarks});
        },
        [&](int index, const std::string& bytes, const std::string& lost) {
            const std::string& file = Item(options.Files, index);
            const auto texts =
                lost.empty() ? Unpack(bytes) : std::vector<std::string>{file + ": " + lost, {}};
            err << texts[1];
            if (texts[0].empty())
                out << path(index) << "\n";
            else
                err << texts[0] << "\n";
            all = all && texts[0].empty();
        },
        [](int) {});
    out.flush();
    if (!out) {
        err << "vael-batch: standard output cannot be written.\n";
        return 1;
    }
    return all ? 0 : 1;
}

}  // namespace vael
