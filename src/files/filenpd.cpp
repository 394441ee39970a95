// FileNPD: the text form that the dialogs call "Nippon high Pressure Data File (*.npd)".
#include "files/filenpd.h"

#include "core/fault.h"
#include "core/text.h"
#include "files/npdlines.h"
#include "files/trip.h"

// Layout: lines "key,value" that end in CR LF, read by position and not by key, code page 932.
//   1 Record length   2 Sample name (the record's FileName)   3 Operator   4 Profile number (its
//   SampleName)   5 Time   6 Measurement mode   7-9 EGC0-2   10 2Theta   11 Live time   12 Real
//   time
//   13 Dead time   14 Temperature in kelvin   15 Press load   16 Ring status   17 Beam intensity
//   18 Counting rate   19 Press   20 Incident slit   21 Receiving slit   22 Heating   23 Comment
//   then, behind the counted header lines: Ram Stroke, Data length N, Counting sec, and N lines
//   "channel,energy,count".
// The writer counts 27 header lines, the stroke among them, and the reader looks for the stroke
// behind the counted ones: this mismatch is the settled behaviour of both, so a file of this writer
// reads back with N in RamStroke, the counting seconds as its length and its first channel dropped.
// Files that carry a record length of 23 read correctly.

namespace vael {
namespace {

constexpr int HEADER_READ = NPD_SHARED_LINES + 1;  // and the comment

std::string Trimmed(std::string_view bytes) { return Trim(OneLine(bytes)); }

}  // namespace

void ReadNpdText(std::istream& in, ReadTarget target) {
    ReadNpdForm(in, target, [&](TextLines& lines) {
        const std::int16_t header = ReadNpdShared(lines, target.Prop);
        target.Prop.Memo.SetBytes(NpdValue(lines.Next("the comment")));
        SkipNpdLines(lines, header - HEADER_READ);
        target.Prop.Param.RamStroke =
            ParseNumber(NpdValue(lines.Next("the ram stroke"))).value_or(0.0);
        ReadNpdCounts(lines, lines.Next("the data length"), target.Data);
    });
}

void WriteNpdText(std::ostream& out, const SpectrumData& data, const PropertyRecord& prop) {
    constexpr const char* END = "\r\n";
    const ParamRecord& p = prop.Param;
    const bool live = p.MeasureType == 1 || p.MeasureType == 3;
    const auto three = [](double value) { return FormatNumber(value, "#0.000"); };
    const auto two = [](double value) { return FormatNumber(value, "#0.00"); };

    out << "Record length,27" << END;
    out << "Sample name," << Trimmed(prop.FileName.View()) << END;
    out << "Operator name," << Trimmed(prop.OpName.View()) << END;
    out << "Profile number," << Trimmed(prop.SampleName.View()) << END;
    out << "Time," << NpdMoment(prop) << END;
    out << "Measurement mode," << (live ? "Live" : p.MeasureType == 4 ? "Separate" : "Real") << END;
    for (std::size_t k = 0; k < 3; ++k)
        out << "EGC" << k << ',' << FormatNumber(p.EgcCoef[k], "0.00000E+000") << END;
    out << "2Theta(deg)," << FormatNumber(p.TwoTheta, "#0.0000") << END;
    out << "Live time(sec)," << two(p.LiveTime) << END;
    out << "Real time(sec)," << two(p.RealTime) << END;
    out << "Dead time(%)," << FormatNumber(p.DeadTime, "#0.00000") << END;
    out << "Temperature(K)," << two(p.Temperature + NPD_KELVIN) << END;
    out << "Press load(ton)," << two(p.PressLoad) << END;
    out << "Ring status,current(mA)=" << two(p.RingCurrent) << END;
    out << "Beam intensity," << two(p.IonChamber) << END;
    out << "Counting rate," << two(p.CountRate) << END;
    out << "Press conditions, X(mm)=" << three(p.PressX) << " Y(mm)=" << three(p.PressY)
        << " Z(mm)=" << three(p.PressZ) << " PHI(deg)=" << three(p.PressTZ) << END;
    out << "Incident slit conditions, V(mm)=" << three(p.InSlitV) << " H(mm)=" << three(p.InSlitH)
        << END;
    out << "Receiving slit conditions, V(mm)=" << three(p.ReSlitV) << " H(mm)=" << three(p.ReSlitH)
        << " Collimator(mm)=" << three(p.CollimatorSize) << END;
    out << "Heating conditions, V(V)=" << two(p.Volt) << " C(A)=" << two(p.Current2)
        << " P(W)=" << two(p.Power) << " R(OHM)=" << three(p.Resistance) << END;
    out << "Comment," << OneLine(prop.Memo.View()) << END;
    out << "Ram Stroke," << two(p.RamStroke) << END;
    out << ',' << END << ',' << END << ',' << END;
    out << "Data length, " << data.DataNo << END;
    out << "Counting sec, " << three(live ? p.LiveTime : p.RealTime) << END;
    out << ChannelLines(data, p.EgcCoef, "0.0000");
}

std::int16_t SaveNpd(const std::string& path, const SpectrumData& data, const PropertyRecord& prop,
                     const FileTalk& talk) {
    if (FileExists(path) && !talk.ask("File already exist. Replace?(NPD)")) return FALSE_WORD;
    return Writing(path, talk, false, [&](std::ostream& out) { WriteNpdText(out, data, prop); });
}

std::int16_t LoadNpd(const std::string& path, ReadTarget target, const FileTalk& talk) {
    return Reading(path, talk, [&](std::string&) {
        std::ifstream in = OpenToRead(path);
        ReadNpdText(in, target);
    });
}

}  // namespace vael
