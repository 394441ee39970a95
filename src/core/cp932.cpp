// Code page 932, the encoding of every text in a file: conversion, and strings of a fixed size.
#include "core/cp932.h"

#include <iconv.h>  // the C library's converter; nothing else of the project touches it
#include <cerrno>
#include <stdexcept>

namespace vael {
namespace {

bool IsLead(char c) {
    const auto b = static_cast<unsigned char>(c);
    return (b >= 0x81 && b <= 0x9f) || (b >= 0xe0 && b <= 0xfc);
}

class Converter {
public:
    Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {
        if (handle_ == reinterpret_cast<iconv_t>(-1))
            throw std::runtime_error("The C library does not convert code page 932.");
    }
    ~Converter() { iconv_close(handle_); }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    /// Converts as far as it can; `substitute` stands for what cannot be converted, and `skip`
    /// tells how many bytes of the input such a place covers.
    template <class Skip>
    std::string Run(std::string_view text, std::string_view substitute, Skip skip) {
        std::string out;
        iconv(handle_, nullptr, nullptr, nullptr, nullptr);
        std::string input(text);
        char* at = input.data();
        std::size_t left = input.size();
        while (left > 0) {
            std::array<char, 512> buffer;
            char* to = buffer.data();
            std::size_t room = buffer.size();
            const std::size_t done = iconv(handle_, &at, &left, &to, &room);
            const int error = done == static_cast<std::size_t>(-1) ? errno : 0;
            out.append(buffer.data(), buffer.size() - room);
            if (error == EILSEQ || error == EINVAL) {
                out += substitute;
                const std::size_t width = std::min(left, skip(std::string_view(at, left)));
                at += width;
                left -= width;
            }
        }
        return out;
    }

private:
    iconv_t handle_;
};

std::size_t Utf8Width(std::string_view rest) {
    std::size_t width = 1;
    while (width < rest.size() && (static_cast<unsigned char>(rest[width]) & 0xc0) == 0x80) ++width;
    return width;
}

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c > 0; });
}

}  // namespace

std::string FromCp932(std::string_view bytes) {
    if (IsAscii(bytes)) return std::string(bytes);
    std::string clean(bytes);
    std::replace(clean.begin(), clean.end(), '\0', ' ');
    static thread_local Converter converter("UTF-8", "CP932");
    return converter.Run(clean, "\xef\xbf\xbd", [](std::string_view) { return std::size_t{1}; });
}

std::string ToCp932(std::string_view utf8) {
    if (IsAscii(utf8)) return std::string(utf8);
    static thread_local Converter converter("CP932", "UTF-8");
    return converter.Run(utf8, "?", Utf8Width);
}

std::string_view CutCp932(std::string_view bytes, std::size_t size) {
    if (bytes.size() <= size) return bytes;
    std::size_t at = 0;
    while (at < size) {
        const std::size_t width = IsLead(bytes[at]) ? 2 : 1;
        if (at + width > size) break;
        at += width;
    }
    return bytes.substr(0, at);
}

std::size_t CountCp932(std::string_view bytes) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < bytes.size(); ++count) at += IsLead(bytes[at]) ? 2 : 1;
    return count;
}

std::string FitCp932(std::string_view bytes, std::size_t count) {
    std::string out;
    std::size_t at = 0;
    std::size_t taken = 0;
    for (; at < bytes.size() && taken < count; ++taken) {
        const std::size_t width =
            std::min(bytes.size() - at, std::size_t{IsLead(bytes[at]) ? 2u : 1u});
        out += bytes.substr(at, width);
        at += width;
    }
    out.append(count - taken, ' ');
    return out;
}

}  // namespace vael
