#pragma once

#include <atomic>
#include <cstddef>

#include "QELModels/Memory/Zone.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace detail {
class BlockArena;
class BlockKeeper;
class BlockWriter;
class GrowingPiece;
}  // namespace detail

/// Memory that is counted and freed at once: what was mapped (or read, or copied) together lives in one
/// block, and only blocks are counted. It is written once and never changed afterwards, so the count is all
/// that threads share.
///
///     the first piece                                       further pieces, newest first
///     +-------+-----------------------------+-------+       +-------+---------------------+-------+
///     | Block | records, texts, nodes ... > | slack |       | Chunk | ...                 | slack |
///     +-|---|-+-----------------------------+-------+       +-|-----+---------------------+-------+
///       |   |                                                 ^ '--> the piece before it
///       |   '-- chunks_ --------------------------------------'
///       '------ kept_ --> a table that lies in one of the pieces, and names the blocks
///                         that this one keeps because its content points into them
class QELMODELS_EXPORT Block {
public:
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;

    /// Counts one use more or less; the last one frees the block. Any thread.
    void retain() const noexcept { uses_.fetch_add(1, std::memory_order_relaxed); }
    void release() const noexcept {
        if (uses_.fetch_sub(1, std::memory_order_acq_rel) == 1) free(this);
    }

    /// Bytes of memory that the block holds, without the blocks it keeps.
    std::size_t size() const noexcept;

private:
    friend class detail::BlockArena;
    friend class detail::BlockKeeper;
    friend class detail::BlockWriter;
    friend class detail::GrowingPiece;
    struct Chunk;
    struct KeptBlocks;

    Block(Zone* zone, std::size_t size, bool original) noexcept
        : zone_(zone), size_(size), original_(original) {}
    ~Block() = default;

    static void free(const Block* block) noexcept;

    mutable std::atomic<std::size_t> uses_{1};
    Zone* zone_;
    std::size_t size_;  // of the first piece, which the block itself begins
    // False for a copy: nobody keeps a copy's block, only the blocks that it keeps. So copies of copies do
    // not chain.
    bool original_;
    bool textsApart_ = false;  // they lie in the first block that this one kept
    Chunk* chunks_ = nullptr;  // what did not fit into the first piece
    KeptBlocks* kept_ = nullptr;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
