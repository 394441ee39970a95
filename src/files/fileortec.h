// FileOrtec: the binary spectrum .chn of Ortec analysers, read only.
#pragma once

#include "files/filevael.h"

#include <istream>
#include <string>

namespace vael {

/// -1. Name, date, times and the kind of file stay as the slot had them. Unlike the other readers
/// it has no trap of its own: Faults FileMissing, FileAccess and FileContent go to the caller. A
/// file that ends early reads as zeros from there on, with a line of the log.
std::int16_t LoadChn(const std::string& path, ReadTarget target, const FileTalk& talk = {});

/// The same from a stream; `note` gets a sentence about an input that ends early, or that has more
/// channels than a spectrum. Faults: FileContent for a negative number of channels, nothing
/// changed.
void ReadChnBody(std::istream& in, ReadTarget target, std::string* note = nullptr);

}  // namespace vael
