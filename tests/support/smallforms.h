// A small file of every form that is read, made by hand: the counts 5, -6, 7.
#pragma once

#include "support/image.h"
#include "support/spectra.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vael {

/// An .npd text without comment and stroke, and with its own length told: what the reader of .gsa
/// takes.
inline std::string GsaText(const std::vector<std::int32_t>& counts, int header = 22) {
    std::string text = NpdText(counts, "AuWire", 0.25, 0.0316, 15.0146);
    const auto comment = text.find("Comment,");
    const auto length = text.find("Data length");
    text.erase(comment, length - comment);
    return "Record length," + std::to_string(header) + text.substr(text.find("\r\n"));
}

struct SmallForm {
    std::string Name;
    std::string Bytes;
    int Channels;
    std::vector<std::int32_t> First;  // the first counts as they are read
};

inline std::vector<SmallForm> SmallForms() {
    const std::vector<std::int32_t> counts{5, -6, 7};
    Image native(1990);
    native.Text(4, 64, "wire").Put(1988, std::int16_t{3}).Put(1990, counts[0]);
    native.Put(1994, counts[1]).Put(1998, counts[2]);
    Image chn(32);
    chn.Put(30, std::int16_t{3}).Put(32, counts[0]).Put(36, counts[1]).Put(40, counts[2]);
    chn.Put(44, std::int32_t{0}).Put(48, 0.0F).Put(52, 0.5F);
    Image cnf(25600 + 4 * 4096);  // whose second value stands in channels 1 and 2
    cnf.Put(11, std::uint8_t{164}).Put(25604, counts[0]).Put(25608, counts[1]);
    return {{"a.npd", NpdText(counts), 3, counts},
            {"B.NPD", NpdText(counts), 3, counts},
            {"c.rpt", "3\r\n5 -6 7\r\nwire\r\n0\r\n0\r\n0\r\n0\r\n0\r\n", 3, counts},
            {"d.cnf", cnf.Bytes(), 4096, {5, 5, -6}},
            {"e.xbm", native.Bytes(), 3, counts},
            {"f.raw", "1,5\r\n2,-6\r\n3,7\r\n", 4096, counts},
            {"g.xba", native.Bytes(), 3, counts},
            {"h.chn", chn.Bytes(), 3, counts},
            {"i.gsa", GsaText(counts), 3, counts},
            {"run.007", native.Bytes(), 3, counts}};
}

}  // namespace vael
