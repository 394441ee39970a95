// The fit graph: where the curve of a slot's peaks goes.
#include "core/fitgraph.h"

#include "analysis/peak.h"
#include "core/fault.h"
#include "core/graphs.h"
#include "core/store.h"
#include "core/windows.h"

namespace vael {
namespace {

PropertyRecord& Property(int slot) { return Item(store.PropertyRecords, slot); }

struct FitPlace {
    int Slot = -1;
    int Row = -1;
};

FitPlace PlaceForFit(int source, FitRow which) {
    if ((Property(source).Param.DerivedFlags & DERIVED_FIT) != 0)
        return {source, RowOfSlot(source)};
    const int row = which == FitRow::Named ? RowOfName(NAME_FIT) : OwnFitRow(source);
    if (row >= 0) return {GetGraphDataNo(row), row};
    return {InsertGraph(), 0};
}

}  // namespace

int OwnFitRow(int source) {
    for (int row = 0; row < GRAPH_COUNT; ++row) {
        const GraphEntry& entry = Item(store.GraphList, row);
        if (entry.State != 0 && entry.Name == NAME_FIT &&
            Item(store.FitSource, entry.DataNo) == source + 1)
            return row;
    }
    return -1;
}

int PutFitGraph(int window, int source, FitRow which) {
    const PeakTable peaks = Item(store.PeakTables, source);
    SpectrumData curve{};  // worked out before rows move
    MakeFitGraph(Item(store.SpectrumDatas, source), peaks, curve, ALL_BITS, 4);
    const FitPlace place = PlaceForFit(source, which);
    if (place.Slot < 0) return -1;
    Item(store.SpectrumDatas, place.Slot) = curve;
    if (place.Slot != source) {
        Item(store.FitSource, place.Slot) = Int16(source + 1);
        Property(place.Slot) = Property(source);
        Item(store.PeakTables, place.Slot) = peaks;
    }
    Property(place.Slot).Param.DerivedFlags |= DERIVED_FIT;
    SetGraph(window, place.Row, place.Slot, NAME_FIT);
    return place.Row;
}

void ShowFitGraph(int window, int source) {
    (void)PutFitGraph(window, source, FitRow::Own);
    AutoScaleBoth();
    Change_cboGrphSel(window, RowOfSlot(source));
}

}  // namespace vael
