#include "JSON/JSONWriter.h"

#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "QELModels/Values/Text.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

constexpr std::string_view kIndent = "  ";
constexpr std::string_view kHexDigits = "0123456789abcdef";
// What every surrogate half, and some other characters, begin with.
constexpr char kHalfLead = '\xED';

// Which bytes are not always written as they are.
constexpr auto kIsSpecial = [] {
    std::array<bool, 256> table{};
    for (unsigned byte = 0; byte < ' '; ++byte)
        table[byte] = true;
    for (const char byte : {'"', '\\', kHalfLead})
        table[static_cast<unsigned char>(byte)] = true;
    return table;
}();

void appendUnit(std::string& out, unsigned unit) {
    out += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4)
        out += kHexDigits[unit >> shift & 0xF];
}

void appendASCII(std::string& out, char byte) {
    constexpr std::string_view letters = "\"\\bfnrt";
    constexpr std::string_view meanings = "\"\\\b\f\n\r\t";
    const std::size_t index = meanings.find(byte);
    if (index == std::string_view::npos) return appendUnit(out, static_cast<unsigned char>(byte));
    out += '\\';
    out += letters[index];
}

// The members or elements that are still to be written.
struct Rest {
    RepresentationMembers::Iterator member;
    RepresentationElements::Iterator element;
    std::size_t size;
    bool isDictionary;
};

}  // namespace

void JSONWriter::newLine() {
    if (!isIndented_) return;
    out_ += '\n';
    for (std::size_t i = 0; i < depth_; ++i)
        out_ += kIndent;
}

// What is written before a value, or before its key.
void JSONWriter::beginValue() {
    if (std::exchange(isKeyGiven_, false)) return;
    if (!std::exchange(isFirst_, false)) out_ += ',';
    if (depth_ != 0) newLine();
}

void JSONWriter::begin(char bracket) {
    beginValue();
    out_ += bracket;
    ++depth_;
    isFirst_ = true;
}

void JSONWriter::end(char bracket) {
    --depth_;
    if (!std::exchange(isFirst_, false)) newLine();
    out_ += bracket;
}

void JSONWriter::key(std::string_view key) {
    beginValue();
    quoted(key);
    out_ += isIndented_ ? ": " : ":";
    isKeyGiven_ = true;
}

void JSONWriter::string(std::string_view text) {
    beginValue();
    quoted(text);
}

void JSONWriter::number(Number number) {
    if (number.isBoolean()) return literal(number.boolValue() ? "true" : "false");
    if (!std::isfinite(number.doubleValue())) return null();
    char digits[Number::kMaxChars];
    literal({digits, number.toChars(digits)});
}

void JSONWriter::literal(std::string_view text) {
    beginValue();
    out_ += text;
}

void JSONWriter::quoted(std::string_view text) {
    out_ += '"';
    std::size_t written = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!kIsSpecial[static_cast<unsigned char>(text[i])]) continue;
        const std::string_view half = text.substr(i, Text::kHalfBytes);
        if (text[i] == kHalfLead && !Text::endsInHighHalf(half) && !Text::beginsWithLowHalf(half)) continue;
        out_ += text.substr(written, i - written);
        if (text[i] == kHalfLead) {
            appendUnit(out_, Text::toUTF16(half).front());
            i += Text::kHalfBytes - 1;
        } else {
            appendASCII(out_, text[i]);
        }
        written = i + 1;
    }
    out_ += text.substr(written);
    out_ += '"';
}

void JSONWriter::representation(RepresentationView view) {
    std::vector<Rest> open;
    for (;;) {
        switch (view.kind()) {
            case RepresentationView::Kind::null:
                null();
                break;
            case RepresentationView::Kind::string:
                string(*view.text());
                break;
            case RepresentationView::Kind::number:
                number(*view.number());
                break;
            default:
                begin(view.isDictionary() ? '{' : '[');
                open.push_back(
                    {view.members().begin(), view.elements().begin(), view.size(), view.isDictionary()});
        }
        while (!open.empty() && open.back().size == 0) {
            end(open.back().isDictionary ? '}' : ']');
            open.pop_back();
        }
        if (open.empty()) return;
        Rest& rest = open.back();
        --rest.size;
        if (rest.isDictionary) {
            key((*rest.member).key);
            view = (*rest.member).value;
            ++rest.member;
        } else {
            view = *rest.element;
            ++rest.element;
        }
    }
}

std::string jsonFromRepresentation(RepresentationView view, JSONWriter::Layout layout) {
    std::string text;
    JSONWriter(text, layout).representation(view);
    return text;
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
