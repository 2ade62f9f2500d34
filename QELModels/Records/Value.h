#pragma once

#include <concepts>
#include <cstdint>
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

/// The value of any property, or what a transformer makes of a representation: one of the kinds below, or
/// null. A value keeps what it holds: a text, a record or a raw sub-tree stays valid as long as the value
/// lives.
class QELMODELS_EXPORT Value {
public:
    /// The kinds of values. A boolean is a number, an enumeration too.
    enum class Kind : std::uint8_t { null, number, text, url, date, color, representation, record, list };

    /// Null: a transformer that answers it has refused.
    Value() noexcept = default;
    Value(Number number) noexcept : is_{Kind::number} { is_.number = number; }
    Value(Date date) noexcept : is_{Kind::date} { is_.date = date; }
    Value(Color color) noexcept : is_{Kind::color} { is_.color = color; }
    Value(const Representation& representation) noexcept;
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

    Value(const Value& other) noexcept : is_(other.is_) {
        if (is_.block != nullptr) is_.block->retain();
    }
    Value(Value&& other) noexcept : is_(std::exchange(other.is_, {})) {}
    Value& operator=(Value other) noexcept {
        std::swap(is_, other.is_);
        return *this;
    }
    ~Value() {
        if (is_.block != nullptr) is_.block->release();
    }

    /// Which kind it is.
    Kind kind() const noexcept { return is_.kind; }
    bool isNull() const noexcept { return is_.kind == Kind::null; }

    /// What the value holds, if it is of that kind; nothing (or null) otherwise.
    std::optional<Number> number() const noexcept;
    std::optional<std::string_view> text() const noexcept QELMODELS_LENT;
    std::optional<URLView> url() const noexcept QELMODELS_LENT;
    std::optional<Date> date() const noexcept;
    std::optional<Color> color() const noexcept;
    std::optional<RepresentationView> representation() const noexcept QELMODELS_LENT;
    const Object* record() const noexcept QELMODELS_LENT;
    const ListBase* list() const noexcept QELMODELS_LENT;

    /// Equality by value: records by `isEqual`, lists element by element.
    QELMODELS_EXPORT friend bool operator==(const Value& a, const Value& b);

private:
    friend struct ValueAccess;
    struct TextPlace {
        const char* data;
        std::size_t size;
    };
    // Plain data; only the block behind it is counted.
    struct Content {
        Kind kind = Kind::null;
        const Block* block = nullptr;  // where what the value points to lies: the value holds a use of it
        union {
            Number number;
            TextPlace text;
            Date date;
            Color color;
            const RepresentationNode* node;
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

    Content is_;
};

/// For the tables of properties: values of what lies in a block, which they keep.
struct QELMODELS_EXPORT ValueAccess {
    static Value keptText(const Block* block, std::string_view text) noexcept;
    static Value keptURL(const Block* block, URLView url) noexcept;
    static Value keptRepresentation(RepresentationView view) noexcept;
    /// Null for a number, a date, a colour and constant data.
    static const Block* block(const Value& value) noexcept { return value.is_.block; }
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
