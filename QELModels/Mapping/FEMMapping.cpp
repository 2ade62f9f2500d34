#include "QELModels/Mapping/FEMMapping.h"

#include <algorithm>
#include <string>
#include <vector>

#include "QELModels/Records/MappingFault.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

struct FEMMapping::Added {
    FEMRules rules;
    std::vector<FEMRule> attributes;
    std::vector<FEMRule> relationships;
    std::vector<std::string_view> keys;
    std::vector<std::shared_ptr<const void>> owned;  // what the rules point to

    // Puts a rule behind the others of its sort. Whatever is thrown leaves the rules as they were.
    void append(std::vector<FEMRule>& list, FEMRule rule, std::shared_ptr<const void> ownedByRule) {
        auto keyPath = std::make_shared<const std::string>(rule.keyPath);
        rule.keyPath = *keyPath;
        const std::size_t dot = rule.keyPath.find('.');
        if (dot != std::string_view::npos) rule.furtherKeys = rule.keyPath.substr(dot + 1);
        const std::string_view first = rule.keyPath.substr(0, dot);
        rule.key = static_cast<std::uint32_t>(std::find(keys.begin(), keys.end(), first) - keys.begin());
        owned.push_back(std::move(keyPath));
        owned.push_back(std::move(ownedByRule));
        if (rule.key == keys.size()) keys.push_back(first);
        rules.keys = keys;
        list.push_back(rule);
        rules.attributes = attributes;
        rules.relationships = relationships;
    }
};

FEMMapping::FEMMapping(const ObjectClass& objectClass) : added_(std::make_shared<Added>()) {
    added_->rules.objectClass = &objectClass;
    rules_ = &added_->rules;
}

// Rules that an application added belong to one mapping, so that copies can be used and changed on different
// threads.
FEMMapping::FEMMapping(const FEMMapping& other) : rules_(other.rules_), captured_(other.captured_) {
    if (other.added_) copyRules(other.added_.get());
}

FEMMapping& FEMMapping::operator=(FEMMapping other) noexcept {
    std::swap(rules_, other.rules_);
    std::swap(added_, other.added_);
    std::swap(captured_, other.captured_);
    return *this;
}

// Makes the rules there are, and what they point to, the beginning of rules of this mapping's own.
void FEMMapping::copyRules(const Added* from) {
    auto own = std::make_shared<Added>();
    own->attributes.assign(rules_->attributes.begin(), rules_->attributes.end());
    own->relationships.assign(rules_->relationships.begin(), rules_->relationships.end());
    own->keys.assign(rules_->keys.begin(), rules_->keys.end());
    if (from != nullptr) own->owned = from->owned;
    own->rules.objectClass = rules_->objectClass;
    own->rules.attributes = own->attributes;
    own->rules.relationships = own->relationships;
    own->rules.keys = own->keys;
    added_ = std::move(own);
    rules_ = &added_->rules;
}

FEMMapping::Added& FEMMapping::added() {
    if (!added_) copyRules(nullptr);
    return *added_;
}

FEMRule FEMMapping::resolved(std::string_view property, std::string_view keyPath) const {
    FEMRule rule;
    rule.property = objectClass().property(property);
    if (rule.property == nullptr) throwFault("there is no property '", property, "'");
    if (rule.property->isComputed()) throwFault("the property '", property, "' cannot be set");
    rule.keyPath = keyPath;
    return rule;
}

void FEMMapping::throwFault(std::string_view before, std::string_view property,
                            std::string_view after) const {
    std::string what(objectClass().name());
    what += ": ";
    what += before;
    what += property;
    what += after;
    throw MappingFault(what);
}

void FEMMapping::addAttributesFromArray(std::span<const std::string_view> properties) {
    for (const std::string_view property : properties)
        addAttributeWithProperty(property, property);
}

void FEMMapping::addAttributesFromArray(std::initializer_list<std::string_view> properties) {
    addAttributesFromArray(std::span(properties.begin(), properties.size()));
}

void FEMMapping::addAttributesFromDictionary(
    std::initializer_list<std::pair<std::string_view, std::string_view>> keyPathsOfProperties) {
    for (const auto& [property, keyPath] : keyPathsOfProperties)
        addAttributeWithProperty(property, keyPath);
}

void FEMMapping::addAttributeWithProperty(std::string_view property, std::string_view keyPath) {
    addAttribute(FEMAttribute::mappingOfProperty(property, keyPath));
}

void FEMMapping::addAttribute(const FEMAttribute& attribute) {
    FEMRule rule = resolved(attribute.property(), attribute.keyPath());
    if (rule.property->kind == PropertyKind::record || rule.property->kind == PropertyKind::list)
        throwFault("the property '", attribute.property(), "' holds records and needs a relationship");
    std::shared_ptr<const FEMAttribute::Map> map;
    if (attribute.map()) {
        map = std::make_shared<const FEMAttribute::Map>(attribute.map());
        rule.map.data = map.get();
        rule.map.apply =
            [](const FEMMapRule& mapRule, const void*, RepresentationView value, PropertyWriter& to) {
                to.put((*static_cast<const FEMAttribute::Map*>(mapRule.data))(value));
            };
    }
    Added& own = added();
    own.append(own.attributes, rule, std::move(map));
}

void FEMMapping::addRelationshipMapping(FEMMapping mapping, std::string_view property,
                                        std::string_view keyPath) {
    addRelationship(std::move(mapping), property, keyPath, false);
}

void FEMMapping::addToManyRelationshipMapping(FEMMapping mapping, std::string_view property,
                                              std::string_view keyPath) {
    addRelationship(std::move(mapping), property, keyPath, true);
}

void FEMMapping::addRelationship(FEMMapping mapping, std::string_view property, std::string_view keyPath,
                                 bool toMany) {
    FEMRule rule = resolved(property, keyPath);
    const PropertyKind wanted = toMany ? PropertyKind::list : PropertyKind::record;
    if (rule.property->kind != wanted || rule.property->target != &mapping.objectClass())
        throwFault("the property '", property, "' does not hold what the relationship's mapping makes");
    auto nested = std::make_shared<const FEMMapping>(std::move(mapping));
    rule.toMany = toMany;
    rule.mapping = nested.get();
    Added& own = added();
    own.append(own.relationships, rule, std::move(nested));
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
