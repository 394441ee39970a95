// The log view: a ring of the last 200 lines of what the fitters and readers tell.
#pragma once

#include "toolkit/controls.h"

#include <array>
#include <cstdint>
#include <string>

namespace vael {

inline constexpr int LOG_LINES = 200;

/// frmLog. It works while a command of another view runs.
struct LogView : View {
    LogView();
    std::array<std::string, LOG_LINES> Line;
    std::int16_t WriteIndex = 0;
    std::int16_t OldestIndex = 0;
    std::int16_t LineCount = 0;
    std::int64_t LinesEver = 0;  // since the start; clearing does not lower it

    TextBox txtMessage{*this, "txtMessage"};
    Button cmdClear{*this, "cmdClear", "Clear"};
    Button cmdHide{*this, "cmdHide", "Hide"};
};

inline LogView frmLog;

/// Stores a line (with CR LF behind it) in the ring and rebuilds the view.
void PutLog(const std::string& text);
/// The view's text: the lines, oldest first.
void DispLog();

/// Also gets every line of the log, for a program without windows. Empty for none.
void OnLogLine(std::function<void(const std::string&)> sink);

}  // namespace vael
