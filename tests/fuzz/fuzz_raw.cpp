// Fuzzes the reader of .raw: any text ends in a result or a fault that names its line.
#include "core/fault.h"
#include "files/filedac.h"

#include <cstdlib>
#include <memory>
#include <sstream>
#include <string_view>

using namespace vael;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    std::istringstream in(std::string(reinterpret_cast<const char*>(bytes), size));
    static const auto data = std::make_unique<SpectrumData>();
    data->DataNo = 7;
    PropertyRecord prop{};
    std::int16_t last = 0;
    double offset = -1.0;
    double slope = -2.0;
    std::string note;
    try {
        ReadDacText(in, {*data, prop, last, &offset, &slope}, &note);
    } catch (const Fault& fault) {
        if (!std::string_view(fault.what()).starts_with("line ")) std::abort();
        if (data->DataNo != 7 || prop.SourceType != 0 || offset != -1.0) std::abort();
        return 0;
    }
    if (data->DataNo != 7 && (data->DataNo < DEFAULT_CHANNELS || data->DataNo > MAX_CHANNELS))
        std::abort();
    if (data->DataNo == 7 && note.empty()) std::abort();
    if (prop.SourceType != SOURCE_DAC || last != SOURCE_DAC) std::abort();
    return 0;
}
