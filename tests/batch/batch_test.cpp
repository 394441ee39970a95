// The batch program on real and simulated spectra, and against the window's commands.
#include "support/spectra.h"
#include "support/world.h"

#include "batch/options.h"
#include "core/graphs.h"
#include "files/filevael.h"
#include "lattice/geometry.h"
#include "lattice/outliers.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sys/wait.h>
#include <array>
#include <cstdio>

using namespace vael;
using Json = nlohmann::json;

namespace {

struct Ran {
    int Status = 0;
    std::string Out;
    std::string Err;
    [[nodiscard]] Json Parsed() const { return Json::parse(Out); }
};

std::string Quoted(const std::string& word) { return "'" + word + "'"; }

/// Runs vael-batch with the tree's crystals.
Ran Batch(const std::vector<std::string>& words, const std::string& before = {},
          const std::string& data = VAEL_SOURCE_DIR "/data") {
    const TempFolder folder;
    std::string line = before + Quoted(VAEL_BATCH) + " --data " + Quoted(data);
    for (const auto& word : words) line += " " + Quoted(word);
    line += " >" + Quoted(folder.Path("out")) + " 2>" + Quoted(folder.Path("err"));
    const int status = std::system(line.c_str());
    return {WEXITSTATUS(status), BytesOf(folder.Path("out")), BytesOf(folder.Path("err"))};
}

Json One(std::vector<std::string> words) {
    words.insert(words.begin(), {"--format", "json"});
    const Ran ran = Batch(words);
    const Json all = ran.Parsed();
    EXPECT_EQ(all.size(), 1u);
    const bool fine = all.at(0)["status"] == "ok";
    EXPECT_EQ(ran.Err.empty(), fine) << ran.Err;
    EXPECT_EQ(ran.Status, fine ? 0 : 1);
    return all.at(0);
}

double Value(const Json& pair) { return pair.at(0).get<double>(); }

/// The peak nearest to a channel counted from 0.
double Nearest(const Json& result, double channel) {
    double best = 1e9;
    for (const Json& peak : result["peaks"]) {
        const double ch = peak["ch"].get<double>() - 1.0;
        if (std::fabs(ch - channel) < std::fabs(best - channel)) best = ch;
    }
    return best;
}

void ExpectCentres(const Json& result, const std::vector<double>& channels) {
    for (const double channel : channels) EXPECT_NEAR(Nearest(result, channel), channel, 0.2);
}

}  // namespace

// --- measured spectra with known answers ---------------------------------------------------------

#define NEEDS(name)                          \
    const std::string file = Measured(name); \
    if (file.empty()) GTEST_SKIP() << "the measured spectra are not here"

TEST(MeasuredRoad, GoldWireInAir) {
    NEEDS("AuWire.npd");
    const Json r = One({"--crystal", "Au", file});
    EXPECT_EQ(r["status"], "ok");
    EXPECT_NEAR(Value(r["cell"]["a"]), 4.0786, 0.0006);
    EXPECT_NEAR(Value(r["pressure"]["GPa"]), 0.0, 0.15);
    ExpectCentres(r, {733.05, 1037.57, 1217.15, 1271.08, 1468.26, 1600.27, 1641.85, 1798.64,
                      1908.25, 2323.25});
}

TEST(MeasuredRoad, TheXbmOfTheGoldWireGivesTheSame) {
    NEEDS("AuWire.xbm");
    const Json r = One({"--crystal", "Au", file});
    EXPECT_NEAR(Value(r["cell"]["a"]), 4.0786, 0.0006);
}

TEST(MeasuredRoad, Ceria) {
    NEEDS("CeO2H.npd");
    const Json r = One({"--crystal", "CeO2", "--reflections",
                        "1 1 1,2 0 0,2 2 0,3 1 1,2 2 2,4 0 0,3 3 1,4 2 0,4 2 2,5 1 1", file});
    EXPECT_NEAR(Value(r["cell"]["a"]), 5.4115, 0.0007);
    EXPECT_TRUE(r["pressure"].is_null());
    ExpectCentres(
        r, {607.47, 701.52, 992.33, 1163.72, 1215.53, 1403.58, 1529.58, 1569.31, 1719.08, 1823.29});
}

TEST(MeasuredRoad, TitaniumCarbide) {
    NEEDS("TiCH.npd");
    const Json r = One({"--crystal", "TiC", file});
    EXPECT_NEAR(Value(r["cell"]["a"]), 4.3177, 0.0012);
    ExpectCentres(r, {755.63, 872.71, 1233.98, 1447.27, 1511.64});
}

TEST(MeasuredRoad, Corundum) {
    NEEDS("Al2O3_d0.npd");
    const Json r =
        One({"--crystal", "Al2O3", "--reflections", "0 1 2,1 0 4,1 1 3,0 2 4,1 1 6,3 0 0", file});
    EXPECT_NEAR(Value(r["cell"]["a"]), 4.761, 0.002);
    EXPECT_NEAR(Value(r["cell"]["c"]), 12.996, 0.006);
    ExpectCentres(r, {483.40, 659.70, 807.13, 967.59, 1051.52, 1225.97});
}

TEST(MeasuredRoad, MagnesiaInAPress) {
    NEEDS("MgO_0019_d0.npd");
    const Json r = One({"--crystal", "MgO", "--reflections", "2 0 0,2 2 0", file});
    EXPECT_NEAR(Value(r["cell"]["a"]), 4.162, 0.006);
    EXPECT_NEAR(Value(r["pressure"]["GPa"]), 8.5, 0.8);
    ExpectCentres(r, {809.09});
}

TEST(MeasuredRoad, MagnesiaHotter) {
    NEEDS("MgO_0043_d0.npd");
    const Json r = One({"--crystal", "MgO", "--reflections", "2 0 0,2 2 0", file});
    EXPECT_NEAR(Value(r["cell"]["a"]), 4.185, 0.006);
    EXPECT_NEAR(Value(r["pressure"]["GPa"]), 7.4, 0.8);
    ExpectCentres(r, {804.89});
}

TEST(MeasuredRoad, MoltenIronHasOneLineAndNextToNothingElse) {
    NEEDS("FeMelt025.npd");
    const Json r = One({file});
    ASSERT_FALSE(r["peaks"].empty());
    EXPECT_LE(r["peaks"].size(), 25u);
    double highest = 0.0;
    double second = 0.0;
    double energy = 0.0;
    for (const Json& peak : r["peaks"]) {
        const double height = peak["amplitude"];
        if (height > highest) {
            second = highest;
            highest = height;
            energy = peak["keV"];
        } else {
            second = std::max(second, height);
        }
    }
    EXPECT_NEAR(energy, 80.30, 0.02);
    EXPECT_LT(second, 0.03 * highest);
}

TEST(MeasuredRoad, AForeignTextIsRefusedAndTheBatchGoesOn) {
    NEEDS("foreign_text.001");
    const Ran ran = Batch({"--format", "json", file, Measured("TiCH.npd")});
    EXPECT_EQ(ran.Status, 1);
    const Json all = ran.Parsed();
    EXPECT_EQ(all[0]["status"], "unreadable");
    EXPECT_NE(all[0]["message"].get<std::string>().find("offset 1988"), std::string::npos);
    EXPECT_EQ(all[1]["status"], "ok");
    EXPECT_NE(ran.Err.find("foreign_text.001: unreadable"), std::string::npos);
}

// --- simulated spectra with known truth ----------------------------------------------------------

TEST(SampleRoad, PressuresOfTheSamplesAreRecovered) {
    struct Sample {
        const char* File;
        const char* Crystal;
        const char* Pickup;
        double GPa;
        double Within;
    };
    // Truth and pick-up range as data/samples/README.md tells them; two per cent or 0.1 GPa.
    const std::vector<Sample> samples{{"NaCl_0GPa_300K", "NACL", "0.03", 0.0, 0.1},
                                      {"NaCl_2GPa_800K", "NACL", "0.03", 2.0, 0.1},
                                      {"NaCl_3GPa_900K_Fe", "NACL", "0.06", 3.0, 0.1},
                                      {"Au_2GPa_500K", "Au", "0.03", 2.0, 0.1},
                                      {"Au_10GPa_1000K", "Au", "0.03", 10.0, 0.2},
                                      {"Au_18GPa_1800K_Ringwoodite", "Au", "0.04", 18.0, 0.36},
                                      {"Pt_8GPa_700K", "Pt", "0.03", 8.0, 0.16},
                                      {"Pt_20GPa_1600K_Stishovite", "Pt", "0.04", 20.0, 0.4},
                                      {"MgO_5GPa_800K", "MgO", "0.03", 5.0, 0.1},
                                      {"MgO_10GPa_1273K_Ringwoodite", "MgO", "0.03", 10.0, 0.2}};
    for (const Sample& s : samples) {
        const Json r = One({"--crystal", s.Crystal, "--pickup", s.Pickup,
                            std::string(VAEL_SOURCE_DIR "/data/samples/") + s.File + ".npd"});
        ASSERT_FALSE(r["pressure"].is_null()) << s.File;
        EXPECT_NEAR(Value(r["pressure"]["GPa"]), s.GPa, s.Within) << s.File;
    }
}

// --- the window and the batch --------------------------------------------------------------------

namespace {

/// Opens a file in the window's own commands and lets it fit; the slot of the fit graph.
int FittedInWindow(ScriptedDesk& desk, const std::string& file) {
    desk.ChooseFiles({file});
    Click(frmVaelAna.mnuLoad);
    Click(frmVaelAna.cmdAutoFit);
    return GetGraphDataNo(RowOfName("Fit"));
}

void ExpectSamePeaks(const Json& told, const PeakTable& peaks) {
    ASSERT_GT(peaks.PeakNum, 0);
    ASSERT_EQ(static_cast<std::size_t>(peaks.PeakNum), told.size());
    for (std::size_t i = 0; i < told.size(); ++i) {
        EXPECT_EQ(told[i]["ch"].get<double>(), peaks.Peak[i].Position + 1.0);
        EXPECT_EQ(told[i]["fwhm_ch"].get<double>(), peaks.Peak[i].Width * 2.0);
        EXPECT_EQ(told[i]["amplitude"].get<double>(), peaks.Peak[i].Amplitude);
        EXPECT_EQ(told[i]["net"].get<double>(), peaks.Peak[i].Intensity);
    }
}

}  // namespace

TEST(SameRoad, ExpressFittingAgreesToTheBitToo) {
    const std::string file = VAEL_SOURCE_DIR "/data/samples/Au_10GPa_1000K.npd";
    const Json r =
        One({"--fit", "express", "--threshold", "15", "--shape", "mix", "--smooth", "7", file});
    World w;
    settings.PeakThres = 15;
    settings.FuncType = SHAPE_MIX;
    settings.SmoothIndex = 1;
    struct : ScriptedDesk {
        Answer Ask(const Question&) override { return Answer::Ok; }  // how many were cut
    } desk;
    Click(frmVaelAna.mnuExpressFit);
    const int slot = FittedInWindow(desk, file);
    ExpectSamePeaks(r["peaks"], store.PeakTables[static_cast<std::size_t>(slot)]);
    EXPECT_EQ(store.PeakTables[static_cast<std::size_t>(slot)].Peak[0].Fitted, 1);
}

TEST(SameRoad, TheWindowsCommandsAndTheBatchAgreeToTheBit) {
    const std::string file = VAEL_SOURCE_DIR "/data/samples/Au_10GPa_1000K.npd";
    const Json r = One({"--crystal", "Au", file});

    World w;
    const int slot = FittedInWindow(w.Desk, file);
    const PeakTable& peaks = store.PeakTables[static_cast<std::size_t>(slot)];
    ExpectSamePeaks(r["peaks"], peaks);

    auto state = std::make_unique<LatticeState>();
    state->Table = ReadCrystalFile(VAEL_SOURCE_DIR "/data/crystal.dat");
    const int crystal = FindCrystal(state->Table, "Au");
    const auto& property = store.PropertyRecords[static_cast<std::size_t>(slot)];
    const MatchSource source{.GraphNo = static_cast<std::int16_t>(RowOfSlot(slot)),
                             .DataNo = static_cast<std::int16_t>(slot),
                             .Peaks = peaks,
                             .Property = property,
                             .Dac = DacNow(),
                             .PickupRange = settings.PickupRange()};
    const RuledValues ruled =
        CalcByRules(*state,
                    RequestFor(*state, static_cast<std::int16_t>(crystal), MODE_MARKER,
                               property.Param.Temperature, TEMPERATURE_CELSIUS),
                    source, RowRules{}, Talk{});
    ASSERT_EQ(ruled.Values.Status, CalcStatus::Ok);
    EXPECT_EQ(Value(r["cell"]["a"]), ruled.Values.CellNow[0]);
    EXPECT_EQ(r["cell"]["a"][1].get<double>(), ruled.Values.CellError[0]);
    EXPECT_EQ(Value(r["cell"]["V"]), ruled.Values.V);
    EXPECT_EQ(Value(r["cell"]["V_V0"]), ruled.Values.X);
    EXPECT_EQ(Value(r["pressure"]["GPa"]), ruled.Values.Pressure->P);
    EXPECT_EQ(r["pressure"]["GPa"][1].get<double>(), ruled.Values.Pressure->Error);
}

TEST(Batch, TheResultDoesNotDependOnTheNumberOfWorkers) {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(VAEL_SOURCE_DIR "/data/samples"))
        if (entry.path().extension() == ".npd") files.push_back(entry.path().string());
    std::sort(files.begin(), files.end());
    ASSERT_GT(files.size(), 8u);
    for (const char* format : {"json", "csv", "table"}) {
        std::vector<std::string> words{"--crystal", "Au", "--format", format, "--jobs", "1"};
        words.insert(words.end(), files.begin(), files.end());
        const Ran one = Batch(words);
        words[5] = "4";
        const Ran four = Batch(words);
        EXPECT_TRUE(one.Out == four.Out) << format;
        EXPECT_EQ(one.Err, four.Err);
        EXPECT_FALSE(one.Out.empty());
    }
}

TEST(Batch, EachKindOfBadInputIsNamedAndTheOthersGoOn) {
    const TempFolder folder;
    const std::string good = VAEL_SOURCE_DIR "/data/samples/Au_2GPa_500K.npd";
    const std::string cut = folder.Write("cut.npd", BytesOf(good).substr(0, 5000));
    const std::string empty = folder.Write("empty.npd", "");
    const std::string emptyXbm = folder.Write("empty.xbm", "");
    const std::string flat = folder.Write("flat.npd", NpdText(GaussCounts(500, 40, {})));
    const Ran ran = Batch({"--crystal", "Au", "--format", "json", cut, empty, emptyXbm,
                           folder.Path(), folder.Path("absent.npd"), flat, good});
    EXPECT_EQ(ran.Status, 1);
    const Json all = ran.Parsed();
    ASSERT_EQ(all.size(), 7u);
    const auto told = [&](std::size_t i, const char* status, const char* words) {
        EXPECT_EQ(all[i]["status"], status) << i;
        EXPECT_NE(all[i]["message"].get<std::string>().find(words), std::string::npos)
            << all[i]["message"];
        EXPECT_TRUE(all[i]["cell"].is_null());
    };
    told(0, "unreadable", "cut.npd: line ");
    told(1, "unreadable", "empty.npd: line 1: the file ends");
    told(2, "unreadable", "empty.xbm: the file ends at offset 0");
    told(3, "unreadable", "an extension that can be read");
    told(4, "unreadable", "there is no such file");
    told(5, "no-peaks", "NO PEAKS ARE FOUND");
    EXPECT_EQ(all[6]["status"], "ok");
    EXPECT_TRUE(all[0]["channels"].is_null());
    EXPECT_TRUE(all[0]["temperature_C"].is_null());
    EXPECT_EQ(all[5]["channels"], 500);
}

TEST(Batch, AFileWithoutReadPermissionIsNamed) {
    if (::getuid() != 0) GTEST_SKIP() << "run as root, which gives its rights up";
    const TempFolder folder;
    std::filesystem::permissions(folder.Path(), std::filesystem::perms(0755));
    const std::string path = folder.Write("secret.npd", "x");
    std::filesystem::permissions(path, std::filesystem::perms(0600));
    std::filesystem::copy_file(VAEL_BATCH, folder.Path("vael-batch"));
    const std::string line = "setpriv --reuid 65534 --clear-groups " +
                             Quoted(folder.Path("vael-batch")) + " --format json " + Quoted(path) +
                             " 2>/dev/null";
    FILE* pipe = ::popen(line.c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    std::string out;
    std::array<char, 4096> buffer;
    while (std::fgets(buffer.data(), buffer.size(), pipe) != nullptr) out += buffer.data();
    EXPECT_EQ(WEXITSTATUS(::pclose(pipe)), 1);
    EXPECT_NE(
        Json::parse(out).at(0)["message"].get<std::string>().find("secret.npd: Permission denied"),
        std::string::npos);
}

TEST(Batch, TooFewLinesAreTold) {
    const TempFolder folder;
    const std::string one =
        folder.Write("one.npd", NpdText(GaussCounts(1000, 40, {{500, 4000, 9}})));
    const Json r = One({"--crystal", "Au", one});
    EXPECT_EQ(r["status"], "few-lines");
    EXPECT_NE(r["message"].get<std::string>().find("計算するための回折線の数が少なすぎます。"),
              std::string::npos);
    EXPECT_EQ(r["peaks"].size(), 1u);
    EXPECT_FALSE(r["peaks"][0]["matched"].get<bool>());
    EXPECT_TRUE(r["peaks"][0]["h"].is_null());
}

TEST(Batch, WithoutACrystalThereAreOnlyPeaks) {
    const Ran ran = Batch({"--format", "json", VAEL_SOURCE_DIR "/data/samples/Au_2GPa_500K.npd"});
    EXPECT_EQ(ran.Status, 0);
    const Json r = ran.Parsed().at(0);
    EXPECT_EQ(r["status"], "ok");
    EXPECT_TRUE(r["cell"].is_null());
    EXPECT_GT(r["peaks"].size(), 5u);
}

TEST(Batch, OptionsChangeWhatTheyName) {
    const std::string file = VAEL_SOURCE_DIR "/data/samples/Au_2GPa_500K.npd";
    const Json plain = One({"--crystal", "Au", file});
    const Json hot = One({"--crystal", "Au", "--temperature", "1000K", file});
    EXPECT_NEAR(hot["temperature_C"].get<double>(), 726.85, 1e-9);
    EXPECT_GT(Value(hot["pressure"]["GPa"]), Value(plain["pressure"]["GPa"]) + 2.0)
        << "0.00714 GPa a kelvin over 500 K";
    const Json angle = One({"--crystal", "Au", "--two-theta", "8.001", file});
    EXPECT_EQ(angle["two_theta"], 8.001);
    EXPECT_LT(Value(angle["cell"]["a"]), Value(plain["cell"]["a"]));
    const Json sample = One({"--crystal", "Au", "--mode", "sample", file});
    EXPECT_TRUE(sample["pressure"].is_null());
    EXPECT_EQ(Value(sample["cell"]["a"]), Value(plain["cell"]["a"]));
    const Json few = One({"--crystal", "Au", "--bg-coefficient", "60", file});
    EXPECT_LT(few["peaks"].size(), plain["peaks"].size()) << "weak peaks are gone";
    const Json rough = One({"--crystal", "Au", "--smooth", "off", file});
    EXPECT_NE(rough["peaks"][0]["fwhm_ch"], plain["peaks"][0]["fwhm_ch"]);
    const Json none = One({"--crystal", "Au", "--pickup", "0.000001", file});
    EXPECT_EQ(none["status"], "few-lines");
    const Json uncalibrated = One({"--crystal", "Au", "--calibration", "default", file});
    EXPECT_EQ(uncalibrated["status"], "few-lines") << "there is no default calibration here";
    EXPECT_EQ(uncalibrated["peaks"][0]["keV"], 0.0);
}

TEST(Batch, OutFilesAreMadeForEachSpectrumUnderNamesOfTheirOwn) {
    const TempFolder folder;
    const std::string file = VAEL_SOURCE_DIR "/data/samples/Au_2GPa_500K.npd";
    std::filesystem::create_directory(folder.Path("other"));
    std::filesystem::copy_file(file, folder.Path("other/Au_2GPa_500K.npd"));
    const Ran ran = Batch({"--crystal", "Au", "--out", folder.Path("out"), file,
                           folder.Path("other/Au_2GPa_500K.npd")});
    EXPECT_EQ(ran.Status, 0) << ran.Err;
    const std::string csv = BytesOf(folder.Path("out/Au_2GPa_500K.npd.peaks.csv"));
    EXPECT_EQ(csv.substr(0, csv.find('\r')),
              "ch,keV,d,fwhm_ch,amplitude,net,h,k,l,d_calc,matched,used");
    EXPECT_EQ(csv, BytesOf(folder.Path("out/Au_2GPa_500K.npd-2.peaks.csv")));
    const std::string page = BytesOf(folder.Path("out/Au_2GPa_500K.npd.svg"));
    EXPECT_NE(page.find("<svg"), std::string::npos);
    for (const char* text : {">Measurement Name <", ">Count Rate (cps) <", ">Counts<", ">h k l<",
                             ">fit on background<", ">T / C<"})
        EXPECT_NE(page.find(text), std::string::npos) << text;
    EXPECT_NE(page.find("Au Gold"), std::string::npos);
}

TEST(Batch, AnOutFolderThatTakesNothingIsTold) {
    const TempFolder folder;
    const std::string blocked = folder.Write("file", "x");
    const Ran ran = Batch({"--out", blocked, VAEL_SOURCE_DIR "/data/samples/Au_2GPa_500K.npd"});
    EXPECT_EQ(ran.Status, 2);
    EXPECT_EQ(BytesOf(blocked), "x");
}

TEST(Batch, AWrongCrystalIsAWrongCall) {
    const Ran ran =
        Batch({"--crystal", "Kryptonite", VAEL_SOURCE_DIR "/data/samples/Au_2GPa_500K.npd"});
    EXPECT_EQ(ran.Status, 2);
    EXPECT_NE(ran.Err.find("there is no crystal \"Kryptonite\""), std::string::npos);
    EXPECT_EQ(ran.Out, "");
}

TEST(Batch, ADamagedCrystalFileNamesItsLine) {
    const TempFolder folder;
    folder.Write("crystal.dat",
                 "1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n1\nAu,0,4,4,4,90,90,90\n1 1 1\n2 0\n");
    const Ran ran = Batch({"--crystal", "Au", VAEL_SOURCE_DIR "/data/samples/Au_2GPa_500K.npd"}, "",
                          folder.Path());
    EXPECT_EQ(ran.Status, 2);
    EXPECT_NE(ran.Err.find("crystal.dat, line 14"), std::string::npos) << ran.Err;
}

TEST(Batch, TheTableNamesEveryFile) {
    const Ran ran = Batch({"--crystal", "Au", VAEL_SOURCE_DIR "/data/samples/Au_2GPa_500K.npd"});
    EXPECT_EQ(ran.Status, 0);
    EXPECT_EQ(ran.Out.substr(0, 4), "file");
    EXPECT_NE(ran.Out.find("\nAu_2GPa_500K.npd  ok "), std::string::npos) << ran.Out;
}

TEST(Batch, XbaFilesByTheHundredDoNotRunOutOfFileNumbers) {
    const TempFolder folder;
    PropertyRecord prop = BlankProperty();
    prop.RecordValid = 1;
    SpectrumData data{};
    const auto counts = GaussCounts(300, 20, {{150, 500, 8}});
    data.DataNo = 300;
    std::copy(counts.begin(), counts.end(), data.Count.begin());
    ASSERT_EQ(SaveXba(folder.Path("a.xba"), data, prop, PeakTable{}), -1);
    std::vector<std::string> words{"--format", "csv", "--jobs", "1"};
    for (int n = 0; n < 700; ++n) words.push_back(folder.Path("a.xba"));
    const Ran ran = Batch(words, "ulimit -n 600; ");
    EXPECT_EQ(ran.Status, 0) << ran.Err.substr(0, 300);
    EXPECT_EQ(std::count(ran.Out.begin(), ran.Out.end(), '\n'), 701);
}
