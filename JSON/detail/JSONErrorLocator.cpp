#include "JSON/detail/JSONErrorLocator.h"

#include <algorithm>
#include <array>
#include <string>

#include "JSON/detail/ByteOrderMark.h"
#include "JSON/detail/JSONNumber.h"
#include "QELModels/Platform/detail/ASCII.h"
#include "QELModels/Values/Text.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

namespace {

constexpr std::string_view kSpaces = " \t\n\r";
constexpr std::string_view kWordEnds = " \t\n\r,:[]{}\"";
constexpr std::array<std::string_view, 3> kLiterals = {"true", "false", "null"};
constexpr std::size_t kHexDigits = 4;

constexpr std::string_view kCutShort = "the document ends before its value does";
constexpr std::string_view kNotUTF8 = "a sequence that is not UTF-8";

// How many bytes the sequence at the start of `bytes` has; 0 when it is not UTF-8.
std::size_t sequenceLength(std::string_view bytes) noexcept {
    const auto lead = static_cast<unsigned char>(bytes.front());
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    const std::string_view sequence = bytes.substr(0, length);
    // Texts may hold lone surrogate halves, but UTF-8 has no form for them.
    const bool isHalf = Text::endsInHighHalf(sequence) || Text::beginsWithLowHalf(sequence);
    return sequence.size() == length && Text::isWellFormed(sequence) && !isHalf ? length : 0;
}

// How many bytes the escape at the start of `bytes` has; 0 when it is not one.
std::size_t escapeLength(std::string_view bytes) noexcept {
    if (bytes.size() < 2) return 0;
    if (bytes[1] != 'u')
        return std::string_view("\"\\/bfnrt").find(bytes[1]) != std::string_view::npos ? 2 : 0;
    const std::string_view digits = bytes.substr(2, kHexDigits);
    return digits.size() == kHexDigits && std::all_of(digits.begin(), digits.end(), isHexDigit)
               ? 2 + kHexDigits
               : 0;
}

// Reads a document from its first byte on, up to the first mistake. What reads a part of it answers whether
// all is well so far.
class Locator {
public:
    Locator(std::string_view document, std::size_t maxDepth) noexcept
        : document_(document), maxDepth_(maxDepth) {}

    JSONError locate() {
        at_ = byteOrderMarkBytes(document_);
        skipSpaces();
        if (isAtEnd())
            fail(at_, "the document is empty");
        else if (value() && !isAtEnd())
            fail(at_, "something follows the document's value");
        return error();
    }

private:
    bool isAtEnd() const noexcept { return at_ == document_.size(); }
    bool isAt(char byte) const noexcept { return !isAtEnd() && document_[at_] == byte; }
    void skipSpaces() noexcept {
        at_ = std::min(document_.find_first_not_of(kSpaces, at_), document_.size());
    }

    bool fail(std::size_t offset, std::string_view reason) {
        offset_ = offset;
        reason_ = reason;
        return false;
    }
    bool failWanting(std::string_view wanted) {
        if (isAtEnd()) return fail(at_, kCutShort);
        if (sequenceLength(document_.substr(at_)) == 0) return fail(at_, kNotUTF8);
        return fail(at_, wanted);
    }

    // One value with all that is in it, and the space after it.
    bool value() {
        for (;;) {
            skipSpaces();
            if (isAt('{') || isAt('[')) {
                if (!open()) return false;
                const char end = closing();
                if (!isAt(end)) {
                    if (end == '}' && !key()) return false;
                    continue;
                }
            } else if (!scalar()) {
                return false;
            }
            if (!closeAll()) return false;
            if (open_.empty()) return true;
        }
    }

    char closing() const noexcept { return open_.back() == '{' ? '}' : ']'; }

    bool open() {
        if (open_.size() == maxDepth_) return fail(at_, "nested deeper than " + std::to_string(maxDepth_));
        open_.push_back(document_[at_++]);
        skipSpaces();
        return true;
    }

    // What follows a value: the ends of containers, and then, unless they are all closed, the next value's
    // key.
    bool closeAll() {
        skipSpaces();
        while (!open_.empty() && isAt(closing())) {
            open_.pop_back();
            ++at_;
            skipSpaces();
        }
        if (open_.empty()) return true;
        const bool isDictionary = open_.back() == '{';
        if (!isAt(',')) return failWanting(isDictionary ? "',' or '}' is missing" : "',' or ']' is missing");
        ++at_;
        skipSpaces();
        return !isDictionary || key();
    }

    bool key() {
        if (!isAt('"')) return failWanting("a key in quotes is missing");
        if (!text()) return false;
        skipSpaces();
        if (!isAt(':')) return failWanting("':' is missing");
        ++at_;
        return true;
    }

    bool scalar() {
        if (isAt('"')) return text();
        const std::size_t end = std::min(document_.find_first_of(kWordEnds, at_), document_.size());
        const std::string word(document_.substr(at_, end - at_));
        if (word.empty()) return failWanting("a value is missing");
        if (word.front() == '-' || isDigit(word.front())) {
            if (!number(word)) return false;
        } else if (std::find(kLiterals.begin(), kLiterals.end(), word) == kLiterals.end()) {
            const bool isCutShort =
                end == document_.size() &&
                std::any_of(kLiterals.begin(), kLiterals.end(), [&](auto l) { return l.starts_with(word); });
            if (isCutShort) return fail(end, kCutShort);
            return failWanting("a word that is no value");
        }
        at_ = end;
        return true;
    }

    bool number(const std::string& word) {
        const char* end = word.c_str();
        Number number;
        const NumberOutcome outcome = readNumber(end, number);
        if (outcome == NumberOutcome::tooLarge) return fail(at_, "a number that no double can hold");
        if (outcome == NumberOutcome::malformed || end != word.c_str() + word.size())
            return fail(at_, "a bad number");
        return true;
    }

    bool text() {
        const std::size_t quote = at_;
        std::size_t end = quote + 1;
        while (end < document_.size() && document_[end] != '"')
            end += document_[end] == '\\' ? 2 : 1;
        // Its quote comes before whatever else may be wrong with it.
        if (end >= document_.size()) return fail(quote, "a text without closing quote");
        for (++at_; at_ != end;) {
            const auto byte = static_cast<unsigned char>(document_[at_]);
            const std::string_view rest = document_.substr(at_, end - at_);
            if (byte < ' ') return fail(at_, "a control character that is not escaped");
            const std::size_t length = byte == '\\' ? escapeLength(rest) : sequenceLength(rest);
            if (length == 0) return fail(at_, byte == '\\' ? "a bad escape" : kNotUTF8);
            at_ += length;
        }
        ++at_;
        return true;
    }

    JSONError error() const {
        const std::string_view before = document_.substr(0, offset_);
        const std::size_t lineFeed = before.rfind('\n');
        return {.line = 1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')),
                .column = offset_ - (lineFeed == std::string_view::npos ? 0 : lineFeed + 1) + 1,
                .offset = offset_,
                .reason = reason_};
    }

    std::string_view document_;
    std::size_t maxDepth_;
    std::size_t at_ = 0;
    std::string open_;  // the brackets that are not closed
    std::size_t offset_ = 0;
    std::string reason_;
};

}  // namespace

JSONError locateError(std::string_view document, std::size_t maxDepth) {
    return Locator(document, maxDepth).locate();
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
