// Start and stop: what a full disk or a crash during the exit leaves behind, and the kept views.
#include "support/spectra.h"
#include "support/world.h"

#include "core/graphs.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <csignal>
#include <functional>

using namespace vael;

namespace {

constexpr std::size_t SYSTEM_BYTES = 2 + 584 + 164 + 64 + 10;

/// Runs the exit in a process of its own, with files limited to `bytes`; its wait status.
int ExitInAChild(rlim_t bytes, bool killed) {
    const pid_t child = ::fork();
    if (child == 0) {
        if (!killed) ::signal(SIGXFSZ, SIG_IGN);  // a write then fails; else it ends the process
        const rlimit none{0, 0};
        ::setrlimit(RLIMIT_CORE, &none);
        const rlimit limit{bytes, bytes};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        settings.BackTimes = 17;
        settings.EACPS = 0.9;
        Click(frmVaelAna.mnuExit);
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return status;
}

struct TwoFiles {
    explicit TwoFiles(World& w)
        : System(BytesOf(w.Folder.Path("syspara_a.xpr"))),
          Ini(BytesOf(w.Folder.Path("VaelAna.ini"))) {}
    std::string System;
    std::string Ini;
    bool operator==(const TwoFiles&) const = default;
};

std::vector<std::string> Beside(World& w) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(w.Folder.Path()))
        if (const std::string name = entry.path().filename().string(); name.front() == '.')
            names.push_back(name);
    return names;
}

}  // namespace

TEST(Exit, AFullDiskLeavesBothOldFilesAndNothingBesideThem) {
    World w;
    Click(frmVaelAna.mnuExit);
    const TwoFiles old(w);
    ASSERT_EQ(old.System.size(), SYSTEM_BYTES);
    const int status = ExitInAChild(20, false);
    EXPECT_TRUE(WIFEXITED(status)) << "a failure at the exit is silent";
    EXPECT_EQ(TwoFiles(w), old);
    EXPECT_TRUE(Beside(w).empty());
}

TEST(Exit, ADiskWithRoomForTheSmallFileAloneReplacesThatOne) {
    World w;
    Click(frmVaelAna.mnuExit);
    const TwoFiles old(w);
    (void)ExitInAChild(200, false);
    const TwoFiles now(w);
    EXPECT_EQ(now.System, old.System);
    EXPECT_EQ(now.Ini.substr(0, 4), "0.90");
}

TEST(Exit, ACrashBetweenWritingAndRenamingLeavesTheOldFileAndTheNextExitMendsIt) {
    World w;
    settings.BackTimes = 3;
    Click(frmVaelAna.mnuExit);
    const TwoFiles old(w);
    const int status = ExitInAChild(300, true);  // the process dies in the middle of the bytes
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGXFSZ);
    ASSERT_EQ(Beside(w).size(), 1U) << "half a file stands beside the old one";
    EXPECT_EQ(TwoFiles(w), old);
    settings.BackTimes = 99;
    Form_Load(w.Folder.Path());
    EXPECT_EQ(settings.BackTimes, 3) << "the next start reads the old file";
    settings.BackTimes = 4;
    Click(frmVaelAna.mnuExit);
    EXPECT_EQ(BytesOf(w.Folder.Path("syspara_a.xpr")).size(), SYSTEM_BYTES);
    Form_Load(w.Folder.Path());
    EXPECT_EQ(settings.BackTimes, 4);
}

TEST(Exit, AFolderThatTakesNoFilesIsSilent) {
    World w;
    Form_Load(w.Folder.Path("absent"));
    Click(frmVaelAna.mnuExit);
    EXPECT_TRUE(w.Desk.HasQuit);
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(Exit, WithFilesOpenNothingIsAsked) {
    World w;
    w.Desk.ChooseFiles({w.Folder.Write("a.npd", NpdText({1, 2, 3}))});
    Click(frmVaelAna.mnuLoad);
    Close(frmVaelAna);
    EXPECT_TRUE(w.Desk.HasQuit);
    EXPECT_TRUE(w.Desk.Asked.empty()) << "a row read from a file is in step with it";
}

TEST(Exit, TheFilesAreWrittenAlsoWhenNothingChanged) {
    World w;
    w.Folder.Write("VaelAna.ini", "0.125\r\n20.006\r\n0.1\r\n1\r\n0.03125\r\n1\r\n");
    Form_Load(w.Folder.Path());
    Click(frmVaelAna.mnuExit);
    EXPECT_EQ(BytesOf(w.Folder.Path("VaelAna.ini")),
              "0.13\r\n20.01\r\n0.100000\r\n1\r\n0.0313\r\n1\r\n");
}

TEST(Exit, TheUsersNoLeavesTheKeptViews) {
    World w;
    PutLog("a line");
    Click(frmVaelAna.cmdMnSelGrp);
    store.GraphList[0].State = 2;
    w.Desk.ExpectQuestion("File No Save.  Grp=1 (Do you Cansel?)", Answer::No);
    Click(frmVaelAna.mnuExit);
    EXPECT_FALSE(w.Desk.HasQuit);
    EXPECT_TRUE(frmSelGraph.Visible);
    EXPECT_EQ(frmLog.LineCount, 1);
    store.GraphList[0].State = 0;
}

TEST(Start, TheLogIsLoadedHiddenAndTheFoldersAreTheCurrentOnes) {
    World w;
    EXPECT_FALSE(frmLog.Visible);
    EXPECT_TRUE(frmVaelAna.Visible);
    const std::string here = std::filesystem::current_path().string() + "/";
    EXPECT_EQ(store.UserDataFolder, here);
    EXPECT_EQ(store.DataFolder, here);
    EXPECT_EQ(store.DataDrive, "");
}

TEST(Start, TheSecondEntryForgetsTheNameOfTheGraphThatWas) {
    World w;
    w.Desk.ChooseFiles({w.Folder.Write("a.npd", NpdText(GaussCounts(5000, 10, {})))});
    Click(frmVaelAna.mnuLoad);
    ASSERT_EQ(store.SpanCh, 5000);
    Pick(frmVaelAna.cboUnitX, 1);
    Pick(frmVaelAna.cboGrphSel[1], 3);
    Form_Load_Proc();
    EXPECT_EQ(frmVaelAna.Caption, "Vael (Data Analyze) --- ");
    EXPECT_EQ(frmVaelAna.itxtGraphName.Text, "");
    EXPECT_EQ(store.SpanCh, 4096) << "the one way in which the span shrinks";
    EXPECT_EQ(frmVaelAna.imnSpanCh.Value, 4096);
    EXPECT_EQ(frmVaelAna.inumScaleX.Value, 4096);
    EXPECT_EQ(frmVaelAna.cboUnitX.Index, 0);
    EXPECT_EQ(frmVaelAna.UnitX, 0);
    EXPECT_EQ(frmVaelAna.cboGrphSel[1].Index, 0);
    EXPECT_EQ(frmVaelAna.ActiveWin, 0);
    EXPECT_EQ(frmVaelAna.chkGrp[0].Value, 0);
}

TEST(Start, TheSecondEntryReadsTheDefaultCalibrationAgain) {
    World w;
    store.DefaultParam.TwoTheta = 6.5;
    Click(frmVaelAna.mnuExit);
    store.DefaultParam.TwoTheta = 1.0;
    Form_Load_Proc();
    EXPECT_EQ(store.DefaultParam.TwoTheta, 6.5);
    EXPECT_EQ(store.PropertyRecords[0].Param.TwoTheta, 6.5);
}
