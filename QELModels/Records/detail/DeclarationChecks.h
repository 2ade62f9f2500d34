#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"
#include "QELModels/Records/ObjectClass.h"
#include "QELModels/Records/Property.h"
#include "QELModels/Records/detail/ObjectAccess.h"

/// @file
/// What the compiler checks of the lists that a record's source is made of. Each check is a template on the
/// member or the class that it is about, so that compilers name it beside the sentence.

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

template <class>
struct PointerToMember;
template <class M, class C>
struct PointerToMember<M C::*> {
    using Class = C;
    using Type = M;
    static constexpr bool kIsComputed = false;
    static constexpr bool kIsField = false;
};
template <class T, class C>
struct PointerToMember<Field<T> C::*> {
    using Class = C;
    using Type = Field<T>;
    using Held = T;
    static constexpr bool kIsComputed = false;
    static constexpr bool kIsField = true;
};
template <class R, class C>
struct PointerToMember<R (C::*)() const> {
    using Class = C;
    using Type = R;
    static constexpr bool kIsComputed = true;
    static constexpr bool kIsField = false;
};
template <class R, class C>
struct PointerToMember<R (C::*)() const noexcept> : PointerToMember<R (C::*)() const> {};

/// What a pointer to a record's member says of it.
template <auto Member>
using MemberOf = PointerToMember<decltype(Member)>;

/// The declaration of one member. The member is part of its type, so that members are told apart when they
/// are compiled.
template <auto Member>
struct PropertyOf : Property {};

template <class Member>
struct TargetOfHeld {
    using Type = void;
};
template <class T>
requires(Field<T>::kKind == PropertyKind::record) struct TargetOfHeld<Field<T>> {
    using Type = T;
};
template <class T>
struct TargetOfHeld<Field<List<T>>> {
    using Type = T;
};
/// The class of the records in a field; void for all other fields and for computed properties.
template <auto Member>
using TargetOf = typename TargetOfHeld<typename MemberOf<Member>::Type>::Type;

/// Checks a record's class by itself.
template <class C>
consteval void checkRecord() {
    constexpr bool kDerivesFromItsRecord = requires {
        requires std::same_as<typename C::Self, C>;
    };
    static_assert(kDerivesFromItsRecord,
                  "record: a class C of records derives from Record<C>, or from Record<C, Base>");
    if constexpr (kDerivesFromItsRecord) {
        checkOwnClass<C>();
        static_assert(std::is_aggregate_v<C>,
                      "record: a class of records has public fields, and no constructor");
        if constexpr (std::is_aggregate_v<C>)
            static_assert(!hasOtherMembers<C>(),
                          "record: the members of a class of records are fields alone");
    }
}

/// Checks a member that is declared as a property.
template <auto Member>
consteval bool checkProperty() {
    using Pointed = MemberOf<Member>;
    checkRecord<typename Pointed::Class>();
    if constexpr (Pointed::kIsComputed) {
        constexpr bool kIsScalar =
            std::is_integral_v<typename Pointed::Type> || std::is_enum_v<typename Pointed::Type>;
        static_assert(kIsScalar, "record: a computed property is a boolean or an integer");
        return kIsScalar;
    } else {
        static_assert(Pointed::kIsField,
                      "record: a property is a Field, or a const getter without arguments");
        constexpr bool kHoldsARecord =
            std::is_void_v<TargetOf<Member>> || std::derived_from<TargetOf<Member>, Object>;
        static_assert(kHoldsARecord, "record: a Field holds no value of this type");
        if constexpr (!std::is_void_v<TargetOf<Member>> && kHoldsARecord) checkOwnClass<TargetOf<Member>>();
        return Pointed::kIsField && kHoldsARecord;
    }
}

template <class C, auto Member>
consteval void checkMemberOf() {
    static_assert(std::same_as<C, typename MemberOf<Member>::Class>, "record: a member of another class");
}

// Not constexpr, so that reaching it in a declaration is an error of the compiler that says this sentence.
inline void twoPropertiesOfARecordHaveTheSameName() {}

template <const auto& Declared, auto Member>
consteval void checkCompared() {
    static_assert(std::remove_cvref_t<decltype(Declared)>::template kHas<Member>,
                  "record: a field that is compared is not declared");
    static_assert(!MemberOf<Member>::kIsComputed,
                  "record: a computed property is not compared, but what it is computed from");
}

template <class C, auto... Members, std::size_t... I>
consteval std::size_t firstFieldNotAmong(std::index_sequence<I...>) {
    // Each field of an object says where its slot lies.
    [[maybe_unused]] const void* slots[sizeof...(I) + 1]{};
    const C object{{ObjectAccess::construction(C::objectClass)}, FieldProbe{slots + I}...};
    [[maybe_unused]] const auto isAt = [&]<auto Member>(const void* slot) {
        if constexpr (MemberOf<Member>::kIsField && std::same_as<typename MemberOf<Member>::Class, C>)
            return slot == FieldAccess::slot(object.*Member);
        else
            return false;
    };
    std::size_t at = 0;
    while (at < sizeof...(I) && (isAt.template operator()<Members>(slots[at]) || ...))
        ++at;
    return at;
}
/// The position of the first of a class's own fields that is not among the members; their number when all
/// are.
template <class C, auto... Members>
consteval std::size_t firstFieldNotAmong() {
    return firstFieldNotAmong<C, Members...>(std::make_index_sequence<fieldCount<C>()>{});
}

template <class C, std::size_t Position, auto... Members>
struct FieldIsLeftOut {
    static consteval void check() {
        static_assert(Position == fieldCount<C>(),
                      "record: a field of the class, at this position from 0, is not declared as a property");
    }
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
