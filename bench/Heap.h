#pragma once

#include <cstddef>
#include <cstdint>

namespace QELModels::bench {

/// What the measuring thread allocated between two moments.
struct HeapUse {
    std::uint64_t allocations = 0;  ///< calls of malloc and related functions, realloc included
    std::int64_t held = 0;          ///< bytes in use at the end beyond those at the beginning
    std::int64_t peak = 0;          ///< the most bytes in use beyond those at the beginning
};

/// Counts from construction to `stop`. Blocks count with the size that malloc gave them. While no meter
/// counts, an allocation costs one more branch, which is predicted.
class HeapMeter {
public:
    HeapMeter() noexcept;
    ~HeapMeter() { stop(); }
    HeapMeter(const HeapMeter&) = delete;
    HeapMeter& operator=(const HeapMeter&) = delete;

    HeapUse stop() noexcept;
};

}  // namespace QELModels::bench
