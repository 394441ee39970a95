// Fuzzes the reader of .chn: any bytes end in a result or a fault, and only the channels of the
// count and the calibration change.
#include "core/fault.h"
#include "files/fileortec.h"

#include <cstdlib>
#include <memory>
#include <sstream>
#include <string_view>

using namespace vael;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    constexpr std::int32_t MARK = 1234567;
    std::istringstream in(std::string(reinterpret_cast<const char*>(bytes), size));
    static const auto data =
        std::make_unique<SpectrumData>();  // what an input leaves is read by none
    data->Count.back() = MARK;
    PropertyRecord prop{};
    std::int16_t last = 3;
    std::string note;
    try {
        ReadChnBody(in, {*data, prop, last}, &note);
    } catch (const Fault& fault) {
        if (!std::string_view(fault.what()).starts_with("offset ")) std::abort();
        return 0;
    }
    if (data->DataNo < 0 || data->DataNo > MAX_CHANNELS || last != 3) std::abort();
    if (data->DataNo < MAX_CHANNELS && data->Count.back() != MARK) std::abort();
    const std::size_t whole = 44 + 4 * static_cast<std::size_t>(data->DataNo);
    if (size < whole && note.empty()) std::abort();
    if (prop.Param.EgcCoef[2] != 0.0) std::abort();
    return 0;
}
