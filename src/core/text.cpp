// Text helpers: number formats, path pieces, dates, fields. All independent of the locale.
#include "core/text.h"

#include "core/fault.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace vael {
namespace {

/// A number as decimal digits: 0.d1 d2 d3 ... times 10^Exponent, 15 digits at most.
struct Decimal {
    bool Negative = false;
    std::string Digits;
    int Exponent = 0;
};

Decimal Significant15(double value) {
    Decimal out;
    out.Negative = std::signbit(value);
    std::array<char, 40> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(value),
                                   std::chars_format::scientific, 14)
                         .ptr;
    const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    const auto mark = text.find('e');
    for (const char c : text.substr(0, mark))
        if (c != '.') out.Digits += c;
    const std::string_view power = text.substr(mark + 1);
    int exponent = 0;
    std::from_chars(power.data() + (power[0] == '+' ? 1 : 0), power.data() + power.size(),
                    exponent);
    out.Exponent = exponent + 1;
    if (out.Digits.find_first_not_of('0') == std::string::npos) {
        out.Digits = "0";
        out.Exponent = 1;
    }
    return out;
}

/// Keeps `count` digits (which may be 0 or less), rounding half away from zero.
void KeepDigits(Decimal& number, int count) {
    const int size = static_cast<int>(number.Digits.size());
    if (count >= size) return;
    const bool up = count >= 0 && number.Digits[static_cast<std::size_t>(count)] >= '5';
    number.Digits.resize(static_cast<std::size_t>(std::max(count, 0)));
    if (!up) return;
    int at = count - 1;
    while (at >= 0 && number.Digits[static_cast<std::size_t>(at)] == '9')
        number.Digits[static_cast<std::size_t>(at--)] = '0';
    if (at >= 0) {
        ++number.Digits[static_cast<std::size_t>(at)];
    } else {
        number.Digits.insert(number.Digits.begin(), '1');
        ++number.Exponent;
    }
}

char DigitAt(const Decimal& number, int place) {  // place 1 is the first digit behind the point
    const int index = number.Exponent + place - 1;
    if (index < 0 || index >= static_cast<int>(number.Digits.size())) return '0';
    return number.Digits[static_cast<std::size_t>(index)];
}

std::string FormatScientific(double value, std::string_view format, std::size_t mark) {
    const std::string_view mantissa = format.substr(0, mark);
    const auto point = mantissa.find('.');
    const int decimals =
        point == std::string_view::npos ? 0 : static_cast<int>(mantissa.size() - point - 1);
    const auto width = static_cast<std::size_t>(
        std::count(format.begin() + static_cast<std::ptrdiff_t>(mark), format.end(), '0'));
    Decimal number = Significant15(value);
    KeepDigits(number, decimals + 1);
    const bool zero = number.Digits.find_first_not_of('0') == std::string::npos;
    std::string out = number.Negative && !zero ? "-" : "";
    number.Digits.resize(static_cast<std::size_t>(decimals + 1), '0');
    out += number.Digits[0];
    if (point != std::string_view::npos) out += '.';
    std::string fraction = number.Digits.substr(1);
    while (!fraction.empty() && mantissa[point + fraction.size()] == '#' && fraction.back() == '0')
        fraction.pop_back();
    out += fraction;
    const int power = zero ? 0 : number.Exponent - 1;
    std::string digits = std::to_string(std::abs(power));
    if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
    return out + format[mark] + (power < 0 ? "-" : "+") + digits;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// A number by a format that has an ending of zeros alone behind its point ("##0.000"), where its
/// rounding is beyond doubt; false where it is not. The 15 decimal digits that count stray from the
/// binary number by 5e-15 of it at most and the product by 10^decimals by less: a product below
/// 1e11 that lies further than 0.01 from a half rounds the same either way.
bool FormatQuickly(double value, std::string_view format, std::string& out) {
    constexpr std::array<double, 8> TENS{1, 10, 100, 1e3, 1e4, 1e5, 1e6, 1e7};
    const auto point = format.find('.');
    const std::string_view whole = format.substr(0, point);
    const std::size_t decimals = point == std::string_view::npos ? 0 : format.size() - point - 1;
    if (decimals >= TENS.size() || whole.empty() || whole.back() != '0' || whole.size() > 16)
        return false;
    if (whole.find_first_not_of('#') != whole.size() - 1) return false;
    if (decimals > 0 && format.find_first_not_of('0', point + 1) != std::string_view::npos)
        return false;
    const double scaled = std::fabs(value) * TENS[decimals];
    if (!(scaled < 1e11)) return false;
    const double floor = std::floor(scaled);
    const double part = scaled - floor;
    if (std::fabs(part - 0.5) < 0.01) return false;
    const auto digits = static_cast<std::uint64_t>(floor) + (part > 0.5 ? 1U : 0U);

    std::array<char, 24> buffer;
    char* at = buffer.data();
    if (value < 0 && digits != 0) *at++ = '-';
    std::array<char, 20> number;
    const char* const end = std::to_chars(number.data(), number.data() + 20, digits).ptr;
    const auto size = static_cast<std::size_t>(end - number.data());
    const std::size_t padded = std::max(size, decimals + 1);  // the "0" before the point prints
    for (std::size_t k = 0; k < padded; ++k) {
        if (k == padded - decimals) *at++ = '.';
        *at++ = k < padded - size ? '0' : number[k - (padded - size)];
    }
    if (point != std::string_view::npos && decimals == 0) *at++ = '.';
    out.assign(buffer.data(), at);
    return true;
}

}  // namespace

std::string FormatNumber(double value, std::string_view format) {
    if (!std::isfinite(value)) return std::isnan(value) ? "nan" : value < 0 ? "-inf" : "inf";
    if (std::string quick; FormatQuickly(value, format, quick)) return quick;
    auto scientific = format.find("E+");
    if (scientific == std::string_view::npos) scientific = format.find("e+");
    if (scientific != std::string_view::npos) return FormatScientific(value, format, scientific);

    const auto endOfDigits = format.find_first_not_of("#0.");
    const std::string_view digits = format.substr(0, endOfDigits);
    const std::string_view suffix =
        endOfDigits == std::string_view::npos ? std::string_view() : format.substr(endOfDigits);
    const auto point = digits.find('.');
    const std::string_view whole = digits.substr(0, point);
    const std::string_view behind =
        point == std::string_view::npos ? std::string_view() : digits.substr(point + 1);

    Decimal number = Significant15(value);
    KeepDigits(number, number.Exponent + static_cast<int>(behind.size()));
    const bool zero = number.Digits.find_first_not_of('0') == std::string::npos;

    std::string integer;
    if (!zero)
        for (int place = 1 - number.Exponent; place <= 0; ++place)
            integer += DigitAt(number, place);
    integer.erase(0, std::min(integer.find_first_not_of('0'), integer.size()));
    const auto least = static_cast<std::size_t>(std::count(whole.begin(), whole.end(), '0'));
    if (integer.size() < least) integer.insert(0, least - integer.size(), '0');

    std::string fraction;
    for (std::size_t k = 0; k < behind.size(); ++k)
        fraction += zero ? '0' : DigitAt(number, static_cast<int>(k) + 1);
    while (!fraction.empty() && behind[fraction.size() - 1] == '#' && fraction.back() == '0')
        fraction.pop_back();

    std::string out = number.Negative && !zero ? "-" : "";
    out += integer;
    if (point != std::string_view::npos) out += '.';
    return out + fraction + std::string(suffix);
}

std::string FormatAligned(double value, std::string_view format) {
    std::string text = FormatNumber(value, format);
    const auto point = format.find('.');
    if (point == std::string_view::npos || text.empty()) return text;
    const auto own = text.find('.');
    const std::size_t wanted = format.size() - point - 1;
    const std::size_t have = own == std::string::npos ? 0 : text.size() - own - 1;
    if (wanted > have) text.append(wanted - have, ' ');
    return text;
}

double RoundHalfAway(double value, int digits) {
    if (!std::isfinite(value)) return value;
    Decimal number = Significant15(value);
    KeepDigits(number, number.Exponent + digits);
    if (number.Digits.empty()) return 0.0;
    std::string text = number.Negative ? "-0." : "0.";
    text += number.Digits + "e" + std::to_string(number.Exponent);
    return ParseNumber(text).value_or(0.0);
}

std::string WholeText(long long value) { return (value < 0 ? "" : " ") + std::to_string(value); }

std::string NumberText(double value) {
    constexpr int digits = 15;  // what a binary number of 8 bytes keeps for certain
    std::array<char, 40> text;
    const char* const end = std::to_chars(text.data(), text.data() + text.size(), value,
                                          std::chars_format::general, digits)
                                .ptr;
    std::string out(static_cast<const char*>(text.data()), end);
    std::replace(out.begin(), out.end(), 'e', 'E');
    return out;
}

void AddRight(std::string& line, std::int64_t value, std::size_t columns) {
    std::array<char, 20> digits;
    const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    const auto size = static_cast<std::size_t>(end - digits.data());
    if (size < columns) line.append(columns - size, ' ');
    line.append(digits.data(), size);
}

std::string_view TrimView(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

std::string Trim(std::string_view text) { return std::string(TrimView(text)); }

std::string LowerCase(std::string_view ascii) {
    std::string out(ascii);
    for (char& c : out)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return out;
}

bool IsAllDigits(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

std::optional<double> ParseNumber(std::string_view text) {
    std::string_view body = TrimView(text);
    const bool plus = !body.empty() && body[0] == '+';
    if (plus) body.remove_prefix(1);
    const bool minus = !plus && !body.empty() && body[0] == '-';
    const std::string_view digits = body.substr(minus ? 1 : 0);
    if (digits.empty() || !(IsDigit(digits[0]) || digits[0] == '.'))
        return std::nullopt;  // no "inf", no "nan", no lone sign
    std::string withE;
    if (const auto mark = body.find_first_of("Dd"); mark != std::string_view::npos) {
        withE = body;  // an exponent of double precision
        withE[mark] = 'E';
        body = withE;
    }
    double value = 0.0;
    const auto [end, error] = std::from_chars(body.data(), body.data() + body.size(), value);
    if (error != std::errc() || end != body.data() + body.size()) return std::nullopt;
    return value;
}

bool IsNumeric(std::string_view text) { return ParseNumber(text).has_value(); }

double Number(std::string_view text) {
    const auto value = ParseNumber(text);
    if (!value) {
        const std::string shown(text.substr(0, 40));
        throw Fault(FaultNumber::Type, "A number was expected, not \"" + shown + "\".");
    }
    return *value;
}

bool IsSeparator(char c) { return c == '\\' || c == PATH_SEPARATOR; }

PathPieces SplitFilePath(std::string_view path, bool drives) {
    PathPieces out;
    if (path.empty()) return out;
    if (drives) {
        const auto colon = path.find(':');
        if (colon != std::string_view::npos) {
            out.Drive = path.substr(0, colon + 1);
            path.remove_prefix(colon + 1);
        }
    }
    const auto point = path.rfind('.');
    if (point != std::string_view::npos && point != 0) {
        out.Ext = path.substr(point + 1);
        path = path.substr(0, point);
    }
    std::size_t cut = path.size();
    while (cut > 0 && !IsSeparator(path[cut - 1])) --cut;
    out.Folder = path.substr(0, cut);
    out.Name = path.substr(cut);
    return out;
}

PathPieces SplitLocalPath(std::string_view path, bool* noDrive, bool drives) {
    PathPieces out;
    if (path.size() > 2 && path[0] == '\\' && path[1] == '\\') {
        const auto end = std::min(path.find('\\', 2), path.size());
        out = SplitFilePath(path.substr(end), false);
        out.Drive = path.substr(0, end);
    } else {
        out = SplitFilePath(path, drives);
    }
    if (noDrive != nullptr) *noDrive = out.Drive.find(':') == std::string::npos;
    return out;
}

std::vector<std::string> SplitFileList(std::string_view text) {
    std::vector<std::string> names;
    std::string name;
    for (const char c : text) {
        if (c == ',' || c == ';' || c == ' ') {
            if (!name.empty()) names.push_back(std::move(name));
            name.clear();
        } else {
            name += c;
        }
    }
    if (!name.empty()) names.push_back(std::move(name));
    return names;
}

std::vector<double> SplitNumbers(std::string_view text) {
    text = text.substr(0, 99);
    std::vector<double> values;
    std::string field;
    const auto close = [&] {
        if (values.size() < 11) values.push_back(ParseNumber(field).value_or(0.0));
        field.clear();
    };
    std::size_t at = 0;
    while (at < text.size()) {
        const char c = text[at];
        if (c == ',' && !(at + 1 < text.size() && text[at + 1] == ' ')) {
            close();
            ++at;
        } else if (c == ',' || c == ' ') {
            if (c == ',') ++at;
            while (at < text.size() && text[at] == ' ') ++at;
            if (at == text.size()) {  // only blanks are left: the scan stops here
                if (c == ',' || !field.empty()) close();
                return values;
            }
            close();
        } else {
            field += c;
            ++at;
        }
    }
    if (!field.empty()) close();
    return values;
}

namespace {

std::string TwoDigits(int value) {
    std::string text = std::to_string(value);
    return text.size() < 2 ? "0" + text : text;
}

}  // namespace

std::string DateToStore(std::string_view text) {
    if (text.size() < 8 || !IsAllDigits(text.substr(0, 2))) return {};
    const int year = (text[0] - '0') * 10 + (text[1] - '0');
    return std::to_string(year < 30 ? 2000 + year : 1900 + year) + std::string(text.substr(3, 2)) +
           std::string(text.substr(6, 2));
}

std::string DateToShow(std::string_view digits) {
    if (digits.size() < 8 || !IsAllDigits(digits.substr(0, 4))) return {};
    int year = 0;
    std::from_chars(digits.data(), digits.data() + 4, year);
    year -= year >= 2000 ? 2000 : 1900;
    return TwoDigits(year) + "/" + std::string(digits.substr(4, 2)) + "/" +
           std::string(digits.substr(6, 2));
}

std::string DateShort(std::string_view text) {
    if (text.size() < 8) return {};
    return std::string(text.substr(0, 2)) + std::string(text.substr(3, 2)) +
           std::string(text.substr(6, 2));
}

std::string TimeToShow(std::string_view digits) {
    if (digits.size() < 6) return {};
    return std::string(digits.substr(0, 2)) + ":" + std::string(digits.substr(2, 2)) + ":" +
           std::string(digits.substr(4, 2));
}

}  // namespace vael
