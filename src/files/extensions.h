// The extension table: which file is read and written by what.
#pragma once

#include "files/filevael.h"

#include <functional>
#include <span>
#include <string>

namespace vael {

/// What a writer takes.
struct WriteSource {
    const SpectrumData& Data;
    const PropertyRecord& Prop;
    const PeakTable& Peaks;
};

struct FileKind {
    const char* Extension;  // lower case; "###" stands for an extension of digits only
    const char* Name;
    /// nullptr where the form is not read.
    std::int16_t (*Read)(const std::string& path, ReadTarget target, PeakTable& peaks,
                         const FileTalk& talk);
    /// nullptr where the form is not written.
    std::int16_t (*Write)(const std::string& path, const WriteSource& source, const FileTalk& talk);
};

/// All forms; no extension stands twice.
[[nodiscard]] std::span<const FileKind> FileKinds();

/// Reads a file by the kind that its extension names; digits only are the native binary form. -1 on
/// success; 0 on failure and for an unknown extension, silently but for the log.
std::int16_t ReadByExtension(const std::string& path, ReadTarget target, PeakTable& peaks,
                             const FileTalk& talk);

/// The kind that a path's extension names, in small or capital letters; nullptr for an unknown one.
[[nodiscard]] const FileKind* KindOf(const std::string& path);

}  // namespace vael
