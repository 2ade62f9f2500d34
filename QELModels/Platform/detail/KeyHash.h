#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/detail/Word.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// The hash of a key with this first word, last byte and size.
constexpr std::uint16_t keyHash(Word first, unsigned char last, std::size_t size) noexcept {
    constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;       // 2^64 divided by the golden ratio
    constexpr std::uint64_t kOtherMultiplier = 0xD6E8FEB86659FD93;  // of no relation to it
    return static_cast<std::uint16_t>((first * kMultiplier + (size << 8 | last) * kOtherMultiplier) >> 48);
}

/// A 16-bit hash of a dictionary's key, the same at compile time and at run time. It looks at no more than
/// nine bytes, so that it costs the same for every key: good enough to tell the keys of one record apart, and
/// always followed by a comparison of the whole key.
constexpr std::uint16_t keyHash(std::string_view key) noexcept {
    return keyHash(firstWord(key), key.empty() ? '"' : static_cast<unsigned char>(key.back()), key.size());
}

/// The same for a key in a document, where a quote precedes it and eight bytes may be read, however short it
/// is. Without a branch, since the lengths of keys cannot be predicted.
inline std::uint16_t quotedKeyHash(const char* key, std::size_t size) noexcept {
    if constexpr (std::endian::native != std::endian::little) return keyHash(std::string_view(key, size));
    Word first = 0;
    std::memcpy(&first, key, sizeof first);
    return keyHash(first & kFirstBytes[size < sizeof first ? size : sizeof first],
                   static_cast<unsigned char>((key + size)[-1]),
                   size);
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
