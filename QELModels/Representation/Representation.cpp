#include "QELModels/Representation/Representation.h"

#include <array>
#include <utility>
#include <vector>

#include "QELModels/Platform/KeyPath.h"
#include "QELModels/Platform/detail/Hash.h"
#include "QELModels/Representation/RepresentationBuilder.h"
#include "QELModels/Representation/detail/RepresentationIndex.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

using Node = detail::RepresentationNode;
using Tag = Node::Tag;

constinit const Node kNull{};
constinit const Node kEmptyArray = [] {
    Node node;
    node.tag = Tag::array;
    node.bits = 1;
    return node;
}();

Number numberOf(const Node& node) noexcept {
    return detail::NumberBits::number(node.bits, node.origin());
}

}  // namespace

RepresentationView::Kind RepresentationView::kind() const noexcept {
    switch (node_->tag) {
        case Tag::null:
            return Kind::null;
        case Tag::string:
            return Kind::string;
        case Tag::array:
            return Kind::array;
        case Tag::dictionary:
            return Kind::dictionary;
        default:
            return Kind::number;
    }
}

std::optional<std::string_view> RepresentationView::text() const noexcept {
    if (!isString()) return std::nullopt;
    return node_->string();
}

std::optional<Number> RepresentationView::number() const noexcept {
    if (!isNumber()) return std::nullopt;
    return numberOf(*node_);
}

std::optional<RepresentationView> RepresentationView::valueForKey(std::string_view key) const noexcept {
    const Node* value = isDictionary() ? detail::findValue(node_, key) : nullptr;
    if (value == nullptr) return std::nullopt;
    return at(value, block_);
}

std::optional<RepresentationView> RepresentationView::valueForKeyPath(
    std::string_view keyPath) const noexcept {
    RepresentationView value = *this;
    for (KeyPath keys(keyPath);; keys = KeyPath(keys.rest)) {
        const auto next = value.valueForKey(keys.first);
        if (!next || keys.isLast()) return next;
        value = *next;
    }
}

std::uint64_t RepresentationView::hash() const noexcept {
    switch (kind()) {
        case Kind::null:
            return 0;
        case Kind::string:
            return detail::hashOfText(node_->string());
        case Kind::number:
            return numberOf(*node_).hash();
        default:
            return node_->size;
    }
}

namespace {

const Node* linkFollowed(const Node* node) noexcept {
    return node->tag == Tag::link ? node->target : node;
}

// Two containers of one size, as far as they are not compared yet.
struct ContainerPair {
    const Node* a;              // the next element or member of the one
    const Node* b;              // what is in its place in the other
    const Node* dictionary;     // the other one, if they are dictionaries
    std::uint32_t left;         // how many elements or members are still to be compared
    bool areKeysInStep = true;  // whether all keys so far were the same; if not, `b` is of no use

    // Two values that have to be equal; null in the second place when there is no such key.
    std::pair<const Node*, const Node*> next() noexcept {
        --left;
        const Node* first = a;
        const Node* second = b;
        if (dictionary != nullptr) {
            // Keys in the same places in both are not looked up.
            areKeysInStep = areKeysInStep && detail::sameKey(*a, *b);
            second = areKeysInStep ? b->value() : detail::findValue(dictionary, a->string());
            first = a->value();
            if (second == nullptr) return {first, nullptr};
        }
        a = first->next();
        if (areKeysInStep) b = second->next();
        return {linkFollowed(first), linkFollowed(second)};
    }
};

// The pairs to go on with, for nesting must not cost the thread's stack. Usual depths need no allocation.
class PairStack {
public:
    bool empty() const noexcept { return size_ == 0; }

    void push(const ContainerPair& pair) {
        if (size_ < kUsualDepth)
            usual_[size_] = pair;
        else
            deep_.push_back(pair);
        ++size_;
    }

    ContainerPair pop() noexcept {
        if (--size_ < kUsualDepth) return usual_[size_];
        const ContainerPair pair = deep_.back();
        deep_.pop_back();
        return pair;
    }

private:
    static constexpr std::size_t kUsualDepth = 16;

    std::array<ContainerPair, kUsualDepth> usual_;
    std::vector<ContainerPair> deep_;
    std::size_t size_ = 0;
};

bool equalNumbers(const Node& a, const Node& b) noexcept {
    if (a.tag == b.tag && a.tag != Tag::real) return a.bits == b.bits;
    return numberOf(a) == numberOf(b);
}

// Of values that are not containers.
bool equalScalars(const Node& a, const Node& b) noexcept {
    if (a.isNumber()) return b.isNumber() && equalNumbers(a, b);
    return a.tag == b.tag && (a.tag == Tag::null || a.string() == b.string());
}

// Whether two values have equal nodes, one by one. Most that are equal do, since documents of one source are
// written in one way; those that do not may be equal all the same.
bool haveEqualNodes(const Node* a, const Node* b) noexcept {
    const Node* const end = a->next();
    for (; a != end; ++a, ++b) {
        if (a->tag != b->tag) return false;
        switch (a->tag) {
            case Tag::string:
                if (a->string() != b->string()) return false;
                break;
            case Tag::real:
                if (!equalNumbers(*a, *b)) return false;
                break;
            case Tag::link:
                return false;
            default:
                // Of a container, these are how many nodes are in it; so both have the same elements.
                if (a->bits != b->bits) return false;
        }
    }
    return true;
}

// A value is equal to itself, whatever it is; so a NaN is, too.
bool equalValues(const Node* rootA, const Node* rootB) {
    PairStack outer;
    ContainerPair pair{rootA, rootB, nullptr, 1};
    for (;;) {
        while (pair.left == 0) {
            if (outer.empty()) return true;
            pair = outer.pop();
        }
        const auto [a, b] = pair.next();
        if (b == nullptr) return false;
        if (a == b) continue;
        if (!a->isContainer()) {
            if (!equalScalars(*a, *b)) return false;
            continue;
        }
        if (a->tag != b->tag || a->size != b->size) return false;
        // A pair that is done is not gone on with: chains of containers with one value each need no room.
        if (pair.left != 0) outer.push(pair);
        pair = {a + 1, b + 1, a->tag == Tag::dictionary ? b : nullptr, a->size};
    }
}

}  // namespace

bool operator==(RepresentationView a, RepresentationView b) {
    return a.node_ == b.node_ || haveEqualNodes(a.node_, b.node_) || equalValues(a.node_, b.node_);
}

Representation::Representation() noexcept : view_(&kNull, nullptr) {}

Representation::Representation(Number number) : Representation() {
    RepresentationBuilder builder(1, 0);
    builder.number(number);
    *this = builder.finish();
}

Representation::Representation(std::string_view text) : Representation() {
    RepresentationBuilder builder(1, text.size());
    builder.string(text);
    *this = builder.finish();
}

Representation::Representation(std::initializer_list<Member> members)
    : Representation(dictionaryOf(members.begin(), members.size())) {}

Representation Representation::dictionaryOf(const Member* members, std::size_t size) {
    RepresentationBuilder builder;
    builder.beginDictionary();
    for (; size != 0; ++members, --size) {
        builder.key(members->key);
        builder.representation(members->value);
    }
    builder.endDictionary();
    return builder.finish();
}

Representation Representation::arrayOf(const Representation* elements, std::size_t size) {
    RepresentationBuilder builder;
    builder.beginArray();
    for (; size != 0; ++elements, --size)
        builder.representation(*elements);
    builder.endArray();
    return builder.finish();
}

RepresentationView Representation::emptyArray() noexcept {
    return {&kEmptyArray, nullptr};
}

Representation::Representation(RepresentationView view) noexcept : view_(view) {
    if (view_.block_ != nullptr) view_.block_->retain();
}

Representation::Representation(const Representation& other) noexcept : Representation(other.view_) {}

Representation::Representation(Representation&& other) noexcept : Representation() {
    std::swap(view_, other.view_);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
