// One call of the command line: its options, or what it prints instead and its exit code.
#pragma once

#include <CLI/CLI.hpp>

#include <optional>
#include <sstream>
#include <utility>

namespace vael {

/// Runs `parse`, which fills `options` through `app`. A call for help ends with 0, a wrong one with
/// 2; each has its text then and no options.
template <class Call, class Options, class Parse>
Call CallOf(const CLI::App& app, Options& options, Parse parse) {
    try {
        parse();
    } catch (const CLI::ParseError& error) {
        std::ostringstream out;
        std::ostringstream err;
        const int code = app.exit(error, out, err);
        return {
            .Options = std::nullopt, .Text = out.str() + err.str(), .Status = code == 0 ? 0 : 2};
    }
    return {.Options = std::move(options), .Text = {}, .Status = 0};
}

}  // namespace vael
