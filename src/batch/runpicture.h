// The picture of a run: pressure, temperature, volume ratio and cell against file number or time.
#pragma once

#include <istream>
#include <string>

namespace vael {

enum class RunAxis { Number, Time };

/// A page as SVG, from the table of a run, which is read twice from its beginning and never held:
/// what is kept is one cell for each quarter of a point across the page, so that the memory does
/// not grow with the rows. A row alone in its cell is a dot with its error bar; rows that share one
/// are drawn as the span that they cover. A panel is drawn where its column holds a number; b and c
/// only where they differ from a. Numbers of which there is no file, and spaces of more than five
/// times the mean one on the axis of time, are shaded; files without a result have a cross below.
/// Faults: FileContent where the table has not the columns of a run.
[[nodiscard]] std::string RunPicture(std::istream& table, RunAxis axis, const std::string& title);

}  // namespace vael
