// Code page 932, the encoding of every text in a file: conversion, and strings of a fixed size.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace vael {

/// UTF-8 of code page 932 bytes. A byte that is no character becomes U+FFFD; a NUL becomes a blank,
/// since records cleared to zero are shown as blank.
[[nodiscard]] std::string FromCp932(std::string_view bytes);

/// Code page 932 bytes of a UTF-8 text. A character that the code page does not hold becomes "?".
[[nodiscard]] std::string ToCp932(std::string_view utf8);

/// The longest beginning of `bytes` of at most `size` bytes that does not cut a two-byte character.
[[nodiscard]] std::string_view CutCp932(std::string_view bytes, std::size_t size);

/// Number of characters, a two-byte character counting as one.
[[nodiscard]] std::size_t CountCp932(std::string_view bytes);

/// Exactly `count` characters: cut, or padded on the right with blanks.
[[nodiscard]] std::string FitCp932(std::string_view bytes, std::size_t count);

/// N bytes of code page 932 as they stand in a file, padded on the right with blanks, with no
/// terminator. Bytes that nobody assigns go out as they came in.
template <std::size_t N>
struct FixedText {
    std::array<char, N> Bytes;

    /// All of it as UTF-8, padding included.
    [[nodiscard]] std::string Text() const { return FromCp932(View()); }
    /// As UTF-8 without the blanks at either end.
    [[nodiscard]] std::string Trimmed() const {
        const std::string all = Text();
        const auto first = all.find_first_not_of(' ');
        if (first == std::string::npos) return {};
        return all.substr(first, all.find_last_not_of(' ') - first + 1);
    }
    [[nodiscard]] std::string_view View() const { return {Bytes.data(), N}; }

    /// Takes a UTF-8 text; what is too long is cut between characters.
    FixedText& operator=(std::string_view utf8) {
        SetBytes(ToCp932(utf8));
        return *this;
    }
    /// Takes code page 932 bytes; what is too long is cut between characters.
    void SetBytes(std::string_view bytes) {
        Bytes.fill(' ');
        const std::string_view part = CutCp932(bytes, N);
        std::copy(part.begin(), part.end(), Bytes.begin());
    }
    friend bool operator==(const FixedText&, const FixedText&) = default;
};

}  // namespace vael
