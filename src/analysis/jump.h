// The one rule by which the jumps to a neighbouring region and to a neighbouring peak choose a row.
#pragma once

namespace vael {

/// Index of the row that a jump from `channel` leads to, or an index outside 0 to rows - 1.
/// `key(i)` is the whole channel of row i. Direction 1 scans up for the first key at or above the
/// channel, any other scans down for the first at or below; a row exactly on the channel is left
/// for the one behind it.
template <class Key>
[[nodiscard]] int NeighbourOf(int rows, int channel, int direction, const Key& key) {
    int index = direction == 1 ? 0 : rows - 1;
    if (direction == 1) {
        while (index < rows && key(index) < channel) ++index;
    } else {
        while (index >= 0 && key(index) > channel) --index;
    }
    const bool found = index >= 0 && index < rows;
    if (found && key(index) == channel) index += 2 * direction - 1;
    return index;
}

}  // namespace vael
