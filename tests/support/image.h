// A binary file image written field by field at stated offsets: the second writer of the tests.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>

namespace vael {

class Image {
public:
    explicit Image(std::size_t size) : bytes_(size, '\0') {}
    template <class T>
    Image& Put(std::size_t offset, T value) {
        if (bytes_.size() < offset + sizeof value) bytes_.resize(offset + sizeof value);
        std::memcpy(bytes_.data() + offset, &value, sizeof value);
        return *this;
    }
    Image& Text(std::size_t offset, std::size_t size, const std::string& text) {
        bytes_.replace(offset, size, text + std::string(size - text.size(), ' '));
        return *this;
    }
    [[nodiscard]] const std::string& Bytes() const { return bytes_; }

private:
    std::string bytes_;
};

}  // namespace vael
