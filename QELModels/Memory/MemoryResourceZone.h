#pragma once

#include <cstddef>
#include <memory_resource>

#include "QELModels/Memory/Zone.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// A zone that takes its memory from a `std::pmr::memory_resource`. It has a header of its own because not
/// every standard library that the rest is built with has memory resources.
class MemoryResourceZone final : public Zone {
public:
    /// The resource outlives the zone and all that was allocated from it. Models may be freed on any thread,
    /// so a resource that is not safe for that serves applications that free them where they mapped them.
    explicit MemoryResourceZone(std::pmr::memory_resource& resource) noexcept : resource_(&resource) {}

    void* allocate(std::size_t bytes) override { return resource_->allocate(bytes); }
    void deallocate(void* memory, std::size_t bytes) noexcept override {
        resource_->deallocate(memory, bytes);
    }

private:
    std::pmr::memory_resource* resource_;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
