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
#include <istream>
#include <memory>
#include <streambuf>
#include <string>
#include <string_view>

using namespace vael;

namespace {

/// Bytes in memory as a stream that copies none of them.
class Memory : public std::streambuf {
public:
    Memory(char* bytes, std::size_t size) { setg(bytes, bytes, bytes + size); }

protected:
    pos_type seekoff(off_type off, std::ios_base::seekdir from, std::ios_base::openmode) override {
        const off_type at = off + (from == std::ios_base::beg   ? 0
                                   : from == std::ios_base::cur ? gptr() - eback()
                                                                : egptr() - eback());
        if (at < 0 || at > egptr() - eback()) return pos_type(off_type(-1));
        setg(eback(), eback() + at, egptr());
        return pos_type(at);
    }
    pos_type seekpos(pos_type at, std::ios_base::openmode which) override {
        return seekoff(off_type(at), std::ios_base::beg, which);
    }
};

constexpr std::size_t LARGEST = 65535;
constexpr char PATTERN = '\x11';

/// The file that an input stands for, in `file`, which holds the pattern; its size.
std::size_t FileOf(std::string_view input, std::string& file, std::size_t& first) {
    const auto byte = [&](std::size_t k) {
        return static_cast<std::size_t>(static_cast<unsigned char>(input[k]));
    };
    const std::size_t selector = byte(1);
    first = 16944 + (selector == 182 || selector == 190 ? 4608 : 0);
    const std::size_t size = byte(2) | byte(3) << 8;
    if (size > 11) file[11] = input[1];
    const std::string_view fields = input.substr(4);
    if (size > first)
        std::copy_n(fields.begin(), std::min(fields.size(), size - first),
                    file.begin() + static_cast<std::ptrdiff_t>(first));
    return size;
}

void Check(std::istream& in) {
    static const auto data = std::make_unique<SpectrumData>();
    data->DataNo = 7;
    PropertyRecord prop{};
    std::int16_t last = 3;
    try {
        ReadCnfBody(in, {*data, prop, last});
    } catch (const Fault& fault) {
        if (!std::string_view(fault.what()).starts_with("offset ")) std::abort();
        if (data->DataNo != 7) std::abort();
        return;
    }
    if (data->DataNo != DEFAULT_CHANNELS || data->Count[0] != data->Count[1]) std::abort();
    if (last != 3 || prop.SourceType != 0 || prop.Param.EgcCoef[2] != 0.0) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static std::string file(LARGEST, PATTERN);
    std::string input(reinterpret_cast<const char*>(bytes), size);
    if (size < 4 || input.front() != 'S') {
        Memory memory(input.data(), input.size());
        std::istream in(&memory);
        Check(in);
        return 0;
    }
    std::size_t first = 0;
    const std::size_t length = FileOf(input, file, first);
    Memory memory(file.data(), length);
    std::istream in(&memory);
    Check(in);
    file[11] = PATTERN;  // the pattern again
    std::fill_n(file.begin() + static_cast<std::ptrdiff_t>(first), std::min(size, LARGEST - first),
                PATTERN);
    return 0;
}
