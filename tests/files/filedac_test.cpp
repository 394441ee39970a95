// The text form .raw of an angle and a count a line, with both ends of a line.
#include "support/spectra.h"
#include "support/world.h"

#include "core/fault.h"
#include "files/extensions.h"
#include "files/filedac.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace vael;

namespace {

struct Slot {
    SpectrumData Data{};
    PropertyRecord Prop = BlankProperty();
    std::int16_t Last = 0;
    double Offset = -1.0;
    double Slope = -2.0;
    std::string Note;
    Slot() {
        Data.DataNo = 7;
        Data.Count.fill(99);
    }
    [[nodiscard]] ReadTarget Target() { return {Data, Prop, Last, &Offset, &Slope}; }
    void Read(const std::string& text) {
        std::istringstream in(text);
        Note.clear();
        ReadDacText(in, Target(), &Note);
    }
    std::string Error(const std::string& text) {
        try {
            Read(text);
        } catch (const Fault& fault) {
            EXPECT_EQ(fault.Number(), FaultNumber::FileContent);
            return fault.what();
        }
        return {};
    }
};

std::string Pairs(int count, const char* end) {
    std::string out;
    for (int i = 0; i < count; ++i)
        out += std::to_string(2.0 + 0.25 * i) + "," + std::to_string(10 + i) + end;
    return out;
}

constexpr const char* CRLF = "\r\n";
constexpr const char* LF = "\n";

}  // namespace

TEST(Dac, AHundredPairsWithCrLfGiveACountOf4096AndLeaveTheChannelsAbove) {
    Slot slot;
    slot.Prop.RecordValid = 1;
    slot.Prop.Memo = "memo";
    slot.Prop.Param.EgcCoef = {1, 2, 3};
    slot.Prop.Param.TwoTheta = 15;
    slot.Read(Pairs(100, CRLF));
    EXPECT_EQ(slot.Data.DataNo, 4096);
    for (int i = 0; i < 100; ++i) EXPECT_EQ(slot.Data.Count[static_cast<std::size_t>(i)], 10 + i);
    EXPECT_EQ(slot.Data.Count[100], 99);
    EXPECT_EQ(slot.Offset, 2.0);
    EXPECT_EQ(slot.Slope, 0.25);
    EXPECT_EQ(slot.Prop.SourceType, SOURCE_DAC);
    EXPECT_EQ(slot.Last, SOURCE_DAC);
    EXPECT_EQ(slot.Prop.RecordValid, 0);
    EXPECT_EQ(slot.Prop.Memo.Trimmed(), "memo") << "what the file does not give stays";
    EXPECT_EQ(slot.Prop.Param.EgcCoef, (std::array<double, 3>{1, 2, 3}));
    EXPECT_EQ(slot.Prop.Param.TwoTheta, 15.0);
    EXPECT_EQ(slot.Note, "");
}

TEST(Dac, WithBareLineFeedsTheCountStaysAndTheNoteSaysSo) {
    Slot slot;
    slot.Read(Pairs(100, LF));
    EXPECT_EQ(slot.Data.DataNo, 7);
    for (int i = 0; i < 100; ++i) EXPECT_EQ(slot.Data.Count[static_cast<std::size_t>(i)], 10 + i);
    EXPECT_EQ(slot.Data.Count[100], 99);
    EXPECT_EQ(slot.Offset, 2.0);
    EXPECT_EQ(slot.Slope, 0.25);
    EXPECT_EQ(slot.Note,
              "its lines end in LF alone: the channel count stays 7, as the slot had it");
}

TEST(Dac, MoreThan4096PairsGiveTheirNumberAndTheLastChannelIs8192) {
    const struct {
        int Pairs;
        int Count;
    } cases[] = {{1, 4096}, {4096, 4096}, {4097, 4097}, {8192, 8192}};
    for (const auto& c : cases) {
        Slot slot;
        slot.Read(Pairs(c.Pairs, CRLF));
        EXPECT_EQ(slot.Data.DataNo, c.Count) << c.Pairs;
        EXPECT_EQ(slot.Data.Count[static_cast<std::size_t>(c.Pairs - 1)], 9 + c.Pairs);
    }
    for (const char* end : {CRLF, LF}) {
        Slot slot;
        slot.Prop.SourceType = 4;
        EXPECT_EQ(slot.Error(Pairs(8193, end)), "line 8193: at most 8192 pairs were expected");
        EXPECT_EQ(slot.Data.Count[8191], 8201);
        EXPECT_EQ(slot.Data.DataNo, 7);
        EXPECT_EQ(slot.Offset, -1.0) << "the axis of a file that was not read is none";
        EXPECT_EQ(slot.Prop.SourceType, 4);
        EXPECT_EQ(slot.Last, SOURCE_DAC);
    }
}

TEST(Dac, ABlankLineOrALeadingCommaOrNoCommaEndsTheData) {
    for (const std::string stop : {"", "   ", ",5", "no comma"}) {
        for (const std::string end : {CRLF, LF}) {
            Slot slot;
            slot.Read("2,10" + end + "3,11" + end + "4,12" + end + stop + end + "5,13" + end);
            EXPECT_EQ(slot.Data.Count[2], 12);
            EXPECT_EQ(slot.Data.Count[3], 99) << stop;
        }
    }
}

TEST(Dac, AFirstLineWhoseCommaComesFirstLeavesItsChannelAndTheOffset) {
    for (const std::string end : {CRLF, LF}) {
        Slot slot;
        slot.Read(",10" + end + "3,11" + end + "4,12" + end);
        EXPECT_EQ(slot.Data.Count[0], 99);
        EXPECT_EQ(slot.Data.Count[1], 11);
        EXPECT_EQ(slot.Data.Count[2], 12);
        EXPECT_EQ(slot.Offset, -1.0);
        EXPECT_EQ(slot.Slope, 3.0) << "x0 counts as 0";
    }
    Slot slot;
    slot.Read("2,10\r\n,11\r\n4,12\r\n");
    EXPECT_EQ(slot.Data.Count[1], 99);
    EXPECT_EQ(slot.Data.Count[2], 12);
    EXPECT_EQ(slot.Offset, 2.0);
    EXPECT_EQ(slot.Slope, -2.0) << "likewise";
}

TEST(Dac, OneLineSetsTheOffsetAlone) {
    Slot slot;
    slot.Read("2.5,10");
    EXPECT_EQ(slot.Offset, 2.5);
    EXPECT_EQ(slot.Slope, -2.0);
    EXPECT_EQ(slot.Data.Count[0], 10);
    EXPECT_EQ(slot.Data.DataNo, 4096);
}

TEST(Dac, ALastLineCountsWithoutItsEndButForABareLf) {
    Slot slot;
    slot.Read("2,10\r\n3,11\r\n4,12");
    EXPECT_EQ(slot.Data.Count[2], 12);
    Slot bare;
    bare.Read("2,10\n3,11\n4,12");
    EXPECT_EQ(bare.Data.Count[1], 11);
    EXPECT_EQ(bare.Data.Count[2], 99);
}

TEST(Dac, TheFirstLineDecidesWhatALineEndIs) {
    Slot slot;
    slot.Read("2,10\n3,11\n4,12\r\n5,13\n");
    EXPECT_EQ(slot.Data.Count[1], 11);
    EXPECT_EQ(slot.Data.Count[2], 99) << "the one line ends at CR LF, and this piece has no LF";
    EXPECT_EQ(slot.Data.DataNo, 7);
    EXPECT_EQ(slot.Error("2,10\r\n3,11\n4,12\r\n"),
              "line 2: a count of 32 bits was expected behind the comma, not \"11\n4,12\"");
}

TEST(Dac, CountsAreTrimmedSignedAndRoundedToTheEvenNeighbour) {
    Slot slot;
    slot.Read(" 2 , 10 \r\n3,-11\r\n4,2.5\r\nx,1E3\r\n5, -2147483648\r\n");
    EXPECT_EQ(slot.Offset, 2.0);
    EXPECT_EQ(slot.Data.Count[0], 10);
    EXPECT_EQ(slot.Data.Count[1], -11);
    EXPECT_EQ(slot.Data.Count[2], 2);
    EXPECT_EQ(slot.Data.Count[3], 1000) << "later angles are not read";
    EXPECT_EQ(slot.Data.Count[4], -2147483647 - 1);
}

TEST(Dac, WhatIsNoNumberIsAnErrorThatNamesItsLine) {
    Slot slot;
    EXPECT_EQ(slot.Error(""), "line 1: a line \"angle,count\" was expected");
    EXPECT_EQ(slot.Error("x,5\r\n"), "line 1: an angle was expected before the comma, not \"x\"");
    EXPECT_EQ(slot.Error("1,5\ny,5\n"),
              "line 2: an angle was expected before the comma, not \"y\"");
    EXPECT_EQ(slot.Error("1,5\r\n2,6\r\n3,\r\n"),
              "line 3: a count of 32 bits was expected behind the comma, not \"\"");
    EXPECT_EQ(slot.Error("1,5\n2,6\n3,7,8\n"),
              "line 3: a count of 32 bits was expected behind the comma, not \"7,8\"");
    EXPECT_EQ(slot.Error("1,5\n2,6\n3,3000000000\n"),
              "line 3: a count of 32 bits was expected behind the comma, not \"3000000000\"");
    EXPECT_EQ(slot.Offset, -1.0);
    EXPECT_EQ(slot.Slope, -2.0);
}

TEST(Dac, AFileWithoutAPairSaysSo) {
    Slot slot;
    slot.Read("some text\r\nand more\r\n");
    EXPECT_EQ(slot.Note, "no line \"angle,count\" stands in it: all channels stay as they were");
    EXPECT_EQ(slot.Data.Count[0], 99);
    slot.Read("\n");
    EXPECT_EQ(slot.Note,
              "no line \"angle,count\" stands in it: all channels stay as they were; its lines end "
              "in LF alone: the channel count stays 4096, as the slot had it");
}

TEST(Dac, AReaderWithoutAnAxisToSetReadsTheCounts) {
    Slot slot;
    std::istringstream in("2,10\r\n3,11\r\n");
    ReadDacText(in, {slot.Data, slot.Prop, slot.Last});
    EXPECT_EQ(slot.Data.Count[1], 11);
    EXPECT_EQ(slot.Offset, -1.0);
}

TEST(Dac, LoadingIsSilentButForTheLog) {
    TempFolder folder;
    Slot slot;
    std::string logged;
    FileTalk talk;
    talk.say = [](std::string_view text) { ADD_FAILURE() << text; };
    talk.log = [&](std::string_view line) { logged = line; };
    const std::string bad = folder.Write("a.raw", "1,2\r\n2,z\r\n");
    EXPECT_EQ(LoadDac(bad, slot.Target(), talk), 0);
    EXPECT_EQ(logged, bad +
                          ": line 2: a count of 32 bits was expected behind the comma, not "
                          "\"z\".");
    EXPECT_EQ(LoadDac(folder.Path("b.raw"), slot.Target(), talk), 0);
    EXPECT_EQ(logged, folder.Path("b.raw") + ": there is no such file.");
    PeakTable peaks{};
    const std::string bare = folder.Write("試料.RAW", Pairs(3, LF));
    EXPECT_EQ(ReadByExtension(bare, slot.Target(), peaks, talk), -1);
    EXPECT_EQ(logged, bare +
                          ": its lines end in LF alone: the channel count stays 7, as the slot "
                          "had it.");
}

TEST(DacMeasured, BothMeasuredFilesHave2112PairsAndTheirAxis) {
    const std::string crlf = Measured("LaB6_0p31A_crlf.raw");
    const std::string lf = Measured("LaB6_0p31A_lf.raw");
    if (crlf.empty()) GTEST_SKIP() << "the measured spectra are not here";
    Slot one;
    Slot two;
    std::string logged;
    FileTalk talk;
    talk.log = [&](std::string_view line) { logged += line; };
    EXPECT_EQ(LoadDac(crlf, one.Target(), talk), -1);
    EXPECT_EQ(logged, "");
    EXPECT_EQ(LoadDac(lf, two.Target(), talk), -1);
    EXPECT_NE(logged.find("the channel count stays 7"), std::string::npos);
    EXPECT_EQ(one.Data.DataNo, 4096);
    EXPECT_EQ(two.Data.DataNo, 7);
    for (const Slot* slot : {&one, &two}) {
        EXPECT_EQ(slot->Offset, 1.779794);
        EXPECT_NEAR(slot->Slope, 0.0097718, 1e-9);
        EXPECT_EQ(slot->Data.Count[0], 737);
        EXPECT_EQ(slot->Data.Count[1], 752);
        EXPECT_EQ(slot->Data.Count[2111], 478);
        EXPECT_EQ(slot->Data.Count[2112], 99);
    }
}
