#include "QELModels/Values/Text.h"

#include <cstring>

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

constexpr char32_t kReplacementCharacter = 0xFFFD;

constexpr bool isHighHalf(char32_t unit) noexcept {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool isLowHalf(char32_t unit) noexcept {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// What the lead byte of a sequence determines: its length, and the range of its second byte. The range
/// excludes overlong forms and what is above U+10FFFF. All later bytes are any continuation bytes.
struct Lead {
    std::size_t length;
    unsigned char low, high;
};

constexpr Lead leadOf(unsigned char byte) noexcept {
    if (byte < 0x80) return {1, 0, 0};
    if (byte < 0xC2) return {0, 0, 0};
    if (byte < 0xE0) return {2, 0x80, 0xBF};
    if (byte == 0xE0) return {3, 0xA0, 0xBF};
    if (byte < 0xF0) return {3, 0x80, 0xBF};
    if (byte == 0xF0) return {4, 0x90, 0xBF};
    if (byte < 0xF4) return {4, 0x80, 0xBF};
    if (byte == 0xF4) return {4, 0x80, 0x8F};
    return {0, 0, 0};
}

/// The length of the character at the start of a text; 0 if it is not well formed. Halves are characters.
std::size_t characterLength(std::string_view text) noexcept {
    const Lead lead = leadOf(static_cast<unsigned char>(text[0]));
    if (lead.length <= 1) return lead.length;
    if (text.size() < lead.length) return 0;
    const auto second = static_cast<unsigned char>(text[1]);
    if (second < lead.low || second > lead.high) return 0;
    for (std::size_t i = 2; i < lead.length; ++i) {
        if (!Text::isContinuation(text[i])) return 0;
    }
    return lead.length;
}

char32_t decode(std::string_view character) noexcept {
    const auto lead = static_cast<unsigned char>(character[0]);
    if (character.size() == 1) return lead;
    char32_t value = lead & (0x7Fu >> character.size());
    for (const char byte : character.substr(1))
        value = value << 6 | (static_cast<unsigned char>(byte) & 0x3F);
    return value;
}

/// How many ASCII bytes are at the start of the text, counted in whole words: most texts are nothing else.
std::size_t asciiWords(std::string_view text) noexcept {
    constexpr std::uint64_t kHighBitOfEachByte = 0x8080808080808080;
    std::size_t at = 0;
    for (std::uint64_t word; at + sizeof word <= text.size(); at += sizeof word) {
        std::memcpy(&word, text.data() + at, sizeof word);
        if ((word & kHighBitOfEachByte) != 0) break;
    }
    return at;
}

}  // namespace

std::u16string Text::toUTF16(std::string_view wtf8) {
    std::u16string units;
    units.reserve(wtf8.size());
    while (!wtf8.empty()) {
        const std::size_t length = characterLength(wtf8);
        const char32_t character = length == 0 ? kReplacementCharacter : decode(wtf8.substr(0, length));
        if (character < 0x10000) {
            units.push_back(static_cast<char16_t>(character));
        } else {
            units.push_back(static_cast<char16_t>(0xD7C0 + (character >> 10)));
            units.push_back(static_cast<char16_t>(0xDC00 | (character & 0x3FF)));
        }
        wtf8.remove_prefix(length == 0 ? 1 : length);
    }
    return units;
}

std::string Text::fromUTF16(std::u16string_view units) {
    std::string text;
    text.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        char32_t character = units[i];
        if (isHighHalf(character) && i + 1 < units.size() && isLowHalf(units[i + 1])) {
            character = joined(character, units[++i]);
        }
        char bytes[kMaxCharacterBytes];
        text.append(bytes, encode(character, bytes));
    }
    return text;
}

std::size_t Text::codeUnitCount(std::string_view wtf8) noexcept {
    // One unit for the first byte of a character, and one more if the character has four bytes.
    std::size_t count = 0;
    for (const char byte : wtf8) {
        count += static_cast<std::size_t>(!isContinuation(byte)) +
                 static_cast<std::size_t>(static_cast<unsigned char>(byte) >= 0xF0);
    }
    return count;
}

bool Text::isWellFormed(std::string_view bytes) noexcept {
    return firstMalformedByte(bytes) == bytes.size();
}

std::size_t Text::firstMalformedByte(std::string_view bytes) noexcept {
    std::size_t at = 0;
    while (at < bytes.size()) {
        if (static_cast<unsigned char>(bytes[at]) < 0x80) {
            at += 1 + asciiWords(bytes.substr(at + 1));
            continue;
        }
        const std::string_view rest = bytes.substr(at);
        const std::size_t length = characterLength(rest);
        if (length == 0) return at;
        if (length == kHalfBytes && endsInHighHalf(rest.substr(0, length)) &&
            beginsWithLowHalf(rest.substr(length)) && isContinuation(rest[length + 2])) {
            return at;
        }
        at += length;
    }
    return bytes.size();
}

void Text::append(std::string& text, std::string_view piece) {
    if (!endsInHighHalf(text) || !beginsWithLowHalf(piece)) {
        text.append(piece);
        return;
    }
    char pair[kMaxCharacterBytes];
    const std::size_t length = encode(joined(text, piece), pair);
    // The piece is appended first: it may be a part of the text that the pair overwrites.
    const std::size_t high = text.size() - kHalfBytes;
    text.append(piece);
    text.replace(high, 2 * kHalfBytes, pair, length);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
