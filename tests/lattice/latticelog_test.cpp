// The lines of the lattice log and of the saved report to the letter, and the file that is locked.
#include "lattice/latticelog.h"
#include "lattice/latticereport.h"

#include "core/cp932.h"
#include "core/fault.h"

#include <gtest/gtest.h>

#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

using namespace vael;

namespace {

namespace fs = std::filesystem;

/// A folder that goes with the test.
struct Folder {
    Folder() {
        std::string name = (fs::temp_directory_path() / "vael-log-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
        Path = name;
    }
    ~Folder() {
        std::error_code none;
        fs::remove_all(Path, none);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    std::string Bytes(const std::string& name) const {
        std::ifstream in(Path + "/" + name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    std::string Path;
};

/// Another program that holds a log of the folder until it is let go.
class Holder {
public:
    explicit Holder(const std::string& folder) {
        int ready[2];
        int go[2];
        if (::pipe(ready) != 0 || ::pipe(go) != 0) throw std::runtime_error("no pipe");
        child_ = ::fork();
        if (child_ == 0) {
            ::close(go[1]);  // else it would wait for itself
            LatticeLog log;
            const char told = log.Open(folder) && log.Write("another one\r\n") ? 'y' : 'n';
            char end = 0;
            if (::write(ready[1], &told, 1) == 1 && ::read(go[0], &end, 1) >= 0) ::_exit(0);
            ::_exit(1);
        }
        char told = 'n';
        if (::read(ready[0], &told, 1) == 1) Holds = told == 'y';
        go_ = go[1];
        ::close(ready[0]);
        ::close(ready[1]);
        ::close(go[0]);
    }
    ~Holder() {
        ::close(go_);
        int status = 0;
        ::waitpid(child_, &status, 0);
    }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;
    bool Holds = false;

private:
    pid_t child_ = -1;
    int go_ = -1;
};

/// The tables of a report of two rows, of which the second is left out.
LatticeReport TwoRows() {
    LatticeReport report;
    report.Crystal = "Au Gold";
    report.System = SYSTEM_CUB;
    report.Seed = {4.0786, 4.0786, 4.0786, 90, 90, 90};
    report.Rows = {{.Index = 0,
                    .H = 1,
                    .K = 1,
                    .L = 1,
                    .Ch = 995.25,
                    .KeV = 30.2,
                    .TwoTheta = 5.5,
                    .DObs = 2.355,
                    .DSeed = 2.354781,
                    .DCalc = 2.3545,
                    .Type = "A",
                    .Used = true},
                   {.Index = 3,
                    .H = 2,
                    .K = 0,
                    .L = 0,
                    .Ch = 1149.5,
                    .KeV = 34.875,
                    .TwoTheta = 22.2,
                    .DObs = 2.0,
                    .DSeed = 2.0393,
                    .DCalc = std::nullopt,
                    .Type = "M",
                    .Used = false}};
    report.LatticeLength = {"4.078550+-0.000120", "4.078550+-0.000120", "4.078550+-0.000120",
                            "90.00000",           "90.00000",           "90.00000"};
    report.Vol = "67.843210+-0.010000";
    report.VolPerVol0 = ".999960+-.000147";
    report.Pressure = "5.00012+-0.01234";
    report.HasBoxes = true;
    report.TwoTheta = 15.01459;
    report.Temperature = "27.0";
    return report;
}

}  // namespace

TEST(LatticeLogLines, TheStartNamesTheFileAndLeavesTwoEmptyLines) {
    EXPECT_EQ(
        LogStart("  gold.npd "),
        "\"*******************gold.npdLatticeFitting Log Start**************************\"\r\n"
        "\r\n\r\n");
}

TEST(LatticeLogLines, TheEndNamesTheFile) {
    EXPECT_EQ(LogEnd("gold.npd"),
              "\"*************gold.npdLatticeFitting Log Ende************************\"\r\n");
}

TEST(LatticeLogLines, ThePropertyBlockHasItsFormats) {
    ParamRecord param{};
    param.TwoTheta = 15.01459;
    param.EgcCoef = {0.03017, 0.0331, -1.25e-7};
    param.PressLoad = 1.5;
    param.Temperature = 537;
    EXPECT_EQ(LogProperty(param),
              "\"********** Property      ********************\"\r\n"
              "\"2θ\",\"15.01459\"\r\n"
              "\"EV(0)\",\"0.030170\"\r\n"
              "\"EV(1)\",\"0.033100\"\r\n"
              "\"EV(2)\",\"0.000000\"\r\n"
              "\"LOAD\",\"1.50\"\r\n"
              "\"TEMP\",\"537.00\"\r\n"
              "\r\n\r\n");
}

TEST(LatticeLogLines, ThePeakListCountsWithABareNumber) {
    EXPECT_EQ(LogPeaks({{.Ch = 1000.5,
                         .KeV = 30.065,
                         .D = 2.36574,
                         .Intensity = 12345.67,
                         .Amplitude = 4000.5,
                         .FwhmCh = 10,
                         .FwhmKeV = 0.3,
                         .TwoTheta = 19.0183,
                         .Type = "A"}}),
              "\"**************PEAKS CURVE FITED LIST**********************\"\r\n"
              "\"Number=\",1\r\n"
              "\"Peak No.\",\"Ch\",\"Energy\",\"DValue\",\"Intensity\",\"Amp\",\"FWHM(Ch)\","
              "\"FWHM(KeV)\",\"2Theta\",\"Fit Type\"\r\n"
              "\"1\",\"1000.50\",\"30.0650\",\"2.3657\",\"12346\",\"4001\",\"10.00\",\"0.3000\","
              "\"19.0183\",\"A\"\r\n"
              "\r\n");
}

TEST(LatticeLogLines, ChangesHaveTheirBanners) {
    const std::pair<LogChange, const char*> all[] = {
        {LogChange::TwoTheta, "********************* 2θChanged!! **********"},
        {LogChange::LatticeType, "********************* Lattice Type Changed!! **********"},
        {LogChange::Mode, "********************* Lattice Fit Mode Changed!! **********"},
        {LogChange::Seed, "************ New Seed Inputed!!!!!! **************"},
        {LogChange::Use, "********************* UseFlag Changed!! **********"}};
    for (const auto& [what, words] : all)
        EXPECT_EQ(LogChanged(what), "\"" + std::string(words) + "\"\r\n");
}

TEST(LatticeLogLines, AnElementTellsItsReference) {
    CrystalRecord crystal;
    crystal.System = SYSTEM_HEX;
    crystal.A = crystal.B = 2.5044;
    crystal.C = 6.6562;
    crystal.Alpha = crystal.Beta = 90;
    crystal.Gamma = 120;
    EXPECT_EQ(LogElement(crystal),
              "\"********************* Element Changed!! **********\"\r\n"
              "\"*********** Element Reference Information *************\"\r\n"
              "\"HEX\"\r\n"
              "\"A     =\",\"2.504400\"\r\n"
              "\"B     =\",\"2.504400\"\r\n"
              "\"C     =\",\"6.656200\"\r\n"
              "\"Alpha =\",\"90.000000\"\r\n"
              "\"Beta  =\",\"90.000000\"\r\n"
              "\"Gamma =\",\"120.000000\"\r\n");
    crystal.System = SYSTEM_ANY;
    EXPECT_NE(LogElement(crystal).find("\"UNK\""), std::string::npos);
}

TEST(LatticeLogLines, ACalculationIsToldInItsBlocks) {
    // By hand: 2.355 - 2.354781 = 0.000219; (2.355 - 2.3545) / 2.355 = 0.000212; 2 - 2.0393 =
    // -0.0393.
    EXPECT_EQ(LogCalculation(TwoRows()),
              "\"************  Seed Infomation       ************************\"\r\n"
              "\"CUB\",\"4.078600\",\"4.078600\",\"4.078600\",\"90.000000\",\"90.000000\","
              "\"90.000000\"\r\n"
              "\"************  Compare to Seed Caluclate   ******************\"\r\n"
              "\"PK#\",\"HKL\",\"CH\",\"E(KEV)\",\"D(OBS)\",\"D(CAL)\",\"DEV\"\r\n"
              "\"1\",\"(1 1 1)\",\"995.250000\",\"30.200000\",\"2.355000\",\"2.354781\","
              "\"0.000219\"\r\n"
              "\"*4\",\"(2 0 0)\",\"1149.500000\",\"34.875000\",\"2.000000\",\"2.039300\","
              "\"-0.039300\"\r\n"
              "\"************  Compare to Caluclate      ********************\"\r\n"
              "\"CUB\"\r\n"
              "\"PK#\",\"HKL\",\"CH\",\"E(KEV)\",\"DO\",\"DC\",\"DR\"\r\n"
              "\"1\",\"(1 1 1)\",\"995.250000\",\"30.200000\",\"2.355000\",\"2.354500\","
              "\"0.000212\"\r\n"
              "\"*4\",\"(2 0 0)\",\"1149.500000\",\"34.875000\",\"2.000000\",\"\",\"\"\r\n"
              "\"*********Compare to Caluclate   **********************\"\r\n"
              "\"PK#\",\"HKL\",\"CH\",\"E(KEV)\",\"2Theta\",\"DOBS\",\"DCAL\",\"DR\","
              "\"DDEF to Initial\",\"FIT TYPE\"\r\n"
              "\"1\",\"(1 1 1)\",\"995.250000\",\"30.200000\",\"05.500000\",\"2.355000\","
              "\"2.354500\",\"0.000212\",\"0.000219\",\"A\"\r\n"
              "\"************Caluclate Result   *****************************\"\r\n"
              "\"LATTICE CONSTANTS\"\r\n"
              "\"CUBIC\"\r\n"
              "\"A    =\",\"4.078550\",\"+-\",\"0.000120\"\r\n"
              "\"B    =\",\"4.078550\",\"+-\",\"0.000120\"\r\n"
              "\"C    =\",\"4.078550\",\"+-\",\"0.000120\"\r\n"
              "\"ALPHA=\",\"90.00000\"\r\n"
              "\"BETA =\",\"90.00000\"\r\n"
              "\"GAMMA=\",\"90.00000\"\r\n"
              "\"V    =\",\"67.843210\",\"+-\",\"0.010000\"\r\n"
              "\"V/V0 =\",\".999960\",\"+-\",\".000147\"\r\n"
              "\"2θ = \",\"15.01459\"\r\n"
              "\"************Caluclate Puressure   *****************************\"\r\n"
              "\"******** ANDERSON SCALE AT T=27.0℃ ***\"\r\n"
              "\"P(GPA)= \",\"5.00012\",\"+-\",\"0.01234\"\r\n");
}

TEST(LatticeLogLines, ASampleHasNoPressureAndACalculationThatShowedNothingNoResult) {
    LatticeReport report = TwoRows();
    report.Mode = MODE_SAMPLE;
    EXPECT_EQ(LogCalculation(report).find("P(GPA)"), std::string::npos);
    EXPECT_NE(LogCalculation(report).find("CUBIC"), std::string::npos);
    report.Mode = MODE_MARKER;
    report.HasBoxes = false;
    EXPECT_EQ(LogCalculation(report).find("P(GPA)"), std::string::npos);
    EXPECT_EQ(LogCalculation(report).find("CUBIC"), std::string::npos);
}

TEST(LatticeLogLines, EachKeyNamesItsScaleAndSomeNone) {
    const std::pair<const char*, const char*> keys[] = {
        {"NACL", "DECKER PRESSURE"}, {"NaCl", "DECKER PRESSURE"}, {"nacl", "DECKER PRESSURE"},
        {"MgO", "JAMIESON SCALE"},   {"MGO", "JAMIESON SCALE"},   {"PT", "JAMIESON SCALE"},
        {"Pt", "JAMIESON SCALE"},    {"pt", "JAMIESON SCALE"},    {"AU", "ANDERSON SCALE"},
        {"Au", "ANDERSON SCALE"},    {"au", "ANDERSON SCALE"},    {"PT_B", "Burch_m SCALE"},
        {"Pt_B", "Burch_m SCALE"},   {"pt_b", "Burch_m SCALE"},   {"hBN", "Burch_m SCALE"},
        {"HBN", "Burch_m SCALE"}};
    for (const auto& [key, scale] : keys)
        EXPECT_EQ(LogScaleWords(key), "******** " + std::string(scale) + " AT T=") << key;
    for (const char* key : {"PT_H", "pt_h", "pt_B", "mgo", "Au2", ""})
        EXPECT_EQ(LogScaleWords(key), "") << key;

    LatticeReport report = TwoRows();
    const char* early = "\"************Caluclate Puressure   **************************\"\r\n";
    report.Crystal = "  MgO Periclase";  // the log trims before it cuts
    report.Unit = TEMPERATURE_KELVIN;
    report.Temperature = "300";
    EXPECT_NE(
        LogCalculation(report).find(early + std::string("\"******** JAMIESON SCALE AT T=300Ｋ "
                                                        "***\"\r\n\"P(GPA)= \"")),
        std::string::npos);
    report.Crystal = "PT_H Platinum";
    report.Pressure = "";
    const std::string text = LogCalculation(report);
    EXPECT_EQ(text.find("Puressure"), std::string::npos);
    EXPECT_TRUE(text.ends_with("\"2θ = \",\"15.01459\"\r\n\"P(GPA)= \",\"\"\r\n"));
}

TEST(LatticeReport, IsWrittenToTheLetter) {
    PropertyRecord property{};
    property.FileName = "gold.npd";
    property.Param.TwoTheta = 15.01459;
    property.Param.PressLoad = 1.5;
    property.Param.Temperature = 27;
    EXPECT_EQ(
        LatticeReportText(property,
                          {{.Ch = 995.25,
                            .KeV = 30.2,
                            .D = 2.355,
                            .Amplitude = 4000.4,
                            .FwhmCh = 10.0,
                            .Type = "A"}},
                          TwoRows()),
        "\"gold.npd" + std::string(56, ' ') +
            "LatticeFitting Log\"\r\n"
            "\r\n"
            "\"2θ\",\"15.0146\"\r\n"
            "\"EV(0)\",\"0.000000\"\r\n"
            "\"EV(1)\",\"0.000000\"\r\n"
            "\"EV(2)\",\"0.000000\"\r\n"
            "\"LOAD\",\"1.50\"\r\n"
            "\"TEMP\",\"27.00\"\r\n"
            "\r\n"
            "\" \",\"PEAKS CURVE FITED\"\r\n"
            "\"Peak No.\",\"Ch\",\"Energy\",\"DValue\",\"Amp\",\"Width\"\r\n"
            "\"1\",\"995.2500\",\"30.200\",\"2.3550\",\"4000\",\"10.00\"\r\n"
            "\"Au Gold\",\"CUB\",\"4.078600\",\"4.078600\",\"4.078600\",\"90.000000\","
            "\"90.000000\",\"90.000000\"\r\n"
            "\"PK#\",\"H\",\"K\",\"L\",\"CH\",\"D(OBS)\",\"D(CAL)\",\"DEV\"\r\n"
            "\"1\",\"1\",\"1\",\"1\",\"995.250000\",\"2.355000\",\"2.354781\",\"0.000219\"\r\n"
            "\"4\",\"2\",\"\",\"\",\"1149.500000\",\"2.000000\",\"2.039300\",\"-0.039300\"\r\n"
            "\"LATTICE CONSTANTS\"\r\n"
            "\"A    =\",\"4.078550\",\"+-\",\"0.000120\"\r\n"
            "\"V    =\",\"67.843210\",\"+-\",\"0.010000\"\r\n"
            "\"V/V0 =\",\".999960\",\"+-\",\".000147\"\r\n"
            "\"NO\",\"H\",\"K\",\"L\",\"CH\",\"E\",\"DO\",\"DC\",\"DR\"\r\n"
            "\"1\",\"1\",\"1\",\"1\",\"995.250000\",\"30.200000\",\"2.355000\",\"2.354500\","
            "\"0.000212\"\r\n"
            "\"*** JAMIESON SCALE AT T=27.0℃ ***\"\r\n"
            "\"P(GPA)= \",\"5.00012+-0.01234\"\r\n");
}

TEST(LatticeReport, HasNoCodeForMostSystemsAndNoPressureWithoutAScale) {
    LatticeReport report = TwoRows();
    const auto text = [&] { return LatticeReportText(PropertyRecord{}, {}, report); };
    for (const auto& [system, code] : {std::pair<std::int16_t, const char*>{SYSTEM_CUB, "CUB"},
                                       {SYSTEM_TET, ""},
                                       {SYSTEM_HEX, "HEX"},
                                       {SYSTEM_ORT, ""},
                                       {SYSTEM_MON, ""},
                                       {SYSTEM_TRI, "TRI"}}) {
        report.System = system;
        EXPECT_NE(text().find("\"Au Gold\",\"" + std::string(code) + "\",\"4.0"),
                  std::string::npos);
    }
    report.Crystal = "au Gold";  // a banner of the log, but no scale
    EXPECT_EQ(text().find("P(GPA)"), std::string::npos);
    report.Crystal = "Au Gold";
    report.Mode = MODE_SAMPLE;
    EXPECT_EQ(text().find("P(GPA)"), std::string::npos);
}

TEST(LatticeReport, AQuoteInsideATextIsDoubled) {
    EXPECT_EQ(QuotedText().Line({"a \"b\"", 7}).Text, "\"a \"\"b\"\"\",7\r\n");
}

TEST(LatticeReport, ABoxIsCutAtItsError) {
    EXPECT_EQ(SplitAtError("1.5+-0.2").Value, "1.5");
    EXPECT_EQ(SplitAtError("1.5+-0.2").Error, "0.2");
    EXPECT_EQ(SplitAtError("1.5+--0.2").Error, "-0.2");
    EXPECT_EQ(SplitAtError("1.5").Value, "1.5");
    EXPECT_FALSE(SplitAtError("1.5").HasError);
}

TEST(ResultName, IsTheGraphsUpToItsFirstPoint) {
    EXPECT_EQ(ResultName("Au.wire.npd"), "Au_Result.csv");
    EXPECT_EQ(ResultName("AuWire"), "AuWire_Result.csv");
    for (const char* derived : {"Smooth", "Fit", "BackRemv", "BackGraund"})
        EXPECT_EQ(ResultName(derived), "Result.csv");
}

// --- the file -----------

TEST(LatticeLogFile, IsEmptiedWhenItIsOpenedAndWrittenInItsCodePage) {
    Folder folder;
    std::ofstream(folder.Path + "/crystalfit.csv") << "an old one, and long enough to show behind";
    LatticeLog log;
    ASSERT_TRUE(log.Open(folder.Path));
    EXPECT_EQ(log.LogClosed, 0);
    EXPECT_TRUE(log.Write("2θ ℃\r\n"));
    EXPECT_EQ(folder.Bytes("crystalfit.csv"), "2\x83\xC6 \x81\x8E\r\n");
    log.Close();
    EXPECT_EQ(log.LogClosed, -1);
    EXPECT_TRUE(log.Write("nothing"));
    EXPECT_EQ(folder.Bytes("crystalfit.csv").size(), 8U);
}

TEST(LatticeLogFile, OneThatAnotherProgramHoldsSendsUsToTheOtherName) {
    Folder folder;
    Holder other(folder.Path);
    ASSERT_TRUE(other.Holds);
    LatticeLog log;
    ASSERT_TRUE(log.Open(folder.Path));
    EXPECT_EQ(log.LogAlternate, 1);
    EXPECT_TRUE(log.Path().ends_with("/crystalfit2.csv"));
    log.Write("ours\r\n");
    EXPECT_EQ(folder.Bytes("crystalfit2.csv"), "ours\r\n");
    EXPECT_EQ(folder.Bytes("crystalfit.csv"), "another one\r\n") << "what it holds stays whole";
}

TEST(LatticeLogFile, WhenBothAreHeldThereIsNoneAndBothReasonsAreTold) {
    Folder folder;
    Holder one(folder.Path);
    Holder two(folder.Path);
    ASSERT_TRUE(one.Holds && two.Holds);
    LatticeLog log;
    EXPECT_FALSE(log.Open(folder.Path));
    EXPECT_FALSE(log.IsOpen());
    EXPECT_NE(log.Trouble.find("crystalfit.csv: another one holds it."), std::string::npos);
    EXPECT_NE(log.Trouble.find("crystalfit2.csv: another one holds it."), std::string::npos);
    EXPECT_EQ(log.LogAlternate, 0);
}

TEST(LatticeLogFile, IsFreeAgainWhenItsHolderHasGone) {
    Folder folder;
    { Holder gone(folder.Path); }
    LatticeLog log;
    ASSERT_TRUE(log.Open(folder.Path));
    EXPECT_EQ(log.LogAlternate, 0);
}

TEST(LatticeLogFile, OneThatCannotBeOpenedCountsAsHeld) {
    Folder folder;
    fs::create_directory(folder.Path + "/crystalfit.csv");
    LatticeLog log;
    ASSERT_TRUE(log.Open(folder.Path));
    EXPECT_EQ(log.LogAlternate, 1);
    LatticeLog none;
    EXPECT_FALSE(none.Open(folder.Path + "/absent"));
    EXPECT_NE(none.Trouble.find("No such file"), std::string::npos);
}

TEST(LatticeLogFile, AFullDiskClosesTheLogAndTellsIt) {
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
    Folder folder;
    fs::create_symlink("/dev/full", folder.Path + "/crystalfit.csv");
    LatticeLog log;
    ASSERT_TRUE(log.Open(folder.Path));
    EXPECT_FALSE(log.Write("a line\r\n"));
    EXPECT_FALSE(log.IsOpen());
    EXPECT_NE(log.Trouble.find("No space left"), std::string::npos);
}
