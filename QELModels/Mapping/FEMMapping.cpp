#include "QELModels/Mapping/FEMMapping.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "QELModels/Platform/KeyPath.h"
#include "QELModels/Records/MappingFault.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

// Of a mapping that was moved from.
constinit const FEMRules kNoRules{};

}  // namespace

struct FEMMapping::Added {
    FEMRules rules;
    std::vector<FEMRule> attributes;
    std::vector<FEMRule> relationships;
    std::vector<std::string_view> keys;
    std::vector<std::shared_ptr<const void>> owned;  // what the rules point to

    // Puts a rule after the others of its sort. Its key path lives as long as the rules.
    void append(FEMRule rule) {
        const KeyPath path(rule.keyPath);
        rule.furtherKeys = path.rest;
        rule.key = static_cast<std::uint32_t>(rules.positionOf(path.first));
        if (rule.key == keys.size()) keys.push_back(path.first);
        rules.keys = keys;
        auto& list = rule.isRelationship() ? relationships : attributes;
        list.push_back(rule);
        rules.attributes = attributes;
        rules.relationships = relationships;
    }

    // The same for a rule that owns what it points to. Whatever is thrown leaves the rules as they were.
    void append(FEMRule rule, std::shared_ptr<const void> ownedByRule) {
        auto keyPath = std::make_shared<const std::string>(rule.keyPath);
        rule.keyPath = *keyPath;
        makeRoom(owned, 2);
        makeRoom(keys, 1);
        rules.keys = keys;
        makeRoom(attributes, 1);
        rules.attributes = attributes;
        makeRoom(relationships, 1);
        rules.relationships = relationships;
        owned.push_back(std::move(keyPath));
        owned.push_back(std::move(ownedByRule));
        append(rule);
    }

    template <class T>
    static void makeRoom(std::vector<T>& list, std::size_t more) {
        if (list.capacity() < list.size() + more) list.reserve(2 * list.size() + more);
    }

    // The rules that are given, those that they inherit before them.
    void appendAll(const FEMRules& given) {
        if (given.inherited != nullptr) appendAll(*given.inherited);
        for (const FEMRule& rule : given.attributes)
            append(rule);
        for (const FEMRule& rule : given.relationships)
            append(rule);
    }
};

FEMMapping::FEMMapping(const ObjectClass& objectClass) : objectClass_(&objectClass), rules_(&kNoRules) {}

FEMMapping::FEMMapping(const FEMRules& rules) : objectClass_(rules.objectClass), rules_(&rules) {}

FEMMapping::FEMMapping(const FEMMapping& other)
    : objectClass_(other.objectClass_), rules_(other.rules_), captured_(other.captured_) {
    // Rules that an application added belong to one mapping, so that copies can be used and changed on
    // different threads.
    if (other.added_) copyRules(other);
}

FEMMapping::FEMMapping(FEMMapping&& other) noexcept
    : objectClass_(other.objectClass_),
      rules_(std::exchange(other.rules_, &kNoRules)),
      captured_(std::move(other.captured_)),
      added_(std::move(other.added_)) {}

FEMMapping::~FEMMapping() = default;

FEMMapping& FEMMapping::operator=(FEMMapping other) noexcept {
    std::swap(objectClass_, other.objectClass_);
    std::swap(rules_, other.rules_);
    std::swap(captured_, other.captured_);
    std::swap(added_, other.added_);
    return *this;
}

// Makes the rules of a mapping, and what they point to, the beginning of rules of this mapping's own.
void FEMMapping::copyRules(const FEMMapping& from) {
    auto own = std::make_unique<Added>();
    own->rules.objectClass = objectClass_;
    own->appendAll(from.rules());
    if (from.added_) own->owned = from.added_->owned;
    added_ = std::move(own);
    rules_ = &added_->rules;
}

FEMMapping::Added& FEMMapping::added() {
    if (!added_) copyRules(*this);
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
    FEMMapping changed(*this);
    for (const std::string_view property : properties)
        changed.addAttributeWithProperty(property, property);
    *this = std::move(changed);
}

void FEMMapping::addAttributesFromArray(std::initializer_list<std::string_view> properties) {
    addAttributesFromArray(std::span(properties.begin(), properties.size()));
}

void FEMMapping::addAttributesFromDictionary(
    std::initializer_list<std::pair<std::string_view, std::string_view>> keyPathsOfProperties) {
    addAttributesFromDictionary(std::span(keyPathsOfProperties.begin(), keyPathsOfProperties.size()));
}

void FEMMapping::addAttributesFromDictionary(
    std::span<const std::pair<std::string_view, std::string_view>> keyPathsOfProperties) {
    FEMMapping changed(*this);
    for (const auto& [property, keyPath] : keyPathsOfProperties)
        changed.addAttributeWithProperty(property, keyPath);
    *this = std::move(changed);
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
        rule.map.isGiven = true;
        rule.map.data = map.get();
        rule.map.apply = [](const FEMMapRule& mapRule,
                            const detail::FEMCaptured*,
                            RepresentationView value,
                            PropertyWriter& to) {
            to.put((*static_cast<const FEMAttribute::Map*>(mapRule.data))(value));
        };
    }
    added().append(rule, std::move(map));
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
    if (rule.property->kind != wanted || !mapping.objectClass().isSameOrDerivedFrom(*rule.property->target))
        throwFault("the property '", property, "' does not hold what the relationship's mapping makes");
    auto nested = std::make_shared<const FEMMapping>(std::move(mapping));
    rule.toMany = toMany;
    rule.mapping = nested.get();
    added().append(rule, std::move(nested));
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
