// The folder of the process, for tests whose commands move it.
#pragma once

#include <filesystem>
#include <system_error>

namespace vael {

/// The folder of the process, which comes back when a test ends that has moved it.
class FolderOfProcess {
public:
    FolderOfProcess() {
        std::error_code none;  // an earlier test may have taken it away
        folder_ = std::filesystem::current_path(none);
    }
    ~FolderOfProcess() {
        std::error_code none;
        std::filesystem::current_path(folder_, none);
    }
    FolderOfProcess(const FolderOfProcess&) = delete;
    FolderOfProcess& operator=(const FolderOfProcess&) = delete;

private:
    std::filesystem::path folder_;
};

}  // namespace vael
