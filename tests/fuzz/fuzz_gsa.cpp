// Fuzzes the reader of .gsa: any text ends in a result or a fault that names its line; what was
// read is written in lines of ten values, or refused.
#include "files/filegsa.h"
#include "linesreader.h"

#include <algorithm>

using namespace vael;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const LinesSlot* slot = ReadAnyText(bytes, size, ReadGsaText);
    if (slot == nullptr) return 0;
    std::ostringstream out;
    try {
        WriteGsaText(out, slot->Data, slot->Prop);
    } catch (const Fault& fault) {
        if (fault.Number() != FaultNumber::Subscript) std::abort();
        return 0;
    }
    const std::string_view text = out.view();
    const int lines = 2 + (std::max<int>(slot->Data.DataNo, 0) + 9) / 10;
    if (std::count(text.begin(), text.end(), '\n') != lines) std::abort();
    return 0;
}
