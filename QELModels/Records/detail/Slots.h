#pragma once

#include <array>
#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "QELModels/Memory/Block.h"
#include "QELModels/Memory/detail/BlockWriter.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/detail/Hash.h"
#include "QELModels/Records/List.h"
#include "QELModels/Records/Object.h"
#include "QELModels/Records/PropertyKind.h"
#include "QELModels/Records/Value.h"
#include "QELModels/Representation/Representation.h"
#include "QELModels/Representation/detail/RepresentationAccess.h"
#include "QELModels/Representation/detail/RepresentationNode.h"
#include "QELModels/Values/Color.h"
#include "QELModels/Values/Date.h"
#include "QELModels/Values/Number.h"

/// @file
/// A slot is where a record keeps one property. There is one type of slot for each kind of property, and all
/// that is done with a kind is done here: a new kind is a new slot and its row in `withSlotOf`. An empty slot
/// is all zero. Sizes in bytes:
///
///     number      | bits 8 | origin 1 | filled 1 | - 2 |      date    | seconds 8 | filled 1 | - 3 |
///     text, url   | data 8 | size 4 |                         color   | components 4 x 8 | filled 1 | - 7 |
///     array, dictionary | node 8 | block 8 |                  record, list | pointer 8 |
///     boolean     | value 1 |                                 integer | value 8 |
///
/// Every slot has these members:
///
/// - `clear`: makes the property null; a boolean and an integer keep what they have, since null says nothing
///   about them.
/// - `value`: what the property holds. The value keeps the block of the record, `owner`, or what that keeps.
/// - `assign`: takes a value that is not null; what lies in another block is kept by the one that is written.
///   False, and nothing done, when the value is of a kind that does not fit. `target` is the class of a
///   record or of a list's elements.
/// - `store`: takes a raw value of a document as it is, in the same way; texts and sub-trees are copied. No
///   raw value is by itself a URL, a date, a colour or a record. This is the way of most values into a
///   record, so each kind's is as short as it can be.
/// - `equals` and `hash`: whether two slots hold the same. A value that is stored in the same way is the
///   same, also if it is a number that is not equal to itself.

namespace QELModels {
inline namespace QELMODELS_ABI {

class ObjectClass;

namespace detail {

/// A value of at most eight bytes that may lie at any multiple of four, so that a slot with four more bytes
/// takes twelve bytes instead of sixteen.
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

struct QELMODELS_EXPORT NumberSlot {
    static constexpr PropertyKind kKind = PropertyKind::number;

    Packed<std::uint64_t> bits;
    Number::Origin origin{};
    bool filled = false;

    Number number() const noexcept { return NumberBits::number(bits, origin); }

    void clear() noexcept { *this = {}; }
    Value value(const Object&) const { return filled ? Value(number()) : Value(); }
    bool assign(const Value& value, const ObjectClass* target, BlockWriter& writer);
    static bool store(void* slot, RepresentationView value, BlockWriter&) {
        const RepresentationNode& node = *RepresentationAccess::node(value);
        if (!node.isNumber()) return false;
        *static_cast<NumberSlot*>(slot) = {node.bits, node.origin(), true};
        return true;
    }
    bool equals(const NumberSlot& other) const noexcept {
        if (!filled || !other.filled) return filled == other.filled;
        return NumberBits::areSame(number(), other.number());
    }
    std::uint64_t hash() const noexcept { return filled ? number().hash() : 0; }
};

/// A text of 4 GB or more throws `std::length_error`; no document holds one.
struct QELMODELS_EXPORT TextSlot {
    static constexpr PropertyKind kKind = PropertyKind::text;

    Packed<const char*> data;  // null when empty
    std::uint32_t size = 0;

    bool isEmpty() const noexcept { return data == nullptr; }
    std::string_view text() const noexcept { return {data, size}; }
    void set(std::string_view text) {
        if (text.size() > UINT32_MAX) throwTooLong();
        data = text.data();
        size = static_cast<std::uint32_t>(text.size());
    }

    void clear() noexcept { *this = {}; }
    Value value(const Object& owner) const {
        return isEmpty() ? Value() : ValueAccess::keptText(owner.block(), text());
    }
    bool assign(const Value& value, const ObjectClass* target, BlockWriter& writer);
    static bool store(void* slot, RepresentationView value, BlockWriter& writer);
    bool equals(const TextSlot& other) const noexcept {
        if (data == other.data) return size == other.size;
        return !isEmpty() && !other.isEmpty() && text() == other.text();
    }
    std::uint64_t hash() const noexcept { return isEmpty() ? 0 : hashOfText(text()); }

private:
    [[noreturn]] static void throwTooLong();
};

struct QELMODELS_EXPORT URLSlot : TextSlot {
    static constexpr PropertyKind kKind = PropertyKind::url;

    void clear() noexcept { *this = {}; }
    Value value(const Object& owner) const {
        return isEmpty() ? Value() : ValueAccess::keptURL(owner.block(), URLAccess::fromValidated(text()));
    }
    bool assign(const Value& value, const ObjectClass* target, BlockWriter& writer);
    static bool store(void*, RepresentationView, BlockWriter&) { return false; }
};

struct QELMODELS_EXPORT DateSlot {
    static constexpr PropertyKind kKind = PropertyKind::date;

    Packed<double> seconds;  // since 1970
    bool filled = false;

    Date date() const noexcept { return dateFromSecondsSince1970(seconds); }
    void set(Date date) noexcept { *this = {secondsSince1970(date), true}; }

    void clear() noexcept { *this = {}; }
    Value value(const Object&) const { return filled ? Value(date()) : Value(); }
    bool assign(const Value& value, const ObjectClass* target, BlockWriter& writer);
    static bool store(void*, RepresentationView, BlockWriter&) { return false; }
    bool equals(const DateSlot& other) const noexcept {
        if (!filled || !other.filled) return filled == other.filled;
        return NumberBits::areSame(static_cast<double>(seconds), static_cast<double>(other.seconds));
    }
    std::uint64_t hash() const noexcept { return filled ? Number(static_cast<double>(seconds)).hash() : 0; }
};

/// Whether two colours have the same components, as `NumberBits::areSame` sees them.
bool areSame(const Color& a, const Color& b) noexcept;

struct QELMODELS_EXPORT ColorSlot {
    static constexpr PropertyKind kKind = PropertyKind::color;

    Color color{0, 0, 0, 0};
    bool filled = false;

    void clear() noexcept { *this = {}; }
    Value value(const Object&) const { return filled ? Value(color) : Value(); }
    bool assign(const Value& value, const ObjectClass* target, BlockWriter& writer);
    static bool store(void*, RepresentationView, BlockWriter&) { return false; }
    bool equals(const ColorSlot& other) const noexcept;
    std::uint64_t hash() const noexcept { return filled ? color.hash() : 0; }
};

/// A raw sub-tree: an array or a dictionary.
struct QELMODELS_EXPORT RawSlot {
    const RepresentationNode* node = nullptr;
    const Block* block = nullptr;

    bool isEmpty() const noexcept { return node == nullptr; }
    /// Requires: the slot is not empty.
    RepresentationView view() const noexcept {
        assert(!isEmpty());
        return RepresentationAccess::at(node, block);
    }

    void clear() noexcept { *this = {}; }
    Value value(const Object&) const { return isEmpty() ? Value() : ValueAccess::keptRepresentation(view()); }
    bool equals(const RawSlot& other) const {
        if (isEmpty() || other.isEmpty()) return isEmpty() == other.isEmpty();
        return view() == other.view();
    }
    std::uint64_t hash() const noexcept { return isEmpty() ? 0 : view().hash(); }

protected:
    bool assignIf(bool fits, RepresentationView value, BlockWriter& writer);
    bool storeIf(bool fits, RepresentationView value, BlockWriter& writer);
};

struct QELMODELS_EXPORT ArraySlot : RawSlot {
    static constexpr PropertyKind kKind = PropertyKind::array;

    bool assign(const Value& value, const ObjectClass* target, BlockWriter& writer);
    static bool store(void* slot, RepresentationView value, BlockWriter& writer);
};

struct QELMODELS_EXPORT DictionarySlot : RawSlot {
    static constexpr PropertyKind kKind = PropertyKind::dictionary;

    bool assign(const Value& value, const ObjectClass* target, BlockWriter& writer);
    static bool store(void* slot, RepresentationView value, BlockWriter& writer);
};

struct QELMODELS_EXPORT RecordSlot {
    static constexpr PropertyKind kKind = PropertyKind::record;

    const Object* record = nullptr;

    void clear() noexcept { record = nullptr; }
    Value value(const Object&) const { return Value(record); }
    bool assign(const Value& value, const ObjectClass* target, BlockWriter& writer);
    static bool store(void*, RepresentationView, BlockWriter&) { return false; }
    bool equals(const RecordSlot& other) const {
        return record == nullptr ? other.record == nullptr : record->isEqual(other.record);
    }
    std::uint64_t hash() const { return record == nullptr ? 0 : record->hash(); }
};

struct QELMODELS_EXPORT ListSlot {
    static constexpr PropertyKind kKind = PropertyKind::list;

    const ListBase* list = nullptr;

    void clear() noexcept { list = nullptr; }
    Value value(const Object&) const { return Value(list); }
    bool assign(const Value& value, const ObjectClass* target, BlockWriter& writer);
    static bool store(void*, RepresentationView, BlockWriter&) { return false; }
    bool equals(const ListSlot& other) const {
        return list == nullptr ? other.list == nullptr : list->isEqual(other.list);
    }
    std::uint64_t hash() const { return list == nullptr ? 0 : list->hash(); }
};

struct QELMODELS_EXPORT BooleanSlot {
    static constexpr PropertyKind kKind = PropertyKind::boolean;

    bool boolean = false;

    void clear() noexcept {}
    Value value(const Object&) const { return Value(Number(boolean)); }
    bool assign(const Value& value, const ObjectClass* target, BlockWriter& writer);
    static bool store(void* slot, RepresentationView value, BlockWriter&) {
        const RepresentationNode& node = *RepresentationAccess::node(value);
        if (!node.isNumber()) return false;
        static_cast<BooleanSlot*>(slot)->boolean = NumberBits::number(node.bits, node.origin()).boolValue();
        return true;
    }
    bool equals(const BooleanSlot& other) const noexcept { return boolean == other.boolean; }
    std::uint64_t hash() const noexcept { return boolean ? 1 : 0; }
};

struct QELMODELS_EXPORT IntegerSlot {
    static constexpr PropertyKind kKind = PropertyKind::integer;

    std::int64_t integer = 0;

    void clear() noexcept {}
    Value value(const Object&) const { return Value(Number(integer)); }
    bool assign(const Value& value, const ObjectClass* target, BlockWriter& writer);
    static bool store(void* slot, RepresentationView value, BlockWriter&) {
        const RepresentationNode& node = *RepresentationAccess::node(value);
        if (!node.isNumber()) return false;
        static_cast<IntegerSlot*>(slot)->integer = NumberBits::number(node.bits, node.origin()).int64Value();
        return true;
    }
    bool equals(const IntegerSlot& other) const noexcept { return integer == other.integer; }
    std::uint64_t hash() const noexcept { return static_cast<std::uint64_t>(integer); }
};

/// Calls `act` with the type of slot that a kind of property has.
template <class Act>
[[gnu::always_inline]] inline decltype(auto) withSlotOf(PropertyKind kind, const Act& act) {
    switch (kind) {
        case PropertyKind::number:
            return act.template operator()<NumberSlot>();
        case PropertyKind::text:
            return act.template operator()<TextSlot>();
        case PropertyKind::url:
            return act.template operator()<URLSlot>();
        case PropertyKind::date:
            return act.template operator()<DateSlot>();
        case PropertyKind::color:
            return act.template operator()<ColorSlot>();
        case PropertyKind::array:
            return act.template operator()<ArraySlot>();
        case PropertyKind::dictionary:
            return act.template operator()<DictionarySlot>();
        case PropertyKind::record:
            return act.template operator()<RecordSlot>();
        case PropertyKind::list:
            return act.template operator()<ListSlot>();
        case PropertyKind::boolean:
            return act.template operator()<BooleanSlot>();
        case PropertyKind::integer:
            break;
    }
    return act.template operator()<IntegerSlot>();
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
