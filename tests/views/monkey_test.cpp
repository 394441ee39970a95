// Twenty thousand random acts of the user's hand; what must hold is asked after each of them.
// VAEL_SEED repeats a run, VAEL_ACTS sets their number, VAEL_TELL lists the run-time errors.
#include "support/monkey.h"
#include "support/folderofprocess.h"
#include "support/plotted.h"

#include "files/filevael.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <random>

using namespace vael;
using test::Monkey;

namespace {

/// A desk at which the monkey sits: it answers questions, dialogs and modal views at random.
class MonkeyDesk : public Desk {
public:
    MonkeyDesk(Monkey& monkey, std::vector<std::string> files, std::string folder)
        : monkey_(monkey), files_(std::move(files)), folder_(std::move(folder)) {
        UseDesk(this);
        ResetHands();
        OnFault([this](View& view, const std::string& sentence) {
            Faults.push_back(view.Name + ": " + sentence);
        });
    }
    ~MonkeyDesk() override {
        OnFault([](View&, const std::string&) {});
        UseDesk(nullptr);
    }
    std::vector<std::string> Faults;
    int BusyDepth = 0;
    int Quits = 0;

    Answer Ask(const Question& question) override {
        ++Questions;
        if (question.Choice == Question::Buttons::Ok) return Answer::Ok;
        return monkey_.Chance(50) ? Answer::Yes : Answer::No;
    }
    std::optional<FileChoice> OpenFiles(const FileDialog& dialog) override {
        if (monkey_.Chance(15)) return std::nullopt;
        ++Opens;
        FileChoice choice{.Paths = {}, .FilterIndex = 1 + monkey_.Below(4)};
        const int many = dialog.Multiple ? 1 + monkey_.Below(monkey_.Chance(10) ? 14 : 3) : 1;
        for (int i = 0; i < many; ++i) choice.Paths.push_back(monkey_.AnyOf(files_));
        return choice;
    }
    std::optional<FileChoice> SaveFile(const FileDialog&) override {
        if (monkey_.Chance(20)) return std::nullopt;
        ++Saves;
        static const std::vector<std::string> names{"out.npd", "out.xbm",   "out.xba",
                                                    "out.xta", "out.csv",   "out.weird",
                                                    "none",    "no/out.npd"};
        return FileChoice{.Paths = {folder_ + "/" + monkey_.AnyOf(names)},
                          .FilterIndex = 1 + monkey_.Below(5)};
    }
    std::optional<Colour> PickColour(Colour) override {
        if (monkey_.Chance(30)) return std::nullopt;
        return Rgb(monkey_.Below(256), monkey_.Below(256), monkey_.Below(256));
    }
    std::vector<FolderItem> ListFolder(const std::string&) override {
        return {{"folder", true}, {"file.npd", false}};
    }
    bool MakeFolder(const std::string&) override { return monkey_.Chance(50); }
    void RunModal(View& view) override {
        for (int i = 0; i < 12 && view.Visible; ++i) monkey_.ActOn(view);
        view.Visible = false;
    }
    void Breathe() override {
        // Acts while a command runs are swallowed.
        if (depth_ > 0 || !monkey_.Chance(20)) return;
        ++depth_;
        monkey_.Act();
        --depth_;
    }
    void Busy(bool on) override { BusyDepth += on ? 1 : -1; }
    bool Launch(const std::string&, const std::vector<std::string>&) override { return false; }
    bool OpenText(const std::string&) override { return monkey_.Chance(50); }
    [[nodiscard]] bool HasPrinter() override { return false; }
    std::unique_ptr<PrintJob> StartPrintJob(const PrintOrder&) override { return nullptr; }
    void StayOnTop(View& view, bool on) override { view.OnTop = on; }
    void Show() override {}
    void Quit() override { ++Quits; }
    int Questions = 0;
    int Opens = 0;
    int Saves = 0;

private:
    Monkey& monkey_;
    std::vector<std::string> files_;
    std::string folder_;
    int depth_ = 0;
};

std::uint64_t SeedOfRun() {
    if (const char* given = std::getenv("VAEL_SEED")) return std::strtoull(given, nullptr, 10);
    return std::random_device{}();
}

int ActsOfRun() {
    if (const char* given = std::getenv("VAEL_ACTS")) return std::atoi(given);
    return 20000;
}

/// Spectra of several sizes and kinds, and files that are none.
std::vector<std::string> Files(const TempFolder& folder) {
    std::vector<std::string> files;
    const auto npd = [&](const std::string& name, int channels, std::vector<GaussLine> lines) {
        files.push_back(folder.Write(name, NpdText(GaussCounts(channels, 20, lines), name)));
    };
    npd("five.npd", 4096,
        {{600, 4000, 9}, {1100, 9000, 10}, {1700, 3000, 11}, {2300, 2500, 12}, {3100, 1500, 13}});
    npd("flat.npd", 4096, {});
    npd("short.npd", 700, {{300, 900, 8}});
    npd("long.npd", 8192, {{2000, 5000, 12}, {7000, 50000, 14}});
    npd("one.npd", 1, {});
    npd("two points.in it.npd", 2048, {{1000, 2000, 10}});
    files.push_back(folder.Write("bad.npd", "this is no spectrum"));
    files.push_back(folder.Write("empty.xbm", ""));
    files.push_back(folder.Write("what.txt", "text"));
    files.push_back(folder.Path("absent.npd"));
    return files;
}

}  // namespace

TEST(Monkey, TwentyThousandRandomActsBreakNothing) {
    const std::uint64_t seed = SeedOfRun();
    SCOPED_TRACE("VAEL_SEED=" + std::to_string(seed));
    std::cout << "VAEL_SEED=" << seed << std::endl;  // also when a sanitizer ends the program
    TempFolder folder;
    FolderOfProcess here;
    for (const std::string name : {"crystal.dat", "atomic.dat"})
        std::filesystem::copy_file(VAEL_SOURCE_DIR "/data/" + name, folder.Path(name));
    Monkey monkey(seed);
    MonkeyDesk desk(monkey, Files(folder), folder.Path());
    store = Store{};
    settings = Settings{};
    FreshViews();
    RunEvent(frmVaelAna, [&] { Form_Load(folder.Path()); });

    const int acts = ActsOfRun();
    int mostRows = 0;
    int mostPeaks = 0;
    for (int act = 0; act < acts; ++act) {
        monkey.Act();
        const auto breaches = test::Breaches();
        ASSERT_TRUE(breaches.empty())
            << "act " << act << ": " << monkey.LastAct << ": " << breaches.front();
        mostRows = std::max<int>(mostRows, store.GraphTotal);
        for (const PeakTable& peaks : store.PeakTables)
            mostPeaks = std::max<int>(mostPeaks, peaks.PeakNum);
        ASSERT_EQ(desk.BusyDepth, 0) << "act " << act << ": " << monkey.LastAct;
        frmVaelAna.Visible = true;  // it left, and comes back for more
    }
    // That it was everywhere, and did not only knock at closed doors.
    std::cout << monkey.Taken << " acts taken, " << desk.Opens << " dialogs answered, "
              << desk.Saves << " files saved, " << desk.Questions << " questions, " << mostRows
              << " rows, " << mostPeaks << " peaks, " << desk.Faults.size() << " faults\n";
    EXPECT_GT(monkey.Taken, acts / 2);
    if (acts >= 20000) {
        EXPECT_GT(desk.Opens, 50);
        EXPECT_GT(desk.Saves, 20);
        EXPECT_EQ(mostRows, GRAPH_COUNT);
        EXPECT_GT(mostPeaks, 3);
    }
    if (std::getenv("VAEL_TELL") != nullptr)
        for (const std::string& fault : desk.Faults) std::cout << fault << "\n";
    for (const std::string& fault : desk.Faults) {
        // What ends a command must be one of its own run-time errors.
        const bool known = fault.find("Overflow") != std::string::npos ||
                           fault.find("Subscript") != std::string::npos ||
                           fault.find("Division") != std::string::npos ||
                           fault.find("The root of a negative") != std::string::npos ||
                           fault.find("A number was expected") != std::string::npos;
        EXPECT_TRUE(known) << fault;
        if (!known) break;
    }
    FreshViews();
}
