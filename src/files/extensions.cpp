// The extension table: which file is read and written by what.
#include "files/extensions.h"

#include "core/text.h"
#include "files/filedac.h"
#include "files/filegenie.h"
#include "files/filegsa.h"
#include "files/filenpd.h"
#include "files/fileortec.h"
#include "files/trip.h"

#include <algorithm>

namespace vael {
namespace {

std::int16_t ReadXbm(const std::string& path, ReadTarget target, PeakTable&, const FileTalk& talk) {
    return LoadXbm(path, target, talk);
}

std::int16_t ReadNpd(const std::string& path, ReadTarget target, PeakTable&, const FileTalk& talk) {
    return LoadNpd(path, target, talk);
}

std::int16_t ReadCnf(const std::string& path, ReadTarget target, PeakTable&, const FileTalk& talk) {
    return LoadCnf(path, target, talk);
}

std::int16_t ReadRpt(const std::string& path, ReadTarget target, PeakTable&, const FileTalk& talk) {
    return LoadRpt(path, target, talk);
}

std::int16_t ReadRaw(const std::string& path, ReadTarget target, PeakTable&, const FileTalk& talk) {
    return LoadDac(path, target, talk);
}

std::int16_t WriteXbm(const std::string& path, const WriteSource& source, const FileTalk& talk) {
    return SaveXbm(path, source.Data, source.Prop, talk);
}

std::int16_t WriteXba(const std::string& path, const WriteSource& source, const FileTalk& talk) {
    return SaveXba(path, source.Data, source.Prop, source.Peaks, talk);
}

std::int16_t WriteXta(const std::string& path, const WriteSource& source, const FileTalk& talk) {
    return SaveXta(path, source.Data, source.Prop, source.Peaks, talk);
}

std::int16_t WriteNpd(const std::string& path, const WriteSource& source, const FileTalk& talk) {
    return SaveNpd(path, source.Data, source.Prop, talk);
}

std::int16_t WriteRpt(const std::string& path, const WriteSource& source, const FileTalk& talk) {
    return SaveRpt(path, source.Data, source.Prop, talk);
}

/// LoadChn leaves its faults to its caller, which is here.
std::int16_t ReadChn(const std::string& path, ReadTarget target, PeakTable&, const FileTalk& talk) {
    try {
        return LoadChn(path, target, talk);
    } catch (const Fault& fault) {
        LogFault(path, fault, talk);
        return FALSE_WORD;
    }
}

std::int16_t ReadGsa(const std::string& path, ReadTarget target, PeakTable&, const FileTalk& talk) {
    return LoadGsa(path, target, talk);
}

std::int16_t WriteGsa(const std::string& path, const WriteSource& source, const FileTalk& talk) {
    return SaveGsa(path, source.Data, source.Prop, talk);
}

std::int16_t WriteCsv(const std::string& path, const WriteSource& source, const FileTalk& talk) {
    return SaveCsv(path, source.Data, source.Prop, talk);
}

constexpr std::string_view DIGITS = "###";  // stands for them, and is no extension itself

constexpr auto KINDS =
    std::to_array<FileKind>({{DIGITS.data(), "native binary counts", ReadXbm, nullptr},
                             {"chn", "Ortec CHN", ReadChn, nullptr},
                             {"cnf", "Genie CNF", ReadCnf, nullptr},
                             {"rpt", "Genie report", ReadRpt, WriteRpt},
                             {"xbm", "native binary", ReadXbm, WriteXbm},
                             {"xba", "native binary with peak table", LoadXba, WriteXba},
                             {"xta", "native text with peak table", nullptr, WriteXta},
                             {"npd", "Nippon high Pressure Data", ReadNpd, WriteNpd},
                             {"raw", "DAC raw", ReadRaw, nullptr},
                             {"gsa", "GSAS", ReadGsa, WriteGsa},
                             {"csv", "spectrum CSV", nullptr, WriteCsv}});

}  // namespace

std::span<const FileKind> FileKinds() { return KINDS; }

const FileKind* KindOf(const std::string& path) {
    const std::string own = LowerCase(SplitFilePath(path).Ext);
    const bool digits = IsAllDigits(own);
    const auto kind = std::find_if(KINDS.begin(), KINDS.end(), [&](const FileKind& k) {
        return k.Extension == DIGITS ? digits : own == k.Extension;
    });
    return kind == KINDS.end() ? nullptr : &*kind;
}

std::int16_t ReadByExtension(const std::string& path, ReadTarget target, PeakTable& peaks,
                             const FileTalk& talk) {
    const FileKind* kind = KindOf(path);
    if (kind != nullptr && kind->Read != nullptr) return kind->Read(path, target, peaks, talk);
    std::string known;
    for (const FileKind& k : KINDS)
        if (k.Read != nullptr)
            known += (known.empty() ? "" : ", ") +
                     std::string(k.Extension == DIGITS ? "digits" : k.Extension);
    talk.log(path + ": an extension that can be read was expected (" + known + "), not \"" +
             LowerCase(SplitFilePath(path).Ext) + "\".");
    return FALSE_WORD;
}

}  // namespace vael
