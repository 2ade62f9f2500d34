#include "QELModels/Representation/Representation.h"

#include <algorithm>
#include <array>
#include <compare>
#include <stdexcept>
#include <string>
#include <vector>

#include "QELModels/Platform/detail/Hash.h"
#include "QELModels/Representation/RepresentationBuilder.h"
#include "QELModels/Values/Text.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

using Node = RepresentationNode;
using Tag = Node::Tag;

// A value of up to so many nodes is copied into what wraps it; a larger one is linked.
constexpr std::size_t kMostNodesCopied = 16;
// Three offsets lie in one index node: one in its size, two in its bits.
constexpr std::size_t kOffsetsPerIndexNode = 3;

static_assert(static_cast<int>(Tag::boolean) - static_cast<int>(Tag::int64) ==
              static_cast<int>(Number::Origin::boolean));

constinit const Node kNull{};
constinit const Node kEmptyArray = [] {
    Node node;
    node.tag = Tag::array;
    node.bits = 1;
    return node;
}();

std::uint32_t indexedOffset(const Node* index, std::size_t position) noexcept {
    const Node& node = index[position / kOffsetsPerIndexNode];
    switch (position % kOffsetsPerIndexNode) {
        case 0:
            return node.size;
        case 1:
            return static_cast<std::uint32_t>(node.bits);
        default:
            return static_cast<std::uint32_t>(node.bits >> 32);
    }
}

void setIndexedOffset(Node* index, std::size_t position, std::uint32_t offset) noexcept {
    Node& node = index[position / kOffsetsPerIndexNode];
    switch (position % kOffsetsPerIndexNode) {
        case 0:
            node.size = offset;
            break;
        case 1:
            node.bits |= offset;
            break;
        default:
            node.bits |= std::uint64_t{offset} << 32;
    }
}

std::size_t indexNodes(std::size_t members) noexcept {
    return (members + kOffsetsPerIndexNode - 1) / kOffsetsPerIndexNode;
}

// The order of the keys in an index: any total order will do, so the cheapest comparisons come first.
std::strong_ordering compareKeys(std::uint16_t hashA,
                                 std::string_view a,
                                 std::uint16_t hashB,
                                 std::string_view b) noexcept {
    if (hashA != hashB) return hashA <=> hashB;
    if (a.size() != b.size()) return a.size() <=> b.size();
    return a.compare(b) <=> 0;
}

bool sameKey(const Node& a, const Node& b) noexcept {
    return a.keyHash == b.keyHash && a.string() == b.string();
}

// The node of the value at a key, links not followed; null when it is missing.
const Node* find(const Node* dictionary, std::string_view key) noexcept {
    const std::uint16_t hash = detail::keyHash(key);
    if (!dictionary->indexed) {
        const Node* member = dictionary + 1;
        for (std::uint32_t i = 0; i < dictionary->size; ++i) {
            if (member->keyHash == hash && member->string() == key) return member + 1;
            member += 1 + (member + 1)->extent();
        }
        return nullptr;
    }
    const Node* index = dictionary + dictionary->extent() - indexNodes(dictionary->size);
    std::size_t low = 0;
    std::size_t high = dictionary->size;
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        const Node* member = dictionary + indexedOffset(index, middle);
        const auto order = compareKeys(member->keyHash, member->string(), hash, key);
        if (order == 0) return member + 1;
        if (order < 0)
            low = middle + 1;
        else
            high = middle;
    }
    return nullptr;
}

Number numberOf(const Node& node) noexcept {
    return NumberBits::number(node.bits, node.origin());
}

std::string withPairsJoined(std::string_view text) {
    std::string joined;
    std::size_t from = 0;
    for (std::size_t i = Text::kHalfBytes; i < text.size(); ++i) {
        if (!Text::endsInHighHalf(text.substr(0, i)) || !Text::beginsWithLowHalf(text.substr(i))) continue;
        Text::append(joined, text.substr(from, i - from));
        from = i;
    }
    Text::append(joined, text.substr(from));
    return joined;
}

// Copies nodes into a block that is being written, their texts with them. What they link to is kept.
void copyNodes(const Node* from, std::size_t count, Node* to, BlockWriter& writer) {
    for (std::size_t i = 0; i < count; ++i) {
        to[i] = from[i];
        if (from[i].tag == Tag::string)
            to[i].text = writer.keepTextOfBlock(from[i].string()).data();
        else if (from[i].tag == Tag::link)
            writer.keep(from[i + 1].block);
    }
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
    const Node* value = isDictionary() ? nodeForKey(key) : nullptr;
    if (value == nullptr) return std::nullopt;
    return at(value, block_);
}

const RepresentationNode* RepresentationView::nodeForKey(std::string_view key) const noexcept {
    return find(node_, key);
}

std::optional<RepresentationView> RepresentationView::valueForKeyPath(
    std::string_view keyPath) const noexcept {
    RepresentationView value = *this;
    for (;;) {
        const std::size_t dot = keyPath.find('.');
        const auto next = value.valueForKey(keyPath.substr(0, dot));
        if (!next || dot == std::string_view::npos) return next;
        value = *next;
        keyPath.remove_prefix(dot + 1);
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
            walk.inOrder = walk.inOrder && sameKey(*a, *b);
            b = walk.inOrder ? b + 1 : find(walk.dictionary, a->string());
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

namespace {

// Of a block with so many nodes and bytes of text, and of what it keeps.
std::size_t roomFor(std::size_t nodes, std::size_t textBytes) {
    if (nodes > UINT32_MAX || textBytes > SIZE_MAX / 2) throw std::bad_alloc();
    return nodes * sizeof(Node) + textBytes + BlockWriter::kRoomToKeep;
}

}  // namespace

RepresentationBuilder::RepresentationBuilder(std::size_t nodes, std::size_t textBytes, Zone* zone)
    : writer_(roomFor(nodes, textBytes), zone), nodes_(writer_.allocate<Node>(nodes)), capacity_(nodes) {}

char* RepresentationBuilder::reserveNodesBehind(char* text, std::size_t nodes) {
    const std::ptrdiff_t offset = text - reinterpret_cast<char*>(writer_.block());
    nodes_ = static_cast<Node*>(writer_.extend(nodes * sizeof(Node)));
    capacity_ = nodes;
    return reinterpret_cast<char*>(writer_.block()) + offset;
}

void RepresentationBuilder::grow(std::size_t capacity) {
    // Offsets into a document are 32 bits wide.
    if (count_ >= UINT32_MAX / 2) throwTooLong();
    capacity = std::max<std::size_t>(capacity, kUsualNodes);
    if (nodesArePiece_) {
        nodes_ = static_cast<Node*>(writer_.growPiece(count_ * sizeof(Node), capacity * sizeof(Node)));
    } else {
        auto* nodes = static_cast<Node*>(writer_.openPiece(capacity * sizeof(Node)));
        std::copy_n(nodes_, count_, nodes);
        nodes_ = nodes;
        nodesArePiece_ = true;
    }
    capacity_ = capacity;
}

std::size_t RepresentationBuilder::close(Tag tag) {
    if (open_ == kNowhere || keyGiven_ || nodes_[open_].tag != tag) throwOutOfOrder();
    return std::exchange(open_, static_cast<std::uint32_t>(nodes_[open_].bits));
}

void RepresentationBuilder::setExtent(std::size_t container) noexcept {
    const auto before = static_cast<std::uint32_t>(nodes_[container].bits >> 32);
    nodes_[container].bits = (count_ - container) | std::uint64_t{textBytes_ - before} << 32;
}

void RepresentationBuilder::endArray() {
    setExtent(close(Tag::array));
}

void RepresentationBuilder::endDictionary() {
    const std::size_t dictionary = close(Tag::dictionary);
    settleKeys(dictionary);
    setExtent(dictionary);
}

// Merges repeated keys and gives a large dictionary its index.
void RepresentationBuilder::settleKeys(std::size_t dictionary) {
    if (nodes_[dictionary].size > kMostMembersScanned)
        index(dictionary);
    else if (repeatsKeys(dictionary))
        mergeRepeatedKeys(dictionary);
}

RepresentationNode* RepresentationBuilder::closeDictionary(std::size_t dictionary, std::size_t count) {
    count_ = count;
    const std::size_t room = capacity_ - count;
    settleKeys(dictionary);
    if (capacity_ - count_ < room) grow(count_ + room);
    return nodes_ + count_;
}

bool RepresentationBuilder::repeatsKeys(std::size_t dictionary) const noexcept {
    // Keys are mostly different and mostly few: six bits of the hash rule a repetition out for nearly all.
    std::uint64_t seen = 0;
    const Node* first = nodes_ + dictionary + 1;
    for (const Node* member = first; member != nodes_ + count_; member += 1 + (member + 1)->extent()) {
        const std::uint64_t bit = std::uint64_t{1} << (member->keyHash >> 10);
        if ((seen & bit) != 0) {
            const Node* earlier = first;
            while (!sameKey(*earlier, *member))
                earlier += 1 + (earlier + 1)->extent();
            if (earlier != member) return true;
        }
        seen |= bit;
    }
    return false;
}

namespace {

// Where the members of a dictionary lie, in the order of their keys and, among equal keys, of the document.
std::vector<std::uint32_t> sortedMembers(const Node* dictionary) {
    std::vector<std::uint32_t> offsets;
    offsets.reserve(dictionary->size);
    const Node* member = dictionary + 1;
    for (std::uint32_t i = 0; i < dictionary->size; ++i) {
        offsets.push_back(static_cast<std::uint32_t>(member - dictionary));
        member += 1 + (member + 1)->extent();
    }
    std::sort(offsets.begin(), offsets.end(), [dictionary](std::uint32_t a, std::uint32_t b) {
        const Node& first = dictionary[a];
        const Node& second = dictionary[b];
        const auto order = compareKeys(first.keyHash, first.string(), second.keyHash, second.string());
        return order != 0 ? order < 0 : a < b;
    });
    return offsets;
}

}  // namespace

void RepresentationBuilder::index(std::size_t dictionary) {
    const std::vector<std::uint32_t> offsets = sortedMembers(nodes_ + dictionary);
    const auto repeated = std::adjacent_find(offsets.begin(), offsets.end(), [&](auto a, auto b) {
        return sameKey(nodes_[dictionary + a], nodes_[dictionary + b]);
    });
    if (repeated != offsets.end()) {
        mergeRepeatedKeys(dictionary);
        if (nodes_[dictionary].size > kMostMembersScanned) index(dictionary);
        return;
    }
    const std::size_t first = count_;
    for (std::size_t i = 0; i < indexNodes(offsets.size()); ++i)
        append().tag = Tag::index;
    for (std::size_t i = 0; i < offsets.size(); ++i)
        setIndexedOffset(nodes_ + first, i, offsets[i]);
    nodes_[dictionary].indexed = true;
}

void RepresentationBuilder::mergeRepeatedKeys(std::size_t dictionary) {
    Node* base = nodes_ + dictionary;
    const std::vector<std::uint32_t> sorted = sortedMembers(base);
    // Pairs of a key's first place and its last value.
    std::vector<std::pair<std::uint32_t, std::uint32_t>> kept;
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        if (i != 0 && sameKey(base[sorted[i - 1]], base[sorted[i]]))
            kept.back().second = sorted[i] + 1;
        else
            kept.emplace_back(sorted[i], sorted[i] + 1);
    }
    std::sort(kept.begin(), kept.end());

    std::vector<Node> merged;
    merged.reserve(count_ - dictionary);
    for (const auto& [key, value] : kept) {
        merged.push_back(base[key]);
        merged.insert(merged.end(), base + value, base + value + base[value].extent());
    }
    std::copy(merged.begin(), merged.end(), base + 1);
    base->size = static_cast<std::uint32_t>(kept.size());
    count_ = dictionary + 1 + merged.size();
}

std::string_view RepresentationBuilder::copied(std::string_view text) {
    if (finished_) throwOutOfOrder();
    if (Text::isWellFormed(text)) return writer_.copyText(text);
    const std::string joined = withPairsJoined(text);
    if (const std::size_t at = Text::firstMalformedByte(joined); at != joined.size())
        throw std::invalid_argument("a text is not UTF-8 at its byte " + std::to_string(at));
    return writer_.copyText(joined);
}

void RepresentationBuilder::key(std::string_view key) {
    keyInPlace(copied(key));
}

void RepresentationBuilder::string(std::string_view text) {
    stringInPlace(copied(text));
}

void RepresentationBuilder::number(Number number) {
    value() = node(number);
}

void RepresentationBuilder::representation(RepresentationView view) {
    const Node* from = view.node();
    const std::size_t extent = from->extent();
    textBytes_ += static_cast<std::uint32_t>(from->textBytes());
    if (extent > kMostNodesCopied) {
        Node& link = value();
        link.tag = Tag::link;
        link.target = from;
        append().block = view.block();
        writer_.keep(view.block());
        return;
    }
    value();
    for (std::size_t i = 1; i < extent; ++i)
        append();
    copyNodes(from, extent, nodes_ + count_ - extent, writer_);
}

Representation RepresentationBuilder::finish() {
    if (finished_ || count_ == 0 || open_ != kNowhere) throwOutOfOrder();
    finished_ = true;
    const Node* nodes = nodes_;
    if (nodesArePiece_) nodes = static_cast<const Node*>(writer_.closePiece(count_ * sizeof(Node)));
    const RepresentationView view = RepresentationView::at(nodes, writer_.block());
    // A document that is nothing but a link is the value that it links to; the writer frees its own block.
    if (view.block() != writer_.block()) return Representation(view);
    writer_.finish();
    return Representation(Representation::Adopt{}, view);
}

RepresentationView RepresentationBuilder::lendNodes(std::size_t count) noexcept {
    count_ = count;
    return RepresentationView::at(nodes_, writer_.block());
}

void RepresentationBuilder::throwOutOfOrder() {
    throw std::logic_error("the events of a representation are out of order");
}

void RepresentationBuilder::throwTooLong() {
    throw std::length_error("a representation is too large: a text, a container or the document");
}

const RepresentationNode* copyRepresentation(RepresentationView view, BlockWriter& writer) {
    const std::size_t extent = view.node()->extent();
    Node* copy = writer.allocate<Node>(extent);
    copyNodes(view.node(), extent, copy, writer);
    return copy;
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
