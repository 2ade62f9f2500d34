#pragma once

#include <cstddef>
#include <cstdint>

#include "QELModels/Memory/Block.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

class ObjectClass;
struct ObjectAccess;

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

/// The right to make an object, which the mapping engine has and nobody else: records are made by mapping.
class Construction {
    friend class Object;
    friend struct ObjectAccess;
    constexpr Construction(const ObjectClass& isa, const Block* block) noexcept : isa_(&isa), block_(block) {}
    const ObjectClass* isa_;
    const Block* block_;
};

/// The root of all records: it knows its class and its block, and is equal to itself unless its class
/// compares by value. Objects never change once they can be seen, and may be read from any thread.
class QELMODELS_EXPORT Object : public Counted {
public:
    /// The object's exact class, read from the object: no RTTI is needed to compare it.
    const ObjectClass& isa() const noexcept { return *isa_; }

    /// True for the same object; false for null and for an object of another class (a subclass is another
    /// class); else what the class declares: identity, or the fields that it lists.
    bool isEqual(const Object* other) const;
    /// Consistent with `isEqual`.
    std::uint64_t hash() const;

    friend bool operator==(const Object& a, const Object& b) { return a.isEqual(&b); }

protected:
    constexpr explicit Object(const Construction& construction) noexcept
        : Counted(construction.block_), isa_(construction.isa_) {}
    ~Object() = default;

    /// As `isEqual`, for an object that is known to be of this class.
    bool isEqualByFields(const Object* other) const;

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
