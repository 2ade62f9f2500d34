#pragma once

#include <cstddef>
#include <new>
#include <type_traits>

#include "QELModels/Memory/Block.h"
#include "QELModels/Memory/detail/BlockWriter.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/List.h"
#include "QELModels/Records/Object.h"
#include "QELModels/Records/ObjectClass.h"
#include "QELModels/Records/detail/FieldProbe.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// How objects and lists are made in a block that is being written.
struct ObjectAccess {
    /// A new object with every property empty.
    static Object* construct(const ObjectClass& isa, BlockWriter& writer) {
        const ObjectClass::Description& description = isa.description_;
        void* memory = writer.allocate(description.size, description.alignment);
        return description.construct(memory, Construction(isa, writer.block()));
    }
    /// The same in no block, for constant data.
    template <class C>
    static constexpr C constant() {
        return withEmptyFields<C>(construction(C::objectClass));
    }
    /// A list of objects of a class, over an array of elements in the same block.
    static ListBase* list(const ObjectClass& isa, const Object* const* elements, std::size_t size,
                          BlockWriter& writer) {
        void* memory = writer.allocate(sizeof(ListBase), alignof(ListBase));
        return isa.description_.constructList(memory, writer.block(), elements, size);
    }
    static std::size_t size(const ObjectClass& isa) noexcept { return isa.description_.size; }

    /// For descriptions of classes.
    template <class C>
    static Object* constructObject(void* memory, const Construction& construction) {
        static_assert(std::is_trivially_destructible_v<C>,
                      "a record is freed with its block, without its destructor");
        return new (memory) C(withEmptyFields<C>(construction));
    }
    template <class C>
    static ListBase* constructList(void* memory, const Block* block, const Object* const* elements,
                                   std::size_t size) {
        static_assert(sizeof(List<C>) == sizeof(ListBase));
        return new (memory) List<C>(block, elements, size);
    }

    /// The right to make an object in no block, for the check of a class's fields.
    static constexpr Construction construction(const ObjectClass& isa) { return {isa, nullptr}; }
};

/// An object that shows how all objects of its class lie in memory. The addresses in it are constants, so
/// constant data can say with them where a field lies. One function for each field would say it too, but
/// calling that many makes an asset a twentieth slower.
template <class Class>
QELMODELS_HIDDEN inline constinit const Class example = ObjectAccess::constant<Class>();

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
