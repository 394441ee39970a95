// What the readers of text files share: counts in columns, and pieces quoted in a message.
#pragma once

#include "core/fault.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vael {

/// The count that a text holds, blanks around it allowed; what is not whole goes to the nearest
/// whole number, ties to the even one. Nothing where it is no number or beyond 32 bits.
[[nodiscard]] std::optional<std::int32_t> CountIn(std::string_view text);

/// The right-aligned text of a count in `columns` columns onto `out`; a longer one stands in full.
void AppendCount(std::string& out, std::int32_t count, std::size_t columns);

/// A piece of a file between quotes, as a message shows it: UTF-8, at most 40 bytes of it.
[[nodiscard]] std::string Quoted(std::string_view bytes);

}  // namespace vael
