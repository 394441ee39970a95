// Fuzzes the reader of .npd: any text ends in a result or a fault that names its line.
#include "core/fault.h"
#include "files/filenpd.h"

#include <cstdlib>
#include <memory>
#include <sstream>
#include <string_view>

using namespace vael;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    std::istringstream in(std::string(reinterpret_cast<const char*>(bytes), size));
    static const auto data = std::make_unique<SpectrumData>();  // the reader clears it
    PropertyRecord prop{};
    std::int16_t last = 0;
    try {
        ReadNpdText(in, {*data, prop, last});
    } catch (const Fault& fault) {
        if (!std::string_view(fault.what()).starts_with("line ")) std::abort();
        return 0;
    }
    if (data->DataNo > MAX_CHANNELS) std::abort();
    return 0;
}
