// The table of a run: a CSV file with one row for each spectrum, whole lines at every moment.
#pragma once

#include <cstdint>
#include <functional>
#include <istream>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vael {

/// The number of a measurement by its file's name: an extension of digits; else the longest run of
/// digits in the name, the last one of equal length ("MgO_0019_d0.npd" is 19). Up to nine digits
/// count. `order` (from 1 on) where there is none.
[[nodiscard]] std::int64_t FileNumber(const std::string& file, std::int64_t order);

/// Start of a measurement as "2018-10-10 09:05:41"; empty where date or time are not all digits.
[[nodiscard]] std::string Moment(std::string_view yyyymmdd, std::string_view hhmmss);
/// Seconds from 1970 on (any calendar day, no time zone) of such a text; none for another one.
[[nodiscard]] std::optional<double> Seconds(std::string_view moment);

/// The next record of a CSV text, quotes taken off. False at the end, and where the text ends
/// before the record's line does.
bool ReadCsvRecord(std::istream& in, std::vector<std::string>& fields);

/// Columns "number", "time", and then those of `CsvHead`.
[[nodiscard]] std::string RunHead();
/// A row: the number, the moment, and the fields of `CsvRow` with their line end.
[[nodiscard]] std::string RunRow(std::int64_t number, const std::string& moment,
                                 const std::string& csvRow);

enum class OldTable { Refuse, Replace, GoOn };

/// The table on disk. Each row goes out in one piece; where that fails the table is cut back to the
/// rows that stood, so that it holds whole rows whenever the program ends.
class RunTable {
public:
    /// GoOn keeps the rows of a table that is there; a last line without its end is cut off, which
    /// `remark` is told. Faults: FileAccess; Argument where the table is there and is to be
    /// refused; FileContent where its head is another one, naming the file and the line.
    RunTable(std::string path, OldTable old, const std::function<void(const std::string&)>& remark);
    ~RunTable();
    RunTable(const RunTable&) = delete;
    RunTable& operator=(const RunTable&) = delete;

    /// Whether a row of that file stands in it.
    [[nodiscard]] bool Has(const std::string& file) const { return files_.contains(file); }
    [[nodiscard]] std::int64_t Rows() const { return static_cast<std::int64_t>(files_.size()); }
    /// Faults: FileAccess, naming the table and the reason.
    void Add(const std::string& file, const std::string& row);
    [[nodiscard]] const std::string& Path() const { return path_; }

private:
    void KeepRows(const std::function<void(const std::string&)>& remark);
    void Append(std::string_view bytes);
    [[noreturn]] void Refuse(const std::string& what) const;
    std::string path_;
    int file_ = -1;
    std::int64_t size_ = 0;  // bytes of whole rows
    std::set<std::string> files_;
};

}  // namespace vael
