#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>

#include "QELModels/Platform/Export.h"
#include "QELModels/Records/List.h"
#include "QELModels/Records/Object.h"
#include "QELModels/Records/Ref.h"
#include "QELModels/Representation/Representation.h"
#include "QELModels/Values/Color.h"
#include "QELModels/Values/Date.h"
#include "QELModels/Values/Number.h"
#include "QELModels/Values/URL.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace detail {
struct ValueAccess;
}

/// The value of any property, or what a map rule makes of a representation: one of the kinds below, or null.
/// A value keeps what it holds: a text, a record or a raw sub-tree stays valid as long as the value lives.
class QELMODELS_EXPORT Value {
public:
    /// The kinds of values. A boolean is a number, an enumeration too.
    enum class Kind : std::uint8_t { null, number, text, url, date, color, representation, record, list };

    /// Null: a transformer that answers it has refused.
    Value() noexcept = default;
    Value(std::nullptr_t) noexcept {}
    Value(Number number) noexcept : content_{Kind::number} { content_.number = number; }
    Value(Date date) noexcept : content_{Kind::date} { std::construct_at(&content_.date, date); }
    Value(Color color) noexcept : content_{Kind::color} { std::construct_at(&content_.color, color); }
    /// A copy of a text, which is WTF-8.
    template <class T>
    requires std::convertible_to<const T&, std::string_view> Value(const T& text)
        : Value(Value::text(text)) {}
    /// A boolean, an integer of any width, or a double.
    template <class T>
    requires(std::is_arithmetic_v<T>&& std::constructible_from<Number, T>) Value(T number)
    noexcept : Value(Number(number)) {}
    /// An enumeration, as its number.
    template <class T>
    requires std::is_enum_v<T> Value(T value)
    noexcept : Value(Number(static_cast<std::int64_t>(value))) {}
    /// A copy of a URL.
    Value(URLView url) : Value(Value::url(url)) {}
    /// A raw value, kept together with its document. A string, a number, a boolean and null count as that
    /// text, number or null; only an array and a dictionary are of the kind `representation`.
    Value(RepresentationView raw) noexcept;
    Value(const Representation& raw) noexcept : Value(raw.view()) {}
    /// A record or a list of records; null is null.
    template <class T>
    Value(const Ref<T>& ref) noexcept : Value(ref.get()) {}
    template <std::derived_from<Object> T>
    explicit Value(const T* record) noexcept
        : Value(record == nullptr ? Value() : Value(Kind::record, static_cast<const Object*>(record))) {}
    template <std::derived_from<ListBase> T>
    explicit Value(const T* list) noexcept
        : Value(list == nullptr ? Value() : Value(Kind::list, static_cast<const ListBase*>(list))) {}
    /// A copy of a text, which is WTF-8.
    static Value text(std::string_view text);
    /// A copy of a URL.
    static Value url(URLView url);

    Value(const Value& other) noexcept : content_(other.content_) {
        if (content_.block != nullptr) content_.block->retain();
    }
    Value(Value&& other) noexcept : content_(std::exchange(other.content_, {})) {}
    Value& operator=(Value other) noexcept {
        std::swap(content_, other.content_);
        return *this;
    }
    ~Value() {
        if (content_.block != nullptr) content_.block->release();
    }

    /// Which kind it is.
    Kind kind() const noexcept { return content_.kind; }
    bool isNull() const noexcept { return content_.kind == Kind::null; }

    /// What the value holds, if it is of that kind; nothing (or null) otherwise.
    std::optional<Number> number() const noexcept;
    std::optional<std::string_view> text() const noexcept QELMODELS_LENT;
    std::optional<URLView> url() const noexcept QELMODELS_LENT;
    std::optional<Date> date() const noexcept;
    std::optional<Color> color() const noexcept;
    std::optional<RepresentationView> representation() const noexcept QELMODELS_LENT;
    const Object* record() const noexcept QELMODELS_LENT;
    const ListBase* list() const noexcept QELMODELS_LENT;

    /// Equality by value: records by `isEqual`, lists element by element. A number of the same bits is the
    /// same, as a NaN is with itself.
    QELMODELS_EXPORT friend bool operator==(const Value& a, const Value& b);

private:
    friend struct detail::ValueAccess;
    struct TextPlace {
        const char* data;
        std::size_t size;
    };
    // Plain data; only its block is counted.
    struct Content {
        Kind kind = Kind::null;
        const Block* block = nullptr;  // where what the value points to lies: the value holds a use of it
        union {
            Number number;
            TextPlace text;
            Date date;
            Color color;
            const detail::RepresentationNode* node;
            const Object* record;
            const ListBase* list;
        };
        Content(Kind ofKind = Kind::null) noexcept : kind(ofKind), number() {}
    };
    static_assert(std::is_trivially_copyable_v<Content>);

    Value(Kind kind, const Object* record) noexcept;
    Value(Kind kind, const ListBase* list) noexcept;
    Value(Kind kind, std::string_view text, const Block* block) noexcept;
    static Value copied(Kind kind, std::string_view text);

    Content content_;
};

namespace detail {

/// Values of what lies in a block, which they keep.
struct QELMODELS_EXPORT ValueAccess {
    static Value keptText(const Block* block, std::string_view text) noexcept;
    static Value keptURL(const Block* block, URLView url) noexcept;
    static Value keptRepresentation(RepresentationView view) noexcept;
    /// Null for a number, a date, a colour and constant data.
    static const Block* block(const Value& value) noexcept { return value.content_.block; }
};

}  // namespace detail

}  // namespace QELMODELS_ABI
}  // namespace QELModels
