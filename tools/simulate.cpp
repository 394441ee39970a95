// vael-simulate: writes the simulated samples, or prints the table of their truth.
#include "simulation.h"

#include "core/fault.h"

#include <cstring>
#include <fstream>
#include <iostream>

using namespace vael;
using namespace vael::tools;

namespace {

bool WriteAll(const std::string& folder) {
    for (const SampleRecipe& recipe : SampleRecipes()) {
        const std::string path = folder + "/" + recipe.File + ".npd";
        std::ofstream out(path, std::ios::binary);
        out << NpdText(Simulate(recipe)) << std::flush;
        if (!out) {
            std::cerr << path << ": cannot be written\n";
            return false;
        }
    }
    return true;
}

void PrintLines(const SimulatedSpectrum& spectrum) {
    std::cout << "\n" << spectrum.Recipe.File << "\n";
    for (const TrueLine& line : spectrum.Lines)
        std::cout << "  " << line.Key << " " << line.Hkl[0] << " " << line.Hkl[1] << " "
                  << line.Hkl[2] << "  channel " << line.Channel << "  " << line.Energy
                  << " keV  d " << line.D << "  height " << line.Height << "  fwhm " << line.Fwhm
                  << "\n";
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: vael-simulate FOLDER   writes the samples there\n"
                     "       vael-simulate --truth   prints their truth as a table\n"
                     "       vael-simulate --lines   prints every line that was put in\n";
        return 2;
    }
    try {
        if (argv[1][0] != '-') return WriteAll(argv[1]) ? 0 : 1;
        std::vector<SimulatedSpectrum> all;
        for (const SampleRecipe& recipe : SampleRecipes()) all.push_back(Simulate(recipe));
        if (std::strcmp(argv[1], "--lines") == 0) {
            for (const SimulatedSpectrum& spectrum : all) PrintLines(spectrum);
        } else {
            std::cout << TruthText(all);
        }
    } catch (const Fault& fault) {
        std::cerr << fault.what() << "\n";
        return 1;
    }
    return 0;
}
