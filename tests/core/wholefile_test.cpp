// Replacing files: whole or old, with a reason when it fails.
#include "support/world.h"

#include "core/fault.h"
#include "core/wholefile.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <csignal>

using namespace vael;

TEST(WholeFile, ReplacesAndKeepsThePermissions) {
    TempFolder folder;
    const std::string path = folder.Write("a", "old");
    ::chmod(path.c_str(), 0640);
    ReplaceFile(path, "new content");
    EXPECT_EQ(BytesOf(path), "new content");
    struct stat now {};
    ::stat(path.c_str(), &now);
    EXPECT_EQ(now.st_mode & 0777, 0640u);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1)
        << "nothing is left beside it";
}

TEST(WholeFile, FollowsALinkToItsFile) {
    TempFolder folder;
    const std::string path = folder.Write("a", "old");
    std::filesystem::create_symlink(path, folder.Path("link"));
    ReplaceFile(folder.Path("link"), "new");
    EXPECT_EQ(BytesOf(path), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link")));
}

TEST(WholeFile, AFullDiskIsToldAndTheOldFileStands) {
    EXPECT_THROW(ReplaceFile("/dev/full", "text"), Fault);
    TempFolder folder;
    const std::string path = folder.Write("a", "old");
    const pid_t child = ::fork();  // a limit on the size of files, in a process of its own
    if (child == 0) {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{1000, 1000};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        try {
            ReplaceFile(path, std::string(5000, 'x'));
        } catch (const Fault&) {
            ::_exit(7);
        }
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 7) << "the failure was told";
    EXPECT_EQ(BytesOf(path), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST(WholeFile, WithoutPermissionNothingIsReadOrChanged) {
    TempFolder folder;
    std::filesystem::permissions(folder.Path(), std::filesystem::perms(0755));
    const std::string path = folder.Write("a", "old");
    ::chmod(path.c_str(), 0600);
    const pid_t child = ::fork();  // permissions do not bind root: a child gives its rights up
    if (child == 0) {
        if (::getuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) ::_exit(9);
        if (::getuid() != 65534) ::chmod(path.c_str(), 0);
        int told = 0;
        try {
            (void)OpenToRead(path);
        } catch (const Fault& fault) {
            told += fault.Number() == FaultNumber::FileAccess ? 1 : 0;
        }
        try {
            ReplaceFile(path, "new");
        } catch (const Fault&) {
            told += 2;
        }
        ::_exit(told);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 3);
    ::chmod(path.c_str(), 0600);
    EXPECT_EQ(BytesOf(path), "old");
}

TEST(WholeFile, ALinkToAFileThatIsNotThereYetMakesTheFile) {
    TempFolder folder;
    std::filesystem::create_directory(folder.Path("deep"));
    std::filesystem::create_symlink("deep/later", folder.Path("link"));
    ReplaceFile(folder.Path("link"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link")));
    EXPECT_FALSE(std::filesystem::is_symlink(folder.Path("deep/later")));
    EXPECT_EQ(BytesOf(folder.Path("deep/later")), "new");
    std::filesystem::create_symlink("ring", folder.Path("ring"));
    EXPECT_THROW(ReplaceFile(folder.Path("ring"), "new"), Fault);
}

TEST(WholeFile, TheTailOfALongerFileStaysThroughALinkWithItsPermissions) {
    TempFolder folder;
    const std::string path = folder.Write("a", "0123456789");
    ::chmod(path.c_str(), 0604);
    std::filesystem::create_symlink("a", folder.Path("link"));
    ReplaceFile(folder.Path("link"), "new", true);
    EXPECT_EQ(BytesOf(path), "new3456789");
    struct stat now {};
    ::stat(path.c_str(), &now);
    EXPECT_EQ(now.st_mode & 07777, 0604u);
    ReplaceFile(path, "much longer than it", true);
    EXPECT_EQ(BytesOf(path), "much longer than it");
}

TEST(WholeFile, ATailThatMayNotBeReadStaysWhereItIs) {
    TempFolder folder;
    std::filesystem::permissions(folder.Path(), std::filesystem::perms(0777));
    const std::string path = folder.Write("a", "0123456789");
    ::chmod(path.c_str(), 0202);  // to be written by others, read by nobody
    const pid_t child = ::fork();
    if (child == 0) {
        if (::getuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) ::_exit(9);
        try {
            ReplaceFile(path, "new", true);
        } catch (const Fault&) {
            ::_exit(1);
        }
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 0);
    ::chmod(path.c_str(), 0600);
    EXPECT_EQ(BytesOf(path), "new3456789");
}

TEST(WholeFile, ANameOfAnyLengthThatAFileMayHaveIsReplaced) {
    TempFolder folder;
    const std::string path = folder.Write(std::string(255, 'n'), "old");
    ReplaceFile(path, "new");
    EXPECT_EQ(BytesOf(path), "new");
}

TEST(WholeFile, RootReplacesAFileOfSomebodyElseAndItStaysTheirs) {
    if (::getuid() != 0) GTEST_SKIP() << "only root gives files away";
    TempFolder folder;
    const std::string path = folder.Write("a", "old");
    ASSERT_EQ(::chown(path.c_str(), 65534, 65534), 0);
    ReplaceFile(path, "new");
    struct stat now {};
    ::stat(path.c_str(), &now);
    EXPECT_EQ(now.st_uid, 65534u);
    EXPECT_EQ(now.st_gid, 65534u);
}
