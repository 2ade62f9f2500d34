#include "QELModels/Mapping/FEMDeserializer.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "QELModels/Records/MappingFault.h"
#include "QELModels/Records/PropertyWriter.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

using Node = RepresentationNode;

// Up to so many first keys are found without an allocation; all mappings of the library have fewer.
constexpr std::size_t kUsualKeys = 32;
// A dictionary with many more members than there are keys to find is asked for each key instead.
constexpr std::size_t kMostMembersWalked = 128;
// About how many bytes of records a document's node turns into: what full documents of all kinds need at the
// most.
constexpr std::size_t kRecordBytesPerNode = 11;
// A record keeps its document's texts instead of copying them when no more memory than this is kept for each
// byte of text that it reads.
constexpr std::size_t kMostBytesKeptPerByte = 3;
// Of texts that are kept, those that are cleaned of HTML are still written anew: about one byte in so many.
constexpr std::size_t kOneWrittenAnewIn = 2;
// Most of a very large document may be under keys that nobody reads.
constexpr std::size_t kMostRoomGuessed = std::size_t{64} << 10;

struct Found {
    const Node* node;
    const Block* block;
};

// What each first key of a mapping stands for in one dictionary; null where it is missing.
class FoundValues {
public:
    FoundValues(const FEMRules& rules, const Node* dictionary, const Block* block)
        : FoundValues(rules.keys.size(), block) {
        if (!isWalked(rules, dictionary)) {
            lookUp(rules, dictionary);
            return;
        }
        walk(rules, dictionary, [this](const FEMRules& known, const FEMKey& key, const Node* value) {
            values_[known.position(key)] = value;
        });
    }

    // Puts what can be put into the object at once, so that only the values of all other keys are left.
    FoundValues(const FEMRules& rules, const Node* dictionary, const Block* block, Object& object,
                BlockWriter& writer)
        : FoundValues(isWalked(rules, dictionary) ? rules.keysInOrder : rules.keys.size(), block) {
        if (!isWalked(rules, dictionary)) {
            lookUp(rules, dictionary);
            put(rules, object, writer);
            return;
        }
        walk(rules, dictionary, [&](const FEMRules& known, const FEMKey& key, const Node* value) {
            if (key.isPut())
                putValue(known, key, value, block, object, writer);
            else
                values_[known.position(key)] = value;
        });
    }

    // What rules read, as a value of its own that a loop over them has at hand.
    struct Lookup {
        const Node* const* values;
        const Block* block;

        // Null when it is missing. Links are left for the reader to follow.
        Found at(const FEMRule& rule) const {
            const Node* node = values[rule.key];
            if (node == nullptr || rule.furtherKeys.data() == nullptr) [[likely]]
                return {node, block};
            const auto value = RepresentationView::at(node, block).valueForKeyPath(rule.furtherKeys);
            return value ? Found{value->node(), value->block()} : Found{nullptr, nullptr};
        }
    };
    Lookup lookup() const noexcept { return {values_, block_}; }

    // About how many bytes of text rules read.
    std::size_t textBytes() const noexcept {
        std::size_t bytes = 0;
        for (const Node* node : std::span(values_, count_))
            if (node != nullptr) bytes += node->textBytes();
        return bytes;
    }

    // Puts what can be put, of the values of all keys, into an object.
    void put(const FEMRules& rules, Object& object, BlockWriter& writer) const {
        for (const FEMKey& key : rules.entries) {
            if (!key.isPut()) continue;
            const Node* value = values_[rules.position(key)];
            if (value != nullptr) putValue(rules, key, value, block_, object, writer);
        }
    }

private:
    FoundValues(std::size_t count, const Block* block) : block_(block), count_(count) {
        if (count_ > kUsualKeys) {
            many_ = std::make_unique<const Node*[]>(count_);
            values_ = many_.get();
            return;
        }
        // Some at a time, one by one: the instruction that compilers know for so few takes longer to begin.
        for (std::size_t i = 0; i < count_; i += kKeysAtOnce)
            clear(usual_ + i, std::make_index_sequence<kKeysAtOnce>{});
    }

    template <std::size_t... I>
    static void clear(const Node** values, std::index_sequence<I...>) noexcept {
        ((values[I] = nullptr), ...);
    }

    static bool isWalked(const FEMRules& rules, const Node* dictionary) noexcept {
        return !rules.slots.empty() && dictionary->size <= kMostMembersWalked;
    }

    // Calls `take(rules, entry, value)` for each member whose key rules read.
    template <class Take>
    static void walk(const FEMRules& rules, const Node* dictionary, const Take& take) {
        // What is written could be among the rules, for all that the compiler knows: so these are read first.
        const FEMRules known = rules;
        const Node* member = dictionary + 1;
        for (std::uint32_t left = dictionary->size; left != 0; --left) {
            const Node* const value = member + 1;
            if (const FEMKey* key = known.find(*member); key != nullptr) take(known, *key, value);
            member = value + value->extent();
        }
    }

    void lookUp(const FEMRules& rules, const Node* dictionary) {
        const RepresentationView view = RepresentationView::at(dictionary, block_);
        for (std::size_t i = 0; i < rules.keys.size(); ++i)
            values_[i] = view.nodeForKey(rules.keys[i]);
    }

    static void putValue(const FEMRules& rules, const FEMKey& key, const Node* value, const Block* block,
                         Object& object, BlockWriter& writer) {
        void* const slot = Property::slotAt(key.place, rules.example, object);
        key.put(slot, RepresentationView::at(value, block), writer);
    }

    static constexpr std::size_t kKeysAtOnce = 8;
    static_assert(kUsualKeys % kKeysAtOnce == 0);

    const Block* block_;
    std::size_t count_;
    const Node* usual_[kUsualKeys];
    std::unique_ptr<const Node*[]> many_;
    const Node** values_ = usual_;
};

// How much of the room guessed for the roots of one list is given to them: as much as any of them has taken
// so far, and a little more. The roots of a list are alike, so blocks are hardly larger than what is in them.
class Room {
public:
    std::size_t of(std::size_t guess) const noexcept { return (guess * part_ + kWhole - 1) / kWhole; }
    void learn(std::size_t guess, const BlockWriter& writer) noexcept {
        const std::size_t taken = writer.used() - sizeof(Block);
        mostTaken_ = std::clamp((taken * kWhole + guess - 1) / guess, mostTaken_, kWhole);
        part_ = std::min(mostTaken_ + kMore, kWhole);
    }

private:
    static constexpr std::size_t kWhole = 1024;
    static constexpr std::size_t kMore = 8;
    std::size_t mostTaken_ = 0;
    std::size_t part_ = kWhole;
};

// Applies rules to dictionaries. Whether somebody observes it is known when it is compiled, so that those who
// do not ask pay nothing.
template <bool kObserved>
class Engine {
public:
    explicit Engine(const FEMOptions& options) : observer_(options.observer), zone_(options.zone) {}

    // A record in a block of its own, and with it the one use of that block. One of a list shares the list's
    // room; the only one of its document has none, and may keep the document's texts.
    Ref<Object> root(std::optional<RepresentationView> value, const FEMRules& rules, const void* captured,
                     const FEMPath& path, Room* room) const {
        const std::size_t own = ObjectAccess::size(*rules.objectClass);
        if (!value || !value->isDictionary()) {
            BlockWriter writer(own, zone_);
            return finished(ObjectAccess::construct(*rules.objectClass, writer), writer);
        }
        const Node& node = *value->node();
        const FoundValues found(rules, &node, value->block());
        std::size_t textBytes = node.textBytes();
        const Block* texts = nullptr;
        if (room == nullptr) {
            textBytes = found.textBytes();
            texts = textsToKeep(*value, textBytes);
            if (texts != nullptr) textBytes = textBytes / kOneWrittenAnewIn + BlockWriter::kRoomToKeep;
        }
        const std::size_t guess = own + roomFor(node, textBytes);
        BlockWriter writer(room == nullptr ? guess : room->of(guess), zone_);
        if (texts != nullptr) writer.borrowTexts(*texts);
        Object* object = ObjectAccess::construct(*rules.objectClass, writer);
        if constexpr (!kObserved) found.put(rules, *object, writer);
        fill(*object, found.lookup(), rules, captured, writer, path);
        if (room != nullptr) room->learn(guess, writer);
        return finished(object, writer);
    }

    // An element of a list of roots.
    Ref<Object> rootOfList(RepresentationView element, const FEMRules& rules, const void* captured,
                           const FEMPath& path, Room& room) const {
        if (!element.isDictionary()) tellOfNone(element, path);
        return root(element, rules, captured, path, &room);
    }

    const ListBase* list(RepresentationView array, const FEMRules& rules, const void* captured,
                         BlockWriter& writer, const FEMPath& path, bool ofRoots) const {
        const auto** elements = writer.allocate<const Object*>(array.size());
        if (ofRoots) writer.expectKept(array.size());
        Room room;
        std::size_t count = 0;
        for (const RepresentationView element : array.elements()) {
            const FEMPath at(path, count);
            if (ofRoots) {
                const Ref<Object> kept = rootOfList(element, rules, captured, at, room);
                writer.keep(kept->block());
                elements[count++] = kept.get();
            } else {
                if (!element.isDictionary()) tellOfNone(element, at);
                elements[count++] = record(element, rules, captured, writer, at);
            }
        }
        return ObjectAccess::list(*rules.objectClass, elements, count, writer);
    }

    // Of an element or a root that is not the container it should be.
    void tellOfNone(std::optional<RepresentationView> value, const FEMPath& path) const {
        if constexpr (kObserved) {
            FEMOutcome outcome = FEMOutcome::wrongKind;
            if (!value)
                outcome = FEMOutcome::missing;
            else if (value->isNull())
                outcome = FEMOutcome::null;
            observer_->ruleApplied({path, nullptr, outcome, value});
        }
    }

private:
    static Ref<Object> finished(const Object* root, BlockWriter& writer) noexcept {
        writer.finish();
        return Ref<Object>::adopt(root);
    }

    const Block* textsToKeep(RepresentationView value, std::size_t bytesRead) const noexcept {
        const Block* texts = value.block() == nullptr ? nullptr : value.block()->textsFrom(zone_);
        const bool isWorthIt = texts != nullptr && texts->size() / kMostBytesKeptPerByte <= bytesRead;
        return isWorthIt ? texts : nullptr;
    }

    // Room for all under a root, guessed by the document's texts and nodes. Some of them may be unread, so
    // the guess is bounded. One too low costs one more piece of memory, one too high a few bytes.
    static std::size_t roomFor(const Node& node, std::size_t textBytes) {
        return std::min(textBytes + kRecordBytesPerNode * node.extent(), kMostRoomGuessed);
    }

    Object* record(RepresentationView value, const FEMRules& rules, const void* captured, BlockWriter& writer,
                   const FEMPath& path) const {
        Object* object = ObjectAccess::construct(*rules.objectClass, writer);
        // An observer has been told of an element that is none; there is nothing in it to tell of.
        if (value.isDictionary()) {
            if constexpr (kObserved) {
                const FoundValues found(rules, value.node(), value.block());
                fill(*object, found.lookup(), rules, captured, writer, path);
            } else {
                const FoundValues found(rules, value.node(), value.block(), *object, writer);
                fill(*object, found.lookup(), rules, captured, writer, path);
            }
        }
        return object;
    }

    // An observer is told of all rules in their order; without one, what can be put is there already.
    void fill(Object& object, FoundValues::Lookup found, const FEMRules& rules, const void* captured,
              BlockWriter& writer, const FEMPath& path) const {
        const auto attribute = [&](const FEMRule& rule) {
            const Found value = found.at(rule);
            if (value.node == nullptr) return tell(rule, FEMOutcome::missing, std::nullopt, path);
            applyAttribute(
                rule, RepresentationView::at(value.node, value.block), captured, object, writer, path);
        };
        if (kObserved || rules.entries.empty()) {
            for (const FEMRule& rule : rules.attributes)
                attribute(rule);
        } else {
            for (const std::uint16_t position : rules.inOrder)
                attribute(rules.attributes[position]);
        }
        for (const FEMRule& rule : rules.relationships) {
            const Found value = found.at(rule);
            if (value.node == nullptr)
                tell(rule, FEMOutcome::missing, std::nullopt, path);
            else
                applyRelationship(
                    rule, RepresentationView::at(value.node, value.block), captured, object, writer, path);
        }
    }

    void applyAttribute(const FEMRule& rule, RepresentationView value, const void* captured, Object& object,
                        BlockWriter& writer, const FEMPath& path) const {
        const Property& property = *rule.property;
        FEMOutcome outcome = FEMOutcome::set;
        if (rule.map.apply == nullptr) {
            if (!property.putRaw(property.slotIn(object), value, writer))
                outcome = value.isNull() ? FEMOutcome::null : FEMOutcome::wrongKind;
        } else {
            PropertyWriter to(property, object, writer);
            applyMapRule(rule, value, captured, to, path);
            if (to.result() == PropertyWriter::Result::nothing)
                outcome = value.isNull() ? FEMOutcome::null : FEMOutcome::refused;
            else if (to.result() == PropertyWriter::Result::wrongKind)
                outcome = FEMOutcome::wrongKind;
        }
        if (outcome != FEMOutcome::set) property.empty(object);
        tell(rule, outcome, value, path);
    }

    void applyMapRule(const FEMRule& rule, RepresentationView value, const void* captured, PropertyWriter& to,
                      const FEMPath& path) const {
        try {
            rule.map.apply(rule.map, captured, value, to);
        } catch (MappingFault& fault) {
            if (!fault.hasPointer())
                fault.setPointer(FEMPath(path, rule.keyPath, rule.property->name).pointer());
            tell(rule, FEMOutcome::fault, value, path);
            throw;
        }
    }

    void applyRelationship(const FEMRule& rule, RepresentationView value, const void* captured,
                           Object& object, BlockWriter& writer, const FEMPath& path) const {
        const Property& property = *rule.property;
        if (!(rule.toMany ? value.isArray() : value.isDictionary())) {
            property.empty(object);
            tell(rule, value.isNull() ? FEMOutcome::null : FEMOutcome::wrongKind, value, path);
            return;
        }
        tell(rule, FEMOutcome::set, value, path);
        const FEMRules& rules = rule.nestedRules();
        const void* held = rule.mapping == nullptr ? captured : rule.mapping->captured();
        const FEMPath at(path, rule.keyPath, property.name);
        const bool isRoot = rules.objectClass->isRoot();
        if (rule.toMany) {
            property.slot<const ListBase*>(object) = list(value, rules, held, writer, at, isRoot);
        } else if (isRoot) {
            Room room;
            const Ref<Object> kept = root(value, rules, held, at, &room);
            writer.keep(kept->block());
            property.slot<const Object*>(object) = kept.get();
        } else {
            property.slot<const Object*>(object) = record(value, rules, held, writer, at);
        }
    }

    void tell(const FEMRule& rule, FEMOutcome outcome, std::optional<RepresentationView> value,
              const FEMPath& path) const {
        if constexpr (kObserved) {
            const FEMPath at(path, rule.keyPath, rule.property->name);
            observer_->ruleApplied({at, rule.property, outcome, value});
        }
    }

    FEMObserver* observer_;
    Zone* zone_;
};

template <bool kObserved>
Ref<Object> object(std::optional<RepresentationView> representation, const FEMMapping& mapping,
                   const FEMOptions& options) {
    const Engine<kObserved> engine(options);
    const FEMPath path(options.keyPath);
    if (!representation || !representation->isDictionary()) engine.tellOfNone(representation, path);
    return engine.root(representation, mapping.rules(), mapping.captured(), path, nullptr);
}

// In the list, and among the blocks that it keeps.
constexpr std::size_t kBytesPerElement = 2 * sizeof(void*);

std::size_t roomForList(std::size_t elements) noexcept {
    return sizeof(ListBase) + BlockWriter::kRoomToKeep + kBytesPerElement * elements;
}

template <bool kObserved>
Ref<ListBase> collection(std::optional<RepresentationView> representation, const FEMMapping& mapping,
                         const FEMOptions& options) {
    const bool given = representation && representation->isArray();
    const RepresentationView array = given ? *representation : Representation::emptyArray();
    const Engine<kObserved> engine(options);
    const FEMPath path(options.keyPath);
    if (!given) engine.tellOfNone(representation, path);
    BlockWriter writer(roomForList(array.size()), options.zone);
    const ListBase* list = engine.list(array, mapping.rules(), mapping.captured(), writer, path, true);
    writer.finish();
    return Ref<ListBase>::adopt(list);
}

}  // namespace

Ref<Object> FEMDeserializer::objectFromRepresentation(std::optional<RepresentationView> representation,
                                                      const FEMMapping& mapping, const FEMOptions& options) {
    return options.observer == nullptr ? object<false>(representation, mapping, options)
                                       : object<true>(representation, mapping, options);
}

Ref<ListBase> FEMDeserializer::collectionFromRepresentation(std::optional<RepresentationView> representation,
                                                            const FEMMapping& mapping,
                                                            const FEMOptions& options) {
    return options.observer == nullptr ? collection<false>(representation, mapping, options)
                                       : collection<true>(representation, mapping, options);
}

struct FEMCollection::Elements {
    const FEMMapping& mapping;
    const FEMOptions options;
    Room room{};
    std::vector<Ref<Object>> list{};

    template <bool kObserved>
    void add(RepresentationView element) {
        const FEMPath path(options.keyPath);
        list.push_back(Engine<kObserved>(options).rootOfList(
            element, mapping.rules(), mapping.captured(), FEMPath(path, list.size()), room));
    }
};

FEMCollection::FEMCollection(const FEMMapping& mapping, const FEMOptions& options)
    : elements_(new Elements{mapping, options}) {}

FEMCollection::~FEMCollection() = default;

void FEMCollection::add(RepresentationView element) {
    if (elements_->options.observer == nullptr)
        elements_->add<false>(element);
    else
        elements_->add<true>(element);
}

void FEMCollection::clear() noexcept {
    elements_->list.clear();
}

Ref<ListBase> FEMCollection::finish() {
    std::vector<Ref<Object>>& list = elements_->list;
    BlockWriter writer(roomForList(list.size()), elements_->options.zone);
    const auto** objects = writer.allocate<const Object*>(list.size());
    writer.expectKept(list.size());
    for (std::size_t i = 0; i < list.size(); ++i) {
        objects[i] = list[i].get();
        writer.keep(list[i]->block());
    }
    const ListBase* made =
        ObjectAccess::list(*elements_->mapping.rules().objectClass, objects, list.size(), writer);
    list.clear();
    writer.finish();
    return Ref<ListBase>::adopt(made);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
