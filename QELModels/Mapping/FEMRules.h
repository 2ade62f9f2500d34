#pragma once

#include <array>
#include <atomic>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>

#include "QELModels/Platform/Declaration.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/KeyHash.h"
#include "QELModels/Platform/ObjectClass.h"
#include "QELModels/Platform/PropertyWriter.h"
#include "QELModels/Platform/Representation.h"

/// @file
/// The rules of a mapping as constant data, and the words in which a record's source writes them:
///
///     static constexpr auto rules = mapping<declared>(             // in the order in which they are applied
///         attribute<&QELAsset::status>(),                          // the key path is the property's name
///         attribute<&QELAsset::assetIdentifier>("id"),
///         attribute<&QELAsset::title>("title", fetched(kQELHTMLTransformer)),
///         relationship<&QELAsset::category>());                    // one or many: from the member's type
///     constinit const FEMRules QELAsset::defaultRules = rules;

namespace QELModels::inline QELMODELS_ABI {

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

/// The rules of one mapping. `keys` are the first keys of all key paths, each once; `slots` find a key among
/// them by its hash in one step, where that can be had.
struct FEMRules {
    const ObjectClass* objectClass = nullptr;
    std::span<const FEMRule> attributes;
    std::span<const FEMRule> relationships;
    std::span<const std::string_view> keys;
    std::span<const std::uint8_t> slots;  ///< the position of a key plus one; 0: no key of ours
    std::uint16_t multiplier = 0;
    std::uint8_t shift = 0;

    /// The slot that a key's hash leads to: its position plus one if it is one of `keys`, which a comparison
    /// of the whole key must tell; 0: it is none of them. Needs `slots`.
    std::uint8_t slot(std::uint16_t hash) const noexcept {
        return slots[static_cast<std::uint16_t>(std::uint32_t{hash} * multiplier) >> shift];
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
    static constexpr std::size_t kSlots = std::bit_ceil(4 * kRules + 1);

    /// What `FEMRules` refers to.
    const ObjectClass* objectClass = nullptr;
    std::array<FEMRule, Attributes> attributes{};
    std::array<FEMRule, Relationships> relationships{};
    std::array<std::string_view, kRules> keys{};
    std::size_t keyCount = 0;
    std::array<std::uint8_t, kSlots> slots{};
    std::uint16_t multiplier = 0;

    /// The rules as the engine takes them; they live as long as this.
    constexpr operator FEMRules() const& {
        FEMRules rules;
        rules.objectClass = objectClass;
        rules.attributes = attributes;
        rules.relationships = relationships;
        rules.keys = std::span(keys).first(keyCount);
        if (multiplier != 0) rules.slots = slots;
        rules.multiplier = multiplier;
        rules.shift = static_cast<std::uint8_t>(16 - std::bit_width(kSlots - 1));
        return rules;
    }

    /// For `mapping`, which fills the storage: the position of a first key, which is added when it is new.
    constexpr std::uint32_t keyPosition(std::string_view key) {
        for (std::size_t i = 0; i < keyCount; ++i)
            if (keys[i] == key) return static_cast<std::uint32_t>(i);
        keys[keyCount] = key;
        return static_cast<std::uint32_t>(keyCount++);
    }

    // Looks for a multiplier that sends every key's hash to a slot of its own; without one, keys are looked
    // up.
    constexpr void findMultiplier() {
        if (keyCount > UINT8_MAX - 1) return;
        for (std::uint32_t candidate = 1; candidate <= UINT16_MAX; candidate += 2) {
            slots = {};
            std::size_t placed = 0;
            for (; placed < keyCount; ++placed) {
                const auto product = static_cast<std::uint16_t>(keyHash(keys[placed]) * candidate);
                std::uint8_t& slot = slots[product >> (16 - std::bit_width(kSlots - 1))];
                if (slot != 0) break;
                slot = static_cast<std::uint8_t>(placed + 1);
            }
            if (placed < keyCount) continue;
            multiplier = static_cast<std::uint16_t>(candidate);
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
    std::size_t attributes = 0;
    std::size_t relationships = 0;
    const auto add = [&]<class Rule>(const Rule& rule) {
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
    rules.findMultiplier();
    return rules;
}

}  // namespace QELModels::inline QELMODELS_ABI
