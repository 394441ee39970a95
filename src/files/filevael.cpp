// FileVael: the system's own spectrum files .xbm, .xba and .xta.
#include "files/filevael.h"

#include "core/fault.h"
#include "core/text.h"
#include "files/textfile.h"
#include "files/trip.h"

#include <algorithm>
#include <memory>
#include <span>
#include <vector>

// Layout of .xbm, packed, little-endian, offsets in bytes:
//    0     2  the characters "00", never tested
//    2  1402  common block: PropertyRecord from RecordValid to SpareText, in the record's order
// 1404   584  measure block: ParamRecord in the record's order, without its last 82 bytes
// 1988     2  channel count N, signed
// 1990   4 N  counts, signed, channel 1 first
// .xba goes on, only when RecordValid is 1:
//             2  number of peaks P, signed
//          70 P  peaks, PeakRecord in the record's order
// Layout of .csv, lines that end in CR LF, code page 932; of the header each ends in ", ":
//    1-10  key,value: Press X, Press Y, Press Z, Press Load, Pressure, Temperature, Live Time,
//          EGC(0), EGC(1), 2theta with the Greek letter; EGC(2) is not written and counts for the
//          energies all the same
//   11-12  empty      13  channel count      14  Channel,Energy,Count
//    then  channel from 1, its energy in keV, its count

namespace vael {
namespace {

constexpr std::uint64_t OFFSET_COUNT = 1988;

template <std::size_t N>
void Text(PackedReader& in, FixedText<N>& text) {
    in.Text(text.Bytes);
}
template <std::size_t N>
void Text(PackedWriter& out, const FixedText<N>& text) {
    out.Text(text.View());
}

/// The fields of the two blocks in file order, once for both directions.
template <class Stream, class Prop>
void CommonBlock(Stream& s, Prop& p) {
    s.Field(p.RecordValid);
    Text(s, p.FileName);
    Text(s, p.SampleName);
    Text(s, p.OpDate);
    Text(s, p.OpTime);
    Text(s, p.TimeSpare);
    Text(s, p.OpName);
    Text(s, p.Memo);
    s.Field(p.SourceType);
    for (auto& word : p.SpareFlags) s.Field(word);
    for (auto& text : p.SpareText) Text(s, text);
}

template <class Stream, class Param>
void MeasureBlock(Stream& s, Param& p) {
    s.Field(p.MeasureType);
    s.Field(p.PresetReal);
    s.Field(p.PresetLive);
    s.Bytes(p.SpareBlock);
    for (auto& coef : p.EgcCoef) s.Field(coef);
    s.Field(p.TwoTheta);
    s.Field(p.Volt);
    s.Field(p.RingCurrent);
    s.Field(p.Pressure);
    s.Field(p.Temperature);
    s.Field(p.IonChamber);
    s.Field(p.CountRate);
    s.Field(p.GainWord);
    s.Field(p.RealTime);
    s.Field(p.LiveTime);
    s.Field(p.DerivedFlags);
    for (auto* value :
         {&p.PressX,     &p.PressY,      &p.PressZ,      &p.PressTZ,        &p.HGonioX,
          &p.HGonioY,    &p.HGonioZ,     &p.HGonioSpare, &p.VGonioX,        &p.VGonioY,
          &p.VGonioZ,    &p.VGonioAngle, &p.PressLoad,   &p.RamStroke,      &p.Power,
          &p.Resistance, &p.RingStatus,  &p.DeadTime,    &p.InSlitV,        &p.InSlitH,
          &p.InSlitX,    &p.InSlitZ,     &p.InSlitTY,    &p.ReSlitV,        &p.ReSlitH,
          &p.ReSlitX,    &p.ReSlitZ,     &p.ReSlitTY,    &p.CollimatorSize, &p.Current2})
        s.Field(*value);
    s.Bytes(p.Spare);
}

template <class Stream, class Peak>
void PeakRow(Stream& s, Peak& p) {
    s.Field(p.FitState);
    s.Field(p.FuncType);
    s.Field(p.Amplitude);
    s.Field(p.GaussRatio);
    s.Field(p.Width);
    s.Field(p.Position);
    s.Field(p.BackConst);
    s.Field(p.BackSlope);
    s.Field(p.StartCh);
    s.Field(p.EndCh);
    s.Field(p.Intensity);
    s.Field(p.Spare);
    s.Field(p.Fitted);
}

/// The first `count` channels (none below 0).
template <class Counts>
auto Channels(Counts& counts, int count) {
    return std::span(counts).first(static_cast<std::size_t>(std::max(count, 0)));
}

void ReadBody(PackedReader& reader, ReadTarget target) {
    std::array<std::uint8_t, 2> mark{};
    reader.Bytes(mark);
    CommonBlock(reader, target.Prop);
    ReadParamBlock(reader, target.Prop.Param);
    std::int16_t count = 0;
    reader.Field(count);
    if (count > MAX_CHANNELS)
        throw Fault(FaultNumber::FileContent, "offset " + std::to_string(OFFSET_COUNT) +
                                                  ": at most 8192 channels were expected, not " +
                                                  std::to_string(count));
    target.Data.DataNo = count;
    reader.Fields(Channels(target.Data.Count, count));
    target.Prop.SourceType = SOURCE_NATIVE;
    target.LastSourceType = SOURCE_NATIVE;
}

void NoteShort(const PackedReader& reader, std::string* note) {
    if (reader.Short() && note != nullptr) *note = ShortNote(reader);
}

std::vector<std::unique_ptr<std::ifstream>>& HeldFiles() {
    static std::vector<std::unique_ptr<std::ifstream>> held;
    return held;
}

}  // namespace

void ReadParamBlock(PackedReader& in, ParamRecord& param) { MeasureBlock(in, param); }
void WriteParamBlock(PackedWriter& out, const ParamRecord& param) { MeasureBlock(out, param); }

void ReadXbmBody(std::istream& in, ReadTarget target, std::string* note) {
    PackedReader reader(in);
    ReadBody(reader, target);
    NoteShort(reader, note);
}

void WriteXbmBody(std::ostream& out, const SpectrumData& data, const PropertyRecord& prop) {
    PackedWriter writer(out);
    writer.Text("00");
    CommonBlock(writer, prop);
    WriteParamBlock(writer, prop.Param);
    writer.Field(data.DataNo);
    if (data.DataNo > MAX_CHANNELS) RaiseSubscript(data.DataNo - 1, data.Count.size());
    writer.Fields(Channels(data.Count, data.DataNo));
}

void ReadXbaBody(std::istream& in, ReadTarget target, PeakTable& peaks, std::string* note) {
    PackedReader reader(in);
    ReadBody(reader, target);
    if (target.Prop.RecordValid == 1) {
        const std::uint64_t at = reader.Offset();
        PeakTable read{};
        reader.Field(read.PeakNum);
        if (read.PeakNum > MAX_PEAKS)
            throw Fault(FaultNumber::FileContent, "offset " + std::to_string(at) +
                                                      ": at most 100 peaks were expected, not " +
                                                      std::to_string(read.PeakNum));
        // A block that is not there reads as 0 peaks, and a negative number stands for none too.
        read.PeakNum = std::max<std::int16_t>(read.PeakNum, 0);
        for (int i = 0; i < read.PeakNum; ++i) PeakRow(reader, Item(read.Peak, i));
        peaks = read;
    }
    NoteShort(reader, note);
}

void WriteXbaBody(std::ostream& out, const SpectrumData& data, const PropertyRecord& prop,
                  const PeakTable& peaks) {
    WriteXbmBody(out, data, prop);
    if (prop.RecordValid != 1) return;
    PackedWriter writer(out);
    writer.Field(peaks.PeakNum);
    for (int i = 0; i < peaks.PeakNum; ++i) PeakRow(writer, Item(peaks.Peak, i));
}

void WriteXtaText(std::ostream& out, const SpectrumData& data, const PropertyRecord& prop) {
    constexpr const char* END = "\r\n";
    const ParamRecord& param = prop.Param;
    out << WholeText(data.DataNo) << ' ' << END;
    out << CountBlock(data) << ReportNames(prop) << END;
    out << FormatNumber(param.Pressure, "#0.0") << ',' << FormatNumber(param.Temperature, "#0.0")
        << END;
    out << FormatNumber(param.TwoTheta, "##0.0") << ",0,0,0,0,0" << END;
    out << "0,0,0" << END << "0,0,0" << END;
    out << FormatNumber(param.EgcCoef[0], "###0.000") << ','
        << FormatNumber(param.EgcCoef[1], "##0.00000") << END;
}

void WriteCsvText(std::ostream& out, const SpectrumData& data, const PropertyRecord& prop) {
    constexpr const char* END = "\r\n";
    const ParamRecord& p = prop.Param;
    const auto line = [&](const std::string& key, double value, const char* format) {
        out << key << ',' << FormatNumber(value, format) << ", " << END;
    };
    line("Press X", p.PressX, "##0.000");
    line("Press Y", p.PressY, "##0.000");
    line("Press Z", p.PressZ, "##0.000");
    line("Press Load", p.PressLoad, "###0.000");
    line("Pressure", p.Pressure, "###0.000");
    line("Temperature", p.Temperature, "####0.000");
    line("Live Time", p.LiveTime, "#####0.00");
    line("EGC(0)", p.EgcCoef[0], "#####0.000000");
    line("EGC(1)", p.EgcCoef[1], "#####0.000000");
    line(ToCp932("2\u03b8"), p.TwoTheta, "#####0.00000");
    out << END << END;
    out << FormatNumber(data.DataNo, "###0") << ", , " << END;
    out << "Channel,Energy,Count" << END;
    out << ChannelLines(data, p.EgcCoef, "###0.000");
}

std::int16_t SaveXbm(const std::string& path, const SpectrumData& data, const PropertyRecord& prop,
                     const FileTalk& talk) {
    const std::string rebuilt = SplitFilePath(path).Base();
    const bool sequence = !path.empty() && path.back() >= '0' && path.back() <= '9';
    if (rebuilt != "temp00.xbm" && !sequence && FileExists(path) &&
        !talk.ask("File already exist. Replace?(xbm)"))
        return FALSE_WORD;
    // Opening does not shorten an existing file: a longer old one keeps its tail.
    return Writing(path, talk, true, [&](std::ostream& out) { WriteXbmBody(out, data, prop); });
}

std::int16_t SaveXba(const std::string& path, const SpectrumData& data, const PropertyRecord& prop,
                     const PeakTable& peaks, const FileTalk& talk) {
    if (FileExists(path) && !talk.ask("File alrady exist. Replace?")) return FALSE_WORD;
    return Writing(path, talk, true,
                   [&](std::ostream& out) { WriteXbaBody(out, data, prop, peaks); });
}

std::int16_t SaveXta(const std::string& path, const SpectrumData& data, const PropertyRecord& prop,
                     const PeakTable&, const FileTalk& talk) {
    TellTouchingCounts(path, data, talk);
    return Writing(path, talk, false, [&](std::ostream& out) { WriteXtaText(out, data, prop); });
}

std::int16_t SaveCsv(const std::string& path, const SpectrumData& data, const PropertyRecord& prop,
                     const FileTalk& talk) {
    const std::int16_t done =
        Writing(path, talk, false, [&](std::ostream& out) { WriteCsvText(out, data, prop); });
    if (done != TRUE_WORD) talk.say("CSV File Write Error");
    return done;
}

std::int16_t LoadXbm(const std::string& path, ReadTarget target, const FileTalk& talk) {
    return Reading(path, talk, [&](std::string& note) {
        std::ifstream in = OpenToRead(path);
        ReadXbmBody(in, target, &note);
    });
}

std::int16_t LoadXba(const std::string& path, ReadTarget target, PeakTable& peaks,
                     const FileTalk& talk) {
    return Reading(path, talk, [&](std::string& note) {
        HeldFiles().push_back(std::make_unique<std::ifstream>(OpenToRead(path)));
        ReadXbaBody(*HeldFiles().back(), target, peaks, &note);
    });
}

int HeldXbaFiles() { return static_cast<int>(HeldFiles().size()); }

}  // namespace vael
