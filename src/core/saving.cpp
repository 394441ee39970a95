// Saving the current graph: the proposal of a name, the dialog, and the writer by the extension.
#include "core/saving.h"

#include "core/fault.h"
#include "core/frmlog.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/store.h"
#include "core/text.h"
#include "files/extensions.h"
#include "files/frmproperty.h"
#include "toolkit/desk.h"

#include <algorithm>

namespace vael {
namespace {

constexpr const char* SAVE_FILTER =
    "Nippon high Pressure Data file (*.npd)|*.npd|Gennie File (*.rpt)|*.rpt|"
    "Express File (*.xbm)|*.xbm|Excel File (*.csv)|*.csv|GSAS File (*.gsa)|*.gsa";

/// What a writer said and asked while it ran.
struct Heard {
    std::string LastLine;
    bool Kept = false;  // the user keeps the file that is there
};

FileTalk Listening(Heard& heard) {
    const FileTalk desk = DeskFileTalk();
    return {.ask =
                [&heard, desk](std::string_view question) {
                    const bool yes = desk.ask(question);
                    heard.Kept = !yes;
                    return yes;
                },
            .say = desk.say,
            .log =
                [&heard, desk](std::string_view line) {
                    heard.LastLine = line;
                    desk.log(line);
                }};
}

std::string SuffixFor(const std::string& name) {
    if (name == NAME_FIT) return "FIT";
    if (name == NAME_SMOOTH) return "SMT";
    if (name == NAME_REMOVED) return "RMD";
    if (name == NAME_BACKGROUND) return "BAK";
    return "RAW";
}

/// Nothing was written for want of a writer.
void TellWritten(const GraphEntry& entry, const PathPieces& to, bool done, const Heard& heard) {
    if (done)
        TellStatus("Saved " + entry.Name + " as " + to.Base() + " in " + to.Drive + to.Folder +
                   ".");
    else if (heard.Kept)
        TellStatus("Not saved: " + to.Base() + " is kept as it was.");
    else
        TellStatus("Not saved: " + (heard.LastLine.empty() ? to.Base() : heard.LastLine), true);
}

}  // namespace

FileTalk DeskFileTalk() {
    return {.ask = [](std::string_view question) { return AskYesNo(std::string(question)); },
            .say = [](std::string_view text) { Say(std::string(text)); },
            .log = [](std::string_view line) { PutLog(std::string(line)); }};
}

int FilterIndexFor(std::string_view filter) {
    const auto bars = static_cast<int>(std::count(filter.begin(), filter.end(), '|'));
    const int index = store.FilterIndex;
    return index >= 1 && index <= (bars + 1) / 2 ? index : 1;
}

std::string ProposeName(int row) {
    for (const GraphEntry& entry : store.GraphList) {
        if (entry.State > 0 && IsDerivedName(entry.Name)) continue;
        if (entry.State == 0 || entry.Name.empty()) return {};
        return entry.Name.substr(0, entry.Name.find('.')) + "_" +
               SuffixFor(Item(store.GraphList, row).Name);
    }
    return {};
}

void FileSave() {
    const int row = GetGrpNo();
    GraphEntry& entry = Item(store.GraphList, row);
    if (entry.State == 0) {
        Say("No Data");
        return;
    }
    const auto chosen = TheDesk().SaveFile({.Title = "Save",
                                            .Filter = SAVE_FILTER,
                                            .FilterIndex = FilterIndexFor(SAVE_FILTER),
                                            .Folder = store.DataDrive + store.DataFolder,
                                            .Name = ProposeName(row)});
    if (!chosen) return;
    const std::string& path = chosen->Paths.front();
    const PathPieces pieces = SplitLocalPath(path);
    store.FilterIndex = static_cast<std::int16_t>(chosen->FilterIndex);
    store.DataDrive = pieces.Drive;
    store.DataFolder = pieces.Folder;

    PropertyRecord& prop = Item(store.PropertyRecords, entry.DataNo);
    prop.RecordValid = 0;
    prop.FileName = pieces.Name;
    prop.RecordValid = 1;
    RefreshProperty();

    const FileKind* kind = KindOf(path);
    if (kind == nullptr || kind->Write == nullptr) {
        TellStatus("Not saved: " + pieces.Base() + " has no extension of a form that is written.",
                   true);
        return;
    }
    Heard heard;
    const WriteSource source{.Data = Item(store.SpectrumDatas, entry.DataNo),
                             .Prop = prop,
                             .Peaks = Item(store.PeakTables, entry.DataNo)};
    const bool done = kind->Write(path, source, Listening(heard)) == TRUE_WORD;
    if (done) entry.State = 1;
    TellWritten(entry, pieces, done, heard);
}

}  // namespace vael
