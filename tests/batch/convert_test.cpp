// vael-batch convert: forms, names, questions and exit status.
#include "support/smallforms.h"
#include "support/world.h"

#include "batch/convert.h"
#include "core/wholefile.h"
#include "files/filenpd.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <map>
#include <sstream>

using namespace vael;

namespace {

struct Ran {
    int Status = 0;
    std::string Out;
    std::string Err;
};

Ran Converted(const std::string& to, const std::string& folder, std::vector<std::string> files,
              bool force = false) {
    std::ostringstream out;
    std::ostringstream err;
    const int status = Convert({to, folder, std::move(files), force}, out, err);
    return {status, out.str(), err.str()};
}

/// The program itself, with its own reading of the words. `before` runs it.
Ran Program(const std::vector<std::string>& words, const std::string& before = {},
            const std::string& program = VAEL_BATCH) {
    const TempFolder folder;
    std::string line = before + "'" + program + "'";
    for (const auto& word : words) line += " '" + word + "'";
    line += " >'" + folder.Path("out") + "' 2>'" + folder.Path("err") + "'";
    const int status = std::system(line.c_str());
    return {WEXITSTATUS(status), BytesOf(folder.Path("out")), BytesOf(folder.Path("err"))};
}

ConvertCall Call(std::vector<const char*> words) {
    words.insert(words.begin(), {"vael-batch", "convert"});
    return ReadConvertCall(static_cast<int>(words.size()), words.data());
}

std::size_t Entries(const TempFolder& folder) {
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator(folder.Path()), {}));
}

}  // namespace

TEST(Convert, WritesWhatTheFormsOwnWriterWritesUnderTheNewName) {
    TempFolder folder;
    const std::string npd = folder.Write("AuWire.npd", NpdText({5, -6, 7}, "measured"));
    const Ran ran = Converted("xbm", folder.Path("made/deep"), {npd});
    const std::string path = folder.Path("made/deep/AuWire.xbm");
    EXPECT_EQ(ran.Status, 0);
    EXPECT_EQ(ran.Out, path + "\n");
    EXPECT_EQ(ran.Err, "");

    SpectrumData data{};
    PropertyRecord prop = BlankProperty();
    std::int16_t last = 0;
    ASSERT_EQ(LoadNpd(npd, {data, prop, last}), -1);
    prop.FileName = "AuWire";  // as saving in the window does
    prop.RecordValid = 1;
    std::ostringstream expected;
    WriteXbmBody(expected, data, prop);
    EXPECT_TRUE(BytesOf(path) == expected.str());
}

TEST(Convert, NothingOfOneFileGetsIntoTheNext) {
    TempFolder folder;
    const std::string first = folder.Write("a.npd", NpdText({5, 6, 7}, "first"));
    std::string chn(32 + 4 + 12, '\0');
    chn[30] = 1;   // one channel
    chn[32] = 42;  // of 42 counts
    const std::string second = folder.Write("b.chn", chn);
    ASSERT_EQ(Converted("xbm", folder.Path("out"), {first, second}).Status, 0);
    SpectrumData data{};
    PropertyRecord prop = BlankProperty();
    std::int16_t last = 0;
    ASSERT_EQ(LoadXbm(folder.Path("out/b.xbm"), {data, prop, last}), -1);
    EXPECT_EQ(data.DataNo, 1);
    EXPECT_EQ(data.Count[0], 42);
    EXPECT_EQ(prop.OpName.Trimmed(), "");
    EXPECT_EQ(prop.Param.TwoTheta, 0.0);
    EXPECT_EQ(prop.Param.EgcCoef[1], 0.0);
}

TEST(Convert, EveryFormThatIsWrittenHasItsFile) {
    TempFolder folder;
    const std::string npd = folder.Write("a.npd", NpdText({5, 6, 7}));
    const std::map<std::string, std::string> beginnings{{"npd", "Record length,27\r\n"},
                                                        {"xbm", std::string("00\1\0", 4)},
                                                        {"csv", "Press X,1.000, \r\n"},
                                                        {"gsa", " File: a "}};
    for (const auto& [to, beginning] : beginnings) {
        EXPECT_EQ(Converted(to, folder.Path("out"), {npd}).Status, 0) << to;
        EXPECT_EQ(BytesOf(folder.Path("out/a." + to)).substr(0, beginning.size()), beginning);
    }
}

TEST(Convert, EveryFormThatIsReadIsConverted) {
    TempFolder folder;
    const std::vector<SmallForm> forms = SmallForms();
    std::vector<std::string> paths;
    for (const SmallForm& form : forms) paths.push_back(folder.Write(form.Name, form.Bytes));
    const Ran ran = Converted("csv", folder.Path("out"), paths);
    EXPECT_EQ(ran.Status, 0);
    EXPECT_EQ(ran.Err, "");
    for (const SmallForm& form : forms) {
        const std::string text = BytesOf(folder.Path("out/" + ConvertedName(form.Name, "csv")));
        EXPECT_NE(text.find("\r\n" + std::to_string(form.Channels) + ", , \r\n"), std::string::npos)
            << form.Name;
        const auto rows = text.find("Channel,Energy,Count\r\n");
        ASSERT_NE(rows, std::string::npos) << form.Name;
        std::istringstream lines(text.substr(rows));
        std::string line;
        std::getline(lines, line);
        for (const std::int32_t count : form.First) {
            std::getline(lines, line);
            EXPECT_EQ(line.substr(line.rfind(',') + 1), std::to_string(count) + "\r") << form.Name;
        }
    }
}

TEST(Convert, NoFileIsWrittenOverItself) {
    TempFolder folder;
    const std::string text = NpdText({5, 6, 7});
    const std::string npd = folder.Write("a.npd", text);
    std::filesystem::create_directory_symlink(folder.Path(), folder.Path("link"));
    for (const std::string out : {folder.Path(), folder.Path("link"), folder.Path() + "/."})
        for (const bool force : {true, false}) {
            const Ran ran = Converted("npd", out, {npd}, force);
            EXPECT_EQ(ran.Status, 1);
            EXPECT_EQ(ran.Out, "");
            EXPECT_EQ(ran.Err,
                      npd + ": it would be written over itself; --out takes another folder.\n");
            EXPECT_EQ(BytesOf(npd), text);
        }
}

TEST(Convert, ABareLfAngleFileIsRefusedWithItsReason) {
    TempFolder folder;
    const std::string raw = folder.Write("a.raw", "1,5\n2,6\n");
    const Ran ran = Converted("csv", folder.Path("out"), {raw});
    EXPECT_EQ(ran.Status, 1);
    EXPECT_EQ(ran.Err, raw +
                           ": its lines end in LF alone: the channel count stays 0, as the slot "
                           "had it.\n");
    EXPECT_FALSE(FileExists(folder.Path("out/a.csv")));
}

TEST(Convert, WhatIsSaidInABoxIsNoReasonWhereTheLogHasOne) {
    TempFolder folder;
    const std::string cnf = folder.Write("a.cnf", "short");
    EXPECT_EQ(Converted("csv", folder.Path("out"), {cnf}).Err,
              cnf + ": offset 5: the file ends, the byte at offset 11 was expected.\n");
    const std::string npd = folder.Write("a.npd", NpdText({5}));
    std::filesystem::create_directories(folder.Path("out/a.csv"));
    EXPECT_EQ(Converted("csv", folder.Path("out"), {npd}, true).Err,
              npd + ": " + folder.Path("out/a.csv") + ": it is a folder, a file was expected.\n");
}

TEST(Convert, WhatMayNotBeReadOrWrittenIsNamedAndNothingIsLeftBehind) {
    if (::getuid() != 0) GTEST_SKIP() << "run as root, which gives its rights up";
    const TempFolder folder;
    std::filesystem::permissions(folder.Path(), std::filesystem::perms(0755));
    std::filesystem::copy_file(VAEL_BATCH, folder.Path("vael-batch"));
    const auto nobody = [&](const std::string& out, const std::vector<std::string>& files) {
        std::vector<std::string> words{"convert", "--to", "csv", "--force", "--out", out};
        words.insert(words.end(), files.begin(), files.end());
        return Program(words, "setpriv --reuid 65534 --clear-groups ", folder.Path("vael-batch"));
    };
    const std::string open = folder.Write("open.npd", NpdText({5, 6}));
    std::filesystem::permissions(open, std::filesystem::perms(0644));
    const std::string secret = folder.Write("secret.npd", NpdText({5, 6}));
    std::filesystem::permissions(secret, std::filesystem::perms(0600));
    const std::string taken = folder.Path("taken");
    std::filesystem::create_directory(taken);
    std::filesystem::permissions(taken, std::filesystem::perms(0755));

    Ran ran = nobody(taken, {open});
    EXPECT_EQ(ran.Status, 1);
    EXPECT_EQ(ran.Out, "");
    EXPECT_EQ(ran.Err, open + ": " + taken + "/open.csv: Permission denied.\n");
    EXPECT_TRUE(std::filesystem::is_empty(taken));

    std::filesystem::permissions(taken, std::filesystem::perms(0777));
    ran = nobody(taken, {secret, open});
    EXPECT_EQ(ran.Status, 1);
    EXPECT_EQ(ran.Out, taken + "/open.csv\n");
    EXPECT_EQ(ran.Err, secret + ": Permission denied.\n");

    ran = nobody(folder.Path("none/below"), {open});
    EXPECT_EQ(ran.Status, 2);
    EXPECT_EQ(ran.Err, "vael-batch: " + folder.Path("none/below") + ": Permission denied.\n");
}

TEST(Convert, AFileThatExistsIsReplacedByForceOnly) {
    TempFolder folder;
    const std::string npd = folder.Write("a.npd", NpdText({5, 6, 7}));
    for (const std::string to : {"csv", "gsa"}) {  // one asks on its own and one does not
        const std::string path = folder.Write("a." + to, "old");
        const Ran kept = Converted(to, folder.Path(), {npd});
        EXPECT_EQ(kept.Status, 1);
        EXPECT_EQ(kept.Out, "");
        EXPECT_EQ(kept.Err, npd + ": " + path + " exists; --force replaces it.\n");
        EXPECT_EQ(BytesOf(path), "old");
        EXPECT_EQ(Converted(to, folder.Path(), {npd}, true).Status, 0);
        EXPECT_NE(BytesOf(path), "old");
    }
}

TEST(Convert, TwoInputsOfOneNameAreRefusedBeforeAnythingIsWritten) {
    TempFolder folder;
    TempFolder out;
    std::filesystem::create_directory(folder.Path("other"));
    const std::string alone = folder.Write("alone.npd", NpdText({1, 2}));
    const std::string first = folder.Write("a.npd", NpdText({1, 2}));
    const std::string second = folder.Write("other/a.xbm", "anything");
    const Ran ran = Converted("csv", out.Path(), {alone, first, second}, true);
    EXPECT_EQ(ran.Status, 2);
    EXPECT_EQ(ran.Err, "vael-batch: " + first + " and " + second +
                           " would both be written as a.csv: nothing was written.\n");
    EXPECT_EQ(Entries(out), 0u);
    EXPECT_EQ(Converted("csv", out.Path(), {first, first}).Status, 2) << "one file twice";
}

TEST(Convert, ASequenceKeepsItsNumbers) {
    EXPECT_EQ(ConvertedName("/x/run.003", "npd"), "run.003.npd");
    EXPECT_EQ(ConvertedName("run.v2.xbm", "npd"), "run.v2.npd");
    EXPECT_EQ(ConvertedName("run.v2.XBM", "npd"), "run.v2.npd");
    EXPECT_EQ(ConvertedName("run.12a", "npd"), "run.npd");
    TempFolder folder;
    SpectrumData data{};
    data.DataNo = 2;
    const PropertyRecord prop = BlankProperty();
    for (const char* name : {"run.001", "run.002"})
        ASSERT_EQ(SaveXbm(folder.Path(name), data, prop), -1);
    EXPECT_EQ(
        Converted("csv", folder.Path("o"), {folder.Path("run.001"), folder.Path("run.002")}).Status,
        0);
    EXPECT_TRUE(FileExists(folder.Path("o/run.002.csv")));
}

TEST(Convert, EachFileThatFailsIsNamedWithItsReasonAndTheOthersGoOn) {
    TempFolder folder;
    const std::string good = folder.Write("good.npd", NpdText({5, 6, 7}));
    const std::string bad = folder.Write("bad.npd", "Record length,abc\r\n");
    const std::string foreign = folder.Write("what.foo", "x");
    const std::string empty = folder.Write("empty.xbm", "");
    const Ran ran = Converted("csv", folder.Path("out"),
                              {bad, foreign, folder.Path("absent.npd"), empty, good});
    EXPECT_EQ(ran.Status, 1);
    EXPECT_EQ(ran.Out, folder.Path("out/good.csv") + "\n");
    EXPECT_NE(ran.Err.find(bad + ": line 1: the number of header lines was expected, not \"abc\"."),
              std::string::npos);
    EXPECT_NE(ran.Err.find(foreign + ": an extension that can be read was expected"),
              std::string::npos);
    EXPECT_NE(ran.Err.find(folder.Path("absent.npd") + ": there is no such file"),
              std::string::npos);
    EXPECT_NE(ran.Err.find(empty + ": the file ends at offset 0"), std::string::npos);
    EXPECT_FALSE(FileExists(folder.Path("out/empty.csv")));
}

TEST(Convert, AWriterThatFailsIsNamedWithItsInput) {
    TempFolder folder;
    std::vector<std::int32_t> counts(8192, 1);
    counts[0] = 10000000;  // divided: the last line asks for a channel that is not there
    const std::string npd = folder.Write("a.npd", NpdText(counts));
    const Ran ran = Converted("gsa", folder.Path("out"), {npd});
    EXPECT_EQ(ran.Status, 1);
    EXPECT_EQ(ran.Err.rfind(npd + ": " + folder.Path("out/a.gsa") + ": ", 0), 0u) << ran.Err;
    EXPECT_FALSE(FileExists(folder.Path("out/a.gsa")));
}

TEST(Convert, AFileThatIsCutOffIsConvertedWithARemark) {
    TempFolder folder;
    SpectrumData data{};
    data.DataNo = 3;
    std::ostringstream image;
    WriteXbmBody(image, data, BlankProperty());
    const std::string cut = folder.Write("cut.xbm", image.str().substr(0, 1996));
    const Ran ran = Converted("csv", folder.Path("out"), {cut});
    EXPECT_EQ(ran.Status, 0);
    EXPECT_NE(ran.Err.find(cut + ": the file ends at offset 1996"), std::string::npos) << ran.Err;
}

TEST(Convert, AFolderThatCannotBeMadeEndsBeforeAnything) {
    TempFolder folder;
    const std::string npd = folder.Write("a.npd", NpdText({5}));
    const Ran ran = Converted("csv", npd + "/below", {npd});
    EXPECT_EQ(ran.Status, 2);
    EXPECT_EQ(ran.Err.rfind("vael-batch: " + npd + "/below: ", 0), 0u) << ran.Err;
}

TEST(Convert, TheCallIsReadAndAWrongOneHasStatus2) {
    const ConvertCall call = Call({"--to", "gsa", "--out", "o", "--force", "a.npd", "b.xbm"});
    ASSERT_TRUE(call.Options);
    EXPECT_EQ(call.Options->To, "gsa");
    EXPECT_EQ(call.Options->OutFolder, "o");
    EXPECT_TRUE(call.Options->Force);
    EXPECT_EQ(call.Options->Files, (std::vector<std::string>{"a.npd", "b.xbm"}));
    const std::vector<std::vector<const char*>> wrong{{"--to", "xba", "--out", "o", "a.npd"},
                                                      {"--to", "npd", "a.npd"},
                                                      {"--out", "o", "a.npd"},
                                                      {"--to", "npd", "--out", "o"},
                                                      {"--to", "npd", "--out", "o", "--x", "a"}};
    for (const auto& words : wrong) {
        const ConvertCall refused = Call(words);
        EXPECT_FALSE(refused.Options);
        EXPECT_EQ(refused.Status, 2);
        EXPECT_FALSE(refused.Text.empty());
    }
    const ConvertCall help = Call({"--help"});
    EXPECT_EQ(help.Status, 0);
    EXPECT_NE(help.Text.find("--force"), std::string::npos);
}

TEST(Convert, TheProgramTakesTheWordAndGivesTheStatus) {
    TempFolder folder;
    const std::string npd = folder.Write("a.npd", NpdText({5, 6}));
    const Ran done = Program({"convert", "--to", "csv", "--out", folder.Path("o"), npd});
    EXPECT_EQ(done.Status, 0) << done.Err;
    EXPECT_EQ(done.Out, folder.Path("o/a.csv") + "\n");
    EXPECT_EQ(Program({"convert", "--to", "csv", "--out", folder.Path("o"), npd}).Status, 1);
    EXPECT_EQ(Program({"convert", "--to", "doc", "--out", folder.Path("o"), npd}).Status, 2);
}

TEST(Convert, AMeasuredChnAndAForeignTextUnderANumberAreToldApart) {
    const std::string chn = Measured("8H4275.chn");
    const std::string foreign = Measured("foreign_text.001");
    if (chn.empty() || foreign.empty()) GTEST_SKIP() << "the measured spectra are not here";
    TempFolder folder;
    const Ran ran = Converted("npd", folder.Path(), {chn, foreign});
    EXPECT_EQ(ran.Status, 1);
    EXPECT_EQ(ran.Out, folder.Path("8H4275.npd") + "\n");
    EXPECT_EQ(ran.Err.rfind(foreign + ": ", 0), 0u) << ran.Err;
    EXPECT_FALSE(FileExists(folder.Path("foreign_text.001.npd")));
}
