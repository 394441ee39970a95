// Whole files: opening with a reason when it fails, and replacing so that a file is whole or old.
#include "core/wholefile.h"

#include "core/fault.h"

#include <fcntl.h>  // the rename must not come before the bytes are on the disk
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>
#include <utility>

namespace vael {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Refuse(const std::string& path, const std::string& reason,
                         FaultNumber number = FaultNumber::FileAccess) {
    throw Fault(number, path + ": " + reason + ".");
}

std::string Reason(int error) { return std::strerror(error); }

/// A file descriptor that is closed when it goes.
class Descriptor {
public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor() {
        if (fd_ >= 0) ::close(fd_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    [[nodiscard]] int Get() const { return fd_; }
    [[nodiscard]] bool Close() { return ::close(std::exchange(fd_, -1)) == 0; }

private:
    int fd_;
};

/// 0, or the error number.
int WriteAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t done = ::write(fd, bytes.data(), bytes.size());
        if (done < 0 && errno == EINTR) continue;
        if (done < 0) return errno;
        bytes.remove_prefix(static_cast<std::size_t>(done));
    }
    return 0;
}

/// The bytes of a file from an offset to its end; none where they cannot be read as a whole.
std::optional<std::string> TailOf(const std::string& path, std::size_t from, std::size_t size) {
    std::ifstream in(path, std::ios::binary);
    in.seekg(static_cast<std::streamoff>(from));
    std::string tail(size - from, '\0');
    if (!in.read(tail.data(), static_cast<std::streamsize>(tail.size()))) return std::nullopt;
    return tail;
}

/// The file that a path means, links followed, also where it is not there yet.
std::string Followed(const std::string& path) {
    constexpr int LINKS = 40;  // a longer chain is a ring
    fs::path at(path);
    std::error_code none;
    for (int n = 0; fs::is_symlink(at, none); ++n) {
        const fs::path next = fs::read_symlink(at, none);
        if (none || n == LINKS) Refuse(path, "its link leads nowhere");
        at = next.is_absolute() ? next : at.parent_path() / next;
    }
    return at.string();
}

/// A name in the same folder that is no longer than a name may be.
std::string Beside(const fs::path& place) {
    constexpr std::size_t FITS = 200;
    return (place.parent_path() /
            ("." + place.filename().string().substr(0, FITS) + "." + std::to_string(::getpid())))
        .string();
}

/// The new file belongs to whom the old one did, with the same permissions.
void TakeOver(int fd, const std::string& old) {
    struct stat was {};
    if (::stat(old.c_str(), &was) != 0) return;
    struct stat now {};
    if (::fstat(fd, &now) == 0 && (now.st_uid != was.st_uid || now.st_gid != was.st_gid))
        if (::fchown(fd, was.st_uid, was.st_gid) != 0)  // only root gives files away
            (void)::fchown(fd, static_cast<uid_t>(-1), was.st_gid);
    (void)::fchmod(fd, was.st_mode & 07777);
}

/// Puts a folder's entries on the disk, so that a rename in it outlives a loss of power. A file
/// system that cannot is no failure: the new file stands either way.
void SyncFolder(const fs::path& folder) {
    const Descriptor open(
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (open.Get() >= 0) (void)::fsync(open.Get());
}

/// For what cannot be replaced by a renamed neighbour: a device, or a file in a folder that takes
/// no new files.
void WriteInPlace(const std::string& path, std::string_view bytes, bool keepTail) {
    Descriptor file(
        ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | (keepTail ? 0 : O_TRUNC), 0666));
    if (file.Get() < 0) Refuse(path, Reason(errno));
    if (const int error = WriteAll(file.Get(), bytes)) Refuse(path, Reason(error));
    if (!file.Close()) Refuse(path, Reason(errno));
}

}  // namespace

std::ifstream OpenToRead(const std::string& path) {
    std::error_code none;
    const auto status = fs::status(path, none);
    if (!fs::exists(status))
        Refuse(path,
               none && none != std::errc::no_such_file_or_directory ? none.message()
                                                                    : "there is no such file",
               FaultNumber::FileMissing);
    if (fs::is_directory(status)) Refuse(path, "it is a folder, a file was expected");
    if (!fs::is_regular_file(status)) Refuse(path, "it is no regular file");
    errno = 0;
    std::ifstream in(path, std::ios::binary);
    if (!in) Refuse(path, errno != 0 ? Reason(errno) : "it cannot be opened");
    return in;
}

bool FileExists(const std::string& path) {
    std::error_code none;
    return fs::exists(path, none);
}

void ReplaceFile(const std::string& path, std::string_view bytes, bool keepTail) {
    std::error_code none;
    const std::string target = Followed(path);
    const auto status = fs::status(target, none);
    if (fs::is_directory(status)) Refuse(path, "it is a folder, a file was expected");
    const bool exists = fs::exists(status);
    if (exists && !fs::is_regular_file(status)) return WriteInPlace(target, bytes, keepTail);
    if (exists && ::access(target.c_str(), W_OK) != 0) Refuse(path, Reason(errno));

    std::string whole(bytes);
    if (const auto size = exists ? fs::file_size(target, none) : 0;
        keepTail && size > bytes.size()) {
        const auto tail = TailOf(target, bytes.size(), size);
        // What may be written and not read keeps its tail only where it is.
        if (!tail) return WriteInPlace(target, bytes, keepTail);
        whole += *tail;
    }

    const fs::path place(target);
    const std::string beside = Beside(place);
    Descriptor file(::open(beside.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC,
                           exists ? 0600 : 0666));  // nobody reads it before it has its rights
    if (file.Get() < 0) {
        if (exists && (errno == EACCES || errno == EPERM))
            return WriteInPlace(target, bytes, keepTail);
        Refuse(path, Reason(errno));
    }
    int error = WriteAll(file.Get(), whole);
    if (error == 0 && exists) TakeOver(file.Get(), target);
    if (error == 0 && ::fsync(file.Get()) != 0) error = errno;
    if (!file.Close() && error == 0) error = errno;
    if (error == 0 && ::rename(beside.c_str(), target.c_str()) != 0) error = errno;
    if (error == 0) SyncFolder(place.parent_path());
    if (error != 0) {
        ::unlink(beside.c_str());
        Refuse(path, Reason(error));
    }
}

}  // namespace vael
