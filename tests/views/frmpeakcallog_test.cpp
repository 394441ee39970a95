// The files of the lattice view: its log from opening to exit, the result that is kept, the saved
// report.
#include "support/latticeworld.h"

#include <gtest/gtest.h>

#include <sys/file.h>
#include <unistd.h>

#include <fcntl.h>

using namespace vael;
using test::GOLD;
using test::LatticeWorld;

namespace {

PeakCalView& v = frmPeakCal;

/// Holds a file as another program would: the lock belongs to what was opened, not to the process.
class Held {
public:
    explicit Held(const std::string& path) : file_(::open(path.c_str(), O_RDWR | O_CREAT, 0644)) {
        EXPECT_EQ(::flock(file_, LOCK_EX | LOCK_NB), 0);
    }
    ~Held() { ::close(file_); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

private:
    int file_;
};

/// The lines of the log, each without its end.
std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find("\r\n", at);
        lines.push_back(text.substr(at, end - at));
        at = end + 2;
    }
    return lines;
}

}  // namespace

TEST(LatticeViewLog, BeginsWithTheFileTheMeasurementAndItsPeaks) {
    LatticeWorld w;
    w.Record().FileName = "gold.npd";
    w.Record().Param.PressLoad = 1.5;
    w.Record().Param.Temperature = 25;
    w.AddPeakAt(0, 999.5);
    w.OpenView();
    const auto lines = Lines(w.LogText());
    ASSERT_EQ(lines.size(), 17U);
    EXPECT_EQ(lines[16], "");
    EXPECT_EQ(lines[0],
              "\"*******************gold.npdLatticeFitting Log Start**************************\"");
    EXPECT_EQ(lines[1], "");
    EXPECT_EQ(lines[2], "");
    EXPECT_EQ(lines[3], "\"********** Property      ********************\"");
    EXPECT_EQ(lines[4], "\"2θ\",\"10.00000\"");
    EXPECT_EQ(lines[5], "\"EV(0)\",\"0.050000\"");
    EXPECT_EQ(lines[6], "\"EV(1)\",\"0.030000\"");
    EXPECT_EQ(lines[8], "\"LOAD\",\"1.50\"");
    EXPECT_EQ(lines[9], "\"TEMP\",\"25.00\"");
    EXPECT_EQ(lines[12], "\"**************PEAKS CURVE FITED LIST**********************\"");
    EXPECT_EQ(lines[13], "\"Number=\",1");
    EXPECT_EQ(lines[15].substr(0, 24), "\"1\",\"1000.50\",\"30.0650\",");
}

TEST(LatticeViewLog, TellsOneCalculationInTheOrderOfItsBlocks) {
    LatticeWorld w;
    w.AddCubic(GOLD, 4);
    w.OpenView();
    w.Choose("Au");
    w.Execute();
    const std::string log = w.LogText();
    std::size_t at = 0;
    for (const char* block : {"Log Start",
                              "Property",
                              "PEAKS CURVE FITED LIST",
                              "Element Changed!!",
                              "Element Reference Information",
                              "Seed Infomation",
                              "Compare to Seed Caluclate",
                              "************  Compare to Caluclate",
                              "\"*********Compare to Caluclate",
                              "Caluclate Result",
                              "LATTICE CONSTANTS",
                              "\"CUBIC\"",
                              "\"A    =\",\"4.0786",
                              "\"GAMMA=\",\"90.00000\"",
                              "\"V    =\"",
                              "\"V/V0 =\"",
                              "\"2θ = \",\"10.00000\"",
                              "Caluclate Puressure",
                              "******** ANDERSON SCALE AT T=27.0℃ ***",
                              "\"P(GPA)= \",\""}) {
        const std::size_t next = log.find(block, at);
        ASSERT_NE(next, std::string::npos) << block;
        at = next;
    }
}

TEST(LatticeViewLog, IsOfferedAtExitUnderTheGraphsName) {
    LatticeWorld w;
    w.AddCubic(GOLD, 4);
    w.OpenView();
    w.Choose("Au");
    w.Execute();
    const std::string kept = w.Folder.Path("kept.csv");
    w.Desk.SaveAs(kept);
    Click(v.cmdExit);
    EXPECT_FALSE(v.Visible);
    EXPECT_FALSE(v.OnTop);
    const FileDialog& dialog = w.Desk.SaveDialogs.back();
    EXPECT_EQ(dialog.Filter, "Result File (*.csv)|*.csv");
    EXPECT_EQ(dialog.Name, "gold_Result.csv");
    EXPECT_EQ(BytesOf(kept), BytesOf(w.Folder.Path("crystalfit.csv")));
    EXPECT_TRUE(FromCp932(BytesOf(kept))
                    .ends_with("LatticeFitting Log Ende************************\"\r\n"));
    EXPECT_EQ(LatticeWorld::Count(w.LogText(), "Log Ende"), 1U);
}

TEST(LatticeViewLog, ACancelledResultLeavesTheLog) {
    LatticeWorld w;
    w.OpenView();
    w.Desk.CancelSave();
    EXPECT_TRUE(Close(v));
    EXPECT_FALSE(v.Visible);
    EXPECT_NE(w.LogText().find("Log Ende"), std::string::npos);
    EXPECT_NE(w.Told().find("crystalfit.csv"), std::string::npos);
}

TEST(LatticeViewLog, ADerivedGraphHasAPlainResultName) {
    LatticeWorld w;
    Click(frmVaelAna.mnuSmooth);
    w.OpenView();
    w.Desk.CancelSave();
    Click(v.cmdExit);
    EXPECT_EQ(w.Desk.SaveDialogs.back().Name, "Result.csv");
}

TEST(LatticeViewLog, AResultThatCannotBeWrittenIsTold) {
    LatticeWorld w;
    w.OpenView();
    w.Desk.SaveAs(w.Folder.Path("absent/kept.csv"));
    w.Desk.ExpectQuestion("File Write Error");
    Click(v.cmdExit);
    EXPECT_FALSE(v.Visible);
    EXPECT_NE(w.Told().find("was not saved"), std::string::npos);
}

TEST(LatticeViewLog, AHeldLogGoesToTheOtherNameAndTheResultFollows) {
    LatticeWorld w;
    w.Folder.Write("crystalfit.csv", "somebody else's");
    Held held(w.Folder.Path("crystalfit.csv"));
    w.OpenView();
    EXPECT_EQ(v.Log.LogAlternate, 1);
    w.Desk.SaveAs(w.Folder.Path("kept.csv"));
    Click(v.cmdExit);
    EXPECT_EQ(BytesOf(w.Folder.Path("kept.csv")), BytesOf(w.Folder.Path("crystalfit2.csv")));
    EXPECT_NE(BytesOf(w.Folder.Path("kept.csv")).find("Log Ende"), std::string::npos);
    EXPECT_EQ(BytesOf(w.Folder.Path("crystalfit.csv")), "somebody else's");
}

TEST(LatticeViewLog, HeldUnderBothNamesTheViewOpensWithoutOneAndSaysSoOnce) {
    LatticeWorld w;
    Held first(w.Folder.Path("crystalfit.csv"));
    Held second(w.Folder.Path("crystalfit2.csv"));
    w.AddCubic(GOLD, 4);
    w.Desk.ExpectQuestion("The lattice log cannot be written: " + w.Folder.Path("crystalfit.csv") +
                          ": another one holds it. " + w.Folder.Path("crystalfit2.csv") +
                          ": another one holds it.");
    w.OpenView();
    w.Choose("Au");
    w.Execute();
    EXPECT_NE(v.txtLatticeLength[0].Text, "");
    Click(v.cmdExit);  // there is nothing to keep, so nobody asks where
    EXPECT_FALSE(v.Visible);
}

TEST(LatticeViewLog, ADiskThatFillsUpIsToldOnceAndTheViewGoesOn) {
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
    LatticeWorld w;
    w.AddCubic(GOLD, 4);
    std::filesystem::create_symlink("/dev/full", w.Folder.Path("crystalfit.csv"));
    w.Desk.ExpectQuestion("The lattice log cannot be written: " + w.Folder.Path("crystalfit.csv") +
                          ": No space left on device.");
    w.OpenView();
    w.Choose("Au");
    w.Execute();
    EXPECT_NE(v.txtLatticeLength[0].Text, "");
}

// --- the saved report -----------

TEST(LatticeDataSave, WritesTheCalculationBelowTheProgramsFolder) {
    LatticeWorld w;
    w.Record().FileName = "gold.npd";
    w.AddCubic(GOLD, 4);
    w.OpenView();
    w.Choose("Au");
    w.Execute();
    Tick(v.sprPeakInf2, PeakCalView::USE, 2);
    w.Execute();
    Click(v.cmdDataSave);
    const std::string text = FromCp932(BytesOf(w.Folder.Path("CORVINE/LatticeFit.csv")));
    const auto lines = Lines(text);
    EXPECT_EQ(lines[0], "\"gold.npd" + std::string(56, ' ') + "LatticeFitting Log\"");
    EXPECT_NE(text.find("\"Au Gold\",\"CUB\",\"4.078600\""), std::string::npos);
    EXPECT_NE(text.find("\"A    =\",\"" + v.txtLatticeLength[0].Text.substr(0, 8)),
              std::string::npos);
    EXPECT_NE(text.find("\"2\",\"2\",\"\",\"\","), std::string::npos) << "a 0 prints nothing";
    EXPECT_TRUE(text.ends_with("\"*** JAMIESON SCALE AT T=27.0℃ ***\"\r\n\"P(GPA)= \",\"" +
                               v.txtPressure.Text + "\"\r\n"));
    // Four rows against the seed, three in use against the result.
    EXPECT_EQ(LatticeWorld::Count(text, "\"2\",\"2\",\"\",\"\","), 1U);
    EXPECT_EQ(LatticeWorld::Count(text, "\"1\",\"1\",\"1\",\"1\","), 2U);
}

TEST(LatticeDataSave, WithoutACalculationItHasThePeaksAlone) {
    LatticeWorld w;
    w.AddCubic(GOLD, 4);
    w.OpenView();
    Click(v.cmdDataSave);
    const std::string text = FromCp932(BytesOf(w.Folder.Path("CORVINE/LatticeFit.csv")));
    EXPECT_NE(text.find("\"4\",\""), std::string::npos);
    EXPECT_NE(text.find("\"A    =\",\"\",\"+-\",\"\"\r\n"), std::string::npos);
    EXPECT_TRUE(w.Desk.Faults.empty());
}

TEST(LatticeDataSave, AFileThatCannotBeWrittenIsTold) {
    LatticeWorld w;
    w.Folder.Write("CORVINE", "a file where the folder should be");
    w.OpenView();
    w.Desk.ExpectQuestion("LatticeFit Temp File Open Error");
    Click(v.cmdDataSave);
    EXPECT_NE(w.Told().find("Not saved"), std::string::npos);
}
