#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>

#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Object.h"
#include "QELModels/Records/Property.h"
#include "QELModels/Records/detail/Slots.h"

/// @file
/// What the engine and the comparisons do with a property of one object. Setting is the engine's and that of
/// copies: no application can change a record that others share.

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// The slot that lies in an object where `slot` lies in the example of its class.
inline void* slotAt(const void* slot, const void* example, Object& object) noexcept {
    const auto offset = reinterpret_cast<std::uintptr_t>(slot) - reinterpret_cast<std::uintptr_t>(example);
    return reinterpret_cast<std::byte*>(&object) + offset;
}
inline void* slotIn(const Property& property, Object& object) noexcept {
    return slotAt(property.place.slot, property.place.example, object);
}
/// Requires: `Slot` is the type of slot of the property's kind.
template <class Slot>
Slot& slotOf(const Property& property, Object& object) noexcept {
    assert(property.kind == Slot::kKind);
    return *static_cast<Slot*>(slotIn(property, object));
}
template <class Slot>
const Slot& slotOf(const Property& property, const Object& object) noexcept {
    // Slots are found in mutable objects; those who only read them say so here, once.
    return slotOf<Slot>(property, const_cast<Object&>(object));
}

/// Puts a value into an object whose block is being written; what lies in another block is kept by this one.
/// Null clears the property. False, and nothing done, when the value is of a kind that does not fit. Throws
/// `MappingFault` when the property is computed, and `std::length_error` for a text of 4 GB or more.
QELMODELS_EXPORT bool setValue(const Property& property, Object& object, const Value& value,
                               BlockWriter& writer);
/// Makes a stored property null; a boolean and an integer stay as they are.
QELMODELS_EXPORT void clear(const Property& property, Object& object);

/// Whether a stored property is the same in two objects, and its part of an object's hash.
inline bool equalFields(const Property& property, const Object& a, const Object& b) {
    return withSlotOf(property.kind, [&]<class Slot>() {
        return slotOf<Slot>(property, a).equals(slotOf<Slot>(property, b));
    });
}
inline std::uint64_t hashOfField(const Property& property, const Object& object) {
    return withSlotOf(property.kind, [&]<class Slot>() { return slotOf<Slot>(property, object).hash(); });
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
