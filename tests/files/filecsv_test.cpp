// The export .csv to the letter.
#include "support/spectra.h"
#include "support/world.h"

#include "files/extensions.h"
#include "files/filevael.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>

using namespace vael;

namespace {

std::string Written(const SpectrumData& data, const PropertyRecord& prop) {
    std::ostringstream out;
    WriteCsvText(out, data, prop);
    return out.str();
}

}  // namespace

TEST(Csv, TheWritersLinesAreToTheLetter) {
    SpectrumData data{};
    data.DataNo = 3;
    data.Count[0] = 12;
    data.Count[1] = -3;
    data.Count[2] = 2000000000;
    PropertyRecord prop = BlankProperty();
    ParamRecord& p = prop.Param;
    p.PressX = 20.7;
    p.PressY = -0.25;
    p.PressZ = 12345.6789;
    p.PressLoad = 68.125;
    p.Pressure = 8.0004;
    p.Temperature = 537.0;
    p.LiveTime = 200.005;
    p.EgcCoef = {0.05, 0.0316384, 0.5};
    p.TwoTheta = 15.014594;
    EXPECT_EQ(Written(data, prop),
              "Press X,20.700, \r\n"
              "Press Y,-0.250, \r\n"
              "Press Z,12345.679, \r\n"
              "Press Load,68.125, \r\n"
              "Pressure,8.000, \r\n"
              "Temperature,537.000, \r\n"
              "Live Time,200.01, \r\n"
              "EGC(0),0.050000, \r\n"
              "EGC(1),0.031638, \r\n"
              "2\x83\xc6,15.01459, \r\n"  // code page 932 of the Greek letter
              "\r\n"
              "\r\n"
              "3, , \r\n"
              "Channel,Energy,Count\r\n"
              "1,0.582,12\r\n"  // 0.05 + 0.0316384 + 0.5: the third coefficient counts
              "2,2.113,-3\r\n"
              "3,4.645,2000000000\r\n");
}

TEST(Csv, ZeroChannelsWriteTheFourteenLinesAndNoData) {
    SpectrumData data{};
    data.Count[0] = 5;
    for (const int channels : {0, -4}) {
        data.DataNo = static_cast<std::int16_t>(channels);
        const std::string text = Written(data, BlankProperty());
        EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 14);
        EXPECT_NE(text.find("\r\n\r\n\r\n" + std::to_string(channels) + ", , \r\n"),
                  std::string::npos);
        EXPECT_TRUE(text.ends_with("Channel,Energy,Count\r\n"));
    }
}

TEST(Csv, AllChannelsAreThoseOfASecondWriter) {
    SpectrumData data{};
    data.DataNo = 8192;
    PropertyRecord prop = BlankProperty();
    prop.Param.EgcCoef = {0.0, 0.25, 0.0};  // exact: no rounding is in question
    std::string rows;
    for (int i = 0; i < 8192; ++i) {
        data.Count[static_cast<std::size_t>(i)] = i * 1000 - 4000;
        char row[64];
        const int quarters = i + 1;
        std::snprintf(row, sizeof row, "%d,%d.%03d,%d\r\n", i + 1, quarters / 4, quarters % 4 * 250,
                      i * 1000 - 4000);
        rows += row;
    }
    const std::string text = Written(data, prop);
    EXPECT_TRUE(text.ends_with("Channel,Energy,Count\r\n" + rows));
}

TEST(Csv, ReplacesWithoutAQuestion) {
    TempFolder folder;
    const std::string path = folder.Write("a.csv", std::string(50000, 'z'));
    bool asked = false;
    FileTalk talk;
    talk.ask = [&](std::string_view) { return asked = true; };
    EXPECT_EQ(SaveCsv(path, SpectrumData{}, BlankProperty(), talk), -1);
    EXPECT_FALSE(asked);
    EXPECT_EQ(BytesOf(path), Written(SpectrumData{}, BlankProperty()));
}

TEST(Csv, AnErrorIsSaidInItsWordsAndLogged) {
    TempFolder folder;
    std::string said;
    std::string logged;
    FileTalk talk;
    talk.say = [&](std::string_view text) { said = text; };
    talk.log = [&](std::string_view line) { logged = line; };
    const std::string path = folder.Path("no folder/a.csv");
    EXPECT_EQ(SaveCsv(path, SpectrumData{}, BlankProperty(), talk), 0);
    EXPECT_EQ(said, "CSV File Write Error");
    EXPECT_EQ(logged.rfind(path + ": ", 0), 0u) << logged;
    EXPECT_EQ(KindOf("a.csv")->Read, nullptr) << "there is no reader";
}
