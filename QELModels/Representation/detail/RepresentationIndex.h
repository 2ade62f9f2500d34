#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/detail/KeyHash.h"
#include "QELModels/Representation/detail/RepresentationNode.h"

// How the keys of a dictionary are ordered, indexed and found.
namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

// An index node holds this many offsets: one in its size, two in its bits.
inline constexpr std::size_t kOffsetsPerIndexNode = 3;

inline std::uint32_t indexedOffset(const RepresentationNode* index, std::size_t position) noexcept {
    const RepresentationNode& node = index[position / kOffsetsPerIndexNode];
    switch (position % kOffsetsPerIndexNode) {
        case 0:
            return node.size;
        case 1:
            return static_cast<std::uint32_t>(node.bits);
        default:
            return static_cast<std::uint32_t>(node.bits >> 32);
    }
}

inline void setIndexedOffset(RepresentationNode* index, std::size_t position, std::uint32_t offset) noexcept {
    RepresentationNode& node = index[position / kOffsetsPerIndexNode];
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

inline std::size_t indexNodes(std::size_t members) noexcept {
    return (members + kOffsetsPerIndexNode - 1) / kOffsetsPerIndexNode;
}

// The order of the keys in an index: any total order will do, so the cheapest comparisons come first.
inline std::strong_ordering compareKeys(std::uint16_t hashA, std::string_view a, std::uint16_t hashB,
                                        std::string_view b) noexcept {
    if (hashA != hashB) return hashA <=> hashB;
    if (a.size() != b.size()) return a.size() <=> b.size();
    return a.compare(b) <=> 0;
}

inline bool sameKey(const RepresentationNode& a, const RepresentationNode& b) noexcept {
    return a.keyHash == b.keyHash && a.string() == b.string();
}

// The node of the value at a key, links not followed; null when it is missing.
inline const RepresentationNode* findValue(const RepresentationNode* dictionary,
                                           std::string_view key) noexcept {
    const std::uint16_t hash = keyHash(key);
    if (!dictionary->indexed) {
        const RepresentationNode* member = dictionary + 1;
        for (std::uint32_t i = 0; i < dictionary->size; ++i) {
            if (member->keyHash == hash && member->string() == key) return member->value();
            member = member->nextMember();
        }
        return nullptr;
    }
    const RepresentationNode* index = dictionary + dictionary->extent() - indexNodes(dictionary->size);
    std::size_t low = 0;
    std::size_t high = dictionary->size;
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        const RepresentationNode* member = dictionary + indexedOffset(index, middle);
        const auto order = compareKeys(member->keyHash, member->string(), hash, key);
        if (order == 0) return member->value();
        if (order < 0)
            low = middle + 1;
        else
            high = middle;
    }
    return nullptr;
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
