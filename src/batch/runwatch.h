// Files as they arrive in a folder: which of them are complete.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace vael {

/// A folder that a measurement writes into. A file counts as complete when it holds bytes and its
/// size and time of change stood as they are for `settle` seconds of our own clock: the clocks of
/// the machines that write are not asked.
class Arrivals {
public:
    Arrivals(std::string folder, double settle) : folder_(std::move(folder)), settle_(settle) {}

    /// The complete files whose form can be read and of which `done` does not know, in the order of
    /// their names. `now` are seconds of a clock that only goes forward. Faults: FileAccess when
    /// the folder cannot be listed.
    [[nodiscard]] std::vector<std::string> Next(
        double now, const std::function<bool(const std::string&)>& done);

    /// A file that did not read well stands back, once: until it changes and settles again, or has
    /// stood for ten times as long. False when it did so before.
    bool HoldBack(const std::string& file);
    /// Whether files are still waited for.
    [[nodiscard]] bool Waiting() const { return !seen_.empty(); }

private:
    struct Seen {
        std::uintmax_t Size = 0;
        std::int64_t Changed = 0;  // the file system's own time of change
        double Since = 0.0;
        bool HeldBack = false;
        bool WasHeldBack = false;
        bool There = false;
    };
    std::string folder_;
    double settle_;
    std::map<std::string, Seen> seen_;  // of files that are not done
};

}  // namespace vael
