// A surface that writes down what is drawn on it, in the caller's own coordinates and with metrics
// of its own, so that a test or a golden file is the same on every machine.
#pragma once

#include "core/cp932.h"
#include "display/canvas.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace vael::test {

/// One primitive as it arrived.
struct Drawn {
    enum class Kind { Clear, Line, Box, FilledBox, Dot, Text };
    Kind What;
    Spot From, To;
    Brush Pen;
    std::string Words;

    friend bool operator==(const Drawn& a, const Drawn& b) { return a.Line() == b.Line(); }

    /// "line 0 0 10 5 #ff0000 w1", "text 3 4 #000000 s9 a90 bold: words"; " xor" where it is one.
    [[nodiscard]] std::string Line() const {
        static constexpr const char* NAMES[] = {"clear", "line", "box", "filled", "dot", "text"};
        std::string out = NAMES[static_cast<int>(What)];
        if (What != Kind::Clear) out += Pair(From);
        if (What == Kind::Line || What == Kind::Box || What == Kind::FilledBox) out += Pair(To);
        char colour[16];
        std::snprintf(colour, sizeof colour, " #%02x%02x%02x", static_cast<unsigned>(Pen.Ink & 255),
                      static_cast<unsigned>((Pen.Ink >> 8) & 255),
                      static_cast<unsigned>((Pen.Ink >> 16) & 255));
        out += colour;
        if (What == Kind::Text) {
            out += " s" + Digits(Pen.FontSize);
            if (Pen.Angle != 0.0) out += " a" + Digits(Pen.Angle);
            if (Pen.Bold) out += " bold";
        } else if (What != Kind::Clear && Pen.Width != 1.0) {
            out += " w" + Digits(Pen.Width);
        }
        if (Pen.Mode == DRAW_XOR) out += " xor";
        if (What == Kind::Text) out += ": " + Words;
        return out;
    }

    /// Four decimals at most, no closing zeros.
    [[nodiscard]] static std::string Digits(double value) {
        char text[40];
        std::snprintf(text, sizeof text, "%.4f", value);
        std::string out = text;
        out.erase(out.find_last_not_of('0') + 1);
        if (out.back() == '.') out.pop_back();
        return out == "-0" ? "0" : out;
    }

private:
    static std::string Pair(Spot spot) { return " " + Digits(spot.X) + " " + Digits(spot.Y); }
};

/// Characters are 6 x 10 pixels whatever the font size, two-byte ones 12 x 10. A primitive in
/// exclusive-or mode that stands already takes the standing one away.
class RecordingSurface : public Surface {
public:
    explicit RecordingSurface(double width = 600.0, double height = 200.0) : size_{width, height} {}

    [[nodiscard]] Extent Size() const override { return size_; }
    void Clear(Colour background) override {
        Strokes.clear();
        Brush brush;
        brush.Ink = background;
        Strokes.push_back({Drawn::Kind::Clear, {}, {}, brush, {}});
    }
    void Stroke(Spot from, Spot to, const Brush& brush) override {
        Put({Drawn::Kind::Line, from, to, brush, {}});
    }
    void Box(Spot corner, Spot opposite, bool filled, const Brush& brush) override {
        Put({filled ? Drawn::Kind::FilledBox : Drawn::Kind::Box, corner, opposite, brush, {}});
    }
    void Dot(Spot at, const Brush& brush) override { Put({Drawn::Kind::Dot, at, {}, brush, {}}); }
    void Write(Spot at, std::string_view utf8, const Brush& brush) override {
        Put({Drawn::Kind::Text, at, {}, brush, std::string(utf8)});
    }
    [[nodiscard]] Extent Measure(std::string_view utf8, const Brush&) const override {
        return {6.0 * static_cast<double>(ToCp932(utf8).size()), 10.0};
    }

    std::vector<Drawn> Strokes;

    /// All of it, a line each.
    [[nodiscard]] std::string Text() const {
        std::string out;
        for (const Drawn& drawn : Strokes) out += drawn.Line() + "\n";
        return out;
    }
    [[nodiscard]] std::vector<Drawn> Only(Drawn::Kind kind) const {
        std::vector<Drawn> out;
        std::copy_if(Strokes.begin(), Strokes.end(), std::back_inserter(out),
                     [kind](const Drawn& drawn) { return drawn.What == kind; });
        return out;
    }
    [[nodiscard]] std::vector<std::string> Words() const {
        std::vector<std::string> out;
        for (const Drawn& drawn : Only(Drawn::Kind::Text)) out.push_back(drawn.Words);
        return out;
    }

private:
    void Put(const Drawn& drawn) {
        if (drawn.Pen.Mode == DRAW_XOR) {
            const auto standing = std::find(Strokes.begin(), Strokes.end(), drawn);
            if (standing != Strokes.end()) {
                Strokes.erase(standing);
                return;
            }
        }
        Strokes.push_back(drawn);
    }
    Extent size_;
};

}  // namespace vael::test
