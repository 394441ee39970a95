// OrtecDmaDrv: the command words of a multichannel buffer, for an acquisition front end to come.
// Nothing of the workbench calls it: spectra are read from files.
#pragma once

#include "core/records.h"
#include "core/talk.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vael {

/// Return codes of a transport, and of what is built on it.
inline constexpr int MCB_DONE = 0;
inline constexpr int MCB_NO_DEVICE = -1;  // the analyser cannot be reached
inline constexpr int MCB_SILENT = -2;     // it was reached and did not answer

/// What the wire to the analyser has to do. The four functions of the port library (`OrtecOutmb`,
/// `OrtecOutpb`, `OrtecInmb`, `OrtecRecvSpectData`) have no settled arguments: an adapter of theirs
/// implements this, and so does the simulated analyser of the tests.
class McbTransport {
public:
    virtual ~McbTransport() = default;
    /// Sends a command as text, without a line end. A return code.
    virtual int Send(std::string_view command) = 0;
    /// The answer to the command sent last, as text. A return code.
    virtual int Receive(std::string& reply) = 0;
    /// The first `counts.size()` channels of the spectrum. A return code.
    virtual int ReceiveSpectrum(std::span<std::int32_t> counts) = 0;
};

enum class McbQuery { GainConversion, Active, TruePreset, LivePreset, True, Live };
enum class McbSetting { GainConversion, TruePreset, LivePreset };
enum class McbAction { Clear, Start, Stop, Reset };

/// The word of a command as it is sent; that of a setting ends in a blank, its value follows.
[[nodiscard]] std::string_view McbWord(McbQuery query);
[[nodiscard]] std::string_view McbWord(McbSetting setting);
[[nodiscard]] std::string_view McbWord(McbAction action);

/// Speaks with one analyser. Each command is one trace line of the log,
/// `OrtecDmaCommand="START"   RetCode=0`; a failure is also said in its words: "No MCA Device. or
/// MAESTORO is Exist." for an analyser that cannot be reached, "MCB No Respons Error" for a silent
/// one. Both voices are the caller's `talk`.
class OrtecDmaDrv {
public:
    explicit OrtecDmaDrv(McbTransport& wire, Talk talk = {});
    /// The reply as text; what it means is the caller's matter. Nothing after a failure.
    std::optional<std::string> Ask(McbQuery query);
    /// Sends the word with `value` behind it. False after a failure, and for a value that is empty
    /// or holds a line break, of which nothing is sent.
    bool Set(McbSetting setting, std::string_view value);
    bool Do(McbAction action);
    /// The first `channels` channels into `data`, which is untouched after a failure. False also
    /// for a number of channels outside 1 to 8192.
    bool ReadSpectrum(SpectrumData& data, int channels);

private:
    int Command(const std::string& words, std::string& reply);
    bool Went(int code);
    McbTransport& wire_;
    Talk talk_;
};

}  // namespace vael
