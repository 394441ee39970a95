// What the fuzz targets of .npd and .gsa share: the reader of any text ends in a result or in a
// fault that names its line.
#pragma once

#include "core/fault.h"
#include "files/filevael.h"

#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

namespace vael {

struct LinesSlot {
    SpectrumData Data{};
    PropertyRecord Prop{};
};

/// Reads the bytes into a slot; nullptr after a fault. The slot stands until the next call.
template <class Read>
LinesSlot* ReadAnyText(const std::uint8_t* bytes, std::size_t size, Read read) {
    std::istringstream in(std::string(reinterpret_cast<const char*>(bytes), size));
    static const auto slot = std::make_unique<LinesSlot>();  // the reader clears its counts
    slot->Prop = PropertyRecord{};
    std::int16_t last = 0;
    try {
        read(in, {slot->Data, slot->Prop, last});
    } catch (const Fault& fault) {
        if (!std::string_view(fault.what()).starts_with("line ")) std::abort();
        return nullptr;
    }
    if (slot->Data.DataNo > MAX_CHANNELS) std::abort();
    return slot.get();
}

}  // namespace vael
