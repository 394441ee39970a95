// Results as text: JSON, CSV, a table for people, and the peak list of a file.
#pragma once

#include "batch/options.h"
#include "batch/road.h"

#include <string>
#include <vector>

namespace vael {

/// One JSON object, numbers in the shortest form that reads back to the same value.
[[nodiscard]] std::string JsonObject(const RoadResult& result);
[[nodiscard]] std::string CsvHead();
[[nodiscard]] std::string CsvRow(const RoadResult& result);
/// Cells of the table: file, status, peaks, used, cell, volume, V/V0, pressure, message.
[[nodiscard]] std::vector<std::string> TableCells(const RoadResult& result);
/// Cells aligned into lines, with a head.
[[nodiscard]] std::string TableText(const std::vector<std::vector<std::string>>& rows);
/// The peak list of one file as CSV.
[[nodiscard]] std::string PeakCsv(const RoadResult& result);

/// What a worker hands to its parent, as one block of bytes, and back.
[[nodiscard]] std::string Pack(const std::vector<std::string>& texts);
[[nodiscard]] std::vector<std::string> Unpack(const std::string& bytes);

}  // namespace vael
