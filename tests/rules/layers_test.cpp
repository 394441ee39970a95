// Who may include whom: the include lines of the sources against the table of levels.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

struct Line {
    std::string File;    // below src/
    std::string Target;  // what is included, as written
    bool Angled;
};

enum class Level { Base, Toolkit, Numeric, Files, Workbench, Batch, Desktop };

std::string Stem(const std::string& path) {
    return fs::path(path).replace_extension().generic_string();
}

bool Starts(const std::string& text, const char* with) { return text.rfind(with, 0) == 0; }

Level LevelOf(const std::string& path) {
    static const std::set<std::string> base{"core/fault",    "core/text", "core/cp932",
                                            "core/records",  "core/talk", "core/wholefile",
                                            "display/canvas"};
    const std::string stem = Stem(path);
    const std::string name = fs::path(stem).filename();
    if (base.contains(stem)) return Level::Base;
    if (Starts(path, "toolkit/")) return Level::Toolkit;
    if (Starts(path, "desktop/")) return Level::Desktop;
    if (Starts(path, "batch/")) return Level::Batch;
    if (stem == "core/units") return Level::Numeric;
    const bool commands = Starts(name, "frm") || name.find("commands") != std::string::npos;
    if (Starts(path, "files/") && !commands) return Level::Files;
    if (Starts(path, "core/") || commands || stem == "display/printing") return Level::Workbench;
    return Level::Numeric;  // analysis, lattice, display
}

bool Allowed(const Line& line) {
    const Level from = LevelOf(line.File);
    const Level to = LevelOf(line.Target);
    switch (from) {
        case Level::Base: return to == Level::Base;
        case Level::Toolkit: return to == Level::Base || to == Level::Toolkit;
        case Level::Numeric: return to == Level::Base || to == Level::Numeric;
        case Level::Files:
            return to == Level::Base || to == Level::Files || Stem(line.Target) == "core/units";
        case Level::Workbench: return to != Level::Batch && to != Level::Desktop;
        case Level::Batch: return to != Level::Desktop;
        case Level::Desktop: {
            if (to == Level::Desktop || to == Level::Toolkit || to == Level::Base) return true;
            const std::string who = Stem(line.File);
            const std::string name = fs::path(line.Target).filename();
            if (who == "desktop/forms") return Starts(name, "frm");
            return who == "desktop/start" && line.Target == "core/params.h";  // the start function
        }
    }
    return false;
}

std::vector<Line> Includes() {
    std::vector<Line> lines;
    const fs::path root = VAEL_SOURCE_DIR "/src";
    const std::regex pattern(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])");
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        const auto extension = entry.path().extension();
        if (extension != ".h" && extension != ".cpp") continue;
        std::ifstream in(entry.path());
        for (std::string text; std::getline(in, text);) {
            std::smatch match;
            if (std::regex_search(text, match, pattern))
                lines.push_back(
                    {fs::relative(entry.path(), root).generic_string(), match[2], match[1] == "<"});
        }
    }
    return lines;
}

}  // namespace

TEST(Layers, EveryIncludeIsOneThatTheTableOfLevelsAllows) {
    const auto lines = Includes();
    ASSERT_GT(lines.size(), 200u);
    for (const Line& line : lines) {
        if (line.Angled || Starts(line.Target, "ui_")) continue;
        EXPECT_TRUE(fs::exists(fs::path(VAEL_SOURCE_DIR "/src") / line.Target) ||
                    line.Target.find(".moc") != std::string::npos)
            << line.File << " includes " << line.Target << ", which is not named from src/";
        EXPECT_TRUE(Allowed(line)) << line.File << " may not include " << line.Target;
    }
}

TEST(Layers, OnlyTheDesktopKnowsQt) {
    for (const Line& line : Includes()) {
        const bool toolkit = line.Angled && line.Target[0] == 'Q';
        EXPECT_TRUE(!toolkit || Starts(line.File, "desktop/"))
            << line.File << " includes " << line.Target;
    }
}

TEST(Layers, TheTableRefusesWhatItShould) {
    EXPECT_FALSE(Allowed({"analysis/calc.cpp", "core/store.h", false}));
    EXPECT_FALSE(Allowed({"lattice/pressure.cpp", "toolkit/desk.h", false}));
    EXPECT_FALSE(Allowed({"files/filenpd.cpp", "analysis/calc.h", false}));
    EXPECT_FALSE(Allowed({"toolkit/hand.cpp", "core/units.h", false}));
    EXPECT_FALSE(Allowed({"core/graphs.cpp", "desktop/form.h", false}));
    EXPECT_FALSE(Allowed({"desktop/binder.cpp", "core/frmvaelana.h", false}));
    EXPECT_FALSE(Allowed({"desktop/qtdesk.cpp", "core/store.h", false}));
    EXPECT_TRUE(Allowed({"desktop/forms.cpp", "core/frmvaelana.h", false}));
    EXPECT_TRUE(Allowed({"files/filenpd.cpp", "core/units.h", false}));
    EXPECT_TRUE(Allowed({"analysis/naxcommands.cpp", "core/store.h", false}));
}
