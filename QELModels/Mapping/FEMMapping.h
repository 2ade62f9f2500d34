#pragma once

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <span>
#include <string_view>
#include <utility>

#include "QELModels/Mapping/FEMAttribute.h"
#include "QELModels/Mapping/FEMRules.h"
#include "QELModels/Mapping/detail/FEMTransformers.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/ObjectClass.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// How to fill the records of one class from a dictionary: an ordered list of rules. A value: copies may be
/// changed without each other's notice. The library's own mappings are constant data until an application
/// adds a rule, so making one is cheap.
///
/// A rule that names an unknown property, a property that cannot be set, or a relationship whose mapping
/// makes records that the property cannot hold, throws `MappingFault` when it is added; then no rule of that
/// call is added. A mapping that was moved from has no rules and can be used.
class QELMODELS_EXPORT FEMMapping {
public:
    /// An empty mapping that makes records of a class.
    explicit FEMMapping(const ObjectClass& objectClass);
    /// A mapping with constant rules, which outlive it and its copies. Transformers that the rules capture
    /// are looked up now.
    explicit FEMMapping(const FEMRules& rules);
    explicit FEMMapping(const FEMRules&&) = delete;
    FEMMapping(const FEMMapping& other);
    FEMMapping(FEMMapping&& other) noexcept;
    FEMMapping& operator=(FEMMapping other) noexcept;
    ~FEMMapping();

    /// The class of the records that the mapping makes.
    const ObjectClass& objectClass() const noexcept { return *objectClass_; }

    /// For each name a rule whose key path is the name itself.
    void addAttributesFromArray(std::span<const std::string_view> properties);
    void addAttributesFromArray(std::initializer_list<std::string_view> properties);
    /// For each pair of a property and a key path a rule.
    void addAttributesFromDictionary(
        std::span<const std::pair<std::string_view, std::string_view>> keyPathsOfProperties);
    void addAttributesFromDictionary(
        std::initializer_list<std::pair<std::string_view, std::string_view>> keyPathsOfProperties);
    void addAttributeWithProperty(std::string_view property, std::string_view keyPath);
    void addAttribute(const FEMAttribute& attribute);
    /// A nested record, filled by a mapping of its own.
    void addRelationshipMapping(FEMMapping mapping, std::string_view property, std::string_view keyPath);
    /// A list of nested records, one for each element of an array.
    void addToManyRelationshipMapping(FEMMapping mapping, std::string_view property,
                                      std::string_view keyPath);

    /// The rules in the order in which they are applied, all attributes before all relationships. Valid until
    /// a rule is added.
    const FEMRules& rules() const noexcept QELMODELS_LENT { return *rules_; }
    /// What its map rules hold on to, as it was when the mapping was built.
    const detail::FEMCaptured* captured() const noexcept { return &captured_; }

private:
    struct Added;

    FEMRule resolved(std::string_view property, std::string_view keyPath) const;
    void addRelationship(FEMMapping mapping, std::string_view property, std::string_view keyPath,
                         bool toMany);
    [[noreturn]] void throwFault(std::string_view before, std::string_view property,
                                 std::string_view after) const;
    void copyRules(const FEMMapping& from);
    Added& added();

    const ObjectClass* objectClass_;
    const FEMRules* rules_;  // constant, or those in `added_`
    detail::FEMCaptured captured_;
    // Rules that an application added, with a copy of the constant ones before them.
    std::unique_ptr<Added> added_;
};

/// A mapping that makes records of one C++ class, as the compiler knows.
template <class C>
class FEMMappingOf : public FEMMapping {
public:
    explicit FEMMappingOf(const FEMRulesOf<C>& rules) : FEMMapping(rules) {}
    explicit FEMMappingOf(const FEMRulesOf<C>&&) = delete;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
