#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>

#include "QELModels/Memory/Block.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

class ObjectClass;
template <class C>
class ObjectClassOf;

namespace detail {
struct ObjectAccess;

/// Does not build for a class that has no description of its own: its records could not be told from those
/// of the class that it derives from.
template <class C>
consteval void checkOwnClass() {
    static_assert(std::same_as<decltype(C::objectClass), const ObjectClassOf<C>>,
                  "record: a class C declares 'static const ObjectClassOf<C> objectClass' of its own");
}
}  // namespace detail

/// What lives in a block and is counted through it: a record or a list.
class Counted {
public:
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

    /// The block that this lives in; what holds it holds everything else in it too.
    const Block* block() const noexcept { return block_; }

protected:
    constexpr explicit Counted(const Block* block) noexcept : block_(block) {}
    ~Counted() = default;

private:
    const Block* block_;
};

/// The right to make an object: the mapping engine, copies and constant data have it, an application has not.
class Construction {
    friend class Object;
    friend struct detail::ObjectAccess;
    constexpr Construction(const ObjectClass& isa, const Block* block) noexcept : isa_(&isa), block_(block) {}
    const ObjectClass* isa_;
    const Block* block_;
};

/// The root of all records: it knows its class and its block, and is equal to itself unless its class
/// compares by value. Objects never change once they can be seen, and may be read from any thread.
///
///     | block 8 | class 8 | the slots of the class's fields, in the order of declaration ... |
class QELMODELS_EXPORT Object : public Counted {
public:
    /// The object's exact class, read from the object: no RTTI is needed to compare it.
    const ObjectClass& isa() const noexcept { return *isa_; }
    /// Whether the object's class is this one or derives from it.
    bool isKindOf(const ObjectClass& isa) const noexcept;
    /// The object as a record of a class that its own is, or derives from; null when it is of another one.
    template <class T>
    const T* as() const noexcept QELMODELS_LENT {
        detail::checkOwnClass<T>();
        return isKindOf(T::objectClass) ? static_cast<const T*>(this) : nullptr;
    }

    /// True for the same object; false for null and for an object of another class (a subclass is another
    /// class); else what the class declares: identity, or the fields that it and its superclasses list.
    bool isEqual(const Object* other) const;
    /// Consistent with `isEqual`.
    std::uint64_t hash() const;

    friend bool operator==(const Object& a, const Object& b) { return a.isEqual(&b); }

protected:
    constexpr explicit Object(const Construction& construction) noexcept
        : Counted(construction.block_), isa_(construction.isa_) {}
    ~Object() = default;

    /// Whether two objects are the same or agree in what a class compares. False for null.
    /// Requires: both are of this class or of classes that derive from it.
    bool isEqualAs(const ObjectClass& isa, const Object* other) const;

private:
    const ObjectClass* isa_;
};

/// Equality and hash of records by `isEqual` and `hash`, for containers of pointers or `Ref`s. Null is equal
/// to null alone.
struct EqualTo {
    using is_transparent = void;
    template <class A, class B>
    bool operator()(const A& a, const B& b) const {
        return a ? a->isEqual(b ? &*b : nullptr) : !b;
    }
};
struct Hash {
    using is_transparent = void;
    template <class A>
    std::size_t operator()(const A& object) const {
        return object ? static_cast<std::size_t>(object->hash()) : 0;
    }
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
