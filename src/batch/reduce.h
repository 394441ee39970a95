// Reduces the files of a call: standard output, pages, and the table and picture of a run.
#pragma once

#include "batch/options.h"

#include <string>

namespace vael {

/// Reduces the files that the call names, or those of its folder as they arrive, and returns the
/// status to end with: 0 when every file gave a result, 1 when some did not, 2 for a wrong call.
/// An interrupt ends a run after the files that are under way. Faults: FileAccess, Argument.
int Reduce(const BatchOptions& options, const std::string& program);

}  // namespace vael
