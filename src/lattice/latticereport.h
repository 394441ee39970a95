// The report of a lattice calculation that "Data Save" writes.
#pragma once

#include "lattice/latticelog.h"

namespace vael {

/// Where it goes, below the program's folder.
inline constexpr const char* LATTICE_REPORT_FOLDER = "CORVINE";
inline constexpr const char* LATTICE_REPORT_FILE = "CORVINE/LatticeFit.csv";

/// The whole file, UTF-8. Its system code is empty for the systems other than cubic, hexagonal and
/// triclinic, and its scale line says JAMIESON for every scale; both are kept so.
[[nodiscard]] std::string LatticeReportText(const PropertyRecord& property,
                                            const std::vector<LatticePeak>& peaks,
                                            const LatticeReport& report);

}  // namespace vael
