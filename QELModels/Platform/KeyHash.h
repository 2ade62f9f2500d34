#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "QELModels/Platform/Export.h"

namespace QELModels::inline QELMODELS_ABI {

/// The hash that belongs to a key's first and last (at most) eight bytes, each read as a little-endian
/// number.
constexpr std::uint16_t keyHash(std::uint64_t first, std::uint64_t last, std::size_t size) noexcept {
    constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;  // 2^64 divided by the golden ratio
    const std::uint64_t mixed = (first ^ std::rotl(last, 29)) * kMultiplier + size;
    return static_cast<std::uint16_t>((mixed ^ mixed >> 32) * kMultiplier >> 48);
}

/// A 16-bit hash of a dictionary's key, the same at compile time and at run time. It reads at most the first
/// and the last eight bytes, so that it costs the same for every key: good enough to tell the keys of one
/// record apart, and always followed by a comparison of the whole key.
constexpr std::uint16_t keyHash(std::string_view key) noexcept {
    const auto load = [key](std::size_t position, std::size_t bytes) {
        std::uint64_t word = 0;
        if constexpr (std::endian::native == std::endian::little) {
            if (!std::is_constant_evaluated()) {
                if (bytes == 8) {
                    std::memcpy(&word, key.data() + position, 8);
                } else {
                    std::uint32_t half = 0;
                    std::memcpy(&half, key.data() + position, 4);
                    word = half;
                }
                return word;
            }
        }
        for (std::size_t i = bytes; i-- > 0;)
            word = word << 8 | static_cast<unsigned char>(key[position + i]);
        return word;
    };
    const auto byte = [key](std::size_t position) {
        return static_cast<std::uint64_t>(static_cast<unsigned char>(key[position])) << (8 * position);
    };
    const std::size_t size = key.size();
    if (size >= 8) return keyHash(load(0, 8), load(size - 8, 8), size);
    // All bytes of a shorter key, some of them taken in twice.
    std::uint64_t all = 0;
    if (size >= 4)
        all = load(0, 4) | load(size - 4, 4) << (8 * (size - 4));
    else if (size != 0)
        all = byte(0) | byte(size / 2) | byte(size - 1);
    return keyHash(all, all, size);
}

/// The same for a key of which eight bytes may be read however short it is: without a branch, since the
/// lengths of keys cannot be foretold.
inline std::uint16_t paddedKeyHash(const char* key, std::size_t size) noexcept {
    if constexpr (std::endian::native != std::endian::little) return keyHash(std::string_view(key, size));
    const std::size_t read = size < 8 ? size : 8;
    std::uint64_t first = 0;
    std::uint64_t last = 0;
    std::memcpy(&first, key, 8);
    std::memcpy(&last, key + size - read, 8);
    // In two steps, since no shift may be as wide as the word.
    const std::size_t unused = 8 - read;
    const std::uint64_t mask = ~std::uint64_t{0} >> 4 * unused >> 4 * unused;
    return keyHash(first & mask, last & mask, size);
}

}  // namespace QELModels::inline QELMODELS_ABI
