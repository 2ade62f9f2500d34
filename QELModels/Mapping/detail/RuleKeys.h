#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/detail/ByteBlock.h"
#include "QELModels/Records/Property.h"
#include "QELModels/Representation/detail/RepresentationNode.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// A first key of constant rules, with all that the engine needs to know of it where it goes through the
/// members of a dictionary.
struct RuleKey {
    constexpr RuleKey() = default;
    constexpr explicit RuleKey(std::string_view key) noexcept : size(static_cast<std::uint32_t>(key.size())) {
        std::copy_n(key.begin(), std::min(key.size(), ByteBlock::kSize), first);
    }

    /// Whether the key's value is stored as soon as the key is found: one rule alone reads the key, and takes
    /// the value as it is. Nothing then depends on the order.
    constexpr bool isStoredAtOnce() const noexcept { return store != nullptr; }

    char first[ByteBlock::kSize] = {};     ///< how it begins; NULs where it is shorter
    PropertyPlace::Store store = nullptr;  ///< null for a key whose value waits for the rules
    const void* slot = nullptr;            ///< in the example of the class
    std::uint32_t size = UINT32_MAX;       ///< in bytes; that of no key where there is none
};

/// The way from a member's key to its place among the first keys of constant rules, in one step. `slots` lead
/// from a key's hash to its entry; every other hash leads to some entry too, or to the first one, which
/// belongs to no key. Without slots, a dictionary is asked for each key instead.
struct RuleKeys {
    std::span<const std::uint8_t> slots;
    std::span<const RuleKey> entries;  ///< after the first one, one for each of `keys`
    std::span<const std::string_view> keys;
    const void* example = nullptr;  ///< the object in which the slots of the entries lie
    std::uint32_t orderedKeys = 0;  ///< keys whose values wait for the rules; they come first
    std::uint32_t multiplier = 0;
    std::uint8_t shift = 0;

    /// The entry of a member's key; null when it is none of `keys`.
    /// Requires: there are slots.
    const RuleKey* find(const RepresentationNode& key) const noexcept {
        assert(!slots.empty());
        const std::size_t slot = slots[std::uint32_t{key.keyHash} * multiplier >> shift];
        const RuleKey& entry = entries[slot];
        if (entry.size != key.size) return nullptr;
        if (key.size <= ByteBlock::kSize) [[likely]]
            return ByteBlock(key.text).first(key.size).equals(entry.first) ? &entry : nullptr;
        if (slot == 0) return nullptr;
        // Two blocks, which may overlap, are all of nearly every key.
        const std::string_view whole = keys[slot - 1];
        const std::size_t last = key.size - ByteBlock::kSize;
        const bool same = last > ByteBlock::kSize
                              ? whole == key.string()
                              : ByteBlock(key.text).equals(entry.first) &&
                                    ByteBlock(key.text + last).equals(whole.data() + last);
        return same ? &entry : nullptr;
    }
    /// The position of an entry's key among `keys`.
    std::size_t position(const RuleKey& entry) const noexcept {
        return static_cast<std::size_t>(&entry - entries.data()) - 1;
    }
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
