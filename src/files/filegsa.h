// FileGSA: the powder data file that the dialogs call "GSAS File (*.gsa)".
#pragma once

#include "files/filevael.h"

#include <istream>
#include <ostream>
#include <string>

namespace vael {

/// -1 on success, 0 on failure or when the user keeps the existing file. Silent but for the log.
std::int16_t SaveGsa(const std::string& path, const SpectrumData& data, const PropertyRecord& prop,
                     const FileTalk& talk = {});
/// Reads no file of SaveGsa but a text of the .npd grammar, as it was settled.
std::int16_t LoadGsa(const std::string& path, ReadTarget target, const FileTalk& talk = {});

/// Faults: Subscript where a divided spectrum's last line asks for a channel past the last one.
void WriteGsaText(std::ostream& out, const SpectrumData& data, const PropertyRecord& prop);
/// Faults: FileContent naming the line. The spectrum then holds what came before the error and the
/// record is as it was.
void ReadGsaText(std::istream& in, ReadTarget target);

}  // namespace vael
