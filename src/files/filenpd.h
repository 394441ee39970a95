// FileNPD: the text form that the dialogs call "Nippon high Pressure Data File (*.npd)".
#pragma once

#include "core/records.h"
#include "core/talk.h"
#include "files/filevael.h"

#include <istream>
#include <ostream>
#include <string>

namespace vael {

/// -1 on success, 0 on failure or when the user keeps the existing file. Silent but for the log.
std::int16_t SaveNpd(const std::string& path, const SpectrumData& data, const PropertyRecord& prop,
                     const FileTalk& talk = {});
std::int16_t LoadNpd(const std::string& path, ReadTarget target, const FileTalk& talk = {});

void WriteNpdText(std::ostream& out, const SpectrumData& data, const PropertyRecord& prop);
/// Faults: FileContent naming the line. The spectrum then holds what came before the error and the
/// record is as it was.
void ReadNpdText(std::istream& in, ReadTarget target);

}  // namespace vael
