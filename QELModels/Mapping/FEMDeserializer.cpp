#include "QELModels/Mapping/FEMDeserializer.h"

#include <algorithm>
#include <array>
#include <vector>

#include "QELModels/Platform/MappingFault.h"

namespace QELModels::inline QELMODELS_ABI {

namespace {

using Node = RepresentationNode;

// Up to so many first keys are found without an allocation; all mappings of the library have fewer.
constexpr std::size_t kUsualKeys = 32;
// A dictionary with many more members than there are keys to find is asked for each key instead.
constexpr std::size_t kMostMembersWalked = 128;
// About how many bytes of records a document's node turns into: what full documents of all kinds need at the
// most.
constexpr std::size_t kRecordBytesPerNode = 11;

// What each first key of a mapping stands for in one dictionary; null where it is missing.
class FoundValues {
public:
    FoundValues(const FEMRules& rules, std::optional<RepresentationView> dictionary) {
        if (rules.keys.size() > usual_.size()) {
            many_.resize(rules.keys.size());
            values_ = many_.data();
        } else {
            std::fill_n(usual_.data(), rules.keys.size(), nullptr);
        }
        if (!dictionary || !dictionary->isDictionary()) return;
        block_ = dictionary->block();
        if (!rules.slots.empty() && dictionary->size() <= kMostMembersWalked)
            walk(rules, dictionary->node());
        else
            lookUp(rules, *dictionary);
    }

    std::optional<RepresentationView> at(const FEMRule& rule) const {
        const Node* node = values_[rule.key];
        if (node == nullptr) return std::nullopt;
        const RepresentationView value = RepresentationView::at(node, block_);
        if (rule.furtherKeys.empty()) [[likely]]
            return value;
        return value.valueForKeyPath(rule.furtherKeys);
    }

private:
    void walk(const FEMRules& rules, const Node* dictionary) {
        const Node* member = dictionary + 1;
        for (std::uint32_t i = 0; i < dictionary->size; ++i) {
            const std::size_t position = rules.position(member->keyHash, member->string());
            if (position != rules.keys.size()) values_[position] = member + 1;
            member += 1 + (member + 1)->extent();
        }
    }

    void lookUp(const FEMRules& rules, RepresentationView dictionary) {
        for (std::size_t i = 0; i < rules.keys.size(); ++i)
            values_[i] = dictionary.nodeForKey(rules.keys[i]);
    }

    std::array<const Node*, kUsualKeys> usual_;
    std::vector<const Node*> many_;
    const Node** values_ = usual_.data();
    const Block* block_ = nullptr;
};

class Engine {
public:
    explicit Engine(const FEMOptions& options) : observer_(options.observer), zone_(options.zone) {}

    // A record in a block of its own, and with it the one use of that block.
    Ref<Object> root(std::optional<RepresentationView> value, const FEMRules& rules,
                     const FEMCaptures& captures, const FEMPath& path) const {
        BlockWriter writer(roomFor(value, rules), zone_);
        const Object* object = record(value, rules, captures, writer, path);
        writer.finish();
        return Ref<Object>::adopt(object);
    }

    const ListBase* list(RepresentationView array, const FEMRules& rules, const FEMCaptures& captures,
                         BlockWriter& writer, const FEMPath& path, bool ofRoots) const {
        const auto** elements = writer.allocate<const Object*>(array.size());
        if (ofRoots) writer.expectKept(array.size());
        std::size_t count = 0;
        for (const RepresentationView element : array.elements()) {
            const FEMPath at(path, count);
            if (observer_ != nullptr && !element.isDictionary()) tellOfNoDictionary(element, at);
            if (ofRoots) {
                const Ref<Object> kept = root(element, rules, captures, at);
                writer.keep(kept->block());
                elements[count++] = kept.get();
            } else {
                elements[count++] = record(element, rules, captures, writer, at);
            }
        }
        return ObjectAccess::list(*rules.objectClass, elements, count, writer);
    }

    void tellOfNoDictionary(std::optional<RepresentationView> value, const FEMPath& path) const {
        const FEMOutcome outcome = !value            ? FEMOutcome::missing
                                   : value->isNull() ? FEMOutcome::null
                                                     : FEMOutcome::wrongKind;
        observer_->ruleApplied({path, nullptr, outcome, value});
    }

    // Room for a root and all under it: what it keeps of the texts is known, the records are guessed by the
    // document's nodes. A guess too low costs one more piece of memory, one too high a few bytes.
    static std::size_t roomFor(std::optional<RepresentationView> value, const FEMRules& rules) {
        const std::size_t own = ObjectAccess::size(*rules.objectClass);
        if (!value) return own;
        return own + value->node()->textBytes() + kRecordBytesPerNode * value->node()->extent();
    }

private:
    Object* record(std::optional<RepresentationView> dictionary, const FEMRules& rules,
                   const FEMCaptures& captures, BlockWriter& writer, const FEMPath& path) const {
        Object* object = ObjectAccess::construct(*rules.objectClass, writer);
        const FoundValues found(rules, dictionary);
        for (const FEMRule& rule : rules.attributes) {
            const auto value = found.at(rule);
            const FEMOutcome outcome =
                value ? applyAttribute(rule, *value, captures, *object, writer, path) : FEMOutcome::missing;
            if (observer_ != nullptr) tell(rule, outcome, value, path);
        }
        for (const FEMRule& rule : rules.relationships)
            applyRelationship(rule, found.at(rule), captures, *object, writer, path);
        return object;
    }

    FEMOutcome applyAttribute(const FEMRule& rule, RepresentationView value, const FEMCaptures& captures,
                              Object& object, BlockWriter& writer, const FEMPath& path) const {
        const Property& property = *rule.property;
        if (rule.map.apply == nullptr) {
            if (value.isNull()) {
                property.empty(object);
                return FEMOutcome::null;
            }
            if (property.setValue(object, value, writer)) return FEMOutcome::set;
            property.empty(object);
            return FEMOutcome::wrongKind;
        }
        const Value result = mapped(rule, value, captures, writer, path);
        if (result.isNull()) {
            property.empty(object);
            return value.isNull() ? FEMOutcome::null : FEMOutcome::refused;
        }
        if (property.setValue(object, result, writer)) return FEMOutcome::set;
        property.empty(object);
        return FEMOutcome::wrongKind;
    }

    Value mapped(const FEMRule& rule, RepresentationView value, const FEMCaptures& captures,
                 BlockWriter& writer, const FEMPath& path) const {
        const FEMMapRule& map = rule.map;
        try {
            return map.apply(
                map, map.capture == nullptr ? nullptr : captures.state(map.capture), value, writer);
        } catch (MappingFault& fault) {
            if (!fault.hasPointer())
                fault.setPointer(FEMPath(path, rule.keyPath, rule.property->name).pointer());
            if (observer_ != nullptr) tell(rule, FEMOutcome::fault, value, path);
            throw;
        }
    }

    void applyRelationship(const FEMRule& rule, std::optional<RepresentationView> value,
                           const FEMCaptures& captures, Object& object, BlockWriter& writer,
                           const FEMPath& path) const {
        const Property& property = *rule.property;
        if (!value) {
            if (observer_ != nullptr) tell(rule, FEMOutcome::missing, value, path);
            return;
        }
        if (!(rule.toMany ? value->isArray() : value->isDictionary())) {
            property.empty(object);
            if (observer_ != nullptr)
                tell(rule, value->isNull() ? FEMOutcome::null : FEMOutcome::wrongKind, value, path);
            return;
        }
        if (observer_ != nullptr) tell(rule, FEMOutcome::set, value, path);
        const FEMRules& rules = rule.mapping == nullptr ? *rule.target : rule.mapping->rules();
        const FEMCaptures& held = rule.mapping == nullptr ? captures : rule.mapping->captures();
        const FEMPath at(path, rule.keyPath, property.name);
        const bool root = rules.objectClass->isRoot();
        if (rule.toMany) {
            property.setList(object, list(*value, rules, held, writer, at, root));
        } else if (root) {
            const Ref<Object> kept = this->root(value, rules, held, at);
            writer.keep(kept->block());
            property.setRecord(object, kept.get());
        } else {
            property.setRecord(object, record(value, rules, held, writer, at));
        }
    }

    void tell(const FEMRule& rule, FEMOutcome outcome, std::optional<RepresentationView> value,
              const FEMPath& path) const {
        const FEMPath at(path, rule.keyPath, rule.property->name);
        observer_->ruleApplied({at, rule.property, outcome, value});
    }

    FEMObserver* observer_;
    Zone* zone_;
};

}  // namespace

Ref<Object> FEMDeserializer::objectFromRepresentation(std::optional<RepresentationView> representation,
                                                      const FEMMapping& mapping, const FEMOptions& options) {
    const Engine engine(options);
    const FEMPath path(options.keyPath);
    if (options.observer != nullptr && !(representation && representation->isDictionary()))
        engine.tellOfNoDictionary(representation, path);
    return engine.root(representation, mapping.rules(), mapping.captures(), path);
}

Ref<ListBase> FEMDeserializer::collectionFromRepresentation(std::optional<RepresentationView> representation,
                                                            const FEMMapping& mapping,
                                                            const FEMOptions& options) {
    const Engine engine(options);
    const bool given = representation && representation->isArray();
    const RepresentationView array = given ? *representation : Representation::emptyArray();
    constexpr std::size_t kBytesPerElement =
        2 * sizeof(void*);  // in the list, and among the blocks that it keeps
    BlockWriter writer(sizeof(ListBase) + 64 + kBytesPerElement * array.size(), options.zone);
    const ListBase* list =
        engine.list(array, mapping.rules(), mapping.captures(), writer, FEMPath(options.keyPath), true);
    writer.finish();
    return Ref<ListBase>::adopt(list);
}

}  // namespace QELModels::inline QELMODELS_ABI
