#include "QELModels/Memory/Block.h"

#include <cstdint>
#include <cstdlib>
#include <new>

#include "QELModels/Memory/detail/BlockParts.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

void* detail::allocateFrom(Zone* zone, std::size_t bytes) {
    if (zone != nullptr) return zone->allocate(bytes);
    void* memory = std::malloc(bytes);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void detail::deallocateTo(Zone* zone, void* memory, std::size_t bytes) noexcept {
    if (zone != nullptr) return zone->deallocate(memory, bytes);
    std::free(memory);
}

std::size_t Block::size() const noexcept {
    std::size_t bytes = size_;
    for (const Chunk* chunk = chunks_; chunk != nullptr; chunk = chunk->next)
        bytes += chunk->size;
    return bytes;
}

// Blocks that keep blocks that keep blocks may be a million deep, so the dead ones wait in a list, threaded
// through the counts that nobody needs any more, instead of on the stack.
void Block::free(const Block* block) noexcept {
    auto* dead = const_cast<Block*>(block);
    Block* waiting = nullptr;
    while (dead != nullptr) {
        for (KeptBlocks* kept = dead->kept_; kept != nullptr; kept = kept->next) {
            for (std::size_t i = 0; i < kept->count; ++i) {
                auto* other = const_cast<Block*>(kept->blocks()[i]);
                if (other->uses_.fetch_sub(1, std::memory_order_acq_rel) != 1) continue;
                other->uses_.store(reinterpret_cast<std::uintptr_t>(waiting), std::memory_order_relaxed);
                waiting = other;
            }
        }
        Zone* zone = dead->zone_;
        for (Chunk* chunk = dead->chunks_; chunk != nullptr;) {
            Chunk* next = chunk->next;
            detail::deallocateTo(zone, chunk, chunk->size);
            chunk = next;
        }
        const std::size_t size = dead->size_;
        dead->~Block();
        detail::deallocateTo(zone, dead, size);
        dead = waiting;
        if (dead != nullptr) waiting = reinterpret_cast<Block*>(dead->uses_.load(std::memory_order_relaxed));
    }
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
