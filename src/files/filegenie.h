// FileGenie: the two forms that the dialogs call "Gennie File": .rpt, and .cnf that is only read.
#pragma once

#include "core/records.h"
#include "core/talk.h"
#include "files/filevael.h"

#include <istream>
#include <ostream>
#include <string>

namespace vael {

// Each gives -1 on success and 0 on failure; the reason, naming the file and the line or offset,
// goes to `talk.log`.

/// `.rpt`, a text. Asks before it replaces a file.
std::int16_t SaveRpt(const std::string& path, const SpectrumData& data, const PropertyRecord& prop,
                     const FileTalk& talk = {});
std::int16_t LoadRpt(const std::string& path, ReadTarget target, const FileTalk& talk = {});

/// `.cnf`, binary, always 4096 channels. Not silent: "Fine NotFound" for a missing file and "File
/// Error" for every other failure go to `talk.say`.
std::int16_t LoadCnf(const std::string& path, ReadTarget target, const FileTalk& talk = {});

/// Faults: Subscript for more than 8192 channels.
void WriteRptText(std::ostream& out, const SpectrumData& data, const PropertyRecord& prop);
/// Faults: FileContent naming the line. The channels then hold what came before the error; channel
/// count and record are as they were.
void ReadRptText(std::istream& in, ReadTarget target);
/// Faults: FileContent naming the offset at which the input ends. The target is then untouched.
void ReadCnfBody(std::istream& in, ReadTarget target);

}  // namespace vael
