#pragma once

#include <concepts>
#include <cstddef>
#include <span>
#include <string_view>

#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Object.h"
#include "QELModels/Records/Property.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

class ListBase;

/// The fields that a class of records compares or hashes, in their order.
struct ComparedFields {
    std::span<const Property* const> properties;
    bool isDeclared = false;       ///< whether the class says what it compares
    bool isIdentityFirst = false;  ///< identity is asked before the fields
};

/// A class of records: what is declared of it, as constant data.
class QELMODELS_EXPORT ObjectClass {
public:
    /// All that there is to know of a class; `describe` makes it.
    struct Description {
        /// Make an object, or a list of objects, of the class in given memory.
        using Construct = Object* (*)(void*, const Construction&);
        using ConstructList = ListBase* (*)(void*, const Block*, const Object* const*, std::size_t);

        std::string_view name;
        const ObjectClass* superclass;
        /// The superclass whose properties are inherited: no record has those of the root of all classes.
        const ObjectClass* modelSuperclass;
        std::span<const Property> properties;
        std::span<const std::string_view> propertyKeys;
        std::size_t size;
        std::size_t alignment;
        Construct construct;
        ConstructList constructList;
        bool isRoot;
        ComparedFields equality;
        ComparedFields hash;
    };
    /// A class as described.
    constexpr explicit ObjectClass(const Description& description) noexcept : description_(description) {}
    ObjectClass(const ObjectClass&) = delete;
    ObjectClass& operator=(const ObjectClass&) = delete;

    /// The class's name, as descriptions show it.
    std::string_view name() const noexcept { return description_.name; }
    /// The class that this one extends; null for `QELBaseModel`.
    const ObjectClass* superclass() const noexcept { return description_.superclass; }
    /// The same if it is a model class, so that its properties are inherited; else null.
    const ObjectClass* modelSuperclass() const noexcept { return description_.modelSuperclass; }
    /// Whether this is another class or derives from it.
    bool isSameOrDerivedFrom(const ObjectClass& other) const noexcept;
    /// Whether each of its records lives in a block of its own wherever it is in a document.
    bool isRoot() const noexcept { return description_.isRoot; }

    /// The properties that exactly this class declares, in the order of declaration.
    std::span<const Property> properties() const noexcept { return description_.properties; }
    /// The names of the properties that exactly this class declares, in the same order, without those that
    /// begin with "s_": these stay out of `dictionaryValue`, of descriptions and of copies.
    std::span<const std::string_view> propertyKeys() const noexcept { return description_.propertyKeys; }
    /// The property of that name that a record of the class has: declared by the class itself or inherited
    /// from a model class. Null when there is none.
    const Property* property(std::string_view name) const noexcept;
    /// Calls `visit(property, stop)` for each property that exactly this class declares, until it sets
    /// `stop`.
    template <class Visitor>
    void enumeratePropertiesUsingBlock(Visitor&& visit) const {
        bool stop = false;
        for (const Property& property : properties()) {
            visit(property, stop);
            if (stop) return;
        }
    }
    /// Calls `visit(property)` for each property that a record of the class shows and copies, inherited ones
    /// first: all but those that begin with "s_".
    template <class Visitor>
    void forEachKeyedProperty(const Visitor& visit) const {
        if (const ObjectClass* inherited = modelSuperclass()) inherited->forEachKeyedProperty(visit);
        for (const Property& property : properties())
            if (!property.name.starts_with("s_")) visit(property);
    }

    /// What the class itself compares and hashes; what its superclasses do is compared and hashed besides.
    const ComparedFields& equality() const noexcept { return description_.equality; }
    const ComparedFields& hash() const noexcept { return description_.hash; }

    friend bool operator==(const ObjectClass& a, const ObjectClass& b) noexcept { return &a == &b; }

protected:
    ~ObjectClass() = default;

private:
    friend struct detail::ObjectAccess;

    Description description_;
};

/// A description of the records of one C++ class: `describe` makes it.
template <class C>
struct DescriptionOf : ObjectClass::Description {};

/// The class of the records of one C++ class, which declares it as `static const ObjectClassOf<C>
/// objectClass`. Only a description of `C` makes one.
template <class C>
class ObjectClassOf final : public ObjectClass {
public:
    template <class Other>
    constexpr explicit ObjectClassOf(const DescriptionOf<Other>& description) noexcept
        : ObjectClass(description) {
        static_assert(std::same_as<Other, C>, "record: this is the description of another class");
    }
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
