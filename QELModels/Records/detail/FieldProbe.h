#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Object.h"

/// @file
/// Records are aggregates: a base, and fields. So the compiler can count the fields of a class, and find
/// those that are declared nowhere.

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// A field is constructed from this when a record is made or examined; with `slot` set, it leaves the address
/// of its slot there.
struct FieldProbe {
    const void** slot = nullptr;
};

/// Stands for a member of any type, where a class is only looked at.
struct AnyMember {
    template <class T>
    operator T() const;
};

template <std::size_t>
inline constexpr FieldProbe kNoProbe{};

template <class C, class... Last, std::size_t... I>
consteval bool hasFields(std::index_sequence<I...>) {
    return requires(const Construction& construction) {
        C{{construction}, kNoProbe<I>..., Last{}...};
    };
}

/// How many fields a record declares itself, in front of its first member that is not a field.
template <class C, std::size_t Known = 0>
consteval std::size_t fieldCount() {
    if constexpr (hasFields<C>(std::make_index_sequence<Known + 1>{}))
        return fieldCount<C, Known + 1>();
    else
        return Known;
}

/// Whether a record has members that are not fields.
template <class C>
consteval bool hasOtherMembers() {
    return hasFields<C, AnyMember>(std::make_index_sequence<fieldCount<C>()>{});
}

template <class C, std::size_t... I>
constexpr C withEmptyFields(const Construction& construction, std::index_sequence<I...>) {
    return C{{construction}, kNoProbe<I>...};
}
/// A record with every field empty.
template <class C>
constexpr C withEmptyFields(const Construction& construction) {
    return withEmptyFields<C>(construction, std::make_index_sequence<fieldCount<C>()>{});
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
