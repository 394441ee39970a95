// Fuzz target: the element table reader over any bytes either gives a table or a fault of its own,
// and a table is written as bytes that read as the same table.
#include "core/fault.h"
#include "lattice/elements.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
    try {
        const vael::ElementTable table = vael::ReadElementFile(in, "fuzz");
        if (table.Rows != vael::ELEMENT_MAX) std::abort();
        for (int number = 1; number <= table.Rows; ++number)
            for (int kind = 0; kind < vael::LINE_KINDS; ++kind)
                if (vael::LineEnergy(table, number, kind).value_or(1.0) <= 0.0) std::abort();
        std::istringstream again(vael::ElementFileText(table));
        if (vael::ReadElementFile(again, "again") != table) std::abort();
    } catch (const vael::Fault&) {
    }
    return 0;
}
