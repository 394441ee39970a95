// The report form .rpt: written to the letter, read in any layout.
#include "support/spectra.h"
#include "support/world.h"

#include "core/fault.h"
#include "files/extensions.h"
#include "files/filegenie.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>

using namespace vael;

namespace {

struct Slot {
    SpectrumData Data{};
    PropertyRecord Prop = BlankProperty();
    std::int16_t Last = 0;
    void Read(const std::string& text) {
        std::istringstream in(text);
        ReadRptText(in, {Data, Prop, Last});
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
    [[nodiscard]] std::string Written() const {
        std::ostringstream out;
        WriteRptText(out, Data, Prop);
        return out.str();
    }
    void Fill(const std::vector<std::int32_t>& counts) {
        Data = {};
        Data.DataNo = static_cast<std::int16_t>(counts.size());
        std::copy(counts.begin(), counts.end(), Data.Count.begin());
    }
};

/// The six lines behind the counts, by hand.
const std::string TAIL =
    "Au wire             AuWire.npd                              07/09/05 12:34:56   \r\n"
    "1.5,25.0                        300.0\r\n"
    "15.01459,0,20.700,-0.250,0.000,12.111                            \r\n"
    "0,0,0                                                            \r\n"
    "0,0,0                                                            \r\n"
    "0.045,0.031638                                                   \r\n";

/// The count block by the C library, the second writer.
std::string Block(const std::vector<std::int32_t>& counts, const char* end = "\r\n") {
    std::string out;
    char text[16];
    for (std::size_t i = 0; i < counts.size(); ++i) {
        std::snprintf(text, sizeof text, "%7d", counts[i]);
        out += text;
        if (i % 8 == 7 || i + 1 == counts.size()) out += end;
    }
    return out;
}

std::string Head(std::size_t count) {
    char text[16];
    std::snprintf(text, sizeof text, "%5zu\r\n", count);
    return text;
}

std::string Bare(std::string text) {
    std::erase(text, '\r');
    return text;
}

Slot Gold() {
    Slot slot;
    slot.Prop.SampleName = "Au wire";
    slot.Prop.FileName = "AuWire.npd";
    slot.Prop.OpDate = "20070905";
    slot.Prop.OpTime = "123456";
    ParamRecord& p = slot.Prop.Param;
    p.Pressure = 1.46;
    p.Temperature = 25;
    p.RealTime = 300;
    p.TwoTheta = 15.01459;
    p.PressX = 20.7;
    p.PressY = -0.25;
    p.PressTZ = 12.111;
    p.EgcCoef = {0.0449898, 0.03163848, -1.27181e-8};
    return slot;
}

std::string Line(const std::string& text, int number) {
    std::istringstream lines(text);
    std::string line;
    while (number-- > 0) std::getline(lines, line);
    return line;
}

}  // namespace

TEST(Rpt, TheWritersLinesAreToTheLetter) {
    Slot slot = Gold();
    slot.Fill({0, 12, -3, 999999, 5, 6, 7, 8, 9});
    EXPECT_EQ(slot.Written(),
              "    9\r\n"
              "      0     12     -3 999999      5      6      7      8\r\n"
              "      9\r\n" +
                  TAIL);
}

TEST(Rpt, TheColumnsOfATextAreCharacters) {
    Slot slot = Gold();
    slot.Prop.SampleName = "金の線";
    slot.Prop.FileName = "試料一.npd";
    const std::string names =
        "金の線                 試料一.npd                                 07/09/05 12:34:56   \r";
    EXPECT_EQ(FromCp932(Line(slot.Written(), 2)), names);
    Slot read;
    read.Read(slot.Written());
    EXPECT_EQ(read.Prop.SampleName.Trimmed(), "金の線");
    EXPECT_EQ(read.Prop.FileName.Trimmed(), "試料一.npd") << "seven characters";
    EXPECT_EQ(read.Prop.OpDate.Text(), "20070905");
    EXPECT_EQ(read.Prop.OpTime.Text(), "123456");
}

TEST(Rpt, ALongNameIsCutAt20AndTheFileNameAt40) {
    Slot slot = Gold();
    slot.Prop.SampleName = "abcdefghijklmnopqrstuvwxyz";
    slot.Prop.FileName = "0123456789012345678901234567890123456789XYZ";
    EXPECT_EQ(Line(slot.Written(), 2),
              "abcdefghijklmnopqrst0123456789012345678901234567890123456789"
              "07/09/05 12:34:56   \r");
    slot.Prop.SampleName = "あいうえおかきくけこさしすせそたちつてとなにぬ";
    EXPECT_EQ(FromCp932(Line(slot.Written(), 2)).substr(0, 63),
              "あいうえおかきくけこさしすせそたちつてと012");
}

TEST(Rpt, ABlockOfNoneOfEightAndOf8192CountsHasItsLineBreaks) {
    Slot slot = Gold();
    EXPECT_EQ(slot.Written(), "    0\r\n" + TAIL) << "no line break of its own";
    slot.Fill({7});
    EXPECT_EQ(slot.Written(), "    1\r\n      7\r\n" + TAIL);
    const std::vector<std::int32_t> eight{1, 2, 3, 4, 5, 6, 7, 8};
    slot.Fill(eight);
    EXPECT_EQ(slot.Written(), Head(8) + Block(eight) + TAIL);
    std::vector<std::int32_t> all(8192);
    for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<std::int32_t>(i * 7) - 9000;
    slot.Fill(all);
    EXPECT_EQ(slot.Written(), Head(8192) + Block(all) + TAIL);
}

TEST(Rpt, AWideCountStandsInFull) {
    Slot slot;
    slot.Fill({12345678, 1234567, -2147483647 - 1, 1});
    EXPECT_EQ(Line(slot.Written(), 2), "123456781234567-2147483648      1\r");
}

TEST(Rpt, WideValuesTakeTheColumnsOfTheirNeighboursAndTheLineIsCut) {
    Slot slot = Gold();
    ParamRecord& p = slot.Prop.Param;
    p.RealTime = 1234567.89;
    p.Pressure = -12345.67;
    p.TwoTheta = 123456.7;
    p.PressX = p.PressY = p.PressZ = p.PressTZ = 123456789012.5;
    const std::string text = slot.Written();
    EXPECT_EQ(Line(text, 3), "-12345.7,25.0                 1234567.9\r");
    EXPECT_EQ(Line(text, 4), "123456.70000,0,123456789012.500,123456789012.500,123456789012.500\r")
        << "65 columns";
}

TEST(Rpt, DatesBefore2000AndOddOnesAreWrittenByTheirRule) {
    const struct {
        const char* Date;
        const char* Shown;
    } cases[] = {{"19990321", "99/03/21 12:34:56   "}, {"20070321", "07/03/21 12:34:56   "},
                 {"20290101", "29/01/01 12:34:56   "}, {"20300101", "30/01/01 12:34:56   "},
                 {"2007ab01", "07/ab/01 12:34:56   "}, {"        ", " 12:34:56   "},
                 {"abcd0101", " 12:34:56   "},         {"21050101", "105/01/01 12:34:56   "}};
    for (const auto& c : cases) {
        Slot slot = Gold();
        slot.Prop.OpDate = c.Date;
        EXPECT_EQ(Line(slot.Written(), 2).substr(60), std::string(c.Shown) + "\r") << c.Date;
    }
    Slot slot = Gold();
    slot.Prop.OpTime = "";
    EXPECT_EQ(Line(slot.Written(), 2).substr(60), "07/09/05   :  :     \r");
}

TEST(Rpt, EveryValueIsReadByItsPlace) {
    Slot slot;
    slot.Prop.OpName = "nobody";
    slot.Prop.Memo = "memo";
    slot.Prop.RecordValid = 1;
    slot.Prop.Param.RealTime = 44;
    slot.Prop.Param.RamStroke = 3;
    slot.Prop.Param.MeasureType = 2;
    slot.Prop.Param.EgcCoef[2] = 5;
    slot.Data.Count[3] = 99;
    slot.Read(Head(3) + Block({5, -6, 7}) + TAIL);
    EXPECT_EQ(slot.Data.DataNo, 3);
    EXPECT_EQ(slot.Data.Count[0], 5);
    EXPECT_EQ(slot.Data.Count[1], -6);
    EXPECT_EQ(slot.Data.Count[2], 7);
    EXPECT_EQ(slot.Data.Count[3], 99) << "channels beyond N stay";
    EXPECT_EQ(slot.Prop.SampleName.Trimmed(), "Au wire");
    EXPECT_EQ(slot.Prop.FileName.Trimmed(), "AuWire.n") << "eight characters return";
    EXPECT_EQ(slot.Prop.OpDate.Text(), "20070905");
    EXPECT_EQ(slot.Prop.OpTime.Text(), "123456");
    EXPECT_EQ(slot.Prop.OpName.Trimmed(), "");
    EXPECT_EQ(slot.Prop.Memo.Trimmed(), "");
    EXPECT_EQ(slot.Prop.RecordValid, 1) << "what the file does not give stays";
    const ParamRecord& p = slot.Prop.Param;
    EXPECT_EQ(p.Pressure, 1.5);
    EXPECT_EQ(p.Temperature, 25.0);
    EXPECT_EQ(p.LiveTime, 300.0) << "the written real time";
    EXPECT_EQ(p.RealTime, 44.0);
    EXPECT_EQ(p.RamStroke, 3.0);
    EXPECT_EQ(p.TwoTheta, 15.01459);
    EXPECT_EQ(p.PressX, 20.7);
    EXPECT_EQ(p.PressY, -0.25);
    EXPECT_EQ(p.PressZ, 0.0);
    EXPECT_EQ(p.PressTZ, 12.111);
    EXPECT_EQ(p.EgcCoef[0], 0.045);
    EXPECT_EQ(p.EgcCoef[1], 0.031638);
    EXPECT_EQ(p.EgcCoef[2], 0.0);
    EXPECT_EQ(p.MeasureType, 1);
    EXPECT_EQ(slot.Prop.SourceType, SOURCE_REPORT);
    EXPECT_EQ(slot.Last, SOURCE_REPORT);
}

TEST(Rpt, AYearBelow30IsOfThisCenturyAndAnEmptyDateReadsAsEmpty) {
    const struct {
        const char* Shown;
        const char* Date;
    } cases[] = {{"07/03/21", "20070321"}, {"99/03/21", "19990321"}, {"29/01/02", "20290102"},
                 {"30/01/02", "19300102"}, {"xx/01/02", "        "}, {"        ", "        "}};
    for (const auto& c : cases) {
        std::string tail = TAIL;
        Slot slot;
        slot.Read(Head(0) + tail.replace(60, 8, c.Shown));
        EXPECT_EQ(slot.Prop.OpDate.Text(), c.Date) << c.Shown;
    }
}

TEST(Rpt, BareLineFeedsAndAnyLayoutOfTheCountsAreRead) {
    Slot slot;
    slot.Read(Bare(Head(9) + Block({1, 2, 3, 4, 5, 6, 7, 8, 9}) + TAIL));
    EXPECT_EQ(slot.Data.Count[8], 9);
    EXPECT_EQ(slot.Prop.Param.EgcCoef[1], 0.031638);
    slot.Read("\r\n 4 10\r\n\r\n\t20 3e1  \r\n12345678\r\n" + TAIL);
    EXPECT_EQ(slot.Data.DataNo, 4);
    EXPECT_EQ(slot.Data.Count[0], 10);
    EXPECT_EQ(slot.Data.Count[1], 20);
    EXPECT_EQ(slot.Data.Count[2], 30);
    EXPECT_EQ(slot.Data.Count[3], 12345678);
    EXPECT_EQ(slot.Prop.SampleName.Trimmed(), "Au wire");
    slot.Read("2.5 1.5 2.5 " + TAIL);
    EXPECT_EQ(slot.Data.DataNo, 2) << "whole numbers go to the even neighbour";
    EXPECT_EQ(slot.Data.Count[0], 2);
    EXPECT_EQ(slot.Data.Count[1], 2);
    EXPECT_EQ(slot.Prop.SampleName.Trimmed(), "Au wire") << "on the line of the last count";
}

TEST(Rpt, CountsOfSevenCharactersAreReadByTheirColumns) {
    const std::vector<std::vector<std::int32_t>> blocks{
        {1234567, 7654321, 1, 2, 3, 4, 5, 6},
        {0, 1500000, 1500001, 5, 5, 5, 5, 5},  // "01500000" alone would be a count too
        {1234, -123456, 3},
        {9999999, 9999999, 9999999, 9999999, 9999999, 9999999, 9999999, 9999999, -999999, -100000},
    };
    for (const auto& counts : blocks) {
        Slot slot;
        slot.Read(Head(counts.size()) + Block(counts) + TAIL);
        for (std::size_t i = 0; i < counts.size(); ++i)
            EXPECT_EQ(slot.Data.Count[i], counts[i]) << i;
        EXPECT_EQ(slot.Prop.SampleName.Trimmed(), "Au wire");
    }
}

TEST(Rpt, AListThatEndsEarlyStoresZero) {
    Slot slot;
    ParamRecord& p = slot.Prop.Param;
    p.Temperature = p.LiveTime = p.PressX = p.EgcCoef[1] = 9;
    slot.Read("0\r\nname\r\n1.5\r\n15.0,0\r\n\r\n\r\n0.1\r\n");
    EXPECT_EQ(slot.Prop.SampleName.Trimmed(), "name");
    EXPECT_EQ(slot.Prop.OpDate.Text(), "        ");
    EXPECT_EQ(p.Pressure, 1.5);
    EXPECT_EQ(p.Temperature, 0.0);
    EXPECT_EQ(p.LiveTime, 0.0);
    EXPECT_EQ(p.TwoTheta, 15.0);
    EXPECT_EQ(p.PressX, 0.0);
    EXPECT_EQ(p.EgcCoef[0], 0.1);
    EXPECT_EQ(p.EgcCoef[1], 0.0);
}

TEST(Rpt, WhatIsNoReportNamesItsLineAndLeavesTheRecord) {
    Slot slot;
    slot.Prop.Memo = "before";
    slot.Data.DataNo = 5;
    EXPECT_EQ(slot.Error(""), "line 1: the file ends, the number of channels was expected");
    EXPECT_EQ(slot.Error("Record length,23\r\n"),
              "line 1: 0 to 8192 channels were expected, not \"Record\"");
    EXPECT_EQ(slot.Error(" 8193\r\n1 2 3\r\n"),
              "line 1: 0 to 8192 channels were expected, not \"8193\"");
    EXPECT_EQ(slot.Error("   -1\r\n"), "line 1: 0 to 8192 channels were expected, not \"-1\"");
    EXPECT_EQ(slot.Error(Head(3) + "5 6 x\r\n" + TAIL),
              "line 2: a count of 32 bits was expected, not \"x\"");
    EXPECT_EQ(slot.Error(Head(3) + "5 6\r\n3000000000\r\n" + TAIL),
              "line 3: a count of 32 bits was expected, not \"3000000000\"");
    EXPECT_EQ(slot.Error(Head(2) + "12345678      1\r\n" + TAIL), "")
        << "eight characters in full, in no columns";
    slot.Prop = BlankProperty();
    slot.Prop.Memo = "before";
    slot.Data.DataNo = 5;
    EXPECT_EQ(slot.Error(Head(2) + "      112345678901\r\n" + TAIL),
              "line 2: a count of 32 bits was expected, not \"112345678901\"");
    EXPECT_EQ(slot.Error(Head(3) + "5 6\r\n"),
              "line 3: the file ends, a line of counts was expected");
    EXPECT_EQ(slot.Error(Head(1) + "5\r\nname\r\n1,2\r\n3,0\r\n0\r\n0\r\n"),
              "line 8: the file ends, the line of the coefficients was expected");
    EXPECT_EQ(slot.Prop.Memo.Trimmed(), "before");
    EXPECT_EQ(slot.Prop.SampleName.Trimmed(), "");
    EXPECT_EQ(slot.Prop.SourceType, 0);
    EXPECT_EQ(slot.Data.DataNo, 5);
}

TEST(Rpt, TheLargestSpectrumReadsAndOneMoreChannelDoesNotWrite) {
    Slot slot;
    slot.Read(Head(8192) + Block(std::vector<std::int32_t>(8192, 44)) + TAIL);
    EXPECT_EQ(slot.Data.DataNo, 8192);
    EXPECT_EQ(slot.Data.Count[8191], 44);
    slot.Data.DataNo = 8193;
    EXPECT_THROW((void)slot.Written(), Fault);
    TempFolder folder;
    std::string line;
    FileTalk talk;
    talk.log = [&](std::string_view text) { line = text; };
    EXPECT_EQ(SaveRpt(folder.Path("a.rpt"), slot.Data, slot.Prop, talk), 0);
    EXPECT_TRUE(line.starts_with(folder.Path("a.rpt") + ": ")) << line;
    EXPECT_FALSE(std::filesystem::exists(folder.Path("a.rpt")));
}

TEST(Rpt, ARoundTripKeepsWhatTheFormHolds) {
    Slot gold = Gold();
    gold.Fill({5, -6, 1234567, 8});
    gold.Prop.OpName = "nobody";
    gold.Prop.Param.RingCurrent = 99;
    Slot read;
    read.Read(gold.Written());
    EXPECT_EQ(read.Data.Count, gold.Data.Count);
    EXPECT_EQ(read.Prop.SampleName, gold.Prop.SampleName);
    EXPECT_EQ(read.Prop.OpDate, gold.Prop.OpDate);
    EXPECT_EQ(read.Prop.OpTime, gold.Prop.OpTime);
    EXPECT_EQ(read.Prop.Param.TwoTheta, gold.Prop.Param.TwoTheta) << "five decimals";
    EXPECT_NEAR(read.Prop.Param.EgcCoef[0], gold.Prop.Param.EgcCoef[0], 5.1e-4);
    EXPECT_NEAR(read.Prop.Param.EgcCoef[1], gold.Prop.Param.EgcCoef[1], 5.1e-7);
    EXPECT_EQ(read.Prop.Param.LiveTime, gold.Prop.Param.RealTime);
    EXPECT_EQ(read.Prop.Param.EgcCoef[2], 0.0);
    EXPECT_EQ(read.Prop.Param.RingCurrent, 0.0);
    EXPECT_EQ(read.Prop.OpName.Trimmed(), "");
}

TEST(Rpt, TheNativeTextHasTheSameLinesAndIsReadToo) {
    Slot gold = Gold();
    gold.Fill({5, 6, 7, 8, 9, 10, 11, 12, 13});
    std::ostringstream text;
    WriteXtaText(text, gold.Data, gold.Prop);
    Slot read;
    read.Read(text.str());
    EXPECT_EQ(read.Data.DataNo, 9);
    EXPECT_EQ(read.Data.Count, gold.Data.Count);
    EXPECT_EQ(read.Prop.OpDate.Text(), "20070905");
    EXPECT_EQ(read.Prop.Param.Temperature, 25.0);
    EXPECT_EQ(read.Prop.Param.LiveTime, 0.0) << "this text has no third number there";
    EXPECT_EQ(read.Prop.Param.EgcCoef[1], 0.03164);
}

TEST(Rpt, ATextOfALineBreakStaysInItsLine) {
    Slot slot = Gold();
    slot.Prop.SampleName = "two\r\nlines";
    EXPECT_EQ(Line(slot.Written(), 2).substr(0, 20), "two  lines          ");
    slot.Prop.FileName.Bytes.fill('\0');
    EXPECT_EQ(Line(slot.Written(), 2).substr(20, 40), std::string(40, ' '));
}

TEST(Rpt, SavingAsksInItsWordsAndTellsOfCountsThatTouch) {
    TempFolder folder;
    Slot slot = Gold();
    slot.Fill({999999, -99999});
    const std::string path = folder.Write("a.rpt", "old");
    std::string asked;
    std::string logged;
    bool answer = false;
    FileTalk talk;
    talk.ask = [&](std::string_view question) {
        asked = question;
        return answer;
    };
    talk.log = [&](std::string_view line) { logged = line; };
    EXPECT_EQ(SaveRpt(path, slot.Data, slot.Prop, talk), 0);
    EXPECT_EQ(asked, "File already exist. Replace?(RPT)");
    EXPECT_EQ(BytesOf(path), "old");
    answer = true;
    EXPECT_EQ(SaveRpt(path, slot.Data, slot.Prop, talk), -1);
    EXPECT_EQ(BytesOf(path), slot.Written());
    EXPECT_EQ(logged, "");
    slot.Data.Count[1] = -100000;
    EXPECT_EQ(SaveRpt(path, slot.Data, slot.Prop, talk), -1);
    EXPECT_NE(logged.find("counts of seven characters"), std::string::npos);
    EXPECT_EQ(SaveRpt(folder.Path("none/a.rpt"), slot.Data, slot.Prop, talk), 0);
    EXPECT_TRUE(logged.starts_with(folder.Path("none/a.rpt") + ": ")) << logged;
}

TEST(Rpt, LoadingIsSilentButForTheLog) {
    TempFolder folder;
    Slot slot;
    std::string logged;
    FileTalk talk;
    talk.say = [](std::string_view text) { ADD_FAILURE() << text; };
    talk.log = [&](std::string_view line) { logged = line; };
    const std::string bad = folder.Write("a.rpt", "no report\r\n");
    EXPECT_EQ(LoadRpt(bad, {slot.Data, slot.Prop, slot.Last}, talk), 0);
    EXPECT_EQ(logged, bad + ": line 1: 0 to 8192 channels were expected, not \"no\".");
    EXPECT_EQ(LoadRpt(folder.Path("b.rpt"), {slot.Data, slot.Prop, slot.Last}, talk), 0);
    EXPECT_EQ(logged, folder.Path("b.rpt") + ": there is no such file.");
    PeakTable peaks{};
    const std::string good = folder.Write("C.RPT", Head(1) + Block({5}) + TAIL);
    EXPECT_EQ(ReadByExtension(good, {slot.Data, slot.Prop, slot.Last}, peaks, talk), -1);
    EXPECT_EQ(slot.Data.Count[0], 5);
}
