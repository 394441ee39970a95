// .gsa: the written form against lines by hand and a second writer, the read form against its
// grammar.
#include "support/smallforms.h"
#include "support/world.h"

#include "core/fault.h"
#include "files/filegsa.h"
#include "files/filenpd.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>

using namespace vael;

namespace {

struct Slot {
    SpectrumData Data{};
    PropertyRecord Prop = BlankProperty();
    std::int16_t Last = 0;
    [[nodiscard]] std::string Written() const {
        std::ostringstream out;
        WriteGsaText(out, Data, Prop);
        return out.str();
    }
    void Read(const std::string& text) {
        std::istringstream in(text);
        ReadGsaText(in, {Data, Prop, Last});
    }
    std::string Error(const std::string& text) {
        try {
            Read(text);
        } catch (const Fault& fault) {
            return fault.what();
        }
        return {};
    }
};

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t at = 0;
    while (at < text.size()) {
        const auto end = text.find("\r\n", at);
        EXPECT_NE(end, std::string::npos) << "every line ends in CR LF";
        if (end == std::string::npos) break;
        lines.push_back(text.substr(at, end - at));
        at = end + 2;
    }
    return lines;
}

Slot Filled(int channels) {
    Slot slot;
    slot.Data.DataNo = static_cast<std::int16_t>(channels);
    for (int i = 0; i < channels; ++i) Item(slot.Data.Count, i) = i * 7 - 20;
    return slot;
}

/// The data lines by a second writer, from what each line should hold.
std::string Cells(const std::vector<std::int32_t>& values) {
    std::string line;
    for (const std::int32_t value : values) {
        char cell[16];
        std::snprintf(cell, sizeof cell, "%8d", value);
        line += cell;
    }
    return line;
}

}  // namespace

TEST(Gsa, TheWritersLinesAreToTheLetter) {
    Slot slot;
    slot.Prop.FileName = "AuWire";
    slot.Prop.OpDate = "19990102";
    slot.Prop.OpTime = "090807";
    slot.Prop.Param.TwoTheta = 5.25;
    slot.Prop.Param.EgcCoef = {0.05, 0.03, -1.27181e-8};
    slot.Data.DataNo = 12;
    const std::array<std::int32_t, 12> counts{0,       1,   -2,  9999999, -9999999, 55,
                                              1234567, 100, 200, 300,     400,      -500};
    std::copy(counts.begin(), counts.end(), slot.Data.Count.begin());
    EXPECT_EQ(
        slot.Written(),
        " File: AuWire              Date: 1999-01-02 09:08:07             2theta = 5.2500\r\n"
        "BANK 1 12    2   EDS   8.00000E-02  3.00000E-02 -1.27181E-08  0.00000E+00 STD   \r\n"
        "       0       1      -2 9999999-9999999      55 1234567     100     200     300\r\n"
        "     400    -500       0       0       0       0       0       0       0       0\r\n");
}

TEST(Gsa, TheFirstLineIsCutAtItsColumns) {
    Slot slot;
    slot.Prop.FileName = "a name of forty characters, which is cut";
    slot.Prop.OpDate = "20070905";
    slot.Prop.OpTime = "123456";
    slot.Prop.Param.TwoTheta = 15.0146;
    const std::string line = LinesOf(slot.Written())[0];
    EXPECT_EQ(line,
              " File: a name of forty charDate: 2007-09-05 12:34:56             2theta = 15.014")
        << "the angle's last digit has no column from 10 degrees on";
    EXPECT_EQ(line.size(), 80u);
}

TEST(Gsa, JapaneseNamesCountCharacters) {
    Slot slot;
    slot.Prop.FileName = "金の線";
    const std::string line = FromCp932(LinesOf(slot.Written())[0]);
    EXPECT_EQ(line.substr(0, line.find("Date: ")), " File: 金の線" + std::string(17, ' '));
    EXPECT_NE(line.find("Date:     -  -     :  :  "), std::string::npos) << line;
}

TEST(Gsa, BankOf4096And4090Channels) {
    Slot some = Filled(4096);
    some.Data.Count[4095] = 77;
    auto lines = LinesOf(some.Written());
    EXPECT_EQ(lines[1].substr(0, 21), "BANK 1 4096  410 EDS ");
    ASSERT_EQ(lines.size(), 2u + 410u) << "409 full lines and one more";
    EXPECT_EQ(lines.back(), Cells({4090 * 7 - 20, 4091 * 7 - 20, 4092 * 7 - 20, 4093 * 7 - 20,
                                   4094 * 7 - 20, 77, 0, 0, 0, 0}));
    lines = LinesOf(Filled(4090).Written());
    EXPECT_EQ(lines[1].substr(0, 21), "BANK 1 4090  410 EDS ");
    EXPECT_EQ(lines.size(), 2u + 409u) << "a record fewer than told";
}

TEST(Gsa, AnyNumberOfChannelsGivesTheLinesOfASecondWriter) {
    for (const int channels : {0, 1, 9, 10, 11, 8192}) {
        const Slot slot = Filled(channels);
        const auto lines = LinesOf(slot.Written());
        ASSERT_EQ(lines.size(), 2u + static_cast<std::size_t>((channels + 9) / 10)) << channels;
        char bank[32];
        std::snprintf(bank, sizeof bank, "BANK 1 %-6d%-4dEDS ", channels, channels / 10 + 1);
        EXPECT_EQ(lines[1].substr(0, 21), bank);
        EXPECT_EQ(lines[1].size(), 80u);
        for (std::size_t row = 0; row + 2 < lines.size(); ++row) {
            std::vector<std::int32_t> values;
            for (int k = 0; k < 10; ++k) {
                const int i = static_cast<int>(row) * 10 + k;
                values.push_back(i < channels ? i * 7 - 20 : 0);
            }
            ASSERT_EQ(lines[row + 2], Cells(values)) << channels << " channels, row " << row;
        }
    }
}

TEST(Gsa, ANegativeNumberOfChannelsIsNone) {
    Slot slot;
    slot.Data.DataNo = -3;
    const auto lines = LinesOf(slot.Written());
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[1].substr(0, 21), "BANK 1 0     1   EDS ");
}

TEST(Gsa, ValuesWiderThanEightColumnsStandInFull) {
    Slot slot;
    slot.Data.DataNo = 2;
    slot.Data.Count[0] = -12345678;
    slot.Data.Count[1] = -2147483647 - 1;
    EXPECT_EQ(LinesOf(slot.Written())[2].substr(0, 28), "-12345678-2147483648       0");
}

TEST(Gsa, OneCountOfTenMillionDividesAllTowardsZero) {
    Slot slot;
    slot.Data.DataNo = 20;
    slot.Data.Count[0] = 9999999;
    EXPECT_EQ(LinesOf(slot.Written())[2].substr(0, 8), " 9999999");
    slot.Data.Count[1] = 10000000;
    slot.Data.Count[2] = 19;
    slot.Data.Count[3] = -19;
    slot.Data.Count[4] = 2147483647;
    slot.Data.Count[5] = 9;
    EXPECT_EQ(LinesOf(slot.Written())[2],
              Cells({999999, 1000000, 1, -1, 214748364, 0, 0, 0, 0, 0}));
    slot.Data.Count[25] = 10000000;
    slot.Data.Count[1] = slot.Data.Count[4] = 0;
    EXPECT_EQ(LinesOf(slot.Written())[2].substr(0, 8), " 9999999")
        << "a channel beyond the count does not divide";
}

TEST(Gsa, OnTheDividedRoadTheLastLineRepeatsOneChannelAsSettled) {
    Slot slot = Filled(23);
    slot.Data.Count[0] = 10000000;
    slot.Data.Count[30] = 4560;  // 20 + 10: what the slot holds there
    EXPECT_EQ(LinesOf(slot.Written()).back(), Cells({456, 456, 456, 0, 0, 0, 0, 0, 0, 0}));
    slot.Data.DataNo = 4;  // no full line: the first channel
    EXPECT_EQ(LinesOf(slot.Written()).back(),
              Cells({1000000, 1000000, 1000000, 1000000, 0, 0, 0, 0, 0, 0}));
}

TEST(Gsa, ADividedSpectrumOf8192ChannelsAsksPastTheLastOneAndIsRefused) {
    TempFolder folder;
    Slot slot = Filled(8192);
    slot.Data.Count[0] = 10000000;
    const std::string path = folder.Write("a.gsa", "old");
    FileTalk talk;
    talk.ask = [](std::string_view) { return true; };
    std::string said;
    talk.log = [&](std::string_view line) { said = line; };
    EXPECT_EQ(SaveGsa(path, slot.Data, slot.Prop, talk), 0);
    EXPECT_EQ(BytesOf(path), "old");
    EXPECT_EQ(said.rfind(path + ": ", 0), 0u) << said;
    slot.Data.DataNo = 8180;  // 8180 + 10 is there, and the line is full anyway
    EXPECT_EQ(SaveGsa(path, slot.Data, slot.Prop, talk), -1);
    slot.Data.DataNo = 8181;  // 8190 is the last but one
    EXPECT_EQ(SaveGsa(path, slot.Data, slot.Prop, talk), -1);
}

TEST(Gsa, SavingAsksInItsWords) {
    TempFolder folder;
    const Slot slot = Filled(3);
    const std::string path = folder.Write("a.gsa", "old");
    std::string asked;
    FileTalk talk;
    talk.ask = [&](std::string_view question) {
        asked = question;
        return false;
    };
    EXPECT_EQ(SaveGsa(path, slot.Data, slot.Prop, talk), 0);
    EXPECT_EQ(asked, "File already exist. Replace?(GSA)");
    EXPECT_EQ(BytesOf(path), "old");
    talk.ask = [](std::string_view) { return true; };
    EXPECT_EQ(SaveGsa(path, slot.Data, slot.Prop, talk), -1);
    EXPECT_EQ(BytesOf(path), slot.Written());
}

TEST(Gsa, TheReaderTakesTheHeaderOfTheNpdGrammarToLine22) {
    Slot slot;
    slot.Prop.Memo = "kept";
    slot.Prop.Param.RamStroke = 9.5;
    slot.Read(GsaText({5, -6, 7}));
    const ParamRecord& p = slot.Prop.Param;
    EXPECT_EQ(slot.Prop.FileName.Trimmed(), "AuWire");
    EXPECT_EQ(slot.Prop.OpTime.Text(), "090541");
    EXPECT_EQ(p.MeasureType, 1);
    EXPECT_EQ(p.EgcCoef[1], 0.0316);
    EXPECT_EQ(p.TwoTheta, 15.0146);
    EXPECT_NEAR(p.Temperature, 25.0, 1e-12);
    EXPECT_EQ(p.RingStatus, 99.5);
    EXPECT_EQ(p.PressTZ, 4.125);
    EXPECT_EQ(p.Resistance, 0.6);
    EXPECT_EQ(slot.Prop.Memo.Trimmed(), "kept") << "there is no comment line";
    EXPECT_EQ(p.RamStroke, 9.5) << "and no stroke";
    EXPECT_EQ(slot.Data.DataNo, 3);
    EXPECT_EQ(slot.Data.Count[0], 5);
    EXPECT_EQ(slot.Data.Count[1], -6);
    EXPECT_EQ(slot.Data.Count[2], 7);
    EXPECT_EQ(slot.Prop.SourceType, 4);
    EXPECT_EQ(slot.Last, 4);
}

TEST(Gsa, BareLineFeedsReadToo) {
    std::string text = GsaText({5, 6});
    std::erase(text, '\r');
    Slot slot;
    slot.Read(text);
    EXPECT_EQ(slot.Data.Count[1], 6);
}

TEST(Gsa, FurtherHeaderLinesAreSkippedAndALengthBelow22SkipsNone) {
    std::string text = GsaText({8, 9}, 24);
    text.insert(text.find("Data length"), "x,1\r\ny,2\r\n");
    Slot slot;
    slot.Read(text);
    EXPECT_EQ(slot.Data.Count[1], 9);
    slot.Read(GsaText({8, 9}, 3));
    EXPECT_EQ(slot.Data.Count[1], 9);
    slot.Read(GsaText({8, 9}, -5));
    EXPECT_EQ(slot.Data.Count[1], 9);
}

TEST(Gsa, AFileOfTheNpdWriterReadsWholeThroughThisReader) {
    Slot from = Filled(8192);
    from.Prop.OpDate = "19990102";
    from.Prop.OpTime = "090807";
    from.Prop.Param.MeasureType = 1;
    from.Prop.Param.LiveTime = 2.5;
    std::ostringstream out;
    WriteNpdText(out, from.Data, from.Prop);
    Slot to;
    to.Read(out.str());
    EXPECT_EQ(to.Data.DataNo, 8192);
    EXPECT_TRUE(to.Data.Count == from.Data.Count);
    EXPECT_EQ(to.Prop.OpDate.Text(), "19990102");
    EXPECT_EQ(to.Prop.Param.LiveTime, 2.5);
}

TEST(Gsa, AFileOfItsOwnWriterIsRefusedWithItsLineAndTheRecordStands) {
    Slot from = Filled(30);
    Slot to;
    to.Prop.Memo = "before";
    EXPECT_EQ(to.Error(from.Written()).rfind("line 1: the number of header lines was expected", 0),
              0u);
    EXPECT_EQ(to.Prop.Memo.Trimmed(), "before");
    EXPECT_EQ(to.Prop.SourceType, 0);
    TempFolder folder;
    std::string said;
    FileTalk talk;
    talk.log = [&](std::string_view line) { said = line; };
    const std::string path = folder.Write("a.gsa", from.Written());
    EXPECT_EQ(LoadGsa(path, {to.Data, to.Prop, to.Last}, talk), 0);
    EXPECT_EQ(said.rfind(path + ": line 1: ", 0), 0u) << said;
}

TEST(Gsa, TooManyChannelsTooFewLinesAndNoNumbersAreTold) {
    Slot slot;
    EXPECT_EQ(slot.Error(GsaText(std::vector<std::int32_t>(8193, 3))),
              "line 8217: at most 8192 channels were expected");
    EXPECT_EQ(slot.Data.Count[8191], 3);
    std::string text = GsaText({8, 9});
    text.resize(text.rfind("2,0.0000"));
    EXPECT_EQ(slot.Error(text),
              "line 26: the file ends, a line \"channel,energy,count\" was expected");
    slot.Read(GsaText({}));
    EXPECT_EQ(slot.Data.DataNo, 0);
}
