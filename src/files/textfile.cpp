// What the readers and writers of text files share: lines, counts in columns, quoted pieces.
#include "files/textfile.h"

#include "core/cp932.h"
#include "core/text.h"
#include "core/units.h"

#include <algorithm>
#include <charconv>

namespace vael {
namespace {

constexpr std::size_t PIECE = 1 << 14;  // bytes taken from the input at a time

}  // namespace

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

bool TextLines::More() {
    held_.erase(0, at_);
    at_ = 0;
    const std::size_t had = held_.size();
    held_.resize(had + PIECE);
    in_->read(held_.data() + had, PIECE);
    const auto got = static_cast<std::size_t>(in_->gcount());
    held_.resize(had + got);
    return got > 0;
}

std::string_view TextLines::Next(const char* expected) {
    ++number_;
    std::size_t seen = 0;  // of the held text: no need to search it twice
    auto end = held_.find('\n', at_);
    while (end == std::string::npos) {
        seen = held_.size() - at_;
        if (!More()) break;
        end = held_.find('\n', at_ + seen);
    }
    if (end == std::string::npos && at_ == held_.size())
        Fail(std::string("the file ends, ") + expected + " was expected");
    const std::size_t stop = end == std::string::npos ? held_.size() : end;
    std::string_view line(held_.data() + at_, stop - at_);
    at_ = end == std::string::npos ? held_.size() : end + 1;
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    return line;
}

void TextLines::Fail(const std::string& what) const {
    throw Fault(FaultNumber::FileContent, "line " + std::to_string(number_) + ": " + what);
}

double TextLines::Value(std::string_view text, const char* expected) const {
    const auto value = ParseNumber(text);
    if (!value) Fail(std::string(expected) + " was expected, not " + Quoted(text));
    return *value;
}

std::int16_t TextLines::Whole(std::string_view text, const char* expected) const {
    const double value = Value(text, expected);
    try {
        return Whole16(value);
    } catch (const Fault&) {
        Fail(std::string(expected) + " was expected, not " + Quoted(text));
    }
}

std::string OneLine(std::string_view bytes) {
    std::string text(bytes);
    for (char& c : text)
        if (c == '\r' || c == '\n' || c == '\0') c = ' ';
    return text;
}

std::string RightAligned(std::string text, std::size_t columns) {
    if (text.size() < columns) text.insert(0, columns - text.size(), ' ');
    return text;
}

std::string CountBlock(const SpectrumData& data) {
    std::string block;
    const int count = data.DataNo;
    block.reserve(static_cast<std::size_t>(std::max(count, 0)) * (COUNT_COLUMNS + 1) + 2);
    for (int i = 0; i < count; ++i) {
        if (i % COUNTS_A_LINE == 0 && i != 0) block += "\r\n";
        AddRight(block, Item(data.Count, i), COUNT_COLUMNS);
    }
    if (count > 0) block += "\r\n";
    return block;
}

std::string ReportNames(const PropertyRecord& prop) {
    return FitCp932(OneLine(prop.SampleName.View()), 20) +
           FitCp932(OneLine(prop.FileName.View()), 40) + DateToShow(OneLine(prop.OpDate.View())) +
           ' ' + TimeToShow(OneLine(prop.OpTime.View())) + "   ";
}

std::string ChannelLines(const SpectrumData& data, std::span<const double, 3> coef,
                         std::string_view energyFormat) {
    std::string lines;
    const int count = data.DataNo;
    lines.reserve(static_cast<std::size_t>(std::max(count, 0)) * 24);
    for (int i = 0; i < count; ++i) {
        AddRight(lines, i + 1, 0);
        lines += ',';
        lines += FormatNumber(ChToEnergy(i + 1.0, coef), energyFormat);
        lines += ',';
        AddRight(lines, Item(data.Count, i), 0);
        lines += "\r\n";
    }
    return lines;
}

void TellTouchingCounts(const std::string& path, const SpectrumData& data, const FileTalk& talk) {
    const int count = std::clamp<int>(data.DataNo, 0, MAX_CHANNELS);
    if (std::any_of(data.Count.begin(), data.Count.begin() + count,
                    [](std::int32_t n) { return n > 999999 || n < -99999; }))
        talk.log(path +
                 ": counts of seven characters stand in this form with no blank between them; "
                 "keep the spectrum in another form too.");
}

std::string Quoted(std::string_view bytes) {
    constexpr std::size_t SHOWN = 40;
    return "\"" + FromCp932(CutCp932(bytes, SHOWN)) + "\"";
}

}  // namespace vael
