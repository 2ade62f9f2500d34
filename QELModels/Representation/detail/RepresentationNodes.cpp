#include "QELModels/Representation/detail/RepresentationNodes.h"

#include <algorithm>
#include <stdexcept>
#include <utility>
#include <vector>

#include "QELModels/Representation/detail/RepresentationAccess.h"
#include "QELModels/Representation/detail/RepresentationIndex.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

namespace {

using Node = RepresentationNode;
using Tag = Node::Tag;

static_assert(static_cast<int>(Tag::boolean) - static_cast<int>(Tag::int64) ==
              static_cast<int>(Number::Origin::boolean));

constexpr std::size_t kLeastNodesGrown = 32;

// Of that many nodes, which are counted in 32 bits: where addresses have no more bits either, that can be
// more bytes than there are.
std::size_t bytesOf(std::size_t nodes) {
    if (nodes > SIZE_MAX / 4 / sizeof(Node)) throw std::bad_alloc();
    return nodes * sizeof(Node);
}

// For a block of that many nodes and bytes of text, and for what it keeps.
std::size_t bytesFor(std::size_t nodes, std::size_t textBytes) {
    if (nodes > UINT32_MAX || textBytes > SIZE_MAX / 2) throw std::bad_alloc();
    return bytesOf(nodes) + textBytes + BlockKeeper::kBytesForFirst;
}

// Where the members of a dictionary lie, in the order of their keys and, among equal keys, of the document.
std::vector<std::uint32_t> sortedMembers(const Node* dictionary) {
    std::vector<std::uint32_t> offsets;
    offsets.reserve(dictionary->size);
    const Node* member = dictionary + 1;
    for (std::uint32_t i = 0; i < dictionary->size; ++i) {
        offsets.push_back(static_cast<std::uint32_t>(member - dictionary));
        member = member->nextMember();
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

RepresentationNodes::RepresentationNodes(std::size_t nodes, std::size_t textBytes, Zone* zone)
    : writer_(bytesFor(nodes, textBytes), zone), nodes_(writer_.allocate<Node>(nodes)), capacity_(nodes) {}

char* RepresentationNodes::extendAfter(char* text, std::size_t nodes) {
    const std::ptrdiff_t offset = text - reinterpret_cast<char*>(writer_.block());
    nodes_ = static_cast<Node*>(writer_.extend(bytesOf(nodes)));
    capacity_ = nodes;
    return reinterpret_cast<char*>(writer_.block()) + offset;
}

void RepresentationNodes::grow(std::size_t count, std::size_t capacity) {
    // Offsets into a document are 32 bits wide.
    if (count >= UINT32_MAX / 2) throwTooLong();
    capacity = std::max(capacity, kLeastNodesGrown);
    if (piece_.isOpen()) {
        nodes_ = static_cast<Node*>(piece_.grow(count * sizeof(Node), bytesOf(capacity)));
    } else {
        auto* nodes = static_cast<Node*>(piece_.open(bytesOf(capacity)));
        std::copy_n(nodes_, count, nodes);
        nodes_ = nodes;
    }
    capacity_ = capacity;
}

std::size_t RepresentationNodes::closeDictionary(std::size_t dictionary, std::size_t count) {
    const std::size_t left = capacity_ - count;
    if (nodes_[dictionary].size > kMostMembersScanned)
        count = index(dictionary, count);
    else if (repeatsKeys(dictionary, count))
        count = mergeRepeatedKeys(dictionary, count);
    if (capacity_ - count < left) grow(count, count + left);
    return count;
}

bool RepresentationNodes::repeatsKeys(std::size_t dictionary, std::size_t count) const noexcept {
    // Keys are mostly different and mostly few: six bits of the hash rule a repetition out for nearly all.
    std::uint64_t seen = 0;
    const Node* const first = nodes_ + dictionary + 1;
    for (const Node* member = first; member != nodes_ + count; member = member->nextMember()) {
        const std::uint64_t bit = std::uint64_t{1} << (member->keyHash >> 10);
        if ((seen & bit) != 0) {
            const Node* earlier = first;
            while (!sameKey(*earlier, *member))
                earlier = earlier->nextMember();
            if (earlier != member) return true;
        }
        seen |= bit;
    }
    return false;
}

// Adds an index to a large dictionary. Returns how many nodes there are then.
std::size_t RepresentationNodes::index(std::size_t dictionary, std::size_t count) {
    const std::vector<std::uint32_t> offsets = sortedMembers(nodes_ + dictionary);
    const auto repeated = std::adjacent_find(offsets.begin(), offsets.end(), [&](auto a, auto b) {
        return sameKey(nodes_[dictionary + a], nodes_[dictionary + b]);
    });
    if (repeated != offsets.end()) {
        count = mergeRepeatedKeys(dictionary, count);
        return nodes_[dictionary].size > kMostMembersScanned ? index(dictionary, count) : count;
    }
    const std::size_t end = count + indexNodes(offsets.size());
    if (end > capacity_) grow(count, std::max(end, 2 * capacity_));
    for (std::size_t i = count; i < end; ++i)
        (new (nodes_ + i) Node)->tag = Tag::index;
    for (std::size_t i = 0; i < offsets.size(); ++i)
        setIndexedOffset(nodes_ + count, i, offsets[i]);
    nodes_[dictionary].indexed = true;
    return end;
}

// Of each key the first place and the last value are left. Returns how many nodes there are then.
std::size_t RepresentationNodes::mergeRepeatedKeys(std::size_t dictionary, std::size_t count) {
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
    merged.reserve(count - dictionary);
    for (const auto& [key, value] : kept) {
        merged.push_back(base[key]);
        const Node* const first = base + value;
        merged.insert(merged.end(), first, first->next());
    }
    std::copy(merged.begin(), merged.end(), base + 1);
    base->size = static_cast<std::uint32_t>(kept.size());
    return dictionary + 1 + merged.size();
}

Representation RepresentationNodes::finish(std::size_t count) {
    const Node* nodes = nodes_;
    if (piece_.isOpen()) nodes = static_cast<const Node*>(piece_.close(count * sizeof(Node)));
    const RepresentationView view = RepresentationAccess::at(nodes, writer_.block());
    // A document that is nothing but a link is the value that it links to; the writer frees its own block.
    if (RepresentationAccess::block(view) != writer_.block()) return Representation(view);
    writer_.finish();
    return RepresentationAccess::adopted(view);
}

void RepresentationNodes::throwTooLong() {
    throw std::length_error("a representation is too large: a text, a container or the document");
}

RepresentationView RepresentationNodes::lend() const noexcept {
    return RepresentationAccess::at(nodes_, writer_.block());
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
