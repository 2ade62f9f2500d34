#include "QELModels/Memory/detail/GrowingPiece.h"

#include <cassert>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

#include "QELModels/Memory/detail/BlockParts.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

namespace {

// A piece with fewer unused bytes is left as it is.
constexpr std::size_t kWorthCutting = 1024;

}  // namespace

GrowingPiece::~GrowingPiece() {
    // Somebody may keep the block, and what is in this piece with it.
    if (isOpen()) handOver();
}

void GrowingPiece::handOver() noexcept {
    open_->next = arena_.block()->chunks_;
    arena_.block()->chunks_ = std::exchange(open_, nullptr);
}

void* GrowingPiece::open(std::size_t bytes) {
    assert(!isOpen());
    const std::size_t size = Block::Chunk::sizeFor(bytes);
    open_ = new (allocateFrom(arena_.block()->zone_, size)) Block::Chunk{nullptr, size};
    return open_ + 1;
}

void* GrowingPiece::grow(std::size_t used, std::size_t bytes) {
    const std::size_t size = Block::Chunk::sizeFor(bytes);
    Zone* const zone = arena_.block()->zone_;
    auto* larger = new (allocateFrom(zone, size)) Block::Chunk{nullptr, size};
    std::memcpy(larger + 1, open_ + 1, used);
    deallocateTo(zone, open_, open_->size);
    open_ = larger;
    return open_ + 1;
}

void* GrowingPiece::close(std::size_t used) noexcept {
    const std::size_t size = Block::Chunk::sizeFor(used);
    if (arena_.block()->zone_ == nullptr && open_->size - size >= kWorthCutting) {
        if (void* cut = std::realloc(open_, size); cut != nullptr) {
            open_ = static_cast<Block::Chunk*>(cut);
            open_->size = size;
        }
    }
    void* const memory = open_ + 1;
    handOver();
    return memory;
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
