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
    const Block* texts = value.block() == nullptr ? nullptr : value.block()->textsFrom(zone);
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
    return sizeof(ListBase) + BlockWriter::kRoomToKeep + kBytesPerListedRoot * elements;
}

void RootRoom::learn(std::size_t estimate, const BlockWriter& writer) noexcept {
    const std::size_t taken = writer.used() - sizeof(Block);
    mostTaken_ = std::clamp((taken * kWhole + estimate - 1) / estimate, mostTaken_, kWhole);
    share_ = std::min(mostTaken_ + kMore, kWhole);
}

template <bool kObserved>
Ref<Object> Engine<kObserved>::object(std::optional<RepresentationView> value,
                                      const BoundRules& bound,
                                      const FEMPath& path) const {
    if (value && value->isDictionary()) return root(*value, bound, path, nullptr);
    reportMisfit(value, path);
    return emptyRoot(bound);
}

template <bool kObserved>
Ref<ListBase> Engine<kObserved>::collection(std::optional<RepresentationView> value,
                                            const BoundRules& bound,
                                            const FEMPath& path) const {
    const bool isArray = value && value->isArray();
    if (!isArray) reportMisfit(value, path);
    const RepresentationView array = isArray ? *value : Representation::emptyArray();
    BlockWriter writer(roomForListOfRoots(array.size()), zone_);
    return finished(list(array, bound, bound.isa, {writer, path}, true), writer);
}

template <bool kObserved>
Ref<Object> Engine<kObserved>::rootOfList(RepresentationView element,
                                          const BoundRules& bound,
                                          const FEMPath& path,
                                          RootRoom& room) const {
    if (element.isDictionary()) return root(element, bound, path, &room);
    reportMisfit(element, path);
    return emptyRoot(bound);
}

template <bool kObserved>
Ref<Object> Engine<kObserved>::emptyRoot(const BoundRules& bound) const {
    BlockWriter writer(ObjectAccess::size(bound.isa), zone_);
    return finished(ObjectAccess::construct(bound.isa, writer), writer);
}

// One of a list shares the list's room; the only one of its document has none, and may keep the document's
// texts.
template <bool kObserved>
Ref<Object> Engine<kObserved>::root(RepresentationView dictionary,
                                    const BoundRules& bound,
                                    const FEMPath& path,
                                    RootRoom* room) const {
    const RepresentationNode& node = *dictionary.node();
    std::size_t textBytes = node.textBytes();
    const Block* texts = nullptr;
    if (room == nullptr) {
        textBytes = FoundValues::textBytes(bound.rules, dictionary);
        texts = textsToKeep(dictionary, textBytes, zone_);
        if (texts != nullptr) textBytes = textBytes / kKeptBytesPerCopiedByte + BlockWriter::kRoomToKeep;
    }
    const std::size_t estimate = ObjectAccess::size(bound.isa) + roomFor(node, textBytes);
    BlockWriter writer(room == nullptr ? estimate : room->of(estimate), zone_);
    if (texts != nullptr) writer.borrowTexts(*texts);
    Object* object = ObjectAccess::construct(bound.isa, writer);
    fill(*object, dictionary, bound, {writer, path});
    if (room != nullptr) room->learn(estimate, writer);
    return finished<Object>(object, writer);
}

template <bool kObserved>
const Object* Engine<kObserved>::record(RepresentationView value,
                                        const BoundRules& bound,
                                        const Place& at) const {
    Object* object = ObjectAccess::construct(bound.isa, at.writer);
    if (value.isDictionary())
        fill(*object, value, bound, at);
    else
        reportMisfit(value, at.path);
    return object;
}

template <bool kObserved>
const ListBase* Engine<kObserved>::list(RepresentationView array,
                                        const BoundRules& bound,
                                        const ObjectClass& listed,
                                        const Place& at,
                                        bool ofRoots) const {
    const auto** elements = at.writer.template allocate<const Object*>(array.size());
    if (ofRoots) at.writer.expectKept(array.size());
    RootRoom room;
    std::size_t count = 0;
    for (const RepresentationView element : array.elements()) {
        const FEMPath path(at.path, count);
        if (ofRoots) {
            const Ref<Object> kept = rootOfList(element, bound, path, room);
            at.writer.keep(kept->block());
            elements[count++] = kept.get();
        } else {
            elements[count++] = record(element, bound, {at.writer, path});
        }
    }
    return ObjectAccess::list(listed, elements, count, at.writer);
}

// An observer is told of all rules in their order. Without one, values that rules take as they are are stored
// when their keys are found.
template <bool kObserved>
FoundValues Engine<kObserved>::valuesIn(RepresentationView dictionary,
                                        Object& object,
                                        const BoundRules& bound,
                                        const Place& at) const {
    const RuleKeys& table = bound.rules.table;
    return FoundValues(
        bound.rules, dictionary, !kObserved, [&](const RuleKey& key, const RepresentationNode* value) {
            key.store(slotAt(key.slot, table.example, object),
                      RepresentationView::at(value, dictionary.block()),
                      at.writer);
        });
}

template <bool kObserved>
void Engine<kObserved>::fill(Object& object,
                             RepresentationView dictionary,
                             const BoundRules& bound,
                             const Place& at) const {
    if (bound.rules.inherited != nullptr) [[unlikely]]
        return fillInherited(object, dictionary, bound, at, nullptr);
    const FoundValues found = valuesIn(dictionary, object, bound, at);
    applyAttributes(object, found.lookup(), bound, at);
    applyRelationships(object, found.lookup(), bound, at);
}

/// The rules of one class in a chain of superclasses, and what they read.
template <bool kObserved>
struct Engine<kObserved>::Level {
    const BoundRules& bound;
    FoundValues::Lookup found;
    const Level* derived;
};

// Finds the values for the rules of a class and of its superclasses, and then applies them: all attributes,
// those of the superclasses first, before all relationships.
template <bool kObserved>
void Engine<kObserved>::fillInherited(Object& object,
                                      RepresentationView dictionary,
                                      const BoundRules& bound,
                                      const Place& at,
                                      const Level* derived) const {
    const FoundValues found = valuesIn(dictionary, object, bound, at);
    const Level level{bound, found.lookup(), derived};
    if (const FEMRules* inherited = bound.rules.inherited; inherited != nullptr)
        return fillInherited(
            object, dictionary, {*inherited->objectClass, *inherited, bound.captured}, at, &level);
    for (const Level* each = &level; each != nullptr; each = each->derived)
        applyAttributes(object, each->found, each->bound, at);
    for (const Level* each = &level; each != nullptr; each = each->derived)
        applyRelationships(object, each->found, each->bound, at);
}

template <bool kObserved>
void Engine<kObserved>::applyAttributes(Object& object,
                                        FoundValues::Lookup found,
                                        const BoundRules& bound,
                                        const Place& at) const {
    const auto apply = [&](const FEMRule& rule) {
        const FoundValue value = found.at(rule);
        if (value.node == nullptr)
            report(rule, FEMOutcome::missing, std::nullopt, at.path);
        else
            applyAttribute(rule, value.view(), bound, object, at);
    };
    if (kObserved || bound.rules.table.slots.empty()) {
        for (const FEMRule& rule : bound.rules.attributes)
            apply(rule);
    } else {
        for (const std::uint16_t position : bound.rules.orderedAttributes)
            apply(bound.rules.attributes[position]);
    }
}

template <bool kObserved>
void Engine<kObserved>::applyRelationships(Object& object,
                                           FoundValues::Lookup found,
                                           const BoundRules& bound,
                                           const Place& at) const {
    for (const FEMRule& rule : bound.rules.relationships) {
        const FoundValue value = found.at(rule);
        if (value.node == nullptr)
            report(rule, FEMOutcome::missing, std::nullopt, at.path);
        else
            applyRelationship(rule, value.view(), bound, object, at);
    }
}

template <bool kObserved>
void Engine<kObserved>::applyAttribute(const FEMRule& rule,
                                       RepresentationView value,
                                       const BoundRules& bound,
                                       Object& object,
                                       const Place& at) const {
    const Property& property = *rule.property;
    FEMOutcome outcome = FEMOutcome::set;
    if (rule.map.apply != nullptr)
        outcome = applyMapRule(rule, value, bound, object, at);
    else if (!property.place.store(slotIn(property, object), value, at.writer))
        outcome = value.isNull() ? FEMOutcome::null : FEMOutcome::wrongKind;
    if (outcome != FEMOutcome::set) clear(property, object);
    report(rule, outcome, value, at.path);
}

template <bool kObserved>
FEMOutcome Engine<kObserved>::applyMapRule(const FEMRule& rule,
                                           RepresentationView value,
                                           const BoundRules& bound,
                                           Object& object,
                                           const Place& at) const {
    PropertyWriter to(*rule.property, object, at.writer);
    try {
        rule.map.apply(rule.map, bound.captured, value, to);
    } catch (MappingFault& fault) {
        if (faultsLeaveEmpty_) return FEMOutcome::fault;
        if (!fault.hasPointer())
            fault.setPointer(FEMPath(at.path, rule.keyPath, rule.property->name).pointer());
        report(rule, FEMOutcome::fault, value, at.path);
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
void Engine<kObserved>::applyRelationship(const FEMRule& rule,
                                          RepresentationView value,
                                          const BoundRules& bound,
                                          Object& object,
                                          const Place& at) const {
    const Property& property = *rule.property;
    if (!(rule.toMany ? value.isArray() : value.isDictionary())) {
        clear(property, object);
        report(rule, value.isNull() ? FEMOutcome::null : FEMOutcome::wrongKind, value, at.path);
        return;
    }
    report(rule, FEMOutcome::set, value, at.path);
    const BoundRules nested = bound.nested(rule);
    const FEMPath path(at.path, rule.keyPath, property.name);
    const Place nestedAt{at.writer, path};
    const bool isRoot = nested.isa.isRoot();
    if (rule.toMany) {
        slotOf<ListSlot>(property, object).list = list(value, nested, *property.target, nestedAt, isRoot);
    } else if (isRoot) {
        RootRoom room;
        const Ref<Object> kept = root(value, nested, path, &room);
        at.writer.keep(kept->block());
        slotOf<RecordSlot>(property, object).record = kept.get();
    } else {
        slotOf<RecordSlot>(property, object).record = record(value, nested, nestedAt);
    }
}

template <bool kObserved>
void Engine<kObserved>::report(const FEMRule& rule,
                               FEMOutcome outcome,
                               std::optional<RepresentationView> value,
                               const FEMPath& path) const {
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
