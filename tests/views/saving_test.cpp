// Saving the current graph: proposals, writers, refusals, failures.
#include "support/spectra.h"
#include "support/world.h"

#include "core/graphs.h"
#include "core/saving.h"
#include "core/text.h"
#include "files/extensions.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <csignal>
#include <sstream>

using namespace vael;

namespace {

struct Saving : World {
    std::string Spectrum(const std::string& name, int channels = 200) {
        return Folder.Write(name, NpdText(GaussCounts(channels, 10, {{channels / 2.0, 100.0, 8}})));
    }
    void Open(std::vector<std::string> paths) {
        Desk.ChooseFiles(std::move(paths));
        Click(frmVaelAna.mnuLoad);
    }
    void Save(const std::string& name, int filter = 1) {
        Desk.SaveAs(Folder.Path(name), filter);
        Click(frmVaelAna.mnuSave);
    }
    /// The name that the dialog proposes for a row.
    std::string Proposed(int row) {
        Change_cboGrphSel(0, row);
        Desk.CancelSave();
        Click(frmVaelAna.cmdFiles[1]);
        return Desk.SaveDialogs.back().Name;
    }
    [[nodiscard]] bool Exists(const std::string& name) const {
        return std::filesystem::exists(Folder.Path(name));
    }
    GraphEntry& Current() { return store.GraphList[static_cast<std::size_t>(GraphNo())]; }
    PropertyRecord& Record() { return store.PropertyRecords[static_cast<std::size_t>(DataNo())]; }
};

SpectrumData ReadBack(const std::string& path) {
    static SpectrumData data;
    data = {};
    PropertyRecord prop = BlankProperty();
    PeakTable peaks{};
    std::int16_t last = 0;
    EXPECT_EQ(ReadByExtension(path, {data, prop, last}, peaks, {}), TRUE_WORD) << path;
    return data;
}

/// The counts of an .npd as its text has them: the third fields of the lines behind "Counting sec".
std::vector<std::int32_t> NpdCounts(const std::string& path) {
    std::istringstream lines(BytesOf(path));
    std::vector<std::int32_t> counts;
    bool begun = false;
    for (std::string line; std::getline(lines, line);) {
        if (begun) counts.push_back(std::stoi(line.substr(line.rfind(',') + 1)));
        begun = begun || line.starts_with("Counting sec, ");
    }
    return counts;
}

}  // namespace

TEST(Save, WithAnEmptyRowItSaysNoDataAndAsksNothing) {
    Saving w;
    w.Desk.ExpectQuestion("No Data");
    Click(frmVaelAna.mnuSave);
    EXPECT_TRUE(w.Desk.SaveDialogs.empty());
}

TEST(Save, TheDialogHasItsTitleFilterFolderAndTheRememberedKind) {
    Saving w;
    w.Open({w.Spectrum("abc.npd")});
    store.FilterIndex = 5;
    (void)w.Proposed(0);
    const FileDialog& dialog = w.Desk.SaveDialogs.back();
    EXPECT_EQ(dialog.Title, "Save");
    EXPECT_EQ(dialog.Filter,
              "Nippon high Pressure Data file (*.npd)|*.npd|Gennie File (*.rpt)|*.rpt|Express File "
              "(*.xbm)|*.xbm|Excel File (*.csv)|*.csv|GSAS File (*.gsa)|*.gsa");
    EXPECT_EQ(dialog.FilterIndex, 5);
    EXPECT_EQ(dialog.Folder, w.Folder.Path() + "/");
    EXPECT_FALSE(dialog.Multiple);
    EXPECT_EQ(store.FilterIndex, 5) << "a cancelled dialog changes nothing";
    w.Desk.CancelOpen();
    FileLoad();
    EXPECT_EQ(w.Desk.OpenDialogs.back().FilterIndex, 1) << "the open dialog has four kinds";
}

TEST(Save, TheChosenKindAndFolderAreRemembered) {
    Saving w;
    w.Open({w.Spectrum("abc.npd")});
    std::filesystem::create_directory(w.Folder.Path("sub dir"));
    w.Save("sub dir/x.xbm", 3);
    EXPECT_EQ(store.FilterIndex, 3);
    EXPECT_EQ(store.DataFolder, w.Folder.Path("sub dir") + "/");
    Click(frmVaelAna.mnuExit);
    const std::string ini = BytesOf(w.Folder.Path("VaelAna.ini"));
    EXPECT_NE(ini.find("\r\n3\r\n"), std::string::npos) << ini;
}

TEST(Save, EachKindOfRowProposesItsSuffix) {
    Saving w;
    w.Open({w.Spectrum("abc.npd", 4096)});
    Click(frmVaelAna.mnuSmooth);
    Click(frmVaelAna.mnuBackGround);
    ASSERT_EQ(store.GraphList[0].Name, "BackRemv");
    ASSERT_EQ(store.GraphList[3].Name, "abc.npd");
    EXPECT_EQ(w.Proposed(0), "abc_RMD");
    EXPECT_EQ(w.Proposed(1), "abc_BAK");
    EXPECT_EQ(w.Proposed(2), "abc_SMT");
    EXPECT_EQ(w.Proposed(3), "abc_RAW");
    store.GraphList[0].Name = "Fit";
    EXPECT_EQ(w.Proposed(0), "abc_FIT");
}

TEST(Save, ASmoothRowOfAnXbmProposesItsStem) {
    Saving w;
    SpectrumData data{};
    data.DataNo = 40;
    ASSERT_EQ(SaveXbm(w.Folder.Path("abc.xbm"), data, BlankProperty()), -1);
    w.Open({w.Folder.Path("abc.xbm")});
    Click(frmVaelAna.mnuSmooth);
    EXPECT_EQ(w.Proposed(0), "abc_SMT");
}

TEST(Save, TheStemStopsAtTheFirstOfTwoPoints) {
    Saving w;
    w.Open({w.Spectrum("run.5.npd")});
    EXPECT_EQ(w.Proposed(0), "run_RAW");
}

TEST(Save, TheStemIsThatOfTheFirstRowThatIsNotDerived) {
    Saving w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    EXPECT_EQ(w.Proposed(1), "a_RAW") << "also for the second file";
}

TEST(Save, BlanksAndJapaneseStandInTheProposal) {
    Saving w;
    w.Open({w.Spectrum("試料 1.npd")});
    EXPECT_EQ(w.Proposed(0), "試料 1_RAW");
}

TEST(Save, WhereTheFirstRowOfNoDerivedNameIsEmptyThereIsNoProposal) {
    Saving w;
    w.Open({w.Spectrum("abc.npd")});
    Click(frmVaelAna.mnuSmooth);
    DeleteGraph(1);  // the file's own row goes, the smoothed one stays
    ASSERT_EQ(store.GraphList[0].Name, "Smooth");
    EXPECT_EQ(w.Proposed(0), "");
    for (GraphEntry& entry : store.GraphList) entry = store.GraphList[0];
    EXPECT_EQ(ProposeName(0), "") << "ten derived rows";
    for (std::size_t row = 1; row < GRAPH_COUNT; ++row) store.GraphList[row] = GraphEntry{};
}

TEST(Save, EveryFormThatIsWrittenComesBackWithItsCounts) {
    Saving w;
    w.Open({w.Spectrum("abc.npd")});
    const SpectrumData before = store.SpectrumDatas[0];
    const std::vector<std::int32_t> counts(before.Count.begin(), before.Count.begin() + 200);
    for (const std::string name : {"one.npd", "two.xbm", "three.xba", "FOUR.XBM", "Five.Npd"}) {
        w.Save(name);
        if (LowerCase(name).ends_with("npd")) {
            // Its own reader drops a line of this writer's, so the text is read here.
            EXPECT_EQ(NpdCounts(w.Folder.Path(name)), counts) << name;
        } else {
            const SpectrumData after = ReadBack(w.Folder.Path(name));
            EXPECT_EQ(after.DataNo, before.DataNo) << name;
            EXPECT_EQ(after.Count, before.Count) << name;
        }
        EXPECT_EQ(frmVaelAna.lblStatus.Caption,
                  "Saved abc.npd as " + name + " in " + w.Folder.Path() + "/.");
        EXPECT_FALSE(frmVaelAna.StatusFault);
    }
    w.Save("six.xta");
    EXPECT_EQ(BytesOf(w.Folder.Path("six.xta")).substr(0, 4), " 200");
}

TEST(Save, AnXbaCarriesThePeaksOfItsSlot) {
    Saving w;
    w.Open({w.Spectrum("abc.npd")});
    PeakTable& peaks = store.PeakTables[0];
    peaks.PeakNum = 2;
    peaks.Peak[0].Position = 3.25;
    peaks.Peak[1].Position = 99.5;
    w.Record().RecordValid = 0;  // the save path sets it before the writer looks
    w.Save("p.xba");
    w.Open({w.Folder.Path("p.xba")});
    ASSERT_EQ(store.PeakTables[0].PeakNum, 2);
    EXPECT_EQ(store.PeakTables[0].Peak[1].Position, 99.5);
}

TEST(Save, TheRecordTakesTheFilesNameAndIsValid) {
    Saving w;
    w.Open({w.Spectrum("abc.npd")});
    w.Record().RecordValid = 0;
    w.Current().State = 2;
    w.Save("new name.xbm");
    EXPECT_EQ(w.Record().FileName.Trimmed(), "new name");
    EXPECT_EQ(w.Record().RecordValid, 1);
    EXPECT_EQ(w.Current().State, 1) << "in step with its file again";
    EXPECT_EQ(w.Current().Name, "abc.npd") << "the row keeps its name";
    const std::string bytes = BytesOf(w.Folder.Path("new name.xbm"));
    EXPECT_EQ(bytes.substr(2, 2), std::string("\1\0", 2)) << "the file's own valid word";
    EXPECT_EQ(bytes.substr(4, 9), "new name ");
}

TEST(Save, TheRowOfTheRealWindowIsSaved) {
    Saving w;
    w.Open({w.Spectrum("a.npd", 100), w.Spectrum("b.npd", 300)});
    Pick(frmVaelAna.cboGrphSel[1], 0);  // window 2 is active now
    w.Save("one.xbm");
    EXPECT_EQ(ReadBack(w.Folder.Path("one.xbm")).DataNo, 100);
    frmVaelAna.ckbExpand.Value = 1;  // and in Expand style window 1 counts
    w.Save("two.xbm");
    EXPECT_EQ(ReadBack(w.Folder.Path("two.xbm")).DataNo, 300);
}

TEST(Save, TheExportsAreWrittenFromTheWindowAndTheirTwinsOpen) {
    Saving w;
    w.Open({w.Spectrum("abc.npd", 100)});
    w.Current().State = 2;
    w.Save("x.csv");
    EXPECT_EQ(w.Current().State, 1);
    EXPECT_EQ(BytesOf(w.Folder.Path("x.csv")).substr(0, 8), "Press X,");
    w.Save("x.gsa");
    EXPECT_EQ(BytesOf(w.Folder.Path("x.gsa")).substr(0, 9), " File: x ");
    std::string chn(32 + 4 + 12, '\0');
    chn[30] = 1;
    chn[32] = 42;
    w.Folder.Write("y.chn", chn);
    w.Open({w.Folder.Path("y.chn")});
    EXPECT_EQ(w.Current().Name, "y.chn");
    EXPECT_EQ(store.SpectrumDatas[static_cast<std::size_t>(w.Current().DataNo)].Count[0], 42);
}

TEST(Save, AnUnknownExtensionWritesNothingWithoutABox) {
    Saving w;
    w.Open({w.Spectrum("abc.npd")});
    w.Current().State = 2;
    for (const std::string name : {"x.foo", "x.003", "x", "x.chn"}) {
        w.Save(name);
        EXPECT_FALSE(w.Exists(name)) << name;
        EXPECT_TRUE(frmVaelAna.StatusFault);
        EXPECT_NE(frmVaelAna.lblStatus.Caption.find("Not saved: " + name), std::string::npos);
        EXPECT_EQ(w.Current().State, 2);
    }
}

TEST(Save, TheWriterAsksBeforeItReplacesAndNoKeepsTheOldFile) {
    Saving w;
    w.Open({w.Spectrum("abc.npd")});
    w.Folder.Write("x.npd", "old");
    w.Current().State = 2;
    w.Desk.ExpectQuestion("File already exist. Replace?(NPD)", Answer::No);
    w.Save("x.npd");
    EXPECT_EQ(BytesOf(w.Folder.Path("x.npd")), "old");
    EXPECT_EQ(w.Current().State, 2);
    EXPECT_EQ(frmVaelAna.lblStatus.Caption, "Not saved: x.npd is kept as it was.");
    w.Desk.ExpectQuestion("File already exist. Replace?(NPD)", Answer::Yes);
    w.Save("x.npd");
    EXPECT_EQ(NpdCounts(w.Folder.Path("x.npd")).size(), 200u);
    EXPECT_EQ(w.Current().State, 1);
}

TEST(Save, AFullDeviceIsToldInTheStatusLineAndTheLogAndTheStateStays) {
    Saving w;
    w.Open({w.Spectrum("abc.npd")});
    w.Current().State = 2;
    std::filesystem::create_symlink("/dev/full", w.Folder.Path("full.npd"));
    w.Desk.ExpectQuestion("File already exist. Replace?(NPD)", Answer::Yes);
    w.Save("full.npd");
    EXPECT_TRUE(frmVaelAna.StatusFault);
    EXPECT_NE(frmVaelAna.lblStatus.Caption.find("No space left on device"), std::string::npos)
        << frmVaelAna.lblStatus.Caption;
    EXPECT_NE(frmLog.txtMessage.Text.find("No space left on device"), std::string::npos);
    EXPECT_EQ(w.Current().State, 2);
}

TEST(Save, AFolderThatIsNotThereIsTold) {
    Saving w;
    w.Open({w.Spectrum("abc.npd")});
    w.Save("absent/x.xba");
    EXPECT_TRUE(frmVaelAna.StatusFault);
    EXPECT_NE(frmVaelAna.lblStatus.Caption.find("absent/x.xba: No such file"), std::string::npos)
        << frmVaelAna.lblStatus.Caption;
}

namespace {

/// Saves over `path` in a process of its own and tells by its exit code: 1 the status line has a
/// fault, 2 the state is still 2.
int SaveInAChild(Saving& w, const std::string& name, const std::function<void()>& prepare) {
    const pid_t child = ::fork();
    if (child == 0) {
        prepare();
        w.Current().State = 2;
        w.Desk.ExpectQuestion("File already exist. Replace?(xbm)", Answer::Yes);
        w.Save(name);
        ::_exit((frmVaelAna.StatusFault ? 1 : 0) + (w.Current().State == 2 ? 2 : 0));
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

TEST(Save, ADiskThatFillsUpOnTheWayLeavesTheOldFile) {
    Saving w;
    w.Open({w.Spectrum("abc.npd", 4096)});
    w.Folder.Write("x.xbm", "the old file");
    EXPECT_EQ(SaveInAChild(w, "x.xbm",
                           [] {
                               ::signal(SIGXFSZ, SIG_IGN);
                               const rlimit limit{3000, 3000};
                               ::setrlimit(RLIMIT_FSIZE, &limit);
                           }),
              3);
    EXPECT_EQ(BytesOf(w.Folder.Path("x.xbm")), "the old file");
}

TEST(Save, AFileThatMayNotBeWrittenStaysAsItWas) {
    Saving w;
    w.Open({w.Spectrum("abc.npd", 4096)});
    const std::string path = w.Folder.Write("x.xbm", "the old file");
    std::filesystem::permissions(path, std::filesystem::perms(0444));
    std::filesystem::permissions(w.Folder.Path(), std::filesystem::perms(0755));
    EXPECT_EQ(
        SaveInAChild(w, "x.xbm",
                     [] {
                         if (::getuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0))
                             ::_exit(99);
                     }),
        3);
    EXPECT_EQ(BytesOf(path), "the old file");
}
