// The world of the tests of ExpressFitting and of peaks by hand: a spectrum of three lines.
#pragma once

#include "analysis/peak.h"
#include "core/areamarks.h"
#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "support/plotted.h"
#include "toolkit/hand.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace vael::test::express {

inline VaelAnaView& V() { return frmVaelAna; }
inline PeakTable& Table(int slot) { return store.PeakTables[static_cast<std::size_t>(slot)]; }
inline PeakRecord& PeakOf(int slot, int row) {
    return Table(slot).Peak[static_cast<std::size_t>(row)];
}
inline std::string NameOf(int row) { return store.GraphList[static_cast<std::size_t>(row)].Name; }

struct Express : Plotted {
    /// Three separate Gaussians on 10 counts.
    const std::vector<GaussLine> Lines{{600.3, 4000, 10}, {1500.0, 9000, 12}, {2700.6, 2500, 14}};
    Express() { Click(V().mnuExpressFit); }
    int OpenLines(int channels = 4096) {
        Open({Spectrum("lines.npd", channels, Lines)});
        return DataNo();
    }
    static void Area(int from, int to) {
        V().chkArea.Value = 1;
        SetArea(from, to);
    }
    struct Start {
        double Position;
        double Amplitude;
        double Width;  // half of the full one
    };
    /// A peak that is listed and not yet fitted: its start values and its channels.
    static void Put(int slot, const Start& start, std::pair<int, int> region,
                    std::int16_t type = SHAPE_GAUSS) {
        PeakRecord peak{};
        peak.Position = start.Position;
        peak.Amplitude = start.Amplitude;
        peak.Width = start.Width;
        peak.FuncType = type;
        peak.StartCh = Whole16(region.first);
        peak.EndCh = Whole16(region.second);
        AddPeak(0, 0, slot, peak, Table(slot), Marks{});
    }
    static int NamedRows(const std::string& name) {
        return static_cast<int>(std::count_if(
            store.GraphList.begin(), store.GraphList.end(),
            [&](const GraphEntry& row) { return row.State != 0 && row.Name == name; }));
    }
    /// Distance of the nearest peak of a slot from a centre.
    static double Off(int slot, double centre) {
        double best = 1e9;
        for (int i = 0; i < Table(slot).PeakNum; ++i)
            best = std::min(best, std::fabs(PeakOf(slot, i).Position - centre));
        return best;
    }
    static void Full(int slot) {
        Table(slot).PeakNum = MAX_PEAKS;
        for (int i = 0; i < MAX_PEAKS; ++i) {
            PeakOf(slot, i) = PeakRecord{};
            PeakOf(slot, i).Position = 3000.0 + i;
            PeakOf(slot, i).Width = 1.0;
        }
    }
};

}  // namespace vael::test::express
