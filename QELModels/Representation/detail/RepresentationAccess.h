#pragma once

#include <cstddef>
#include <string_view>

#include "QELModels/Memory/Block.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Representation/Representation.h"
#include "QELModels/Representation/detail/RepresentationNode.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

class BlockWriter;

/// Where a value lies, for the engine and the readers.
struct QELMODELS_EXPORT RepresentationAccess {
    static const RepresentationNode* node(RepresentationView view) noexcept { return view.node_; }
    /// Null for constant data.
    static const Block* block(RepresentationView view) noexcept { return view.block_; }
    /// The value at a node of a block, links followed.
    static RepresentationView at(const RepresentationNode* node, const Block* block) noexcept {
        return RepresentationView::at(node, block);
    }
    /// A value whose block has a use that the representation takes over.
    static Representation adopted(RepresentationView view) noexcept {
        return Representation(Representation::Adopt{}, view);
    }

    /// The node of the value at a key of a dictionary, links not followed; null when it is missing.
    static const RepresentationNode* nodeForKey(const RepresentationNode* dictionary,
                                                std::string_view key) noexcept;
    /// Copies nodes into a block that is being written, their texts with them. What they link to is kept.
    static void copyNodes(const RepresentationNode* from, std::size_t count, RepresentationNode* to,
                          BlockWriter& writer);
    /// Copies a value, all that is in it and its texts into a block that is being written.
    static const RepresentationNode* copy(RepresentationView view, BlockWriter& writer);
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
