// The run of batch printing: file after file is read, fitted where that is wanted, and printed.
#include "display/batchprintcommands.h"

#include "core/fault.h"
#include "core/folders.h"
#include "core/frmlog.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/operations.h"
#include "core/params.h"
#include "core/quietdesk.h"
#include "core/store.h"
#include "core/text.h"
#include "core/wholefile.h"
#include "core/windows.h"
#include "display/frmbatchprint.h"
#include "display/frmprint.h"
#include "toolkit/hand.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <memory>
#include <optional>

namespace vael {
namespace {

namespace fs = std::filesystem;

/// Whether bytes are UTF-8 by the number of bytes that each first one asks for.
bool IsUtf8(std::string_view bytes) {
    for (std::size_t i = 0; i < bytes.size();) {
        const auto lead = static_cast<unsigned char>(bytes[i]);
        std::size_t more = 0;
        if (lead >= 0xC2 && lead <= 0xDF)
            more = 1;
        else if (lead >= 0xE0 && lead <= 0xEF)
            more = 2;
        else if (lead >= 0xF0 && lead <= 0xF4)
            more = 3;
        else if (lead >= 0x80)
            return false;
        if (i + more >= bytes.size()) return false;
        for (std::size_t k = 1; k <= more; ++k)
            if ((static_cast<unsigned char>(bytes[i + k]) & 0xC0U) != 0x80U) return false;
        i += more + 1;
    }
    return true;
}

/// One run.
struct Run {
    std::vector<std::string> Files;
    bool Fit = false;
    int Printed = 0;
    int Pages = 0;
    std::vector<std::string> Troubles;  // "name: why", of files that were not printed as wanted
    std::string PrinterTrouble;
};

std::string Joined(const std::vector<std::string>& texts) {
    std::string out;
    for (const std::string& text : texts) out += (out.empty() ? "" : "; ") + text;
    return out;
}

/// The chosen files with their folder; nothing, and a message, where there are none.
std::optional<std::vector<std::string>> ChosenFiles() {
    const BatchPrintView& v = frmBatchPrint;
    const bool list = v.chkXli.Value != 0;
    const std::string text = Trim(list ? v.txtXliName.Text : v.txtSelFile.Text);
    if (text.empty()) {
        Say("Please input file name");
        return std::nullopt;
    }
    const fs::path folder(v.Folder);
    std::vector<std::string> files;
    if (list) {
        try {
            files = FilesOfList((folder / text).string());
        } catch (const Fault& trouble) {
            TellStatus(std::string("Nothing was printed: ") + trouble.what(), true);
            Say(trouble.what(), "Batch Print");
            return std::nullopt;
        }
    } else {
        for (const std::string& name : NamesIn(text, v.filFiles))
            files.push_back((folder / name).string());
    }
    if (files.empty()) {
        Say("There is no name in " + text + ".", "Batch Print");
        return std::nullopt;
    }
    return files;
}

/// Like the open command, for one file and without its dialog. The reason of a failure, or nothing.
/// `notes` receives what was wrong although there is a row to print.
std::string LoadAndFit(const std::string& path, bool fit, std::string& notes) {
    QuietDesk quiet;
    std::vector<std::string> logged;
    OnLogLine([&](const std::string& line) { logged.push_back(line); });
    std::string reason;
    try {
        RemoveAllRows();
        store.AreaFitDone = FALSE_WORD;
        cmdOperationInit();
        std::int16_t ok = FALSE_WORD;
        ReadGraph(0, 0, path, ok);
        if (ok != TRUE_WORD)
            reason = !logged.empty()       ? logged.front()
                     : !quiet.Said.empty() ? Joined(quiet.Said)
                                           : path + " could not be read.";
        else if (fit)
            NaxAreaFit(GetRealWinNo(), GraphNo());
        if (ok == TRUE_WORD && fit && store.AreaFitDone != TRUE_WORD)
            notes = "printed without a fit: " + Joined(quiet.Said);
    } catch (const std::exception& trouble) {
        if (Item(store.GraphList, 0).State == 0)
            reason = trouble.what();
        else
            notes = std::string("printed without a fit: ") + trouble.what();
    }
    OnLogLine({});
    return reason;
}

/// Puts the row that was read on the next pages of the job; false when the printer failed.
bool PrintRow(PrintJob& job, Run& run, std::string& reason) {
    const auto next = [&] {
        if (run.Pages > 0 && !job.NextPage()) return false;
        ++run.Pages;
        return true;
    };
    try {
        const PageData pages = MainPage(frmPrint.GetDrawWidth());
        if (!next()) return false;
        Canvas canvas(job.Page());
        const bool fine = DrawPages(canvas, Engine(), pages, next);
        if (fine) ++run.Printed;
        return fine;
    } catch (const std::exception& trouble) {  // a calibration that gives no axis, for one
        reason = trouble.what();
        return true;
    }
}

void Tell(const std::string& name, const std::string& words) {
    std::string& text = frmBatchPrint.txtResult.Text;
    text += (text.empty() ? "" : "\r\n") + name + ": " + words;
}

/// All files in turn, until the printer fails or the user stops.
void PrintFiles(PrintJob& job, Run& run) {
    BatchPrintView& v = frmBatchPrint;
    const std::string total = std::to_string(run.Files.size());
    for (std::size_t i = 0; i < run.Files.size(); ++i) {
        const std::string name = SplitFilePath(run.Files[i]).Base();
        v.lblProgress.Caption = std::to_string(i + 1) + " of " + total + "  " + name;
        TellStatus("Printing " + v.lblProgress.Caption);
        TheDesk().Breathe();
        if (v.Stopping) break;
        std::string notes;
        std::string reason = LoadAndFit(run.Files[i], run.Fit, notes);
        if (reason.empty() && !PrintRow(job, run, reason)) {
            run.PrinterTrouble = "the printer failed on page " + std::to_string(run.Pages + 1);
            Tell(name, run.PrinterTrouble);
            break;
        }
        if (!reason.empty())
            run.Troubles.push_back(name + ": " + reason);
        else if (!notes.empty())
            run.Troubles.push_back(name + ": " + notes);
        Tell(name, !reason.empty() ? reason : notes.empty() ? "printed" : notes);
    }
}

/// The view is locked as long as it lives.
class LockedView {
public:
    LockedView() { frmBatchPrint.Running(true); }
    ~LockedView() { frmBatchPrint.Running(false); }
    LockedView(const LockedView&) = delete;
    LockedView& operator=(const LockedView&) = delete;
};

/// The end of a run, in the status line and, where something was wrong, in a box.
void TellEnd(const Run& run, bool stopped, const PrintOrder& order) {
    const auto files = run.Files.size();
    std::string text = std::to_string(run.Printed) + " of " + std::to_string(files) +
                       (files == 1 ? " file" : " files") + " printed on " + PlaceOf(order);
    if (stopped) text += "; the run was stopped";
    if (!run.PrinterTrouble.empty()) text += "; " + run.PrinterTrouble + " and the job was ended";
    text += ".";
    frmBatchPrint.lblProgress.Caption = text;
    const bool trouble = !run.Troubles.empty() || !run.PrinterTrouble.empty();
    TellStatus("Batch print: " + text, trouble);
    if (!trouble) return;
    for (const std::string& each : run.Troubles) text += "\n" + each;
    Say(text, "Batch Print");
}

}  // namespace

std::vector<std::string> FilesOfList(const std::string& path) {
    std::ifstream in = OpenToRead(path);
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    const fs::path folder = fs::path(path).parent_path();
    std::vector<std::string> files;
    std::string text = IsUtf8(bytes) ? bytes : FromCp932(bytes);
    constexpr std::string_view MARK = "\xEF\xBB\xBF";
    if (text.starts_with(MARK)) text.erase(0, MARK.size());
    for (std::size_t from = 0; from <= text.size();) {
        const std::size_t to = std::min(text.find('\n', from), text.size());
        std::string name = Trim(text.substr(from, to - from));
        from = to + 1;
        while (!name.empty() && name.back() == '\r') name = Trim(name.substr(0, name.size() - 1));
        if (name.empty()) continue;
        std::replace(name.begin(), name.end(), '\\', PATH_SEPARATOR);
        files.push_back((folder / name).string());
    }
    return files;
}

void cmdPrintStart_Click() {
    BatchPrintView& v = frmBatchPrint;
    Run run;
    run.Fit = store.AreaFitDone == TRUE_WORD;
    auto files = ChosenFiles();
    if (!files || CheckNoSave() == TRUE_WORD) return;
    run.Files = std::move(*files);
    const auto order = AskPrint({.Title = v.Caption,
                                 .Name = SplitFilePath(run.Files.front()).Name + "_batch",
                                 .Draw = nullptr});
    if (!order) return TellStatus("Nothing was printed.");
    const auto job = TheDesk().StartPrintJob(*order);
    if (!job) return TellNotStarted(*order);

    // The rows that were asked about go with the first file, without a second question.
    for (GraphEntry& entry : store.GraphList)
        if (entry.State == 2) entry.State = 1;
    v.txtResult.Text.clear();
    bool stopped = false;
    {
        const LockedView locked;
        PrintFiles(*job, run);
        stopped = v.Stopping;
    }
    if (run.PrinterTrouble.empty() && run.Pages > 0 && !job->End())
        run.PrinterTrouble = "the printer failed on page " + std::to_string(run.Pages);
    v.ShowFit();
    TellEnd(run, stopped, *order);
}

}  // namespace vael
