#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "QELModels/Platform/Export.h"

/// @file
/// The hash functions of every `hash()` of the library. They are fixed and have no seed: equal
/// values have equal hashes in every process and on every machine. They spread ordinary data well, and
/// nothing more is promised: a hash table with keys from an adversary needs a hash with a seed.

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// Folds the hash of one more field into the hash of a record: h * 31 + x, modulo 2^64.
constexpr std::uint64_t hashCombine(std::uint64_t h, std::uint64_t x) noexcept {
    return h * 31 + x;
}

/// Spreads the bits of one word over all 64 bits. Different words give different hashes.
constexpr std::uint64_t hashOfWord(std::uint64_t word) noexcept {
    // A product with an odd number and a shift that is folded in can both be undone, so nothing collides.
    constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;  // 2^64 divided by the golden ratio
    std::uint64_t h = (word ^ 0xA0761D6478BD642F) * kMultiplier;
    h = (h ^ (h >> 32)) * kMultiplier;
    return h ^ (h >> 29);
}

/// The hash of all bytes of `text` and of its length.
constexpr std::uint64_t hashOfText(std::string_view text) noexcept {
    // Bytes are joined by shifts, which compilers turn into one load. So the hash is a constant expression
    // and does not depend on the byte order of the machine.
    constexpr auto byteAt = [](const char* p, int index) {
        return static_cast<std::uint64_t>(static_cast<unsigned char>(p[index]));
    };
    constexpr auto fourBytesAt = [byteAt](const char* p) {
        return byteAt(p, 0) | byteAt(p, 1) << 8 | byteAt(p, 2) << 16 | byteAt(p, 3) << 24;
    };
    constexpr auto eightBytesAt = [byteAt](const char* p) {
        return byteAt(p, 0) | byteAt(p, 1) << 8 | byteAt(p, 2) << 16 | byteAt(p, 3) << 24 |
               byteAt(p, 4) << 32 | byteAt(p, 5) << 40 | byteAt(p, 6) << 48 | byteAt(p, 7) << 56;
    };
    constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;

    const char* p = text.data();
    const std::size_t size = text.size();
    std::uint64_t h = size * kMultiplier;
    std::uint64_t last = 0;
    if (size > 8) {
        // Whole words, then the last eight bytes, which may overlap the word before them.
        const char* const lastWord = p + (size - 8);
        for (; p < lastWord; p += 8) {
            h = (h ^ eightBytesAt(p)) * kMultiplier;
            h ^= h >> 32;
        }
        last = eightBytesAt(lastWord);
    } else if (size >= 4) {
        last = fourBytesAt(p) | fourBytesAt(p + (size - 4)) << 32;
    } else if (size > 0) {
        // First, middle and last byte are all of them. The length is in `h` already.
        last = byteAt(p, 0) | byteAt(p + size / 2, 0) << 8 | byteAt(p + (size - 1), 0) << 16;
    }
    return hashOfWord(h ^ last);
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
