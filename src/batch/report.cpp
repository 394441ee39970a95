// Results as text: JSON, CSV, a table for people, and the peak list of a file.
#include "batch/report.h"

#include "core/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>

namespace vael {
namespace {

using Json = nlohmann::ordered_json;

template <class T>
Json OrNull(const std::optional<T>& value) {
    return value ? Json(*value) : Json(nullptr);
}

Json Pair(double value, double error) { return Json::array({value, error}); }

/// A path may hold bytes that are no UTF-8; JSON text may not.
std::string Shown(const std::string& text) {
    return Json::parse(Json(text).dump(-1, ' ', false, Json::error_handler_t::replace));
}

Json CellJson(const RoadResult& result) {
    if (!result.Cell) return nullptr;
    constexpr std::array<const char*, 6> NAMES{"a", "b", "c", "alpha", "beta", "gamma"};
    Json cell;
    cell["system"] = SystemListText(result.System);
    for (std::size_t k = 0; k < NAMES.size(); ++k)
        cell[NAMES[k]] = Pair(result.Cell->CellNow[k], result.Cell->CellError[k]);
    cell["V"] = Pair(result.Cell->V, result.Cell->dV);
    cell["V_V0"] = Pair(result.Cell->X, result.Cell->dX);
    return cell;
}

Json PressureJson(const RoadResult& result) {
    if (!result.Cell || !result.Cell->Pressure) return nullptr;
    const PressureValue& p = *result.Cell->Pressure;
    return {{"scale", ScaleName(p.Scale)}, {"GPa", Pair(p.P, p.Error)}};
}

std::string Short(double value) {
    std::array<char, 40> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
    return {buffer.data(), end};
}

std::string Quoted(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string out = "\"";
    for (const char c : text) out += c == '"' ? "\"\"" : std::string(1, c);
    return out + "\"";
}

std::string Line(const std::vector<std::string>& fields) {
    std::string out;
    for (std::size_t k = 0; k < fields.size(); ++k) out += (k == 0 ? "" : ",") + Quoted(fields[k]);
    return out + "\r\n";
}

std::string WithError(double value, double error, int decimals) {
    const std::string format = "0." + std::string(static_cast<std::size_t>(decimals), '0');
    return FormatNumber(value, format) + "+-" + FormatNumber(error, format);
}

int UsedRows(const RoadResult& result) {
    return static_cast<int>(std::count_if(result.Peaks.begin(), result.Peaks.end(),
                                          [](const RoadPeak& p) { return p.Used; }));
}

/// Columns that a text takes on a terminal: one per character.
std::size_t Columns(const std::string& utf8) {
    return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xc0) != 0x80;
    }));
}

}  // namespace

std::string JsonObject(const RoadResult& result) {
    Json object;
    object["file"] = Shown(result.File);
    object["status"] = result.Status;
    object["message"] = result.Message.empty() ? Json(nullptr) : Json(Shown(result.Message));
    object["channels"] = result.Channels > 0 ? Json(result.Channels) : Json(nullptr);
    object["temperature_C"] = OrNull(result.TemperatureC);
    object["two_theta"] = OrNull(result.TwoTheta);
    object["peaks"] = Json::array();
    for (const RoadPeak& p : result.Peaks) {
        Json peak;
        peak["ch"] = p.Ch;
        peak["keV"] = p.KeV;
        peak["d"] = p.D;
        peak["fwhm_ch"] = p.FwhmCh;
        peak["amplitude"] = p.Amplitude;
        peak["net"] = p.Net;
        constexpr std::array<const char*, 3> NAMES{"h", "k", "l"};
        for (std::size_t k = 0; k < 3; ++k)
            peak[NAMES[k]] = p.Index ? Json((*p.Index)[k]) : Json(nullptr);
        peak["d_calc"] = OrNull(p.DCalc);
        peak["matched"] = p.Matched;
        peak["used"] = p.Used;
        object["peaks"].push_back(peak);
    }
    object["cell"] = CellJson(result);
    object["pressure"] = PressureJson(result);
    return object.dump(1);
}

std::string CsvHead() {
    return Line({"file",       "status", "message",     "channels", "temperature_C", "two_theta",
                 "peaks",      "used",   "system",      "a",        "a_error",       "b",
                 "b_error",    "c",      "c_error",     "alpha",    "alpha_error",   "beta",
                 "beta_error", "gamma",  "gamma_error", "V",        "V_error",       "V_V0",
                 "V_V0_error", "scale",  "GPa",         "GPa_error"});
}

std::string CsvRow(const RoadResult& result) {
    std::vector<std::string> f{result.File,
                               result.Status,
                               result.Message,
                               result.Channels > 0 ? std::to_string(result.Channels) : "",
                               result.TemperatureC ? Short(*result.TemperatureC) : "",
                               result.TwoTheta ? Short(*result.TwoTheta) : "",
                               std::to_string(result.Peaks.size()),
                               std::to_string(UsedRows(result))};
    if (result.Cell) {
        f.push_back(SystemListText(result.System));
        for (std::size_t k = 0; k < 6; ++k) {
            f.push_back(Short(result.Cell->CellNow[k]));
            f.push_back(Short(result.Cell->CellError[k]));
        }
        for (const double value :
             {result.Cell->V, result.Cell->dV, result.Cell->X, result.Cell->dX})
            f.push_back(Short(value));
    } else {
        f.resize(f.size() + 17);
    }
    if (result.Cell && result.Cell->Pressure) {
        f.push_back(ScaleName(result.Cell->Pressure->Scale));
        f.push_back(Short(result.Cell->Pressure->P));
        f.push_back(Short(result.Cell->Pressure->Error));
    } else {
        f.resize(f.size() + 3);
    }
    return Line(f);
}

std::vector<std::string> TableCells(const RoadResult& result) {
    std::string cell;
    std::string volume;
    std::string ratio;
    std::string pressure;
    if (result.Cell) {
        const LatticeValues& v = *result.Cell;
        const bool b = result.System >= SYSTEM_ORT;
        const bool c = result.System >= SYSTEM_TET;
        cell = WithError(v.CellNow[0], v.CellError[0], 4);
        if (b) cell += " " + WithError(v.CellNow[1], v.CellError[1], 4);
        if (c) cell += " " + WithError(v.CellNow[2], v.CellError[2], 4);
        volume = WithError(v.V, v.dV, 3);
        ratio = WithError(v.X, v.dX, 5);
        if (v.Pressure) pressure = WithError(v.Pressure->P, v.Pressure->Error, 3);
    }
    return {SplitFilePath(result.File).Base(),
            result.Status,
            std::to_string(result.Peaks.size()),
            std::to_string(UsedRows(result)),
            cell,
            volume,
            ratio,
            pressure,
            result.Message};
}

std::string TableText(const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::vector<std::string>> all{{"file", "status", "peaks", "used", "a [b] [c] / A",
                                               "V / A3", "V/V0", "P / GPa", "message"}};
    all.insert(all.end(), rows.begin(), rows.end());
    std::vector<std::size_t> widths;
    for (const auto& row : all) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t k = 0; k + 1 < row.size(); ++k)
            widths[k] = std::max(widths[k], Columns(row[k]));
    }
    std::string out;
    for (const auto& row : all) {
        std::string line;
        for (std::size_t k = 0; k < row.size(); ++k) {
            line += row[k];
            if (k + 1 < row.size()) line.append(widths[k] - Columns(row[k]) + 2, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out += line + "\n";
    }
    return out;
}

std::string PeakCsv(const RoadResult& result) {
    std::string out = Line({"ch", "keV", "d", "fwhm_ch", "amplitude", "net", "h", "k", "l",
                            "d_calc", "matched", "used"});
    for (const RoadPeak& p : result.Peaks) {
        std::vector<std::string> f{Short(p.Ch),     Short(p.KeV),       Short(p.D),
                                   Short(p.FwhmCh), Short(p.Amplitude), Short(p.Net)};
        for (std::size_t k = 0; k < 3; ++k)
            f.push_back(p.Index ? std::to_string((*p.Index)[k]) : "");
        f.push_back(p.DCalc ? Short(*p.DCalc) : "");
        f.push_back(p.Matched ? "1" : "0");
        f.push_back(p.Used ? "1" : "0");
        out += Line(f);
    }
    return out;
}

std::string Pack(const std::vector<std::string>& texts) {
    std::string out;
    for (const std::string& text : texts) out += std::to_string(text.size()) + "\n" + text;
    return out;
}

std::vector<std::string> Unpack(const std::string& bytes) {
    std::vector<std::string> texts;
    for (std::size_t at = 0; at < bytes.size();) {
        const auto end = bytes.find('\n', at);
        if (end == std::string::npos) break;
        const auto size = static_cast<std::size_t>(std::stoull(bytes.substr(at, end - at)));
        texts.push_back(bytes.substr(end + 1, size));
        at = end + 1 + size;
    }
    return texts;
}

}  // namespace vael
