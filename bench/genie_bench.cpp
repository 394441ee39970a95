// Reading and writing of .rpt, .cnf and .raw from and to memory, through the stream entries.
#include "files/filedac.h"
#include "files/filegenie.h"
#include "support/spectra.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <sstream>

namespace {

using namespace vael;

struct Slot {
    SpectrumData Data{};
    PropertyRecord Prop = BlankProperty();
    std::int16_t Last = 0;
    explicit Slot(int channels) {
        const auto counts =
            GaussCounts(channels, 100, {{800, 20000, 9}, {1900, 9000, 12}, {3000, 4000, 15}});
        std::copy(counts.begin(), counts.end(), Data.Count.begin());
        Data.DataNo = static_cast<std::int16_t>(channels);
    }
    [[nodiscard]] ReadTarget Target() { return {Data, Prop, Last}; }
};

template <class Read>
void FromMemory(benchmark::State& state, Slot& slot, const std::string& bytes, Read read) {
    for (auto _ : state) {
        std::istringstream in(bytes);
        read(in, slot.Target());
        benchmark::DoNotOptimize(slot.Data.Count[800]);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes.size()) * state.iterations());
}

void ReadRpt(benchmark::State& state) {
    const auto slot = std::make_unique<Slot>(static_cast<int>(state.range(0)));
    std::ostringstream text;
    WriteRptText(text, slot->Data, slot->Prop);
    FromMemory(state, *slot, text.str(), ReadRptText);
}
BENCHMARK(ReadRpt)->Arg(4096)->Arg(8192)->Unit(benchmark::kMicrosecond);

void WriteRpt(benchmark::State& state) {
    const auto slot = std::make_unique<Slot>(static_cast<int>(state.range(0)));
    std::size_t size = 0;
    for (auto _ : state) {
        std::ostringstream out;
        WriteRptText(out, slot->Data, slot->Prop);
        size = out.view().size();
        benchmark::DoNotOptimize(size);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(size) * state.iterations());
}
BENCHMARK(WriteRpt)->Arg(4096)->Arg(8192)->Unit(benchmark::kMicrosecond);

void ReadCnf(benchmark::State& state) {  // always 4096 channels
    const auto slot = std::make_unique<Slot>(4096);
    std::string bytes(41984, ' ');
    bytes[11] = static_cast<char>(164);
    FromMemory(state, *slot, bytes, ReadCnfBody);
}
BENCHMARK(ReadCnf)->Unit(benchmark::kMicrosecond);

void ReadRaw(benchmark::State& state, const char* end) {
    const auto slot = std::make_unique<Slot>(static_cast<int>(state.range(0)));
    std::string text;
    for (int i = 0; i < state.range(0); ++i)
        text += std::to_string(1.779794 + 0.0097718 * i) + "," +
                std::to_string(slot->Data.Count[static_cast<std::size_t>(i)]) + end;
    FromMemory(state, *slot, text,
               [](std::istream& in, ReadTarget target) { ReadDacText(in, target); });
}
BENCHMARK_CAPTURE(ReadRaw, crlf, "\r\n")->Arg(4096)->Arg(8192)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(ReadRaw, lf, "\n")->Arg(4096)->Arg(8192)->Unit(benchmark::kMicrosecond);

}  // namespace
