// The program's memory: one fixed store of spectra, graph rows, peaks, regions and settings.
#include "core/store.h"

#include "core/fault.h"

namespace vael {
namespace {

template <class Action>
void ForSlots(int slot, Action action) {
    if (slot >= 0) {
        (void)Item(store.SpectrumDatas, slot);
        action(static_cast<std::size_t>(slot));
        return;
    }
    for (std::size_t n = 0; n < SLOT_COUNT; ++n) action(n);
}

}  // namespace

DacAxis DacNow() {
    return {.Offset = store.DacOffset, .Slope = store.DacSlope, .Lambda = settings.Lambda};
}

const ParamRecord& ParamInForce(int slot) {
    return store.UseFileEgc != 0 ? Item(store.PropertyRecords, slot).Param : store.DefaultParam;
}

void ClearProperty(int slot) {
    ForSlots(slot, [](std::size_t n) {
        PropertyRecord empty{};
        for (auto* text : {&empty.FileName, &empty.SampleName}) text->SetBytes("");
        empty.OpDate.SetBytes("");
        empty.OpTime.SetBytes("");
        empty.TimeSpare.SetBytes("");
        empty.OpName.SetBytes("");
        empty.Memo.SetBytes("");
        for (auto& text : empty.SpareText) text.SetBytes("");
        store.PropertyRecords[n] = empty;
    });
}

void ClearSpectrum(int slot) {
    ForSlots(slot, [](std::size_t n) { store.SpectrumDatas[n] = SpectrumData{}; });
}

void SetDefaultEgc(int slot) {
    ForSlots(slot, [](std::size_t n) {
        ParamRecord& param = store.PropertyRecords[n].Param;
        param.EgcCoef = store.DefaultParam.EgcCoef;
        param.TwoTheta = store.DefaultParam.TwoTheta;
    });
}

}  // namespace vael
