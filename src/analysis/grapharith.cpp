// Graph arithmetic: a curve from a curve and a constant, or from two curves, channel by channel.
#include "analysis/grapharith.h"

#include "core/fault.h"

namespace vael {
namespace {

template <class Value>
void EachChannel(const SpectrumData& source, SpectrumData& result, Value value) {
    result.DataNo = source.DataNo;
    for (int i = 0; i < source.DataNo; ++i) Item(result.Count, i) = value(i);
}

double WithConstant(int op, double count, double k) {
    switch (op) {
        case OP_ADD: return count + k;
        case OP_SUBTRACT: return count - k;
        case OP_MULTIPLY: return count * k;
        case OP_DIVIDE: return k == 0.0 ? 0.0 : count / k;
        default: return 0.0;
    }
}

std::int32_t Combined(int op, std::int32_t first, std::int32_t second) {
    switch (op) {
        case OP_ADD: return Int32(first) + Int32(second);
        case OP_SUBTRACT: return Int32(first) - Int32(second);
        case OP_MULTIPLY: return Int32(first) * Int32(second);
        case OP_DIVIDE:
            return second == 0 ? 0
                               : Whole32(static_cast<double>(first) / static_cast<double>(second));
        default: return 0;
    }
}

}  // namespace

void ApplyConstant(int op, const SpectrumData& source, double k, SpectrumData& result) {
    EachChannel(source, result,
                [&](int i) { return Whole32(WithConstant(op, Item(source.Count, i), k)); });
}

void CombineGraphs(int op, const SpectrumData& first, const SpectrumData& second,
                   SpectrumData& result) {
    EachChannel(first, result,
                [&](int i) { return Combined(op, Item(first.Count, i), Item(second.Count, i)); });
}

}  // namespace vael
