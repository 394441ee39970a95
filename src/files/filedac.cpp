// FileDAC: "DAC File (*.raw)", a text of an angle and a count a line, that is only read.
#include "files/filedac.h"

#include "core/fault.h"
#include "core/text.h"
#include "core/wholefile.h"
#include "files/textfile.h"
#include "files/trip.h"

#include <algorithm>
#include <optional>

// Layout: lines "x,count", x an angle in degrees, and nothing else. They all end in CR LF, or all
// in a bare LF.
//   1      x0 is the axis' offset, the count goes to channel 1
//   2      x1 - x0 is its slope, the count goes to channel 2
//   3 ...  one count a line into the next channel; x is not read. A line with no comma, or with one
//          at its beginning, ends the data.
// In the first two lines such a line only leaves its channel and its number of the axis as they
// were. The end of the lines decides about the channel count: CR LF sets it to 4096, or to the
// number of pairs where that is more; bare LF leaves it as the slot had it, and takes no line that
// lacks its LF.

namespace vael {
namespace {

/// The lines of either kind of file, one behind the other.
class DacLines {
public:
    explicit DacLines(std::istream& in) : in_(in) {
        // A first line that holds an LF is the whole file of the other kind.
        ahead_ = Piece();
        bare_ = ahead_ && ended_ && !return_;
    }
    /// The next line without its end; false behind the last one.
    bool Next() {
        if (!ahead_ && !Piece()) return false;
        ahead_ = false;
        ++number_;
        text_.swap(piece_);
        if (bare_) return ended_ && !return_;  // what has no LF of its own is not taken
        while (ended_ && !return_) {           // in a line that ends in CR LF an LF is a character
            text_ += '\n';
            if (!Piece()) break;
            text_ += piece_;
        }
        return true;
    }
    [[nodiscard]] std::string_view Text() const { return text_; }
    [[nodiscard]] bool Bare() const { return bare_; }
    [[noreturn]] void Fail(const std::string& what) const {
        throw Fault(FaultNumber::FileContent,
                    "line " + std::to_string(std::max(number_, 1)) + ": " + what);
    }
    /// Where the comma of the line stands; nothing where there is none or it comes first.
    [[nodiscard]] std::optional<std::size_t> Comma() const {
        const auto at = text_.find(',');
        if (at == std::string::npos || at == 0) return std::nullopt;
        return at;
    }
    [[nodiscard]] double Angle(std::size_t comma) const {
        const std::string_view text = Text().substr(0, comma);
        const auto value = ParseNumber(text);
        if (!value) Fail("an angle was expected before the comma, not " + Quoted(text));
        return *value;
    }
    [[nodiscard]] std::int32_t Count(std::size_t comma) const {
        const std::string_view text = Text().substr(comma + 1);
        const auto value = CountIn(text);
        if (!value)
            Fail("a count of 32 bits was expected behind the comma, not " + Quoted(Trim(text)));
        return *value;
    }

private:
    /// Up to the next LF or the end of the input.
    bool Piece() {
        if (!std::getline(in_, piece_)) {
            ended_ = false;
            return false;
        }
        ended_ = !in_.eof();
        return_ = ended_ && !piece_.empty() && piece_.back() == '\r';
        if (return_) piece_.pop_back();
        return true;
    }
    std::istream& in_;
    std::string piece_;
    std::string text_;
    int number_ = 0;
    bool bare_ = false;
    bool ahead_ = false;   // the first piece is read before it is asked for
    bool ended_ = false;   // by an LF
    bool return_ = false;  // with a CR before it
};

/// The channels as they are read.
class Channels {
public:
    Channels(const DacLines& lines, SpectrumData& data) : lines_(lines), data_(data) {}
    void Put(std::size_t comma) {
        if (last_ >= MAX_CHANNELS) lines_.Fail("at most 8192 pairs were expected");
        Item(data_.Count, last_++) = lines_.Count(comma);
        any_ = true;
    }
    void Leave() { ++last_; }
    [[nodiscard]] int Last() const { return last_; }
    [[nodiscard]] bool Any() const { return any_; }

private:
    const DacLines& lines_;
    SpectrumData& data_;
    int last_ = 0;
    bool any_ = false;
};

}  // namespace

void ReadDacText(std::istream& in, ReadTarget target, std::string* note) {
    target.LastSourceType = SOURCE_DAC;
    DacLines lines(in);
    Channels channels(lines, target.Data);

    // 1. The two lines of the axis.
    std::optional<double> offset;
    std::optional<double> slope;
    bool more = lines.Next();
    if (!more) lines.Fail("a line \"angle,count\" was expected");
    if (const auto comma = lines.Comma()) {
        offset = lines.Angle(*comma);
        channels.Put(*comma);
    } else {
        channels.Leave();
    }
    more = lines.Next();
    if (more) {
        if (const auto comma = lines.Comma()) {
            slope = lines.Angle(*comma) - offset.value_or(0.0);
            channels.Put(*comma);
        } else {
            channels.Leave();
        }
    }

    // 2. The counts of the others.
    while (more && (more = lines.Next())) {
        const auto comma = lines.Comma();
        if (!comma) break;
        channels.Put(*comma);
    }

    // 3. All of it was good: it becomes the slot's and, for the axis, the process's.
    if (offset && target.DacOffset != nullptr) *target.DacOffset = *offset;
    if (slope && target.DacSlope != nullptr) *target.DacSlope = *slope;
    target.Prop.SourceType = SOURCE_DAC;
    target.Prop.RecordValid = 0;
    if (!lines.Bare())
        target.Data.DataNo =
            static_cast<std::int16_t>(std::max<int>(channels.Last(), DEFAULT_CHANNELS));
    if (note == nullptr) return;
    if (!channels.Any())
        *note = "no line \"angle,count\" stands in it: all channels stay as they were";
    if (lines.Bare())
        *note += (note->empty() ? "" : "; ") +
                 ("its lines end in LF alone: the channel count stays " +
                  std::to_string(target.Data.DataNo) + ", as the slot had it");
}

std::int16_t LoadDac(const std::string& path, ReadTarget target, const FileTalk& talk) {
    return Reading(path, talk, [&](std::string& note) {
        std::ifstream in = OpenToRead(path);
        ReadDacText(in, target, &note);
    });
}

}  // namespace vael
