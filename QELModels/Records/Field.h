#pragma once

#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <type_traits>

#include "QELModels/Platform/Export.h"
#include "QELModels/Records/List.h"
#include "QELModels/Records/Object.h"
#include "QELModels/Representation/Representation.h"
#include "QELModels/Values/Color.h"
#include "QELModels/Values/Date.h"
#include "QELModels/Values/Number.h"
#include "QELModels/Values/Text.h"
#include "QELModels/Values/URL.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// What a property holds. All but the last two are null when empty; those are false and 0.
enum class PropertyKind : std::uint8_t {
    number,
    text,
    url,
    date,
    color,
    array,
    dictionary,
    record,
    list,
    boolean,
    integer
};

/// Raw sub-trees of a document, kept as they came: what `Field<Array>` and `Field<Dictionary>` hold.
struct Array;
struct Dictionary;

/// A value of at most eight bytes that may lie at any multiple of four: what stands beside it in a slot of
/// twelve bytes would else take sixteen.
template <class T>
class Packed {
public:
    constexpr Packed() noexcept = default;
    Packed(T value) noexcept : words_(std::bit_cast<Words>(value)) {}
    operator T() const noexcept { return std::bit_cast<T>(words_); }

private:
    using Words = std::array<std::uint32_t, sizeof(T) / sizeof(std::uint32_t)>;
    Words words_{};
};

/// How each kind of property lies in a record: as little as reads back quickly. An empty one is all zero.
struct NumberSlot {
    Packed<std::uint64_t> bits;
    Number::Origin origin{};
    bool filled = false;
};
struct TextSlot {
    constexpr TextSlot() noexcept = default;
    /// Throws `std::length_error` for a text of 4 GB or more, which no document holds.
    explicit TextSlot(std::string_view text)
        : data(text.data()), size(static_cast<std::uint32_t>(text.size())) {
        if (text.size() > UINT32_MAX) throwTooLong();
    }

    std::string_view text() const noexcept { return {data, size}; }

    Packed<const char*> data;  // null when empty
    std::uint32_t size = 0;

private:
    [[noreturn]] QELMODELS_EXPORT static void throwTooLong();
};
struct DateSlot {
    Packed<double> seconds;  // since 1970
    bool filled = false;
};
struct ColorSlot {
    Color color{0, 0, 0, 0};
    bool filled = false;
};
struct RepresentationSlot {
    const RepresentationNode* node = nullptr;
    const Block* block = nullptr;
};

/// One stored property of a record, called to read it. It lends what it holds, for as long as the record it
/// was read from; the record's block owns that. Nobody but the mapping engine writes a field, and that before
/// anybody can read it. There is one form for each kind of property.
template <PropertyKind Kind, class Slot>
class StoredField {
public:
    static constexpr PropertyKind kKind = Kind;

    constexpr StoredField() noexcept = default;
    StoredField(const StoredField&) = delete;
    StoredField& operator=(const StoredField&) = delete;

protected:
    friend struct FieldAccess;
    Slot slot_{};
};

/// A nested record, lent as `const T*`: null when empty.
template <class T>
class Field : public StoredField<PropertyKind::record, const Object*> {
public:
    using Target = T;
    /// What the property holds.
    const T* operator()() const noexcept QELMODELS_LENT { return static_cast<const T*>(slot_); }
};

/// A list of records, lent as `const List<T>*`: null when empty, which is not the same as a list without
/// elements.
template <class T>
class Field<List<T>> : public StoredField<PropertyKind::list, const ListBase*> {
public:
    using Target = T;
    /// What the property holds.
    const List<T>* operator()() const noexcept QELMODELS_LENT { return static_cast<const List<T>*>(slot_); }
};

/// A scalar, a text (WTF-8), a URL or a raw sub-tree: nothing when empty.
template <>
class Field<Number> : public StoredField<PropertyKind::number, NumberSlot> {
public:
    std::optional<Number> operator()() const noexcept {
        if (!slot_.filled) return std::nullopt;
        return NumberBits::number(slot_.bits, slot_.origin);
    }
};

template <>
class Field<Text> : public StoredField<PropertyKind::text, TextSlot> {
public:
    std::optional<std::string_view> operator()() const noexcept QELMODELS_LENT {
        if (slot_.data == nullptr) return std::nullopt;
        return slot_.text();
    }
};

template <>
class Field<URL> : public StoredField<PropertyKind::url, TextSlot> {
public:
    std::optional<URLView> operator()() const noexcept QELMODELS_LENT {
        if (slot_.data == nullptr) return std::nullopt;
        return URLAccess::fromValidated(slot_.text());
    }
};

template <>
class Field<Date> : public StoredField<PropertyKind::date, DateSlot> {
public:
    std::optional<Date> operator()() const noexcept {
        if (!slot_.filled) return std::nullopt;
        return dateFromSecondsSince1970(slot_.seconds);
    }
};

template <>
class Field<Color> : public StoredField<PropertyKind::color, ColorSlot> {
public:
    std::optional<Color> operator()() const noexcept {
        if (!slot_.filled) return std::nullopt;
        return slot_.color;
    }
};

template <>
class Field<Array> : public StoredField<PropertyKind::array, RepresentationSlot> {
public:
    std::optional<RepresentationView> operator()() const noexcept QELMODELS_LENT {
        if (slot_.node == nullptr) return std::nullopt;
        return RepresentationView::at(slot_.node, slot_.block);
    }
};

template <>
class Field<Dictionary> : public StoredField<PropertyKind::dictionary, RepresentationSlot> {
public:
    std::optional<RepresentationView> operator()() const noexcept QELMODELS_LENT {
        if (slot_.node == nullptr) return std::nullopt;
        return RepresentationView::at(slot_.node, slot_.block);
    }
};

/// A boolean: false unless the document says otherwise.
template <>
class Field<bool> : public StoredField<PropertyKind::boolean, bool> {
public:
    bool operator()() const noexcept { return slot_; }
};

/// An enumeration, or an integer: zero unless the document says otherwise.
template <class T>
requires(std::is_enum_v<T> || std::same_as<T, std::int64_t>) class Field<T>
    : public StoredField<PropertyKind::integer, std::int64_t> {
public:
    T operator()() const noexcept { return static_cast<T>(slot_); }
};

/// The one way to a field's memory, for the tables of properties.
struct FieldAccess {
    template <PropertyKind Kind, class Slot>
    static constexpr const void* slot(const StoredField<Kind, Slot>& field) noexcept {
        return &field.slot_;
    }
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
