#pragma once

#include <cstddef>
#include <cstdint>
#include <new>

#include "QELModels/Memory/detail/BlockWriter.h"
#include "QELModels/Memory/detail/GrowingPiece.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Representation/Representation.h"
#include "QELModels/Representation/detail/RepresentationNode.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// The nodes of a document that is being written, and the block in which they lie: the quick road for readers
/// that keep to JSON's grammar themselves.
///
/// The reader writes the nodes, from the first on, and says how many there are when it asks for something. A
/// container has its `size` and `bits` set, a key its hash; after each text, an empty one too, `kSlack` bytes
/// may be read.
class QELMODELS_EXPORT RepresentationNodes {
public:
    /// Up to here a dictionary is searched by looking at every key's hash, which is quicker than any index.
    static constexpr std::uint32_t kMostMembersScanned = 32;

    /// With room for that many nodes and bytes of text.
    RepresentationNodes(std::size_t nodes, std::size_t textBytes, Zone* zone);

    /// The first node. It may move when more room is asked for.
    RepresentationNode* first() noexcept { return nodes_; }
    std::size_t capacity() const noexcept { return capacity_; }
    /// Makes room for `capacity` nodes, of which `count` are written.
    void grow(std::size_t count, std::size_t capacity);

    /// What writes the block: it has memory for texts, and keeps what the document points to.
    BlockWriter& writer() noexcept { return writer_; }
    /// Room for that many nodes, in one piece with the text allocated so far, which is returned at its new
    /// place. Requires: nothing points into the text yet.
    char* extendAfter(char* text, std::size_t nodes);

    /// Merges the repeated keys of a dictionary and gives it an index when it is large. It is the last thing
    /// in `count` nodes and its `size` is set. Returns how many nodes there are now; there is no less room
    /// after them than before. Nothing is to be done for a dictionary of up to `kMostMembersScanned` members
    /// whose keys are known to be different.
    std::size_t closeDictionary(std::size_t dictionary, std::size_t count);

    /// The document in `count` nodes, which are one value. Nothing else is done with this afterwards.
    Representation finish(std::size_t count);
    /// Lends the value that the first nodes are: whoever keeps it keeps this block, and while nobody does,
    /// the next value may be written over it.
    RepresentationView lend() const noexcept;
    /// Whether somebody keeps a value that was lent.
    bool isKept() const noexcept { return writer_.isShared(); }

    static RepresentationNode node(Number number) noexcept {
        constexpr auto kFirst = static_cast<int>(RepresentationNode::Tag::int64);
        RepresentationNode node;
        node.tag = static_cast<RepresentationNode::Tag>(kFirst + static_cast<int>(number.origin()));
        node.bits = NumberBits::of(number);
        return node;
    }

    [[noreturn]] static void throwTooLong();

private:
    bool repeatsKeys(std::size_t dictionary, std::size_t count) const noexcept;
    std::size_t mergeRepeatedKeys(std::size_t dictionary, std::size_t count);
    std::size_t index(std::size_t dictionary, std::size_t count);

    BlockWriter writer_;
    GrowingPiece piece_{writer_};  // the nodes, once they are more than was foreseen
    RepresentationNode* nodes_;
    std::size_t capacity_;
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
