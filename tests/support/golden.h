// Golden files: strokes that a person approved by looking at the picture, kept under tests/golden.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace vael::test {

/// Compares with tests/golden/NAME. With VAEL_APPROVE set in the environment it writes the file
/// instead: look at the picture first, then at the difference, then commit.
inline void ExpectGolden(const std::string& name, const std::string& text) {
    const std::filesystem::path path =
        std::filesystem::path(VAEL_SOURCE_DIR) / "tests" / "golden" / name;
    if (std::getenv("VAEL_APPROVE") != nullptr) {
        std::ofstream(path, std::ios::binary) << text;
        FAIL() << "approved anew: " << path << "; run again without VAEL_APPROVE";
    }
    std::ifstream in(path, std::ios::binary);
    ASSERT_TRUE(in) << "no golden file " << path;
    const std::string golden{std::istreambuf_iterator<char>(in), {}};
    EXPECT_EQ(text, golden);
}

}  // namespace vael::test
