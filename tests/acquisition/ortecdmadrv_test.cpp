// The analyser's words, spoken to a simulated analyser that knows them.
#include "acquisition/ortecdmadrv.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

using namespace vael;

namespace {

/// A multichannel buffer of its own: it counts while it is active, one count a channel and query.
class SimulatedAnalyser : public McbTransport {
public:
    int Fails = MCB_DONE;  // the code of every call from now on
    std::vector<std::string> Heard;

    int Send(std::string_view command) override {
        if (Fails == MCB_NO_DEVICE) return Fails;
        Heard.emplace_back(command);
        const std::string words(command);
        const auto blank = words.find(' ');
        if (blank != std::string::npos)
            values_[words.substr(4, blank - 4)] = words.substr(blank + 1);
        if (words == "START") active_ = true;
        if (words == "STOP" || words == "RESET") active_ = false;
        if (words == "CLEAR" || words == "RESET") counted_ = 0;
        reply_ = words.starts_with("SHOW_") ? Shown(words.substr(5)) : "";
        if (active_) ++counted_;
        return MCB_DONE;
    }
    int Receive(std::string& reply) override {
        if (Fails == MCB_DONE) reply = reply_;
        return Fails;
    }
    int ReceiveSpectrum(std::span<std::int32_t> counts) override {
        if (Fails != MCB_DONE) return Fails;
        for (std::size_t i = 0; i < counts.size(); ++i)
            counts[i] = counted_ * static_cast<std::int32_t>(i + 1);
        return MCB_DONE;
    }

private:
    std::string Shown(const std::string& what) {
        if (what == "ACTIVE") return active_ ? "1" : "0";
        if (what == "TRUE" || what == "LIVE") return std::to_string(counted_);
        return values_[what];
    }
    std::map<std::string, std::string> values_;
    std::string reply_;
    std::int32_t counted_ = 0;
    bool active_ = false;
};

struct Bench {
    SimulatedAnalyser Wire;
    std::vector<std::string> Said;
    std::vector<std::string> Logged;
    OrtecDmaDrv Driver{Wire, Voice()};

    Talk Voice() {
        Talk talk;
        talk.say = [this](std::string_view text, std::string_view) { Said.emplace_back(text); };
        talk.log = [this](std::string_view line) { Logged.emplace_back(line); };
        return talk;
    }
};

}  // namespace

TEST(OrtecDmaDrv, SpeaksTheCommandWordsToTheLetter) {
    Bench b;
    for (const auto query : {McbQuery::GainConversion, McbQuery::Active, McbQuery::TruePreset,
                             McbQuery::LivePreset, McbQuery::True, McbQuery::Live})
        EXPECT_TRUE(b.Driver.Ask(query));
    EXPECT_TRUE(b.Driver.Set(McbSetting::GainConversion, "4096"));
    EXPECT_TRUE(b.Driver.Set(McbSetting::TruePreset, "600"));
    EXPECT_TRUE(b.Driver.Set(McbSetting::LivePreset, "300"));
    for (const auto action :
         {McbAction::Clear, McbAction::Start, McbAction::Stop, McbAction::Reset})
        EXPECT_TRUE(b.Driver.Do(action));
    EXPECT_EQ(b.Wire.Heard,
              (std::vector<std::string>{"SHOW_GAIN_CONVERSION", "SHOW_ACTIVE", "SHOW_TRUE_PRESET",
                                        "SHOW_LIVE_PRESET", "SHOW_TRUE", "SHOW_LIVE",
                                        "SET_GAIN_CONVERSION 4096", "SET_TRUE_PRESET 600",
                                        "SET_LIVE_PRESET 300", "CLEAR", "START", "STOP", "RESET"}));
    EXPECT_TRUE(b.Said.empty());
}

TEST(OrtecDmaDrv, RepliesComeAsTheirText) {
    Bench b;
    b.Driver.Set(McbSetting::LivePreset, "300");
    EXPECT_EQ(b.Driver.Ask(McbQuery::LivePreset), "300");
    EXPECT_EQ(b.Driver.Ask(McbQuery::Active), "0");
    b.Driver.Do(McbAction::Start);
    EXPECT_EQ(b.Driver.Ask(McbQuery::Active), "1");
    b.Driver.Do(McbAction::Stop);
    EXPECT_EQ(b.Driver.Ask(McbQuery::Active), "0");
}

TEST(OrtecDmaDrv, EachCommandIsATraceLineWithItsReturnCode) {
    Bench b;
    b.Driver.Do(McbAction::Start);
    b.Wire.Fails = MCB_SILENT;
    b.Driver.Set(McbSetting::TruePreset, "600");
    EXPECT_EQ(b.Logged,
              (std::vector<std::string>{"OrtecDmaCommand=\"START\"   RetCode=0",
                                        "OrtecDmaCommand=\"SET_TRUE_PRESET 600\"   RetCode=-2"}));
}

TEST(OrtecDmaDrv, AnAnalyserThatIsAwayOrSilentIsSaidInItsWords) {
    Bench b;
    b.Wire.Fails = MCB_NO_DEVICE;
    EXPECT_FALSE(b.Driver.Do(McbAction::Start));
    EXPECT_EQ(b.Said.back(), "No MCA Device. or MAESTORO is Exist.");
    b.Wire.Fails = MCB_SILENT;
    EXPECT_EQ(b.Driver.Ask(McbQuery::Live), std::nullopt);
    EXPECT_EQ(b.Said.back(), "MCB No Respons Error");
    EXPECT_EQ(b.Said.size(), 2U);
}

TEST(OrtecDmaDrv, AValueThatWouldBreakTheLineIsNotSent) {
    Bench b;
    EXPECT_FALSE(b.Driver.Set(McbSetting::TruePreset, ""));
    EXPECT_FALSE(b.Driver.Set(McbSetting::TruePreset, "600\r\nSTOP"));
    EXPECT_TRUE(b.Wire.Heard.empty());
    EXPECT_TRUE(b.Logged.empty());
}

TEST(OrtecDmaDrv, ASpectrumComesWholeOrNotAtAll) {
    Bench b;
    const auto data = std::make_unique<SpectrumData>();
    b.Driver.Do(McbAction::Start);
    ASSERT_TRUE(b.Driver.ReadSpectrum(*data, 8192));
    EXPECT_EQ(data->DataNo, 8192);
    EXPECT_EQ(data->Count[0], 1);
    EXPECT_EQ(data->Count[8191], 8192);

    data->DataNo = 7;
    for (const int channels : {0, -1, 8193}) EXPECT_FALSE(b.Driver.ReadSpectrum(*data, channels));
    b.Wire.Fails = MCB_NO_DEVICE;
    EXPECT_FALSE(b.Driver.ReadSpectrum(*data, 4096));
    EXPECT_EQ(data->DataNo, 7);
    EXPECT_EQ(data->Count[8191], 8192);
    EXPECT_EQ(b.Said.back(), "No MCA Device. or MAESTORO is Exist.");
}
