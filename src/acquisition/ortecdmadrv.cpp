// OrtecDmaDrv: the command words of a multichannel buffer, for an acquisition front end to come.
#include "acquisition/ortecdmadrv.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace vael {
namespace {

template <std::size_t N, class Kind>
std::string_view WordOf(const std::array<std::string_view, N>& words, Kind kind) {
    return words.at(static_cast<std::size_t>(kind));
}

}  // namespace

std::string_view McbWord(McbQuery query) {
    static constexpr std::array<std::string_view, 6> WORDS{
        "SHOW_GAIN_CONVERSION", "SHOW_ACTIVE", "SHOW_TRUE_PRESET",
        "SHOW_LIVE_PRESET",     "SHOW_TRUE",   "SHOW_LIVE"};
    return WordOf(WORDS, query);
}

std::string_view McbWord(McbSetting setting) {
    static constexpr std::array<std::string_view, 3> WORDS{"SET_GAIN_CONVERSION ",
                                                           "SET_TRUE_PRESET ", "SET_LIVE_PRESET "};
    return WordOf(WORDS, setting);
}

std::string_view McbWord(McbAction action) {
    static constexpr std::array<std::string_view, 4> WORDS{"CLEAR", "START", "STOP", "RESET"};
    return WordOf(WORDS, action);
}

OrtecDmaDrv::OrtecDmaDrv(McbTransport& wire, Talk talk) : wire_(wire), talk_(std::move(talk)) {}

int OrtecDmaDrv::Command(const std::string& words, std::string& reply) {
    int code = wire_.Send(words);
    if (code == MCB_DONE) code = wire_.Receive(reply);
    talk_.log("OrtecDmaCommand=\"" + words + "\"   RetCode=" + std::to_string(code));
    return code;
}

bool OrtecDmaDrv::Went(int code) {
    if (code == MCB_DONE) return true;
    talk_.say(code == MCB_SILENT ? "MCB No Respons Error" : "No MCA Device. or MAESTORO is Exist.",
              "");
    return false;
}

std::optional<std::string> OrtecDmaDrv::Ask(McbQuery query) {
    std::string reply;
    if (!Went(Command(std::string(McbWord(query)), reply))) return std::nullopt;
    return reply;
}

bool OrtecDmaDrv::Set(McbSetting setting, std::string_view value) {
    if (value.empty() || value.find_first_of("\r\n") != std::string_view::npos) return false;
    std::string reply;
    return Went(Command(std::string(McbWord(setting)) + std::string(value), reply));
}

bool OrtecDmaDrv::Do(McbAction action) {
    std::string reply;
    return Went(Command(std::string(McbWord(action)), reply));
}

bool OrtecDmaDrv::ReadSpectrum(SpectrumData& data, int channels) {
    if (channels < 1 || channels > MAX_CHANNELS) return false;
    std::vector<std::int32_t> counts(static_cast<std::size_t>(channels));
    if (!Went(wire_.ReceiveSpectrum(counts))) return false;
    std::copy(counts.begin(), counts.end(), data.Count.begin());
    data.DataNo = static_cast<std::int16_t>(channels);
    return true;
}

}  // namespace vael
