#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <string_view>
#include <type_traits>

#include "QELModels/Platform/Export.h"
#include "QELModels/Records/List.h"
#include "QELModels/Records/Object.h"
#include "QELModels/Records/detail/Slots.h"
#include "QELModels/Representation/Representation.h"
#include "QELModels/Values/Color.h"
#include "QELModels/Values/Date.h"
#include "QELModels/Values/Number.h"
#include "QELModels/Values/Text.h"
#include "QELModels/Values/URL.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Raw sub-trees of a document, kept as they came: what `Field<Array>` and `Field<Dictionary>` hold.
struct Array;
struct Dictionary;

namespace detail {

/// Of each type that a field may hold: the slot that keeps it, and how it is read. `kLends` says whether what
/// is read points into the record.
template <class T>
struct FieldTraits {
    static_assert(std::is_class_v<T>, "record: a Field holds no value of this type");
    using Slot = RecordSlot;
    static constexpr bool kLends = true;
    static const T* read(const Slot& slot) noexcept { return static_cast<const T*>(slot.record); }
};

template <class T>
struct FieldTraits<List<T>> {
    using Slot = ListSlot;
    static constexpr bool kLends = true;
    static const List<T>* read(const Slot& slot) noexcept { return static_cast<const List<T>*>(slot.list); }
};

template <>
struct FieldTraits<Number> {
    using Slot = NumberSlot;
    static constexpr bool kLends = false;
    static std::optional<Number> read(const Slot& slot) noexcept {
        if (!slot.filled) return std::nullopt;
        return slot.number();
    }
};

template <>
struct FieldTraits<Text> {
    using Slot = TextSlot;
    static constexpr bool kLends = true;
    static std::optional<std::string_view> read(const Slot& slot) noexcept {
        if (slot.isEmpty()) return std::nullopt;
        return slot.text();
    }
};

template <>
struct FieldTraits<URL> {
    using Slot = URLSlot;
    static constexpr bool kLends = true;
    static std::optional<URLView> read(const Slot& slot) noexcept {
        if (slot.isEmpty()) return std::nullopt;
        return URLAccess::fromValidated(slot.text());
    }
};

template <>
struct FieldTraits<Date> {
    using Slot = DateSlot;
    static constexpr bool kLends = false;
    static std::optional<Date> read(const Slot& slot) noexcept {
        if (!slot.filled) return std::nullopt;
        return slot.date();
    }
};

template <>
struct FieldTraits<Color> {
    using Slot = ColorSlot;
    static constexpr bool kLends = false;
    static std::optional<Color> read(const Slot& slot) noexcept {
        if (!slot.filled) return std::nullopt;
        return slot.color;
    }
};

template <class RawTreeSlot>
struct RawFieldTraits {
    using Slot = RawTreeSlot;
    static constexpr bool kLends = true;
    static std::optional<RepresentationView> read(const Slot& slot) noexcept {
        if (slot.isEmpty()) return std::nullopt;
        return slot.view();
    }
};
template <>
struct FieldTraits<Array> : RawFieldTraits<ArraySlot> {};
template <>
struct FieldTraits<Dictionary> : RawFieldTraits<DictionarySlot> {};

template <>
struct FieldTraits<bool> {
    using Slot = BooleanSlot;
    static constexpr bool kLends = false;
    static bool read(const Slot& slot) noexcept { return slot.boolean; }
};

template <class T>
requires(std::is_enum_v<T> || std::same_as<T, std::int64_t>) struct FieldTraits<T> {
    static_assert(sizeof(T) == sizeof(std::int64_t), "record: an enumeration in a field is of 64 bits");
    using Slot = IntegerSlot;
    static constexpr bool kLends = false;
    static T read(const Slot& slot) noexcept { return static_cast<T>(slot.integer); }
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
