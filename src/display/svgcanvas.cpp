// A surface that writes a page as SVG: strokes gathered into paths of one pen, texts, boxes, dots.
#include "display/svgcanvas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace vael {
namespace {

// Paths are written in whole twentieths of a point (0.018 mm), which keeps them short and exact.
constexpr double GRID = 20.0;

// Advance widths of the characters 32 to 126 in thousandths of the font size: the published metrics
// of Helvetica (Adobe Font Metrics), which the common sans-serif faces share.
constexpr std::array<int, 95> WIDTHS{
    278,  278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333, 278, 278,  // blank to /
    556,  556, 556, 556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556,  // 0 to ?
    1015, 667, 667, 722, 722, 667, 611, 778, 722, 278, 500, 667, 556, 833, 722, 778,  // @ to O
    667,  778, 722, 667, 611, 722, 667, 944, 667, 667, 611, 278, 278, 278, 469, 556,  // P to _
    333,  556, 556, 500, 556, 556, 278, 556, 556, 222, 222, 500, 222, 833, 556, 556,  // ` to o
    556,  556, 333, 500, 278, 556, 500, 722, 500, 500, 500, 334, 260, 334, 584};      // p to ~
constexpr double ASCENT = 0.905;   // of the font size, above the base line
constexpr double DESCENT = 0.212;  // below it
constexpr double BOLD_WIDER = 1.06;

/// Calls `each` with every character of a UTF-8 text.
template <class Each>
void ForEachCharacter(std::string_view utf8, Each each) {
    for (std::size_t i = 0; i < utf8.size();) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        const std::size_t size = lead < 0x80U ? 1 : lead < 0xE0U ? 2 : lead < 0xF0U ? 3 : 4;
        each(lead, size);
        i += size;
    }
}

int AdvanceOf(unsigned char lead, std::size_t size) {
    if (size == 2) return 556;  // Latin with accents, Greek
    if (size > 2) return 1000;  // wide characters
    const bool printable = lead >= 32 && lead < 127;
    return printable ? WIDTHS[static_cast<std::size_t>(lead - 32)] : WIDTHS[0];
}

std::string Hex(Colour colour) {
    char text[8];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", static_cast<unsigned>(colour & 255),
                  static_cast<unsigned>((colour >> 8) & 255),
                  static_cast<unsigned>((colour >> 16) & 255));
    return text;
}

/// Two decimals at most, no closing zeros.
std::string Digits(double value) {
    const long hundredths = std::lround(value * 100.0);
    std::string out = hundredths < 0 ? "-" : "";
    const long whole = std::labs(hundredths) / 100;
    const long rest = std::labs(hundredths) % 100;
    out += std::to_string(whole);
    if (rest == 0) return out;
    out += '.';
    out += static_cast<char>('0' + rest / 10);
    if (rest % 10 != 0) out += static_cast<char>('0' + rest % 10);
    return out;
}

}  // namespace

std::string XmlEscape(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    for (const char c : utf8) {
        switch (c) {
            case '&': out += "&amp;"; break;
            case '<': out += "&lt;"; break;
            case '>': out += "&gt;"; break;
            case '"': out += "&quot;"; break;
            case '\'': out += "&#39;"; break;
            default: out += static_cast<unsigned char>(c) < 32 || c == 127 ? ' ' : c;
        }
    }
    return out;
}

SvgSurface::SvgSurface(double width, double height) : size_{width, height} {}

void SvgSurface::Clear(Colour background) {
    path_.clear();
    kind_ = Path::None;
    body_ = "<rect width=\"100%\" height=\"100%\" fill=\"" + Hex(background) + "\"/>\n";
}

void SvgSurface::Open(Path kind, const Brush& brush) {
    if (kind_ == kind && ink_ == brush.Ink && width_ == brush.Width) return;
    Close();
    kind_ = kind;
    ink_ = brush.Ink;
    width_ = brush.Width;
    last_ = ' ';
    penX_ = penY_ = 0;
}

void SvgSurface::Close() {
    if (kind_ != Path::None && !path_.empty()) {
        body_ += "<path stroke=\"" + Hex(ink_) + "\" stroke-width=\"" + Digits(width_ * GRID) + '"';
        if (kind_ == Path::Dots) body_ += " stroke-linecap=\"square\"";
        body_ += " d=\"" + path_ + "\"/>\n";
    }
    path_.clear();
    kind_ = Path::None;
}

void SvgSurface::Pair(long x, long y) {
    if (!path_.empty() && path_.back() >= '0' && path_.back() <= '9' && x >= 0) path_ += ' ';
    path_ += std::to_string(x);
    if (y >= 0) path_ += ' ';
    path_ += std::to_string(y);
}

void SvgSurface::MoveTo(Spot at) {
    const long x = std::lround(at.X * GRID);
    const long y = std::lround(at.Y * GRID);
    if (!path_.empty() && x == penX_ && y == penY_) return;
    // Pairs behind a relative move are relative lines; behind the absolute one a letter is needed.
    const char move = path_.empty() ? 'M' : 'm';
    path_ += move;
    Pair(x - penX_, y - penY_);
    last_ = move == 'm' ? 'l' : 'M';
    penX_ = x;
    penY_ = y;
}

void SvgSurface::LineTo(Spot at) {
    const long x = std::lround(at.X * GRID);
    const long y = std::lround(at.Y * GRID);
    const long dx = x - penX_;
    const long dy = y - penY_;
    if (dx == 0 && dy == 0) return;
    if (dy == 0) {
        path_ += 'h' + std::to_string(dx);
        last_ = 'h';
    } else if (dx == 0) {
        path_ += 'v' + std::to_string(dy);
        last_ = 'v';
    } else {
        if (last_ != 'l') path_ += 'l';
        Pair(dx, dy);
        last_ = 'l';
    }
    penX_ = x;
    penY_ = y;
}

void SvgSurface::Stroke(Spot from, Spot to, const Brush& brush) {
    if (brush.Mode == DRAW_XOR) return;
    Open(Path::Lines, brush);
    MoveTo(ToPixels(from, brush.Scale, size_));
    LineTo(ToPixels(to, brush.Scale, size_));
}

void SvgSurface::Dot(Spot at, const Brush& brush) {
    if (brush.Mode == DRAW_XOR) return;
    Open(Path::Dots, brush);
    MoveTo(ToPixels(at, brush.Scale, size_));
    path_ += "h0";  // a line of no length shows its cap: a square of the pen's width
    last_ = 'h';
}

void SvgSurface::Box(Spot corner, Spot opposite, bool filled, const Brush& brush) {
    if (brush.Mode == DRAW_XOR) return;
    Close();
    const Spot a = ToPixels(corner, brush.Scale, size_);
    const Spot b = ToPixels(opposite, brush.Scale, size_);
    const auto at = [](double value) { return Digits(value * GRID); };
    body_ += "<rect x=\"" + at(std::min(a.X, b.X)) + "\" y=\"" + at(std::min(a.Y, b.Y)) +
             "\" width=\"" + at(std::fabs(a.X - b.X)) + "\" height=\"" + at(std::fabs(a.Y - b.Y)) +
             "\" ";
    if (filled)
        body_ += "fill=\"" + Hex(brush.Ink) + "\"/>\n";
    else
        body_ += "stroke=\"" + Hex(brush.Ink) + "\" stroke-width=\"" + at(brush.Width) + "\"/>\n";
}

void SvgSurface::Write(Spot at, std::string_view utf8, const Brush& brush) {
    if (brush.Mode == DRAW_XOR || utf8.find_first_not_of(' ') == std::string_view::npos) return;
    Close();
    const Spot corner = ToPixels(at, brush.Scale, size_);
    const double x = corner.X * GRID;
    const double y = corner.Y * GRID;
    const double size = brush.FontSize * GRID;
    body_ += "<text x=\"" + Digits(x) + "\" y=\"" + Digits(y + ASCENT * size) + "\" font-size=\"" +
             Digits(size) + '"';
    // Where another face stands in for the one measured here, it is fitted to the same length.
    if (utf8.size() > 1)
        body_ += " textLength=\"" + Digits(Measure(utf8, brush).Width * GRID) +
                 "\" lengthAdjust=\"spacingAndGlyphs\"";
    if (brush.Bold) body_ += " font-weight=\"bold\"";
    if (brush.Angle != 0.0)
        body_ += " transform=\"rotate(" + Digits(-brush.Angle) + ' ' + Digits(x) + ' ' + Digits(y) +
                 ")\"";
    body_ += " fill=\"" + Hex(brush.Ink) + "\">" + XmlEscape(utf8) + "</text>\n";
}

Extent SvgSurface::Measure(std::string_view utf8, const Brush& brush) const {
    double thousandths = 0.0;
    ForEachCharacter(
        utf8, [&](unsigned char lead, std::size_t size) { thousandths += AdvanceOf(lead, size); });
    const double wider = brush.Bold ? BOLD_WIDER : 1.0;
    return {thousandths / 1000.0 * brush.FontSize * wider, (ASCENT + DESCENT) * brush.FontSize};
}

std::string SvgSurface::Text() const {
    SvgSurface whole = *this;  // the path still open is closed in a copy
    whole.Close();
    std::string out =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
        Digits(size_.Width) + "pt\" height=\"" + Digits(size_.Height) + "pt\" viewBox=\"0 0 " +
        Digits(size_.Width * GRID) + ' ' + Digits(size_.Height * GRID) +
        "\" fill=\"none\" stroke-linejoin=\"round\" xml:space=\"preserve\" "
        "font-family=\"Helvetica, Arial, 'Liberation Sans', 'Noto Sans CJK JP', "
        "'IPAGothic', sans-serif\">\n";
    if (!title_.empty()) out += "<title>" + XmlEscape(title_) + "</title>\n";
    return out + whole.body_ + "</svg>\n";
}

}  // namespace vael
