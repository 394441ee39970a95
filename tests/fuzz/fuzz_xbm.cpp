// Fuzzes the reader of .xbm: any bytes end in a result or a fault, and what was read is
// written back in the size that its channel count tells.
#include "core/fault.h"
#include "files/filevael.h"

#include <cstdlib>
#include <memory>
#include <sstream>

using namespace vael;

namespace {

struct Slot {
    SpectrumData Data{};
    PropertyRecord Prop{};
    std::int16_t Last = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string image(reinterpret_cast<const char*>(bytes), size);
    static const auto slot = std::make_unique<Slot>();  // what an input leaves is read by none
    try {
        std::istringstream in(image);
        std::string note;
        ReadXbmBody(in, {slot->Data, slot->Prop, slot->Last}, &note);
    } catch (const Fault&) {
        return 0;
    }
    if (slot->Data.DataNo > MAX_CHANNELS) std::abort();
    std::ostringstream out;
    WriteXbmBody(out, slot->Data, slot->Prop);
    const int channels = slot->Data.DataNo > 0 ? slot->Data.DataNo : 0;
    if (out.str().size() != 1990u + 4u * static_cast<unsigned>(channels)) std::abort();
    return 0;
}
