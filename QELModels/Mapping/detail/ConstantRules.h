#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "QELModels/Mapping/FEMRules.h"
#include "QELModels/Mapping/detail/RuleKeys.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/detail/KeyHash.h"
#include "QELModels/Platform/detail/PerfectHash.h"
#include "QELModels/Records/detail/ObjectAccess.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// The storage of the rules of one class.
template <class C, std::size_t Attributes, std::size_t Relationships>
struct ConstantRules {
    static constexpr std::size_t kRules = Attributes + Relationships;
    // Four slots a key find a hash without collisions in a few tries.
    using Hash = PerfectHash<std::uint32_t, std::bit_ceil(4 * kRules + 2)>;

    const FEMRules* inherited = nullptr;
    std::array<FEMRule, Attributes> attributes{};
    std::array<FEMRule, Relationships> relationships{};
    std::array<std::string_view, kRules> keys{};
    std::size_t keyCount = 0;
    Hash hash{std::span<const std::uint32_t>()};
    std::array<RuleKey, kRules + 1> entries{};
    std::array<std::uint16_t, Attributes> orderedAttributes{};
    std::size_t orderedAttributeCount = 0;
    std::uint32_t orderedKeys = 0;

    /// The rules as the engine takes them; they live as long as this.
    constexpr FEMRules rules() const {
        FEMRules rules{&C::objectClass, inherited, attributes, relationships, keysInUse(), {}, {}};
        if (!hash.isFound()) return rules;
        rules.table = {hash.slots,
                       std::span(entries).first(keyCount + 1),
                       keysInUse(),
                       &example<C>,
                       orderedKeys,
                       hash.multiplier,
                       Hash::kShift};
        rules.orderedAttributes = std::span(orderedAttributes).first(orderedAttributeCount);
        return rules;
    }

    /// The position of a first key, which is added when it is new.
    constexpr std::uint32_t keyPosition(std::string_view key) {
        const auto end = keys.begin() + static_cast<std::ptrdiff_t>(keyCount);
        const auto found = std::find(keys.begin(), end, key);
        if (found == end) keys[keyCount++] = key;
        return static_cast<std::uint32_t>(found - keys.begin());
    }

    /// When all rules are there: finds out how the engine goes through a dictionary.
    constexpr void finish() {
        orderKeys();
        for (std::size_t i = 0; i < keyCount; ++i)
            entries[i + 1] = RuleKey(keys[i]);
        for (std::size_t i = 0; i < Attributes; ++i) {
            const FEMRule& rule = attributes[i];
            if (isStoredAtOnce(rule)) {
                entries[rule.key + 1].store = rule.property->place.store;
                entries[rule.key + 1].slot = rule.property->place.slot;
            } else {
                orderedAttributes[orderedAttributeCount++] = static_cast<std::uint16_t>(i);
            }
        }
        std::array<std::uint32_t, kRules> hashes{};
        for (std::size_t i = 0; i < keyCount; ++i)
            hashes[i] = std::uint32_t{keyHash(keys[i])};
        hash = Hash(std::span<const std::uint32_t>(hashes).first(keyCount));
    }

private:
    constexpr std::span<const std::string_view> keysInUse() const { return std::span(keys).first(keyCount); }

    // Whether an attribute's rule takes a value as it is, from a key that no other rule has. (No other rule
    // has its property either.)
    constexpr bool isStoredAtOnce(const FEMRule& rule) const {
        if (rule.map.isGiven || rule.hasFurtherKeys()) return false;
        const auto isRival = [&rule](const FEMRule& other) {
            return &other != &rule && other.key == rule.key;
        };
        return std::none_of(attributes.begin(), attributes.end(), isRival) &&
               std::none_of(relationships.begin(), relationships.end(), isRival);
    }

    // Puts the keys whose values are stored at once after all others.
    constexpr void orderKeys() {
        std::array<bool, kRules> isAtOnce{};
        for (const FEMRule& rule : attributes)
            isAtOnce[rule.key] = isStoredAtOnce(rule);
        const auto before = keys;
        std::array<std::uint32_t, kRules> position{};
        std::uint32_t count = 0;
        for (const bool atOnce : {false, true}) {
            for (std::size_t i = 0; i < keyCount; ++i) {
                if (isAtOnce[i] != atOnce) continue;
                keys[count] = before[i];
                position[i] = count++;
            }
            if (!atOnce) orderedKeys = count;
        }
        for (FEMRule& rule : attributes)
            rule.key = position[rule.key];
        for (FEMRule& rule : relationships)
            rule.key = position[rule.key];
    }
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
