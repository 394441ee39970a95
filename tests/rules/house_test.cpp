// House rules that can be read off the files.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> Sources() {
    std::vector<fs::path> files;
    for (const char* folder : {"src", "tests", "tools", "bench"})
        for (const auto& entry :
             fs::recursive_directory_iterator(fs::path(VAEL_SOURCE_DIR) / folder))
            if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp")
                files.push_back(entry.path());
    return files;
}

std::vector<std::string> LinesOf(const fs::path& path) {
    std::vector<std::string> lines;
    std::ifstream in(path);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

std::size_t Characters(const std::string& utf8) {
    return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xc0) != 0x80;
    }));
}

}  // namespace

TEST(House, EveryFileOpensWithACommentThatSaysWhatItIs) {
    ASSERT_GT(Sources().size(), 80u);
    for (const auto& path : Sources()) {
        const auto lines = LinesOf(path);
        ASSERT_FALSE(lines.empty()) << path;
        EXPECT_TRUE(lines[0].rfind("// ", 0) == 0 && lines[0].size() > 15)
            << path << ": " << lines[0];
    }
}

TEST(House, NoSourceIsLongerThan600LinesAndHeadersAreGuarded) {
    for (const auto& path : Sources()) {
        const auto lines = LinesOf(path);
        EXPECT_LE(lines.size(), 600u) << path;
        const bool guarded = std::find(lines.begin(), lines.end(), "#pragma once") != lines.end();
        EXPECT_EQ(guarded, path.extension() == ".h") << path;
    }
}

TEST(House, LinesKeepToAHundredColumns) {
    for (const auto& path : Sources()) {
        int number = 0;
        for (const auto& line : LinesOf(path)) {
            ++number;
            EXPECT_LE(Characters(line), 100u) << path << ":" << number;
        }
    }
}

TEST(House, MembersOfTheTreeAreThere) {
    for (const char* file : {"README.md", "CONTRIBUTING.md", "CHANGELOG.md", "LICENSE", "run.sh",
                             "test.sh", ".ci/run", "docs/architecture.md", "docs/batch.md",
                             "docs/performance.md", "docs/numerics.md", "data/crystal.dat"})
        EXPECT_TRUE(fs::exists(fs::path(VAEL_SOURCE_DIR) / file)) << file;
}
