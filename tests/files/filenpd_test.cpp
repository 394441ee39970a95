// The NPD text form, read by position and written to the letter.
#include "support/spectra.h"
#include "support/world.h"

#include "core/fault.h"
#include "files/filenpd.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace vael;

namespace {

struct Slot {
    SpectrumData Data{};
    PropertyRecord Prop = BlankProperty();
    std::int16_t Last = 0;
    void Read(const std::string& text) {
        std::istringstream in(text);
        ReadNpdText(in, {Data, Prop, Last});
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

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    const auto at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return text.replace(at, from.size(), to);
}

}  // namespace

TEST(Npd, EveryLineIsReadByItsPosition) {
    Slot slot;
    slot.Read(NpdText({5, 6, 7}, "AuWire", 0.25, 0.0316, 15.0146));
    const ParamRecord& p = slot.Prop.Param;
    EXPECT_EQ(slot.Prop.FileName.Trimmed(), "AuWire");
    EXPECT_EQ(slot.Prop.OpName.Trimmed(), "nobody");
    EXPECT_EQ(slot.Prop.SampleName.Trimmed(), "Au");
    EXPECT_EQ(slot.Prop.OpDate.Text(), "20181010");
    EXPECT_EQ(slot.Prop.OpTime.Text(), "090541") << "one digit gets its zero";
    EXPECT_EQ(p.MeasureType, 1);
    EXPECT_EQ(p.EgcCoef[0], 0.25);
    EXPECT_EQ(p.EgcCoef[1], 0.0316);
    EXPECT_EQ(p.TwoTheta, 15.0146);
    EXPECT_EQ(p.LiveTime, 200.0);
    EXPECT_EQ(p.RealTime, 256.97);
    EXPECT_EQ(p.DeadTime, 22.1699);
    EXPECT_NEAR(p.Temperature, 25.0, 1e-12);
    EXPECT_EQ(p.PressLoad, 1.5);
    EXPECT_EQ(p.RingCurrent, 99.5);
    EXPECT_EQ(p.RingStatus, 99.5);
    EXPECT_EQ(p.IonChamber, 3.25);
    EXPECT_EQ(p.CountRate, 15967.96);
    EXPECT_EQ(p.PressX, 1.0);
    EXPECT_EQ(p.PressY, -2.5);
    EXPECT_EQ(p.PressZ, 3.0);
    EXPECT_EQ(p.PressTZ, 4.125);
    EXPECT_EQ(p.InSlitH, 0.2);
    EXPECT_EQ(p.ReSlitV, 0.3);
    EXPECT_EQ(p.CollimatorSize, 0.05);
    EXPECT_EQ(p.Volt, 1.5);
    EXPECT_EQ(p.Current2, 2.5);
    EXPECT_EQ(p.Power, 3.75);
    EXPECT_EQ(p.Resistance, 0.6);
    EXPECT_EQ(slot.Prop.Memo.Trimmed(), "a comment, with a comma");
    EXPECT_EQ(p.RamStroke, 7.25);
    EXPECT_EQ(slot.Data.DataNo, 3);
    EXPECT_EQ(slot.Data.Count[2], 7);
    EXPECT_EQ(slot.Prop.SourceType, 4);
    EXPECT_EQ(slot.Last, 4);
}

TEST(Npd, BareLineFeedsReadToo) {
    std::string text = NpdText({5, 6});
    std::erase(text, '\r');
    Slot slot;
    slot.Read(text);
    EXPECT_EQ(slot.Data.Count[1], 6);
}

TEST(Npd, AnUnknownModeKeepsTheMeasureType) {
    Slot slot;
    slot.Prop.Param.MeasureType = 3;
    slot.Read(Replaced(NpdText({1}), "mode,Live", "mode,Other"));
    EXPECT_EQ(slot.Prop.Param.MeasureType, 3);
    slot.Read(Replaced(NpdText({1}), "mode,Live", "mode,Real"));
    EXPECT_EQ(slot.Prop.Param.MeasureType, 2) << "the writer takes 0 and 2 alike";
    slot.Read(Replaced(NpdText({1}), "mode,Live", "mode,Separate"));
    EXPECT_EQ(slot.Prop.Param.MeasureType, 4);
}

TEST(Npd, FurtherHeaderLinesAreSkippedAndALengthBelow23SkipsNone) {
    Slot slot;
    slot.Read(Replaced(Replaced(NpdText({8, 9}), "length,23", "length,25"), "Ram Stroke",
                       "x,1\r\ny,2\r\nRam Stroke"));
    EXPECT_EQ(slot.Data.Count[1], 9);
    slot.Read(Replaced(NpdText({8, 9}), "length,23", "length,3"));
    EXPECT_EQ(slot.Data.Count[1], 9);
}

TEST(Npd, AStrokeThatIsNoNumberIsZeroAndTrailingLinesAreIgnored) {
    Slot slot;
    slot.Prop.Param.RamStroke = 9.0;
    slot.Read(Replaced(NpdText({8}), "Stroke,7.25", "Stroke,none") + "99,0,55\r\nmore\r\n");
    EXPECT_EQ(slot.Prop.Param.RamStroke, 0.0);
    EXPECT_EQ(slot.Data.DataNo, 1);
    EXPECT_EQ(slot.Data.Count[1], 0);
}

TEST(Npd, ALineWithoutANumberLeavesItsChannelAtZero) {
    Slot slot;
    slot.Data.Count[1] = 77;
    slot.Read(Replaced(NpdText({8, 9, 10}), "2,0.0000,9", "2,0.0000,-"));
    EXPECT_EQ(slot.Data.Count[1], 0);
    EXPECT_EQ(slot.Data.Count[2], 10);
}

TEST(Npd, TheLastNumberOfALineRunsToItsEndAndTheOthersToTheNextBlank) {
    Slot slot;
    slot.Read(Replaced(NpdText({8}), "PHI(deg)=4.125", "PHI(deg)= -4.5  "));
    EXPECT_EQ(slot.Prop.Param.PressTZ, -4.5);
    slot.Read(Replaced(NpdText({8}), "Y(mm)=-2.500 ", "Y(mm)=-7.5 mm, "));
    EXPECT_EQ(slot.Prop.Param.PressY, -7.5);
    EXPECT_EQ(slot.Error(Replaced(NpdText({8}), "PHI(deg)=4.125", "PHI(deg)=4.125 deg")),
              "line 19: a number behind \"=\" was expected, not \"4.125 deg\"");
    EXPECT_EQ(slot.Error(Replaced(NpdText({8}), "R(OHM)=0.600", "R(OHM) 0.600")),
              "line 22: a \"=\" with a number behind it was expected");
}

TEST(Npd, ALineWithNoCommaIsItsValueAsAWhole) {
    Slot slot;
    slot.Read(Replaced(NpdText({8, 9}), "Live time(sec),200.00", "123.5"));
    EXPECT_EQ(slot.Prop.Param.LiveTime, 123.5);
    slot.Read(Replaced(NpdText({8, 9}), "2,0.0000,9", "41"));
    EXPECT_EQ(slot.Data.Count[1], 41);
}

TEST(Npd, AHeaderValueThatIsNoNumberNamesItsLineAndPutsTheRecordBack) {
    Slot slot;
    slot.Prop.Memo = "before";
    slot.Data.Count[0] = 5;
    const std::string error = slot.Error(Replaced(NpdText({8}), "EGC1,0.030000", "EGC1,abc"));
    EXPECT_EQ(error, "line 8: a coefficient of the energy was expected, not \"abc\"");
    EXPECT_EQ(slot.Prop.Memo.Trimmed(), "before");
    EXPECT_EQ(slot.Prop.FileName.Trimmed(), "");
    EXPECT_EQ(slot.Data.Count[0], 0) << "the channels are cleared first, as told";
    EXPECT_EQ(slot.Last, 4);
}

TEST(Npd, AMissingLineIsAnErrorAndTheSpectrumHoldsWhatCameBefore) {
    Slot slot;
    std::string text = NpdText({8, 9, 10});
    text.resize(text.rfind("3,0.0000"));
    EXPECT_EQ(slot.Error(text),
              "line 29: the file ends, a line \"channel,energy,count\" was expected");
    EXPECT_EQ(slot.Data.Count[1], 9);
    EXPECT_EQ(slot.Data.DataNo, 0);
    EXPECT_EQ(slot.Error(""), "line 1: the file ends, the record length was expected");
    EXPECT_EQ(slot.Error("Record length,abc\r\n"),
              "line 1: the number of header lines was expected, not \"abc\"");
}

TEST(Npd, MoreChannelsThanThereAreIsAnErrorAtTheChannel) {
    Slot slot;
    const std::string text = NpdText(std::vector<std::int32_t>(8193, 3));
    EXPECT_EQ(slot.Error(text), "line 8219: at most 8192 channels were expected");
    EXPECT_EQ(slot.Data.Count[8191], 3);
}

TEST(Npd, ACountBeyond32BitsIsAnError) {
    Slot slot;
    EXPECT_EQ(slot.Error(Replaced(NpdText({8}), "1,0.0000,8", "1,0,3000000000")),
              "line 27: a count of at most 32 bits was expected");
    EXPECT_EQ(slot.Error(Replaced(NpdText({8}), "length, 1", "length, 40000")),
              "line 25: the number of channels was expected, not \"40000\"");
}

TEST(Npd, TheWritersLinesAreToTheLetter) {
    SpectrumData data{};
    data.DataNo = 2;
    data.Count[0] = 12;
    data.Count[1] = -3;
    PropertyRecord prop = BlankProperty();
    prop.FileName = "  AuWire";
    prop.OpName = "佐藤";
    prop.SampleName = "Au wire";
    prop.OpDate = "19990102";
    prop.OpTime = "090807";
    prop.Memo = "note";
    ParamRecord& p = prop.Param;
    p.MeasureType = 3;
    p.EgcCoef = {0.0449898, 0.03163848, -1.27181e-8};
    p.TwoTheta = 15.01459;
    p.LiveTime = 200;
    p.RealTime = 256.974;
    p.DeadTime = 22.1699;
    p.Temperature = 25;
    p.PressLoad = 68.125;
    p.RingCurrent = 99.5;
    p.IonChamber = 1;
    p.CountRate = 15967.96;
    p.PressX = 20.7;
    p.PressY = -0.25;
    p.PressTZ = 12.111;
    p.InSlitV = 0.1;
    p.CollimatorSize = 0.05;
    p.Volt = 3.14;
    p.Resistance = 0.067;
    p.RamStroke = 2.345;
    std::ostringstream out;
    WriteNpdText(out, data, prop);
    EXPECT_EQ(FromCp932(out.str()),
              "Record length,27\r\n"
              "Sample name,AuWire\r\n"
              "Operator name,佐藤\r\n"
              "Profile number,Au wire\r\n"
              "Time,1999-01-02 09:08:07\r\n"
              "Measurement mode,Live\r\n"
              "EGC0,4.49898E-002\r\n"
              "EGC1,3.16385E-002\r\n"
              "EGC2,-1.27181E-008\r\n"
              "2Theta(deg),15.0146\r\n"
              "Live time(sec),200.00\r\n"
              "Real time(sec),256.97\r\n"
              "Dead time(%),22.16990\r\n"
              "Temperature(K),298.15\r\n"
              "Press load(ton),68.13\r\n"
              "Ring status,current(mA)=99.50\r\n"
              "Beam intensity,1.00\r\n"
              "Counting rate,15967.96\r\n"
              "Press conditions, X(mm)=20.700 Y(mm)=-0.250 Z(mm)=0.000 PHI(deg)=12.111\r\n"
              "Incident slit conditions, V(mm)=0.100 H(mm)=0.000\r\n"
              "Receiving slit conditions, V(mm)=0.000 H(mm)=0.000 Collimator(mm)=0.050\r\n"
              "Heating conditions, V(V)=3.14 C(A)=0.00 P(W)=0.00 R(OHM)=0.067\r\n"
              "Comment,note" +
                  std::string(96, ' ') +
                  "\r\n"
                  "Ram Stroke,2.35\r\n"
                  ",\r\n,\r\n,\r\n"
                  "Data length, 2\r\n"
                  "Counting sec, 200.000\r\n"
                  "1,0.0766,12\r\n"
                  "2,0.1083,-3\r\n");
}

TEST(Npd, TheModeIsWrittenByItsWordAndTheSecondsFollowIt) {
    const struct {
        std::int16_t Mode;
        const char* Word;
        const char* Seconds;
    } cases[] = {{0, "Real", "300.500"}, {1, "Live", "200.250"},     {2, "Real", "300.500"},
                 {3, "Live", "200.250"}, {4, "Separate", "300.500"}, {7, "Real", "300.500"}};
    for (const auto& c : cases) {
        PropertyRecord prop = BlankProperty();
        prop.Param.MeasureType = c.Mode;
        prop.Param.LiveTime = 200.25;
        prop.Param.RealTime = 300.5;
        std::ostringstream out;
        WriteNpdText(out, SpectrumData{}, prop);
        EXPECT_NE(out.str().find("Measurement mode," + std::string(c.Word) + "\r\n"),
                  std::string::npos)
            << c.Mode;
        EXPECT_NE(out.str().find("Counting sec, " + std::string(c.Seconds) + "\r\n"),
                  std::string::npos)
            << c.Mode;
    }
}

TEST(Npd, AFileOfThisWriterReadsBackWithItsSettledMismatch) {
    SpectrumData data{};
    data.DataNo = 3;
    data.Count = {};
    data.Count[0] = 1;
    data.Count[1] = 20;
    data.Count[2] = 300;
    PropertyRecord prop = BlankProperty();
    prop.OpDate = "19990102";
    prop.OpTime = "090807";
    prop.Param.RealTime = 2.4;
    prop.Param.RamStroke = 9;
    std::ostringstream out;
    WriteNpdText(out, data, prop);
    Slot slot;
    slot.Read(out.str());
    EXPECT_EQ(slot.Prop.Param.RamStroke, 3.0) << "it receives the channel count";
    EXPECT_EQ(slot.Data.DataNo, 2) << "the rounded counting seconds";
    EXPECT_EQ(slot.Data.Count[0], 20) << "the first data line is dropped";
    EXPECT_EQ(slot.Data.Count[1], 300);
}

TEST(Npd, LineBreaksInATextDoNotBreakTheLinesOfTheFile) {
    SpectrumData data{};
    PropertyRecord prop = BlankProperty();
    prop.SampleName = "two\r\nlines";
    std::ostringstream out;
    WriteNpdText(out, data, prop);
    EXPECT_NE(out.str().find("Profile number,two  lines\r\n"), std::string::npos);
}

TEST(Npd, SavingAsksInItsWords) {
    TempFolder folder;
    SpectrumData data{};
    const PropertyRecord prop = BlankProperty();
    const std::string path = folder.Write("a.npd", "old");
    std::string asked;
    FileTalk talk;
    talk.ask = [&](std::string_view question) {
        asked = question;
        return false;
    };
    EXPECT_EQ(SaveNpd(path, data, prop, talk), 0);
    EXPECT_EQ(asked, "File already exist. Replace?(NPD)");
    EXPECT_EQ(BytesOf(path), "old");
    talk.ask = [](std::string_view) { return true; };
    EXPECT_EQ(SaveNpd(path, data, prop, talk), -1);
    EXPECT_EQ(BytesOf(path).substr(0, 16), "Record length,27");
}
