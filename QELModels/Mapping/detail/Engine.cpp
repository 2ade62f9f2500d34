#include "QELModels/Mapping/detail/Engine.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "QELModels/Records/MappingFault.h"
#include "QELModels/Records/PropertyWriter.h"
#include "QELModels/Records/detail/ObjectAccess.h"
#include "QELModels/Records/detail/PropertySlot.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

namespace {

// About how many bytes of records a document's node turns into: what full documents of all kinds need at the
// most.
constexpr std::size_t kRecordBytesPerNode = 11;
// A record keeps its document's texts instead of copying them when no more memory than this is kept for each
// byte of text that it reads.
constexpr std::size_t kMostBytesKeptPerByte = 3;
// Of texts that are kept, those that are cleaned of HTML are still copied: about one byte in two.
constexpr std::size_t kKeptBytesPerCopiedByte = 2;
// Most of a very large document may be under keys that nobody reads.
constexpr std::size_t kMostRoomEstimated = std::size_t{64} << 10;
// In the list, and among the blocks that it keeps.
constexpr std::size_t kBytesPerListedRoot = 2 * sizeof(void*);

// Room for all under a root, estimated by the document's texts and nodes. Some of them may be unread, so the
// estimate is bounded. One too low costs one more piece of memory, one too high a few bytes.
std::size_t roomFor(const RepresentationNode& node, std::size_t textBytes) {
    return std::min(textBytes + kRecordBytesPerNode * node.extent(), kMostRoomEstimated);
}

// The block of a document's texts, where keeping it is worth while for a record that reads this many bytes of
// it; else null.
const Block* textsToKeep(RepresentationView value, std::size_t bytesRead, const Zone* zone) noexcept {
    const Block* document = RepresentationAccess::block(value);
    const Block* texts = document == nullptr ? nullptr : BlockKeeper::textsOf(*document, zone);
    const bool isWorthWhile = texts != nullptr && texts->size() / kMostBytesKeptPerByte <= bytesRead;
    return isWorthWhile ? texts : nullptr;
}

template <class T>
Ref<T> finished(const T* made, BlockWriter& writer) noexcept {
    writer.finish();
    return Ref<T>::adopt(made);
}

}  // namespace

std::size_t roomForListOfRoots(std::size_t elements) noexcept {
    return sizeof(ListBase) + BlockKeeper::kBytesForFirst + kBytesPerListedRoot * elements;
}

void RootRoom::learn(std::size_t estimate, const BlockWriter& writer) noexcept {
    const std::size_t taken = writer.used() - sizeof(Block);
    mostTaken_ = std::clamp((taken * kWhole + estimate - 1) / estimate, mostTaken_, kWhole);
    share_ = std::min(mostTaken_ + kMore, kWhole);
}

template <bool kObserved>
Ref<Object> Engine<kObserved>::object(std::optional<RepresentationView> value, const BoundRules& bound,
                                      const FEMPath& path) const {
    if (!value || !value->isDictionary()) {
        reportMisfit(value, path);
        return emptyRoot(bound);
    }
    if (bound.rules.inherited == nullptr) return onlyRoot(*value, bound, path);
    RootRoom room;
    return root(*value, bound, path, 0, room);
}

template <bool kObserved>
Ref<ListBase> Engine<kObserved>::collection(std::optional<RepresentationView> value, const BoundRules& bound,
                                            const ObjectClass& listed, const FEMPath& path) const {
    const bool isArray = value && value->isArray();
    if (!isArray) reportMisfit(value, path);
    const RepresentationView array = isArray ? *value : Representation::emptyArray();
    BlockWriter writer(roomForListOfRoots(array.size()), zone_);
    return finished(list(array, bound, listed, {writer, path, 0}, true), writer);
}

template <bool kObserved>
Ref<Object> Engine<kObserved>::rootOfList(RepresentationView element, const BoundRules& bound,
                                          const FEMPath& path, std::uint32_t depth, RootRoom& room) const {
    if (element.isDictionary()) return root(element, bound, path, depth, room);
    reportMisfit(element, path);
    return emptyRoot(bound);
}

template <bool kObserved>
Ref<Object> Engine<kObserved>::emptyRoot(const BoundRules& bound) const {
    BlockWriter writer(ObjectAccess::size(bound.isa), zone_);
    return finished(ObjectAccess::construct(bound.isa, writer), writer);
}

// The only record of its document may keep the document's texts.
template <bool kObserved>
Ref<Object> Engine<kObserved>::onlyRoot(RepresentationView dictionary, const BoundRules& bound,
                                        const FEMPath& path) const {
    const RepresentationNode& node = *RepresentationAccess::node(dictionary);
    const FoundValues found(bound.rules, dictionary);
    std::size_t textBytes = found.textBytes();
    const Block* texts = textsToKeep(dictionary, textBytes, zone_);
    if (texts != nullptr) textBytes = textBytes / kKeptBytesPerCopiedByte + BlockKeeper::kBytesForFirst;
    BlockWriter writer(ObjectAccess::size(bound.isa) + roomFor(node, textBytes), zone_);
    if (texts != nullptr) writer.borrowTexts(*texts);
    const Filling filling{*ObjectAccess::construct(bound.isa, writer), bound, writer, path, 0};
    if constexpr (!kObserved) found.storeFound(storing(dictionary, filling));
    applyAttributes(found.lookup(), filling);
    applyRelationships(found.lookup(), filling);
    return finished<Object>(&filling.object, writer);
}

template <bool kObserved>
Ref<Object> Engine<kObserved>::root(RepresentationView dictionary, const BoundRules& bound,
                                    const FEMPath& path, std::uint32_t depth, RootRoom& room) const {
    const RepresentationNode& node = *RepresentationAccess::node(dictionary);
    const std::size_t estimate = ObjectAccess::size(bound.isa) + roomFor(node, node.textBytes());
    BlockWriter writer(room.of(estimate), zone_);
    Object* object = ObjectAccess::construct(bound.isa, writer);
    fill(dictionary, {*object, bound, writer, path, depth});
    room.learn(estimate, writer);
    return finished<Object>(object, writer);
}

template <bool kObserved>
inline const Object* Engine<kObserved>::record(RepresentationView value, const BoundRules& bound,
                                               const Place& at) const {
    Object* object = ObjectAccess::construct(bound.isa, at.writer);
    if (value.isDictionary())
        fill(value, {*object, bound, at.writer, at.path, at.depth});
    else
        reportMisfit(value, at.path);
    return object;
}

template <bool kObserved>
const ListBase* Engine<kObserved>::list(RepresentationView array, const BoundRules& bound,
                                        const ObjectClass& listed, const Place& at, bool ofRoots) const {
    const auto** elements = at.writer.template allocate<const Object*>(array.size());
    if (ofRoots) at.writer.keeper().expect(array.size());
    RootRoom room;
    std::size_t count = 0;
    for (const RepresentationView element : array.elements()) {
        const FEMPath path(at.path, count);
        if (ofRoots) {
            const Ref<Object> kept = rootOfList(element, bound, path, at.depth, room);
            at.writer.keeper().keep(kept->block());
            elements[count++] = kept.get();
        } else {
            elements[count++] = record(element, bound, {at.writer, path, at.depth});
        }
    }
    return ObjectAccess::list(listed, elements, count, at.writer);
}

// How a value that a rule takes as it is gets into the record.
template <bool kObserved>
inline auto Engine<kObserved>::storing(RepresentationView dictionary, const Filling& filling) {
    return
        [&object = filling.object, &writer = filling.writer, block = RepresentationAccess::block(dictionary)](
            const RuleKeys& table, const RuleKey& key, const RepresentationNode* value) {
            key.store(
                slotAt(key.slot, table.example, object), RepresentationAccess::at(value, block), writer);
        };
}

// An observer is told of all rules in their order. Without one, values that rules take as they are are stored
// when their keys are found.
template <bool kObserved>
inline FoundValues Engine<kObserved>::valuesIn(RepresentationView dictionary, const Filling& filling) {
    if constexpr (kObserved)
        return FoundValues(filling.bound.rules, dictionary);
    else
        return FoundValues(filling.bound.rules, dictionary, storing(dictionary, filling));
}

template <bool kObserved>
void Engine<kObserved>::fill(RepresentationView dictionary, const Filling& filling) const {
    if (filling.bound.rules.inherited != nullptr) [[unlikely]]
        return fillInherited(dictionary, filling, nullptr);
    const FoundValues found = valuesIn(dictionary, filling);
    applyAttributes(found.lookup(), filling);
    applyRelationships(found.lookup(), filling);
}

/// The rules of one class in a chain of superclasses, and what they read.
template <bool kObserved>
struct Engine<kObserved>::Level {
    const Filling& filling;
    FoundValues::Lookup found;
    const Level* derived;
};

// Finds the values for the rules of a class and of its superclasses, and then applies them: all attributes,
// those of the superclasses first, before all relationships.
template <bool kObserved>
void Engine<kObserved>::fillInherited(RepresentationView dictionary, const Filling& filling,
                                      const Level* derived) const {
    const FoundValues found = valuesIn(dictionary, filling);
    const Level level{filling, found.lookup(), derived};
    const BoundRules& bound = filling.bound;
    if (const FEMRules* inherited = bound.rules.inherited; inherited != nullptr) {
        const BoundRules super{*inherited->objectClass, *inherited, bound.captured};
        return fillInherited(
            dictionary, {filling.object, super, filling.writer, filling.path, filling.depth}, &level);
    }
    for (const Level* each = &level; each != nullptr; each = each->derived)
        applyAttributes(each->found, each->filling);
    for (const Level* each = &level; each != nullptr; each = each->derived)
        applyRelationships(each->found, each->filling);
}

template <bool kObserved>
inline void Engine<kObserved>::applyAttributes(FoundValues::Lookup found, const Filling& filling) const {
    const FEMRules& rules = filling.bound.rules;
    const auto apply = [&](const FEMRule& rule) {
        const FoundValue value = found.at(rule);
        if (value.node == nullptr)
            report(rule, FEMOutcome::missing, std::nullopt, filling.path);
        else
            applyAttribute(rule, value.view(), filling);
    };
    if (kObserved || rules.table.slots.empty()) {
        for (const FEMRule& rule : rules.attributes)
            apply(rule);
    } else {
        for (const std::uint16_t position : rules.orderedAttributes)
            apply(rules.attributes[position]);
    }
}

template <bool kObserved>
inline void Engine<kObserved>::applyRelationships(FoundValues::Lookup found, const Filling& filling) const {
    for (const FEMRule& rule : filling.bound.rules.relationships) {
        const FoundValue value = found.at(rule);
        if (value.node == nullptr)
            report(rule, FEMOutcome::missing, std::nullopt, filling.path);
        else
            applyRelationship(rule, value.view(), filling);
    }
}

template <bool kObserved>
inline void Engine<kObserved>::applyAttribute(const FEMRule& rule, RepresentationView value,
                                              const Filling& filling) const {
    const Property& property = *rule.property;
    FEMOutcome outcome = FEMOutcome::set;
    if (rule.map.apply != nullptr)
        outcome = applyMapRule(rule, value, filling);
    else if (!property.place.store(slotIn(property, filling.object), value, filling.writer))
        outcome = value.isNull() ? FEMOutcome::null : FEMOutcome::wrongKind;
    if (outcome != FEMOutcome::set) clear(property, filling.object);
    report(rule, outcome, value, filling.path);
}

template <bool kObserved>
inline FEMOutcome Engine<kObserved>::applyMapRule(const FEMRule& rule, RepresentationView value,
                                                  const Filling& filling) const {
    PropertyWriter to(*rule.property, filling.object, filling.writer);
    try {
        rule.map.apply(rule.map, filling.bound.captured, value, to);
    } catch (MappingFault& fault) {
        if (faultsLeaveEmpty_) return FEMOutcome::fault;
        if (!fault.hasPointer())
            fault.setPointer(FEMPath(filling.path, rule.keyPath, rule.property->name).pointer());
        report(rule, FEMOutcome::fault, value, filling.path);
        throw;
    }
    switch (to.result()) {
        case PropertyWriter::Result::nothing:
            return value.isNull() ? FEMOutcome::null : FEMOutcome::refused;
        case PropertyWriter::Result::wrongKind:
            return FEMOutcome::wrongKind;
        case PropertyWriter::Result::filled:
            break;
    }
    return FEMOutcome::set;
}

template <bool kObserved>
inline void Engine<kObserved>::applyRelationship(const FEMRule& rule, RepresentationView value,
                                                 const Filling& filling) const {
    const Property& property = *rule.property;
    if (!(rule.toMany ? value.isArray() : value.isDictionary()) || filling.depth == kMostNestedRecords) {
        clear(property, filling.object);
        report(rule, value.isNull() ? FEMOutcome::null : FEMOutcome::wrongKind, value, filling.path);
        return;
    }
    report(rule, FEMOutcome::set, value, filling.path);
    const BoundRules nested = filling.bound.nested(rule);
    const FEMPath path(filling.path, rule.keyPath, property.name);
    const Place at{filling.writer, path, filling.depth + 1};
    const bool isRoot = nested.isa.isRoot();
    if (rule.toMany) {
        slotOf<ListSlot>(property, filling.object).list = list(value, nested, *property.target, at, isRoot);
    } else if (isRoot) {
        RootRoom room;
        const Ref<Object> kept = root(value, nested, path, at.depth, room);
        filling.writer.keeper().keep(kept->block());
        slotOf<RecordSlot>(property, filling.object).record = kept.get();
    } else {
        slotOf<RecordSlot>(property, filling.object).record = record(value, nested, at);
    }
}

template <bool kObserved>
void Engine<kObserved>::report(const FEMRule& rule, FEMOutcome outcome,
                               std::optional<RepresentationView> value, const FEMPath& path) const {
    if constexpr (kObserved) {
        const FEMPath at(path, rule.keyPath, rule.property->name);
        observer_->ruleApplied({at, rule.property, outcome, value});
    }
}

// Of an element, a root or a page's list that is not the container it should be.
template <bool kObserved>
void Engine<kObserved>::reportMisfit(std::optional<RepresentationView> value, const FEMPath& path) const {
    if constexpr (kObserved) {
        FEMOutcome outcome = FEMOutcome::wrongKind;
        if (!value)
            outcome = FEMOutcome::missing;
        else if (value->isNull())
            outcome = FEMOutcome::null;
        observer_->ruleApplied({path, nullptr, outcome, value});
    }
}

template class Engine<false>;
template class Engine<true>;

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
