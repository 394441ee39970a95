// vael-batch convert: spectra from any form that is read into one that is written.
#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace vael {

struct ConvertOptions {
    std::string To;  // extension of the written form, such as "npd"
    std::string OutFolder;
    std::vector<std::string> Files;
    bool Force = false;  // replace files that exist
};

/// What came of reading a command line: options, or a text to print and the status to end with.
struct ConvertCall {
    std::optional<ConvertOptions> Options;
    std::string Text;
    int Status = 0;
};

/// words[0] is the program, words[1] the word "convert".
[[nodiscard]] ConvertCall ReadConvertCall(int count, const char* const* words);

/// The name of the file that comes of an input: its own with the new extension. An extension of
/// digits numbers a sequence and stays: "run.003" becomes "run.003.npd".
[[nodiscard]] std::string ConvertedName(const std::string& file, const std::string& to);

/// Converts; written names go to `out`, remarks and refusals to `err`. 0 when every file was
/// converted, 1 when some were not, 2 when nothing was begun (two inputs of one name, no folder).
[[nodiscard]] int Convert(const ConvertOptions& options, std::ostream& out, std::ostream& err);

}  // namespace vael
