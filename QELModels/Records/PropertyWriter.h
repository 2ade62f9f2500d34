#pragma once

#include <cassert>
#include <cstdint>
#include <string_view>

#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Object.h"
#include "QELModels/Records/Property.h"
#include "QELModels/Records/Value.h"
#include "QELModels/Records/detail/PropertySlot.h"
#include "QELModels/Representation/Representation.h"
#include "QELModels/Values/Date.h"
#include "QELModels/Values/Number.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace detail {
class TextPlacer;
}

/// Where the result of a map rule goes: one property of a record that is being made. A rule that puts nothing
/// there, or null, has refused.
class QELMODELS_EXPORT PropertyWriter {
public:
    enum class Result : std::uint8_t {
        nothing,   ///< null, or nothing was put
        filled,    ///< the property has a value
        wrongKind  ///< what was put does not fit the property
    };

    /// For the engine. Requires: the property is stored, and of the object's class.
    PropertyWriter(const Property& property, Object& object, detail::BlockWriter& writer) noexcept
        : property_(property), object_(object), writer_(writer) {
        assert(!property.isComputed());
    }
    PropertyWriter(const PropertyWriter&) = delete;
    PropertyWriter& operator=(const PropertyWriter&) = delete;

    /// Any value; the record keeps what it lies in. Like all that puts a text here, it throws
    /// `std::length_error` for one of 4 GB or more.
    void put(const Value& value);
    void put(Number number);
    template <detail::NumberLike T>
    void put(T number) {
        put(Number(number));
    }
    void put(Date date) {
        if (accepts(PropertyKind::date)) detail::slotOf<detail::DateSlot>(property_, object_).set(date);
    }
    /// A text that is only lent: it is copied, unless the record keeps what it lies in.
    void putText(std::string_view text) {
        if (accepts(PropertyKind::text)) setText(writer_.keepText(text));
    }

    /// What became of what was put so far.
    Result result() const noexcept { return result_; }

private:
    friend class detail::TextPlacer;

    bool accepts(PropertyKind kind) noexcept {
        result_ = property_.kind == kind ? Result::filled : Result::wrongKind;
        return result_ == Result::filled;
    }
    // Of a text or a URL, which are stored in the same way.
    void setText(std::string_view text) {
        static_cast<detail::TextSlot*>(detail::slotIn(property_, object_))->set(text);
    }

    const Property& property_;
    Object& object_;
    detail::BlockWriter& writer_;
    Result result_ = Result::nothing;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
