// What the readers of text files share: a count in a text, and a failure told in one line.
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

/// The line of the log for a failure with a file, which it names unless the fault does.
[[nodiscard]] std::string FailureLine(const std::string& path, const Fault& fault);

}  // namespace vael
