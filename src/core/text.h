// Text helpers: number formats, path pieces, dates, fields. All independent of the locale.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vael {

/// Text of a number by a format: "0" a digit that always prints, "#" one that prints only when
/// needed, "." the point (always printed), "0.00000E+000" or "0.####e+000" scientific; other
/// characters behind the digits stand as they are ("##0K"). The number's 15 significant decimal
/// digits are rounded to the digits behind the point, half away from zero; the integer part prints
/// in full; a negative number that rounds to zero prints no sign; a format of only "#" prints
/// nothing for 0.
[[nodiscard]] std::string FormatNumber(double value, std::string_view format);

/// `FormatNumber`, padded on the right with blanks so that a column keeps its points in line.
[[nodiscard]] std::string FormatAligned(double value, std::string_view format);

/// value rounded to `digits` decimals as number formats do it.
[[nodiscard]] double RoundHalfAway(double value, int digits);

/// Text of a whole number as list output gives it: a blank (or "-"), the digits, no trailing blank.
[[nodiscard]] std::string WholeText(long long value);

/// Text of a floating number with up to 15 significant digits and no more than it needs:
/// "0.03162861", "1.2E-09".
[[nodiscard]] std::string NumberText(double value);

/// Appends a whole number right-aligned in `columns`; one that is wider stands in full.
void AddRight(std::string& line, std::int64_t value, std::size_t columns);

/// The number that a text holds, blanks around it allowed: an optional sign, digits with at most
/// one point, an optional exponent by E or D.
[[nodiscard]] std::optional<double> ParseNumber(std::string_view text);
[[nodiscard]] bool IsNumeric(std::string_view text);

/// The same where no number is a fault. Faults: Type, naming the text.
[[nodiscard]] double Number(std::string_view text);

[[nodiscard]] std::string Trim(std::string_view text);
[[nodiscard]] std::string_view TrimView(std::string_view text);
[[nodiscard]] std::string LowerCase(std::string_view ascii);
[[nodiscard]] bool IsAllDigits(std::string_view text);

/// The separator of folders on this system, and whether a character is one ("\\" always is; "/"
/// too where the system uses it).
inline constexpr char PATH_SEPARATOR = '/';
[[nodiscard]] bool IsSeparator(char c);

struct PathPieces {
    std::string Drive;   // with its ":"; always empty on a system without drive letters
    std::string Folder;  // with its closing separator
    std::string Name;
    std::string Ext;  // without its point

    /// The name with its extension: Name, and "." Ext when there is one.
    [[nodiscard]] std::string Base() const { return Ext.empty() ? Name : Name + "." + Ext; }
};

/// The pieces of a path: drive to the first ":" (where there are drives), extension behind the last
/// "." of what is left unless that is its first character, name behind the last separator. Drive +
/// Folder + Base() is the same path again. `drives` tells whether the system has drive letters.
[[nodiscard]] PathPieces SplitFilePath(std::string_view path, bool drives = false);

/// The same, also for a path that begins with two separators and a server name, which counts as the
/// drive. `noDrive` receives true where no drive was found.
[[nodiscard]] PathPieces SplitLocalPath(std::string_view path, bool* noDrive = nullptr,
                                        bool drives = false);

/// Names separated by ",", ";" or runs of blanks; empty names are left out.
[[nodiscard]] std::vector<std::string> SplitFileList(std::string_view text);

/// Fields of the first 99 characters, at most 11, as numbers; a field that is no number is 0. A
/// comma ends a field, unless a blank follows it: then the run of blanks ends it. Leading blanks
/// end an empty first field.
[[nodiscard]] std::vector<double> SplitNumbers(std::string_view text);

/// "YY/MM/DD" to "YYYYMMDD": a year below 30 is 20YY, else 19YY; empty for an empty text.
[[nodiscard]] std::string DateToStore(std::string_view text);
/// "YYYYMMDD" to "YY/MM/DD"; empty when the year is no number.
[[nodiscard]] std::string DateToShow(std::string_view digits);
/// "YY/MM/DD" to "YYMMDD".
[[nodiscard]] std::string DateShort(std::string_view text);
/// "HHMMSS" to "HH:MM:SS".
[[nodiscard]] std::string TimeToShow(std::string_view digits);

}  // namespace vael
