#include "Heap.h"

#include <malloc.h>

#include <algorithm>
#include <cerrno>
#include <utility>

// The program's own malloc and related functions, which count and then call those of the C library. They see
// what operator new and every library allocate.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
}

namespace QELModels::bench {

namespace {

constinit bool counting = false;
constinit HeapUse use;

void countBytes(std::int64_t bytes) noexcept {
    use.held += bytes;
    use.peak = std::max(use.peak, use.held);
}

std::int64_t sizeOf(void* block) noexcept {
    return static_cast<std::int64_t>(malloc_usable_size(block));
}

[[gnu::noinline]] void* counted(void* block) noexcept {
    ++use.allocations;
    countBytes(sizeOf(block));
    return block;
}

[[gnu::noinline]] void* countedRealloc(void* block, std::size_t size) noexcept {
    const std::int64_t before = sizeOf(block);
    void* const after = __libc_realloc(block, size);
    ++use.allocations;
    if (after != nullptr || size == 0) countBytes(sizeOf(after) - before);
    return after;
}

}  // namespace

HeapMeter::HeapMeter() noexcept {
    use = {};
    counting = true;
}

HeapUse HeapMeter::stop() noexcept {
    counting = false;
    return use;
}

}  // namespace QELModels::bench

using QELModels::bench::counted;
using QELModels::bench::counting;

extern "C" {

#pragma GCC visibility push(default)

void* malloc(std::size_t size) noexcept {
    void* const block = __libc_malloc(size);
    return counting ? counted(block) : block;
}

void* calloc(std::size_t count, std::size_t size) noexcept {
    void* const block = __libc_calloc(count, size);
    return counting ? counted(block) : block;
}

void* realloc(void* block, std::size_t size) noexcept {
    return counting ? QELModels::bench::countedRealloc(block, size) : __libc_realloc(block, size);
}

void* memalign(std::size_t alignment, std::size_t size) noexcept {
    void* const block = __libc_memalign(alignment, size);
    return counting ? counted(block) : block;
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
    void* const made = memalign(alignment, size);
    if (made == nullptr) return ENOMEM;
    *block = made;
    return 0;
}

void free(void* block) noexcept {
    if (counting) QELModels::bench::countBytes(-QELModels::bench::sizeOf(block));
    __libc_free(block);
}

#pragma GCC visibility pop

}  // extern "C"
