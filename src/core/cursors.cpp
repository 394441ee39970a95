// The channel cursor and the boxes that read it out.
#include "core/cursors.h"

#include "analysis/peak.h"
#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/store.h"
#include "core/units.h"

#include <algorithm>

namespace vael {

int CursorCh() {
    const double shown = frmVaelAna.inumCursorCh.Value;
    return std::clamp<int>(static_cast<int>(RoundEven(shown)) - 1, 0, store.SpanCh - 1);
}

void CsrX_Change(int ch) {
    frmVaelAna.inumCursorCh.Value = std::clamp<int>(ch, 0, store.SpanCh - 1) + 1;
    ShowCursorValues();
}

void ShowCursorValues() {
    VaelAnaView& v = frmVaelAna;
    const int ch = CursorCh();
    const int slot = DataNo();
    const bool angle = Item(store.PropertyRecords, slot).SourceType == SOURCE_DAC;
    const ParamRecord& param = ParamInForce(slot);
    constexpr std::array<int, 5> SHOWN{UNIT_CH, UNIT_KEV, UNIT_D, UNIT_Q, UNIT_2THETA};
    for (std::size_t k = 0; k < SHOWN.size(); ++k) {
        const bool possible = SHOWN[k] != UNIT_2THETA || angle;  // only DAC spectra have an angle
        v.inumCursorDisp[k].Value = possible ? ChToUnit(SHOWN[k], ch, param, DacNow()) : 0.0;
    }
    for (std::size_t win = 0; win < WINDOW_COUNT; ++win) {
        const int row = std::max(0, v.cboGrphSel[win].Index);
        const GraphEntry& entry = Item(store.GraphList, row);
        const SpectrumData& data = Item(store.SpectrumDatas, entry.DataNo);
        v.inumCursorCnt[win].Value = entry.State > 0 && ch < data.DataNo ? Item(data.Count, ch) : 0;
    }
}

void JumpPeak(int slot, int channel, int direction) {
    const auto jump = JumpPeak(Item(store.PeakTables, slot), channel, direction);
    if (!jump) return;
    CsrX_Change(jump->Channel);
    frmVaelAna.inumCursorCh.Value = jump->Position;
}

}  // namespace vael
