#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "Members.h"
#include "QELModels/Records/List.h"
#include "QELModels/Records/Object.h"
#include "QELModels/Records/ObjectClass.h"
#include "QELModels/Records/Value.h"
#include "QELModels/Values/Color.h"
#include "QELModels/Values/Date.h"
#include "QELModels/Values/Number.h"
#include "QELModels/Values/URL.h"

namespace QELModels::bench {

/// What two ways of filling an asset must agree on: every member in its order, null apart from empty, texts
/// and URLs by their bytes, numbers and dates by their double, a sub-tree that nobody looks into by its
/// number of elements.
class Digest {
public:
    std::uint64_t value() const noexcept { return value_; }

    /// A record that is written by hand, ...
    template <RecordByHand Record>
    void add(const Record& record) {
        forEachMember<Record>([&](const auto& member) { add((record.*member.field)()); });
    }
    /// ... and the library's record whose properties have the names of `Record`'s members.
    template <RecordByHand Record>
    void addAs(const Object& object) {
        forEachMember<Record>([&]<class Type>(const Member<Record, Type>& member) {
            const Property* const property = object.isa().property(member.name);
            addAs<Type>(property == nullptr ? Value() : property->value(object));
        });
    }

private:
    void add(bool flag) noexcept { word(flag ? 1 : 0); }
    void add(double number) noexcept { word(std::bit_cast<std::uint64_t>(number)); }
    void add(Number number) noexcept { add(number.doubleValue()); }
    void add(Date date) noexcept { add(secondsSince1970(date)); }
    void add(std::string_view text) noexcept { word(std::hash<std::string_view>()(text)); }
    void add(const std::string& text) noexcept { add(std::string_view(text)); }
    void add(const URL& url) noexcept { add(url.text()); }
    void add(URLView url) noexcept { add(url.text()); }
    void add(const Color& color) noexcept {
        for (const double component : {color.red, color.green, color.blue, color.alpha})
            add(component);
    }
    template <class Enumeration>
    requires std::is_enum_v<Enumeration>
    void add(Enumeration value) noexcept { word(static_cast<std::uint64_t>(value)); }
    template <RecordByHand Record>
    void add(const std::vector<Record>& list) {
        word(list.size());
        for (const Record& element : list)
            add(element);
    }
    /// A sub-tree: `countElements` is declared with its type.
    template <class Raw>
    requires requires(const Raw& raw) { countElements(raw); }
    void add(const Raw& raw) { word(countElements(raw)); }
    template <class T>
    void add(const std::optional<T>& field) {
        if (isPresent(field.has_value())) add(*field);
    }

    /// The library's value of a member of type `Type`. One of another kind counts as null.
    template <class Type>
    void addAs(const Value& value) {
        using Kind = Present<Type>;
        if constexpr (std::is_same_v<Kind, bool>)
            add(value.number() && value.number()->boolValue());
        else if constexpr (std::is_enum_v<Kind>)
            add(static_cast<Kind>(value.number() ? value.number()->int64Value() : -1));
        else if constexpr (RecordByHand<Kind>)
            addNested(value.record(), [this](const Object& record) { addAs<Kind>(record); });
        else if constexpr (ListByHand<Kind>)
            addNested(value.list(), [this](const ListBase& list) {
                word(list.size());
                for (const Object* const element : list.objects())
                    addAs<ElementOf<Kind>>(*element);
            });
        else if constexpr (std::is_same_v<Kind, Number>)
            add(value.number());
        else if constexpr (std::is_same_v<Kind, Date>)
            add(value.date());
        else if constexpr (std::is_same_v<Kind, Color>)
            add(value.color());
        else if constexpr (std::is_same_v<Kind, std::string>)
            add(value.text());
        else if constexpr (std::is_same_v<Kind, URL>)
            add(value.url());
        else if (const auto raw = value.representation(); isPresent(raw.has_value()))
            word(raw->size());
    }
    template <class Nested, class AddNested>
    void addNested(const Nested* nested, AddNested addOne) {
        if (isPresent(nested != nullptr)) addOne(*nested);
    }

    bool isPresent(bool is) noexcept {
        word(is ? 0x5EED : 0x0FF);
        return is;
    }
    void word(std::uint64_t word) noexcept {
        value_ = (value_ ^ word) * 0x9E3779B97F4A7C15;  // an odd number, so that nothing is lost ...
        value_ ^= value_ >> 32;                         // ... and the upper half gets into the lower one
    }

    std::uint64_t value_ = 0;
};

/// The digest of what code written by hand has made of a document.
template <class Assets>
std::uint64_t digestOf(const Assets& assets) {
    Digest digest;
    if (assets.single) digest.add(*assets.single);
    for (const auto& asset : assets.page)
        digest.add(asset);
    return digest.value();
}

}  // namespace QELModels::bench
