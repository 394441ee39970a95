// FileDAC: "DAC File (*.raw)", a text of an angle and a count a line, that is only read.
#pragma once

#include "core/talk.h"
#include "files/filevael.h"

#include <istream>
#include <string>

namespace vael {

/// -1 on success, 0 on failure. Silent but for the log, which also tells when the file leaves the
/// slot's channel count as it was. The angle axis goes to the target's `DacOffset` and `DacSlope`.
std::int16_t LoadDac(const std::string& path, ReadTarget target, const FileTalk& talk = {});

/// `note` gets a sentence about what the file did not give. Faults: FileContent naming the line.
/// The channels then hold what came before the error; channel count, record and axis are as they
/// were.
void ReadDacText(std::istream& in, ReadTarget target, std::string* note = nullptr);

}  // namespace vael
