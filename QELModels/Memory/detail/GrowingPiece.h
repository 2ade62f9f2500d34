#pragma once

#include <cstddef>

#include "QELModels/Memory/detail/BlockArena.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// A piece of a block whose length is not known before it is written: opened with a guess, grown as often as
/// need be, and cut to what was used when it is closed. Growing and closing may move what is in it. A piece
/// that is still open at the end of this object's life becomes part of the block as it is.
class QELMODELS_EXPORT GrowingPiece {
public:
    /// Nothing is open yet. The arena outlives this.
    explicit GrowingPiece(BlockArena& arena) noexcept : arena_(arena) {}
    ~GrowingPiece();
    GrowingPiece(const GrowingPiece&) = delete;
    GrowingPiece& operator=(const GrowingPiece&) = delete;

    bool isOpen() const noexcept { return open_ != nullptr; }
    /// Memory for `bytes` bytes. Requires: no piece is open.
    void* open(std::size_t bytes);
    /// Memory for `bytes` bytes that begins with the first `used` of those so far.
    void* grow(std::size_t used, std::size_t bytes);
    /// The first `used` bytes, which are part of the block from now on.
    void* close(std::size_t used) noexcept;

private:
    void handOver() noexcept;

    BlockArena& arena_;
    Block::Chunk* open_ = nullptr;
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
