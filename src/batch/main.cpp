// vael-batch: reduces many spectra to peaks, cell and pressure with no window.
#include "batch/convert.h"
#include "batch/options.h"
#include "batch/reduce.h"

#include <iostream>

namespace {

using namespace vael;

int RunConvert(int count, char** words) {
    const ConvertCall call = ReadConvertCall(count, words);
    if (call.Options) return Convert(*call.Options, std::cout, std::cerr);
    (call.Status == 0 ? std::cout : std::cerr) << call.Text;
    return call.Status;
}

}  // namespace

int main(int count, char** words) {
    if (count > 1 && words[1] == std::string_view("convert")) {
        try {
            return RunConvert(count, words);
        } catch (const std::exception& trouble) {
            std::cerr << "vael-batch: " << trouble.what() << "\n";
            return 2;
        }
    }
    const BatchCall call = ReadCall(count, words);
    if (!call.Options) {
        (call.Status == 0 ? std::cout : std::cerr) << call.Text;
        return call.Status;
    }
    try {
        return Reduce(*call.Options, "/proc/self/exe");
    } catch (const std::exception& trouble) {
        std::cerr << "vael-batch: " << trouble.what() << "\n";
        return 2;
    }
}
