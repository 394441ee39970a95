// Every spectrum form from the window: what a file that cannot be read leaves as it was and where
// its reason stands, and what is asked before a file is replaced.
#include "support/plotted.h"
#include "support/smallforms.h"

#include "core/frmlog.h"
#include "core/frmselgraph.h"
#include "files/filevael.h"

#include <gtest/gtest.h>

using namespace vael;

namespace {

struct Formats : Plotted {
    /// Opens into the rows from 1 on without emptying them first.
    void OpenBeside(const std::string& path) {
        Desk.ChooseFiles({path});
        Click(frmVaelAna.cmdMnSelGrp);
        Click(frmSelGraph.cmdOpen);
    }
    void Save(const std::string& name) {
        Desk.SaveAs(Folder.Path(name));
        Click(frmVaelAna.mnuSave);
    }
    static bool Logged(const std::string& words) {
        return frmLog.txtMessage.Text.find(words) != std::string::npos;
    }
};

struct Refused {
    const char* Name;
    std::string Bytes;
    const char* Reason;  // behind the path and ": "
    const char* Box;     // what is said in a box; empty for none
};

/// A file of each form that its reader refuses after it has begun to read.
std::vector<Refused> RefusedFiles() {
    Image many(1990);
    many.Text(4, 64, "other").Put(2, std::int16_t{1}).Put(1988, std::int16_t{8193});
    Image peaks(1990);
    peaks.Text(4, 64, "other").Put(2, std::int16_t{1}).Put(1990, std::int16_t{101});
    Image below(32);
    below.Put(30, std::int16_t{-5});
    std::string npd = NpdText({8, 9}, "other");
    npd.resize(npd.rfind("2,0.0000"));
    std::string gsa = GsaText({8, 9});
    gsa.resize(gsa.rfind("2,0.0000"));
    return {{"a.001", many.Bytes(), "offset 1988: at most 8192 channels", ""},
            {"a.xbm", many.Bytes(), "offset 1988: at most 8192 channels", ""},
            {"a.xba", peaks.Bytes(), "offset 1990: at most 100 peaks", ""},
            {"a.chn", below.Bytes(), "offset 30: a number of channels from 0 on", ""},
            {"a.cnf", std::string(30000, ' '), "offset 30000: the file ends", "File Error"},
            {"a.rpt", "    2\r\n      8      9\r\nother\r\n", "line 4: the file ends", ""},
            {"a.npd", npd, "line 28: the file ends", ""},
            {"a.gsa", gsa, "line 26: the file ends", ""},
            {"a.raw", "1,8\r\n2,9\r\n3,x\r\n", "line 3: a count of 32 bits was expected", ""},
            {"a.csv", "1,2,3\r\n", "an extension that can be read was expected", ""}};
}

}  // namespace

TEST(Formats, AFileThatIsRefusedSaysWhyInTheLogAndLeavesTheRowsAsTheyWere) {
    for (const Refused& file : RefusedFiles()) {
        Formats w;
        w.Open({w.Spectrum("good.npd", 300)});
        w.AddPeakAt(0, 100.0);
        store.DacOffset = 2.0;
        store.DacSlope = 0.01;
        const SpectrumData data = store.SpectrumDatas[0];
        const std::string record = store.PropertyRecords[0].FileName.Text();
        const auto rows = store.GraphList;
        const std::int16_t span = store.SpanCh;
        const std::string path = w.Folder.Write(file.Name, file.Bytes);
        if (*file.Box != '\0') w.Desk.ExpectQuestion(file.Box);
        w.OpenBeside(path);
        EXPECT_TRUE(Formats::Logged(path + ": " + file.Reason)) << file.Name << "\n"
                                                                << frmLog.txtMessage.Text;
        EXPECT_TRUE(frmVaelAna.StatusFault) << file.Name;
        EXPECT_EQ(frmVaelAna.lblStatus.Caption,
                  "Not read: " + std::string(file.Name) + " (the reason stands in the log).");
        EXPECT_EQ(w.Desk.Asked.size(), *file.Box != '\0' ? 1u : 0u) << file.Name;
        EXPECT_TRUE(w.Desk.Faults.empty()) << file.Name;

        for (std::size_t row = 0; row < GRAPH_COUNT; ++row) {
            EXPECT_EQ(store.GraphList[row].State, rows[row].State) << file.Name;
            EXPECT_EQ(store.GraphList[row].Name, rows[row].Name) << file.Name;
            EXPECT_EQ(store.GraphList[row].DataNo, rows[row].DataNo) << file.Name;
        }
        EXPECT_EQ(store.SpectrumDatas[0].DataNo, data.DataNo) << file.Name;
        EXPECT_TRUE(store.SpectrumDatas[0].Count == data.Count) << file.Name;
        EXPECT_EQ(store.PropertyRecords[0].FileName.Text(), record) << file.Name;
        EXPECT_EQ(store.PeakTables[0].PeakNum, 1) << file.Name;
        EXPECT_EQ(store.SpanCh, span) << file.Name;
        EXPECT_EQ(store.DacOffset, 2.0) << file.Name;
        EXPECT_EQ(store.DacSlope, 0.01) << file.Name;
    }
}

TEST(Formats, AFileReadWithARemarkSaysInTheStatusLineThatTheLogHasIt) {
    Formats w;
    Image cut(40);
    cut.Put(30, std::int16_t{3}).Put(32, std::int32_t{5}).Put(36, std::int32_t{6});
    w.Open({w.Folder.Write("cut.chn", cut.Bytes())});
    EXPECT_TRUE(Formats::Logged("cut.chn: ")) << frmLog.txtMessage.Text;
    EXPECT_EQ(frmVaelAna.lblStatus.Caption, "Opened 1 spectrum. The log has remarks.");
    w.Open({w.Spectrum("good.npd", 300)});
    EXPECT_EQ(frmVaelAna.lblStatus.Caption, "Opened 1 spectrum.");
}

TEST(Formats, EachAsksInItsOwnWordsWithNoAsTheDefaultAndNoKeepsTheOldFile) {
    const struct {
        const char* Name;
        const char* Words;
    } cases[] = {{"x.npd", "File already exist. Replace?(NPD)"},
                 {"x.rpt", "File already exist. Replace?(RPT)"},
                 {"x.xbm", "File already exist. Replace?(xbm)"},
                 {"x.xba", "File alrady exist. Replace?"},
                 {"temp00.xba", "File alrady exist. Replace?"},
                 {"x.gsa", "File already exist. Replace?(GSA)"},
                 {"X.GSA", "File already exist. Replace?(GSA)"}};
    for (const auto& c : cases) {
        Formats w;
        w.Open({w.Spectrum("abc.npd", 300)});
        w.Save(c.Name);
        EXPECT_TRUE(w.Desk.Asked.empty()) << c.Name << " is new";
        w.Folder.Write(c.Name, "old");
        w.Desk.ExpectQuestion(c.Words, Answer::No);
        w.Save(c.Name);
        ASSERT_EQ(w.Desk.Asked.size(), 1u) << c.Name;
        EXPECT_EQ(w.Desk.Asked[0].Choice, Question::Buttons::YesNo) << c.Name;
        EXPECT_EQ(w.Desk.Asked[0].Icon, Question::Sign::Exclamation) << c.Name;
        EXPECT_EQ(w.Desk.Asked[0].DefaultButton, 2) << c.Name;
        EXPECT_EQ(BytesOf(w.Folder.Path(c.Name)), "old") << c.Name;
        EXPECT_EQ(frmVaelAna.lblStatus.Caption,
                  "Not saved: " + std::string(c.Name) + " is kept as it was.");
        w.Desk.ExpectQuestion(c.Words, Answer::Yes);
        w.Save(c.Name);
        EXPECT_GT(BytesOf(w.Folder.Path(c.Name)).size(), 1000u) << c.Name;
    }
}

TEST(Formats, TheExportsAndTheScratchFileAreReplacedWithoutAQuestion) {
    for (const std::string name : {"x.csv", "x.xta", "temp00.xbm"}) {
        Formats w;
        w.Open({w.Spectrum("abc.npd", 300)});
        w.Folder.Write(name, "old");
        w.Save(name);
        EXPECT_TRUE(w.Desk.Asked.empty()) << name;
        EXPECT_GT(BytesOf(w.Folder.Path(name)).size(), 1000u) << name;
    }
}

TEST(Formats, AnExportThatCannotBeWrittenSaysSoInItsBoxAndWhyInTheLog) {
    Formats w;
    w.Open({w.Spectrum("abc.npd", 300)});
    store.GraphList[0].State = 2;
    w.Desk.ExpectQuestion("CSV File Write Error");
    w.Save("absent/x.csv");
    const std::string why = w.Folder.Path("absent/x.csv") + ": No such file or directory.";
    EXPECT_TRUE(Formats::Logged(why)) << frmLog.txtMessage.Text;
    EXPECT_EQ(frmVaelAna.lblStatus.Caption, "Not saved: " + why);
    EXPECT_TRUE(frmVaelAna.StatusFault);
    EXPECT_EQ(store.GraphList[0].State, 2);
}

TEST(Formats, CountsThatTouchAreToldWhenAReportIsSaved) {
    for (const std::string name : {"x.rpt", "x.xta"}) {
        Formats w;
        w.Open({w.Spectrum("abc.npd", 300)});
        store.SpectrumDatas[0].Count[5] = 1000000;
        w.Save(name);
        EXPECT_TRUE(Formats::Logged(w.Folder.Path(name) + ": counts of seven characters"))
            << frmLog.txtMessage.Text;
        EXPECT_FALSE(frmVaelAna.StatusFault) << "it was saved all the same";
    }
}
