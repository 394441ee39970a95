// The table of a run: file numbers, moments, CSV records, and the file that only grows by rows.
#include "batch/runtable.h"

#include "batch/report.h"
#include "core/fault.h"
#include "core/text.h"

#include <fcntl.h>  // a file that is appended to and cut back
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstring>
#include <fstream>
#include <sstream>

namespace vael {
namespace {

constexpr std::size_t MAX_DIGITS = 9;

bool IsDigitAt(std::string_view text, std::size_t at) {
    return at < text.size() && text[at] >= '0' && text[at] <= '9';
}

/// The whole number that a piece of digits tells.
int Whole(std::string_view digits) {
    int value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}

}  // namespace

std::int64_t FileNumber(const std::string& file, std::int64_t order) {
    const PathPieces pieces = SplitFilePath(file);
    if (IsAllDigits(pieces.Ext) && pieces.Ext.size() <= MAX_DIGITS) return Whole(pieces.Ext);
    const std::string_view name = pieces.Name;
    std::string_view best;
    for (std::size_t at = 0; at < name.size();) {
        std::size_t end = at;
        while (IsDigitAt(name, end)) ++end;
        if (end - at >= best.size() && end - at <= MAX_DIGITS) best = name.substr(at, end - at);
        at = end == at ? at + 1 : end;
    }
    return best.empty() ? order : Whole(best);
}

std::string Moment(std::string_view yyyymmdd, std::string_view hhmmss) {
    if (yyyymmdd.size() != 8 || hhmmss.size() != 6 || !IsAllDigits(yyyymmdd) ||
        !IsAllDigits(hhmmss))
        return {};
    const auto piece = [](std::string_view from, std::size_t at, std::size_t size) {
        return std::string(from.substr(at, size));
    };
    return piece(yyyymmdd, 0, 4) + "-" + piece(yyyymmdd, 4, 2) + "-" + piece(yyyymmdd, 6, 2) + " " +
           piece(hhmmss, 0, 2) + ":" + piece(hhmmss, 2, 2) + ":" + piece(hhmmss, 4, 2);
}

std::optional<double> Seconds(std::string_view moment) {
    constexpr std::string_view SHAPE = "0000-00-00 00:00:00";
    if (moment.size() != SHAPE.size()) return std::nullopt;
    for (std::size_t k = 0; k < SHAPE.size(); ++k)
        if (SHAPE[k] == '0' ? !IsDigitAt(moment, k) : moment[k] != SHAPE[k]) return std::nullopt;
    using namespace std::chrono;
    const auto number = [&](std::size_t at, std::size_t size) {
        return Whole(moment.substr(at, size));
    };
    const year_month_day day{year(number(0, 4)), month(static_cast<unsigned>(number(5, 2))),
                             std::chrono::day(static_cast<unsigned>(number(8, 2)))};
    if (!day.ok()) return std::nullopt;
    const auto days = sys_days(day).time_since_epoch().count();
    return static_cast<double>(days) * 86400.0 + number(11, 2) * 3600.0 + number(14, 2) * 60.0 +
           number(17, 2);
}

bool ReadCsvRecord(std::istream& in, std::vector<std::string>& fields) {
    fields.assign(1, {});
    bool quoted = false;
    for (int c = in.get(); c != std::istream::traits_type::eof(); c = in.get()) {
        if (c == '"') {
            if (quoted && in.peek() == '"')
                fields.back() += static_cast<char>(in.get());
            else
                quoted = !quoted;
        } else if (quoted) {
            fields.back() += static_cast<char>(c);
        } else if (c == ',') {
            fields.emplace_back();
        } else if (c == '\n') {
            return true;
        } else if (c != '\r') {
            fields.back() += static_cast<char>(c);
        }
    }
    return false;
}

std::string RunHead() { return "number,time," + CsvHead(); }

std::string RunRow(std::int64_t number, const std::string& moment, const std::string& csvRow) {
    return std::to_string(number) + "," + moment + "," + csvRow;
}

RunTable::RunTable(std::string path, OldTable old,
                   const std::function<void(const std::string&)>& remark)
    : path_(std::move(path)) {
    const int fresh = old == OldTable::Refuse ? O_EXCL : old == OldTable::Replace ? O_TRUNC : 0;
    constexpr mode_t ALL_READ_AND_WRITE = 0666;  // less what the user's mask takes away
    file_ = ::open(path_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | fresh, ALL_READ_AND_WRITE);
    if (file_ < 0 && errno == EEXIST)
        throw Fault(FaultNumber::Argument,
                    path_ + " exists: --force replaces it, and --watch goes on with it.");
    if (file_ < 0) Refuse("cannot be opened for writing");
    try {
        if (old == OldTable::GoOn) KeepRows(remark);
        if (size_ == 0) Append(RunHead());
    } catch (...) {
        ::close(file_);
        throw;
    }
}

RunTable::~RunTable() { ::close(file_); }

void RunTable::KeepRows(const std::function<void(const std::string&)>& remark) {
    std::ifstream in(path_, std::ios::binary);
    std::vector<std::string> fields;
    std::vector<std::string> head;
    std::istringstream expected(RunHead());
    ReadCsvRecord(expected, head);
    const auto nameColumn =
        static_cast<std::size_t>(std::find(head.begin(), head.end(), "file") - head.begin());
    for (std::int64_t record = 1; ReadCsvRecord(in, fields); ++record) {
        if (record == 1 && fields != head)
            throw Fault(FaultNumber::FileContent,
                        path_ + ", line 1: the head of a run's table was expected.");
        if (record > 1 && nameColumn < fields.size()) files_.insert(fields[nameColumn]);
        size_ = static_cast<std::int64_t>(in.tellg());
    }
    struct stat now {};
    if (::fstat(file_, &now) != 0) Refuse("cannot be read");
    if (now.st_size == size_) return;
    if (size_ == 0)  // something else, and not even a line of it: never cut away
        throw Fault(FaultNumber::FileContent,
                    path_ + ", line 1: the head of a run's table was expected.");
    if (::ftruncate(file_, size_) != 0) Refuse("its last line has no end and cannot be cut off");
    remark(path_ + ": its last line had no end and was cut off.");
}

void RunTable::Add(const std::string& file, const std::string& row) {
    Append(row);
    files_.insert(file);
}

void RunTable::Append(std::string_view bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t put = ::pwrite(file_, bytes.data() + done, bytes.size() - done,
                                     static_cast<off_t>(size_) + static_cast<off_t>(done));
        if (put < 0 && errno == EINTR) continue;
        if (put <= 0) {
            const int why = errno;
            (void)::ftruncate(file_, size_);
            errno = why;
            Refuse("a row cannot be written");
        }
        done += static_cast<std::size_t>(put);
    }
    size_ += static_cast<std::int64_t>(bytes.size());
}

void RunTable::Refuse(const std::string& what) const {
    throw Fault(FaultNumber::FileAccess, path_ + ": " + what + ": " + std::strerror(errno) + ".");
}

}  // namespace vael
