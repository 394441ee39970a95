// The extension table: which file is read and written by what.
#pragma once

#include "files/filevael.h"

#include <functional>
#include <span>
#include <string>

namespace vael {

struct FileKind {
    const char* Extension;  // lower case; "###" stands for an extension of digits only
    const char* Name;
    /// nullptr where the form is only written.
    std::int16_t (*Read)(const std::string& path, ReadTarget target, PeakTable& peaks,
                         const FileTalk& talk);
};

/// In the order in which an extension is compared when reading.
[[nodiscard]] std::span<const FileKind> FileKinds();

/// Reads a file by the kind that its extension names; digits only are the native binary form. -1 on
/// success; 0 on failure and for an unknown extension, silently but for the log.
std::int16_t ReadByExtension(const std::string& path, ReadTarget target, PeakTable& peaks,
                             const FileTalk& talk);

}  // namespace vael
