// FileOrtec: the binary spectrum .chn of Ortec analysers, read only.
#include "files/fileortec.h"

#include "core/fault.h"
#include "core/wholefile.h"

#include <algorithm>
#include <array>
#include <span>

// Layout, little-endian, offsets in bytes:
//         0  30  header words, date and time as text, not used
//        30   2  channel count N, signed
//        32 4 N  counts, signed, channel 1 first
//  4 N + 32   4  two trailer words, not used
//  4 N + 36   4  offset coefficient, 4-byte float
//  4 N + 40   4  slope coefficient, 4-byte float
// The trailer is found by the file's own N, also where a slot holds fewer channels.

namespace vael {
namespace {

constexpr std::size_t OFFSET_COUNT = 30;
constexpr std::size_t TRAILER_WORDS = 4;

}  // namespace

void ReadChnBody(std::istream& in, ReadTarget target, std::string* note) {
    PackedReader reader(in);
    reader.Skip(OFFSET_COUNT);
    std::int16_t count = 0;
    reader.Field(count);
    if (count < 0)
        throw Fault(FaultNumber::FileContent,
                    "offset " + std::to_string(OFFSET_COUNT) +
                        ": a number of channels from 0 on was expected, not " +
                        std::to_string(count));
    const int kept = std::min<int>(count, MAX_CHANNELS);
    target.Data.DataNo = static_cast<std::int16_t>(kept);
    reader.Fields(std::span(target.Data.Count).first(static_cast<std::size_t>(kept)));
    reader.Skip(sizeof(std::int32_t) * static_cast<std::size_t>(count - kept) + TRAILER_WORDS);
    float offset = 0.0F;
    float slope = 0.0F;
    reader.Field(offset);
    reader.Field(slope);
    target.Prop.Param.EgcCoef = {offset, slope, 0.0};
    if (note == nullptr) return;
    if (count > kept)
        *note = "of its " + std::to_string(count) + " channels the first " + std::to_string(kept) +
                " are read";
    if (reader.Short()) *note += (note->empty() ? "" : "; ") + ShortNote(reader);
}

std::int16_t LoadChn(const std::string& path, ReadTarget target, const FileTalk& talk) {
    std::ifstream in = OpenToRead(path);
    std::string note;
    ReadChnBody(in, target, &note);
    if (!note.empty()) talk.log(path + ": " + note + ".");
    return TRUE_WORD;
}

}  // namespace vael
