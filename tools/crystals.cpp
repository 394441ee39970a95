// vael-crystals: writes crystal.dat from the table of cells and symmetries.
#include "structure.h"

#include "core/fault.h"

#include <cstring>
#include <fstream>
#include <iomanip>
#include <iostream>

using namespace vael;
using namespace vael::tools;

namespace {

/// The table as Markdown rows, for docs/crystals.md.
void PrintTable() {
    std::cout << "| No. | Name | System | Group | Cell (angstrom, degrees) | Lines | d from to | "
                 "Source of the cell |\n|---|---|---|---|---|---|---|---|\n";
    int number = 0;
    for (const Structure& s : Structures()) {
        auto lines = PowderLines(s, s.Constants, s.DMin);
        if (lines.size() > REFLECTION_MAX) lines.resize(REFLECTION_MAX);
        std::cout << "| " << ++number << " | " << s.Name << " | " << SystemCode(s.System) << " | "
                  << s.Group << " | ";
        for (std::size_t i = 0; i < 6; ++i) std::cout << (i ? " " : "") << s.Constants[i];
        std::cout << " | " << lines.size() << " | " << std::fixed << std::setprecision(3)
                  << lines.front().D << " " << lines.back().D << std::defaultfloat
                  << std::setprecision(6) << " | " << s.Source << " |\n";
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: vael-crystals FILE   writes crystal.dat\n"
                     "       vael-crystals --table   prints the crystals as a table\n";
        return 2;
    }
    try {
        if (std::strcmp(argv[1], "--table") == 0) {
            PrintTable();
            return 0;
        }
        std::ofstream out(argv[1], std::ios::binary);
        out << CrystalFileText() << std::flush;
        if (!out) {
            std::cerr << argv[1] << ": cannot be written\n";
            return 1;
        }
    } catch (const Fault& fault) {
        std::cerr << fault.what() << "\n";
        return 1;
    }
    return 0;
}
