// The coefficient tables of the platinum and magnesia scales.
#pragma once

#include <array>

namespace vael {

inline constexpr int PT_ROWS = 49;
inline constexpr double PT_FIRST = -0.06;  // compression of row 1
inline constexpr int MGO_ROWS = 73;
inline constexpr double MGO_FIRST = -0.1;
inline constexpr double TABLE_STEP = 0.005;

extern const std::array<std::array<double, 3>, PT_ROWS> PT_TABLE;
extern const std::array<std::array<double, 5>, MGO_ROWS> MGO_TABLE;

}  // namespace vael
