// Fuzzes the reader of .rpt: any text ends in a result or a fault that names its line.
#include "core/fault.h"
#include "files/filegenie.h"

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
    try {
        ReadRptText(in, {*data, prop, last});
    } catch (const Fault& fault) {
        if (!std::string_view(fault.what()).starts_with("line ")) std::abort();
        if (data->DataNo != 7 || prop.SourceType != 0) std::abort();
        return 0;
    }
    if (data->DataNo < 0 || data->DataNo > MAX_CHANNELS) std::abort();
    if (prop.SourceType != SOURCE_REPORT || prop.Param.EgcCoef[2] != 0.0) std::abort();
    // What was read can be written.
    std::ostringstream out;
    WriteRptText(out, *data, prop);
    return 0;
}
