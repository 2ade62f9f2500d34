#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The hash that belongs to the first (at most) eight bytes of a key, read as a little-endian number, to its
/// last byte and to its size.
constexpr std::uint16_t keyHash(std::uint64_t first, unsigned char last, std::size_t size) noexcept {
    constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;       // 2^64 divided by the golden ratio
    constexpr std::uint64_t kOtherMultiplier = 0xD6E8FEB86659FD93;  // of no relation to it
    return static_cast<std::uint16_t>((first * kMultiplier + (size << 8 | last) * kOtherMultiplier) >> 48);
}

/// A 16-bit hash of a dictionary's key, the same at compile time and at run time. It looks at no more than
/// nine bytes, so that it costs the same for every key: good enough to tell the keys of one record apart, and
/// always followed by a comparison of the whole key.
constexpr std::uint16_t keyHash(std::string_view key) noexcept {
    std::uint64_t first = 0;
    for (std::size_t i = key.size() < 8 ? key.size() : 8; i-- > 0;)
        first = first << 8 | static_cast<unsigned char>(key[i]);
    return keyHash(first, key.empty() ? '"' : static_cast<unsigned char>(key.back()), key.size());
}

/// Masks that keep so many of a word's first bytes.
inline constexpr std::uint64_t kFirstBytes[] = {0,
                                                0xFF,
                                                0xFFFF,
                                                0xFFFFFF,
                                                0xFFFFFFFF,
                                                0xFFFFFFFFFF,
                                                0xFFFFFFFFFFFF,
                                                0xFFFFFFFFFFFFFF,
                                                0xFFFFFFFFFFFFFFFF};

/// The same for a key in a document: a quote stands in front of it, and eight bytes may be read however short
/// it is. Without a branch, since the lengths of keys cannot be foretold.
inline std::uint16_t quotedKeyHash(const char* key, std::size_t size) noexcept {
    if constexpr (std::endian::native != std::endian::little) return keyHash(std::string_view(key, size));
    std::uint64_t first = 0;
    std::memcpy(&first, key, 8);
    return keyHash(
        first & kFirstBytes[size < 8 ? size : 8], static_cast<unsigned char>((key + size)[-1]), size);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
