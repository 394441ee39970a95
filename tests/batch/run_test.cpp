// A run of spectra through the program: table, picture, files as they arrive, interrupts, kills.
#include "batch/runtable.h"
#include "batch/runwatch.h"
#include "support/spectra.h"
#include "support/world.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

using namespace vael;
namespace fs = std::filesystem;

namespace {

/// vael-batch as a process of its own.
class Program {
public:
    explicit Program(std::vector<std::string> words, const std::string& out) {
        words.insert(words.begin(), {VAEL_BATCH, "--data", VAEL_SOURCE_DIR "/data"});
        std::vector<char*> call;
        for (std::string& word : words) call.push_back(word.data());
        call.push_back(nullptr);
        process_ = ::fork();
        if (process_ == 0) {
            const int file = ::open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
            ::dup2(file, STDOUT_FILENO);
            ::dup2(file, STDERR_FILENO);
            ::execv(VAEL_BATCH, call.data());
            ::_exit(127);
        }
    }
    ~Program() {
        if (process_ > 0) (void)End(SIGKILL);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    /// The exit status after a signal (0: none); -1 when a signal ended it.
    int End(int signal = 0) {
        if (signal != 0) ::kill(process_, signal);
        int status = 0;
        ::waitpid(process_, &status, 0);
        process_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t process_ = -1;
};

struct RunWorld {
    TempFolder Folder;
    std::string Stem = Folder.Path("night run");
    std::string Said = Folder.Path("said");
    std::string In = Folder.Path("in");
    RunWorld() { fs::create_directory(In); }
    [[nodiscard]] static std::string Spectrum() {
        return NpdText(GaussCounts(800, 20, {{200, 3000, 9}, {400, 2000, 9}, {600, 2500, 9}}));
    }
    std::string Put(const std::string& name, const std::string& bytes = Spectrum()) const {
        std::ofstream(In + "/" + name, std::ios::binary) << bytes;
        return In + "/" + name;
    }
    [[nodiscard]] std::vector<std::vector<std::string>> Rows() const {
        std::ifstream in(Stem + ".csv", std::ios::binary);
        std::vector<std::vector<std::string>> rows;
        for (std::vector<std::string> fields; ReadCsvRecord(in, fields);) rows.push_back(fields);
        if (!rows.empty()) rows.erase(rows.begin());
        return rows;
    }
    /// Waits until the table has that many rows; false after a long time.
    [[nodiscard]] bool WaitForRows(std::size_t count) const {
        for (int i = 0; i < 600 && Rows().size() < count; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        return Rows().size() >= count;
    }
    [[nodiscard]] bool TableIsWhole() const {
        const std::string bytes = BytesOf(Stem + ".csv");
        if (bytes.size() < 2 || !bytes.ends_with("\r\n")) return false;
        const auto rows = Rows();
        return std::all_of(rows.begin(), rows.end(),
                           [&](const auto& row) { return row.size() == rows[0].size(); });
    }
    Program Watch(std::vector<std::string> more = {}) const {
        std::vector<std::string> words{"--run", Stem, "--watch", In, "--settle", "0.3"};
        words.insert(words.end(), more.begin(), more.end());
        return Program(words, Said);
    }
};

constexpr std::size_t NUMBER = 0, TIME = 1, FILE_NAME = 2, STATUS = 3;

}  // namespace

TEST(BatchRun, WritesATableAndAPictureWithTheFilesInTheirOrder) {
    const RunWorld w;
    std::vector<std::string> words{"--run", w.Stem};
    for (const char* name : {"a_0012.npd", "a_0010.npd", "bad_0011.npd"})
        words.push_back(w.Put(name, name[0] == 'b' ? "no spectrum" : RunWorld::Spectrum()));
    EXPECT_EQ(Program(words, w.Said).End(), 1) << "one gave no result";
    const auto rows = w.Rows();
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0][NUMBER], "12");
    EXPECT_EQ(rows[0][TIME], "2018-10-10 09:05:41");
    EXPECT_EQ(rows[0][STATUS], "ok");
    EXPECT_EQ(rows[1][FILE_NAME], w.In + "/a_0010.npd");
    EXPECT_EQ(rows[2][STATUS], "unreadable");
    EXPECT_NE(BytesOf(w.Stem + ".svg").find("3 files, 1 without a result"), std::string::npos);
    EXPECT_NE(BytesOf(w.Said).find("bad_0011.npd: unreadable: "), std::string::npos);
    EXPECT_EQ(BytesOf(w.Said).find("file  "), std::string::npos) << "no table on standard output";

    const std::string before = BytesOf(w.Stem + ".csv");
    EXPECT_EQ(Program(words, w.Said).End(), 2) << "a table that is there is not replaced";
    EXPECT_NE(BytesOf(w.Said).find("--force"), std::string::npos);
    EXPECT_EQ(BytesOf(w.Stem + ".csv"), before);
    words.emplace_back("--force");
    EXPECT_EQ(Program(words, w.Said).End(), 1);
    EXPECT_EQ(BytesOf(w.Stem + ".csv"), before);
}

TEST(BatchRun, AnInterruptEndsItAfterTheFilesUnderWayWithTheTableWhole) {
    const RunWorld w;
    std::vector<std::string> words{"--run", w.Stem, "--jobs", "1"};
    for (int i = 0; i < 400; ++i) words.push_back(w.Put("s" + std::to_string(1000 + i) + ".npd"));
    Program program(words, w.Said);
    ASSERT_TRUE(w.WaitForRows(3));
    EXPECT_EQ(program.End(SIGINT), 1);
    EXPECT_LT(w.Rows().size(), 400u);
    EXPECT_TRUE(w.TableIsWhole());
    EXPECT_NE(BytesOf(w.Said).find("interrupted; spectra not reduced: " +
                                   std::to_string(400 - w.Rows().size())),
              std::string::npos)
        << BytesOf(w.Said);
    EXPECT_NE(BytesOf(w.Stem + ".svg").find("</svg>"), std::string::npos);
}

TEST(BatchWatch, ReducesEachFileOnceAsItArrivesUntilInterrupted) {
    const RunWorld w;
    w.Put("a_1.npd");
    w.Put(".a_2.npd");   // a writer's cover name
    w.Put("notes.txt");  // no spectrum
    Program program = w.Watch();
    ASSERT_TRUE(w.WaitForRows(1));
    w.Put("a_3.npd");
    ASSERT_TRUE(w.WaitForRows(2));
    std::this_thread::sleep_for(std::chrono::milliseconds(900));
    EXPECT_EQ(program.End(SIGINT), 0);
    const auto rows = w.Rows();
    ASSERT_EQ(rows.size(), 2u) << "each once";
    EXPECT_EQ(rows[0][NUMBER], "1");
    EXPECT_EQ(rows[1][NUMBER], "3");
    EXPECT_TRUE(w.TableIsWhole());
    EXPECT_NE(BytesOf(w.Stem + ".svg").find("2 files, 0 without a result"), std::string::npos);
}

TEST(BatchWatch, AFileThatStillGrowsIsWaitedFor) {
    const RunWorld w;
    const std::string whole = RunWorld::Spectrum();
    Program program = w.Watch();
    std::ofstream out(w.In + "/slow_5.npd", std::ios::binary);
    for (std::size_t at = 0; at < whole.size(); at += whole.size() / 8) {
        out << whole.substr(at, whole.size() / 8) << std::flush;
        std::this_thread::sleep_for(std::chrono::milliseconds(120));
        EXPECT_TRUE(w.Rows().empty());
    }
    out.close();
    ASSERT_TRUE(w.WaitForRows(1));
    EXPECT_EQ(program.End(SIGTERM), 0);
    EXPECT_EQ(w.Rows()[0][STATUS], "ok");
}

TEST(BatchWatch, AFileThatStoodHalfWrittenIsLookedAtAgainWhenItHasGrown) {
    const RunWorld w;
    const std::string whole = RunWorld::Spectrum();
    const std::string path = w.Put("stalled_6.npd", whole.substr(0, whole.size() / 2));
    Program program = w.Watch();
    for (int i = 0; i < 200 && BytesOf(w.Said).find("looked at again") == std::string::npos; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_NE(BytesOf(w.Said).find("looked at again"), std::string::npos);
    EXPECT_TRUE(w.Rows().empty());
    std::ofstream(path, std::ios::binary | std::ios::app) << whole.substr(whole.size() / 2);
    ASSERT_TRUE(w.WaitForRows(1));
    EXPECT_EQ(program.End(SIGINT), 0);
    EXPECT_EQ(w.Rows()[0][STATUS], "ok");
}

TEST(BatchWatch, AFileThatStaysUnreadableGetsItsRowInTheEnd) {
    const RunWorld w;
    w.Put("broken_7.npd", "no spectrum");
    Program program = w.Watch();
    ASSERT_TRUE(w.WaitForRows(1));
    EXPECT_EQ(program.End(SIGINT), 1);
    EXPECT_EQ(w.Rows()[0][STATUS], "unreadable");
}

TEST(BatchWatch, AfterAKillTheTableIsWholeAndTheNextWatchGoesOnWithoutTakingAFileTwice) {
    const RunWorld w;
    for (int i = 0; i < 60; ++i) w.Put("k" + std::to_string(100 + i) + ".npd");
    std::size_t rows = 0;
    for (int round = 0; round < 6; ++round) {
        Program program = w.Watch({"--jobs", "2"});
        (void)w.WaitForRows(std::min<std::size_t>(rows + 7, 60));
        EXPECT_EQ(program.End(SIGKILL), -1);
        EXPECT_TRUE(w.TableIsWhole());
        rows = w.Rows().size();
    }
    Program program = w.Watch();
    ASSERT_TRUE(w.WaitForRows(60));
    EXPECT_EQ(program.End(SIGINT), 0);
    std::set<std::string> files;
    for (const auto& row : w.Rows()) files.insert(row[FILE_NAME]);
    EXPECT_EQ(files.size(), 60u);
    EXPECT_EQ(w.Rows().size(), 60u);
}

TEST(Arrivals, AFileIsCompleteWhenItHasStoodForTheTimeByOurOwnClock) {
    const RunWorld w;
    Arrivals arrivals(w.In, 2.0);
    const auto none = [](const std::string&) { return false; };
    const std::string path = w.Put("a.npd", "12");
    w.Put("empty.npd", "");
    EXPECT_TRUE(arrivals.Next(100.0, none).empty());
    EXPECT_TRUE(arrivals.Next(101.9, none).empty());
    EXPECT_EQ(arrivals.Next(102.0, none), std::vector<std::string>{path});
    w.Put("a.npd", "123");
    EXPECT_TRUE(arrivals.Next(103.0, none).empty()) << "it changed";
    EXPECT_EQ(arrivals.Next(105.0, none).size(), 1u);
    EXPECT_TRUE(arrivals.HoldBack(path));
    EXPECT_TRUE(arrivals.Next(106.0, none).empty());
    EXPECT_EQ(arrivals.Next(123.0, none).size(), 1u) << "ten times as long";
    EXPECT_FALSE(arrivals.HoldBack(path)) << "once";
    EXPECT_TRUE(arrivals.Next(200.0, [](const std::string&) { return true; }).empty());
    EXPECT_FALSE(arrivals.Waiting());
    fs::remove_all(w.In);
    EXPECT_ANY_THROW((void)arrivals.Next(201.0, none));
}
