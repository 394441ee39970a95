// .xbm, .xba and .xta against images laid out by offset.
#include "support/image.h"
#include "support/spectra.h"
#include "support/world.h"

#include "core/fault.h"
#include "files/filevael.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <sstream>

using namespace vael;

namespace {

std::int16_t Word(int value) { return static_cast<std::int16_t>(value); }

/// Every named field with a value of its own.
Image FullImage(const std::vector<std::int32_t>& counts) {
    Image image(1990);
    image.Text(0, 2, "00").Put(2, Word(1)).Text(4, 64, "AuWire").Text(68, 64, ToCp932("金の線"));
    image.Text(132, 8, "20070905").Text(140, 6, "123456").Text(146, 6, "").Text(152, 30, "nobody");
    image.Text(182, 100, "memo").Put(282, Word(1));
    for (int k = 0; k < 10; ++k) image.Put(284 + 2 * static_cast<std::size_t>(k), Word(100 + k));
    for (int k = 0; k < 11; ++k)
        image.Text(304 + 100 * static_cast<std::size_t>(k), 100, "spare " + std::to_string(k));
    image.Put(1404, Word(3)).Put(1406, 1.5).Put(1414, 2.5);
    for (std::size_t k = 0; k < 12; ++k) image.Put(1422 + k, static_cast<std::uint8_t>(200 + k));
    double value = 10.25;
    const auto doubles = [&](std::size_t from, std::size_t to) {
        for (std::size_t at = from; at < to; at += 8) image.Put(at, value += 1.0);
    };
    doubles(1434, 1514);
    image.Put(1514, Word(77));
    doubles(1516, 1532);
    image.Put(1532, Word(2));
    doubles(1534, 1774);
    for (std::size_t k = 0; k < 214; ++k) image.Put(1774 + k, static_cast<std::uint8_t>(k));
    image.Put(1988, Word(static_cast<int>(counts.size())));
    for (std::size_t k = 0; k < counts.size(); ++k) image.Put(1990 + 4 * k, counts[k]);
    return image;
}

struct Slot {
    SpectrumData Data{};
    PropertyRecord Prop = BlankProperty();
    PeakTable Peaks{};
    std::int16_t Last = 0;
    [[nodiscard]] ReadTarget Target() { return {Data, Prop, Last}; }
};

FileTalk Answering(bool answer, std::vector<std::string>& asked) {
    FileTalk talk;
    talk.ask = [&asked, answer](std::string_view question) {
        asked.emplace_back(question);
        return answer;
    };
    return talk;
}

}  // namespace

TEST(Xbm, EveryFieldIsReadFromItsOffset) {
    std::istringstream in(FullImage({5, -7, 2000000000}).Bytes());
    Slot slot;
    ReadXbmBody(in, slot.Target());
    const PropertyRecord& p = slot.Prop;
    EXPECT_EQ(p.RecordValid, 1);
    EXPECT_EQ(p.FileName.Trimmed(), "AuWire");
    EXPECT_EQ(p.SampleName.Trimmed(), "金の線");
    EXPECT_EQ(p.OpDate.Text(), "20070905");
    EXPECT_EQ(p.OpTime.Text(), "123456");
    EXPECT_EQ(p.OpName.Trimmed(), "nobody");
    EXPECT_EQ(p.Memo.Trimmed(), "memo");
    EXPECT_EQ(p.SpareFlags[9], 109);
    EXPECT_EQ(p.SpareText[10].Trimmed(), "spare 10");
    EXPECT_EQ(p.Param.MeasureType, 3);
    EXPECT_EQ(p.Param.PresetLive, 2.5);
    EXPECT_EQ(p.Param.SpareBlock[11], 211);
    EXPECT_EQ(p.Param.EgcCoef[0], 11.25);  // offset 1434, the first of the run of doubles
    EXPECT_EQ(p.Param.EgcCoef[2], 13.25);
    EXPECT_EQ(p.Param.TwoTheta, 14.25);     // 1458
    EXPECT_EQ(p.Param.Temperature, 18.25);  // 1490
    EXPECT_EQ(p.Param.CountRate, 20.25);    // 1506
    EXPECT_EQ(p.Param.GainWord, 77);
    EXPECT_EQ(p.Param.RealTime, 21.25);  // 1516
    EXPECT_EQ(p.Param.LiveTime, 22.25);  // 1524
    EXPECT_EQ(p.Param.DerivedFlags, 2);
    EXPECT_EQ(p.Param.PressX, 23.25);          // 1534
    EXPECT_EQ(p.Param.HGonioX, 27.25);         // 1566
    EXPECT_EQ(p.Param.VGonioX, 31.25);         // 1598
    EXPECT_EQ(p.Param.PressLoad, 35.25);       // 1630
    EXPECT_EQ(p.Param.DeadTime, 40.25);        // 1670
    EXPECT_EQ(p.Param.InSlitV, 41.25);         // 1678
    EXPECT_EQ(p.Param.ReSlitV, 46.25);         // 1718
    EXPECT_EQ(p.Param.CollimatorSize, 51.25);  // 1758
    EXPECT_EQ(p.Param.Current2, 52.25);        // 1766
    EXPECT_EQ(p.Param.Spare[213], 213);
    EXPECT_EQ(slot.Data.DataNo, 3);
    EXPECT_EQ(slot.Data.Count[1], -7);
    EXPECT_EQ(slot.Data.Count[2], 2000000000);
    EXPECT_EQ(slot.Last, 1);
}

TEST(Xbm, AFileReturnsByteForByte) {
    for (const int channels : {0, 1, 8192}) {
        std::vector<std::int32_t> counts(static_cast<std::size_t>(channels));
        for (int i = 0; i < channels; ++i) counts[static_cast<std::size_t>(i)] = i * 37 - 1000;
        const std::string bytes = FullImage(counts).Bytes();
        std::istringstream in(bytes);
        Slot slot;
        ReadXbmBody(in, slot.Target());
        std::ostringstream out;
        WriteXbmBody(out, slot.Data, slot.Prop);
        EXPECT_TRUE(out.str() == bytes) << channels << " channels";
    }
}

TEST(Xbm, TheTailOfTheParametersIsInNoFileAndStaysOnReading) {
    std::istringstream in(FullImage({1}).Bytes());
    Slot slot;
    slot.Prop.Param.Tail[81] = 9;
    ReadXbmBody(in, slot.Target());
    EXPECT_EQ(slot.Prop.Param.Tail[81], 9);
}

TEST(Xbm, AMarkThatIsNotTwoZerosLoadsAllTheSame) {
    std::string bytes = FullImage({4}).Bytes();
    bytes[0] = 'X';
    std::istringstream in(bytes);
    Slot slot;
    ReadXbmBody(in, slot.Target());
    EXPECT_EQ(slot.Data.Count[0], 4);
}

TEST(Xbm, CutOffInTheCountsTheRestReadsAsZeroAndIsTold) {
    TempFolder folder;
    const std::string bytes = FullImage({5, 6, 7}).Bytes();
    Slot slot;
    slot.Data.Count[3] = 44;
    std::string said;
    FileTalk talk;
    talk.log = [&](std::string_view line) { said = line; };
    const std::string path = folder.Write("cut.xbm", bytes.substr(0, 1990 + 6));
    EXPECT_EQ(LoadXbm(path, slot.Target(), talk), -1);
    EXPECT_EQ(slot.Data.DataNo, 3);
    EXPECT_EQ(slot.Data.Count[0], 5);
    EXPECT_EQ(slot.Data.Count[1], 0);
    EXPECT_EQ(slot.Data.Count[2], 0);
    EXPECT_EQ(slot.Data.Count[3], 44) << "channels beyond N are left";
    EXPECT_NE(said.find("cut.xbm: the file ends at offset 1996"), std::string::npos) << said;
}

TEST(Xbm, AFileShorterThanItsHeaderReadsAsZerosAndBlanks) {
    TempFolder folder;
    Slot slot;
    slot.Prop.Param.TwoTheta = 5;
    EXPECT_EQ(LoadXbm(folder.Write("a.xbm", FullImage({}).Bytes().substr(0, 70)), slot.Target()),
              -1);
    EXPECT_EQ(slot.Prop.FileName.Trimmed(), "AuWire");
    EXPECT_EQ(slot.Prop.Memo.Text(), std::string(100, ' '));
    EXPECT_EQ(slot.Prop.Param.TwoTheta, 0);
    EXPECT_EQ(slot.Data.DataNo, 0);
}

TEST(Xbm, CutOffWithinANumberThatNumberReadsAsZeroToo) {
    for (const std::size_t keep : {1990u + 4u + 1u, 1990u + 4u + 3u}) {
        std::istringstream in(FullImage({5, 0x01010101, 7}).Bytes().substr(0, keep));
        Slot slot;
        std::string note;
        ReadXbmBody(in, slot.Target(), &note);
        EXPECT_EQ(slot.Data.Count[0], 5);
        EXPECT_EQ(slot.Data.Count[1], 0);
        EXPECT_EQ(slot.Data.Count[2], 0);
        EXPECT_NE(note.find("offset " + std::to_string(keep)), std::string::npos) << note;
    }
}

TEST(Xbm, MoreThan8192ChannelsAreAnErrorThatLeavesTheCounts) {
    TempFolder folder;
    Image image = FullImage({1, 2});
    image.Put(1988, Word(8193));
    Slot slot;
    slot.Data.DataNo = 2;
    slot.Data.Count[0] = 99;
    std::string said;
    FileTalk talk;
    talk.log = [&](std::string_view line) { said = line; };
    EXPECT_EQ(LoadXbm(folder.Write("big.xbm", image.Bytes()), slot.Target(), talk), 0);
    EXPECT_EQ(slot.Data.Count[0], 99);
    EXPECT_EQ(slot.Data.DataNo, 2);
    EXPECT_NE(said.find("big.xbm: offset 1988: at most 8192"), std::string::npos) << said;
}

TEST(Xbm, ANegativeCountOfChannelsReadsAndWritesNone) {
    Image image = FullImage({1, 2});
    image.Put(1988, Word(-3));
    std::istringstream in(image.Bytes());
    Slot slot;
    ReadXbmBody(in, slot.Target());
    EXPECT_EQ(slot.Data.Count[0], 0);
    std::ostringstream out;
    WriteXbmBody(out, slot.Data, slot.Prop);
    EXPECT_EQ(out.str().size(), 1990u);
}

TEST(Xbm, FoldersAbsentAndUnreadableFilesAreRefusedWithTheirReason) {
    TempFolder folder;
    Slot slot;
    std::string said;
    FileTalk talk;
    talk.log = [&](std::string_view line) { said = line; };
    EXPECT_EQ(LoadXbm(folder.Path(), slot.Target(), talk), 0);
    EXPECT_NE(said.find("it is a folder"), std::string::npos) << said;
    EXPECT_EQ(LoadXbm(folder.Path("absent.xbm"), slot.Target(), talk), 0);
    EXPECT_NE(said.find("there is no such file"), std::string::npos) << said;
    EXPECT_EQ(LoadXbm("/dev/zero", slot.Target(), talk), 0);
    EXPECT_NE(said.find("no regular file"), std::string::npos) << said;
}

TEST(Xbm, SavingAsksInItsWordsButNotForTheScratchNameNorASequenceNumber) {
    TempFolder folder;
    Slot slot;
    std::vector<std::string> asked;
    for (const char* name : {"a.xbm", "temp00.xbm", "run.003"}) folder.Write(name, "old");
    EXPECT_EQ(SaveXbm(folder.Path("a.xbm"), slot.Data, slot.Prop, Answering(false, asked)), 0);
    EXPECT_EQ(asked, std::vector<std::string>{"File already exist. Replace?(xbm)"});
    EXPECT_EQ(BytesOf(folder.Path("a.xbm")), "old");
    EXPECT_EQ(SaveXbm(folder.Path("temp00.xbm"), slot.Data, slot.Prop, Answering(false, asked)),
              -1);
    EXPECT_EQ(SaveXbm(folder.Path("run.003"), slot.Data, slot.Prop, Answering(false, asked)), -1);
    EXPECT_EQ(asked.size(), 1u);
    EXPECT_EQ(BytesOf(folder.Path("run.003")).size(), 1990u);
    folder.Write("Temp00.xbm", "old");
    EXPECT_EQ(SaveXbm(folder.Path("Temp00.xbm"), slot.Data, slot.Prop, Answering(false, asked)), 0)
        << "the comparison is case-sensitive";
    EXPECT_EQ(SaveXbm(folder.Path("new.xbm"), slot.Data, slot.Prop, Answering(false, asked)), -1);
    EXPECT_EQ(asked.size(), 2u) << "a new file needs no question";
}

TEST(Xbm, EveryDigitAtTheEndOfAPathIsASequenceAndNothingElseIs) {
    TempFolder folder;
    Slot slot;
    std::vector<std::string> asked;
    for (int digit = 0; digit <= 9; ++digit) {
        const std::string path = folder.Write("run.00" + std::to_string(digit), "old");
        EXPECT_EQ(SaveXbm(path, slot.Data, slot.Prop, Answering(false, asked)), -1) << digit;
    }
    EXPECT_TRUE(asked.empty());
    for (const char* name : {"run.00a", "run.00-", "run.00:", "1.xbm", "temp00.xbm.xbm"}) {
        const std::string path = folder.Write(name, "old");
        asked.clear();
        EXPECT_EQ(SaveXbm(path, slot.Data, slot.Prop, Answering(false, asked)), 0) << name;
        EXPECT_EQ(asked.size(), 1u) << name;
    }
}

TEST(Xbm, TheKindOfFileBecomesNativeWhateverTheFileTells) {
    Image image = FullImage({1});
    image.Put(282, Word(4));
    std::istringstream in(image.Bytes());
    Slot slot;
    slot.Last = 5;
    ReadXbmBody(in, slot.Target());
    EXPECT_EQ(slot.Prop.SourceType, SOURCE_NATIVE);
    EXPECT_EQ(slot.Last, SOURCE_NATIVE);
}

TEST(Xbm, AShorterImageLeavesTheOldTailBehindIt) {
    TempFolder folder;
    Slot slot;
    slot.Data.DataNo = 1;
    std::vector<std::string> asked;
    const std::string path = folder.Write("a.xbm", std::string(3000, 'z'));
    EXPECT_EQ(SaveXbm(path, slot.Data, slot.Prop, Answering(true, asked)), -1);
    const std::string bytes = BytesOf(path);
    EXPECT_EQ(bytes.size(), 3000u);
    EXPECT_EQ(bytes.substr(1994), std::string(3000 - 1994, 'z'));
    EXPECT_EQ(bytes.substr(0, 2), "00");
}

TEST(Xba, HoldsThePeaksBehindTheCountsWhenTheRecordIsValid) {
    Image image = FullImage({1, 2});
    const std::size_t at = 1990 + 8;
    image.Put(at, Word(2));
    for (int n = 0; n < 2; ++n) {
        const std::size_t row = at + 2 + 70 * static_cast<std::size_t>(n);
        image.Put(row, std::uint16_t{65535}).Put(row + 2, Word(1)).Put(row + 4, 100.5 + n);
        image.Put(row + 12, 1.0).Put(row + 20, 4.5).Put(row + 28, 33.25 + n).Put(row + 36, -1.0);
        image.Put(row + 44, 0.5).Put(row + 52, Word(20 + n)).Put(row + 54, Word(40 + n));
        image.Put(row + 56, 999.0).Put(row + 64, std::uint32_t{0xdeadbeef}).Put(row + 68, Word(1));
    }
    std::istringstream in(image.Bytes());
    Slot slot;
    ReadXbaBody(in, slot.Target(), slot.Peaks);
    ASSERT_EQ(slot.Peaks.PeakNum, 2);
    const PeakRecord& p = slot.Peaks.Peak[1];
    EXPECT_EQ(p.FitState, 65535);
    EXPECT_EQ(p.Amplitude, 101.5);
    EXPECT_EQ(p.Width, 4.5);
    EXPECT_EQ(p.Position, 34.25);
    EXPECT_EQ(p.BackSlope, 0.5);
    EXPECT_EQ(p.EndCh, 41);
    EXPECT_EQ(p.Intensity, 999.0);
    EXPECT_EQ(p.Spare, 0xdeadbeef);
    EXPECT_EQ(p.Fitted, 1);
    std::ostringstream out;
    WriteXbaBody(out, slot.Data, slot.Prop, slot.Peaks);
    EXPECT_TRUE(out.str() == image.Bytes());
}

TEST(Xba, WithoutAValidRecordThereIsNoPeakBlockAndTheTableIsUntouched) {
    Image image = FullImage({1});
    image.Put(2, Word(0));
    std::istringstream in(image.Bytes());
    Slot slot;
    slot.Peaks.PeakNum = 7;
    ReadXbaBody(in, slot.Target(), slot.Peaks);
    EXPECT_EQ(slot.Peaks.PeakNum, 7);
    std::ostringstream out;
    WriteXbaBody(out, slot.Data, slot.Prop, slot.Peaks);
    EXPECT_EQ(out.str().size(), 1994u);
}

TEST(Xba, AValidWordOtherThanOneHasNoPeakBlockEither) {
    for (const int valid : {0, 2, -1}) {
        Image image = FullImage({1});
        image.Put(2, Word(valid)).Put(1994, Word(3));  // what stands there is no number of peaks
        std::istringstream in(image.Bytes());
        Slot slot;
        slot.Peaks.PeakNum = 7;
        ReadXbaBody(in, slot.Target(), slot.Peaks);
        EXPECT_EQ(slot.Peaks.PeakNum, 7) << valid;
        std::ostringstream out;
        WriteXbaBody(out, slot.Data, slot.Prop, slot.Peaks);
        EXPECT_EQ(out.str().size(), 1994u) << valid;
    }
}

TEST(Xba, APeakNumOfZeroHasTheTwoBytesAndNoRows) {
    Slot slot;
    slot.Prop.RecordValid = 1;
    std::ostringstream out;
    WriteXbaBody(out, slot.Data, slot.Prop, slot.Peaks);
    EXPECT_EQ(out.str().size(), 1992u);
}

TEST(Xba, MoreThanAHundredPeaksAreAnErrorAndANegativeNumberIsNone) {
    TempFolder folder;
    Image image = FullImage({1});
    image.Put(1994, Word(101));
    Slot slot;
    std::string said;
    FileTalk talk;
    talk.log = [&](std::string_view line) { said = line; };
    EXPECT_EQ(LoadXba(folder.Write("a.xba", image.Bytes()), slot.Target(), slot.Peaks, talk), 0);
    EXPECT_NE(said.find("offset 1994: at most 100 peaks"), std::string::npos) << said;
    slot.Peaks.PeakNum = 3;
    slot.Peaks.Peak[0].Position = 5.0;
    image.Put(1994, Word(-1));
    EXPECT_EQ(LoadXba(folder.Write("a.xba", image.Bytes()), slot.Target(), slot.Peaks, talk), -1);
    EXPECT_TRUE(slot.Peaks == PeakTable{});
    slot.Prop.RecordValid = 1;
    slot.Peaks.PeakNum = 101;
    EXPECT_EQ(SaveXba(folder.Path("b.xba"), slot.Data, slot.Prop, slot.Peaks, talk), 0);
}

TEST(Xba, AValidRecordWithoutAPeakBlockReadsAsNoPeaksAndIsTold) {
    TempFolder folder;
    Slot slot;
    slot.Peaks.PeakNum = 7;
    std::string said;
    FileTalk talk;
    talk.log = [&](std::string_view line) { said = line; };
    const std::string path = folder.Write("a.xba", FullImage({1, 2}).Bytes());
    EXPECT_EQ(LoadXba(path, slot.Target(), slot.Peaks, talk), -1);
    EXPECT_EQ(slot.Peaks.PeakNum, 0);
    EXPECT_EQ(slot.Data.Count[1], 2);
    EXPECT_NE(said.find("the file ends at offset 1998"), std::string::npos) << said;
}

TEST(Xba, AShorterImageLeavesTheOldTailBehindIt) {
    TempFolder folder;
    Slot slot;
    slot.Prop.RecordValid = 1;
    slot.Data.DataNo = 1;
    std::vector<std::string> asked;
    const std::string path = folder.Write("a.xba", std::string(3000, 'z'));
    EXPECT_EQ(SaveXba(path, slot.Data, slot.Prop, slot.Peaks, Answering(true, asked)), -1);
    const std::string bytes = BytesOf(path);
    EXPECT_EQ(bytes.substr(1994), std::string(2, '\0') + std::string(3000 - 1996, 'z'));
    PeakTable peaks{};
    peaks.PeakNum = 4;
    EXPECT_EQ(LoadXba(path, slot.Target(), peaks), -1);
    EXPECT_EQ(peaks.PeakNum, 0) << "where no reader looks";
}

TEST(Xba, TheReaderKeepsItsFileOpenAndSavingAlwaysAsks) {
    TempFolder folder;
    Slot slot;
    slot.Prop.RecordValid = 1;
    std::vector<std::string> asked;
    const std::string path = folder.Path("temp00.xbm");
    EXPECT_EQ(SaveXba(path, slot.Data, slot.Prop, slot.Peaks, Answering(false, asked)), -1);
    const int before = HeldXbaFiles();
    EXPECT_EQ(LoadXba(path, slot.Target(), slot.Peaks), -1);
    EXPECT_EQ(LoadXba(path, slot.Target(), slot.Peaks), -1);
    EXPECT_EQ(HeldXbaFiles(), before + 2) << "it never closes its file, as settled";
    EXPECT_EQ(SaveXba(path, slot.Data, slot.Prop, slot.Peaks, Answering(false, asked)), 0);
    EXPECT_EQ(asked, std::vector<std::string>{"File alrady exist. Replace?"});
}

TEST(Xta, HasItsLinesToTheLetter) {
    Slot slot;
    slot.Prop.SampleName = "金";
    slot.Prop.FileName = "AuWire";
    slot.Prop.OpDate = "20070905";
    slot.Prop.OpTime = "123456";
    slot.Prop.Param.Pressure = 1.25;
    slot.Prop.Param.Temperature = -3.04;
    slot.Prop.Param.TwoTheta = 15.06;
    slot.Prop.Param.EgcCoef = {0.0125, 0.031638, 5.0};
    slot.Data.DataNo = 9;
    for (std::size_t i = 0; i < 9; ++i) slot.Data.Count[i] = static_cast<std::int32_t>(i * 111);
    slot.Data.Count[1] = -5;
    std::ostringstream out;
    WriteXtaText(out, slot.Data, slot.Prop);
    const std::string expected =
        " 9 \r\n"
        "      0     -5    222    333    444    555    666    777\r\n"
        "    888\r\n" +
        ToCp932("金") + std::string(19, ' ') + "AuWire" + std::string(34, ' ') +
        "07/09/05 12:34:56   \r\n"
        "1.3,-3.0\r\n"
        "15.1,0,0,0,0,0\r\n"
        "0,0,0\r\n"
        "0,0,0\r\n"
        "0.013,0.03164\r\n";
    EXPECT_EQ(out.str(), expected);
}

TEST(Xta, WithoutChannelsThereIsNoLineOfCountsAndTouchingOnesAreTold) {
    TempFolder folder;
    Slot slot;
    std::ostringstream out;
    WriteXtaText(out, slot.Data, slot.Prop);
    EXPECT_EQ(out.str().substr(0, 7), " 0 \r\n  ") << "the line of the names comes next";
    std::string said;
    FileTalk talk;
    talk.log = [&](std::string_view line) { said = line; };
    slot.Data.DataNo = 1;
    slot.Data.Count[0] = 999999;
    EXPECT_EQ(SaveXta(folder.Path("a.xta"), slot.Data, slot.Prop, slot.Peaks, talk), -1);
    EXPECT_EQ(said, "");
    slot.Data.Count[0] = 1000000;
    EXPECT_EQ(SaveXta(folder.Path("a.xta"), slot.Data, slot.Prop, slot.Peaks, talk), -1);
    EXPECT_EQ(said.rfind(folder.Path("a.xta") + ": counts of seven characters", 0), 0u) << said;
}

TEST(Xta, ADateWithoutAYearIsEmptyAndNothingIsAsked) {
    TempFolder folder;
    Slot slot;
    slot.Prop.OpDate = "abcd0905";
    std::vector<std::string> asked;
    const std::string path = folder.Write("a.xta", std::string(5000, 'z'));
    EXPECT_EQ(SaveXta(path, slot.Data, slot.Prop, slot.Peaks, Answering(false, asked)), -1);
    EXPECT_TRUE(asked.empty());
    const std::string text = BytesOf(path);
    EXPECT_EQ(text.find('z'), std::string::npos) << "the file is replaced";
    EXPECT_NE(text.find("\r\n" + std::string(60, ' ') + " "), std::string::npos);
}
