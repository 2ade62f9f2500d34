#pragma once

#include <cstddef>
#include <string_view>
#include <type_traits>

#include "QELModels/Mapping/FEMMapRule.h"
#include "QELModels/Mapping/FEMRules.h"
#include "QELModels/Mapping/detail/ConstantRules.h"
#include "QELModels/Mapping/detail/RuleChecks.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/KeyPath.h"
#include "QELModels/Records/Declaration.h"

/// @file
/// The words in which a record's source writes the rules of its mapping, as constant data. As with the
/// properties, a mistake does not build.
///
///     static constexpr auto rules = mapping<declared>(             // in the order in which they are applied
///         attribute<&QELAsset::status>(),                          // the key path is the property's name
///         attribute<&QELAsset::assetIdentifier>("id"),
///         attribute<&QELAsset::title>("title", fetched(kQELHTMLTransformer)),
///         relationship<&QELAsset::category>());                    // one or many: from the member's type
///     constinit const FEMRulesOf<QELAsset> QELAsset::defaultRules = rules;

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace detail {

/// A rule as it is written down; `mapping` resolves it.
template <auto M>
struct AttributeRule {
    static constexpr auto kMember = M;
    static constexpr bool kIsRelationship = false;
    std::string_view keyPath;
    FEMMapRule map;
};
template <auto M>
struct RelationshipRule {
    static constexpr auto kMember = M;
    static constexpr bool kIsRelationship = true;
    std::string_view keyPath;
};

}  // namespace detail

/// A rule that fills a property from a key path, the property's name where none or an empty one is given,
/// through a map rule or as the value is.
template <auto Member>
consteval auto attribute(std::string_view keyPath = {}, FEMMapRule map = {}) {
    if constexpr (detail::checkAttribute<Member>()) detail::checkMapRule<Member>(map);
    return detail::AttributeRule<Member>{keyPath, map};
}

/// A rule that fills a nested record, or a list of them, by the default rules of their class.
template <auto Member>
consteval auto relationship(std::string_view keyPath = {}) {
    detail::checkRelationship<Member>();
    return detail::RelationshipRule<Member>{keyPath};
}

/// The rules of the class whose properties are `Declared`, in the order in which they are applied: all
/// attributes before all relationships. Those of its superclass are applied before.
template <const auto& Declared, class... Rules>
consteval auto mapping(Rules... written) {
    using Class = typename std::remove_cvref_t<decltype(Declared)>::Class;
    constexpr std::size_t kRelationships = (std::size_t{Rules::kIsRelationship} + ... + 0);
    detail::ConstantRules<Class, sizeof...(Rules) - kRelationships, kRelationships> rules;
    if constexpr (requires { Class::Super::defaultRules; }) rules.inherited = &Class::Super::defaultRules;
    std::size_t attributes = 0;
    std::size_t relationships = 0;
    [[maybe_unused]] const auto add = [&]<class Rule>(const Rule& rule) {
        if constexpr (detail::checkRuleFor<Declared, Rule::kMember, Rules::kMember...>()) {
            constexpr const Property* property = Declared.template of<Rule::kMember>();
            FEMRule resolved;
            resolved.property = property;
            resolved.keyPath = rule.keyPath.empty() ? property->name : rule.keyPath;
            const KeyPath keys(resolved.keyPath);
            resolved.key = rules.keyPosition(keys.first);
            resolved.furtherKeys = keys.rest;
            if constexpr (Rule::kIsRelationship) {
                using Target = detail::TargetOf<Rule::kMember>;
                if constexpr (!std::is_void_v<Target>) {
                    detail::checkRules<Target>();
                    resolved.target = &Target::defaultRules;
                }
                resolved.toMany = property->kind == PropertyKind::list;
                rules.relationships[relationships++] = resolved;
            } else {
                resolved.map = rule.map;
                rules.attributes[attributes++] = resolved;
            }
        }
    };
    (add(written), ...);
    rules.finish();
    return rules;
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
