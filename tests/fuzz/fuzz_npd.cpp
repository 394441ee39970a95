// Fuzzes the reader of .npd: any text ends in a result or a fault that names its line.
#include "files/filenpd.h"
#include "linesreader.h"

using namespace vael;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    (void)ReadAnyText(bytes, size, ReadNpdText);
    return 0;
}
