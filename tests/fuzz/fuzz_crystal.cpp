// Fuzz target: the crystal table reader over any bytes either gives a table or a fault of its own.
#include "core/fault.h"
#include "lattice/crystal.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
    try {
        const vael::CrystalTable table = vael::ReadCrystalFile(in, "fuzz");
        if (table.CrystalCount < 0 || table.CrystalCount > vael::CRYSTAL_MAX) std::abort();
        for (const vael::CrystalRecord& crystal : table.Crystals)
            if (crystal.Count < 0 || crystal.Count > vael::REFLECTION_MAX) std::abort();
    } catch (const vael::Fault&) {
    }
    return 0;
}
