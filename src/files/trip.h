// One trip of a reader or writer to its file: its faults become a result of 0 and a line of the
// log.
#pragma once

#include "core/fault.h"
#include "core/records.h"
#include "core/talk.h"
#include "core/wholefile.h"

#include <sstream>
#include <string>

namespace vael {

inline void LogFault(const std::string& path, const Fault& fault, const FileTalk& talk) {
    const std::string what = fault.what();
    talk.log(what.starts_with(path) ? what : path + ": " + what + (what.ends_with('.') ? "" : "."));
}

/// Runs `body(note)`; -1, or 0 after a fault. What `body` leaves in `note` is a remark for the log.
template <class Body>
std::int16_t Reading(const std::string& path, const FileTalk& talk, Body body) {
    try {
        std::string note;
        body(note);
        if (!note.empty()) talk.log(path + ": " + note + ".");
        return TRUE_WORD;
    } catch (const Fault& fault) {
        LogFault(path, fault, talk);
        return FALSE_WORD;
    }
}

/// Replaces the file by what `body(out)` writes, whole or not at all; -1, or 0 after a fault. With
/// `keepTail` the bytes of a longer old file stay behind the new ones.
template <class Body>
std::int16_t Writing(const std::string& path, const FileTalk& talk, bool keepTail, Body body) {
    try {
        std::ostringstream image;
        body(image);
        ReplaceFile(path, image.view(), keepTail);
        return TRUE_WORD;
    } catch (const Fault& fault) {
        LogFault(path, fault, talk);
        return FALSE_WORD;
    }
}

}  // namespace vael
