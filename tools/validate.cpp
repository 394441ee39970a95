// vael-validate: prints docs/validation.md.
#include "validation.h"

#include "batch/options.h"

#include <CLI/CLI.hpp>

#include <iostream>

int main(int argc, char** argv) {
    vael::tools::ValidationOptions options;
    CLI::App app{"vael-validate prints how far cells and pressures can be trusted, as Markdown."};
    app.add_option("--spectra", options.Spectra, "Simulated spectra of each condition")
        ->check(CLI::Range(1, 1000))
        ->capture_default_str();
    app.add_option("--seed", options.Seed, "Seed of the first")->capture_default_str();
    app.add_option("--jobs", options.Workers, "Worker processes; the figures do not depend on it")
        ->check(CLI::Range(1, 256))
        ->capture_default_str();
    app.add_option("--data", options.DataFolder, "Folder of crystal.dat")
        ->check(CLI::ExistingDirectory);
    app.add_option("--measured", options.Measured, "Folder of the measured spectra");
    CLI11_PARSE(app, argc, argv);
    options.DataFolder = vael::FindDataFolder(options.DataFolder, "/proc/self/exe");
    try {
        std::cout << vael::tools::ValidationText(options) << std::flush;
    } catch (const std::exception& trouble) {
        std::cerr << "vael-validate: " << trouble.what() << "\n";
        return 1;
    }
    return std::cout ? 0 : 1;
}
