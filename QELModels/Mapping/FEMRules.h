#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>

#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/detail/ByteBlock.h"
#include "QELModels/Platform/detail/KeyHash.h"
#include "QELModels/Records/Declaration.h"
#include "QELModels/Records/ObjectClass.h"
#include "QELModels/Records/PropertyWriter.h"
#include "QELModels/Representation/Representation.h"

/// @file
/// The rules of a mapping as constant data, and the words in which a record's source writes them:
///
///     static constexpr auto rules = mapping<declared>(             // in the order in which they are applied
///         attribute<&QELAsset::status>(),                          // the key path is the property's name
///         attribute<&QELAsset::assetIdentifier>("id"),
///         attribute<&QELAsset::title>("title", fetched(kQELHTMLTransformer)),
///         relationship<&QELAsset::category>());                    // one or many: from the member's type
///     constinit const FEMRules QELAsset::defaultRules = rules;

namespace QELModels {
inline namespace QELMODELS_ABI {

class FEMMapping;
struct FEMRules;

/// What map rules hold on to from the moment in which their mapping is built. The registry of transformers,
/// and nobody else, publishes it here as a whole: something that never changes and is never freed, so that a
/// mapping takes hold of all of it by one load. Null until a transformer was registered.
struct QELMODELS_EXPORT FEMCaptured {
    static std::atomic<const void*> current;
};

/// The JSON values that a rule has a use for, besides null.
enum class FEMAccepts : std::uint8_t {
    anything,    ///< not known: a map rule of an application decides
    nothing,     ///< the property holds what no raw value is
    text,        ///< a string
    reference,   ///< a string that is a URL
    color,       ///< a string that is a colour; all else but null is a fault
    word,        ///< a string that stands in a table
    number,      ///< a number or a boolean, which are one kind here
    array,       ///< an array
    dictionary,  ///< a dictionary
};

/// A map rule as constant data: what is called, and what it is called with. The value given to it is never
/// absent, possibly null. `captured` is what its mapping found in `FEMCaptured`.
struct FEMMapRule {
    using Apply = void (*)(const FEMMapRule&, const void* captured, RepresentationView, PropertyWriter&);
    using Word = std::string_view (*)(const FEMMapRule&, std::size_t);

    Apply apply = nullptr;       ///< null: the value is taken as it is
    const void* data = nullptr;  ///< for `apply`, like `size`; of a table, its entries and their number
    std::size_t size = 0;
    Word word = nullptr;  ///< of a table: the word of an entry by its position
    FEMAccepts accepts = FEMAccepts::anything;
};

/// One entry of a lookup table from a document's word to a number.
template <class T>
concept FEMLookupEntry = requires(const T& entry) {
    std::string_view(entry.name);
    static_cast<std::int64_t>(entry.value);
};

/// The map rule that looks a word up in a table: an exact match of the whole string; anything else has no
/// entry.
template <FEMLookupEntry Entry, std::size_t N>
constexpr FEMMapRule lookedUpIn(const std::array<Entry, N>& table) {
    return {[](const FEMMapRule& rule, const void*, RepresentationView value, PropertyWriter& to) {
                const auto word = value.text();
                if (!word) return;
                for (const Entry& entry : std::span(static_cast<const Entry*>(rule.data), rule.size))
                    if (entry.name == *word) return to.put(Number(static_cast<std::int64_t>(entry.value)));
            },
            table.data(),
            N,
            [](const FEMMapRule& rule, std::size_t i) -> std::string_view {
                return static_cast<const Entry*>(rule.data)[i].name;
            },
            FEMAccepts::word};
}

/// One rule, ready to be applied: its property is known and its key path is split.
struct FEMRule {
    const Property* property = nullptr;
    std::uint32_t key = 0;         ///< which of the mapping's first keys the key path begins with
    bool toMany = false;           ///< of a relationship
    FEMMapRule map;                ///< of an attribute
    std::string_view furtherKeys;  ///< the key path after its first key; null data when that is all
    std::string_view keyPath;
    const FEMRules* target = nullptr;     ///< of a relationship: constant rules, or ...
    const FEMMapping* mapping = nullptr;  ///< ... a mapping with rules and captures of its own

    /// Whether it fills a record or a list of them; all others are attributes.
    bool isRelationship() const noexcept { return target != nullptr || mapping != nullptr; }
    /// The JSON values that the rule has a use for.
    QELMODELS_EXPORT FEMAccepts accepts() const noexcept;
    /// Of a relationship: the rules for what stands under it.
    QELMODELS_EXPORT const FEMRules& nestedRules() const noexcept;
};

/// A first key of constant rules, with all that the engine needs to know of it where members are gone
/// through.
struct FEMKey {
    constexpr FEMKey() = default;
    constexpr explicit FEMKey(std::string_view key) noexcept : size(static_cast<std::uint32_t>(key.size())) {
        std::copy_n(key.begin(), std::min(key.size(), detail::ByteBlock::kSize), first);
    }

    /// Whether the key's value is put into a property as it is.
    constexpr bool isPut() const noexcept { return put != nullptr; }

    char first[detail::ByteBlock::kSize] = {};  ///< how it begins; NULs stand for what is missing
    Property::PutRaw put = nullptr;   ///< of a key that one rule alone reads, and takes as it is, for ...
    const void* place = nullptr;      ///< ... this property, which no other rule fills; else null
    std::uint32_t size = UINT32_MAX;  ///< in bytes; that of no key where there is none
};

/// The rules of one mapping. `keys` are the first keys of all key paths, each once. Constant rules have more,
/// if the hashes of their keys can be told apart in one step:
///
/// - `slots` lead from a key's hash to its entry, and any other hash to some entry or to the first one, which
///   belongs to no key.
/// - Values that are put as they are depend on nothing, so they are put when their keys are found. All other
///   rules are applied in their order afterwards.
struct FEMRules {
    const ObjectClass* objectClass = nullptr;
    const void* example = nullptr;  ///< of constant rules: in which the places of properties are places
    std::span<const FEMRule> attributes;
    std::span<const FEMRule> relationships;
    std::span<const std::string_view> keys;  ///< those whose values are put stand behind the others

    std::span<const std::uint8_t> slots;
    std::span<const FEMKey> entries;         ///< behind the first one, one for each of `keys`
    std::span<const std::uint16_t> inOrder;  ///< the positions of all attributes whose values are not put
    std::uint32_t keysInOrder = 0;           ///< how many keys have values that are not put
    std::uint32_t multiplier = 0;
    std::uint8_t shift = 0;

    /// The entry of a member's key; null when it is none of `keys`. Needs `slots`.
    const FEMKey* find(const RepresentationNode& key) const noexcept {
        const std::size_t slot = slots[std::uint32_t{key.keyHash} * multiplier >> shift];
        const FEMKey& entry = entries[slot];
        if (entry.size != key.size) return nullptr;
        if (key.size <= detail::ByteBlock::kSize) [[likely]]
            return detail::ByteBlock(key.text).first(key.size).equals(entry.first) ? &entry : nullptr;
        if (slot == 0) return nullptr;
        // Two blocks, which may overlap, are all of nearly every key.
        const std::string_view whole = keys[slot - 1];
        const std::size_t last = key.size - detail::ByteBlock::kSize;
        const bool same = last > detail::ByteBlock::kSize
                              ? whole == key.string()
                              : detail::ByteBlock(key.text).equals(entry.first) &&
                                    detail::ByteBlock(key.text + last).equals(whole.data() + last);
        return same ? &entry : nullptr;
    }
    /// The position of an entry's key among `keys`.
    std::size_t position(const FEMKey& entry) const noexcept {
        return static_cast<std::size_t>(&entry - entries.data()) - 1;
    }
};

/// A rule as it is written down; `mapping` resolves it.
template <auto M>
struct AttributeRule {
    static constexpr auto kMember = M;
    static constexpr bool kRelationship = false;
    std::string_view keyPath;
    FEMMapRule map;
};
template <auto M>
struct RelationshipRule {
    using Target = typename MemberOf<decltype(M)>::Type::Target;
    static constexpr auto kMember = M;
    static constexpr bool kRelationship = true;
    std::string_view keyPath;
};

/// A rule that fills a property from a key path, the property's name where none is given, through a map rule
/// or as the value is.
template <auto Member>
consteval AttributeRule<Member> attribute(std::string_view keyPath = {}, FEMMapRule map = {}) {
    using Pointed = MemberOf<decltype(Member)>;
    static_assert(!Pointed::kComputed, "a computed property cannot be set");
    static_assert(Pointed::Type::kKind != PropertyKind::record && Pointed::Type::kKind != PropertyKind::list,
                  "an attribute cannot be a record or a list of records");
    return {keyPath, map};
}

/// A rule that fills a nested record, or a list of them, by the default rules of their class.
template <auto Member>
consteval RelationshipRule<Member> relationship(std::string_view keyPath = {}) {
    using Pointed = MemberOf<decltype(Member)>;
    static_assert(
        requires { typename Pointed::Type::Target; }, "a relationship needs a record or a list of records");
    return {keyPath};
}

/// The storage of one mapping's rules.
template <std::size_t Attributes, std::size_t Relationships>
struct ConstantRules {
    static constexpr std::size_t kRules = Attributes + Relationships;
    // Four slots a key find a hash without collisions in a few tries.
    static constexpr std::size_t kSlots = std::bit_ceil(4 * kRules + 2);
    static constexpr std::uint8_t kShift = 32 - std::bit_width(kSlots - 1);

    /// What `FEMRules` refers to.
    const ObjectClass* objectClass = nullptr;
    const void* example = nullptr;
    std::array<FEMRule, Attributes> attributes{};
    std::array<FEMRule, Relationships> relationships{};
    std::array<std::string_view, kRules> keys{};
    std::size_t keyCount = 0;
    std::array<std::uint8_t, kSlots> slots{};
    std::array<FEMKey, kRules + 1> entries{};
    std::array<std::uint16_t, Attributes> inOrder{};
    std::size_t inOrderCount = 0;
    std::uint32_t keysInOrder = 0;
    std::uint32_t multiplier = 0;

    /// The rules as the engine takes them; they live as long as this.
    constexpr operator FEMRules() const& {
        FEMRules rules;
        rules.objectClass = objectClass;
        rules.example = example;
        rules.attributes = attributes;
        rules.relationships = relationships;
        rules.keys = std::span(keys).first(keyCount);
        if (multiplier == 0) return rules;
        rules.slots = slots;
        rules.entries = std::span(entries).first(keyCount + 1);
        rules.inOrder = std::span(inOrder).first(inOrderCount);
        rules.keysInOrder = keysInOrder;
        rules.multiplier = multiplier;
        rules.shift = kShift;
        return rules;
    }

    /// For `mapping`, which fills the storage: the position of a first key, which is added when it is new.
    constexpr std::uint32_t keyPosition(std::string_view key) {
        for (std::size_t i = 0; i < keyCount; ++i)
            if (keys[i] == key) return static_cast<std::uint32_t>(i);
        keys[keyCount] = key;
        return static_cast<std::uint32_t>(keyCount++);
    }

    /// For `mapping`, when all rules are there: finds out how the engine goes through a dictionary.
    constexpr void finish() {
        placeKeys();
        for (std::size_t i = 0; i < keyCount; ++i)
            entries[i + 1] = FEMKey(keys[i]);
        for (std::size_t i = 0; i < Attributes; ++i) {
            const FEMRule& rule = attributes[i];
            if (isPut(rule)) {
                entries[rule.key + 1].put = rule.property->putRaw;
                entries[rule.key + 1].place = rule.property->place;
            } else {
                inOrder[inOrderCount++] = static_cast<std::uint16_t>(i);
            }
        }
        findMultiplier();
    }

private:
    // Whether an attribute's rule takes a value as it is, from a key and into a property that no other rule
    // has.
    constexpr bool isPut(const FEMRule& rule) const {
        if (rule.map.apply != nullptr || rule.furtherKeys.data() != nullptr) return false;
        const auto rivals = [&rule](const FEMRule& other) {
            return &other != &rule && (other.key == rule.key || other.property == rule.property);
        };
        return std::none_of(attributes.begin(), attributes.end(), rivals) &&
               std::none_of(relationships.begin(), relationships.end(), rivals);
    }

    // Brings the keys whose values are put behind all others.
    constexpr void placeKeys() {
        std::array<bool, kRules> putsKey{};
        for (const FEMRule& rule : attributes)
            putsKey[rule.key] = isPut(rule);
        const auto before = keys;
        std::array<std::uint32_t, kRules> position{};
        std::uint32_t count = 0;
        for (const bool put : {false, true}) {
            for (std::size_t i = 0; i < keyCount; ++i) {
                if (putsKey[i] != put) continue;
                keys[count] = before[i];
                position[i] = count++;
            }
            if (!put) keysInOrder = count;
        }
        for (FEMRule& rule : attributes)
            rule.key = position[rule.key];
        for (FEMRule& rule : relationships)
            rule.key = position[rule.key];
    }

    // Looks for a multiplier that sends every key's hash to a slot of its own; without one, keys are looked
    // up.
    constexpr void findMultiplier() {
        if (keyCount > UINT8_MAX - 1) return;
        std::array<std::uint16_t, kRules> hashes{};
        for (std::size_t i = 0; i < keyCount; ++i) {
            hashes[i] = detail::keyHash(keys[i]);
            if (std::find(hashes.begin(), hashes.begin() + i, hashes[i]) != hashes.begin() + i) return;
        }
        for (std::uint32_t candidate = 1; candidate <= UINT16_MAX; candidate += 2) {
            // The product with a hash of 16 bits fills the upper half of 32.
            const std::uint32_t upper = candidate << 16;
            slots = {};
            std::size_t placed = 0;
            for (; placed < keyCount; ++placed) {
                std::uint8_t& slot = slots[hashes[placed] * upper >> kShift];
                if (slot != 0) break;
                slot = static_cast<std::uint8_t>(placed + 1);
            }
            if (placed < keyCount) continue;
            multiplier = upper;
            return;
        }
    }
};

/// The rules of the class whose properties are `Declared`, in the order in which they are applied: all
/// attributes before all relationships.
template <const auto& Declared, class... Rules>
consteval auto mapping(Rules... written) {
    using Class = typename std::remove_cvref_t<decltype(Declared)>::Class;
    constexpr std::size_t kRelationships = (std::size_t{Rules::kRelationship} + ... + 0);
    ConstantRules<sizeof...(Rules) - kRelationships, kRelationships> rules;
    rules.objectClass = &Class::objectClass;
    rules.example = exampleOf<Class>;
    std::size_t attributes = 0;
    std::size_t relationships = 0;
    [[maybe_unused]] const auto add = [&]<class Rule>(const Rule& rule) {
        constexpr const Property* property = Declared.template of<Rule::kMember>();
        static_assert(property != nullptr, "a rule for a property that is not declared");
        FEMRule resolved;
        resolved.property = property;
        resolved.keyPath = rule.keyPath.empty() ? property->name : rule.keyPath;
        const std::size_t dot = resolved.keyPath.find('.');
        resolved.key = rules.keyPosition(resolved.keyPath.substr(0, dot));
        if (dot != std::string_view::npos) resolved.furtherKeys = resolved.keyPath.substr(dot + 1);
        if constexpr (Rule::kRelationship) {
            resolved.toMany = property->kind == PropertyKind::list;
            resolved.target = &Rule::Target::defaultRules;
            rules.relationships[relationships++] = resolved;
        } else {
            resolved.map = rule.map;
            rules.attributes[attributes++] = resolved;
        }
    };
    (add(written), ...);
    rules.finish();
    return rules;
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
