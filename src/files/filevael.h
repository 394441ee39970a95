// FileVael: the system's own spectrum files .xbm, .xba and .xta, and the export .csv.
#pragma once

#include "core/records.h"
#include "core/talk.h"
#include "files/packed.h"

#include <istream>
#include <ostream>
#include <string>

namespace vael {

/// Where a reader puts what it reads: the slot's spectrum and record, and the process-wide word for
/// the kind of file read last. The axis of DAC spectra is process-wide too; only the reader of
/// `.raw` sets it, where there is one to set.
struct ReadTarget {
    SpectrumData& Data;
    PropertyRecord& Prop;
    std::int16_t& LastSourceType;
    double* DacOffset = nullptr;  // degrees
    double* DacSlope = nullptr;   // degrees a channel
};

// Every reader and writer gives -1 on success and 0 on failure. Failures are silent here (no
// message box): the reason, naming the file and the line or offset, goes to `talk.log`.

/// `.xbm`. Asks before it replaces a file, except the scratch file "temp00.xbm" and paths that end
/// in a digit. An existing longer file keeps its tail behind the new image.
std::int16_t SaveXbm(const std::string& path, const SpectrumData& data, const PropertyRecord& prop,
                     const FileTalk& talk = {});
/// `.xba`: the same image and, when RecordValid is 1, the peak table. Always asks.
std::int16_t SaveXba(const std::string& path, const SpectrumData& data, const PropertyRecord& prop,
                     const PeakTable& peaks, const FileTalk& talk = {});
/// `.xta`, a short text; `peaks` is accepted and not used. Never asks.
std::int16_t SaveXta(const std::string& path, const SpectrumData& data, const PropertyRecord& prop,
                     const PeakTable& peaks, const FileTalk& talk = {});

/// `.csv`, for other programs; there is no reader. Never asks; an error is also said in a box.
std::int16_t SaveCsv(const std::string& path, const SpectrumData& data, const PropertyRecord& prop,
                     const FileTalk& talk = {});

std::int16_t LoadXbm(const std::string& path, ReadTarget target, const FileTalk& talk = {});
/// Keeps its file open to the end of the process: this reader, as it was settled, never closes.
std::int16_t LoadXba(const std::string& path, ReadTarget target, PeakTable& peaks,
                     const FileTalk& talk = {});
/// How many files LoadXba holds open in this process.
[[nodiscard]] int HeldXbaFiles();

/// The shared bodies on streams. Reading: a short input reads as zeros and blanks behind its end
/// and counts as read; `note` gets a sentence about it. Faults: FileContent for more than 8192
/// channels (record read, spectrum untouched).
void ReadXbmBody(std::istream& in, ReadTarget target, std::string* note = nullptr);
void WriteXbmBody(std::ostream& out, const SpectrumData& data, const PropertyRecord& prop);
/// The same with the peak block behind it; a block that is not there, or a negative number of
/// peaks, reads as no peaks. Faults: FileContent for more than 100 peaks.
void ReadXbaBody(std::istream& in, ReadTarget target, PeakTable& peaks,
                 std::string* note = nullptr);
void WriteXbaBody(std::ostream& out, const SpectrumData& data, const PropertyRecord& prop,
                  const PeakTable& peaks);
void WriteCsvText(std::ostream& out, const SpectrumData& data, const PropertyRecord& prop);
void WriteXtaText(std::ostream& out, const SpectrumData& data, const PropertyRecord& prop);

/// The measure block of 584 bytes: ParamRecord without its tail.
void ReadParamBlock(PackedReader& in, ParamRecord& param);
void WriteParamBlock(PackedWriter& out, const ParamRecord& param);

}  // namespace vael
