#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "QELModels/Memory/Block.h"
#include "QELModels/Memory/Zone.h"
#include "QELModels/Memory/detail/BlockArena.h"
#include "QELModels/Memory/detail/BlockKeeper.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// A copy's block is kept by nobody: those that it keeps are kept instead.
enum class BlockOrigin : bool { original, copy };

/// Writes a new block: its memory is handed out by the `BlockArena` that this is. The writer holds one use of
/// the block: until `finish` hands that over, whatever is thrown frees the block and all that it keeps.
class QELMODELS_EXPORT BlockWriter : public BlockArena {
public:
    /// A new block with room for `capacity` bytes before it has to grow. Throws `std::bad_alloc`.
    explicit BlockWriter(std::size_t capacity, Zone* zone = nullptr,
                         BlockOrigin origin = BlockOrigin::original)
        : BlockArena(capacity, zone, origin == BlockOrigin::original) {}
    ~BlockWriter() {
        if (block_ != nullptr) block_->release();
    }

    /// What makes the block keep others.
    BlockKeeper keeper() noexcept { return BlockKeeper(*this); }
    /// Whether somebody else holds a use of the block. An answer of false stays true until it is lent again.
    bool isShared() const noexcept { return block_->uses_.load(std::memory_order_acquire) != 1; }

    /// Keeps a block whose texts the new one may point to.
    void borrowTexts(const Block& texts);
    /// Whether a text lies among borrowed texts, where it may stay.
    bool isBorrowed(std::string_view text) const noexcept {
        return reinterpret_cast<std::uintptr_t>(text.data()) - borrowed_ < borrowedSize_;
    }
    /// The text itself, if it may stay where it is; else a copy. Its data is never null.
    std::string_view keepText(std::string_view text) { return isBorrowed(text) ? text : copyText(text); }
    /// The same of a text with `kSlack` readable bytes after it.
    std::string_view keepTextOfBlock(std::string_view text) {
        return isBorrowed(text) ? text : copyTextOfBlock(text);
    }

    /// Hands the writer's use of the block to the caller.
    Block* finish() noexcept { return std::exchange(block_, nullptr); }

private:
    std::uintptr_t borrowed_ = 0;
    std::size_t borrowedSize_ = 0;
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
