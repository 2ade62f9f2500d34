#pragma once

#include <cstddef>
#include <cstdint>

namespace QELModels::bench {

/// What the heap was asked for between two moments, on the one thread that measures.
struct HeapUse {
    std::uint64_t allocations = 0;  ///< calls of malloc and its kin; a realloc counts
    std::int64_t held = 0;          ///< bytes in use at the end beyond those at the beginning
    std::int64_t peak = 0;          ///< the most bytes in use beyond those at the beginning
};

/// Counts from construction to `stop`. Blocks are counted with the size that malloc gave them. While nothing
/// counts, an allocation costs one predicted branch more.
class HeapMeter {
public:
    HeapMeter() noexcept;
    ~HeapMeter() { stop(); }
    HeapMeter(const HeapMeter&) = delete;
    HeapMeter& operator=(const HeapMeter&) = delete;

    HeapUse stop() noexcept;
};

}  // namespace QELModels::bench
