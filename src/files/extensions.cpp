// The extension table: which file is read and written by what.
#include "files/extensions.h"

#include "core/text.h"
#include "files/filenpd.h"

namespace vael {
namespace {

constexpr std::array<FileKind, 5> KINDS{{{"###", "native binary counts", true, false},
                                         {"xbm", "native binary", true, true},
                                         {"xba", "native binary with peak table", true, true},
                                         {"xta", "native text", false, true},
                                         {"npd", "Nippon high Pressure Data", true, true}}};

}  // namespace

std::span<const FileKind> FileKinds() { return KINDS; }

std::int16_t ReadByExtension(const std::string& path, ReadTarget target, PeakTable& peaks,
                             const FileTalk& talk) {
    const std::string extension = LowerCase(SplitFilePath(path).Ext);
    if (IsAllDigits(extension) || extension == "xbm") return LoadXbm(path, target, talk);
    if (extension == "xba") return LoadXba(path, target, peaks, talk);
    if (extension == "npd") return LoadNpd(path, target, talk);
    talk.log(path + ": an extension that can be read was expected (npd, xbm, xba or digits), not \"" +
             extension + "\".");
    return FALSE_WORD;
}

}  // namespace vael
