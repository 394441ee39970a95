// What the readers and writers of text files share: lines, counts in columns, quoted pieces.
#pragma once

#include "core/fault.h"
#include "core/records.h"
#include "core/talk.h"

#include <cstdint>
#include <istream>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vael {

/// The count that a text holds, blanks around it allowed; what is not whole goes to the nearest
/// whole number, ties to the even one. Nothing where it is no number or beyond 32 bits.
[[nodiscard]] std::optional<std::int32_t> CountIn(std::string_view text);

/// A text's lines one after the other. Holds a piece of the input at a time, not all of it.
class TextLines {
public:
    explicit TextLines(std::istream& in) : in_(&in) {}
    /// The next line without its end (CR LF or LF); it stands until the next call. Faults:
    /// FileContent when there is none, saying that `expected` was.
    std::string_view Next(const char* expected);
    /// Faults: FileContent, naming the line that was read last.
    [[noreturn]] void Fail(const std::string& what) const;
    /// The number that a text of the line holds. Faults: FileContent for a text that is none.
    [[nodiscard]] double Value(std::string_view text, const char* expected) const;
    /// The same as a whole number of 16 bits.
    [[nodiscard]] std::int16_t Whole(std::string_view text, const char* expected) const;

private:
    bool More();
    std::istream* in_;
    std::string held_;
    std::size_t at_ = 0;
    int number_ = 0;
};

/// A record's text within a line: line breaks and NUL bytes as blanks.
[[nodiscard]] std::string OneLine(std::string_view bytes);

/// A text with blanks before it up to `columns`; a longer one stands in full.
[[nodiscard]] std::string RightAligned(std::string text, std::size_t columns);

/// The counts of the report forms: eight a line, each right-aligned in 7 columns, what is wider in
/// full, with nothing between them. Each line ends in CR LF; no channels are no line. Faults:
/// Subscript for more than 8192 channels.
inline constexpr int COUNTS_A_LINE = 8;
inline constexpr std::size_t COUNT_COLUMNS = 7;
[[nodiscard]] std::string CountBlock(const SpectrumData& data);

/// The line of the names that stands behind the block: sample in 20 columns, file in 40, date and
/// time, three blanks. A record with no date has its time 8 columns further left.
[[nodiscard]] std::string ReportNames(const PropertyRecord& prop);

/// A line "channel,energy,count" a channel, in CR LF: the channel from 1, its energy in keV by the
/// record's own polynomial and a format, its count. Faults: Subscript for more than 8192 channels.
[[nodiscard]] std::string ChannelLines(const SpectrumData& data, std::span<const double, 3> coef,
                                       std::string_view energyFormat);

/// Tells the log when a count of that block leaves no blank before it.
void TellTouchingCounts(const std::string& path, const SpectrumData& data, const FileTalk& talk);

/// A piece of a file between quotes, as a message shows it: UTF-8, at most 40 bytes of it.
[[nodiscard]] std::string Quoted(std::string_view bytes);

}  // namespace vael
