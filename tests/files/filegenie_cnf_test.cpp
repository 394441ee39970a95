// The binary form .cnf against images laid out by offset.
#include "support/spectra.h"
#include "support/world.h"

#include "core/fault.h"
#include "files/extensions.h"
#include "files/filegenie.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace vael;

namespace {

/// A file of its least size with the counts 1000, 1001, ... 5095 in its block.
std::string Image(int selector, std::size_t base, std::size_t counts) {
    std::string bytes(counts + std::size_t{4} * 4096, '\0');
    const auto text = [&](std::size_t at, std::size_t size, const std::string& words) {
        bytes.replace(base + at, size, words + std::string(size - words.size(), ' '));
    };
    bytes[11] = static_cast<char>(selector);
    text(16944, 64, "title " + ToCp932("金の線"));
    text(17008, 16, "sample id 123456");
    text(17622, 24, "68.5,1200.25,7");
    text(17774, 24, "15.01459 3");
    text(17838, 64, "8 8 8");
    text(17902, 64, "9 9 9");
    text(17966, 64, "0.25,0.0316, 7");
    for (std::size_t i = 0; i < 4096; ++i) {
        const std::uint32_t value = i == 10 ? 0xfffffffeU : static_cast<std::uint32_t>(1000 + i);
        for (std::size_t k = 0; k < 4; ++k)
            bytes[counts + 4 * i + k] = static_cast<char>(value >> (8 * k) & 0xff);
    }
    return bytes;
}

std::string Image() { return Image(164, 0, 25600); }

struct Slot {
    SpectrumData Data{};
    PropertyRecord Prop = BlankProperty();
    std::int16_t Last = 7;
    [[nodiscard]] ReadTarget Target() { return {Data, Prop, Last}; }
    void Read(const std::string& bytes) {
        std::istringstream in(bytes);
        ReadCnfBody(in, Target());
    }
    std::string Error(const std::string& bytes) {
        try {
            Read(bytes);
        } catch (const Fault& fault) {
            EXPECT_EQ(fault.Number(), FaultNumber::FileContent);
            return fault.what();
        }
        return {};
    }
};

void ExpectTheImage(const Slot& slot) {
    EXPECT_EQ(slot.Prop.FileName.Trimmed(), "title 金の線");
    EXPECT_EQ(slot.Prop.SampleName.Trimmed(), "sample id 123456");
    EXPECT_EQ(slot.Prop.Param.PressLoad, 68.5);
    EXPECT_EQ(slot.Prop.Param.Temperature, 1200.25);
    EXPECT_EQ(slot.Prop.Param.TwoTheta, 15.01459);
    EXPECT_EQ(slot.Prop.Param.EgcCoef[0], 0.25);
    EXPECT_EQ(slot.Prop.Param.EgcCoef[1], 0.0316);
    EXPECT_EQ(slot.Prop.Param.EgcCoef[2], 0.0);
    EXPECT_EQ(slot.Data.DataNo, 4096);
    EXPECT_EQ(slot.Data.Count[0], 1001) << "the first value is never used";
    EXPECT_EQ(slot.Data.Count[1], 1001) << "channels 1 and 2 are equal";
    EXPECT_EQ(slot.Data.Count[2], 1002);
    EXPECT_EQ(slot.Data.Count[10], -2);
    EXPECT_EQ(slot.Data.Count[4095], 5095) << "the 4096th value of the file";
}

}  // namespace

TEST(Cnf, TheToldPlacesAreTakenAndTheBlockIsMovedUpByOne) {
    Slot slot;
    slot.Prop.OpName = "nobody";
    slot.Prop.Memo = "memo";
    slot.Prop.OpDate = "19991231";
    slot.Prop.SourceType = 4;
    slot.Prop.Param.EgcCoef[2] = 3;
    slot.Prop.Param.LiveTime = 12;
    slot.Data.Count[4096] = 55;
    slot.Read(Image());
    ExpectTheImage(slot);
    EXPECT_EQ(slot.Prop.OpName.Trimmed(), "");
    EXPECT_EQ(slot.Prop.Memo.Trimmed(), "memo") << "what the file does not give stays";
    EXPECT_EQ(slot.Prop.OpDate.Text(), "19991231");
    EXPECT_EQ(slot.Prop.Param.LiveTime, 12.0);
    EXPECT_EQ(slot.Prop.SourceType, 4) << "and so does the kind of file";
    EXPECT_EQ(slot.Last, 7);
    EXPECT_EQ(slot.Data.Count[4096], 55);
}

TEST(Cnf, TheSelectorMovesTheFieldsAndOneOfThemTheCounts) {
    Slot slot;
    slot.Read(Image(182, 4608, 4608 + 25600));
    ExpectTheImage(slot);
    Slot later;
    later.Read(Image(190, 4608, 4608 + 2048 + 25600));
    ExpectTheImage(later);
    Slot other;
    other.Read(Image(77, 0, 25600));
    ExpectTheImage(other);
}

TEST(Cnf, TheValueBehindThe4096thIsNotNeededAndNotUsed) {
    Slot slot;
    slot.Read(Image() + std::string(4, '\x7f') + "more");
    ExpectTheImage(slot);
}

TEST(Cnf, AListThatEndsEarlyOrHoldsNoNumbersGivesZeros) {
    std::string bytes = Image();
    bytes.replace(17622, 24, "5" + std::string(23, ' '));
    bytes.replace(17774, 24, std::string(24, '\0'));
    bytes.replace(17966, 64, std::string(64, '\xff'));
    Slot slot;
    slot.Prop.Param.Temperature = slot.Prop.Param.TwoTheta = slot.Prop.Param.EgcCoef[0] = 9;
    slot.Read(bytes);
    EXPECT_EQ(slot.Prop.Param.PressLoad, 5.0);
    EXPECT_EQ(slot.Prop.Param.Temperature, 0.0);
    EXPECT_EQ(slot.Prop.Param.TwoTheta, 0.0);
    EXPECT_EQ(slot.Prop.Param.EgcCoef[0], 0.0);
    EXPECT_EQ(slot.Prop.Param.EgcCoef[1], 0.0);
}

TEST(Cnf, AFileThatEndsEarlyNamesWhereAndLeavesTheSlot) {
    Slot slot;
    slot.Prop.FileName = "before";
    slot.Data.Count[0] = 5;
    slot.Data.DataNo = 1;
    EXPECT_EQ(slot.Error(""), "offset 0: the file ends, the byte at offset 11 was expected");
    EXPECT_EQ(slot.Error(Image().substr(0, 11)),
              "offset 11: the file ends, the byte at offset 11 was expected");
    EXPECT_EQ(slot.Error(Image().substr(0, 17000)),
              "offset 17000: the file ends, 4096 counts up to offset 41984 were expected");
    EXPECT_EQ(slot.Error(Image().substr(0, 41983)),
              "offset 41983: the file ends, 4096 counts up to offset 41984 were expected");
    EXPECT_EQ(slot.Error(Image(190, 4608, 32256).substr(0, 41984)),
              "offset 41984: the file ends, 4096 counts up to offset 48640 were expected");
    EXPECT_EQ(slot.Prop.FileName.Trimmed(), "before");
    EXPECT_EQ(slot.Data.Count[0], 5);
    EXPECT_EQ(slot.Data.DataNo, 1);
}

TEST(Cnf, LoadingSaysItsTwoSentencesAndTheLogSaysWhy) {
    TempFolder folder;
    Slot slot;
    std::string said;
    std::string logged;
    FileTalk talk;
    talk.say = [&](std::string_view text) { said = text; };
    talk.log = [&](std::string_view line) { logged = line; };
    const std::string none = folder.Path("none.cnf");
    EXPECT_EQ(LoadCnf(none, slot.Target(), talk), 0);
    EXPECT_EQ(said, "Fine NotFound");
    EXPECT_EQ(logged, none + ": there is no such file.");
    const std::string shortened = folder.Write("a.cnf", Image().substr(0, 30000));
    EXPECT_EQ(LoadCnf(shortened, slot.Target(), talk), 0);
    EXPECT_EQ(said, "File Error");
    EXPECT_EQ(logged, shortened +
                          ": offset 30000: the file ends, 4096 counts up to offset 41984 were "
                          "expected.");
    said.clear();
    EXPECT_EQ(LoadCnf(folder.Path(), slot.Target(), talk), 0);
    EXPECT_EQ(said, "File Error") << "a folder is there, and is no file";
    said.clear();
    logged.clear();
    PeakTable peaks{};
    const std::string good = folder.Write("b.CNF", Image());
    EXPECT_EQ(ReadByExtension(good, slot.Target(), peaks, talk), -1);
    ExpectTheImage(slot);
    EXPECT_EQ(said + logged, "");
}

TEST(CnfMeasured, AMeasuredFileHas4096ChannelsAndListsWithoutNumbers) {
    const std::string path = Measured("pha_41984.cnf");
    if (path.empty()) GTEST_SKIP() << "the measured spectra are not here";
    const std::string bytes = BytesOf(path);
    ASSERT_EQ(bytes.size(), 41984u);
    ASSERT_EQ(static_cast<unsigned char>(bytes[11]), 164);
    Slot slot;
    slot.Prop.Param.TwoTheta = slot.Prop.Param.PressLoad = slot.Prop.Param.Temperature = 5;
    EXPECT_EQ(LoadCnf(path, slot.Target()), -1);
    EXPECT_EQ(slot.Data.DataNo, 4096);
    EXPECT_EQ(slot.Prop.Param.TwoTheta, 0.0);
    EXPECT_EQ(slot.Prop.Param.PressLoad, 0.0);
    EXPECT_EQ(slot.Prop.Param.Temperature, 0.0);
    EXPECT_EQ(slot.Prop.Param.EgcCoef, (std::array<double, 3>{0, 0, 0}));
    std::int64_t fromFile = 0;
    for (std::size_t i = 1; i < 4096; ++i) {
        std::uint32_t value = 0;
        for (std::size_t k = 0; k < 4; ++k)
            value |= std::uint32_t{static_cast<unsigned char>(bytes[25600 + 4 * i + k])} << (8 * k);
        EXPECT_EQ(slot.Data.Count[i], static_cast<std::int32_t>(value)) << i;
        fromFile += value;
    }
    EXPECT_GT(fromFile, 0);
    EXPECT_EQ(slot.Data.Count[0], slot.Data.Count[1]);
}
