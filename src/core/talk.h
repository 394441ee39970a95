// What a module that knows no desktop may say: callables, silent by default.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace vael {

/// The voice of a numeric or drawing module. `log` takes one line of the log view, `say` a message
/// box (text, title), `breathe` gives the interface a turn.
struct Talk {
    std::function<void(std::string_view line)> log = [](std::string_view) {};
    std::function<void(std::string_view text, std::string_view title)> say =
        [](std::string_view, std::string_view) {};
    std::function<void()> breathe = [] {};
};

/// The voice of a reader or writer. `ask` is the overwrite question (Yes is true); the default
/// answer is No. `say` is a message box, `log` one line of the log view.
struct FileTalk {
    std::function<bool(std::string_view question)> ask = [](std::string_view) { return false; };
    std::function<void(std::string_view text)> say = [](std::string_view) {};
    std::function<void(std::string_view line)> log = [](std::string_view) {};
};

}  // namespace vael
