// Whole files: opening with a reason when it fails, and replacing so that a file is whole or old.
#pragma once

#include <fstream>
#include <string>
#include <string_view>

namespace vael {

/// Opens a regular file for binary reading. Faults: FileMissing, FileAccess, naming the file and
/// what is wrong with it (absent, a folder, no permission, no regular file).
[[nodiscard]] std::ifstream OpenToRead(const std::string& path);

/// True when something of that name exists.
[[nodiscard]] bool FileExists(const std::string& path);

/// Writes `bytes` as the file's new content by way of a file beside it, so that after a failure at
/// any moment the file is whole or old. A link is followed, the permissions are kept. With
/// `keepTail` the bytes of a longer old file that lie behind the new ones stay behind them. In
/// place instead of beside: what is no regular file, a file in a folder that takes no new ones, and
/// a tail that may not be read. Faults: FileAccess, naming the file and the reason.
void ReplaceFile(const std::string& path, std::string_view bytes, bool keepTail = false);

}  // namespace vael
