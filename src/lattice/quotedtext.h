// Lines of fields between commas, texts in double quotes: the form of the lattice logs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vael {

/// A field: a text, which goes between quotes, or a whole number, which stands as it is.
struct QuotedField {
    QuotedField(std::string_view text) : Text(text) {}    // NOLINT: a list of fields reads plainly
    QuotedField(const char* text) : Text(text) {}         // NOLINT
    QuotedField(const std::string& text) : Text(text) {}  // NOLINT
    QuotedField(int number) : Text(std::to_string(number)), Bare(true) {}  // NOLINT
    std::string Text;
    bool Bare = false;
};

/// Collects lines; each ends in a carriage return and a line feed. A quote inside a text is
/// doubled, so that the file stays one that other programs can read.
class QuotedText {
public:
    QuotedText& Line(const std::vector<QuotedField>& fields);
    QuotedText& Empty(int lines = 1);
    /// UTF-8.
    std::string Text;
};

}  // namespace vael
