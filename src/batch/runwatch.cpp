// Files as they arrive in a folder: each is looked at until it no longer changes.
#include "batch/runwatch.h"

#include "core/fault.h"
#include "files/extensions.h"

#include <filesystem>

namespace vael {

std::vector<std::string> Arrivals::Next(double now,
                                        const std::function<bool(const std::string&)>& done) {
    constexpr double HELD_BACK = 10.0;  // times as long
    namespace fs = std::filesystem;
    for (auto& [file, seen] : seen_) seen.There = false;
    std::error_code trouble;
    for (fs::directory_iterator at(folder_, trouble), end; !trouble && at != end;
         at.increment(trouble)) {
        const std::string file = at->path().string();
        if (at->path().filename().string().starts_with('.'))
            continue;  // written under a cover name
        const FileKind* kind = KindOf(file);
        if (kind == nullptr || kind->Read == nullptr || done(file)) continue;
        std::error_code gone;  // between the listing and here
        if (!at->is_regular_file(gone)) continue;
        const std::uintmax_t size = at->file_size(gone);
        const std::int64_t changed =
            gone ? 0 : at->last_write_time(gone).time_since_epoch().count();
        if (gone) continue;
        Seen& seen = seen_[file];
        const bool first = seen.Since == 0.0 && seen.Size == 0 && seen.Changed == 0;
        if (first || seen.Size != size || seen.Changed != changed)
            seen = {.Size = size,
                    .Changed = changed,
                    .Since = now,
                    .HeldBack = false,
                    .WasHeldBack = seen.WasHeldBack,
                    .There = true};
        seen.There = true;
    }
    if (trouble)
        throw Fault(FaultNumber::FileAccess,
                    folder_ + ": the folder cannot be listed: " + trouble.message() + ".");
    std::erase_if(seen_, [&](const auto& entry) { return !entry.second.There; });
    std::vector<std::string> complete;
    for (const auto& [file, seen] : seen_) {
        const double wait = seen.HeldBack ? HELD_BACK * settle_ : settle_;
        if (seen.Size > 0 && now - seen.Since >= wait) complete.push_back(file);
    }
    return complete;
}

bool Arrivals::HoldBack(const std::string& file) {
    const auto found = seen_.find(file);
    if (found == seen_.end() || found->second.WasHeldBack) return false;
    found->second.HeldBack = true;
    found->second.WasHeldBack = true;
    return true;
}

}  // namespace vael
