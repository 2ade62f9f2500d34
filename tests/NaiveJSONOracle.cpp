#include "NaiveJSONOracle.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "QELModels/Representation/detail/RepresentationAccess.h"
#include "QELModels/Values/Text.h"

namespace NaiveJSONOracle {

using QELModels::JSONError;
using QELModels::Number;
using QELModels::Representation;
using QELModels::RepresentationView;
using QELModels::Text;
using QELModels::detail::NumberBits;

namespace {

using QELModels::detail::RepresentationAccess;

struct Failure {
    std::size_t offset;
};

void append(std::u16string& text, char32_t character) {
    if (character < 0x10000) {
        text += static_cast<char16_t>(character);
    } else {
        text += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
        text += static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
    }
}

class Reader {
public:
    Reader(std::string_view document, std::size_t maxDepth) : document_(document), maxDepth_(maxDepth) {}

    Value document() {
        if (document_.substr(0, 3) == "\xEF\xBB\xBF") at_ = 3;
        Value result = value();
        if (at_ != document_.size()) throw Failure{at_};
        return result;
    }

private:
    // -1 at the end.
    int peek(std::size_t ahead = 0) const {
        return at_ + ahead < document_.size() ? static_cast<unsigned char>(document_[at_ + ahead]) : -1;
    }
    bool takeIf(char byte) {
        if (peek() != byte) return false;
        ++at_;
        return true;
    }
    void expect(char byte) {
        if (!takeIf(byte)) throw Failure{at_};
    }
    void spaces() {
        while (peek() == ' ' || peek() == '\t' || peek() == '\n' || peek() == '\r')
            ++at_;
    }

    Value value() {
        spaces();
        Value result = bareValue();
        spaces();
        return result;
    }

    Value bareValue() {
        Value result;
        if (peek() == '{' || peek() == '[') {
            if (depth_ == maxDepth_) throw Failure{at_};
            ++depth_;
            result = peek() == '{' ? dictionary() : array();
            --depth_;
        } else if (peek() == '"') {
            result.kind = Value::Kind::string;
            result.text = text();
        } else {
            result = word();
        }
        return result;
    }

    Value dictionary() {
        Value result;
        result.kind = Value::Kind::dictionary;
        expect('{');
        spaces();
        if (takeIf('}')) return result;
        do {
            spaces();
            if (peek() != '"') throw Failure{at_};
            std::u16string key = text();
            spaces();
            expect(':');
            Value member = value();
            const auto repeated = std::find(result.keys.begin(), result.keys.end(), key);
            if (repeated != result.keys.end()) {
                result.elements[static_cast<std::size_t>(repeated - result.keys.begin())] = std::move(member);
            } else {
                result.keys.push_back(std::move(key));
                result.elements.push_back(std::move(member));
            }
        } while (takeIf(','));
        expect('}');
        return result;
    }

    Value array() {
        Value result;
        result.kind = Value::Kind::array;
        expect('[');
        spaces();
        if (takeIf(']')) return result;
        do {
            result.elements.push_back(value());
        } while (takeIf(','));
        expect(']');
        return result;
    }

    Value word() {
        const std::size_t begin = at_;
        std::string word;
        while (peek() != -1 &&
               std::string_view(" \t\n\r,:[]{}\"").find(static_cast<char>(peek())) == std::string_view::npos)
            word += document_[at_++];
        Value result;
        if (word == "null") return result;
        result.kind = Value::Kind::number;
        if (word == "true" || word == "false") {
            result.number = Number(word == "true");
            return result;
        }
        for (const std::string_view literal : {"true", "false", "null"}) {
            if (peek() == -1 && !word.empty() && literal.substr(0, word.size()) == word) throw Failure{at_};
        }
        if (!isNumber(word)) throw Failure{begin};
        result.number = number(word, begin);
        return result;
    }

    static bool isNumber(const std::string& word) {
        std::size_t i = 0;
        const auto digits = [&] {
            const std::size_t first = i;
            while (i < word.size() && word[i] >= '0' && word[i] <= '9')
                ++i;
            return i - first;
        };
        if (i < word.size() && word[i] == '-') ++i;
        const bool startsWithZero = i < word.size() && word[i] == '0';
        const std::size_t count = digits();
        if (count == 0 || (startsWithZero && count != 1)) return false;
        if (i < word.size() && word[i] == '.') {
            ++i;
            if (digits() == 0) return false;
        }
        if (i < word.size() && (word[i] == 'e' || word[i] == 'E')) {
            ++i;
            if (i < word.size() && (word[i] == '+' || word[i] == '-')) ++i;
            if (digits() == 0) return false;
        }
        return i == word.size();
    }

    static Number number(const std::string& word, std::size_t begin) {
        if (word.find_first_of(".eE") == std::string::npos) {
            errno = 0;
            const long long integer = std::strtoll(word.c_str(), nullptr, 10);
            if (errno == 0) return Number(std::int64_t{integer});
            errno = 0;
            const std::uint64_t natural = std::strtoull(word.c_str(), nullptr, 10);
            if (errno == 0 && word[0] != '-') return Number(natural);
        }
        const double real = std::strtod(word.c_str(), nullptr);
        if (std::isinf(real)) throw Failure{begin};
        return Number(real);
    }

    std::u16string text() {
        const std::size_t quote = at_;
        std::size_t end = quote + 1;
        while (end < document_.size() && document_[end] != '"')
            end += document_[end] == '\\' ? 2 : 1;
        if (end >= document_.size()) throw Failure{quote};
        std::u16string result;
        for (++at_; at_ < end;) {
            if (peek() < 0x20) throw Failure{at_};
            if (peek() == '\\')
                escape(result);
            else
                sequence(result);
        }
        ++at_;
        return result;
    }

    void escape(std::u16string& result) {
        const std::size_t backslash = at_++;
        const int letter = peek();
        ++at_;
        if (letter != 'u') {
            constexpr std::string_view letters = "\"\\/bfnrt";
            constexpr std::u16string_view meanings = u"\"\\/\b\f\n\r\t";
            const std::size_t index = letter == -1 ? letters.npos : letters.find(static_cast<char>(letter));
            if (index == letters.npos) throw Failure{backslash};
            result += meanings[index];
            return;
        }
        unsigned unit = 0;
        for (int i = 0; i < 4; ++i, ++at_) {
            constexpr std::string_view digits = "0123456789abcdef";
            const std::size_t value =
                peek() == -1 ? digits.npos : digits.find(static_cast<char>(std::tolower(peek())));
            if (value == digits.npos) throw Failure{backslash};
            unit = unit * 16 + static_cast<unsigned>(value);
        }
        result += static_cast<char16_t>(unit);
    }

    void sequence(std::u16string& result) {
        const std::size_t begin = at_;
        const auto lead = static_cast<char32_t>(peek());
        const std::size_t length = lead < 0x80                   ? 1
                                   : lead >= 0xC0 && lead < 0xE0 ? 2
                                   : lead >= 0xE0 && lead < 0xF0 ? 3
                                   : lead >= 0xF0 && lead < 0xF8 ? 4
                                                                 : 0;
        if (length == 0) throw Failure{begin};
        char32_t character = length == 1 ? lead : lead & (0xFFu >> (length + 1));
        for (std::size_t i = 1; i < length; ++i) {
            if (peek(i) < 0x80 || peek(i) > 0xBF) throw Failure{begin};
            character = character << 6 | (static_cast<char32_t>(peek(i)) & 0x3F);
        }
        constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
        const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
        if (character < smallest[length] || character > 0x10FFFF || isSurrogate) throw Failure{begin};
        append(result, character);
        at_ += length;
    }

    std::string_view document_;
    std::size_t maxDepth_;
    std::size_t depth_ = 0;
    std::size_t at_ = 0;
};

}  // namespace

Result read(std::string_view document, std::size_t maxDepth) {
    try {
        return {Reader(document, maxDepth).document(), 0};
    } catch (const Failure& failure) {
        return {std::nullopt, failure.offset};
    }
}

bool isSame(const Value& value, RepresentationView view) {
    const auto isText = [](const std::u16string& units, std::string_view text) {
        return Text::isWellFormed(text) && Text::toUTF16(text) == units;
    };
    switch (value.kind) {
        case Value::Kind::null:
            return view.isNull();
        case Value::Kind::string:
            return view.isString() && isText(value.text, *view.text());
        case Value::Kind::number:
            return view.isNumber() && view.number()->origin() == value.number.origin() &&
                   NumberBits::of(*view.number()) == NumberBits::of(value.number);
        case Value::Kind::array: {
            if (!view.isArray() || view.size() != value.elements.size()) return false;
            auto element = view.elements().begin();
            return std::all_of(value.elements.begin(), value.elements.end(), [&](const Value& expected) {
                return isSame(expected, *element++);
            });
        }
        case Value::Kind::dictionary: {
            if (!view.isDictionary() || view.size() != value.keys.size()) return false;
            std::size_t i = 0;
            for (const auto [key, found] : view.members()) {
                const auto lookedUp = view.valueForKey(key);
                if (!isText(value.keys[i], key) || !isSame(value.elements[i], found)) return false;
                if (!lookedUp || RepresentationAccess::node(*lookedUp) != RepresentationAccess::node(found))
                    return false;
                ++i;
            }
            return true;
        }
    }
    return false;
}

std::string disagreement(std::string_view document, const std::optional<Representation>& representation,
                         const JSONError& error, std::size_t maxDepth) {
    const Result expected = read(document, maxDepth);
    if (expected.value) {
        if (!representation) return "refused: " + error.reason + " at " + std::to_string(error.offset);
        return isSame(*expected.value, *representation) ? "" : "another value";
    }
    if (representation) return "accepted, with a mistake at " + std::to_string(expected.errorOffset);
    if (error.offset != expected.errorOffset)
        return "the mistake is at " + std::to_string(expected.errorOffset) + ", not at " +
               std::to_string(error.offset) + ": " + error.reason;
    const std::string_view before = document.substr(0, error.offset);
    std::size_t line = 1;
    std::size_t column = 1;
    for (const char byte : before) {
        ++column;
        if (byte != '\n') continue;
        ++line;
        column = 1;
    }
    return line == error.line && column == error.column ? "" : "wrong line or column";
}

}  // namespace NaiveJSONOracle
