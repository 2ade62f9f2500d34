#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <span>
#include <string_view>
#include <type_traits>

#include "QELModels/Memory/Block.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"
#include "QELModels/Records/Object.h"
#include "QELModels/Records/Value.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// One declared property of a record: its name, what it holds, and where that is or how it is computed.
struct QELMODELS_EXPORT Property {
    /// How a raw value goes into a slot, and how a computed property is had from its object.
    using PutRaw = bool (*)(void*, RepresentationView, BlockWriter&);
    using Compute = Value (*)(const Object&);

    /// As `dictionaryValue` names it, and what it holds.
    std::string_view name;
    PropertyKind kind;
    /// Where a stored property lies in the example of its class (see `exampleOf`); both null for a computed
    /// one, which nothing can set.
    const void* place = nullptr;
    const void* example = nullptr;
    /// Puts a raw value of a document into the slot of an object whose block is being written: texts and
    /// sub-trees are copied. False, and nothing done, when its kind does not fit; no raw value is by itself a
    /// URL, a date, a colour or a record. Null for a computed property.
    PutRaw putRaw = nullptr;
    Compute compute = nullptr;            ///< null for a stored one
    const ObjectClass* target = nullptr;  ///< the class of a record, or of a list's elements

    /// Whether it is computed from others, so that nothing can set it.
    bool isComputed() const noexcept { return compute != nullptr; }

    /// The property's value; booleans and integers come as numbers. The value keeps what it points to.
    Value value(const Object& object) const;

    /// Puts a value into an object whose block is being written; what lies in another block is kept by this
    /// one. Null empties the property, unless it is a scalar, which keeps what it has. False, and nothing
    /// done, when the value is of a kind that does not fit. Throws `MappingFault` when the property is
    /// computed, and `std::length_error` for a text of 4 GB or more.
    bool setValue(Object& object, const Value& value, BlockWriter& writer) const;
    /// Makes the property null; scalars stay as they are.
    void empty(Object& object) const;

    /// For the engine: where a stored property lies.
    void* slotIn(Object& object) const noexcept { return slotAt(place, example, object); }
    template <class Slot>
    Slot& slot(Object& object) const {
        return *static_cast<Slot*>(slotIn(object));
    }
    template <class Slot>
    const Slot& slot(const Object& object) const {
        // Places are found in mutable objects; those who only read them say so here, once.
        return slot<Slot>(const_cast<Object&>(object));
    }
    /// What lies in an object where `place` lies in the example of its class.
    static void* slotAt(const void* place, const void* example, Object& object) noexcept {
        const auto offset =
            reinterpret_cast<std::uintptr_t>(place) - reinterpret_cast<std::uintptr_t>(example);
        return reinterpret_cast<std::byte*>(&object) + offset;
    }

private:
    bool put(Object& object, const Value& value, BlockWriter& writer) const;
};

/// The fields that a comparison or a hash goes through, in their order.
struct PropertyOrder {
    std::span<const Property* const> properties;
    bool declared = false;       ///< without it, a record is its identity
    bool identityFirst = false;  ///< identity is asked before the fields
};

/// A class of records: what is declared of it, as constant data. Property names that begin with "s_" stay out
/// of `propertyKeys` and of all that works by it.
class QELMODELS_EXPORT ObjectClass {
public:
    /// Make an object, or a list of objects, of this class in given memory.
    using Construct = Object* (*)(void*, const Construction&);
    using ConstructList = ListBase* (*)(void*, const Block*, const Object* const*, std::size_t);

    /// All that there is to know of a class; `describe` makes it.
    struct Description {
        std::string_view name;
        const ObjectClass* superclass;
        std::span<const Property> properties;
        std::span<const std::string_view> propertyKeys;  ///< names of `properties`, in their order
        std::size_t size;
        std::size_t alignment;
        Construct construct;
        ConstructList constructList;
        bool root;
        PropertyOrder equality;
        PropertyOrder hash;
    };
    /// A class as described.
    constexpr explicit ObjectClass(const Description& description) noexcept : is_(description) {}
    ObjectClass(const ObjectClass&) = delete;
    ObjectClass& operator=(const ObjectClass&) = delete;

    /// The class's name, as descriptions show it.
    std::string_view name() const noexcept { return is_.name; }
    /// The class that this one extends; null for `QELBaseModel`.
    const ObjectClass* superclass() const noexcept { return is_.superclass; }
    /// Whether each of its records lives in a block of its own wherever it stands in a document.
    bool isRoot() const noexcept { return is_.root; }

    /// The properties that exactly this class declares, in the order of declaration.
    std::span<const Property> properties() const noexcept { return is_.properties; }
    /// Their names, in the same order, without those that begin with "s_".
    std::span<const std::string_view> propertyKeys() const noexcept { return is_.propertyKeys; }
    /// The declared property of that name; null when there is none.
    const Property* property(std::string_view name) const noexcept;
    /// Calls `visit(property, stop)` for each declared property, until it sets `stop`.
    template <class Visitor>
    void enumeratePropertiesUsingBlock(Visitor&& visit) const {
        bool stop = false;
        for (const Property& property : is_.properties) {
            visit(property, stop);
            if (stop) return;
        }
    }

    /// The fields that equality goes through, and those of the hash.
    const PropertyOrder& equality() const noexcept { return is_.equality; }
    const PropertyOrder& hash() const noexcept { return is_.hash; }

    friend bool operator==(const ObjectClass& a, const ObjectClass& b) noexcept { return &a == &b; }

private:
    friend struct ObjectAccess;
    Description is_;
};

/// How the engine makes objects and lists in a block that it writes.
struct QELMODELS_EXPORT ObjectAccess {
    /// A new object with every property empty.
    static Object* construct(const ObjectClass& isa, BlockWriter& writer) {
        void* memory = writer.allocate(isa.is_.size, isa.is_.alignment);
        return isa.is_.construct(memory, Construction(isa, writer.block()));
    }
    /// The same in no block, for constant data.
    template <class C>
    static constexpr C constant() {
        return C(Construction(C::objectClass, nullptr));
    }
    /// A list of objects of a class, over an array of elements in the same block.
    static ListBase* list(const ObjectClass& isa, const Object* const* elements, std::size_t size,
                          BlockWriter& writer) {
        void* memory = writer.allocate(sizeof(ListBase), alignof(ListBase));
        return isa.is_.constructList(memory, writer.block(), elements, size);
    }
    template <class C>
    static Object* constructObject(void* memory, const Construction& construction) {
        static_assert(std::is_trivially_destructible_v<C>,
                      "a record is freed with its block, without its destructor");
        return new (memory) C(construction);
    }
    template <class C>
    static ListBase* constructList(void* memory, const Block* block, const Object* const* elements,
                                   std::size_t size) {
        static_assert(sizeof(List<C>) == sizeof(ListBase));
        return new (memory) List<C>(block, elements, size);
    }
    static std::size_t size(const ObjectClass& isa) noexcept { return isa.is_.size; }
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
