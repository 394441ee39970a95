// Fuzzes the reader of .cnf: any bytes end in a result or a fault that names the offset.
//
// A file is longer than the inputs a fuzzer likes, and nearly all of it is never looked at. An
// input that begins with "S" therefore stands for a file: the byte at offset 11, the file's size in
// two bytes, and the bytes from the first field on; behind them the file is a pattern. Any other
// input is the file itself.
#include "core/fault.h"
#include "files/filegenie.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string_view>

using namespace vael;

namespace {

std::string FileOf(std::string_view input) {
    if (input.size() < 4 || input.front() != 'S') return std::string(input);
    const auto byte = [&](std::size_t k) {
        return static_cast<std::size_t>(static_cast<unsigned char>(input[k]));
    };
    const std::size_t selector = byte(1);
    const std::size_t first = 16944 + (selector == 182 || selector == 190 ? 4608 : 0);
    std::string file(byte(2) | byte(3) << 8, '\x11');
    if (file.size() > 11) file[11] = input[1];
    const std::string_view fields = input.substr(4);
    if (file.size() > first) {
        const std::size_t size = std::min(fields.size(), file.size() - first);
        std::copy_n(fields.begin(), size, file.begin() + static_cast<std::ptrdiff_t>(first));
    }
    return file;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    std::istringstream in(FileOf({reinterpret_cast<const char*>(bytes), size}));
    static const auto data = std::make_unique<SpectrumData>();
    data->DataNo = 7;
    PropertyRecord prop{};
    std::int16_t last = 3;
    try {
        ReadCnfBody(in, {*data, prop, last});
    } catch (const Fault& fault) {
        if (!std::string_view(fault.what()).starts_with("offset ")) std::abort();
        if (data->DataNo != 7) std::abort();
        return 0;
    }
    if (data->DataNo != DEFAULT_CHANNELS || data->Count[0] != data->Count[1]) std::abort();
    if (last != 3 || prop.SourceType != 0 || prop.Param.EgcCoef[2] != 0.0) std::abort();
    return 0;
}
