#pragma once

#include <string_view>

#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Object.h"
#include "QELModels/Records/PropertyKind.h"
#include "QELModels/Records/Value.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace detail {

class BlockWriter;

/// Where a stored property lies: at the same distance from the start of every object of its class, and of
/// the classes that derive from it. Two addresses say how far, since constant data cannot hold the difference
/// of two addresses.
struct PropertyPlace {
    /// How a raw value of a document goes into the slot of an object whose block is being written (see
    /// `Slots.h`).
    using Store = bool (*)(void* slot, RepresentationView, BlockWriter&);

    const void* slot = nullptr;     ///< in the example of the class; null for a computed property
    const void* example = nullptr;  ///< an object that shows how all objects of the class lie in memory
    Store store = nullptr;
};

/// How a computed property is had from its object; null for a stored one.
using ComputeProperty = Value (*)(const Object&);

}  // namespace detail

/// One declared property of a class of records: its name, and what it holds.
struct QELMODELS_EXPORT Property {
    /// As `propertyKeys` and `dictionaryValue` name it.
    std::string_view name;
    PropertyKind kind;
    /// The class of a record, or of a list's elements; null for everything else.
    const ObjectClass* target = nullptr;

    /// Whether it is computed from others, so that nothing can set it.
    bool isComputed() const noexcept { return compute != nullptr; }

    /// What the property holds; booleans and integers come as numbers. The value keeps what it points to.
    /// Requires: the object is of the class that declares the property, or of one that derives from it.
    Value value(const Object& object) const;

    detail::ComputeProperty compute = nullptr;
    detail::PropertyPlace place = {};
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
