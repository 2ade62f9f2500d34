#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

/// The parts of records that are written by hand. Each record has one list of its members. All code that goes
/// through the members of a record (filling, comparing, digests, made-up documents) works from that list.
///
///     struct Subtitle {
///         Maybe<std::string> language;
///         Held<bool> isDefault;
///
///         static constexpr auto members() {
///             return std::tuple(member("language", &Subtitle::language),
///                               member("isDefault", &Subtitle::isDefault).from("default"));
///         }
///     };
namespace QELModels::bench {

/// A field that is read by a call, as the library's are.
template <class T>
class Held {
public:
    Held() = default;
    Held& operator=(T&& value) {
        value_ = std::move(value);
        return *this;
    }
    const T& operator()() const { return value_; }
    /// To fill a nested record in its place.
    T& place() { return value_; }

    friend bool operator==(const Held&, const Held&) = default;

private:
    T value_{};
};

template <class T>
using Maybe = Held<std::optional<T>>;

/// What the type of a member does not say about its value in a document.
enum class Form : std::uint8_t {
    asItsType,
    cleaned,     ///< a text without HTML
    array,       ///< a sub-tree that nobody looks into, ...
    dictionary,  ///< ... of either kind
};

/// One member of a record.
template <class Record, class Type>
struct Member {
    using Value = Type;

    std::string_view name;  ///< as the library names the property
    Held<Type> Record::*field;
    std::string_view key;  ///< where a document has it
    Form form = Form::asItsType;
    bool isCompared = true;  ///< whether equality and hash go through it

    constexpr Member from(std::string_view documentKey) const {
        Member changed = *this;
        changed.key = documentKey;
        return changed;
    }
    constexpr Member cleaned() const { return as(Form::cleaned); }
    constexpr Member array() const { return as(Form::array); }
    constexpr Member dictionary() const { return as(Form::dictionary); }
    constexpr Member notCompared() const {
        Member changed = *this;
        changed.isCompared = false;
        return changed;
    }

private:
    constexpr Member as(Form changedForm) const {
        Member changed = *this;
        changed.form = changedForm;
        return changed;
    }
};

/// A member whose key in documents is its name.
template <class Record, class Type>
constexpr Member<Record, Type> member(std::string_view name, Held<Type> Record::*field) {
    return {name, field, name};
}

/// A structure with a list of members, in the order in which the library declares its properties.
template <class T>
concept RecordByHand = requires {
    T::members();
};

template <RecordByHand Record>
inline constexpr auto kMembersOf = Record::members();

template <RecordByHand Record>
inline constexpr std::size_t kMemberCount = std::tuple_size_v<decltype(Record::members())>;

/// Calls `visit` with each member of a record.
template <RecordByHand Record, class Visit>
constexpr void forEachMember(Visit visit) {
    std::apply([&](const auto&... each) { (visit(each), ...); }, kMembersOf<Record>);
}

/// Whether `ask.operator()<I>()` is true for the position of a member; it is called up to the first such one.
template <RecordByHand Record, class Ask>
constexpr bool anyMember(Ask ask) {
    return [&]<std::size_t... I>(std::index_sequence<I...>) {
        return (ask.template operator()<I>() || ...);
    }
    (std::make_index_sequence<kMemberCount<Record>>());
}

template <RecordByHand Record>
bool operator==(const Record& a, const Record& b) {
    return !anyMember<Record>([&]<std::size_t I>() {
        constexpr auto& each = std::get<I>(kMembersOf<Record>);
        if constexpr (each.isCompared) return !(a.*each.field == b.*each.field);
        return false;
    });
}

template <class T>
struct WithoutOptional {
    using Type = T;
};
template <class T>
struct WithoutOptional<std::optional<T>> {
    using Type = T;
};
/// The type of a member's value if it is not null.
template <class T>
using Present = typename WithoutOptional<T>::Type;

/// The records of a list; void for anything else.
template <class T>
struct ListOf {
    using Element = void;
};
template <RecordByHand T>
struct ListOf<std::vector<T>> {
    using Element = T;
};
template <class T>
using ElementOf = typename ListOf<T>::Element;

template <class T>
concept ListByHand = RecordByHand<ElementOf<T>>;

}  // namespace QELModels::bench
