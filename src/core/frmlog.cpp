// The log view: a ring of the last 200 lines of what the fitters and readers tell.
#include "core/frmlog.h"

#include "toolkit/hand.h"

#include <utility>

namespace vael {
namespace {

std::function<void(const std::string&)> lineSink;

void cmdClear_Click() {
    frmLog.LineCount = 0;
    frmLog.WriteIndex = 0;
    frmLog.OldestIndex = 0;
    DispLog();
}

void cmdHide_Click() { frmLog.Visible = false; }

std::int16_t Next(std::int16_t index) {
    return static_cast<std::int16_t>(index + 1 == LOG_LINES ? 0 : index + 1);
}

}  // namespace

LogView::LogView() : View("frmLog", "Log") {
    StaysLive = true;
    txtMessage.MultiLine = true;
    txtMessage.ReadOnly = true;
    cmdClear.Click = cmdClear_Click;
    cmdHide.Click = cmdHide_Click;
}

void PutLog(const std::string& text) {
    LogView& v = frmLog;
    v.Line[static_cast<std::size_t>(v.WriteIndex)] = text + "\r\n";
    ++v.LinesEver;
    if (v.LineCount < LOG_LINES)
        ++v.LineCount;
    else
        v.OldestIndex = Next(v.OldestIndex);
    v.WriteIndex = Next(v.WriteIndex);
    if (lineSink) lineSink(text);
    DispLog();
}

void DispLog() {
    LogView& v = frmLog;
    v.txtMessage.Text.clear();
    std::int16_t at = v.OldestIndex;
    for (int n = 0; n < v.LineCount; ++n, at = Next(at))
        v.txtMessage.Text += v.Line[static_cast<std::size_t>(at)];
}

void OnLogLine(std::function<void(const std::string&)> sink) { lineSink = std::move(sink); }

}  // namespace vael
