// What the readers of text files share: a count in a text, and a failure told in one line.
#include "files/textfile.h"

#include "core/cp932.h"
#include "core/text.h"

#include <array>
#include <charconv>

namespace vael {

std::optional<std::int32_t> CountIn(std::string_view text) {
    // Nearly every count is plain digits: the general road costs ten times as much.
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    std::int32_t plain = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), plain);
    if (error == std::errc() && end == text.data() + text.size()) return plain;
    const auto value = ParseNumber(text);
    if (!value) return std::nullopt;
    try {
        return Whole32(*value);
    } catch (const Fault&) {
        return std::nullopt;
    }
}

void AppendCount(std::string& out, std::int32_t count, std::size_t columns) {
    std::array<char, 12> digits;
    const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), count).ptr;
    const auto size = static_cast<std::size_t>(end - digits.data());
    if (size < columns) out.append(columns - size, ' ');
    out.append(digits.data(), size);
}

std::string Quoted(std::string_view bytes) {
    constexpr std::size_t SHOWN = 40;
    return "\"" + FromCp932(CutCp932(bytes, SHOWN)) + "\"";
}

}  // namespace vael
