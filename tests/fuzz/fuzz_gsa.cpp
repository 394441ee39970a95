// Fuzzes the reader of .gsa: any text ends in a result or a fault that names its line; what was
// read is written in lines of ten values, or refused.
#include "core/fault.h"
#include "files/filegsa.h"

#include <algorithm>
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
        ReadGsaText(in, {*data, prop, last});
    } catch (const Fault& fault) {
        if (!std::string_view(fault.what()).starts_with("line ")) std::abort();
        return 0;
    }
    if (data->DataNo > MAX_CHANNELS) std::abort();
    std::ostringstream out;
    try {
        WriteGsaText(out, *data, prop);
    } catch (const Fault& fault) {
        if (fault.Number() != FaultNumber::Subscript) std::abort();
        return 0;
    }
    const std::string_view text = out.view();
    const int lines = 2 + (std::max<int>(data->DataNo, 0) + 9) / 10;
    if (std::count(text.begin(), text.end(), '\n') != lines) std::abort();
    return 0;
}
