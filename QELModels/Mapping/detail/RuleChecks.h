#pragma once

#include <concepts>
#include <cstddef>
#include <type_traits>

#include "QELModels/Mapping/FEMRules.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/detail/DeclarationChecks.h"

/// @file
/// What the compiler checks of the rules of a record, as `DeclarationChecks.h` does of its properties.

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

template <auto Member>
consteval bool checkAttribute() {
    static_assert(!MemberOf<Member>::kIsComputed, "record: a computed property cannot be set");
    static_assert(std::is_void_v<TargetOf<Member>>,
                  "record: an attribute cannot fill a record or a list of records, a relationship can");
    return MemberOf<Member>::kIsField && std::is_void_v<TargetOf<Member>>;
}

// Not constexpr, so that reaching one of them in a rule is an error of the compiler that says this sentence.
inline void theMapRuleMakesWhatThePropertyCannotHold() {}
inline void aRawValueIsByItselfNoURLDateOrColour() {}
inline void theTableIsOfAnotherEnumeration() {}

template <auto Member>
consteval void checkMapRule(const FEMMapRule& map) {
    using Held = typename MemberOf<Member>::Held;
    constexpr PropertyKind kKind = Field<Held>::kKind;
    if (!map.isGiven &&
        (kKind == PropertyKind::url || kKind == PropertyKind::date || kKind == PropertyKind::color))
        aRawValueIsByItselfNoURLDateOrColour();
    if (!map.makes) return;
    const bool isNumber = *map.makes == PropertyKind::integer;
    constexpr bool kTakesNumbers =
        kKind == PropertyKind::number || kKind == PropertyKind::boolean || kKind == PropertyKind::integer;
    if (isNumber ? !kTakesNumbers : *map.makes != kKind) theMapRuleMakesWhatThePropertyCannotHold();
    if constexpr (std::is_enum_v<Held>)
        if (map.enumeration && *map.enumeration != &kTypeMark<Held>) theTableIsOfAnotherEnumeration();
}

template <auto Member>
consteval void checkRelationship() {
    static_assert(!std::is_void_v<TargetOf<Member>>,
                  "record: a relationship needs a record or a list of records");
}

/// Checks that a class of records has rules of its own.
template <class C>
consteval void checkRules() {
    checkRecord<C>();
    constexpr bool kHasRules = requires {
        requires std::same_as<decltype(C::defaultRules), const FEMRulesOf<C>>;
    };
    static_assert(kHasRules,
                  "record: a class C declares 'static const FEMRulesOf<C> defaultRules' of its own");
}

template <const auto& Declared, auto Member, auto... Members>
consteval bool checkRuleFor() {
    constexpr bool kIsDeclared = std::remove_cvref_t<decltype(Declared)>::template kHas<Member>;
    static_assert(kIsDeclared, "record: a rule for a property that is not declared");
    constexpr std::size_t kRules =
        (std::size_t{std::is_same_v<PropertyOf<Member>, PropertyOf<Members>>} + ...);
    static_assert(kRules == 1, "record: two rules for one property");
    return kIsDeclared;
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
