// .chn against images laid out by offset.
#include "support/image.h"
#include "support/spectra.h"
#include "support/world.h"

#include "core/fault.h"
#include "files/extensions.h"
#include "files/fileortec.h"

#include <gtest/gtest.h>

#include <numeric>
#include <sstream>

using namespace vael;

namespace {

struct Slot {
    SpectrumData Data{};
    PropertyRecord Prop = BlankProperty();
    PeakTable Peaks{};
    std::int16_t Last = 0;
    [[nodiscard]] ReadTarget Target() { return {Data, Prop, Last}; }
    std::string Read(const std::string& bytes) {
        std::istringstream in(bytes);
        std::string note;
        ReadChnBody(in, Target(), &note);
        return note;
    }
};

/// A file with counts i * 3 - 50, negative ones among them, and a calibration.
Image Chn(int channels) {
    Image image(32);
    image.Put(0, std::int16_t{-1}).Text(16, 12, "30MAY85 1908");
    image.Put(30, static_cast<std::int16_t>(channels));
    const auto end = 32 + 4 * static_cast<std::size_t>(channels);
    for (int i = 0; i < channels; ++i)
        image.Put(32 + 4 * static_cast<std::size_t>(i), std::int32_t{i * 3 - 50});
    image.Put(end, std::int16_t{-102}).Put(end + 2, std::int16_t{7});
    image.Put(end + 4, 1.25F).Put(end + 8, 0.1F);
    return image;
}

}  // namespace

TEST(Chn, CountsAndCalibrationAreReadFromTheirOffsets) {
    for (const int channels : {1, 100, 8192}) {
        Slot slot;
        slot.Prop.Param.EgcCoef[2] = 5.0;
        EXPECT_EQ(slot.Read(Chn(channels).Bytes()), "");
        EXPECT_EQ(slot.Data.DataNo, channels);
        for (int i = 0; i < channels; ++i) ASSERT_EQ(Item(slot.Data.Count, i), i * 3 - 50);
        EXPECT_EQ(slot.Prop.Param.EgcCoef[0], 1.25);
        EXPECT_EQ(slot.Prop.Param.EgcCoef[1], 0.100000001490116119384765625)
            << "the 4-byte float widened";
        EXPECT_EQ(slot.Prop.Param.EgcCoef[2], 0.0);
    }
}

TEST(Chn, MoreThan8192ChannelsLoadThatManyAndTheCalibrationIsStillFound) {
    Slot slot;
    const std::string whole = Chn(16384).Bytes();
    EXPECT_EQ(slot.Read(whole), "of its 16384 channels the first 8192 are read");
    EXPECT_EQ(slot.Data.DataNo, 8192);
    EXPECT_EQ(slot.Data.Count[8191], 8191 * 3 - 50);
    EXPECT_EQ(slot.Prop.Param.EgcCoef[0], 1.25);
    EXPECT_EQ(
        slot.Read(whole.substr(0, 60000)),
        "of its 16384 channels the first 8192 are read; the file ends at offset 60000, before "
        "its data do; what is missing reads as 0");
}

TEST(Chn, NoChannelsReadTheTrailerBehindTheHeader) {
    Slot slot;
    slot.Data.Count[0] = 9;
    slot.Data.DataNo = 5;
    EXPECT_EQ(slot.Read(Chn(0).Bytes()), "");
    EXPECT_EQ(slot.Data.DataNo, 0);
    EXPECT_EQ(slot.Data.Count[0], 9) << "channels beyond N are left";
    EXPECT_EQ(slot.Prop.Param.EgcCoef[0], 1.25);
}

TEST(Chn, NothingElseOfTheRecordChanges) {
    Slot slot;
    slot.Prop.FileName = "kept";
    slot.Prop.OpDate = "19990102";
    slot.Prop.SourceType = 3;
    slot.Prop.Param.LiveTime = 4.5;
    slot.Last = 3;
    PropertyRecord before = slot.Prop;
    slot.Read(Chn(3).Bytes());
    before.Param.EgcCoef = {1.25, double{0.1F}, 0.0};
    std::ostringstream was;
    std::ostringstream is;
    WriteXbmBody(was, SpectrumData{}, before);
    WriteXbmBody(is, SpectrumData{}, slot.Prop);
    EXPECT_TRUE(was.str() == is.str());
    EXPECT_EQ(slot.Last, 3);
}

TEST(Chn, CutOffAnywhereTheRestReadsAsZeroAndIsTold) {
    const std::string whole = Chn(3).Bytes();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        Slot slot;
        const std::string note = slot.Read(whole.substr(0, size));
        EXPECT_EQ(note, "the file ends at offset " + std::to_string(size) +
                            ", before its data do; what is missing reads as 0");
        EXPECT_EQ(slot.Data.DataNo, size < 32 ? 0 : 3);
        EXPECT_EQ(slot.Data.Count[0], size < 36 ? 0 : -50);
        EXPECT_EQ(slot.Prop.Param.EgcCoef[0], size < 52 ? 0.0 : 1.25);
        EXPECT_EQ(slot.Prop.Param.EgcCoef[1], 0.0);
    }
}

TEST(Chn, ANegativeNumberOfChannelsIsRefusedAndNothingChanges) {
    TempFolder folder;
    Image image = Chn(2);
    image.Put(30, std::int16_t{-2});
    const std::string path = folder.Write("a.chn", image.Bytes());
    Slot slot;
    slot.Data.DataNo = 4;
    slot.Prop.Param.EgcCoef[0] = 9.0;
    EXPECT_THROW((void)LoadChn(path, slot.Target()), Fault) << "it leaves faults to its caller";
    std::string said;
    FileTalk talk;
    talk.log = [&](std::string_view line) { said = line; };
    EXPECT_EQ(ReadByExtension(path, slot.Target(), slot.Peaks, talk), 0);
    EXPECT_EQ(said, path + ": offset 30: a number of channels from 0 on was expected, not -2.");
    EXPECT_EQ(slot.Data.DataNo, 4);
    EXPECT_EQ(slot.Prop.Param.EgcCoef[0], 9.0);
}

TEST(Chn, IsReachedByItsExtensionInSmallAndCapitalLetters) {
    TempFolder folder;
    for (const char* name : {"a.chn", "B.CHN"}) {
        Slot slot;
        EXPECT_EQ(
            ReadByExtension(folder.Write(name, Chn(5).Bytes()), slot.Target(), slot.Peaks, {}), -1);
        EXPECT_EQ(slot.Data.DataNo, 5);
    }
    EXPECT_EQ(KindOf("a.chn")->Write, nullptr);
}

TEST(Chn, AnAbsentFileAndAFolderAreRefusedWithTheirReason) {
    TempFolder folder;
    std::filesystem::create_directory(folder.Path("d.chn"));
    Slot slot;
    std::string said;
    FileTalk talk;
    talk.log = [&](std::string_view line) { said = line; };
    EXPECT_EQ(ReadByExtension(folder.Path("no.chn"), slot.Target(), slot.Peaks, talk), 0);
    EXPECT_NE(said.find("there is no such file"), std::string::npos) << said;
    EXPECT_EQ(ReadByExtension(folder.Path("d.chn"), slot.Target(), slot.Peaks, talk), 0);
    EXPECT_NE(said.find("it is a folder"), std::string::npos) << said;
}

TEST(Chn, AMeasuredFileHasItsKnownCountsAndCalibration) {
    const std::string path = Measured("8H4275.chn");
    if (path.empty()) GTEST_SKIP() << "the measured spectra are not here";
    Slot slot;
    std::string said;
    FileTalk talk;
    talk.log = [&](std::string_view line) { said = line; };
    ASSERT_EQ(LoadChn(path, slot.Target(), talk), -1);
    EXPECT_EQ(said, "");
    EXPECT_EQ(slot.Data.DataNo, 8192);
    EXPECT_EQ(std::accumulate(slot.Data.Count.begin(), slot.Data.Count.end(), std::int64_t{0}),
              50183753);
    EXPECT_NEAR(slot.Prop.Param.EgcCoef[0], 1.48482, 5e-6);
    EXPECT_NEAR(slot.Prop.Param.EgcCoef[1], 0.226084232, 5e-10);
}

TEST(Extensions, AForeignTextUnderANumberIsRefusedOrReadsAsNothingWithAReason) {
    const std::string path = Measured("foreign_text.001");
    if (path.empty()) GTEST_SKIP() << "the measured spectra are not here";
    Slot slot;
    std::string said;
    FileTalk talk;
    talk.log = [&](std::string_view line) { said = line; };
    const std::int16_t done = ReadByExtension(path, slot.Target(), slot.Peaks, talk);
    EXPECT_TRUE(done == 0 || slot.Data.DataNo <= 0) << slot.Data.DataNo;
    EXPECT_EQ(said.rfind(path + ": ", 0), 0u) << said;
}
