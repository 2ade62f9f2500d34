#pragma once

#include <cstddef>

#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Where an application wants the memory of models to come from. A zone outlives all it allocated; its two
/// functions may be called from whichever thread maps, copies or frees.
class QELMODELS_EXPORT Zone {
public:
    /// Memory of at least `bytes` bytes, aligned for any scalar type. Throws `std::bad_alloc` when there is
    /// none.
    virtual void* allocate(std::size_t bytes) = 0;

    /// Takes back what `allocate(bytes)` of this zone returned.
    virtual void deallocate(void* memory, std::size_t bytes) noexcept = 0;

    // Virtual, although the library never deletes a zone: without it, every class of an application that is
    // not final would be warned of.
    constexpr virtual ~Zone() = default;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
