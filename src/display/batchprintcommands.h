// The run of batch printing: file after file is read, fitted where that is wanted, and printed.
#pragma once

#include <string>
#include <vector>

namespace vael {

/// The paths that a list file names: a name a line, in UTF-8 or code page 932, beside the list
/// where it has no folder; "\\" separates folders too. Blank lines count nothing; a name that is no
/// file is there as well. Faults: FileMissing, FileAccess.
[[nodiscard]] std::vector<std::string> FilesOfList(const std::string& path);

/// Handler of "Print Start". The fit flag is read once, before the first file takes it back. One
/// job takes all pages. A file that cannot be read or fitted is named at the end, and the run goes
/// on; a printer that fails ends it. Messages: "Please input file name", "Printer not ready".
void cmdPrintStart_Click();

}  // namespace vael
