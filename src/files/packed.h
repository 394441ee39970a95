// Packed little-endian fields in a stream: how binary files of the system are laid out.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <istream>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

namespace vael {

/// Reads fields one behind the other. Past the end of the input every field reads as zeros (texts
/// as blanks) and `Short()` turns true, with the offset at which the input ended.
class PackedReader {
public:
    explicit PackedReader(std::istream& in) : in_(&in) {}

    template <class T>
    requires std::is_arithmetic_v<T>
    void Field(T& value) {
        std::array<std::uint8_t, sizeof(T)> bytes{};
        Take(bytes, 0);
        if (cut_) bytes.fill(0);  // half a number is none
        if constexpr (std::endian::native == std::endian::big) Reverse(bytes);
        std::memcpy(&value, bytes.data(), sizeof(T));
    }
    /// Many numbers in one read; where the input ends in one of them, it and those behind are 0.
    template <class T>
    requires std::is_arithmetic_v<T>
    void Fields(std::span<T> values) {
        if constexpr (std::endian::native == std::endian::big) {
            for (T& value : values) Field(value);
            return;
        }
        const std::uint64_t from = offset_;
        Take({reinterpret_cast<std::uint8_t*>(values.data()), values.size_bytes()}, 0);
        if (!cut_) return;
        const auto whole = static_cast<std::size_t>((offset_ - from) / sizeof(T));
        std::fill(values.begin() + static_cast<std::ptrdiff_t>(whole), values.end(), T{});
    }
    void Bytes(std::span<std::uint8_t> bytes) { Take(bytes, 0); }
    void Text(std::span<char> text);
    /// Goes on behind `size` bytes.
    void Skip(std::size_t size);

    [[nodiscard]] bool Short() const { return short_; }
    /// Bytes taken so far; where `Short()`, the length of the input.
    [[nodiscard]] std::uint64_t Offset() const { return offset_; }

private:
    void Take(std::span<std::uint8_t> bytes, std::uint8_t filler);
    template <std::size_t N>
    static void Reverse(std::array<std::uint8_t, N>& bytes) {
        for (std::size_t i = 0; i < N / 2; ++i) std::swap(bytes[i], bytes[N - 1 - i]);
    }
    std::istream* in_;
    std::uint64_t offset_ = 0;
    bool short_ = false;
    bool cut_ = false;  // the last field was not whole
};

/// What a reader says of an input that ended before its fields did.
[[nodiscard]] std::string ShortNote(const PackedReader& reader);

/// Writes fields one behind the other.
class PackedWriter {
public:
    explicit PackedWriter(std::ostream& out) : out_(&out) {}

    template <class T>
    requires std::is_arithmetic_v<T>
    void Field(T value) {
        std::array<char, sizeof(T)> bytes;
        std::memcpy(bytes.data(), &value, sizeof(T));
        if constexpr (std::endian::native == std::endian::big)
            for (std::size_t i = 0; i < sizeof(T) / 2; ++i)
                std::swap(bytes[i], bytes[sizeof(T) - 1 - i]);
        out_->write(bytes.data(), sizeof(T));
    }
    /// Many numbers in one write.
    template <class T>
    requires std::is_arithmetic_v<T>
    void Fields(std::span<const T> values) {
        if constexpr (std::endian::native == std::endian::big)
            for (const T value : values) Field(value);
        else
            out_->write(reinterpret_cast<const char*>(values.data()),
                        static_cast<std::streamsize>(values.size_bytes()));
    }
    void Bytes(std::span<const std::uint8_t> bytes) {
        out_->write(reinterpret_cast<const char*>(bytes.data()),
                    static_cast<std::streamsize>(bytes.size()));
    }
    void Text(std::string_view bytes) {
        out_->write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }

private:
    std::ostream* out_;
};

}  // namespace vael
