#include "QELModels/Representation/Representation.h"

#include <algorithm>
#include <array>
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

// Two containers of one size that are walked side by side.
struct Walk {
    const Node* a;           // the next element or member of the one
    const Node* b;           // what stands at its place in the other
    const Node* dictionary;  // the other one, if they are dictionaries
    std::uint32_t left;      // how many elements or members are still to be compared
    bool inOrder = true;     // whether their keys are so far; if not, `b` is of no use
};

// The walks to go on with, for nesting must not cost the thread's stack. Usual depths need no allocation.
class WalkStack {
public:
    bool empty() const noexcept { return size_ == 0; }

    void push(const Walk& walk) {
        if (size_ < kUsualDepth)
            usual_[size_] = walk;
        else
            deep_.push_back(walk);
        ++size_;
    }

    Walk pop() noexcept {
        if (--size_ < kUsualDepth) return usual_[size_];
        const Walk walk = deep_.back();
        deep_.pop_back();
        return walk;
    }

private:
    static constexpr std::size_t kUsualDepth = 16;

    std::array<Walk, kUsualDepth> usual_;
    std::vector<Walk> deep_;
    std::size_t size_ = 0;
};

const Node* behindLink(const Node* node) noexcept {
    return node->tag == Tag::link ? node->target : node;
}

bool equalNumbers(const Node& a, const Node& b) noexcept {
    if (a.tag == b.tag && a.tag != Tag::real) return a.bits == b.bits;
    return numberOf(a) == numberOf(b);
}

// Of values that are no containers.
bool equalScalars(const Node& a, const Node& b) noexcept {
    if (a.isNumber()) return b.isNumber() && equalNumbers(a, b);
    return a.tag == b.tag && (a.tag == Tag::null || a.string() == b.string());
}

// Whether two values lie in memory in the same way, texts and all. Most that are equal do, since documents of
// one source are written in one way; those that do not may be equal all the same.
bool lieAlike(const Node* a, const Node* b) noexcept {
    const Node* const end = a + a->extent();
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
                // Of a container, that is how many nodes are in it; so both have the same elements.
                if (a->bits != b->bits) return false;
        }
    }
    return true;
}

// Keys that stand in the same order in both are not looked up.
bool equalValues(const Node* a, const Node* b) {
    WalkStack outer;
    Walk walk{a, b, nullptr, 1};
    for (;;) {
        while (walk.left == 0) {
            if (outer.empty()) return true;
            walk = outer.pop();
        }
        --walk.left;
        a = walk.a;
        b = walk.b;
        if (walk.dictionary != nullptr) {
            walk.inOrder = walk.inOrder && detail::sameKey(*a, *b);
            b = walk.inOrder ? b + 1 : detail::findValue(walk.dictionary, a->string());
            if (b == nullptr) return false;
            ++a;
        }
        walk.a = a + a->extent();
        if (walk.inOrder) walk.b = b + b->extent();

        a = behindLink(a);
        b = behindLink(b);
        if (a == b) continue;
        if (!a->isContainer()) {
            if (!equalScalars(*a, *b)) return false;
            continue;
        }
        if (a->tag != b->tag || a->size != b->size) return false;
        // A walk that is over is not gone on with: chains of containers with one value each need no room.
        if (walk.left != 0) outer.push(walk);
        walk = {a + 1, b + 1, a->tag == Tag::dictionary ? b : nullptr, a->size};
    }
}

}  // namespace

bool operator==(RepresentationView a, RepresentationView b) {
    return a.node_ == b.node_ || lieAlike(a.node_, b.node_) || equalValues(a.node_, b.node_);
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

Representation::Representation(std::initializer_list<Member> members) : Representation(dictionary(members)) {}

Representation Representation::dictionary(std::initializer_list<Member> members) {
    RepresentationBuilder builder;
    builder.beginDictionary();
    for (const Member& member : members) {
        builder.key(member.key);
        builder.representation(member.value);
    }
    builder.endDictionary();
    return builder.finish();
}

Representation Representation::array(std::initializer_list<Representation> elements) {
    RepresentationBuilder builder;
    builder.beginArray();
    for (const Representation& element : elements)
        builder.representation(element);
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
