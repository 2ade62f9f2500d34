#include "QELModels/Memory/detail/BlockArena.h"

#include <algorithm>
#include <cassert>
#include <cstdlib>
#include <new>

#include "QELModels/Memory/detail/BlockParts.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

namespace {

// How large further pieces are, unless more is asked for: they double up to a limit, so that a block grows in
// few steps and wastes little.
constexpr std::size_t kLeastChunk = 1024;
constexpr std::size_t kMostChunk = std::size_t{64} << 10;

}  // namespace

BlockArena::BlockArena(std::size_t capacity, Zone* zone, bool original) {
    if (capacity > SIZE_MAX / 2) throw std::bad_alloc();
    const std::size_t size = aligned(sizeof(Block) + capacity + kSlack);
    void* memory = allocateFrom(zone, size);
    block_ = new (memory) Block(zone, size, original);
    next_ = static_cast<char*>(memory) + sizeof(Block);
    end_ = static_cast<char*>(memory) + size - kSlack;
}

void BlockArena::grow(std::size_t bytes) {
    const std::size_t before = block_->chunks_ == nullptr ? 0 : block_->chunks_->size;
    const std::size_t size =
        Block::Chunk::sizeFor(std::max(bytes, std::clamp(2 * before, kLeastChunk, kMostChunk))) + kSlack;
    auto* memory = static_cast<char*>(allocateFrom(block_->zone_, size));
    block_->chunks_ = new (memory) Block::Chunk{block_->chunks_, size};
    next_ = memory + sizeof(Block::Chunk);
    end_ = memory + size - kSlack;
}

void* BlockArena::extend(std::size_t bytes) {
    assert(block_->chunks_ == nullptr && block_->kept_ == nullptr);
    const std::size_t used = static_cast<std::size_t>(next_ - reinterpret_cast<char*>(block_));
    const std::size_t start = aligned(used);
    if (bytes > SIZE_MAX / 2 - start) throw std::bad_alloc();
    const std::size_t size = aligned(start + bytes + kSlack);
    if (size > block_->size_) {
        void* memory = nullptr;
        if (Zone* zone = block_->zone_; zone == nullptr) {
            memory = std::realloc(static_cast<void*>(block_), size);
            if (memory == nullptr) throw std::bad_alloc();
        } else {
            memory = zone->allocate(size);
            std::memcpy(memory, static_cast<void*>(block_), used);
            zone->deallocate(block_, block_->size_);
        }
        block_ = static_cast<Block*>(memory);
        block_->size_ = size;
        end_ = static_cast<char*>(memory) + size - kSlack;
    }
    char* const memory = reinterpret_cast<char*>(block_) + start;
    next_ = memory + bytes;
    return memory;
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
