#pragma once

#include <cstddef>

#include "QELModels/Memory/detail/BlockArena.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

class BlockWriter;

/// Makes a block that is being written keep other blocks, so that they live at least as long.
class QELMODELS_EXPORT BlockKeeper {
public:
    /// Bytes that a block needs to keep the first few others.
    static constexpr std::size_t kBytesForFirst = 64;

    explicit BlockKeeper(BlockArena& arena) noexcept : arena_(arena) {}

    /// Keeps what a record in `other` holds: that block or, when it is a copy's, all that the copy keeps.
    /// Null and the block itself need no keeping.
    void keep(const Block* other);
    /// Keeps `other` itself, which may be a copy's: what points to a record needs the block that it lies in.
    void keepBlock(const Block* other);
    /// Makes room at once for this many blocks that will be kept.
    void expect(std::size_t blocks);

    /// Finishes another block, in which the texts of this one lie, and keeps it. Requires: nothing is kept
    /// yet.
    void takeTexts(BlockWriter& texts);
    /// The block that `document` keeps for its texts, if it does and that is one from `zone`; else null.
    static const Block* textsOf(const Block& document, const Zone* zone) noexcept;

private:
    Block::KeptBlocks* addTable(std::size_t capacity);

    BlockArena& arena_;
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
