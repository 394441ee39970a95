// The extension table: which form is read and written under which name, and what an unknown one is
// told.
#include "support/spectra.h"
#include "support/world.h"

#include "files/extensions.h"

#include <gtest/gtest.h>

#include <map>

using namespace vael;

namespace {

struct Ways {
    bool Read;
    bool Written;
};

const std::map<std::string, Ways>& Table() {
    static const std::map<std::string, Ways> table{
        {"001", {true, false}}, {"0", {true, false}},   {"20261121", {true, false}},
        {"xbm", {true, true}},  {"xba", {true, true}},  {"xta", {false, true}},
        {"chn", {true, false}}, {"cnf", {true, false}}, {"rpt", {true, true}},
        {"npd", {true, true}},  {"raw", {true, false}}, {"gsa", {true, true}},
        {"csv", {false, true}}};
    return table;
}

struct Slot {
    SpectrumData Data{};
    PropertyRecord Prop = BlankProperty();
    PeakTable Peaks{};
    std::int16_t Last = 0;
    std::string Logged;
    std::int16_t Read(const std::string& path) {
        FileTalk talk;
        talk.say = [](std::string_view text) { ADD_FAILURE() << text; };
        talk.log = [this](std::string_view line) { Logged = line; };
        return ReadByExtension(path, {Data, Prop, Last}, Peaks, talk);
    }
};

}  // namespace

TEST(Extensions, EachFormIsReadAndWrittenAsItsRowTells) {
    for (const auto& [extension, ways] : Table()) {
        const FileKind* kind = KindOf("/a folder/some name." + extension);
        ASSERT_NE(kind, nullptr) << extension;
        EXPECT_EQ(kind->Read != nullptr, ways.Read) << extension;
        EXPECT_EQ(kind->Write != nullptr, ways.Written) << extension;
    }
    EXPECT_EQ(FileKinds().size(), Table().size() - 2) << "digits are one form";
}

TEST(Extensions, CapitalsNameTheSameForm) {
    EXPECT_EQ(KindOf("A.XBM"), KindOf("a.xbm"));
    EXPECT_EQ(KindOf("A.Npd"), KindOf("a.npd"));
    EXPECT_NE(KindOf("a.xbm"), KindOf("a.xba"));
}

TEST(Extensions, ANumericExtensionIsDigitsAlone) {
    EXPECT_EQ(KindOf("a.001"), KindOf("b.9"));
    for (const char* name : {"a.1e3", "a.+1", "a.-1", "a. 1", "a.1 ", "a.00a", "a.１", "a.###"})
        EXPECT_EQ(KindOf(name), nullptr) << name;
}

TEST(Extensions, TheLastPointIsTheOneThatCounts) {
    EXPECT_EQ(KindOf("a.npd.xbm"), KindOf("x.xbm"));
    EXPECT_EQ(KindOf("run.v2.003"), KindOf("x.003"));
    for (const char* name : {"", "a", "a.", "npd", ".npd", "/run.003/a"})
        EXPECT_EQ(KindOf(name), nullptr) << name;
}

TEST(Extensions, AnUnknownOneIsRefusedWithTheListOfThoseThatAreRead) {
    TempFolder folder;
    for (const std::string name : {"a.foo", "b.###", "c", "d.csv", "e.XTA", "f.xtm"}) {
        Slot slot;
        slot.Prop.Memo = "before";
        slot.Data.DataNo = 4;
        const std::string path = folder.Write(name, "x");
        EXPECT_EQ(slot.Read(path), 0) << name;
        EXPECT_EQ(slot.Logged.rfind(path + ": an extension that can be read was expected (digits, "
                                           "chn, cnf, rpt, xbm, xba, npd, raw, gsa), not \"",
                                    0),
                  0u)
            << slot.Logged;
        EXPECT_EQ(slot.Prop.Memo.Trimmed(), "before");
        EXPECT_EQ(slot.Data.DataNo, 4);
    }
}
