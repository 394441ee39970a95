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

std::string ShortNote(const PackedReader& reader) {
    return "the file ends at offset " + std::to_string(reader.Offset()) +
           ", before its data do; what is missing reads as 0";
}

void PackedReader::Skip(std::size_t size) {
    std::array<std::uint8_t, 4096> dropped;
    while (size > 0 && !short_) {
        const std::size_t part = std::min(size, dropped.size());
        Take({dropped.data(), part}, 0);
        size -= part;
    }
}

}  // namespace vael
