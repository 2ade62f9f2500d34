#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "QELModels/Memory/Block.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Values/Number.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// One step of a document's memory, in which nodes lie in the document's order: a container is followed by
/// all that is in it, a key by its value. So `{"a": [1, "x"], "b": <a value of another document>}` is
///
///                  size      bits, text, target or block
///     dictionary   2         extent 8, 1 byte of text        -+
///     string       1         "a"; its keyHash is set          |  value()       -+
///     array        2         extent 3, 1 byte of text         |                 |
///     int64                  1                                |                 |  nextMember()
///     string       1         "x"                              |  next()         |
///     string       1         "b"; its keyHash is set         -+  value()       -+
///     link                   the other document's node        |
///     (null)                 the other document's block      -+
///
/// A link takes two nodes, and its value is the one that it leads to. A dictionary with many members ends
/// with `index` nodes: three offsets each, from the dictionary to its keys, in the order of these.
struct RepresentationNode {
    /// The tags of numbers are in the order of their origins, those of longer values come last.
    enum class Tag : std::uint8_t {
        null,
        int64,
        uint64,
        real,
        boolean,
        string,
        array,
        dictionary,
        link,
        index
    };

    Tag tag = Tag::null;
    bool indexed = false;       ///< a dictionary that ends with an index of its keys
    std::uint16_t keyHash = 0;  ///< of a dictionary's key
    std::uint32_t size = 0;     ///< bytes of a string; elements or members of a container
    union {
        /// A number's; of a container, its extent and, in the high half, the bytes of text in it.
        std::uint64_t bits = 0;
        const char* text;
        const RepresentationNode* target;
        const Block* block;
    };

    /// The text of a string or a key.
    std::string_view string() const noexcept { return {text, size}; }
    /// What a number's bits are of.
    Number::Origin origin() const noexcept {
        return static_cast<Number::Origin>(static_cast<int>(tag) - static_cast<int>(Tag::int64));
    }
    bool isNumber() const noexcept { return tag >= Tag::int64 && tag <= Tag::boolean; }
    bool isContainer() const noexcept { return tag == Tag::array || tag == Tag::dictionary; }
    /// How many nodes the value takes, itself included.
    std::size_t extent() const noexcept {
        if (tag < Tag::array) return 1;
        return tag == Tag::link ? 2 : static_cast<std::uint32_t>(bits);
    }
    /// About how many bytes the strings in the value take, its keys left out; for those who make room for
    /// them.
    std::size_t textBytes() const noexcept {
        if (tag == Tag::string) return size;
        return isContainer() ? static_cast<std::size_t>(bits >> 32) : 0;
    }

    /// What comes after a value: in an array, the next element.
    const RepresentationNode* next() const noexcept { return this + extent(); }
    /// The value of the member whose key this is.
    const RepresentationNode* value() const noexcept { return this + 1; }
    /// The key of the member after the one whose key this is.
    const RepresentationNode* nextMember() const noexcept { return value()->next(); }
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
