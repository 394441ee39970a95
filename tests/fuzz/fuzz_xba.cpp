// Fuzzes the reader of .xba: any bytes end in a result or a fault, and what was read is written,
// read and written again byte for byte.
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
    PeakTable Peaks{};
    std::int16_t Last = 0;
    void Read(const std::string& image) {
        std::istringstream in(image);
        std::string note;
        ReadXbaBody(in, {Data, Prop, Last}, Peaks, &note);
    }
    [[nodiscard]] std::string Written() const {
        std::ostringstream out;
        WriteXbaBody(out, Data, Prop, Peaks);
        return out.str();
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const auto slot = std::make_unique<Slot>();  // what an input leaves is read by none
    static const auto again = std::make_unique<Slot>();
    try {
        slot->Read(std::string(reinterpret_cast<const char*>(bytes), size));
    } catch (const Fault&) {
        return 0;
    }
    if (slot->Data.DataNo > MAX_CHANNELS) std::abort();
    if (slot->Peaks.PeakNum < 0 || slot->Peaks.PeakNum > MAX_PEAKS) std::abort();
    const std::string image = slot->Written();
    again->Read(image);
    if (again->Written() != image) std::abort();
    return 0;
}
