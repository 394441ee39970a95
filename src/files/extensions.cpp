// The extension table: which file is read and written by what.
#include "files/extensions.h"

#include "core/text.h"
#include "files/filenpd.h"

#include <algorithm>

namespace vael {
namespace {

std::int16_t ReadXbm(const std::string& path, ReadTarget target, PeakTable&, const FileTalk& talk) {
    return LoadXbm(path, target, talk);
}

std::int16_t ReadNpd(const std::string& path, ReadTarget target, PeakTable&, const FileTalk& talk) {
    return LoadNpd(path, target, talk);
}

constexpr std::array<FileKind, 5> KINDS{{{"###", "native binary counts", ReadXbm},
                                         {"xbm", "native binary", ReadXbm},
                                         {"xba", "native binary with peak table", LoadXba},
                                         {"xta", "native text, written only", nullptr},
                                         {"npd", "Nippon high Pressure Data", ReadNpd}}};

}  // namespace

std::span<const FileKind> FileKinds() { return KINDS; }

std::int16_t ReadByExtension(const std::string& path, ReadTarget target, PeakTable& peaks,
                             const FileTalk& talk) {
    const std::string own = LowerCase(SplitFilePath(path).Ext);
    const std::string extension = IsAllDigits(own) ? "###" : own;
    const auto kind = std::find_if(KINDS.begin(), KINDS.end(), [&](const FileKind& k) {
        return k.Read != nullptr && extension == k.Extension;
    });
    if (kind != KINDS.end()) return kind->Read(path, target, peaks, talk);
    std::string known;
    for (const FileKind& k : KINDS)
        if (k.Read != nullptr)
            known += (known.empty() ? "" : ", ") +
                     std::string(k.Extension == std::string_view("###") ? "digits" : k.Extension);
    talk.log(path + ": an extension that can be read was expected (" + known + "), not \"" + own +
             "\".");
    return FALSE_WORD;
}

}  // namespace vael
