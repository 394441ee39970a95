// Lines of fields between commas, texts in double quotes: the form of the lattice logs.
#include "lattice/quotedtext.h"

namespace vael {

QuotedText& QuotedText::Line(const std::vector<QuotedField>& fields) {
    bool first = true;
    for (const QuotedField& field : fields) {
        if (!first) Text += ',';
        first = false;
        if (field.Bare) {
            Text += field.Text;
            continue;
        }
        Text += '"';
        for (const char c : field.Text) Text += c == '"' ? std::string("\"\"") : std::string(1, c);
        Text += '"';
    }
    Text += "\r\n";
    return *this;
}

QuotedText& QuotedText::Empty(int lines) {
    for (int i = 0; i < lines; ++i) Text += "\r\n";
    return *this;
}

}  // namespace vael
