#pragma once

#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// Leads from the keys of a fixed set to their positions in one step: a multiplication sends each key to a
/// slot of its own. Other keys share these slots, so the caller compares the key that it finds. Made in
/// constant expressions.
///
///     constexpr std::array<std::uint32_t, 3> kKeys{...};
///     constexpr PerfectHash<std::uint32_t, 16> kHash(kKeys);
///     if (const std::size_t number = kHash.find(key); number != 0 && kKeys[number - 1] == key) ...
///
/// Four slots a key let a few tries find a multiplier. Where the keys are known, a `static_assert` on
/// `isFound` costs nothing.
template <std::unsigned_integral Word, std::size_t kSlots>
struct PerfectHash {
    static_assert(std::has_single_bit(kSlots) && kSlots > 1);
    static_assert(std::numeric_limits<Word>::digits >= 32, "products of smaller words are signed");

    /// What a key's product is shifted by to get its slot.
    static constexpr std::uint8_t kShift =
        std::numeric_limits<Word>::digits - std::countr_zero(std::uint64_t{kSlots});

    Word multiplier = 0;                       ///< 0: none was found
    std::array<std::uint8_t, kSlots> slots{};  ///< 1 for the first key, 2 for the second ...; 0 for no key

    constexpr explicit PerfectHash(std::span<const Word> keys) {
        if (keys.size() > std::numeric_limits<std::uint8_t>::max() || hasRepeated(keys)) return;
        constexpr int kTries = 1 << 15;
        // Odd multiples of 2^64 (2^32) divided by the golden ratio: one differs from the next in every bit.
        constexpr auto kFirst =
            static_cast<Word>(0x9E3779B97F4A7C15 >> (64 - std::numeric_limits<Word>::digits)) | 1;
        multiplier = kFirst;
        for (int i = 0; i < kTries; ++i, multiplier += 2 * kFirst)
            if (fill(keys)) return;
        multiplier = 0;
        slots = {};
    }

    constexpr bool isFound() const noexcept { return multiplier != 0; }

    /// The number of the only key that `key` can be, counted from 1; 0 where it can be none.
    constexpr std::size_t find(Word key) const noexcept { return slots[slotOf(key)]; }

private:
    static constexpr bool hasRepeated(std::span<const Word> keys) noexcept {
        for (std::size_t i = 1; i < keys.size(); ++i)
            for (std::size_t before = 0; before < i; ++before)
                if (keys[before] == keys[i]) return true;
        return false;
    }

    constexpr std::size_t slotOf(Word key) const noexcept {
        return static_cast<std::size_t>(static_cast<Word>(key * multiplier) >> kShift);
    }

    constexpr bool fill(std::span<const Word> keys) noexcept {
        slots = {};
        std::uint8_t number = 0;
        for (const Word key : keys) {
            std::uint8_t& slot = slots[slotOf(key)];
            if (slot != 0) return false;
            slot = ++number;
        }
        return true;
    }
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
