#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>

#include "QELModels/Mapping/FEMMapRule.h"
#include "QELModels/Mapping/detail/RuleKeys.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/ObjectClass.h"
#include "QELModels/Records/Property.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

class FEMMapping;
struct FEMRules;

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
    /// Whether the key path has a second key.
    constexpr bool hasFurtherKeys() const noexcept { return furtherKeys.data() != nullptr; }
    /// The JSON values that the rule has a use for.
    QELMODELS_EXPORT FEMAccepts accepts() const noexcept;
    /// Of a relationship: the rules for the records that it makes.
    QELMODELS_EXPORT const FEMRules& nestedRules() const noexcept;
};

/// The rules of one mapping: `mapping` in `FEMRuleWords.h` makes constant ones, `FEMMapping` adds to them.
struct FEMRules {
    const ObjectClass* objectClass = nullptr;
    /// Applied before these: the rules of the superclass of an application's record.
    const FEMRules* inherited = nullptr;
    std::span<const FEMRule> attributes;
    std::span<const FEMRule> relationships;
    /// The first keys of all key paths, each once.
    std::span<const std::string_view> keys;

    /// Of constant rules: how keys are found, and the positions of all attributes whose values are not stored
    /// as soon as their keys are found.
    detail::RuleKeys table;
    std::span<const std::uint16_t> orderedAttributes;

    /// Which of `keys` a member's key is; their number when it is none of them.
    std::size_t positionOf(std::string_view key) const noexcept;
};

namespace detail {
template <class C, std::size_t Attributes, std::size_t Relationships>
struct ConstantRules;
}

/// The constant rules of the records of one C++ class, which declares them as `static const FEMRulesOf<C>
/// defaultRules`. Only rules of `C` make them.
template <class C>
struct FEMRulesOf : FEMRules {
    template <class Other, std::size_t Attributes, std::size_t Relationships>
    constexpr FEMRulesOf(const detail::ConstantRules<Other, Attributes, Relationships>& constant)
        : FEMRules(constant.rules()) {
        static_assert(std::same_as<Other, C>, "record: these are the rules of another class");
    }
    template <class Other, std::size_t Attributes, std::size_t Relationships>
    FEMRulesOf(const detail::ConstantRules<Other, Attributes, Relationships>&&) = delete;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
