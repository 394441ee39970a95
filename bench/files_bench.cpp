// Reading and writing of spectra of 4096 and 8192 channels: from and to memory through the stream
// entries, and with the file and its sync.
#include "core/fault.h"
#include "files/extensions.h"
#include "files/filedac.h"
#include "files/filegenie.h"
#include "files/filegsa.h"
#include "files/filenpd.h"
#include "files/fileortec.h"
#include "files/filevael.h"
#include "support/spectra.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <streambuf>
#include <vector>

namespace {

using namespace vael;

struct Slot {
    SpectrumData Data{};
    PropertyRecord Prop = BlankProperty();
    PeakTable Peaks{};
    std::int16_t Last = 0;
};

std::unique_ptr<Slot> Filled(int channels) {
    auto slot = std::make_unique<Slot>();
    const auto counts =
        GaussCounts(channels, 100, {{800, 20000, 9}, {1900, 9000, 12}, {3000, 4000, 15}});
    slot->Data.DataNo = static_cast<std::int16_t>(channels);
    std::copy(counts.begin(), counts.end(), slot->Data.Count.begin());
    slot->Prop.RecordValid = 1;
    slot->Prop.OpDate = "20070905";
    slot->Prop.OpTime = "123456";
    slot->Prop.Param.EgcCoef = {0.0449898, 0.03163848, -1.27181e-8};
    slot->Peaks.PeakNum = 15;
    return slot;
}

/// Memory that is there already: what a writer costs, without the growing of a string under it.
class MemorySink : public std::streambuf {
public:
    explicit MemorySink(std::size_t size) : bytes_(size) { Rewind(); }
    void Rewind() { setp(bytes_.data(), bytes_.data() + bytes_.size()); }
    [[nodiscard]] std::size_t Size() const { return static_cast<std::size_t>(pptr() - pbase()); }

private:
    std::vector<char> bytes_;
};

using Write = void (*)(std::ostream&, const Slot&);
using Read = void (*)(std::istream&, Slot&);

void Xbm(std::ostream& out, const Slot& s) { WriteXbmBody(out, s.Data, s.Prop); }
void Xba(std::ostream& out, const Slot& s) { WriteXbaBody(out, s.Data, s.Prop, s.Peaks); }
void Xta(std::ostream& out, const Slot& s) { WriteXtaText(out, s.Data, s.Prop); }
void Npd(std::ostream& out, const Slot& s) { WriteNpdText(out, s.Data, s.Prop); }
void Gsa(std::ostream& out, const Slot& s) { WriteGsaText(out, s.Data, s.Prop); }
void Csv(std::ostream& out, const Slot& s) { WriteCsvText(out, s.Data, s.Prop); }
void Rpt(std::ostream& out, const Slot& s) { WriteRptText(out, s.Data, s.Prop); }

// Forms that no writer of the program makes.

void Cnf(std::ostream& out, const Slot&) {  // always 4096 channels
    std::string bytes(41984, ' ');
    bytes[11] = static_cast<char>(164);
    out << bytes;
}

void Pairs(std::ostream& out, const Slot& s, const char* end) {
    for (int i = 0; i < s.Data.DataNo; ++i)
        out << std::to_string(1.779794 + 0.0097718 * i) << ',' << Item(s.Data.Count, i) << end;
}
void RawCrLf(std::ostream& out, const Slot& s) { Pairs(out, s, "\r\n"); }
void RawLf(std::ostream& out, const Slot& s) { Pairs(out, s, "\n"); }

void Chn(std::ostream& out, const Slot& s) {
    std::string head(32, '\0');
    std::copy_n(reinterpret_cast<const char*>(&s.Data.DataNo), 2, head.begin() + 30);
    out << head;
    out.write(reinterpret_cast<const char*>(s.Data.Count.data()), 4L * s.Data.DataNo);
    out << std::string(12, '\0');
}

/// What the .npd reader takes whole: a header of 23 lines.
void Npd23(std::ostream& out, const Slot& s) {
    out << NpdText({s.Data.Count.begin(), s.Data.Count.begin() + s.Data.DataNo});
}

void Xbm(std::istream& in, Slot& s) { ReadXbmBody(in, {s.Data, s.Prop, s.Last}); }
void Xba(std::istream& in, Slot& s) { ReadXbaBody(in, {s.Data, s.Prop, s.Last}, s.Peaks); }
void Chn(std::istream& in, Slot& s) { ReadChnBody(in, {s.Data, s.Prop, s.Last}); }
void Npd(std::istream& in, Slot& s) { ReadNpdText(in, {s.Data, s.Prop, s.Last}); }
void Gsa(std::istream& in, Slot& s) { ReadGsaText(in, {s.Data, s.Prop, s.Last}); }
void Rpt(std::istream& in, Slot& s) { ReadRptText(in, {s.Data, s.Prop, s.Last}); }
void Cnf(std::istream& in, Slot& s) { ReadCnfBody(in, {s.Data, s.Prop, s.Last}); }
void Raw(std::istream& in, Slot& s) { ReadDacText(in, {s.Data, s.Prop, s.Last}); }

std::string Bytes(Write write, int channels) {
    std::ostringstream out;
    write(out, *Filled(channels));
    return out.str();
}

void ReadForm(benchmark::State& state, Write made, Read read) {
    const std::string bytes = Bytes(made, static_cast<int>(state.range(0)));
    const auto slot = std::make_unique<Slot>();
    for (auto _ : state) {
        std::istringstream in(bytes);
        read(in, *slot);
        benchmark::DoNotOptimize(slot->Data.Count[800]);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}

void WriteForm(benchmark::State& state, Write write) {
    const auto slot = Filled(static_cast<int>(state.range(0)));
    MemorySink sink(1 << 20);
    std::ostream out(&sink);
    for (auto _ : state) {
        sink.Rewind();
        write(out, *slot);
        benchmark::ClobberMemory();
    }
    if (!out) return state.SkipWithError("the sink is too small");
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(sink.Size()));
}

/// A folder of the benchmark's own.
std::string Place(const std::string& name) {
    static const std::string folder = [] {
        std::string made = (std::filesystem::temp_directory_path() / "vael-bench").string();
        std::filesystem::create_directories(made);
        return made;
    }();
    return folder + "/" + name;
}

void ReadWholeFile(benchmark::State& state, Write made, const char* name) {
    const std::string path = Place(name);
    const std::string bytes = Bytes(made, static_cast<int>(state.range(0)));
    std::ofstream(path, std::ios::binary) << bytes;
    const auto slot = std::make_unique<Slot>();
    for (auto _ : state)
        if (ReadByExtension(path, {slot->Data, slot->Prop, slot->Last}, slot->Peaks, {}) !=
            TRUE_WORD)
            return state.SkipWithError("not read");
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
    std::filesystem::remove(path);
}

void WriteWholeFile(benchmark::State& state, const char* name) {
    const std::string path = Place(name);
    const auto slot = Filled(static_cast<int>(state.range(0)));
    FileTalk talk;
    talk.ask = [](std::string_view) { return true; };
    for (auto _ : state)
        if (KindOf(path)->Write(path, {slot->Data, slot->Prop, slot->Peaks}, talk) != TRUE_WORD)
            return state.SkipWithError("not written");
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(std::filesystem::file_size(path)));
    std::filesystem::remove(path);
}

#define VAEL_BOTH_SIZES ->Arg(4096)->Arg(8192)->Unit(benchmark::kMicrosecond)
#define VAEL_BY_THE_CLOCK VAEL_BOTH_SIZES->UseRealTime()
BENCHMARK_CAPTURE(ReadForm, npd, Npd23, Npd) VAEL_BOTH_SIZES;
BENCHMARK_CAPTURE(ReadForm, gsa, Npd, Gsa) VAEL_BOTH_SIZES;
BENCHMARK_CAPTURE(ReadForm, rpt, Rpt, Rpt) VAEL_BOTH_SIZES;
BENCHMARK_CAPTURE(ReadForm, raw_crlf, RawCrLf, Raw) VAEL_BOTH_SIZES;
BENCHMARK_CAPTURE(ReadForm, raw_lf, RawLf, Raw) VAEL_BOTH_SIZES;
BENCHMARK_CAPTURE(ReadForm, cnf, Cnf, Cnf)->Arg(4096)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(ReadForm, xbm, Xbm, Xbm) VAEL_BOTH_SIZES;
BENCHMARK_CAPTURE(ReadForm, xba, Xba, Xba) VAEL_BOTH_SIZES;
BENCHMARK_CAPTURE(ReadForm, chn, Chn, Chn) VAEL_BOTH_SIZES;
BENCHMARK_CAPTURE(WriteForm, npd, Npd) VAEL_BOTH_SIZES;
BENCHMARK_CAPTURE(WriteForm, gsa, Gsa) VAEL_BOTH_SIZES;
BENCHMARK_CAPTURE(WriteForm, rpt, Rpt) VAEL_BOTH_SIZES;
BENCHMARK_CAPTURE(WriteForm, csv, Csv) VAEL_BOTH_SIZES;
BENCHMARK_CAPTURE(WriteForm, xta, Xta) VAEL_BOTH_SIZES;
BENCHMARK_CAPTURE(WriteForm, xbm, Xbm) VAEL_BOTH_SIZES;
BENCHMARK_CAPTURE(WriteForm, xba, Xba) VAEL_BOTH_SIZES;
// No .xba: its reader keeps every file open.
BENCHMARK_CAPTURE(ReadWholeFile, npd, Npd23, "r.npd") VAEL_BY_THE_CLOCK;
BENCHMARK_CAPTURE(ReadWholeFile, gsa, Npd, "r.gsa") VAEL_BY_THE_CLOCK;
BENCHMARK_CAPTURE(ReadWholeFile, rpt, Rpt, "r.rpt") VAEL_BY_THE_CLOCK;
BENCHMARK_CAPTURE(ReadWholeFile, raw, RawCrLf, "r.raw") VAEL_BY_THE_CLOCK;
BENCHMARK_CAPTURE(ReadWholeFile, cnf, Cnf, "r.cnf")
    ->Arg(4096)
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(ReadWholeFile, xbm, Xbm, "r.xbm") VAEL_BY_THE_CLOCK;
BENCHMARK_CAPTURE(ReadWholeFile, chn, Chn, "r.chn") VAEL_BY_THE_CLOCK;
BENCHMARK_CAPTURE(WriteWholeFile, npd, "w.npd") VAEL_BY_THE_CLOCK;
BENCHMARK_CAPTURE(WriteWholeFile, gsa, "w.gsa") VAEL_BY_THE_CLOCK;
BENCHMARK_CAPTURE(WriteWholeFile, rpt, "w.rpt") VAEL_BY_THE_CLOCK;
BENCHMARK_CAPTURE(WriteWholeFile, csv, "w.csv") VAEL_BY_THE_CLOCK;
BENCHMARK_CAPTURE(WriteWholeFile, xta, "w.xta") VAEL_BY_THE_CLOCK;
BENCHMARK_CAPTURE(WriteWholeFile, xbm, "w.xbm") VAEL_BY_THE_CLOCK;
BENCHMARK_CAPTURE(WriteWholeFile, xba, "w.xba") VAEL_BY_THE_CLOCK;

}  // namespace
