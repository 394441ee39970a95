// Packed little-endian fields in a stream: how binary files of the system are laid out.
#include "files/packed.h"

#include <algorithm>

namespace vael {

void PackedReader::Take(std::span<std::uint8_t> bytes, std::uint8_t filler) {
    std::streamsize got = 0;
    if (!short_) {
        in_->read(reinterpret_cast<char*>(bytes.data()),
                  static_cast<std::streamsize>(bytes.size()));
        got = in_->gcount();
    }
    offset_ += static_cast<std::uint64_t>(got);
    cut_ = static_cast<std::size_t>(got) < bytes.size();
    if (cut_) {
        short_ = true;
        std::fill(bytes.begin() + got, bytes.end(), filler);
    }
}

void PackedReader::Text(std::span<char> text) {
    Take({reinterpret_cast<std::uint8_t*>(text.data()), text.size()}, ' ');
}

}  // namespace vael
