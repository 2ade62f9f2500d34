#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Text as the library keeps it, seen as UTF-16 code units.
///
/// Texts are WTF-8: UTF-8 in which a lone surrogate half has its three-byte form. A high half that is
/// directly followed by a low half is always one character of four bytes. So every sequence of code units has
/// exactly one byte form, and equal bytes are equal code units.
///
/// A text that is not well formed makes no function throw or read past its end.
struct QELMODELS_EXPORT Text {
    /// The size of the longest character, in bytes.
    static constexpr std::size_t kMaxCharacterBytes = 4;

    /// The code units of `wtf8`. A byte that belongs to no well-formed character comes out as U+FFFD.
    static std::u16string toUTF16(std::string_view wtf8);

    /// The text made of `units`: pairs become one character of four bytes, lone halves keep three bytes.
    static std::string fromUTF16(std::u16string_view units);

    /// How many code units a well-formed text has; `toUTF16(wtf8).size()` without making it.
    static std::size_t codeUnitCount(std::string_view wtf8) noexcept;

    /// Whether `bytes` are WTF-8: complete sequences, none overlong, nothing above U+10FFFF, and no pair of
    /// surrogates left as two halves. Valid UTF-8 is well formed.
    static bool isWellFormed(std::string_view bytes) noexcept;

    /// The position of the first sequence that is not WTF-8; `bytes.size()` if all are. Of a pair left as two
    /// halves, it is the position of the high half.
    static std::size_t firstMalformedByte(std::string_view bytes) noexcept;

    /// Appends `piece` to `text`. A high half at the end of the one and a low half at the start of the other
    /// become one character, which plain concatenation would miss. `piece` may be a part of `text`.
    static void append(std::string& text, std::string_view piece);

    /// Whether a byte is a later byte of a character, not its first one.
    static constexpr bool isContinuation(char byte) noexcept {
        return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
    }

    /// Whether a high half, not yet part of a pair, ends the text.
    static constexpr bool endsInHighHalf(std::string_view wtf8) noexcept {
        return wtf8.size() >= kHalfBytes && isHalf(wtf8.substr(wtf8.size() - kHalfBytes), kHighHalves);
    }

    /// Whether a low half, not yet part of a pair, begins the text.
    static constexpr bool beginsWithLowHalf(std::string_view wtf8) noexcept {
        return wtf8.size() >= kHalfBytes && isHalf(wtf8, kLowHalves);
    }

    /// The character of the high half at the end of `left` and the low half at the start of `right`.
    /// Requires: both are there.
    static constexpr char32_t joined(std::string_view left, std::string_view right) noexcept {
        assert(endsInHighHalf(left) && beginsWithLowHalf(right));
        return joined(halfAt(left.substr(left.size() - kHalfBytes)), halfAt(right));
    }

    /// The character of a pair of code units.
    static constexpr char32_t joined(char32_t high, char32_t low) noexcept {
        return 0x10000 + ((high & 0x3FF) << 10) + (low & 0x3FF);
    }

    /// Writes a character of at most U+10FFFF, or a lone half. Answers how many bytes it takes, 1 to 4.
    static constexpr std::size_t encode(char32_t character, char* to) noexcept {
        if (character < 0x80) {
            to[0] = static_cast<char>(character);
            return 1;
        }
        if (character < 0x800) {
            to[0] = static_cast<char>(0xC0 | character >> 6);
            to[1] = continuation(character);
            return 2;
        }
        if (character < 0x10000) {
            to[0] = static_cast<char>(0xE0 | character >> 12);
            to[1] = continuation(character >> 6);
            to[2] = continuation(character);
            return 3;
        }
        to[0] = static_cast<char>(0xF0 | character >> 18);
        to[1] = continuation(character >> 12);
        to[2] = continuation(character >> 6);
        to[3] = continuation(character);
        return 4;
    }

    /// How many bytes a lone half takes.
    static constexpr std::size_t kHalfBytes = 3;

private:
    // Both kinds of half begin with 0xED; the top four bits of the second byte tell them apart.
    static constexpr unsigned kHalfLead = 0xED, kHighHalves = 0xA0, kLowHalves = 0xB0;

    static constexpr unsigned byteAt(std::string_view text, std::size_t at) noexcept {
        return static_cast<unsigned char>(text[at]);
    }
    static constexpr bool isHalf(std::string_view text, unsigned kind) noexcept {
        return byteAt(text, 0) == kHalfLead && (byteAt(text, 1) & 0xF0) == kind;
    }
    static constexpr char32_t halfAt(std::string_view text) noexcept {
        return 0xD000 | (byteAt(text, 1) & 0x3F) << 6 | (byteAt(text, 2) & 0x3F);
    }
    static constexpr char continuation(char32_t bits) noexcept {
        return static_cast<char>(0x80 | (bits & 0x3F));
    }
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
