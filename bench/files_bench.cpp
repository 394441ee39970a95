// Reading and writing of spectra of 4096 channels.
#include "files/filenpd.h"
#include "files/filevael.h"
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
};

std::vector<std::int32_t> Counts() {
    return GaussCounts(4096, 100, {{800, 20000, 9}, {1900, 9000, 12}, {3000, 4000, 15}});
}

void ReadNpd(benchmark::State& state) {
    const std::string text = NpdText(Counts());
    const auto slot = std::make_unique<Slot>();
    for (auto _ : state) {
        std::istringstream in(text);
        ReadNpdText(in, {slot->Data, slot->Prop, slot->Last});
        benchmark::DoNotOptimize(slot->Data.Count[800]);
    }
}
BENCHMARK(ReadNpd)->Unit(benchmark::kMicrosecond);

void WriteNpd(benchmark::State& state) {
    const auto slot = std::make_unique<Slot>();
    std::istringstream in(NpdText(Counts()));
    ReadNpdText(in, {slot->Data, slot->Prop, slot->Last});
    for (auto _ : state) {
        std::ostringstream out;
        WriteNpdText(out, slot->Data, slot->Prop);
        benchmark::DoNotOptimize(out.view().size());
    }
}
BENCHMARK(WriteNpd)->Unit(benchmark::kMicrosecond);

void ReadXbm(benchmark::State& state) {
    const auto slot = std::make_unique<Slot>();
    const auto counts = Counts();
    slot->Data.DataNo = 4096;
    std::copy(counts.begin(), counts.end(), slot->Data.Count.begin());
    std::ostringstream image;
    WriteXbmBody(image, slot->Data, slot->Prop);
    const std::string bytes = image.str();
    for (auto _ : state) {
        std::istringstream in(bytes);
        ReadXbmBody(in, {slot->Data, slot->Prop, slot->Last});
        benchmark::DoNotOptimize(slot->Data.Count[800]);
    }
}
BENCHMARK(ReadXbm)->Unit(benchmark::kMicrosecond);

}  // namespace
