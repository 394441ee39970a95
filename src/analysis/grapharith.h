// Graph arithmetic: a curve from a curve and a constant, or from two curves, channel by channel.
#pragma once

#include "core/records.h"

namespace vael {

/// The four operations, in the order of the lists that offer them.
inline constexpr int OP_ADD = 0;
inline constexpr int OP_SUBTRACT = 1;
inline constexpr int OP_MULTIPLY = 2;
inline constexpr int OP_DIVIDE = 3;

/// result = source op k, in 8-byte floats, to the nearest whole count with ties to the even one, in
/// the channels 0 to DataNo - 1 of `source`, which is the channel count of `result` afterwards; the
/// channels behind them stay. A division by 0 gives 0, any other `op` gives 0. `source` and
/// `result` may be the same. Faults: Overflow beyond 32 bits; the channels before it are computed.
void ApplyConstant(int op, const SpectrumData& source, double k, SpectrumData& result);

/// result = first op second in 32-bit integers (the quotient in 8-byte floats, to the nearest whole
/// count with ties to the even one), in the channels of `first`. A division by 0 gives 0, any other
/// `op` gives 0. Faults: Overflow beyond 32 bits; the channels before it are computed.
void CombineGraphs(int op, const SpectrumData& first, const SpectrumData& second,
                   SpectrumData& result);

}  // namespace vael
