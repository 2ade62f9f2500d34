#pragma once

#include <cstddef>
#include <cstdint>
#include <new>

#include "QELModels/Memory/Block.h"
#include "QELModels/Memory/Zone.h"
#include "QELModels/Platform/Export.h"

// What the sources of this room share.
namespace QELModels {
inline namespace QELMODELS_ABI {

namespace detail {

constexpr std::size_t aligned(std::size_t bytes) noexcept {
    constexpr std::size_t kAlignment = alignof(std::max_align_t);
    return (bytes + kAlignment - 1) / kAlignment * kAlignment;
}

void* allocateFrom(Zone* zone, std::size_t bytes);
void deallocateTo(Zone* zone, void* memory, std::size_t bytes) noexcept;

}  // namespace detail

/// What a further piece of a block begins with.
struct alignas(std::max_align_t) Block::Chunk {
    Chunk* next;
    std::size_t size;

    /// How large a piece for `bytes` bytes is.
    static std::size_t sizeFor(std::size_t bytes) {
        if (bytes > SIZE_MAX / 2) throw std::bad_alloc();
        return detail::aligned(sizeof(Chunk) + bytes);
    }
};

/// The head of a table of kept blocks; pointers to them follow it. A block has a chain of tables, newest
/// first.
struct Block::KeptBlocks {
    KeptBlocks* next;
    std::size_t count;
    std::size_t capacity;
    const Block** blocks() noexcept { return reinterpret_cast<const Block**>(this + 1); }
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
